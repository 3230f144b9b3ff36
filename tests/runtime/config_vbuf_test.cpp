// The value buffer, byte by byte against bytes written by hand, and what is made of broken ones.
#include "runtime/config_vbuf.h"

#include "runtime/config_client_api.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/nomemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <string>
#include <syslog.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;

#define BYTES(text) std::string(text, sizeof(text) - 1)

// A buffer under construction.
struct Buffer {
    ~Buffer() { free(data); }
    Buffer& add(uint32_t type, const char* key, const std::string& value, int8_t status = 0,
                const char* prefix = nullptr)
    {
        length = config_vbuf_add(&data, length, prefix, type, key, value.data(),
                                 static_cast<uint32_t>(value.size()), status);
        return *this;
    }
    std::string bytes() const { return std::string(reinterpret_cast<char*>(data), length); }

    uint8_t* data = nullptr;
    uint32_t length = 0;
};

struct Seen {
    std::vector<std::string> entries;
    std::vector<int> results; // what the callback returns, in turn
};

int note(void* ctx, uint32_t type, const char* key, void* value, uint32_t length, int32_t status)
{
    Seen* seen = static_cast<Seen*>(ctx);
    std::string text = std::to_string(type) + " " + key + "=";
    text += value ? std::string(static_cast<char*>(value), length) : "null";
    seen->entries.push_back(text + " " + std::to_string(length) + " " + std::to_string(status));
    const size_t n = seen->entries.size();
    return n <= seen->results.size() ? seen->results[n - 1] : 0;
}

int parse(const std::string& bytes, Seen* seen)
{
    // A block of just this size, so that the address sanitizer sees a byte too many.
    std::vector<char> block(bytes.begin(), bytes.end());
    return config_vbuf_parse(block.data(), static_cast<uint32_t>(block.size()), note, seen);
}

class ConfigVbuf : public testing::Test {
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        syslogtap_start();
    }
    void TearDown() override { syslogtap_stop(); }
    Seen seen;
};

const std::string keyOf3 = BYTES("\x03\x00\x00\x00\x04\x00\x00\x00\x04\x00\x00\x00"
                                 "abc\x00"
                                 "\x78\x56\x34\x12");

TEST_F(ConfigVbuf, KeyOf3CharactersHasANameAreaOf4Bytes)
{
    EXPECT_EQ(Buffer().add(VX_CONFIG_TYPE_INT, "abc", BYTES("\x78\x56\x34\x12")).bytes(), keyOf3);
}

TEST_F(ConfigVbuf, KeyOf4CharactersHasANameAreaOf8Bytes)
{
    EXPECT_EQ(Buffer().add(VX_CONFIG_TYPE_BLOB, "abcd", "x").bytes(),
              BYTES("\x01\x00\x00\x00\x08\x00\x00\x00\x01\x00\x00\x00"
                    "abcd\x00\x00\x00\x00"
                    "x\x00\x00\x00"));
}

TEST_F(ConfigVbuf, StatusIsASignedByteBehindTheType)
{
    EXPECT_EQ(Buffer().add(VX_CONFIG_TYPE_STRING, "a", BYTES("no\0"), VX_CONFIG_NO_RECORD).bytes(),
              BYTES("\x02\xfb\x00\x00\x04\x00\x00\x00\x03\x00\x00\x00"
                    "a\x00\x00\x00"
                    "no\x00\x00"));
}

TEST_F(ConfigVbuf, PrefixIsJoinedWithADotAndCountsInTheNameArea)
{
    EXPECT_EQ(Buffer().add(VX_CONFIG_TYPE_NONE, "bc", "", 0, "a").bytes(),
              BYTES("\x00\x00\x00\x00\x08\x00\x00\x00\x00\x00\x00\x00"
                    "a.bc\x00\x00\x00\x00"));
    EXPECT_EQ(Buffer().add(VX_CONFIG_TYPE_NONE, "b", "", 0, "a").bytes(),
              BYTES("\x00\x00\x00\x00\x04\x00\x00\x00\x00\x00\x00\x00"
                    "a.b\x00"));
}

TEST_F(ConfigVbuf, ANullValueHasLength0)
{
    uint8_t* data = nullptr;
    const uint32_t length = config_vbuf_add(&data, 0, nullptr, VX_CONFIG_TYPE_BLOB, "a", nullptr, 9, 0);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(data), length),
              BYTES("\x01\x00\x00\x00\x04\x00\x00\x00\x00\x00\x00\x00"
                    "a\x00\x00\x00"));
    free(data);
}

TEST_F(ConfigVbuf, EntriesFollowEachOtherAtMultiplesOf4)
{
    Buffer buffer;
    buffer.add(VX_CONFIG_TYPE_BLOB, "a", "12345");
    EXPECT_EQ(buffer.length, 12u + 4 + 8);
    buffer.add(VX_CONFIG_TYPE_INT, "abc", BYTES("\x78\x56\x34\x12"));
    EXPECT_EQ(buffer.bytes().substr(24), keyOf3);
}

