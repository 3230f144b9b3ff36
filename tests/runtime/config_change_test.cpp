// Subscriptions to changes, against the real server and against messages written by hand.
#include "runtime/config_client_api.h"

#include "runtime/config_client_impl.h"
#include "runtime/config_vbuf.h"
#include "runtime/fdloop.h"
#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/busclient.h"
#include "support/keptloop.h"
#include "support/nomemory.h"
#include "support/rawbus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <syslog.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;

// Calls of handlers, as "label key=bytes key=null ...".
std::vector<std::string> calls;
std::function<void()> inHandler;

void note(unsigned nrec, const config_data_t* prec, void* data, const config_change_row_t* row)
{
    std::string call = static_cast<const char*>(data);
    EXPECT_EQ(row->data, data);
    for (unsigned i = 0; i < nrec; ++i) {
        EXPECT_EQ(prec[i].size, prec[i].length);
        EXPECT_EQ(prec[i].status, 0);
        call += std::string(" ") + prec[i].name + "=";
        call += prec[i].data ? std::string(static_cast<char*>(prec[i].data), prec[i].length) : "null";
    }
    calls.push_back(call);
    if (inHandler)
        inHandler();
}

void noteOther(unsigned nrec, const config_data_t* prec, void* data, const config_change_row_t* row)
{
    note(nrec, prec, data, row);
}

void* label(const char* text)
{
    return const_cast<char*>(text);
}

// A message's value buffer under construction.
class Vbuf {
public:
    ~Vbuf() { free(data); }
    Vbuf& add(uint32_t type, const std::string& key, const std::string& value)
    {
        length = config_vbuf_add(&data, length, nullptr, type, key.c_str(), value.data(),
                                 static_cast<uint32_t>(value.size()), 0);
        return *this;
    }
    std::string bytes() const { return std::string(reinterpret_cast<char*>(data), length); }

private:
    uint8_t* data = nullptr;
    uint32_t length = 0;
};

class ConfigChange : public testing::Test {
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        calls.clear();
        inHandler = nullptr;
        syslogtap_start();
        loop = keptLoop();
        conn = bus.connect(loop);
        ASSERT_NE(conn, nullptr);
        config_init_cbus(conn, nullptr);
    }
    void TearDown() override
    {
        syslogtap_stop();
        config_reset_for_test();
        endConnection(conn);
    }
    void subscribe(const char* key, const char* name) { config_change_register(key, note, label(name)); }
    // A change signal, delivered.
    void change(const std::string& vbuf, const std::string& area = "ram")
    {
        bus.send(signalBytes("config.change." + area, vbuf));
        EXPECT_EQ(fdloop_run(loop), 0);
    }
    std::vector<std::string> filters()
    {
        std::vector<std::string> texts;
        std::string stream = bus.takeAll();
        const size_t head = 12 + 12; // the header, "cbus.filter" with its NUL
        while (stream.size() > head) {
            EXPECT_EQ(stream.substr(12, 12), std::string("cbus.filter\0", 12));
            const size_t size = static_cast<uint8_t>(stream[8]);
            texts.push_back(stream.substr(head, size));
            stream.erase(0, head + cbus_padded(static_cast<uint32_t>(size)));
        }
        return texts;
    }

    RawBus bus;
    fdloop_t* loop = nullptr;
    cbus_conn_t* conn = nullptr;
};

std::string withNul(const std::string& text)
{
    return text + '\0';
}

// --- Subscribing ------------------------------------------------------------------------------------------

TEST_F(ConfigChange, FilterIsTheFirstComponentOnceForEachRegistration)
{
    EXPECT_EQ(config_change_register("ram.status.battery", note, nullptr), 0);
    EXPECT_EQ(config_change_register("ram.status.position", note, nullptr), 0);
    EXPECT_EQ(config_change_register("cfg.language", note, nullptr), 0);
    EXPECT_THAT(filters(), ElementsAre(withNul("config.change.ram"), withNul("config.change.ram"),
                                       withNul("config.change.cfg")));
}

