// Keys on their way to the display, one at a time.
#include "sim/display/key_sender.h"

#include "runtime/fdloop.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr uint32_t RetryInterval = 100; // ms, while there is no window
constexpr size_t LongestAnswer = 128;

const struct {
    Key key;
    const char* name;
} keyNames[] = {
    {Key::Up, "up"},
    {Key::Down, "down"},
    {Key::Left, "left"},
    {Key::Right, "right"},
    {Key::Ok, "ok"},
    {Key::LongOk, "long"},
    {Key::Screenshot, "screenshot"},
};

pid_t peerOf(int fd)
{
    ucred peer{};
    socklen_t length = sizeof peer;
    return getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 ? peer.pid : -1;
}

} // namespace

bool parseKey(const std::string& name, Key* key)
{
    for (const auto& row : keyNames) {
        if (name == row.name) {
            *key = row.key;
            return true;
        }
    }
    return false;
}

const char* keyName(Key key)
{
    for (const auto& row : keyNames) {
        if (key == row.key)
            return row.name;
    }
    return "";
}

KeySender::KeySender(fdloop_t* loop)
    : loop(loop), keys(
                      loop,
                      [this] {
                          hidden = false;
                          sendKey();
                      },
                      [this] { return whyLate(); }),
      retry(loop)
{
}

KeySender::~KeySender()
{
    disconnect();
    if (server < 0)
        return;
    fdloop_fd_unregister(loop, server);
    close(server);
    unlink(path.c_str());
}

bool KeySender::listen(const std::string& name, std::string* error)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // A comma would end the name in the list of plugins.
    if (name.size() >= sizeof address.sun_path || name.find(',') != std::string::npos) {
        *error = "no socket can have the name " + name;
        return false;
    }
    memcpy(address.sun_path, name.c_str(), name.size());
    unlink(name.c_str());
    int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    mode_t before = umask(0177);
    bool bound = made >= 0 && bind(made, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    umask(before);
    if (!bound || ::listen(made, 5) != 0) {
        *error = "cannot make the keypad's socket " + name + ": " + strerror(errno);
        if (made >= 0)
            close(made);
        return false;
    }
    path = name;
    server = made;
    fdloop_fd_register(loop, server, onConnection, this);
    return true;
}

int KeySender::onConnection(int, void* data)
{
    static_cast<KeySender*>(data)->accept();
    return 0;
}

void KeySender::accept()
{
    int taken = accept4(server, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (taken < 0)
        return;
    if (display < 0 || peerOf(taken) != display) {
        close(taken);
        return;
    }
    disconnect();
    connection = taken;
    fdloop_fd_register(loop, connection, onAnswer, this);
    if (keys.hasBegun())
        sendKey();
}

void KeySender::disconnect()
{
    retry.stop();
    sent = hidden = false;
    unheard = 0;
    received.clear();
    if (connection < 0)
        return;
    fdloop_fd_unregister(loop, connection);
    close(connection);
    connection = -1;
}

void KeySender::displayEnded()
{
    display = -1;
    disconnect();
    keys.failAll("the display has ended");
}

void KeySender::press(uint64_t number, Key key, RequestDone done)
{
    keys.add(number, key, std::move(done));
}

// A key that nobody waits for any more is not sent later.
void KeySender::forget(uint64_t number)
{
    keys.forget(number);
    if (keys.hasBegun() && !keys.isWanted() && !sent) {
        retry.stop();
        keys.finish("");
    }
}

void KeySender::sendKey()
{
    if (connection < 0 || sent)
        return;
    std::string line = std::string(keyName(keys.current())) + "\n";
    ssize_t count = send(connection, line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    sent = count == static_cast<ssize_t>(line.size());
    if (!sent)
        disconnect(); // it reads nothing, or has gone; the key's time runs out
}

int KeySender::onAnswer(int, void* data)
{
    static_cast<KeySender*>(data)->receive();
    return 0;
}

void KeySender::receive()
{
    char bytes[256];
    ssize_t count = read(connection, bytes, sizeof bytes);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
        disconnect();
        return;
    }
    received.append(bytes, static_cast<size_t>(std::max<ssize_t>(count, 0)));
    size_t end;
    while ((end = received.find('\n')) != std::string::npos) {
        std::string answer = received.substr(0, end);
        received.erase(0, end + 1);
        take(answer);
    }
    if (received.size() > LongestAnswer)
        disconnect();
}

void KeySender::take(const std::string& answer)
{
    if (unheard > 0) {
        unheard--;
        return;
    }
    if (!sent)
        return; // nothing was asked
    sent = false;
    if (answer == std::string("done ") + keyName(keys.current())) {
        keys.finish("");
    } else if (answer == std::string("hidden ") + keyName(keys.current())) {
        hidden = true;
        retry.once(RetryInterval, [this] { sendKey(); });
    } else {
        keys.finish("the display's keypad does not know the key");
    }
}

// The display may still take a key that it was sent. Its answer is none to the next one.
std::string KeySender::whyLate()
{
    retry.stop();
    if (connection < 0)
        return "the display's keypad is not connected";
    if (!sent)
        return hidden ? "the display shows no window yet" : "the display took no key within 10 s";
    sent = false;
    unheard++;
    return "the display did not handle the key within 10 s";
}

} // namespace sim
