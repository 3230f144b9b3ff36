// Every verb of the database on the bus: first with bytes written by hand, then with the real client.
#include "database_fixture.h"

#include "runtime/cbus.h"
#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"
#include "runtime/fdloop.h"
#include "sim/database.h"
#include "sim/terminal.h"

#include <atomic>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>

using namespace std::string_literals;
using sim::Type;
using sim::Value;
using testing::ElementsAre;

namespace {

// --- read

TEST_F(DatabaseBusTest, ReadOfAnInt)
{
    terminal.set("ram.x", 0x01020304);
    EXPECT_EQ(read("ram.x", 3, 4), status(0) + word(3) + word(4) + "\x04\x03\x02\x01"s);
}

TEST_F(DatabaseBusTest, ReadOfAnyTypeTakesWhatThereIs)
{
    terminal.set("ram.s", "ab");
    EXPECT_EQ(read("ram.s", 0, 100), status(0) + word(2) + word(3) + "ab\0"s);
}

TEST_F(DatabaseBusTest, ReadOfAnAbsentKey)
{
    EXPECT_EQ(read("ram.absent", 3, 4), status(-5) + word(0) + word(0));
}

TEST_F(DatabaseBusTest, ReadOfTheWrongType)
{
    terminal.set("ram.s", "ab");
    EXPECT_EQ(read("ram.s", 3, 4), status(-6) + word(2) + word(0));
}

TEST_F(DatabaseBusTest, ReadIntoTooSmallABufferIsAnsweredWithTheValue)
{
    terminal.set("ram.s", "abcdef");
    EXPECT_EQ(read("ram.s", 2, 4), status(-7) + word(2) + word(7) + "abcdef\0"s);
}

TEST_F(DatabaseBusTest, ReadThatIsTooShortIsAnError)
{
    EXPECT_EQ(ask("config.read.ram.x", "abc"), status(-1) + word(0) + word(0));
    EXPECT_TRUE(terminal.waitForLog("config.read.ram.x: too short"));
}

// --- write

TEST_F(DatabaseBusTest, WritesOfAllTypes)
{
    write("ram.i", 3, word(7));
    write("ram.s", 2, "text\0"s);
    write("ram.b", 1, "\x00\xff"s);
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(terminal.getInt("ram.i"), 7);
    EXPECT_EQ(terminal.getString("ram.s"), "text");
    EXPECT_EQ(terminal.get("ram.b"), Value::blob("\x00\xff"s));
}

TEST_F(DatabaseBusTest, WriteOfTypeNoneDeletes)
{
    terminal.set("ram.x", 1);
    write("ram.x", 0, "");
    EXPECT_TRUE(client.sync());
    EXPECT_FALSE(terminal.has("ram.x"));
}

TEST_F(DatabaseBusTest, BadWritesAreLoggedAndIgnored)
{
    terminal.set("ram.x", 1);
    write("ram.x", 3, "abc");
    write("ram.x", 2, "no NUL");
    write("ram.x", 4, "abcd");
    write("ram.x", 0x103, word(9));
    client.sendSignal("config.write.ram.x", "abc");
    client.sendSignal("config.write.ram.x", status(-1) + word(3) + word(5) + word(2));
    client.sendSignal("config.write.ram.x", status(-1) + word(3) + word(0xffffffff) + word(2));
    client.sendSignal("config.write", status(-1) + word(3) + word(4) + word(2));
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(terminal.getInt("ram.x"), 1);
    EXPECT_EQ(terminal.serverLog().size(), 8u);
    EXPECT_TRUE(terminal.waitForLog("write of ram.x refused (-6)"));
    EXPECT_TRUE(terminal.waitForLog("config.write.ram.x: too short"));
}

// --- readv

TEST_F(DatabaseBusTest, ReadvAnswersEachKeyInItsPlace)
{
    terminal.set("ram.abc", 5);
    terminal.set("cfg.s", "text");
    std::string asked = entry(3, 0, "ram.abc", "") + entry(3, 0, "ram.absent", "") +
                        entry(3, 0, "cfg.s", "") + entry(0, 0, "cfg.s", "");
    EXPECT_EQ(ask("config.readv.blk", asked), entry(3, 0, "ram.abc", word(5)) +
                                                  entry(3, -5, "ram.absent", "") + entry(2, -6, "cfg.s", "") +
                                                  entry(2, 0, "cfg.s", "text\0"s));
}

TEST_F(DatabaseBusTest, ReadvOfNothingIsAnsweredWithNothing)
{
    EXPECT_EQ(ask("config.readv", ""), "");
}

TEST_F(DatabaseBusTest, ReadvThatWouldNotFitKeepsAnEntryForEachKey)
{
    terminal.set("ram.a", Value::blob(std::string(sim::Database::MaxValueLength, 'a')));
    terminal.set("ram.b", Value::blob(std::string(sim::Database::MaxValueLength, 'b')));
    std::string answer = ask("config.readv", entry(1, 0, "ram.a", "") + entry(1, 0, "ram.b", ""));
    ASSERT_GT(answer.size(), 1024u * 1024);
    EXPECT_EQ(answer.substr(answer.size() - 20), entry(1, -2, "ram.b", ""));
}

// --- writev

TEST_F(DatabaseBusTest, WritevStoresAllInOneChange)
{
    RawClient watcher(terminal.address());
    watcher.filter("config.change.ram");
    ASSERT_TRUE(watcher.sync());
    terminal.set("ram.old", 1);
    ASSERT_TRUE(watcher.readFrame());
    client.sendSignal("config.writev", entry(3, 0, "ram.x", word(1)) + entry(1, 0, "ram.old", "") +
                                           entry(2, 0, "ram.yz", "t\0"s));
    auto change = watcher.readFrame();
    ASSERT_TRUE(change);
    EXPECT_EQ(change->name, "config.change.ram");
    EXPECT_EQ(change->type, CBUS_TYPE_SIGNAL);
    EXPECT_EQ(change->data,
              entry(3, 0, "ram.x", word(1)) + entry(0, 0, "ram.old", "") + entry(2, 0, "ram.yz", "t\0"s));
    EXPECT_FALSE(terminal.has("ram.old"));
}

class MalformedTest : public DatabaseBusTest, public testing::WithParamInterface<std::string> {};

// Value buffers that lie about their lengths: nothing is stored, and the server goes on.
TEST_P(MalformedTest, IsRefusedEverywhere)
{
    client.sendSignal("config.writev.blk", GetParam());
    EXPECT_EQ(ask("config.readv.blk", GetParam()), "");
    EXPECT_EQ(ask("config.modifyv.blk", GetParam()), "");
    EXPECT_TRUE(terminal.waitForLog("config.writev.blk: malformed records"));
    EXPECT_TRUE(terminal.list("").empty());
}

INSTANTIATE_TEST_SUITE_P(All, MalformedTest,
                         testing::Values("x"s, "\x03\x00\x00\x00"s, entry(3, 0, "ram.x", word(1)) + "\x03"s,
                                         // Name area and data beyond the end, and lengths whose sum wraps.
                                         "\x03\x00\x00\x00"s + word(8) + word(4) + "ram"s,
                                         "\x03\x00\x00\x00"s + word(4) + word(5) + "ram\0abcd"s,
                                         "\x03\x00\x00\x00"s + word(0xfffffffc) + word(16) + "ram\0abcd"s,
                                         "\x03\x00\x00\x00"s + word(4) + word(0xffffffff) + "ram\0abcd"s,
                                         "\x03\x00\x00\x00"s + word(0) + word(4) + "abcd"s,
                                         // No NUL in the name area, and an area that is no multiple of 4.
                                         "\x03\x00\x00\x00"s + word(4) + word(4) + "ramXabcd"s,
                                         "\x03\x00\x00\x00"s + word(5) + word(4) + "ramX\0abcd\0\0\0"s));

// --- modifyv

TEST_F(DatabaseBusTest, ModifyvAnswersAStatusForEachKey)
{
    EXPECT_EQ(ask("config.modifyv.blk", entry(3, 0, "ram.x", word(1)) + entry(3, 0, "ram.bad", "ab") +
                                            entry(2, 0, "rmcfg.platform.sysconf.serial_number", "X\0"s)),
              entry(3, 0, "ram.x", "") + entry(3, -6, "ram.bad", "") +
                  entry(2, -4, "rmcfg.platform.sysconf.serial_number", ""));
    EXPECT_EQ(terminal.getInt("ram.x"), 1);
    EXPECT_FALSE(terminal.has("ram.bad"));
    EXPECT_FALSE(terminal.has("rmcfg.platform.sysconf.serial_number"));
}

TEST_F(DatabaseBusTest, ReadOnlyKeysAreRefusedToWritesAndDeletes)
{
    const char* keys[] = {"rmcfg.platform.sysconf.serial_number", "rmcfg.platform.hpa_hw.unit_serial",
                          "cfg.network_information.imei_number"};
    for (const char* key : keys) {
        terminal.set(key, "own");
        write(key, 2, "other\0"s);
    }
    client.sendSignal("config.delm..*", "");
    ASSERT_TRUE(client.sync());
    for (const char* key : keys)
        EXPECT_EQ(terminal.getString(key), "own") << key;
}

// --- readm and delm

TEST_F(DatabaseBusTest, ReadmByteByByte)
{
    terminal.set("ram.log.alert.0.entry", 5);
    terminal.set("ram.log.alert.0.text", "hi");
    terminal.set("ram.logXalert", 5);
    EXPECT_EQ(ask("config.readm.ram.log\\.alert\\..*", ""),
              status(0) + word(2) + entry(3, 0, "ram.log.alert.0.entry", word(5)) +
                  entry(2, 0, "ram.log.alert.0.text", "hi\0"s));
}

TEST_F(DatabaseBusTest, ReadmWithoutAMatchIsAnsweredEmpty)
{
    terminal.set("ram.x", 5);
    EXPECT_EQ(ask("config.readm.cfg\\..*", ""), "");
    EXPECT_EQ(ask("config.readm.am.x", ""), ""); // whole keys only
    EXPECT_EQ(ask("config.readm", ""), "");
}

TEST_F(DatabaseBusTest, ReadmOfABadExpressionIsLoggedAndAnsweredEmpty)
{
    EXPECT_EQ(ask("config.readm.(", ""), "");
    EXPECT_TRUE(terminal.waitForLog("config.readm.(: bad expression"));
    client.sendSignal("config.delm.(", "");
    EXPECT_TRUE(terminal.waitForLog("config.delm.(: bad expression"));
}

TEST_F(DatabaseBusTest, ReadmOfMoreThanAMessageHoldsIsLoggedAndAnsweredEmpty)
{
    terminal.set("ram.a", Value::blob(std::string(sim::Database::MaxValueLength, 'a')));
    terminal.set("ram.b", Value::blob(std::string(sim::Database::MaxValueLength, 'b')));
    EXPECT_EQ(ask("config.readm.ram.*", ""), "");
    EXPECT_TRUE(terminal.waitForLog("more than a message can hold"));
}

TEST_F(DatabaseBusTest, DelmTakesEveryKeyThatMatchesWholeInOneChange)
{
    for (const char* key :
         {"ram.net.qos.0.1.active", "ram.net.qos.0.2.active", "ram.net.qos.1.1.active", "xram.net.qos.0.1"})
        terminal.set(key, 1);
    RawClient watcher(terminal.address());
    watcher.filter("config.change.");
    ASSERT_TRUE(watcher.sync());
    client.sendSignal("config.delm.ram.net.qos.0.*", "");
    auto change = watcher.readFrame();
    ASSERT_TRUE(change);
    EXPECT_EQ(change->data,
              entry(0, 0, "ram.net.qos.0.1.active", "") + entry(0, 0, "ram.net.qos.0.2.active", ""));
    EXPECT_TRUE(watcher.hasNothingElse());
    EXPECT_EQ(terminal.list("").size(), 2u);
}

// --- stat, sync, factory_reset, unknown

TEST_F(DatabaseBusTest, StatTellsTheLengthOfTheValue)
{
    terminal.set("ram.s", "four");
    EXPECT_EQ(ask("config.stat.ram.s", status(-1)), status(0) + word(5));
    EXPECT_EQ(ask("config.stat.absent", status(-1)), status(-5) + word(0));
}

TEST_F(DatabaseBusTest, FactoryResetRestoresTheInitialSettingsAlone)
{
    sim::Terminal full;
    full.set("cfg.language", 5);
    full.set("cfg.added", 1);
    full.erase("cfg.help_desk_number");
    full.set("ram.status.signal_strength", 333);
    RawClient resetter(full.address());
    EXPECT_EQ(resetter.ask("config.factory_reset", status(-1)).value_or("?"), status(0));
    EXPECT_EQ(full.getInt("cfg.language"), 0);
    EXPECT_FALSE(full.has("cfg.added"));
    EXPECT_TRUE(full.has("cfg.help_desk_number"));
    EXPECT_EQ(full.getInt("ram.status.signal_strength"), 333);
}

TEST_F(DatabaseBusTest, UnknownVerbsAreLogged)
{
    EXPECT_EQ(ask("config.frobnicate.x", ""), "");
    EXPECT_EQ(ask("config.write.ram.x", ""), ""); // a signal's verb as a request
    client.sendSignal("config.readx", "");
    client.sendSignal("config.", "");
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(terminal.serverLog().size(), 4u);
    EXPECT_TRUE(terminal.waitForLog("config.readx: unknown signal"));
    EXPECT_TRUE(terminal.waitForLog("config.frobnicate.x: unknown request"));
}

// --- Changes

TEST_F(DatabaseBusTest, OneSignalForEachFirstComponent)
{
    client.filter("config.change.ram");
    client.filter("config.change.cfg");
    ASSERT_TRUE(client.sync());
    terminal.setAll({{"ram.a", Value::integer(1)},
                     {"cfg.b", Value::integer(2)},
                     {"ram.c", Value::integer(3)},
                     {"rmcfg.d", Value::integer(4)}});
    auto first = client.readFrame();
    auto second = client.readFrame();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->name, "config.change.ram");
    EXPECT_EQ(first->data, entry(3, 0, "ram.a", word(1)) + entry(3, 0, "ram.c", word(3)));
    EXPECT_EQ(second->name, "config.change.cfg");
    EXPECT_EQ(second->data, entry(3, 0, "cfg.b", word(2)));
    EXPECT_TRUE(client.hasNothingElse());
}

