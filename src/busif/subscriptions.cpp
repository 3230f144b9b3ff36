// The tables of what is watched and read, and the loops over them.
//
// Bus thread only. How a value is read stands with the readers.
#include "busif/subscriptions.h"

#include <string.h>

#include "busif/readers.h"
#include "common/log.h"
#include "model/interfaces.h"
#include "model/statusupdater.h"

// Matching is by plain prefix, so one change may reach several rows, each of which calls its handler:
// signal_strength_norm comes to two, and ongoing_data_sessions.0.reason too. The battery and position rows
// also bring keys that no reader wants.
const Subscription SUBSCRIPTIONS[] = {
    {"ram.status.battery", _handle_config_changed},
    {"ram.status.psumcu.events.external_supply", _handle_config_changed},
    {"ram.status.position", _handle_config_changed},
    {"ram.status.signal_strength", _handle_config_changed},
    {"ram.status.signal_strength_norm", _handle_config_changed},
    {"ram.status.sw_update.active", _handle_config_changed},
    {"ram.status.sw_update.progress", _handle_config_changed},
    {"cfg.status.sw_update.error", _handle_config_changed},
    {"cfg.display.brightness", _handle_config_changed},
    {"cfg.display.timeout", _handle_config_changed},
    {"cfg.audio_indication.pointing", _handle_config_changed},
    {"cfg.language", _handle_config_changed},
    {"ram.status.interfaces.isdn.enabled", _handle_config_changed},
    {"ram.status.interfaces.lan.enabled", _handle_config_changed},
    {"ram.status.interfaces.phone.enabled", _handle_config_changed},
    {"ram.status.interfaces.usb.enabled", _handle_config_changed},
    {"ram.status.interfaces.wlan.enabled", _handle_config_changed},
    {"cfg.interfaces.isdn.enabled", _handle_config_changed},
    {"cfg.interfaces.lan.enabled", _handle_config_changed},
    {"cfg.interfaces.lan.mac_address", _handle_config_changed},
    {"cfg.interfaces.phone.enabled", _handle_config_changed},
    {"cfg.interfaces.usb.enabled", _handle_config_changed},
    {"cfg.interfaces.wlan.enabled", _handle_config_changed},
    {"cfg.interfaces.wlan.ssid", _handle_config_changed},
    {"ram.status.interfaces.wlan.clients", _handle_config_changed},
    {"cfg.interfaces.wlan.bssid", _handle_config_changed},
    {"ram.wan.active", _handle_config_changed},
    {"ram.modem.status.present", _handle_config_changed},
    {"ram.modem.activate", _handle_config_changed},
    {"ram.wan.user_selection", _handle_config_changed},
    {"cfg.wan.setting", _handle_config_changed},
    {"cfg.interfaces.wlan.mac_address", _handle_config_changed},
    {"ram.net.eth0.ip_address", _handle_config_changed},
    {"ram.status.ext_system", _handle_config_changed},
    {"ram.status.pointed_status", _handle_config_changed},
    {"cfg.help_desk_number", _handle_config_changed},
    {"cfg.power_up.switch_on_when_external_power", _handle_config_changed},
    {"cfg.power_up.pointing_required", _handle_config_changed},
    {"ram.status.ongoing_data_sessions", _handle_config_changed_ongoing_data_sessions},
    {"ram.net.user_groups.0.current_bundle", _handle_config_changed_current_bundle_number},
    {"ram.status.ongoing_data_sessions.0.reason", _handle_config_changed},
    {"cfg.admin.bundle", _handle_config_changed_defined_bundles_cfg},
    {"cfg.admin.connection.", _handle_config_changed_defined_bundles_cfg},
    {"ram.net.single_user_mode", _handle_config_changed},
    {"cfg.net.user_groups.0.automatic_activation", _handle_config_changed},
    {"ram.net.eth0.dhcp_client_mode", _handle_config_changed},
    {"cfg.bonding.enabled", _handle_config_changed},
    {"ram.bonding.status.service", _handle_bonding_services_available_changed},
    {"ram.local_gui_display.start_bundle_number", _handle_config_changed},
    {"ram.log.alert.latest.entry_count", _handle_alert_list_changed},
};
const int SUBSCRIPTION_COUNT = sizeof SUBSCRIPTIONS / sizeof SUBSCRIPTIONS[0];

namespace {

template <INTERFACE_NAME_ENUM interface> void readInterface()
{
    readInterfaceState(interface);
}

} // namespace

