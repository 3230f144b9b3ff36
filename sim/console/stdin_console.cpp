// The two kinds of console on standard input, see the header.
#include "sim/console/stdin_console.h"

#include "sim/console/line_buffer.h"
#include "sim/console/tty.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace sim {

namespace {

constexpr size_t HistoryLines = 100;
constexpr size_t LineSize = 256;
constexpr size_t MaxTypedAhead = 4096; // bytes, while a command runs
constexpr size_t ScreenWidth = 80;

// To the beginning of the line, and nothing behind it.
const char ClearLine[] = "\r\x1b[K";

void writeAll(int fd, std::string_view text)
{
    while (!text.empty()) {
        ssize_t count = write(fd, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return; // nobody is there any more
        text.remove_prefix(count > 0 ? static_cast<size_t>(count) : 0);
    }
}

} // namespace

class StdinConsole::Session {
public:
    explicit Session(Desk& desk)
        : desk(desk), console(desk, "terminal", [this](std::string_view text) { show(STDOUT_FILENO, text); })
    {
    }
    virtual ~Session() = default;

    virtual void show(int fd, std::string_view text) { writeAll(fd, text); }
    bool failed = false;

protected:
    void startReading() { fdloop_fd_register(desk.loop, STDIN_FILENO, onReadable, this); }
    void stopReading() { fdloop_fd_unregister(desk.loop, STDIN_FILENO); }
    // Returns what a handler of the loop returns.
    virtual int receive() = 0;

    Desk& desk;
    Console console;

private:
    static int onReadable(int, void* data) { return static_cast<Session*>(data)->receive(); }
};

// --- Line by line

class StdinConsole::PipeSession : public Session {
public:
    explicit PipeSession(Desk& desk) : Session(desk) { startReading(); }
    ~PipeSession() override
    {
        if (isReading)
            stopReading();
    }

private:
    int receive() override
    {
        char bytes[16384];
        ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            return 0;
        if (count > 0) {
            input.append(std::string_view(bytes, static_cast<size_t>(count)));
        } else {
            input.end();
            hasEnded = true;
        }
        pump();
        return 0;
    }
    void pump()
    {
        if (isPumping)
            return;
        isPumping = true;
        while (!leaving && !console.isBusy() && runNext()) {
        }
        isPumping = false;
        if (leaving || (hasEnded && input.isEmpty() && !console.isBusy()))
            desk.terminal.requestQuit();
        bool wanted = !hasEnded && !leaving && !input.isFull();
        if (wanted != isReading)
            wanted ? startReading() : stopReading();
        isReading = wanted;
    }
    bool runNext()
    {
        std::string line;
        switch (input.take(&line)) {
        case LineBuffer::Next::Nothing:
            return false;
        case LineBuffer::Next::TooLong:
            console.fail("a line has more than %zu bytes", LineBuffer::MaxLine);
            failed = true;
            return true;
        case LineBuffer::Next::Line:
            console.run(line, [this](int status) {
                failed = failed || status == CommandFailed;
                leaving = status == CommandEnds;
                pump(); // nothing happens inside a pump, which goes on by itself
            });
            return true;
        }
        return false;
    }

    LineBuffer input;
    bool isReading = true;
    bool isPumping = false;
    bool hasEnded = false;
    bool leaving = false;
};

// --- On a terminal

class StdinConsole::TerminalSession : public Session {
public:
    explicit TerminalSession(Desk& desk) : Session(desk)
    {
        readline = vx_readline_open(
            HistoryLines, LineSize,
            [](void* data, char* line, size_t size) {
                return static_cast<TerminalSession*>(data)->complete(line, size);
            },
            this, [](void*, const char* text) { writeAll(STDOUT_FILENO, text); }, nullptr);
        tty.begin(desk.loop, [this](bool foreground) { onForeground(foreground); });
        onForeground(true);
    }
    ~TerminalSession() override
    {
        if (isReading)
            stopReading();
        if (isPrompting)
            writeAll(STDOUT_FILENO, "\n");
        tty.end();
        vx_readline_close(readline);
    }

