// The bus server, with clients that write their bytes by hand.
#include "raw_client.h"

#include "sim/terminal.h"
#include "support/emptyterminal.h"

#include <gmock/gmock.h>
#include <thread>

using namespace std::string_literals;
using testing::HasSubstr;

namespace {

class BusServerTest : public testing::Test {
protected:
    BusServerTest() : terminal(emptyTerminal()), client(terminal.address()), other(terminal.address())
    {
        EXPECT_TRUE(terminal.running()) << terminal.error();
        EXPECT_TRUE(terminal.waitForClients(2));
    }

    sim::Terminal terminal;
    RawClient client;
    RawClient other;
};

// --- The wire

TEST_F(BusServerTest, ReplyByteByByte)
{
    // Request, src 9, seqn 0x0102, name "a.b" (4 bytes, no padding), data "xy".
    client.sendBytes("\x02\x09\x02\x01\x00\x00\x04\x00\x02\x00\x00\x00"s
                     "a.b\0"s
                     "xy\0\0"s);
    EXPECT_EQ(client.readBytes(16), "\x03\x09\x02\x01\x00\x00\x04\x00\x00\x00\x00\x00"s
                                    "a.b\0"s);
}

TEST_F(BusServerTest, FilteredSignalByteByByte)
{
    // Signal "cbus.filter" (12 bytes), data "a.\0" padded by one.
    other.sendBytes("\x01\x00\x00\x00\x00\x00\x0c\x00\x03\x00\x00\x00"s
                    "cbus.filter\0"s
                    "a.\0\0"s);
    ASSERT_TRUE(other.sync());
    // Name "a.bcd" is 6 bytes with 2 of padding, data of 5 bytes with 3.
    client.sendBytes("\x01\x05\x07\x00\x00\x00\x06\x00\x05\x00\x00\x00"s
                     "a.bcd\0\0\0"s
                     "hello\0\0\0"s);
    std::string frame = other.readBytes(28);
    ASSERT_EQ(frame.size(), 28u);
    EXPECT_EQ(frame.substr(0, 1), "\x01"s);
    EXPECT_EQ(frame.substr(4), "\x00\x00\x06\x00\x05\x00\x00\x00"s
                               "a.bcd\0\0\0"s
                               "hello\0\0\0"s);
}

TEST_F(BusServerTest, FramesArriveInAnyPieces)
{
    other.filter("piece");
    ASSERT_TRUE(other.sync());
    std::string bytes = sim::Terminal::frame(CBUS_TYPE_SIGNAL, 1, 1, "piece.one", "first") +
                        sim::Terminal::frame(CBUS_TYPE_SIGNAL, 1, 2, "piece.two", "second");
    for (char byte : bytes)
        client.sendBytes(std::string(1, byte));
    EXPECT_EQ(other.readFrame()->data, "first");
    EXPECT_EQ(other.readFrame()->data, "second");
}

TEST_F(BusServerTest, MessageWithoutNameIsAnswered)
{
    client.sendBytes(sim::Terminal::frame(CBUS_TYPE_REQUEST, 3, 4, "", "data"));
    auto reply = client.readFrame();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->type, CBUS_TYPE_REPLY);
    EXPECT_EQ(reply->seqn, 4);
    EXPECT_EQ(reply->name, "");
    EXPECT_EQ(reply->data, "");
}

TEST_F(BusServerTest, LargestMessagePasses)
{
    other.filter("n");
    ASSERT_TRUE(other.sync());
    std::string name(CBUS_NAME_LIMIT - 2, 'n');
    std::string data(CBUS_DATA_LIMIT - 1, 'd');
    std::thread sender([&] { client.sendSignal(name, data); });
    auto frame = other.readFrame();
    sender.join();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->name, name);
    EXPECT_EQ(frame->data, data);
}

// --- Broken frames

struct Broken {
    const char* legend;
    std::string header;
    std::string rest;
    const char* log;
};

