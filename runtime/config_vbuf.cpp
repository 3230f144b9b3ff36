// Building and walking value buffers. The layout stands in the header. Any thread.
#include "runtime/config_vbuf.h"

#include <stdlib.h>
#include <string.h>

#include "runtime/config_client_api.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"

namespace {

const int prio_error = 3;

uint32_t padded(uint32_t length)
{
    return (length + 3) & ~3u;
}

// Bytes allocated for a buffer of this length: a function of the length alone, so that a buffer can grow
// without keeping its capacity anywhere, and seldom moves.
size_t capacity(size_t len)
{
    size_t size = len ? 256 : 0;
    while (size < len)
        size *= 2;
    return size;
}

void grow(uint8_t** buf, uint32_t old_len, uint32_t new_len)
{
    if (capacity(new_len) == capacity(old_len))
        return;
    uint8_t* bigger = static_cast<uint8_t*>(vx_calloc(1, capacity(new_len)));
    VX_ASSERT(bigger);
    if (old_len)
        memcpy(bigger, *buf, old_len);
    free(*buf);
    *buf = bigger;
}

} // namespace

uint32_t config_vbuf_add(uint8_t** buf, uint32_t len, const char* prefix, uint32_t type, const char* key,
                         const void* value, uint32_t vlen, int8_t status)
{
    const size_t prefix_length = prefix ? strlen(prefix) + 1 : 0; // with the dot
    const uint32_t key_length = static_cast<uint32_t>(prefix_length + strlen(key));
    config_vbuf_header_t header = config_vbuf_header_t();
    header.type = static_cast<uint8_t>(type);
    header.status = status;
    header.name_area = (key_length + 4) & ~3u;
    header.data_length = value ? vlen : 0;
    const uint32_t end = len + static_cast<uint32_t>(sizeof(header)) + header.name_area;
    const uint32_t new_len = end + padded(header.data_length);
    grow(buf, len, new_len);

    uint8_t* at = *buf + len;
    memcpy(at, &header, sizeof(header));
    char* name = reinterpret_cast<char*>(at + sizeof(header));
    if (prefix) {
        memcpy(name, prefix, prefix_length - 1);
        name[prefix_length - 1] = '.';
    }
    memcpy(name + prefix_length, key, strlen(key) + 1);
    if (header.data_length)
        memcpy(*buf + end, value, header.data_length);
    return new_len;
}

bool config_vbuf_entry_at(const void* buf, uint32_t len, uint32_t pos, config_vbuf_entry_t* entry)
{
    config_vbuf_header_t header;
    if (pos > len || len - pos < sizeof(header))
        return false;
    const uint8_t* at = static_cast<const uint8_t*>(buf) + pos;
    memcpy(&header, at, sizeof(header));
    uint32_t left = len - pos - static_cast<uint32_t>(sizeof(header));
    const char* key = reinterpret_cast<const char*>(at + sizeof(header));
    if (header.name_area > left || header.name_area % 4 != 0 || !memchr(key, 0, header.name_area))
        return false;
    left -= header.name_area;
    if (header.data_length > left)
        return false;
    entry->type = header.type;
    entry->key = key;
    entry->value = header.data_length ? at + sizeof(header) + header.name_area : nullptr;
    entry->length = header.data_length;
    entry->status = header.status;
    // The last entry's padding may be missing: the walk then ends there.
    const uint32_t step = padded(header.data_length);
    entry->distance = static_cast<uint32_t>(sizeof(header)) + header.name_area + (step < left ? step : left);
    return true;
}

int config_vbuf_parse(const void* buf, uint32_t len, config_vbuf_cb_t cb, void* ctx)
{
    int result = 0;
    config_vbuf_entry_t entry;
    for (uint32_t pos = 0; pos < len; pos += entry.distance) {
        VX_ASSERT(len - pos >= sizeof(config_vbuf_header_t));
        if (!config_vbuf_entry_at(buf, len, pos, &entry)) {
            vx_slog(prio_error, "config: broken entry at %u of %u bytes\n", pos, len);
            return result | VX_CONFIG_ERR;
        }
        result |= cb(ctx, entry.type, entry.key, const_cast<void*>(entry.value), entry.length, entry.status);
    }
    return result;
}
