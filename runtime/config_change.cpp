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

// A message taken apart once for all rows, and the array that the handlers are given, used for one row after
// the other. Both arrays have room for all entries.
struct change_t {
    config_vbuf_entry_t* entries;
    uint32_t entry_count;
    config_data_t* recs;
    uint32_t rec_count;
};

int component_length(const char* key)
{
    return static_cast<int>(strcspn(key, "."));
}

// The number of whole entries. What follows them is logged once and not looked at again.
uint32_t count_entries(const char* name, const void* data, uint32_t len)
{
    uint32_t count = 0;
    uint32_t pos = 0;
    config_vbuf_entry_t entry;
    for (; pos < len && config_vbuf_entry_at(data, len, pos, &entry); pos += entry.distance)
        ++count;
    if (pos < len)
        vx_slog(CONFIG_PRIO_ERROR, "config: broken entry at %u of %u bytes in %s\n", pos, len, name);
    return count;
}

change_t take_apart(const char* name, const void* data, uint32_t len)
{
    change_t change = {nullptr, count_entries(name, data, len), nullptr, 0};
    if (change.entry_count == 0)
        return change;
    change.entries = config_grow<config_vbuf_entry_t>(nullptr, 0, change.entry_count);
    VX_ASSERT(change.entries);
    change.recs = config_grow<config_data_t>(nullptr, 0, change.entry_count);
    VX_ASSERT(change.recs);
    uint32_t pos = 0;
    for (uint32_t i = 0; i < change.entry_count; pos += change.entries[i++].distance)
        config_vbuf_entry_at(data, len, pos, &change.entries[i]);
    return change;
}

// Matching is by plain prefix: "ram.status.battery" takes "ram.status.battery.1.status".
void collect(change_t* change, const char* prefix)
{
    const size_t length = strlen(prefix);
    change->rec_count = 0;
    for (uint32_t i = 0; i < change->entry_count; ++i) {
        const config_vbuf_entry_t& entry = change->entries[i];
        if (strncmp(entry.key, prefix, length) == 0)
            config_fill_record(&change->recs[change->rec_count++], entry.type, entry.key,
                               const_cast<void*>(entry.value), entry.length, 0);
    }
}

} // namespace

int config_handle_change(cbus_conn_t*, void*, const char* name, void* data, uint32_t len)
{
    change_t change = take_apart(name, data, len);
    for (uint32_t i = 0; i < config_state.change_count; ++i) {
        // A copy: the handler may subscribe, and the table then moves.
        const config_change_row_t row = config_state.changes[i];
        collect(&change, row.key);
        if (change.rec_count)
            row.func(change.rec_count, change.recs, row.data, &row);
    }
    free(change.entries);
    free(change.recs);
    return 0;
}

int config_change_register(const char* key, config_change_func_t func, void* data)
{
    VX_ASSERT(func);
    // Sent for each subscription, repeated or not.
    config_filter("change", key, component_length(key));
    config_state.changes = config_grow_by_one(config_state.changes, config_state.change_count);
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