TEST_F(DatabaseBusTest, SameValueIsNotSignalled)
{
    client.filter("config.change.");
    terminal.set("ram.x", 1);
    ASSERT_TRUE(client.sync());
    write("ram.x", 3, word(1));
    EXPECT_TRUE(client.hasNothingElse());
}

TEST_F(DatabaseBusTest, ChangesBeyondOneMessageComeInSeveral)
{
    client.filter("config.change.");
    ASSERT_TRUE(client.sync());
    std::string half(sim::Database::MaxValueLength, 'h');
    terminal.setAll({{"ram.a", Value::blob(half)}, {"ram.b", Value::blob(half)}});
    EXPECT_EQ(client.readFrame()->data, entry(1, 0, "ram.a", half));
    EXPECT_EQ(client.readFrame()->data, entry(1, 0, "ram.b", half));
}

// --- The log of writes

TEST_F(DatabaseBusTest, WritesAreLoggedInOrderWithValuesAndStatus)
{
    write("ram.x", 3, word(1));
    write("ram.x", 3, word(1));
    write("ram.x", 3, "abc");
    client.sendSignal("config.writev", entry(3, 0, "ram.y", word(2)) + entry(0, 0, "ram.x", ""));
    client.sendSignal("config.delm.ram.y", "");
    ASSERT_TRUE(terminal.waitForWrite("ram.y", Value()));
    std::vector<std::string> lines;
    for (const sim::WriteRecord& record : terminal.writes())
        lines.push_back(record.verb + " " + record.key + " " + std::to_string(record.value.toInt()) + " " +
                        std::to_string(record.status));
    EXPECT_THAT(lines, ElementsAre("write ram.x 1 0", "write ram.x 1 0", "write ram.x 0 -6",
                                   "writev ram.y 2 0", "writev ram.x 0 0", "delm ram.y 0 0"));
    EXPECT_THAT(terminal.writesOf("ram.y"), ElementsAre(Value::integer(2), Value()));
    EXPECT_FALSE(terminal.waitForWrite("ram.y", Value::integer(3), 10));
}

