// The bus client: frames byte by byte, requests and replies, the tables, the queue, the trace. Failures are
// in cbus_failure_test.cpp.
#include "runtime/cbus.h"

#include "runtime/cbus_sock_impl.h"
#include "runtime/fdloop.h"
#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/death.h"
#include "support/keptloop.h"
#include "support/outputcapture.h"
#include "support/rawbus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sched.h>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

std::string byteOf(int value)
{
    return std::string(1, static_cast<char>(value));
}

std::string literal(const char* bytes, size_t size)
{
    return std::string(bytes, size);
}
#define BYTES(text) literal(text, sizeof(text) - 1)

// What arrived, as "signal name=data", and what a test wants done about it.
std::vector<std::string> seen;
std::function<void(cbus_conn_t*)> onMessage;

int note(cbus_conn_t* conn, const char* kind, const char* name, void* data, uint32_t len)
{
    seen.push_back(std::string(kind) + " " + name + "=" + std::string(static_cast<char*>(data), len));
    if (onMessage)
        onMessage(conn);
    return 0;
}

int noteSignal(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    return note(conn, "signal", name, data, len);
}

int noteRequest(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    return note(conn, "request", name, data, len);
}

int noteReply(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    return note(conn, "reply", name, data, len);
}

// A row's function: its data word is the label.
int noteRow(cbus_conn_t* conn, void* user, const char* name, void* data, uint32_t len)
{
    return note(conn, static_cast<const char*>(user), name, data, len);
}

void* label(const char* text)
{
    return const_cast<char*>(text);
}

int stopTimer(void*)
{
    return 0;
}

class Cbus : public testing::Test {
protected:
    void SetUp() override
    {
        signal(SIGPIPE, SIG_IGN);
        unsetenv("CBUS_DEBUG");
        seen.clear();
        onMessage = nullptr;
        syslogtap_start();
        loop = keptLoop();
        conn = bus.connect(loop);
        ASSERT_NE(conn, nullptr);
        cbus_conn_set_rx_cb(conn, noteSignal, noteRequest, noteReply);
    }
    void TearDown() override
    {
        cbus_conn_destroy(conn);
        cbus_debug = false;
        syslogtap_stop();
    }
    // A turn of the loop that comes back although nothing may arrive.
    int turn()
    {
        fdloop_timer_add(loop, 1, stopTimer, nullptr);
        return fdloop_run(loop);
    }

    RawBus bus;
    fdloop_t* loop = nullptr;
    cbus_conn_t* conn = nullptr;
};

// --- Frames -----------------------------------------------------------------------------------------------

TEST_F(Cbus, NameOfFiveCharactersHasNlen6AndTwoPadBytes)
{
    EXPECT_EQ(cbus_send_signal(conn, "hello", "abc", 3), 0);
    const std::string frame = BYTES("\x01") + byteOf(conn->fd) +
                              BYTES("\x00\x00\x00\x00\x06\x00\x03\x00\x00\x00"
                                    "hello\x00\x00\x00"
                                    "abc\x00");
    EXPECT_EQ(bus.takeAll(), frame);
}

TEST_F(Cbus, NameOfThreeCharactersHasNoPad)
{
    EXPECT_EQ(cbus_send_signal(conn, "abc", "12345678", 8), 0);
    const std::string frame = BYTES("\x01") + byteOf(conn->fd) +
                              BYTES("\x00\x00\x00\x00\x04\x00\x08\x00\x00\x00"
                                    "abc\x00"
                                    "12345678");
    EXPECT_EQ(bus.takeAll(), frame);
}

TEST_F(Cbus, RequestHasType2AndItsNumberInLittleEndian)
{
    conn->next_seqn = 0x1234;
    EXPECT_EQ(cbus_send_request(conn, "q", "x", 1), 0x1234);
    const std::string frame = BYTES("\x02") + byteOf(conn->fd) +
                              BYTES("\x34\x12\x00\x00\x02\x00\x01\x00\x00\x00"
                                    "q\x00\x00\x00"
                                    "x\x00\x00\x00");
    EXPECT_EQ(bus.takeAll(), frame);
}

