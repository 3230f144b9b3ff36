// Validators of the database: who is asked, and what becomes of the answers.
#include "database_fixture.h"

using namespace std::string_literals;
using sim::Value;

namespace {

class ValidatorTest : public DatabaseBusTest {
protected:
    ValidatorTest() : validator(terminal.address())
    {
        validator.sendSignal("config.validate.register", "cfg.net\0"s);
        EXPECT_TRUE(validator.sync());
    }

    RawClient validator;
};

TEST_F(ValidatorTest, IsAskedAndItsVerdictCounts)
{
    uint16_t cookie = client.sendRequest(
        "config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)) + entry(3, 0, "cfg.net.b", word(2)) +
                                  entry(3, 0, "cfg.net.c", word(3)) + entry(3, 0, "cfg.other", word(4)));
    auto question = validator.readFrame();
    ASSERT_TRUE(question);
    EXPECT_EQ(question->type, CBUS_TYPE_SIGNAL);
    EXPECT_EQ(question->name, "config.clnt_validate.cfg.net");
    EXPECT_EQ(question->data, entry(3, 0, "cfg.net.a", word(1)) + entry(3, 0, "cfg.net.b", word(2)) +
                                  entry(3, 0, "cfg.net.c", word(3)));
    EXPECT_FALSE(terminal.has("cfg.other"));
    validator.sendSignal("config.validate.rsp", entry(3, 0, "cfg.net.a", word(1)) +
                                                    entry(3, -1, "cfg.net.b", word(2)) +
                                                    entry(3, 2, "cfg.net.c", word(3)));
    auto reply = client.readFrame();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->seqn, cookie);
    EXPECT_EQ(reply->data, entry(3, 0, "cfg.net.a", "") + entry(3, -8, "cfg.net.b", "") +
                               entry(3, 0, "cfg.net.c", "") + entry(3, 0, "cfg.other", ""));
    EXPECT_EQ(terminal.getInt("cfg.net.a"), 1);
    EXPECT_FALSE(terminal.has("cfg.net.b"));
    EXPECT_EQ(terminal.getInt("cfg.net.c"), 3);
    EXPECT_EQ(terminal.getInt("cfg.other"), 4);
}

TEST_F(ValidatorTest, EmptyAnswerAcceptsAll)
{
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)));
    ASSERT_TRUE(validator.readFrame());
    validator.sendSignal("config.validate.rsp", "");
    EXPECT_EQ(client.readFrame()->data, entry(3, 0, "cfg.net.a", ""));
}

TEST_F(ValidatorTest, SilenceIsARefusal)
{
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)));
    EXPECT_EQ(client.readFrame()->data, entry(3, -8, "cfg.net.a", ""));
    EXPECT_TRUE(terminal.waitForLog("a validator did not answer in time"));
    // The late answer is not taken for that of the next question.
    ASSERT_TRUE(validator.readFrame());
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.b", word(1)));
    ASSERT_TRUE(validator.readFrame());
    validator.sendSignal("config.validate.rsp", entry(3, -1, "cfg.net.b", word(1)));
    validator.sendSignal("config.validate.rsp", entry(3, 0, "cfg.net.b", word(1)));
    EXPECT_EQ(client.readFrame()->data, entry(3, 0, "cfg.net.b", ""));
    EXPECT_TRUE(terminal.waitForLog("config.validate.rsp: too late"));
}

TEST_F(ValidatorTest, OneThatGoesAwayRefuses)
{
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)));
    ASSERT_TRUE(validator.readFrame());
    validator.disconnect();
    EXPECT_EQ(client.readFrame()->data, entry(3, -8, "cfg.net.a", ""));
    // And is not asked again.
    EXPECT_EQ(ask("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1))), entry(3, 0, "cfg.net.a", ""));
}

TEST_F(ValidatorTest, MalformedAnswerRefuses)
{
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)));
    ASSERT_TRUE(validator.readFrame());
    validator.sendSignal("config.validate.rsp", "junk");
    EXPECT_EQ(client.readFrame()->data, entry(3, -8, "cfg.net.a", ""));
}

TEST_F(ValidatorTest, LongestNameIsAsked)
{
    RawClient inner(terminal.address());
    inner.sendSignal("config.validate.register", "cfg.net.deep\0"s);
    ASSERT_TRUE(inner.sync());
    client.sendRequest("config.modifyv.blk",
                       entry(3, 0, "cfg.net.deep.x", word(1)) + entry(3, 0, "cfg.net.y", word(2)));
    EXPECT_EQ(inner.readFrame()->data, entry(3, 0, "cfg.net.deep.x", word(1)));
    EXPECT_EQ(validator.readFrame()->data, entry(3, 0, "cfg.net.y", word(2)));
    inner.sendSignal("config.validate.rsp", "");
    EXPECT_FALSE(client.readFrame(50));
    validator.sendSignal("config.validate.rsp", entry(3, 1, "cfg.net.y", word(2)));
    EXPECT_EQ(client.readFrame()->data, entry(3, 0, "cfg.net.deep.x", "") + entry(3, -8, "cfg.net.y", ""));
}

TEST_F(ValidatorTest, ItsOwnWritesAreNotAsked)
{
    EXPECT_EQ(validator.ask("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1))).value_or("?"),
              entry(3, 0, "cfg.net.a", ""));
}

TEST_F(ValidatorTest, BadNamesAndUnaskedAnswersAreLogged)
{
    client.sendSignal("config.validate.register", "\0"s);
    client.sendSignal("config.validate.register", std::string(60, 'n') + '\0');
    client.sendSignal("config.validate.rsp", "");
    ASSERT_TRUE(client.sync());
    EXPECT_TRUE(terminal.waitForLog("config.validate.register: bad name"));
    EXPECT_TRUE(terminal.waitForLog("config.validate.rsp: nothing was asked"));
}

TEST_F(ValidatorTest, RequesterThatGoesAwayDoesNotStopTheWrite)
{
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)));
    ASSERT_TRUE(validator.readFrame());
    client.disconnect();
    ASSERT_TRUE(terminal.waitForClients(1));
    validator.sendSignal("config.validate.rsp", "");
    EXPECT_TRUE(terminal.waitForValue("cfg.net.a", Value::integer(1)));
}

TEST_F(ValidatorTest, StopWithAnOpenQuestion)
{
    client.sendRequest("config.modifyv.blk", entry(3, 0, "cfg.net.a", word(1)));
    ASSERT_TRUE(validator.readFrame());
    terminal.stop();
    EXPECT_TRUE(client.isClosedByServer());
}

} // namespace
