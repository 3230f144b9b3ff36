// The readers of the interfaces and of the way to the network, against the real server.
#include "busif/readers.h"
#include "busif/singlevalue.h"

#include "model/interfaces.h"
#include "model/wan.h"

using namespace singlevalue;

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

const QList<Case>& cases()
{
    static const QList<Case> all = {
        ofText(READER(readIpAddress), "ram.net.eth0.ip_address", Access::ipAddress, "192.168.0.1"),
        ofNumber(
            READER(readDhcpClientMode), "ram.net.eth0.dhcp_client_mode",
            [] { return truth(model().getDhcpClientMode()); }, "false",
            "readDhcpClientMode(): ram.net.eth0.dhcp_client_mode not in database. Setting default value 0",
            truthOr("readDhcpClientMode", {2, -1})),
        ofText(READER(readLanMacStr), "cfg.interfaces.lan.mac_address", Access::lanMacStr,
               "00:11:22:33:44:55"),
        ofText(READER(readWifiMacStr), "cfg.interfaces.wlan.mac_address", Access::wifiMacStr,
               "00:11:22:33:44:56"),
        ofText(
            READER(readWifiSsidStr), "cfg.interfaces.wlan.ssid", [] { return model().getWifiSsidStr(); },
            "caf\xc3\xa9 100%s%n"),
        // "cfg.interfaces.wlan.bssid of 2 gives false."
        ofNumber(READER(readWifiBroadcastSsid), "cfg.interfaces.wlan.bssid",
                 [] { return truth(model().getWifiBroadcastSsid()); }, "false",
                 "readWifiBroadcastSsid(): ERROR!!! cfg.interfaces.wlan.bssid not in database???",
                 {number(1, "true"), number(0, "false"), number(2, "false"), number(-1, "false")}),
        ofNumber(
            READER(readWifiNumberOfClients), "ram.status.interfaces.wlan.clients",
            [] { return digits(model().getWifiNumberOfClients()); }, "0", numbers({3, 0, 120})),
        // "ram.wan.active of 9 gives -1."
        ofNumber(
            READER(readWanActive), "ram.wan.active", [] { return digits(model().getWanActive()); }, "-1",
            numbers({1, 0, 2, 3}) + unsupported("readWanActive", {4, 9, -2})),
        ofNumber(
            READER(readModemPresent), "ram.modem.status.present",
            [] { return digits(model().getModemPresent()); }, "-1",
            "readModemPresent(): ram.modem.status.present could not be read. Using value=-1",
            numbers({1, 0}) +
                QList<Given>{number(5, "5",
                                    "readModemPresent(): "
                                    "ram.modem.status.present could not be read. Using value=5")}),
        ofNumber(
            READER(readModemActivated), "ram.modem.activate",
            [] { return digits(model().getModemActivated()); }, "0",
            "readModemActivated(): Unexpected value=-1. Using default value=0",
            numbers({1, 0}) +
                QList<Given>{
                    number(2, "0", "readModemActivated(): Unexpected value=2. Using default value=0")}),
        ofNumber(
            READER(readWanUserSelection), "ram.wan.user_selection",
            [] { return digits(model().getWanUserSelection()); }, "-1",
            numbers({2, 1, 0}) + unsupported("readWanUserSelection", {3, -2})),
        ofNumber(
            READER(readModemOrBganAtStartup), "cfg.wan.setting",
            [] { return digits(model().getModemOrBganAtStartup()); }, "-1",
            numbers({3, 2, 1, 0}) + unsupported("readModemOrBganAtStartup", {4, -2})),
    };
    return all;
}

const char* const WORDS[] = {"", "wlan", "isdn", "lan", "phone", "usb"};

const int ABSENT = -100; // no key at all
const int TEXT = -101;   // a key of another type

} // namespace

class ReadersInterfacesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    void singleValue_data() { addRows(cases()); }
    void singleValue()
    {
        QFETCH(int, reader);
        QFETCH(int, value);
        run(*bus, cases()[reader], value);
    }

    // "LAN with both keys missing shows INTERFACE_STATE_ON, any other interface INTERFACE_STATE_OFF."
    // "cfg.interfaces.wlan.enabled 1 with ram.status.interfaces.wlan.enabled 0 shows activating."
    void interfaceState_data()
    {
        QTest::addColumn<int>("interface");
        QTest::addColumn<int>("requested");
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("kept");
        struct Row {
            int requested, state, kept;
        };
        const Row rows[] = {
            {1, 1, 2},  {1, 0, 1},  {1, ABSENT, 1}, {1, -1, 1},  {1, TEXT, 1},
            {0, 1, 3},  {0, 0, 0},  {0, ABSENT, 3}, {0, -1, 3},  {1, 2, -1},
            {0, 5, -1}, {2, 1, -1}, {-2, 0, -1},    {0, -2, -1}, {3, ABSENT, -1},
        };
        for (int interface = 1; interface <= 5; ++interface) {
            for (const Row& row : rows)
                QTest::addRow("%s, requested %d, state %d", WORDS[interface], row.requested, row.state)
                    << interface << row.requested << row.state << row.kept;
            const int unset = interface == INTERFACE_NAME_LAN ? INTERFACE_STATE_ON : INTERFACE_STATE_OFF;
            for (int requested : {ABSENT, -1, TEXT}) {
                for (int state : {ABSENT, -1, 0, 1, 7})
                    QTest::addRow("%s, requested %d, state %d", WORDS[interface], requested, state)
                        << interface << requested << state << unset;
            }
        }
    }
    void interfaceState()
    {
        QFETCH(int, interface);
        QFETCH(int, requested);
        QFETCH(int, state);
        QFETCH(int, kept);
        const std::string stateKey = std::string("ram.status.interfaces.") + WORDS[interface] + ".enabled";
        const std::string requestKey = std::string("cfg.interfaces.") + WORDS[interface] + ".enabled";
        set(stateKey, state);
        set(requestKey, requested);
        model().setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface),
                                  static_cast<INTERFACE_STATE_ENUM>(kept == 0 ? 3 : 0));
        bus->clearLogs();

        readInterfaceState(interface);

        QCOMPARE(int(model().getInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface))), kept);
        QCOMPARE(bus->reads(),
                 QStringList({QString::fromStdString(stateKey), QString::fromStdString(requestKey)}));
        QCOMPARE(complaintsAbout(stateKey), state == ABSENT || state == TEXT ? 1 : 0);
        QCOMPARE(complaintsAbout(requestKey), requested == ABSENT || requested == TEXT ? 1 : 0);
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           QString("readInterfaceState(): interface=%1, valueRequested=%2, valueState=%3, "
                                   "state=%4")
                               .arg(interface)
                               .arg(requested <= ABSENT ? -1 : requested)
                               .arg(state <= ABSENT ? -1 : state)
                               .arg(kept)),
            1);
        for (int other = 1; other <= 5; ++other) {
            if (other != interface)
                QCOMPARE(int(model().getInterfaceState(static_cast<INTERFACE_NAME_ENUM>(other))), -1);
        }
    }

    void undefinedInterface_data()
    {
        QTest::addColumn<int>("interface");
        for (int interface : {0, 6, -1, 1000})
            QTest::addRow("%d", interface) << interface;
    }
    void undefinedInterface()
    {
        QFETCH(int, interface);
        readInterfaceState(interface);
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           QString("readInterfaceState(): ERROR!!! Undefined interface=%1").arg(interface)),
            1);
        QVERIFY(bus->reads().isEmpty());
    }

private:
    void set(const std::string& key, int value)
    {
        if (value == TEXT)
            bus->terminal.set(key, "1");
        else if (value != ABSENT)
            bus->terminal.set(key, value);
    }
    int complaintsAbout(const std::string& key) const
    {
        return bus->log.count(QtDebugMsg, "readInterfaceState(): ERROR !!! " + QString::fromStdString(key) +
                                              " not in database???");
    }

    BusFixture* bus = nullptr;
};

QTEST_MAIN(ReadersInterfacesTest)
#include "readers_interfaces_test.moc"
