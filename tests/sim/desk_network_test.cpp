// The network manager: sessions that come up, run, end, and fail.
#include "desk_fixture.h"

#include <ctime>

using namespace std::string_literals;
using sim::Value;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string Session = "ram.status.ongoing_data_sessions.0.";
const std::string Group = "ram.net.user_groups.0.";

// What the display writes for a connection; the words are its number and what differs from background
// traffic.
void addContext(std::vector<std::pair<std::string, Value>>* values, int index, int rate, int trafficClass)
{
    const std::string number = std::to_string(index);
    const std::pair<const char*, int> context[] = {
        {"active", 1}, {"cid", index + 1}, {"secondary_context", index > 0}};
    const std::pair<const char*, int> quality[] = {{"traffic_class", trafficClass},
                                                   {"max_bit_rate_u", rate},
                                                   {"max_bit_rate_d", rate + 1},
                                                   {"guaranteed_bit_rate_u", rate + 2},
                                                   {"guaranteed_bit_rate_d", rate + 3},
                                                   {"cid", index + 1},
                                                   {"active", 1}};
    for (const auto& [field, value] : context)
        values->emplace_back("ram.net.pdp_contexts.0." + number + "." + field, Value::integer(value));
    for (const auto& [field, value] : quality)
        values->emplace_back("ram.net.qos.0." + number + "." + field, Value::integer(value));
}

void addFilter(std::vector<std::pair<std::string, Value>>* values, int index, int cid, int begin = 0,
               int end = 65535)
{
    const std::pair<const char*, int> filter[] = {{"active", 1},
                                                  {"cid", cid},
                                                  {"source_port_begin", 0},
                                                  {"source_port_end", 65535},
                                                  {"destination_port_begin", begin},
                                                  {"destination_port_end", end}};
    for (const auto& [field, value] : filter)
        values->emplace_back("ram.net.tft.0." + std::to_string(index) + "." + field, Value::integer(value));
}

class NetworkTest : public DeskTest {
protected:
    using DeskTest::DeskTest;

    void SetUp() override { addContext(&records, 0, 0, 3); }

    // As the display starts: all records at once, and then the key that lets the network manager act.
    void start(int bundle = 0)
    {
        std::vector<std::pair<std::string, Value>> values = records;
        values.emplace_back(Group + "current_bundle", Value::integer(bundle));
        terminal.setAll(values);
        terminal.set(Group + "activated", 1);
    }
    // As it stops.
    void stop()
    {
        terminal.set(Group + "activated", 0);
        terminal.set(Group + "current_bundle", -1);
    }
    void expectFailure(int32_t cause)
    {
        EXPECT_TRUE(becomes(Session + "reason", cause));
        EXPECT_FALSE(terminal.has(Session + "status"));
        EXPECT_EQ(terminal.getInt(Group + "activated"), 0);
        EXPECT_EQ(terminal.getInt(Group + "current_bundle"), -1);
    }
    size_t sessionKeys() { return terminal.list(Session).size() - terminal.has(Session + "reason"); }

    std::vector<std::pair<std::string, Value>> records;
};

class SlowNetworkTest : public NetworkTest {
protected:
    SlowNetworkTest() : NetworkTest(1) {}
};

TEST_F(SlowNetworkTest, ConnectsAtOnceAndRunsLater)
{
    start();
    EXPECT_EQ(terminal.getInt(Session + "status"), 1);
    EXPECT_FALSE(terminal.has(Session + "time"));
    EXPECT_EQ(sessionKeys(), 1u);
    EXPECT_TRUE(becomes(Session + "status", 2));
}

TEST_F(NetworkTest, RunningSessionTellsTimeAmountAndContext)
{
    int32_t before = static_cast<int32_t>(time(nullptr));
    start(1);
    ASSERT_TRUE(becomes(Session + "status", 2));
    EXPECT_GE(terminal.getInt(Session + "time"), before);
    EXPECT_LE(terminal.getInt(Session + "time"), before + 60);
    EXPECT_EQ(terminal.getInt(Session + "bytes_in_out_kb"), 0);
    EXPECT_EQ(terminal.getInt(Session + "context.0.max_bw_up"), 0);
    EXPECT_EQ(terminal.getInt(Session + "context.0.max_bw_down"), 1);
    EXPECT_EQ(terminal.getInt(Session + "context.0.bw_up"), 2);
    EXPECT_EQ(terminal.getInt(Session + "context.0.bw_down"), 3);
    EXPECT_EQ(terminal.getInt(Session + "context.0.traffic_class"), 3);
    EXPECT_EQ(sessionKeys(), 8u);
    EXPECT_EQ(terminal.getInt(Group + "current_bundle"), 1);
}

