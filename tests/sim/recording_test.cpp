// Recordings: what the file holds, how it is given again, and what is told of files that are none.
#include "console_session.h"
#include "process.h"
#include "raw_client.h"
#include "temporary_directory.h"

#include "sim/recording.h"
#include "support/emptyterminal.h"
#include "support/patience.h"

#include "runtime/config_client_api.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <sys/stat.h>
#include <thread>

using namespace std::string_literals;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

using Clock = std::chrono::steady_clock;

int64_t since(Clock::time_point begin)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
}

class RecordingTest : public testing::Test {
protected:
    std::string read(const std::string& file)
    {
        std::ifstream in(file);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    std::string write(const std::string& text)
    {
        std::string file = directory.file("written");
        std::ofstream(file) << text;
        return file;
    }
    void begin(sim::Terminal& terminal)
    {
        terminal.onThread([&] {
            std::string error;
            EXPECT_TRUE(terminal.recorder().begin(file, &error)) << error;
        });
    }
    void end(sim::Terminal& terminal)
    {
        terminal.onThread([&] {
            std::string error;
            EXPECT_TRUE(terminal.recorder().end(&error)) << error;
        });
    }
    sim::Recording load()
    {
        sim::Recording recording;
        std::string error;
        EXPECT_TRUE(sim::loadRecording(file, &recording, &error)) << error;
        return recording;
    }

    TemporaryDirectory directory;
    std::string file = directory.file("recording");
};

const char Head[] = "# terminalsim recording 1\n";

} // namespace

// --- Writing

TEST_F(RecordingTest, TheFileHasTheDatabaseAndEveryMessageInOrder)
{
    sim::Terminal terminal(emptyTerminal());
    terminal.set("cfg.text", "a \"b\"\n");
    terminal.set("ram.number", 5);
    terminal.set("ram.bytes", sim::Value::blob("\0\xff"s));
    RawClient client(terminal.address());
    client.sync();
    begin(terminal);
    client.filter("config.change.ram");
    client.sendSignal("config.write.ram.number", writeOf(6));
    client.sync();
    terminal.set("ram.number", 7);
    end(terminal);

    std::istringstream in(read(file));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    EXPECT_THAT(
        lines,
        ElementsAre("# terminalsim recording 1",
                    MatchesRegex("# [0-9]{4}-[0-9][0-9]-[0-9][0-9] [0-9][0-9]:[0-9][0-9]:[0-9][0-9]"),
                    "[values]", "cfg.text = string \"a \\\"b\\\"\\n\"", "ram.bytes = blob 00 ff",
                    "ram.number = int 5", "[messages]",
                    MatchesRegex("[0-9]+ from 1 signal 7.1 cbus.filter text \"config.change.ram\""),
                    MatchesRegex("[0-9]+ from 1 signal 7.2 config.write.ram.number write int 6"),
                    MatchesRegex("[0-9]+ all 1 signal 0.0 config.change.ram records ram.number = int 6"),
                    MatchesRegex("[0-9]+ from 1 request 7.3 nobody.serves.this"),
                    MatchesRegex("[0-9]+ to 1 reply 7.3 nobody.serves.this"),
                    MatchesRegex("[0-9]+ all 0 signal 0.0 config.change.ram records ram.number = int 7"),
                    MatchesRegex("[0-9]+ end")));

    sim::Recording recording = load();
    EXPECT_EQ(recording.values.size(), 3u);
    EXPECT_EQ(recording.values[0].key, "cfg.text");
    EXPECT_EQ(recording.values[0].value, sim::Value::text("a \"b\"\n"));
    ASSERT_EQ(recording.events.size(), 6u);
    EXPECT_EQ(recording.events[1].message.data, writeOf(6));
    EXPECT_EQ(recording.events[1].message.src, 7);
    EXPECT_EQ(recording.events[1].message.seqn, 2);
}

TEST_F(RecordingTest, KeysAndValuesWithoutAPlainFormComeBackExactly)
{
    sim::Terminal terminal(emptyTerminal());
    const std::pair<std::string, sim::Value> odd[] = {
        {"ram.two words", sim::Value::integer(1)},     {"#comment", sim::Value::integer(2)},
        {"[values]", sim::Value::integer(3)},          {"hex", sim::Value::integer(4)},
        {"ram.nul", {sim::Type::String, "a\0b\0"s}},   {"ram.equals = int", sim::Value::integer(5)},
        {"ram.utf", sim::Value::text("\xc3\xa4\xff")},
    };
    std::map<std::string, sim::Value> wanted;
    for (const auto& [key, value] : odd) {
        terminal.set(key, value);
        wanted[key] = value;
    }
    begin(terminal);
    end(terminal);
    std::map<std::string, sim::Value> found;
    for (const sim::Write& write : load().values)
        found[write.key] = write.value;
    EXPECT_EQ(found, wanted);
}

