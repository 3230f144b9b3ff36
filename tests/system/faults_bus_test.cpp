// The bus is cut: in each phase of the display's start, and later, on each screen. There is no way back for
// the display but its end; what is promised is that it stays alive, keeps what is stored, and that the next
// display shows everything again.
#include "system/faultcase.h"

using faultcase::FaultCase;

namespace {

const char* const SHOWN = "About to run this->show()";
const char* const POLL_WITHOUT_BUS = "getCBusValueStr(): rmcfg.sys.status.mode not in database!!!";

} // namespace

class FaultsBusTest : public QObject {
    Q_OBJECT

private slots:
    void cutInEachPhaseOfTheStart();
    void noBusAtTheStartIsAPanicUntilThereIsOne();
    void cutLater_data();
    void cutLater();
    void keysAfterTheCutWriteNothing();
    void cutWhileAsleep();
};

// In the order of the start. The window is only made visible when the system's status has been read, so a
// cut before that leaves the panel dark.
const struct {
    const char* name;
    const char* cut;
    bool dark;
} phases[] = {
    {"connected, nothing said", "after 0", true},
    {"in the midst of the subscriptions", "after 25", true},
    {"the first read", "at config\\.read\\.ram\\.status\\.battery\\.1\\.status", true},
    {"the language", "at config\\.read\\.cfg\\.language", true},
    {"a setting whose default is written back", "at config\\.read\\.cfg\\.display\\.timeout", true},
    {"a text", "at config\\.read\\.cfg\\.help_desk_number", true},
    {"the list of the bundles", "at config\\.readm\\.cfg\\.admin.*", true},
    {"in the midst of a bundle", "at config\\.read\\.cfg\\.admin\\.connection\\.1\\.name", true},
    {"the sessions", "at config\\.readm\\.ram\\.status.*ongoing_data_sessions.*", true},
    {"the system's status", "at config\\.read\\.ram\\.status\\.ext_system", true},
    {"behind the system's status", "at config\\.read\\.cfg\\.bonding\\.enabled", false},
    {"the alerts", "at config\\.readm\\.ram\\.log.*", false},
    {"the last of the initial reads", "at config\\.read\\.cfg\\.status\\.sw_update\\.error", false},
    {"the SIM card", "at config\\.read\\.rmcfg\\.platform\\.usim\\.status", false},
    {"the first poll", "at config\\.read\\.rmcfg\\.sys\\.status\\.mode", false},
};

void FaultsBusTest::cutInEachPhaseOfTheStart()
{
    FaultCase desk("cut-at-start");
    QCOMPARE(desk.start(), QString());
    const QImage whole = desk.picture("before");
    QCOMPARE(whole.size(), QSize(256, 64));
    const QStringList settings = desk.settings();
    int client = 1;
    for (const auto& phase : phases) {
        const int before = desk.mark();
        QVERIFY(desk.restartWith(QString("fault cut ") + phase.cut));
        QVERIFY(desk.waitForTold(QString("closed client %1: connections are cut").arg(++client)));
        // The bus thread's loop goes on without a bus, and so do its polls, until the next start.
        QVERIFY2(desk.waitForLog(POLL_WITHOUT_BUS, before), phase.name);
        QVERIFY2(desk.waitForLog(faultcase::COMPLETE, before), phase.name);
        QVERIFY2(desk.waitForLog(QString("Returned VX_CONFIG_ERR when trying to read "), before), phase.name);
        QVERIFY2(desk.logged(SHOWN, before) != phase.dark, phase.name);
        QVERIFY2(desk.errorsBesideTheLoss(before).isEmpty(),
                 qPrintable(desk.errorsBesideTheLoss(before).join('\n')));
        QCOMPARE(desk.run("bus"), QString("no client is connected"));
        QCOMPARE(desk.picture(phase.dark ? "dark" : "shown").size(), QSize(256, 64)); // the GUI thread lives
        QCOMPARE(desk.restarts(), 0);
        QVERIFY2(desk.settings() == settings, phase.name);
    }
    const int before = desk.mark();
    QVERIFY(desk.restartWith("fault"));
    QVERIFY(desk.waitUntilReady(before));
    QCOMPARE(desk.picture("after"), whole);
    QCOMPARE(desk.settings(), settings);
}

