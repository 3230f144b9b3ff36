// Reading, writing and listing many keys in one message.
// Thread of the connections, but config_writev(), which any thread may call.
#define VX_ASSERT_SOURCE "config_client_api"
#include "runtime/config_client_api.h"

#include <stdlib.h>
#include <string.h>

#include "runtime/config_client_impl.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"

namespace {

// Records being answered: entries of a reply stand in the order of the request.
struct answers_t {
    config_data_t* recs;
    uint32_t count;
    uint32_t next;
    uint32_t entries; // of the reply, those beyond the records included
    int first_failure;
};

uint32_t named(const config_data_t* recs, uint32_t count)
{
    uint32_t n = 0;
    for (uint32_t i = 0; i < count; ++i)
        n += recs[i].name != nullptr;
    return n;
}

// The record that the next entry answers, or null beyond the last.
config_data_t* next_record(answers_t* answers)
{
    ++answers->entries;
    while (answers->next < answers->count) {
        config_data_t* rec = &answers->recs[answers->next++];
        if (rec->name)
            return rec;
    }
    return nullptr;
}

uint32_t value_length(const config_data_t& rec)
{
    switch (rec.type) {
    case VX_CONFIG_TYPE_STRING:
        return rec.data ? static_cast<uint32_t>(strlen(static_cast<const char*>(rec.data)) + 1) : 0;
    case VX_CONFIG_TYPE_INT:
        return rec.data ? 4 : 0;
    default:
        return rec.size;
    }
}

uint32_t build(uint8_t** buf, uint32_t count, const config_data_t* recs, bool values)
{
    uint32_t len = 0;
    for (uint32_t i = 0; i < count; ++i) {
        const config_data_t& rec = recs[i];
        if (!rec.name)
            continue;
        len = config_vbuf_add(buf, len, nullptr, rec.type, rec.name, values ? rec.data : nullptr,
                              values ? value_length(rec) : 0, 0);
    }
    return len;
}

// Sends the records and lets `cb` take the reply's entries. Returns the negative length of a failed bus
// call, else the callbacks' results joined.
int request_records(const char* verb, const char* route, bool values, answers_t* answers, config_vbuf_cb_t cb)
{
    uint8_t* buf = nullptr;
    const uint32_t len = build(&buf, answers->count, answers->recs, values);
    void* reply;
    int n = config_request(verb, route, buf, len, &reply);
    free(buf);
    if (n < 0)
        return n;
    n = config_vbuf_parse(reply, static_cast<uint32_t>(n), cb, answers);
    free(reply);
    const uint32_t asked = named(answers->recs, answers->count);
    if (answers->entries != asked)
        vx_slog(CONFIG_PRIO_ERROR, "config: %s of %u keys answered with %u\n", verb, asked, answers->entries);
    return n;
}

// Stores what fits. Returns the record's status.
int32_t store_value(config_data_t* rec, const void* value, uint32_t length, int32_t status)
{
    if (!rec->data || rec->size == 0)
        return status;
    const uint32_t n = length < rec->size ? length : rec->size;
    if (rec->type == VX_CONFIG_TYPE_INT && n != 4)
        return VX_CONFIG_WRONG_TYPE;
    if (n)
        memcpy(rec->data, value, n);
    if (rec->type == VX_CONFIG_TYPE_STRING)
        static_cast<char*>(rec->data)[rec->size - 1] = 0;
    return status;
}

int take_value(void* ctx, uint32_t type, const char* /* key */, void* value, uint32_t length, int32_t status)
{
    config_data_t* rec = next_record(static_cast<answers_t*>(ctx));
    if (!rec)
        return 0;
    rec->length = length;
    if (status == VX_CONFIG_NO_RECORD) {
        rec->status = VX_CONFIG_NO_RECORD;
        rec->length = 0;
    } else if (type == rec->type) {
        rec->status = store_value(rec, value, length, status);
    } else {
        rec->status = VX_CONFIG_WRONG_TYPE;
        rec->length = 0;
    }
    return 0;
}

int take_status(void* ctx, uint32_t, const char*, void*, uint32_t, int32_t status)
{
    answers_t* answers = static_cast<answers_t*>(ctx);
    config_data_t* rec = next_record(answers);
    if (!rec)
        return 0;
    rec->status = status;
    if (answers->first_failure == 0)
        answers->first_failure = status;
    return 0;
}

// A list under construction: the records stand in front of the buffer that they point into.
struct list_t {
    config_data_t* recs;
    uint32_t announced;
    uint32_t count;
};

int take_listed(void* ctx, uint32_t type, const char* key, void* value, uint32_t length, int32_t status)
{
    list_t* list = static_cast<list_t*>(ctx);
    if (list->count >= list->announced)
        return VX_CONFIG_ERR;
    config_fill_record(&list->recs[list->count++], type, key, value, length, status);
    return 0;
}

int parse_list(const uint8_t* reply, uint32_t n, uint32_t* count, config_data_t** recs)
{
    const uint32_t head = 8; // a word that is not used, then the number of records
    uint32_t announced;
    memcpy(&announced, reply + 4, sizeof(announced));
    const uint32_t vlen = n - head;
    // No entry is smaller than a header and an empty key, so there cannot be more, whatever is announced.
    const uint32_t most = vlen / (static_cast<uint32_t>(sizeof(config_vbuf_header_t)) + 4);
    const uint32_t room = announced < most ? announced : most;
    const size_t array = room * sizeof(config_data_t);
    uint8_t* block = static_cast<uint8_t*>(vx_calloc(1, array + vlen));
    if (!block)
        return VX_CONFIG_ERR;
    memcpy(block + array, reply + head, vlen);
    list_t list = {reinterpret_cast<config_data_t*>(block), announced, 0};
    const int result = config_vbuf_parse(block + array, vlen, take_listed, &list);
    if (list.count < announced)
        vx_slog(CONFIG_PRIO_ERROR, "config: %u records announced, %u found\n", announced, list.count);
    *count = list.count;
    *recs = list.recs;
    return result;
}

} // namespace

int config_readv(const char* route, uint32_t count, config_data_t* recs)
{
    answers_t answers = {recs, count, 0, 0, 0};
    return request_records("readv", route, false, &answers, take_value);
}

int config_writev(const char* route, uint32_t count, const config_data_t* recs)
{
    uint8_t* buf = nullptr;
    const uint32_t len = build(&buf, count, recs, true);
    const int result = config_signal("writev", route, buf, len);
    free(buf);
    return result;
}

int config_modifyv(const char* route, uint32_t count, config_data_t* recs)
{
    answers_t answers = {recs, count, 0, 0, 0};
    const int result = request_records("modifyv", route, true, &answers, take_status);
    return result < 0 ? result : answers.first_failure;
}

int config_readm(const char* expr, uint32_t* count, config_data_t** recs)
{
    *count = 0;
    *recs = nullptr;
    void* reply;
    const int n = config_request("readm", expr, nullptr, 0, &reply);
    if (n <= 0) {
        free(reply);
        return n;
    }
    VX_ASSERT(n > 8);
    const int result = parse_list(static_cast<const uint8_t*>(reply), static_cast<uint32_t>(n), count, recs);
    free(reply);
    return result;
}

int config_deletem(const char* expr)
{
    return config_signal("delm", expr, nullptr, 0);
}
