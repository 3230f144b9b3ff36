// The main window: the only top-level widget, 256 by 64 pixels. It holds one instance of every screen,
// of which exactly one is visible, decides which screen may come up, keeps the history of screens left,
// switches the language, and turns changes of the model into popups (window_events.cpp).
//
// It draws nothing itself, and the queue of popups is the popup screen's. GUI thread only; the model's
// signals from the bus thread arrive queued.
#ifndef LUMENPANEL_APP_WINDOW_H
#define LUMENPANEL_APP_WINDOW_H

#include "model/event.h"
#include "model/language.h"
#include "model/state_event.h"
#include "screens/popup_event.h"
#include "screens/screen.h"

#include <QList>
#include <QString>
#include <QWidget>

class QGridLayout;
class QTranslator;
class ScreenAction;
class ScreenAntenna;
class ScreenBattery;
class ScreenEnterPin;
class ScreenMenu;
class ScreenPointing;
class ScreenPopup;
class ScreenStatus;
class StatusUpdater;

class Window : public QWidget {
    Q_OBJECT

public:
    // Builds all screens and brings them in line with the model. May already show the window, if the
    // terminal is up. Blocks until the bus connection stands; ends the process if that never happens.
    explicit Window(QWidget* parent = nullptr);
    ~Window() override;

    // The gate of all screen changes. addToHistory: the screen that is left can be returned to. While a
    // popup is up the screen may have to wait in the history. An id without a screen is logged and
    // changes nothing but the history.
    void showScreen(Screen::SCREEN_ID_ENUM screenId, bool addToHistory);
    // Takes the first entry of this screen out of the history, hides it, and leaves it if it is current.
    void hideAndRemoveScreenFromHistory(Screen::SCREEN_ID_ENUM screenId);

    // The screen of an id, null with a log line if there is none. Owned by the window.
    Screen* getScreenById(Screen::SCREEN_ID_ENUM screenId);
    // "SCREEN_STATUS" and so on, "SCREEN_UNDEFINED" for a number that is no screen.
    QString getScreenNameById(Screen::SCREEN_ID_ENUM screenId) const;
    // The screen that is set to be visible; the window itself need not be.
    Screen::SCREEN_ID_ENUM getCurrentScreenId() const;
    bool isSetToVisibleScreen(Screen* screen) const;

    // Hands a text to the status screen's line; dropped with a log line before that screen exists.
    void setStatusText(const QString& text);
    // Screens that the user left and can return to, the last one most recent. For a look at it; valid until
    // the next change of screen.
    const QList<Screen::SCREEN_ID_ENUM>& screenHistory() const { return history; }
    // Writes the history to the log, under a title.
    void debugHistory(const QString& title) const;

    // Puts a popup up. showForMilliseconds: time on screen for popups that close by themselves, else 0.
    // okFunction, cancelFunction: name of a slot of this class to run on that key, or null; must be
    // texts that last. extraText follows the event's own text. epochTimeMs: when the event arose, -1 for
    // now.
    void addEvent(unsigned int eventId, EVENT_SEVERITY_ENUM severity, POPUP_CLOSE_HANDLING_ENUM closeHandling,
                  int showForMilliseconds, const char* okFunction, const char* cancelFunction,
                  const QString& extraText, long long epochTimeMs);
    // Takes a popup away, if it is there.
    void removePopupIfExist(unsigned int eventId);
    // Scrolls the menu to its alerts and expands them.
    void scrollToAlertMenuAndExpand();
    // Sends the pointing command "stop" if the terminal is pointing.
    void stopPointing();

public slots:
    // Shows the window for the first time, on black, and then lets the backlight come on. A second call
    // is logged as an error.
    void show();
    // Returns from a screen to what should be seen next: screen saver, pointing, popup, history, status.
    void showPreviousScreen();
    // A key was pressed or an event has come: the delay of the screen saver starts anew.
    void restartScreenSaverTimer();

    void handleStateEvent(STATE_EVENT stateEvent);
    void handleRequestLoadLanguage(LANG_ENUM newLanguage);

    void handleShowPopUpEvent(const fmmi_evt_t& event);
    void handleRemovePopup(unsigned int eventId);
    void handleBganConnectionErrorChanged(int cause);
    void handleModemChanged();
    void handleSignalExtendedSystemStatusChanged();
    void handleSignalSwUploadActiveChanged(int value);
    void handleSwUpdateResultUserConfirmed();
    void handleCipheringChanged(int value);
    void handleSignalPinAccepted();
    void handleSignalTakeScreenshot();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct ScreenRow;
    template <typename ScreenClass, ScreenClass* Window::*Member> struct ScreenMember;
    enum { NUMBER_OF_SCREENS = 8 };
    static const ScreenRow screenRows[NUMBER_OF_SCREENS];
    static int rowOfScreen(Screen::SCREEN_ID_ENUM screenId);

    void setUpGeometry();
    void createScreens();
    void connectModel();
    void alignWithModel();
    void tellVisibility();

    void updateHistory(Screen::SCREEN_ID_ENUM screenId);
    bool isAllowedToShow(Screen::SCREEN_ID_ENUM screenId);
    void showAllowedScreen(Screen::SCREEN_ID_ENUM screenId);
    void showScreen(Screen* pScreen);
    bool prepareStatusScreen();
    bool prepareActionScreen();
    bool prepareEnterPinScreen();
    QString idAndName(Screen::SCREEN_ID_ENUM screenId) const;
    void loadLanguage(LANG_ENUM lang);

    // window_flow.cpp
    void handlePointingStarted();
    void handlePointingEnded();
    void handleEventSimStatusChanged();
    void handleSimReady();

    // window_events.cpp
    struct SystemStatusRow;
    static const SystemStatusRow systemStatusRows[];
    void addPopup(unsigned int eventId, EVENT_SEVERITY_ENUM severity, POPUP_CLOSE_HANDLING_ENUM closeHandling,
                  const char* okFunction = nullptr);
    void setModemPopup(unsigned int eventId, bool wanted);
    bool pointingMayStart() const;
    void removeConnectionErrorPopups();
    void removeSystemPopupsExcept(unsigned int eventId);
    void showInitializing();
    void showUpdating();
    void showRebooting();
    void showStopping();
    void keepSafeMode();
    void showNormal();

    StatusUpdater* pStatusUpdater;        // not owned
    Screen* pCurrentScreen;               // set to be visible; null only during construction; owned below
    Screen* m_screens[NUMBER_OF_SCREENS]; // owned, in the order of the table; null until created
    ScreenPopup* pScreenPopup;            // the same objects, by their class
    ScreenStatus* pScreenStatus;
    ScreenBattery* pScreenBattery;
    ScreenAntenna* pScreenAntenna;
    ScreenAction* pScreenAction;
    ScreenMenu* pScreenMenu;
    ScreenPointing* pScreenPointing;
    ScreenEnterPin* pScreenEnterPin;
    QGridLayout* pGridLayout;              // owned
    QTranslator* pTranslator;              // owned; null until the first language was loaded
    QList<Screen::SCREEN_ID_ENUM> history; // the last one most recent
};

#endif
