// The loop's line parser: lines, their ends, the prompt, and lines that are too long.
#include "runtime/fdloop.h"
#include "runtime/fdloop_impl.h"
#include "support/keptloop.h"
#include "support/outputcapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string>* lines;

void takeLine(char* line)
{
    lines->push_back(line);
}

class FdloopLine : public testing::Test {
protected:
    fdloop_t* loop = keptLoop();
    std::vector<std::string> delivered;
    OutputCapture output;
    int ends[2];

    void SetUp() override
    {
        lines = &delivered;
        ASSERT_EQ(pipe(ends), 0);
        fdloop_fd_register_lineparser(loop, ends[0], "> ", takeLine);
    }
    void TearDown() override
    {
        fdloop_fd_unregister(loop, ends[0]);
        close(ends[0]);
        close(ends[1]);
    }
    // Writes the bytes and runs turns until all have been read.
    void feed(const std::string& bytes)
    {
        ASSERT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        for (size_t read = 0; read < bytes.size(); read += 1024) {
            ASSERT_EQ(fdloop_run(loop), 0);
        }
    }
    // Like feed, for what must arrive in one read after another: a write for each.
    void feedEach(const std::vector<std::string>& pieces)
    {
        for (const std::string& piece : pieces) {
            feed(piece);
        }
    }
};

TEST_F(FdloopLine, PromptStandsAtOnceAndAfterEachLine)
{
    EXPECT_EQ(output.text(), "> "); // flushed, without a line feed
    feed("one\ntwo\n");
    EXPECT_THAT(delivered, ElementsAre("one", "two"));
    EXPECT_EQ(output.text(), "> > > ");
}

TEST_F(FdloopLine, LineInSeveralReads)
{
    feedEach({"he", "llo", " wor"});
    EXPECT_THAT(delivered, IsEmpty());
    feed("ld\nnext");
    EXPECT_THAT(delivered, ElementsAre("hello world"));
    feed("\n");
    EXPECT_THAT(delivered, ElementsAre("hello world", "next"));
}

TEST_F(FdloopLine, EmptyLinesAreDelivered)
{
    feed("\n\nx\n");
    EXPECT_THAT(delivered, ElementsAre("", "", "x"));
}

TEST_F(FdloopLine, CarriageReturnBeforeTheLineFeedIsTakenOff)
{
    feed("text\r\n");
    EXPECT_THAT(delivered, ElementsAre("text"));
}

TEST_F(FdloopLine, LineOfOnlyCarriageReturnAndLineFeedIsEmpty)
{
    feed("\r\n");
    EXPECT_THAT(delivered, ElementsAre(""));
}

TEST_F(FdloopLine, OnlyTheLastCarriageReturnIsTakenOff)
{
    feed("a\rb\r\r\n");
    EXPECT_THAT(delivered, ElementsAre("a\rb\r"));
}

TEST_F(FdloopLine, CarriageReturnAndLineFeedInTwoReads)
{
    feedEach({"text\r", "\n"});
    EXPECT_THAT(delivered, ElementsAre("text"));
}

TEST_F(FdloopLine, ReadOfZeroBytesDeliversNothingAndStaysRegistered)
{
    feed("part");
    close(ends[1]);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(delivered, IsEmpty());
    EXPECT_EQ(loop->entry_count, 1);
    ends[1] = open("/dev/null", O_WRONLY);
}

TEST_F(FdloopLine, FailedReadDropsTheEntry)
{
    int directory = open("/", O_RDONLY); // always readable, and read fails with EISDIR
    ASSERT_GE(directory, 0);
    fdloop_fd_unregister(loop, ends[0]);
    fdloop_fd_register_lineparser(loop, directory, "> ", takeLine);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_THAT(delivered, IsEmpty());
    close(directory);
}

TEST_F(FdloopLine, ReadThatWouldBlockIsRepeatedUntilBytesCome)
{
    // The handler is called although nothing is there: an earlier handler of the same descriptor took it.
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    fdloop_fd_unregister(loop, ends[0]);
    std::thread writer;
    struct Context {
        std::thread* writer;
        int out;
    } context = {&writer, ends[1]};
    fdloop_fd_register(
        loop, ends[0],
        [](int fd, void* data) {
            char byte;
            EXPECT_EQ(read(fd, &byte, 1), 1);
            Context* context = static_cast<Context*>(data);
            int out = context->out;
            *context->writer = std::thread([out] {
                usleep(20000);
                EXPECT_EQ(write(out, "late\n", 5), 5);
            });
            return 0;
        },
        &context);
    fdloop_fd_register_lineparser(loop, ends[0], "> ", takeLine);
    EXPECT_EQ(write(ends[1], "x", 1), 1);
    EXPECT_EQ(fdloop_run(loop), 0);
    writer.join();
    EXPECT_THAT(delivered, ElementsAre("late"));
    fdloop_fd_unregister(loop, ends[0]);
}

