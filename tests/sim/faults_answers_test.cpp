// The terminal answers wrongly or sends broken frames, and what its clients get of it: raw ones, and the
// runtime's own in a process of its own, since some frames end it.
#include "faults_fixture.h"
#include "runtime_client.h"

#include "runtime/config_client_api.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;

// --- Wrong answers

TEST_F(FaultsTest, ReadsGiveTheErrorThatWasAskedFor)
{
    terminal.set("ram.a", 7);
    terminal.set("ram.b", 8);
    for (const sim::FaultStatus& row : sim::faultStatuses()) {
        SCOPED_TRACE(row.name);
        with([&](sim::Faults& faults) { EXPECT_TRUE(faults.answer(row.status, "ram\\.a")); });
        const int32_t wanted = row.status;
        RuntimeClient client(terminal.address(), [wanted](RuntimeClient::Inside&) {
            int value = 5;
            if (config_read_int("ram.a", &value) != wanted && wanted != VX_CONFIG_BUFFER_TOO_SMALL)
                return 1;
            uint32_t unused = 0;
            if (config_status("ram.a", &unused) != wanted)
                return 2;
            int first = 0;
            int second = 0;
            config_data_t read[2] = {};
            const char* names[] = {"ram.a", "ram.b"};
            int* values[] = {&first, &second};
            for (int at = 0; at < 2; at++) {
                read[at].type = VX_CONFIG_TYPE_INT;
                read[at].name = names[at];
                read[at].data = values[at];
                read[at].size = sizeof(int);
            }
            if (config_readv("test", 2, read) != 0 || read[0].status != wanted || read[1].status != 0)
                return 3;
            if (second != 8)
                return 4;
            int written = 9;
            config_data_t write = {};
            write.type = VX_CONFIG_TYPE_INT;
            write.name = "ram.a";
            write.data = &written;
            write.size = sizeof written;
            if (config_modifyv("test", 1, &write) != wanted)
                return 5;
            return config_read_int("ram.b", &value) == 0 && value == 8 ? 0 : 6;
        });
        EXPECT_EQ(client.status(), 0) << client.errors();
        EXPECT_EQ(terminal.getInt("ram.a"), 7);
    }
    EXPECT_THAT(inForce(), ElementsAre("answer -8 ram\\.a"));
}

TEST_F(FaultsTest, OfSeveralErrorsTheLastThatFitsCounts)
{
    with([](sim::Faults& faults) {
        EXPECT_TRUE(faults.answer(-2, ""));
        EXPECT_TRUE(faults.answer(-5, "cfg.*"));
        EXPECT_FALSE(faults.answer(-5, "("));
        EXPECT_EQ(faults.statusOf("cfg.a"), -5);
        EXPECT_EQ(faults.statusOf("xcfg.a"), -2);
        EXPECT_EQ(faults.statusOf(""), -2);
        EXPECT_TRUE(faults.answer(-3, "")); // in place of the first
        EXPECT_EQ(faults.statusOf("cfg.a"), -3);
        EXPECT_THAT(faults.list(), ElementsAre("answer -5 cfg.*", "answer -3"));
        for (size_t at = 2; at < sim::Faults::MaxAnswers; at++)
            EXPECT_TRUE(faults.answer(-1, "k" + std::to_string(at)));
        EXPECT_FALSE(faults.answer(-1, "more"));
        std::string error;
        faults.off(&error);
        EXPECT_EQ(faults.statusOf("cfg.a"), 0);
    });
}

TEST_F(FaultsTest, NoKeysAreListedWhileAllReadsFail)
{
    terminal.set("ram.a", 7);
    RawClient client(terminal.address());
    with([](sim::Faults& faults) { faults.answer(-2, "ram.a"); });
    EXPECT_NE(client.ask("config.readm.ram.*", {}), "");
    with([](sim::Faults& faults) { faults.answer(-2, ""); });
    EXPECT_EQ(client.ask("config.readm.ram.*", {}), "");
}

// --- Broken frames

