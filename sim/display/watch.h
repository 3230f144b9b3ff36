// Tells what happens to a file, or in a directory, through the event loop.
//
// On the thread of the loop only. The watch must not be destroyed in its own function.
#ifndef SIM_DISPLAY_WATCH_H
#define SIM_DISPLAY_WATCH_H

#include <cstdint>
#include <functional>
#include <string>

struct fdloop_t;

namespace sim {

class Watch {
public:
    // Gets the name of the directory's entry; empty where a file itself is watched.
    using Function = std::function<void(const std::string& name)>;

    explicit Watch(fdloop_t* loop) : loop(loop) {}
    ~Watch() { stop(); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // events: as inotify has them (IN_MODIFY, IN_CLOSE_WRITE). False with *error if it can't be watched.
    bool start(const std::string& path, uint32_t events, Function function, std::string* error);
    void stop();
    bool isRunning() const { return fd >= 0; }

private:
    static int onEvents(int fd, void* data);

    fdloop_t* loop;
    int fd = -1;
    unsigned starts = 0; // tells a watch from the one before it on the same descriptor
    Function function;
};

} // namespace sim

#endif
