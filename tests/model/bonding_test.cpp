// Bonding: the services of the network, the part that this terminal plays, and a bundle's demands.
#include "model/statusupdater.h"

#include "support/messages.h"
#include "support/modelaccess.h"
#include "support/records.h"

#include <QApplication>
#include <QtTest>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

void offer(const Records& records)
{
    model().setBondingServicesAvailable(records.count(), records.data());
}

Records service(int index, const char* name, int count)
{
    const std::string key = "ram.bonding.status.service." + std::to_string(index);
    Records records;
    records.text(key, name).number(key + ".cnt", count);
    return records;
}

bundle_t bundleOf(int down, int up)
{
    bundle_t bundle;
    bundle.totalMaxBitRateDownload = down;
    bundle.totalMaxBitRateUpload = up;
    return bundle;
}

const char BOTH[] = "XBB:HDR_STREAM896K";
const char HALF[] = "XBB:HDR_STREAM896K_64K";

} // namespace

class BondingTest : public QObject {
    Q_OBJECT

private slots:
    void init() { StatusUpdater::destroyForTest(); }
    void cleanupTestCase() { StatusUpdater::destroyForTest(); }

    // --- State ---------------------------------------------------------------------------------------------

    void stateFromItsTwoFlags()
    {
        const int expected[2][2] = {{0, 1}, {0, 2}}; // [dhcp][bonding]
        for (int dhcp = 0; dhcp <= 1; ++dhcp) {
            for (int bonding = 0; bonding <= 1; ++bonding) {
                model().setDhcpClientMode(dhcp == 1);
                model().setBondingEnabled(bonding == 1);
                QCOMPARE(model().getBondingState(), expected[dhcp][bonding]);
                QCOMPARE(model().getDhcpClientMode(), dhcp == 1);
                QCOMPARE(model().getBondingEnabled(), bonding == 1);
            }
        }
    }

