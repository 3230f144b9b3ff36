// Subscriptions to changes of keys, and their delivery.
// Thread of the notification connection.
#define VX_ASSERT_SOURCE "config_client_api"
#include "runtime/config_client_api.h"

#include <stdlib.h>
#include <string.h>

#include "runtime/config_client_impl.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_string.h"

namespace {

// The array that the handlers are given, used for one row after the other.
struct records_t {
    config_data_t* recs;
    uint32_t room;
    uint32_t count;
};

int component_length(const char* key)
{
    return static_cast<int>(strcspn(key, "."));
}

// How much of the message consists of whole entries. What follows is logged once and not looked at again.
uint32_t whole_entries(const char* name, const void* data, uint32_t len)
{
    uint32_t pos = 0;
    config_vbuf_entry_t entry;
    while (pos < len && config_vbuf_entry_at(data, len, pos, &entry))
        pos += entry.distance;
    if (pos < len)
        vx_slog(CONFIG_PRIO_ERROR, "config: broken entry at %u of %u bytes in %s\n", pos, len, name);
    return pos;
}

void append(records_t* list, const config_vbuf_entry_t& entry)
{
    const uint32_t step = 8;
    if (list->count == list->room) {
        list->recs = config_grow(list->recs, list->room, step);
        VX_ASSERT(list->recs);
        list->room += step;
    }
    config_fill_record(&list->recs[list->count++], entry.type, entry.key, const_cast<void*>(entry.value),
                       entry.length, 0);
}

// Matching is by plain prefix: "ram.status.battery" takes "ram.status.battery.1.status".
void collect(records_t* list, const char* prefix, const void* data, uint32_t len)
{
    const size_t length = strlen(prefix);
    config_vbuf_entry_t entry;
    list->count = 0;
    for (uint32_t pos = 0; pos < len && config_vbuf_entry_at(data, len, pos, &entry); pos += entry.distance) {
        if (strncmp(entry.key, prefix, length) == 0)
            append(list, entry);
    }
}

} // namespace

int config_handle_change(cbus_conn_t*, void*, const char* name, void* data, uint32_t len)
{
    const uint32_t usable = whole_entries(name, data, len);
    records_t list = {nullptr, 0, 0};
    for (uint32_t i = 0; i < config_state.change_count; ++i) {
        // A copy: the handler may subscribe, and the table then moves.
        const config_change_row_t row = config_state.changes[i];
        collect(&list, row.key, data, usable);
        if (list.count)
            row.func(list.count, list.recs, row.data, &row);
    }
    free(list.recs);
    return 0;
}

int config_change_register(const char* key, config_change_func_t func, void* data)
{
    VX_ASSERT(func);
    // Sent for each subscription, repeated or not.
    config_filter("change", key, component_length(key));
    config_state.changes = config_grow(config_state.changes, config_state.change_count);
    VX_ASSERT(config_state.changes);
    config_change_row_t& row = config_state.changes[config_state.change_count];
    row.key = config_copy_text(key);
    VX_ASSERT(row.key);
    row.func = func;
    row.data = data;
    ++config_state.change_count;
    return 0;
}

int config_change_deregister(const char* key, config_change_func_t func, void* data)
{
    for (uint32_t i = 0; i < config_state.change_count; ++i) {
        config_change_row_t& row = config_state.changes[i];
        if (row.func != func || row.data != data || strcmp(row.key, key) != 0)
            continue;
        free(row.key);
        --config_state.change_count;
        memmove(&row, &row + 1, (config_state.change_count - i) * sizeof(row));
        break;
    }
    // The text that would lift the filter is formed and kept back, on purpose: other subscriptions, here or
    // registered twice, may live on the same filter, and the server counts none.
    char lift[CONFIG_NAME_SIZE];
    vx_snprintf(lift, sizeof(lift), "-%s%s.%.*s", "config.", "change", component_length(key), key);
    return 0;
}
