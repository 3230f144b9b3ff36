// The configuration client's single keys and the database's verbs, against the real server; the messages
// byte by byte and the replies that a server never sends, by hand.
#include "runtime/config_client_api.h"

#include "runtime/config_client_impl.h"
#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/busclient.h"
#include "support/emptyterminal.h"
#include "support/nomemory.h"
#include "support/rawbus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <syslog.h>

namespace {

using sim::Value;
using testing::KilledBySignal;

const char assertHere[] = "<1> .*: \\*\\*\\* ASSERT in config_client_api at [0-9]+\n";

// --- Against the real server ------------------------------------------------------------------------------

class ConfigApi : public testing::Test {
protected:
    ConfigApi() : terminal(emptyTerminal())
    {
        signal(SIGPIPE, SIG_IGN); // as every process of the terminal does
        terminal.useForProcess();
        conn = cbus_conn_create(nullptr, "test");
        config_init_cbus(conn, nullptr);
        syslogtap_start();
    }
    ~ConfigApi() override
    {
        syslogtap_stop();
        config_reset_for_test();
        endConnection(conn);
    }

    sim::Terminal terminal;
    cbus_conn_t* conn;
};

TEST_F(ConfigApi, IntIsReadAndWritten)
{
    EXPECT_EQ(config_write_int("cfg.a", -123456), 0);
    int value = 0;
    EXPECT_EQ(config_read_int("cfg.a", &value), 0);
    EXPECT_EQ(value, -123456);
    EXPECT_EQ(terminal.get("cfg.a"), Value::integer(-123456));
}

TEST_F(ConfigApi, StringIsReadAndWritten)
{
    EXPECT_EQ(config_write_string("cfg.a", "h\xc3\xa9llo"), 0);
    char text[16] = "";
    EXPECT_EQ(config_read_string("cfg.a", text, sizeof text), 0);
    EXPECT_STREQ(text, "h\xc3\xa9llo");
    EXPECT_EQ(terminal.get("cfg.a"), Value::text("h\xc3\xa9llo"));
}

TEST_F(ConfigApi, BlobIsReadAndWritten)
{
    EXPECT_EQ(config_write_typed("cfg.a", "\0\1\2", 3, VX_CONFIG_TYPE_BLOB), 0);
    char bytes[8] = "zzzzzzz";
    uint32_t length = 0, type = VX_CONFIG_TYPE_NONE;
    EXPECT_EQ(config_read_typed("cfg.a", bytes, 8, &length, &type), 0);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(type, uint32_t(VX_CONFIG_TYPE_BLOB));
    EXPECT_EQ(std::string(bytes, 4), std::string("\0\1\2z", 4));
}

TEST_F(ConfigApi, ReadStringOfSize4OfASixCharacterValueGivesThreeCharactersAnd0)
{
    terminal.set("cfg.a", "abcdef");
    char text[5] = "zzzz";
    EXPECT_EQ(config_read_string("cfg.a", text, 4), 0);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text[4], '\0');
}

TEST_F(ConfigApi, ReadStringOfSize1IsEmpty)
{
    terminal.set("cfg.a", "abcdef");
    char text[2] = {'z', 'z'};
    EXPECT_EQ(config_read_string("cfg.a", text, 1), 0);
    EXPECT_EQ(text[0], '\0');
    EXPECT_EQ(text[1], 'z');
}

TEST_F(ConfigApi, ReadStringWithoutABufferGivesMinus7AtOnce)
{
    char text[4] = "old";
    EXPECT_EQ(config_read_string("cfg.a", nullptr, 4), VX_CONFIG_BUFFER_TOO_SMALL);
    EXPECT_EQ(config_read_string("cfg.a", text, 0), VX_CONFIG_BUFFER_TOO_SMALL);
    EXPECT_STREQ(text, "old");
    terminal.settle();
    EXPECT_TRUE(terminal.messagesNamed("config.read.cfg.a").empty());
}

