// wait, pause, say and expect in a console on a terminal: what meets an expectation, what is told when
// nothing does, and that nothing goes on listening.
#include "raw_client.h"
#include "sim/console/console.h"
#include "sim/console/witness.h"
#include "sim/vbuf.h"
#include "support/patience.h"

#include <chrono>
#include <future>
#include <gmock/gmock.h>

using sim::Value;
using testing::HasSubstr;

namespace {

using Clock = std::chrono::steady_clock;

int64_t millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
}

// A write as clients send it.
std::string writeData(uint32_t type, const std::string& bytes)
{
    const uint32_t head[3] = {static_cast<uint32_t>(-1), type, static_cast<uint32_t>(bytes.size())};
    return std::string(reinterpret_cast<const char*>(head), sizeof head) + bytes;
}

class WaitCommandsTest : public testing::Test {
protected:
    void SetUp() override
    {
        terminal.onThread([this] {
            desk = std::make_unique<sim::Desk>(sim::Desk{terminal, terminal.loop()});
            witness = std::make_unique<sim::Witness>(terminal, nullptr);
            desk->witness = witness.get();
            open();
        });
    }
    void TearDown() override
    {
        terminal.onThread([this] {
            console.reset();
            witness.reset();
        });
    }
    void open()
    {
        console =
            std::make_unique<sim::Console>(*desk, "test", [this](std::string_view text) { output += text; });
    }
    // Begins a line; its end is in the future.
    std::future<int> begin(const std::string& line)
    {
        auto ended = std::make_shared<std::promise<int>>();
        terminal.onThread([&] {
            output.clear();
            console->run(line, [ended](int status) { ended->set_value(status); });
        });
        return ended->get_future();
    }
    static int end(std::future<int>* line)
    {
        return line->wait_for(std::chrono::milliseconds(PATIENCE_MS)) == std::future_status::ready
                   ? line->get()
                   : -1000;
    }
    int run(const std::string& line)
    {
        std::future<int> future = begin(line);
        return end(&future);
    }
    // The line must fail; returns why.
    std::string failure(const std::string& line)
    {
        EXPECT_EQ(run(line), sim::CommandFailed) << line;
        return output;
    }
    bool isBusy()
    {
        bool busy = false;
        terminal.onThread([&] { busy = console->isBusy(); });
        return busy;
    }
    // A client's write, handled.
    void write(const std::string& key, const Value& value)
    {
        client.sendSignal("config.write." + key, writeData(static_cast<uint32_t>(value.type), value.bytes));
        EXPECT_TRUE(client.sync());
    }

    sim::Terminal terminal;
    RawClient client{terminal.address()};
    std::unique_ptr<sim::Desk> desk;
    std::unique_ptr<sim::Witness> witness;
    std::unique_ptr<sim::Console> console;
    std::string output;
};

TEST_F(WaitCommandsTest, SayPrintsTheRestOfTheLine)
{
    EXPECT_EQ(run("say \"A  caption\" of words"), sim::CommandDone);
    EXPECT_EQ(output, "A  caption of words\n");
    EXPECT_EQ(run("say"), sim::CommandFailed);
}

TEST_F(WaitCommandsTest, WaitTakesTheTerminalsTimeAndPauseTheUsers)
{
    auto started = Clock::now();
    EXPECT_EQ(run("pause 0.2"), sim::CommandDone);
    EXPECT_GE(millisecondsSince(started), 199);

    desk->speed = 2;
    started = Clock::now();
    EXPECT_EQ(run("wait 0.4"), sim::CommandDone);
    EXPECT_GE(millisecondsSince(started), 199);

    desk->speed = 1000;
    started = Clock::now();
    EXPECT_EQ(run("wait 600"), sim::CommandDone);
    EXPECT_LT(millisecondsSince(started), 600000);
    started = Clock::now();
    EXPECT_EQ(run("pause 0.2"), sim::CommandDone); // whatever the speed
    EXPECT_GE(millisecondsSince(started), 199);
    EXPECT_THAT(failure("wait long"), HasSubstr("error: long is no number of seconds"));
    EXPECT_EQ(run("pause 0"), sim::CommandDone);
}

