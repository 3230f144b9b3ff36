// The times of the popup screen: the grace, the eleven ticks of a popup that closes by itself, the minimum
// time of one that the program takes away, and the time in which keys are ignored. Lower bounds are those of
// the rules, upper bounds those of a busy machine.
#include "screens/popupfixture.h"

#include "support/patience.h"

using namespace windowfixture;

namespace {

const int LONG_MS = 60000; // longer than any test

// Waits until the list is empty.
bool gone(const PopupFixture& f)
{
    return QTest::qWaitFor([&f] { return f.screen->events().isEmpty(); }, PATIENCE_MS);
}

} // namespace

class ScreenPopupTimingTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetForPopups(); }

    // Grace
    void buttonsAppearWhenTheGraceEnds();
    void buttonsOfAnOldEventAreThereAtOnce();
    void popupThatWaitedCanBeClosedAtOnce();
    void popupOfTheFutureCanBeClosedAtOnce();
    void graceOfTheNextPopupCountsAnew();
    void graceTimerStopsForAnOldPopup();

    // Closing by itself
    void threeSecondsStayForThreePointThree();
    void tickIsATenth_data();
    void tickIsATenth();
    void belowTenMillisecondsElevenPassesOfTheEventLoop();
    void elevenTicks();
    void autoCloseIgnoresNoKeys();
    void nextPopupHasItsOwnTime();
    void displacedPopupStartsAnew();
    void refreshStartsAnew();
    void leavingStartsAnew();
    void timerThatRunsIsLeftAlone();
    void timerOfADisplacedPopup_data();
    void timerOfADisplacedPopup();
    void timerOnAnEmptyList();

    // Taken away by the program
    void takenAwayAfterHalfASecond();
    void takenAwayAtOnce();
    void takenAwayAfterItsMinimumTime();
    void takenAwayTwice();
    void leavingPopupIsNotClosedByItsKey();
    void sameTextKeepsItsTimeOfShowing();
    void otherTextHasANewTimeOfShowing();
    void shownAnewHasANewTimeOfShowing();
    void sameTextAfterPointingHasANewTimeOfShowing();
    void withoutATimeOfShowing();
    void keysAreIgnoredAfterwards();
};

// --- Grace -------------------------------------------------------------------------------------------------

void ScreenPopupTimingTest::buttonsAppearWhenTheGraceEnds()
{
    PopupFixture f;
    const popup_event_t popup = popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL);
    f.screen->addEvent(popup);
    QCOMPARE(f.colour(), QString("black"));
    QVERIFY(f.hideButtons()->isActive());
    QVERIFY(f.hideButtons()->interval() > 0);
    QVERIFY(f.hideButtons()->interval() <= 700);
    QVERIFY(!f.hideButtons()->isSingleShot());
    QVERIFY(QTest::qWaitFor([&f] { return f.colour() == "white"; }, PATIENCE_MS));
    QVERIFY(popup.timeStamp.msecsTo(QDateTime::currentDateTime()) >= notBefore(700));
    QVERIFY(!f.hideButtons()->isActive());
    QCOMPARE(f.list(), QString("A"));
}

void ScreenPopupTimingTest::buttonsOfAnOldEventAreThereAtOnce()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 700);
    QCOMPARE(f.colour(), QString("white"));
    QVERIFY(!f.hideButtons()->isActive());
}

// The clock was set back since: the grace would last until it is there again.
void ScreenPopupTimingTest::popupOfTheFutureCanBeClosedAtOnce()
{
    PopupFixture f;
    Messages messages;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, -1000000000);
    QCOMPARE(f.colour(), QString("white"));
    QVERIFY(!f.hideButtons()->isActive());
    f.press(Qt::Key_Return);
    QCOMPARE(f.list(), QString());
    const QStringList told = messages.texts().filter(" ms ahead of the clock. Not waiting.");
    QVERIFY(!told.isEmpty());
    QVERIFY2(told.first().contains("): ERROR!!! timeStamp lies "), qPrintable(told.first()));
}

// The event's time counts and not the time of showing.
void ScreenPopupTimingTest::popupThatWaitedCanBeClosedAtOnce()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 1000);
    f.add(B, EVENT_WARNING, POPUP_CLOSE_OK);
    QTest::qWait(750);
    f.screen->closePopup(A, true);
    QVERIFY(f.shown());
    QCOMPARE(f.colour(), QString("white"));
    f.press(Qt::Key_Return);
    QVERIFY(f.screen->events().isEmpty());
}

void ScreenPopupTimingTest::graceOfTheNextPopupCountsAnew()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 1000);
    QCOMPARE(f.colour(), QString("white"));
    f.add(N, EVENT_ERROR, POPUP_CLOSE_OK);
    QCOMPARE(f.colour(), QString("black"));
    f.screen->closePopup(N, true);
    QCOMPARE(f.colour(), QString("white"));
}

