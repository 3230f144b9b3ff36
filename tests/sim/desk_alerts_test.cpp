// The alert log and software updates.
#include "desk_fixture.h"

#include <climits>
#include <ctime>

using sim::Value;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string Log = "ram.log.alert.";
const char EntryCount[] = "ram.log.alert.latest.entry_count";

class AlertsTest : public DeskTest {
protected:
    using DeskTest::DeskTest;

    std::optional<int32_t> field(int slot, const std::string& name)
    {
        return terminal.getInt(Log + std::to_string(slot) + "." + name);
    }
    int32_t count() { return terminal.getInt(EntryCount).value_or(-1); }
    // Keys of the log beside the count.
    size_t keys() { return terminal.list(Log).size() - 1; }
};

TEST_F(AlertsTest, AlertHasAllItsFields)
{
    int32_t before = static_cast<int32_t>(time(nullptr));
    EXPECT_EQ(command("alert", "add 0x1120 warning"), "");
    EXPECT_EQ(field(0, "identifier"), 0x1120);
    EXPECT_EQ(field(0, "severity"), 1);
    EXPECT_EQ(field(0, "sub_id"), 0);
    EXPECT_EQ(field(0, "state"), 2);
    EXPECT_EQ(field(0, "entry"), 1);
    EXPECT_GE(field(0, "time"), before);
    EXPECT_EQ(terminal.getString(Log + "0.shorttext"), "");
    EXPECT_EQ(count(), 1);
}

TEST_F(AlertsTest, EveryFieldCanBeGiven)
{
    EXPECT_EQ(command("alert", "add 4711 fatal sub_id=7 state=-1 time=2019686401 Too  hot for =5 words"), "");
    EXPECT_EQ(field(0, "identifier"), 4711);
    EXPECT_EQ(field(0, "severity"), 3);
    EXPECT_EQ(field(0, "sub_id"), 7);
    EXPECT_EQ(field(0, "state"), -1);
    EXPECT_EQ(field(0, "time"), 2019686401);
    EXPECT_EQ(terminal.getString(Log + "0.shorttext"), "Too hot for =5 words");
}

TEST_F(AlertsTest, SeveritiesByNameAndNumber)
{
    const std::pair<const char*, int32_t> severities[] = {{"info", 0},  {"warning", 1}, {"error", 2},
                                                          {"fatal", 3}, {"4", 4},       {"-1", -1}};
    int slot = 0;
    for (const auto& [word, value] : severities) {
        EXPECT_EQ(command("alert", "add " + std::to_string(slot + 1) + " " + word), "");
        EXPECT_EQ(field(slot++, "severity"), value) << word;
    }
}

TEST_F(AlertsTest, LargestIdKeepsItsBits)
{
    EXPECT_EQ(command("alert", "add 0xffffffff info"), "");
    EXPECT_EQ(field(0, "identifier"), -1);
    EXPECT_EQ(command("alert", "add 0x100000000 info"),
              "alert: an id is a number, as 0x10205, not 0x100000000");
}

TEST_F(AlertsTest, TheSameAlertAgainTakesThePlaceOfTheOld)
{
    EXPECT_EQ(command("alert", "add 0x1120 warning first"), "");
    EXPECT_EQ(command("alert", "add 0x1120 warning sub_id=1 other"), "");
    EXPECT_EQ(command("alert", "add 0x1120 fatal state=1 second"), "");
    EXPECT_EQ(field(0, "severity"), 3);
    EXPECT_EQ(field(0, "state"), 1);
    EXPECT_EQ(terminal.getString(Log + "0.shorttext"), "second");
    EXPECT_EQ(terminal.getString(Log + "1.shorttext"), "other");
    EXPECT_FALSE(field(2, "identifier"));
    EXPECT_EQ(count(), 3);
}

TEST_F(AlertsTest, ClearedPlaceIsTakenAgain)
{
    for (const char* id : {"1", "2", "3"})
        EXPECT_EQ(command("alert", std::string("add ") + id + " info"), "");
    EXPECT_EQ(command("alert", "clear 2"), "");
    EXPECT_FALSE(field(1, "identifier"));
    EXPECT_EQ(count(), 4) << "the display reads the log when this changes";
    EXPECT_EQ(command("alert", "add 4 info"), "");
    EXPECT_EQ(field(1, "identifier"), 4);
    EXPECT_EQ(command("alert", "clear"), "");
    EXPECT_EQ(keys(), 0u);
    EXPECT_EQ(count(), 6);
}

TEST_F(AlertsTest, ClearTakesEverySubIdOfTheId)
{
    EXPECT_EQ(command("alert", "add 1 info sub_id=1"), "");
    EXPECT_EQ(command("alert", "add 1 info sub_id=2"), "");
    EXPECT_EQ(command("alert", "clear 1"), "");
    EXPECT_EQ(keys(), 0u);
    EXPECT_EQ(command("alert", "clear 1"), "alert: no such alert");
    EXPECT_EQ(command("alert", "clear"), "") << "an empty log is clear";
}

