// What a person does with a display, tried with displays that are small scripts: keys, pictures, its log.
#include "display_fixture.h"

#include "sim/display/log_follower.h"

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
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

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
