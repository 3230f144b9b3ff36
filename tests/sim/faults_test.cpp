// The terminal is late, stops, cuts and floods, and what its clients get of it.
#include "faults_fixture.h"
#include "runtime_client.h"

#include "sim/vbuf.h"

#include "runtime/config_client_api.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

// --- Late

TEST_F(FaultsTest, AnswersAndWritesAreLateAndInOrder)
{
    terminal.set("ram.a", 1);
    RawClient client(terminal.address());
    client.sync();
    with([](sim::Faults& faults) { faults.delay(300); });
    Clock::time_point begin = Clock::now();
    client.sendSignal("config.write.ram.a", writeOf(2));
    uint16_t first = client.sendRequest("config.stat.ram.a", {});
    uint16_t second = client.sendRequest("config.stat.ram.b", {});
    terminal.settle();
    EXPECT_EQ(terminal.getInt("ram.a"), 1);
    auto answer = client.readFrame();
    EXPECT_GE(since(begin), 299);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->seqn, first);
    EXPECT_EQ(terminal.getInt("ram.a"), 2);
    answer = client.readFrame();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->seqn, second);
    EXPECT_THAT(inForce(), ElementsAre("delay 300"));
}

TEST_F(FaultsTest, WithoutADelayWhatIsLateComesAtOnce)
{
    RawClient client(terminal.address());
    client.sync();
    with([](sim::Faults& faults) { faults.delay(sim::Faults::MaxDelay); });
    uint16_t cookie = client.sendRequest("config.stat.ram.a", {});
    EXPECT_FALSE(client.readFrame(100));
    with([](sim::Faults& faults) { faults.delay(0); });
    auto answer = client.readFrame();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->seqn, cookie);
    EXPECT_TRUE(client.sync());
    EXPECT_THAT(inForce(), IsEmpty());
}

TEST_F(FaultsTest, WhatAClientWroteComesLateThoughItHasGone)
{
    with([](sim::Faults& faults) { faults.delay(100); });
    {
        RawClient client(terminal.address());
        client.filter("config.change.ram");
        client.sendSignal("config.write.ram.a", writeOf(2));
        client.sendSignal("config.validate.register", "ram."); // which counts no more
        client.sendRequest("config.stat.ram.a", {});
    }
    EXPECT_TRUE(terminal.waitForValue("ram.a", sim::Value::integer(2)));
    RawClient another(terminal.address());
    sim::VbufWriter records;
    records.add(VX_CONFIG_TYPE_INT, "ram.a", word(3));
    EXPECT_TRUE(another.ask("config.modifyv.blk", std::string(records.bytes())));
    EXPECT_EQ(terminal.getInt("ram.a"), 3); // nobody was asked
}

TEST_F(FaultsTest, ADelayTakesNoMoreMemoryThanItsBound)
{
    with([](sim::Faults& faults) { faults.delay(sim::Faults::MaxDelay); });
    RawClient client(terminal.address());
    const size_t size = 1024 * 1024 - 12;
    const size_t count = 2 * sim::Faults::MaxWaiting / size;
    std::thread sender([&] { // which waits while nothing is read
        for (size_t at = 0; at < count; at++) {
            client.sendSignal("config.write.ram." + std::to_string(at),
                              word(static_cast<uint32_t>(-1)) + word(VX_CONFIG_TYPE_BLOB) +
                                  word(static_cast<uint32_t>(size)) + std::string(size, 'x'));
        }
    });
    auto waiting = [&] {
        std::vector<std::string> lines = inForce();
        unsigned messages = 0;
        sscanf(lines.at(0).c_str(), "delay %*u, %u", &messages);
        return messages;
    };
    Clock::time_point begin = Clock::now();
    while (waiting() < sim::Faults::MaxWaiting / size && since(begin) < PATIENCE_MS)
        std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(200)); // in which more could come
    EXPECT_GE(waiting(), sim::Faults::MaxWaiting / size);
    EXPECT_LE(waiting(), sim::Faults::MaxWaiting / size + 2);
    with([](sim::Faults& faults) { faults.delay(0); });
    sender.join();
    EXPECT_TRUE(client.sync());
    EXPECT_EQ(terminal.list("ram.").size(), count);
}

// --- Not at all

TEST_F(FaultsTest, NothingIsReadUntilItGoesOn)
{
    RawClient client(terminal.address());
    client.sync();
    with([](sim::Faults& faults) { faults.stop(); });
    client.sendRequest("config.stat.ram.a", {});
    EXPECT_FALSE(client.readFrame(200));
    EXPECT_THAT(inForce(), ElementsAre("stop"));
    RawClient another(terminal.address()); // is taken, and waits like the others
    another.sendRequest("config.stat.ram.a", {});
    EXPECT_FALSE(another.readFrame(100));
    with([](sim::Faults& faults) { faults.go(); });
    EXPECT_TRUE(client.readFrame());
    EXPECT_TRUE(another.readFrame());
    EXPECT_THAT(inForce(), IsEmpty());
}