void ScreenPopupTimingTest::graceTimerStopsForAnOldPopup()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, -LONG_MS);
    QVERIFY(f.hideButtons()->isActive());
    QVERIFY(f.hideButtons()->interval() > LONG_MS);
    f.add(N, EVENT_ERROR, POPUP_CLOSE_OK, 0, 1000);
    QVERIFY(!f.hideButtons()->isActive());
    QCOMPARE(f.colour(), QString("white"));
}

// --- Closing by itself -------------------------------------------------------------------------------------

// An auto-closing popup with showForMilliseconds 3000 is removed 3300 ms after its timer started.
void ScreenPopupTimingTest::threeSecondsStayForThreePointThree()
{
    PopupFixture f;
    QElapsedTimer elapsed;
    elapsed.start();
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 3000);
    QVERIFY(f.shown());
    QCOMPARE(f.autoClose()->interval(), 300);
    QVERIFY(!f.autoClose()->isSingleShot());
    QVERIFY(gone(f));
    QVERIFY2(elapsed.elapsed() >= notBefore(3300), qPrintable(QString::number(elapsed.elapsed())));
    QVERIFY(!f.autoClose()->isActive());
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void ScreenPopupTimingTest::tickIsATenth_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<int>("interval");
    QTest::newRow("1") << 1 << 0;
    QTest::newRow("9") << 9 << 0;
    QTest::newRow("10") << 10 << 1;
    QTest::newRow("2000") << 2000 << 200;
    QTest::newRow("3009: rounded down") << 3009 << 300;
}

void ScreenPopupTimingTest::tickIsATenth()
{
    QFETCH(int, milliseconds);
    for (POPUP_CLOSE_HANDLING_ENUM kind : {POPUP_CLOSE_AUTO, POPUP_CLOSE_AUTO_OR_OK}) {
        PopupFixture f;
        f.add(A, EVENT_WARNING, kind, milliseconds);
        QVERIFY(f.autoClose()->isActive());
        QTEST(f.autoClose()->interval(), "interval");
    }
}

// showForMilliseconds below 10 gives a timer of interval 0.
void ScreenPopupTimingTest::belowTenMillisecondsElevenPassesOfTheEventLoop()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 9);
    int passes = 0;
    while (!f.screen->events().isEmpty() && passes < 100) {
        QCoreApplication::processEvents();
        ++passes;
    }
    QVERIFY(f.screen->events().isEmpty());
    // A tick is sent in one pass and arrives in that one or the next.
    QVERIFY2(passes >= 11 && passes <= 23, qPrintable(QString::number(passes)));
}

void ScreenPopupTimingTest::elevenTicks()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    for (int tick = 1; tick <= 10; ++tick) {
        f.screen->handleAutoCloseTimeout();
        QCOMPARE(f.list(), QString("A"));
        QVERIFY(f.autoClose()->isActive());
    }
    f.screen->handleAutoCloseTimeout();
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY(!f.autoClose()->isActive());
}

// Only closePopup starts the time in which keys are ignored.
void ScreenPopupTimingTest::autoCloseIgnoresNoKeys()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 100);
    QVERIFY(gone(f));
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
}

void ScreenPopupTimingTest::nextPopupHasItsOwnTime()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 100);
    f.add(B, EVENT_WARNING, POPUP_CLOSE_AUTO_OR_OK, 300);
    QElapsedTimer elapsed;
    QVERIFY(QTest::qWaitFor([&f] { return f.list() == "B"; }, PATIENCE_MS));
    elapsed.start();
    QCOMPARE(f.autoClose()->interval(), 30);
    QVERIFY(gone(f));
    // The start lies some event behind the timer's.
    QVERIFY2(elapsed.elapsed() >= notBefore(330) - 100, qPrintable(QString::number(elapsed.elapsed())));
}

