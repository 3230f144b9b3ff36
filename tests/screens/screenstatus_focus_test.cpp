// The status screen's keys: every move of the frame under every condition, and what OK does on each item.
#include "screens/statusfixture.h"

#include "screens/screenpopup.h"
#include "widgets/ttreewidget.h"

#include "support/patience.h"

#include <QSignalSpy>

using namespace windowfixture;

namespace {

typedef ScreenStatus::FOCUS_STATE_ENUM Focus;

const char* const NAMES[] = {"NONE", "TEXT",  "CONNECT", "ANTENNA", "WIFI",    "ISDN",
                             "LAN",  "PHONE", "USB",     "WARNING", "BATTERY", "MENU"};
const int NUMBER_OF_PLACES = 12;

Focus placeOf(const QString& name)
{
    for (int place = 0; place < NUMBER_OF_PLACES; ++place) {
        if (name == NAMES[place]) {
            return static_cast<Focus>(place);
        }
    }
    qFatal("no place %s", qPrintable(name));
}

// The moves as a user learns them: from each place, where the four keys lead. "c:" only if connect is on,
// "q:" only if the text is a question, "w:" only with warnings; the first that holds, else the frame stays.
const struct {
    const char* from;
    const char* up;
    const char* down;
    const char* left;
    const char* right;
} moves[] = {
    {"NONE", "LAN", "", "c:CONNECT", "MENU"},
    {"TEXT", "LAN", "", "c:CONNECT", "MENU"},
    {"CONNECT", "ANTENNA", "", "MENU", "q:TEXT MENU"},
    {"ANTENNA", "", "c:CONNECT q:TEXT", "BATTERY", "WIFI"},
    {"WIFI", "", "q:TEXT", "ANTENNA", "ISDN"},
    {"ISDN", "", "q:TEXT", "WIFI", "LAN"},
    {"LAN", "", "q:TEXT", "ISDN", "PHONE"},
    {"PHONE", "", "q:TEXT", "LAN", "USB"},
    {"USB", "", "q:TEXT", "PHONE", "w:WARNING BATTERY"},
    {"WARNING", "", "q:TEXT", "USB", "BATTERY"},
    {"BATTERY", "", "MENU", "w:WARNING USB", "ANTENNA"},
    {"MENU", "BATTERY", "", "q:TEXT c:CONNECT", "c:CONNECT q:TEXT"},
};

QString destination(const char* rule, bool connect, bool question, bool warnings)
{
    for (const QString& choice : QString(rule).split(' ', Qt::SkipEmptyParts)) {
        if (choice.startsWith("c:")   ? connect
            : choice.startsWith("q:") ? question
            : choice.startsWith("w:") ? warnings
                                      : true) {
            return choice.section(':', -1);
        }
    }
    return QString(); // stays
}

// How often each screen was asked for, by the log.
int requestsFor(const Messages& messages, int screenId)
{
    return messages.countOfPrefix(QString("Window::ShowScreen(screenId=%1 (").arg(screenId));
}

std::string keyOfInterface(int interface)
{
    const char* const names[] = {"wlan", "isdn", "lan", "phone", "usb"};
    return std::string("cfg.interfaces.") + names[interface - 1] + ".enabled";
}

} // namespace

class ScreenStatusFocusTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        resetStatus();
        terminal().settle();
        terminal().clearLogs();
    }

    void key_data();
    void key();
    void keysAreLogged();
    void placeSurvivesVisits();
    void keyOfNonQuestionMovesAsUsual();
    void enterPinByTheId();
    void pointNowByTheId();
    void anyOtherIdDoesNothing();
    void connectOpensTheActions_data();
    void connectOpensTheActions();
    void iconsOpenScreens_data();
    void iconsOpenScreens();
    void warningOpensTheAlerts();
    void nothingOnNone();
    void interfaceToggle_data();
    void interfaceToggle();
    void secondOkWhileActivatingDoesNothing();
    void wifiTellsItsNetworkWhenSwitchedOn();
};

