// Takes the command line apart. What is done with it is main.cpp's.
#include "sim/command_line.h"

#include "sim/initial_values.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace sim {

namespace {

const char Usage[] =
    "usage: terminalsim [option...]             run the terminal until SIGTERM or Ctrl-C\n"
    "       terminalsim [--address A] command     ask a running one, over its bus\n"
    "       terminalsim --socket PATH command     have a console of a running one carry it out\n"
    "       terminalsim --socket PATH -           the same with each line of standard input\n";

using ConsoleMode = CommandLine::ConsoleMode;

bool takeSet(CommandLine* line, const char* argument, std::string* error)
{
    std::string text = argument;
    size_t equals = text.find('=');
    Value value;
    if (equals == 0 || equals == std::string::npos) {
        *error = "--set takes KEY=TYPE:VALUE, not " + text;
        return false;
    }
    if (!parseShortValue(text.substr(equals + 1), &value, error)) {
        *error = "--set " + text + ": " + *error;
        return false;
    }
    line->values.emplace_back(text.substr(0, equals), value);
    return true;
}

bool takeSpeed(CommandLine* line, const char* argument, std::string* error)
{
    char* end = nullptr;
    long speed = strtol(argument, &end, 10);
    if (*end != '\0' || speed < 1 || speed > 1000) {
        *error = std::string("--speed takes a number from 1 to 1000, not ") + argument;
        return false;
    }
    line->options.speed = static_cast<uint32_t>(speed);
    return true;
}

bool takePatience(CommandLine* line, const char* argument, std::string* error)
{
    char* end = nullptr;
    long patience = strtol(argument, &end, 10);
    if (*end != '\0' || patience < 1 || patience > 100) {
        *error = std::string("--patience takes a number from 1 to 100, not ") + argument;
        return false;
    }
    line->patience = static_cast<uint32_t>(patience);
    return true;
}

bool takeSocket(CommandLine* line, const char* argument, std::string* error)
{
    line->socket = argument;
    if (line->socket.empty())
        *error = "--socket takes the name of a file";
    return !line->socket.empty();
}

const std::vector<CommandLineOption> Options = {
    {"--address", "A", "bus address: unix*NAME or tcp*HOST*PORT (default: $CBUS_ADDR, or unix*cbus)",
     [](CommandLine* line, const char* argument, std::string*) {
         line->options.address = argument;
         return true;
     }},
    {"--values", "FILE", "initial values of the database",
     [](CommandLine* line, const char* argument, std::string*) {
         line->options.valuesFile = argument;
         return true;
     }},
    {"--store", "FILE", "keep the settings (cfg) in this file across runs",
     [](CommandLine* line, const char* argument, std::string*) {
         line->options.storeFile = argument;
         return true;
     }},
    {"--set", "KEY=TYPE:VALUE", "another initial value, as in cfg.language=int:2 (any number of times)",
     takeSet},
    {"--still", nullptr, "nothing moves by itself",
     [](CommandLine* line, const char*, std::string*) {
         line->options.moving = false;
         return true;
     }},
    {"--speed", "N", "let it move and react N times faster, 1 to 1000", takeSpeed},
    {"--socket", "PATH", "consoles on a Unix socket: of the terminal that runs, or of the one to ask",
     takeSocket},
    {"--console", nullptr, "a console on standard input even if it is no terminal",
     [](CommandLine* line, const char*, std::string*) {
         line->console = ConsoleMode::Always;
         return true;
     }},
    {"--no-console", nullptr, "none, even on a terminal",
     [](CommandLine* line, const char*, std::string*) {
         line->console = ConsoleMode::Never;
         return true;
     }},
    {"--display", "PROGRAM", "start this as the display, and again when it crashes",
     [](CommandLine* line, const char* argument, std::string*) {
         line->display = argument;
         return true;
     }},
    {"--display-argument", "A", "an argument of it (any number of times)",
     [](CommandLine* line, const char* argument, std::string*) {
         line->displayArguments.push_back(argument);
         return true;
     }},
    {"--display-log", "FILE", "where its log goes (default: it is forgotten at the end)",
     [](CommandLine* line, const char* argument, std::string*) {
         line->displayLog = argument;
         return true;
     }},
    {"--keypad", "DIR", "plugins of the keypad (default: plugins beside this program)",
     [](CommandLine* line, const char* argument, std::string*) {
         line->keypad = argument;
         return true;
     }},
    {"--syslog-library", "FILE", "catches its log (default: libsyslogtap.so beside this program)",
     [](CommandLine* line, const char* argument, std::string*) {
         line->syslogLibrary = argument;
         return true;
     }},
    {"--record", "FILE", "record what the bus carries, from the start on",
     [](CommandLine* line, const char* argument, std::string*) {
         line->record = argument;
         return true;
     }},
    {"--replay", "FILE", "give a recording again instead of reacting, and tell what differed",
     [](CommandLine* line, const char* argument, std::string*) {
         line->replay = argument;
         return true;
     }},
    {"--scenario", "FILE", "run these console commands, and end with status 0 or, if one fails, 1",
     [](CommandLine* line, const char* argument, std::string*) {
         line->scenario = argument;
         return true;
     }},
    {"--pictures", "DIR", "where its pictures go, numbered in their order (default: nowhere)",
     [](CommandLine* line, const char* argument, std::string*) {
         line->pictures = argument;
         return true;
     }},
    {"--stay", nullptr, "go on when it is over",
     [](CommandLine* line, const char*, std::string*) {
         line->stay = true;
         return true;
     }},
    {"--patience", "N", "let it wait N times longer for what it expects, 1 to 100: for a busy machine",
     takePatience},
    {"--quiet", nullptr, "print errors only",
     [](CommandLine* line, const char*, std::string*) {
         line->quiet = true;
         return true;
     }},
    {"--help", nullptr, "print this",
     [](CommandLine* line, const char*, std::string*) {
         line->help = true;
         return true;
     }},
    {"--help-markdown", nullptr, "print the commands of the console as docs/simulator.md has them",
     [](CommandLine* line, const char*, std::string*) {
         line->helpMarkdown = true;
         return true;
     }},
};

const CommandLineOption* findOption(const char* name)
{
    for (const CommandLineOption& option : Options) {
        if (strcmp(name, option.name) == 0)
            return &option;
    }
    return nullptr;
}

} // namespace

const std::vector<CommandLineOption>& commandLineOptions()
{
    return Options;
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
        const CommandLineOption* option = findOption(argv[at]);
        if (!option) {
            *error = std::string("unknown option ") + argv[at];
            return false;
        }
        const char* argument = nullptr;
        if (option->argument) {
            if (at + 1 == argc) {
                *error = std::string(option->name) + " needs an argument";
                return false;
            }
            argument = argv[++at];
        }
        if (!option->take(line, argument, error))
            return false;
    }
    for (; at < argc; at++)
        line->command.push_back(argv[at]);
    if (line->display.empty() && !line->displayArguments.empty()) {
        *error = "--display-argument without --display";
        return false;
    }
    if (line->scenario.empty() && (line->stay || !line->pictures.empty())) {
        *error = line->stay ? "--stay without --scenario" : "--pictures without --scenario";
        return false;
    }
    return true;
}

void printCommandLineHelp()
{
    constexpr int Width = 21;
    fputs(Usage, stdout);
    puts("\noptions:");
    for (const CommandLineOption& option : Options) {
        std::string form = option.name + (option.argument ? std::string(" ") + option.argument : "");
        printf("  %-*s %s\n", Width, form.c_str(), option.help);
    }
}

} // namespace sim
