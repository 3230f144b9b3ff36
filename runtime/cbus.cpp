// Signals, requests, replies and the wait for a reply, on top of the frames of cbus_sock_impl.cpp.
// Thread of the connection only, but cbus_send_signal() (see cbus.h).
#include "runtime/cbus.h"

#include <stdlib.h>
#include <time.h>

#include "runtime/cbus_sock_impl.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_posix_reset.h"
#include "runtime/vx_time.h"

namespace {

const int prio_error = 3;

// The message with its lengths filled in, or -1, logged, if it is too long for the other side to accept.
int send_frame(cbus_conn_t* conn, cbus_header_t header, const char* name, size_t nlen, const void* data,
               uint32_t len)
{
    const uint32_t dlen = data ? len : 0;
    if (nlen >= CBUS_NAME_LIMIT || dlen >= CBUS_DATA_LIMIT) {
        vx_slog(prio_error, "cbus: message \"%.64s\" refused: name of %zu bytes, data of %u bytes\n",
                name ? name : "", nlen, dlen);
        return -1;
    }
    header.reserved = 0;
    header.nlen = static_cast<uint16_t>(nlen);
    header.dlen = dlen;
    const cbus_frame_t frame = {header, name, data};
    return cbus_impl_send(conn, &frame);
}

// Takes the next sequence number, also if the send then fails.
int send_new(cbus_conn_t* conn, uint8_t type, const char* name, const void* data, uint32_t len,
             uint16_t* seqn)
{
    *seqn = conn->next_seqn++;
    const cbus_header_t header = {type, static_cast<uint8_t>(conn->fd), *seqn, 0, 0, 0};
    return send_frame(conn, header, name, name ? strlen(name) + 1 : 0, data, len);
}

// A reply repeats what it answers but for type and data.
int send_answer(cbus_conn_t* conn, cbus_header_t header, const char* name, const void* data, uint32_t len)
{
    header.type = CBUS_TYPE_REPLY;
    return send_frame(conn, header, name, name ? header.nlen : 0, data, len);
}

// The message that ends the wait: fills `out` and returns its data length, or -1 for a lost connection.
int wait_for_reply(cbus_conn_t* conn, uint16_t cookie, void** out)
{
    // The reply is hardly ever there yet: waiting first saves a read that would only fail.
    cbus_impl_wait_readable(conn->fd);
    for (;;) {
        cbus_header_t header;
        int count;
        uint8_t* body = cbus_impl_msg_read(conn->fd, &header, &count);
        if (count < 1) {
            cbus_impl_conn_lost(conn);
            return -1;
        }
        if (header.type != CBUS_TYPE_REPLY) {
            cbus_impl_queue_add(conn, &header, body, count);
            continue;
        }
        if (header.seqn != cookie)
            vx_panic("Cookie mismatch (%u/%u)\n", cookie, header.seqn);
        memmove(body, body + cbus_padded(header.nlen), header.dlen);
        *out = body;
        return static_cast<int>(header.dlen);
    }
}

int send_text(cbus_conn_t* conn, const char* name, const char* text)
{
    return cbus_send_signal(conn, name, text, static_cast<uint32_t>(strlen(text) + 1));
}

} // namespace

int cbus_send_signal(cbus_conn_t* conn, const char* name, const void* data, uint32_t len)
{
    uint16_t seqn;
    return send_new(conn, CBUS_TYPE_SIGNAL, name, data, len, &seqn);
}

int cbus_send_request(cbus_conn_t* conn, const char* name, const void* data, uint32_t len)
{
    uint16_t seqn;
    // A request cut short will never be answered: whoever waited for it would wait for ever.
    return send_new(conn, CBUS_TYPE_REQUEST, name, data, len, &seqn) == 0 ? seqn : -1;
}

int cbus_get_reply(cbus_conn_t* conn, int cookie, void** out)
{
    static const char func[] = "cbus_get_reply";
    const int fd = conn->fd;
    *out = nullptr;
    if (fd < 0)
        return -1;
    if (cbus_debug)
        vx_printf("B(%d) %s: cookie=%d\n", fd, func, cookie);
    const int nr = wait_for_reply(conn, static_cast<uint16_t>(cookie), out);
    if (cbus_debug)
        vx_printf("E(%d) %s: nr=%d\n", fd, func, nr);
    return nr;
}

int cbus_send_reply(cbus_conn_t* conn, const void* data, uint32_t len)
{
    return send_answer(conn, conn->cur_header, conn->cur_name, data, len);
}

int cbus_send_reply_to(cbus_conn_t* conn, const void* data, uint32_t len, cbus_sender_ctx_t* ctx)
{
    VX_ASSERT(ctx);
    const int result = send_answer(conn, ctx->header, ctx->name, data, len);
    cbus_free_sender_ctx(ctx);
    return result;
}

int cbus_filter(cbus_conn_t* conn, const char* text)
{
    return send_text(conn, "cbus.filter", text);
}

int cbus_provide(cbus_conn_t* conn, const char* text)
{
    return send_text(conn, "cbus.provide", text);
}

void cbus_show_message(cbus_conn_t* conn, const char* tag, const char* name, const void* data, uint32_t len)
{
    vx_clock_value now;
    vx_wall_clock(&now);
    const time_t seconds = now.seconds;
    struct tm local;
    char clock[16] = "";
    if (localtime_r(&seconds, &local))
        strftime(clock, sizeof(clock), "%H:%M:%S", &local);
    vx_printf("%s.%06ld %2d %s: name=\"%s\", data size=%u\n", clock, now.nanoseconds / 1000,
              conn->cur_header.src, tag, name ? name : "", len);
    if (len)
        vx_data_display('b', data, len, 0);
}
