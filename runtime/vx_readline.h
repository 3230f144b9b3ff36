// The line editor of the shell: bytes of a terminal in, one at a time, finished lines out, with history and
// completion.
//
// One thread at a time for each object. Nothing blocks but the output and completion functions.
#ifndef RUNTIME_VX_READLINE_H
#define RUNTIME_VX_READLINE_H

#include "runtime/vt100.h"

#include <stddef.h>

struct vx_readline;

// Results of a completion function.
enum vx_completion {
    VX_COMPLETION_NONE = 0,  // nothing happens
    VX_COMPLETION_LIST = 1,  // several candidates: the function has printed them and the prompt
    VX_COMPLETION_UNIQUE = 2 // one: the function has appended the rest of it to the line
};

// Called at a Tab with a copy of the line in a buffer of size bytes, whose end it may append to: what is
// appended goes into the line (at its end), after LIST as well. UNIQUE adds a blank.
typedef int (*vx_readline_complete_t)(void* data, char* line, size_t size);

// Makes an editor that keeps so many old lines (at least 1) and whose lines have up to line_size - 1
// characters (line_size is at least 1). complete may be null. Null if there is no memory. vx_readline_close
// frees it; null does nothing.
vx_readline* vx_readline_open(size_t history_lines, size_t line_size, vx_readline_complete_t complete,
                              void* complete_data, vt100_output_t output, void* output_data);
void vx_readline_close(vx_readline* readline);

// Takes one byte, of any value, with its echo. Returns a finished line, which is valid until the next call,
// or null. Control-D (4) in an empty line returns "exit".
const char* vx_readline_char(vx_readline* readline, unsigned char byte);

// Shows the line that is being typed again, the cursor where it was: behind a prompt that has been printed
// anew because something else came in between.
void vx_readline_redraw(const vx_readline* readline);

#endif
