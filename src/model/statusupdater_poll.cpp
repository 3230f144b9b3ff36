// The radio module's state, polled from the database once a second on the bus thread, and the maps from
// the database's texts to the model's values. What becomes of them on the screen is decided in
// statusupdater_text.cpp.
#include "model/statusupdater.h"

#include "common/log.h"

namespace {

// Keys of the radio module
const char MODE_KEY[] = "rmcfg.sys.status.mode";
const char USIM_KEY[] = "rmcfg.platform.usim.status";
const char PIN_KEY[] = "rmcfg.platform.usim.pin.status";
const char PLMN_KEY[] = "rmcfg.protocols.umts.plmn.status";
const char CS_KEY[] = "rmcfg.protocols.umts.cs.status";
const char PS_KEY[] = "rmcfg.protocols.umts.ps.status";
const char BEAM_TYPE_KEY[] = "rmcfg.protocols.bgan.status.beam_type";
const char IAI2_KEY[] = "rmcfg.protocols.bgan.status.state";

// Values of USIM_KEY
enum { USIM_NOT_KNOWN = -1, USIM_ABSENT = 0, USIM_PRESENT = 1 };

void logMissing(const char* prefix, const char* key)
{
    logDebug() << prefix << ": ERROR !!! " << key << " not in database???";
}

} // namespace

void StatusUpdater::pollStatusFromRm()
{
    bool changed = updateRmOperating();
    changed |= updateSimStatus();
    changed |= updatePlmnStatus();
    if (getPlmnStatus() == PLMN_STATUS_SELECTED)
        changed |= updateCsPsStatus();
    const bool beamTypeIsNew = updateIai2BeamType();
    changed |= updateIai2Status();
    // The beam type has a signal of its own and is no part of the status text.
    if (beamTypeIsNew)
        announce(__func__, "beamTypeChanged", &StatusUpdater::beamTypeChanged);
    if (changed)
        announce(__func__, "statusChanged", &StatusUpdater::statusChanged);
}

// Value of a string key by its map. `prefix` names the function as the log has it.
int StatusUpdater::readRadioModuleText(const char* prefix, const char* key, const RadioModuleMap& map,
                                       int missing, int unlisted, const char* warning) const
{
    const QString text = getCBusValueStr(QString::fromLatin1(key));
    if (text.isEmpty()) {
        logMissing(prefix, key);
        return missing;
    }
    if (const RadioModuleValue* row = map.findText(text))
        return row->value;
    logWarning() << warning << text;
    return unlisted;
}

// Whether the terminal is in a state in which the radio module is down anyway.
bool StatusUpdater::absenceExpected() const
{
    const int status = getExtendedSystemStatus();
    return status >= SYSTEM_STATUS_UPDATING && status <= SYSTEM_STATUS_STOPPING;
}

bool StatusUpdater::updateRmOperating()
{
    validateThisIsCBusThread(QString::fromLatin1(__func__));
    const bool wasOperating = read(rmOperating, __func__);
    const QString mode = getCBusValueStr(QString::fromLatin1(MODE_KEY));
    if (mode.isEmpty())
        logMissing("updateRmOperating()", MODE_KEY);
    const bool operating = mode == QLatin1String("operating");

    StatusLock lock(statusMutex, __func__);
    rmOperating = operating;
    if (!operating) {
        // No signal tells of the change of the pointing mode: what follows from a stopped radio module is
        // told by the system status.
        iai2BeamType = IAI2_BEAM_TYPE_UNDEFINED;
        iai2Status = IAI2_STATUS_UNDEFINED;
        pointingMode = POINTING_STATUS_UNKNOWN;
        plmnStatus = PLMN_STATUS_UNDEFINED;
        umtsCsStatus = UMTS_STATUS_UNDEFINED;
        umtsPsStatus = UMTS_STATUS_UNDEFINED;
    }
    lock.unlock();

    // A radio module that stops outside of a software update means that the terminal reboots.
    if (wasOperating && !operating && getSwUploadActive() == 0)
        setExtendedSystemStatus(SYSTEM_STATUS_REBOOTING);
    return wasOperating != operating;
}

bool StatusUpdater::updateSimStatus()
{
    validateThisIsCBusThread(QString::fromLatin1(__func__));
    int status = SIM_STATUS_UNKNOWN;
    const int usim = getCBusValueInt(QString::fromLatin1(USIM_KEY));
    if (usim == USIM_ABSENT) {
        status = SIM_NOT_PRESENT;
    } else if (usim == USIM_PRESENT) {
        const QString pin = getCBusValueStr(QString::fromLatin1(PIN_KEY));
        if (pin.isEmpty())
            logMissing("StatusUpdater::updateSimStatus()", PIN_KEY);
        else
            status = getSimStatusFromPinStr(pin);
    } else if (usim != USIM_NOT_KNOWN) {
        logWarning() << "StatusUpdater::updateSimStatus(): ERROR!!!! Unsupported value for " << USIM_KEY
                     << ". Value=" << usim;
    }
    if (!storeChanged(simStatus, status, __func__))
        return false;
    announce(__func__, "stateEventReceived", &StatusUpdater::stateEventReceived,
             STATE_EVENT_SIM_STATUS_CHANGED);
    return true;
}