TEST_F(RecordingTest, OnlyItsOwnerMayReadIt)
{
    sim::Terminal terminal(emptyTerminal());
    begin(terminal);
    struct stat facts;
    ASSERT_EQ(stat(file.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0600u);
}

TEST_F(RecordingTest, ARecordingIsWrittenOverAndNothingElse)
{
    sim::Terminal terminal(emptyTerminal());
    begin(terminal);
    terminal.onThread([&] {
        std::string error;
        EXPECT_FALSE(terminal.recorder().begin(file, &error));
        EXPECT_EQ(error, "recording to " + file + " already");
    });
    end(terminal);
    begin(terminal);
    end(terminal);
    std::ofstream(file) << "a diary";
    terminal.onThread([&] {
        std::string error;
        EXPECT_FALSE(terminal.recorder().begin(file, &error));
        EXPECT_EQ(error, file + ": there is a file that is no recording");
        EXPECT_FALSE(terminal.recorder().begin(directory.name, &error));
        EXPECT_THAT(error, StartsWith(directory.name + ": "));
        EXPECT_FALSE(terminal.recorder().begin("/dev/null", &error));
        EXPECT_EQ(error, "/dev/null: not a file");
        EXPECT_FALSE(terminal.recorder().isRecording());
    });
    EXPECT_EQ(read(file), "a diary");
}

TEST_F(RecordingTest, AStopOfTheTerminalEndsIt)
{
    sim::Terminal terminal(emptyTerminal());
    begin(terminal);
    terminal.stop();
    EXPECT_THAT(read(file), EndsWith(" end\n"));
    terminal.onThread([&] {
        std::string error;
        EXPECT_FALSE(terminal.recorder().begin(file, &error));
        EXPECT_EQ(error, "the terminal is stopped");
    });
    terminal.start();
    begin(terminal);
}

// --- Bad files

TEST_F(RecordingTest, BadFilesAreToldWithTheirLine)
{
    const std::pair<std::string, std::string> rows[] = {
        {"", ": not a recording of terminalsim: it has no [messages]"},
        {"a diary\n", ":1: not a recording of terminalsim"},
        {"# terminalsim recording 2\n", ":1: not a recording of terminalsim"},
        {Head, ": not a recording of terminalsim: it has no [messages]"},
        {Head + "ram.a = int 1\n"s, ":2: before [values] or [messages]"},
        {Head + "[values]\n\n# x\nram.a = int x\n"s, ":5: not a number: x"},
        {Head + "[values]\nram.a\n"s, ":3: a record is written \"KEY = VALUE\", not ram.a"},
        {Head + "[values]\nhex 00\n"s, ":3: these bytes are no record"},
        {Head + "[values]\n[values]\n"s, ":3: [values] stands in the wrong place"},
        {Head + "[messages]\n[values]\n"s, ":3: [values] stands in the wrong place"},
        {Head + "[messages]\nx\n"s, ":3: a line begins with its milliseconds, not with \"x\""},
        {Head + "[messages]\n5\n"s, ":3: a line begins with its milliseconds, not with \"5\""},
        {Head + "[messages]\n-5 end\n"s, ":3: a line begins with its milliseconds, not with \"-5\""},
        {Head + "[messages]\n99999999999 end\n"s,
         ":3: a line begins with its milliseconds, not with \"99999999999\""},
        {Head + "[messages]\n5 all 0 signal 0.0 a\n4 end\n"s, ":4: earlier than the line before"},
        {Head + "[messages]\n5 by 0 signal 0.0 a\n"s, ":3: \"by\" is neither from, to nor all"},
        {Head + "[messages]\n5 end\n6 end\n"s, ":4: behind the end"},
    };
    for (const auto& [text, expected] : rows) {
        SCOPED_TRACE(text);
        std::string name = write(text);
        sim::Recording recording;
        std::string error;
        EXPECT_FALSE(sim::loadRecording(name, &recording, &error));
        EXPECT_EQ(error, name + expected);
        EXPECT_THAT(recording.values, IsEmpty());
        EXPECT_THAT(recording.events, IsEmpty());
    }
    sim::Recording recording;
    std::string error;
    EXPECT_FALSE(sim::loadRecording(directory.file("none"), &recording, &error));
    EXPECT_EQ(error, directory.file("none") + ": No such file or directory");
    EXPECT_FALSE(sim::loadRecording(directory.name, &recording, &error));
    EXPECT_EQ(error, directory.name + ": not a file");
}

TEST_F(RecordingTest, OneThatWasCutOffIsReadUpToThere)
{
    sim::Recording recording;
    std::string error;
    ASSERT_TRUE(sim::loadRecording(
        write(Head + "[messages]\n5 all 0 signal 0.0 a\n6 all 0 signal 0.0 b\n7 all 0 sig"s), &recording,
        &error))
        << error;
    EXPECT_EQ(recording.events.size(), 2u);
    EXPECT_EQ(recording.end, 6u);
}

// --- Comparing

TEST(CompareWrites, TheFirstThatDidNotComeAgain)
{
    struct Row {
        std::vector<std::string> expected;
        std::vector<std::string> seen;
        size_t cameAgain;
        size_t others;
        const char* missing;
    };
    const Row rows[] = {
        {{}, {}, 0, 0, ""},
        {{"a"}, {"a"}, 1, 0, ""},
        {{"a"}, {}, 0, 0, "a"},
        {{}, {"a"}, 0, 1, ""},
        {{"a", "b", "c"}, {"a", "c"}, 2, 0, "b"},
        {{"a", "b", "c"}, {"a", "x", "b", "c"}, 3, 1, ""},
        {{"a", "b"}, {"b", "a"}, 1, 1, "b"},
        {{"a", "b", "c", "d"}, {"x", "b", "y", "d"}, 2, 2, "a"},
        {{"a", "b", "c", "d", "e"}, {"a", "c", "b", "e"}, 3, 1, "c"},
        {{"a", "a", "a"}, {"a", "a"}, 2, 0, "a"},
        {{"a", "b"}, {"a", "x", "y"}, 1, 2, "b"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.expected) + " " + testing::PrintToString(row.seen));
        sim::Replay::Result result = sim::compareWrites(row.expected, row.seen);
        EXPECT_TRUE(result.compared);
        EXPECT_EQ(result.expected, row.expected.size());
        EXPECT_EQ(result.cameAgain, row.cameAgain);
        EXPECT_EQ(result.others, row.others);
        EXPECT_EQ(result.firstMissing, row.missing);
    }
}

