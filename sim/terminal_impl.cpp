// The inside of the terminal: its thread, the parts that live on it, and the way from other threads to them.
#include "sim/terminal_impl.h"

#include "sim/initial_values.h"
#include "sim/listeners.h"

#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace sim {

// What names the unit itself: no client may write it.
static const std::set<std::string> ReadOnlyKeys = {
    "rmcfg.platform.sysconf.serial_number",
    "rmcfg.platform.hpa_hw.unit_serial",
    "cfg.network_information.imei_number",
};

// A loop cannot be destroyed. Those of terminals that have ended are kept here, empty, for the next one.
static std::mutex loopsMutex;
static std::vector<fdloop_t*>& spareLoops()
{
    static auto* loops = new std::vector<fdloop_t*>;
    return *loops;
}

static fdloop_t* takeLoop()
{
    std::lock_guard<std::mutex> lock(loopsMutex);
    if (spareLoops().empty())
        return fdloop_init();
    fdloop_t* loop = spareLoops().back();
    spareLoops().pop_back();
    return loop;
}

static void giveLoop(fdloop_t* loop)
{
    std::lock_guard<std::mutex> lock(loopsMutex);
    spareLoops().push_back(loop);
}

// Abstract names are the system's own: process and count make one unique.
static std::string privateAddress()
{
    static std::atomic<unsigned> count{0};
    return "unix*terminal." + std::to_string(getpid()) + "." + std::to_string(++count);
}

Terminal::Impl::Impl(Terminal& terminal, const TerminalOptions& options)
    : options(options), address(options.address.empty() ? privateAddress() : options.address),
      recorder(terminal)
{
    database.addListener([this](const std::vector<Write>& changes) { onChanges(changes); });
    if (options.initialValues) {
        std::string file = options.valuesFile.empty() ? defaultValuesFile() : options.valuesFile;
        if (!loadInitialValues(file, &initial, &error))
            return;
    }
    fillDatabase();
    start();
}

Terminal::Impl::~Impl()
{
    stop();
    if (wake >= 0)
        close(wake);
}

// --- Life

bool Terminal::Impl::start()
{
    stop();
    if (!options.ownThread)
        return begin();
    std::unique_lock<std::mutex> lock(mutex);
    error.clear();
    state = State::Starting;
    // The process's signals are for its other threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    thread = std::thread([this] {
        if (begin())
            loopUntilQuit();
        end();
    });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    changed.wait(lock, [this] { return state != State::Starting; });
    return state == State::Running;
}

void Terminal::Impl::stop()
{
    if (thread.joinable()) {
        requestQuit();
        thread.join();
    } else if (!options.ownThread && loop) {
        end();
    }
}

// Safe in a signal handler.
void Terminal::Impl::requestQuit()
{
    int before = errno; // of whatever the handler interrupted
    quit = true;
    int fd = wake;
    if (fd >= 0)
        eventfd_write(fd, 1);
    errno = before;
}

void Terminal::Impl::loopUntilQuit()
{
    while (!quit && fdloop_run(loop) == 0) {
    }
    save();
}

bool Terminal::Impl::open(std::string* problem)
{
    // Kept until the end of the object: who asks it to quit may still be writing to it when it has quit.
    if (wake < 0)
        wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wake < 0) {
        *problem = std::string("no descriptor: ") + strerror(errno);
        return false;
    }
    auto log = [this](const std::string& line) { tell(line); };
    server = std::make_unique<BusServer>(loop, log);
    server->setClientsChanged([this] { happened(); });
    Faults::Hooks faultHooks;
    faultHooks.changed = [this] { updateWatcher(); };
    faultHooks.deliver = [this](const BusFrame& frame) {
        if (onFrame(frame))
            server->handleKept(frame);
    };
    faults = std::make_unique<Faults>(loop, database, *server, std::move(faultHooks));
    updateWatcher();
    updateTap();

    DatabaseBus::Hooks hooks;
    hooks.log = log;
    hooks.onSync = [this](const std::string& area) {
        if (area == "cfg")
            save();
    };
    hooks.onFactoryReset = [this] { return factoryReset(); };
    hooks.fault = [this](const std::string& key) { return faults->statusOf(key); };
    if (options.record) {
        hooks.onWrite = [this](const WriteRecord& write) {
            std::lock_guard<std::mutex> lock(mutex);
            writes.push_back(write);
            events++;
            changed.notify_all();
        };
    }
    bus = std::make_unique<DatabaseBus>(loop, database, *server, hooks);
    bus->setReadOnly(ReadOnlyKeys);
    bus->setValidatorTimeout(options.validatorTimeout);
    behaviour = std::make_unique<Behaviour>(
        loop, database, *server, Behaviour::Options{options.actors, options.moving, options.speed});
    if (!server->listen(address, problem))
        return false;
    // A port that the system chose becomes part of the address, so that clients find it.
    if (address.compare(0, 4, "tcp*") == 0)
        address = address.substr(0, address.rfind('*') + 1) + std::to_string(server->port());
    fdloop_fd_register(loop, wake, onWake, this);
    return true;
}

void Terminal::Impl::shut()
{
    std::string problem;
    if (!recorder.end(&problem))
        tell(problem);
    faults.reset();
    if (server)
        server->close();
    behaviour.reset();
    bus.reset();
    server.reset();
    fdloop_fd_unregister(loop, wake);
}

