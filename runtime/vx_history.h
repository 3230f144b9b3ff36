// The lines that were typed before: a ring of lines of a fixed size, and a position for walking through it.
//
// One thread at a time for each object. Nothing blocks or logs.
#ifndef RUNTIME_VX_HISTORY_H
#define RUNTIME_VX_HISTORY_H

#include <stddef.h>

struct vx_history {
    char* text;       // lines * line_size bytes; a line that was never set is empty
    size_t lines;     // at least 1
    size_t line_size; // bytes of a line with its NUL, at least 1
    size_t browse;    // 0 the newest line, 1 the one before; lines when not browsing
    size_t newest;    // index of the newest line
};

// An empty ring. Returns 0, or -1 if there is no memory. vx_history_fini frees what it holds.
int vx_history_init(vx_history* history, size_t lines, size_t line_size);
void vx_history_fini(vx_history* history);

// Makes a copy of the line (cut to the line's size) the newest one, unless it is equal to the newest one
// already, and ends the browsing.
void vx_history_add(vx_history* history, const char* line);

// Ends the browsing.
void vx_history_reset(vx_history* history);

// The next older line, or null at the oldest one that isn't empty. The text belongs to the ring.
const char* vx_history_up(vx_history* history);

// The next newer line; an empty text past the newest, which ends the browsing; null when not browsing.
const char* vx_history_down(vx_history* history);

#endif
