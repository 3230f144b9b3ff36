// fault: the terminal misbehaves.
#include "sim/console/commands.h"

namespace sim {

const ConsoleCommands& faultCommands()
{
    static const ConsoleCommands commands = {};
    return commands;
}

} // namespace sim
