// History, completion and the ends of lines in the shell's editor, by the exact bytes that the terminal gets.
#include "runtime/util.h"
#include "runtime/vx_history.h"
#include "runtime/vx_readline.h"
#include "support/terminalline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char UP[] = "\033[A";
const char DOWN[] = "\033[B";
const char LEFT[] = "\033[D";

class Readline : public testing::Test {
protected:
    vx_readline* readline = nullptr;
    std::string sent;
    std::vector<std::string> lines;

    // What the completion function sees and does.
    std::vector<std::string> completed;
    int completion = VX_COMPLETION_NONE;
    std::string rest;
    std::string candidates;

    void SetUp() override { open(16, 64); }
    void TearDown() override { vx_readline_close(readline); }
    void open(size_t history, size_t size)
    {
        vx_readline_close(readline);
        readline = vx_readline_open(history, size, complete, this, take, this);
        ASSERT_NE(readline, nullptr);
    }
    static void take(void* data, const char* text) { static_cast<Readline*>(data)->sent += text; }
    static int complete(void* data, char* line, size_t size)
    {
        Readline* self = static_cast<Readline*>(data);
        self->completed.push_back(line);
        take(data, self->candidates.c_str());
        strncat(line, self->rest.c_str(), size - 1 - strlen(line));
        return self->completion;
    }
    // Types the bytes and returns what was sent; finished lines go to lines.
    std::string type(const std::string& bytes)
    {
        sent.clear();
        for (char byte : bytes) {
            if (const char* line = vx_readline_char(readline, static_cast<unsigned char>(byte))) {
                lines.push_back(line);
            }
        }
        return sent;
    }
};

TEST_F(Readline, LineIsEchoedAndReturnedAtItsEnd)
{
    EXPECT_EQ(type("ls -l\n"), "ls -l\n");
    EXPECT_EQ(type("next\r"), "next\n"); // a carriage return ends it as well, and a line feed is printed
    EXPECT_THAT(lines, ElementsAre("ls -l", "next"));
}

TEST_F(Readline, EmptyLineIsAnEmptyText)
{
    EXPECT_EQ(type("\n"), "\n");
    EXPECT_THAT(lines, ElementsAre(""));
    EXPECT_EQ(type("a\r\n"), "a\n\n"); // a carriage return and a line feed are two ends
    EXPECT_THAT(lines, ElementsAre("", "a", ""));
}

TEST_F(Readline, SequencesCutAtEveryByte)
{
    // The state lives across calls of one byte each; here it also has to live across an edit of the line.
    EXPECT_EQ(type("ab\033"), "ab");
    EXPECT_EQ(type("["), "");
    EXPECT_EQ(type("D"), "\033[D");
    EXPECT_EQ(type("\033"), "");
    EXPECT_EQ(type("["), "");
    EXPECT_EQ(type("3"), "");
    EXPECT_EQ(type("~"), "\033[1P");
    EXPECT_EQ(type("\n"), "\n");
    EXPECT_THAT(lines, ElementsAre("a"));
}

TEST_F(Readline, UnknownSequenceTypesAQuestionMark)
{
    EXPECT_EQ(type("a\033[Hb\n"), "a?b\n");
    EXPECT_THAT(lines, ElementsAre("a?b"));
}

TEST_F(Readline, ControlDOnAnEmptyLineReturnsExit)
{
    EXPECT_EQ(type("\004"), "");
    EXPECT_THAT(lines, ElementsAre("exit"));
    type("a\010\004"); // empty again
    EXPECT_THAT(lines, ElementsAre("exit", "exit"));
    type("x\n\004"); // and after a line
    EXPECT_THAT(lines, ElementsAre("exit", "exit", "x", "exit"));
}

TEST_F(Readline, ControlDOnANonEmptyLineIsAnOrdinaryCharacter)
{
    EXPECT_EQ(type("ab\004c\n"), "abc\n"); // the editor gets it, and it is none that can be shown
    EXPECT_THAT(lines, ElementsAre("abc"));
}

TEST_F(Readline, LineLongerThanTheBufferIsCut)
{
    std::string line(200, 'x');
    EXPECT_EQ(type(line + "\n"), line.substr(0, 63) + "\n");
    EXPECT_THAT(lines, ElementsAre(line.substr(0, 63)));
}

