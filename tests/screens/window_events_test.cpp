// The gate through which popups come up and go, what becomes of the terminal's events there, ciphering, the
// accepted PIN, and the screenshot. Connection errors, the modem and the state of the system have tests of
// their own (window_causes_test.cpp, window_modem_test.cpp, window_system_test.cpp).
#include "screens/windowcase.h"

#include "support/patience.h"

#include <QDateTime>
#include <QDir>
#include <QImage>

using namespace windowfixture;

class WindowEventsTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init()
    {
        startTest();
        makeWindow();
        forgetBus();
    }
    void cleanup() { endTest(); }

    void addEventBuildsThePopup();
    void addEventTakesTheGivenTimeOrNow();
    void addEventReportsAutoCloseWithoutATime_data();
    void addEventReportsAutoCloseWithoutATime();
    void popupThatIsThereIsRemoved();
    void popupThatIsNotThereIsNotRemoved();
    void removalFromTheModelIsForwarded();

    void eventOfTheTerminalHasItsPopup_data();
    void eventOfTheTerminalHasItsPopup();
    void eventOfTheTerminalKeepsItsSeverity();
    void softwareUpdateOnIsDropped();
    void confirmedResultIsToldToTheTerminal();
    void integrityErrorCannotBeClosedAndIsNotConfirmed();

    void ciphering_data();
    void ciphering();
    void acceptedPinRemovesTheWaitPopup();
    void screenshotIsTakenOfTheCurrentScreen();
    void screenshotShowsWhatIsBehindTheScreenSaver();
    void screenshotOfAYoungScreenSaverIsEmpty();

private:
    QStringList screenshots() const
    {
        return QDir(m_directory->path()).entryList(QStringList("screen_*.bmp"));
    }
    QImage screenshot() const
    {
        return QImage(m_directory->filePath(screenshots().value(0))).convertToFormat(QImage::Format_RGB32);
    }
};

// --- addEvent and removePopupIfExist -----------------------------------------------------------------------

void WindowEventsTest::addEventBuildsThePopup()
{
    Messages messages;
    m_window->addEvent(EV_AP_GUI_STARTING_BUNDLE_NAME, EVENT_WARNING, POPUP_CLOSE_AUTO_OR_OK, 3000, "okSlot",
                       "cancelSlot", " Field office", -1);
    QCOMPARE(messages.texts().first(), QString("Window::addEvent(EV_AP_GUI_STARTING_BUNDLE_NAME, "
                                               "eventId=0x10102, severity=EVENT_WARNING): Start of "
                                               "function."));
    QCOMPARE(queue().size(), 1);
    QCOMPARE(queue().first().eventId, unsigned(EV_AP_GUI_STARTING_BUNDLE_NAME));
    QCOMPARE(argumentsOf(EV_AP_GUI_STARTING_BUNDLE_NAME), QString("EVENT_WARNING 2 3000 okSlot cancelSlot"));
    QCOMPARE(queue().first().text, model()->getEventText(EV_AP_GUI_STARTING_BUNDLE_NAME) + " Field office");
}

void WindowEventsTest::addEventTakesTheGivenTimeOrNow()
{
    m_window->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, "x",
                       1420070400123LL);
    QCOMPARE(queue().first().timeStamp.toUTC(), QDateTime(QDate(2015, 1, 1), QTime(0, 0, 0, 123), Qt::UTC));
    const QDateTime before = QDateTime::currentDateTime();
    m_window->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, "x", -1);
    const QDateTime after = QDateTime::currentDateTime();
    QVERIFY(queue().first().timeStamp >= before && queue().first().timeStamp <= after);
}

void WindowEventsTest::addEventReportsAutoCloseWithoutATime_data()
{
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("reported");
    QTest::addColumn<bool>("taken"); // by the queue, whose own test is stricter
    QTest::newRow("auto, 0") << int(POPUP_CLOSE_AUTO) << 0 << true << false;
    QTest::newRow("auto, negative") << int(POPUP_CLOSE_AUTO) << -5 << true << false;
    QTest::newRow("auto, 1") << int(POPUP_CLOSE_AUTO) << 1 << false << true;
    QTest::newRow("auto or OK, 0") << int(POPUP_CLOSE_AUTO_OR_OK) << 0 << false << false;
    QTest::newRow("OK, 0") << int(POPUP_CLOSE_OK) << 0 << false << true;
}

void WindowEventsTest::addEventReportsAutoCloseWithoutATime()
{
    QFETCH(int, closeHandling);
    QFETCH(int, milliseconds);
    QFETCH(bool, reported);
    QFETCH(bool, taken);
    Messages messages;
    m_window->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO,
                       static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling), milliseconds, nullptr, nullptr,
                       QString(), -1);
    QCOMPARE(messages.count(QString("Window::addEvent(EV_AP_GUI_CUSTOM_TEXT): ERROR !!!!  "
                                    "closeHandling==POPUP_CLOSE_AUTO and showForMilliseconds=%1 is not an "
                                    "expected combination!!!")
                                .arg(milliseconds)),
             reported ? 1 : 0);
    // It goes on in either case.
    QVERIFY(messages.countOfPrefix("ScreenPopup::addEvent(EV_AP_GUI_CUSTOM_TEXT") >= 1);
    QCOMPARE(int(queue().size()), taken ? 1 : 0);
}

