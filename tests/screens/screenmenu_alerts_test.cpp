// The alerts of the menu: how their list follows the alert log of the terminal, where the cursor goes, and
// what a press on one shows.
#include "screens/menufixture.h"

#include "model/event_ids.h"

#include <QDateTime>

using namespace windowfixture;

namespace {

const Alert OLD = {EV_ALARM_TEMPERATURE_TOO_LOW, 0x2a, 1600000000};
const Alert MIDDLE = {EV_ALARM_TEMPERATURE_TOO_HIGH, 0, 1650000000};
const Alert NEW = {EV_ALARM_ANTENNA_FAILURE, 7, 1700000000};
const char* const OLD_TEXT = "Temperature too low\nLet terminal warm up";
const char* const MIDDLE_TEXT = "Temperature too high\nLet terminal cool down";
const char* const NEW_TEXT = "Antenna failure\nContact help desk";

const char* const COLLAPSING =
    "ScreenMenu::updateAlertList(): No current items in the alert list. Now collapsing Alerts.";

// Alerts with these many different ids, and what the menu makes of them.
std::vector<Alert> manyAlerts(int count)
{
    std::vector<Alert> alerts;
    for (int i = 0; i < count; ++i) {
        alerts.push_back({0x5000 + i, i, 1600000000 + i, "Alert " + std::to_string(i)});
    }
    return alerts;
}

} // namespace

class ScreenMenuAlertsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetMenu(); }

    // The list
    void listFollowsTheAlertLogNewestFirst();
    void rowsHoldTheAlertsIdentity();
    void unknownAlertBearsTheWordsOfTheLog();
    void thereMayBeAnyNumber_data();
    void thereMayBeAnyNumber();
    void listIsTheNextOfAWindowBuiltLater();
    void subRowsOfAnAlertGoWithIt();
    void nullsInTheListAreLogged();

    // The cursor
    void unseenListPutsTheCursorOnItsLastRow();
    void cursorStaysWhileTheUserLooks();
    void cursorStaysOnItsAlertWhileTheUserLooks();
    void twinsAreToldApartByTheirTime();
    void alertThatVanishesUnderTheCursorCollapsesAlerts();
    void lastAlertThatVanishesUnderTheCursorCollapsesAlerts();
    void lastAlertThatVanishesUnseenCollapsesAlerts();
    void openListStaysOpen();

    // The key on the warning sign
    void warningSignWithOneAlert_data();
    void warningSignWithOneAlert();
    void warningSignWithManyAlerts_data();
    void warningSignWithManyAlerts();
    void warningSignWithoutRows();

    // Presses
    void noAlertsPopup();
    void warningsWithoutRowsSaySo();
    void alertsOpenAndCloseWithWarnings();
    void pressShowsTheAlertsTimeAndId();
    void alertBefore2013ShowsNoTime();
    void idsAreUpperCaseHexadecimal();
    void oldAlertClosesAtOnce();
    void pressOfAnAlertLeavesTheCursor();
};

// --- The list ----------------------------------------------------------------------------------------------

void ScreenMenuAlertsTest::listFollowsTheAlertLogNewestFirst()
{
    MenuFixture f;
    QCOMPARE(f.alerts(), QStringList());
    setAlertLog({OLD, NEW, MIDDLE});
    QCOMPARE(f.alerts(), QStringList({NEW_TEXT, MIDDLE_TEXT, OLD_TEXT}));
    setAlertLog({OLD, MIDDLE});
    QCOMPARE(f.alerts(), QStringList({MIDDLE_TEXT, OLD_TEXT}));
    setAlertLog({});
    QCOMPARE(f.alerts(), QStringList());
}

