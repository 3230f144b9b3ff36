// The one assertion of the runtime: a condition that doesn't hold ends the process by
// vx_panic("*** ASSERT in %s at %d\n", source name, line). It stays in release builds.
//
// The source name is the file's base name without suffix. A source that belongs to another one's name says so
// before the first include:
//     #define VX_ASSERT_SOURCE "fdloop"
#ifndef RUNTIME_VX_ASSERT_H
#define RUNTIME_VX_ASSERT_H

#ifndef VX_ASSERT_SOURCE
#define VX_ASSERT_SOURCE __FILE__
#endif

// Never returns. source is a path or a plain name; directory and suffix are taken off it.
__attribute__((noreturn)) void vx_assert_failed(const char* source, int line);

#define VX_ASSERT(condition)                                                                                 \
    ((condition) ? static_cast<void>(0) : vx_assert_failed(VX_ASSERT_SOURCE, __LINE__))

#endif
