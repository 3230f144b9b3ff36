// Clients of the bus: their sockets, the routing of their messages, and their ends.
// The frames going out and coming in byte by byte are in bus_server_io.cpp.
#include "sim/bus_server_client.h"

#include "runtime/fdloop.h"
#include "runtime/vx_socket.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

namespace sim {

static bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

static bool hasPrefixOf(const std::vector<std::string>& prefixes, std::string_view name)
{
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&](const std::string& prefix) { return startsWith(name, prefix); });
}

BusServer::BusServer(fdloop_t* loop, Log log) : loop(loop), log(std::move(log)) {}

BusServer::~BusServer()
{
    close();
}

// --- Opening and closing

bool BusServer::listen(const std::string& address, std::string* error)
{
    if (startsWith(address, "udp*")) {
        *error = "cannot listen on " + address + ": the bus needs a stream";
        return false;
    }
    this->address = address;
    spare = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    return open(error);
}

bool BusServer::open(std::string* error)
{
    int fd = socket_create_server(address.c_str());
    // A burst of clients must not find the queue full: a local socket that does not wait fails at once then.
    if (fd < 0 || fd >= FD_SETSIZE || socket_set_blocking(fd, 0) != 0 || ::listen(fd, SOMAXCONN) != 0) {
        *error = "cannot listen on " + address + ": " + strerror(errno);
        if (fd >= 0)
            ::close(fd);
        return false;
    }
    listener = fd;
    fdloop_fd_register(loop, listener, onListener, this);
    // A port that the system chose is the address from now on.
    if (startsWith(address, "tcp*"))
        address = address.substr(0, address.rfind('*') + 1) + std::to_string(port());
    return true;
}

bool BusServer::setDeaf(bool deaf, std::string* error)
{
    if (deaf == (listener < 0))
        return true;
    if (!deaf)
        return open(error);
    fdloop_fd_unregister(loop, listener);
    ::close(listener);
    listener = -1;
    return true;
}

void BusServer::close()
{
    for (uint64_t client : clients())
        closeClient(client, std::string());
    setDeaf(true, nullptr);
    if (spare >= 0) {
        ::close(spare);
        spare = -1;
    }
}

int BusServer::port() const
{
    return socket_get_port_number(listener);
}

int BusServer::onListener(int, void* data)
{
    static_cast<BusServer*>(data)->accept();
    return 0;
}

void BusServer::accept()
{
    int fd = socket_create_server_client(listener);
    if (fd < 0) {
        if (errno == EMFILE || errno == ENFILE)
            refuseOne();
        return;
    }
    if (fd >= FD_SETSIZE || socket_set_blocking(fd, 0) != 0) {
        log("refused a client: too many descriptors");
        ::close(fd);
        return;
    }
    int pid = 0;
    if (!isOurs(fd, &pid)) {
        ::close(fd);
        return;
    }
    auto client = std::make_unique<Client>();
    client->server = this;
    client->pid = pid;
    client->id = ++lastClient;
    client->fd = fd;
    fdloop_fd_register(loop, fd, onReadable, client.get());
    if (held)
        fdloop_fd_enable(loop, fd, onReadable, 0);
    order.push_back(client.get());
    connected.emplace(client->id, std::move(client));
    if (clientsChanged)
        clientsChanged();
}

// An abstract name has no owner and no mode: anybody on the machine can connect to it. Of a socket that is
// not local nothing can be known.
bool BusServer::isOurs(int fd, int* pid)
{
    ucred peer{};
    socklen_t length = sizeof peer;
    if (!startsWith(address, "unix*"))
        return true;
    if (getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &length) != 0) {
        log(std::string("refused a client: ") + strerror(errno));
        return false;
    }
    *pid = peer.pid;
    if (peer.uid == geteuid() || peer.uid == 0)
        return true;
    log("refused a client: process " + std::to_string(peer.pid) + " is of another user, " +
        std::to_string(peer.uid));
    return false;
}

