// wait, pause, say, expect: what scenarios are made of. "wait" takes the terminal's time, which goes faster
// with --speed; "pause" and the limits of "expect" are of the user's time.
//
// On the terminal's thread only. A command that waits is an object that listens; with it go its listeners.
#include "sim/console/commands.h"
#include "sim/console/expectation.h"
#include "sim/console/witness.h"
#include "sim/display/display.h"
#include "sim/initial_values.h"
#include "sim/timer.h"

namespace sim {
namespace {

const uint32_t LookAgain = 100; // ms, for what nobody tells of: the end of the display

// Texts of the status screen by their numbers: searching, registering.
bool isSearching(int statusId)
{
    return statusId == 10 || statusId == 11;
}

// Unknown, the SIM being read, initializing.
bool isPassing(int statusId)
{
    return statusId == 0 || statusId == 2 || statusId == 9 || isSearching(statusId);
}

class Wait : public PendingCommand {
public:
    Wait(Console& console, uint32_t milliseconds) : timer(console.desk().loop)
    {
        timer.once(milliseconds, [&console] { console.finish(CommandDone); });
    }

private:
    Timer timer;
};

int waitFor(Console& console, const Words& arguments, double divisor)
{
    double seconds = 0;
    if (arguments.size() != 1)
        return CommandMisused;
    if (!parseSeconds(arguments[0], &seconds))
        return console.fail("%s is no number of seconds from 0 to 3600", arguments[0].c_str());
    const uint32_t milliseconds = static_cast<uint32_t>(seconds * 1000 / divisor + 0.5);
    return console.later(std::make_unique<Wait>(console, std::max<uint32_t>(1, milliseconds)));
}

int wait(Console& console, const Words& arguments)
{
    return waitFor(console, arguments, console.desk().speed);
}

int pause(Console& console, const Words& arguments)
{
    return waitFor(console, arguments, 1);
}

int say(Console& console, const Words& arguments)
{
    if (arguments.empty())
        return CommandMisused;
    console.print("%s\n", joined(arguments, 0).c_str());
    return CommandDone;
}

// --- expect

// What there is to see of one expectation: whether it is met, and what is there instead.
class Look {
public:
    Look(Console& console, const Expectation& expectation)
        : desk(console.desk()), console(console), expectation(expectation)
    {
    }

    bool isMet();
    // At the limit: what would not do before does after all.
    bool isMetLate() const;
    std::string failure() const;

private:
    bool valueMatches() const;
    bool writeMatches();
    bool pointingMatches();
    bool logMatches() const;
    bool liveMatches() const;
    bool popupMatches() const;
    bool crashMatches();
    std::string seenWrites() const;
    std::string seenPointing() const;
    uint64_t mark() const { return desk.witness->mark(console); }

