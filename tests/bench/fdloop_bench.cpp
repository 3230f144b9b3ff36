// The event loop against the same work by hand on bare select and on two libraries: one turn with 10 idle
// descriptors, 10 timers that don't expire, and one pipe that plays ping-pong with itself; and a timer that
// expires each millisecond among 10 that don't.
//
// After the usual table, another: processor time in ratios to the hand-written loop, taken in short
// alternating rounds so that other load on the machine meets all alike, and instructions in user space.
#include "bench/rows.h"
#include "bench/steps.h"
#include "runtime/fdloop.h"
#include "runtime/vx_time.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <sys/select.h>
#include <unistd.h>
#include <vector>

#ifdef HAVE_EV
#include <ev.h>
#endif
#ifdef HAVE_UV
#include <uv.h>
#endif

namespace {

enum { IDLE = 10, TIMERS = 10 };
const uint32_t TIMER_MS = 3600 * 1000;

// The descriptors of one loop. The ping-pong pipe always holds one byte.
struct Pipes {
    int idle[IDLE];
    int in;
    int out;
    Pipes()
    {
        int ends[2];
        for (int& fd : idle) {
            make(ends);
            fd = ends[0]; // the other end stays open, and silent
        }
        make(ends);
        in = ends[0];
        out = ends[1];
        put();
    }
    static void make(int* ends)
    {
        if (pipe(ends) != 0) {
            abort();
        }
    }
    void put() const
    {
        if (write(out, "x", 1) != 1) {
            abort();
        }
    }
    void pingPong(int fd) const
    {
        char byte;
        if (read(fd, &byte, 1) != 1) {
            abort();
        }
        put();
    }
};

// --- fdloop

void fdloopTurns(int turns)
{
    static Pipes pipes;
    static fdloop_t* loop = nullptr;
    if (!loop) {
        loop = fdloop_init();
        for (int fd : pipes.idle) {
            fdloop_fd_register(
                loop, fd, [](int, void*) { return 0; }, nullptr);
        }
        fdloop_fd_register(
            loop, pipes.in,
            [](int fd, void* data) {
                static_cast<Pipes*>(data)->pingPong(fd);
                return 0;
            },
            &pipes);
        for (int timer = 0; timer < TIMERS; ++timer) {
            fdloop_timer_add(
                loop, TIMER_MS, [](void*) { return 1; }, nullptr);
        }
    }
    while (turns-- > 0) {
        fdloop_run(loop);
    }
}

void fdloopExpiries(int count)
{
    static fdloop_t* loop = nullptr;
    static int expired = 0;
    if (!loop) {
        loop = fdloop_init();
        for (int timer = 0; timer < TIMERS; ++timer) {
            fdloop_timer_add(
                loop, TIMER_MS, [](void*) { return 1; }, nullptr);
        }
        fdloop_timer_add(
            loop, 1,
            [](void*) {
                ++expired;
                return 1;
            },
            nullptr);
    }
    for (expired = 0; expired < count;) {
        fdloop_run(loop);
    }
}

// --- by hand: what a programmer writes who needs just this, with the same clock

struct ByHand {
    Pipes pipes;
    int watched[IDLE + 1];
    uint32_t expiry[TIMERS];
    int highest = 0;

