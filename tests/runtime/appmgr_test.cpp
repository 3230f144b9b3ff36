// The keep-alive: the manager's questions and the answers, the slot, the exit command.
//
// The state belongs to the process, so each test runs in a child of its own.
#include "runtime/appmgr.h"
#include "runtime/fdloop.h"
#include "runtime/fdloop_impl.h"
#include "runtime/util.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/fakeclock.h"
#include "support/keptloop.h"
#include "support/patience.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::KilledBySignal;
using testing::MatchesRegex;

// Runs the body in a child that ends with 0 if none of its expectations failed.
#define IN_CHILD(body)                                                                                       \
    EXPECT_EXIT(                                                                                             \
        {                                                                                                    \
            body;                                                                                            \
            _exit(testing::Test::HasFailure() ? 1 : 0);                                                      \
        },                                                                                                   \
        ExitedWithCode(0), "")

void seeEverything()
{
    dup2(STDERR_FILENO, STDOUT_FILENO);
    syslogtap_echo(1);
}

bool usr2IsDefault()
{
    struct sigaction action;
    sigaction(SIGUSR2, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}

// The manager's side, played by the test: SIGUSR2 is taken with sigtimedwait.
class Manager {
public:
    Manager()
    {
        sigemptyset(&set);
        sigaddset(&set, SIGUSR2);
        sigprocmask(SIG_BLOCK, &set, &before);
    }
    ~Manager() { sigprocmask(SIG_SETMASK, &before, nullptr); }

    // Starts a client that knows this process as its manager, runs the function and then waits for signals.
    pid_t start(std::function<void()> function)
    {
        pid_t client = fork();
        if (client == 0) {
            sigprocmask(SIG_SETMASK, &before, nullptr);
            setenv("APPMGR_PID", std::to_string(getppid()).c_str(), 1);
            signal(SIGTERM, [](int) { _exit(0); }); // an orderly end, which a count of the lines run needs
            function();
            for (;;) {
                pause();
            }
        }
        return client;
    }
    // The pid of the next SIGUSR2's sender, 0 if none comes.
    pid_t nextSender(int milliseconds = PATIENCE_MS)
    {
        struct timespec limit = {milliseconds / 1000, (milliseconds % 1000) * 1000000L};
        siginfo_t info;
        return sigtimedwait(&set, &info, &limit) == SIGUSR2 ? info.si_pid : 0;
    }

private:
    sigset_t set, before;
};

void end(pid_t client)
{
    if (client > 0) {
        kill(client, SIGTERM);
        waitpid(client, nullptr, 0);
    }
}

TEST(AppmgrDeathTest, WithoutTheVariableNoHandlerIsInstalledAndTheKeepAliveTimerJustRuns)
{
    IN_CHILD({
        unsetenv("APPMGR_PID");
        syslogtap_start();
        appmgr_signal();
        appmgr_signal(); // silent, too
        EXPECT_EQ(syslogtap_count(), 0u);
        EXPECT_TRUE(usr2IsDefault());

        FakeClock clock(1000);
        fdloop_t* loop = keptLoop();
        appmgr_alive_fdloop_register(loop);
        ASSERT_NE(loop->timers, nullptr);
        EXPECT_EQ(loop->timers->interval, 20000u);
        EXPECT_EQ(loop->timers->expiry, 21000u);
        clock.set(21000 + 2500);
        EXPECT_EQ(fdloop_timers_run(loop, 21000 + 2500), 17500u); // repeats
        clock.advance(23000);
        EXPECT_EQ(appmgr_alive_check(), 1); // the callback has stamped
        clock.advance(1);
        EXPECT_EQ(appmgr_alive_check(), -1);
    });
}

TEST(AppmgrDeathTest, PidBelow1ExitsWithStatus2)
{
    for (const char* value : {"0", "-1", "", "text", "99999999999"}) {
        EXPECT_EXIT(
            {
                setenv("APPMGR_PID", value, 1);
                appmgr_signal();
            },
            ExitedWithCode(2), "^$")
            << value;
    }
}

TEST(Appmgr, TellsTheManagerThatItIsUpAndAnswersEachQuestion)
{
    Manager manager;
    pid_t client = manager.start(appmgr_signal);
    EXPECT_EQ(manager.nextSender(), client);
    for (int question = 0; question < 3; ++question) {
        kill(client, SIGUSR2);
        EXPECT_EQ(manager.nextSender(), client);
    }
    end(client);
}

TEST(Appmgr, AnswersWhileTheStampIsAtMost23SecondsOld)
{
    Manager manager;
    pid_t client = manager.start([] {
        static FakeClock clock(1000);
        appmgr_alive_alloc();
        clock.advance(23000);
        appmgr_signal();
    });
    EXPECT_EQ(manager.nextSender(), client);
    kill(client, SIGUSR2);
    EXPECT_EQ(manager.nextSender(), client);
    end(client);
}

TEST(AppmgrDeathTest, SecondCallIsLogged)
{
    IN_CHILD({
        signal(SIGUSR2, SIG_IGN);
        Manager manager;
        setenv("APPMGR_PID", std::to_string(getpid()).c_str(), 1);
        appmgr_signal();
        EXPECT_EQ(manager.nextSender(), getpid());
        syslogtap_start();
        appmgr_signal();
        EXPECT_EQ(syslogtap_count(), 1u);
        EXPECT_EQ(syslogtap::count(3, "appmgr_signal called more than one time.\n"), 1u);
        EXPECT_EQ(manager.nextSender(50), 0); // nothing is sent again
    });
}

TEST(AppmgrDeathTest, SlotIsStampedAndTakenOnce)
{
    IN_CHILD({
        FakeClock clock(5000);
        EXPECT_EQ(appmgr_alive_check(), 0);
        appmgr_alive_t* slot = appmgr_alive_alloc();
        ASSERT_NE(slot, nullptr);
        EXPECT_EQ(appmgr_alive_alloc(), nullptr);
        EXPECT_EQ(appmgr_alive_check(), 1);
        clock.advance(23000);
        EXPECT_EQ(appmgr_alive_check(), 1);
        clock.advance(1);
        syslogtap_start();
        EXPECT_EQ(appmgr_alive_check(), -1);
        EXPECT_EQ(syslogtap::count(3, "Thread (main) seems to be dead\n"), 1u);
        appmgr_alive_signal(slot);
        EXPECT_EQ(appmgr_alive_check(), 1);
    });
}

TEST(AppmgrDeathTest, DeadTimeIsSetAndStamps)
{
    IN_CHILD({
        FakeClock clock(5000);
        appmgr_alive_t* slot = appmgr_alive_alloc();
        clock.advance(30000);
        appmgr_set_dead_time(slot, 100);
        EXPECT_EQ(appmgr_alive_check(), 1);
        clock.advance(20100);
        EXPECT_EQ(appmgr_alive_check(), 1);
        clock.advance(1);
        EXPECT_EQ(appmgr_alive_check(), -1);
        appmgr_set_dead_time(slot, 0); // 3,000
        clock.advance(23000);
        EXPECT_EQ(appmgr_alive_check(), 1);
        clock.advance(1);
        EXPECT_EQ(appmgr_alive_check(), -1);
    });
}

TEST(AppmgrDeathTest, StampsWorkAcrossTheWrapOfTheClock)
{
    IN_CHILD({
        FakeClock clock(0xfffffff0ull);
        appmgr_alive_alloc();
        clock.advance(23000);
        EXPECT_EQ(appmgr_alive_check(), 1);
        clock.advance(1);
        EXPECT_EQ(appmgr_alive_check(), -1);
    });
}

void* noMemory(size_t, size_t)
{
    return nullptr;
}

TEST(AppmgrDeathTest, RegisteringWithoutASlotOrATimerPanics)
{
    fdloop_t* loop = keptLoop();
    EXPECT_EXIT(
        {
            seeEverything();
            appmgr_alive_fdloop_register(loop);
            appmgr_alive_fdloop_register(loop);
        },
        KilledBySignal(SIGABRT), "<1> .*: alive_fdloop_timer_register failed \\(-1\\)");
    EXPECT_EXIT(
        {
            seeEverything();
            vx_calloc = noMemory;
            appmgr_alive_fdloop_register(loop);
        },
        KilledBySignal(SIGABRT), "<1> .*: alive_fdloop_timer_register failed \\(-2\\)");
}

// A client whose stamp is 23,001 ms old when the question comes.
void beAskedTooLate(const char* command)
{
    seeEverything();
    static FakeClock clock(1000);
    if (command) {
        setenv("APPMGR_CLIENT_EXIT_CMD", command, 1);
    } else {
        unsetenv("APPMGR_CLIENT_EXIT_CMD");
    }
    appmgr_alive_alloc();
    sigset_t usr2;
    sigemptyset(&usr2);
    sigaddset(&usr2, SIGUSR2);
    sigprocmask(SIG_BLOCK, &usr2, nullptr);
    setenv("APPMGR_PID", std::to_string(getpid()).c_str(), 1); // its own manager: the first signal asks it
    appmgr_signal();
    clock.advance(23001);
    sigprocmask(SIG_UNBLOCK, &usr2, nullptr);
}

TEST(AppmgrDeathTest, Stamp23001MillisecondsOldMakesTheNextQuestionFatalAfterTheExitCommandHasRun)
{
    EXPECT_EXIT(beAskedTooLate("/bin/sh -c 'sleep 0.1; echo command has run'"), KilledBySignal(SIGABRT),
                MatchesRegex("<3> appmgr_test: Thread \\(main\\) seems to be dead\n"
                             "command has run\n"
                             "<1> appmgr_test: Local alive failed\n"));
}

// Every 20 ms a signal whose handler does not restart what it interrupts.
void interruptOften()
{
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, nullptr);
    const struct itimerval often = {{0, 20000}, {0, 20000}};
    setitimer(ITIMER_REAL, &often, nullptr);
}

