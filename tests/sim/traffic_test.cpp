// What the bus carries: who hears it, and its form as text.
#include "raw_client.h"

#include "sim/traffic.h"
#include "sim/vbuf.h"

#include "runtime/config_client_api.h"
#include "support/emptyterminal.h"

#include <gmock/gmock.h>
#include <mutex>

using namespace std::string_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

// Everything that a terminal's bus carries, as text.
class Listener {
public:
    explicit Listener(sim::Terminal& terminal) : terminal(terminal)
    {
        number = terminal.listenToTraffic([this](const sim::Traffic& traffic) {
            std::lock_guard<std::mutex> lock(mutex);
            heard.push_back(sim::describe(traffic, 1000));
        });
    }
    ~Listener() { terminal.forget(number); }
    std::vector<std::string> lines()
    {
        std::lock_guard<std::mutex> lock(mutex);
        return heard;
    }

private:
    sim::Terminal& terminal;
    uint64_t number = 0;
    std::mutex mutex;
    std::vector<std::string> heard;
};

class TrafficTest : public testing::Test {
protected:
    sim::Terminal terminal{emptyTerminal()};
};

std::string readRequest(uint32_t type, uint32_t size)
{
    return word(static_cast<uint32_t>(-1)) + word(type) + word(size);
}

std::string writeData(uint32_t type, const std::string& value)
{
    return word(static_cast<uint32_t>(-1)) + word(type) + word(static_cast<uint32_t>(value.size())) + value;
}

} // namespace

TEST_F(TrafficTest, BothDirectionsAreHeardInOrder)
{
    terminal.set("ram.a", 5);
    RawClient client(terminal.address());
    client.sync();
    Listener listener(terminal);
    client.filter("config.change.ram");
    client.ask("config.read.ram.a", readRequest(VX_CONFIG_TYPE_INT, 4));
    terminal.set("ram.a", 6);
    client.sendSignal("config.write.ram.a", writeData(VX_CONFIG_TYPE_INT, word(7)));
    client.sync();
    EXPECT_THAT(listener.lines(), ElementsAre("from 1 signal cbus.filter text \"config.change.ram\"",
                                              "from 1 request config.read.ram.a ask int 4",
                                              "to 1 reply config.read.ram.a value 0 int 5",
                                              "all 0 signal config.change.ram records ram.a = int 6",
                                              "from 1 signal config.write.ram.a write int 7",
                                              "all 1 signal config.change.ram records ram.a = int 7",
                                              "from 1 request nobody.serves.this",
                                              StartsWith("to 1 reply nobody.serves.this")));
}

TEST_F(TrafficTest, AChangeThatNobodyWantsIsHeard)
{
    Listener listener(terminal);
    terminal.set("ram.a", 1);
    EXPECT_THAT(listener.lines(), ElementsAre("all 0 signal config.change.ram records ram.a = int 1"));
    EXPECT_FALSE(terminal.waitForFilter("config.change.ram", 0)); // but it counts as nobody's
}

TEST_F(TrafficTest, WhatTheTerminalMakesOfAWriteIsItsOwn)
{
    terminal.listenToChanges([this](const std::vector<sim::Write>& changes) {
        if (changes[0].key == "ram.a")
            terminal.set("ram.b", 1);
    });
    RawClient client(terminal.address());
    client.filter("config.change.ram");
    client.sync();
    Listener listener(terminal);
    client.sendSignal("config.write.ram.a", writeData(VX_CONFIG_TYPE_INT, word(7)));
    client.sync();
    EXPECT_THAT(listener.lines(), Contains("all 1 signal config.change.ram records ram.a = int 7"));
    EXPECT_THAT(listener.lines(), Contains("all 0 signal config.change.ram records ram.b = int 1"));
}

