// The queue of the popup screen: what arrives, what is refreshed or dropped, and what it tells about itself.
// Display and departure, keys, times, texts and the screen saver have tests of their own.
#include "screens/popupfixture.h"

#include "model/event_texts.h"

using namespace windowfixture;

class ScreenPopupQueueTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetForPopups(); }

    // Arrival
    void emptyList();
    void firstPopupIsShown();
    void higherSeverityDisplacesAndEqualWaits();
    void bySeverity_data();
    void bySeverity();
    void aboveAnAutoClosingPopupTwice_data();
    void aboveAnAutoClosingPopupTwice();
    void theExtraRuleLooksAtTheListBeforeTheSaverWent();
    void copyOfATwicePopupIsTakenOutFirst();
    void refreshOfATwicePopupGoesToTheFirst();
    void eventOfAQueuedPopupIsDropped();
    void eventOfTheShownPopupReplacesAllItsFields();
    void refreshIsNotTestedForItsTime();
    void refreshUndoesTheLeaving();
    void refreshWhileTheTimerRuns_data();
    void refreshWhileTheTimerRuns();
    void tickOnItsWayIsDeliveredBeforeTheListIsJudged();
    void kindAndTimeThatDoNotAgree_data();
    void kindAndTimeThatDoNotAgree();
    void unknownKindIsLogged();
    void missingSimIsInformation();
    void closeTerminalStandsOnTop();
    void closeTerminalTakesTheSystemPopupsAway();

    // Questions and log
    void counts();
    void names();
    void listInTheLog();
    void walksAreMarked();
};

// --- Arrival -----------------------------------------------------------------------------------------------

void ScreenPopupQueueTest::emptyList()
{
    PopupFixture f;
    QVERIFY(f.screen->events().isEmpty());
    QCOMPARE(f.screen->getId(), Screen::SCREEN_POPUP);
    QCOMPARE(f.screen->getNumberOfPopupsToShow(), 0);
    QCOMPARE(f.screen->getNumberOfPopupWarningsErrorsFatals(), 0);
    QVERIFY(!f.screen->eventExistInPopupList(A));
    QVERIFY(!f.screen->screenSaverInPopupList());
    QVERIFY(!f.shown());
}

void ScreenPopupQueueTest::firstPopupIsShown()
{
    PopupFixture f;
    f.add(A);
    QVERIFY(f.shown());
    QCOMPARE(f.text()->text(), QString("A"));
    QVERIFY(f.screen->hasFocus());
    QVERIFY(f.screen->eventExistInPopupList(A));
    QVERIFY(!f.screen->eventExistInPopupList(B));
}

void ScreenPopupQueueTest::higherSeverityDisplacesAndEqualWaits()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING);
    f.add(B, EVENT_WARNING);
    QCOMPARE(f.list(), QString("A B"));
    QCOMPARE(f.text()->text(), QString("A"));
    f.add(C, EVENT_FATAL);
    QCOMPARE(f.list(), QString("C A B"));
    QCOMPARE(f.text()->text(), QString("C"));
    f.screen->closePopup(C, true);
    QCOMPARE(f.text()->text(), QString("A"));
    f.screen->closePopup(A, true);
    QCOMPARE(f.text()->text(), QString("B"));
}

void ScreenPopupQueueTest::bySeverity_data()
{
    QTest::addColumn<int>("severityOfA");
    QTest::addColumn<int>("severityOfN");
    for (int a = EVENT_INFO; a <= EVENT_FATAL; ++a) {
        for (int n = EVENT_INFO; n <= EVENT_FATAL; ++n) {
            QTest::newRow(qPrintable(QString("N %1 after A %2").arg(n).arg(a))) << a << n;
        }
    }
}

// The list [A, B] with A not auto-closing gives [N, A, B] if N is above A, and [A, N, B] if it is not.
void ScreenPopupQueueTest::bySeverity()
{
    QFETCH(int, severityOfA);
    QFETCH(int, severityOfN);
    PopupFixture f;
    f.add(A, static_cast<EVENT_SEVERITY_ENUM>(severityOfA));
    f.add(B, EVENT_INFO);
    f.add(N, static_cast<EVENT_SEVERITY_ENUM>(severityOfN));
    QCOMPARE(f.list(), severityOfN > severityOfA   ? QString("N A B")
                       : severityOfN == EVENT_INFO ? QString("A B N")
                                                   : QString("A N B"));
}

