// The socket part of the bus client where the system calls under it are interrupted or fail, and the checks
// that it makes of what it delivers.
#include "runtime/cbus_sock_impl.h"

#include "runtime/vx_time.h"
#include "support/busfixture.h"
#include "support/outputcapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pthread.h>
#include <stdio_ext.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>

namespace {

using testing::IsEmpty;
using testing::KilledBySignal;
using testing::MatchesRegex;

class CbusSock : public Cbus {};

// With no descriptor allowed, poll refuses to wait for one.
class NoPoll {
public:
    NoPoll()
    {
        getrlimit(RLIMIT_NOFILE, &before);
        struct rlimit none = before;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoPoll() { setrlimit(RLIMIT_NOFILE, &before); }
    NoPoll(const NoPoll&) = delete;
    NoPoll& operator=(const NoPoll&) = delete;

private:
    struct rlimit before;
};

const char pollFailed[] = "\\*\\*\\* IO error 22 \\(Invalid argument\\) in cbus_sock_impl at [0-9]+\n";

std::string onlyLine()
{
    const std::vector<syslogtap::Line> lines = syslogtap::lines();
    return lines.size() == 1 ? lines[0].text : std::to_string(lines.size()) + " lines";
}

TEST_F(CbusSock, AWaitThatFailsEndsTheReadAndIsLogged)
{
    void* out = nullptr;
    int result;
    cbus_conn_t* const waiting = conn; // the sanitizer's look at a fixture takes descriptors, too
    {
        NoPoll none;
        result = cbus_get_reply(waiting, 0, &out);
    }
    EXPECT_EQ(result, -1);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(conn->fd, -1);
    EXPECT_THAT(onlyLine(), MatchesRegex(pollFailed));
}

TEST_F(CbusSock, AWaitThatFailsEndsTheSendAndIsLogged)
{
    const std::string more(CBUS_DATA_LIMIT - 1, 'x'); // than any socket holds
    int result;
    cbus_conn_t* const sending = conn;
    {
        NoPoll none;
        result = cbus_send_signal(sending, "much", more.data(), static_cast<uint32_t>(more.size()));
    }
    EXPECT_EQ(result, 1);
    EXPECT_GE(conn->fd, 0); // stays as it is until a read sees the failure
    EXPECT_THAT(onlyLine(), MatchesRegex(pollFailed));
}

// The reader is given any descriptor, and on a blocking one it is the read itself that is interrupted.
TEST_F(CbusSock, AReadThatAHandlerInterruptsGoesOn)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    struct sigaction action = {}, old;
    action.sa_handler = [](int) {}; // without SA_RESTART
    sigaction(SIGUSR1, &action, &old);
    const pthread_t reader = pthread_self();
    std::thread writer([&] {
        const std::string frame = signalBytes("hello", "value");
        for (char byte : frame) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            pthread_kill(reader, SIGUSR1);
            EXPECT_EQ(send(ends[1], &byte, 1, 0), 1);
        }
    });
    cbus_header_t header;
    int count = 0;
    uint8_t* body = cbus_impl_msg_read(ends[0], &header, &count);
    writer.join();
    sigaction(SIGUSR1, &old, nullptr);
    close(ends[0]);
    close(ends[1]);
    ASSERT_NE(body, nullptr);
    EXPECT_EQ(count, 12 + 8 + 8);
    EXPECT_STREQ(reinterpret_cast<char*>(body), "hello");
    EXPECT_EQ(memcmp(body + 8, "value", 5), 0);
    free(body);
    EXPECT_EQ(syslogtap_count(), 0u);
}

// The kept quirk: after a message, too, an errno of EPIPE counts as the end of the connection. Only the trace
// can leave one there, where nobody reads it any more.
TEST_F(CbusSock, BrokenPipeUnderTheTraceClosesTheConnection)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[1]);

    bus.send(signalBytes("hello", "value"));
    cbus_debug = true;
    const int result = turn();
    cbus_debug = false;

    __fpurge(stdout);
    clearerr(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    EXPECT_EQ(result, 0);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_EQ(conn->fd, -1);
    EXPECT_EQ(syslogtap_count(), 0u);
}

TEST_F(CbusSock, ShowMessageOfATimeThatHasNoCalendarHasNoClock)
{
    if (sizeof(time_t) < 8 || sizeof(long) < 8)
        GTEST_SKIP() << "each number of this size is a time";
    void (*const real)(vx_clock_value*) = vx_wall_clock;
    vx_wall_clock = [](vx_clock_value* now) { *now = {LONG_MAX, 7000}; };
    OutputCapture capture;
    cbus_show_message(conn, "tag", "name", nullptr, 0);
    vx_wall_clock = real;
    EXPECT_EQ(capture.stop(), ".000007  0 tag: name=\"name\", data size=0\n");
}

// --- What is checked on delivery --------------------------------------------------------------------------

using CbusSockDeathTest = CbusSock;

const char assertInSock[] = "<1> .*: \\*\\*\\* ASSERT in cbus_sock_impl at [0-9]+\n";

// Delivers a message that no reader has checked.
void deliver(cbus_conn_t* conn, uint16_t nlen, uint32_t dlen, size_t shift)
{
    syslogtap_echo(1);
    const cbus_header_t header = {CBUS_TYPE_SIGNAL, 0, 0, 0, nlen, dlen};
    uint8_t* area = static_cast<uint8_t*>(calloc(1, CBUS_NAME_LIMIT + 8));
    cbus_impl_queue_add(conn, &header, area + shift, 12);
    fdloop_run(conn->client->loop);
}

TEST_F(CbusSockDeathTest, DataThatIsNotAligned)
{
    EXPECT_EXIT(deliver(conn, 4, 0, 1), KilledBySignal(SIGABRT), assertInSock);
}

TEST_F(CbusSockDeathTest, LimitsAreCheckedAgainOnDelivery)
{
    EXPECT_EXIT(deliver(conn, CBUS_NAME_LIMIT, 0, 0), KilledBySignal(SIGABRT), assertInSock);
    EXPECT_EXIT(deliver(conn, 4, CBUS_DATA_LIMIT, 0), KilledBySignal(SIGABRT), assertInSock);
}

} // namespace
