// The system log, standard output, the console and the dumps.
#include "runtime/vx_log.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/outputcapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <syslog.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<syslogtap::Line> logged(void (*function)())
{
    syslogtap_start();
    function();
    syslogtap_stop();
    return syslogtap::lines();
}

TEST(VxSlog, PriorityAndTextGoToTheSystemLog)
{
    auto lines = logged([] { vx_slog(LOG_WARNING, "%s=%d\n", "key", 5); });
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].priority, LOG_WARNING);
    EXPECT_EQ(lines[0].text, "key=5\n");
    EXPECT_EQ(lines[0].ident, "vx_log_test"); // the program's name before the log is opened
    EXPECT_EQ(lines[0].facility, LOG_USER);
}

TEST(VxSlog, DebugIsPriority7)
{
    auto lines = logged([] { vx_slogd("debug"); });
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].priority, 7);
}

TEST(VxSlog, ErrnoIsReadableInTheText)
{
    auto lines = logged([] {
        errno = ENOENT;
        vx_slog(LOG_ERR, "%m");
    });
    EXPECT_EQ(lines.at(0).text, "No such file or directory");
}

TEST(VxSlog, LongTextsAreWhole)
{
    auto lines = logged([] { vx_slog(LOG_ERR, "%s", std::string(10000, 'x').c_str()); });
    EXPECT_EQ(lines.at(0).text, std::string(10000, 'x'));
}

TEST(VxSlog, OpenSetsIdentityAndFacilityCloseTakesTheIdentityBack)
{
    auto lines = logged([] {
        vx_slog_open("gui", LOG_PID, LOG_LOCAL3);
        vx_slog(LOG_INFO, "open");
        vx_slog(LOG_INFO | LOG_DAEMON, "other facility");
        vx_slog_close();
        vx_slog(LOG_INFO, "closed");
        vx_slog_open(nullptr, 0, LOG_USER);
    });
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].ident, "gui");
    EXPECT_EQ(lines[0].facility, LOG_LOCAL3);
    EXPECT_EQ(lines[1].facility, LOG_DAEMON);
    EXPECT_EQ(lines[1].priority, LOG_INFO);
    EXPECT_EQ(lines[2].ident, "vx_log_test");
}

TEST(VxSlog, NamesOfThePriorities)
{
    EXPECT_THAT(std::vector<std::string>(vx_slog_prio_txt, vx_slog_prio_txt + 8),
                ElementsAre("EMERG", "ALERT", "CRIT", "ERROR", "WARNING", "NOTICE", "INFO", "DEBUG"));
}

// The tap's two other outlets, as the preloaded library uses them.
TEST(SyslogTap, AppendsLinesToAFile)
{
    std::string path = testing::TempDir() + "syslogtap." + std::to_string(getpid());
    setenv("SYSLOGTAP_FILE", path.c_str(), 1);
    vx_slog_open("gui", 0, LOG_LOCAL0);
    vx_slog(LOG_NOTICE, "two\nlines\n");
    vx_slog(LOG_DEBUG, "%s", "");
    vx_slog_open(nullptr, 0, LOG_USER);
    unsetenv("SYSLOGTAP_FILE");
    vx_slog(LOG_DEBUG, "nowhere");
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    std::string pid = std::to_string(getpid());
    EXPECT_EQ(text.str(), "<16.5> gui[" + pid + "]: two\\nlines\\n\n<16.7> gui[" + pid + "]: \n");
    unlink(path.c_str());
}

TEST(SyslogTap, SendsLinesToASocket)
{
    std::string path = testing::TempDir() + "syslogtap.socket." + std::to_string(getpid());
    struct sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    strcpy(address.sun_path, path.c_str());
    int fd = socket(AF_UNIX, SOCK_DGRAM, 0);
    ASSERT_EQ(bind(fd, reinterpret_cast<struct sockaddr*>(&address), sizeof(address)), 0);
    setenv("SYSLOGTAP_SOCKET", path.c_str(), 1);
    vx_slog(LOG_ERR, "line");
    unsetenv("SYSLOGTAP_SOCKET");
    char text[100];
    ssize_t length = recv(fd, text, sizeof(text), MSG_DONTWAIT);
    EXPECT_EQ(std::string(text, static_cast<size_t>(length > 0 ? length : 0)),
              "<1.3> vx_log_test[" + std::to_string(getpid()) + "]: line");
    close(fd);
    unlink(path.c_str());
}

TEST(SyslogTap, KeepsErrnoAndTheMask)
{
    auto lines = logged([] {
        errno = EXDEV;
        vx_slog(LOG_ERR, "one");
        EXPECT_EQ(errno, EXDEV);
        int before = setlogmask(LOG_UPTO(LOG_ERR));
        vx_slog(LOG_DEBUG, "masked");
        EXPECT_EQ(errno, EXDEV);
        setlogmask(before);
        vx_slog(LOG_DEBUG, "two");
    });
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1].text, "two");
}