// Ten ticks before the displacement don't count once the popup has its place again.
void ScreenPopupTimingTest::displacedPopupStartsAnew()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    for (int tick = 1; tick <= 10; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    f.add(N, EVENT_ERROR);
    QCOMPARE(f.list(), QString("N A"));
    f.screen->handleAutoCloseTimeout(); // does not know what to close, and stops
    QVERIFY(!f.autoClose()->isActive());
    f.screen->closePopup(N, true);
    QCOMPARE(f.list(), QString("A"));
    QVERIFY(f.autoClose()->isActive());
    for (int tick = 1; tick <= 10; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    QCOMPARE(f.list(), QString("A"));
    f.screen->handleAutoCloseTimeout();
    QVERIFY(f.screen->events().isEmpty());
}

// Ticks before a refresh don't count, whoever starts the timer after it.
void ScreenPopupTimingTest::refreshStartsAnew()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    for (int tick = 1; tick <= 6; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    for (int tick = 1; tick <= 10; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    QCOMPARE(f.list(), QString("A"));
    f.screen->handleAutoCloseTimeout();
    QVERIFY(f.screen->events().isEmpty());
}

void ScreenPopupTimingTest::leavingStartsAnew()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    for (int tick = 1; tick <= 6; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK);
    QVERIFY(!f.autoClose()->isActive());
    f.screen->closePopup(A, false);
    QVERIFY(f.autoClose()->isActive());
    for (int tick = 1; tick <= 10; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    QCOMPARE(f.list(), QString("A"));
    f.screen->handleAutoCloseTimeout();
    QVERIFY(f.screen->events().isEmpty());
}

// A displaced popup leaves its timer to the one that closes by itself in front of it.
void ScreenPopupTimingTest::timerThatRunsIsLeftAlone()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    Messages messages;
    f.add(N, EVENT_ERROR, POPUP_CLOSE_AUTO, 2 * LONG_MS);
    QCOMPARE(f.autoClose()->interval(), LONG_MS / 10);
    QCOMPARE(
        messages.texts().filter(" as it will auto-close the currently visible popup in a moment.").size(), 1);
}

void ScreenPopupTimingTest::timerOfADisplacedPopup_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<QString>("list");
    QTest::newRow("with a time: goes") << int(POPUP_CLOSE_AUTO) << LONG_MS << "A";
    QTest::newRow("the program's: goes") << int(POPUP_CLOSE_NOT_BY_USER) << 0 << "A";
    for (POPUP_CLOSE_HANDLING_ENUM kind :
         {POPUP_CLOSE_OK, POPUP_CLOSE_CANCEL, POPUP_CLOSE_OK_OR_CANCEL, POPUP_CLOSE_ANY_KEY}) {
        QTest::newRow(qPrintable(QString("kind %1: stays").arg(kind))) << int(kind) << 0 << "N A";
    }
}

// The eleventh tick of the displaced A meets N at position 0.
void ScreenPopupTimingTest::timerOfADisplacedPopup()
{
    QFETCH(int, kind);
    QFETCH(int, milliseconds);
    QFETCH(QString, list);
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, LONG_MS);
    f.add(N, EVENT_ERROR, static_cast<POPUP_CLOSE_HANDLING_ENUM>(kind), milliseconds);
    Messages messages;
    for (int tick = 1; tick <= 11; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    QCOMPARE(f.list(), list);
    QCOMPARE(messages.count("ScreenPopup::handleAutoCloseTimeout(): ERROR!!!  AutoCloseTimeout does not know "
                            "which event to close!!!"),
             list == "A" ? 0 : 1);
    QVERIFY(messages.countOfPrefix("ScreenPopup::showNextEvent()") >= 1);
}

void ScreenPopupTimingTest::timerOnAnEmptyList()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_POPUP, true);
    Messages messages;
    for (int tick = 1; tick <= 11; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    QCOMPARE(messages.count("ScreenPopup::handleAutoCloseTimeout(): ERROR !!!!! Can not run "
                            "eventList.removeAt(0)because the list is empty!!"),
             1);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS); // showNextEvent() ran
}

// --- Taken away by the program -----------------------------------------------------------------------------

// A popup that is removed by the program 500 ms after it appeared stays 1500 ms more plus a tenth.
void ScreenPopupTimingTest::takenAwayAfterHalfASecond()
{
    PopupFixture f;
    QElapsedTimer sinceBefore;
    sinceBefore.start();
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 1000);
    QElapsedTimer sinceAfter;
    sinceAfter.start();
    QTest::qWait(500);
    const qint64 least = sinceAfter.elapsed();
    f.screen->closePopup(A, false);
    const qint64 most = sinceBefore.elapsed();
    QCOMPARE(f.list(), QString("A"));
    const popup_event_t& popup = f.screen->events().at(0);
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_AUTO);
    QVERIFY(popup.showForMilliseconds <= 2000 - least + 1); // whole milliseconds on either side
    QVERIFY(popup.showForMilliseconds >= 2000 - most - 1);
    QCOMPARE(f.autoClose()->interval(), popup.showForMilliseconds / 10);
    const int stay = popup.showForMilliseconds;
    QElapsedTimer elapsed;
    elapsed.start();
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
    QVERIFY(gone(f));
    // Started a moment before this clock.
    QVERIFY2(elapsed.elapsed() >= notBefore(stay / 10 * 11) - (most - least) - 5,
             qPrintable(QString::number(elapsed.elapsed())));
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive()); // closed by its timer after all
}