void ScreenStatusFocusTest::key_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("from");
    QTest::addColumn<bool>("connect");
    QTest::addColumn<bool>("question");
    QTest::addColumn<bool>("warnings");
    QTest::addColumn<QString>("to");
    for (const auto& row : moves) {
        const struct {
            Qt::Key key;
            const char* name;
            const char* rule;
        } keys[] = {{Qt::Key_Up, "up", row.up},
                    {Qt::Key_Down, "down", row.down},
                    {Qt::Key_Left, "left", row.left},
                    {Qt::Key_Right, "right", row.right}};
        for (const auto& key : keys) {
            for (int conditions = 0; conditions < 8; ++conditions) {
                const bool connect = conditions & 1;
                const bool question = conditions & 2;
                const bool warnings = conditions & 4;
                const QString to = destination(key.rule, connect, question, warnings);
                const QString title = QString("%1 from %2%3%4%5")
                                          .arg(key.name, row.from, connect ? ", connect" : "",
                                               question ? ", question" : "", warnings ? ", warnings" : "");
                QTest::newRow(qPrintable(title)) << int(key.key) << QString(row.from) << connect << question
                                                 << warnings << (to.isEmpty() ? QString(row.from) : to);
            }
        }
    }
}

void ScreenStatusFocusTest::key()
{
    QFETCH(int, key);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(bool, connect);
    QFETCH(bool, question);
    QFETCH(bool, warnings);
    static StatusFixture f; // one window for all rows
    model()->setControlledByATCommands(!connect);
    model()->setWarningsPresent(warnings);
    f.screen->setStatusText(question ? "Point now?" : "Ready");
    f.screen->setFocusFrame(placeOf(from));
    QTest::keyClick(f.screen, static_cast<Qt::Key>(key));
    QCOMPARE(QString(NAMES[f.screen->getFocusState()]), to);
    QCOMPARE(f.frameShown(), to != "NONE" && (to != "TEXT" || question));
}

void ScreenStatusFocusTest::keysAreLogged()
{
    StatusFixture f;
    const struct {
        Qt::Key key;
        const char* function;
        Focus from;
        Focus to;
    } rows[] = {{Qt::Key_Up, "keyUpClicked", ScreenStatus::FOCUS_NONE, ScreenStatus::FOCUS_LAN},
                {Qt::Key_Down, "keyDownClicked", ScreenStatus::FOCUS_BATTERY, ScreenStatus::FOCUS_MENU},
                {Qt::Key_Left, "keyLeftClicked", ScreenStatus::FOCUS_ISDN, ScreenStatus::FOCUS_WIFI},
                {Qt::Key_Right, "keyRightClicked", ScreenStatus::FOCUS_ISDN, ScreenStatus::FOCUS_LAN},
                {Qt::Key_Return, "keyOkClicked", ScreenStatus::FOCUS_NONE, ScreenStatus::FOCUS_NONE}};
    for (const auto& row : rows) {
        f.screen->setFocusFrame(row.from);
        Messages messages;
        QTest::keyClick(f.screen, row.key);
        const QString start = QString("ScreenStatus::%1(). this->focusState=").arg(row.function);
        QCOMPARE(messages.withPrefix(start),
                 QStringList({start + QString::number(row.from),
                              start + QString::number(row.to) + " end of function"}));
    }
}

void ScreenStatusFocusTest::placeSurvivesVisits()
{
    StatusFixture f;
    f.window.show();
    f.screen->setFocusFrame(ScreenStatus::FOCUS_BATTERY);
    QTest::keyClick(f.screen, Qt::Key_Return);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
    f.window.showPreviousScreen();
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_BATTERY);
    QVERIFY(f.frameShown());
    QCOMPARE(f.frame()->geometry(), f.icon("pBattLabel")->geometry());
}

// The place is the status text although no frame shows there.
void ScreenStatusFocusTest::keyOfNonQuestionMovesAsUsual()
{
    StatusFixture f;
    const struct {
        Qt::Key key;
        Focus to;
    } rows[] = {{Qt::Key_Left, ScreenStatus::FOCUS_CONNECT},
                {Qt::Key_Right, ScreenStatus::FOCUS_MENU},
                {Qt::Key_Up, ScreenStatus::FOCUS_LAN},
                {Qt::Key_Down, ScreenStatus::FOCUS_STATUS_LABEL}};
    for (const auto& row : rows) {
        f.screen->setStatusText("Ready");
        f.screen->setFocusFrame(ScreenStatus::FOCUS_STATUS_LABEL);
        QVERIFY(!f.frameShown());
        QTest::keyClick(f.screen, row.key);
        QCOMPARE(f.screen->getFocusState(), row.to);
    }
}

