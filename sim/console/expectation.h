// What "expect" can be told, without the waiting: how its words are read, and how a value is compared.
//
// Plain functions without state; any thread.
#ifndef SIM_CONSOLE_EXPECTATION_H
#define SIM_CONSOLE_EXPECTATION_H

#include "sim/command_actor.h"

#include <optional>
#include <string>

namespace sim {

// A value as an expectation tells it: "int:2", "string:two words", "blob:00ff"; 30..40, >30, >=30, <30, <=30
// for numbers; "absent"; "any" for whatever is there; anything else is a number or a text.
class ValuePattern {
public:
    // False with *error where "int:" and the like are followed by something else.
    bool parse(const std::string& text, std::string* error);
    // Null: the key is absent.
    bool matches(const Value* value) const;
    // As it stands in a message: "int 2", "absent", "30..40".
    std::string describe() const;

private:
    bool parseRange(const std::string& text);

    std::string told;
    bool absent = false;
    bool any = false;
    std::optional<Value> exact;
    std::optional<std::pair<int64_t, int64_t>> range; // both ends belong to it
};

struct Expectation {
    enum class Kind { Value, Write, Pointing, Log, Screen, Status, Live, Popup, Crash };

    Kind kind = Kind::Value;
    std::string key;     // of Value and Write
    ValuePattern value;  // of Value and Write
    std::string text;    // of the others
    double seconds = 10; // of the user's time

    // The words behind "expect". False with *error, one line without the command's name.
    bool parse(const Words& words, std::string* error);
    bool isOfDisplay() const { return kind >= Kind::Log; }
};

// Seconds, as 3 or 0.5, up to an hour. False if it is none.
bool parseSeconds(const std::string& text, double* seconds);
// As they stand in a message: "10 s", "0.5 s".
std::string describeSeconds(double seconds);

} // namespace sim

#endif
