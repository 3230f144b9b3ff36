// The life of the bus thread: its start in order, its end without a bus, and a bus that is lost later.
//
// The tests build on one real thread, which can't be ended; the order of the slots is therefore the order of
// its life, and what needs a thread of its own runs in a child process.
#include "busif/busfixture.h"

#include "busif/subscriptions.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/death.h"
#include "support/emptyterminal.h"
#include "support/patience.h"

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// What the start asks for, in order: a key, or "readm" and an expression.
QStringList initialReads()
{
    QStringList reads;
    for (const char* battery : {"1", "2"}) {
        for (const char* word : {"status", "temperature", "relative_state_of_charge", "average_time_to_empty",
                                 "average_time_to_full", "charge_discharge_status"})
            reads.append(QString("ram.status.battery.%1.%2").arg(battery, word));
    }
    reads << "ram.status.psumcu.events.external_supply"
          << "cfg.language"
          << "ram.status.position.latitude"
          << "ram.status.position.longitude"
          << "rmcfg.protocols.bgan.status.gps_policy.display"
          << "ram.status.position.satellites"
          << "ram.status.position.fix"
          << "ram.status.signal_strength"
          << "ram.status.signal_strength_norm"
          << "cfg.display.timeout"
          << "cfg.display.brightness"
          << "cfg.audio_indication.pointing";
    for (const char* word : {"isdn", "lan", "phone", "usb", "wlan"})
        reads << QString("ram.status.interfaces.%1.enabled").arg(word)
              << QString("cfg.interfaces.%1.enabled").arg(word);
    reads << "ram.status.pointed_status"
          << "rmcfg.protocols.umts.ciphering_capabilities"
          << "cfg.help_desk_number"
          << "rmcfg.platform.sysconf.serial_number"
          << "rmcfg.platform.hpa_hw.unit_serial"
          << "cfg.network_information.imei_number"
          << "cfg.interfaces.lan.mac_address"
          << "cfg.interfaces.wlan.mac_address"
          << "ram.status.interfaces.wlan.clients"
          << "cfg.interfaces.wlan.bssid"
          << "cfg.interfaces.wlan.ssid"
          << "ram.wan.active"
          << "ram.modem.status.present"
          << "ram.modem.activate"
          << "ram.wan.user_selection"
          << "cfg.wan.setting"
          << "ram.software_version.release.version"
          << "ram.software_version.release.buildnr"
          << "ram.software_version.release.buildid"
          << "ram.software_version.release.builddate"
          << "ram.software_version.release.red_label"
          << "ram.net.eth0.ip_address"
          << "cfg.power_up.switch_on_when_external_power"
          << "cfg.power_up.pointing_required"
          << "readm cfg.admin\\.bundle\\..*"
          << "readm ram.net\\.user_groups\\.0\\.current_bundle"
          << "readm ram.status\\.ongoing_data_sessions\\..*"
          << "ram.status.ongoing_data_sessions.0.reason"
          << "ram.net.single_user_mode"
          << "cfg.net.user_groups.0.automatic_activation"
          << "ram.status.ext_system"
          << "ram.net.eth0.dhcp_client_mode"
          << "cfg.bonding.enabled"
          << "readm ram.bonding\\.status\\.service\\..*"
          << "readm ram.log\\.alert\\..*"
          << "ram.status.sw_update.active"
          << "ram.status.sw_update.progress"
          << "cfg.status.sw_update.error"
          << "rmcfg.platform.usim.status";
    return reads;
}

QString nameOfRead(const sim::Message& message)
{
    const QString name = QString::fromStdString(message.name);
    return name.startsWith("config.readm.") ? "readm " + name.mid(13) : name.mid(12);
}

// The process's one bus thread and its terminal.
struct Panel {
    Panel()
    {
        terminal = new sim::Terminal(emptyTerminal());
        terminal->useForProcess();
        terminal->set("ram.local_gui_display.start_bundle_number", 3);
        terminal->set("rmcfg.sys.status.mode", "operating");
        terminal->set("ram.status.signal_strength", 450);
        terminal->set("cfg.language", 2);
        StatusUpdater::getStatusUpdater();
        thread = new CBusIfThread;
        QObject::connect(&model(), SIGNAL(signalSubscribeToPollRmValues(bool)), thread,
                         SLOT(handleSubscribeToPollRmValues(bool)));
        thread->start(QThread::InheritPriority);
        terminal->waitForMessage("config.read.rmcfg.platform.usim.status");
    }