// No subscription covers the rmcfg keys and the IMEI: their changes never arrive, and they are read at
// start alone. They keep their rows.
const ReaderRow READER_ROWS[] = {
    {1,
     readBatteryData,
     {"ram.status.battery.1.status", "ram.status.battery.1.charge_discharge_status",
      "ram.status.battery.1.temperature", "ram.status.battery.1.relative_state_of_charge",
      "ram.status.battery.1.average_time_to_empty", "ram.status.battery.1.average_time_to_full",
      "ram.status.battery.2.status", "ram.status.battery.2.charge_discharge_status",
      "ram.status.battery.2.temperature", "ram.status.battery.2.relative_state_of_charge",
      "ram.status.battery.2.average_time_to_empty", "ram.status.battery.2.average_time_to_full"}},
    // Not read where the batteries are: the two share a place. They have subscriptions of their own and so
    // come in separate calls, where each runs.
    {1, readExternalSupply, {"ram.status.psumcu.events.external_supply"}},
    {2, readLanguage, {"cfg.language"}},
    {3,
     readPosition,
     {"ram.status.position.fix", "ram.status.position.satellites", "ram.status.position.longitude",
      "ram.status.position.latitude", "rmcfg.protocols.bgan.status.gps_policy.display"}},
    {4, readSignalLevel, {"ram.status.signal_strength"}},
    {5, readSignalLevelIcon, {"ram.status.signal_strength_norm"}},
    {6, readDisplayTimeout, {"cfg.display.timeout"}},
    {7, readBrightness, {"cfg.display.brightness"}},
    {8, readAudioPointing, {"cfg.audio_indication.pointing"}},
    {9,
     readInterface<INTERFACE_NAME_ISDN>,
     {"ram.status.interfaces.isdn.enabled", "cfg.interfaces.isdn.enabled"}},
    {10,
     readInterface<INTERFACE_NAME_LAN>,
     {"ram.status.interfaces.lan.enabled", "cfg.interfaces.lan.enabled"}},
    {11,
     readInterface<INTERFACE_NAME_PHONE>,
     {"ram.status.interfaces.phone.enabled", "cfg.interfaces.phone.enabled"}},
    {12,
     readInterface<INTERFACE_NAME_USB>,
     {"ram.status.interfaces.usb.enabled", "cfg.interfaces.usb.enabled"}},
    {13,
     readInterface<INTERFACE_NAME_WIFI>,
     {"ram.status.interfaces.wlan.enabled", "cfg.interfaces.wlan.enabled"}},
    {14, readPointingMode, {"ram.status.pointed_status"}},
    {15, readCiphering, {"rmcfg.protocols.umts.ciphering_capabilities"}},
    {16, readHelpDeskStr, {"cfg.help_desk_number"}},
    {17, readUnitSerialNumber, {"rmcfg.platform.sysconf.serial_number"}},
    {18, readHpaSerialNumber, {"rmcfg.platform.hpa_hw.unit_serial"}},
    {19, readImeiStr, {"cfg.network_information.imei_number"}},
    {20, readIpAddress, {"ram.net.eth0.ip_address"}},
    {21, readLanMacStr, {"cfg.interfaces.lan.mac_address"}},
    {22, readWifiMacStr, {"cfg.interfaces.wlan.mac_address"}},
    {23, readWifiNumberOfClients, {"ram.status.interfaces.wlan.clients"}},
    {24, readWifiSsidStr, {"cfg.interfaces.wlan.ssid"}},
    {25, readWifiBroadcastSsid, {"cfg.interfaces.wlan.bssid"}},
    {26, readWanActive, {"ram.wan.active"}},
    {27, readModemPresent, {"ram.modem.status.present"}},
    {28, readModemActivated, {"ram.modem.activate"}},
    {29, readWanUserSelection, {"ram.wan.user_selection"}},
    {30, readModemOrBganAtStartup, {"cfg.wan.setting"}},
    {31, readPowerUpSetting, {"cfg.power_up.switch_on_when_external_power"}},
    {32, readPowerUpPointingRequiredSetting, {"cfg.power_up.pointing_required"}},
    {33, readBganConnectionError, {"ram.status.ongoing_data_sessions.0.reason"}},
    {34,
     readSwUploadStatus,
     {"ram.status.sw_update.active", "ram.status.sw_update.progress", "cfg.status.sw_update.error"}},
    {35, readControlledByATCommands, {"ram.net.single_user_mode"}},
    {36, readACA, {"cfg.net.user_groups.0.automatic_activation"}},
    {37, readExtendedSystemStatus, {"ram.status.ext_system"}},
    {38, readDhcpClientMode, {"ram.net.eth0.dhcp_client_mode"}},
    {39, readBondingEnabled, {"cfg.bonding.enabled"}},
    {40, readLocalGuiDisplayStartBundleNumber, {"ram.local_gui_display.start_bundle_number"}},
};
const int READER_ROW_COUNT = sizeof READER_ROWS / sizeof READER_ROWS[0];

