// Applying records to tables of options.
#include "runtime/config_client_api.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

const uint16_t text = VX_CONFIG_TYPE_STRING;
const uint16_t number = VX_CONFIG_TYPE_INT;

config_data_t record(const char* name, uint32_t type, const void* data, uint32_t length)
{
    return {type, name, const_cast<void*>(data), length, length, 0};
}

config_data_t record(const char* name, const char* value)
{
    return record(name, VX_CONFIG_TYPE_STRING, value, static_cast<uint32_t>(strlen(value) + 1));
}

config_data_t record(const char* name, const int32_t& value)
{
    return record(name, VX_CONFIG_TYPE_INT, &value, 4);
}

uint32_t apply(const config_data_t& rec, const config_option_t& row)
{
    return config_parse(&rec, &row, 1);
}

TEST(ConfigParse, WithoutRowsOrWithoutTheKeyTheResultIs80000000)
{
    char dest[8] = "old";
    const config_option_t table[] = {{"cfg.a", dest, 8, text, {}}};
    const config_data_t known = record("cfg.a", "x");
    EXPECT_EQ(config_parse(&known, table, 0), 0x80000000u);
    for (const char* name : {"cfg.b", "cfg.", "cfg.aa", "CFG.A", ""}) {
        const config_data_t rec = record(name, "x");
        EXPECT_EQ(config_parse(&rec, table, 1), 0x80000000u) << name;
    }
    EXPECT_STREQ(dest, "old");
}

TEST(ConfigParse, ResultIsTheIndexOfTheFirstRowWithTheKey)
{
    char a[8] = "", b[8] = "", c[8] = "";
    const config_option_t table[] = {
        {"cfg.a", a, 8, text, {}}, {"cfg.b", b, 8, text, {}}, {"cfg.b", c, 8, text, {}}};
    const config_data_t rec = record("cfg.b", "x");
    EXPECT_EQ(config_parse(&rec, table, 3), 1u);
    EXPECT_STREQ(b, "x");
    EXPECT_STREQ(c, "");
}

TEST(ConfigParse, TextsAreCutAtTheDestinationAndAlwaysEnded)
{
    struct {
        const char* value;
        uint16_t size;
        uint32_t result;
        const char* stored;
    } rows[] = {
        {"abc", 8, 0, "abc"},       {"abc", 4, 0, "abc"}, {"abc", 3, 0x10000000, "ab"},
        {"abc", 1, 0x10000000, ""}, {"", 1, 0, ""},       {"abc", 0, 0x10000000, "old"},
    };
    for (const auto& row : rows) {
        char dest[8] = "old";
        const config_option_t option = {"k", dest, row.size, text, {}};
        EXPECT_EQ(apply(record("k", row.value), option), row.result) << row.value << " in " << row.size;
        EXPECT_STREQ(dest, row.stored) << row.value << " in " << row.size;
    }
}

TEST(ConfigParse, IntsTakeTheFormOfTheDestination)
{
    struct {
        uint16_t form;
        uint16_t size;
        int32_t value;
        uint32_t stored; // of four bytes that were all ones
    } rows[] = {
        {0x10, 4, 0x12345678, 0x12345678},
        {0x20, 2, 0x12345678, 0xffff5678},
        {0x30, 1, 0x12345678, 0xffffff78},
        {0x10, 4, -2, 0xfffffffe},
        {0x40, 4, 17, 1},
        {0x40, 4, 0, 0},
        {0x40, 2, 17, 0xffff0001},
        {0x40, 2, 0, 0xffff0000},
        {0x40, 1, -1, 0xffffff01},
        {0x40, 1, 0, 0xffffff00},
        {0x40, 3, 1, 0xffffffff},
        {0x00, 4, 5, 0xffffffff},
        {0x50, 4, 5, 0xffffffff},
        {0xf0, 4, 5, 0xffffffff},
    };
    for (const auto& row : rows) {
        uint32_t dest = 0xffffffff;
        const config_option_t option = {"k", &dest, row.size, static_cast<uint16_t>(number | row.form), {}};
        EXPECT_EQ(apply(record("k", row.value), option), 0u) << row.form;
        EXPECT_EQ(dest, row.stored) << "form " << row.form << " size " << row.size << " value " << row.value;
    }
}

TEST(ConfigParse, WithoutADestinationNothingIsStored)
{
    const config_option_t numberRow = {"k", nullptr, 4, static_cast<uint16_t>(number | 0x10), {}};
    EXPECT_EQ(apply(record("k", int32_t(5)), numberRow), 0u);
    const config_option_t textRow = {"k", nullptr, 8, text, {}};
    EXPECT_EQ(apply(record("k", "x"), textRow), uint32_t(CONFIG_PARSE_CUT));
}

