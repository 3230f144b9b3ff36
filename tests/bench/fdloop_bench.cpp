// One turn of the event loop with 10 idle descriptors, 10 timers that don't expire, and one pipe that plays
// ping-pong with itself, against the same work by hand on bare select and on two libraries.
//
// After the usual table, a second one: processor time in ratios to the hand-written loop, taken in short
// alternating rounds so that other load on the machine meets all alike, and instructions in user space.
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

const Contender CONTENDERS[] = {
    {"by hand on select", byHandTurns}, // the measure of the others
    {"fdloop", fdloopTurns},
#ifdef HAVE_EV
    {"libev, select", evSelectTurns},
    {"libev, default", evDefaultTurns},
#endif
#ifdef HAVE_UV
    {"libuv", uvTurns},
#endif
};

double processorNanoseconds()
{
    struct timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e9 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void printRatios()
{
    const int ROUNDS = 301, TURNS = 500;
    const size_t count = sizeof(CONTENDERS) / sizeof(CONTENDERS[0]);
    std::vector<std::vector<double>> times(count);
    for (int round = 0; round < ROUNDS; ++round) {
        for (size_t index = 0; index < count; ++index) {
            double start = processorNanoseconds();
            CONTENDERS[index].turns(TURNS);
            times[index].push_back((processorNanoseconds() - start) / TURNS);
        }
    }
    printf("\nOne turn: medians of %d alternating rounds of %d turns\n", ROUNDS, TURNS);
    printf("%-20s %14s %8s %24s\n", "", "processor ns", "ratio", "user-space instructions");
    for (size_t index = 0; index < count; ++index) {
        std::vector<double> ratios;
        for (size_t round = 0; round < times[index].size(); ++round) {
            ratios.push_back(times[index][round] / times[0][round]);
        }
        printf("%-20s %14.0f %8.2f %24.0f\n", CONTENDERS[index].name, median(times[index]), median(ratios),
               steps::perTurn(CONTENDERS[index].turns));
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    for (const Contender& contender : CONTENDERS) {
        contender.turns(100);
        benchmark::RegisterBenchmark(contender.name, [&contender](benchmark::State& state) {
            for (auto _ : state) {
                contender.turns(1);
            }
        });
    }
    benchmark::RunSpecifiedBenchmarks();
    printRatios();
    return 0;
}
