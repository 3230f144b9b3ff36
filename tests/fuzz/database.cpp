// See database.h.
#include "fuzz/database.h"

#include "fuzz/fuzz.h"
#include "runtime/cbus_sock_impl.h"
#include "runtime/config_client_api.h"
#include "runtime/fdloop_impl.h"

#include <csignal>
#include <ctime>
#include <poll.h>
#include <unistd.h>

namespace {

int64_t sleptMs = 0;

bool isReadable(int fd)
{
    struct pollfd entry = {fd, POLLIN, 0};
    return poll(&entry, 1, 0) != 0;
}

// Ends a wait of a loop that has nothing to do.
int wake(void*)
{
    return 1;
}

fdloop_t* newLoop()
{
    fdloop_t* const loop = fdloop_init();
    fdloop_timer_add(loop, 1, wake, nullptr);
    return loop;
}

} // namespace

extern "C" {

// cbus_impl_wait_readable(int)
void __wrap__Z23cbus_impl_wait_readablei(int fd)
{
    fuzz::Database::instance().workUntilReadable(fd);
}

// cbus_impl_msg_read(int, cbus_header_t*, int*), as the wait for a reply calls it
uint8_t* __real__Z18cbus_impl_msg_readiP13cbus_header_tPi(int fd, cbus_header_t* header, int* count);
uint8_t* __wrap__Z18cbus_impl_msg_readiP13cbus_header_tPi(int fd, cbus_header_t* header, int* count)
{
    fuzz::Database::instance().workUntilReadable(fd);
    return __real__Z18cbus_impl_msg_readiP13cbus_header_tPi(fd, header, count);
}

int __wrap_nanosleep(const struct timespec* duration, struct timespec*)
{
    sleptMs += duration->tv_sec * 1000 + duration->tv_nsec / 1000000;
    return 0;
}
}

namespace fuzz {

Database& Database::instance()
{
    static Database* const one = new Database;
    return *one;
}

Database::Database()
    : serverLoop(newLoop()), server(serverLoop, [](const std::string&) {}),
      bus(serverLoop, database, server, sim::DatabaseBus::Hooks())
{
    signal(SIGPIPE, SIG_IGN);
    const std::string address = "unix*fuzz" + std::to_string(getpid());
    std::string problem;
    if (!server.listen(address, &problem))
        fail(problem);
    database.addListener([this](const std::vector<sim::Write>& changes) { bus.publishChanges(changes); });
    setenv("CBUS_ADDR", address.c_str(), 1);
    unsetenv("CBUS_DEBUG");
    clientLoop = newLoop();
    conn = cbus_conn_create(clientLoop, "fuzz");
    if (!conn)
        fail("no connection");
    config_init_cbus(conn, nullptr);
    while (server.clients().empty())
        fdloop_run(serverLoop);
}

void Database::addLine(const std::string& line, std::vector<sim::Write>* writes)
{
    const size_t blank = line.find(' ', 2);
    if (line.size() < 3 || line[1] != ' ' || !strchr("isbd", line[0]) || writes->size() == 500)
        return;
    const std::string value = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    sim::Write write = {line.substr(2, blank == std::string::npos ? blank : blank - 2), sim::Value()};
    if (line[0] == 'i')
        write.value = sim::Value::integer(static_cast<int32_t>(strtoll(value.c_str(), nullptr, 10)));
    else if (line[0] == 's')
        write.value = sim::Value::text(value);
    else if (line[0] == 'b')
        write.value = sim::Value::blob(value);
    writes->push_back(write);
}

void Database::settle()
{
    server.drain();
}

void Database::deliver()
{
    settle();
    while (isReadable(conn->fd) || conn->queue_head) {
        fdloop_run(clientLoop);
        settle();
    }
}

void Database::clear()
{
    clientLoop->in_fd_dispatch = 0; // a panic has left the loop in the middle of a turn
    cbus_conn_set_rx_cb(conn, nullptr, nullptr, nullptr);
    std::vector<sim::Write> deletions;
    for (const auto& row : database.all())
        deletions.push_back({row.first, sim::Value()});
    database.apply(deletions);
    deliver();
    cbus_client_init_cb(conn);
    sleptMs = 0;
}

int Database::numberOf(const std::string& key) const
{
    const sim::Value* const value = database.find(key);
    return value && value->isInt() ? value->toInt() : -1;
}

int64_t Database::slept() const
{
    return sleptMs;
}

void Database::workUntilReadable(int fd)
{
    while (!isReadable(fd))
        server.drain();
}

} // namespace fuzz
