// The loop's timers: order, rescheduling, what callbacks may do, the wrap of the clock, the trace.
#include "runtime/fdloop.h"
#include "runtime/fdloop_impl.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/fakeclock.h"
#include "support/keptloop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <string>
#include <syslog.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FdloopTimer : public testing::Test {
protected:
    FakeClock clock{1000};
    fdloop_t* loop = keptLoop();
    std::list<std::function<int()>> callbacks;
    std::vector<std::string> calls;

    fdloop_timer* add(uint32_t interval, std::function<int()> function)
    {
        callbacks.push_back(std::move(function));
        return fdloop_timer_add(
            loop, interval, [](void* data) { return (*static_cast<std::function<int()>*>(data))(); },
            &callbacks.back());
    }
    fdloop_timer* add(uint32_t interval, const std::string& name, int result)
    {
        return add(interval, [this, name, result] {
            calls.push_back(name);
            return result;
        });
    }
    std::vector<std::string> callsAt(uint32_t now)
    {
        calls.clear();
        fdloop_timers_run(loop, now);
        return calls;
    }
    void TearDown() override
    {
        syslogtap_stop();
        while (loop->timers) {
            fdloop_timer_del(loop, loop->timers);
        }
        EXPECT_EQ(loop->new_timers, nullptr);
    }
};

TEST_F(FdloopTimer, NoTimersGive0)
{
    EXPECT_EQ(fdloop_timers_run(loop, 5), 0u);
}

TEST_F(FdloopTimer, ResultIsTheTimeToTheNextExpiry)
{
    add(100, "a", 1);
    add(40, "b", 0);
    EXPECT_EQ(fdloop_timers_run(loop, 1000), 40u);
    EXPECT_EQ(fdloop_timers_run(loop, 1039), 1u);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(fdloop_timers_run(loop, 1040), 60u); // b fires and goes
    EXPECT_EQ(fdloop_timers_run(loop, 1100), 100u);
    EXPECT_THAT(calls, ElementsAre("b", "a"));
}

TEST_F(FdloopTimer, ExpiryCountsFromTheClockNotFromTheCachedTime)
{
    clock.advance(500); // loop->now is still 1000
    fdloop_timer* timer = add(10, "a", 1);
    EXPECT_EQ(timer->expiry, 1510u);
}

TEST_F(FdloopTimer, ZeroResultRemovesNonZeroRepeatsAtPreviousExpiryPlusInterval)
{
    add(10, "once", 0);
    fdloop_timer* repeated = add(10, "repeated", 1);
    fdloop_timers_run(loop, 1017); // late by 7
    EXPECT_THAT(calls, ElementsAre("once", "repeated"));
    EXPECT_EQ(loop->timers, repeated);
    EXPECT_EQ(repeated->next, nullptr);
    EXPECT_EQ(repeated->expiry, 1020u);
    EXPECT_THAT(callsAt(1019), IsEmpty());
    EXPECT_THAT(callsAt(1020), ElementsAre("repeated"));
}

TEST_F(FdloopTimer, LastTimerRemovedGives0)
{
    add(10, "once", 0);
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 0u);
    EXPECT_EQ(loop->timers, nullptr);
}

TEST_F(FdloopTimer, Interval100DelayedBy350CatchesUpInThreeFurtherTurnsOf1Millisecond)
{
    add(100, "tick", 1);
    uint32_t now = 1100 + 350;
    EXPECT_EQ(fdloop_timers_run(loop, now), 1u);
    EXPECT_EQ(calls.size(), 1u);
    EXPECT_EQ(fdloop_timers_run(loop, ++now), 1u);
    EXPECT_EQ(calls.size(), 2u);
    EXPECT_EQ(fdloop_timers_run(loop, ++now), 1u);
    EXPECT_EQ(calls.size(), 3u);
    ++now;
    EXPECT_EQ(fdloop_timers_run(loop, now), 1500u - now); // caught up
    EXPECT_EQ(calls.size(), 4u);
    EXPECT_THAT(callsAt(++now), IsEmpty());
}

