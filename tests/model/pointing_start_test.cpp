// When the antenna is pointed without being asked for, and what the WAN's and the system's setters do.
#include "busif/busfixture.h"

#include <functional>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// All that the start of the pointing asks for.
void makeReady()
{
    Access::simStatus() = SIM_READY;
    model().setPointingAtStartup(1);
    model().setSwUploadStatus(0, 0, 0);
    model().setExtendedSystemStatus(10);
    model().setWanActive(WAN_ACTIVE_BGAN);
}

} // namespace

class PointingStartTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    void readyTerminalPoints()
    {
        makeReady();
        bus->clearLogs();
        model().startPointingIfSystemReady();
        QCOMPARE(pointingCommands(), QStringList("start"));
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           "StatusUpdater::startPointingIfSystemReady(): About to request pointing started"),
            1);
    }

    void eachConditionAloneHoldsItBack_data()
    {
        QTest::addColumn<int>("condition");
        QTest::newRow("system status 9") << 0;
        QTest::newRow("system status 11") << 1;
        QTest::newRow("upload") << 2;
        QTest::newRow("no WAN") << 3;
        QTest::newRow("modem and BGAN do not count") << 4;
        QTest::newRow("SIM needs its PIN") << 5;
        QTest::newRow("not wanted") << 6;
    }
    void eachConditionAloneHoldsItBack()
    {
        QFETCH(int, condition);
        makeReady();
        const std::function<void()> conditions[] = {
            [] { model().setExtendedSystemStatus(9); },
            [] { model().setExtendedSystemStatus(11); },
            [] { model().setSwUploadStatus(1, 0, 0); },
            [] { model().setWanActive(WAN_ACTIVE_NONE); },
            [] { model().setWanActive(WAN_ACTIVE_MODEM_AND_BGAN); },
            [] { Access::simStatus() = SIM_PIN_NEEDED; },
            [] { model().setPointingAtStartup(0); },
        };
        conditions[condition]();
        bus->clearLogs();
        model().startPointingIfSystemReady();
        QCOMPARE(pointingCommands(), QStringList());
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           "StatusUpdater::startPointingIfSystemReady(): Do not request pointing started"),
            1);
    }

    // --- The way to the network ----------------------------------------------------------------------------

    void wanThatBecomesActiveAsks_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::addColumn<bool>("asks");
        for (int before : {-1, 0, 1, 2, 3})
            for (int after : {-1, 0, 1, 2, 3})
                if (before != after)
                    QTest::addRow("%d to %d", before, after)
                        << before << after << (before != 1 && before != 3 && (after == 1 || after == 3));
    }
    void wanThatBecomesActiveAsks()
    {
        QFETCH(int, before);
        QFETCH(int, after);
        QFETCH(bool, asks);
        makeReady();
        model().setWanActive(ENUM_WAN_ACTIVE(before));
        bus->clearLogs();
        QSignalSpy spy(&model(), SIGNAL(signalWanActiveChanged()));
        model().setWanActive(ENUM_WAN_ACTIVE(after));
        QCOMPARE(bus->log.countOfPrefix("StatusUpdater::startPointingIfSystemReady(): extendedSystemStatus="),
                 asks ? 1 : 0);
        QCOMPARE(pointingCommands(), asks && after == 1 ? QStringList("start") : QStringList());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(
            bus->log.count(QtDebugMsg, "StatusUpdater::setWanActive(): About to emit signalWanActiveChanged"),
            1);
        QCOMPARE(model().getWanActive(), after);
    }

    // "setWanActive(3) after 0 calls startPointingIfSystemReady, which then declines because the value is
    // not 1."
    void modemAndBganAsksAndIsDeclined()
    {
        makeReady();
        model().setWanActive(WAN_ACTIVE_NONE);
        bus->clearLogs();
        model().setWanActive(WAN_ACTIVE_MODEM_AND_BGAN);
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           "StatusUpdater::startPointingIfSystemReady(): Do not request pointing started"),
            1);
        QCOMPARE(pointingCommands(), QStringList());
    }

    void sameWanDoesNothing()
    {
        makeReady();
        bus->clearLogs();
        QSignalSpy spy(&model(), SIGNAL(signalWanActiveChanged()));
        model().setWanActive(WAN_ACTIVE_BGAN);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(pointingCommands(), QStringList());
    }

    // --- The system's status -------------------------------------------------------------------------------

    void stepToNormalStartsThePointing_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::addColumn<bool>("points");
        QTest::newRow("0 to 10") << 0 << 10 << true;
        QTest::newRow("9 to 10") << 9 << 10 << true;
        QTest::newRow("9 to 11") << 9 << 11 << false;
        QTest::newRow("12 to 10") << 12 << 10
                                  << false; // "setExtendedSystemStatus(10) after 12 does not start"
        QTest::newRow("10 to 9") << 10 << 9 << false;
    }
    void stepToNormalStartsThePointing()
    {
        QFETCH(int, before);
        QFETCH(int, after);
        QFETCH(bool, points);
        makeReady();
        model().setExtendedSystemStatus(before);
        bus->clearLogs();
        QSignalSpy spy(&model(), SIGNAL(signalExtendedSystemStatusChanged()));
        model().setExtendedSystemStatus(after);
        QCOMPARE(pointingCommands(), points ? QStringList("start") : QStringList());
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setExtendedSystemStatus(): goingFromInitToNormal=TRUE"),
                 points ? 1 : 0);
        QCOMPARE(spy.count(), 1);
    }

    void sameSystemStatusDoesNothing()
    {
        makeReady();
        bus->clearLogs();
        QSignalSpy spy(&model(), SIGNAL(signalExtendedSystemStatusChanged()));
        model().setExtendedSystemStatus(10);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(pointingCommands(), QStringList());
    }

    // --- Pointing mode -------------------------------------------------------------------------------------

    void pointingModeBecomesAStateEvent_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("event");
        QTest::newRow("not pointed") << 0 << 3;
        QTest::newRow("pointing") << 1 << 4;
        QTest::newRow("pointed") << 2 << 5;
    }
    void pointingModeBecomesAStateEvent()
    {
        QFETCH(int, mode);
        QFETCH(int, event);
        QSignalSpy spy(&model(), SIGNAL(stateEventReceived(STATE_EVENT)));
        model().setPointingMode(ENUM_POINTED_STATUS(mode));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(int(spy.at(0).at(0).value<STATE_EVENT>()), event);
        QCOMPARE(model().getPointingMode(), mode);
        model().setPointingMode(ENUM_POINTED_STATUS(mode));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(
            bus->log.count(QtDebugMsg, QString("StatusUpdater::setPointingMode(): pointingMode=%1 same as "
                                               "previous value. Ignoring it.")
                                           .arg(mode)),
            1);
    }

    void pointingModeThatIsNotKnownOrHasNoName()
    {
        model().setPointingMode(POINTING_STATUS_POINTED);
        QSignalSpy spy(&model(), SIGNAL(stateEventReceived(STATE_EVENT)));
        model().setPointingMode(POINTING_STATUS_UNKNOWN);
        QCOMPARE(model().getPointingMode(), -1);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setPointingMode(): Nothing to emit, as pointing status "
                                "is unknown."),
                 1);
        model().setPointingMode(ENUM_POINTED_STATUS(7));
        QCOMPARE(model().getPointingMode(), 7);
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "StatusUpdater::setPointingMode(): ERROR!!!! pointingMode=7 is unknown!!!"),
                 1);
        QCOMPARE(spy.count(), 0);
    }

    // --- Names for the log ---------------------------------------------------------------------------------

    void namesOfTheWans()
    {
        const QStringList active = {"WAN_ACTIVE_UNKNOWN (-1)", "WAN_ACTIVE_NONE (0)", "WAN_ACTIVE_BGAN (1)",
                                    "WAN_ACTIVE_MODEM (2)", "WAN_ACTIVE_MODEM_AND_BGAN (3)"};
        const QStringList startup = {"STARTUP_WAN_UNKNOWN (-1)", "STARTUP_WAN_MODEM_IF_AVAILABLE (0)",
                                     "STARTUP_WAN_USER_SELECTTION (1)", "STARTUP_WAN_BGAN (2)",
                                     "STARTUP_WAN_MODEM (3)"};
        const QStringList selection = {"WAN_USER_SELECTION_UNKNOWN (-1)", "WAN_USER_SELECTION_NONE (0)",
                                       "WAN_USER_SELECTION_BGAN (1)", "WAN_USER_SELECTION_MODEM (2)"};
        for (int value = -1; value <= 3; ++value) {
            QCOMPARE(model().getWanActiveStrFromEnum(value), active.at(value + 1));
            QCOMPARE(model().getStartupWanStrFromEnum(value), startup.at(value + 1));
            if (value <= 2)
                QCOMPARE(model().getWanUserSelectionStrFromEnum(value), selection.at(value + 1));
        }
    }

    void namesOutOfRangeAreLogged()
    {
        QCOMPARE(model().getWanActiveStrFromEnum(4), QString());
        QCOMPARE(model().getStartupWanStrFromEnum(-2), QString());
        QCOMPARE(model().getWanUserSelectionStrFromEnum(3), QString());
        QCOMPARE(bus->log.count(QtDebugMsg, "getWanActiveStrFromEnum(): ERROR!!! value=4 not supported!!!"),
                 1);
        QCOMPARE(bus->log.count(QtDebugMsg, "getStartupWanStrFromEnum(): ERROR!!! value=-2 not supported!!!"),
                 1);
        QCOMPARE(
            bus->log.count(QtDebugMsg, "getWanUserSelectionStrFromEnum(): ERROR!!! value=3 not supported!!!"),
            1);
    }

private:
    QStringList pointingCommands()
    {
        bus->terminal.settle();
        QStringList commands;
        for (const sim::Message& message : bus->terminal.messagesNamed("bp_ctrl.pointing"))
            commands.append(QString::fromStdString(message.text()));
        return commands;
    }

    BusFixture* bus = nullptr;
};

QTEST_MAIN(PointingStartTest)

#include "pointing_start_test.moc"
