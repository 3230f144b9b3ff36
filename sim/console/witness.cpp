// Takes down what clients write and what the display logs.
#include "sim/console/witness.h"

#include "sim/display/display.h"
#include "sim/listeners.h"
#include "sim/traffic.h"

#include "runtime/config_client_api.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <syslog.h>

namespace sim {

namespace {

const int ActiveBundles = 16; // the number of the status text
const char PointingSignal[] = "bp_ctrl.pointing";

// The commands that do nothing to the terminal.
const char* const LookingCommands[] = {"wait", "pause",    "say",     "expect",  "get",
                                       "list", "watch",    "unwatch", "help",    "picture",
                                       "log",  "messages", "status",  "complete"};

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

// The text between the two, if the line has the first; up to the end if it has not the second.
bool between(const std::string& line, const char* before, const char* behind, std::string* text)
{
    const size_t begin = line.find(before);
    if (begin == std::string::npos)
        return false;
    const size_t from = begin + strlen(before);
    const size_t to = line.find(behind, from);
    *text = line.substr(from, to == std::string::npos ? to : to - from);
    return true;
}

// A log line, "<priority> ident: text". One without a head is all text, of the lowest priority.
struct LogLine {
    explicit LogLine(const std::string& line) : text(line)
    {
        const size_t head = line.find("> ");
        const size_t colon = line.find(": ", head);
        if (line.empty() || line[0] != '<' || colon == std::string::npos)
            return;
        priority = atoi(line.c_str() + 1);
        text = line.substr(colon + 2);
    }
    int priority = LOG_DEBUG;
    std::string text;
};

// The fixed part of a write: status, type, length, each of 4 bytes in host order; then the value.
bool readWrite(std::string_view data, Value* value)
{
    uint32_t head[3];
    if (data.size() < sizeof head)
        return false;
    memcpy(head, data.data(), sizeof head);
    if (data.size() - sizeof head < head[2])
        return false;
    value->type = head[1] <= 3 ? static_cast<Type>(head[1]) : Type::None;
    value->bytes = std::string(data.substr(sizeof head, head[2]));
    return true;
}

} // namespace

bool isLooking(const std::string& command)
{
    return std::find(std::begin(LookingCommands), std::end(LookingCommands), command) !=
           std::end(LookingCommands);
}

Witness::Witness(Terminal& terminal, Display* display) : terminal(terminal), panel(display)
{
    trafficListener = terminal.listenToTraffic([this](const Traffic& message) { noteMessage(message); });
    if (panel)
        logListener = panel->listenToLog([this](const std::string& line) { noteLog(line); });
}

Witness::~Witness()
{
    terminal.forget(trafficListener);
    if (panel)
        panel->forget(logListener);
}

unsigned Witness::crashes() const
{
    return panel ? panel->restarts() - forgiven : 0;
}

void Witness::forgiveCrashes()
{
    forgiven += crashes();
}

// --- Sessions

void Witness::lineBegins(const Console& session, const std::string& line)
{
    Words words;
    std::string error;
    if (splitLine(line, &words, &error) && !words.empty() && words[0][0] != '#' && !isLooking(words[0]))
        marks[&session] = count;
}

uint64_t Witness::mark(const Console& session) const
{
    auto found = marks.find(&session);
    return found == marks.end() ? 0 : found->second;
}

void Witness::sessionEnds(const Console& session)
{
    marks.erase(&session);
}

// --- Taking down

void Witness::note(Notes* notes, Noted noted)
{
    noted.number = ++count;
    notes->push_back(std::move(noted));
    if (notes->size() > MaxKept)
        notes->pop_front();
    tellListeners(listeners);
}

void Witness::noteWrite(const std::string& key, const Value& value, bool isExpression)
{
    Noted noted;
    noted.text = key;
    noted.value = value;
    noted.isExpression = isExpression;
    note(&writes, noted);
}

void Witness::noteMessage(const Traffic& message)
{
    if (message.way != Way::From)
        return;
    const std::string name(message.name);
    const bool isSignal = message.header.type == CBUS_TYPE_SIGNAL;
    const bool isRequest = message.header.type == CBUS_TYPE_REQUEST;
    if (isSignal && name == PointingSignal) {
        Noted noted;
        noted.text = std::string(message.data.substr(0, message.data.find('\0')));
        note(&pointing, noted);
    } else if (isSignal && beginsWith(name, "config.write.")) {
        Value value;
        if (readWrite(message.data, &value))
            noteWrite(name.substr(strlen("config.write.")), value);
    } else if (isSignal && beginsWith(name, "config.delm.")) {
        noteWrite(name.substr(strlen("config.delm.")), Value(), true);
    } else if ((isSignal && beginsWith(name, "config.writev")) ||
               (isRequest && beginsWith(name, "config.modifyv"))) {
        std::vector<Write> records;
        if (readRecords(message.data, &records)) {
            for (const Write& write : records)
                noteWrite(write.key, write.value);
        }
    }
}

// A new process has shown nothing yet, whatever the one before it did.
const Shown& Witness::shown()
{
    if (panel && panel->pid() != shownBy) {
        shownBy = panel->pid();
        display = Shown();
    }
    return display;
}

// The lines by which the display tells what it shows. While a message stands, any other screen but that of
// pointing waits behind it.
void Witness::noteLog(const std::string& line)
{
    shown();
    const LogLine parts(line);
    Noted noted;
    noted.text = parts.text;
    std::string text;
    if (between(line, "Window::ShowScreen(screenId=", "), addToHistory", &text)) {
        const std::string screen = text.substr(std::min(text.size(), text.find('(') + 1));
        const bool waits = display.screen == "SCREEN_POPUP" && !display.popup.empty() &&
                           screen != "SCREEN_POPUP" && screen != "SCREEN_POINTING";
        if (!waits)
            display.screen = screen;
    } else if (between(line, "Successfully translated statusTextId=", "\n", &text)) {
        const size_t to = text.find(" to ");
        display.status = to == std::string::npos ? text : text.substr(to + 4);
        display.statusId = atoi(text.c_str());
    } else if (between(line, "eventList[0]=", ", eventId=", &text)) {
        display.popup = text;
        between(line, ", text=", "\n", &display.popupText);
    } else if (line.find("showNextEvent(): eventList is empty.") != std::string::npos) {
        display.popup.clear();
        display.popupText.clear();
    } else if (line.find("About to emit signal bundleStateChanged") != std::string::npos) {
        display.status.clear(); // what stands there while a bundle runs is not told
        display.statusId = ActiveBundles;
    } else if (line.find("About to run fdloop_loop") != std::string::npos) {
        display.listens = true;
    } else if (line.find("Window::show(): About to show") != std::string::npos) {
        display.window = true;
    } else if (line.find("main(): Done creating window") != std::string::npos) {
        display.complete = true;
    }
    if (parts.priority <= LOG_ERR)
        graveLine = noted.text;
    note(&log, noted);
}

// --- Listeners

uint64_t Witness::listen(std::function<void()> listener)
{
    listeners[++lastListener] = std::move(listener);
    return lastListener;
}

void Witness::forget(uint64_t listener)
{
    listeners.erase(listener);
}

} // namespace sim
