// The radio module on the desk: pointing, signal, registration, and the SIM with its PIN.
#include "desk_fixture.h"

using sim::Value;
using testing::HasSubstr;

namespace {

const char Pointed[] = "ram.status.pointed_status";
const char Plmn[] = "rmcfg.protocols.umts.plmn.status";
const char Ps[] = "rmcfg.protocols.umts.ps.status";
const char Mode[] = "rmcfg.sys.status.mode";
const char Strength[] = "ram.status.signal_strength";
const char Bars[] = "ram.status.signal_strength_norm";
const char Usim[] = "rmcfg.platform.usim.status";
const char PinStatus[] = "rmcfg.platform.usim.pin.status";
const char Pin[] = "ram.usim.pin";
const char Retries[] = "ram.desk.sim.retries";

class RadioTest : public DeskTest {
protected:
    using DeskTest::DeskTest;
    std::string text(const char* key) { return terminal.getString(key).value_or("?"); }
};

class SlowRadioTest : public RadioTest {
protected:
    SlowRadioTest() : RadioTest(1) {}
};

TEST_F(RadioTest, DeskStartsRegistered)
{
    EXPECT_EQ(terminal.getInt(Pointed), 2);
    EXPECT_EQ(text(PinStatus), "Valid");
    EXPECT_EQ(text(Ps), "Attached");
}

// --- Pointing and registration

TEST_F(RadioTest, PointingIsImpossibleWithoutTheRadioModule)
{
    terminal.set(Mode, "stopped");
    EXPECT_EQ(terminal.getInt(Pointed), -1);
    EXPECT_EQ(text(Plmn), "n/a");
    EXPECT_EQ(text(Ps), "N/A");
    EXPECT_EQ(terminal.getInt(Usim), -1);
    point("start");
    EXPECT_EQ(terminal.getInt(Pointed), -1);
}

TEST_F(RadioTest, StartedRadioModuleReadsTheCardAndIsNotPointed)
{
    terminal.set(Mode, "stopped");
    terminal.set(Mode, "operating");
    EXPECT_EQ(terminal.getInt(Pointed), 0);
    EXPECT_TRUE(becomes(Usim, 1));
    EXPECT_EQ(text(PinStatus), "Valid");
    EXPECT_EQ(text(Plmn), "Scanning");
    point("start");
    point("stop");
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

TEST_F(SlowRadioTest, AntennaTakesAMomentForEachCommand)
{
    RawClient client(terminal.address());
    for (const char* text : {"start", "stop", "start", "cancel"})
        client.sendSignal("bp_ctrl.pointing", std::string(text) + '\0');
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(terminal.getInt(Pointed), 2);
    for (int32_t status : {1, 2, 1, 0})
        EXPECT_TRUE(becomes(Pointed, status));
}

TEST_F(RadioTest, PointingIsRefusedAndPeopleAreToldWhy)
{
    const char Error[] = "ram.desk.error";
    point("dance");
    EXPECT_TRUE(becomes(Error, "pointing: start, stop or cancel, not dance"));
    point("stop");
    EXPECT_TRUE(becomes(Error, "pointing: nobody is pointing"));
    terminal.set("ram.status.sw_update.active", 2);
    point("start");
    EXPECT_TRUE(becomes(Error, "pointing: a software update runs"));
    terminal.set("ram.status.sw_update.active", 0);
    terminal.set("ram.status.position.fix", 0);
    point("start");
    EXPECT_TRUE(becomes(Error, "pointing: the position is not known yet"));
    terminal.set("ram.status.ext_system", 9);
    point("start");
    EXPECT_TRUE(becomes(Error, "pointing: the system is not up"));
    terminal.set(Mode, "stopped");
    point("start");
    EXPECT_TRUE(becomes(Error, "pointing: the radio module does not operate"));
    terminal.set(Mode, "operating");
    terminal.set("ram.status.ext_system", 10);
    terminal.set("ram.status.position.fix", 2);
    point("start");
    EXPECT_TRUE(becomes(Pointed, 1));
    EXPECT_FALSE(terminal.has(Error));
}

TEST_F(RadioTest, ManyPointingCommandsAreBounded)
{
    RawClient client(terminal.address());
    for (int count = 0; count < 1000; count++)
        client.sendSignal("bp_ctrl.pointing", std::string("start") + '\0');
    ASSERT_TRUE(client.sync());
    EXPECT_TRUE(becomes(Pointed, 1));
}

TEST_F(RadioTest, ToneSoundsWhilePointingIfItIsSet)
{
    const char Sound[] = "ram.desk.sound";
    point("start");
    EXPECT_TRUE(becomes(Sound, 1));
    terminal.set("cfg.audio_indication.pointing", 0);
    EXPECT_FALSE(terminal.has(Sound));
    terminal.set("cfg.audio_indication.pointing", 1);
    EXPECT_EQ(terminal.getInt(Sound), 1);
    point("stop");
    EXPECT_TRUE(goes(Sound));
}

TEST_F(RadioTest, RadioModuleThatIsOffReceivesNothing)
{
    terminal.set(Mode, "stopped");
    EXPECT_EQ(terminal.getInt(Strength), 0);
    EXPECT_EQ(terminal.getInt(Bars), 0);
    EXPECT_EQ(command("signal", "45.6"), "");
    EXPECT_EQ(terminal.getInt(Strength), 0);
    terminal.set(Mode, "operating");
    EXPECT_EQ(terminal.getInt(Strength), 456);
    EXPECT_EQ(terminal.getInt(Bars), 2);
}

TEST_F(RadioTest, WishForAnUpdateIsTaken)
{
    for (int round = 0; round < 2; round++) {
        terminal.set("ram.status.signal_strength.update_now", 1);
        EXPECT_EQ(terminal.getInt("ram.status.signal_strength.update_now"), 0);
    }
}

TEST_F(SlowRadioTest, RegistrationTakesItsTime)
{
    terminal.set(Pointed, 0);
    EXPECT_EQ(text(Plmn), "Scanning");
    EXPECT_EQ(text(Ps), "Idle");
    terminal.set(Pointed, 2);
    EXPECT_EQ(text(Plmn), "Searching");
    EXPECT_TRUE(becomes(Ps, "Attaching"));
    EXPECT_EQ(text(Plmn), "Selected");
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

TEST_F(RadioTest, NoRegistrationWhileThePinIsMissing)
{
    EXPECT_EQ(command("sim", "pin"), "");
    EXPECT_EQ(text(Ps), "Idle");
    EXPECT_EQ(text(Plmn), "Not registered");
    terminal.set(Pin, "1234");
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

// --- Signal

TEST_F(RadioTest, SignalIsSetAndTurned)
{
    EXPECT_EQ(command("signal", "45.6"), "");
    EXPECT_EQ(terminal.getInt(Strength), 456);
    EXPECT_EQ(terminal.getInt(Bars), 2);
    EXPECT_EQ(command("signal", "up"), "");
    EXPECT_EQ(terminal.getInt(Strength), 476);
    EXPECT_EQ(command("signal", "down"), "");
    EXPECT_EQ(command("signal", "down"), "");
    EXPECT_EQ(terminal.getInt(Strength), 436);
}

TEST_F(RadioTest, BarsGoFromNoneToFour)
{
    const std::pair<const char*, int32_t> levels[] = {{"0", 0},  {"31.9", 0}, {"32", 0}, {"37", 1},
                                                      {"42", 2}, {"47", 3},   {"55", 4}, {"70", 4}};
    for (const auto& [level, bars] : levels) {
        EXPECT_EQ(command("signal", level), "");
        EXPECT_EQ(terminal.getInt(Bars), bars) << level;
    }
}

TEST_F(RadioTest, SignalStopsAtItsEnds)
{
    EXPECT_EQ(command("signal", "70"), "");
    EXPECT_EQ(command("signal", "up"), "");
    EXPECT_EQ(terminal.getInt(Strength), 700);
    EXPECT_EQ(command("signal", "0.4"), "");
    EXPECT_EQ(command("signal", "down"), "");
    EXPECT_EQ(terminal.getInt(Strength), 0);
}

TEST_F(RadioTest, BadLevelsAreRefused)
{
    for (const char* level : {"70.1", "-1", "x", "4.5.6", "1e1", "nan", "0x20", "45 46"})
        EXPECT_THAT(command("signal", level), HasSubstr("signal: a level")) << level;
    EXPECT_EQ(terminal.getInt(Strength), 512);
}

TEST_F(RadioTest, NetworkIsLostWithTheSignalAndComesBackWithIt)
{
    EXPECT_EQ(command("signal", "31.9"), "");
    EXPECT_TRUE(becomes(Plmn, "Searching"));
    EXPECT_EQ(text(Ps), "Idle");
    EXPECT_EQ(command("signal", "32"), "");
    EXPECT_TRUE(becomes(Ps, "Attached"));
    EXPECT_EQ(command("signal", "10"), "");
    EXPECT_TRUE(becomes(Ps, "Idle"));
    EXPECT_EQ(command("signal", "auto"), "");
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

TEST_F(SlowRadioTest, AShortDipDoesNoHarm)
{
    EXPECT_EQ(command("signal", "20"), "");
    EXPECT_EQ(text(Ps), "Attached");
    EXPECT_EQ(command("signal", "40"), "");
    // Longer than the loss would have taken.
    terminal.set("cfg.interfaces.usb.enabled", 1);
    EXPECT_TRUE(becomes("ram.status.interfaces.usb.enabled", 1));
    EXPECT_EQ(text(Ps), "Attached");
    EXPECT_EQ(text(Plmn), "Selected");
}

TEST_F(SlowRadioTest, ADipWhileRegisteringBeginsAnew)
{
    terminal.set(Pointed, 0);
    terminal.set(Pointed, 2);
    EXPECT_TRUE(becomes(Ps, "Attaching"));
    EXPECT_EQ(command("signal", "20"), "");
    EXPECT_EQ(command("signal", "40"), "");
    EXPECT_EQ(text(Plmn), "Searching");
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

class MovingRadioTest : public RadioTest {
protected:
    MovingRadioTest() : RadioTest(100, true) {}
};

TEST_F(MovingRadioTest, SignalWandersAroundItsLevel)
{
    RawClient watcher(terminal.address());
    watcher.filter("config.change.ram");
    EXPECT_EQ(command("signal", "40"), "");
    for (int change = 0; change < 20; change++) {
        ASSERT_TRUE(watcher.readFrame());
        EXPECT_NEAR(terminal.getInt(Strength).value_or(0), 400, 10);
    }
    EXPECT_EQ(command("signal", "25"), "");
    for (int change = 0; change < 20; change++) {
        ASSERT_TRUE(watcher.readFrame());
        EXPECT_LE(terminal.getInt(Strength), 250) << "what is lost does not come back by itself";
    }
}

// --- SIM

TEST_F(RadioTest, RightPinIsAccepted)
{
    EXPECT_EQ(command("sim", "pin 4711"), "");
    EXPECT_EQ(text(PinStatus), "Needed");
    terminal.set(Pin, "4711");
    EXPECT_TRUE(becomes(PinStatus, "Valid"));
    EXPECT_EQ(terminal.getInt(Usim), 1);
}

TEST_F(RadioTest, WrongPinsCountDownToBlocked)
{
    EXPECT_EQ(command("sim", "pin"), "");
    EXPECT_EQ(terminal.getInt(Retries), 3);
    terminal.set(Pin, "0000");
    EXPECT_TRUE(becomes(Retries, 2));
    EXPECT_EQ(text(PinStatus), "Needed");
    terminal.set(Pin, "0000"); // the same again counts as well
    EXPECT_TRUE(becomes(Retries, 1));
    EXPECT_EQ(text(PinStatus), "Needed");
    terminal.set(Pin, "9999");
    EXPECT_TRUE(becomes(Retries, 0));
    EXPECT_EQ(text(PinStatus), "Blocked");
    terminal.set(Pin, "1234"); // too late
    EXPECT_TRUE(goes(Pin));
    EXPECT_EQ(command("sim", "unblock"), "");
    EXPECT_EQ(text(PinStatus), "Valid");
    EXPECT_EQ(terminal.getInt(Retries), 3);
}

TEST_F(RadioTest, RightPinGivesTheTriesBack)
{
    EXPECT_EQ(command("sim", "pin"), "");
    terminal.set(Pin, "0000");
    EXPECT_TRUE(becomes(Retries, 2));
    terminal.set(Pin, "1234");
    EXPECT_TRUE(becomes(Retries, 3));
    EXPECT_EQ(text(PinStatus), "Valid");
}

TEST_F(SlowRadioTest, AnswerTakesAMomentAndThePinDoesNotStay)
{
    EXPECT_EQ(command("sim", "pin"), "");
    terminal.set(Pin, "1234");
    EXPECT_FALSE(terminal.has(Pin));
    EXPECT_EQ(text(PinStatus), "Needed");
    EXPECT_TRUE(becomes(PinStatus, "Valid"));
}

TEST_F(RadioTest, PinThatNobodyAskedForIsIgnored)
{
    terminal.set(Pin, "0000");
    EXPECT_FALSE(terminal.has(Pin));
    EXPECT_EQ(command("sim", "pin"), "");
    terminal.set(Pin, "0001");
    EXPECT_TRUE(becomes(Retries, 2));
}

TEST_F(RadioTest, PinStatusWrittenByHandAsksForThePinToo)
{
    terminal.set(PinStatus, "Needed");
    terminal.set(Pin, "1111");
    EXPECT_TRUE(becomes(Retries, 2));
    terminal.set(Pin, "1234");
    EXPECT_TRUE(becomes(PinStatus, "Valid"));
}

TEST_F(SlowRadioTest, InsertedCardIsReadAndAsksAgain)
{
    EXPECT_EQ(command("sim", "pin"), "");
    EXPECT_EQ(command("sim", "remove"), "");
    EXPECT_EQ(terminal.getInt(Usim), 0);
    EXPECT_EQ(text(PinStatus), "Absent");
    EXPECT_EQ(command("sim", "remove"), "sim: there is no card");
    EXPECT_EQ(command("sim", "insert"), "");
    EXPECT_EQ(terminal.getInt(Usim), -1);
    EXPECT_EQ(command("sim", "insert"), "sim: there is a card already");
    EXPECT_TRUE(becomes(Usim, 1));
    EXPECT_EQ(text(PinStatus), "Needed");
}

TEST_F(RadioTest, TriesStayOnTheCard)
{
    EXPECT_EQ(command("sim", "block"), "");
    EXPECT_EQ(command("sim", "remove"), "");
    EXPECT_EQ(command("sim", "insert"), "");
    EXPECT_TRUE(becomes(Usim, 1));
    EXPECT_EQ(text(PinStatus), "Blocked");
}

TEST_F(RadioTest, EachStateOfTheCard)
{
    const std::pair<const char*, const char*> states[] = {
        {"lock", "SIM Lock Blocked"}, {"reject", "Invalid"}, {"accept", "Valid"}, {"block", "Blocked"},
        {"unblock", "Valid"},         {"pin", "Needed"},     {"nopin", "Valid"}};
    for (const auto& [word, status] : states) {
        EXPECT_EQ(command("sim", word), "");
        EXPECT_EQ(text(PinStatus), status) << word;
    }
}

TEST_F(RadioTest, CommandsWithoutTheRadioModuleTellWhenItIsBack)
{
    terminal.set(Mode, "stopped");
    EXPECT_EQ(command("sim", "lock"), "");
    EXPECT_EQ(text(PinStatus), "Valid");
    terminal.set(Mode, "operating");
    EXPECT_TRUE(becomes(PinStatus, "SIM Lock Blocked"));
}

TEST_F(RadioTest, RemovedWhileTheRadioModuleIsOff)
{
    terminal.set(Mode, "stopped");
    EXPECT_EQ(command("sim", "remove"), "");
    terminal.set(Mode, "operating");
    EXPECT_EQ(terminal.getInt(Usim), 0);
    EXPECT_EQ(text(PinStatus), "Absent");
}

TEST_F(RadioTest, PukTakesTheBlockAway)
{
    EXPECT_EQ(command("sim", "puk 12345678 4711"), "sim: the card asks for no PUK");
    EXPECT_EQ(command("sim", "pin"), "");
    EXPECT_EQ(command("sim", "block"), "");
    for (const char* text : {"puk", "puk 12345678", "puk 1234567 4711", "puk 12345678 471", "puk 1 2 3"})
        EXPECT_EQ(command("sim", text), "sim: a PUK of 8 digits and a new PIN of 4 to 8") << text;
    EXPECT_EQ(command("sim", "puk 87654321 4711"), "sim: the PUK is wrong, 9 tries left");
    EXPECT_EQ(text(PinStatus), "Blocked");
    EXPECT_EQ(command("sim", "puk 12345678 4711"), "");
    EXPECT_EQ(text(PinStatus), "Valid");
    EXPECT_EQ(terminal.getInt(Retries), 3);
    EXPECT_EQ(command("sim", "remove"), "");
    EXPECT_EQ(command("sim", "insert"), "");
    EXPECT_TRUE(becomes(Usim, 1));
    EXPECT_EQ(text(PinStatus), "Needed");
    terminal.set(Pin, "4711");
    EXPECT_TRUE(becomes(PinStatus, "Valid"));
}

TEST_F(RadioTest, TenWrongPuksEndTheCard)
{
    EXPECT_EQ(command("sim", "block"), "");
    for (int left = 9; left >= 0; left--)
        EXPECT_EQ(command("sim", "puk 00000000 1234"),
                  "sim: the PUK is wrong, " + std::to_string(left) + " tries left");
    EXPECT_EQ(text(PinStatus), "Invalid");
    EXPECT_EQ(command("sim", "puk 12345678 1234"), "sim: the card asks for no PUK");
}

TEST_F(RadioTest, WhatIsNoPinIsNotTried)
{
    EXPECT_EQ(command("sim", "pin"), "");
    for (const char* pin : {"123", "123456789", "12a4", " 1234", ""}) {
        terminal.set(Pin, pin);
        EXPECT_FALSE(terminal.has(Pin)) << pin;
    }
    terminal.set(Pin, "0000");
    EXPECT_TRUE(becomes(Retries, 2));
    terminal.set(Pin, "1234");
    EXPECT_TRUE(becomes(PinStatus, "Valid"));
}

TEST_F(RadioTest, BadSimCommandsAreRefused)
{
    EXPECT_EQ(command("sim", "pin 12"), "sim: a PIN is 4 to 8 digits, not 12");
    EXPECT_EQ(command("sim", "pin 12ab"), "sim: a PIN is 4 to 8 digits, not 12ab");
    EXPECT_EQ(command("sim", "pin 1234 5678"), "sim: too many words");
    EXPECT_EQ(command("sim", "insert now"), "sim: too many words");
    EXPECT_EQ(command("sim", "eat"), "sim: unknown word eat");
    EXPECT_EQ(text(PinStatus), "Valid");
}

} // namespace
