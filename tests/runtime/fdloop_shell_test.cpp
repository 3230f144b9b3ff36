// The shell on descriptor 0 of a loop: a child process on a pseudo terminal, as a user would meet it.
#include "runtime/fdloop.h"
#include "runtime/fdloop_impl.h"
#include "runtime/fdloop_shell.h"
#include "runtime/util.h"
#include "runtime/vx_cshell.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/keptloop.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

const int DEADLINE_MS = 30000;

class FdloopShell : public testing::Test {
protected:
    int master = -1;
    pid_t child = -1;
    struct termios before = {};

    void SetUp() override
    {
        master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        ASSERT_GE(master, 0);
        ASSERT_EQ(grantpt(master), 0);
        ASSERT_EQ(unlockpt(master), 0);
        // Plain line feeds on the way out, so that the bytes are those of the shell.
        ASSERT_EQ(tcgetattr(master, &before), 0);
        before.c_oflag &= ~static_cast<tcflag_t>(OPOST);
        ASSERT_EQ(tcsetattr(master, TCSANOW, &before), 0);
    }
    void TearDown() override
    {
        if (child > 0) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
        if (master >= 0) {
            close(master);
        }
    }
    // Runs the body in a child whose controlling terminal is the pseudo terminal, on descriptors 0 and 1. Its
    // result is the exit status, unless it exits by itself.
    void start(const std::function<int()>& body)
    {
        fflush(stdout);
        child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            alarm(2 * DEADLINE_MS / 1000); // never outlives the test
            setsid();
            int terminal = open(ptsname(master), O_RDWR);
            close(master); // the last one must be the test's
            ioctl(terminal, TIOCSCTTY, 0);
            dup2(terminal, STDIN_FILENO);
            dup2(terminal, STDOUT_FILENO);
            close(terminal);
            exit(body());
        }
    }
    void startShell()
    {
        start([] {
            fdloop_t* loop = keptLoop();
            fdloop_shell_init(loop, "pty");
            return 40 + fdloop_loop(loop); // 41: nothing is left on the loop
        });
    }
    void type(const std::string& bytes)
    {
        ASSERT_EQ(write(master, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    // What the terminal shows up to the expected text. Returns what came if the time is over.
    std::string shown(const std::string& expected)
    {
        std::string text;
        struct pollfd arrived = {master, POLLIN, 0};
        while (text.size() < expected.size() && poll(&arrived, 1, DEADLINE_MS) == 1) {
            char bytes[256];
            ssize_t count = read(master, bytes, std::min(sizeof(bytes), expected.size() - text.size()));
            if (count <= 0) {
                break;
            }
            text.append(bytes, static_cast<size_t>(count));
        }
        return text;
    }
    void expectShown(const std::string& expected) { EXPECT_EQ(shown(expected), expected); }
    int exitStatus()
    {
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        child = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    struct termios settings() const
    {
        struct termios now = {};
        EXPECT_EQ(tcgetattr(master, &now), 0);
        return now;
    }
};

TEST_F(FdloopShell, PromptsEditsAndRuns)
{
    startShell();
    expectShown("pty:/$ ");
    EXPECT_EQ(settings().c_lflag & (ICANON | ECHO), 0u); // raw
    type("ecko\033[D\177h\033[C me\r");
    expectShown("ecko\033[D\033[D\033[1P\033[4hh\033[4l\033[C me\nme\npty:/$ ");
    type("\033[A");
    expectShown("\033[0Kecho me");
    type("\n");
    expectShown("\nme\npty:/$ ");
}

TEST_F(FdloopShell, ExitEndsTheProcessWithStatus0AndRestoresTheTerminal)
{
    startShell();
    expectShown("pty:/$ ");
    EXPECT_NE(settings().c_lflag, before.c_lflag);
    type("exit\necho never\n");
    expectShown("exit\n");
    EXPECT_EQ(exitStatus(), 0);
    EXPECT_EQ(settings().c_lflag, before.c_lflag);
    EXPECT_EQ(settings().c_iflag, before.c_iflag);
    EXPECT_EQ(settings().c_cflag, before.c_cflag);
}

TEST_F(FdloopShell, ControlDEndsTheProcess)
{
    startShell();
    expectShown("pty:/$ ");
    type("\004");
    EXPECT_EQ(exitStatus(), 0);
    EXPECT_EQ(settings().c_lflag, before.c_lflag);
}

TEST_F(FdloopShell, ExitOfTheProcessByItselfRestoresTheTerminal)
{
    start([] {
        fdloop_shell_init(keptLoop(), "pty");
        return 5;
    });
    EXPECT_EQ(exitStatus(), 5);
    EXPECT_EQ(settings().c_lflag, before.c_lflag);
}

TEST_F(FdloopShell, TerminalIsRestoredFromTheBackgroundToo)
{
    start([] {
        fdloop_shell_init(keptLoop(), "pty");
        pid_t other = fork(); // takes the foreground
        if (other == 0) {
            pause();
        }
        setpgid(other, other);
        tcsetpgrp(STDIN_FILENO, other);
        signal(SIGTTOU, SIG_DFL);
        pid_t exiting = fork();
        if (exiting == 0) {
            exit(3); // would be stopped in restoring the terminal
        }
        int status = 0;
        waitpid(exiting, &status, WUNTRACED);
        kill(other, SIGKILL);
        return WIFEXITED(status) ? 10 + WEXITSTATUS(status) : 1;
    });
    expectShown("pty:/$ ");
    EXPECT_EQ(exitStatus(), 13);
}

TEST_F(FdloopShell, InterruptKeyStillSignals)
{
    startShell();
    expectShown("pty:/$ ");
    type("\003");
    EXPECT_EQ(exitStatus(), -SIGINT);
}

TEST_F(FdloopShell, DescriptorStaysBlockingAndIsNotClosedOnExec)
{
    start([] {
        fcntl(STDIN_FILENO, F_SETFD, FD_CLOEXEC);
        fdloop_shell_init(keptLoop(), "pty");
        // The flag for a descriptor that doesn't block goes to the wrong command, and has no effect there.
        int blocking = !(fcntl(STDIN_FILENO, F_GETFL) & O_NONBLOCK);
        int kept = !(fcntl(STDIN_FILENO, F_GETFD) & FD_CLOEXEC);
        return 10 * blocking + kept;
    });
    EXPECT_EQ(exitStatus(), 11);
}

TEST_F(FdloopShell, DoesNothingInABackgroundGroup)
{
    start([] {
        pid_t background = fork();
        if (background == 0) {
            setpgid(0, 0);
            fdloop_t* loop = keptLoop();
            cshell* shell = fdloop_shell_init(loop, "pty");
            _exit(shell == nullptr && loop->entry_count == 0 ? 21 : 22);
        }
        int status = 0;
        waitpid(background, &status, 0);
        return WEXITSTATUS(status);
    });
    EXPECT_EQ(exitStatus(), 21);
    EXPECT_EQ(settings().c_lflag, before.c_lflag);
    struct pollfd arrived = {master, POLLIN, 0};
    char byte;
    EXPECT_TRUE(poll(&arrived, 1, 0) == 0 || read(master, &byte, 1) <= 0); // no prompt
}

TEST_F(FdloopShell, DoesNothingWithoutATerminal)
{
    start([] {
        int null = open("/dev/null", O_RDONLY);
        dup2(null, STDIN_FILENO);
        fdloop_t* loop = keptLoop();
        return fdloop_shell_init(loop, "pty") == nullptr && loop->entry_count == 0 ? 21 : 22;
    });
    EXPECT_EQ(exitStatus(), 21);
}

TEST_F(FdloopShell, SecondInitGivesTheSameShell)
{
    start([] {
        fdloop_t* loop = keptLoop();
        cshell* shell = fdloop_shell_init(loop, "pty");
        return shell && fdloop_shell_init(loop, "other") == shell && loop->entry_count == 1 ? 21 : 22;
    });
    EXPECT_EQ(exitStatus(), 21);
    expectShown("pty:/$ ");
}

TEST_F(FdloopShell, HookTakesAllFurtherInput)
{
    static int hooked; // its address is the data word
    start([] {
        fdloop_t* loop = keptLoop();
        fdloop_shell_init(loop, "pty");
        fdloop_shell_hook_input(
            [](void* data, const char* bytes, size_t length) {
                if (data != &hooked) {
                    exit(9);
                }
                printf("<%.*s>", static_cast<int>(length), bytes);
                fflush(stdout);
                if (bytes[0] == '!') {
                    fdloop_shell_hook_input(nullptr, nullptr); // back to the shell
                }
                return bytes[0] == '#' ? 1 : 0;
            },
            &hooked);
        return 40 + fdloop_loop(loop);
    });
    expectShown("pty:/$ ");
    type("exit\n");
    expectShown("<exit\n>");
    type("!");
    expectShown("<!>");
    type("echo me\n");
    expectShown("echo me\nme\npty:/$ ");
    type("exit\n");
    EXPECT_EQ(exitStatus(), 0);
}

TEST_F(FdloopShell, ResultOfTheHookIsTheHandlers)
{
    start([] {
        fdloop_t* loop = keptLoop();
        fdloop_shell_init(loop, "pty");
        fdloop_shell_hook_input([](void*, const char*, size_t) { return 1; }, nullptr);
        return 40 + fdloop_loop(loop);
    });
    expectShown("pty:/$ ");
    type("x");
    EXPECT_EQ(exitStatus(), 41); // dropped: the loop has nothing left
}

TEST_F(FdloopShell, ClosedTerminalDropsTheDescriptor)
{
    start([] {
        signal(SIGHUP, SIG_IGN);
        fdloop_t* loop = keptLoop();
        fdloop_shell_init(loop, "pty");
        return 40 + fdloop_loop(loop);
    });
    expectShown("pty:/$ ");
    close(master);
    master = -1;
    EXPECT_EQ(exitStatus(), 41);
}

TEST_F(FdloopShell, LongInputIsReadInPieces)
{
    startShell();
    expectShown("pty:/$ ");
    std::string line(3000, 'x');
    type(line + "\n");
    std::string kept = line.substr(0, 63);
    expectShown(kept + "\n" + kept + ": command not found\npty:/$ ");
}

TEST_F(FdloopShell, WithoutMemoryForTheShellTheProcessEnds)
{
    start([] {
        fdloop_t* loop = keptLoop();
        syslogtap_echo(1);
        dup2(STDOUT_FILENO, STDERR_FILENO);
        vx_cshell_free(vx_cshell_alloc("first")); // the table of commands has its memory
        vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
        fdloop_shell_init(loop, "pty");
        return 0;
    });
    const std::string begin = "<1> fdloop_shell_test: *** ASSERT in fdloop_shell at ";
    expectShown(begin);
    EXPECT_EQ(exitStatus(), -SIGABRT);
}

} // namespace