    sim::Terminal* terminal;
    CBusIfThread* thread; // runs to the end of the process
    Messages log;
};

} // namespace

class CBusIfThreadTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { setDebugLogWanted(true); }
    // The thread goes on, and so does all that it uses.
    void cleanupTestCase() {}

    // The first object of the process makes the pipe.
    void noPipeForTheSwitch()
    {
        const Death death = deathOf([] {
            struct rlimit none;
            getrlimit(RLIMIT_NOFILE, &none);
            none.rlim_cur = 0;
            setrlimit(RLIMIT_NOFILE, &none);
            CBusIfThread thread;
        });
        QCOMPARE(death.signal, SIGABRT);
        QVERIFY2(QString::fromStdString(death.output)
                     .endsWith(": Error: no pipe for the poll's switch: Too many open files\n"),
                 death.output.c_str());
        QVERIFY(death.output.rfind("<1> ", 0) == 0);
    }

    // Nothing of the program deletes a thread that runs. If it happened, the poll would be switched off, and
    // Qt would end the process.
    void destructorWhileItRuns()
    {
        if (qEnvironmentVariableIsSet("TESTS_EMULATED"))
            QSKIP("The emulator itself may break in a forked process that starts a thread and ends.");
        const Death death = deathOf([] {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            Panel panel;
            while (!panel.terminal->waitForMessage("config.read.rmcfg.sys.status.mode"))
                continue;                    // the first poll: the timer is there
            qInstallMessageHandler(nullptr); // Qt's own: standard error
            delete panel.thread;
        });
        const QString output = QString::fromStdString(death.output);
        QVERIFY2(output.contains(": CBusIfThread::~CBusIfThread(): Deleting fdloop_timer\n"),
                 qPrintable(output));
        QVERIFY2(output.contains("QThread: Destroyed while thread is still running"), qPrintable(output));
        QCOMPARE(death.signal, 0);
        QCOMPARE(death.status, 1); // by the handler of SIGABRT
    }

    // "With the bus server down at start the process ends with the 'CBUS not ready to create connection'
    // panic." First of all tests: it forks, and wants no second thread then.
    void noBusAtStart()
    {
        setenv("CBUS_ADDR", qPrintable(QString("unix*nobody-%1").arg(getpid())), 1);
        const Death death = deathOf([] {
            qInstallMessageHandler(nullptr); // Qt's own: standard error
            StatusUpdater::getStatusUpdater();
            dup2(STDERR_FILENO, STDOUT_FILENO); // where the backtrace goes
            CBusIfThread thread;
            thread.run();
        });
        QCOMPARE(death.signal, 0);
        QCOMPARE(death.status, 1);
        const QString output = QString::fromStdString(death.output);
        const auto shown = [&output](const char* text) {
            return output.count(text) == 1 ? true : (qWarning("%s", qPrintable(output)), false);
        };
        QVERIFY(shown("ERROR!!!  lumenpanel: vx_panic:CBUS not ready to create connection. "
                      "Exiting lumenpanel."));
        QVERIFY(output.contains("<1> "));
        QVERIFY(shown(": ERROR!!! CBUS not ready to create connection. Exiting lumenpanel."));
        QVERIFY(shown("*** signal_handler: signal=6"));
        QVERIFY(shown("Backtrace:"));
        QVERIFY(!output.contains("initialize connection"));
    }

    void destructorWithoutPolling()
    {
        syslogtap_start();
        {
            CBusIfThread thread;
        }
        QCOMPARE(syslogtap::count(7, "Inside destructor CBusIfThread::~CBusIfThread()"), size_t(1));
        QCOMPARE(syslogtap_count(), size_t(1));
    }

    void destructorDeletesThePollTimer()
    {
        static int runs = 0;
        fdl = fdloop_init();
        fdloop_timer = fdloop_timer_add(
            fdl, 0, [](void*) { return ++runs; }, nullptr);
        struct fdloop_timer* const deleted = fdloop_timer;
        syslogtap_start();
        {
            CBusIfThread thread;
        }
        QCOMPARE(syslogtap::count(7, "Inside destructor CBusIfThread::~CBusIfThread()"), size_t(1));
        QCOMPARE(syslogtap::count(7, "CBusIfThread::~CBusIfThread(): Deleting fdloop_timer"), size_t(1));
        QVERIFY(fdloop_timer == deleted); // the variable stays as it stands
        QCOMPARE(fdloop_run(fdl), 1);     // nothing left to wait for
        QCOMPARE(runs, 0);
        free(fdl);
        fdl = nullptr;
        fdloop_timer = nullptr;
    }

    void startInOrder()
    {
        syslogtap_start();
        panel = new Panel;
        QStringList reads;
        int filtersSeen = 0;
        for (const sim::Message& message : panel->terminal->messages()) {
            if (message.name == "cbus.filter") {
                ++filtersSeen;
                QVERIFY2(reads.isEmpty(), "all subscriptions come before the first read");
            } else if (QString::fromStdString(message.name).startsWith("config.read") &&
                       reads.size() < initialReads().size()) {
                reads.append(nameOfRead(message));
            }
        }
        // One for each subscription, and the two that the client library may need for itself.
        QCOMPARE(filtersSeen, SUBSCRIPTION_COUNT);
        QCOMPARE(reads, initialReads());
    }

    void logsOfTheStart()
    {
        QTRY_COMPARE_WITH_TIMEOUT(countOfSyslog(": CBusIfThread::run(): About to run fdloop_loop(fdl)"), 1,
                                  PATIENCE_MS);
        QCOMPARE(countOfSyslog(": CBusIfThread::run(): Start of function."), 1);
        QCOMPARE(
            countOfSyslog(": CBusIfThread::run(): About to register to keep-alive in application manager"),
            1);
        QCOMPARE(panel->log.count(QtDebugMsg, "CBusIfThread::run(): Start of function."), 1);
        QCOMPARE(panel->log.count(QtDebugMsg, "CBusIfThread::handleSubscribeToPollRmValues(value=true"), 1);
    }

    void modelIsConnected()
    {
        QVERIFY(model().getHasConnectedToCBus());
        QVERIFY(model().getThreadIdCBus() != nullptr);
        QVERIFY(model().getThreadIdCBus() != QThread::currentThreadId());
        QTRY_COMPARE_WITH_TIMEOUT(model().getSignalLevel(), 450, PATIENCE_MS);
        QCOMPARE(int(model().getLanguage()), 2);
    }

    // A request to start a bundle that is left over in the database starts nothing.
    void noStartRequestIsReadAtStart()
    {
        QVERIFY(
            panel->terminal->messagesNamed("config.read.ram.local_gui_display.start_bundle_number").empty());
        QVERIFY(panel->log.texts().filter("readLocalGuiDisplayStartBundleNumber").isEmpty());
    }

    void changesArrive()
    {
        QCoreApplication::sendPostedEvents(); // nothing of the start is left
        connect(&model(), SIGNAL(signalLevelChanged(int)), this, SLOT(levelChanged(int)));
        panel->terminal->set("ram.status.signal_strength", 512);
        QTRY_COMPARE_WITH_TIMEOUT(levels, QList<int>({512}), PATIENCE_MS);
        QCOMPARE(model().getSignalLevel(), 512);
        QVERIFY(levelsCameQueued);
    }

    void writesOfTheGuiThreadGoOut()
    {
        model().setCBusValue("cfg.interfaces.lan.enabled", 1);
        QVERIFY(panel->terminal->waitForWrite("cfg.interfaces.lan.enabled", sim::Value::integer(1)));
        QVERIFY(panel->terminal->waitForMessage("config.sync.cfg"));
        QTRY_COMPARE_WITH_TIMEOUT(int(model().getInterfaceState(INTERFACE_NAME_LAN)),
                                  int(INTERFACE_STATE_ACTIVATING), PATIENCE_MS);
    }

    void theRadioModuleIsPolled()
    {
        panel->terminal->clearLogs();
        QVERIFY(panel->terminal->waitForMessage("config.read.rmcfg.sys.status.mode", PATIENCE_MS, 2));
        QTRY_COMPARE_WITH_TIMEOUT(model().getRmOperating(), 1, PATIENCE_MS);
    }

    // The GUI thread switches the poll; the loop notices.
    void pollingIsSwitchedFromTheGuiThread()
    {
        model().subscribeToChanges(false);
        QCOMPARE(panel->log.count(QtDebugMsg, "CBusIfThread::handleSubscribeToPollRmValues(value=false"), 1);
        QVERIFY(passLoop(401)); // a poll that was running is through
        panel->terminal->clearLogs();
        QVERIFY(passLoop(402));
        QVERIFY(fdloop_timer == nullptr); // nothing is left that could ever bring the next poll
        QVERIFY(panel->terminal->messagesNamed("config.read.rmcfg.sys.status.mode").empty());
        model().subscribeToChanges(true);
        QVERIFY(panel->terminal->waitForMessage("config.read.rmcfg.sys.status.mode", PATIENCE_MS, 2));
    }

    // However often the screen saver comes and goes, and whatever the loop's timers are doing meanwhile.
    void pollingIsSwitchedAtAnyMoment()
    {
        for (int i = 0; i < 20000; ++i) {
            panel->thread->handleSubscribeToPollRmValues(i % 2);
            if (i % 16 == 15) // the loop turns all the time; but no 2,000 changes may wait for it
                panel->terminal->set("ram.status.signal_strength", 1000 + i);
            if (i % 512 == 511)
                panel->log.clear();
        }
        panel->thread->handleSubscribeToPollRmValues(true);
        QVERIFY(passLoop(400));
        panel->terminal->clearLogs();
        QVERIFY(panel->terminal->waitForMessage("config.read.rmcfg.sys.status.mode", PATIENCE_MS, 2));
    }

    // As many wishes as a pipe holds wait while the thread is held up; what comes on top is lost, and logged.
    void wishesBeyondThePipe()
    {
        setDebugLogWanted(false);
        panel->terminal->hold();
        syslogtap_start();
        const std::string lost = "Switching the poll on is lost: Resource temporarily unavailable";
        QElapsedTimer clock;
        clock.start();
        while (syslogtap::count(3, lost) == 0 && clock.elapsed() < PATIENCE_MS) { // the next poll holds it up
            for (int i = 0; i < 1000; ++i)
                panel->thread->handleSubscribeToPollRmValues(true);
        }
        QVERIFY(syslogtap::count(3, lost) > 0);
        panel->terminal->release();
        syslogtap_stop();
        setDebugLogWanted(true);
        panel->thread->handleSubscribeToPollRmValues(true);
        QVERIFY(passLoop(403));
        QVERIFY(passLoop(400));
        panel->terminal->clearLogs();
        QVERIFY(panel->terminal->waitForMessage("config.read.rmcfg.sys.status.mode", PATIENCE_MS, 2));
    }

    // A lost connection: readers fall to their defaults, the process stays, nobody reconnects.
    void busLostLater()
    {
        QTRY_COMPARE_WITH_TIMEOUT(model().getRmOperating(), 1, PATIENCE_MS);
        panel->terminal->killConnections();
        QTRY_COMPARE_WITH_TIMEOUT(model().getRmOperating(), 0, PATIENCE_MS); // the next poll reads nothing
        QTRY_COMPARE_WITH_TIMEOUT(model().getSimStatus(), -3, PATIENCE_MS);
        QVERIFY(panel->thread->isRunning());
        QVERIFY(model().getHasConnectedToCBus());
        // Later changes do not arrive, and writes are lost in silence.
        panel->terminal->set("ram.status.signal_strength", 111);
        model().setCBusValue("cfg.language", 4);
        const int polls = failedPolls();
        QTRY_VERIFY_WITH_TIMEOUT(failedPolls() >= polls + 2, PATIENCE_MS); // the loop goes on turning
        QCOMPARE(model().getSignalLevel(), 400);
        QCOMPARE(panel->terminal->clientCount(), size_t(0));
        QVERIFY(panel->terminal->writesOf("cfg.language").empty());
        QVERIFY(panel->thread->isRunning());
        QVERIFY(!panel->log.texts().filter("VX_CONFIG_ERR").isEmpty());
    }

public slots:
    void levelChanged(int value)
    {
        levels.append(value);
        levelsCameQueued = QThread::currentThread() == thread();
    }

private:
    static int countOfSyslog(const std::string& end)
    {
        const std::string text =
            std::to_string(reinterpret_cast<unsigned long>(model().getThreadIdCBus())) + end;
        return int(syslogtap::count(7, text));
    }

    // Waits until the bus thread has dealt with a change of the signal strength, and so with all before it.
    bool passLoop(int signalStrength)
    {
        panel->terminal->set("ram.status.signal_strength", signalStrength);
        return QTest::qWaitFor([signalStrength] { return model().getSignalLevel() == signalStrength; },
                               PATIENCE_MS);
    }
    int failedPolls() const
    {
        return panel->log.count(QtDebugMsg,
                                "updateRmOperating(): ERROR !!! rmcfg.sys.status.mode not in database???");
    }

    Panel* panel = nullptr;
    QList<int> levels;
    bool levelsCameQueued = false;
};

QTEST_MAIN(CBusIfThreadTest)
#include "cbusifthread_test.moc"
