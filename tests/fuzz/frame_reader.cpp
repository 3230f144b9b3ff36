// Fuzz target: the frame reader and the dispatcher of the bus client. The input is what a server sends; the
// client's end is a real connection on a loop, or one that waits for replies.
//
// The first byte says how: bit 0 trace of messages, bit 1 a request is waited for first, bit 2 name tables
// and callbacks that answer, ask and keep contexts, bit 3 a small send buffer, which the server never reads.
// Without bits 1 and 2, what is delivered is compared with a walk over the bytes made here.
//
// Legal ends: lengths beyond the limits, a full queue (assertions), a message of unknown type, a reply to
// something else.
#include "fuzz/fuzz.h"

#include "runtime/cbus.h"
#include "runtime/cbus_sock_impl.h"
#include "runtime/fdloop.h"
#include "support/busclient.h"
#include "support/rawbus.h"

#include <csignal>

using fuzz::check;

namespace {

enum { TRACE = 1, WAIT = 2, ACT = 4, SMALL = 8 };
const int MAX_ACTIONS = 32; // of one input: the server reads nothing, so what is sent must stay within reason

struct Message {
    uint8_t type;
    std::string name;
    std::string data;
    bool operator==(const Message& other) const
    {
        return type == other.type && name == other.name && data == other.data;
    }
};

std::vector<Message> delivered;
std::vector<cbus_sender_ctx_t*> kept;
int actions;

int note(uint8_t type, const char* name, void* data, uint32_t len)
{
    delivered.push_back({type, name, std::string(static_cast<char*>(data), len)});
    return 0;
}

int onSignal(cbus_conn_t*, const char* name, void* data, uint32_t len)
{
    return note(CBUS_TYPE_SIGNAL, name, data, len);
}

int onRequest(cbus_conn_t*, const char* name, void* data, uint32_t len)
{
    return note(CBUS_TYPE_REQUEST, name, data, len);
}

int onReply(cbus_conn_t*, const char* name, void* data, uint32_t len)
{
    return note(CBUS_TYPE_REPLY, name, data, len);
}

void ask(cbus_conn_t* conn)
{
    const int cookie = cbus_send_request(conn, "config.read.cfg.language", "1234", 4);
    void* reply = nullptr;
    if (cookie >= 0)
        cbus_get_reply(conn, cookie, &reply);
    free(reply);
}

// The data's first byte says what the callback does.
int act(cbus_conn_t* conn, void*, const char* name, void* data, uint32_t len)
{
    check(strlen(name) < CBUS_NAME_LIMIT, "a name without an end");
    const char* const bytes = static_cast<const char*>(data);
    if (len == 0 || ++actions > MAX_ACTIONS)
        return 0;
    switch (bytes[0]) {
    case 'r':
        cbus_send_reply(conn, data, len);
        break;
    case 's':
        kept.push_back(cbus_store_sender_ctx(conn));
        break;
    case 'a':
        if (!kept.empty()) {
            cbus_sender_ctx_t* const context = kept.back();
            kept.pop_back();
            cbus_send_reply_to(conn, data, len, context);
        }
        break;
    case 'c':
        if (!kept.empty())
            cbus_copy_sender_ctx(conn, kept.back());
        break;
    case 'q':
        ask(conn);
        break;
    case 'f':
        cbus_filter(conn, name);
        break;
    case 'b': // big
        cbus_send_signal(conn, name, std::string(20000, 'b').data(), 20000);
        break;
    case 'd':
        cbus_client_signal_cb_del(conn, "config.", act, nullptr);
        break;
    }
    return 0;
}

void addRows(cbus_conn_t* conn)
{
    cbus_client_init_cb(conn);
    cbus_client_signal_cb_add(conn, "config.", act, nullptr);
    cbus_client_signal_cb_add(conn, "co", act, nullptr);
    cbus_client_request_cb_add(conn, "", act, nullptr);
    cbus_client_reply_cb_add(conn, "a", act, nullptr);
}

// What must be delivered of a stream: up to its end, its first incomplete frame, or the first that panics.
std::vector<Message> walk(const std::string& stream)
{
    std::vector<Message> expected;
    cbus_header_t header;
    for (size_t at = 0; stream.size() - at >= sizeof(header);) {
        memcpy(&header, &stream[at], sizeof(header));
        at += sizeof(header);
        const size_t nameBlock = (header.nlen + 3u) / 4 * 4;
        const size_t dataBlock = (size_t(header.dlen) + 3) / 4 * 4;
        if (header.nlen >= 1024 || header.dlen >= 0x200000 || stream.size() - at < nameBlock + dataBlock ||
            header.type < 1 || header.type > 3)
            break;
        std::string name = stream.substr(at, header.nlen ? header.nlen - 1u : 0u);
        name.resize(strlen(name.c_str()));
        expected.push_back({header.type, name, stream.substr(at + nameBlock, header.dlen)});
        at += nameBlock + dataBlock;
    }
    return expected;
}

void run(RawBus& bus, cbus_conn_t* conn, fdloop_t* loop, int mode, const std::string& stream)
{
    if (mode & SMALL) {
        const int size = 4096;
        setsockopt(conn->fd, SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
    }
    check(bus.send(stream), "the input did not fit the socket");
    shutdown(bus.fd(), SHUT_WR);
    cbus_debug = mode & TRACE;
    if (mode & WAIT)
        ask(conn);
    // Each turn delivers one message, or the whole queue.
    for (size_t turns = stream.size() / sizeof(cbus_header_t) + 8; turns && conn->fd >= 0; --turns)
        fdloop_run(loop);
    check(conn->fd < 0, "the stream has ended, and the connection is open");
    while (conn->queue_head) // what a wait put there before the connection was lost
        fdloop_run(loop);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    signal(SIGPIPE, SIG_IGN);
    fuzz::silence();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static RawBus* const bus = new RawBus;
    if (size < 1 || size > 65536)
        return 0;
    const int mode = data[0];
    const std::string stream(reinterpret_cast<const char*>(data) + 1, size - 1);
    delivered.clear();
    kept.clear();
    actions = 0;

    fuzz::Blocks blocks;
    fdloop_t* const loop = fdloop_init();
    cbus_conn_t* const conn = bus->connect(loop);
    check(conn != nullptr, "no connection");
    if (mode & ACT)
        addRows(conn);
    else
        cbus_conn_set_rx_cb(conn, onSignal, onRequest, onReply);
    const bool survived =
        fuzz::survives([&] { run(*bus, conn, loop, mode, stream); },
                       {"*** ASSERT in cbus_sock_impl at ", "Invalid message type [", "Cookie mismatch ("});
    cbus_debug = false;
    if (!(mode & (WAIT | ACT)))
        check(delivered == walk(stream), "other messages than those that were sent");
    bus->close();
    if (survived) {
        for (cbus_sender_ctx_t* context : kept)
            cbus_free_sender_ctx(context);
        endConnection(conn);
        fuzz::freeLoop(loop);
    } else {
        if (conn->fd >= 0)
            close(conn->fd);
        blocks.freeRest();
    }
    return 0;
}
