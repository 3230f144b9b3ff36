// The entry of the PIN: digits and cursor by keys, what can be read of them, and the two outcomes.
#include "screens/pagefixture.h"

#include "screens/screenenterpin.h"

#include "support/patience.h"

#include <thread>

using namespace windowfixture;

namespace {

QString blind(int count)
{
    return QString("<font color=\"black\">0</font>").repeated(count);
}

class PinFixture : public PageFixture {
public:
    PinFixture() : PageFixture(Screen::SCREEN_ENTER_PIN), screen(static_cast<ScreenEnterPin*>(page)) {}

    void press(Qt::Key key, int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            PageFixture::press(key);
        }
    }
    // From the first digit to the last.
    void enter(const QList<int>& digits)
    {
        for (int i = 0; i < digits.size(); ++i) {
            press(Qt::Key_Up, digits.at(i));
            if (i < 3) {
                press(Qt::Key_Right);
            }
        }
    }
    QString message() const { return text("pMessageLabel"); }
    QString captions() const
    {
        return (shown("pLeftLabel") ? text("pLeftLabel") : "-") + "|" +
               (shown("pRightLabel") ? text("pRightLabel") : "-");
    }
    Screen::SCREEN_ID_ENUM current() const { return window.getCurrentScreenId(); }
    // Where the text behind the blind digits begins: behind the first wide gap of the message's first line.
    int startOfRetries() const
    {
        QCoreApplication::sendPostedEvents();
        const QImage image = picture();
        const QRect line = label("pMessageLabel")->geometry();
        const int height = QFontMetrics(label("pMessageLabel")->font()).height();
        int lastLit = -1;
        for (int x = line.left(); x <= line.right(); ++x) {
            bool lit = false;
            for (int y = line.top(); y < line.top() + height; ++y) {
                lit = lit || image.pixel(x, y) != qRgb(0, 0, 0);
            }
            if (lit && lastLit >= 0 && x - lastLit > 2 * blindWidth()) {
                return x;
            }
            if (lit) {
                lastLit = x;
            }
        }
        return -1;
    }
    int blindWidth() const { return qtcompat::textWidth(QFontMetrics(label("pMessageLabel")->font()), "0"); }

    ScreenEnterPin* const screen;
};

} // namespace

class ScreenEnterPinTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();

    void startsWithFourZeros();
    void upAndDownTurnTheDigit_data();
    void upAndDownTurnTheDigit();
    void upAfterNineGivesZero();
    void downAfterZeroGivesNine();
    void onlyTheDigitAtTheCursorTurns();
    void rightAndOkMoveTheCursor_data();
    void rightAndOkMoveTheCursor();
    void rightOnTheLastDigitOnlyRedraws();
    void leftMovesTheCursorBack();
    void leftOnTheFirstDigitLeavesTheScreen();
    void longOkOnlyLogs();

    void textByPosition_data();
    void textByPosition();
    void retriesText_data();
    void retriesText();
    void retriesOfAnotherThreadArriveQueued();
    void blindDigitsAreNotSeen();
    void blindDigitsHoldTheirWidth();
    void showRefreshesTheText();
    void languageChange();
    void untranslatedRetriesText();

    void resetScreenBeginsAnew();
    void eachShowScreenBeginsAnew();

    void okOnTheLastDigitSendsThePin();
    void pinKeepsItsLeadingZeros();
    void keysGoToTheWaitPopup();
    void wrongPin();
    void wrongPinWithoutThePopup();
    void rightPin();
    void simThatNeedsItsPinBeginsAnew();

    void nothingIsCutOrOverlaps_data();
    void nothingIsCutOrOverlaps();
};

// Each test begins without a SIM and without a check under way.
void ScreenEnterPinTest::cleanup()
{
    Access::pinTimer().stop();
    if (model()->getSimStatus() != SIM_STATUS_UNKNOWN) {
        QVERIFY(setSim(SIM_STATUS_UNKNOWN));
    }
}

// --- Keys --------------------------------------------------------------------------------------------------

