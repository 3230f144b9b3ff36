// The system manager: power-up, normal operation, shutdown, reboot.
#include "sim/command_actor.h"
#include "sim/sequence.h"

namespace sim {

namespace {

const char ExtendedStatus[] = "ram.status.ext_system";
const char Mode[] = "rmcfg.sys.status.mode";
const char PointedStatus[] = "ram.status.pointed_status";
const char WanActive[] = "ram.wan.active";
const char ModemActivate[] = "ram.modem.activate";
const char ModemPresent[] = "ram.modem.status.present";
const char StartupWan[] = "cfg.wan.setting";
const char UpdateActive[] = "ram.status.sw_update.active";

enum {
    Undefined = 0,
    SystemInitializing = 1,
    Stopping = 4,
    Rebooting = 5,
    SafeMode = 8,
    NormalOperation = 10
};
enum { Pointed = 2 };
enum { WanUnknown = -1, WanNone = 0, WanSatellite = 1, WanModem = 2 };
enum { ModemIfAvailable = 0, UserSelection = 1, ModemAtStartup = 3 };

Write status(int32_t value)
{
    return {ExtendedStatus, Value::integer(value)};
}

Write radioModule(bool operates)
{
    return {Mode, Value::text(operates ? "operating" : "stopped")};
}

class SystemActor : public CommandActor {
public:
    explicit SystemActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "system"), sequence(surroundings)
    {
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string word = joined(words, 0);
        if (word == "start")
            sequence.run(powerUp(0));
        else if (word == "ready")
            sequence.run({{0, readyWrites()}});
        else if (word == "shutdown")
            // The power goes before anybody could see the radio module stop, which would look like a reboot.
            sequence.run({{0, {status(Stopping)}}});
        else if (word == "reboot")
            sequence.run(reboot());
        else if (word == "safe")
            sequence.run({{0, {status(SafeMode), radioModule(false)}}});
        else
            return "start, ready, shutdown, reboot or safe";
        return "";
    }

private:
    // The radio module is there, and has read its card, before the system says that it operates.
    std::vector<Step> powerUp(uint32_t delay) const
    {
        std::vector<Write> operating = startLink();
        operating.push_back(status(NormalOperation));
        return {{delay, {status(Undefined), radioModule(false), {WanActive, Value::integer(WanUnknown)}}},
                {1000, {status(SystemInitializing)}},
                {2000, {radioModule(true)}},
                {3000, operating}};
    }
    std::vector<Step> reboot() const
    {
        std::vector<Step> steps = {{0, {status(Rebooting)}}, {2000, {radioModule(false)}}};
        std::vector<Step> then = powerUp(3000);
        steps.insert(steps.end(), then.begin(), then.end());
        return steps;
    }
    std::vector<Write> readyWrites() const
    {
        return {radioModule(true),
                {PointedStatus, Value::integer(Pointed)},
                {ModemActivate, Value::integer(0)},
                {WanActive, Value::integer(WanSatellite)},
                {UpdateActive, Value::integer(0)},
                status(NormalOperation)};
    }
    // The link that the setting asks for at the start.
    std::vector<Write> startLink() const
    {
        int32_t setting = terminal.number(StartupWan, -1);
        bool isPresent = terminal.number(ModemPresent, 0) == 1;
        bool useModem = setting == ModemAtStartup || (setting == ModemIfAvailable && isPresent);
        int32_t link = WanSatellite;
        if (useModem)
            link = isPresent ? WanModem : WanNone;
        else if (setting == UserSelection)
            link = WanNone;
        return {{ModemActivate, Value::integer(useModem)}, {WanActive, Value::integer(link)}};
    }

    Sequence sequence;
};

} // namespace

void addSystemActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<SystemActor>(surroundings));
}

} // namespace sim
