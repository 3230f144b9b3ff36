// The simulator's own trace items, which the shell's command "trace" and the TRACE_ variables of the
// environment switch: bus, db, actor and console. What they tell goes to the log of the person at the desk.
//
// On the terminal's thread only.
#ifndef SIM_CONSOLE_TRACE_H
#define SIM_CONSOLE_TRACE_H

#include "sim/console/console.h"

namespace sim {

// A line that a console runs.
void traceConsole(const Desk& desk, const char* console, const std::string& line);

} // namespace sim

#endif
