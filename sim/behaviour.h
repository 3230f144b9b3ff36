// What goes on in the terminal around the database: processes that react to keys and messages, and values
// that move by themselves. Each is one small Actor; behaviour.cpp lists them.
//
// On the thread of the loop only.
#ifndef SIM_BEHAVIOUR_H
#define SIM_BEHAVIOUR_H

#include "sim/bus_server.h"
#include "sim/database.h"
#include "sim/timer.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// What an actor works with.
struct Surroundings {
    fdloop_t* loop;
    Database& database;
    uint32_t speed; // so many times faster than a real terminal
    bool moving;    // values may change by themselves

    // A time of the real terminal, in milliseconds of this one.
    uint32_t scaled(uint32_t milliseconds) const { return std::max<uint32_t>(1, milliseconds / speed); }
    int32_t number(const std::string& key, int32_t otherwise) const
    {
        const Value* value = database.find(key);
        return value && value->isInt() ? value->toInt() : otherwise;
    }
    std::string text(const std::string& key) const
    {
        const Value* value = database.find(key);
        return value ? value->toText() : std::string();
    }
    void set(const std::string& key, int32_t number) const
    {
        database.apply({{key, Value::integer(number)}});
    }
};

// One process of the terminal. It acts from its functions here and from its own timers, and writes to the
// database like anyone; its own writes come back to it as changes.
class Actor {
public:
    explicit Actor(const Surroundings& surroundings) : terminal(surroundings) {}
    virtual ~Actor() = default;

    // The database is filled. Called once, before anything else.
    virtual void start() {}
    // A key has changed; its new value is in the database.
    virtual void onChange(const std::string& key) { (void)key; }
    // A signal outside the database's names has come from a client; the text is its data up to the first NUL.
    virtual void onSignal(std::string_view name, const std::string& text) { (void)name, (void)text; }

protected:
    Surroundings terminal;
};

class Behaviour : public LocalProvider {
public:
    struct Options {
        bool actors = false; // processes that react
        bool moving = false; // values that move by themselves
        uint32_t speed = 1;
    };

    // Takes its place on the server for the names that the terminal's processes serve.
    Behaviour(fdloop_t* loop, Database& database, BusServer& server, const Options& options);

    void start();
    // Silences all of it, movers included, or lets it begin anew with the database as it is. Not from a
    // function of an actor; muting also not while changes are told.
    void setMuted(bool muted);
    // To be called with all changes of the database.
    void onChanges(const std::vector<Write>& changes);

    void onSignal(const BusFrame& frame) override;
    void onRequest(const BusFrame& frame) override;
    void onClientGone(uint64_t) override {}

private:
    void addActors();

    const Surroundings surroundings;
    const bool reacting;
    BusServer& server;
    std::vector<std::unique_ptr<Actor>> actors;
    bool muted = false;
};

// Bars that go with a signal strength in tenths of a dBHz.
int32_t signalBars(int32_t strength);
// The lowest strength at which there is a signal.
constexpr int32_t LowestSignal = 320;
// A strength in tenths that somebody has set; absent: it wanders.
extern const char SignalLevelKey[];

enum ChargeState { ChargeIdle = 0, Charging = 1, Discharging = 2, Precharging = 3 };

// How hot the terminal is, in TemperatureStageKey; absent: neither hot nor cold.
enum TemperatureStage {
    StageCold = -1,
    StageNormal = 0,
    StageReduced,   // performance
    StagePoe,       // no power over the LAN
    StageUsb,       // the interface is off
    StageUsbExtern, // and its second socket
    StageBackground,
    StageConnections, // all are closed, and none can be started
    StageClosing,     // the terminal shuts down
};
extern const char TemperatureStageKey[];
// The cause with which the network rejects, and 0 whether the application manager runs the display; both
// absent while there is nothing to tell.
extern const char RejectCauseKey[];
extern const char DisplayRunsKey[];

// The makers of the actors, one source file each theme. Those with a command have its name.
using Actors = std::vector<std::unique_ptr<Actor>>;
void addInterfaceActors(const Surroundings& surroundings, Actors* actors);    // behaviour_interfaces.cpp
void addRadioActors(const Surroundings& surroundings, Actors* actors);        // behaviour_radio.cpp
void addRegistrationActors(const Surroundings& surroundings, Actors* actors); // behaviour_registration.cpp
void addSimActors(const Surroundings& surroundings, Actors* actors);          // behaviour_sim.cpp
void addNetworkActors(const Surroundings& surroundings, Actors* actors);      // behaviour_network.cpp
void addSessionActors(const Surroundings& surroundings, Actors* actors);      // behaviour_sessions.cpp
void addAlertActors(const Surroundings& surroundings, Actors* actors);        // behaviour_alerts.cpp
void addUpdateActors(const Surroundings& surroundings, Actors* actors);       // behaviour_update.cpp
void addSystemActors(const Surroundings& surroundings, Actors* actors);       // behaviour_system.cpp
void addTemperatureActors(const Surroundings& surroundings, Actors* actors);  // behaviour_temperature.cpp
void addPositionActors(const Surroundings& surroundings, Actors* actors);     // behaviour_position.cpp
void addSettingActors(const Surroundings& surroundings, Actors* actors);      // behaviour_settings.cpp
void addGuardActors(const Surroundings& surroundings, Actors* actors);        // behaviour_guard.cpp
// With the commands, the charge that moves by itself.
void addPowerActors(const Surroundings& surroundings, Actors* actors); // behaviour_power.cpp
void addMovers(const Surroundings& surroundings, Actors* actors);      // behaviour_movers.cpp

} // namespace sim

#endif
