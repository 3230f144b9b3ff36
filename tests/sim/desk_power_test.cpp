// Batteries, external supply, temperatures: what they tell, warn of, and bring about.
#include "desk_fixture.h"

using sim::Value;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const char System[] = "ram.status.ext_system";
const char Supply[] = "ram.status.psumcu.events.external_supply";
const std::string Subscribe = "ram.status.psumcu.events.subscribe.";
const std::string Log = "ram.log.alert.";

class PowerTest : public DeskTest {
protected:
    using DeskTest::DeskTest;

    std::optional<int32_t> battery(int number, const std::string& field)
    {
        return terminal.getInt("ram.status.battery." + std::to_string(number) + "." + field);
    }
    std::optional<int32_t> charge(int number) { return battery(number, "charge_discharge_status"); }
    // The id and sub-id of the alerts that stand.
    std::map<int32_t, int32_t> alerts()
    {
        std::map<int32_t, int32_t> found;
        for (const auto& [key, value] : terminal.list(Log)) {
            if (key.find(".identifier") != std::string::npos)
                found[value.toInt()] =
                    terminal.getInt(key.substr(0, key.rfind('.')) + ".sub_id").value_or(-1);
        }
        return found;
    }
    // As the display does when it goes to sleep and wakes.
    void subscribe(bool wants)
    {
        for (const char* name : {"external_supply", "battery_presence", "charging_status",
                                 "threshold.temperature", "threshold.average_time", "battery_alarm"})
            terminal.set(Subscribe + name + ".lumenpanel", wants);
        terminal.set(Subscribe + "threshold.remaining_capacity.lumenpanel", wants ? 500 : 0);
        if (wants)
            terminal.set("ram.status.battery.update_now", 1);
    }
};

TEST_F(PowerTest, SecondBatteryComesAndGoes)
{
    EXPECT_EQ(command("battery", "2 30"), "battery: battery 2 is not there");
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(battery(2, "status"), 0);
    EXPECT_EQ(battery(2, "relative_state_of_charge"), 60);
    EXPECT_EQ(battery(2, "temperature"), 25);
    EXPECT_EQ(charge(2), 2);
    EXPECT_EQ(battery(2, "average_time_to_empty"), 180);
    EXPECT_EQ(command("battery", "2 30"), "");
    EXPECT_EQ(command("battery", "2 present"), "") << "it is there and stays as it is";
    EXPECT_EQ(battery(2, "relative_state_of_charge"), 30);
    EXPECT_EQ(battery(2, "average_time_to_empty"), 90);
    EXPECT_EQ(command("battery", "2 absent"), "");
    EXPECT_EQ(battery(2, "status"), -1);
    EXPECT_EQ(charge(2), -1);
    EXPECT_EQ(battery(2, "relative_state_of_charge"), 0);
    EXPECT_EQ(command("battery", "2 error"), "");
    EXPECT_EQ(battery(2, "status"), -2);
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 83);
}

TEST_F(PowerTest, OneBatteryAtATimeTheOuterOneFirst)
{
    EXPECT_EQ(charge(1), 2);
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(charge(1), 0);
    EXPECT_EQ(charge(2), 2);
    EXPECT_EQ(battery(1, "average_time_to_empty"), 249) << "it waits with what it has";
    EXPECT_EQ(command("battery", "2 5"), "");
    EXPECT_EQ(charge(1), 2) << "the outer one keeps a reserve";
    EXPECT_EQ(charge(2), 0);
    EXPECT_EQ(command("battery", "2 absent"), "");
    EXPECT_EQ(charge(1), 2);
}

TEST_F(PowerTest, ExternalSupplyChargesTheInnerOneFirst)
{
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(terminal.getInt(Supply), 1);
    EXPECT_EQ(charge(1), 1);
    EXPECT_EQ(charge(2), 0);
    EXPECT_EQ(battery(1, "average_time_to_full"), 51);
    EXPECT_EQ(command("battery", "1 100"), "");
    EXPECT_EQ(charge(1), 0);
    EXPECT_EQ(charge(2), 1);
    EXPECT_EQ(command("battery", "supply off"), "") << "the old form";
    EXPECT_EQ(terminal.getInt(Supply), 0);
    EXPECT_EQ(charge(1), 0);
    EXPECT_EQ(charge(2), 2);
}

TEST_F(PowerTest, AnEmptyBatteryIsPrecharged)
{
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("battery", "2"), "") << "a number alone is a percentage";
    EXPECT_EQ(charge(1), 3);
    EXPECT_EQ(command("battery", "3"), "");
    EXPECT_EQ(charge(1), 1);
}

