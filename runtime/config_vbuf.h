// The value buffer: a list of records in the form in which it travels over the bus.
//
// A plain concatenation of entries. Each starts at a multiple of 4 bytes; integers stand in the byte order
// of the host. The layout is the wire's.
//
//   offset  size   field
//   0       1      type         a VX_CONFIG_TYPE_*
//   1       1      status       signed; of this key in a reply, 0 in a request
//   2       2      reserved     zero
//   4       4      name area    bytes of the key with its NUL, rounded up to a multiple of 4
//   8       4      data length  bytes of the value, padding not counted
//   12      area   key, NUL-terminated; what is left of the area is not looked at
//   ...     data   value, absent if the data length is 0, then 0 to 3 bytes up to a multiple of 4
//
// Pure functions on the caller's memory: any thread.
#ifndef RUNTIME_CONFIG_VBUF_H
#define RUNTIME_CONFIG_VBUF_H

#include <stdint.h>

struct config_vbuf_header_t {
    uint8_t type;
    int8_t status;
    uint16_t reserved;
    uint32_t name_area;
    uint32_t data_length;
};
static_assert(sizeof(config_vbuf_header_t) == 12, "an entry's header is 12 bytes on the wire");

// One entry as found in a buffer: the pointers lead into it, `value` is null if there is none.
struct config_vbuf_entry_t {
    uint32_t type;
    const char* key;
    const void* value;
    uint32_t length; // of the value, bytes
    int32_t status;
    uint32_t distance; // to the start of the next entry, bytes
};

// Called for each entry. Key and value point into the buffer, `value` is null if `length` is 0. A text value
// need not end in a NUL: whoever sent it is not to be trusted. Results are joined with OR.
typedef int (*config_vbuf_cb_t)(void* ctx, uint32_t type, const char* key, void* value, uint32_t length,
                                int32_t status);

// Appends an entry to `*buf`, which is null with a `len` of 0, or what earlier calls made it with the length
// they returned; it is enlarged and moved as needed, and freed by the caller. With a prefix the key stored is
// prefix + "." + key. A null `value` makes its length 0.
// Returns the new length. Running out of memory is an assertion.
uint32_t config_vbuf_add(uint8_t** buf, uint32_t len, const char* prefix, uint32_t type, const char* key,
                         const void* value, uint32_t vlen, int8_t status);

// Walks `len` bytes and calls `cb` for each entry. Returns the callbacks' results joined with OR. Fewer
// than 12 bytes at an entry's position are an assertion. An entry that reaches past the buffer or lacks its
// key's NUL is logged and ends the walk, with VX_CONFIG_ERR joined to the result.
int config_vbuf_parse(const void* buf, uint32_t len, config_vbuf_cb_t cb, void* ctx);

// Looks at the entry that starts at `pos`. Returns false, with `entry` untouched, if it is not wholly inside
// the `len` bytes, or if its key has no NUL inside its area or that area is no multiple of 4.
bool config_vbuf_entry_at(const void* buf, uint32_t len, uint32_t pos, config_vbuf_entry_t* entry);

#endif
