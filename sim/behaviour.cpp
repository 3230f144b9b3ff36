// The cast of the terminal: which actors there are, and who hears of what.
#include "sim/behaviour.h"

namespace sim {

// The pointing commands of the display go to the process that turns the antenna.
static const char PointingPrefix[] = "bp_ctrl.";

Behaviour::Behaviour(fdloop_t* loop, Database& database, BusServer& server, const Options& options)
    : server(server)
{
    Surroundings surroundings{loop, database, std::max<uint32_t>(1, options.speed), options.moving};
    if (options.actors) {
        for (auto add : {addInterfaceActors, addRadioActors, addSimActors, addNetworkActors, addAlertActors,
                         addUpdateActors, addSystemActors, addSettingActors})
            add(surroundings, &actors);
    }
    if (options.moving)
        addMovers(surroundings, &actors);
    server.provideLocally(PointingPrefix, this);
}

void Behaviour::start()
{
    for (const auto& actor : actors)
        actor->start();
}

void Behaviour::onChanges(const std::vector<Write>& changes)
{
    for (const Write& change : changes) {
        for (const auto& actor : actors)
            actor->onChange(change.key);
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
