// One message of the panel to its user, as the popup queue takes it. Plain values, copied freely; GUI
// thread.
#ifndef LUMENPANEL_SCREENS_POPUP_EVENT_H
#define LUMENPANEL_SCREENS_POPUP_EVENT_H

#include "model/event.h"

#include <QDateTime>
#include <QString>

#include <cstdint>

// How a popup may be closed, and with it which buttons it shows.
enum POPUP_CLOSE_HANDLING_ENUM : int {
    POPUP_CLOSE_AUTO = 0,         // no button; the timer only
    POPUP_CLOSE_OK = 1,           // OK shown; OK
    POPUP_CLOSE_AUTO_OR_OK = 2,   // OK shown; the timer or OK
    POPUP_CLOSE_CANCEL = 3,       // Cancel shown; left key
    POPUP_CLOSE_OK_OR_CANCEL = 4, // both shown; OK or left key
    POPUP_CLOSE_ANY_KEY = 5,      // no button; any of the five keys
    POPUP_CLOSE_NOT_BY_USER = 6   // no button; only the program
};

struct popup_event_t {
    uint32_t eventId = 0; // event_ids.h; also the identity of the popup
    EVENT_SEVERITY_ENUM severity = EVENT_INFO;
    POPUP_CLOSE_HANDLING_ENUM closeHandling = POPUP_CLOSE_AUTO;
    int32_t showForMilliseconds = 0;      // of a popup that closes by itself; 0 for all others
    QString text;                         // rich text if it holds "<html>", plain otherwise
    QDateTime timeStamp;                  // when the event arose
    const char* okFunction = nullptr;     // slot of Window to run on OK; may be null, not owned
    const char* cancelFunction = nullptr; // slot of Window to run on Cancel; may be null, not owned
};

#endif
