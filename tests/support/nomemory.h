// While it lives the runtime gets no memory, or none from its n-th wish on.
//
// One at a time, on one thread.
#ifndef TESTS_SUPPORT_NOMEMORY_H
#define TESTS_SUPPORT_NOMEMORY_H

#include "runtime/util.h"

#include <cstdlib>

class NoMemory {
public:
    // The first `granted` wishes are still met.
    explicit NoMemory(int granted = 0)
    {
        left() = granted;
        vx_calloc = refuse;
    }
    ~NoMemory() { vx_calloc = calloc; }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

private:
    static int& left()
    {
        static int count;
        return count;
    }
    static void* refuse(size_t count, size_t size) { return left()-- > 0 ? calloc(count, size) : nullptr; }
};

#endif
