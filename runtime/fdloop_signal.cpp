// Unix signals through the loop: each is blocked and read from a signalfd of its own. No lock: the thread
// that runs the loop alone.
#include "runtime/fdloop.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void set_of(int signo, sigset_t* set)
{
    sigemptyset(set);
    sigaddset(set, signo);
}

// One event may stand for several dead children: the kernel keeps only one pending SIGCHLD.
void reap_children(int fd, int signo, fdloop_signal_cb_t callback)
{
    int status;
    pid_t pid;
    while ((pid = waitpid(-1, &status, WNOHANG)) > 0) {
        callback(fd, signo, pid, (status >> 8) & 0xff);
    }
}

int read_signal(int fd, void* data)
{
    fdloop_signal_cb_t callback = reinterpret_cast<fdloop_signal_cb_t>(data);
    struct signalfd_siginfo info;
    if (read(fd, &info, sizeof(info)) != static_cast<ssize_t>(sizeof(info))) {
        return 0;
    }
    int signo = static_cast<int>(info.ssi_signo);
    if (signo == SIGCHLD) {
        reap_children(fd, signo, callback);
    } else {
        callback(fd, signo, static_cast<int>(info.ssi_pid), 0);
    }
    return 0;
}

} // namespace

int fdloop_register_signal(fdloop_t* loop, fdloop_signal_cb_t callback, int signo)
{
    sigset_t set;
    set_of(signo, &set);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    int fd = signalfd(-1, &set, SFD_CLOEXEC);
    fdloop_fd_register(loop, fd, read_signal, reinterpret_cast<void*>(callback));
    return fd;
}

int fdloop_unregister_signal(fdloop_t* loop, int fd, int signo)
{
    sigset_t set;
    set_of(signo, &set);
    fdloop_fd_unregister(loop, fd);
    close(fd);
    return sigprocmask(SIG_UNBLOCK, &set, nullptr);
}
