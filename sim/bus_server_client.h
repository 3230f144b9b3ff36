// A client as the bus server keeps it. For the server's own sources only.
#ifndef SIM_BUS_SERVER_CLIENT_H
#define SIM_BUS_SERVER_CLIENT_H

#include "sim/bus_server.h"

namespace sim {

struct BusServer::Client {
    BusServer* server = nullptr;
    uint64_t id = 0;
    int pid = 0; // of its process; 0 if it cannot be known
    int fd = -1; // -1 once closed; the record then lives on to the end of the turn

    // What has been read and not handled yet: in[begin..end). Frames start at multiples of 4 bytes from the
    // start of the stream, and so they do here, since only whole frames and whole remainders are moved.
    std::vector<char> in;
    size_t begin = 0;
    size_t end = 0;

    std::string out; // what is still to be written: out[sent..]
    size_t sent = 0;
    bool isDirty = false;      // stands in the server's list
    bool waitsToWrite = false; // registered for writing
    bool closes = false;       // once out is written

    std::vector<std::string> filters;
    std::vector<std::string> provides;
    std::unordered_map<uint16_t, ReplyAddress> pending; // requests it has to answer, by our own number
    uint16_t nextRequest = 0;
};

// The span in which messages pile up for the clients; at the end of the outermost one each client gets what
// there is for it in one write.
class BusServer::Turn {
public:
    explicit Turn(BusServer& server) : server(server) { server.depth++; }
    ~Turn()
    {
        if (server.depth == 1)
            server.endTurn();
        server.depth--;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    BusServer& server;
};

} // namespace sim

#endif
