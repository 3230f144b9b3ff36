// The terminal on standard input while a console edits lines on it: raw, and as it was before at every end of
// the process but SIGKILL, while the process is stopped, and once it is not in the foreground any more.
//
// One in a process, on the main thread.
#ifndef SIM_CONSOLE_TTY_H
#define SIM_CONSOLE_TTY_H

#include "sim/timer.h"

#include <functional>
#include <memory>

namespace sim {

class Tty {
public:
    using Foreground = std::function<void(bool foreground)>;

    // Whether standard input is a terminal whose foreground this process is.
    static bool isForeground();

    Tty() = default;
    ~Tty() { end(); }
    Tty(const Tty&) = delete;
    Tty& operator=(const Tty&) = delete;

    // Sets the terminal raw and takes the signals SIGTSTP, SIGCONT and SIGABRT. The function is called, on
    // the loop, when a stopped process goes on, in the foreground (raw again) or in the background.
    void begin(fdloop_t* loop, Foreground callback);
    // Puts the settings back.
    void end();

    // Calls the function with what is the case, and again when a process in the background comes back.
    void look();

private:
    static int onContinued(int fd, void* data);

    fdloop_t* loop = nullptr;
    Foreground callback;
    int wake = -1;
    std::unique_ptr<Timer> backgroundTimer;
};

} // namespace sim

#endif