void ScreenEnterPinTest::startsWithFourZeros()
{
    PinFixture f;
    QCOMPARE(f.screen->getNumOfDigits(), 4);
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
    QCOMPARE(f.captions(), QString("Cancel|-"));
}

void ScreenEnterPinTest::upAndDownTurnTheDigit_data()
{
    QTest::addColumn<int>("up");
    QTest::addColumn<int>("down");
    QTest::addColumn<QString>("pin");
    QTest::newRow("up") << 1 << 0 << "1000";
    QTest::newRow("up to nine") << 9 << 0 << "9000";
    QTest::newRow("up and down") << 5 << 2 << "3000";
    QTest::newRow("down") << 0 << 1 << "9000";
    QTest::newRow("down to one") << 0 << 9 << "1000";
    QTest::newRow("around") << 12 << 0 << "2000";
    QTest::newRow("around downwards") << 0 << 10 << "0000";
}

void ScreenEnterPinTest::upAndDownTurnTheDigit()
{
    QFETCH(int, up);
    QFETCH(int, down);
    PinFixture f;
    f.press(Qt::Key_Up, up);
    f.press(Qt::Key_Down, down);
    QTEST(f.screen->getEnteredPin(), "pin");
    QCOMPARE(f.message(), "Enter PIN: <u>" + f.screen->getEnteredPin().left(1) + "</u>" + blind(6));
}

void ScreenEnterPinTest::upAfterNineGivesZero()
{
    PinFixture f;
    f.press(Qt::Key_Up, 9);
    QVERIFY(f.message().contains("<u>9</u>"));
    f.press(Qt::Key_Up);
    QVERIFY(f.message().contains("<u>0</u>"));
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
}

void ScreenEnterPinTest::downAfterZeroGivesNine()
{
    PinFixture f;
    f.press(Qt::Key_Down);
    QVERIFY(f.message().contains("<u>9</u>"));
    QCOMPARE(f.screen->getEnteredPin(), QString("9000"));
}

void ScreenEnterPinTest::onlyTheDigitAtTheCursorTurns()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    QCOMPARE(f.screen->getEnteredPin(), QString("1234"));
    f.press(Qt::Key_Left, 2);
    f.press(Qt::Key_Down, 5);
    QCOMPARE(f.screen->getEnteredPin(), QString("1734"));
}

void ScreenEnterPinTest::rightAndOkMoveTheCursor_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("right") << int(Qt::Key_Right);
    QTest::newRow("OK") << int(Qt::Key_Return);
}

void ScreenEnterPinTest::rightAndOkMoveTheCursor()
{
    QFETCH(int, key);
    PinFixture f;
    for (int position = 1; position <= 3; ++position) {
        f.press(static_cast<Qt::Key>(key));
        QCOMPARE(f.message(),
                 "Enter PIN: " + QString("*").repeated(position) + "<u>0</u>" + blind(6 - position));
    }
    QCOMPARE(f.current(), Screen::SCREEN_ENTER_PIN);
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
}

void ScreenEnterPinTest::rightOnTheLastDigitOnlyRedraws()
{
    PinFixture f;
    f.enter({0, 0, 0, 7});
    f.label("pMessageLabel")->setText("old");
    terminal().settle();
    terminal().clearLogs();
    f.press(Qt::Key_Right);
    QCOMPARE(f.message(), "Enter PIN: ***<u>7</u>" + blind(3));
    QCOMPARE(f.screen->getEnteredPin(), QString("0007"));
    QVERIFY(!f.popups()->eventExistInPopupList(EV_AP_GUI_VALIDATING_PIN));
    QVERIFY(passBus());
    QCOMPARE(int(terminal().writesOf("ram.usim.pin").size()), 0);
}

void ScreenEnterPinTest::leftMovesTheCursorBack()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    for (int position = 2; position >= 0; --position) {
        f.press(Qt::Key_Left);
        QCOMPARE(f.message(), "Enter PIN: " + QString("*").repeated(position) +
                                  QString("<u>%1</u>").arg(position + 1) + blind(6 - position));
        QCOMPARE(f.current(), Screen::SCREEN_ENTER_PIN);
    }
    QCOMPARE(f.screen->getEnteredPin(), QString("1234"));
}

