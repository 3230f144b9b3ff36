// The server of the consoles' socket, see the header.
#include "sim/console/socket.h"

#include "sim/console/line_buffer.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr uint32_t WatchInterval = 250; // ms
constexpr uint32_t NoDescriptors = 500; // ms until the next try

struct StatusLine {
    int status;
    const char* line;
};
const StatusLine StatusLines[] = {
    {CommandDone, "= ok\n"}, {CommandFailed, "= failed\n"}, {CommandEnds, "= bye\n"}};

const char* lineOf(int status)
{
    for (const StatusLine& row : StatusLines) {
        if (row.status == status)
            return row.line;
    }
    return "= failed\n";
}

} // namespace

// One client with its console. It ends by asking the server for its burial.
class ConsoleServer::Client {
public:
    Client(ConsoleServer& server, int fd, uint64_t number)
        : server(server), fd(fd), number(number), console(server.desk, "console" + std::to_string(number),
                                                          [this](std::string_view text) { put(text); })
    {
        fdloop_fd_register(server.desk.loop, fd, onReadable, this);
    }
    ~Client()
    {
        stopReading();
        stopWriting();
        ::close(fd);
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool hasEnded() const { return ended; }
    // While nothing is read from it, only this tells that it has gone.
    void lookWhetherGone()
    {
        pollfd waiting{fd, 0, 0};
        if (!isReading && poll(&waiting, 1, 0) == 1 && waiting.revents & (POLLHUP | POLLERR))
            end();
    }

private:
    static int onReadable(int, void* data)
    {
        static_cast<Client*>(data)->receive();
        return 0;
    }
    static int onWritable(int, void* data)
    {
        auto* client = static_cast<Client*>(data);
        client->flush();
        client->pump();
        return 0;
    }

    void receive()
    {
        char bytes[16384];
        ssize_t count = recv(fd, bytes, sizeof bytes, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (count < 0) {
            end();
            return;
        }
        if (count == 0) {
            input.end();
            stopReading();
            inputEnded = true;
            lookWhetherGone();
        } else {
            input.append(std::string_view(bytes, static_cast<size_t>(count)));
        }
        pump();
    }

    // Runs what has come, line by line, as far as commands end at once and the client reads.
    void pump()
    {
        if (isPumping)
            return;
        isPumping = true;
        while (!ended && !leaving && !console.isBusy() && queue.size() < PauseQueue && runNext()) {
        }
        isPumping = false;
        if (ended)
            return;
        flush();
        if (!leaving && inputEnded && input.isEmpty() && !console.isBusy())
            leave();
        updateReading();
    }
    bool runNext()
    {
        std::string line;
        switch (input.take(&line)) {
        case LineBuffer::Next::Nothing:
            return false;
        case LineBuffer::Next::TooLong:
            put("error: a line has more than " + std::to_string(LineBuffer::MaxLine) + " bytes\n");
            answer(CommandFailed);
            return true;
        case LineBuffer::Next::Line:
            console.run(line, [this](int status) { answer(status); });
            return true;
        }
        return false;
    }
    void answer(int status)
    {
        put(lineOf(status));
        flush();
        if (status == CommandEnds)
            leave();
        pump(); // nothing happens inside a pump, which goes on by itself
    }

    void put(std::string_view text)
    {
        if (ended)
            return;
        queue.append(text);
        if (queue.size() > MaxQueue) {
            if (server.desk.log)
                server.desk.log("closed console " + std::to_string(number) + ": it does not read");
            end();
        } else if (!isWriting) {
            isWriting = true;
            fdloop_fd_register_write(server.desk.loop, fd, onWritable, this);
        }
    }
    void flush()
    {
        size_t sent = 0;
        while (!ended && sent < queue.size()) {
            ssize_t count = send(fd, queue.data() + sent, queue.size() - sent, MSG_NOSIGNAL);
            if (count < 0 && errno != EINTR) {
                if (errno != EAGAIN)
                    end();
                break;
            }
            sent += count > 0 ? static_cast<size_t>(count) : 0;
        }
        queue.erase(0, sent);
        if (queue.empty()) {
            stopWriting();
            if (leaving)
                end();
        }
    }

    // Ends as soon as everything has been written.
    void leave()
    {
        leaving = true;
        stopReading();
        if (queue.empty())
            end();
    }
    void end()
    {
        ended = true;
        stopReading();
        stopWriting();
        server.burial.once(0, [&server = server] { server.bury(); });
    }

    void updateReading()
    {
        bool wanted = !ended && !leaving && !inputEnded && !input.isFull();
        if (!wanted)
            stopReading();
        else if (!isReading)
            fdloop_fd_register(server.desk.loop, fd, onReadable, this);
        isReading = wanted;
    }
    void stopReading()
    {
        if (isReading)
            fdloop_fd_unregister(server.desk.loop, fd);
        isReading = false;
    }
    void stopWriting()
    {
        if (isWriting)
            fdloop_fd_unregister_write(server.desk.loop, fd);
        isWriting = false;
    }

    ConsoleServer& server;
    const int fd;
    const uint64_t number;
    LineBuffer input;
    std::string queue;
    bool isReading = true;
    bool isWriting = false;
    bool isPumping = false;
    bool inputEnded = false;
    bool leaving = false;
    bool ended = false;
    Console console; // the first to go
};

ConsoleServer::ConsoleServer(Desk& desk) : desk(desk), burial(desk.loop), watcher(desk.loop), pause(desk.loop)
{
}

ConsoleServer::~ConsoleServer()
{
    close();
}

// Removes what a terminal has left that is no more. False if there is anything else.
static bool takeOver(const std::string& path, const sockaddr_un& address, std::string* error)
{
    struct stat file;
    if (lstat(path.c_str(), &file) != 0)
        return true; // bind tells what is wrong, if anything
    if (!S_ISSOCK(file.st_mode)) {
        *error = path + " is there and is no socket";
        return false;
    }
    int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    bool answers = connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    bool isStale = !answers && errno == ECONNREFUSED;
    close(fd);
    if (!isStale) {
        *error = "another terminal has its consoles on " + path;
        return false;
    }
    unlink(path.c_str());
    return true;
}

bool ConsoleServer::listen(const std::string& name, std::string* error)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.empty() || name.size() >= sizeof address.sun_path) {
        *error = "the name of a socket has 1 to " + std::to_string(sizeof address.sun_path - 1) +
                 " bytes: " + name;
        return false;
    }
    memcpy(address.sun_path, name.data(), name.size());
    if (!takeOver(name, address, error))
        return false;
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    struct stat file {};
    // Nobody can connect before it listens, and by then the file is the user's alone.
    if (listener < 0 || bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        chmod(name.c_str(), S_IRUSR | S_IWUSR) != 0 || stat(name.c_str(), &file) != 0 ||
        ::listen(listener, SOMAXCONN) != 0) {
        *error = "no consoles on " + name + ": " + strerror(errno);
        if (listener >= 0)
            ::close(listener);
        listener = -1;
        return false;
    }
    path = name;
    inode = file.st_ino;
    fdloop_fd_register(desk.loop, listener, onListener, this);
    watcher.every(WatchInterval, [this] { watch(); });
    return true;
}