TEST(CompareWrites, ManyThatDifferAreNotComparedAndTheFirstIsTold)
{
    std::vector<std::string> expected;
    std::vector<std::string> seen;
    for (int at = 0; at < 5000; at++) {
        expected.push_back("a" + std::to_string(at));
        seen.push_back("b" + std::to_string(at));
    }
    expected.insert(expected.begin(), "same");
    seen.insert(seen.begin(), "same");
    sim::Replay::Result result = sim::compareWrites(expected, seen);
    EXPECT_FALSE(result.compared);
    EXPECT_EQ(result.cameAgain, 1u);
    EXPECT_EQ(result.firstMissing, "a0");
}

// --- Giving it again

namespace {

// A display in small: it answers each change of ram.a with a write of ram.b, one more.
class SmallDisplay {
public:
    explicit SmallDisplay(const std::string& address, uint32_t step = 1) : client(address)
    {
        client.filter("config.change.ram");
        client.sync();
        thread = std::thread([this, step] {
            while (auto message = client.readFrame(PATIENCE_MS)) {
                std::vector<sim::Write> writes;
                sim::readRecords(message->data, &writes);
                for (const sim::Write& write : writes) {
                    if (write.key == "ram.end")
                        return;
                    if (write.key == "ram.a")
                        client.sendSignal("config.write.ram.b",
                                          writeOf(static_cast<uint32_t>(write.value.toInt()) + step));
                }
            }
        });
    }
    ~SmallDisplay() { thread.join(); }

private:
    RawClient client;
    std::thread thread;
};

} // namespace