void ScreenPopupQueueTest::aboveAnAutoClosingPopupTwice_data()
{
    QTest::addColumn<int>("kindOfA");
    QTest::addColumn<bool>("saver");
    QTest::newRow("POPUP_CLOSE_AUTO") << int(POPUP_CLOSE_AUTO) << false;
    QTest::newRow("POPUP_CLOSE_AUTO_OR_OK") << int(POPUP_CLOSE_AUTO_OR_OK) << false;
    QTest::newRow("screen saver") << int(POPUP_CLOSE_AUTO) << true;
}

// The list [A, B] with A auto-closing and N above B gives [N, N, A, B]; for the screen saver too.
void ScreenPopupQueueTest::aboveAnAutoClosingPopupTwice()
{
    QFETCH(int, kindOfA);
    QFETCH(bool, saver);
    PopupFixture f;
    f.add(A, EVENT_WARNING, static_cast<POPUP_CLOSE_HANDLING_ENUM>(kindOfA), 60000);
    f.add(B, EVENT_WARNING);
    if (saver) {
        f.screen->showScreenSaver();
        QCOMPARE(f.list(), QString("S S A B"));
        QCOMPARE(f.screen->getNumberOfPopupsToShow(), 3);
    } else {
        f.add(N, EVENT_ERROR);
        QCOMPARE(f.list(), QString("N N A B"));
    }
    QVERIFY(f.autoClose()->isActive()); // A's, untouched
}

// With the saver on top, the auto-closing popup was not at position 0 when the event arrived.
void ScreenPopupQueueTest::theExtraRuleLooksAtTheListBeforeTheSaverWent()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    f.screen->showScreenSaver();
    QCOMPARE(f.list(), QString("S A"));
    f.add(B, EVENT_INFO); // takes the saver away
    QCOMPARE(f.list(), QString("A B"));
    f.screen->closePopup(B, true);
    f.screen->showScreenSaver();
    f.add(N, EVENT_ERROR);
    QCOMPARE(f.list(), QString("N A"));
    f.screen->closePopup(N, true);
    f.add(B, EVENT_INFO);
    f.screen->showScreenSaver();
    QCOMPARE(f.list(), QString("S S A B"));
    f.add(N, EVENT_ERROR);
    QCOMPARE(f.list(), QString("N A B"));
}

void ScreenPopupQueueTest::copyOfATwicePopupIsTakenOutFirst()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    f.add(B, EVENT_WARNING);
    f.add(N, EVENT_ERROR, POPUP_CLOSE_OK, 0, 1000);
    f.screen->closePopup(N, true);
    QCOMPARE(f.list(), QString("N A B"));
    QCOMPARE(f.text()->text(), QString("N")); // it stays up until it is closed a second time
    QVERIFY(f.autoClose()->isActive());       // only the popup at position 0 takes the timer with it
    f.screen->closePopup(N, true);
    QCOMPARE(f.list(), QString("A B"));
}

void ScreenPopupQueueTest::refreshOfATwicePopupGoesToTheFirst()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    f.add(B, EVENT_WARNING);
    f.add(N, EVENT_ERROR);
    f.add(N, EVENT_ERROR, POPUP_CLOSE_OK, 0, 0, "new");
    QCOMPARE(f.list(), QString("N N A B"));
    QCOMPARE(f.screen->events().at(0).text, QString("new"));
    QCOMPARE(f.screen->events().at(1).text, QString("N"));
}

// An event with the id of a queued popup is dropped, whatever its severity or text.
void ScreenPopupQueueTest::eventOfAQueuedPopupIsDropped()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING);
    f.add(B, EVENT_INFO);
    Messages messages;
    f.add(B, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER, 0, 0, "other");
    QCOMPARE(f.list(), QString("A B"));
    QCOMPARE(f.screen->events().at(1).text, QString("B"));
    QCOMPARE(f.screen->events().at(1).severity, EVENT_INFO);
    QCOMPARE(f.screen->events().at(1).closeHandling, POPUP_CLOSE_OK);
    QCOMPARE(messages.count(QtDebugMsg,
                            "ScreenPopup::addEvent(EV_AP_GUI_CONN_LOST): Skipping event, as event "
                            "is already in the eventList !!! Returning from function now."),
             1);
}

