// The running sessions: from the records of the database to the list, and what is told of each change.
#include "model/statusupdater.h"

#include "support/deaths.h"
#include "support/messages.h"
#include "support/modelaccess.h"
#include "support/records.h"

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

std::string key(int group, const char* field)
{
    return "ram.status.ongoing_data_sessions." + std::to_string(group) + "." + field;
}

std::string contextKey(int group, int context, const char* field)
{
    return "ram.status.ongoing_data_sessions." + std::to_string(group) + ".context." +
           std::to_string(context) + "." + field;
}

void update(const Records& records)
{
    model().setActiveConnectionsAndBundles(records.count(), records.data());
}

const QList<bundle_t>& sessions()
{
    return Access::activeConnectionsAndBundles();
}

void define(int number, const char* name)
{
    bundle_t bundle;
    bundle.bundleNumber = number;
    bundle.name = name;
    bundle.status = BUNDLE_STATUS_IDLE;
    Access::definedBundles().append(bundle);
}

void setCurrent(int number)
{
    Records records;
    records.number("ram.net.user_groups.0.current_bundle", number);
    model().setCurrentBundleNumber(records.count(), records.data());
}

void statusOfAnotherType()
{
    update(Records().text(key(1, "status"), "2"));
}
void rateOfAnotherType()
{
    update(Records().text(contextKey(1, 1, "bw_up"), "2"));
}

const DeathCase CASES[] = {{"statusOfAnotherType", statusOfAnotherType},
                           {"rateOfAnotherType", rateOfAnotherType}};

// Counts of the four signals that a status may bring.
struct Told {
    QSignalSpy status{&model(), SIGNAL(statusChanged())};
    QSignalSpy bundle{&model(), SIGNAL(bundleStateChanged(int, BUNDLE_STATUS))};
    QSignalSpy number{&model(), SIGNAL(numberOfConnectionsChanged())};
    QSignalSpy start{&model(), SIGNAL(startUpdateConnectionTimerSignal())};
    QSignalSpy stop{&model(), SIGNAL(stopUpdateConnectionTimerSignal())};

    QString counts() const
    {
        return QString("status %1, bundle %2, number %3, start %4, stop %5")
            .arg(status.count())
            .arg(bundle.count())
            .arg(number.count())
            .arg(start.count())
            .arg(stop.count());
    }
};

} // namespace

class SessionsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { StatusUpdater::destroyForTest(); }
    void cleanupTestCase() { StatusUpdater::destroyForTest(); }

    // --- Status --------------------------------------------------------------------------------------------

    void sessionOfAnotherUserGroup()
    {
        Told told;
        update(Records().number(key(1, "status"), 1));
        QCOMPARE(told.counts(), QString("status 1, bundle 0, number 1, start 1, stop 0"));
        QCOMPARE(sessions().size(), 1);
        QCOMPARE(sessions().at(0).wanUserGroup, 1);
        QCOMPARE(sessions().at(0).bundleNumber, -1);
        QCOMPARE(int(sessions().at(0).status), 1);
        QCOMPARE(model().getNumberOfActiveConnectionsAndBundles(), 1);
        update(Records().number(key(1, "status"), 2)); // runs now; the number is the same
        QCOMPARE(told.counts(), QString("status 2, bundle 0, number 1, start 1, stop 0"));
        update(Records().number(key(1, "status"), 0));
        QCOMPARE(told.counts(), QString("status 3, bundle 0, number 2, start 1, stop 1"));
        QCOMPARE(sessions().size(), 1); // the entry stays until its key is deleted
    }

    void sessionOfThePredefinedBundle()
    {
        define(3, "Three");
        define(4, "Four");
        Access::definedBundles()[1].status = BUNDLE_STATUS_RUNNING; // will be put right
        setCurrent(3);
        Told told;
        update(Records().number(key(0, "status"), 2));
        QCOMPARE(told.counts(), QString("status 1, bundle 1, number 1, start 1, stop 0"));
        QCOMPARE(told.bundle.at(0).at(0).toInt(), 3);
        QCOMPARE(int(told.bundle.at(0).at(1).value<BUNDLE_STATUS>()), 2);
        QCOMPARE(sessions().at(0).bundleNumber, 3);
        QCOMPARE(sessions().at(0).name, QString("Three"));
        QCOMPARE(int(Access::definedBundles().at(0).status), 2);
        QCOMPARE(int(Access::definedBundles().at(1).status), 0);
    }

    void predefinedBundleGetsItsNameOnlyWhenItRuns()
    {
        define(3, "Three");
        setCurrent(3);
        update(Records().number(key(0, "status"), 1));
        QCOMPARE(sessions().at(0).name, QString());
        QCOMPARE(int(Access::definedBundles().at(0).status), 1);
    }

    void sessionOfGroup0WithoutACurrentBundle()
    {
        Messages log;
        Told told;
        update(Records().number(key(0, "status"), 2));
        QCOMPARE(
            log.count(QtDebugMsg, "Active connection in wanUserGroup 0 seems not to be a predefined bundle."),
            1);
        QCOMPARE(told.bundle.at(0).at(0).toInt(), -1);
        QCOMPARE(sessions().at(0).name, QString("Default"));
    }

    // "A .status record of 3 logs and stores nothing; a record of -1 does as well."
    void statusOutOfRangeStoresNothing()
    {
        for (int status : {3, -1}) {
            Messages log;
            Told told;
            update(Records().number(key(1, "status"), status));
            QVERIFY(sessions().isEmpty());
            QCOMPARE(told.counts(), QString("status 0, bundle 0, number 0, start 0, stop 0"));
            QCOMPARE(
                log.count(
                    QtWarningMsg,
                    QString("StatusUpdater::setActiveConnectionsAndBundles(): ERROR!!!! bundleStatusInt=%1")
                        .arg(status)),
                1);
        }
    }

    // "A deleted .status key for a group without an entry changes nothing and creates nothing."
    void deletedStatusOfAnUnknownGroup()
    {
        Messages log;
        Told told;
        update(Records().deleted(key(1, "status")));
        QVERIFY(sessions().isEmpty());
        QCOMPARE(told.counts(), QString("status 0, bundle 0, number 0, start 0, stop 0"));
        QCOMPARE(log.count(QtWarningMsg,
                           "StatusUpdater::deleteActiveConnectionsAndBundles(): Could not delete for "
                           "wanUserGroup=1"),
                 1);
    }

    // "A deleted .status key for a running session gives one emission of numberOfConnectionsChanged,
    // stopUpdateConnectionTimerSignal when it was the last, and the entry is gone after the update."
    void deletedStatusOfARunningSession()
    {
        update(Records().number(key(1, "status"), 2).number(key(2, "status"), 2));
        {
            Told told;
            update(Records().deleted(key(1, "status")));
            QCOMPARE(told.counts(), QString("status 1, bundle 0, number 1, start 1, stop 0"));
            QCOMPARE(sessions().size(), 1);
            QCOMPARE(sessions().at(0).wanUserGroup, 2);
        }
        Told told;
        update(Records().deleted(key(2, "status")));
        QCOMPARE(told.counts(), QString("status 1, bundle 0, number 1, start 0, stop 1"));
        QVERIFY(sessions().isEmpty());
    }

    // "setCurrentBundleNumber to -1 while user group 1 runs still stops pUpdateConnectionTimer."
    void endOfThePredefinedBundleStopsTheTimerForAll()
    {
        setCurrent(3);
        update(Records().number(key(0, "status"), 2).number(key(1, "status"), 2));
        QVERIFY(Access::updateConnectionTimer().isActive());
        setCurrent(-1);
        QVERIFY(!Access::updateConnectionTimer().isActive());
        QCOMPARE(model().getNumberOfActiveConnectionsAndBundles(), 2);
    }

    // --- Time and amount -----------------------------------------------------------------------------------

    void startTimeGoesToBothLists()
    {
        define(3, "Three");
        setCurrent(3);
        update(Records().number(key(0, "time"), 1000000000));
        QCOMPARE(sessions().at(0).startTime, QDateTime::fromMSecsSinceEpoch(1000000000000LL));
        QCOMPARE(Access::definedBundles().at(0).startTime, QDateTime::fromMSecsSinceEpoch(1000000000000LL));
        QCOMPARE(int(sessions().at(0).status), -1); // nothing is known of it yet
        QCOMPARE(model().getNumberOfActiveConnectionsAndBundles(), 0);
    }

    void startTimeOfAnotherGroupDoesNot()
    {
        define(3, "Three");
        setCurrent(3);
        update(Records().number(key(1, "time"), 1000000000));
        QVERIFY(!Access::definedBundles().at(0).startTime.isValid());
    }

    void deletedTimeAndAmountMakeNoEntry()
    {
        Messages log;
        update(Records().deleted(key(1, "time")).deleted(key(1, "bytes_in_out_kb")));
        QVERIFY(sessions().isEmpty());
        for (const QString& field : {QString("Time"), QString("BackgroundTotal")}) {
            const QString function = "StatusUpdater::setActiveConnectionOrBundleField" + field + "(): ";
            QCOMPARE(log.countOfPrefix(function + "autoCreate=FALSE. Do not auto-create bundle, value to"),
                     1);
            QCOMPARE(log.countOfPrefix(function + "Do not change activeConnectionsAndBundles, as bundle was "
                                                  "not found AND"),
                     1);
        }
    }

    void timeAndAmountMakeAnEntryAndAreLogged()
    {
        Messages log;
        update(Records().number(key(1, "time"), 5).number(key(2, "bytes_in_out_kb"), 0));
        QCOMPARE(sessions().size(), 2);
        const QString function = "StatusUpdater::setActiveConnectionOrBundleField";
        QCOMPARE(log.count(QtDebugMsg, function + "Time(): autoCreate=TRUE"), 1);
        QCOMPARE(log.count(QtDebugMsg, function + "BackgroundTotal(): autoCreate=TRUE"), 1);
        QCOMPARE(log.count(QtDebugMsg, function + "Time(): activeConnectionsAndBundles[0].startTime stored "
                                                  "with value=5"),
                 1);
        QCOMPARE(log.count(QtDebugMsg,
                           function + "BackgroundTotal(): activeConnectionsAndBundles[1].backgroundTotal "
                                      "stored with value=0"),
                 1);
    }

    void deletedTimeAndAmountOfAnEntry()
    {
        update(Records().number(key(1, "status"), 2).number(key(1, "bytes_in_out_kb"), 77));
        QCOMPARE(sessions().at(0).backgroundTotal, 77);
        update(Records().deleted(key(1, "time")).deleted(key(1, "bytes_in_out_kb")));
        QCOMPARE(sessions().at(0).backgroundTotal, -1);
        QCOMPARE(sessions().at(0).startTime, QDateTime::fromMSecsSinceEpoch(0));
    }

    // --- Contexts ------------------------------------------------------------------------------------------

    // "bw_up with a value for a new group creates the bundle and the connection at once; the entry has status
    // -1 and counts as not active."
    void rateOfANewGroupMakesBundleAndConnection()
    {
        update(Records().number(contextKey(5, 2, "bw_up"), 64));
        QCOMPARE(sessions().size(), 1);
        QCOMPARE(sessions().at(0).wanUserGroup, 5);
        QCOMPARE(int(sessions().at(0).status), -1);
        QCOMPARE(sessions().at(0).connections.size(), 1);
        QCOMPARE(sessions().at(0).connections.at(0).wanContextGroup, 2);
        QCOMPARE(sessions().at(0).bundleNumber, -1);
        QCOMPARE(sessions().at(0).backgroundTotal, -1); // not known, and shown as nothing
        QCOMPARE(model().getBackgroundTotalStr(sessions().at(0)), QString("0 kB"));
        QVERIFY(sessions().at(0).startTime.secsTo(QDateTime::currentDateTime()) < 60);
        QCOMPARE(model().getNumberOfActiveConnectionsAndBundles(), 0);
    }

    void eachFieldOfAContext()
    {
        update(Records()
                   .number(contextKey(1, 7, "bw_up"), 1)
                   .number(contextKey(1, 7, "bw_down"), 2)
                   .number(contextKey(1, 7, "max_bw_up"), 3)
                   .number(contextKey(1, 7, "max_bw_down"), 4)
                   .number(contextKey(1, 7, "traffic_class"), 3)
                   .number(contextKey(1, 8, "max_bw_up"), 5));
        QCOMPARE(sessions().size(), 1);
        QCOMPARE(sessions().at(0).connections.size(), 2);
        const connection_t connection = sessions().at(0).connections.at(0);
        QCOMPARE(connection.guaranteed_bit_rate_upload, 1);
        QCOMPARE(connection.guaranteed_bit_rate_download, 2);
        QCOMPARE(connection.max_bit_rate_upload, 3);
        QCOMPARE(connection.max_bit_rate_download, 4);
        QCOMPARE(connection.traffic_class, 3);
        const connection_t other = sessions().at(0).connections.at(1);
        QCOMPARE(other.max_bit_rate_upload, 5);
        QCOMPARE(other.max_bit_rate_download, 0); // as it is before its record comes
        QCOMPARE(other.traffic_class, -1);
    }

    void storesAreLogged()
    {
        Messages log;
        update(Records().number(contextKey(1, 7, "bw_up"), 64));
        QCOMPARE(
            log.count(QtDebugMsg, "StatusUpdater::setActiveConnectionOrBundleFieldBwUp(): autoCreate=TRUE"),
            1);
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::setActiveConnectionOrBundleFieldBwUp(): "
                           "activeConnectionsAndBundles[0].connections[0].guaranteed_bit_rate_upload "
                           "stored with value=64"),
                 1);
        log.clear();
        update(Records().number(contextKey(2, 7, "bw_up"), -1)); // a rate below 0 makes no entry
        QCOMPARE(sessions().size(), 1);
        QVERIFY(log.countOfPrefix(
                    "StatusUpdater::setActiveConnectionOrBundleFieldBwUp(): autoCreate=FALSE. Do not "
                    "auto-create bundle, value to") == 1);
        QVERIFY(log.countOfPrefix("StatusUpdater::setActiveConnectionOrBundleFieldBwUp(): Do not change "
                                  "activeConnectionsAndBundles, as bundle was not found AND") == 1);
        log.clear();
        update(Records().number(contextKey(1, 8, "bw_up"), -1)); // nor does it in a session that is there
        QCOMPARE(sessions().at(0).connections.size(), 1);
        QCOMPARE(log.count(QtDebugMsg, "StatusUpdater::setActiveConnectionOrBundleFieldBwUp(): Do not change "
                                       "activeConnectionsAndBundles, as bundle was not found AND "
                                       "'guaranteed_bit_rate_upload' field was deleted from cfg database"),
                 1);
    }

    void anyDeletedFieldRemovesItsContext_data()
    {
        QTest::addColumn<QString>("field");
        for (const char* field : {"bw_up", "bw_down", "max_bw_up", "max_bw_down", "traffic_class"})
            QTest::newRow(field) << field;
    }
    void anyDeletedFieldRemovesItsContext()
    {
        QFETCH(QString, field);
        update(Records()
                   .number(contextKey(1, 7, "bw_up"), 1)
                   .number(contextKey(1, 8, "bw_up"), 2)
                   .number(contextKey(2, 7, "bw_up"), 3));
        Messages log;
        update(Records().deleted(contextKey(1, 7, qPrintable(field))));
        QCOMPARE(sessions().at(0).connections.size(), 1);
        QCOMPARE(sessions().at(0).connections.at(0).wanContextGroup, 8);
        QCOMPARE(sessions().at(1).connections.size(), 1);
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::removeActiveConnectionFromWanUserGroup(): Successfully removed "
                           "wanContextGroup=7"),
                 1);
        update(Records()
                   .deleted(contextKey(1, 7, "bw_up"))
                   .deleted(contextKey(9, 7, "bw_up"))); // nothing to remove
        QCOMPARE(sessions().size(), 2);
        QCOMPARE(sessions().at(0).connections.size(), 1);
    }

    // --- Bad records ---------------------------------------------------------------------------------------

    void recordsOfTheWrongFormAreSkipped_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("log");
        const QString check = "StatusUpdater::sanityCheckSetActiveConnectionsAndBundles(): ";
        const QString set = "StatusUpdater::setActiveConnectionsAndBundles(): ";
        QTest::newRow("too short") << "ram.status.ongoing_data_sessions.1" << int(QtWarningMsg)
                                   << check + "ERROR. Too small size. strList.size()=4";
        QTest::newRow("other area") << "cfg.status.ongoing_data_sessions.1.status" << int(QtWarningMsg)
                                    << check + "ERROR: strList.at(0)=cfg";
        QTest::newRow("other branch") << "ram.net.ongoing_data_sessions.1.status" << int(QtWarningMsg)
                                      << check + "ERROR: strList.at(0)=ram";
        QTest::newRow("other leaf") << "ram.status.sessions.1.status" << int(QtWarningMsg)
                                    << check + "ERROR: strList.at(0)=ram";
        QTest::newRow("no group") << "ram.status.ongoing_data_sessions.x.status" << int(QtWarningMsg)
                                  << set + "ERROR: Could not detect user group value in field=x";
        QTest::newRow("no context") << "ram.status.ongoing_data_sessions.1.other.2.bw_up" << int(QtDebugMsg)
                                    << set + "Unsupported fields for "
                                             "line=ram.status.ongoing_data_sessions.1.other.2.bw_up";
        QTest::newRow("no context group")
            << "ram.status.ongoing_data_sessions.1.context.x.bw_up" << int(QtWarningMsg)
            << set + "ERROR: Could not detect wanContextGroup number in field=x";
        QTest::newRow("other field") << "ram.status.ongoing_data_sessions.1.apn" << -1 << "";
        QTest::newRow("six parts") << "ram.status.ongoing_data_sessions.1.context.bw_up" << -1 << "";
        QTest::newRow("other field of a context")
            << "ram.status.ongoing_data_sessions.1.context.1.apn" << -1 << "";
    }
    void recordsOfTheWrongFormAreSkipped()
    {
        QFETCH(QString, name);
        QFETCH(int, type);
        QFETCH(QString, log);
        Messages messages;
        update(Records().number(name.toStdString(), 1));
        QVERIFY(sessions().isEmpty());
        int found = 0;
        for (const auto& message : messages.all())
            found += message.first == type && message.second.startsWith(log) ? 1 : 0;
        QCOMPARE(found, log.isEmpty() ? 0 : 1);
    }

    void intFieldOfAnotherTypeEndsTheProcess()
    {
        for (const char* name : {"statusOfAnotherType", "rateOfAnotherType"}) {
            const ProcessDeath death = deathOfCase(name);
            QVERIFY2(death.crashed, qPrintable(death.output));
            QVERIFY2(QRegularExpression("<1> [^\n]*: \\*\\*\\* ASSERT in statusupdater at \\d+")
                         .match(death.output)
                         .hasMatch(),
                     qPrintable(death.output));
        }
    }

    // --- What the screens ask ------------------------------------------------------------------------------

    void predefinedBundleIsActive()
    {
        QVERIFY(!model().predefinedBundleActive());
        setCurrent(3);
        QVERIFY(!model().predefinedBundleActive());
        update(Records().number(key(1, "status"), 2));
        QVERIFY(!model().predefinedBundleActive());
        update(Records().number(key(0, "time"), 5)); // nothing is known of it but that it is there: counts
        QVERIFY(model().predefinedBundleActive());
        update(Records().number(key(0, "status"), 0));
        QVERIFY(!model().predefinedBundleActive());
        update(Records().number(key(0, "status"), 2));
        QVERIFY(model().predefinedBundleActive());
        setCurrent(-1);
        QVERIFY(!model().predefinedBundleActive());
    }

    void userGroupZeroIsActive()
    {
        QVERIFY(!model().wanUsergroupZeroActive());
        update(Records().number(key(1, "status"), 2).number(key(0, "time"), 5));
        QVERIFY(!model().wanUsergroupZeroActive());
        update(Records().number(key(0, "status"), 1));
        QVERIFY(model().wanUsergroupZeroActive());
        update(Records().number(key(0, "status"), 0));
        QVERIFY(!model().wanUsergroupZeroActive());
    }
};

DEATH_TEST_MAIN(SessionsTest, CASES)

#include "sessions_test.moc"
