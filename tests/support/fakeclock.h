// Stands in for the monotonic clock while it lives: time moves only when a test says so.
//
// One at a time, on one thread; create it before the loop whose timers it shall drive.
#ifndef TESTS_SUPPORT_FAKECLOCK_H
#define TESTS_SUPPORT_FAKECLOCK_H

#include "runtime/vx_time.h"

#include <cstdint>

class FakeClock {
public:
    explicit FakeClock(uint64_t milliseconds = 1000000) : real(vx_monotonic_clock)
    {
        value() = milliseconds;
        vx_monotonic_clock = read;
    }
    ~FakeClock() { vx_monotonic_clock = real; }
    FakeClock(const FakeClock&) = delete;
    FakeClock& operator=(const FakeClock&) = delete;

    void set(uint64_t milliseconds) { value() = milliseconds; }
    void advance(uint64_t milliseconds) { value() += milliseconds; }

private:
    static uint64_t& value()
    {
        static uint64_t milliseconds;
        return milliseconds;
    }
    static void read(vx_clock_value* now)
    {
        now->seconds = static_cast<long>(value() / 1000);
        now->nanoseconds = static_cast<long>(value() % 1000) * 1000000;
    }

    void (*real)(vx_clock_value* now);
};

#endif
