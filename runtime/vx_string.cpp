// Bounded string functions, see the header. Any thread.
#include "runtime/vx_string.h"

#include <stdio.h>
#include <string.h>

size_t vx_strlcpy(char* destination, const char* source, size_t size)
{
    size_t length = strlen(source);
    if (size != 0) {
        size_t copied = length < size ? length : size - 1;
        memcpy(destination, source, copied);
        destination[copied] = '\0';
    }
    return length;
}

size_t vx_strlcat(char* destination, const char* source, size_t size)
{
    // A destination without a NUL in its size is full: nothing is appended and nothing written.
    size_t used = size != 0 ? strnlen(destination, size) : 0;
    return used + vx_strlcpy(destination + used, source, size - used);
}

int vx_snprintf(char* buffer, size_t size, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    int length = vx_vsnprintf(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

int vx_vsnprintf(char* buffer, size_t size, const char* format, va_list arguments)
{
    int length = vsnprintf(buffer, size, format, arguments);
    if (size != 0) {
        if (length < 0) {
            buffer[0] = '\0';
        }
        buffer[size - 1] = '\0'; // older C libraries leave a cut text without an end
    }
    return length;
}
