// The terminal misbehaves, and what its clients get of it: raw ones, and the runtime's own in a process of
// its own, since some frames end it.
#include "console_session.h"
#include "raw_client.h"
#include "runtime_client.h"

#include "sim/faults.h"
#include "sim/vbuf.h"

#include "runtime/config_client_api.h"

#include <atomic>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <thread>

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

sim::TerminalOptions empty()
{
    sim::TerminalOptions options;
    options.initialValues = false;
    return options;
}

using Clock = std::chrono::steady_clock;

int64_t since(Clock::time_point begin)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
}

std::string writeOf(uint32_t number)
{
    return word(static_cast<uint32_t>(-1)) + word(VX_CONFIG_TYPE_INT) + word(4) + word(number);
}

class FaultsTest : public testing::Test {
protected:
    // Does something with the faults, on their thread.
    template <typename Function> void with(Function function)
    {
        terminal.onThread([&] { function(*terminal.faults()); });
    }
    std::vector<std::string> inForce()
    {
        std::vector<std::string> lines;
        with([&](sim::Faults& faults) { lines = faults.list(); });
        return lines;
    }

    sim::Terminal terminal{empty()};
};

} // namespace

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
    while (waiting() < sim::Faults::MaxWaiting / size && since(begin) < 20000)
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
    sim::TerminalOptions options = empty();
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
    Clock::time_point begin = Clock::now();
    while (!inForce().empty() && since(begin) < 20000)
        std::this_thread::yield();
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
    while (!inForce().empty() && since(begin) < 20000)
        std::this_thread::yield();
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
    Clock::time_point begin = Clock::now();
    while (!inForce().empty() && since(begin) < 20000)
        std::this_thread::yield();
    client.go();
    EXPECT_EQ(client.status(), 128 + SIGABRT);
    EXPECT_THAT(client.errors(), HasSubstr("*** ASSERT in cbus_sock_impl at "));
}

// --- Wrong answers

TEST_F(FaultsTest, ReadsGiveTheErrorThatWasAskedFor)
{
    terminal.set("ram.a", 7);
    terminal.set("ram.b", 8);
    for (const sim::FaultStatus& row : sim::faultStatuses()) {
        SCOPED_TRACE(row.name);
        with([&](sim::Faults& faults) { EXPECT_TRUE(faults.answer(row.status, "ram\\.a")); });
        const int32_t wanted = row.status;
        RuntimeClient client(terminal.address(), [wanted](RuntimeClient::Inside&) {
            int value = 5;
            if (config_read_int("ram.a", &value) != wanted && wanted != VX_CONFIG_BUFFER_TOO_SMALL)
                return 1;
            uint32_t unused = 0;
            if (config_status("ram.a", &unused) != wanted)
                return 2;
            int first = 0;
            int second = 0;
            config_data_t read[2] = {};
            const char* names[] = {"ram.a", "ram.b"};
            int* values[] = {&first, &second};
            for (int at = 0; at < 2; at++) {
                read[at].type = VX_CONFIG_TYPE_INT;
                read[at].name = names[at];
                read[at].data = values[at];
                read[at].size = sizeof(int);
            }
            if (config_readv("test", 2, read) != 0 || read[0].status != wanted || read[1].status != 0)
                return 3;
            if (second != 8)
                return 4;
            int written = 9;
            config_data_t write = {};
            write.type = VX_CONFIG_TYPE_INT;
            write.name = "ram.a";
            write.data = &written;
            write.size = sizeof written;
            if (config_modifyv("test", 1, &write) != wanted)
                return 5;
            return config_read_int("ram.b", &value) == 0 && value == 8 ? 0 : 6;
        });
        EXPECT_EQ(client.status(), 0) << client.errors();
        EXPECT_EQ(terminal.getInt("ram.a"), 7);
    }
    EXPECT_THAT(inForce(), ElementsAre("answer -8 ram\\.a"));
}

TEST_F(FaultsTest, OfSeveralErrorsTheLastThatFitsCounts)
{
    with([](sim::Faults& faults) {
        EXPECT_TRUE(faults.answer(-2, ""));
        EXPECT_TRUE(faults.answer(-5, "cfg.*"));
        EXPECT_FALSE(faults.answer(-5, "("));
        EXPECT_EQ(faults.statusOf("cfg.a"), -5);
        EXPECT_EQ(faults.statusOf("xcfg.a"), -2);
        EXPECT_EQ(faults.statusOf(""), -2);
        EXPECT_TRUE(faults.answer(-3, "")); // in place of the first
        EXPECT_EQ(faults.statusOf("cfg.a"), -3);
        EXPECT_THAT(faults.list(), ElementsAre("answer -5 cfg.*", "answer -3"));
        for (size_t at = 2; at < sim::Faults::MaxAnswers; at++)
            EXPECT_TRUE(faults.answer(-1, "k" + std::to_string(at)));
        EXPECT_FALSE(faults.answer(-1, "more"));
        std::string error;
        faults.off(&error);
        EXPECT_EQ(faults.statusOf("cfg.a"), 0);
    });
}