int StatusUpdater::getSimStatusFromPinStr(const QString& text) const
{
    if (const RadioModuleValue* row = SIM_STATUS_MAP.findText(text))
        return row->value;
    logWarning() << "StatusUpdater::getSimStatusFromPinStr(): ERROR!!! Unsupported value=" << text
                 << ". About to return SIM_STATUS_UNKNOWN";
    return SIM_STATUS_UNKNOWN;
}

bool StatusUpdater::updatePlmnStatus()
{
    const int oldStatus = getPlmnStatus();
    int status = PLMN_STATUS_UNDEFINED;
    if (getRmOperating())
        status = readRadioModuleText("updatePlmnStatus()", PLMN_KEY, PLMN_STATUS_MAP, PLMN_STATUS_UNDEFINED,
                                     PLMN_STATUS_UNDEFINED,
                                     "StatusUpdater::updatePlmnStatus(): Error!!! Unsupported value=");
    else if (oldStatus != PLMN_STATUS_UNDEFINED && !absenceExpected())
        logWarning() << "StatusUpdater::updatePlmnStatus(): Warning: RM not operating.";
    if (!storeChanged(plmnStatus, status, __func__))
        return false;
    logDebug() << "StatusUpdater::updatePlmnStatus(): plmnStatus = " << PLMN_STATUS_MAP.nameOf(status);
    return true;
}

bool StatusUpdater::updateCsPsStatus()
{
    const int cs = readRadioModuleText(
        "updateCsPsStatus()", CS_KEY, UMTS_STATUS_MAP, UMTS_STATUS_UNDEFINED, UMTS_STATUS_UNDEFINED,
        "StatusUpdater::updateCsPsStatus(): ERROR!!! umtsCsStatus value illegal!!! value=");
    const int ps = readRadioModuleText(
        "updateCsPsStatus()", PS_KEY, UMTS_STATUS_MAP, UMTS_STATUS_UNDEFINED, UMTS_STATUS_UNDEFINED,
        "StatusUpdater::updateCsPsStatus(): ERROR!!! umtsPsStatus value illegal!!! value=");
    StatusLock lock(statusMutex, __func__);
    if (cs == umtsCsStatus && ps == umtsPsStatus)
        return false;
    umtsCsStatus = cs;
    umtsPsStatus = ps;
    lock.unlock();
    logDebug() << "StatusUpdater::updateCsPsStatus(): umtsCsStatus=" << UMTS_STATUS_MAP.nameOf(cs)
               << ", umtsPsStatus=" << UMTS_STATUS_MAP.nameOf(ps);
    return true;
}

bool StatusUpdater::updateIai2BeamType()
{
    const int oldType = getIai2BeamType();
    int type = IAI2_BEAM_TYPE_UNDEFINED;
    if (!getRmOperating()) {
        if (oldType != IAI2_BEAM_TYPE_UNDEFINED && !absenceExpected())
            logWarning() << "StatusUpdater::updateIai2BeamType(): Warning: RM not operating.";
    } else if (getPlmnStatus() != PLMN_STATUS_SELECTED) {
        type = IAI2_BEAM_TYPE_GLOBAL;
    } else {
        const QString text = getCBusValueStr(QString::fromLatin1(BEAM_TYPE_KEY));
        const RadioModuleValue* const row = IAI2_BEAM_TYPE_MAP.findText(text);
        if (text.isEmpty()) {
            logMissing("updateIai2BeamType()", BEAM_TYPE_KEY);
        } else if (row) {
            type = row->value;
        } else {
            type = IAI2_BEAM_TYPE_GLOBAL;
            if (oldType != IAI2_BEAM_TYPE_GLOBAL) // said once, not each second
                logWarning() << "StatusUpdater::updateIai2BeamType(): ERROR!!! beamTypeStr =" << text
                             << ". Setting it to IAI2_BEAM_TYPE_GLOBAL";
        }
    }
    if (!storeChanged(iai2BeamType, type, __func__))
        return false;
    logDebug() << "StatusUpdater::updateIai2BeamType(): iai2BeamType = " << IAI2_BEAM_TYPE_MAP.nameOf(type);
    return true;
}

bool StatusUpdater::updateIai2Status()
{
    if (!getRmOperating())
        return false;
    const int status = readRadioModuleText(
        "updateIai2Status()", IAI2_KEY, IAI2_STATUS_MAP, IAI2_STATUS_UNDEFINED, IAI2_STATUS_UNDEFINED,
        "StatusUpdater::updateIai2Status(): Warning: iai2Status value illegal!!! value=");
    if (!storeChanged(iai2Status, status, __func__))
        return false;
    logDebug() << "StatusUpdater::updateIai2Status(): iai2Status=" << IAI2_STATUS_MAP.nameOf(status);
    return true;
}

int StatusUpdater::getSimStatus() const
{
    return read(simStatus, __func__);
}

int StatusUpdater::getPlmnStatus() const
{
    return read(plmnStatus, __func__);
}

int StatusUpdater::getRmOperating() const
{
    return read(rmOperating, __func__) ? 1 : 0;
}

int StatusUpdater::getIai2BeamType() const
{
    return read(iai2BeamType, __func__);
}
