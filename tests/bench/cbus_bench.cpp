// A read of one integer key through the terminal's server, against a bare ping-pong of the same bytes in
// which both sides wait in poll, and against a D-Bus method call through a daemon of its own to a service.
//
// Every process is pinned to the same processor, so that the wall clock counts the work of all of them. After
// the usual table a second one: processor time of all processes that take part, in ratios to the ping-pong,
// taken in short alternating rounds so that other load on the machine meets all alike.
#include "bench/steps.h"
#include "runtime/cbus.h"
#include "runtime/config_client_api.h"
#include "support/rawbus.h"

#include <benchmark/benchmark.h>

#include <algorithm>
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

void connectToTerminal(const std::string& address)
{
    setenv("CBUS_ADDR", address.c_str(), 1);
    cbus_conn_t* conn = nullptr;
    for (int attempt = 0; attempt < 500 && !conn; ++attempt) {
        conn = cbus_conn_create(nullptr, "bench");
        if (!conn)
            usleep(10000);
    }
    check(conn != nullptr, "cbus_conn_create");
    config_init_cbus(conn, nullptr);
}

void readKey()
{
    int value;
    check(config_read_int(KEY, &value) == 0, "config_read_int");
}

// --- The bare ping-pong

struct PingPong {
    std::string request = requestBytes(0, 0, std::string("config.read.") + KEY,
                                       le32(0xffffffff) + le32(VX_CONFIG_TYPE_INT) + le32(4));
    std::string reply = frameBytes(CBUS_TYPE_REPLY, 0, 0, std::string("config.read.") + KEY,
                                   le32(0) + le32(VX_CONFIG_TYPE_INT) + le32(4) + le32(0));
    int client = -1;
    int server = -1;

    PingPong()
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

PingPong* pingPong;

void ask()
{
    pingPong->ask();
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

void connectClient()
{
    bus = connectBus(busAddress);
}

int answerRead(sd_bus_message* message, void*, sd_bus_error*)
{
    const char* key;
    const int result = sd_bus_message_read(message, "s", &key);
    return result < 0 ? result : sd_bus_reply_method_return(message, "i", 456);
}

const sd_bus_vtable VTABLE[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "s", "i", answerRead, SD_BUS_VTABLE_UNPRIVILEGED),
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
#endif

// --- Measuring

struct Contender {
    const char* name;
    void (*once)();
    void (*connect)();                 // anew in a forked process, null if it needs none
    std::vector<const Child*> servers; // what works beside this process
};

std::vector<Contender> contenders;

double processorNanoseconds(const Contender& contender)
{
    double sum = nanoseconds(CLOCK_PROCESS_CPUTIME_ID);
    for (const Child* server : contender.servers)
        sum += server->processorNanoseconds();
    return sum;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
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

void printRatios()
{
    const int ROUNDS = 201, CALLS = 100;
    std::vector<std::vector<double>> times(contenders.size());
    for (int round = 0; round < ROUNDS; ++round) {
        for (size_t index = 0; index < contenders.size(); ++index) {
            const double start = processorNanoseconds(contenders[index]);
            for (int call = 0; call < CALLS; ++call)
                contenders[index].once();
            times[index].push_back((processorNanoseconds(contenders[index]) - start) / CALLS);
        }
    }
    printf("\nOne read, all processes on one processor: medians of %d alternating rounds of %d reads\n",
           ROUNDS, CALLS);
    printf("%-20s %14s %8s %36s\n", "", "processor ns", "ratio", "user-space instructions of the client");
    for (size_t index = 0; index < contenders.size(); ++index) {
        std::vector<double> ratios;
        for (size_t round = 0; round < times[index].size(); ++round)
            ratios.push_back(times[index][round] / times[0][round]);
        printf("%-20s %14.0f %8.2f %36.0f\n", contenders[index].name, median(times[index]), median(ratios),
               instructions(contenders[index]));
    }
}

int measure(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    for (const Contender& contender : contenders) {
        contender.once();
        benchmark::RegisterBenchmark(contender.name, [&contender](benchmark::State& state) {
            for (auto _ : state)
                contender.once();
        })->UseRealTime();
    }
    benchmark::RunSpecifiedBenchmarks();
    printRatios();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    pinToOneProcessor();
    const std::string address = "unix*cbusbench" + std::to_string(getpid());
    Child terminal([&](const std::function<void()>& ready) { terminalProcess(address, ready); });
    PingPong bare;
    pingPong = &bare;
    Child other([&](const std::function<void()>& ready) {
        ready();
        bare.serve();
    });
    connectToTerminal(address);
    contenders.push_back({"ping-pong in poll", ask, nullptr, {&other}}); // the measure of the others
    contenders.push_back({"config_read_int", readKey, nullptr, {&terminal}});
#ifdef HAVE_SYSTEMD
    char directory[] = "/tmp/cbusbenchXXXXXX";
    check(mkdtemp(directory) != nullptr, "mkdtemp");
    const std::string place = directory;
    busAddress = "unix:path=" + place + "/socket";
    Child daemon([&](const std::function<void()>& ready) { daemonProcess(place, ready); });
    Child service([&](const std::function<void()>& ready) { serviceProcess(busAddress, ready); });
    connectClient();
    contenders.push_back({"D-Bus method call", callMethod, connectClient, {&daemon, &service}});
#endif
    const int result = measure(argc, argv);
#ifdef HAVE_SYSTEMD
    sd_bus_unref(bus);
    unlink((place + "/bus.conf").c_str());
    unlink((place + "/socket").c_str());
    rmdir(directory);
#endif
    return result;
}
