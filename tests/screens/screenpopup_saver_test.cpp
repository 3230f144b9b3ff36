// The screen saver: its delay, its coming and going, and what the terminal is told about it.
#include "screens/popupfixture.h"

#include "common/qtcompat.h"

#include "support/patience.h"

using namespace windowfixture;

namespace {

const char ACTIVITY[] = "ram.powersave.activity.display";
const char INTERVAL[] = "ram.status.signal_strength.update_interval";

const Qt::Key FIVE_KEYS[] = {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};

// Forgets what was written, what is still under way included.
void clearLogs()
{
    terminal().settle();
    terminal().clearLogs();
}

// What was written to a key since the logs were cleared.
QString writesOf(const char* key)
{
    terminal().settle();
    QStringList result;
    for (const sim::Value& value : terminal().writesOf(key)) {
        result.append(QString::number(value.toInt()));
    }
    return result.join(" ");
}

} // namespace

class ScreenPopupSaverTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        resetForPopups();
        QVERIFY(QTest::qWaitFor([] { return model()->getHasConnectedToCBus(); }, PATIENCE_MS));
    }

    void initStartsTheDelayAndSubscribes();
    void delayFollowsTheSetting();
    void changeOfTheSettingIsConnectedOnce();
    void delayIsBounded_data();
    void delayIsBounded();
    void restartTellsTheTerminal();
    void comesAfterItsDelay();
    void isAPopupWithoutTextAndButtons();
    void comesOverAPopupThatNobodyReads();
    void anyOfTheFiveKeysClosesIt_data();
    void anyOfTheFiveKeysClosesIt();
    void otherKeysDoNot();
    void anyOtherEventRemovesIt();
    void aSecondOneIsARefresh();
    void everyCopyOfItRestartsTheDelay();
    void popupCountsTheDelayFromTheLastChange();
    void emptyListDoesNotTouchTheDelay();
    void keyOnAnyScreenRestartsTheDelay();
    void previousScreenWaitsBehindIt();
    void pointingRemovesIt();
};

// The model starts as subscribed without having told anybody, so it is switched off and on.
void ScreenPopupSaverTest::initStartsTheDelayAndSubscribes()
{
    model()->subscribeToChanges(true);
    clearLogs();
    PopupFixture f;
    QVERIFY(f.saver()->isActive());
    QVERIFY(!f.saver()->isSingleShot());
    QCOMPARE(f.saver()->interval(), 300 * 1000);
    QCOMPARE(writesOf(INTERVAL), QString("0 1000"));
    QVERIFY(Access::subscribedToChanges());
}

void ScreenPopupSaverTest::delayFollowsTheSetting()
{
    PopupFixture f;
    f.saver()->stop();
    model()->subscribeToChanges(false);
    clearLogs();
    model()->setScreenSaverTime(45);
    QVERIFY(f.saver()->isActive());
    QCOMPARE(f.saver()->interval(), 45 * 1000);
    QVERIFY(Access::subscribedToChanges());
    QCOMPARE(writesOf(ACTIVITY), QString()); // the activity is not told
}

void ScreenPopupSaverTest::changeOfTheSettingIsConnectedOnce()
{
    PopupFixture f;
    f.screen->init();
    f.screen->init();
    QVERIFY(!QObject::connect(model(), SIGNAL(screenSaverTimeChanged()), f.screen,
                              SLOT(updateScreenSaverTime()), Qt::UniqueConnection));
    QVERIFY(QObject::disconnect(model(), SIGNAL(screenSaverTimeChanged()), f.screen, nullptr));
    f.saver()->stop();
    model()->setScreenSaverTime(46);
    QVERIFY(!f.saver()->isActive());
}

void ScreenPopupSaverTest::delayIsBounded_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("interval");
    QTest::addColumn<bool>("logged");
    QTest::newRow("5") << 5 << 5000 << false;
    QTest::newRow("1") << 1 << 1000 << false;
    QTest::newRow("largest") << 2147483 << 2147483000 << false;
    QTest::newRow("0") << 0 << 1000 << true;
    QTest::newRow("negative") << -7 << 1000 << true;
    QTest::newRow("too large") << 2147484 << 2147483000 << true;
    QTest::newRow("largest number") << 2147483647 << 2147483000 << true;
}

