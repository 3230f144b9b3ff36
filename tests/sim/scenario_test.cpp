// Scenarios in the program itself: what it prints, how it fails, that it ends. Without a display; those with
// one are scenarios/*.scenario, each a test of its own.
#include "process.h"
#include "temporary_directory.h"

#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/prctl.h>
#include <thread>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

class ScenarioTest : public testing::Test {
protected:
    // Runs the program with the text as its scenario; its exit status.
    int run(const std::string& text, std::vector<std::string> options = {})
    {
        file = directory.file("story.scenario");
        std::ofstream(file) << text;
        options.insert(options.begin(), {"--address", privateAddress(), "--still", "--scenario", file});
        Process process(options);
        const int status = process.end();
        output = process.output;
        errors = process.errors;
        return status;
    }
    // The line that tells of a failure, without the program's other lines.
    std::string failure() const
    {
        const size_t at = errors.find(file + ":");
        return at == std::string::npos ? "" : errors.substr(at + file.size() + 1);
    }

    TemporaryDirectory directory;
    std::string file;
    std::string output;
    std::string errors;
};

TEST_F(ScenarioTest, EachLineIsToldAndTheEndIsStatus0)
{
    EXPECT_EQ(run("# A story\nsay \"Once upon a time\"\n\nrepeat 2\n  get cfg.language\nend\n"), 0);
    EXPECT_THAT(output, HasSubstr("   2  say \"Once upon a time\"\n   5  get cfg.language\n"));
    EXPECT_THAT(output, HasSubstr("   5  get cfg.language\n      "));
    EXPECT_EQ(failure(), "");
}

TEST_F(ScenarioTest, QuietItSaysNothing)
{
    EXPECT_EQ(run("say something\nget cfg.language\n", {"--quiet"}), 0);
    EXPECT_EQ(output, "");
    EXPECT_EQ(errors, "");
}

TEST_F(ScenarioTest, AnExpectationThatIsNeverMetIsStatus1)
{
    EXPECT_EQ(run("set cfg.language int:0\nexpect cfg.language int:2 within 0.2\nsay never\n", {"--quiet"}),
              1);
    EXPECT_THAT(errors, EndsWith(file + ":2: expected cfg.language = int 2 within 0.2 s, it is int 0\n"));
    EXPECT_THAT(output, Not(HasSubstr("never")));
}

TEST_F(ScenarioTest, ACommandThatFailsIsStatus1)
{
    EXPECT_EQ(run("say a\nget ram.no.such.key\n"), 1);
    EXPECT_THAT(failure(), testing::StartsWith("2: "));
    EXPECT_EQ(run("say a\nsim insert\n"), 1);
    EXPECT_EQ(failure(), "2: sim: there is a card already\n");
    EXPECT_EQ(run("press up\n"), 1);
    EXPECT_THAT(failure(), testing::StartsWith("1: no display"));
}

TEST_F(ScenarioTest, AMistakeIsToldBeforeAnythingBegins)
{
    EXPECT_EQ(run("say a\nfly away\n"), 1);
    EXPECT_EQ(failure(), "2: unknown command fly\n");
    EXPECT_THAT(output, Not(HasSubstr("say a")));
    EXPECT_THAT(output, Not(HasSubstr("listening")));
    EXPECT_EQ(run("repeat 2\nsay a\n"), 1);
    EXPECT_EQ(failure(), "1: there is no end for this repeat\n");
}

TEST_F(ScenarioTest, AFileThatIsNotThereIsToldSo)
{
    Process process({"--address", privateAddress(), "--scenario", directory.file("none")});
    EXPECT_EQ(process.end(), 1);
    EXPECT_EQ(process.errors, "terminalsim: " + directory.file("none") + ": No such file or directory\n");
}

TEST_F(ScenarioTest, WithoutADisplayThereIsNoneToStart)
{
    EXPECT_EQ(run("say a\nstart\n"), 1);
    EXPECT_EQ(failure(), "2: there is no display to be started\n");
}

