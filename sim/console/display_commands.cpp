// press, picture, log, display: the display that was started from here.
#include "sim/console/commands.h"

#include "sim/display/display.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

namespace sim {

namespace {

constexpr int64_t MostPresses = 1000;
constexpr int64_t UsualScale = 4;
constexpr int64_t UsualLines = 20;
constexpr int64_t MostLines = 1000;

// Null after the error was printed.
Display* displayOf(Console& console)
{
    Display* display = console.desk().display;
    if (!display)
        console.fail("no display was started here");
    return display;
}

// --- press

// Ends with the first key that was not handled.
class Presses : public PendingCommand {
public:
    Presses(Console& console, Display& display, std::vector<Key> keys)
        : console(console), display(display), keys(std::move(keys))
    {
        next();
    }
    ~Presses() override { display.forget(number); }

private:
    void next()
    {
        number = display.press(keys[at], [this](const std::string& error) { pressed(error); });
    }
    void pressed(const std::string& error)
    {
        number = 0;
        if (!error.empty())
            console.finish(console.fail("%s: %s", keyName(keys[at]), error.c_str()));
        else if (++at == keys.size())
            console.finish(CommandDone);
        else
            next();
    }

    Console& console;
    Display& display;
    std::vector<Key> keys;
    size_t at = 0;
    uint64_t number = 0;
};

// down*3: a key and how often.
bool addKeys(const std::string& word, std::vector<Key>* keys)
{
    size_t star = word.find('*');
    int64_t times = 1;
    Key key;
    if (star != std::string::npos && !parseNumber(word.substr(star + 1), 1, MostPresses, &times))
        return false;
    if (!parseKey(word.substr(0, star), &key))
        return false;
    keys->insert(keys->end(), static_cast<size_t>(times), key);
    return true;
}

int press(Console& console, const Words& words)
{
    std::vector<Key> keys;
    if (words.empty())
        return CommandMisused;
    for (const std::string& word : words) {
        if (!addKeys(word, &keys))
            return console.fail(
                "%s is no key: there are up, down, left, right, ok, long and screenshot, each "
                "with *N to press it so often",
                word.c_str());
    }
    Display* display = displayOf(console);
    if (!display)
        return CommandFailed;
    return console.later(std::make_unique<Presses>(console, *display, std::move(keys)));
}

// --- picture

class PictureRequest : public PendingCommand {
public:
    PictureRequest(Console& console, Display& display, const std::string& file, unsigned scale)
        : display(display)
    {
        number = display.takePicture(file, scale, [this, &console](const std::string& error) {
            number = 0;
            console.finish(error.empty() ? CommandDone : console.fail("%s", error.c_str()));
        });
    }
    ~PictureRequest() override { display.forget(number); }

private:
    Display& display;
    uint64_t number;
};

int picture(Console& console, const Words& words)
{
    int64_t scale = UsualScale;
    if (words.empty() || words.size() > 2)
        return CommandMisused;
    if (words.size() == 2 && !parseNumber(words[1], 1, Display::MaxScale, &scale))
        return console.fail("%s is no scale from 1 to %u", words[1].c_str(), Display::MaxScale);
    Display* display = displayOf(console);
    if (!display)
        return CommandFailed;
    std::string file = (std::filesystem::path(console.desk().pictures) / words[0]).string();
    return console.later(
        std::make_unique<PictureRequest>(console, *display, file, static_cast<unsigned>(scale)));
}

// --- log

int log(Console& console, const Words& words)
{
    int64_t count = UsualLines;
    if (words.size() > 1)
        return CommandMisused;
    if (words.size() == 1 && !parseNumber(words[0], 1, MostLines, &count))
        return console.fail("%s is no number of lines from 1 to %d", words[0].c_str(),
                            static_cast<int>(MostLines));
    Display* display = displayOf(console);
    if (!display)
        return CommandFailed;
    for (const std::string& line : display->lastLines(static_cast<size_t>(count)))
        console.print("%s\n", line.c_str());
    return CommandDone;
}

// --- display

const char* stateText(Display::State state)
{
    switch (state) {
    case Display::State::Stopped:
        return "stopped";
    case Display::State::Starting:
        return "starting";
    case Display::State::Running:
        return "running";
    }
    return "";
}

int tellState(Console& console, Display& display)
{
    if (display.pid() < 0)
        console.print("state %s, restarts %u\n", stateText(display.state()), display.restarts());
    else
        console.print("state %s, pid %d, restarts %u, up %u s\n", stateText(display.state()),
                      static_cast<int>(display.pid()), display.restarts(), display.uptime() / 1000);
    return CommandDone;
}

// Waits until the display has gone. Whatever asked for it: that cannot be taken back, so the display outlives
// the command's end here.
class Stop : public PendingCommand {
public:
    Stop(Console& console, Display& display) : waiting(std::make_shared<Console*>(&console))
    {
        display.stop([waiting = waiting] {
            if (*waiting)
                (*waiting)->finish(CommandDone);
        });
    }
    ~Stop() override { *waiting = nullptr; }

private:
    std::shared_ptr<Console*> waiting; // null once nobody waits
};

int stop(Console& console, Display& display)
{
    if (display.pid() < 0) {
        display.stop([] {}); // nor is it started again
        return CommandDone;
    }
    return console.later(std::make_unique<Stop>(console, display));
}

int start(Console& console, Display& display)
{
    std::string error;
    return display.start(&error) ? CommandDone : console.fail("%s", error.c_str());
}

int restart(Console&, Display& display)
{
    display.restart();
    return CommandDone;
}

int send(Console& console, Display& display, int signo)
{
    if (display.pid() < 0)
        return console.fail("no display is running");
    return ::kill(display.pid(), signo) == 0 ? CommandDone : console.fail("%s", strerror(errno));
}

int freeze(Console& console, Display& display)
{
    return send(console, display, SIGSTOP);
}

int thaw(Console& console, Display& display)
{
    return send(console, display, SIGCONT);
}

int kill(Console& console, Display& display)
{
    return send(console, display, SIGKILL);
}

const struct {
    const char* name;
    int (*run)(Console& console, Display& display);
} actions[] = {
    {"restart", restart}, {"stop", stop}, {"start", start},
    {"freeze", freeze},   {"thaw", thaw}, {"kill", kill},
};

const struct {
    const char* name;
    int signo;
} signalNames[] = {
    {"HUP", SIGHUP},   {"INT", SIGINT},   {"QUIT", SIGQUIT}, {"ILL", SIGILL},
    {"ABRT", SIGABRT}, {"BUS", SIGBUS},   {"FPE", SIGFPE},   {"KILL", SIGKILL},
    {"USR1", SIGUSR1}, {"SEGV", SIGSEGV}, {"USR2", SIGUSR2}, {"PIPE", SIGPIPE},
    {"ALRM", SIGALRM}, {"TERM", SIGTERM}, {"CONT", SIGCONT}, {"STOP", SIGSTOP},
};

// SEGV, SIGSEGV or 11.
bool parseSignal(const std::string& word, int* signo)
{
    std::string name = word.compare(0, 3, "SIG") == 0 ? word.substr(3) : word;
    for (const auto& row : signalNames) {
        if (name == row.name) {
            *signo = row.signo;
            return true;
        }
    }
    int64_t number = 0;
    if (!parseNumber(word, 1, 31, &number))
        return false;
    *signo = static_cast<int>(number);
    return true;
}

int display(Console& console, const Words& words)
{
    int signo = 0;
    bool withSignal = words.size() == 2 && words[0] == "kill";
    if (words.size() > 1 && !withSignal)
        return CommandMisused;
    if (withSignal && !parseSignal(words[1], &signo))
        return console.fail("%s is no signal", words[1].c_str());
    Display* display = displayOf(console);
    if (!display)
        return CommandFailed;
    if (words.empty())
        return tellState(console, *display);
    if (withSignal)
        return send(console, *display, signo);
    for (const auto& action : actions) {
        if (words[0] == action.name)
            return action.run(console, *display);
    }
    return CommandMisused;
}

} // namespace

const ConsoleCommands& displayCommands()
{
    static const ConsoleCommands commands = {
        {"press", "KEY...", "presses keys: up down left right ok long screenshot, down*3 for three times",
         press},
        {"picture", "FILE [SCALE]",
         "writes what the display shows as a PNG, enlarged 4 times if not told else", picture},
        {"log", "[N]", "prints the newest lines of the display's log, 20 if not told else", log},
        {"display", "",
         "tells whether the display runs, its pid, how often it was restarted, since when it is up", display},
        {"display", "start | stop | restart", "starts or ends it", display},
        {"display", "freeze | thaw", "stops its process as it is, and lets it go on", display},
        {"display", "kill [SIGNAL]", "sends it a signal by name or number, KILL if not told else", display},
    };
    return commands;
}

} // namespace sim
