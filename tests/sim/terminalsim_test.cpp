// The program terminalsim as a process: its options, its commands, its end.
#include "process.h"
#include "raw_client.h"
#include "temporary_directory.h"

#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/wait.h>

using namespace std::string_literals;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class TerminalsimTest : public testing::Test {
protected:
    // Starts the program and waits until it is ready.
    void start(std::vector<std::string> options = {})
    {
        options.insert(options.begin(), {"--address", address, "--still"});
        server = std::make_unique<Process>(options);
        ASSERT_EQ(server->line(), "terminalsim: listening on " + address);
    }
    int run(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"--address", address});
        Process process(arguments);
        int status = process.end();
        output = process.output;
        errors = process.errors;
        return status;
    }

    std::string address = privateAddress();
    std::unique_ptr<Process> server;
    std::string output;
    std::string errors;
};

TEST_F(TerminalsimTest, SaysWhenItIsReadyAndEndsCleanlyOnSigterm)
{
    start();
    EXPECT_TRUE(RawClient(address).sync());
    server->signal(SIGTERM);
    EXPECT_EQ(server->end(), 0);
    EXPECT_EQ(server->output, "");
    EXPECT_EQ(server->errors, "");
    EXPECT_FALSE(RawClient(address).isConnected());
}

TEST_F(TerminalsimTest, EndsCleanlyOnSigint)
{
    start();
    server->signal(SIGINT);
    EXPECT_EQ(server->end(), 0);
}

TEST_F(TerminalsimTest, GetSetDelete)
{
    start();
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
    EXPECT_EQ(output, "int 0\n");
    EXPECT_EQ(run({"set", "cfg.language", "int:5"}), 0);
    EXPECT_EQ(output + errors, "");
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
    EXPECT_EQ(output, "int 5\n");
    EXPECT_EQ(run({"set", "cfg.interfaces.wlan.ssid", "string:a \"b\" %s"}), 0);
    EXPECT_EQ(run({"get", "cfg.interfaces.wlan.ssid"}), 0);
    EXPECT_EQ(output, "string \"a \\\"b\\\" %s\"\n");
    EXPECT_EQ(run({"status", "cfg.interfaces.wlan.ssid"}), 0);
    EXPECT_EQ(output, "9\n");
    EXPECT_EQ(run({"set", "ram.bytes", "blob:00ff10"}), 0);
    EXPECT_EQ(run({"get", "ram.bytes"}), 0);
    EXPECT_EQ(output, "blob 00 ff 10\n");
    EXPECT_EQ(run({"delete", "cfg.language"}), 0);
    EXPECT_EQ(run({"get", "cfg.language"}), 1);
    EXPECT_EQ(errors, "terminalsim: cfg.language: not in the database\n");
}

TEST_F(TerminalsimTest, RefusedWriteIsToldToBothSides)
{
    start();
    EXPECT_EQ(run({"set", "rmcfg.platform.sysconf.serial_number", "string:X"}), 1);
    EXPECT_EQ(errors, "terminalsim: rmcfg.platform.sysconf.serial_number: read-only\n");
    server->signal(SIGTERM);
    EXPECT_EQ(server->end(), 0);
    EXPECT_THAT(server->errors, HasSubstr("modifyv of rmcfg.platform.sysconf.serial_number refused (-4)\n"));
}

TEST_F(TerminalsimTest, List)
{
    start();
    EXPECT_EQ(run({"list", "ram\\.wan\\..*"}), 0);
    EXPECT_EQ(output, "ram.wan.active = int 1\nram.wan.user_selection = int 1\n");
    EXPECT_EQ(run({"list", "nothing"}), 0);
    EXPECT_EQ(output, "");
}

TEST_F(TerminalsimTest, Watch)
{
    start();
    Process watcher({"--address", address, "watch", "ram.status.ext"});
    RawClient client(address);
    // The watcher is there once a change reaches it.
    std::string data = word(0xffffffff) + word(3) + word(4);
    pid_t writer = fork();
    if (writer == 0) {
        for (uint32_t value = 1; value < 400; value++) {
            client.sendSignal("config.write.ram.status.ext_system", data + word(value % 10));
            usleep(25000);
        }
        _exit(0);
    }
    EXPECT_THAT(watcher.line(), StartsWith("ram.status.ext_system = int "));
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    client.sendSignal("config.write.ram.status.ext_system", word(0xffffffff) + word(0) + word(0));
    std::string line;
    while (!(line = watcher.line()).empty() && line != "ram.status.ext_system = none") {
    }
    EXPECT_EQ(line, "ram.status.ext_system = none");
    server->signal(SIGTERM);
    EXPECT_EQ(server->end(), 0);
    EXPECT_EQ(watcher.end(), 1);
    EXPECT_EQ(watcher.errors, "terminalsim: the bus has gone away\n");
}

