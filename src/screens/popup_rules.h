// The rules of the popup queue that need no screen: which key closes which kind of popup, which kind closes
// by itself, and where a new popup goes. Pure functions over values and lists; any thread, nothing blocks,
// nothing is logged.
#ifndef LUMENPANEL_SCREENS_POPUP_RULES_H
#define LUMENPANEL_SCREENS_POPUP_RULES_H

#include "screens/popup_event.h"

#include <QList>

// The keys of the panel, as bits of PopupCloseRule::closingKeys.
enum POPUP_KEY_ENUM : unsigned int {
    POPUP_KEY_OK = 1,
    POPUP_KEY_LEFT = 2,
    POPUP_KEY_RIGHT = 4,
    POPUP_KEY_UP = 8,
    POPUP_KEY_DOWN = 16
};

// What one kind of popup shows and what closes it, beside the program itself.
struct PopupCloseRule {
    POPUP_CLOSE_HANDLING_ENUM closeHandling;
    bool okShown;
    bool cancelShown;
    bool closesByItself;
    unsigned int closingKeys; // POPUP_KEY_ENUM, any of them together
};

const int NUMBER_OF_POPUP_CLOSE_RULES = 7;
extern const PopupCloseRule POPUP_CLOSE_RULES[NUMBER_OF_POPUP_CLOSE_RULES];

// The row of a kind; null for a number that is no kind.
const PopupCloseRule* findPopupCloseRule(int closeHandling);

// False for a number that is no kind.
bool closesByItself(const popup_event_t& popup);

// Whether a popup that closes by itself has a time for it, and no other has one.
bool showTimeFitsCloseHandling(const popup_event_t& popup);

// Whether a popup that closes by itself has waited so long that nobody needs it any more. Never true for
// the other kinds.
bool isStale(const popup_event_t& popup, const QDateTime& now);

// Position of an event in the list, -1 if it isn't there. The two differ only for a popup that is there
// twice, see insertBySeverity.
int firstPositionOf(const QList<popup_event_t>& eventList, unsigned int eventId);
int lastPositionOf(const QList<popup_event_t>& eventList, unsigned int eventId);

// Inserts a popup behind the last one of the same or a higher severity, or in front if all are lower.
// firstClosesByItself: the popup at position 0, as the list was when the event arrived, closes by itself.
// Then the popup at position 1 counts as the last one to be asked: if it is lower, the new popup goes to the
// front, whatever stands at position 0, and once more behind itself, so that the list holds it twice.
void insertBySeverity(QList<popup_event_t>& eventList, const popup_event_t& popup, bool firstClosesByItself);

#endif
