// The subscriptions and what a change leads to, against the real server: what it saw of filters, and which
// keys it was asked for afterwards.
#include "busif/subscriptions.h"

#include "busif/busfixture.h"
#include "sim/syslogtap/syslogtap.h"

#include <thread>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// The subscriptions as they are to be, by handler.
enum Handler { GENERAL, SESSIONS, CURRENT_BUNDLE, BUNDLES, BONDING, ALERTS };
const config_change_func_t HANDLERS[] = {
    _handle_config_changed,
    _handle_config_changed_ongoing_data_sessions,
    _handle_config_changed_current_bundle_number,
    _handle_config_changed_defined_bundles_cfg,
    _handle_bonding_services_available_changed,
    _handle_alert_list_changed,
};
struct ExpectedSubscription {
    const char* prefix;
    Handler handler;
};
const ExpectedSubscription EXPECTED_SUBSCRIPTIONS[] = {
    {"ram.status.battery", GENERAL},
    {"ram.status.psumcu.events.external_supply", GENERAL},
    {"ram.status.position", GENERAL},
    {"ram.status.signal_strength", GENERAL},
    {"ram.status.signal_strength_norm", GENERAL},
    {"ram.status.sw_update.active", GENERAL},
    {"ram.status.sw_update.progress", GENERAL},
    {"cfg.status.sw_update.error", GENERAL},
    {"cfg.display.brightness", GENERAL},
    {"cfg.display.timeout", GENERAL},
    {"cfg.audio_indication.pointing", GENERAL},
    {"cfg.language", GENERAL},
    {"ram.status.interfaces.isdn.enabled", GENERAL},
    {"ram.status.interfaces.lan.enabled", GENERAL},
    {"ram.status.interfaces.phone.enabled", GENERAL},
    {"ram.status.interfaces.usb.enabled", GENERAL},
    {"ram.status.interfaces.wlan.enabled", GENERAL},
    {"cfg.interfaces.isdn.enabled", GENERAL},
    {"cfg.interfaces.lan.enabled", GENERAL},
    {"cfg.interfaces.lan.mac_address", GENERAL},
    {"cfg.interfaces.phone.enabled", GENERAL},
    {"cfg.interfaces.usb.enabled", GENERAL},
    {"cfg.interfaces.wlan.enabled", GENERAL},
    {"cfg.interfaces.wlan.ssid", GENERAL},
    {"ram.status.interfaces.wlan.clients", GENERAL},
    {"cfg.interfaces.wlan.bssid", GENERAL},
    {"ram.wan.active", GENERAL},
    {"ram.modem.status.present", GENERAL},
    {"ram.modem.activate", GENERAL},
    {"ram.wan.user_selection", GENERAL},
    {"cfg.wan.setting", GENERAL},
    {"cfg.interfaces.wlan.mac_address", GENERAL},
    {"ram.net.eth0.ip_address", GENERAL},
    {"ram.status.ext_system", GENERAL},
    {"ram.status.pointed_status", GENERAL},
    {"cfg.help_desk_number", GENERAL},
    {"cfg.power_up.switch_on_when_external_power", GENERAL},
    {"cfg.power_up.pointing_required", GENERAL},
    {"ram.status.ongoing_data_sessions", SESSIONS},
    {"ram.net.user_groups.0.current_bundle", CURRENT_BUNDLE},
    {"ram.status.ongoing_data_sessions.0.reason", GENERAL},
    {"cfg.admin.bundle", BUNDLES},
    {"cfg.admin.connection.", BUNDLES},
    {"ram.net.single_user_mode", GENERAL},
    {"cfg.net.user_groups.0.automatic_activation", GENERAL},
    {"ram.net.eth0.dhcp_client_mode", GENERAL},
    {"cfg.bonding.enabled", GENERAL},
    {"ram.bonding.status.service", BONDING},
    {"ram.local_gui_display.start_bundle_number", GENERAL},
    {"ram.log.alert.latest.entry_count", ALERTS},
};

