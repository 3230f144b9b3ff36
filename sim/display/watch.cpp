// Watches by inotify, one descriptor each. The kernel's records: see inotify(7).
#include "sim/display/watch.h"

#include "runtime/fdloop.h"

#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>
#include <vector>

namespace sim {

bool Watch::start(const std::string& path, uint32_t events, Function what, std::string* error)
{
    stop();
    int made = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (made < 0 || inotify_add_watch(made, path.c_str(), events) < 0) {
        *error = "cannot watch " + path + ": " + strerror(errno);
        if (made >= 0)
            close(made);
        return false;
    }
    fd = made;
    starts++;
    function = std::move(what);
    fdloop_fd_register(loop, fd, onEvents, this);
    return true;
}

void Watch::stop()
{
    if (fd < 0)
        return;
    fdloop_fd_unregister(loop, fd);
    close(fd);
    fd = -1;
}

int Watch::onEvents(int fd, void* data)
{
    Watch& watch = *static_cast<Watch*>(data);
    alignas(inotify_event) char bytes[4096];
    ssize_t count = read(fd, bytes, sizeof bytes);
    std::vector<std::string> names;
    for (ssize_t at = 0; at < count;) {
        const auto* event = reinterpret_cast<const inotify_event*>(bytes + at);
        names.emplace_back(event->len > 0 ? event->name : "");
        at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    // The function may stop this watch, or start it anew.
    Function function = watch.function;
    unsigned start = watch.starts;
    for (const std::string& name : names) {
        if (watch.fd == fd && watch.starts == start)
            function(name);
    }
    return 0;
}

} // namespace sim
