// Tells from inside the display what the soak counts and what nobody sees from outside: heap in use, timers
// of the bus thread's loop and of Qt, Qt's objects and pixmap cache. A library that tests/soak/run preloads.
//
// Each connection to the Unix socket $SOAK_PROBE gets one line "name=number ..." and is closed. That costs
// the process one thread and one descriptor, which whoever reads the line takes off.
//
// $SOAK_LOOP is the place of the variable `fdl` in the program's file, in hexadecimal: at run time a
// program's own variable can't be found by its name.
#include "runtime/fdloop_impl.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
// Tells how much is in it where its own tests ask.
#define Q_TEST_QPIXMAPCACHE
#include <QPixmapCache>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <link.h>
#include <malloc.h>
#include <mutex>
#include <set>
#include <string>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

// Qt's hooks for tools that watch objects (private/qhooks_p.h): from 3 on, who is told of a new one and of
// one that goes.
extern quintptr Q_CORE_EXPORT qtHookData[];

namespace {

constexpr size_t HookAddQObject = 3, HookRemoveQObject = 4;
constexpr int MaxTimers = 10000;
constexpr int Tries = 100;

// Never destroyed: objects go until the very end.
std::mutex& objectsMutex = *new std::mutex;
std::set<QObject*>& objects = *new std::set<QObject*>;

void addObject(QObject* object)
{
    std::lock_guard<std::mutex> lock(objectsMutex);
    objects.insert(object);
}

void removeObject(QObject* object)
{
    std::lock_guard<std::mutex> lock(objectsMutex);
    objects.erase(object);
}

// What lies at the address, which may have been freed meanwhile: false instead of a crash.
template <typename T> bool readMemory(const void* address, T* value)
{
    iovec to = {value, sizeof *value}, from = {const_cast<void*>(address), sizeof *value};
    return address && process_vm_readv(getpid(), &to, 1, &from, 1, 0) == static_cast<ssize_t>(sizeof *value);
}

int ofProgram(dl_phdr_info* info, size_t, void* address)
{
    *static_cast<uintptr_t*>(address) += info->dlpi_addr;
    return 1; // the first one is the program
}

bool readLoop(fdloop_t* loop)
{
    const char* place = getenv("SOAK_LOOP");
    uintptr_t address = place ? strtoul(place, nullptr, 16) : 0;
    const fdloop_t* there = nullptr;
    dl_iterate_phdr(ofProgram, &address);
    return place && readMemory(reinterpret_cast<const void*>(address), &there) && readMemory(there, loop);
}

// The bus thread goes on meanwhile: -1 if the list fell apart under this.
int timersOf(const fdloop_t& loop)
{
    int count = 0;
    for (const fdloop_timer* list : {loop.timers, loop.new_timers}) {
        fdloop_timer timer;
        for (const ::fdloop_timer* next = list; next; next = timer.next) {
            if (!readMemory(next, &timer) || count > MaxTimers)
                return -1;
            count += timer.deleted ? 0 : 1;
        }
    }
    return count;
}

// While a timer is served it is in no list, so the most of several looks is right.
void countLoop(int* timers, int* descriptors)
{
    *timers = *descriptors = -1;
    for (int i = 0; i < Tries; i++) {
        fdloop_t loop;
        if (readLoop(&loop)) {
            *timers = std::max(*timers, timersOf(loop));
            *descriptors = loop.entry_count;
        }
        usleep(1000);
    }
}

// On the GUI thread, whose timers and pixmaps they are.
void countQt(int* timers, size_t* count, int* pixmaps)
{
    std::lock_guard<std::mutex> lock(objectsMutex);
    *timers = 0;
    *count = objects.size();
    *pixmaps = QPixmapCache::totalUsed();
    for (QObject* object : objects)
        *timers += static_cast<int>(QAbstractEventDispatcher::instance()->registeredTimers(object).size());
}

std::string report()
{
    int loopTimers = 0, loopDescriptors = 0, qtTimers = 0, pixmaps = 0;
    size_t count = 0;
    countLoop(&loopTimers, &loopDescriptors);
    QMetaObject::invokeMethod(
        qApp, [&] { countQt(&qtTimers, &count, &pixmaps); }, Qt::BlockingQueuedConnection);
    const struct mallinfo2 heap = mallinfo2();
    char line[400];
    snprintf(
        line, sizeof line,
        "heap=%zu heap_held=%zu loop_timers=%d loop_fds=%d qt_timers=%d qt_objects=%zu pixmap_cache=%d\n",
        heap.uordblks + heap.hblkhd, heap.arena + heap.hblkhd, loopTimers, loopDescriptors, qtTimers, count,
        pixmaps);
    return line;
}

void serve(int listener)
{
    for (;;) {
        const int client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            continue;
        const std::string line = qApp ? report() : "\n";
        if (send(client, line.data(), line.size(), MSG_NOSIGNAL) < 0)
            perror("soak probe");
        close(client);
    }
}

__attribute__((constructor)) void begin()
{
    const char* path = getenv("SOAK_PROBE");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (!path || strlen(path) >= sizeof address.sun_path)
        return;
    strcpy(address.sun_path, path);
    unlink(path);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, 5) != 0) {
        perror("soak probe");
        return;
    }
    qtHookData[HookAddQObject] = reinterpret_cast<quintptr>(addObject);
    qtHookData[HookRemoveQObject] = reinterpret_cast<quintptr>(removeObject);
    // The display's signals go to its own threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread(serve, listener).detach();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace
