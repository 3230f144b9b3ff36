// Saves the counts of a coverage build when a process ends by _exit or abort: the display does, and so does
// each child in which a test waits for a panic. The linker leads both names here (--wrap), in coverage builds
// only. Counts of a process that another one kills are lost.
//
// Saving opens files and allocates, which a signal handler must not do; a coverage build does it anyway.
// Where the signal met a thread in the midst of allocating it would wait for ever: it is given up then, and
// the counts of that process are lost. Any thread.
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

extern "C" {
void __gcov_dump();
void __gcov_reset();
void __real__exit(int status) __attribute__((noreturn));
void __real_abort() __attribute__((noreturn));
void __wrap__exit(int status) __attribute__((noreturn));
void __wrap_abort() __attribute__((noreturn));
}

namespace {

const unsigned PATIENCE = 10; // seconds

volatile bool aborts = false;
volatile int status_of_end = 0;

void give_up(int)
{
    if (aborts) {
        __real_abort();
    }
    __real__exit(status_of_end);
}

// A test may have taken the descriptors away.
void allow_files()
{
    struct rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

// Reset behind the dump: abort ends in a handler that ends by _exit, and what was saved must not count twice.
void save_counts()
{
    allow_files();
    sigset_t own;
    sigemptyset(&own);
    sigaddset(&own, SIGALRM);
    signal(SIGALRM, give_up);
    pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
    alarm(PATIENCE);
    __gcov_dump();
    __gcov_reset();
    alarm(0);
}

} // namespace

void __wrap__exit(int status)
{
    aborts = false;
    status_of_end = status;
    save_counts();
    __real__exit(status);
}

void __wrap_abort()
{
    aborts = true;
    save_counts();
    __real_abort();
}
