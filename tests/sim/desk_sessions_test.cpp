// Sessions that nobody starts on the display: the automatic one, and those of other user groups.
#include "desk_fixture.h"

#include <ctime>

using sim::Value;
using testing::HasSubstr;

namespace {

const char Automatic[] = "cfg.net.user_groups.0.automatic_activation";
const char Activated[] = "ram.net.user_groups.0.activated";
const char CurrentBundle[] = "ram.net.user_groups.0.current_bundle";
const std::string Sessions = "ram.status.ongoing_data_sessions.";
const std::string OwnStatus = Sessions + "0.status";
const std::string Reason = Sessions + "0.reason";
const char Ps[] = "rmcfg.protocols.umts.ps.status";

class SessionsTest : public DeskTest {
protected:
    using DeskTest::DeskTest;

    // Longer than the automatic start would have taken.
    void waitABit()
    {
        for (int32_t enabled : {1, 0, 1, 0, 1}) {
            terminal.set("cfg.interfaces.usb.enabled", enabled);
            ASSERT_TRUE(becomes("ram.status.interfaces.usb.enabled", enabled));
        }
    }
};

class SlowSessionsTest : public SessionsTest {
protected:
    SlowSessionsTest() : SessionsTest(2) {}
};

TEST_F(SessionsTest, BackgroundConnectionComesUpByItself)
{
    terminal.set(Automatic, 1);
    ASSERT_TRUE(becomes(OwnStatus, 2));
    EXPECT_EQ(terminal.getInt(CurrentBundle), 0) << "the stored bundle of one background connection";
    EXPECT_EQ(terminal.getInt(Sessions + "0.context.0.traffic_class"), 3);
    EXPECT_EQ(terminal.getInt("ram.net.pdp_contexts.0.0.entry_owner"), 1);
    EXPECT_EQ(terminal.getInt(Reason), 0);
}

TEST_F(SlowSessionsTest, ItWaitsForAMoment)
{
    terminal.set(Automatic, 1);
    EXPECT_FALSE(terminal.has(OwnStatus));
    EXPECT_TRUE(becomes(OwnStatus, 1));
}

TEST_F(SessionsTest, AStopDoesNotLast)
{
    terminal.set(Automatic, 1);
    ASSERT_TRUE(becomes(OwnStatus, 2));
    terminal.set(Activated, 0);
    terminal.set(CurrentBundle, -1);
    ASSERT_TRUE(goes(OwnStatus));
    EXPECT_TRUE(becomes(OwnStatus, 2));
}

TEST_F(SessionsTest, SwitchedOffItStaysDown)
{
    terminal.set(Automatic, 1);
    ASSERT_TRUE(becomes(OwnStatus, 2));
    terminal.set(Automatic, 0);
    EXPECT_EQ(terminal.getInt(OwnStatus), 2) << "what runs goes on";
    terminal.set(Activated, 0);
    ASSERT_TRUE(goes(OwnStatus));
    waitABit();
    EXPECT_FALSE(terminal.has(OwnStatus));
}

TEST_F(SessionsTest, ItComesBackWithTheNetwork)
{
    EXPECT_EQ(command("signal", "20"), "");
    ASSERT_TRUE(becomes(Ps, "Idle"));
    terminal.set(Automatic, 1);
    waitABit();
    EXPECT_FALSE(terminal.has(OwnStatus));
    EXPECT_EQ(command("signal", "50"), "");
    ASSERT_TRUE(becomes(OwnStatus, 2));
    EXPECT_EQ(command("signal", "20"), "");
    EXPECT_TRUE(becomes(Reason, 4));
    EXPECT_EQ(command("signal", "50"), "");
    EXPECT_TRUE(becomes(OwnStatus, 2));
}

TEST_F(SessionsTest, NotOnAnotherLinkNorForSomebodyElse)
{
    EXPECT_EQ(command("wan", "modem"), "");
    terminal.set(Automatic, 1);
    waitABit();
    EXPECT_FALSE(terminal.has(OwnStatus));
    EXPECT_EQ(command("at", "on"), "");
    EXPECT_EQ(command("wan", "satellite"), "");
    waitABit();
    EXPECT_FALSE(terminal.has(OwnStatus));
    EXPECT_EQ(command("at", "off"), "");
    EXPECT_TRUE(becomes(OwnStatus, 2));
}

TEST_F(SessionsTest, AFailedStartIsToldAndTriedAgain)
{
    terminal.set("ram.net.eth0.dhcp_client_mode", 1);
    terminal.set("cfg.bonding.enabled", 1); // a slave may not
    terminal.set(Automatic, 1);
    ASSERT_TRUE(becomes(Reason, 2));
    terminal.set("cfg.bonding.enabled", 0);
    EXPECT_TRUE(becomes(OwnStatus, 2));
}

TEST_F(SessionsTest, ItEndsWithTheLanAndComesBackWithIt)
{
    terminal.set(Automatic, 1);
    ASSERT_TRUE(becomes(OwnStatus, 2));
    EXPECT_EQ(command("interfaces", "lan down"), "");
    ASSERT_TRUE(becomes(Reason, 7));
    waitABit();
    EXPECT_FALSE(terminal.has(OwnStatus));
    EXPECT_EQ(command("interfaces", "lan up"), "");
    EXPECT_TRUE(becomes(OwnStatus, 2));
}

TEST_F(SessionsTest, SettingFromTheStoreActsAtTheStart)
{
    terminal.stop();
    terminal.set(Automatic, 1);
    ASSERT_TRUE(terminal.start());
    EXPECT_TRUE(becomes(OwnStatus, 2));
}

// --- Other user groups

TEST_F(SlowSessionsTest, SessionOfAGroupConnectsAndRuns)
{
    EXPECT_EQ(command("session", "3 64"), "");
    EXPECT_EQ(terminal.getInt(Sessions + "3.status"), 1);
    EXPECT_FALSE(terminal.has(Sessions + "3.time"));
    ASSERT_TRUE(becomes(Sessions + "3.status", 2));
    EXPECT_GE(terminal.getInt(Sessions + "3.time"), static_cast<int32_t>(time(nullptr)) - 60);
    EXPECT_EQ(terminal.getInt(Sessions + "3.bytes_in_out_kb"), 0);
    for (const char* field : {"bw_up", "bw_down", "max_bw_up", "max_bw_down"})
        EXPECT_EQ(terminal.getInt(Sessions + "3.context.0." + field), 64) << field;
    EXPECT_EQ(terminal.getInt(Sessions + "3.context.0.traffic_class"), 1);
    EXPECT_EQ(command("session", "3 stop"), "");
    EXPECT_TRUE(terminal.list(Sessions + "3.").empty());
    EXPECT_EQ(terminal.getInt(Reason), 0) << "the display's own group hears nothing of it";
}

TEST_F(SessionsTest, GroupsAreForThemselves)
{
    EXPECT_EQ(command("session", "1 standard"), "");
    EXPECT_EQ(command("session", "9 896"), "");
    ASSERT_TRUE(becomes(Sessions + "1.status", 2));
    ASSERT_TRUE(becomes(Sessions + "9.status", 2));
    EXPECT_EQ(terminal.getInt(Sessions + "1.context.0.traffic_class"), 3);
    EXPECT_EQ(command("session", "1 stop"), "");
    EXPECT_EQ(terminal.getInt(Sessions + "9.status"), 2);
    EXPECT_EQ(command("session", "9 64"), "session: the group has a session already");
    EXPECT_EQ(command("session", "1 stop"), "session: the group has no session");
}

TEST_F(SlowSessionsTest, StoppedWhileItConnects)
{
    EXPECT_EQ(command("session", "1 64"), "");
    EXPECT_EQ(command("session", "1 stop"), "");
    EXPECT_EQ(command("session", "2 64"), "");
    EXPECT_TRUE(becomes(Sessions + "2.status", 2));
    EXPECT_TRUE(terminal.list(Sessions + "1.").empty());
}

TEST_F(SessionsTest, GroupsLoseTheNetworkToo)
{
    EXPECT_EQ(command("session", "1 64"), "");
    ASSERT_TRUE(becomes(Sessions + "1.status", 2));
    EXPECT_EQ(command("signal", "20"), "");
    EXPECT_TRUE(becomes(Sessions + "1.reason", 4));
    EXPECT_FALSE(terminal.has(Sessions + "1.status"));
    EXPECT_EQ(command("session", "1 64"), "session: there is no network for it");
}

TEST_F(SessionsTest, SessionsOfAnEarlierLifeAreRemoved)
{
    EXPECT_EQ(command("session", "1 64"), "");
    ASSERT_TRUE(becomes(Sessions + "1.status", 2));
    terminal.stop();
    ASSERT_TRUE(terminal.start());
    EXPECT_TRUE(terminal.list(Sessions + "1.").empty());
}

TEST_F(SessionsTest, BadSessionsAreRefused)
{
    for (const char* text : {"1", "1 64 64"})
        EXPECT_EQ(command("session", text), "session: a user group and standard, a rate or stop") << text;
    for (const char* group : {"0", "10", "x"})
        EXPECT_EQ(command("session", group + std::string(" 64")),
                  std::string("session: a user group is a number from 1 to 9, not ") + group);
    for (const char* rate : {"0", "897", "fast"})
        EXPECT_EQ(command("session", std::string("1 ") + rate),
                  std::string("session: standard, a rate from 1 to 896 kbps or stop, not ") + rate);
}

class MovingSessionsTest : public SessionsTest {
protected:
    MovingSessionsTest() : SessionsTest(100, true) {}
};

TEST_F(MovingSessionsTest, AmountOfAGroupGrows)
{
    EXPECT_EQ(command("session", "1 standard"), "");
    ASSERT_TRUE(becomes(Sessions + "1.status", 2));
    RawClient watcher(terminal.address());
    watcher.filter("config.change.ram");
    while (terminal.getInt(Sessions + "1.bytes_in_out_kb").value_or(0) == 0)
        ASSERT_TRUE(watcher.readFrame());
    EXPECT_EQ(command("session", "1 stop"), "");
    EXPECT_TRUE(terminal.list(Sessions + "1.").empty());
}

} // namespace
