// A display's manager with displays that are small scripts, on a loop of the test's own thread.
#ifndef TESTS_SIM_DISPLAY_FIXTURE_H
#define TESTS_SIM_DISPLAY_FIXTURE_H

#include "temporary_directory.h"

#include "sim/display/display.h"
#include "sim/timer.h"

#include "runtime/fdloop.h"

#include "support/patience.h"

#include <chrono>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using Clock = std::chrono::steady_clock;

inline fdloop_t* theLoop()
{
    static fdloop_t* loop = fdloop_init();
    return loop;
}

// Runs the loop until the condition holds; false after that time.
inline bool runUntil(const std::function<bool()>& condition, int milliseconds = PATIENCE_MS)
{
    auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    sim::Timer tick(theLoop());
    tick.every(10, [] {});
    while (!condition()) {
        if (Clock::now() > end)
            return false;
        fdloop_run(theLoop());
    }
    return true;
}

inline std::string contentOf(const std::string& file)
{
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

inline std::vector<std::string> linesOf(const std::string& file)
{
    std::istringstream stream(contentOf(file));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

inline bool isGone(pid_t pid)
{
    std::string status = contentOf("/proc/" + std::to_string(pid) + "/status");
    return status.empty() || status.find("State:\tZ") != std::string::npos;
}

const char Report[] = "kill -USR2 $APPMGR_PID\n";
const char Answer[] = "trap 'kill -USR2 $APPMGR_PID; echo asked >>asked' USR2\n";
const char LiveOn[] = "while :; do sleep 0.02; done\n";
const char AnswersForEver[] = "trap 'kill -USR2 $APPMGR_PID; echo asked >>asked' USR2\n"
                              "trap 'exit 1' TERM\n"
                              "kill -USR2 $APPMGR_PID\n"
                              "while :; do sleep 0.02; done\n";

class DisplayTest : public testing::Test {
protected:
    DisplayTest()
    {
        options.busAddress = "unix*of.this.test";
        options.logFile = directory.file("log");
        options.directory = directory.name;
        options.screenshots = directory.file("screenshots");
        options.pingInterval = 30;
        options.pingTimeout = 10000;
        options.restartDelay = 10;
        options.tell = [this](const std::string& line) { told.push_back(line); };
        options.ended = [this](int status) { ends.push_back(status); };
    }

    // A display that is this script; it begins in the test's directory.
    void script(const std::string& text)
    {
        options.command = {"/bin/sh", "-c", "cd " + directory.name + "\n" + text};
    }
    void python(const std::string& text)
    {
        const std::string head =
            "import os, signal, socket, time\n"
            "signal.signal(signal.SIGUSR2, lambda *a: os.kill(os.getppid(), signal.SIGUSR2))\n"
            "path = os.environ['QT_QPA_GENERIC_PLUGINS'].split(':', 1)[1]\n"
            "keypad = socket.socket(socket.AF_UNIX)\n"
            "os.kill(int(os.environ['APPMGR_PID']), signal.SIGUSR2)\n";
        options.command = {"python3", "-c", head + text};
        options.keypadDirectory = directory.name;
    }
    // There may be one in a process.
    void make()
    {
        display.reset();
        display = std::make_unique<sim::Display>(theLoop(), options);
    }
    void start()
    {
        make();
        std::string error;
        ASSERT_TRUE(display->start(&error)) << error;
    }
    std::string startError()
    {
        make();
        std::string error;
        EXPECT_FALSE(display->start(&error));
        return error;
    }
    bool waitForRunning()
    {
        return runUntil([this] { return display->state() == sim::Display::State::Running; });
    }
    bool waitForRestarts(unsigned count)
    {
        return runUntil([this, count] { return display->restarts() >= count; });
    }
    bool waitForEnd()
    {
        return runUntil([this] { return !ends.empty(); });
    }
    // What came of a key, "ok" if it was handled.
    std::string press(sim::Key key)
    {
        std::string result;
        display->press(key, [&](const std::string& error) { result = error.empty() ? "ok" : error; });
        runUntil([&] { return !result.empty(); });
        return result;
    }
    std::string picture(const std::string& file, unsigned scale)
    {
        std::string result;
        display->takePicture(file, scale,
                             [&](const std::string& error) { result = error.empty() ? "ok" : error; });
        runUntil([&] { return !result.empty(); });
        return result;
    }

    TemporaryDirectory directory;
    sim::Display::Options options;
    std::vector<std::string> told;
    std::vector<int> ends;
    std::unique_ptr<sim::Display> display;
};

#endif