// The keys of the general handler, in its order, and what a change of one makes the display read. Where that
// is nothing else than the key itself, the list is empty.
struct ExpectedReader {
    QStringList keys;
    QStringList reads;
};
QList<ExpectedReader> expectedReaders()
{
    QStringList battery;
    for (const char* number : {"1", "2"}) {
        for (const char* word : {"status", "temperature", "relative_state_of_charge", "average_time_to_empty",
                                 "average_time_to_full", "charge_discharge_status"})
            battery.append(QString("ram.status.battery.%1.%2").arg(number, word));
    }
    const QStringList position = {"ram.status.position.latitude", "ram.status.position.longitude",
                                  "rmcfg.protocols.bgan.status.gps_policy.display",
                                  "ram.status.position.satellites", "ram.status.position.fix"};
    const QStringList update = {"ram.status.sw_update.active", "ram.status.sw_update.progress",
                                "cfg.status.sw_update.error"};
    const auto interface = [](const char* word) {
        const QStringList keys = {QString("ram.status.interfaces.%1.enabled").arg(word),
                                  QString("cfg.interfaces.%1.enabled").arg(word)};
        return ExpectedReader{keys, keys};
    };
    const auto single = [](const char* key) { return ExpectedReader{{key}, {key}}; };
    return {
        {battery, battery},
        single("ram.status.psumcu.events.external_supply"),
        single("cfg.language"),
        {position, position},
        single("ram.status.signal_strength"),
        single("ram.status.signal_strength_norm"),
        single("cfg.display.timeout"),
        single("cfg.display.brightness"),
        single("cfg.audio_indication.pointing"),
        interface("isdn"),
        interface("lan"),
        interface("phone"),
        interface("usb"),
        interface("wlan"),
        single("ram.status.pointed_status"),
        single("rmcfg.protocols.umts.ciphering_capabilities"),
        single("cfg.help_desk_number"),
        single("rmcfg.platform.sysconf.serial_number"),
        single("rmcfg.platform.hpa_hw.unit_serial"),
        single("cfg.network_information.imei_number"),
        single("ram.net.eth0.ip_address"),
        single("cfg.interfaces.lan.mac_address"),
        single("cfg.interfaces.wlan.mac_address"),
        single("ram.status.interfaces.wlan.clients"),
        single("cfg.interfaces.wlan.ssid"),
        single("cfg.interfaces.wlan.bssid"),
        single("ram.wan.active"),
        single("ram.modem.status.present"),
        single("ram.modem.activate"),
        single("ram.wan.user_selection"),
        single("cfg.wan.setting"),
        single("cfg.power_up.switch_on_when_external_power"),
        single("cfg.power_up.pointing_required"),
        single("ram.status.ongoing_data_sessions.0.reason"),
        {update, update},
        single("ram.net.single_user_mode"),
        single("cfg.net.user_groups.0.automatic_activation"),
        single("ram.status.ext_system"),
        single("ram.net.eth0.dhcp_client_mode"),
        single("cfg.bonding.enabled"),
        single("ram.local_gui_display.start_bundle_number"),
    };
}

bool hasSubscription(const QString& key)
{
    for (const ExpectedSubscription& subscription : EXPECTED_SUBSCRIPTIONS) {
        if (key.startsWith(subscription.prefix))
            return true;
    }
    return false;
}

// A record as a change brings it; the values are of no interest.
config_data_t changed(const char* name)
{
    config_data_t record = {};
    record.type = VX_CONFIG_TYPE_INT;
    record.name = name;
    return record;
}

int startsOfBundles()
{
    return int(syslogtap::count(6, "start_bundle: start of function"));
}

} // namespace

class SubscriptionsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        bus = new BusFixture;
        registerSubscriptions();
        bus->terminal.settle();
        for (const sim::Message& message : bus->terminal.messagesNamed("cbus.filter"))
            filters.append(QString::fromStdString(message.text()));
        syslogtap_start();
    }
    void cleanupTestCase() { delete bus; }
    void init()
    {
        bus->reset();
        syslogtap_clear();
    }

    void fiftySubscriptionsInOrder()
    {
        QCOMPARE(SUBSCRIPTION_COUNT, 50);
        QCOMPARE(filters.size(), 50);
        for (int i = 0; i < 50; ++i) {
            const ExpectedSubscription& expected = EXPECTED_SUBSCRIPTIONS[i];
            QCOMPARE(QString(SUBSCRIPTIONS[i].keyPrefix), QString(expected.prefix));
            QVERIFY2(SUBSCRIPTIONS[i].handler == HANDLERS[expected.handler], expected.prefix);
            QCOMPARE(filters[i], "config.change." + QString(expected.prefix).section('.', 0, 0));
        }
    }

    void fortyPlacesInOrder()
    {
        const QList<ExpectedReader> expected = expectedReaders();
        QCOMPARE(READER_ROW_COUNT, expected.size());
        QCOMPARE(READER_ROWS[0].order, 1);
        QCOMPARE(READER_ROWS[READER_ROW_COUNT - 1].order, 40);
        for (int row = 1; row < READER_ROW_COUNT; ++row) // the first two share a place
            QCOMPARE(READER_ROWS[row].order, row);
    }

    // Each subscription brings a change of its key to its handler, through the server.
    void eachSubscriptionWorks_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("handler");
        for (const ExpectedSubscription& expected : EXPECTED_SUBSCRIPTIONS) {
            // A key below those prefixes that are only the beginning of one.
            QString key = expected.prefix;
            if (key == "ram.status.battery")
                key += ".2.temperature";
            else if (key == "ram.status.position")
                key += ".fix";
            else if (expected.handler == SESSIONS)
                key += ".0.status";
            else if (expected.handler == BUNDLES)
                key += key.endsWith('.') ? "0.traffic_class" : ".0.name";
            else if (expected.handler == BONDING)
                key += ".x";
            QTest::newRow(expected.prefix) << key << int(expected.handler);
        }
    }
    void eachSubscriptionWorks()
    {
        QFETCH(QString, key);
        QFETCH(int, handler);
        bus->terminal.set(key.toStdString(), -1);
        bus->drain();
        switch (handler) {
        case GENERAL:
            QVERIFY2(bus->reads().contains(key), qPrintable(bus->reads().join(", ")));
            break;
        case SESSIONS:
            QCOMPARE(handlerStarts("_handle_config_changed_ongoing_data_sessions"), 1);
            break;
        case CURRENT_BUNDLE:
            QCOMPARE(handlerStarts("_handle_config_changed_current_bundle_number"), 1);
            QCOMPARE(Access::currentBundleNumber(), -1);
            break;
        case BUNDLES:
            QCOMPARE(handlerStarts("_handle_config_changed_defined_bundles_cfg"), 1);
            QCOMPARE(bus->reads().filter("readm"), QStringList("readm cfg.admin\\.bundle\\..*"));
            break;
        case BONDING:
            QCOMPARE(handlerStarts("_handle_bonding_services_available_changed"), 1);
            QCOMPARE(bus->reads(), QStringList("readm ram.bonding\\.status\\.service\\..*"));
            break;
        case ALERTS:
            QCOMPARE(handlerStarts("_handle_alert_list_changed"), 1);
            QCOMPARE(bus->reads(), QStringList("readm ram.log\\.alert\\..*"));
            break;
        }
    }

    // One write of each key of each row leads to one run of its reader and to nothing else.
    void eachKeyRunsItsReader_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QStringList>("reads");
        for (const ExpectedReader& expected : expectedReaders()) {
            for (const QString& key : expected.keys)
                QTest::newRow(qPrintable(key)) << key << expected.reads;
        }
    }
    void eachKeyRunsItsReader()
    {
        QFETCH(QString, key);
        QFETCH(QStringList, reads);
        // The handler itself, since some keys have no subscription.
        const QByteArray name = key.toLatin1();
        const config_data_t record = changed(name.constData());
        _handle_config_changed(1, &record, nullptr, nullptr);
        QCOMPARE(bus->reads(), reads);

        bus->clearLogs();
        bus->terminal.set(key.toStdString(), -1);
        bus->drain();
        if (!hasSubscription(key))
            reads.clear(); // such a change never arrives
        else if (key == "ram.status.signal_strength_norm")
            reads += reads; // it also begins with the key of the level, so two subscriptions bring it
        QCOMPARE(bus->reads(), reads);
    }

    // Rows without a subscription stay in the table; they are exactly these.
    void keysThatNeverArrive()
    {
        QStringList never;
        for (const ExpectedReader& expected : expectedReaders()) {
            for (const QString& key : expected.keys) {
                if (!hasSubscription(key))
                    never.append(key);
            }
        }
        QCOMPARE(never,
                 QStringList({"rmcfg.protocols.bgan.status.gps_policy.display",
                              "rmcfg.protocols.umts.ciphering_capabilities",
                              "rmcfg.platform.sysconf.serial_number", "rmcfg.platform.hpa_hw.unit_serial",
                              "cfg.network_information.imei_number"}));
    }

    // All keys at once, backwards: each reader once, in the table's order, the supply not beside the
    // batteries.
    void allKeysAtOnce()
    {
        QList<QByteArray> names;
        QStringList reads;
        for (const ExpectedReader& expected : expectedReaders()) {
            for (const QString& key : expected.keys)
                names.prepend(key.toLatin1());
            if (expected.keys.first() != "ram.status.psumcu.events.external_supply")
                reads += expected.reads;
        }
        std::vector<config_data_t> records;
        for (const QByteArray& name : names)
            records.push_back(changed(name.constData()));
        _handle_config_changed(unsigned(records.size()), records.data(), nullptr, nullptr);
        QCOMPARE(bus->reads(), reads);
    }

    void unknownKeysReadNothing_data()
    {
        QTest::addColumn<QString>("key");
        for (const char* key :
             {"ram.status.battery.3.status", "ram.status.battery.1.statu", "ram.status.battery.1.status.x",
              "ram.status.battery.update_now", "ram.status.position.altitude", "cfg.languages",
              "CFG.LANGUAGE", "ram.status.signal_strength.update_interval"})
            QTest::newRow(key) << key;
    }
    void unknownKeysReadNothing()
    {
        QFETCH(QString, key);
        bus->terminal.set(key.toStdString(), 1);
        bus->drain();
        QVERIFY2(bus->reads().isEmpty(), qPrintable(bus->reads().join(", ")));
    }

    void noRecordsReadNothing()
    {
        _handle_config_changed(0, nullptr, nullptr, nullptr);
        QVERIFY(bus->reads().isEmpty());
    }

    // "A change of two battery keys in one signal under ram.status.battery reads the battery once."
    void twoBatteryKeysReadOnce()
    {
        bus->terminal.setAll({{"ram.status.battery.1.temperature", sim::Value::integer(20)},
                              {"ram.status.battery.2.status", sim::Value::integer(0)}});
        bus->drain();
        QCOMPARE(bus->reads(), expectedReaders()[0].reads);
        QCOMPARE(model().getBattInt().temperature, 20);
        QCOMPARE(model().getBattExt().batteryConnectionStatus, 0);
    }

    // "A change of a battery key and of ram.status.psumcu.events.external_supply arrives under two different
    // rows, so each read runs once."
    void batteryAndSupplyAreBothRead()
    {
        bus->terminal.setAll({{"ram.status.psumcu.events.external_supply", sim::Value::integer(1)},
                              {"ram.status.battery.1.temperature", sim::Value::integer(20)}});
        bus->drain();
        QCOMPARE(bus->reads(),
                 expectedReaders()[0].reads + QStringList("ram.status.psumcu.events.external_supply"));
    }

    // In one call the batteries take the supply's place.
    void supplyIsNotReadBesideTheBatteries()
    {
        const config_data_t records[] = {changed("ram.status.psumcu.events.external_supply"),
                                         changed("ram.status.battery.1.status")};
        _handle_config_changed(2, records, nullptr, nullptr);
        QCOMPARE(bus->reads(), expectedReaders()[0].reads);
    }

    // Changes of one write come subscription by subscription, whatever the order of the keys in it.
    void oneWriteOfManyKeys()
    {
        bus->terminal.setAll({{"ram.status.pointed_status", sim::Value::integer(1)},
                              {"ram.net.eth0.ip_address", sim::Value::text("10.0.0.1")},
                              {"ram.wan.active", sim::Value::integer(1)},
                              {"ram.status.signal_strength", sim::Value::integer(450)}});
        bus->drain();
        QCOMPARE(bus->reads(), QStringList({"ram.status.signal_strength", "ram.wan.active",
                                            "ram.net.eth0.ip_address", "ram.status.pointed_status"}));
    }

    // A change of the reason matches two rows: the sessions' handler gets the record, and the cause is read.
    void reasonReachesBothHandlers()
    {
        bus->terminal.set("ram.status.ongoing_data_sessions.0.reason", 33);
        bus->drain();
        QCOMPARE(handlerStarts("_handle_config_changed_ongoing_data_sessions"), 1);
        QCOMPARE(bus->reads(), QStringList("ram.status.ongoing_data_sessions.0.reason"));
        QCOMPARE(Access::bganConnectionError(), 33);
    }

    // The handler passes on the record, it does not read.
    void currentBundleComesFromTheRecord()
    {
        bus->terminal.set("ram.net.user_groups.0.current_bundle", 4);
        bus->drain();
        QCOMPARE(Access::currentBundleNumber(), 4);
        QVERIFY(!bus->reads().contains("ram.net.user_groups.0.current_bundle"));
    }

    void handlersLogTheirCount()
    {
        bus->terminal.setAll({{"cfg.admin.bundle.0.name", sim::Value::text("Default")},
                              {"cfg.admin.bundle.1.name", sim::Value::text("Video")},
                              {"cfg.admin.connection.0.traffic_class", sim::Value::integer(1)}});
        bus->drain();
        const QString start = "_handle_config_changed_defined_bundles_cfg: Start of function. nrec=";
        QCOMPARE(bus->log.count(QtDebugMsg, start + "2"), 1);
        QCOMPARE(bus->log.count(QtDebugMsg, start + "1"), 1);
    }

    // A value that a change handler reads is the database's present one, not the record's.
    void valuesAreReadAfresh()
    {
        bus->terminal.set("cfg.language", 1);
        bus->terminal.set("cfg.language", 2);
        bus->drain();
        QCOMPARE(int(model().getLanguage()), 2);
        QCOMPARE(bus->reads(), QStringList({"cfg.language", "cfg.language"}));
    }

    // A deleted key arrives, too, and brings the default.
    void deletedKeyBringsTheDefault()
    {
        bus->terminal.set("cfg.display.timeout", 60);
        bus->drain();
        QCOMPARE(model().getScreenSaverTime(), 60);
        bus->terminal.erase("cfg.display.timeout");
        bus->drain();
        QCOMPARE(model().getScreenSaverTime(), 300);
    }

    // "A value of -1 in ram.local_gui_display.start_bundle_number calls nothing."
    void minusOneStartsNothing()
    {
        bus->terminal.set("ram.local_gui_display.start_bundle_number", -1);
        bus->drain();
        QCOMPARE(bus->reads(), QStringList("ram.local_gui_display.start_bundle_number"));
        QCOMPARE(startsOfBundles(), 0);
    }

    // "Starting the same bundle twice writes -1 and the number each time, and each start reaches start_bundle
    // once."
    void sameBundleStartedTwice()
    {
        bus->terminal.set("cfg.admin.bundle.2.name", "Video");
        bus->drain();
        bus->clearLogs();
        const std::string key = "ram.local_gui_display.start_bundle_number";
        for (int start = 1; start <= 2; ++start) {
            bool done = false;
            std::thread gui([&done] {
                StatusUpdater::getStatusUpdater()->startBundle(2);
                done = true;
            });
            bus->turnUntil([&] { return startsOfBundles() >= start; });
            gui.join();
            QVERIFY(done);
            bus->drain();
            QCOMPARE(startsOfBundles(), start);
        }
        const sim::Value none = sim::Value::integer(-1), two = sim::Value::integer(2);
        QVERIFY(bus->terminal.writesOf(key) == (std::vector<sim::Value>{none, two, none, two}));
    }

private:
    int handlerStarts(const char* handler) const
    {
        return bus->log.count(QtDebugMsg, QString(handler) + ": Start of function. nrec=1");
    }

    BusFixture* bus = nullptr;
    QStringList filters;
};

QTEST_MAIN(SubscriptionsTest)
#include "subscriptions_test.moc"
