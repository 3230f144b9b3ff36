// What the person at the desk sets by a word: modem, active link, bonding, external control. And the router,
// which follows the modem and what the user selects on the web.
#include "sim/command_actor.h"

namespace sim {

namespace {

struct Setting {
    const char* name;
    const char* word;
    std::vector<std::pair<const char*, int32_t>> values;
};

const char ModemPresent[] = "ram.modem.status.present";
const char ModemActivate[] = "ram.modem.activate";
const char WanActive[] = "ram.wan.active";
const char WanSelection[] = "ram.wan.user_selection";
const char StartupWan[] = "cfg.wan.setting";
const char BondingEnabled[] = "cfg.bonding.enabled";
const char DhcpClient[] = "ram.net.eth0.dhcp_client_mode";
const char Service896[] = "ram.bonding.status.service.0.cnt";
const char Service896And64[] = "ram.bonding.status.service.1.cnt";
const char ExtendedStatus[] = "ram.status.ext_system";
const char SingleUser[] = "ram.net.single_user_mode";

const Setting Settings[] = {
    {"modem", "insert", {{ModemPresent, 1}}},
    {"modem", "remove", {{ModemPresent, 0}}},
    {"modem", "on", {{ModemPresent, 1}, {ModemActivate, 1}, {WanSelection, 2}, {WanActive, 2}}},
    {"modem", "search", {{ModemPresent, 0}, {ModemActivate, 1}, {WanSelection, 2}, {WanActive, 0}}},
    {"modem", "off", {{StartupWan, 2}, {ModemActivate, 0}, {WanSelection, 1}, {WanActive, 1}}},
    {"modem", "choose", {{StartupWan, 1}, {ModemActivate, 0}, {WanSelection, 0}, {WanActive, 0}}},
    {"wan", "unknown", {{WanActive, -1}}},
    {"wan", "none", {{WanActive, 0}}},
    {"wan", "satellite", {{WanActive, 1}}},
    {"wan", "modem", {{WanActive, 2}}},
    {"wan", "both", {{WanActive, 3}}},
    {"wan", "select satellite", {{WanSelection, 1}}},
    {"wan", "select modem", {{WanSelection, 2}}},
    // The services of both terminals add up.
    {"bonding", "master", {{BondingEnabled, 1}, {DhcpClient, 0}, {Service896, 2}, {Service896And64, 2}}},
    {"bonding", "alone", {{BondingEnabled, 1}, {DhcpClient, 0}, {Service896, 1}, {Service896And64, 1}}},
    {"bonding", "slave", {{BondingEnabled, 1}, {DhcpClient, 1}, {Service896, 1}, {Service896And64, 1}}},
    {"bonding", "off", {{BondingEnabled, 0}, {DhcpClient, 0}, {Service896, 1}, {Service896And64, 1}}},
    {"at", "on", {{SingleUser, 1}}},
    {"at", "off", {{SingleUser, 0}}},
};

class SettingActor : public CommandActor {
public:
    SettingActor(const Surroundings& surroundings, const std::string& name)
        : CommandActor(surroundings, name), name(name)
    {
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string word = joined(words, 0);
        std::string known;
        for (const Setting& setting : Settings) {
            if (name != setting.name)
                continue;
            if (word == setting.word) {
                set(setting);
                return "";
            }
            known += (known.empty() ? "" : ", ") + std::string(setting.word);
        }
        return "one of " + known + ", not " + word;
    }

private:
    void set(const Setting& setting)
    {
        std::vector<Write> writes;
        for (const auto& [key, value] : setting.values)
            writes.push_back({key, Value::integer(value)});
        terminal.database.apply(writes);
    }

    std::string name;
};

// The router's choice of the link, a moment after what it depends on has changed. (A command above sets all
// of it at once, and nothing is left to do.)
class LinkActor : public Actor {
public:
    explicit LinkActor(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop) {}

    void onChange(const std::string& key) override
    {
        if (key == WanActive) {
            timer.stop();
        } else if (key == WanSelection) {
            int32_t selection = terminal.number(WanSelection, -1);
            if (selection == SelectSatellite || selection == SelectModem)
                terminal.set(ModemActivate, selection == SelectModem);
            follow();
        } else if (key == ModemPresent || key == ModemActivate) {
            follow();
        }
    }

private:
    static constexpr uint32_t Delay = 3000; // ms
    enum { SelectSatellite = 1, SelectModem = 2 };
    enum { None = 0, Satellite = 1, Modem = 2, Both = 3 };
    enum { UserSelection = 1 };
    enum { NormalOperation = 10 };

    void follow()
    {
        timer.stop();
        int32_t active = terminal.number(WanActive, None);
        if (terminal.number(ExtendedStatus, 0) < NormalOperation || link() == active)
            return;
        timer.once(terminal.scaled(Delay), [this] { terminal.set(WanActive, link()); });
    }
    int32_t link() const
    {
        if (terminal.number(ModemActivate, 0) == 1)
            return terminal.number(ModemPresent, 0) == 1 ? Modem : None;
        bool mustChoose = terminal.number(WanSelection, -1) != SelectSatellite &&
                          terminal.number(StartupWan, -1) == UserSelection;
        return mustChoose ? None : Satellite;
    }

    Timer timer;
};

} // namespace

void addSettingActors(const Surroundings& surroundings, Actors* actors)
{
    for (const char* name : {"modem", "wan", "bonding", "at"})
        actors->push_back(std::make_unique<SettingActor>(surroundings, name));
    actors->push_back(std::make_unique<LinkActor>(surroundings));
}

} // namespace sim
