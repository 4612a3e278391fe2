// sscanf_s, conversion by conversion, just inside and just outside.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>

namespace {

template <class Number>
void ExpectNumber(const char *text, const char *format, Number value)
{
    Number number = 99;
    EXPECT_EQ(sscanf_s(text, format, &number), 1) << text << " by " << format;
    EXPECT_EQ(number, value) << text << " by " << format;
}

template <class Number>
void ExpectRefused(const char *text, const char *format)
{
    Number number = 99;
    EXPECT_EQ(sscanf_s(text, format, &number), 0) << text << " by " << format;
    EXPECT_EQ(number, Number{99}) << text << " by " << format;
}

TEST(Scan, Decimal)
{
    ExpectNumber<uint32_t>("0", "%u", 0);
    ExpectNumber<uint32_t>("4294967295", "%u", 4294967295u);
    ExpectNumber<uint32_t>("  \t\n7", "%u", 7);
    ExpectNumber<uint32_t>("00000000000000000000012", "%u", 12);
    ExpectNumber<uint32_t>("12abc", "%u", 12);
    for (const char *text : {"4294967296", "4294967300", "42949672950", "99999999999999999999", "-1", "+1", "x", "."}) {
        ExpectRefused<uint32_t>(text, "%u");
    }
    ExpectNumber<int>("2147483647", "%d", INT_MAX);
    for (const char *text : {"2147483648", "-1", "+1"}) {
        ExpectRefused<int>(text, "%d");
    }
    ExpectNumber<unsigned long long>("18446744073709551615", "%llu", ULLONG_MAX);
    for (const char *text : {"18446744073709551616", "18446744073709551620", "-1"}) {
        ExpectRefused<unsigned long long>(text, "%llu");
    }
    ExpectNumber<unsigned short>("65535", "%hu", 65535);
    for (const char *text : {"65536", "4294967296", "-1"}) {
        ExpectRefused<unsigned short>(text, "%hu");
    }
    ExpectNumber<unsigned char>("255", "%hhu", 255);
    ExpectRefused<unsigned char>("256", "%hhu");
    ExpectNumber<unsigned long>("17", "%lu", 17);
}

TEST(Scan, Hexadecimal)
{
    ExpectNumber<uint32_t>("fFfFfFfF", "%x", 0xFFFFFFFFu);
    ExpectNumber<uint32_t>("0", "%X", 0);
    ExpectNumber<uint32_t>("0x10", "%x", 0); // the "x" is no digit
    for (const char *text : {"100000000", "g", "-1", "x10"}) {
        ExpectRefused<uint32_t>(text, "%x");
    }
    ExpectNumber<unsigned long long>("ffffffffffffffff", "%llx", ULLONG_MAX);
    ExpectRefused<unsigned long long>("10000000000000000", "%llx");
    ExpectNumber<uint32_t>("abc", "%2x", 0xab);
    ExpectNumber<uint32_t>("a", "%2x", 0xa);
    ExpectNumber<unsigned short>("abc", "%02hx", 0xab);
    unsigned short bytes[6] = {};
    EXPECT_EQ(sscanf_s("00:11:22:aa:BB:ff", "%02hx:%02hx:%02hx:%02hx:%02hx:%02hx", &bytes[0], &bytes[1], &bytes[2],
                       &bytes[3], &bytes[4], &bytes[5]),
              6);
    EXPECT_EQ(bytes[4], 0xBB);
    uint32_t pairs[2] = {};
    EXPECT_EQ(sscanf_s("1234", "%2x%2x", &pairs[0], &pairs[1]), 2);
    EXPECT_EQ(pairs[1], 0x34u);
}

TEST(Scan, SeveralItemsEndAtTheFirstThatFails)
{
    uint32_t first = 0, second = 9;
    EXPECT_EQ(sscanf_s("1:2", "%u:%u", &first, &second), 2);
    EXPECT_EQ(second, 2u);
    EXPECT_EQ(sscanf_s("3:4294967296", "%u:%u", &first, &second), 1);
    EXPECT_EQ(first, 3u);
    EXPECT_EQ(second, 2u);
    EXPECT_EQ(sscanf_s("4;5", "%u:%u", &first, &second), 1);
    EXPECT_EQ(sscanf_s("5:", "%u:%u", &first, &second), 1);
    EXPECT_EQ(sscanf_s("6", "%u:%u", &first, &second), 1);
    EXPECT_EQ(sscanf_s("7 \t: 8", "%u : %u", &first, &second), 2);
    EXPECT_EQ(second, 8u);
    EXPECT_EQ(sscanf_s("9 :8", "%u:%u", &first, &second), 1);
    EXPECT_EQ(sscanf_s("1%2", "%u%%%u", &first, &second), 2);
    EXPECT_EQ(second, 2u);
    EXPECT_EQ(sscanf_s("5 6", "%*u%u", &first), 1);
    EXPECT_EQ(first, 6u);
}

TEST(Scan, AnEndBeforeTheFirstItem)
{
    uint32_t number = 9;
    char text[4];
    EXPECT_EQ(sscanf_s("", "%u", &number), -1);
    EXPECT_EQ(sscanf_s("  ", "%u", &number), -1);
    EXPECT_EQ(sscanf_s("", "%s", text, sizeof text), -1);
    EXPECT_EQ(sscanf_s("", "%c", text, sizeof text), -1);
    EXPECT_EQ(sscanf_s("a", "ab%u", &number), -1);
    EXPECT_EQ(sscanf_s("b", "a%u", &number), 0);
    EXPECT_EQ(sscanf_s("1", ""), 0);
}

TEST(Scan, CharactersAndTexts)
{
    char text[5] = "####";
    uint32_t number = 0;
    EXPECT_EQ(sscanf_s(" a", "%c", text, size_t{1}), 1);
    EXPECT_EQ(std::memcmp(text, " ###", 4), 0);
    EXPECT_EQ(sscanf_s("5d", "%u%c", &number, text, size_t{1}), 2);
    EXPECT_EQ(text[0], 'd');
    EXPECT_EQ(sscanf_s("5", "%u%c", &number, text, size_t{1}), 1);
    EXPECT_EQ(sscanf_s("abc", "%3c", text, size_t{3}), 1);
    EXPECT_EQ(std::memcmp(text, "abc#", 4), 0);
    EXPECT_EQ(sscanf_s("xyz", "%3c", text, size_t{2}), 0);
    EXPECT_EQ(sscanf_s("xy", "%3c", text, size_t{3}), 0);
    EXPECT_EQ(std::memcmp(text, "abc#", 4), 0);

    EXPECT_EQ(sscanf_s("  word rest", "%s", text, sizeof text), 1);
    EXPECT_STREQ(text, "word");
    EXPECT_EQ(sscanf_s("words", "%s", text, sizeof text), 0);
    EXPECT_EQ(sscanf_s("words", "%4s", text, sizeof text), 1);
    EXPECT_STREQ(text, "word");
    EXPECT_EQ(sscanf_s("1.2:7", "%[0-9.]:%u", text, sizeof text, &number), 2);
    EXPECT_STREQ(text, "1.2");
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(sscanf_s("ab:7", "%[^:]:%u", text, sizeof text, &number), 2);
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(sscanf_s("]a-", "%[]a-]", text, sizeof text), 1);
    EXPECT_STREQ(text, "]a-");
    EXPECT_EQ(sscanf_s(":7", "%[^:]", text, sizeof text), 0);
    EXPECT_EQ(sscanf_s("abcde", "%[a-e]", text, sizeof text), 0);
}

TEST(Scan, BadCalls)
{
    uint32_t number = 9;
    char text[4];
    EXPECT_EQ(sscanf_s(nullptr, "%u", &number), -1);
    EXPECT_EQ(sscanf_s("1", nullptr, &number), -1);
    EXPECT_EQ(sscanf_s("1", "%u", static_cast<uint32_t *>(nullptr)), -1);
    EXPECT_EQ(sscanf_s("1", "%s", text, size_t{0}), -1);
    EXPECT_EQ(sscanf_s("1", "%q", &number), -1);
    EXPECT_EQ(sscanf_s("1", "%", &number), -1);
    EXPECT_EQ(sscanf_s("1", "%[1", text, sizeof text), -1);
    EXPECT_EQ(number, 9u);
}

} // namespace
