// Keys, values and change detection. No bus, no files, no threads.
#include "sim/database.h"

#include "runtime/config_client_api.h"

#include <algorithm>
#include <regex.h>
#include <unordered_set>

namespace sim {

std::string_view firstComponent(std::string_view key)
{
    return key.substr(0, key.find('.'));
}

// --- Expressions

struct KeyExpression::Compiled {
    regex_t regex;
    bool valid = false;
    ~Compiled()
    {
        if (valid)
            regfree(&regex);
    }
};

KeyExpression::KeyExpression(std::shared_ptr<Compiled> compiled) : compiled(std::move(compiled)) {}

// Nested counted repetitions multiply the memory of the compiled expression, and back references its time.
static bool isBounded(const std::string& text)
{
    for (size_t at = 0; at + 1 < text.size(); at++) {
        if (text[at] != '\\')
            continue;
        at++;
        if (text[at] >= '1' && text[at] <= '9')
            return false;
    }
    return std::count(text.begin(), text.end(), '{') <= 1;
}

std::optional<KeyExpression> KeyExpression::compile(const std::string& text)
{
    if (!isBounded(text))
        return std::nullopt;
    auto compiled = std::make_shared<Compiled>();
    if (regcomp(&compiled->regex, text.c_str(), REG_EXTENDED) != 0)
        return std::nullopt;
    compiled->valid = true;
    return KeyExpression(std::move(compiled));
}

bool KeyExpression::matches(const std::string& key) const
{
    // The match found is the leftmost, and of these the longest: if the whole key matches at all, it is this
    // one.
    regmatch_t match;
    return regexec(&compiled->regex, key.c_str(), 1, &match, 0) == 0 && match.rm_so == 0 &&
           static_cast<size_t>(match.rm_eo) == key.size();
}

// --- Reading

const Value* Database::find(std::string_view key) const
{
    auto found = index.find(key);
    return found == index.end() ? nullptr : &found->second->second;
}

std::vector<std::string> Database::keysWithPrefix(std::string_view prefix) const
{
    std::vector<std::string> keys;
    for (auto at = values.lower_bound(prefix); at != values.end(); ++at) {
        if (at->first.compare(0, prefix.size(), prefix) != 0)
            break;
        keys.push_back(at->first);
    }
    return keys;
}

std::vector<std::string> Database::keysMatching(const KeyExpression& expression) const
{
    std::vector<std::string> keys;
    for (const auto& [key, value] : values) {
        if (expression.matches(key))
            keys.push_back(key);
    }
    return keys;
}

// --- Writing

void Database::addListener(Listener listener)
{
    listeners.push_back(std::move(listener));
}

int32_t Database::check(const Write& write) const
{
    if (write.key.empty() || write.key.size() > MaxKeyLength || write.key.find('\0') != std::string::npos)
        return VX_CONFIG_ERR;
    if (write.value.type > Type::Int)
        return VX_CONFIG_WRONG_TYPE;
    if (write.isDeletion())
        return 0;
    if (write.value.type == Type::Int && !write.value.isInt())
        return VX_CONFIG_WRONG_TYPE;
    if (write.value.type == Type::String && write.value.bytes.back() != '\0')
        return VX_CONFIG_WRONG_TYPE;

    const Value* old = find(write.key);
    size_t added = write.value.bytes.size() + (old ? 0 : write.key.size());
    size_t freed = old ? old->bytes.size() : 0;
    if (write.value.bytes.size() > MaxValueLength || total - freed + added > MaxTotal ||
        (!old && values.size() >= MaxKeys))
        return VX_CONFIG_DB_FULL;
    return 0;
}

bool Database::store(const Write& write)
{
    auto found = index.find(write.key);
    if (found != index.end()) {
        Value& value = found->second->second;
        if (value == write.value)
            return false;
        total += write.value.bytes.size() - value.bytes.size();
        value = write.value;
        return true;
    }
    auto added = values.emplace(write.key, write.value).first;
    index.emplace(added->first, added);
    total += write.key.size() + write.value.bytes.size();
    return true;
}

bool Database::remove(const std::string& key)
{
    auto found = index.find(key);
    if (found == index.end())
        return false;
    auto node = found->second;
    total -= node->first.size() + node->second.bytes.size();
    index.erase(found);
    values.erase(node);
    return true;
}

// For each write, whether no later one has the same key.
static std::vector<bool> lastOfTheirKey(const std::vector<Write>& writes)
{
    std::vector<bool> last(writes.size(), true);
    if (writes.size() < 2)
        return last;
    std::unordered_set<std::string_view> seen;
    for (size_t at = writes.size(); at-- > 0;)
        last[at] = seen.insert(writes[at].key).second;
    return last;
}

void Database::apply(const std::vector<Write>& writes)
{
    std::vector<bool> counts = lastOfTheirKey(writes);
    std::vector<Write> changes;
    for (size_t at = 0; at < writes.size(); at++) {
        const Write& write = writes[at];
        if (!counts[at] || check(write) != 0)
            continue;
        if (write.isDeletion()) {
            if (remove(write.key))
                changes.push_back({write.key, Value()});
        } else if (store(write)) {
            changes.push_back(write);
        }
    }
    if (changes.empty())
        return;
    for (size_t at = 0; at < listeners.size(); at++)
        listeners[at](changes);
}

} // namespace sim
