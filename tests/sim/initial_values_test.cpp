// Values as text: the file's form and its errors, and what the file of the source tree must hold.
#include "sim/initial_values.h"

#include "temporary_directory.h"

#include "sim/terminal.h"

#include <climits>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

using namespace std::string_literals;
using sim::Type;
using sim::Value;
using sim::Write;

namespace {

bool parse(const std::string& text, std::vector<Write>* values, std::string* error)
{
    std::istringstream in(text);
    return sim::parseInitialValues(in, "file", values, error);
}

TEST(InitialValuesTest, AllForms)
{
    std::vector<Write> values;
    std::string error;
    ASSERT_TRUE(parse("# comment\n"
                      "\n"
                      "  a.b = int 5\n"
                      "a.c=int -0x10 # sixteen\r\n"
                      "a.d = string \"x # y\\n\\t\\\\\\\"\\x41\\xe6\"  # comment\n"
                      "a.e = string \"\"\n"
                      "a.f = blob 00 fF1a # bytes",
                      &values, &error))
        << error;
    ASSERT_EQ(values.size(), 5u);
    EXPECT_EQ(values[0].key, "a.b");
    EXPECT_EQ(values[0].value, Value::integer(5));
    EXPECT_EQ(values[1].value, Value::integer(-16));
    EXPECT_EQ(values[2].value, Value::text("x # y\n\t\\\"A\xe6"));
    EXPECT_EQ(values[3].value, Value::text(""));
    EXPECT_EQ(values[4].value, Value::blob("\x00\xff\x1a"s));
}

struct BadLine {
    const char* line;
    const char* error;
};

TEST(InitialValuesTest, ErrorsTellTheLine)
{
    const BadLine lines[] = {
        {"a.b", "a line is written \"key = type value\""},
        {"= int 5", "bad key \"\""},
        {"a b = int 5", "bad key \"a b\""},
        {"a.b =", "unknown type \"\" (int, string and blob are known)"},
        {"a.b = float 5", "unknown type \"float\" (int, string and blob are known)"},
        {"a.b = int", "not a number: "},
        {"a.b = int five", "not a number: five"},
        {"a.b = int 5 6", "not a number: 5 6"},
        {"a.b = int 2147483648", "number out of range: 2147483648"},
        {"a.b = int 99999999999999999999", "number out of range: 99999999999999999999"},
        {"a.b = string x", "a string must stand in quotation marks: x"},
        {"a.b = string", "a string must stand in quotation marks: "},
        {"a.b = string \"x", "no closing quotation mark: \"x"},
        {"a.b = string \"x\\", "bad escape in \"x\\"},
        {"a.b = string \"x\\q\"", "bad escape in \"x\\q\""},
        {"a.b = string \"x\\x4\"", "bad escape in \"x\\x4\""},
        {"a.b = string \"x\\x00\"", "bad escape in \"x\\x00\""},
        {"a.b = string \"x\" y", "text behind the closing quotation mark: y"},
        {"a.b = blob", "a blob must have at least one byte"},
        {"a.b = blob 0", "bytes must be pairs of hexadecimal digits: 0"},
        {"a.b = blob 0g", "bytes must be pairs of hexadecimal digits: 0g"},
        {"first = int 1", "the key first stands twice"},
    };
    for (const BadLine& bad : lines) {
        std::vector<Write> values;
        std::string error;
        EXPECT_FALSE(parse("# one\nfirst = int 1\n"s + bad.line + "\nlast = int 1\n", &values, &error))
            << bad.line;
        EXPECT_EQ(error, "file:3: "s + bad.error);
        EXPECT_TRUE(values.empty());
    }
}

TEST(InitialValuesTest, TooLongKeyIsAnError)
{
    std::vector<Write> values;
    std::string error;
    EXPECT_FALSE(parse(std::string(500, 'k') + " = int 1", &values, &error));
    EXPECT_EQ(error, "file:1: key or value is too long");
}

TEST(InitialValuesTest, FilesThatCannotBeRead)
{
    TemporaryDirectory directory;
    std::vector<Write> values;
    std::string error;
    EXPECT_FALSE(sim::loadInitialValues(directory.file("none"), &values, &error));
    EXPECT_EQ(error, directory.file("none") + ": No such file or directory");
    EXPECT_FALSE(sim::loadInitialValues(directory.name, &values, &error));
    EXPECT_EQ(error, directory.name + ": not a readable file");
}

TEST(InitialValuesTest, EmptyFileIsNoError)
{
    std::vector<Write> values;
    std::string error;
    EXPECT_TRUE(parse("", &values, &error));
    EXPECT_TRUE(sim::loadInitialValues("/dev/null", &values, &error)) << error;
    EXPECT_TRUE(values.empty());
}

TEST(InitialValuesTest, DescribedValuesReadBack)
{
    for (const Value& value :
         {Value::integer(INT_MIN), Value::integer(INT_MAX), Value::text(""),
          Value::text("a\"b\\c\n\r\t\x01\x7f # \xc3\xa6"), Value::blob("\x00\x01\xff"s)}) {
        std::vector<Write> values;
        std::string error;
        ASSERT_TRUE(parse("k = " + sim::describeValue(value), &values, &error)) << error;
        EXPECT_EQ(values[0].value, value);
    }
    EXPECT_EQ(sim::describeValue(Value()), "none");
}

TEST(ShortValueTest, Forms)
{
    Value value;
    std::string error;
    EXPECT_TRUE(sim::parseShortValue("int:-5", &value, &error));
    EXPECT_EQ(value, Value::integer(-5));
    EXPECT_TRUE(sim::parseShortValue("string:a: \"b\" # c", &value, &error));
    EXPECT_EQ(value, Value::text("a: \"b\" # c"));
    EXPECT_TRUE(sim::parseShortValue("string:", &value, &error));
    EXPECT_EQ(value, Value::text(""));
    EXPECT_TRUE(sim::parseShortValue("blob:00ff", &value, &error));
    EXPECT_EQ(value, Value::blob("\x00\xff"s));
    for (const char* bad : {"", "5", "int", "int:", "int:x", "blob:", "other:1"})
        EXPECT_FALSE(sim::parseShortValue(bad, &value, &error)) << bad;
}

// --- The file of the source tree: every key that the display reads at its start or polls, in a terminal that
// is up.

struct Expected {
    const char* key;
    Type type;
    int low; // of an Int
    int high;
};

const Expected ExpectedKeys[] = {
    {"cfg.audio_indication.pointing", Type::Int, 0, 1},
    {"cfg.bonding.enabled", Type::Int, 0, 1},
    {"cfg.display.brightness", Type::Int, 0, 7},
    {"cfg.display.timeout", Type::Int, 5, 300},
    {"cfg.help_desk_number", Type::String, 0, 0},
    {"cfg.interfaces.isdn.enabled", Type::Int, 0, 1},
    {"cfg.interfaces.lan.enabled", Type::Int, 0, 1},
    {"cfg.interfaces.lan.mac_address", Type::String, 0, 0},
    {"cfg.interfaces.phone.enabled", Type::Int, 0, 1},
    {"cfg.interfaces.usb.enabled", Type::Int, 0, 1},
    {"cfg.interfaces.wlan.bssid", Type::Int, 0, 1},
    {"cfg.interfaces.wlan.enabled", Type::Int, 0, 1},
    {"cfg.interfaces.wlan.mac_address", Type::String, 0, 0},
    {"cfg.interfaces.wlan.ssid", Type::String, 0, 0},
    {"cfg.language", Type::Int, 0, 6},
    {"cfg.net.user_groups.0.automatic_activation", Type::Int, 0, 1},
    {"cfg.network_information.imei_number", Type::String, 0, 0},
    {"cfg.power_up.pointing_required", Type::Int, 0, 1},
    {"cfg.power_up.switch_on_when_external_power", Type::Int, 0, 1},
    {"cfg.status.sw_update.error", Type::Int, 0, 0},
    {"cfg.wan.setting", Type::Int, 0, 3},
    {"cfg.admin.bundle.0.name", Type::String, 0, 0},
    {"cfg.admin.bundle.0.connections.0.connection_index", Type::Int, 0, 0},
    {"cfg.admin.connection.0.traffic_class", Type::Int, 3, 3},
    {"cfg.admin.connection.1.traffic_class", Type::Int, 1, 1},
    {"cfg.admin.connection.1.max_bit_rate_download", Type::Int, 64, 256},
    {"cfg.admin.bundle.2.connections.1.connection_index", Type::Int, 2, 2},
    {"cfg.admin.bundle.2.connections.1.filters.0.filter_index", Type::Int, 0, 0},
    {"cfg.admin.bundle.3.connections.0.connection_index", Type::Int, 3, 3},
    {"cfg.admin.connection.3.max_bit_rate_upload", Type::Int, 897, 1792},
    {"ram.log.alert.latest.entry_count", Type::Int, 0, 0},
    {"ram.modem.activate", Type::Int, 0, 1},
    {"ram.modem.status.present", Type::Int, 0, 1},
    {"ram.net.eth0.dhcp_client_mode", Type::Int, 0, 1},
    {"ram.net.eth0.ip_address", Type::String, 0, 0},
    {"ram.net.single_user_mode", Type::Int, 0, 0},
    {"ram.net.user_groups.0.current_bundle", Type::Int, -1, -1},
    {"ram.software_version.release.builddate", Type::String, 0, 0},
    {"ram.software_version.release.buildid", Type::String, 0, 0},
    {"ram.software_version.release.buildnr", Type::Int, 0, INT_MAX},
    {"ram.software_version.release.red_label", Type::Int, 0, 0},
    {"ram.software_version.release.version", Type::String, 0, 0},
    {"ram.status.battery.1.average_time_to_empty", Type::Int, 1, 6000},
    {"ram.status.battery.1.average_time_to_full", Type::Int, 0, 6000},
    {"ram.status.battery.1.charge_discharge_status", Type::Int, 2, 2},
    {"ram.status.battery.1.relative_state_of_charge", Type::Int, 1, 100},
    {"ram.status.battery.1.status", Type::Int, 0, 0},
    {"ram.status.battery.1.temperature", Type::Int, -40, 80},
    {"ram.status.battery.2.average_time_to_empty", Type::Int, 0, 6000},
    {"ram.status.battery.2.average_time_to_full", Type::Int, 0, 6000},
    {"ram.status.battery.2.charge_discharge_status", Type::Int, -1, 3},
    {"ram.status.battery.2.relative_state_of_charge", Type::Int, 0, 100},
    {"ram.status.battery.2.status", Type::Int, -1, 0},
    {"ram.status.battery.2.temperature", Type::Int, -40, 80},
    {"ram.status.ext_system", Type::Int, 10, 10},
    {"ram.status.interfaces.isdn.enabled", Type::Int, 0, 1},
    {"ram.status.interfaces.lan.enabled", Type::Int, 0, 1},
    {"ram.status.interfaces.phone.enabled", Type::Int, 0, 1},
    {"ram.status.interfaces.usb.enabled", Type::Int, 0, 1},
    {"ram.status.interfaces.wlan.clients", Type::Int, 0, 10},
    {"ram.status.interfaces.wlan.enabled", Type::Int, 0, 1},
    {"ram.status.ongoing_data_sessions.0.reason", Type::Int, 0, 0},
    {"ram.status.pointed_status", Type::Int, 2, 2},
    {"ram.status.position.fix", Type::Int, 2, 3},
    {"ram.status.position.latitude", Type::Int, -9000000, 9000000},
    {"ram.status.position.longitude", Type::Int, -18000000, 18000000},
    {"ram.status.position.satellites", Type::Int, 1, 32},
    {"ram.status.psumcu.events.external_supply", Type::Int, 0, 1},
    {"ram.status.signal_strength", Type::Int, 320, 560},
    {"ram.status.signal_strength_norm", Type::Int, 0, 4},
    {"ram.status.sw_update.active", Type::Int, 0, 0},
    {"ram.status.sw_update.progress", Type::Int, 0, 0},
    {"ram.wan.active", Type::Int, 1, 1},
    {"ram.wan.user_selection", Type::Int, -1, 2},
    {"rmcfg.platform.hpa_hw.unit_serial", Type::String, 0, 0},
    {"rmcfg.platform.sysconf.serial_number", Type::String, 0, 0},
    {"rmcfg.platform.usim.status", Type::Int, 1, 1},
    {"rmcfg.protocols.bgan.status.gps_policy.display", Type::Int, 1, 1},
    {"rmcfg.protocols.umts.ciphering_capabilities", Type::Int, 3, 3},
};

struct ExpectedText {
    const char* key;
    const char* text;
};

const ExpectedText ExpectedTexts[] = {
    {"rmcfg.sys.status.mode", "operating"},
    {"rmcfg.platform.usim.pin.status", "Valid"},
    {"rmcfg.protocols.umts.plmn.status", "Selected"},
    {"rmcfg.protocols.umts.cs.status", "Attached"},
    {"rmcfg.protocols.umts.ps.status", "Attached"},
    {"rmcfg.protocols.bgan.status.state", "Registered"},
    {"rmcfg.protocols.bgan.status.beam_type", "Narrow"},
};

TEST(SourceTreeValuesTest, HoldEveryKeyThatTheDisplayReads)
{
    sim::Terminal terminal;
    ASSERT_TRUE(terminal.running()) << terminal.error();
    for (const Expected& expected : ExpectedKeys) {
        std::optional<Value> value = terminal.get(expected.key);
        ASSERT_TRUE(value) << expected.key;
        EXPECT_EQ(value->type, expected.type) << expected.key;
        if (expected.type == Type::Int) {
            EXPECT_GE(value->toInt(), expected.low) << expected.key;
            EXPECT_LE(value->toInt(), expected.high) << expected.key;
        } else {
            EXPECT_FALSE(value->toText().empty()) << expected.key;
        }
    }
    for (const ExpectedText& expected : ExpectedTexts)
        EXPECT_EQ(terminal.getString(expected.key), expected.text) << expected.key;
    // A start request left over would be nobody's; a session's status is there only while there is a session.
    EXPECT_FALSE(terminal.has("ram.local_gui_display.start_bundle_number"));
    EXPECT_FALSE(terminal.has("ram.status.ongoing_data_sessions.0.status"));
}

// A read that fails keeps the display from starting a bundle, so no stored one may lack a key.
TEST(SourceTreeValuesTest, StoredBundlesAreWhole)
{
    const char* const bundleKeys[] = {"name", "header_comp", "apn_type", "pd1", "pd2"};
    const char* const connectionKeys[] = {"name",
                                          "traffic_class",
                                          "max_bit_rate_upload",
                                          "max_bit_rate_download",
                                          "guaranteed_bit_rate_upload",
                                          "guaranteed_bit_rate_download",
                                          "delivery_order",
                                          "max_sdu_size",
                                          "sdu_error_rate",
                                          "delivery_of_erroneous_sdus",
                                          "transfer_delay",
                                          "traffic_handling_priority"};
    struct FilterBit {
        int32_t bit;
        std::vector<const char*> keys;
    };
    const FilterBit filterBits[] = {{1, {"source_ip", "subnet_mask"}},
                                    {2, {"prot_no"}},
                                    {4, {"dest_port_range_start", "dest_port_range_end"}},
                                    {8, {"source_port_range_start", "source_port_range_end"}},
                                    {16, {"ipsec_spi"}},
                                    {32, {"type_of_service", "type_of_service_mask"}}};
    sim::Terminal terminal;
    int bundles = 0, connections = 0, filters = 0;
    for (const auto& [key, value] : terminal.list("cfg.admin.bundle.")) {
        const std::string bundle = key.substr(0, key.find('.', strlen("cfg.admin.bundle.")) + 1);
        const std::string number = std::to_string(value.toInt());
        if (key == bundle + "name") {
            bundles++;
            for (const char* word : bundleKeys)
                EXPECT_TRUE(terminal.has(bundle + word)) << bundle << word;
            EXPECT_EQ(terminal.has(bundle + "apn_user_defined_name"),
                      terminal.getInt(bundle + "apn_type") == 2);
        } else if (key.find(".filter_index") != std::string::npos) {
            filters++;
            const std::string filter = "cfg.admin.traffic_flow_filters." + number + ".";
            ASSERT_TRUE(terminal.getInt(filter + "bit_mask")) << filter;
            for (const FilterBit& row : filterBits) {
                for (const char* word : row.keys)
                    EXPECT_EQ(terminal.has(filter + word),
                              (*terminal.getInt(filter + "bit_mask") & row.bit) != 0)
                        << filter << word;
            }
        } else if (key.find(".connection_index") != std::string::npos) {
            connections++;
            for (const char* word : connectionKeys)
                EXPECT_TRUE(terminal.has("cfg.admin.connection." + number + "." + word)) << number << word;
        }
    }
    EXPECT_EQ(bundles, 4);
    EXPECT_EQ(connections, 5);
    EXPECT_EQ(filters, 2);
}

// The key as the page of keys writes it: N for a number, X for an interface that can be switched.
std::string documentedForm(const std::string& key)
{
    for (const char* name : {"wlan", "isdn", "lan", "phone", "usb"}) {
        std::string end = ".interfaces."s + name + ".enabled";
        if (key.size() > end.size() && key.compare(key.size() - end.size(), end.size(), end) == 0)
            return key.substr(0, key.size() - end.size()) + ".interfaces.X.enabled";
    }
    std::istringstream parts(key);
    std::string form;
    std::string part;
    while (std::getline(parts, part, '.'))
        form += (form.empty() ? "" : ".") +
                (part.find_first_not_of("0123456789") == std::string::npos ? "N" : part);
    return form;
}

TEST(SourceTreeValuesTest, EveryKeyStandsOnThePageOfKeys)
{
    std::ifstream page(PROJECT_SOURCE_DIR "/docs/database-keys.md");
    std::string text{std::istreambuf_iterator<char>(page), {}};
    ASSERT_FALSE(text.empty());
    sim::Terminal terminal;
    for (const auto& [key, value] : terminal.list("")) {
        EXPECT_TRUE(text.find("`" + key + "`") != std::string::npos ||
                    text.find("`" + documentedForm(key) + "`") != std::string::npos)
            << key;
    }
}

TEST(SourceTreeValuesTest, InterfacesAreInTheStateThatIsAskedFor)
{
    sim::Terminal terminal;
    for (const char* name : {"wlan", "isdn", "lan", "phone", "usb"})
        EXPECT_EQ(terminal.getInt("cfg.interfaces."s + name + ".enabled"),
                  terminal.getInt("ram.status.interfaces."s + name + ".enabled"))
            << name;
}

} // namespace
