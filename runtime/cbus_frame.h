// The frame of the bus as it travels between a client and the server: header, limits, padding.
//
// The stream is a sequence of frames; each starts at a multiple of 4 bytes from the start of the stream.
// Integers stand in the byte order of the host. The layout is the wire's: a client of any age must
// understand it, so nothing here may move.
//
//   offset  size    field
//   0       1       type      1 signal, 2 request, 3 reply
//   1       1       src       low 8 bits of the sender's descriptor; a reply repeats the request's
//   2       2       seqn      number of the message on its connection; a reply repeats the request's
//   4       2       reserved  written as zero, never read
//   6       2       nlen      bytes of the name with its NUL, 0 without a name; below CBUS_NAME_LIMIT
//   8       4       dlen      bytes of data; below CBUS_DATA_LIMIT
//   12      nlen    name, then 0 to 3 zero bytes up to a multiple of 4
//   ...     dlen    data, then 0 to 3 zero bytes up to a multiple of 4
//
// Plain data and pure functions: any thread.
#ifndef RUNTIME_CBUS_FRAME_H
#define RUNTIME_CBUS_FRAME_H

#include <stdint.h>
#include <string.h>

enum cbus_msg_type {
    CBUS_TYPE_SIGNAL = 1,
    CBUS_TYPE_REQUEST = 2,
    CBUS_TYPE_REPLY = 3,
};

// The first lengths that are too long: a name (NUL included) and data must stay below them.
enum {
    CBUS_NAME_LIMIT = 1024,
    CBUS_DATA_LIMIT = 0x200000,
};

struct cbus_header_t {
    uint8_t type;
    uint8_t src;
    uint16_t seqn;
    uint16_t reserved;
    uint16_t nlen;
    uint32_t dlen;
};
static_assert(sizeof(cbus_header_t) == 12, "the header is 12 bytes on the wire");

// Length rounded up to a multiple of 4: the bytes that a name or data block takes on the wire.
inline uint32_t cbus_padded(uint32_t length)
{
    return (length + 3) & ~3u;
}

// Bytes that follow the header: the two padded blocks.
inline uint32_t cbus_body_size(const cbus_header_t* header)
{
    return cbus_padded(header->nlen) + cbus_padded(header->dlen);
}

// Bytes of the whole frame, header included.
inline uint32_t cbus_frame_size(const cbus_header_t* header)
{
    return static_cast<uint32_t>(sizeof(cbus_header_t)) + cbus_body_size(header);
}

// Whether both lengths stay below their limits.
inline bool cbus_header_valid(const cbus_header_t* header)
{
    return header->nlen < CBUS_NAME_LIMIT && header->dlen < CBUS_DATA_LIMIT;
}

// Lays a frame out in `out`, which has room for cbus_frame_size() bytes; padding is zero. `name` may be
// null if nlen is 0, `data` if dlen is 0. For those who keep their own buffers, as a server with many
// clients does; a client's frames go out with cbus_impl_send() without being copied.
inline void cbus_frame_pack(uint8_t* out, const cbus_header_t* header, const char* name, const void* data)
{
    memset(out, 0, cbus_frame_size(header));
    memcpy(out, header, sizeof(*header));
    out += sizeof(*header);
    if (header->nlen)
        memcpy(out, name, header->nlen);
    if (header->dlen)
        memcpy(out + cbus_padded(header->nlen), data, header->dlen);
}

#endif
