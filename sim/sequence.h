// What a process writes to the database one step after the other: a start-up, a registration.
//
// On the thread of the loop only.
#ifndef SIM_SEQUENCE_H
#define SIM_SEQUENCE_H

#include "sim/behaviour.h"

#include <vector>

namespace sim {

struct Step {
    uint32_t delay; // ms of the real terminal before it; 0: at once
    std::vector<Write> writes;
};

class Sequence {
public:
    explicit Sequence(const Surroundings& surroundings) : terminal(surroundings), timer(surroundings.loop) {}

    // Begins with the first step; what was left of an earlier run is forgotten. A step may run it anew.
    void run(std::vector<Step> newSteps)
    {
        steps = std::move(newSteps);
        next = 0;
        runs++;
        advance();
    }
    void stop() { run({}); }
    bool isRunning() const { return next < steps.size(); }

private:
    void advance()
    {
        timer.stop();
        if (next == steps.size())
            return;
        if (steps[next].delay == 0)
            take();
        else
            timer.once(terminal.scaled(steps[next].delay), [this] { take(); });
    }
    void take()
    {
        uint64_t run = runs;
        std::vector<Write> writes = steps[next++].writes;
        terminal.database.apply(writes);
        if (run == runs) // else those who heard of it have begun another
            advance();
    }

    Surroundings terminal;
    Timer timer;
    std::vector<Step> steps;
    size_t next = 0;
    uint64_t runs = 0;
};

} // namespace sim

#endif
