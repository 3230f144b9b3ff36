// Bounded strings: results, cuts and ends.
#include "runtime/vx_string.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>
#include <cwchar>

namespace {

TEST(VxStrlcpy, CopiesWhatFitsAndReturnsTheWholeLength)
{
    char text[6] = "#####";
    EXPECT_EQ(vx_strlcpy(text, "abc", sizeof(text)), 3u);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text[4], '#');
    EXPECT_EQ(vx_strlcpy(text, "abcde", sizeof(text)), 5u);
    EXPECT_STREQ(text, "abcde");
    EXPECT_EQ(vx_strlcpy(text, "abcdefgh", sizeof(text)), 8u);
    EXPECT_STREQ(text, "abcde");
    EXPECT_EQ(vx_strlcpy(text, "xyz", 1), 3u);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(vx_strlcpy(text, "", sizeof(text)), 0u);
    EXPECT_STREQ(text, "");
}

TEST(VxStrlcpy, SizeOf0WritesNothing)
{
    char text[2] = "#";
    EXPECT_EQ(vx_strlcpy(text, "abc", 0), 3u);
    EXPECT_EQ(text[0], '#');
    EXPECT_EQ(vx_strlcpy(nullptr, "abc", 0), 3u);
}

TEST(VxStrlcat, AppendsWhatFitsAndReturnsTheLengthThatWasTried)
{
    char text[8] = "ab";
    EXPECT_EQ(vx_strlcat(text, "cd", sizeof(text)), 4u);
    EXPECT_STREQ(text, "abcd");
    EXPECT_EQ(vx_strlcat(text, "efg", sizeof(text)), 7u);
    EXPECT_STREQ(text, "abcdefg");
    EXPECT_EQ(vx_strlcat(text, "hi", sizeof(text)), 9u);
    EXPECT_STREQ(text, "abcdefg");
}

TEST(VxStrlcat, SizeBelowTheDestinationsLengthAppendsNothing)
{
    char text[8] = "abcd";
    EXPECT_EQ(vx_strlcat(text, "xy", 3), 5u); // 3 + 2, as the destination has no end in its size
    EXPECT_STREQ(text, "abcd");
    EXPECT_EQ(vx_strlcat(text, "xy", 0), 2u);
    EXPECT_STREQ(text, "abcd");
}

TEST(VxSnprintf, IsAlwaysTerminated)
{
    char text[6];
    memset(text, '#', sizeof(text));
    EXPECT_EQ(vx_snprintf(text, sizeof(text), "%d", 123), 3);
    EXPECT_STREQ(text, "123");
    EXPECT_EQ(vx_snprintf(text, sizeof(text), "%s", "abcdefgh"), 8);
    EXPECT_STREQ(text, "abcde");
    EXPECT_EQ(vx_snprintf(text, 1, "%s", "x"), 1);
    EXPECT_STREQ(text, "");
    text[0] = '#';
    EXPECT_EQ(vx_snprintf(text, 0, "%s", "xyz"), 3);
    EXPECT_EQ(text[0], '#');
}

TEST(VxSnprintf, WhatCannotBeFormattedIsEmpty)
{
    char text[6] = "old";
    const wint_t foreign = 0x20ac; // no character of the "C" locale
    EXPECT_LT(vx_snprintf(text, sizeof(text), "ab%lc", foreign), 0);
    EXPECT_STREQ(text, "");
    text[0] = '#';
    EXPECT_LT(vx_snprintf(text, 0, "%lc", foreign), 0);
    EXPECT_EQ(text[0], '#');
}

__attribute__((format(printf, 3, 4))) int wrapped(char* text, size_t size, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    int length = vx_vsnprintf(text, size, format, arguments);
    va_end(arguments);
    return length;
}

TEST(VxSnprintf, WithAnArgumentList)
{
    char text[4];
    EXPECT_EQ(wrapped(text, sizeof(text), "%s-%d", "ab", 10), 5);
    EXPECT_STREQ(text, "ab-");
}

} // namespace
