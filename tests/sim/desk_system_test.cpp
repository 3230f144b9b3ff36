// The states of the system, and what is set by a word.
#include "desk_fixture.h"

#include "sim/command_actor.h"

using sim::Value;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

const char System[] = "ram.status.ext_system";
const char Mode[] = "rmcfg.sys.status.mode";
const char Pointed[] = "ram.status.pointed_status";
const char WanActive[] = "ram.wan.active";
const char Ps[] = "rmcfg.protocols.umts.ps.status";

const char DisplayRuns[] = "ram.desk.display";

class SystemTest : public DeskTest {
protected:
    using DeskTest::DeskTest;
};

class SlowSystemTest : public SystemTest {
protected:
    SlowSystemTest() : SystemTest(1) {}
};

TEST_F(SlowSystemTest, PowerUpStepByStep)
{
    EXPECT_EQ(command("system", "start"), "");
    EXPECT_EQ(terminal.getInt(System), 0);
    EXPECT_EQ(terminal.getString(Mode), "stopped");
    EXPECT_EQ(terminal.getInt(WanActive), -1);
    EXPECT_EQ(terminal.getInt(Pointed), -1);
    EXPECT_TRUE(becomes(System, 1));
    EXPECT_EQ(terminal.getString(Mode), "stopped");
    EXPECT_TRUE(becomes(Mode, "operating"));
    EXPECT_EQ(terminal.getInt(System), 1);
    EXPECT_TRUE(becomes(System, 10));
    EXPECT_EQ(terminal.getInt("rmcfg.platform.usim.status"), 1) << "the card has been read";
    EXPECT_EQ(terminal.getInt(Pointed), 0);
    EXPECT_EQ(terminal.getInt(WanActive), 1);
}

TEST_F(SystemTest, LinkAtStartFollowsTheSetting)
{
    struct Row {
        int32_t setting, present, active, activate;
    };
    const Row rows[] = {{2, 0, 1, 0}, {2, 1, 1, 0}, {1, 1, 0, 0}, {0, 0, 1, 0},
                        {0, 1, 2, 1}, {3, 1, 2, 1}, {3, 0, 0, 1}};
    for (const Row& row : rows) {
        terminal.set("cfg.wan.setting", row.setting);
        terminal.set("ram.modem.status.present", row.present);
        EXPECT_EQ(command("system", "start"), "");
        ASSERT_TRUE(becomes(System, 10));
        EXPECT_EQ(terminal.getInt(WanActive), row.active) << row.setting << row.present;
        EXPECT_EQ(terminal.getInt("ram.modem.activate"), row.activate) << row.setting << row.present;
    }
}

TEST_F(SystemTest, RebootStopsAndStarts)
{
    NumberLog log(terminal, System);
    EXPECT_EQ(command("system", "reboot"), "");
    EXPECT_THAT(log.until(10), ElementsAre(5, 0, 1, 10));
    EXPECT_EQ(terminal.getInt(Pointed), 0);
}

TEST_F(SystemTest, ShutdownStays)
{
    EXPECT_EQ(command("system", "shutdown"), "");
    EXPECT_EQ(terminal.getInt(System), 4);
    EXPECT_EQ(terminal.getString(Mode), "operating");
}

TEST_F(SystemTest, DisplayEndsWithTheTerminalAndIsStartedAnew)
{
    NumberLog status(terminal, System);
    EXPECT_EQ(command("system", "shutdown"), "");
    EXPECT_TRUE(becomes(DisplayRuns, 0));
    EXPECT_EQ(terminal.getInt(System), 4);
    for (const char* word : {"shutdown", "reboot"})
        EXPECT_EQ(command("system", word), "system: it is off: start comes first");
    EXPECT_EQ(command("system", "start"), "");
    EXPECT_FALSE(terminal.has(DisplayRuns));
    EXPECT_THAT(status.until(10), ElementsAre(4, 0, 1, 10));
}

TEST_F(SlowSystemTest, RebootStartsTheDisplayAnew)
{
    EXPECT_EQ(command("system", "reboot"), "");
    EXPECT_EQ(terminal.getInt(System), 5);
    EXPECT_FALSE(terminal.has(DisplayRuns));
    ASSERT_TRUE(becomes(DisplayRuns, 0));
    EXPECT_EQ(terminal.getString(Mode), "stopped");
    EXPECT_EQ(terminal.getInt(System), 5);
    ASSERT_TRUE(goes(DisplayRuns));
    EXPECT_EQ(terminal.getInt(System), 0);
}