TEST_F(TerminalsimTest, PointingAndReset)
{
    start({"--set", "cfg.language=int:6", "--speed", "100"});
    EXPECT_EQ(run({"pointing", "start"}), 0);
    // A signal is not answered: the terminal may still be about to read it.
    for (int attempt = 0; attempt < 400 && output != "int 1\n"; attempt++) {
        EXPECT_EQ(run({"get", "ram.status.pointed_status"}), 0);
        usleep(output != "int 1\n" ? 25000 : 0);
    }
    EXPECT_EQ(output, "int 1\n");
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
    EXPECT_EQ(output, "int 6\n");
    EXPECT_EQ(run({"reset"}), 0);
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
    EXPECT_EQ(output, "int 0\n");
}

TEST_F(TerminalsimTest, CommandsToTheProcessesOfTheTerminal)
{
    start({"--speed", "100"});
    EXPECT_EQ(run({"signal", "45.6"}), 0);
    EXPECT_EQ(output + errors, "");
    EXPECT_EQ(run({"get", "ram.status.signal_strength"}), 0);
    EXPECT_EQ(output, "int 456\n");
    EXPECT_EQ(run({"alert", "add", "0x1120", "warning", "Far", "too hot"}), 0);
    EXPECT_EQ(run({"get", "ram.log.alert.0.shorttext"}), 0);
    EXPECT_EQ(output, "string \"Far too hot\"\n");
    EXPECT_EQ(run({"battery", "2", "present"}), 0);
    EXPECT_EQ(run({"get", "ram.status.battery.2.status"}), 0);
    EXPECT_EQ(output, "int 0\n");
}

TEST_F(TerminalsimTest, RefusedCommandTellsWhyAndOnlyOnce)
{
    start();
    EXPECT_EQ(run({"sim", "insert"}), 1);
    EXPECT_EQ(errors, "terminalsim: sim: there is a card already\n");
    EXPECT_EQ(run({"at", std::string(600, 'x')}), 1);
    EXPECT_THAT(errors, StartsWith("terminalsim: at: one of on, off, not xxx"));
    EXPECT_EQ(run({"at", "on"}), 0);
    EXPECT_EQ(errors, "");
}

TEST_F(TerminalsimTest, CommandThatNobodyCarriesOut)
{
    sim::Terminal still;
    address = still.address();
    EXPECT_EQ(run({"system", "reboot"}), 1);
    EXPECT_EQ(errors, "terminalsim: system: nobody there carries out commands\n");
}

TEST_F(TerminalsimTest, CommandAtTheStart)
{
    start({"--speed", "100", "--set", "ram.desk.sim=string:pin 4711"});
    EXPECT_EQ(run({"get", "rmcfg.platform.usim.pin.status"}), 0);
    EXPECT_EQ(output, "string \"Needed\"\n");
}

TEST_F(TerminalsimTest, ValuesFromAFileAndFromOptions)
{
    TemporaryDirectory directory;
    std::ofstream(directory.file("values")) << "ram.a = int 1\nram.b = string \"two\"\n";
    start({"--values", directory.file("values"), "--set", "ram.a=int:7", "--set", "ram.c=string:x=y"});
    EXPECT_EQ(run({"list", ".*"}), 0);
    EXPECT_EQ(output, "ram.a = int 7\nram.b = string \"two\"\nram.c = string \"x=y\"\n");
}

TEST_F(TerminalsimTest, SettingsOutlastTheRun)
{
    TemporaryDirectory directory;
    start({"--store", directory.file("cfg.db")});
    EXPECT_EQ(run({"set", "cfg.language", "int:3"}), 0);
    EXPECT_EQ(run({"sync"}), 0);
    EXPECT_EQ(run({"set", "cfg.display.timeout", "int:60"}), 0);
    server->signal(SIGTERM);
    ASSERT_EQ(server->end(), 0);
    start({"--store", directory.file("cfg.db")});
    EXPECT_EQ(run({"list", "cfg.language|cfg.display.timeout"}), 0);
    EXPECT_EQ(output, "cfg.display.timeout = int 60\ncfg.language = int 3\n");
}

