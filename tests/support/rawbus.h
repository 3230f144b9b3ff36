// The server's side of the bus, driven by hand: a listening socket on a private address, and the bytes of
// one client's connection. For what the real server never does, and for looking at bytes.
//
// Single-threaded use is enough: what is sent waits in the socket until the client reads it.
#ifndef TESTS_SUPPORT_RAWBUS_H
#define TESTS_SUPPORT_RAWBUS_H

#include "runtime/cbus.h"
#include "runtime/vx_socket.h"
#include "support/patience.h"

#include <cstdint>
#include <cstdlib>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

// Integers as they stand on the wire of a little-endian machine.
inline std::string le16(uint32_t value)
{
    return {static_cast<char>(value & 0xff), static_cast<char>(value >> 8 & 0xff)};
}

inline std::string le32(uint32_t value)
{
    return le16(value & 0xffff) + le16(value >> 16);
}

inline std::string padTo4(std::string bytes)
{
    bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
    return bytes;
}

// A header with any lengths, true or not.
inline std::string headerBytes(uint8_t type, uint8_t src, uint16_t seqn, uint32_t nlen, uint32_t dlen)
{
    return std::string{static_cast<char>(type), static_cast<char>(src)} + le16(seqn) + le16(0) + le16(nlen) +
           le32(dlen);
}

inline std::string frameBytes(uint8_t type, uint8_t src, uint16_t seqn, const std::string& name,
                              const std::string& data)
{
    const std::string withNul = name + '\0';
    return headerBytes(type, src, seqn, static_cast<uint32_t>(withNul.size()),
                       static_cast<uint32_t>(data.size())) +
           padTo4(withNul) + padTo4(data);
}

inline std::string signalBytes(const std::string& name, const std::string& data = {})
{
    return frameBytes(CBUS_TYPE_SIGNAL, 0, 0, name, data);
}

inline std::string requestBytes(uint8_t src, uint16_t seqn, const std::string& name,
                                const std::string& data = {})
{
    return frameBytes(CBUS_TYPE_REQUEST, src, seqn, name, data);
}

inline std::string replyBytes(uint16_t seqn, const std::string& data)
{
    return frameBytes(CBUS_TYPE_REPLY, 0, seqn, "reply", data);
}

class RawBus {
public:
    // Listens, and names itself in CBUS_ADDR.
    RawBus() : address_("unix*rawbus" + std::to_string(getpid()) + "-" + std::to_string(next()++))
    {
        listener = socket_create_server(address_.c_str());
        setenv("CBUS_ADDR", address_.c_str(), 1);
    }
    ~RawBus()
    {
        close();
        stopListening();
    }
    RawBus(const RawBus&) = delete;
    RawBus& operator=(const RawBus&) = delete;

    const std::string& address() const { return address_; }
    int fd() const { return peer; }

    // A client's connection, whose other end is this object's from now on.
    cbus_conn_t* connect(fdloop_t* loop = nullptr)
    {
        cbus_conn_t* conn = cbus_conn_create(loop, "test");
        if (conn)
            peer = socket_create_server_client(listener);
        return conn;
    }

    // Sends bytes to the client; false if they don't go.
    bool send(const std::string& bytes)
    {
        size_t sent = 0;
        while (sent < bytes.size()) {
            const ssize_t n = ::send(peer, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (n <= 0)
                return false;
            sent += static_cast<size_t>(n);
        }
        return true;
    }

    // Takes just this many bytes from the client; fewer if the stream ends or nothing comes for 5 seconds.
    std::string take(size_t size)
    {
        std::string bytes(size, '\0');
        size_t got = 0;
        while (got < size && readable(PATIENCE_MS)) {
            const ssize_t n = ::read(peer, &bytes[got], size - got);
            if (n <= 0)
                break;
            got += static_cast<size_t>(n);
        }
        bytes.resize(got);
        return bytes;
    }

    // What the client has sent so far.
    std::string takeAll()
    {
        std::string bytes;
        while (readable(0)) {
            char block[4096];
            const ssize_t n = ::read(peer, block, sizeof(block));
            if (n <= 0)
                break;
            bytes.append(block, static_cast<size_t>(n));
        }
        return bytes;
    }

    // Whether the client's end is closed, with everything it sent taken.
    bool closedByClient()
    {
        char byte;
        return readable(PATIENCE_MS) && ::read(peer, &byte, 1) == 0;
    }

    void close()
    {
        if (peer >= 0)
            ::close(peer);
        peer = -1;
    }

    void stopListening()
    {
        if (listener >= 0)
            ::close(listener);
        listener = -1;
    }

private:
    static int& next()
    {
        static int number = 0;
        return number;
    }

    bool readable(int timeout)
    {
        struct pollfd entry = {peer, POLLIN, 0};
        return poll(&entry, 1, timeout) == 1;
    }

    std::string address_;
    int listener = -1;
    int peer = -1;
};

#endif