TEST_F(TrafficTest, SignalsAndRequestsBetweenClientsAreHeard)
{
    RawClient provider(terminal.address());
    provider.provide("clock.");
    provider.sync();
    RawClient client(terminal.address());
    Listener listener(terminal);
    client.sendSignal("clock.tick", "now\0"s);
    uint16_t cookie = client.sendRequest("clock.time", {});
    provider.readFrame(); // the answer to sync is read; the signal
    auto request = provider.readFrame();
    ASSERT_TRUE(request);
    provider.sendBytes(
        sim::Terminal::frame(CBUS_TYPE_REPLY, request->src, request->seqn, request->name, "\1\2"));
    auto answer = client.readFrame();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->seqn, cookie);
    EXPECT_THAT(listener.lines(),
                ElementsAre("from 2 signal clock.tick text \"now\"", "all 2 signal clock.tick text \"now\"",
                            "from 2 request clock.time", "to 1 request clock.time",
                            "from 1 reply clock.time hex 01 02", "to 2 reply clock.time hex 01 02"));
}

TEST_F(TrafficTest, BytesThatAreNoMessageAreHeard)
{
    RawClient client(terminal.address());
    client.sync();
    Listener listener(terminal);
    terminal.sendRaw("\xff\x01"s);
    EXPECT_THAT(listener.lines(), ElementsAre("to 1 bytes hex ff 01"));
}

TEST_F(TrafficTest, AListenerMayForgetItself)
{
    uint64_t number = 0;
    int calls = 0;
    number = terminal.listenToTraffic([&](const sim::Traffic&) {
        calls++;
        terminal.forget(number);
    });
    terminal.set("ram.a", 1);
    terminal.set("ram.a", 2);
    EXPECT_EQ(calls, 1);
}

TEST_F(TrafficTest, ListenersStayAcrossAStop)
{
    Listener listener(terminal);
    terminal.stop();
    ASSERT_TRUE(terminal.start());
    terminal.set("ram.a", 1);
    EXPECT_THAT(listener.lines(), Contains("all 0 signal config.change.ram records ram.a = int 1"));
}

// --- Text

namespace {

std::string records(std::vector<sim::VbufEntry> entries)
{
    sim::VbufWriter writer;
    for (const sim::VbufEntry& entry : entries)
        writer.add(entry.type, entry.key, entry.value, entry.status);
    return std::string(writer.bytes());
}

struct FormRow {
    uint8_t type;
    const char* name;
    std::string data;
    const char* text;
};
const FormRow Rows[] = {
    {CBUS_TYPE_SIGNAL, "cbus.filter", "config.change.ram\0"s, "text \"config.change.ram\""},
    {CBUS_TYPE_SIGNAL, "bp_ctrl.pointing", "start \"x\"\n\0"s, "text \"start \\\"x\\\"\\n\""},
    {CBUS_TYPE_SIGNAL, "any", "no end", "hex 6e 6f 20 65 6e 64"},
    {CBUS_TYPE_SIGNAL, "any", "a\0b\0"s, "hex 61 00 62 00"},
    {CBUS_TYPE_SIGNAL, "any", "", ""},
    {CBUS_TYPE_REQUEST, "config.read.k", readRequest(2, 100), "ask string 100"},
    {CBUS_TYPE_REQUEST, "config.read.k", readRequest(0, 100), "ask none 100"},
    {CBUS_TYPE_REQUEST, "config.read.k", readRequest(9, 100), "hex ff ff ff ff 09 00 00 00 64 00 00 00"},
    {CBUS_TYPE_REPLY, "config.read.k", word(0) + word(3) + word(4) + word(5), "value 0 int 5"},
    {CBUS_TYPE_REPLY, "config.read.k", word(-5) + word(0) + word(0), "value -5 none"},
    {CBUS_TYPE_REPLY, "config.read.k", word(-6) + word(2) + word(0), "value -6 no string"},
    {CBUS_TYPE_REPLY, "config.read.k", word(0) + word(3) + word(2) + "ab",
     "hex 00 00 00 00 03 00 00 00 02 00 00 00 61 62"},
    {CBUS_TYPE_SIGNAL, "config.write.k", writeData(3, word(-1)), "write int -1"},
    {CBUS_TYPE_SIGNAL, "config.write.k", writeData(2, "\xc3\xa4\0"s), "write string \"\xc3\xa4\""},
    {CBUS_TYPE_SIGNAL, "config.write.k", writeData(1, "\0\xff"s), "write blob 00 ff"},
    {CBUS_TYPE_SIGNAL, "config.write.k", writeData(0, ""), "write none"},
    {CBUS_TYPE_REQUEST, "config.readv.blk", records({{3, "ram.a", {}, 0}, {2, "ram.b", {}, 0}}),
     "records ram.a = no int; ram.b = no string"},
    {CBUS_TYPE_REPLY, "config.readv.blk", records({{3, "ram.a", "\1\0\0\0"s, 0}, {2, "ram.b", {}, -5}}),
     "records ram.a = int 1; ram.b status -5 = no string"},
    {CBUS_TYPE_SIGNAL, "config.writev.blk", records({{2, "ram.a", "x; y = \"z\"\0"s, 0}, {0, "b", {}, 0}}),
     "records ram.a = string \"x; y = \\\"z\\\"\"; b = none"},
    {CBUS_TYPE_REQUEST, "config.modifyv.blk", records({{1, "ram.a", "#;", 0}}), "records ram.a = blob 23 3b"},
    {CBUS_TYPE_REPLY, "config.modifyv.blk", records({{1, "ram.a", {}, -8}}),
     "records ram.a status -8 = no blob"},
    {CBUS_TYPE_REPLY, "config.readm.ram.*", word(0) + word(1) + records({{3, "ram.a", "\1\0\0\0"s, 0}}),
     "list 1 ram.a = int 1"},
    {CBUS_TYPE_REQUEST, "config.stat.k", word(-1), "status -1"},
    {CBUS_TYPE_REPLY, "config.stat.k", word(0) + word(4), "status 0 4"},
    {CBUS_TYPE_REQUEST, "config.factory_reset", word(-1), "status -1"},
    {CBUS_TYPE_REPLY, "config.factory_reset", word(0), "status 0"},
    {CBUS_TYPE_SIGNAL, "config.change.ram", records({{0, "ram.a", {}, 0}}), "records ram.a = none"},
    {CBUS_TYPE_SIGNAL, "config.change.ram", "cut", "hex 63 75 74"},
    {CBUS_TYPE_SIGNAL, "config.clnt_validate.v", records({{3, "cfg.v", "\1\0\0\0"s, 0}}),
     "records cfg.v = int 1"},
    {CBUS_TYPE_SIGNAL, "config.validate.rsp", records({{3, "cfg.v", {}, 2}}),
     "records cfg.v status 2 = no int"},
    {CBUS_TYPE_SIGNAL, "config.validate.register", "v\0"s, "text \"v\""},
};

} // namespace