void ScreenPopupSaverTest::delayIsBounded()
{
    QFETCH(int, seconds);
    QFETCH(int, interval);
    QFETCH(bool, logged);
    PopupFixture f;
    Messages messages;
    model()->setScreenSaverTime(seconds);
    QCOMPARE(f.saver()->interval(), interval);
    QCOMPARE(messages.count(QString("ScreenPopup::screenSaverDelay(): ERROR!!! Illegal screen saver "
                                    "time=%1, using %2")
                                .arg(seconds)
                                .arg(interval / 1000)),
             logged ? 1 : 0);
}

void ScreenPopupSaverTest::restartTellsTheTerminal()
{
    PopupFixture f;
    f.saver()->stop();
    model()->subscribeToChanges(false);
    clearLogs();
    f.window.restartScreenSaverTimer();
    QVERIFY(f.saver()->isActive());
    QCOMPARE(f.saver()->interval(), 300 * 1000);
    QVERIFY(Access::subscribedToChanges());
    QCOMPARE(writesOf(ACTIVITY), QString("1"));
    QCOMPARE(writesOf(INTERVAL), QString("1000"));
}

void ScreenPopupSaverTest::comesAfterItsDelay()
{
    PopupFixture f;
    QElapsedTimer elapsed;
    elapsed.start();
    model()->setScreenSaverTime(1);
    clearLogs();
    QVERIFY(QTest::qWaitFor([&f] { return f.screen->screenSaverInPopupList(); }, PATIENCE_MS));
    QVERIFY2(elapsed.elapsed() >= notBefore(1000), qPrintable(QString::number(elapsed.elapsed())));
    QVERIFY(f.shown());
    QVERIFY(!f.saver()->isActive());
    QVERIFY(!Access::subscribedToChanges());
    QCOMPARE(writesOf(ACTIVITY), QString("0"));
    QCOMPARE(writesOf(INTERVAL), QString("0"));
}

void ScreenPopupSaverTest::isAPopupWithoutTextAndButtons()
{
    PopupFixture f;
    const QDateTime before = QDateTime::currentDateTime();
    f.screen->showScreenSaver();
    QCOMPARE(f.list(), QString("S"));
    const popup_event_t& popup = f.screen->events().at(0);
    QCOMPARE(popup.severity, EVENT_SCREEN_SAVER);
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_ANY_KEY);
    QCOMPARE(popup.showForMilliseconds, 0);
    QVERIFY(popup.text.isEmpty());
    QVERIFY(popup.timeStamp >= before);
    QVERIFY(popup.timeStamp <= QDateTime::currentDateTime());
    QVERIFY(!popup.okFunction);
    QVERIFY(!popup.cancelFunction);
    QVERIFY(!f.okShown());
    QVERIFY(!f.cancelShown());
    const QImage picture = qtcompat::grabWidget(&f.window).toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            QCOMPARE(QColor(picture.pixel(x, y)), QColor(Qt::black));
        }
    }
}

// A popup that nobody reads is covered in due course, and comes back.
void ScreenPopupSaverTest::comesOverAPopupThatNobodyReads()
{
    PopupFixture f;
    f.add(A, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER);
    model()->setScreenSaverTime(1);
    QVERIFY(QTest::qWaitFor([&f] { return f.list() == "S A"; }, PATIENCE_MS));
    QVERIFY(f.text()->text().isEmpty());
    QVERIFY(!f.saver()->isActive());
    f.press(Qt::Key_Right);
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(f.text()->text(), QString("A"));
    QVERIFY(f.saver()->isActive());
}

void ScreenPopupSaverTest::anyOfTheFiveKeysClosesIt_data()
{
    QTest::addColumn<int>("key");
    for (Qt::Key key : FIVE_KEYS) {
        QTest::newRow(qPrintable(QString::number(key, 16))) << int(key);
    }
}

void ScreenPopupSaverTest::anyOfTheFiveKeysClosesIt()
{
    QFETCH(int, key);
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_ANTENNA, true);
    f.screen->showScreenSaver();
    QVERIFY(f.shown());
    clearLogs();
    f.press(static_cast<Qt::Key>(key));
    QVERIFY(f.screen->events().isEmpty());
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_ANTENNA);
    QVERIFY(f.saver()->isActive());
    QVERIFY(Access::subscribedToChanges());
    QCOMPARE(writesOf(ACTIVITY), QString("1"));
}

