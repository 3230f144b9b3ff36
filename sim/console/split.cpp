// Lines into words and back. It stores nothing; any thread.
#include "sim/console/console.h"

namespace sim {

namespace {

// A line may come with a carriage return.
const char Blanks[] = " \t\r";

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r';
}

// The part of a word behind its quotation mark; *at moves behind the closing one. False if there is none.
bool takeQuoted(const std::string& line, size_t* at, std::string* word)
{
    for (; *at < line.size() && line[*at] != '"'; ++*at) {
        bool escaped =
            line[*at] == '\\' && *at + 1 < line.size() && (line[*at + 1] == '"' || line[*at + 1] == '\\');
        *at += escaped;
        word->push_back(line[*at]);
    }
    return (*at)++ < line.size();
}

} // namespace

bool splitLine(const std::string& line, Words* words, std::string* error)
{
    words->clear();
    if (line.find('\0') != std::string::npos) {
        *error = "a line cannot hold a NUL";
        return false;
    }
    size_t at = line.find_first_not_of(Blanks);
    if (at == std::string::npos || line[at] == '#')
        return true;
    while (at < line.size()) {
        std::string word;
        while (at < line.size() && !isBlank(line[at])) {
            if (line[at] != '"') {
                word.push_back(line[at++]);
            } else if (!takeQuoted(line, &++at, &word)) {
                words->clear();
                *error = "no closing quotation mark";
                return false;
            }
        }
        words->push_back(word);
        at = std::min(line.find_first_not_of(Blanks, at), line.size());
    }
    return true;
}

std::string quotedWord(const std::string& word)
{
    if (!word.empty() && word[0] != '#' && word.find_first_of(" \t\r\"") == std::string::npos)
        return word;
    std::string quoted = "\"";
    for (char character : word) {
        if (character == '"' || character == '\\')
            quoted.push_back('\\');
        quoted.push_back(character);
    }
    return quoted + "\"";
}

} // namespace sim
