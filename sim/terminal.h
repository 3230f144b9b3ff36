// The terminal around the display, in a thread of its own: bus server, database and, if wanted, the
// processes that act on it. It is the fixture of all tests, and what the program terminalsim runs.
//
// Every function may be called from any thread, also from the hooks below, unless told otherwise. Calls that
// touch the database are carried out on the terminal's own thread and return when they are done; they
// never wait for a client. Times are in milliseconds.
//
//     sim::Terminal terminal;                                // normal operation, nothing moves
//     terminal.useForProcess();                              // CBUS_ADDR now names it
//     terminal.set("ram.status.signal_strength", 456);       // signalled to the clients, as any change
//     EXPECT_TRUE(terminal.waitForWrite("cfg.language", sim::Value::integer(1)));
#ifndef SIM_TERMINAL_H
#define SIM_TERMINAL_H

#include "sim/value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct fdloop_t;

namespace sim {

class BusServer;
class Faults;
class Recorder;
struct Traffic;
struct Write;

// One message as a client sent it.
struct Message {
    uint64_t client = 0; // number of the connection, from 1, never used twice
    uint8_t type = 0;    // 1 signal, 2 request, 3 reply
    uint8_t src = 0;
    uint16_t seqn = 0;
    std::string name; // without its NUL
    std::string data;

    // The data as text: up to the first NUL.
    std::string text() const { return data.substr(0, data.find('\0')); }
};

// One key that a client wrote or deleted (with write, writev, modifyv or delm), whether the value differed or
// not.
struct WriteRecord {
    uint64_t client = 0;
    std::string verb;   // "write", "writev", "modifyv", "delm"
    std::string key;    // for "delm" each key that was deleted
    Value value;        // as it was sent; Type::None or no bytes is a deletion
    int32_t status = 0; // 0 taken; else the VX_CONFIG_ code with which it was refused
};

struct TerminalOptions {
    std::string address;              // empty: a private "unix*..." address, unique in the system
    bool initialValues = true;        // fill the database from the values file
    std::string valuesFile;           // empty: the file of the source tree
    std::string storeFile;            // empty: cfg lives in memory only
    bool moving = false;              // signal, battery and position move by themselves
    bool actors = false;              // the terminal's processes react, and carry out commands (ram.desk.*)
    uint32_t speed = 1;               // how many times faster both go than in a real terminal
    bool ownThread = true;            // false: it lives on the constructor's thread, in run()
    bool record = true;               // keep the logs of writes and messages below
    uint32_t validatorTimeout = 5000; // ms that a validator has
    std::function<void(const std::string&)> log; // each line of the server's log, on the terminal's thread
};

class Terminal {
public:
    static constexpr int DefaultTimeout = 120000; // ms; fails nothing that merely is slow

    // Starts at once. Whatever fails is in error(); running() is then false.
    Terminal();
    explicit Terminal(const TerminalOptions& options);
    ~Terminal(); // stop()
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // The bus address in text form, "unix*name". The same across stop() and start().
    const std::string& address() const;
    // Sets CBUS_ADDR of this process to address(). Not while another thread uses the environment.
    void useForProcess() const;
    bool running() const;
    std::string error() const;

    // Without a thread of its own: carries on until requestQuit(), then saves and returns.
    void run();
    // Makes the terminal end by itself. Safe in a signal handler.
    void requestQuit();

    // Ends server and thread; all connections are closed, the database keeps its values. cfg is saved if
    // there is a store. Not from a hook.
    void stop();
    // Starts it again, on the same address. False with error() set if that failed. Not from a hook.
    bool start();

    // --- The database, as a process of the terminal sees it: read-only keys and validators do not bind it.

    void set(const std::string& key, int32_t number);
    void set(const std::string& key, const std::string& text);
    void setString(const std::string& key, const std::string& text) { set(key, text); }
    void set(const std::string& key, const Value& value); // Type::None deletes
    // Writes all keys in one go: one change signal for each first component.
    void setAll(const std::vector<std::pair<std::string, Value>>& values);
    // True if the key was there.
    bool erase(const std::string& key);
    // Deletes every key that begins with the prefix, all in one change. Returns their number.
    size_t erasePrefix(const std::string& prefix);
    // Replaces all content by the values file again, or by nothing. Signalled like any change.
    void resetValues();
    void clear();
    // What a factory reset does with the settings (cfg): they are those of the values file again.
    void factoryReset();
    // Saves the settings. False if there is no store or that failed, which the server's log tells.
    bool save();