void ScreenPopupQueueTest::eventOfTheShownPopupReplacesAllItsFields()
{
    PopupFixture f;
    f.add(A, EVENT_ERROR);
    f.add(B, EVENT_WARNING);
    popup_event_t popup = popupOf(A, EVENT_INFO, POPUP_CLOSE_OK_OR_CANCEL, 0, 1234, "new words");
    popup.okFunction = "handleSwUpdateResultUserConfirmed";
    popup.cancelFunction = "show";
    f.screen->addEvent(popup);
    QCOMPARE(f.list(), QString("A B")); // and keeps its place, whatever the severity is now
    const popup_event_t& first = f.screen->events().at(0);
    QCOMPARE(first.severity, EVENT_INFO);
    QCOMPARE(first.closeHandling, POPUP_CLOSE_OK_OR_CANCEL);
    QCOMPARE(first.showForMilliseconds, 0);
    QCOMPARE(first.text, QString("new words"));
    QCOMPARE(first.timeStamp, popup.timeStamp);
    QCOMPARE(first.okFunction, popup.okFunction);
    QCOMPARE(first.cancelFunction, popup.cancelFunction);
    QCOMPARE(f.text()->text(), QString("new words"));
    QVERIFY(f.okShown());
    QVERIFY(f.cancelShown());
}

// The look at the id comes before the look at kind and time.
void ScreenPopupQueueTest::refreshIsNotTestedForItsTime()
{
    PopupFixture f;
    f.add(A);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 0);
    QCOMPARE(f.screen->events().at(0).closeHandling, POPUP_CLOSE_AUTO);
    QVERIFY(!f.autoClose()->isActive());
}

void ScreenPopupQueueTest::refreshUndoesTheLeaving()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    f.screen->closePopup(A, false);
    QCOMPARE(f.screen->events().at(0).closeHandling, POPUP_CLOSE_AUTO);
    QVERIFY(f.autoClose()->isActive());
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(f.screen->events().at(0).closeHandling, POPUP_CLOSE_NOT_BY_USER);
    QCOMPARE(f.screen->events().at(0).showForMilliseconds, 0);
    QVERIFY(!f.autoClose()->isActive());
}

void ScreenPopupQueueTest::refreshWhileTheTimerRuns_data()
{
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("stays") << int(POPUP_CLOSE_OK) << 0;
    QTest::newRow("closes by itself again") << int(POPUP_CLOSE_AUTO) << 7000;
    QTest::newRow("closes by itself or by OK") << int(POPUP_CLOSE_AUTO_OR_OK) << 7000;
}

// An event with the id of position 0 arriving while pAutoCloseTimer runs stops the timer; the timer starts
// anew only if the new data ask for it.
void ScreenPopupQueueTest::refreshWhileTheTimerRuns()
{
    QFETCH(int, closeHandling);
    QFETCH(int, milliseconds);
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    QCOMPARE(f.autoClose()->interval(), 6000);
    f.add(A, EVENT_WARNING, static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling), milliseconds, 0, "new");
    QCOMPARE(f.list(), QString("A"));
    QCOMPARE(f.text()->text(), QString("new"));
    QCOMPARE(f.autoClose()->isActive(), milliseconds > 0);
    if (milliseconds > 0) {
        QCOMPARE(f.autoClose()->interval(), 700);
    }
}

// Ten ticks are over and the eleventh waits in the event queue: the popup goes first, and the event of the
// same id enters as a new one, behind those that were waiting.
void ScreenPopupQueueTest::tickOnItsWayIsDeliveredBeforeTheListIsJudged()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_AUTO, 60000);
    f.add(B, EVENT_WARNING);
    for (int tick = 1; tick <= 10; ++tick) {
        f.screen->handleAutoCloseTimeout();
    }
    QCOMPARE(f.list(), QString("A B"));
    f.fireAutoClose();
    QCOMPARE(f.list(), QString("A B")); // the timer has fired, but its tick has yet to arrive
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "again");
    QCOMPARE(f.list(), QString("B A"));
    QCOMPARE(f.text()->text(), QString("B"));
    QVERIFY(!f.autoClose()->isActive());
}