    void onlyAChangeOfTheStateIsToldOf()
    {
        QSignalSpy spy(&model(), SIGNAL(bondingStateChanged()));
        Messages log;
        model().setDhcpClientMode(true);
        QCOMPARE(spy.count(), 0);
        model().setBondingEnabled(true);
        model().setBondingEnabled(true);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::updateBondingState(): About to emit signal bondingStateChanged()"),
                 1);
    }

    // --- Services ------------------------------------------------------------------------------------------

    void serviceNeedsTwo()
    {
        offer(service(0, BOTH, 1));
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K));
        offer(service(0, BOTH, 2));
        QVERIFY(model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K));
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K_64K));
        offer(service(9, HALF, 2));
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K)); // replaced as a whole
        QVERIFY(model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K_64K));
    }

    // "setBondingServicesAvailable with the same services emits nothing, with different counts it emits."
    void onlyOtherServicesAreToldOf()
    {
        QSignalSpy spy(&model(), SIGNAL(bondingStateChanged()));
        offer(service(0, BOTH, 2));
        QCOMPARE(spy.count(), 1);
        offer(service(0, BOTH, 2));
        QCOMPARE(spy.count(), 1);
        offer(service(5, BOTH, 2)); // another index is no difference
        QCOMPARE(spy.count(), 1);
        offer(service(0, BOTH, 3));
        QCOMPARE(spy.count(), 2);
        offer(Records());
        QCOMPARE(spy.count(), 3);
    }

    void laterIndexOverwrites()
    {
        Records records;
        records.text("ram.bonding.status.service.0", BOTH)
            .number("ram.bonding.status.service.0.cnt", 2)
            .text("ram.bonding.status.service.1", BOTH)
            .number("ram.bonding.status.service.1.cnt", 1);
        offer(records);
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K));
    }

    void badRecordsAreSkipped_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("log");
        const QString error = "setBondingServicesAvailable: ERROR!!! ";
        QTest::newRow("other prefix") << "ram.bonding.status.other.0.cnt"
                                      << error + "name does not start with ram.bonding.status.service!!!";
        QTest::newRow("too short") << "ram.bonding.status.service"
                                   << error + "list.size()=4, expected 5 or 6";
        QTest::newRow("count of services") << "ram.bonding.status.service.cnt"
                                           << "";
        QTest::newRow("no index") << "ram.bonding.status.service.x.cnt"
                                  << error + "could not convert element 5 to integer. ";
        QTest::newRow("above 9") << "ram.bonding.status.service.10.cnt" << error + "serviceIndex=10";
        QTest::newRow("negative") << "ram.bonding.status.service.-1.cnt" << error + "serviceIndex=-1";
        QTest::newRow("too long") << "ram.bonding.status.service.0.cnt.x"
                                  << error + "list.size()=7, expected max 6";
    }
    void badRecordsAreSkipped()
    {
        QFETCH(QString, name);
        QFETCH(QString, log);
        QSignalSpy spy(&model(), SIGNAL(bondingStateChanged()));
        Messages messages;
        offer(Records().number(name.toStdString(), 2));
        QCOMPARE(spy.count(), 0);
        int warnings = 0;
        for (const auto& message : messages.all())
            warnings += message.first == QtWarningMsg && message.second.startsWith(log) ? 1 : 0;
        QCOMPARE(warnings, log.isEmpty() ? 0 : 1);
    }

    void nameOfAnotherTypeOrNotKnown()
    {
        Messages messages;
        offer(Records()
                  .number("ram.bonding.status.service.0", 2)
                  .number("ram.bonding.status.service.0.cnt", 2));
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K));
        offer(service(0, "XBB:OTHER", 2));
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K));
        QCOMPARE(messages.count("setBondingServicesAvailable: ERROR!!! nameStr=XBB:OTHER not supported!!!"),
                 1);
        offer(Records()
                  .text("ram.bonding.status.service.0", BOTH)
                  .text("ram.bonding.status.service.0.cnt", "2")); // a count of another type is no count
        QVERIFY(!model().getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K));
    }

    // --- Demands -------------------------------------------------------------------------------------------

    // "bondingDemandsReached with d 896 and u 2000 is true without any look at the services."
    void demandsOfABundle_data()
    {
        QTest::addColumn<int>("down");
        QTest::addColumn<int>("up");
        QTest::addColumn<bool>("alone"); // without any service
        QTest::addColumn<bool>("half");  // as master, with the service of 64 down
        QTest::addColumn<bool>("both");  // as master, with the service of 896 down
        QTest::newRow("896/2000") << 896 << 2000 << true << true << true;
        QTest::newRow("64/896") << 64 << 896 << true << true << true;
        QTest::newRow("895/897") << 895 << 897 << false << true << false;
        QTest::newRow("64/1792") << 64 << 1792 << false << true << false;
        QTest::newRow("897/896") << 897 << 896 << true << true << true;
        QTest::newRow("897/897") << 897 << 897 << false << false << true;
        QTest::newRow("1792/1792") << 1792 << 1792 << false << false << true;
        QTest::newRow("0/0") << 0 << 0 << true << true << true;
    }
    void demandsOfABundle()
    {
        QFETCH(int, down);
        QFETCH(int, up);
        QFETCH(bool, alone);
        QFETCH(bool, half);
        QFETCH(bool, both);
        const bundle_t bundle = bundleOf(down, up);
        model().setBondingEnabled(true);
        QCOMPARE(model().bondingDemandsReached(bundle), alone);
        offer(service(0, HALF, 2));
        QCOMPARE(model().bondingDemandsReached(bundle), half);
        offer(service(0, BOTH, 2));
        QCOMPARE(model().bondingDemandsReached(bundle), both);
        model().setDhcpClientMode(true); // a slave has nothing to say
        QCOMPARE(model().bondingDemandsReached(bundle), alone);
        model().setBondingEnabled(false);
        QCOMPARE(model().bondingDemandsReached(bundle), alone);
    }
};

QTEST_MAIN(BondingTest)

#include "bonding_test.moc"
