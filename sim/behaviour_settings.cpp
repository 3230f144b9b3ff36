// What the person at the desk sets by a word: modem, active link, bonding, external control, batteries.
// Nothing follows from them but what the display makes of them.
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
    // The services of both terminals add up.
    {"bonding", "master", {{BondingEnabled, 1}, {DhcpClient, 0}, {Service896, 2}, {Service896And64, 2}}},
    {"bonding", "alone", {{BondingEnabled, 1}, {DhcpClient, 0}, {Service896, 1}, {Service896And64, 1}}},
    {"bonding", "slave", {{BondingEnabled, 1}, {DhcpClient, 1}, {Service896, 1}, {Service896And64, 1}}},
    {"bonding", "off", {{BondingEnabled, 0}, {DhcpClient, 0}, {Service896, 1}, {Service896And64, 1}}},
    {"at", "on", {{SingleUser, 1}}},
    {"at", "off", {{SingleUser, 0}}},
    {"dhcp", "on", {{DhcpClient, 1}}},
    {"dhcp", "off", {{DhcpClient, 0}}},
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

const char ExternalSupply[] = "ram.status.psumcu.events.external_supply";
enum { BatteryPresent = 0, BatteryAbsent = -1, BatteryInError = -2 };

struct BatteryWord {
    const char* word;
    int32_t value;
};
const BatteryWord BatteryStates[] = {
    {"present", BatteryPresent}, {"absent", BatteryAbsent}, {"error", BatteryInError}};
const BatteryWord ChargeStates[] = {
    {"idle", ChargeIdle}, {"charging", Charging}, {"discharging", Discharging}, {"precharging", Precharging}};

class BatteryActor : public CommandActor {
public:
    explicit BatteryActor(const Surroundings& surroundings) : CommandActor(surroundings, "battery") {}

protected:
    std::string carryOut(const Words& words) override
    {
        if (words[0] == "supply")
            return words.size() == 2 && (words[1] == "on" || words[1] == "off") ? supply(words[1] == "on")
                                                                                : "supply on, or supply off";
        bool isNumbered = words.size() == 2 && (words[0] == "1" || words[0] == "2");
        if (words.size() != 1 && !isNumbered)
            return "a battery, 1 or 2, and one word";
        return change(isNumbered && words[0] == "2" ? 2 : 1, words.back());
    }

private:
    static std::string key(int battery, const char* field)
    {
        return "ram.status.battery." + std::to_string(battery) + "." + field;
    }
    int32_t percentOf(int battery) const
    {
        return terminal.number(key(battery, "relative_state_of_charge"), 0);
    }
    int32_t restingState(int32_t percent) const
    {
        if (terminal.number(ExternalSupply, 0) == 0)
            return Discharging;
        return percent < 100 ? Charging : ChargeIdle;
    }
    bool isPresent(int battery) const
    {
        return terminal.number(key(battery, "status"), BatteryAbsent) == BatteryPresent;
    }

    std::string change(int battery, const std::string& word)
    {
        for (const BatteryWord& state : BatteryStates) {
            if (word == state.word) {
                setStatus(battery, state.value);
                return "";
            }
        }
        if (!isPresent(battery))
            return "battery " + std::to_string(battery) + " is not there";
        int32_t charge = terminal.number(key(battery, "charge_discharge_status"), Discharging);
        int64_t percent = percentOf(battery);
        bool isKnown = parseNumber(word, 0, 100, &percent);
        for (const BatteryWord& state : ChargeStates) {
            if (word == state.word) {
                charge = state.value;
                isKnown = true;
            }
        }
        if (!isKnown)
            return "a percentage from 0 to 100 or a state, not " + word;
        terminal.database.apply(batteryWrites(battery, static_cast<int32_t>(percent), charge));
        return "";
    }
    // A battery that is not there has no values but its status.
    void setStatus(int battery, int32_t status)
    {
        constexpr int32_t NewPercent = 60;
        constexpr int32_t NewTemperature = 25;
        if (status == BatteryPresent && isPresent(battery))
            return;
        bool present = status == BatteryPresent;
        std::vector<Write> writes = present ? batteryWrites(battery, NewPercent, restingState(NewPercent))
                                            : batteryWrites(battery, 0, -1);
        writes.push_back({key(battery, "temperature"), Value::integer(present ? NewTemperature : 0)});
        writes.push_back({key(battery, "status"), Value::integer(status)});
        terminal.database.apply(writes);
    }
    std::string supply(bool on)
    {
        terminal.set(ExternalSupply, on);
        for (int battery : {1, 2}) {
            if (isPresent(battery))
                terminal.database.apply(
                    batteryWrites(battery, percentOf(battery), restingState(percentOf(battery))));
        }
        return "";
    }
};

} // namespace

void addSettingActors(const Surroundings& surroundings, Actors* actors)
{
    for (const char* name : {"modem", "wan", "bonding", "at", "dhcp"})
        actors->push_back(std::make_unique<SettingActor>(surroundings, name));
    actors->push_back(std::make_unique<BatteryActor>(surroundings));
}

} // namespace sim