TEST_F(ConfigApi, IntReadAsAStringGivesMinus6AndLeavesTheBufferAlone)
{
    terminal.set("cfg.a", 0x41424344);
    char text[8] = "old";
    EXPECT_EQ(config_read_string("cfg.a", text, 8), VX_CONFIG_WRONG_TYPE);
    EXPECT_STREQ(text, "old");
}

TEST_F(ConfigApi, StringReadAsAnIntGivesMinus6AndLeavesTheValueAsItWas)
{
    terminal.set("cfg.a", "abc"); // 4 bytes
    int value = 77;
    EXPECT_EQ(config_read_int("cfg.a", &value), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(value, 77);
}

TEST_F(ConfigApi, ReadOfAMissingKeyGivesMinus5AndLeavesTheValueAsItWas)
{
    int value = 77;
    EXPECT_EQ(config_read_int("cfg.absent", &value), VX_CONFIG_NO_RECORD);
    EXPECT_EQ(value, 77);
    char text[4] = "old";
    EXPECT_EQ(config_read_string("cfg.absent", text, 4), VX_CONFIG_NO_RECORD);
    EXPECT_STREQ(text, "old");
}

TEST_F(ConfigApi, ReadTypedIntoTooSmallABufferGivesMinus7AndWhatFits)
{
    terminal.set("cfg.a", Value::blob("abcdef"));
    char bytes[4] = "zzz";
    uint32_t length = 0, type = VX_CONFIG_TYPE_BLOB;
    EXPECT_EQ(config_read_typed("cfg.a", bytes, 2, &length, &type), VX_CONFIG_BUFFER_TOO_SMALL);
    EXPECT_EQ(length, 2u);
    EXPECT_STREQ(bytes, "abz");
}

TEST_F(ConfigApi, DeleteRemovesTheKey)
{
    terminal.set("cfg.a", 1);
    EXPECT_EQ(config_delete("cfg.a"), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.write.cfg.a"));
    terminal.settle();
    EXPECT_FALSE(terminal.has("cfg.a"));
}

TEST_F(ConfigApi, LongValuesTravelWhole)
{
    for (size_t size : {187, 188, 189, 5000}) {
        const std::string text(size - 1, 'x');
        EXPECT_EQ(config_write_string("cfg.a", text.c_str()), 0);
        std::string back(size + 1, 'z');
        EXPECT_EQ(config_read_string("cfg.a", &back[0], static_cast<uint32_t>(back.size())), 0);
        EXPECT_EQ(std::string(back.c_str()), text);
    }
}

TEST_F(ConfigApi, SyncAndDeleteByExpressionReachTheDatabase)
{
    terminal.set("ram.net.tft.0.a", 1);
    terminal.set("ram.net.tft.1.a", 1);
    EXPECT_EQ(config_deletem("ram.net.tft.0.*"), 0);
    EXPECT_EQ(config_sync("cfg"), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.sync.cfg"));
    terminal.settle();
    EXPECT_EQ(terminal.messagesNamed("config.sync.cfg")[0].data, "");
    EXPECT_FALSE(terminal.has("ram.net.tft.0.a"));
    EXPECT_TRUE(terminal.has("ram.net.tft.1.a"));
}

TEST_F(ConfigApi, StatusOfAKeyIsAnswered)
{
    terminal.set("cfg.a", 1);
    uint32_t value = 0xffffffff;
    EXPECT_EQ(config_status("cfg.a", &value), 0);
    EXPECT_NE(value, 0xffffffffu);
    EXPECT_EQ(config_status("cfg.a", nullptr), 0);
}

TEST_F(ConfigApi, DebugFlagIsAKey)
{
    EXPECT_EQ(config_dbg_test("ram.debug.x"), 0);
    EXPECT_EQ(config_dbg_set("ram.debug.x", 1), 0);
    EXPECT_EQ(config_dbg_test("ram.debug.x"), 1);
    EXPECT_EQ(terminal.get("ram.debug.x"), Value::text("yes"));
    EXPECT_EQ(config_dbg_set("ram.debug.x", 0), 0);
    EXPECT_EQ(config_dbg_test("ram.debug.x"), 0);
    EXPECT_FALSE(terminal.has("ram.debug.x"));
    terminal.set("ram.debug.x", "Yellow");
    EXPECT_EQ(config_dbg_test("ram.debug.x"), 1);
    terminal.set("ram.debug.x", 'y'); // not a text
    EXPECT_EQ(config_dbg_test("ram.debug.x"), 0);
    terminal.set("ram.debug.x", "");
    EXPECT_EQ(config_dbg_test("ram.debug.x"), 0);
}

TEST(ConfigDebugValue, IsOnForYesOfAnyCaseAtItsStart)
{
    struct {
        const char* text;
        int on;
    } rows[] = {{"y", 1}, {"Y", 1}, {"yes", 1}, {"no", 0}, {"", 0}, {" y", 0}, {"1", 0}, {nullptr, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(config_dbg_test_value(row.text), row.on) << (row.text ? row.text : "null");
}

TEST_F(ConfigApi, OnALostConnectionRequestsGiveMinus1AndWritesAreSilent)
{
    terminal.killConnections();
    int value = 77;
    char text[4] = "old";
    EXPECT_EQ(config_read_int("cfg.a", &value), VX_CONFIG_ERR); // the request does not go out
    EXPECT_EQ(config_sync("cfg"), 1);
    void* out = nullptr;
    EXPECT_EQ(cbus_get_reply(conn, 0, &out), -1); // only a read notices the loss
    EXPECT_EQ(conn->fd, -1);
    EXPECT_EQ(config_read_int("cfg.a", &value), VX_CONFIG_ERR);
    EXPECT_EQ(config_read_string("cfg.a", text, 4), VX_CONFIG_ERR);
    EXPECT_EQ(config_status("cfg.a", nullptr), VX_CONFIG_ERR);
    EXPECT_EQ(config_factory_reset(), VX_CONFIG_ERR);
    uint32_t count = 9;
    config_data_t* recs = nullptr;
    EXPECT_EQ(config_readm(".*", &count, &recs), -1);
    config_data_t rec = {VX_CONFIG_TYPE_INT, "cfg.a", &value, 4, 0, 0};
    EXPECT_EQ(config_readv("r", 1, &rec), -1);
    EXPECT_EQ(config_modifyv("r", 1, &rec), -1);
    EXPECT_EQ(config_writev("r", 1, &rec), -1);
    EXPECT_EQ(config_deletem("a"), -1);
    EXPECT_EQ(config_sync("cfg"), -1);
    EXPECT_EQ(config_write_int("cfg.a", 1), 0); // a lost write is not noticed
    EXPECT_EQ(config_write_string("cfg.a", "x"), 0);
    EXPECT_EQ(config_delete("cfg.a"), 0);
    EXPECT_EQ(config_dbg_test("cfg.a"), 0);
    EXPECT_EQ(value, 77);
    EXPECT_STREQ(text, "old");
}

TEST(ConfigUnconnected, BeforeTheStartEverythingFailsQuietly)
{
    config_reset_for_test();
    int value = 77;
    EXPECT_EQ(config_read_int("cfg.a", &value), VX_CONFIG_ERR);
    EXPECT_EQ(config_write_int("cfg.a", 1), 0);
    EXPECT_EQ(config_sync("cfg"), -1);
}

// --- Byte by byte -----------------------------------------------------------------------------------------

class ConfigWire : public testing::Test {
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        syslogtap_start();
        syslogtap_echo(1);
        conn = bus.connect();
        ASSERT_NE(conn, nullptr);
        config_init_cbus(conn, nullptr);
    }
    void TearDown() override
    {
        syslogtap_echo(0);
        syslogtap_stop();
        config_reset_for_test();
        endConnection(conn);
    }
    // What the client must have sent as its first message.
    std::string message(uint8_t type, const std::string& name, const std::string& data)
    {
        return frameBytes(type, static_cast<uint8_t>(conn->fd), 0, name, data);
    }
    // The reply to the client's next request waits for it.
    void answer(const std::string& data) { bus.send(replyBytes(conn->next_seqn, data)); }

    RawBus bus;
    cbus_conn_t* conn = nullptr;
};

const std::string minus1 = le32(0xffffffff);

TEST_F(ConfigWire, StartSendsNothing)
{
    EXPECT_EQ(bus.takeAll(), "");
    EXPECT_EQ(conn->signal_count, 2u);
    EXPECT_STREQ(conn->signal_rows[0].name, "config.change.");
    EXPECT_STREQ(conn->signal_rows[1].name, "config.clnt_validate.");
    EXPECT_EQ(config_state.notify, conn);
}

TEST_F(ConfigWire, ReadSendsMinus1TypeAndSize)
{
    answer(le32(0) + le32(3) + le32(4) + le32(42));
    int value = 0;
    EXPECT_EQ(config_read_int("cfg.language", &value), 0);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(bus.takeAll(),
              message(CBUS_TYPE_REQUEST, "config.read.cfg.language", minus1 + le32(3) + le32(4)));
}

TEST_F(ConfigWire, WriteSendsMinus1TypeLengthAndValue)
{
    config_write_int("cfg.a", 0x01020304);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.write.cfg.a",
                                     minus1 + le32(3) + le32(4) + std::string("\4\3\2\1")));
}

TEST_F(ConfigWire, WriteStringCountsTheNul)
{
    config_write_string("cfg.a", "abc");
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.write.cfg.a",
                                     minus1 + le32(2) + le32(4) + std::string("abc\0", 4)));
}