void ConsoleServer::close()
{
    clients.clear();
    burial.stop();
    watcher.stop();
    pause.stop();
    if (listener < 0)
        return;
    fdloop_fd_unregister(desk.loop, listener);
    ::close(listener);
    listener = -1;
    // By now it may be another terminal's.
    struct stat file;
    if (stat(path.c_str(), &file) == 0 && file.st_ino == inode)
        unlink(path.c_str());
}

int ConsoleServer::onListener(int, void* data)
{
    static_cast<ConsoleServer*>(data)->accept();
    return 0;
}

void ConsoleServer::accept()
{
    int fd = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (fd < 0) {
        if (errno != EMFILE && errno != ENFILE && errno != ENOMEM && errno != ENOBUFS)
            return;
        // The client stays in the queue, which would be told for ever.
        fdloop_fd_unregister(desk.loop, listener);
        pause.once(NoDescriptors, [this] { fdloop_fd_register(desk.loop, listener, onListener, this); });
        return;
    }
    if (clients.size() >= MaxClients || fd >= FD_SETSIZE) {
        static const char Refusal[] = "error: there are too many consoles\n= bye\n";
        send(fd, Refusal, sizeof Refusal - 1, MSG_NOSIGNAL);
        ::close(fd);
        return;
    }
    clients.push_back(std::make_unique<Client>(*this, fd, ++lastClient));
}

void ConsoleServer::watch()
{
    for (const auto& client : clients)
        client->lookWhetherGone();
}

void ConsoleServer::bury()
{
    clients.remove_if([](const std::unique_ptr<Client>& client) { return client->hasEnded(); });
}

} // namespace sim
