// get, set, list, watch and the rest: the database as a process of the terminal sees it.
#include "sim/console/commands.h"

namespace sim {

const ConsoleCommands& databaseCommands()
{
    static const ConsoleCommands commands = {};
    return commands;
}

} // namespace sim
