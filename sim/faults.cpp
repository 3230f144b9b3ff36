// The faults, each a few lines. The broken frames are in broken_frames.cpp.
#include "sim/faults.h"

#include "runtime/config_client_api.h"

#include <algorithm>
#include <climits>
#include <cstdio>

namespace sim {

static constexpr char FloodPrefix[] = "ram.desk.flood";
static constexpr size_t FloodKeys = 100;   // that come and go, or that change
static constexpr uint32_t FloodStep = 10;  // ms between the changes of one turn and the next
static constexpr uint32_t MaxInStep = 500; // changes in one turn, so that clients get their answers
static constexpr uint32_t FloodAtOnce = 1; // ms where no rate is given

const std::vector<FaultStatus>& faultStatuses()
{
    static const std::vector<FaultStatus> statuses = {
        {VX_CONFIG_ERR, "err"},
        {VX_CONFIG_DB_ERR, "db_err"},
        {VX_CONFIG_DB_FULL, "db_full"},
        {VX_CONFIG_READONLY, "readonly"},
        {VX_CONFIG_NO_RECORD, "no_record"},
        {VX_CONFIG_WRONG_TYPE, "wrong_type"},
        {VX_CONFIG_BUFFER_TOO_SMALL, "buffer_too_small"},
        {VX_CONFIG_VERIFY_FAIL, "verify_fail"},
    };
    return statuses;
}

Faults::Faults(fdloop_t* loop, Database& database, BusServer& server, Hooks hooks)
    : database(database), server(server), hooks(std::move(hooks)), lateTimer(loop), stopTimer(loop),
      floodTimer(loop)
{
}

// --- Late

// The clock wraps; times that are compared lie close together.
static int32_t until(uint32_t time)
{
    return static_cast<int32_t>(time - fdloop_time_ms());
}

void Faults::delay(uint32_t milliseconds)
{
    delayed = std::min(milliseconds, MaxDelay);
    if (delayed == 0) {
        for (Late& message : late)
            message.due = fdloop_time_ms();
        releaseDue();
    }
    hooks.changed();
}

bool Faults::takes(const BusFrame& frame)
{
    if (releasing)
        return false;
    if (cutsNow(frame)) {
        cut(0);
        hooks.changed();
        return true;
    }
    if (delayed == 0 && late.empty())
        return false;
    keep(frame);
    return true;
}

void Faults::keep(const BusFrame& frame)
{
    late.push_back({frame.header, frame.client, std::string(frame.name), std::string(frame.data),
                    fdloop_time_ms() + delayed});
    waiting += frame.name.size() + frame.data.size() + sizeof(Late);
    updateHeld();
    if (!lateTimer.isRunning())
        lateTimer.once(std::max(1, until(late.front().due)), [this] { releaseDue(); });
}

void Faults::releaseDue()
{
    // One that is dealt with may end the delay, which comes here again.
    if (releasing)
        return;
    releasing = true;
    while (!late.empty() && until(late.front().due) <= 0) {
        Late message = std::move(late.front());
        late.pop_front();
        waiting -= message.name.size() + message.data.size() + sizeof(Late);
        hooks.deliver({message.client, message.header, message.name, message.data});
    }
    releasing = false;
    updateHeld();
    lateTimer.stop();
    if (late.empty())
        hooks.changed();
    else
        lateTimer.once(std::max(1, until(late.front().due)), [this] { releaseDue(); });
}

// --- Not at all

void Faults::updateHeld()
{
    server.setHeld(stopped || waiting > MaxWaiting);
}

void Faults::stop(uint32_t milliseconds)
{
    stopped = true;
    stopTimer.stop();
    stopEnds = fdloop_time_ms() + milliseconds;
    if (milliseconds > 0)
        stopTimer.once(milliseconds, [this] { go(); });
    updateHeld();
}

void Faults::go()
{
    stopped = false;
    stopTimer.stop();
    updateHeld();
}

bool Faults::setDeaf(bool isDeaf, std::string* error)
{
    if (!server.setDeaf(isDeaf, error))
        return false;
    deaf = isDeaf;
    return true;
}

// --- Wrong

bool Faults::answer(int32_t status, const std::string& expression)
{
    Answer wrong{status, expression, std::nullopt};
    if (!expression.empty()) {
        wrong.expression = KeyExpression::compile(expression);
        if (!wrong.expression)
            return false;
    }
    answers.erase(std::remove_if(answers.begin(), answers.end(),
                                 [&](const Answer& other) { return other.text == expression; }),
                  answers.end());
    if (answers.size() >= MaxAnswers)
        return false;
    answers.push_back(std::move(wrong));
    return true;
}

// Of several that fit the last given counts.
int32_t Faults::statusOf(const std::string& key) const
{
    for (auto answer = answers.rbegin(); answer != answers.rend(); ++answer) {
        if (!answer->expression || (!key.empty() && answer->expression->matches(key)))
            return answer->status;
    }
    return 0;
}

// --- Cut

size_t Faults::cut(uint64_t client)
{
    size_t count = 0;
    for (uint64_t connected : server.clients()) {
        if (client != 0 && client != connected)
            continue;
        server.closeClient(connected, "connections are cut");
        count++;
    }
    return count;
}

void Faults::cutAfter(uint32_t messages)
{
    cutting = true;
    untilCut = messages;
    hooks.changed();
}

bool Faults::cutAt(const std::string& expression)
{
    std::optional<KeyExpression> compiled = KeyExpression::compile(expression);
    if (!compiled)
        return false;
    cutPlace = compiled;
    cutPlaceText = expression;
    hooks.changed();
    return true;
}

// Each ends with the cut that it makes.
bool Faults::cutsNow(const BusFrame& frame)
{
    if (cutting && untilCut-- == 0) {
        cutting = false;
        return true;
    }
    if (cutPlace && cutPlace->matches(std::string(frame.name))) {
        cutPlace.reset();
        return true;
    }
    return false;
}

std::optional<size_t> Faults::sendFrame(const std::string& kind, uint64_t client)
{
    const std::vector<BrokenFrame>& kinds = brokenFrames();
    auto found = std::find_if(kinds.begin(), kinds.end(),
                              [&](const BrokenFrame& frame) { return kind == frame.kind; });
    if (found == kinds.end())
        return std::nullopt;
    size_t count = 0;
    for (uint64_t connected : server.clients()) {
        if (client != 0 && client != connected)
            continue;
        server.sendRaw(connected, found->bytes());
        if (found->ends)
            server.closeAfterWriting(connected);
        count++;
    }
    return count;
}

// --- Floods

void Faults::flood(uint32_t changes, uint32_t perSecond, const std::string& prefix)
{
    endFlood();
    running = Flood();
    running.wanted = std::min(changes, MaxFlood);
    running.perSecond = perSecond;
    running.begun = fdloop_time_ms();
    running.prefix = prefix.empty() ? FloodPrefix : prefix;
    for (const std::string& key : database.keysWithPrefix(running.prefix)) {
        if (running.keys.size() < FloodKeys)
            running.keys.push_back({key, *database.find(key), *database.find(key)});
    }
    if (running.keys.empty()) {
        for (size_t at = 1; at <= FloodKeys; at++)
            running.keys.push_back({running.prefix + "." + std::to_string(at), Value(), Value()});
    }
    if (running.wanted > 0)
        floodTimer.every(perSecond > 0 ? FloodStep : FloodAtOnce, [this] { floodOn(); });
}

void Faults::floodOn()
{
    uint64_t flood = floods;
    uint64_t due = running.made + MaxInStep;
    if (running.perSecond > 0) {
        uint64_t elapsed = fdloop_time_ms() - running.begun;
        due = std::min<uint64_t>(due, elapsed * running.perSecond / 1000);
    }
    due = std::min<uint64_t>(due, running.wanted);
    while (flood == floods && running.made < due)
        changeOne(); // whoever hears of it may end the flood
    if (flood == floods && running.made == running.wanted)
        endFlood();
}

// Something else of the same type.
static Value otherThan(const Value& value, uint32_t number)
{
    switch (value.type) {
    case Type::Int:
        return Value::integer(value.toInt() == INT_MAX ? INT_MIN : value.toInt() + 1);
    case Type::String:
        return Value::text(value.toText() + "~");
    case Type::Blob:
        return Value::blob(value.bytes + '~');
    case Type::None:
        break;
    }
    return Value::integer(static_cast<int32_t>(number));
}

void Faults::changeOne()
{
    Flood::Key& key = running.keys[running.made % running.keys.size()];
    const Value* found = database.find(key.name);
    Value now = found ? *found : Value();
    if (now != key.written && now != key.before)
        key.before = now; // somebody else has written it
    running.made++;
    bool comesAndGoes = key.before.type == Type::None;
    key.written = comesAndGoes || now == key.before ? otherThan(key.before, running.made) : key.before;
    database.apply({{key.name, key.written}});
}

void Faults::endFlood()
{
    floods++;
    floodTimer.stop();
    std::vector<Write> writes;
    for (const Flood::Key& key : running.keys) {
        const Value* now = database.find(key.name);
        if (now && *now == key.written)
            writes.push_back({key.name, key.before});
    }
    running = Flood();
    database.apply(writes);
}

// --- All of them

bool Faults::off(std::string* error)
{
    cutting = false;
    cutPlace.reset();
    answers.clear();
    go();
    delay(0);
    endFlood();
    return setDeaf(false, error);
}

static std::string seconds(int32_t milliseconds)
{
    char text[32];
    snprintf(text, sizeof text, "%.1f", milliseconds / 1000.0);
    return text;
}

std::vector<std::string> Faults::list() const
{
    std::vector<std::string> lines;
    if (delayed > 0)
        lines.push_back("delay " + std::to_string(delayed) +
                        (late.empty() ? "" : ", " + std::to_string(late.size()) + " messages wait"));
    if (stopped)
        lines.push_back(stopTimer.isRunning() ? "stop, for " + seconds(until(stopEnds)) + " s more" : "stop");
    if (deaf)
        lines.push_back("deaf");
    if (cutting)
        lines.push_back("cut after " + std::to_string(untilCut));
    if (cutPlace)
        lines.push_back("cut at " + cutPlaceText);
    for (const Answer& answer : answers)
        lines.push_back("answer " + std::to_string(answer.status) + (answer.text.empty() ? "" : " ") +
                        answer.text);
    if (floodTimer.isRunning())
        lines.push_back("flood of " + running.prefix + ": " + std::to_string(running.made) + " of " +
                        std::to_string(running.wanted) + " changes");
    return lines;
}

} // namespace sim