void ScreenMenuAlertsTest::rowsHoldTheAlertsIdentity()
{
    MenuFixture f;
    setAlertLog({OLD, NEW});
    QCOMPARE(int(f.alert(0)->getId()), 64);
    QCOMPARE(f.alert(0)->getEventId(), unsigned(EV_ALARM_ANTENNA_FAILURE));
    QCOMPARE(f.alert(0)->getEventSubId(), 7u);
    QCOMPARE(f.alert(0)->getAlertTimeEpoch(), 1700000000000LL);
    QCOMPARE(f.alert(1)->getEventId(), unsigned(EV_ALARM_TEMPERATURE_TOO_LOW));
    QCOMPARE(f.alert(1)->getEventSubId(), 0x2au);
    QCOMPARE(f.alert(1)->getAlertTimeEpoch(), 1600000000000LL);
    QCOMPARE(f.alert(1)->parent(), static_cast<QTreeWidgetItem*>(f.item(63)));
    QVERIFY(!f.alert(1)->data(0, Qt::CheckStateRole).isValid());
}

void ScreenMenuAlertsTest::unknownAlertBearsTheWordsOfTheLog()
{
    MenuFixture f;
    setAlertLog({{0x7abc, 0, 1600000000, "Coolant is low"}});
    QCOMPARE(f.alerts(), QStringList("Coolant is low"));
}

void ScreenMenuAlertsTest::thereMayBeAnyNumber_data()
{
    QTest::addColumn<int>("count");
    for (int count : {1, 2, 5, 200}) {
        QTest::newRow(qPrintable(QString::number(count))) << count;
    }
}

void ScreenMenuAlertsTest::thereMayBeAnyNumber()
{
    QFETCH(int, count);
    MenuFixture f;
    setAlertLog(manyAlerts(count));
    f.closePopups();
    QCOMPARE(f.alerts().size(), count);
    QCOMPARE(f.alerts().first(), QString("Alert %1").arg(count - 1));
    QCOMPARE(f.alerts().last(), QString("Alert 0"));
    f.open();
    QVERIFY(f.walkTo(63));
    f.key(Qt::Key_Right);
    for (int row = 0; row < count; ++row) {
        QCOMPARE(f.current(), f.alert(row));
        QVERIFY(f.rowsInView().contains(f.currentText()));
        f.key(Qt::Key_Down);
    }
    QCOMPARE(f.current(), f.alert(count - 1));
    setAlertLog({});
    QCOMPARE(f.alerts().size(), 0);
}

void ScreenMenuAlertsTest::listIsTheNextOfAWindowBuiltLater()
{
    setAlertLog({OLD, NEW});
    const MenuFixture f;
    QCOMPARE(f.alerts(), QStringList({NEW_TEXT, OLD_TEXT}));
}

void ScreenMenuAlertsTest::subRowsOfAnAlertGoWithIt()
{
    MenuFixture f;
    setAlertLog({OLD});
    int alive = 0;
    class Row : public TTreeWidgetItem {
    public:
        Row(QTreeWidgetItem* parent, int& alive)
            : TTreeWidgetItem(parent, ITEM_ALERT, "more", 0, 0, 0), m_alive(alive)
        {
            ++m_alive;
        }
        ~Row() override { --m_alive; }
        int& m_alive;
    };
    new Row(f.alert(0), alive);
    new Row(f.alert(0), alive);
    QCOMPARE(alive, 2);
    setAlertLog({});
    QCOMPARE(alive, 0);
}

void ScreenMenuAlertsTest::nullsInTheListAreLogged()
{
    const MenuFixture f;
    Messages messages;
    ScreenMenuTestAccess::deleteAlertItems({nullptr, new QTreeWidgetItem, nullptr});
    QCOMPARE(
        messages.count("ScreenMenu::updateAlertList(): ERROR !!! Can not delete pLastItem as it is NULL"), 2);
    ScreenMenuTestAccess::deleteAlertSubItems({nullptr, new QTreeWidgetItem});
    QCOMPARE(
        messages.count("ScreenMenu::updateAlertList(): ERROR !!! Can not delete pLastSubItem as it is NULL"),
        1);
}

// --- The cursor --------------------------------------------------------------------------------------------

void ScreenMenuAlertsTest::unseenListPutsTheCursorOnItsLastRow()
{
    MenuFixture f;
    setAlertLog({OLD, MIDDLE, NEW});
    QVERIFY(!f.isOpen());
    QCOMPARE(f.current(), f.alert(2));
    QVERIFY(f.item(63)->isExpanded()); // it was scrolled to
}

