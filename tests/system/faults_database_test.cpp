// The configuration database late, silent for a while, killed, and started again.
#include "system/faultcase.h"

using faultcase::FaultCase;

namespace {

const char* const DEAD = "Thread (main) seems to be dead";

} // namespace

class FaultsDatabaseTest : public QObject {
    Q_OBJECT

private slots:
    void twoSecondsLate();
    void twoSecondsLateAtTheStartIsTooSlow();
    void lateAtTheStart();
    void stoppedForTenSeconds();
    void stoppedForTenSecondsAtTheStart();
    void killedOrEnded_data();
    void killedOrEnded();
};

// Each answer and each write is two seconds late. Keys are not: the screens ask nobody.
void FaultsDatabaseTest::twoSecondsLate()
{
    FaultCase desk("late");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    QVERIFY(desk.runs("fault delay 2000"));
    int mark = desk.mark();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(desk.runs("set ram.status.signal_strength 433"));
    QVERIFY(desk.waitForLog("topLayerText=N43 ", mark));
    QVERIFY(clock.elapsed() >= 2000);

    clock.start();
    QVERIFY(desk.runs("press up ok")); // the LAN icon; handled at once
    mark = desk.mark();
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    QVERIFY(clock.elapsed() >= 2000);
    QVERIFY(desk.waitForLog("state=INTERFACE_STATE_OFF"));
    QVERIFY(!desk.picture("late").isNull());
    QVERIFY(desk.runs("press right*3 down ok ok"));
    QVERIFY(desk.waitForLog("(SCREEN_MENU)", mark));

    QVERIFY(desk.runs("fault off"));
    mark = desk.mark();
    QVERIFY(desk.runs("set ram.status.signal_strength 512"));
    QVERIFY(desk.waitForLog("topLayerText=N51 ", mark));
    QVERIFY2(desk.errors().isEmpty(), qPrintable(desk.errors().join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QStringList changed = settings;
    changed.replaceInStrings("cfg.interfaces.lan.enabled = int 1", "cfg.interfaces.lan.enabled = int 0");
    QVERIFY(changed != settings);
    QCOMPARE(desk.settings(), changed);
}

// The initial reads are some hundred, one after the other, and no sign of life comes from the bus thread
// until they are through. The application manager's next question after 23 seconds ends the display, which is
// dark so far, and each that is started after it, until the database answers.
void FaultsDatabaseTest::twoSecondsLateAtTheStartIsTooSlow()
{
    FaultCase desk("too-late");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    const int mark = desk.mark();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(desk.restartWith("fault delay 2000"));
    QVERIFY(desk.waitForTold("ended with status 1: <1> gui: Local alive failed"));
    QVERIFY(clock.elapsed() >= 23000);
    QVERIFY(!desk.logged("About to run this->show()", mark));
    const QStringList errors = desk.errors(mark);
    QVERIFY(!errors.filter(DEAD).isEmpty() && errors.filter(DEAD).first().startsWith("<17.3>"));
    QVERIFY(!errors.filter("Local alive failed").isEmpty());
    QVERIFY(desk.runs("fault off"));
    QVERIFY(desk.waitUntilReady(mark));
    QCOMPARE(desk.settings(), settings);
}

// What a start can bear: it takes longer, and is whole.
void FaultsDatabaseTest::lateAtTheStart()
{
    FaultCase desk("late-start");
    QCOMPARE(desk.start(), QString());
    const QImage whole = desk.picture("before");
    const QStringList settings = desk.settings();
    const int mark = desk.mark();
    QVERIFY(desk.restartWith("fault delay 25"));
    QVERIFY(desk.waitUntilReady(mark));
    QCOMPARE(desk.picture("after"), whole);
    QVERIFY(desk.errors().isEmpty());
    QCOMPARE(desk.settings(), settings);
}

// Nothing is answered for ten seconds: the screens work on with what they know, what is switched meanwhile is
// carried out afterwards.
void FaultsDatabaseTest::stoppedForTenSeconds()
{
    FaultCase desk("stopped");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    int mark = desk.mark();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(desk.runs("fault stop 10"));
    QVERIFY(desk.runs("set ram.status.signal_strength 433"));
    QVERIFY(desk.runs("press up ok"));
    QVERIFY(!desk.picture("silent").isNull());
    QVERIFY(desk.runs("press right*3 down ok ok")); // through the menu
    QVERIFY(desk.waitForLog("(SCREEN_MENU)", mark));
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    QVERIFY(clock.elapsed() >= 10000);
    QVERIFY(desk.waitForLog("topLayerText=N43 ", mark));
    QVERIFY(desk.waitForLog("state=INTERFACE_STATE_OFF", mark));
    QVERIFY2(desk.errors().isEmpty(), qPrintable(desk.errors().join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QStringList changed = settings;
    changed.replaceInStrings("cfg.interfaces.lan.enabled = int 1", "cfg.interfaces.lan.enabled = int 0");
    QCOMPARE(desk.settings(), changed);
}

// The panel is dark for as long, and then as ever.
void FaultsDatabaseTest::stoppedForTenSecondsAtTheStart()
{
    FaultCase desk("stopped-start");
    QCOMPARE(desk.start(), QString());
    const QImage whole = desk.picture("before");
    const QStringList settings = desk.settings();
    const int mark = desk.mark();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(desk.restartWith("fault stop 10"));
    QVERIFY(desk.waitForLog("About to run this->show()", mark));
    QVERIFY(clock.elapsed() >= 10000);
    QVERIFY(desk.waitUntilReady(mark));
    QCOMPARE(desk.picture("after"), whole);
    QVERIFY2(desk.errors().isEmpty(), qPrintable(desk.errors().join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QCOMPARE(desk.settings(), settings);
}

void FaultsDatabaseTest::killedOrEnded_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("ended") << SIGTERM;
}

// The database is another process here, and comes back at the same address with what was stored. The display
// does not come back to it by itself: it shows that the terminal is not there, keeps alive, and the next
// start of it shows everything. What had been set before the end is there.
void FaultsDatabaseTest::killedOrEnded()
{
    QFETCH(int, signal);
    const QString name = QTest::currentDataTag();
    const QString address = privateBusAddress("fault.database." + name);
    TerminalProcess database(address);
    QVERIFY(database.start());
    FaultCase desk(qPrintable(name));
    desk.displayEnvironment << "CBUS_ADDR=" + address;
    QVERIFY(desk.startTerminal());
    QVERIFY(desk.waitForLog("Successfully translated statusTextId=12 "));
    QVERIFY(desk.waitForLog(faultcase::COMPLETE));
    QVERIFY(desk.runs("press up ok"));
    QVERIFY(waitUntil([&] { return database.get("cfg.interfaces.lan.enabled") == "int 0"; }, PATIENCE_MS));
    QVERIFY(desk.waitForLog("StatusUpdater::setCBusValue(): Sync cfg to disk done."));
    QVERIFY(desk.waitForLog("state=INTERFACE_STATE_OFF"));
    QVERIFY(
        waitUntil([&] { return database.get("ram.status.interfaces.lan.enabled") == "int 0"; }, PATIENCE_MS));
    QVERIFY(database.set("ram.status.signal_strength", "int:502"));
    QVERIFY(desk.waitForLog("topLayerText=N50 ")); // it has read all of that
    int mark = desk.mark();
    QVERIFY(database.set("ram.status.signal_strength", "int:512"));
    QVERIFY(desk.waitForLog("topLayerText=N51 ", mark));
    const QImage whole = desk.picture("before");

    mark = desk.mark();
    ::kill(pid_t(database.process().processId()), signal);
    QVERIFY(database.process().waitForFinished(PATIENCE_MS));
    QVERIFY(desk.waitForLog("getCBusValueStr(): rmcfg.sys.status.mode not in database!!!", mark));
    QVERIFY(desk.runs("press ok right")); // which do no harm
    QVERIFY(!desk.picture("gone").isNull());

    QVERIFY(database.start());
    QCOMPARE(database.get("cfg.interfaces.lan.enabled"), QString("int 0"));
    QVERIFY(database.set("ram.status.signal_strength", "int:433"));
    QVERIFY(!desk.logged("topLayerText=N43 ", mark));
    QVERIFY2(desk.errorsBesideTheLoss(mark).isEmpty(), qPrintable(desk.errors(mark).join('\n')));
    QCOMPARE(desk.restarts(), 0);

    // What a terminal works out anew, this one does not.
    QVERIFY(database.set("ram.status.signal_strength", "int:512"));
    QVERIFY(database.set("ram.status.interfaces.lan.enabled", "int:0"));
    mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    QVERIFY(desk.waitForLog("Successfully translated statusTextId=12 ", mark));
    QVERIFY(desk.waitForLog(faultcase::COMPLETE, mark));
    QVERIFY(desk.waitForLog("state=INTERFACE_STATE_OFF", mark));
    QVERIFY(desk.runs("press up")); // to where the frame was
    QCOMPARE(desk.picture("after"), whole);
}

QTEST_GUILESS_MAIN(FaultsDatabaseTest)
#include "faults_database_test.moc"
