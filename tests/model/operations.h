// Every public operation of the model as a table, for tests that run them all: the lock's, and that of two
// threads at once. locking_test.cpp proves that the table is complete.
#ifndef TESTS_MODEL_OPERATIONS_H
#define TESTS_MODEL_OPERATIONS_H

#include "model/statusupdater.h"
#include "support/records.h"

#include <QThread>

#include <functional>
#include <vector>

struct Operation {
    enum Kind {
        SETTER, // what the bus thread calls; cheap, without a read of the database
        GETTER, // what a screen calls; cheap, without a write to the database
        OTHER   // slow, or with the database
    };
    const char* name;
    Kind kind;
    // round: counts up, so that each call brings a value that differs from the last.
    std::function<void(StatusUpdater&, int round)> run;
    // Signals that must come in two calls with different rounds.
    std::vector<const char*> emits;
};

inline battery_t batteryOf(int value)
{
    battery_t battery;
    battery.batteryConnectionStatus = BATT_PRESENT;
    battery.capacity = value % 101;
    battery.minutesLeft = value % 600;
    battery.temperature = value % 40;
    battery.chargeState = BATT_DISCHARGING;
    return battery;
}

inline gps_data_t positionOf(int value)
{
    gps_data_t position;
    position.latDeg = value % 90;
    return position;
}

inline fmmi_evt_t eventOf(unsigned int id, int64_t time = 1600000000000)
{
    fmmi_evt_t event;
    event.identifier = id;
    event.severity = EVENT_WARNING;
    event.state = 1;
    event.time = time;
    return event;
}

inline bundle_t runningBundle(int round)
{
    bundle_t bundle;
    bundle.bundleNumber = 1;
    bundle.name = "One";
    bundle.status = BUNDLE_STATUS_RUNNING;
    bundle.startTime = QDateTime::currentDateTime();
    bundle.backgroundTotal = round;
    bundle.connections.append(connection_t());
    return bundle;
}

namespace operations {

inline void defineBundles(StatusUpdater& model, int round)
{
    Records records;
    records.text("cfg.admin.bundle.1.name", "One").text("cfg.admin.bundle.2.name", round % 2 ? "Two" : "2");
    model.setDefinedBundlesCfg(records.count(), records.data());
}

inline void sendSessions(StatusUpdater& model, int round)
{
    if (round % 2 == 0) {
        Records gone;
        gone.deleted("ram.status.ongoing_data_sessions.0.status");
        model.setActiveConnectionsAndBundles(gone.count(), gone.data());
    }
    Records start;
    start.number("ram.status.ongoing_data_sessions.0.status", 2)
        .number("ram.status.ongoing_data_sessions.0.time", 1000 + round)
        .number("ram.status.ongoing_data_sessions.0.background_total", round)
        .number("ram.status.ongoing_data_sessions.0.context.1.traffic_class", 3)
        .number("ram.status.ongoing_data_sessions.0.context.2.traffic_class", 2);
    model.setActiveConnectionsAndBundles(start.count(), start.data());
}

inline void setCurrentBundle(StatusUpdater& model, int round)
{
    Records records;
    records.number("ram.net.user_groups.0.current_bundle", round % 2 ? 1 : -1);
    model.setCurrentBundleNumber(records.count(), records.data());
}

inline void setBonding(StatusUpdater& model, int round)
{
    model.setBondingEnabled(true);
    Records services;
    services.text("ram.bonding.status.service.0", "XBB:HDR_STREAM896K")
        .number("ram.bonding.status.service.0.cnt", round % 2);
    model.setBondingServicesAvailable(services.count(), services.data());
}

inline void setAlerts(StatusUpdater& model, int round)
{
    Records records;
    for (int index = 0; index < 1 + round % 3; ++index) {
        const std::string alert = "ram.log.alert." + std::to_string(index) + ".";
        records.number(alert + "identifier", 0x210 + 0x10 * (index + round % 2))
            .number(alert + "sub_id", index)
            .number(alert + "severity", 1)
            .number(alert + "state", 1)
            .text(alert + "shorttext", "text " + std::to_string(round))
            .number(alert + "time", 1600000000 + round);
    }
    model.setAlertList(records.count(), records.data());
}

// A value that the poll finds changed each time.
inline void changeTheRadioModule(StatusUpdater& model, int round)
{
    model.setCBusValue("rmcfg.sys.status.mode", QString("operating"));
    model.setCBusValue("rmcfg.platform.usim.status", round % 2);
    model.setCBusValue("rmcfg.protocols.bgan.status.beam_type",
                       round % 2 ? QString("Narrow") : QString("Global"));
    model.setCBusValue("rmcfg.protocols.umts.plmn.status",
                       round % 2 ? QString("Selected") : QString("Forbidden"));
    model.setCBusValue("rmcfg.protocols.umts.cs.status", round % 2 ? QString("Attached") : QString("Idle"));
    model.setCBusValue("rmcfg.protocols.bgan.status.state",
                       round % 2 ? QString("Registered") : QString("Idle"));
}

// setText(round as text), for the many setters of one text.
template <void (StatusUpdater::*Set)(const QString&)> void setText(StatusUpdater& model, int round)
{
    (model.*Set)(QString::number(round));
}
template <typename Value, void (StatusUpdater::*Set)(Value), int Values>
void setOneOf(StatusUpdater& model, int round)
{
    (model.*Set)(Value(round % Values));
}
template <typename Value, Value (StatusUpdater::*Get)() const> void get(StatusUpdater& model, int)
{
    (model.*Get)();
}

} // namespace operations

