// Processes of the terminal that react to the display: interfaces that are switched, and the antenna's
// pointing.
#include "sim/behaviour.h"

namespace sim {

namespace {

// A switched interface takes a moment to come up or go down.
constexpr uint32_t InterfaceDelay = 1500; // ms

class InterfaceActor : public Actor {
public:
    InterfaceActor(const Surroundings& surroundings, const std::string& interface)
        : Actor(surroundings), requested("cfg.interfaces." + interface + ".enabled"),
          state("ram.status.interfaces." + interface + ".enabled"), timer(surroundings.loop)
    {
    }

    void start() override { onChange(requested); }

    void onChange(const std::string& key) override
    {
        if (key == requested && terminal.number(requested, 0) != terminal.number(state, 0))
            timer.once(terminal.scaled(InterfaceDelay),
                       [this] { terminal.set(state, terminal.number(requested, 0) ? 1 : 0); });
    }

private:
    std::string requested;
    std::string state;
    Timer timer;
};

const char PointedStatus[] = "ram.status.pointed_status";
const char CsStatus[] = "rmcfg.protocols.umts.cs.status";
const char PsStatus[] = "rmcfg.protocols.umts.ps.status";
const char PlmnStatus[] = "rmcfg.protocols.umts.plmn.status";
const char BganState[] = "rmcfg.protocols.bgan.status.state";

enum Pointed { NotPointed = 0, Pointing = 1, IsPointed = 2 };

// What the radio module shows in each step from pointing to registered. The first step is taken at once.
struct RadioStep {
    uint32_t delay; // ms until this step
    const char* plmn;
    const char* attached; // both circuit and packet switched
    const char* state;
};
const RadioStep PointingSteps[] = {{0, "Scanning", "Idle", "Satellite search"}};
const RadioStep RegisteringSteps[] = {
    {0, "Searching", "Idle", "Receive system information"},
    {1500, "Selected", "Attaching", "Registering"},
    {1500, "Selected", "Attached", "Registered"},
};

class PointingActor : public Actor {
public:
    explicit PointingActor(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop)
    {
    }

    void onSignal(std::string_view name, const std::string& text) override
    {
        if (name != "bp_ctrl.pointing")
            return;
        if (text == "start")
            run(Pointing, PointingSteps, std::size(PointingSteps));
        else if (text == "stop" && terminal.number(PointedStatus, NotPointed) == Pointing)
            run(IsPointed, RegisteringSteps, std::size(RegisteringSteps));
        else if (text == "cancel" && terminal.number(PointedStatus, NotPointed) == Pointing)
            run(NotPointed, PointingSteps, std::size(PointingSteps));
    }

private:
    void run(Pointed pointed, const RadioStep* first, size_t count)
    {
        step = first;
        end = first + count;
        terminal.set(PointedStatus, pointed);
        takeStep();
    }
    void takeStep()
    {
        terminal.database.apply({{PlmnStatus, Value::text(step->plmn)},
                                 {CsStatus, Value::text(step->attached)},
                                 {PsStatus, Value::text(step->attached)},
                                 {BganState, Value::text(step->state)}});
        timer.stop();
        if (++step != end)
            timer.once(terminal.scaled(step->delay), [this] { takeStep(); });
    }

    const RadioStep* step = nullptr;
    const RadioStep* end = nullptr;
    Timer timer;
};

} // namespace

std::unique_ptr<Actor> makeInterfaceActor(const Surroundings& surroundings, const std::string& interface)
{
    return std::make_unique<InterfaceActor>(surroundings, interface);
}

std::unique_ptr<Actor> makePointingActor(const Surroundings& surroundings)
{
    return std::make_unique<PointingActor>(surroundings);
}

} // namespace sim