// --- The real client

class RealClientTest : public DatabaseBusTest {
protected:
    RealClientTest()
    {
        signal(SIGPIPE, SIG_IGN); // as every process of the terminal has it
        terminal.useForProcess();
        loop = fdloop_init();
        connection = cbus_conn_create(loop, "test");
        config_init_cbus(connection, nullptr);
        // Neither loop nor connection can be taken apart while the other refers to it: they live on.
        static auto* kept = new std::vector<void*>;
        kept->push_back(loop);
        kept->push_back(connection);
    }
    ~RealClientTest() override { config_reset_for_test(); }

    // Turns the loop until the condition holds.
    template <typename Condition> bool turnUntil(Condition condition)
    {
        RunLimit limit(loop);
        while (!condition() && !limit.over)
            fdloop_run(loop);
        return condition();
    }
    // Wakes the loop from time to time, and for the last time after five seconds.
    struct RunLimit {
        explicit RunLimit(fdloop_t* loop) : loop(loop), timer(fdloop_timer_add(loop, 10, tick, this)) {}
        ~RunLimit() { fdloop_timer_del(loop, timer); }
        static int tick(void* data)
        {
            RunLimit& limit = *static_cast<RunLimit*>(data);
            limit.over = ++limit.ticks > 500;
            return 1;
        }
        fdloop_t* loop;
        fdloop_timer* timer;
        int ticks = 0;
        bool over = false;
    };

