// The shell's built-in commands.
#include "runtime/vx_cshell.h"
#include "support/fakeclock.h"
#include "support/testshell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

int countdown;
int callsOfCount;
void (*duringWait)();

class Commands : public testing::Test {
protected:
    TestShell test;

    static void SetUpTestSuite()
    {
        static const shell_command commands[] = {
            {"/test", "false", [](cshell*, int, char**) { return 1; }, 0, nullptr, nullptr},
            {"/test", "five", [](cshell*, int, char**) { return 5; }, 0, nullptr, nullptr},
            {"/test", "until", [](cshell*, int, char**) { return countdown-- > 0 ? 0 : 1; }, 0, nullptr,
             nullptr},
            {"/test", "count", [](cshell*, int, char**) { return ++callsOfCount; }, 0, nullptr, nullptr},
            {"/test", "wait",
             [](cshell*, int, char**) {
                 duringWait();
                 return 0;
             },
             0, "wait a little", "no words"},
            {"/test/sub", "leaf", [](cshell*, int, char**) { return 0; }, 0, nullptr, nullptr},
        };
        for (const shell_command& command : commands) {
            shell_command_add_sorted(&command);
        }
    }
    void SetUp() override { callsOfCount = 0; }
    // Result of a line that prints nothing.
    int resultOf(const std::string& line)
    {
        EXPECT_EQ(test.run(line), "") << line;
        return test.lastResult;
    }
    // A line that the command takes for a mistake.
    void expectUsage(const std::string& line, const std::string& help)
    {
        EXPECT_EQ(test.run(line), help) << line;
        EXPECT_EQ(test.lastResult, VX_CSHELL_USAGE) << line;
    }
};

struct Row {
    const char* name;
    const char* help;
    const char* syntax;
    unsigned flags;
};
const char SET[] = "Set memory:\n sm[bh] addr data1 [data2 [...]]\n";
const char DISPLAY[] = "Display memory:\n dm[bh] addr [cnt]\n";
const Row ROWS[] = {
    {"help", "Show help for commands", "<command name>", 0},
    {"time", "time the execution of a command", nullptr, 0},
    {"echo", "print the arguments", "<argument> ...", 0},
    {"repeat", "repeat a command", "<count> <command>", 0},
    {"not", "return the logical inversion of the command's return code", nullptr, 0},
    {"true", "return true", nullptr, 0},
    {"while", "repeat a command while a condition is true", "<command> : [<command>]", 0},
    {"(", "group commands into sequences", " command [ ; command ... ] )", 0},
    {"smb", "Set memory (8 bit)", SET, 1},
    {"smh", "Set memory (16 bit)", SET, 1},
    {"sm", "Set memory (32 bit)", SET, 1},
    {"dmb", "Display Memory (8 bit)", DISPLAY, 1},
    {"dmh", "Display Memory (16 bit)", DISPLAY, 1},
    {"dm", "Display memory (32 bit)", DISPLAY, 1},
    {"ls", "List the current directory", nullptr, 0},
    {"cd", "Change the current directory", "[<directory>]", 0},
    {"pwd", "Show the current directory", nullptr, 0},
};

TEST_F(Commands, EveryRowOfTheTable)
{
    size_t builtin = 0;
    for (size_t at = 0; at < shell_command_count(); ++at) {
        builtin += strcmp(shell_command_get(at)->path, "/bin") == 0;
    }
    EXPECT_EQ(builtin, sizeof(ROWS) / sizeof(ROWS[0]));
    for (const Row& row : ROWS) {
        const shell_command* command = vx_cshell_find(test.shell, row.name);
        ASSERT_NE(command, nullptr) << row.name;
        EXPECT_STREQ(command->path, "/bin");
        EXPECT_STREQ(command->help, row.help);
        EXPECT_STREQ(command->syntax, row.syntax);
        EXPECT_EQ(command->flags, row.flags);
    }
}

