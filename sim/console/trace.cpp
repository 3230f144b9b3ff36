// The simulator's trace items, see the header.
#include "sim/console/trace.h"

#include "runtime/vx_trace.h"

namespace sim {

namespace {

// The items are the process's, as the table that they stand in.
struct Items {
    vx_trace_t* console = vx_xtrace_init("console", "a  lines that consoles run\n");
};

const Items& items()
{
    static const Items all;
    return all;
}

bool isOn(const vx_trace_t* trace, char flag)
{
    return trace->state && trace->mask >> (flag - 'a') & 1;
}

} // namespace

void traceConsole(const Desk& desk, const char* console, const std::string& line)
{
    if (desk.log && isOn(items().console, 'a'))
        desk.log(std::string("console ") + console + ": " + line);
}

} // namespace sim
