// The power supply of the terminal: two batteries (1 inside, 2 outside) and the external supply.
//
// What it knows is told in the database as far as the display has subscribed to it; a display that sleeps
// hears nothing until it subscribes again, or asks for an update. Without subscription keys all is told.
#include "sim/command_actor.h"

#include <algorithm>
#include <map>

namespace sim {

namespace {

const char ExternalSupply[] = "ram.status.psumcu.events.external_supply";
const char SubscribePrefix[] = "ram.status.psumcu.events.subscribe.";
const char BatteryPrefix[] = "ram.status.battery.";
const char UpdateNow[] = "ram.status.battery.update_now";
const char ExtendedStatus[] = "ram.status.ext_system";

enum { BatteryPresent = 0, BatteryAbsent = -1, BatteryInError = -2 };
enum { NormalOperation = 10, Stopping = 4 };

constexpr int Batteries = 2;
constexpr int32_t Unknown = -1;
constexpr int32_t MinutesPerPercent = 3;
constexpr int32_t NewPercent = 60; // of a battery that is put in
constexpr int32_t NormalTemperature = 25;
constexpr int32_t PrechargeUpTo = 2; // percent: an empty battery is charged gently at first
constexpr int32_t ReservePercent = 5;
constexpr int32_t LowPercent = 10;
constexpr int32_t NoLongerLowPercent = 13;
constexpr int32_t PlugInPercent = 20; // where the movement by itself turns
// Degrees: outside these no battery is charged; beyond the others it raises an alert.
constexpr int32_t ChargeColdest = 0;
constexpr int32_t ChargeHottest = 45;
constexpr int32_t AlertHot = 60;
constexpr int32_t AlertCold = -20;
constexpr int32_t Hysteresis = 3;

enum AlertId { AlertBatteryLow = 0x11002, AlertTemperatureLow = 0x11003, AlertTemperatureHigh = 0x11004 };

struct Battery {
    int32_t status = BatteryAbsent;
    int32_t percent = 0;
    int32_t charge = Unknown;
    int32_t temperature = 0;
    int32_t toEmpty = 0;
    int32_t toFull = 0;
    bool isForced = false; // the charge state is what somebody wanted

    bool isPresent() const { return status == BatteryPresent; }
    bool canCharge() const
    {
        return isPresent() && percent < 100 && temperature >= ChargeColdest && temperature <= ChargeHottest;
    }
};

// A value of a battery and the subscription with which it is told.
struct Field {
    const char* name;
    int32_t Battery::*value;
    const char* subscription;
    bool isKept; // what is written from outside is how it is from now on
};
const Field Fields[] = {
    {"status", &Battery::status, "battery_presence", true},
    {"relative_state_of_charge", &Battery::percent, "threshold.remaining_capacity", true},
    {"charge_discharge_status", &Battery::charge, "charging_status", true},
    {"temperature", &Battery::temperature, "threshold.temperature", true},
    {"average_time_to_empty", &Battery::toEmpty, "threshold.average_time", false},
    {"average_time_to_full", &Battery::toFull, "threshold.average_time", false},
};

std::string keyOf(int battery, const Field& field)
{
    return BatteryPrefix + std::to_string(battery + 1) + "." + field.name;
}

// --- The model

class Supply {
public:
    explicit Supply(const Surroundings& surroundings) : terminal(surroundings) {}

    void start()
    {
        for (int number = 0; number < Batteries; number++) {
            for (const Field& field : Fields)
                batteries[number].*field.value =
                    terminal.number(keyOf(number, field), batteries[number].*field.value);
        }
        isSupplied = terminal.number(ExternalSupply, 0) != 0;
        for (int number = 0; number < Batteries; number++)
            batteries[number].isForced = batteries[number].charge != naturalCharge(number);
        remember();
    }
    void onChange(const std::string& key)
    {
        if (key == UpdateNow) {
            if (terminal.number(UpdateNow, 0) != 0) {
                publish(true);
                terminal.set(UpdateNow, 0); // so that the next wish is a change
            }
        } else if (key.compare(0, sizeof SubscribePrefix - 1, SubscribePrefix) == 0) {
            publish(false);
        } else if (key == ExternalSupply || key.compare(0, sizeof BatteryPrefix - 1, BatteryPrefix) == 0) {
            adopt();
        }
    }