TEST_F(SystemTest, ExternalSupplySwitchesOnOnlyIfTheSettingSaysSo)
{
    EXPECT_EQ(command("system", "shutdown"), "");
    ASSERT_TRUE(becomes(DisplayRuns, 0));
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("interfaces", "usb up"), ""); // longer than the start would take to begin
    ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", 1));
    EXPECT_EQ(terminal.getInt(System), 4);
    EXPECT_EQ(command("supply", "off"), "");
    terminal.set("cfg.power_up.switch_on_when_external_power", 1);
    EXPECT_EQ(terminal.getInt(System), 4);
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_TRUE(becomes(System, 10));
    EXPECT_FALSE(terminal.has(DisplayRuns));
}

TEST_F(SystemTest, ExternalSupplyDoesNothingToATerminalThatIsOn)
{
    terminal.set("cfg.power_up.switch_on_when_external_power", 1);
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("interfaces", "usb up"), "");
    ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", 1));
    EXPECT_EQ(terminal.getInt(System), 10);
}

TEST_F(SystemTest, SafeModeHasNoRadioModule)
{
    EXPECT_EQ(command("system", "safe"), "");
    EXPECT_EQ(terminal.getInt(System), 8);
    EXPECT_EQ(terminal.getString(Mode), "stopped");
}

TEST_F(SystemTest, ReadyFromAnywhere)
{
    for (const char* word : {"start", "reboot", "shutdown", "safe"}) {
        EXPECT_EQ(command("system", word), "");
        EXPECT_EQ(command("system", "ready"), "");
        EXPECT_EQ(terminal.getInt(System), 10) << word;
        EXPECT_EQ(terminal.getInt(Pointed), 2) << word;
        EXPECT_TRUE(becomes(Ps, "Attached")) << word;
        EXPECT_EQ(terminal.getInt(System), 10) << word << ": what it had begun is off";
    }
}

TEST_F(SystemTest, CommandAmongTheInitialValues)
{
    terminal.stop();
    terminal.set("ram.desk.system", "start");
    ASSERT_TRUE(terminal.start());
    EXPECT_FALSE(terminal.has("ram.desk.system"));
    EXPECT_TRUE(becomes(System, 10));
    EXPECT_EQ(terminal.getInt(Pointed), 0);
}

TEST_F(SystemTest, BadSystemCommandsAreRefused)
{
    for (const char* text : {"sleep", "start now"})
        EXPECT_EQ(command("system", text), "system: start, ready, shutdown, reboot or safe") << text;
    EXPECT_EQ(terminal.getInt(System), 10);
}

// --- What a command is

TEST_F(SystemTest, CommandIsAText)
{
    for (const Value& value : {Value::integer(3), Value::blob("start"), Value::text(""), Value::text("  ")}) {
        terminal.set("ram.desk.system", value);
        EXPECT_FALSE(terminal.has("ram.desk.system"));
        EXPECT_EQ(terminal.getString("ram.desk.error"), "system: a command is a text of one word or more");
    }
}

TEST_F(SystemTest, GoodCommandTakesTheErrorAway)
{
    EXPECT_NE(command("system", "dance"), "");
    EXPECT_EQ(command("at", "on"), "");
    EXPECT_FALSE(terminal.has("ram.desk.error"));
}

TEST_F(SystemTest, EveryFormOfTheHelpHasItsActor)
{
    for (const sim::CommandForm& form : sim::commandForms()) {
        std::string word(form.words, strcspn(form.words, " "));
        EXPECT_NE(command(form.name, "no-such-word"), "") << form.name;
        // Words in capitals or brackets stand for others.
        if (islower(word[0]) && std::string(form.words).find_first_of("NIC") == std::string::npos) {
            EXPECT_THAT(command(form.name, word), Not(HasSubstr("unknown word"))) << form.name << " " << word;
        }
    }
}

TEST_F(SystemTest, WithoutActorsACommandStays)
{
    sim::Terminal still;
    still.set("ram.desk.system", "start");
    EXPECT_TRUE(still.has("ram.desk.system"));
    EXPECT_EQ(still.getInt(System), 10);
}

// --- Settings

struct SettingRow {
    const char* command;
    const char* word;
    std::map<std::string, int32_t> values;
};

