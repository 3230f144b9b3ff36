// The configuration client's start, its way to the bus, single keys, debug flags.
// Vectors, changes, validators, blocks and options have sources of their own.
// Thread of the connections; for exceptions see the header.
#include "runtime/config_client_api.h"

#include <stdlib.h>
#include <string.h>

#include "runtime/config_client_impl.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_posix_reset.h"
#include "runtime/vx_string.h"

config_state_t config_state;

namespace {

// What the database expects in the first word of a message about a single key.
const int32_t no_status = -1;

// The payloads of the single-key messages, as on the wire.
struct read_request_t {
    int32_t status;
    uint32_t type;
    uint32_t size;
};
static_assert(sizeof(read_request_t) == 12, "three words on the wire");

// In front of a value, in a read reply and in a write.
struct value_header_t {
    int32_t status;
    uint32_t type;
    uint32_t length;
};
static_assert(sizeof(value_header_t) == 12, "three words on the wire");

struct stat_reply_t {
    int32_t status;
    uint32_t value;
};
static_assert(sizeof(stat_reply_t) == 8, "two words on the wire");

// Put together by hand: printf would cost as much as all the rest of a request in user space.
void message_name(char* name, const char* verb, const char* suffix)
{
    size_t length = vx_strlcpy(name, "config.", CONFIG_NAME_SIZE);
    length += vx_strlcpy(name + length, verb, CONFIG_NAME_SIZE - length);
    if (!suffix || !*suffix)
        return;
    name[length++] = '.';
    if (vx_strlcpy(name + length, suffix, CONFIG_NAME_SIZE - length) >= CONFIG_NAME_SIZE - length)
        vx_slog(CONFIG_PRIO_ERROR, "config: message name cut to \"%s\"\n", name);
}

// Sends a request about one key or none and takes a reply of just `size` bytes. False if the bus failed.
bool ask(const char* verb, const char* suffix, void* answer, int size)
{
    void* reply;
    const int n = config_request(verb, suffix, &no_status, sizeof(no_status), &reply);
    if (n < 0)
        return false;
    VX_ASSERT(n == size);
    memcpy(answer, reply, static_cast<size_t>(size));
    free(reply);
    return true;
}

bool is_on(char first)
{
    return first == 'y' || first == 'Y';
}

} // namespace

int config_init_cbus(cbus_conn_t* req, cbus_conn_t* notify)
{
    if (!req)
        vx_panic("Could not connect to cbus server\n");
    config_state.req = req;
    config_state.notify = notify ? notify : req;
    cbus_client_init_cb(config_state.notify);
    cbus_client_signal_cb_add(config_state.notify, "config.change.", config_handle_change, nullptr);
    cbus_client_signal_cb_add(config_state.notify, "config.clnt_validate.", config_handle_validate, nullptr);
    return 0;
}

void config_reset_for_test()
{
    for (uint32_t i = 0; i < config_state.change_count; ++i)
        free(config_state.changes[i].key);
    for (uint32_t i = 0; i < config_state.validator_count; ++i)
        free(config_state.validators[i].name);
    free(config_state.changes);
    free(config_state.validators);
    config_state = config_state_t();
}

// --- Shared with the other sources ----------------------------------------------------------------------

int config_signal(const char* verb, const char* suffix, const void* data, uint32_t len)
{
    char name[CONFIG_NAME_SIZE];
    message_name(name, verb, suffix);
    return config_state.req ? cbus_send_signal(config_state.req, name, data, len) : -1;
}

int config_request(const char* verb, const char* suffix, const void* data, uint32_t len, void** reply)
{
    char name[CONFIG_NAME_SIZE];
    message_name(name, verb, suffix);
    *reply = nullptr;
    const int cookie = config_state.req ? cbus_send_request(config_state.req, name, data, len) : -1;
    return cookie < 0 ? -1 : cbus_get_reply(config_state.req, cookie, reply);
}

void config_filter(const char* kind, const char* word, int word_length)
{
    char text[CONFIG_NAME_SIZE];
    vx_snprintf(text, sizeof(text), "config.%s.%.*s", kind, word_length, word);
    if (config_state.notify)
        cbus_filter(config_state.notify, text);
}

char* config_copy_text(const char* text)
{
    const size_t size = strlen(text) + 1;
    char* copy = static_cast<char*>(vx_calloc(1, size));
    if (copy)
        memcpy(copy, text, size);
    return copy;
}

void* config_grow_bytes(void* rows, uint32_t count, uint32_t more, uint32_t row_size)
{
    void* bigger = vx_calloc(static_cast<size_t>(count) + more, row_size);
    if (!bigger)
        return nullptr;
    if (count)
        memcpy(bigger, rows, static_cast<size_t>(count) * row_size);
    free(rows);
    return bigger;
}

