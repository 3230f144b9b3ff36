// Fuzz target: config_parse(), which applies a record to a table of options. The input is a table and a
// record as a signal would bring it; results and destinations are compared with the rules, told once more
// here.
// No legal end.
#include "fuzz/fuzz.h"

#include "runtime/config_client_api.h"
#include "runtime/config_client_impl.h"

using fuzz::check;

namespace {

const char* const KEYS[] = {"cfg.language", "cfg.display.timeout", "cfg", "", "cfg.languages"};
const size_t KEY_COUNT = sizeof(KEYS) / sizeof(KEYS[0]);

// A row with what it points to.
struct Row {
    config_option_t option;
    std::unique_ptr<uint8_t[]> place;
    size_t placeSize;
    std::string text; // the default
};

bool isText(const config_option_t& row)
{
    return (row.flags & 0xf) == VX_CONFIG_TYPE_STRING;
}

// How many bytes the row may write.
size_t sizeOf(const config_option_t& row)
{
    if (isText(row))
        return row.size;
    switch (row.flags >> 4 & 0xf) {
    case 1:
        return 4;
    case 2:
        return 2;
    case 3:
        return 1;
    case 4:
        return row.size == 1 || row.size == 2 || row.size == 4 ? row.size : 0;
    }
    return 0;
}

std::unique_ptr<Row> rowOf(fuzz::Input& input)
{
    std::unique_ptr<Row> row(new Row);
    row->option.key = KEYS[input.byte() % KEY_COUNT];
    row->option.flags = input.half();
    row->option.size = input.byte() % 40;
    row->placeSize = sizeOf(row->option);
    row->place.reset(new uint8_t[row->placeSize]);
    memset(row->place.get(), 0xaa, row->placeSize);
    row->option.dest = row->place.get();
    row->text = input.bytes(input.byte() % 48).c_str();
    if (isText(row->option))
        row->option.def = config_option_default_t(row->text.c_str());
    else
        row->option.def = config_option_default_t(static_cast<int>(input.word()));
    return row;
}

void checkText(const Row& row, const std::string& text, uint32_t* result)
{
    if (row.placeSize == 0) {
        *result += 0x10000000u;
        return;
    }
    const std::string kept = text.substr(0, row.placeSize - 1);
    if (kept.size() < text.size())
        *result += 0x10000000u;
    check(memcmp(row.place.get(), kept.c_str(), kept.size() + 1) == 0, "another text");
}

void checkNumber(const Row& row, int32_t number)
{
    const bool truth = (row.option.flags >> 4 & 0xf) == 4;
    const uint32_t wanted = truth ? number != 0 : static_cast<uint32_t>(number);
    check(memcmp(row.place.get(), &wanted, row.placeSize) == 0, "another number"); // little-endian
}

void checkStored(const Row& row, const void* data, uint32_t* result)
{
    int32_t number;
    if (isText(row.option)) {
        checkText(row, static_cast<const char*>(data), result);
    } else if ((row.option.flags & 0xf) == VX_CONFIG_TYPE_INT) {
        memcpy(&number, data, sizeof(number));
        checkNumber(row, number);
    }
}

void checkResult(const std::vector<std::unique_ptr<Row>>& rows, const config_data_t& record, uint32_t result)
{
    uint32_t index = 0;
    while (index < rows.size() && strcmp(rows[index]->option.key, record.name) != 0)
        ++index;
    if (index == rows.size()) {
        check(result == 0x80000000u, "a result without a row");
        return;
    }
    const Row& row = *rows[index];
    const uint32_t type = row.option.flags & 0xf;
    uint32_t expected = index;
    if (record.data && record.type == type && (type != VX_CONFIG_TYPE_INT || record.length == 4)) {
        checkStored(row, record.data, &expected);
    } else {
        expected += record.data ? 0x20000000u : 0x40000000u;
        if (row.option.flags & 0x8000) {
            if (isText(row.option))
                checkText(row, row.text, &expected);
            else if (type == VX_CONFIG_TYPE_INT)
                checkNumber(row, static_cast<int32_t>(row.option.def.number));
        }
    }
    check(result == expected, "another result");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    std::vector<std::unique_ptr<Row>> rows;
    std::vector<config_option_t> table;
    for (int count = input.byte() % 6; count; --count) {
        rows.push_back(rowOf(input));
        table.push_back(rows.back()->option);
    }
    const uint32_t type = input.byte();
    const char* const key = KEYS[input.byte() % KEY_COUNT];
    const std::string value = input.rest();
    const auto copy = fuzz::exactCopy(reinterpret_cast<const uint8_t*>(value.data()), value.size());
    config_data_t record;
    config_fill_record(&record, type, key, value.empty() ? nullptr : copy.get(),
                       static_cast<uint32_t>(value.size()), 0);
    const uint32_t result = config_parse(&record, table.data(), static_cast<uint32_t>(table.size()));
    checkResult(rows, record, result);
    return 0;
}
