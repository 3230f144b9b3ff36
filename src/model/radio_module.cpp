// The maps of the radio module's states. Each table is laid out as the database words it; a value whose
// text is null is never read, only fallen back to.
#include "model/radio_module.h"

namespace {

const RadioModuleValue IAI2_STATUS_ROWS[] = {
    {IAI2_STATUS_UNDEFINED, "IAI2_STATUS_UNDEFINED", nullptr},
    {IAI2_STATUS_RM_NOT_READY, "IAI2_STATUS_RM_NOT_READY", "N/A"},
    {IAI2_STATUS_SATELLITE_SEARCH, "IAI2_STATUS_SATELLITE_SEARCH", "Satellite search"},
    {IAI2_STATUS_RECEIVE_SYSTEM_INFORMATION, "IAI2_STATUS_RECEIVE_SYSTEM_INFORMATION",
     "Receive system information"},
    {IAI2_STATUS_REGISTERING, "IAI2_STATUS_REGISTERING", "Registering"},
    {IAI2_STATUS_REGISTERED, "IAI2_STATUS_REGISTERED", "Registered"},
    {IAI2_STATUS_DEREGISTERED, "IAI2_STATUS_DEREGISTERED", "Deregistered"},
};

const RadioModuleValue UMTS_STATUS_ROWS[] = {
    {UMTS_STATUS_IDLE, "UMTS_STATUS_IDLE", "Idle"},
    {UMTS_STATUS_ATTACHING, "UMTS_STATUS_ATTACHING", "Attaching"},
    {UMTS_STATUS_ATTACHED, "UMTS_STATUS_ATTACHED", "Attached"},
    {UMTS_STATUS_ATTACHED_REJECTED, "UMTS_STATUS_ATTACHED_REJECTED", "Attached rejected"},
    {UMTS_STATUS_DETACHING, "UMTS_STATUS_DETACHING", "Detaching"},
    {UMTS_STATUS_BLOCKED, "UMTS_STATUS_BLOCKED", "Blocked"},
    {UMTS_STATUS_UNDEFINED, "UMTS_STATUS_UNDEFINED", "N/A"},
};

const RadioModuleValue PLMN_STATUS_ROWS[] = {
    {PLMN_STATUS_SCANNING, "PLMN_STATUS_SCANNING", "Scanning"},
    {PLMN_STATUS_SEARCHING, "PLMN_STATUS_SEARCHING", "Searching"},
    {PLMN_STATUS_SELECTING, "PLMN_STATUS_SELECTING", "Selecting"},
    {PLMN_STATUS_SELECTED, "PLMN_STATUS_SELECTED", "Selected"},
    {PLMN_STATUS_NOT_REGISTERED, "PLMN_STATUS_NOT_REGISTERED", "Not registered"},
    {PLMN_STATUS_UNDEFINED, "PLMN_STATUS_UNDEFINED", "n/a"},
};

const RadioModuleValue IAI2_BEAM_TYPE_ROWS[] = {
    {IAI2_BEAM_TYPE_UNDEFINED, "IAI2_BEAM_TYPE_UNDEFINED", nullptr},
    {IAI2_BEAM_TYPE_GLOBAL, "IAI2_BEAM_TYPE_GLOBAL", "Global"},
    {IAI2_BEAM_TYPE_REGIONAL, "IAI2_BEAM_TYPE_REGIONAL", "Regional"},
    {IAI2_BEAM_TYPE_NARROW, "IAI2_BEAM_TYPE_NARROW", "Narrow"},
};

const RadioModuleValue SIM_STATUS_ROWS[] = {
    {SIM_STATUS_UNKNOWN, "SIM_STATUS_UNKNOWN", nullptr},
    {SIM_INVALID, "SIM_INVALID", "Invalid"},
    {SIM_NOT_PRESENT, "SIM_NOT_PRESENT", "Absent"},
    {SIM_PIN_NEEDED, "SIM_PIN_NEEDED", "Needed"},
    {SIM_BLOCKED, "SIM_BLOCKED", "Blocked"},
    {SIM_READY, "SIM_READY", "Valid"},
    {SIM_LOCKED, "SIM_LOCKED", "SIM Lock Blocked"},
};

template <int N> constexpr RadioModuleMap mapOf(const RadioModuleValue (&rows)[N])
{
    return RadioModuleMap{rows, N};
}

} // namespace

const RadioModuleMap IAI2_STATUS_MAP = mapOf(IAI2_STATUS_ROWS);
const RadioModuleMap UMTS_STATUS_MAP = mapOf(UMTS_STATUS_ROWS);
const RadioModuleMap PLMN_STATUS_MAP = mapOf(PLMN_STATUS_ROWS);
const RadioModuleMap IAI2_BEAM_TYPE_MAP = mapOf(IAI2_BEAM_TYPE_ROWS);
const RadioModuleMap SIM_STATUS_MAP = mapOf(SIM_STATUS_ROWS);

const RadioModuleValue* RadioModuleMap::findText(const QString& text) const
{
    for (int i = 0; i < size; ++i)
        if (rows[i].text && text == QLatin1String(rows[i].text))
            return &rows[i];
    return nullptr;
}

const char* RadioModuleMap::nameOf(int value) const
{
    for (int i = 0; i < size; ++i)
        if (rows[i].value == value)
            return rows[i].name;
    return "unknown";
}
