// What the queue of the popup screen leads to on the panel: which popup is shown, which screen comes when it
// is empty, pointing, and what goes when the program or the user takes it away.
#include "screens/popupfixture.h"

using namespace windowfixture;

class ScreenPopupDisplayTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetForPopups(); }

    // Display
    void staleAutoClosingPopupIsNeverShown();
    void staleAutoClosingPopupGoesFromTheFirstPlaceToo();
    void otherKindsNeverBecomeStale();
    void emptyListLeadsToThePreviousScreen();
    void emptyListOnAnotherScreenDoesNothing();
    void emptyListAfterPointingLeavesThePointingScreen();
    void lastPopupInPointingModeLeadsToPointing();
    void informationDoesNotDisturbPointing();
    void warningDisturbsPointing();
    void informationComesUpAfterPointing();
    void previousScreenWaitsInTheHistory();
    void popupInsteadOfThePreviousScreenHasItsTime();

    // Departure
    void closingOnAnEmptyList();
    void closingWhatIsNotThere();
    void closingAQueuedPopup();
    void closingByTheUserNeedsNoMinimumTime();
    void closingStopsTheTimerOfTheFirst();
    void closingUnderPointingStopsTheTimerInSilence();
    void closingWhileTheWindowIsHidden();
};

// --- Display -----------------------------------------------------------------------------------------------

// An auto-closing popup that waited behind others for over 10 seconds after its timeStamp is never shown.
void ScreenPopupDisplayTest::staleAutoClosingPopupIsNeverShown()
{
    for (POPUP_CLOSE_HANDLING_ENUM kind : {POPUP_CLOSE_AUTO, POPUP_CLOSE_AUTO_OR_OK}) {
        PopupFixture f;
        f.add(A, EVENT_WARNING);
        Messages messages;
        f.add(B, EVENT_WARNING, kind, 60000, 9000);
        QCOMPARE(f.list(), QString("A B"));
        f.add(C, EVENT_WARNING, kind, 60000, 10001);
        QCOMPARE(f.list(), QString("A B"));
        QCOMPARE(
            messages.count("ScreenPopup::showNextEvent(): EV_AP_GUI_NETWORK_FAILURE has too old timestamp "
                           "and will now be removed from the event list."),
            1);
    }
    PopupFixture f;
    f.add(A, EVENT_WARNING);
    f.add(B, EVENT_WARNING, POPUP_CLOSE_AUTO, 3000, 9500);
    QCOMPARE(f.list(), QString("A B"));
    QTest::qWait(600);
    QVERIFY(f.screen->events().at(1).timeStamp.addMSecs(10000) < QDateTime::currentDateTime());
    f.screen->closePopup(A, true);
    QVERIFY(f.screen->events().isEmpty());
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void ScreenPopupDisplayTest::staleAutoClosingPopupGoesFromTheFirstPlaceToo()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000, 10001);
    QVERIFY(f.screen->events().isEmpty());
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000, 9800);
    QCOMPARE(f.list(), QString("A"));
    QTest::qWait(300);
    f.screen->showNextEvent(); // a minute was asked for, but nobody asks
    QVERIFY(f.screen->events().isEmpty());
}

void ScreenPopupDisplayTest::otherKindsNeverBecomeStale()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 3600 * 1000);
    f.add(B, EVENT_WARNING, POPUP_CLOSE_CANCEL, 0, 3600 * 1000);
    f.add(C, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, 3600 * 1000);
    QCOMPARE(f.list(), QString("A B C"));
}

void ScreenPopupDisplayTest::emptyListLeadsToThePreviousScreen()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, true);
    f.add(A);
    f.screen->closePopup(A, true);
    QCOMPARE(f.text()->text(), QString("-"));
    QVERIFY(!f.shown());
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
}

void ScreenPopupDisplayTest::emptyListOnAnotherScreenDoesNothing()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, true);
    f.screen->showNextEvent();
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
    QCOMPARE(f.text()->text(), QString("-"));
}

void ScreenPopupDisplayTest::emptyListAfterPointingLeavesThePointingScreen()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_POINTING, true);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
    f.screen->showNextEvent();
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

// The last popup closed in pointing mode leads to SCREEN_POINTING, not the previous screen.
void ScreenPopupDisplayTest::lastPopupInPointingModeLeadsToPointing()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, true);
    f.add(A, EVENT_WARNING);
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.shown());
    f.screen->closePopup(A, true);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
}

// An info popup arriving in pointing mode does not disturb the pointing screen.
void ScreenPopupDisplayTest::informationDoesNotDisturbPointing()
{
    PopupFixture f;
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
    f.add(A, EVENT_INFO);
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
    QVERIFY(f.text()->text() != "A");
}

void ScreenPopupDisplayTest::warningDisturbsPointing()
{
    for (EVENT_SEVERITY_ENUM severity : {EVENT_WARNING, EVENT_ERROR, EVENT_FATAL, EVENT_SCREEN_SAVER}) {
        resetForPopups();
        PopupFixture f;
        model()->setPointingMode(POINTING_STATUS_POINTING);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
        f.add(A, severity);
        QVERIFY(f.shown());
        QCOMPARE(f.text()->text(), QString("A"));
    }
}

