// What the main window makes of the model's changes: popups, the first show, and commands to the pointing
// process. The screens themselves and their order are window.cpp's; the queue of popups is the popup
// screen's. GUI thread only; every handler logs what it doesn't understand and goes on.
#include "app/window.h"

#include "common/checked.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/pointing_command.h"
#include "model/statusupdater.h"
#include "screens/screenpopup.h"

namespace {

const char SOURCE[] = "window"; // the class, as assertions name it

// A run of neighbouring numbers, both ends included.
struct IdRun {
    unsigned int first;
    unsigned int last;
};

// Failures of a connection: causes of the network, and the events that tell them. Within a run cause and
// event go up together.
const struct {
    unsigned int firstCause;
    unsigned int lastCause;
    unsigned int firstEvent;
} causeRuns[] = {
    {1, 8, EV_AP_GUI_CONN_LIMIT_EXCEEDED}, {10, 10, EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT},
    {0x10000008, 0x10000008, 0x1001000f},  {0x1000001a, 0x10000022, 0x10010011},
    {0x10000023, 0x1000002e, 0x10010020},  {0x10024002, 0x10024003, 0x10010075},
    {0x10024006, 0x10024010, 0x10010077},  {0x10024100, 0x10024106, 0x1001003b},
    {0x10024107, 0x10024109, 0x10010043},  {0x10034011, 0x10034011, 0x10010082},
    {0x10034014, 0x10034017, 0x10010083},  {0x1003405f, 0x10034062, 0x10010087},
    {0x10034064, 0x10034065, 0x1001008b},  {0x1003406f, 0x1003406f, 0x1001008d},
    {0x10040001, 0x10040005, 0x10010030},  {0x10040008, 0x10040008, 0x10010035},
    {0x10040101, 0x10040103, 0x10010036},  {0x10040107, 0x10040107, 0x10010039},
    {0x1004010b, 0x1004010b, 0x1001003a},  {0x10051001, 0x10051007, 0x10010090},
    {0x10086300, 0x1008630d, 0x10010050},  {0x10086314, 0x1008631d, 0x1001005f},
    {0x1008631e, 0x1008631e, 0x1001005e}, // out of sequence, as it must be
    {0x1008631f, 0x10086326, 0x10010069},
};
const int CAUSE_NONE = 0;
const int CAUSE_IGNORED = 9;

// What the end of a connection error takes away. 0x10010 lies outside and stays until the user closes it;
// 0x1000f belongs to the software update.
const IdRun connectionErrorEvents[] = {{0x10006, 0x1000e}, {0x1001000f, 0x10010096}};

// Results of a software update that the user has to confirm.
const IdRun confirmedEvents[] = {
    {EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR, EV_SW_UPDATE_ROLLED_BACK},
    {EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED, EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE},
    {EV_SW_UPDATE_ONLINE_GENERAL_ERROR, EV_SW_UPDATE_ONLINE_GENERAL_ERROR},
    {EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED, EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED},
    {EV_SW_UPDATE_TRANSFER_ERROR, EV_SW_UPDATE_TRANSFER_TIMEOUT},
};

// The popups that tell the state of the system; at most one stands at a time.
const unsigned int systemEvents[] = {EV_AP_GUI_STATUS_SYSTEM_INITIALIZING, EV_AP_GUI_STATUS_SYSTEM_REBOOTING,
                                     EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN};

bool isConfirmedByUser(unsigned int eventId)
{
    for (const IdRun& run : confirmedEvents) {
        if (eventId >= run.first && eventId <= run.last)
            return true;
    }
    return false;
}

// The event of a cause, 0 for a cause that is not in the table.
unsigned int eventOfCause(unsigned int cause)
{
    for (const auto& run : causeRuns) {
        if (cause >= run.firstCause && cause <= run.lastCause)
            return run.firstEvent + (cause - run.firstCause);
    }
    return 0;
}

} // namespace

