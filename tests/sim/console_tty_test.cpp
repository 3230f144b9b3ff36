// The console of a running terminalsim on a terminal: what is typed, what is seen, and the terminal's
// settings at every end.
#include "process.h"
#include "temporary_directory.h"

#include "support/patience.h"

#include <chrono>
#include <gmock/gmock.h>
#include <pty.h>
#include <termios.h>

using testing::HasSubstr;
using testing::Not;

namespace {

const char Prompt[] = "terminal> ";
const char Up[] = "\x1b[A";
const char Down[] = "\x1bOB";
const char Left[] = "\x1b[D";

// The program on a pseudo terminal, whose foreground it is.
class TerminalProcess {
public:
    explicit TerminalProcess(std::vector<std::string> arguments, const char* program = Program)
    {
        std::vector<char*> argv{const_cast<char*>(program)};
        for (std::string& argument : arguments)
            argv.push_back(&argument[0]);
        argv.push_back(nullptr);
        pid = forkpty(&master, nullptr, nullptr, nullptr);
        if (pid == 0) {
            execvp(program, argv.data());
            _exit(127);
        }
        fcntl(master, F_SETFD, FD_CLOEXEC);
    }
    ~TerminalProcess()
    {
        if (pid > 0) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
        hangUp();
    }
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    void type(const std::string& text)
    {
        EXPECT_EQ(write(master, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    // Reads until the text has been seen behind what was waited for before. What came with it is in seen.
    bool waitFor(const std::string& text, int timeout = PATIENCE_MS)
    {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout);
        for (;;) {
            size_t at = buffer.find(text);
            if (at != std::string::npos) {
                seen = buffer.substr(0, at + text.size());
                buffer.erase(0, at + text.size());
                return true;
            }
            auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                deadline - std::chrono::steady_clock::now());
            pollfd waiting{master, POLLIN, 0};
            char bytes[4096];
            ssize_t count = -1;
            if (left.count() > 0 && poll(&waiting, 1, static_cast<int>(left.count())) == 1)
                count = read(master, bytes, sizeof bytes);
            if (count <= 0) { // with EIO when the last one has closed the terminal
                seen = buffer;
                return false;
            }
            buffer.append(bytes, static_cast<size_t>(count));
        }
    }
    // Types a line and waits for the next prompt; what is seen in between.
    std::string run(const std::string& line)
    {
        type(line + "\r");
        EXPECT_TRUE(waitFor(std::string("\n"))) << seen;
        EXPECT_TRUE(waitFor(Prompt)) << seen;
        return seen.substr(0, seen.size() - strlen(Prompt));
    }
    void hangUp()
    {
        if (master >= 0)
            close(master);
        master = -1;
    }
    void signal(int number)
    {
        if (pid > 0) // else it is every process
            kill(pid, number);
    }
    // The status as waitpid has it; -1 if it goes on.
    int waitForChange(int options = 0)
    {
        for (int attempt = 0; attempt < 1000; attempt++) {
            int status = 0;
            if (waitpid(pid, &status, WNOHANG | options) == pid) {
                if (!WIFSTOPPED(status))
                    pid = -1;
                return status;
            }
            usleep(20000);
        }
        return -1;
    }
    // The exit status, or -1.
    int end()
    {
        int status = waitForChange();
        return status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    bool isRaw() const
    {
        termios settings{};
        EXPECT_EQ(tcgetattr(master, &settings), 0);
        EXPECT_EQ(!(settings.c_lflag & ICANON), !(settings.c_lflag & ECHO));
        return !(settings.c_lflag & ICANON);
    }

    std::string seen;

private:
    pid_t pid = -1;
    int master = -1;
    std::string buffer;
};

class ConsoleTtyTest : public testing::Test {
protected:
    void start(std::vector<std::string> options = {})
    {
        options.insert(options.begin(), {"--address", address, "--still", "--socket", path});
        terminal = std::make_unique<TerminalProcess>(options);
        ASSERT_TRUE(terminal->waitFor(Prompt)) << terminal->seen;
    }
    int command(std::vector<std::string> words)
    {
        words.insert(words.begin(), {"--socket", path});
        return Process(words).end();
    }

    TemporaryDirectory directory;
    std::string address = privateAddress();
    std::string path = directory.file("console");
    std::unique_ptr<TerminalProcess> terminal;
};

TEST_F(ConsoleTtyTest, PromptAndCommands)
{
    start();
    EXPECT_THAT(terminal->seen, HasSubstr("terminalsim: listening on " + address));
    EXPECT_TRUE(terminal->isRaw());
    EXPECT_EQ(terminal->run("get cfg.language"), "int 0\r\n");
    EXPECT_EQ(terminal->run("get no.key"), "error: no.key: not in the database\r\n");
    EXPECT_EQ(terminal->run(""), "");
    EXPECT_EQ(terminal->run("# nothing"), "");
}

TEST_F(ConsoleTtyTest, Editing)
{
    start();
    EXPECT_EQ(terminal->run("gex\x7ft cfg.languagee\x08"), "int 0\r\n");
    EXPECT_EQ(terminal->run(std::string("et cfg.lan") + Left + Left + Left + Left + Left + Left + Left +
                            Left + Left + Left + "g\x1b[3~e" +
                            "\x1b[C\x1b[C\x1b[C\x1b[C\x1b[C\x1b[C\x1b[C\x1b[C\x1b[C" + "guage"),
              "int 0\r\n");
    EXPECT_EQ(terminal->run("echo " + std::string(1000, 'x')), std::string(255 - 5, 'x') + "\r\n");
}

TEST_F(ConsoleTtyTest, History)
{
    start();
    terminal->run("echo one");
    terminal->run("echo two");
    EXPECT_EQ(terminal->run(Up), "two\r\n");
    EXPECT_EQ(terminal->run(std::string(Up) + Up), "one\r\n");
    EXPECT_EQ(terminal->run(std::string(Up) + Up + Up + Up + Up + Down), "two\r\n");
    EXPECT_EQ(terminal->run(std::string(Up) + " too"), "two too\r\n");
}

TEST_F(ConsoleTtyTest, Tab)
{
    start();
    EXPECT_EQ(terminal->run("unw\t"), "error: nothing is watched\r\n");
    EXPECT_EQ(terminal->run("get cfg.langu\t"), "int 0\r\n");
    // As far as it is clear; and then what there is, above the line as it was.
    terminal->type("pointing s\t");
    EXPECT_TRUE(terminal->waitFor(std::string(Prompt) + "pointing st"));
    terminal->type("\t");
    EXPECT_TRUE(terminal->waitFor("start  stop"));
    EXPECT_TRUE(terminal->waitFor(std::string(Prompt) + "pointing st"));
    EXPECT_EQ(terminal->run("xy"), "error: usage: pointing start | stop | cancel\r\n");
    EXPECT_EQ(terminal->run("echo \t\t\tx"), "x\r\n");
}

TEST_F(ConsoleTtyTest, TypingGoesOnWhenSomethingComesInBetween)
{
    start();
    terminal->run("watch ram.x");
    terminal->type("get cfg.lang");
    ASSERT_TRUE(terminal->waitFor("lang"));
    EXPECT_EQ(command({"set", "ram.x", "5"}), 0);
    EXPECT_TRUE(terminal->waitFor("\r\x1b[K* ram.x = int 5\r\nterminal> get cfg.lang"));
    EXPECT_EQ(terminal->run("uage"), "int 0\r\n");
    // A line of the log as well.
    terminal->run("trace console a");
    terminal->type("echo a");
    ASSERT_TRUE(terminal->waitFor("echo a"));
    EXPECT_EQ(command({"echo", "there"}), 0);
    EXPECT_TRUE(terminal->waitFor(
        "\r\x1b[Kterminalsim: trace console: console2 runs echo there\r\nterminal> echo a"));
}

TEST_F(ConsoleTtyTest, TypedAheadWhileACommandRuns)
{
    start();
    terminal->type("pause 0.3\recho one\recho two\r");
    EXPECT_TRUE(terminal->waitFor("one\r\n"));
    EXPECT_TRUE(terminal->waitFor("two\r\n"));
    EXPECT_TRUE(terminal->waitFor(Prompt));
}

TEST_F(ConsoleTtyTest, BytesOfAnyKind)
{
    start();
    std::string bytes;
    for (int byte = 0; byte < 256; byte++) {
        // Not those with which the terminal itself ends or stops the process, nor a lonely Ctrl-D.
        if (byte != 3 && byte != 26 && byte != 28 && byte != 4)
            bytes.push_back(static_cast<char>(byte));
    }
    terminal->type(bytes + "\r");
    terminal->type("\x1b[\x1b[999;999H\x1b\x1b\x1bO\r\r\r\r\r"); // the sequence takes some of them
    terminal->type("echo here\r");
    EXPECT_TRUE(terminal->waitFor("\r\nhere\r\n")) << terminal->seen;
}

// --- Every end

struct End {
    const char* name;
    const char* typed; // or null and
    int number;        // a signal
};

TEST_F(ConsoleTtyTest, EveryEndLeavesTheTerminalAsItWas)
{
    const End table[] = {
        {"Ctrl-C", "\x03", 0},       {"Ctrl-C in a line", "get \x03", 0},
        {"Ctrl-D", "\x04", 0},       {"exit", "exit\r", 0},
        {"quit", "quit\r", 0},       {"Ctrl-C in a command", "pause 600\r\x03", 0},
        {"Ctrl-\\", "\x1c", 0},      {"SIGTERM", nullptr, SIGTERM},
        {"SIGINT", nullptr, SIGINT}, {"SIGHUP", nullptr, SIGHUP},
    };
    for (const End& row : table) {
        start();
        ASSERT_TRUE(terminal->isRaw()) << row.name;
        if (row.typed)
            terminal->type(row.typed);
        else
            terminal->signal(row.number);
        EXPECT_EQ(terminal->end(), 0) << row.name;
        EXPECT_FALSE(terminal->isRaw()) << row.name;
        EXPECT_FALSE(std::filesystem::exists(path)) << row.name;
    }
}

TEST_F(ConsoleTtyTest, ControlDInALineIsAnOrdinaryCharacter)
{
    start();
    EXPECT_EQ(terminal->run("echo a\x04"), "a\r\n");
}

TEST_F(ConsoleTtyTest, AbortLeavesTheTerminalAsItWas)
{
    start();
    terminal->signal(SIGABRT);
    int status = terminal->waitForChange();
    EXPECT_TRUE(status != -1 && WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT) << status;
    EXPECT_FALSE(terminal->isRaw());
}

TEST_F(ConsoleTtyTest, TerminalThatIsClosedEndsTheProgram)
{
    start();
    terminal->type("get ");
    terminal->hangUp();
    EXPECT_EQ(terminal->end(), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ConsoleTtyTest, StoppedAndContinued)
{
    start();
    terminal->type("get cfg.lang");
    ASSERT_TRUE(terminal->waitFor("lang"));
    terminal->type("\x1a");
    int status = terminal->waitForChange(WUNTRACED);
    ASSERT_TRUE(status != -1 && WIFSTOPPED(status)) << status;
    EXPECT_FALSE(terminal->isRaw());
    terminal->signal(SIGCONT);
    EXPECT_TRUE(terminal->waitFor(std::string(Prompt) + "get cfg.lang"));
    EXPECT_TRUE(terminal->isRaw());
    EXPECT_EQ(terminal->run("uage"), "int 0\r\n");
}

// As a job of a shell: stopped, in the background, where the shell has the terminal, and back again.
TEST_F(ConsoleTtyTest, JobOfAShell)
{
    const char ShellPrompt[] = "SHELL$ ";
    setenv("PS1", ShellPrompt, 1);
    terminal =
        std::make_unique<TerminalProcess>(std::vector<std::string>{"--norc", "--noprofile", "-i"}, "bash");
    unsetenv("PS1");
    ASSERT_TRUE(terminal->waitFor(ShellPrompt)) << terminal->seen;
    terminal->type(std::string(Program) + " --address '" + address + "' --still --socket " + path + "\r");
    ASSERT_TRUE(terminal->waitFor(Prompt)) << terminal->seen;
    terminal->type("get cfg.lang");
    ASSERT_TRUE(terminal->waitFor("lang"));
    terminal->type("\x1a");
    ASSERT_TRUE(terminal->waitFor(ShellPrompt)) << terminal->seen;
    terminal->type("bg\r");
    ASSERT_TRUE(terminal->waitFor(ShellPrompt)) << terminal->seen;
    EXPECT_EQ(command({"get", "cfg.language"}), 0); // it goes on
    terminal->type("echo $((40 + 2))\r");
    ASSERT_TRUE(terminal->waitFor("42\r\n")) << terminal->seen;
    ASSERT_TRUE(terminal->waitFor(ShellPrompt)) << terminal->seen;
    terminal->type("fg\r");
    ASSERT_TRUE(terminal->waitFor(std::string(Prompt) + "get cfg.lang")) << terminal->seen;
    EXPECT_EQ(terminal->run("uage"), "int 0\r\n");
    terminal->type("exit\r");
    ASSERT_TRUE(terminal->waitFor(ShellPrompt)) << terminal->seen;
    terminal->type("exit\r");
    EXPECT_EQ(terminal->end(), 0);
}

// --- When there is none

TEST_F(ConsoleTtyTest, NoConsoleWhenItIsNotWanted)
{
    terminal = std::make_unique<TerminalProcess>(
        std::vector<std::string>{"--address", address, "--still", "--socket", path, "--no-console"});
    ASSERT_TRUE(terminal->waitFor("listening on " + address + "\r\n"));
    EXPECT_EQ(command({"get", "cfg.language"}), 0);
    EXPECT_FALSE(terminal->isRaw());
    terminal->type("\x03");
    EXPECT_EQ(terminal->end(), 0);
}

TEST_F(ConsoleTtyTest, QuietConsoleHasItsPromptAllTheSame)
{
    start({"--quiet"});
    EXPECT_THAT(terminal->seen, Not(HasSubstr("listening")));
    EXPECT_EQ(terminal->run("get cfg.language"), "int 0\r\n");
}

} // namespace