TEST(AppmgrDeathTest, ASignalDoesNotEndTheWaitForTheExitCommand)
{
    EXPECT_EXIT(
        {
            seeEverything();
            interruptOften();
            char command[] = "/bin/sh -c 'sleep 0.3; echo command has run'";
            appmgr_run_exit_command(command);
            fprintf(stderr, "behind it\n");
            _exit(0);
        },
        ExitedWithCode(0), "^command has run\nbehind it\n$");
}

TEST(AppmgrDeathTest, WithoutAnExitCommandTheQuestionIsFatalToo)
{
    EXPECT_EXIT(beAskedTooLate(nullptr), KilledBySignal(SIGABRT),
                MatchesRegex("<3> appmgr_test: Thread \\(main\\) seems to be dead\n"
                             "<1> appmgr_test: Local alive failed\n"));
}

TEST(AppmgrDeathTest, ExitCommandThatIsNoProgramOrEmptyDoesNotStopThePanic)
{
    EXPECT_EXIT(beAskedTooLate("/nowhere/at/all"), KilledBySignal(SIGABRT), "Local alive failed\n$");
    EXPECT_EXIT(beAskedTooLate("  "), KilledBySignal(SIGABRT),
                "<1> appmgr_test: \\*\\*\\* ASSERT in appmgr at [0-9]+\n"
                "<1> appmgr_test: Local alive failed\n$");
}

