// Completion of a console's line, out of the same tables as its help. On the terminal's thread only.
#include "sim/console/command_form.h"
#include "sim/console/commands.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace sim {

namespace {

using Candidates = std::set<std::string>;

// Commands of the shell that another one stands behind, with the number of words between.
struct Prefix {
    const char* name;
    size_t words;
};
const Prefix Prefixes[] = {{"not", 0}, {"time", 0}, {"repeat", 1}};

const char* const DatabaseWords[] = {"KEY", "KEYS", "PREFIX", "EXPRESSION"};
// The display's keys, which are not the database's.
const char KeyPresser[] = "press";
const char* const DisplayKeys[] = {"up", "down", "left", "right", "ok", "long", "screenshot"};

bool beginsWith(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

// The words of a command that are before the one that is completed. False if they are those of something
// else's arguments.
bool skipPrefixes(Words* words)
{
    for (bool found = true; found && !words->empty();) {
        found = false;
        for (const Prefix& prefix : Prefixes) {
            if (words->front() != prefix.name)
                continue;
            if (words->size() < prefix.words + 1)
                return false;
            words->erase(words->begin(), words->begin() + static_cast<std::ptrdiff_t>(prefix.words) + 1);
            found = true;
            break;
        }
    }
    return true;
}

Candidates commandsWith(const cshell* shell, const std::string& typed)
{
    Candidates found;
    for (size_t at = 0; at < shell_command_count(); at++) {
        const shell_command* command = shell_command_get(at);
        if (vx_cshell_authorized(shell, command) && beginsWith(command->name, typed))
            found.insert(command->name);
    }
    return found;
}

// Keys that begin so, each up to the next dot.
Candidates keysWith(const Terminal& terminal, const std::string& typed)
{
    Candidates found;
    for (const auto& [key, value] : terminal.list(typed)) {
        size_t dot = key.find('.', typed.size());
        found.insert(dot == std::string::npos ? key : key.substr(0, dot + 1));
    }
    return found;
}

bool isOneOf(const std::string& word, const char* const* begin, const char* const* end)
{
    return std::find(begin, end, word) != end;
}

Candidates argumentsWith(const Terminal& terminal, const Words& words, const std::string& typed)
{
    Candidates found;
    const Words arguments(words.begin() + 1, words.end());
    for (const CommandForm& form : formsOf(words[0])) {
        for (const std::string& next : nextWords(form.words, arguments)) {
            if (!isOneOf(next, std::begin(DatabaseWords), std::end(DatabaseWords))) {
                bool isLiteral = std::none_of(next.begin(), next.end(), [](char character) {
                    return character >= 'A' && character <= 'Z';
                });
                if (isLiteral && beginsWith(next, typed))
                    found.insert(next);
            } else if (words[0] == KeyPresser) {
                for (const char* key : DisplayKeys) {
                    if (beginsWith(key, typed))
                        found.insert(key);
                }
            } else {
                found.merge(keysWith(terminal, typed));
            }
        }
    }
    return found;
}

std::string commonBeginning(const Candidates& candidates)
{
    // The first and the last of a sorted set differ the soonest.
    const std::string& first = *candidates.begin();
    const std::string& last = *candidates.rbegin();
    auto end = std::mismatch(first.begin(),
                             first.begin() + static_cast<std::ptrdiff_t>(std::min(first.size(), last.size())),
                             last.begin());
    return std::string(first.begin(), end.first);
}

} // namespace

std::string Console::complete(const std::string& line, std::vector<std::string>* candidates)
{
    candidates->clear();
    size_t blank = line.find_last_of(" \t");
    const std::string before = blank == std::string::npos ? std::string() : line.substr(0, blank + 1);
    const std::string typed = line.substr(before.size());
    Words words;
    std::string error;
    // A word with quotation marks is not completed.
    if (typed.find('"') != std::string::npos || !splitLine(before, &words, &error) || !skipPrefixes(&words))
        return line;
    bool isCommand = words.empty() || (words.size() == 1 && words[0] == "help");
    Candidates found =
        isCommand ? commandsWith(shell(), typed) : argumentsWith(desk().terminal, words, typed);
    if (found.empty())
        return line;
    if (found.size() > 1) {
        candidates->assign(found.begin(), found.end());
        return before + commonBeginning(found);
    }
    const std::string& word = *found.begin();
    return before + word + (word.back() == '.' ? "" : " ");
}

} // namespace sim