TEST_F(FdloopTimer, AddedDuringDispatchWithInterval0FiresInTheNextTurn)
{
    add(10, [this] {
        add(0, "new", 0);
        return 0;
    });
    clock.set(1010);
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 1u);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(loop->new_timers, nullptr);
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 0u);
    EXPECT_THAT(calls, ElementsAre("new"));
}

TEST_F(FdloopTimer, AddedDuringDispatchIsSortedAmongTheOthers)
{
    add(10, [this] {
        add(20, "new", 0);
        return 1;
    });
    add(15, "b", 0);
    add(35, "c", 0);
    clock.set(1010);
    fdloop_timers_run(loop, 1010);
    EXPECT_THAT(callsAt(1040), ElementsAre("b", "new", "c"));
}

// Those added in one dispatch are sorted in latest first.
TEST_F(FdloopTimer, AddedDuringDispatchWithEqualExpiryFireInReverse)
{
    add(10, [this] {
        add(5, "first", 0);
        add(5, "second", 0);
        return 0;
    });
    clock.set(1010);
    fdloop_timers_run(loop, 1010);
    EXPECT_THAT(callsAt(1015), ElementsAre("second", "first"));
}

TEST_F(FdloopTimer, AddedAndDeletedDuringDispatchNeverFires)
{
    add(10, [this] {
        fdloop_timer_del(loop, add(0, "new", 0));
        return 0;
    });
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 0u);
    EXPECT_EQ(loop->timers, nullptr);
    EXPECT_THAT(callsAt(1020), IsEmpty());
}

// The freed timer is seen in the trace; the address sanitizer sees the rest.
size_t freed(const fdloop_timer* timer)
{
    char text[40];
    snprintf(text, sizeof(text), "_timer_del %p: ", static_cast<const void*>(timer));
    size_t found = 0;
    for (const syslogtap::Line& line : syslogtap::lines()) {
        found += line.text.compare(0, std::string(text).size(), text) == 0;
    }
    return found;
}

TEST_F(FdloopTimer, ExpiredTimerDeletedByAnEarlierCallbackIsNotCalledAndFreedInTheSameRun)
{
    fdloop_debug(loop, 0x20001);
    fdloop_timer* victim = nullptr;
    add(10, [&] {
        calls.push_back("killer");
        fdloop_timer_del(loop, victim);
        return 1;
    });
    victim = add(11, "victim", 1);
    syslogtap_start();
    EXPECT_EQ(fdloop_timers_run(loop, 1012), 8u); // the killer again at 1020
    EXPECT_THAT(calls, ElementsAre("killer"));
    EXPECT_EQ(freed(victim), 1u);
    EXPECT_EQ(loop->timers->next, nullptr);
}

TEST_F(FdloopTimer, UnexpiredTimerDeletedDuringDispatchIsFreedInTheSameRun)
{
    fdloop_debug(loop, 0x20001);
    fdloop_timer* victim = nullptr;
    add(10, [&] {
        fdloop_timer_del(loop, victim);
        return 0;
    });
    add(50, "middle", 1);
    victim = add(100, "victim", 1);
    syslogtap_start();
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 40u);
    EXPECT_EQ(freed(victim), 1u);
    EXPECT_THAT(callsAt(1200), ElementsAre("middle"));
}

TEST_F(FdloopTimer, FirstUnexpiredTimerDeletedDuringDispatchMovesTheHead)
{
    fdloop_timer* victim = nullptr;
    add(10, [&] {
        fdloop_timer_del(loop, victim);
        return 1;
    });
    victim = add(100, "victim", 1);
    fdloop_timer* rest = add(200, "rest", 1);
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 10u);
    EXPECT_EQ(loop->timers->next, rest);
}

TEST_F(FdloopTimer, TimerThatHasRunAndIsDeletedByALaterCallbackIsNotRescheduled)
{
    fdloop_timer* first = add(10, "first", 1);
    fdloop_timer* second = add(11, "second", 1);
    fdloop_timer* third = add(12, [&] {
        fdloop_timer_del(loop, second); // the last one to run again so far
        return 0;
    });
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(fdloop_timers_run(loop, 1012), 8u);
    EXPECT_EQ(loop->timers, first);
    EXPECT_EQ(first->next, nullptr);
    EXPECT_EQ(first->expiry, 1020u);
}

