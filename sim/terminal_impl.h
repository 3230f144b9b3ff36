// What the sources of Terminal share. For these only.
#ifndef SIM_TERMINAL_IMPL_H
#define SIM_TERMINAL_IMPL_H

#include "sim/behaviour.h"
#include "sim/bus_server.h"
#include "sim/database.h"
#include "sim/database_bus.h"
#include "sim/faults.h"
#include "sim/recording.h"
#include "sim/store.h"
#include "sim/terminal.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace sim {

struct Terminal::Impl {
    Impl(Terminal& terminal, const TerminalOptions& options);
    ~Impl();

    // --- Life, on the owner's thread
    bool start();
    void stop();
    void requestQuit();

    // Carries a function out on the terminal's thread and returns when it is done; here and now if this is
    // that thread, or if there is none.
    void run(const std::function<void()>& function);
    // True when the predicate is; asked again whenever something has happened, until the time is over.
    bool waitUntil(const std::function<bool()>& predicate, int timeout) const;

    // --- On the terminal's thread
    bool begin();
    void loopUntilQuit();
    void end();
    bool open(std::string* error);
    void shut();
    void runTasks();
    void fillDatabase();
    // False where that failed, which is told, and where there is no store.
    bool save();
    void tell(const std::string& line);
    void onChanges(const std::vector<Write>& changes);
    void updateTap();
    bool onFrame(const BusFrame& frame);
    void updateWatcher();
    int32_t factoryReset();
    static int onWake(int fd, void* data);

    // Something has happened that somebody may be waiting for.
    void happened();

    const TerminalOptions options;
    std::string address;
    std::vector<Write> initial; // of the values file

    // The thread's own.
    fdloop_t* loop = nullptr;
    Database database;
    Store store;
    std::unique_ptr<BusServer> server;
    std::unique_ptr<DatabaseBus> bus;
    std::unique_ptr<Behaviour> behaviour;
    std::unique_ptr<Faults> faults;
    std::function<std::optional<RawAnswer>(const Message&)> answerHook;
    std::function<void(const Message&)> messageHook;
    std::map<uint64_t, std::function<void(const std::vector<Write>&)>> changeListeners;
    std::map<uint64_t, std::function<void(const Traffic&)>> trafficListeners;
    uint64_t lastListener = 0;
    Recorder recorder;

    std::thread thread;
    std::atomic<bool> quit{false};
    std::atomic<int> wake{-1}; // eventfd

    // Everything below is under this mutex.
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    enum class State { Stopped, Starting, Running };
    State state = State::Stopped;
    std::thread::id owner; // of the running terminal
    std::string error;
    struct Task {
        const std::function<void()>* function;
        bool done = false;
    };
    std::deque<Task*> tasks;
    uint64_t events = 0; // counts happened()
    std::vector<Message> messages;
    std::vector<WriteRecord> writes;
    std::vector<std::string> log;
    // Held by whoever works on the thread's own things while there is no thread.
    std::recursive_mutex alone;
};

} // namespace sim

#endif
