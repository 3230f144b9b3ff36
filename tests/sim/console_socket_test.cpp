// The consoles' socket: a running terminalsim, clients that send bytes as they like, and the program's own
// client side.
#include "process.h"
#include "temporary_directory.h"

#include "support/patience.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Lines = std::vector<std::string>;

class SocketClient {
public:
    explicit SocketClient(const std::string& path) : fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        connected = connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~SocketClient() { disconnect(); }
    SocketClient(const SocketClient&) = delete;
    SocketClient& operator=(const SocketClient&) = delete;

    void disconnect()
    {
        if (fd >= 0)
            close(fd);
        fd = -1;
    }
    void endInput() { shutdown(fd, SHUT_WR); }
    // False if the other side has gone.
    bool send(const std::string& bytes)
    {
        size_t sent = 0;
        while (sent < bytes.size()) {
            ssize_t count = ::send(fd, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                return false;
            sent += static_cast<size_t>(count);
        }
        return true;
    }
    // The next line; "(end)" at the end, "(nothing)" after the time.
    std::string line(int timeout = PATIENCE_MS)
    {
        for (;;) {
            size_t feed = buffer.find('\n');
            if (feed != std::string::npos) {
                std::string text = buffer.substr(0, feed);
                buffer.erase(0, feed + 1);
                return text;
            }
            pollfd waiting{fd, POLLIN, 0};
            if (poll(&waiting, 1, timeout) != 1)
                return "(nothing)";
            char bytes[4096];
            ssize_t count = recv(fd, bytes, sizeof bytes, 0);
            if (count <= 0)
                return "(end)";
            buffer.append(bytes, static_cast<size_t>(count));
        }
    }
    // All lines up to the one that answers.
    Lines answer()
    {
        Lines lines;
        do
            lines.push_back(line());
        while (lines.back().compare(0, 2, "= ") != 0 && lines.back()[0] != '(');
        return lines;
    }
    Lines ask(const std::string& text)
    {
        EXPECT_TRUE(send(text + "\n"));
        return answer();
    }

    bool connected = false;

private:
    int fd;
    std::string buffer;
};

class ConsoleSocketTest : public testing::Test {
protected:
    void SetUp() override { start(); }
    void start(std::vector<std::string> options = {})
    {
        options.insert(options.begin(), {"--address", address, "--still", "--no-console", "--socket", path});
        server = std::make_unique<Process>(options);
        ASSERT_EQ(server->line(), "terminalsim: listening on " + address);
    }
    // The program's client side.
    int run(std::vector<std::string> words, const std::string& input = "")
    {
        words.insert(words.begin(), {"--socket", path});
        Process process(words, true);
        process.write(input);
        process.closeInput();
        int status = process.end();
        output = process.output;
        errors = process.errors;
        return status;
    }
    // Whether a key has the value some time soon; asked on a connection of its own.
    bool becomes(const std::string& key, const std::string& described)
    {
        SocketClient client(path);
        for (int attempt = 0; attempt < 400; attempt++) {
            if (client.ask("get " + key)[0] == described)
                return true;
            usleep(25000);
        }
        return false;
    }

