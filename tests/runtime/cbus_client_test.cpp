// What becomes of messages that a client receives: name tables, queue, trace; and the making of connections.
#include "runtime/cbus_client.h"

#include "sim/terminal.h"
#include "support/busfixture.h"
#include "support/death.h"
#include "support/outputcapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

// --- The name tables --------------------------------------------------------------------------------------

TEST_F(Cbus, EachTypeHasATableOfItsOwn)
{
    cbus_client_init_cb(conn);
    cbus_client_signal_cb_add(conn, "n", noteRow, label("S"));
    cbus_client_request_cb_add(conn, "n", noteRow, label("Q"));
    cbus_client_reply_cb_add(conn, "n", noteRow, label("R"));
    bus.send(signalBytes("n", "1") + requestBytes(0, 0, "n", "2") +
             frameBytes(CBUS_TYPE_REPLY, 0, 0, "n", "3"));
    for (int i = 0; i < 3; ++i)
        turn();
    EXPECT_THAT(seen, ElementsAre("S n=1", "Q n=2", "R n=3"));
    cbus_client_signal_cb_del(conn, "n", noteRow, label("S"));
    cbus_client_request_cb_del(conn, "n", noteRow, label("Q"));
    cbus_client_reply_cb_del(conn, "n", noteRow, label("R"));
    EXPECT_EQ(conn->signal_count + conn->request_count + conn->reply_count, 0u);
}

TEST_F(Cbus, ARowTakesEveryMessageWhoseNameBeginsWithItsName)
{
    cbus_client_init_cb(conn);
    cbus_client_signal_cb_add(conn, "config.change.", noteRow, label("row"));
    bus.send(signalBytes("config.change.ram") + signalBytes("config.change") + signalBytes("config.change."));
    for (int i = 0; i < 3; ++i)
        turn();
    EXPECT_THAT(seen, ElementsAre("row config.change.ram=", "row config.change.="));
    cbus_client_signal_cb_del(conn, "config.change.", noteRow, label("row"));
}

TEST_F(Cbus, MessageWithoutARowIsDroppedWithoutALogLine)
{
    cbus_client_init_cb(conn);
    cbus_client_signal_cb_add(conn, "other", noteRow, label("row"));
    bus.send(signalBytes("config.change.ram"));
    turn();
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_EQ(syslogtap_count(), 0u);
    cbus_client_signal_cb_del(conn, "other", noteRow, label("row"));
}

TEST_F(Cbus, OfTwoRowsThatMatchOnlyTheFirstRegisteredGetsTheMessage)
{
    cbus_client_init_cb(conn);
    cbus_client_signal_cb_add(conn, "ram", noteRow, label("short"));
    cbus_client_signal_cb_add(conn, "ram.status", noteRow, label("long"));
    bus.send(signalBytes("ram.status.x"));
    turn();
    EXPECT_THAT(seen, ElementsAre("short ram.status.x="));
    cbus_client_signal_cb_del(conn, "ram", noteRow, label("short"));
    cbus_client_signal_cb_del(conn, "ram.status", noteRow, label("long"));
}

TEST_F(Cbus, DeletingARowWantsNameFunctionAndDataAndTakesTheFirst)
{
    char name[] = "n";
    cbus_client_signal_cb_add(conn, name, noteRow, label("a"));
    cbus_client_signal_cb_add(conn, name, noteRow, label("b"));
    cbus_client_signal_cb_add(conn, name, noteRow, label("a"));
    name[0] = 'x'; // the table has a copy
    cbus_client_signal_cb_del(conn, "nn", noteRow, label("a"));
    cbus_client_signal_cb_del(conn, "n", noteRow, nullptr);
    cbus_client_signal_cb_del(conn, "n", nullptr, label("a"));
    ASSERT_EQ(conn->signal_count, 3u);
    cbus_client_signal_cb_del(conn, "n", noteRow, label("a"));
    ASSERT_EQ(conn->signal_count, 2u);
    EXPECT_STREQ(static_cast<char*>(conn->signal_rows[0].user), "b");
    EXPECT_STREQ(static_cast<char*>(conn->signal_rows[1].user), "a");
    cbus_client_signal_cb_del(conn, "n", noteRow, label("b"));
    cbus_client_signal_cb_del(conn, "n", noteRow, label("a"));
    EXPECT_EQ(conn->signal_count, 0u);
}