TEST_F(ConfigVbuf, GrowsOverManyEntriesAndKeepsThemAll)
{
    Buffer buffer;
    for (int i = 0; i < 300; ++i)
        buffer.add(VX_CONFIG_TYPE_BLOB, std::to_string(i).c_str(), std::string(static_cast<size_t>(i), 'v'));
    EXPECT_EQ(parse(buffer.bytes(), &seen), 0);
    ASSERT_EQ(seen.entries.size(), 300u);
    for (int i = 1; i < 300; ++i) {
        EXPECT_EQ(seen.entries[static_cast<size_t>(i)], "1 " + std::to_string(i) + "=" +
                                                            std::string(static_cast<size_t>(i), 'v') + " " +
                                                            std::to_string(i) + " 0");
    }
}

TEST_F(ConfigVbuf, ParseGivesTypeKeyValueLengthAndSignedStatus)
{
    EXPECT_EQ(parse(BYTES("\x02\xfb\x00\x00\x04\x00\x00\x00\x03\x00\x00\x00"
                          "a\x00zz" // what is left of the name area is not looked at
                          "no\x00\x00"
                          "\x01\x02\x00\x00\x08\x00\x00\x00\x00\x00\x00\x00"
                          "abcd\x00\x00\x00\x00"),
                    &seen),
              0);
    EXPECT_THAT(seen.entries, ElementsAre(std::string("2 a=no\0 3 -5", 12), "1 abcd=null 0 2"));
}

TEST_F(ConfigVbuf, ParseOfNothingCallsNothing)
{
    EXPECT_EQ(config_vbuf_parse(nullptr, 0, note, &seen), 0);
    EXPECT_THAT(seen.entries, IsEmpty());
}

TEST_F(ConfigVbuf, ResultsAreJoinedWithOr)
{
    seen.results = {1, 4, 0};
    EXPECT_EQ(parse(keyOf3 + keyOf3 + keyOf3, &seen), 5);
}

TEST_F(ConfigVbuf, LastEntryMayLackItsPadding)
{
    EXPECT_EQ(parse(Buffer().add(VX_CONFIG_TYPE_BLOB, "a", "x").bytes().substr(0, 17), &seen), 0);
    EXPECT_THAT(seen.entries, ElementsAre("1 a=x 1 0"));
}

TEST_F(ConfigVbuf, ReservedBytesAreNotRead)
{
    std::string bytes = keyOf3;
    bytes[2] = bytes[3] = '\xff';
    EXPECT_EQ(parse(bytes, &seen), 0);
    EXPECT_EQ(seen.entries.size(), 1u);
}

struct Broken {
    const char* what;
    std::string bytes;
};

const Broken brokenEntries[] = {
    {"name area past the buffer", BYTES("\1\0\0\0\x08\0\0\0\0\0\0\0abc\0")},
    {"name area of 4 GiB", BYTES("\1\0\0\0\xfc\xff\xff\xff\0\0\0\0abc\0")},
    {"name area of 0", BYTES("\1\0\0\0\0\0\0\0\4\0\0\0abc\0")},
    {"name area no multiple of 4", BYTES("\1\0\0\0\2\0\0\0\2\0\0\0a\0bc")},
    {"key without its NUL", BYTES("\1\0\0\0\4\0\0\0\0\0\0\0abcd")},
    {"value past the buffer", BYTES("\1\0\0\0\4\0\0\0\5\0\0\0abc\0vvvv")},
    {"value of 4 GiB", BYTES("\1\0\0\0\4\0\0\0\xff\xff\xff\xff"
                             "abc\0vvvv")},
};

TEST_F(ConfigVbuf, BrokenEntryEndsTheWalkIsLoggedAndGivesMinus1)
{
    for (const Broken& row : brokenEntries) {
        seen = Seen();
        syslogtap_clear();
        EXPECT_EQ(parse(keyOf3 + row.bytes, &seen), VX_CONFIG_ERR) << row.what;
        EXPECT_EQ(seen.entries.size(), 1u) << row.what;
        EXPECT_EQ(syslogtap::count(LOG_ERR, "config: broken entry at 20 of " +
                                                std::to_string(20 + row.bytes.size()) + " bytes\n"),
                  1u)
            << row.what;
    }
}

TEST_F(ConfigVbuf, FewerThan12BytesAtAnEntryAreAnAssertion)
{
    syslogtap_echo(1);
    for (size_t size : {1, 11}) {
        EXPECT_EXIT(parse(keyOf3 + std::string(size, 'x'), &seen), KilledBySignal(SIGABRT),
                    "<1> .*: \\*\\*\\* ASSERT in config_vbuf at [0-9]+\n");
    }
    syslogtap_echo(0);
}

TEST_F(ConfigVbuf, NoMemoryIsAnAssertion)
{
    syslogtap_echo(1);
    EXPECT_EXIT(
        {
            NoMemory none;
            Buffer().add(VX_CONFIG_TYPE_NONE, "a", "");
        },
        KilledBySignal(SIGABRT), "<1> .*: \\*\\*\\* ASSERT in config_vbuf at [0-9]+\n");
    syslogtap_echo(0);
}

} // namespace
