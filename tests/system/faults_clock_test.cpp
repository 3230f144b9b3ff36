// The wall clock is set, by a year forth and back, while the display runs: as when the terminal gets its time
// from the satellites. What lasts is measured on a clock that nobody sets; what counts from a moment of the
// wall clock is bounded. The clock is that of the display's process alone.
#include "system/faultcase.h"

using faultcase::FaultCase;

namespace {

const qint64 YEAR = 365 * 24 * 60 * 60; // seconds

class ClockCase : public FaultCase {
public:
    explicit ClockCase(const char* purpose) : FaultCase(purpose)
    {
        shift(0);
        displayEnvironment << "LD_PRELOAD=" + faultcase::programs +
                                  "/libsyslogtap.so:" + faultcase::programs + "/libshiftedclock.so"
                           << "SHIFTEDCLOCK_FILE=" + file("clock");
    }
    // By so many seconds against the machine's.
    void shift(qint64 seconds)
    {
        QFile clock(file("clock"));
        QVERIFY(clock.open(QIODevice::ReadWrite)); // not truncated: it is mapped
        const int64_t number = seconds;
        QCOMPARE(clock.write(reinterpret_cast<const char*>(&number), sizeof(number)), qint64(sizeof(number)));
    }
    // What the display takes for the year, by the name of a screenshot.
    QString year()
    {
        const int from = mark();
        if (picture("year").isNull() || !waitForLog(".bmp saved.", from))
            return QString();
        return QRegularExpression("/screen_(\\d{4})")
            .match(log().mid(from).filter(".bmp saved.").first())
            .captured(1);
    }
};

} // namespace

class FaultsClockTest : public QObject {
    Q_OBJECT

private slots:
    void aYearForthAndBack();
    void aSessionsTime();
    void aPopupCanStillBeClosed();
    void aPopupStillGoesByItself_data();
    void aPopupStillGoesByItself();
    void theScreenSaverComesInItsTime();
};

// Values, keys, polls, the keep-alive's answers and settings: none of them looks at the wall clock.
void FaultsClockTest::aYearForthAndBack()
{
    ClockCase desk("clock");
    QCOMPARE(desk.start(), QString());
    QVERIFY(desk.runs("press right")); // to the menu's icon
    const QString thisYear = desk.year();
    const QImage before = desk.picture("before");
    const QStringList settings = desk.settings();
    int level = 400;
    for (qint64 seconds : {YEAR + 86400, qint64(0), -YEAR - 86400, qint64(0)}) {
        desk.shift(seconds);
        const int change = seconds > 0 ? 1 : seconds < 0 ? -1 : 0;
        QCOMPARE(desk.year(), QString::number(thisYear.toInt() + change));
        const int mark = desk.mark();
        QVERIFY(desk.runs(QString("set ram.status.signal_strength %1").arg(level)));
        QVERIFY(desk.waitForLog(QString("topLayerText=N%1 ").arg(level / 10), mark));
        QVERIFY(desk.runs("press ok ok")); // the menu and back
        QVERIFY(desk.waitForLog("(SCREEN_MENU)", mark));
        level += 10;
    }
    const int mark = desk.mark();
    QVERIFY(desk.runs("set ram.status.signal_strength 512"));
    QVERIFY(desk.waitForLog("topLayerText=N51 ", mark));
    QCOMPARE(desk.picture("after"), before);
    QVERIFY2(desk.errors().isEmpty(), qPrintable(desk.errors().join('\n')));
    QCOMPARE(desk.restarts(), 0);
    QCOMPARE(desk.settings(), settings);
}