    TemporaryDirectory directory;
    std::string address = privateAddress();
    std::string path = directory.file("console");
    std::unique_ptr<Process> server;
    std::string output;
    std::string errors;
};

// --- The protocol

TEST_F(ConsoleSocketTest, OutputThenAnswer)
{
    SocketClient client(path);
    EXPECT_THAT(client.ask("get cfg.language"), ElementsAre("int 0", "= ok"));
    EXPECT_THAT(client.ask("set cfg.language 3"), ElementsAre("= ok"));
    EXPECT_THAT(client.ask("repeat 2 get cfg.language"), ElementsAre("int 3", "int 3", "= ok"));
    EXPECT_THAT(client.ask("get no.key"), ElementsAre("error: no.key: not in the database", "= failed"));
    EXPECT_THAT(client.ask("frob"), ElementsAre("error: frob: command not found", "= failed"));
    EXPECT_THAT(client.ask(""), ElementsAre("= ok"));
    EXPECT_THAT(client.ask("# nothing"), ElementsAre("= ok"));
    EXPECT_THAT(client.ask("echo = x"), ElementsAre(" = x", "= ok"));
    EXPECT_THAT(client.ask("echo * x"), ElementsAre(" * x", "= ok"));
    EXPECT_THAT(client.ask("exit"), ElementsAre("= bye"));
    EXPECT_EQ(client.line(), "(end)");
}

TEST_F(ConsoleSocketTest, PartialLinesAndManyAtOnce)
{
    SocketClient client(path);
    for (const char* piece : {"ge", "t cfg", ".lang"}) {
        EXPECT_TRUE(client.send(piece));
        EXPECT_EQ(client.line(50), "(nothing)");
    }
    EXPECT_TRUE(client.send("uage\nget cfg.language\r\necho a\necho b\nget "));
    for (const char* line : {"int 0", "= ok", "int 0", "= ok", "a", "= ok", "b", "= ok"})
        EXPECT_EQ(client.line(), line);
    EXPECT_THAT(client.ask("cfg.language"), ElementsAre("int 0", "= ok"));
}

TEST_F(ConsoleSocketTest, LinesWaitForACommandThatTakesItsTime)
{
    SocketClient client(path);
    EXPECT_TRUE(client.send("pause 0.2\necho a\nexit\necho never\n"));
    for (const char* line : {"= ok", "a", "= ok", "= bye", "(end)"})
        EXPECT_EQ(client.line(), line);
}

TEST_F(ConsoleSocketTest, ThousandsOfLinesAhead)
{
    SocketClient client(path);
    constexpr int Count = 20000; // more than the server takes ahead, and it pauses in between
    pid_t writer = fork();
    if (writer == 0) {
        std::string lines;
        for (int number = 0; number < Count; number++)
            lines += "echo " + std::to_string(number) + "\n";
        _exit(client.send(lines) ? 0 : 1);
    }
    for (int number = 0; number < Count; number++) {
        ASSERT_EQ(client.line(), std::to_string(number));
        ASSERT_EQ(client.line(), "= ok");
    }
    int status = 0;
    waitpid(writer, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(ConsoleSocketTest, AnswersLargerThanWhatTheSocketHolds)
{
    SocketClient client(path);
    std::string list = "list .*\n";
    std::string lines;
    for (int number = 0; number < 100; number++)
        lines += list;
    EXPECT_TRUE(client.send(lines));
    Lines first = client.answer();
    EXPECT_GT(first.size(), 100u);
    for (int number = 1; number < 100; number++)
        ASSERT_EQ(client.answer().size(), first.size());
}

TEST_F(ConsoleSocketTest, TwoClients)
{
    SocketClient one(path);
    SocketClient two(path);
    EXPECT_TRUE(one.send("pause 600\n"));
    EXPECT_THAT(two.ask("set ram.x 1"), ElementsAre("= ok"));
    EXPECT_THAT(two.ask("watch ram.x"), ElementsAre("= ok"));
    SocketClient three(path);
    EXPECT_THAT(three.ask("set ram.x 2"), ElementsAre("= ok"));
    EXPECT_EQ(two.line(), "* ram.x = int 2");
    EXPECT_THAT(two.ask("unwatch"), ElementsAre("= ok"));
    EXPECT_EQ(one.line(50), "(nothing)");
}

TEST_F(ConsoleSocketTest, LongLines)
{
    SocketClient client(path);
    std::string longest = "echo " + std::string(64 * 1024 - 5, 'x');
    EXPECT_THAT(client.ask(longest), ElementsAre(std::string(64 * 1024 - 5, 'x'), "= ok"));
    const std::string refusal = "error: a line has more than 65536 bytes";
    EXPECT_THAT(client.ask(longest + "x"), ElementsAre(refusal, "= failed"));
    EXPECT_THAT(client.ask(std::string(1000000, 'y')), ElementsAre(refusal, "= failed"));
    EXPECT_THAT(client.ask("echo a"), ElementsAre("a", "= ok"));
    // Without its end it is refused as well, once, and before anything behind it.
    EXPECT_TRUE(client.send("echo b\n" + std::string(200000, 'z')));
    for (const std::string& line : Lines{"b", "= ok", refusal, "= failed"})
        EXPECT_EQ(client.line(), line);
    EXPECT_EQ(client.line(50), "(nothing)");
    EXPECT_TRUE(client.send(std::string(200000, 'z') + "\necho c\n"));
    EXPECT_EQ(client.line(), "c");
    EXPECT_EQ(client.line(), "= ok");
}

TEST_F(ConsoleSocketTest, AnyBytes)
{
    SocketClient client(path);
    for (int byte = 0; byte < 256; byte++) {
        if (byte == '\n')
            continue;
        std::string line = "x"s + static_cast<char>(byte) + "y \xff\xfe\x80";
        Lines lines = client.ask(line);
        ASSERT_EQ(lines.size(), 2u) << byte;
        EXPECT_THAT(lines[0], StartsWith("error: ")) << byte;
        EXPECT_EQ(lines[1], "= failed") << byte;
    }
    EXPECT_THAT(client.ask("get a\0b"s), ElementsAre("error: a line cannot hold a NUL", "= failed"));
    uint32_t state = 4711;
    std::string noise;
    for (int count = 0; count < 100000; count++) {
        state = state * 1103515245 + 12345;
        noise.push_back(static_cast<char>(state >> 16));
    }
    // It may hold any number of lines, none of which is a command that ends or says "here".
    EXPECT_TRUE(client.send("\nexi" + noise + "\necho here\n"));
    std::string line;
    do
        line = client.line();
    while (line != "here" && line[0] != '(');
    EXPECT_EQ(line, "here");
}

// --- Clients that go

TEST_F(ConsoleSocketTest, InputThatEndsIsAnsweredToItsEnd)
{
    SocketClient client(path);
    EXPECT_TRUE(client.send("pause 0.3\necho a\necho without an end"));
    client.endInput();
    for (const char* line : {"= ok", "a", "= ok", "without an end", "= ok", "(end)"})
        EXPECT_EQ(client.line(), line);
}

TEST_F(ConsoleSocketTest, ClientThatVanishesCancelsItsCommand)
{
    {
        SocketClient client(path);
        EXPECT_TRUE(client.send("set ram.x 1\n( pause 1 ; set ram.x 2 )\n"));
        EXPECT_EQ(client.line(), "= ok");
    }
    // And one that had sent so much ahead that its end is not read.
    {
        SocketClient client(path);
        EXPECT_TRUE(client.send("( pause 1 ; set ram.y 2 )\n"));
        EXPECT_TRUE(client.send(std::string(70000, '\n')));
    }
    EXPECT_EQ(run({"pause", "2"}), 0);
    EXPECT_EQ(run({"get", "ram.x"}), 0);
    EXPECT_EQ(output, "int 1\n");
    EXPECT_EQ(run({"get", "ram.y"}), 1);
}

TEST_F(ConsoleSocketTest, ClientThatVanishesInMidLineRunsNothing)
{
    {
        SocketClient client(path);
        EXPECT_TRUE(client.send("set ram.x 1\nset ram.x 2"));
    }
    EXPECT_TRUE(becomes("ram.x", "int 1"));
    EXPECT_EQ(run({"pause", "0.3"}), 0);
    EXPECT_TRUE(becomes("ram.x", "int 1"));
}

TEST_F(ConsoleSocketTest, ManyClientsComeAndGo)
{
    for (int round = 0; round < 300; round++) {
        SocketClient client(path);
        ASSERT_TRUE(client.connected);
        if (round % 3 == 0)
            client.send("list .*\n");
        if (round % 3 == 1)
            client.send("watch\npause 600\n");
    }
    EXPECT_TRUE(becomes("cfg.language", "int 0"));
}

TEST_F(ConsoleSocketTest, TooManyClientsAreTurnedAway)
{
    std::vector<std::unique_ptr<SocketClient>> clients;
    for (int count = 0; count < 64; count++) {
        clients.push_back(std::make_unique<SocketClient>(path));
        ASSERT_THAT(clients.back()->ask("echo a"), ElementsAre("a", "= ok"));
    }
    SocketClient more(path);
    EXPECT_THAT(more.answer(), ElementsAre("error: there are too many consoles", "= bye"));
    EXPECT_EQ(more.line(), "(end)");
    clients.pop_back();
    for (int attempt = 0; attempt < 400; attempt++) {
        SocketClient again(path);
        if (again.ask("echo a")[0] == "a")
            return;
        usleep(25000);
    }
    FAIL() << "no place became free";
}

TEST_F(ConsoleSocketTest, ClientThatDoesNotReadIsClosed)
{
    SocketClient deaf(path);
    EXPECT_TRUE(deaf.send("while true : list .*\n"));
    std::string told;
    for (int attempt = 0; attempt < 10 && told.empty(); attempt++)
        told = server->errorLine();
    EXPECT_EQ(told, "terminalsim: closed console 1: it does not read");
    EXPECT_TRUE(becomes("cfg.language", "int 0"));
}

TEST_F(ConsoleSocketTest, ClientThatWatchesAndDoesNotReadHoldsUpNobody)
{
    SocketClient deaf(path);
    EXPECT_TRUE(deaf.send("watch ram.x\n"));
    SocketClient writer(path);
    std::string value(60000, 'v');
    for (int count = 0; count < 100; count++)
        ASSERT_THAT(writer.ask("set ram.x " + value + std::to_string(count)), ElementsAre("= ok"));
    EXPECT_EQ(deaf.line(), "= ok");
    EXPECT_THAT(deaf.line(), StartsWith("* ram.x = string \"vvv"));
}

// --- The socket's file

TEST_F(ConsoleSocketTest, FileIsTheUsersAloneAndGoesAtTheEnd)
{
    struct stat file;
    ASSERT_EQ(stat(path.c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 07777, 0600u);
    EXPECT_EQ(run({"quit"}), 0);
    EXPECT_EQ(server->end(), 0);
    EXPECT_NE(stat(path.c_str(), &file), 0);
}

TEST_F(ConsoleSocketTest, SecondStartOnTheSamePathIsRefused)
{
    Process second({"--address", privateAddress(), "--still", "--socket", path});
    EXPECT_EQ(second.end(), 1);
    EXPECT_EQ(second.errors, "terminalsim: another terminal has its consoles on " + path + "\n");
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
}

TEST_F(ConsoleSocketTest, StaleFileIsTakenOver)
{
    server->signal(SIGKILL);
    EXPECT_EQ(server->end(), -1);
    EXPECT_EQ(run({"get", "cfg.language"}), 1);
    EXPECT_EQ(errors, "terminalsim: no terminal at " + path + ": Connection refused\n");
    start();
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
}

TEST_F(ConsoleSocketTest, PathsThatWillNotDo)
{
    std::ofstream(directory.file("plain")) << "text";
    const std::pair<std::string, std::string> table[] = {
        {directory.file("plain"), directory.file("plain") + " is there and is no socket"},
        {directory.name, directory.name + " is there and is no socket"},
        {directory.file("no/where"),
         "no consoles on " + directory.file("no/where") + ": No such file or directory"},
        {std::string(108, 'p'), "the name of a socket has 1 to 107 bytes: " + std::string(108, 'p')},
    };
    for (const auto& [name, error] : table) {
        Process process({"--address", privateAddress(), "--still", "--socket", name});
        EXPECT_EQ(process.end(), 1) << name;
        EXPECT_EQ(process.errors, "terminalsim: " + error + "\n");
    }
    EXPECT_TRUE(std::filesystem::is_regular_file(directory.file("plain")));
}

// --- The program's client side

TEST_F(ConsoleSocketTest, CommandOfTheCommandLine)
{
    EXPECT_EQ(run({"set", "cfg.interfaces.wlan.ssid", "a \"b\" \\ c"}), 0);
    EXPECT_EQ(output + errors, "");
    EXPECT_EQ(run({"get", "cfg.interfaces.wlan.ssid"}), 0);
    EXPECT_EQ(output, "string \"a \\\"b\\\" \\\\ c\"\n");
    EXPECT_EQ(run({"get", "no.key"}), 1);
    EXPECT_EQ(output, "");
    EXPECT_EQ(errors, "terminalsim: no.key: not in the database\n");
    EXPECT_EQ(run({"trace", "frob"}), 1);
    EXPECT_EQ(output, "No such trace item: frob\n");
    EXPECT_EQ(errors, "terminalsim: trace has failed\n");
    EXPECT_EQ(run({"exit"}), 0);
    EXPECT_EQ(run({"#"}), 1); // a word like any other
    EXPECT_EQ(errors, "terminalsim: #: command not found\n");
    EXPECT_EQ(run({"echo", "a\nquit"}), 2);
    EXPECT_EQ(errors, "terminalsim: a line feed cannot be part of a command\n");
    EXPECT_EQ(run({"repeat", "2", "get", "no.key"}), 1);
    EXPECT_EQ(errors, "terminalsim: no.key: not in the database\nterminalsim: no.key: not in the database\n");
}

TEST_F(ConsoleSocketTest, LinesOfStandardInput)
{
    EXPECT_EQ(run({"-"}, "set cfg.language 4\n\n# a comment\nget cfg.language\necho the end"), 0);
    EXPECT_EQ(output, "int 4\nthe end\n");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(run({"-"}, ""), 0);
    EXPECT_EQ(run({"-"}, "echo a\nget no.key\nfrob\necho b\n"), 1);
    EXPECT_EQ(output, "a\nb\n");
    EXPECT_EQ(errors, "terminalsim: line 2: no.key: not in the database\n"
                      "terminalsim: line 3: frob: command not found\n");
    EXPECT_EQ(run({"-"}, "watch ram.x\nset ram.x 1\nexit\necho never\n"), 0);
    EXPECT_EQ(output, "* ram.x = int 1\n");
}

TEST_F(ConsoleSocketTest, WatchedLinesComeWhileStandardInputIsSilent)
{
    Process client({"--socket", path, "-"}, true);
    client.write("watch ram.x\necho ready\n");
    EXPECT_EQ(client.line(), "ready");
    EXPECT_EQ(run({"set", "ram.x", "5"}), 0);
    EXPECT_EQ(client.line(), "* ram.x = int 5");
    client.closeInput();
    EXPECT_EQ(client.end(), 0);
}

TEST_F(ConsoleSocketTest, TerminalThatGoesAwayUnderItsClient)
{
    Process client({"--socket", path, "-"}, true);
    client.write("echo ready\npause 600\n");
    EXPECT_EQ(client.line(), "ready");
    server->signal(SIGTERM);
    EXPECT_EQ(server->end(), 0);
    EXPECT_EQ(client.end(), 1);
    EXPECT_EQ(client.errors, "terminalsim: the terminal has gone away\n");
}

// --- Lines of standard input of the terminal itself

TEST_F(ConsoleSocketTest, ConsoleOnAPipe)
{
    Process process({"--address", privateAddress(), "--still", "--quiet", "--console"}, true);
    process.write("echo a\npause 0.1\nget no.key\necho " + std::string(3000, 'x') + "\nget cfg.language");
    process.closeInput();
    EXPECT_EQ(process.end(), 1);
    EXPECT_EQ(process.output,
              "a\nerror: no.key: not in the database\n" + std::string(3000, 'x') + "\nint 0\n");
    Process good({"--address", privateAddress(), "--still", "--quiet", "--console"}, true);
    good.write("echo a\nexit\nfrob\n");
    EXPECT_EQ(good.end(), 0);
    EXPECT_EQ(good.output, "a\n");
}

TEST_F(ConsoleSocketTest, WithoutTheOptionAPipeIsNotRead)
{
    Process process({"--address", privateAddress(), "--still"}, true);
    EXPECT_THAT(process.line(), StartsWith("terminalsim: listening on "));
    process.write("quit\n");
    process.closeInput();
    process.signal(SIGTERM);
    EXPECT_EQ(process.end(), 0);
}

TEST_F(ConsoleSocketTest, TracesOfTheEnvironment)
{
    setenv("TRACE_console", "A", 1);
    Process process({"--address", privateAddress(), "--still", "--console"}, true);
    unsetenv("TRACE_console");
    process.write("get cfg.language\n");
    process.closeInput();
    EXPECT_EQ(process.end(), 0);
    EXPECT_EQ(process.errors, "terminalsim: trace console: terminal runs get cfg.language\n");
}

} // namespace
