// Validators: the database asks, before it takes keys, whether their values are good.
// Thread of the connections.
#define VX_ASSERT_SOURCE "config_client_api"
#include "runtime/config_client_api.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "runtime/config_client_impl.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_posix_reset.h"

namespace {

enum {
    SCRATCH_SIZE = 65000,
    SCRATCH_RECORDS = SCRATCH_SIZE / sizeof(config_data_t),
};

struct scratch_t {
    config_data_t* recs;
    uint32_t count;
    uint32_t refused;
};

int take_record(void* ctx, uint32_t type, const char* key, void* value, uint32_t length, int32_t)
{
    scratch_t* scratch = static_cast<scratch_t*>(ctx);
    if (scratch->count == SCRATCH_RECORDS) {
        ++scratch->refused;
        return 0;
    }
    config_data_t* rec = &scratch->recs[scratch->count++];
    config_fill_record(rec, type, key, value, length, CONFIG_VALIDATE_STATUS_INITIAL);
    rec->length = 0;
    return 0;
}

const config_validator_row_t* find(const char* name)
{
    for (uint32_t i = 0; i < config_state.validator_count; ++i) {
        if (strcmp(config_state.validators[i].name, name) == 0)
            return &config_state.validators[i];
    }
    return nullptr;
}

// All records with their status; nothing at all if there are none.
void respond(const scratch_t& scratch)
{
    uint8_t* buf = nullptr;
    uint32_t len = 0;
    for (uint32_t i = 0; i < scratch.count; ++i) {
        const config_data_t& rec = scratch.recs[i];
        len = config_vbuf_add(&buf, len, nullptr, rec.type, rec.name, rec.data, rec.size,
                              static_cast<int8_t>(rec.status));
    }
    config_signal("validate.rsp", nullptr, buf, len);
    free(buf);
}

} // namespace

int config_handle_validate(cbus_conn_t*, void*, const char* name, void* data, uint32_t len)
{
    char id[100];
    if (sscanf(name, "config.clnt_validate.%99s", id) != 1)
        vx_panic("Error retrieving identifying name from %s\n", name);
    const config_validator_row_t* found = find(id);
    VX_ASSERT(found);
    const config_validator_row_t row = *found;
    scratch_t scratch = {static_cast<config_data_t*>(vx_calloc(1, SCRATCH_SIZE)), 0, 0};
    VX_ASSERT(scratch.recs);
    config_vbuf_parse(data, len, take_record, &scratch);
    if (scratch.refused)
        vx_slog(CONFIG_PRIO_ERROR, "config: %u records for validator %s refused, no room\n", scratch.refused,
                id);
    row.func(scratch.count, scratch.recs, row.data);
    respond(scratch);
    free(scratch.recs);
    return 0;
}

int config_validator_register(config_validator_func_t func, const char* name, void* data)
{
    VX_ASSERT(name);
    VX_ASSERT(func);
    VX_ASSERT(strlen(name) <= CONFIG_VALIDATOR_NAME_MAX);
    const int length = static_cast<int>(strlen(name));
    config_filter("clnt_validate", name, length);
    if (config_signal("validate.register", nullptr, name, static_cast<uint32_t>(length) + 1) != 0)
        return -1;
    config_state.validators = config_grow_by_one(config_state.validators, config_state.validator_count);
    VX_ASSERT(config_state.validators);
    config_validator_row_t& row = config_state.validators[config_state.validator_count];
    row.name = config_copy_text(name);
    VX_ASSERT(row.name);
    row.func = func;
    row.data = data;
    ++config_state.validator_count;
    return 0;
}
