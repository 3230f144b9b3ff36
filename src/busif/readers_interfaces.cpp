// Readers of the interfaces and of the way to the network. Bus thread only.
#include "busif/readers.h"

#include "busif/reader_support.h"
#include "common/log.h"
#include "model/interfaces.h"
#include "model/statusupdater.h"
#include "model/wan.h"

namespace {

const int MISSING = -1;

StatusUpdater* model()
{
    return StatusUpdater::getStatusUpdater();
}

// The interfaces' words in the keys, by INTERFACE_NAME_ENUM.
const char* const INTERFACE_WORDS[] = {nullptr, "wlan", "isdn", "lan", "phone", "usb"};

// What was asked for and what is; where they differ, the interface is on its way.
struct InterfaceStateRow {
    int requested;
    int state;
    INTERFACE_STATE_ENUM result;
};
const InterfaceStateRow INTERFACE_STATE_ROWS[] = {
    {1, 1, INTERFACE_STATE_ON},
    {1, 0, INTERFACE_STATE_ACTIVATING},
    {1, MISSING, INTERFACE_STATE_ACTIVATING},
    {0, 1, INTERFACE_STATE_DEACTIVATING},
    {0, 0, INTERFACE_STATE_OFF},
    {0, MISSING, INTERFACE_STATE_DEACTIVATING},
};

INTERFACE_STATE_ENUM interfaceStateOf(int interface, int requested, int state)
{
    if (requested == MISSING) // a terminal that was never configured has its LAN on
        return interface == INTERFACE_NAME_LAN ? INTERFACE_STATE_ON : INTERFACE_STATE_OFF;
    for (const InterfaceStateRow& row : INTERFACE_STATE_ROWS) {
        if (row.requested == requested && row.state == state)
            return row.result;
    }
    return INTERFACE_STATE_UNKNOWN;
}

// A value outside its enumeration is logged and counts as -1, which is "unknown" in all of them.
int supportedOrUnknown(const char* function, int value, int highest)
{
    if (value >= -1 && value <= highest)
        return value;
    logDebug() << function << "(): value=" << value << " not supported!";
    return -1;
}

} // namespace

void readInterfaceState(int interface)
{
    logReaderStart(__func__);
    if (interface < INTERFACE_NAME_FIRST || interface > INTERFACE_NAME_LAST) {
        logDebug() << "readInterfaceState(): ERROR!!! Undefined interface=" << interface;
        return;
    }
    const char* const word = INTERFACE_WORDS[interface];
    const char* const introduction = "(): ERROR !!! ";
    const int state = readKeyOr(MISSING, __func__, QByteArray("ram.status.interfaces.") + word + ".enabled",
                                NOT_IN_DATABASE, introduction);
    const int requested = readKeyOr(MISSING, __func__, QByteArray("cfg.interfaces.") + word + ".enabled",
                                    NOT_IN_DATABASE, introduction);
    const INTERFACE_STATE_ENUM result = interfaceStateOf(interface, requested, state);
    logDebug() << "readInterfaceState(): interface=" << interface << ", valueRequested=" << requested
               << ", valueState=" << state << ", state=" << result;
    model()->setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface), result);
}

void readIpAddress()
{
    model()->setIpAddress(askSingleText(__func__, "ram.net.eth0.ip_address"));
}

void readDhcpClientMode()
{
    const int value = readSingleInt(__func__, "ram.net.eth0.dhcp_client_mode", 0,
                                    " not in database. Setting default value 0");
    model()->setDhcpClientMode(truthOf(__func__, value));
}

void readLanMacStr()
{
    model()->setLanMacStr(askSingleText(__func__, "cfg.interfaces.lan.mac_address"));
}

void readWifiMacStr()
{
    model()->setWifiMacStr(askSingleText(__func__, "cfg.interfaces.wlan.mac_address"));
}

void readWifiSsidStr()
{
    model()->setWifiSsidStr(askSingleText(__func__, "cfg.interfaces.wlan.ssid"));
}

void readWifiBroadcastSsid()
{
    logReaderStart(__func__);
    const int value = readKeyOr(0, __func__, "cfg.interfaces.wlan.bssid", NOT_IN_DATABASE, "(): ERROR!!! ");
    logReaderValue(__func__, value);
    model()->setWifiBroadcastSsid(value == 1);
}

void readWifiNumberOfClients()
{
    const int value = askSingleInt(__func__, "ram.status.interfaces.wlan.clients");
    model()->setWifiNumberOfClients(value == -1 ? 0 : value);
}

void readWanActive()
{
    const int value = askSingleInt(__func__, "ram.wan.active");
    model()->setWanActive(
        static_cast<ENUM_WAN_ACTIVE>(supportedOrUnknown(__func__, value, WAN_ACTIVE_MODEM_AND_BGAN)));
}

void readModemPresent()
{
    const char* const key = "ram.modem.status.present";
    const int value = askSingleInt(__func__, key, nullptr);
    if (value != 0 && value != 1) // logged, but passed on as it is
        logDebug() << "readModemPresent(): " << key << " could not be read. Using value=" << value;
    model()->setModemPresent(value);
}

void readModemActivated()
{
    int value = askSingleInt(__func__, "ram.modem.activate", nullptr);
    if (value != 0 && value != 1) {
        logDebug() << "readModemActivated(): Unexpected value=" << value << ". Using default value=0";
        value = 0;
    }
    model()->setModemActivated(value);
}

void readWanUserSelection()
{
    const int value = askSingleInt(__func__, "ram.wan.user_selection");
    model()->setWanUserSelection(
        static_cast<ENUM_WAN_USER_SELECTION>(supportedOrUnknown(__func__, value, WAN_USER_SELECTION_MODEM)));
}

void readModemOrBganAtStartup()
{
    const int value = askSingleInt(__func__, "cfg.wan.setting");
    model()->setModemOrBganAtStartup(
        static_cast<ENUM_STARTUP_WAN>(supportedOrUnknown(__func__, value, STARTUP_WAN_MODEM)));
}
