// Bounded string functions: the result is always terminated if there is room for a NUL at all.
//
// Any thread; nothing blocks. No argument may be null, but for the buffer of a size of 0.
#ifndef RUNTIME_VX_STRING_H
#define RUNTIME_VX_STRING_H

#include <stdarg.h>
#include <stddef.h>

// The BSD functions strlcpy and strlcat: size is that of the whole destination. They return the length of the
// string they tried to make; a result of size or more means that it was cut.
size_t vx_strlcpy(char* destination, const char* source, size_t size);
size_t vx_strlcat(char* destination, const char* source, size_t size);

// snprintf and vsnprintf. They return the length the text would have had, or a negative number.
__attribute__((format(printf, 3, 4))) int vx_snprintf(char* buffer, size_t size, const char* format, ...);
__attribute__((format(printf, 3, 0))) int vx_vsnprintf(char* buffer, size_t size, const char* format,
                                                       va_list arguments);

#endif