class BrokenFrameTest : public BusServerTest, public testing::WithParamInterface<Broken> {};

TEST_P(BrokenFrameTest, ClosesItsClientAlone)
{
    client.sendBytes(GetParam().header + GetParam().rest);
    EXPECT_TRUE(client.isClosedByServer());
    EXPECT_TRUE(terminal.waitForLog(std::string("closed client 1: broken frame: ") + GetParam().log));
    EXPECT_TRUE(other.sync());
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenFrameTest,
    testing::Values(
        Broken{"TypeZero", "\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"s, "", "unknown message type"},
        Broken{"TypeFour", "\x04\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"s, "", "unknown message type"},
        Broken{"NameOf1024", "\x01\x00\x00\x00\x00\x00\x00\x04\x00\x00\x00\x00"s, "", "name too long"},
        Broken{"DataOf2MiB", "\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x20\x00"s, "", "data too long"},
        Broken{"DataHuge", "\x01\x00\x00\x00\x00\x00\x00\x00\xff\xff\xff\xff"s, "", "data too long"},
        Broken{"NameWithoutNul", "\x01\x00\x00\x00\x00\x00\x04\x00\x00\x00\x00\x00"s, "abcd",
               "name without its end"}),
    [](const auto& info) { return info.param.legend; });

TEST_F(BusServerTest, StreamThatEndsInsideAMessageIsLogged)
{
    client.sendBytes("\x01\x00\x00\x00\x00\x00"s);
    client.disconnect();
    EXPECT_TRUE(terminal.waitForLog("closed client 1: the stream ended inside a message"));
}

TEST_F(BusServerTest, OrderlyEndIsNotLogged)
{
    client.disconnect();
    EXPECT_TRUE(terminal.waitForClients(1));
    EXPECT_TRUE(terminal.serverLog().empty());
}

// --- Signals

TEST_F(BusServerTest, SignalReachesEveryClientThatFilteredAPrefixOnce)
{
    other.filter("ram.");
    other.filter("ram.status");
    other.filter("ram.status");
    other.provide("ram");
    ASSERT_TRUE(other.sync());
    client.sendSignal("ram.status.x", "1");
    EXPECT_EQ(other.readFrame()->name, "ram.status.x");
    EXPECT_TRUE(other.hasNothingElse());
    EXPECT_TRUE(client.hasNothingElse());
}

TEST_F(BusServerTest, SenderGetsItsOwnSignalIfItFilteredIt)
{
    client.filter("mine");
    client.sendSignal("mine.own", "1");
    EXPECT_EQ(client.readFrame()->name, "mine.own");
}

TEST_F(BusServerTest, SignalReachesTheClientThatProvidesItsName)
{
    other.provide("svc.");
    ASSERT_TRUE(other.sync());
    client.sendSignal("svc.do", "now");
    EXPECT_EQ(other.readFrame()->data, "now");
}

TEST_F(BusServerTest, EmptyFilterTakesAll)
{
    other.filter("");
    ASSERT_TRUE(other.sync());
    client.sendSignal("whatever", "1");
    EXPECT_EQ(other.readFrame()->name, "whatever");
}

TEST_F(BusServerTest, TooManyAndTooLongFiltersAreRefused)
{
    client.filter(std::string(CBUS_NAME_LIMIT, 'x'));
    EXPECT_TRUE(terminal.waitForLog("cbus.filter refused: too long"));
    for (size_t at = 0; at <= 1024; at++)
        client.filter("f" + std::to_string(at));
    EXPECT_TRUE(terminal.waitForLog("cbus.filter refused: too many"));
    EXPECT_TRUE(client.sync());
}

// --- Requests

TEST_F(BusServerTest, RequestThatNobodyProvidesIsAnsweredEmpty)
{
    auto answer = client.ask("nobody.here", "question");
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, "");
}

