// The ways to the network that the terminal chooses from, and the state of its system. Values of the
// database; any thread.
#ifndef LUMENPANEL_MODEL_WAN_H
#define LUMENPANEL_MODEL_WAN_H

// Which way to the network is in use now.
enum ENUM_WAN_ACTIVE : int {
    WAN_ACTIVE_UNKNOWN = -1,
    WAN_ACTIVE_NONE = 0,
    WAN_ACTIVE_BGAN = 1,
    WAN_ACTIVE_MODEM = 2,
    WAN_ACTIVE_MODEM_AND_BGAN = 3
};

// Which way is taken when the terminal starts. The doubled T is the value's name.
enum ENUM_STARTUP_WAN : int {
    STARTUP_WAN_UNKNOWN = -1,
    STARTUP_WAN_MODEM_IF_AVAILABLE = 0,
    STARTUP_WAN_USER_SELECTTION = 1,
    STARTUP_WAN_BGAN = 2,
    STARTUP_WAN_MODEM = 3
};

// Which way the user has chosen.
enum ENUM_WAN_USER_SELECTION : int {
    WAN_USER_SELECTION_UNKNOWN = -1,
    WAN_USER_SELECTION_NONE = 0,
    WAN_USER_SELECTION_BGAN = 1,
    WAN_USER_SELECTION_MODEM = 2
};

// Values of ram.status.ext_system that the display acts on. 9 and less: the terminal is not yet up.
enum SYSTEM_STATUS_ENUM : int {
    SYSTEM_STATUS_UNDEFINED = 0,
    SYSTEM_STATUS_UPDATING = 2,
    SYSTEM_STATUS_REBOOTING = 3,
    SYSTEM_STATUS_STOPPING = 4,
    SYSTEM_STATUS_NOT_UP_LAST = 9,
    SYSTEM_STATUS_NORMAL = 10
};

#endif
