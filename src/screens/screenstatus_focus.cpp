// The status screen's frame: how the arrow keys move it and what OK does on each icon.
#include "screens/screenstatus.h"

#include "app/window.h"
#include "common/log.h"
#include "model/bundle.h"
#include "model/event_ids.h"
#include "model/pointing_command.h"
#include "model/status_text.h"
#include "model/statusupdater.h"
#include "widgets/tbattlabel.h"
#include "widgets/tlabel.h"
#include "widgets/tsignallabel.h"

#include <QFrame>

namespace {

const int FOCUS_MARGIN = 4; // between the status text and its frame
const int SSID_NOTICE_MS = 3000;

} // namespace

// The first row for key and place whose condition holds is taken; without one the frame stays.
struct ScreenStatus::FocusMove {
    int key;
    FOCUS_STATE_ENUM from;
    bool (ScreenStatus::*condition)() const; // null: always
    FOCUS_STATE_ENUM to;
};

#define QUESTION &ScreenStatus::statusTextIsQuestion
#define CONNECT &ScreenStatus::connectIsOn
#define WARNINGS &ScreenStatus::warningsPresent
#define ALWAYS nullptr

const ScreenStatus::FocusMove ScreenStatus::focusMoves[] = {
    {Qt::Key_Up, FOCUS_NONE, ALWAYS, FOCUS_LAN},
    {Qt::Key_Up, FOCUS_STATUS_LABEL, ALWAYS, FOCUS_LAN},
    {Qt::Key_Up, FOCUS_CONNECT, ALWAYS, FOCUS_ANTENNA},
    {Qt::Key_Up, FOCUS_MENU, ALWAYS, FOCUS_BATTERY},

    {Qt::Key_Down, FOCUS_ANTENNA, CONNECT, FOCUS_CONNECT},
    {Qt::Key_Down, FOCUS_ANTENNA, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_WIFI, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_ISDN, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_LAN, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_PHONE, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_USB, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_WARNING, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Down, FOCUS_BATTERY, ALWAYS, FOCUS_MENU},

    {Qt::Key_Right, FOCUS_NONE, ALWAYS, FOCUS_MENU},
    {Qt::Key_Right, FOCUS_STATUS_LABEL, ALWAYS, FOCUS_MENU},
    {Qt::Key_Right, FOCUS_CONNECT, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Right, FOCUS_CONNECT, ALWAYS, FOCUS_MENU},
    {Qt::Key_Right, FOCUS_ANTENNA, ALWAYS, FOCUS_WIFI},
    {Qt::Key_Right, FOCUS_WIFI, ALWAYS, FOCUS_ISDN},
    {Qt::Key_Right, FOCUS_ISDN, ALWAYS, FOCUS_LAN},
    {Qt::Key_Right, FOCUS_LAN, ALWAYS, FOCUS_PHONE},
    {Qt::Key_Right, FOCUS_PHONE, ALWAYS, FOCUS_USB},
    {Qt::Key_Right, FOCUS_USB, WARNINGS, FOCUS_WARNING},
    {Qt::Key_Right, FOCUS_USB, ALWAYS, FOCUS_BATTERY},
    {Qt::Key_Right, FOCUS_WARNING, ALWAYS, FOCUS_BATTERY},
    {Qt::Key_Right, FOCUS_BATTERY, ALWAYS, FOCUS_ANTENNA},
    {Qt::Key_Right, FOCUS_MENU, CONNECT, FOCUS_CONNECT},
    {Qt::Key_Right, FOCUS_MENU, QUESTION, FOCUS_STATUS_LABEL},

    {Qt::Key_Left, FOCUS_NONE, CONNECT, FOCUS_CONNECT},
    {Qt::Key_Left, FOCUS_STATUS_LABEL, CONNECT, FOCUS_CONNECT},
    {Qt::Key_Left, FOCUS_CONNECT, ALWAYS, FOCUS_MENU},
    {Qt::Key_Left, FOCUS_ANTENNA, ALWAYS, FOCUS_BATTERY},
    {Qt::Key_Left, FOCUS_WIFI, ALWAYS, FOCUS_ANTENNA},
    {Qt::Key_Left, FOCUS_ISDN, ALWAYS, FOCUS_WIFI},
    {Qt::Key_Left, FOCUS_LAN, ALWAYS, FOCUS_ISDN},
    {Qt::Key_Left, FOCUS_PHONE, ALWAYS, FOCUS_LAN},
    {Qt::Key_Left, FOCUS_USB, ALWAYS, FOCUS_PHONE},
    {Qt::Key_Left, FOCUS_WARNING, ALWAYS, FOCUS_USB},
    {Qt::Key_Left, FOCUS_BATTERY, WARNINGS, FOCUS_WARNING},
    {Qt::Key_Left, FOCUS_BATTERY, ALWAYS, FOCUS_USB},
    {Qt::Key_Left, FOCUS_MENU, QUESTION, FOCUS_STATUS_LABEL},
    {Qt::Key_Left, FOCUS_MENU, CONNECT, FOCUS_CONNECT},
};