namespace {

// The bundles stand before the two reads that need them. A request to start a bundle is not among these: one
// left over in the database starts nothing.
void (*const INITIAL_READS[])() = {
    readBatteryData,
    readExternalSupply,
    readLanguage,
    readPosition,
    readSignalLevel,
    readSignalLevelIcon,
    readDisplayTimeout,
    readBrightness,
    readAudioPointing,
    readInterface<INTERFACE_NAME_ISDN>,
    readInterface<INTERFACE_NAME_LAN>,
    readInterface<INTERFACE_NAME_PHONE>,
    readInterface<INTERFACE_NAME_USB>,
    readInterface<INTERFACE_NAME_WIFI>,
    readPointingMode,
    readCiphering,
    readHelpDeskStr,
    readUnitSerialNumber,
    readHpaSerialNumber,
    readImeiStr,
    readLanMacStr,
    readWifiMacStr,
    readWifiNumberOfClients,
    readWifiBroadcastSsid,
    readWifiSsidStr,
    readWanActive,
    readModemPresent,
    readModemActivated,
    readWanUserSelection,
    readModemOrBganAtStartup,
    readSwBuildDetails,
    readIpAddress,
    readPowerUpSetting,
    readPowerUpPointingRequiredSetting,
    readDefinedBundlesCfg,
    initialReadCurrentBundleNumber,
    initialReadOngoingDataSessions,
    readBganConnectionError,
    readControlledByATCommands,
    readACA,
    readExtendedSystemStatus,
    readDhcpClientMode,
    readBondingEnabled,
    readBondingServicesAvailable,
    readAlertList,
    readSwUploadStatus,
};

bool holdsKey(const ReaderRow& row, const char* key)
{
    for (int i = 0; i < ReaderRow::MAX_KEYS && row.keys[i]; ++i) {
        if (strcmp(row.keys[i], key) == 0)
            return true;
    }
    return false;
}

void logHandlerStart(const char* handler, unsigned nrec)
{
    logDebug() << handler << ": Start of function. nrec=" << nrec;
}

} // namespace

void registerSubscriptions()
{
    for (const Subscription& subscription : SUBSCRIPTIONS)
        config_change_register(subscription.keyPrefix, subscription.handler, nullptr);
}

void runInitialReads()
{
    for (void (*const read)() : INITIAL_READS)
        read();
}

void _handle_config_changed(unsigned nrec, const config_data_t* prec, void*, const config_change_row_t*)
{
    // Gathered before anything is read: several keys of one reader cost one read.
    bool raised[sizeof READER_ROWS / sizeof READER_ROWS[0]] = {};
    for (unsigned i = 0; i < nrec; ++i) {
        for (int row = 0; row < READER_ROW_COUNT; ++row) {
            if (holdsKey(READER_ROWS[row], prec[i].name))
                raised[row] = true;
        }
    }
    int lastOrderRun = 0;
    for (int row = 0; row < READER_ROW_COUNT; ++row) {
        if (raised[row] && READER_ROWS[row].order != lastOrderRun) {
            lastOrderRun = READER_ROWS[row].order;
            READER_ROWS[row].read();
        }
    }
}

void _handle_config_changed_ongoing_data_sessions(unsigned nrec, const config_data_t* prec, void*,
                                                  const config_change_row_t*)
{
    logHandlerStart(__func__, nrec);
    StatusUpdater::getStatusUpdater()->setActiveConnectionsAndBundles(nrec, prec);
}

void _handle_config_changed_current_bundle_number(unsigned nrec, const config_data_t* prec, void*,
                                                  const config_change_row_t*)
{
    logHandlerStart(__func__, nrec);
    StatusUpdater::getStatusUpdater()->setCurrentBundleNumber(nrec, prec);
}

void _handle_config_changed_defined_bundles_cfg(unsigned nrec, const config_data_t*, void*,
                                                const config_change_row_t*)
{
    logHandlerStart(__func__, nrec);
    readDefinedBundlesCfg();
}

void _handle_bonding_services_available_changed(unsigned nrec, const config_data_t*, void*,
                                                const config_change_row_t*)
{
    logHandlerStart(__func__, nrec);
    readBondingServicesAvailable();
}

void _handle_alert_list_changed(unsigned nrec, const config_data_t*, void*, const config_change_row_t*)
{
    logHandlerStart(__func__, nrec);
    readAlertList();
}
