// The replacement of syslog: formats the line once, then keeps, echoes and forwards it.
//
// Written in plain C style on purpose: this file is also a library that is preloaded into processes of any
// kind, and must bring neither the C++ library nor a sanitizer with it. Any thread may log, and a signal
// handler as far as the C library's own syslog allows it.
#include "sim/syslogtap/syslogtap.h"

#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

namespace {

struct Kept {
    Kept* next;
    char* ident;
    char* text;
    int facility;
    int priority;
};

pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
Kept* first = nullptr;
Kept** last = &first;
size_t kept_count = 0;

// Read by every thread that logs; set rarely.
int keeping = 0;
int echoing = 0;
const char* log_ident = nullptr;
int log_facility = LOG_USER;
int log_mask = 0xff;

// Holds the lock with all signals blocked, so that a handler that logs can't meet its own thread in here.
class Guard {
public:
    Guard()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        pthread_mutex_lock(&lock);
    }
    ~Guard()
    {
        pthread_mutex_unlock(&lock);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

private:
    sigset_t before;
};

void drop_all()
{
    while (first) {
        Kept* line = first;
        first = line->next;
        free(line->ident);
        free(line->text);
        free(line);
    }
    last = &first;
    kept_count = 0;
}

void keep(const char* ident, int facility, int priority, const char* text)
{
    Guard guard;
    Kept* line = static_cast<Kept*>(calloc(1, sizeof(Kept)));
    if (!line) {
        return;
    }
    line->ident = strdup(ident);
    line->text = strdup(text);
    if (!line->ident || !line->text) {
        free(line->ident);
        free(line->text);
        free(line);
        return;
    }
    line->facility = facility;
    line->priority = priority;
    *last = line;
    last = &line->next;
    ++kept_count;
}

void write_whole(int fd, const char* data, size_t length)
{
    ssize_t result;
    do {
        result = write(fd, data, length);
    } while (result < 0 && errno == EINTR);
}

void echo(const char* ident, int priority, const char* text, size_t length, char* line, size_t size)
{
    const char* end = length > 0 && text[length - 1] == '\n' ? "" : "\n";
    int used = snprintf(line, size, "<%d> %s: %s%s", priority, ident, text, end);
    write_whole(STDERR_FILENO, line, static_cast<size_t>(used));
}

// The line of the file and the socket, with a line feed at its end. The buffer holds it at any length of
// text.
size_t compose(const char* ident, int facility, int priority, const char* text, char* line, size_t size)
{
    int head = snprintf(line, size, "<%d.%d> %s[%d]: ", LOG_FAC(facility), priority, ident,
                        static_cast<int>(getpid()));
    size_t used = static_cast<size_t>(head);
    for (; *text; ++text) {
        if (*text == '\n') {
            line[used++] = '\\';
            line[used++] = 'n';
        } else {
            line[used++] = *text;
        }
    }
    line[used++] = '\n';
    return used;
}

void append_to_file(const char* path, const char* line, size_t length)
{
    // Opened anew each time: no descriptor of ours is there for the program to trip over.
    int fd = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (fd >= 0) {
        write_whole(fd, line, length);
        close(fd);
    }
}

void send_to_socket(const char* path, const char* line, size_t length)
{
    struct sockaddr_un address;
    memset(&address, 0, sizeof(address));
    address.sun_family = AF_UNIX;
    if (strlen(path) >= sizeof(address.sun_path)) {
        return;
    }
    strcpy(address.sun_path, path);
    int fd = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd >= 0) {
        sendto(fd, line, length, MSG_NOSIGNAL, reinterpret_cast<struct sockaddr*>(&address), sizeof(address));
        close(fd);
    }
}

