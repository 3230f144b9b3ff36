// The shell: how lines are split, looked up and run, the directory tree, the prompt, and authorisation.
#include "runtime/util.h"
#include "runtime/vx_cshell.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/outputcapture.h"
#include "support/testshell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::vector<std::string>> calls; // words of each call of the commands below
int result;                                  // what they return
int lastStatus;

int note(cshell* shell, int argc, char** argv)
{
    calls.emplace_back(argv, argv + argc);
    lastStatus = vx_cshell_get_exit_status(shell);
    return result;
}

void add(const char* path, const char* name, unsigned flags = 0, const char* help = nullptr,
         const char* syntax = nullptr)
{
    shell_command command = {path, name, note, flags, help, syntax};
    shell_command_add_sorted(&command);
}

// The table is the process's: all tests see the same commands.
class Cshell : public testing::Test {
protected:
    TestShell test;

    static void SetUpTestSuite()
    {
        add("/", "top");
        add("/", "twice");
        add("/net-b", "twice");
        add("/net", "show", 0, "Show the net", "[all]");
        add("/net/ip", "ping");
        add("/net-b", "other");
        add("/net/ip", "both");
        add("/radio", "both");
        add("/radio", "secret", VX_CSHELL_RESTRICTED);
        add("/radio", "lined", 0, "A line\n", "One\nTwo\n");
    }
    void SetUp() override
    {
        calls.clear();
        result = 0;
    }
};

TEST_F(Cshell, FirstStateOfAShell)
{
    EXPECT_STREQ(vx_cshell_get_name(test.shell), "test");
    EXPECT_EQ(vx_cshell_get_auth_level(test.shell), 1);
    EXPECT_EQ(vx_cshell_get_exit_status(test.shell), 0);
    EXPECT_EQ(vx_cshell_get_object(test.shell), nullptr);
    vx_cshell_pwd(test.shell);
    EXPECT_EQ(test.printed(), "/\n");
}

TEST_F(Cshell, PrintsOnStandardOutputUntilToldOtherwise)
{
    vx_cshell_set_output(test.shell, nullptr, nullptr);
    OutputCapture output;
    vx_cshell_prompt(test.shell);
    vx_cshell_printf(test.shell, "%d\n", 5);
    EXPECT_EQ(output.stop(), "test:/$ 5\n");
    EXPECT_EQ(test.printed(), "");
}

TEST_F(Cshell, PrintsTextsOfAnyLength)
{
    for (size_t length : {511u, 512u, 513u, 5000u}) {
        std::string text(length, 'x');
        EXPECT_EQ(vx_cshell_printf(test.shell, "%s", text.c_str()), static_cast<int>(length));
        EXPECT_EQ(test.printed(), text);
    }
}

// --- words

TEST_F(Cshell, LineIsSplitAtBlanksAndTabs)
{
    test.run("  top\tone  two \t three\t");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("top", "one", "two", "three")));
}

TEST_F(Cshell, StrsplitWorksInPlace)
{
    char text[] = " a\tbc  d";
    char* words[4];
    EXPECT_EQ(sh_strsplit(text, words, 4), 3);
    EXPECT_STREQ(words[0], "a");
    EXPECT_STREQ(words[1], "bc");
    EXPECT_STREQ(words[2], "d");
    EXPECT_EQ(words[1], text + 3);
    char more[] = "a b c";
    EXPECT_EQ(sh_strsplit(more, words, 2), 2);
    EXPECT_STREQ(words[1], "b"); // what lies behind is dropped
    char blank[] = " \t ";
    EXPECT_EQ(sh_strsplit(blank, words, 4), 0);
}

TEST_F(Cshell, LineWithoutWordsDoesNothing)
{
    for (const char* line : {"", " ", "\t \t"}) {
        EXPECT_EQ(test.run(line), "");
        EXPECT_EQ(test.lastResult, 0);
    }
}

TEST_F(Cshell, LineOfMoreThan64CharactersIsCutBeforeItIsSplit)
{
    std::string word(60, 'w');
    test.run("top " + word);
    EXPECT_THAT(calls, ElementsAre(ElementsAre("top", word))); // 64 characters fit
    calls.clear();
    test.run("top " + word + "xyz more");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("top", word)));
    calls.clear();
    test.run(std::string(64, ' ') + "top");
    EXPECT_THAT(calls, IsEmpty());
    test.run("top" + std::string(100000, 'x'));
    EXPECT_EQ(test.lastResult, -1);
}

