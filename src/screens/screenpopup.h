// The popup screen: the full-screen message box of the panel and the queue of messages behind it.
//
// Position 0 of the queue is the popup on display; the queue is ordered by severity (popup_rules.h). The
// screen decides when a popup goes by itself, which key may close it, and when the screen saver, a popup
// like the others, comes and goes. It doesn't make messages: they arrive through Window::addEvent and
// Window::removePopupIfExist.
// GUI thread only. Whatever restarts the delay of the screen saver writes to the bus and waits for it.
#ifndef LUMENPANEL_SCREENS_SCREENPOPUP_H
#define LUMENPANEL_SCREENS_SCREENPOPUP_H

#include "screens/popup_event.h"
#include "screens/screen.h"

#include <QList>
#include <QString>

class QFrame;
class QLabel;
class QPropertyAnimation;
class QTimer;
class Window;

class ScreenPopup : public Screen {
    Q_OBJECT

public:
    // Builds the screen, empty. pWindow is not owned and must outlive the screen.
    explicit ScreenPopup(Window* pWindow);

    // Starts the delay of the screen saver and forces a first subscription to what the display shows. Once,
    // by the window, when the screen exists. Blocks until the bus connection stands; ends the process if
    // that never happens.
    void init();

    // Enters an event, or refreshes the one on display. What is queued already, and what closes by itself
    // without a time (or the other way round), is dropped with a log line. May run the event loop once.
    void addEvent(popup_event_t popup);
    // Removes an event. closedByUser false: it went away by itself, so a popup on display stays until it
    // has been there for two seconds, and keys are ignored for a moment after it. An unknown id is logged.
    void closePopup(unsigned int eventId, bool closedByUser);
    // Brings the screen in line with the queue.
    void showNextEvent();

    bool eventExistInPopupList(unsigned int eventId) const;
    bool screenSaverInPopupList() const;
    // Events in the queue, without a screen saver on top of it.
    int getNumberOfPopupsToShow();
    int getNumberOfPopupWarningsErrorsFatals() const;
    // False while the user has had no time to read what the terminal itself has put up.
    bool popupAllowedToBeClosedByUser(const popup_event_t& popup) const;
    // Puts a popup's text and buttons on the screen. True if the text differs from the one before.
    bool updatePopupButtonsAndText(const popup_event_t& popup);

    // Name of an event for the log; "No debug text for eventId=0x..." for an id without a row.
    QString getEventIdAsString(unsigned int eventId) const;
    // Writes the queue to the log, under a title.
    void debugEventList(const QString& title) const;
    // The queue, the popup on display first. For a look at it; valid until the queue next changes.
    const QList<popup_event_t>& events() const { return eventList; }

    void keyLeftClicked() override;
    void keyRightClicked() override;
    void keyUpClicked() override;
    void keyDownClicked() override;
    void keyOkClicked() override;
    void retranslate() override;

public slots:
    // The swinging text has come to an end of its way and turns round.
    void changeTextLabelAnimationDirection();
    // One of the eleven ticks of a popup that closes by itself.
    void handleAutoCloseTimeout();
    // The user has had time to read: the buttons appear.
    void handleHideButtonsTimeout();
    void showScreenSaver();
    // The display is in use: the delay starts anew, status reporting on, and the terminal told. Blocks as
    // init does.
    void restartScreenSaverTimer();
    void updateScreenSaverTime();

private:
    // Construction
    void createTextFrame();
    void createButtonRow();
    void createTimers();
    QLabel* createButtonLabel(const char* objectName);
    QTimer* createTimer(const char* objectName, const char* slot, Qt::ConnectionType type);

    void showText(const popup_event_t& popup);
    void startSwinging(int textHeight);
    void showButtons(const popup_event_t& popup);
    void setButtonTexts(const QString& before, const QString& behind);
    int screenSaverDelay() const;

    // screenpopup_queue.cpp
    void applySpecialRules(popup_event_t& popup);
    bool refreshOrSkip(const popup_event_t& popup);
    void removeScreenSaver();
    void removeStaleEvents();
    void leaveEmptyScreen();
    void showFirstEvent();
    bool staysForMinimumTime();

    // screenpopup_keys.cpp
    struct KeyRow;
    static const KeyRow keyRows[];
    void handleKey(unsigned int key);
    void closeByKey(const KeyRow& row, const popup_event_t& popup);
    void scrollText(int pixels);

    QList<popup_event_t> eventList;
    int autoCloseTimerCounter;
    qint64 currentEventShowedAtEpochTime; // milliseconds since 1970; -1 while nothing is shown
    bool textScrolls;
    // All owned.
    QFrame* pTextFrame; // the window behind which the text moves
    QLabel* pTextLabel;
    QPropertyAnimation* pTextLabelAnimation;
    QLabel* pOkLabel;
    QLabel* pCancelLabel;
    QTimer* pAutoCloseTimer;
    QTimer* pScreenSaverTimer;
    QTimer* pHideButtonsTimer;
};

#endif
