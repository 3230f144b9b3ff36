// Clocks, waiting and calendar time.
#include "runtime/vx_time.h"
#include "support/fakeclock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <limits>
#include <sys/sysinfo.h>
#include <sys/time.h>

// Stands in for the C library's: no test may set the machine's clock.
static clockid_t set_clock;
static struct timespec set_value;
static int set_result;

extern "C" int clock_settime(clockid_t clock, const struct timespec* value)
{
    set_clock = clock;
    set_value = *value;
    if (set_result < 0) {
        errno = EPERM;
    }
    return set_result;
}

namespace {

long wall_seconds;
long wall_nanoseconds;

class WallClock {
public:
    WallClock(long seconds, long nanoseconds = 0)
    {
        set(seconds, nanoseconds);
        vx_wall_clock = [](vx_clock_value* now) {
            now->seconds = wall_seconds;
            now->nanoseconds = wall_nanoseconds;
        };
    }
    ~WallClock() { vx_wall_clock = real; }
    void set(long seconds, long nanoseconds = 0)
    {
        wall_seconds = seconds;
        wall_nanoseconds = nanoseconds;
    }

private:
    void (*real)(vx_clock_value*) = vx_wall_clock;
};

TEST(VxTime, WallClockInSecondsAndMilliseconds)
{
    time_t before = time(nullptr);
    time_t now = vx_time();
    EXPECT_GE(now, before);
    EXPECT_LE(now, time(nullptr));

    WallClock clock(1500000000, 999999999);
    EXPECT_EQ(vx_time(), 1500000000);
    time_t seconds;
    uint32_t milliseconds;
    vx_time_tvms(&seconds, &milliseconds);
    EXPECT_EQ(seconds, 1500000000);
    EXPECT_EQ(milliseconds, 999u);
}

TEST(VxTime, StimeSetsTheWallClock)
{
    set_result = 0;
    EXPECT_EQ(vx_stime(1500000000), 0);
    EXPECT_EQ(set_clock, CLOCK_REALTIME);
    EXPECT_EQ(set_value.tv_sec, 1500000000);
    EXPECT_EQ(set_value.tv_nsec, 0);
    set_result = -1;
    EXPECT_EQ(vx_stime(1), -1);
    EXPECT_EQ(errno, EPERM);
}

// One test for all of it, as the latch holds for the process.
TEST(VxTime, ValidFrom2015OnAndStaysTrueAfterTheClockHasBeenSetBack)
{
    WallClock clock(0);
    EXPECT_FALSE(vx_time_valid());
    clock.set(1420070399, 999999999);
    EXPECT_FALSE(vx_time_valid());
    clock.set(1420070400);
    EXPECT_TRUE(vx_time_valid());
    clock.set(0);
    EXPECT_TRUE(vx_time_valid());
}

TEST(VxTime, MonotonicClockIsThatOfTheSystem)
{
    struct timespec before, after;
    clock_gettime(CLOCK_MONOTONIC, &before);
    uint32_t ms = vx_time_ms();
    uint32_t us = vx_time_us();
    clock_gettime(CLOCK_MONOTONIC, &after);
    auto in_ms = [](const struct timespec& t) {
        return static_cast<uint32_t>(static_cast<uint64_t>(t.tv_sec) * 1000 +
                                     static_cast<uint64_t>(t.tv_nsec) / 1000000);
    };
    auto in_us = [](const struct timespec& t) {
        return static_cast<uint32_t>(static_cast<uint64_t>(t.tv_sec) * 1000000 +
                                     static_cast<uint64_t>(t.tv_nsec) / 1000);
    };
    EXPECT_LE(ms - in_ms(before), in_ms(after) - in_ms(before));
    EXPECT_LE(us - in_us(before), in_us(after) - in_us(before));
}

TEST(VxTime, CountersWrapAt32Bits)
{
    FakeClock clock(0x1'0000'0005ull);
    EXPECT_EQ(vx_time_ms(), 5u);
    EXPECT_EQ(vx_time_us(), static_cast<uint32_t>(0x1'0000'0005ull * 1000));
    EXPECT_EQ(vx_time_ms_elapsed(0xfffffff0u), 0x15u);
    EXPECT_EQ(vx_time_us_elapsed(vx_time_us() - 7), 7u);
}

TEST(VxTime, DelaysLastAtLeastThatLong)
{
    uint32_t start = vx_time_us();
    vx_time_ms_delay(3);
    EXPECT_GE(vx_time_us_elapsed(start), 3000u);
    start = vx_time_us();
    vx_time_us_delay(500);
    EXPECT_GE(vx_time_us_elapsed(start), 500u);
    vx_time_ms_delay(0);
    vx_time_us_delay(0);
}

TEST(VxTime, SleepIsNotShortenedBySignals)
{
    struct sigaction action = {}, before;
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &before);
    struct itimerval often = {{0, 5000}, {0, 5000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    uint32_t start = vx_time_us();
    vx_sleep_ms(40);
    uint32_t elapsed = vx_time_us_elapsed(start);
    struct itimerval never = {{0, 0}, {0, 0}};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_GE(elapsed, 40000u);
}

TEST(VxTime, UptimeIsThatOfTheSystem)
{
    struct sysinfo before, after;
    sysinfo(&before);
    uint32_t uptime = vx_uptime();
    sysinfo(&after);
    EXPECT_GE(uptime, static_cast<uint32_t>(before.uptime));
    EXPECT_LE(uptime, static_cast<uint32_t>(after.uptime));
}

TEST(VxTime, UtcCalendarTime)
{
    char text[32];
    EXPECT_EQ(vx_utc_strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", 1420070399), 19u);
    EXPECT_STREQ(text, "2014-12-31 23:59:59");
    EXPECT_EQ(vx_utc_strftime(text, 5, "%Y-%m-%d", 0), 0u);

    struct tm tm;
    EXPECT_EQ(vx_utc_time_to_tm(951782400, &tm), &tm); // 2000-02-29
    EXPECT_EQ(tm.tm_year, 100);
    EXPECT_EQ(tm.tm_mon, 1);
    EXPECT_EQ(tm.tm_mday, 29);
}

class Zone {
public:
    explicit Zone(const char* name)
    {
        const char* old = getenv("TZ");
        had = old != nullptr;
        before = old ? old : "";
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone()
    {
        if (had) {
            setenv("TZ", before.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

private:
    bool had;
    std::string before;
};

TEST(VxTime, TmToTimeIsTheInverseWhereTheZoneIsUtc)
{
    Zone utc("UTC0");
    struct tm tm;
    vx_utc_time_to_tm(1420070400, &tm);
    EXPECT_EQ(vx_utc_tm_to_time(&tm), 1420070400);
}

TEST(VxTime, TimeWithoutACalendarIsNoText)
{
    if (sizeof(time_t) < 8) {
        GTEST_SKIP() << "each number of this size is a time";
    }
    char text[32] = "old";
    struct tm tm;
    const time_t beyond = std::numeric_limits<time_t>::max();
    EXPECT_EQ(vx_utc_strftime(text, sizeof(text), "%Y", beyond), 0u);
    EXPECT_STREQ(text, "old");
    EXPECT_EQ(vx_utc_time_to_tm(beyond, &tm), nullptr);
}

// The kept quirk: it is mktime, which takes the fields as local time.
TEST(VxTime, TmToTimeTakesTheFieldsAsLocalTimeElsewhere)
{
    Zone east("XXX-2");
    struct tm tm;
    vx_utc_time_to_tm(1420070400, &tm);
    EXPECT_EQ(vx_utc_tm_to_time(&tm), 1420070400 - 7200);
}

} // namespace