TEST_F(ConfigChange, KeyWithoutADotIsTheComponent)
{
    config_change_register("rmcfg", note, nullptr);
    config_change_register("", note, nullptr);
    EXPECT_THAT(filters(), ElementsAre(withNul("config.change.rmcfg"), withNul("config.change.")));
}

TEST_F(ConfigChange, TheKeyIsCopied)
{
    char key[] = "ram.a";
    config_change_register(key, note, label("row"));
    key[4] = 'x';
    change(Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.a", "1").bytes());
    EXPECT_THAT(calls, ElementsAre("row ram.a=1"));
}

TEST_F(ConfigChange, DeregisteringWantsKeyHandlerAndDataTakesTheFirstAndSendsNothing)
{
    subscribe("ram.a", "one");
    subscribe("ram.a", "two");
    subscribe("ram.a", "one");
    bus.takeAll();
    EXPECT_EQ(config_change_deregister("ram", note, label("one")), 0);
    EXPECT_EQ(config_change_deregister("ram.a", noteOther, label("one")), 0);
    EXPECT_EQ(config_change_deregister("ram.a", note, nullptr), 0);
    EXPECT_EQ(config_state.change_count, 3u);
    EXPECT_EQ(config_change_deregister("ram.a", note, label("one")), 0);
    EXPECT_EQ(bus.takeAll(), ""); // the filter stays in force
    change(Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.a", "1").bytes());
    EXPECT_THAT(calls, ElementsAre("two ram.a=1", "one ram.a=1"));
}

// The table grows now and then, not at each row; what grew for rows that are gone is used again.
TEST_F(ConfigChange, TableHoldsManySubscriptionsWhileOthersGo)
{
    for (int i = 0; i < 20; ++i)
        subscribe(("ram.a." + std::to_string(i)).c_str(), "row");
    for (int i = 0; i < 13; ++i)
        config_change_deregister(("ram.a." + std::to_string(i)).c_str(), note, label("row"));
    for (int i = 20; i < 70; ++i)
        subscribe(("ram.a." + std::to_string(i)).c_str(), "row");
    EXPECT_EQ(config_state.change_count, 57u);
    Vbuf message;
    std::vector<std::string> expected;
    for (int i = 13; i < 70; ++i) {
        message.add(VX_CONFIG_TYPE_BLOB, "ram.a." + std::to_string(i), "1");
        expected.push_back("row ram.a." + std::to_string(i) + "=1");
    }
    change(message.bytes());
    EXPECT_EQ(calls, expected);
}

// --- Delivering -------------------------------------------------------------------------------------------

TEST_F(ConfigChange, MatchingIsByPlainPrefix)
{
    subscribe("ram.status.battery", "row");
    change(Vbuf()
               .add(VX_CONFIG_TYPE_BLOB, "ram.status.battery.1.status", "1")
               .add(VX_CONFIG_TYPE_BLOB, "ram.status.batterypack", "2")
               .add(VX_CONFIG_TYPE_BLOB, "ram.status.batter", "3")
               .bytes());
    EXPECT_THAT(calls, ElementsAre("row ram.status.battery.1.status=1 ram.status.batterypack=2"));
}

TEST_F(ConfigChange, OfTwoRowsOnlyTheOneWhoseKeyMatchesIsCalled)
{
    subscribe("ram.status.interfaces.wlan.enabled", "enabled");
    subscribe("ram.status.interfaces.wlan.clients", "clients");
    change(Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.status.interfaces.wlan.enabled", "1").bytes());
    EXPECT_THAT(calls, ElementsAre("enabled ram.status.interfaces.wlan.enabled=1"));
}

TEST_F(ConfigChange, EveryRowThatMatchesIsCalledOnceInOrderWithAllItsRecords)
{
    subscribe("ram.a", "first");
    subscribe("ram.", "second");
    subscribe("ram.a", "first"); // one handler several times
    subscribe("cfg.", "never");
    change(Vbuf()
               .add(VX_CONFIG_TYPE_BLOB, "ram.a", "1")
               .add(VX_CONFIG_TYPE_BLOB, "ram.b", "2")
               .add(VX_CONFIG_TYPE_BLOB, "ram.aa", "3")
               .bytes());
    EXPECT_THAT(calls, ElementsAre("first ram.a=1 ram.aa=3", "second ram.a=1 ram.b=2 ram.aa=3",
                                   "first ram.a=1 ram.aa=3"));
}

TEST_F(ConfigChange, DeletedKeyHasNullDataAndLength0)
{
    subscribe("ram.", "row");
    change(Vbuf().add(VX_CONFIG_TYPE_NONE, "ram.a", "").add(VX_CONFIG_TYPE_STRING, "ram.b", "").bytes());
    EXPECT_THAT(calls, ElementsAre("row ram.a=null ram.b=null"));
}

TEST_F(ConfigChange, TypeIsPassedOn)
{
    static uint32_t type;
    config_change_register(
        "ram.",
        [](unsigned, const config_data_t* prec, void*, const config_change_row_t*) { type = prec->type; },
        nullptr);
    for (uint32_t sent : {0u, 1u, 2u, 3u}) {
        change(Vbuf().add(sent, "ram.a", withNul("abc")).bytes());
        EXPECT_EQ(type, sent);
    }
}

TEST_F(ConfigChange, ManyRecordsArriveInOneCall)
{
    subscribe("ram.", "row");
    Vbuf vbuf;
    std::string expected = "row";
    for (int i = 0; i < 100; ++i) {
        vbuf.add(VX_CONFIG_TYPE_BLOB, "ram." + std::to_string(i), "v");
        expected += " ram." + std::to_string(i) + "=v";
    }
    change(vbuf.bytes());
    EXPECT_THAT(calls, ElementsAre(expected));
}

TEST_F(ConfigChange, WithoutAMatchNobodyIsCalled)
{
    subscribe("ram.x", "row");
    change(Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.a", "1").bytes());
    change("");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ConfigChange, HandlerMaySubscribeAndUnsubscribe)
{
    subscribe("ram.a", "first");
    subscribe("ram.a", "second");
    inHandler = [this] {
        inHandler = nullptr;
        config_change_deregister("ram.a", note, label("first")); // itself: the next row moves up
        for (int i = 0; i < 50; ++i)
            subscribe("ram.b", "new");
    };
    change(Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.a", "1").bytes());
    EXPECT_EQ(calls[0], "first ram.a=1");
    calls.clear();
    change(Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.a", "2").bytes());
    EXPECT_THAT(calls, ElementsAre("second ram.a=2"));
}

// --- Broken messages --------------------------------------------------------------------------------------

TEST_F(ConfigChange, EntryThatReachesPastTheBufferIsDroppedAndLoggedOnce)
{
    subscribe("ram.", "first");
    subscribe("ram.", "second");
    const std::string good = Vbuf().add(VX_CONFIG_TYPE_BLOB, "ram.a", "1234").bytes();
    // Cut in the header, the key, the value; 8 bytes more than an entry starts with are looked at.
    for (size_t size : {1, 8, 11, 12, 15, 19, 23}) {
        calls.clear();
        syslogtap_clear();
        change(good + good.substr(0, size));
        EXPECT_THAT(calls, ElementsAre("first ram.a=1234", "second ram.a=1234")) << size;
        EXPECT_EQ(syslogtap::count(LOG_ERR, "config: broken entry at 24 of " + std::to_string(24 + size) +
                                                " bytes in config.change.ram\n"),
                  1u)
            << size;
    }
}

// These lengths pass a test that forgets the entry's header, by up to 4 bytes.
TEST_F(ConfigChange, EntryIsBoundedByTheTrueEndOfTheBuffer)
{
    subscribe("ram.", "row");
    change(std::string("\1\0\0\0\x08\0\0\0\x08\0\0\0ram.a\0\0\0"
                       "1234",
                       24));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(syslogtap_count(), 1u);
}

TEST_F(ConfigChange, TextWithoutItsNulIsEndedAndLoggedOnce)
{
    subscribe("ram.", "first");
    subscribe("ram.", "second");
    change(Vbuf().add(VX_CONFIG_TYPE_STRING, "ram.a", "abcd").bytes());
    EXPECT_THAT(calls, ElementsAre(withNul("first ram.a=abc"), withNul("second ram.a=abc")));
    EXPECT_EQ(syslogtap::count(LOG_ERR, "config: text of ram.a without its NUL, cut\n"), 1u);
}

// --- Panics -----------------------------------------------------------------------------------------------

TEST_F(ConfigChange, NullHandlerIsAnAssertion)
{
    syslogtap_echo(1);
    EXPECT_EXIT(config_change_register("ram.a", nullptr, nullptr), KilledBySignal(SIGABRT),
                "<1> .*: \\*\\*\\* ASSERT in config_client_api at [0-9]+\n");
    syslogtap_echo(0);
}

TEST_F(ConfigChange, NoMemoryForTheTableIsAnAssertion)
{
    syslogtap_echo(1);
    for (int granted : {0, 1}) { // the table, the key
        EXPECT_EXIT(
            {
                NoMemory none(granted);
                config_change_register("ram.a", note, nullptr);
            },
            KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in config_client_api at [0-9]+\n");
    }
    syslogtap_echo(0);
}

// --- Against the real server ------------------------------------------------------------------------------

class ConfigChangeServer : public testing::Test {
protected:
    ConfigChangeServer()
    {
        calls.clear();
        inHandler = nullptr;
        terminal.useForProcess();
        loop = keptLoop();
        // What is queued is delivered before a turn's wait, which must then end.
        fdloop_timer_add(
            loop, 10, [](void*) { return 1; }, nullptr);
        conn = cbus_conn_create(loop, "test");
        config_init_cbus(conn, nullptr);
    }
    ~ConfigChangeServer() override
    {
        inHandler = nullptr;
        config_reset_for_test();
        endConnection(conn);
    }
    void runUntilCalls(size_t count)
    {
        while (calls.size() < count)
            ASSERT_EQ(fdloop_run(loop), 0);
    }

    sim::Terminal terminal;
    fdloop_t* loop;
    cbus_conn_t* conn;
};

TEST_F(ConfigChangeServer, AChangeReachesItsSubscriptions)
{
    config_change_register("ram.status.signal_strength", note, label("signal"));
    config_change_register("ram.test.key", note, label("key"));
    ASSERT_TRUE(terminal.waitForFilter("config.change.ram"));
    terminal.settle();
    terminal.set("ram.test.key", "one");
    terminal.erase("ram.test.key");
    runUntilCalls(2);
    EXPECT_THAT(calls, ElementsAre(withNul("key ram.test.key=one"), "key ram.test.key=null"));
}

// Signals that arrive during the request wait, and are delivered after the handler is done.
TEST_F(ConfigChangeServer, HandlerMayMakeRequests)
{
    config_change_register("ram.test.", note, label("row"));
    ASSERT_TRUE(terminal.waitForFilter("config.change.ram"));
    terminal.settle();
    inHandler = [this] {
        inHandler = nullptr;
        terminal.set("ram.test.b", "two");
        char text[8] = "";
        EXPECT_EQ(config_read_string("ram.test.b", text, sizeof text), 0);
        EXPECT_STREQ(text, "two");
        EXPECT_EQ(calls.size(), 1u);
        EXPECT_EQ(conn->queue_count, 1u);
    };
    terminal.set("ram.test.a", "one");
    runUntilCalls(2);
    EXPECT_THAT(calls, ElementsAre(withNul("row ram.test.a=one"), withNul("row ram.test.b=two")));
}

} // namespace