void Window::addEvent(unsigned int eventId, EVENT_SEVERITY_ENUM severity,
                      POPUP_CLOSE_HANDLING_ENUM closeHandling, int showForMilliseconds,
                      const char* okFunction, const char* cancelFunction, const QString& extraText,
                      long long epochTimeMs)
{
    panelAssert(pScreenPopup, SOURCE, __LINE__);
    const QString name = pScreenPopup->getEventIdAsString(eventId);
    logDebug() << "Window::addEvent(" << name << ", eventId=0x" << hexText(eventId)
               << ", severity=" << pStatusUpdater->getEventSeverityAsString(severity)
               << "): Start of function.";
    popup_event_t popup;
    popup.eventId = eventId;
    popup.severity = severity;
    popup.closeHandling = closeHandling;
    popup.showForMilliseconds = showForMilliseconds;
    popup.text = pStatusUpdater->getEventText(eventId) + extraText;
    popup.timeStamp =
        epochTimeMs == -1 ? QDateTime::currentDateTime() : QDateTime::fromMSecsSinceEpoch(epochTimeMs);
    popup.okFunction = okFunction;
    popup.cancelFunction = cancelFunction;
    if (showForMilliseconds < 1 && closeHandling == POPUP_CLOSE_AUTO)
        logDebug() << "Window::addEvent(" << name
                   << "): ERROR !!!!  closeHandling==POPUP_CLOSE_AUTO and showForMilliseconds="
                   << showForMilliseconds << " is not an expected combination!!!";
    pScreenPopup->addEvent(popup);
}

// A popup as all handlers here want it: it stands until it is closed, with its own text, as of now.
void Window::addPopup(unsigned int eventId, EVENT_SEVERITY_ENUM severity,
                      POPUP_CLOSE_HANDLING_ENUM closeHandling, const char* okFunction)
{
    addEvent(eventId, severity, closeHandling, 0, okFunction, nullptr, QString(), -1);
}

void Window::removePopupIfExist(unsigned int eventId)
{
    const bool exists = pScreenPopup->eventExistInPopupList(eventId);
    logDebug() << "Window::removePopupIfExist(" << pScreenPopup->getEventIdAsString(eventId)
               << (exists ? "): Event exist in popup list."
                          : "): Event does not exist in popup list. Nothing to remove.");
    if (exists)
        pScreenPopup->closePopup(eventId, false);
}

void Window::handleRemovePopup(unsigned int eventId)
{
    logDebug() << "Window::handleRemovePopup(): eventId=0x" << hexText(eventId);
    removePopupIfExist(eventId);
}

void Window::handleShowPopUpEvent(const fmmi_evt_t& event)
{
    const EVENT_SEVERITY_ENUM severity = static_cast<EVENT_SEVERITY_ENUM>(event.severity);
    switch (event.identifier) {
    case EV_SW_UPDATE_ON:
        // handleSignalSwUploadActiveChanged puts it up.
        break;
    case EV_SW_UPDATE_SW_INTEGRITY_ERROR:
    case EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT:
        addPopup(event.identifier, severity, POPUP_CLOSE_NOT_BY_USER);
        break;
    default:
        addPopup(event.identifier, severity, POPUP_CLOSE_OK,
                 isConfirmedByUser(event.identifier) ? "handleSwUpdateResultUserConfirmed" : nullptr);
    }
}

void Window::handleSwUpdateResultUserConfirmed()
{
    logDebug() << "Window::handleSwUpdateResultUserConfirmed(): Start of function.";
    pStatusUpdater->setSwResultUserConfirmed();
}

void Window::handleBganConnectionErrorChanged(int cause)
{
    logDebug() << "Window::handleBganConnectionErrorChanged(): value=" << cause;
    if (cause == CAUSE_NONE) {
        removeConnectionErrorPopups();
        return;
    }
    if (cause == CAUSE_IGNORED)
        return;
    const unsigned int eventId = eventOfCause(static_cast<unsigned int>(cause));
    addPopup(eventId ? eventId : EV_AP_GUI_CONN_UNKNOWN, EVENT_WARNING, POPUP_CLOSE_OK);
    if (!eventId)
        logDebug() << "Window::handleBganConnectionErrorChanged(). Unsupported value=" << cause;
}

void Window::removeConnectionErrorPopups()
{
    if (!pScreenPopup || pScreenPopup->getNumberOfPopupsToShow() <= 0)
        return;
    for (const IdRun& run : connectionErrorEvents) {
        for (unsigned int eventId = run.first; eventId <= run.last; ++eventId)
            removePopupIfExist(eventId);
    }
}