TEST_F(TerminalsimTest, KilledRunLosesOnlyWhatWasNotSynced)
{
    TemporaryDirectory directory;
    start({"--store", directory.file("cfg.db")});
    EXPECT_EQ(run({"set", "cfg.language", "int:3"}), 0);
    EXPECT_EQ(run({"sync"}), 0);
    EXPECT_EQ(run({"get", "cfg.language"}), 0); // answered after the save
    EXPECT_EQ(run({"set", "cfg.language", "int:4"}), 0);
    server->signal(SIGKILL);
    EXPECT_EQ(server->end(), -1);
    start({"--store", directory.file("cfg.db")});
    EXPECT_EQ(run({"get", "cfg.language"}), 0);
    EXPECT_EQ(output, "int 3\n");
}

TEST_F(TerminalsimTest, UnusableStoreIsToldAndTheRunGoesOn)
{
    TemporaryDirectory directory;
    std::ofstream(directory.file("cfg.db")) << std::string(4096, 'x');
    start({"--store", directory.file("cfg.db")});
    server->signal(SIGTERM);
    EXPECT_EQ(server->end(), 0);
    EXPECT_EQ(server->errors, "terminalsim: settings are not kept: " + directory.file("cfg.db") +
                                  ": file is not a database\n");
}

TEST_F(TerminalsimTest, QuietPrintsNothing)
{
    Process quiet({"--address", address, "--quiet"});
    int status = 1;
    for (int attempt = 0; attempt < 200 && status != 0; attempt++) {
        status = run({"get", "cfg.language"});
        usleep(status ? 25000 : 0);
    }
    EXPECT_EQ(status, 0);
    RawClient(address).sendBytes(std::string(12, '\xff'));
    quiet.signal(SIGTERM);
    EXPECT_EQ(quiet.end(), 0);
    EXPECT_EQ(quiet.output + quiet.errors, "");
}

TEST_F(TerminalsimTest, BusAddressFromTheEnvironment)
{
    setenv("CBUS_ADDR", address.c_str(), 1);
    Process process({"--still"});
    EXPECT_EQ(process.line(), "terminalsim: listening on " + address);
    Process getter({"get", "cfg.language"});
    EXPECT_EQ(getter.end(), 0);
    unsetenv("CBUS_ADDR");
}

TEST_F(TerminalsimTest, ErrorsAtTheStart)
{
    start();
    EXPECT_EQ(run({}), 1);
    EXPECT_EQ(errors, "terminalsim: cannot listen on " + address + ": Address already in use\n");

    TemporaryDirectory directory;
    std::ofstream(directory.file("values")) << "# one\nram.a = int x\n";
    EXPECT_EQ(run({"--values", directory.file("values")}), 1);
    EXPECT_EQ(errors, "terminalsim: " + directory.file("values") + ":2: not a number: x\n");

    EXPECT_EQ(run({"--address", privateAddress(), "get", "cfg.language"}), 1);
    EXPECT_THAT(errors, StartsWith("terminalsim: no bus at unix*simtest."));
}

struct BadCommandLine {
    std::vector<std::string> arguments;
    const char* error;
};

TEST_F(TerminalsimTest, BadCommandLines)
{
    start();
    const BadCommandLine lines[] = {
        {{"--frob"}, "unknown option --frob (--help tells more)"},
        {{"--values"}, "--values needs an argument (--help tells more)"},
        {{"--speed", "0"}, "--speed takes a number from 1 to 1000, not 0 (--help tells more)"},
        {{"--set", "ram.a"}, "--set takes KEY=TYPE:VALUE, not ram.a (--help tells more)"},
        {{"--set", "=int:1"}, "--set takes KEY=TYPE:VALUE, not =int:1 (--help tells more)"},
        {{"--set", "ram.a=int:x"}, "--set ram.a=int:x: not a number: x (--help tells more)"},
        {{"frob"}, "unknown command frob (--help tells more)"},
        {{"get"}, "get: wrong number of arguments (--help tells more)"},
        {{"get", "a", "b"}, "get: wrong number of arguments (--help tells more)"},
        {{"signal"}, "signal: wrong number of arguments (--help tells more)"},
        {{"set", "a", "5"}, "a value is written type:value, as in int:5"},
    };
    for (const BadCommandLine& bad : lines) {
        EXPECT_EQ(run(bad.arguments), 2) << bad.error;
        EXPECT_EQ(errors, "terminalsim: "s + bad.error + "\n");
    }
}

TEST_F(TerminalsimTest, Help)
{
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_THAT(output, StartsWith("usage: terminalsim"));
    for (const char* form : {"  get KEY ", "  bundle start N ", "  system shutdown | reboot | safe "})
        EXPECT_THAT(output, HasSubstr(form));
    EXPECT_EQ(errors, "");
}

} // namespace
