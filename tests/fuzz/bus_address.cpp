// Fuzz target: the text of a bus address. The first byte says what is opened and what the system answers, the
// rest is the text.
//
// No socket is opened: the linker puts the functions below in the place of the system's (--wrap), and the
// addresses that they are given are compared with the rules, told once more here for texts whose fields keep
// their lengths. No legal end.
#include "fuzz/fuzz.h"

#include "runtime/vx_socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using fuzz::check;

namespace {

int answer;       // what the system answers: an errno or 0
std::string used; // the address that was connected or bound
int domain, kind; // of the socket; -1 if none was asked for

int take(const struct sockaddr* address, socklen_t length)
{
    used.assign(reinterpret_cast<const char*>(address), length);
    errno = answer;
    return answer ? -1 : 0;
}

std::vector<std::string> fieldsOf(const std::string& text)
{
    std::vector<std::string> fields(1);
    for (char character : text) {
        if (character == '*')
            fields.emplace_back();
        else
            fields.back() += character;
    }
    fields.resize(3);
    return fields;
}

void checkUnix(const std::string& host)
{
    check(domain == AF_UNIX && kind == SOCK_STREAM, "another socket than a local one");
    check(used.size() == 110, "another length of a local address");
    std::string wanted(108, '\0');
    wanted.replace(1, host.size(), host);
    check(used.substr(2) == wanted, "another local address");
}

void checkInet(const std::vector<std::string>& fields)
{
    struct in_addr host;
    if (!inet_aton(fields[1].empty() ? "127.0.0.1" : fields[1].c_str(), &host)) {
        check(domain == -1, "a socket for a host that is none");
        return;
    }
    if (fields[2].empty() || fields[2].size() > 5 ||
        fields[2].find_first_not_of("0123456789") != std::string::npos)
        return;
    const int port = atoi(fields[2].c_str());
    if (port > 65535) {
        check(domain == -1, "a socket for a port that is none");
        return;
    }
    check(domain == AF_INET && kind == (fields[0] == "tcp" ? SOCK_STREAM : SOCK_DGRAM), "another socket");
    check(used.size() == sizeof(struct sockaddr_in), "another length of an address");
    struct sockaddr_in address;
    memcpy(&address, used.data(), sizeof(address));
    check(address.sin_addr.s_addr == host.s_addr && address.sin_port == htons(static_cast<uint16_t>(port)),
          "another address");
}

void checkAddress(const std::string& text)
{
    const std::vector<std::string> fields = fieldsOf(text);
    if (fields[0].size() > 16 || fields[1].size() > 32 || fields[2].size() > 32)
        return;
    if (fields[0] == "unix")
        checkUnix(fields[1]);
    else if (fields[0] == "tcp" || fields[0] == "udp")
        checkInet(fields);
    else
        check(domain == -1, "a socket for a protocol that is none");
}

} // namespace

extern "C" {

int __wrap_socket(int family, int type, int)
{
    domain = family;
    kind = type & ~SOCK_CLOEXEC;
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

int __wrap_connect(int, const struct sockaddr* address, socklen_t length)
{
    return take(address, length);
}

int __wrap_bind(int, const struct sockaddr* address, socklen_t length)
{
    return take(address, length);
}

int __wrap_listen(int, int)
{
    return 0;
}

int __wrap_setsockopt(int, int, int, const void*, socklen_t)
{
    return 0;
}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int (*const functions[])(const char*) = {socket_create_client, socket_create_client_nonblocking,
                                                    socket_create_server};
    static const int answers[] = {0, 0, EINPROGRESS, ECONNREFUSED};
    if (size < 1)
        return 0;
    fuzz::Input input(data, size);
    const int how = input.byte();
    answer = answers[how / 3 % 4];
    used.clear();
    domain = kind = -1;
    const std::string rest = input.rest();
    const auto text =
        fuzz::exactCopy(reinterpret_cast<const uint8_t*>(rest.c_str()), strlen(rest.c_str()) + 1);
    const int fd = functions[how % 3](reinterpret_cast<const char*>(text.get()));
    if (fd >= 0)
        close(fd);
    const bool taken = answer == 0 || (answer == EINPROGRESS && how % 3 == 1);
    check(fd >= 0 ? taken && !used.empty() : !taken || used.empty(), "a result of nobody");
    checkAddress(rest.c_str());
    return 0;
}
