// get, set, list, watch and the rest, on the runtime's configuration client.
#include "sim/client_commands.h"

#include "sim/initial_values.h"

#include "runtime/cbus.h"
#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace sim {

namespace {

struct Session {
    fdloop_t* loop;
    cbus_conn_t* connection;
};
using Arguments = std::vector<std::string>;

__attribute__((format(printf, 1, 2))) int fail(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fputs("terminalsim: ", stderr);
    vfprintf(stderr, format, arguments);
    fputc('\n', stderr);
    va_end(arguments);
    return 1;
}

struct StatusName {
    int status;
    const char* text;
};
const StatusName StatusNames[] = {
    {VX_CONFIG_ERR, "the bus failed"},
    {VX_CONFIG_DB_ERR, "database error"},
    {VX_CONFIG_DB_FULL, "the database is full"},
    {VX_CONFIG_READONLY, "read-only"},
    {VX_CONFIG_NO_RECORD, "not in the database"},
    {VX_CONFIG_WRONG_TYPE, "wrong type"},
    {VX_CONFIG_BUFFER_TOO_SMALL, "too long"},
    {VX_CONFIG_VERIFY_FAIL, "refused by its validator"},
};

const char* statusText(int status)
{
    for (const StatusName& row : StatusNames) {
        if (row.status == status)
            return row.text;
    }
    return "unknown status";
}

void printRecord(const config_data_t& record)
{
    Value value{static_cast<Type>(record.type),
                record.data ? std::string(static_cast<const char*>(record.data), record.length)
                            : std::string()};
    if (!record.data)
        value.type = Type::None;
    printf("%s = %s\n", record.name, describeValue(value).c_str());
}

int get(Session&, const Arguments& arguments)
{
    std::string buffer(Database::MaxValueLength, '\0');
    uint32_t length = 0;
    uint32_t type = VX_CONFIG_TYPE_NONE;
    int status = config_read_typed(arguments[0].c_str(), &buffer[0], static_cast<uint32_t>(buffer.size()),
                                   &length, &type);
    if (status != 0)
        return fail("%s: %s", arguments[0].c_str(), statusText(status));
    buffer.resize(length);
    puts(describeValue({static_cast<Type>(type), buffer}).c_str());
    return 0;
}

// With an answer, unlike the display's own writes: what is typed by hand should tell when it was in vain.
int modify(const std::string& key, const Value& value)
{
    config_data_t record{};
    record.type = static_cast<uint32_t>(value.type);
    record.name = key.c_str();
    record.data = value.bytes.empty() ? nullptr : const_cast<char*>(value.bytes.data());
    record.size = static_cast<uint32_t>(value.bytes.size());
    int status = config_modifyv("terminalsim", 1, &record);
    return status == 0 ? 0 : fail("%s: %s", key.c_str(), statusText(status));
}

int set(Session&, const Arguments& arguments)
{
    Value value;
    std::string error;
    if (!parseShortValue(arguments[1], &value, &error)) {
        fail("%s", error.c_str());
        return 2;
    }
    return modify(arguments[0], value);
}

int remove(Session&, const Arguments& arguments)
{
    return modify(arguments[0], Value());
}

int list(Session&, const Arguments& arguments)
{
    uint32_t count = 0;
    config_data_t* records = nullptr;
    int status = config_readm(arguments[0].c_str(), &count, &records);
    for (uint32_t at = 0; at < count; at++)
        printRecord(records[at]);
    free(records);
    return status < 0 ? fail("%s: %s", arguments[0].c_str(), statusText(status)) : 0;
}

void onChange(unsigned count, const config_data_t* records, void*, const config_change_row_t*)
{
    for (unsigned at = 0; at < count; at++)
        printRecord(records[at]);
    fflush(stdout);
}

int watch(Session& session, const Arguments& arguments)
{
    config_change_register(arguments[0].c_str(), onChange, nullptr);
    fdloop_loop(session.loop); // ends when the bus goes away, which leaves nothing to wait for
    return fail("the bus has gone away");
}

int status(Session&, const Arguments& arguments)
{
    uint32_t length = 0;
    int result = config_status(arguments[0].c_str(), &length);
    if (result != 0)
        return fail("%s: %s", arguments[0].c_str(), statusText(result));
    printf("%u\n", length);
    return 0;
}

int sync(Session&, const Arguments&)
{
    return config_sync("cfg") == 0 ? 0 : fail("the bus failed");
}

int reset(Session&, const Arguments&)
{
    int result = config_factory_reset();
    return result == 0 ? 0 : fail("factory reset: %s", statusText(result));
}

int pointing(Session& session, const Arguments& arguments)
{
    const std::string& text = arguments[0];
    uint32_t length = static_cast<uint32_t>(text.size() + 1);
    return cbus_send_signal(session.connection, "bp_ctrl.pointing", text.c_str(), length) == 0
               ? 0
               : fail("the bus failed");
}

struct Command {
    const char* name;
    size_t arguments;
    int (*run)(Session& session, const Arguments& arguments);
};
const Command Commands[] = {
    {"get", 1, get},   {"set", 2, set},     {"delete", 1, remove},
    {"list", 1, list}, {"watch", 1, watch}, {"status", 1, status},
    {"sync", 0, sync}, {"reset", 0, reset}, {"pointing", 1, pointing},
};

} // namespace

int runClientCommand(const std::string& address, const std::vector<std::string>& command)
{
    const Command* found = nullptr;
    for (const Command& candidate : Commands) {
        if (command[0] == candidate.name)
            found = &candidate;
    }
    if (!found || command.size() != found->arguments + 1) {
        fail(found ? "%s: wrong number of arguments (--help tells more)"
                   : "unknown command %s (--help tells more)",
             command[0].c_str());
        return 2;
    }
    setenv("CBUS_ADDR", address.c_str(), 1);
    Session session{fdloop_init(), nullptr};
    session.connection = cbus_conn_create(session.loop, "terminalsim");
    if (!session.connection)
        return fail("no bus at %s", address.c_str());
    config_init_cbus(session.connection, nullptr);
    int result = found->run(session, Arguments(command.begin() + 1, command.end()));
    fflush(stdout);
    return result;
}

} // namespace sim
