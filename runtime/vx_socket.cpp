// Sockets by text address. Keeps no state. Any thread.
#include "runtime/vx_socket.h"

#include <arpa/inet.h>
#include <errno.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

enum { PROTOCOL_LENGTH = 16, HOST_LENGTH = 32, PORT_LENGTH = 32, BACKLOG = 5 };

// The fields of an address, each with its NUL.
struct address_text {
    char protocol[PROTOCOL_LENGTH + 1];
    char host[HOST_LENGTH + 1];
    char port[PORT_LENGTH + 1];
};

struct address {
    int family;
    int type;
    socklen_t length;
    union {
        struct sockaddr any;
        struct sockaddr_un local;
        struct sockaddr_in inet;
    } to;
};

struct protocol {
    const char* name;
    int family;
    int type;
};

const protocol PROTOCOLS[] = {
    {"unix", AF_UNIX, SOCK_STREAM},
    {"tcp", AF_INET, SOCK_STREAM},
    {"udp", AF_INET, SOCK_DGRAM},
};

// Copies up to the next asterisk, at most limit characters; what is longer is dropped. Split by hand and not
// by scanf, which would stop at an empty host. Returns what follows the asterisk, or the end of the text.
const char* take_field(const char* text, char* field, size_t limit)
{
    size_t length = strcspn(text, "*");
    size_t kept = length < limit ? length : limit;
    memcpy(field, text, kept);
    field[kept] = '\0';
    return text[length] == '*' ? text + length + 1 : text + length;
}

bool parse_port(const char* text, in_port_t* port)
{
    if (!*text) {
        *port = 0;
        return true;
    }
    char* end;
    errno = 0;
    long value = strtol(text, &end, 10);
    if (errno != 0 || *end || value < 0 || value > 65535) {
        return false;
    }
    *port = htons(static_cast<uint16_t>(value));
    return true;
}

bool fill_inet(const address_text& text, address* address)
{
    address->length = sizeof(address->to.inet);
    address->to.inet.sin_family = AF_INET;
    const char* host = *text.host ? text.host : "127.0.0.1";
    return inet_aton(host, &address->to.inet.sin_addr) && parse_port(text.port, &address->to.inet.sin_port);
}

// An abstract name: its first byte is zero, and its length is that of the whole address whatever the name, so
// the zeros behind the name are part of it.
bool fill_unix(const address_text& text, address* address)
{
    address->length = sizeof(address->to.local);
    address->to.local.sun_family = AF_UNIX;
    memcpy(address->to.local.sun_path + 1, text.host, strlen(text.host));
    return true;
}

bool parse_address(const char* text, address* address)
{
    address_text fields;
    const char* rest = take_field(text, fields.protocol, PROTOCOL_LENGTH);
    rest = take_field(rest, fields.host, HOST_LENGTH);
    take_field(rest, fields.port, PORT_LENGTH);

    memset(address, 0, sizeof(*address));
    for (const protocol& row : PROTOCOLS) {
        if (strcmp(row.name, fields.protocol) == 0) {
            address->family = row.family;
            address->type = row.type;
            return row.family == AF_UNIX ? fill_unix(fields, address) : fill_inet(fields, address);
        }
    }
    return false;
}

int close_failed(int fd)
{
    int saved = errno;
    close(fd);
    errno = saved;
    return -1;
}

// A socket for the address text, or -1.
int open_socket(const char* text, address* address)
{
    if (!parse_address(text, address)) {
        errno = EINVAL;
        return -1;
    }
    return socket(address->family, address->type | SOCK_CLOEXEC, 0);
}

int set_option(int fd, int option)
{
    int on = 1;
    return setsockopt(fd, SOL_SOCKET, option, &on, sizeof(on));
}

} // namespace

int socket_create_client(const char* address)
{
    struct address parsed;
    int fd = open_socket(address, &parsed);
    if (fd >= 0 && connect(fd, &parsed.to.any, parsed.length) < 0) {
        return close_failed(fd);
    }
    return fd;
}

int socket_create_client_nonblocking(const char* address)
{
    struct address parsed;
    int fd = open_socket(address, &parsed);
    if (fd < 0) {
        return -1;
    }
    if (socket_set_blocking(fd, 0) < 0) {
        return close_failed(fd);
    }
    if (connect(fd, &parsed.to.any, parsed.length) < 0 && errno != EINPROGRESS) {
        return close_failed(fd);
    }
    return fd;
}

int socket_create_server(const char* address)
{
    struct address parsed;
    int fd = open_socket(address, &parsed);
    if (fd < 0) {
        return -1;
    }
    if (parsed.family == AF_INET && set_option(fd, SO_REUSEADDR) < 0) {
        return close_failed(fd);
    }
    if (bind(fd, &parsed.to.any, parsed.length) < 0) {
        return close_failed(fd);
    }
    if (parsed.type == SOCK_STREAM && listen(fd, BACKLOG) < 0) {
        return close_failed(fd);
    }
    return fd;
}

int socket_create_server_client(int server)
{
    return accept4(server, nullptr, nullptr, SOCK_CLOEXEC);
}

int socket_broadcast_enable(int fd)
{
    return set_option(fd, SO_BROADCAST);
}

int socket_bind_device(int fd, const char* interface)
{
    return setsockopt(fd, SOL_SOCKET, SO_BINDTODEVICE, interface,
                      static_cast<socklen_t>(strlen(interface) + 1));
}

int socket_get_port_number(int fd)
{
    struct sockaddr_in name;
    memset(&name, 0, sizeof(name));
    socklen_t length = sizeof(name);
    if (getsockname(fd, reinterpret_cast<struct sockaddr*>(&name), &length) < 0) {
        return -1;
    }
    if (name.sin_family != AF_INET) {
        errno = EAFNOSUPPORT;
        return -1;
    }
    return ntohs(name.sin_port);
}

int socket_get_error(int fd)
{
    int error = 0;
    socklen_t length = sizeof(error);
    return getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &length) < 0 ? errno : error;
}

int socket_set_blocking(int fd, int blocking)
{
    int flags = fcntl(fd, F_GETFL);
    if (flags < 0) {
        return -1;
    }
    flags = blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK;
    return fcntl(fd, F_SETFL, flags) < 0 ? -1 : 0;
}