// What OK does on an item; a place without a row does nothing.
struct ScreenStatus::OkAction {
    FOCUS_STATE_ENUM focus;
    void (ScreenStatus::*run)(int argument);
    int argument;
};

const ScreenStatus::OkAction ScreenStatus::okActions[] = {
    {FOCUS_STATUS_LABEL, &ScreenStatus::answerQuestion, 0},
    {FOCUS_CONNECT, &ScreenStatus::openActionScreen, SCREEN_ACTION},
    {FOCUS_ANTENNA, &ScreenStatus::openScreen, SCREEN_ANTENNA},
    {FOCUS_WIFI, &ScreenStatus::toggleInterface, INTERFACE_NAME_WIFI},
    {FOCUS_ISDN, &ScreenStatus::toggleInterface, INTERFACE_NAME_ISDN},
    {FOCUS_LAN, &ScreenStatus::toggleInterface, INTERFACE_NAME_LAN},
    {FOCUS_PHONE, &ScreenStatus::toggleInterface, INTERFACE_NAME_PHONE},
    {FOCUS_USB, &ScreenStatus::toggleInterface, INTERFACE_NAME_USB},
    {FOCUS_WARNING, &ScreenStatus::openAlerts, SCREEN_MENU},
    {FOCUS_BATTERY, &ScreenStatus::openScreen, SCREEN_BATTERY},
    {FOCUS_MENU, &ScreenStatus::openScreen, SCREEN_MENU},
};

// An interface, its icon, and how it is asked to switch.
struct ScreenStatus::InterfaceRow {
    INTERFACE_NAME_ENUM interface;
    TLabel* ScreenStatus::*icon;
    void (StatusUpdater::*request)(int value) const;
};

const ScreenStatus::InterfaceRow ScreenStatus::interfaceRows[] = {
    {INTERFACE_NAME_WIFI, &ScreenStatus::pWifiLabel, &StatusUpdater::requestWifiEnabled},
    {INTERFACE_NAME_ISDN, &ScreenStatus::pIsdnLabel, &StatusUpdater::requestIsdnEnabled},
    {INTERFACE_NAME_LAN, &ScreenStatus::pLanLabel, &StatusUpdater::requestLanEnabled},
    {INTERFACE_NAME_PHONE, &ScreenStatus::pPhoneLabel, &StatusUpdater::requestPhoneEnabled},
    {INTERFACE_NAME_USB, &ScreenStatus::pUsbLabel, &StatusUpdater::requestUsbEnabled},
};

const ScreenStatus::InterfaceRow* ScreenStatus::findInterface(INTERFACE_NAME_ENUM interface)
{
    for (const InterfaceRow& row : interfaceRows) {
        if (row.interface == interface)
            return &row;
    }
    return nullptr;
}

TLabel* ScreenStatus::getFocusItem(FOCUS_STATE_ENUM state) const
{
    TLabel* const items[] = {nullptr,   pStatusLabel, pConnectLabel, pAntennaLabel, pWifiLabel, pIsdnLabel,
                             pLanLabel, pPhoneLabel,  pUsbLabel,     pWarningLabel, pBattLabel, pMenuLabel};
    if (state <= FOCUS_NONE || state > FOCUS_MENU) {
        logDebug() << "ScreenStatus::getFocusItem: ERROR: no legal state=" << state;
        return nullptr;
    }
    return items[state];
}

// On the status text the frame only shows while the text is a question; the place is kept all the same.
void ScreenStatus::setFocusFrame(FOCUS_STATE_ENUM state)
{
    focusState = state;
    const TLabel* const item = getFocusItem(state);
    if (state == FOCUS_STATUS_LABEL && !item)
        logDebug() << "ScreenStatus::setFocusFrame: ERROR: pStatusLabel==NULL";
    if (!item || (state == FOCUS_STATUS_LABEL && !statusTextIsQuestion())) {
        pSelectionFrame->setVisible(false);
        return;
    }
    QRect geometry = item->geometry();
    if (state == FOCUS_STATUS_LABEL) {
        geometry.translate(pStatusLabelFrame->pos());
        geometry.adjust(-FOCUS_MARGIN, -FOCUS_MARGIN, FOCUS_MARGIN, FOCUS_MARGIN);
    }
    pSelectionFrame->setGeometry(geometry);
    pSelectionFrame->setVisible(true);
}

