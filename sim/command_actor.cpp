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

std::string giveCommand(const Surroundings& surroundings, const std::string& name, const std::string& words)
{
    const Value* standing = surroundings.database.find(CommandError);
    const Value before = standing ? *standing : Value();
    surroundings.database.apply({{CommandPrefix + name, Value::text(words)}});
    surroundings.database.apply({{CommandPrefix + name, Value()}}); // where nobody has taken it
    const std::string problem = surroundings.text(CommandError);
    surroundings.database.apply({{CommandError, before}});
    return problem;
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
        {"session", "GROUP standard | KBPS", "a session of another user group, 1 to 9, connects and runs"},
        {"session", "GROUP stop", "it ends"},
        {"fail", "CAUSE", "end the session with this cause, by number or name, or the next one if none runs"},
        {"fail", "off", "let the next one succeed after all"},
        {"alert", "add ID SEVERITY [FIELD=N ...] [TEXT]",
         "severity info, warning, error or fatal; fields sub_id, state, time"},
        {"alert", "clear [ID [sub_id=N]]", "take all alerts, or those of the id, out of the log"},
        {"signal", "LEVEL", "in dBHz, as 45.6; below 32 the network is lost"},
        {"signal", "up | down", "by 2 dBHz"},
        {"signal", "auto", "let it wander again"},
        {"beam", "global | regional | narrow [ID]", "the spot beam, until the next auto"},
        {"beam", "auto", "as the registration goes: global, regional, narrow"},
        {"network", "search", "the network is not found"},
        {"network", "register", "register anew"},
        {"network", "reject [CAUSE]", "the network refuses to attach, by number or name of the cause"},
        {"network", "limited", "nothing but limited service"},
        {"network", "deregister", "silently no longer registered"},
        {"network", "auto", "as antenna, card and signal allow"},
        {"position", "LATITUDE LONGITUDE", "in degrees, as 59.91 -10.75"},
        {"position", "lost | search | found", "no satellites; they are searched from cold; a fix at once"},
        {"position", "show | hide", "whether the display may show it, with the next change"},
        {"battery", "[N] PERCENT", "state of charge of battery 1 (or 2)"},
        {"battery", "[N] STATE", "present, absent, error, idle, charging, discharging, precharging"},
        {"battery", "[N] temperature DEGREES | normal", "its temperature, -40 to 100"},
        {"battery", "supply on | off", "as the command supply"},
        {"supply", "on | off", "external supply"},
        {"supply", "auto", "plugged in at 20 percent and out when full, while values move"},
        {"temperature", "[BATTERY] DEGREES | normal", "of the terminal, or of battery 1 or 2, -40 to 100"},
        {"interfaces", "NAME up | down", "wlan, lan, phone, isdn or usb, as switched on the web"},
        {"interfaces", "NAME fail", "it goes down and does not come up until the next up"},
        {"clients", "NAME N", "so many of them are connected to an interface that is up"},
        {"sim", "insert | remove", "the SIM card"},
        {"sim", "pin [CODE]", "the card asks for its PIN (1234 to begin with), three tries"},
        {"sim", "nopin", "it does not ask"},
        {"sim", "puk CODE PIN", "enter the PUK (12345678) of a blocked card and a new PIN, as on the web"},
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
        {"wan", "select satellite | modem", "the user chooses a link on the web"},
        {"bonding", "master | alone | slave | off", "with a second terminal; without it; steered by one; no"},
        {"at", "on | off", "somebody else controls the terminal"},
        {"dhcp", "on | off", "client mode of the LAN"},
        {"dhcp", "none", "client mode, and no server answers"},
        {"guard", "on | off", "settings out of range are put back, or stay"},
    };
    return forms;
}

} // namespace sim
