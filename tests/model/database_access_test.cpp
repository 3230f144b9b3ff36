// The model's reads and writes against the real server, the wait for a bus that isn't there, and the switch
// of the terminal's status reports.
#include "busif/busfixture.h"
#include "support/deaths.h"

#include <thread>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// Deaths of a bus that never connects: about eleven seconds each.
void readIntWithoutBus()
{
    model().setThreadIdCBus(QThread::currentThreadId());
    model().getCBusValueInt("cfg.language");
}
void readStringWithoutBus()
{
    model().setThreadIdCBus(QThread::currentThreadId());
    model().getCBusValueStr("cfg.language");
}
void writeIntWithoutBus()
{
    model().setCBusValue("cfg.language", 1);
}
void writeStringWithoutBus()
{
    model().setCBusValue("ram.usim.pin", QString("1234"));
}

const DeathCase CASES[] = {{"readIntWithoutBus", readIntWithoutBus},
                           {"readStringWithoutBus", readStringWithoutBus},
                           {"writeIntWithoutBus", writeIntWithoutBus},
                           {"writeStringWithoutBus", writeStringWithoutBus}};

const char SUBSCRIBE[] = "ram.status.psumcu.events.subscribe.";

// What switching on writes, in order.
const QList<QPair<QString, int>> SUBSCRIPTIONS = {
    {SUBSCRIBE + QString("external_supply.lumenpanel"), 1},
    {SUBSCRIBE + QString("battery_presence.lumenpanel"), 1},
    {SUBSCRIBE + QString("charging_status.lumenpanel"), 1},
    {SUBSCRIBE + QString("threshold.temperature.lumenpanel"), 1},
    {SUBSCRIBE + QString("threshold.average_time.lumenpanel"), 1},
    {SUBSCRIBE + QString("threshold.remaining_capacity.lumenpanel"), 500},
    {SUBSCRIBE + QString("battery_alarm.lumenpanel"), 1},
    {"ram.status.battery.update_now", 1},
    {"ram.status.signal_strength.update_now", 1},
    {"ram.status.signal_strength.update_interval", 1000},
};

} // namespace

class DatabaseAccessTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    // --- Reads ---------------------------------------------------------------------------------------------

    void readsAnInt()
    {
        bus->terminal.set("cfg.language", 5);
        QCOMPARE(model().getCBusValueInt("cfg.language"), 5);
    }

    // "getCBusValueInt of a key that does not exist returns -1 and logs the name "VX_CONFIG_NO_RECORD"; the
    // process goes on."
    void missingIntIsMinusOneAndLogged()
    {
        QCOMPARE(model().getCBusValueInt("cfg.nothing"), -1);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::getCBusValueInt(): ERROR!!! Returned VX_CONFIG_NO_RECORD "
                                "when trying to read cfg.nothing"),
                 1);
    }

    void intOfAnotherTypeIsMinusOneAndLogged()
    {
        bus->terminal.set("cfg.language", std::string("five"));
        QCOMPARE(model().getCBusValueInt("cfg.language"), -1);
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::getCBusValueInt(): ERROR!!! Returned "
                                            "VX_CONFIG_WRONG_TYPE when trying to read cfg.language"),
                 1);
    }

    void everyCodeHasItsName_data()
    {
        QTest::addColumn<int>("code");
        const char* const names[] = {"VX_CONFIG_ERR",
                                     "VX_CONFIG_DB_ERR",
                                     "VX_CONFIG_DB_FULL",
                                     "VX_CONFIG_READONLY",
                                     "VX_CONFIG_NO_RECORD",
                                     "VX_CONFIG_WRONG_TYPE",
                                     "VX_CONFIG_BUFFER_TOO_SMALL",
                                     "VX_CONFIG_VERIFY_FAIL",
                                     ""};
        for (int i = 0; i < 9; ++i)
            QTest::newRow(names[i]) << -1 - i;
    }
    void everyCodeHasItsName()
    {
        QFETCH(int, code);
        // The server answers with this status and an int, as it does with a value.
        bus->terminal.answerWith(
            [code](const sim::Message& request) -> std::optional<sim::Terminal::RawAnswer> {
                const int32_t words[] = {code, VX_CONFIG_TYPE_INT, 4, 77};
                const std::string data(reinterpret_cast<const char*>(words), sizeof(words));
                return sim::Terminal::RawAnswer{
                    sim::Terminal::frame(3, request.src, request.seqn, request.name, data), false};
            });
        const int value = model().getCBusValueInt("cfg.language");
        bus->terminal.answerWith(nullptr);
        QCOMPARE(value, -1);
        QCOMPARE(
            bus->log.count(QtDebugMsg, QString("StatusUpdater::getCBusValueInt(): ERROR!!! Returned %1 when "
                                               "trying to read cfg.language")
                                           .arg(QTest::currentDataTag())),
            1);
    }

    void readsATextInUtf8()
    {
        bus->terminal.set("cfg.admin.help_desk", std::string("Gr\303\274\303\237e 100%s"));
        QCOMPARE(model().getCBusValueStr("cfg.admin.help_desk"),
                 QString::fromUtf8("Gr\303\274\303\237e 100%s"));
    }

    void missingTextIsEmptyAndLogged()
    {
        QCOMPARE(model().getCBusValueStr("cfg.nothing"), QString());
        QCOMPARE(bus->log.count(QtDebugMsg, "getCBusValueStr(): cfg.nothing not in database!!!"), 1);
    }

    void textOfAnotherTypeIsEmptyAndLogged()
    {
        bus->terminal.set("cfg.language", 5);
        QCOMPARE(model().getCBusValueStr("cfg.language"), QString());
        QCOMPARE(bus->log.count(QtDebugMsg, "getCBusValueStr(): cfg.language not in database!!!"), 1);
    }

    void longTextIsCutAt299Bytes()
    {
        bus->terminal.set("cfg.long", std::string(1000, 'x'));
        QCOMPARE(model().getCBusValueStr("cfg.long"), QString(299, 'x'));
        bus->terminal.set("cfg.long", std::string(299, 'y'));
        QCOMPARE(model().getCBusValueStr("cfg.long"), QString(299, 'y'));
    }

    // --- Writes --------------------------------------------------------------------------------------------

    void writesAnInt()
    {
        model().setCBusValue("ram.usim.pin_state", -7);
        QVERIFY(bus->terminal.waitForWrite("ram.usim.pin_state", sim::Value::integer(-7)));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setCBusValue(): Start of function. About to store "
                                "ram.usim.pin_state with value=-7"),
                 1);
    }

    void writesAText()
    {
        model().setCBusValue("ram.usim.pin", QString("1234"));
        QVERIFY(bus->terminal.waitForWrite("ram.usim.pin", sim::Value::text("1234")));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setCBusValue(): Start of function. About to store "
                                "ram.usim.pin with value=1234"),
                 1);
    }

    void writesFromAnotherThread()
    {
        std::thread screen([] { model().setCBusValue("ram.usim.pin", QString("4321")); });
        screen.join();
        QVERIFY(bus->terminal.waitForWrite("ram.usim.pin", sim::Value::text("4321")));
    }

    void whatAsciiLacksIsAQuestionMark()
    {
        model().setCBusValue("ram.text", QString::fromUtf8("a\303\274\342\202\254"));
        QVERIFY(bus->terminal.waitForWrite("ram.text", sim::Value::text("a??")));
    }

    // "setCBusValue with a key that begins with "cfg" syncs "cfg" after the write; with a key that begins
    // with "ram" it does not; with a key whose first letters are the same in upper case it does not."
    void onlyStoredSettingsAreSynced_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("synced");
        QTest::newRow("cfg") << "cfg.language" << true;
        QTest::newRow("ram") << "ram.language" << false;
        QTest::newRow("CFG") << "CFG.language" << false;
        QTest::newRow("rmcfg") << "rmcfg.language" << false;
    }
    void onlyStoredSettingsAreSynced()
    {
        QFETCH(QString, key);
        QFETCH(bool, synced);
        model().setCBusValue(key, 1);
        model().setCBusValue(key, QString("text"));
        bus->terminal.settle();
        QStringList names;
        for (const sim::Message& message : bus->terminal.messages())
            names.append(QString::fromStdString(message.name));
        const QString write = "config.write." + key;
        QCOMPARE(names, synced ? QStringList({write, "config.sync.cfg", write, "config.sync.cfg"})
                               : QStringList({write, write}));
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::setCBusValue(): Sync cfg to disk done."),
                 synced ? 2 : 0);
    }

    void requestsOfInterfacesAreWritesOfTheirKeys()
    {
        const StatusUpdater& m = model();
        m.requestIsdnEnabled(1);
        m.requestLanEnabled(0);
        m.requestPhoneEnabled(1);
        m.requestUsbEnabled(0);
        m.requestWifiEnabled(1);
        bus->terminal.settle();
        QStringList writes;
        for (const sim::WriteRecord& write : bus->terminal.writes())
            writes.append(QString::fromStdString(write.key) + "=" + QString::number(write.value.toInt()));
        QCOMPARE(writes, QStringList({"cfg.interfaces.isdn.enabled=1", "cfg.interfaces.lan.enabled=0",
                                      "cfg.interfaces.phone.enabled=1", "cfg.interfaces.usb.enabled=0",
                                      "cfg.interfaces.wlan.enabled=1"}));
    }

    // --- A bus that isn't there yet ------------------------------------------------------------------------

    // "setCBusValue on a bus that never connects ends the process after 11 rounds of one second." All four
    // run at once, each in a process of its own.
    void busThatNeverConnectsEndsTheProcess()
    {
        struct Case {
            const char* name;
            const char* retry;
            const char* lastWords;
            const char* panic;
        };
        const Case cases[] = {
            {"readIntWithoutBus",
             "StatusUpdater::getCBusValueInt(): CBus not ready yet. Waiting 1 second to retry.",
             "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::getCBusValueInt(): ERROR!!! Can not read from "
             "cbus..",
             "StatusUpdater::getCBusValueInt(): ERROR!!! Can not read from cbus, as connection is not "
             "established! "
             "Exiting lumenpanel."},
            // This one bears the name of the other read; the text is kept as it is.
            {"readStringWithoutBus",
             "StatusUpdater::getCBusValueInt(): CBus not ready yet. Waiting 1 second to retry.",
             "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::getCBusValueStr(): ERROR!!! Can not read from "
             "cbus!",
             "StatusUpdater::getCBusValueStr(): ERROR!!! Can not read from cbus, as connection is not "
             "established! "
             "Exiting lumenpanel."},
            {"writeIntWithoutBus",
             "StatusUpdater::setCBusValue(): CBus not ready yet. Waiting 1 second to retry.",
             "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::setCBusValue(): ERROR!!! Can not write to cbus.",
             "StatusUpdater::setCBusValue(): ERROR!!! Can not write to cbus, as connection is not "
             "established! "
             "Exiting lumenpanel."},
            {"writeStringWithoutBus",
             "StatusUpdater::setCBusValue(): CBus not ready yet. Waiting 1 second to retry.",
             "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::setCBusValue(string): ERROR!!! Can not write to "
             "cbus.",
             "StatusUpdater::setCBusValue(string): ERROR!!! Can not write to cbus, as connection is not "
             "established! "
             "Exiting lumenpanel."},
        };
        ProcessDeath deaths[4];
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&, i] { deaths[i] = deathOfCase(cases[i].name); });
        for (std::thread& thread : threads)
            thread.join();
        for (int i = 0; i < 4; ++i) {
            const ProcessDeath& death = deaths[i];
            QVERIFY2(death.byPanic(cases[i].panic), qPrintable(death.output));
            QVERIFY2(death.milliseconds >= 11000, cases[i].name);
            QVERIFY2(death.output.count(cases[i].retry) == 11, qPrintable(death.output));
            QVERIFY2(death.output.count(cases[i].lastWords) == 1, qPrintable(death.output));
        }
        QVERIFY(deaths[0].output.contains("StatusUpdater::getCBusValueInt(): CBus not ready yet.\n"));
    }

    void readWaitsForTheBus()
    {
        bus->terminal.set("cfg.language", 3);
        model().setHasConnectedToCBus(false);
        std::thread connecting([] {
            QThread::msleep(500);
            model().setHasConnectedToCBus(true);
        });
        const int value = model().getCBusValueInt("cfg.language");
        connecting.join();
        QCOMPARE(value, 3);
        QCOMPARE(bus->log.count(QtWarningMsg, "StatusUpdater::getCBusValueInt(): CBus not ready yet."), 1);
        QVERIFY(bus->log.count(
                    QtDebugMsg,
                    "StatusUpdater::getCBusValueInt(): CBus not ready yet. Waiting 1 second to retry.") >= 1);
    }

    void writeWaitsForTheBus()
    {
        model().setHasConnectedToCBus(false);
        std::thread connecting([] {
            QThread::msleep(500);
            model().setHasConnectedToCBus(true);
        });
        model().setCBusValue("ram.usim.pin", QString("1"));
        connecting.join();
        QVERIFY(bus->terminal.waitForWrite("ram.usim.pin", sim::Value::text("1")));
    }

    // --- The status reports --------------------------------------------------------------------------------

    // "subscribeToChanges(true) right after start changes nothing, because subscribedToChanges starts as
    // true: no key is written and no signal is emitted."
    void subscribedAtStart()
    {
        QSignalSpy spy(&model(), SIGNAL(signalSubscribeToPollRmValues(bool)));
        model().subscribeToChanges(true);
        QCOMPARE(writes(), QStringList());
        QCOMPARE(spy.count(), 0);
    }

    void switchingOffClearsAllButTheUpdatesAtOnce()
    {
        QSignalSpy spy(&model(), SIGNAL(signalSubscribeToPollRmValues(bool)));
        model().subscribeToChanges(false);
        QStringList expected;
        for (const auto& row : SUBSCRIPTIONS)
            if (!row.first.endsWith("update_now"))
                expected.append(row.first + "=0");
        QCOMPARE(expected.size(), 8);
        QCOMPARE(writes(), expected);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), false);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::subscribeToChanges(): Value changed. About to emit signal "
                                "signalSubscribeToPollRmValues(false)"),
                 1);
        model().subscribeToChanges(false);
        QCOMPARE(spy.count(), 1);
    }

    void switchingOnAgainWritesAll()
    {
        model().subscribeToChanges(false);
        bus->clearLogs();
        QSignalSpy spy(&model(), SIGNAL(signalSubscribeToPollRmValues(bool)));
        model().subscribeToChanges(true);
        QStringList expected;
        for (const auto& row : SUBSCRIPTIONS)
            expected.append(row.first + "=" + QString::number(row.second));
        QCOMPARE(writes(), expected);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), true);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::subscribeToChanges(): Value changed. About to emit signal "
                                "signalSubscribeToPollRmValues(true)"),
                 1);
    }

private:
    QStringList writes()
    {
        bus->terminal.settle();
        QStringList list;
        for (const sim::WriteRecord& write : bus->terminal.writes())
            list.append(QString::fromStdString(write.key) + "=" + QString::number(write.value.toInt()));
        return list;
    }

    BusFixture* bus = nullptr;
};

DEATH_TEST_MAIN(DatabaseAccessTest, CASES)

#include "database_access_test.moc"
