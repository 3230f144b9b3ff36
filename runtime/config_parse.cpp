// Applies a record to a table of options. Touches no bus and no state of its own: any thread.
#include "runtime/config_client_api.h"

#include <string.h>

#include "runtime/vx_string.h"

namespace {

uint32_t expected_type(const config_option_t& row)
{
    return row.flags & CONFIG_OPT_TYPE_MASK;
}

void store_number(const config_option_t& row, int32_t value)
{
    const uint32_t truth = value != 0;
    uint32_t number = static_cast<uint32_t>(value);
    uint32_t size = 0;
    switch (row.flags & CONFIG_OPT_FORM_MASK) {
    case CONFIG_OPT_FORM_U32:
        size = 4;
        break;
    case CONFIG_OPT_FORM_U16:
        size = 2;
        break;
    case CONFIG_OPT_FORM_U8:
        size = 1;
        break;
    case CONFIG_OPT_FORM_BOOL:
        size = row.size;
        number = truth;
        break;
    }
    const uint16_t half = static_cast<uint16_t>(number);
    const uint8_t byte = static_cast<uint8_t>(number);
    if (!row.dest)
        return;
    if (size == 4)
        memcpy(row.dest, &number, 4);
    else if (size == 2)
        memcpy(row.dest, &half, 2);
    else if (size == 1)
        memcpy(row.dest, &byte, 1);
}

uint32_t store_text(const config_option_t& row, const char* text)
{
    if (row.size == 0 || !row.dest)
        return CONFIG_PARSE_CUT;
    const size_t wanted = vx_strlcpy(static_cast<char*>(row.dest), text, row.size);
    return wanted < row.size ? 0u : +CONFIG_PARSE_CUT;
}

uint32_t store_value(const config_option_t& row, const void* data)
{
    int32_t value;
    switch (expected_type(row)) {
    case VX_CONFIG_TYPE_STRING:
        return store_text(row, static_cast<const char*>(data));
    case VX_CONFIG_TYPE_INT:
        memcpy(&value, data, sizeof(value));
        store_number(row, value);
    }
    return 0;
}

uint32_t store_default(const config_option_t& row)
{
    switch (expected_type(row)) {
    case VX_CONFIG_TYPE_STRING:
        return store_text(row, row.def.text ? row.def.text : "");
    case VX_CONFIG_TYPE_INT:
        store_number(row, static_cast<int32_t>(row.def.number));
    }
    return 0;
}

// An int of any other length than 4 counts as data of another type.
bool fits(const config_option_t& row, const config_data_t* rec)
{
    return rec->type == expected_type(row) && (rec->type != VX_CONFIG_TYPE_INT || rec->length == 4);
}

} // namespace

uint32_t config_parse(const config_data_t* rec, const config_option_t* table, uint32_t rows)
{
    uint32_t index = 0;
    while (index < rows && strcmp(table[index].key, rec->name) != 0)
        ++index;
    if (index == rows)
        return CONFIG_PARSE_NO_ROW;
    const config_option_t& row = table[index];
    if (rec->data && fits(row, rec))
        return index + store_value(row, rec->data);
    uint32_t result = index + (rec->data ? CONFIG_PARSE_OTHER_TYPE : CONFIG_PARSE_NO_DATA);
    if (row.flags & CONFIG_OPT_DEFAULT)
        result += store_default(row);
    return result;
}
