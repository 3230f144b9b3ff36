// The display's manager with displays that are small scripts: how they are started, watched, ended and
// started again. With the real display it is tested in display_manager_test.
#include "sim/display/display.h"

#include "sim/display/log_follower.h"
#include "temporary_directory.h"

#include "runtime/fdloop.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
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

namespace {

using Clock = std::chrono::steady_clock;

fdloop_t* theLoop()
{
    static fdloop_t* loop = fdloop_init();
    return loop;
}

// Runs the loop until the condition holds; false after that time.
bool runUntil(const std::function<bool()>& condition, int milliseconds = 20000)
{
    auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    sim::Timer tick(theLoop());
    tick.every(10, [] {});
    while (!condition()) {
        if (Clock::now() > end)
            return false;
        fdloop_run(theLoop());
    }
    return true;
}

std::string contentOf(const std::string& file)
{
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> linesOf(const std::string& file)
{
    std::istringstream stream(contentOf(file));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

bool isGone(pid_t pid)
{
    std::string status = contentOf("/proc/" + std::to_string(pid) + "/status");
    return status.empty() || status.find("State:\tZ") != std::string::npos;
}

const char Report[] = "kill -USR2 $APPMGR_PID\n";
const char Answer[] = "trap 'kill -USR2 $APPMGR_PID; echo asked >>asked' USR2\n";
const char LiveOn[] = "while :; do sleep 0.02; done\n";
const char AnswersForEver[] = "trap 'kill -USR2 $APPMGR_PID; echo asked >>asked' USR2\n"
                              "trap 'exit 1' TERM\n"
                              "kill -USR2 $APPMGR_PID\n"
                              "while :; do sleep 0.02; done\n";

class DisplayTest : public testing::Test {
protected:
    DisplayTest()
    {
        options.busAddress = "unix*of.this.test";
        options.logFile = directory.file("log");
        options.directory = directory.name;
        options.screenshots = directory.file("screenshots");
        options.pingInterval = 30;
        options.pingTimeout = 10000;
        options.restartDelay = 10;
        options.tell = [this](const std::string& line) { told.push_back(line); };
        options.ended = [this](int status) { ends.push_back(status); };
    }

    // A display that is this script; it begins in the test's directory.
    void script(const std::string& text)
    {
        options.command = {"/bin/sh", "-c", "cd " + directory.name + "\n" + text};
    }
    void python(const std::string& text)
    {
        const std::string head =
            "import os, signal, socket, time\n"
            "signal.signal(signal.SIGUSR2, lambda *a: os.kill(os.getppid(), signal.SIGUSR2))\n"
            "path = os.environ['QT_QPA_GENERIC_PLUGINS'].split(':', 1)[1]\n"
            "keypad = socket.socket(socket.AF_UNIX)\n"
            "os.kill(int(os.environ['APPMGR_PID']), signal.SIGUSR2)\n";
        options.command = {"python3", "-c", head + text};
        options.keypadDirectory = directory.name;
    }
    // There may be one in a process.
    void make()
    {
        display.reset();
        display = std::make_unique<sim::Display>(theLoop(), options);
    }
    void start()
    {
        make();
        std::string error;
        ASSERT_TRUE(display->start(&error)) << error;
    }
    std::string startError()
    {
        make();
        std::string error;
        EXPECT_FALSE(display->start(&error));
        return error;
    }
    bool waitForRunning()
    {
        return runUntil([this] { return display->state() == sim::Display::State::Running; });
    }
    bool waitForRestarts(unsigned count)
    {
        return runUntil([this, count] { return display->restarts() >= count; });
    }
    bool waitForEnd()
    {
        return runUntil([this] { return !ends.empty(); });
    }
    // What came of a key, "ok" if it was handled.
    std::string press(sim::Key key)
    {
        std::string result;
        display->press(key, [&](const std::string& error) { result = error.empty() ? "ok" : error; });
        runUntil([&] { return !result.empty(); });
        return result;
    }
    std::string picture(const std::string& file, unsigned scale)
    {
        std::string result;
        display->takePicture(file, scale,
                             [&](const std::string& error) { result = error.empty() ? "ok" : error; });
        runUntil([&] { return !result.empty(); });
        return result;
    }

    TemporaryDirectory directory;
    sim::Display::Options options;
    std::vector<std::string> told;
    std::vector<int> ends;
    std::unique_ptr<sim::Display> display;
};

} // namespace

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

// --- Keys and pictures

TEST_F(DisplayTest, NamesItsKeys)
{
    for (const char* name : {"up", "down", "left", "right", "ok", "long", "screenshot"}) {
        sim::Key key;
        ASSERT_TRUE(sim::parseKey(name, &key)) << name;
        EXPECT_STREQ(sim::keyName(key), name);
    }
    sim::Key key;
    EXPECT_FALSE(sim::parseKey("", &key));
    EXPECT_FALSE(sim::parseKey("Up", &key));
}

TEST_F(DisplayTest, RefusesKeysAndPicturesClearly)
{
    script(AnswersForEver);
    make();
    EXPECT_EQ(press(sim::Key::Up), "no display is running");
    EXPECT_EQ(picture(directory.file("a.png"), 1), "no display is running");
    start();
    ASSERT_TRUE(waitForRunning());
    EXPECT_EQ(press(sim::Key::Up), "the display was started without a keypad");
    EXPECT_EQ(picture(directory.file("a.png"), 0), "a picture is enlarged 1 to 32 times");
    EXPECT_EQ(picture(directory.file("a.png"), 33), "a picture is enlarged 1 to 32 times");
}

TEST_F(DisplayTest, PressesOneKeyAfterTheOther)
{
    python("keypad.connect(path)\n"
           "lines = keypad.makefile('rw')\n"
           "while True:\n"
           "    key = lines.readline().strip()\n"
           "    open(os.path.dirname(path) + '/keys', 'a').write(key + '\\n')\n"
           "    lines.write('done ' + key + '\\n'); lines.flush()\n");
    start();
    std::vector<std::string> results;
    for (sim::Key key : {sim::Key::Up, sim::Key::LongOk, sim::Key::Screenshot})
        display->press(key, [&](const std::string& error) { results.push_back(error); });
    uint64_t forgotten =
        display->press(sim::Key::Left, [&](const std::string&) { results.push_back("forgotten"); });
    display->press(sim::Key::Down, [&](const std::string& error) { results.push_back(error); });
    display->forget(forgotten);
    ASSERT_TRUE(runUntil([&] { return results.size() >= 4; }));
    EXPECT_THAT(results, ElementsAre("", "", "", ""));
    EXPECT_THAT(linesOf(directory.file("keys")), ElementsAre("up", "long", "screenshot", "down"));
}

TEST_F(DisplayTest, TriesAgainWhileThereIsNoWindow)
{
    python("keypad.connect(path)\n"
           "lines = keypad.makefile('rw')\n"
           "for i in range(4):\n"
           "    key = lines.readline().strip()\n"
           "    lines.write(('hidden ' if i < 3 else 'done ') + key + '\\n'); lines.flush()\n"
           "time.sleep(100)\n");
    start();
    EXPECT_EQ(press(sim::Key::Ok), "ok");
}

TEST_F(DisplayTest, AKeyEndsWithTheDisplay)
{
    python("keypad.connect(path)\nkeypad.recv(1)\nos._exit(1)\n");
    start();
    EXPECT_EQ(press(sim::Key::Ok), "the display has ended");
}

TEST_F(DisplayTest, JunkOfTheDriverDoesNoHarm)
{
    python("keypad.connect(path)\nkeypad.recv(1)\nkeypad.send(b'\\0\\xff\\n')\ntime.sleep(100)\n");
    start();
    EXPECT_EQ(press(sim::Key::Ok), "the display's keypad does not know the key");

    // Answers that nobody asked for, then a line without an end; the driver is dropped, and comes back.
    python("keypad.connect(path)\nkeypad.send(b'done up\\n' * 100)\nkeypad.send(b'x' * 100000)\n"
           "try:\n    keypad.send(b'x' * 100000)\nexcept OSError: pass\n"
           "keypad = socket.socket(socket.AF_UNIX)\nkeypad.connect(path)\n"
           "lines = keypad.makefile('rw')\n"
           "lines.write('done ' + lines.readline()); lines.flush()\n"
           "time.sleep(100)\n");
    start();
    EXPECT_EQ(press(sim::Key::Up), "ok");
}

// Another process of the same user may connect, but it is not the display.
TEST_F(DisplayTest, OnlyTheDisplayIsTheKeypad)
{
    python("time.sleep(0.3)\nkeypad.connect(path)\n"
           "lines = keypad.makefile('rw')\n"
           "lines.write('done ' + lines.readline()); lines.flush()\n"
           "time.sleep(100)\n");
    start();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    strcpy(address.sun_path, directory.file("keypad." + std::to_string(getpid())).c_str());
    int stranger = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0);
    ASSERT_EQ(connect(stranger, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(send(stranger, "junk\0\n", 6, MSG_NOSIGNAL), 6);
    EXPECT_EQ(press(sim::Key::Up), "ok");
    char byte;
    EXPECT_LE(recv(stranger, &byte, 1, 0), 0); // it was told nothing
    EXPECT_NE(errno, EAGAIN);                  // and was shown out
    close(stranger);
}

// The limit of 10 s; the answer that comes behind it is none to the next key.
TEST_F(DisplayTest, AKeyThatIsHandledTooLateIsToldAndItsAnswerForgotten)
{
    python("keypad.connect(path)\n"
           "lines = keypad.makefile('rw')\n"
           "first = lines.readline()\n"
           "second = lines.readline()\n"
           "lines.write('done ' + first); lines.flush()\n"
           "time.sleep(0.5)\n"
           "open(os.path.dirname(path) + '/second', 'w').write('')\n"
           "lines.write('done ' + second); lines.flush()\n"
           "time.sleep(100)\n");
    start();
    EXPECT_EQ(press(sim::Key::Up), "the display did not handle the key within 10 s");
    EXPECT_EQ(press(sim::Key::Up), "ok");
    EXPECT_EQ(access(directory.file("second").c_str(), F_OK), 0);
}

// Without a handler the request for a picture would end it.
TEST_F(DisplayTest, ADisplayThatIsNotUpToAPictureIsNotAskedForOne)
{
    script(AnswersForEver);
    start();
    ASSERT_TRUE(waitForRunning());
    EXPECT_EQ(picture(directory.file("a.png"), 1), "the display shows no window yet");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(DisplayTest, APictureIsTheFileThatTheDisplayWritesAndThenGoes)
{
    // One pixel of red; an unfinished file and one with another name are none.
    const std::string write =
        "write() { printf 'BM'; head -c 8 /dev/zero; printf '\\066\\0\\0\\0\\050\\0\\0\\0\\1\\0\\0\\0"
        "\\1\\0\\0\\0\\1\\0\\030\\0'; head -c 24 /dev/zero; printf '\\0\\0\\377\\0'; }\n";
    script(write +
           "trap 'echo x >$dir/other.bmp; write >$dir/screen_20260102_030405.bmp; sleep 0.1' USR1\n"
           "dir=screenshots\n" +
           AnswersForEver);
    std::filesystem::create_directory(directory.file("screenshots"));
    start();
    ASSERT_TRUE(waitForRunning());
    ASSERT_EQ(picture(directory.file("a.png"), 2), "ok");
    EXPECT_THAT(contentOf(directory.file("a.png")), StartsWith("\x89PNG"));
    EXPECT_FALSE(std::filesystem::exists(directory.file("screenshots/screen_20260102_030405.bmp")));
    EXPECT_TRUE(std::filesystem::exists(directory.file("screenshots/other.bmp")));
    // A screenshot of the same name that somebody had asked for stays.
    std::ofstream(directory.file("screenshots/screen_20260102_030405.bmp")) << "";
    ASSERT_EQ(picture(directory.file("a.png"), 2), "ok");
    EXPECT_TRUE(std::filesystem::exists(directory.file("screenshots/screen_20260102_030405.bmp")));
    EXPECT_THAT(picture(directory.file("none/a.png"), 2), StartsWith("cannot write "));
}

// --- The log

TEST_F(DisplayTest, ListenersHearTheLogAsItComes)
{
    script("trap 'exit 1' TERM\n"s + Answer + Report +
           "printf '<17.6> gui[4]: a line in' >>$SYSLOGTAP_FILE; sleep 0.1; printf ' parts\\n' "
           ">>$SYSLOGTAP_FILE\n"
           "echo printed\n" +
           LiveOn);
    start();
    std::vector<std::string> lines;
    std::vector<std::string> others;
    uint64_t other = 0;
    display->listenToLog([&](const std::string& line) { lines.push_back(line); });
    other = display->listenToLog([&](const std::string& line) {
        others.push_back(line);
        display->forget(other);
    });
    ASSERT_TRUE(runUntil([&] { return lines.size() >= 2; }));
    EXPECT_THAT(lines, ElementsAre("<6> gui: a line in parts", "<6> output: printed"));
    EXPECT_THAT(others, ElementsAre("<6> gui: a line in parts"));
    EXPECT_THAT(display->lastLines(1), ElementsAre("<6> output: printed"));
    EXPECT_THAT(display->lastLines(100), ElementsAre("<6> gui: a line in parts", "<6> output: printed"));
}

TEST_F(DisplayTest, TheLogIsEmptiedAtTheFirstStartOnly)
{
    std::ofstream(directory.file("log")) << "<17.6> gui[4]: of old\n";
    script("echo one; exit 1");
    start();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(contentOf(directory.file("log")), "one\none\none\n");
}

TEST(LogFollowerTest, MakesLinesReadable)
{
    const struct {
        const char* line;
        const char* readable;
    } rows[] = {
        {"<17.7> gui[4711]: text", "<7> gui: text"},
        {"<1.0> lumenpanel[1]: a: b[c]: d", "<0> lumenpanel: a: b[c]: d"},
        {"<17.3> gui[4711]: with its end\\n", "<3> gui: with its end"},
        {"<17.3> gui[4711]: ", "<3> gui: "},
        {"<17.3> gui[4711]: \033[2Jtab\there", "<3> gui: ?[2Jtab?here"},
        {"printed", "<6> output: printed"},
        {"", "<6> output: "},
        {"<", "<6> output: <"},
        {"<17", "<6> output: <17"},
        {"<17.", "<6> output: <17."},
        {"<17.7", "<6> output: <17.7"},
        {"<17.7> gui[4711", "<6> output: <17.7> gui[4711"},
        {"<x.7> gui[4711]: text", "<6> output: <x.7> gui[4711]: text"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sim::readableLogLine(row.line), row.readable);
    EXPECT_EQ(sim::logPriority("<3> gui: text"), 3);
    EXPECT_TRUE(sim::isOutputLine("<6> output: text"));
    EXPECT_FALSE(sim::isOutputLine("<6> gui: output: text"));
}

TEST(LogFollowerTest, FollowsAFileThatIsEmptiedAndCutsLinesThatAreTooLong)
{
    TemporaryDirectory directory;
    std::vector<std::string> heard;
    sim::LogFollower log(theLoop(), [&](const std::string& line) { heard.push_back(line); });
    std::string error;
    ASSERT_TRUE(log.start(directory.file("log"), &error)) << error;
    std::ofstream(directory.file("log"), std::ios::app) << "one\n" << std::string(100000, 'x') << "\ntwo\n";
    ASSERT_TRUE(runUntil([&] { return heard.size() == 3; }));
    EXPECT_EQ(heard[1], "<6> output: " + std::string(sim::LogFollower::LongestLine, 'x'));
    EXPECT_EQ(heard[2], "<6> output: two");
    std::ofstream(directory.file("log")) << "new\n";
    ASSERT_TRUE(runUntil([&] { return heard.size() == 4; }));
    EXPECT_EQ(heard[3], "<6> output: new");
    std::ofstream(directory.file("log"), std::ios::app) << "half";
    log.readToTheEnd();
    EXPECT_EQ(heard.back(), "<6> output: half");
    EXPECT_EQ(log.count(), 5u);
}

TEST(LogFollowerTest, KeepsTheNewestLines)
{
    TemporaryDirectory directory;
    size_t heard = 0;
    sim::LogFollower log(theLoop(), [&](const std::string&) { heard++; });
    std::string error;
    ASSERT_TRUE(log.start(directory.file("log"), &error)) << error;
    {
        std::ofstream file(directory.file("log"), std::ios::app);
        for (int i = 1; i <= 200000; i++) // more than one turn of the loop takes
            file << i << "\n";
    }
    ASSERT_TRUE(runUntil([&] { return heard == 200000; }));
    EXPECT_EQ(log.newest(5000).size(), sim::LogFollower::Kept);
    EXPECT_THAT(log.newest(2), ElementsAre("<6> output: 199999", "<6> output: 200000"));
    EXPECT_THAT(log.newest(5, 199999), ElementsAre("<6> output: 200000"));
    EXPECT_THAT(log.newest(5, 200000), IsEmpty());
}