    std::optional<Value> get(const std::string& key) const;
    std::optional<int32_t> getInt(const std::string& key) const;        // nullopt: absent or not an Int
    std::optional<std::string> getString(const std::string& key) const; // nullopt: absent or not a String
    bool has(const std::string& key) const { return get(key).has_value(); }
    std::map<std::string, Value> list(const std::string& prefix) const;
    // Waits until the key has this value, whoever writes it.
    bool waitForValue(const std::string& key, const Value& value, int timeout = DefaultTimeout) const;
    // Waits until there is no such key.
    bool waitForAbsence(const std::string& key, int timeout = DefaultTimeout) const;

    // --- What the clients did. The logs hold what came since the start or the last clearLogs().

    std::vector<WriteRecord> writes() const;
    // The values that clients wrote to the key, in order.
    std::vector<Value> writesOf(const std::string& key) const;
    std::vector<Message> messages() const;
    std::vector<Message> messagesNamed(const std::string& name) const;
    void clearLogs();

    // Wait for a write in the log, past or to come. The predicate runs on the calling thread, under a lock:
    // it must not call the terminal.
    bool waitForWrite(const std::string& key, const Value& value, int timeout = DefaultTimeout) const;
    bool waitForWrite(const std::string& key, const std::function<bool(const Value&)>& predicate,
                      int timeout = DefaultTimeout) const;
    // The same for a message of this exact name; at least `count` of them.
    bool waitForMessage(const std::string& name, int timeout = DefaultTimeout, size_t count = 1) const;
    // Waits until `count` clients are connected (after killConnections(), or for a process that starts).
    bool waitForClients(size_t count, int timeout = DefaultTimeout) const;
    // Waits until some client has set a filter that takes signals of this name.
    bool waitForFilter(const std::string& name, int timeout = DefaultTimeout) const;
    size_t clientCount() const;
    // Waits until everything that clients sent before this call has been handled, as far as it had arrived.
    void settle() const;

    // Lines of the server's own log ("closed client 3: ...").
    std::vector<std::string> serverLog() const;
    bool waitForLog(const std::string& part, int timeout = DefaultTimeout) const;

    // --- Signals and faults.

    // Sends a signal to every client that filtered a prefix of its name.
    void sendSignal(const std::string& name, std::string_view data);
    // The same as if a client had sent it: the terminal's processes get it as well (but not the database).
    void sendClientSignal(const std::string& name, std::string_view data);
    // Sends bytes as they are to every client (or to one).
    void sendRaw(std::string_view bytes, uint64_t client = 0);
    // Closes all connections; the server goes on and takes new ones.
    void killConnections();
    // While held, nothing that clients send is read: a database that does not answer. The short form of what
    // faults() can do.
    void hold();
    void release();

    // What to do with a request instead of answering it: send these bytes, then close or not.
    struct RawAnswer {
        std::string bytes;
        bool close = false;
    };
    // Asked for each request of a client before it is handled; nullopt lets it pass. Null removes the hook.
    // Runs on the terminal's thread.
    void answerWith(std::function<std::optional<RawAnswer>(const Message&)> hook);
    // Called for each message of a client before it is handled. Runs on the terminal's thread; null removes
    // it.
    void onMessage(std::function<void(const Message&)> hook);

    // --- For what lives on the terminal's own thread: the consoles and what they work on.

    // The loop of that thread; null while it is stopped. A loop is not thread-safe.
    fdloop_t* loop() const;
    // Carries the function out on that thread and returns when it is done.
    void onThread(const std::function<void()>& function);
    // Calls the listener, on that thread, with all changes of the database, in the order in which they were
    // made and after the clients have been told. Returns its number for forget(), never 0. It may set values,
    // listen and forget, itself included. Across stop() and start().
    uint64_t listenToChanges(std::function<void(const std::vector<Write>&)> listener);
    // The same with every message that the bus carries (traffic.h): what clients send, when it comes; what
    // goes to them, when it is on its way. The listener must not stop the terminal. It costs time while there
    // is one.
    uint64_t listenToTraffic(std::function<void(const Traffic&)> listener);
    void forget(uint64_t listener);
    // What goes wrong on purpose, and who is connected. Both end with stop(): null then.
    Faults* faults() const;
    BusServer* server() const;
    // The recording, of which there is one at a time.
    Recorder& recorder() const;
    // Silences the terminal's processes and what moves by itself, or lets them begin anew.
    void setBehaviourMuted(bool muted);
    // Replaces the whole content of the database, in one change.
    void replaceAll(const std::vector<Write>& values);
    // A line in the server's log.
    void tell(const std::string& line);

    // A frame as the bus carries it, padded; for sendRaw() and answerWith().
    static std::string frame(uint8_t type, uint8_t src, uint16_t seqn, std::string_view name,
                             std::string_view data);

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace sim

#endif
