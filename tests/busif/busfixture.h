// Makes the test's own thread the bus thread: a real server on a private address, a connection to it on the
// process's loop, and a fresh model. Readers and handlers are then called directly, and the loop is turned by
// hand, so that nothing happens but what a test asks for.
//
// One connection for the life of the program, as in the panel; reset() brings database, logs and model back
// to their start. Needs a QApplication and no running CBusIfThread.
#ifndef LUMENPANEL_TESTS_BUSIF_BUSFIXTURE_H
#define LUMENPANEL_TESTS_BUSIF_BUSFIXTURE_H

#include "busif/cbusifthread.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "runtime/config_client_api.h"
#include "runtime/vx_posix_reset.h"
#include "sim/terminal.h"
#include "support/emptyterminal.h"
#include "support/messages.h"
#include "support/modelaccess.h"
#include "support/patience.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QtTest>

#include <csignal>

class BusFixture {
public:
    BusFixture() : terminal(emptyTerminal())
    {
        if (!terminal.running())
            qFatal("no terminal: %s", terminal.error().c_str());
        terminal.useForProcess();
        vx_set_sig_handler(SIGPIPE, [](int) {}); // as in the panel: a write on a dead socket only fails
        fdl = fdloop_init();
        conn = cbus_conn_create(fdl, "test");
        if (!conn)
            qFatal("no connection");
        config_init_cbus(conn, nullptr);
        cbus_client_signal_cb_add(conn, "test.marker", markerArrived, this);
        cbus_filter(conn, "test.marker");
        setDebugLogWanted(true);
        reset();
    }
    BusFixture(const BusFixture&) = delete;
    BusFixture& operator=(const BusFixture&) = delete;

    // An empty database, a model as it is at start, empty logs.
    void reset()
    {
        terminal.clear();
        drain();
        StatusUpdater::destroyForTest();
        StatusUpdater* const model = StatusUpdater::getStatusUpdater();
        model->setThreadIdCBus(QThread::currentThreadId());
        model->setHasConnectedToCBus(true);
        clearLogs();
    }

    void clearLogs()
    {
        terminal.settle();
        terminal.clearLogs();
        log.clear();
    }

    // Turns the loop until all has been delivered that the server had sent before this call, and all that
    // was sent here has been handled.
    void drain()
    {
        terminal.settle();
        markerSeen = false;
        terminal.sendSignal("test.marker", "");
        turnUntil([this] { return markerSeen; });
        terminal.settle();
    }

    // Turns the loop for this long.
    void turnFor(int milliseconds)
    {
        QElapsedTimer clock;
        clock.start();
        turnUntil([&] { return clock.elapsed() >= milliseconds; });
    }

    template <typename Condition> void turnUntil(Condition condition)
    {
        QElapsedTimer clock;
        clock.start();
        while (!condition()) {
            if (clock.elapsed() > PATIENCE_MS)
                qFatal("the loop was turned for 20 s in vain");
            fdloop_timer_add(fdl, 20, wake, nullptr); // bounds the wait of this turn
            fdloop_run(fdl);
        }
    }

    // What the process read since the logs were cleared: "cfg.language", or "readm EXPRESSION" for a list.
    QStringList reads() const
    {
        QStringList names;
        for (const sim::Message& message : terminal.messages()) {
            const QString name = QString::fromStdString(message.name);
            if (name.startsWith("config.read."))
                names.append(name.mid(12));
            else if (name.startsWith("config.readm."))
                names.append("readm " + name.mid(13));
        }
        return names;
    }

    sim::Terminal terminal;
    Messages log; // what went into Qt's message path

private:
    static int markerArrived(cbus_conn_t*, void* fixture, const char*, void*, uint32_t)
    {
        static_cast<BusFixture*>(fixture)->markerSeen = true;
        return 0;
    }
    static int wake(void*) { return 0; }

    bool markerSeen = false;
};

#endif