// What the application manager does about it is its own: terminalsim starts it again after a second.
void FaultsBusTest::noBusAtTheStartIsAPanicUntilThereIsOne()
{
    FaultCase desk("deaf");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    const int before = desk.mark();
    QVERIFY(desk.restartWith("fault deaf"));
    QVERIFY(desk.waitForTold("ERROR!!! CBUS not ready to create connection. Exiting lumenpanel."));
    QVERIFY(desk.runs("fault off"));
    QVERIFY(!desk.errors(before).filter("<17.1>").isEmpty());
    QVERIFY(desk.waitUntilReady(before));
    QCOMPARE(desk.settings(), settings);
}

void FaultsBusTest::cutLater_data()
{
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QString>("there"); // in the log
    QTest::newRow("status") << QStringList() << QString();
    QTest::newRow("connections") << QStringList({"press left ok"}) << "(SCREEN_ACTION)";
    QTest::newRow("menu") << QStringList({"press right ok down ok"}) << "(SCREEN_MENU)";
    QTest::newRow("battery") << QStringList({"press right up ok"}) << "(SCREEN_BATTERY)";
    QTest::newRow("popup") << QStringList({"alert add 0x11002 warning"}) << "eventList[0]=";
    QTest::newRow("pointing") << QStringList({"set ram.status.pointed_status 1"}) << "(SCREEN_POINTING)";
}

void FaultsBusTest::cutLater()
{
    QFETCH(QStringList, commands);
    QFETCH(QString, there);
    FaultCase desk("cut-later");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    int before = desk.mark();
    for (const QString& command : commands)
        QVERIFY(desk.runs(command));
    QVERIFY(there.isEmpty() || desk.waitForLog(there, before));
    before = desk.mark();
    QVERIFY(desk.runs("fault cut"));
    QVERIFY(desk.waitForLog(POLL_WITHOUT_BUS, before));
    QVERIFY(desk.waitForLog("Returned VX_CONFIG_ERR when trying to read rmcfg.platform.usim.status", before));
    // The radio module counts as stopped, which is what a restart of the terminal looks like.
    QVERIFY(desk.waitForLog("eventList[0]=EV_AP_GUI_STATUS_SYSTEM_REBOOTING", before));
    for (const char* key : {"up", "down", "left", "right", "ok", "long"})
        QVERIFY(desk.runs(QString("press ") + key));
    QCOMPARE(desk.picture(QTest::currentDataTag()).size(), QSize(256, 64));
    QVERIFY2(desk.errorsBesideTheLoss(before).isEmpty(),
             qPrintable(desk.errorsBesideTheLoss(before).join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QCOMPARE(desk.settings(), settings);
}

// Cut late in the start, the display has never seen the terminal work, so no message stands before its icons.
// A switch that is pressed then has no effect, and shows none: a screen keeps no value of its own.
void FaultsBusTest::keysAfterTheCutWriteNothing()
{
    FaultCase desk("dead-switch");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    int mark = desk.mark();
    QVERIFY(desk.restartWith("fault cut at config\\.read\\.cfg\\.bonding\\.enabled"));
    QVERIFY(desk.waitForLog(POLL_WITHOUT_BUS, mark));
    QVERIFY(desk.waitForLog("Successfully translated statusTextId=2 to Initializing SIM", mark));
    QVERIFY(desk.runs("press up")); // the LAN icon
    mark = desk.mark();
    QVERIFY(desk.runs("press ok*3"));
    QCOMPARE(desk.log().mid(mark).filter("About to store cfg.interfaces.lan.enabled with value=0").size(), 1);
    QVERIFY(!desk.picture("under-way").isNull());
    QCOMPARE(desk.settings(), settings);
    QVERIFY(desk.errorsBesideTheLoss().isEmpty());
}

// Under its screen saver the display polls nothing: it notices when it is woken.
void FaultsBusTest::cutWhileAsleep()
{
    FaultCase desk("asleep");
    desk.terminalArguments = QStringList({"--set", "cfg.display.timeout=int:5"});
    QCOMPARE(desk.start(), QString());
    const int before = desk.mark();
    QVERIFY(desk.waitForLog("eventId=0x10109,"));
    QVERIFY(desk.runs("fault cut"));
    QVERIFY(desk.runs("press ok"));
    QVERIFY(desk.waitForLog(POLL_WITHOUT_BUS, before));
    QVERIFY(desk.waitForLog("eventList[0]=EV_AP_GUI_STATUS_SYSTEM_REBOOTING", before));
    QCOMPARE(desk.picture("woken").size(), QSize(256, 64));
    QVERIFY(desk.errorsBesideTheLoss().isEmpty());
    QCOMPARE(desk.restarts(), 0);
}

QTEST_GUILESS_MAIN(FaultsBusTest)
#include "faults_bus_test.moc"
