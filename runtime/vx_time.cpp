// Clocks and waiting. Keeps no state but the latch of vx_time_valid. Any thread.
#include "runtime/vx_time.h"

#include <atomic>
#include <errno.h>
#include <sys/syscall.h>
#include <sys/sysinfo.h>
#include <unistd.h>

namespace {

const time_t START_OF_2015 = 1420070400;

// The raw system call: the C library's function may go through the vDSO, or through a wrapper of another
// width of time. The value's two longs are the layout that this call has on every machine.
void read_monotonic(vx_clock_value* now)
{
    syscall(SYS_clock_gettime, CLOCK_MONOTONIC, now);
}

void read_wall(vx_clock_value* now)
{
    struct timespec value;
    clock_gettime(CLOCK_REALTIME, &value);
    now->seconds = static_cast<long>(value.tv_sec);
    now->nanoseconds = value.tv_nsec;
}

} // namespace

void (*vx_monotonic_clock)(vx_clock_value* now) = read_monotonic;
void (*vx_wall_clock)(vx_clock_value* now) = read_wall;

time_t vx_time(void)
{
    vx_clock_value now;
    vx_wall_clock(&now);
    return now.seconds;
}

void vx_time_tvms(time_t* seconds, uint32_t* milliseconds)
{
    vx_clock_value now;
    vx_wall_clock(&now);
    *seconds = now.seconds;
    *milliseconds = static_cast<uint32_t>(now.nanoseconds / 1000000);
}

int vx_stime(time_t seconds)
{
    struct timespec value = {seconds, 0};
    return clock_settime(CLOCK_REALTIME, &value);
}

bool vx_time_valid(void)
{
    static std::atomic<bool> seen(false);
    if (!seen.load(std::memory_order_relaxed) && vx_time() >= START_OF_2015) {
        seen.store(true, std::memory_order_relaxed);
    }
    return seen.load(std::memory_order_relaxed);
}

uint32_t vx_time_ms(void)
{
    vx_clock_value now;
    vx_monotonic_clock(&now);
    return static_cast<uint32_t>(now.seconds) * 1000u + static_cast<uint32_t>(now.nanoseconds) / 1000000u;
}

uint32_t vx_time_us(void)
{
    vx_clock_value now;
    vx_monotonic_clock(&now);
    return static_cast<uint32_t>(now.seconds) * 1000000u + static_cast<uint32_t>(now.nanoseconds) / 1000u;
}

uint32_t vx_time_ms_elapsed(uint32_t start)
{
    return vx_time_ms() - start;
}

uint32_t vx_time_us_elapsed(uint32_t start)
{
    return vx_time_us() - start;
}

// The clocks count whole units, so a wait of n units ends when more than n have begun: it is never shorter.
void vx_time_ms_delay(uint32_t milliseconds)
{
    uint32_t start = vx_time_ms();
    while (milliseconds != 0 && vx_time_ms_elapsed(start) <= milliseconds) {
    }
}

void vx_time_us_delay(uint32_t microseconds)
{
    uint32_t start = vx_time_us();
    while (microseconds != 0 && vx_time_us_elapsed(start) <= microseconds) {
    }
}

uint32_t vx_uptime(void)
{
    struct sysinfo info;
    return sysinfo(&info) == 0 ? static_cast<uint32_t>(info.uptime) : 0;
}

void vx_sleep_ms(uint32_t milliseconds)
{
    struct timespec remaining;
    remaining.tv_sec = static_cast<time_t>(milliseconds / 1000u);
    remaining.tv_nsec = static_cast<long>(milliseconds % 1000u) * 1000000;
    while (nanosleep(&remaining, &remaining) < 0 && errno == EINTR) {
    }
}

// The caller's literal was checked at the call, by the attribute in the header.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
size_t vx_utc_strftime(char* text, size_t size, const char* format, time_t seconds)
{
    struct tm tm;
    return gmtime_r(&seconds, &tm) ? strftime(text, size, format, &tm) : 0;
}
#pragma GCC diagnostic pop

struct tm* vx_utc_time_to_tm(time_t seconds, struct tm* tm)
{
    return gmtime_r(&seconds, tm);
}

time_t vx_utc_tm_to_time(struct tm* tm)
{
    return mktime(tm);
}
