// Messages as lines of text and back. See traffic.h for their form; their data are traffic_data.cpp's.
#include "sim/traffic.h"

#include "sim/initial_values.h"
#include "sim/traffic_words.h"

#include <algorithm>
#include <cstring>

namespace sim {

namespace {

const char* const WayNames[] = {"from", "to", "all"};
const char* const MessageTypes[] = {"bytes", "signal", "request", "reply"};

template <typename Names> const char* nameAt(const Names& names, size_t at)
{
    return at < std::size(names) ? names[at] : names[0];
}

std::string quotedIfNeeded(std::string_view name)
{
    return isPlain(name) ? std::string(name) : describeValue(Value::text(name)).substr(strlen("string "));
}

std::string head(const Traffic& traffic)
{
    return std::string(WayNames[static_cast<size_t>(traffic.way)]) + Blank + std::to_string(traffic.client) +
           Blank + nameAt(MessageTypes, traffic.header.type);
}

std::string tail(const Traffic& traffic, bool exact)
{
    std::string text;
    if (traffic.header.type != 0)
        text += Blank + quotedIfNeeded(traffic.name);
    if (!traffic.data.empty())
        text += Blank + describeData(traffic.header.type, traffic.name, traffic.data, exact);
    return text;
}

// The name at the beginning of the text, which is left with what follows.
bool takeName(std::string* text, std::string* name, std::string* error)
{
    if (text->empty() || (*text)[0] != '"') {
        *name = firstWord(text);
        return !name->empty();
    }
    size_t end = 1;
    for (; end < text->size() && (*text)[end] != '"'; end++)
        end += (*text)[end] == '\\';
    std::string bytes;
    if (!decodeData("text " + text->substr(0, end + 1), &bytes, error))
        return false;
    *name = bytes.substr(0, bytes.find('\0'));
    text->erase(0, std::min(text->size(), end + 2));
    return true;
}

bool parseNumbers(const std::string& text, TrafficRecord* record)
{
    size_t dot = text.find('.');
    return dot != std::string::npos && number(text.substr(0, dot), &record->src) &&
           number(text.substr(dot + 1), &record->seqn);
}

} // namespace

std::string describe(const Traffic& traffic, size_t limit)
{
    static const char cut[] = "...";
    std::string line = head(traffic) + tail(traffic, false);
    if (line.size() <= limit)
        return line;
    size_t end = limit < strlen(cut) ? 0 : limit - strlen(cut);
    // Not inside a character of several bytes.
    while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xc0) == 0x80)
        end--;
    return line.substr(0, end) + cut;
}

std::string encodeTraffic(const Traffic& traffic)
{
    std::string line = head(traffic);
    if (traffic.header.type != 0)
        line += Blank + std::to_string(traffic.header.src) + "." + std::to_string(traffic.header.seqn);
    return line + tail(traffic, true);
}

bool decodeTraffic(const std::string& line, TrafficRecord* record, std::string* error)
{
    std::string rest = line;
    std::string word = firstWord(&rest);
    auto way = std::find(std::begin(WayNames), std::end(WayNames), word);
    if (way == std::end(WayNames)) {
        *error = "\"" + word + "\" is neither from, to nor all";
        return false;
    }
    record->way = static_cast<Way>(way - WayNames);
    if (word = firstWord(&rest); !number(word, &record->client)) {
        *error = "\"" + word + "\" is no client's number";
        return false;
    }
    word = firstWord(&rest);
    auto type = std::find(std::begin(MessageTypes), std::end(MessageTypes), word);
    if (type == std::end(MessageTypes)) {
        *error = "\"" + word + "\" is no type of a message";
        return false;
    }
    record->type = static_cast<uint8_t>(type - MessageTypes);
    record->name.clear();
    if (record->type != 0) {
        if (word = firstWord(&rest); !parseNumbers(word, record)) {
            *error = "\"" + word + "\" is no number of a message";
            return false;
        }
        *error = "a message without a name";
        if (!takeName(&rest, &record->name, error))
            return false;
        error->clear();
    }
    return decodeData(rest, &record->data, error);
}

} // namespace sim
