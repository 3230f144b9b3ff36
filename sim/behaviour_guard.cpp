// The keeper of the settings: what is out of its range does not stay, whoever wrote it. The last good value
// comes back.
#include "sim/command_actor.h"

#include <algorithm>

namespace sim {

namespace {

struct Range {
    const char* key;
    int32_t low;
    int32_t high;
    std::vector<int32_t> only = {}; // these alone, if any
};
const Range Ranges[] = {
    {"cfg.language", 0, 6},
    {"cfg.display.brightness", 1, 7}, // the automatic of 0 is not there
    {"cfg.display.timeout", 5, 300, {5, 30, 60, 120, 300}},
    {"cfg.audio_indication.pointing", 0, 1},
    {"cfg.power_up.switch_on_when_external_power", 0, 1},
    {"cfg.power_up.pointing_required", 0, 1},
    {"cfg.interfaces.wlan.enabled", 0, 1},
    {"cfg.interfaces.wlan.bssid", 0, 1},
    {"cfg.interfaces.isdn.enabled", 0, 1},
    {"cfg.interfaces.lan.enabled", 0, 1},
    {"cfg.interfaces.phone.enabled", 0, 1},
    {"cfg.interfaces.usb.enabled", 0, 1},
    {"cfg.wan.setting", 0, 3},
    {"cfg.bonding.enabled", 0, 1},
    {"cfg.net.user_groups.0.automatic_activation", 0, 1},
};

class GuardActor : public CommandActor {
public:
    explicit GuardActor(const Surroundings& surroundings) : CommandActor(surroundings, "guard") {}

    void start() override
    {
        for (const Range& range : Ranges)
            good.push_back(isGood(range) ? *terminal.database.find(range.key) : Value());
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        for (size_t at = 0; at < good.size(); at++) {
            if (key != Ranges[at].key)
                continue;
            if (!terminal.database.find(key))
                return; // the display makes do without it
            if (isGood(Ranges[at]))
                good[at] = *terminal.database.find(key);
            else if (isOn)
                terminal.database.apply({{key, good[at]}});
            return;
        }
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string word = joined(words, 0);
        if (word != "on" && word != "off")
            return "on or off, not " + word;
        isOn = word == "on";
        return "";
    }

private:
    bool isGood(const Range& range) const
    {
        const Value* value = terminal.database.find(range.key);
        if (!value || !value->isInt())
            return false;
        int32_t number = value->toInt();
        return number >= range.low && number <= range.high &&
               (range.only.empty() ||
                std::find(range.only.begin(), range.only.end(), number) != range.only.end());
    }

    std::vector<Value> good; // of each row; none: it had none
    bool isOn = true;
};

} // namespace

void addGuardActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<GuardActor>(surroundings));
}

} // namespace sim
