// The frame of the model: its start, the thread rule, the timers, and which setter emits when.
#include "model/statusupdater.h"

#include "common/log.h"
#include "support/deaths.h"
#include "support/messages.h"
#include "support/modelaccess.h"
#include "support/patience.h"
#include "support/records.h"

#include <QSignalSpy>
#include <QThread>

#include <functional>
#include <thread>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

void readIntOffTheBusThread()
{
    model().setHasConnectedToCBus(true);
    std::thread busThread([] { model().setThreadIdCBus(QThread::currentThreadId()); });
    busThread.join();
    model().getCBusValueInt("cfg.language");
}

void readBeforeTheBusThreadRuns()
{
    model().getCBusValueInt("cfg.language");
}

void readStringOffTheBusThread()
{
    model().getCBusValueStr("cfg.language");
}

void pollOffTheBusThread()
{
    model().pollStatusFromRm();
}

void updateSimStatusOffTheBusThread()
{
    model().updateSimStatus();
}

void bundlesOffTheBusThread()
{
    Records records;
    records.text("cfg.admin.bundle.1.name", "One");
    model().setDefinedBundlesCfg(records.count(), records.data());
}

// Qt 6 would rather have another function, which Qt 5 lacks.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
bool isRegistered(const char* type)
{
    return QMetaType::type(type) != QMetaType::UnknownType;
}
QT_WARNING_POP

const DeathCase CASES[] = {
    {"readIntOffTheBusThread", readIntOffTheBusThread},
    {"readBeforeTheBusThreadRuns", readBeforeTheBusThreadRuns},
    {"readStringOffTheBusThread", readStringOffTheBusThread},
    {"pollOffTheBusThread", pollOffTheBusThread},
    {"updateSimStatusOffTheBusThread", updateSimStatusOffTheBusThread},
    {"bundlesOffTheBusThread", bundlesOffTheBusThread},
};

const char PANIC[] = "ERROR!!! StatusUpdater::validateThisIsCBusThread() failed. Exiting lumenpanel.";

// A setter with a value, the signal that tells of it, and the rule: whether an equal value is told of, and
// whether the first value of the two is told of at all.
struct SetterRow {
    const char* name;
    const char* signal;
    std::function<void(int)> set;
    int first;
    int second;
    bool tellsEqual;
};

gps_data_t positionOf(int satellites)
{
    gps_data_t position;
    position.numberOfGpsFound = satellites;
    return position;
}

battery_t batteryOf(int capacity)
{
    battery_t battery;
    battery.capacity = capacity;
    return battery;
}

