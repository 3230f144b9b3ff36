// A console on a terminal's thread, driven from the test's.
#ifndef TESTS_SIM_CONSOLE_SESSION_H
#define TESTS_SIM_CONSOLE_SESSION_H

#include "sim/console/commands.h"
#include "support/patience.h"

#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>

// Its calls are carried out on the terminal's thread.
class ConsoleSession {
public:
    explicit ConsoleSession(sim::Terminal& terminal)
        : ownDesk(std::make_unique<sim::Desk>(sim::Desk{terminal, terminal.loop()})), terminal(terminal)
    {
        open(*ownDesk);
    }
    explicit ConsoleSession(sim::Desk& desk) : terminal(desk.terminal) { open(desk); }
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
    bool waitForEnd(int milliseconds = PATIENCE_MS)
    {
        return waitUntil(milliseconds, [this] { return status != -1; });
    }
    // Waits until the output has this part.
    bool waitFor(const std::string& part, int milliseconds = PATIENCE_MS)
    {
        return waitUntil(milliseconds, [&] { return text.find(part) != std::string::npos; });
    }
    // Runs a line to its end and returns its status; its output is in text.
    int run(const std::string& line)
    {
        begin(line);
        EXPECT_TRUE(waitForEnd()) << line;
        return status;
    }
    // The output of a line that succeeds.
    std::string output(const std::string& line)
    {
        EXPECT_EQ(run(line), sim::CommandDone) << line << ": " << text;
        return text;
    }
    // The output of a line, with its status behind it if that is not CommandDone.
    std::string transcript(const std::string& line, int milliseconds = PATIENCE_MS)
    {
        begin(line);
        return end(milliseconds);
    }
    std::string end(int milliseconds = PATIENCE_MS)
    {
        if (!waitForEnd(milliseconds))
            return "not ended";
        return text + (status == sim::CommandDone ? "" : "[" + std::to_string(status) + "]");
    }
    std::string textSoFar()
    {
        std::lock_guard<std::mutex> lock(mutex);
        return text;
    }
    bool isBusy()
    {
        bool busy = false;
        terminal.onThread([&] { busy = console->isBusy(); });
        return busy;
    }
    void cancel()
    {
        terminal.onThread([&] { console->cancel(); });
    }

    std::string text;
    int status = -1;     // -1 while a line runs
    bool isWhole = true; // all output came in whole lines
    std::unique_ptr<sim::Console> console;

private:
    void open(sim::Desk& desk)
    {
        terminal.onThread([&] {
            console =
                std::make_unique<sim::Console>(desk, "test", [this](std::string_view piece) { take(piece); });
        });
    }
    template <typename Condition> bool waitUntil(int milliseconds, Condition condition)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, std::chrono::milliseconds(milliseconds), condition);
    }
    void take(std::string_view piece)
    {
        isWhole = isWhole && !piece.empty() && piece.back() == '\n';
        std::lock_guard<std::mutex> lock(mutex);
        text += piece;
        changed.notify_all();
    }

    std::unique_ptr<sim::Desk> ownDesk;
    sim::Terminal& terminal;
    std::mutex mutex;
    std::condition_variable changed;
};

#endif
