// Interfaces, who is connected to them, addresses, the position, and the guard of the settings.
#include "desk_fixture.h"

using sim::Value;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const char System[] = "ram.status.ext_system";
const char Address[] = "ram.net.eth0.ip_address";
const char Client[] = "ram.net.eth0.dhcp_client_mode";
const char WlanMac[] = "cfg.interfaces.wlan.mac_address";
const char WlanClients[] = "ram.status.interfaces.wlan.clients";
const char Fix[] = "ram.status.position.fix";
const char Satellites[] = "ram.status.position.satellites";

class InterfacesTest : public DeskTest {
protected:
    using DeskTest::DeskTest;

    static std::string setting(const std::string& name) { return "cfg.interfaces." + name + ".enabled"; }
    static std::string state(const std::string& name) { return "ram.status.interfaces." + name + ".enabled"; }
};

class SlowInterfacesTest : public InterfacesTest {
protected:
    SlowInterfacesTest() : InterfacesTest(1) {}
};

TEST_F(InterfacesTest, EachIsSwitched)
{
    for (const char* name : {"wlan", "lan", "phone", "isdn", "usb"}) {
        EXPECT_EQ(command("interfaces", name + std::string(" up")), "");
        EXPECT_EQ(terminal.getInt(setting(name)), 1);
        EXPECT_TRUE(becomes(state(name), 1)) << name;
        EXPECT_EQ(command("interfaces", name + std::string(" down")), "");
        EXPECT_EQ(terminal.getInt(setting(name)), 0);
        EXPECT_TRUE(becomes(state(name), 0)) << name;
    }
}

TEST_F(InterfacesTest, ABrokenOneDoesNotComeUp)
{
    EXPECT_EQ(command("interfaces", "wlan fail"), "");
    EXPECT_EQ(terminal.getInt(state("wlan")), 0);
    EXPECT_EQ(terminal.getInt(setting("wlan")), 1) << "the display shows that it is being activated";
    terminal.set(setting("wlan"), 0);
    terminal.set(setting("wlan"), 1);
    // Longer than it would take.
    EXPECT_EQ(command("interfaces", "usb up"), "");
    EXPECT_TRUE(becomes(state("usb"), 1));
    EXPECT_EQ(terminal.getInt(state("wlan")), 0);
    EXPECT_EQ(command("interfaces", "wlan up"), "");
    EXPECT_TRUE(becomes(state("wlan"), 1));
}

TEST_F(InterfacesTest, ClientsGoWithTheInterfaceAndComeBack)
{
    EXPECT_EQ(command("clients", "wlan 5"), "");
    EXPECT_EQ(terminal.getInt(WlanClients), 5);
    EXPECT_EQ(command("interfaces", "wlan down"), "");
    EXPECT_TRUE(becomes(WlanClients, 0));
    EXPECT_EQ(command("clients", "wlan 1"), "clients: wlan is not up");
    EXPECT_EQ(command("interfaces", "wlan up"), "");
    EXPECT_TRUE(becomes(WlanClients, 5));
}

TEST_F(InterfacesTest, EveryInterfaceHasItsClients)
{
    const std::pair<const char*, int> most[] = {
        {"wlan", 16}, {"lan", 4}, {"phone", 2}, {"isdn", 2}, {"usb", 1}};
    for (const auto& [name, limit] : most) {
        EXPECT_EQ(command("interfaces", name + std::string(" up")), "");
        ASSERT_TRUE(becomes(state(name), 1));
        const std::string words = std::string(name) + " ";
        EXPECT_EQ(command("clients", words + std::to_string(limit)), "");
        EXPECT_EQ(terminal.getInt("ram.status.interfaces." + std::string(name) + ".clients"), limit);
        EXPECT_EQ(command("clients", words + std::to_string(limit + 1)),
                  "clients: " + words + "takes 0 to " + std::to_string(limit) + ", not " +
                      std::to_string(limit + 1));
        EXPECT_EQ(command("clients", words + "0"), "");
    }
}

TEST_F(InterfacesTest, AddressIsKnownWhileTheInterfaceIsUp)
{
    EXPECT_EQ(command("interfaces", "wlan down"), "");
    EXPECT_TRUE(becomes(WlanMac, ""));
    EXPECT_EQ(command("interfaces", "wlan up"), "");
    EXPECT_TRUE(becomes(WlanMac, "02:4c:50:00:00:02"));
}

TEST_F(SlowInterfacesTest, ANewNameRestartsTheWlan)
{
    for (const char* key : {"ssid", "bssid"}) {
        terminal.set("cfg.interfaces.wlan." + std::string(key),
                     key == std::string("ssid") ? Value::text("Other") : Value::integer(0));
        EXPECT_EQ(terminal.getInt(state("wlan")), 0) << key;
        EXPECT_EQ(terminal.getInt(WlanClients), 0);
        EXPECT_TRUE(becomes(state("wlan"), 1));
    }
}

