// The database alone: storing, change detection, lists, limits.
#include "sim/database.h"

#include "runtime/config_client_api.h"

#include <gmock/gmock.h>

using sim::Database;
using sim::KeyExpression;
using sim::Type;
using sim::Value;
using sim::Write;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DatabaseTest : public testing::Test {
protected:
    DatabaseTest()
    {
        database.addListener([this](const std::vector<Write>& changes) {
            calls++;
            for (const Write& change : changes)
                changed.push_back(change.key + (change.value.bytes.empty() ? " gone" : ""));
        });
    }

    // What the listener heard since the last call.
    std::vector<std::string> heard()
    {
        std::vector<std::string> result;
        result.swap(changed);
        return result;
    }

    Database database;
    std::vector<std::string> changed;
    int calls = 0;
};

TEST_F(DatabaseTest, WriteAndFind)
{
    EXPECT_EQ(database.find("ram.x"), nullptr);
    database.apply({{"ram.x", Value::integer(-7)}});
    ASSERT_NE(database.find("ram.x"), nullptr);
    EXPECT_EQ(database.find("ram.x")->toInt(), -7);
    EXPECT_EQ(database.find("ram"), nullptr);
    EXPECT_EQ(database.find("ram.x.y"), nullptr);
}

TEST_F(DatabaseTest, OnlyADifferentValueIsAChange)
{
    database.apply({{"ram.x", Value::integer(1)}});
    EXPECT_THAT(heard(), ElementsAre("ram.x"));
    database.apply({{"ram.x", Value::integer(1)}});
    EXPECT_EQ(calls, 1);
    database.apply({{"ram.x", Value::integer(2)}});
    EXPECT_THAT(heard(), ElementsAre("ram.x"));
    // The same bytes under another type differ.
    database.apply({{"ram.x", Value::blob(Value::integer(2).bytes)}});
    EXPECT_THAT(heard(), ElementsAre("ram.x"));
}

TEST_F(DatabaseTest, AllKeysOfOneWriteAreReportedTogether)
{
    database.apply({{"ram.b", Value::integer(1)}, {"cfg.a", Value::text("x")}, {"ram.c", Value::integer(1)}});
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(heard(), ElementsAre("ram.b", "cfg.a", "ram.c"));
}

TEST_F(DatabaseTest, LastWriteOfAKeyCounts)
{
    database.apply({{"ram.x", Value::integer(1)}});
    heard();
    database.apply(
        {{"ram.x", Value::integer(2)}, {"ram.y", Value::integer(2)}, {"ram.x", Value::integer(1)}});
    EXPECT_THAT(heard(), ElementsAre("ram.y"));
    EXPECT_EQ(database.find("ram.x")->toInt(), 1);
}

