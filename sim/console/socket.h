// Consoles on a Unix socket, one for each client, for scripts, tests and the page in the browser.
//
// A client sends a line; it gets the output of the command, and then a line "= ok", "= failed" or "= bye".
// The line before "= failed" begins with "error: ". Lines that begin with "* " are things watched and come at
// any time between answers. A client may send lines ahead; they are run in order. When it has ended its own
// side, what it had sent is still run and answered; when it has gone, what runs is given up.
//
// The socket's file has mode 0600. A file that nobody listens on any more is taken over. No client can hold
// up the terminal: sockets are non-blocking, a client that sends ahead is read no further than a line's
// length, and one that does not read what it is told is closed with a line in the log.
//
// On the terminal's thread only. Nothing blocks.
#ifndef SIM_CONSOLE_SOCKET_H
#define SIM_CONSOLE_SOCKET_H

#include "sim/console/console.h"
#include "sim/timer.h"

#include <list>

namespace sim {

class ConsoleServer {
public:
    static constexpr size_t MaxClients = 64;
    static constexpr size_t MaxQueue = 16 * 1024 * 1024; // bytes that wait for a client that does not read
    static constexpr size_t PauseQueue = 256 * 1024;     // at which its next line waits too

    // The desk must outlive it.
    explicit ConsoleServer(Desk& desk);
    ~ConsoleServer(); // close()
    ConsoleServer(const ConsoleServer&) = delete;
    ConsoleServer& operator=(const ConsoleServer&) = delete;

    // Makes the socket. False with *error, one line, if that fails or somebody listens there already.
    bool listen(const std::string& path, std::string* error);
    // Closes all clients and removes the socket's file. Not from a command.
    void close();

private:
    class Client;

    static int onListener(int fd, void* data);
    void accept();
    void watch();
    void bury();

    Desk& desk;
    int listener = -1;
    std::string path;
    uint64_t inode = 0; // of the file that was made
    uint64_t lastClient = 0;
    std::list<std::unique_ptr<Client>> clients;
    Timer burial;  // of clients that have ended: somebody may be inside them
    Timer watcher; // for those that have gone while nothing is read from them
    Timer pause;   // while there are no descriptors
};

} // namespace sim

#endif
