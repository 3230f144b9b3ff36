// Signal, position and batteries as the screens word them.
#include "model/statusupdater.h"

#include "support/messages.h"
#include "support/modelaccess.h"

#include <QApplication>
#include <QtTest>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

battery_t present(int chargeState, int minutesLeft = -1, int averageTimeToFull = -1)
{
    battery_t battery;
    battery.batteryConnectionStatus = 0;
    battery.chargeState = chargeState;
    battery.minutesLeft = minutesLeft;
    battery.averageTimeToFull = averageTimeToFull;
    return battery;
}

battery_t withCapacity(int capacity, int connectionStatus = 0)
{
    battery_t battery;
    battery.batteryConnectionStatus = connectionStatus;
    battery.capacity = capacity;
    return battery;
}

const QString DEGREE = QString(QChar(0xb0));

} // namespace

class MeasurementsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { StatusUpdater::destroyForTest(); }
    void cleanupTestCase() { StatusUpdater::destroyForTest(); }

    // --- Signal --------------------------------------------------------------------------------------------

    // "getSignalLevelStr(319) is "0.0"; 320 gives 32.0."
    void signalLevelWithOneDecimal_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("319") << 319 << "0.0";
        QTest::newRow("320") << 320 << "32.0";
        QTest::newRow("456") << 456 << "45.6";
        QTest::newRow("0") << 0 << "0.0";
        QTest::newRow("-1") << -1 << "0.0";
        QTest::newRow("1234") << 1234 << "123.4";
    }
    void signalLevelWithOneDecimal()
    {
        QFETCH(int, value);
        QFETCH(QString, text);
        QCOMPARE(model().getSignalLevelStr(value), text);
    }

    void signalIsKeptAndTold()
    {
        QSignalSpy level(&model(), SIGNAL(signalLevelChanged(int)));
        QSignalSpy bars(&model(), SIGNAL(signalLevelNumBarsChanged(int)));
        model().setSignalLevel(450);
        model().setSignalLevelIcon(3);
        QCOMPARE(model().getSignalLevel(), 450);
        QCOMPARE(model().getSignalLevelNumBars(), 3);
        QCOMPARE(level.at(0).at(0).toInt(), 450);
        QCOMPARE(bars.at(0).at(0).toInt(), 3);
    }

    // --- Position ------------------------------------------------------------------------------------------

    void positionNorthEast()
    {
        gps_data_t position;
        position.latDeg = 55;
        position.latMin = 4;
        position.longDeg = 9;
        position.longMin = 59;
        position.latMinFraction = 999; // not shown
        model().setPosition(position);
        QCOMPARE(model().getGpsPositionStr(), "N55" + DEGREE + "04' E09" + DEGREE + "59' ");
    }

    void positionSouthWest()
    {
        gps_data_t position;
        position.latNorth = false;
        position.longEast = false;
        position.longDeg = 178;
        model().setPosition(position);
        QCOMPARE(model().getGpsPositionStr(), "S00" + DEGREE + "00' W178" + DEGREE + "00' ");
    }

    void positionThatMayNotBeShown()
    {
        gps_data_t position;
        position.displayPositionAllowed = false;
        model().setPosition(position);
        QVERIFY(!model().getGpsDisplayPositionAllowed());
        QCOMPARE(model().getGpsPositionStr(), QString("Position acquired "));
    }

    void satellitesInUse()
    {
        gps_data_t position;
        position.numberOfGpsFound = 7;
        model().setPosition(position);
        QCOMPARE(model().getNumberOfGpsFound(), 7);
        QVERIFY(model().getGpsDisplayPositionAllowed());
    }

    void acquiredByItsFix()
    {
        for (int fix : {0, 2, 3}) {
            gps_data_t position;
            position.fix_type = fix;
            model().setPosition(position);
            Messages log;
            QCOMPARE(model().getGpsAcquired(), fix != 0);
            QVERIFY(log.withPrefix("StatusUpdater::getGpsAcqured").isEmpty());
        }
        for (int fix : {1, 4, -1}) {
            gps_data_t position;
            position.fix_type = fix;
            model().setPosition(position);
            Messages log;
            QVERIFY(!model().getGpsAcquired());
            // The missing letter is the text's own.
            QCOMPARE(
                log.count(QtWarningMsg,
                          QString("StatusUpdater::getGpsAcqured: ERROR! pos.fix_type=%1 is unknown state!")
                              .arg(fix)),
                1);
        }
    }

    // --- Batteries -----------------------------------------------------------------------------------------

    void capacityLabelByChargeState_data()
    {
        QTest::addColumn<int>("chargeState");
        QTest::addColumn<QString>("label");
        QTest::newRow("0") << 0 << "77% Idle";
        QTest::newRow("1") << 1 << "77% Charging";
        QTest::newRow("2") << 2 << "77% Discharging";
        QTest::newRow("3") << 3 << "Precharging";
        QTest::newRow("-1") << -1 << "";
        QTest::newRow("4") << 4 << "";
    }
    void capacityLabelByChargeState()
    {
        QFETCH(int, chargeState);
        QFETCH(QString, label);
        battery_t battery = withCapacity(77);
        battery.chargeState = chargeState;
        model().setBattData(battery, present(0));
        Messages log;
        QCOMPARE(model().getBattCapacityLabel(BATT_TYPE_INTERNAL), label);
        QCOMPARE(log.count(QtWarningMsg,
                           QString("StatusUpdater::getBattCapacityLabel: ERROR!!! batt.chargeState=%1 is "
                                   "undefined!")
                               .arg(chargeState)),
                 label.isEmpty() ? 1 : 0);
        QCOMPARE(model().getBattCapacityLabel(BATT_TYPE_EXTERNAL), QString("0% Idle"));
    }

    void anyOtherTypeIsTheExternalBattery()
    {
        model().setBattData(withCapacity(10), withCapacity(20));
        QCOMPARE(model().getBattInt().capacity, 10);
        QCOMPARE(model().getBattExt().capacity, 20);
        battery_t warm;
        warm.temperature = -12;
        model().setBattData(battery_t(), warm);
        QCOMPARE(model().getBattTempValueLabel(BATT_TYPE_ENUM(2)), "-12" + DEGREE + "C");
        QCOMPARE(model().getBattTempValueLabel(BATT_TYPE_EXTERNAL), "-12" + DEGREE + "C");
        QCOMPARE(model().getBattTempValueLabel(BATT_TYPE_INTERNAL), "0" + DEGREE + "C");
    }

    void secondLabel_data()
    {
        QTest::addColumn<int>("chargeState");
        QTest::addColumn<int>("minutesLeft");
        QTest::addColumn<int>("averageTimeToFull");
        QTest::addColumn<int>("otherState");
        QTest::addColumn<QString>("label");
        const int none = -1;
        // "An idle battery beside a discharging one shows its remaining time, an idle battery alone shows
        // nothing."
        QTest::newRow("idle beside discharging") << 0 << 65 << none << 2 << "Remaining time 1:05 h";
        QTest::newRow("idle beside discharging, 0 min") << 0 << 0 << none << 2 << "";
        QTest::newRow("idle beside idle") << 0 << 65 << none << 0 << "";
        QTest::newRow("idle beside charging") << 0 << 65 << none << 1 << "";
        QTest::newRow("idle alone") << 0 << 65 << none << -1 << "";
        QTest::newRow("charging") << 1 << none << 601 << 0 << "Remaining charge time 10:01 h";
        // "A charging battery with an unknown time shows "Estimating time..."."
        QTest::newRow("charging, unknown") << 1 << 65 << none << 0 << "Estimating time...";
        QTest::newRow("charging, 0 min") << 1 << 65 << 0 << 0 << "Estimating time...";
        QTest::newRow("discharging") << 2 << 59 << none << 0 << "Remaining time 0:59 h";
        QTest::newRow("discharging, 1 min") << 2 << 1 << none << 0 << "Remaining time 0:01 h";
        QTest::newRow("discharging, unknown") << 2 << none << 65 << 0 << "Estimating time...";
        QTest::newRow("discharging, 0 min") << 2 << 0 << none << 0 << "Estimating time...";
        QTest::newRow("precharging") << 3 << 65 << 65 << 2 << "";
    }
    void secondLabel()
    {
        QFETCH(int, chargeState);
        QFETCH(int, minutesLeft);
        QFETCH(int, averageTimeToFull);
        QFETCH(int, otherState);
        QFETCH(QString, label);
        const battery_t battery = present(chargeState, minutesLeft, averageTimeToFull);
        battery_t other;
        other.chargeState = otherState;
        Messages log;
        model().setBattData(battery, other);
        QCOMPARE(model().getBatt2ndLabel(BATT_TYPE_INTERNAL), label);
        model().setBattData(other, battery);
        QCOMPARE(model().getBatt2ndLabel(BATT_TYPE_EXTERNAL), label);
        QVERIFY(log.withPrefix("StatusUpdater::getBatt2ndLabel").isEmpty());
    }

    void secondLabelByConnection()
    {
        battery_t battery = present(2, 65);
        battery.batteryConnectionStatus = -1;
        model().setBattData(battery, battery_t());
        QCOMPARE(model().getBatt2ndLabel(BATT_TYPE_INTERNAL), QString());
        battery.batteryConnectionStatus = -2;
        model().setBattData(battery, battery_t());
        QCOMPARE(model().getBatt2ndLabel(BATT_TYPE_INTERNAL), QString("Battery error!"));
        for (int status : {1, -3}) {
            battery.batteryConnectionStatus = status;
            model().setBattData(battery, battery_t());
            Messages log;
            QCOMPARE(model().getBatt2ndLabel(BATT_TYPE_INTERNAL), QString());
            QCOMPARE(
                log.count(QtWarningMsg, QString("StatusUpdater::getBatt2ndLabel: ERROR! "
                                                "batt.batteryConnectionStatus=%1 is an unknown state!!!!")
                                            .arg(status)),
                1);
        }
    }

    void secondLabelOfAnUnknownChargeState()
    {
        for (int state : {-1, 4}) {
            model().setBattData(present(state, 65), battery_t());
            Messages log;
            QCOMPARE(model().getBatt2ndLabel(BATT_TYPE_INTERNAL), QString());
            QCOMPARE(log.count(
                         QtWarningMsg,
                         QString("StatusUpdater::getBatt2ndLabel: ERROR!!! batt.chargeState=%1 is undefined!")
                             .arg(state)),
                     1);
        }
    }

    void numberOfBatteries()
    {
        QCOMPARE(model().getNumberOfBatteries(), 0);
        model().setBattData(withCapacity(1), withCapacity(1, -1));
        QCOMPARE(model().getNumberOfBatteries(), 1);
        model().setBattData(withCapacity(1, -2), withCapacity(1));
        QCOMPARE(model().getNumberOfBatteries(), 1);
        model().setBattData(withCapacity(1), withCapacity(1));
        QCOMPARE(model().getNumberOfBatteries(), 2);
    }

    // "getTotalBattCapacity with 51 and 50 percent gives 50."
    void totalCapacity()
    {
        model().setBattData(withCapacity(51), withCapacity(50));
        QCOMPARE(model().getTotalBattCapacity(), 50);
        model().setBattData(withCapacity(51), withCapacity(50, -1));
        QCOMPARE(model().getTotalBattCapacity(), 51);
        model().setBattData(withCapacity(51, -2), withCapacity(50));
        QCOMPARE(model().getTotalBattCapacity(), 50);
        model().setBattData(withCapacity(51, -1), withCapacity(50, -1));
        QCOMPARE(model().getTotalBattCapacity(), 0);
    }

    // "getTotalBattRemainingTimeStr with one battery of 65 minutes gives 1:05; with two of 65 and 0 minutes
    // it is the same; with external supply present it is the charging symbol alone."
    void totalRemainingTime()
    {
        model().setBattData(present(2, 65), battery_t());
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString("1:05"));
        model().setBattData(present(2, 65), present(2, 0));
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString("1:05"));
        model().setBattData(present(2, -1), present(2, 65));
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString("1:05"));
        model().setBattData(present(2, 600), present(2, 65));
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString("11:05"));
        model().setBattData(present(2, 0), present(2, -1));
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString());
        battery_t absent = present(2, 65);
        absent.batteryConnectionStatus = -1;
        model().setBattData(absent, absent);
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString());
    }

    void externalSupplyShowsTheChargingMarkAlone()
    {
        model().setBattData(present(2, 65), battery_t());
        model().setExternalSupplyPresent(true);
        Messages log;
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString(QChar(0x26a1)));
        QCOMPARE(log.count(QtDebugMsg, "StatusUpdater::getTotalBattRemainingTimeStr(): Show charging symbol"),
                 1);
        model().setExternalSupplyPresent(false);
        QCOMPARE(model().getTotalBattRemainingTimeStr(), QString("1:05"));
    }
};

QTEST_MAIN(MeasurementsTest)

#include "measurements_test.moc"