TEST_F(FdloopTimer, AllTimersDeletedDuringDispatchLeaveAnEmptyList)
{
    fdloop_timer* timers[3];
    auto killAll = [&] {
        for (fdloop_timer* timer : timers) {
            fdloop_timer_del(loop, timer);
        }
        return 1;
    };
    timers[0] = add(10, "a", 1);
    timers[1] = add(11, killAll);
    timers[2] = add(99, "c", 1);
    EXPECT_EQ(fdloop_timers_run(loop, 1020), 0u);
    EXPECT_EQ(loop->timers, nullptr);
    EXPECT_THAT(calls, ElementsAre("a"));
}

TEST_F(FdloopTimer, TimerMayDeleteItselfAndReturnNonZero)
{
    fdloop_timer* self = nullptr;
    self = add(10, [&] {
        fdloop_timer_del(loop, self);
        return 1;
    });
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 0u);
    EXPECT_EQ(loop->timers, nullptr);
}

// How a callback runs again after a delay measured from now: a new timer, and 0.
TEST_F(FdloopTimer, CallbackThatAddsItselfAnewCountsFromNow)
{
    add(100, [this] {
        calls.push_back("poll");
        add(100, "again", 0);
        return 0;
    });
    clock.set(1130); // late by 30
    EXPECT_EQ(fdloop_timers_run(loop, 1130), 100u);
    EXPECT_THAT(callsAt(1229), IsEmpty());
    EXPECT_THAT(callsAt(1230), ElementsAre("again"));
}

TEST_F(FdloopTimer, EqualExpiryFiresInOrderOfInsertion)
{
    add(10, "a", 1);
    add(10, "b", 1);
    add(5, "early", 0);
    add(10, "c", 1);
    EXPECT_THAT(callsAt(1010), ElementsAre("early", "a", "b", "c"));
    EXPECT_THAT(callsAt(1020), ElementsAre("a", "b", "c")); // rescheduling keeps the order
}

TEST_F(FdloopTimer, DeletingOutsideDispatch)
{
    fdloop_timer* a = add(10, "a", 1);
    fdloop_timer* b = add(20, "b", 1);
    fdloop_timer* c = add(30, "c", 1);
    fdloop_timer_del(loop, b);
    EXPECT_EQ(a->next, c);
    fdloop_timer_del(loop, a);
    EXPECT_EQ(loop->timers, c);
    fdloop_timer_del(loop, c);
    EXPECT_EQ(loop->timers, nullptr);
}

TEST_F(FdloopTimer, DeletingNullOrWhatIsNotPendingDoesNothingAndLogsNothing)
{
    fdloop_debug(loop, 0x200ff);
    fdloop_timer* pending = add(10, "a", 0);
    fdloop_timer stranger = {};
    syslogtap_start();
    fdloop_timer_del(loop, nullptr);
    fdloop_timer_del(loop, &stranger);
    EXPECT_EQ(syslogtap_count(), 0u);
    EXPECT_EQ(loop->timers, pending);
    syslogtap_stop();
    add(5, [this] {
        syslogtap_start();
        fdloop_timer_del(loop, nullptr);
        EXPECT_EQ(syslogtap_count(), 0u);
        syslogtap_stop();
        EXPECT_EQ(loop->timer_delete_pending, 0);
        return 1;
    });
    fdloop_timers_run(loop, 1005);
}

TEST_F(FdloopTimer, IntervalCountsFromTheNextRescheduling)
{
    fdloop_timer* timer = add(100, "a", 1);
    EXPECT_EQ(fdloop_timer_get_interval(timer), 100u);
    fdloop_timer_set_interval(timer, 30);
    EXPECT_EQ(fdloop_timer_get_interval(timer), 30u);
    EXPECT_EQ(timer->expiry, 1100u);
    fdloop_timers_run(loop, 1100);
    EXPECT_EQ(timer->expiry, 1130u);
}