    // What comes while a line is typed is printed above it.
    void show(int fd, std::string_view text) override
    {
        if (isPrompting)
            writeAll(STDOUT_FILENO, ClearLine);
        writeAll(fd, text);
        if (isPrompting)
            showLine();
    }

private:
    void onForeground(bool foreground)
    {
        if (foreground && !isReading)
            startReading();
        if (!foreground && isReading)
            stopReading();
        isReading = foreground;
        if (!foreground || console.isBusy())
            return;
        isPrompting = true;
        showLine();
    }
    void showLine()
    {
        writeAll(STDOUT_FILENO, prompt());
        vx_readline_redraw(readline);
    }
    std::string prompt() const { return std::string(vx_cshell_get_name(console.shell())) + "> "; }

    int receive() override
    {
        if (tcgetpgrp(STDIN_FILENO) >= 0 && !Tty::isForeground()) { // reading would stop the process
            tty.look();
            return 0;
        }
        char bytes[1024];
        ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            return 0;
        if (count <= 0) { // the terminal has been closed
            isReading = false;
            desk.terminal.requestQuit();
            return 1;
        }
        size_t room = MaxTypedAhead - std::min(MaxTypedAhead, typed.size());
        typed.append(bytes, std::min(static_cast<size_t>(count), room));
        takeTyped();
        return 0;
    }
    // Until a line is run that takes its time.
    void takeTyped()
    {
        if (isTaking)
            return;
        isTaking = true;
        while (!typed.empty() && !console.isBusy() && !hasEnded) {
            char byte = typed[0];
            typed.erase(0, 1);
            if (const char* line = vx_readline_char(readline, static_cast<unsigned char>(byte)))
                run(line);
        }
        isTaking = false;
    }
    void run(const std::string& line)
    {
        isPrompting = false;
        console.run(line, [this](int status) {
            if (status == CommandEnds) {
                hasEnded = true;
                desk.terminal.requestQuit();
                return;
            }
            isPrompting = true;
            showLine();
            takeTyped();
        });
    }

    int complete(char* line, size_t size)
    {
        std::vector<std::string> candidates;
        const std::string typedLine = line;
        std::string whole = console.complete(typedLine, &candidates);
        if (whole.size() >= size || whole.compare(0, typedLine.size(), typedLine) != 0)
            return VX_COMPLETION_NONE;
        bool isWord = candidates.empty() && whole.size() > typedLine.size() && whole.back() == ' ';
        if (isWord)
            whole.pop_back(); // the editor adds it
        whole.copy(line, whole.size());
        line[whole.size()] = '\0';
        if (isWord)
            return VX_COMPLETION_UNIQUE;
        if (whole.size() == typedLine.size() && candidates.empty())
            return VX_COMPLETION_NONE;
        if (whole.size() == typedLine.size())
            list(candidates);
        else
            writeAll(STDOUT_FILENO, ClearLine);
        writeAll(STDOUT_FILENO, prompt());
        return VX_COMPLETION_LIST;
    }
    static void list(const std::vector<std::string>& candidates)
    {
        size_t width = 0;
        for (const std::string& candidate : candidates)
            width = std::max(width, candidate.size() + 2);
        std::string text = "\n";
        size_t used = 0;
        for (const std::string& candidate : candidates) {
            if (used > 0 && used + width > ScreenWidth) {
                text += "\n";
                used = 0;
            }
            text += candidate + std::string(width - candidate.size(), ' ');
            used += width;
        }
        writeAll(STDOUT_FILENO, text + "\n");
    }

    Tty tty;
    vx_readline* readline = nullptr;
    std::string typed; // bytes that wait for the end of a command
    bool isReading = false;
    bool isPrompting = false;
    bool isTaking = false;
    bool hasEnded = false;
};

bool StdinConsole::isOnTerminal()
{
    return isatty(STDOUT_FILENO) && Tty::isForeground();
}

StdinConsole::StdinConsole(Desk& desk)
{
    if (isOnTerminal())
        session = std::make_unique<TerminalSession>(desk);
    else
        session = std::make_unique<PipeSession>(desk);
}

StdinConsole::~StdinConsole() = default;

void StdinConsole::log(const std::string& line)
{
    session->show(STDERR_FILENO, line + "\n");
}

bool StdinConsole::hasFailed() const
{
    return session->failed;
}

} // namespace sim