TEST_F(Cbus, EmptyPayloadWithAPointerIsValidAndANullPointerGivesLength0)
{
    EXPECT_EQ(cbus_send_signal(conn, "abc", "", 0), 0);
    EXPECT_EQ(cbus_send_signal(conn, "abc", nullptr, 7), 0);
    const std::string start = BYTES("\x01") + byteOf(conn->fd);
    EXPECT_EQ(bus.takeAll(),
              start + BYTES("\0\0\0\0\x04\0\0\0\0\0abc\0") + start + BYTES("\x01\0\0\0\x04\0\0\0\0\0abc\0"));
}

TEST_F(Cbus, NullNameGivesNlen0)
{
    EXPECT_EQ(cbus_send_signal(conn, nullptr, "12", 2), 0);
    EXPECT_EQ(bus.takeAll(), BYTES("\x01") + byteOf(conn->fd) +
                                 BYTES("\0\0\0\0\0\0\x02\0\0\0"
                                       "12\0\0"));
}

TEST_F(Cbus, SrcIsTheLowByteOfTheDescriptor)
{
    const int low = conn->fd;
    conn->fd = fcntl(low, F_DUPFD_CLOEXEC, 256 + 44);
    ASSERT_GE(conn->fd, 300);
    cbus_send_signal(conn, "abc", nullptr, 0);
    EXPECT_EQ(static_cast<uint8_t>(bus.takeAll().at(1)), conn->fd - 256);
    close(conn->fd);
    conn->fd = low;
}

TEST_F(Cbus, PackedFrameIsWhatTheClientSends)
{
    cbus_send_signal(conn, "hello", "abcde", 5);
    const cbus_header_t header = {CBUS_TYPE_SIGNAL, static_cast<uint8_t>(conn->fd), 0, 0, 6, 5};
    std::string packed(cbus_frame_size(&header), 'x');
    cbus_frame_pack(reinterpret_cast<uint8_t*>(&packed[0]), &header, "hello", "abcde");
    EXPECT_EQ(bus.takeAll(), packed);
}

TEST(CbusFrame, PaddingAndLimits)
{
    const uint32_t padded[][2] = {{0, 0}, {1, 4}, {3, 4}, {4, 4}, {5, 8}, {1023, 1024}};
    for (const auto& row : padded)
        EXPECT_EQ(cbus_padded(row[0]), row[1]) << row[0];
    cbus_header_t header = {CBUS_TYPE_SIGNAL, 0, 0, 0, 1023, 0x1fffff};
    EXPECT_TRUE(cbus_header_valid(&header));
    EXPECT_EQ(cbus_frame_size(&header), 12u + 1024 + 0x200000);
    header.nlen = 1024;
    EXPECT_FALSE(cbus_header_valid(&header));
    header.nlen = 0;
    header.dlen = 0x200000;
    EXPECT_FALSE(cbus_header_valid(&header));
}

TEST_F(Cbus, FilterAndProvideSendTheirTextWithItsNul)
{
    EXPECT_EQ(cbus_filter(conn, "config.change.ram"), 0);
    EXPECT_EQ(cbus_provide(conn, "config."), 0);
    const uint8_t src = static_cast<uint8_t>(conn->fd);
    EXPECT_EQ(bus.takeAll(),
              frameBytes(CBUS_TYPE_SIGNAL, src, 0, "cbus.filter", BYTES("config.change.ram\0")) +
                  frameBytes(CBUS_TYPE_SIGNAL, src, 1, "cbus.provide", BYTES("config.\0")));
}

// --- Numbers ----------------------------------------------------------------------------------------------

TEST_F(Cbus, CookiesAreConsecutiveAndSignalsUseNumbersToo)
{
    EXPECT_EQ(cbus_send_request(conn, "a", nullptr, 0), 0);
    EXPECT_EQ(cbus_send_request(conn, "a", nullptr, 0), 1);
    EXPECT_EQ(cbus_send_signal(conn, "a", nullptr, 0), 0);
    EXPECT_EQ(cbus_send_request(conn, "a", nullptr, 0), 3);
}