void ScreenStatusFocusTest::enterPinByTheId()
{
    model()->setExtendedSystemStatus(10);
    QVERIFY(setSim(SIM_PIN_NEEDED));
    StatusFixture f;
    QTRY_COMPARE_WITH_TIMEOUT(f.window.getCurrentScreenId(), Screen::SCREEN_ENTER_PIN, PATIENCE_MS);
    f.window.showScreen(Screen::SCREEN_STATUS, false); // the user went away from it
    QCOMPARE(model()->getCurrentStatusTextId(), STATUS_TEXT_ENTER_PIN);
    QCOMPARE(f.text()->text(), QString("Enter PIN?"));
    f.screen->setFocusFrame(ScreenStatus::FOCUS_STATUS_LABEL);
    QVERIFY(f.frameShown());
    QTest::keyClick(f.screen, Qt::Key_Return);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_ENTER_PIN);
    QVERIFY(setSim(SIM_STATUS_UNKNOWN));
}

void ScreenStatusFocusTest::pointNowByTheId()
{
    model()->setExtendedSystemStatus(10);
    QVERIFY(setSim(SIM_READY));
    terminal().set("rmcfg.sys.status.mode", std::string("operating"));
    terminal().set("rmcfg.protocols.umts.plmn.status", std::string("Searching"));
    QTRY_COMPARE_WITH_TIMEOUT(model()->getPlmnStatus(), int(PLMN_STATUS_SEARCHING), PATIENCE_MS);
    model()->setPointingMode(POINTING_STATUS_NOT_POINTED); // unknown while the radio module was out of work
    StatusFixture f;
    f.screen->updateStatusText();
    QCOMPARE(model()->getCurrentStatusTextId(), STATUS_TEXT_POINT_NOW);
    QCOMPARE(f.text()->text(), QString("Point now?"));
    terminal().settle();
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(0));
    f.screen->setFocusFrame(ScreenStatus::FOCUS_STATUS_LABEL);
    QTest::keyClick(f.screen, Qt::Key_Return);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(1));
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").front().text(), std::string("start"));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
    terminal().erase("rmcfg.sys.status.mode");
    terminal().erase("rmcfg.protocols.umts.plmn.status");
    QTRY_COMPARE_WITH_TIMEOUT(model()->getPlmnStatus(), int(PLMN_STATUS_UNDEFINED), PATIENCE_MS);
    QVERIFY(setSim(SIM_STATUS_UNKNOWN));
}

// Whatever the words: the id decides.
void ScreenStatusFocusTest::anyOtherIdDoesNothing()
{
    StatusFixture f;
    f.screen->updateStatusText();
    QCOMPARE(model()->getCurrentStatusTextId(), STATUS_TEXT_INITIALIZING);
    for (const char* text : {"Enter PIN?", "Point now?"}) {
        f.screen->setStatusText(text);
        f.screen->setFocusFrame(ScreenStatus::FOCUS_STATUS_LABEL);
        QVERIFY(f.frameShown());
        Messages messages;
        QTest::keyClick(f.screen, Qt::Key_Return);
        QCOMPARE(messages.countOfPrefix("Window::ShowScreen("), 0);
        QCOMPARE(messages.countOfPrefix("cbus_if: send_pointing_msg"), 0);
    }
}

void ScreenStatusFocusTest::connectOpensTheActions_data()
{
    QTest::addColumn<bool>("controlled");
    QTest::addColumn<bool>("slave");
    QTest::addColumn<int>("requests");
    QTest::newRow("free") << false << false << 1;
    QTest::newRow("controlled by AT commands") << true << false << 0;
    QTest::newRow("bonding slave") << false << true << 0;
    QTest::newRow("both") << true << true << 0;
}