// The user's selection is only logged; it has no part in the decision.
void Window::handleModemChanged()
{
    const int wanActive = pStatusUpdater->getWanActive();
    const int startupWan = pStatusUpdater->getModemOrBganAtStartup();
    const int modemPresent = pStatusUpdater->getModemPresent();
    const int modemActivated = pStatusUpdater->getModemActivated();
    if (debugLogWanted())
        logDebug() << "Window::handleModemChanged(): "
                   << "wanActive = " << pStatusUpdater->getWanActiveStrFromEnum(wanActive)
                   << ", startupWan = " << pStatusUpdater->getStartupWanStrFromEnum(startupWan)
                   << ", modemPresent = " << modemPresent << ", modemActivated = " << modemActivated
                   << ", wanUserSelection = "
                   << pStatusUpdater->getWanUserSelectionStrFromEnum(pStatusUpdater->getWanUserSelection());

    bool modemWanted = false; // in use if it is there, searched for if it isn't
    bool selectOnWeb = false;
    bool requestPointing = false;
    switch (wanActive) {
    case WAN_ACTIVE_NONE:
        modemWanted = modemActivated == 1;
        selectOnWeb = !modemWanted && startupWan == STARTUP_WAN_USER_SELECTTION;
        break;
    case WAN_ACTIVE_BGAN:
    case WAN_ACTIVE_MODEM_AND_BGAN:
        modemWanted = modemActivated == 1;
        requestPointing = !modemWanted && pointingMayStart();
        break;
    case WAN_ACTIVE_MODEM:
        modemWanted = true;
        break;
    case WAN_ACTIVE_UNKNOWN:
        // In spite of the words the popups are removed below.
        logDebug() << "Window::handleModemChanged(): WAN_ACTIVE_UNKNOWN. Do not do anything. Wait for WAN "
                      "status to become ready.";
        break;
    default:
        break;
    }
    if (requestPointing) {
        logDebug() << "Window::handleModemChanged(): About to request pointing started";
        send_pointing_msg("start");
    }
    setModemPopup(EV_AP_GUI_MODEM_IN_USE, modemWanted && modemPresent == 1);
    setModemPopup(EV_AP_GUI_SEARCHING_FOR_MODEM, modemWanted && modemPresent != 1);
    setModemPopup(EV_AP_GUI_SELECT_NETWORK_ON_WEB, selectOnWeb);
}

bool Window::pointingMayStart() const
{
    return pStatusUpdater->getExtendedSystemStatus() == SYSTEM_STATUS_NORMAL &&
           pStatusUpdater->getPointingMode() == POINTING_STATUS_NOT_POINTED &&
           pStatusUpdater->getPointingAtStartup() != 0 && pStatusUpdater->getSwUploadActive() <= 0 &&
           pStatusUpdater->getSimStatus() == SIM_READY;
}

void Window::setModemPopup(unsigned int eventId, bool wanted)
{
    logDebug() << (wanted ? "Window::handleModemChanged(): Adding event "
                          : "Window::handleModemChanged(): Removing event ")
               << pScreenPopup->getEventIdAsString(eventId);
    if (wanted)
        addPopup(eventId, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER);
    else
        removePopupIfExist(eventId);
}

// The show rule: the display turns on with normal operation or a software update, and not before.
const struct Window::SystemStatusRow {
    int status;
    void (Window::*handle)();
} Window::systemStatusRows[] = {
    {0, &Window::showInitializing},
    {1, &Window::showInitializing},
    {SYSTEM_STATUS_UPDATING, &Window::showUpdating},
    {SYSTEM_STATUS_REBOOTING, &Window::showRebooting},
    {SYSTEM_STATUS_STOPPING, &Window::showStopping},
    {5, &Window::showRebooting},
    {8, &Window::keepSafeMode},
    {SYSTEM_STATUS_NORMAL, &Window::showNormal},
    {11, &Window::showNormal},
    {12, &Window::showNormal},
    {13, &Window::showNormal},
    {14, &Window::showNormal},
    {20, &Window::showNormal},
};

void Window::handleSignalExtendedSystemStatusChanged()
{
    const int status = pStatusUpdater->getExtendedSystemStatus();
    logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): getExtendedSystemStatus()=" << status;
    for (const SystemStatusRow& row : systemStatusRows) {
        if (row.status == status) {
            (this->*row.handle)();
            return;
        }
    }
    logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): ERROR!!! Illegal value "
                  "getExtendedSystemStatus()="
               << status;
}