void ScreenPopupQueueTest::kindAndTimeThatDoNotAgree_data()
{
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<int>("milliseconds");
    for (int closeHandling = POPUP_CLOSE_AUTO; closeHandling <= POPUP_CLOSE_NOT_BY_USER; ++closeHandling) {
        const bool byItself = closeHandling == POPUP_CLOSE_AUTO || closeHandling == POPUP_CLOSE_AUTO_OR_OK;
        for (int milliseconds : {-1, 0, 1}) {
            if (byItself != (milliseconds > 0)) {
                QTest::newRow(qPrintable(QString("kind %1, %2 ms").arg(closeHandling).arg(milliseconds)))
                    << closeHandling << milliseconds;
            }
        }
    }
}

void ScreenPopupQueueTest::kindAndTimeThatDoNotAgree()
{
    QFETCH(int, closeHandling);
    QFETCH(int, milliseconds);
    const bool refused =
        !(closeHandling != POPUP_CLOSE_AUTO && closeHandling != POPUP_CLOSE_AUTO_OR_OK && milliseconds <= 0);
    PopupFixture f;
    Messages messages;
    f.add(A, EVENT_WARNING, static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling), milliseconds);
    QCOMPARE(f.list(), refused ? QString() : QString("A"));
    QCOMPARE(messages.count(QtWarningMsg,
                            "ScreenPopup::addEvent(EV_AP_GUI_CONN_FAILED): ERROR !!!!!  A popup must not "
                            "have POPUP_CLOSE_AUTO without having showForMilliseconds > 0."
                            "Returning from function now!!!!"),
             refused ? 1 : 0);
}

void ScreenPopupQueueTest::unknownKindIsLogged()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL);
    Messages messages;
    f.add(A, EVENT_WARNING, static_cast<POPUP_CLOSE_HANDLING_ENUM>(7));
    QCOMPARE(messages.count("ERROR: Illegal closeHandling=7"), 1);
    QVERIFY(f.okShown()); // as they were
    QVERIFY(f.cancelShown());
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
        f.press(key);
        QCOMPARE(f.list(), QString("A"));
    }
}

void ScreenPopupQueueTest::missingSimIsInformation()
{
    PopupFixture f;
    Messages messages;
    f.add(EV_BDU_USIM_MISSING, EVENT_FATAL);
    QCOMPARE(f.screen->events().at(0).severity, EVENT_INFO);
    QCOMPARE(messages.count("ScreenPopup::addEvent(): Special hack to be removed when new RM software is "
                            "released with fixed Bug 61562"),
             1);
}

void ScreenPopupQueueTest::closeTerminalStandsOnTop()
{
    PopupFixture f;
    f.add(A, EVENT_ERROR);
    f.add(EV_AP_TEMP_CLOSE_TERM, EVENT_WARNING, POPUP_CLOSE_OK);
    const popup_event_t& first = f.screen->events().at(0);
    QCOMPARE(first.eventId, unsigned(EV_AP_TEMP_CLOSE_TERM));
    QCOMPARE(first.severity, EVENT_FATAL);
    QCOMPARE(first.closeHandling, POPUP_CLOSE_NOT_BY_USER);
    QCOMPARE(f.list(), QString("%1 A").arg(unsigned(EV_AP_TEMP_CLOSE_TERM), 0, 16));
}

