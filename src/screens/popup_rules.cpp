// The rules of the popup queue; see the header.
#include "screens/popup_rules.h"

namespace {

const int STALE_AUTO_CLOSE_MS = 10000; // from the event's own time

const unsigned int NO_KEY = 0;
const unsigned int ANY_KEY = POPUP_KEY_OK | POPUP_KEY_LEFT | POPUP_KEY_RIGHT | POPUP_KEY_UP | POPUP_KEY_DOWN;

} // namespace

// Kind, OK label, Cancel label, closes by itself, keys.
const PopupCloseRule POPUP_CLOSE_RULES[NUMBER_OF_POPUP_CLOSE_RULES] = {
    {POPUP_CLOSE_AUTO, false, false, true, NO_KEY},
    {POPUP_CLOSE_OK, true, false, false, POPUP_KEY_OK},
    {POPUP_CLOSE_AUTO_OR_OK, true, false, true, POPUP_KEY_OK},
    {POPUP_CLOSE_CANCEL, false, true, false, POPUP_KEY_LEFT},
    {POPUP_CLOSE_OK_OR_CANCEL, true, true, false, POPUP_KEY_OK | POPUP_KEY_LEFT},
    {POPUP_CLOSE_ANY_KEY, false, false, false, ANY_KEY},
    {POPUP_CLOSE_NOT_BY_USER, false, false, false, NO_KEY},
};

const PopupCloseRule* findPopupCloseRule(int closeHandling)
{
    for (const PopupCloseRule& rule : POPUP_CLOSE_RULES) {
        if (rule.closeHandling == closeHandling)
            return &rule;
    }
    return nullptr;
}

bool closesByItself(const popup_event_t& popup)
{
    const PopupCloseRule* const rule = findPopupCloseRule(popup.closeHandling);
    return rule && rule->closesByItself;
}

bool showTimeFitsCloseHandling(const popup_event_t& popup)
{
    return (popup.showForMilliseconds > 0) == closesByItself(popup);
}

bool isStale(const popup_event_t& popup, const QDateTime& now)
{
    return closesByItself(popup) && popup.timeStamp.addMSecs(STALE_AUTO_CLOSE_MS) < now;
}

int firstPositionOf(const QList<popup_event_t>& eventList, unsigned int eventId)
{
    for (int i = 0; i < eventList.size(); ++i) {
        if (eventList.at(i).eventId == eventId)
            return i;
    }
    return -1;
}

int lastPositionOf(const QList<popup_event_t>& eventList, unsigned int eventId)
{
    for (int i = eventList.size() - 1; i >= 0; --i) {
        if (eventList.at(i).eventId == eventId)
            return i;
    }
    return -1;
}

void insertBySeverity(QList<popup_event_t>& eventList, const popup_event_t& popup, bool firstClosesByItself)
{
    if (eventList.isEmpty()) {
        eventList.append(popup);
        return;
    }
    for (int i = eventList.size() - 1; i >= 0; --i) {
        if (eventList.at(i).severity >= popup.severity) {
            eventList.insert(i + 1, popup);
            return;
        }
        // The test for position 1 is a rule of its own and stays: the walk goes on to position 0, finds the
        // new popup itself there, and enters it a second time.
        if (i == 0 || (i == 1 && firstClosesByItself))
            eventList.insert(0, popup);
    }
}
