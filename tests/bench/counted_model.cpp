// Instructions of the model and the readers: the poll of each second, one status text, one setter, and how
// the lists grow. Started by `run` under callgrind, beside a terminal of its own; this thread plays the bus
// thread.
#include "bench/counted.h"
#include "busif/readers.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "runtime/cbus_client.h"
#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"
#include "support/modelaccess.h"
#include "support/records.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMutex>
#include <QThread>

#include <cstdio>
#include <unistd.h>

// What a programmer writes who needs just one value: a lock, a comparison, and a signal.
class BareValue : public QObject {
    Q_OBJECT
public:
    void set(int value)
    {
        m_mutex.lock();
        const bool isNew = m_value != value;
        m_value = value;
        m_mutex.unlock();
        if (isNew)
            emit changed(value);
    }
signals:
    void changed(int value);

private:
    QMutex m_mutex;
    int m_value = 0;
};

// Takes signals as the screens do: from another thread's emission, through the event queue.
class Listener : public QObject {
    Q_OBJECT
public slots:
    void hear(int) {}
};

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// --- One poll, one setter

void readKeysOfThePoll()
{
    char text[300];
    int number;
    config_read_string("rmcfg.sys.status.mode", text, sizeof(text));
    config_read_int("rmcfg.platform.usim.status", &number);
    for (const char* key : {"rmcfg.platform.usim.pin.status", "rmcfg.protocols.umts.plmn.status",
                            "rmcfg.protocols.umts.cs.status", "rmcfg.protocols.umts.ps.status",
                            "rmcfg.protocols.bgan.status.beam_type", "rmcfg.protocols.bgan.status.state"})
        config_read_string(key, text, sizeof(text));
}

void countPoll()
{
    const char measure[] = "one poll of the radio module";
    counted::warm(measure, "", 0, [] { model().pollStatusFromRm(); });
    counted::warm(measure, "its 8 reads alone", 0, readKeysOfThePoll);
}

void countSetter()
{
    BareValue bare;
    Listener listener;
    QObject::connect(&bare, SIGNAL(changed(int)), &listener, SLOT(hear(int)), Qt::QueuedConnection);
    QObject::connect(&model(), SIGNAL(signalLevelChanged(int)), &listener, SLOT(hear(int)),
                     Qt::QueuedConnection);
    const char changing[] = "one setter";
    for (int level : {1, 2}) { // what the first call takes is taken
        model().setSignalLevel(level);
        bare.set(level);
        QCoreApplication::processEvents();
    }
    counted::once(changing, "", 0, [] { model().setSignalLevel(450); });
    counted::once(changing, "lock, compare, queued signal", 0, [&bare] { bare.set(450); });
    QCoreApplication::processEvents();
}

// --- The status text

void runConnections(int contexts)
{
    const std::string group = "ram.status.ongoing_data_sessions.0.";
    Records records;
    if (contexts == 0)
        records.deleted(group + "status");
    else
        records.number(group + "status", BUNDLE_STATUS_RUNNING).number(group + "time", 1000);
    for (int context = 1; context <= contexts; ++context) {
        for (const char* rate : {"max_bw_up", "max_bw_down"})
            records.number(group + "context." + std::to_string(context) + "." + rate, 512);
    }
    model().setActiveConnectionsAndBundles(records.count(), records.data());
}

void evaluate()
{
    model().updateCurrentStatusTextId();
    model().getStatusText();
}

// A terminal that is ready, so that the rules are walked to their end.
void makeReady()
{
    Access::rmOperating() = true;
    Access::simStatus() = SIM_READY;
    Access::plmnStatus() = PLMN_STATUS_SELECTED;
    Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_ATTACHED;
    Access::iai2Status() = IAI2_STATUS_REGISTERED;
    model().setPointingMode(POINTING_STATUS_POINTED);
    model().setExtendedSystemStatus(SYSTEM_STATUS_NORMAL);
    model().updateTranslatedStatusTexts();
}

void countStatusText()
{
    makeReady();
    QFont font("helvetica"); // as on the status screen
    font.setPixelSize(14);
    font.setStyleStrategy(QFont::NoAntialias);
    model().setStatusLabelFont(font);
    counted::warm("one status text, no connection", "", 0, evaluate);
    runConnections(1);
    const char measure[] = "one status text, a connection";
    counted::warm(measure, "", 0, evaluate);
    const QFontMetrics metrics(Access::statusLabelFont());
    counted::warm(measure, "one measuring of its label by Qt", 0,
                  [&metrics] { metrics.horizontalAdvance("BGAN X-Stream"); });
    runConnections(0);
    for (int contexts : {1, 2, 5, 11, 100}) {
        runConnections(contexts);
        counted::warm("status text by connections", "", contexts, evaluate);
        runConnections(0);
    }
}

// --- What grows

Records alerts(int count, int round)
{
    Records records;
    for (int index = 0; index < count; ++index) {
        const std::string alert = "ram.log.alert." + std::to_string(index) + ".";
        records.number(alert + "identifier", 0x210 + index)
            .number(alert + "sub_id", index)
            .number(alert + "severity", 1)
            .number(alert + "state", 1)
            .text(alert + "shorttext", "Temperature out of range")
            .number(alert + "time", 1600000000 + index + (index == 0 ? round : 0));
    }
    return records;
}

// Every update differs from the one before it in one alert.
void countAlerts()
{
    for (int count : {1, 10, 100, 1000}) {
        const Records first = alerts(count, 0), second = alerts(count, 1);
        model().setAlertList(first.count(), first.data());
        counted::once("alert log taken over, by alerts", "", count,
                      [&second] { model().setAlertList(second.count(), second.data()); });
    }
    model().setAlertList(0, nullptr);
}

// In the terminal's database: each bundle has a name and one connection, the same for all.
void defineBundles(int count)
{
    config_deletem("cfg.admin\\.bundle\\..*");
    config_write_string("cfg.admin.connection.1.name", "Streaming");
    for (int number = 1; number <= count; ++number) {
        const std::string bundle = "cfg.admin.bundle." + std::to_string(number) + ".";
        config_write_string((bundle + "name").c_str(),
                            ("Bundle " + std::to_string(number * 7919 % 1000)).c_str());
        config_write_int((bundle + "connection.0.connection_index").c_str(), 1);
    }
    int value;
    config_read_int("cfg.display.timeout", &value); // all of it is written
}

void countBundles()
{
    for (int count : {1, 10, 100, 1000}) {
        defineBundles(count);
        counted::warm("bundles read and taken over, by bundles", "", count, readDefinedBundlesCfg);
    }
    defineBundles(0);
    readDefinedBundlesCfg();
}

void countTextLength()
{
    for (int length : {1, 10, 100, 1000, 10000}) {
        config_write_string("cfg.help_desk_number", std::string(size_t(length), 'x').c_str());
        counted::warm("text read and taken over, by characters", "", length, readHelpDeskStr);
    }
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    cbus_conn_t* const conn = cbus_conn_create(fdloop_init(), "bench");
    if (!conn) {
        std::fprintf(stderr, "counted_model: no connection to the terminal\n");
        return 1;
    }
    config_init_cbus(conn, nullptr);
    setDebugLogWanted(false); // as on the terminal
    model().setThreadIdCBus(QThread::currentThreadId());
    model().setHasConnectedToCBus(true);
    countPoll();
    countSetter();
    countStatusText();
    countAlerts();
    countBundles();
    countTextLength();
    _exit(0);
}
#include "counted_model.moc"
