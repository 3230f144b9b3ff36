// Lets the allocations of the front end fail, which all take the non-throwing form of new. To be included
// by one source of a program: it defines that form for the whole of it.
//
// One thread at a time; meant for a child process that is to end by it.
#ifndef TESTS_SUPPORT_FAILINGNEW_H
#define TESTS_SUPPORT_FAILINGNEW_H

#include <cstddef>
#include <new>

// Allocations that are still met; -1: all.
static int grantedAllocations = -1;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (grantedAllocations == 0) {
        return nullptr;
    }
    if (grantedAllocations > 0) {
        --grantedAllocations;
    }
    return ::operator new(size);
}

#endif
