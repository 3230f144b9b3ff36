// Reads and writes values as text. It stores nothing anywhere.
#include "sim/initial_values.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>

#ifndef TERMINAL_VALUES_FILE
#define TERMINAL_VALUES_FILE "initial_values.txt"
#endif

namespace sim {

std::string defaultValuesFile()
{
    return TERMINAL_VALUES_FILE;
}

static const char Blanks[] = " \t\r";

static std::string trimmed(const std::string& text)
{
    size_t begin = text.find_first_not_of(Blanks);
    if (begin == std::string::npos)
        return std::string();
    return text.substr(begin, text.find_last_not_of(Blanks) + 1 - begin);
}

// --- One value

static bool parseInt(const std::string& text, Value* value, std::string* error)
{
    errno = 0;
    char* end = nullptr;
    long number = strtol(text.c_str(), &end, 0);
    if (text.empty() || *end != '\0') {
        *error = "not a number: " + text;
        return false;
    }
    if (errno == ERANGE || number < INT32_MIN || number > INT32_MAX) {
        *error = "number out of range: " + text;
        return false;
    }
    *value = Value::integer(static_cast<int32_t>(number));
    return true;
}

static int hexDigit(char character)
{
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    return -1;
}

static bool parseBlob(const std::string& text, Value* value, std::string* error)
{
    std::string bytes;
    for (size_t at = 0; at < text.size();) {
        if (strchr(Blanks, text[at])) {
            at++;
            continue;
        }
        int high = hexDigit(text[at]);
        int low = at + 1 < text.size() ? hexDigit(text[at + 1]) : -1;
        if (high < 0 || low < 0) {
            *error = "bytes must be pairs of hexadecimal digits: " + text;
            return false;
        }
        bytes.push_back(static_cast<char>(high * 16 + low));
        at += 2;
    }
    if (bytes.empty()) {
        *error = "a blob must have at least one byte";
        return false;
    }
    *value = Value::blob(bytes);
    return true;
}

struct Escape {
    char letter;
    char character;
};
static const Escape Escapes[] = {{'"', '"'}, {'\\', '\\'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}};

// One escape at text[*at], which is the character behind the backslash; *at moves to the last character of
// it.
static bool parseEscape(const std::string& text, size_t* at, std::string* characters)
{
    for (const Escape& escape : Escapes) {
        if (text[*at] == escape.letter) {
            characters->push_back(escape.character);
            return true;
        }
    }
    if (text[*at] != 'x' || *at + 2 >= text.size())
        return false;
    int high = hexDigit(text[*at + 1]);
    int low = hexDigit(text[*at + 2]);
    if (high < 0 || low < 0 || (high == 0 && low == 0))
        return false;
    characters->push_back(static_cast<char>(high * 16 + low));
    *at += 2;
    return true;
}

static bool parseQuoted(const std::string& text, Value* value, std::string* error)
{
    if (text.empty() || text[0] != '"') {
        *error = "a string must stand in quotation marks: " + text;
        return false;
    }
    std::string characters;
    size_t at = 1;
    for (; at < text.size() && text[at] != '"'; at++) {
        if (text[at] != '\\') {
            characters.push_back(text[at]);
        } else if (++at >= text.size() || !parseEscape(text, &at, &characters)) {
            *error = "bad escape in " + text;
            return false;
        }
    }
    if (at >= text.size()) {
        *error = "no closing quotation mark: " + text;
        return false;
    }
    std::string rest = trimmed(text.substr(at + 1));
    if (!rest.empty() && rest[0] != '#') {
        *error = "text behind the closing quotation mark: " + rest;
        return false;
    }
    *value = Value::text(characters);
    return true;
}

// Int and blob may be followed by a comment as well; in neither can a # be part of the value.
static std::string withoutComment(const std::string& text)
{
    return trimmed(text.substr(0, text.find('#')));
}

static bool parseValue(const std::string& type, const std::string& text, Value* value, std::string* error)
{
    if (type == "int")
        return parseInt(withoutComment(text), value, error);
    if (type == "string")
        return parseQuoted(text, value, error);
    if (type == "blob")
        return parseBlob(withoutComment(text), value, error);
    *error = "unknown type \"" + type + "\" (int, string and blob are known)";
    return false;
}

bool parseShortValue(const std::string& text, Value* value, std::string* error)
{
    size_t colon = text.find(':');
    std::string type = text.substr(0, colon);
    if (colon == std::string::npos) {
        *error = "a value is written type:value, as in int:5";
        return false;
    }
    std::string rest = text.substr(colon + 1);
    if (type == "string") {
        *value = Value::text(rest);
        return true;
    }
    return parseValue(type, rest, value, error);
}

bool parseDescribedValue(const std::string& text, Value* value, std::string* error)
{
    size_t blank = text.find_first_of(Blanks);
    return parseValue(text.substr(0, blank),
                      blank == std::string::npos ? std::string() : trimmed(text.substr(blank)), value, error);
}

// --- The file

static bool parseLine(const std::string& line, Write* write, std::string* error)
{
    size_t equals = line.find('=');
    if (equals == std::string::npos) {
        *error = "a line is written \"key = type value\"";
        return false;
    }
    write->key = trimmed(line.substr(0, equals));
    if (write->key.empty() || write->key.find_first_of(Blanks) != std::string::npos) {
        *error = "bad key \"" + write->key + "\"";
        return false;
    }
    return parseDescribedValue(trimmed(line.substr(equals + 1)), &write->value, error);
}

bool parseInitialValues(std::istream& in, const std::string& name, std::vector<Write>* values,
                        std::string* error)
{
    values->clear();
    std::vector<Write> read;
    std::set<std::string> seen;
    std::string line;
    for (int number = 1; std::getline(in, line); number++) {
        line = trimmed(line);
        if (line.empty() || line[0] == '#')
            continue;
        Write write;
        std::string problem;
        bool good = parseLine(line, &write, &problem);
        if (good && Database().check(write) != 0) {
            problem = "key or value is too long";
            good = false;
        }
        if (good && !seen.insert(write.key).second) {
            problem = "the key " + write.key + " stands twice";
            good = false;
        }
        if (!good) {
            *error = name + ":" + std::to_string(number) + ": " + problem;
            return false;
        }
        read.push_back(std::move(write));
    }
    if (in.bad()) {
        *error = name + ": read error";
        return false;
    }
    *values = std::move(read);
    return true;
}

bool loadInitialValues(const std::string& fileName, std::vector<Write>* values, std::string* error)
{
    values->clear();
    std::ifstream file(fileName);
    if (!file) {
        *error = fileName + ": " + strerror(errno);
        return false;
    }
    // A directory opens, and only the first read fails.
    if (file.peek() == std::ifstream::traits_type::eof() && !file.eof()) {
        *error = fileName + ": not a readable file";
        return false;
    }
    file.clear();
    return parseInitialValues(file, fileName, values, error);
}

// --- Writing

static std::string quoted(const std::string& characters)
{
    static const char digits[] = "0123456789abcdef";
    std::string text = "\"";
    for (char character : characters) {
        unsigned char byte = static_cast<unsigned char>(character);
        const Escape* found = nullptr;
        for (const Escape& escape : Escapes) {
            if (escape.character == character)
                found = &escape;
        }
        if (found)
            text += std::string("\\") + found->letter;
        else if (byte < 0x20 || byte == 0x7f)
            text += std::string("\\x") + digits[byte >> 4] + digits[byte & 15];
        else
            text.push_back(character);
    }
    return text + "\"";
}

std::string describeValue(const Value& value)
{
    static const char digits[] = "0123456789abcdef";
    switch (value.type) {
    case Type::Int:
        return "int " + std::to_string(value.toInt());
    case Type::String:
        return "string " + quoted(value.toText());
    case Type::Blob: {
        std::string text = "blob";
        for (char character : value.bytes) {
            unsigned char byte = static_cast<unsigned char>(character);
            text += std::string(" ") + digits[byte >> 4] + digits[byte & 15];
        }
        return text;
    }
    case Type::None:
        break;
    }
    return "none";
}

} // namespace sim
