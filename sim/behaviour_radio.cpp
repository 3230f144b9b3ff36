// The radio module: the antenna that is pointed, the signal it receives, and the registration in the network
// that follows from these and the SIM.
#include "sim/command_actor.h"
#include "sim/sequence.h"

#include <algorithm>
#include <cmath>

namespace sim {

const char SignalLevelKey[] = "ram.desk.signal.level";

namespace {

const char Mode[] = "rmcfg.sys.status.mode";
const char PointedStatus[] = "ram.status.pointed_status";
const char UsimStatus[] = "rmcfg.platform.usim.status";
const char PinStatus[] = "rmcfg.platform.usim.pin.status";
const char PsStatus[] = "rmcfg.protocols.umts.ps.status";
const char Operating[] = "operating";

enum Pointed { PointedUnknown = -1, NotPointed = 0, Pointing = 1, IsPointed = 2 };

// The commands of the display. What the antenna's direction is, nobody knows while the radio module is off,
// and when it has started the antenna has to be pointed anew.
class PointingActor : public Actor {
public:
    using Actor::Actor;

    void onSignal(std::string_view name, const std::string& text) override
    {
        if (name != "bp_ctrl.pointing" || terminal.text(Mode) != Operating)
            return;
        bool isPointing = terminal.number(PointedStatus, NotPointed) == Pointing;
        if (text == "start")
            terminal.set(PointedStatus, Pointing);
        else if (text == "stop" && isPointing)
            terminal.set(PointedStatus, IsPointed);
        else if (text == "cancel" && isPointing)
            terminal.set(PointedStatus, NotPointed);
    }
    void onChange(const std::string& key) override
    {
        if (key != Mode)
            return;
        if (terminal.text(Mode) != Operating)
            terminal.set(PointedStatus, PointedUnknown);
        else if (terminal.number(PointedStatus, PointedUnknown) == PointedUnknown)
            terminal.set(PointedStatus, NotPointed);
    }
};

Step radioStep(uint32_t delay, const char* plmn, const char* attached, const char* state)
{
    return {delay,
            {{"rmcfg.protocols.umts.plmn.status", Value::text(plmn)},
             {"rmcfg.protocols.umts.cs.status", Value::text(attached)},
             {PsStatus, Value::text(attached)},
             {"rmcfg.protocols.bgan.status.state", Value::text(state)}}};
}

// Where the registration is heading.
enum class Aim { Off, NoSim, Unpointed, NoSignal, Registered };

std::vector<Step> stepsTo(Aim aim)
{
    switch (aim) {
    case Aim::Off:
        return {radioStep(0, "n/a", "N/A", "N/A")};
    case Aim::NoSim:
        return {radioStep(0, "Not registered", "Idle", "Satellite search")};
    case Aim::Unpointed:
        return {radioStep(0, "Scanning", "Idle", "Satellite search")};
    case Aim::NoSignal: // a short dip does no harm
        return {radioStep(1500, "Searching", "Idle", "Satellite search")};
    case Aim::Registered:
        break;
    }
    return {radioStep(0, "Searching", "Idle", "Receive system information"),
            radioStep(1500, "Selected", "Attaching", "Registering"),
            radioStep(1500, "Selected", "Attached", "Registered")};
}

class RegistrationActor : public Actor {
public:
    explicit RegistrationActor(const Surroundings& surroundings) : Actor(surroundings), sequence(surroundings)
    {
    }

    // What the values say at the start is how it is.
    void start() override { aim = wanted(); }
    void onChange(const std::string& key) override
    {
        const char* const causes[] = {Mode, PointedStatus, UsimStatus, PinStatus, SignalLevelKey};
        if (std::find(std::begin(causes), std::end(causes), key) == std::end(causes))
            return;
        Aim before = aim;
        aim = wanted();
        if (aim == before)
            return;
        // The signal came back before its loss was noticed.
        if (before == Aim::NoSignal && aim == Aim::Registered && terminal.text(PsStatus) == "Attached")
            sequence.stop();
        else
            sequence.run(stepsTo(aim));
    }

private:
    Aim wanted() const
    {
        if (terminal.text(Mode) != Operating)
            return Aim::Off;
        if (terminal.number(UsimStatus, -1) != 1 || terminal.text(PinStatus) != "Valid")
            return Aim::NoSim;
        if (terminal.number(PointedStatus, PointedUnknown) != IsPointed)
            return Aim::Unpointed;
        if (terminal.number(SignalLevelKey, LowestSignal) < LowestSignal)
            return Aim::NoSignal;
        return Aim::Registered;
    }

    Aim aim = Aim::Off;
    Sequence sequence;
};

// The signal as the person at the desk wants it.
class SignalActor : public CommandActor {
public:
    explicit SignalActor(const Surroundings& surroundings) : CommandActor(surroundings, "signal") {}

protected:
    std::string carryOut(const Words& words) override
    {
        if (words.size() != 1)
            return "a level in dBHz, up, down or auto";
        if (words[0] == "auto") {
            terminal.database.apply({{SignalLevelKey, Value()}});
            return "";
        }
        int32_t level = terminal.number(SignalLevelKey, terminal.number("ram.status.signal_strength", 0));
        if (words[0] == "up" || words[0] == "down")
            level = std::max(0, std::min(Highest, level + (words[0] == "up" ? Step : -Step)));
        else if (!parseLevel(words[0], &level))
            return "a level is a number from 0 to 70, as 45.6, not " + words[0];
        terminal.database.apply({{"ram.status.signal_strength", Value::integer(level)},
                                 {"ram.status.signal_strength_norm", Value::integer(signalBars(level))},
                                 {SignalLevelKey, Value::integer(level)}});
        return "";
    }

private:
    static constexpr int32_t Highest = 700;
    static constexpr int32_t Step = 20;

    static bool parseLevel(const std::string& text, int32_t* tenths)
    {
        char* end = nullptr;
        double value = strtod(text.c_str(), &end);
        if (text.find_first_not_of("0123456789.") != std::string::npos || *end != '\0' ||
            !(value >= 0 && value <= Highest / 10))
            return false;
        *tenths = static_cast<int32_t>(std::lround(value * 10));
        return true;
    }
};

} // namespace

void addRadioActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<PointingActor>(surroundings));
    actors->push_back(std::make_unique<RegistrationActor>(surroundings));
    actors->push_back(std::make_unique<SignalActor>(surroundings));
}

} // namespace sim
