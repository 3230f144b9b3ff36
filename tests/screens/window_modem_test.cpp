// The ways to the network: which of the three modem popups stands, and when pointing is asked for.
#include "screens/windowcase.h"

#include <QRegularExpression>

using namespace windowfixture;

namespace {

const char IN_USE[] = "EV_AP_GUI_MODEM_IN_USE";
const char SEARCHING[] = "EV_AP_GUI_SEARCHING_FOR_MODEM";
const char SELECT_ON_WEB[] = "EV_AP_GUI_SELECT_NETWORK_ON_WEB";
const struct {
    const char* name;
    unsigned int id;
} popups[] = {{IN_USE, EV_AP_GUI_MODEM_IN_USE},
              {SEARCHING, EV_AP_GUI_SEARCHING_FOR_MODEM},
              {SELECT_ON_WEB, EV_AP_GUI_SELECT_NETWORK_ON_WEB}};

} // namespace

class WindowModemTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void popupOfTheModem_data();
    void popupOfTheModem();
    void sameValuesAgainChangeNothing();
    void valuesAreLogged();
    void unknownWanRemovesInSpiteOfItsWords();
    void changeAsksForPointing_data();
    void changeAsksForPointing();
};

void WindowModemTest::popupOfTheModem_data()
{
    QTest::addColumn<int>("wan");
    QTest::addColumn<int>("activated");
    QTest::addColumn<int>("present");
    QTest::addColumn<int>("startup");
    QTest::addColumn<QString>("added"); // the one popup that stands, or none
    const int any = STARTUP_WAN_UNKNOWN;
    const int user = STARTUP_WAN_USER_SELECTTION;
    QTest::newRow("none, modem there") << 0 << 1 << 1 << any << IN_USE;
    QTest::newRow("none, modem there, user's choice") << 0 << 1 << 1 << user << IN_USE;
    QTest::newRow("none, modem not there") << 0 << 1 << 0 << any << SEARCHING;
    QTest::newRow("none, modem not known") << 0 << 1 << -1 << any << SEARCHING;
    QTest::newRow("none, modem not there, user's choice") << 0 << 1 << 0 << user << SEARCHING;
    QTest::newRow("none, no modem, user's choice") << 0 << 0 << 0 << user << SELECT_ON_WEB;
    QTest::newRow("none, activation not known, user's choice") << 0 << -1 << 1 << user << SELECT_ON_WEB;
    for (int startup :
         {STARTUP_WAN_UNKNOWN, STARTUP_WAN_MODEM_IF_AVAILABLE, STARTUP_WAN_BGAN, STARTUP_WAN_MODEM}) {
        QTest::addRow("none, no modem, start-up WAN %d", startup) << 0 << 0 << 1 << startup << "";
    }
    for (int wan : {1, 3}) {
        QTest::addRow("%d, modem there", wan) << wan << 1 << 1 << any << IN_USE;
        QTest::addRow("%d, modem not there", wan) << wan << 1 << 0 << any << SEARCHING;
        QTest::addRow("%d, no modem", wan) << wan << 0 << 1 << user << "";
        QTest::addRow("%d, activation not known", wan) << wan << -1 << 1 << user << "";
    }
    QTest::newRow("modem, there") << 2 << 0 << 1 << user << IN_USE;
    QTest::newRow("modem, there and activated") << 2 << 1 << 1 << any << IN_USE;
    QTest::newRow("modem, not there") << 2 << 1 << 0 << any << SEARCHING;
    QTest::newRow("modem, not known") << 2 << 0 << -1 << any << SEARCHING;
    QTest::newRow("unknown") << -1 << 1 << 1 << user << "";
    QTest::newRow("any other") << 4 << 1 << 1 << user << "";
}

// Whatever stood before and whatever the user has chosen.
void WindowModemTest::popupOfTheModem()
{
    QFETCH(int, wan);
    QFETCH(int, activated);
    QFETCH(int, present);
    QFETCH(int, startup);
    QFETCH(QString, added);
    makeWindow();
    model()->setModemActivated(activated);
    model()->setModemPresent(present);
    model()->setModemOrBganAtStartup(static_cast<ENUM_STARTUP_WAN>(startup));
    model()->setWanActive(static_cast<ENUM_WAN_ACTIVE>(wan));
    QStringList expected;
    QStringList expectedLines;
    for (const auto& popup : popups) {
        const bool stands = added == popup.name;
        expected.append((stands ? "+" : "-") + QString(popup.name));
        expectedLines.append(QString("Window::handleModemChanged(): ") +
                             (stands ? "Adding event " : "Removing event ") + popup.name);
    }
    for (bool before : {false, true}) {
        for (ENUM_WAN_USER_SELECTION selection : {WAN_USER_SELECTION_UNKNOWN, WAN_USER_SELECTION_NONE,
                                                  WAN_USER_SELECTION_BGAN, WAN_USER_SELECTION_MODEM}) {
            model()->setWanUserSelection(selection);
            empty();
            for (const auto& popup : popups) {
                if (before && added != popup.name) {
                    add(popup.id, EVENT_INFO);
                }
            }
            Messages messages;
            m_window->handleModemChanged();
            QCOMPARE(changesIn(messages), expected);
            QCOMPARE(messages.texts().filter(QRegularExpression("(Adding|Removing) event ")), expectedLines);
            QCOMPARE(queued(), added.isEmpty() ? QStringList() : QStringList(added));
            for (const popup_event_t& popup : queue()) {
                QCOMPARE(argumentsOf(popup.eventId), QString("EVENT_INFO 6 0 - -"));
            }
        }
    }
}