TEST_F(FaultsTest, NoKeysAreListedWhileAllReadsFail)
{
    terminal.set("ram.a", 7);
    RawClient client(terminal.address());
    with([](sim::Faults& faults) { faults.answer(-2, "ram.a"); });
    EXPECT_NE(client.ask("config.readm.ram.*", {}), "");
    with([](sim::Faults& faults) { faults.answer(-2, ""); });
    EXPECT_EQ(client.ask("config.readm.ram.*", {}), "");
}

// --- Broken frames

namespace {

struct FrameRow {
    const char* kind;
    enum { GoesOn, Ends, IsCut } effect;
    const char* log; // part of what it logs
};
const FrameRow FrameRows[] = {
    {"type", FrameRow::Ends, "Invalid message type [config.change.ram] 9"},
    {"name-long", FrameRow::Ends, "*** ASSERT in cbus_sock_impl at "},
    {"name-open", FrameRow::GoesOn, "cbus: message name without its NUL, cut to \"config.change.ram\""},
    {"name-empty", FrameRow::GoesOn, ""},
    {"name-none", FrameRow::GoesOn, ""},
    {"data-huge", FrameRow::Ends, "*** ASSERT in cbus_sock_impl at "},
    {"shifted", FrameRow::Ends, "*** ASSERT in cbus_sock_impl at "},
    {"cut-header", FrameRow::IsCut, ""},
    {"cut-data", FrameRow::IsCut, ""},
    {"reply", FrameRow::GoesOn, ""},
    {"request", FrameRow::GoesOn, ""},
    {"change-empty", FrameRow::GoesOn, ""},
    {"change-short", FrameRow::GoesOn, ""},
    {"change-cut", FrameRow::GoesOn, ""},
    {"key-open", FrameRow::GoesOn, ""},
    {"key-long", FrameRow::GoesOn, ""},
    {"key-odd", FrameRow::GoesOn, ""},
    {"value-long", FrameRow::GoesOn, ""},
    {"value-type", FrameRow::GoesOn, ""},
    {"int-short", FrameRow::GoesOn, ""},
    {"int-as-text", FrameRow::GoesOn, ""},
    {"text-open", FrameRow::GoesOn, ""},
    {"validator", FrameRow::Ends, "*** ASSERT in "},
    {"validator-none", FrameRow::Ends, "Error retrieving identifying name from config.clnt_validate."},
};

constexpr int GoneOn = 0;
constexpr int WasCut = 3;

} // namespace

// The runtime's client drops what it can, and where it must not go on it ends with a line in the log: it
// never just crashes.
TEST_F(FaultsTest, EachBrokenFrameIsDroppedOrEndsTheClientWithALine)
{
    ASSERT_EQ(std::size(FrameRows), sim::brokenFrames().size());
    terminal.set("ram.a", 7);
    for (const FrameRow& row : FrameRows) {
        SCOPED_TRACE(row.kind);
        RuntimeClient client(terminal.address(), [](RuntimeClient::Inside& inside) {
            inside.subscribe("ram.status.signal_strength");
            inside.subscribe("ram.done");
            inside.ready();
            if (!inside.waitForChange("ram.done"))
                return WasCut;
            int value = 0;
            return config_read_int("ram.a", &value) == 0 && value == 7 ? GoneOn : 1;
        });
        ASSERT_TRUE(terminal.waitForFilter("config.change.ram"));
        std::optional<size_t> count;
        with([&](sim::Faults& faults) { count = faults.sendFrame(row.kind, 0); });
        EXPECT_EQ(count, 1u);
        terminal.set("ram.done", 1);
        client.go();
        int status = client.status();
        EXPECT_EQ(status, row.effect == FrameRow::GoesOn  ? GoneOn
                          : row.effect == FrameRow::IsCut ? WasCut
                                                          : 128 + SIGABRT)
            << client.errors();
        EXPECT_THAT(client.errors(), HasSubstr(row.log));
        terminal.erase("ram.done");
        ASSERT_TRUE(terminal.waitForClients(0));
    }
}

TEST(BrokenFrames, TheManualHasThemAllWithWhatTheDisplayDoes)
{
    std::ifstream in(PROJECT_SOURCE_DIR "/docs/simulator.md");
    std::stringstream manual;
    manual << in.rdbuf();
    for (const FrameRow& row : FrameRows) {
        for (const sim::BrokenFrame& frame : sim::brokenFrames()) {
            if (row.kind != std::string(frame.kind))
                continue;
            const char* effect = row.effect == FrameRow::GoesOn  ? "goes on"
                                 : row.effect == FrameRow::IsCut ? "loses the bus"
                                                                 : "ends";
            EXPECT_THAT(manual.str(), HasSubstr("| `" + std::string(row.kind) + "` | " + frame.help + " | " +
                                                effect + " |\n"));
        }
    }
}

TEST_F(FaultsTest, AFrameGoesToOneClientOrNone)
{
    RawClient first(terminal.address());
    first.sync();
    RawClient second(terminal.address());
    second.sync();
    with([](sim::Faults& faults) {
        EXPECT_EQ(faults.sendFrame("change-empty", 1), 1u);
        EXPECT_EQ(faults.sendFrame("change-empty", 3), 0u);
        EXPECT_EQ(faults.sendFrame("nothing", 1), std::nullopt);
    });
    auto frame = first.readFrame();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->name, "config.change.ram");
    EXPECT_TRUE(second.hasNothingElse());
}

