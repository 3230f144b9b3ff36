// What the bus client does when the other side fails or lies: streams cut short, lost connections, full
// sockets, too long messages, panics with their texts.
#include "runtime/cbus.h"

#include "runtime/fdloop_impl.h"
#include "support/busfixture.h"
#include "support/nomemory.h"
#include "support/patience.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <syslog.h>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::KilledBySignal;
using testing::MatchesRegex;

int noteNameAndData(cbus_conn_t*, const char* name, void* data, uint32_t len)
{
    seen.push_back(std::string(name) + "=" + std::string(static_cast<char*>(data), len));
    return 0;
}

class CbusFailure : public Cbus {
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        Cbus::SetUp();
        cbus_conn_set_rx_cb(conn, noteNameAndData, noteNameAndData, noteNameAndData);
    }
    int reply(int cookie = 0)
    {
        void* out = nullptr;
        const int n = cbus_get_reply(conn, cookie, &out);
        free(out);
        return n;
    }
    // A turn would fail with -1 if `select` were given the closed descriptor.
    void expectClosedAndOffTheLoop()
    {
        EXPECT_EQ(conn->fd, -1);
        EXPECT_EQ(turn(), 0);
        EXPECT_EQ(turn(), 0);
        EXPECT_EQ(loop->entry_count, 0);
    }
};

// --- The stream ends --------------------------------------------------------------------------------------

struct Cut {
    const char* where;
    size_t size;
};

// Header 12, name block 8, data block 8.
const Cut cuts[] = {
    {"before the header", 0},      {"in the header", 5},     {"behind the header", 12}, {"in the name", 14},
    {"in the name's padding", 19}, {"before the value", 20}, {"in the value", 23},
};

class CbusCut : public CbusFailure, public testing::WithParamInterface<Cut> {};

TEST_P(CbusCut, DuringAWaitTheCallReturnsMinus1AndNothingIsLogged)
{
    bus.send(frameBytes(CBUS_TYPE_REPLY, 0, 0, "reply", "value").substr(0, GetParam().size));
    bus.close();
    EXPECT_EQ(reply(), -1);
    EXPECT_EQ(syslogtap_count(), 0u);
    expectClosedAndOffTheLoop();
}

TEST_P(CbusCut, OnTheLoopTheConnectionIsClosedAndDroppedAndNothingIsLogged)
{
    bus.send(frameBytes(CBUS_TYPE_SIGNAL, 0, 0, "hello", "value").substr(0, GetParam().size));
    bus.close();
    EXPECT_EQ(turn(), 0);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_EQ(syslogtap_count(), 0u);
    expectClosedAndOffTheLoop();
}

INSTANTIATE_TEST_SUITE_P(Places, CbusCut, testing::ValuesIn(cuts),
                         [](const testing::TestParamInfo<Cut>& info) {
                             std::string name = info.param.where;
                             for (char& c : name)
                                 c = isalnum(static_cast<unsigned char>(c)) ? c : '_';
                             return name;
                         });

// The wait leaves EAGAIN behind, which must not make an error of the orderly end that follows.
TEST_F(CbusFailure, EndOfTheStreamAfterAWaitIsNotLogged)
{
    std::thread server([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        bus.close();
    });
    EXPECT_EQ(reply(), -1);
    server.join();
    EXPECT_EQ(syslogtap_count(), 0u);
}

TEST_F(CbusFailure, MessagesBeforeTheEndAreStillDelivered)
{
    bus.send(signalBytes("one") + signalBytes("two"));
    bus.close();
    EXPECT_EQ(reply(), -1);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_EQ(turn(), 0);
    EXPECT_THAT(seen, ElementsAre("one=", "two="));
    expectClosedAndOffTheLoop();
}

// A loss noticed in a callback, by a request of its own: the loop and its timers go on.
TEST_F(CbusFailure, LossDuringAWaitInsideACallbackLeavesTheLoopRunning)
{
    static int result;
    result = 0;
    cbus_conn_set_rx_cb(
        conn,
        [](cbus_conn_t* c, const char*, void*, uint32_t) {
            void* out = nullptr;
            result = cbus_get_reply(c, cbus_send_request(c, "ask", nullptr, 0), &out);
            return 0;
        },
        nullptr, nullptr);
    bus.send(signalBytes("one"));
    shutdown(bus.fd(), SHUT_WR);
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(result, -1);
    expectClosedAndOffTheLoop();
}