TEST_F(NetworkTest, ContextsComeInOneChange)
{
    addContext(&records, 1, 64, 1);
    addFilter(&records, 0, 2);
    RawClient watcher(terminal.address());
    watcher.filter("config.change.ram");
    ASSERT_TRUE(watcher.sync());
    start(2);
    std::string all;
    while (auto frame = watcher.readFrame()) {
        all = frame->data;
        if (all.find(Session + "time\0"s) != std::string::npos)
            break;
    }
    EXPECT_THAT(all, HasSubstr(Session + "status\0"s));
    EXPECT_THAT(all, HasSubstr(Session + "context.0.traffic_class\0"s));
    EXPECT_THAT(all, HasSubstr(Session + "context.1.traffic_class\0"s));
    EXPECT_EQ(terminal.getInt(Session + "context.1.max_bw_up"), 64);
    EXPECT_EQ(terminal.getInt(Session + "context.1.traffic_class"), 1);
}

TEST_F(NetworkTest, EndsAfterAMomentWhenItIsDeactivated)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    stop();
    EXPECT_TRUE(goes(Session + "status"));
    EXPECT_EQ(sessionKeys(), 0u);
    EXPECT_EQ(terminal.getInt(Session + "reason"), 0);
}

TEST_F(NetworkTest, DeactivationAloneAlsoEndsTheCurrentBundle)
{
    start();
    terminal.set(Group + "activated", 0);
    EXPECT_EQ(terminal.getInt(Group + "current_bundle"), -1);
    EXPECT_TRUE(goes(Session + "status"));
}

TEST_F(SlowNetworkTest, StartWhileTheOldSessionClosesBeginsANewOne)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    stop();
    start(1);
    EXPECT_EQ(terminal.getInt(Session + "status"), 1);
    EXPECT_FALSE(terminal.has(Session + "time"));
    ASSERT_TRUE(becomes(Session + "status", 2));
    EXPECT_EQ(terminal.getInt(Group + "current_bundle"), 1);
}

TEST_F(NetworkTest, FailsWithTheCauseItWasToldAndOnlyOnce)
{
    EXPECT_EQ(command("fail", "0x1000001d"), "");
    start();
    expectFailure(0x1000001d);
    start();
    EXPECT_EQ(terminal.getInt(Session + "reason"), 0) << "the next start takes the old cause back";
    EXPECT_TRUE(becomes(Session + "status", 2));
}

TEST_F(NetworkTest, TheSameCauseTwiceIsTwoChanges)
{
    NumberLog log(terminal, Session + "reason");
    EXPECT_EQ(command("fail", "3"), "");
    start();
    EXPECT_THAT(log.until(3), ElementsAre(3));
    EXPECT_EQ(command("fail", "3"), "");
    start();
    EXPECT_THAT(log.until(3), ElementsAre(0, 3));
    expectFailure(3);
}

TEST_F(NetworkTest, RunningSessionIsLostWithTheCause)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    EXPECT_EQ(command("fail", "268566785"), ""); // 0x10020101, which no table knows
    expectFailure(268566785);
}

TEST_F(NetworkTest, FailureCanBeTakenBack)
{
    EXPECT_EQ(command("fail", "3"), "");
    EXPECT_EQ(command("fail", "off"), "");
    start();
    EXPECT_TRUE(becomes(Session + "status", 2));
}

TEST_F(NetworkTest, BadCausesAreRefused)
{
    for (const char* text : {"0", "-3", "x", "0x", "3 4", "0x80000000", "99999999999999999999"})
        EXPECT_THAT(command("fail", text), HasSubstr("fail: a cause above 0")) << text;
}

// --- What the network does not take

TEST_F(NetworkTest, NothingToStart)
{
    records.clear();
    start();
    expectFailure(3);
}

TEST_F(NetworkTest, NotAttached)
{
    terminal.set("rmcfg.protocols.umts.ps.status", "Idle");
    start();
    expectFailure(0x10040002);
}

TEST_F(NetworkTest, SatelliteIsNotTheActiveLink)
{
    terminal.set("ram.wan.active", 2);
    start();
    expectFailure(0x10040002);
    terminal.set("ram.wan.active", 3);
    start();
    EXPECT_TRUE(becomes(Session + "status", 2));
}

