// The value readers: the only way from the database into the model.
//
// Each reads one key or one group of keys afresh, applies a default and a range check, and hands the result
// to one setter of StatusUpdater. A missing key, a key of another type and a lost connection are the same to
// a reader: the default applies. None ends the process.
// Bus thread only; each blocks in its database requests, without a time limit.
#ifndef LUMENPANEL_BUSIF_READERS_H
#define LUMENPANEL_BUSIF_READERS_H

// Measurements and the state of the terminal (readers_measurements.cpp)
void readBatteryData();
void readExternalSupply();
void readPosition();
void readSignalLevel();
void readSignalLevelIcon();
void readPointingMode();
void readCiphering();
void readExtendedSystemStatus();
void readBganConnectionError();
void readSwUploadStatus();
void readSwBuildDetails();
void readUnitSerialNumber();
void readHpaSerialNumber();
void readImeiStr();

// Settings (readers_settings.cpp). The first two also write their default to a database that has none.
void readDisplayTimeout();
void readBrightness();
void readLanguage();
void readAudioPointing();
void readPowerUpSetting();
void readPowerUpPointingRequiredSetting();
void readControlledByATCommands();
void readACA();
void readBondingEnabled();
void readHelpDeskStr();

// Interfaces and the way to the network (readers_interfaces.cpp)
void readInterfaceState(int interface); // INTERFACE_NAME_ENUM, any other value is logged
void readIpAddress();
void readDhcpClientMode();
void readLanMacStr();
void readWifiMacStr();
void readWifiSsidStr();
void readWifiBroadcastSsid();
void readWifiNumberOfClients();
void readWanActive();
void readModemPresent();
void readModemActivated();
void readWanUserSelection();
void readModemOrBganAtStartup();

// Lists of records (readers_lists.cpp); the last two are for the start only
void readDefinedBundlesCfg();
void readBondingServicesAvailable();
void readAlertList();
void initialReadOngoingDataSessions();
void initialReadCurrentBundleNumber();

// A request of the GUI thread to start a bundle, brought here through the database (readers_lists.cpp)
void readLocalGuiDisplayStartBundleNumber();

#endif
