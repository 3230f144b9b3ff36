// The words of "expect", and which values they mean.
#include "sim/console/expectation.h"

#include <gmock/gmock.h>

using sim::Expectation;
using sim::Value;
using testing::HasSubstr;

namespace {

TEST(ValuePatternTest, MatchesWhatItTells)
{
    const Value five = Value::integer(5);
    const Value minusOne = Value::integer(-1);
    const Value text = Value::text("two words");
    const Value digits = Value::text("5");
    const Value bytes = Value::blob(std::string("\0\xff", 2));
    const Value* const absent = nullptr;
    const struct {
        const char* pattern;
        const Value* value;
        bool matches;
    } cases[] = {
        {"5", &five, true},
        {"5", &digits, true},
        {"5", &minusOne, false},
        {"5", absent, false},
        {"-1", &minusOne, true},
        {"0xffffffff", &minusOne, true}, // as causes are written
        {"0x5", &five, true},
        {"int:5", &five, true},
        {"int:5", &digits, false},
        {"string:5", &digits, true},
        {"string:5", &five, false},
        {"two words", &text, true},
        {"two", &text, false},
        {"string:two words", &text, true},
        {"blob:00ff", &bytes, true},
        {"blob:00", &bytes, false},
        {"4..6", &five, true},
        {"5..5", &five, true},
        {"6..9", &five, false},
        {"-5..5", &minusOne, true},
        {"4..6", &digits, false}, // a text is no number
        {">4", &five, true},
        {">5", &five, false},
        {">=5", &five, true},
        {"<5", &five, false},
        {"<=5", &five, true},
        {"<5", &minusOne, true},
        {"absent", absent, true},
        {"absent", &five, false},
        {"any", &five, true},
        {"any", absent, false},
        {"string:absent", absent, false},
    };
    for (const auto& row : cases) {
        sim::ValuePattern pattern;
        std::string error;
        ASSERT_TRUE(pattern.parse(row.pattern, &error)) << row.pattern << ": " << error;
        EXPECT_EQ(pattern.matches(row.value), row.matches) << row.pattern;
    }
    // A deletion that a client wrote is as good as absence.
    sim::ValuePattern pattern;
    std::string error;
    ASSERT_TRUE(pattern.parse("absent", &error));
    const Value none;
    EXPECT_TRUE(pattern.matches(&none));
}

TEST(ValuePatternTest, RefusesWhatHasTheFormOfANumberAndIsNone)
{
    for (const char* text : {"int:x", "int:", "blob:0", ">", ">x", "<=", ">4294967296"}) {
        sim::ValuePattern pattern;
        std::string error;
        EXPECT_FALSE(pattern.parse(text, &error)) << text;
        EXPECT_NE(error, "") << text;
    }
}

TEST(ExpectationTest, ReadsEachForm)
{
    const struct {
        sim::Words words;
        Expectation::Kind kind;
        const char* text;
        double seconds;
    } cases[] = {
        {{"cfg.language", "2"}, Expectation::Kind::Value, "", 10},
        {{"cfg.language", "2", "within", "0.5"}, Expectation::Kind::Value, "", 0.5},
        {{"write", "cfg.language", "2"}, Expectation::Kind::Write, "", 10},
        {{"pointing", "start", "within", "3"}, Expectation::Kind::Pointing, "start", 3},
        {{"log", "two", "words"}, Expectation::Kind::Log, "two words", 10},
        {{"screen", "enter-pin"}, Expectation::Kind::Screen, "SCREEN_ENTER_PIN", 10},
        {{"screen", "SCREEN_MENU"}, Expectation::Kind::Screen, "SCREEN_MENU", 10},
        {{"status", "Point", "now?", "within", "20"}, Expectation::Kind::Status, "Point now?", 20},
        {{"popup", "none"}, Expectation::Kind::Popup, "none", 10},
        {{"crash"}, Expectation::Kind::Crash, "", 10},
    };
    for (const auto& row : cases) {
        Expectation expectation;
        std::string error;
        ASSERT_TRUE(expectation.parse(row.words, &error)) << row.words[0] << ": " << error;
        EXPECT_EQ(expectation.kind, row.kind) << row.words[0];
        EXPECT_EQ(expectation.text, row.text) << row.words[0];
        EXPECT_EQ(expectation.seconds, row.seconds) << row.words[0];
    }
    Expectation write;
    std::string error;
    ASSERT_TRUE(write.parse({"write", "cfg.language", "int:2"}, &error));
    EXPECT_EQ(write.key, "cfg.language");
    EXPECT_EQ(write.value.describe(), "int 2");
}

TEST(ExpectationTest, RefusesTheRest)
{
    const sim::Words cases[] = {
        {},
        {"cfg.language"},
        {"cfg.language", "1", "2"},
        {"language", "1"},
        {"cfg.language", "1", "within", "a while"},
        {"write", "cfg.language"},
        {"pointing", "sideways"},
        {"screen", "nowhere"},
        {"status"},
        {"crash", "now"},
    };
    for (const sim::Words& words : cases) {
        Expectation expectation;
        std::string error;
        EXPECT_FALSE(expectation.parse(words, &error)) << testing::PrintToString(words);
        EXPECT_NE(error, "") << testing::PrintToString(words);
    }
}

TEST(ExpectationTest, SecondsArePlainNumbersUpToAnHour)
{
    double seconds = -1;
    EXPECT_TRUE(sim::parseSeconds("0", &seconds));
    EXPECT_EQ(seconds, 0);
    EXPECT_TRUE(sim::parseSeconds("0.25", &seconds));
    EXPECT_EQ(seconds, 0.25);
    EXPECT_TRUE(sim::parseSeconds("3600", &seconds));
    for (const char* text : {"", ".", "1.2.3", "-1", "1e3", "nan", "inf", "3600.5", " 1", "0x10"})
        EXPECT_FALSE(sim::parseSeconds(text, &seconds)) << text;
    EXPECT_EQ(sim::describeSeconds(10), "10 s");
    EXPECT_EQ(sim::describeSeconds(0.5), "0.5 s");
}

} // namespace