TEST_F(Readline, UpAndDownWalkTheHistory)
{
    type("one\ntwo\nthree\n");
    EXPECT_EQ(type(UP), "\033[0Kthree");
    EXPECT_EQ(type(UP), "\033[5D\033[0Ktwo");
    EXPECT_EQ(type(UP), "\033[3D\033[0Kone");
    EXPECT_EQ(type(UP), ""); // the oldest non-empty line
    EXPECT_EQ(type(DOWN), "\033[3D\033[0Ktwo");
    EXPECT_EQ(type(DOWN), "\033[3D\033[0Kthree");
    EXPECT_EQ(type(DOWN), "\033[5D\033[0K"); // past the newest: an empty line
    EXPECT_EQ(type(DOWN), "");
    EXPECT_EQ(type("x\n"), "x\n");
    EXPECT_EQ(lines.back(), "x");
}

TEST_F(Readline, ApplicationModeArrowsWalkTheHistoryToo)
{
    type("one\ntwo\n");
    EXPECT_EQ(type("\033OA\033OA\033OB\n"), "\033[0Ktwo\033[3D\033[0Kone\033[3D\033[0Ktwo\n");
    EXPECT_EQ(lines.back(), "two");
}

TEST_F(Readline, NothingToWalkThroughLeavesTheLineAlone)
{
    EXPECT_EQ(type("ab"), "ab");
    EXPECT_EQ(type(UP), "");
    EXPECT_EQ(type(DOWN), "");
    type("\n");
    EXPECT_THAT(lines, ElementsAre("ab"));
}

TEST_F(Readline, WipeStartsAtTheCursor)
{
    type("old\n");
    type("abc");
    type(LEFT);
    EXPECT_EQ(type(UP), "\033[2D\033[0Kold");
    EXPECT_EQ(type("er\n"), "er\n");
    EXPECT_EQ(lines.back(), "older"); // a history line can be edited
    EXPECT_EQ(type(UP), "\033[0Kolder");
    EXPECT_EQ(type(UP), "\033[5D\033[0Kold"); // and stays as it was
}

TEST_F(Readline, LineEqualToTheNewestHistoryLineIsNotStoredTwice)
{
    type("one\ntwo\ntwo\n");
    EXPECT_EQ(type(UP), "\033[0Ktwo");
    EXPECT_EQ(type(UP), "\033[3D\033[0Kone");
    type("\n"); // differs from the newest, so it is stored again
    EXPECT_EQ(type(UP), "\033[0Kone");
    EXPECT_EQ(type(UP), "\033[3D\033[0Ktwo");
}

TEST_F(Readline, EveryEndOfALineEndsTheBrowsing)
{
    type("one\ntwo\n");
    type(std::string(UP) + "\n"); // "two", equal to the newest
    EXPECT_EQ(type(UP), "\033[0Ktwo");
    type("\010\010\010\n"); // an empty line
    EXPECT_EQ(type(UP), "\033[0Ktwo");
}

TEST_F(Readline, EmptyLinesAreNotStored)
{
    type("one\n\n\n");
    EXPECT_EQ(type(UP), "\033[0Kone");
}

TEST_F(Readline, HistoryKeepsSixteenLines)
{
    for (int line = 1; line <= 20; ++line) {
        type("line" + std::to_string(line) + "\n");
    }
    for (int line = 20; line > 4; --line) {
        EXPECT_NE(type(UP).find("line" + std::to_string(line)), std::string::npos) << line;
    }
    EXPECT_EQ(type(UP), ""); // the ring is full: the oldest is the end
    type("\n");
    EXPECT_EQ(lines.back(), "line5");
}

TEST_F(Readline, HistoryKeepsALineOfFullLength)
{
    std::string line(63, 'x');
    type(line + "\n");
    EXPECT_EQ(type(UP), "\033[0K" + line);
}

TEST_F(Readline, TabCallsTheCompletionWithACopyOfTheLine)
{
    type("he");
    EXPECT_EQ(type("\t"), ""); // 0 does nothing
    EXPECT_THAT(completed, ElementsAre("he"));
    rest = "lp"; // not even if the copy was changed
    EXPECT_EQ(type("\t\n"), "\n");
    EXPECT_THAT(lines, ElementsAre("he"));
}

TEST_F(Readline, UniqueMatchPrintsTheCompletedPartAndABlank)
{
    completion = VX_COMPLETION_UNIQUE;
    rest = "lp";
    type("he");
    EXPECT_EQ(type("\t"), "lp ");
    rest = "";
    EXPECT_EQ(type("\t\n"), " \n");
    EXPECT_THAT(lines, ElementsAre("help  "));
}

TEST_F(Readline, UniqueMatchGoesToTheEndOfTheLine)
{
    completion = VX_COMPLETION_UNIQUE;
    rest = "lp";
    type("he");
    type(LEFT);
    EXPECT_EQ(type("\t"), "\033[Clp ");
}