TEST(SyslogTap, TakesLinesFromManyThreads)
{
    auto lines = logged([] {
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([] {
                for (int line = 0; line < 100; ++line) {
                    vx_slog(LOG_INFO, "%d", line);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    EXPECT_EQ(lines.size(), 400u);
}

TEST(VxPrintf, IsFlushedAfterEachCall)
{
    OutputCapture output;
    EXPECT_EQ(vx_printf("%d-%s", 1, "a"), 3);
    EXPECT_EQ(output.text(), "1-a");
    EXPECT_GE(vx_puts("text"), 0);
    EXPECT_EQ(output.text(), "1-atext"); // no line feed added
}

TEST(VxConsole, PutsReturnsTheNumberOfBytes)
{
    OutputCapture output;
    EXPECT_EQ(vx_console_puts("hello\n"), 6);
    EXPECT_EQ(vx_console_puts(""), 0);
    EXPECT_EQ(output.stop(), "hello\n");
}

TEST(VxConsole, PrintfOf79CharactersIsWhole)
{
    std::string text(79, 'a');
    OutputCapture output;
    EXPECT_EQ(vx_console_printf("%s", text.c_str()), 79);
    EXPECT_EQ(output.stop(), text);
}

TEST(VxConsole, PrintfOfALongerTextPrintsTheFirst79Characters)
{
    std::string text = std::string(79, 'a') + "bcd";
    OutputCapture output;
    EXPECT_EQ(vx_console_printf("%s", text.c_str()), 79);
    EXPECT_EQ(output.stop(), std::string(79, 'a'));
}

// Runs the function while descriptor 1 is the end of a pipe with little room, signals come, and a thread
// reads.
TEST(VxConsole, PutsGoesOnAfterShortWritesAndInterruptions)
{
    struct sigaction action = {}, before;
    action.sa_handler = [](int) {}; // without SA_RESTART: write fails with EINTR or is cut short
    sigaction(SIGALRM, &action, &before);
    sigset_t alarms;
    sigemptyset(&alarms);
    sigaddset(&alarms, SIGALRM);

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_GT(fcntl(ends[1], F_SETPIPE_SZ, 4096), 0);
    std::string text;
    for (int line = 0; text.size() < 100000; ++line) {
        text += std::to_string(line) + "\n";
    }
    std::string received;
    pthread_sigmask(SIG_BLOCK, &alarms, nullptr); // the reader inherits it: the signals meet the writer
    std::thread reader([&] {
        char block[1500];
        ssize_t count;
        while (received.size() < text.size() && (count = read(ends[0], block, sizeof(block))) > 0) {
            received.append(block, static_cast<size_t>(count));
            usleep(200);
        }
    });
    pthread_sigmask(SIG_UNBLOCK, &alarms, nullptr);
    int saved = dup(STDOUT_FILENO);
    fflush(stdout);
    dup2(ends[1], STDOUT_FILENO);
    struct itimerval often = {{0, 700}, {0, 700}};
    setitimer(ITIMER_REAL, &often, nullptr);
    int written = vx_console_puts(text.c_str());
    struct itimerval never = {{0, 0}, {0, 0}};
    setitimer(ITIMER_REAL, &never, nullptr);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    reader.join();
    sigaction(SIGALRM, &before, nullptr);
    close(ends[0]);
    close(ends[1]);
    EXPECT_EQ(written, static_cast<int>(text.size()));
    EXPECT_EQ(received, text);
}

TEST(VxConsole, FailedWriteGivesWhatWasWritten)
{
    fflush(stdout);
    int saved = dup(STDOUT_FILENO);
    int readonly = open("/dev/null", O_RDONLY);
    dup2(readonly, STDOUT_FILENO);
    int written = vx_console_puts("text");
    dup2(saved, STDOUT_FILENO);
    close(saved);
    close(readonly);
    EXPECT_EQ(written, 0);
}

const uint8_t BYTES[] = {0x00, 0x01, 0x41, 0x42, 0x7e, 0x7f, 0x20, 0x1f, 0x80, 0xff,
                         0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x30, 0x31, 0x32};

TEST(VxDisplay, Bytes)
{
    OutputCapture output;
    vx_data_display('b', BYTES, sizeof(BYTES), 0x1f0);
    EXPECT_EQ(output.stop(), "000001f0: 00 01 41 42 7e 7f 20 1f 80 ff 61 62 63 64 65 66  ..AB~. ...abcdef\n"
                             "00000200: 30 31 32                                         012\n");
}

// Units are in host byte order; these texts are those of a little-endian machine, as the terminal is.
TEST(VxDisplay, HalfWords)
{
    OutputCapture output;
    vx_data_display('h', BYTES, 18, 0);
    EXPECT_EQ(output.stop(), "00000000: 0100 4241 7f7e 1f20 ff80 6261 6463 6665  ..AB~. ...abcdef\n"
                             "00000010: 3130                                     01\n");
}

TEST(VxDisplay, WordsAndTheMissingBytesOfTheLastOneAreZero)
{
    OutputCapture output;
    vx_data_display('w', BYTES, sizeof(BYTES), 0);
    EXPECT_EQ(output.stop(), "00000000: 42410100 1f207f7e 6261ff80 66656463  ..AB~. ...abcdef\n"
                             "00000010: 00323130                             012\n");
}

TEST(VxDisplay, NothingPrintsNothing)
{
    OutputCapture output;
    vx_data_display('b', BYTES, 0, 0);
    EXPECT_EQ(output.stop(), "");
}

TEST(VxDisplay, MemoryIsLabelledByItsAddress)
{
    OutputCapture output;
    vx_mem_display('b', BYTES, 1);
    char label[16];
    snprintf(label, sizeof(label), "%08x: 00 ", static_cast<uint32_t>(reinterpret_cast<uintptr_t>(BYTES)));
    EXPECT_EQ(output.stop().substr(0, 13), label);
}

} // namespace
