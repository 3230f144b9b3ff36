// The queue of the popup screen: events come, stand and go. Where a new one is inserted stands in
// popup_rules.cpp.
//
// The list may change under a function in one place only, where addEvent lets the event loop run; what is
// decided after that is decided anew.
#include "screens/screenpopup.h"

#include "app/guiapp.h"
#include "app/window.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/event_texts.h"
#include "model/statusupdater.h"
#include "screens/popup_rules.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLabel>
#include <QPropertyAnimation>
#include <QTimer>
#include <QUuid>

namespace {

const int MINIMUM_SHOW_MS = 2000; // from the moment of showing; what the program takes away waits for it
const int AUTO_CLOSE_TICKS = 10;  // the time asked for is cut into these, and one more tick closes

// Marks a walk over the list in the log, so that walks within each other can be told apart.
class ListWalk {
public:
    explicit ListWalk(const char* function) : m_function(function)
    {
        if (!debugLogWanted())
            return;
        m_uniqueId = QUuid::createUuid().toString();
        logDebug() << "ScreenPopup::" << m_function
                   << "(): Start looking at eventList (uniqueId=" << m_uniqueId << ")";
    }
    ~ListWalk()
    {
        if (!m_uniqueId.isEmpty())
            logDebug() << "ScreenPopup::" << m_function
                       << "(): Stop looking at eventList (uniqueId=" << m_uniqueId << ")";
    }
    ListWalk(const ListWalk&) = delete;
    ListWalk& operator=(const ListWalk&) = delete;

private:
    const char* const m_function;
    QString m_uniqueId;
};

} // namespace

// --- Arrival -----------------------------------------------------------------------------------------------

void ScreenPopup::addEvent(popup_event_t popup)
{
    const QString name = getEventIdAsString(popup.eventId);
    logDebug() << "ScreenPopup::addEvent(" << name << "): severity=" << popup.severity
               << ", closeHandling=" << popup.closeHandling
               << ", showForMilliseconds=" << popup.showForMilliseconds
               << ", okFunction=" << (popup.okFunction ? popup.okFunction : "none")
               << ", cancelFunction=" << (popup.cancelFunction ? popup.cancelFunction : "none")
               << ", timeStamp=" << popup.timeStamp.toString(QString::fromLatin1("yyyy-MM-ddThh:mm:ss.zzz"))
               << ", text=" << popup.text;
    applySpecialRules(popup);
    if (firstPositionOf(eventList, popup.eventId) == 0 && pAutoCloseTimer->isActive()) {
        // The popup is on its way out. If its last tick is under way already, it goes now.
        pAutoCloseTimer->stop();
        QCoreApplication::processEvents();
    }
    if (refreshOrSkip(popup))
        return;
    if (!showTimeFitsCloseHandling(popup)) {
        logWarning() << "ScreenPopup::addEvent(" << name
                     << "): ERROR !!!!!  A popup must not have POPUP_CLOSE_AUTO without "
                        "having showForMilliseconds > 0."
                        "Returning from function now!!!!";
        return;
    }
    const bool firstClosesByItself = !eventList.isEmpty() && closesByItself(eventList.at(0));
    if (popup.eventId != EV_AP_GUI_SCREEN_SAVER)
        removeScreenSaver();
    {
        const ListWalk walk("addEvent");
        insertBySeverity(eventList, popup, firstClosesByItself);
    }
    showNextEvent();
}

void ScreenPopup::applySpecialRules(popup_event_t& popup)
{
    if (popup.eventId == EV_BDU_USIM_MISSING) {
        logDebug() << "ScreenPopup::addEvent(): Special hack to be removed when new RM software is released "
                      "with fixed Bug 61562";
        popup.severity = EVENT_INFO;
    }
    if (popup.eventId != EV_AP_TEMP_CLOSE_TERM)
        return;
    // The reason why the terminal goes down stands on top of the news that it does.
    popup.severity = EVENT_FATAL;
    popup.closeHandling = POPUP_CLOSE_NOT_BY_USER;
    for (unsigned int eventId : {EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN, EV_AP_GUI_STATUS_SYSTEM_REBOOTING}) {
        if (pStatusUpdater->eventExist(eventId))
            closePopup(eventId, true);
    }
}

// An event that is in the list already: its data replace those at position 0, where closePopup may have made
// it leave; anywhere else it is dropped. False if it isn't in the list.
bool ScreenPopup::refreshOrSkip(const popup_event_t& popup)
{
    int position = -1;
    {
        const ListWalk walk("addEvent");
        position = firstPositionOf(eventList, popup.eventId);
    }
    if (position < 0)
        return false;
    if (position > 0) {
        logDebug() << "ScreenPopup::addEvent(" << getEventIdAsString(popup.eventId)
                   << "): Skipping event, as event is already "
                      "in the eventList !!! Returning from function now.";
        return true;
    }
    eventList[0] = popup;
    showNextEvent();
    return true;
}

