// The status screen, the panel's home: signal, connections, interfaces, warning sign, battery, menu and
// the status text, with a frame that the arrow keys move from icon to icon.
//
// It keeps nothing but the place of the frame: every value is fetched from the model when the model says
// that it has changed. How the frame moves and what OK does stands in screenstatus_focus.cpp.
// GUI thread only; the model's signals from the bus thread arrive queued.
#ifndef LUMENPANEL_SCREENS_SCREENSTATUS_H
#define LUMENPANEL_SCREENS_SCREENSTATUS_H

#include "model/interfaces.h"
#include "screens/screen.h"

#include <QString>

class QFrame;
class QHBoxLayout;
class QPropertyAnimation;
class QSpacerItem;
class TBattLabel;
class TLabel;
class TSignalLabel;

class ScreenStatus : public Screen {
    Q_OBJECT

public:
    enum FOCUS_STATE_ENUM {
        FOCUS_NONE = 0,
        FOCUS_STATUS_LABEL = 1, // the frame shows only while the text is a question
        FOCUS_CONNECT = 2,
        FOCUS_ANTENNA = 3,
        FOCUS_WIFI = 4,
        FOCUS_ISDN = 5,
        FOCUS_LAN = 6,
        FOCUS_PHONE = 7,
        FOCUS_USB = 8,
        FOCUS_WARNING = 9,
        FOCUS_BATTERY = 10,
        FOCUS_MENU = 11
    };

    // Builds the screen, fills it from the model and connects it. pWindow is not owned and must outlive
    // the screen.
    explicit ScreenStatus(Window* pWindow);

    // Puts a text on the status line, centred; more lines than fit swing up and down.
    void setStatusText(const QString& text);
    // Moves the frame. The item of a state is null for FOCUS_NONE and for what is no state.
    void setFocusFrame(FOCUS_STATE_ENUM state);
    TLabel* getFocusItem(FOCUS_STATE_ENUM state) const;
    FOCUS_STATE_ENUM getFocusState() const { return focusState; }

    void keyLeftClicked() override;
    void keyRightClicked() override;
    void keyUpClicked() override;
    void keyDownClicked() override;
    // May write to the bus.
    void keyOkClicked() override;

public slots:
    // Each fetches what it shows from the model; the two with an argument are told it.
    void updateAntennaLabel(int level); // tenths of dBHz
    void updateAntennaIcon(int bars);   // 0 to 4
    void updateBeamType();
    void updateNumberOfConnections();
    void updateConnectIcon();
    void updateNumberOfWifiClients();
    void updateInterfaceState(INTERFACE_NAME_ENUM interface);
    void handleWarningsPresentChanged(bool present);
    void updateStatusText();
    void updateBatteryRemainingTime();

    // The swinging text has come to an end of its way and turns round.
    void changeStatusLabelAnimationDirection();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // Construction
    TLabel* createIcon(int iconId, const char* iconName, const char* objectName);
    void createIcons();
    void createStatusLabel();
    void createLayout();
    void createSelectionFrame();
    void connectModel();
    void fillFromModel();

    void placeStatusText(int x, int lines, int blockHeight);
    bool isConnectAllowed() const;

    // screenstatus_focus.cpp
    struct FocusMove;
    struct OkAction;
    struct InterfaceRow;
    static const FocusMove focusMoves[];
    static const OkAction okActions[];
    static const InterfaceRow interfaceRows[];
    static const InterfaceRow* findInterface(INTERFACE_NAME_ENUM interface);
    void moveFocus(int key, const char* function);
    bool statusTextIsQuestion() const;
    bool connectIsOn() const;
    bool warningsPresent() const;
    void answerQuestion(int);
    void openActionScreen(int);
    void openScreen(int screenId);
    void openAlerts(int);
    void toggleInterface(int interface);

    FOCUS_STATE_ENUM focusState;
    // All owned.
    TSignalLabel* pAntennaLabel;
    TLabel* pConnectLabel;
    TLabel* pWifiLabel;
    TLabel* pIsdnLabel;
    TLabel* pLanLabel;
    TLabel* pPhoneLabel;
    TLabel* pUsbLabel;
    TLabel* pWarningLabel;
    QSpacerItem* pWarningSpacer; // keeps the warning sign's place while it is hidden
    QHBoxLayout* pIconRow;
    TBattLabel* pBattLabel;
    TLabel* pMenuLabel;
    QFrame* pStatusLabelFrame;
    TLabel* pStatusLabel;
    QPropertyAnimation* pStatusLabelAnimation;
    QFrame* pSelectionFrame;
};

#endif
