// The orders of words, blocks, strings and address records.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(Compare, WordsAndBlocksAreOrdered)
{
    const uint32_t low[] = {1, 9}, high[] = {0x80000000u, 0}, next[] = {256, 0};
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 4, low, high), -1);
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 4, next, low), 1);
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 8, low, low), 0);
    EXPECT_EQ(SYSDT_Uint32Compare(nullptr, 4, nullptr, low), -1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 3, "abc", "abz"), -1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 2, "abc", "abz"), 0);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 3, "a\0d", "a\0c"), 1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 1, "\xff", "\x01"), 1);
    EXPECT_EQ(SYSDT_BlockCompare(nullptr, 1, "a", nullptr), 1);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 4, "ab\0x", "ab\0y"), 0);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 4, "ab\0", "abc"), -1);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 3, "b\0", "abc"), 1);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 1, "\xff", "\x01"), 1);
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 4, nullptr, nullptr), 0);
    char left[33] = "0123456789012345678901234567890", right[33];
    std::memcpy(right, left, sizeof left);
    left[32] = 'x'; // behind the 32 bytes that length 0 stands for
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 0, left, right), 0);
    right[30] = '1';
    EXPECT_EQ(SYSDT_StringCompare(nullptr, 0, left, right), -1);
}

// A record without alignment: IPv4 word, 16 IPv6 bytes, flag.
struct Record {
    uint8_t skew = 0;
    uint8_t bytes[21] = {};
    Record(uint32_t ipv4, uint8_t firstIpv6, uint8_t lastIpv6, uint8_t flag)
    {
        std::memcpy(bytes, &ipv4, sizeof ipv4);
        bytes[4] = firstIpv6;
        bytes[19] = lastIpv6;
        bytes[20] = flag;
    }
};

TEST(Compare, RecordsOrderByFlagThenAddress)
{
    const auto compare = [](const Record &left, const Record &right) {
        const int32_t there = SYSDT_Ipv4Ipv6Compare(nullptr, 21, left.bytes, right.bytes);
        EXPECT_EQ(SYSDT_Ipv4Ipv6Compare(nullptr, 21, right.bytes, left.bytes), -there);
        return there;
    };
    EXPECT_EQ(compare({9, 9, 9, 0}, {1, 1, 1, 1}), -1);
    EXPECT_EQ(compare({0x00000100, 0, 0, 0}, {0x00000001, 0, 0, 0}), 1); // as numbers, not as bytes in memory
    EXPECT_EQ(compare({0xFFFFFFFF, 0, 0, 0}, {1, 0, 0, 0}), 1);
    EXPECT_EQ(compare({5, 1, 1, 0}, {5, 2, 2, 0}), 0); // the other family's bytes do not count
    EXPECT_EQ(compare({1, 2, 0, 1}, {2, 1, 9, 1}), 1);
    EXPECT_EQ(compare({1, 2, 0x7F, 1}, {0, 2, 0x80, 1}), -1);
    EXPECT_EQ(compare({1, 2, 3, 1}, {0, 2, 3, 1}), 0);
    EXPECT_EQ(SYSDT_Ipv4Ipv6Compare(nullptr, 21, nullptr, nullptr), 0);
}

} // namespace
