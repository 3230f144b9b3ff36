// The loop's timers: a list sorted by expiry, run once a turn. No lock: the thread that runs the loop alone.
//
// Expiries are never compared directly, as the 32-bit clock wraps: always the signed difference is tested.
#include "runtime/fdloop_impl.h"
#include "runtime/util.h"
#include "runtime/vx_log.h"

#include <stdlib.h>

namespace {

enum { DEBUG_LIFE = 1, DEBUG_STEPS = 2 };

// later - earlier, of two times less than 2^31 ms apart.
int32_t time_difference(uint32_t later, uint32_t earlier)
{
    return static_cast<int32_t>(later - earlier);
}

void trace_timer(const fdloop_t* loop, int level, const char* function, const fdloop_timer* timer)
{
    if (loop->debug_level >= level) {
        vx_slogd("%s %p: func=%p data=%p\n", function, static_cast<const void*>(timer),
                 reinterpret_cast<void*>(timer->callback), timer->data);
    }
}

void trace_step(const fdloop_t* loop, const char* step)
{
    if (loop->debug_level >= DEBUG_STEPS) {
        vx_slogd("%s: %s\n", "fdloop_timers_run", step);
    }
}

// Sorted insertion, behind the timers of the same expiry.
void set_timer(fdloop_t* loop, fdloop_timer* timer)
{
    trace_timer(loop, DEBUG_STEPS, "_timer_set", timer);
    fdloop_timer** link = &loop->timers;
    while (*link && time_difference((*link)->expiry, timer->expiry) <= 0) {
        link = &(*link)->next;
    }
    timer->next = *link;
    *link = timer;
}

void free_timer(fdloop_t* loop, fdloop_timer* timer)
{
    trace_timer(loop, DEBUG_LIFE, "_timer_del", timer);
    free(timer);
}

// Calls the callbacks of the expired timers. Afterwards loop->timers is the first timer that was left alone;
// the handled ones before it are still chained to it from the old head. Returns the last timer that is to run
// again.
fdloop_timer* run_expired(fdloop_t* loop, uint32_t now)
{
    fdloop_timer* last_expired = nullptr;
    for (fdloop_timer* timer = loop->timers; timer; timer = timer->next, loop->timers = timer) {
        if (timer->deleted) {
            continue;
        }
        int32_t remaining = time_difference(timer->expiry, now);
        if (remaining > 0) {
            break;
        }
        if (loop->debug_level >= DEBUG_STEPS) {
            vx_slogd("%s - run %p: func=%p data=%p: %8d\n", "fdloop_timers_run", static_cast<void*>(timer),
                     reinterpret_cast<void*>(timer->callback), timer->data, remaining);
        }
        int again = timer->callback(timer->data);
        if (timer->deleted) {
            loop->timer_delete_pending = 1;
        } else if (!again) {
            timer->deleted = 1;
            loop->timer_delete_pending = 1;
        } else {
            last_expired = timer;
        }
    }
    return last_expired;
}

// Frees the deleted timers of the whole chain, the expired ones and the others, and corrects the three
// pointers into it. Only timers that are to run again precede last_expired, so the one before takes its
// place.
void delete_deleted(fdloop_t* loop, fdloop_timer** old_head, fdloop_timer** last_expired)
{
    trace_step(loop, "Delete deleted");
    fdloop_timer* previous = nullptr;
    fdloop_timer* timer = *old_head;
    while (timer) {
        fdloop_timer* next = timer->next;
        if (!timer->deleted) {
            previous = timer;
        } else {
            if (previous) {
                previous->next = next;
            } else {
                *old_head = next;
            }
            if (loop->timers == timer) {
                loop->timers = next;
            }
            if (*last_expired == timer) {
                *last_expired = previous;
            }
            free_timer(loop, timer);
        }
        timer = next;
    }
}

// From the previous expiry, not from now: a periodic timer doesn't drift, and catches up when it fell behind.
void reschedule_expired(fdloop_t* loop, fdloop_timer* old_head, fdloop_timer* last_expired)
{
    trace_step(loop, "Reschedule expired");
    last_expired->next = nullptr;
    while (old_head) {
        fdloop_timer* timer = old_head;
        old_head = timer->next;
        timer->expiry += timer->interval;
        set_timer(loop, timer);
    }
}

// Latest first, so that new timers of the same expiry run in reverse order of their adding.
void schedule_new(fdloop_t* loop)
{
    trace_step(loop, "Schedule new");
    fdloop_timer* timer = loop->new_timers;
    loop->new_timers = nullptr;
    while (timer) {
        fdloop_timer* next = timer->next;
        if (timer->deleted) {
            free_timer(loop, timer);
        } else {
            set_timer(loop, timer);
        }
        timer = next;
    }
}

} // namespace

fdloop_timer* fdloop_timer_add(fdloop_t* loop, uint32_t interval_ms, fdloop_timer_cb_t callback, void* data)
{
    fdloop_timer* timer = static_cast<fdloop_timer*>(vx_calloc(1, sizeof(fdloop_timer)));
    if (!timer) {
        return nullptr;
    }
    timer->interval = interval_ms;
    timer->expiry = fdloop_time_ms() + interval_ms;
    timer->callback = callback;
    timer->data = data;
    if (loop->debug_level >= DEBUG_LIFE) {
        vx_slogd("%s %p: func=%p data=%p: %8u\n", "fdloop_timer_add", static_cast<void*>(timer),
                 reinterpret_cast<void*>(callback), data, interval_ms);
    }
    if (loop->in_timer_dispatch) {
        timer->next = loop->new_timers;
        loop->new_timers = timer;
    } else {
        set_timer(loop, timer);
    }
    return timer;
}

void fdloop_timer_del(fdloop_t* loop, fdloop_timer* timer)
{
    if (!timer) {
        return;
    }
    if (loop->in_timer_dispatch) {
        trace_timer(loop, DEBUG_LIFE, "fdloop_timer_del", timer);
        timer->deleted = 1;
        loop->timer_delete_pending = 1;
        return;
    }
    // A handle that is not in the list is not looked into: it may be long freed.
    fdloop_timer** link = &loop->timers;
    while (*link && *link != timer) {
        link = &(*link)->next;
    }
    if (*link) {
        trace_timer(loop, DEBUG_LIFE, "fdloop_timer_del", timer);
        *link = timer->next;
        free_timer(loop, timer);
    }
}

void fdloop_timer_set_interval(fdloop_timer* timer, uint32_t interval_ms)
{
    timer->interval = interval_ms;
}

uint32_t fdloop_timer_get_interval(const fdloop_timer* timer)
{
    return timer->interval;
}

uint32_t fdloop_timers_run(fdloop_t* loop, uint32_t now)
{
    if (!loop->timers) {
        return 0;
    }
    loop->in_timer_dispatch = 1;
    fdloop_timer* old_head = loop->timers;
    fdloop_timer* last_expired = run_expired(loop, now);
    loop->in_timer_dispatch = 0;

    if (loop->timer_delete_pending) {
        loop->timer_delete_pending = 0;
        delete_deleted(loop, &old_head, &last_expired);
    }
    if (last_expired) {
        reschedule_expired(loop, old_head, last_expired);
    }
    if (loop->new_timers) {
        schedule_new(loop);
    }
    if (!loop->timers) {
        return 0;
    }
    int32_t next = time_difference(loop->timers->expiry, now);
    if (next < 1) {
        next = 1;
    }
    if (loop->debug_level >= DEBUG_STEPS) {
        vx_slogd("%s - next in %8d\n", "fdloop_timers_run", next);
    }
    return static_cast<uint32_t>(next);
}