void ScreenPopupSaverTest::otherKeysDoNot()
{
    PopupFixture f;
    f.screen->showScreenSaver();
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_A}) {
        f.press(key);
        QCOMPARE(f.list(), QString("S"));
        QVERIFY(!f.saver()->isActive());
    }
}

// Any other event wakes the screen, even one that has to wait.
void ScreenPopupSaverTest::anyOtherEventRemovesIt()
{
    PopupFixture f;
    f.add(A, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER);
    f.screen->showScreenSaver();
    QCOMPARE(f.list(), QString("S A"));
    clearLogs();
    f.add(B, EVENT_INFO);
    QCOMPARE(f.list(), QString("A B"));
    QCOMPARE(f.text()->text(), QString("A"));
    QVERIFY(f.saver()->isActive());
    QVERIFY(Access::subscribedToChanges());
    QCOMPARE(writesOf(ACTIVITY), QString("1 1")); // for the removal, and for the popup that stands
}

void ScreenPopupSaverTest::aSecondOneIsARefresh()
{
    PopupFixture f;
    f.screen->showScreenSaver();
    f.screen->showScreenSaver();
    QCOMPARE(f.list(), QString("S"));
    QVERIFY(!f.saver()->isActive());
}

void ScreenPopupSaverTest::everyCopyOfItRestartsTheDelay()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    f.add(B, EVENT_WARNING);
    f.screen->showScreenSaver();
    QCOMPARE(f.list(), QString("S S A B"));
    clearLogs();
    f.add(C, EVENT_INFO);
    QCOMPARE(f.list(), QString("A B C"));
    QCOMPARE(writesOf(ACTIVITY), QString("1 1 1"));
}

void ScreenPopupSaverTest::popupCountsTheDelayFromTheLastChange()
{
    PopupFixture f;
    f.add(A);
    f.add(B);
    const struct {
        const char* name;
        std::function<void()> change;
    } changes[] = {
        {"arrival", [&f] { f.add(C); }},
        {"refresh", [&f] { f.add(A); }},
        {"departure", [&f] { f.screen->closePopup(C, true); }},
        {"language", [&f] { f.screen->retranslate(); }},
    };
    for (const auto& row : changes) {
        f.saver()->stop();
        row.change();
        QVERIFY2(f.saver()->isActive(), row.name);
    }
}

void ScreenPopupSaverTest::emptyListDoesNotTouchTheDelay()
{
    PopupFixture f;
    f.add(A);
    f.saver()->stop();
    clearLogs();
    f.screen->closePopup(A, true);
    QVERIFY(!f.saver()->isActive());
    QCOMPARE(writesOf(ACTIVITY), QString());
}

void ScreenPopupSaverTest::keyOnAnyScreenRestartsTheDelay()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_ANTENNA, true);
    for (Qt::Key key : FIVE_KEYS) {
        f.saver()->stop();
        clearLogs();
        f.press(key);
        QVERIFY(f.saver()->isActive());
        QVERIFY(terminal().waitForWrite(ACTIVITY, sim::Value::integer(1)));
    }
    f.saver()->stop();
    f.press(Qt::Key_Space); // a long OK does not count
    QVERIFY(!f.saver()->isActive());
}

// The saver goes before everything else that wants the screen.
void ScreenPopupSaverTest::previousScreenWaitsBehindIt()
{
    PopupFixture f;
    f.screen->showScreenSaver();
    Messages messages;
    f.window.showPreviousScreen();
    QVERIFY(f.shown());
    QCOMPARE(messages.count("Window::showPreviousScreen(): do nothing, as screenSaver is active"), 1);
}

void ScreenPopupSaverTest::pointingRemovesIt()
{
    PopupFixture f;
    f.screen->showScreenSaver();
    QTest::qWait(2010); // its minimum time, as the program takes it away
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.screen->events().isEmpty());
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
    QVERIFY(f.saver()->isActive());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPopupSaverTest>(argc, argv);
}
#include "screenpopup_saver_test.moc"
