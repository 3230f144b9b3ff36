// The display's power, after a key of the terminal's database.
#include "sim/display/display_power.h"

#include "sim/behaviour.h"

namespace sim {

DisplayPower::DisplayPower(Terminal& terminal, Display* display, Tell tell)
    : terminal(terminal), display(display), tell(std::move(tell))
{
    if (display)
        listener = terminal.listenToChanges([this](const std::vector<Write>& changes) {
            for (const Write& change : changes) {
                if (change.key == DisplayRunsKey)
                    follow();
            }
        });
}

DisplayPower::~DisplayPower()
{
    *isAlive = false;
    if (listener)
        terminal.forget(listener);
}

void DisplayPower::follow()
{
    bool runs = terminal.getInt(DisplayRunsKey).value_or(1) != 0;
    if (!runs && !isDown && display->state() != Display::State::Stopped) {
        isDown = isStopping = true;
        std::weak_ptr<bool> alive = isAlive;
        display->stop([this, alive] {
            auto still = alive.lock();
            if (still && *still)
                onStopped();
        });
    } else if (runs && isDown && !isStopping) {
        isDown = false;
        std::string error;
        if (display->state() == Display::State::Stopped && !display->start(&error) && tell)
            tell(error);
    }
}

// The terminal may be back before its display was gone.
void DisplayPower::onStopped()
{
    isStopping = false;
    follow();
}

} // namespace sim