// Any event wakes the screen.
void ScreenPopup::removeScreenSaver()
{
    const ListWalk walk("addEvent");
    for (int i = eventList.size() - 1; i >= 0; --i) {
        if (eventList.at(i).severity == EVENT_SCREEN_SAVER) {
            eventList.removeAt(i);
            restartScreenSaverTimer();
        }
    }
}

// --- Display -----------------------------------------------------------------------------------------------

void ScreenPopup::showNextEvent()
{
    debugEventList(QString::fromLatin1("ScreenPopup::showNextEvent()"));
    pTextLabelAnimation->stop();
    removeStaleEvents();
    if (eventList.isEmpty()) {
        leaveEmptyScreen();
        return;
    }
    // Information doesn't interrupt the pointing; it stays in the queue.
    if (eventList.at(0).severity == EVENT_INFO &&
        pStatusUpdater->getPointingMode() == POINTING_STATUS_POINTING)
        m_pMainWindow->showScreen(SCREEN_POINTING, false);
    else
        showFirstEvent();
    // The delay counts from the last change, so that the saver covers a popup that nobody reads.
    if (!eventList.isEmpty() && eventList.at(0).severity != EVENT_SCREEN_SAVER)
        restartScreenSaverTimer();
}

void ScreenPopup::removeStaleEvents()
{
    const ListWalk walk("showNextEvent");
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = eventList.size() - 1; i >= 0; --i) {
        if (!isStale(eventList.at(i), now))
            continue;
        logDebug() << "ScreenPopup::showNextEvent(): " << getEventIdAsString(eventList.at(i).eventId)
                   << " has too old timestamp and will now be removed from the event list.";
        eventList.removeAt(i);
    }
}

void ScreenPopup::leaveEmptyScreen()
{
    pTextLabel->setText(QString::fromLatin1("-"));
    currentEventShowedAtEpochTime = -1; // before the next screen, which may put a popup up at once
    if (pStatusUpdater->getPointingMode() == POINTING_STATUS_POINTING)
        m_pMainWindow->showScreen(SCREEN_POINTING, false);
    else if (m_pMainWindow->isSetToVisibleScreen(this) ||
             m_pMainWindow->getCurrentScreenId() == SCREEN_POINTING)
        m_pMainWindow->showPreviousScreen();
}

void ScreenPopup::showFirstEvent()
{
    bool popupTextChanged = updatePopupButtonsAndText(eventList.at(0));
    if (!m_pMainWindow->isSetToVisibleScreen(this)) {
        m_pMainWindow->showScreen(SCREEN_POPUP, true);
        popupTextChanged = true;
    }
    const popup_event_t& first = eventList.at(0);
    if (first.showForMilliseconds > 0 && closesByItself(first)) {
        if (pAutoCloseTimer->isActive()) {
            logDebug() << "ScreenPopup::showNextEvent(): Not starting pAutoCloseTimer for "
                       << getEventIdAsString(first.eventId)
                       << " as it will auto-close the currently visible popup in a moment.";
        } else {
            autoCloseTimerCounter = 0;
            pAutoCloseTimer->start(first.showForMilliseconds / AUTO_CLOSE_TICKS);
        }
    }
    // The same text keeps its time, on which the minimum show time relies.
    if (popupTextChanged)
        currentEventShowedAtEpochTime = QDateTime::currentMSecsSinceEpoch();
}

// --- Departure ---------------------------------------------------------------------------------------------

void ScreenPopup::closePopup(unsigned int eventId, bool closedByUser)
{
    if (eventList.isEmpty()) {
        logDebug() << "ScreenPopup::closePopup(): eventList is empty! Do nothing.";
        return;
    }
    const Window* const mainWindow = GuiApp::getMainWindowPointer();
    const bool popupToRemoveIsShown = mainWindow && mainWindow->isVisible() &&
                                      mainWindow->getCurrentScreenId() == SCREEN_POPUP &&
                                      eventList.at(0).eventId == eventId;
    if (popupToRemoveIsShown && !closedByUser && staysForMinimumTime())
        return;
    int position = -1;
    {
        const ListWalk walk("closePopup");
        position = lastPositionOf(eventList, eventId);
    }
    if (position < 0) {
        logDebug() << "ScreenPopup::closePopup(" << getEventIdAsString(eventId) << "): No match found.";
        return;
    }
    if (position == 0 && pAutoCloseTimer->isActive()) {
        pAutoCloseTimer->stop();
        if (m_pMainWindow->getCurrentScreenId() != SCREEN_POINTING)
            logDebug() << "ScreenPopup::closePopup(" << getEventIdAsString(eventId)
                       << "): Warning: pAutoCloseTimer should not be running! Now stopping pAutoCloseTimer.";
    }
    eventList.removeAt(position);
    // A press that was meant for the vanished popup must not act on the screen below.
    if (popupToRemoveIsShown && !closedByUser)
        pStatusUpdater->startIgnoreGlobalKeyPress();
    showNextEvent();
}

