// The socket part of the bus client: connect, write, read, deliver, queue.
// Thread of the connection only, but cbus_impl_send(), whose state is all on the stack.
#include "runtime/cbus_sock_impl.h"

#include <errno.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/uio.h>
#include <unistd.h>

#include "runtime/cbus.h"
#include "runtime/fdloop.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_posix_reset.h"
#include "runtime/vx_socket.h"

bool cbus_debug = false;

namespace {

const char default_address[] = "unix*cbus";
const int prio_error = 3;

// How deep deliveries are nested; for the trace only, one for the process.
int dispatch_level = 0;

// An EPIPE is the other side's end, which whoever reads the socket notices; it is no news.
void log_io_error(int line)
{
    if (errno != 0 && errno != EPIPE)
        vx_slog(prio_error, "*** IO error %d (%s) in %s at %d\n", errno, strerror(errno), "cbus_sock_impl",
                line);
}

// Waits without a limit. Returns what `fd` is ready for, or -1. A signal handler (the keep-alive's, every
// few seconds) does not end the wait: it would cut a frame in two.
int wait_ready(int fd, short events)
{
    struct pollfd entry = {fd, events, 0};
    int count;
    do {
        count = poll(&entry, 1, -1);
    } while (count < 0 && errno == EINTR);
    return count < 0 ? -1 : entry.revents;
}

// --- Reading --------------------------------------------------------------------------------------------

// Reads just `size` bytes. False at the end of the stream, with errno cleared, or on an error. What merely
// had to wait leaves no errno behind.
bool read_all(int fd, void* to, size_t size)
{
    uint8_t* at = static_cast<uint8_t*>(to);
    errno = 0;
    while (size) {
        const ssize_t got = read(fd, at, size);
        if (got > 0) {
            at += got;
            size -= static_cast<size_t>(got);
            continue;
        }
        if (got == 0) {
            errno = 0;
            return false;
        }
        if (errno == EAGAIN) {
            if (wait_ready(fd, POLLIN) < 0)
                return false;
        } else if (errno != EINTR) {
            return false;
        }
        errno = 0;
    }
    return true;
}

void show_read(const cbus_header_t* header, const uint8_t* body)
{
    static const char func[] = "_cbus_msg_read";
    vx_printf("%s: type=%d src=%d seqn=%d nlen=%d dlen=%d\n", func, header->type, header->src, header->seqn,
              header->nlen, static_cast<int>(header->dlen));
    // The reader knows no connection; the message just read is the current one of this print.
    cbus_conn_t shown = cbus_conn_t();
    shown.cur_header = *header;
    cbus_show_message(&shown, func, header->nlen ? reinterpret_cast<const char*>(body) : "",
                      body + cbus_padded(header->nlen), header->dlen);
}

// A name is handed on as a C string, so it must be one.
void terminate_name(const cbus_header_t* header, uint8_t* body)
{
    if (header->nlen == 0 || body[header->nlen - 1] == 0)
        return;
    body[header->nlen - 1] = 0;
    vx_slog(prio_error, "cbus: message name without its NUL, cut to \"%.64s\"\n",
            reinterpret_cast<const char*>(body));
}

// --- Writing --------------------------------------------------------------------------------------------

// Takes `count` written bytes off the front of the elements.
void advance(struct iovec* parts, int n, size_t count)
{
    for (int i = 0; i < n && count; ++i) {
        const size_t step = count < parts[i].iov_len ? count : parts[i].iov_len;
        parts[i].iov_base = static_cast<uint8_t*>(parts[i].iov_base) + step;
        parts[i].iov_len -= step;
        count -= step;
    }
}

struct iovec part(const void* base, size_t size)
{
    struct iovec p;
    p.iov_base = const_cast<void*>(base);
    p.iov_len = size;
    return p;
}

bool read_to_queue(cbus_conn_t* conn, int fd)
{
    cbus_header_t header;
    int count;
    uint8_t* body = cbus_impl_msg_read(fd, &header, &count);
    if (count < 1)
        return false;
    cbus_impl_queue_add(conn, &header, body, count);
    return true;
}

// --- Delivering -----------------------------------------------------------------------------------------

void call_back(cbus_conn_t* conn, const cbus_header_t* header)
{
    cbus_rx_func_t func = nullptr;
    switch (header->type) {
    case CBUS_TYPE_SIGNAL:
        func = conn->cb->signal;
        break;
    case CBUS_TYPE_REQUEST:
        func = conn->cb->request;
        break;
    case CBUS_TYPE_REPLY:
        func = conn->cb->reply;
        break;
    default:
        vx_panic("Invalid message type [%s] %u\n", conn->cur_name, header->type);
    }
    if (func)
        func(conn, conn->cur_name, conn->cur_data, header->dlen);
}

// Hands one message to its callback. The body stays the caller's.
void deliver(cbus_conn_t* conn, const cbus_header_t* header, uint8_t* body)
{
    static const char func[] = "_conn_msg_dispatch";
    ++dispatch_level;
    if (cbus_debug)
        vx_printf("B(%d) %s level=%d\n", conn->fd, func, dispatch_level);
    // A message without a name has the empty one: there may be nothing behind the header to point at.
    const char* name = header->nlen ? reinterpret_cast<const char*>(body) : "";
    void* data = body + cbus_padded(header->nlen);
    conn->cur_header = *header;
    conn->cur_name = name;
    conn->cur_data = data;
    VX_ASSERT(reinterpret_cast<uintptr_t>(data) % 4 == 0);
    VX_ASSERT(cbus_header_valid(header));
    call_back(conn, header);
    if (conn->cur_name == name) { // else a callback has put a kept context there
        conn->cur_name = nullptr;
        conn->cur_data = nullptr;
    }
    if (cbus_debug)
        vx_printf("E(%d) %s level=%d\n", conn->fd, func, dispatch_level);
    --dispatch_level;
}

// Delivers all that waits, and what callbacks add by waiting for replies of their own. The count is reset
// only at the end, so all of one walk counts towards the limit.
void deliver_queue(cbus_conn_t* conn)
{
    while (conn->queue_head) {
        cbus_queued_t* node = conn->queue_head;
        conn->queue_head = node->next;
        if (!conn->queue_head)
            conn->queue_tail = nullptr;
        deliver(conn, &node->header, node->body);
        free(node->body);
        free(node);
    }
    conn->queue_count = 0;
}

void queue_idler(void* data)
{
    deliver_queue(static_cast<cbus_conn_t*>(data));
}

// The socket is readable: at most one message for each turn of the loop.
int conn_rx(int fd, void* data)
{
    static const char func[] = "_conn_rx";
    cbus_conn_t* conn = static_cast<cbus_conn_t*>(data);
    if (conn->queue_head) {
        deliver_queue(conn);
        return 0;
    }
    cbus_header_t header;
    int count;
    uint8_t* body = cbus_impl_msg_read(fd, &header, &count);
    if (cbus_debug)
        vx_printf("B(%d) %s: nr=%d\n", fd, func, count);
    int result = -1; // drops the entry
    if (count > 0 && errno != EPIPE) {
        deliver(conn, &header, body);
        result = 0;
    } else {
        conn->cb->close(conn);
    }
    free(body);
    if (cbus_debug)
        vx_printf("E(%d) %s: nr=%d\n", fd, func, count);
    return result;
}

void close_conn(cbus_conn_t* conn)
{
    if (conn->fd >= 0)
        close(conn->fd);
    conn->fd = -1;
}

} // namespace

