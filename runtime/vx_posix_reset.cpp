// Fatal errors, restart, and the default signal handlers. The handlers run on any thread and use only what is
// safe there.
#include "runtime/vx_posix_reset.h"

#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"

#include <execinfo.h>
#include <signal.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <syslog.h>
#include <unistd.h>

namespace {

enum { BACKTRACE_FRAMES = 16 };

int kept_argc = 0;
char** kept_argv = nullptr;

void install(int signo, const struct sigaction& action)
{
    if (sigaction(signo, &action, nullptr) < 0) {
        vx_panic("Signal %d handler install failed (%m)\n", signo);
    }
}

// The handlers end by _exit, not exit: the status is the same 1, but exit runs handlers and destructors,
// which may wait for a lock that this very thread holds, or take objects away under another thread that still
// runs.

void terminate_handler(int)
{
    _exit(1);
}

void ignore_handler(int) {}

void crash_handler(int signo, siginfo_t*, void*)
{
    vx_console_printf("*** %s: signal=%d\n", "signal_handler", signo);
    vx_console_printf("Backtrace:\n");
    void* frames[BACKTRACE_FRAMES];
    int count = backtrace(frames, BACKTRACE_FRAMES);
    backtrace_symbols_fd(frames, count, STDOUT_FILENO);
    vx_console_printf("*** %s: exit\n", "signal_handler");
    _exit(1);
}

struct default_handler {
    int signo;
    int flags;
    void (*handler)(int);
    void (*info_handler)(int, siginfo_t*, void*);
};

const default_handler DEFAULT_HANDLERS[] = {
    {SIGILL, SA_SIGINFO, nullptr, crash_handler}, {SIGABRT, SA_SIGINFO, nullptr, crash_handler},
    {SIGFPE, SA_SIGINFO, nullptr, crash_handler}, {SIGSEGV, SA_SIGINFO, nullptr, crash_handler},
    {SIGBUS, SA_SIGINFO, nullptr, crash_handler}, {SIGINT, 0, terminate_handler, nullptr},
    {SIGTERM, 0, terminate_handler, nullptr},     {SIGPIPE, SA_RESTART, ignore_handler, nullptr},
};

} // namespace

void vx_panic(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    vx_vslog(LOG_ALERT, format, arguments);
    va_end(arguments);
    vx_abort();
}

void vx_abort(void)
{
    abort();
}

void vx_reset(void)
{
    exit(0);
}

void vx_assert_failed(const char* source, int line)
{
    char name[64];
    vx_panic("*** ASSERT in %s at %d\n", vx_source_name(source, name, sizeof(name)), line);
}

void vx_reset_set_args(int argc, char** argv)
{
    kept_argc = argc;
    kept_argv = argv;
}

void vx_reset_get_args(int* argc, char*** argv)
{
    if (argc) {
        *argc = kept_argc;
    }
    if (argv) {
        *argv = kept_argv;
    }
}

int vx_restart(void)
{
    VX_ASSERT(kept_argc > 0 && kept_argv);
    return execvp(kept_argv[0], kept_argv);
}

void vx_set_sig_handler(int signo, void (*handler)(int))
{
    struct sigaction action;
    memset(&action, 0, sizeof(action));
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    install(signo, action);
}

void vx_set_default_sig_handlers(void)
{
    // The first backtrace of a process loads a library and allocates; a handler could not do that safely.
    void* frame[1];
    backtrace(frame, 1);

    for (const default_handler& row : DEFAULT_HANDLERS) {
        struct sigaction action;
        memset(&action, 0, sizeof(action));
        if (row.info_handler) {
            action.sa_sigaction = row.info_handler;
        } else {
            action.sa_handler = row.handler;
        }
        action.sa_flags = row.flags;
        sigemptyset(&action.sa_mask);
        install(row.signo, action);
    }
}

void os_sys_init(void)
{
    vx_set_default_sig_handlers();
}
