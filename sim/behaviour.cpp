// The cast of the terminal: which actors there are, and who hears of what.
#include "sim/behaviour.h"

namespace sim {

// The pointing commands of the display go to the process that turns the antenna.
static const char PointingPrefix[] = "bp_ctrl.";

Behaviour::Behaviour(fdloop_t* loop, Database& database, BusServer& server, const Options& options)
    : surroundings{loop, database, std::max<uint32_t>(1, options.speed), options.moving},
      reacting(options.actors), server(server)
{
    addActors();
    server.provideLocally(PointingPrefix, this);
}

void Behaviour::addActors()
{
    if (reacting) {
        for (auto add : {addGuardActors, addInterfaceActors, addRadioActors, addRegistrationActors,
                         addSimActors, addNetworkActors, addSessionActors, addAlertActors, addUpdateActors,
                         addSystemActors, addTemperatureActors, addPositionActors, addSettingActors})
            add(surroundings, &actors);
    }
    if (reacting || surroundings.moving)
        addPowerActors(surroundings, &actors);
    if (surroundings.moving)
        addMovers(surroundings, &actors);
}

void Behaviour::start()
{
    for (const auto& actor : actors)
        actor->start();
}

void Behaviour::setMuted(bool silent)
{
    if (silent == muted)
        return;
    muted = silent;
    if (muted) {
        actors.clear(); // with their timers
    } else {
        addActors();
        start();
    }
}

void Behaviour::onChanges(const std::vector<Write>& changes)
{
    // By number, since the actors may come back while changes are told.
    for (const Write& change : changes) {
        for (size_t at = 0; at < actors.size(); at++)
            actors[at]->onChange(change.key);
    }
}

void Behaviour::onSignal(const BusFrame& frame)
{
    std::string text(frame.data.substr(0, frame.data.find('\0')));
    for (const auto& actor : actors)
        actor->onSignal(frame.name, text);
}

void Behaviour::onRequest(const BusFrame& frame)
{
    server.reply(frame, {});
}

} // namespace sim
