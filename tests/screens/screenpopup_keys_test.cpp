// The keys of the popup screen: which key closes which kind of popup, the grace, the functions that run, and
// that nothing else happens.
#include "screens/popupfixture.h"

#include "screens/screenstatus.h"

#include "support/patience.h"

using namespace windowfixture;

namespace {

const int OLD_MS = 1000; // beyond the grace
const char OK_FUNCTION[] = "handleSwUpdateResultUserConfirmed";
const char OK_CALLED[] = "Window::handleSwUpdateResultUserConfirmed(): Start of function.";
const char CANCEL_FUNCTION[] = "handleSignalPinAccepted";
const char CANCEL_CALLED[] = "Window::handleSignalPinAccepted(): About to remove popup";

const struct {
    const char* name;
    Qt::Key key;
    const char* handler;
} KEYS[] = {
    {"OK", Qt::Key_Return, "ScreenPopup::keyOkClicked()"},
    {"left", Qt::Key_Left, "ScreenPopup::keyLeftClicked()"},
    {"right", Qt::Key_Right, "ScreenPopup::keyRightClicked()"},
    {"up", Qt::Key_Up, "ScreenPopup::keyUpClicked()"},
    {"down", Qt::Key_Down, "ScreenPopup::keyDownClicked()"},
};

// Kind, and the keys that close it in the order above.
const struct {
    POPUP_CLOSE_HANDLING_ENUM kind;
    bool closes[5];
} CLOSED_BY[] = {
    {POPUP_CLOSE_AUTO, {false, false, false, false, false}},
    {POPUP_CLOSE_OK, {true, false, false, false, false}},
    {POPUP_CLOSE_AUTO_OR_OK, {true, false, false, false, false}},
    {POPUP_CLOSE_CANCEL, {false, true, false, false, false}},
    {POPUP_CLOSE_OK_OR_CANCEL, {true, true, false, false, false}},
    {POPUP_CLOSE_ANY_KEY, {true, true, true, true, true}},
    {POPUP_CLOSE_NOT_BY_USER, {false, false, false, false, false}},
};

int timeOf(POPUP_CLOSE_HANDLING_ENUM kind)
{
    return kind == POPUP_CLOSE_AUTO || kind == POPUP_CLOSE_AUTO_OR_OK ? 60000 : 0;
}

popup_event_t withFunctions(popup_event_t popup)
{
    popup.okFunction = OK_FUNCTION;
    popup.cancelFunction = CANCEL_FUNCTION;
    return popup;
}

} // namespace

class ScreenPopupKeysTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetForPopups(); }

    void keyAndKind_data();
    void keyAndKind();
    void keyAndKindInTheGrace_data();
    void keyAndKindInTheGrace();
    void eventsOfTheUserHaveNoGrace_data();
    void eventsOfTheUserHaveNoGrace();
    void graceIsLogged();
    void graceEndsAfterSevenHundredMilliseconds();
    void functionRunsQueuedAndAfterTheClosing();
    void functionOfTheOtherKeyDoesNotRun();
    void functionDoesNotRunInTheGrace();
    void withoutAFunctionOnlyThePopupGoes();
    void keyClosesOnlyTheFirst();
    void keysOnAnEmptyList_data();
    void keysOnAnEmptyList();
    void noKeyReachesTheScreenBelow();
    void longOkAndUnknownKeysDoNothing();
    void keyOnAPopupOfTheProgramRestartsTheSaver();
    void keysInTheKeyIgnoreDoNothing();
};

void ScreenPopupKeysTest::keyAndKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("closes");
    for (const auto& row : CLOSED_BY) {
        for (int key = 0; key < 5; ++key) {
            QTest::newRow(qPrintable(QString("%1 on kind %2").arg(KEYS[key].name).arg(row.kind)))
                << int(row.kind) << key << row.closes[key];
        }
    }
}

void ScreenPopupKeysTest::keyAndKind()
{
    QFETCH(int, kind);
    QFETCH(int, key);
    QFETCH(bool, closes);
    PopupFixture f;
    const auto closeHandling = static_cast<POPUP_CLOSE_HANDLING_ENUM>(kind);
    f.add(A, EVENT_WARNING, closeHandling, timeOf(closeHandling), OLD_MS);
    QVERIFY(f.shown());
    Messages messages;
    f.press(KEYS[key].key);
    QCOMPARE(f.list(), closes ? QString() : QString("A"));
    QCOMPARE(f.shown(), !closes);
    QCOMPARE(messages.count(QString(KEYS[key].handler) + ". Do nothing."), closes ? 0 : 1);
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
}

void ScreenPopupKeysTest::keyAndKindInTheGrace_data()
{
    keyAndKind_data();
}