int cbus_impl_client_conn_create(cbus_client_t* client)
{
    cbus_conn_t* conn = client->conn;
    const char* address = getenv("CBUS_ADDR");
    conn->fd = socket_create_client_nonblocking(address ? address : default_address);
    if (conn->fd < 0)
        return -1;
    client->cb.close = close_conn;
    if (client->loop) {
        fdloop_fd_register(client->loop, conn->fd, conn_rx, conn);
        fdloop_idler_add(client->loop, queue_idler, conn);
    }
    if (getenv("CBUS_DEBUG"))
        cbus_debug = true;
    return 0;
}

int cbus_impl_send(cbus_conn_t* conn, const cbus_frame_t* frame)
{
    static const uint8_t zeros[4] = {};
    const int fd = conn->fd;
    if (fd < 0)
        return -1;
    const cbus_header_t& header = frame->header;
    struct iovec parts[] = {
        part(&header, sizeof(header)),
        part(frame->name, header.nlen),
        part(zeros, cbus_padded(header.nlen) - header.nlen),
        part(frame->data, header.dlen),
        part(zeros, cbus_padded(header.dlen) - header.dlen),
    };
    const int n = sizeof(parts) / sizeof(parts[0]);
    size_t left = cbus_frame_size(&header);
    // Two readers would take parts of messages from each other, and replies that the other one waits for.
    const bool reads = pthread_equal(conn->thread, pthread_self());
    const short events = reads ? POLLIN | POLLOUT : POLLOUT;
    int ready = POLLOUT;
    errno = 0;
    for (;;) {
        if (ready & POLLOUT) {
            const ssize_t written = writev(fd, parts, n);
            if (written >= 0) {
                advance(parts, n, static_cast<size_t>(written));
                left -= static_cast<size_t>(written);
            } else if (errno == EAGAIN || errno == EINTR) {
                errno = 0;
            } else {
                break;
            }
        } else if ((ready & POLLIN) && !read_to_queue(conn, fd)) {
            errno = 0; // the reader has logged it
            break;
        }
        if (left == 0)
            break;
        ready = wait_ready(fd, events);
        if (ready < 0 || (ready & (POLLERR | POLLHUP | POLLNVAL)))
            break;
        errno = 0;
    }
    log_io_error(__LINE__);
    return left == 0 ? 0 : 1;
}

