// The interfaces: what a user asks for is followed by what is, after a moment.
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

} // namespace

void addInterfaceActors(const Surroundings& surroundings, Actors* actors)
{
    for (const char* interface : {"wlan", "isdn", "lan", "phone", "usb"})
        actors->push_back(std::make_unique<InterfaceActor>(surroundings, interface));
}

} // namespace sim
