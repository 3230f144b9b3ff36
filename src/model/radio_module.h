// The state of the radio module: its enumerations, and the maps from the database's texts to them.
//
// The texts are the values of the string keys under rmcfg.; each match is exact and case sensitive.
// Constant tables; any thread.
#ifndef LUMENPANEL_MODEL_RADIO_MODULE_H
#define LUMENPANEL_MODEL_RADIO_MODULE_H

#include <QString>

// State of the antenna's pointing.
enum ENUM_POINTED_STATUS : int {
    POINTING_STATUS_UNKNOWN = -1,
    POINTING_STATUS_NOT_POINTED = 0,
    POINTING_STATUS_POINTING = 1,
    POINTING_STATUS_POINTED = 2
};

// rmcfg.protocols.bgan.status.state
enum IAI2_STATUS_ENUM : int {
    IAI2_STATUS_UNDEFINED = 0,
    IAI2_STATUS_RM_NOT_READY = 1,
    IAI2_STATUS_SATELLITE_SEARCH = 2,
    IAI2_STATUS_RECEIVE_SYSTEM_INFORMATION = 3,
    IAI2_STATUS_REGISTERING = 4,
    IAI2_STATUS_REGISTERED = 5,
    IAI2_STATUS_DEREGISTERED = 6
};

// rmcfg.protocols.umts.cs.status and rmcfg.protocols.umts.ps.status
enum UMTS_STATUS_ENUM : int {
    UMTS_STATUS_IDLE = 1,
    UMTS_STATUS_ATTACHING = 2,
    UMTS_STATUS_ATTACHED = 3,
    UMTS_STATUS_ATTACHED_REJECTED = 4,
    UMTS_STATUS_DETACHING = 5,
    UMTS_STATUS_BLOCKED = 6,
    UMTS_STATUS_UNDEFINED = 7
};

// rmcfg.protocols.umts.plmn.status
enum PLMN_STATUS_ENUM : int {
    PLMN_STATUS_SCANNING = 1,
    PLMN_STATUS_SEARCHING = 2,
    PLMN_STATUS_SELECTING = 3,
    PLMN_STATUS_SELECTED = 4,
    PLMN_STATUS_NOT_REGISTERED = 5,
    PLMN_STATUS_UNDEFINED = 6
};

// rmcfg.protocols.bgan.status.beam_type
enum IAI2_BEAM_TYPE_ENUM : int {
    IAI2_BEAM_TYPE_UNDEFINED = 0,
    IAI2_BEAM_TYPE_GLOBAL = 1,
    IAI2_BEAM_TYPE_REGIONAL = 2,
    IAI2_BEAM_TYPE_NARROW = 3
};

// rmcfg.platform.usim.status and, where that is 1, rmcfg.platform.usim.pin.status
enum SIM_STATUS_ENUM : int {
    SIM_STATUS_UNKNOWN = -3,
    SIM_INVALID = -2,
    SIM_NOT_PRESENT = 0,
    SIM_PIN_NEEDED = 1,
    SIM_BLOCKED = 2,
    SIM_READY = 3,
    SIM_LOCKED = 4
};

// One member of such an enumeration. text is the database's word, null where the value has none.
struct RadioModuleValue {
    int value;
    const char* name;
    const char* text;
};

// The rows of one enumeration.
struct RadioModuleMap {
    const RadioModuleValue* rows;
    int size;

    // The row with this database text, null if there is none.
    const RadioModuleValue* findText(const QString& text) const;
    // The name of a value; "unknown" where it has none.
    const char* nameOf(int value) const;
};

extern const RadioModuleMap IAI2_STATUS_MAP;
extern const RadioModuleMap UMTS_STATUS_MAP;
extern const RadioModuleMap PLMN_STATUS_MAP;
extern const RadioModuleMap IAI2_BEAM_TYPE_MAP;
extern const RadioModuleMap SIM_STATUS_MAP; // of the PIN's texts

#endif