void cbus_impl_wait_readable(int fd)
{
    wait_ready(fd, POLLIN);
}

uint8_t* cbus_impl_msg_read(int fd, cbus_header_t* header, int* count)
{
    *count = -1;
    if (!read_all(fd, header, sizeof(*header))) {
        log_io_error(__LINE__);
        return nullptr;
    }
    VX_ASSERT(header->nlen < CBUS_NAME_LIMIT);
    VX_ASSERT(header->dlen < CBUS_DATA_LIMIT);
    const uint32_t size = cbus_body_size(header);
    uint8_t* body = static_cast<uint8_t*>(vx_calloc(1, size ? size : 1));
    VX_ASSERT(body);
    if (!read_all(fd, body, size)) {
        log_io_error(__LINE__);
        free(body);
        return nullptr;
    }
    terminate_name(header, body);
    *count = static_cast<int>(sizeof(*header) + size);
    if (cbus_debug)
        show_read(header, body);
    return body;
}

void cbus_impl_queue_add(cbus_conn_t* conn, const cbus_header_t* header, uint8_t* body, int count)
{
    VX_ASSERT(conn->queue_count + 1 < CBUS_QUEUE_LIMIT);
    cbus_queued_t* node = static_cast<cbus_queued_t*>(vx_calloc(1, sizeof(cbus_queued_t)));
    VX_ASSERT(node);
    node->header = *header;
    node->body = body;
    node->count = count;
    if (conn->queue_tail)
        conn->queue_tail->next = node;
    else
        conn->queue_head = node;
    conn->queue_tail = node;
    ++conn->queue_count;
}

void cbus_impl_conn_lost(cbus_conn_t* conn)
{
    if (conn->client->loop)
        fdloop_fd_unregister(conn->client->loop, conn->fd);
    conn->cb->close(conn);
}
