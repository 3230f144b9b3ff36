// The states of the panel's screens with the longest texts and numbers, for tests that look at each of them:
// what the model is to be given. By its setters alone, or what it keeps behind a label; the poll of the radio
// module must be off, as it would put the radio module's own state over them.
#ifndef TESTS_SCREENS_FITSTATES_H
#define TESTS_SCREENS_FITSTATES_H

#include "screens/windowfixture.h"

#include "model/event_texts.h"
#include "support/modelaccess.h"
#include "support/records.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <functional>
#include <string>

namespace windowfixture {

const struct {
    LANG_ENUM value;
    const char* name;
} LANGUAGES[] = {{LANG_ENGLISH, "English"},  {LANG_FRENCH, "French"},   {LANG_GERMAN, "German"},
                 {LANG_RUSSIAN, "Russian"},  {LANG_SPANISH, "Spanish"}, {LANG_CHINESE, "Chinese"},
                 {LANG_JAPANESE, "Japanese"}};

const int LONG_SESSION_S = 88 * 3600 + 58 * 60;  // hours of two digits
const long long ALERT_TIME_MS = 1700000000000LL; // 14 Nov 2023: a date with a day of two digits

// One state of a screen: what it is called in a failure, and what brings it about.
struct State {
    QString name;
    std::function<void()> make;
};

// --- Status -----------------------------------------------------------------------------------------------

inline void quietRadio()
{
    model()->setExtendedSystemStatus(SYSTEM_STATUS_NORMAL);
    model()->setControlledByATCommands(false);
    model()->setBondingEnabled(false);
    model()->setDhcpClientMode(false);
    model()->stopHidePointNowText();
    model()->setPointingMode(POINTING_STATUS_POINTED);
    Access::systemEvents().clear();
    Access::simStatus() = SIM_READY;
    Access::rmOperating() = true;
    Access::plmnStatus() = PLMN_STATUS_SELECTED;
    Access::umtsCsStatus() = UMTS_STATUS_ATTACHED;
    Access::umtsPsStatus() = UMTS_STATUS_ATTACHED;
    Access::iai2Status() = IAI2_STATUS_REGISTERED;
}

// What leads to each of the texts; those of several rules once.
const struct StatusState {
    STATUS_TEXT_ENUM id;
    void (*make)();
} STATUS_STATES[] = {
    {STATUS_TEXT_UNDEFINED, [] { Access::plmnStatus() = PLMN_STATUS_UNDEFINED; }},
    {STATUS_TEXT_INSERT_SIM, [] { Access::simStatus() = SIM_NOT_PRESENT; }},
    {STATUS_TEXT_INITIALIZING_SIM, [] { Access::simStatus() = SIM_STATUS_UNKNOWN; }},
    {STATUS_TEXT_SIM_REJECTED, [] { Access::simStatus() = SIM_INVALID; }},
    {STATUS_TEXT_LIMITED_SERVICE,
     [] { Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_BLOCKED; }},
    {STATUS_TEXT_SIM_LOCK_MISMATCH, [] { Access::simStatus() = SIM_LOCKED; }},
    {STATUS_TEXT_ENTER_PUK, [] { Access::simStatus() = SIM_BLOCKED; }},
    {STATUS_TEXT_ENTER_PIN, [] { Access::simStatus() = SIM_PIN_NEEDED; }},
    {STATUS_TEXT_POINT_NOW, [] { model()->setPointingMode(POINTING_STATUS_NOT_POINTED); }},
    {STATUS_TEXT_INITIALIZING, [] { model()->setPointingMode(POINTING_STATUS_UNKNOWN); }},
    {STATUS_TEXT_SEARCHING, [] { Access::plmnStatus() = PLMN_STATUS_SEARCHING; }},
    {STATUS_TEXT_REGISTERING,
     [] { Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_ATTACHING; }},
    {STATUS_TEXT_READY, [] {}},
    {STATUS_TEXT_POINT_NOW_HIDDEN,
     [] {
         Access::plmnStatus() = PLMN_STATUS_SCANNING;
         model()->startHidePointNowText();
     }},
    {STATUS_TEXT_EXTERNAL_CONTROL, [] { model()->setControlledByATCommands(true); }},
    {STATUS_TEXT_BONDING_SLAVE_MODE,
     [] {
         model()->setBondingEnabled(true);
         model()->setDhcpClientMode(true);
     }},
    {STATUS_TEXT_BLANK,
     [] {
         fmmi_evt_t event;
         event.identifier = EV_AP_TEMP_CLOSE_CONN;
         Access::systemEvents().append(event);
     }},
};

// A running connection: its rates, and the label that it shows; rates themselves where that is null.
const struct Connection {
    int download;
    int upload;
    const char* label;
} CONNECTIONS[] = {
    {256, 256, nullptr},
    {64, 416, "HDR Half Asymmetric"},
    {416, 416, "HDR Half Symmetric"},
    {512, 512, "BGAN X-Stream"},
    {64, 896, "HDR Full Asymmetric"},
    {896, 896, "HDR Full Symmetric"},
    {128, 1792, "2xHDR Full Asymmetric"},
    {1792, 1792, "2xHDR Full Symmetric"},
    {300, 300, "Unknown connection"},
};
const int BACKGROUND = 3;                               // the traffic class that is counted by amount
const int AMOUNTS[] = {0, 999, 9990, 999900, 99999000}; // kB

inline std::string sessionKey(int group, const std::string& field)
{
    return "ram.status.ongoing_data_sessions." + std::to_string(group) + "." + field;
}

inline void setSession(int group, BUNDLE_STATUS status, const Connection& connection, int amount = -1)
{
    const std::string context = "context.1.";
    Records records;
    records.number(sessionKey(group, context + "max_bw_down"), connection.download)
        .number(sessionKey(group, context + "max_bw_up"), connection.upload)
        .number(sessionKey(group, context + "traffic_class"), amount < 0 ? 1 : BACKGROUND)
        .number(sessionKey(group, "bytes_in_out_kb"), qMax(0, amount))
        .number(sessionKey(group, "time"), int(QDateTime::currentMSecsSinceEpoch() / 1000 - LONG_SESSION_S))
        .number(sessionKey(group, "status"), status);
    model()->setActiveConnectionsAndBundles(records.count(), records.data());
}

inline void endSessions()
{
    while (!Access::activeConnectionsAndBundles().isEmpty()) {
        Records records;
        records.deleted(sessionKey(Access::activeConnectionsAndBundles().first().wanUserGroup, "status"));
        model()->setActiveConnectionsAndBundles(records.count(), records.data());
    }
}

// --- Lists ------------------------------------------------------------------------------------------------

inline bundle_t bundleOf(int number, const QString& name)
{
    bundle_t bundle;
    bundle.bundleNumber = number;
    bundle.name = name;
    bundle.status = BUNDLE_STATUS_IDLE;
    connection_t connection;
    connection.traffic_class = BACKGROUND;
    bundle.connections.append(connection);
    return bundle;
}

inline void setBundles(const QStringList& names)
{
    Access::definedBundles().clear();
    for (int i = 0; i < names.size(); ++i)
        Access::definedBundles().append(bundleOf(i, names.at(i)));
    emit model()->definedBundlesCfgChanged();
}

inline void setCurrentBundle(int number)
{
    Records records;
    records.number("ram.net.user_groups.0.current_bundle", number);
    model()->setCurrentBundleNumber(records.count(), records.data());
}

// Events of the terminal's alert log: not those of the display itself, and not the failure causes.
inline bool isAlert(const EventText& row)
{
    return row.source && !QByteArray(row.name).startsWith("EV_AP_GUI_") &&
           row.id < (unsigned int)EV_FAILURE_CAUSE_BASE;
}

inline QList<fmmi_evt_t> allAlerts()
{
    QList<fmmi_evt_t> alerts;
    for (const EventText& row : EVENT_TEXTS) {
        if (!isAlert(row))
            continue;
        fmmi_evt_t alert;
        alert.identifier = row.id;
        alert.sub_id = 0xFFFF;
        alert.severity = EVENT_WARNING;
        alert.time = ALERT_TIME_MS;
        alerts.append(alert);
    }
    return alerts;
}

// --- Pages ------------------------------------------------------------------------------------------------

inline battery_t batteryOf(int chargeState, int minutes, int temperature, int connection = BATT_PRESENT)
{
    battery_t battery;
    battery.batteryConnectionStatus = connection;
    battery.chargeState = chargeState;
    battery.minutesLeft = minutes;
    battery.averageTimeToFull = minutes;
    battery.temperature = temperature;
    battery.capacity = 100;
    return battery;
}

const int LONG_BATTERY_TIME = 99 * 60 + 59; // minutes: hours of two digits

// Every battery that there is a text of its own for, with the longest numbers. longTime: minutes.
inline QList<State> batteries(int longTime = LONG_BATTERY_TIME)
{
    QList<State> states;
    for (int charge : {BATT_IDLE, BATT_CHARGING, BATT_DISCHARGING, BATT_PRECHARGING}) {
        for (int minutes : {-1, longTime}) {
            const battery_t battery = batteryOf(charge, minutes, minutes < 0 ? -20 : 100);
            const battery_t other = batteryOf(BATT_DISCHARGING, longTime, 100);
            const QString name = QString("charge state %1, %2 minutes").arg(charge).arg(minutes);
            states.append({"internal, " + name, [=] { model()->setBattData(battery, battery_t()); }});
            states.append({"external, " + name, [=] { model()->setBattData(battery_t(), battery); }});
            states.append({"two, internal " + name, [=] { model()->setBattData(battery, other); }});
            states.append({"two, external " + name, [=] { model()->setBattData(other, battery); }});
        }
        const battery_t broken = batteryOf(charge, -1, -20, BATT_IN_ERROR);
        states.append({QString("two in error, charge state %1").arg(charge),
                       [=] { model()->setBattData(broken, broken); }});
    }
    states.append({"none", [] { model()->setBattData(battery_t(), battery_t()); }});
    return states;
}

inline gps_data_t positionOf(bool north, bool east, int fix, bool allowed)
{
    gps_data_t position;
    position.latNorth = north;
    position.latDeg = 89;
    position.latMin = 59;
    position.longEast = east;
    position.longDeg = 179;
    position.longMin = 59;
    position.fix_type = fix;
    position.displayPositionAllowed = allowed;
    position.numberOfGpsFound = 4;
    return position;
}

inline QList<State> positions()
{
    QList<State> states;
    for (bool north : {true, false}) {
        for (bool east : {true, false})
            states.append({"position", [=] { model()->setPosition(positionOf(north, east, 3, true)); }});
    }
    states.append({"position hidden", [] { model()->setPosition(positionOf(true, true, 3, false)); }});
    states.append({"acquiring", [] { model()->setPosition(positionOf(true, true, 0, true)); }});
    return states;
}

// What the properties of the menu show; nothing but the network's name is known, or all of it.
inline void setIdentity(bool known)
{
    const auto value = [known](const char* text) { return QString(known ? text : ""); };
    model()->setIpAddress(value("192.168.100.100"));
    model()->setUnitSerialNumber(value("1234567890"));
    model()->setHpaSerialNumber(value("1234567890"));
    model()->setLanMacStr(value("00:80:F3:AC:4D:EE"));
    model()->setWifiMacStr(value("00:80:F3:AC:4D:EE"));
    model()->setWifiBroadcastSsid(known);
    model()->setWifiSsidStr("Field office 27");
    model()->setImeiStr(value("353938-03-012345-7"));
    model()->setHelpDeskStr(value("+47 7058 9000"));
    model()->setSwBuildDetails(value("0.99"), 1234, known, "a1b2c3d4e5", "2023-11-14 22:13");
}

} // namespace windowfixture

#endif
