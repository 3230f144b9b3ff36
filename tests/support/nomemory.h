// While it lives the runtime gets no memory on this thread, or none from its n-th wish on. Other threads,
// such as the server's, are not concerned: the gate is put up before there are any, and each has its own
// count.
#ifndef TESTS_SUPPORT_NOMEMORY_H
#define TESTS_SUPPORT_NOMEMORY_H

#include "runtime/util.h"

#include <cstdlib>

class NoMemory {
public:
    // The first `granted` wishes are still met.
    explicit NoMemory(int granted = 0) { left = granted; }
    ~NoMemory() { left = Unlimited; }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

    static void* gate(size_t count, size_t size)
    {
        if (left == 0)
            return nullptr;
        left -= left != Unlimited;
        return calloc(count, size);
    }

private:
    static constexpr int Unlimited = -1;
    static inline thread_local int left = Unlimited;
    static inline const bool installed = (vx_calloc = gate, true);
};

#endif
