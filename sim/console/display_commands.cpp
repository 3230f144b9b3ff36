// press, picture, log: the display that was started from here.
#include "sim/console/commands.h"

namespace sim {

const ConsoleCommands& displayCommands()
{
    static const ConsoleCommands commands = {};
    return commands;
}

} // namespace sim
