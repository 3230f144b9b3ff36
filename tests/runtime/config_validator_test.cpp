// Validators, against the real server and against messages written by hand.
#include "runtime/config_client_api.h"

#include "runtime/config_client_impl.h"
#include "runtime/config_vbuf.h"
#include "runtime/fdloop.h"
#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/busclient.h"
#include "support/keptloop.h"
#include "support/nomemory.h"
#include "support/rawbus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <syslog.h>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;

const char assertHere[] = "<1> .*: \\*\\*\\* ASSERT in config_client_api at [0-9]+\n";

std::vector<std::string> seen;
int32_t verdict;

// Notes each record and judges it; the data word is a label.
void judge(unsigned nrec, config_data_t* prec, void* data)
{
    seen.push_back(static_cast<const char*>(data));
    for (unsigned i = 0; i < nrec; ++i) {
        config_data_t& rec = prec[i];
        seen.push_back(std::string(rec.name) + " type " + std::to_string(rec.type) + " size " +
                       std::to_string(rec.size) + " length " + std::to_string(rec.length) + " status " +
                       std::to_string(rec.status) + (rec.data ? "" : " null"));
        rec.status = verdict;
    }
}

void keep(unsigned nrec, config_data_t*, void*)
{
    seen.push_back(std::to_string(nrec));
}

void* label(const char* text)
{
    return const_cast<char*>(text);
}

std::string entry(uint8_t type, const std::string& key, const std::string& value, int status)
{
    uint8_t* buf = nullptr;
    const uint32_t len = config_vbuf_add(&buf, 0, nullptr, type, key.c_str(), value.data(),
                                         static_cast<uint32_t>(value.size()), static_cast<int8_t>(status));
    const std::string bytes(reinterpret_cast<char*>(buf), len);
    free(buf);
    return bytes;
}

class ConfigValidator : public testing::Test {
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        signal(SIGPIPE, SIG_IGN);
        seen.clear();
        verdict = 0;
        syslogtap_start();
        syslogtap_echo(1);
        loop = keptLoop();
        conn = bus.connect(loop);
        ASSERT_NE(conn, nullptr);
        config_init_cbus(conn, nullptr);
    }
    void TearDown() override
    {
        syslogtap_echo(0);
        syslogtap_stop();
        config_reset_for_test();
        endConnection(conn);
    }
    std::string message(uint16_t seqn, const std::string& name, const std::string& data)
    {
        return frameBytes(CBUS_TYPE_SIGNAL, static_cast<uint8_t>(conn->fd), seqn, name, data);
    }
    void validate(const std::string& name, const std::string& vbuf)
    {
        bus.send(signalBytes("config.clnt_validate." + name, vbuf));
        EXPECT_EQ(fdloop_run(loop), 0);
    }

    RawBus bus;
    fdloop_t* loop = nullptr;
    cbus_conn_t* conn = nullptr;
};

TEST_F(ConfigValidator, RegisteringSetsTheFilterAndTellsTheDatabase)
{
    EXPECT_EQ(config_validator_register(judge, "net", nullptr), 0);
    EXPECT_EQ(bus.takeAll(), message(0, "cbus.filter", std::string("config.clnt_validate.net\0", 25)) +
                                 message(1, "config.validate.register", std::string("net\0", 4)));
    EXPECT_EQ(config_state.validator_count, 1u);
}

TEST_F(ConfigValidator, RecordsComeWithLength0AndStatus2AndGoBackWithTheirVerdict)
{
    config_validator_register(judge, "net", label("mine"));
    bus.takeAll();
    verdict = VX_CONFIG_VERIFY_FAIL;
    const std::string number = le32(7);
    validate("net", entry(3, "cfg.a", number, 0) + entry(1, "cfg.b", "", 0));
    EXPECT_THAT(seen, ElementsAre("mine", "cfg.a type 3 size 4 length 0 status 2",
                                  "cfg.b type 1 size 0 length 0 status 2 null"));
    EXPECT_EQ(bus.takeAll(),
              message(2, "config.validate.rsp", entry(3, "cfg.a", number, -8) + entry(1, "cfg.b", "", -8)));
}

TEST_F(ConfigValidator, WithoutAVerdictTheInitialStatusGoesBack)
{
    config_validator_register(keep, "net", nullptr);
    bus.takeAll();
    validate("net", entry(1, "cfg.a", "x", 0));
    EXPECT_EQ(bus.takeAll(), message(2, "config.validate.rsp", entry(1, "cfg.a", "x", 2)));
}

TEST_F(ConfigValidator, WithoutRecordsAnEmptyAnswerIsSent)
{
    config_validator_register(keep, "net", nullptr);
    bus.takeAll();
    validate("net", "");
    EXPECT_THAT(seen, ElementsAre("0"));
    EXPECT_EQ(bus.takeAll(), message(2, "config.validate.rsp", ""));
}

TEST_F(ConfigValidator, TheNameChoosesTheRow)
{
    config_validator_register(judge, "net", label("net"));
    config_validator_register(judge, "network", label("network"));
    validate("network", "");
    validate("net", "");
    EXPECT_THAT(seen, ElementsAre("network", "net"));
}