    ByHand()
    {
        std::copy(pipes.idle, pipes.idle + IDLE, watched);
        watched[IDLE] = pipes.in;
        for (int fd : watched) {
            highest = std::max(highest, fd);
        }
        for (uint32_t& time : expiry) {
            time = vx_time_ms() + TIMER_MS;
        }
    }
    void turn()
    {
        uint32_t now = vx_time_ms();
        int32_t wait = static_cast<int32_t>(expiry[0] - now); // sorted: the first is the next
        if (wait <= 0) {
            abort();
        }
        fd_set set;
        FD_ZERO(&set);
        for (int fd : watched) {
            FD_SET(fd, &set);
        }
        struct timeval timeout = {wait / 1000, wait % 1000 * 1000};
        if (select(highest + 1, &set, nullptr, nullptr, &timeout) <= 0) {
            return;
        }
        for (int fd : watched) {
            if (FD_ISSET(fd, &set)) {
                pipes.pingPong(fd);
            }
        }
    }
};

void byHandTurns(int turns)
{
    static ByHand hand;
    while (turns-- > 0) {
        hand.turn();
    }
}

void byHandExpiries(int count)
{
    static uint32_t expiry = vx_time_ms() + 1; // the first of a sorted list, and back to its place each time
    while (count-- > 0) {
        int32_t wait = std::max(static_cast<int32_t>(expiry - vx_time_ms()), 1);
        struct timeval timeout = {0, wait * 1000};
        select(0, nullptr, nullptr, nullptr, &timeout);
        expiry += 1;
    }
}

// --- libev

#ifdef HAVE_EV
class Ev {
public:
    explicit Ev(unsigned flags) : loop(ev_loop_new(flags))
    {
        for (int index = 0; index < IDLE; ++index) {
            ev_io_init(
                &idle[index], [](struct ev_loop*, ev_io*, int) {}, pipes.idle[index], EV_READ);
            ev_io_start(loop, &idle[index]);
        }
        ev_io_init(&ping, pingPong, pipes.in, EV_READ);
        ping.data = &pipes;
        ev_io_start(loop, &ping);
        for (ev_timer& timer : timers) {
            ev_timer_init(
                &timer, [](struct ev_loop*, ev_timer*, int) {}, TIMER_MS / 1000.0, TIMER_MS / 1000.0);
            ev_timer_start(loop, &timer);
        }
    }
    void run(int turns)
    {
        while (turns-- > 0) {
            ev_run(loop, EVRUN_ONCE);
        }
    }

private:
    static void pingPong(struct ev_loop*, ev_io* watcher, int)
    {
        static_cast<Pipes*>(watcher->data)->pingPong(watcher->fd);
    }
    Pipes pipes;
    struct ev_loop* loop;
    ev_io idle[IDLE];
    ev_io ping;
    ev_timer timers[TIMERS];
};

class EvTimers {
public:
    EvTimers() : loop(ev_loop_new(EVFLAG_AUTO))
    {
        for (ev_timer& timer : timers) {
            ev_timer_init(
                &timer, [](struct ev_loop*, ev_timer*, int) {}, TIMER_MS / 1000.0, TIMER_MS / 1000.0);
            ev_timer_start(loop, &timer);
        }
        ev_timer_init(
            &often, [](struct ev_loop*, ev_timer* timer, int) { ++*static_cast<int*>(timer->data); }, 0.001,
            0.001);
        often.data = &expired;
        ev_timer_start(loop, &often);
    }
    void run(int count)
    {
        for (expired = 0; expired < count;) {
            ev_run(loop, EVRUN_ONCE);
        }
    }

private:
    struct ev_loop* loop;
    ev_timer timers[TIMERS];
    ev_timer often;
    int expired = 0;
};

void evExpiries(int count)
{
    static EvTimers timers;
    timers.run(count);
}

void evSelectTurns(int turns)
{
    static Ev ev(EVBACKEND_SELECT);
    ev.run(turns);
}

void evDefaultTurns(int turns)
{
    static Ev ev(EVFLAG_AUTO);
    ev.run(turns);
}
#endif

// --- libuv

#ifdef HAVE_UV
class Uv {
public:
    Uv()
    {
        uv_loop_init(&loop);
        for (int index = 0; index < IDLE; ++index) {
            uv_poll_init(&loop, &idle[index], pipes.idle[index]);
            uv_poll_start(&idle[index], UV_READABLE, [](uv_poll_t*, int, int) {});
        }
        uv_poll_init(&loop, &ping, pipes.in);
        ping.data = &pipes;
        uv_poll_start(&ping, UV_READABLE, [](uv_poll_t* handle, int, int) {
            Pipes* pipes = static_cast<Pipes*>(handle->data);
            pipes->pingPong(pipes->in);
        });
        for (uv_timer_t& timer : timers) {
            uv_timer_init(&loop, &timer);
            uv_timer_start(
                &timer, [](uv_timer_t*) {}, TIMER_MS, TIMER_MS);
        }
    }
    void run(int turns)
    {
        while (turns-- > 0) {
            uv_run(&loop, UV_RUN_ONCE);
        }
    }

private:
    Pipes pipes;
    uv_loop_t loop;
    uv_poll_t idle[IDLE];
    uv_poll_t ping;
    uv_timer_t timers[TIMERS];
};

class UvTimers {
public:
    UvTimers()
    {
        uv_loop_init(&loop);
        for (uv_timer_t& timer : timers) {
            uv_timer_init(&loop, &timer);
            uv_timer_start(
                &timer, [](uv_timer_t*) {}, TIMER_MS, TIMER_MS);
        }
        uv_timer_init(&loop, &often);
        often.data = &expired;
        uv_timer_start(
            &often, [](uv_timer_t* timer) { ++*static_cast<int*>(timer->data); }, 1, 1);
    }
    void run(int count)
    {
        for (expired = 0; expired < count;) {
            uv_run(&loop, UV_RUN_ONCE);
        }
    }

private:
    uv_loop_t loop;
    uv_timer_t timers[TIMERS];
    uv_timer_t often;
    int expired = 0;
};

void uvExpiries(int count)
{
    static UvTimers timers;
    timers.run(count);
}

void uvTurns(int turns)
{
    static Uv uv;
    uv.run(turns);
}
#endif

struct Contender {
    const char* name;
    void (*turns)(int);
};

struct Contest {
    const char* measure;
    int rounds;
    int turns;                         // of each round
    std::vector<Contender> contenders; // ours, and the measure of the others, first
};

const Contest CONTESTS[] = {
    {"one turn of the event loop",
     301,
     500,
     {
         {"fdloop", fdloopTurns},
         {"by hand on select", byHandTurns},
#ifdef HAVE_EV
         {"libev on select", evSelectTurns},
         {"libev", evDefaultTurns},
#endif
#ifdef HAVE_UV
         {"libuv", uvTurns},
#endif
     }},
    {"one expiry of a timer",
     41,
     20,
     {
         {"fdloop timers", fdloopExpiries},
         {"by hand on select", byHandExpiries},
#ifdef HAVE_EV
         {"libev", evExpiries},
#endif
#ifdef HAVE_UV
         {"libuv", uvExpiries},
#endif
     }},
};

double processorNanoseconds()
{
    struct timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e9 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec);
}