std::vector<std::string> split(const std::string& text, int max = 63)
{
    std::vector<char> copy(text.c_str(), text.c_str() + text.size() + 1);
    std::vector<char*> fields(static_cast<size_t>(max) + 1, copy.data());
    int count = appmgr_split_command(copy.data(), fields.data(), max);
    EXPECT_EQ(fields[static_cast<size_t>(count)], nullptr);
    return std::vector<std::string>(fields.begin(), fields.begin() + count);
}

TEST(AppmgrSplit, BlanksSeparate)
{
    EXPECT_THAT(split("/bin/a b  c"), ElementsAre("/bin/a", "b", "c"));
    EXPECT_THAT(split("  a "), ElementsAre("a"));
    EXPECT_THAT(split(""), ElementsAre());
    EXPECT_THAT(split("   "), ElementsAre());
}

TEST(AppmgrSplit, QuotedArgumentsKeepTheirBlanks)
{
    EXPECT_THAT(split("a \"b  c\" 'd e'"), ElementsAre("a", "b  c", "d e"));
    EXPECT_THAT(split("'it is \"so\"' \"it's\""), ElementsAre("it is \"so\"", "it's"));
    EXPECT_THAT(split("a '' \"\" b"), ElementsAre("a", "", "", "b"));
    EXPECT_THAT(split("a 'b'c"), ElementsAre("a", "b", "c"));          // the mark ends the field
    EXPECT_THAT(split("a b\"c d\""), ElementsAre("a", "b\"c", "d\"")); // only at its start it opens one
    EXPECT_THAT(split("a 'b c"), ElementsAre("a", "b c"));             // without an end: the rest
}

TEST(AppmgrSplit, UpTo63ArgumentsAreTaken)
{
    std::string text;
    for (int field = 0; field < 70; ++field) {
        text += std::to_string(field) + " ";
    }
    std::vector<std::string> fields = split(text);
    ASSERT_EQ(fields.size(), 63u);
    EXPECT_EQ(fields.back(), "62");
    EXPECT_THAT(split("a b c", 2), ElementsAre("a", "b"));
}

TEST(AppmgrDeathTest, ExitCommandGetsItsArgumentsAndAnEmptyEnvironment)
{
    EXPECT_EXIT(
        {
            seeEverything();
            char command[] = "/usr/bin/printf %s| \"a  b\" 'c d' e";
            appmgr_run_exit_command(command);
            char environment[] = "/usr/bin/env";
            appmgr_run_exit_command(environment);
            appmgr_run_exit_command(nullptr);
            EXPECT_STREQ(command, "/usr/bin/printf %s| \"a  b\" 'c d' e"); // split in the child's memory only
            _exit(testing::Test::HasFailure() ? 1 : 0);
        },
        ExitedWithCode(0), "^a  b\\|c d\\|e\\|$");
}

} // namespace