void WindowEventsTest::popupThatIsThereIsRemoved()
{
    add(EV_AP_TEMP_LOW);
    add(EV_AP_GUI_CONN_LOST);
    Messages messages;
    m_window->removePopupIfExist(EV_AP_TEMP_LOW);
    QCOMPARE(messages.count("Window::removePopupIfExist(EV_AP_TEMP_LOW): Event exist in popup list."), 1);
    QCOMPARE(queued(), QStringList("EV_AP_GUI_CONN_LOST"));
}

void WindowEventsTest::popupThatIsNotThereIsNotRemoved()
{
    add(EV_AP_GUI_CONN_LOST);
    Messages messages;
    m_window->removePopupIfExist(0x12345);
    QCOMPARE(messages.texts().filter("removePopupIfExist"),
             QStringList("Window::removePopupIfExist(No debug text for eventId=0x12345): Event does not "
                         "exist in popup list. Nothing to remove."));
    QCOMPARE(messages.countOfPrefix("ScreenPopup::closePopup"), 0);
    QCOMPARE(queued(), QStringList("EV_AP_GUI_CONN_LOST"));
}

void WindowEventsTest::removalFromTheModelIsForwarded()
{
    add(EV_AP_TEMP_LOW);
    Messages messages;
    emit model()->signalRemovePopup(EV_AP_TEMP_LOW);
    QCOMPARE(messages.countOfPrefix("Window::handleRemovePopup(): "), 1);
    QCOMPARE(queued(), QStringList());
    emit model()->signalRemovePopup(EV_AP_TEMP_LOW);
    QCOMPARE(changesIn(messages), QStringList({"-EV_AP_TEMP_LOW", "-EV_AP_TEMP_LOW"}));
}

// --- Events of the terminal --------------------------------------------------------------------------------

void WindowEventsTest::eventOfTheTerminalHasItsPopup_data()
{
    QTest::addColumn<unsigned int>("id");
    QTest::addColumn<QString>("arguments");
    const unsigned int confirmed[] = {0x10303, 0x10304, 0x10305, 0x10306, 0x10307, 0x10308, 0x10309,
                                      0x1030c, 0x1030d, 0x10310, 0x10313, 0x10314, 0x10316, 0x10317};
    for (unsigned int id : confirmed) {
        QTest::addRow("0x%x", id) << id << "EVENT_ERROR 1 0 handleSwUpdateResultUserConfirmed -";
    }
    const unsigned int plain[] = {0x10301, 0x10302, 0x1030e, 0x1030f, 0x10311,
                                  0x10312, 0x10315, 0x10318, 0x210,   0x12345};
    for (unsigned int id : plain) {
        QTest::addRow("0x%x", id) << id << "EVENT_ERROR 1 0 - -";
    }
    // Asked for like the others; the queue puts it on top for good.
    QTest::newRow("0x10206, the terminal closes") << 0x10206u << "EVENT_FATAL 6 0 - -";
    QTest::newRow("integrity error") << 0x1030au << "EVENT_ERROR 6 0 - -";
    QTest::newRow("integrity error of the antenna") << 0x1030bu << "EVENT_ERROR 6 0 - -";
}

// Neither the event's own words nor its time are used.
void WindowEventsTest::eventOfTheTerminalHasItsPopup()
{
    QFETCH(unsigned int, id);
    QFETCH(QString, arguments);
    fmmi_evt_t event = eventOf(id);
    event.time = 1420070400123LL;
    const QDateTime before = QDateTime::currentDateTime();
    emit model()->showPopup(event);
    QCOMPARE(queue().size(), 1);
    QCOMPARE(queue().first().eventId, id);
    QCOMPARE(argumentsOf(id), arguments);
    QCOMPARE(queue().first().text, model()->getEventText(id));
    QVERIFY(queue().first().timeStamp >= before);
}

void WindowEventsTest::eventOfTheTerminalKeepsItsSeverity()
{
    for (unsigned int id : {0x10301u, 0x10303u, 0x1030au}) {
        for (int severity : {EVENT_INFO, EVENT_WARNING, EVENT_ERROR, EVENT_FATAL}) {
            empty();
            emit model()->showPopup(eventOf(id, severity));
            QCOMPARE(int(queue().first().severity), severity);
        }
    }
}

void WindowEventsTest::softwareUpdateOnIsDropped()
{
    Messages messages;
    emit model()->showPopup(eventOf(EV_SW_UPDATE_ON));
    QCOMPARE(changesIn(messages), QStringList());
    QCOMPARE(queued(), QStringList());
}