TEST_F(BusServerTest, RequestIsRoutedAndItsReplyGetsTheRequestersNumbers)
{
    other.provide("svc.");
    ASSERT_TRUE(other.sync());
    client.sendBytes(sim::Terminal::frame(CBUS_TYPE_REQUEST, 0x55, 0x1234, "svc.ask", "question"));
    auto request = other.readFrame();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->type, CBUS_TYPE_REQUEST);
    EXPECT_EQ(request->name, "svc.ask");
    EXPECT_EQ(request->data, "question");
    other.sendBytes(
        sim::Terminal::frame(CBUS_TYPE_REPLY, request->src, request->seqn, request->name, "answer"));
    auto reply = client.readFrame();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->type, CBUS_TYPE_REPLY);
    EXPECT_EQ(reply->src, 0x55);
    EXPECT_EQ(reply->seqn, 0x1234);
    EXPECT_EQ(reply->name, "svc.ask");
    EXPECT_EQ(reply->data, "answer");
}

TEST_F(BusServerTest, TwoRequestersWithTheSameNumbersAreKeptApart)
{
    RawClient provider(terminal.address());
    provider.provide("svc");
    ASSERT_TRUE(provider.sync());
    for (RawClient* requester : {&client, &other}) {
        requester->seqn = 77;
        requester->sendRequest("svc.x", requester == &client ? "one" : "two");
    }
    for (int round = 0; round < 2; round++) {
        auto request = provider.readFrame();
        ASSERT_TRUE(request);
        provider.sendBytes(sim::Terminal::frame(CBUS_TYPE_REPLY, request->src, request->seqn, request->name,
                                                "re:" + request->data));
    }
    EXPECT_EQ(client.readFrame()->data, "re:one");
    EXPECT_EQ(other.readFrame()->data, "re:two");
}

TEST_F(BusServerTest, LongestProvidedPrefixGetsTheRequest)
{
    RawClient longer(terminal.address());
    other.provide("svc.");
    longer.provide("svc.deep.");
    ASSERT_TRUE(other.sync() && longer.sync());
    client.sendRequest("svc.deep.x", "");
    EXPECT_EQ(longer.readFrame()->name, "svc.deep.x");
    client.sendRequest("svc.flat", "");
    EXPECT_EQ(other.readFrame()->name, "svc.flat");
}

TEST_F(BusServerTest, ClientMayTakeOverALongerNameThanTheDatabases)
{
    other.provide("config.");
    other.provide("config.special");
    ASSERT_TRUE(other.sync());
    client.sendRequest("config.special.x", "");
    EXPECT_EQ(other.readFrame()->name, "config.special.x");
    // The same prefix as the database's own does not take it over.
    EXPECT_EQ(client.ask("config.stat.absent", word(-1)).value_or("?"),
              word(static_cast<uint32_t>(-5)) + word(0));
}

TEST_F(BusServerTest, ProviderThatGoesAwayAnswersItsRequestsEmpty)
{
    other.provide("svc");
    ASSERT_TRUE(other.sync());
    uint16_t first = client.sendRequest("svc.a", "");
    uint16_t second = client.sendRequest("svc.b", "");
    ASSERT_TRUE(other.readFrame());
    other.disconnect();
    std::vector<uint16_t> answered;
    for (int round = 0; round < 2; round++) {
        auto reply = client.readFrame();
        ASSERT_TRUE(reply);
        EXPECT_EQ(reply->data, "");
        answered.push_back(reply->seqn);
    }
    EXPECT_THAT(answered, testing::UnorderedElementsAre(first, second));
    EXPECT_EQ(client.ask("svc.c", "").value_or("?"), "");
}

TEST_F(BusServerTest, RequesterThatGoesAwayIsPassedOver)
{
    other.provide("svc");
    ASSERT_TRUE(other.sync());
    client.sendRequest("svc.a", "");
    auto request = other.readFrame();
    ASSERT_TRUE(request);
    client.disconnect();
    ASSERT_TRUE(terminal.waitForClients(1));
    other.sendBytes(
        sim::Terminal::frame(CBUS_TYPE_REPLY, request->src, request->seqn, request->name, "late"));
    EXPECT_TRUE(other.sync());
}