void ScreenStatusFocusTest::connectOpensTheActions()
{
    QFETCH(bool, controlled);
    QFETCH(bool, slave);
    StatusFixture f;
    model()->setControlledByATCommands(controlled);
    model()->setDhcpClientMode(slave);
    model()->setBondingEnabled(slave);
    f.screen->setFocusFrame(ScreenStatus::FOCUS_CONNECT);
    Messages messages;
    QTest::keyClick(f.screen, Qt::Key_Return);
    QTEST(requestsFor(messages, Screen::SCREEN_ACTION), "requests");
}

void ScreenStatusFocusTest::iconsOpenScreens_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<int>("screen");
    QTest::newRow("antenna") << "ANTENNA" << int(Screen::SCREEN_ANTENNA);
    QTest::newRow("battery") << "BATTERY" << int(Screen::SCREEN_BATTERY);
    QTest::newRow("menu") << "MENU" << int(Screen::SCREEN_MENU);
}

void ScreenStatusFocusTest::iconsOpenScreens()
{
    QFETCH(QString, place);
    QFETCH(int, screen);
    StatusFixture f;
    f.screen->setFocusFrame(placeOf(place));
    Messages messages;
    QTest::keyClick(f.screen, Qt::Key_Return);
    QCOMPARE(messages.countOfPrefix("Window::ShowScreen("), 1);
    QCOMPARE(requestsFor(messages, screen), 1);
    QCOMPARE(messages.withPrefix("Window::ShowScreen(").first().contains("addToHistory=false"), true);
}

// The menu stands on its alerts already when it comes up.
void ScreenStatusFocusTest::warningOpensTheAlerts()
{
    class Watcher : public QObject {
    public:
        QTreeWidget* tree = nullptr;
        QTreeWidgetItem* currentAtShow = nullptr;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Show) {
                currentAtShow = tree->currentItem();
            }
            return false;
        }
    } watcher;
    StatusFixture f;
    f.window.show();
    Screen* const menu = f.window.getScreenById(Screen::SCREEN_MENU);
    watcher.tree = menu->findChild<QTreeWidget*>("pTreeWidget");
    menu->installEventFilter(&watcher);
    QTreeWidgetItem* const alerts = static_cast<TTreeWidget*>(watcher.tree)->getItemById(ITEM_ALERTS);
    model()->setWarningsPresent(true);
    f.screen->setFocusFrame(ScreenStatus::FOCUS_WARNING);
    Messages messages;
    QTest::keyClick(f.screen, Qt::Key_Return);
    QCOMPARE(requestsFor(messages, Screen::SCREEN_MENU), 1);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_MENU);
    QVERIFY(alerts);
    QCOMPARE(watcher.currentAtShow, alerts);
}

void ScreenStatusFocusTest::nothingOnNone()
{
    StatusFixture f;
    f.screen->setFocusFrame(ScreenStatus::FOCUS_NONE);
    Messages messages;
    QTest::keyClick(f.screen, Qt::Key_Return);
    QCOMPARE(messages.countOfPrefix("Window::ShowScreen("), 0);
    terminal().settle();
    QCOMPARE(terminal().writesOf("cfg.interfaces.lan.enabled").size(), size_t(0));
}

void ScreenStatusFocusTest::interfaceToggle_data()
{
    QTest::addColumn<int>("interface");
    QTest::addColumn<int>("requested"); // as in the database
    QTest::addColumn<int>("enabled");
    QTest::addColumn<int>("state"); // what follows from it
    QTest::addColumn<int>("newState");
    QTest::addColumn<int>("written"); // -1: nothing
    const char* const names[] = {"Wi-Fi", "ISDN", "LAN", "phone", "USB"};
    const struct {
        const char* name;
        int requested;
        int enabled;
        int state;
        int newState;
        int written;
    } rows[] = {{"off", 0, 0, 0, 1, 1},
                {"activating", 1, 0, 1, 1, -1},
                {"on", 1, 1, 2, 3, 0},
                {"deactivating", 0, 1, 3, 3, -1},
                {"unknown", 7, 7, -1, -1, -1}};
    for (int interface = 1; interface <= 5; ++interface) {
        for (const auto& row : rows) {
            QTest::newRow(qPrintable(QString("%1 %2").arg(names[interface - 1], row.name)))
                << interface << row.requested << row.enabled << row.state << row.newState << row.written;
        }
    }
}

