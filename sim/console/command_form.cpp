// A form is read into a tree of few kinds of nodes, which are then tried with all ways to leave out and to
// repeat. Forms are short, so that costs nothing.
#include "sim/console/command_form.h"

#include "sim/console/commands.h"

#include <cctype>
#include <functional>

namespace sim {
namespace {

// What one node takes: from which words it may go on, given where it begins.
struct Node {
    enum class Kind { Words, Rest, Optional, Repeat } kind = Kind::Words;
    std::vector<std::string> alternatives; // of Words
    std::vector<Node> inner;               // of Optional and Repeat
};
using Nodes = std::vector<Node>;

bool standsForAny(const std::string& text)
{
    for (char character : text) {
        if (isupper(static_cast<unsigned char>(character)))
            return true;
    }
    return false;
}

// Brackets, dots and strokes are tokens of their own, also where they touch a word.
std::vector<std::string> tokensOf(const std::string& form)
{
    std::vector<std::string> tokens;
    std::string word;
    auto endWord = [&] {
        if (!word.empty())
            tokens.push_back(word);
        word.clear();
    };
    for (size_t at = 0; at < form.size(); at++) {
        if (form.compare(at, 3, "...") == 0) {
            endWord();
            tokens.emplace_back("...");
            at += 2;
        } else if (form[at] == '[' || form[at] == ']' || form[at] == '|') {
            endWord();
            tokens.emplace_back(1, form[at]);
        } else if (isspace(static_cast<unsigned char>(form[at]))) {
            endWord();
        } else {
            word.push_back(form[at]);
        }
    }
    endWord();
    return tokens;
}

Nodes readNodes(const std::vector<std::string>& tokens, size_t* at)
{
    Nodes nodes;
    bool alternative = false;
    for (; *at < tokens.size(); ++*at) {
        const std::string& token = tokens[*at];
        if (token == "]")
            break;
        if (token == "[") {
            Node node;
            node.kind = Node::Kind::Optional;
            ++*at;
            node.inner = readNodes(tokens, at);
            nodes.push_back(node);
            if (*at == tokens.size())
                break;
        } else if (token == "...") {
            Node node;
            node.kind = Node::Kind::Repeat;
            node.inner = nodes;
            nodes.push_back(node);
        } else if (token == "|") {
            alternative = true;
            continue;
        } else if (alternative && !nodes.empty()) {
            nodes.back().alternatives.push_back(token);
        } else {
            Node node;
            node.kind = token == "TEXT" ? Node::Kind::Rest : Node::Kind::Words;
            node.alternatives.push_back(token);
            nodes.push_back(node);
        }
        alternative = false;
    }
    return nodes;
}

// What could come behind the last word is added to *expected, if that is not null.
bool matches(const Nodes& nodes, size_t node, const Words& words, size_t at, Words* expected,
             const std::function<bool(size_t)>& goOn)
{
    if (node == nodes.size())
        return goOn(at);
    auto next = [&](size_t position) { return matches(nodes, node + 1, words, position, expected, goOn); };
    const Node& current = nodes[node];
    switch (current.kind) {
    case Node::Kind::Rest:
        return at < words.size() && next(words.size());
    case Node::Kind::Words:
        if (at == words.size()) {
            if (expected)
                expected->insert(expected->end(), current.alternatives.begin(), current.alternatives.end());
            return false;
        }
        for (const std::string& alternative : current.alternatives) {
            if (standsForAny(alternative) || alternative == words[at])
                return next(at + 1);
        }
        return false;
    case Node::Kind::Optional:
        return matches(current.inner, 0, words, at, expected, next) || next(at);
    case Node::Kind::Repeat: {
        std::function<bool(size_t)> again = [&](size_t position) {
            return next(position) || (position > at && matches(nodes, node, words, position, expected, goOn));
        };
        return next(at) || matches(current.inner, 0, words, at, expected, again);
    }
    }
    return false;
}

} // namespace

bool fitsForm(const char* form, const Words& arguments)
{
    size_t at = 0;
    const Nodes nodes = readNodes(tokensOf(form), &at);
    return matches(nodes, 0, arguments, 0, nullptr,
                   [&](size_t position) { return position == arguments.size(); });
}

Words nextWords(const char* form, const Words& arguments)
{
    size_t at = 0;
    const Nodes nodes = readNodes(tokensOf(form), &at);
    Words expected;
    matches(nodes, 0, arguments, 0, &expected, [](size_t) { return false; });
    return expected;
}

std::string checkCommand(const Words& words)
{
    const Words arguments(words.begin() + 1, words.end());
    const std::vector<CommandForm> forms = formsOf(words[0]);
    for (const CommandForm& form : forms) {
        if (fitsForm(form.words, arguments))
            return std::string();
    }
    return forms.empty() ? "unknown command " + words[0] : usageOf(words[0]);
}

} // namespace sim
