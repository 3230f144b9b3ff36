// Preloaded into a test that runs under qemu-user: whatever that test starts for the same foreign machine is
// started under qemu as well, as the kernel itself could not. Programs of the machine at hand start as they
// are, and without what was preloaded, which they could not load.
//
// Between fork and exec: allocates nothing but stack, locks nothing. Programs found by name along PATH are
// taken, and `env` is done here; the execl family is not, nor is posix_spawn.
//
// Qt starts a process with a file descriptor for it where the kernel can do that. The emulator lets the
// question through and then refuses the deed, upon which QProcess takes a number that was never set for the
// child's, and may later kill it, which with -1 is everybody. So here the answer to the question is no, and
// no process may be killed that is not named.
//
// And abort() is silent: of a process that a signal ends, the emulator tells on standard error, where tests
// look for the process's own last words.
#include <alloca.h>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

const size_t FIRST_ARGUMENTS = 6; // those that stand before the program's own
const char PRELOAD[] = "LD_PRELOAD=";
const char EMULATED_ENVIRONMENT[] = "QEMU_SET_ENV=";

// An ELF file for 32-bit ARM.
bool isForeign(const char* path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    unsigned char head[20] = {};
    const ssize_t size = read(file, head, sizeof(head));
    close(file);
    const unsigned char elf32[] = {0x7f, 'E', 'L', 'F', 1};
    const unsigned machine = head[18] | unsigned(head[19]) << 8;
    const unsigned arm = 40;
    return size == ssize_t(sizeof(head)) && std::memcmp(head, elf32, sizeof(elf32)) == 0 && machine == arm;
}

size_t countOf(char* const list[])
{
    size_t count = 0;
    while (list[count]) {
        ++count;
    }
    return count;
}

bool hasName(const char* variable, const char* name)
{
    return std::strncmp(variable, name, std::strlen(name)) == 0;
}

// Copies the environment without what is preloaded; returns what that was, this library if nothing.
const char* copyWithoutPreload(char* const from[], char** to)
{
    const char* preloaded = THIS_LIBRARY;
    for (; *from; ++from) {
        if (hasName(*from, PRELOAD)) {
            preloaded = *from + std::strlen(PRELOAD);
        } else if (!hasName(*from, EMULATED_ENVIRONMENT)) {
            *to++ = *from;
        }
    }
    *to = nullptr;
    return preloaded;
}

// The C library's own: the one below takes its name.
long realSyscall(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0, long f = 0)
{
    typedef long (*Function)(long, ...);
    static const Function function = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "syscall"));
    return function(number, a, b, c, d, e, f);
}
const bool looked_up = realSyscall(SYS_getpid) > 0; // before anybody forks

long word(const void* pointer)
{
    return reinterpret_cast<long>(pointer);
}

int run(const char* path, char* const arguments[], char* const environment[])
{
    return int(realSyscall(SYS_execve, word(path), word(arguments), word(environment)));
}

int runEmulated(const char* path, char* const arguments[], char** environment, const char* preloaded)
{
    const size_t own = countOf(arguments);
    char** all = static_cast<char**>(alloca((FIRST_ARGUMENTS + own + 1) * sizeof(char*)));
    const char* const first[FIRST_ARGUMENTS] = {EMULATOR, "-L", SYSROOT, "-0", own ? arguments[0] : path,
                                                path};
    for (size_t i = 0; i < FIRST_ARGUMENTS; ++i) {
        all[i] = const_cast<char*>(first[i]);
    }
    size_t count = FIRST_ARGUMENTS;
    for (size_t i = 1; i < own; ++i) {
        all[count++] = arguments[i];
    }
    all[count] = nullptr;

    const size_t variables = countOf(environment);
    const size_t size =
        sizeof(EMULATED_ENVIRONMENT) + sizeof(PRELOAD) + sizeof(THIS_LIBRARY) + std::strlen(preloaded) + 2;
    char* text = static_cast<char*>(alloca(size));
    const bool known = std::strstr(preloaded, THIS_LIBRARY) != nullptr;
    std::snprintf(text, size, "%s%s%s%s%s", EMULATED_ENVIRONMENT, PRELOAD, known ? "" : THIS_LIBRARY,
                  known ? "" : ":", preloaded);
    environment[variables] = text;
    environment[variables + 1] = nullptr;
    return run(EMULATOR, all, environment);
}

