// What goes over the bus has one layout, whatever the machine: offsets, sizes, bytes, and places in memory
// that are no multiple of anything. And what the runtime makes of times where `long` and `time_t` have 32
// bits.
#include "runtime/cbus_frame.h"
#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"
#include "runtime/vx_time.h"
#include "support/fakeclock.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

// At this distance from a multiple of 8, so that every alignment but the natural one is met too.
class Place {
public:
    Place(size_t distance, size_t size) : store((size + distance) / 8 + 2), start(bytes() + distance) {}
    Place(size_t distance, const Bytes& content) : Place(distance, content.size())
    {
        memcpy(start, content.data(), content.size());
    }
    uint8_t* data() { return start; }

private:
    uint8_t* bytes() { return reinterpret_cast<uint8_t*>(store.data()); }
    std::vector<uint64_t> store;
    uint8_t* start;
};

TEST(Layout, HeaderOfAFrame)
{
    EXPECT_EQ(offsetof(cbus_header_t, type), 0u);
    EXPECT_EQ(offsetof(cbus_header_t, src), 1u);
    EXPECT_EQ(offsetof(cbus_header_t, seqn), 2u);
    EXPECT_EQ(offsetof(cbus_header_t, reserved), 4u);
    EXPECT_EQ(offsetof(cbus_header_t, nlen), 6u);
    EXPECT_EQ(offsetof(cbus_header_t, dlen), 8u);
    EXPECT_EQ(sizeof(cbus_header_t), 12u);
    EXPECT_EQ(alignof(cbus_header_t), 4u);
}

TEST(Layout, HeaderOfAValueEntry)
{
    EXPECT_EQ(offsetof(config_vbuf_header_t, type), 0u);
    EXPECT_EQ(offsetof(config_vbuf_header_t, status), 1u);
    EXPECT_EQ(offsetof(config_vbuf_header_t, reserved), 2u);
    EXPECT_EQ(offsetof(config_vbuf_header_t, name_area), 4u);
    EXPECT_EQ(offsetof(config_vbuf_header_t, data_length), 8u);
    EXPECT_EQ(sizeof(config_vbuf_header_t), 12u);
    EXPECT_EQ(alignof(config_vbuf_header_t), 4u);
}

TEST(Layout, BytesOfAFrameAtAnyPlace)
{
    const Bytes expected = {2,   3,   0x34, 0x12, 0, 0, 3, 0, 5, 0, 0, 0, // header
                            'a', 'b', 0,    0,                            // name
                            1,   2,   3,    4,    5, 0, 0, 0};            // data
    const cbus_header_t header = {CBUS_TYPE_REQUEST, 3, 0x1234, 0, 3, 5};
    const uint8_t data[] = {1, 2, 3, 4, 5};
    for (size_t distance = 0; distance < 8; ++distance) {
        Place place(distance, expected.size());
        cbus_frame_pack(place.data(), &header, "ab", data);
        EXPECT_EQ(Bytes(place.data(), place.data() + expected.size()), expected) << distance;
    }
}

// Two entries, the second with a negative status.
Bytes twoEntries()
{
    return {VX_CONFIG_TYPE_INT,
            0,
            0,
            0,
            8,
            0,
            0,
            0,
            4,
            0,
            0,
            0,
            'k',
            '.',
            'o',
            'n',
            'e',
            0,
            0,
            0, // entry
            0xfe,
            0xff,
            255,
            255, // -2, the lowest byte first
            VX_CONFIG_TYPE_STRING,
            0xff,
            0,
            0,
            4,
            0,
            0,
            0,
            2,
            0,
            0,
            0,
            'k',
            '.',
            '2',
            0,
            'x',
            0,
            0,
            0};
}

TEST(Layout, BytesOfAValueBuffer)
{
    uint8_t* buffer = nullptr;
    const int32_t word = -2;
    uint32_t length = config_vbuf_add(&buffer, 0, "k", VX_CONFIG_TYPE_INT, "one", &word, sizeof(word), 0);
    length = config_vbuf_add(&buffer, length, nullptr, VX_CONFIG_TYPE_STRING, "k.2", "x", 2, -1);
    EXPECT_EQ(Bytes(buffer, buffer + length), twoEntries());
    free(buffer);
}

