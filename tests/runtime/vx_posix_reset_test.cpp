// Panics, assertions, the ends of the process and the default signal handlers. Each end is seen from outside.
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_posix_reset.h"
#include "sim/syslogtap/syslogtap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::KilledBySignal;

// What the process prints on standard output and logs both goes where a death test looks.
void prepare()
{
    dup2(STDERR_FILENO, STDOUT_FILENO);
    syslogtap_echo(1);
}

TEST(VxPanicDeathTest, LogsAtPriority1AndAborts)
{
    EXPECT_EXIT(
        {
            prepare();
            vx_panic("out of %s (%d)", "luck", 3);
        },
        KilledBySignal(SIGABRT), "^<1> vx_posix_reset_test: out of luck \\(3\\)\n$");
}

TEST(VxPanicDeathTest, WithTheDefaultHandlersPrintsTheBacktraceAndExitsWith1)
{
    EXPECT_EXIT(
        {
            prepare();
            vx_set_default_sig_handlers();
            vx_panic("out of luck");
        },
        ExitedWithCode(1),
        ContainsRegex("^<1> vx_posix_reset_test: out of luck\n"
                      "\\*\\*\\* signal_handler: signal=6\n"
                      "Backtrace:\n"
                      "(.*\n)+"
                      "\\*\\*\\* signal_handler: exit\n$"));
}

TEST(VxPanicDeathTest, AbortWithoutText)
{
    EXPECT_EXIT(vx_abort(), KilledBySignal(SIGABRT), "");
}

__attribute__((noinline)) void descend(int depth)
{
    if (depth == 0) {
        raise(SIGABRT);
    } else {
        descend(depth - 1);
    }
    asm volatile(""); // no tail call
}

MATCHER_P(HasBacktraceLines, number, "")
{
    size_t start = arg.find("Backtrace:\n");
    size_t end = arg.find("*** signal_handler: exit\n");
    return start != std::string::npos && end != std::string::npos &&
           std::count(arg.begin() + static_cast<long>(start), arg.begin() + static_cast<long>(end), '\n') ==
               number + 1;
}

TEST(VxSignalDeathTest, BacktraceHasUpTo16Frames)
{
    EXPECT_EXIT(
        {
            prepare();
            os_sys_init();
            descend(40);
        },
        ExitedWithCode(1), HasBacktraceLines(16));
}

class CrashSignalDeathTest : public testing::TestWithParam<int> {};

TEST_P(CrashSignalDeathTest, ExitsWith1AndNamesTheSignal)
{
    std::string first = "*** signal_handler: signal=" + std::to_string(GetParam()) + "\nBacktrace:\n";
    EXPECT_EXIT(
        {
            prepare();
            vx_set_default_sig_handlers();
            raise(GetParam());
        },
        ExitedWithCode(1), AllOf(HasSubstr(first), HasSubstr("*** signal_handler: exit\n")));
}

INSTANTIATE_TEST_SUITE_P(All, CrashSignalDeathTest, testing::Values(4, 6, 8, 11, 7));

class EndSignalDeathTest : public testing::TestWithParam<int> {};

TEST_P(EndSignalDeathTest, ExitsWith1InSilenceAndRunsNoExitHandler)
{
    EXPECT_EXIT(
        {
            prepare();
            vx_set_default_sig_handlers();
            atexit([] { fputs("exit handler", stderr); });
            raise(GetParam());
        },
        ExitedWithCode(1), "^$");
}

TEST_P(EndSignalDeathTest, ExitsWith1WhileAnotherThreadLives)
{
    EXPECT_EXIT(
        {
            vx_set_default_sig_handlers();
            std::thread other([] { pause(); });
            kill(getpid(), GetParam());
            other.join();
        },
        ExitedWithCode(1), "");
}

INSTANTIATE_TEST_SUITE_P(All, EndSignalDeathTest, testing::Values(SIGINT, SIGTERM));

TEST(VxSignalDeathTest, BrokenPipeDoesNotEndTheProcess)
{
    EXPECT_EXIT(
        {
            vx_set_default_sig_handlers();
            int ends[2];
            if (pipe(ends) == 0) {
                close(ends[0]);
                ssize_t written = write(ends[1], "x", 1);
                _exit(written == -1 && errno == EPIPE ? 42 : 1);
            }
        },
        ExitedWithCode(42), "");
}