TEST_F(InterfacesTest, AllAreDarkWithTheTerminal)
{
    EXPECT_EQ(command("system", "start"), "");
    for (const char* name : {"wlan", "lan", "phone"})
        EXPECT_EQ(terminal.getInt(state(name)), 0) << name;
    ASSERT_TRUE(becomes(System, 10));
    for (const char* name : {"wlan", "lan", "phone"})
        EXPECT_TRUE(becomes(state(name), 1)) << name;
    EXPECT_EQ(terminal.getInt(state("usb")), 0);
}

TEST_F(InterfacesTest, BadInterfaceCommandsAreRefused)
{
    for (const char* text : {"wlan", "wlan on", "wlan up now"})
        EXPECT_EQ(command("interfaces", text), "interfaces: an interface and up, down or fail") << text;
    EXPECT_EQ(command("interfaces", "eth0 up"),
              "interfaces: an interface is wlan, lan, phone, isdn or usb, not eth0");
    for (const char* text : {"wlan", "wlan 1 2"})
        EXPECT_EQ(command("clients", text), "clients: an interface and a number") << text;
    EXPECT_EQ(command("clients", "eth0 1"),
              "clients: an interface is wlan, lan, phone, isdn or usb, not eth0");
    EXPECT_EQ(command("clients", "wlan x"), "clients: wlan takes 0 to 16, not x");
    EXPECT_EQ(command("clients", "wlan -1"), "clients: wlan takes 0 to 16, not -1");
    EXPECT_EQ(terminal.getInt(WlanClients), 2);
}

// --- DHCP

TEST_F(SlowInterfacesTest, ClientModeTakesItsTimeToGetAnAddress)
{
    EXPECT_EQ(command("dhcp", "on"), "");
    EXPECT_EQ(terminal.getInt(Client), 1);
    EXPECT_EQ(terminal.getString(Address), "");
    EXPECT_TRUE(becomes(Address, "10.47.11.20"));
    EXPECT_EQ(command("dhcp", "off"), "");
    EXPECT_EQ(terminal.getString(Address), "192.168.0.1");
}

TEST_F(InterfacesTest, NoAddressWithoutAServerOrALan)
{
    EXPECT_EQ(command("dhcp", "none"), "");
    EXPECT_EQ(terminal.getInt(Client), 1);
    EXPECT_EQ(command("interfaces", "usb up"), "");
    EXPECT_TRUE(becomes(state("usb"), 1));
    EXPECT_EQ(terminal.getString(Address), "");
    EXPECT_EQ(command("dhcp", "on"), "");
    EXPECT_TRUE(becomes(Address, "10.47.11.20"));
    EXPECT_EQ(command("interfaces", "lan down"), "");
    EXPECT_TRUE(becomes(Address, ""));
    EXPECT_EQ(command("interfaces", "lan up"), "");
    EXPECT_TRUE(becomes(Address, "10.47.11.20"));
    EXPECT_EQ(command("dhcp", "maybe"), "dhcp: one of on, off, none, not maybe");
}

// --- Position

TEST_F(InterfacesTest, TheTerminalIsCarriedElsewhere)
{
    EXPECT_EQ(command("position", "-55.5 -10.74560"), "");
    EXPECT_EQ(terminal.getInt("ram.status.position.latitude"), -5550000);
    EXPECT_EQ(terminal.getInt("ram.status.position.longitude"), -1074560);
    EXPECT_EQ(command("position", "90 -180"), "");
    EXPECT_EQ(terminal.getInt("ram.status.position.latitude"), 9000000);
    EXPECT_EQ(terminal.getInt("ram.status.position.longitude"), -18000000);
}

TEST_F(InterfacesTest, FixIsLostAndFound)
{
    EXPECT_EQ(command("position", "lost"), "");
    EXPECT_EQ(terminal.getInt(Fix), 0);
    EXPECT_EQ(terminal.getInt(Satellites), 0);
    EXPECT_EQ(command("position", "found"), "");
    EXPECT_EQ(terminal.getInt(Fix), 3);
    EXPECT_EQ(terminal.getInt(Satellites), 8);
}

TEST_F(InterfacesTest, ColdSearchFindsOneSatelliteAfterTheOther)
{
    NumberLog satellites(terminal, Satellites);
    EXPECT_EQ(command("position", "search"), "");
    EXPECT_THAT(satellites.until(8), ElementsAre(0, 1, 2, 3, 4, 5, 7, 8));
    EXPECT_EQ(terminal.getInt(Fix), 3);
}

TEST_F(InterfacesTest, FixIsThereBeforeTheTerminalIsUp)
{
    NumberLog fix(terminal, Fix);
    EXPECT_EQ(command("system", "start"), "");
    EXPECT_EQ(terminal.getInt(Fix), 0);
    EXPECT_THAT(fix.until(3), ElementsAre(0, 2, 3));
    ASSERT_TRUE(becomes(System, 10));
    point("start");
    EXPECT_TRUE(becomes("ram.status.pointed_status", 1));
}

TEST_F(InterfacesTest, CoveredReceiverFindsNothingAfterAStart)
{
    EXPECT_EQ(command("position", "lost"), "");
    EXPECT_EQ(command("system", "start"), "");
    ASSERT_TRUE(becomes(System, 10));
    EXPECT_EQ(terminal.getInt(Fix), 0);
    point("start");
    EXPECT_TRUE(becomes("ram.desk.error", "pointing: the position is not known yet"));
    EXPECT_EQ(terminal.getInt("ram.status.pointed_status"), 0);
}

