// Completion of a console's line.
#include "sim/console/console.h"

namespace sim {

std::string Console::complete(const std::string& line, std::vector<std::string>* candidates)
{
    candidates->clear();
    return line;
}

} // namespace sim