void WindowModemTest::sameValuesAgainChangeNothing()
{
    makeWindow();
    model()->setModemPresent(1);
    model()->setWanActive(WAN_ACTIVE_MODEM);
    for (int i = 0; i < 3; ++i) {
        m_window->handleModemChanged();
        QCOMPARE(queued(), QStringList(IN_USE));
    }
    model()->setModemPresent(0); // through the model's signal
    QCOMPARE(queued(), QStringList(SEARCHING));
    model()->setWanActive(WAN_ACTIVE_NONE);
    QCOMPARE(queued(), QStringList());
}

void WindowModemTest::valuesAreLogged()
{
    makeWindow();
    model()->setWanActive(WAN_ACTIVE_MODEM);
    model()->setModemOrBganAtStartup(STARTUP_WAN_MODEM);
    model()->setModemPresent(1);
    model()->setModemActivated(0);
    model()->setWanUserSelection(WAN_USER_SELECTION_MODEM);
    Messages messages;
    m_window->handleModemChanged();
    QCOMPARE(messages.countOfPrefix(
                 "Window::handleModemChanged(): wanActive = WAN_ACTIVE_MODEM (2), startupWan = "
                 "STARTUP_WAN_MODEM (3), modemPresent = 1, modemActivated = 0, wanUserSelection = "
                 "WAN_USER_SELECTION_MODEM (2)"),
             1);
}

void WindowModemTest::unknownWanRemovesInSpiteOfItsWords()
{
    makeWindow();
    model()->setModemPresent(1);
    model()->setWanActive(WAN_ACTIVE_MODEM);
    QCOMPARE(queued(), QStringList(IN_USE));
    Messages messages;
    model()->setWanActive(WAN_ACTIVE_UNKNOWN);
    QCOMPARE(messages.count("Window::handleModemChanged(): WAN_ACTIVE_UNKNOWN. Do not do anything. Wait for "
                            "WAN status to become ready."),
             1);
    QCOMPARE(changesIn(messages),
             QStringList({"-" + QString(IN_USE), "-" + QString(SEARCHING), "-" + QString(SELECT_ON_WEB)}));
    QCOMPARE(queued(), QStringList());
}

// --- Pointing ----------------------------------------------------------------------------------------------

void WindowModemTest::changeAsksForPointing_data()
{
    QTest::addColumn<int>("wan");
    QTest::addColumn<int>("activated");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("pointing");
    QTest::addColumn<int>("atStartup");
    QTest::addColumn<int>("upload");
    QTest::addColumn<int>("sim");
    QTest::addColumn<bool>("asked");
    QTest::newRow("BGAN") << 1 << 0 << 10 << 0 << 1 << 0 << 3 << true;
    QTest::newRow("BGAN, modem not known") << 1 << -1 << 10 << 0 << 1 << 0 << 3 << true;
    QTest::newRow("modem and BGAN") << 3 << 0 << 10 << 0 << 1 << 0 << 3 << true;
    QTest::newRow("modem activated") << 1 << 1 << 10 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("status 11") << 1 << 0 << 11 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("status 9") << 1 << 0 << 9 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("pointing") << 1 << 0 << 10 << 1 << 1 << 0 << 3 << false;
    QTest::newRow("pointed") << 1 << 0 << 10 << 2 << 1 << 0 << 3 << false;
    QTest::newRow("pointing not known") << 1 << 0 << 10 << -1 << 1 << 0 << 3 << false;
    QTest::newRow("not at start-up") << 1 << 0 << 10 << 0 << 0 << 0 << 3 << false;
    QTest::newRow("software upload") << 1 << 0 << 10 << 0 << 1 << 1 << 3 << false;
    QTest::newRow("software upload to the antenna") << 1 << 0 << 10 << 0 << 1 << 2 << 3 << false;
    QTest::newRow("no WAN") << 0 << 0 << 10 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("modem only") << 2 << 0 << 10 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("WAN unknown") << -1 << 0 << 10 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("SIM needs its PIN") << 1 << 0 << 10 << 0 << 1 << 0 << 1 << false;
}

void WindowModemTest::changeAsksForPointing()
{
    QFETCH(int, wan);
    QFETCH(int, activated);
    QFETCH(int, status);
    QFETCH(int, pointing);
    QFETCH(int, atStartup);
    QFETCH(int, upload);
    QFETCH(int, sim);
    QFETCH(bool, asked);
    QVERIFY(setSim(sim));
    QCoreApplication::sendPostedEvents();
    makeWindow();
    model()->setPointingAtStartup(atStartup);
    model()->setPointingMode(static_cast<ENUM_POINTED_STATUS>(pointing));
    model()->setSwUploadStatus(upload, 0, 512);
    model()->setModemActivated(activated);
    model()->setExtendedSystemStatus(status);
    model()->setWanActive(static_cast<ENUM_WAN_ACTIVE>(wan));
    QCoreApplication::sendPostedEvents();
    forgetBus();
    Messages messages;
    m_window->handleModemChanged();
    QCOMPARE(messages.count("Window::handleModemChanged(): About to request pointing started"),
             asked ? 1 : 0);
    QCOMPARE(pointingCommands(asked ? 1 : 0), QString(asked ? "start" : ""));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowModemTest>(argc, argv);
}

#include "window_modem_test.moc"
