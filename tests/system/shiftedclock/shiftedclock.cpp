// Preloaded into a process, it moves that process's wall clock, and no other clock: the file that the
// environment variable SHIFTEDCLOCK_FILE names holds a number of seconds, 8 bytes as the machine has them,
// and whoever writes there sets the clock at that moment. Any thread; nothing blocks.
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

const volatile int64_t* shift = nullptr;

__attribute__((constructor)) void mapShift()
{
    const char* const name = getenv("SHIFTEDCLOCK_FILE");
    const int file = name ? open(name, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0)
        return;
    void* const map = mmap(nullptr, sizeof(int64_t), PROT_READ, MAP_SHARED, file, 0);
    if (map != MAP_FAILED)
        shift = static_cast<const int64_t*>(map);
    close(file);
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, struct timespec* now)
{
    const int result = int(syscall(SYS_clock_gettime, clock, now));
    if (result == 0 && shift && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        now->tv_sec += time_t(*shift);
    return result;
}

int gettimeofday(struct timeval* __restrict now, void* __restrict)
{
    struct timespec precise;
    const int result = clock_gettime(CLOCK_REALTIME, &precise);
    if (result == 0) {
        now->tv_sec = precise.tv_sec;
        now->tv_usec = suseconds_t(precise.tv_nsec / 1000);
    }
    return result;
}

time_t time(time_t* now)
{
    struct timespec precise;
    if (clock_gettime(CLOCK_REALTIME, &precise) != 0)
        return -1;
    if (now)
        *now = precise.tv_sec;
    return precise.tv_sec;
}
}
