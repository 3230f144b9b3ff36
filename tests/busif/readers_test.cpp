// The readers of settings, state and lists, against the real server.
#include "busif/readers.h"
#include "busif/singlevalue.h"

#include "model/wan.h"

using namespace singlevalue;

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

const QList<Case>& cases()
{
    static const QList<Case> all = {
        ofNumber(READER(readExternalSupply), "ram.status.psumcu.events.external_supply",
                 [] { return truth(Access::externalSupplyPresent()); }, "false",
                 {number(1, "true"), number(0, "false"), number(-3, "true")}),
        ofNumber(
            READER(readSignalLevel), "ram.status.signal_strength",
            [] { return digits(model().getSignalLevel()); }, "0", numbers({456, 0, -1, 1000000})),
        ofNumber(
            READER(readSignalLevelIcon), "ram.status.signal_strength_norm",
            [] { return digits(model().getSignalLevelNumBars()); }, "0", numbers({4, 0, 17})),
        ofNumber(
            READER(readDisplayTimeout), "cfg.display.timeout",
            [] { return digits(model().getScreenSaverTime()); }, "300", numbers({60, 5, 45})),
        ofNumber(
            READER(readBrightness), "cfg.display.brightness",
            [] { return digits(Access::brightnessLevel()); }, "4", numbers({7, 1, 99})),
        ofNumber(
            READER(readAudioPointing), "cfg.audio_indication.pointing",
            [] { return digits(Access::audioPointing()); }, "1", numbers({0, 1, 2})),
        ofNumber(
            READER(readPowerUpSetting), "cfg.power_up.switch_on_when_external_power",
            [] { return digits(Access::powerUpSetting()); }, "0", numbers({1, 0, 7})),
        ofNumber(
            READER(readPowerUpPointingRequiredSetting), "cfg.power_up.pointing_required",
            [] { return digits(model().getPointingAtStartup()); }, "1", numbers({0, 1, 3})),
        // -2 stands for nothing at all and leaves the model as it is.
        ofNumber(
            READER(readCiphering), "rmcfg.protocols.umts.ciphering_capabilities",
            [] { return digits(model().getCiphering()); }, "-1", QString(),
            numbers({2, -1, 0}) +
                QList<Given>{number(
                    -2, "2", "readCiphering(): Warning: Could not read ciphering information from RM.")}),
        ofNumber(
            READER(readControlledByATCommands), "ram.net.single_user_mode",
            [] { return truth(model().getControlledByATCommands()); }, "false",
            truthOr("readControlledByATCommands", {2, -1})),
        ofNumber(
            READER(readACA), "cfg.net.user_groups.0.automatic_activation",
            [] { return truth(model().getACA()); }, "false", truthOr("readACA", {2})),
        ofNumber(
            READER(readBondingEnabled), "cfg.bonding.enabled",
            [] { return truth(model().getBondingEnabled()); }, "false",
            "readBondingEnabled(): cfg.bonding.enabled not in database.", truthOr("readBondingEnabled", {5})),
        ofNumber(
            READER(readExtendedSystemStatus), "ram.status.ext_system",
            [] { return digits(model().getExtendedSystemStatus()); }, "0",
            "readExtendedSystemStatus(): ram.status.ext_system not in database. Setting "
            "SYSTEM_STATUS_UNDEFINED",
            numbers({9, 4, 77})),
        ofNumber(
            READER(readBganConnectionError), "ram.status.ongoing_data_sessions.0.reason",
            [] { return digits(Access::bganConnectionError()); }, "0",
            "readBganConnectionError(): ram.status.ongoing_data_sessions.0.reason not in database !!!!!",
            numbers({33, 0, -1})),
        ofNumber(
            READER(readPointingMode), "ram.status.pointed_status",
            [] { return digits(model().getPointingMode()); }, "-1",
            "readPointingMode(): ERROR !!! ram.status.pointed_status not in database???",
            numbers({2, 1, 0, -1}) +
                QList<Given>{number(3, "-1", "readPointingMode: ERROR: Unsupported pointing value=3"),
                             number(-2, "-1", "readPointingMode: ERROR: Unsupported pointing value=-2")}),
        ofNumber(
            READER(readLanguage), "cfg.language", [] { return digits(model().getLanguage()); }, "0",
            numbers({6, 0, 3}) +
                QList<Given>{number(7, "0",
                                    "ERROR!!! StatusUpdater::readLanguage(): value=7 not within legal value "
                                    "range!!!"),
                             number(-1, "0",
                                    "ERROR!!! StatusUpdater::readLanguage(): value=-1 not within legal value "
                                    "range!!!")}),
        ofText(READER(readHelpDeskStr), "cfg.help_desk_number", Access::helpDeskStr, "+45 100% \xc3\xa6"),
        ofText(READER(readUnitSerialNumber), "rmcfg.platform.sysconf.serial_number", Access::unitSerialNumber,
               "12345678"),
        ofText(READER(readHpaSerialNumber), "rmcfg.platform.hpa_hw.unit_serial", Access::hpaSerialNumber,
               "A-77"),
        ofText(READER(readImeiStr), "cfg.network_information.imei_number", Access::imeiStr,
               "35-693803-564380-9"),
    };
    return all;
}

} // namespace

class ReadersTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    void singleValue_data() { addRows(cases()); }
    void singleValue()
    {
        QFETCH(int, reader);
        QFETCH(int, value);
        run(*bus, cases()[reader], value);
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
