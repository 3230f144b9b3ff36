// The database on the bus: answers what clients ask under "config.", and signals changes.
//
// Where the verbs leave something open, this is how it is here:
//   read       a type other than the one asked for: VX_CONFIG_WRONG_TYPE without the value. A buffer that is
//   too small:
//              VX_CONFIG_BUFFER_TOO_SMALL with the whole value.
//   readm      no match, or a bad expression: an empty reply. delm takes the same keys.
//   write      refused writes (read-only, malformed, a limit) are dropped with a line in the log
//   modifyv    refused keys have their status; the others are written, all in one change
//   stat       0 and the value's length in bytes, or VX_CONFIG_NO_RECORD and 0
//   changes    one signal for each first component, in the order of the writes
//   validators a validator's name is a prefix of keys. A modifyv of such keys asks it (the longest name
//   counts) and is
//              answered after its validate.rsp. Status 0 and 2 accept a key; anything else, no answer within
//              ValidatorTimeout, or a validator that goes away is VX_CONFIG_VERIFY_FAIL. Keys that it leaves
//              out are accepted. A client is not asked about its own writes: it is waiting for the answer to
//              them.
//
// Not thread-safe: everything on the thread of the loop.
#ifndef SIM_DATABASE_BUS_H
#define SIM_DATABASE_BUS_H

#include "sim/bus_server.h"
#include "sim/database.h"
#include "sim/terminal.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

struct fdloop_t;
struct fdloop_timer;

namespace sim {

struct VbufEntry;

// The request with which terminalsim's own commands write: it counts as the terminal's doing, not as a
// client's.
extern const char DeskModify[];

class DatabaseBus : public LocalProvider {
public:
    static constexpr uint32_t ValidatorTimeout = 5000; // ms

    // What lies beyond keys and values. Every one may be null.
    struct Hooks {
        std::function<void(const WriteRecord&)> onWrite;      // each key that a client writes or deletes
        std::function<void(const std::string& area)> onSync;  // save this area
        std::function<int32_t()> onFactoryReset;              // returns the status of the reply
        std::function<int32_t(const std::string& key)> fault; // 0, or the status to answer with; "" is readm
        BusServer::Log log;
    };

    // All must outlive this object, except that the server may go first.
    DatabaseBus(fdloop_t* loop, Database& database, BusServer& server, Hooks hooks);
    ~DatabaseBus() override;

    // Keys that no client may write.
    void setReadOnly(std::set<std::string> keys) { readOnly = std::move(keys); }
    void setValidatorTimeout(uint32_t milliseconds) { validatorTimeout = milliseconds; }

    // To be called with all changes of the database, before anybody reacts to them.
    void publishChanges(const std::vector<Write>& changes);

    void onSignal(const BusFrame& frame) override;
    void onRequest(const BusFrame& frame) override;
    void onClientGone(uint64_t client) override;

private:
    struct Verb;
    struct Validation;
    struct Question;
    static const Verb Verbs[];

    const Verb* findVerb(const BusFrame& frame, std::string* suffix) const;
    void report(const BusFrame& frame, const std::string& problem) const;
    void note(uint64_t client, const char* verb, const Write& write, int32_t status) const;
    int32_t check(const Write& write) const;

    void read(const BusFrame& frame, const std::string& suffix);
    void readMany(const BusFrame& frame, const std::string& suffix);
    void list(const BusFrame& frame, const std::string& suffix);
    void stat(const BusFrame& frame, const std::string& suffix);
    void factoryReset(const BusFrame& frame, const std::string& suffix);
    void modify(const BusFrame& frame, const std::string& suffix);
    void write(const BusFrame& frame, const std::string& suffix);
    void writeMany(const BusFrame& frame, const std::string& suffix);
    void removeMatching(const BusFrame& frame, const std::string& suffix);
    void sync(const BusFrame& frame, const std::string& suffix);
    void registerValidator(const BusFrame& frame, const std::string& suffix);
    void takeVerdict(const BusFrame& frame, const std::string& suffix);

    int32_t faultOf(const std::string& key) const { return hooks.fault ? hooks.fault(key) : 0; }
    void apply(uint64_t client, const std::vector<Write>& writes);
    void writeAll(uint64_t client, const char* verb, const std::vector<Write>& writes);
    const std::string* validatorOf(const std::string& key, uint64_t writer) const;
    void ask(const std::shared_ptr<Validation>& validation);
    void refuse(Validation& validation, const Question& question);
    void finishIfDone(const std::shared_ptr<Validation>& validation);
    static int onValidatorTimeout(void* data);
    void publishComponent(const std::string& component, const std::vector<const Write*>& changes,
                          uint64_t cause);

    fdloop_t* loop;
    Database& database;
    BusServer& server;
    Hooks hooks;
    uint64_t writer = 0; // the client whose writes are being stored, until their changes are published
    std::set<std::string> readOnly;
    uint32_t validatorTimeout = ValidatorTimeout;
    std::map<std::string, uint64_t> validators; // name to client
    std::map<uint64_t, std::deque<Question>>
        questions; // to each client, in the order in which it answers them
    std::vector<std::shared_ptr<Validation>> validations; // modifyv that wait for answers
};

} // namespace sim

#endif