// OK on the popup of a result, as soon as the user had time to read it.
void WindowEventsTest::confirmedResultIsToldToTheTerminal()
{
    makeVisibleWindow();
    forgetBus();
    emit model()->showPopup(eventOf(EV_SW_UPDATE_ROLLED_BACK));
    QTRY_VERIFY_WITH_TIMEOUT(popupScreen()->popupAllowedToBeClosedByUser(queue().first()), PATIENCE_MS);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(queued(), QStringList());
    Messages messages;
    QCoreApplication::sendPostedEvents();
    QCOMPARE(messages.countOfPrefix("Window::handleSwUpdateResultUserConfirmed()"), 1);
    QVERIFY(terminal().waitForWrite("cfg.status.sw_update.error", sim::Value::integer(0)));
}

void WindowEventsTest::integrityErrorCannotBeClosedAndIsNotConfirmed()
{
    makeVisibleWindow();
    forgetBus();
    emit model()->showPopup(eventOf(EV_SW_UPDATE_SW_INTEGRITY_ERROR));
    QTRY_VERIFY_WITH_TIMEOUT(popupScreen()->popupAllowedToBeClosedByUser(queue().first()), PATIENCE_MS);
    for (Qt::Key key :
         {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Space}) {
        QTest::keyClick(QApplication::focusWidget(), key);
    }
    QCoreApplication::sendPostedEvents();
    QCOMPARE(queued(), QStringList("EV_SW_UPDATE_SW_INTEGRITY_ERROR"));
    terminal().settle();
    QCOMPARE(terminal().writesOf("cfg.status.sw_update.error").size(), size_t(0));
}

// --- Ciphering, PIN, screenshot ----------------------------------------------------------------------------

void WindowEventsTest::ciphering_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("changes");
    QTest::newRow("off") << 0 << QStringList("+EV_AP_GUI_CIPHERING_OFF");
    QTest::newRow("on") << 3 << QStringList("-EV_AP_GUI_CIPHERING_OFF");
    for (int value : {-2, -1, 1, 2, 4}) {
        QTest::addRow("%d", value) << value << QStringList();
    }
}

void WindowEventsTest::ciphering()
{
    QFETCH(int, value);
    QFETCH(QStringList, changes);
    for (bool stands : {false, true}) { // before
        empty();
        if (stands) {
            add(EV_AP_GUI_CIPHERING_OFF);
        }
        Messages messages;
        emit model()->cipheringChanged(value);
        QCOMPARE(
            messages.count(
                QString("Window::handleCipheringChanged(int value): Start of function. value=%1").arg(value)),
            1);
        QCOMPARE(changesIn(messages), changes);
        const bool standsAfterwards = value == 0 || (value != 3 && stands);
        QCOMPARE(argumentsOf(EV_AP_GUI_CIPHERING_OFF),
                 QString(standsAfterwards ? "EVENT_WARNING 1 0 - -" : ""));
    }
}

void WindowEventsTest::acceptedPinRemovesTheWaitPopup()
{
    add(EV_AP_GUI_VALIDATING_PIN, EVENT_INFO);
    Messages messages;
    emit model()->signalPinAccepted();
    QCOMPARE(messages.count("Window::handleSignalPinAccepted(): About to remove popup"), 1);
    QCOMPARE(changesIn(messages), QStringList("-EV_AP_GUI_VALIDATING_PIN"));
    QCOMPARE(queued(), QStringList());
}

void WindowEventsTest::screenshotIsTakenOfTheCurrentScreen()
{
    m_window->showScreen(Screen::SCREEN_BATTERY, false);
    Messages messages;
    emit model()->signalTakeScreenshot();
    QCOMPARE(messages.countOfPrefix("ScreenPopup::closePopup()"), 1); // the screen saver would go first
    QCOMPARE(screenshots().size(), 1);
    QCOMPARE(screenshot().size(), QSize(256, 64));
    QCOMPARE(screenshot(),
             screen(Screen::SCREEN_BATTERY)->grab().toImage().convertToFormat(QImage::Format_RGB32));
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
}

void WindowEventsTest::screenshotShowsWhatIsBehindTheScreenSaver()
{
    m_window->showScreen(Screen::SCREEN_BATTERY, false);
    popupScreen()->showScreenSaver();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POPUP);
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(0)));
    forgetBus();
    emit model()->signalTakeScreenshot();
    QCOMPARE(queued(), QStringList());
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_BATTERY);
    QCOMPARE(screenshot(),
             screen(Screen::SCREEN_BATTERY)->grab().toImage().convertToFormat(QImage::Format_RGB32));
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
}

// A popup on display stays for two seconds whoever removes it, and the screen saver is one.
void WindowEventsTest::screenshotOfAYoungScreenSaverIsEmpty()
{
    makeVisibleWindow();
    m_window->showScreen(Screen::SCREEN_BATTERY, false);
    popupScreen()->showScreenSaver();
    emit model()->signalTakeScreenshot();
    QCOMPARE(queued(), QStringList(SCREEN_SAVER));
    QImage black(256, 64, QImage::Format_RGB32);
    black.fill(Qt::black);
    QCOMPARE(screenshot(), black);
    QTRY_COMPARE_WITH_TIMEOUT(queued(), QStringList(), PATIENCE_MS);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_BATTERY);
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowEventsTest>(argc, argv);
}

#include "window_events_test.moc"
