// Fatal errors, the ends of the process, restart, and the signal handlers that every process has.
//
// Any thread, unless told otherwise.
#ifndef RUNTIME_VX_POSIX_RESET_H
#define RUNTIME_VX_POSIX_RESET_H

// Logs the text to syslog at priority 1 (alert) and ends the process by vx_abort(). Never returns.
__attribute__((format(printf, 1, 2), noreturn)) void vx_panic(const char* format, ...);

// abort(). With the default handlers below the backtrace is printed and the exit status is 1.
__attribute__((noreturn)) void vx_abort(void);

// exit(0).
__attribute__((noreturn)) void vx_reset(void);

// Keeps main's arguments for vx_restart(). The array stays the caller's and must live on; argv[argc] is null.
void vx_reset_set_args(int argc, char** argv);

// Fetches what was kept: 0 and null before vx_reset_set_args(). Either pointer may be null.
void vx_reset_get_args(int* argc, char*** argv);

// Replaces the process image by execvp of the kept arguments; asserts that they were kept. Returns only on
// failure: -1, with errno of execvp.
int vx_restart(void);

// Installs a handler with SA_RESTART and an empty mask. A failure panics with
// "Signal %d handler install failed (%m)\n".
void vx_set_sig_handler(int signo, void (*handler)(int));

// Installs the default handlers of SIGILL, SIGABRT, SIGFPE, SIGSEGV, SIGBUS (backtrace on descriptor 1, exit
// status 1), SIGINT, SIGTERM (exit status 1) and SIGPIPE (ignored by an empty handler, so a write on a dead
// socket fails with EPIPE). A failure panics as above.
void vx_set_default_sig_handlers(void);

// First call of a process that has no other start-up code: vx_set_default_sig_handlers().
void os_sys_init(void);

#endif
