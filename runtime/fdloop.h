// The event loop: descriptors (through select), timers in milliseconds, idlers that run once a turn, Unix
// signals (through signalfd) and one line parser for text descriptors.
//
// One thread: everything registered on a loop is called from, and everything here may be called only on, the
// thread that runs the loop. There is no lock. Callbacks may add and remove entries of any kind, but must not
// run the loop again. Only fdloop_run and fdloop_loop block.
//
// It is meant for a handful of descriptors and timers: lists with linear search, and the sets of select are
// built anew each turn. Descriptors must lie below 1,024 (FD_SETSIZE); higher ones are refused with a log.
// With hundreds of descriptors an epoll set kept by the kernel would be right.
//
// Memory that can't be had panics with an assertion, except for timers.
#ifndef RUNTIME_FDLOOP_H
#define RUNTIME_FDLOOP_H

#include <stdint.h>

struct fdloop_t;
struct fdloop_timer;
struct fdloop_idler;

// Returns 0 to stay registered. Any other value drops the entry; the descriptor is not closed.
typedef int (*fdloop_fd_handler_t)(int fd, void* data);

// Returns non-zero to run again at its previous expiry + interval, 0 to be removed and freed.
typedef int (*fdloop_timer_cb_t)(void* data);

typedef void (*fdloop_idler_cb_t)(void* data);

// fd is the signalfd. pid: of the sender, or of the child for SIGCHLD. status: exit code of the child, else
// 0.
typedef void (*fdloop_signal_cb_t)(int fd, int signo, int pid, int status);

// line has neither line feed nor carriage return at its end. It lives until the callback returns and may be
// changed.
typedef void (*fdloop_line_cb_t)(char* line);

// Makes a loop. It lives to the end of the process: there is no operation to destroy one.
fdloop_t* fdloop_init(void);

// If bit 0x20000 of the flags is set, their low 8 bits become the debug level (0 none, 1 timers added and
// removed, 2 every step of the timers; syslog at debug priority). Otherwise nothing happens.
void fdloop_debug(fdloop_t* loop, uint32_t flags);

// Appends an enabled entry: the handler is called with fd and data whenever fd is readable, writable or has
// an exceptional condition. The same descriptor may be registered any number of times. A negative fd does
// nothing.
void fdloop_fd_register(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, void* data);
void fdloop_fd_register_write(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, void* data);
void fdloop_fd_register_except(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, void* data);

// Removes the oldest entry of fd of that kind, if there is one. fd is not closed. In no case is a handler of
// fd of that kind called any more in the running pass.
void fdloop_fd_unregister(fdloop_t* loop, int fd);
void fdloop_fd_unregister_write(fdloop_t* loop, int fd);
void fdloop_fd_unregister_except(fdloop_t* loop, int fd);

// Switches the oldest entry of any kind with this fd and handler on (1) or off (0): an entry that is off
// stays registered but is neither waited for nor called. Nothing happens if there is none.
void fdloop_fd_enable(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, int enabled);

// Appends a function that is called with data once in every turn, before the wait. There is no removal. The
// result is owned by the loop.
fdloop_idler* fdloop_idler_add(fdloop_t* loop, fdloop_idler_cb_t function, void* data);

// One turn: expired timers, idlers, one wait, handlers. Returns 0; or 1 at once if there is nothing to wait
// for (neither a timer nor an enabled descriptor); or -1 if select failed (errno tells). A signal ends the
// wait with 0. After -1 the loop is still usable.
int fdloop_run(fdloop_t* loop);

// Calls fdloop_run until its result is not 0, and returns that.
int fdloop_loop(fdloop_t* loop);

// The clock of the timers: monotonic, in milliseconds, truncated to 32 bits; wraps after 49.7 days.
uint32_t fdloop_time_ms(void);

// Schedules the callback in so many milliseconds from now (below 2^31), and then periodically while it
// returns non-zero. The result is the handle; it is owned by the loop and valid until the timer is deleted or
// its callback has returned 0. Null if there is no memory.
fdloop_timer* fdloop_timer_add(fdloop_t* loop, uint32_t interval_ms, fdloop_timer_cb_t callback, void* data);

// Deletes a timer; it never runs again. Null does nothing, and outside timer callbacks so does a handle that
// is not pending.
void fdloop_timer_del(fdloop_t* loop, fdloop_timer* timer);

// The interval in milliseconds. A new one counts from the next rescheduling: the running expiry stays.
void fdloop_timer_set_interval(fdloop_timer* timer, uint32_t interval_ms);
uint32_t fdloop_timer_get_interval(const fdloop_timer* timer);

// Runs the timers that have expired at now. Returns the milliseconds from now to the next expiry, at least 1,
// or 0 if there is no timer. Part of fdloop_run; must not be called from a timer callback.
uint32_t fdloop_timers_run(fdloop_t* loop, uint32_t now);

// Blocks the signal in the process's mask (before threads are started, so that they inherit it) and delivers
// it through the loop. SIGCHLD is reaped here: one call of the callback for each dead child. Returns the
// signalfd, which belongs to the loop, or a negative number.
int fdloop_register_signal(fdloop_t* loop, fdloop_signal_cb_t callback, int signo);

// Undoes that: unregisters and closes fd, unblocks the signal. Returns the result of sigprocmask.
int fdloop_unregister_signal(fdloop_t* loop, int fd, int signo);

// Attaches the one line parser of the process to fd: the callback gets each line of up to 1,023 characters,
// and the prompt is printed on standard output at once and after each line. A second call takes the parser
// over; the first descriptor's entry stays. The prompt (null: none) is kept as a pointer and must live on.
void fdloop_fd_register_lineparser(fdloop_t* loop, int fd, const char* prompt, fdloop_line_cb_t callback);

// The line parser on descriptor 0, with an end of the process (status 0) for a null line.
void fdloop_lineedit_init(fdloop_t* loop, const char* prompt, fdloop_line_cb_t callback);

#endif
