// Many keys in one message: readv, writev, modifyv, readm.
#include "runtime/config_client_api.h"

#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/busclient.h"
#include "support/emptyterminal.h"
#include "support/nomemory.h"
#include "support/rawbus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <syslog.h>

namespace {

using sim::Value;

std::string entry(uint8_t type, const std::string& key, const std::string& value, int status = 0)
{
    const std::string name = padTo4(key + '\0');
    return std::string{static_cast<char>(type), static_cast<char>(status), '\0', '\0'} +
           le32(static_cast<uint32_t>(name.size())) + le32(static_cast<uint32_t>(value.size())) + name +
           padTo4(value);
}

std::string withNul(const std::string& text)
{
    return text + '\0';
}

// --- Against the real server ------------------------------------------------------------------------------

class ConfigVector : public testing::Test {
protected:
    ConfigVector() : terminal(emptyTerminal())
    {
        terminal.useForProcess();
        conn = cbus_conn_create(nullptr, "test");
        config_init_cbus(conn, nullptr);
    }
    ~ConfigVector() override
    {
        config_reset_for_test();
        endConnection(conn);
    }

    sim::Terminal terminal;
    cbus_conn_t* conn;
};

TEST_F(ConfigVector, ReadvReadsEachKeyIntoItsRecord)
{
    terminal.set("ram.a", 7);
    terminal.set("ram.b", "text");
    terminal.set("ram.c", Value::blob("xyz"));
    int number = 0;
    char text[8] = "zzzzzzz";
    char blob[4] = "zzz";
    config_data_t recs[] = {{VX_CONFIG_TYPE_INT, "ram.a", &number, 4, 0, 9},
                            {VX_CONFIG_TYPE_STRING, "ram.b", text, 8, 0, 9},
                            {VX_CONFIG_TYPE_BLOB, "ram.c", blob, 2, 0, 9}};
    EXPECT_EQ(config_readv("route", 3, recs), 0);
    EXPECT_EQ(number, 7);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(std::string(blob, 3), "xyz");
    EXPECT_EQ(recs[0].length, 4u);
    EXPECT_EQ(recs[1].length, 5u);
    EXPECT_EQ(recs[2].length, 3u); // of the value, although only two bytes fit
    EXPECT_EQ(recs[0].status, 0);
    EXPECT_EQ(recs[1].status, 0);
}

TEST_F(ConfigVector, ReadvOfAnAbsentKeyMarksThatRecordOnly)
{
    terminal.set("ram.a", 7);
    terminal.set("ram.c", 9);
    int a = 0, b = 77, c = 0;
    config_data_t recs[] = {{VX_CONFIG_TYPE_INT, "ram.a", &a, 4, 0, 0},
                            {VX_CONFIG_TYPE_INT, "ram.b", &b, 4, 8, 0},
                            {VX_CONFIG_TYPE_INT, "ram.c", &c, 4, 0, 0}};
    EXPECT_EQ(config_readv("route", 3, recs), 0);
    EXPECT_EQ(recs[1].status, VX_CONFIG_NO_RECORD);
    EXPECT_EQ(recs[1].length, 0u);
    EXPECT_EQ(a, 7);
    EXPECT_EQ(b, 77);
    EXPECT_EQ(c, 9);
    EXPECT_EQ(recs[2].status, 0);
}

TEST_F(ConfigVector, WritevWritesAllInOneMessage)
{
    int number = 5;
    char text[] = "text";
    char blob[] = "xyz";
    const config_data_t recs[] = {{VX_CONFIG_TYPE_INT, "ram.a", &number, 0, 0, 0},
                                  {VX_CONFIG_TYPE_STRING, "ram.b", text, 0, 0, 0},
                                  {VX_CONFIG_TYPE_BLOB, "ram.c", blob, 2, 0, 0}};
    EXPECT_EQ(config_writev("", 3, recs), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.writev")); // an empty routing word leaves out the dot
    terminal.settle();
    EXPECT_EQ(terminal.get("ram.a"), Value::integer(5));
    EXPECT_EQ(terminal.get("ram.b"), Value::text("text"));
    EXPECT_EQ(terminal.get("ram.c"), Value::blob("xy"));
}

TEST_F(ConfigVector, ModifyvWaitsForTheResult)
{
    int number = 5;
    config_data_t rec = {VX_CONFIG_TYPE_INT, "ram.a", &number, 4, 0, 9};
    EXPECT_EQ(config_modifyv("route", 1, &rec), 0);
    EXPECT_EQ(rec.status, 0);
    EXPECT_EQ(terminal.get("ram.a"), Value::integer(5));
}

TEST_F(ConfigVector, ReadmListsTheKeysThatMatch)
{
    terminal.set("ram.log.alert.1.text", "one");
    terminal.set("ram.log.alert.1.id", 77);
    terminal.set("ram.log.other", 1);
    uint32_t count = 0;
    config_data_t* recs = nullptr;
    ASSERT_EQ(config_readm("ram.log\\.alert\\..*", &count, &recs), 0);
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(recs[0].name, "ram.log.alert.1.id");
    EXPECT_EQ(recs[0].type, uint32_t(VX_CONFIG_TYPE_INT));
    EXPECT_EQ(recs[0].size, 4u);
    EXPECT_EQ(recs[0].length, 4u);
    int32_t number = 0;
    memcpy(&number, recs[0].data, 4);
    EXPECT_EQ(number, 77);
    EXPECT_STREQ(recs[1].name, "ram.log.alert.1.text");
    EXPECT_STREQ(static_cast<char*>(recs[1].data), "one");
    EXPECT_EQ(recs[1].status, 0);
    free(recs);
}

TEST_F(ConfigVector, ReadmWithoutAMatchIsNull)
{
    uint32_t count = 9;
    config_data_t* recs = reinterpret_cast<config_data_t*>(&count);
    EXPECT_EQ(config_readm("ram.none.*", &count, &recs), 0);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(recs, nullptr);
}

// --- Byte by byte -----------------------------------------------------------------------------------------

class ConfigVectorWire : public testing::Test {
protected:
    void SetUp() override
    {
        syslogtap_start();
        conn = bus.connect();
        ASSERT_NE(conn, nullptr);
        config_init_cbus(conn, nullptr);
    }
    void TearDown() override
    {
        syslogtap_stop();
        config_reset_for_test();
        endConnection(conn);
    }
    std::string message(uint8_t type, const std::string& name, const std::string& data)
    {
        return frameBytes(type, static_cast<uint8_t>(conn->fd), 0, name, data);
    }
    void answer(const std::string& data) { bus.send(replyBytes(conn->next_seqn, data)); }

    RawBus bus;
    cbus_conn_t* conn = nullptr;
};

TEST_F(ConfigVectorWire, ReadvSendsTypesAndKeysWithoutValues)
{
    int number = 5;
    config_data_t recs[] = {{VX_CONFIG_TYPE_INT, "a", &number, 4, 0, 0},
                            {VX_CONFIG_TYPE_STRING, "bcde", &number, 4, 0, 0}};
    answer(entry(3, "a", le32(1)) + entry(2, "bcde", withNul("x")));
    EXPECT_EQ(config_readv("blk", 2, recs), 0);
    EXPECT_EQ(bus.takeAll(),
              message(CBUS_TYPE_REQUEST, "config.readv.blk", entry(3, "a", "") + entry(2, "bcde", "")));
}

// One record against one entry of the reply.
struct ReadvRow {
    const char* what;
    uint32_t type, size;
    bool dest;
    uint8_t entryType;
    std::string value;
    int entryStatus;
    int status;
    uint32_t length;
    std::string stored; // of "zzzzzzzz"
};

const ReadvRow readvRows[] = {
    {"int", 3, 4, true, 3, le32(0x41424344), 0, 0, 4, "DCBAzzzz"},
    {"int of 2 bytes", 3, 4, true, 3, "ab", 0, -6, 2, "zzzzzzzz"},
    {"int into 2 bytes", 3, 2, true, 3, le32(1), 0, -6, 4, "zzzzzzzz"},
    {"int of 8 bytes into 4", 3, 4, true, 3, "ABCDEFGH", 0, 0, 8, "ABCDzzzz"},
    {"int without a destination", 3, 4, false, 3, "ab", 0, 0, 2, "zzzzzzzz"},
    {"int of destination size 0", 3, 0, true, 3, le32(1), 0, 0, 4, "zzzzzzzz"},
    {"string", 2, 8, true, 2, std::string("abc\0", 4), 0, 0, 4, std::string("abc\0zzz\0", 8)},
    {"string that is cut", 2, 4, true, 2, std::string("abcdef\0", 7), 0, 0, 7, std::string("abc\0zzzz", 8)},
    {"string of the buffer's length", 2, 4, true, 2, "abcd", 0, 0, 4, std::string("abc\0zzzz", 8)},
    {"empty string", 2, 4, true, 2, "", 0, 0, 0, std::string("zzz\0zzzz", 8)},
    {"blob", 1, 8, true, 1, "abc", 0, 0, 3, "abczzzzz"},
    {"blob that is cut", 1, 2, true, 1, "abc", 0, 0, 3, "abzzzzzz"},
    {"status is kept", 1, 8, true, 1, "abc", -7, -7, 3, "abczzzzz"},
    {"absent", 3, 4, true, 3, le32(1), -5, -5, 0, "zzzzzzzz"},
    {"absent of another type", 3, 4, true, 0, "", -5, -5, 0, "zzzzzzzz"},
    {"another type", 3, 4, true, 2, std::string("abc\0", 4), 0, -6, 0, "zzzzzzzz"},
    {"any type is no type here", 0, 4, true, 3, le32(1), 0, -6, 0, "zzzzzzzz"},
};

TEST_F(ConfigVectorWire, ReadvFillsRecordsByType)
{
    for (const ReadvRow& row : readvRows) {
        char dest[9] = "zzzzzzzz";
        config_data_t rec = {row.type, "key", row.dest ? dest : nullptr, row.size, 99, 99};
        answer(entry(row.entryType, "key", row.value, row.entryStatus));
        EXPECT_EQ(config_readv("r", 1, &rec), 0) << row.what;
        EXPECT_EQ(rec.status, row.status) << row.what;
        EXPECT_EQ(rec.length, row.length) << row.what;
        EXPECT_EQ(std::string(dest, 8), row.stored) << row.what;
    }
}

TEST_F(ConfigVectorWire, ReplyWithMoreEntriesThanRecordsIsBoundedAndLogged)
{
    int number = 0;
    config_data_t recs[2] = {{VX_CONFIG_TYPE_INT, "a", &number, 4, 0, 0},
                             {VX_CONFIG_TYPE_INT, "guard", nullptr, 0, 99, 99}};
    answer(entry(3, "a", le32(1)) + entry(3, "b", le32(2)) + entry(3, "c", le32(3)));
    EXPECT_EQ(config_readv("r", 1, recs), 0);
    EXPECT_EQ(number, 1);
    EXPECT_EQ(recs[1].status, 99);
    EXPECT_EQ(syslogtap::count(LOG_ERR, "config: readv of 1 keys answered with 3\n"), 1u);
    answer(entry(3, "a", "", -4) + entry(3, "b", "", -8));
    EXPECT_EQ(config_modifyv("r", 1, recs), -4);
    EXPECT_EQ(recs[1].status, 99);
}

TEST_F(ConfigVectorWire, ReplyWithFewerEntriesLeavesTheOtherRecordsAndIsLogged)
{
    int number = 0;
    config_data_t recs[2] = {{VX_CONFIG_TYPE_INT, "a", &number, 4, 0, 0},
                             {VX_CONFIG_TYPE_INT, "b", nullptr, 0, 99, 99}};
    answer(entry(3, "a", le32(1)));
    EXPECT_EQ(config_readv("r", 2, recs), 0);
    EXPECT_EQ(recs[1].status, 99);
    EXPECT_EQ(syslogtap::count(LOG_ERR, "config: readv of 2 keys answered with 1\n"), 1u);
}

TEST_F(ConfigVectorWire, BrokenEntryInAReplyGivesMinus1)
{
    config_data_t rec = {VX_CONFIG_TYPE_INT, "a", nullptr, 0, 0, 0};
    answer(entry(3, "a", le32(1)).substr(0, 17));
    EXPECT_EQ(config_readv("r", 1, &rec), -1);
}

TEST_F(ConfigVectorWire, ValueLengthsOfAWrite)
{
    int number = 5;
    char text[] = "abc";
    const config_data_t recs[] = {
        {VX_CONFIG_TYPE_STRING, "a", text, 99, 0, 0},    // the text's length + 1, whatever size
        {VX_CONFIG_TYPE_STRING, "b", nullptr, 99, 0, 0}, // 0
        {VX_CONFIG_TYPE_INT, "c", &number, 99, 0, 0},    // 4, whatever size
        {VX_CONFIG_TYPE_INT, "d", nullptr, 99, 0, 0},    // 0
        {VX_CONFIG_TYPE_BLOB, "e", text, 2, 0, 0},       // its size
        {VX_CONFIG_TYPE_BLOB, "f", nullptr, 99, 0, 0},   // nothing there
        {VX_CONFIG_TYPE_NONE, "g", nullptr, 0, 0, 0},
        {VX_CONFIG_TYPE_INT, nullptr, &number, 4, 0, 0}, // without a name: passed over
    };
    EXPECT_EQ(config_writev("r", 8, recs), 0);
    EXPECT_EQ(bus.takeAll(),
              message(CBUS_TYPE_SIGNAL, "config.writev.r",
                      entry(2, "a", withNul("abc")) + entry(2, "b", "") + entry(3, "c", le32(5)) +
                          entry(3, "d", "") + entry(1, "e", "ab") + entry(1, "f", "") + entry(0, "g", "")));
}

TEST_F(ConfigVectorWire, ModifyvGivesEachRecordItsStatusAndReturnsTheFirstThatIsNot0)
{
    int number = 5;
    config_data_t recs[] = {{VX_CONFIG_TYPE_INT, "a", &number, 4, 0, 99},
                            {VX_CONFIG_TYPE_INT, "b", &number, 4, 0, 99},
                            {VX_CONFIG_TYPE_INT, "c", &number, 4, 0, 99}};
    answer(entry(3, "a", "", 0) + entry(3, "b", "", VX_CONFIG_VERIFY_FAIL) +
           entry(3, "c", "", VX_CONFIG_READONLY));
    EXPECT_EQ(config_modifyv("blk", 3, recs), VX_CONFIG_VERIFY_FAIL);
    EXPECT_EQ(recs[0].status, 0);
    EXPECT_EQ(recs[1].status, VX_CONFIG_VERIFY_FAIL);
    EXPECT_EQ(recs[2].status, VX_CONFIG_READONLY);
    EXPECT_EQ(bus.takeAll(),
              message(CBUS_TYPE_REQUEST, "config.modifyv.blk",
                      entry(3, "a", le32(5)) + entry(3, "b", le32(5)) + entry(3, "c", le32(5))));
}

TEST_F(ConfigVectorWire, ReadmSendsTheExpressionAsSuffixWithoutData)
{
    answer(le32(0) + le32(2) + entry(3, "ram.a", le32(7)) + entry(2, "ram.b", ""));
    uint32_t count;
    config_data_t* recs;
    ASSERT_EQ(config_readm("ram\\..*", &count, &recs), 0);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_REQUEST, "config.readm.ram\\..*", ""));
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(recs[0].name, "ram.a");
    EXPECT_EQ(recs[1].data, nullptr); // an empty value
    EXPECT_EQ(recs[1].length, 0u);
    // One block holds it all.
    EXPECT_GT(static_cast<const void*>(recs[0].name), static_cast<void*>(recs));
    free(recs);
}

