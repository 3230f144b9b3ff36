// repeat, while, not, time and the group, see the header. What they do is what the shell's own do.
#include "sim/console/compound.h"

#include "runtime/vx_time.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

Words from(const Words& words, size_t first)
{
    return Words(words.begin() + static_cast<std::ptrdiff_t>(std::min(first, words.size())), words.end());
}

// Index of the first such word at or behind first that stands in no inner group; words.size() if there is
// none.
size_t findWord(const Words& words, size_t first, const char* word)
{
    int depth = 0;
    for (size_t at = first; at < words.size(); at++) {
        if (depth == 0 && words[at] == word)
            return at;
        depth += words[at] == "(";
        depth -= words[at] == ")" && depth > 0;
    }
    return words.size();
}

class Repeat : public Compound {
public:
    Repeat(int64_t count, const Words& command) : left(count), command(command) {}
    bool next(int*, Words* words) override
    {
        *words = command;
        return left-- > 0;
    }

private:
    int64_t left;
    Words command;
};

class Not : public Compound {
public:
    explicit Not(const Words& command) : command(command) {}
    bool next(int* status, Words* words) override
    {
        if (ran)
            *status = *status == CommandDone ? CommandFailed : CommandDone;
        *words = command;
        return !std::exchange(ran, true);
    }

private:
    bool ran = false;
    Words command;
};

class Time : public Compound {
public:
    Time(Console& console, const Words& command) : console(console), command(command) {}
    bool next(int*, Words* words) override
    {
        if (ran) {
            uint32_t elapsed = vx_time_ms_elapsed(start);
            console.print("%u.%03us\n", elapsed / 1000, elapsed % 1000);
        }
        *words = command;
        return !std::exchange(ran, true);
    }

private:
    Console& console;
    uint32_t start = vx_time_ms();
    bool ran = false;
    Words command;
};

class While : public Compound {
public:
    While(const Words& condition, const Words& body) : condition(condition), body(body) {}
    bool next(int* status, Words* words) override
    {
        if (inCondition && *status != CommandDone) {
            *status = result;
            return false;
        }
        if (inBody)
            result = *status;
        inBody = inCondition && !body.empty();
        inCondition = !inBody;
        *words = inBody ? body : condition;
        return true;
    }

private:
    Words condition;
    Words body;
    bool inCondition = false;
    bool inBody = false;
    int result = CommandDone;
};

class Group : public Compound {
public:
    explicit Group(const Words& words) : words(words) {}
    bool next(int*, Words* command) override
    {
        while (at < words.size()) {
            size_t end = findWord(words, at, ";");
            *command = Words(words.begin() + static_cast<std::ptrdiff_t>(at),
                             words.begin() + static_cast<std::ptrdiff_t>(end));
            at = end + 1;
            if (!command->empty())
                return true;
        }
        return false;
    }

private:
    Words words; // without the brackets
    size_t at = 0;
};

std::unique_ptr<Compound> makeRepeat(Console&, const Words& words)
{
    int64_t count;
    if (words.size() < 3 || !parseNumber(words[1], INT32_MIN, INT32_MAX, &count))
        return nullptr;
    return std::make_unique<Repeat>(count, from(words, 2));
}

std::unique_ptr<Compound> makeNot(Console&, const Words& words)
{
    return words.size() < 2 ? nullptr : std::make_unique<Not>(from(words, 1));
}

std::unique_ptr<Compound> makeTime(Console& console, const Words& words)
{
    return words.size() < 2 ? nullptr : std::make_unique<Time>(console, from(words, 1));
}

std::unique_ptr<Compound> makeWhile(Console&, const Words& words)
{
    size_t colon = findWord(words, 1, ":");
    if (colon == words.size() || colon == 1)
        return nullptr;
    Words condition(words.begin() + 1, words.begin() + static_cast<std::ptrdiff_t>(colon));
    return std::make_unique<While>(condition, from(words, colon + 1));
}

std::unique_ptr<Compound> makeGroup(Console&, const Words& words)
{
    if (words.size() < 2 || findWord(words, 1, ")") != words.size() - 1)
        return nullptr;
    return std::make_unique<Group>(Words(words.begin() + 1, words.end() - 1));
}

struct CompoundName {
    const char* name;
    std::unique_ptr<Compound> (*make)(Console& console, const Words& words);
};
const CompoundName CompoundNames[] = {
    {"repeat", makeRepeat}, {"not", makeNot}, {"time", makeTime}, {"while", makeWhile}, {"(", makeGroup}};

const CompoundName* find(const std::string& name)
{
    for (const CompoundName& row : CompoundNames) {
        if (name == row.name)
            return &row;
    }
    return nullptr;
}

} // namespace

bool isCompound(const std::string& name)
{
    return find(name) != nullptr;
}

std::unique_ptr<Compound> makeCompound(Console& console, const Words& words)
{
    return find(words[0])->make(console, words);
}

} // namespace sim
