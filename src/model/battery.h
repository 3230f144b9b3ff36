// One of the two batteries, as read from ram.status.battery. Plain values; any thread.
#ifndef LUMENPANEL_MODEL_BATTERY_H
#define LUMENPANEL_MODEL_BATTERY_H

// Any value but 0 means the external one.
enum BATT_TYPE_ENUM : int { BATT_TYPE_INTERNAL = 0, BATT_TYPE_EXTERNAL = 1 };

// Values of .charge_discharge_status.
enum BATT_CHARGE_STATE_ENUM : int {
    BATT_CHARGE_STATE_UNKNOWN = -1,
    BATT_IDLE = 0,
    BATT_CHARGING = 1,
    BATT_DISCHARGING = 2,
    BATT_PRECHARGING = 3
};

// Values of .status.
enum BATT_CONNECTION_ENUM : int { BATT_IN_ERROR = -2, BATT_ABSENT = -1, BATT_PRESENT = 0 };

struct battery_t {
    int batteryConnectionStatus = BATT_ABSENT;   // BATT_CONNECTION_ENUM
    int temperature = 0;                         // degrees Celsius
    int capacity = 0;                            // percent
    int minutesLeft = -1;                        // -1 when not known
    int averageTimeToFull = -1;                  // minutes, -1 when not known
    int chargeState = BATT_CHARGE_STATE_UNKNOWN; // BATT_CHARGE_STATE_ENUM
    bool isInternal = true;
};

#endif
