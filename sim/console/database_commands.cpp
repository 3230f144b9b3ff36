// get, set, list, watch and the rest: the database as a process of the terminal sees it, for which neither
// read-only keys nor validators count; and the end of a console and of the program.
#include "sim/console/commands.h"

#include "sim/database.h"
#include "sim/initial_values.h"

#include <algorithm>
#include <cstring>

namespace sim {

namespace {

constexpr const char* TypeMarks[] = {"int:", "string:", "blob:"};

bool hasType(const std::string& text)
{
    return std::any_of(std::begin(TypeMarks), std::end(TypeMarks),
                       [&](const char* mark) { return text.compare(0, strlen(mark), mark) == 0; });
}

// Without a type it is that of the key, or else what it looks like.
bool parseValueFor(Terminal& terminal, const std::string& key, const std::string& text, Value* value,
                   std::string* error)
{
    if (hasType(text))
        return parseShortValue(text, value, error);
    std::optional<Value> current = terminal.get(key);
    if (!current)
        return parseShortValue("int:" + text, value, error) ||
               parseShortValue("string:" + text, value, error);
    const char* mark = current->type == Type::Int    ? "int:"
                       : current->type == Type::Blob ? "blob:"
                                                     : "string:";
    return parseShortValue(mark + text, value, error);
}

std::string lineOf(const std::string& key, const Value& value)
{
    return key + " = " + describeValue(value);
}

int missing(Console& console, const std::string& key)
{
    return console.fail("%s: not in the database", key.c_str());
}

int get(Console& console, const Words& words)
{
    if (words.size() != 1)
        return CommandMisused;
    std::optional<Value> value = console.desk().terminal.get(words[0]);
    if (!value)
        return missing(console, words[0]);
    console.print("%s\n", describeValue(*value).c_str());
    return CommandDone;
}

bool isKey(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char character) { return character > ' ' && character < '\x7f'; });
}

int set(Console& console, const Words& words)
{
    if (words.size() != 2)
        return CommandMisused;
    const std::string& key = words[0];
    Write write{key, Value()};
    std::string error;
    if (!isKey(key))
        return console.fail("a key has no blanks and only ASCII: %s", key.c_str());
    if (!parseValueFor(console.desk().terminal, key, words[1], &write.value, &error))
        return console.fail("%s: %s", key.c_str(), error.c_str());
    if (Database().check(write) != 0)
        return console.fail("%.80s: the key or its value is too long", key.c_str());
    console.desk().terminal.set(key, write.value);
    return CommandDone;
}

int remove(Console& console, const Words& words)
{
    if (words.size() != 1)
        return CommandMisused;
    return console.desk().terminal.erase(words[0]) ? static_cast<int>(CommandDone)
                                                   : missing(console, words[0]);
}

int list(Console& console, const Words& words)
{
    if (words.size() > 1)
        return CommandMisused;
    const std::string text = words.empty() ? ".*" : words[0];
    std::optional<KeyExpression> expression = KeyExpression::compile(text);
    if (!expression)
        return console.fail("not a regular expression: %s", text.c_str());
    for (const auto& [key, value] : console.desk().terminal.list("")) {
        if (expression->matches(key))
            console.print("%s\n", lineOf(key, value).c_str());
    }
    return CommandDone;
}

class Watch : public PendingCommand {
public:
    Watch(Console& console, const std::string& prefix)
        : terminal(console.desk().terminal),
          listener(terminal.listenToChanges([&console, prefix](const std::vector<Write>& changes) {
              for (const Write& change : changes) {
                  if (change.key.compare(0, prefix.size(), prefix) == 0)
                      console.tell(lineOf(change.key, change.value));
              }
          }))
    {
    }
    ~Watch() override { terminal.forget(listener); }

private:
    Terminal& terminal;
    const uint64_t listener;
};

int watch(Console& console, const Words& words)
{
    if (words.size() > 1)
        return CommandMisused;
    console.keep(std::make_unique<Watch>(console, words.empty() ? std::string() : words[0]));
    return CommandDone;
}

int unwatch(Console& console, const Words& words)
{
    if (!words.empty())
        return CommandMisused;
    return console.endBackground() > 0 ? static_cast<int>(CommandDone) : console.fail("nothing is watched");
}

int status(Console& console, const Words& words)
{
    if (words.size() != 1)
        return CommandMisused;
    std::optional<Value> value = console.desk().terminal.get(words[0]);
    if (!value)
        return missing(console, words[0]);
    console.print("%zu\n", value->bytes.size());
    return CommandDone;
}

int save(Console& console, const Words& words)
{
    if (!words.empty())
        return CommandMisused;
    return console.desk().terminal.save()
               ? static_cast<int>(CommandDone)
               : console.fail("not saved: there is no --store FILE, or the log tells what is wrong with it");
}

int reset(Console& console, const Words& words)
{
    if (!words.empty())
        return CommandMisused;
    console.desk().terminal.factoryReset();
    return CommandDone;
}

// A signal on the bus, as the display sends it.
int pointing(Console& console, const Words& words)
{
    static const char* const Commands[] = {"start", "stop", "cancel"};
    if (words.size() != 1 ||
        std::find(std::begin(Commands), std::end(Commands), words[0]) == std::end(Commands))
        return CommandMisused;
    Terminal& terminal = console.desk().terminal;
    terminal.erase(CommandError);
    terminal.sendClientSignal("bp_ctrl.pointing", words[0] + '\0');
    std::optional<std::string> refusal = terminal.getString(CommandError);
    return refusal ? console.fail("%s", refusal->c_str()) : static_cast<int>(CommandDone);
}

int quit(Console& console, const Words& words)
{
    if (!words.empty())
        return CommandMisused;
    console.desk().terminal.requestQuit();
    return CommandDone;
}

// For who draws a line of input elsewhere, as the page in the browser does.
int complete(Console& console, const Words& words)
{
    if (words.size() != 1)
        return CommandMisused;
    std::vector<std::string> candidates;
    console.print("%s\n", console.complete(words[0], &candidates).c_str());
    for (const std::string& candidate : candidates)
        console.print("%s\n", candidate.c_str());
    return CommandDone;
}

int leave(Console&, const Words&)
{
    return CommandEnds;
}

} // namespace

const ConsoleCommands& databaseCommands()
{
    static const ConsoleCommands commands = {
        {"get", "KEY", "print a value", get},
        {"set", "KEY VALUE",
         "write a value: int:5, string:text, blob:00ff; without a type it is that of the key, or else a "
         "number or a "
         "text",
         set},
        {"delete", "KEY", "delete a key", remove},
        {"list", "[EXPRESSION]", "print the keys that match a regular expression whole, with their values",
         list},
        {"watch", "[PREFIX]", "print changes of keys that begin so as they come, each behind an asterisk",
         watch},
        {"unwatch", "", "end all that is printed as it comes", unwatch},
        {"status", "KEY", "print the length of a value in bytes", status},
        {"save", "", "save the settings (cfg) to the file of --store", save},
        {"reset", "", "factory reset of the settings", reset},
        {"pointing", "start | stop | cancel", "send the signal of the display's pointing", pointing},
        {"complete", "LINE",
         "print the line, which is one word, as far as it is clear, and the words that would do", complete},
        {"exit", "", "end this console", leave},
        {"quit", "", "end the terminal", quit},
    };
    return commands;
}

} // namespace sim
