// terminalsim: the terminal around the display as a program, and the ways to look into a running one. The
// command line is command_line.cpp's; what the terminal does in detail is in Terminal.
#include "sim/client_commands.h"
#include "sim/command_line.h"
#include "sim/console/commands.h"
#include "sim/console/socket.h"
#include "sim/console/socket_client.h"
#include "sim/console/stdin_console.h"
#include "sim/console/trace.h"
#include "sim/console/witness.h"
#include "sim/display/display.h"
#include "sim/display/display_power.h"
#include "sim/recording.h"
#include "sim/scenario/scenario.h"

#include "runtime/fdloop.h"

#include <csignal>
#include <cstdio>
#include <filesystem>

namespace {

sim::Terminal* runningTerminal = nullptr;

void onEnd(int)
{
    runningTerminal->requestQuit();
}

// Handlers, which programs started from here do not inherit, as they would an ignored signal.
void takeSignals(sim::Terminal* terminal)
{
    runningTerminal = terminal;
    struct sigaction action = {};
    action.sa_handler = onEnd;
    for (int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT})
        sigaction(number, &action, nullptr);
    action.sa_handler = [](int) {}; // output that nobody reads any more
    sigaction(SIGPIPE, &action, nullptr);
}

bool wantsConsole(const sim::CommandLine& line)
{
    using ConsoleMode = sim::CommandLine::ConsoleMode;
    return line.console == ConsoleMode::Always ||
           (line.console == ConsoleMode::Automatic && (line.scenario.empty() || line.stay) &&
            sim::StdinConsole::isOnTerminal());
}

// What lies beside this program; empty if it is not there.
std::string besideProgram(const char* name)
{
    std::error_code problem;
    std::filesystem::path file =
        std::filesystem::read_symlink("/proc/self/exe", problem).parent_path() / name;
    return std::filesystem::exists(file, problem) ? file.string() : std::string();
}

// Null if none is wanted.
std::unique_ptr<sim::Display> makeDisplay(const sim::CommandLine& line, sim::Terminal& terminal,
                                          std::function<void(const std::string&)> tell,
                                          std::function<void(int)> ended)
{
    if (line.display.empty())
        return nullptr;
    sim::Display::Options options;
    options.command = {line.display};
    options.command.insert(options.command.end(), line.displayArguments.begin(), line.displayArguments.end());
    if (!line.scenario.empty())
        options.command.push_back("logQtDebug"); // a scenario expects what the log tells
    options.busAddress = terminal.address();
    options.logFile = line.displayLog;
    options.keypadDirectory = line.keypad.empty() ? besideProgram("plugins") : line.keypad;
    options.syslogLibrary =
        line.syslogLibrary.empty() ? besideProgram("libsyslogtap.so") : line.syslogLibrary;
    options.tell = std::move(tell);
    options.ended = std::move(ended);
    return std::make_unique<sim::Display>(terminal.loop(), options);
}

// Begins what --record and --replay ask for. False with *error if that fails.
bool beginRecordings(const sim::CommandLine& line, sim::Terminal& terminal,
                     std::function<void(const std::string&)> tell, std::unique_ptr<sim::Replay>* replay,
                     std::string* error)
{
    if (!line.record.empty() && !terminal.recorder().begin(line.record, error))
        return false;
    if (line.replay.empty())
        return true;
    sim::Recording recording;
    if (!sim::loadRecording(line.replay, &recording, error))
        return false;
    auto done = [tell](const sim::Replay::Result& result) {
        for (const std::string& text : sim::replayReport(result))
            tell(text);
    };
    *replay = std::make_unique<sim::Replay>(terminal, std::move(recording), 1, done);
    return true;
}

// Blocks until the display has gone.
void endDisplay(sim::Display* display, fdloop_t* loop)
{
    bool gone = !display;
    if (display)
        display->stop([&gone] { gone = true; });
    while (!gone && fdloop_run(loop) == 0) {
    }
}

