// The user's settings and their menu items, the brightness in the driver, the languages, the identity texts,
// software update, PIN, and the times in which a text or the keys are held back.
#include "busif/busfixture.h"
#include "common/paths.h"
#include "model/menu_items.h"

#include "support/patience.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase()
    {
        delete bus;
        paths::overrideForTest(nullptr, nullptr, nullptr);
    }
    void init() { bus->reset(); }

    // --- Menu items ----------------------------------------------------------------------------------------

    void screenSaverTimeAsMenuItem()
    {
        const QList<QPair<int, int>> items = {{5, 21}, {30, 22}, {60, 23}, {120, 24}, {300, 25}};
        for (const auto& item : items) {
            model().setScreenSaverTime(item.first);
            QCOMPARE(model().getScreenSaverTimeEnum(), item.second);
        }
        QCOMPARE(warnings(), QStringList());
    }

    // "A screen saver time of 45 gives the item of 30 seconds and a warning, and the value stays 45."
    void screenSaverTimeOf45()
    {
        model().setScreenSaverTime(45);
        QCOMPARE(model().getScreenSaverTimeEnum(), 22);
        QCOMPARE(warnings(),
                 QStringList("StatusUpdater::getScreenSaverTimeEnum: Error!!! m_screenSaverTime=45 does "
                             "not have associated enum!!!!!"));
        QCOMPARE(model().getScreenSaverTime(), 45);
    }

    void brightnessAsMenuItem()
    {
        for (int level = 0; level <= 7; ++level) {
            model().setBrightness(level);
            QCOMPARE(model().getBrightnessEnum(), 12 + level);
        }
        QCOMPARE(warnings(), QStringList());
        for (int level : {-1, 8}) {
            model().setBrightness(level);
            bus->log.clear();
            QCOMPARE(model().getBrightnessEnum(), 15);
            QVERIFY(warnings().value(0).startsWith(
                QString("StatusUpdater::getBrightnessEnum: Error!!! m_brightnessLevel=%1").arg(level)));
        }
    }

    void audioPointingAsMenuItem()
    {
        QCOMPARE(model().getAudioPointingEnum(), 28); // on at start
        model().setAudioPointing(0);
        QCOMPARE(model().getAudioPointingEnum(), 29);
        QCOMPARE(warnings(), QStringList());
        model().setAudioPointing(2);
        QCOMPARE(model().getAudioPointingEnum(), 29);
        QVERIFY(
            warnings().value(0).startsWith("StatusUpdater::getAudioPointingEnum: Error!!! audioPointing=2"));
    }

    void powerUpAsMenuItem()
    {
        QCOMPARE(model().getPowerUpEnum(), 40);
        model().setPowerUp(0);
        QCOMPARE(model().getPowerUpEnum(), 41);
        QCOMPARE(warnings(), QStringList());
        model().setPowerUp(-1);
        QCOMPARE(model().getPowerUpEnum(), 40);
        QVERIFY(warnings().value(0).startsWith("StatusUpdater::getPowerUpEnum: Error!!! powerUpSetting=-1"));
    }

    void languageAsMenuItem()
    {
        for (int language = 0; language <= 6; ++language) {
            model().setLanguage(LANG_ENUM(language));
            QCOMPARE(model().getLanguageTreeWidgetEnum(), 43 + language);
        }
        QCOMPARE(warnings(), QStringList());
        model().setLanguage(LANG_UNDEFINED);
        QCOMPARE(model().getLanguageTreeWidgetEnum(), 43);
        QCOMPARE(warnings(),
                 QStringList("StatusUpdater::getLanguageTreeWidgetEnum(): ERROR!!!! language=7 not "
                             "supported???"));
    }

    // --- Languages -----------------------------------------------------------------------------------------

    void languagesNameThemselves()
    {
        const QStringList names = {"English",
                                   QString::fromUtf8("Français"),
                                   "Deutsch",
                                   QString::fromUtf8("Pусский"),
                                   QString::fromUtf8("Español"),
                                   QString::fromUtf8("中文"),
                                   QString::fromUtf8("日本語"),
                                   "LANG_UNDEFINED"};
        for (int language = 0; language <= 7; ++language)
            QCOMPARE(model().getLanguageStrFromEnum(LANG_ENUM(language)), names.at(language));
        QCOMPARE(model().getLanguageStrFromEnum(LANG_RUSSIAN).at(0), QChar('P')); // Latin
    }

    void languageOutOfRangeHasNoName()
    {
        for (int value : {-1, 8}) {
            QCOMPARE(model().getLanguageStrFromEnum(LANG_ENUM(value)), QString());
            QCOMPARE(bus->log.count(
                         QtDebugMsg,
                         QString("getLanguageStrFromEnum(): ERROR!!! enum=%1 not supported!!!").arg(value)),
                     1);
        }
    }

    void newLanguageIsAskedFor()
    {
        QSignalSpy spy(&model(), SIGNAL(requestLoadLanguage(LANG_ENUM)));
        model().setLanguage(LANG_GERMAN);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(int(spy.at(0).at(0).value<LANG_ENUM>()), 2);
        QVERIFY(!bus->log.texts().filter("LANG_UNDEFINED").filter("Deutsch").isEmpty()); // old and new name
        model().setLanguage(LANG_GERMAN);
        QCOMPARE(spy.count(), 1);
    }

    // --- Brightness in the driver --------------------------------------------------------------------------

    // "setBrightness with level 4 before the window stands stores the level and emits brightnessChanged, but
    // writes no file; Window::show writes 128."
    void brightnessWaitsForTheWindow()
    {
        useDriver("old!");
        QSignalSpy spy(&model(), SIGNAL(brightnessChanged()));
        model().setBrightness(4);
        QCOMPARE(Access::brightnessLevel(), 4);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(driver(), QByteArray("old!"));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setBrightness(): Brightness not allowed to be set yet."),
                 1);
        model().setBrightnessAllowed(true); // as the window does when it shows
        model().setBrightnessInDriver();
        QCOMPARE(driver(), QByteArray("128\0", 4));
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::setBrightnessInDriver(): Wrote 128 to file"), 1);
    }

    void brightnessByLevel()
    {
        const QList<QPair<int, QByteArray>> values = {
            {1, QByteArray("0\0\0\0", 4)}, {2, QByteArray("43\0\0", 4)}, {3, QByteArray("85\0\0", 4)},
            {4, QByteArray("128\0", 4)},   {5, QByteArray("170\0", 4)},  {6, QByteArray("213\0", 4)},
            {7, QByteArray("255\0", 4)},   {0, QByteArray("127\0", 4)},  {8, QByteArray("128\0", 4)},
            {-2, QByteArray("128\0", 4)}};
        model().setBrightnessAllowed(true);
        for (const auto& value : values) {
            useDriver("");
            model().setBrightness(value.first);
            QCOMPARE(driver(), value.second);
        }
        QCOMPARE(warnings(), QStringList("StatusUpdater::setBrightnessInDriver(): ERROR: Auto brightness not "
                                         "implemented yet"));
        for (int level : {8, -2})
            QCOMPARE(bus->log.count(QtDebugMsg, QString("StatusUpdater::setBrightnessInDriver(): ERROR !!!: "
                                                        "m_brightnessLevel=%1 is undefinded!")
                                                    .arg(level)),
                     1);
    }

    void missingDriverIsWarnedOfAndTheLevelKept()
    {
        const QByteArray path = (directory.path() + "/nothing/contrast").toLocal8Bit();
        paths::overrideForTest(nullptr, nullptr, path.constData());
        model().setBrightnessAllowed(true);
        QSignalSpy spy(&model(), SIGNAL(brightnessChanged()));
        model().setBrightness(6);
        QCOMPARE(warnings(),
                 QStringList("StatusUpdater::setBrightnessInDriver(): ERROR !!! Can not open file " + path));
        QCOMPARE(model().getBrightnessEnum(), 18); // the menu shows what the hardware did not take
        QCOMPARE(spy.count(), 1);
    }

    void driverThatTakesNothingIsLogged()
    {
        paths::overrideForTest(nullptr, nullptr, "/dev/full");
        model().setBrightnessAllowed(true);
        model().setBrightness(6);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setBrightnessInDriver(): ERROR !!! Can not write to file."),
                 1);
    }

    void sameBrightnessIsNotWritten()
    {
        model().setBrightnessAllowed(true);
        useDriver("");
        model().setBrightness(3);
        useDriver("new");
        model().setBrightness(3);
        QCOMPARE(driver(), QByteArray("new"));
    }

    // --- Interfaces ----------------------------------------------------------------------------------------

    void interfacesOneToFive()
    {
        QSignalSpy spy(&model(), SIGNAL(interfaceStateChanged(INTERFACE_NAME_ENUM)));
        for (int i = 1; i <= 5; ++i) {
            model().setInterfaceState(INTERFACE_NAME_ENUM(i), INTERFACE_STATE_ENUM(i % 4));
            QCOMPARE(int(model().getInterfaceState(INTERFACE_NAME_ENUM(i))), i % 4);
            QCOMPARE(int(spy.last().at(0).value<INTERFACE_NAME_ENUM>()), i);
        }
        QCOMPARE(spy.count(), 5);
    }

    void otherInterfacesAreWarnedOf()
    {
        QSignalSpy spy(&model(), SIGNAL(interfaceStateChanged(INTERFACE_NAME_ENUM)));
        for (int i : {0, 6, -1, 1000}) {
            bus->log.clear();
            model().setInterfaceState(INTERFACE_NAME_ENUM(i), INTERFACE_STATE_ON);
            QCOMPARE(int(model().getInterfaceState(INTERFACE_NAME_ENUM(i))), -1);
            QCOMPARE(warnings(),
                     QStringList(
                         {QString("StatusUpdater::setInterfaceState(): ERROR!!! interface=%1 not supported!")
                              .arg(i),
                          QString("StatusUpdater::getInterfaceState(): ERROR!!! interface=%1 not supported!")
                              .arg(i)}));
        }
        QCOMPARE(spy.count(), 0);
    }

    // --- Identity ------------------------------------------------------------------------------------------

    void helpDesk()
    {
        QCOMPARE(model().getHelpDeskStr(), QString("Help desk not configured.\nSee User Manual."));
        model().setHelpDeskStr("+45 1234");
        QCOMPARE(model().getHelpDeskStr(), QString("+45 1234"));
    }

    // "getHpaSerialNumber with an empty text has no label; with text it has "Antenna serial number: " before
    // it."
    void serialNumbersAndImei()
    {
        QCOMPARE(model().getUnitSerialNumber(), QString("Unknown unit serial number"));
        QCOMPARE(model().getHpaSerialNumber(), QString("Unknown antenna serial number"));
        QCOMPARE(model().getImeiStr(), QString("Unknown IMEI"));
        model().setUnitSerialNumber("U1");
        model().setHpaSerialNumber("A2");
        model().setImeiStr("I3");
        QCOMPARE(model().getUnitSerialNumber(), QString("Unit serial number: U1"));
        QCOMPARE(model().getHpaSerialNumber(), QString("Antenna serial number: A2"));
        QCOMPARE(model().getImeiStr(), QString("IMEI: I3"));
    }

    void ipAddressKeepsItsLabel()
    {
        QCOMPARE(model().getIpAddrStr(), QString("IP address: "));
        model().setIpAddress("10.0.0.1");
        QCOMPARE(model().getIpAddrStr(), QString("IP address: 10.0.0.1"));
    }

    // "getLanMacStr with an empty MAC and the interface state 2 says "Unknown MAC for LAN"; any other state
    // asks to enable the LAN."
    void macOfAnInterface_data()
    {
        QTest::addColumn<int>("state");
        for (int state : {-1, 0, 1, 2, 3})
            QTest::addRow("%d", state) << state;
    }
    void macOfAnInterface()
    {
        QFETCH(int, state);
        model().setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_ENUM(state));
        QCOMPARE(model().getLanMacStr(), state == 2 ? QString("Unknown MAC for LAN")
                                                    : QString("Enable LAN to be able to read MAC for LAN"));
        QCOMPARE(model().getWifiMacStr(), QString("Enable WLAN to be able to read MAC for WLAN"));
        model().setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_UNKNOWN);
        model().setInterfaceState(INTERFACE_NAME_WIFI, INTERFACE_STATE_ENUM(state));
        QCOMPARE(model().getWifiMacStr(), state == 2
                                              ? QString("Unknown MAC for WLAN")
                                              : QString("Enable WLAN to be able to read MAC for WLAN"));
        QCOMPARE(model().getLanMacStr(), QString("Enable LAN to be able to read MAC for LAN"));
        model().setLanMacStr("00:01");
        model().setWifiMacStr("00:02");
        QCOMPARE(model().getLanMacStr(), QString("MAC: 00:01"));
        QCOMPARE(model().getWifiMacStr(), QString("MAC: 00:02"));
    }

    void networkNameOnlyWhereItIsBroadcast()
    {
        model().setWifiSsidStr("terminal 100%");
        QCOMPARE(model().getWifiSsidUserStr(), QString("(WLAN name hidden)"));
        model().setWifiBroadcastSsid(true);
        QCOMPARE(model().getWifiSsidUserStr(), QString("WLAN name: terminal 100%"));
        QCOMPARE(model().getWifiSsidStr(), QString("terminal 100%"));
    }

    // "getSoftwareVersion with swRedLabel 1 starts with the warning line".
    void softwareVersion()
    {
        QCOMPARE(model().getSoftwareVersion(), QString("Software version: \nBuild number: 0"));
        model().setSwBuildDetails("1.05", 42, 0, "id", "date");
        QCOMPARE(model().getSoftwareVersion(), QString("Software version: 1.05\nBuild number: 42"));
        model().setSwBuildDetails("1.05", 42, 1, "id", "date");
        QCOMPARE(model().getSoftwareVersion(),
                 QString("Warning: Red label software!\nSoftware version: 1.05\nBuild number: 42"));
        model().setSwBuildDetails("0.9", 43, -1, "id", "date"); // a development version
        QCOMPARE(model().getSoftwareVersion(),
                 QString("Warning: Red label software!\nSoftware version: 0.9\nBuild number: 43\ndate\nid"));
    }

    // --- Software update -----------------------------------------------------------------------------------

    void uploadStoresAllThree()
    {
        model().setSwUploadStatus(0, 55, 7);
        QCOMPARE(Access::swUpload(), QString("0|55|7"));
        model().setSwUploadStatus(2, 56, 8);
        QCOMPARE(Access::swUpload(), QString("2|56|8"));
        QCOMPARE(model().getSwUploadActive(), 2);
    }

    void uploadShowsAHiddenWindow_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<int>("active");
        QTest::addColumn<int>("shows");
        QTest::addColumn<int>("logs");
        QTest::newRow("no window") << int(MAIN_WINDOW_NONE) << 1 << 0 << 1;
        QTest::newRow("hidden") << int(MAIN_WINDOW_HIDDEN) << 1 << 1 << 0;
        QTest::newRow("visible") << int(MAIN_WINDOW_VISIBLE) << 1 << 0 << 0;
        QTest::newRow("no window, no upload") << int(MAIN_WINDOW_NONE) << 0 << 0 << 0;
        QTest::newRow("hidden, no upload") << int(MAIN_WINDOW_HIDDEN) << 0 << 0 << 0;
    }
    void uploadShowsAHiddenWindow()
    {
        QFETCH(int, window);
        QFETCH(int, active);
        QFETCH(int, shows);
        QFETCH(int, logs);
        model().setMainWindowState(MAIN_WINDOW_STATE(window));
        QCOMPARE(int(model().getMainWindowState()), window);
        QSignalSpy spy(&model(), SIGNAL(guiAllowedToBeShown()));
        model().setSwUploadStatus(active, 0, 0);
        QCOMPARE(spy.count(), shows);
        model().setSwUploadStatus(active, 1, 0); // asked for anew each time
        QCOMPARE(spy.count(), 2 * shows);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setSwUploadStatus(): Main Window is not created yet. Do "
                                "not emit signal to show main window."),
                 2 * logs);
    }

    void confirmedResultIsCleared()
    {
        model().setSwResultUserConfirmed();
        bus->terminal.settle();
        QStringList writes;
        for (const sim::WriteRecord& write : bus->terminal.writes())
            writes.append(QString::fromStdString(write.key) + "=" + QString::number(write.value.toInt()));
        QCOMPARE(writes,
                 QStringList({"cfg.status.sw_update.error=0", "ram.status.sw_update.file_upload.result=0",
                              "ram.status.sw_update.file_upload.state=0"}));
    }

    // --- PIN -----------------------------------------------------------------------------------------------

    void pinIsJudgedByTheSimAfterTwoSeconds_data()
    {
        QTest::addColumn<int>("sim");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("ready") << int(SIM_READY) << true;
        QTest::newRow("still needed") << int(SIM_PIN_NEEDED) << false;
    }
    void pinIsJudgedByTheSimAfterTwoSeconds()
    {
        QFETCH(int, sim);
        QFETCH(bool, accepted);
        QSignalSpy right(&model(), SIGNAL(signalPinAccepted()));
        QSignalSpy wrong(&model(), SIGNAL(signalWrongPin()));
        QElapsedTimer clock;
        clock.start();
        model().startValidatePin("1234");
        QVERIFY(bus->terminal.waitForWrite("ram.usim.pin", sim::Value::text("1234")));
        QCOMPARE(Access::pinTimer().interval(), 2000);
        Access::simStatus() = sim;
        QTRY_COMPARE_WITH_TIMEOUT(right.count() + wrong.count(), 1, PATIENCE_MS);
        QVERIFY(clock.elapsed() >= 1900);
        QCOMPARE(right.count(), accepted ? 1 : 0);
        QVERIFY(!Access::pinTimer().isActive()); // it fires once
    }

    // --- Hidden text, ignored keys -------------------------------------------------------------------------

    void pointNowTextIsHiddenForTwoSeconds()
    {
        QSignalSpy spy(&model(), SIGNAL(statusChanged()));
        QVERIFY(!model().getHidePointNowText());
        QElapsedTimer clock;
        clock.start();
        model().startHidePointNowText();
        QVERIFY(model().getHidePointNowText());
        QCOMPARE(Access::hidePointNowTextTimer().interval(), 2000);
        QTRY_VERIFY_WITH_TIMEOUT(!model().getHidePointNowText(), PATIENCE_MS);
        QVERIFY(clock.elapsed() >= 1900);
        QCOMPARE(spy.count(), 1);
        QVERIFY(!Access::hidePointNowTextTimer().isActive());
    }

    void keysAreIgnoredFor700Milliseconds()
    {
        QVERIFY(!model().getIgnoreGlobalKeyPress());
        QVERIFY(bus->log.withPrefix("StatusUpdater::getIgnoreGlobalKeyPress()").isEmpty());
        QElapsedTimer clock;
        clock.start();
        model().startIgnoreGlobalKeyPress();
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::startIgnoreGlobalKeyPress(): Ignoring keypress for 700 ms"),
                 1);
        QVERIFY(model().getIgnoreGlobalKeyPress());
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::getIgnoreGlobalKeyPress(): Ignoring keypress."),
                 1);
        QCOMPARE(Access::ignoreGlobalKeyPressTimer().interval(), 700);
        QTRY_VERIFY_WITH_TIMEOUT(!model().getIgnoreGlobalKeyPress(), PATIENCE_MS);
        QVERIFY(clock.elapsed() >= 600);
        model().startIgnoreGlobalKeyPress();
        model().stopIgnoreGlobalKeyPress();
        QVERIFY(!model().getIgnoreGlobalKeyPress());
    }

private:
    QStringList warnings() const
    {
        QStringList texts;
        for (const auto& message : bus->log.all())
            if (message.first == QtWarningMsg)
                texts.append(message.second);
        return texts;
    }

    void useDriver(const QByteArray& content)
    {
        m_path = (directory.path() + "/contrast").toLocal8Bit();
        paths::overrideForTest(nullptr, nullptr, m_path.constData());
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    }
    QByteArray driver() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    BusFixture* bus = nullptr;
    QTemporaryDir directory;
    QByteArray m_path;
};

QTEST_MAIN(SettingsTest)

#include "settings_test.moc"