// The grace holds for OK and left alone.
void ScreenPopupKeysTest::keyAndKindInTheGrace()
{
    QFETCH(int, kind);
    QFETCH(int, key);
    QFETCH(bool, closes);
    const bool graceHolds = KEYS[key].key == Qt::Key_Return || KEYS[key].key == Qt::Key_Left;
    PopupFixture f;
    const auto closeHandling = static_cast<POPUP_CLOSE_HANDLING_ENUM>(kind);
    f.add(A, EVENT_WARNING, closeHandling, timeOf(closeHandling), -60000); // in its grace for a minute
    f.press(KEYS[key].key);
    QCOMPARE(f.list(), closes && !graceHolds ? QString() : QString("A"));
}

void ScreenPopupKeysTest::eventsOfTheUserHaveNoGrace_data()
{
    QTest::addColumn<unsigned int>("eventId");
    QTest::addColumn<bool>("hasGrace");
    QTest::newRow("no bundles") << unsigned(EV_AP_GUI_NO_BUNDLES_DEFINED) << false;
    QTest::newRow("custom text") << unsigned(EV_AP_GUI_CUSTOM_TEXT) << false;
    QTest::newRow("screen saver") << unsigned(EV_AP_GUI_SCREEN_SAVER) << false;
    QTest::newRow("no events") << unsigned(EV_AP_GUI_NO_EVENTS) << true;
    QTest::newRow("wrong PIN") << unsigned(EV_AP_GUI_WRONG_PIN) << true;
    QTest::newRow("an id without a row") << 0x7654321u << true;
}

void ScreenPopupKeysTest::eventsOfTheUserHaveNoGrace()
{
    QFETCH(unsigned int, eventId);
    QFETCH(bool, hasGrace);
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Left}) {
        PopupFixture f;
        const popup_event_t popup = popupOf(eventId, EVENT_INFO, POPUP_CLOSE_OK_OR_CANCEL, 0, -60000);
        f.screen->addEvent(popup);
        QCOMPARE(f.colour(), hasGrace ? QString("black") : QString("white"));
        QCOMPARE(f.screen->popupAllowedToBeClosedByUser(popup), !hasGrace);
        f.press(key);
        QCOMPARE(f.screen->events().isEmpty(), !hasGrace);
    }
}

void ScreenPopupKeysTest::graceIsLogged()
{
    PopupFixture f;
    Messages messages;
    const QString line =
        "ScreenPopup::popupAllowedToBeClosedByUser(EV_AP_GUI_CONN_FAILED): Popup seems to be "
        "created by (event) system=> Ignoring key press, as user needs to read it.";
    QVERIFY(f.screen->popupAllowedToBeClosedByUser(popupOf(A, EVENT_INFO, POPUP_CLOSE_OK, 0, 700)));
    QCOMPARE(messages.count(line), 0);
    QVERIFY(!f.screen->popupAllowedToBeClosedByUser(popupOf(A, EVENT_INFO, POPUP_CLOSE_OK, 0, -1000)));
    QCOMPARE(messages.count(line), 1);
}

// By the event's own time: pressed again and again, OK works from 700 ms on.
void ScreenPopupKeysTest::graceEndsAfterSevenHundredMilliseconds()
{
    PopupFixture f;
    const popup_event_t popup = popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK);
    f.screen->addEvent(popup);
    QElapsedTimer patience;
    patience.start();
    while (!f.screen->events().isEmpty() && patience.elapsed() < PATIENCE_MS) {
        f.press(Qt::Key_Return);
    }
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY(popup.timeStamp.msecsTo(QDateTime::currentDateTime()) >= 700);
}

void ScreenPopupKeysTest::functionRunsQueuedAndAfterTheClosing()
{
    const struct {
        Qt::Key key;
        POPUP_CLOSE_HANDLING_ENUM kind;
        const char* called;
    } rows[] = {
        {Qt::Key_Return, POPUP_CLOSE_OK, OK_CALLED},
        {Qt::Key_Return, POPUP_CLOSE_AUTO_OR_OK, OK_CALLED},
        {Qt::Key_Return, POPUP_CLOSE_OK_OR_CANCEL, OK_CALLED},
        {Qt::Key_Return, POPUP_CLOSE_ANY_KEY, OK_CALLED},
        {Qt::Key_Left, POPUP_CLOSE_CANCEL, CANCEL_CALLED},
        {Qt::Key_Left, POPUP_CLOSE_OK_OR_CANCEL, CANCEL_CALLED},
        {Qt::Key_Left, POPUP_CLOSE_ANY_KEY, CANCEL_CALLED},
    };
    for (const auto& row : rows) {
        PopupFixture f;
        f.screen->addEvent(withFunctions(popupOf(A, EVENT_WARNING, row.kind, timeOf(row.kind), OLD_MS)));
        Messages messages;
        f.screen->setFocus();
        if (row.key == Qt::Key_Return) {
            f.screen->keyOkClicked();
        } else {
            f.screen->keyLeftClicked();
        }
        QVERIFY(f.screen->events().isEmpty());
        QCOMPARE(messages.count(row.called), 0);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(messages.count(OK_CALLED), row.called == OK_CALLED ? 1 : 0);
        QCOMPARE(messages.count(CANCEL_CALLED), row.called == CANCEL_CALLED ? 1 : 0);
    }
}