TEST_F(PowerTest, AWantedStateBringsOrTakesTheSupply)
{
    EXPECT_EQ(command("battery", "50"), "");
    const std::pair<const char*, int32_t> states[] = {
        {"idle", 0}, {"charging", 1}, {"precharging", 3}, {"discharging", 2}};
    for (const auto& [word, state] : states) {
        EXPECT_EQ(command("battery", std::string("1 ") + word), "");
        EXPECT_EQ(charge(1), state) << word;
        EXPECT_EQ(terminal.getInt(Supply), state == 1 || state == 3) << word;
        EXPECT_EQ(battery(1, "relative_state_of_charge"), 50);
        EXPECT_EQ(battery(1, "average_time_to_full"), state == 1 ? 150 : 0) << word;
        EXPECT_EQ(battery(1, "average_time_to_empty"), state == 2 ? 150 : 0) << word;
    }
}

TEST_F(PowerTest, NoChargingOfAFullHotOrColdBattery)
{
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("battery", "1 100"), "");
    EXPECT_EQ(command("battery", "charging"), "battery: it is full, or too hot or too cold to charge");
    EXPECT_EQ(command("battery", "1 50"), "");
    EXPECT_EQ(charge(1), 1);
    for (const char* degrees : {"46", "-1"}) {
        EXPECT_EQ(command("temperature", std::string("1 ") + degrees), "");
        EXPECT_EQ(charge(1), 0) << degrees;
    }
    EXPECT_EQ(command("temperature", "1 normal"), "");
    EXPECT_EQ(battery(1, "temperature"), 25);
    EXPECT_EQ(charge(1), 1);
}

TEST_F(PowerTest, WhatTheTerminalRunsOnCannotBeTakenAway)
{
    EXPECT_EQ(command("battery", "absent"), "battery: the terminal runs on it: supply on comes first");
    EXPECT_EQ(command("battery", "error"), "battery: the terminal runs on it: supply on comes first");
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("battery", "absent"), "");
    EXPECT_EQ(battery(1, "status"), -1);
    EXPECT_EQ(command("supply", "off"), "supply: there is no battery to run on");
    EXPECT_EQ(command("battery", "supply off"), "battery: there is no battery to run on");
    EXPECT_EQ(terminal.getInt(Supply), 1);
}

TEST_F(PowerTest, BatteriesCanBeSwapped)
{
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(command("battery", "1 absent"), "");
    EXPECT_EQ(charge(2), 2);
    EXPECT_EQ(command("battery", "1 present"), "");
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 60);
}

TEST_F(PowerTest, LowBatteryWarnsUntilThereIsMore)
{
    EXPECT_EQ(command("battery", "11"), "");
    EXPECT_TRUE(alerts().empty());
    EXPECT_EQ(command("battery", "10"), "");
    EXPECT_EQ(alerts().count(0x11002), 1u);
    EXPECT_EQ(command("battery", "12"), "");
    EXPECT_EQ(alerts().count(0x11002), 1u) << "a little more is not enough";
    EXPECT_EQ(command("battery", "13"), "");
    EXPECT_TRUE(alerts().empty());
    EXPECT_EQ(command("battery", "5"), "");
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_TRUE(alerts().empty());
    EXPECT_FALSE(terminal.has("ram.desk.error"));
}

TEST_F(PowerTest, TwoBatteriesAreLowTogether)
{
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(command("battery", "1 5"), "");
    EXPECT_TRUE(alerts().empty());
    EXPECT_EQ(command("battery", "2 8"), "");
    EXPECT_EQ(alerts().count(0x11002), 1u);
}

TEST_F(PowerTest, EmptyBatteryShutsTheTerminalDown)
{
    EXPECT_EQ(command("battery", "1 1"), "");
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_EQ(command("battery", "0"), "");
    EXPECT_EQ(terminal.getInt(System), 4);
    EXPECT_TRUE(becomes("ram.desk.display", 0));
    for (const char* word : {"start", "ready"})
        EXPECT_EQ(command("system", word),
                  "system: there is no power: supply on or a charged battery comes first");
    EXPECT_EQ(terminal.getInt(System), 4);
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("system", "start"), "");
    EXPECT_TRUE(becomes(System, 10));
}

