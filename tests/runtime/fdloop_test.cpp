// The event loop's turn: descriptors, idlers, results, what callbacks may do, and what happens without
// memory. The timers' own rules stand in fdloop_timer_test.cpp.
#include "runtime/fdloop.h"
#include "runtime/fdloop_impl.h"
#include "runtime/util.h"
#include "runtime/vx_time.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/fakeclock.h"
#include "support/keptloop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <functional>
#include <list>
#include <memory>
#include <pthread.h>
#include <string>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <syslog.h>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;

class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends), 0); }
    ~Pipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    int in() const { return ends[0]; }
    int out() const { return ends[1]; }
    void fill() { EXPECT_EQ(write(ends[1], "x", 1), 1); }

private:
    int ends[2];
};

// A callback with a closure behind its data pointer; one object serves as handler, timer or idler.
struct Callback {
    std::function<int()> run;
    static int handler(int, void* data) { return static_cast<Callback*>(data)->run(); }
    static int otherHandler(int, void* data) { return static_cast<Callback*>(data)->run(); }
    static int timer(void* data) { return static_cast<Callback*>(data)->run(); }
    static void idler(void* data) { static_cast<Callback*>(data)->run(); }
};

class Fdloop : public testing::Test {
protected:
    fdloop_t* loop = keptLoop();
    std::list<Callback> callbacks;
    std::vector<std::string> calls;

    // Notes the name and returns the result.
    Callback* note(const std::string& name, int result)
    {
        return make([this, name, result] {
            calls.push_back(name);
            return result;
        });
    }
    Callback* make(std::function<int()> function)
    {
        callbacks.push_back(Callback{std::move(function)});
        return &callbacks.back();
    }
    void TearDown() override
    {
        // Whatever a test left registered goes, so that its callbacks are not in use any more.
        while (loop->fd_head) {
            fdloop_fd_entry* head = loop->fd_head;
            if (head->fd_class == FDLOOP_READ) {
                fdloop_fd_unregister(loop, head->fd);
            } else if (head->fd_class == FDLOOP_WRITE) {
                fdloop_fd_unregister_write(loop, head->fd);
            } else {
                fdloop_fd_unregister_except(loop, head->fd);
            }
        }
        while (loop->timers) {
            fdloop_timer_del(loop, loop->timers);
        }
    }
};

TEST_F(Fdloop, InitGivesAnEmptyLoopWithTheCurrentTime)
{
    FakeClock clock(123456);
    fdloop_t* fresh = keptLoop();
    EXPECT_EQ(fresh->now, 123456u);
    EXPECT_EQ(fresh->entry_count, 0);
    EXPECT_EQ(fresh->fd_head, nullptr);
    EXPECT_EQ(fresh->timers, nullptr);
    EXPECT_EQ(fresh->idler_head, nullptr);
    EXPECT_EQ(fresh->debug_level, 0);
}

TEST_F(Fdloop, RunStoresTheTimeOfTheTurn)
{
    FakeClock clock(500);
    EXPECT_EQ(fdloop_run(loop), 1);
    EXPECT_EQ(loop->now, 500u);
    clock.set(777);
    EXPECT_EQ(fdloop_run(loop), 1);
    EXPECT_EQ(loop->now, 777u);
}

TEST_F(Fdloop, ClockIsSecondsAndMillisecondsTruncatedTo32Bits)
{
    FakeClock clock(0x1'0000'0000ull + 41);
    EXPECT_EQ(fdloop_time_ms(), 41u);
}

TEST_F(Fdloop, NothingToWaitForEndsTheLoopWith1)
{
    EXPECT_EQ(fdloop_run(loop), 1);
    EXPECT_EQ(fdloop_loop(loop), 1);
}

TEST_F(Fdloop, OnlyDisabledDescriptorsAndNoTimersEndTheLoopWith1)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", 0));
    fdloop_fd_enable(loop, pipe.in(), Callback::handler, 0);
    EXPECT_EQ(fdloop_run(loop), 1);
    EXPECT_EQ(fdloop_loop(loop), 1);
    EXPECT_TRUE(calls.empty());
}

