// The way to the network, the pointing of the antenna, and the state of the terminal's system, on which
// the automatic pointing depends. Setters come from the bus thread; their signals go there.
#include "model/statusupdater.h"

#include "common/log.h"
#include "model/pointing_command.h"

namespace {

struct EnumName {
    int value;
    const char* name;
};

const EnumName WAN_ACTIVE_NAMES[] = {
    {WAN_ACTIVE_UNKNOWN, "WAN_ACTIVE_UNKNOWN"},
    {WAN_ACTIVE_NONE, "WAN_ACTIVE_NONE"},
    {WAN_ACTIVE_BGAN, "WAN_ACTIVE_BGAN"},
    {WAN_ACTIVE_MODEM, "WAN_ACTIVE_MODEM"},
    {WAN_ACTIVE_MODEM_AND_BGAN, "WAN_ACTIVE_MODEM_AND_BGAN"},
};

const EnumName STARTUP_WAN_NAMES[] = {
    {STARTUP_WAN_UNKNOWN, "STARTUP_WAN_UNKNOWN"},
    {STARTUP_WAN_MODEM_IF_AVAILABLE, "STARTUP_WAN_MODEM_IF_AVAILABLE"},
    {STARTUP_WAN_USER_SELECTTION, "STARTUP_WAN_USER_SELECTTION"},
    {STARTUP_WAN_BGAN, "STARTUP_WAN_BGAN"},
    {STARTUP_WAN_MODEM, "STARTUP_WAN_MODEM"},
};

const EnumName WAN_USER_SELECTION_NAMES[] = {
    {WAN_USER_SELECTION_UNKNOWN, "WAN_USER_SELECTION_UNKNOWN"},
    {WAN_USER_SELECTION_NONE, "WAN_USER_SELECTION_NONE"},
    {WAN_USER_SELECTION_BGAN, "WAN_USER_SELECTION_BGAN"},
    {WAN_USER_SELECTION_MODEM, "WAN_USER_SELECTION_MODEM"},
};

template <int N> QString nameAndValue(const EnumName (&names)[N], int value, const char* function)
{
    for (const EnumName& row : names)
        if (row.value == value)
            return QString::fromLatin1("%1 (%2)").arg(QString::fromLatin1(row.name)).arg(value);
    logDebug() << function << "(): ERROR!!! value=" << value << " not supported!!!";
    return QString();
}

bool bganIsActive(ENUM_WAN_ACTIVE value)
{
    return value == WAN_ACTIVE_BGAN || value == WAN_ACTIVE_MODEM_AND_BGAN;
}

bool bganIsInactive(ENUM_WAN_ACTIVE value)
{
    return value == WAN_ACTIVE_UNKNOWN || value == WAN_ACTIVE_NONE || value == WAN_ACTIVE_MODEM;
}

} // namespace

void StatusUpdater::setPointingMode(ENUM_POINTED_STATUS value)
{
    if (!storeChanged(pointingMode, value, __func__)) {
        logDebug() << "StatusUpdater::setPointingMode(): pointingMode=" << value
                   << " same as previous value. Ignoring it.";
        return;
    }
    struct Row {
        ENUM_POINTED_STATUS mode;
        STATE_EVENT event;
    };
    static const Row ROWS[] = {
        {POINTING_STATUS_NOT_POINTED, STATE_EVENT_NOT_POINTED},
        {POINTING_STATUS_POINTING, STATE_EVENT_POINTING},
        {POINTING_STATUS_POINTED, STATE_EVENT_POINTED},
    };
    for (const Row& row : ROWS) {
        if (row.mode == value) {
            announce(__func__, "stateEventReceived", &StatusUpdater::stateEventReceived, row.event);
            return;
        }
    }
    if (value == POINTING_STATUS_UNKNOWN)
        logDebug() << "StatusUpdater::setPointingMode(): Nothing to emit, as pointing status is unknown.";
    else
        logWarning() << "StatusUpdater::setPointingMode(): ERROR!!!! pointingMode=" << value
                     << " is unknown!!!";
}

int StatusUpdater::getPointingMode() const
{
    return read(pointingMode, __func__);
}

void StatusUpdater::setPointingAtStartup(int value)
{
    store(pointingAtStartup, value, __func__);
}

int StatusUpdater::getPointingAtStartup() const
{
    return read(pointingAtStartup, __func__);
}