TEST_F(RecordingTest, AtEachSpeedTheChangesComeAgainAndTheWritesAreCompared)
{
    constexpr int Pause = 100; // ms
    {
        sim::Terminal terminal(emptyTerminal());
        terminal.set("ram.a", 1);
        SmallDisplay display(terminal.address());
        begin(terminal);
        for (int value : {2, 3, 4}) {
            std::this_thread::sleep_for(std::chrono::milliseconds(Pause));
            terminal.set("ram.a", value);
            EXPECT_TRUE(terminal.waitForValue("ram.b", sim::Value::integer(value + 1)));
        }
        terminal.sendSignal("hello", "world\0"s);
        end(terminal);
        terminal.set("ram.end", 1);
    }
    struct Row {
        const char* line;
        int64_t atLeast;
    };
    for (const Row& row :
         {Row{" 1", 3 * Pause}, Row{"", 3 * Pause}, Row{" 2", 3 * Pause / 2}, Row{" 0", 0}}) {
        SCOPED_TRACE(row.line);
        sim::Terminal terminal(emptyTerminal());
        terminal.set("ram.old", 1);
        RawClient listener(terminal.address());
        listener.filter("hello");
        SmallDisplay display(terminal.address());
        ConsoleSession console(terminal);
        Clock::time_point start = Clock::now();
        EXPECT_EQ(console.transcript("replay " + file + row.line),
                  "3 of 3 writes of clients came again, and 1 others\n");
        EXPECT_GE(since(start), row.atLeast - 1);
        EXPECT_EQ(terminal.getInt("ram.a"), 4);
        EXPECT_EQ(terminal.getInt("ram.b"), 5);
        EXPECT_FALSE(terminal.has("ram.old"));
        auto hello = listener.readFrame();
        ASSERT_TRUE(hello);
        EXPECT_EQ(hello->data, "world\0"s);
        terminal.set("ram.end", 1);
    }
}

TEST_F(RecordingTest, ADisplayThatWritesSomethingElseIsNoticed)
{
    {
        sim::Terminal terminal(emptyTerminal());
        SmallDisplay display(terminal.address());
        begin(terminal);
        terminal.set("ram.a", 2);
        EXPECT_TRUE(terminal.waitForValue("ram.b", sim::Value::integer(3)));
        end(terminal);
        terminal.set("ram.end", 1);
    }
    sim::Terminal terminal(emptyTerminal());
    SmallDisplay display(terminal.address(), 5);
    ConsoleSession console(terminal);
    EXPECT_THAT(console.transcript("replay " + file + " 0"),
                MatchesRegex("0 of 1 writes of clients came again, and 1 others\n"
                             "the first that did not: config\\.write\\.ram\\.b write int 3 "
                             "\\(at [0-9]+\\.[0-9]{3} s\\)\n"
                             "error: the clients did not write what they had written\n\\[1\\]"));
    terminal.set("ram.end", 1);
}

TEST_F(RecordingTest, TheTerminalsProcessesAreSilentMeanwhileAndBeginAnewBehindIt)
{
    std::ofstream(file) << Head << "[values]\nram.x = int 1\n[messages]\n"
                        << "100 all 0 signal 0.0 config.change.ram records ram.x = int 2\n400 end\n";
    sim::TerminalOptions options;
    options.actors = true;
    options.moving = true;
    options.speed = 1000;
    sim::Terminal terminal(options);
    ConsoleSession console(terminal);
    console.begin("replay " + file);
    ASSERT_TRUE(terminal.waitForValue("ram.x", sim::Value::integer(2)));
    EXPECT_THAT(terminal.list(""), ElementsAre(testing::Pair("ram.x", sim::Value::integer(2))));
    terminal.set("ram.desk.signal", "40"); // nobody takes it now
    EXPECT_TRUE(terminal.has("ram.desk.signal"));
    EXPECT_EQ(console.end(), "0 of 0 writes of clients came again, and 0 others\n");
    EXPECT_TRUE(terminal.waitForAbsence("ram.desk.signal"));
}

TEST_F(RecordingTest, WhatIsBrokenOffLetsTheProcessesBeginAnew)
{
    std::ofstream(file) << Head << "[messages]\n60000 end\n";
    sim::TerminalOptions options;
    options.actors = true;
    sim::Terminal terminal(options);
    {
        ConsoleSession console(terminal);
        console.begin("replay " + file);
        EXPECT_TRUE(terminal.waitForAbsence("cfg.language")); // the values of the recording: none
        terminal.set("ram.desk.signal", "40");
        EXPECT_TRUE(terminal.has("ram.desk.signal"));
    }
    EXPECT_TRUE(terminal.waitForAbsence("ram.desk.signal"));
}