TEST_F(AlertsTest, ClearCanTakeOneSubId)
{
    EXPECT_EQ(command("alert", "add 1 info sub_id=1"), "");
    EXPECT_EQ(command("alert", "add 1 info sub_id=2"), "");
    EXPECT_EQ(command("alert", "clear 1 sub_id=1"), "");
    EXPECT_FALSE(field(0, "identifier"));
    EXPECT_EQ(field(1, "sub_id"), 2);
    EXPECT_EQ(command("alert", "clear 1 sub_id=1"), "alert: no such alert");
}

TEST_F(AlertsTest, AlertComesInOneChange)
{
    RawClient watcher(terminal.address());
    watcher.filter("config.change.ram.log");
    watcher.filter("config.change.ram");
    ASSERT_TRUE(watcher.sync());
    EXPECT_EQ(command("alert", "add 0x1120 warning Hot"), "");
    std::string all;
    while (auto frame = watcher.readFrame()) {
        all = frame->data;
        if (all.find(EntryCount) != std::string::npos)
            break;
    }
    for (const char* name : {"identifier", "severity", "state", "sub_id", "time", "shorttext"})
        EXPECT_THAT(all, HasSubstr(Log + "0." + name));
}

TEST_F(AlertsTest, LogHasAnEnd)
{
    for (int id = 0; id < 500; id++)
        ASSERT_EQ(command("alert", "add " + std::to_string(id) + " info"), "");
    EXPECT_EQ(command("alert", "add 500 info"), "alert: the log is full");
    EXPECT_EQ(command("alert", "add 499 error"), "") << "one that is there has its place";
    EXPECT_EQ(count(), 501);
}

TEST_F(AlertsTest, BadAlertsAreRefused)
{
    const std::pair<const char*, const char*> bad[] = {
        {"add", "an alert has an id and a severity"},
        {"add 5", "an alert has an id and a severity"},
        {"add x info", "an id is a number, as 0x10205, not x"},
        {"add 5 bad", "a severity is info, warning, error or fatal, not bad"},
        {"clear x", "an id is a number, as 0x10205, not x"},
        {"clear 1 2", "a sub-id is told as sub_id=2, not 2"},
        {"clear 1 sub_id=x", "a sub-id is told as sub_id=2, not sub_id=x"},
        {"clear 1 sub_id=1 2", "add ID SEVERITY [FIELD=N ...] [TEXT], or clear [ID [sub_id=N]]"},
        {"show", "add ID SEVERITY [FIELD=N ...] [TEXT], or clear [ID [sub_id=N]]"},
    };
    for (const auto& [text, reason] : bad)
        EXPECT_EQ(command("alert", text), std::string("alert: ") + reason) << text;
    EXPECT_EQ(keys(), 0u);
    EXPECT_EQ(count(), 0);
}

// --- Software updates

const char Active[] = "ram.status.sw_update.active";
const char Progress[] = "ram.status.sw_update.progress";
const char Result[] = "cfg.status.sw_update.error";
const char UploadState[] = "ram.status.sw_update.file_upload.state";
const char System[] = "ram.status.ext_system";

// Slow enough to look at one that runs.
class UpdateTest : public AlertsTest {
protected:
    UpdateTest() : AlertsTest(10) {}
};

TEST_F(UpdateTest, UpdateRunsThroughToTheReboot)
{
    NumberLog system(terminal, System);
    NumberLog progress(terminal, Progress);
    EXPECT_EQ(command("update", "start"), "");
    EXPECT_EQ(terminal.getInt(Active), 1);
    EXPECT_EQ(terminal.getInt(UploadState), 1);
    EXPECT_EQ(terminal.getString("rmcfg.sys.status.mode"), "stopped");
    EXPECT_EQ(command("update", "start"), "update: an update runs already");
    EXPECT_THAT(progress.until(100),
                ElementsAre(5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 95, 100));
    EXPECT_THAT(system.until(10), ElementsAre(2, 5, 0, 1, 10));
    EXPECT_EQ(terminal.getInt(Active), 0);
    EXPECT_EQ(terminal.getInt(Progress), 0);
    EXPECT_EQ(terminal.getInt(Result), 0);
    EXPECT_EQ(terminal.getInt(UploadState), 0);
    EXPECT_EQ(keys(), 0u);
    EXPECT_EQ(terminal.getInt("ram.status.pointed_status"), 0) << "a restarted terminal is pointed anew";
}

TEST_F(UpdateTest, AntennaUpdateLeavesTheSystemAlone)
{
    EXPECT_EQ(command("update", "antenna"), "");
    EXPECT_EQ(terminal.getInt(Active), 2);
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_TRUE(becomes(Active, 0));
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_EQ(terminal.getInt(Result), 0);
}

