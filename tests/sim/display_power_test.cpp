// The display goes and comes with the terminal's power. The displays here are small scripts.
#include "sim/display/display_power.h"

#include "sim/timer.h"
#include "support/patience.h"
#include "temporary_directory.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using State = sim::Display::State;

const char DisplayRuns[] = "ram.desk.display";

class DisplayPowerTest : public testing::Test {
protected:
    DisplayPowerTest() : terminal(terminalOptions()), display(terminal.loop(), displayOptions()) {}

    static sim::TerminalOptions terminalOptions()
    {
        sim::TerminalOptions options;
        options.actors = true;
        options.speed = 20;
        options.ownThread = false;
        return options;
    }
    sim::Display::Options displayOptions()
    {
        sim::Display::Options options;
        options.command = {"/bin/sh", "-c", "kill -USR2 $APPMGR_PID; while :; do sleep 0.02; done"};
        options.busAddress = terminal.address();
        options.directory = directory.name;
        options.logFile = directory.file("log");
        options.screenshots = directory.file("screenshots");
        options.ended = [this](int) { hasEnded = true; };
        return options;
    }
    bool runUntil(const std::function<bool()>& condition)
    {
        auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(PATIENCE_MS);
        sim::Timer tick(terminal.loop());
        tick.every(10, [] {});
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            fdloop_run(terminal.loop());
        }
        return true;
    }
    bool becomes(State state)
    {
        return runUntil([&] { return display.state() == state; });
    }
    void startDisplay()
    {
        std::string error;
        ASSERT_TRUE(display.start(&error)) << error;
        ASSERT_TRUE(becomes(State::Running));
    }

    TemporaryDirectory directory;
    sim::Terminal terminal;
    sim::Display display;
    bool hasEnded = false;
};

TEST_F(DisplayPowerTest, ShutdownEndsItAndAStartBringsItBack)
{
    sim::DisplayPower power(terminal, &display, nullptr);
    startDisplay();
    terminal.set("ram.desk.system", "shutdown");
    EXPECT_EQ(display.state(), State::Running);
    EXPECT_TRUE(becomes(State::Stopped));
    EXPECT_EQ(terminal.getInt(DisplayRuns), 0);
    EXPECT_FALSE(hasEnded) << "it was not given up";
    terminal.set("ram.desk.system", "start");
    EXPECT_TRUE(becomes(State::Running));
}

TEST_F(DisplayPowerTest, RebootIsANewDisplay)
{
    sim::DisplayPower power(terminal, &display, nullptr);
    startDisplay();
    pid_t before = display.pid();
    terminal.set("ram.desk.system", "reboot");
    EXPECT_TRUE(runUntil([&] { return display.pid() > 0 && display.pid() != before; }));
    EXPECT_TRUE(becomes(State::Running));
}

TEST_F(DisplayPowerTest, PowerThatIsBackAtOnceStartsItOnceItHasGone)
{
    sim::DisplayPower power(terminal, &display, nullptr);
    startDisplay();
    pid_t before = display.pid();
    terminal.set(DisplayRuns, 0);
    terminal.erase(DisplayRuns);
    EXPECT_EQ(display.pid(), before);
    EXPECT_TRUE(runUntil([&] { return display.pid() > 0 && display.pid() != before; }));
}

TEST_F(DisplayPowerTest, OneThatSomebodyHasStoppedStaysStopped)
{
    sim::DisplayPower power(terminal, &display, nullptr);
    terminal.set(DisplayRuns, 0);
    terminal.erase(DisplayRuns);
    EXPECT_EQ(display.state(), State::Stopped);
}

TEST_F(DisplayPowerTest, NothingIsSwitchedWhenItHasGoneItself)
{
    startDisplay();
    {
        sim::DisplayPower power(terminal, &display, nullptr);
        terminal.set(DisplayRuns, 0);
    }
    terminal.erase(DisplayRuns);
    EXPECT_TRUE(becomes(State::Stopped));
    sim::DisplayPower none(terminal, nullptr, nullptr);
    terminal.set(DisplayRuns, 0);
}

} // namespace