TEST_F(RecordingTest, AClientThatIsBeingStartedIsWaitedForWhereTheFirstOneSpoke)
{
    std::ofstream(file) << Head << "[messages]\n"
                        << "0 all 0 signal 0.0 config.change.ram records ram.x = int 1\n"
                        << "10 from 1 signal 7.0 config.write.ram.b write int 3\n"
                        << "20 all 0 signal 0.0 config.change.ram records ram.x = int 2\n"
                        << "30 end\n";
    sim::Terminal terminal(emptyTerminal());
    ConsoleSession console(terminal);
    console.begin("replay " + file);
    ASSERT_TRUE(terminal.waitForValue("ram.x", sim::Value::integer(1)));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(terminal.getInt("ram.x"), 1);
    RawClient client(terminal.address());
    client.sendSignal("config.write.ram.b", writeOf(3));
    EXPECT_EQ(console.end(), "1 of 1 writes of clients came again, and 0 others\n");
    EXPECT_EQ(terminal.getInt("ram.x"), 2);
}

TEST_F(RecordingTest, WhatClientsDidIsNotDoneForThem)
{
    std::ofstream(file) << Head << "[messages]\n"
                        << "1 from 1 signal 7.0 config.write.ram.b write int 3\n"
                        << "1 all 1 signal 0.0 config.change.ram records ram.b = int 3\n"
                        << "2 from 2 request 7.0 config.modifyv.terminalsim records ram.c = int 4\n"
                        << "2 all 0 signal 0.0 config.change.ram records ram.c = int 4\n"
                        << "3 end\n";
    sim::Terminal terminal(emptyTerminal());
    RawClient client(terminal.address());
    client.sync();
    sim::Replay::Result result;
    bool isDone = false;
    std::unique_ptr<sim::Replay> replay;
    terminal.onThread([&] {
        replay = std::make_unique<sim::Replay>(
            terminal, load(), 1,
            [&](const sim::Replay::Result& told) {
                result = told;
                isDone = true;
                terminal.set("ram.done", 1);
            },
            100);
    });
    ASSERT_TRUE(terminal.waitForValue("ram.done", sim::Value::integer(1)));
    terminal.onThread([&] { replay.reset(); });
    EXPECT_TRUE(isDone);
    EXPECT_FALSE(terminal.has("ram.b"));
    EXPECT_EQ(terminal.getInt("ram.c"), 4); // the desk's own writes are the terminal's
    EXPECT_EQ(result.expected, 1u);
    EXPECT_EQ(result.firstMissing, "config.write.ram.b write int 3 (at 0.001 s)");
}

