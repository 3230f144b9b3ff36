// The console's commands "fault" and "bus": what they take, refuse and print.
#include "console_session.h"
#include "faults_fixture.h"

#include <fstream>
#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

struct CommandRow {
    const char* line;
    const char* output; // [1] failed, [USAGE] is told apart below
};

} // namespace

TEST_F(FaultsTest, Commands)
{
    const CommandRow rows[] = {
        {"fault", "no faults\n"},
        {"fault cut", "error: no client is connected\n[1]"},
        {"fault cut 5", "error: there is no client 5\n[1]"},
        {"fault frame type", "error: no client is connected\n[1]"},
        {"fault frame nothing",
         "error: no kind of frame is called nothing (\"fault frame\" lists them)\n[1]"},
        {"fault delay 20", ""},
        {"fault stop 60", ""},
        {"fault stop", ""},
        {"fault cut after 3", ""},
        {"fault cut at config.read.none", ""},
        {"fault cut at config.(", "error: a bad expression\n[1]"},
        {"fault deaf", ""},
        {"fault answer -2", ""},
        {"fault answer no_record cfg.*", ""},
        {"fault answer 7", "error: a status is one of -1 err, -2 db_err, -3 db_full, -4 readonly, "
                           "-5 no_record, -6 wrong_type, -7 buffer_too_small, -8 verify_fail\n[1]"},
        {"fault answer -2 (", "error: a bad expression, or too many of them\n[1]"},
        {"fault", "delay 20\nstop\ndeaf\ncut after 3\ncut at config.read.none\nanswer -2\nanswer -5 cfg.*\n"},
        {"fault go", ""},
        {"fault delay 0", ""},
        {"fault", "deaf\ncut after 3\ncut at config.read.none\nanswer -2\nanswer -5 cfg.*\n"},
        {"fault off", ""},
        {"fault", "no faults\n"},
        {"bus", "no client is connected\n"},
    };
    ConsoleSession console(terminal);
    for (const CommandRow& row : rows)
        EXPECT_EQ(console.transcript(row.line), row.output) << row.line;
    for (const char* line : {"fault x",
                             "fault delay",
                             "fault delay x",
                             "fault delay -1",
                             "fault delay 600001",
                             "fault delay 1 2",
                             "fault stop 0",
                             "fault stop x",
                             "fault stop nan",
                             "fault stop 1 2",
                             "fault go x",
                             "fault cut x",
                             "fault cut 0",
                             "fault cut after",
                             "fault cut after -1",
                             "fault cut at",
                             "fault cut 1 2",
                             "fault deaf x",
                             "fault flood",
                             "fault flood 0",
                             "fault flood x",
                             "fault flood 1 2 x y",
                             "fault frame type 0",
                             "fault frame type 1 2",
                             "fault answer",
                             "fault answer -1 a b",
                             "fault off x",
                             "bus x"}) {
        std::string output = console.transcript(line);
        EXPECT_THAT(output, HasSubstr("usage: ")) << line;
        EXPECT_EQ(output.back(), ']') << line;
    }
    EXPECT_EQ(console.transcript("fault"), "no faults\n");
}

TEST_F(FaultsTest, CommandsThatDoSomethingToClients)
{
    ConsoleSession console(terminal);
    RawClient client(terminal.address());
    client.filter("config.change.ram");
    client.filter("config.change.cfg");
    client.provide("clock.");
    client.sync();
    std::string name; // as the kernel cuts it; under an emulator, the emulator's
    std::ifstream comm("/proc/self/comm");
    ASSERT_TRUE(std::getline(comm, name));
    EXPECT_THAT(console.transcript("bus"),
                MatchesRegex("client 1: process " + std::to_string(getpid()) + " " + name +
                             "\n    filter config.change.ram\n    filter config.change.cfg\n"
                             "    provides clock.\n"));
    EXPECT_EQ(console.transcript("fault frame change-empty 1"), "");
    EXPECT_TRUE(client.readFrame());
    EXPECT_EQ(console.transcript("fault flood 10 ram.new"), "");
    EXPECT_TRUE(client.readFrame());
    EXPECT_EQ(console.transcript("fault cut 1"), "");
    EXPECT_TRUE(client.isClosedByServer());
    std::string kinds = console.transcript("fault frame");
    for (const sim::BrokenFrame& row : sim::brokenFrames())
        EXPECT_THAT(kinds, HasSubstr(std::string(row.kind) + " "));
}
