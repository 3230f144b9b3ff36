// How the model drives the screens: the state events of pointing and of the SIM. GUI thread only.
#include "app/window.h"

#include "common/checked.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/pointing_command.h"
#include "model/statusupdater.h"
#include "screens/screenmenu.h"
#include "screens/screenpopup.h"
#include "screens/screenstatus.h"

namespace {
const char SOURCE[] = "window"; // the class, as assertions name it
}

void Window::handleStateEvent(STATE_EVENT stateEvent)
{
    panelAssert(pScreenPopup, SOURCE, __LINE__);
    panelAssert(pScreenStatus, SOURCE, __LINE__);
    static const struct {
        STATE_EVENT event;
        void (Window::*handle)();
    } handlers[] = {
        {STATE_EVENT_NOT_POINTED, &Window::handlePointingEnded},
        {STATE_EVENT_POINTING, &Window::handlePointingStarted},
        {STATE_EVENT_POINTED, &Window::handlePointingEnded},
        {STATE_EVENT_SIM_STATUS_CHANGED, &Window::handleEventSimStatusChanged},
    };
    bool known = false;
    for (const auto& handler : handlers) {
        if (handler.event == stateEvent) {
            known = true;
            (this->*handler.handle)();
        }
    }
    if (!known)
        logDebug() << "Window::handleStateEvent(STATE_EVENT stateEvent): ERROR!!!! Unknown stateEvent="
                   << stateEvent;
    logDebug() << "Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=" << stateEvent
               << ": About to run setStatusText()";
    pScreenStatus->updateStatusText();
}

void Window::handlePointingEnded()
{
    pScreenStatus->updateStatusText();
    hideAndRemoveScreenFromHistory(Screen::SCREEN_POINTING);
}

// With a warning or worse on display pointing waits; showPreviousScreen brings it up afterwards.
void Window::handlePointingStarted()
{
    removePopupIfExist(EV_AP_GUI_SCREEN_SAVER);
    restartScreenSaverTimer();
    if (pScreenPopup->getNumberOfPopupWarningsErrorsFatals() == 0 &&
        pCurrentScreen->getId() != Screen::SCREEN_POINTING)
        showScreen(Screen::SCREEN_POINTING, true);
}

void Window::handleEventSimStatusChanged()
{
    switch (pStatusUpdater->getSimStatus()) {
    case SIM_PIN_NEEDED:
        showScreen(Screen::SCREEN_ENTER_PIN, true);
        break;
    case SIM_BLOCKED:
    case SIM_LOCKED:
        hideAndRemoveScreenFromHistory(Screen::SCREEN_ENTER_PIN);
        showScreen(Screen::SCREEN_STATUS, false);
        break;
    case SIM_READY:
        hideAndRemoveScreenFromHistory(Screen::SCREEN_ENTER_PIN);
        handleSimReady();
        break;
    case SIM_STATUS_UNKNOWN:
        break;
    default:
        hideAndRemoveScreenFromHistory(Screen::SCREEN_ENTER_PIN);
    }
}

// Where the terminal is to point at start-up, the current screen stays until the pointing has begun.
void Window::handleSimReady()
{
    if (pStatusUpdater->getPointingAtStartup() == 0 || pStatusUpdater->getSwUploadActive() > 0 ||
        pStatusUpdater->getWanActive() != WAN_ACTIVE_BGAN) {
        showScreen(Screen::SCREEN_STATUS, false);
        return;
    }
    const int extendedSystemStatus = pStatusUpdater->getExtendedSystemStatus();
    if (extendedSystemStatus <= SYSTEM_STATUS_NOT_UP_LAST) {
        logDebug() << "Window::handleEventSimStatusChanged(): SIM_READY, but do not request pointing started "
                      "yet, as extendedSystemStatus="
                   << extendedSystemStatus;
        return;
    }
    logDebug() << "Window::handleEventSimStatusChanged(): Request pointing started, as SIM_READY and "
                  "extendedSystemStatus="
               << extendedSystemStatus;
    send_pointing_msg("start");
}

void Window::scrollToAlertMenuAndExpand()
{
    pScreenMenu->scrollToAlertMenuAndExpand();
}
