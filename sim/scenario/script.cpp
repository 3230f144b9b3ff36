// Reads scenarios. Repetitions and files are put in their places at once, so that what runs is a plain list.
#include "sim/scenario/script.h"

#include "sim/console/command_form.h"
#include "sim/console/console.h"
#include "sim/console/expectation.h"
#include "sim/display/display.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sys/stat.h>

namespace sim {
namespace {

const int64_t MaxRepetitions = 10000;
const char TooMany[] = "too many lines, with all repetitions";

bool readFile(const std::string& name, std::string* text, std::string* why)
{
    struct stat about;
    std::ifstream file(name, std::ios::binary);
    if (!file || stat(name.c_str(), &about) != 0) {
        *why = strerror(errno ? errno : EIO);
        return false;
    }
    if (!S_ISREG(about.st_mode)) {
        *why = "this is no file";
        return false;
    }
    if (about.st_size > static_cast<off_t>(Script::MaxFile)) {
        *why = "this is too long for a scenario";
        return false;
    }
    text->assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return true;
}

std::string trimmed(const std::string& text)
{
    const char* const blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// What stands behind so many words without quotes.
std::string behindWords(const std::string& text, unsigned count)
{
    size_t at = 0;
    for (; count > 0; count--)
        at = text.find_first_not_of(" \t", std::min(text.find_first_of(" \t", at), text.size()));
    return text.substr(at);
}

// The same file has the same name, however it is called.
std::string realName(const std::string& name)
{
    char buffer[PATH_MAX];
    return realpath(name.c_str(), buffer) ? std::string(buffer) : name;
}

std::string besides(const std::string& file, const std::string& name)
{
    const size_t slash = file.rfind('/');
    return name[0] == '/' || slash == std::string::npos ? name : file.substr(0, slash + 1) + name;
}

// What the words of some commands must be beyond their form. Empty: they will do.
std::string checkArguments(const Words& words)
{
    std::string error;
    double seconds = 0;
    if (words[0] == "expect") {
        Expectation expectation;
        expectation.parse(Words(words.begin() + 1, words.end()), &error);
    } else if (words[0] == "exit" || words[0] == "quit") {
        error = "a scenario ends with its last line";
    } else if ((words[0] == "wait" || words[0] == "pause") && !parseSeconds(words[1], &seconds)) {
        error = words[1] + " is no number of seconds from 0 to 3600";
    } else if (words[0] == "picture" &&
               words[1].find_first_not_of(
                   "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-") != std::string::npos) {
        error = "in a scenario the name of a picture is made of letters, digits, - and _";
    }
    return error;
}

bool needsDisplay(const Words& words)
{
    if (words[0] != "expect")
        return words[0] == "press" || words[0] == "picture";
    Expectation expectation;
    std::string error;
    return expectation.parse(Words(words.begin() + 1, words.end()), &error) && expectation.isOfDisplay();
}

class Reader {
public:
    explicit Reader(Script* script, std::string* error) : script(script), error(error) {}

    bool read(const std::string& fileName);
    bool checkOrder();

private:
    struct Line {
        unsigned number;
        std::string text;
        Words words;
    };
    using Lines = std::vector<Line>;

    bool fail(const std::string& file, unsigned line, const std::string& what);
    bool split(const std::string& file, const std::string& text, Lines* lines);
    bool take(const std::string& file, const Lines& lines, size_t from, size_t to);
    bool takeRepetition(const std::string& file, const Lines& lines, size_t* at, size_t to);
    bool repeatSteps(size_t begin, size_t count);
    bool takeFile(const std::string& file, const Line& line);
    bool takeCommand(const std::string& file, const Line& line);

    Script* script;
    std::string* error;
    std::vector<std::string> open; // the files that are being read, by their real names
    unsigned depth = 0;            // of repetitions
    unsigned files = 0;            // that were read
};

bool Reader::fail(const std::string& file, unsigned line, const std::string& what)
{
    *error = file + ":" + std::to_string(line) + ": " + what;
    return false;
}

bool Reader::read(const std::string& fileName)
{
    std::string text;
    std::string why;
    if (!readFile(fileName, &text, &why)) {
        *error = fileName + ": " + why;
        return false;
    }
    Lines lines;
    open.push_back(realName(fileName));
    const bool good = split(fileName, text, &lines) && take(fileName, lines, 0, lines.size());
    open.pop_back();
    return good;
}

bool Reader::split(const std::string& file, const std::string& text, Lines* lines)
{
    unsigned number = 0;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        Line line{++number, trimmed(text.substr(begin, end - begin)), {}};
        begin = end + 1;
        if (line.text.size() > Script::MaxLine)
            return fail(file, number, "the line is too long");
        if (line.text.find('\0') != std::string::npos)
            return fail(file, number, "this is no text");
        std::string problem;
        if (line.text.empty() || line.text[0] == '#')
            continue;
        if (!splitLine(line.text, &line.words, &problem))
            return fail(file, number, problem);
        if (!line.words.empty())
            lines->push_back(line);
    }
    return true;
}

bool Reader::take(const std::string& file, const Lines& lines, size_t from, size_t to)
{
    for (size_t at = from; at < to; at++) {
        const Line& line = lines[at];
        bool good = true;
        if (line.words[0] == "repeat")
            good = takeRepetition(file, lines, &at, to);
        else if (line.words[0] == "end")
            good = fail(file, line.number, "there is no repeat for this end");
        else if (line.words[0] == "include")
            good = takeFile(file, line);
        else
            good = takeCommand(file, line);
        if (!good)
            return false;
    }
    return true;
}

// At the line of "repeat"; goes to that of its "end".
bool Reader::takeRepetition(const std::string& file, const Lines& lines, size_t* at, size_t to)
{
    const Line& head = lines[*at];
    int64_t count = 0;
    if (head.words.size() < 2 || !parseNumber(head.words[1], 1, MaxRepetitions, &count))
        return fail(file, head.number, "usage: repeat N, with N from 1 to 10000");
    Lines one;
    size_t first = *at + 1;
    size_t last = first;
    const Lines* body = &lines;
    if (head.words.size() > 2) {
        one.push_back(
            {head.number, behindWords(head.text, 2), Words(head.words.begin() + 2, head.words.end())});
        body = &one;
        first = 0;
        last = 1;
    } else {
        for (unsigned nested = 0; last < to; last++) {
            const Words& words = lines[last].words;
            if (words[0] == "repeat" && words.size() == 2)
                nested++;
            else if (words[0] == "end" && nested-- == 0)
                break;
        }
        if (last == to)
            return fail(file, head.number, "there is no end for this repeat");
        if (lines[last].words.size() > 1)
            return fail(file, lines[last].number, "nothing stands behind end");
        *at = last;
    }
    if (depth == Script::MaxDepth)
        return fail(file, head.number, "too many repetitions in one another");
    const size_t begin = script->steps.size();
    depth++;
    const bool good = take(file, *body, first, last);
    depth--;
    return good && (repeatSteps(begin, static_cast<size_t>(count)) || fail(file, head.number, TooMany));
}

// What was read from there on stands there so many times. False if that is too much.
bool Reader::repeatSteps(size_t begin, size_t count)
{
    const std::vector<ScenarioStep> body(script->steps.begin() + static_cast<ptrdiff_t>(begin),
                                         script->steps.end());
    if (begin + body.size() * count > Script::MaxSteps)
        return false;
    for (size_t at = 1; at < count; at++)
        script->steps.insert(script->steps.end(), body.begin(), body.end());
    return true;
}

bool Reader::takeFile(const std::string& file, const Line& line)
{
    if (line.words.size() != 2 || line.words[1].empty())
        return fail(file, line.number, "usage: include FILE");
    const std::string name = besides(file, line.words[1]);
    if (std::find(open.begin(), open.end(), realName(name)) != open.end())
        return fail(file, line.number, name + " includes itself");
    if (open.size() == Script::MaxDepth || ++files > Script::MaxFiles)
        return fail(file, line.number, "too many files");
    std::string text;
    std::string why;
    if (!readFile(name, &text, &why))
        return fail(file, line.number, "cannot include " + name + ": " + why);
    return read(name);
}

bool Reader::takeCommand(const std::string& file, const Line& line)
{
    std::string problem;
    if (line.words[0] == "start") {
        if (line.words.size() > 2 || (line.words.size() == 2 && line.words[1] != "dark"))
            problem = "usage: start [dark]";
    } else {
        problem = checkCommand(line.words);
        if (problem.empty())
            problem = checkArguments(line.words);
    }
    if (!problem.empty())
        return fail(file, line.number, problem);
    if (script->steps.size() == Script::MaxSteps)
        return fail(file, line.number, TooMany);
    script->steps.push_back({file, line.number, line.text, line.words});
    return true;
}

// One start, and nothing before it that needs the display.
bool Reader::checkOrder()
{
    auto isStart = [](const ScenarioStep& step) { return step.words[0] == "start"; };
    const std::vector<ScenarioStep>& steps = script->steps;
    const auto start = std::find_if(steps.begin(), steps.end(), isStart);
    script->hasStart = start != steps.end();
    if (!script->hasStart)
        return true;
    for (auto step = steps.begin(); step != start; ++step) {
        if (needsDisplay(step->words))
            return fail(step->file, step->line, "the display is started further down, at " + start->place());
    }
    const auto second = std::find_if(start + 1, steps.end(), isStart);
    if (second != steps.end())
        return fail(second->file, second->line, "the display has been started already, at " + start->place());
    return true;
}

} // namespace

bool loadScript(const std::string& fileName, Script* script, std::string* error)
{
    *script = Script();
    script->file = fileName;
    Reader reader(script, error);
    const bool good = reader.read(fileName) && reader.checkOrder();
    if (!good)
        script->steps.clear();
    return good;
}

} // namespace sim