TEST_F(Cshell, AtMost32Words)
{
    std::string line = "top";
    for (int word = 0; word < 30; ++word) {
        line += " a";
    }
    test.run(line); // 63 characters
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].size(), 31u);
    std::string singles;
    for (int word = 0; word < 40; ++word) {
        singles += "a ";
    }
    EXPECT_EQ(test.run(singles), "a: command not found\n"); // 32 words in 64 characters
}

TEST_F(Cshell, BytesOfAnyValueInALine)
{
    std::string line = "top ";
    for (int byte = 1; byte < 256; ++byte) {
        line += static_cast<char>(byte);
        test.run(line);
        line.resize(4);
        ASSERT_EQ(calls.back().size(), byte == ' ' || byte == '\t' ? 1u : 2u) << byte;
    }
}

// --- lookup

TEST_F(Cshell, WordMatchesThatNameInAnyDirectory)
{
    test.run("ping");
    test.run("secret");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("ping"), ElementsAre("secret")));
}

TEST_F(Cshell, WordMatchesAsAPathFromTheRoot)
{
    test.run("/net/ip/ping now");
    test.run("/top");
    test.run("/net/show");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("/net/ip/ping", "now"), ElementsAre("/top"),
                                   ElementsAre("/net/show")));
}

TEST_F(Cshell, WordMatchesAsAPathFromTheCurrentDirectory)
{
    vx_cshell_chdir(test.shell, "/net");
    test.run("ip/ping");
    test.run("show");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("ip/ping"), ElementsAre("show")));
}

TEST_F(Cshell, UnknownWord)
{
    EXPECT_EQ(test.run("nonsense 1 2"), "nonsense: command not found\n");
    EXPECT_EQ(test.lastResult, -1);
    EXPECT_EQ(vx_cshell_get_exit_status(test.shell), -1);
    EXPECT_EQ(test.run("/net/nonsense"), "/net/nonsense: command not found\n");
    EXPECT_EQ(test.run("/net"), "/net: command not found\n");
    EXPECT_EQ(test.run("/"), "/: command not found\n");
    EXPECT_EQ(test.run("ip/ping"), "ip/ping: command not found\n"); // not from here
    EXPECT_EQ(test.run("sho"), "sho: command not found\n");
    EXPECT_EQ(test.run("shows"), "shows: command not found\n");
    EXPECT_EQ(test.run("%s%n"), "%s%n: command not found\n");
}

TEST_F(Cshell, WordInSeveralDirectories)
{
    EXPECT_EQ(test.run("both"), "both: multiple matches\n/net/ip/both\n/radio/both\n");
    EXPECT_EQ(test.lastResult, -1);
    EXPECT_EQ(vx_cshell_get_exit_status(test.shell), -1);
    EXPECT_THAT(calls, IsEmpty());
    vx_cshell_chdir(test.shell, "/radio"); // in the root, the one that lies there would run
    EXPECT_EQ(test.run("twice"), "twice: multiple matches\n/twice\n/net-b/twice\n");
}

TEST_F(Cshell, CurrentDirectoryComesFirst)
{
    vx_cshell_chdir(test.shell, "/radio");
    EXPECT_EQ(test.run("both"), "");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("both")));
}

TEST_F(Cshell, WordLongerThanAnyPath)
{
    std::string word(100000, 'w');
    char* words[] = {&word[0]};
    EXPECT_EQ(vx_cshell_run_command(test.shell, 1, words), -1);
    EXPECT_EQ(test.printed(), word + ": command not found\n");
}

TEST_F(Cshell, NoWordsAtAll)
{
    EXPECT_EQ(vx_cshell_run_command(test.shell, 0, nullptr), -1);
    EXPECT_EQ(test.printed(), "");
}

// --- the table

TEST_F(Cshell, TableIsSortedAndGrows)
{
    size_t before = shell_command_count();
    static const char* const names[] = {"m", "c", "x", "a", "z", "k", "b", "y", "d", "l", "n", "e"};
    for (const char* name : names) {
        add("/sorted", name);
    }
    EXPECT_EQ(shell_command_count(), before + 12);
    for (size_t at = 1; at < shell_command_count(); ++at) {
        const shell_command* one = shell_command_get(at - 1);
        const shell_command* other = shell_command_get(at);
        int order = strcmp(one->path, other->path);
        EXPECT_TRUE(order < 0 || (order == 0 && strcmp(one->name, other->name) <= 0)) << at;
    }
    EXPECT_EQ(shell_command_get(shell_command_count()), nullptr);
}