TEST_F(Cbus, WithoutCallbacksMessagesAreDropped)
{
    cbus_conn_set_rx_cb(conn, nullptr, nullptr, nullptr);
    bus.send(signalBytes("a") + requestBytes(0, 0, "a") + replyBytes(0, ""));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(turn(), 0);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_GE(conn->fd, 0);
}

// --- The queue --------------------------------------------------------------------------------------------

TEST_F(Cbus, SignalBetweenRequestAndReplyIsDeliveredAfterwardsInOrder)
{
    bus.send(signalBytes("one") + signalBytes("two") + replyBytes(0, "r") + signalBytes("three"));
    void* out = nullptr;
    ASSERT_EQ(cbus_get_reply(conn, cbus_send_request(conn, "ask", nullptr, 0), &out), 1);
    free(out);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_EQ(conn->queue_count, 2u);
    turn(); // the idler delivers what waits, the handler what comes next
    EXPECT_THAT(seen, ElementsAre("signal one=", "signal two=", "signal three="));
    EXPECT_EQ(conn->queue_count, 0u);
    EXPECT_EQ(conn->queue_head, nullptr);
    EXPECT_EQ(conn->queue_tail, nullptr);
}

TEST_F(Cbus, OneMessageIsDeliveredInATurn)
{
    bus.send(signalBytes("one") + signalBytes("two"));
    fdloop_run(loop);
    EXPECT_THAT(seen, ElementsAre("signal one="));
    fdloop_run(loop);
    EXPECT_THAT(seen, ElementsAre("signal one=", "signal two="));
}

// A handler earlier in the same pass waits for a reply, so that the receive handler finds a queue.
TEST(CbusQueue, ReceiveHandlerDeliversTheQueueAndReadsInTheNextTurn)
{
    seen.clear();
    onMessage = nullptr;
    RawBus bus;
    fdloop_t* loop = keptLoop();
    static cbus_conn_t* conn;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    fdloop_fd_register(
        loop, ends[0],
        [](int, void*) {
            void* out = nullptr;
            EXPECT_EQ(cbus_get_reply(conn, 0, &out), 1);
            free(out);
            return -1;
        },
        nullptr);
    conn = bus.connect(loop);
    cbus_conn_set_rx_cb(conn, noteSignal, noteRequest, noteReply);
    bus.send(signalBytes("one") + replyBytes(0, "r") + signalBytes("two"));
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(seen, ElementsAre("signal one="));
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_THAT(seen, ElementsAre("signal one=", "signal two="));
    cbus_conn_destroy(conn);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Cbus, WhatACallbackAddsToTheQueueIsDeliveredInTheSameWalk)
{
    bus.send(signalBytes("one") + replyBytes(0, "r") + signalBytes("two") + replyBytes(1, "r"));
    void* out = nullptr;
    ASSERT_EQ(cbus_get_reply(conn, cbus_send_request(conn, "ask", nullptr, 0), &out), 1);
    free(out);
    onMessage = [](cbus_conn_t* c) {
        onMessage = nullptr;
        void* answer = nullptr;
        EXPECT_EQ(cbus_get_reply(c, cbus_send_request(c, "ask", nullptr, 0), &answer), 1);
        free(answer);
        EXPECT_THAT(seen, ElementsAre("signal one=")); // not inside the wait
    };
    turn();
    EXPECT_THAT(seen, ElementsAre("signal one=", "signal two="));
    EXPECT_EQ(conn->queue_count, 0u);
}

TEST_F(Cbus, QueueKeepsHeaderBodyAndCountOfAMessage)
{
    bus.send(frameBytes(CBUS_TYPE_REQUEST, 5, 6, "name", "data1") + replyBytes(0, ""));
    void* out = nullptr;
    ASSERT_EQ(cbus_get_reply(conn, 0, &out), 0);
    free(out);
    const cbus_queued_t* node = conn->queue_head;
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node, conn->queue_tail);
    EXPECT_EQ(node->next, nullptr);
    EXPECT_EQ(node->header.src, 5);
    EXPECT_EQ(node->header.seqn, 6);
    EXPECT_EQ(node->count, 12 + 8 + 8);
    turn();
}

// --- Connections ------------------------------------------------------------------------------------------

