// The bus server: takes clients, assembles their frames, and routes messages by name.
//
//   signal "cbus.filter"   the client gets every signal whose name begins with the data's text
//   signal "cbus.provide"  the client serves the names that begin with the data's text: it gets the requests
//   and the
//                          signals of these names
//   other signals          to every client that filtered or provides a prefix of the name, once each, the
//   sender
//                          included; and to the local provider
//   requests               to the provider with the longest prefix of the name, local or client; the first
//   one if
//                          several have the same. Without one, or if it goes away, the answer is an empty
//                          reply
//   replies                back to the client that asked, with its own src and seqn
//
// On a local socket only processes of the user who runs the server, and root's, become clients.
//
// No client can hold up another: sockets are non-blocking, what a client does not read waits in a queue of
// its own, and a client whose queue outgrows MaxQueue, or that sends a broken frame, is closed with a line in
// the log.
//
// Not thread-safe: everything on the thread of the loop. Nothing blocks.
#ifndef SIM_BUS_SERVER_H
#define SIM_BUS_SERVER_H

#include "sim/traffic.h"

#include "runtime/cbus_frame.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct fdloop_t;

namespace sim {

// A frame of a client. The views are valid during the call only.
struct BusFrame {
    uint64_t client = 0; // number of the connection, from 1, never used twice
    cbus_header_t header{};
    std::string_view name; // without its NUL
    std::string_view data;
};

// Where a reply goes: what is kept of a request that is answered later.
struct ReplyAddress {
    uint64_t client = 0;
    uint8_t src = 0;
    uint16_t seqn = 0;
    std::string name;
};

// Somebody inside the server's own process who serves names.
class LocalProvider {
public:
    virtual ~LocalProvider() = default;
    virtual void onSignal(const BusFrame& frame) = 0;
    // Must be answered with reply(), now or later.
    virtual void onRequest(const BusFrame& frame) = 0;
    virtual void onClientGone(uint64_t client) = 0;
};

class BusServer {
public:
    static constexpr size_t MaxQueue = 64 * 1024 * 1024; // bytes that wait for a client that does not read
    static constexpr size_t MaxPending = 4096;           // requests that wait for one providing client
    static constexpr size_t MaxFilters = 1024;           // filters, and names provided, of one client

    using Log = std::function<void(const std::string&)>;

    BusServer(fdloop_t* loop, Log log);
    ~BusServer(); // close()
    BusServer(const BusServer&) = delete;
    BusServer& operator=(const BusServer&) = delete;

    // Opens the server socket. False with *error set if that fails.
    bool listen(const std::string& address, std::string* error);
    // Closes all clients and the server socket.
    void close();
    // Closes the server socket alone, so that nobody new can connect, or opens it again on its address. False
    // with *error if that fails.
    bool setDeaf(bool deaf, std::string* error);
    // The port of a tcp address (which may have asked for port 0), or -1.
    int port() const;

    // Adds a provider inside this process, to be gone before the server or after close().
    void provideLocally(const std::string& prefix, LocalProvider* provider);

    // Sends a signal of the server's own to every client that filtered or provides a prefix of the name. The
    // cause is the client whose doing it is, 0 if none's; the tap alone is told.
    void publish(std::string_view name, std::string_view data, uint64_t cause = 0);
    // Sends a signal to one client, whatever it filtered. False if it is gone.
    bool signalTo(uint64_t client, std::string_view name, std::string_view data);
    // Answers a request with the two parts joined; a client that has gone away is passed over.
    void reply(const BusFrame& request, std::string_view head, std::string_view tail = {});
    void reply(const ReplyAddress& request, std::string_view head, std::string_view tail = {});

    // --- For tests and faults

