// The simulator's own trace items, which the shell's command "trace" and the TRACE_ variables of the
// environment switch: bus, db, actor and console. What they tell goes to the log of the person at the desk,
// one line for each thing: "trace bus: ...".
//
// On the terminal's thread only.
#ifndef SIM_CONSOLE_TRACE_H
#define SIM_CONSOLE_TRACE_H

#include "sim/console/console.h"
#include "sim/timer.h"

#include <set>

namespace sim {

struct Traffic;

// Listens to the terminal while an item wants it. One in a process; the desk must outlive it.
class Traces {
public:
    explicit Traces(Desk& desk);
    ~Traces();
    Traces(const Traces&) = delete;
    Traces& operator=(const Traces&) = delete;

    // The items may have been switched.
    void update();
    // A console runs a line; it has ended with a status.
    void lineBegins(const char* console, const std::string& line);
    void lineEnds(const char* console, int status);

private:
    void tell(const char* item, const std::string& text);
    void onChanges(const std::vector<Write>& changes);
    void onTraffic(const Traffic& traffic);
    void lookForClients();

    Desk& desk;
    uint64_t changeListener = 0;
    uint64_t trafficListener = 0;
    Timer clientTimer;
    std::set<uint64_t> clients;
};

} // namespace sim

#endif
