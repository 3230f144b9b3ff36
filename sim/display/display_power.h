// Lets the display run only while the terminal does: the system manager takes it down in a shutdown and in
// the middle of a reboot, and starts it again (key DisplayRunsKey of sim/behaviour.h).
//
// A display that somebody has stopped otherwise stays stopped.
//
// On the terminal's thread only. Nothing blocks.
#ifndef SIM_DISPLAY_DISPLAY_POWER_H
#define SIM_DISPLAY_DISPLAY_POWER_H

#include "sim/display/display.h"
#include "sim/terminal.h"

namespace sim {

class DisplayPower {
public:
    using Tell = std::function<void(const std::string&)>;

    // Both outlive it. A null display has no power to be switched. tell gets what a person should know, in
    // one line; it may be empty.
    DisplayPower(Terminal& terminal, Display* display, Tell tell);
    ~DisplayPower();
    DisplayPower(const DisplayPower&) = delete;
    DisplayPower& operator=(const DisplayPower&) = delete;

private:
    void follow();
    void onStopped();

    Terminal& terminal;
    Display* display;
    Tell tell;
    uint64_t listener = 0;
    bool isDown = false;     // by the terminal
    bool isStopping = false; // and it has not gone yet
    std::shared_ptr<bool> isAlive = std::make_shared<bool>(true);
};

} // namespace sim

#endif
