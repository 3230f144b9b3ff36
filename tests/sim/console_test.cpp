// Consoles in the thread of a terminal: lines, errors, output, the database, commands to the processes.
#include "console_fixture.h"
#include "raw_client.h"
#include "temporary_directory.h"

#include <gmock/gmock.h>
#include <map>

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

// --- Lines

struct Split {
    std::string line;
    sim::Words words;
};

TEST(SplitLine, Words)
{
    const Split table[] = {
        {"", {}},
        {" \t ", {}},
        {"# a comment", {}},
        {"  # one", {}},
        {"get key", {"get", "key"}},
        {"\tget \t key  ", {"get", "key"}},
        {"get key\r", {"get", "key"}},
        {"get #key", {"get", "#key"}},
        {"\"#\" x", {"#", "x"}},
        {"say \"two words\"", {"say", "two words"}},
        {"set k string:\"a b\"c", {"set", "k", "string:a bc"}},
        {R"(say "a \"b\" \\ \n")", {"say", R"(a "b" \ \n)"}},
        {R"(say a\b)", {"say", R"(a\b)"}},
        {"say \"\"", {"say", ""}},
        {"\"a\tb\"", {"a\tb"}},
        {"\xff\x01 \x1b[A", {"\xff\x01", "\x1b[A"}},
    };
    for (const Split& row : table) {
        sim::Words words;
        std::string error;
        EXPECT_TRUE(sim::splitLine(row.line, &words, &error)) << row.line;
        EXPECT_EQ(words, row.words) << row.line;
    }
}

TEST(SplitLine, Refused)
{
    const std::pair<std::string, const char*> table[] = {
        {"say \"a", "no closing quotation mark"},     {"say a\"", "no closing quotation mark"},
        {"say \"a\\\"", "no closing quotation mark"}, {"say \"a\\", "no closing quotation mark"},
        {"get a\0b"s, "a line cannot hold a NUL"},
    };
    for (const auto& [line, problem] : table) {
        sim::Words words;
        std::string error;
        EXPECT_FALSE(sim::splitLine(line, &words, &error)) << line;
        EXPECT_EQ(error, problem) << line;
        EXPECT_THAT(words, IsEmpty()) << line;
    }
}

TEST(SplitLine, TakesBackAnyWord)
{
    for (const std::string word : {"", "a", "a b", "\"", "\\", "a\\", "\\\"", "#", "a\tb", "x\r",
                                   "\xc3\xa9 \x7f", "string:a \"b\" \\n"}) {
        sim::Words words;
        std::string error;
        EXPECT_TRUE(sim::splitLine("say " + sim::quotedWord(word), &words, &error)) << word;
        EXPECT_THAT(words, ElementsAre("say", word));
    }
}

TEST_F(ConsoleTest, BlankLinesAndCommentsDoNothing)
{
    for (const char* line : {"", "   ", "# get cfg.language", "\r"})
        EXPECT_EQ(session.output(line), "") << line;
}

TEST_F(ConsoleTest, LineOfAnyLength)
{
    EXPECT_EQ(session.output("echo " + std::string(200000, 'x')), std::string(200000, 'x') + "\n");
    std::string line = "echo";
    for (int word = 0; word < 1000; word++)
        line += " word";
    EXPECT_EQ(session.output(line).size(), 1000 * 5u);
    EXPECT_EQ(session.run(std::string(100000, 'x')), sim::CommandFailed);
    EXPECT_EQ(session.text, "error: " + std::string(100000, 'x') + ": command not found\n");
}

// --- Errors: one clear line

struct BadLine {
    const char* line;
    const char* error;
};