// An update that is under way brings no popup of its own, so the menu stays in view.
void ScreenMenuAlertsTest::cursorStaysWhileTheUserLooks()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(16));
    setAlertLog({{EV_SW_UPDATE_ON, 0, 1600000000}});
    QVERIFY(f.isOpen());
    QCOMPARE(f.alerts().size(), 1);
    QCOMPARE(f.currentId(), 16);
    QVERIFY(!f.item(63)->isExpanded());
    QVERIFY(f.rowsInView().contains("Level 4"));
    setAlertLog({});
    QCOMPARE(f.currentId(), 16);
}

void ScreenMenuAlertsTest::cursorStaysOnItsAlertWhileTheUserLooks()
{
    MenuFixture f;
    setAlertLog({OLD, MIDDLE, NEW});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Down);
    QCOMPARE(f.currentText(), QString(MIDDLE_TEXT));
    Messages messages;
    setAlertLog({OLD, MIDDLE}); // the one above goes
    QCOMPARE(f.current(), f.alert(0));
    QCOMPARE(f.currentText(), QString(MIDDLE_TEXT));
    setAlertLog({MIDDLE}); // the one below goes
    QCOMPARE(f.current(), f.alert(0));
    QVERIFY(f.item(63)->isExpanded());
    QCOMPARE(messages.count(COLLAPSING), 0);
}

void ScreenMenuAlertsTest::twinsAreToldApartByTheirTime()
{
    const Alert first = {0x6100, 1, 1600000000, "Twin"};
    const Alert second = {0x6100, 1, 1600000060, "Twin"};
    MenuFixture f;
    setAlertLog({first, second, NEW});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Down);
    QCOMPARE(f.current(), f.alert(2));
    setAlertLog({first, second});
    QCOMPARE(f.current(), f.alert(1));
    QCOMPARE(f.current()->getAlertTimeEpoch(), 1600000000000LL);
}

void ScreenMenuAlertsTest::alertThatVanishesUnderTheCursorCollapsesAlerts()
{
    MenuFixture f;
    setAlertLog({OLD, MIDDLE, NEW});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Down);
    QCOMPARE(f.currentText(), QString(MIDDLE_TEXT));
    Messages messages;
    setAlertLog({OLD, NEW});
    QCOMPARE(messages.count(COLLAPSING), 1);
    QCOMPARE(f.alerts().size(), 2);
    QVERIFY(!f.item(63)->isExpanded());
    QCOMPARE(f.currentId(), 63);
    QVERIFY(f.rowsInView().contains("Alerts"));
    QVERIFY(!f.rowsInView().contains(OLD_TEXT));
}

void ScreenMenuAlertsTest::lastAlertThatVanishesUnderTheCursorCollapsesAlerts()
{
    MenuFixture f;
    setAlertLog({NEW});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    QCOMPARE(f.currentText(), QString(NEW_TEXT));
    Messages messages;
    setAlertLog({});
    QCOMPARE(messages.count(COLLAPSING), 1);
    QCOMPARE(f.currentId(), 63);
    QVERIFY(!f.item(63)->isExpanded());
    // It is closed in truth: an alert that comes doesn't stand open.
    setAlertLog({{EV_SW_UPDATE_ON, 0, 1600000000}});
    QVERIFY(f.isOpen());
    QVERIFY(!f.item(63)->isExpanded());
    QCOMPARE(f.currentId(), 63);
}

void ScreenMenuAlertsTest::lastAlertThatVanishesUnseenCollapsesAlerts()
{
    MenuFixture f;
    setAlertLog({NEW});
    QCOMPARE(f.currentText(), QString(NEW_TEXT));
    Messages messages;
    setAlertLog({});
    QCOMPARE(messages.count(COLLAPSING), 1);
    QCOMPARE(f.currentId(), 63);
    QVERIFY(!f.item(63)->isExpanded());
}

void ScreenMenuAlertsTest::openListStaysOpen()
{
    MenuFixture f;
    setAlertLog({OLD, MIDDLE, NEW});
    f.closePopups();
    f.open();
    QVERIFY(f.item(63)->isExpanded());
    for (int i = 0; i < 10 && f.currentId() != 62; ++i) {
        f.key(Qt::Key_Up);
    }
    QCOMPARE(f.currentId(), 62);
    setAlertLog({OLD, NEW});
    QVERIFY(f.item(63)->isExpanded());
    QCOMPARE(f.currentId(), 62);
}

