// terminalsim: the terminal around the display as a program, and small commands to look into a running one.
// What it does in detail is in Terminal and in client_commands.cpp; here are the command line and the texts
// for people.
#include "sim/client_commands.h"
#include "sim/initial_values.h"
#include "sim/terminal.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

static const char Usage[] =
    "usage: terminalsim [option...]           run the terminal until SIGTERM or Ctrl-C\n"
    "       terminalsim [--address A] command  ask a running one\n"
    "\n"
    "options:\n"
    "  --address A           bus address: unix*NAME or tcp*HOST*PORT (default: $CBUS_ADDR, or unix*cbus)\n"
    "  --values FILE         initial values of the database\n"
    "  --store FILE          keep the settings (cfg) in this file across runs\n"
    "  --set KEY=TYPE:VALUE  another initial value, as in cfg.language=int:2 (any number of times)\n"
    "  --still               nothing moves by itself\n"
    "  --speed N             let it move and react N times faster, 1 to 1000\n"
    "  --quiet               print errors only\n"
    "  --help                print this\n";
static const char UsageEnd[] = "\nThe exit status is 0, 1 if something failed, 2 for a wrong command line.\n";

namespace {

struct CommandLine {
    sim::TerminalOptions options;
    std::vector<std::pair<std::string, sim::Value>> values; // of --set
    bool quiet = false;
    bool help = false;
    std::vector<std::string> command; // with its arguments; empty: run the terminal
};

bool parseSet(const std::string& text, CommandLine* line, std::string* error)
{
    size_t equals = text.find('=');
    sim::Value value;
    if (equals == 0 || equals == std::string::npos) {
        *error = "--set takes KEY=TYPE:VALUE, not " + text;
        return false;
    }
    if (!sim::parseShortValue(text.substr(equals + 1), &value, error)) {
        *error = "--set " + text + ": " + *error;
        return false;
    }
    line->values.emplace_back(text.substr(0, equals), value);
    return true;
}

bool parseSpeed(const char* text, CommandLine* line, std::string* error)
{
    char* end = nullptr;
    long speed = strtol(text, &end, 10);
    if (*end != '\0' || speed < 1 || speed > 1000) {
        *error = std::string("--speed takes a number from 1 to 1000, not ") + text;
        return false;
    }
    line->options.speed = static_cast<uint32_t>(speed);
    return true;
}

bool parseOption(const std::string& option, const char* argument, CommandLine* line, bool* taken,
                 std::string* error)
{
    *taken = false;
    if (option == "--still") {
        line->options.moving = false;
    } else if (option == "--quiet") {
        line->quiet = true;
    } else if (option == "--help") {
        line->help = true;
    } else if (option == "--address" || option == "--values" || option == "--store" || option == "--set" ||
               option == "--speed") {
        if (!argument) {
            *error = option + " needs an argument";
            return false;
        }
        *taken = true;
        if (option == "--set")
            return parseSet(argument, line, error);
        if (option == "--speed")
            return parseSpeed(argument, line, error);
        std::string& target = option == "--address"  ? line->options.address
                              : option == "--values" ? line->options.valuesFile
                                                     : line->options.storeFile;
        target = argument;
    } else {
        *error = "unknown option " + option;
        return false;
    }
    return true;
}

bool parseCommandLine(int argc, char** argv, CommandLine* line, std::string* error)
{
    const char* address = getenv("CBUS_ADDR");
    line->options.address = address ? address : "unix*cbus";
    line->options.moving = true;
    line->options.actors = true;
    line->options.record = false;
    line->options.ownThread = false; // one thread alone makes every turn of the server cheaper
    int at = 1;
    for (; at < argc && strncmp(argv[at], "--", 2) == 0; at++) {
        bool taken = false;
        if (!parseOption(argv[at], at + 1 < argc ? argv[at + 1] : nullptr, line, &taken, error))
            return false;
        at += taken;
    }
    for (; at < argc; at++)
        line->command.push_back(argv[at]);
    return true;
}

sim::Terminal* runningTerminal = nullptr;

void onEnd(int)
{
    runningTerminal->requestQuit();
}

int runTerminal(const CommandLine& line)
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
    runningTerminal = &terminal;
    struct sigaction action = {};
    action.sa_handler = onEnd;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
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
    CommandLine line;
    std::string error;
    if (!parseCommandLine(argc, argv, &line, &error)) {
        fprintf(stderr, "terminalsim: %s (--help tells more)\n", error.c_str());
        return 2;
    }
    if (line.help) {
        fputs(Usage, stdout);
        sim::printCommandHelp();
        fputs(UsageEnd, stdout);
        return 0;
    }
    return line.command.empty() ? runTerminal(line)
                                : sim::runClientCommand(line.options.address, line.command);
}
