// The verbs of the database, one function each. Validation has its own source, database_validation.cpp.
#include "sim/database_bus_impl.h"

#include "sim/vbuf.h"

#include "runtime/config_client_api.h"

#include <cstring>
#include <utility>

namespace sim {

static const char Prefix[] = "config.";
const char DeskModify[] = "config.modifyv.terminalsim";

// The fixed part of a read's reply and of a write: status (-1 in a request), type, length.
struct ValueHead {
    int32_t status;
    uint32_t type;
    uint32_t length;
};

struct DatabaseBus::Verb {
    const char* name;
    uint8_t kind; // the message type it comes as
    void (DatabaseBus::*handler)(const BusFrame& frame, const std::string& suffix);
};

const DatabaseBus::Verb DatabaseBus::Verbs[] = {
    {"read", CBUS_TYPE_REQUEST, &DatabaseBus::read},
    {"write", CBUS_TYPE_SIGNAL, &DatabaseBus::write},
    {"readv", CBUS_TYPE_REQUEST, &DatabaseBus::readMany},
    {"writev", CBUS_TYPE_SIGNAL, &DatabaseBus::writeMany},
    {"modifyv", CBUS_TYPE_REQUEST, &DatabaseBus::modify},
    {"readm", CBUS_TYPE_REQUEST, &DatabaseBus::list},
    {"delm", CBUS_TYPE_SIGNAL, &DatabaseBus::removeMatching},
    {"stat", CBUS_TYPE_REQUEST, &DatabaseBus::stat},
    {"sync", CBUS_TYPE_SIGNAL, &DatabaseBus::sync},
    {"factory_reset", CBUS_TYPE_REQUEST, &DatabaseBus::factoryReset},
    {"validate.register", CBUS_TYPE_SIGNAL, &DatabaseBus::registerValidator},
    {"validate.rsp", CBUS_TYPE_SIGNAL, &DatabaseBus::takeVerdict},
};

DatabaseBus::DatabaseBus(fdloop_t* loop, Database& database, BusServer& server, Hooks hooks)
    : loop(loop), database(database), server(server), hooks(std::move(hooks))
{
    server.provideLocally(Prefix, this);
}

// --- Dispatch

const DatabaseBus::Verb* DatabaseBus::findVerb(const BusFrame& frame, std::string* suffix) const
{
    std::string_view rest = frame.name.substr(sizeof Prefix - 1);
    for (const Verb& verb : Verbs) {
        size_t length = strlen(verb.name);
        if (verb.kind != frame.header.type || rest.compare(0, length, verb.name) != 0)
            continue;
        if (rest.size() > length && rest[length] != '.')
            continue;
        if (rest.size() > length)
            suffix->assign(rest.substr(length + 1));
        return &verb;
    }
    return nullptr;
}

void DatabaseBus::onSignal(const BusFrame& frame)
{
    std::string suffix;
    if (const Verb* verb = findVerb(frame, &suffix))
        (this->*verb->handler)(frame, suffix);
    else
        report(frame, "unknown signal");
}

void DatabaseBus::onRequest(const BusFrame& frame)
{
    std::string suffix;
    if (const Verb* verb = findVerb(frame, &suffix)) {
        (this->*verb->handler)(frame, suffix);
    } else {
        report(frame, "unknown request");
        server.reply(frame, {});
    }
}

void DatabaseBus::report(const BusFrame& frame, const std::string& problem) const
{
    if (hooks.log)
        hooks.log("client " + std::to_string(frame.client) + ": " + std::string(frame.name) + ": " + problem);
}

void DatabaseBus::note(uint64_t client, const char* verb, const Write& write, int32_t status) const
{
    if (hooks.onWrite)
        hooks.onWrite({client, verb, write.key, write.value, status});
    if (status != 0 && hooks.log)
        hooks.log("client " + std::to_string(client) + ": " + verb + " of " + write.key + " refused (" +
                  std::to_string(status) + ")");
}

int32_t DatabaseBus::check(const Write& write) const
{
    return readOnly.count(write.key) ? VX_CONFIG_READONLY : database.check(write);
}

template <typename T> static std::string_view bytesOf(const T& object)
{
    return {reinterpret_cast<const char*>(&object), sizeof object};
}

// --- Reading

void DatabaseBus::read(const BusFrame& frame, const std::string& suffix)
{
    ValueHead asked;
    ValueHead answer{VX_CONFIG_ERR, VX_CONFIG_TYPE_NONE, 0};
    if (frame.data.size() < sizeof asked) {
        report(frame, "too short");
        server.reply(frame, bytesOf(answer));
        return;
    }
    memcpy(&asked, frame.data.data(), sizeof asked);
    if (int32_t status = faultOf(suffix)) {
        // Of the type that was asked for: one that differs would hide the status.
        answer = {status, asked.type, 0};
        server.reply(frame, bytesOf(answer));
        return;
    }
    const Value* value = database.find(suffix);
    if (!value) {
        answer.status = VX_CONFIG_NO_RECORD;
        server.reply(frame, bytesOf(answer));
        return;
    }
    answer.type = static_cast<uint32_t>(value->type);
    if (asked.type != VX_CONFIG_TYPE_NONE && asked.type != answer.type) {
        answer.status = VX_CONFIG_WRONG_TYPE;
        server.reply(frame, bytesOf(answer));
        return;
    }
    answer.length = static_cast<uint32_t>(value->bytes.size());
    answer.status = answer.length > asked.length ? VX_CONFIG_BUFFER_TOO_SMALL : 0;
    server.reply(frame, bytesOf(answer), value->bytes);
}

void DatabaseBus::readMany(const BusFrame& frame, const std::string&)
{
    std::vector<VbufEntry> asked;
    if (!readVbuf(frame.data, &asked)) {
        report(frame, "malformed records");
        server.reply(frame, {});
        return;
    }
    // Room for every entry without its value is kept free, so that a reply always has one for each key.
    size_t room = CBUS_DATA_LIMIT - 1;
    for (const VbufEntry& entry : asked)
        room -= std::min(room, VbufWriter::entrySize(entry.key, 0));
    VbufWriter answer;
    for (const VbufEntry& entry : asked) {
        const Value* value = database.find(entry.key);
        int32_t status = faultOf(entry.key);
        if (!value) {
            answer.add(entry.type, entry.key, {}, status != 0 ? status : VX_CONFIG_NO_RECORD);
            continue;
        }
        uint32_t type = static_cast<uint32_t>(value->type);
        bool wrong = entry.type != VX_CONFIG_TYPE_NONE && entry.type != type;
        size_t size =
            VbufWriter::entrySize(entry.key, value->bytes.size()) - VbufWriter::entrySize(entry.key, 0);
        if (wrong || size > room) {
            answer.add(type, entry.key, {}, wrong ? VX_CONFIG_WRONG_TYPE : VX_CONFIG_DB_ERR);
            continue;
        }
        room -= size;
        // With its value all the same: a client takes a number without bytes for a wrong type.
        answer.add(type, entry.key, value->bytes, status);
    }
    server.reply(frame, answer.bytes());
}

void DatabaseBus::list(const BusFrame& frame, const std::string& suffix)
{
    std::optional<KeyExpression> expression = KeyExpression::compile(suffix);
    if (!expression) {
        report(frame, "bad expression");
        server.reply(frame, {});
        return;
    }
    if (faultOf("") != 0) { // the message has no place for a status
        server.reply(frame, {});
        return;
    }
    struct Head {
        int32_t status;
        uint32_t count;
    } head{0, 0};
    VbufWriter records;
    for (const std::string& key : database.keysMatching(*expression)) {
        const Value* value = database.find(key);
        if (sizeof head + records.size() + VbufWriter::entrySize(key, value->bytes.size()) >=
            CBUS_DATA_LIMIT) {
            report(frame, "more than a message can hold");
            server.reply(frame, {});
            return;
        }
        records.add(static_cast<uint32_t>(value->type), key, value->bytes);
        head.count++;
    }
    if (head.count)
        server.reply(frame, bytesOf(head), records.bytes());
    else
        server.reply(frame, {});
}

void DatabaseBus::stat(const BusFrame& frame, const std::string& suffix)
{
    struct {
        int32_t status;
        uint32_t value;
    } answer{VX_CONFIG_NO_RECORD, 0};
    if (int32_t status = faultOf(suffix))
        answer.status = status;
    else if (const Value* value = database.find(suffix))
        answer = {0, static_cast<uint32_t>(value->bytes.size())};
    server.reply(frame, bytesOf(answer));
}

void DatabaseBus::factoryReset(const BusFrame& frame, const std::string&)
{
    writer = frame.client;
    int32_t status = hooks.onFactoryReset ? hooks.onFactoryReset() : VX_CONFIG_ERR;
    writer = 0;
    server.reply(frame, bytesOf(status));
}

// --- Writing

void DatabaseBus::apply(uint64_t client, const std::vector<Write>& writes)
{
    writer = client;
    database.apply(writes);
    writer = 0; // nothing may have changed
}

void DatabaseBus::writeAll(uint64_t client, const char* verb, const std::vector<Write>& writes)
{
    std::vector<Write> accepted;
    for (const Write& write : writes) {
        int32_t status = check(write);
        note(client, verb, write, status);
        if (status == 0)
            accepted.push_back(write);
    }
    apply(client, accepted);
}

static Write writeOf(uint32_t type, const std::string& key, std::string_view value)
{
    // What is no type at all must not become one by losing its upper bits.
    return {key, {static_cast<Type>(std::min<uint32_t>(type, 255)), std::string(value)}};
}

void DatabaseBus::write(const BusFrame& frame, const std::string& suffix)
{
    ValueHead head;
    if (frame.data.size() >= sizeof head)
        memcpy(&head, frame.data.data(), sizeof head);
    if (frame.data.size() < sizeof head || frame.data.size() - sizeof head < head.length) {
        report(frame, "too short");
        return;
    }
    writeAll(frame.client, "write",
             {writeOf(head.type, suffix, frame.data.substr(sizeof head, head.length))});
}

static bool readWrites(const BusFrame& frame, std::vector<Write>* writes)
{
    std::vector<VbufEntry> entries;
    if (!readVbuf(frame.data, &entries))
        return false;
    for (const VbufEntry& entry : entries)
        writes->push_back(writeOf(entry.type, entry.key, entry.value));
    return true;
}

void DatabaseBus::writeMany(const BusFrame& frame, const std::string&)
{
    std::vector<Write> writes;
    if (readWrites(frame, &writes))
        writeAll(frame.client, "writev", writes);
    else
        report(frame, "malformed records");
}

void DatabaseBus::removeMatching(const BusFrame& frame, const std::string& suffix)
{
    std::optional<KeyExpression> expression = KeyExpression::compile(suffix);
    if (!expression) {
        report(frame, "bad expression");
        return;
    }
    std::vector<Write> writes;
    for (const std::string& key : database.keysMatching(*expression))
        writes.push_back({key, Value()});
    writeAll(frame.client, "delm", writes);
}

void DatabaseBus::modify(const BusFrame& frame, const std::string&)
{
    std::vector<Write> writes;
    if (!readWrites(frame, &writes)) {
        report(frame, "malformed records");
        server.reply(frame, {});
        return;
    }
    auto validation = std::make_shared<Validation>();
    validation->owner = this;
    validation->requester = {frame.client, frame.header.src, frame.header.seqn, std::string(frame.name)};
    for (const Write& write : writes) {
        int32_t status = faultOf(write.key);
        validation->statuses.push_back(status != 0 ? status : check(write));
    }
    validation->writes = std::move(writes);
    ask(validation);
    finishIfDone(validation);
}

void DatabaseBus::sync(const BusFrame&, const std::string& suffix)
{
    if (hooks.onSync)
        hooks.onSync(suffix);
}

// --- Changes

void DatabaseBus::publishChanges(const std::vector<Write>& changes)
{
    // What the terminal's processes make of these changes is their own doing.
    uint64_t cause = std::exchange(writer, 0);
    std::vector<std::string> components;
    std::map<std::string, std::vector<const Write*>, std::less<>> byComponent;
    for (const Write& change : changes) {
        std::string component(firstComponent(change.key));
        std::vector<const Write*>& group = byComponent[component];
        if (group.empty())
            components.push_back(component);
        group.push_back(&change);
    }
    for (const std::string& component : components)
        publishComponent(component, byComponent[component], cause);
}

// Normally one signal; more only where a message could not hold all of it.
void DatabaseBus::publishComponent(const std::string& component, const std::vector<const Write*>& changes,
                                   uint64_t cause)
{
    std::string name = "config.change." + component;
    if (!server.isHeard(name))
        return;
    auto records = std::make_unique<VbufWriter>();
    for (const Write* change : changes) {
        if (records->size() + VbufWriter::entrySize(change->key, change->value.bytes.size()) >=
            CBUS_DATA_LIMIT) {
            server.publish(name, records->bytes(), cause);
            records = std::make_unique<VbufWriter>();
        }
        records->add(static_cast<uint32_t>(change->value.type), change->key, change->value.bytes);
    }
    server.publish(name, records->bytes(), cause);
}

} // namespace sim