TEST_F(CbusFailure, OnAClosedConnectionEverythingReturnsMinus1AndNumbersAreStillTaken)
{
    bus.close();
    EXPECT_EQ(turn(), 0);
    ASSERT_EQ(conn->fd, -1);
    // A new descriptor gets the closed one's number: it must not be touched.
    RawBus other;
    cbus_conn_t* second = other.connect();
    EXPECT_EQ(cbus_send_signal(conn, "a", nullptr, 0), -1);
    EXPECT_EQ(cbus_send_request(conn, "a", nullptr, 0), -1);
    EXPECT_EQ(cbus_send_reply(conn, nullptr, 0), -1);
    EXPECT_EQ(cbus_filter(conn, "a"), -1);
    EXPECT_EQ(cbus_provide(conn, "a"), -1);
    EXPECT_EQ(reply(), -1);
    EXPECT_EQ(conn->next_seqn, 4);
    EXPECT_EQ(other.takeAll(), "");
    EXPECT_EQ(syslogtap_count(), 0u);
    cbus_conn_destroy(second);
}

// --- Errors of the socket ---------------------------------------------------------------------------------

// A server that ends with something unread in its socket resets the connection.
TEST_F(CbusFailure, ReadErrorIsLoggedAndClosesTheConnection)
{
    const int cookie = cbus_send_request(conn, "ask", nullptr, 0);
    bus.close();
    EXPECT_EQ(reply(cookie), -1);
    const auto lines = syslogtap::lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].priority, LOG_ERR);
    EXPECT_THAT(lines[0].text, MatchesRegex("\\*\\*\\* IO error 104 \\(Connection reset by peer\\) in "
                                            "cbus_sock_impl at [0-9]+\n"));
    expectClosedAndOffTheLoop();
}

TEST_F(CbusFailure, ReadErrorOnTheLoopIsLoggedAndDropsTheEntry)
{
    cbus_send_signal(conn, "a", nullptr, 0);
    bus.close();
    EXPECT_EQ(turn(), 0);
    ASSERT_EQ(syslogtap_count(), 1u);
    EXPECT_THAT(syslogtap::lines()[0].text, HasSubstr("*** IO error 104 "));
    expectClosedAndOffTheLoop();
}

TEST_F(CbusFailure, WriteOnADeadSocketGives1WithoutALogAndTheConnectionStays)
{
    bus.close();
    EXPECT_EQ(cbus_send_signal(conn, "a", nullptr, 0), 1);
    EXPECT_EQ(cbus_send_request(conn, "a", nullptr, 0), -1); // not sent whole: nobody will answer
    EXPECT_GE(conn->fd, 0);
    EXPECT_EQ(syslogtap_count(), 0u);
    EXPECT_EQ(conn->next_seqn, 2);
    EXPECT_EQ(turn(), 0); // until a read sees it
    expectClosedAndOffTheLoop();
}

TEST_F(CbusFailure, WriteErrorOtherThanEpipeIsLogged)
{
    const int good = conn->fd;
    conn->fd = open("/dev/null", O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(cbus_send_signal(conn, "a", nullptr, 0), 1);
    const auto lines = syslogtap::lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].priority, LOG_ERR);
    EXPECT_THAT(lines[0].text,
                MatchesRegex("\\*\\*\\* IO error 9 \\(Bad file descriptor\\) in cbus_sock_impl at [0-9]+\n"));
    close(conn->fd);
    conn->fd = good;
}

// --- Full sockets -----------------------------------------------------------------------------------------

std::string pattern(size_t size)
{
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    return bytes;
}

// Neither side reads before it has written: only a sender that reads while it waits gets out of this.
TEST_F(CbusFailure, WithBothDirectionsFullTheSenderReadsAndQueuesWhileItWaits)
{
    const int messages = 200;
    const std::string mine = pattern(1500001);
    const std::string theirs = pattern(10000);
    std::string received;
    std::thread server([&] {
        for (int i = 0; i < messages; ++i)
            bus.send(signalBytes("number." + std::to_string(i), theirs));
        received = bus.take(12 + 4 + 1500004);
    });
    EXPECT_EQ(cbus_send_signal(conn, "big", mine.data(), static_cast<uint32_t>(mine.size())), 0);
    EXPECT_GT(conn->queue_count, 0u);
    EXPECT_THAT(seen, IsEmpty());
    server.join();
    EXPECT_EQ(received, frameBytes(CBUS_TYPE_SIGNAL, static_cast<uint8_t>(conn->fd), 0, "big", mine));
    while (seen.size() < static_cast<size_t>(messages) && turn() == 0) {
    }
    for (int i = 0; i < messages; ++i)
        ASSERT_EQ(seen[static_cast<size_t>(i)], "number." + std::to_string(i) + "=" + theirs);
    EXPECT_EQ(syslogtap_count(), 0u); // having to wait is no error
}

