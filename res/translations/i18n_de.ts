<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>BGAN-Signal: </translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>Position ermitteln: </translation>
    </message>
    <message>
        <source>Position: </source>
        <translation>Position: </translation>
    </message>
</context>
<context>
    <name>ScreenBattery</name>
    <message>
        <source>No battery connected</source>
        <translation>Kein Akku angeschlossen</translation>
    </message>
    <message>
        <source>Int</source>
        <translation>Int</translation>
    </message>
    <message>
        <source>Ext</source>
        <translation>Ext</translation>
    </message>
    <message>
        <source>Temp: </source>
        <translation>Temp.: </translation>
    </message>
</context>
<context>
    <name>ScreenEnterPin</name>
    <message>
        <source>Enter PIN: </source>
        <translation>PIN eingeben: </translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>Hiermit erklärt der Hersteller, dass diese Funkanlage der Richtlinie 2014/53/EU entspricht. Der vollständige Text der EU-Konformitätserklärung ist im Benutzerhandbuch verfügbar.</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>Jetzt ausrichten</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Display</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>Stufe 1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>Stufe 2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>Stufe 3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>Stufe 4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>Stufe 5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>Stufe 6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>Stufe 7</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5 Sekunden</translation>
    </message>
    <message>
        <source>30 seconds</source>
        <translation>30 Sekunden</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 Minute</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2 Minuten</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5 Minuten</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>Tonsignal</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>Ausrichtung</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>Einschaltmodus</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manuell</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP-Adresse</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>Hardware</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>Geräte-Seriennummer</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>Antennen-Seriennummer</translation>
    </message>
    <message>
        <source>LAN</source>
        <translation>LAN</translation>
    </message>
    <message>
        <source>WLAN</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Conformity</source>
        <translation>Konformität</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>Helpdesk</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Meldungen</translation>
    </message>
</context>
<context>
    <name>ScreenStatus</name>
    <message>
        <source>G</source>
        <translation>G</translation>
    </message>
    <message>
        <source>R</source>
        <translation>R</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
