// The little things under everything else of the runtime: the memory it asks for and source names.
//
// Any thread. Nothing here blocks or logs.
#ifndef RUNTIME_UTIL_H
#define RUNTIME_UTIL_H

#include <stddef.h>

// Where the runtime gets its zeroed memory: calloc. Tests put a function here that fails on purpose; set it
// only while no other thread allocates. What it returns is freed with free().
extern void* (*vx_calloc)(size_t count, size_t size);

// Copies the base name of a source path, without directory and suffix ("a/b/fdloop.cpp" gives "fdloop"), cut
// to the size of the buffer. size is at least 1. Returns name. Safe in signal handlers.
char* vx_source_name(const char* path, char* name, size_t size);

#endif
