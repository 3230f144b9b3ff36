// A bus client that sends and reads bytes as they are, for tests of the server's side.
#ifndef TESTS_SIM_RAW_CLIENT_H
#define TESTS_SIM_RAW_CLIENT_H

#include "runtime/cbus_frame.h"
#include "runtime/config_client_api.h"
#include "runtime/vx_socket.h"
#include "sim/terminal.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

class RawClient {
public:
    explicit RawClient(const std::string& address) : fd(socket_create_client(address.c_str())) {}
    ~RawClient() { disconnect(); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    bool isConnected() const { return fd >= 0; }
    int descriptor() const { return fd; }
    void disconnect()
    {
        if (fd >= 0)
            close(fd);
        fd = -1;
    }

    bool sendBytes(const std::string& bytes)
    {
        size_t sent = 0;
        while (sent < bytes.size()) {
            ssize_t count = send(fd, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                return false;
            sent += static_cast<size_t>(count);
        }
        return true;
    }
    void sendSignal(const std::string& name, const std::string& data)
    {
        sendBytes(sim::Terminal::frame(CBUS_TYPE_SIGNAL, 7, seqn++, name, data));
    }
    void filter(const std::string& prefix) { sendSignal("cbus.filter", prefix + '\0'); }
    void provide(const std::string& prefix) { sendSignal("cbus.provide", prefix + '\0'); }
    uint16_t sendRequest(const std::string& name, const std::string& data)
    {
        sendBytes(sim::Terminal::frame(CBUS_TYPE_REQUEST, 7, seqn, name, data));
        return seqn++;
    }

    // Exactly so many bytes; fewer if the stream ends or nothing comes within the time.
    std::string readBytes(size_t length, int timeout = sim::Terminal::DefaultTimeout)
    {
        std::string bytes;
        while (bytes.size() < length && waitReadable(timeout)) {
            char buffer[65536];
            size_t want = std::min(length - bytes.size(), sizeof buffer);
            ssize_t count = recv(fd, buffer, want, 0);
            if (count <= 0)
                break;
            bytes.append(buffer, static_cast<size_t>(count));
        }
        return bytes;
    }
    // The next frame, or nullopt if the stream ended or nothing came.
    std::optional<sim::Message> readFrame(int timeout = sim::Terminal::DefaultTimeout)
    {
        std::string head = readBytes(sizeof(cbus_header_t), timeout);
        cbus_header_t header;
        if (head.size() < sizeof header)
            return std::nullopt;
        memcpy(&header, head.data(), sizeof header);
        std::string body = readBytes(cbus_body_size(&header), timeout);
        if (body.size() < cbus_body_size(&header))
            return std::nullopt;
        sim::Message message;
        message.type = header.type;
        message.src = header.src;
        message.seqn = header.seqn;
        if (header.nlen)
            message.name = body.c_str();
        message.data = body.substr(cbus_padded(header.nlen), header.dlen);
        return message;
    }
    // Sends a request and returns the data of its reply; signals in between are skipped.
    std::optional<std::string> ask(const std::string& name, const std::string& data)
    {
        uint16_t cookie = sendRequest(name, data);
        while (auto message = readFrame()) {
            if (message->type == CBUS_TYPE_REPLY && message->seqn == cookie)
                return message->data;
        }
        return std::nullopt;
    }
    // Whether the server closes the connection (after anything that is still to be read).
    bool isClosedByServer(int timeout = sim::Terminal::DefaultTimeout)
    {
        char buffer[65536];
        while (waitReadable(timeout)) {
            if (recv(fd, buffer, sizeof buffer, 0) <= 0)
                return true;
        }
        return false;
    }
    // Whether the server has handled everything sent so far: it answers in order.
    bool sync() { return ask("nobody.serves.this", "").has_value(); }
    // Whether no frame comes but the answer to a request of our own.
    bool hasNothingElse()
    {
        uint16_t cookie = sendRequest("nobody.serves.this", "");
        auto message = readFrame();
        return message && message->type == CBUS_TYPE_REPLY && message->seqn == cookie;
    }

    uint16_t seqn = 0;

private:
    bool waitReadable(int timeout)
    {
        pollfd waiting{fd, POLLIN, 0};
        return poll(&waiting, 1, timeout) == 1;
    }

    int fd;
};

// Words in host order, as they stand in payloads.
inline std::string word(uint32_t value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// What a signal that writes an int carries.
inline std::string writeOf(uint32_t number)
{
    return word(static_cast<uint32_t>(-1)) + word(VX_CONFIG_TYPE_INT) + word(4) + word(number);
}

#endif
