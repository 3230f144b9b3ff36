// messages, record and replay: what the bus carries.
#include "sim/console/commands.h"

#include "sim/recording.h"
#include "sim/traffic.h"

#include <algorithm>
#include <map>

namespace sim {

namespace {

// --- messages

constexpr size_t MaxLine = 300;     // bytes
constexpr size_t MaxPerSecond = 50; // lines
constexpr uint32_t Second = 1000;   // ms

// Prints messages behind the prompt of a console, until it is ended or the console goes.
class MessageWatch : public PendingCommand {
public:
    MessageWatch(Console& console, std::optional<KeyExpression> filter)
        : console(console), filter(std::move(filter)), timer(console.desk().loop)
    {
        all()[&console] = this;
        listener =
            console.desk().terminal.listenToTraffic([this](const Traffic& traffic) { onTraffic(traffic); });
        timer.every(Second, [this] { nextSecond(); });
    }
    ~MessageWatch() override { end(); }
    // The object stays with its console, and is silent.
    void end()
    {
        if (!listener)
            return;
        console.desk().terminal.forget(listener);
        listener = 0;
        timer.stop();
        if (all()[&console] == this)
            all().erase(&console);
    }
    static MessageWatch* of(Console& console)
    {
        auto found = all().find(&console);
        return found == all().end() ? nullptr : found->second;
    }

private:
    // Consoles live on the thread of their terminal, and so do these.
    static std::map<Console*, MessageWatch*>& all()
    {
        static thread_local std::map<Console*, MessageWatch*> watches;
        return watches;
    }

    bool isWanted(const Traffic& traffic) const
    {
        if (!filter || filter->matches(std::string(traffic.name)))
            return true;
        std::vector<std::string> keys = keysOf(traffic.header.type, traffic.name, traffic.data);
        return std::any_of(keys.begin(), keys.end(),
                           [this](const std::string& key) { return filter->matches(key); });
    }
    void onTraffic(const Traffic& traffic)
    {
        if (!isWanted(traffic))
            return;
        if (++count <= MaxPerSecond)
            console.tell(describe(traffic, MaxLine));
    }
    void nextSecond()
    {
        if (count > MaxPerSecond)
            console.tell(std::to_string(count - MaxPerSecond) + " messages left out");
        count = 0;
    }

    Console& console;
    std::optional<KeyExpression> filter;
    Timer timer;
    uint64_t listener = 0;
    size_t count = 0; // in this second
};

int messages(Console& console, const Words& words)
{
    if (words.size() > 1)
        return CommandMisused;
    MessageWatch* watch = MessageWatch::of(console);
    if (words.size() == 1 && words[0] == "off") {
        if (!watch)
            return console.fail("no messages are printed");
        watch->end();
        return CommandDone;
    }
    std::optional<KeyExpression> filter;
    if (!words.empty()) {
        filter = KeyExpression::compile(words[0]);
        if (!filter)
            return console.fail("bad expression %s", words[0].c_str());
    }
    if (watch)
        watch->end();
    console.keep(std::make_unique<MessageWatch>(console, std::move(filter)));
    return CommandDone;
}

// --- record

int record(Console& console, const Words& words)
{
    Recorder& recorder = console.desk().terminal.recorder();
    std::string error;
    if (words.size() > 1)
        return CommandMisused;
    if (words.empty()) {
        if (recorder.isRecording())
            console.print("recording to %s: %llu messages\n", recorder.fileName().c_str(),
                          static_cast<unsigned long long>(recorder.messages()));
        else
            console.print("not recording\n");
        return CommandDone;
    }
    if (words[0] != "off")
        return recorder.begin(words[0], &error) ? static_cast<int>(CommandDone)
                                                : console.fail("%s", error.c_str());
    if (!recorder.isRecording())
        return console.fail("nothing is recorded");
    return recorder.end(&error) ? static_cast<int>(CommandDone) : console.fail("%s", error.c_str());
}

// --- replay

class ReplayCommand : public PendingCommand {
public:
    ReplayCommand(Console& console, Recording recording, uint32_t speed)
        : replay(console.desk().terminal, std::move(recording), speed,
                 [&console](const Replay::Result& result) { tellResult(console, result); })
    {
    }

private:
    static void tellResult(Console& console, const Replay::Result& result)
    {
        for (const std::string& line : replayReport(result))
            console.print("%s\n", line.c_str());
        console.finish(result.cameAgain == result.expected
                           ? static_cast<int>(CommandDone)
                           : console.fail("the clients did not write what they had written"));
    }

    Replay replay;
};

int replay(Console& console, const Words& words)
{
    int64_t speed = 1;
    if (words.empty() || words.size() > 2 ||
        (words.size() == 2 && !parseNumber(words[1], 0, Replay::MaxSpeed, &speed)))
        return CommandMisused;
    Recording recording;
    std::string error;
    if (!loadRecording(words[0], &recording, &error))
        return console.fail("%s", error.c_str());
    if (!console.desk().terminal.loop())
        return console.fail("the terminal is stopped");
    return console.later(
        std::make_unique<ReplayCommand>(console, std::move(recording), static_cast<uint32_t>(speed)));
}

} // namespace

const ConsoleCommands& trafficCommands()
{
    static const ConsoleCommands commands = {
        {"messages", "[EXPRESSION]",
         "print what the bus carries, each behind an asterisk: all, or names and keys that match whole",
         messages},
        {"messages", "off", "print no more messages", messages},
        {"record", "", "tell whether a recording is made", record},
        {"record", "FILE", "record everything that the bus carries", record},
        {"record", "off", "end the recording", record},
        {"replay", "FILE [SPEED]",
         "make a recording's changes again, so many times faster, 0 as fast as can be; tell what clients "
         "write",
         replay},
    };
    return commands;
}

} // namespace sim