TEST_F(BusServerTest, ReplyThatNobodyWaitsForIsLoggedAndDropped)
{
    client.sendBytes(sim::Terminal::frame(CBUS_TYPE_REPLY, 0, 99, "x", "y"));
    EXPECT_TRUE(terminal.waitForLog("a reply that nobody waits for"));
    EXPECT_TRUE(client.sync());
}

TEST_F(BusServerTest, TooManyWaitingRequestsAreAnsweredEmpty)
{
    other.provide("svc");
    ASSERT_TRUE(other.sync());
    std::string requests;
    for (uint16_t at = 0; at < 4097; at++)
        requests += sim::Terminal::frame(CBUS_TYPE_REQUEST, 1, at, "svc.x", "");
    client.sendBytes(requests);
    auto reply = client.readFrame();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->seqn, 4096);
    EXPECT_TRUE(terminal.waitForLog("too many requests wait for it"));
}

// --- Slow and many clients

TEST_F(BusServerTest, ClientThatDoesNotReadHoldsUpNobodyAndIsClosedInTheEnd)
{
    other.filter("flood");
    ASSERT_TRUE(other.sync());
    std::string frame =
        sim::Terminal::frame(CBUS_TYPE_SIGNAL, 0, 0, "flood.x", std::string(1024 * 1024, 'f'));
    for (int round = 0; round < 70; round++)
        ASSERT_TRUE(client.sendBytes(frame));
    EXPECT_TRUE(client.sync());
    EXPECT_TRUE(terminal.waitForLog("closed client 2: it does not read:"));
    EXPECT_TRUE(other.isClosedByServer());
}

TEST_F(BusServerTest, SlowClientGetsEverythingInOrder)
{
    other.filter("bulk");
    ASSERT_TRUE(other.sync());
    constexpr int Count = 40;
    for (int round = 0; round < Count; round++)
        client.sendSignal("bulk.x", std::to_string(round) + std::string(100000, '.'));
    ASSERT_TRUE(client.sync());
    for (int round = 0; round < Count; round++) {
        auto frame = other.readFrame();
        ASSERT_TRUE(frame);
        EXPECT_EQ(std::stoi(frame->data), round);
    }
}

TEST_F(BusServerTest, ServesManyClients)
{
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int at = 0; at < 60; at++) {
        clients.push_back(std::make_unique<RawClient>(terminal.address()));
        ASSERT_TRUE(clients.back()->isConnected());
        clients.back()->filter("all");
    }
    for (auto& each : clients)
        ASSERT_TRUE(each->sync());
    client.sendSignal("all.x", "hi");
    for (auto& each : clients)
        EXPECT_EQ(each->readFrame()->data, "hi");
}

// --- The fixture's own means

TEST_F(BusServerTest, TcpAddressWithAChosenPort)
{
    sim::TerminalOptions options = emptyTerminal();
    options.address = "tcp*127.0.0.1*0";
    sim::Terminal tcp(options);
    ASSERT_TRUE(tcp.running()) << tcp.error();
    RawClient overTcp(tcp.address());
    ASSERT_TRUE(overTcp.isConnected()) << tcp.address();
    EXPECT_TRUE(overTcp.sync());
}

TEST_F(BusServerTest, AddressInUseIsAnError)
{
    sim::TerminalOptions options = emptyTerminal();
    options.address = terminal.address();
    sim::Terminal second(options);
    EXPECT_FALSE(second.running());
    EXPECT_THAT(second.error(),
                HasSubstr("cannot listen on " + terminal.address() + ": Address already in use"));
}