void ScreenStatusFocusTest::interfaceToggle()
{
    QFETCH(int, interface);
    QFETCH(int, requested);
    QFETCH(int, enabled);
    QFETCH(int, state);
    QFETCH(int, newState);
    QFETCH(int, written);
    static StatusFixture f;
    const char* const icons[] = {"pWifiLabel", "pIsdnLabel", "pLanLabel", "pPhoneLabel", "pUsbLabel"};
    TLabel* const icon = f.icon(icons[interface - 1]);
    terminal().setAll({{keyOfInterface(interface), sim::Value::integer(requested)},
                       {"ram.status" + keyOfInterface(interface).substr(3), sim::Value::integer(enabled)}});
    QVERIFY(passBus());
    QCOMPARE(int(icon->getState()), state);
    f.screen->setFocusFrame(static_cast<Focus>(ScreenStatus::FOCUS_WIFI + interface - 1));
    QTest::keyClick(f.screen, Qt::Key_Return);
    QCOMPARE(int(model()->getInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface))), newState);
    QCOMPARE(int(icon->getState()), newState);
    if (written != -1) {
        QVERIFY(terminal().waitForWrite(keyOfInterface(interface), sim::Value::integer(written)));
    }
    QVERIFY(passBus());
    QCOMPARE(int(icon->getState()), newState); // the change that comes back says the same
    for (int other = 1; other <= 5; ++other) {
        QCOMPARE(terminal().writesOf(keyOfInterface(other)).size(),
                 size_t(other == interface && written != -1 ? 1 : 0));
    }
}

void ScreenStatusFocusTest::secondOkWhileActivatingDoesNothing()
{
    StatusFixture f;
    model()->setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_OFF);
    f.screen->setFocusFrame(ScreenStatus::FOCUS_LAN);
    QTest::keyClick(f.screen, Qt::Key_Return);
    QTest::keyClick(f.screen, Qt::Key_Return);
    QVERIFY(terminal().waitForWrite("cfg.interfaces.lan.enabled", sim::Value::integer(1)));
    terminal().settle();
    QCOMPARE(terminal().writesOf("cfg.interfaces.lan.enabled").size(), size_t(1));
    QCOMPARE(model()->getInterfaceState(INTERFACE_NAME_LAN), INTERFACE_STATE_ACTIVATING);
}

void ScreenStatusFocusTest::wifiTellsItsNetworkWhenSwitchedOn()
{
    StatusFixture f;
    ScreenPopup* const popups = static_cast<ScreenPopup*>(f.window.getScreenById(Screen::SCREEN_POPUP));
    model()->setWifiBroadcastSsid(true);
    model()->setWifiSsidStr("boat 100%");
    for (int interface = 1; interface <= 5; ++interface) {
        for (INTERFACE_STATE_ENUM state : {INTERFACE_STATE_OFF, INTERFACE_STATE_ON}) {
            model()->setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface), state);
            f.screen->setFocusFrame(static_cast<Focus>(ScreenStatus::FOCUS_WIFI + interface - 1));
            QTest::keyClick(f.screen, Qt::Key_Return);
            const QList<popup_event_t> events = popups->events();
            QCOMPARE(events.size(), interface == INTERFACE_NAME_WIFI && state == INTERFACE_STATE_OFF ? 1 : 0);
            if (!events.isEmpty()) {
                QCOMPARE(events.first().eventId, unsigned(EV_AP_GUI_CUSTOM_TEXT));
                QCOMPARE(int(events.first().severity), int(EVENT_INFO));
                QCOMPARE(int(events.first().closeHandling), int(POPUP_CLOSE_AUTO));
                QCOMPARE(events.first().showForMilliseconds, 3000);
                QCOMPARE(events.first().text,
                         model()->getEventText(EV_AP_GUI_CUSTOM_TEXT) + "WLAN name: boat 100%");
                popups->closePopup(EV_AP_GUI_CUSTOM_TEXT, true);
            }
        }
    }
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenStatusFocusTest>(argc, argv);
}

#include "screenstatus_focus_test.moc"