TEST(Layout, ValueBufferIsReadAtAnyPlace)
{
    struct Seen {
        std::string text;
        static int take(void* self, uint32_t type, const char* key, void* value, uint32_t length,
                        int32_t status)
        {
            int32_t word = 0;
            memcpy(&word, value, length < sizeof(word) ? length : sizeof(word));
            static_cast<Seen*>(self)->text += std::to_string(type) + " " + key + " " +
                                              std::to_string(length) + " " + std::to_string(word) + " " +
                                              std::to_string(status) + "\n";
            return 0;
        }
    };
    const Bytes bytes = twoEntries();
    const std::string expected = std::to_string(VX_CONFIG_TYPE_INT) + " k.one 4 -2 0\n" +
                                 std::to_string(VX_CONFIG_TYPE_STRING) + " k.2 2 120 -1\n";
    for (size_t distance = 0; distance < 8; ++distance) {
        Place place(distance, bytes);
        Seen seen;
        EXPECT_EQ(config_vbuf_parse(place.data(), static_cast<uint32_t>(bytes.size()), Seen::take, &seen), 0);
        EXPECT_EQ(seen.text, expected) << distance;
    }
}

// An entry that announces all but 2^32 bytes: where `size_t` has 32 bits a sum would come round to a small
// one.
TEST(Layout, LengthsAtTheEndOf32BitsDoNotComeRound)
{
    for (uint32_t area : {0xfffffffcu, 0xfffffff4u, 0xfffffff0u, 0x80000000u, 4u}) {
        for (uint32_t length : {0xffffffffu, 0xfffffffcu, 0xfffffff0u, 0x7fffffffu}) {
            Bytes bytes = twoEntries();
            memcpy(&bytes[4], &area, sizeof(area));
            memcpy(&bytes[8], &length, sizeof(length));
            config_vbuf_entry_t entry = {};
            EXPECT_FALSE(config_vbuf_entry_at(bytes.data(), static_cast<uint32_t>(bytes.size()), 0, &entry))
                << area << " " << length;
        }
    }
}

// A body stays below 2^22 bytes for every header that is accepted, so no sum of lengths can overflow.
TEST(Layout, LargestFrameFitsEveryMachine)
{
    const cbus_header_t header = {CBUS_TYPE_SIGNAL, 0, 0, 0, CBUS_NAME_LIMIT - 1, CBUS_DATA_LIMIT - 1};
    ASSERT_TRUE(cbus_header_valid(&header));
    EXPECT_EQ(cbus_frame_size(&header), 12u + 1024u + 0x200000u);
}

// The clock's seconds times a thousand pass 32 bits every 49.7 days, its seconds alone, as a signed number,
// in 2038: differences hold over both.
TEST(Layout, CountersHoldOverEveryLimitOf32Bits)
{
    const uint64_t limits[] = {0xffffffffull, 0x7fffffffull, 0x7fffffffull * 1000, 4294967ull * 1000};
    for (uint64_t limit : limits) {
        FakeClock clock(limit - 10);
        const uint32_t ms = vx_time_ms();
        const uint32_t us = vx_time_us();
        EXPECT_EQ(ms, static_cast<uint32_t>(limit - 10));
        clock.advance(10 + 25);
        EXPECT_EQ(vx_time_ms_elapsed(ms), 35u) << limit;
        EXPECT_EQ(vx_time_us_elapsed(us), 35000u) << limit;
    }
}

TEST(Layout, LastSecondOf32BitTime)
{
    char text[32];
    EXPECT_EQ(vx_utc_strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", 0x7fffffff), 19u);
    EXPECT_STREQ(text, "2038-01-19 03:14:07");
    struct tm tm;
    EXPECT_EQ(vx_utc_tm_to_time(vx_utc_time_to_tm(0x7fffffff, &tm)), 0x7fffffff);
}

// The value that the raw system call fills: two of the machine's own words.
TEST(Layout, ClockValueIsTwoWords)
{
    EXPECT_EQ(sizeof(vx_clock_value), 2 * sizeof(long));
    EXPECT_EQ(offsetof(vx_clock_value, nanoseconds), sizeof(long));
}

#ifdef __arm__
// What the build for the 32-bit terminal is meant to be.
TEST(Layout, MachineIsA32BitArmWithHardFloat)
{
    EXPECT_EQ(sizeof(void*), 4u);
    EXPECT_EQ(sizeof(long), 4u);
    EXPECT_EQ(alignof(uint64_t), 8u);
    EXPECT_EQ(CHAR_MIN, 0) << "char has no sign here";
    EXPECT_GE(__ARM_ARCH, 7);
#ifndef __ARM_PCS_VFP
    FAIL() << "floating point numbers are not passed in registers";
#endif
}

// Two pointers and four words, without holes.
TEST(Layout, RecordsOfTheClientOn32Bits)
{
    EXPECT_EQ(alignof(config_data_t), 4u);
    EXPECT_EQ(sizeof(config_data_t), 24u);
}
#endif

} // namespace