void ScreenPopupTimingTest::takenAwayAtOnce()
{
    PopupFixture f;
    QElapsedTimer elapsed;
    elapsed.start();
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    f.screen->closePopup(A, false);
    QCOMPARE(f.list(), QString("A"));
    QVERIFY(f.shown());
    QVERIFY(f.screen->events().at(0).showForMilliseconds <= 2000);
    QVERIFY(gone(f));
    QVERIFY2(elapsed.elapsed() >= notBefore(2000), qPrintable(QString::number(elapsed.elapsed())));
}

void ScreenPopupTimingTest::takenAwayAfterItsMinimumTime()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    QTest::qWait(2010);
    f.screen->closePopup(A, false);
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY(!f.autoClose()->isActive());
    QVERIFY(Access::ignoreGlobalKeyPressTimer().isActive());
    QCOMPARE(Access::ignoreGlobalKeyPressTimer().interval(), 700);
}

void ScreenPopupTimingTest::takenAwayTwice()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    f.screen->closePopup(A, false);
    const int stay = f.screen->events().at(0).showForMilliseconds;
    Messages messages;
    f.screen->closePopup(A, false);
    QCOMPARE(messages.count(
                 "ScreenPopup::closePopup(): Warning: pAutoCloseTimer is already running! Nothing to do."),
             1);
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(f.screen->events().at(0).showForMilliseconds, stay);
    QVERIFY(f.autoClose()->isActive());
}

// Its labels are not redrawn, so an OK label stays although the OK key no longer closes the popup.
void ScreenPopupTimingTest::leavingPopupIsNotClosedByItsKey()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 1000);
    f.screen->closePopup(A, false);
    QVERIFY(f.okShown());
    QCOMPARE(f.colour(), QString("white"));
    f.press(Qt::Key_Return);
    QCOMPARE(f.list(), QString("A"));
    QVERIFY(gone(f));
}

void ScreenPopupTimingTest::sameTextKeepsItsTimeOfShowing()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    QTest::qWait(600);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    f.screen->closePopup(A, false);
    QVERIFY(f.screen->events().isEmpty() || f.screen->events().at(0).showForMilliseconds <= 1400);
}

void ScreenPopupTimingTest::otherTextHasANewTimeOfShowing()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    QTest::qWait(2010);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, 0, "other text");
    f.screen->closePopup(A, false); // without the new time it would be gone now
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(f.screen->events().at(0).closeHandling, POPUP_CLOSE_AUTO);
}

// A displaced popup is shown anew later, and the user needs the time once more.
void ScreenPopupTimingTest::shownAnewHasANewTimeOfShowing()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    QTest::qWait(2010);
    f.add(N, EVENT_ERROR);
    f.screen->closePopup(N, true);
    f.screen->closePopup(A, false);
    QCOMPARE(f.list(), QString("A"));
}

// Pushed aside and shown again: the label still has the text, but the user saw another screen.
void ScreenPopupTimingTest::sameTextAfterPointingHasANewTimeOfShowing()
{
    PopupFixture f;
    f.add(A, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER);
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
    QCOMPARE(f.text()->text(), QString("A"));
    QTest::qWait(2010);
    model()->setPointingMode(POINTING_STATUS_POINTED);
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.shown());
    f.screen->closePopup(A, false);
    QCOMPARE(f.list(), QString("A"));
}

// A popup that arrives on the popup screen left empty, with just the text that stands for nothing.
void ScreenPopupTimingTest::withoutATimeOfShowing()
{
    PopupFixture f;
    f.add(A);
    f.screen->closePopup(A, true);
    f.window.showScreen(Screen::SCREEN_POPUP, true);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "-");
    QVERIFY(f.shown());
    Messages messages;
    f.screen->closePopup(A, false);
    QCOMPARE(messages.count("ScreenPopup::closePopup(EV_AP_GUI_CONN_FAILED): ERROR!!! "
                            "currentEventShowedAtEpochTime=-1 is not valid time"),
             1);
    QVERIFY(f.screen->events().isEmpty()); // that sum lies far in the past
}

// For 700 ms key presses are dropped, lest they act on the screen below.
void ScreenPopupTimingTest::keysAreIgnoredAfterwards()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    QTest::qWait(2010);
    f.add(B, EVENT_WARNING, POPUP_CLOSE_OK, 0, 1000);
    QElapsedTimer elapsed;
    elapsed.start();
    f.screen->closePopup(A, false);
    QCOMPARE(f.list(), QString("B"));
    QVERIFY(f.shown());
    while (!f.screen->events().isEmpty() && elapsed.elapsed() < PATIENCE_MS) {
        f.press(Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY2(elapsed.elapsed() >= notBefore(700), qPrintable(QString::number(elapsed.elapsed())));
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPopupTimingTest>(argc, argv);
}
#include "screenpopup_timing_test.moc"