</context>
<context>
    <name>Shared_translations</name>
    <message>
        <source>RM_EV_ALARM_LIMITED_SERVICE</source>
        <translation>Eingeschr. Dienst</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM abgelehnt</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>Zeitlimit</translation>
    </message>
    <message>
        <source> kB</source>
        <translation> kB</translation>
    </message>
    <message>
        <source>MAC: </source>
        <translation>MAC: </translation>
    </message>
    <message>
        <source>Initializing</source>
        <translation>Initialisierung</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Verbinden...</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> kbit/s</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Verlassen</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>StatusUpdater</name>
    <message>
        <source>RM_EV_INFOLVL_INFO</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>EV_ALARM_SIM_MODULE</source>
        <translation>Störung des SIM-Lesers
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>Störung des Temperatursensors
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>Störung des GPS-Empfängers
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>Antenne nicht angeschlossen
Antennenkabel prüfen</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>Temperatur kritisch niedrig
Terminal aufwärmen lassen</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>Temperatur zu niedrig
Terminal aufwärmen lassen</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>Temperatur kritisch hoch
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>Temperatur zu hoch
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>Satellitensignal verloren
Sicht prüfen oder neu ausrichten</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>Einbuchungsfehler: Sprache (CS)
Vertrag prüfen</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>Einbuchungsfehler: Daten (PS)
Vertrag prüfen</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>Störung der Antenne
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>Fehlerspeicher voll
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>Netz ungültig
SIM-Karte und Vertrag prüfen</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>Kabelkalibrierung fehlgeschlagen
Antennenkabel prüfen</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>Fehler des Signalprozessors (DSP)
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>Antennen-Update fehlgeschlagen
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>Problem beim Antennen-Update
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>Antennensoftware nicht geladen
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>Antenne startet nicht
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>Kein Kontakt zum HPA der Antenne
Antennenkabel prüfen</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>Einbuchung vom Netz abgelehnt
Vertrag prüfen</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>Durch das Netz ausgebucht</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>Aus dem Netz ausgebucht</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>Flash-Speicher am Schreiblimit
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>Antenne zu kalt zum Starten
Antenne aufwärmen lassen</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>Antennenstart: Zeitlimit erreicht
Kabel prüfen, Terminal neu starten</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>Hohe Temp.: PoE ausgeschaltet
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>Hohe Temp.: geringere Datenrate
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>Antenne passt nicht zum Terminal
Unterstützte Antenne verwenden</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>Satellit nicht sichtbar
Ort mit freier Sicht suchen</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>SIM-Karte fehlt
SIM-Karte einlegen</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>NAT-Tabelle voll
Zahl der Verbindungen verringern</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>Antenne im Betrieb gewechselt
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>Kabelwiderstand zu hoch
Antennenkabel prüfen</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>Antenne antwortet nicht
Kabel prüfen, Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>Antennenprüfung fehlgeschlagen
Unterstützte Antenne verwenden</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>Antennenstart nicht abgeschlossen
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>HPA-Spannung unzulässig
Antennenkabel prüfen</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>HPA-Temperatur unzulässig
Antenne vor Hitze/Kälte schützen</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>HPA-Verst. (TX/RX) unzulässig
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>HPA-Spannung nicht wie erwartet
Antennenkabel prüfen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>Keine Datenverbindungen definiert
In der Weboberfläche anlegen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>PIN wird geprüft
Bitte warten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>Verschlüsselung ist aus
Anrufe und Daten nicht geschützt</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>Suche nach externem Modem
Anschluss des Modems prüfen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>Zu viele Datenverbindungen
Eine beenden und erneut versuchen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>Autom. Verbindung fehlgeschlagen
Verbindung manuell starten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>Verbindung fehlgeschlagen
Erneut versuchen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>Verbindung verloren
Erneut starten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>Netzstörung
Später erneut versuchen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>Netzstörung
Wird automatisch erneut versucht</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN getrennt
LAN-Kabel prüfen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>Nicht alle Verbindungen gestartet
Beenden, dann erneut starten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>Unbekannter Verbindungsfehler
Erneut versuchen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>Antennen-Update läuft
Nicht ausschalten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>Von Linküberwachung beendet
Wird automatisch neu verbunden</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>Kein Netz ausgewählt
In der Weboberfläche auswählen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>Wird gestartet:
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>Nicht im Netz eingebucht
Auf Status Bereit warten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>Falsche PIN
Erneut versuchen</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>Keine Meldungen</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>DHCP-Client ohne Bonding
In der Weboberfläche ändern</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>Interner Fehler
Terminal neu starten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>Externes Modem wird verwendet</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>Initialisierung
Bitte warten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>Neustart
Bitte warten</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>Herunterfahren
Bitte warten</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>Modem: Fehler der SIM-Karte
SIM-Karte im Modem prüfen</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>Modemfehler
Modem neu anschließen</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>Modem nicht unterstützt
Anderes Modem verwenden</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>Hohe Temp.: langsamerer Betrieb
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>Hohe Temp.: USB ausgeschaltet
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>Hohe Temp.: externer USB aus
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>Hohe Temp.: Daten verlangsamt
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>Hohe Temp.: Datenverkehr beendet
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>Hohe Temp.: Herunterfahren
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>Niedrige Temperatur
Terminal aufwärmen lassen</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>Hohe Temp.: PoE aus
Terminal abkühlen lassen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>Software-Update läuft
Nicht ausschalten</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>Update läuft, Akku schwach
Stromversorgung anschließen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>Software-Update wird vorbereitet
Nicht ausschalten</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>Update fehlgeschl.: Datei unlesbar
Datei erneut hochladen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>Update abgelehnt: Akku schwach
Erst Stromversorgung anschließen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>Update abgelehnt: ältere Version
Neuere Version verwenden</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>Update abgelehnt: Datei ungültig
Datei für das Terminal verwenden</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>Update abgelehnt: Datei beschädigt
Datei erneut hochladen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>Software-Update nicht gestartet
Erneut versuchen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>Software-Update fehlgeschlagen
Alte Version wiederhergestellt</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>Software beschädigt
In der Weboberfläche aktualisieren</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>Antennensoftware beschädigt
In der Weboberfläche aktualisieren</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>Voriges Update nicht beendet
Nach Neustart erneut versuchen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>Update abgelehnt
Version wird bereits verwendet</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>Online-Update fehlgeschlagen
Später erneut versuchen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>Online-Update: keine Verbindung
Später erneut versuchen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>Online-Update: Server nicht erreicht
Später erneut versuchen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>Update: Übertragung fehlgeschl.
Erneut versuchen</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>Update: Zeitlimit der Übertragung
Erneut versuchen</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>Stromversorgung: Kalibrierfehler
Helpdesk kontaktieren</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>Akku schwach
Stromversorgung anschließen</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>Akku zu kalt
Akku aufwärmen lassen</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>Akku zu warm
Akku abkühlen lassen</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>Sperre durch den Netzbetreiber</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>LLC- oder SNDCP-Fehler</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>Nicht genügend Ressourcen</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>APN fehlt oder unbekannt</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>PDP-Adresse oder PDP-Typ unbekannt</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>Benutzerauthentifizierung fehlgeschlagen</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>Aktivierung vom GGSN abgelehnt</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>Aktivierung abgelehnt, ohne Angabe</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>Dienstoption nicht unterstützt</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>Angeforderte Dienstoption nicht gebucht</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>Dienstoption vorübergehend außer Betrieb</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPI bereits verwendet</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>Normale Deaktivierung</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS nicht akzeptiert</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>Aktivierung abgelehnt, Netzstörung</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>Erneute Aktivierung erforderlich</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>Funktion nicht unterstützt</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>Semantikfehler in der TFT-Operation</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>Syntaxfehler in der TFT-Operation</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>PDP-Kontext unbekannt</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>Semantikfehler in Paketfilter(n)</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>Syntaxfehler in Paketfilter(n)</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>PDP-Kontext ohne TFT bereits aktiviert</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>Ablehnung, Abmeldung läuft</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>PS-Anmeldung abgelehnt</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>Aktivierungsfehler, ungültig</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>Zeitlimit der erneuten Aktivierung erreicht</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>Ablehnung der Anmeldung, Zeitlimit erreicht</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>Normale Deaktivierung (vom Kernnetz)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>Normale Deaktivierung (Ausschalten oder Neustart)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>Normale Deaktivierung (PDP-Kontext entfernt)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>Normale Deaktivierung (AT-Befehl)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>Ablehnung, ohne Angabe</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>Ablehnung, erneute Anmeldung erforderlich</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>Zeitlimit der Verbindung erreicht</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>Ablehnung, Authentifizierung fehlgeschlagen</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>Ablehnung, Netz ungültig</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>Ablehnung der Anmeldung, nicht erlaubt</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>Ablehnung, normale Abmeldung</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>Ablehnung der Anmeldung, keine IMSI</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>Ablehnung der Anmeldung, Dienstanforderung verweigert</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>Ablehnung der Anmeldung, Suche nach PLMN</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>Ablehnung des Aufbaus, normal</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>Ablehnung des Aufbaus, Funknetzstörung</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>Ablehnung des Aufbaus, Überlast</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>Ablehnung des Aufbaus, IAI-Version nicht unterstützt</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>Ablehnung des Aufbaus, UE-Klasse nicht unterstützt</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>Ablehnung des Aufbaus, USIM erforderlich</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>Ablehnung des Aufbaus, Störung des physischen Kanals</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>Ablehnung des Aufbaus, Zugangsklasse nicht erlaubt</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>Ablehnung des Aufbaus, ohne Angabe</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>Verbindungsabbau, normal</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>Verbindungsabbau, Sicherheitsfehler im Funknetz</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>Verbindungsabbau, Störung des physischen Kanals</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>Verbindungsabbau, Suche nach PLMN</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>Verbindungsabbau, Sicherheitsbefehl fehlgeschlagen</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>Ausbuchung, Ursache unbekannt</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>Ausbuchung, Einbuchung nicht abgeschlossen</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>Ausbuchung, Versorgungsgebiet gesperrt</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>Ausbuchung, Position erforderlich</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>Ausbuchung, Kernnetz zurückgesetzt</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>Ausbuchung, Inaktivität</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>Ausbuchung, Positionsantwort nicht empfangen</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>Ausbuchung, Position veraltet</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>Ausbuchung, Entschlüsselungsfehler</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>Ausbuchung, vom Benutzer angegebene Position nicht erlaubt</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>Ausbuchung, vom Funknetz veranlasst</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>Ausbuchung, verfolgte Satelliten unter Minimum</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>Ausbuchung, Lease-Gruppe nicht verfügbar</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>Ausbuchung, Handover im Lease-Modus fehlgeschlagen</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>Ausbuchung, Funkstörung</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>Ausbuchung, UE-Unterklasse nicht unterstützt</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>Ausbuchung, Elevation zu niedrig</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>Ausbuchung, Protokollfehler</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>Ausbuchung, UE-Fähigkeiten ungültig</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>Netzstörung, IMSI unbekannt (HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>Netzstörung, Mobilstation unzulässig</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>Netzstörung, Mobilgerät unzulässig</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>Ablehnung der Anmeldung, GPRS nicht erlaubt</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>Ablehnung der Anmeldung, Dienste nicht erlaubt</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>Netzstörung, Kennung der Mobilstation unbekannt</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>Netzstörung, implizit abgemeldet</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>Netzstörung, PLMN nicht erlaubt</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>Netzstörung, Aufenthaltsbereich nicht erlaubt</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>Netzstörung, Roaming am Standort nicht erlaubt</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>Netzstörung, kein GPRS-Dienst erlaubt</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>Netzstörung, kein Dienst am Standort</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>Netzstörung, Dienst vorübergehend nicht erreichbar</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>Netzstörung, PLMN-Störung</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>Ablehnung der Authentifizierung, MAC-Fehler</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>Ablehnung der Authentifizierung, Synchronisierungsfehler</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>Netzstörung, Überlast</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>Ablehnung der Authentifizierung, GSM nicht akzeptiert</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>Netzfehler, abgemeldet</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>Netzfehler, Pflichtangabe ungültig</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>Netzfehler, Nachricht ungültig</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>Netzfehler, Fehler im Protokollzustand</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>Netzfehler, bedingte Angabe ungültig</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>Netzfehler, nicht mit Protokollzustand vereinbar</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>Netzfehler, Protokollfehler ohne Angabe</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>Ablehnung der Anmeldung, Abmeldung läuft</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>Ablehnung der Anmeldung, Ausschalten</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>Ablehnung der Anmeldung, Domäne blockiert</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>Ablehnung, PIN fehlt</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>Ablehnung, kein PLMN ausgewählt</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>Ablehnung, PLMN verboten</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>Ablehnung, PLMN/GPRS nicht erlaubt</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>Helpdesk nicht konfiguriert
Siehe Benutzerhandbuch</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>Geräte-Seriennummer: </translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>Geräte-Seriennummer unbekannt</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>Antennen-Seriennummer: </translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>Antennen-Seriennummer unbekannt</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI: </translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>IMEI unbekannt</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>IP-Adresse: </translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>MAC für LAN unbekannt</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>LAN einschalten, um MAC für LAN auslesen zu können</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>MAC für WLAN unbekannt</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>WLAN einschalten, um MAC für WLAN auslesen zu können</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>WLAN-Name: </translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(WLAN-Name verborgen)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>Softwareversion: </translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>Build-Nummer: </translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Ruhe</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>Entladen</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>Position ermittelt</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>S</source>
        <translation>S</translation>
    </message>
    <message>
        <source>E</source>
        <translation>O</translation>
    </message>
    <message>
        <source>W</source>
        <translation>W</translation>
    </message>
    <message>
        <source>Precharging</source>
        <translation>Vorladen</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>Akkufehler!</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>Restzeit %1:%2 h</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>Restladezeit %1:%2 h</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>Zeit wird geschätzt...</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>SIM einlegen</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>SIM-Initialisierung</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>PUK in der Weboberfläche
eingeben</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>PIN eingeben?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>Jetzt ausrichten?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>SIM-Lock passt nicht
zur eingelegten SIM</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>Einbuchung</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>Externe Steuerung</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>Bonding-Slave-Modus</translation>
    </message>
    <message>
        <source>HDR Half Asymmetric</source>
        <translation>HDR Half Asym.</translation>
    </message>
    <message>
        <source>HDR Half Symmetric</source>
        <translation>HDR Half Sym.</translation>
    </message>
    <message>
        <source>BGAN X-Stream</source>
        <translation>BGAN X-Stream</translation>
    </message>
    <message>
        <source>HDR Full Asymmetric</source>
        <translation>HDR Full Asym.</translation>
    </message>
    <message>
        <source>HDR Full Symmetric</source>
        <translation>HDR Full Sym.</translation>
    </message>
    <message>
        <source>2xHDR Full Asymmetric</source>
        <translation>2xHDR Full Asym.</translation>
    </message>
    <message>
        <source>2xHDR Full Symmetric</source>
        <translation>2xHDR Full Sym.</translation>
    </message>
    <message>
        <source>Standard data: </source>
        <translation>Standarddaten: </translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>Unbek. Verbindung</translation>
    </message>
</context>
</TS>
