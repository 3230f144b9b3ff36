// What the sources of the configuration client share: its state, and the way from a verb to the bus.
// For those sources only.
#ifndef RUNTIME_CONFIG_CLIENT_IMPL_H
#define RUNTIME_CONFIG_CLIENT_IMPL_H

#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"

struct config_validator_row_t {
    char* name;
    config_validator_func_t func;
    void* data;
};

// One set for the process, without a lock. The connections are null before config_init_cbus().
struct config_state_t {
    cbus_conn_t* req;
    cbus_conn_t* notify;
    config_change_row_t* changes;
    uint32_t change_count;
    config_validator_row_t* validators;
    uint32_t validator_count;
};

extern config_state_t config_state;

enum {
    CONFIG_NAME_SIZE = 512, // of a message name or filter, NUL included
    CONFIG_PRIO_ERROR = 3,
};

// Sends "config." + verb + "." + suffix; without a suffix the dot goes too. Returns as cbus_send_signal().
int config_signal(const char* verb, const char* suffix, const void* data, uint32_t len);

// The same as a request, and the wait for its reply, which the caller frees. Returns its length or -1.
int config_request(const char* verb, const char* suffix, const void* data, uint32_t len, void** reply);

// Filters "config." + kind + word on the notification connection.
void config_filter(const char* kind, const char* word, int word_length);

// A copy of a text, or null without memory.
char* config_copy_text(const char* text);

// An array of `count` rows with room for `more` at its end, zeroed; the old block is freed. Null, with the
// old block as it was, if there is no memory.
void* config_grow_bytes(void* rows, uint32_t count, uint32_t more, uint32_t row_size);

template <typename Row> Row* config_grow(Row* rows, uint32_t count, uint32_t more = 1)
{
    return static_cast<Row*>(config_grow_bytes(rows, count, more, sizeof(Row)));
}

// The same for one row more, where rows come one by one: the block doubles whenever their number is a power
// of two, so that it needs no capacity beside it and many rows are not moved at each new one.
template <typename Row> Row* config_grow_by_one(Row* rows, uint32_t count)
{
    return count & (count - 1) ? rows : config_grow(rows, count, count ? count : 1);
}

// Fills a record from an entry of a message. The value belongs to the message and may be changed: a text
// without its NUL gets it in place of its last byte, and a log line, since handlers read it as a string.
void config_fill_record(config_data_t* rec, uint32_t type, const char* key, void* value, uint32_t length,
                        int32_t status);

// Deliver "config.change." and "config.clnt_validate." signals.
int config_handle_change(cbus_conn_t* conn, void* user, const char* name, void* data, uint32_t len);
int config_handle_validate(cbus_conn_t* conn, void* user, const char* name, void* data, uint32_t len);

#endif