void raiseAbort()
{
    realSyscall(SYS_tgkill, getpid(), realSyscall(SYS_gettid), SIGABRT);
}

} // namespace

extern "C" long syscall(long number, ...) noexcept
{
    long words[6];
    va_list list;
    va_start(list, number);
    for (long& argument : words) {
        argument = va_arg(list, long);
    }
    va_end(list);
    const long processDescriptor = 3; // P_PIDFD
    if (number == SYS_waitid && words[0] == processDescriptor) {
        errno = EINVAL;
        return -1;
    }
    return realSyscall(number, words[0], words[1], words[2], words[3], words[4], words[5]);
}

extern "C" int kill(pid_t process, int number) noexcept
{
    if (process <= 0) {
        const char text[] = "emulated: a signal for processes that are not named\n";
        if (write(STDERR_FILENO, text, sizeof(text) - 1) < 0) {
            _exit(126);
        }
        abort();
    }
    return int(realSyscall(SYS_kill, process, number));
}

// As the C library's: a handler runs first, and cannot prevent the end.
extern "C" void abort()
{
    sigset_t own;
    sigemptyset(&own);
    sigaddset(&own, SIGABRT);
    pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
    struct sigaction action = {};
    sigaction(SIGABRT, nullptr, &action);
    if (action.sa_handler != SIG_DFL) {
        raiseAbort();
        signal(SIGABRT, SIG_DFL);
    }
    close(STDERR_FILENO);
    raiseAbort();
    _exit(127);
}

namespace {

// Where the program stands among the arguments of `env NAME=VALUE ... PROGRAM ...`; 0 if it is anything else.
size_t programBehindEnv(const char* path, char* const arguments[])
{
    const char* name = std::strrchr(path, '/');
    if (std::strcmp(name ? name + 1 : path, "env") != 0 || !arguments[0]) {
        return 0;
    }
    size_t program = 1;
    while (arguments[program] && std::strchr(arguments[program], '=')) {
        ++program;
    }
    return arguments[program] && arguments[program][0] != '-' ? program : 0;
}

bool sameName(const char* variable, const char* other)
{
    const size_t length = std::strcspn(variable, "=") + 1;
    return std::strncmp(variable, other, length) == 0;
}

// `env` is done here: behind the machine's own the emulator would be lost.
int runBehindEnv(size_t program, char* const arguments[], char* const environment[])
{
    char** all = static_cast<char**>(alloca((countOf(environment) + program) * sizeof(char*)));
    size_t count = 0;
    for (; *environment; ++environment) {
        bool kept = true;
        for (size_t i = 1; i < program; ++i) {
            kept = kept && !sameName(arguments[i], *environment);
        }
        if (kept) {
            all[count++] = *environment;
        }
    }
    for (size_t i = 1; i < program; ++i) {
        all[count++] = arguments[i];
    }
    all[count] = nullptr;
    return execvpe(arguments[program], arguments + program, all);
}

} // namespace

extern "C" int execve(const char* path, char* const arguments[], char* const environment[])
{
    if (const size_t program = programBehindEnv(path, arguments)) {
        return runBehindEnv(program, arguments, environment);
    }
    // Room for one more variable and the end.
    char** kept = static_cast<char**>(alloca((countOf(environment) + 2) * sizeof(char*)));
    const char* preloaded = copyWithoutPreload(environment, kept);
    return isForeign(path) ? runEmulated(path, arguments, kept, preloaded) : run(path, arguments, kept);
}

extern "C" int execv(const char* path, char* const arguments[])
{
    return execve(path, arguments, environ);
}

extern "C" int execvpe(const char* file, char* const arguments[], char* const environment[])
{
    const char* path = std::getenv("PATH");
    if (std::strchr(file, '/') || !path) {
        return execve(file, arguments, environment);
    }
    char candidate[4096];
    while (*path) {
        const size_t length = std::strcspn(path, ":");
        std::snprintf(candidate, sizeof(candidate), "%.*s/%s", int(length), path, file);
        if (access(candidate, X_OK) == 0) {
            return execve(candidate, arguments, environment);
        }
        path += length + (path[length] == ':');
    }
    errno = ENOENT;
    return -1;
}

extern "C" int execvp(const char* file, char* const arguments[])
{
    return execvpe(file, arguments, environ);
}
