// Giving a recording again, and telling how far the clients did the same.
#include "sim/recording.h"

#include "sim/database_bus.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace sim {

static const char ChangePrefix[] = "config.change.";
static constexpr size_t MaxInTurn = 200;    // events, so that clients can answer in between
static constexpr uint32_t ShortestTurn = 1; // ms

static bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

// --- What clients write

std::string clientWrite(uint8_t type, std::string_view name, std::string_view data)
{
    struct Row {
        const char* prefix;
        uint8_t type;
    };
    static const Row writes[] = {
        {"config.write.", CBUS_TYPE_SIGNAL},   {"config.writev", CBUS_TYPE_SIGNAL},
        {"config.delm.", CBUS_TYPE_SIGNAL},    {"config.sync", CBUS_TYPE_SIGNAL},
        {"config.modifyv", CBUS_TYPE_REQUEST}, {"config.factory_reset", CBUS_TYPE_REQUEST},
    };
    // What goes to others than the database and the bus itself.
    bool isWrite = type == CBUS_TYPE_SIGNAL && !startsWith(name, "config.") && !startsWith(name, "cbus.");
    for (const Row& row : writes)
        isWrite = isWrite || (type == row.type && startsWith(name, row.prefix));
    if (!isWrite || name == DeskModify)
        return std::string();
    std::string text = describeData(type, name, data, false);
    return std::string(name) + (text.empty() ? "" : " ") + text;
}

// The longest common part, by the usual table over what is left when beginning and end, which mostly are the
// same, are taken off.
Replay::Result compareWrites(const std::vector<std::string>& expected, const std::vector<std::string>& seen)
{
    static constexpr size_t MaxTable = 16 * 1024 * 1024; // of its fields
    Replay::Result result;
    result.expected = expected.size();
    size_t shorter = std::min(expected.size(), seen.size());
    size_t head = 0;
    while (head < shorter && expected[head] == seen[head])
        head++;
    size_t tail = 0;
    while (tail < shorter - head && expected[expected.size() - 1 - tail] == seen[seen.size() - 1 - tail])
        tail++;
    const size_t rows = expected.size() - head - tail;
    const size_t columns = seen.size() - head - tail;
    result.cameAgain = head + tail;
    result.missingAt = head;
    result.compared = (rows + 1) <= MaxTable / (columns + 1) && std::min(rows, columns) < UINT16_MAX;
    if (result.compared && rows > 0) {
        // longest[r][c]: of what is left from row r and column c on
        std::vector<uint16_t> longest((rows + 1) * (columns + 1), 0);
        auto at = [&](size_t row, size_t column) -> uint16_t& {
            return longest[row * (columns + 1) + column];
        };
        for (size_t row = rows; row-- > 0;) {
            for (size_t column = columns; column-- > 0;)
                at(row, column) = expected[head + row] == seen[head + column]
                                      ? static_cast<uint16_t>(at(row + 1, column + 1) + 1)
                                      : std::max(at(row + 1, column), at(row, column + 1));
        }
        result.cameAgain += at(0, 0);
        size_t row = 0;
        for (size_t column = 0; row < rows && column < columns; column++) {
            if (expected[head + row] == seen[head + column])
                row++;
            else if (at(row + 1, column) > at(row, column + 1))
                break;
        }
        result.missingAt = head + row;
    }
    if (result.cameAgain < result.expected && result.missingAt < expected.size())
        result.firstMissing = expected[result.missingAt];
    result.others = seen.size() - result.cameAgain;
    return result;
}

std::vector<std::string> replayReport(const Replay::Result& result)
{
    std::vector<std::string> lines;
    lines.push_back(std::to_string(result.cameAgain) + " of " + std::to_string(result.expected) +
                    " writes of clients came again, and " + std::to_string(result.others) + " others" +
                    (result.compared ? "" : " (too many differ to compare them all)"));
    if (!result.firstMissing.empty())
        lines.push_back("the first that did not: " + result.firstMissing);
    return lines;
}

// --- The run