TEST_F(ConfigWire, WriteOfANullTextHasLength0)
{
    config_write_string("cfg.a", nullptr);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.write.cfg.a", minus1 + le32(2) + le32(0)));
}

TEST_F(ConfigWire, DeleteIsAWriteOfType0AndLength0)
{
    EXPECT_EQ(config_delete("cfg.a"), 0);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.write.cfg.a", minus1 + le32(0) + le32(0)));
}

TEST_F(ConfigWire, StatSendsMinus1AndTakesTwoWords)
{
    answer(le32(0xfffffffd) + le32(99));
    uint32_t value = 0;
    EXPECT_EQ(config_status("cfg.a", &value), VX_CONFIG_DB_FULL);
    EXPECT_EQ(value, 99u);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_REQUEST, "config.stat.cfg.a", minus1));
}

TEST_F(ConfigWire, FactoryResetHasNoSuffixAndTakesOneWord)
{
    answer(le32(0xfffffffe));
    EXPECT_EQ(config_factory_reset(), VX_CONFIG_DB_ERR);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_REQUEST, "config.factory_reset", minus1));
}

TEST_F(ConfigWire, SyncAndDelmHaveNoData)
{
    config_sync("cfg");
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.sync.cfg", ""));
    conn->next_seqn = 0;
    config_deletem("ram\\..*");
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.delm.ram\\..*", ""));
}

