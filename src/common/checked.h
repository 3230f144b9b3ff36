// Allocation that cannot fail quietly, and the test for what must exist.
//
// Everything of the front end is allocated through checkedNew: the non-throwing form of new, and the
// end of the process where no memory is left. The source names itself by its base name, since that is
// what the log shows, "*** ASSERT in window at 120":
//
//     pGridLayout = checkedNew<QGridLayout>("window", __LINE__, this);
//     panelAssert(pCurrentScreen, "window", __LINE__);
//
// Any thread. Neither returns on failure: vx_panic logs at priority 1 and aborts.
#ifndef LUMENPANEL_COMMON_CHECKED_H
#define LUMENPANEL_COMMON_CHECKED_H

#include <new>
#include <utility>

// Ends the process with "*** ASSERT in %s at %d\n".
[[noreturn]] void panelAssertFailed(const char* source, int line);

// Ends the process unless the condition holds. A pointer that must exist is a condition as it stands.
inline void panelAssert(bool condition, const char* source, int line)
{
    if (!condition)
        panelAssertFailed(source, line);
}

// A new T(arguments...), never null; the caller owns it.
template <typename T, typename... Arguments>
T* checkedNew(const char* source, int line, Arguments&&... arguments)
{
    T* const object = new (std::nothrow) T(std::forward<Arguments>(arguments)...);
    panelAssert(object != nullptr, source, line);
    return object;
}

#endif
