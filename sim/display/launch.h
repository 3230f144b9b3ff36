// Starts a program as a child that ends with this process, however that ends.
//
// On the main thread only: the child is bound to the thread that starts it. Blocks until the program runs.
#ifndef SIM_DISPLAY_LAUNCH_H
#define SIM_DISPLAY_LAUNCH_H

#include <csignal>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace sim {

struct Launch {
    std::vector<std::string> command;               // program, looked for in PATH, and arguments
    std::map<std::string, std::string> environment; // instead of what this process has; empty: without it
    std::string output;                             // file to which its output is appended; empty: none
    sigset_t signalMask;                            // that it begins with
};

// The child has a process group of its own, so that a Ctrl-C is this process's alone, no other descriptors
// than the three standard ones (its input is empty), and default handling of all signals. Returns its
// identifier, or -1 with *error.
pid_t launch(const Launch& launch, std::string* error);

} // namespace sim

#endif
