// How the model drives the main window's screens: by the state events of the pointing, and by the SIM.
#include "screens/windowwalk.h"

#include "support/patience.h"

#include <QLabel>

#include <thread>

using namespace windowfixture;

class WindowFlowTest : public QObject, protected WindowWalk {
    Q_OBJECT

private slots:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    // State events
    void pointingBringsUpItsScreen();
    void pointingUnderAPopupOfRankWaits_data();
    void pointingUnderAPopupOfRankWaits();
    void endOfPointingLeavesItsScreen_data();
    void endOfPointingLeavesItsScreen();
    void unknownStateEventIsLogged();
    void stateEventCrossesThreads();
    void statusTextIsUpdatedAfterEachStateEvent_data();
    void statusTextIsUpdatedAfterEachStateEvent();

    // SIM
    void simThatNeedsItsPinBringsUpThePinScreen();
    void simThatNeedsItsPinLetsThePopupsPass();
    void simThatIsBlockedOrLockedLeadsToTheStatusScreen_data();
    void simThatIsBlockedOrLockedLeadsToTheStatusScreen();
    void unknownSimChangesNothing();
    void absentOrInvalidSimOnlyHidesThePinScreen_data();
    void absentOrInvalidSimOnlyHidesThePinScreen();
    void readySimTakesThePinScreenAway();
    void readySimAsksForPointing_data();
    void readySimAsksForPointing();
    void readySimWaitsForTheSystem_data();
    void readySimWaitsForTheSystem();
    void readySimWithoutPointingShowsTheStatusScreen_data();
    void readySimWithoutPointingShowsTheStatusScreen();

private:
    bool anyLabelSays(const QString& text) const
    {
        for (const QLabel* label : m_window->findChildren<QLabel*>()) {
            if (label->text().contains(text)) {
                return true;
            }
        }
        return false;
    }
};

// --- State events ------------------------------------------------------------------------------------------

void WindowFlowTest::pointingBringsUpItsScreen()
{
    makeWindow();
    go("MENU+");
    terminal().clearLogs();
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_POINTING);
    QCOMPARE(state(), QString("POINTING MENU")); // added to the history
    QCOMPARE(messages.countOfPrefix("Window::removePopupIfExist(No debug text for eventId=0x10109)"), 1);
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
    messages.clear();
    m_window->handleStateEvent(STATE_EVENT_POINTING); // it is up: no second change
    QCOMPARE(messages.countOfPrefix("Window::ShowScreen("), 0);
    m_window->handleStateEvent(STATE_EVENT_NOT_POINTED);
    QCOMPARE(state(), QString("MENU"));
}

void WindowFlowTest::pointingUnderAPopupOfRankWaits_data()
{
    QTest::addColumn<QString>("popups");
    QTest::addColumn<QString>("during");
    QTest::newRow("information") << "I"
                                 << "POINTING MENU | I";
    QTest::newRow("warning") << "W"
                             << "POPUP MENU | W";
    QTest::newRow("error") << "E"
                           << "POPUP MENU | E";
    QTest::newRow("fatal") << "F"
                           << "POPUP MENU | F";
    QTest::newRow("warning and information") << "I W"
                                             << "POPUP MENU | W I";
}

void WindowFlowTest::pointingUnderAPopupOfRankWaits()
{
    QFETCH(QString, popups);
    QFETCH(QString, during);
    makeWindow();
    go("MENU+ " + popups);
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_POINTING);
    QCOMPARE(state(), during);
    // While it waits nobody asks for the screen at all.
    QCOMPARE(messages.countOfPrefix("Window::ShowScreen(screenId="), during.startsWith("POINTING") ? 1 : 0);
}

void WindowFlowTest::endOfPointingLeavesItsScreen_data()
{
    QTest::addColumn<int>("event");
    QTest::newRow("not pointed") << int(STATE_EVENT_NOT_POINTED);
    QTest::newRow("pointed") << int(STATE_EVENT_POINTED);
}

