// Trace items, and the shell command that switches them.
//
// Items can't be removed, so each test runs in a process of its own: a child that starts without any.
#include "runtime/vx_trace.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/testshell.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const uint32_t ALL = 0xffffffff;

// Runs the body in a child; its failures are printed there and fail the test here.
template <typename Body> void isolated(Body body)
{
    fflush(stdout);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        body();
        fflush(stdout);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
}

std::string line(const char* name, const char* state, const char* flags)
{
    char text[128];
    snprintf(text, sizeof(text), "%-20s %8s %s\n", name, state, flags);
    return text;
}

TEST(Trace, InitAddsAnItemThatIsOff)
{
    isolated([] {
        vx_trace_t* trace = vx_trace_init("nav");
        EXPECT_EQ(trace->state, 0u);
        EXPECT_EQ(trace->mask, 0u);
        TestShell test;
        EXPECT_EQ(test.run("trace nav"), line("nav", "Disabled", ""));
    });
}

TEST(Trace, NameIsCutAt7Characters)
{
    isolated([] {
        vx_trace_init("abcdefghij");
        setenv("TRACE_klmnopq", "b", 1);
        EXPECT_EQ(vx_xtrace_init("klmnopqrst", nullptr)->mask, 2u);
        TestShell test;
        EXPECT_EQ(test.run("trace abcdefg"), line("abcdefg", "Disabled", ""));
        EXPECT_EQ(test.run("trace abcdefgh"), "No such trace item: abcdefgh\n");
    });
}

TEST(Trace, XtraceIsOnWithHelpAndTheMaskOfTheEnvironment)
{
    isolated([] {
        setenv("TRACE_nav", "ac", 1);
        vx_trace_t* trace = vx_xtrace_init("nav", "a - this\nc - that\n");
        EXPECT_EQ(trace->state, 1u);
        EXPECT_EQ(trace->mask, 5u);
        EXPECT_EQ(vx_xtrace_init("other", nullptr)->mask, 0u);
        TestShell test;
        EXPECT_EQ(test.run("trace nav"),
                  line("nav", "Enabled", "AC") + "Supported flags:\na - this\nc - that\n");
        EXPECT_EQ(test.run("trace other"), line("other", "Enabled", ""));
        EXPECT_EQ(test.lastResult, 0);
    });
}

TEST(Trace, InitialMask)
{
    struct Row {
        const char* value;
        uint32_t mask;
    };
    const Row rows[] = {
        {"", 0},
        {"A", 1},
        {"abc", 7}, // lower case by the same formula, modulo 32
        {"ABC", 7},
        {"zZ", 1u << 25},
        {"*", ALL},
        {"*x", ALL},
        {"a*", 1u | 1u << 9}, // 42 - 65 = -23, modulo 32: an asterisk counts only at the start
        {"1", 1u << 16},      // 49 - 65 = -16
        {"\xff", 1u << 30},   // 255 - 65 = 190
    };
    for (const Row& row : rows) {
        setenv("TRACE_mask", row.value, 1);
        EXPECT_EQ(vx_trace_get_initial_mask("mask"), row.mask) << row.value;
    }
    unsetenv("TRACE_mask");
    EXPECT_EQ(vx_trace_get_initial_mask("mask"), 0u);
    EXPECT_EQ(vx_trace_get_initial_mask(std::string(1000, 'x').c_str()), 0u);
}

TEST(Trace, SetMaskStartAndStop)
{
    isolated([] {
        vx_trace_t* trace = vx_trace_init("nav");
        vx_trace_set_mask(trace, 6);
        vx_trace_start(trace);
        EXPECT_EQ(trace->mask, 6u);
        EXPECT_EQ(trace->state, 1u);
        vx_trace_stop(trace);
        EXPECT_EQ(trace->state, 0u);
        EXPECT_EQ(trace->mask, 6u);
    });
}

