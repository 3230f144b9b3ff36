// messages, record and replay: what the bus carries.
#include "sim/console/commands.h"

namespace sim {

const ConsoleCommands& trafficCommands()
{
    static const ConsoleCommands commands = {};
    return commands;
}

} // namespace sim
