// Sends lines to a running terminal and prints what it answers, see the header.
#include "sim/console/socket_client.h"

#include "sim/console/console.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace sim {

namespace {

void complain(const std::string& text)
{
    fflush(stdout);
    fprintf(stderr, "terminalsim: %s\n", text.c_str());
}

// Bytes of a descriptor as lines.
class Lines {
public:
    explicit Lines(int fd) : fd(fd) {}

    // Reads once, and blocks if nothing is there. False at the end.
    bool receive()
    {
        char bytes[65536];
        ssize_t count;
        do
            count = read(fd, bytes, sizeof bytes);
        while (count < 0 && errno == EINTR);
        buffer.append(bytes, count > 0 ? static_cast<size_t>(count) : 0);
        ended = ended || count <= 0;
        return count > 0;
    }
    // The next line; at the end one without a line feed as well.
    std::optional<std::string> take()
    {
        size_t feed = buffer.find('\n', from);
        if (feed == std::string::npos && !(ended && from < buffer.size())) {
            buffer.erase(0, from);
            from = 0;
            return std::nullopt;
        }
        size_t end = std::min(feed, buffer.size());
        std::string line = buffer.substr(from, end - from);
        from = std::min(end + 1, buffer.size());
        return line;
    }

private:
    const int fd;
    std::string buffer;
    size_t from = 0;
    bool ended = false;
};

class SocketClient {
public:
    ~SocketClient()
    {
        if (fd >= 0)
            close(fd);
    }
    bool connectTo(const std::string& path)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        errno = ENAMETOOLONG;
        if (path.size() < sizeof address.sun_path) {
            memcpy(address.sun_path, path.data(), path.size());
            fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
            if (fd >= 0 && connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
                return true;
        }
        complain("no terminal at " + path + ": " + strerror(errno));
        return false;
    }

    int runOne(const std::string& line)
    {
        sendLine(line);
        Lines answers(fd);
        while (!answered) {
            if (!takeAnswers(answers) && !receive(answers))
                return 1;
        }
        return failed;
    }

    // Each line once the one before it has been answered; what is watched is printed meanwhile.
    int runInput()
    {
        Lines input(STDIN_FILENO);
        Lines answers(fd);
        bool inputEnded = false;
        while (!left) {
            if (takeAnswers(answers))
                continue;
            std::optional<std::string> line = answered ? input.take() : std::nullopt;
            if (line) {
                number++;
                sendLine(*line);
                continue;
            }
            if (answered && inputEnded)
                break;
            pollfd waiting[2] = {{fd, POLLIN, 0}, {answered && !inputEnded ? STDIN_FILENO : -1, POLLIN, 0}};
            fflush(stdout);
            poll(waiting, 2, -1);
            if (waiting[1].revents)
                inputEnded = !input.receive();
            if (waiting[0].revents && !receive(answers))
                return 1;
        }
        return failed;
    }

private:
    void sendLine(const std::string& line)
    {
        std::string bytes = line + "\n";
        size_t sent = 0;
        while (sent < bytes.size()) {
            ssize_t count = send(fd, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count < 0 && errno != EINTR)
                break; // the missing answer tells
            sent += count > 0 ? static_cast<size_t>(count) : 0;
        }
        answered = false;
    }

    bool receive(Lines& answers)
    {
        fflush(stdout);
        if (answers.receive())
            return true;
        complain("the terminal has gone away");
        return false;
    }

    // Prints what has come. True if it was anything.
    bool takeAnswers(Lines& answers)
    {
        std::optional<std::string> line = answers.take();
        if (!line)
            return false;
        if (line->compare(0, 2, "= ") == 0) {
            answered = true;
            left = *line == "= bye";
            if (*line == "= failed") {
                failed = 1;
                complain((number ? "line " + std::to_string(number) + ": " : "") + error);
                error.clear();
            }
            return true;
        }
        printError(); // it was none: the command has gone on
        const std::string mark = "error: ";
        if (line->compare(0, mark.size(), mark) == 0)
            error = line->substr(mark.size());
        else
            puts(line->c_str());
        return true;
    }
    void printError()
    {
        if (!error.empty())
            complain(error);
        error.clear();
    }

    int fd = -1;
    bool answered = true;
    bool left = false; // the console has ended
    int failed = 0;
    size_t number = 0; // of the line of standard input
    std::string error; // of what may turn out to have failed
};

} // namespace

int runSocketCommand(const std::string& path, const std::vector<std::string>& words)
{
    std::string line;
    for (const std::string& word : words)
        line += (line.empty() ? "" : " ") + quotedWord(word);
    if (line.find('\n') != std::string::npos) {
        complain("a line feed cannot be part of a command");
        return 2;
    }
    SocketClient client;
    if (!client.connectTo(path))
        return 1;
    return words.size() == 1 && words[0] == "-" ? client.runInput() : client.runOne(line);
}

} // namespace sim