TEST_F(Fdloop, TimersWithoutDescriptorsSleepAndFire)
{
    uint32_t start = vx_time_ms();
    fdloop_timer_add(loop, 30, Callback::timer, note("timer", 0));
    EXPECT_EQ(fdloop_run(loop), 0); // sleeps in select
    EXPECT_GE(vx_time_ms_elapsed(start), 29u);
    EXPECT_EQ(fdloop_loop(loop), 1); // fires, and then nothing is left
    EXPECT_THAT(calls, ElementsAre("timer"));
}

TEST_F(Fdloop, DisabledDescriptorWithATimerSleepsAndIsNotCalled)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", 0));
    fdloop_fd_enable(loop, pipe.in(), Callback::handler, 0);
    fdloop_timer_add(loop, 20, Callback::timer, note("timer", 0));
    EXPECT_EQ(fdloop_loop(loop), 1);
    EXPECT_THAT(calls, ElementsAre("timer"));
}

TEST_F(Fdloop, HandlerGetsDescriptorAndData)
{
    Pipe pipe;
    pipe.fill();
    static int seen_fd;
    static void* seen_data;
    fdloop_fd_register(
        loop, pipe.in(),
        [](int fd, void* data) {
            seen_fd = fd;
            seen_data = data;
            return 1;
        },
        this);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(seen_fd, pipe.in());
    EXPECT_EQ(seen_data, this);
}

TEST_F(Fdloop, ReadWriteAndExceptAreThreeClasses)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    fdloop_fd_register(loop, ends[0], Callback::handler, note("read", 0));
    fdloop_fd_register_write(loop, ends[0], Callback::handler, note("write", 0));
    fdloop_fd_register_except(loop, ends[0], Callback::handler, note("except", 0));
    EXPECT_EQ(loop->entry_count, 3);
    EXPECT_THAT(loop->class_count, ElementsAre(1, 1, 1));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("read", "write"));

    fdloop_fd_unregister_write(loop, ends[0]);
    EXPECT_THAT(loop->class_count, ElementsAre(1, 0, 1));
    fdloop_fd_unregister_except(loop, ends[0]);
    fdloop_fd_unregister(loop, ends[0]);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_EQ(loop->fd_head, nullptr);
    EXPECT_EQ(loop->fd_tail, nullptr);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Fdloop, OutOfBandDataIsAnExceptionalCondition)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    if (send(ends[1], "!", 1, MSG_OOB) != 1) {
        close(ends[0]);
        close(ends[1]);
        GTEST_SKIP() << "this kernel has no out-of-band data on Unix sockets";
    }
    fdloop_fd_register_except(loop, ends[0], Callback::handler, note("except", 1));
    fdloop_timer_add(loop, 1000, Callback::timer, note("late", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("except"));
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Fdloop, NegativeDescriptorDoesNothing)
{
    fdloop_fd_register(loop, -1, Callback::handler, nullptr);
    fdloop_fd_register_write(loop, -1, Callback::handler, nullptr);
    fdloop_fd_register_except(loop, -5, Callback::handler, nullptr);
    EXPECT_EQ(loop->entry_count, 0);
    fdloop_fd_unregister(loop, -1);
    fdloop_fd_unregister_write(loop, -1);
    fdloop_fd_unregister_except(loop, -1);
    EXPECT_EQ(fdloop_run(loop), 1);
}

TEST_F(Fdloop, DescriptorBeyondTheSetIsRefusedAndLogged)
{
    syslogtap_start();
    fdloop_fd_register(loop, FD_SETSIZE, Callback::handler, nullptr);
    fdloop_fd_unregister(loop, FD_SETSIZE);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_EQ(syslogtap_count(), 1u);
    EXPECT_EQ(syslogtap::count(LOG_ERR, "fdloop_fd_register: descriptor 1024 does not fit the set\n"), 1u);
    fdloop_fd_register(loop, FD_SETSIZE - 1, Callback::handler, nullptr);
    EXPECT_EQ(loop->entry_count, 1);
    syslogtap_stop();
}