TEST(ClientWrite, WhatCountsAsOne)
{
    struct Row {
        uint8_t type;
        const char* name;
        bool counts;
    };
    const Row rows[] = {
        {CBUS_TYPE_SIGNAL, "config.write.a", true},
        {CBUS_TYPE_SIGNAL, "config.writev.blk", true},
        {CBUS_TYPE_SIGNAL, "config.delm.a", true},
        {CBUS_TYPE_SIGNAL, "config.sync.cfg", true},
        {CBUS_TYPE_REQUEST, "config.modifyv.blk", true},
        {CBUS_TYPE_REQUEST, "config.factory_reset", true},
        {CBUS_TYPE_SIGNAL, "bp_ctrl.pointing", true},
        {CBUS_TYPE_REQUEST, "config.modifyv.terminalsim", false},
        {CBUS_TYPE_REQUEST, "config.read.a", false},
        {CBUS_TYPE_REQUEST, "config.readv.blk", false},
        {CBUS_TYPE_REQUEST, "config.readm.a", false},
        {CBUS_TYPE_REQUEST, "config.stat.a", false},
        {CBUS_TYPE_SIGNAL, "config.validate.register", false},
        {CBUS_TYPE_SIGNAL, "config.validate.rsp", false},
        {CBUS_TYPE_SIGNAL, "cbus.filter", false},
        {CBUS_TYPE_SIGNAL, "cbus.provide", false},
        {CBUS_TYPE_REQUEST, "clock.time", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(!sim::clientWrite(row.type, row.name, {}).empty(), row.counts) << row.name;
}

// --- Commands

TEST_F(RecordingTest, Commands)
{
    sim::Terminal terminal(emptyTerminal());
    ConsoleSession console(terminal);
    EXPECT_EQ(console.transcript("record"), "not recording\n");
    EXPECT_EQ(console.transcript("record off"), "error: nothing is recorded\n[1]");
    EXPECT_EQ(console.transcript("record " + file), "");
    EXPECT_EQ(console.transcript("record " + file), "error: recording to " + file + " already\n[1]");
    terminal.set("ram.a", 1);
    EXPECT_EQ(console.transcript("record"), "recording to " + file + ": 1 messages\n");
    EXPECT_EQ(console.transcript("record off"), "");
    EXPECT_EQ(console.transcript("record " + directory.name),
              "error: " + directory.name + ": Is a directory\n[1]");
    EXPECT_EQ(console.transcript("replay " + directory.file("none")),
              "error: " + directory.file("none") + ": No such file or directory\n[1]");
    for (const char* line : {"record a b", "replay", "replay a x", "replay a -1", "replay a 1001",
                             "replay a 1 2", "messages a b"})
        EXPECT_THAT(console.transcript(line), HasSubstr("usage: ")) << line;
}

TEST_F(RecordingTest, MessagesAreToldBehindThePromptAndFiltered)
{
    sim::Terminal terminal(emptyTerminal());
    ConsoleSession console(terminal);
    EXPECT_EQ(console.transcript("messages off"), "error: no messages are printed\n[1]");
    EXPECT_EQ(console.transcript("messages ("), "error: bad expression (\n[1]");
    EXPECT_EQ(console.transcript("messages"), "");
    terminal.set("ram.a", 1);
    EXPECT_EQ(console.textSoFar(), "* all 0 signal config.change.ram records ram.a = int 1\n");
    EXPECT_EQ(console.transcript("messages ram\\.b|config.change.cfg"), "");
    terminal.set("ram.a", 2);
    terminal.set("ram.b", 2);
    terminal.set("cfg.a", 2);
    EXPECT_EQ(console.textSoFar(), "* all 0 signal config.change.ram records ram.b = int 2\n"
                                   "* all 0 signal config.change.cfg records cfg.a = int 2\n");
    EXPECT_EQ(console.transcript("messages off"), "");
    terminal.set("ram.b", 3);
    EXPECT_EQ(console.textSoFar(), "");
}

TEST_F(RecordingTest, SoManyMessagesASecondAreToldAndHowManyMoreThereWere)
{
    sim::Terminal terminal(emptyTerminal());
    ConsoleSession console(terminal);
    console.transcript("messages");
    terminal.onThread([&] {
        for (int at = 0; at < 80; at++)
            terminal.set("ram.a", at);
    });
    EXPECT_TRUE(console.waitFor("* 30 messages left out\n"));
    EXPECT_THAT(console.textSoFar(),
                AllOf(HasSubstr("ram.a = int 49\n"), Not(HasSubstr("ram.a = int 50\n"))));
}

// --- The program's options

TEST_F(RecordingTest, TheProgramRecordsFromItsStartAndGivesItAgain)
{
    {
        Process process({"--address", privateAddress(), "--still", "--record", file, "--console"}, true);
        EXPECT_THAT(process.line(), StartsWith("terminalsim: listening on "));
        process.write("set ram.mark int:3\nquit\n");
        EXPECT_EQ(process.end(), 0);
    }
    EXPECT_THAT(read(file), HasSubstr(" all 0 signal 0.0 config.change.ram records ram.mark = int 3\n"));
    Process process({"--address", privateAddress(), "--still", "--replay", file});
    EXPECT_THAT(process.line(), StartsWith("terminalsim: listening on "));
    EXPECT_EQ(process.errorLine(), "terminalsim: 0 of 0 writes of clients came again, and 0 others");
    process.signal(SIGTERM);
    EXPECT_EQ(process.end(), 0);
}

TEST_F(RecordingTest, TheProgramEndsForABadFile)
{
    std::string bad = write("a diary\n");
    Process replay({"--address", privateAddress(), "--replay", bad});
    EXPECT_EQ(replay.end(), 1);
    EXPECT_EQ(replay.errors, "terminalsim: " + bad + ":1: not a recording of terminalsim\n");
    Process record({"--address", privateAddress(), "--record", bad});
    EXPECT_EQ(record.end(), 1);
    EXPECT_EQ(record.errors, "terminalsim: " + bad + ": there is a file that is no recording\n");
}
