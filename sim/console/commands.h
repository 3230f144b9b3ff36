// The commands of the consoles: one table for each theme, with what help and docs/simulator.md tell of them.
// Commands to the terminal's processes (commandForms in command_actor.h) are added from their own table.
//
// On the terminal's thread only.
#ifndef SIM_CONSOLE_COMMANDS_H
#define SIM_CONSOLE_COMMANDS_H

#include "sim/console/console.h"

namespace sim {

// One form of a command. A command with several forms has a row for each, next to each other, with the same
// function.
struct ConsoleCommand {
    const char* name;
    const char* words; // of the arguments: KEY [PREFIX] on | off
    const char* help;  // one line, without a capital or a full stop
    // The words behind the command's name. Returns one of the results in console.h, or what later() gave.
    int (*run)(Console& console, const Words& arguments);
};
using ConsoleCommands = std::vector<ConsoleCommand>;

const ConsoleCommands& databaseCommands(); // get, set, ...       database_commands.cpp
const ConsoleCommands& waitCommands();     // wait, expect, ...   wait_commands.cpp
const ConsoleCommands& faultCommands();    // fault               fault_commands.cpp
const ConsoleCommands& trafficCommands();  // messages, record    traffic_commands.cpp
const ConsoleCommands& displayCommands();  // press, picture, log display_commands.cpp

// All of them, in the order of the manual, with its headings.
struct CommandTheme {
    const char* heading;
    const ConsoleCommands& commands;
};
const std::vector<CommandTheme>& commandThemes();

// --- All of them together, those to the terminal's processes included

// Puts them into the shell's table, in "/". A second call does nothing.
void addCommandsToShell();
// The forms of a command in the order of its table; empty if there is none of this name.
std::vector<CommandForm> formsOf(const std::string& name);
// Runs one that has a form. Returns what it returned.
int runCommand(Console& console, const std::string& name, const Words& arguments);
// "usage: get KEY", with all forms.
std::string usageOf(const std::string& name);
// For docs/simulator.md: a heading and a table for each theme.
std::string commandsAsMarkdown();

} // namespace sim

#endif
