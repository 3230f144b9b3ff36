// Values that move by themselves, so that a display on a desk visibly lives: signal, battery, position.
#include "sim/behaviour.h"

#include <algorithm>
#include <array>
#include <random>

namespace sim {

namespace {

int32_t bounded(int32_t value, int32_t low, int32_t high)
{
    return std::max(low, std::min(high, value));
}

// The signal wanders in the range in which there is one, in tenths of the unit; the bars follow.
class SignalMover : public Actor {
public:
    explicit SignalMover(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop) {}

    void start() override { schedule(); }

    // The display asks for an interval, or with 0 for none at all while nobody looks at it.
    void onChange(const std::string& key) override
    {
        if (key == Interval)
            schedule();
    }

private:
    static constexpr int32_t Lowest = 320;
    static constexpr int32_t Highest = 560;
    static constexpr int32_t Step = 12;
    static constexpr int32_t Bars = 4;
    static constexpr const char* Interval = "ram.status.signal_strength.update_interval";
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
        std::uniform_int_distribution<int32_t> step(-Step, Step);
        int32_t strength = bounded(terminal.number(Strength, Highest) + step(random), Lowest, Highest);
        int32_t bars = (strength - Lowest) * (Bars + 1) / (Highest - Lowest + 1);
        terminal.database.apply({{Strength, Value::integer(strength)}, {Norm, Value::integer(bars)}});
    }

    Timer timer;
    std::minstd_rand random{1}; // the same walk in every run
};

// The first battery discharges percent by percent down to a fifth, charges up again, and so on. With external
// supply it charges and stays full.
class BatteryMover : public Actor {
public:
    explicit BatteryMover(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop) {}

    void start() override
    {
        timer.every(terminal.scaled(Period), [this] { move(); });
    }

private:
    static constexpr uint32_t Period = 5000; // ms for a percent
    static constexpr int32_t Lowest = 20;
    static constexpr int32_t MinutesPerPercent = 3;
    enum ChargeState { Idle = 0, Charging = 1, Discharging = 2 };

    void move()
    {
        const std::string battery = "ram.status.battery.1.";
        if (terminal.number(battery + "status", -1) != 0)
            return;
        int32_t percent = terminal.number(battery + "relative_state_of_charge", 100);
        int32_t state = terminal.number(battery + "charge_discharge_status", Discharging);
        bool supplied = terminal.number("ram.status.psumcu.events.external_supply", 0) != 0;

        if (supplied)
            state = percent < 100 ? Charging : Idle;
        else if (percent <= Lowest)
            state = Charging;
        else if (percent >= 100 || state != Charging)
            state = Discharging;
        percent = bounded(percent + (state == Charging ? 1 : state == Discharging ? -1 : 0), 0, 100);

        int32_t toEmpty = state == Discharging ? percent * MinutesPerPercent : 0;
        int32_t toFull = state == Charging ? (100 - percent) * MinutesPerPercent : 0;
        terminal.database.apply({{battery + "relative_state_of_charge", Value::integer(percent)},
                                 {battery + "charge_discharge_status", Value::integer(state)},
                                 {battery + "average_time_to_empty", Value::integer(toEmpty)},
                                 {battery + "average_time_to_full", Value::integer(toFull)}});
    }

    Timer timer;
};

// The position drifts by some metres around where it was at the start, and satellites come and go.
class PositionMover : public Actor {
public:
    explicit PositionMover(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop)
    {
    }

    void start() override
    {
        for (size_t at = 0; at < Keys.size(); at++)
            home[at] = terminal.number(Keys[at], 0);
        timer.every(terminal.scaled(Period), [this] { move(); });
    }

private:
    static constexpr uint32_t Period = 3000; // ms
    static constexpr int32_t Drift = 30;     // hundred-thousandths of a degree, some 30 m
    static constexpr std::array<const char*, 2> Keys{"ram.status.position.latitude",
                                                     "ram.status.position.longitude"};
    static constexpr const char* Satellites = "ram.status.position.satellites";

    void move()
    {
        std::uniform_int_distribution<int32_t> step(-5, 5);
        std::vector<Write> writes;
        for (size_t at = 0; at < Keys.size(); at++) {
            int32_t value = terminal.number(Keys[at], home[at]) + step(random);
            writes.push_back({Keys[at], Value::integer(bounded(value, home[at] - Drift, home[at] + Drift))});
        }
        std::uniform_int_distribution<int32_t> change(-1, 1);
        int32_t satellites = bounded(terminal.number(Satellites, 8) + change(random), 5, 11);
        writes.push_back({Satellites, Value::integer(satellites)});
        terminal.database.apply(writes);
    }

    Timer timer;
    std::array<int32_t, 2> home{};
    std::minstd_rand random{2};
};

} // namespace

std::unique_ptr<Actor> makeSignalMover(const Surroundings& surroundings)
{
    return std::make_unique<SignalMover>(surroundings);
}

std::unique_ptr<Actor> makeBatteryMover(const Surroundings& surroundings)
{
    return std::make_unique<BatteryMover>(surroundings);
}

std::unique_ptr<Actor> makePositionMover(const Surroundings& surroundings)
{
    return std::make_unique<PositionMover>(surroundings);
}

} // namespace sim
