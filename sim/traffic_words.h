// Words of the text form of messages, for its sources only. See traffic.h.
//
// Plain functions without state: any thread.
#ifndef SIM_TRAFFIC_WORDS_H
#define SIM_TRAFFIC_WORDS_H

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

namespace sim {

constexpr char Blank = ' ';

// The first word of a text; the rest, without the blank between them, stays.
inline std::string firstWord(std::string* text)
{
    size_t blank = text->find(Blank);
    std::string word = text->substr(0, blank);
    text->erase(0, blank == std::string::npos ? blank : blank + 1);
    return word;
}

// The whole text as a number that fits into the type.
template <typename T> bool number(const std::string& text, T* value)
{
    std::istringstream in(text);
    long long read = 0;
    char more;
    if (!(in >> read) || in >> more)
        return false;
    *value = static_cast<T>(read);
    return static_cast<long long>(*value) == read;
}

// Whether a text can stand as a word without quotation marks.
inline bool isPlain(std::string_view text)
{
    return !text.empty() && text[0] != '"' && std::all_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) > ' ' && character != '\x7f';
    });
}

} // namespace sim

#endif
