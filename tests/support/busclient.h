// Ends a connection of a test with everything that cbus_conn_destroy() leaves alone, so that the leak
// checker sees what a test really loses.
#ifndef TESTS_SUPPORT_BUSCLIENT_H
#define TESTS_SUPPORT_BUSCLIENT_H

#include "runtime/cbus.h"

#include <cstdlib>

inline void clearRows(cbus_conn_t* conn, cbus_client_row_t*& rows, uint32_t& count,
                      void (*remove)(cbus_conn_t*, const char*, cbus_client_cb_t, void*))
{
    while (count) {
        const cbus_client_row_t row = rows[0];
        remove(conn, row.name, row.func, row.user);
    }
}

// Its loop, if it has one, must not run again.
inline void endConnection(cbus_conn_t* conn)
{
    clearRows(conn, conn->signal_rows, conn->signal_count, cbus_client_signal_cb_del);
    clearRows(conn, conn->request_rows, conn->request_count, cbus_client_request_cb_del);
    clearRows(conn, conn->reply_rows, conn->reply_count, cbus_client_reply_cb_del);
    while (conn->queue_head) {
        cbus_queued_t* node = conn->queue_head;
        conn->queue_head = node->next;
        free(node->body);
        free(node);
    }
    cbus_conn_destroy(conn);
}

#endif
