// Raw mode with its signals, see the header.
#include "sim/console/tty.h"

#include "runtime/vx_tty.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/eventfd.h>
#include <unistd.h>

namespace sim {

namespace {

// Of the one that has begun; what signal handlers need.
termios before;
termios raw;
volatile sig_atomic_t hasSettings = 0; // the two are known
volatile sig_atomic_t isRaw = 0;
volatile sig_atomic_t wakeFd = -1;

constexpr uint32_t BackgroundInterval = 200; // ms

// Safe in a signal handler, as the next.
void setRaw()
{
    if (!hasSettings || !Tty::isForeground())
        return;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
    isRaw = 1;
}

void restore()
{
    if (!isRaw)
        return;
    isRaw = 0;
    // In the background the settings are somebody else's, and touching them would stop the process.
    if (Tty::isForeground())
        tcsetattr(STDIN_FILENO, TCSADRAIN, &before);
}

// What was interrupted may be about to look at its errno.
class KeptErrno {
public:
    KeptErrno() : kept(errno) {}
    ~KeptErrno() { errno = kept; }
    KeptErrno(const KeptErrno&) = delete;
    KeptErrno& operator=(const KeptErrno&) = delete;

private:
    const int kept;
};

void onStop(int)
{
    KeptErrno errnoOfInterrupted;
    restore();
    raise(SIGSTOP);
}

void onContinue(int)
{
    KeptErrno errnoOfInterrupted;
    setRaw();
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
    backgroundTimer = std::make_unique<Timer>(loop);
    fdloop_fd_register(loop, wake, onContinued, this);
    if (vx_posix_tty_raw(STDIN_FILENO, &before) == 0 && tcgetattr(STDIN_FILENO, &raw) == 0) {
        hasSettings = 1;
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
    backgroundTimer.reset();
    loop = nullptr;
}

int Tty::onContinued(int fd, void* data)
{
    eventfd_t count;
    eventfd_read(fd, &count);
    static_cast<Tty*>(data)->look();
    return 0;
}

// A shell that brings a process to the foreground which had not been stopped tells it nothing.
void Tty::look()
{
    bool foreground = isForeground();
    if (foreground) {
        setRaw();
        backgroundTimer->stop();
    } else if (!backgroundTimer->isRunning()) {
        backgroundTimer->every(BackgroundInterval, [this] {
            if (isForeground())
                look();
        });
    }
    callback(foreground);
}

} // namespace sim