TEST_F(SystemTest, EveryWordSetsItsKeys)
{
    const std::string activate = "ram.modem.activate", present = "ram.modem.status.present";
    const std::string selection = "ram.wan.user_selection", enabled = "cfg.bonding.enabled";
    const std::string dhcp = "ram.net.eth0.dhcp_client_mode", user = "ram.net.single_user_mode";
    const std::string one = "ram.bonding.status.service.0.cnt", two = "ram.bonding.status.service.1.cnt";
    const SettingRow rows[] = {
        {"modem", "insert", {{present, 1}}},
        {"modem", "remove", {{present, 0}}},
        {"modem", "on", {{present, 1}, {activate, 1}, {selection, 2}, {WanActive, 2}}},
        {"modem", "search", {{present, 0}, {activate, 1}, {selection, 2}, {WanActive, 0}}},
        {"modem", "choose", {{"cfg.wan.setting", 1}, {activate, 0}, {selection, 0}, {WanActive, 0}}},
        {"modem", "off", {{"cfg.wan.setting", 2}, {activate, 0}, {selection, 1}, {WanActive, 1}}},
        {"wan", "unknown", {{WanActive, -1}}},
        {"wan", "none", {{WanActive, 0}}},
        {"wan", "modem", {{WanActive, 2}}},
        {"wan", "both", {{WanActive, 3}}},
        {"wan", "satellite", {{WanActive, 1}}},
        {"bonding", "master", {{enabled, 1}, {dhcp, 0}, {one, 2}, {two, 2}}},
        {"bonding", "alone", {{enabled, 1}, {dhcp, 0}, {one, 1}, {two, 1}}},
        {"bonding", "slave", {{enabled, 1}, {dhcp, 1}, {one, 1}, {two, 1}}},
        {"bonding", "off", {{enabled, 0}, {dhcp, 0}, {one, 1}, {two, 1}}},
        {"at", "on", {{user, 1}}},
        {"at", "off", {{user, 0}}},
        {"dhcp", "on", {{dhcp, 1}}},
        {"dhcp", "off", {{dhcp, 0}}},
    };
    for (const SettingRow& row : rows) {
        EXPECT_EQ(command(row.command, row.word), "");
        for (const auto& [key, value] : row.values)
            EXPECT_EQ(terminal.getInt(key), value) << row.command << " " << row.word << " " << key;
    }
    EXPECT_EQ(command("at", "perhaps"), "at: one of on, off, not perhaps");
    EXPECT_EQ(command("at", "on off"), "at: one of on, off, not on off");
}

// --- The link

class SlowLinkTest : public SystemTest {
protected:
    SlowLinkTest() : SystemTest(4) {}
};

TEST_F(SlowLinkTest, ModemThatIsWaitedForTakesOverWhenItComes)
{
    EXPECT_EQ(command("modem", "search"), "");
    EXPECT_EQ(command("modem", "insert"), "");
    EXPECT_EQ(terminal.getInt(WanActive), 0);
    EXPECT_TRUE(becomes(WanActive, 2));
    EXPECT_EQ(command("modem", "remove"), "");
    EXPECT_TRUE(becomes(WanActive, 0));
}

TEST_F(SystemTest, UserSelectsALinkOnTheWeb)
{
    EXPECT_EQ(command("modem", "insert"), "");
    EXPECT_EQ(command("modem", "choose"), "");
    EXPECT_EQ(terminal.getInt(WanActive), 0);
    EXPECT_EQ(command("wan", "select modem"), "");
    EXPECT_EQ(terminal.getInt("ram.wan.user_selection"), 2);
    EXPECT_EQ(terminal.getInt("ram.modem.activate"), 1);
    EXPECT_TRUE(becomes(WanActive, 2));
    EXPECT_EQ(command("wan", "select satellite"), "");
    EXPECT_EQ(terminal.getInt("ram.modem.activate"), 0);
    EXPECT_TRUE(becomes(WanActive, 1));
    EXPECT_THAT(command("wan", "select phone"),
                HasSubstr("select satellite, select modem, not select phone"));
}

TEST_F(SystemTest, SatelliteStaysWithoutAReasonToLeaveIt)
{
    EXPECT_EQ(command("modem", "insert"), "");
    EXPECT_EQ(command("interfaces", "usb up"), "");
    ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", 1));
    EXPECT_EQ(command("modem", "remove"), "");
    EXPECT_EQ(terminal.getInt(WanActive), 1);
}

} // namespace