void ScreenPopupDisplayTest::informationComesUpAfterPointing()
{
    PopupFixture f;
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QCoreApplication::sendPostedEvents();
    f.add(A, EVENT_INFO);
    model()->setPointingMode(POINTING_STATUS_POINTED);
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.shown());
    QCOMPARE(f.text()->text(), QString("A"));
}

void ScreenPopupDisplayTest::previousScreenWaitsInTheHistory()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_ANTENNA, true);
    Messages messages;
    f.add(A);
    QCOMPARE(messages.count("history[0]=9 (SCREEN_ANTENNA)"), 1);
    f.add(B);
    f.screen->closePopup(A, true);
    QVERIFY(f.shown());
    f.screen->closePopup(B, true);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_ANTENNA);
}

// The bundle list waits in the history, but there is no bundle: instead of it a popup comes up, while the one
// before it is still being left.
void ScreenPopupDisplayTest::popupInsteadOfThePreviousScreenHasItsTime()
{
    PopupFixture f;
    f.add(A);
    f.window.showScreen(Screen::SCREEN_ACTION, true);
    f.screen->closePopup(A, true);
    QCOMPARE(f.screen->events().size(), 1);
    QCOMPARE(f.screen->events().at(0).eventId, unsigned(EV_AP_GUI_NO_BUNDLES_DEFINED));
    QVERIFY(f.shown());
    f.screen->closePopup(EV_AP_GUI_NO_BUNDLES_DEFINED, false);
    QCOMPARE(f.screen->events().size(), 1);
    QCOMPARE(f.screen->events().at(0).closeHandling, POPUP_CLOSE_AUTO);
}

// --- Departure ---------------------------------------------------------------------------------------------

void ScreenPopupDisplayTest::closingOnAnEmptyList()
{
    PopupFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, true);
    for (bool byUser : {false, true}) {
        Messages messages;
        f.screen->closePopup(A, byUser);
        QCOMPARE(messages.count("ScreenPopup::closePopup(): eventList is empty! Do nothing."), 1);
        QCOMPARE(messages.countOfPrefix("ScreenPopup::showNextEvent()"), 0);
    }
}

void ScreenPopupDisplayTest::closingWhatIsNotThere()
{
    PopupFixture f;
    f.add(A);
    Messages messages;
    f.screen->closePopup(B, false);
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(messages.count("ScreenPopup::closePopup(EV_AP_GUI_CONN_LOST): No match found."), 1);
    QCOMPARE(messages.countOfPrefix("ScreenPopup::showNextEvent()"), 0);
}

// Closing a popup that is queued and not shown ignores the minimum show time and starts no key ignore.
void ScreenPopupDisplayTest::closingAQueuedPopup()
{
    PopupFixture f;
    f.add(A);
    f.add(B);
    f.screen->closePopup(B, false);
    QCOMPARE(f.list(), QString("A"));
    QVERIFY(!f.autoClose()->isActive());
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
}

// closePopup(id, true) of a shown popup has no minimum show time and no key ignore.
void ScreenPopupDisplayTest::closingByTheUserNeedsNoMinimumTime()
{
    PopupFixture f;
    f.add(A);
    f.screen->closePopup(A, true);
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY(!f.autoClose()->isActive());
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
}

void ScreenPopupDisplayTest::closingStopsTheTimerOfTheFirst()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    f.add(B);
    Messages messages;
    f.screen->closePopup(B, true);
    QVERIFY(f.autoClose()->isActive()); // the queued one has no part in it
    f.screen->closePopup(A, true);
    QVERIFY(!f.autoClose()->isActive());
    QCOMPARE(messages.count("ScreenPopup::closePopup(EV_AP_GUI_CONN_FAILED): Warning: pAutoCloseTimer should "
                            "not be running! Now stopping pAutoCloseTimer."),
             1);
}

void ScreenPopupDisplayTest::closingUnderPointingStopsTheTimerInSilence()
{
    PopupFixture f;
    f.add(A, EVENT_INFO, POPUP_CLOSE_AUTO, 60000);
    QVERIFY(f.autoClose()->isActive());
    model()->setPointingMode(POINTING_STATUS_POINTING); // pushes the information aside
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POINTING);
    Messages messages;
    f.screen->closePopup(A, false); // not shown, so at once
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY(!f.autoClose()->isActive());
    QVERIFY(messages.texts().filter("pAutoCloseTimer should not be running").isEmpty());
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
}

// Nobody has seen it, so nobody has to have time to read it.
void ScreenPopupDisplayTest::closingWhileTheWindowIsHidden()
{
    model()->setExtendedSystemStatus(0);
    PopupFixture f;
    QVERIFY(!f.window.isVisible());
    QVERIFY(f.screen->eventExistInPopupList(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING));
    f.screen->closePopup(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING, false);
    QVERIFY(f.screen->events().isEmpty());
    QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPopupDisplayTest>(argc, argv);
}
#include "screenpopup_display_test.moc"