// --- The key on the warning sign ---------------------------------------------------------------------------

// From the status screen with keys alone.
static void pressWarningSign(MenuFixture& f)
{
    f.leave();
    for (int i = 0; i < 5; ++i) {
        f.key(Qt::Key_Up);
    }
    for (int i = 0; i < 10 && !f.isOpen(); ++i) {
        f.key(Qt::Key_Right);
        const QWidget* const sign = f.window.findChild<QWidget*>("pWarningLabel");
        const QWidget* const frame = f.window.findChild<QWidget*>("pSelectionFrame");
        if (frame->geometry() == sign->geometry()) {
            f.key(Qt::Key_Return);
        }
    }
}

// A list that was never shown has not its size yet when it is told to scroll.
void ScreenMenuAlertsTest::warningSignWithOneAlert_data()
{
    QTest::addColumn<bool>("shownBefore");
    QTest::newRow("never shown before") << false;
    QTest::newRow("shown before") << true;
}

void ScreenMenuAlertsTest::warningSignWithOneAlert()
{
    QFETCH(bool, shownBefore);
    MenuFixture f;
    setAlertLog({NEW});
    f.closePopups();
    if (shownBefore) {
        f.open();
        QVERIFY(f.walkTo(1));
    }
    pressWarningSign(f);
    QVERIFY(f.isOpen());
    QCOMPARE(f.current(), f.alert(0));
    QCOMPARE(f.rowsInView(), QStringList({"Help desk", "Alerts", NEW_TEXT}));
}

void ScreenMenuAlertsTest::warningSignWithManyAlerts_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("shownBefore");
    for (int count : {3, 5, 200}) {
        QTest::newRow(qPrintable(QString("%1, never shown before").arg(count))) << count << false;
        QTest::newRow(qPrintable(QString("%1, shown before").arg(count))) << count << true;
    }
}

void ScreenMenuAlertsTest::warningSignWithManyAlerts()
{
    QFETCH(int, count);
    QFETCH(bool, shownBefore);
    MenuFixture f;
    setAlertLog(manyAlerts(count));
    f.closePopups();
    if (shownBefore) {
        f.open();
        QVERIFY(f.walkTo(1));
    }
    pressWarningSign(f);
    QVERIFY(f.isOpen());
    QCOMPARE(f.current(), f.alert(0));
    QCOMPARE(f.rowsInView(), QStringList("Alerts") + f.alerts().mid(0, 3));
}

void ScreenMenuAlertsTest::warningSignWithoutRows()
{
    MenuFixture f;
    model()->setWarningsPresent(true);
    pressWarningSign(f);
    QVERIFY(f.isOpen());
    QCOMPARE(f.currentId(), 63);
    QVERIFY(f.rowsInView().contains("Alerts"));
}

// --- Presses -----------------------------------------------------------------------------------------------

void ScreenMenuAlertsTest::noAlertsPopup()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.press(63));
    QCOMPARE(f.popup->events().size(), 1);
    const popup_event_t popup = f.popup->events().first();
    QCOMPARE(popup.eventId, unsigned(EV_AP_GUI_NO_EVENTS));
    QCOMPARE(popup.severity, EVENT_INFO);
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_OK);
    QCOMPARE(popup.showForMilliseconds, 0);
    QVERIFY(!popup.okFunction);
    QVERIFY(!popup.cancelFunction);
    QCOMPARE(popup.text, model()->getEventText(EV_AP_GUI_NO_EVENTS));
    QVERIFY(qAbs(popup.timeStamp.msecsTo(QDateTime::currentDateTime())) < 60000);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POPUP);
    QVERIFY(!f.item(63)->isExpanded());
    QCOMPARE(f.currentId(), 63);
}

