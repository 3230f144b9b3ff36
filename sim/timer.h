// A timer of the event loop that belongs to an object and ends with it.
//
// On the thread of the loop only. The function may start and stop its own timer, but not destroy it.
#ifndef SIM_TIMER_H
#define SIM_TIMER_H

#include "runtime/fdloop.h"

#include <functional>

namespace sim {

class Timer {
public:
    explicit Timer(fdloop_t* loop) : loop(loop) {}
    ~Timer() { stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Calls the function once in so many milliseconds. A pending call is forgotten.
    void once(uint32_t milliseconds, std::function<void()> callback)
    {
        start(milliseconds, false, std::move(callback));
    }
    // Calls it every so many milliseconds.
    void every(uint32_t milliseconds, std::function<void()> callback)
    {
        start(milliseconds, true, std::move(callback));
    }
    void stop()
    {
        fdloop_timer_del(loop, handle);
        handle = nullptr;
    }
    bool isRunning() const { return handle != nullptr; }

private:
    void start(uint32_t milliseconds, bool again, std::function<void()> callback)
    {
        stop();
        function = std::move(callback);
        periodic = again;
        handle = fdloop_timer_add(loop, milliseconds, onTimer, this);
    }
    static int onTimer(void* data)
    {
        Timer& timer = *static_cast<Timer*>(data);
        fdloop_timer* fired = timer.handle;
        if (!timer.periodic)
            timer.handle = nullptr;
        std::function<void()> function = timer.function; // the call may replace it
        function();
        return timer.handle == fired; // a handle that was stopped or replaced is the loop's to free
    }

    fdloop_t* loop;
    fdloop_timer* handle = nullptr;
    std::function<void()> function;
    bool periodic = false;
};

} // namespace sim

#endif
