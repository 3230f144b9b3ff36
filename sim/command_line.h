// The command line of terminalsim: a table of options, each with the function that takes it, and the command
// behind them.
//
// Plain functions without state; any thread.
#ifndef SIM_COMMAND_LINE_H
#define SIM_COMMAND_LINE_H

#include "sim/terminal.h"

#include <string>
#include <utility>
#include <vector>

namespace sim {

struct CommandLine {
    enum class ConsoleMode {
        Automatic, // on a terminal whose foreground this is
        Always,    // lines from standard input, whatever it is
        Never
    };

    TerminalOptions options;
    std::vector<std::pair<std::string, Value>> values; // of --set
    bool quiet = false;
    bool help = false;
    bool helpMarkdown = false;
    ConsoleMode console = ConsoleMode::Automatic;
    std::string socket;  // of the consoles; empty: none
    std::string display; // program to start as the display; empty: none
    std::vector<std::string> displayArguments;
    std::string displayLog;           // empty: kept as long as this runs
    std::string keypad;               // where its keypad's plugin lies; empty: beside this program, if there
    std::string syslogLibrary;        // that is loaded into it; the same
    std::string record;               // file to record to; empty: none
    std::string replay;               // recording to give again; empty: none
    std::string scenario;             // file to run; empty: none
    std::string pictures;             // directory for the pictures of commands; empty: none
    bool stay = false;                // go on when the scenario is over
    uint32_t patience = 1;            // how many times longer "expect" waits than it is told
    std::vector<std::string> command; // with its arguments; empty: run the terminal
};

// One option. A row is all that a new one needs.
struct CommandLineOption {
    const char* name;     // with its two dashes
    const char* argument; // what stands behind it; null: nothing
    const char* help;
    // argument is null where the option has none. False with *error, one line.
    bool (*take)(CommandLine* line, const char* argument, std::string* error);
};
const std::vector<CommandLineOption>& commandLineOptions();

// False with *error, one line, if it is none.
bool parseCommandLine(int argc, char** argv, CommandLine* line, std::string* error);

// The usage and the options, for --help.
void printCommandLineHelp();

} // namespace sim

#endif
