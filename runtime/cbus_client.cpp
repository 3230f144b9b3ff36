// Connections, name tables, dispatchers and kept sender contexts. Touches no socket: that is in
// cbus_sock_impl.cpp. Thread of the connection only.
#include "runtime/cbus_client.h"

#include <stdlib.h>

#include "runtime/cbus_sock_impl.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"

namespace {

// A name table is two fields of the connection.
struct name_table {
    cbus_client_row_t*& rows;
    uint32_t& count;
};

name_table signal_table(cbus_conn_t* conn)
{
    return {conn->signal_rows, conn->signal_count};
}

name_table request_table(cbus_conn_t* conn)
{
    return {conn->request_rows, conn->request_count};
}

name_table reply_table(cbus_conn_t* conn)
{
    return {conn->reply_rows, conn->reply_count};
}

char* copy_bytes(const char* from, size_t size)
{
    char* copy = static_cast<char*>(vx_calloc(1, size + 1));
    VX_ASSERT(copy);
    if (size)
        memcpy(copy, from, size);
    return copy;
}

void add_row(name_table table, const char* name, cbus_client_cb_t func, void* user)
{
    cbus_client_row_t* rows =
        static_cast<cbus_client_row_t*>(vx_calloc(table.count + 1, sizeof(cbus_client_row_t)));
    VX_ASSERT(rows);
    if (table.count)
        memcpy(rows, table.rows, table.count * sizeof(cbus_client_row_t));
    rows[table.count].name = copy_bytes(name, strlen(name));
    rows[table.count].func = func;
    rows[table.count].user = user;
    free(table.rows);
    table.rows = rows;
    ++table.count;
}

void remove_row(name_table table, const char* name, cbus_client_cb_t func, void* user)
{
    for (uint32_t i = 0; i < table.count; ++i) {
        cbus_client_row_t& row = table.rows[i];
        if (row.func != func || row.user != user || strcmp(row.name, name) != 0)
            continue;
        free(row.name);
        --table.count;
        memmove(&row, &row + 1, (table.count - i) * sizeof(cbus_client_row_t));
        if (table.count == 0) {
            free(table.rows);
            table.rows = nullptr;
        }
        return;
    }
}

// The first row whose name is a prefix of the message's takes it; the others don't get to see it.
void dispatch(name_table table, cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    for (uint32_t i = 0; i < table.count; ++i) {
        const cbus_client_row_t row = table.rows[i];
        if (strncmp(row.name, name, strlen(row.name)) == 0) {
            row.func(conn, row.user, name, data, len);
            return;
        }
    }
}

int dispatch_signal(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    dispatch(signal_table(conn), conn, name, data, len);
    return 0;
}

int dispatch_request(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    dispatch(request_table(conn), conn, name, data, len);
    return 0;
}

int dispatch_reply(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    dispatch(reply_table(conn), conn, name, data, len);
    return 0;
}

} // namespace

cbus_conn_t* cbus_conn_create(fdloop_t* loop, const char* /* client_name */)
{
    cbus_client_t* client = static_cast<cbus_client_t*>(vx_calloc(1, sizeof(cbus_client_t)));
    VX_ASSERT(client);
    cbus_conn_t* conn = static_cast<cbus_conn_t*>(vx_calloc(1, sizeof(cbus_conn_t)));
    VX_ASSERT(conn);
    client->loop = loop;
    client->conn = conn;
    conn->client = client;
    conn->cb = &client->cb;
    conn->thread = pthread_self();
    if (cbus_impl_client_conn_create(client) != 0) {
        free(conn);
        free(client);
        return nullptr;
    }
    return conn;
}

void cbus_conn_destroy(cbus_conn_t* conn)
{
    conn->cb->close(conn);
    free(conn->client);
    free(conn);
}

void cbus_conn_set_rx_cb(cbus_conn_t* conn, cbus_rx_func_t signal, cbus_rx_func_t request,
                         cbus_rx_func_t reply)
{
    conn->cb->signal = signal;
    conn->cb->request = request;
    conn->cb->reply = reply;
}

void cbus_client_init_cb(cbus_conn_t* conn)
{
    cbus_conn_set_rx_cb(conn, dispatch_signal, dispatch_request, dispatch_reply);
}

void cbus_client_signal_cb_add(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user)
{
    add_row(signal_table(conn), name, func, user);
}

void cbus_client_request_cb_add(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user)
{
    add_row(request_table(conn), name, func, user);
}

void cbus_client_reply_cb_add(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user)
{
    add_row(reply_table(conn), name, func, user);
}

void cbus_client_signal_cb_del(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user)
{
    remove_row(signal_table(conn), name, func, user);
}

void cbus_client_request_cb_del(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user)
{
    remove_row(request_table(conn), name, func, user);
}

void cbus_client_reply_cb_del(cbus_conn_t* conn, const char* name, cbus_client_cb_t func, void* user)
{
    remove_row(reply_table(conn), name, func, user);
}

cbus_sender_ctx_t* cbus_store_sender_ctx(cbus_conn_t* conn)
{
    cbus_sender_ctx_t* ctx = static_cast<cbus_sender_ctx_t*>(vx_calloc(1, sizeof(cbus_sender_ctx_t)));
    VX_ASSERT(ctx);
    ctx->header = conn->cur_header;
    ctx->name = copy_bytes(conn->cur_name, ctx->header.nlen);
    ctx->data = conn->cur_data;
    return ctx;
}

void cbus_free_sender_ctx(cbus_sender_ctx_t* ctx)
{
    VX_ASSERT(ctx);
    free(ctx->name);
    free(ctx);
}

void cbus_copy_sender_ctx(cbus_conn_t* conn, const cbus_sender_ctx_t* ctx)
{
    conn->cur_header = ctx->header;
    conn->cur_name = ctx->name;
    conn->cur_data = ctx->data;
}
