// A scenario: a text file of console commands that is carried out from its beginning to its end.
//
//     # A comment; blank lines mean nothing either.
//     signal 52.5               any command of the consoles
//     start                     here the display is started; what stands above prepares the terminal for it.
//                               Without such a line it is started first. "start dark" doesn't wait until it
//                               shows something
//     repeat 3                  the lines up to "end" three times; so does "repeat 3 press down" with one
//         press down
//     end
//     include pin.scenario      the lines of another file, named from this one's directory
//
// It is read as a whole before anything begins: unknown commands, wrong words and the like are found then.
//
// Plain functions without state; any thread.
#ifndef SIM_SCENARIO_SCRIPT_H
#define SIM_SCENARIO_SCRIPT_H

#include "sim/command_actor.h"

#include <string>
#include <vector>

namespace sim {

struct ScenarioStep {
    std::string file; // as it was named
    unsigned line = 0;
    std::string text; // as it stands there, without the blanks around it
    Words words;      // at least one

    std::string place() const { return file + ":" + std::to_string(line); }
};

struct Script {
    static constexpr size_t MaxFile = 1024 * 1024; // bytes
    static constexpr size_t MaxLine = 1000;        // characters
    static constexpr size_t MaxSteps = 100000;     // all repetitions counted
    static constexpr unsigned MaxFiles = 1000;     // that are included
    static constexpr unsigned MaxDepth = 16;       // of files in files, and of repetitions in repetitions

    std::string file;
    std::vector<ScenarioStep> steps; // with all repetitions and files in their places
    bool hasStart = false;           // there is a step "start"
};

// On failure *error is "FILE:LINE: what", or "FILE: why it cannot be read", and the result is false.
bool loadScript(const std::string& fileName, Script* script, std::string* error);

} // namespace sim

#endif