// What the record has against what the row wants, without and with a default.
struct Misfit {
    const char* what;
    uint32_t type;
    uint32_t length;
    bool hasData;
    uint16_t wanted;
    uint32_t result;
};

const Misfit misfits[] = {
    {"int for a text", VX_CONFIG_TYPE_INT, 4, true, text, 0x20000000},
    {"text for an int", VX_CONFIG_TYPE_STRING, 4, true, number, 0x20000000},
    {"int of 2 bytes", VX_CONFIG_TYPE_INT, 2, true, number, 0x20000000},
    {"int of 8 bytes", VX_CONFIG_TYPE_INT, 8, true, number, 0x20000000},
    {"blob for a text", VX_CONFIG_TYPE_BLOB, 4, true, text, 0x20000000},
    {"no data for a text", VX_CONFIG_TYPE_STRING, 0, false, text, 0x40000000},
    {"no data for an int", VX_CONFIG_TYPE_INT, 4, false, number, 0x40000000},
    {"no data of another type", VX_CONFIG_TYPE_INT, 4, false, text, 0x40000000},
};

TEST(ConfigParse, WithoutADefaultTheDestinationStays)
{
    for (const Misfit& row : misfits) {
        char dest[8] = "oldold";
        const config_option_t table[] = {
            {"other", nullptr, 0, text, {}},
            {"k", dest, sizeof dest, static_cast<uint16_t>(row.wanted | 0x10), "default"}};
        const config_data_t rec = record("k", row.type, row.hasData ? "1234567" : nullptr, row.length);
        EXPECT_EQ(config_parse(&rec, table, 2), 1 + row.result) << row.what;
        EXPECT_STREQ(dest, "oldold") << row.what;
    }
}

TEST(ConfigParse, WithADefaultTheDefaultIsStored)
{
    for (const Misfit& row : misfits) {
        char dest[8] = "oldold";
        const bool wantsText = row.wanted == text;
        const config_option_t table[] = {
            {"other", nullptr, 0, text, {}},
            {"k", dest, sizeof dest, static_cast<uint16_t>(row.wanted | 0x8010),
             wantsText ? config_option_default_t("def") : config_option_default_t(-7)}};
        const config_data_t rec = record("k", row.type, row.hasData ? "1234567" : nullptr, row.length);
        EXPECT_EQ(config_parse(&rec, table, 2), 1 + row.result) << row.what;
        int32_t stored;
        memcpy(&stored, dest, 4);
        if (wantsText)
            EXPECT_STREQ(dest, "def") << row.what;
        else
            EXPECT_EQ(stored, -7) << row.what;
    }
}

TEST(ConfigParse, ACutDefaultAddsItsBit)
{
    char dest[4] = "";
    const config_option_t option = {"k", dest, 3, text | 0x8000, "default"};
    EXPECT_EQ(apply(record("k", VX_CONFIG_TYPE_STRING, nullptr, 0), option), 0x50000000u);
    EXPECT_STREQ(dest, "de");
    EXPECT_EQ(apply(record("k", VX_CONFIG_TYPE_INT, "1234", 4), option), 0x30000000u);
    const config_option_t none = {"k", dest, 0, text | 0x8000, "default"};
    EXPECT_EQ(apply(record("k", VX_CONFIG_TYPE_STRING, nullptr, 0), none), 0x50000000u);
}

TEST(ConfigParse, AValueThatFitsBeatsTheDefault)
{
    char dest[8] = "";
    const config_option_t option = {"k", dest, 8, text | 0x8000, "default"};
    EXPECT_EQ(apply(record("k", "mine"), option), 0u);
    EXPECT_STREQ(dest, "mine");
}

TEST(ConfigParse, ADefaultTruthValueIsZeroOrOne)
{
    uint8_t dest = 9;
    const config_option_t option = {"k", &dest, 1, number | 0x8040, 17};
    EXPECT_EQ(apply(record("k", VX_CONFIG_TYPE_INT, nullptr, 0), option), 0x40000000u);
    EXPECT_EQ(dest, 1);
}

TEST(ConfigParse, ANullDefaultTextIsEmpty)
{
    char dest[8] = "old";
    const config_option_t option = {"k", dest, 8, text | 0x8000, {}};
    EXPECT_EQ(apply(record("k", VX_CONFIG_TYPE_STRING, nullptr, 0), option), 0x40000000u);
    EXPECT_STREQ(dest, "");
}

} // namespace