// As when somebody holds a key down while the database is stopped. What arrives is the first thread's to
// read.
TEST_F(CbusFailure, ASecondThreadThatWaitsForRoomReadsNothing)
{
    const int messages = 200;
    const std::string theirs = pattern(10000);
    const std::string mine = pattern(1000);
    const std::string expected = frameBytes(CBUS_TYPE_SIGNAL, static_cast<uint8_t>(conn->fd), 0, "key", mine);
    const size_t count = 3000; // more than any socket holds
    std::thread second([&] {
        for (size_t i = 0; i < count; ++i)
            EXPECT_EQ(cbus_send_signal(conn, "key", mine.data(), static_cast<uint32_t>(mine.size())), 0);
    });
    for (struct pollfd room = {conn->fd, POLLOUT, 0}; poll(&room, 1, 0) == 1;)
        std::this_thread::yield();
    std::thread server([&] {
        for (int i = 0; i < messages; ++i)
            bus.send(signalBytes("number." + std::to_string(i), theirs));
    });
    while (seen.size() < static_cast<size_t>(messages)) {
        ASSERT_EQ(turn(), 0);
        ASSERT_EQ(conn->queue_count, 0u);
    }
    server.join();
    std::string received = bus.take(count * expected.size());
    second.join();
    for (int i = 0; i < messages; ++i)
        ASSERT_EQ(seen[static_cast<size_t>(i)], "number." + std::to_string(i) + "=" + theirs);
    for (size_t i = 0; i < count; ++i) {
        std::string frame = received.substr(i * expected.size(), expected.size());
        memcpy(&frame[2], &expected[2], 2); // its number
        ASSERT_TRUE(frame == expected) << i;
    }
    EXPECT_EQ(syslogtap_count(), 0u);
}

// The keep-alive's signal comes every few seconds; a frame that waits for room must survive it.
TEST_F(CbusFailure, ASignalHandlerDoesNotCutAFrame)
{
    struct sigaction action = {}, old;
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, &old);
    const std::string mine = pattern(1500000);
    const pthread_t self = pthread_self();
    std::string received;
    std::thread server([&] {
        for (int i = 0; i < 5; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            pthread_kill(self, SIGUSR1);
        }
        received = bus.take(12 + 4 + 1500000);
    });
    EXPECT_EQ(cbus_send_signal(conn, "big", mine.data(), static_cast<uint32_t>(mine.size())), 0);
    server.join();
    sigaction(SIGUSR1, &old, nullptr);
    EXPECT_EQ(received, frameBytes(CBUS_TYPE_SIGNAL, static_cast<uint8_t>(conn->fd), 0, "big", mine));
    EXPECT_EQ(syslogtap_count(), 0u);
}

TEST_F(CbusFailure, ServerThatGoesWhileAFrameWaitsForRoomGives1)
{
    std::thread server([this] {
        struct pollfd entry = {bus.fd(), POLLIN, 0};
        poll(&entry, 1, PATIENCE_MS);
        bus.close();
    });
    const std::string mine = pattern(1500000);
    EXPECT_EQ(cbus_send_signal(conn, "big", mine.data(), static_cast<uint32_t>(mine.size())), 1);
    server.join();
    EXPECT_EQ(syslogtap_count(), 0u);
    EXPECT_GE(conn->fd, 0);
}

// The server has no more to say but still reads, late: its end of the stream must not be read for ever.
TEST_F(CbusFailure, EndOfTheOtherDirectionWhileAFrameWaitsForRoomGives1)
{
    shutdown(bus.fd(), SHUT_WR);
    const std::string mine = pattern(1500000);
    EXPECT_EQ(cbus_send_signal(conn, "big", mine.data(), static_cast<uint32_t>(mine.size())), 1);
    EXPECT_EQ(syslogtap_count(), 0u);
}

// --- Lengths ----------------------------------------------------------------------------------------------

