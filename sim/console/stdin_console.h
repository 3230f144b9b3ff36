// The console on standard input: on a terminal with a prompt, line editing, history and completion, and
// otherwise, where that is wanted, line by line. Its end ends the program.
//
// On a terminal, what comes while a line is typed (log lines, things watched) is printed above it. The
// terminal's settings are put back when the object goes, when the process exits or aborts, and while it is
// stopped (Ctrl-Z). In the background it reads nothing until it is the foreground again.
//
// One in a process, on the terminal's thread, which must be the main thread (signals). Output to a terminal
// that does not take it blocks, as all output of the program does.
#ifndef SIM_CONSOLE_STDIN_CONSOLE_H
#define SIM_CONSOLE_STDIN_CONSOLE_H

#include "sim/console/console.h"

#include <memory>
#include <string>

namespace sim {

class StdinConsole {
public:
    // Whether standard input and output are a terminal whose foreground this process is.
    static bool isOnTerminal();

    // Begins at once. The desk must outlive it.
    explicit StdinConsole(Desk& desk);
    ~StdinConsole();
    StdinConsole(const StdinConsole&) = delete;
    StdinConsole& operator=(const StdinConsole&) = delete;

    // Prints a line on standard error without tearing the one that is typed.
    void log(const std::string& line);
    // Not on a terminal: whether a line has failed.
    bool hasFailed() const;

private:
    class Session;
    class TerminalSession;
    class PipeSession;
    std::unique_ptr<Session> session;
};

} // namespace sim

#endif