TEST_F(Fdloop, NonZeroResultDropsTheEntryAndLeavesTheDescriptorOpen)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", 1));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_EQ(loop->fd_tail, nullptr);
    EXPECT_EQ(fdloop_run(loop), 1);
    EXPECT_THAT(calls, ElementsAre("read"));
    char byte;
    EXPECT_EQ(read(pipe.in(), &byte, 1), 1);
}

TEST_F(Fdloop, NegativeResultDropsTheEntryToo)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", -1));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 0);
}

TEST_F(Fdloop, HandlerThatUnregistersAnotherReadyDescriptorKeepsItFromBeingCalled)
{
    Pipe first, second;
    first.fill();
    second.fill();
    fdloop_fd_register(loop, first.in(), Callback::handler, make([&] {
                           calls.push_back("first");
                           fdloop_fd_unregister(loop, second.in());
                           return 0;
                       }));
    fdloop_fd_register(loop, second.in(), Callback::handler, note("second", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("first"));
    EXPECT_EQ(loop->entry_count, 1);
}

TEST_F(Fdloop, UnregisteringClearsTheBitSoThatASecondEntryOfTheDescriptorWaitsForTheNextPass)
{
    Pipe first, second;
    first.fill();
    second.fill();
    fdloop_fd_register(loop, first.in(), Callback::handler, make([&] {
                           fdloop_fd_unregister(loop, second.in());
                           return 1;
                       }));
    fdloop_fd_register(loop, second.in(), Callback::handler, note("a", 0));
    fdloop_fd_register(loop, second.in(), Callback::handler, note("b", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("b"));
}

TEST_F(Fdloop, HandlerThatUnregistersItselfAndReturns0IsSweptAfterThePass)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, make([&] {
                           fdloop_fd_unregister(loop, pipe.in());
                           EXPECT_EQ(loop->entry_count, 1); // still there, marked
                           EXPECT_EQ(loop->fd_head->deleted, 1);
                           return 0;
                       }));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_EQ(loop->fd_delete_pending, 0);
    EXPECT_EQ(fdloop_run(loop), 1);
}

TEST_F(Fdloop, DroppedEntryTakesASecondOneOfItsDescriptorOutOfThisPassOnly)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("a", 1));
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("b", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("a"));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("a", "b"));
}

TEST_F(Fdloop, TheSameDescriptorRegisteredTwiceIsCalledTwice)
{
    Pipe pipe;
    pipe.fill();
    Callback* twice = note("read", 0);
    fdloop_fd_register(loop, pipe.in(), Callback::handler, twice);
    fdloop_fd_register(loop, pipe.in(), Callback::handler, twice);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("read", "read"));
    fdloop_fd_unregister(loop, pipe.in());
    EXPECT_EQ(loop->entry_count, 1);
}

TEST_F(Fdloop, UnregisteringSkipsEntriesThatAreMarkedAlready)
{
    Pipe pipe;
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, make([&] {
                           fdloop_fd_unregister(loop, pipe.in());
                           fdloop_fd_unregister(loop, pipe.in()); // takes the second entry
                           return 0;
                       }));
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("second", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(Fdloop, UnregisteringOutsideDispatchKeepsHeadAndTailRight)
{
    Pipe a, b, c;
    fdloop_fd_register(loop, a.in(), Callback::handler, note("a", 0));
    fdloop_fd_register(loop, b.in(), Callback::handler, note("b", 0));
    fdloop_fd_register(loop, c.in(), Callback::handler, note("c", 0));
    fdloop_fd_unregister(loop, c.in());
    EXPECT_EQ(loop->fd_tail->fd, b.in());
    fdloop_fd_unregister(loop, a.in());
    EXPECT_EQ(loop->fd_head, loop->fd_tail);
    fdloop_fd_register(loop, c.in(), Callback::handler, note("c", 0));
    EXPECT_EQ(loop->fd_head->next, loop->fd_tail);
    fdloop_fd_unregister_write(loop, b.in()); // another class: no effect
    EXPECT_EQ(loop->entry_count, 2);
    b.fill();
    c.fill();
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("b", "c"));
}

