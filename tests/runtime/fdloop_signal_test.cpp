// Signals through the loop: one callback for a signal, one for each dead child.
#include "runtime/fdloop.h"
#include "runtime/fdloop_impl.h"
#include "support/keptloop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct Call {
    int fd, signo, pid, status;
};

std::vector<Call> calls;

void noteCall(int fd, int signo, int pid, int status)
{
    calls.push_back({fd, signo, pid, status});
}

bool isBlocked(int signo)
{
    sigset_t mask;
    sigprocmask(SIG_SETMASK, nullptr, &mask);
    return sigismember(&mask, signo) == 1;
}

class FdloopSignal : public testing::Test {
protected:
    fdloop_t* loop = keptLoop();
    void SetUp() override { calls.clear(); }
};

TEST_F(FdloopSignal, SignalIsBlockedAndCallsBackWithTheSendersPid)
{
    int fd = fdloop_register_signal(loop, noteCall, SIGUSR1);
    ASSERT_GE(fd, 0);
    EXPECT_TRUE(isBlocked(SIGUSR1));
    EXPECT_EQ(fcntl(fd, F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(loop->entry_count, 1);

    kill(getpid(), SIGUSR1);
    EXPECT_EQ(fdloop_run(loop), 0);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].fd, fd);
    EXPECT_EQ(calls[0].signo, SIGUSR1);
    EXPECT_EQ(calls[0].pid, getpid());
    EXPECT_EQ(calls[0].status, 0);
    EXPECT_EQ(loop->entry_count, 1); // stays

    EXPECT_EQ(fdloop_unregister_signal(loop, fd, SIGUSR1), 0);
    EXPECT_FALSE(isBlocked(SIGUSR1));
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_EQ(fcntl(fd, F_GETFD), -1);
    EXPECT_EQ(errno, EBADF);
}

TEST_F(FdloopSignal, EachSignalHasADescriptorOfItsOwn)
{
    int one = fdloop_register_signal(loop, noteCall, SIGUSR1);
    int two = fdloop_register_signal(loop, noteCall, SIGUSR2);
    kill(getpid(), SIGUSR2);
    EXPECT_EQ(fdloop_run(loop), 0);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].fd, two);
    EXPECT_EQ(calls[0].signo, SIGUSR2);
    fdloop_unregister_signal(loop, two, SIGUSR2);
    EXPECT_TRUE(isBlocked(SIGUSR1));
    fdloop_unregister_signal(loop, one, SIGUSR1);
}

TEST_F(FdloopSignal, ThreeDeadChildrenMakeThreeCallsOutOfOneRead)
{
    int fd = fdloop_register_signal(loop, noteCall, SIGCHLD);
    ASSERT_GE(fd, 0);
    std::map<int, int> expected;
    for (int status : {0, 3, 255}) {
        pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            _exit(status);
        }
        expected[child] = status;
    }
    for (const auto& child : expected) {
        siginfo_t info; // dead, and left to be reaped by the loop
        ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child.first), &info, WEXITED | WNOWAIT), 0);
    }
    EXPECT_EQ(fdloop_run(loop), 0);
    std::map<int, int> seen;
    for (const Call& call : calls) {
        EXPECT_EQ(call.fd, fd);
        EXPECT_EQ(call.signo, 17);
        seen[call.pid] = call.status;
    }
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(calls.size(), 3u);
    EXPECT_EQ(fdloop_unregister_signal(loop, fd, SIGCHLD), 0);
}

TEST_F(FdloopSignal, ChildEndedByASignalHasStatus0)
{
    int fd = fdloop_register_signal(loop, noteCall, SIGCHLD);
    pid_t child = fork();
    if (child == 0) {
        pause();
        _exit(1);
    }
    kill(child, SIGKILL);
    EXPECT_EQ(fdloop_run(loop), 0);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].pid, child);
    EXPECT_EQ(calls[0].status, 0); // the second byte of the wait status
    fdloop_unregister_signal(loop, fd, SIGCHLD);
}

TEST_F(FdloopSignal, ShortReadIsIgnored)
{
    int fd = fdloop_register_signal(loop, noteCall, SIGUSR1);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "short", 5), 5);
    // The handler finds five bytes of a pipe behind its descriptor.
    int saved = dup(fd);
    dup2(ends[0], fd);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(loop->entry_count, 1);
    dup2(saved, fd);
    kill(getpid(), SIGUSR1);
    EXPECT_EQ(fdloop_run(loop), 0);
    EXPECT_EQ(calls.size(), 1u);
    fdloop_unregister_signal(loop, fd, SIGUSR1);
    for (int other : {saved, ends[0], ends[1]}) {
        close(other);
    }
}

TEST_F(FdloopSignal, WithoutADescriptorTheResultIsNegativeAndNothingIsRegistered)
{
    fdloop_t* const own = loop; // no look at an object in between: the sanitizer wants a descriptor for that
    std::vector<int> taken;
    int fd;
    while ((fd = dup(STDERR_FILENO)) >= 0) {
        taken.push_back(fd);
    }
    int result = fdloop_register_signal(own, noteCall, SIGUSR1);
    for (int other : taken) {
        close(other);
    }
    EXPECT_LT(result, 0);
    EXPECT_EQ(loop->entry_count, 0);
    EXPECT_EQ(fdloop_unregister_signal(loop, -1, SIGUSR1), 0); // unblocks
    EXPECT_FALSE(isBlocked(SIGUSR1));
}

} // namespace