bool ScreenStatus::statusTextIsQuestion() const
{
    return pStatusLabel->text().endsWith(QChar::fromLatin1('?'));
}

bool ScreenStatus::connectIsOn() const
{
    return pConnectLabel->getState() == INTERFACE_STATE_ON;
}

bool ScreenStatus::warningsPresent() const
{
    return pStatusUpdater->getWarningsPresent();
}

void ScreenStatus::keyLeftClicked()
{
    moveFocus(Qt::Key_Left, "keyLeftClicked");
}

void ScreenStatus::keyRightClicked()
{
    moveFocus(Qt::Key_Right, "keyRightClicked");
}

void ScreenStatus::keyUpClicked()
{
    moveFocus(Qt::Key_Up, "keyUpClicked");
}

void ScreenStatus::keyDownClicked()
{
    moveFocus(Qt::Key_Down, "keyDownClicked");
}

void ScreenStatus::moveFocus(int key, const char* function)
{
    logDebug() << "ScreenStatus::" << function << "(). this->focusState=" << focusState;
    for (const FocusMove& move : focusMoves) {
        if (move.key != key || move.from != focusState)
            continue;
        if (!move.condition || (this->*move.condition)()) {
            setFocusFrame(move.to);
            break;
        }
    }
    logDebug() << "ScreenStatus::" << function << "(). this->focusState=" << focusState << " end of function";
}

void ScreenStatus::keyOkClicked()
{
    logDebug() << "ScreenStatus::keyOkClicked(). this->focusState=" << focusState;
    for (const OkAction& action : okActions) {
        if (action.focus == focusState) {
            (this->*action.run)(action.argument);
            break;
        }
    }
    logDebug() << "ScreenStatus::keyOkClicked(). this->focusState=" << focusState << " end of function";
}

// Judged by the id of the text, not by its words.
void ScreenStatus::answerQuestion(int)
{
    const STATUS_TEXT_ENUM id = pStatusUpdater->getCurrentStatusTextId();
    if (id == STATUS_TEXT_ENTER_PIN)
        openScreen(SCREEN_ENTER_PIN);
    else if (id == STATUS_TEXT_POINT_NOW)
        send_pointing_msg("start");
}

void ScreenStatus::openActionScreen(int screenId)
{
    if (isConnectAllowed())
        openScreen(screenId);
}

void ScreenStatus::openScreen(int screenId)
{
    m_pMainWindow->showScreen(static_cast<SCREEN_ID_ENUM>(screenId), false);
}

void ScreenStatus::openAlerts(int screenId)
{
    m_pMainWindow->scrollToAlertMenuAndExpand();
    openScreen(screenId);
}

// An interface that is on its way, or of which nothing is known, is left alone.
void ScreenStatus::toggleInterface(int interface)
{
    const InterfaceRow* const row = findInterface(static_cast<INTERFACE_NAME_ENUM>(interface));
    const INTERFACE_STATE_ENUM state = pStatusUpdater->getInterfaceState(row->interface);
    if (state == INTERFACE_STATE_OFF) {
        pStatusUpdater->setInterfaceState(row->interface, INTERFACE_STATE_ACTIVATING);
        (pStatusUpdater->*row->request)(1);
        if (row->interface == INTERFACE_NAME_WIFI)
            m_pMainWindow->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_AUTO, SSID_NOTICE_MS,
                                    nullptr, nullptr, pStatusUpdater->getWifiSsidUserStr(), -1);
    } else if (state == INTERFACE_STATE_ON) {
        pStatusUpdater->setInterfaceState(row->interface, INTERFACE_STATE_DEACTIVATING);
        (pStatusUpdater->*row->request)(0);
    }
}

void ScreenStatus::updateInterfaceState(INTERFACE_NAME_ENUM interface)
{
    const InterfaceRow* const row = findInterface(interface);
    if (!row) {
        logDebug() << "StatusUpdater::updateInterfaceState(): ERROR!!! interface="
                   << interface << " not supported!";
        return;
    }
    (this->*row->icon)->setState(pStatusUpdater->getInterfaceState(interface));
    if (interface == INTERFACE_NAME_WIFI)
        updateNumberOfWifiClients();
}
