// Fuzz target: the parser of the value buffer. The input is a buffer.
//
// What the parser tells of it must lie inside of it, and a buffer put together of what was told must be read
// back as the same entries.
// Legal end: an entry of less than a header (assertion).
#include "fuzz/fuzz.h"

#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"

using fuzz::check;

namespace {

struct Entry {
    uint32_t type;
    std::string key;
    std::string value;
    int32_t status;
    bool operator==(const Entry& other) const
    {
        return type == other.type && key == other.key && value == other.value && status == other.status;
    }
};

struct Told {
    const char* buffer;
    size_t size;
    std::vector<Entry> entries;
};

int take(void* context, uint32_t type, const char* key, void* value, uint32_t length, int32_t status)
{
    Told* const told = static_cast<Told*>(context);
    const char* const end = told->buffer + told->size;
    check(key >= told->buffer && key < end, "a key outside of the buffer");
    check(memchr(key, 0, static_cast<size_t>(end - key)), "a key without an end");
    check((value == nullptr) == (length == 0), "a length without a value, or the other way round");
    const char* const bytes = static_cast<const char*>(value);
    if (value)
        check(bytes > key && bytes + length <= end, "a value outside of the buffer");
    told->entries.push_back({type, key, std::string(bytes ? bytes : "", length), status});
    return 0;
}

void repeat(const std::vector<Entry>& entries)
{
    uint8_t* buffer = nullptr;
    uint32_t length = 0;
    for (const Entry& entry : entries) {
        const void* const value = entry.value.empty() ? nullptr : entry.value.data();
        length =
            config_vbuf_add(&buffer, length, nullptr, entry.type, entry.key.c_str(), value,
                            static_cast<uint32_t>(entry.value.size()), static_cast<int8_t>(entry.status));
    }
    Told again = {reinterpret_cast<const char*>(buffer), length, {}};
    check(config_vbuf_parse(buffer, length, take, &again) == 0, "an own buffer is broken");
    check(again.entries == entries, "an own buffer reads otherwise");
    free(buffer);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto buffer = fuzz::exactCopy(data, size);
    Told told = {reinterpret_cast<const char*>(buffer.get()), size, {}};
    fuzz::Blocks blocks;
    int result = 0;
    const bool survived = fuzz::survives(
        [&] { result = config_vbuf_parse(buffer.get(), static_cast<uint32_t>(size), take, &told); },
        {"*** ASSERT in config_vbuf at "});
    check(!survived || result == 0 || result == VX_CONFIG_ERR, "a result of nobody");
    repeat(told.entries);
    // Any position, also one that the walk does not come to.
    config_vbuf_entry_t entry;
    for (uint32_t at = 0; at <= size + 16; ++at)
        if (config_vbuf_entry_at(buffer.get(), static_cast<uint32_t>(size), at, &entry))
            check(at + entry.distance <= size, "an entry that reaches past the buffer");
    return 0;
}
