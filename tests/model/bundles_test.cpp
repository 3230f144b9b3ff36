// The bundles of the configuration: how the list is put together, sorted and completed; the classes of
// connections; the texts of time and amount; start and stop.
#include "busif/busfixture.h"
#include "support/records.h"

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

void define(const Records& records)
{
    model().setDefinedBundlesCfg(records.count(), records.data());
}

QStringList names()
{
    QStringList list;
    for (const bundle_t& bundle : model().getDefinedBundles())
        list.append(bundle.name);
    return list;
}

bundle_t bundleOf(int number)
{
    bundle_t bundle;
    if (!model().getBundleByBundleNumber(number, &bundle))
        qFatal("no bundle %d", number);
    return bundle;
}

connection_t rates(int download, int upload, int trafficClass = 1)
{
    connection_t connection;
    connection.max_bit_rate_download = download;
    connection.max_bit_rate_upload = upload;
    connection.traffic_class = trafficClass;
    return connection;
}

const char CURRENT[] = "ram.net.user_groups.0.current_bundle";
const char SESSION_STATUS[] = "ram.status.ongoing_data_sessions.0.status";

} // namespace

class BundlesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    // --- The list ------------------------------------------------------------------------------------------

    void bundleOfAName()
    {
        QSignalSpy spy(&model(), SIGNAL(definedBundlesCfgChanged()));
        define(Records().text("cfg.admin.bundle.4.name", "Gr\303\274n"));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(model().getNumberOfDefinedBundles(), 1);
        const bundle_t bundle = bundleOf(4);
        QCOMPARE(bundle.name, QString::fromUtf8("Gr\303\274n"));
        QCOMPARE(bundle.wanUserGroup, 0);
        QCOMPARE(int(bundle.status), int(BUNDLE_STATUS_IDLE));
        QCOMPARE(bundle.bondingRequired, false);
        QCOMPARE(bundle.backgroundTotal, 0);
        QVERIFY(bundle.startTime.secsTo(QDateTime::currentDateTime()) < 60);
        QVERIFY(!bus->log.withPrefix("StatusUpdater::debugDefinedBundles(): After sort").isEmpty());
    }

    // The popup that tells of a start lays the name out whole, on the thread of the screens.
    void longNameIsCut()
    {
        define(Records()
                   .text("cfg.admin.bundle.4.name", std::string(299, 'n'))
                   .text("cfg.admin.bundle.5.name", std::string(200000, 'n')));
        QCOMPARE(bundleOf(4).name, QString(299, QChar('n')));
        QCOMPARE(bundleOf(5).name, QString(299, QChar('n')));
        QCOMPARE(bus->log.count("setDefinedBundlesCfg: Error: name=cfg.admin.bundle.5.name has 200000 "
                                "characters, cut to 299"),
                 1);
    }

    void connectionsComeByTheirIndex()
    {
        setConnection(7, "Seven", 11, 22);
        setConnection(8, "Eight", 100, 200);
        define(Records()
                   .number("cfg.admin.bundle.4.connection.0.connection_index", 7)
                   .text("cfg.admin.bundle.4.name", "Four")
                   .number("cfg.admin.bundle.4.connection.1.connection_index", 8));
        const bundle_t bundle = bundleOf(4);
        QCOMPARE(bundle.name, QString("Four"));
        QCOMPARE(bundle.connections.size(), 2);
        QCOMPARE(bundle.connections.at(1).name, QString("Eight"));
        QCOMPARE(bundle.totalMaxBitRateUpload, 111);
        QCOMPARE(bundle.totalMaxBitRateDownload, 222);
    }

    void connectionReadsItsKeysInOrder()
    {
        int value = 100;
        const QStringList suffixes = {"max_bit_rate_upload",
                                      "max_bit_rate_download",
                                      "guaranteed_bit_rate_upload",
                                      "guaranteed_bit_rate_download",
                                      "delivery_order",
                                      "max_sdu_size",
                                      "sdu_error_rate",
                                      "delivery_of_erroneous_sdus",
                                      "transfer_delay",
                                      "traffic_handling_priority",
                                      "traffic_class"};
        QStringList expected = {"cfg.admin.connection.3.name"};
        for (const QString& suffix : suffixes) {
            expected.append("cfg.admin.connection.3." + suffix);
            bus->terminal.set(expected.last().toStdString(), value++);
        }
        bus->clearLogs();
        define(Records().number("cfg.admin.bundle.1.connection.0.connection_index", 3));
        QCOMPARE(QStringList(bus->reads().filter("cfg.admin.connection")), expected);
        const connection_t c = bundleOf(1).connections.at(0);
        const QList<int> values = {c.max_bit_rate_upload,
                                   c.max_bit_rate_download,
                                   c.guaranteed_bit_rate_upload,
                                   c.guaranteed_bit_rate_download,
                                   c.delivery_order,
                                   c.max_sdu_size,
                                   c.sdu_error_rate,
                                   c.delivery_of_erroneous_sdus,
                                   c.transfer_delay,
                                   c.traffic_handling_priority,
                                   c.traffic_class};
        for (int i = 0; i < values.size(); ++i)
            QCOMPARE(values.at(i), 100 + i);
    }

    // A connection of which nothing is known stands with -1 everywhere, and has no class.
    void missingConnectionStandsWithoutAClass()
    {
        define(Records().number("cfg.admin.bundle.1.connection.0.connection_index", 3));
        const connection_t connection = bundleOf(1).connections.at(0);
        QCOMPARE(connection.name, QString());
        QCOMPARE(connection.traffic_class, -1);
        QCOMPARE(connection.max_bit_rate_download, -1);
        QCOMPARE(model().getConnClass(connection), -1);
    }

    void ratesBeyondAllReasonAddUpWithoutAWrap()
    {
        setConnection(1, "a", 2147483647, -2147483647);
        setConnection(2, "b", 2147483647, -2147483647);
        define(Records()
                   .number("cfg.admin.bundle.1.connection.0.connection_index", 1)
                   .number("cfg.admin.bundle.1.connection.1.connection_index", 2));
        QCOMPARE(bundleOf(1).totalMaxBitRateUpload, 2147483647);
        QVERIFY(bundleOf(1).totalMaxBitRateDownload < -2147483000);
    }

    void emptyConfigurationEmptiesTheList()
    {
        define(Records().text("cfg.admin.bundle.4.name", "Four"));
        QSignalSpy spy(&model(), SIGNAL(definedBundlesCfgChanged()));
        define(Records());
        QCOMPARE(model().getNumberOfDefinedBundles(), 0);
        QCOMPARE(spy.count(), 1);
    }

    void otherRecordsAndThoseWithoutAValueAreSkipped()
    {
        define(Records()
                   .text("cfg.admin.bundle.4.description", "x")
                   .deleted("cfg.admin.bundle.5.name")
                   .deleted("cfg.admin.bundle.6.connection.0.connection_index"));
        QCOMPARE(model().getNumberOfDefinedBundles(), 0);
    }

    void recordsOfTheWrongTypeAreWarnedOf()
    {
        define(Records()
                   .number("cfg.admin.bundle.4.name", 1)
                   .text("cfg.admin.bundle.5.connection.0.connection_index", "7")
                   .raw("cfg.admin.bundle.6.connection.0.connection_index", VX_CONFIG_TYPE_INT, "ab"));
        QCOMPARE(model().getNumberOfDefinedBundles(), 0);
        // The first bears an older name of the function.
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "handleConfigChangedDefinedBundlesCfg: Error: Unexpected type. Expected "
                                "VX_CONFIG_TYPE_STRING for name=cfg.admin.bundle.4.name but got 3"),
                 1);
        QCOMPARE(
            bus->log.count(QtWarningMsg,
                           "setDefinedBundlesCfg: Error: Unexpected type. Expected VX_CONFIG_TYPE_INT for "
                           "name=cfg.admin.bundle.5.connection.0.connection_index but got 2"),
            1);
    }

    // A text without its NUL ends where its record does.
    void textWithoutItsEnd()
    {
        define(Records().raw("cfg.admin.bundle.4.name", VX_CONFIG_TYPE_STRING, "Four"));
        QCOMPARE(bundleOf(4).name, QString("Four"));
    }

    // "A bundle with 896 down and 896 up has bondingRequired false; 897 in either makes it true."
    void bondingIsRequiredFrom897()
    {
        const QList<QPair<int, int>> pairs = {{896, 896}, {897, 0}, {0, 897}};
        for (const auto& pair : pairs) {
            setConnection(1, "c", pair.first, pair.second);
            define(Records().number("cfg.admin.bundle.1.connection.0.connection_index", 1));
            QCOMPARE(bundleOf(1).bondingRequired, pair.first == 897 || pair.second == 897);
        }
    }

    // --- Order ---------------------------------------------------------------------------------------------

    void fastBundlesStandFirst()
    {
        setConnection(1, "slow", 64, 2000);
        setConnection(2, "up", 128, 64);
        setConnection(3, "up and down", 128, 128);
        define(Records()
                   .text("cfg.admin.bundle.1.name", "slow")
                   .number("cfg.admin.bundle.1.connection.0.connection_index", 1)
                   .text("cfg.admin.bundle.2.name", "up")
                   .number("cfg.admin.bundle.2.connection.0.connection_index", 2)
                   .text("cfg.admin.bundle.3.name", "up and down")
                   .number("cfg.admin.bundle.3.connection.0.connection_index", 3));
        QCOMPARE(names(), QStringList({"up and down", "up", "slow"})); // upload first, then download
    }

    // "Two bundles with equal totals sort by name without regard to case; bundle 0 stands first whatever its
    // totals."
    void equalBundlesSortByNameAndBundle0IsFirst()
    {
        setConnection(9, "fast", 1000, 1000);
        define(Records()
                   .text("cfg.admin.bundle.1.name", "beta")
                   .text("cfg.admin.bundle.2.name", "Alpha")
                   .text("cfg.admin.bundle.3.name", "GAMMA")
                   .text("cfg.admin.bundle.0.name", "zero")
                   .text("cfg.admin.bundle.5.name", "fast")
                   .number("cfg.admin.bundle.5.connection.0.connection_index", 9));
        QCOMPARE(names(), QStringList({"zero", "fast", "Alpha", "beta", "GAMMA"}));
    }

    void equalBundlesKeepTheirOrder()
    {
        define(Records().text("cfg.admin.bundle.1.name", "same").text("cfg.admin.bundle.2.name", "SAME"));
        QCOMPARE(names(), QStringList({"SAME", "same"})); // each new one goes to the front before the sort
    }

    // --- Status of a defined bundle ------------------------------------------------------------------------

    void onlyTheCurrentBundleIsOtherThanIdle()
    {
        bus->terminal.set(CURRENT, 2);
        bus->terminal.set(SESSION_STATUS, 2);
        define(Records().text("cfg.admin.bundle.1.name", "One").text("cfg.admin.bundle.2.name", "Two"));
        QCOMPARE(int(bundleOf(1).status), int(BUNDLE_STATUS_IDLE));
        QCOMPARE(int(bundleOf(2).status), int(BUNDLE_STATUS_RUNNING));
    }

    void missingKeysMeanIdleAndAreLogged()
    {
        define(Records().text("cfg.admin.bundle.1.name", "One"));
        QCOMPARE(int(bundleOf(1).status), int(BUNDLE_STATUS_IDLE));
        bus->terminal.set(CURRENT, 1);
        define(Records().text("cfg.admin.bundle.1.name", "One"));
        QCOMPARE(int(bundleOf(1).status), int(BUNDLE_STATUS_IDLE));
        QVERIFY(!bus->log.withPrefix(QString("readBundlesStatus(): ERROR !!! ") + SESSION_STATUS).isEmpty());
    }

    void statusOutOfRangeIsIdleAndWarnedOf()
    {
        bus->terminal.set(CURRENT, 1);
        for (int status : {3, -1}) {
            bus->terminal.set(SESSION_STATUS, status);
            bus->log.clear();
            define(Records().text("cfg.admin.bundle.1.name", "One"));
            QCOMPARE(int(bundleOf(1).status), int(BUNDLE_STATUS_IDLE));
            QCOMPARE(bus->log.count(QtWarningMsg,
                                    QString("StatusUpdater::readBundlesStatus(): ERROR!!! bundleNumber=1 has "
                                            "statusValue=%1")
                                        .arg(status)),
                     1);
        }
    }

    void unknownNumberHasNoBundle()
    {
        bundle_t bundle;
        bundle.name = "untouched";
        QVERIFY(!model().getBundleByBundleNumber(3, &bundle));
        QCOMPARE(bundle.name, QString("untouched"));
    }

    // --- The current bundle --------------------------------------------------------------------------------

    void currentBundleIsKept()
    {
        QSignalSpy state(&model(), SIGNAL(bundleStateChanged(int, BUNDLE_STATUS)));
        setCurrent(Records().number(CURRENT, 3));
        QCOMPARE(Access::currentBundleNumber(), 3);
        QCOMPARE(state.count(), 0); // the start is told of by the session's status
    }

    void endOfTheCurrentBundleIsToldOf_data()
    {
        QTest::addColumn<bool>("deleted");
        QTest::newRow("-1") << false;
        QTest::newRow("deleted") << true;
    }
    void endOfTheCurrentBundleIsToldOf()
    {
        QFETCH(bool, deleted);
        bus->terminal.set(CURRENT, 3);
        bus->terminal.set(SESSION_STATUS, 2);
        define(Records().text("cfg.admin.bundle.3.name", "Three"));
        setCurrent(Records().number(CURRENT, 3));
        QSignalSpy state(&model(), SIGNAL(bundleStateChanged(int, BUNDLE_STATUS)));
        QSignalSpy stop(&model(), SIGNAL(stopUpdateConnectionTimerSignal()));
        setCurrent(deleted ? Records().deleted(CURRENT) : Records().number(CURRENT, -1));
        QCOMPARE(Access::currentBundleNumber(), -1);
        QCOMPARE(int(bundleOf(3).status), int(BUNDLE_STATUS_IDLE));
        QCOMPARE(stop.count(), 1);
        QCOMPARE(state.count(), 1);
        QCOMPARE(state.at(0).at(0).toInt(), 3); // the old number
        QCOMPARE(int(state.at(0).at(1).value<BUNDLE_STATUS>()), int(BUNDLE_STATUS_IDLE));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setCurrentBundleNumber(): About to set "
                                "m_currentBundleNumberForUserGroup0 to -1, as prec[i].data == NULL"),
                 deleted ? 1 : 0);
        setCurrent(Records().deleted(CURRENT)); // no change any more
        QCOMPARE(state.count(), 1);
    }

    void badRecordsOfTheCurrentBundleChangeNothing()
    {
        setCurrent(Records().number(CURRENT, 3));
        setCurrent(Records().number("ram.net.user_groups.1.current_bundle", 5).text(CURRENT, "5"));
        QCOMPARE(Access::currentBundleNumber(), 3);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setCurrentBundleNumber(): ERROR. "
                                "prec[i].name=ram.net.user_groups.1.current_bundle does not start with "
                                "ram.net.user_groups.0.current_bundle"),
                 1);
        QCOMPARE(
            bus->log.count(QtWarningMsg,
                           "StatusUpdater::setCurrentBundleNumber(): Error: Expected VX_CONFIG_TYPE_INT for "
                           "name=ram.net.user_groups.0.current_bundle but got 2"),
            1);
    }

    void nameOfTheCurrentBundle()
    {
        QCOMPARE(model().getPredefinedBundleName(), QString("Default"));
        define(Records().text("cfg.admin.bundle.3.name", "Three"));
        QCOMPARE(model().getPredefinedBundleName(), QString("Default"));
        setCurrent(Records().number(CURRENT, 3));
        QCOMPARE(model().getPredefinedBundleName(), QString("Three"));
    }

    // --- Classes -------------------------------------------------------------------------------------------

    void classOfAConnection_data()
    {
        QTest::addColumn<int>("download");
        QTest::addColumn<int>("upload");
        QTest::addColumn<int>("trafficClass");
        QTest::addColumn<int>("connClass");
        QTest::newRow("traffic class 3 wins over rates of 896") << 896 << 896 << 3 << 0;
        QTest::newRow("256/256") << 256 << 256 << 1 << 1;
        QTest::newRow("257/256") << 257 << 256 << 1 << -1;
        QTest::newRow("256/257") << 256 << 257 << 1 << -1;
        QTest::newRow("0/0") << 0 << 0 << -1 << 1;
        QTest::newRow("64/416") << 64 << 416 << 2 << 2;
        QTest::newRow("416/64 is none") << 416 << 64 << 2 << -1;
        QTest::newRow("65/416 is none") << 65 << 416 << 2 << -1;
        QTest::newRow("416/416") << 416 << 416 << 2 << 3;
        QTest::newRow("512/512") << 512 << 512 << 2 << 4;
        QTest::newRow("64/896") << 64 << 896 << 2 << 5;
        QTest::newRow("896/896") << 896 << 896 << 2 << 6;
        QTest::newRow("128/1792") << 128 << 1792 << 2 << 7;
        QTest::newRow("1792/1792") << 1792 << 1792 << 2 << 8;
        QTest::newRow("nothing known") << -1 << -1 << -1 << -1;
        QTest::newRow("nothing known of standard data") << -1 << -1 << 3 << 0;
    }
    void classOfAConnection()
    {
        QFETCH(int, download);
        QFETCH(int, upload);
        QFETCH(int, trafficClass);
        QFETCH(int, connClass);
        QCOMPARE(model().getConnClass(rates(download, upload, trafficClass)), connClass);
    }

    // --- Time and amount -----------------------------------------------------------------------------------

    void elapsedTimeOnlyWhileItRuns()
    {
        bundle_t bundle;
        bundle.startTime = QDateTime::currentDateTime().addSecs(-3723);
        for (BUNDLE_STATUS status :
             {BUNDLE_STATUS_DELETED, BUNDLE_STATUS_UNKNOWN, BUNDLE_STATUS_IDLE, BUNDLE_STATUS_INITIALIZING}) {
            bundle.status = status;
            QCOMPARE(model().getElapsedTimeStr(bundle), QString());
        }
        bundle.status = BUNDLE_STATUS_RUNNING;
        QVERIFY(model().getElapsedTimeStr(bundle).startsWith("01:02:0"));
        bundle.startTime = QDateTime::currentDateTime().addSecs(-123 * 3600);
        QVERIFY(model().getElapsedTimeStr(bundle).startsWith("123:00:0"));
    }

    // "getBackgroundTotalStr of 999 is 999 kB; of 1000 it is 1.00 MB; of -1 it is 0 kB."
    void amountOfData_data()
    {
        QTest::addColumn<int>("total");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << "0 kB";
        QTest::newRow("999") << 999 << "999 kB";
        QTest::newRow("1000") << 1000 << "1.00 MB";
        QTest::newRow("1234") << 1234 << "1.23 MB";
        QTest::newRow("9994") << 9994 << "9.99 MB";
        QTest::newRow("9999") << 9999 << "10.0 MB";
        QTest::newRow("12340") << 12340 << "12.3 MB";
        QTest::newRow("99990") << 99990 << "100 MB";
        QTest::newRow("123400") << 123400 << "123 MB";
        QTest::newRow("12345678") << 12345678 << "12346 MB";
        QTest::newRow("-1") << -1 << "0 kB";
    }
    void amountOfData()
    {
        QFETCH(int, total);
        QFETCH(QString, text);
        bundle_t bundle;
        bundle.backgroundTotal = total;
        QCOMPARE(model().getBackgroundTotalStr(bundle), text);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::getBackgroundTotalStr(): No valid value available for "
                                "backgroundTotal (value=-1). Using value=0"),
                 total < 0 ? 1 : 0);
    }

    void statusNames()
    {
        QCOMPARE(debugBundleStatusStr(-2), QString("BUNDLE_STATUS_DELETED"));
        QCOMPARE(debugBundleStatusStr(-1), QString("BUNDLE_STATUS_UNKNOWN"));
        QCOMPARE(debugBundleStatusStr(0), QString("BUNDLE_STATUS_IDLE"));
        QCOMPARE(debugBundleStatusStr(1), QString("BUNDLE_STATUS_INITIALIZING"));
        QCOMPARE(debugBundleStatusStr(2), QString("BUNDLE_STATUS_RUNNING"));
        QCOMPARE(debugBundleStatusStr(3), QString("Unhandled bundleStatus=3"));
    }

    // --- Start and stop ------------------------------------------------------------------------------------

    void startWritesMinusOneAhead()
    {
        define(Records().text("cfg.admin.bundle.3.name", "Three"));
        bus->clearLogs();
        QElapsedTimer clock;
        clock.start();
        model().startBundle(3);
        QVERIFY(clock.elapsed() >= 200);
        QCOMPARE(writes(), QStringList({"ram.local_gui_display.start_bundle_number=-1",
                                        "ram.local_gui_display.start_bundle_number=3"}));
    }

    void startOfAnUnknownBundleIsRefused()
    {
        model().startBundle(3);
        QCOMPARE(writes(), QStringList());
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "StatusUpdater::startBundle(): ERROR!!! bundleNumber=3 does not exist in "
                                "the list of known bundles !!!"),
                 1);
    }

    void stopWritesTwoKeys()
    {
        model().stopBundle(3);
        QCOMPARE(writes(), QStringList({"ram.net.user_groups.0.activated=0",
                                        "ram.net.user_groups.0.current_bundle=-1"}));
    }

private:
    void setConnection(int index, const char* name, int upload, int download)
    {
        const std::string prefix = "cfg.admin.connection." + std::to_string(index);
        bus->terminal.set(prefix + ".name", std::string(name));
        bus->terminal.set(prefix + ".max_bit_rate_upload", upload);
        bus->terminal.set(prefix + ".max_bit_rate_download", download);
    }
    static void setCurrent(const Records& records)
    {
        model().setCurrentBundleNumber(records.count(), records.data());
    }
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

QTEST_MAIN(BundlesTest)

#include "bundles_test.moc"
