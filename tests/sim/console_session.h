// A console on a terminal's thread, driven from the test's.
#ifndef TESTS_SIM_CONSOLE_SESSION_H
#define TESTS_SIM_CONSOLE_SESSION_H

#include "sim/console/commands.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

class ConsoleSession {
public:
    explicit ConsoleSession(sim::Terminal& terminal) : terminal(terminal), desk{terminal, terminal.loop()}
    {
        terminal.onThread([this] {
            console =
                std::make_unique<sim::Console>(desk, "test", [this](std::string_view piece) { take(piece); });
        });
    }
    ~ConsoleSession() { close(); }
    ConsoleSession(const ConsoleSession&) = delete;
    ConsoleSession& operator=(const ConsoleSession&) = delete;

    void close()
    {
        terminal.onThread([this] { console.reset(); });
    }
    void begin(const std::string& line)
    {
        terminal.onThread([&] {
            text.clear();
            status = -1;
            console->run(line, [this](int result) {
                std::lock_guard<std::mutex> lock(mutex);
                status = result;
                changed.notify_all();
            });
        });
    }
    // Runs a line to its end and returns its output, with its status behind it if that is not CommandDone.
    std::string run(const std::string& line, int milliseconds = 30000)
    {
        begin(line);
        return end(milliseconds);
    }
    std::string end(int milliseconds = 30000)
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (!changed.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return status != -1; }))
            return "not ended";
        return text + (status == sim::CommandDone ? "" : "[" + std::to_string(status) + "]");
    }
    // Waits until the output has this part.
    bool waitFor(const std::string& part, int milliseconds = 30000)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                [&] { return text.find(part) != std::string::npos; });
    }
    std::string output()
    {
        std::lock_guard<std::mutex> lock(mutex);
        return text;
    }

private:
    void take(std::string_view piece)
    {
        std::lock_guard<std::mutex> lock(mutex);
        text += piece;
        changed.notify_all();
    }

    sim::Terminal& terminal;
    sim::Desk desk;
    std::unique_ptr<sim::Console> console;
    std::mutex mutex;
    std::condition_variable changed;
    std::string text;
    int status = -1;
};

#endif
