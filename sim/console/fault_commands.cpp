// fault: the terminal misbehaves. bus: who is connected.
#include "sim/console/commands.h"

#include "sim/faults.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

namespace sim {

namespace {

constexpr int64_t MaxClient = INT64_MAX;
constexpr int64_t MaxCutAfter = 1000000;
constexpr int64_t MaxRate = 1000000;
constexpr double MaxStop = 24 * 60 * 60; // seconds

const char* plural(size_t count)
{
    return count == 1 ? "" : "s";
}

int list(Console& console, Faults& faults)
{
    for (const std::string& line : faults.list())
        console.print("%s\n", line.c_str());
    if (faults.list().empty())
        console.print("no faults\n");
    return CommandDone;
}

// --- One function for each form: the words behind its own one.

int delay(Console&, Faults& faults, const Words& words)
{
    int64_t milliseconds;
    if (words.size() != 1 || !parseNumber(words[0], 0, Faults::MaxDelay, &milliseconds))
        return CommandMisused;
    faults.delay(static_cast<uint32_t>(milliseconds));
    return CommandDone;
}

int stop(Console&, Faults& faults, const Words& words)
{
    if (words.size() > 1)
        return CommandMisused;
    double seconds = 0;
    if (!words.empty()) {
        char* end = nullptr;
        seconds = strtod(words[0].c_str(), &end);
        if (*end != '\0' || !(seconds >= 0.001 && seconds <= MaxStop))
            return CommandMisused;
    }
    faults.stop(static_cast<uint32_t>(std::lround(seconds * 1000)));
    return CommandDone;
}

int go(Console&, Faults& faults, const Words& words)
{
    if (!words.empty())
        return CommandMisused;
    faults.go();
    return CommandDone;
}

int noSuchClient(Console& console, int64_t client)
{
    return client ? console.fail("there is no client %lld", static_cast<long long>(client))
                  : console.fail("no client is connected");
}

int cutAfter(Console&, Faults& faults, const Words& words)
{
    int64_t messages;
    if (words.size() != 2 || !parseNumber(words[1], 0, MaxCutAfter, &messages))
        return CommandMisused;
    faults.cutAfter(static_cast<uint32_t>(messages));
    return CommandDone;
}

int cutAt(Console& console, Faults& faults, const Words& words)
{
    if (words.size() != 2)
        return CommandMisused;
    return faults.cutAt(words[1]) ? static_cast<int>(CommandDone) : console.fail("a bad expression");
}

int cut(Console& console, Faults& faults, const Words& words)
{
    if (!words.empty() && words[0] == "after")
        return cutAfter(console, faults, words);
    if (!words.empty() && words[0] == "at")
        return cutAt(console, faults, words);
    int64_t client = 0;
    if (words.size() > 1 || (!words.empty() && !parseNumber(words[0], 1, MaxClient, &client)))
        return CommandMisused;
    return faults.cut(static_cast<uint64_t>(client)) > 0 ? static_cast<int>(CommandDone)
                                                         : noSuchClient(console, client);
}

int deaf(Console& console, Faults& faults, const Words& words)
{
    std::string error;
    if (!words.empty())
        return CommandMisused;
    return faults.setDeaf(true, &error) ? static_cast<int>(CommandDone) : console.fail("%s", error.c_str());
}

int flood(Console&, Faults& faults, const Words& words)
{
    int64_t changes;
    int64_t perSecond = 0;
    if (words.empty() || !parseNumber(words[0], 1, Faults::MaxFlood, &changes))
        return CommandMisused;
    size_t at = 1;
    if (words.size() > at && parseNumber(words[at], 1, MaxRate, &perSecond))
        at++;
    if (words.size() > at + 1)
        return CommandMisused;
    faults.flood(static_cast<uint32_t>(changes), static_cast<uint32_t>(perSecond),
                 words.size() > at ? words[at] : std::string());
    return CommandDone;
}

int frame(Console& console, Faults& faults, const Words& words)
{
    if (words.empty()) {
        for (const BrokenFrame& row : brokenFrames())
            console.print("%-15s %s\n", row.kind, row.help);
        return CommandDone;
    }
    int64_t client = 0;
    if (words.size() > 2 || (words.size() == 2 && !parseNumber(words[1], 1, MaxClient, &client)))
        return CommandMisused;
    std::optional<size_t> count = faults.sendFrame(words[0], static_cast<uint64_t>(client));
    if (!count)
        return console.fail("no kind of frame is called %s (\"fault frame\" lists them)", words[0].c_str());
    return *count > 0 ? static_cast<int>(CommandDone) : noSuchClient(console, client);
}

const FaultStatus* findStatus(const std::string& word)
{
    for (const FaultStatus& row : faultStatuses()) {
        if (word == row.name || word == std::to_string(row.status))
            return &row;
    }
    return nullptr;
}

int answer(Console& console, Faults& faults, const Words& words)
{
    if (words.empty() || words.size() > 2)
        return CommandMisused;
    const FaultStatus* status = findStatus(words[0]);
    if (!status) {
        std::string known;
        for (const FaultStatus& row : faultStatuses())
            known += std::string(known.empty() ? "" : ", ") + std::to_string(row.status) + " " + row.name;
        return console.fail("a status is one of %s", known.c_str());
    }
    if (!faults.answer(status->status, words.size() > 1 ? words[1] : std::string()))
        return console.fail("a bad expression, or too many of them");
    return CommandDone;
}

int off(Console& console, Faults& faults, const Words& words)
{
    std::string error;
    if (!words.empty())
        return CommandMisused;
    return faults.off(&error) ? static_cast<int>(CommandDone) : console.fail("%s", error.c_str());
}

struct Form {
    const char* word;
    int (*run)(Console& console, Faults& faults, const Words& words);
};
const Form Forms[] = {
    {"delay", delay}, {"stop", stop},   {"go", go},         {"cut", cut}, {"deaf", deaf},
    {"flood", flood}, {"frame", frame}, {"answer", answer}, {"off", off},
};

int fault(Console& console, const Words& words)
{
    Faults* faults = console.desk().terminal.faults();
    if (!faults)
        return console.fail("the terminal is stopped");
    if (words.empty())
        return list(console, *faults);
    for (const Form& form : Forms) {
        if (words[0] == form.word)
            return form.run(console, *faults, Words(words.begin() + 1, words.end()));
    }
    return CommandMisused;
}

// --- Who is connected

std::string processName(int pid)
{
    char name[64] = "";
    std::string path = "/proc/" + std::to_string(pid) + "/comm";
    if (FILE* file = fopen(path.c_str(), "re")) {
        if (!fgets(name, sizeof name, file))
            name[0] = '\0';
        fclose(file);
    }
    name[strcspn(name, "\n")] = '\0';
    return name;
}

void printNames(Console& console, const char* heading, const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        console.print("    %s %s\n", heading, name.c_str());
}

int bus(Console& console, const Words& words)
{
    BusServer* server = console.desk().terminal.server();
    if (!words.empty())
        return CommandMisused;
    if (!server)
        return console.fail("the terminal is stopped");
    const std::vector<BusServer::ClientFacts> clients = server->clientFacts();
    for (const BusServer::ClientFacts& client : clients) {
        console.print("client %llu", static_cast<unsigned long long>(client.client));
        if (client.pid)
            console.print(": process %d %s", client.pid, processName(client.pid).c_str());
        if (client.waiting)
            console.print(", %zu byte%s wait for it", client.waiting, plural(client.waiting));
        console.print("\n");
        printNames(console, "filter", client.filters);
        printNames(console, "provides", client.provides);
    }
    if (clients.empty())
        console.print("no client is connected\n");
    return CommandDone;
}

} // namespace

const ConsoleCommands& faultCommands()
{
    static const ConsoleCommands commands = {
        {"fault", "", "print the faults that are in force", fault},
        {"fault", "delay MS", "deal with everything that clients send so much later, in order; 0 ends it",
         fault},
        {"fault", "stop [SECONDS]", "read nothing from clients, until \"go\" or for a time", fault},
        {"fault", "go", "read from clients again", fault},
        {"fault", "cut [CLIENT]", "close all connections of clients, or one", fault},
        {"fault", "cut after N", "close all connections when N more messages have come from clients", fault},
        {"fault", "cut at NAME", "close them all at the next message whose name matches the expression whole",
         fault},
        {"fault", "deaf", "let no new client connect", fault},
        {"fault", "flood N [PER_SECOND] [PREFIX]",
         "make N changes of the keys that begin so, or of new ones; at the end they are what they were",
         fault},
        {"fault", "frame", "list the kinds of broken frames", fault},
        {"fault", "frame KIND [CLIENT]", "send a broken frame to all clients, or to one", fault},
        {"fault", "answer STATUS [KEYS]",
         "answer reads with this error: of keys that match the expression whole, or of all", fault},
        {"fault", "off", "end all faults", fault},
        {"bus", "", "list the clients that are connected, with what they want to hear of", bus},
    };
    return commands;
}

} // namespace sim