TEST_F(NetworkTest, UserDefinedAccessPointWithoutAName)
{
    records.emplace_back("ram.net.pdp_contexts.0.0.apn_type", Value::integer(2));
    records.emplace_back("ram.net.pdp_contexts.0.0.apn", Value::text(""));
    start();
    expectFailure(0x1000001b);
    records.back().second = Value::text("office.example");
    start();
    EXPECT_TRUE(becomes(Session + "status", 2));
}

TEST_F(NetworkTest, TwoContextsWithoutAFilter)
{
    addContext(&records, 1, 64, 1);
    start();
    expectFailure(0x1000002e);
}

TEST_F(NetworkTest, FilterOfNoContext)
{
    addFilter(&records, 0, 7);
    start();
    expectFailure(0x1000002c);
}

TEST_F(NetworkTest, FilterWithPortsTheWrongWayRound)
{
    addFilter(&records, 0, 1, 5061, 5004);
    start();
    expectFailure(0x1000002d);
}

TEST_F(NetworkTest, RatesOfTwoTerminalsNeedBonding)
{
    records.clear();
    addContext(&records, 0, 1792, 1);
    start();
    expectFailure(0x1000001a);
    EXPECT_EQ(command("bonding", "master"), "");
    start();
    EXPECT_TRUE(becomes(Session + "status", 2));
    stop();
    EXPECT_TRUE(goes(Session + "status"));
    EXPECT_EQ(command("bonding", "alone"), "");
    start();
    expectFailure(0x1000001a);
}

// --- How a session is lost

TEST_F(NetworkTest, LostWhenTheAntennaIsPointedAnew)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    point("start");
    expectFailure(4);
}

TEST_F(NetworkTest, LostWithTheSignal)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    EXPECT_EQ(command("signal", "20"), "");
    expectFailure(4);
}

TEST_F(NetworkTest, EndsWithTheSystem)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    EXPECT_EQ(command("system", "shutdown"), "");
    expectFailure(0x10040102);
}

TEST_F(NetworkTest, SessionOfAnEarlierLifeIsRemoved)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    terminal.stop();
    ASSERT_TRUE(terminal.start());
    EXPECT_EQ(sessionKeys(), 0u);
    EXPECT_EQ(terminal.getInt(Group + "activated"), 0);
    start();
    EXPECT_TRUE(becomes(Session + "status", 2));
}

TEST_F(NetworkTest, AmountStandsStillWithoutMovement)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    // Its period passes several times while an interface goes up and down.
    for (int32_t enabled : {1, 0, 1, 0, 1}) {
        terminal.set("cfg.interfaces.usb.enabled", enabled);
        ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", enabled));
    }
    EXPECT_EQ(terminal.getInt(Session + "bytes_in_out_kb"), 0);
}

class MovingNetworkTest : public NetworkTest {
protected:
    MovingNetworkTest() : NetworkTest(100, true) {}
};

TEST_F(MovingNetworkTest, AmountGrows)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    int32_t last = 0;
    RawClient watcher(terminal.address());
    watcher.filter("config.change.ram");
    for (int grown = 0; grown < 5;) {
        ASSERT_TRUE(watcher.readFrame());
        int32_t amount = terminal.getInt(Session + "bytes_in_out_kb").value_or(-1);
        ASSERT_GE(amount, last);
        grown += amount > last;
        last = amount;
    }
    stop();
    EXPECT_TRUE(goes(Session + "bytes_in_out_kb"));
}

// --- The command that starts a bundle through the display

TEST_F(NetworkTest, BundleStartWritesTheRequestAsTheDisplayDoes)
{
    const std::string request = "ram.local_gui_display.start_bundle_number";
    NumberLog log(terminal, request);
    for (int round = 0; round < 2; round++) { // a repeated start is a change too
        EXPECT_EQ(command("bundle", "start 2"), "");
        EXPECT_THAT(log.until(2), ElementsAre(-1, 2));
    }
    EXPECT_FALSE(terminal.has(Session + "status")) << "the display does the rest";
}

TEST_F(NetworkTest, BundleStopEndsWhatRuns)
{
    start();
    ASSERT_TRUE(becomes(Session + "status", 2));
    EXPECT_EQ(command("bundle", "stop"), "");
    EXPECT_EQ(terminal.getInt(Group + "current_bundle"), -1);
    EXPECT_TRUE(goes(Session + "status"));
    for (const char* text : {"start", "start x", "start -1", "stop now", "go"})
        EXPECT_EQ(command("bundle", text), "bundle: start and a number, or stop") << text;
}

} // namespace