TEST_F(PowerTest, EmptyBatteryEndsAnUpdateToo)
{
    EXPECT_EQ(command("update", "start"), "");
    EXPECT_EQ(command("battery", "0"), "");
    EXPECT_EQ(terminal.getInt(System), 4);
    EXPECT_EQ(terminal.getInt("ram.status.sw_update.active"), 0);
    EXPECT_EQ(terminal.getInt("cfg.status.sw_update.error"), 9);
}

TEST_F(PowerTest, HotAndColdBatteriesWarnEachForItself)
{
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(command("temperature", "2 60"), "");
    EXPECT_EQ(alerts(), (std::map<int32_t, int32_t>{{0x11004, 2}}));
    EXPECT_EQ(command("battery", "2 temperature 57"), "");
    EXPECT_EQ(alerts().count(0x11004), 1u);
    EXPECT_EQ(command("temperature", "1 -20"), "");
    EXPECT_EQ(alerts(), (std::map<int32_t, int32_t>{{0x11003, 1}, {0x11004, 2}}));
    EXPECT_EQ(command("temperature", "2 56"), "");
    EXPECT_EQ(command("temperature", "1 -16"), "");
    EXPECT_TRUE(alerts().empty());
    EXPECT_EQ(command("battery", "2 absent"), "");
    EXPECT_EQ(command("temperature", "2 60"), "temperature: battery 2 is not there");
}

TEST_F(PowerTest, BadPowerCommandsAreRefused)
{
    for (const char* text : {"101", "-1", "full", "1 x"})
        EXPECT_THAT(command("battery", text), HasSubstr("a percentage from 0 to 100 or a state")) << text;
    for (const char* text : {"3 50", "1 2 3"})
        EXPECT_EQ(command("battery", text), "battery: a battery, 1 or 2, and one word") << text;
    for (const char* text : {"supply", "supply maybe", "supply on off"})
        EXPECT_EQ(command("battery", text), "battery: supply on, or supply off") << text;
    for (const char* text : {"temperature", "temperature x", "temperature 101", "temperature 5 5"})
        EXPECT_EQ(command("battery", text), "battery: a temperature from -40 to 100, or normal") << text;
    EXPECT_EQ(command("supply", "maybe"), "supply: on, off or auto, not maybe");
    for (const char* text : {"hot", "101", "-41", "3 20", "1 2 3", "1 x"})
        EXPECT_EQ(command("temperature", text),
                  "temperature: degrees from -40 to 100, or normal, behind a battery, 1 or 2, or nothing")
            << text;
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 83);
    EXPECT_EQ(terminal.getInt(Supply), 0);
}

// --- What is told, and when

TEST_F(PowerTest, ASleepingDisplayIsToldNothingUntilItWakes)
{
    subscribe(false);
    EXPECT_EQ(command("battery", "50"), "");
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("battery", "2 present"), "");
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 83);
    EXPECT_EQ(battery(2, "status"), -1);
    EXPECT_EQ(terminal.getInt(Supply), 0);
    subscribe(true);
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 50);
    EXPECT_EQ(charge(1), 1);
    EXPECT_EQ(battery(2, "status"), 0);
    EXPECT_EQ(terminal.getInt(Supply), 1);
    EXPECT_EQ(terminal.getInt("ram.status.battery.update_now"), 0) << "the next wish is a change";
}

TEST_F(PowerTest, AnUpdateTellsAllOfItOnce)
{
    subscribe(false);
    EXPECT_EQ(command("battery", "50"), "");
    terminal.set("ram.status.battery.update_now", 1);
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 50);
    EXPECT_EQ(command("battery", "40"), "");
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 50);
}

TEST_F(PowerTest, EachSubscriptionIsForItsOwn)
{
    subscribe(false);
    terminal.set(Subscribe + "threshold.remaining_capacity.lumenpanel", 500);
    EXPECT_EQ(command("battery", "50"), "");
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 50);
    EXPECT_EQ(battery(1, "average_time_to_empty"), 249);
    terminal.set(Subscribe + "threshold.average_time.lumenpanel", 1);
    EXPECT_EQ(battery(1, "average_time_to_empty"), 150);
}

TEST_F(PowerTest, ValuesWrittenByHandAreTaken)
{
    terminal.setAll({{"ram.status.battery.1.relative_state_of_charge", Value::integer(40)},
                     {"ram.status.battery.1.temperature", Value::integer(61)},
                     {Supply, Value::integer(1)}});
    EXPECT_EQ(charge(1), 0) << "too hot to charge";
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 40);
    EXPECT_EQ(battery(1, "temperature"), 61);
    EXPECT_EQ(alerts().count(0x11004), 1u);
    terminal.set("ram.status.battery.1.average_time_to_empty", 65);
    EXPECT_EQ(battery(1, "average_time_to_empty"), 65);
}