Replay::Replay(Terminal& terminal, Recording recorded, uint32_t speed,
               std::function<void(const Result&)> done, uint32_t patience)
    : terminal(terminal), recording(std::move(recorded)), speed(std::min(speed, MaxSpeed)),
      patience(patience), done(std::move(done)), timer(terminal.loop())
{
    for (const Recording::Event& event : recording.events) {
        const TrafficRecord& message = event.message;
        if (message.way != Way::From)
            continue;
        std::string write = clientWrite(message.type, message.name, message.data);
        if (write.empty())
            continue;
        expected.push_back(std::move(write));
        expectedTimes.push_back(event.time);
    }
    // Not here and now: the caller may be one of the processes that are to be silent.
    timer.once(ShortestTurn, [this] { begin(); });
}

Replay::~Replay()
{
    if (listener)
        terminal.forget(listener);
    if (muted)
        terminal.setBehaviourMuted(false);
}

void Replay::begin()
{
    muted = true;
    terminal.setBehaviourMuted(true);
    listener = terminal.listenToTraffic([this](const Traffic& traffic) { onTraffic(traffic); });
    terminal.replaceAll(recording.values);
    someoneSpoke = terminal.clientCount() > 0;
    begun = fdloop_time_ms();
    advance();
}

uint32_t Replay::scaled(uint32_t time) const
{
    return speed == 0 ? 0 : time / speed;
}

// ms from now until the recorded time; 0 if it is over.
uint32_t Replay::due(uint32_t time) const
{
    uint32_t passed = fdloop_time_ms() - begun;
    return scaled(time) > passed ? scaled(time) - passed : 0;
}

void Replay::advance()
{
    for (size_t count = 0; next < recording.events.size(); next++, count++) {
        const Recording::Event& event = recording.events[next];
        if (waitsForClient(event))
            return;
        uint32_t left = count == MaxInTurn ? ShortestTurn : due(event.time);
        if (left > 0) {
            timer.once(left, [this] { advance(); });
            return;
        }
        give(event.message);
    }
    uint32_t left = due(recording.end);
    if (left > 0)
        timer.once(left, [this] { waitForRest(); });
    else
        waitForRest();
}

bool Replay::waitsForClient(const Recording::Event& event)
{
    if (someoneSpoke || event.message.way != Way::From)
        return false;
    waitsToSpeak = true;
    timer.once(ClientPatience, [this] { resume(); });
    return true;
}

void Replay::resume()
{
    waitsToSpeak = false;
    someoneSpoke = true;
    // From here on as if it had taken just as long as then.
    begun = fdloop_time_ms() - scaled(recording.events[next].time);
    advance();
}

void Replay::give(const TrafficRecord& message)
{
    // What clients did is theirs to do again, and answers are the database's.
    if (message.way != Way::All || message.client != 0)
        return;
    std::vector<Write> writes;
    if (!startsWith(message.name, ChangePrefix)) {
        terminal.sendSignal(message.name, message.data);
    } else if (readRecords(message.data, &writes)) {
        std::vector<std::pair<std::string, Value>> values;
        for (const Write& write : writes)
            values.emplace_back(write.key, write.value);
        terminal.setAll(values);
    }
}

void Replay::onTraffic(const Traffic& traffic)
{
    if (traffic.way != Way::From)
        return;
    if (waitsToSpeak)
        timer.once(ShortestTurn, [this] { resume(); });
    std::string write = clientWrite(traffic.header.type, traffic.name, traffic.data);
    if (write.empty())
        return;
    seen.push_back(std::move(write));
    if (atEnd && isComplete())
        timer.once(ShortestTurn, [this] { finish(); });
}

bool Replay::isComplete() const
{
    return seen.size() >= expected.size() && compareWrites(expected, seen).cameAgain == expected.size();
}

// What the clients make of the last changes may still come.
void Replay::waitForRest()
{
    atEnd = true;
    timer.once(isComplete() ? ShortestTurn : patience, [this] { finish(); });
}

void Replay::finish()
{
    terminal.forget(std::exchange(listener, 0));
    muted = false;
    terminal.setBehaviourMuted(false);
    Result result = compareWrites(expected, seen);
    if (!result.firstMissing.empty()) {
        char time[32];
        snprintf(time, sizeof time, " (at %.3f s)", expectedTimes[result.missingAt] / 1000.0);
        result.firstMissing += time;
    }
    done(result);
}

} // namespace sim
