// More than the bus can carry: bursts of changes, and sockets that are full in both directions.
#include "system/faultcase.h"

using faultcase::FaultCase;

class FaultsFloodTest : public QObject {
    Q_OBJECT

private slots:
    void fiveThousandChangesInABurst_data();
    void fiveThousandChangesInABurst();
    void almostTwoThousandChangesInABurstWhileReading();
    void aBurstThatIsAwaitedWhileReadingIsAPanicAndANewStart();
    void bothDirectionsFull();
};

// Each change is a signal of its own. Under the screen saver the display awaits no answer, so as many as
// there are can be waiting for it.
void FaultsFloodTest::fiveThousandChangesInABurst_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::newRow("nobody's keys") << "ram.desk.flood";
    QTest::newRow("keys below a followed one, which no reader knows") << "ram.status.position.none";
}

void FaultsFloodTest::fiveThousandChangesInABurst()
{
    QFETCH(QString, prefix);
    FaultCase desk("burst");
    desk.terminalArguments = QStringList({"--set", "cfg.display.timeout=int:5"});
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    QVERIFY(desk.waitForLog("eventId=0x10109,"));
    const int mark = desk.mark();
    QVERIFY(desk.runs("fault flood 5000 " + prefix));
    QVERIFY(waitUntil([&] { return desk.run("fault") == "no faults"; }, PATIENCE_MS));
    QVERIFY(desk.runs("set ram.status.signal_strength 433"));
    QVERIFY(desk.waitForLog("topLayerText=N43 ", mark)); // it has come through all of them
    QVERIFY(desk.runs("press up"));
    QVERIFY(desk.waitForLog("eventList is empty.", mark));
    QVERIFY(!desk.picture("woken").isNull());
    QVERIFY2(desk.errors().isEmpty(), qPrintable(desk.errors().join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QCOMPARE(desk.settings(), settings);
}

// Of a key that is read with each change, while polls go on and keys are pressed: as many at once as may wait
// for an answer, three times.
void FaultsFloodTest::almostTwoThousandChangesInABurstWhileReading()
{
    FaultCase desk("reading");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    for (int round = 1; round <= 3; ++round) {
        const int mark = desk.mark();
        QVERIFY(desk.runs("fault flood 1900 ram.status.signal_strength_norm"));
        QVERIFY(desk.runs(round == 1 ? "press right ok ok" : "press ok ok")); // the menu and back
        QVERIFY(desk.waitForLog("(SCREEN_MENU)", mark));
        QVERIFY(waitUntil([&] { return desk.run("fault") == "no faults"; }, PATIENCE_MS));
        QVERIFY(desk.runs(QString("set ram.status.signal_strength %1").arg(350 + 10 * round)));
        QVERIFY(desk.waitForLog(QString("topLayerText=N%1 ").arg(35 + round), mark));
    }
    QVERIFY2(desk.errors().isEmpty(), qPrintable(desk.errors().join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QCOMPARE(desk.settings(), settings);
}

// 2,000 messages that wait while one answer is awaited are the client's limit, and the end of the process;
// the application manager starts it again. Nothing that was stored is lost.
void FaultsFloodTest::aBurstThatIsAwaitedWhileReadingIsAPanicAndANewStart()
{
    FaultCase desk("limit");
    QCOMPARE(desk.start(), QString());
    QVERIFY(desk.runs("press up ok")); // LAN off
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    const QStringList settings = desk.settings();
    QVERIFY(desk.runs("fault delay 3000")); // so that an answer is awaited
    const int mark = desk.mark();
    QVERIFY(desk.runs("set ram.status.signal_strength 433"));
    QVERIFY(desk.runs("fault flood 5000 ram.status.signal_strength"));
    QVERIFY(desk.waitForTold("ended with status 1: <1> gui: *** ASSERT in cbus_sock_impl at "));
    QVERIFY(desk.runs("fault off"));
    QVERIFY(!desk.errors(mark)
                 .filter(QRegularExpression("<17\\.1> .*\\*\\*\\* ASSERT in cbus_sock_impl at \\d+"))
                 .isEmpty());
    QVERIFY(desk.waitUntilReady(mark));
    QVERIFY(desk.waitForLog("topLayerText=N43 ", mark));
    QCOMPARE(desk.settings(), settings);
}

// Somebody holds keys down while the database is stopped, until the display's socket is full; and changes
// that the display can't take fill the other direction, up to its limit. Then the database goes on: the bus
// thread has its answer, no message is torn or lost, and the last key is the last write.
void FaultsFloodTest::bothDirectionsFull()
{
    FaultCase desk("full");
    QCOMPARE(desk.start(), QString());
    const QStringList settings = desk.settings();
    for (int round = 1; round <= 3; ++round) {
        const int mark = desk.mark();
        QVERIFY(desk.runs("fault stop 5"));
        QVERIFY(desk.runs("fault flood 1500 500 ram.nobody"));
        QVERIFY(desk.runs("press up*400 down*400")); // waits for the display, which waits for the socket
        QVERIFY(waitUntil([&] { return desk.run("fault") == "no faults"; }, PATIENCE_MS));
        QVERIFY(desk.runs(QString("set ram.status.signal_strength %1").arg(350 + 10 * round)));
        QVERIFY(desk.waitForLog(QString("topLayerText=N%1 ").arg(35 + round), mark));
        QVERIFY2(desk.errors(mark).isEmpty(), qPrintable(desk.errors(mark).join('\n')));
        QCOMPARE(desk.log().mid(mark).filter("GuiApp::notify: Done handling the keypress.").size(), 800);
    }
    QVERIFY(desk.runs("press ok")); // on the LAN icon, where the first of them led
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    QVERIFY(desk.runs("set cfg.interfaces.lan.enabled 1"));
    QCOMPARE(desk.restarts(), 0);
    QCOMPARE(desk.settings(), settings);
    QVERIFY(!desk.picture("after").isNull());
}

QTEST_GUILESS_MAIN(FaultsFloodTest)
#include "faults_flood_test.moc"
