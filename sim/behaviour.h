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

    // A time of the real terminal, in milliseconds of this one.
    uint32_t scaled(uint32_t milliseconds) const { return std::max<uint32_t>(1, milliseconds / speed); }
    int32_t number(const std::string& key, int32_t otherwise) const
    {
        const Value* value = database.find(key);
        return value && value->isInt() ? value->toInt() : otherwise;
    }
    void set(const std::string& key, int32_t number) { database.apply({{key, Value::integer(number)}}); }
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
    // To be called with all changes of the database.
    void onChanges(const std::vector<Write>& changes);

    void onSignal(const BusFrame& frame) override;
    void onRequest(const BusFrame& frame) override;
    void onClientGone(uint64_t) override {}

private:
    BusServer& server;
    std::vector<std::unique_ptr<Actor>> actors;
};

// The makers of the actors, one source file each theme.
std::unique_ptr<Actor> makeInterfaceActor(const Surroundings& surroundings, const std::string& interface);
std::unique_ptr<Actor> makePointingActor(const Surroundings& surroundings);
std::unique_ptr<Actor> makeSignalMover(const Surroundings& surroundings);
std::unique_ptr<Actor> makeBatteryMover(const Surroundings& surroundings);
std::unique_ptr<Actor> makePositionMover(const Surroundings& surroundings);

} // namespace sim

#endif