TEST_F(WaitCommandsTest, AWaitIsGivenUpWithItsConsole)
{
    std::future<int> line = begin("pause 3600");
    EXPECT_TRUE(isBusy());
    terminal.onThread([this] {
        console.reset();
        open();
    });
    EXPECT_FALSE(isBusy());
    EXPECT_EQ(run("say on"), sim::CommandDone);
}

TEST_F(WaitCommandsTest, AValueThatIsThereMeetsAnExpectationAtOnce)
{
    EXPECT_EQ(run("expect cfg.language 0 within 0"), sim::CommandDone);
    EXPECT_EQ(run("expect cfg.language int:0"), sim::CommandDone);
    EXPECT_EQ(run("expect cfg.interfaces.wlan.ssid \"Lumen 4711\""), sim::CommandDone);
    EXPECT_EQ(run("expect ram.status.signal_strength 500..520"), sim::CommandDone);
    EXPECT_EQ(run("expect ram.no.such.key absent"), sim::CommandDone);
    EXPECT_EQ(output, "");
}

TEST_F(WaitCommandsTest, AnExpectationWaitsForWhoeverSetsTheValue)
{
    std::future<int> line = begin("expect cfg.language 2");
    EXPECT_TRUE(isBusy());
    terminal.set("cfg.language", 1);
    EXPECT_TRUE(isBusy());
    terminal.set("cfg.language", 2);
    EXPECT_EQ(end(&line), sim::CommandDone);

    line = begin("expect cfg.language absent");
    terminal.erase("cfg.language");
    EXPECT_EQ(end(&line), sim::CommandDone);
}

TEST_F(WaitCommandsTest, AnExpectationThatIsNotMetTellsWhatIsThere)
{
    EXPECT_EQ(failure("expect cfg.language int:2 within 0.1"),
              "error: expected cfg.language = int 2 within 0.1 s, it is int 0\n");
    EXPECT_EQ(failure("expect ram.no.such.key >5 within 0.1"),
              "error: expected ram.no.such.key = >5 within 0.1 s, it is absent\n");
    EXPECT_EQ(failure("expect cfg.interfaces.wlan.ssid absent within 0"),
              "error: expected cfg.interfaces.wlan.ssid = absent within 0 s, it is string \"Lumen 4711\"\n");
    EXPECT_EQ(failure("expect write cfg.language 2 within 0.1"),
              "error: expected a write of cfg.language = 2 within 0.1 s, there was none\n");
    EXPECT_EQ(failure("expect pointing start within 0.1"),
              "error: expected the pointing command start within 0.1 s, there was no command\n");
    EXPECT_EQ(failure("expect language 2"), "error: language is no key\n");
}

TEST_F(WaitCommandsTest, TheLimitIsOfTheUsersTimeAndLongerWithPatience)
{
    desk->speed = 1000;
    auto started = Clock::now();
    failure("expect cfg.language 2 within 0.2");
    EXPECT_GE(millisecondsSince(started), 199);
    desk->patience = 3;
    started = Clock::now();
    failure("expect cfg.language 2 within 0.1");
    EXPECT_GE(millisecondsSince(started), 299);
}

// The terminal's own values are no writes of a client.
TEST_F(WaitCommandsTest, AWriteIsOneOfAClient)
{
    std::future<int> line = begin("expect write cfg.language 1");
    terminal.set("cfg.language", 1);
    EXPECT_TRUE(isBusy());
    write("cfg.language", Value::integer(1)); // which changes nothing, and is a write all the same
    EXPECT_EQ(end(&line), sim::CommandDone);
}

TEST_F(WaitCommandsTest, AWriteThatCameBeforeItWasExpectedIsNotMissed)
{
    EXPECT_EQ(run("signal 50"), sim::CommandFailed); // a line that does something, if nobody obeys here
    write("cfg.language", Value::integer(3));
    write("cfg.display.timeout", Value::integer(30));
    EXPECT_EQ(run("say nothing"), sim::CommandDone); // this one does nothing
    EXPECT_EQ(run("expect write cfg.display.timeout 30"), sim::CommandDone);
    EXPECT_EQ(run("expect write cfg.language 3"), sim::CommandDone); // in whatever order
    // Each counts once.
    EXPECT_THAT(failure("expect write cfg.language 3 within 0.1"), HasSubstr("there was none"));
    write("cfg.language", Value::integer(4));
    EXPECT_THAT(failure("expect write cfg.language 3 within 0.1"), HasSubstr("the last one was int 4"));
}