// Null if none is wanted.
std::unique_ptr<sim::Scenario> makeScenario(const sim::CommandLine& line, const sim::Script& script,
                                            sim::Desk& desk, int* status)
{
    if (line.scenario.empty())
        return nullptr;
    sim::Scenario::Options options;
    options.quiet = line.quiet;
    options.print = [](const std::string& text) {
        printf("%s\n", text.c_str());
        fflush(stdout);
    };
    options.printError = [](const std::string& text) { fprintf(stderr, "terminalsim: %s\n", text.c_str()); };
    options.ended = [&desk, &line, status](int ended) {
        *status = ended;
        if (!line.stay)
            desk.terminal.requestQuit();
    };
    return std::make_unique<sim::Scenario>(desk, script, options);
}

int runTerminal(const sim::CommandLine& line, const sim::Script& script)
{
    std::unique_ptr<sim::StdinConsole> console;
    auto tell = [&console](const std::string& text) {
        if (console)
            console->log("terminalsim: " + text);
        else
            fprintf(stderr, "terminalsim: %s\n", text.c_str());
    };
    auto log = [&](const std::string& text) {
        if (!line.quiet)
            tell(text);
    };
    sim::TerminalOptions options = line.options;
    options.log = log;
    sim::Terminal terminal(options);
    if (!terminal.running()) {
        tell(terminal.error());
        return 1;
    }
    terminal.setAll(line.values);
    takeSignals(&terminal);
    int displayStatus = 0;
    std::unique_ptr<sim::Scenario> scenario;
    auto displayEnded = [&](int status) {
        displayStatus = status;
        if (!scenario || !scenario->displayEnded()) // which tells where it was
            terminal.requestQuit();
    };
    std::unique_ptr<sim::Display> display = makeDisplay(line, terminal, tell, displayEnded);

    sim::Desk desk{terminal, terminal.loop()};
    desk.speed = options.speed;
    desk.log = log;
    desk.display = display.get();
    desk.pictures = line.pictures;
    desk.patience = line.patience;
    sim::DisplayPower power(terminal, display.get(), tell);
    sim::Witness witness(terminal, display.get());
    desk.witness = &witness;
    sim::Traces traces(desk);
    desk.traces = &traces;
    sim::ConsoleServer consoles(desk);
    std::string error;
    std::unique_ptr<sim::Replay> replay;
    if (!beginRecordings(line, terminal, tell, &replay, &error)) {
        tell(error);
        return 1;
    }
    if (!line.socket.empty() && !consoles.listen(line.socket, &error)) {
        tell(error);
        return 1;
    }
    if (!line.quiet) {
        printf("terminalsim: listening on %s\n", terminal.address().c_str());
        fflush(stdout);
    }
    int storyStatus = line.scenario.empty() ? 0 : 1; // what is not carried out to its end has failed
    scenario = makeScenario(line, script, desk, &storyStatus);
    if (scenario) {
        scenario->begin();
    } else if (display && !display->start(&error)) {
        tell(error);
        return 1;
    }
    if (wantsConsole(line))
        console = std::make_unique<sim::StdinConsole>(desk);
    terminal.run();
    scenario.reset();
    replay.reset();
    endDisplay(display.get(), terminal.loop());
    int status = (console && console->hasFailed()) || displayStatus != 0 || storyStatus != 0;
    console.reset(); // the terminal is a person's again; what is told from here on goes to standard error
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    sim::CommandLine line;
    std::string error;
    if (!sim::parseCommandLine(argc, argv, &line, &error)) {
        fprintf(stderr, "terminalsim: %s (--help tells more)\n", error.c_str());
        return 2;
    }
    if (line.help) {
        sim::printCommandLineHelp();
        sim::printCommandHelp();
        puts("\nThe exit status is 0, 1 if something failed, 2 for a wrong command line.");
        return 0;
    }
    if (line.helpMarkdown) {
        fputs(sim::commandsAsMarkdown().c_str(), stdout);
        return 0;
    }
    sim::Script script;
    if (!line.scenario.empty() && !sim::loadScript(line.scenario, &script, &error)) {
        fprintf(stderr, "terminalsim: %s\n", error.c_str());
        return 1;
    }
    if (line.command.empty())
        return runTerminal(line, script);
    return line.socket.empty() ? sim::runClientCommand(line.options.address, line.command)
                               : sim::runSocketCommand(line.socket, line.command);
}