void WindowFlowTest::endOfPointingLeavesItsScreen()
{
    QFETCH(int, event);
    makeWindow();
    go("POINTING+");
    m_window->handleStateEvent(static_cast<STATE_EVENT>(event));
    QCOMPARE(state(), QString("STATUS"));
    go("MENU");
    m_window->handleStateEvent(static_cast<STATE_EVENT>(event)); // another screen stays
    QCOMPARE(state(), QString("MENU"));
}

void WindowFlowTest::unknownStateEventIsLogged()
{
    makeWindow();
    Messages messages;
    m_window->handleStateEvent(static_cast<STATE_EVENT>(99));
    QCOMPARE(messages.count("Window::handleStateEvent(STATE_EVENT stateEvent): ERROR!!!! Unknown "
                            "stateEvent=99"),
             1);
    QCOMPARE(messages.count("Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=99: About to run "
                            "setStatusText()"),
             1);
    QCOMPARE(state(), QString("STATUS"));
}

void WindowFlowTest::stateEventCrossesThreads()
{
    makeWindow();
    go("POINTING");
    std::thread([] { emit model()->stateEventReceived(STATE_EVENT_POINTED); }).join();
    QCOMPARE(state(), QString("POINTING")); // queued
    QTRY_COMPARE_WITH_TIMEOUT(state(), QString("STATUS"), PATIENCE_MS);
}

void WindowFlowTest::statusTextIsUpdatedAfterEachStateEvent_data()
{
    QTest::addColumn<int>("event");
    for (int event : {3, 4, 5, 11, 99}) {
        QTest::addRow("%d", event) << event;
    }
}

void WindowFlowTest::statusTextIsUpdatedAfterEachStateEvent()
{
    QFETCH(int, event);
    makeWindow();
    m_window->setStatusText("a text of the test");
    Messages messages;
    m_window->handleStateEvent(static_cast<STATE_EVENT>(event));
    QVERIFY(!anyLabelSays("a text of the test"));
    QCOMPARE(messages.count(QString("Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=%1: About "
                                    "to run setStatusText()")
                                .arg(event)),
             1);
    QCOMPARE(messages.countOfPrefix("Window::handleStateEvent(STATE_EVENT stateEvent): ERROR!!!!"),
             event == 99 ? 1 : 0);
}

// --- SIM ---------------------------------------------------------------------------------------------------

void WindowFlowTest::simThatNeedsItsPinBringsUpThePinScreen()
{
    makeWindow();
    go("MENU");
    QVERIFY(setSim(SIM_PIN_NEEDED));
    QTRY_COMPARE_WITH_TIMEOUT(state(), QString("ENTER_PIN MENU"), PATIENCE_MS);
}

void WindowFlowTest::simThatNeedsItsPinLetsThePopupsPass()
{
    QVERIFY(setSim(SIM_PIN_NEEDED));
    makeWindow();
    go("STATUS I");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("POPUP ENTER_PIN | I"));
    go("ok");
    QCOMPARE(state(), QString("ENTER_PIN"));
}

void WindowFlowTest::simThatIsBlockedOrLockedLeadsToTheStatusScreen_data()
{
    QTest::addColumn<int>("sim");
    QTest::newRow("blocked") << int(SIM_BLOCKED);
    QTest::newRow("locked") << int(SIM_LOCKED);
}

void WindowFlowTest::simThatIsBlockedOrLockedLeadsToTheStatusScreen()
{
    QFETCH(int, sim);
    QVERIFY(setSim(sim));
    makeWindow();
    go("MENU ENTER_PIN+");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("STATUS")); // not back to the menu
    go("BATTERY");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("STATUS")); // from any screen
}

void WindowFlowTest::unknownSimChangesNothing()
{
    QVERIFY(setSim(SIM_STATUS_UNKNOWN));
    makeWindow();
    go("MENU ENTER_PIN+");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("ENTER_PIN MENU"));
}

void WindowFlowTest::absentOrInvalidSimOnlyHidesThePinScreen_data()
{
    QTest::addColumn<int>("sim");
    QTest::newRow("absent") << int(SIM_NOT_PRESENT);
    QTest::newRow("invalid") << int(SIM_INVALID);
}