TEST_F(FdloopLine, LineOf1023BytesFits)
{
    std::string line(1023, 'a');
    feed(line + "\n");
    EXPECT_THAT(delivered, ElementsAre(line));
}

TEST_F(FdloopLine, LineOf1024BytesIsTooLongAndItsRestIsDiscarded)
{
    std::string line(1024, 'a');
    feedEach({line, "\nnext\n"});
    EXPECT_THAT(delivered, ElementsAre("next"));
    EXPECT_EQ(output.text(), "> *** _blkr_proc Line too long - discarded: >" + line +
                                 "<\n"
                                 "*** _blkr_proc Discard remainder: ><\n"
                                 "> ");
}

TEST_F(FdloopLine, TooLongMessageOnceForALineLittleLongerThanTheBuffer)
{
    std::string start(1024, 'a');
    feedEach({start, "bbb", "ccc\r\nnext\n"});
    EXPECT_THAT(delivered, ElementsAre("next"));
    EXPECT_EQ(output.text(), "> *** _blkr_proc Line too long - discarded: >" + start +
                                 "<\n"
                                 "*** _blkr_proc Discard remainder: >bbbccc\r<\n"
                                 "> ");
}

TEST_F(FdloopLine, TooLongMessageOnceForEachFullBuffer)
{
    std::string a(1024, 'a'), b(1024, 'b');
    feedEach({a, b, "c\n"});
    EXPECT_THAT(delivered, IsEmpty());
    EXPECT_EQ(output.text(), "> *** _blkr_proc Line too long - discarded: >" + a +
                                 "<\n"
                                 "*** _blkr_proc Line too long - discarded: >" +
                                 b +
                                 "<\n"
                                 "*** _blkr_proc Discard remainder: >c<\n");
}

TEST_F(FdloopLine, TooLongLineBehindAShortOneInTheBuffer)
{
    std::string rest(1020, 'a');
    feedEach({"abc\n" + rest}); // 1,024 bytes: the remainder still has room
    EXPECT_THAT(delivered, ElementsAre("abc"));
    feed("bbbb");
    EXPECT_EQ(output.text(), "> > *** _blkr_proc Line too long - discarded: >" + rest + "bbbb<\n");
}

TEST_F(FdloopLine, SecondRegistrationTakesTheParserOver)
{
    static std::vector<std::string> others;
    others.clear();
    feed("part");
    fdloop_fd_register_lineparser(loop, ends[0], "# ", [](char* line) { others.push_back(line); });
    EXPECT_EQ(loop->entry_count, 2); // no test for duplicates
    fdloop_fd_unregister(loop, ends[0]);
    feed("line\n");
    EXPECT_THAT(delivered, IsEmpty());
    EXPECT_THAT(others, ElementsAre("line")); // what the first had collected is gone
    EXPECT_EQ(output.text(), "> # # ");
}

TEST_F(FdloopLine, NullPromptPrintsNothing)
{
    fdloop_fd_unregister(loop, ends[0]);
    fdloop_fd_register_lineparser(loop, ends[0], nullptr, takeLine);
    feed("x\n");
    EXPECT_EQ(output.text(), "> ");
}

TEST_F(FdloopLine, LineeditReadsDescriptor0)
{
    int saved = dup(STDIN_FILENO);
    dup2(ends[0], STDIN_FILENO);
    fdloop_fd_unregister(loop, ends[0]);
    fdloop_lineedit_init(loop, "$ ", takeLine);
    feed("command\n");
    fdloop_fd_unregister(loop, STDIN_FILENO);
    if (saved >= 0) {
        dup2(saved, STDIN_FILENO);
        close(saved);
    } else {
        close(STDIN_FILENO);
    }
    EXPECT_THAT(delivered, ElementsAre("command"));
    EXPECT_EQ(output.text(), "> $ $ ");
}

TEST(FdloopLineDeathTest, NullLineEndsTheProcessWithStatus0)
{
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            fdloop_lineedit_line(nullptr);
        },
        testing::ExitedWithCode(0), "^\n$");
}

} // namespace