TEST(VxSignalDeathTest, FlagsAndMasksOfTheDefaultHandlers)
{
    const struct {
        int signo, flags;
    } rows[] = {{SIGILL, SA_SIGINFO}, {SIGABRT, SA_SIGINFO}, {SIGFPE, SA_SIGINFO}, {SIGSEGV, SA_SIGINFO},
                {SIGBUS, SA_SIGINFO}, {SIGINT, 0},           {SIGTERM, 0},         {SIGPIPE, SA_RESTART}};
    struct sigaction before[8], action;
    for (size_t row = 0; row < 8; ++row) {
        sigaction(rows[row].signo, nullptr, &before[row]);
    }
    vx_set_default_sig_handlers();
    for (size_t row = 0; row < 8; ++row) {
        sigaction(rows[row].signo, &before[row], &action);
        EXPECT_EQ(action.sa_flags & (SA_SIGINFO | SA_RESTART | SA_NODEFER | SA_ONSTACK), rows[row].flags)
            << "signal " << rows[row].signo;
        for (int other = 1; other < 32; ++other) {
            EXPECT_EQ(sigismember(&action.sa_mask, other), 0) << "signal " << rows[row].signo;
        }
    }
}

int handled = 0;

TEST(VxSignal, SetHandlerRestartsCallsAndBlocksNothingElse)
{
    struct sigaction before, action;
    sigaction(SIGUSR1, nullptr, &before);
    vx_set_sig_handler(SIGUSR1, [](int signo) { handled = signo; });
    raise(SIGUSR1);
    EXPECT_EQ(handled, SIGUSR1);
    sigaction(SIGUSR1, &before, &action);
    EXPECT_EQ(action.sa_flags & (SA_SIGINFO | SA_RESTART), SA_RESTART);
    EXPECT_EQ(sigismember(&action.sa_mask, SIGUSR2), 0);
}

TEST(VxSignalDeathTest, HandlerThatCannotBeInstalledPanics)
{
    EXPECT_EXIT(
        {
            prepare();
            vx_set_sig_handler(SIGKILL, [](int) {});
        },
        KilledBySignal(SIGABRT), "<1> .*: Signal 9 handler install failed \\(Invalid argument\\)\n");
}

TEST(VxResetDeathTest, ResetExitsWith0ThroughTheExitHandlers)
{
    EXPECT_EXIT(
        {
            atexit([] { fputs("exit handler", stderr); });
            vx_reset();
        },
        ExitedWithCode(0), "exit handler");
}

TEST(VxResetDeathTest, RestartNeedsArguments)
{
    EXPECT_EXIT(
        {
            prepare();
            vx_restart();
        },
        KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in vx_posix_reset at [0-9]+\n");
    EXPECT_EXIT(
        {
            prepare();
            vx_reset_set_args(1, nullptr);
            vx_restart();
        },
        KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in vx_posix_reset at [0-9]+\n");
}

TEST(VxResetDeathTest, RestartReplacesTheProcess)
{
    static char name[] = "sh", option[] = "-c", script[] = "exit 7";
    static char* arguments[] = {name, option, script, nullptr};
    EXPECT_EXIT(
        {
            vx_reset_set_args(3, arguments);
            vx_restart();
        },
        ExitedWithCode(7), "");
}

TEST(VxReset, ArgumentsAreKeptAndFailureOfRestartIsMinus1)
{
    int argc = -1;
    char** argv = reinterpret_cast<char**>(1);
    vx_reset_get_args(&argc, &argv);
    EXPECT_EQ(argc, 0);
    EXPECT_EQ(argv, nullptr);

    char name[] = "/nowhere/at/all";
    char* arguments[] = {name, nullptr};
    vx_reset_set_args(1, arguments);
    vx_reset_get_args(&argc, &argv);
    EXPECT_EQ(argc, 1);
    EXPECT_EQ(argv, arguments);
    vx_reset_get_args(nullptr, nullptr);
    EXPECT_EQ(vx_restart(), -1);
    EXPECT_EQ(errno, ENOENT);
    vx_reset_set_args(0, nullptr);
}

TEST(VxAssertDeathTest, NamesTheSourceWithoutDirectoryAndSuffix)
{
    int one = 1;
    VX_ASSERT(one == 1);
    EXPECT_EXIT(
        {
            prepare();
            VX_ASSERT(one == 2);
        },
        KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in vx_posix_reset_test at [0-9]+\n");
    EXPECT_EXIT(
        {
            prepare();
            vx_assert_failed("fdloop", 12);
        },
        KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in fdloop at 12\n");
}

TEST(VxSourceName, TakesDirectoryAndSuffixOff)
{
    char name[8];
    EXPECT_STREQ(vx_source_name("a/b.c/name.cpp", name, sizeof(name)), "name");
    EXPECT_STREQ(vx_source_name("name.x.cpp", name, sizeof(name)), "name.x");
    EXPECT_STREQ(vx_source_name("a.b/name", name, sizeof(name)), "name");
    EXPECT_STREQ(vx_source_name("", name, sizeof(name)), "");
    EXPECT_STREQ(vx_source_name("long_long_name.cpp", name, sizeof(name)), "long_lo");
    EXPECT_STREQ(vx_source_name("name.cpp", name, 1), "");
}

} // namespace
