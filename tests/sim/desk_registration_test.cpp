// What the network does: it is not found, rejects, serves little, drops the terminal. The spot beam, and the
// causes by name.
#include "desk_fixture.h"

#include "sim/behaviour_causes.h"

using sim::Value;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const char Plmn[] = "rmcfg.protocols.umts.plmn.status";
const char Cs[] = "rmcfg.protocols.umts.cs.status";
const char Ps[] = "rmcfg.protocols.umts.ps.status";
const char Registration[] = "rmcfg.protocols.bgan.status.state";
const char Beam[] = "rmcfg.protocols.bgan.status.beam_type";
const char Pointed[] = "ram.status.pointed_status";
const char Reason[] = "ram.status.ongoing_data_sessions.0.reason";
const char SessionStatus[] = "ram.status.ongoing_data_sessions.0.status";
const char Activated[] = "ram.net.user_groups.0.activated";

class RegistrationTest : public DeskTest {
protected:
    using DeskTest::DeskTest;

    std::string text(const char* key) { return terminal.getString(key).value_or("?"); }
    size_t alertsWith(int32_t id, int32_t subId)
    {
        size_t count = 0;
        for (const auto& [key, value] : terminal.list("ram.log.alert.")) {
            if (key.find(".identifier") != std::string::npos && value.toInt() == id)
                count += terminal.getInt(key.substr(0, key.rfind('.')) + ".sub_id") == subId;
        }
        return count;
    }
    // One background connection, as the display asks for it.
    void start()
    {
        terminal.setAll({{"ram.net.pdp_contexts.0.0.active", Value::integer(1)},
                         {"ram.net.pdp_contexts.0.0.cid", Value::integer(1)},
                         {"ram.net.pdp_contexts.0.0.entry_owner", Value::integer(0)},
                         {"ram.net.qos.0.0.traffic_class", Value::integer(3)}});
        terminal.set(Activated, 1);
    }
};

class SlowRegistrationTest : public RegistrationTest {
protected:
    SlowRegistrationTest() : RegistrationTest(1) {}
};

TEST_F(RegistrationTest, NetworkIsNotFoundUntilItIs)
{
    EXPECT_EQ(command("network", "search"), "");
    EXPECT_EQ(text(Plmn), "Searching");
    EXPECT_EQ(text(Ps), "Idle");
    EXPECT_EQ(text(Registration), "Satellite search");
    EXPECT_EQ(command("network", "auto"), "");
    EXPECT_TRUE(becomes(Ps, "Attached"));
    EXPECT_EQ(text(Registration), "Registered");
}

