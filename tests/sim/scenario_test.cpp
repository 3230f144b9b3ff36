// Scenarios in the program itself: what it prints, how it fails, that it ends. Without a display; those with
// one are scenarios/*.scenario, each a test of its own.
#include "process.h"
#include "temporary_directory.h"

#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
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