// Out of descriptors: a client that is left waiting would keep the server socket readable and the loop
// spinning, so the spare descriptor makes room to take the client and close it.
void BusServer::refuseOne()
{
    log("refused a client: too many descriptors");
    ::close(spare);
    int fd = socket_create_server_client(listener);
    if (fd >= 0)
        ::close(fd);
    spare = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

BusServer::Client* BusServer::find(uint64_t client) const
{
    auto found = connected.find(client);
    return found == connected.end() ? nullptr : found->second.get();
}

std::vector<uint64_t> BusServer::clients() const
{
    std::vector<uint64_t> ids;
    for (const Client* client : order)
        ids.push_back(client->id);
    return ids;
}

std::vector<BusServer::ClientFacts> BusServer::clientFacts() const
{
    std::vector<ClientFacts> facts;
    for (const Client* client : order)
        facts.push_back(
            {client->id, client->pid, client->out.size() - client->sent, client->filters, client->provides});
    return facts;
}

void BusServer::closeClient(uint64_t client, const std::string& reason)
{
    Turn turn(*this);
    Client* found = find(client);
    if (!found)
        return;
    flush(*found); // what it was sent before is still to come, as far as its socket takes it
    drop(*found, reason);
}

void BusServer::drop(Client& client, const std::string& reason)
{
    if (client.fd < 0)
        return;
    if (!reason.empty())
        log("closed client " + std::to_string(client.id) + ": " + reason);
    fdloop_fd_unregister(loop, client.fd);
    if (client.waitsToWrite)
        fdloop_fd_unregister_write(loop, client.fd);
    ::close(client.fd);
    client.fd = -1;

    auto node = connected.extract(client.id);
    order.erase(std::find(order.begin(), order.end(), &client));
    gone.push_back(std::move(node.mapped()));
    std::unordered_map<uint16_t, ReplyAddress> unanswered;
    unanswered.swap(client.pending);
    for (const auto& [seqn, address] : unanswered)
        reply(address, {});
    for (const Local& local : locals)
        local.provider->onClientGone(client.id);
    if (clientsChanged)
        clientsChanged();
}

void BusServer::setHeld(bool hold)
{
    held = hold;
    for (Client* client : order)
        fdloop_fd_enable(loop, client->fd, onReadable, hold ? 0 : 1);
}

// --- Routing

void BusServer::provideLocally(const std::string& prefix, LocalProvider* provider)
{
    locals.push_back({prefix, provider});
}

void BusServer::handle(Client& client, const BusFrame& frame)
{
    if (tap)
        tell(Way::From, client.id, frame.header, frame.name, frame.data);
    Watcher asked = watcher; // it may replace itself
    if (!asked || asked(frame))
        route(&client, frame);
}

void BusServer::handleKept(const BusFrame& frame)
{
    Turn turn(*this);
    route(find(frame.client), frame);
}

// The client is null if it has gone; what it sent before still counts.
void BusServer::route(Client* client, const BusFrame& frame)
{
    switch (frame.header.type) {
    case CBUS_TYPE_SIGNAL:
        handleSignal(client, frame);
        break;
    case CBUS_TYPE_REQUEST:
        handleRequest(frame);
        break;
    case CBUS_TYPE_REPLY:
        handleReply(client, frame);
        break;
    }
}

void BusServer::addName(Client& client, std::vector<std::string>& names, const BusFrame& frame)
{
    std::string text(frame.data.substr(0, frame.data.find('\0')));
    if (text.size() >= CBUS_NAME_LIMIT || names.size() >= MaxFilters) {
        log("client " + std::to_string(client.id) + ": " + std::string(frame.name) +
            " refused: " + (names.size() >= MaxFilters ? "too many" : "too long"));
        return;
    }
    // A client says so again for each subscription; once is enough.
    if (std::find(names.begin(), names.end(), text) == names.end())
        names.push_back(std::move(text));
    if (clientsChanged)
        clientsChanged();
}

void BusServer::handleSignal(Client* client, const BusFrame& frame)
{
    bool isFilter = frame.name == "cbus.filter";
    if (isFilter || frame.name == "cbus.provide") {
        if (client)
            addName(*client, isFilter ? client->filters : client->provides, frame);
        return;
    }
    publish(frame.name, frame.data, frame.client);
    for (const Local& local : locals) {
        if (startsWith(frame.name, local.prefix))
            local.provider->onSignal(frame);
    }
}

void BusServer::publish(std::string_view name, std::string_view data, uint64_t cause)
{
    if (name.size() + 1 >= CBUS_NAME_LIMIT || data.size() >= CBUS_DATA_LIMIT) {
        log("signal dropped: too long");
        return;
    }
    Turn turn(*this);
    std::vector<Client*> takers;
    for (Client* client : order) {
        if (hasPrefixOf(client->filters, name) || hasPrefixOf(client->provides, name))
            takers.push_back(client);
    }
    // A client's signal that goes to nobody but the local provider has been told when it came.
    if (tap && (cause == 0 || !takers.empty())) {
        cbus_header_t header{};
        header.type = CBUS_TYPE_SIGNAL;
        tell(Way::All, cause, header, name, data);
    }
    for (Client* client : takers)
        sendSignal(client->id, name, data);
}

bool BusServer::signalTo(uint64_t id, std::string_view name, std::string_view data)
{
    if (tap && find(id)) {
        cbus_header_t header{};
        header.type = CBUS_TYPE_SIGNAL;
        header.seqn = nextSeqn;
        tell(Way::To, id, header, name, data);
    }
    return sendSignal(id, name, data);
}

bool BusServer::sendSignal(uint64_t id, std::string_view name, std::string_view data)
{
    Turn turn(*this);
    Client* client = find(id);
    if (!client)
        return false;
    cbus_header_t header{};
    header.type = CBUS_TYPE_SIGNAL;
    header.seqn = nextSeqn++;
    append(*client, header, name, data, {});
    return true;
}

bool BusServer::isWanted(std::string_view name) const
{
    return std::any_of(order.begin(), order.end(), [&](const Client* client) {
        return hasPrefixOf(client->filters, name) || hasPrefixOf(client->provides, name);
    });
}

// The provider with the longest prefix: a client, or null with *local set, or neither. Of equal prefixes the
// first counts, and the local ones were there first.
BusServer::Client* BusServer::providerOf(std::string_view name, LocalProvider** local) const
{
    size_t longest = 0;
    *local = nullptr;
    for (const Local& candidate : locals) {
        if (startsWith(name, candidate.prefix) && (!*local || candidate.prefix.size() > longest)) {
            *local = candidate.provider;
            longest = candidate.prefix.size();
        }
    }
    Client* best = nullptr;
    for (Client* client : order) {
        for (const std::string& prefix : client->provides) {
            if (!startsWith(name, prefix) || ((best || *local) && prefix.size() <= longest))
                continue;
            best = client;
            longest = prefix.size();
        }
    }
    if (best)
        *local = nullptr;
    return best;
}

void BusServer::handleRequest(const BusFrame& frame)
{
    LocalProvider* local = nullptr;
    Client* provider = providerOf(frame.name, &local);
    if (local)
        local->onRequest(frame);
    else if (provider)
        forward(*provider, frame);
    else
        reply(frame, {});
}

// The provider sees numbers of the server's own, since two clients may well have used the same ones.
void BusServer::forward(Client& provider, const BusFrame& frame)
{
    if (provider.pending.size() >= MaxPending) {
        log("client " + std::to_string(provider.id) + ": too many requests wait for it");
        reply(frame, {});
        return;
    }
    uint16_t seqn = provider.nextRequest++;
    while (provider.pending.count(seqn))
        seqn = provider.nextRequest++;
    provider.pending.emplace(
        seqn, ReplyAddress{frame.client, frame.header.src, frame.header.seqn, std::string(frame.name)});
    cbus_header_t header = frame.header;
    header.src = 0;
    header.seqn = seqn;
    if (tap)
        tell(Way::To, provider.id, header, frame.name, frame.data);
    append(provider, header, frame.name, frame.data, {});
}

void BusServer::handleReply(Client* client, const BusFrame& frame)
{
    if (!client) // its questions were answered when it went
        return;
    auto found = client->pending.find(frame.header.seqn);
    if (found == client->pending.end()) {
        log("client " + std::to_string(client->id) + ": a reply that nobody waits for");
        return;
    }
    ReplyAddress address = std::move(found->second);
    client->pending.erase(found);
    reply(address, frame.data);
}

} // namespace sim