TEST(TrafficText, EachFormTellsTheDataAndGivesThemBackByteForByte)
{
    for (const FormRow& row : Rows) {
        SCOPED_TRACE(std::string(row.name) + " " + row.text);
        EXPECT_EQ(sim::describeData(row.type, row.name, row.data, true), row.text);
        EXPECT_EQ(sim::describeData(row.type, row.name, row.data, false), row.text);
        std::string again = "x";
        std::string error;
        EXPECT_TRUE(sim::decodeData(row.text, &again, &error)) << error;
        EXPECT_EQ(again, row.data);
    }
}

TEST(TrafficText, BytesThatMeanNothingMakeItHexOnlyWhereItMustBeExact)
{
    std::string data = records({{3, "ram.ab", "\1\0\0\0"s, 0}});
    data[12 + 7] = 'x'; // behind the key's NUL
    EXPECT_EQ(sim::describeData(CBUS_TYPE_SIGNAL, "config.change.ram", data, false),
              "records ram.ab = int 1");
    std::string exact = sim::describeData(CBUS_TYPE_SIGNAL, "config.change.ram", data, true);
    EXPECT_THAT(exact, StartsWith("hex "));
    std::string again;
    std::string error;
    ASSERT_TRUE(sim::decodeData(exact, &again, &error));
    EXPECT_EQ(again, data);
}

