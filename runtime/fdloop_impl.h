// The loop's records, for its own sources and its tests. Everybody else uses fdloop.h.
//
// All records are heap objects owned by the loop and touched on its thread only.
#ifndef RUNTIME_FDLOOP_IMPL_H
#define RUNTIME_FDLOOP_IMPL_H

#include "runtime/fdloop.h"

#include <stddef.h>
#include <sys/select.h>
#include <sys/types.h>

enum fdloop_class { FDLOOP_READ, FDLOOP_WRITE, FDLOOP_EXCEPT, FDLOOP_CLASSES };

struct fdloop_fd_entry {
    fdloop_fd_entry* next;
    uint8_t fd_class; // enum fdloop_class
    uint8_t enabled;
    uint8_t deleted; // freed in the sweep after the pass, never called again
    int16_t fd;
    fdloop_fd_handler_t handler;
    void* data;
};

struct fdloop_timer {
    uint32_t interval; // ms
    uint32_t expiry;   // ms, on the clock of fdloop_time_ms
    fdloop_timer* next;
    fdloop_timer_cb_t callback;
    void* data;
    uint8_t deleted;
};

struct fdloop_idler {
    fdloop_idler* next;
    fdloop_idler_cb_t function;
    void* data;
};

struct fdloop_t {
    int32_t entry_count;
    int32_t class_count[FDLOOP_CLASSES];
    fd_set class_set[FDLOOP_CLASSES];
    fdloop_fd_entry* fd_head; // in order of registration
    fdloop_fd_entry* fd_tail;
    fdloop_timer* timers;     // earliest first
    fdloop_timer* new_timers; // added during timer dispatch, latest first
    fdloop_idler* idler_head;
    fdloop_idler* idler_tail;
    uint32_t now; // ms, at the start of the turn
    uint8_t in_fd_dispatch;
    uint8_t fd_delete_pending;
    uint8_t in_timer_dispatch;
    uint8_t timer_delete_pending;
    uint8_t debug_level;
};

// The line parser of the process.
struct fdloop_line_parser {
    char buffer[1024];
    size_t size;  // of the buffer
    size_t fill;  // write position
    bool discard; // up to the next line feed
    ssize_t (*read_function)(int fd, void* buffer, size_t size);
    void (*line_function)(void* data, char* line);
    void* data;
};

// Callback of fdloop_lineedit_init: ends the process at a null line.
void fdloop_lineedit_line(char* line);

#endif