void config_fill_record(config_data_t* rec, uint32_t type, const char* key, void* value, uint32_t length,
                        int32_t status)
{
    if (type == VX_CONFIG_TYPE_STRING && length) {
        char* last = static_cast<char*>(value) + length - 1;
        if (*last)
            vx_slog(CONFIG_PRIO_ERROR, "config: text of %s without its NUL, cut\n", key);
        *last = 0;
    }
    rec->type = type;
    rec->name = key;
    rec->data = length ? value : nullptr;
    rec->size = length;
    rec->length = length;
    rec->status = status;
}

// --- Single keys ----------------------------------------------------------------------------------------

int config_read_typed(const char* key, void* buf, uint32_t size, uint32_t* length, uint32_t* type)
{
    const uint32_t want = type ? *type : uint32_t(VX_CONFIG_TYPE_NONE);
    const read_request_t request = {no_status, want, size};
    void* reply;
    const int n = config_request("read", key, &request, sizeof(request), &reply);
    if (n < 1) {
        free(reply);
        return VX_CONFIG_ERR;
    }
    value_header_t header;
    VX_ASSERT(n >= static_cast<int>(sizeof(header)));
    memcpy(&header, reply, sizeof(header));
    VX_ASSERT(header.length == static_cast<uint32_t>(n) - sizeof(header));

    const uint32_t fits = size < header.length ? size : header.length;
    if (type)
        *type = header.type;
    if (length)
        *length = fits;
    int status = header.status;
    if (status == 0 || status == VX_CONFIG_BUFFER_TOO_SMALL) {
        if (want != VX_CONFIG_TYPE_NONE && header.type != want)
            status = VX_CONFIG_WRONG_TYPE;
        else if (buf && fits)
            memcpy(buf, static_cast<const uint8_t*>(reply) + sizeof(header), fits);
    }
    free(reply);
    return status;
}

int config_read_int(const char* key, int* out)
{
    int32_t value;
    uint32_t length;
    uint32_t type = VX_CONFIG_TYPE_INT;
    const int status = config_read_typed(key, &value, sizeof(value), &length, &type);
    if (status != 0)
        return status;
    if (length != sizeof(value))
        return VX_CONFIG_WRONG_TYPE;
    *out = value;
    return 0;
}

int config_read_string(const char* key, char* buf, uint32_t size)
{
    if (!buf || size == 0)
        return VX_CONFIG_BUFFER_TOO_SMALL;
    uint32_t length;
    uint32_t type = VX_CONFIG_TYPE_STRING;
    const int status = config_read_typed(key, buf, size, &length, &type);
    if (status != 0 && status != VX_CONFIG_BUFFER_TOO_SMALL)
        return status;
    buf[length < size ? length : size - 1] = 0;
    return 0;
}

int config_write_typed(const char* key, const void* value, uint32_t length, uint32_t type)
{
    uint8_t area[200]; // nearly every value is small, and is then sent without an allocation
    const uint32_t vlen = value ? length : 0;
    const value_header_t header = {no_status, type, vlen};
    const size_t size = sizeof(header) + vlen;
    uint8_t* message = area;
    if (size > sizeof(area)) {
        message = static_cast<uint8_t*>(vx_calloc(1, size));
        VX_ASSERT(message);
    }
    memcpy(message, &header, sizeof(header));
    if (vlen)
        memcpy(message + sizeof(header), value, vlen);
    config_signal("write", key, message, static_cast<uint32_t>(size));
    if (message != area)
        free(message);
    return 0;
}

int config_write_int(const char* key, int value)
{
    const int32_t word = value;
    return config_write_typed(key, &word, sizeof(word), VX_CONFIG_TYPE_INT);
}

int config_write_string(const char* key, const char* text)
{
    const uint32_t length = text ? static_cast<uint32_t>(strlen(text) + 1) : 0;
    return config_write_typed(key, text, length, VX_CONFIG_TYPE_STRING);
}

int config_delete(const char* key)
{
    return config_write_typed(key, nullptr, 0, VX_CONFIG_TYPE_NONE);
}

int config_status(const char* key, uint32_t* value)
{
    stat_reply_t reply;
    if (!ask("stat", key, &reply, sizeof(reply)))
        return VX_CONFIG_ERR;
    if (value)
        *value = reply.value;
    return reply.status;
}

// --- The database ---------------------------------------------------------------------------------------

int config_sync(const char* area)
{
    return config_signal("sync", area, nullptr, 0);
}

int config_factory_reset()
{
    int32_t status;
    return ask("factory_reset", nullptr, &status, sizeof(status)) ? status : VX_CONFIG_ERR;
}

// --- Debug flags ----------------------------------------------------------------------------------------

int config_dbg_set(const char* key, int on)
{
    return on ? config_write_string(key, "yes") : config_delete(key);
}

int config_dbg_test(const char* key)
{
    char text[2]; // one character decides
    return config_read_string(key, text, sizeof(text)) == 0 ? config_dbg_test_value(text) : 0;
}

int config_dbg_test_value(const char* text)
{
    return text && is_on(*text);
}