TEST(Trace, HandlesStayValidWhileItemsAreAdded)
{
    isolated([] {
        vx_trace_t* handles[VX_TRACE_MAX_ITEMS];
        for (int at = 0; at < VX_TRACE_MAX_ITEMS; ++at) {
            handles[at] = vx_trace_init(("i" + std::to_string(at)).c_str());
        }
        TestShell test;
        for (int at = 0; at < VX_TRACE_MAX_ITEMS; ++at) {
            test.run("trace i" + std::to_string(at) + " +");
            EXPECT_EQ(handles[at]->state, 1u) << at;
        }
    });
}

TEST(TraceDeathTest, ThirtyFirstItemIsFatal)
{
    EXPECT_DEATH(
        {
            syslogtap_echo(1);
            for (int at = 0; at < 30; ++at) {
                vx_trace_init("item");
            }
            fprintf(stderr, "thirty\n");
            vx_trace_init("item");
        },
        "thirty\n<1> .*: \\*\\*\\* ASSERT in vx_trace at [0-9]+\n");
}

TEST(TraceDeathTest, NullHandleIsAnAssertion)
{
    syslogtap_echo(1);
    EXPECT_DEATH(vx_trace_set_mask(nullptr, 1), "ASSERT in vx_trace at [0-9]+\n");
    EXPECT_DEATH(vx_trace_start(nullptr), "ASSERT in vx_trace at [0-9]+\n");
    EXPECT_DEATH(vx_trace_stop(nullptr), "ASSERT in vx_trace at [0-9]+\n");
    syslogtap_echo(0);
}

TEST(TraceCommand, HelpTexts)
{
    TestShell test;
    EXPECT_EQ(test.run("help trace"),
              "trace          : Trace debug\n"
              "The trace command turns debug traces on and off.\n"
              "Usage: trace [name] [flags | + | - ]\n"
              "name             - Name (case sensitive) of trace item, may be * for all\n"
              "                   Without 2nd parameter: Displays a help screen for <name>\n"
              "flags            - Flag string such as 'abc'. Legal flags are 'a' to 'z' (case insensitive)\n"
              "                   Use * to set all flags\n"
              "                   Use # to clear all flags, ! to clear the following flag\n"
              "+                - Enable trace\n"
              "-                - Disable trace\n"
              "Example: trace nav *!b!c\n"
              "This will enable all trace bits (a-z) for nav, except b and c\n");
    EXPECT_STREQ(vx_cshell_find(test.shell, "trace")->path, "/bin");
}

TEST(TraceCommand, WithoutArgumentsListsAll)
{
    isolated([] {
        TestShell test;
        EXPECT_EQ(test.run("trace"), "Trace Settings\nModule               State    Mask flags\n");
        vx_trace_set_mask(vx_trace_init("nav"), ALL);
        vx_trace_set_mask(vx_xtrace_init("bus", "help"), 1u << 25 | 1);
        EXPECT_EQ(test.run("trace"), "Trace Settings\n"
                                     "Module               State    Mask flags\n"
                                     "nav                  Disabled ABCDEFGHIJKLMNOPQRSTUVWXYZ\n"
                                     "bus                   Enabled AZ\n");
        EXPECT_EQ(test.lastResult, 0);
    });
}

TEST(TraceCommand, UnknownName)
{
    isolated([] {
        TestShell test;
        vx_trace_init("nav");
        EXPECT_EQ(test.run("trace na"), "No such trace item: na\n");
        EXPECT_EQ(test.lastResult, -1);
        EXPECT_EQ(test.run("trace navi +"), "No such trace item: navi\n");
        EXPECT_EQ(test.lastResult, -1);
    });
}

