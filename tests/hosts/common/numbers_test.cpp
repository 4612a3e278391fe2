// Numbers, inside and outside of what the host accepts.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>

namespace {

TEST(Numbers, DecimalNumbersAreDigitsAlone)
{
    for (auto *read : {QOV_StrToUint32, SMP_StrToUint32}) {
        uint32_t value = 7;
        EXPECT_EQ(read("4294967295", &value), 0u);
        EXPECT_EQ(value, 4294967295u);
        EXPECT_EQ(read("0000000000001", &value), 0u);
        EXPECT_EQ(value, 1u);
        for (const char *text : {"", "4294967296", "4294967300", "42949672950", "99999999999999999999999", "-1", "+1",
                                 " 1", "1 ", "1a", "0x1", "1."}) {
            EXPECT_NE(read(text, &value), 0u) << text;
        }
        EXPECT_EQ(value, 1u);
        EXPECT_EQ(read("9", &value), 0u);
        EXPECT_EQ(value, 9u);
        EXPECT_NE(read(nullptr, &value), 0u);
        EXPECT_NE(read("1", nullptr), 0u);
    }
    uint64_t value = 7;
    EXPECT_EQ(QOV_StrToUint64("18446744073709551615", &value), 0u);
    EXPECT_EQ(value, UINT64_MAX);
    for (const char *text :
         {"", "18446744073709551616", "18446744073709551620", "184467440737095516150", "-1", "1 ", "a"}) {
        EXPECT_NE(QOV_StrToUint64(text, &value), 0u) << text;
    }
    EXPECT_EQ(value, UINT64_MAX);
}

TEST(Numbers, HexadecimalNumbersHaveOneToEightDigits)
{
    uint32_t value = 7;
    EXPECT_EQ(SMP_atoulx("FFFFffff", &value), 0u);
    EXPECT_EQ(value, 0xFFFFFFFFu);
    EXPECT_EQ(SMP_atoulx("0000000a", &value), 0u);
    EXPECT_EQ(value, 10u);
    for (const char *text : {"", "000000001", "0x1", "g", "1 ", " 1", "-1"}) {
        EXPECT_NE(SMP_atoulx(text, &value), 0u) << text;
    }
    EXPECT_EQ(value, 10u);
    EXPECT_NE(SMP_atoulx(nullptr, &value), 0u);
    for (const char *text : {"0", "aF09", "0123456789abcdefABCDEF"}) {
        EXPECT_NE(NCF_IsHex(text), 0u) << text;
    }
    for (const char *text : {"", "0x1", "g", "1 ", "1.2"}) {
        EXPECT_EQ(NCF_IsHex(text), 0u) << text;
    }
    EXPECT_EQ(NCF_IsHex(nullptr), 0u);
}

TEST(Numbers, StrtoulHas32Bits)
{
    struct Row {
        const char *text;
        int32_t base;
        uint32_t value;
        size_t read;
    };
    for (const Row &row : {Row{"4294967295", 10, 4294967295u, 10},
                           {"4294967296", 10, 4294967295u, 10},
                           {"99999999999999999999999", 10, 4294967295u, 23},
                           {" 12x", 10, 12, 3},
                           {"x", 10, 0, 0},
                           {"-1", 10, 4294967295u, 2},
                           {"-2", 10, 4294967294u, 2},
                           {"0x1F", 16, 31, 4},
                           {"0x1F", 0, 31, 4},
                           {"777", 8, 511, 3},
                           {"", 10, 0, 0}}) {
        char *end = nullptr;
        errno = 0;
        EXPECT_EQ(QOV_strtoul(row.text, &end, row.base), row.value) << row.text;
        EXPECT_EQ(end, row.text + row.read) << row.text;
        EXPECT_EQ(errno, 0);
        EXPECT_EQ(QOV_strtoul(row.text, nullptr, row.base), row.value) << row.text;
    }
    EXPECT_EQ(QOV_strtoul(nullptr, nullptr, 10), 0u);
}

TEST(Numbers, PrintedNumbers)
{
    char text[33];
    EXPECT_EQ(QOV_Uint32ToStr(4294967295u, text, 10), text);
    EXPECT_STREQ(text, "4294967295");
    EXPECT_STREQ(QOV_Uint32ToStr(0, text, 10), "0");
    EXPECT_STREQ(QOV_Uint32ToStr(0xBEEF, text, 16), "beef");
    EXPECT_STREQ(QOV_Uint32ToStr(35 * 36, text, 36), "z0");
    EXPECT_STREQ(QOV_Uint32ToStr(4294967295u, text, 2), "11111111111111111111111111111111");
    EXPECT_EQ(QOV_Uint32ToStr(1, text, 1), nullptr);
    EXPECT_EQ(QOV_Uint32ToStr(1, text, 37), nullptr);
    EXPECT_EQ(QOV_Uint32ToStr(1, nullptr, 10), nullptr);
}

} // namespace