TEST_F(FaultsTest, ARuntimeClientNoticesACutAndADeafBus)
{
    RuntimeClient client(terminal.address(), [](RuntimeClient::Inside& inside) {
        inside.ready();
        int value = 0;
        return config_read_int("ram.a", &value) == VX_CONFIG_ERR ? 0 : 1;
    });
    with([](sim::Faults& faults) { faults.cut(0); });
    client.go();
    EXPECT_EQ(client.status(), 0) << client.errors();

    std::string error;
    with([&](sim::Faults& faults) { faults.setDeaf(true, &error); });
    RuntimeClient refused(terminal.address(), [](RuntimeClient::Inside&) { return 0; });
    EXPECT_EQ(refused.status(), RuntimeClient::NotConnected);
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

// --- The command

namespace {

struct CommandRow {
    const char* line;
    const char* output; // [1] failed, [USAGE] is told apart below
};

} // namespace

TEST_F(FaultsTest, Commands)
{
    const CommandRow rows[] = {
        {"fault", "no faults\n"},
        {"fault cut", "error: no client is connected\n[1]"},
        {"fault cut 5", "error: there is no client 5\n[1]"},
        {"fault frame type", "error: no client is connected\n[1]"},
        {"fault frame nothing",
         "error: no kind of frame is called nothing (\"fault frame\" lists them)\n[1]"},
        {"fault delay 20", ""},
        {"fault stop 60", ""},
        {"fault stop", ""},
        {"fault cut after 3", ""},
        {"fault cut at config.read.none", ""},
        {"fault cut at config.(", "error: a bad expression\n[1]"},
        {"fault deaf", ""},
        {"fault answer -2", ""},
        {"fault answer no_record cfg.*", ""},
        {"fault answer 7", "error: a status is one of -1 err, -2 db_err, -3 db_full, -4 readonly, "
                           "-5 no_record, -6 wrong_type, -7 buffer_too_small, -8 verify_fail\n[1]"},
        {"fault answer -2 (", "error: a bad expression, or too many of them\n[1]"},
        {"fault", "delay 20\nstop\ndeaf\ncut after 3\ncut at config.read.none\nanswer -2\nanswer -5 cfg.*\n"},
        {"fault go", ""},
        {"fault delay 0", ""},
        {"fault", "deaf\ncut after 3\ncut at config.read.none\nanswer -2\nanswer -5 cfg.*\n"},
        {"fault off", ""},
        {"fault", "no faults\n"},
        {"bus", "no client is connected\n"},
    };
    ConsoleSession console(terminal);
    for (const CommandRow& row : rows)
        EXPECT_EQ(console.transcript(row.line), row.output) << row.line;
    for (const char* line : {"fault x",
                             "fault delay",
                             "fault delay x",
                             "fault delay -1",
                             "fault delay 600001",
                             "fault delay 1 2",
                             "fault stop 0",
                             "fault stop x",
                             "fault stop nan",
                             "fault stop 1 2",
                             "fault go x",
                             "fault cut x",
                             "fault cut 0",
                             "fault cut after",
                             "fault cut after -1",
                             "fault cut at",
                             "fault cut 1 2",
                             "fault deaf x",
                             "fault flood",
                             "fault flood 0",
                             "fault flood x",
                             "fault flood 1 2 x y",
                             "fault frame type 0",
                             "fault frame type 1 2",
                             "fault answer",
                             "fault answer -1 a b",
                             "fault off x",
                             "bus x"}) {
        std::string output = console.transcript(line);
        EXPECT_THAT(output, HasSubstr("usage: ")) << line;
        EXPECT_EQ(output.back(), ']') << line;
    }
    EXPECT_EQ(console.transcript("fault"), "no faults\n");
}

TEST_F(FaultsTest, CommandsThatDoSomethingToClients)
{
    ConsoleSession console(terminal);
    RawClient client(terminal.address());
    client.filter("config.change.ram");
    client.filter("config.change.cfg");
    client.provide("clock.");
    client.sync();
    EXPECT_THAT(console.transcript("bus"),
                MatchesRegex("client 1: process " + std::to_string(getpid()) +
                             " faults_test\n    filter config.change.ram\n    filter config.change.cfg\n"
                             "    provides clock.\n"));
    EXPECT_EQ(console.transcript("fault frame change-empty 1"), "");
    EXPECT_TRUE(client.readFrame());
    EXPECT_EQ(console.transcript("fault flood 10 ram.new"), "");
    EXPECT_TRUE(client.readFrame());
    EXPECT_EQ(console.transcript("fault cut 1"), "");
    EXPECT_TRUE(client.isClosedByServer());
    std::string kinds = console.transcript("fault frame");
    for (const sim::BrokenFrame& row : sim::brokenFrames())
        EXPECT_THAT(kinds, HasSubstr(std::string(row.kind) + " "));
}
