// A connection to the bus: creating it, the callbacks for what arrives, the context of a sender.
//
// Sending and waiting for replies is in cbus.h, which includes this file. Nothing here reconnects: a
// connection that is lost stays closed, and every send on it returns -1.
//
// A connection belongs to one thread, the one that makes it and runs its loop; nothing is locked. The one
// exception is told at cbus_send_signal().
#ifndef RUNTIME_CBUS_CLIENT_H
#define RUNTIME_CBUS_CLIENT_H

#include <pthread.h>

#include "runtime/cbus_frame.h"

struct fdloop_t;
struct cbus_conn_t;
struct cbus_client_t;

// Receives one message. `name` and `data` are the library's and valid during the call only; `data` is
// aligned to 4 bytes. The result is not looked at; return 0.
typedef int (*cbus_rx_func_t)(cbus_conn_t* conn, const char* name, void* data, uint32_t len);

// Closes the connection's descriptor and sets it to -1.
typedef void (*cbus_close_func_t)(cbus_conn_t* conn);

// The same as cbus_rx_func_t for a row of a name table; `user` is the row's data pointer.
typedef int (*cbus_client_cb_t)(cbus_conn_t* conn, void* user, const char* name, void* data, uint32_t len);

// Where received messages go, by type. A null function drops the message.
struct cbus_callbacks_t {
    cbus_rx_func_t signal;
    cbus_rx_func_t request;
    cbus_rx_func_t reply;
    cbus_close_func_t close;
};

// One row of a name table: takes each message whose name begins with `name` (the library's copy).
struct cbus_client_row_t {
    char* name;
    cbus_client_cb_t func;
    void* user;
};

// A message that waits for its delivery: it arrived while somebody waited for a reply or for room to send.
struct cbus_queued_t {
    cbus_queued_t* next;
    cbus_header_t header;
    uint8_t* body; // name block, then data block
    int32_t count; // as the reader returned it: header and body
};

// The client record, created with its connection.
struct cbus_client_t {
    fdloop_t* loop; // may be null: the connection is then purely synchronous
    cbus_conn_t* conn;
    cbus_callbacks_t cb;
};

// The fields are the library's; others may read `fd` (-1 once closed) and, inside a callback, the current
// message. The order is fixed.
struct cbus_conn_t {
    int32_t fd;
    uint16_t next_seqn;
    cbus_header_t cur_header; // the message being delivered: header, name and data
    const char* cur_name;
    void* cur_data;
    cbus_callbacks_t* cb;
    cbus_client_t* client;
    cbus_client_row_t* signal_rows;
    uint32_t signal_count;
    cbus_client_row_t* request_rows;
    uint32_t request_count;
    cbus_client_row_t* reply_rows;
    uint32_t reply_count;
    cbus_queued_t* queue_head;
    cbus_queued_t* queue_tail;
    uint32_t queue_count;
    pthread_t thread; // the one that made it, and that alone reads from it
};

// A sender's context, kept for a later answer: five words, the name an own copy, the data pointer the
// caller's concern.
struct cbus_sender_ctx_t {
    cbus_header_t header;
    char* name;
    void* data;
};

// Connects to the server whose address stands in the environment variable CBUS_ADDR, "unix*cbus" without
// it (the form of an address is told in vx_socket.h). `loop` may be null; otherwise the socket is read on
// it and queued messages are delivered from it. `client_name` is accepted and not used.
// Returns the connection, owned by the caller, or null if no server could be reached. Does not wait.
// The environment variable CBUS_DEBUG, whatever its value, switches a trace of all messages on, for the
// whole process.
cbus_conn_t* cbus_conn_create(fdloop_t* loop, const char* client_name);

// Closes and frees the connection and its client record. Its entry on the loop, its idler, its name tables
// and its queue are not touched: a loop that the connection was created with must not run again.
void cbus_conn_destroy(cbus_conn_t* conn);

// Sets the three functions for received messages; null drops messages of that type.
void cbus_conn_set_rx_cb(cbus_conn_t* conn, cbus_rx_func_t signal, cbus_rx_func_t request,
                         cbus_rx_func_t reply);

// Sets the three functions to those that look into the name tables below. Without it the tables are unused.
void cbus_client_init_cb(cbus_conn_t* conn);

// Appends a row to a name table; the name is copied. A message goes to the first row, in order of
// registration, whose name its own name begins with, and to no other. There is no other kind of matching,
// and a message without a row is dropped silently. The search is linear: meant for a handful of rows.
void cbus_client_signal_cb_add(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user);
void cbus_client_request_cb_add(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user);
void cbus_client_reply_cb_add(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user);

// Removes the first row with just this name, function and data; without one, nothing happens.
void cbus_client_signal_cb_del(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user);
void cbus_client_request_cb_del(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user);
void cbus_client_reply_cb_del(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user);

// Keeps the context of the message being delivered, so that it can be answered later with
// cbus_send_reply_to() or dropped with cbus_free_sender_ctx(). The caller owns the result.
cbus_sender_ctx_t* cbus_store_sender_ctx(cbus_conn_t* conn);

// Frees a kept context. Null is an assertion.
void cbus_free_sender_ctx(cbus_sender_ctx_t* ctx);

// Makes the kept context the connection's current message. `ctx` goes on owning the name and must outlive
// its use.
void cbus_copy_sender_ctx(cbus_conn_t* conn, const cbus_sender_ctx_t* ctx);

#endif