TEST_F(Cbus, After65536MessagesTheNumberWrapsTo0)
{
    for (int i = 0; i < 65536; ++i) {
        ASSERT_EQ(cbus_send_request(conn, "abc", nullptr, 0), i);
        ASSERT_EQ(bus.take(16).size(), 16u);
    }
    EXPECT_EQ(cbus_send_request(conn, "abc", nullptr, 0), 0);
}

TEST_F(Cbus, AReplyTakesNoNumber)
{
    bus.send(requestBytes(9, 77, "do.it"));
    onMessage = [](cbus_conn_t* c) { cbus_send_reply(c, "ok", 2); };
    turn();
    EXPECT_EQ(conn->next_seqn, 0);
}

// --- Requests and replies ---------------------------------------------------------------------------------

TEST_F(Cbus, ReplyMovesItsDataToTheStartOfTheBuffer)
{
    bus.send(replyBytes(0, "payload"));
    void* out = nullptr;
    const int cookie = cbus_send_request(conn, "ask", nullptr, 0);
    ASSERT_EQ(cbus_get_reply(conn, cookie, &out), 7);
    EXPECT_EQ(std::string(static_cast<char*>(out), 7), "payload");
    free(out);
}

TEST_F(Cbus, EmptyReplyStillGivesABuffer)
{
    bus.send(replyBytes(0, ""));
    void* out = nullptr;
    EXPECT_EQ(cbus_get_reply(conn, cbus_send_request(conn, "ask", nullptr, 0), &out), 0);
    EXPECT_NE(out, nullptr);
    free(out);
}

TEST_F(Cbus, CookieAndNumberAreComparedAs16Bits)
{
    bus.send(replyBytes(5, "x"));
    void* out = nullptr;
    EXPECT_EQ(cbus_get_reply(conn, 0x10005, &out), 1);
    free(out);
}

TEST_F(Cbus, ReplyThatComesInPiecesIsWaitedFor)
{
    const std::string frame = replyBytes(0, "payload");
    std::thread server([&] {
        for (char byte : frame) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            bus.send(std::string(1, byte));
        }
    });
    void* out = nullptr;
    EXPECT_EQ(cbus_get_reply(conn, 0, &out), 7);
    server.join();
    EXPECT_EQ(std::string(static_cast<char*>(out), 7), "payload");
    free(out);
    EXPECT_EQ(syslogtap_count(), 0u); // having to wait is no error
}

TEST_F(Cbus, ASignalHandlerDoesNotEndTheWait)
{
    struct sigaction action = {}, old;
    static int handled;
    handled = 0;
    action.sa_handler = [](int) { ++handled; }; // without SA_RESTART: every call is interrupted
    sigaction(SIGUSR1, &action, &old);
    const pthread_t self = pthread_self();
    std::thread server([&] {
        for (int i = 0; i < 5; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            pthread_kill(self, SIGUSR1);
        }
        bus.send(replyBytes(0, "x"));
    });
    void* out = nullptr;
    EXPECT_EQ(cbus_get_reply(conn, 0, &out), 1);
    server.join();
    free(out);
    sigaction(SIGUSR1, &old, nullptr);
    EXPECT_GT(handled, 0);
    EXPECT_EQ(syslogtap_count(), 0u);
}

TEST_F(Cbus, SendReplyRepeatsSrcNumberAndNameOfTheRequest)
{
    bus.send(requestBytes(200, 0xbeef, "do.it", "now"));
    onMessage = [](cbus_conn_t* c) { EXPECT_EQ(cbus_send_reply(c, "done", 4), 0); };
    turn();
    EXPECT_THAT(seen, ElementsAre("request do.it=now"));
    EXPECT_EQ(bus.takeAll(), frameBytes(CBUS_TYPE_REPLY, 200, 0xbeef, "do.it", "done"));
}