// "... and the digits stay as they were until the next resetScreen()."
void ScreenEnterPinTest::leftOnTheFirstDigitLeavesTheScreen()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.press(Qt::Key_Left, 3);
    f.label("pMessageLabel")->setText("old");
    f.press(Qt::Key_Left);
    QCOMPARE(f.current(), Screen::SCREEN_STATUS);
    QVERIFY(f.page->isHidden());
    QCOMPARE(f.screen->getEnteredPin(), QString("1234"));
    QCOMPARE(f.message(), "Enter PIN: <u>1</u>" + blind(6)); // redrawn all the same
    f.screen->resetScreen();
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
}

void ScreenEnterPinTest::longOkOnlyLogs()
{
    PinFixture f;
    Messages messages;
    f.press(Qt::Key_Space);
    QCOMPARE(messages.count("Button LONG OK not defined on this screen."), 1);
    QCOMPARE(f.current(), Screen::SCREEN_ENTER_PIN);
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
}

// --- Text --------------------------------------------------------------------------------------------------

void ScreenEnterPinTest::textByPosition_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("captions");
    QTest::newRow("first") << 0 << "Enter PIN: <u>1</u>" + blind(6) << "Cancel|-";
    QTest::newRow("second") << 1 << "Enter PIN: *<u>2</u>" + blind(5) << " |-";
    QTest::newRow("third") << 2 << "Enter PIN: **<u>3</u>" + blind(4) << " |-";
    QTest::newRow("last") << 3 << "Enter PIN: ***<u>4</u>" + blind(3) << " |OK";
}

void ScreenEnterPinTest::textByPosition()
{
    QFETCH(int, position);
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.press(Qt::Key_Left, 3 - position);
    QTEST(f.message(), "text");
    QTEST(f.captions(), "captions");
}

void ScreenEnterPinTest::retriesText_data()
{
    QTest::addColumn<int>("retries");
    QTest::addColumn<QString>("text");
    QTest::newRow("4") << 4 << "";
    QTest::newRow("with 3 no text stands") << 3 << "";
    QTest::newRow("with 2 it stands") << 2 << "(Retries left: 2)";
    QTest::newRow("1") << 1 << "(Retries left: 1)";
    QTest::newRow("0") << 0 << "(Retries left: 0)";
    QTest::newRow("-1") << -1 << "(Retries left: -1)";
}

void ScreenEnterPinTest::retriesText()
{
    QFETCH(int, retries);
    QFETCH(QString, text);
    PinFixture f;
    model()->setSimPinRetriesLeft(retries);
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6) + text);
    f.press(Qt::Key_Right, 3);
    QCOMPARE(f.message(), "Enter PIN: ***<u>0</u>" + blind(3) + text);
    model()->setSimPinRetriesLeft(3);
    QCOMPARE(f.message(), "Enter PIN: ***<u>0</u>" + blind(3));
}

void ScreenEnterPinTest::retriesOfAnotherThreadArriveQueued()
{
    PinFixture f;
    std::thread([] { model()->setSimPinRetriesLeft(1); }).join();
    QVERIFY(!f.message().contains("Retries"));
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.message().endsWith("(Retries left: 1)"));
}

void ScreenEnterPinTest::blindDigitsAreNotSeen()
{
    PinFixture f;
    const QRect text = f.label("pMessageLabel")->geometry();
    const int end =
        text.left() + qtcompat::textWidth(QFontMetrics(f.label("pMessageLabel")->font()), "Enter PIN: 0");
    const QImage image = f.picture();
    int lit = 0;
    for (int y = text.top(); y <= text.bottom(); ++y) {
        for (int x = text.left(); x <= text.right(); ++x) {
            const bool black = image.pixel(x, y) == qRgb(0, 0, 0);
            lit += !black;
            QVERIFY(black || x < end);
        }
    }
    QVERIFY(lit > 50);
}