TEST_F(UpdateTest, BadResultStandsUntilItIsConfirmed)
{
    EXPECT_EQ(command("alert", "add 0x1120 warning"), "");
    EXPECT_EQ(command("update", "fail 0x10307"), "");
    EXPECT_TRUE(becomes(Result, 7));
    EXPECT_EQ(terminal.getInt(Active), 0);
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_EQ(terminal.getInt("ram.status.sw_update.file_upload.result"), 7);
    EXPECT_EQ(terminal.getInt(UploadState), 2);
    EXPECT_TRUE(becomes(Log + "1.identifier", 0x10307));
    EXPECT_EQ(field(1, "severity"), 1);
    terminal.set(Result, 0); // the display, once the user has seen it
    EXPECT_FALSE(field(1, "identifier"));
    EXPECT_EQ(field(0, "identifier"), 0x1120);
}

TEST_F(UpdateTest, NextUpdateTakesTheOldResultBack)
{
    EXPECT_EQ(command("update", "fail 0x10309"), "");
    EXPECT_TRUE(becomes(Log + "0.identifier", 0x10309));
    EXPECT_EQ(command("update", "antenna"), "");
    EXPECT_EQ(field(0, "identifier"), 0x10300) << "an update runs";
    EXPECT_FALSE(field(1, "identifier"));
    EXPECT_TRUE(becomes(Active, 0));
    EXPECT_EQ(keys(), 0u);
}

TEST_F(UpdateTest, ResultOutlastsTheRun)
{
    EXPECT_EQ(command("update", "fail 0x10307"), "");
    EXPECT_TRUE(becomes(Log + "0.identifier", 0x10307));
    terminal.stop();
    terminal.erasePrefix("ram.log.alert.0");
    ASSERT_TRUE(terminal.start());
    EXPECT_EQ(field(0, "identifier"), 0x10307);
    terminal.set(Result, 0);
    EXPECT_FALSE(field(0, "identifier"));
}

TEST_F(UpdateTest, UpdateCanBeCancelled)
{
    EXPECT_EQ(command("update", "cancel"), "update: no update runs");
    EXPECT_EQ(command("update", "start"), "");
    EXPECT_EQ(command("update", "cancel"), "");
    EXPECT_EQ(terminal.getInt(Active), 0);
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_EQ(terminal.getInt(Result), 0);
}

TEST_F(UpdateTest, UpdateThatSomebodyEndsByHandIsOver)
{
    EXPECT_EQ(command("update", "antenna"), "");
    terminal.set(Active, 0);
    EXPECT_EQ(command("update", "antenna"), "");
}

TEST_F(UpdateTest, ARunningUpdateHasItsEvent)
{
    EXPECT_EQ(command("update", "antenna"), "");
    EXPECT_EQ(field(0, "identifier"), 0x10300);
    EXPECT_EQ(command("update", "cancel"), "");
    EXPECT_EQ(keys(), 0u);
}

TEST_F(UpdateTest, NoUpdateOnALowBattery)
{
    EXPECT_EQ(command("battery", "29"), "");
    EXPECT_EQ(command("update", "start"), "");
    EXPECT_EQ(terminal.getInt(Active), 0);
    EXPECT_EQ(terminal.getInt(System), 10);
    EXPECT_EQ(terminal.getInt(Result), 4);
    EXPECT_EQ(field(0, "identifier"), 0x10304);
    terminal.set(Result, 0);
    EXPECT_EQ(keys(), 0u);
    EXPECT_EQ(command("supply", "on"), "");
    EXPECT_EQ(command("update", "antenna"), "");
    EXPECT_EQ(terminal.getInt(Active), 2);
}

TEST_F(UpdateTest, PowerThatGoesInAnUpdateRollsItBack)
{
    EXPECT_EQ(command("update", "start"), "");
    EXPECT_EQ(command("system", "start"), "");
    EXPECT_EQ(terminal.getInt(Active), 0);
    EXPECT_EQ(terminal.getInt(Result), 9);
    EXPECT_TRUE(becomes(System, 10));
    EXPECT_EQ(field(0, "identifier"), 0x10309);
}

TEST_F(UpdateTest, NoUpdateOfATerminalThatIsNotUp)
{
    EXPECT_EQ(command("system", "safe"), "");
    EXPECT_EQ(command("update", "start"), "update: the system is not up");
    EXPECT_EQ(terminal.getInt(Active), 0);
}

TEST_F(UpdateTest, BadUpdateCommandsAreRefused)
{
    for (const char* text : {"fail", "fail 0x10300", "fail 0x10318", "fail x", "fail 0x10307 5"})
        EXPECT_EQ(command("update", text), "update: the event of a result, 0x10301 to 0x10317") << text;
    for (const char* text : {"go", "start now"})
        EXPECT_EQ(command("update", text), "update: start, antenna, fail and an event, or cancel") << text;
    EXPECT_EQ(terminal.getInt(Active), 0);
}

} // namespace