TEST_F(Cbus, CreatedConnectionIsZeroedAndLinkedToItsClientRecord)
{
    EXPECT_EQ(conn->next_seqn, 0);
    EXPECT_EQ(conn->queue_count, 0u);
    EXPECT_EQ(conn->client->conn, conn);
    EXPECT_EQ(conn->client->loop, loop);
    EXPECT_EQ(conn->cb, &conn->client->cb);
    EXPECT_NE(conn->cb->close, nullptr);
    EXPECT_TRUE(fcntl(conn->fd, F_GETFL) & O_NONBLOCK);
}

TEST_F(Cbus, ConnectionWithoutALoopIsSynchronous)
{
    RawBus other;
    cbus_conn_t* sync = other.connect();
    ASSERT_NE(sync, nullptr);
    other.send(replyBytes(0, "r"));
    void* out = nullptr;
    EXPECT_EQ(cbus_get_reply(sync, cbus_send_request(sync, "ask", nullptr, 0), &out), 1);
    free(out);
    const uint8_t src = static_cast<uint8_t>(sync->fd);
    cbus_conn_destroy(sync);
    EXPECT_EQ(other.take(100), frameBytes(CBUS_TYPE_REQUEST, src, 0, "ask", ""));
}

TEST_F(Cbus, DestroyCallsTheCloseFunction)
{
    RawBus other;
    cbus_conn_t* sync = other.connect();
    ASSERT_NE(sync, nullptr);
    cbus_conn_destroy(sync);
    EXPECT_TRUE(other.closedByClient());
}

TEST_F(Cbus, AddressComesFromTheEnvironment)
{
    sim::Terminal terminal;
    setenv("CBUS_ADDR", terminal.address().c_str(), 1); // the word unix, an asterisk and another name
    cbus_conn_t* client = cbus_conn_create(nullptr, "client");
    ASSERT_NE(client, nullptr);
    EXPECT_TRUE(terminal.waitForClients(1));
    cbus_conn_destroy(client);
}

// Abstract names belong to the network namespace, and so a namespace of its own keeps this from a live bus.
TEST(CbusAddress, IsUnixCbusByDefault)
{
    const int no_namespace = 77;
    const Death end = deathOf([] {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0 && unshare(CLONE_NEWNET) != 0)
            _exit(no_namespace);
        const int listener = socket_create_server("unix*cbus");
        unsetenv("CBUS_ADDR");
        cbus_conn_t* client = cbus_conn_create(nullptr, "client");
        _exit(client && socket_create_server_client(listener) >= 0 ? 0 : 1);
    });
    if (end.status == no_namespace)
        GTEST_SKIP() << "no right to make a network namespace";
    EXPECT_EQ(end.status, 0);
}

TEST(CbusAddress, WithoutAServerOrWithABadAddressThereIsNoConnection)
{
    RawBus bus;
    bus.stopListening();
    fdloop_t* loop = keptLoop();
    EXPECT_EQ(cbus_conn_create(loop, "client"), nullptr);
    EXPECT_EQ(fdloop_run(loop), 1); // nothing was registered
    for (const char* address : {"", "unixx*a", "pipe*a", "tcp*nowhere*1"}) {
        setenv("CBUS_ADDR", address, 1);
        EXPECT_EQ(cbus_conn_create(nullptr, "client"), nullptr) << address;
    }
}

// --- The trace --------------------------------------------------------------------------------------------

TEST_F(Cbus, DebugSwitchIsSetByTheEnvironmentWhateverItsValue)
{
    EXPECT_FALSE(cbus_debug);
    setenv("CBUS_DEBUG", "", 1);
    RawBus other;
    cbus_conn_t* client = other.connect();
    EXPECT_TRUE(cbus_debug);
    cbus_conn_destroy(client);
    unsetenv("CBUS_DEBUG");
}

TEST_F(Cbus, TraceOfADeliveredMessage)
{
    cbus_debug = true;
    bus.send(frameBytes(CBUS_TYPE_SIGNAL, 9, 300, "hello", "ab"));
    OutputCapture capture;
    turn();
    const std::string text = capture.stop();
    const std::string fd = std::to_string(conn->fd);
    EXPECT_THAT(text, HasSubstr("_cbus_msg_read: type=1 src=9 seqn=300 nlen=6 dlen=2\n"));
    EXPECT_THAT(text, HasSubstr("  9 _cbus_msg_read: name=\"hello\", data size=2\n00000000:"));
    EXPECT_THAT(text, HasSubstr("B(" + fd +
                                ") _conn_rx: nr=24\n"
                                "B(" +
                                fd +
                                ") _conn_msg_dispatch level=1\n"
                                "E(" +
                                fd +
                                ") _conn_msg_dispatch level=1\n"
                                "E(" +
                                fd + ") _conn_rx: nr=24\n"));
}

