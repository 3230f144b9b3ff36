// Two ways of one integer key between the display and the terminal's server: a read, and a write whose change
// comes back to a subscription, as all that the user sets does. Against a bare ping-pong of the same bytes in
// which both sides wait in poll, and against D-Bus through a daemon of its own: a method call to a service,
// and a call without a reply that the service answers with a signal.
//
// Every process is pinned to the same processor, so that the wall clock counts the work of all of them. After
// the usual table a second one: processor time of all processes that take part, in ratios to the ping-pong,
// taken in short alternating rounds so that other load on the machine meets all alike.
#include "bench/rows.h"
#include "bench/steps.h"
#include "runtime/cbus.h"
#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"
#include "runtime/fdloop.h"
#include "support/rawbus.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <poll.h>
#include <sched.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#ifdef HAVE_SYSTEMD
#include <systemd/sd-bus.h>
#endif

namespace {

const char KEY[] = "ram.status.signal_strength";

void check(bool good, const char* what)
{
    if (!good) {
        perror(what);
        exit(1);
    }
}

void pinToOneProcessor()
{
    cpu_set_t set;
    check(sched_getaffinity(0, sizeof(set), &set) == 0, "sched_getaffinity");
    int last = CPU_SETSIZE - 1;
    while (!CPU_ISSET(last, &set))
        --last;
    CPU_ZERO(&set);
    CPU_SET(last, &set);
    check(sched_setaffinity(0, sizeof(set), &set) == 0, "sched_setaffinity");
}

double nanoseconds(clockid_t clock)
{
    struct timespec now;
    check(clock_gettime(clock, &now) == 0, "clock_gettime");
    return 1e9 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec);
}

// A process that lives as long as this one. The function says when it is ready, and never returns.
class Child {
public:
    explicit Child(const std::function<void(std::function<void()>)>& body)
    {
        int ends[2];
        check(pipe(ends) == 0, "pipe");
        pid = fork();
        if (pid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            body([&ends] { check(write(ends[1], "x", 1) == 1, "write"); });
            _exit(0);
        }
        char byte;
        check(read(ends[0], &byte, 1) == 1, "child");
        close(ends[0]);
        close(ends[1]);
    }
    ~Child()
    {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    double processorNanoseconds() const
    {
        clockid_t clock;
        check(clock_getcpuclockid(pid, &clock) == 0, "clock_getcpuclockid");
        return nanoseconds(clock);
    }

private:
    pid_t pid;
};

// --- The terminal's server

void terminalProcess(const std::string& address, const std::function<void()>& ready)
{
    ready(); // the client tries until it listens
    execl(PROJECT_BINARY_DIR "/terminalsim", "terminalsim", "--address", address.c_str(), "--still",
          "--quiet", static_cast<char*>(nullptr));
    perror("terminalsim");
    _exit(1);
}

fdloop_t* loop;
bool changed;

void connectToTerminal(const std::string& address)
{
    loop = fdloop_init();
    setenv("CBUS_ADDR", address.c_str(), 1);
    cbus_conn_t* conn = nullptr;
    for (int attempt = 0; attempt < 500 && !conn; ++attempt) {
        conn = cbus_conn_create(loop, "bench");
        if (!conn)
            usleep(10000);
    }
    check(conn != nullptr, "cbus_conn_create");
    config_init_cbus(conn, nullptr);
    config_change_register(
        KEY, [](unsigned, const config_data_t*, void*, const config_change_row_t*) { changed = true; },
        nullptr);
}

// By turns, since only another value is a change. An even number of calls leaves the value as it was, so that
// what is counted in a forked process doesn't disturb this one.
int nextValue()
{
    static int value = 400;
    return value = value == 400 ? 401 : 400;
}

void writeKey()
{
    changed = false;
    config_write_int(KEY, nextValue());
    while (!changed)
        fdloop_run(loop);
}

void readKey()
{
    int value;
    check(config_read_int(KEY, &value) == 0, "config_read_int");
}

// --- The bare ping-pong

struct PingPong {
    const std::string request;
    const std::string reply;
    int client = -1;
    int server = -1;

