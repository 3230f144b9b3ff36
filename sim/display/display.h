// The display as the terminal's application manager has it: starts it, asks for signs of life, notices its
// end, tells its last log lines and starts it again. And what a person at the desk does with it: presses
// keys, looks at it.
//
// The display gets APPMGR_PID, CBUS_ADDR and the keypad's socket in its environment; its system log goes to a
// file through the library of syslogtap.
//
// On the terminal's thread only, which must be the process's main thread (signals). Nothing blocks.
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

class Display {
public:
    struct Options {
        std::vector<std::string> command; // program and arguments
        std::string busAddress;           // CBUS_ADDR
        std::string logFile;              // of the display's system log; emptied at the first start
        std::string syslogLibrary;        // libsyslogtap.so
        std::string keypadDirectory;      // where Qt finds the keypad's plugin; empty: no keys
        std::string directory;            // for the keypad's socket: the user's own
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

    using Done = std::function<void(const std::string& error)>; // empty: it worked
    // Presses and releases a key. Done once the display has handled it, or after 10 s.
    void press(Key key, Done done);
    // Writes what the display shows as a PNG, so many times enlarged. Done when the file is there, or after
    // 10 s.
    void takePicture(const std::string& file, unsigned scale, Done done);
    // Forgets the calls of press and takePicture that have not ended.
    void cancel();

    // The display's log lines, as they come: "<priority> ident: text" without a line feed. A number for
    // forget().
    uint64_t listenToLog(std::function<void(const std::string& line)> listener);
    void forget(uint64_t listener);
    std::vector<std::string> lastLines(size_t count) const; // the newest, up to 1,000

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace sim

#endif
