// The display as the terminal's application manager has it: starts it, asks for signs of life, notices its
// end, tells its last log lines and starts it again. And what a person at the desk does with it: presses
// keys, looks at it.
//
// The display gets APPMGR_PID, CBUS_ADDR and the keypad's socket in its environment; its system log and what
// it prints go to a file, the log through the library of syslogtap. It ends with this process, however that
// ends.
//
// On the terminal's thread only, which must be the process's main thread, made before there are others
// (signals); one in a process at a time. Nothing blocks.
#ifndef SIM_DISPLAY_DISPLAY_H
#define SIM_DISPLAY_DISPLAY_H

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

struct fdloop_t;

namespace sim {

enum class Key { Up, Down, Left, Right, Ok, LongOk, Screenshot };
// "up", "down", "left", "right", "ok", "long", "screenshot". False if it is none.
bool parseKey(const std::string& name, Key* key);
const char* keyName(Key key);

class Display {
public:
    struct Options {
        std::vector<std::string> command; // program and arguments
        std::string busAddress;           // CBUS_ADDR
        std::string logFile;              // emptied at the first start; empty: one that ends with this object
        std::string syslogLibrary;        // libsyslogtap.so; empty: the system log goes where it goes
        std::string keypadDirectory;      // where Qt finds the keypad's plugin; empty: no keys
        std::string directory;            // for the keypad's socket: the user's own; empty: one is made
        std::string screenshots;          // where the display leaves its own; empty: as it was built
        uint32_t pingInterval = 10000;    // ms between questions
        uint32_t pingTimeout = 30000;     // ms without an answer after which it counts as dead, and is killed
        uint32_t restartDelay = 1000;     // ms
        unsigned maxRestarts = 3;         // so many in a row that ended within shortLife; then it gives up
        uint32_t shortLife = 5000;        // ms
        std::function<void(const std::string&)> tell; // what a person should know, in one line
        // The display has ended for good: its window was closed (0), or it was given up (1).
        std::function<void(int status)> ended;
    };
    enum class State { Stopped, Starting, Running }; // Running: it has reported to the manager

    Display(fdloop_t* loop, const Options& options);
    ~Display(); // kills what still runs
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    // False with *error if it cannot even be tried.
    bool start(std::string* error);
    // Ends it (SIGTERM, after 3 s SIGKILL) and calls stopped once it is gone; ended is not called.
    void stop(std::function<void()> stopped);
    // Ends it and starts it again.
    void restart();
    State state() const;
    pid_t pid() const;         // -1 if there is none
    unsigned restarts() const; // since the start
    uint32_t uptime() const;   // ms since it was last started; 0 if it does not run

    using Done = std::function<void(const std::string& error)>; // empty: it worked
    // Presses and releases a key. Done once the display has handled it, or after 10 s; never within the call.
    // Keys are pressed one after the other. A number for forget().
    uint64_t press(Key key, Done done);
    // Writes what the display shows as a PNG, so many times enlarged (1 to MaxScale). Done when the file is
    // there, or after 10 s; never within the call. A number for forget().
    uint64_t takePicture(const std::string& file, unsigned scale, Done done);
    static constexpr unsigned MaxScale = 32;

    // The display's log lines, as they come: "<priority> ident: text" without a line feed; what it prints is
    // there as "<6> output: text". Control characters are question marks. A number for forget().
    uint64_t listenToLog(std::function<void(const std::string& line)> listener);
    std::vector<std::string> lastLines(size_t count) const; // the newest, up to 1,000

    // Takes the number of listenToLog, press or takePicture: what was passed is not called any more.
    void forget(uint64_t number);

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace sim

#endif