TEST(TrafficText, AMessageComesBackFromItsLine)
{
    for (const char* name : {"ram.a", "two words", "quo\"te", "\"", "back\\slash", "line\nfeed", ""}) {
        SCOPED_TRACE(name);
        sim::Traffic traffic;
        traffic.way = sim::Way::To;
        traffic.client = 12;
        traffic.header.type = CBUS_TYPE_REPLY;
        traffic.header.src = 255;
        traffic.header.seqn = 65535;
        traffic.name = name;
        traffic.data = "x y";
        std::string line = sim::encodeTraffic(traffic);
        EXPECT_THAT(line, StartsWith("to 12 reply 255.65535 "));
        EXPECT_THAT(line, Not(testing::HasSubstr("\n")));
        sim::TrafficRecord record;
        std::string error;
        ASSERT_TRUE(sim::decodeTraffic(line, &record, &error)) << line << ": " << error;
        EXPECT_EQ(record.way, sim::Way::To);
        EXPECT_EQ(record.client, 12u);
        EXPECT_EQ(record.type, CBUS_TYPE_REPLY);
        EXPECT_EQ(record.src, 255);
        EXPECT_EQ(record.seqn, 65535);
        EXPECT_EQ(record.name, name);
        EXPECT_EQ(record.data, "x y");
    }
}

TEST(TrafficText, BadLinesAreRefused)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "\"\" is neither from, to nor all"},
        {"by 1 signal 0.0 a", "\"by\" is neither from, to nor all"},
        {"from x signal 0.0 a", "\"x\" is no client's number"},
        {"from 1 sign 0.0 a", "\"sign\" is no type of a message"},
        {"from 1 signal 00 a", "\"00\" is no number of a message"},
        {"from 1 signal 256.0 a", "\"256.0\" is no number of a message"},
        {"from 1 signal 0.65536 a", "\"0.65536\" is no number of a message"},
        {"from 1 signal 0.0", "a message without a name"},
        {"from 1 signal 0.0 a b", "unknown form of data \"b\""},
        {"from 1 signal 0.0 a text b", "a string must stand in quotation marks: b"},
        {"from 1 signal 0.0 \"a", "no closing quotation mark: \"a"},
        {"from 1 signal 0.0 a hex 0", "bytes must be pairs of hexadecimal digits: 0"},
        {"from 1 signal 0.0 a records b", "a record is written \"KEY = VALUE\", not b"},
        {"from 1 signal 0.0 a records b status x = int 1", "not a status: b status x"},
        {"from 1 signal 0.0 a records b = int x", "not a number: x"},
        {"from 1 signal 0.0 a value x int 1", "not a status: x"},
        {"from 1 signal 0.0 a ask real 1", "not a type and a size: real 1"},
        {"from 1 signal 0.0 a status 1 x", "not a status: 1 x"},
        {"from 1 signal 0.0 a list x b = int 1", "not a number of records: x"},
    };
    for (const auto& [line, expected] : rows) {
        sim::TrafficRecord record;
        std::string error;
        EXPECT_FALSE(sim::decodeTraffic(line, &record, &error)) << line;
        EXPECT_EQ(error, expected) << line;
    }
}

TEST(TrafficText, ALongLineIsCutBetweenCharacters)
{
    sim::Traffic traffic;
    traffic.header.type = CBUS_TYPE_SIGNAL;
    traffic.name = "a";
    std::string data = "\xc3\xa4\xc3\xa4\xc3\xa4\0"s;
    traffic.data = data;
    EXPECT_EQ(sim::describe(traffic, 100), "from 0 signal a text \"\xc3\xa4\xc3\xa4\xc3\xa4\"");
    EXPECT_EQ(sim::describe(traffic, 27), "from 0 signal a text \"\xc3\xa4...");
    EXPECT_EQ(sim::describe(traffic, 28), "from 0 signal a text \"\xc3\xa4...");
    EXPECT_EQ(sim::describe(traffic, 2), "...");
}

TEST(TrafficText, KeysAreThoseOfTheNameAndOfTheRecords)
{
    EXPECT_THAT(sim::keysOf(CBUS_TYPE_REQUEST, "config.read.cfg.a", {}), ElementsAre("cfg.a"));
    EXPECT_THAT(sim::keysOf(CBUS_TYPE_SIGNAL, "config.change.ram",
                            records({{3, "ram.a", {}, 0}, {3, "ram.b", {}, 0}})),
                ElementsAre("ram.a", "ram.b"));
    EXPECT_THAT(sim::keysOf(CBUS_TYPE_REPLY, "config.readm.ram.*",
                            word(0) + word(1) + records({{3, "ram.a", {}, 0}})),
                ElementsAre("ram.*", "ram.a"));
    EXPECT_THAT(sim::keysOf(CBUS_TYPE_SIGNAL, "bp_ctrl.pointing", "start\0"s), IsEmpty());
}
