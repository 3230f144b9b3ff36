// What goes on in the terminal by itself and in answer to the display.
#include "raw_client.h"

#include "sim/terminal.h"

#include <gmock/gmock.h>

using namespace std::string_literals;
using sim::Value;

namespace {

sim::TerminalOptions options(bool actors, bool moving)
{
    sim::TerminalOptions options;
    options.actors = actors;
    options.moving = moving;
    options.speed = 100;
    return options;
}

// The values that a key takes, as a client sees them.
std::vector<int32_t> valuesSeen(sim::Terminal& terminal, const std::string& key, size_t count)
{
    std::vector<int32_t> seen;
    RawClient watcher(terminal.address());
    watcher.filter("config.change." + key.substr(0, key.find('.')));
    while (seen.size() < count) {
        auto change = watcher.readFrame();
        if (!change)
            break;
        // Key and value stand behind each other, the key's area being a multiple of 4.
        size_t at = change->data.find(key + '\0');
        if (at == std::string::npos)
            continue;
        int32_t value;
        memcpy(&value, change->data.data() + at + (key.size() + 4) / 4 * 4, sizeof value);
        seen.push_back(value);
    }
    return seen;
}

TEST(ActorsTest, InterfacesFollowWhatIsAskedFor)
{
    sim::Terminal terminal(options(true, false));
    for (const char* name : {"wlan", "isdn", "lan", "phone", "usb"}) {
        std::string requested = "cfg.interfaces."s + name + ".enabled";
        std::string state = "ram.status.interfaces."s + name + ".enabled";
        int32_t before = terminal.getInt(state).value_or(-1);
        terminal.set(requested, 1 - before);
        EXPECT_TRUE(terminal.waitForValue(state, Value::integer(1 - before))) << name;
        terminal.set(requested, before);
        EXPECT_TRUE(terminal.waitForValue(state, Value::integer(before))) << name;
    }
}

TEST(ActorsTest, InterfaceTakesAMoment)
{
    sim::TerminalOptions slow = options(true, false);
    slow.speed = 1;
    sim::Terminal terminal(slow);
    terminal.set("cfg.interfaces.isdn.enabled", 1);
    EXPECT_EQ(terminal.getInt("ram.status.interfaces.isdn.enabled"), 0);
    EXPECT_TRUE(terminal.waitForValue("ram.status.interfaces.isdn.enabled", Value::integer(1)));
}

TEST(ActorsTest, SettingsFromTheStoreAreFollowedAtStart)
{
    sim::Terminal terminal(options(true, false));
    terminal.stop();
    terminal.set("cfg.interfaces.usb.enabled", 1);
    ASSERT_TRUE(terminal.start());
    EXPECT_TRUE(terminal.waitForValue("ram.status.interfaces.usb.enabled", Value::integer(1)));
}

TEST(ActorsTest, PointingFromStartToRegistered)
{
    sim::Terminal terminal(options(true, false));
    RawClient client(terminal.address());
    client.sendSignal("bp_ctrl.pointing", "start\0"s);
    EXPECT_TRUE(terminal.waitForValue("ram.status.pointed_status", Value::integer(1)));
    EXPECT_EQ(terminal.getString("rmcfg.protocols.umts.plmn.status"), "Scanning");
    client.sendSignal("bp_ctrl.pointing", "stop\0"s);
    EXPECT_TRUE(terminal.waitForValue("ram.status.pointed_status", Value::integer(2)));
    EXPECT_TRUE(terminal.waitForValue("rmcfg.protocols.umts.cs.status", Value::text("Attached")));
    EXPECT_EQ(terminal.getString("rmcfg.protocols.umts.plmn.status"), "Selected");
    EXPECT_EQ(terminal.getString("rmcfg.protocols.umts.ps.status"), "Attached");
    EXPECT_EQ(terminal.getString("rmcfg.protocols.bgan.status.state"), "Registered");
}

TEST(ActorsTest, CancelledPointingLeavesTheAntennaUnpointed)
{
    sim::Terminal terminal(options(true, false));
    RawClient client(terminal.address());
    client.sendSignal("bp_ctrl.pointing", "start\0"s);
    client.sendSignal("bp_ctrl.pointing", "cancel\0"s);
    EXPECT_TRUE(terminal.waitForValue("ram.status.pointed_status", Value::integer(0)));
}

TEST(ActorsTest, StopAndCancelOutsidePointingDoNothing)
{
    sim::Terminal terminal(options(true, false));
    RawClient client(terminal.address());
    for (const char* command : {"stop", "cancel", "dance"})
        client.sendSignal("bp_ctrl.pointing", command + "\0"s);
    client.sendSignal("bp_ctrl.pointing", "");
    client.sendSignal("bp_ctrl.other", "start\0"s);
    EXPECT_EQ(client.ask("bp_ctrl.pointing", "start\0"s).value_or("?"), "");
    EXPECT_EQ(terminal.getInt("ram.status.pointed_status"), 2);
    EXPECT_EQ(terminal.getString("rmcfg.protocols.umts.plmn.status"), "Selected");
}

TEST(ActorsTest, WithoutThemNothingReacts)
{
    sim::Terminal terminal;
    RawClient client(terminal.address());
    client.sendSignal("bp_ctrl.pointing", "start\0"s);
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(terminal.getInt("ram.status.pointed_status"), 2);
}

TEST(MoversTest, SignalStaysInItsRangeAndBarsFollow)
{
    sim::Terminal terminal(options(false, true));
    for (int32_t strength : valuesSeen(terminal, "ram.status.signal_strength", 30)) {
        EXPECT_GE(strength, 320);
        EXPECT_LE(strength, 560);
    }
    for (int32_t bars : valuesSeen(terminal, "ram.status.signal_strength_norm", 3)) {
        EXPECT_GE(bars, 0);
        EXPECT_LE(bars, 4);
    }
}

TEST(MoversTest, SignalFromOutsideItsRangeComesBackIntoIt)
{
    sim::Terminal terminal(options(false, true));
    terminal.set("ram.status.signal_strength", 0);
    EXPECT_THAT(valuesSeen(terminal, "ram.status.signal_strength", 3), testing::Each(testing::Ge(320)));
}

TEST(MoversTest, SignalStandsStillWhileTheDisplayWantsNoUpdates)
{
    sim::Terminal terminal(options(false, true));
    ASSERT_EQ(valuesSeen(terminal, "ram.status.signal_strength", 1).size(), 1u);
    terminal.set("ram.status.signal_strength.update_interval", 0);
    terminal.set("ram.status.signal_strength", 400);
    // The position goes on moving: several of its turns are longer than one of the signal's.
    ASSERT_EQ(valuesSeen(terminal, "ram.status.position.latitude", 3).size(), 3u);
    EXPECT_EQ(terminal.getInt("ram.status.signal_strength"), 400);
    terminal.set("ram.status.signal_strength.update_interval", 1000);
    EXPECT_EQ(valuesSeen(terminal, "ram.status.signal_strength", 1).size(), 1u);
}

TEST(MoversTest, BatteryDischargesAndChargesAgain)
{
    sim::Terminal terminal(options(false, true));
    terminal.set("ram.status.battery.1.relative_state_of_charge", 22);
    EXPECT_TRUE(terminal.waitForValue("ram.status.battery.1.relative_state_of_charge", Value::integer(20)));
    EXPECT_TRUE(terminal.waitForValue("ram.status.battery.1.charge_discharge_status", Value::integer(1)));
    EXPECT_EQ(terminal.getInt("ram.status.battery.1.average_time_to_empty"), 0);
    EXPECT_GT(terminal.getInt("ram.status.battery.1.average_time_to_full"), 0);
    terminal.set("ram.status.battery.1.relative_state_of_charge", 99);
    EXPECT_TRUE(terminal.waitForValue("ram.status.battery.1.charge_discharge_status", Value::integer(2)));
}

TEST(MoversTest, SuppliedBatteryChargesAndThenIdles)
{
    sim::Terminal terminal(options(false, true));
    terminal.setAll({{"ram.status.psumcu.events.external_supply", Value::integer(1)},
                     {"ram.status.battery.1.relative_state_of_charge", Value::integer(98)}});
    EXPECT_TRUE(terminal.waitForValue("ram.status.battery.1.charge_discharge_status", Value::integer(1)));
    EXPECT_TRUE(terminal.waitForValue("ram.status.battery.1.charge_discharge_status", Value::integer(0)));
    EXPECT_EQ(terminal.getInt("ram.status.battery.1.relative_state_of_charge"), 100);
}

TEST(MoversTest, AbsentBatteryStandsStill)
{
    sim::Terminal terminal(options(false, true));
    terminal.setAll({{"ram.status.battery.1.status", Value::integer(-1)},
                     {"ram.status.battery.1.relative_state_of_charge", Value::integer(50)}});
    ASSERT_EQ(valuesSeen(terminal, "ram.status.position.latitude", 4).size(), 4u);
    EXPECT_EQ(terminal.getInt("ram.status.battery.1.relative_state_of_charge"), 50);
}

TEST(MoversTest, PositionStaysNearItsHome)
{
    sim::Terminal still;
    int32_t home = still.getInt("ram.status.position.latitude").value_or(0);
    sim::Terminal terminal(options(false, true));
    for (int32_t latitude : valuesSeen(terminal, "ram.status.position.latitude", 20)) {
        EXPECT_GE(latitude, home - 30);
        EXPECT_LE(latitude, home + 30);
    }
    for (int32_t satellites : valuesSeen(terminal, "ram.status.position.satellites", 5)) {
        EXPECT_GE(satellites, 5);
        EXPECT_LE(satellites, 11);
    }
}

} // namespace