TEST_F(SlowRegistrationTest, RegistersAnewStepByStep)
{
    EXPECT_EQ(command("network", "register"), "");
    EXPECT_EQ(text(Plmn), "Searching");
    EXPECT_TRUE(becomes(Ps, "Attaching"));
    EXPECT_EQ(text(Plmn), "Selected");
    EXPECT_EQ(text(Registration), "Registering");
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

TEST_F(RegistrationTest, RegisteringNeedsAllOfIt)
{
    EXPECT_EQ(command("signal", "20"), "");
    EXPECT_EQ(command("network", "register"), "network: there is no signal");
    terminal.set(Pointed, 0);
    EXPECT_EQ(command("network", "register"), "network: the antenna is not pointed");
    EXPECT_EQ(command("sim", "remove"), "");
    EXPECT_EQ(command("network", "register"), "network: there is no card that is ready");
    terminal.set("rmcfg.sys.status.mode", "stopped");
    EXPECT_EQ(command("network", "register"), "network: the radio module does not operate");
}

TEST_F(RegistrationTest, RejectionHasItsCauseAndItsAlerts)
{
    EXPECT_EQ(command("network", "reject 0x10024003"), "");
    EXPECT_TRUE(becomes(Ps, "Attached rejected"));
    EXPECT_EQ(text(Cs), "Attached rejected");
    EXPECT_EQ(text(Plmn), "Selected");
    EXPECT_EQ(alertsWith(0x1700, 0x10024003), 1u);
    EXPECT_EQ(alertsWith(0x1800, 0x10024003), 1u);
    start();
    EXPECT_TRUE(becomes(Reason, 0x10024003));
    EXPECT_FALSE(terminal.has(SessionStatus));
    EXPECT_EQ(command("network", "auto"), "");
    EXPECT_TRUE(becomes(Ps, "Attached"));
    EXPECT_EQ(terminal.list("ram.log.alert.").size(), 1u) << "the count alone";
    start();
    EXPECT_TRUE(becomes(SessionStatus, 2));
}

TEST_F(RegistrationTest, RejectionWithoutACauseAndByName)
{
    EXPECT_EQ(command("network", "reject"), "");
    EXPECT_TRUE(becomes(Ps, "Attached rejected"));
    start();
    EXPECT_TRUE(becomes(Reason, 0x10040003));
    EXPECT_EQ(command("network", "reject network failure, plmn not allowed"), "");
    start();
    EXPECT_TRUE(becomes(Reason, 0x1002400b));
}

TEST_F(RegistrationTest, RejectionEndsWhatRuns)
{
    start();
    ASSERT_TRUE(becomes(SessionStatus, 2));
    EXPECT_EQ(command("network", "reject 0x10024002"), "");
    EXPECT_TRUE(becomes(Reason, 0x10024002));
    EXPECT_FALSE(terminal.has(SessionStatus));
}

TEST_F(RegistrationTest, LimitedService)
{
    EXPECT_EQ(command("network", "limited"), "");
    EXPECT_TRUE(becomes(Ps, "Blocked"));
    EXPECT_EQ(text(Cs), "Blocked");
    EXPECT_EQ(alertsWith(0x1600, 0), 1u);
    start();
    EXPECT_TRUE(becomes(Reason, 0x10051003));
    EXPECT_EQ(command("network", "register"), "");
    EXPECT_TRUE(becomes(Ps, "Attached"));
    EXPECT_EQ(alertsWith(0x1600, 0), 0u);
}

TEST_F(RegistrationTest, SilentlyDeregistered)
{
    EXPECT_EQ(command("network", "deregister"), "");
    EXPECT_EQ(text(Registration), "Deregistered");
    EXPECT_EQ(text(Ps), "Attached") << "the display still says that it is ready";
    start();
    EXPECT_TRUE(becomes(Reason, 0x1008631e));
    EXPECT_EQ(command("network", "auto"), "");
    EXPECT_TRUE(becomes(Registration, "Registered"));
    terminal.set(Pointed, 0);
    EXPECT_EQ(command("network", "deregister"), "network: the antenna is not pointed");
}

TEST_F(RegistrationTest, DeregistrationEndsWithTheNextRegistration)
{
    EXPECT_EQ(command("network", "deregister"), "");
    terminal.set(Pointed, 0);
    terminal.set(Pointed, 2);
    EXPECT_TRUE(becomes(Registration, "Registered"));
    EXPECT_TRUE(becomes(Ps, "Attached"));
}

TEST_F(RegistrationTest, AnOrderIsKeptUntilItCanBeCarriedOut)
{
    terminal.set(Pointed, 0);
    EXPECT_EQ(command("network", "reject"), "");
    EXPECT_EQ(text(Plmn), "Scanning");
    terminal.set(Pointed, 2);
    EXPECT_TRUE(becomes(Ps, "Attached rejected"));
}

TEST_F(RegistrationTest, StartWithoutThePin)
{
    EXPECT_EQ(command("sim", "pin"), "");
    start();
    EXPECT_TRUE(becomes(Reason, 0x10051004));
}

TEST_F(RegistrationTest, SomebodyElseIsInCharge)
{
    EXPECT_EQ(command("at", "on"), "");
    start();
    EXPECT_TRUE(becomes(Reason, 3));
    EXPECT_EQ(command("at", "off"), "");
    EXPECT_EQ(command("bonding", "slave"), "");
    start();
    EXPECT_EQ(terminal.getInt(Reason), 0);
    EXPECT_TRUE(becomes(Reason, 3));
    EXPECT_EQ(command("bonding", "off"), "");
    EXPECT_EQ(command("temperature", "70"), "");
    start();
    EXPECT_TRUE(becomes(Reason, 3));
    EXPECT_EQ(command("temperature", "normal"), "");
    start();
    EXPECT_TRUE(becomes(SessionStatus, 2));
    EXPECT_EQ(command("temperature", "70"), "");
    EXPECT_FALSE(terminal.has(SessionStatus)) << "all connections are closed";
}

TEST_F(RegistrationTest, BadNetworkCommandsAreRefused)
{
    for (const char* text : {"find", "search now", "auto 3"})
        EXPECT_EQ(command("network", text),
                  "network: search, register, reject [CAUSE], limited, deregister or auto")
            << text;
    for (const char* text : {"0", "-1", "nonsense", "0x80000000"})
        EXPECT_EQ(command("network", std::string("reject ") + text),
                  std::string("network: a cause above 0, as 0x10040003, or its name, not ") + text);
    EXPECT_EQ(text(Ps), "Attached");
}

// --- Beam

TEST_F(RegistrationTest, BeamFollowsTheRegistration)
{
    terminal.set(Pointed, 0);
    EXPECT_EQ(text(Beam), "Global");
    terminal.set(Pointed, 2);
    EXPECT_TRUE(becomes(Beam, "Regional"));
    EXPECT_TRUE(becomes(Beam, "Narrow"));
    EXPECT_EQ(text(Ps), "Attached");
    terminal.set("rmcfg.sys.status.mode", "stopped");
    EXPECT_EQ(text(Beam), "");
}

TEST_F(RegistrationTest, BeamCanBeHeld)
{
    const std::pair<const char*, const char*> beams[] = {
        {"global", "Global"}, {"regional 7", "Regional"}, {"narrow 143", "Narrow"}, {"regional", "Regional"}};
    for (const auto& [words, type] : beams) {
        EXPECT_EQ(command("beam", words), "");
        EXPECT_EQ(text(Beam), type);
    }
    EXPECT_FALSE(terminal.has("ram.desk.beam.id"));
    EXPECT_EQ(command("beam", "regional 7"), "");
    EXPECT_EQ(terminal.getInt("ram.desk.beam.id"), 7);
    EXPECT_EQ(command("network", "register"), "");
    EXPECT_TRUE(becomes(Ps, "Attached"));
    EXPECT_EQ(text(Beam), "Regional");
    EXPECT_EQ(command("beam", "auto"), "");
    EXPECT_TRUE(becomes(Beam, "Narrow"));
    EXPECT_FALSE(terminal.has("ram.desk.beam.id"));
}

TEST_F(RegistrationTest, BadBeamsAreRefused)
{
    for (const char* text : {"wide", "auto 1", "narrow 1 2"})
        EXPECT_EQ(command("beam", text), "beam: global, regional or narrow and a number, or auto") << text;
    for (const char* number : {"0", "256", "x"})
        EXPECT_EQ(command("beam", std::string("narrow ") + number),
                  std::string("beam: a beam has a number from 1 to 255, not ") + number);
    terminal.set("rmcfg.sys.status.mode", "stopped");
    EXPECT_EQ(command("beam", "narrow"), "beam: the radio module does not operate");
}

// --- Causes

TEST_F(RegistrationTest, EveryCauseEndsASession)
{
    ASSERT_EQ(sim::namedCauses().size(), 117u);
    int32_t last = 0;
    for (const sim::NamedCause& row : sim::namedCauses()) {
        EXPECT_GT(row.cause, last) << "in ascending order";
        last = row.cause;
        start();
        EXPECT_EQ(command("fail", std::to_string(row.cause)), "");
        EXPECT_EQ(terminal.getInt(Reason), row.cause);
        EXPECT_EQ(terminal.getInt(Activated), 0);
        start();
        EXPECT_EQ(command("fail", row.name), "");
        EXPECT_EQ(terminal.getInt(Reason),
                  std::string(row.name) == "Normal deactivation" ? 0x10000024 : row.cause)
            << row.name;
    }
}

TEST(CausesTest, ByNumberAndByName)
{
    int32_t cause = 0;
    EXPECT_TRUE(sim::parseCause("0x1000001d", &cause));
    EXPECT_EQ(cause, 0x1000001d);
    EXPECT_TRUE(sim::parseCause("operator determined barring", &cause));
    EXPECT_EQ(cause, 0x10000008);
    EXPECT_TRUE(sim::parseCause("EV_AP_GUI_CONN_LOST", &cause));
    EXPECT_EQ(cause, 4);
    EXPECT_TRUE(sim::parseCause("Normal deactivation", &cause));
    EXPECT_EQ(cause, 0x10000024) << "the first of the two";
    EXPECT_TRUE(sim::parseCause("Deregister, unknown cause", &cause));
    EXPECT_EQ(cause, 0x1008631e) << "out of sequence";
    for (const char* text : {"", "0", "-1", "Operator", "0x80000000"})
        EXPECT_FALSE(sim::parseCause(text, &cause)) << text;
}

} // namespace