    fdloop_t* loop;
    cbus_conn_t* connection;
};

TEST_F(RealClientTest, ReadsAndWrites)
{
    EXPECT_EQ(config_write_int("ram.i", 12), 0);
    EXPECT_EQ(config_write_string("ram.s", "abcdef"), 0);
    int number = 0;
    EXPECT_EQ(config_read_int("ram.i", &number), 0);
    EXPECT_EQ(number, 12);
    char text[4];
    EXPECT_EQ(config_read_string("ram.s", text, sizeof text), 0);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(config_read_int("ram.s", &number), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(config_read_int("ram.absent", &number), VX_CONFIG_NO_RECORD);
    EXPECT_EQ(number, 12);
    uint32_t length = 0;
    EXPECT_EQ(config_status("ram.s", &length), 0);
    EXPECT_EQ(length, 7u);
    config_delete("ram.s");
    EXPECT_EQ(config_status("ram.s", &length), VX_CONFIG_NO_RECORD);
}

TEST_F(RealClientTest, Blocks)
{
    config_blk_t block;
    config_blk_init(&block);
    config_blk_set_prefix(&block, "ram.net.qos.0.", 3);
    config_blk_add_int_write(&block, "cid", 4);
    config_blk_add_str_write(&block, "name", "n");
    EXPECT_EQ(config_blk_commit_modify(&block), 0);
    EXPECT_EQ(terminal.getInt("ram.net.qos.0.3.cid"), 4);

    int cid = 0;
    int absent = 7;
    config_blk_add_int_read(&block, "cid", &cid);
    config_blk_add_int_read(&block, "absent", &absent);
    EXPECT_EQ(config_blk_commit_read(&block), 0);
    EXPECT_EQ(cid, 4);
    EXPECT_EQ(absent, 7);
    EXPECT_EQ(block.read_recs[1].status, VX_CONFIG_NO_RECORD);
    config_blk_free(&block);

    config_blk_add_del(&block, "cid");
    config_blk_commit_write(&block);
    EXPECT_TRUE(
        terminal.waitForWrite("ram.net.qos.0.3.cid", [](const Value& value) { return value.bytes.empty(); }));
    EXPECT_FALSE(terminal.has("ram.net.qos.0.3.cid"));
}

TEST_F(RealClientTest, Lists)
{
    terminal.set("ram.log.alert.0.entry", 1);
    terminal.set("ram.log.alert.0.shorttext", "hot");
    uint32_t count = 0;
    config_data_t* records = nullptr;
    ASSERT_EQ(config_readm("ram.log\\.alert\\..*", &count, &records), 0);
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(records[0].name, "ram.log.alert.0.entry");
    EXPECT_STREQ(static_cast<const char*>(records[1].data), "hot");
    free(records);
    EXPECT_EQ(config_readm("none\\..*", &count, &records), 0);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(records, nullptr);
    config_deletem("ram.log\\.alert\\..*");
    EXPECT_TRUE(terminal.waitForWrite("ram.log.alert.0.entry", Value()));
    EXPECT_TRUE(terminal.list("ram.log").empty());
}

TEST_F(RealClientTest, ChangesArriveWithDeletions)
{
    std::vector<std::string> seen;
    auto onChange = [](unsigned count, const config_data_t* records, void* data, const config_change_row_t*) {
        for (unsigned at = 0; at < count; at++)
            static_cast<std::vector<std::string>*>(data)->push_back(std::string(records[at].name) +
                                                                    (records[at].data ? "" : " gone"));
    };
    config_change_register("ram.status.interfaces.wlan.enabled", onChange, &seen);
    ASSERT_TRUE(terminal.waitForFilter("config.change.ram"));
    terminal.setAll({{"ram.status.interfaces.wlan.clients", Value::integer(1)},
                     {"ram.status.interfaces.wlan.enabled", Value::integer(1)}});
    terminal.erase("ram.status.interfaces.wlan.enabled");
    EXPECT_TRUE(turnUntil([&] { return seen.size() >= 2; }));
    EXPECT_THAT(seen,
                ElementsAre("ram.status.interfaces.wlan.enabled", "ram.status.interfaces.wlan.enabled gone"));
}

TEST_F(RealClientTest, ValidatorOfTheLibrary)
{
    auto judge = [](unsigned count, config_data_t* records, void*) {
        for (unsigned at = 0; at < count; at++) {
            if (*static_cast<int*>(records[at].data) > 100)
                records[at].status = VX_CONFIG_VERIFY_FAIL;
        }
    };
    ASSERT_EQ(config_validator_register(judge, "cfg.limited", nullptr), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.validate.register"));
    std::atomic<bool> answered{false};
    std::string answer;
    std::thread writer([&] {
        answer = ask("config.modifyv",
                     entry(3, 0, "cfg.limited.a", word(100)) + entry(3, 0, "cfg.limited.b", word(101)));
        answered = true;
    });
    EXPECT_TRUE(turnUntil([&] { return answered.load(); }));
    writer.join();
    EXPECT_EQ(answer, entry(3, 0, "cfg.limited.a", "") + entry(3, -8, "cfg.limited.b", ""));
}

TEST_F(RealClientTest, FactoryReset)
{
    EXPECT_EQ(config_factory_reset(), 0);
}

TEST_F(RealClientTest, LostConnectionIsAnError)
{
    int number = 3;
    terminal.stop();
    EXPECT_EQ(config_read_int("ram.x", &number), -1);
    EXPECT_EQ(number, 3);
}

} // namespace
