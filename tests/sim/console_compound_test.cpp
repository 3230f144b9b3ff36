// Console commands that run others, and those that take their time.
#include "console_fixture.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

// --- Commands that run others

struct CompoundRow {
    const char* line;
    int status;
    const char* text;
};

TEST_F(ConsoleTest, Compounds)
{
    terminal.set("ram.n", 0);
    const CompoundRow table[] = {
        {"repeat 3 echo a", sim::CommandDone, "a\na\na\n"},
        {"repeat 0 echo a", sim::CommandDone, ""},
        {"repeat -1 echo a", sim::CommandDone, ""},
        {"repeat 2 repeat 2 echo a", sim::CommandDone, "a\na\na\na\n"},
        {"repeat 2 get no", sim::CommandFailed,
         "error: no: not in the database\nerror: no: not in the database\n"},
        {"not get no", sim::CommandDone, "error: no: not in the database\n"},
        {"not not true", sim::CommandDone, ""},
        {"( echo a ; echo b )", sim::CommandDone, "a\nb\n"},
        {"( ; echo a ; ; )", sim::CommandDone, "a\n"},
        {"( get no ; echo b )", sim::CommandDone, "error: no: not in the database\nb\n"},
        {"( ( echo a ; echo b ) ; echo c )", sim::CommandDone, "a\nb\nc\n"},
        {"repeat 2 ( echo a ; echo b )", sim::CommandDone, "a\nb\na\nb\n"},
        {"( )", sim::CommandDone, ""},
        {"while not true : echo a", sim::CommandDone, ""},
        {"while get ram.n : delete ram.n", sim::CommandDone, "int 0\nerror: ram.n: not in the database\n"},
    };
    for (const CompoundRow& row : table) {
        EXPECT_EQ(session.run(row.line), row.status) << row.line;
        EXPECT_EQ(session.text, row.text) << row.line;
    }
    EXPECT_THAT(session.output("time echo a"), testing::MatchesRegex("a\n[0-9]+\\.[0-9][0-9][0-9]s\n"));
}

TEST_F(ConsoleTest, BadCompounds)
{
    for (const char* line : {"repeat", "repeat 3", "not", "time", "while", "while : true", "while true",
                             "( true", "(", "( true ) x", "repeat 99999999999 true"}) {
        EXPECT_EQ(session.run(line), sim::CommandFailed) << line;
        EXPECT_THAT(session.text, HasSubstr(": not used like this\n")) << line;
    }
}

TEST_F(ConsoleTest, CompoundsWaitForCommandsThatTakeTheirTime)
{
    EXPECT_EQ(session.output("( echo a ; pause 0.05 ; echo b )"), "a\nb\n");
    EXPECT_EQ(session.output("repeat 2 ( pause 0.02 ; echo a )"), "a\na\n");
    std::string time = session.output("time pause 0.2");
    EXPECT_GE(std::stod(time), 0.2);
}

TEST_F(ConsoleTest, ALineThatGoesOnForEverHoldsUpNobody)
{
    session.begin("while true : echo x");
    ConsoleSession other(desk);
    EXPECT_EQ(other.output("get cfg.language"), "int 0\n");
    EXPECT_TRUE(session.isBusy());
    session.cancel();
    EXPECT_FALSE(session.isBusy());
    EXPECT_EQ(session.status, -1);
    EXPECT_EQ(session.output("echo a"), "a\n");
}

// --- Commands that take their time

TEST_F(ConsoleTest, OtherConsolesGoOnMeanwhile)
{
    session.begin("pause 600");
    EXPECT_TRUE(session.isBusy());
    ConsoleSession other(desk);
    EXPECT_EQ(other.output("get cfg.language"), "int 0\n");
    EXPECT_TRUE(session.isBusy());
}

TEST_F(ConsoleTest, CancelledCommandTellsNothing)
{
    session.begin("pause 0.05");
    session.cancel();
    EXPECT_FALSE(session.isBusy());
    EXPECT_FALSE(session.waitForEnd(200));
    EXPECT_EQ(session.output("pause 0.01"), "");
}

TEST_F(ConsoleTest, ConsoleThatGoesWhileItsCommandRuns)
{
    {
        ConsoleSession other(desk);
        other.begin("pause 0.05");
    }
    EXPECT_EQ(session.output("pause 0.1"), "");
}

TEST_F(ConsoleTest, DoneMayRunTheNextLine)
{
    std::string texts;
    std::mutex mutex;
    std::condition_variable changed;
    bool ended = false;
    std::unique_ptr<sim::Console> console;
    terminal.onThread([&] {
        console = std::make_unique<sim::Console>(desk, "two", [&](std::string_view text) { texts += text; });
        console->run("pause 0.01", [&](int) {
            console->run("echo next", [&](int) {
                std::lock_guard<std::mutex> lock(mutex);
                ended = true;
                changed.notify_all();
            });
        });
    });
    {
        std::unique_lock<std::mutex> lock(mutex);
        EXPECT_TRUE(changed.wait_for(lock, std::chrono::milliseconds(PATIENCE_MS), [&] { return ended; }));
    }
    terminal.onThread([&] { console.reset(); });
    EXPECT_EQ(texts, "next\n");
}

} // namespace
