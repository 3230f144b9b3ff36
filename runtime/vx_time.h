// Wall clock, monotonic clock, waiting, and UTC calendar time.
//
// Any thread. The delay and sleep functions block, nothing else does. The 32-bit counters wrap (milliseconds
// after 49.7 days, microseconds after 71.6 minutes): compare only differences.
#ifndef RUNTIME_VX_TIME_H
#define RUNTIME_VX_TIME_H

#include <stddef.h>
#include <stdint.h>
#include <time.h>

// Wall clock in seconds since 1970.
time_t vx_time(void);

// Wall clock in seconds and milliseconds (0 to 999). Neither pointer may be null.
void vx_time_tvms(time_t* seconds, uint32_t* milliseconds);

// Sets the wall clock. Returns 0, or -1 with errno (EPERM without the right to do so).
int vx_stime(time_t seconds);

// True once the wall clock has shown 1420070400 (the start of 2015) or later in some call of this function.
// It latches: a clock that goes back later stays valid.
bool vx_time_valid(void);

// Monotonic clock in milliseconds and microseconds, truncated to 32 bits.
uint32_t vx_time_ms(void);
uint32_t vx_time_us(void);

// Now minus start, in 32-bit wrapping arithmetic.
uint32_t vx_time_ms_elapsed(uint32_t start);
uint32_t vx_time_us_elapsed(uint32_t start);

// Busy wait of at least this long; at most 2^32 - 2 units.
void vx_time_ms_delay(uint32_t milliseconds);
void vx_time_us_delay(uint32_t microseconds);

// Seconds since the machine started.
uint32_t vx_uptime(void);

// Sleeps; signals don't shorten it.
void vx_sleep_ms(uint32_t milliseconds);

// strftime of a UTC time. Returns the length without the NUL, 0 if it did not fit.
__attribute__((format(strftime, 3, 0))) size_t vx_utc_strftime(char* text, size_t size, const char* format,
                                                               time_t seconds);

// gmtime_r. Returns tm.
struct tm* vx_utc_time_to_tm(time_t seconds, struct tm* tm);

// mktime, which takes the fields as local time: the inverse of the above only where the zone is UTC, as on
// the terminal. Normalises tm. Returns -1 if the time can't be told.
time_t vx_utc_tm_to_time(struct tm* tm);

// For tests: where the clocks come from. Replaced, everything above and all users of it (the loop's timers,
// the keep-alive) see another time. Set them only while no other thread reads a clock.
struct vx_clock_value {
    long seconds;
    long nanoseconds; // 0 to 999999999
};
extern void (*vx_monotonic_clock)(vx_clock_value* now);
extern void (*vx_wall_clock)(vx_clock_value* now);

#endif