    // It is plugged in and out by itself, while values move.
    bool isAutomatic = true;

    const Battery& battery(int number) const { return batteries[number]; }
    bool hasSupply() const { return isSupplied; }
    int32_t capacity() const
    {
        int32_t sum = 0, count = 0;
        for (const Battery& battery : batteries) {
            sum += battery.isPresent() ? battery.percent : 0;
            count += battery.isPresent();
        }
        return count ? sum / count : 0;
    }
    int present() const
    {
        return static_cast<int>(std::count_if(std::begin(batteries), std::end(batteries),
                                              [](const Battery& battery) { return battery.isPresent(); }));
    }

    void setSupply(bool supplied)
    {
        isSupplied = supplied;
        release();
        settle();
    }
    void setPercent(int number, int32_t percent)
    {
        batteries[number].percent = percent;
        settle();
    }
    void setTemperature(int number, int32_t degrees)
    {
        batteries[number].temperature = degrees;
        settle();
    }
    // A state that needs the external supply brings it, and one that excludes it takes it away.
    void forceCharge(int number, int32_t charge)
    {
        if (charge != ChargeIdle && isSupplied != (charge != Discharging)) {
            isSupplied = charge != Discharging;
            release();
        }
        batteries[number].charge = charge;
        batteries[number].isForced = true;
        settle();
    }
    // A battery that is not there has no values but its status.
    void setStatus(int number, int32_t status)
    {
        Battery& battery = batteries[number];
        if (status == BatteryPresent && battery.isPresent())
            return;
        bool present = status == BatteryPresent;
        battery = Battery();
        battery.status = status;
        battery.percent = present ? NewPercent : 0;
        battery.temperature = present ? NormalTemperature : 0;
        release();
        settle();
    }
    // As much time as a percent takes goes by.
    void pass()
    {
        bool moved = false;
        for (Battery& battery : batteries) {
            int32_t step = battery.charge == Charging || battery.charge == Precharging
                               ? 1
                               : (battery.charge == Discharging ? -1 : 0);
            int32_t percent = std::max(0, std::min(100, battery.percent + step));
            if (!battery.isPresent() || percent == battery.percent)
                continue;
            battery.percent = percent;
            moved = true;
        }
        if (moved)
            settle();
    }

private:
    void release()
    {
        for (Battery& battery : batteries)
            battery.isForced = false;
    }
    // One battery at a time is charged, the inner one first, or discharged, the outer one first.
    int32_t naturalCharge(int number) const
    {
        const Battery& battery = batteries[number];
        const Battery& other = batteries[1 - number];
        if (!battery.isPresent())
            return Unknown;
        if (isSupplied) {
            if (!battery.canCharge() || (number == 1 && other.canCharge()))
                return ChargeIdle;
            return battery.percent <= PrechargeUpTo ? Precharging : Charging;
        }
        if (!other.isPresent())
            return Discharging;
        const Battery& outer = batteries[1];
        bool outerWorks = outer.percent > ReservePercent || batteries[0].percent <= ReservePercent;
        return (number == 1) == outerWorks ? Discharging : ChargeIdle;
    }
    // All that follows from what has changed.
    void settle()
    {
        for (int number = 0; number < Batteries; number++) {
            Battery& battery = batteries[number];
            bool isFull = battery.percent >= 100 && battery.charge != Discharging;
            if (!battery.isForced || isFull || !battery.isPresent())
                battery.charge = naturalCharge(number);
        }
        for (int number = 0; number < Batteries; number++) {
            Battery& battery = batteries[number];
            bool waits = battery.charge == ChargeIdle && batteries[1 - number].charge == Discharging;
            battery.toEmpty =
                battery.charge == Discharging || waits ? battery.percent * MinutesPerPercent : 0;
            battery.toFull = battery.charge == Charging ? (100 - battery.percent) * MinutesPerPercent : 0;
        }
        publish(false);
        judge();
    }

    // --- The database