// In a face where the asterisk is as wide as a digit the text behind them stands still.
void ScreenEnterPinTest::blindDigitsHoldTheirWidth()
{
    PinFixture f;
    model()->setLanguage(LANG_CHINESE);
    model()->setSimPinRetriesLeft(2);
    const int start = f.startOfRetries();
    QVERIFY(start > 0);
    for (int position = 1; position <= 3; ++position) {
        f.press(Qt::Key_Right);
        QCOMPARE(f.startOfRetries(), start);
    }
}

void ScreenEnterPinTest::showRefreshesTheText()
{
    PinFixture f;
    f.page->hide();
    f.label("pMessageLabel")->setText("old");
    f.page->show();
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
}

void ScreenEnterPinTest::languageChange()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    Brackets brackets;
    QCOMPARE(f.message(), "[ScreenEnterPin|Enter PIN: ]***<u>4</u>" + blind(3));
    QCOMPARE(f.captions(), QString(" |[Shared_translations|OK]")); // not those of the base class
    f.press(Qt::Key_Left, 3);
    QCOMPARE(f.captions(), QString("[Shared_translations|Cancel]|-"));
}

void ScreenEnterPinTest::untranslatedRetriesText()
{
    PinFixture f;
    model()->setSimPinRetriesLeft(2);
    Brackets brackets;
    QCOMPARE(f.message(), "[ScreenEnterPin|Enter PIN: ]<u>0</u>" + blind(6) + "(Retries left: 2)");
}

// --- Lifecycle ---------------------------------------------------------------------------------------------

void ScreenEnterPinTest::resetScreenBeginsAnew()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.screen->resetScreen();
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
    QCOMPARE(f.captions(), QString("Cancel|-"));
}

void ScreenEnterPinTest::eachShowScreenBeginsAnew()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.window.showScreen(Screen::SCREEN_STATUS, false);
    QCOMPARE(f.screen->getEnteredPin(), QString("1234"));
    f.window.showScreen(Screen::SCREEN_ENTER_PIN, false);
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
}

// --- The check ---------------------------------------------------------------------------------------------

void ScreenEnterPinTest::okOnTheLastDigitSendsThePin()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.label("pMessageLabel")->setText("old");
    terminal().settle();
    terminal().clearLogs();
    Messages messages;
    f.press(Qt::Key_Return);
    QCOMPARE(messages.count("About to run statusUpdater->validatePin()"), 1);
    QVERIFY(terminal().waitForWrite("ram.usim.pin", sim::Value::text("1234")));
    QCOMPARE(int(terminal().writesOf("ram.usim.pin").size()), 1);
    QVERIFY(Access::pinTimer().isActive());
    QCOMPARE(f.message(), "Enter PIN: ***<u>4</u>" + blind(3)); // the cursor stays
    QCOMPARE(f.popups()->events().size(), 1);
    const popup_event_t popup = f.popups()->events().first();
    QCOMPARE(popup.eventId, uint32_t(EV_AP_GUI_VALIDATING_PIN));
    QCOMPARE(popup.severity, EVENT_INFO);
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_NOT_BY_USER);
    QCOMPARE(popup.showForMilliseconds, 0);
    QVERIFY(!popup.okFunction);
    QVERIFY(!popup.cancelFunction);
    QCOMPARE(popup.text, model()->getEventText(EV_AP_GUI_VALIDATING_PIN));
    QCOMPARE(f.current(), Screen::SCREEN_POPUP);
}

void ScreenEnterPinTest::pinKeepsItsLeadingZeros()
{
    PinFixture f;
    f.enter({0, 0, 9, 0});
    terminal().settle();
    terminal().clearLogs();
    f.press(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite("ram.usim.pin", sim::Value::text("0090")));
}

void ScreenEnterPinTest::keysGoToTheWaitPopup()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.press(Qt::Key_Return);
    Access::pinTimer().stop(); // the answer never comes
    QCOMPARE(f.current(), Screen::SCREEN_POPUP);
    for (Qt::Key key :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Return, Qt::Key_Space}) {
        f.press(key);
        QCOMPARE(f.current(), Screen::SCREEN_POPUP);
        QCOMPARE(f.screen->getEnteredPin(), QString("1234"));
        QCOMPARE(f.message(), "Enter PIN: ***<u>4</u>" + blind(3));
    }
    QVERIFY(f.popups()->eventExistInPopupList(EV_AP_GUI_VALIDATING_PIN));
}