TEST_F(Cshell, FirstOfTwoWithTheSamePathAndNameRuns)
{
    static int others;
    shell_command same = {"/net", "show", [](cshell*, int, char**) { return ++others; }, 0, nullptr, nullptr};
    shell_command_add_sorted(&same);
    EXPECT_EQ(test.run("show"), "");
    EXPECT_EQ(calls.size(), 1u);
    EXPECT_EQ(others, 0);
}

TEST_F(Cshell, CommandMayAddCommands)
{
    shell_command adder = {"/adder",
                           "adder",
                           [](cshell*, int, char**) {
                               for (int count = 0; count < 20; ++count) {
                                   add("/added", "added");
                               }
                               return 5;
                           },
                           0,
                           nullptr,
                           nullptr};
    shell_command_add_sorted(&adder);
    test.run("adder");
    EXPECT_EQ(test.lastResult, 5);
}

using CshellDeathTest = Cshell;

TEST_F(CshellDeathTest, IncompleteEntryIsAnAssertion)
{
    for (shell_command command : {shell_command{nullptr, "x", note, 0, nullptr, nullptr},
                                  shell_command{"/x", nullptr, note, 0, nullptr, nullptr},
                                  shell_command{"/x", "x", nullptr, 0, nullptr, nullptr}}) {
        EXPECT_DEATH(
            {
                syslogtap_echo(1);
                shell_command_add_sorted(&command);
            },
            "<1> .*: \\*\\*\\* ASSERT in vx_cshell at [0-9]+\n");
    }
}

TEST_F(CshellDeathTest, TableWithoutMemoryIsAnAssertion)
{
    EXPECT_DEATH(
        {
            syslogtap_echo(1);
            vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
            for (int count = 0; count < 9; ++count) {
                add("/x", "x");
            }
        },
        "<1> .*: \\*\\*\\* ASSERT in vx_cshell at [0-9]+\n");
}

TEST_F(Cshell, AllocationFailsWithoutMemory)
{
    static int left;
    vx_calloc = [](size_t count, size_t size) -> void* { return left-- > 0 ? calloc(count, size) : nullptr; };
    for (left = 0; left < 5;) {
        int allowed = left;
        EXPECT_EQ(vx_cshell_alloc("x"), nullptr);
        left = allowed + 1;
    }
    vx_calloc = calloc;
    vx_cshell_free(nullptr);
}

TEST_F(Cshell, WithoutMemoryALongTextIsCut)
{
    vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
    EXPECT_EQ(vx_cshell_printf(test.shell, "%0600d", 1), 600);
    vx_calloc = calloc;
    EXPECT_EQ(test.printed(), std::string(511, '0'));
}

// --- results

TEST_F(Cshell, ResultOfACommandIsTheExitStatus)
{
    for (int value : {0, 1, 7, -5}) {
        result = value;
        EXPECT_EQ(test.run("top"), "");
        EXPECT_EQ(test.lastResult, value);
        EXPECT_EQ(vx_cshell_get_exit_status(test.shell), value);
    }
    test.run("top");
    EXPECT_EQ(lastStatus, -5); // a command sees the one before
}

TEST_F(Cshell, Result3PrintsTheHelp)
{
    result = 3;
    EXPECT_EQ(test.run("show x"), "show           : Show the net\n[all]\n");
    EXPECT_EQ(test.lastResult, 3);
    EXPECT_EQ(test.run("top"), "top            : no description\nNo syntax description\n");
    EXPECT_EQ(test.run("lined"), "lined          : A line\nOne\nTwo\n"); // no second line feed
}

// The word is looked up again for the help, and by then it may be known no more.
TEST_F(Cshell, Result3OfACommandThatHasLeftItsDirectoryPrintsNoHelp)
{
    static const shell_command leaver = {"/net/ip",
                                         "leave",
                                         [](cshell* shell, int, char**) {
                                             vx_cshell_chdir(shell, "/radio");
                                             return +VX_CSHELL_USAGE;
                                         },
                                         0,
                                         "Leave",
                                         nullptr};
    shell_command_add_sorted(&leaver);
    ASSERT_EQ(vx_cshell_chdir(test.shell, "/net"), 0);
    EXPECT_EQ(test.run("ip/leave"), "ip/leave: command not found\n");
    EXPECT_EQ(test.lastResult, VX_CSHELL_USAGE);
}

