// The readers of the batteries and of the position, which take several keys each, against the real server.
#include "busif/busfixture.h"
#include "busif/readers.h"

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

QString angles(const gps_data_t& position)
{
    return QString("%1 %2 %3 %4 / %5 %6 %7 %8")
        .arg(position.latNorth ? "N" : "S")
        .arg(position.latDeg)
        .arg(position.latMin)
        .arg(position.latMinFraction)
        .arg(position.longEast ? "E" : "W")
        .arg(position.longDeg)
        .arg(position.longMin)
        .arg(position.longMinFraction);
}

struct BatteryKey {
    const char* word;
    int missing;
    int battery_t::*field;
};
const BatteryKey BATTERY_KEYS[] = {
    {"status", -2, &battery_t::batteryConnectionStatus},
    {"temperature", 0, &battery_t::temperature},
    {"relative_state_of_charge", 0, &battery_t::capacity},
    {"average_time_to_empty", 0, &battery_t::minutesLeft},
    {"average_time_to_full", 0, &battery_t::averageTimeToFull},
    {"charge_discharge_status", -1, &battery_t::chargeState},
};

QString batteryKey(int battery, const char* word)
{
    return QString("ram.status.battery.%1.%2").arg(battery).arg(word);
}

battery_t battery(int number)
{
    return number == 1 ? model().getBattInt() : model().getBattExt();
}

} // namespace

class ReadersMeasurementsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    void batteryField_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("field");
        for (int number = 1; number <= 2; ++number) {
            for (int field = 0; field < 6; ++field)
                QTest::addRow("battery %d, %s", number, BATTERY_KEYS[field].word) << number << field;
        }
    }
    void batteryField()
    {
        QFETCH(int, number);
        QFETCH(int, field);
        const BatteryKey& tested = BATTERY_KEYS[field];
        const std::string key = batteryKey(number, tested.word).toStdString();
        // Each key of both batteries has a value of its own, which only its field shows.
        for (int other = 1; other <= 2; ++other) {
            for (int i = 0; i < 6; ++i)
                bus->terminal.set(batteryKey(other, BATTERY_KEYS[i].word).toStdString(),
                                  i == 5 ? other : 10 * other + i);
        }
        bus->clearLogs();
        readBatteryData();
        for (int other = 1; other <= 2; ++other) {
            for (int i = 0; i < 6; ++i)
                QCOMPARE(battery(other).*BATTERY_KEYS[i].field, i == 5 ? other : 10 * other + i);
        }
        QVERIFY(bus->log.texts().filter("not in database").isEmpty());

        const QString complaint =
            "readBatteryData(): " + batteryKey(number, tested.word) + " not in database???";
        bus->terminal.set(key, "text");
        readBatteryData();
        QCOMPARE(battery(number).*tested.field, tested.missing);
        QCOMPARE(bus->log.count(QtDebugMsg, complaint), 1);

        bus->terminal.erase(key);
        readBatteryData();
        QCOMPARE(battery(number).*tested.field, tested.missing);
        QCOMPARE(bus->log.count(QtDebugMsg, complaint), 2);
    }

    void batteriesAreReadInOrderAndSetAtOnce()
    {
        QSignalSpy changed(&model(), SIGNAL(battDataChanged()));
        readBatteryData();
        QStringList expected;
        for (int number = 1; number <= 2; ++number) {
            for (const BatteryKey& key : BATTERY_KEYS)
                expected.append(batteryKey(number, key.word));
        }
        QCOMPARE(bus->reads(), expected);
        QCOMPARE(changed.count(), 1);
        QVERIFY(battery(1).isInternal);
        QVERIFY(!battery(2).isInternal);
    }

    // "ram.status.battery.2.status missing: battery 2 has batteryConnectionStatus -2."
    void missingStatusOfTheSecondBatteryIsAnError()
    {
        bus->terminal.set("ram.status.battery.1.status", 0);
        readBatteryData();
        QCOMPARE(battery(1).batteryConnectionStatus, 0);
        QCOMPARE(battery(2).batteryConnectionStatus, -2);
    }

    // "charge_discharge_status of 7 gives -1 and a log with ' for batt1.' or ' for batt2.'."
    void chargeState_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("given");
        QTest::addColumn<int>("kept");
        for (int number = 1; number <= 2; ++number) {
            for (int given = -1; given <= 3; ++given)
                QTest::addRow("battery %d, %d", number, given) << number << given << given;
            for (int given : {7, 4, -2})
                QTest::addRow("battery %d, %d", number, given) << number << given << -1;
        }
    }
    void chargeState()
    {
        QFETCH(int, number);
        QFETCH(int, given);
        QFETCH(int, kept);
        bus->terminal.set(batteryKey(number, "charge_discharge_status").toStdString(), given);
        readBatteryData();
        QCOMPARE(battery(number).chargeState, kept);
        const QString complaint =
            QString("readBatteryData(): Error!! Illegal value for chargeStateInt=%1 for batt%2.")
                .arg(given)
                .arg(number);
        QCOMPARE(bus->log.count(QtDebugMsg, complaint), given == kept ? 0 : 1);
    }

    // "A latitude of -5550000 gives positive false, 55 degrees, 30 minutes, 0 thousandths." "A latitude of 0
    // gives positive true and zeros."
    void position_data()
    {
        QTest::addColumn<int>("latitude");
        QTest::addColumn<int>("longitude");
        QTest::addColumn<QString>("kept");
        QTest::newRow("-5550000 and 0") << -5550000 << 0 << "S 55 30 0 / E 0 0 0";
        QTest::newRow("0 and -5550000") << 0 << -5550000 << "N 0 0 0 / W 55 30 0";
        QTest::newRow("the smallest") << -1 << 1 << "S 0 0 1 / E 0 0 1";
        QTest::newRow("quarter degrees") << 1225000 << -9075000 << "N 12 15 0 / W 90 45 0";
        QTest::newRow("ends of the scale") << 9000000 << 18000000 << "N 90 0 0 / E 180 0 0";
    }
    void position()
    {
        QFETCH(int, latitude);
        QFETCH(int, longitude);
        QFETCH(QString, kept);
        bus->terminal.set("ram.status.position.latitude", latitude);
        bus->terminal.set("ram.status.position.longitude", longitude);
        readPosition();
        QCOMPARE(angles(Access::position()), kept);
    }

    void positionIsReadInOrderAndSetAtOnce()
    {
        QSignalSpy changed(&model(), SIGNAL(gpsDataChanged()));
        bus->terminal.set("ram.status.position.longitude", 1250000);
        readPosition();
        QCOMPARE(bus->reads(), QStringList({"ram.status.position.latitude", "ram.status.position.longitude",
                                            "rmcfg.protocols.bgan.status.gps_policy.display",
                                            "ram.status.position.satellites", "ram.status.position.fix"}));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(bus->log.count(QtDebugMsg, "readPosition(): position.longMin=30"), 1);
    }

    void positionMissing_data()
    {
        QTest::addColumn<QString>("key");
        for (const char* key : {"ram.status.position.latitude", "ram.status.position.longitude",
                                "rmcfg.protocols.bgan.status.gps_policy.display",
                                "ram.status.position.satellites", "ram.status.position.fix"})
            QTest::newRow(key) << key;
    }
    void positionMissing()
    {
        QFETCH(QString, key);
        bus->terminal.set("ram.status.position.latitude", -1250000);
        bus->terminal.set("ram.status.position.longitude", -1250000);
        bus->terminal.set("rmcfg.protocols.bgan.status.gps_policy.display", 0);
        bus->terminal.set("ram.status.position.satellites", 7);
        bus->terminal.set("ram.status.position.fix", 3);
        const QString complaint = "readPosition(): " + key + " not in database???";
        readPosition();
        QCOMPARE(bus->log.count(QtDebugMsg, complaint), 0);

        for (int i = 1; i <= 2; ++i) { // missing, then of another type: no difference
            if (i == 1)
                bus->terminal.erase(key.toStdString());
            else
                bus->terminal.set(key.toStdString(), "text");
            readPosition();
            const gps_data_t position = Access::position();
            QCOMPARE(angles(position).section(" / ", 0, 0),
                     QString(key.endsWith("latitude") ? "N 0 0 0" : "S 12 30 0"));
            QCOMPARE(angles(position).section(" / ", 1, 1),
                     QString(key.endsWith("longitude") ? "E 0 0 0" : "W 12 30 0"));
            QCOMPARE(position.displayPositionAllowed, key.endsWith("display"));
            QCOMPARE(position.numberOfGpsFound, key.endsWith("satellites") ? 0 : 7);
            QCOMPARE(position.fix_type, key.endsWith("fix") ? 0 : 3);
            QCOMPARE(bus->log.count(QtDebugMsg, complaint), i);
        }
    }

    void fix_data()
    {
        QTest::addColumn<int>("given");
        QTest::addColumn<int>("kept");
        for (int legal : {0, 2, 3})
            QTest::addRow("%d", legal) << legal << legal;
        for (int illegal : {1, 4, -1})
            QTest::addRow("%d", illegal) << illegal << 0;
    }
    void fix()
    {
        QFETCH(int, given);
        QFETCH(int, kept);
        bus->terminal.set("ram.status.position.fix", 3);
        readPosition();
        bus->terminal.set("ram.status.position.fix", given);
        readPosition();
        QCOMPARE(Access::position().fix_type, kept);
        const QString complaint = QString("ERROR!!!! tmpIntValue=%1is not a valid GPS_FIX type.").arg(given);
        QCOMPARE(bus->log.count(QtDebugMsg, complaint), given == kept ? 0 : 1);
    }

    void displayAllowed_data()
    {
        QTest::addColumn<int>("given");
        QTest::addColumn<bool>("kept");
        QTest::newRow("0") << 0 << false;
        QTest::newRow("1") << 1 << true;
        QTest::newRow("-4") << -4 << true;
    }
    void displayAllowed()
    {
        QFETCH(int, given);
        QFETCH(bool, kept);
        bus->terminal.set("rmcfg.protocols.bgan.status.gps_policy.display", given);
        readPosition();
        QCOMPARE(model().getGpsDisplayPositionAllowed(), kept);
    }

private:
    BusFixture* bus = nullptr;
};

QTEST_MAIN(ReadersMeasurementsTest)
#include "readers_measurements_test.moc"
