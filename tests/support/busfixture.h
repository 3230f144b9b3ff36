// A client's connection on a loop, whose other end the test drives by hand, and what arrived on it.
#ifndef TESTS_SUPPORT_BUSFIXTURE_H
#define TESTS_SUPPORT_BUSFIXTURE_H

#include "runtime/cbus.h"
#include "runtime/cbus_sock_impl.h"
#include "runtime/fdloop.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/busclient.h"
#include "support/keptloop.h"
#include "support/rawbus.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <string>
#include <vector>

// What arrived, as "signal name=data", and what a test wants done about it.
inline std::vector<std::string> seen;
inline std::function<void(cbus_conn_t*)> onMessage;

inline int note(cbus_conn_t* conn, const char* kind, const char* name, void* data, uint32_t len)
{
    seen.push_back(std::string(kind) + " " + name + "=" + std::string(static_cast<char*>(data), len));
    if (onMessage)
        onMessage(conn);
    return 0;
}

inline int noteSignal(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    return note(conn, "signal", name, data, len);
}

inline int noteRequest(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    return note(conn, "request", name, data, len);
}

inline int noteReply(cbus_conn_t* conn, const char* name, void* data, uint32_t len)
{
    return note(conn, "reply", name, data, len);
}

// A row's function: its data word is the label.
inline int noteRow(cbus_conn_t* conn, void* user, const char* name, void* data, uint32_t len)
{
    return note(conn, static_cast<const char*>(user), name, data, len);
}

inline void* label(const char* text)
{
    return const_cast<char*>(text);
}

inline int repeatTimer(void*)
{
    return 1;
}

class Cbus : public testing::Test {
protected:
    void SetUp() override
    {
        signal(SIGPIPE, SIG_IGN); // as every process of the terminal does
        unsetenv("CBUS_DEBUG");
        seen.clear();
        onMessage = nullptr;
        syslogtap_start();
        loop = keptLoop();
        fdloop_timer_add(loop, 1, repeatTimer, nullptr); // no turn waits for ever
        conn = bus.connect(loop);
        ASSERT_NE(conn, nullptr);
        cbus_conn_set_rx_cb(conn, noteSignal, noteRequest, noteReply);
    }
    void TearDown() override
    {
        endConnection(conn);
        cbus_debug = false;
        syslogtap_stop();
    }
    // A turn of the loop: delivers what is there, and comes back if there is nothing.
    int turn() { return fdloop_run(loop); }

    RawBus bus;
    fdloop_t* loop = nullptr;
    cbus_conn_t* conn = nullptr;
};

#endif
