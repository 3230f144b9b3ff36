// The alert log: entries are added, changed and cleared. An alert is known by its id and sub-id; the same one
// again takes the place of the old.
#include "sim/command_actor.h"

#include <ctime>
#include <set>

namespace sim {

namespace {

const char LogPrefix[] = "ram.log.alert.";
const char EntryCount[] = "ram.log.alert.latest.entry_count";

constexpr int MaxEntries = 500;

struct Severity {
    const char* name;
    int32_t value;
};
const Severity Severities[] = {{"info", 0}, {"warning", 1}, {"error", 2}, {"fatal", 3}};

bool parseSeverity(const std::string& text, int32_t* severity)
{
    int64_t number = 0;
    for (const Severity& row : Severities) {
        if (text == row.name) {
            *severity = row.value;
            return true;
        }
    }
    if (!parseNumber(text, INT32_MIN, INT32_MAX, &number)) // the log itself has no limits
        return false;
    *severity = static_cast<int32_t>(number);
    return true;
}

bool parseId(const std::string& text, int32_t* id)
{
    int64_t number = 0;
    if (!parseNumber(text, 0, UINT32_MAX, &number))
        return false;
    *id = static_cast<int32_t>(static_cast<uint32_t>(number));
    return true;
}

struct Alert {
    int32_t id = 0;
    int32_t severity = 0;
    int32_t subId = 0;
    int32_t state = 2; // active
    int32_t time = 0;  // seconds since 1970
    std::string text;
};

class AlertActor : public CommandActor {
public:
    explicit AlertActor(const Surroundings& surroundings) : CommandActor(surroundings, "alert") {}

protected:
    std::string carryOut(const Words& words) override
    {
        Alert alert;
        if (words[0] == "add") {
            std::string problem = parse(words, &alert);
            return problem.empty() ? add(alert) : problem;
        }
        if (words[0] != "clear" || words.size() > 3)
            return "add ID SEVERITY [FIELD=N ...] [TEXT], or clear [ID [sub_id=N]]";
        if (words.size() > 1 && !parseId(words[1], &alert.id))
            return "an id is a number, as 0x10205, not " + words[1];
        if (words.size() > 2 && (words[2].compare(0, 7, "sub_id=") != 0 || !parseField(words[2], &alert)))
            return "a sub-id is told as sub_id=2, not " + words[2];
        return clear(static_cast<int>(words.size()), alert);
    }

private:
    static std::string parse(const Words& words, Alert* alert)
    {
        if (words.size() < 3)
            return "an alert has an id and a severity";
        if (!parseId(words[1], &alert->id))
            return "an id is a number, as 0x10205, not " + words[1];
        if (!parseSeverity(words[2], &alert->severity))
            return "a severity is info, warning, error or fatal, not " + words[2];
        alert->time = static_cast<int32_t>(time(nullptr));
        size_t at = 3;
        for (; at < words.size() && parseField(words[at], alert); at++) {
        }
        alert->text = joined(words, at);
        return "";
    }
    static bool parseField(const std::string& word, Alert* alert)
    {
        struct Field {
            const char* name;
            int32_t Alert::*value;
        };
        const Field fields[] = {{"sub_id", &Alert::subId}, {"state", &Alert::state}, {"time", &Alert::time}};
        size_t equals = word.find('=');
        int64_t number = 0;
        if (equals == std::string::npos ||
            !parseNumber(word.substr(equals + 1), INT32_MIN, INT32_MAX, &number))
            return false;
        for (const Field& field : fields) {
            if (word.compare(0, equals, field.name) == 0) {
                alert->*field.value = static_cast<int32_t>(number);
                return true;
            }
        }
        return false;
    }

    std::string add(const Alert& alert)
    {
        int slot = slotOf(alert);
        if (slot < 0)
            return "the log is full";
        int32_t count = terminal.number(EntryCount, 0) + 1;
        const std::string prefix = LogPrefix + std::to_string(slot) + ".";
        terminal.database.apply({
            {prefix + "entry", Value::integer(count)},
            {prefix + "identifier", Value::integer(alert.id)},
            {prefix + "unit_id", Value::integer(0)},
            {prefix + "sub_id", Value::integer(alert.subId)},
            {prefix + "state", Value::integer(alert.state)},
            {prefix + "severity", Value::integer(alert.severity)},
            {prefix + "time", Value::integer(alert.time)},
            {prefix + "shorttext", Value::text(alert.text)},
            {prefix + "info", Value::text("")},
            {EntryCount, Value::integer(count)},
        });
        return "";
    }
    // Where the alert stands already, else the first free place; -1 if there is none.
    int slotOf(const Alert& alert) const
    {
        int free = -1;
        for (int slot = MaxEntries; slot-- > 0;) {
            const std::string prefix = LogPrefix + std::to_string(slot) + ".";
            if (terminal.database.keysWithPrefix(prefix).empty())
                free = slot;
            else if (holds(slot, alert.id) && terminal.number(prefix + "sub_id", 0) == alert.subId)
                return slot;
        }
        return free;
    }
    bool holds(int slot, int32_t id) const
    {
        const Value* value = terminal.database.find(LogPrefix + std::to_string(slot) + ".identifier");
        return value && value->isInt() && value->toInt() == id;
    }
    // By so many words: all, those of the id, the one with the sub-id too.
    std::string clear(int words, const Alert& alert)
    {
        std::vector<Write> writes;
        bool all = words == 1;
        for (int slot = 0; slot < MaxEntries; slot++) {
            if (!all && !holds(slot, alert.id))
                continue;
            if (words == 3 && terminal.number(LogPrefix + std::to_string(slot) + ".sub_id", 0) != alert.subId)
                continue;
            for (const std::string& key :
                 terminal.database.keysWithPrefix(LogPrefix + std::to_string(slot) + "."))
                writes.push_back({key, Value()});
        }
        if (writes.empty())
            return all ? "" : "no such alert";
        // The display reads the log when this changes, whichever way.
        writes.push_back({EntryCount, Value::integer(terminal.number(EntryCount, 0) + 1)});
        terminal.database.apply(writes);
        return "";
    }
};

} // namespace

void addAlertActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<AlertActor>(surroundings));
}

} // namespace sim
