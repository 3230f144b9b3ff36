// Runs the lines of a console: finds the command in the shell's table, waits for those that take their time,
// and keeps the output to whole lines. The commands themselves are the tables' of commands.h, the completion
// is completion.cpp's. On the terminal's thread only.
#include "sim/console/console.h"

#include "sim/console/commands.h"
#include "sim/console/compound.h"
#include "sim/console/trace.h"
#include "sim/console/witness.h"
#include "sim/timer.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace sim {

namespace {

// What later() makes a command return. Outside of what commands of the shell return.
constexpr int CommandPends = INT32_MIN;
// So many commands of a compound in one go; then others have their turn.
constexpr int MaxSteps = 64;
// Bytes of output without a line feed, which "echo -n" could make for ever.
constexpr size_t MaxPartial = 1024 * 1024;

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    vsnprintf(&text[0], text.size() + 1, format, arguments);
    return text;
}

// One line, whatever was typed or stands in the database.
std::string asLine(std::string text)
{
    for (char& character : text) {
        if (static_cast<unsigned char>(character) < ' ' || character == '\x7f')
            character = '?';
    }
    return text;
}

} // namespace

struct Console::Impl {
    Impl(Console& console, Output output)
        : console(console), output(std::move(output)), timer(console.desk().loop)
    {
    }

    void put(std::string_view text);
    void putLine(std::string_view line);
    void endLine();
    const shell_command* find(const std::string& name);
    bool next(int status, Words* words);
    void go(Words words);
    int start(const Words& words);
    int runPlain(const Words& words);
    int settle(int status);
    void end(int status);

    Console& console;
    Output output;
    std::string partial;           // a line of output that has not ended
    std::string* caught = nullptr; // takes the shell's output instead
    bool errorTold = false;        // the last line of output begins with "error: "

    std::string name; // of the line's command
    Done done;
    bool busy = false;
    std::vector<std::unique_ptr<Compound>> compounds; // the innermost last
    bool isRunning = false;                           // a command that is no compound
    std::string word;                                 // with which it, or the last one, was called
    shell_command entry{};                            // its own
    std::unique_ptr<PendingCommand> pending;
    Timer timer; // goes on with the line
    std::vector<std::unique_ptr<PendingCommand>> background;
};

// --- Output

void Console::Impl::put(std::string_view text)
{
    if (caught) {
        caught->append(text);
        return;
    }
    for (size_t end; (end = text.find('\n')) != std::string_view::npos; text.remove_prefix(end + 1)) {
        partial.append(text.substr(0, end));
        endLine();
    }
    partial.append(text);
    if (partial.size() > MaxPartial)
        endLine();
}

void Console::Impl::endLine()
{
    std::string line = std::move(partial);
    partial.clear();
    bool special = !line.empty() && (line[0] == '=' || line[0] == '*');
    putLine(special ? " " + line : line);
}

void Console::Impl::putLine(std::string_view line)
{
    errorTold = line.substr(0, 7) == "error: ";
    output(std::string(line) + "\n");
}

// --- Running

const shell_command* Console::Impl::find(const std::string& name)
{
    std::string problem;
    caught = &problem;
    const shell_command* command = vx_cshell_find(console.shell(), name.c_str());
    caught = nullptr;
    if (!command) {
        console.fail("%s", problem.substr(0, problem.find('\n')).c_str());
    } else if (!vx_cshell_authorized(console.shell(), command)) {
        console.fail("%s: not from a console of the terminal", name.c_str());
        command = nullptr;
    }
    return command;
}

// What runs next when a command has ended with the status. False: the line has ended.
bool Console::Impl::next(int status, Words* words)
{
    if (status == CommandEnds)
        compounds.clear();
    while (!compounds.empty() && !compounds.back()->next(&status, words))
        compounds.pop_back();
    if (!compounds.empty())
        return true;
    end(status);
    return false;
}

// Runs a command and whatever the compounds around it make of it, until one takes its time.
void Console::Impl::go(Words words)
{
    for (int steps = 0; steps < MaxSteps; steps++) {
        int status = start(words);
        if (status == CommandPends || !next(status, &words))
            return;
    }
    timer.once(0, [this, words] { go(words); });
}

int Console::Impl::start(const Words& words)
{
    if (words[0] == "exit")
        return CommandEnds;
    const shell_command* command = find(words[0]);
    if (!command)
        return CommandFailed;
    word = words[0];
    entry = *command; // the table may change under it
    errorTold = false;
    if (strcmp(entry.path, "/bin") != 0 || !isCompound(entry.name))
        return runPlain(words);
    Words named = words;
    named[0] = entry.name;
    std::unique_ptr<Compound> compound = makeCompound(console, named);
    if (!compound)
        return settle(CommandMisused);
    compounds.push_back(std::move(compound));
    return CommandDone;
}