QList<SetterRow> setters()
{
    StatusUpdater* const m = &model();
    return {
        {"setScreenSaverTime", SIGNAL(screenSaverTimeChanged()), [m](int v) { m->setScreenSaverTime(v); }, 60,
         120, false},
        {"setBrightness", SIGNAL(brightnessChanged()), [m](int v) { m->setBrightness(v); }, 3, 4, false},
        {"setAudioPointing", SIGNAL(audioPointingChanged()), [m](int v) { m->setAudioPointing(v); }, 0, 1,
         false},
        {"setPowerUp", SIGNAL(powerUpSettingChanged()), [m](int v) { m->setPowerUp(v); }, 0, 1, false},
        {"setLanguage", SIGNAL(requestLoadLanguage(LANG_ENUM)), [m](int v) { m->setLanguage(LANG_ENUM(v)); },
         1, 2, false},
        {"setInterfaceState", SIGNAL(interfaceStateChanged(INTERFACE_NAME_ENUM)),
         [m](int v) { m->setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_ENUM(v)); }, 2, 0, false},
        {"setSignalLevel", SIGNAL(signalLevelChanged(int)), [m](int v) { m->setSignalLevel(v); }, 456, 400,
         true},
        {"setSignalLevelIcon", SIGNAL(signalLevelNumBarsChanged(int)),
         [m](int v) { m->setSignalLevelIcon(v); }, 3, 4, true},
        {"setPosition", SIGNAL(gpsDataChanged()), [m](int v) { m->setPosition(positionOf(v)); }, 5, 6, true},
        {"setBattData", SIGNAL(battDataChanged()), [m](int v) { m->setBattData(batteryOf(v), batteryOf(v)); },
         50, 51, true},
        {"setExternalSupplyPresent", SIGNAL(battDataChanged()),
         [m](int v) { m->setExternalSupplyPresent(v != 0); }, 1, 0, false},
        {"setCiphering", SIGNAL(cipheringChanged(int)), [m](int v) { m->setCiphering(v); }, 0, 1, false},
        {"setSimPinRetriesLeft", SIGNAL(simPinRetriesLeftChanged()),
         [m](int v) { m->setSimPinRetriesLeft(v); }, 2, 1, false},
        {"setSwUploadStatus", SIGNAL(signalSwUploadActiveChanged(int)),
         [m](int v) { m->setSwUploadStatus(v, 10, 0); }, 1, 2, false},
        {"setWifiNumberOfClients", SIGNAL(numberOfWlanClientsChanged()),
         [m](int v) { m->setWifiNumberOfClients(v); }, 1, 2, true},
        {"setBganConnectionError", SIGNAL(bganConnectionErrorChanged(int)),
         [m](int v) { m->setBganConnectionError(v); }, 1, 2, true},
        {"setControlledByATCommands", SIGNAL(controlledByATCommandsChanged()),
         [m](int v) { m->setControlledByATCommands(v != 0); }, 1, 0, true},
        {"setACA", SIGNAL(acaChanged()), [m](int v) { m->setACA(v != 0); }, 1, 0, true},
        {"setWanActive", SIGNAL(signalWanActiveChanged()),
         [m](int v) { m->setWanActive(ENUM_WAN_ACTIVE(v)); }, 2, 0, false},
        {"setModemPresent", SIGNAL(signalModemPresentChanged()), [m](int v) { m->setModemPresent(v); }, 1, 0,
         false},
        {"setModemActivated", SIGNAL(signalModemActivatedChanged()), [m](int v) { m->setModemActivated(v); },
         1, 0, false},
        {"setWanUserSelection", SIGNAL(signalWanUserSelectionChanged()),
         [m](int v) { m->setWanUserSelection(ENUM_WAN_USER_SELECTION(v)); }, 1, 2, false},
        {"setModemOrBganAtStartup", SIGNAL(signalModemOrBganAtStartupChanged()),
         [m](int v) { m->setModemOrBganAtStartup(ENUM_STARTUP_WAN(v)); }, 1, 2, false},
        {"setExtendedSystemStatus", SIGNAL(signalExtendedSystemStatusChanged()),
         [m](int v) { m->setExtendedSystemStatus(v); }, 5, 6, false},
        {"setPointingMode", SIGNAL(stateEventReceived(STATE_EVENT)),
         [m](int v) { m->setPointingMode(ENUM_POINTED_STATUS(v)); }, 0, 1, false},
        {"setDhcpClientMode", SIGNAL(bondingStateChanged()),
         [m](int v) {
             m->setBondingEnabled(true);
             m->setDhcpClientMode(v != 0);
         },
         1, 0, false},
    };
}

} // namespace

class StatusUpdaterTest : public QObject {
    Q_OBJECT

private slots:
    void init() { StatusUpdater::destroyForTest(); }
    void cleanupTestCase() { StatusUpdater::destroyForTest(); }

    void isOne()
    {
        QVERIFY(StatusUpdater::getStatusUpdater() == StatusUpdater::getStatusUpdater());
        QVERIFY(model().parent() == nullptr);
    }

    void logsItsConstruction()
    {
        Messages log;
        model();
        QCOMPARE(log.count(QtDebugMsg, "StatusUpdater::StatusUpdater(): Start of constructor."), 1);
        QCOMPARE(log.texts().last(), QString("StatusUpdater::StatusUpdater(): End of constructor."));
    }

    void startsWithItsInitialValues()
    {
        QCOMPARE(model().getScreenSaverTime(), 30);
        QCOMPARE(Access::brightnessLevel(), -1);
        QCOMPARE(model().getBrightnessAllowed(), false);
        QCOMPARE(Access::audioPointing(), 1);
        QCOMPARE(Access::powerUpSetting(), 1);
        for (const QString& text :
             {Access::helpDeskStr(), Access::unitSerialNumber(), Access::hpaSerialNumber(), Access::imeiStr(),
              Access::ipAddress(), model().getWifiSsidStr(), Access::wifiMacStr(), Access::lanMacStr()})
            QCOMPARE(text, QString());
        QCOMPARE(model().getWanActive(), -1);
        QCOMPARE(model().getModemPresent(), -1);
        QCOMPARE(model().getModemActivated(), -1);
        QCOMPARE(model().getWanUserSelection(), -1);
        QCOMPARE(model().getModemOrBganAtStartup(), -1);
        QCOMPARE(model().getWifiBroadcastSsid(), false);
        QCOMPARE(model().getWifiNumberOfClients(), 0);
        for (int i = 1; i <= 5; ++i)
            QCOMPARE(int(model().getInterfaceState(INTERFACE_NAME_ENUM(i))), -1);
        QCOMPARE(model().getPointingMode(), -1);
        QCOMPARE(model().getPointingAtStartup(), 1);
        QCOMPARE(model().getCiphering(), -2);
        QCOMPARE(model().getSimPinRetriesLeft(), 3);
    }

