// Every reader on a connection that is lost: the default, a line in the log, and no end of the process.
#include "busif/busfixture.h"
#include "busif/readers.h"
#include "busif/subscriptions.h"

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

} // namespace

class LostBusTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        bus = new BusFixture;
        bus->terminal.setAll({{"cfg.display.timeout", sim::Value::integer(60)},
                              {"cfg.display.brightness", sim::Value::integer(7)},
                              {"cfg.language", sim::Value::integer(3)},
                              {"ram.status.signal_strength", sim::Value::integer(500)},
                              {"ram.status.interfaces.wlan.clients", sim::Value::integer(4)},
                              {"ram.net.eth0.ip_address", sim::Value::text("10.0.0.1")},
                              {"ram.status.battery.1.status", sim::Value::integer(0)}});
        registerSubscriptions();
        runInitialReads();
        QCOMPARE(model().getScreenSaverTime(), 60);
        QCOMPARE(model().getSignalLevel(), 500);
        QCOMPARE(Access::ipAddress(), QString("10.0.0.1"));
        bus->clearLogs();
        bus->terminal.killConnections();
    }
    void cleanupTestCase() { delete bus; }

    void readersFallToTheirDefaults()
    {
        runInitialReads();
        QCOMPARE(model().getScreenSaverTime(), 300);
        QCOMPARE(Access::brightnessLevel(), 4);
        QCOMPARE(int(model().getLanguage()), 0);
        QCOMPARE(model().getSignalLevel(), 0);
        QCOMPARE(model().getWifiNumberOfClients(), 0);
        QCOMPARE(Access::ipAddress(), QString());
        QCOMPARE(model().getBattInt().batteryConnectionStatus, -2);
        QCOMPARE(int(model().getInterfaceState(INTERFACE_NAME_LAN)), int(INTERFACE_STATE_ON));
    }

    // A list that could not be had is logged, and the setter runs nevertheless.
    void listsAreLoggedAndSet()
    {
        QSignalSpy changed(&model(), SIGNAL(definedBundlesCfgChanged()));
        readDefinedBundlesCfg();
        QCOMPARE(changed.count(), 1);
        const char* const lists[][2] = {
            {"readDefinedBundlesCfg", "cfg.admin\\.bundle\\..*"},
            {"readBondingServicesAvailable", "ram.bonding\\.status\\.service\\..*"},
            {"readAlertList", "ram.log\\.alert\\..*"},
            {"initialReadOngoingDataSessions", "ram.status\\.ongoing_data_sessions\\..*"},
            {"initialReadCurrentBundleNumber", "ram.net\\.user_groups\\.0\\.current_bundle"},
        };
        readBondingServicesAvailable();
        readAlertList();
        initialReadOngoingDataSessions();
        initialReadCurrentBundleNumber();
        for (const auto& list : lists)
            QVERIFY2(
                bus->log.count(QtDebugMsg, QString("%1(): %2 not in database???").arg(list[0], list[1])) >= 1,
                list[0]);
    }

    // The written-back default is lost in silence.
    void nothingIsWritten()
    {
        readDisplayTimeout();
        QVERIFY(bus->terminal.writes().empty());
        QCOMPARE(bus->terminal.getInt("cfg.display.timeout").value_or(0), 60);
    }

private:
    BusFixture* bus = nullptr;
};

QTEST_MAIN(LostBusTest)
#include "lostbus_test.moc"
