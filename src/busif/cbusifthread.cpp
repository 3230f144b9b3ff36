// The bus thread: its life from the connection to the loop, and the poll of the radio module.
//
// What it subscribes to and reads stands in subscriptions.cpp, the readers in readers_*.cpp. run() belongs to
// the bus thread, the rest as the header tells.
#include "busif/cbusifthread.h"

#include "busif/subscriptions.h"
#include "common/log.h"
#include "common/qtcompat.h"
#include "model/statusupdater.h"
#include "runtime/appmgr.h"
#include "runtime/config_client_api.h"
#include "runtime/vx_log.h"
#include "runtime/vx_posix_reset.h"

#include <errno.h>
#include <fcntl.h>
#include <string.h>
#include <syslog.h>
#include <unistd.h>

namespace {

const uint32_t POLL_INTERVAL_MS = 1000;
const char* const CLIENT_NAME = "lumenpanel";

// Other threads' wishes to switch the poll, one byte each, in their order. The loop's timers are a list
// without a lock: changed from outside while the loop goes through it, it would end in a ring or in freed
// memory, and the panel would stand still for ever. One pipe for the process, as there is one loop.
int wishes[2] = {-1, -1};
const char WISH_OFF = '0';
const char WISH_ON = '1';

void openWishes()
{
    if (wishes[0] == -1 && pipe2(wishes, O_CLOEXEC | O_NONBLOCK) != 0)
        vx_panic("Error: no pipe for the poll's switch: %s", strerror(errno));
}

void wish(bool on)
{
    if (write(wishes[1], on ? &WISH_ON : &WISH_OFF, 1) != 1)
        vx_slog(LOG_ERR, "Switching the poll %s is lost: %s", on ? "on" : "off", strerror(errno));
}

void switchPoll(bool on)
{
    if (!on) {
        fdloop_timer_del(fdl, fdloop_timer);
        fdloop_timer = nullptr;
    } else if (!fdloop_timer) {
        fdloop_timer = fdloop_timer_add(fdl, POLL_INTERVAL_MS, updateRmValues, nullptr);
    }
}

int takeWishes(int fd, void*)
{
    char byte;
    while (read(fd, &byte, 1) == 1)
        switchPoll(byte == WISH_ON);
    return 0;
}

} // namespace

fdloop_t* fdl = nullptr;
struct fdloop_timer* fdloop_timer = nullptr;
cbus_conn_t* conn = nullptr;

CBusIfThread::CBusIfThread()
{
    openWishes();
}

CBusIfThread::~CBusIfThread()
{
    vx_slogd("Inside destructor CBusIfThread::~CBusIfThread()");
    if (fdloop_timer) {
        vx_slogd("CBusIfThread::~CBusIfThread(): Deleting fdloop_timer");
        // The variable keeps its value: the thread may be in the middle of a poll and compares it.
        if (isRunning())
            wish(false);
        else
            fdloop_timer_del(fdl, fdloop_timer);
    }
}

void CBusIfThread::run()
{
    StatusUpdater* const model = StatusUpdater::getStatusUpdater();
    // First of all: from here on every read checks that it runs on this thread.
    model->setThreadIdCBus(QThread::currentThreadId());
    logDebug() << "CBusIfThread::run(): Start of function.";
    vx_slogd("%lu: CBusIfThread::run(): Start of function.", qtcompat::threadIdNumber());

    fdloop_timer = nullptr;
    vx_set_default_sig_handlers();
    fdl = fdloop_init();
    fdloop_fd_register(fdl, wishes[0], takeWishes, nullptr);
    vx_slogd("%lu: CBusIfThread::run(): About to register to keep-alive in application manager",
             qtcompat::threadIdNumber());
    appmgr_alive_fdloop_register(fdl);

    conn = cbus_conn_create(fdl, CLIENT_NAME);
    if (!conn) {
        logWarning() << "ERROR!!!  lumenpanel: vx_panic:CBUS not ready to create connection. "
                        "Exiting lumenpanel.";
        vx_panic("ERROR!!! CBUS not ready to create connection. Exiting lumenpanel.");
    }
    if (config_init_cbus(conn, nullptr) != 0) {
        logWarning() << "ERROR!!!  lumenpanel: vx_panic:CBUS not ready to initialize connection. "
                        "Exiting lumenpanel.";
        vx_panic("ERROR!!! CBUS not ready to initialize connection. Exiting lumenpanel.");
    }
    model->setHasConnectedToCBus(true); // the GUI thread's writes go through from here on

    registerSubscriptions();
    runInitialReads();
    model->updateSimStatus();
    handleSubscribeToPollRmValues(true);

    vx_slogd("%lu: CBusIfThread::run(): About to run fdloop_loop(fdl)", qtcompat::threadIdNumber());
    fdloop_loop(fdl);
}

void CBusIfThread::handleSubscribeToPollRmValues(bool value) const
{
    logDebug() << "CBusIfThread::handleSubscribeToPollRmValues(value=" << value; // no bracket closes it
    if (isRunning() && QThread::currentThread() != this)
        wish(value);
    else
        switchPoll(value);
}

int updateRmValues(void*)
{
    const struct fdloop_timer* const expired = fdloop_timer;
    StatusUpdater::getStatusUpdater()->pollStatusFromRm();
    // The next poll counts from the end of this one, so that a slow database stretches the period instead
    // of piling polls up. Whoever switched the polling off while this one ran (and perhaps on again, with
    // a timer of its own) has the last word.
    if (expired && fdloop_timer == expired)
        fdloop_timer = fdloop_timer_add(fdl, POLL_INTERVAL_MS, updateRmValues, nullptr);
    return 0;
}
