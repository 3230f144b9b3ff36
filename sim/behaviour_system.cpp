// The system manager: power-up, normal operation, shutdown, reboot. And when the application manager runs the
// display: not while the terminal is off, and anew after a reboot (DisplayRunsKey).
#include "sim/command_actor.h"
#include "sim/sequence.h"

namespace sim {

const char DisplayRunsKey[] = "ram.desk.display";

namespace {

const char ExternalSupply[] = "ram.status.psumcu.events.external_supply";
const char SwitchOnSetting[] = "cfg.power_up.switch_on_when_external_power";
const char PositionFix[] = "ram.status.position.fix";
const char PositionSatellites[] = "ram.status.position.satellites";
const char UserSelectionKey[] = "ram.wan.user_selection";
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
enum { BatteryPresent = 0, BatteryUnknown = -2 };
enum { FullFix = 3, AllSatellites = 8 };
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

    void start() override
    {
        isSupplied = terminal.number(ExternalSupply, 0) != 0;
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key != ExternalSupply)
            return;
        bool was = isSupplied;
        isSupplied = terminal.number(ExternalSupply, 0) != 0;
        if (isOff() && isSupplied && !was && terminal.number(SwitchOnSetting, 0) == 1)
            sequence.run(powerUp(SwitchOnDelay));
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string word = joined(words, 0);
        if ((word == "shutdown" || word == "reboot") && isOff())
            return "it is off: start comes first";
        if ((word == "start" || word == "ready") && !hasPower())
            return "there is no power: supply on or a charged battery comes first";
        if (word == "start")
            sequence.run(powerUp(0));
        else if (word == "ready")
            sequence.run({{0, readyWrites()}});
        else if (word == "shutdown")
            // The power goes before anybody could see the radio module stop, which would look like a reboot.
            sequence.run({{0, {status(Stopping)}}, {CloseDelay, {displayRuns(false)}}});
        else if (word == "reboot")
            sequence.run(reboot());
        else if (word == "safe")
            sequence.run({{0, {displayRuns(true), status(SafeMode), radioModule(false)}}});
        else
            return "start, ready, shutdown, reboot or safe";
        return "";
    }

private:
    static constexpr uint32_t CloseDelay = 4000;    // ms
    static constexpr uint32_t SwitchOnDelay = 1000; // ms

    static Write displayRuns(bool runs) { return {DisplayRunsKey, runs ? Value() : Value::integer(0)}; }
    bool isOff() const
    {
        return terminal.number(ExtendedStatus, NormalOperation) == Stopping && !sequence.isRunning() &&
               terminal.database.find(DisplayRunsKey);
    }
    // Where nothing is known of batteries there is always power.
    bool hasPower() const
    {
        bool isKnown = false;
        for (const char* battery : {"1", "2"}) {
            const std::string prefix = "ram.status.battery." + std::string(battery) + ".";
            int32_t status = terminal.number(prefix + "status", BatteryUnknown);
            isKnown |= status != BatteryUnknown;
            if (status == BatteryPresent && terminal.number(prefix + "relative_state_of_charge", 0) > 0)
                return true;
        }
        return !isKnown || terminal.number(ExternalSupply, 0) != 0;
    }
    // The radio module is there, and has read its card, before the system says that it operates.
    std::vector<Step> powerUp(uint32_t delay) const
    {
        std::vector<Write> operating = startLink();
        operating.push_back(status(NormalOperation));
        return {{delay,
                 {displayRuns(true),
                  status(Undefined),
                  radioModule(false),
                  {WanActive, Value::integer(WanUnknown)}}},
                {1000, {status(SystemInitializing)}},
                {2000, {radioModule(true)}},
                {3000, operating}};
    }
    std::vector<Step> reboot() const
    {
        std::vector<Step> steps = {
            {0, {status(Rebooting)}}, {2000, {radioModule(false)}}, {1500, {displayRuns(false)}}};
        std::vector<Step> then = powerUp(1500);
        steps.insert(steps.end(), then.begin(), then.end());
        return steps;
    }
    std::vector<Write> readyWrites() const
    {
        return {radioModule(true),
                displayRuns(true),
                {PositionFix, Value::integer(FullFix)},
                {PositionSatellites, Value::integer(AllSatellites)},
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
        return {{ModemActivate, Value::integer(useModem)},
                {UserSelectionKey, Value::integer(0)}, // nobody has selected one yet
                {WanActive, Value::integer(link)}};
    }

    Sequence sequence;
    bool isSupplied = false;
};

} // namespace

void addSystemActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<SystemActor>(surroundings));
}

} // namespace sim