TEST_F(Cshell, Result4PrintsError)
{
    result = 4;
    EXPECT_EQ(test.run("top"), "ERROR\n");
    EXPECT_EQ(test.lastResult, 4);
}

TEST_F(Cshell, WordExitReturns2)
{
    EXPECT_EQ(test.run("exit"), "");
    EXPECT_EQ(test.lastResult, 2);
    test.run("  exit now");
    EXPECT_EQ(test.lastResult, 2);
    test.run("exits");
    EXPECT_EQ(test.lastResult, -1);
}

TEST_F(Cshell, ExitInTheMiddleOfABufferStopsTheProcessingOfThatBuffer)
{
    EXPECT_EQ(test.type("top\nexit\ntop\n"), "top\ntest:/$ exit\n");
    EXPECT_EQ(test.lastResult, 2);
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(Cshell, ControlDEndsTheShell)
{
    EXPECT_EQ(test.type("\004top\n"), "");
    EXPECT_EQ(test.lastResult, 2);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(Cshell, BufferOfSeveralLines)
{
    EXPECT_EQ(test.type("top 1\n\ntop"), "top 1\ntest:/$ \ntest:/$ top");
    EXPECT_EQ(test.lastResult, 0);
    EXPECT_EQ(test.type(" 2\n"), " 2\ntest:/$ ");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("top", "1"), ElementsAre("top", "2")));
    EXPECT_EQ(test.type(""), "");
}

TEST_F(Cshell, TypedLineIsCutAt63Characters)
{
    test.type("top " + std::string(100, 'y') + "\n");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("top", std::string(59, 'y'))));
}

TEST_F(Cshell, SplitLineMayBeLongerThanATypedOne)
{
    std::string word(1000, 'w');
    std::string top = "top";
    std::vector<char*> words(50, &word[0]);
    words[0] = &top[0];
    result = 4;
    EXPECT_EQ(vx_cshell_run_words(test.shell, 50, words.data()), 4);
    EXPECT_EQ(test.printed(), "ERROR\n");
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].size(), 50u);
    EXPECT_EQ(calls[0][49], word);
    EXPECT_EQ(vx_cshell_run_words(test.shell, 0, words.data()), 0);
    std::string exit = "exit";
    words[0] = &exit[0];
    EXPECT_EQ(vx_cshell_run_words(test.shell, 1, words.data()), VX_CSHELL_EXIT);
}

TEST_F(Cshell, SequencesMayBeCutAnywhereBetweenBuffers)
{
    const char* const sequences[] = {"\033[A", "\033OA", "\033[B",  "\033OB", "\033[C",   "\033OC",
                                     "\033[D", "\033OD", "\033[3~", "\033[H", "\033[12~", "\033(B"};
    for (const char* sequence : sequences) {
        std::string bytes = std::string("top 1\ntop 2\nabc\033[D") + sequence + "x\n";
        TestShell whole;
        std::string expected = whole.type(bytes);
        for (size_t cut = 0; cut <= bytes.size(); ++cut) {
            for (size_t other = cut; other <= bytes.size(); ++other) {
                TestShell shell;
                std::string sent = shell.type(bytes.substr(0, cut));
                sent += shell.type(bytes.substr(cut, other - cut));
                sent += shell.type(bytes.substr(other));
                ASSERT_EQ(sent, expected) << sequence + 1 << " cut at " << cut << " and " << other;
            }
        }
    }
}

