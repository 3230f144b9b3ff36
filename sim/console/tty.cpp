// Raw mode with its signals, see the header.
#include "sim/console/tty.h"

#include "runtime/vx_tty.h"

#include <csignal>
#include <cstdlib>
#include <sys/eventfd.h>
#include <unistd.h>

namespace sim {

namespace {

// Of the one that has begun; what signal handlers need.
termios before;
termios raw;
volatile sig_atomic_t isRaw = 0;
volatile sig_atomic_t wakeFd = -1;

// Safe in a signal handler.
void restore()
{
    if (!isRaw)
        return;
    isRaw = 0;
    // In the background the settings are somebody else's, and touching them would stop the process.
    if (Tty::isForeground())
        tcsetattr(STDIN_FILENO, TCSADRAIN, &before);
}

void onStop(int)
{
    restore();
    raise(SIGSTOP);
}

void onContinue(int)
{
    if (Tty::isForeground()) {
        tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
        isRaw = 1;
    }
    eventfd_write(wakeFd, 1);
}

void onAbort(int)
{
    restore();
    signal(SIGABRT, SIG_DFL);
    raise(SIGABRT); // delivered when the handler returns
}

struct Handled {
    int number;
    void (*handler)(int);
};
const Handled Signals[] = {{SIGTSTP, onStop}, {SIGCONT, onContinue}, {SIGABRT, onAbort}};

void handle(bool ours)
{
    for (const Handled& row : Signals) {
        struct sigaction action = {};
        action.sa_handler = ours ? row.handler : SIG_DFL;
        action.sa_flags = SA_RESTART;
        sigaction(row.number, &action, nullptr);
    }
}

} // namespace

bool Tty::isForeground()
{
    pid_t foreground = tcgetpgrp(STDIN_FILENO);
    return foreground >= 0 && foreground == getpgrp();
}

void Tty::begin(fdloop_t* theLoop, Foreground function)
{
    loop = theLoop;
    callback = std::move(function);
    wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    wakeFd = wake;
    fdloop_fd_register(loop, wake, onContinued, this);
    if (vx_posix_tty_raw(STDIN_FILENO, &before) == 0 && tcgetattr(STDIN_FILENO, &raw) == 0) {
        isRaw = 1;
        static bool atExit = atexit(restore) == 0;
        (void)atExit;
    }
    handle(true);
}

void Tty::end()
{
    if (!loop)
        return;
    handle(false);
    restore();
    fdloop_fd_unregister(loop, wake);
    close(wake);
    loop = nullptr;
}

int Tty::onContinued(int fd, void* data)
{
    eventfd_t count;
    eventfd_read(fd, &count);
    static_cast<Tty*>(data)->callback(isForeground());
    return 0;
}

} // namespace sim
