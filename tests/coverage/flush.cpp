// Saves the counts of a coverage build when a process ends by _exit or abort: the display does, and so does
// each child in which a test waits for a panic. The linker leads both names here (--wrap), in coverage builds
// only. Counts of a process that another one kills are lost.
//
// Saving opens files and allocates, which a signal handler must not do; a coverage build does it anyway.
// Any thread.
#include <sys/resource.h>

extern "C" {
void __gcov_dump();
void __gcov_reset();
void __real__exit(int status) __attribute__((noreturn));
void __real_abort() __attribute__((noreturn));
void __wrap__exit(int status) __attribute__((noreturn));
void __wrap_abort() __attribute__((noreturn));
}

// A test may have taken the descriptors away.
static void allow_files()
{
    struct rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

// Reset behind the dump: abort ends in a handler that ends by _exit, and what was saved must not count twice.
static void save_counts()
{
    allow_files();
    __gcov_dump();
    __gcov_reset();
}

void __wrap__exit(int status)
{
    save_counts();
    __real__exit(status);
}

void __wrap_abort()
{
    save_counts();
    __real_abort();
}
