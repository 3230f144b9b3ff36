// Instructions of the runtime where it grows: the delivery of a change with the number of subscriptions and
// of keys that changed at once, and a timer with the number of others. Started by `run` under callgrind.
#include "bench/counted.h"
#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"
#include "runtime/fdloop.h"
#include "support/rawbus.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef HAVE_EV
#include <ev.h>
#endif
#ifdef HAVE_UV
#include <uv.h>
#endif

namespace {

// --- Changes

int delivered = 0;

void takeChange(unsigned records, const config_data_t*, void*, const config_change_row_t*)
{
    delivered += int(records);
}

std::string keyOf(int number)
{
    return "ram.status.value." + std::to_string(number) + ".level";
}

class Client {
public:
    Client() : loop(fdloop_init()), conn(bus.connect(loop))
    {
        config_reset_for_test();
        config_init_cbus(conn, nullptr);
    }
    void subscribe(int count)
    {
        for (; subscribed < count; ++subscribed) {
            subscribeTo(keyOf(subscribed));
        }
    }
    void subscribeTo(const std::string& prefix)
    {
        config_change_register(prefix.c_str(), takeChange, nullptr);
        bus.takeAll();
    }
    // One message with the keys of so many values, from this one on: into the socket.
    void send(int first, int keys)
    {
        const int32_t value = 7;
        uint8_t* data = nullptr;
        uint32_t length = 0;
        for (int i = first; i < first + keys; ++i)
            length = config_vbuf_add(&data, length, nullptr, VX_CONFIG_TYPE_INT, keyOf(i).c_str(), &value,
                                     sizeof(value), 0);
        bus.send(signalBytes("config.change.ram", std::string(reinterpret_cast<char*>(data), length)));
        free(data);
    }
    // From the socket to the handlers.
    void receive() { fdloop_run(loop); }

private:
    RawBus bus;
    fdloop_t* loop;
    cbus_conn_t* conn;
    int subscribed = 0;
};

void countDelivery(Client& client, const char* measure, int size, int first, int keys, int expected)
{
    client.send(first, keys);
    client.receive(); // what is bound at the first call is bound
    client.send(first, keys);
    delivered = 0;
    counted::once(measure, "", size, [&client] { client.receive(); });
    if (delivered != expected) {
        std::fprintf(stderr, "counted_runtime: %d values were delivered, not %d\n", delivered, expected);
        exit(1);
    }
}

void countChanges()
{
    Client client;
    for (int count : {50, 100, 500, 1000, 5000}) {
        client.subscribe(count - 1);
        counted::once("one more subscription, by subscriptions", "", count, [&] { client.subscribe(count); });
        countDelivery(client, "one change delivered, by subscriptions", count, count - 1, 1, 1);
    }
    Client another;
    another.subscribe(50);
    for (int keys : {1, 10, 100, 1000})
        countDelivery(another, "a message delivered to 50 subscriptions, by keys", keys, 49, keys, 1);
    Client third;
    third.subscribeTo("ram.status.value");
    for (int keys : {1, 10, 100, 1000})
        countDelivery(third, "a message delivered to one subscription, by its keys", keys, 0, keys, keys);
}

// --- Timers

const char TIMER[] = "a timer started and stopped behind others";
const uint32_t LATER_MS = 3600 * 1000;

void countFdloopTimers(int others)
{
    fdloop_t* const loop = fdloop_init();
    const auto expire = [](void*) { return 1; };
    for (int i = 0; i < others; ++i)
        fdloop_timer_add(loop, LATER_MS, expire, nullptr);
    counted::warm(TIMER, "", others,
                  [&] { fdloop_timer_del(loop, fdloop_timer_add(loop, LATER_MS + 1000, expire, nullptr)); });
}

#ifdef HAVE_EV
void countEvTimers(int others)
{
    struct ev_loop* const loop = ev_loop_new(EVFLAG_AUTO);
    std::vector<ev_timer> timers(size_t(others) + 1);
    for (ev_timer& timer : timers) {
        ev_timer_init(
            &timer, [](struct ev_loop*, ev_timer*, int) {}, LATER_MS / 1000.0, 0.0);
        if (&timer != &timers.back())
            ev_timer_start(loop, &timer);
    }
    counted::warm(TIMER, "libev", others, [&] {
        ev_timer_set(&timers.back(), LATER_MS / 1000.0 + 1, 0.0);
        ev_timer_start(loop, &timers.back());
        ev_timer_stop(loop, &timers.back());
    });
}
#endif

#ifdef HAVE_UV
void countUvTimers(int others)
{
    uv_loop_t loop;
    uv_loop_init(&loop);
    std::vector<uv_timer_t> timers(size_t(others) + 1);
    for (uv_timer_t& timer : timers) {
        uv_timer_init(&loop, &timer);
        if (&timer != &timers.back())
            uv_timer_start(
                &timer, [](uv_timer_t*) {}, LATER_MS, 0);
    }
    counted::warm(TIMER, "libuv", others, [&] {
        uv_timer_start(
            &timers.back(), [](uv_timer_t*) {}, LATER_MS + 1000, 0);
        uv_timer_stop(&timers.back());
    });
}
#endif

} // namespace

int main()
{
    countChanges();
    for (int others : {1, 10, 100, 1000}) {
        countFdloopTimers(others);
#ifdef HAVE_EV
        countEvTimers(others);
#endif
#ifdef HAVE_UV
        countUvTimers(others);
#endif
    }
    _exit(0);
}