TEST_F(ConsoleTest, BadLines)
{
    const BadLine table[] = {
        {"frob", "frob: command not found"},
        {"frob\x1b[A x", "frob?[A: command not found"},
        {"\"\"", ": command not found"},
        {"say \"a", "no closing quotation mark"},
        {"get", "usage: get KEY"},
        {"get a b", "usage: get KEY"},
        {"get no.key", "no.key: not in the database"},
        {"status no.key", "no.key: not in the database"},
        {"delete no.key", "no.key: not in the database"},
        {"set", "usage: set KEY VALUE"},
        {"set cfg.language", "usage: set KEY VALUE"},
        {"set cfg.language german", "cfg.language: not a number: german"},
        {"set cfg.language int:x", "cfg.language: not a number: x"},
        {"set cfg.language int:99999999999", "cfg.language: number out of range: 99999999999"},
        {"set ram.b blob:0", "ram.b: bytes must be pairs of hexadecimal digits: 0"},
        {"set \"a b\" 1", "a key has no blanks and only ASCII: a b"},
        {"set \"\" 1", "a key has no blanks and only ASCII: "},
        {"set \xc3\xa9 1", "a key has no blanks and only ASCII: \xc3\xa9"},
        {"list (", "not a regular expression: ("},
        {"unwatch", "nothing is watched"},
        {"save", "not saved: there is no --store FILE, or the log tells what is wrong with it"},
        {"pointing", "usage: pointing start | stop | cancel"},
        {"pointing off", "usage: pointing start | stop | cancel"},
        {"sim insert", "sim: there is a card already"},
        {"signal", "usage: signal LEVEL; signal up | down; signal auto"},
        {"quit now", "usage: quit"},
        {"not true", "not has failed"},
        {"sm 0 1", "sm: not from a console of the terminal"},
        {"dm 0", "dm: not from a console of the terminal"},
        {"repeat 2 dmb 0", "dmb: not from a console of the terminal"},
    };
    for (const BadLine& row : table) {
        EXPECT_EQ(session.run(row.line), sim::CommandFailed) << row.line;
        EXPECT_THAT(session.text, testing::EndsWith("error: "s + row.error + "\n")) << row.line;
    }
    for (const char* line : {"get", "set a b c", "frob", "sim insert", "list ("}) {
        session.run(line);
        EXPECT_EQ(std::count(session.text.begin(), session.text.end(), '\n'), 1) << line;
    }
    EXPECT_TRUE(session.isWhole);
}

TEST_F(ConsoleTest, FailingCommandsOfTheShellEndWithAnErrorToo)
{
    EXPECT_EQ(session.run("trace frob"), sim::CommandFailed);
    EXPECT_EQ(session.text, "No such trace item: frob\nerror: trace has failed\n");
    EXPECT_EQ(session.run("help frob"), sim::CommandFailed);
    EXPECT_EQ(session.text, "frob: command not found\nerror: help has failed\n");
    EXPECT_EQ(session.run("cd nowhere"), sim::CommandFailed);
    EXPECT_EQ(session.text, "error: cd has failed\n");
    EXPECT_EQ(session.run("trace a b c"), sim::CommandFailed);
    EXPECT_THAT(session.text, StartsWith("trace          : Trace debug\n"));
    EXPECT_THAT(session.text, HasSubstr("\nerror: trace: not used like this\n"));
    EXPECT_EQ(session.run("repeat x true"), sim::CommandFailed);
    EXPECT_THAT(session.text, HasSubstr("\nerror: repeat: not used like this\n"));
}

TEST_F(ConsoleTest, KeyThatIsTooLong)
{
    EXPECT_EQ(session.run("set " + std::string(1000, 'k') + " 1"), sim::CommandFailed);
    EXPECT_EQ(session.text, "error: " + std::string(80, 'k') + ": the key or its value is too long\n");
}

// --- Output

TEST_F(ConsoleTest, OutputComesInWholeLines)
{
    EXPECT_EQ(session.output("echo -n a"), "a\n");
    EXPECT_EQ(session.output("( echo -n a ; echo b )"), "ab\n");
    session.run("echo -n a");
    EXPECT_EQ(session.run("( echo -n a ; get no.key )"), sim::CommandFailed);
    EXPECT_EQ(session.text, "a\nerror: no.key: not in the database\n");
    EXPECT_TRUE(session.isWhole);
}

TEST_F(ConsoleTest, OutputWithoutLineFeedsIsNotKeptForEver)
{
    const std::string half(600000, 'x');
    EXPECT_EQ(session.output("repeat 3 echo -n " + half), half + half + "\n" + half + "\n");
    EXPECT_TRUE(session.isWhole);
}

TEST_F(ConsoleTest, LinesThatLookLikeAnswersAreSetBack)
{
    EXPECT_EQ(session.output("echo = ok"), " = ok\n");
    EXPECT_EQ(session.output("echo * x"), " * x\n");
    EXPECT_EQ(session.output("echo x = *"), "x = *\n");
    EXPECT_EQ(session.output("( echo -n = ; echo b )"), " =b\n");
}

// --- The database

struct SetRow {
    const char* key;
    const char* value;
    const char* described;
};

