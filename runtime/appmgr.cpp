// Keep-alive towards the application manager. The stamp is written by the loop's thread and read in the
// signal handler on any thread: one aligned word, no lock.
#include "runtime/appmgr.h"

#include "runtime/fdloop.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_posix_reset.h"
#include "runtime/vx_time.h"

#include <atomic>
#include <errno.h>
#include <limits.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

struct appmgr_alive_t {
    std::atomic<uint32_t> stamp;     // ms, on the clock of vx_time_ms
    std::atomic<uint32_t> dead_time; // ms
};

namespace {

enum { SLOTS = 1, EXIT_ARGUMENTS = 63, EXIT_NO_PROGRAM = 127 };

const uint32_t DEAD_TIME_DEFAULT = 3000; // ms
const uint32_t STAMP_INTERVAL = 20000;   // ms, of the timer that stamps

const char* const SLOT_NAMES[SLOTS] = {"main"};

pid_t manager = 0;
bool signal_called = false;
appmgr_alive_t slots[SLOTS];
std::atomic<int> slots_used(0);

void answer_manager(int)
{
    int saved = errno;
    if (appmgr_alive_check() < 0) {
        appmgr_run_exit_command(getenv("APPMGR_CLIENT_EXIT_CMD"));
        vx_panic("Local alive failed\n");
    }
    kill(manager, SIGUSR2);
    errno = saved;
}

int stamp_slot(void* data)
{
    appmgr_alive_signal(static_cast<appmgr_alive_t*>(data));
    return 1;
}

// fork for a signal handler. Plain fork takes the allocator's locks, and the interrupted code may hold them.
pid_t fork_in_handler()
{
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 34)
    return _Fork();
#else
    return fork();
#endif
}

} // namespace

void appmgr_signal(void)
{
    const char* text = getenv("APPMGR_PID");
    if (!text) {
        return;
    }
    // Where a long has 32 bits, what is too large comes back as the largest pid that there can be.
    errno = 0;
    long pid = strtol(text, nullptr, 10);
    if (pid < 1 || pid > INT_MAX || errno == ERANGE) {
        exit(2);
    }
    if (signal_called) {
        vx_slog(LOG_ERR, "appmgr_signal called more than one time.\n");
        return;
    }
    signal_called = true;
    manager = static_cast<pid_t>(pid);
    vx_set_sig_handler(SIGUSR2, answer_manager);
    kill(manager, SIGUSR2);
}

appmgr_alive_t* appmgr_alive_alloc(void)
{
    int index = slots_used.load();
    if (index >= SLOTS) {
        return nullptr;
    }
    appmgr_alive_t* slot = &slots[index];
    appmgr_set_dead_time(slot, 0);
    slots_used.store(index + 1); // last: from here on the handler looks at it
    return slot;
}

void appmgr_set_dead_time(appmgr_alive_t* slot, uint32_t milliseconds)
{
    slot->dead_time.store(milliseconds ? milliseconds : DEAD_TIME_DEFAULT);
    appmgr_alive_signal(slot);
}

void appmgr_alive_signal(appmgr_alive_t* slot)
{
    slot->stamp.store(vx_time_ms());
}

int appmgr_alive_check(void)
{
    int used = slots_used.load();
    for (int index = 0; index < used; ++index) {
        uint32_t age = vx_time_ms_elapsed(slots[index].stamp.load());
        if (age > slots[index].dead_time.load() + STAMP_INTERVAL) {
            vx_slog(LOG_ERR, "Thread (%s) seems to be dead\n", SLOT_NAMES[index]);
            return -1;
        }
    }
    return used > 0 ? 1 : 0;
}

void appmgr_alive_fdloop_register(fdloop_t* loop)
{
    int failure = 0;
    appmgr_alive_t* slot = appmgr_alive_alloc();
    if (!slot) {
        failure = -1;
    } else if (!fdloop_timer_add(loop, STAMP_INTERVAL, stamp_slot, slot)) {
        failure = -2;
    }
    if (failure != 0) {
        vx_panic("alive_fdloop_timer_register failed (%d)", failure);
    }
}

int appmgr_split_command(char* text, char** fields, int max)
{
    int count = 0;
    while (count < max) {
        while (*text == ' ') {
            ++text;
        }
        if (!*text) {
            break;
        }
        char end = ' ';
        if (*text == '"' || *text == '\'') {
            end = *text++;
        }
        fields[count++] = text;
        while (*text && *text != end) {
            ++text;
        }
        if (*text) {
            *text++ = '\0';
        }
    }
    fields[count] = nullptr;
    return count;
}

void appmgr_run_exit_command(char* text)
{
    if (!text) {
        return;
    }
    pid_t child = fork_in_handler();
    if (child == 0) {
        char* fields[EXIT_ARGUMENTS + 1];
        char* no_environment[] = {nullptr};
        VX_ASSERT(appmgr_split_command(text, fields, EXIT_ARGUMENTS) > 0);
        execve(fields[0], fields, no_environment);
        _exit(EXIT_NO_PROGRAM);
    }
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}