// What the model doesn't know of stays.
void ScreenPopupQueueTest::closeTerminalTakesTheSystemPopupsAway()
{
    const unsigned int systemEvents[] = {EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN,
                                         EV_AP_GUI_STATUS_SYSTEM_REBOOTING};
    for (unsigned int known : systemEvents) {
        PopupFixture f;
        for (unsigned int eventId : systemEvents) {
            f.add(eventId, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER);
        }
        fmmi_evt_t event;
        event.identifier = known;
        Access::systemEvents() = {event};
        QVERIFY(model()->eventExist(known));
        f.add(EV_AP_TEMP_CLOSE_TERM, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER);
        for (unsigned int eventId : systemEvents) {
            QCOMPARE(f.screen->eventExistInPopupList(eventId), eventId != known);
        }
        QVERIFY(f.screen->eventExistInPopupList(EV_AP_TEMP_CLOSE_TERM));
        QVERIFY(!Access::ignoreGlobalKeyPressTimer().isActive()); // as if the user had closed it
        Access::systemEvents().clear();
    }
}

// --- Questions and log -------------------------------------------------------------------------------------

void ScreenPopupQueueTest::counts()
{
    PopupFixture f;
    f.add(A, EVENT_INFO);
    QCOMPARE(f.screen->getNumberOfPopupsToShow(), 1);
    QCOMPARE(f.screen->getNumberOfPopupWarningsErrorsFatals(), 0);
    f.add(B, EVENT_WARNING);
    QCOMPARE(f.screen->getNumberOfPopupWarningsErrorsFatals(), 1);
    f.add(C, EVENT_ERROR);
    QCOMPARE(f.screen->getNumberOfPopupWarningsErrorsFatals(), 2);
    f.add(N, EVENT_FATAL);
    QCOMPARE(f.screen->getNumberOfPopupWarningsErrorsFatals(), 3);
    QCOMPARE(f.screen->getNumberOfPopupsToShow(), 4);
    QVERIFY(!f.screen->screenSaverInPopupList());
    f.screen->showScreenSaver();
    QCOMPARE(f.screen->events().size(), 5);
    QVERIFY(f.screen->screenSaverInPopupList());
    QCOMPARE(f.screen->getNumberOfPopupsToShow(), 4);
    QCOMPARE(f.screen->getNumberOfPopupWarningsErrorsFatals(), 3);
}

void ScreenPopupQueueTest::names()
{
    PopupFixture f;
    for (const EventText& row : EVENT_TEXTS) {
        QCOMPARE(f.screen->getEventIdAsString(row.id), QString(row.name));
    }
    QCOMPARE(f.screen->getEventIdAsString(0xabcdef12), QString("No debug text for eventId=0xABCDEF12"));
}

void ScreenPopupQueueTest::listInTheLog()
{
    PopupFixture f;
    {
        Messages messages;
        f.screen->debugEventList("Title");
        QCOMPARE(messages.texts(), QStringList("Title: eventList is empty."));
    }
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "first");
    f.add(0x1234abcd, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "second");
    Messages messages;
    f.screen->debugEventList("Title");
    QCOMPARE(messages.count("Title: eventList.size()=2"), 1);
    QCOMPARE(messages.count("eventList[0]=EV_AP_GUI_CONN_FAILED, eventId=0x10008, text=first"), 1);
    QCOMPARE(messages.count("eventList[1]=No debug text for eventId=0x1234ABCD, eventId=0x1234ABCD, "
                            "text=second"),
             1);
}

// Each walk has an id of its own, which stands at its start and its end.
void ScreenPopupQueueTest::walksAreMarked()
{
    PopupFixture f;
    f.add(A);
    Messages messages;
    f.screen->eventExistInPopupList(A);
    f.screen->getNumberOfPopupWarningsErrorsFatals();
    f.screen->closePopup(B, true);
    f.screen->debugEventList("Title");
    f.add(B);
    const QStringList starts = messages.texts().filter("Start looking at eventList (uniqueId=");
    const QStringList stops = messages.texts().filter("Stop looking at eventList (uniqueId=");
    QVERIFY(starts.size() >= 7);
    QCOMPARE(starts.size(), stops.size());
    QSet<QString> ids;
    for (const QString& start : starts) {
        QVERIFY(stops.contains(QString(start).replace("Start looking", "Stop looking")));
        ids.insert(start.section("uniqueId=", 1));
    }
    QCOMPARE(ids.size(), starts.size());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPopupQueueTest>(argc, argv);
}
#include "screenpopup_queue_test.moc"