TEST_F(ConsoleTest, SetTakesTheTypeOfTheKeyOrWhatItLooksLike)
{
    terminal.set("ram.t.int", 1);
    terminal.set("ram.t.text", "x"s);
    terminal.set("ram.t.blob", sim::Value::blob("x"));
    const SetRow table[] = {
        {"ram.t.int", "7", "int 7"},
        {"ram.t.int", "-1", "int -1"},
        {"ram.t.int", "0x10", "int 16"},
        {"ram.t.text", "7", "string \"7\""},
        {"ram.t.text", "\"a b\"", "string \"a b\""},
        {"ram.t.text", "\"\"", "string \"\""},
        {"ram.t.blob", "00ff", "blob 00 ff"},
        {"ram.t.new1", "7", "int 7"},
        {"ram.t.new2", "seven", "string \"seven\""},
        {"ram.t.new3", "7x", "string \"7x\""},
        {"ram.t.new4", "other:7", "string \"other:7\""},
        {"ram.t.new5", "blob:0102", "blob 01 02"},
        {"ram.t.new6", "string:7", "string \"7\""},
        {"ram.t.int", "string:now a text", "string \"now a text\""},
    };
    for (const SetRow& row : table) {
        std::string value = row.value;
        if (value.find(' ') != std::string::npos && value[0] != '"')
            value = sim::quotedWord(value);
        EXPECT_EQ(session.output(std::string("set ") + row.key + " " + value), "") << row.value;
        EXPECT_EQ(session.output(std::string("get ") + row.key), row.described + "\n"s) << row.value;
    }
}

TEST_F(ConsoleTest, GetDeleteStatus)
{
    EXPECT_EQ(session.output("get cfg.language"), "int 0\n");
    EXPECT_EQ(session.output("status cfg.language"), "4\n");
    EXPECT_EQ(session.output("delete cfg.language"), "");
    EXPECT_FALSE(terminal.has("cfg.language"));
    EXPECT_EQ(session.output("set ram.a \"two words\""), "");
    EXPECT_EQ(session.output("status ram.a"), "10\n");
}

// Read-only keys bind clients of the bus, not the person at the desk.
TEST_F(ConsoleTest, ReadOnlyKeysAreSetAllTheSame)
{
    EXPECT_EQ(session.output("set rmcfg.platform.sysconf.serial_number X1"), "");
    EXPECT_EQ(terminal.getString("rmcfg.platform.sysconf.serial_number"), "X1");
}

TEST(ConsoleAlone, List)
{
    sim::Terminal terminal(emptyTerminal());
    sim::Desk desk{terminal, terminal.loop()};
    ConsoleSession session(desk);
    terminal.setAll({{"ram.a", sim::Value::integer(1)}, {"ram.ab", sim::Value::text("x\ny")}});
    EXPECT_EQ(session.output("list"), "ram.a = int 1\nram.ab = string \"x\\ny\"\n");
    EXPECT_EQ(session.output("list ram\\.a"), "ram.a = int 1\n");
    EXPECT_EQ(session.output("list .*b"), "ram.ab = string \"x\\ny\"\n");
    EXPECT_EQ(session.output("list nothing"), "");
}

TEST_F(ConsoleTest, Watch)
{
    EXPECT_EQ(session.output("watch ram.t"), "");
    session.begin("true");
    terminal.set("ram.t.a", 1);
    terminal.set("ram.other", 1);
    terminal.erase("ram.t.a");
    EXPECT_EQ(session.text, "* ram.t.a = int 1\n* ram.t.a = none\n");
    EXPECT_EQ(session.output("unwatch"), "");
    terminal.set("ram.t.a", 1);
    EXPECT_EQ(session.text, "");
    EXPECT_TRUE(session.isWhole);
}

TEST_F(ConsoleTest, WatchEndsWithItsConsole)
{
    {
        ConsoleSession other(desk);
        EXPECT_EQ(other.output("watch"), "");
    }
    terminal.set("ram.t.a", 1); // nobody is told, which a sanitizer would notice
    EXPECT_TRUE(terminal.has("ram.t.a"));
}

TEST_F(ConsoleTest, SaveAndReset)
{
    TemporaryDirectory directory;
    sim::TerminalOptions options = acting();
    options.storeFile = directory.file("cfg.db");
    {
        sim::Terminal stored(options);
        sim::Desk itsDesk{stored, stored.loop()};
        ConsoleSession itsSession(itsDesk);
        EXPECT_EQ(itsSession.output("set cfg.language 3"), "");
        EXPECT_EQ(itsSession.output("save"), "");
        EXPECT_TRUE(std::filesystem::exists(directory.file("cfg.db")));
        EXPECT_EQ(itsSession.output("reset"), "");
        EXPECT_EQ(stored.getInt("cfg.language"), 0);
    }
}

