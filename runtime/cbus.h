// Messages on the bus: signals, requests, replies. The one header that a user of the bus needs.
//
// A connection is used in two ways at once: from its event loop, which delivers what arrives, and
// synchronously, by sending a request and waiting in cbus_get_reply(). What arrives meanwhile waits in a
// queue (of at most 1,999 messages) and is delivered from the loop, in order.
//
// Everything belongs to the connection's thread but cbus_send_signal() and what is built on it.
#ifndef RUNTIME_CBUS_H
#define RUNTIME_CBUS_H

#include "runtime/cbus_client.h"

// Sends a signal: fire and forget. `name` may be null, `data` too, which makes the length 0; `len` is in
// bytes. A name of CBUS_NAME_LIMIT bytes (NUL included) or data of CBUS_DATA_LIMIT bytes and more is
// logged and refused with -1.
// Returns 0 once the whole frame is in the socket, 1 if an error cut it short, -1 if the connection is
// closed or the message was refused. Takes a sequence number in any case.
//
// Blocks without limit while the socket is full. The connection's own thread then also reads what the server
// sends and queues it, lest both sides wait for each other.
//
// May be called from a second thread: the frame goes out with one writev(), all state is on the stack. Not
// protected is the sequence number. A second thread that has to wait for room reads nothing: that is left to
// the connection's own thread, which must therefore be alive and reading. On a local socket a frame of up to
// some ten thousand bytes goes in whole or not at all, so the frames of two threads do not mix; a second
// thread must send no longer ones.
int cbus_send_signal(cbus_conn_t* conn, const char* name, const void* data, uint32_t len);

// Sends a request as above. Returns its cookie, 0 to 65535, or -1 if it could not be sent whole.
int cbus_send_request(cbus_conn_t* conn, const char* name, const void* data, uint32_t len);

// Waits, without a time limit, for the reply to the request with this cookie. Requests go strictly one at
// a time: a reply to anything else ends the process with "Cookie mismatch (%u/%u)\n".
// On success `*out` is a buffer that the caller frees, even one of length 0, and the result its length in
// bytes. If the connection is or gets lost, it is closed and taken off its loop, `*out` is null and the
// result -1.
int cbus_get_reply(cbus_conn_t* conn, int cookie, void** out);

// Answers the message being delivered, under its name; only inside a callback, or after
// cbus_copy_sender_ctx(). Returns as cbus_send_signal(); takes no sequence number.
int cbus_send_reply(cbus_conn_t* conn, const void* data, uint32_t len);

// Answers the message whose context was kept, then frees the context. Returns as cbus_send_reply().
int cbus_send_reply_to(cbus_conn_t* conn, const void* data, uint32_t len, cbus_sender_ctx_t* ctx);

// Tells the server which signals to send here: all whose name begins with `text`.
// Returns as cbus_send_signal().
int cbus_filter(cbus_conn_t* conn, const char* text);

// Tells the server which requests are served here: all whose name begins with `text`.
// Returns as cbus_send_signal().
int cbus_provide(cbus_conn_t* conn, const char* text);

// Prints a message on standard output: time, `src` of the current message, tag, name, and a non-empty
// payload as a hexadecimal dump.
void cbus_show_message(cbus_conn_t* conn, const char* tag, const char* name, const void* data, uint32_t len);

#endif