// The whole way with the model's own time; the SIM still asks for its PIN when that is over.
void ScreenEnterPinTest::wrongPin()
{
    PinFixture f;
    QVERIFY(setSim(SIM_PIN_NEEDED));
    f.enter({1, 2, 3, 4});
    f.press(Qt::Key_Return);
    QVERIFY(QTest::qWaitFor([&f] { return f.popups()->eventExistInPopupList(EV_AP_GUI_WRONG_PIN); },
                            PATIENCE_MS));
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
    QCOMPARE(f.captions(), QString("Cancel|-"));
    // The popup of the wait has had its minimum time by then, and goes at once.
    QCOMPARE(f.popups()->events().size(), 1);
    const popup_event_t popup = f.popups()->events().first();
    QCOMPARE(popup.eventId, uint32_t(EV_AP_GUI_WRONG_PIN));
    QCOMPARE(popup.severity, EVENT_WARNING);
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_OK);
    QVERIFY(!popup.okFunction);
    QVERIFY(!popup.cancelFunction);
    // OK leads back to a new entry; its first presses may come too early.
    QVERIFY(QTest::qWaitFor(
        [&f] {
            if (f.current() == Screen::SCREEN_POPUP) {
                f.press(Qt::Key_Return);
            }
            return f.current() == Screen::SCREEN_ENTER_PIN;
        },
        20000));
    QVERIFY(f.popups()->events().isEmpty());
    QCOMPARE(f.message(), "Enter PIN: <u>0</u>" + blind(6));
}

void ScreenEnterPinTest::wrongPinWithoutThePopup()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    emit model()->signalWrongPin();
    QCOMPARE(f.popups()->events().size(), 1);
    QCOMPARE(f.popups()->events().first().eventId, uint32_t(EV_AP_GUI_WRONG_PIN));
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
}

void ScreenEnterPinTest::rightPin()
{
    PinFixture f;
    QVERIFY(setSim(SIM_PIN_NEEDED));
    f.enter({1, 2, 3, 4});
    f.press(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite("ram.usim.pin", sim::Value::text("1234")));
    Access::pinTimer().stop(); // until the SIM has answered, however long a busy machine takes
    QVERIFY(setSim(SIM_READY));
    model()->handlePinTimeout();
    QVERIFY(QTest::qWaitFor([&f] { return f.current() == Screen::SCREEN_STATUS; }, PATIENCE_MS));
    QVERIFY(f.popups()->events().isEmpty());
    QVERIFY(f.page->isHidden());
}

void ScreenEnterPinTest::simThatNeedsItsPinBeginsAnew()
{
    PinFixture f;
    f.enter({1, 2, 3, 4});
    f.window.showScreen(Screen::SCREEN_STATUS, false);
    QVERIFY(setSim(SIM_PIN_NEEDED));
    QVERIFY(QTest::qWaitFor([&f] { return f.current() == Screen::SCREEN_ENTER_PIN; }, PATIENCE_MS));
    QCOMPARE(f.screen->getEnteredPin(), QString("0000"));
    QCOMPARE(f.window.focusWidget(), static_cast<QWidget*>(f.page));
}

// --- The whole ---------------------------------------------------------------------------------------------

void ScreenEnterPinTest::nothingIsCutOrOverlaps_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("retries");
    for (int language : {int(LANG_ENGLISH), int(LANG_CHINESE)}) {
        for (int retries : {3, 2}) {
            for (int position = 0; position < 4; ++position) {
                QTest::addRow("language %d, position %d, retries %d", language, position, retries)
                    << language << position << retries;
            }
        }
    }
}

void ScreenEnterPinTest::nothingIsCutOrOverlaps()
{
    QFETCH(int, language);
    QFETCH(int, position);
    QFETCH(int, retries);
    PinFixture f;
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    model()->setSimPinRetriesLeft(retries);
    f.press(Qt::Key_Right, position);
    QCOMPARE(f.flaws(), QString());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenEnterPinTest>(argc, argv);
}

#include "screenenterpin_test.moc"