TEST_F(ConfigWire, EmptyOrNullSuffixLeavesOutTheDot)
{
    config_sync("");
    config_sync(nullptr);
    const std::string one = message(CBUS_TYPE_SIGNAL, "config.sync", "");
    EXPECT_EQ(bus.takeAll().substr(0, one.size()), one);
}

TEST_F(ConfigWire, NameIsCutAt511CharactersAndLogged)
{
    config_sync(std::string(600, 'k').c_str());
    const std::string name = "config.sync." + std::string(499, 'k');
    ASSERT_EQ(name.size(), 511u);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, name, ""));
    EXPECT_EQ(syslogtap::count(LOG_ERR, "config: message name cut to \"" + name + "\"\n"), 1u);
}

TEST_F(ConfigWire, ReadOfAnyTypeTakesWhatComes)
{
    answer(le32(0) + le32(1) + le32(2) + "hi");
    char bytes[4] = "zzz";
    uint32_t length = 0, type = VX_CONFIG_TYPE_NONE;
    EXPECT_EQ(config_read_typed("k", bytes, 4, &length, &type), 0);
    EXPECT_EQ(length, 2u);
    EXPECT_EQ(type, 1u);
    EXPECT_STREQ(bytes, "hiz");
}

TEST_F(ConfigWire, LengthAndTypeMayBeNull)
{
    answer(le32(0) + le32(1) + le32(2) + "hi");
    char bytes[4] = "zzz";
    EXPECT_EQ(config_read_typed("k", bytes, 4, nullptr, nullptr), 0);
    EXPECT_STREQ(bytes, "hiz");
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_REQUEST, "config.read.k", minus1 + le32(0) + le32(4)));
}

