// The commands with which people and scripts look into a running terminal: a bus client like any other.
//
// On the main thread; blocks until the terminal has answered.
#ifndef SIM_CLIENT_COMMANDS_H
#define SIM_CLIENT_COMMANDS_H

#include <string>
#include <vector>

namespace sim {

// Connects to the address and carries the command (its name, then its arguments) out: results on standard
// output, errors on standard error. Returns the exit status: 0, 1 if it failed, 2 for a wrong command line.
int runClientCommand(const std::string& address, const std::vector<std::string>& words);

// Prints what commands there are, for --help.
void printCommandHelp();

} // namespace sim

#endif