void ScreenMenuAlertsTest::warningsWithoutRowsSaySo()
{
    MenuFixture f;
    f.open();
    model()->setWarningsPresent(true);
    Messages messages;
    QVERIFY(f.press(63));
    QCOMPARE(messages.count("ScreenMenu::handleItemPressed: itemId=63. Not implemented yet."), 1);
    QVERIFY(f.popup->events().isEmpty());
    QVERIFY(f.isOpen());
    QCOMPARE(f.currentId(), 63);
}

void ScreenMenuAlertsTest::alertsOpenAndCloseWithWarnings()
{
    MenuFixture f;
    setAlertLog({OLD, NEW});
    f.closePopups();
    f.open();
    QVERIFY(f.walkTo(63));
    QVERIFY(!f.item(63)->isExpanded());
    f.key(Qt::Key_Return);
    QVERIFY(f.item(63)->isExpanded());
    QCOMPARE(f.current(), f.alert(0));
    QVERIFY(f.rowsInView().contains(NEW_TEXT));
    f.key(Qt::Key_Up);
    f.key(Qt::Key_Return);
    QVERIFY(!f.item(63)->isExpanded());
    QCOMPARE(f.currentId(), 63);
    QVERIFY(f.popup->events().isEmpty());
}

void ScreenMenuAlertsTest::pressShowsTheAlertsTimeAndId()
{
    MenuFixture f;
    setAlertLog({OLD, NEW});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Return);
    QCOMPARE(f.popup->events().size(), 1);
    const popup_event_t popup = f.popup->events().first();
    QCOMPARE(popup.eventId, unsigned(EV_ALARM_TEMPERATURE_TOO_LOW));
    QCOMPARE(popup.severity, EVENT_INFO); // whatever the alert's own is
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_OK);
    QCOMPARE(popup.showForMilliseconds, 0);
    QVERIFY(!popup.okFunction);
    QVERIFY(!popup.cancelFunction);
    QCOMPARE(popup.text, QString("%1\n13 Sep 2020 12:26:40 ID: 1020-2A").arg(OLD_TEXT));
    QCOMPARE(popup.timeStamp.toMSecsSinceEpoch(), 1600000000000LL);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POPUP);
}

// The clock of the terminal was not set when the alert arose.
void ScreenMenuAlertsTest::alertBefore2013ShowsNoTime()
{
    MenuFixture f;
    setAlertLog({{0x6000, 1, 1356998400, "At the turn"}, {0x6001, 1, 1356998399, "Before"}});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Return);
    QCOMPARE(f.popup->events().first().text, QString("At the turn\n1 Jan 2013 00:00:00 ID: 6000-1"));
    f.key(Qt::Key_Return);
    QVERIFY(f.isOpen());
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Return);
    QCOMPARE(f.popup->events().first().text, QString("Before\nID: 6001-1"));
    QCOMPARE(f.popup->events().first().timeStamp.toMSecsSinceEpoch(), 1356998399000LL);
}

void ScreenMenuAlertsTest::idsAreUpperCaseHexadecimal()
{
    MenuFixture f;
    setAlertLog({{0x7abd, int(0xdeadbeefu), 0, "Words"}});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Return);
    QCOMPARE(f.popup->events().first().text, QString("Words\nID: 7ABD-DEADBEEF"));
}

// Its grace runs from its own time.
void ScreenMenuAlertsTest::oldAlertClosesAtOnce()
{
    MenuFixture f;
    setAlertLog({OLD});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Return);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POPUP);
    f.key(Qt::Key_Return);
    QVERIFY(f.isOpen());
    QVERIFY(f.popup->events().isEmpty());
}

void ScreenMenuAlertsTest::pressOfAnAlertLeavesTheCursor()
{
    MenuFixture f;
    setAlertLog({OLD, MIDDLE, NEW});
    f.closePopups();
    f.window.scrollToAlertMenuAndExpand();
    f.open();
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Return);
    f.key(Qt::Key_Return);
    QVERIFY(f.isOpen());
    QCOMPARE(f.current(), f.alert(1));
    QVERIFY(f.tree->hasFocus());
    QVERIFY(f.rowsInView().contains(MIDDLE_TEXT));
}

int main(int argc, char** argv)
{
    return run<ScreenMenuAlertsTest>(argc, argv);
}

#include "screenmenu_alerts_test.moc"