TEST_F(ConfigWire, WithoutABufferOnlyLengthAndTypeAreTold)
{
    answer(le32(0) + le32(1) + le32(2) + "hi");
    uint32_t length = 0, type = VX_CONFIG_TYPE_NONE;
    EXPECT_EQ(config_read_typed("k", nullptr, 4, &length, &type), 0);
    EXPECT_EQ(length, 2u);
    EXPECT_EQ(type, 1u);
}

TEST_F(ConfigWire, OtherTypeWithStatus0IsMinus6AndNothingIsCopied)
{
    answer(le32(0) + le32(1) + le32(4) + "hi!\n");
    char bytes[5] = "zzzz";
    uint32_t length = 0, type = VX_CONFIG_TYPE_INT;
    EXPECT_EQ(config_read_typed("k", bytes, 4, &length, &type), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(length, 4u);
    EXPECT_EQ(type, 1u);
    EXPECT_STREQ(bytes, "zzzz");
}

TEST_F(ConfigWire, OtherTypeWithMinus7IsMinus6)
{
    answer(le32(0xfffffff9) + le32(3) + le32(4) + le32(1));
    char text[2] = "z";
    EXPECT_EQ(config_read_string("k", text, 2), VX_CONFIG_WRONG_TYPE);
    EXPECT_STREQ(text, "z");
}

TEST_F(ConfigWire, AnyOtherStatusIsReturnedAndNothingIsCopied)
{
    for (int status : {-1, -2, -3, -4, -5, -6, -8, 1}) {
        answer(le32(static_cast<uint32_t>(status)) + le32(3) + le32(4) + le32(1));
        int value = 77;
        EXPECT_EQ(config_read_int("k", &value), status);
        EXPECT_EQ(value, 77);
    }
}

TEST_F(ConfigWire, IntOfAnotherLengthIsMinus6)
{
    answer(le32(0) + le32(3) + le32(2) + std::string("\1\2"));
    int value = 77;
    EXPECT_EQ(config_read_int("k", &value), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(value, 77);
}

TEST_F(ConfigWire, LongIntIsMinus7)
{
    answer(le32(0xfffffff9) + le32(3) + le32(8) + le32(1) + le32(2));
    int value = 77;
    EXPECT_EQ(config_read_int("k", &value), VX_CONFIG_BUFFER_TOO_SMALL);
    EXPECT_EQ(value, 77);
}

TEST_F(ConfigWire, StringWithoutANulIsEndedBehindItsLastCharacter)
{
    answer(le32(0) + le32(2) + le32(3) + "abc");
    char text[8] = "zzzzzzz";
    EXPECT_EQ(config_read_string("k", text, 8), 0);
    EXPECT_STREQ(text, "abc");
}

TEST_F(ConfigWire, EmptyStringIsEmpty)
{
    answer(le32(0) + le32(2) + le32(0));
    char text[8] = "zzzzzzz";
    EXPECT_EQ(config_read_string("k", text, 8), 0);
    EXPECT_STREQ(text, "");
}

TEST_F(ConfigWire, EmptyReplyToAReadIsMinus1)
{
    answer("");
    int value = 77;
    EXPECT_EQ(config_read_int("k", &value), VX_CONFIG_ERR);
    EXPECT_EQ(value, 77);
}

TEST_F(ConfigWire, NotificationsMayHaveAConnectionOfTheirOwn)
{
    RawBus second;
    cbus_conn_t* notify = second.connect();
    config_reset_for_test();
    EXPECT_EQ(config_init_cbus(conn, notify), 0);
    config_change_register(
        "ram.x", [](unsigned, const config_data_t*, void*, const config_change_row_t*) {}, nullptr);
    config_sync("cfg");
    EXPECT_NE(second.takeAll().find("config.change.ram"), std::string::npos);
    EXPECT_EQ(bus.takeAll(), message(CBUS_TYPE_SIGNAL, "config.sync.cfg", ""));
    EXPECT_EQ(notify->signal_count, 2u);
    endConnection(notify);
}

// --- Panics -----------------------------------------------------------------------------------------------

using ConfigWireDeathTest = ConfigWire;

TEST_F(ConfigWireDeathTest, StartWithoutAConnection)
{
    EXPECT_EXIT(config_init_cbus(nullptr, conn), KilledBySignal(SIGABRT),
                "<1> .*: Could not connect to cbus server\n");
}

TEST_F(ConfigWireDeathTest, ReadReplyTooShortOrOfAWrongLength)
{
    const std::string replies[] = {
        "x",
        std::string(11, '\0'),                          // shorter than its header
        le32(0) + le32(3) + le32(5) + le32(1),          // shorter than it says
        le32(0) + le32(3) + le32(3) + le32(1),          // longer than it says
        le32(0) + le32(3) + le32(0xffffffff) + le32(1), // 4 GiB
    };
    for (const std::string& reply : replies) {
        int value;
        EXPECT_EXIT(
            {
                answer(reply);
                config_read_int("k", &value);
            },
            KilledBySignal(SIGABRT), assertHere);
    }
}

TEST_F(ConfigWireDeathTest, StatReplyOfAnotherLengthThan8)
{
    for (size_t size : {0, 4, 7, 9}) {
        EXPECT_EXIT(
            {
                answer(std::string(size, '\0'));
                config_status("k", nullptr);
            },
            KilledBySignal(SIGABRT), assertHere);
    }
}

TEST_F(ConfigWireDeathTest, FactoryResetReplyOfAnotherLengthThan4)
{
    for (size_t size : {0, 3, 8}) {
        EXPECT_EXIT(
            {
                answer(std::string(size, '\0'));
                config_factory_reset();
            },
            KilledBySignal(SIGABRT), assertHere);
    }
}

TEST_F(ConfigWireDeathTest, ReadmReplyOfUpTo8Bytes)
{
    for (size_t size : {1, 8}) {
        EXPECT_EXIT(
            {
                answer(std::string(size, '\0'));
                uint32_t count;
                config_data_t* recs;
                config_readm(".*", &count, &recs);
            },
            KilledBySignal(SIGABRT), assertHere);
    }
}

// A reply that ends inside an entry's header.
TEST_F(ConfigWireDeathTest, ReadvReplyWithFewerThan12BytesAtAnEntry)
{
    config_data_t rec = {VX_CONFIG_TYPE_INT, "k", nullptr, 0, 0, 0};
    EXPECT_EXIT(
        {
            answer(std::string(11, '\0'));
            config_readv("r", 1, &rec);
        },
        KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in config_vbuf at [0-9]+\n");
}

TEST_F(ConfigWireDeathTest, NoMemoryForALongWrite)
{
    const std::string text(188, 'x'); // 189 bytes: one more than the stack's area takes
    EXPECT_EXIT(
        {
            NoMemory none;
            config_write_string("k", text.c_str());
        },
        KilledBySignal(SIGABRT), assertHere);
    NoMemory none;
    EXPECT_EQ(config_write_string("k", text.substr(1).c_str()), 0); // needs none
}

} // namespace