TEST_F(Fdloop, SweepOfSeveralEntriesKeepsHeadTailAndCountsRight)
{
    Pipe a, b, c, d;
    for (Pipe* pipe : {&a, &b, &c, &d}) {
        pipe->fill();
        fdloop_fd_register(loop, pipe->in(), Callback::handler, note("", pipe == &b ? 0 : 1));
    }
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 1);
    EXPECT_EQ(loop->class_count[FDLOOP_READ], 1);
    EXPECT_EQ(loop->fd_head->fd, b.in());
    EXPECT_EQ(loop->fd_tail, loop->fd_head);
    EXPECT_EQ(loop->fd_tail->next, nullptr);
}

TEST_F(Fdloop, HandlerMayRegisterDescriptors)
{
    Pipe first, second;
    first.fill();
    second.fill();
    fdloop_fd_register(loop, first.in(), Callback::handler, make([&] {
                           calls.push_back("first");
                           fdloop_fd_register(loop, second.in(), Callback::handler, note("second", 1));
                           return 1;
                       }));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("first")); // the second was not waited for in this turn
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("first", "second"));
}

TEST_F(Fdloop, EntryOfAClassThatTakesNoPartIsNotCalledOnAnOldBit)
{
    Pipe reader, writer;
    reader.fill();
    // Leaves the writer's bit in the set of its class, which has no entry in the next turn.
    fdloop_fd_register_write(loop, writer.out(), Callback::handler, note("write", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("write"));
    loop->fd_head->enabled = 0;
    fdloop_fd_register(loop, reader.in(), Callback::handler, make([&] {
                           fdloop_fd_enable(loop, writer.out(), Callback::handler, 1);
                           return 1;
                       }));
    calls.clear();
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_TRUE(calls.empty());
}

int unusedHandler(int, void*)
{
    return 0;
}

TEST_F(Fdloop, EnableMatchesDescriptorAndHandlerOfAnyClass)
{
    Pipe pipe;
    fdloop_fd_register_write(loop, pipe.out(), Callback::handler, note("handler", 0));
    fdloop_fd_register_write(loop, pipe.out(), Callback::otherHandler, note("other", 0));
    fdloop_fd_enable(loop, pipe.out(), Callback::handler, 0);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("other"));
    fdloop_fd_enable(loop, pipe.in(), Callback::otherHandler, 0); // no such entries
    fdloop_fd_enable(loop, pipe.out(), unusedHandler, 0);
    fdloop_fd_enable(loop, pipe.out(), Callback::handler, 1);
    calls.clear();
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("handler", "other"));
}

TEST_F(Fdloop, DisablingDuringDispatchHoldsInTheSamePass)
{
    Pipe first, second;
    first.fill();
    second.fill();
    fdloop_fd_register(loop, first.in(), Callback::handler, make([&] {
                           fdloop_fd_enable(loop, second.in(), Callback::otherHandler, 0);
                           return 0;
                       }));
    fdloop_fd_register(loop, second.in(), Callback::otherHandler, note("second", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(loop->entry_count, 2); // counted though disabled
}

// The kept quirk: enabling doesn't skip an entry that waits for the sweep.
TEST_F(Fdloop, EnableDuringDispatchMayHitTheEntryThatIsMarkedDeleted)
{
    Pipe pipe;
    pipe.fill();
    Callback* again = note("again", 0);
    fdloop_fd_register(loop, pipe.in(), Callback::handler, make([&] {
                           fdloop_fd_unregister(loop, pipe.in());
                           fdloop_fd_register(loop, pipe.in(), Callback::handler, again);
                           fdloop_fd_enable(loop, pipe.in(), Callback::handler, 0);
                           return 0;
                       }));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 1);
    EXPECT_EQ(loop->fd_head->enabled, 1);
}

TEST_F(Fdloop, IdlersRunOnceATurnInOrderOfRegistrationBeforeTheWait)
{
    Pipe pipe;
    fdloop_idler* first = fdloop_idler_add(loop, Callback::idler, make([&] {
                                               calls.push_back("idler 1");
                                               if (calls.size() == 1) {
                                                   pipe.fill(); // seen by the select of this turn
                                               }
                                               return 0;
                                           }));
    EXPECT_EQ(loop->idler_head, first);
    EXPECT_EQ(fdloop_idler_add(loop, Callback::idler, note("idler 2", 0)), loop->idler_tail);
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", 1));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("idler 1", "idler 2", "read"));
    EXPECT_EQ(fdloop_run(loop), 1); // the idlers alone are nothing to wait for, but they run
    EXPECT_THAT(calls, ElementsAre("idler 1", "idler 2", "read", "idler 1", "idler 2"));
}

TEST_F(Fdloop, TimersRunBeforeIdlers)
{
    FakeClock clock;
    Pipe pipe;
    pipe.fill();
    fdloop_timer_add(loop, 10, Callback::timer, note("timer", 0));
    fdloop_idler_add(loop, Callback::idler, note("idler", 0));
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", 1));
    clock.advance(10);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("timer", "idler", "read"));
}