    void startsWithNoRadioModuleAndNoSession()
    {
        QCOMPARE(model().getSimStatus(), -3);
        QCOMPARE(Access::iai2Status(), 0);
        QCOMPARE(model().getRmOperating(), 0);
        QCOMPARE(model().getPlmnStatus(), 6);
        QCOMPARE(Access::umtsCsStatus(), 7);
        QCOMPARE(Access::umtsPsStatus(), 7);
        QCOMPARE(model().getIai2BeamType(), 0);
        QCOMPARE(Access::bganConnectionError(), 0);
        QCOMPARE(model().getHidePointNowText(), false);
        QCOMPARE(Access::currentBundleNumber(), -1);
        QCOMPARE(model().getNumberOfDefinedBundles(), 0);
        QVERIFY(Access::activeConnectionsAndBundles().isEmpty());
        QCOMPARE(model().getControlledByATCommands(), false);
        QCOMPARE(model().getExtendedSystemStatus(), 0);
        QCOMPARE(model().getDhcpClientMode(), false);
        QCOMPARE(model().getBondingEnabled(), false);
        QCOMPARE(model().getACA(),
                 false); // left open by the terminal's makers; false is the sensible reading
        QCOMPARE(model().getBondingState(), 0);
        QCOMPARE(model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K), false);
    }

    void startsWithNoMeasurementAndNoEvent()
    {
        QCOMPARE(int(model().getLanguage()), 7);
        QCOMPARE(model().getBattInt().batteryConnectionStatus, -1);
        QCOMPARE(model().getBattInt().minutesLeft, -1);
        QCOMPARE(model().getBattInt().averageTimeToFull, -1);
        QCOMPARE(model().getBattInt().chargeState, -1);
        QCOMPARE(model().getBattInt().capacity, 0);
        QCOMPARE(model().getBattInt().temperature, 0);
        QCOMPARE(model().getBattInt().isInternal, true);
        QCOMPARE(model().getBattExt().isInternal, false);
        const gps_data_t position = Access::position();
        QVERIFY(position.latNorth && position.longEast && position.displayPositionAllowed);
        QCOMPARE(position.latDeg + position.latMin + position.longDeg + position.longMin, 0);
        QCOMPARE(position.numberOfGpsFound + position.fix_type, 0);
        QCOMPARE(Access::externalSupplyPresent(), false);
        QCOMPARE(model().getSignalLevel(), 0);
        QCOMPARE(model().getSignalLevelNumBars(), 0);
        QCOMPARE(Access::swUpload(), QString("0|0|512"));
        QCOMPARE(Access::swBuildDetails(), QString("|0|0||"));
        QCOMPARE(model().getWarningsPresent(), false);
        QCOMPARE(Access::subscribedToChanges(), true);
        QVERIFY(model().getEvents().isEmpty());
        QCOMPARE(model().getHasConnectedToCBus(), false);
        QVERIFY(model().getThreadIdCBus() == nullptr);
        QCOMPARE(Access::statusLabelFont(), QApplication::font());
        QCOMPARE(int(model().getCurrentStatusTextId()), 0);
        QCOMPARE(int(model().getMainWindowState()), int(MAIN_WINDOW_NONE));
    }

    void eventTextsAreThereFromTheStartStatusTextsAreNot()
    {
        QCOMPARE(model().getEventText(0x210), QString("EV_ALARM_SIM_MODULE"));
        QCOMPARE(model().getStatusText(STATUS_TEXT_READY), QString());
    }

    void metaTypesAreRegistered()
    {
        model();
        for (const char* name :
             {"fmmi_evt_t", "INTERFACE_STATE_ENUM", "INTERFACE_NAME_ENUM", "LANG_ENUM", "BUNDLE_STATUS"})
            QVERIFY2(isRegistered(name), name);
    }

    // --- Thread rule ---------------------------------------------------------------------------------------

    void theBusThreadPassesTheThreadRule()
    {
        model().setThreadIdCBus(QThread::currentThreadId());
        QVERIFY(model().validateThisIsCBusThread("something"));
        QVERIFY(model().getThreadIdCBus() == QThread::currentThreadId());
    }

    void readingOffTheBusThreadEndsTheProcess_data()
    {
        QTest::addColumn<QString>("debugStr");
        QTest::newRow("readIntOffTheBusThread") << "getCBusValueIntcfg.language";
        QTest::newRow("readBeforeTheBusThreadRuns") << "getCBusValueIntcfg.language";
        QTest::newRow("readStringOffTheBusThread") << "getCBusValueStrcfg.language";
        QTest::newRow("pollOffTheBusThread") << "updateRmOperating";
        QTest::newRow("updateSimStatusOffTheBusThread") << "updateSimStatus";
        QTest::newRow("bundlesOffTheBusThread") << "readBundleStatus";
    }
    void readingOffTheBusThreadEndsTheProcess()
    {
        QFETCH(QString, debugStr);
        const ProcessDeath death = deathOfCase(QTest::currentDataTag());
        QVERIFY2(death.byPanic(PANIC), qPrintable(death.output));
        const QRegularExpression line(
            "StatusUpdater::validateThisIsCBusThread\\(\\): ERROR!!! Not legal to run in this thread. "
            "currentThreadId=0x[0-9a-f]+, threadIdCBus=0x[0-9a-f]+, debugStr=" +
            QRegularExpression::escape(debugStr) + "\\. Now exiting lumenpanel!");
        QVERIFY2(line.match(death.output).hasMatch(), qPrintable(death.output));
    }

    // --- Small helpers -------------------------------------------------------------------------------------

    void sleepsForSecondsAndMilliseconds()
    {
        Messages log;
        QElapsedTimer clock;
        clock.start();
        model().sleepMs(1050);
        QVERIFY(clock.elapsed() >= 1050);
        QCOMPARE(log.texts().last(),
                 QString("StatusUpdater::sleepMs(): ms=1050, tv_sec=1, tv_nsec=50000000"));
    }

    void debugTimeStrIsTheAge()
    {
        const QDateTime now = QDateTime::currentDateTime();
        QVERIFY(
            QRegularExpression("^01:02:0[34]$").match(model().debugTimeStr(now.addSecs(-3723))).hasMatch());
        QVERIFY(model().debugTimeStr(now.addSecs(-360000)).startsWith("100:00:0"));
        QCOMPARE(model().debugTimeStr(now.addSecs(100)), QString("00:00:00"));
    }

    void unicodeNeededForWhatLatin1Lacks()
    {
        QVERIFY(!model().unicodeNeeded("plain"));
        QVERIFY(!model().unicodeNeeded(QString::fromUtf8("Français")));
        QVERIFY(!model().unicodeNeeded(QString()));
        QVERIFY(model().unicodeNeeded(QString::fromUtf8("Русский")));
        QVERIFY(model().unicodeNeeded(
            QString::fromLatin1("a\0b", 3))); // what stands behind a NUL does not survive
    }

    void takeScreenshotEmits()
    {
        QSignalSpy spy(&model(), SIGNAL(signalTakeScreenshot()));
        model().takeScreenshot();
        QCOMPARE(spy.count(), 1);
    }

    void statusLabelFontIsKept()
    {
        QFont font("DejaVu Sans Mono");
        font.setPixelSize(31);
        model().setStatusLabelFont(font);
        QCOMPARE(Access::statusLabelFont(), font);
    }

    // --- Timers --------------------------------------------------------------------------------------------

    void noTimerRunsAtStart()
    {
        QVERIFY(!Access::updateConnectionTimer().isActive());
        QVERIFY(!Access::pinTimer().isActive());
        QVERIFY(!Access::hidePointNowTextTimer().isActive());
        QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
        QVERIFY(!Access::updateConnectionTimer().isSingleShot());
    }

    void updateConnectionTimerTellsEachSecond()
    {
        QSignalSpy spy(&model(), SIGNAL(updateElapsedTimeAndBackgroundDataSignal()));
        model().handleStartUpdateConnectionTimer();
        QCOMPARE(Access::updateConnectionTimer().interval(), 1000);
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 2, 6000);
        model().handleStopUpdateConnectionTimer();
        QVERIFY(!Access::updateConnectionTimer().isActive());
    }

    // "handleStartUpdateConnectionTimer while the timer runs does not restart its phase."
    void startOfARunningTimerKeepsItsPhase()
    {
        model().handleStartUpdateConnectionTimer();
        const int id = Access::updateConnectionTimer().timerId();
        model().handleStartUpdateConnectionTimer();
        QCOMPARE(Access::updateConnectionTimer().timerId(), id); // a restart would give it a new one
    }

    void busThreadStartsAndStopsTheTimerOnItsOwnThread()
    {
        StatusUpdater* const m = &model();
        std::thread([m] { emit m->startUpdateConnectionTimerSignal(); }).join();
        QVERIFY(!Access::updateConnectionTimer().isActive()); // queued until the timer's thread turns
        QTRY_VERIFY_WITH_TIMEOUT(Access::updateConnectionTimer().isActive(), PATIENCE_MS);
        std::thread([m] { emit m->stopUpdateConnectionTimerSignal(); }).join();
        QTRY_VERIFY_WITH_TIMEOUT(!Access::updateConnectionTimer().isActive(), PATIENCE_MS);
    }

    // --- Signals -------------------------------------------------------------------------------------------

    void settersEmitByTheirRule()
    {
        for (const SetterRow& row : setters()) {
            StatusUpdater::destroyForTest();
            const QList<SetterRow> fresh = setters();
            const SetterRow& setter =
                *std::find_if(fresh.begin(), fresh.end(),
                              [&row](const SetterRow& other) { return qstrcmp(other.name, row.name) == 0; });
            QSignalSpy spy(&model(), setter.signal);
            QVERIFY2(spy.isValid(), setter.name);
            setter.set(setter.first);
            const int base = spy.count(); // a helper of the row may have told once more
            QVERIFY2(base >= 1, setter.name);
            setter.set(setter.first);
            QVERIFY2(spy.count() == base + (setter.tellsEqual ? 1 : 0), setter.name);
            spy.clear();
            setter.set(setter.second);
            QVERIFY2(spy.count() == 1, setter.name);
        }
    }

    // "setSignalLevel with an unchanged value still emits signalLevelChanged."
    void unchangedSignalLevelIsToldOf()
    {
        model().setSignalLevel(456);
        QSignalSpy spy(&model(), SIGNAL(signalLevelChanged(int)));
        model().setSignalLevel(456);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), 456);
    }

    // "setModemPresent(-1) after a value of 1 stores -1 and emits nothing."
    void unknownModemIsStoredInSilence()
    {
        model().setModemPresent(1);
        QSignalSpy spy(&model(), SIGNAL(signalModemPresentChanged()));
        model().setModemPresent(-1);
        QCOMPARE(model().getModemPresent(), -1);
        QCOMPARE(spy.count(), 0);
    }

    void unknownSelectionAndStartupRuleAreStoredInSilence()
    {
        model().setWanUserSelection(WAN_USER_SELECTION_BGAN);
        model().setModemOrBganAtStartup(STARTUP_WAN_BGAN);
        QSignalSpy selection(&model(), SIGNAL(signalWanUserSelectionChanged()));
        QSignalSpy startup(&model(), SIGNAL(signalModemOrBganAtStartupChanged()));
        model().setWanUserSelection(WAN_USER_SELECTION_UNKNOWN);
        model().setModemOrBganAtStartup(STARTUP_WAN_UNKNOWN);
        QCOMPARE(model().getWanUserSelection(), -1);
        QCOMPARE(model().getModemOrBganAtStartup(), -1);
        QCOMPARE(selection.count() + startup.count(), 0);
    }

    void unknownActivationIsToldOf()
    {
        model().setModemActivated(1);
        QSignalSpy spy(&model(), SIGNAL(signalModemActivatedChanged()));
        model().setModemActivated(-1);
        QCOMPARE(spy.count(), 1);
    }

    void emissionsAreLogged()
    {
        model();
        Messages log;
        model().setScreenSaverTime(60);
        QCOMPARE(
            log.count(QtDebugMsg,
                      "StatusUpdater::setScreenSaverTime(): About to emit signal screenSaverTimeChanged()"),
            1);
    }
};

DEATH_TEST_MAIN(StatusUpdaterTest, CASES)

#include "statusupdater_test.moc"
