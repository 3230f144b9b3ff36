// Runs a scenario in a console of its own: one line after the other, until one fails or all are done.
//
// A display that ends by itself meanwhile is a failure too, unless the line "expect crash" comes next or
// "display kill" came before.
//
// On the terminal's thread only. Nothing blocks, and no line takes longer than its limit.
#ifndef SIM_SCENARIO_SCENARIO_H
#define SIM_SCENARIO_SCENARIO_H

#include "sim/console/console.h"
#include "sim/scenario/script.h"
#include "sim/timer.h"

namespace sim {

class Scenario {
public:
    struct Options {
        bool quiet = false; // no progress, no output of the lines
        std::function<void(const std::string& line)> print;
        std::function<void(const std::string& line)> printError; // "FILE:LINE: what"
        std::function<void(int status)> ended;                   // 0, or 1 if a line failed; not in begin()
    };

    // The desk must have a witness. Pictures get a number in front of their name, in their order; if the desk
    // has no directory for them, they are thrown away at the end.
    Scenario(Desk& desk, Script script, Options options);
    ~Scenario();
    Scenario(const Scenario&) = delete;
    Scenario& operator=(const Scenario&) = delete;

    void begin();
    // The display has ended for good, and nobody will start it again. False if the story is over already.
    bool displayEnded()
    {
        isGone = true;
        return !isOver;
    }

private:
    void advance();
    void run(const ScenarioStep& step);
    void startDisplay(bool waitForWindow);
    void onOutput(std::string_view text);
    void look();
    bool crashIsAllowed() const;
    std::string crashed() const;
    void fail(const std::string& what);
    void end(int status);
    const ScenarioStep* current() const { return at < script.steps.size() ? &script.steps[at] : nullptr; }
    std::string lineOf(const ScenarioStep& step);

    Desk& desk;
    const Script script;
    const Options options;
    Console console;
    Timer timer;   // to the next line
    Timer watcher; // of the display
    size_t at = 0;
    bool isRunning = false; // the line at hand
    bool isStarted = false; // the display
    bool mayEnd = false;    // the display was told to
    bool isGone = false;    // for good
    bool isOver = false;
    bool isLate = false;    // the last moments, in which a crash may still show
    uint32_t startedAt = 0; // of the display, fdloop_time_ms()
    unsigned pictures = 0;
    std::string partial; // output without the end of its line
    std::string error;   // of the line at hand
    std::string scratch; // directory of pictures that nobody wants; empty: there is none
};

} // namespace sim

#endif