// The popup on display went away by itself, but the user may not have had time to read it: it stays for the
// rest of its minimum time and then closes by itself. Its labels are not drawn again, so an OK label stays
// although the key no longer closes it. False if the time is over.
bool ScreenPopup::staysForMinimumTime()
{
    if (currentEventShowedAtEpochTime < 0)
        logDebug() << "ScreenPopup::closePopup(" << getEventIdAsString(eventList.at(0).eventId)
                   << "): ERROR!!! currentEventShowedAtEpochTime=" << currentEventShowedAtEpochTime
                   << " is not valid time";
    const qint64 notAllowedToCloseBeforeEpochTime = currentEventShowedAtEpochTime + MINIMUM_SHOW_MS;
    const qint64 remaining = notAllowedToCloseBeforeEpochTime - QDateTime::currentMSecsSinceEpoch();
    if (remaining < 1)
        return false;
    if (pAutoCloseTimer->isActive()) {
        logDebug()
            << "ScreenPopup::closePopup(): Warning: pAutoCloseTimer is already running! Nothing to do.";
        return true;
    }
    // More than the minimum time can only remain if the clock was set back meanwhile.
    if (remaining > MINIMUM_SHOW_MS)
        logWarning() << "ScreenPopup::closePopup(" << getEventIdAsString(eventList.at(0).eventId)
                     << "): ERROR!!! currentEventShowedAtEpochTime=" << currentEventShowedAtEpochTime
                     << " lies ahead of the clock. Showing it for " << MINIMUM_SHOW_MS << " ms more.";
    const int stay = static_cast<int>(qMin<qint64>(remaining, MINIMUM_SHOW_MS));
    autoCloseTimerCounter = 0;
    eventList[0].showForMilliseconds = stay;
    eventList[0].closeHandling = POPUP_CLOSE_AUTO;
    pAutoCloseTimer->start(stay / AUTO_CLOSE_TICKS);
    return true;
}

// The eleventh tick closes, so that a popup stays a tenth longer than it was asked to.
void ScreenPopup::handleAutoCloseTimeout()
{
    if (autoCloseTimerCounter + 1 <= AUTO_CLOSE_TICKS) {
        ++autoCloseTimerCounter;
        return;
    }
    autoCloseTimerCounter = 0;
    pAutoCloseTimer->stop();
    if (eventList.isEmpty())
        logDebug() << "ScreenPopup::handleAutoCloseTimeout(): ERROR !!!!! Can not run eventList.removeAt(0)"
                      "because the list is empty!!";
    else if (eventList.at(0).showForMilliseconds > 0 ||
             eventList.at(0).closeHandling == POPUP_CLOSE_NOT_BY_USER)
        eventList.removeAt(0);
    else
        logDebug() << "ScreenPopup::handleAutoCloseTimeout(): ERROR!!!  AutoCloseTimeout does not know which "
                      "event to close!!!";
    showNextEvent();
}

// --- Questions ---------------------------------------------------------------------------------------------

bool ScreenPopup::eventExistInPopupList(unsigned int eventId) const
{
    const ListWalk walk("eventExistInPopupList");
    return firstPositionOf(eventList, eventId) >= 0;
}

bool ScreenPopup::screenSaverInPopupList() const
{
    return eventExistInPopupList(EV_AP_GUI_SCREEN_SAVER);
}

int ScreenPopup::getNumberOfPopupsToShow()
{
    if (eventList.isEmpty() || eventList.at(0).severity != EVENT_SCREEN_SAVER)
        return eventList.size();
    return eventList.size() - 1;
}

int ScreenPopup::getNumberOfPopupWarningsErrorsFatals() const
{
    const ListWalk walk("getNumberOfPopupWarningsErrorsFatals");
    int number = 0;
    for (int i = 0; i < eventList.size(); ++i) {
        const EVENT_SEVERITY_ENUM severity = eventList.at(i).severity;
        if (severity == EVENT_WARNING || severity == EVENT_ERROR || severity == EVENT_FATAL)
            ++number;
    }
    return number;
}

QString ScreenPopup::getEventIdAsString(unsigned int eventId) const
{
    const EventText* const row = findEventText(eventId);
    if (!row)
        return QString::fromLatin1("No debug text for eventId=0x") + hexText(eventId);
    return QString::fromLatin1(row->name);
}

void ScreenPopup::debugEventList(const QString& title) const
{
    if (!debugLogWanted())
        return;
    if (eventList.isEmpty()) {
        logDebug() << title << ": eventList is empty.";
        return;
    }
    const ListWalk walk("debugEventList");
    logDebug() << title << ": eventList.size()=" << eventList.size();
    for (int i = 0; i < eventList.size(); ++i)
        logDebug() << "eventList[" << i << "]=" << getEventIdAsString(eventList.at(i).eventId)
                   << ", eventId=0x" << hexText(eventList.at(i).eventId) << ", text=" << eventList.at(i).text;
}