    PingPong(std::string request, std::string reply) : request(std::move(request)), reply(std::move(reply))
    {
        int ends[2];
        check(socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0, "socketpair");
        client = ends[0];
        server = ends[1];
    }
    static bool waitAndRead(int fd, size_t size)
    {
        char buffer[256];
        struct pollfd entry = {fd, POLLIN, 0};
        return poll(&entry, 1, -1) == 1 && read(fd, buffer, sizeof(buffer)) == static_cast<ssize_t>(size);
    }
    static bool put(int fd, const std::string& bytes)
    {
        return write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }
    void serve() const
    {
        while (waitAndRead(server, request.size()) && put(server, reply)) {
        }
    }
    void ask() const { check(put(client, request) && waitAndRead(client, reply.size()), "ping-pong"); }
};

PingPong readBare()
{
    const std::string name = std::string("config.read.") + KEY;
    return PingPong(
        requestBytes(0, 0, name, le32(0xffffffff) + le32(VX_CONFIG_TYPE_INT) + le32(4)),
        frameBytes(CBUS_TYPE_REPLY, 0, 0, name, le32(0) + le32(VX_CONFIG_TYPE_INT) + le32(4) + le32(0)));
}

PingPong writeBare()
{
    uint8_t* entry = nullptr;
    const int value = 400;
    const uint32_t length =
        config_vbuf_add(&entry, 0, nullptr, VX_CONFIG_TYPE_INT, KEY, &value, sizeof(value), 0);
    const std::string change(reinterpret_cast<char*>(entry), length);
    free(entry);
    return PingPong(
        signalBytes(std::string("config.write.") + KEY, le32(VX_CONFIG_TYPE_INT) + le32(4) + le32(400)),
        signalBytes("config.change.ram", change));
}

PingPong* bareRead;
PingPong* bareWrite;

void askBare()
{
    bareRead->ask();
}

void writeToBare()
{
    bareWrite->ask();
}

// --- D-Bus

#ifdef HAVE_SYSTEMD
const char BUS_NAME[] = "bench.Database";
const char BUS_PATH[] = "/bench/database";

std::string busAddress;
sd_bus* bus;

sd_bus* connectBus(const std::string& address)
{
    sd_bus* made = nullptr;
    for (int attempt = 0; attempt < 500; ++attempt) { // until the daemon listens
        if (sd_bus_new(&made) >= 0 && sd_bus_set_address(made, address.c_str()) >= 0 &&
            sd_bus_set_bus_client(made, 1) >= 0 && sd_bus_start(made) >= 0)
            return made;
        made = sd_bus_unref(made);
        usleep(10000);
    }
    check(false, "dbus-daemon");
    return nullptr;
}

int takeSignal(sd_bus_message* message, void*, sd_bus_error*)
{
    int32_t value;
    changed = sd_bus_message_read(message, "i", &value) > 0;
    return 0;
}

void connectClient()
{
    bus = connectBus(busAddress);
    check(sd_bus_match_signal(bus, nullptr, BUS_NAME, BUS_PATH, BUS_NAME, "Changed", takeSignal, nullptr) >=
              0,
          "sd_bus_match_signal");
}

int answerRead(sd_bus_message* message, void*, sd_bus_error*)
{
    const char* key;
    const int result = sd_bus_message_read(message, "s", &key);
    return result < 0 ? result : sd_bus_reply_method_return(message, "i", 456);
}

int takeWrite(sd_bus_message* message, void*, sd_bus_error*)
{
    const char* key;
    int32_t value;
    const int result = sd_bus_message_read(message, "si", &key, &value);
    return result < 0 ? result
                      : sd_bus_emit_signal(sd_bus_message_get_bus(message), BUS_PATH, BUS_NAME, "Changed",
                                           "i", value);
}

const sd_bus_vtable VTABLE[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "s", "i", answerRead, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Write", "si", "", takeWrite, SD_BUS_VTABLE_UNPRIVILEGED | SD_BUS_VTABLE_METHOD_NO_REPLY),
    SD_BUS_SIGNAL("Changed", "i", 0),
    SD_BUS_VTABLE_END,
};

void serviceProcess(const std::string& address, const std::function<void()>& ready)
{
    sd_bus* made = connectBus(address);
    check(sd_bus_add_object_vtable(made, nullptr, BUS_PATH, BUS_NAME, VTABLE, nullptr) >= 0 &&
              sd_bus_request_name(made, BUS_NAME, 0) >= 0,
          "service");
    ready();
    for (;;) {
        if (sd_bus_process(made, nullptr) == 0)
            sd_bus_wait(made, UINT64_MAX);
    }
}

void daemonProcess(const std::string& directory, const std::function<void()>& ready)
{
    const std::string file = directory + "/bus.conf";
    FILE* config = fopen(file.c_str(), "w");
    check(config != nullptr, "bus.conf");
    fprintf(config,
            "<busconfig><type>session</type><listen>unix:path=%s/socket</listen><auth>EXTERNAL</auth>"
            "<policy context=\"default\"><allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
            "<allow own=\"*\"/></policy></busconfig>",
            directory.c_str());
    fclose(config);
    ready(); // the clients try until it listens
    execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", "--nosyslog",
           ("--config-file=" + file).c_str(), static_cast<char*>(nullptr));
    perror("dbus-daemon");
    _exit(1);
}

void callMethod()
{
    sd_bus_message* reply = nullptr;
    int32_t value;
    check(sd_bus_call_method(bus, BUS_NAME, BUS_PATH, BUS_NAME, "Read", nullptr, &reply, "s", KEY) >= 0 &&
              sd_bus_message_read(reply, "i", &value) > 0,
          "sd_bus_call_method");
    sd_bus_message_unref(reply);
}

