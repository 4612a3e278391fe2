// Formats that are known while compiling, held against the C library's formatter.
#include "host/format.h"

#include "support/harness.h"

#include <cinttypes>
#include <cstdio>
#include <string>
#include <vector>

namespace bgp::test {
namespace {

template <FormatString F, class... Numbers>
std::string Written(Numbers... numbers)
{
    char line[kRoom<F, Numbers...> + 1];
    line[kRoom<F, Numbers...>] = '#';
    const char *end = Write<F>(line, numbers...);
    const char behind = line[kRoom<F, Numbers...>];
    EXPECT_EQ(behind, '#') << "room is counted too small";
    return {line, static_cast<size_t>(end - line)};
}

template <class Number>
std::string Expected(const char *format, Number number)
{
    char text[32];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

// Numbers around every power of ten and of two, and a spread of others.
std::vector<uint64_t> Numbers64()
{
    std::vector<uint64_t> numbers{0, UINT64_MAX};
    for (uint64_t power = 1; power < UINT64_MAX / 10; power *= 10) {
        numbers.insert(numbers.end(), {power - 1, power, power + 1, 9 * power, power * 10 - 1});
    }
    for (uint32_t bit = 0; bit < 64; ++bit) {
        const uint64_t power = uint64_t{1} << bit;
        numbers.insert(numbers.end(), {power - 1, power, power + 1});
    }
    uint64_t state = 1;
    for (uint32_t i = 0; i < 200000; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        numbers.push_back(state >> (i % 64));
    }
    return numbers;
}

TEST(Formats, EveryOctetAndEveryShortNumber)
{
    for (uint32_t number = 0; number <= UINT8_MAX; ++number) {
        ASSERT_EQ(Written<"%u">(static_cast<uint8_t>(number)), std::to_string(number));
        ASSERT_EQ(Written<"%02x">(static_cast<uint8_t>(number)), Expected("%02x", number));
    }
    for (uint32_t number = 0; number <= UINT16_MAX; ++number) {
        ASSERT_EQ(Written<"%u">(static_cast<uint16_t>(number)), std::to_string(number));
    }
}

TEST(Formats, NumbersOfAllWidths)
{
    const std::vector<uint64_t> numbers = Numbers64();
    ASSERT_GT(numbers.size(), 200000u);
    for (const uint64_t number : numbers) {
        const auto low = static_cast<uint32_t>(number);
        ASSERT_EQ(Written<"%llu">(number), std::to_string(number));
        ASSERT_EQ(Written<"%u">(low), std::to_string(low));
        ASSERT_EQ(Written<"%x">(low), Expected("%" PRIx32, low));
    }
}

TEST(Formats, PlainCharactersStandBetweenNumbers)
{
    EXPECT_EQ((Written<"">()), "");
    EXPECT_EQ((Written<"none">()), "none");
    EXPECT_EQ((Written<"SoO <%u.%u : %u>">(uint16_t{1}, uint16_t{65535}, uint32_t{4294967295})),
              "SoO <1.65535 : 4294967295>");
    EXPECT_EQ((Written<"%hhu-%hu-%llu">(uint8_t{255}, uint16_t{0}, uint64_t{10000000000})), "255-0-10000000000");
    EXPECT_EQ((Written<"%02hx%.2x:%x">(uint8_t{10}, uint8_t{255}, uint16_t{0})), "0aff:0");
}

TEST(Formats, WhatDoesNotFitIsCut)
{
    for (uint32_t size = 1; size < 40; ++size) {
        char buffer[41];
        std::memset(buffer, '#', sizeof buffer);
        GrowingText text = GrowIn(buffer, size);
        Put<"%u:%u">(text, uint32_t{4294967295}, uint16_t{65535});
        Put<"/%u">(text, uint8_t{128});
        const std::string whole = "4294967295:65535/128";
        ASSERT_EQ(std::string(text.start, text.at), whole.substr(0, size - 1)) << size;
        ASSERT_EQ(buffer[size], '#') << size;
    }
}

TEST(Formats, TheHostsFormatterHasTheLastWord)
{
    char buffer[16];
    EXPECT_EQ((Print<"%u:%u">(buffer, sizeof buffer, uint16_t{100}, uint32_t{7})), 5);
    EXPECT_STREQ(buffer, "100:7");
    EXPECT_EQ((Print<"%u:%u">(buffer, 4, uint16_t{100}, uint32_t{7})), 3);
    EXPECT_STREQ(buffer, "100");
}

TEST(Formats, NumbersAreCounted)
{
    EXPECT_EQ(Conversions(FormatString("")), 0u);
    EXPECT_EQ(Conversions(FormatString("Unknow %u:%02x:%llu>")), 3u);
    EXPECT_EQ((kRoom<"%u:%u", uint16_t, uint32_t>), 16 + kWrittenAtOnce);
}

} // namespace
} // namespace bgp::test