void WindowFlowTest::absentOrInvalidSimOnlyHidesThePinScreen()
{
    QFETCH(int, sim);
    QVERIFY(setSim(sim));
    makeWindow();
    go("MENU");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("MENU"));
    go("ENTER_PIN+");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("MENU"));
}

void WindowFlowTest::readySimTakesThePinScreenAway()
{
    QVERIFY(setSim(SIM_READY));
    model()->setWanActive(WAN_ACTIVE_BGAN);
    makeWindow();
    go("MENU ENTER_PIN+");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("MENU"));
    model()->setPointingAtStartup(0); // no pointing to come
    go("ENTER_PIN+");
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("STATUS"));
}

void WindowFlowTest::readySimAsksForPointing_data()
{
    QTest::addColumn<int>("status");
    for (int status : {10, 11, 20}) {
        QTest::addRow("%d", status) << status;
    }
}

void WindowFlowTest::readySimAsksForPointing()
{
    QFETCH(int, status);
    QVERIFY(setSim(SIM_READY));
    model()->setWanActive(WAN_ACTIVE_BGAN);
    makeWindow(status);
    go("MENU");
    forgetBus();
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(messages.count(QString("Window::handleEventSimStatusChanged(): Request pointing started, as "
                                    "SIM_READY and extendedSystemStatus=%1")
                                .arg(status)),
             1);
    QCOMPARE(pointingCommands(1), QString("start"));
    QCOMPARE(state(), QString("MENU")); // stays until the pointing begins
}

void WindowFlowTest::readySimWaitsForTheSystem_data()
{
    QTest::addColumn<int>("status");
    for (int status : {6, 8, 9}) {
        QTest::addRow("%d", status) << status;
    }
}

void WindowFlowTest::readySimWaitsForTheSystem()
{
    QFETCH(int, status);
    QVERIFY(setSim(SIM_READY));
    model()->setWanActive(WAN_ACTIVE_BGAN);
    makeWindow();
    model()->setExtendedSystemStatus(status);
    go("MENU");
    forgetBus();
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(messages.count(QString("Window::handleEventSimStatusChanged(): SIM_READY, but do not request "
                                    "pointing started yet, as extendedSystemStatus=%1")
                                .arg(status)),
             1);
    QCOMPARE(state(), QString("MENU"));
    QCOMPARE(pointingCommands(0), QString());
}

void WindowFlowTest::readySimWithoutPointingShowsTheStatusScreen_data()
{
    QTest::addColumn<int>("atStartup");
    QTest::addColumn<int>("upload");
    QTest::addColumn<int>("wan");
    QTest::newRow("pointing at start-up is off") << 0 << 0 << int(WAN_ACTIVE_BGAN);
    QTest::newRow("software upload") << 1 << 1 << int(WAN_ACTIVE_BGAN);
    QTest::newRow("no WAN") << 1 << 0 << int(WAN_ACTIVE_NONE);
    QTest::newRow("modem") << 1 << 0 << int(WAN_ACTIVE_MODEM);
    QTest::newRow("modem and BGAN") << 1 << 0 << int(WAN_ACTIVE_MODEM_AND_BGAN);
    QTest::newRow("WAN unknown") << 1 << 0 << int(WAN_ACTIVE_UNKNOWN);
}

// Popups of the modem or the upload may stand; they are closed to see what is below.
void WindowFlowTest::readySimWithoutPointingShowsTheStatusScreen()
{
    QFETCH(int, atStartup);
    QFETCH(int, upload);
    QFETCH(int, wan);
    QVERIFY(setSim(SIM_READY));
    model()->setPointingAtStartup(atStartup);
    model()->setWanActive(static_cast<ENUM_WAN_ACTIVE>(wan));
    model()->setSwUploadStatus(upload, 0, 512);
    makeWindow(11);
    empty();
    go("MENU");
    forgetBus();
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(state(), QString("STATUS"));
    QCOMPARE(pointingCommands(0), QString());
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowFlowTest>(argc, argv);
}

#include "window_flow_test.moc"