void writeByMethod()
{
    changed = false;
    sd_bus_message* call = nullptr;
    check(sd_bus_message_new_method_call(bus, &call, BUS_NAME, BUS_PATH, BUS_NAME, "Write") >= 0 &&
              sd_bus_message_append(call, "si", KEY, nextValue()) >= 0 &&
              sd_bus_message_set_expect_reply(call, 0) >= 0 && sd_bus_send(bus, call, nullptr) >= 0,
          "sd_bus_send");
    sd_bus_message_unref(call);
    while (!changed) {
        if (sd_bus_process(bus, nullptr) == 0)
            sd_bus_wait(bus, UINT64_MAX);
    }
}
#endif

// --- Measuring

struct Contender {
    const char* name;
    void (*once)();
    void (*connect)();                 // anew in a forked process, null if it needs none
    std::vector<const Child*> servers; // what works beside this process
};

struct Contest {
    const char* measure;
    std::vector<Contender> contenders; // ours first, and then the measure of all
};

double processorNanoseconds(const Contender& contender)
{
    double sum = nanoseconds(CLOCK_PROCESS_CPUTIME_ID);
    for (const Child* server : contender.servers)
        sum += server->processorNanoseconds();
    return sum;
}

double instructions(const Contender& contender)
{
    return steps::perTurn([&contender](int turns) {
        if (contender.connect)
            contender.connect();
        while (turns-- > 0)
            contender.once();
    });
}

void compare(const Contest& contest)
{
    const int ROUNDS = 201, CALLS = 100;
    const std::vector<Contender>& contenders = contest.contenders;
    std::vector<std::vector<double>> times(contenders.size());
    for (int round = 0; round < ROUNDS; ++round) {
        for (size_t index = 0; index < contenders.size(); ++index) {
            const double start = processorNanoseconds(contenders[index]);
            for (int call = 0; call < CALLS; ++call)
                contenders[index].once();
            times[index].push_back((processorNanoseconds(contenders[index]) - start) / CALLS);
        }
    }
    printf("\n%s, all processes on one processor: medians of %d alternating rounds of %d, ratios to the "
           "ping-pong\n",
           contest.measure, ROUNDS, CALLS);
    std::vector<rows::Contender> measured;
    for (size_t index = 0; index < contenders.size(); ++index)
        measured.push_back({contenders[index].name, times[index], instructions(contenders[index])});
    rows::compare(contest.measure, " of the client", measured);
}

void measure(const std::vector<Contest>& contests)
{
    for (const Contest& contest : contests) {
        for (const Contender& contender : contest.contenders) {
            contender.once();
            contender.once();
            const std::string name = std::string(contest.measure) + "/" + contender.name;
            benchmark::RegisterBenchmark(name.c_str(), [&contender](benchmark::State& state) {
                for (auto _ : state) {
                    contender.once();
                    contender.once();
                }
            })->UseRealTime();
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    for (const Contest& contest : contests)
        compare(contest);
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    pinToOneProcessor();
    const std::string address = "unix*cbusbench" + std::to_string(getpid());
    Child terminal([&](const std::function<void()>& ready) { terminalProcess(address, ready); });
    PingPong reading = readBare(), writing = writeBare();
    bareRead = &reading;
    bareWrite = &writing;
    const auto serve = [](const PingPong& bare) {
        return [&bare](const std::function<void()>& ready) {
            ready();
            bare.serve();
        };
    };
    Child readServer(serve(reading)), writeServer(serve(writing));
    connectToTerminal(address);
    std::vector<Contest> contests = {
        {"a key read",
         {{"config_read_int", readKey, nullptr, {&terminal}},
          {"bare socket", askBare, nullptr, {&readServer}}}},
        {"a key written, its change delivered",
         {{"config client", writeKey, nullptr, {&terminal}},
          {"bare socket", writeToBare, nullptr, {&writeServer}}}},
    };
#ifdef HAVE_SYSTEMD
    char directory[] = "/tmp/cbusbenchXXXXXX";
    check(mkdtemp(directory) != nullptr, "mkdtemp");
    const std::string place = directory;
    busAddress = "unix:path=" + place + "/socket";
    Child daemon([&](const std::function<void()>& ready) { daemonProcess(place, ready); });
    Child service([&](const std::function<void()>& ready) { serviceProcess(busAddress, ready); });
    connectClient();
    contests[0].contenders.push_back({"D-Bus", callMethod, connectClient, {&daemon, &service}});
    contests[1].contenders.push_back({"D-Bus", writeByMethod, connectClient, {&daemon, &service}});
#endif
    measure(contests);
#ifdef HAVE_SYSTEMD
    sd_bus_unref(bus);
    unlink((place + "/bus.conf").c_str());
    unlink((place + "/socket").c_str());
    rmdir(directory);
#endif
    return 0;
}
