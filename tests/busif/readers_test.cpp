// The readers of settings, measurements, state and lists, against the real server.
#include "busif/readers.h"
#include "busif/singlevalue.h"

#include "model/wan.h"

using singlevalue::Case;
using singlevalue::digits;
using singlevalue::number;
using singlevalue::text;
using singlevalue::truth;

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

const QList<Case>& cases()
{
    static const QList<Case> all = {
        {"readExternalSupply",
         readExternalSupply,
         "ram.status.psumcu.events.external_supply",
         [] { return truth(Access::externalSupplyPresent()); },
         "false",
         "readExternalSupply(): ram.status.psumcu.events.external_supply not in database???",
         {number(1, "true"), number(0, "false"), number(-3, "true")}},
        {"readSignalLevel",
         readSignalLevel,
         "ram.status.signal_strength",
         [] { return digits(model().getSignalLevel()); },
         "0",
         "readSignalLevel(): ram.status.signal_strength not in database???",
         {number(456), number(0), number(-1), number(1000000)}},
        {"readSignalLevelIcon",
         readSignalLevelIcon,
         "ram.status.signal_strength_norm",
         [] { return digits(model().getSignalLevelNumBars()); },
         "0",
         "readSignalLevelIcon(): ram.status.signal_strength_norm not in database???",
         {number(4), number(0), number(17)}},
        {"readDisplayTimeout",
         readDisplayTimeout,
         "cfg.display.timeout",
         [] { return digits(model().getScreenSaverTime()); },
         "300",
         "readDisplayTimeout(): cfg.display.timeout not in database???",
         {number(60), number(5), number(45)}},
        {"readBrightness",
         readBrightness,
         "cfg.display.brightness",
         [] { return digits(Access::brightnessLevel()); },
         "4",
         "readBrightness(): cfg.display.brightness not in database???",
         {number(7), number(1), number(99)}},
        {"readAudioPointing",
         readAudioPointing,
         "cfg.audio_indication.pointing",
         [] { return digits(Access::audioPointing()); },
         "1",
         "readAudioPointing(): cfg.audio_indication.pointing not in database???",
         {number(0), number(1), number(2)}},
        {"readPowerUpSetting",
         readPowerUpSetting,
         "cfg.power_up.switch_on_when_external_power",
         [] { return digits(Access::powerUpSetting()); },
         "0",
         "readPowerUpSetting(): cfg.power_up.switch_on_when_external_power not in database???",
         {number(1), number(0), number(7)}},
        {"readPowerUpPointingRequiredSetting",
         readPowerUpPointingRequiredSetting,
         "cfg.power_up.pointing_required",
         [] { return digits(model().getPointingAtStartup()); },
         "1",
         "readPowerUpPointingRequiredSetting(): cfg.power_up.pointing_required not in database???",
         {number(0), number(1), number(3)}},
        // -2 stands for nothing at all and leaves the model as it is.
        {"readCiphering",
         readCiphering,
         "rmcfg.protocols.umts.ciphering_capabilities",
         [] { return digits(model().getCiphering()); },
         "-1",
         QString(),
         {number(2), number(-1), number(0),
          number(-2, "2", "readCiphering(): Warning: Could not read ciphering information from RM.")}},
        {"readControlledByATCommands",
         readControlledByATCommands,
         "ram.net.single_user_mode",
         [] { return truth(model().getControlledByATCommands()); },
         "false",
         "readControlledByATCommands(): ram.net.single_user_mode not in database???",
         {number(1, "true"), number(0, "false"),
          number(2, "false", "readControlledByATCommands(): ERROR!!! illegal value=2"),
          number(-1, "false", "readControlledByATCommands(): ERROR!!! illegal value=-1")}},
        {"readACA",
         readACA,
         "cfg.net.user_groups.0.automatic_activation",
         [] { return truth(model().getACA()); },
         "false",
         "readACA(): cfg.net.user_groups.0.automatic_activation not in database???",
         {number(1, "true"), number(0, "false"), number(2, "false", "readACA(): ERROR!!! illegal value=2")}},
        {"readBondingEnabled",
         readBondingEnabled,
         "cfg.bonding.enabled",
         [] { return truth(model().getBondingEnabled()); },
         "false",
         "readBondingEnabled(): cfg.bonding.enabled not in database.",
         {number(1, "true"), number(0, "false"),
          number(5, "false", "readBondingEnabled(): ERROR!!! illegal value=5")}},
        {"readExtendedSystemStatus",
         readExtendedSystemStatus,
         "ram.status.ext_system",
         [] { return digits(model().getExtendedSystemStatus()); },
         "0",
         "readExtendedSystemStatus(): ram.status.ext_system not in database. "
         "Setting SYSTEM_STATUS_UNDEFINED",
         {number(9), number(4), number(77)}},
        {"readBganConnectionError",
         readBganConnectionError,
         "ram.status.ongoing_data_sessions.0.reason",
         [] { return digits(Access::bganConnectionError()); },
         "0",
         "readBganConnectionError(): ram.status.ongoing_data_sessions.0.reason not in database !!!!!",
         {number(33), number(0), number(-1)}},
        {"readPointingMode",
         readPointingMode,
         "ram.status.pointed_status",
         [] { return digits(model().getPointingMode()); },
         "-1",
         "readPointingMode(): ERROR !!! ram.status.pointed_status not in database???",
         {number(2), number(1), number(0), number(-1),
          number(3, "-1", "readPointingMode: ERROR: Unsupported pointing value=3"),
          number(-2, "-1", "readPointingMode: ERROR: Unsupported pointing value=-2")}},
        {"readLanguage",
         readLanguage,
         "cfg.language",
         [] { return digits(model().getLanguage()); },
         "0",
         "readLanguage(): cfg.language not in database???",
         {number(6), number(0), number(3),
          number(7, "0", "ERROR!!! StatusUpdater::readLanguage(): value=7 not within legal value range!!!"),
          number(-1, "0",
                 "ERROR!!! StatusUpdater::readLanguage(): value=-1 not within legal value range!!!")}},
        {"readHelpDeskStr",
         readHelpDeskStr,
         "cfg.help_desk_number",
         Access::helpDeskStr,
         "",
         "readHelpDeskStr(): ERROR !!! cfg.help_desk_number not in database???",
         {text("+45 100% \xc3\xa6")}},
        {"readUnitSerialNumber",
         readUnitSerialNumber,
         "rmcfg.platform.sysconf.serial_number",
         Access::unitSerialNumber,
         "",
         "readUnitSerialNumber(): ERROR !!! rmcfg.platform.sysconf.serial_number not in database???",
         {text("12345678")}},
        {"readHpaSerialNumber",
         readHpaSerialNumber,
         "rmcfg.platform.hpa_hw.unit_serial",
         Access::hpaSerialNumber,
         "",
         "readHpaSerialNumber(): ERROR !!! rmcfg.platform.hpa_hw.unit_serial not in database???",
         {text("A-77")}},
        {"readImeiStr",
         readImeiStr,
         "cfg.network_information.imei_number",
         Access::imeiStr,
         "",
         "readImeiStr(): ERROR !!! cfg.network_information.imei_number not in database???",
         {text("35-693803-564380-9")}},
    };
    return all;
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

class ReadersTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    void singleValue_data() { singlevalue::addRows(cases()); }
    void singleValue()
    {
        QFETCH(int, reader);
        QFETCH(int, value);
        singlevalue::run(*bus, cases()[reader], value);
    }

    // "cfg.display.timeout missing: the model gets 300 and the database gets the key with 300; a later read
    // finds the value."
    void missingDisplayTimeoutIsWrittenBack()
    {
        readDisplayTimeout();
        QCOMPARE(model().getScreenSaverTime(), 300);
        QVERIFY(bus->terminal.waitForValue("cfg.display.timeout", sim::Value::integer(300)));
        bus->clearLogs();
        readDisplayTimeout();
        QCOMPARE(model().getScreenSaverTime(), 300);
        QVERIFY(bus->log.texts().filter("not in database").isEmpty());
        bus->terminal.settle();
        QVERIFY(bus->terminal.writes().empty());
    }

    void missingBrightnessIsWrittenBack()
    {
        readBrightness();
        QVERIFY(bus->terminal.waitForValue("cfg.display.brightness", sim::Value::integer(4)));
        bus->clearLogs();
        readBrightness();
        QCOMPARE(Access::brightnessLevel(), 4);
        QVERIFY(bus->log.texts().filter("not in database").isEmpty());
    }

    // What readers write back is left to be saved with the user's next setting.
    void writtenDefaultsAreNotSynced()
    {
        readDisplayTimeout();
        readBrightness();
        bus->terminal.settle();
        QCOMPARE(bus->terminal.writes().size(), size_t(2));
        QVERIFY(bus->terminal.messagesNamed("config.sync.cfg").empty());
    }

    // No other reader writes, whatever is missing.
    void otherReadersWriteNothing()
    {
        for (const Case& reader : cases()) {
            if (reader.read != readDisplayTimeout && reader.read != readBrightness)
                reader.read();
        }
        bus->terminal.settle();
        QVERIFY(bus->terminal.writes().empty());
    }

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

    void swUploadStatus()
    {
        bus->terminal.set("ram.status.sw_update.active", 2);
        bus->terminal.set("ram.status.sw_update.progress", 41);
        bus->terminal.set("cfg.status.sw_update.error", 513);
        QSignalSpy changed(&model(), SIGNAL(signalSwUploadActiveChanged(int)));
        readSwUploadStatus();
        QCOMPARE(Access::swUpload(), QString("2|41|513"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(bus->reads(), QStringList({"ram.status.sw_update.active", "ram.status.sw_update.progress",
                                            "cfg.status.sw_update.error"}));
        QVERIFY(bus->log.texts().filter("not in database").isEmpty());
    }

    void swUploadStatusMissing_data()
    {
        QTest::addColumn<bool>("otherType");
        QTest::newRow("missing") << false;
        QTest::newRow("another type") << true;
    }
    void swUploadStatusMissing()
    {
        QFETCH(bool, otherType);
        for (const char* key :
             {"ram.status.sw_update.active", "ram.status.sw_update.progress", "cfg.status.sw_update.error"}) {
            if (otherType)
                bus->terminal.set(key, "1");
        }
        readSwUploadStatus();
        QCOMPARE(Access::swUpload(), QString("0|0|0"));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "readSwUploadStatus(): ram.status.sw_update.active not in database "
                                "(=not active)"),
                 1);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "readSwUploadStatus(): ram.status.sw_update.progress not in database???"),
                 1);
        QCOMPARE(
            bus->log.count(QtDebugMsg, "readSwUploadStatus(): cfg.status.sw_update.error not in database???"),
            1);
    }

    void swBuildDetails()
    {
        bus->terminal.set("ram.software_version.release.version", "1.04");
        bus->terminal.set("ram.software_version.release.buildnr", 17);
        bus->terminal.set("ram.software_version.release.buildid", "abc");
        bus->terminal.set("ram.software_version.release.builddate", "2016-03-01");
        bus->terminal.set("ram.software_version.release.red_label", 0);
        readSwBuildDetails();
        QCOMPARE(Access::swBuildDetails(), QString("1.04|17|0|abc|2016-03-01"));
        QCOMPARE(
            bus->reads(),
            QStringList({"ram.software_version.release.version", "ram.software_version.release.buildnr",
                         "ram.software_version.release.buildid", "ram.software_version.release.builddate",
                         "ram.software_version.release.red_label"}));
    }

    // Numbers that are missing reach the model as -1, which marks the software as red label.
    void swBuildDetailsMissing()
    {
        readSwBuildDetails();
        QCOMPARE(Access::swBuildDetails(), QString("|-1|-1||"));
    }

    void listExpression_data()
    {
        QTest::addColumn<int>("list");
        QTest::addColumn<QString>("expression");
        QTest::newRow("readDefinedBundlesCfg") << 0 << "cfg.admin\\.bundle\\..*";
        QTest::newRow("readBondingServicesAvailable") << 1 << "ram.bonding\\.status\\.service\\..*";
        QTest::newRow("readAlertList") << 2 << "ram.log\\.alert\\..*";
        QTest::newRow("initialReadOngoingDataSessions") << 3 << "ram.status\\.ongoing_data_sessions\\..*";
        QTest::newRow("initialReadCurrentBundleNumber") << 4 << "ram.net\\.user_groups\\.0\\.current_bundle";
    }
    // A list without a match is an empty list, not a failure.
    void listExpression()
    {
        QFETCH(int, list);
        QFETCH(QString, expression);
        void (*const readers[])() = {readDefinedBundlesCfg, readBondingServicesAvailable, readAlertList,
                                     initialReadOngoingDataSessions, initialReadCurrentBundleNumber};
        readers[list]();
        QCOMPARE(bus->reads().filter("readm"), QStringList("readm " + expression));
        QCOMPARE(bus->log.count(QtDebugMsg, QString(QTest::currentDataTag()) + "(): Start of function"), 1);
        QVERIFY(bus->log.texts().filter(" not in database???").isEmpty());
    }

    // The setter runs although there is no record: the list of bundles is announced.
    void emptyListReachesTheModel()
    {
        QSignalSpy changed(&model(), SIGNAL(definedBundlesCfgChanged()));
        readDefinedBundlesCfg();
        QCOMPARE(changed.count(), 1);
    }

    void currentBundleReachesTheModel()
    {
        bus->terminal.set("ram.net.user_groups.0.current_bundle", 3);
        initialReadCurrentBundleNumber();
        QCOMPARE(Access::currentBundleNumber(), 3);
    }

    void startRequestMissing()
    {
        readLocalGuiDisplayStartBundleNumber();
        QCOMPARE(bus->log.count(QtDebugMsg, "readLocalGuiDisplayStartBundleNumber(): "
                                            "ram.local_gui_display.start_bundle_number not in database. "
                                            "Using default value of -1."),
                 1);
        QCOMPARE(bus->reads(), QStringList("ram.local_gui_display.start_bundle_number"));
    }

private:
    BusFixture* bus = nullptr;
};

QTEST_MAIN(ReadersTest)
#include "readers_test.moc"