TEST_F(Commands, SecondShellAddsNoSecondBuiltIns)
{
    size_t before = shell_command_count();
    TestShell another;
    EXPECT_EQ(shell_command_count(), before);
}

TEST_F(Commands, HelpForACommand)
{
    EXPECT_EQ(test.run("help help"), "help           : Show help for commands\n<command name>\n");
    EXPECT_EQ(test.run("help not"),
              "not            : return the logical inversion of the command's return code\n"
              "No syntax description\n");
    EXPECT_EQ(test.run("help /test/false"), "false          : no description\nNo syntax description\n");
    EXPECT_EQ(test.run("help sm"), std::string("sm             : Set memory (32 bit)\n") + SET);
    EXPECT_EQ(test.lastResult, 0);
    EXPECT_EQ(test.run("help nonsense"), "nonsense: command not found\n");
    EXPECT_EQ(test.lastResult, -1);
    expectUsage("help a b", "help           : Show help for commands\n<command name>\n");
}

TEST_F(Commands, HelpListsEveryCommand)
{
    std::string text = test.run("help");
    for (const Row& row : ROWS) {
        char line[128];
        snprintf(line, sizeof(line), "%-15s: %s\n", row.name, row.help);
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
    EXPECT_NE(text.find("five           : no description\n"), std::string::npos);
    EXPECT_EQ(static_cast<size_t>(std::count(text.begin(), text.end(), '\n')), shell_command_count());
}

TEST_F(Commands, Time)
{
    FakeClock clock;
    static FakeClock* running;
    running = &clock;
    duringWait = [] { running->advance(12034); };
    EXPECT_EQ(test.run("time wait"), "12.034s\n");
    EXPECT_EQ(test.lastResult, 0);
    EXPECT_EQ(test.run("time five"), "0.000s\n");
    EXPECT_EQ(test.lastResult, 5);
    expectUsage("time", "time           : time the execution of a command\nNo syntax description\n");
}

TEST_F(Commands, Echo)
{
    EXPECT_EQ(test.run("echo"), "\n");
    EXPECT_EQ(test.run("echo one  two\tthree"), "one two three\n");
    EXPECT_EQ(test.run("echo -n one two"), "one two");
    EXPECT_EQ(test.run("echo -n"), "");
    EXPECT_EQ(test.run("echo one -n"), "one -n\n");
    EXPECT_EQ(test.run("echo -n -n"), "-n");
    EXPECT_EQ(test.run("echo %s%n"), "%s%n\n");
    EXPECT_EQ(test.lastResult, 0);
}

TEST_F(Commands, Repeat)
{
    EXPECT_EQ(test.run("repeat 3 echo x"), "x\nx\nx\n");
    EXPECT_EQ(resultOf("repeat 6 count"), 6); // the last result
    EXPECT_EQ(test.run("repeat 2 repeat 2 echo -n y"), "yyyy");
    EXPECT_EQ(resultOf("repeat 0 count"), 0);
    EXPECT_EQ(resultOf("repeat -5 count"), 0);
    for (const char* line : {"repeat", "repeat 2", "repeat x true", "repeat 2x true", "repeat",
                             "repeat 99999999999999999999 true"}) {
        expectUsage(line, "repeat         : repeat a command\n<count> <command>\n");
    }
}

TEST_F(Commands, NotAndTrue)
{
    EXPECT_EQ(resultOf("true"), 0); // 0 is success
    EXPECT_EQ(resultOf("not true"), 1);
    EXPECT_EQ(resultOf("not false"), 0);
    EXPECT_EQ(resultOf("not five"), 0);
    EXPECT_EQ(resultOf("not not five"), 1);
    EXPECT_EQ(vx_cshell_get_exit_status(test.shell), 1);
    expectUsage("not", "not            : return the logical inversion of the command's return code\n"
                       "No syntax description\n");
}

TEST_F(Commands, WhileRunsAsLongAsTheConditionGives0)
{
    countdown = 3;
    EXPECT_EQ(test.run("while until : echo x"), "x\nx\nx\n");
    EXPECT_EQ(test.lastResult, 0);
    countdown = 3;
    EXPECT_EQ(resultOf("while until :"), 0);                           // the body may be missing
    EXPECT_EQ(test.run("while ) : echo x"), "): command not found\n"); // ends no group: a word like others
    EXPECT_EQ(countdown, -1);
    EXPECT_EQ(resultOf("while false : count"), 0);
    EXPECT_EQ(callsOfCount, 0);
    countdown = 2;
    EXPECT_EQ(resultOf("while until : count"), 2);
    countdown = 2;
    EXPECT_EQ(test.run("while ( echo c ; until ) : ( echo a ; echo b )"), "c\na\nb\nc\na\nb\nc\n");
    for (const char* line : {"while", "while true", "while : true", "while true true"}) {
        expectUsage(line, "while          : repeat a command while a condition is true\n"
                          "<command> : [<command>]\n");
    }
}

TEST_F(Commands, Group)
{
    EXPECT_EQ(test.run("( echo a ; echo b c ; echo d )"), "a\nb c\nd\n");
    EXPECT_EQ(test.run("( echo a )"), "a\n");
    EXPECT_EQ(resultOf("( five ; count )"), 1); // the last result
    EXPECT_EQ(resultOf("( )"), 0);
    EXPECT_EQ(resultOf("( ; ; five ; )"), 5);
    EXPECT_EQ(test.run("( ( echo a ; echo b ) ; ( echo c ) )"), "a\nb\nc\n");
    EXPECT_EQ(test.run("repeat 2 ( echo a ; echo b )"), "a\nb\na\nb\n");
    EXPECT_EQ(test.run("not ( true ; true )"), "");
    EXPECT_EQ(test.lastResult, 1);
    for (const char* line : {"(", "( true", "( true ) true", "( ( true )", "( true ) )", "( ( ) ) )"}) {
        expectUsage(line, "(              : group commands into sequences\n command [ ; command ... ] )\n");
    }
}

TEST_F(Commands, DeepestNestingOfALine)
{
    std::string line;
    for (int depth = 0; depth < 16; ++depth) {
        line = "( " + line + ") ";
    }
    EXPECT_EQ(resultOf(line), 0); // 32 words
    std::string nots;
    for (int depth = 0; depth < 15; ++depth) {
        nots += "not ";
    }
    EXPECT_EQ(resultOf(nots + "true"), 1);
}

TEST_F(Commands, MistakeInACommandWithinACommandIsTheOuterOnes)
{
    // Result 3 goes up to the line, which prints the help of its own command.
    expectUsage("repeat 1 not", "repeat         : repeat a command\n<count> <command>\n");
}

TEST_F(Commands, ListMarksDirectoriesByAnAsterisk)
{
    vx_cshell_chdir(test.shell, "/test");
    EXPECT_EQ(test.run("ls"),
              "count               false               five                until               \n"
              "wait                sub*                \n");
    vx_cshell_chdir(test.shell, "sub");
    EXPECT_EQ(test.run("ls"), "leaf                \n");
    vx_cshell_chdir(test.shell, "/");
    EXPECT_EQ(test.run("ls"), "bin*                test*               \n");
}

TEST_F(Commands, ChangeAndShowDirectory)
{
    EXPECT_EQ(test.run("pwd"), "/\n");
    EXPECT_EQ(resultOf("cd test/sub"), 0);
    EXPECT_EQ(test.run("pwd"), "/test/sub\n");
    EXPECT_EQ(test.run("cd nowhere"), "ERROR\n");
    EXPECT_EQ(test.run("pwd"), "/test/sub\n");
    EXPECT_EQ(resultOf("cd"), 0);
    EXPECT_EQ(test.run("pwd"), "/\n");
    expectUsage("cd a b", "cd             : Change the current directory\n[<directory>]\n");
}

// --- memory

std::string hex(const void* address)
{
    char text[32];
    snprintf(text, sizeof(text), "0x%lx", reinterpret_cast<unsigned long>(address));
    return text;
}

std::string label(const void* address)
{
    char text[16];
    snprintf(text, sizeof(text), "%08x:", static_cast<uint32_t>(reinterpret_cast<uintptr_t>(address)));
    return text;
}

class Memory : public Commands {
protected:
    alignas(4) uint8_t data[40] = {};

    std::string at(size_t offset = 0) const { return hex(data + offset); }
    // Two pages of which the second can't be touched.
    uint8_t* edge = nullptr;
    size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    void SetUp() override
    {
        void* pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(pages, MAP_FAILED);
        edge = static_cast<uint8_t*>(pages) + page;
        ASSERT_EQ(mprotect(edge, page, PROT_NONE), 0);
    }
    void TearDown() override { munmap(edge - page, 2 * page); }
};

TEST_F(Memory, SetByUnits)
{
    EXPECT_EQ(resultOf("smb " + at() + " 1 0xff 010"), 0);
    EXPECT_EQ(resultOf("smh " + at(4) + " 0x1234 65535"), 0);
    EXPECT_EQ(resultOf("sm " + at(12) + " 0x12345678 4294967295"), 0);
    const uint16_t halves[] = {0x1234, 0xffff};
    const uint32_t words[] = {0x12345678, 0xffffffff};
    EXPECT_EQ(memcmp(data, "\1\xff\10\0", 4), 0);
    EXPECT_EQ(memcmp(data + 4, halves, 4), 0);
    EXPECT_EQ(memcmp(data + 12, words, 8), 0);
    EXPECT_EQ(data[20], 0);
}

TEST_F(Memory, SetWithoutAlignment)
{
    EXPECT_EQ(resultOf("sm " + at(1) + " 0x01010101"), 0);
    EXPECT_EQ(memcmp(data, "\0\1\1\1\1\0", 6), 0);
}

TEST_F(Memory, SetWritesNothingIfAnyWordIsWrong)
{
    for (const char* line : {"smb", "smb ", "smb 16"}) {
        expectUsage(line, std::string("smb            : Set memory (8 bit)\n") + SET);
    }
    const std::string tail[] = {" 1 256", " 1 x", " 1 -1", " 1 0x", " 1 1y", " 1 99999999999999999999"};
    for (const std::string& values : tail) {
        expectUsage("smb " + at() + values, std::string("smb            : Set memory (8 bit)\n") + SET);
        EXPECT_EQ(data[0], 0) << values;
    }
    expectUsage("smh " + at() + " 65536", std::string("smh            : Set memory (16 bit)\n") + SET);
    expectUsage("sm " + at() + " 4294967296", std::string("sm             : Set memory (32 bit)\n") + SET);
    expectUsage("sm xyz 1", std::string("sm             : Set memory (32 bit)\n") + SET);
    expectUsage("sm -4 1", std::string("sm             : Set memory (32 bit)\n") + SET);
}

TEST_F(Memory, AddressThatNoPointerHoldsIsNone)
{
    const std::string beyond = sizeof(void*) == 4 ? "0x100000000" : "0x10000000000000000";
    expectUsage("sm " + beyond + " 1", std::string("sm             : Set memory (32 bit)\n") + SET);
}

TEST_F(Memory, SetWhereNothingCanBeWrittenIsAnError)
{
    EXPECT_EQ(test.run("smb 0 1"), "ERROR\n");
    EXPECT_EQ(test.lastResult, VX_CSHELL_ERROR);
    const std::string last = sizeof(void*) == 4 ? "0xffffffff" : "0xffffffffffffffff";
    EXPECT_EQ(test.run("sm " + last + " 1"), "ERROR\n");
    EXPECT_EQ(test.run("sm " + hex("constant") + " 1"), "ERROR\n"); // read only
    EXPECT_EQ(test.run("smb " + hex(edge - 1) + " 7 8"), "ERROR\n");
    EXPECT_EQ(edge[-1], 7); // up to the edge
}

TEST_F(Memory, WithoutADescriptorToSpareNothingIsReadOrWritten)
{
    struct rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    struct rlimit none = before;
    none.rlim_cur = 0;
    data[0] = 1;
    TestShell& shell = test; // the sanitizer's look at a fixture takes descriptors, too
    const std::string set = "smb " + at() + " 7", display = "dmb " + at() + " 1";
    setrlimit(RLIMIT_NOFILE, &none);
    const std::string afterSet = shell.run(set);
    const std::string afterDisplay = shell.run(display);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(afterSet, "ERROR\n");
    EXPECT_EQ(afterDisplay, "ERROR\n");
    EXPECT_EQ(data[0], 1);
}

TEST_F(Memory, DisplayByUnits)
{
    memcpy(data, "\1\2\3\4 text.\x7f\xffmore and more", 26);
    EXPECT_EQ(test.run("dmb " + at() + " 3"),
              label(data) + " 01 02 03" + std::string(13 * 3, ' ') + "  ...\n");
    EXPECT_EQ(test.run("dmb " + at(4) + " 17"),
              label(data + 4) + " 20 74 65 78 74 2e 7f ff 6d 6f 72 65 20 61 6e 64   text...more and\n" +
                  label(data + 20) + " 20" + std::string(15 * 3, ' ') + "   \n");
    char text[128];
    uint16_t half;
    uint32_t word;
    memcpy(&half, data, 2);
    memcpy(&word, data, 4);
    snprintf(text, sizeof(text), " %04x%s  ..\n", half, std::string(7 * 5, ' ').c_str());
    EXPECT_EQ(test.run("dmh " + at() + " 1"), label(data) + text);
    snprintf(text, sizeof(text), " %08x%s  ....\n", word, std::string(3 * 9, ' ').c_str());
    EXPECT_EQ(test.run("dm " + at() + " 1"), label(data) + text);
    EXPECT_EQ(test.lastResult, 0);
}

TEST_F(Memory, DisplayOf16UnitsWithoutACount)
{
    std::string text = test.run("dmb " + hex(edge - 64));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    text = test.run("dmh " + hex(edge - 64));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
    text = test.run("dm " + hex(edge - 64));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
    EXPECT_EQ(test.run("dm " + at() + " 0"), "");
}

TEST_F(Memory, DisplayEndsWithAnErrorWhereNothingCanBeRead)
{
    EXPECT_EQ(test.run("dm 0"), "ERROR\n");
    std::string text = test.run("dmb " + hex(edge - 16) + " 32");
    EXPECT_EQ(text.substr(0, 9), label(edge - 16));
    EXPECT_EQ(text.substr(text.find('\n') + 1), "ERROR\n");
    for (const char* line : {"dm", "dm x", "dm 0 x", "dm 0 1 2", "dm 0 0xffffffffffffffff"}) {
        expectUsage(line, std::string("dm             : Display memory (32 bit)\n") + DISPLAY);
    }
}

TEST_F(Memory, NeedsAuthorisation)
{
    vx_cshell_set_auth_level(test.shell, 0);
    EXPECT_EQ(resultOf("smb " + at() + " 1"), -1);
    EXPECT_EQ(data[0], 0);
    EXPECT_EQ(resultOf("dm " + at()), -1);
}

TEST_F(Memory, LeavesNoDescriptorOpen)
{
    int before = dup(0);
    close(before);
    for (int turn = 0; turn < 100; ++turn) {
        test.run("dm 0");
        test.run("smb " + at() + " 1");
    }
    int after = dup(0);
    close(after);
    EXPECT_EQ(after, before);
}

} // namespace