TEST(TraceCommand, PlusAndMinus)
{
    isolated([] {
        TestShell test;
        vx_trace_t* trace = vx_trace_init("nav");
        EXPECT_EQ(test.run("trace nav +"), line("nav", "Enabled", ""));
        EXPECT_EQ(trace->state, 1u);
        EXPECT_EQ(test.run("trace nav -"), line("nav", "Disabled", ""));
        EXPECT_EQ(trace->state, 0u);
        EXPECT_EQ(trace->mask, 0u);
        EXPECT_EQ(test.run("trace nav +a"), line("nav", "Disabled", "A")); // a flag string
        EXPECT_EQ(test.lastResult, 0);
    });
}

TEST(TraceCommand, NamesAreComparedWithoutCase)
{
    isolated([] {
        TestShell test;
        vx_trace_t* trace = vx_trace_init("Nav");
        EXPECT_EQ(test.run("trace nAV a"), line("Nav", "Disabled", "A"));
        EXPECT_EQ(trace->mask, 1u);
        EXPECT_EQ(test.run("trace NAV"), line("Nav", "Disabled", "A"));
    });
}

TEST(TraceCommand, NavExampleLeavesAllBitsSetButBits1And2)
{
    isolated([] {
        TestShell test;
        vx_trace_t* trace = vx_trace_init("nav");
        EXPECT_EQ(test.run("trace nav *!b!c"), line("nav", "Disabled", "ADEFGHIJKLMNOPQRSTUVWXYZ"));
        EXPECT_EQ(trace->mask, ALL & ~6u);
    });
}

TEST(TraceCommand, FlagStringsApplyToTheCurrentMaskFromLeftToRight)
{
    isolated([] {
        TestShell test;
        vx_trace_t* trace = vx_trace_init("nav");
        struct Row {
            const char* flags;
            uint32_t before;
            uint32_t after;
        };
        const Row rows[] = {
            {"abc", 0, 7},  {"ABC", 8, 15},       {"#", ALL, 0},      {"#a", ALL, 1}, {"a#", 0, 0},
            {"*", 0, ALL},  {"*#b", 0, 2},        {"!a", 3, 2},       {"!A!B", 7, 4}, {"a!a", 0, 0},
            {"!aa", 0, 1},  {"z", 0, 1u << 25},   {"!", 5, 5},        {"!!a", 5, 4},  {"!#", 5, 0},
            {"!*", 5, ALL}, {"1-_.,;@[`{", 5, 5}, {"\xe4\xff", 5, 5}, {"a1b", 0, 3},  {"!1a", 0, 1},
            {"++", 5, 5},   {"--", 5, 5},
        };
        for (const Row& row : rows) {
            trace->mask = row.before;
            test.run(std::string("trace nav ") + row.flags);
            EXPECT_EQ(trace->mask, row.after) << row.flags;
            EXPECT_EQ(trace->state, 0u) << row.flags;
        }
    });
}

TEST(TraceCommand, AsteriskMeansEveryItemAndPrintsNoLine)
{
    isolated([] {
        TestShell test;
        vx_trace_t* one = vx_trace_init("one");
        vx_trace_t* two = vx_xtrace_init("two", "help\n");
        EXPECT_EQ(test.run("trace * ab"), "");
        EXPECT_EQ(test.lastResult, 0);
        EXPECT_EQ(one->mask, 3u);
        EXPECT_EQ(two->mask, 3u);
        EXPECT_EQ(test.run("trace * +"), "");
        EXPECT_EQ(one->state, 1u);
        EXPECT_EQ(test.run("trace * -"), "");
        EXPECT_EQ(one->state + two->state, 0u);
        // Alone it shows what each name alone would show.
        EXPECT_EQ(test.run("trace *"),
                  line("one", "Disabled", "AB") + line("two", "Disabled", "AB") + "Supported flags:\nhelp\n");
    });
}

TEST(TraceCommand, MoreThanTwoArgumentsPrintTheHelp)
{
    isolated([] {
        TestShell test;
        vx_trace_t* trace = vx_trace_init("nav");
        EXPECT_EQ(test.run("trace nav + a").substr(0, 29), "trace          : Trace debug\n");
        EXPECT_EQ(trace->state, 0u);
    });
}

} // namespace