TEST_F(ConfigValidator, RecordsBeyondTheAreaAreRefusedAndLogged)
{
    config_validator_register(keep, "net", nullptr);
    const size_t room = 65000 / sizeof(config_data_t);
    std::string vbuf, kept;
    for (size_t i = 0; i < room + 3; ++i) {
        vbuf += entry(1, "k" + std::to_string(i), "", 0);
        if (i < room)
            kept += entry(1, "k" + std::to_string(i), "", 2);
    }
    bus.takeAll();
    validate("net", vbuf);
    EXPECT_THAT(seen, ElementsAre(std::to_string(room)));
    EXPECT_EQ(bus.takeAll(), message(2, "config.validate.rsp", kept));
    EXPECT_EQ(syslogtap::count(LOG_ERR, "config: 3 records for validator net refused, no room\n"), 1u);
}

TEST_F(ConfigValidator, IfTheDatabaseCannotBeToldTheResultIsMinus1AndNothingIsInstalled)
{
    bus.close();
    EXPECT_EQ(config_validator_register(judge, "net", nullptr), -1);
    EXPECT_EQ(config_state.validator_count, 0u);
}

TEST_F(ConfigValidator, NameMayHave59Characters)
{
    const std::string name(59, 'n');
    EXPECT_EQ(config_validator_register(keep, name.c_str(), nullptr), 0);
    validate(name, "");
    EXPECT_THAT(seen, ElementsAre("0"));
}

// --- Panics -----------------------------------------------------------------------------------------------

using ConfigValidatorDeathTest = ConfigValidator;

TEST_F(ConfigValidatorDeathTest, NullOrTooLongNameOrNullHandler)
{
    EXPECT_EXIT(config_validator_register(judge, nullptr, nullptr), KilledBySignal(SIGABRT), assertHere);
    EXPECT_EXIT(config_validator_register(nullptr, "net", nullptr), KilledBySignal(SIGABRT), assertHere);
    const std::string name(60, 'n');
    EXPECT_EXIT(config_validator_register(judge, name.c_str(), nullptr), KilledBySignal(SIGABRT), assertHere);
}

TEST_F(ConfigValidatorDeathTest, SignalWithoutAName)
{
    EXPECT_EXIT(validate("", ""), KilledBySignal(SIGABRT),
                "<1> .*: Error retrieving identifying name from config\\.clnt_validate\\.\n");
}

TEST_F(ConfigValidatorDeathTest, SignalForANameThatIsNotInTheTable)
{
    config_validator_register(judge, "net", nullptr);
    EXPECT_EXIT(validate("other", ""), KilledBySignal(SIGABRT), assertHere);
}

TEST_F(ConfigValidatorDeathTest, FewerThan12BytesAtAnEntry)
{
    config_validator_register(judge, "net", nullptr);
    EXPECT_EXIT(validate("net", std::string(11, '\0')), KilledBySignal(SIGABRT),
                "<1> .*: \\*\\*\\* ASSERT in config_vbuf at [0-9]+\n");
}

TEST_F(ConfigValidatorDeathTest, NoMemoryForTableNameOrScratch)
{
    for (int granted : {0, 1}) { // the table, the name
        EXPECT_EXIT(
            {
                NoMemory none(granted);
                config_validator_register(judge, "net", nullptr);
            },
            KilledBySignal(SIGABRT), assertHere);
    }
    config_validator_register(keep, "net", nullptr);
    EXPECT_EXIT(
        {
            NoMemory none(1); // the message itself
            validate("net", "");
        },
        KilledBySignal(SIGABRT), assertHere);
}

// --- Against the real server ------------------------------------------------------------------------------

// The database asks the validator, and takes or refuses a modification by its answer.
TEST(ConfigValidatorServer, VerdictDecidesAModification)
{
    seen.clear();
    sim::Terminal terminal;
    terminal.useForProcess();
    fdloop_t* loop = keptLoop();
    cbus_conn_t* conn = cbus_conn_create(loop, "validator");
    cbus_conn_t* other = cbus_conn_create(nullptr, "other");
    ASSERT_TRUE(conn && other);
    config_init_cbus(conn, nullptr);
    ASSERT_EQ(config_validator_register(judge, "net", label("net")), 0);
    ASSERT_TRUE(terminal.waitForMessage("config.validate.register"));
    terminal.settle();
    for (int32_t answer : {0, -8}) {
        verdict = answer;
        seen.clear();
        const std::string key = "net.value" + std::to_string(-answer);
        const std::string change = entry(3, key, le32(7), 0);
        const int cookie =
            cbus_send_request(other, "config.modifyv.r", change.data(), static_cast<uint32_t>(change.size()));
        while (seen.empty() && fdloop_run(loop) == 0) {
        }
        void* out = nullptr;
        ASSERT_GT(cbus_get_reply(other, cookie, &out), 12);
        EXPECT_EQ(static_cast<int8_t*>(out)[1], answer);
        free(out);
        EXPECT_EQ(terminal.has(key), answer == 0);
    }
    config_reset_for_test();
    endConnection(other);
    endConnection(conn);
}

} // namespace
