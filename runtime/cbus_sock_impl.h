// The socket part of the bus client: connecting, writing and reading whole frames, delivering them, the
// queue. For the library itself and for its tests; users include cbus.h.
//
// All of it belongs to the connection's thread, but cbus_impl_send() (see cbus_send_signal()).
#ifndef RUNTIME_CBUS_SOCK_IMPL_H
#define RUNTIME_CBUS_SOCK_IMPL_H

#include "runtime/cbus_client.h"

// At most one message less than this waits in a connection's queue; this one is an assertion.
enum { CBUS_QUEUE_LIMIT = 2000 };

// One frame to be written: its parts stay the caller's.
struct cbus_frame_t {
    cbus_header_t header;
    const char* name; // header.nlen bytes
    const void* data; // header.dlen bytes
};

// Whether CBUS_DEBUG was set when a connection was made: one switch for the process.
extern bool cbus_debug;

// Connects the client record's connection, enters it on the record's loop, and fills the close slot.
// Returns 0, or -1 if there is no server.
int cbus_impl_client_conn_create(cbus_client_t* client);

// Writes one frame. Returns 0 if every byte was written, 1 if not, -1 if the connection is closed.
int cbus_impl_send(cbus_conn_t* conn, const cbus_frame_t* frame);

// Waits until there is something to read, be it an end or an error.
void cbus_impl_wait_readable(int fd);

// Reads one whole frame from `fd`, waiting as long as it takes. Fills `header` and returns the body (name
// block, then data block), which the caller frees; `count` is header and body in bytes. At the end of the
// stream or on an error it returns null with a count of -1. Lengths beyond the limits are assertions.
// A name that lacks its NUL gets it in place of its last byte.
uint8_t* cbus_impl_msg_read(int fd, cbus_header_t* header, int* count);

// Appends a message that cbus_impl_msg_read() returned to the queue, which then owns the body.
void cbus_impl_queue_add(cbus_conn_t* conn, const cbus_header_t* header, uint8_t* body, int count);

// Closes a lost connection outside its receive handler: takes the socket off the loop first, since select
// must never see a closed descriptor, then calls the close function.
void cbus_impl_conn_lost(cbus_conn_t* conn);

#endif
