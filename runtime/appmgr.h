// Keep-alive towards the application manager, the process that started this one.
//
// The manager's pid is in the environment variable APPMGR_PID. Each SIGUSR2 from the manager is a question;
// as long as the loop's thread has shown life within the last 23 seconds, SIGUSR2 goes back. Otherwise the
// command in APPMGR_CLIENT_EXIT_CMD is run and the process panics. Without APPMGR_PID nothing is asked or
// answered.
//
// The slot is stamped by the thread of the loop; the question is answered in a signal handler on any thread.
#ifndef RUNTIME_APPMGR_H
#define RUNTIME_APPMGR_H

#include <stdint.h>

struct fdloop_t;

// The sign of life of one thread. One exists in the process ("main" in the log); it is never freed.
struct appmgr_alive_t;

// Tells the manager that this process is up, and answers it from now on. Called from main, before threads are
// started. A value of APPMGR_PID below 1 ends the process with status 2; a second call only logs.
void appmgr_signal(void);

// Takes the slot, with a dead time of 3,000 ms and stamped now. Null if it is taken already.
appmgr_alive_t* appmgr_alive_alloc(void);

// Sets the dead time in milliseconds, 0 meaning 3,000, and stamps the slot.
void appmgr_set_dead_time(appmgr_alive_t* slot, uint32_t milliseconds);

// Stamps the slot with the time. Any thread, safe in signal handlers.
void appmgr_alive_signal(appmgr_alive_t* slot);

// 0: no slot in use. 1: the stamp is at most the dead time + 20,000 ms old. -1: it is older, which is logged.
int appmgr_alive_check(void);

// Takes the slot and adds a timer of 20,000 ms to the loop that stamps it for ever. A slot that is taken
// already (-1), or a timer that can't be had (-2), panics with "alive_fdloop_timer_register failed (%d)".
void appmgr_alive_fdloop_register(fdloop_t* loop);

// Splits a command line in place at blanks; a single or double quotation mark at the start of a field makes
// it reach to the next such mark, or to the end. At most max fields are taken, the rest is left. fields needs
// room for max + 1 pointers, the last of which becomes null. Returns the number of fields.
int appmgr_split_command(char* text, char** fields, int max);

// Runs the command in a child process with an empty environment and waits for it. The first field is the path
// of the program; up to 63 fields are taken. A null text does nothing.
void appmgr_run_exit_command(char* text);

#endif