TEST_F(InterfacesTest, PositionCanBeHidden)
{
    EXPECT_EQ(command("position", "hide"), "");
    EXPECT_EQ(terminal.getInt("rmcfg.protocols.bgan.status.gps_policy.display"), 0);
    EXPECT_EQ(command("position", "show"), "");
    EXPECT_EQ(terminal.getInt("rmcfg.protocols.bgan.status.gps_policy.display"), 1);
}

TEST_F(InterfacesTest, BadPositionsAreRefused)
{
    for (const char* text : {"here", "1 2 3", "lost now"})
        EXPECT_THAT(command("position", text), HasSubstr("position: a latitude")) << text;
    for (const char* text : {"90.1 0", "x 0", "1e1 0", "- 0", "5-5 0"})
        EXPECT_THAT(command("position", text), HasSubstr("a latitude is a number from -90 to 90")) << text;
    for (const char* text : {"0 180.1", "0 nan", "0 4.5.6"})
        EXPECT_THAT(command("position", text), HasSubstr("a longitude is a number from -180 to 180")) << text;
    EXPECT_EQ(terminal.getInt("ram.status.position.latitude"), 5991230);
}

class MovingPositionTest : public InterfacesTest {
protected:
    MovingPositionTest() : InterfacesTest(100, true) {}
};

TEST_F(MovingPositionTest, DriftsAroundWhereItWasCarriedAndOnlyWithAFix)
{
    EXPECT_EQ(command("position", "10 20"), "");
    NumberLog latitude(terminal, "ram.status.position.latitude");
    EXPECT_EQ(command("position", "10.5 20"), "");
    for (int32_t seen : latitude.until(1050000))
        EXPECT_TRUE(seen == 1050000 || std::abs(seen - 1000000) <= 30) << seen;
    EXPECT_EQ(command("position", "lost"), "");
    int32_t before = terminal.getInt("ram.status.position.latitude").value_or(0);
    EXPECT_NEAR(before, 1050000, 30);
    // Longer than several of its turns.
    EXPECT_EQ(command("interfaces", "usb up"), "");
    EXPECT_TRUE(becomes(state("usb"), 1));
    EXPECT_EQ(terminal.getInt("ram.status.position.latitude"), before);
    EXPECT_EQ(terminal.getInt(Satellites), 0);
}

// --- The guard

struct GuardRow {
    const char* key;
    std::vector<int32_t> good;
    std::vector<int32_t> bad;
};

TEST_F(InterfacesTest, SettingsOutOfRangeArePutBack)
{
    const GuardRow rows[] = {
        {"cfg.language", {0, 6}, {-1, 7}},
        {"cfg.display.brightness", {1, 7}, {0, 8}},
        {"cfg.display.timeout", {5, 30, 60, 120, 300}, {0, 45, 301}},
        {"cfg.audio_indication.pointing", {0, 1}, {2}},
        {"cfg.power_up.switch_on_when_external_power", {0, 1}, {-1, 2}},
        {"cfg.power_up.pointing_required", {0, 1}, {2}},
        {"cfg.interfaces.wlan.enabled", {0, 1}, {2}},
        {"cfg.interfaces.wlan.bssid", {0, 1}, {2}},
        {"cfg.interfaces.isdn.enabled", {0, 1}, {-1}},
        {"cfg.interfaces.lan.enabled", {0, 1}, {2}},
        {"cfg.interfaces.phone.enabled", {0, 1}, {2}},
        {"cfg.interfaces.usb.enabled", {0, 1}, {2}},
        {"cfg.wan.setting", {0, 3}, {-1, 4}},
        {"cfg.bonding.enabled", {0, 1}, {2}},
        {"cfg.net.user_groups.0.automatic_activation", {1, 0}, {2}},
    };
    for (const GuardRow& row : rows) {
        for (int32_t good : row.good) {
            terminal.set(row.key, good);
            EXPECT_EQ(terminal.getInt(row.key), good) << row.key;
            for (int32_t bad : row.bad) {
                terminal.set(row.key, bad);
                EXPECT_EQ(terminal.getInt(row.key), good) << row.key << " " << bad;
            }
        }
        terminal.set(row.key, "text");
        EXPECT_EQ(terminal.getInt(row.key), row.good.back()) << row.key;
    }
}

TEST_F(InterfacesTest, GuardCanBeSentAway)
{
    EXPECT_EQ(command("guard", "off"), "");
    terminal.set("cfg.language", 9);
    EXPECT_EQ(terminal.getInt("cfg.language"), 9);
    EXPECT_EQ(command("guard", "on"), "");
    terminal.set("cfg.language", 10);
    EXPECT_EQ(terminal.getInt("cfg.language"), 0) << "the last good one";
    EXPECT_TRUE(terminal.erase("cfg.language")) << "the display makes do without a key";
    EXPECT_FALSE(terminal.has("cfg.language"));
    EXPECT_EQ(command("guard", "maybe"), "guard: on or off, not maybe");
}

} // namespace