TEST_F(CbusFailure, NameOf1024BytesIsRefusedAndLogged)
{
    const std::string longest(1022, 'n');
    EXPECT_EQ(cbus_send_signal(conn, longest.c_str(), nullptr, 0), 0);
    EXPECT_EQ(bus.takeAll().size(), 12u + 1024);
    const std::string longer(1023, 'n');
    EXPECT_EQ(cbus_send_signal(conn, longer.c_str(), nullptr, 0), -1);
    EXPECT_EQ(cbus_send_request(conn, longer.c_str(), "abc", 3), -1);
    EXPECT_EQ(cbus_send_signal(conn, std::string(70000, 'n').c_str(), nullptr, 0), -1); // more than 16 bits
    EXPECT_EQ(bus.takeAll(), "");
    EXPECT_EQ(conn->next_seqn, 4);
    ASSERT_EQ(syslogtap_count(), 3u);
    const std::string shown(64, 'n');
    EXPECT_EQ(syslogtap::lines()[1].text,
              "cbus: message \"" + shown + "\" refused: name of 1024 bytes, data of 3 bytes\n");
    EXPECT_EQ(syslogtap::lines()[1].priority, LOG_ERR);
}

TEST_F(CbusFailure, DataOf2MiBIsRefusedAndLogged)
{
    const std::string data(0x200000, 'd');
    EXPECT_EQ(cbus_send_signal(conn, "a%sb", data.data(), 0x200000), -1);
    EXPECT_EQ(cbus_send_reply(conn, data.data(), 0xffffffff), -1);
    EXPECT_EQ(cbus_send_signal(conn, "a", nullptr, 0x200000), 0); // no data, no length
    EXPECT_EQ(bus.takeAll().size(), 16u);
    EXPECT_EQ(
        syslogtap::count(LOG_ERR, "cbus: message \"a%sb\" refused: name of 5 bytes, data of 2097152 bytes\n"),
        1u);
    std::string received;
    std::thread server([&] { received = bus.take(12 + 4 + 0x200000); });
    EXPECT_EQ(cbus_send_signal(conn, "a", data.data(), 0x1fffff), 0);
    server.join();
    EXPECT_EQ(received.size(), 12u + 4 + 0x200000);
}

TEST_F(CbusFailure, LongestMessageIsDelivered)
{
    const std::string name(1022, 'n');
    const std::string data = pattern(0x1fffff);
    std::thread server([&] { bus.send(signalBytes(name, data)); });
    while (seen.empty())
        ASSERT_EQ(turn(), 0);
    server.join();
    EXPECT_THAT(seen, ElementsAre(name + "=" + data));
}

TEST_F(CbusFailure, NameWithoutItsNulGetsOneAndALogLine)
{
    bus.send(headerBytes(CBUS_TYPE_SIGNAL, 0, 0, 4, 4) + "abcdDATA");
    turn();
    EXPECT_THAT(seen, ElementsAre("abc=DATA"));
    EXPECT_EQ(syslogtap::count(LOG_ERR, "cbus: message name without its NUL, cut to \"abc\"\n"), 1u);
}

TEST_F(CbusFailure, MessageWithoutANameOrDataIsDeliveredWithAnEmptyName)
{
    bus.send(headerBytes(CBUS_TYPE_SIGNAL, 0, 0, 0, 0));
    turn();
    EXPECT_THAT(seen, ElementsAre("="));
}

TEST_F(CbusFailure, Of2000MessagesTheQueueTakes1999)
{
    std::string stream;
    for (int i = 0; i < 1999; ++i)
        stream += signalBytes("abc");
    bus.send(stream + replyBytes(0, ""));
    EXPECT_EQ(reply(), 0);
    EXPECT_EQ(conn->queue_count, 1999u);
    turn();
    EXPECT_EQ(seen.size(), 1999u);
}

// --- Panics -----------------------------------------------------------------------------------------------

class CbusDeathTest : public CbusFailure {
protected:
    void SetUp() override
    {
        CbusFailure::SetUp();
        syslogtap_echo(1);
    }
    void TearDown() override
    {
        syslogtap_echo(0);
        CbusFailure::TearDown();
    }
};

const char assertInSock[] = "<1> .*: \\*\\*\\* ASSERT in cbus_sock_impl at [0-9]+\n";
const char assertInClient[] = "<1> .*: \\*\\*\\* ASSERT in cbus_client at [0-9]+\n";