TEST_F(ConfigVectorWire, ReadmDropsEntriesBeyondTheAnnouncedCountAndReturnsMinus1)
{
    answer(le32(0) + le32(1) + entry(3, "a", le32(7)) + entry(3, "b", le32(8)));
    uint32_t count;
    config_data_t* recs;
    EXPECT_EQ(config_readm(".*", &count, &recs), -1);
    ASSERT_EQ(count, 1u);
    EXPECT_STREQ(recs[0].name, "a");
    free(recs);
}

TEST_F(ConfigVectorWire, ReadmCountsOnlyTheRecordsThatCame)
{
    for (uint32_t announced : {2u, 0x10000000u, 0xffffffffu}) {
        answer(le32(0) + le32(announced) + entry(3, "a", le32(7)));
        uint32_t count;
        config_data_t* recs;
        EXPECT_EQ(config_readm(".*", &count, &recs), 0);
        ASSERT_EQ(count, 1u);
        EXPECT_STREQ(recs[0].name, "a");
        free(recs);
        EXPECT_EQ(syslogtap::count(LOG_ERR,
                                   "config: " + std::to_string(announced) + " records announced, 1 found\n"),
                  1u);
    }
}

TEST_F(ConfigVectorWire, ReadmEndsATextThatLacksItsNul)
{
    answer(le32(0) + le32(1) + entry(2, "a%s", "text"));
    uint32_t count;
    config_data_t* recs;
    ASSERT_EQ(config_readm(".*", &count, &recs), 0);
    EXPECT_STREQ(static_cast<char*>(recs[0].data), "tex");
    EXPECT_EQ(syslogtap::count(LOG_ERR, "config: text of a%s without its NUL, cut\n"), 1u);
    free(recs);
}

TEST_F(ConfigVectorWire, ReadmWithoutMemoryReturnsMinus1)
{
    answer(le32(0) + le32(1) + entry(3, "a", le32(7)));
    uint32_t count = 9;
    config_data_t* recs = reinterpret_cast<config_data_t*>(&count);
    NoMemory none(1); // the message itself
    EXPECT_EQ(config_readm(".*", &count, &recs), -1);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(recs, nullptr);
}

TEST_F(ConfigVectorWire, EmptyListsAreSentAndAnsweredEmpty)
{
    EXPECT_EQ(config_writev("r", 0, nullptr), 0);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.writev.r", ""));
    answer("");
    EXPECT_EQ(config_readv("r", 0, nullptr), 0);
    answer("");
    EXPECT_EQ(config_modifyv("r", 0, nullptr), 0);
    EXPECT_EQ(syslogtap_count(), 0u);
}

} // namespace