    bool isSubscribed(const char* name) const
    {
        return terminal.number(SubscribePrefix + std::string(name) + ".lumenpanel", 1) != 0;
    }
    void publish(bool all)
    {
        std::vector<Write> writes;
        if (all || isSubscribed("external_supply"))
            addTo(&writes, ExternalSupply, isSupplied);
        for (int number = 0; number < Batteries; number++) {
            for (const Field& field : Fields) {
                if (all || isSubscribed(field.subscription))
                    addTo(&writes, keyOf(number, field), batteries[number].*field.value);
            }
        }
        terminal.database.apply(writes);
    }
    void addTo(std::vector<Write>* writes, const std::string& key, int32_t value)
    {
        const Value* stands = terminal.database.find(key);
        told[key] = value;
        if (!stands || !stands->isInt() || stands->toInt() != value)
            writes->push_back({key, Value::integer(value)});
    }
    void remember()
    {
        told[ExternalSupply] = isSupplied;
        for (int number = 0; number < Batteries; number++) {
            for (const Field& field : Fields)
                told[keyOf(number, field)] = batteries[number].*field.value;
        }
    }
    // Takes what somebody else has written for true. Times follow from the rest: they stay as written until
    // it changes.
    void adopt()
    {
        bool supplied = terminal.number(ExternalSupply, isSupplied) != 0;
        bool isOther = supplied != (told[ExternalSupply] != 0);
        if (isOther) {
            isSupplied = supplied;
            release();
        }
        told[ExternalSupply] = supplied;
        for (int number = 0; number < Batteries; number++) {
            for (const Field& field : Fields) {
                const std::string key = keyOf(number, field);
                int32_t value = terminal.number(key, told[key]);
                if (value == told[key])
                    continue;
                told[key] = value;
                batteries[number].*field.value = value;
                batteries[number].isForced |= field.value == &Battery::charge;
                isOther |= field.isKept;
            }
        }
        if (isOther)
            settle();
    }

    // --- What it warns of

    void judge()
    {
        bool isBattery = !isSupplied && present() > 0;
        raise(&isLow, isBattery && capacity() <= (isLow ? NoLongerLowPercent - 1 : LowPercent),
              AlertBatteryLow, 0);
        for (int number = 0; number < Batteries; number++) {
            const Battery& battery = batteries[number];
            bool* hot = &isHot[number];
            bool* cold = &isCold[number];
            raise(hot,
                  battery.isPresent() && battery.temperature >= (*hot ? AlertHot - Hysteresis : AlertHot),
                  AlertTemperatureHigh, number + 1);
            raise(cold,
                  battery.isPresent() && battery.temperature <= (*cold ? AlertCold + Hysteresis : AlertCold),
                  AlertTemperatureLow, number + 1);
        }
        int32_t status = terminal.number(ExtendedStatus, Stopping);
        if (isBattery && capacity() == 0 && status != Stopping)
            giveCommand(terminal, "system", "shutdown");
    }
    void raise(bool* stands, bool wanted, int32_t id, int32_t subId)
    {
        if (*stands == wanted)
            return;
        *stands = wanted;
        const std::string sub = " sub_id=" + std::to_string(subId);
        giveCommand(terminal, "alert",
                    wanted ? "add " + std::to_string(id) + " warning" + sub
                           : "clear " + std::to_string(id) + sub);
    }

    Surroundings terminal;
    Battery batteries[Batteries];
    bool isSupplied = false;
    bool isLow = false;
    bool isHot[Batteries] = {};
    bool isCold[Batteries] = {};
    std::map<std::string, int32_t> told; // what the keys hold if nobody else has written them
};

// --- Who works on it

class PowerActor : public Actor {
public:
    PowerActor(const Surroundings& surroundings, std::shared_ptr<Supply> supply)
        : Actor(surroundings), supply(std::move(supply)), timer(surroundings.loop)
    {
    }

    void start() override
    {
        supply->start();
        if (terminal.moving)
            timer.every(terminal.scaled(Period), [this] { move(); });
    }
    void onChange(const std::string& key) override
    {
        bool before = supply->hasSupply();
        supply->onChange(key);
        if (supply->hasSupply() != before)
            isPlugged = false; // by somebody
    }

private:
    static constexpr uint32_t Period = 5000; // ms for a percent

    // Left to itself the terminal is plugged in when the charge gets low, and out when it is full.
    void move()
    {
        if (terminal.number(ExtendedStatus, NormalOperation) == Stopping)
            return;
        if (supply->isAutomatic && supply->present() > 0) {
            if (!supply->hasSupply() && supply->capacity() <= PlugInPercent) {
                supply->setSupply(true);
                isPlugged = true;
            } else if (isPlugged && supply->capacity() >= 100) {
                supply->setSupply(false);
                isPlugged = false;
            }
        }
        supply->pass();
    }

