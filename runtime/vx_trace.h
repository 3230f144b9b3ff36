// Trace items: named groups of debug output, each with a switch and 26 flags, which the shell's command
// "trace" and environment variables set. A module that has one looks at its handle before it traces:
//
//     if (trace->state && trace->mask & 1) { ... } // flag "a"
//
// Items are added at start, before other threads run; the command writes state and mask as single words on
// the shell's thread, and other threads may read them.
#ifndef RUNTIME_VX_TRACE_H
#define RUNTIME_VX_TRACE_H

#include <stdint.h>

// The handle of an item. It lives to the end of the process.
struct vx_trace_t {
    uint32_t state; // 0 off, 1 on
    uint32_t mask;  // bit 0 flag "a", bit 25 flag "z"
};

enum { VX_TRACE_MAX_ITEMS = 30, VX_TRACE_NAME_SIZE = 8 };

// Adds an item, off and without flags. The name is cut at 7 characters. Returns its handle. One item more
// than VX_TRACE_MAX_ITEMS is an assertion.
vx_trace_t* vx_trace_init(const char* name);

// The same, on, with the mask that the environment gives it and a text about its flags, which is kept as a
// pointer and must live on (null: none).
vx_trace_t* vx_xtrace_init(const char* name, const char* help);

// The mask in the environment variable "TRACE_" and the name: 0 without one, all bits if its value begins
// with
// "*", else for each character bit (character - "A") modulo 32. Letters of either case give their flags, and
// other characters some bit or other.
uint32_t vx_trace_get_initial_mask(const char* name);

// A null handle is an assertion.
void vx_trace_set_mask(vx_trace_t* trace, uint32_t mask);
void vx_trace_start(vx_trace_t* trace);
void vx_trace_stop(vx_trace_t* trace);

#endif