void hand_out(const char* ident, int facility, int priority, const char* text, size_t length)
{
    if (__atomic_load_n(&keeping, __ATOMIC_RELAXED)) {
        keep(ident, facility, priority, text);
    }
    const char* file = getenv("SYSLOGTAP_FILE");
    const char* path = getenv("SYSLOGTAP_SOCKET");
    int echo_it = __atomic_load_n(&echoing, __ATOMIC_RELAXED);
    if (!file && !path && !echo_it) {
        return;
    }
    size_t size = 2 * length + strlen(ident) + 64;
    char small[4096];
    char* line = size <= sizeof(small) ? small : static_cast<char*>(malloc(size));
    if (!line) {
        return;
    }
    if (echo_it) {
        echo(ident, priority, text, length, line, size);
    }
    size_t used = compose(ident, facility, priority, text, line, size);
    if (file && *file) {
        append_to_file(file, line, used);
    }
    if (path && *path) {
        send_to_socket(path, line, used - 1);
    }
    if (line != small) {
        free(line);
    }
}

__attribute__((format(printf, 2, 0))) void log_line(int priority, const char* format, va_list arguments)
{
    int saved = errno;
    if (!(LOG_MASK(LOG_PRI(priority)) & __atomic_load_n(&log_mask, __ATOMIC_RELAXED))) {
        return;
    }
    const char* ident = __atomic_load_n(&log_ident, __ATOMIC_RELAXED);
    if (!ident) {
        ident = program_invocation_short_name;
    }
    int facility = priority & LOG_FACMASK;
    if (facility == 0) {
        facility = __atomic_load_n(&log_facility, __ATOMIC_RELAXED);
    }
    char small[2048];
    char* text = small;
    va_list again;
    va_copy(again, arguments);
    int length = vsnprintf(small, sizeof(small), format, arguments);
    if (length >= static_cast<int>(sizeof(small))) {
        text = static_cast<char*>(malloc(static_cast<size_t>(length) + 1));
        if (text) {
            errno = saved; // for %m
            vsnprintf(text, static_cast<size_t>(length) + 1, format, again);
        } else {
            text = small;
            length = sizeof(small) - 1;
        }
    }
    va_end(again);
    if (length >= 0) {
        hand_out(ident, facility, LOG_PRI(priority), text, static_cast<size_t>(length));
    }
    if (text != small) {
        free(text);
    }
    errno = saved;
}

} // namespace

extern "C" {

void syslogtap_start(void)
{
    Guard guard;
    drop_all();
    __atomic_store_n(&keeping, 1, __ATOMIC_RELAXED);
}

void syslogtap_stop(void)
{
    __atomic_store_n(&keeping, 0, __ATOMIC_RELAXED);
}

void syslogtap_clear(void)
{
    Guard guard;
    drop_all();
}

void syslogtap_echo(int on)
{
    __atomic_store_n(&echoing, on, __ATOMIC_RELAXED);
}

size_t syslogtap_count(void)
{
    Guard guard;
    return kept_count;
}

void syslogtap_visit(syslogtap_visitor visitor, void* context)
{
    Guard guard;
    for (const Kept* line = first; line; line = line->next) {
        visitor(context, line->ident, line->facility, line->priority, line->text);
    }
}

void openlog(const char* ident, int, int facility)
{
    __atomic_store_n(&log_ident, ident, __ATOMIC_RELAXED);
    if (facility != 0 && (facility & ~LOG_FACMASK) == 0) {
        __atomic_store_n(&log_facility, facility, __ATOMIC_RELAXED);
    }
}

void closelog(void)
{
    __atomic_store_n(&log_ident, static_cast<const char*>(nullptr), __ATOMIC_RELAXED);
}

int setlogmask(int mask)
{
    int before = __atomic_load_n(&log_mask, __ATOMIC_RELAXED);
    if (mask != 0) {
        __atomic_store_n(&log_mask, mask, __ATOMIC_RELAXED);
    }
    return before;
}

void vsyslog(int priority, const char* format, va_list arguments)
{
    log_line(priority, format, arguments);
}

void syslog(int priority, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    log_line(priority, format, arguments);
    va_end(arguments);
}

__attribute__((format(printf, 3, 0))) void __vsyslog_chk(int priority, int, const char* format,
                                                         va_list arguments)
{
    log_line(priority, format, arguments);
}

__attribute__((format(printf, 3, 4))) void __syslog_chk(int priority, int, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    log_line(priority, format, arguments);
    va_end(arguments);
}
}
