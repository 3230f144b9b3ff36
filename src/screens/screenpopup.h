// The popup screen: the full-screen message box of the panel and the queue of messages behind it.
//
// So far the queue is always empty: an event that arrives is logged and not kept, so nothing is ever
// shown here and the screen saver does not come. What stands is all that the rest of the program relies
// on: the screen itself, the counts, and the wake-up of the terminal's status reporting (init and
// restartScreenSaverTimer). The queue with its order, buttons, keys and times follows.
// GUI thread only.
#ifndef LUMENPANEL_SCREENS_SCREENPOPUP_H
#define LUMENPANEL_SCREENS_SCREENPOPUP_H

#include "screens/popup_event.h"
#include "screens/screen.h"

#include <QString>

class Window;

class ScreenPopup : public Screen {
    Q_OBJECT

public:
    explicit ScreenPopup(Window* pWindow);

    // Forces a first subscription to what the display shows. Once, by the window, when the screen exists.
    // Blocks until the bus connection stands; ends the process if that never happens.
    void init();

    // Enters an event. So far: logged and dropped.
    void addEvent(const popup_event_t& popup);
    // Removes an event; closedByUser is false when it went away by itself.
    void closePopup(unsigned int eventId, bool closedByUser);
    // Brings the screen in line with the queue.
    void showNextEvent();

    bool eventExistInPopupList(unsigned int eventId) const;
    bool screenSaverInPopupList() const;
    // Events in the queue, without a screen saver on top of it.
    int getNumberOfPopupsToShow();
    int getNumberOfPopupWarningsErrorsFatals() const;

    // Name of an event for the log; "No debug text for eventId=0x..." for an id without a row.
    QString getEventIdAsString(unsigned int eventId) const;

public slots:
    // The display is in use: status reporting on, and the terminal told. Blocks as init does.
    void restartScreenSaverTimer();
};

#endif