    Desk& desk;
    Console& console;
    const Expectation expectation;
};

bool Look::isMet()
{
    const Shown* shown = desk.witness ? &desk.witness->shown() : nullptr;
    switch (expectation.kind) {
    case Expectation::Kind::Value:
        return valueMatches();
    case Expectation::Kind::Write:
        return writeMatches();
    case Expectation::Kind::Pointing:
        return pointingMatches();
    case Expectation::Kind::Log:
        return logMatches();
    case Expectation::Kind::Screen:
        return shown->screen == expectation.text;
    case Expectation::Kind::Status:
        return shown->status == expectation.text;
    case Expectation::Kind::Live:
        return liveMatches();
    case Expectation::Kind::Popup:
        return popupMatches();
    case Expectation::Kind::Crash:
        return crashMatches();
    }
    return false;
}

bool Look::valueMatches() const
{
    const std::optional<Value> value = desk.terminal.get(expectation.key);
    return expectation.value.matches(value ? &*value : nullptr);
}

bool Look::writeMatches()
{
    for (Witness::Noted& write : desk.witness->writes) {
        if (write.number <= mark() || write.used)
            continue;
        bool isMeant = write.text == expectation.key;
        if (write.isExpression) {
            const std::optional<KeyExpression> keys = KeyExpression::compile(write.text);
            isMeant = keys && keys->matches(expectation.key);
        }
        if (isMeant && expectation.value.matches(&write.value)) {
            write.used = !write.isExpression; // an expression may delete several keys
            return true;
        }
    }
    return false;
}

bool Look::pointingMatches()
{
    for (Witness::Noted& command : desk.witness->pointing) {
        if (command.number > mark() && !command.used && command.text == expectation.text) {
            command.used = true;
            return true;
        }
    }
    return false;
}

bool Look::logMatches() const
{
    for (auto line = desk.witness->log.rbegin(); line != desk.witness->log.rend(); ++line) {
        if (line->number <= mark())
            return false;
        if (line->text.find(expectation.text) != std::string::npos)
            return true;
    }
    return false;
}

// The display has read the terminal's values once it tells something else than at its start. Searching and
// registering may come before that, so they count only if they stay.
bool Look::liveMatches() const
{
    const Shown& shown = desk.witness->shown();
    return shown.window && shown.statusId >= 0 && !isPassing(shown.statusId);
}

bool Look::isMetLate() const
{
    return expectation.kind == Expectation::Kind::Live && desk.witness->shown().window &&
           isSearching(desk.witness->shown().statusId);
}

bool Look::popupMatches() const
{
    const Shown& shown = desk.witness->shown();
    if (expectation.text == "none" || shown.popup.empty())
        return expectation.text == "none" && shown.popup.empty();
    return shown.popup == expectation.text || shown.popupText.find(expectation.text) != std::string::npos;
}

// It has ended, and the one that was started in its place has reported.
bool Look::crashMatches()
{
    if (desk.witness->crashes() == 0 || desk.display->state() != Display::State::Running)
        return false;
    desk.witness->forgiveCrashes();
    return true;
}

std::string Look::seenWrites() const
{
    std::string seen;
    for (const Witness::Noted& write : desk.witness->writes) {
        if (write.number > mark() && !write.used && !write.isExpression && write.text == expectation.key)
            seen = describeValue(write.value);
    }
    return seen.empty() ? "there was none" : "the last one was " + seen;
}

std::string Look::seenPointing() const
{
    std::string seen;
    for (const Witness::Noted& command : desk.witness->pointing) {
        if (command.number > mark() && !command.used)
            seen = command.text;
    }
    return seen.empty() ? "there was no command" : "the last command was " + seen;
}

std::string Look::failure() const
{
    const std::string limit = " within " + describeSeconds(expectation.seconds) + ", ";
    const Shown* shown = desk.witness ? &desk.witness->shown() : nullptr;
    auto nothing = [](const std::string& text) { return text.empty() ? std::string("nothing") : text; };
    switch (expectation.kind) {
    case Expectation::Kind::Value: {
        const std::optional<Value> value = desk.terminal.get(expectation.key);
        return "expected " + expectation.key + " = " + expectation.value.describe() + limit + "it is " +
               (value ? describeValue(*value) : std::string("absent"));
    }
    case Expectation::Kind::Write:
        return "expected a write of " + expectation.key + " = " + expectation.value.describe() + limit +
               seenWrites();
    case Expectation::Kind::Pointing:
        return "expected the pointing command " + expectation.text + limit + seenPointing();
    case Expectation::Kind::Log:
        return "expected a log line with \"" + expectation.text + "\"" + limit + "there was none";
    case Expectation::Kind::Screen:
        return "expected the screen " + expectation.text + limit + "it is " + nothing(shown->screen);
    case Expectation::Kind::Status:
        return "expected the status \"" + expectation.text + "\"" + limit + "it is \"" + shown->status + "\"";
    case Expectation::Kind::Live:
        return "expected the display to show the terminal's state" + limit + "it shows \"" + shown->status +
               "\"";
    case Expectation::Kind::Popup:
        return "expected the message " + expectation.text + limit + "it is " + nothing(shown->popup);
    case Expectation::Kind::Crash:
        return "expected the display to end and to be started again" + limit + "it did not";
    }
    return std::string();
}

class Expect : public PendingCommand {
public:
    Expect(Console& console, const Expectation& expectation)
        : console(console), desk(console.desk()), expectation(expectation), look(console, expectation),
          limit(desk.loop), again(desk.loop)
    {
        changeListener = desk.terminal.listenToChanges([this](const std::vector<Write>&) { tryAgain(); });
        if (desk.witness)
            witnessListener = desk.witness->listen([this] { tryAgain(); });
        if (expectation.kind == Expectation::Kind::Crash)
            again.every(LookAgain, [this] { tryAgain(); });
        limit.once(static_cast<uint32_t>(expectation.seconds * 1000 * desk.patience + 1),
                   [this] { giveUp(); });
    }
    ~Expect() override { stopListening(); }

private:
    void tryAgain()
    {
        if (over || !look.isMet())
            return;
        stopListening();
        console.finish(CommandDone);
    }
    void giveUp()
    {
        stopListening();
        console.finish(look.isMetLate() ? static_cast<int>(CommandDone)
                                        : console.fail("%s", look.failure().c_str()));
    }
    void stopListening()
    {
        if (over)
            return;
        over = true;
        limit.stop();
        again.stop();
        desk.terminal.forget(changeListener);
        if (desk.witness)
            desk.witness->forget(witnessListener);
    }

    Console& console;
    Desk& desk;
    const Expectation expectation;
    Look look;
    Timer limit;
    Timer again;
    uint64_t changeListener = 0;
    uint64_t witnessListener = 0;
    bool over = false;
};

int expect(Console& console, const Words& arguments)
{
    Expectation expectation;
    std::string error;
    if (!expectation.parse(arguments, &error))
        return console.fail("%s", error.c_str());
    if (expectation.kind != Expectation::Kind::Value && !console.desk().witness)
        return console.fail("nobody watches the bus and the display here");
    if (expectation.isOfDisplay() && !console.desk().display)
        return console.fail("there is no display");
    if (Look(console, expectation).isMet())
        return CommandDone;
    return console.later(std::make_unique<Expect>(console, expectation));
}

} // namespace

const ConsoleCommands& waitCommands()
{
    static const ConsoleCommands commands = {
        {"wait", "SECONDS", "let time pass, of the terminal: shorter with --speed", wait},
        {"pause", "SECONDS", "let time pass, of the user: always the same", pause},
        {"say", "TEXT", "print the text", say},
        {"expect", "KEY VALUE [within SECONDS]",
         "wait until the key has the value: int:5, string:a, 30..40, >30, absent, any, or as it is", expect},
        {"expect", "write KEY VALUE [within SECONDS]",
         "a write by a client, since the last command that did something", expect},
        {"expect", "pointing start | stop | cancel [within SECONDS]", "a command of the display", expect},
        {"expect", "screen NAME [within SECONDS]",
         "what is shown: status, action, menu, pointing, antenna, battery, enter-pin or popup", expect},
        {"expect", "status TEXT [within SECONDS]", "the text of the status screen", expect},
        {"expect", "live [within SECONDS]", "the status screen shows the state of the terminal", expect},
        {"expect", "popup TEXT [within SECONDS]",
         "the message that is shown, by its name or a part of its text; none for none", expect},
        {"expect", "log TEXT [within SECONDS]",
         "a line of the display's log, since the last command that did something", expect},
        {"expect", "crash [within SECONDS]", "the display ends by itself, and is there again", expect},
    };
    return commands;
}

} // namespace sim