TEST_F(WaitCommandsTest, WhatCameBeforeTheLastDeedDoesNotCount)
{
    write("cfg.language", Value::integer(3));
    client.sendSignal("bp_ctrl.pointing", std::string("start\0", 6));
    EXPECT_TRUE(client.sync());
    run("signal 50");
    failure("expect write cfg.language 3 within 0.1");
    failure("expect pointing start within 0.1");
}

TEST_F(WaitCommandsTest, ManyKeysInOneWriteAndDeletionsByExpressionCount)
{
    sim::VbufWriter records;
    records.add(3, "ram.net.a", Value::integer(7).bytes);
    records.add(2, "ram.net.b", Value::text("x").bytes);
    client.sendSignal("config.writev", std::string(records.bytes()));
    client.sendSignal("config.delm.ram.net.tft.0.*", "");
    EXPECT_TRUE(client.sync());
    EXPECT_EQ(run("expect write ram.net.b x"), sim::CommandDone);
    EXPECT_EQ(run("expect write ram.net.a int:7"), sim::CommandDone);
    EXPECT_EQ(run("expect write ram.net.tft.0.5.cid absent"), sim::CommandDone);
    EXPECT_EQ(run("expect write ram.net.tft.0.6.cid absent"), sim::CommandDone); // both at once
    failure("expect write ram.net.qos.0.5.cid absent within 0.1");
}

TEST_F(WaitCommandsTest, PointingCommandsCountInTurn)
{
    std::future<int> line = begin("expect pointing cancel");
    client.sendSignal("bp_ctrl.pointing", std::string("start\0", 6));
    client.sendSignal("bp_ctrl.pointing", std::string("cancel\0", 7));
    EXPECT_EQ(end(&line), sim::CommandDone);
    EXPECT_THAT(failure("expect pointing stop within 0.1"), HasSubstr("the last command was start"));
    EXPECT_EQ(run("expect pointing start"), sim::CommandDone);
}

TEST_F(WaitCommandsTest, MalformedWritesMeanNothing)
{
    client.sendSignal("config.write.cfg.language", "short");
    client.sendSignal("config.write.cfg.language", writeData(3, "").substr(0, 8) + "\xff\xff\xff\xff");
    client.sendSignal("config.writev", std::string(5, '\xff'));
    client.sendSignal("config.delm.(", "");
    EXPECT_TRUE(client.sync());
    EXPECT_THAT(failure("expect write cfg.language any within 0.1"), HasSubstr("there was none"));
}

TEST_F(WaitCommandsTest, WithoutADisplayItIsNotExpectedToShowAnything)
{
    for (const char* line :
         {"expect screen status", "expect log a", "expect popup none", "expect status Ready", "expect crash"})
        EXPECT_EQ(failure(line), "error: there is no display\n") << line;
    desk->witness = nullptr;
    EXPECT_EQ(failure("expect write cfg.language 1"), "error: nobody watches the bus and the display here\n");
    desk->witness = witness.get();
}

TEST_F(WaitCommandsTest, NothingGoesOnListening)
{
    const size_t before = witness->listenerCount();
    EXPECT_EQ(run("expect cfg.language 0"), sim::CommandDone);
    failure("expect cfg.language 2 within 0.1");
    std::future<int> line = begin("expect cfg.language 2");
    EXPECT_GT(witness->listenerCount(), before);
    terminal.set("cfg.language", 2);
    EXPECT_EQ(end(&line), sim::CommandDone);
    EXPECT_EQ(witness->listenerCount(), before);
    line = begin("expect cfg.language 3");
    terminal.onThread([this] { console->cancel(); });
    EXPECT_EQ(witness->listenerCount(), before);
    terminal.set("cfg.language", 3);
}

} // namespace
