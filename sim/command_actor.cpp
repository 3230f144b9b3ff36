// How commands come to their actors, and the list of all of them for people. What each does stands with its
// actor.
#include "sim/command_actor.h"

#include <cstdlib>
#include <sstream>

namespace sim {

const char CommandPrefix[] = "ram.desk.";
const char CommandError[] = "ram.desk.error";

CommandActor::CommandActor(const Surroundings& surroundings, const std::string& name)
    : Actor(surroundings), name(name), command(CommandPrefix + name)
{
}

void CommandActor::takeCommand()
{
    const Value* value = terminal.database.find(command);
    if (!value)
        return;
    std::istringstream text(value->type == Type::String ? value->toText() : std::string());
    terminal.database.apply({{command, Value()}});

    Words words;
    std::string word;
    while (text >> word)
        words.push_back(word);
    std::string problem = words.empty() ? "a command is a text of one word or more" : carryOut(words);
    terminal.database.apply({{CommandError, problem.empty() ? Value() : Value::text(name + ": " + problem)}});
}

bool parseNumber(const std::string& text, int64_t low, int64_t high, int64_t* number)
{
    bool isHex = text.compare(0, 2, "0x") == 0;
    if (text.empty() || text.find_first_of(" \t+") != std::string::npos)
        return false;
    char* end = nullptr;
    long long value = strtoll(text.c_str(), &end, isHex ? 16 : 10);
    if (*end != '\0' || value < low || value > high) // beyond long long it is at a limit, which is outside
        return false;
    *number = value;
    return true;
}

std::string joined(const Words& words, size_t first)
{
    std::string text;
    for (size_t at = first; at < words.size(); at++)
        text += (at == first ? "" : " ") + words[at];
    return text;
}

const std::vector<CommandForm>& commandForms()
{
    static const std::vector<CommandForm> forms = {
        {"bundle", "start N", "ask the display to start the stored bundle N"},
        {"bundle", "stop", "end what runs, as the display does"},
        {"fail", "CAUSE", "end the session with this cause, or the next one if none runs"},
        {"fail", "off", "let the next one succeed after all"},
        {"alert", "add ID SEVERITY [FIELD=N ...] [TEXT]",
         "severity info, warning, error or fatal; fields sub_id, state, time"},
        {"alert", "clear [ID]", "take all alerts, or those of the id, out of the log"},
        {"signal", "LEVEL", "in dBHz, as 45.6; below 32 the network is lost"},
        {"signal", "up | down", "by 2 dBHz"},
        {"signal", "auto", "let it wander again"},
        {"battery", "[N] PERCENT", "state of charge of battery 1 (or 2)"},
        {"battery", "[N] STATE", "present, absent, error, idle, charging, discharging, precharging"},
        {"battery", "supply on | off", "external supply"},
        {"sim", "insert | remove", "the SIM card"},
        {"sim", "pin [CODE]", "the card asks for its PIN (1234 to begin with), three tries"},
        {"sim", "nopin", "it does not ask"},
        {"sim", "block | unblock", "no tries left; the PUK has been entered"},
        {"sim", "lock | reject", "it does not match the terminal's lock; it is invalid"},
        {"sim", "accept", "neither of the two"},
        {"update", "start | antenna", "a software update runs to its good end"},
        {"update", "fail ID", "it runs to 40 percent and ends with the event, as 0x10307"},
        {"update", "cancel", "it ends at once"},
        {"system", "start", "power up: initializing, radio module, normal operation"},
        {"system", "ready", "normal operation at once, antenna pointed"},
        {"system", "shutdown | reboot | safe", "stopping; stopping and starting; safe mode"},
        {"modem", "insert | remove", "a modem is there or not"},
        {"modem", "on | search | off", "it carries the traffic; it is waited for; the satellite does"},
        {"modem", "choose", "no link until the user chooses one on the web"},
        {"wan", "satellite | modem | both | none | unknown", "the active link alone"},
        {"bonding", "master | alone | slave | off", "with a second terminal; without it; steered by one; no"},
        {"at", "on | off", "somebody else controls the terminal"},
        {"dhcp", "on | off", "client mode of the LAN"},
    };
    return forms;
}

} // namespace sim
