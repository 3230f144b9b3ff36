// The simulator's trace items, see the header.
#include "sim/console/trace.h"

#include "sim/bus_server.h"
#include "sim/database.h"
#include "sim/initial_values.h"
#include "sim/traffic.h"

#include "runtime/vx_trace.h"

namespace sim {

namespace {

constexpr size_t MaxMessage = 200;       // bytes of a message's text
constexpr uint32_t ClientInterval = 100; // ms between looks at who is connected

// The items are the process's, as the table that they stand in.
struct Items {
    vx_trace_t* bus = vx_xtrace_init("bus", "a  clients come and go\n"
                                            "b  signals\n"
                                            "c  requests and replies\n");
    vx_trace_t* db = vx_xtrace_init("db", "a  changes (refused writes are in the log anyway)\n");
    vx_trace_t* actor = vx_xtrace_init("actor", "a  commands to the terminal's processes\n"
                                                "b  why they were refused\n");
    vx_trace_t* console = vx_xtrace_init("console", "a  lines that consoles run\n"
                                                    "b  how they end\n");
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

bool wantsTraffic()
{
    return isOn(items().bus, 'b') || isOn(items().bus, 'c');
}

bool wantsChanges()
{
    return isOn(items().db, 'a') || isOn(items().actor, 'a') || isOn(items().actor, 'b');
}

} // namespace

Traces::Traces(Desk& desk) : desk(desk), clientTimer(desk.loop)
{
    update();
}

Traces::~Traces()
{
    desk.terminal.forget(changeListener);
    desk.terminal.forget(trafficListener);
}

void Traces::update()
{
    Terminal& terminal = desk.terminal;
    if (wantsChanges() && !changeListener) {
        changeListener =
            terminal.listenToChanges([this](const std::vector<Write>& changes) { onChanges(changes); });
    } else if (!wantsChanges() && changeListener) {
        terminal.forget(std::exchange(changeListener, 0));
    }
    if (wantsTraffic() && !trafficListener)
        trafficListener = terminal.listenToTraffic([this](const Traffic& traffic) { onTraffic(traffic); });
    else if (!wantsTraffic() && trafficListener)
        terminal.forget(std::exchange(trafficListener, 0));
    if (isOn(items().bus, 'a') && !clientTimer.isRunning()) {
        lookForClients();
        clientTimer.every(ClientInterval, [this] { lookForClients(); });
    } else if (!isOn(items().bus, 'a')) {
        clientTimer.stop();
        clients.clear();
    }
}

void Traces::lineBegins(const char* console, const std::string& line)
{
    if (isOn(items().console, 'a'))
        tell("console", std::string(console) + " runs " + line);
}

void Traces::lineEnds(const char* console, int status)
{
    static const char* const Ends[] = {"ok", "failed", "bye"}; // in the order of the results
    if (isOn(items().console, 'b'))
        tell("console", std::string(console) + ": " + Ends[status]);
    update();
}

void Traces::tell(const char* item, const std::string& text)
{
    std::string line = std::string("trace ") + item + ": " + text;
    for (char& character : line) {
        if (static_cast<unsigned char>(character) < ' ')
            character = '?';
    }
    if (desk.log)
        desk.log(line);
}

void Traces::onChanges(const std::vector<Write>& changes)
{
    for (const Write& change : changes) {
        if (isOn(items().db, 'a'))
            tell("db", change.key + " = " + describeValue(change.value));
        if (change.isDeletion())
            continue;
        const std::string prefix = CommandPrefix;
        bool isRefusal = change.key == CommandError;
        if (isRefusal && isOn(items().actor, 'b'))
            tell("actor", "refused: " + change.value.toText());
        // The keys of commands have no dot in the process's name, as others of the desk have.
        bool isCommand = !isRefusal && change.key.compare(0, prefix.size(), prefix) == 0 &&
                         change.key.find('.', prefix.size()) == std::string::npos;
        if (isCommand && change.value.type == Type::String && isOn(items().actor, 'a'))
            tell("actor", change.key.substr(prefix.size()) + " " + change.value.toText());
    }
}

void Traces::onTraffic(const Traffic& traffic)
{
    bool isSignal = traffic.header.type == CBUS_TYPE_SIGNAL;
    if (isOn(items().bus, isSignal ? 'b' : 'c'))
        tell("bus", describe(traffic, MaxMessage));
}

void Traces::lookForClients()
{
    BusServer* server = desk.terminal.server();
    std::set<uint64_t> now;
    if (server) {
        for (uint64_t client : server->clients())
            now.insert(client);
    }
    for (uint64_t client : now) {
        if (clients.count(client) == 0)
            tell("bus", "client " + std::to_string(client) + " is here");
    }
    for (uint64_t client : clients) {
        if (now.count(client) == 0)
            tell("bus", "client " + std::to_string(client) + " has gone");
    }
    clients = now;
}

} // namespace sim
