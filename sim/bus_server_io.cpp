// Bytes from and to the clients of the bus: assembling frames out of what was read, queueing and writing what
// goes out. It knows no message's meaning; routing is in bus_server.cpp.
#include "sim/bus_server_client.h"

#include "runtime/fdloop.h"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

namespace sim {

// Enough for the usual message many times over; a longer one makes its client's buffer grow to just its size.
static constexpr size_t ReadSize = 16 * 1024;
// A buffer that a rare long message has blown up is given back above this.
static constexpr size_t KeepSize = 256 * 1024;

// --- In

int BusServer::onReadable(int, void* data)
{
    Client& client = *static_cast<Client*>(data);
    Turn turn(*client.server);
    client.server->receive(client);
    return 0;
}

bool BusServer::receive(Client& client)
{
    if (client.in.size() - client.end < ReadSize / 4)
        client.in.resize(client.end + ReadSize);
    ssize_t count = recv(client.fd, client.in.data() + client.end, client.in.size() - client.end, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return false;
    if (count <= 0) {
        if (client.end > client.begin)
            drop(client, "the stream ended inside a message");
        else
            drop(client, count < 0 && errno != ECONNRESET ? strerror(errno) : std::string());
        return false;
    }
    client.end += static_cast<size_t>(count);
    takeFrames(client);
    return client.fd >= 0;
}

bool BusServer::isBroken(Client& client, const cbus_header_t& header, const char* body)
{
    const char* problem = nullptr;
    if (header.type < CBUS_TYPE_SIGNAL || header.type > CBUS_TYPE_REPLY)
        problem = "unknown message type";
    else if (header.nlen >= CBUS_NAME_LIMIT)
        problem = "name too long";
    else if (header.dlen >= CBUS_DATA_LIMIT)
        problem = "data too long";
    else if (body && header.nlen > 0 && body[header.nlen - 1] != '\0')
        problem = "name without its end";
    if (problem)
        drop(client, std::string("broken frame: ") + problem);
    return problem != nullptr;
}

void BusServer::takeFrames(Client& client)
{
    while (client.fd >= 0 && client.end - client.begin >= sizeof(cbus_header_t)) {
        BusFrame frame;
        const char* start = client.in.data() + client.begin;
        memcpy(&frame.header, start, sizeof frame.header);
        if (isBroken(client, frame.header, nullptr))
            return;
        size_t size = cbus_frame_size(&frame.header);
        if (client.end - client.begin < size) {
            if (client.in.size() - client.begin < size)
                client.in.resize(client.begin + size);
            break;
        }
        const char* body = start + sizeof frame.header;
        if (isBroken(client, frame.header, body))
            return;
        frame.client = client.id;
        frame.name = frame.header.nlen ? std::string_view(body) : std::string_view();
        frame.data = std::string_view(body + cbus_padded(frame.header.nlen), frame.header.dlen);
        client.begin += size;
        handle(client, frame);
    }
    if (client.begin == client.end) {
        client.begin = client.end = 0;
        if (client.in.size() > KeepSize)
            std::vector<char>().swap(client.in);
    } else if (client.begin > 0) {
        memmove(client.in.data(), client.in.data() + client.begin, client.end - client.begin);
        client.end -= client.begin;
        client.begin = 0;
    }
}

void BusServer::drain()
{
    if (held || depth > 0)
        return;
    Turn turn(*this);
    for (uint64_t id : clients()) {
        Client* client = find(id);
        while (client && receive(*client))
            client = find(id);
    }
}

// --- Out

static void appendPadding(std::string& out, size_t length)
{
    out.append(cbus_padded(static_cast<uint32_t>(length)) - length, '\0');
}

void BusServer::append(Client& client, const cbus_header_t& header, std::string_view name,
                       std::string_view head, std::string_view tail)
{
    if (client.fd < 0)
        return;
    cbus_header_t sent = header;
    sent.reserved = 0;
    sent.nlen = name.empty() ? 0 : static_cast<uint16_t>(name.size() + 1);
    sent.dlen = static_cast<uint32_t>(head.size() + tail.size());
    std::string& out = client.out;
    out.append(reinterpret_cast<const char*>(&sent), sizeof sent);
    if (sent.nlen) {
        out.append(name);
        out.push_back('\0');
        appendPadding(out, sent.nlen);
    }
    out.append(head);
    out.append(tail);
    appendPadding(out, sent.dlen);
    markDirty(client);
}

void BusServer::reply(const BusFrame& request, std::string_view head, std::string_view tail)
{
    Turn turn(*this);
    Client* client = find(request.client);
    if (!client)
        return;
    cbus_header_t header = request.header;
    header.type = CBUS_TYPE_REPLY;
    if (tap)
        tell(Way::To, client->id, header, request.name, head, tail);
    append(*client, header, request.name, head, tail);
}

void BusServer::reply(const ReplyAddress& request, std::string_view head, std::string_view tail)
{
    BusFrame frame;
    frame.client = request.client;
    frame.header.src = request.src;
    frame.header.seqn = request.seqn;
    frame.name = request.name;
    reply(frame, head, tail);
}

void BusServer::sendRaw(uint64_t id, std::string_view bytes)
{
    Turn turn(*this);
    if (Client* client = find(id)) {
        if (tap)
            tell(Way::To, id, cbus_header_t(), {}, bytes);
        client->out.append(bytes);
        markDirty(*client);
    }
}

void BusServer::closeAfterWriting(uint64_t id)
{
    Turn turn(*this);
    if (Client* client = find(id)) {
        client->closes = true;
        markDirty(*client);
    }
}

// To the tap, which may take itself away meanwhile.
void BusServer::tell(Way way, uint64_t client, const cbus_header_t& header, std::string_view name,
                     std::string_view head, std::string_view tail)
{
    Traffic traffic{way, client, header, name, head};
    std::string joined;
    if (!tail.empty()) {
        joined.append(head).append(tail);
        traffic.data = joined;
    }
    Tap listener = tap;
    listener(traffic);
}

void BusServer::markDirty(Client& client)
{
    // Not dropped here, since the caller may be in the midst of the list of clients.
    if (client.isDirty)
        return;
    client.isDirty = true;
    dirty.push_back(&client);
}

int BusServer::onWritable(int, void* data)
{
    Client& client = *static_cast<Client*>(data);
    Turn turn(*client.server);
    client.server->write(client);
    return 0;
}

void BusServer::flush(Client& client)
{
    client.isDirty = false;
    if (client.fd < 0)
        return;
    // A full socket says by itself when it has room again.
    if (!client.waitsToWrite)
        write(client);
    if (client.fd < 0)
        return;
    size_t waiting = client.out.size() - client.sent;
    if (waiting > MaxQueue)
        drop(client, "it does not read: " + std::to_string(waiting) + " bytes wait for it");
}

void BusServer::write(Client& client)
{
    ssize_t count =
        send(client.fd, client.out.data() + client.sent, client.out.size() - client.sent, MSG_NOSIGNAL);
    if (count < 0 && errno != EAGAIN && errno != EINTR) {
        // It does not take anything any more. What it sent before is still read, and then the end of the
        // stream.
        client.sent = client.out.size();
        count = 0;
    }
    client.sent += count > 0 ? static_cast<size_t>(count) : 0;
    bool done = client.sent == client.out.size();
    if (done || client.sent > client.out.size() / 2) {
        client.out.erase(0, client.sent);
        client.sent = 0;
        if (client.out.capacity() > KeepSize && client.out.size() < KeepSize / 2)
            client.out.shrink_to_fit();
    }
    if (done && client.closes) {
        drop(client, std::string());
        return;
    }
    if (done != client.waitsToWrite)
        return;
    client.waitsToWrite = !done;
    if (done)
        fdloop_fd_unregister_write(loop, client.fd);
    else
        fdloop_fd_register_write(loop, client.fd, onWritable, &client);
}

void BusServer::endTurn()
{
    // Flushing may close a client, whose unanswered requests make others dirty.
    while (!dirty.empty()) {
        std::vector<Client*> clients;
        clients.swap(dirty);
        for (Client* client : clients)
            flush(*client);
    }
    gone.clear();
}

} // namespace sim