    std::shared_ptr<Supply> supply;
    bool isPlugged = false; // by the movement itself
    Timer timer;
};

struct Word {
    const char* word;
    int32_t value;
};
const Word BatteryStates[] = {
    {"present", BatteryPresent}, {"absent", BatteryAbsent}, {"error", BatteryInError}};
const Word ChargeStates[] = {
    {"idle", ChargeIdle}, {"charging", Charging}, {"discharging", Discharging}, {"precharging", Precharging}};

class SupplyActor : public CommandActor {
public:
    SupplyActor(const Surroundings& surroundings, std::shared_ptr<Supply> supply)
        : CommandActor(surroundings, "supply"), supply(std::move(supply))
    {
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string word = joined(words, 0);
        if (word != "on" && word != "off" && word != "auto")
            return "on, off or auto, not " + word;
        if (word == "off" && supply->present() == 0)
            return "there is no battery to run on";
        supply->isAutomatic = word == "auto";
        if (word != "auto")
            supply->setSupply(word == "on");
        return "";
    }

private:
    std::shared_ptr<Supply> supply;
};

class BatteryActor : public CommandActor {
public:
    BatteryActor(const Surroundings& surroundings, std::shared_ptr<Supply> supply)
        : CommandActor(surroundings, "battery"), supply(std::move(supply))
    {
    }

protected:
    std::string carryOut(const Words& words) override
    {
        if (words[0] == "supply") {
            if (words.size() != 2 || (words[1] != "on" && words[1] != "off"))
                return "supply on, or supply off";
            return withoutName(giveCommand(terminal, "supply", words[1]));
        }
        bool isNumbered = words.size() >= 2 && (words[0] == "1" || words[0] == "2");
        int number = isNumbered && words[0] == "2" ? 1 : 0;
        const Words rest(words.begin() + (isNumbered ? 1 : 0), words.end());
        if (rest[0] == "temperature")
            return setTemperature(number, rest);
        if (rest.size() != 1)
            return "a battery, 1 or 2, and one word";
        supply->isAutomatic = false;
        return change(number, rest[0]);
    }

private:
    static std::string withoutName(const std::string& problem)
    {
        size_t colon = problem.find(": ");
        return colon == std::string::npos ? problem : problem.substr(colon + 2);
    }
    static std::string nameOf(int number) { return "battery " + std::to_string(number + 1); }

    std::string setTemperature(int number, const Words& words)
    {
        int64_t degrees = NormalTemperature;
        if (words.size() != 2 || (words[1] != "normal" && !parseNumber(words[1], -40, 100, &degrees)))
            return "a temperature from -40 to 100, or normal";
        if (!supply->battery(number).isPresent())
            return nameOf(number) + " is not there";
        supply->setTemperature(number, static_cast<int32_t>(degrees));
        return "";
    }
    std::string change(int number, const std::string& word)
    {
        for (const Word& state : BatteryStates) {
            if (word != state.word)
                continue;
            if (state.value != BatteryPresent && !supply->hasSupply() && isTheLast(number))
                return "the terminal runs on it: supply on comes first";
            supply->setStatus(number, state.value);
            return "";
        }
        if (!supply->battery(number).isPresent())
            return nameOf(number) + " is not there";
        for (const Word& state : ChargeStates) {
            if (word != state.word)
                continue;
            if ((state.value == Charging || state.value == Precharging) &&
                !supply->battery(number).canCharge())
                return "it is full, or too hot or too cold to charge";
            supply->forceCharge(number, state.value);
            return "";
        }
        int64_t percent = 0;
        if (!parseNumber(word, 0, 100, &percent))
            return "a percentage from 0 to 100 or a state, not " + word;
        supply->setPercent(number, static_cast<int32_t>(percent));
        return "";
    }
    bool isTheLast(int number) const { return supply->battery(number).isPresent() && supply->present() == 1; }

    std::shared_ptr<Supply> supply;
};

} // namespace

void addPowerActors(const Surroundings& surroundings, Actors* actors)
{
    auto supply = std::make_shared<Supply>(surroundings);
    actors->push_back(std::make_unique<PowerActor>(surroundings, supply));
    actors->push_back(std::make_unique<SupplyActor>(surroundings, supply));
    actors->push_back(std::make_unique<BatteryActor>(surroundings, supply));
}

} // namespace sim
