// The keys of the popup screen. Which key closes which kind of popup stands in popup_rules.cpp.
#include "screens/screenpopup.h"

#include "app/window.h"
#include "common/log.h"
#include "screens/popup_rules.h"

#include <QLabel>
#include <QMetaObject>
#include <QPropertyAnimation>

namespace {
const int SCROLL_STEP = 13; // pixels
}

// What a key does beside closing. The grace holds for the keys that have a label on the screen.
struct ScreenPopup::KeyRow {
    unsigned int key;    // POPUP_KEY_ENUM
    const char* handler; // as the log names it
    bool graceHolds;
    const char* popup_event_t::*function; // run in the window before the popup goes
    int scrolls;                          // pixels down
};

const ScreenPopup::KeyRow ScreenPopup::keyRows[] = {
    {POPUP_KEY_OK, "ScreenPopup::keyOkClicked()", true, &popup_event_t::okFunction, 0},
    {POPUP_KEY_LEFT, "ScreenPopup::keyLeftClicked()", true, &popup_event_t::cancelFunction, 0},
    {POPUP_KEY_RIGHT, "ScreenPopup::keyRightClicked()", false, nullptr, 0},
    {POPUP_KEY_UP, "ScreenPopup::keyUpClicked()", false, nullptr, SCROLL_STEP},
    {POPUP_KEY_DOWN, "ScreenPopup::keyDownClicked()", false, nullptr, -SCROLL_STEP},
};

void ScreenPopup::keyOkClicked()
{
    handleKey(POPUP_KEY_OK);
}

void ScreenPopup::keyLeftClicked()
{
    handleKey(POPUP_KEY_LEFT);
}

void ScreenPopup::keyRightClicked()
{
    handleKey(POPUP_KEY_RIGHT);
}

void ScreenPopup::keyUpClicked()
{
    handleKey(POPUP_KEY_UP);
}

void ScreenPopup::keyDownClicked()
{
    handleKey(POPUP_KEY_DOWN);
}

void ScreenPopup::handleKey(unsigned int key)
{
    for (const KeyRow& row : keyRows) {
        if (row.key != key)
            continue;
        if (eventList.isEmpty()) {
            logDebug() << row.handler << ": ERROR!!! eventList is Empty. About to run showNextEvent()";
            showNextEvent();
            return;
        }
        const popup_event_t popup = eventList.at(0); // a copy, as closing takes it out of the list
        const PopupCloseRule* const rule = findPopupCloseRule(popup.closeHandling);
        if (rule && (rule->closingKeys & key) != 0)
            closeByKey(row, popup);
        else if (row.scrolls != 0 && textScrolls)
            scrollText(row.scrolls);
        else
            logDebug() << row.handler << ". Do nothing.";
        return;
    }
}

void ScreenPopup::closeByKey(const KeyRow& row, const popup_event_t& popup)
{
    if (row.graceHolds && !popupAllowedToBeClosedByUser(popup))
        return;
    const char* const function = row.function ? popup.*row.function : nullptr;
    if (function)
        QMetaObject::invokeMethod(m_pMainWindow, function, Qt::QueuedConnection);
    closePopup(popup.eventId, true);
}

// The first press only stops the swing, so that the user takes over where the text is.
void ScreenPopup::scrollText(int pixels)
{
    if (pTextLabelAnimation->state() != QAbstractAnimation::Stopped) {
        pTextLabelAnimation->stop();
        return;
    }
    const int lowest = pTextLabel->parentWidget()->height() - pTextLabel->height();
    pTextLabel->move(pTextLabel->x(), qBound(lowest, pTextLabel->y() + pixels, 0));
}
