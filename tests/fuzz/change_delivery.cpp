// Fuzz target: delivery of changes to several rows. The input's lines up to an empty one are the prefixes of
// the rows, what follows is the buffer of the signal.
//
// A row that begins with "+" adds another one when it is called, one with "-" removes itself, and one with
// "*" takes everything; the others must get just the entries that a walk made here finds, once.
// No legal end: the delivery takes what is whole and logs what is not.
#include "fuzz/fuzz.h"

#include "runtime/config_client_api.h"
#include "runtime/config_client_impl.h"
#include "runtime/config_vbuf.h"

using fuzz::check;

namespace {

const size_t MAX_ROWS = 24;

struct Row {
    std::string key;
    int calls = 0;
};

// What a delivery is judged by: the bytes, as they were before texts got their NUL in place.
const std::string* message;
std::vector<std::unique_ptr<Row>> rows;

uint32_t wordAt(size_t at)
{
    uint32_t word;
    memcpy(&word, &(*message)[at], sizeof(word));
    return word;
}

// Keys and lengths of the whole entries whose key begins with the prefix.
std::vector<std::pair<std::string, uint32_t>> expected(const std::string& prefix)
{
    std::vector<std::pair<std::string, uint32_t>> found;
    const size_t size = message->size();
    for (size_t at = 0; at + 12 <= size;) {
        const size_t nameArea = wordAt(at + 4), length = wordAt(at + 8);
        const size_t left = size - at - 12;
        if (nameArea > left || nameArea % 4 || length > left - nameArea)
            break;
        const std::string area = message->substr(at + 12, nameArea);
        if (area.find('\0') == std::string::npos)
            break;
        const std::string key = area.c_str();
        if (key.compare(0, prefix.size(), prefix) == 0)
            found.emplace_back(key, static_cast<uint32_t>(length));
        at += 12 + nameArea + (length + 3) / 4 * 4;
    }
    return found;
}

void changed(unsigned count, const config_data_t* records, void* data, const config_change_row_t* row);

void addRow(const std::string& key)
{
    if (rows.size() == MAX_ROWS)
        return;
    rows.emplace_back(new Row{key});
    config_change_register(key == "*" ? "" : key.c_str(), changed, rows.back().get());
}

void touch(const config_data_t& record)
{
    volatile char sum = 0;
    const char* const bytes = static_cast<const char*>(record.data);
    for (uint32_t i = 0; bytes && i < record.length; ++i)
        sum = static_cast<char>(sum + bytes[i]);
    check((record.data == nullptr) == (record.length == 0), "a length without a value");
    if (record.type == VX_CONFIG_TYPE_STRING && record.data)
        check(bytes[record.length - 1] == 0, "a text without an end");
    int number = 0;
    char text[4];
    const config_option_t table[] = {{record.name, &number, 4, VX_CONFIG_TYPE_INT | CONFIG_OPT_FORM_U32, {}}};
    const config_option_t other[] = {{record.name, text, sizeof(text), VX_CONFIG_TYPE_STRING, {}}};
    config_parse(&record, table, 1);
    config_parse(&record, other, 1);
}

void changed(unsigned count, const config_data_t* records, void* data, const config_change_row_t* row)
{
    Row* const own = static_cast<Row*>(data);
    ++own->calls;
    check(row->data == data, "another row's data");
    const auto wanted = expected(row->key);
    check(wanted.size() == count, "more or fewer records than match");
    for (unsigned i = 0; i < count; ++i) {
        check(wanted[i].first == records[i].name && wanted[i].second == records[i].length,
              "another record than the one that matches");
        touch(records[i]);
    }
    if (own->key[0] == '+')
        addRow(own->key.substr(1));
    else if (own->key[0] == '-')
        config_change_deregister(own->key.c_str(), changed, data);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    bool steady = true;
    for (std::string key = input.line(); !key.empty(); key = input.line()) {
        key = key.c_str();
        if (key.empty())
            break;
        steady = steady && key[0] != '+' && key[0] != '-';
        addRow(key);
    }
    const std::string bytes = input.rest();
    message = &bytes;
    const auto buffer = fuzz::exactCopy(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    fuzz::survives(
        [&] {
            config_handle_change(nullptr, nullptr, "config.change.fuzz", buffer.get(),
                                 static_cast<uint32_t>(bytes.size()));
        },
        {});
    for (const auto& row : rows)
        if (steady)
            check(row->calls == !expected(row->key == "*" ? "" : row->key).empty(),
                  "a row was not called just once");
    config_reset_for_test();
    rows.clear();
    return 0;
}
