<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>BGAN signal: </translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>Acquiring position: </translation>
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
        <translation>No battery connected</translation>
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
        <translation>Temp: </translation>
    </message>
</context>
<context>
    <name>ScreenEnterPin</name>
    <message>
        <source>Enter PIN: </source>
        <translation>Enter PIN: </translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>The manufacturer hereby declares that this radio equipment is in compliance with Directive 2014/53/EU. The full text of the EU declaration of conformity is in the User Manual.</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>Point now</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Display</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>Level 1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>Level 2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>Level 3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>Level 4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>Level 5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>Level 6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>Level 7</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5 seconds</translation>
    </message>
    <message>
        <source>30 seconds</source>
        <translation>30 seconds</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2 minutes</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5 minutes</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>Audio indication</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>Pointing</translation>
    </message>
    <message>
        <source>On</source>
        <translation>On</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>Power-up mode</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Properties</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP address</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>Hardware</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>Unit serial number</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>Antenna serial number</translation>
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
        <translation>Conformity</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>Help desk</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alerts</translation>
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
        <translation>Limited service</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM rejected</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>Timeout</translation>
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
        <translation>Initializing</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Connecting...</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> kbps</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Exit</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
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
        <translation>SIM reader failure
Contact help desk</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>Temperature sensor failure
Contact help desk</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>GPS receiver failure
Contact help desk</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>Antenna not connected
Check antenna cable</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>Temperature critically low
Let terminal warm up</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>Temperature too low
Let terminal warm up</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>Temperature critically high
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>Temperature too high
Let terminal cool down</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>Satellite signal lost
Clear the view or point again</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>Voice (CS) registration failed
Check subscription</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>Data (PS) registration failed
Check subscription</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>Antenna failure
Contact help desk</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>Error log memory full
Contact help desk</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>Network not valid
Check SIM card and subscription</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>Cable calibration failed
Check antenna cable</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>Signal processor (DSP) error
Restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>Antenna software update failed
Restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>Antenna software update problem
Restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>Antenna software not loaded
Restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>Antenna does not start
Restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>No contact with antenna HPA
Check antenna cable</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>Registration rejected by network
Check subscription</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>Deregistered by network</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>Deregistered from network</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>Flash memory write limit reached
Contact help desk</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>Antenna too cold to start
Let antenna warm up</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>Antenna start timed out
Check cable, restart terminal</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>High temperature: PoE shut down
Let terminal cool down</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>High temperature: lower data rate
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>Antenna does not match terminal
Use a supported antenna</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>Satellite not visible
Find a place with a clear view</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>SIM card missing
Insert SIM card</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>NAT table full
Reduce number of connections</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>Antenna changed while powered
Restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>Antenna cable resistance too high
Check antenna cable</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>Antenna does not respond
Check cable, restart terminal</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>Antenna capability check failed
Use a supported antenna</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>Antenna start not completed
Restart terminal</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>HPA voltage out of range
Check antenna cable</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>HPA temperature out of range
Protect antenna from heat and cold</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>HPA gain out of range (TX/RX)
Contact help desk</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>HPA voltage not as expected
Check antenna cable</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>No data connections defined
Add them in web interface</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>Checking PIN
Please wait</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>Encryption is off
Calls and data are not protected</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>Searching for external modem
Check that it is connected</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>Too many data connections
Stop one and try again</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>Automatic connection failed
Start connection by hand</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>Connection failed
Try again</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>Connection lost
Start it again</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>Network failure
Try again later</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>Network failure
Retrying automatically</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN disconnected
Check LAN cable</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>Not all connections started
Stop, then start again</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>Connection failed: unknown cause
Try again</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>Updating antenna software
Do not switch off</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>Closed by link monitor
Reconnecting automatically</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>No network selected
Select it in web interface</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>Starting:
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>Not registered on network
Wait until status is Ready</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>Wrong PIN
Try again</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>No alerts</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>DHCP client without bonding
Change it in web interface</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>Internal error
Restart terminal</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>External modem in use</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>Initializing
Please wait</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>Restarting
Please wait</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>Shutting down
Please wait</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>Modem: SIM card error
Check SIM card in modem</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>Modem error
Reconnect modem</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>Modem not supported
Use another modem</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>High temperature: slower operation
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>High temperature: USB shut down
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>High temperature: external USB off
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>High temperature: slower data
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>High temperature: data stopped
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>High temperature: shutting down
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>Low temperature
Let terminal warm up</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>High temperature: PoE off
Let terminal cool down</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>Updating software
Do not switch off</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>Updating software, battery low
Connect power supply</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>Preparing software update
Do not switch off</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>Update failed: file not readable
Upload file again</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>Update rejected: battery low
Connect power supply, try again</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>Update rejected: older version
Use a newer version</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>Update rejected: invalid file
Use the file for this terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>Update rejected: damaged file
Upload file again</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>Software update not started
Try again</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>Software update failed
Old version restored</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>Software damaged
Update it in web interface</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>Antenna software damaged
Update it in web interface</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>Previous update not finished
Restart terminal, try again</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>Update rejected
This version is already in use</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>Online update failed
Try again later</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>Online update: no data connection
Try again later</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>Online update: server not reached
Try again later</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>Update: file transfer failed
Try again</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>Update: file transfer timeout
Try again</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>Power supply calibration error
Contact help desk</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>Battery low
Connect power supply</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>Battery too cold
Let battery warm up</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>Battery too hot
Let battery cool down</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>Operator Determined Barring</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>LLC or SNDCP failure</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>Insufficient resources</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>Missing or unknown APN</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>Unknown PDP address or PDP type</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>User authentication failed</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>Activation rejected by GGSN</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>Activation rejected, unspecified</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>Service option not supported</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>Requested service option not subscribed</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>Service option temporarily out of order</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPI already used</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>Normal deactivation</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS not accepted</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>Activation rejected, Network failure</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>Reactivation required</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>Feature not supported</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>Semantic error in the TFT operation</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>Syntactical error in the TFT operation</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>Unknown PDP context</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>Semantic errors in packet filter(s)</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>Syntactical errors in packet filter(s)</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>PDP context without TFT already activated</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>Reject, detaching</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>PS attach rejected</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>Activation error, invalid</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>Re-activation timeout</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>Attach reject, timeout</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>Normal deactivation (from Core Network)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>Normal deactivation (power down or reboot)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>Normal deactivation (PDP context removed)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>Normal deactivation (AT command)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>Reject, unspecified</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>Reject, reattach required</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>Connection timeout</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>Reject, authentication failure</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>Reject, network invalid</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>Attach Reject, not allowed</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>Reject, normal detach</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>Attach reject, no IMSI</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>Attach reject, Service request denied</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>Attach reject, searching for PLMN</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>Establish Reject, normal</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>Establish Reject, Radio Network failure</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>Establish Reject, congestion</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>Establish Reject, unsupported IAI version</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>Establish Reject, unsupported UE class</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>Establish Reject, USIM required</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>Establish Reject, physical channel failure</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>Establish Reject, access Class not allowed</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>Establish Reject, unspecified</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>Conn. release, normal</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>Conn. release, Radio Network security failure</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>Conn. release, physical channel failure</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>Conn. release, PLMN Search</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>Conn. release, security command failure</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>Deregister, unknown cause</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>Deregister, register with no complete</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>Deregister, service area BARRED</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>Deregister, position required</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>Deregister, Core Network reset</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>Deregister, inactivity</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>Deregister, position response not received</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>Deregister, position age expired</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>Deregister, decryption error</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>Deregister, user specified position not permitted</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>Deregister, Radio Network initiated Deregistration</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>Deregister, tracked SAT below minimum</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>Deregister, Lease Group not available</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>Deregister, Lease Mode handover failed</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>Deregister, Radio Failure</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>Deregister, Unsupported UE subclass</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>Deregister, Elevation too low</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>Deregister, Protocol Failure</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>Deregister, Invalid UE capabilities</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>Network failure IMSI unknown (HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>Network failure, Mobile Station illegal</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>Network failure, Mobile Equipment illegal</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>Attach reject, GPRS not allowed</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>Attach reject, services not allowed</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>Network failure, Mobile station id unknown</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>Network failure, implicitly detached</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>Network failure, PLMN not allowed</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>Network failure, Location area not allowed</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>Network failure, roaming not allowed at location</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>Network failure, no GPRS service allowed</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>Network failure, no service at location</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>Network failure, service temporarily unreachable</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>Network failure, PLMN failure</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>Authentication reject, MAC failure</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>Authentication reject, sync failure</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>Network failure, congestion</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>Authentication reject, GSM unacceptable</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>Network error, detached</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>Network error, invalid mandatory info</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>Network error, message invalid</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>Network error, protocol state error</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>Network error, invalid conditional info</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>Network error, not compatible with protocol state</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>Network error, unspecified protocol error</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>Attach reject, detaching</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>Attach reject, powerdown</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>Attach reject, domain blocked</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>Reject, missing PIN</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>Reject, no selected PLMN</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>Reject, PLMN forbidden</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>Reject, PLMN/GPRS not allowed</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>Help desk not configured.
See User Manual.</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>Unit serial number: </translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>Unknown unit serial number</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>Antenna serial number: </translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>Unknown antenna serial number</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI: </translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>Unknown IMEI</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>IP address: </translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>Unknown MAC for LAN</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>Enable LAN to be able to read MAC for LAN</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>Unknown MAC for WLAN</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>Enable WLAN to be able to read MAC for WLAN</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>WLAN name: </translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(WLAN name hidden)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>Software version: </translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>Build number: </translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Idle</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>Charging</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>Discharging</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>Position acquired</translation>
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
        <translation>E</translation>
    </message>
    <message>
        <source>W</source>
        <translation>W</translation>
    </message>
    <message>
        <source>Precharging</source>
        <translation>Precharging</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>Battery error!</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>Remaining time %1:%2 h</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>Remaining charge time %1:%2 h</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>Estimating time...</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>Insert SIM</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>Initializing SIM</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>Enter PUK in web interface</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>Enter PIN?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>Point now?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>SIM Lock does not
match inserted SIM</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Searching</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>Registering</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>External control</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>Bonding slave mode</translation>
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
        <translation>Standard data: </translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>Unknown conn.</translation>
    </message>
</context>
</TS>