TEST_F(Cbus, StoredContextAnswersLater)
{
    bus.send(requestBytes(7, 41, "do.it", "now"));
    cbus_sender_ctx_t* ctx = nullptr;
    onMessage = [&ctx](cbus_conn_t* c) {
        ctx = cbus_store_sender_ctx(c);
        EXPECT_NE(static_cast<const char*>(ctx->name), c->cur_name); // duplicated
        EXPECT_EQ(ctx->data, c->cur_data);                           // as it stands
    };
    turn();
    ASSERT_NE(ctx, nullptr);
    bus.send(requestBytes(8, 42, "other"));
    onMessage = nullptr;
    turn();
    EXPECT_EQ(cbus_send_reply_to(conn, "late", 4, ctx), 0); // frees it
    EXPECT_EQ(bus.takeAll(), frameBytes(CBUS_TYPE_REPLY, 7, 41, "do.it", "late"));
}

TEST_F(Cbus, CopiedContextBecomesTheCurrentMessage)
{
    bus.send(requestBytes(7, 41, "do.it"));
    cbus_sender_ctx_t* ctx = nullptr;
    onMessage = [&ctx](cbus_conn_t* c) { ctx = cbus_store_sender_ctx(c); };
    turn();
    ASSERT_NE(ctx, nullptr);
    cbus_copy_sender_ctx(conn, ctx);
    EXPECT_EQ(conn->cur_name, ctx->name);
    EXPECT_EQ(cbus_send_reply(conn, "a", 1), 0);
    cbus_free_sender_ctx(ctx);
    EXPECT_EQ(bus.takeAll(), frameBytes(CBUS_TYPE_REPLY, 7, 41, "do.it", "a"));
}

TEST_F(Cbus, ContextOfARequestWithoutANameAnswersWithoutOne)
{
    bus.send(headerBytes(CBUS_TYPE_REQUEST, 3, 4, 0, 0));
    onMessage = [](cbus_conn_t* c) { cbus_send_reply_to(c, "a", 1, cbus_store_sender_ctx(c)); };
    turn();
    EXPECT_THAT(seen, ElementsAre("request ="));
    EXPECT_EQ(bus.takeAll(), headerBytes(CBUS_TYPE_REPLY, 3, 4, 0, 1) + padTo4("a"));
}

TEST_F(Cbus, CurrentMessageIsValidDuringTheCallbackOnly)
{
    bus.send(requestBytes(7, 41, "do.it", "data"));
    onMessage = [](cbus_conn_t* c) {
        EXPECT_STREQ(c->cur_name, "do.it");
        EXPECT_EQ(c->cur_header.seqn, 41);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(c->cur_data) % 4, 0u);
    };
    turn();
    EXPECT_EQ(seen.size(), 1u);
    EXPECT_EQ(conn->cur_name, nullptr);
    EXPECT_EQ(conn->cur_data, nullptr);
}

// The panel's second thread sends on the bus thread's connection: each frame goes out whole.
TEST_F(Cbus, SignalsFromTwoThreadsDoNotMixTheirBytes)
{
    const int each = 2000;
    const std::string frames[2] = {std::string(300, 'a'), std::string(301, 'b')};
    const auto sender = [this](const std::string& data) {
        for (int i = 0; i < each; ++i)
            EXPECT_EQ(cbus_send_signal(conn, "abc", data.data(), static_cast<uint32_t>(data.size())), 0);
    };
    std::thread first(sender, frames[0]);
    std::thread second(sender, frames[1]);
    int counts[2] = {0, 0};
    for (int i = 0; i < 2 * each; ++i) {
        const std::string header = bus.take(12);
        ASSERT_EQ(header.size(), 12u);
        const size_t which = static_cast<uint8_t>(header[8]) == 300 % 256 ? 0 : 1;
        ASSERT_EQ(bus.take(4 + cbus_padded(static_cast<uint32_t>(frames[which].size()))),
                  std::string("abc\0", 4) + padTo4(frames[which]));
        ++counts[which];
    }
    first.join();
    second.join();
    EXPECT_EQ(counts[0], each);
    EXPECT_EQ(counts[1], each);
}

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