TEST_F(Fdloop, FailureOfSelectGivesMinus1AndTheLoopStaysUsable)
{
    Pipe pipe;
    int closed = dup(pipe.in());
    close(closed);
    fdloop_fd_register(loop, closed, Callback::handler, note("closed", 0));
    EXPECT_EQ(fdloop_run(loop), -1);
    EXPECT_EQ(errno, EBADF);
    EXPECT_EQ(fdloop_loop(loop), -1);
    fdloop_fd_unregister(loop, closed);
    pipe.fill();
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("open", 0));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(calls, ElementsAre("open"));
}

TEST_F(Fdloop, SignalDuringSelectEndsTheTurnWith0)
{
    struct sigaction action = {}, before;
    action.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGALRM, &action, &before), 0);
    Pipe pipe;
    fdloop_fd_register(loop, pipe.in(), Callback::handler, note("read", 0));
    struct itimerval soon = {{0, 5000}, {0, 5000}}; // repeated, should one come before the wait
    setitimer(ITIMER_REAL, &soon, nullptr);
    EXPECT_EQ(fdloop_run(loop), 0); // would wait for ever
    struct itimerval never = {{0, 0}, {0, 0}};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_TRUE(calls.empty());
}

TEST_F(Fdloop, DebugNeedsItsBit)
{
    fdloop_debug(loop, 0x20002);
    EXPECT_EQ(loop->debug_level, 2);
    fdloop_debug(loop, 0x00001);
    EXPECT_EQ(loop->debug_level, 2);
    fdloop_debug(loop, 0x10001);
    EXPECT_EQ(loop->debug_level, 2);
    fdloop_debug(loop, 0xfffe0000u | 0x101u);
    EXPECT_EQ(loop->debug_level, 1); // only the low 8 bits
    fdloop_debug(loop, 0x20000);
    EXPECT_EQ(loop->debug_level, 0);
}

void* noMemory(size_t, size_t)
{
    return nullptr;
}

class FdloopDeathTest : public Fdloop {};

TEST_F(FdloopDeathTest, WithoutMemoryInitIdlersAndDescriptorsAssert)
{
    auto failing = [](std::function<void()> function) {
        syslogtap_echo(1);
        vx_calloc = noMemory;
        function();
    };
    EXPECT_EXIT(failing([] { fdloop_init(); }), testing::KilledBySignal(SIGABRT),
                "<1> .*: \\*\\*\\* ASSERT in fdloop at [0-9]+\n");
    EXPECT_EXIT(failing([this] { fdloop_idler_add(loop, Callback::idler, nullptr); }),
                testing::KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in fdloop at [0-9]+\n");
    EXPECT_EXIT(failing([this] { fdloop_fd_register(loop, 0, Callback::handler, nullptr); }),
                testing::KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in fdloop at [0-9]+\n");
}

TEST_F(Fdloop, WithoutMemoryATimerIsNull)
{
    vx_calloc = noMemory;
    fdloop_timer* timer = fdloop_timer_add(loop, 10, Callback::timer, nullptr);
    vx_calloc = calloc;
    EXPECT_EQ(timer, nullptr);
    EXPECT_EQ(loop->timers, nullptr);
}

} // namespace
