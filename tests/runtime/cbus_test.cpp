// The bus client's frames byte by byte, its numbers, requests and replies. What becomes of received messages
// is in cbus_client_test.cpp, failures are in cbus_failure_test.cpp.
#include "runtime/cbus.h"

#include "support/busfixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <thread>

namespace {

using testing::ElementsAre;

std::string byteOf(int value)
{
    return std::string(1, static_cast<char>(value));
}

std::string literal(const char* bytes, size_t size)
{
    return std::string(bytes, size);
}
#define BYTES(text) literal(text, sizeof(text) - 1)

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

} // namespace