TEST_F(Cbus, TraceOfASynchronousWait)
{
    cbus_debug = true;
    bus.send(replyBytes(0, "abc"));
    OutputCapture capture;
    void* out = nullptr;
    cbus_get_reply(conn, 0, &out);
    const std::string text = capture.stop();
    free(out);
    const std::string fd = std::to_string(conn->fd);
    EXPECT_EQ(text.find("B(" + fd + ") cbus_get_reply: cookie=0\n"), 0u);
    EXPECT_THAT(text, testing::EndsWith("E(" + fd + ") cbus_get_reply: nr=3\n"));
}

TEST_F(Cbus, TraceOfALoss)
{
    cbus_debug = true;
    const std::string fd = std::to_string(conn->fd);
    bus.close();
    OutputCapture capture;
    turn();
    EXPECT_EQ(capture.stop(), "B(" + fd + ") _conn_rx: nr=-1\nE(" + fd + ") _conn_rx: nr=-1\n");
}

TEST_F(Cbus, ShowMessagePrintsTimeSourceTagAndName)
{
    conn->cur_header.src = 5;
    OutputCapture capture;
    cbus_show_message(conn, "tag", "some.name", nullptr, 0);
    EXPECT_THAT(capture.stop(), MatchesRegex("[0-2][0-9]:[0-5][0-9]:[0-6][0-9]\\.[0-9]{6}  5 tag: "
                                             "name=\"some.name\", data size=0\n"));
}

TEST_F(Cbus, ShowMessageDumpsBytes)
{
    OutputCapture capture;
    cbus_show_message(conn, "tag", nullptr, "AB", 2);
    EXPECT_THAT(capture.stop(), HasSubstr("name=\"\", data size=2\n00000000: 41 42"));
}

// --- Against the real server ------------------------------------------------------------------------------

TEST(CbusServer, FilteredSignalArrivesWithItsFullName)
{
    seen.clear();
    onMessage = nullptr;
    sim::Terminal terminal;
    terminal.useForProcess();
    fdloop_t* loop = keptLoop();
    cbus_conn_t* client = cbus_conn_create(loop, "client");
    ASSERT_NE(client, nullptr);
    cbus_conn_set_rx_cb(client, noteSignal, noteRequest, noteReply);
    ASSERT_EQ(cbus_filter(client, "bp_ctrl."), 0);
    ASSERT_TRUE(terminal.waitForFilter("bp_ctrl.pointing"));
    terminal.sendSignal("other.signal", "no");
    terminal.sendSignal("bp_ctrl.pointing", "yes");
    fdloop_run(loop);
    EXPECT_THAT(seen, ElementsAre("signal bp_ctrl.pointing=yes"));
    cbus_conn_destroy(client);
}

TEST(CbusServer, RequestIsRoutedToAProviderAndAnsweredByCookie)
{
    seen.clear();
    sim::Terminal terminal;
    terminal.useForProcess();
    fdloop_t* loop = keptLoop();
    cbus_conn_t* provider = cbus_conn_create(loop, "provider");
    cbus_conn_t* client = cbus_conn_create(nullptr, "client");
    ASSERT_TRUE(provider && client);
    cbus_conn_set_rx_cb(provider, noteSignal, noteRequest, noteReply);
    ASSERT_EQ(cbus_provide(provider, "shop."), 0);
    ASSERT_TRUE(terminal.waitForMessage("cbus.provide"));
    onMessage = [](cbus_conn_t* c) { cbus_send_reply(c, "apple", 5); };
    const int cookie = cbus_send_request(client, "shop.buy", "one", 3);
    fdloop_run(loop);
    EXPECT_THAT(seen, ElementsAre("request shop.buy=one"));
    void* out = nullptr;
    ASSERT_EQ(cbus_get_reply(client, cookie, &out), 5);
    EXPECT_EQ(std::string(static_cast<char*>(out), 5), "apple");
    free(out);
    onMessage = nullptr;
    cbus_conn_destroy(provider);
    cbus_conn_destroy(client);
}

} // namespace