TEST_F(FdloopTimer, TimersWorkAcrossTheWrapOfTheClock)
{
    clock.set(0xffffffffull - 49); // 50 ms before the wrap
    add(200, "after", 0);          // expires at 150 behind it
    add(20, "before", 0);          // expires before it
    add(50, "at the wrap", 1);     // expires at 0
    EXPECT_EQ(fdloop_timers_run(loop, 0xffffffffu - 49), 20u);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(callsAt(0xffffffffu - 29), ElementsAre("before"));
    EXPECT_THAT(callsAt(0xffffffffu), IsEmpty());
    EXPECT_THAT(callsAt(0), ElementsAre("at the wrap"));
    EXPECT_EQ(fdloop_timers_run(loop, 0), 50u);
    EXPECT_THAT(callsAt(50), ElementsAre("at the wrap"));
    EXPECT_THAT(callsAt(149), ElementsAre("at the wrap"));
    EXPECT_THAT(callsAt(150), ElementsAre("after", "at the wrap"));
}

TEST_F(FdloopTimer, TurnOfTheLoopTakesTheTimeAtItsStart)
{
    // The callback lasts 40 ms; the time-out of the turn is nevertheless measured from its start.
    add(10, [this] {
        clock.advance(40);
        return 1;
    });
    clock.set(1010);
    EXPECT_EQ(fdloop_timers_run(loop, 1010), 10u);
}

std::vector<std::string> traced()
{
    std::vector<std::string> texts;
    for (const syslogtap::Line& line : syslogtap::lines()) {
        EXPECT_EQ(line.priority, LOG_DEBUG);
        texts.push_back(line.text);
    }
    return texts;
}

int staticCallback(void*)
{
    return 1;
}

std::string text(const char* format, const void* timer, const void* data)
{
    char buffer[160];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    snprintf(buffer, sizeof(buffer), format, timer, reinterpret_cast<void*>(staticCallback), data);
#pragma GCC diagnostic pop
    return buffer;
}

TEST_F(FdloopTimer, TraceOfLevel0IsEmpty)
{
    syslogtap_start();
    fdloop_timer_del(loop, fdloop_timer_add(loop, 10, staticCallback, nullptr));
    EXPECT_THAT(traced(), IsEmpty());
}

TEST_F(FdloopTimer, TraceOfLevel1)
{
    fdloop_debug(loop, 0x20001);
    syslogtap_start();
    fdloop_timer* timer = fdloop_timer_add(loop, 10, staticCallback, this);
    fdloop_timers_run(loop, 1010);
    std::string added = text("fdloop_timer_add %p: func=%p data=%p:       10\n", timer, this);
    std::string deleted = text("fdloop_timer_del %p: func=%p data=%p\n", timer, this);
    std::string released = text("_timer_del %p: func=%p data=%p\n", timer, this);
    fdloop_timer_del(loop, timer);
    EXPECT_THAT(traced(), ElementsAre(added, deleted, released));
}

TEST_F(FdloopTimer, TraceOfLevel2)
{
    fdloop_debug(loop, 0x20002);
    syslogtap_start();
    fdloop_timer* timer = fdloop_timer_add(loop, 10, staticCallback, this);
    std::string set = text("_timer_set %p: func=%p data=%p\n", timer, this);
    EXPECT_THAT(traced(),
                ElementsAre(text("fdloop_timer_add %p: func=%p data=%p:       10\n", timer, this), set));
    syslogtap_clear();
    fdloop_timers_run(loop, 1013);
    EXPECT_THAT(traced(),
                ElementsAre(text("fdloop_timers_run - run %p: func=%p data=%p:       -3\n", timer, this),
                            "fdloop_timers_run: Reschedule expired\n", set,
                            "fdloop_timers_run - next in        7\n"));
}

TEST_F(FdloopTimer, TraceNamesTheStepsOfTheRun)
{
    add(10, [this] {
        add(5, "new", 0);
        return 0;
    });
    fdloop_debug(loop, 0x20002);
    syslogtap_start();
    clock.set(1010);
    fdloop_timers_run(loop, 1010);
    std::vector<std::string> steps;
    for (const std::string& line : traced()) {
        if (line.compare(0, 19, "fdloop_timers_run: ") == 0) {
            steps.push_back(line);
        }
    }
    EXPECT_THAT(steps,
                ElementsAre("fdloop_timers_run: Delete deleted\n", "fdloop_timers_run: Schedule new\n"));
}

} // namespace
