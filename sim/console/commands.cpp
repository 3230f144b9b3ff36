// The tables of commands together: in the shell's table, for usage texts and for the manual; and the commands
// to the terminal's processes, which all are one function. On the terminal's thread only.
#include "sim/console/commands.h"

#include <cstring>
#include <map>
#include <mutex>

namespace sim {

const std::vector<CommandTheme>& commandThemes()
{
    static const std::vector<CommandTheme> themes = {
        {"The database", databaseCommands()}, {"The display", displayCommands()},
        {"Waiting", waitCommands()},          {"What the bus carries", trafficCommands()},
        {"Faults", faultCommands()},
    };
    return themes;
}

namespace {

const char ProcessHeading[] = "The terminal's processes";

// The text goes into the process's key, which it deletes when it has carried the command out or refused it.
int commandProcess(Console& console, const std::string& name, const Words& arguments)
{
    if (arguments.empty())
        return CommandMisused;
    Terminal& terminal = console.desk().terminal;
    const std::string key = CommandPrefix + name;
    terminal.set(key, joined(arguments, 0));
    if (terminal.erase(key))
        return console.fail("%s: nobody there carries out commands", name.c_str());
    std::optional<std::string> refusal = terminal.getString(CommandError);
    return refusal ? console.fail("%s", refusal->c_str()) : static_cast<int>(CommandDone);
}

struct Command {
    int (*run)(Console& console, const Words& arguments) = nullptr; // null: of a process
    std::vector<CommandForm> forms;
    std::string syntax; // all forms, one a line
};
using Commands = std::map<std::string, Command>;

std::string written(const CommandForm& form)
{
    return form.name + std::string(*form.words ? " " : "") + form.words;
}

Commands collected()
{
    Commands commands;
    for (const CommandTheme& theme : commandThemes()) {
        for (const ConsoleCommand& row : theme.commands) {
            Command& command = commands[row.name];
            command.run = row.run;
            command.forms.push_back({row.name, row.words, row.help});
        }
    }
    for (const CommandForm& form : commandForms()) {
        Command& command = commands[form.name];
        if (!command.run) // the console's own has the name
            command.forms.push_back(form);
    }
    for (auto& [name, command] : commands) {
        for (const CommandForm& form : command.forms)
            command.syntax += written(form) + "\n    " + form.help + "\n";
    }
    return commands;
}

// To the end of the process, as the shell's table.
const Commands& allCommands()
{
    static const Commands* commands = new Commands(collected());
    return *commands;
}

int runFromShell(cshell* shell, int argc, char** argv)
{
    auto* console = static_cast<Console*>(vx_cshell_get_object(shell));
    if (!console)
        return VX_CSHELL_ERROR;
    const char* slash = strrchr(argv[0], '/');
    return runCommand(*console, slash ? slash + 1 : argv[0], Words(argv + 1, argv + argc));
}

std::string asMarkdown(std::string text)
{
    for (size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2)
        text.insert(at, "\\");
    return text;
}

std::string themeAsMarkdown(const char* heading, const std::vector<CommandForm>& forms)
{
    std::string text = std::string("### ") + heading + "\n\n| command | what it does |\n|---|---|\n";
    for (const CommandForm& form : forms)
        text += "| `" + asMarkdown(written(form)) + "` | " + asMarkdown(form.help) + " |\n";
    return text;
}

} // namespace

void addCommandsToShell()
{
    static std::once_flag added;
    std::call_once(added, [] {
        for (const auto& [name, command] : allCommands()) {
            const shell_command entry = {"/", name.c_str(),          runFromShell,
                                         0,   command.forms[0].help, command.syntax.c_str()};
            shell_command_add_sorted(&entry);
        }
    });
}

std::vector<CommandForm> formsOf(const std::string& name)
{
    auto found = allCommands().find(name);
    return found == allCommands().end() ? std::vector<CommandForm>() : found->second.forms;
}

int runCommand(Console& console, const std::string& name, const Words& arguments)
{
    const Command& command = allCommands().at(name);
    return command.run ? command.run(console, arguments) : commandProcess(console, name, arguments);
}

std::string usageOf(const std::string& name)
{
    std::string usage;
    for (const CommandForm& form : formsOf(name))
        usage += (usage.empty() ? "usage: " : "; ") + written(form);
    return usage;
}

std::string commandsAsMarkdown()
{
    std::string text;
    for (const CommandTheme& theme : commandThemes()) {
        std::vector<CommandForm> forms;
        for (const ConsoleCommand& row : theme.commands)
            forms.push_back({row.name, row.words, row.help});
        if (!forms.empty())
            text += themeAsMarkdown(theme.heading, forms) + "\n";
    }
    return text + themeAsMarkdown(ProcessHeading, commandForms());
}

} // namespace sim
