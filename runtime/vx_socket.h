// Sockets by text address.
//
// An address has up to three fields separated by asterisks, PROTOCOL*HOST*PORT, of which the first 16, 32 and
// 32 characters count:
//   unix*NAME       abstract Unix stream socket; the address passed is always 110 bytes, zero behind the name
//   tcp*HOST*PORT   IPv4 stream socket; HOST in dotted form, empty means 127.0.0.1; PORT in decimal, empty is
//   0 udp*HOST*PORT   IPv4 datagram socket, the same
// Anything else is refused with EINVAL. Two Unix names that agree in 32 characters are the same socket.
//
// Any thread. All sockets are made close-on-exec and belong to the caller, who closes them. On failure the
// functions return -1 with errno, and leave no descriptor behind.
#ifndef RUNTIME_VX_SOCKET_H
#define RUNTIME_VX_SOCKET_H

// Connects; blocks until that is done. Returns the blocking socket.
int socket_create_client(const char* address);

// The same in non-blocking mode: the connection may still be under way (EINPROGRESS), and the first write or
// read then waits for it.
int socket_create_client_nonblocking(const char* address);

// Binds (with SO_REUSEADDR for IPv4) and, for stream sockets, listens with a backlog of 5.
int socket_create_server(const char* address);

// Accepts one connection; blocks unless the server socket is non-blocking. The new socket is blocking.
int socket_create_server_client(int server);

// SO_BROADCAST. 0 or -1.
int socket_broadcast_enable(int fd);

// SO_BINDTODEVICE with the name of a network interface. 0 or -1.
int socket_bind_device(int fd, const char* interface);

// The local port in host order, or -1 if the socket has none.
int socket_get_port_number(int fd);

// The pending error of the socket (SO_ERROR, which clears it; 0 if there is none), or errno if that can't be
// read.
int socket_get_error(int fd);

// Clears (blocking not 0) or sets O_NONBLOCK. 0 or -1.
int socket_set_blocking(int fd, int blocking);

#endif
