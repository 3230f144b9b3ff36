// The antenna that is pointed, and the signal it receives.
#include "sim/command_actor.h"

#include <algorithm>
#include <cmath>

namespace sim {

const char SignalLevelKey[] = "ram.desk.signal.level";

namespace {

const char Mode[] = "rmcfg.sys.status.mode";
const char PointedStatus[] = "ram.status.pointed_status";
const char ExtendedStatus[] = "ram.status.ext_system";
const char UpdateActive[] = "ram.status.sw_update.active";
const char PositionFix[] = "ram.status.position.fix";
const char AudioSetting[] = "cfg.audio_indication.pointing";
const char Sound[] = "ram.desk.sound"; // 1 while the tone of pointing is heard
const char Strength[] = "ram.status.signal_strength";
const char Bars[] = "ram.status.signal_strength_norm";
const char UpdateNow[] = "ram.status.signal_strength.update_now";
const char Operating[] = "operating";

enum { NormalOperation = 10 };
enum Pointed { PointedUnknown = -1, NotPointed = 0, Pointing = 1, IsPointed = 2 };

// The commands of the display, one after the other, each in its time. What the antenna's direction is, nobody
// knows while the radio module is off, and when it has started the antenna has to be pointed anew.
//
// A command that cannot be carried out changes nothing, and the display is not told: why stands in
// CommandError, for people.
class PointingActor : public Actor {
public:
    explicit PointingActor(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop)
    {
    }

    void onSignal(std::string_view name, const std::string& text) override
    {
        if (name != "bp_ctrl.pointing")
            return;
        if (text != "start" && text != "stop" && text != "cancel") {
            refuse("start, stop or cancel, not " + text);
            return;
        }
        if (waiting.size() < MaxWaiting)
            waiting.push_back(text);
        if (!timer.isRunning())
            timer.once(terminal.scaled(Delay), [this] { carryOutNext(); });
    }
    void onChange(const std::string& key) override
    {
        if (key == PointedStatus || key == AudioSetting)
            sound();
        if (key != Mode)
            return;
        waiting.clear();
        timer.stop();
        if (terminal.text(Mode) != Operating)
            terminal.set(PointedStatus, PointedUnknown);
        else if (terminal.number(PointedStatus, PointedUnknown) == PointedUnknown)
            terminal.set(PointedStatus, NotPointed);
    }

private:
    static constexpr uint32_t Delay = 250;   // ms
    static constexpr size_t MaxWaiting = 16; // beyond them nobody listens

    void carryOutNext()
    {
        const std::string text = waiting.front();
        waiting.erase(waiting.begin());
        if (!waiting.empty())
            timer.once(terminal.scaled(Delay), [this] { carryOutNext(); });

        bool isPointing = terminal.number(PointedStatus, NotPointed) == Pointing;
        std::string problem = text == "start" ? problemOfStart() : isPointing ? "" : "nobody is pointing";
        if (!problem.empty()) {
            refuse(problem);
            return;
        }
        terminal.database.apply({{CommandError, Value()}});
        terminal.set(PointedStatus, text == "start" ? Pointing : text == "stop" ? IsPointed : NotPointed);
    }
    std::string problemOfStart() const
    {
        if (terminal.text(Mode) != Operating)
            return "the radio module does not operate";
        if (terminal.number(ExtendedStatus, NormalOperation) < NormalOperation)
            return "the system is not up";
        if (terminal.number(UpdateActive, 0) != 0)
            return "a software update runs";
        if (terminal.number(PositionFix, 0) == 0)
            return "the position is not known yet";
        return "";
    }
    void refuse(const std::string& problem)
    {
        terminal.database.apply({{CommandError, Value::text("pointing: " + problem)}});
    }
    // What a person would hear.
    void sound()
    {
        bool isOn =
            terminal.number(PointedStatus, NotPointed) == Pointing && terminal.number(AudioSetting, 0) == 1;
        terminal.database.apply({{Sound, isOn ? Value::integer(1) : Value()}});
    }

    Timer timer;
    std::vector<std::string> waiting;
};

// The signal as the person at the desk wants it.
class SignalActor : public CommandActor {
public:
    explicit SignalActor(const Surroundings& surroundings) : CommandActor(surroundings, "signal") {}

    void start() override
    {
        isOff = terminal.text(Mode) != Operating;
        usual = terminal.number(Strength, 0);
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == Mode)
            onModeChange();
        else if (key == UpdateNow && terminal.number(UpdateNow, 0) != 0)
            terminal.set(UpdateNow, 0); // so that the next wish is a change
    }

protected:
    std::string carryOut(const Words& words) override
    {
        if (words.size() != 1)
            return "a level in dBHz, up, down or auto";
        if (words[0] == "auto") {
            terminal.database.apply({{SignalLevelKey, Value()}});
            return "";
        }
        int32_t level = terminal.number(SignalLevelKey, terminal.number(Strength, 0));
        if (words[0] == "up" || words[0] == "down")
            level = std::max(0, std::min(Highest, level + (words[0] == "up" ? Step : -Step)));
        else if (!parseLevel(words[0], &level))
            return "a level is a number from 0 to 70, as 45.6, not " + words[0];
        terminal.set(SignalLevelKey, level);
        usual = level;
        if (!isOff)
            show(level);
        return "";
    }

private:
    static constexpr int32_t Highest = 700;
    static constexpr int32_t Step = 20;

    // A radio module that is off receives nothing.
    void onModeChange()
    {
        bool wasOff = isOff;
        isOff = terminal.text(Mode) != Operating;
        if (isOff == wasOff)
            return;
        if (isOff)
            usual = terminal.number(SignalLevelKey, terminal.number(Strength, usual));
        show(isOff ? 0 : usual);
    }
    void show(int32_t level)
    {
        terminal.database.apply(
            {{Strength, Value::integer(level)}, {Bars, Value::integer(signalBars(level))}});
    }

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

    bool isOff = false;
    int32_t usual = 0; // the last one that was received
};

} // namespace

void addRadioActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<PointingActor>(surroundings));
    actors->push_back(std::make_unique<SignalActor>(surroundings));
}

} // namespace sim