bool Terminal::Impl::begin()
{
    std::lock_guard<std::recursive_mutex> noOneElse(alone);
    loop = takeLoop();
    quit = false;
    std::string problem;
    bool good = open(&problem);
    if (good)
        behaviour->start();
    std::lock_guard<std::mutex> lock(mutex);
    state = good ? State::Running : State::Stopped;
    owner = std::this_thread::get_id();
    error = problem;
    changed.notify_all();
    return good;
}

void Terminal::Impl::end()
{
    std::lock_guard<std::recursive_mutex> noOneElse(alone);
    {
        std::lock_guard<std::mutex> lock(mutex);
        state = State::Stopped;
    }
    runTasks();
    shut();
    giveLoop(loop);
    loop = nullptr;
    happened();
}

// --- From other threads

void Terminal::Impl::run(const std::function<void()>& function)
{
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (state == State::Running && owner != std::this_thread::get_id()) {
            Task task{&function};
            tasks.push_back(&task);
            eventfd_write(wake, 1);
            changed.wait(lock, [&] { return task.done; });
            return;
        }
    }
    std::lock_guard<std::recursive_mutex> noOneElse(alone);
    function();
}

int Terminal::Impl::onWake(int fd, void* data)
{
    eventfd_t count;
    eventfd_read(fd, &count);
    static_cast<Impl*>(data)->runTasks();
    return 0;
}

void Terminal::Impl::runTasks()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (!tasks.empty()) {
        Task* task = tasks.front();
        tasks.pop_front();
        lock.unlock();
        (*task->function)();
        lock.lock();
        task->done = true;
        changed.notify_all();
    }
}

bool Terminal::Impl::waitUntil(const std::function<bool()>& predicate, int timeout) const
{
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout);
    for (;;) {
        uint64_t seen;
        {
            std::lock_guard<std::mutex> lock(mutex);
            seen = events;
        }
        if (predicate())
            return true;
        std::unique_lock<std::mutex> lock(mutex);
        if (!changed.wait_until(lock, deadline, [&] { return events != seen; })) {
            lock.unlock();
            return predicate();
        }
    }
}

void Terminal::Impl::happened()
{
    std::lock_guard<std::mutex> lock(mutex);
    events++;
    changed.notify_all();
}

// --- On the thread

void Terminal::Impl::tell(const std::string& line)
{
    if (options.log)
        options.log(line);
    std::lock_guard<std::mutex> lock(mutex);
    if (options.record)
        log.push_back(line);
    events++;
    changed.notify_all();
}

void Terminal::Impl::onChanges(const std::vector<Write>& changes)
{
    // Clients are told first: what the actors make of a change comes behind it.
    if (bus)
        bus->publishChanges(changes);
    if (behaviour)
        behaviour->onChanges(changes);
    tellListeners(changeListeners, changes);
    happened();
}

// While nobody records and nobody listens, the server does not even ask.
void Terminal::Impl::updateWatcher()
{
    if (!server)
        return;
    if (options.record || answerHook || messageHook || (faults && faults->watches()))
        server->setWatcher([this](const BusFrame& frame) { return onFrame(frame); });
    else
        server->setWatcher(nullptr);
}

void Terminal::Impl::updateTap()
{
    if (!server)
        return;
    if (trafficListeners.empty())
        server->setTap(nullptr);
    else
        server->setTap([this](const Traffic& traffic) { tellListeners(trafficListeners, traffic); });
}

bool Terminal::Impl::onFrame(const BusFrame& frame)
{
    if (faults && faults->takes(frame))
        return false;
    Message message{frame.client,      frame.header.type,       frame.header.src,
                    frame.header.seqn, std::string(frame.name), std::string(frame.data)};
    if (options.record) {
        std::lock_guard<std::mutex> lock(mutex);
        messages.push_back(message);
        events++;
        changed.notify_all();
    }
    // A hook may replace itself.
    if (auto hook = messageHook)
        hook(message);
    auto hook = answerHook;
    if (!hook || message.type != CBUS_TYPE_REQUEST)
        return true;
    std::optional<RawAnswer> answer = hook(message);
    if (!answer)
        return true;
    server->sendRaw(message.client, answer->bytes);
    if (answer->close)
        server->closeAfterWriting(message.client);
    return false;
}

static bool isArea(const std::string& key, std::string_view area)
{
    return firstComponent(key) == area;
}

void Terminal::Impl::fillDatabase()
{
    std::vector<Write> values = initial;
    Store::Values saved;
    std::string problem;
    if (!options.storeFile.empty()) {
        if (store.open(options.storeFile, &saved, &problem)) {
            for (const auto& [key, value] : saved)
                values.push_back({key, value});
        } else {
            tell("settings are not kept: " + problem);
        }
    }
    database.apply(values);
}

bool Terminal::Impl::save()
{
    if (!store.isOpen())
        return false;
    Store::Values values;
    for (const Write& write : initial) {
        if (isArea(write.key, "cfg"))
            values[write.key] = Value();
    }
    for (const std::string& key : database.keysWithPrefix("cfg")) {
        if (isArea(key, "cfg"))
            values[key] = *database.find(key);
    }
    std::string problem;
    if (store.save(values, &problem))
        return true;
    tell("settings could not be saved: " + problem);
    return false;
}

int32_t Terminal::Impl::factoryReset()
{
    std::vector<Write> writes;
    for (const std::string& key : database.keysWithPrefix("cfg")) {
        if (isArea(key, "cfg"))
            writes.push_back({key, Value()});
    }
    for (const Write& write : initial) {
        if (isArea(write.key, "cfg"))
            writes.push_back(write);
    }
    database.apply(writes);
    save();
    return 0;
}

} // namespace sim