TEST_F(Cshell, BytesOfAnyValueInAnyOrderDoNoHarm)
{
    // Neither "while" nor memory: the one may run for ever, and the other does what it is told.
    const char* const pieces[] = {"(",    ")",  ";",  ":",      "repeat", "2",         "not",  "echo",
                                  "help", "cd", "..", "ls",     "top",    "/bin/true", "time", "pwd",
                                  "/",    "\t", "\n", "\033[A", "\033[",  "\004",      "-n"};
    std::mt19937 random(3);
    for (int turn = 0; turn < 20000; ++turn) {
        std::string bytes;
        for (int count = static_cast<int>(random() % 12); count > 0; --count) {
            if (random() % 8 == 0) {
                bytes += static_cast<char>(random());
            } else {
                bytes += pieces[random() % (sizeof(pieces) / sizeof(pieces[0]))];
            }
            bytes += random() % 4 ? " " : "";
        }
        test.type(bytes);
        ASSERT_TRUE(test.lastResult == 0 || test.lastResult == VX_CSHELL_EXIT);
        ASSERT_LE(strlen(vx_cshell_get_name(test.shell)), 31u);
    }
    test.type("\n\n\n"); // ends whatever is open
    test.printed();
    EXPECT_EQ(test.run("echo alive"), "alive\n");
}

TEST_F(Cshell, HistoryOfSixteenLines)
{
    for (int line = 1; line <= 17; ++line) {
        test.type("top " + std::to_string(line) + "\n");
    }
    std::string ups;
    for (int up = 0; up < 40; ++up) {
        ups += "\033[A";
    }
    calls.clear();
    test.type(ups + "\n");
    EXPECT_THAT(calls, ElementsAre(ElementsAre("top", "2")));
}

// --- authorisation

