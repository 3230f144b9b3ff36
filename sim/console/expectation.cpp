// Reads the words of "expect".
#include "sim/console/expectation.h"

#include "sim/initial_values.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace sim {

namespace {

const int64_t Lowest = std::numeric_limits<int32_t>::min();
const int64_t Highest = std::numeric_limits<int32_t>::max();

bool parseInt(const std::string& text, int64_t* number)
{
    return parseNumber(text, Lowest, std::numeric_limits<uint32_t>::max(), number);
}

// The screens by the names that the display's log has for them.
const char* const ScreenNames[] = {"SCREEN_STATUS",   "SCREEN_POPUP",   "SCREEN_ACTION",  "SCREEN_MENU",
                                   "SCREEN_POINTING", "SCREEN_ANTENNA", "SCREEN_BATTERY", "SCREEN_ENTER_PIN"};

// "enter-pin" and "SCREEN_ENTER_PIN" are the same. Empty if there is no such screen.
std::string screenName(const std::string& told)
{
    std::string name;
    for (char character : told)
        name.push_back(character == '-' ? '_'
                                        : static_cast<char>(toupper(static_cast<unsigned char>(character))));
    if (name.compare(0, 7, "SCREEN_") != 0)
        name = "SCREEN_" + name;
    auto found = std::find(std::begin(ScreenNames), std::end(ScreenNames), name);
    return found == std::end(ScreenNames) ? std::string() : name;
}

const struct {
    const char* word;
    Expectation::Kind kind;
    size_t least; // words behind it
    size_t most;
} Things[] = {
    {"write", Expectation::Kind::Write, 2, 2},
    {"pointing", Expectation::Kind::Pointing, 1, 1},
    {"log", Expectation::Kind::Log, 1, SIZE_MAX - 1}, // a text
    {"screen", Expectation::Kind::Screen, 1, 1},
    {"status", Expectation::Kind::Status, 1, SIZE_MAX - 1},
    {"popup", Expectation::Kind::Popup, 1, SIZE_MAX - 1},
    {"live", Expectation::Kind::Live, 0, 0},
    {"crash", Expectation::Kind::Crash, 0, 0},
};

} // namespace

// --- Values

bool ValuePattern::parse(const std::string& text, std::string* error)
{
    *this = ValuePattern();
    told = text;
    absent = text == "absent";
    any = text == "any";
    if (absent || any)
        return true;
    for (const char* type : {"int:", "string:", "blob:"}) {
        if (text.compare(0, strlen(type), type) != 0)
            continue;
        Value value;
        if (!parseShortValue(text, &value, error))
            return false;
        exact = value;
        return true;
    }
    if (!parseRange(text) && (text[0] == '<' || text[0] == '>')) {
        *error = text + " is no bound: a number comes behind < and >";
        return false;
    }
    return true;
}

bool ValuePattern::parseRange(const std::string& text)
{
    int64_t low = Lowest;
    int64_t high = Highest;
    const size_t dots = text.find("..");
    if (dots != std::string::npos) {
        if (!parseInt(text.substr(0, dots), &low) || !parseInt(text.substr(dots + 2), &high))
            return false;
    } else if (text[0] == '>' || text[0] == '<') {
        const bool inclusive = text.size() > 1 && text[1] == '=';
        int64_t bound = 0;
        if (!parseInt(text.substr(inclusive ? 2 : 1), &bound))
            return false;
        (text[0] == '>' ? low : high) = bound + (inclusive ? 0 : text[0] == '>' ? 1 : -1);
    } else {
        if (!parseInt(text, &low))
            return false;
        // A number above the range of an int is one that was written without its sign, as causes are.
        low = static_cast<int32_t>(low);
        high = low;
    }
    range = {low, high};
    return true;
}

bool ValuePattern::matches(const Value* value) const
{
    if (!value || value->type == Type::None || value->bytes.empty())
        return absent;
    if (absent)
        return false;
    if (any)
        return true;
    if (exact)
        return *value == *exact;
    if (range && value->isInt())
        return value->toInt() >= range->first && value->toInt() <= range->second;
    return value->type == Type::String && value->toText() == told;
}

std::string ValuePattern::describe() const
{
    return exact ? describeValue(*exact) : told;
}

// --- Expectations

bool Expectation::parse(const Words& all, std::string* error)
{
    Words words = all;
    const size_t count = words.size();
    if (count >= 2 && words[count - 2] == "within") {
        if (!parseSeconds(words[count - 1], &seconds)) {
            *error = words[count - 1] + " is no number of seconds from 0 to 3600";
            return false;
        }
        words.resize(count - 2);
    }
    if (words.empty()) {
        *error = "what is expected?";
        return false;
    }
    auto thing = std::find_if(std::begin(Things), std::end(Things),
                              [&](const auto& row) { return words[0] == row.word; });
    const bool isKey = thing == std::end(Things);
    kind = isKey ? Kind::Value : thing->kind;
    if (words.size() < 1 + (isKey ? 1 : thing->least) || words.size() > 1 + (isKey ? 1 : thing->most)) {
        *error = "wrong number of words; a value with blanks stands in quotes";
        return false;
    }
    if (kind == Kind::Value || kind == Kind::Write) {
        key = words[words.size() - 2];
        if (key.find('.') == std::string::npos) {
            *error = key + " is no key";
            return false;
        }
        return value.parse(words.back(), error);
    }
    text = joined(words, 1);
    if (kind == Kind::Pointing && text != "start" && text != "stop" && text != "cancel") {
        *error = "pointing is start, stop or cancel, not " + text;
        return false;
    }
    if (kind == Kind::Screen) {
        text = screenName(words[1]);
        if (text.empty()) {
            *error = "there is no screen " + words[1];
            return false;
        }
    }
    return true;
}

// --- Times

bool parseSeconds(const std::string& text, double* seconds)
{
    if (text.empty() || text.find_first_not_of("0123456789.") != std::string::npos)
        return false;
    char* end = nullptr;
    const double number = strtod(text.c_str(), &end);
    if (*end != '\0' || number > 3600)
        return false;
    *seconds = number;
    return true;
}

std::string describeSeconds(double seconds)
{
    char text[32];
    snprintf(text, sizeof text, "%g s", seconds);
    return text;
}

} // namespace sim
