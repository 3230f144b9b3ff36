// The debug shell on descriptor 0 of a loop: one for the process, static.
//
// The thread that runs the loop alone. The handler of the descriptor blocks while a command runs.
#ifndef RUNTIME_FDLOOP_SHELL_H
#define RUNTIME_FDLOOP_SHELL_H

#include "runtime/fdloop.h"

#include <stddef.h>

struct cshell;

// Takes input of descriptor 0: length bytes, at least 1. Returns 0 to stay, anything else drops the
// descriptor from the loop.
typedef int (*fdloop_shell_input_t)(void* data, const char* bytes, size_t length);

// Where this process's group is not the foreground group of the terminal on descriptor 0 (a background job,
// no terminal): does nothing and returns null. Otherwise sets the terminal raw, until the process exits,
// registers the descriptor and prints the prompt of a shell of that name, which is returned and lives to the
// end of the process. The user's "exit" ends the process with status 0; at the end of the input the
// descriptor is dropped. A second call returns the same shell. Memory that can't be had is an assertion.
cshell* fdloop_shell_init(fdloop_t* loop, const char* name);

// Sends all further input to the function instead of the shell; null: to the shell again.
void fdloop_shell_hook_input(fdloop_shell_input_t function, void* data);

#endif