TEST_F(Cshell, RestrictedCommandNeedsLevel1)
{
    for (int level : {0, 2, -1}) {
        vx_cshell_set_auth_level(test.shell, level);
        EXPECT_EQ(vx_cshell_get_auth_level(test.shell), level);
        EXPECT_EQ(test.run("secret"), ""); // no message
        EXPECT_EQ(test.lastResult, -1);
        EXPECT_EQ(vx_cshell_get_exit_status(test.shell), -1);
        EXPECT_THAT(calls, IsEmpty());
        test.run("top");
        EXPECT_EQ(calls.size(), 1u);
        calls.clear();
    }
    vx_cshell_set_auth_level(test.shell, 1);
    test.run("secret");
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(Cshell, AuthorizedLooksAtBit0)
{
    shell_command command = {"/x", "x", note, 0, nullptr, nullptr};
    vx_cshell_set_auth_level(test.shell, 0);
    for (unsigned flags : {0u, 1u, 2u, 3u}) {
        command.flags = flags;
        EXPECT_EQ(vx_cshell_authorized(test.shell, &command), !(flags & 1)) << flags;
    }
}

// --- names, prompt

TEST_F(Cshell, PromptShowsNameAndDirectory)
{
    vx_cshell_prompt(test.shell);
    EXPECT_EQ(test.printed(), "test:/$ ");
    vx_cshell_set_name(test.shell, "lcd");
    vx_cshell_chdir(test.shell, "/net/ip");
    vx_cshell_prompt(test.shell);
    EXPECT_EQ(test.printed(), "lcd:/net/ip$ ");
}

TEST_F(Cshell, PromptFormat)
{
    const char* const formats[][2] = {
        {"> ", "> "},          {"%s> ", "test> "}, {"%s %s %s", "test / %s"}, {"100%% %d%n%", "100% %d%n%"},
        {"%%s %s", "%s test"},
    };
    for (const auto& row : formats) {
        vx_cshell_set_prompt_fmt(test.shell, row[0]);
        vx_cshell_prompt(test.shell);
        EXPECT_EQ(test.printed(), row[1]) << row[0];
    }
}

TEST_F(Cshell, NameAndPromptAreCutAt31Characters)
{
    std::string name(100, 'n');
    vx_cshell_set_name(test.shell, name.c_str());
    EXPECT_EQ(vx_cshell_get_name(test.shell), name.substr(0, 31));
    vx_cshell_prompt(test.shell);
    EXPECT_EQ(test.printed(), name.substr(0, 31));
}

// --- directories

TEST_F(Cshell, Chdir)
{
    const char* const steps[][2] = {
        {"net", "/net\n"},
        {"ip", "/net/ip\n"},
        {"..", "/net\n"},
        {"./ip/.", "/net/ip\n"},
        {"/radio", "/radio\n"},
        {"..", "/\n"},
        {"..", "/\n"},
        {"/net//ip/", "/net/ip\n"},
        {"../..", "/\n"},
        {"bin", "/bin\n"},
        {"../net-b", "/net-b\n"},
        {"", "/net-b\n"},
        {"/", "/\n"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(vx_cshell_chdir(test.shell, step[0]), 0) << step[0];
        vx_cshell_pwd(test.shell);
        EXPECT_EQ(test.printed(), step[1]) << step[0];
    }
}

TEST_F(Cshell, ChdirToWhatIsNoDirectoryChangesNothing)
{
    vx_cshell_chdir(test.shell, "/net");
    for (const char* directory : {"nowhere", "/ne", "show", "/net/show", "ip/ping", "/net/ip2"}) {
        EXPECT_EQ(vx_cshell_chdir(test.shell, directory), -1) << directory;
    }
    EXPECT_EQ(vx_cshell_chdir(test.shell, std::string(100000, 'd').c_str()), -1);
    vx_cshell_pwd(test.shell);
    EXPECT_EQ(test.printed(), "/net\n");
}

TEST_F(Cshell, DirectoryOf128BytesIsTheBound)
{
    static const std::string longest = "/" + std::string(126, 'l');
    static const std::string beyond = longest + "l";
    add(longest.c_str(), "deep");
    add(beyond.c_str(), "deeper");
    EXPECT_EQ(vx_cshell_chdir(test.shell, longest.c_str()), 0);
    EXPECT_EQ(vx_cshell_chdir(test.shell, beyond.c_str()), -1);
    test.run("deep");
    EXPECT_EQ(calls.size(), 1u);
    vx_cshell_pwd(test.shell);
    EXPECT_EQ(test.printed(), longest + "\n");
}

struct Hits {
    std::vector<std::string> names;
    static void take(void* data, const vx_cshell_match* match)
    {
        std::string name(match->name, match->length);
        static_cast<Hits*>(data)->names.push_back(match->command ? name : name + "/");
    }
    std::vector<std::string> of(const char* path, unsigned mode)
    {
        names.clear();
        int count = vx_cshell_fslookup(path, mode, take, this);
        EXPECT_EQ(count, static_cast<int>(names.size()));
        EXPECT_EQ(vx_cshell_fslookup(path, mode, nullptr, nullptr), count);
        return names;
    }
};

TEST_F(Cshell, FslookupByModeBits)
{
    Hits hits;
    EXPECT_THAT(hits.of("/net/ip/ping", VX_FS_COMMAND), ElementsAre("ping"));
    EXPECT_THAT(hits.of("/net/ip/ping", VX_FS_DIRECTORY), IsEmpty());
    EXPECT_THAT(hits.of("/net/ip", VX_FS_DIRECTORY), ElementsAre("ip/"));
    EXPECT_THAT(hits.of("/net/ip", VX_FS_COMMAND), IsEmpty());
    EXPECT_THAT(hits.of("/net", VX_FS_DIRECTORY | VX_FS_COMMAND), ElementsAre("net/"));
    EXPECT_THAT(hits.of("/ne", VX_FS_DIRECTORY | VX_FS_PREFIX), ElementsAre("net/", "net-b/"));
    EXPECT_THAT(hits.of("/radio/", VX_FS_DIRECTORY | VX_FS_COMMAND | VX_FS_PREFIX),
                ElementsAre("both", "lined", "secret"));
    EXPECT_THAT(hits.of("/net/", VX_FS_DIRECTORY | VX_FS_PREFIX), ElementsAre("ip/")); // once
    EXPECT_THAT(hits.of("/net/ip/p", VX_FS_COMMAND | VX_FS_PREFIX), ElementsAre("ping"));
    EXPECT_THAT(hits.of("ping", VX_FS_COMMAND), IsEmpty());
    EXPECT_THAT(hits.of("ping", VX_FS_COMMAND | VX_FS_ANYWHERE), ElementsAre("ping"));
    EXPECT_THAT(hits.of("pin", VX_FS_COMMAND | VX_FS_ANYWHERE), IsEmpty());
    EXPECT_THAT(hits.of("pin", VX_FS_COMMAND | VX_FS_ANYWHERE | VX_FS_PREFIX), ElementsAre("ping"));
    EXPECT_THAT(hits.of("/top", VX_FS_COMMAND), ElementsAre("top"));
    EXPECT_THAT(hits.of("//top", VX_FS_COMMAND), IsEmpty());
    EXPECT_THAT(hits.of("", VX_FS_COMMAND | VX_FS_DIRECTORY), IsEmpty());
}

} // namespace