TEST_F(FaultsTest, AStopWithATimeEndsByItself)
{
    RawClient client(terminal.address());
    client.sync();
    Clock::time_point begin = Clock::now();
    with([](sim::Faults& faults) { faults.stop(400); });
    EXPECT_THAT(inForce(), ElementsAre(MatchesRegex("stop, for 0\\.[0-4] s more")));
    EXPECT_TRUE(client.sync());
    EXPECT_GE(since(begin), 399);
    EXPECT_THAT(inForce(), IsEmpty());
}

// --- Cut

TEST_F(FaultsTest, OneConnectionOrAllAreCut)
{
    RawClient first(terminal.address());
    first.sync();
    RawClient second(terminal.address());
    second.sync();
    size_t count = 9;
    with([&](sim::Faults& faults) { count = faults.cut(77); });
    EXPECT_EQ(count, 0u);
    with([&](sim::Faults& faults) { count = faults.cut(1); });
    EXPECT_EQ(count, 1u);
    EXPECT_TRUE(first.isClosedByServer());
    EXPECT_TRUE(second.sync());
    with([&](sim::Faults& faults) { count = faults.cut(0); });
    EXPECT_EQ(count, 1u);
    EXPECT_TRUE(second.isClosedByServer());
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

TEST_F(FaultsTest, AllIsCutAfterSoManyMessagesWhoseAnswersStillCome)
{
    RawClient client(terminal.address());
    client.sync();
    with([](sim::Faults& faults) { faults.cutAfter(2); });
    EXPECT_THAT(inForce(), ElementsAre("cut after 2"));
    // In one piece, so that all three are dealt with in one turn.
    std::string request = sim::Terminal::frame(CBUS_TYPE_REQUEST, 0, 100, "config.stat.ram.a", {});
    client.sendBytes(request + request +
                     sim::Terminal::frame(CBUS_TYPE_SIGNAL, 0, 0, "config.write.ram.a", writeOf(1)));
    EXPECT_TRUE(client.readFrame());
    EXPECT_TRUE(client.readFrame());
    EXPECT_TRUE(client.isClosedByServer());
    EXPECT_FALSE(terminal.has("ram.a"));
    EXPECT_THAT(inForce(), IsEmpty());
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

TEST_F(FaultsTest, AllAreCutAtAMessageOfThatName)
{
    RawClient client(terminal.address());
    RawClient other(terminal.address());
    client.sync();
    other.sync();
    with([](sim::Faults& faults) {
        EXPECT_FALSE(faults.cutAt("config\\.(stat"));
        EXPECT_TRUE(faults.cutAt("config\\.write\\.ram\\.[b-d]"));
    });
    EXPECT_THAT(inForce(), ElementsAre("cut at config\\.write\\.ram\\.[b-d]"));
    client.sendSignal("config.write.ram.a", writeOf(1));
    client.sendSignal("config.write.ram.cc", writeOf(1));
    EXPECT_TRUE(client.sync());
    client.sendSignal("config.write.ram.c", writeOf(1));
    EXPECT_TRUE(client.isClosedByServer());
    EXPECT_TRUE(other.isClosedByServer());
    EXPECT_TRUE(terminal.has("ram.cc"));
    EXPECT_FALSE(terminal.has("ram.c"));
    EXPECT_THAT(inForce(), IsEmpty());
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

TEST_F(FaultsTest, NobodyNewCanConnectWhileItIsDeaf)
{
    RawClient client(terminal.address());
    std::string error;
    with([&](sim::Faults& faults) { EXPECT_TRUE(faults.setDeaf(true, &error)); });
    EXPECT_FALSE(RawClient(terminal.address()).isConnected());
    EXPECT_TRUE(client.sync());
    EXPECT_THAT(inForce(), ElementsAre("deaf"));
    with([&](sim::Faults& faults) { EXPECT_TRUE(faults.off(&error)); });
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

TEST_F(FaultsTest, ItStaysDeafIfSomebodyHasTakenItsPlace)
{
    std::string error;
    with([&](sim::Faults& faults) { faults.setDeaf(true, &error); });
    sim::TerminalOptions options = emptyTerminal();
    options.address = terminal.address();
    {
        sim::Terminal other(options);
        ASSERT_TRUE(other.running());
        with([&](sim::Faults& faults) { EXPECT_FALSE(faults.off(&error)); });
        EXPECT_THAT(error, HasSubstr("in use"));
        EXPECT_THAT(inForce(), ElementsAre("deaf"));
    }
    with([&](sim::Faults& faults) { EXPECT_TRUE(faults.off(&error)); });
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

// --- Floods

TEST_F(FaultsTest, NewKeysComeAndGo)
{
    std::atomic<int> changes{0};
    terminal.listenToChanges([&](const std::vector<sim::Write>& writes) {
        changes += writes[0].isDeletion() ? 0 : static_cast<int>(writes.size());
    });
    with([](sim::Faults& faults) { faults.flood(1234, 0, ""); });
    EXPECT_THAT(inForce(), ElementsAre(MatchesRegex("flood of ram\\.desk\\.flood: [0-9]+ of 1234 changes")));
    waitUntilOver();
    EXPECT_EQ(changes, 1234);
    EXPECT_THAT(terminal.list("ram.desk.flood"), IsEmpty());
    EXPECT_THAT(inForce(), IsEmpty());
}

TEST_F(FaultsTest, KeysThatAreThereAreWhatTheyWereAtTheEnd)
{
    terminal.set("ram.status.a", 2147483647);
    terminal.set("ram.status.b", "text");
    terminal.set("ram.status.c", sim::Value::blob("ab"));
    auto before = terminal.list("ram.status");
    std::atomic<int> changes{0};
    terminal.listenToChanges(
        [&](const std::vector<sim::Write>& writes) { changes += static_cast<int>(writes.size()); });
    Clock::time_point begin = Clock::now();
    with([](sim::Faults& faults) { faults.flood(100, 500, "ram.status"); });
    waitUntilOver();
    EXPECT_GE(since(begin), 199);
    EXPECT_EQ(terminal.list("ram.status"), before);
    EXPECT_GE(changes, 100);
    EXPECT_LE(changes, 103); // with what puts them back
}

TEST_F(FaultsTest, WhatSomebodyElseWroteMeanwhileStays)
{
    terminal.set("ram.status.a", 1);
    with([](sim::Faults& faults) { faults.flood(1000000, 1000, "ram.status"); });
    ASSERT_TRUE(terminal.waitForValue("ram.status.a", sim::Value::integer(2)));
    terminal.set("ram.status.a", 50);
    ASSERT_TRUE(terminal.waitForValue("ram.status.a", sim::Value::integer(51)));
    std::string error;
    with([&](sim::Faults& faults) { faults.off(&error); });
    EXPECT_EQ(terminal.getInt("ram.status.a"), 50);
}

TEST_F(FaultsTest, AClientGetsItsAnswersInAFlood)
{
    RuntimeClient client(terminal.address(), [](RuntimeClient::Inside& inside) {
        inside.subscribe("ram.desk.flood");
        inside.ready();
        int value = 0;
        for (int count = 0; count < 50; count++) {
            if (config_read_int("ram.a", &value) != 0 || value != 7)
                return 3;
            inside.turn();
        }
        return 0;
    });
    terminal.set("ram.a", 7);
    with([](sim::Faults& faults) { faults.flood(sim::Faults::MaxFlood, 500, ""); });
    client.go();
    EXPECT_EQ(client.status(), 0) << client.errors();
}

// What comes while a client waits for an answer it keeps, up to its limit of 2,000.
TEST_F(FaultsTest, AFloodBeforeAnAnswerEndsAClient)
{
    RuntimeClient client(terminal.address(), [](RuntimeClient::Inside& inside) {
        inside.subscribe("ram.desk.flood");
        inside.ready();
        int value = 0;
        return config_read_int("ram.a", &value) == 0 ? 0 : 1;
    });
    ASSERT_TRUE(terminal.waitForFilter("config.change.ram"));
    with([](sim::Faults& faults) { faults.flood(2000, 0, ""); });
    waitUntilOver();
    client.go();
    EXPECT_EQ(client.status(), 128 + SIGABRT);
    EXPECT_THAT(client.errors(), HasSubstr("*** ASSERT in cbus_sock_impl at "));
}

// --- All of them

TEST_F(FaultsTest, AllCanBeInForceAndEndTogether)
{
    std::string error;
    with([&](sim::Faults& faults) {
        faults.delay(5);
        faults.stop();
        faults.setDeaf(true, &error);
        faults.cutAfter(7);
        faults.cutAt("config.*");
        faults.answer(-4, "");
        faults.flood(1000000, 1, "");
    });
    EXPECT_THAT(inForce(), ElementsAre("delay 5", "stop", "deaf", "cut after 7", "cut at config.*",
                                       "answer -4", StartsWith("flood of ram.desk.flood: ")));
    with([&](sim::Faults& faults) { EXPECT_TRUE(faults.off(&error)); });
    EXPECT_THAT(inForce(), IsEmpty());
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

TEST_F(FaultsTest, AStopOfTheTerminalEndsThem)
{
    std::string error;
    with([&](sim::Faults& faults) {
        faults.setDeaf(true, &error);
        faults.flood(1000000, 1000, "");
        faults.delay(1000);
    });
    terminal.stop();
    EXPECT_EQ(terminal.faults(), nullptr);
    EXPECT_EQ(terminal.server(), nullptr);
    ASSERT_TRUE(terminal.start());
    EXPECT_THAT(inForce(), IsEmpty());
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

// --- Peers

TEST_F(FaultsTest, AProcessOfAnotherUserIsRefused)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    constexpr uid_t nobody = 65534;
    pid_t pid = fork();
    if (pid == 0) {
        if (setuid(nobody) != 0)
            _exit(2);
        RawClient client(terminal.address());
        _exit(client.isConnected() && client.isClosedByServer() ? 0 : 1);
    }
    int status = -1;
    waitpid(pid, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(terminal.waitForLog("refused a client: process " + std::to_string(pid) +
                                    " is of another user, 65534"));
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}