void StatusUpdater::setWanActive(ENUM_WAN_ACTIVE value)
{
    StatusLock lock(statusMutex, __func__);
    const ENUM_WAN_ACTIVE oldValue = m_wanActive;
    m_wanActive = value;
    lock.unlock();
    if (value == oldValue)
        return;
    if (bganIsInactive(oldValue) && bganIsActive(value))
        startPointingIfSystemReady();
    logDebug() << "StatusUpdater::setWanActive(): About to emit signalWanActiveChanged";
    emit signalWanActiveChanged();
}

int StatusUpdater::getWanActive() const
{
    return read(m_wanActive, __func__);
}

// A modem, a selection or a start-up rule that becomes unknown is kept, but nobody is told: the next
// reading will tell.
void StatusUpdater::setModemPresent(int value)
{
    if (storeChanged(modemPresent, value, __func__) && value != -1)
        announce(__func__, "signalModemPresentChanged", &StatusUpdater::signalModemPresentChanged);
}

int StatusUpdater::getModemPresent() const
{
    return read(modemPresent, __func__);
}

void StatusUpdater::setModemActivated(int value)
{
    if (storeChanged(modemActivated, value, __func__))
        announce(__func__, "signalModemActivatedChanged", &StatusUpdater::signalModemActivatedChanged);
}

int StatusUpdater::getModemActivated() const
{
    return read(modemActivated, __func__);
}

void StatusUpdater::setWanUserSelection(ENUM_WAN_USER_SELECTION value)
{
    if (storeChanged(wanUserSelection, value, __func__) && value != WAN_USER_SELECTION_UNKNOWN)
        announce(__func__, "signalWanUserSelectionChanged", &StatusUpdater::signalWanUserSelectionChanged);
}

int StatusUpdater::getWanUserSelection() const
{
    return read(wanUserSelection, __func__);
}

void StatusUpdater::setModemOrBganAtStartup(ENUM_STARTUP_WAN value)
{
    if (storeChanged(modemOrBganAtStartup, value, __func__) && value != STARTUP_WAN_UNKNOWN)
        announce(__func__, "signalModemOrBganAtStartupChanged",
                 &StatusUpdater::signalModemOrBganAtStartupChanged);
}

int StatusUpdater::getModemOrBganAtStartup() const
{
    return read(modemOrBganAtStartup, __func__);
}

void StatusUpdater::setExtendedSystemStatus(int value)
{
    StatusLock lock(statusMutex, __func__);
    const int oldValue = extendedSystemStatus;
    extendedSystemStatus = value;
    lock.unlock();
    if (value == oldValue)
        return;
    if (oldValue <= SYSTEM_STATUS_NOT_UP_LAST && value == SYSTEM_STATUS_NORMAL) {
        logDebug() << "StatusUpdater::setExtendedSystemStatus(): goingFromInitToNormal=TRUE";
        startPointingIfSystemReady();
    }
    announce(__func__, "signalExtendedSystemStatusChanged",
             &StatusUpdater::signalExtendedSystemStatusChanged);
}

int StatusUpdater::getExtendedSystemStatus() const
{
    return read(extendedSystemStatus, __func__);
}

void StatusUpdater::startPointingIfSystemReady()
{
    const int systemStatus = getExtendedSystemStatus();
    const int wanted = getPointingAtStartup();
    const int uploading = getSwUploadActive();
    const int sim = getSimStatus();
    const int wan = getWanActive();
    logDebug() << "StatusUpdater::startPointingIfSystemReady(): extendedSystemStatus=" << systemStatus
               << ", pointingAtStartup=" << wanted << ", swUploadActive=" << uploading
               << ", simStatus=" << sim << ", m_wanActive=" << wan;
    // WAN_ACTIVE_MODEM_AND_BGAN brings setWanActive() here, but does not count.
    if (systemStatus == SYSTEM_STATUS_NORMAL && uploading == 0 && wan == WAN_ACTIVE_BGAN &&
        sim == SIM_READY && wanted != 0) {
        logDebug() << "StatusUpdater::startPointingIfSystemReady(): About to request pointing started";
        send_pointing_msg("start");
    } else {
        logDebug() << "StatusUpdater::startPointingIfSystemReady(): Do not request pointing started";
    }
}

QString StatusUpdater::getWanActiveStrFromEnum(int value) const
{
    return nameAndValue(WAN_ACTIVE_NAMES, value, __func__);
}

QString StatusUpdater::getStartupWanStrFromEnum(int value) const
{
    return nameAndValue(STARTUP_WAN_NAMES, value, __func__);
}

QString StatusUpdater::getWanUserSelectionStrFromEnum(int value) const
{
    return nameAndValue(WAN_USER_SELECTION_NAMES, value, __func__);
}