namespace {

struct FrameRow {
    const char* kind;
    enum { GoesOn, Ends, IsCut } effect;
    const char* log; // part of what it logs
};
const FrameRow FrameRows[] = {
    {"type", FrameRow::Ends, "Invalid message type [config.change.ram] 9"},
    {"name-long", FrameRow::Ends, "*** ASSERT in cbus_sock_impl at "},
    {"name-open", FrameRow::GoesOn, "cbus: message name without its NUL, cut to \"config.change.ram\""},
    {"name-empty", FrameRow::GoesOn, ""},
    {"name-none", FrameRow::GoesOn, ""},
    {"data-huge", FrameRow::Ends, "*** ASSERT in cbus_sock_impl at "},
    {"shifted", FrameRow::Ends, "*** ASSERT in cbus_sock_impl at "},
    {"cut-header", FrameRow::IsCut, ""},
    {"cut-data", FrameRow::IsCut, ""},
    {"reply", FrameRow::GoesOn, ""},
    {"request", FrameRow::GoesOn, ""},
    {"change-empty", FrameRow::GoesOn, ""},
    {"change-short", FrameRow::GoesOn, ""},
    {"change-cut", FrameRow::GoesOn, ""},
    {"key-open", FrameRow::GoesOn, ""},
    {"key-long", FrameRow::GoesOn, ""},
    {"key-odd", FrameRow::GoesOn, ""},
    {"value-long", FrameRow::GoesOn, ""},
    {"value-type", FrameRow::GoesOn, ""},
    {"int-short", FrameRow::GoesOn, ""},
    {"int-as-text", FrameRow::GoesOn, ""},
    {"text-open", FrameRow::GoesOn, ""},
    {"validator", FrameRow::Ends, "*** ASSERT in "},
    {"validator-none", FrameRow::Ends, "Error retrieving identifying name from config.clnt_validate."},
};

constexpr int GoneOn = 0;
constexpr int WasCut = 3;

} // namespace

// The runtime's client drops what it can, and where it must not go on it ends with a line in the log: it
// never just crashes.
TEST_F(FaultsTest, EachBrokenFrameIsDroppedOrEndsTheClientWithALine)
{
    ASSERT_EQ(std::size(FrameRows), sim::brokenFrames().size());
    terminal.set("ram.a", 7);
    for (const FrameRow& row : FrameRows) {
        SCOPED_TRACE(row.kind);
        RuntimeClient client(terminal.address(), [](RuntimeClient::Inside& inside) {
            inside.subscribe("ram.status.signal_strength");
            inside.subscribe("ram.done");
            inside.ready();
            if (!inside.waitForChange("ram.done"))
                return WasCut;
            int value = 0;
            return config_read_int("ram.a", &value) == 0 && value == 7 ? GoneOn : 1;
        });
        ASSERT_TRUE(terminal.waitForFilter("config.change.ram"));
        std::optional<size_t> count;
        with([&](sim::Faults& faults) { count = faults.sendFrame(row.kind, 0); });
        EXPECT_EQ(count, 1u);
        terminal.set("ram.done", 1);
        client.go();
        int status = client.status();
        EXPECT_EQ(status, row.effect == FrameRow::GoesOn  ? GoneOn
                          : row.effect == FrameRow::IsCut ? WasCut
                                                          : 128 + SIGABRT)
            << client.errors();
        EXPECT_THAT(client.errors(), HasSubstr(row.log));
        terminal.erase("ram.done");
        ASSERT_TRUE(terminal.waitForClients(0));
    }
}

TEST(BrokenFrames, TheManualHasThemAllWithWhatTheDisplayDoes)
{
    std::ifstream in(PROJECT_SOURCE_DIR "/docs/simulator.md");
    std::stringstream manual;
    manual << in.rdbuf();
    for (const FrameRow& row : FrameRows) {
        for (const sim::BrokenFrame& frame : sim::brokenFrames()) {
            if (row.kind != std::string(frame.kind))
                continue;
            const char* effect = row.effect == FrameRow::GoesOn  ? "goes on"
                                 : row.effect == FrameRow::IsCut ? "loses the bus"
                                                                 : "ends";
            EXPECT_THAT(manual.str(), HasSubstr("| `" + std::string(row.kind) + "` | " + frame.help + " | " +
                                                effect + " |\n"));
        }
    }
}

TEST_F(FaultsTest, AFrameGoesToOneClientOrNone)
{
    RawClient first(terminal.address());
    first.sync();
    RawClient second(terminal.address());
    second.sync();
    with([](sim::Faults& faults) {
        EXPECT_EQ(faults.sendFrame("change-empty", 1), 1u);
        EXPECT_EQ(faults.sendFrame("change-empty", 3), 0u);
        EXPECT_EQ(faults.sendFrame("nothing", 1), std::nullopt);
    });
    auto frame = first.readFrame();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->name, "config.change.ram");
    EXPECT_TRUE(second.hasNothingElse());
}

TEST_F(FaultsTest, ARuntimeClientNoticesACutAndADeafBus)
{
    RuntimeClient client(terminal.address(), [](RuntimeClient::Inside& inside) {
        inside.ready();
        int value = 0;
        return config_read_int("ram.a", &value) == VX_CONFIG_ERR ? 0 : 1;
    });
    with([](sim::Faults& faults) { faults.cut(0); });
    client.go();
    EXPECT_EQ(client.status(), 0) << client.errors();

    std::string error;
    with([&](sim::Faults& faults) { faults.setDeaf(true, &error); });
    RuntimeClient refused(terminal.address(), [](RuntimeClient::Inside&) { return 0; });
    EXPECT_EQ(refused.status(), RuntimeClient::NotConnected);
}