// The table. Names are those of the header; an overload stands once for each.
inline const std::vector<Operation>& allOperations()
{
    using namespace operations;
    typedef StatusUpdater M;
#define SET_OF(function, Type, values) #function, Operation::SETTER, setOneOf < Type, &M::function, values>
#define SET_TEXT(function) #function, Operation::SETTER, setText < &M::function>
#define GET(function) #function, Operation::GETTER, [](M & m, int) { m.function(); }
    static const std::vector<Operation> table = {
        // Frame
        {"setThreadIdCBus", Operation::OTHER, [](M& m, int) { m.setThreadIdCBus(QThread::currentThreadId()); }, {}},
        {GET(getThreadIdCBus), {}},
        {"setHasConnectedToCBus", Operation::SETTER, [](M& m, int) { m.setHasConnectedToCBus(true); }, {}},
        {GET(getHasConnectedToCBus), {}},
        {"validateThisIsCBusThread", Operation::OTHER, [](M& m, int) { m.validateThisIsCBusThread("test"); }, {}},
        {"sleepMs", Operation::OTHER, [](M& m, int) { m.sleepMs(1); }, {}},
        {"takeScreenshot", Operation::SETTER, [](M& m, int) { m.takeScreenshot(); }, {"signalTakeScreenshot"}},
        {"setStatusLabelFont", Operation::GETTER, [](M& m, int) { m.setStatusLabelFont(QFont()); }, {}},
        {"setMainWindowState", Operation::GETTER,
         [](M& m, int round) { m.setMainWindowState(MAIN_WINDOW_STATE(round % 3)); }, {}},
        {GET(getMainWindowState), {}},
        {"debugTimeStr", Operation::GETTER, [](M& m, int) { m.debugTimeStr(QDateTime::currentDateTime()); }, {}},
        {"unicodeNeeded", Operation::GETTER, [](M& m, int) { m.unicodeNeeded("x"); }, {}},
        // Status text and radio module
        {GET(updateCurrentStatusTextId), {}},
        {GET(getCurrentStatusTextId), {}},
        {GET(getStatusText), {}},
        {"getStatusText", Operation::GETTER, [](M& m, int) { m.getStatusText(STATUS_TEXT_ACTIVE_BUNDLES); }, {}},
        {GET(updateTranslatedStatusTexts), {}},
        {GET(getActiveBundlesStatusStr), {}},
        {"pollStatusFromRm", Operation::OTHER,
         [](M& m, int round) {
             changeTheRadioModule(m, round);
             m.pollStatusFromRm();
         },
         {"statusChanged", "beamTypeChanged", "stateEventReceived"}},
        {"updateRmOperating", Operation::OTHER,
         [](M& m, int round) {
             m.setPointingMode(POINTING_STATUS_POINTED);
             m.setCBusValue("rmcfg.sys.status.mode", round % 2 ? QString("operating") : QString("stopped"));
             m.updateRmOperating();
         },
         {}},
        {"updateSimStatus", Operation::OTHER,
         [](M& m, int round) {
             changeTheRadioModule(m, round);
             m.updateSimStatus();
         },
         {}},
        {"updatePlmnStatus", Operation::OTHER,
         [](M& m, int round) {
             changeTheRadioModule(m, round);
             m.updatePlmnStatus();
         },
         {}},
        {"updateCsPsStatus", Operation::OTHER,
         [](M& m, int round) {
             changeTheRadioModule(m, round);
             m.updateCsPsStatus();
         },
         {}},
        {"updateIai2BeamType", Operation::OTHER,
         [](M& m, int round) {
             changeTheRadioModule(m, round);
             m.updateIai2BeamType();
         },
         {}},
        {"updateIai2Status", Operation::OTHER,
         [](M& m, int round) {
             changeTheRadioModule(m, round);
             m.updateIai2Status();
         },
         {}},
        {GET(getSimStatus), {}},
        {GET(getPlmnStatus), {}},
        {GET(getRmOperating), {}},
        {GET(getIai2BeamType), {}},
        {"getSimStatusFromPinStr", Operation::GETTER, [](M& m, int) { m.getSimStatusFromPinStr("Valid"); }, {}},
        {SET_OF(setPointingMode, ENUM_POINTED_STATUS, 3), {"stateEventReceived"}},
        {GET(getPointingMode), {}},
        {SET_OF(setPointingAtStartup, int, 2), {}},
        {GET(getPointingAtStartup), {}},
        {SET_OF(setWanActive, ENUM_WAN_ACTIVE, 4), {"signalWanActiveChanged"}},
        {GET(getWanActive), {}},
        {SET_OF(setModemPresent, int, 2), {"signalModemPresentChanged"}},
        {GET(getModemPresent), {}},
        {SET_OF(setModemActivated, int, 2), {"signalModemActivatedChanged"}},
        {GET(getModemActivated), {}},
        {SET_OF(setWanUserSelection, ENUM_WAN_USER_SELECTION, 3), {"signalWanUserSelectionChanged"}},
        {GET(getWanUserSelection), {}},
        {SET_OF(setModemOrBganAtStartup, ENUM_STARTUP_WAN, 4), {"signalModemOrBganAtStartupChanged"}},
        {GET(getModemOrBganAtStartup), {}},
        {"setExtendedSystemStatus", Operation::SETTER,
         [](M& m, int round) { m.setExtendedSystemStatus(10 + round % 2); }, {"signalExtendedSystemStatusChanged"}},
        {GET(getExtendedSystemStatus), {}},
        {"startPointingIfSystemReady", Operation::OTHER, [](M& m, int) { m.startPointingIfSystemReady(); }, {}},
        {"getWanActiveStrFromEnum", Operation::GETTER, [](M& m, int round) { m.getWanActiveStrFromEnum(round); }, {}},
        {"getStartupWanStrFromEnum", Operation::GETTER, [](M& m, int round) { m.getStartupWanStrFromEnum(round); }, {}},
        {"getWanUserSelectionStrFromEnum", Operation::GETTER,
         [](M& m, int round) { m.getWanUserSelectionStrFromEnum(round); }, {}},
        // Bundles, connections, bonding
        {"setDefinedBundlesCfg", Operation::OTHER, defineBundles, {"definedBundlesCfgChanged"}},
        {"setActiveConnectionsAndBundles", Operation::SETTER, sendSessions,
         {"numberOfConnectionsChanged", "bundleStateChanged", "statusChanged"}},
        {"setCurrentBundleNumber", Operation::SETTER, setCurrentBundle, {"bundleStateChanged"}},
        {"setBondingServicesAvailable", Operation::SETTER, setBonding, {"bondingStateChanged"}},
        {"setDhcpClientMode", Operation::SETTER,
         [](M& m, int round) {
             m.setBondingEnabled(true);
             m.setDhcpClientMode(round % 2);
         },
         {"bondingStateChanged"}},
        {GET(getDhcpClientMode), {}},
        {SET_OF(setBondingEnabled, bool, 2), {"bondingStateChanged"}},
        {GET(getBondingEnabled), {}},
        {GET(getDefinedBundles), {}},
        {GET(getNumberOfDefinedBundles), {}},
        {"getBundleByBundleNumber", Operation::GETTER,
         [](M& m, int) {
             bundle_t bundle;
             m.getBundleByBundleNumber(1, &bundle);
         },
         {}},
        {GET(getNumberOfActiveConnectionsAndBundles), {}},
        {GET(predefinedBundleActive), {}},
        {GET(wanUsergroupZeroActive), {}},
        {GET(getPredefinedBundleName), {}},
        {"getConnClass", Operation::GETTER, [](M& m, int) { m.getConnClass(connection_t()); }, {}},
        {"getElapsedTimeStr", Operation::GETTER, [](M& m, int round) { m.getElapsedTimeStr(runningBundle(round)); }, {}},
        {"getBackgroundTotalStr", Operation::GETTER,
         [](M& m, int round) { m.getBackgroundTotalStr(runningBundle(round)); }, {}},
        {"bondingDemandsReached", Operation::GETTER,
         [](M& m, int round) { m.bondingDemandsReached(runningBundle(round)); }, {}},
        {"getBondingServiceAvailable", Operation::GETTER,
         [](M& m, int) { m.getBondingServiceAvailable(BONDING_SERVICE_HDR_STREAM896K); }, {}},
        {GET(getBondingState), {}},
        {"startBundle", Operation::OTHER, [](M& m, int) { m.startBundle(1); }, {}},
        {"stopBundle", Operation::OTHER, [](M& m, int) { m.stopBundle(1); }, {}},
        {"requestIsdnEnabled", Operation::OTHER, [](M& m, int round) { m.requestIsdnEnabled(round % 2); }, {}},
        {"requestLanEnabled", Operation::OTHER, [](M& m, int round) { m.requestLanEnabled(round % 2); }, {}},
        {"requestPhoneEnabled", Operation::OTHER, [](M& m, int round) { m.requestPhoneEnabled(round % 2); }, {}},
        {"requestUsbEnabled", Operation::OTHER, [](M& m, int round) { m.requestUsbEnabled(round % 2); }, {}},
        {"requestWifiEnabled", Operation::OTHER, [](M& m, int round) { m.requestWifiEnabled(round % 2); }, {}},
        {"debugDefinedBundles", Operation::GETTER,
         [](M& m, int round) { m.debugDefinedBundles({runningBundle(round)}, "title"); }, {}},
        {"debugActiveConnectionsAndBundles", Operation::GETTER,
         [](M& m, int round) { m.debugActiveConnectionsAndBundles({runningBundle(round)}, "title"); }, {}},
        {"debugBundle", Operation::GETTER, [](M& m, int round) { m.debugBundle(runningBundle(round), "title"); }, {}},
        {"debugConnection", Operation::GETTER, [](M& m, int) { m.debugConnection(connection_t()); }, {}},
        // Events
        {"setAlertList", Operation::OTHER, setAlerts,
         {"showPopup", "signalRemovePopup", "eventListChanged"}},
        {"setSystemEvents", Operation::OTHER,
         [](M& m, int round) { m.setSystemEvents({eventOf(0x210 + 0x10 * (round % 2))}); },
         {"showPopup", "signalRemovePopup", "eventListChanged"}},
        {"addLocalEvent", Operation::OTHER,
         [](M& m, int round) { m.addLocalEvent(0x300 + unsigned(round), EVENT_INFO); }, {"eventListChanged"}},
        {"removeLocalEvent", Operation::OTHER,
         [](M& m, int round) {
             m.addLocalEvent(0x300 + unsigned(round), EVENT_INFO);
             m.removeLocalEvent(0x300 + unsigned(round));
         },
         {"eventListChanged"}},
        {GET(getEvents), {}},
        {"eventExist", Operation::GETTER, [](M& m, int) { m.eventExist(0x210); }, {}},
        {"showAllSystemEvents", Operation::OTHER,
         [](M& m, int) {
             m.setSystemEvents({eventOf(0x210)});
             m.showAllSystemEvents();
         },
         {"showPopup"}},
        {"setWarningsPresent", Operation::OTHER, [](M& m, int round) { m.setWarningsPresent(round % 2); },
         {"warningsPresentChanged"}},
        {GET(getWarningsPresent), {}},
        {"getEventText", Operation::GETTER, [](M& m, int) { m.getEventText(0x210); }, {}},
        {"getEventSeverityAsString", Operation::GETTER,
         [](M& m, int round) { m.getEventSeverityAsString(round % 6); }, {}},
        {GET(updateTranslatedEventTexts), {}},
        // Settings
        {SET_OF(setScreenSaverTime, int, 60), {"screenSaverTimeChanged"}},
        {GET(getScreenSaverTime), {}},
        {SET_OF(setAudioPointing, int, 2), {"audioPointingChanged"}},
        {SET_OF(setPowerUp, int, 2), {"powerUpSettingChanged"}},
        {SET_OF(setBrightnessAllowed, bool, 2), {}},
        {GET(getBrightnessAllowed), {}},
        {SET_OF(setBrightness, int, 8), {"brightnessChanged"}},
        {GET(setBrightnessInDriver), {}},
        {SET_OF(setLanguage, LANG_ENUM, 7), {"requestLoadLanguage"}},
        {GET(getLanguage), {}},
        {"getLanguageStrFromEnum", Operation::GETTER,
         [](M& m, int round) { m.getLanguageStrFromEnum(LANG_ENUM(round % 8)); }, {}},
        {GET(getScreenSaverTimeEnum), {}},
        {GET(getBrightnessEnum), {}},
        {GET(getAudioPointingEnum), {}},
        {GET(getPowerUpEnum), {}},
        {GET(getLanguageTreeWidgetEnum), {}},
        {"setInterfaceState", Operation::SETTER,
         [](M& m, int round) {
             m.setInterfaceState(INTERFACE_NAME_WIFI, INTERFACE_STATE_ENUM(round % 4));
         },
         {"interfaceStateChanged"}},
        {"getInterfaceState", Operation::GETTER, [](M& m, int) { m.getInterfaceState(INTERFACE_NAME_WIFI); }, {}},
        {SET_OF(setCiphering, int, 4), {"cipheringChanged"}},
        {GET(getCiphering), {}},
        {SET_OF(setSimPinRetriesLeft, int, 4), {"simPinRetriesLeftChanged"}},
        {GET(getSimPinRetriesLeft), {}},
        {SET_OF(setBganConnectionError, int, 255), {"bganConnectionErrorChanged"}},
        {SET_OF(setControlledByATCommands, bool, 2), {"controlledByATCommandsChanged"}},
        {GET(getControlledByATCommands), {}},
        {SET_OF(setACA, bool, 2), {"acaChanged"}},
        {GET(getACA), {}},
        {"setSwUploadStatus", Operation::SETTER,
         [](M& m, int round) { m.setSwUploadStatus(round % 3, round % 101, 512); }, {"signalSwUploadActiveChanged"}},
        {GET(getSwUploadActive), {}},
        {"setSwResultUserConfirmed", Operation::OTHER, [](M& m, int) { m.setSwResultUserConfirmed(); }, {}},
        {"startValidatePin", Operation::OTHER, [](M& m, int) { m.startValidatePin("1234"); }, {}},
        {GET(startHidePointNowText), {}},
        {GET(getHidePointNowText), {}},
        {GET(startIgnoreGlobalKeyPress), {}},
        {GET(getIgnoreGlobalKeyPress), {}},
        // Identity
        {SET_OF(setWifiBroadcastSsid, bool, 2), {}},
        {GET(getWifiBroadcastSsid), {}},
        {SET_TEXT(setWifiSsidStr), {}},
        {GET(getWifiSsidStr), {}},
        {SET_OF(setWifiNumberOfClients, int, 10), {"numberOfWlanClientsChanged"}},
        {GET(getWifiNumberOfClients), {}},
        {GET(getWifiSsidUserStr), {}},
        {SET_TEXT(setHelpDeskStr), {}},
        {GET(getHelpDeskStr), {}},
        {SET_TEXT(setUnitSerialNumber), {}},
        {GET(getUnitSerialNumber), {}},
        {SET_TEXT(setHpaSerialNumber), {}},
        {GET(getHpaSerialNumber), {}},
        {SET_TEXT(setImeiStr), {}},
        {GET(getImeiStr), {}},
        {SET_TEXT(setIpAddress), {}},
        {GET(getIpAddrStr), {}},
        {SET_TEXT(setWifiMacStr), {}},
        {GET(getWifiMacStr), {}},
        {SET_TEXT(setLanMacStr), {}},
        {GET(getLanMacStr), {}},
        {"setSwBuildDetails", Operation::SETTER,
         [](M& m, int round) { m.setSwBuildDetails("1.0", round, 0, QString::number(round), "date"); }, {}},
        {GET(getSoftwareVersion), {}},
        // Measurements
        {SET_OF(setSignalLevel, int, 700), {"signalLevelChanged"}},
        {GET(getSignalLevel), {}},
        {SET_OF(setSignalLevelIcon, int, 5), {"signalLevelNumBarsChanged"}},
        {GET(getSignalLevelNumBars), {}},
        {"getSignalLevelStr", Operation::GETTER, [](M& m, int round) { m.getSignalLevelStr(round); }, {}},
        {"setPosition", Operation::SETTER, [](M& m, int round) { m.setPosition(positionOf(round)); }, {"gpsDataChanged"}},
        {GET(getNumberOfGpsFound), {}},
        {GET(getGpsDisplayPositionAllowed), {}},
        {GET(getGpsPositionStr), {}},
        {GET(getGpsAcquired), {}},
        {"setBattData", Operation::SETTER,
         [](M& m, int round) { m.setBattData(batteryOf(round), batteryOf(round + 1)); }, {"battDataChanged"}},
        {GET(getBattInt), {}},
        {GET(getBattExt), {}},
        {SET_OF(setExternalSupplyPresent, bool, 2), {"battDataChanged"}},
        {"getBattCapacityLabel", Operation::GETTER, [](M& m, int) { m.getBattCapacityLabel(BATT_TYPE_INTERNAL); }, {}},
        {"getBattTempValueLabel", Operation::GETTER, [](M& m, int) { m.getBattTempValueLabel(BATT_TYPE_EXTERNAL); }, {}},
        {"getBatt2ndLabel", Operation::GETTER, [](M& m, int) { m.getBatt2ndLabel(BATT_TYPE_INTERNAL); }, {}},
        {GET(getTotalBattRemainingTimeStr), {}},
        {GET(getNumberOfBatteries), {}},
        {GET(getTotalBattCapacity), {}},
        // Database
        {"getCBusValueInt", Operation::OTHER, [](M& m, int) { m.getCBusValueInt("cfg.language"); }, {}},
        {"getCBusValueStr", Operation::OTHER, [](M& m, int) { m.getCBusValueStr("cfg.language"); }, {}},
        {"setCBusValue", Operation::OTHER, [](M& m, int round) { m.setCBusValue("cfg.language", round % 7); }, {}},
        {"setCBusValue", Operation::OTHER, [](M& m, int) { m.setCBusValue("cfg.text", QString("text")); }, {}},
        {"subscribeToChanges", Operation::OTHER, [](M& m, int round) { m.subscribeToChanges(round % 2); },
         {"signalSubscribeToPollRmValues"}},
        // Slots
        {GET(handleStartUpdateConnectionTimer), {}},
        {GET(handleStopUpdateConnectionTimer), {}},
        {"handleUpdateTimeout", Operation::GETTER,
         [](M& m, int) { m.handleUpdateTimeout(); }, {"updateElapsedTimeAndBackgroundDataSignal"}},
        {"handlePinTimeout", Operation::OTHER,
         [](M& m, int round) {
             m.setCBusValue("rmcfg.platform.usim.status", 1);
             m.setCBusValue("rmcfg.platform.usim.pin.status", round % 2 ? QString("Valid") : QString("Needed"));
             m.updateSimStatus();
             m.handlePinTimeout();
         },
         {"signalPinAccepted", "signalWrongPin"}},
        {GET(stopHidePointNowText), {"statusChanged"}},
        {GET(stopIgnoreGlobalKeyPress), {}},
    };
#undef SET_OF
#undef SET_TEXT
#undef GET
    return table;
}

#endif