TEST_F(Readline, SeveralMatchesArePrintedThenThePromptAndTheLineAgain)
{
    completion = VX_COMPLETION_LIST;
    candidates = "\none  two\n$ ";
    type("ab");
    EXPECT_EQ(type("\t"), "\none  two\n$ ab");
    type(LEFT);
    EXPECT_EQ(type("\t"), "\none  two\n$ ab\033[1D"); // the cursor where it was
    EXPECT_EQ(type("x\n"), "\033[4hx\033[4l\n");
    EXPECT_THAT(lines, ElementsAre("axb"));
}

TEST_F(Readline, SeveralMatchesMayAppendWhatTheyHaveInCommon)
{
    completion = VX_COMPLETION_LIST;
    candidates = "\none  two\n$ ";
    rest = "cd";
    type("ab");
    EXPECT_EQ(type("\t\n"), "\none  two\n$ abcd\n");
    EXPECT_THAT(lines, ElementsAre("abcd"));
}

TEST_F(Readline, CompletionOfAFullLineIsBounded)
{
    completion = VX_COMPLETION_UNIQUE;
    rest = std::string(300, 'z');
    type(std::string(60, 'a'));
    EXPECT_EQ(type("\t"), "zzz"); // and no blank
    type("\n");
    EXPECT_EQ(lines.back(), std::string(60, 'a') + "zzz");
}

TEST_F(Readline, WithoutACompletionFunctionTabDoesNothing)
{
    vx_readline_close(readline);
    readline = vx_readline_open(16, 64, nullptr, nullptr, take, this);
    EXPECT_EQ(type("a\tb\n"), "ab\n");
}

TEST_F(Readline, LineFeedInAnOpenSequenceIsOneOfItsBytes)
{
    EXPECT_EQ(type("a\033[\n"), "a");
    EXPECT_THAT(lines, IsEmpty());
    EXPECT_EQ(type("~b\n"), "?b\n");
    EXPECT_THAT(lines, ElementsAre("a?b"));
}

TEST_F(Readline, SmallestLine)
{
    open(1, 1);
    EXPECT_EQ(type(std::string("a\t") + UP + DOWN + "\n"), "\n");
    EXPECT_THAT(lines, ElementsAre(""));
}

TEST_F(Readline, BytesOfAnyValueInAnyOrderKeepTheTerminalRight)
{
    std::mt19937 random(7);
    TerminalLine terminal;
    const std::string likely = "ab \033[ABCDO3~\n\004\010\177\t";
    for (int turn = 0; turn < 60000; ++turn) {
        completion = static_cast<int>(random() % 3);
        rest = random() % 2 ? "cd" : "";
        char byte = random() % 4 ? likely[random() % likely.size()] : static_cast<char>(random());
        candidates = completion == VX_COMPLETION_LIST ? "\n" : "";
        sent.clear();
        const char* line = vx_readline_char(readline, static_cast<unsigned char>(byte));
        std::string before = terminal.text;
        terminal.write(sent);
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_LE(terminal.text.size(), 63u);
        if (line && strcmp(line, "exit") != 0) {
            ASSERT_EQ(before, line);
            ASSERT_EQ(terminal.text, "");
        }
    }
}

TEST(ReadlineMemory, OpenFailsWithoutMemoryAndLeaksNothing)
{
    static int left;
    vx_calloc = [](size_t count, size_t size) -> void* { return left-- > 0 ? calloc(count, size) : nullptr; };
    for (int allowed = 0; allowed < 4; ++allowed) {
        left = allowed;
        EXPECT_EQ(vx_readline_open(
                      16, 64, nullptr, nullptr, [](void*, const char*) {}, nullptr),
                  nullptr);
    }
    left = 4;
    vx_readline* readline = vx_readline_open(
        16, 64, nullptr, nullptr, [](void*, const char*) {}, nullptr);
    EXPECT_NE(readline, nullptr);
    vx_readline_close(readline);
    vx_readline_close(nullptr);
    vx_calloc = calloc;
}

TEST(History, LineLongerThanItsPlaceIsCut)
{
    vx_history history;
    ASSERT_EQ(vx_history_init(&history, 2, 4), 0);
    vx_history_add(&history, "abcdef");
    EXPECT_STREQ(vx_history_up(&history), "abc");
    vx_history_add(&history, "abc"); // equal to what was kept
    vx_history_add(&history, "x");
    EXPECT_STREQ(vx_history_up(&history), "x");
    EXPECT_STREQ(vx_history_up(&history), "abc");
    EXPECT_EQ(vx_history_up(&history), nullptr);
    vx_history_fini(&history);
}

} // namespace