TEST_F(DatabaseTest, DeletionsByTypeAndByLength)
{
    database.apply(
        {{"ram.x", Value::integer(1)}, {"ram.y", Value::integer(1)}, {"ram.z", Value::integer(1)}});
    heard();
    database.apply({{"ram.x", Value()}, {"ram.y", {Type::Blob, ""}}, {"ram.z", {Type::String, ""}}});
    EXPECT_THAT(heard(), ElementsAre("ram.x gone", "ram.y gone", "ram.z gone"));
    EXPECT_EQ(database.find("ram.x"), nullptr);
    EXPECT_TRUE(database.all().empty());
    database.apply({{"ram.x", Value()}});
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(DatabaseTest, EmptyTextWithItsNulIsAValue)
{
    database.apply({{"ram.x", Value::text("")}});
    ASSERT_NE(database.find("ram.x"), nullptr);
    EXPECT_EQ(database.find("ram.x")->bytes.size(), 1u);
}

TEST_F(DatabaseTest, ListenerMayWrite)
{
    database.addListener([this](const std::vector<Write>&) {
        database.apply({{"ram.echo", Value::integer(9)}});
    });
    database.apply({{"ram.x", Value::integer(1)}});
    EXPECT_THAT(heard(), ElementsAre("ram.x", "ram.echo"));
}

TEST_F(DatabaseTest, Checks)
{
    EXPECT_EQ(database.check({"ram.x", Value::integer(1)}), 0);
    EXPECT_EQ(database.check({"ram.x", {Type::Int, "abc"}}), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(database.check({"ram.x", {Type::Int, "abcde"}}), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(database.check({"ram.x", {Type::String, "no NUL"}}), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(database.check({"ram.x", {static_cast<Type>(4), "abcd"}}), VX_CONFIG_WRONG_TYPE);
    EXPECT_EQ(database.check({"", Value::integer(1)}), VX_CONFIG_ERR);
    EXPECT_EQ(database.check({std::string(Database::MaxKeyLength, 'k'), Value::integer(1)}), 0);
    EXPECT_EQ(database.check({std::string(Database::MaxKeyLength + 1, 'k'), Value::integer(1)}),
              VX_CONFIG_ERR);
    EXPECT_EQ(database.check({"ram.x", Value::blob(std::string(Database::MaxValueLength, 'v'))}), 0);
    EXPECT_EQ(database.check({"ram.x", Value::blob(std::string(Database::MaxValueLength + 1, 'v'))}),
              VX_CONFIG_DB_FULL);
}

TEST_F(DatabaseTest, RefusedWritesAreSkippedAndTheOthersStored)
{
    database.apply({{"ram.bad", {Type::Int, "abc"}}, {"ram.good", Value::integer(1)}});
    EXPECT_THAT(heard(), ElementsAre("ram.good"));
}

TEST_F(DatabaseTest, TotalIsLimitedAndFreedByDeleting)
{
    std::string block(Database::MaxValueLength, 'v');
    for (int at = 0; at < 63; at++)
        database.apply({{"ram." + std::to_string(at), Value::blob(block)}});
    EXPECT_EQ(database.check({"ram.more", Value::blob(block)}), VX_CONFIG_DB_FULL);
    EXPECT_EQ(database.check({"ram.5", Value::blob(block)}), 0); // in place of what is there
    database.apply({{"ram.5", Value()}});
    EXPECT_EQ(database.check({"ram.more", Value::blob(std::string(1000, 'v'))}), 0);
}

TEST_F(DatabaseTest, NumberOfKeysIsLimited)
{
    std::vector<Write> writes;
    for (size_t at = 0; at < Database::MaxKeys + 5; at++)
        writes.push_back({"ram." + std::to_string(at), Value::integer(1)});
    database.apply(writes);
    EXPECT_EQ(database.all().size(), Database::MaxKeys);
    EXPECT_EQ(database.check({"ram.new", Value::integer(1)}), VX_CONFIG_DB_FULL);
    EXPECT_EQ(database.check({"ram.0", Value::integer(2)}), 0);
}

TEST_F(DatabaseTest, KeysByPrefix)
{
    for (const char* key : {"ram.a", "ram.a.b", "ram.ab", "ram.b", "rma"})
        database.apply({{key, Value::integer(1)}});
    EXPECT_THAT(database.keysWithPrefix("ram.a"), ElementsAre("ram.a", "ram.a.b", "ram.ab"));
    EXPECT_THAT(database.keysWithPrefix(""), testing::SizeIs(5));
    EXPECT_THAT(database.keysWithPrefix("x"), IsEmpty());
}

// --- Expressions

TEST_F(DatabaseTest, ExpressionMustMatchTheWholeKey)
{
    for (const char* key : {"ram.log.alert.0.entry", "ram.log.alert.latest.entry_count", "ram.log.alert",
                            "cfg.ram.log.alert.0"})
        database.apply({{key, Value::integer(1)}});
    auto keys = [&](const char* text) { return database.keysMatching(*KeyExpression::compile(text)); };
    EXPECT_THAT(keys("ram.log\\.alert\\..*"),
                ElementsAre("ram.log.alert.0.entry", "ram.log.alert.latest.entry_count"));
    EXPECT_THAT(keys("ram.log.alert"), ElementsAre("ram.log.alert"));
    EXPECT_THAT(keys("alert"), IsEmpty());
    EXPECT_THAT(keys("ram|ram.log.alert"), ElementsAre("ram.log.alert"));
    EXPECT_THAT(keys(""), IsEmpty());
}

TEST(KeyExpressionTest, MalformedAndUnboundedExpressionsAreRefused)
{
    for (const char* text : {"(", "[", "a{2", "*{", "(a)\\1", "((a{1,250}){1,250}){1,250}"})
        EXPECT_FALSE(KeyExpression::compile(text)) << text;
    EXPECT_TRUE(KeyExpression::compile("a{2}"));
    EXPECT_TRUE(KeyExpression::compile("a\\\\1"));
}

TEST(FirstComponentTest, EndsAtTheFirstDot)
{
    EXPECT_EQ(sim::firstComponent("ram.status.x"), "ram");
    EXPECT_EQ(sim::firstComponent("ram"), "ram");
    EXPECT_EQ(sim::firstComponent(".x"), "");
}

} // namespace
