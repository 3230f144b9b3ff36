// The display's manager with displays that are small scripts: how they are started, watched, ended and
// started again. With the real display it is tested in display_manager_test.
#include "display_fixture.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace std::string_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// --- The start

TEST_F(DisplayTest, GivesTheDisplayTheManagersPidTheBusAndTheLog)
{
    setenv("APPMGR_CLIENT_EXIT_CMD", "/bin/false", 1);
    options.keypadDirectory = directory.name;
    script("env >environment\n"s + AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    std::vector<std::string> environment = linesOf(directory.file("environment"));
    EXPECT_THAT(environment, Contains("APPMGR_PID=" + std::to_string(getpid())));
    EXPECT_THAT(environment, Contains("CBUS_ADDR=unix*of.this.test"));
    EXPECT_THAT(environment, Contains("SYSLOGTAP_FILE=" + directory.file("log")));
    EXPECT_THAT(environment, Contains(StartsWith("QT_PLUGIN_PATH=" + directory.name)));
    EXPECT_THAT(environment, Contains("QT_QPA_GENERIC_PLUGINS=deskkeypad:" +
                                      directory.file("keypad." + std::to_string(getpid()))));
    EXPECT_THAT(environment, Not(Contains(StartsWith("APPMGR_CLIENT_EXIT_CMD"))));
    unsetenv("APPMGR_CLIENT_EXIT_CMD");
}

TEST_F(DisplayTest, GivesTheDisplayNoDescriptorsNoBlockedSignalsAndAGroupOfItsOwn)
{
    int leaked = fcntl(0, F_DUPFD, 100);
    script("echo /proc/$$/fd/1?? >descriptors\n"
           "while read line; do case $line in SigBlk*|SigIgn*) echo $line;; esac; done </proc/$$/status "
           ">signals\n"
           "cut -d' ' -f5 /proc/$$/stat >group\n"s +
           AnswersForEver);
    signal(SIGALRM, SIG_IGN);
    start();
    ASSERT_TRUE(waitForRunning());
    EXPECT_EQ(contentOf(directory.file("descriptors")),
              "/proc/" + std::to_string(display->pid()) + "/fd/1??\n"); // none: the pattern itself
    EXPECT_EQ(contentOf(directory.file("signals")), "SigBlk: 0000000000000000\nSigIgn: 0000000000000000\n");
    EXPECT_EQ(contentOf(directory.file("group")), std::to_string(display->pid()) + "\n");
    close(leaked);
    signal(SIGALRM, SIG_DFL);
}

TEST_F(DisplayTest, TheKeypadsSocketIsItsUsersAlone)
{
    options.keypadDirectory = directory.name;
    script(AnswersForEver);
    start();
    struct stat file;
    std::string socket = directory.file("keypad." + std::to_string(getpid()));
    ASSERT_EQ(stat(socket.c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 0777, 0600u);
    display.reset();
    EXPECT_NE(stat(socket.c_str(), &file), 0);
}

TEST_F(DisplayTest, MakesADirectoryOfItsOwnForSocketAndLogAndRemovesIt)
{
    options.keypadDirectory = directory.name;
    options.logFile.clear();
    options.directory.clear();
    script("echo $SYSLOGTAP_FILE >name\n"s + AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    std::string log = linesOf(directory.file("name")).at(0);
    struct stat made;
    ASSERT_EQ(stat(log.substr(0, log.rfind('/')).c_str(), &made), 0);
    EXPECT_EQ(made.st_mode & 0777, 0700u);
    display.reset();
    EXPECT_NE(stat(log.substr(0, log.rfind('/')).c_str(), &made), 0);
}

TEST_F(DisplayTest, RunsOnceItHasReported)
{
    script("while [ ! -e go ]; do sleep 0.02; done\n"s + AnswersForEver);
    start();
    EXPECT_GT(display->pid(), 0);
    EXPECT_EQ(display->state(), sim::Display::State::Starting);
    std::ofstream(directory.file("go")) << "";
    EXPECT_TRUE(waitForRunning());
    std::string error;
    EXPECT_FALSE(display->start(&error));
    EXPECT_EQ(error, "the display runs already");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(DisplayTest, TellsWhyItCannotBeStarted)
{
    EXPECT_EQ(startError(), "there is no program to run");
    options.command = {"/none/such"};
    EXPECT_EQ(startError(), "cannot run /none/such: No such file or directory");
    options.command = {directory.name};
    EXPECT_EQ(startError(), "cannot run " + directory.name + ": Permission denied");
    script(AnswersForEver);
    options.syslogLibrary = "/none/library.so";
    EXPECT_EQ(startError(), "/none/library.so: No such file or directory");
    options.syslogLibrary.clear();
    options.keypadDirectory = "/none/plugins";
    EXPECT_EQ(startError(), "/none/plugins: No such file or directory");
    options.keypadDirectory = directory.name;
    options.directory = directory.file(std::string(120, 'x'));
    EXPECT_THAT(startError(), StartsWith("no socket can have the name "));
    options.directory = directory.file("a,b");
    EXPECT_THAT(startError(), StartsWith("no socket can have the name "));
    options.directory = directory.file("none");
    EXPECT_THAT(startError(), EndsWith("No such file or directory"));
    options.directory = directory.name;
    options.logFile = "/none/log";
    EXPECT_EQ(startError(), "cannot write /none/log: No such file or directory");
    EXPECT_EQ(display->pid(), -1);
    EXPECT_THAT(ends, IsEmpty());
}

// --- Signs of life

TEST_F(DisplayTest, AsksAgainAndAgain)
{
    script(AnswersForEver);
    start();
    EXPECT_TRUE(runUntil([this] { return linesOf(directory.file("asked")).size() >= 5; }));
    EXPECT_EQ(display->restarts(), 0u);
    EXPECT_THAT(told, IsEmpty());
}

// Before its report a question would end it, as it has no handler yet.
TEST_F(DisplayTest, AsksNothingBeforeTheReport)
{
    script("sleep 0.5\n"s + AnswersForEver);
    options.pingInterval = 10;
    start();
    EXPECT_TRUE(waitForRunning());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(DisplayTest, ASignOfLifeOfAnotherProcessCountsForNothing)
{
    script("sleep 100\n");
    start();
    pid_t stranger = fork();
    if (stranger == 0) {
        kill(getppid(), SIGUSR2);
        _exit(0);
    }
    waitpid(stranger, nullptr, 0);
    EXPECT_FALSE(runUntil([this] { return display->state() == sim::Display::State::Running; }, 200));
}

TEST_F(DisplayTest, ADisplayThatDoesNotAnswerIsKilledAndStartedAgain)
{
    script("trap '' USR2\n"s + Report + LiveOn);
    options.pingTimeout = 1000;
    options.shortLife = 0;
    auto begin = Clock::now();
    start();
    ASSERT_TRUE(waitForRunning());
    std::string name = "the display (pid " + std::to_string(display->pid()) + ")";
    ASSERT_TRUE(waitForRestarts(1));
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(990)); // the loop's clock has whole ms
    EXPECT_THAT(told,
                ElementsAre(name + " has given no sign of life for 1 s: it is killed",
                            name + " was ended by signal 9 (Killed), without a line in its log",
                            "the display is started again in 0.01 s",
                            "the display is started again (pid " + std::to_string(display->pid()) + ")"));
}

TEST_F(DisplayTest, ADisplayThatIsStoppedIsNoticed)
{
    script(AnswersForEver);
    options.pingTimeout = 2000;
    options.shortLife = 0;
    start();
    ASSERT_TRUE(waitForRunning());
    kill(display->pid(), SIGSTOP);
    ASSERT_TRUE(waitForRestarts(1));
    EXPECT_THAT(told.at(0), EndsWith("has given no sign of life for 2 s: it is killed"));
}

TEST_F(DisplayTest, ADisplayThatNeverReportsIsNoticed)
{
    script("exec sleep 100");
    options.pingTimeout = 200;
    options.shortLife = 0;
    start();
    ASSERT_TRUE(waitForRestarts(1));
    EXPECT_THAT(told.at(0), EndsWith("has given no sign of life for 0.2 s: it is killed"));
}

// Whoever stops this process for a while, or the whole machine, does not make the display silent.
TEST_F(DisplayTest, AnAnswerThatWaitsHereCounts)
{
    script(AnswersForEver);
    options.pingTimeout = 400;
    start();
    ASSERT_TRUE(runUntil([this] { return !linesOf(directory.file("asked")).empty(); }));
    for (int i = 0; i < 2; i++) {
        size_t asked = linesOf(directory.file("asked")).size();
        // The question goes out, the answer comes, and nothing is looked at in the meantime.
        runUntil([&] { return false; }, 35);
        std::this_thread::sleep_for(std::chrono::milliseconds(2000));
        ASSERT_TRUE(runUntil([&] { return linesOf(directory.file("asked")).size() > asked; }));
    }
    EXPECT_THAT(told, IsEmpty());
}

// --- The end

TEST_F(DisplayTest, AClosedWindowEndsAll)
{
    script("exit 0");
    start();
    std::string name = "the display (pid " + std::to_string(display->pid()) + ")";
    ASSERT_TRUE(waitForEnd());
    EXPECT_THAT(ends, ElementsAre(0));
    EXPECT_THAT(told, ElementsAre(name + " ended with status 0"));
    EXPECT_EQ(display->state(), sim::Display::State::Stopped);
    EXPECT_EQ(display->pid(), -1);
    EXPECT_EQ(display->uptime(), 0u);
    EXPECT_FALSE(runUntil([this] { return display->restarts() > 0; }, 100));
}

TEST_F(DisplayTest, AnEndBySignalIsToldWithTheLastFiveLines)
{
    script(
        "for i in 1 2 3 4 5 6; do echo \"<17.7> gui[$$]: line $i\" >>$SYSLOGTAP_FILE; done; kill -SEGV $$");
    options.shortLife = 0;
    start();
    std::string name = "the display (pid " + std::to_string(display->pid()) + ")";
    ASSERT_TRUE(runUntil([this] { return told.size() >= 7; }));
    told.resize(7);
    EXPECT_THAT(told, ElementsAre(name + " was ended by signal 11 (Segmentation fault); its last log lines:",
                                  "    <7> gui: line 2", "    <7> gui: line 3", "    <7> gui: line 4",
                                  "    <7> gui: line 5", "    <7> gui: line 6",
                                  "the display is started again in 0.01 s"));
}

// What its crash handler prints is no line of the log, but tells the signal.
TEST_F(DisplayTest, ACrashThatItsHandlerCaughtIsToldAsSuch)
{
    script("echo '<17.7> gui[1]: last' >>$SYSLOGTAP_FILE; echo '*** signal_handler: signal=11'\n"
           "echo Backtrace: >&2; exit 1");
    options.shortLife = 0;
    start();
    std::string name = "the display (pid " + std::to_string(display->pid()) + ")";
    ASSERT_TRUE(runUntil([this] { return told.size() >= 2; }));
    EXPECT_EQ(told[0],
              name +
                  " crashed by signal 11 (Segmentation fault) and ended with status 1; its last log lines:");
    EXPECT_EQ(told[1], "    <7> gui: last");
    EXPECT_THAT(display->lastLines(3), Contains("<6> output: Backtrace:"));
}

TEST_F(DisplayTest, APanicIsToldWithItsText)
{
    script("echo '<17.7> gui[1]: before' >>$SYSLOGTAP_FILE; printf '<17.1> gui[1]: Lost it\\\\n\\n' "
           ">>$SYSLOGTAP_FILE; echo '<17.6> gui[1]: another thread' >>$SYSLOGTAP_FILE\n"
           "exit 1");
    options.shortLife = 0;
    start();
    std::string name = "the display (pid " + std::to_string(display->pid()) + ")";
    ASSERT_TRUE(runUntil([this] { return !told.empty(); }));
    EXPECT_EQ(told[0], name + " ended with status 1: <1> gui: Lost it");
}

TEST_F(DisplayTest, LinesOfAnEarlierLifeAreNotToldAgain)
{
    script("[ -e once ] && exit 3; echo >once; echo '<17.1> gui[1]: Lost it' >>$SYSLOGTAP_FILE; exit 1");
    start();
    ASSERT_TRUE(waitForEnd());
    EXPECT_THAT(told, Contains(HasSubstr("Lost it")).Times(1));
    EXPECT_THAT(told, Contains(EndsWith(" ended with status 3, without a line in its log")));
}

TEST_F(DisplayTest, ThreeShortLivesInARowAreEnough)
{
    script("echo started >>starts; exit 1");
    start();
    ASSERT_TRUE(waitForEnd());
    EXPECT_THAT(ends, ElementsAre(1));
    EXPECT_EQ(linesOf(directory.file("starts")).size(), 3u);
    EXPECT_EQ(told.back(), "the display has ended 3 times within 5 s of its start: it is given up");
    EXPECT_FALSE(runUntil([this] { return display->restarts() > 2; }, 100));
}

TEST_F(DisplayTest, ALongLifeBetweenShortOnesStartsTheCountAnew)
{
    script("echo started >>starts; [ $(wc -l <starts) = 3 ] && sleep 3; exit 1");
    options.shortLife = 2500;
    start();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(linesOf(directory.file("starts")).size(), 6u);
}

TEST_F(DisplayTest, AProgramThatHasGoneEndsAll)
{
    std::string program = directory.file("program");
    std::ofstream(program) << "#!/bin/sh\nexit 1\n";
    chmod(program.c_str(), 0700);
    options.command = {program};
    options.restartDelay = 300;
    start();
    unlink(program.c_str());
    ASSERT_TRUE(waitForEnd());
    EXPECT_THAT(ends, ElementsAre(1));
    EXPECT_EQ(told.back(), "cannot run " + program + ": No such file or directory");
}

TEST_F(DisplayTest, StopEndsItWithoutAWordAndStartStartsIt)
{
    script(AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    pid_t pid = display->pid();
    int stopped = 0;
    display->stop([&] { stopped++; });
    display->stop([&] { stopped++; });
    EXPECT_EQ(stopped, 0);
    ASSERT_TRUE(runUntil([&] { return stopped == 2; }));
    EXPECT_TRUE(isGone(pid));
    display->stop([&] { stopped++; });
    EXPECT_EQ(stopped, 3); // nothing runs: at once
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(ends, IsEmpty());
    std::string error;
    ASSERT_TRUE(display->start(&error)) << error;
    EXPECT_TRUE(waitForRunning());
    EXPECT_NE(display->pid(), pid);
}

TEST_F(DisplayTest, StopEndsAFrozenOneAndOneThatTakesNoNotice)
{
    script(AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    kill(display->pid(), SIGSTOP);
    bool stopped = false;
    display->stop([&] { stopped = true; });
    EXPECT_TRUE(runUntil([&] { return stopped; }, 2500)); // by SIGTERM: SIGKILL comes after 3 s

    script("trap '' TERM\n"s + Answer + Report + LiveOn);
    start();
    ASSERT_TRUE(waitForRunning());
    stopped = false;
    auto begin = Clock::now();
    display->stop([&] { stopped = true; });
    EXPECT_TRUE(runUntil([&] { return stopped; }));
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(2990)); // the loop's clock has whole ms
}

TEST_F(DisplayTest, StopForgetsTheNextStart)
{
    script("echo started >>starts; exit 1");
    options.restartDelay = 100;
    start();
    ASSERT_TRUE(runUntil([this] { return !told.empty(); }));
    bool stopped = false;
    display->stop([&] { stopped = true; });
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(runUntil([this] { return linesOf(directory.file("starts")).size() > 1; }, 300));
}

// Whoever is told of the end may stop it: then it is not started again, and no signal goes anywhere later.
TEST_F(DisplayTest, StopWhileItsEndIsToldForgetsTheNextStart)
{
    script("echo started >>starts; exit 1");
    int stopped = 0;
    options.tell = [&](const std::string& line) {
        told.push_back(line);
        display->stop([&] { stopped++; });
    };
    start();
    ASSERT_TRUE(runUntil([&] { return stopped > 0; }));
    EXPECT_EQ(display->pid(), -1);
    EXPECT_FALSE(runUntil([this] { return linesOf(directory.file("starts")).size() > 1; }, 200));
    EXPECT_EQ(told.size(), 1u);
    EXPECT_THAT(ends, IsEmpty());
}

TEST_F(DisplayTest, RestartEndsItAndStartsItAgain)
{
    script(AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    pid_t pid = display->pid();
    display->restart();
    ASSERT_TRUE(waitForRestarts(1));
    EXPECT_TRUE(isGone(pid));
    EXPECT_TRUE(waitForRunning());
    EXPECT_THAT(ends, IsEmpty());
}

TEST_F(DisplayTest, TheObjectsEndEndsTheDisplay)
{
    script(AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    pid_t pid = display->pid();
    display.reset();
    EXPECT_TRUE(isGone(pid));
}

TEST_F(DisplayTest, EndsWithItsManagerHoweverThatEnds)
{
    for (int signo : {SIGKILL, SIGSEGV}) {
        int pipes[2];
        ASSERT_EQ(pipe2(pipes, O_CLOEXEC), 0);
        pid_t manager = fork();
        if (manager == 0) {
            script("sleep 1000"); // reports nothing, listens to nothing
            signal(SIGSEGV, SIG_DFL);
            sim::Display mine(fdloop_init(), options);
            std::string error;
            pid_t pid = mine.start(&error) ? mine.pid() : -1;
            if (write(pipes[1], &pid, sizeof pid) != sizeof pid)
                _exit(1);
            pause();
            _exit(1);
        }
        pid_t pid = -1;
        ASSERT_EQ(read(pipes[0], &pid, sizeof pid), static_cast<ssize_t>(sizeof pid));
        ASSERT_GT(pid, 0);
        EXPECT_FALSE(isGone(pid));
        kill(manager, signo);
        waitpid(manager, nullptr, 0);
        EXPECT_TRUE(runUntil([pid] { return isGone(pid); })) << signo;
        close(pipes[0]);
        close(pipes[1]);
    }
}
