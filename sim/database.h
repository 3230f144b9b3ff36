// The configuration database: keys, values, and who is told of changes. It knows nothing of the bus
// (database_bus.h) and nothing of files (store.h, initial_values.h).
//
// Not thread-safe: everything on the thread of the loop. Nothing blocks.
#ifndef SIM_DATABASE_H
#define SIM_DATABASE_H

#include "sim/value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace sim {

// A write of one key, or a change that has happened. A value of type None or without bytes deletes the key.
struct Write {
    std::string key;
    Value value;

    bool isDeletion() const { return value.type == Type::None || value.bytes.empty(); }
};

// The text before the first dot; the whole key if it has none.
std::string_view firstComponent(std::string_view key);

// A regular expression of keys (POSIX extended). A key matches if the expression matches it whole.
class KeyExpression {
public:
    // nullopt if the expression is malformed, or could take unbounded time or memory (back references, more
    // than one counted repetition).
    static std::optional<KeyExpression> compile(const std::string& text);
    bool matches(const std::string& key) const;

private:
    struct Compiled;
    explicit KeyExpression(std::shared_ptr<Compiled> compiled);
    std::shared_ptr<Compiled> compiled;
};

class Database {
public:
    // Limits, so that no client can fill the memory or make a message that the bus cannot carry.
    static constexpr size_t MaxKeyLength = 480; // characters; leaves room for the longest verb in a name
    static constexpr size_t MaxValueLength = 1024 * 1024; // bytes of one value
    static constexpr size_t MaxTotal = 64 * 1024 * 1024;  // bytes of all keys and values
    static constexpr size_t MaxKeys = 65536;

    // All changes of one apply(), in the order of the writes; deletions have type None and no bytes.
    using Listener = std::function<void(const std::vector<Write>&)>;

    // Listeners are called in the order in which they were added, after the values have changed. They may
    // call apply().
    void addListener(Listener listener);

    // Null if the key is absent. Valid until the next apply().
    const Value* find(std::string_view key) const;

    // 0 if the write can be stored, else VX_CONFIG_WRONG_TYPE (unknown type, an Int that has not 4 bytes, a
    // String without its NUL), VX_CONFIG_DB_FULL (a limit) or VX_CONFIG_ERR (an empty or too long key).
    int32_t check(const Write& write) const;

    // Stores all writes together; those that check() refuses are skipped. Of several writes of one key the
    // last counts. Keys whose value differs afterwards are reported to the listeners in one call; without any
    // there is no call.
    void apply(const std::vector<Write>& writes);

    // All keys that begin with the prefix, or match the expression whole, in the order of the keys.
    std::vector<std::string> keysWithPrefix(std::string_view prefix) const;
    std::vector<std::string> keysMatching(const KeyExpression& expression) const;

    const std::map<std::string, Value, std::less<>>& all() const { return values; }

private:
    using Values = std::map<std::string, Value, std::less<>>;

    bool store(const Write& write);
    bool remove(const std::string& key);

    Values values;
    // A read of one key is the commonest request by far and must not walk a tree of keys that all begin
    // alike. The texts are those of the map, whose nodes do not move.
    std::unordered_map<std::string_view, Values::iterator> index;
    size_t total = 0;
    std::vector<Listener> listeners;
};

} // namespace sim

#endif
