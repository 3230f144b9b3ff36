// Sockets by address text: what the text means, byte by byte, and each operation on a real socket.
#include "runtime/vx_socket.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace {

// Closes itself.
class Socket {
public:
    explicit Socket(int descriptor) : fd(descriptor) {}
    ~Socket()
    {
        if (fd >= 0) {
            close(fd);
        }
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    operator int() const { return fd; }

private:
    int fd;
};

std::string uniqueName(const char* test)
{
    return "vs." + std::to_string(getpid()) + "." + test;
}

std::vector<uint8_t> localAddress(int fd)
{
    struct sockaddr_storage name = {};
    socklen_t length = sizeof(name);
    if (getsockname(fd, reinterpret_cast<struct sockaddr*>(&name), &length) < 0) {
        length = 0;
    }
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(&name);
    return std::vector<uint8_t>(bytes, bytes + length);
}

TEST(VxSocket, UnixAddressIsAbstractOf110BytesWithZerosBehindTheName)
{
    std::string name = uniqueName("layout");
    Socket server(socket_create_server(("unix*" + name).c_str()));
    ASSERT_GE(server, 0);
    std::vector<uint8_t> expected(110, 0);
    sa_family_t family = AF_UNIX;
    memcpy(expected.data(), &family, 2);
    memcpy(expected.data() + 3, name.data(), name.size());
    EXPECT_EQ(localAddress(server), expected);
}

TEST(VxSocket, FieldsBehindTheUnixNameAreNotPartOfIt)
{
    std::string name = uniqueName("port");
    Socket server(socket_create_server(("unix*" + name + "*77*x").c_str()));
    ASSERT_GE(server, 0);
    Socket client(socket_create_client(("unix*" + name).c_str()));
    EXPECT_GE(client, 0);
}

TEST(VxSocket, UnixNameCountsUpTo32Characters)
{
    std::string name = uniqueName("");
    name.append(32 - name.size(), 'n');
    Socket server(socket_create_server(("unix*" + name + "tail").c_str()));
    ASSERT_GE(server, 0);
    Socket client(socket_create_client(("unix*" + name + "other*").c_str()));
    EXPECT_GE(client, 0);
    Socket shorter(socket_create_client(("unix*" + name.substr(0, 31)).c_str()));
    EXPECT_EQ(shorter, -1);
}

TEST(VxSocket, ClientAndServerTalkOverUnix)
{
    std::string address = "unix*" + uniqueName("talk");
    Socket server(socket_create_server(address.c_str()));
    ASSERT_GE(server, 0);
    Socket client(socket_create_client(address.c_str()));
    ASSERT_GE(client, 0);
    Socket accepted(socket_create_server_client(server));
    ASSERT_GE(accepted, 0);
    EXPECT_EQ(write(client, "hi", 2), 2);
    char text[3] = "";
    EXPECT_EQ(read(accepted, text, 2), 2);
    EXPECT_STREQ(text, "hi");
    EXPECT_EQ(fcntl(client, F_GETFL) & O_NONBLOCK, 0);
    for (int fd : {int(server), int(client), int(accepted)}) {
        EXPECT_EQ(fcntl(fd, F_GETFD), FD_CLOEXEC);
    }
}

TEST(VxSocket, EmptyHostBetweenAsterisksMeansLoopback)
{
    Socket server(socket_create_server("tcp**0"));
    ASSERT_GE(server, 0);
    std::vector<uint8_t> name = localAddress(server);
    ASSERT_EQ(name.size(), 16u);
    struct sockaddr_in inet;
    memcpy(&inet, name.data(), sizeof(inet));
    EXPECT_EQ(inet.sin_family, AF_INET);
    EXPECT_EQ(ntohl(inet.sin_addr.s_addr), 0x7f000001u);
    int port = socket_get_port_number(server);
    EXPECT_GT(port, 0);
    Socket client(socket_create_client(("tcp*127.0.0.1*" + std::to_string(port)).c_str()));
    EXPECT_GE(client, 0);
    Socket other(socket_create_client(("tcp**" + std::to_string(port)).c_str()));
    EXPECT_GE(other, 0);
}

TEST(VxSocket, TcpServerReusesItsAddress)
{
    Socket server(socket_create_server("tcp*127.0.0.1*0"));
    int on = 0;
    socklen_t length = sizeof(on);
    ASSERT_EQ(getsockopt(server, SOL_SOCKET, SO_REUSEADDR, &on, &length), 0);
    EXPECT_NE(on, 0);
}

TEST(VxSocket, UdpIsADatagramSocketWithoutListening)
{
    Socket server(socket_create_server("udp*127.0.0.1*0"));
    ASSERT_GE(server, 0);
    int type = 0;
    socklen_t length = sizeof(type);
    getsockopt(server, SOL_SOCKET, SO_TYPE, &type, &length);
    EXPECT_EQ(type, SOCK_DGRAM);
    Socket client(
        socket_create_client(("udp*127.0.0.1*" + std::to_string(socket_get_port_number(server))).c_str()));
    ASSERT_GE(client, 0);
    EXPECT_EQ(send(client, "x", 1, 0), 1);
    char byte;
    EXPECT_EQ(recv(server, &byte, 1, 0), 1);
}

TEST(VxSocket, OtherTextsAreRefused)
{
    const char* refused[] = {"",
                             "*",
                             "unix6*name",
                             "TCP*127.0.0.1*0",
                             "file*name",
                             "unixunixunixunixunix*name",
                             "tcp*localhost*80",
                             "tcp*300.0.0.1*80",
                             "tcp*127.0.0.1*65536",
                             "tcp*127.0.0.1*-1",
                             "tcp*127.0.0.1*80x",
                             "udp*nobody*1"};
    for (const char* text : refused) {
        errno = 0;
        EXPECT_EQ(socket_create_client(text), -1) << text;
        EXPECT_EQ(errno, EINVAL) << text;
        EXPECT_EQ(socket_create_client_nonblocking(text), -1) << text;
        EXPECT_EQ(socket_create_server(text), -1) << text;
    }
}

int nextDescriptor()
{
    int fd = dup(STDERR_FILENO);
    close(fd);
    return fd;
}

TEST(VxSocket, FailureLeavesNoDescriptorBehindAndKeepsErrno)
{
    int next = nextDescriptor();
    std::string address = "unix*" + uniqueName("nobody");
    EXPECT_EQ(socket_create_client(address.c_str()), -1);
    EXPECT_EQ(errno, ECONNREFUSED);
    EXPECT_EQ(socket_create_client_nonblocking(address.c_str()), -1);
    EXPECT_EQ(errno, ECONNREFUSED);
    EXPECT_EQ(nextDescriptor(), next);
    Socket server(socket_create_server(address.c_str()));
    next = nextDescriptor();
    EXPECT_EQ(socket_create_server(address.c_str()), -1);
    EXPECT_EQ(errno, EADDRINUSE);
    EXPECT_EQ(nextDescriptor(), next);
}

TEST(VxSocket, NonblockingClient)
{
    std::string address = "unix*" + uniqueName("nb");
    Socket server(socket_create_server(address.c_str()));
    Socket client(socket_create_client_nonblocking(address.c_str()));
    ASSERT_GE(client, 0);
    EXPECT_NE(fcntl(client, F_GETFL) & O_NONBLOCK, 0);
}

TEST(VxSocket, NonblockingClientCountsAConnectionUnderWayAsSuccess)
{
    // TCP reports EINPROGRESS even on the loopback; whether it comes about is seen later.
    Socket server(socket_create_server("tcp**0"));
    std::string address = "tcp**" + std::to_string(socket_get_port_number(server));
    Socket client(socket_create_client_nonblocking(address.c_str()));
    ASSERT_GE(client, 0);
    Socket accepted(socket_create_server_client(server));
    EXPECT_GE(accepted, 0);
    EXPECT_EQ(socket_get_error(client), 0);
}

TEST(VxSocket, BacklogIs5)
{
    std::string address = "unix*" + uniqueName("backlog");
    Socket server(socket_create_server(address.c_str()));
    std::vector<int> clients;
    int client;
    while (clients.size() < 100 && (client = socket_create_client_nonblocking(address.c_str())) >= 0) {
        clients.push_back(client);
    }
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_EQ(clients.size(), 6u); // Linux lets one more wait than the backlog says
    for (int other : clients) {
        close(other);
    }
}

TEST(VxSocket, AcceptOnWhatIsNoServerFails)
{
    Socket client(socket(AF_UNIX, SOCK_STREAM, 0));
    EXPECT_EQ(socket_create_server_client(client), -1);
}

TEST(VxSocket, BroadcastIsEnabled)
{
    Socket client(socket(AF_INET, SOCK_DGRAM, 0));
    EXPECT_EQ(socket_broadcast_enable(client), 0);
    int on = 0;
    socklen_t length = sizeof(on);
    getsockopt(client, SOL_SOCKET, SO_BROADCAST, &on, &length);
    EXPECT_NE(on, 0);
    EXPECT_EQ(socket_broadcast_enable(-1), -1);
}

TEST(VxSocket, BindsToADevice)
{
    Socket client(socket(AF_INET, SOCK_DGRAM, 0));
    EXPECT_EQ(socket_bind_device(client, "no-such-device"), -1);
    if (socket_bind_device(client, "lo") < 0 && errno == EPERM) {
        GTEST_SKIP() << "needs the right to bind to a device";
    }
    char name[16] = "";
    socklen_t length = sizeof(name);
    ASSERT_EQ(getsockopt(client, SOL_SOCKET, SO_BINDTODEVICE, name, &length), 0);
    EXPECT_STREQ(name, "lo");
}

TEST(VxSocket, PortNumberNeedsAnInetSocket)
{
    EXPECT_EQ(socket_get_port_number(-1), -1);
    Socket server(socket_create_server(("unix*" + uniqueName("noport")).c_str()));
    EXPECT_EQ(socket_get_port_number(server), -1);
}

TEST(VxSocket, ErrorOfTheSocketOrOfTheCall)
{
    EXPECT_EQ(socket_get_error(-1), EBADF);
    int port;
    {
        Socket server(socket_create_server("udp**0"));
        port = socket_get_port_number(server);
    }
    Socket client(socket_create_client(("udp**" + std::to_string(port)).c_str()));
    ASSERT_EQ(send(client, "x", 1, 0), 1); // nobody there: the refusal comes back to the socket
    EXPECT_EQ(socket_get_error(client), ECONNREFUSED);
    EXPECT_EQ(socket_get_error(client), 0); // read once, gone
}

TEST(VxSocket, SetBlocking)
{
    Socket client(socket(AF_UNIX, SOCK_STREAM, 0));
    EXPECT_EQ(socket_set_blocking(client, 0), 0);
    EXPECT_NE(fcntl(client, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(socket_set_blocking(client, 1), 0);
    EXPECT_EQ(fcntl(client, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(socket_set_blocking(-1, 1), -1);
    Socket place(open("/", O_PATH | O_CLOEXEC)); // has flags, but none can be set
    EXPECT_EQ(socket_set_blocking(place, 0), -1);
    EXPECT_EQ(errno, EBADF);
}

} // namespace
