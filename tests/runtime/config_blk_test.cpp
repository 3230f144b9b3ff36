// Blocks of reads and writes, against the real server.
#include "runtime/config_client_api.h"

#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/busclient.h"
#include "support/emptyterminal.h"
#include "support/nomemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using sim::Value;
using testing::ElementsAre;

class ConfigBlk : public testing::Test {
protected:
    ConfigBlk() : terminal(emptyTerminal())
    {
        terminal.useForProcess();
        conn = cbus_conn_create(nullptr, "test");
        config_init_cbus(conn, nullptr);
        config_blk_init(&blk);
    }
    ~ConfigBlk() override
    {
        config_blk_free(&blk);
        config_reset_for_test();
        endConnection(conn);
    }
    std::vector<std::string> writtenKeys() const
    {
        std::vector<std::string> keys;
        for (const sim::WriteRecord& record : terminal.writes())
            keys.push_back(record.verb + " " + record.key);
        return keys;
    }

    sim::Terminal terminal;
    cbus_conn_t* conn;
    config_blk_t blk;
};

TEST_F(ConfigBlk, InitClearsEverything)
{
    memset(&blk, 0xff, sizeof blk);
    config_blk_init(&blk);
    EXPECT_EQ(blk.writes, 0u);
    EXPECT_EQ(blk.reads, 0u);
    EXPECT_EQ(blk.write_recs, nullptr);
    EXPECT_EQ(blk.read_recs, nullptr);
    EXPECT_EQ(blk.prefix, nullptr);
    EXPECT_EQ(blk.index, 0u);
}

TEST_F(ConfigBlk, KeysAreCompletedAtTheTimeOfAdding)
{
    EXPECT_EQ(config_blk_add_int_write(&blk, "cfg.plain", 1), 0);
    config_blk_set_prefix(&blk, "cfg.bundle.", 7);
    EXPECT_EQ(config_blk_add_int_write(&blk, "name", 1), 0);
    config_blk_set_prefix(&blk, "cfg.bundle", 0);
    EXPECT_EQ(config_blk_add_int_write(&blk, "name", 1), 0);
    EXPECT_EQ(config_blk_add_read(&blk, VX_CONFIG_TYPE_INT, "read", nullptr, 0), 0);
    config_blk_set_prefix(&blk, nullptr, 3);
    EXPECT_EQ(config_blk_add_int_write(&blk, "cfg.last", 1), 0);
    ASSERT_EQ(blk.writes, 4u);
    EXPECT_STREQ(blk.write_recs[0].name, "cfg.plain");
    EXPECT_STREQ(blk.write_recs[1].name, "cfg.bundle.7.name");
    EXPECT_STREQ(blk.write_recs[2].name, "cfg.bundle.name");
    EXPECT_STREQ(blk.write_recs[3].name, "cfg.last");
    EXPECT_STREQ(blk.read_recs[0].name, "cfg.bundle.read");
}

TEST_F(ConfigBlk, CompletedKeyIsCutAt255Characters)
{
    const std::string longKey(300, 'k');
    config_blk_set_prefix(&blk, "p", 0);
    EXPECT_EQ(config_blk_add_del(&blk, longKey.c_str()), 0);
    EXPECT_EQ(std::string(blk.write_recs[0].name), "p." + std::string(253, 'k'));
    config_blk_set_prefix(&blk, nullptr, 0);
    EXPECT_EQ(config_blk_add_del(&blk, longKey.c_str()), 0); // as it stands
    EXPECT_EQ(std::string(blk.write_recs[1].name), longKey);
}

TEST_F(ConfigBlk, WritesKeepCopiesAndReadsTheCallersPointer)
{
    char key[] = "cfg.a";
    char value[] = "text";
    int dest = 0;
    EXPECT_EQ(config_blk_add_str_write(&blk, key, value), 0);
    EXPECT_EQ(config_blk_add_int_read(&blk, key, &dest), 0);
    key[4] = value[0] = 'x';
    EXPECT_STREQ(blk.write_recs[0].name, "cfg.a");
    EXPECT_STREQ(static_cast<char*>(blk.write_recs[0].data), "text");
    EXPECT_STREQ(blk.read_recs[0].name, "cfg.a");
    EXPECT_EQ(blk.read_recs[0].data, &dest);
}