int Console::Impl::runPlain(const Words& words)
{
    std::vector<std::string> copies = words;
    std::vector<char*> argv;
    for (std::string& copy : copies)
        argv.push_back(&copy[0]);
    argv.push_back(nullptr);
    isRunning = true;
    int status = vx_cshell_run_command(console.shell(), static_cast<int>(copies.size()), argv.data());
    if (status == CommandPends && pending)
        return CommandPends;
    isRunning = false;
    timer.stop(); // it has called finish() and then thought better of it
    pending.reset();
    return settle(status);
}

// What a command's result means: one of the three that a line can have.
int Console::Impl::settle(int status)
{
    if (status == CommandDone || status == CommandEnds)
        return status;
    if (!partial.empty())
        endLine();
    std::string usage = usageOf(entry.name);
    if (status == CommandMisused && !usage.empty())
        return console.fail("%s", usage.c_str());
    if (status == CommandMisused) {
        vx_cshell_print_help(console.shell(), &entry);
        return console.fail("%s: not used like this", word.c_str());
    }
    if (!errorTold)
        console.fail("%s has failed", word.c_str());
    return CommandFailed;
}

void Console::Impl::end(int status)
{
    if (!partial.empty())
        endLine();
    if (status == CommandFailed && !errorTold)
        console.fail("%s has failed", name.c_str());
    busy = false;
    if (console.desk().traces)
        console.desk().traces->lineEnds(vx_cshell_get_name(console.shell()), status);
    Done call = std::move(done);
    done = nullptr;
    call(status);
}

Console::Console(Desk& desk, const std::string& name, Output output)
    : CVXShell(name.c_str()), surroundings(desk), impl(std::make_unique<Impl>(*this, std::move(output)))
{
    addCommandsToShell();
    vx_cshell_set_output(
        shell(), [](void* data, const char* text) { static_cast<Impl*>(data)->put(text); }, impl.get());
    vx_cshell_set_prompt_fmt(shell(), "%s> ");
    // The commands for the memory of this process are for the terminal's own shell.
    vx_cshell_set_auth_level(shell(), 0);
}

Console::~Console()
{
    cancel();
    endBackground();
    if (surroundings.witness)
        surroundings.witness->sessionEnds(*this);
}

void Console::run(const std::string& line, Done done)
{
    Words words;
    std::string problem;
    impl->errorTold = false;
    if (surroundings.traces)
        surroundings.traces->lineBegins(vx_cshell_get_name(shell()), line);
    if (surroundings.witness)
        surroundings.witness->lineBegins(*this, line);
    bool good = splitLine(line, &words, &problem);
    if (!good || words.empty()) {
        done(good ? static_cast<int>(CommandDone) : fail("%s", problem.c_str()));
        return;
    }
    impl->busy = true;
    impl->done = std::move(done);
    impl->name = words[0];
    impl->go(std::move(words));
}

bool Console::isBusy() const
{
    return impl->busy;
}

void Console::cancel()
{
    impl->timer.stop();
    impl->pending.reset();
    impl->compounds.clear();
    impl->partial.clear();
    impl->isRunning = false;
    impl->busy = false;
    impl->done = nullptr;
}

// --- For the commands

void Console::print(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    impl->put(formatted(format, arguments));
    va_end(arguments);
}

int Console::fail(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    if (!impl->partial.empty())
        impl->endLine();
    impl->putLine("error: " + asLine(text));
    return CommandFailed;
}

int Console::later(std::unique_ptr<PendingCommand> command)
{
    impl->pending = std::move(command);
    return CommandPends;
}

void Console::finish(int status)
{
    if (!impl->isRunning)
        return;
    impl->timer.once(0, [this, status] {
        impl->isRunning = false;
        impl->pending.reset();
        Words words;
        if (impl->next(impl->settle(status), &words))
            impl->go(std::move(words));
    });
}

void Console::keep(std::unique_ptr<PendingCommand> background)
{
    impl->background.push_back(std::move(background));
}

size_t Console::endBackground()
{
    size_t count = impl->background.size();
    impl->background.clear();
    return count;
}

void Console::tell(const std::string& line)
{
    impl->output("* " + asLine(line) + "\n");
}

} // namespace sim