void ScreenPopupKeysTest::functionOfTheOtherKeyDoesNotRun()
{
    for (Qt::Key key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
        PopupFixture f;
        f.screen->addEvent(withFunctions(popupOf(A, EVENT_WARNING, POPUP_CLOSE_ANY_KEY, 0, OLD_MS)));
        Messages messages;
        f.press(key);
        QCoreApplication::sendPostedEvents();
        QVERIFY(f.screen->events().isEmpty());
        QCOMPARE(messages.count(OK_CALLED), 0);
        QCOMPARE(messages.count(CANCEL_CALLED), 0);
    }
}

void ScreenPopupKeysTest::functionDoesNotRunInTheGrace()
{
    PopupFixture f;
    f.screen->addEvent(withFunctions(popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL, 0, -60000)));
    Messages messages;
    f.press(Qt::Key_Return);
    f.press(Qt::Key_Left);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(messages.count(OK_CALLED), 0);
    QCOMPARE(messages.count(CANCEL_CALLED), 0);
    QCOMPARE(f.list(), QString("A"));
}

void ScreenPopupKeysTest::withoutAFunctionOnlyThePopupGoes()
{
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Left}) {
        PopupFixture f;
        f.add(A, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL, 0, OLD_MS);
        Messages messages;
        f.press(key);
        QCoreApplication::sendPostedEvents();
        QVERIFY(f.screen->events().isEmpty());
        QCOMPARE(messages.count(OK_CALLED) + messages.count(CANCEL_CALLED), 0);
        QVERIFY(messages.texts().filter("QMetaObject").isEmpty());
    }
}

void ScreenPopupKeysTest::keyClosesOnlyTheFirst()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS);
    f.add(B, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS);
    f.press(Qt::Key_Return);
    QCOMPARE(f.list(), QString("B"));
    QVERIFY(f.shown());
}

void ScreenPopupKeysTest::keysOnAnEmptyList_data()
{
    QTest::addColumn<int>("key");
    for (int key = 0; key < 5; ++key) {
        QTest::newRow(KEYS[key].name) << key;
    }
}

// It cannot happen to a user; the screen repairs itself, and the key is spent.
void ScreenPopupKeysTest::keysOnAnEmptyList()
{
    QFETCH(int, key);
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_POPUP, true);
    QVERIFY(f.shown());
    Messages messages;
    f.press(KEYS[key].key);
    QCOMPARE(messages.count(QString(KEYS[key].handler) +
                            ": ERROR!!! eventList is Empty. About to run showNextEvent()"),
             1);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void ScreenPopupKeysTest::noKeyReachesTheScreenBelow()
{
    PopupFixture f;
    auto* const status = static_cast<ScreenStatus*>(f.window.getScreenById(Screen::SCREEN_STATUS));
    status->setFocusFrame(ScreenStatus::FOCUS_BATTERY);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS);
    for (const auto& row : KEYS) {
        f.press(row.key);
        QVERIFY(f.shown());
        QCOMPARE(status->getFocusState(), ScreenStatus::FOCUS_BATTERY);
    }
}

void ScreenPopupKeysTest::longOkAndUnknownKeysDoNothing()
{
    for (const auto& row : CLOSED_BY) {
        PopupFixture f;
        f.add(A, EVENT_WARNING, row.kind, timeOf(row.kind), OLD_MS);
        for (Qt::Key key : {Qt::Key_Space, Qt::Key_A, Qt::Key_Escape, Qt::Key_Enter}) {
            f.press(key);
            QCOMPARE(f.list(), QString("A"));
        }
    }
}

void ScreenPopupKeysTest::keyOnAPopupOfTheProgramRestartsTheSaver()
{
    for (const auto& row : KEYS) {
        PopupFixture f;
        f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS);
        f.saver()->stop();
        terminal().clearLogs();
        Messages messages;
        f.press(row.key);
        QVERIFY(f.saver()->isActive());
        QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
        QCOMPARE(messages.countOfPrefix("ScreenPopup::showNextEvent()"), 0); // and nothing more
    }
}

// A press that was meant for the vanished popup does not act on the next one.
void ScreenPopupKeysTest::keysInTheKeyIgnoreDoNothing()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_ANY_KEY, 0, OLD_MS);
    model()->startIgnoreGlobalKeyPress();
    for (const auto& row : KEYS) {
        QVERIFY(Access::ignoreGlobalKeyPressTimer().isActive());
        f.press(row.key);
        QCOMPARE(f.list(), QString("A"));
        model()->startIgnoreGlobalKeyPress();
    }
    model()->stopIgnoreGlobalKeyPress();
    f.press(Qt::Key_Up);
    QVERIFY(f.screen->events().isEmpty());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPopupKeysTest>(argc, argv);
}
#include "screenpopup_keys_test.moc"