class MovingPowerTest : public PowerTest {
protected:
    MovingPowerTest() : PowerTest(100, true) {}
};

TEST_F(MovingPowerTest, LeftAloneItIsPluggedInAndOut)
{
    terminal.set("ram.status.battery.1.relative_state_of_charge", 22);
    EXPECT_TRUE(becomes(Supply, 1));
    EXPECT_LE(battery(1, "relative_state_of_charge"), 22);
    terminal.set("ram.status.battery.1.relative_state_of_charge", 98);
    EXPECT_TRUE(becomes(Supply, 0));
    EXPECT_EQ(charge(1), 2);
}

TEST_F(MovingPowerTest, RunsDownToTheEndOnceSomebodyHasTakenItInHand)
{
    EXPECT_EQ(command("battery", "12"), "");
    EXPECT_TRUE(becomes(System, 4));
    EXPECT_EQ(terminal.getInt(Supply), 0);
    EXPECT_EQ(battery(1, "relative_state_of_charge"), 0);
    EXPECT_EQ(alerts().count(0x11002), 1u);
}

// --- The terminal's own temperature

TEST_F(PowerTest, EachStageOfHeatHasItsAlert)
{
    const std::pair<const char*, int32_t> stages[] = {
        {"54", 0},        {"55", 0x10201},  {"58", 0x10208}, {"60", 0x10202}, {"62", 0x10203},
        {"65", 0x10204},  {"70", 0x10205},  {"75", 0x10206}, {"70", 0x10205}, {"normal", 0},
        {"-25", 0x10207}, {"-23", 0x10207}, {"-22", 0}};
    for (const auto& [degrees, id] : stages) {
        EXPECT_EQ(command("temperature", degrees), "");
        std::map<int32_t, int32_t> standing = alerts();
        EXPECT_EQ(standing.size(), id ? 1u : 0u) << degrees;
        EXPECT_EQ(standing.count(id), id ? 1u : 0u) << degrees;
    }
}

TEST_F(PowerTest, AStageGoesOnlySomeDegreesBelow)
{
    EXPECT_EQ(command("temperature", "55"), "");
    EXPECT_EQ(command("temperature", "53"), "");
    EXPECT_EQ(alerts().count(0x10201), 1u);
    EXPECT_EQ(command("temperature", "52"), "");
    EXPECT_TRUE(alerts().empty());
}

TEST_F(PowerTest, HeatTakesTheUsbInterfaceAway)
{
    EXPECT_EQ(command("interfaces", "usb up"), "");
    ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", 1));
    EXPECT_EQ(command("temperature", "60"), "");
    EXPECT_TRUE(becomes("ram.status.interfaces.usb.enabled", 0));
    EXPECT_EQ(terminal.getInt("cfg.interfaces.usb.enabled"), 1);
    EXPECT_EQ(command("temperature", "normal"), "");
    EXPECT_TRUE(becomes("ram.status.interfaces.usb.enabled", 1));
}

TEST_F(PowerTest, HeatShutsTheTerminalDown)
{
    NumberLog log(terminal, System);
    EXPECT_EQ(command("temperature", "80"), "");
    EXPECT_EQ(alerts().count(0x10206), 1u);
    EXPECT_THAT(log.until(4), ElementsAre(4));
    EXPECT_EQ(alerts().count(0x10206), 1u) << "the display tells this, not the shutdown";
}

TEST_F(PowerTest, StartedWhileItIsTooHotItEndsAgain)
{
    EXPECT_EQ(command("temperature", "80"), "");
    ASSERT_TRUE(becomes("ram.desk.display", 0));
    NumberLog log(terminal, System);
    EXPECT_EQ(command("system", "start"), "");
    EXPECT_THAT(log.until(4), ElementsAre(0, 1, 10, 4));
}

class SlowPowerTest : public PowerTest {
protected:
    SlowPowerTest() : PowerTest(1) {}
};

TEST_F(SlowPowerTest, CooledDownInTimeItGoesOn)
{
    EXPECT_EQ(command("temperature", "80"), "");
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_EQ(command("temperature", "normal"), "");
    // Five seconds are for the shutdown; this takes longer.
    for (int32_t enabled : {1, 0, 1, 0}) {
        terminal.set("cfg.interfaces.usb.enabled", enabled);
        ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", enabled));
    }
    EXPECT_EQ(terminal.getInt(System), 10);
}

} // namespace
