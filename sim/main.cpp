// terminalsim: the terminal around the display as a program, and the ways to look into a running one. The
// command line is command_line.cpp's; what the terminal does in detail is in Terminal.
#include "sim/client_commands.h"
#include "sim/command_line.h"
#include "sim/console/console.h"

#include <csignal>
#include <cstdio>

namespace {

sim::Terminal* runningTerminal = nullptr;

void onEnd(int)
{
    runningTerminal->requestQuit();
}

void endOnSignals(sim::Terminal* terminal)
{
    runningTerminal = terminal;
    struct sigaction action = {};
    action.sa_handler = onEnd;
    for (int number : {SIGTERM, SIGINT, SIGHUP})
        sigaction(number, &action, nullptr);
}

int runTerminal(const sim::CommandLine& line)
{
    sim::TerminalOptions options = line.options;
    if (!line.quiet)
        options.log = [](const std::string& text) { fprintf(stderr, "terminalsim: %s\n", text.c_str()); };
    sim::Terminal terminal(options);
    if (!terminal.running()) {
        fprintf(stderr, "terminalsim: %s\n", terminal.error().c_str());
        return 1;
    }
    terminal.setAll(line.values);
    endOnSignals(&terminal);

    sim::Desk desk{terminal, terminal.loop()};
    desk.speed = options.speed;
    if (!line.quiet) {
        printf("terminalsim: listening on %s\n", terminal.address().c_str());
        fflush(stdout);
    }
    terminal.run();
    return 0;
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
    return line.command.empty() ? runTerminal(line)
                                : sim::runClientCommand(line.options.address, line.command);
}
