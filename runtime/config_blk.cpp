// Blocks: reads and writes collected to be performed together. A block is the caller's; adding to it touches
// no bus and may be done on any thread. Running out of memory is a result here, never an assertion.
#include "runtime/config_client_api.h"

#include <stdlib.h>
#include <string.h>

#include "runtime/config_client_impl.h"
#include "runtime/util.h"
#include "runtime/vx_string.h"

namespace {

// What an adding function returns without memory for its array, key or value.
enum { NO_ARRAY = 1, NO_KEY = 2, NO_VALUE = 3 };

const char route[] = "blk";

char* complete_key(const config_blk_t* blk, const char* key)
{
    char whole[256];
    if (!blk->prefix)
        return config_copy_text(key);
    if (blk->index)
        vx_snprintf(whole, sizeof(whole), "%s%u.%s", blk->prefix, blk->index, key);
    else
        vx_snprintf(whole, sizeof(whole), "%s.%s", blk->prefix, key);
    return config_copy_text(whole);
}

// A new record with type, key and size at the end of an array. The count goes up whatever happens; `room`
// only if there is a record, and a record without a name is passed over on commit.
int add_record(const config_blk_t* blk, config_data_t** recs, uint32_t* count, uint32_t* room,
               const config_data_t& wanted)
{
    ++*count;
    config_data_t* bigger = config_grow(*recs, *room);
    if (!bigger)
        return NO_ARRAY;
    *recs = bigger;
    config_data_t* rec = &bigger[(*room)++];
    *rec = wanted;
    rec->name = complete_key(blk, wanted.name);
    return rec->name ? 0 : NO_KEY;
}

void free_records(config_data_t* recs, uint32_t room, bool values)
{
    for (uint32_t i = 0; i < room; ++i) {
        free(const_cast<char*>(recs[i].name));
        if (values)
            free(recs[i].data);
    }
    free(recs);
}

} // namespace

void config_blk_init(config_blk_t* blk)
{
    *blk = config_blk_t();
}

void config_blk_set_prefix(config_blk_t* blk, const char* prefix, uint32_t index)
{
    blk->prefix = prefix;
    blk->index = index;
}

int config_blk_add_write(config_blk_t* blk, uint32_t type, const char* key, const void* value, uint32_t size)
{
    const config_data_t wanted = {type, key, nullptr, value ? size : 0, 0, 0};
    const int result = add_record(blk, &blk->write_recs, &blk->writes, &blk->write_room, wanted);
    if (result != 0 || !wanted.size)
        return result;
    config_data_t* rec = &blk->write_recs[blk->write_room - 1];
    // Four zeros more: an int is sent with 4 bytes and a text up to its NUL, whatever size was given.
    rec->data = vx_calloc(1, static_cast<size_t>(size) + 4);
    if (!rec->data) {
        free(const_cast<char*>(rec->name)); // an empty value would delete the key
        rec->name = nullptr;
        return NO_VALUE;
    }
    memcpy(rec->data, value, size);
    return 0;
}

int config_blk_add_read(config_blk_t* blk, uint32_t type, const char* key, void* dest, uint32_t size)
{
    const config_data_t wanted = {type, key, dest, size, 0, 0};
    return add_record(blk, &blk->read_recs, &blk->reads, &blk->read_room, wanted);
}

int config_blk_add_del(config_blk_t* blk, const char* key)
{
    // Type blob, where config_delete() has none: both delete, and both stay as they are.
    return config_blk_add_write(blk, VX_CONFIG_TYPE_BLOB, key, nullptr, 0);
}

int config_blk_add_int_read(config_blk_t* blk, const char* key, int* dest)
{
    return config_blk_add_read(blk, VX_CONFIG_TYPE_INT, key, dest, 4);
}

int config_blk_add_str_read(config_blk_t* blk, const char* key, char* dest, uint32_t size)
{
    return config_blk_add_read(blk, VX_CONFIG_TYPE_STRING, key, dest, size);
}

int config_blk_add_blob_read(config_blk_t* blk, const char* key, void* dest, uint32_t size)
{
    return config_blk_add_read(blk, VX_CONFIG_TYPE_BLOB, key, dest, size);
}

int config_blk_add_int_write(config_blk_t* blk, const char* key, int value)
{
    const int32_t word = value;
    return config_blk_add_write(blk, VX_CONFIG_TYPE_INT, key, &word, sizeof(word));
}

int config_blk_add_str_write(config_blk_t* blk, const char* key, const char* text)
{
    return config_blk_add_write(blk, VX_CONFIG_TYPE_STRING, key, text,
                                text ? static_cast<uint32_t>(strlen(text) + 1) : 0);
}

int config_blk_add_blob_write(config_blk_t* blk, const char* key, const void* value, uint32_t size)
{
    return config_blk_add_write(blk, VX_CONFIG_TYPE_BLOB, key, value, size);
}

int config_blk_commit_read(config_blk_t* blk)
{
    return blk->read_room ? config_readv(route, blk->read_room, blk->read_recs) : 0;
}

int config_blk_commit_write(config_blk_t* blk)
{
    const int result = config_writev(route, blk->write_room, blk->write_recs);
    config_blk_free(blk);
    return result;
}

int config_blk_commit_modify(config_blk_t* blk)
{
    const int result = config_modifyv(route, blk->write_room, blk->write_recs);
    config_blk_free(blk);
    return result;
}

void config_blk_free(config_blk_t* blk)
{
    free_records(blk->write_recs, blk->write_room, true);
    free_records(blk->read_recs, blk->read_room, false);
    blk->write_recs = nullptr;
    blk->read_recs = nullptr;
    blk->writes = blk->reads = 0;
    blk->write_room = blk->read_room = 0;
}