void Window::removeSystemPopupsExcept(unsigned int eventId)
{
    for (unsigned int systemEvent : systemEvents) {
        if (systemEvent != eventId)
            removePopupIfExist(systemEvent);
    }
}

void Window::showInitializing()
{
    addPopup(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    removeSystemPopupsExcept(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING);
}

// A visible window stays as it is, the popup of the initialisation included.
void Window::showUpdating()
{
    if (isVisible())
        return;
    removePopupIfExist(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING);
    logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): SYSTEM_STATUS_UPDATING: About to run "
                  "this->show()";
    show();
}

void Window::showRebooting()
{
    if (pStatusUpdater->eventExist(EV_AP_TEMP_CLOSE_TERM))
        logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): Ingoring "
                      "EV_AP_GUI_STATUS_SYSTEM_REBOOTING as EV_AP_TEMP_CLOSE_TERM shall be shown instead.";
    else
        addPopup(EV_AP_GUI_STATUS_SYSTEM_REBOOTING, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER);
    removeSystemPopupsExcept(EV_AP_GUI_STATUS_SYSTEM_REBOOTING);
}

void Window::showStopping()
{
    if (pStatusUpdater->eventExist(EV_AP_TEMP_CLOSE_TERM))
        logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): Ingoring SYSTEM_STATUS_STOPPING as "
                      "EV_AP_TEMP_CLOSE_TERM shall be shown instead.";
    else
        addPopup(EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN, EVENT_FATAL, POPUP_CLOSE_NOT_BY_USER);
    removeSystemPopupsExcept(EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN);
}

void Window::keepSafeMode()
{
    logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): Safemode. GUI not shown. Do nothing";
}

void Window::showNormal()
{
    removeSystemPopupsExcept(0);
    if (isVisible())
        return;
    logDebug() << "Window::handleSignalExtendedSystemStatusChanged(): About to run this->show()";
    show();
}

void Window::handleSignalSwUploadActiveChanged(int value)
{
    panelAssert(pScreenPopup, SOURCE, __LINE__);
    logDebug() << "Window::handleSignalSwUploadActiveChanged(): swUploadActive=" << value;
    if (value > 0) {
        const bool antenna = value == 2;
        stopPointing();
        addPopup(antenna ? EV_AP_GUI_SW_UPDATE_ANTENNA : EV_SW_UPDATE_ON, EVENT_WARNING,
                 POPUP_CLOSE_NOT_BY_USER);
        removePopupIfExist(antenna ? EV_SW_UPDATE_ON : EV_AP_GUI_SW_UPDATE_ANTENNA);
        removePopupIfExist(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING);
        return;
    }
    const int status = pStatusUpdater->getExtendedSystemStatus();
    if (status == 0 || status == 1)
        addPopup(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER);
    removePopupIfExist(EV_SW_UPDATE_ON);
    removePopupIfExist(EV_AP_GUI_SW_UPDATE_ANTENNA);
}

// The log lines bear the name of the function that this once was a part of.
void Window::stopPointing()
{
    if (pStatusUpdater->getPointingMode() != POINTING_STATUS_POINTING)
        return;
    logDebug() << "Window::handleShowPopUpEvent(): About to run send_pointing_msg(\"stop\")";
    send_pointing_msg("stop");
    logDebug() << "Window::handleShowPopUpEvent(): finished command send_pointing_msg(\"stop\")";
}

void Window::handleCipheringChanged(int value)
{
    logDebug() << "Window::handleCipheringChanged(int value): Start of function. value=" << value;
    if (value == 0)
        addPopup(EV_AP_GUI_CIPHERING_OFF, EVENT_WARNING, POPUP_CLOSE_OK);
    else if (value == 3)
        removePopupIfExist(EV_AP_GUI_CIPHERING_OFF);
}

void Window::handleSignalPinAccepted()
{
    logDebug() << "Window::handleSignalPinAccepted(): About to remove popup";
    removePopupIfExist(EV_AP_GUI_VALIDATING_PIN);
}

// Without the screen saver, so that the picture shows what is behind it.
void Window::handleSignalTakeScreenshot()
{
    panelAssert(pScreenPopup, SOURCE, __LINE__);
    panelAssert(pCurrentScreen, SOURCE, __LINE__);
    pScreenPopup->closePopup(EV_AP_GUI_SCREEN_SAVER, false);
    pCurrentScreen->createScreenshot();
    restartScreenSaverTimer();
}