    std::vector<uint64_t> clients() const;
    bool hasClient(uint64_t client) const { return find(client) != nullptr; }
    // What is to be told of a client.
    struct ClientFacts {
        uint64_t client = 0;
        int pid = 0;        // 0 if it cannot be known
        size_t waiting = 0; // bytes on their way to it
        std::vector<std::string> filters;
        std::vector<std::string> provides;
    };
    std::vector<ClientFacts> clientFacts() const;
    // Whether some client would get a signal of this name; whether anybody would hear of it, the tap
    // included.
    bool isWanted(std::string_view name) const;
    bool isHeard(std::string_view name) const { return tap || isWanted(name); }
    void closeClient(uint64_t client, const std::string& reason);
    // Closes a client once everything that is on its way to it has been written.
    void closeAfterWriting(uint64_t client);
    // Sends bytes as they are.
    void sendRaw(uint64_t client, std::string_view bytes);
    // While held, nothing is read from clients.
    void setHeld(bool held);
    // Reads and handles all that has arrived from clients so far.
    void drain();
    // Handles a message that the watcher kept back, without asking it again. Its client may have gone.
    void handleKept(const BusFrame& frame);

    // Called for each frame of a client before it is handled. False drops it (the watcher then has dealt with
    // it).
    using Watcher = std::function<bool(const BusFrame&)>;
    void setWatcher(Watcher watcher) { this->watcher = std::move(watcher); }
    // Hears everything that comes from clients, when it comes, and all that goes out, when it is on its way.
    // It costs nothing while there is none.
    using Tap = std::function<void(const Traffic&)>;
    void setTap(Tap tap) { this->tap = std::move(tap); }
    // Called when a client has come, gone, or set a filter.
    void setClientsChanged(std::function<void()> callback) { clientsChanged = std::move(callback); }

private:
    struct Client;
    struct Pending;
    class Turn;

    static int onListener(int fd, void* data);
    static int onReadable(int fd, void* data);
    static int onWritable(int fd, void* data);

    Client* find(uint64_t client) const;
    bool open(std::string* error);
    void accept();
    bool isOurs(int fd, int* pid);
    void refuseOne();
    bool receive(Client& client); // false: nothing to read now
    void takeFrames(Client& client);
    bool isBroken(Client& client, const cbus_header_t& header, const char* body);
    void handle(Client& client, const BusFrame& frame);
    void route(Client* client, const BusFrame& frame);
    void handleSignal(Client* client, const BusFrame& frame);
    void handleRequest(const BusFrame& frame);
    void handleReply(Client* client, const BusFrame& frame);
    void addName(Client& client, std::vector<std::string>& names, const BusFrame& frame);
    Client* providerOf(std::string_view name, LocalProvider** local) const;
    void forward(Client& provider, const BusFrame& frame);

    bool sendSignal(uint64_t client, std::string_view name, std::string_view data);
    void append(Client& client, const cbus_header_t& header, std::string_view name, std::string_view head,
                std::string_view tail);
    void tell(Way way, uint64_t client, const cbus_header_t& header, std::string_view name,
              std::string_view head, std::string_view tail = {});
    void markDirty(Client& client);
    void flush(Client& client);
    void write(Client& client);
    void endTurn();
    void drop(Client& client, const std::string& reason);

    fdloop_t* loop;
    Log log;
    std::string address;
    int listener = -1; // -1 also while it is deaf
    int spare = -1;    // a descriptor kept to refuse clients with when there are no more
    bool held = false;
    uint64_t lastClient = 0;
    uint16_t nextSeqn = 0;
    int depth = 0;
    std::unordered_map<uint64_t, std::unique_ptr<Client>> connected;
    std::vector<Client*> order; // of connection
    std::vector<Client*> dirty;
    std::vector<std::unique_ptr<Client>>
        gone; // freed at the end of the turn, since somebody may be inside them
    struct Local {
        std::string prefix;
        LocalProvider* provider;
    };
    std::vector<Local> locals;
    Watcher watcher;
    Tap tap;
    std::function<void()> clientsChanged;
};

} // namespace sim

#endif