TEST_F(CbusDeathTest, NameOf1024BytesReceived)
{
    bus.send(headerBytes(CBUS_TYPE_SIGNAL, 0, 0, 1024, 0));
    EXPECT_EXIT(turn(), KilledBySignal(SIGABRT), assertInSock);
    EXPECT_EXIT(reply(), KilledBySignal(SIGABRT), assertInSock);
}

TEST_F(CbusDeathTest, DataOf2MiBReceived)
{
    bus.send(headerBytes(CBUS_TYPE_REPLY, 0, 0, 0, 0x200000));
    EXPECT_EXIT(turn(), KilledBySignal(SIGABRT), assertInSock);
    EXPECT_EXIT(reply(), KilledBySignal(SIGABRT), assertInSock);
}

TEST_F(CbusDeathTest, UnknownMessageType)
{
    bus.send(frameBytes(4, 0, 0, "odd%s", ""));
    EXPECT_EXIT(turn(), KilledBySignal(SIGABRT), "<1> .*: Invalid message type \\[odd%s\\] 4\n");
}

TEST_F(CbusDeathTest, MessageTypeZero)
{
    bus.send(headerBytes(0, 0, 0, 0, 0));
    EXPECT_EXIT(turn(), KilledBySignal(SIGABRT), "<1> .*: Invalid message type \\[\\] 0\n");
}

// During a wait anything but a reply is queued, so the type is looked at on delivery.
TEST_F(CbusDeathTest, UnknownMessageTypeInTheQueue)
{
    bus.send(frameBytes(255, 0, 0, "odd", "") + replyBytes(0, ""));
    EXPECT_EQ(reply(), 0);
    EXPECT_EXIT(turn(), KilledBySignal(SIGABRT), "<1> .*: Invalid message type \\[odd\\] 255\n");
    seen.clear();
    conn->queue_head->header.type = CBUS_TYPE_SIGNAL; // so that the fixture's own process gets rid of it
    turn();
}

TEST_F(CbusDeathTest, ForeignNumberInAReply)
{
    bus.send(replyBytes(65535, ""));
    EXPECT_EXIT(reply(3), KilledBySignal(SIGABRT), "<1> .*: Cookie mismatch \\(3/65535\\)\n");
}

TEST_F(CbusDeathTest, The2000thMessageInTheQueue)
{
    std::string stream;
    for (int i = 0; i < 2000; ++i)
        stream += signalBytes("abc");
    bus.send(stream + replyBytes(0, ""));
    EXPECT_EXIT(reply(), KilledBySignal(SIGABRT), assertInSock);
}

TEST_F(CbusDeathTest, NullContextFreedOrAnswered)
{
    EXPECT_EXIT(cbus_free_sender_ctx(nullptr), KilledBySignal(SIGABRT), assertInClient);
    EXPECT_EXIT(cbus_send_reply_to(conn, nullptr, 0, nullptr), KilledBySignal(SIGABRT),
                "<1> .*: \\*\\*\\* ASSERT in cbus at [0-9]+\n");
}

TEST_F(CbusDeathTest, NoMemoryForClientRecordOrConnection)
{
    for (int granted : {0, 1}) {
        EXPECT_EXIT(
            {
                NoMemory none(granted);
                cbus_conn_create(nullptr, "client");
            },
            KilledBySignal(SIGABRT), assertInClient);
    }
}

TEST_F(CbusDeathTest, NoMemoryForANameTable)
{
    for (int granted : {0, 1}) { // the rows, the name
        EXPECT_EXIT(
            {
                NoMemory none(granted);
                cbus_client_signal_cb_add(conn, "a", nullptr, nullptr);
            },
            KilledBySignal(SIGABRT), assertInClient);
    }
}

TEST_F(CbusDeathTest, NoMemoryForAContext)
{
    for (int granted : {0, 1}) {
        EXPECT_EXIT(
            {
                NoMemory none(granted);
                cbus_store_sender_ctx(conn);
            },
            KilledBySignal(SIGABRT), assertInClient);
    }
}

TEST_F(CbusDeathTest, NoMemoryForAMessageBuffer)
{
    bus.send(replyBytes(0, "r"));
    EXPECT_EXIT(
        {
            NoMemory none;
            reply();
        },
        KilledBySignal(SIGABRT), assertInSock);
}

TEST_F(CbusDeathTest, NoMemoryForAQueueNode)
{
    bus.send(signalBytes("a"));
    EXPECT_EXIT(
        {
            NoMemory none(1); // the message itself
            reply();
        },
        KilledBySignal(SIGABRT), assertInSock);
}

} // namespace