TEST_F(ConfigBlk, TypesAndSizesOfTheShortForms)
{
    int number = 0;
    char chars[9];
    config_blk_add_int_read(&blk, "k", &number);
    config_blk_add_str_read(&blk, "k", chars, 9);
    config_blk_add_blob_read(&blk, "k", chars, 8);
    config_blk_add_int_write(&blk, "k", 1);
    config_blk_add_str_write(&blk, "k", "abc");
    config_blk_add_blob_write(&blk, "k", "abc", 3);
    config_blk_add_del(&blk, "k");
    std::vector<std::pair<uint32_t, uint32_t>> all;
    for (uint32_t i = 0; i < blk.reads; ++i)
        all.push_back({blk.read_recs[i].type, blk.read_recs[i].size});
    for (uint32_t i = 0; i < blk.writes; ++i)
        all.push_back({blk.write_recs[i].type, blk.write_recs[i].size});
    using P = std::pair<uint32_t, uint32_t>;
    EXPECT_THAT(all, ElementsAre(P(3, 4), P(2, 9), P(1, 8), P(3, 4), P(2, 4), P(1, 3), P(1, 0)));
    EXPECT_EQ(blk.write_recs[3].data, nullptr);
}

TEST_F(ConfigBlk, CommitWriteWritesEverythingInOneMessageAndFreesTheBlock)
{
    terminal.set("cfg.d", "goes");
    config_blk_set_prefix(&blk, "cfg", 0);
    config_blk_add_int_write(&blk, "a", -5);
    config_blk_add_str_write(&blk, "b", "text");
    config_blk_add_blob_write(&blk, "c", "\1\2\3", 3);
    config_blk_add_del(&blk, "d");
    EXPECT_EQ(config_blk_commit_write(&blk), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.writev.blk"));
    terminal.settle();
    EXPECT_EQ(terminal.get("cfg.a"), Value::integer(-5));
    EXPECT_EQ(terminal.get("cfg.b"), Value::text("text"));
    EXPECT_EQ(terminal.get("cfg.c"), Value::blob("\1\2\3"));
    EXPECT_FALSE(terminal.has("cfg.d"));
    EXPECT_THAT(writtenKeys(), ElementsAre("writev cfg.a", "writev cfg.b", "writev cfg.c", "writev cfg.d"));
    EXPECT_EQ(blk.writes, 0u);
    EXPECT_EQ(blk.write_recs, nullptr);
    EXPECT_STREQ(blk.prefix, "cfg");
}

// config_delete() writes no type, a block an empty blob: both delete.
TEST_F(ConfigBlk, DeletionInABlockIsAnEmptyBlob)
{
    terminal.set("cfg.a", 1);
    config_blk_add_del(&blk, "cfg.a");
    config_blk_commit_write(&blk);
    ASSERT_TRUE(terminal.waitForMessage("config.writev.blk"));
    terminal.settle();
    EXPECT_EQ(terminal.messagesNamed("config.writev.blk")[0].data,
              std::string("\1\0\0\0\x08\0\0\0\0\0\0\0cfg.a\0\0\0", 20));
    EXPECT_FALSE(terminal.has("cfg.a"));
}

TEST_F(ConfigBlk, CommitModifyReturnsTheResultAndFreesTheBlock)
{
    config_blk_add_int_write(&blk, "cfg.a", 5);
    EXPECT_EQ(config_blk_commit_modify(&blk), 0);
    EXPECT_EQ(terminal.get("cfg.a"), Value::integer(5));
    EXPECT_EQ(terminal.messagesNamed("config.modifyv.blk").size(), 1u);
    EXPECT_EQ(blk.writes, 0u);
}

TEST_F(ConfigBlk, CommitReadFillsTheDestinationsAndTheBlockStays)
{
    terminal.set("cfg.a", 12);
    terminal.set("cfg.b", "text");
    int number = 0;
    char text[8] = "", absent[8] = "old";
    config_blk_set_prefix(&blk, "cfg", 0);
    config_blk_add_int_read(&blk, "a", &number);
    config_blk_add_str_read(&blk, "absent", absent, sizeof absent);
    config_blk_add_str_read(&blk, "b", text, sizeof text);
    EXPECT_EQ(config_blk_commit_read(&blk), 0);
    EXPECT_EQ(number, 12);
    EXPECT_STREQ(text, "text");
    EXPECT_STREQ(absent, "old");
    ASSERT_EQ(blk.reads, 3u);
    EXPECT_EQ(blk.read_recs[0].length, 4u);
    EXPECT_EQ(blk.read_recs[1].status, VX_CONFIG_NO_RECORD);
    EXPECT_EQ(blk.read_recs[2].length, 5u);
    EXPECT_EQ(terminal.messagesNamed("config.readv.blk").size(), 1u);
}

TEST_F(ConfigBlk, CommitReadOfNothingIs0WithoutAMessage)
{
    EXPECT_EQ(config_blk_commit_read(&blk), 0);
    terminal.settle();
    EXPECT_EQ(terminal.messagesNamed("config.readv.blk").size(), 0u);
}

TEST_F(ConfigBlk, IntOfAWrongSizeIsSentWithFourBytes)
{
    config_blk_add_write(&blk, VX_CONFIG_TYPE_INT, "cfg.a", "\1\2", 2);
    config_blk_commit_modify(&blk);
    EXPECT_EQ(terminal.get("cfg.a"), Value::integer(0x0201));
}

TEST_F(ConfigBlk, TextWithoutItsNulGetsOne)
{
    config_blk_add_write(&blk, VX_CONFIG_TYPE_STRING, "cfg.a", "abcdef", 3);
    config_blk_commit_modify(&blk);
    EXPECT_EQ(terminal.get("cfg.a"), Value::text("abc"));
}

// --- Without memory ---------------------------------------------------------------------------------------

TEST_F(ConfigBlk, FailedAllocationsGiveTheirCodesWithTheCountRaised)
{
    for (int granted = 0; granted < 3; ++granted) { // array, key, value
        NoMemory none(granted);
        EXPECT_EQ(config_blk_add_int_write(&blk, "cfg.a", 1), granted + 1);
        EXPECT_EQ(blk.writes, static_cast<uint32_t>(granted + 1));
    }
    for (int granted = 0; granted < 2; ++granted) { // array, key
        NoMemory none(granted);
        EXPECT_EQ(config_blk_add_read(&blk, VX_CONFIG_TYPE_INT, "cfg.a", nullptr, 0), granted + 1);
        EXPECT_EQ(blk.reads, static_cast<uint32_t>(granted + 1));
    }
}

TEST_F(ConfigBlk, FreeSurvivesACountAboveWhatWasAllocated)
{
    config_blk_add_int_write(&blk, "cfg.a", 1);
    for (int granted = 0; granted < 3; ++granted) {
        NoMemory none(granted);
        config_blk_add_int_write(&blk, "cfg.b", 1);
        config_blk_add_read(&blk, VX_CONFIG_TYPE_INT, "cfg.b", nullptr, 0);
    }
    EXPECT_EQ(blk.writes, 4u);
    config_blk_free(&blk);
    EXPECT_EQ(blk.writes, 0u);
    EXPECT_EQ(blk.reads, 0u);
}

// A value that could not be copied must not go out empty: that would delete the key.
TEST_F(ConfigBlk, CommitSurvivesACountAboveWhatWasAllocatedAndWritesTheRest)
{
    terminal.set("cfg.b", 7);
    config_blk_add_int_write(&blk, "cfg.a", 1);
    for (int granted = 0; granted < 3; ++granted) {
        NoMemory none(granted);
        config_blk_add_int_write(&blk, "cfg.b", 1);
    }
    config_blk_add_int_write(&blk, "cfg.c", 3);
    EXPECT_EQ(config_blk_commit_modify(&blk), 0);
    EXPECT_THAT(writtenKeys(), ElementsAre("modifyv cfg.a", "modifyv cfg.c"));
    EXPECT_EQ(terminal.get("cfg.b"), Value::integer(7));
}

TEST_F(ConfigBlk, CommitReadSkipsWhatCouldNotBeAdded)
{
    terminal.set("cfg.a", 1);
    terminal.set("cfg.c", 3);
    int a = 0, b = 0, c = 0;
    config_blk_add_int_read(&blk, "cfg.a", &a);
    {
        NoMemory none(1);
        EXPECT_EQ(config_blk_add_int_read(&blk, "cfg.b", &b), 2);
    }
    config_blk_add_int_read(&blk, "cfg.c", &c);
    EXPECT_EQ(config_blk_commit_read(&blk), 0);
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 0);
    EXPECT_EQ(c, 3);
}

TEST_F(ConfigBlk, WriteOfANullTextDeletesTheKey)
{
    terminal.set("cfg.a", "text");
    EXPECT_EQ(config_blk_add_str_write(&blk, "cfg.a", nullptr), 0);
    EXPECT_EQ(blk.write_recs[0].data, nullptr);
    EXPECT_EQ(blk.write_recs[0].size, 0u);
    EXPECT_EQ(config_blk_commit_write(&blk), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.writev.blk"));
    terminal.settle();
    EXPECT_FALSE(terminal.has("cfg.a"));
}

} // namespace