TEST_F(ScenarioTest, ItCanStayWhenTheStoryIsOver)
{
    file = directory.file("story.scenario");
    std::ofstream(file) << "say over\n";
    Process process({"--address", privateAddress(), "--scenario", file, "--stay"});
    while (process.line() != "   1  say over") {
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // in which it could end, and must not
    process.signal(SIGTERM);
    EXPECT_EQ(process.end(), 0);
}

// A story that was not told to its end has not succeeded.
TEST_F(ScenarioTest, AWaitIsEndedByASignalWithStatus1)
{
    file = directory.file("story.scenario");
    std::ofstream(file) << "say begin\npause 3600\n";
    Process process({"--address", privateAddress(), "--still", "--scenario", file});
    while (process.line().find("pause 3600") == std::string::npos) {
    }
    process.signal(SIGINT);
    EXPECT_EQ(process.end(), 1);
}

// --- With a display: a small script that logs as the display does

class DisplayScenarioTest : public ScenarioTest {
protected:
    static constexpr const char* Complete = "main(): Done creating window";

    // The script goes on behind what every display logs at its start; it may log the end of the start itself.
    int runWith(const std::string& script, const std::string& text)
    {
        const std::string program = directory.file("display");
        std::ofstream(program)
            << "#!/bin/sh\n"
               "log() { echo \"<17.$1> gui[$$]: $2\" >>\"$SYSLOGTAP_FILE\"; }\n"
               "screen() { log 7 \"Window::ShowScreen(screenId=$1), addToHistory=true\"; }\n"
               "popup() { log 7 \"eventList[0]=$1, eventId=0x1, text=$2\"; }\n"
               "status() { log 7 \"x: Successfully translated statusTextId=$1 to $2\"; }\n"
               "kill -USR2 $APPMGR_PID\n"
               "log 7 'About to run fdloop_loop(fdl)'\n"
               "log 7 'Window::show(): About to show black splash screen'\n"
            << (script.find(Complete) == std::string::npos ? "log 7 '" + std::string(Complete) + "'\n" : "")
            << script << "\nexec sleep 60\n";
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        // Whatever it leaves behind becomes this process's child.
        prctl(PR_SET_CHILD_SUBREAPER, 1);
        const int status =
            run(text, {"--quiet", "--display", program, "--display-log", directory.file("log")});
        // What the script itself has started ends soon, and nothing else may be there.
        int tries = 250;
        while (waitpid(-1, nullptr, WNOHANG) != -1 && tries-- > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_GT(tries, 0) << "a process goes on";
        return status;
    }
};

// On a slow machine the window stands a while before the start is over, which shows the first screen again.
TEST_F(DisplayScenarioTest, TheStoryGoesOnWhenTheStartIsOver)
{
    EXPECT_EQ(runWith("status 12 Ready; sleep 0.3; screen '7 (SCREEN_STATUS'; log 7 '" +
                          std::string(Complete) + "'",
                      "start\n"
                      "expect screen status within 0.001\n"),
              0)
        << errors;
}

TEST_F(DisplayScenarioTest, TheLogTellsWhatIsShown)
{
    EXPECT_EQ(runWith("screen '7 (SCREEN_STATUS'; status 12 Ready; log 7 'one line'",
                      "expect live\n"
                      "expect screen status\n"
                      "expect status Ready\n"
                      "expect popup none\n"
                      "expect log \"one line\"\n"),
              0)
        << errors;
    EXPECT_EQ(runWith("screen '7 (SCREEN_STATUS'; screen '11 (SCREEN_POPUP'; popup EV_ONE 'Two words';"
                      "screen '12 (SCREEN_MENU'", // which waits behind the message
                      "expect popup EV_ONE\nexpect popup \"Two words\"\nexpect screen popup\n"
                      "expect screen menu within 0.3\n"),
              1);
    EXPECT_EQ(failure(), "4: expected the screen SCREEN_MENU within 0.3 s, it is SCREEN_POPUP\n");
    EXPECT_EQ(runWith("status 0 Initializing", "expect live within 0.3\n"), 1);
    EXPECT_EQ(
        failure(),
        "1: expected the display to show the terminal's state within 0.3 s, it shows \"Initializing\"\n");
    EXPECT_EQ(runWith("status 10 Searching", "expect live within 0.3\n"), 0); // it stays so
    EXPECT_EQ(runWith("", "expect log nothing within 0.3\n"), 1);
    EXPECT_EQ(failure(), "1: expected a log line with \"nothing\" within 0.3 s, there was none\n");
    EXPECT_EQ(runWith("", "expect crash within 0.3\n"), 1);
    EXPECT_EQ(failure(), "1: expected the display to end and to be started again within 0.3 s, it did not\n");
}

TEST_F(DisplayScenarioTest, StartBeginsTheDisplayWhereItStands)
{
    EXPECT_EQ(runWith("log 7 begun", "set ram.some.key int:1\nstart\nexpect log begun\n"), 0) << errors;
    EXPECT_EQ(runWith("log 7 begun", "pause 0.5\nstart dark\nexpect log begun\n"), 0) << errors;
}

TEST_F(DisplayScenarioTest, ADisplayThatEndsFailsTheStory)
{
    EXPECT_EQ(runWith("sleep 0.5; log 1 'Out of luck'; exit 3", "start\npause 30\n"), 1);
    EXPECT_THAT(errors, HasSubstr(file + ":2: the display has ended by itself; its log: Out of luck\n"));
    EXPECT_EQ(runWith("sleep 0.5; exit 0", "start\npause 30\n"), 1); // its window was closed
    EXPECT_THAT(errors, HasSubstr(file + ":2: the display has ended by itself"));
}

TEST_F(DisplayScenarioTest, AnEndThatIsExpectedDoesNot)
{
    const std::string once =
        "[ -e \"$SYSLOGTAP_FILE.once\" ] || { touch \"$SYSLOGTAP_FILE.once\"; sleep 0.5; exit 3; }";
    EXPECT_EQ(runWith(once, "start\nexpect crash\nexpect log begun within 0\n"), 1);
    EXPECT_THAT(failure(), testing::StartsWith("3: ")); // it came that far
    EXPECT_EQ(runWith("", "start\ndisplay kill\npause 0.5\nexpect crash\npause 0.2\n"), 0) << errors;
    EXPECT_EQ(runWith("", "start\ndisplay stop\npause 0.5\ndisplay start\npause 0.5\n"), 0) << errors;
}

TEST_F(ScenarioTest, TheCommandLineMustMakeSense)
{
    const std::vector<std::string> cases[] = {
        {"--scenario"}, {"--pictures", "x"}, {"--stay"}, {"--patience", "0"}};
    for (const auto& arguments : cases) {
        Process process(arguments);
        EXPECT_EQ(process.end(), 2) << arguments[0];
        EXPECT_THAT(process.errors, HasSubstr(arguments[0]));
    }
}

} // namespace
