// A loop for a test. Loops live to the end of the process; this keeps them reachable, so that the leak
// checker sees what a test really loses.
#ifndef TESTS_SUPPORT_KEPTLOOP_H
#define TESTS_SUPPORT_KEPTLOOP_H

#include "runtime/fdloop.h"

#include <vector>

inline fdloop_t* keptLoop()
{
    static std::vector<fdloop_t*>* all = new std::vector<fdloop_t*>;
    all->push_back(fdloop_init());
    return all->back();
}

#endif
