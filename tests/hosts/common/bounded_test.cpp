// Bounded copies and prints: just inside, just outside, null.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace {

// A target of 8 bytes with marks behind it.
struct Marked {
    char bytes[8];
    char marks[4];
    Marked() { std::memset(this, '#', sizeof *this); }
    bool Whole() const { return std::memcmp(marks, "####", 4) == 0; }
};

TEST(Bounded, Memcpy)
{
    Marked target;
    EXPECT_EQ(memcpy_s(target.bytes, 8, "12345678", 8), 0);
    EXPECT_EQ(std::memcmp(target.bytes, "12345678", 8), 0);
    EXPECT_EQ(memcpy_s(target.bytes, 8, "x", 0), 0);
    EXPECT_NE(memcpy_s(target.bytes, 8, "123456789", 9), 0);
    EXPECT_EQ(std::memcmp(target.bytes, "\0\0\0\0\0\0\0\0", 8), 0);
    EXPECT_TRUE(target.Whole());
    EXPECT_NE(memcpy_s(nullptr, 8, "1", 1), 0);
    EXPECT_NE(memcpy_s(target.bytes, 8, nullptr, 1), 0);
    EXPECT_NE(memcpy_s(target.bytes, SIZE_MAX, "1", 1), 0);
    EXPECT_NE(memcpy_s(target.bytes, 8, target.bytes + 1, 4), 0);
    EXPECT_TRUE(target.Whole());
}

TEST(Bounded, Memset)
{
    Marked target;
    EXPECT_EQ(memset_s(target.bytes, 8, 'a', 3), 0);
    EXPECT_EQ(std::memcmp(target.bytes, "aaa#", 4), 0);
    EXPECT_EQ(memset_s(target.bytes, 8, 'b', 8), 0);
    EXPECT_NE(memset_s(target.bytes, 8, 'c', 9), 0);
    EXPECT_EQ(target.bytes[7], 'c');
    EXPECT_NE(memset_s(nullptr, 8, 0, 1), 0);
    EXPECT_NE(memset_s(target.bytes, SIZE_MAX, 0, 1), 0);
    EXPECT_TRUE(target.Whole());
}

TEST(Bounded, Strcpy)
{
    Marked target;
    EXPECT_EQ(strcpy_s(target.bytes, 8, "1234567"), 0);
    EXPECT_STREQ(target.bytes, "1234567");
    EXPECT_NE(strcpy_s(target.bytes, 8, "12345678"), 0);
    EXPECT_STREQ(target.bytes, "");
    EXPECT_NE(strcpy_s(target.bytes, 0, ""), 0);
    EXPECT_NE(strcpy_s(nullptr, 8, ""), 0);
    EXPECT_NE(strcpy_s(target.bytes, 8, nullptr), 0);
    EXPECT_TRUE(target.Whole());
}

TEST(Bounded, Strncpy)
{
    Marked target;
    EXPECT_EQ(strncpy_s(target.bytes, 8, "123456789", 7), 0);
    EXPECT_STREQ(target.bytes, "1234567");
    EXPECT_EQ(strncpy_s(target.bytes, 8, "ab", 100), 0);
    EXPECT_STREQ(target.bytes, "ab");
    EXPECT_NE(strncpy_s(target.bytes, 8, "123456789", 8), 0);
    EXPECT_STREQ(target.bytes, "");
    EXPECT_NE(strncpy_s(target.bytes, 8, "1", SIZE_MAX), 0);
    EXPECT_NE(strncpy_s(nullptr, 8, "1", 1), 0);
    EXPECT_NE(strncpy_s(target.bytes, 8, nullptr, 1), 0);
    EXPECT_TRUE(target.Whole());
}

TEST(Bounded, SprintfRefusesWhatDoesNotFit)
{
    Marked target;
    EXPECT_EQ(sprintf_s(target.bytes, 8, "%u:%s", 12u, "abcd"), 7);
    EXPECT_STREQ(target.bytes, "12:abcd");
    EXPECT_EQ(sprintf_s(target.bytes, 8, "%u:%s", 12u, "abcde"), -1);
    EXPECT_STREQ(target.bytes, "");
    EXPECT_EQ(sprintf_s(target.bytes, 0, "%u", 1u), -1);
    EXPECT_EQ(sprintf_s(nullptr, 8, "%u", 1u), -1);
    EXPECT_TRUE(target.Whole());
}

TEST(Bounded, SnprintfCutsAtItsCount)
{
    Marked target;
    EXPECT_EQ(snprintf_s(target.bytes, 8, 7, "%s", "1234567"), 7);
    EXPECT_EQ(snprintf_s(target.bytes, 8, 3, "%s", "1234567"), -1);
    EXPECT_STREQ(target.bytes, "123");
    EXPECT_EQ(snprintf_s(target.bytes, 8, 20, "%s", "1234567"), 7);
    EXPECT_EQ(snprintf_s(target.bytes, 8, 20, "%s", "12345678"), -1);
    EXPECT_STREQ(target.bytes, "");
    EXPECT_EQ(snprintf_s(target.bytes, 8, SIZE_MAX, "%s", "12345678"), -1);
    EXPECT_TRUE(target.Whole());
}

TEST(Bounded, TruncatedPrintTellsWhatItWrote)
{
    Marked target;
    // By way of "%s" alone and by way of the formatter.
    for (const char *format : {"%s", "%.9s"}) {
        EXPECT_EQ(snprintf_truncated_s(target.bytes, 8, format, "1234567"), 7);
        EXPECT_STREQ(target.bytes, "1234567");
        EXPECT_EQ(snprintf_truncated_s(target.bytes, 8, format, "12345678"), 7);
        EXPECT_STREQ(target.bytes, "1234567");
        EXPECT_EQ(snprintf_truncated_s(target.bytes, 1, format, "12345678"), 0);
        EXPECT_STREQ(target.bytes, "");
        EXPECT_EQ(snprintf_truncated_s(target.bytes, 8, format, ""), 0);
        EXPECT_EQ(snprintf_truncated_s(target.bytes, 0, format, "1"), -1);
        EXPECT_EQ(snprintf_truncated_s(nullptr, 8, format, "1"), -1);
        EXPECT_EQ(snprintf_truncated_s(target.bytes, SIZE_MAX, format, "1"), -1);
    }
    EXPECT_EQ(snprintf_truncated_s(target.bytes, 8, "%u.%u", 65535u, 65535u), 7);
    EXPECT_STREQ(target.bytes, "65535.6");
    char *none = nullptr;
    EXPECT_EQ(snprintf_truncated_s(target.bytes, 8, none, 1), -1);
    EXPECT_TRUE(target.Whole());
}

} // namespace