TEST_F(ConsoleTest, PointingGoesOverTheBusAndToTheTerminal)
{
    RawClient client(terminal.address());
    client.filter("bp_ctrl.");
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(session.output("pointing start"), "");
    auto message = client.readFrame();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->name, "bp_ctrl.pointing");
    EXPECT_EQ(message->data, "start\0"s);
    EXPECT_TRUE(terminal.waitForValue("ram.status.pointed_status", sim::Value::integer(1)));
    EXPECT_EQ(session.output("pointing cancel"), "");
    EXPECT_TRUE(terminal.waitForValue("ram.status.pointed_status", sim::Value::integer(0)));
}

TEST_F(ConsoleTest, QuitEndsTheTerminal)
{
    EXPECT_EQ(session.output("quit"), "");
    for (int attempt = 0; attempt < 1000 && terminal.running(); attempt++)
        usleep(5000);
    EXPECT_FALSE(terminal.running());
}

TEST_F(ConsoleTest, ExitEndsTheConsole)
{
    for (const char* line : {"exit", "( exit ; get no.key )", "repeat 3 exit", "not exit"}) {
        EXPECT_EQ(session.run(line), sim::CommandEnds) << line;
        EXPECT_EQ(session.text, "") << line;
    }
}

// --- Commands to the processes

TEST_F(ConsoleTest, CommandsOfTheProcesses)
{
    EXPECT_EQ(session.output("signal 45.6"), "");
    EXPECT_EQ(terminal.getInt("ram.status.signal_strength"), 456);
    EXPECT_EQ(session.output("alert add 0x1120 warning \"Far too\" hot"), "");
    EXPECT_EQ(terminal.getString("ram.log.alert.0.shorttext"), "Far too hot");
}

TEST(ConsoleAlone, NobodyCarriesOutCommands)
{
    sim::Terminal still;
    sim::Desk desk{still, still.loop()};
    ConsoleSession session(desk);
    EXPECT_EQ(session.run("system reboot"), sim::CommandFailed);
    EXPECT_EQ(session.text, "error: system: nobody there carries out commands\n");
    EXPECT_FALSE(still.has("ram.desk.system"));
}

// --- The tables

TEST_F(ConsoleTest, EveryCommandIsInTheShellOnceAndHasHelp)
{
    std::map<std::string, int> names;
    for (const sim::CommandTheme& theme : sim::commandThemes()) {
        for (const sim::ConsoleCommand& row : theme.commands) {
            names[row.name] = 0;
            EXPECT_NE(row.help[0], '\0') << row.name;
            EXPECT_FALSE(isupper(row.help[0])) << row.name;
            EXPECT_NE(row.help[strlen(row.help) - 1], '.') << row.name;
        }
    }
    for (const sim::CommandForm& form : sim::commandForms())
        names[form.name] = 0;
    for (size_t at = 0; at < shell_command_count(); at++) {
        if (shell_command_get(at)->path == "/"s)
            names[shell_command_get(at)->name]++;
    }
    std::string help = session.output("help");
    for (const auto& [name, count] : names) {
        EXPECT_EQ(count, 1) << name;
        EXPECT_THAT("\n" + help, HasSubstr("\n" + name + " ")) << name;
        for (const sim::CommandForm& form : sim::formsOf(name)) {
            std::string written = name + (*form.words ? " " : "") + form.words;
            EXPECT_THAT(session.output("help " + name), HasSubstr(written + "\n    " + form.help + "\n"));
        }
    }
}

// A name that two tables have would hide one of them.
TEST(ConsoleTables, NoNameInTwoTables)
{
    std::map<std::string, std::string> owners;
    for (const sim::CommandTheme& theme : sim::commandThemes()) {
        for (const sim::ConsoleCommand& row : theme.commands) {
            EXPECT_EQ(owners.emplace(row.name, theme.heading).first->second, theme.heading) << row.name;
        }
    }
    for (const sim::CommandForm& form : sim::commandForms())
        EXPECT_EQ(owners.count(form.name), 0u) << form.name;
}

TEST_F(ConsoleTest, AFoundCommandCanBeNamedWithItsPath)
{
    EXPECT_EQ(session.output("/get cfg.language"), "int 0\n");
    EXPECT_EQ(session.output("cd /bin"), "");
    EXPECT_EQ(session.output("get cfg.language"), "int 0\n");
    EXPECT_EQ(session.run("/bin/get x"), sim::CommandFailed);
    EXPECT_EQ(session.text, "error: /bin/get: command not found\n");
}

} // namespace