// The time of a running session is that since its start: a year more, or none as long as the clock is behind.
void FaultsClockTest::aSessionsTime()
{
    ClockCase desk("session");
    QCOMPARE(desk.start(), QString());
    // With each change of a session the display logs its age.
    int amount = 0;
    const auto shows = [&](const char* age) {
        const int from = desk.mark();
        desk.runs(QString("set ram.status.ongoing_data_sessions.0.bytes_in_out_kb %1").arg(++amount));
        const QRegularExpression line(QString("status=BUNDLE_STATUS_RUNNING,.*startTime=%1 ago").arg(age));
        return waitUntil([&] { return !desk.log().mid(from).filter(line).isEmpty(); }, PATIENCE_MS);
    };
    const auto lookAt = [&](const char* name) {
        QTest::qWait(1500); // the text is renewed each second
        QVERIFY(!desk.picture(name).isNull());
    };
    QVERIFY(desk.runs("bundle start 1"));
    QVERIFY(desk.waitForValue("ram.status.ongoing_data_sessions.0.status", "int 2"));
    QVERIFY(desk.waitForLog("status=BUNDLE_STATUS_RUNNING,"));
    QVERIFY(shows("00:0\\d:\\d\\d"));
    lookAt("now");
    desk.shift(YEAR);
    QVERIFY(shows("8760:0\\d:\\d\\d"));
    lookAt("forth");
    desk.shift(-YEAR);
    QVERIFY(shows("00:00:00"));
    lookAt("back");
    desk.shift(0);
    QVERIFY(shows("00:0\\d:\\d\\d"));
    QVERIFY(desk.errors().isEmpty());
    QCOMPARE(desk.restarts(), 0);
}

// A message counts its 0.7 s from its own moment. If that lies a year ahead, OK must not wait for it.
void FaultsClockTest::aPopupCanStillBeClosed()
{
    ClockCase desk("popup");
    QCOMPARE(desk.start(), QString());
    QVERIFY(desk.runs("alert add 0x11002 warning"));
    QVERIFY(desk.waitForLog("eventList[0]="));
    desk.shift(-YEAR);
    QVERIFY(!desk.picture("shown").isNull());
    const int mark = desk.mark();
    QVERIFY(desk.runs("press ok"));
    QVERIFY(desk.waitForLog("eventList is empty.", mark));
    const QStringList told = desk.log().mid(mark).filter(" ms ahead of the clock. Not waiting.");
    QCOMPARE(told.size(), 1);
    QVERIFY(told.first().startsWith("<17.4>"));
    QVERIFY(desk.waitForLog("(SCREEN_STATUS)", mark));
    QVERIFY(!desk.picture("closed").isNull());
}

void FaultsClockTest::aPopupStillGoesByItself_data()
{
    QTest::addColumn<qint64>("shift");
    QTest::newRow("forth") << YEAR;
    QTest::newRow("back") << -YEAR;
}

// A message whose reason has gone stays for two seconds since it was shown. Those are over at once if the
// clock goes forth, and are counted anew, with a line in the log, if it goes back: not for a year.
void FaultsClockTest::aPopupStillGoesByItself()
{
    QFETCH(qint64, shift);
    ClockCase desk(QTest::currentDataTag());
    QCOMPARE(desk.start(), QString());
    QVERIFY(desk.runs("alert add 0x11002 warning"));
    QVERIFY(desk.waitForLog("eventList[0]="));
    QVERIFY(!desk.picture("stands").isNull()); // so that it has taken its time of showing
    desk.shift(shift);
    const int mark = desk.mark();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(desk.runs("alert clear 0x11002"));
    QVERIFY(desk.waitForLog("eventList is empty.", mark));
    const QStringList told =
        desk.log().mid(mark).filter(" lies ahead of the clock. Showing it for 2000 ms more.");
    QCOMPARE(told.size(), shift < 0 ? 1 : 0);
    if (shift < 0) {
        QVERIFY(clock.elapsed() >= 2000);
        QVERIFY(told.first().startsWith("<17.4>"));
        QVERIFY(told.first().contains("ScreenPopup::closePopup("));
    }
    QVERIFY(desk.waitForLog("(SCREEN_STATUS)", mark));
}

void FaultsClockTest::theScreenSaverComesInItsTime()
{
    ClockCase desk("saver");
    desk.terminalArguments = QStringList({"--set", "cfg.display.timeout=int:5"});
    QCOMPARE(desk.start(), QString());
    QElapsedTimer clock;
    clock.start();
    QVERIFY(desk.runs("press up"));
    const int mark = desk.mark();
    desk.shift(YEAR);
    QVERIFY(desk.waitForLog("eventId=0x10109,", mark));
    QVERIFY(clock.elapsed() >= 4750); // such timers may be early by a twentieth
    desk.shift(-YEAR);
    QVERIFY(desk.runs("press up")); // which wakes it
    QVERIFY(desk.waitForLog("eventList is empty.", mark));
    QVERIFY(desk.errors().isEmpty());
}

QTEST_GUILESS_MAIN(FaultsClockTest)
#include "faults_clock_test.moc"