void compare(const Contest& contest)
{
    const std::vector<Contender>& contenders = contest.contenders;
    std::vector<std::vector<double>> times(contenders.size());
    for (int round = 0; round < contest.rounds; ++round) {
        for (size_t index = 0; index < contenders.size(); ++index) {
            const double start = processorNanoseconds();
            contenders[index].turns(contest.turns);
            times[index].push_back((processorNanoseconds() - start) / contest.turns);
        }
    }
    printf("\n%s: medians of %d alternating rounds of %d, ratios to it by hand\n", contest.measure,
           contest.rounds, contest.turns);
    std::vector<rows::Contender> measured;
    for (size_t index = 0; index < contenders.size(); ++index)
        measured.push_back({contenders[index].name, times[index], steps::perTurn(contenders[index].turns)});
    rows::compare(contest.measure, "", measured);
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    // The turns alone: an expiry is a wait, of which the usual table would take millions.
    for (const Contender& contender : CONTESTS[0].contenders) {
        contender.turns(100);
        benchmark::RegisterBenchmark(contender.name, [&contender](benchmark::State& state) {
            for (auto _ : state) {
                contender.turns(1);
            }
        });
    }
    benchmark::RunSpecifiedBenchmarks();
    for (const Contest& contest : CONTESTS) {
        compare(contest);
    }
    return 0;
}
