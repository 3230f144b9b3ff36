// Values that move by themselves, so that a display on a desk visibly lives: signal and position. (The charge
// of the batteries is in behaviour_power.cpp.)
#include "sim/behaviour.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

namespace sim {

namespace {

int32_t bounded(int32_t value, int32_t low, int32_t high)
{
    return std::max(low, std::min(high, value));
}

// The signal wanders in the range in which there is one, or around the level that somebody has set; the bars
// follow. In tenths of a dBHz.
class SignalMover : public Actor {
public:
    explicit SignalMover(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop) {}

    void start() override { schedule(); }

    // The display asks for an interval, or with 0 for none at all while nobody looks at it.
    void onChange(const std::string& key) override
    {
        if (key == Interval) {
            schedule();
        } else if (key == UpdateNow && terminal.number(UpdateNow, 0) != 0) {
            move();
            terminal.set(UpdateNow, 0); // so that the next wish is a change
        }
    }

private:
    static constexpr int32_t Lowest = LowestSignal;
    static constexpr int32_t Highest = 560;
    static constexpr int32_t Step = 12;
    static constexpr int32_t AroundLevel = 10;
    static constexpr const char* Interval = "ram.status.signal_strength.update_interval";
    static constexpr const char* UpdateNow = "ram.status.signal_strength.update_now";
    static constexpr const char* Strength = "ram.status.signal_strength";
    static constexpr const char* Norm = "ram.status.signal_strength_norm";

    void schedule()
    {
        int32_t interval = terminal.number(Interval, 1000);
        if (interval <= 0)
            timer.stop();
        else
            timer.every(terminal.scaled(static_cast<uint32_t>(bounded(interval, 100, 60000))),
                        [this] { move(); });
    }
    void move()
    {
        if (terminal.text("rmcfg.sys.status.mode") == "stopped")
            return; // nobody receives anything
        int32_t level = terminal.number(SignalLevelKey, -1);
        int32_t low = level < 0 ? Lowest : level < Lowest ? 0 : std::max(Lowest, level - AroundLevel);
        int32_t high = level < 0 ? Highest : level < Lowest ? level : level + AroundLevel;
        std::uniform_int_distribution<int32_t> step(-Step, Step);
        int32_t strength = bounded(terminal.number(Strength, Highest) + step(random), low, high);
        terminal.database.apply(
            {{Strength, Value::integer(strength)}, {Norm, Value::integer(signalBars(strength))}});
    }

    Timer timer;
    std::minstd_rand random{1}; // the same walk in every run
};

// The position drifts by some metres around where it was at the start, and satellites come and go.
class PositionMover : public Actor {
public:
    explicit PositionMover(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop)
    {
    }

    void start() override
    {
        goHome();
        timer.every(terminal.scaled(Period), [this] { move(); });
    }
    // Somebody has carried it elsewhere.
    void onChange(const std::string& key) override
    {
        for (size_t at = 0; at < Keys.size(); at++) {
            if (key == Keys[at] && std::abs(terminal.number(key, home[at]) - home[at]) > Drift)
                goHome();
        }
    }

private:
    static constexpr uint32_t Period = 3000; // ms
    static constexpr int32_t Drift = 30;     // hundred-thousandths of a degree, some 30 m
    static constexpr int32_t All = 5;        // so many satellites when the fix stands; before, they come in
    static constexpr std::array<const char*, 2> Keys{"ram.status.position.latitude",
                                                     "ram.status.position.longitude"};
    static constexpr const char* Satellites = "ram.status.position.satellites";
    static constexpr const char* Fix = "ram.status.position.fix";

    void goHome()
    {
        for (size_t at = 0; at < Keys.size(); at++)
            home[at] = terminal.number(Keys[at], 0);
    }
    void move()
    {
        if (terminal.number(Fix, 3) != 3 || terminal.number(Satellites, All) < All)
            return;
        std::uniform_int_distribution<int32_t> step(-5, 5);
        std::vector<Write> writes;
        for (size_t at = 0; at < Keys.size(); at++) {
            int32_t value = terminal.number(Keys[at], home[at]) + step(random);
            writes.push_back({Keys[at], Value::integer(bounded(value, home[at] - Drift, home[at] + Drift))});
        }
        std::uniform_int_distribution<int32_t> change(-1, 1);
        int32_t satellites = bounded(terminal.number(Satellites, 8) + change(random), All, 11);
        writes.push_back({Satellites, Value::integer(satellites)});
        terminal.database.apply(writes);
    }

    Timer timer;
    std::array<int32_t, 2> home{};
    std::minstd_rand random{2};
};

} // namespace

int32_t signalBars(int32_t strength)
{
    constexpr int32_t Bars = 4;
    constexpr int32_t All = 560; // from here on
    return strength < LowestSignal
               ? 0
               : std::min(Bars, (strength - LowestSignal) * (Bars + 1) / (All - LowestSignal + 1));
}

void addMovers(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<SignalMover>(surroundings));
    actors->push_back(std::make_unique<PositionMover>(surroundings));
}

} // namespace sim
