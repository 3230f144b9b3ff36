// A console of the terminal: lines in, text out. One is on standard input, one for each client of the
// console's socket, one reads a scenario. All have the same commands (commands.h), which stand in the debug
// shell's table, so that its help and completion know them.
//
// A line is split at blanks; a word, or a part of one, may be in double quotes, in which \" and \\ stand for
// themselves. A line that is blank or begins with # does nothing. A command may take its time (press, wait,
// expect): the console is busy until it has ended, and other consoles go on. The shell's commands that run
// others (repeat, while, not, time and the group) wait for such a command too (compound.h). Those that touch
// the memory of this process are not to be had.
//
// The line of output behind which a command fails begins with "error: ". No other line begins with "=", and
// only what is told begins with "*": such a line is set one blank to the right.
//
// On the terminal's thread only. Nothing blocks.
#ifndef SIM_CONSOLE_CONSOLE_H
#define SIM_CONSOLE_CONSOLE_H

#include "sim/command_actor.h"
#include "sim/terminal.h"

#include "runtime/vx_shell.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

class Display;
class Traces;
class Witness;

// What the commands work on. It outlives all consoles.
struct Desk {
    Terminal& terminal;
    fdloop_t* loop;             // the terminal's
    uint32_t speed = 1;         // how many times faster the terminal goes than a real one
    Display* display = nullptr; // null: no display was started from here
    std::function<void(const std::string& line)> log = {}; // for the person at the desk; null: nobody
    Traces* traces = nullptr;                              // null: nothing is traced
    std::string pictures = {};  // where commands leave pictures with relative names; empty: where it runs
    Witness* witness = nullptr; // null: "expect" knows of values alone
    uint32_t patience = 1;      // how many times longer "expect" waits than it is told, for a busy machine
};

// A command that has not ended when it returns. Destroyed once it has, or when its console goes; it must then
// not call the console any more.
class PendingCommand {
public:
    virtual ~PendingCommand() = default;
};

// Results of a command.
enum : int {
    CommandDone = VX_CSHELL_OK,
    CommandFailed = 1,               // after Console::fail
    CommandEnds = VX_CSHELL_EXIT,    // the console ends
    CommandMisused = VX_CSHELL_USAGE // the words are not those of the command: its usage is printed
};

class Console : public CVXShell {
public:
    using Output = std::function<void(std::string_view text)>;
    using Done = std::function<void(int status)>;

    // The name stands in the prompt. Output takes all text of the commands, in whole lines.
    Console(Desk& desk, const std::string& name, Output output);
    ~Console() override;

    // Runs a line and calls done once with its status (CommandDone, CommandFailed or CommandEnds), at once or
    // later. Must not be called while the console is busy. done may run the next line, but neither it nor the
    // output may destroy the console.
    void run(const std::string& line, Done done);
    bool isBusy() const;
    // Gives up the command that runs, without a call of done. Not from the output.
    void cancel();

    // Completes the last word of the line as far as it is clear and returns the line, with a blank behind a
    // word that is whole; where several words would do they are in *candidates, which is empty otherwise.
    // Commands, their own words, and keys of the database up to their next dot.
    std::string complete(const std::string& line, std::vector<std::string>* candidates);

    // --- For the commands

    Desk& desk() { return surroundings; }
    __attribute__((format(printf, 2, 3))) void print(const char* format, ...);
    // Prints "error: " and the text as one line and returns CommandFailed.
    __attribute__((format(printf, 2, 3))) int fail(const char* format, ...);
    // For a command that takes its time: returns what the command must return. It ends with finish().
    int later(std::unique_ptr<PendingCommand> command);
    // The pending command has ended. It is destroyed some time after this call, not in it.
    void finish(int status);
    // Something that goes on behind the prompt, as watch does. It ends with the console.
    void keep(std::unique_ptr<PendingCommand> background);
    // Ends what goes on behind the prompt. Returns how many there were.
    size_t endBackground();
    // A line that belongs to no command that runs: what is watched. Output marks it with "* " at its
    // beginning.
    void tell(const std::string& line);

private:
    struct Impl;
    friend struct Impl;
    Desk& surroundings;
    std::unique_ptr<Impl> impl;
};

// The words of a line. False, with *error, where a quotation mark is missing or there is a NUL.
bool splitLine(const std::string& line, Words* words, std::string* error);
// A word, in quotation marks where it needs them, as splitLine takes it back.
std::string quotedWord(const std::string& word);

} // namespace sim

#endif
