// wait, expect and the like: what scenarios are made of.
#include "sim/console/commands.h"

namespace sim {

const ConsoleCommands& waitCommands()
{
    static const ConsoleCommands commands = {};
    return commands;
}

} // namespace sim
