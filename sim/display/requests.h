// Requests to the display that take their time and are carried out one after the other: each has a number by
// which it can be forgotten, a limit of time, and a function that is told how it ended.
//
// On the thread of the loop only. The functions are never called within add(); they may add and forget.
#ifndef SIM_DISPLAY_REQUESTS_H
#define SIM_DISPLAY_REQUESTS_H

#include "sim/timer.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>

namespace sim {

using RequestDone = std::function<void(const std::string& error)>; // empty: it worked

template <typename What> class Requests {
public:
    static constexpr uint32_t Limit = 10000; // ms that each has from when its turn has come

    // begin is called when a request's turn has come; tooLate returns what to tell of one whose time is over.
    Requests(fdloop_t* loop, std::function<void()> begin, std::function<std::string()> tooLate)
        : begin(std::move(begin)), tooLate(std::move(tooLate)), limit(loop), turn(loop)
    {
    }

    void add(uint64_t number, const What& what, RequestDone done)
    {
        queue.push_back({number, what, std::move(done)});
        schedule();
    }

    bool isEmpty() const { return queue.empty(); }
    bool hasBegun() const { return begun; }
    // The one whose turn it is. Not if it is empty.
    const What& current() const { return queue.front().what; }
    // Whether somebody still wants it.
    bool isWanted() const { return queue.front().done != nullptr; }

    // One that has begun goes on unheard; others are dropped.
    void forget(uint64_t number)
    {
        for (size_t i = 0; i < queue.size(); i++) {
            if (queue[i].number != number)
                continue;
            if (i == 0 && begun)
                queue[i].done = nullptr;
            else
                queue.erase(queue.begin() + static_cast<std::ptrdiff_t>(i));
            return;
        }
    }

    // The current one has ended.
    void finish(const std::string& error)
    {
        RequestDone done = std::move(queue.front().done);
        queue.pop_front();
        begun = false;
        limit.stop();
        schedule();
        if (done)
            done(error);
    }

    void failAll(const std::string& error)
    {
        std::deque<Request> failed;
        failed.swap(queue);
        begun = false;
        limit.stop();
        turn.stop();
        for (Request& request : failed) {
            if (request.done)
                request.done(error);
        }
    }

private:
    struct Request {
        uint64_t number;
        What what;
        RequestDone done;
    };

    void schedule()
    {
        if (!begun && !queue.empty() && !turn.isRunning())
            turn.once(1, [this] { next(); });
    }
    void next()
    {
        if (begun || queue.empty())
            return;
        begun = true;
        limit.once(Limit, [this] { finish(tooLate()); });
        begin();
    }

    std::function<void()> begin;
    std::function<std::string()> tooLate;
    std::deque<Request> queue;
    bool begun = false;
    Timer limit;
    Timer turn;
};

} // namespace sim

#endif
