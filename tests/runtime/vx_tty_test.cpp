// Raw mode, on a pseudo terminal.
#include "runtime/vx_tty.h"

#include "support/patience.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

class VxTty : public testing::Test {
protected:
    int master = -1;
    int terminal = -1;
    struct termios before = {};

    void SetUp() override
    {
        master = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_GE(master, 0);
        ASSERT_EQ(grantpt(master), 0);
        ASSERT_EQ(unlockpt(master), 0);
        terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
        ASSERT_GE(terminal, 0);
        ASSERT_EQ(tcgetattr(terminal, &before), 0);
        before.c_iflag |= INPCK | ISTRIP | IXON | ICRNL;
        before.c_cflag = (before.c_cflag & ~static_cast<tcflag_t>(CSIZE)) | CS7 | PARENB;
        before.c_lflag |= ICANON | ECHO | IEXTEN | ISIG;
        before.c_cc[VMIN] = 9;
        before.c_cc[VTIME] = 9;
        ASSERT_EQ(tcsetattr(terminal, TCSANOW, &before), 0);
        ASSERT_EQ(tcgetattr(terminal, &before), 0); // what the driver took
    }
    void TearDown() override
    {
        close(terminal);
        close(master);
    }
    struct termios settings()
    {
        struct termios now = {};
        EXPECT_EQ(tcgetattr(terminal, &now), 0);
        return now;
    }
};

TEST_F(VxTty, RawSetsWhatTheShellNeedsAndNothingElse)
{
    struct termios saved = {};
    ASSERT_EQ(vx_posix_tty_raw(terminal, &saved), 0);
    EXPECT_EQ(saved.c_lflag, before.c_lflag);
    EXPECT_EQ(saved.c_cc[VMIN], 9);
    struct termios now = settings();
    EXPECT_EQ(now.c_iflag, before.c_iflag & ~static_cast<tcflag_t>(INPCK | ISTRIP | IXON));
    EXPECT_EQ(now.c_oflag, before.c_oflag);
    EXPECT_EQ(now.c_cflag & (CSIZE | PARENB), static_cast<tcflag_t>(CS8));
    EXPECT_EQ(now.c_lflag, before.c_lflag & ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN));
    EXPECT_NE(now.c_lflag & ISIG, 0u);
    EXPECT_EQ(now.c_cc[VMIN], 1);
    EXPECT_EQ(now.c_cc[VTIME], 0);
}

TEST_F(VxTty, SetPutsTheSettingsBack)
{
    struct termios saved = {};
    ASSERT_EQ(vx_posix_tty_raw(terminal, &saved), 0);
    ASSERT_EQ(vx_posix_tty_set(terminal, &saved), 0);
    struct termios now = settings();
    EXPECT_EQ(now.c_iflag, before.c_iflag);
    EXPECT_EQ(now.c_cflag, before.c_cflag);
    EXPECT_EQ(now.c_lflag, before.c_lflag);
    EXPECT_EQ(now.c_cc[VMIN], before.c_cc[VMIN]);
}

TEST_F(VxTty, SavedMayBeNull)
{
    EXPECT_EQ(vx_posix_tty_raw(terminal, nullptr), 0);
    EXPECT_EQ(settings().c_lflag & ICANON, 0u);
}

TEST_F(VxTty, RawDropsUnreadInput)
{
    ASSERT_EQ(vx_posix_tty_raw(terminal, nullptr), 0);
    ASSERT_EQ(write(master, "typed", 5), 5);
    struct pollfd arrived = {terminal, POLLIN, 0}; // the kernel hands it over in its own time
    ASSERT_EQ(poll(&arrived, 1, PATIENCE_MS), 1);
    ASSERT_EQ(vx_posix_tty_raw(terminal, nullptr), 0);
    fcntl(terminal, F_SETFL, O_NONBLOCK);
    char byte;
    EXPECT_EQ(read(terminal, &byte, 1), -1);
    EXPECT_EQ(errno, EAGAIN);
}

TEST_F(VxTty, WhatIsNoTerminalFails)
{
    int null = open("/dev/null", O_RDWR);
    EXPECT_EQ(vx_posix_tty_raw(null, nullptr), -1);
    EXPECT_EQ(vx_posix_tty_set(null, &before), -1);
    close(null);
}

} // namespace
