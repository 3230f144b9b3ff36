// Memory and source names for the rest of the runtime. Any thread.
#include "runtime/util.h"

#include <stdlib.h>
#include <string.h>

void* (*vx_calloc)(size_t count, size_t size) = calloc;

char* vx_source_name(const char* path, char* name, size_t size)
{
    const char* slash = strrchr(path, '/');
    const char* base = slash ? slash + 1 : path;
    const char* dot = strrchr(base, '.');
    size_t length = dot ? static_cast<size_t>(dot - base) : strlen(base);
    if (length > size - 1) {
        length = size - 1;
    }
    memcpy(name, base, length);
    name[length] = '\0';
    return name;
}