TEST_F(BusServerTest, BadAddressesAreErrors)
{
    for (const char* address : {"carrier*pigeon", "udp*127.0.0.1*0", "tcp*nowhere*1"}) {
        sim::TerminalOptions options = emptyTerminal();
        options.address = address;
        sim::Terminal bad(options);
        EXPECT_FALSE(bad.running()) << address;
        EXPECT_THAT(bad.error(), HasSubstr("cannot listen on "s + address)) << address;
    }
}

TEST_F(BusServerTest, StopClosesAndStartListensOnTheSameAddress)
{
    std::string address = terminal.address();
    terminal.set("ram.kept", 1);
    terminal.stop();
    EXPECT_FALSE(terminal.running());
    EXPECT_TRUE(client.isClosedByServer());
    EXPECT_FALSE(RawClient(address).isConnected());
    EXPECT_EQ(terminal.getInt("ram.kept"), 1);
    ASSERT_TRUE(terminal.start()) << terminal.error();
    EXPECT_EQ(terminal.address(), address);
    RawClient again(address);
    EXPECT_TRUE(again.sync());
    EXPECT_EQ(terminal.getInt("ram.kept"), 1);
}

TEST_F(BusServerTest, KillConnectionsKeepsTheServer)
{
    terminal.killConnections();
    EXPECT_TRUE(client.isClosedByServer());
    EXPECT_EQ(terminal.clientCount(), 0u);
    EXPECT_TRUE(RawClient(terminal.address()).sync());
}

TEST_F(BusServerTest, HeldServerAnswersNothingUntilReleased)
{
    terminal.hold();
    uint16_t cookie = client.sendRequest("nobody", "");
    EXPECT_FALSE(client.readFrame(100));
    terminal.release();
    auto reply = client.readFrame();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->seqn, cookie);
}

TEST_F(BusServerTest, HookAnswersInPlaceOfTheServer)
{
    terminal.answerWith([](const sim::Message& message) -> std::optional<sim::Terminal::RawAnswer> {
        if (message.name != "bad.one")
            return std::nullopt;
        return sim::Terminal::RawAnswer{"junk", true};
    });
    client.sendRequest("bad.one", "");
    EXPECT_EQ(client.readBytes(4), "junk");
    EXPECT_TRUE(client.isClosedByServer());
    EXPECT_TRUE(other.sync());
    terminal.answerWith(nullptr);
    EXPECT_EQ(other.ask("bad.one", "").value_or("?"), "");
}

TEST_F(BusServerTest, LogsOfMessagesKeepOrderAndNumbers)
{
    client.seqn = 65535;
    client.sendSignal("log.one", "a\0b"s);
    client.sendSignal("log.two", "");
    ASSERT_TRUE(terminal.waitForMessage("log.two"));
    std::vector<sim::Message> messages = terminal.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].name, "log.one");
    EXPECT_EQ(messages[0].data, "a\0b"s);
    EXPECT_EQ(messages[0].text(), "a");
    EXPECT_EQ(messages[0].seqn, 65535);
    EXPECT_EQ(messages[1].seqn, 0);
    EXPECT_EQ(messages[1].client, 1u);
    terminal.clearLogs();
    EXPECT_TRUE(terminal.messages().empty());
    EXPECT_FALSE(terminal.waitForMessage("log.three", 10));
}

TEST_F(BusServerTest, HooksMayCallTheTerminal)
{
    terminal.onMessage([this](const sim::Message& message) {
        if (message.name == "poke")
            terminal.set("ram.poked", static_cast<int32_t>(terminal.clientCount()));
    });
    client.sendSignal("poke", "");
    EXPECT_TRUE(terminal.waitForValue("ram.poked", sim::Value::integer(2)));
}

TEST_F(BusServerTest, SettleHandlesWhatHasArrived)
{
    client.sendSignal("config.write.ram.x", word(-1) + word(3) + word(4) + word(5));
    terminal.settle();
    EXPECT_EQ(terminal.getInt("ram.x"), 5);
}

} // namespace
