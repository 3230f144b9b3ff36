// The other side of the consoles' socket: has a running terminal carry commands out.
//
// On the main thread; blocks until they have ended.
#ifndef SIM_CONSOLE_SOCKET_CLIENT_H
#define SIM_CONSOLE_SOCKET_CLIENT_H

#include <string>
#include <vector>

namespace sim {

// Carries the command (its name and its arguments) out, or, for the one word "-", each line of standard
// input. Output, and what is watched, goes to standard output, errors to standard error. Returns the exit
// status: 0, 1 if something failed, 2 for words that no line can hold.
int runSocketCommand(const std::string& path, const std::vector<std::string>& words);

} // namespace sim

#endif
