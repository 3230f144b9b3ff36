// get, set, list, watch and the rest, on the runtime's configuration client.
#include "sim/client_commands.h"

#include "sim/command_actor.h"
#include "sim/initial_values.h"

#include "runtime/cbus.h"
#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"

#include <algorithm>
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

// A command for one of the terminal's processes goes into its key; it has been carried out, or refused, when
// the write is answered.
int command(const std::string& name, const Arguments& arguments)
{
    const std::string key = CommandPrefix + name;
    if (modify(key, Value::text(joined(arguments, 0))) != 0)
        return 1;
    uint32_t length = 0;
    if (config_status(key.c_str(), &length) == 0)
        return fail("%s: nobody there carries out commands", name.c_str());
    char reason[512];
    int status = config_read_string(CommandError, reason, sizeof reason);
    if (status == VX_CONFIG_NO_RECORD)
        return 0;
    return fail("%s", status == 0 ? reason : statusText(status));
}

bool isCommand(const std::string& name)
{
    const std::vector<CommandForm>& forms = commandForms();
    return std::any_of(forms.begin(), forms.end(),
                       [&](const CommandForm& form) { return name == form.name; });
}

struct Request {
    const char* name;
    size_t arguments;
    int (*run)(Session& session, const Arguments& arguments);
    const char* form; // of the arguments
    const char* help;
};
const Request Requests[] = {
    {"get", 1, get, "KEY", "print a value"},
    {"set", 2, set, "KEY TYPE:VALUE", "write a value: int:5, string:text, blob:00ff"},
    {"delete", 1, remove, "KEY", "delete a key"},
    {"list", 1, list, "EXPRESSION", "print all keys that match a regular expression, with values"},
    {"watch", 1, watch, "PREFIX", "print changes of keys that begin so, until Ctrl-C"},
    {"status", 1, status, "KEY", "print the length of a value"},
    {"sync", 0, sync, "", "save the settings"},
    {"reset", 0, reset, "", "factory reset of the settings"},
    {"pointing", 1, pointing, "COMMAND", "send a pointing command: start, stop or cancel"},
};

const Request* findRequest(const std::string& name)
{
    for (const Request& request : Requests) {
        if (name == request.name)
            return &request;
    }
    return nullptr;
}

void printForm(const std::string& form, const char* help)
{
    constexpr int Width = 34;
    if (form.size() > Width)
        printf("  %s\n  %*s %s\n", form.c_str(), Width, "", help);
    else
        printf("  %-*s %s\n", Width, form.c_str(), help);
}

} // namespace

int runClientCommand(const std::string& address, const std::vector<std::string>& words)
{
    const std::string& name = words[0];
    const Request* request = findRequest(name);
    if (!request && !isCommand(name)) {
        fail("unknown command %s (--help tells more)", name.c_str());
        return 2;
    }
    if (request ? words.size() != request->arguments + 1 : words.size() < 2) {
        fail("%s: wrong number of arguments (--help tells more)", name.c_str());
        return 2;
    }
    setenv("CBUS_ADDR", address.c_str(), 1);
    Session session{fdloop_init(), nullptr};
    session.connection = cbus_conn_create(session.loop, "terminalsim");
    if (!session.connection)
        return fail("no bus at %s", address.c_str());
    config_init_cbus(session.connection, nullptr);
    Arguments arguments(words.begin() + 1, words.end());
    int result = request ? request->run(session, arguments) : command(name, arguments);
    fflush(stdout);
    return result;
}

void printCommandHelp()
{
    puts("\ncommands:");
    for (const Request& request : Requests)
        printForm(request.name + (" " + std::string(request.form)), request.help);
    puts("\ncommands to the processes of the terminal:");
    for (const CommandForm& form : commandForms())
        printForm(form.name + (" " + std::string(form.words)), form.help);
}

} // namespace sim
