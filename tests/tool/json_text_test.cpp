// Our JSON strings, byte for byte against those of the JSON library.
#include "tool/json_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <random>
#include <string>
#include <vector>

namespace bgpdt {
namespace {

std::string Ours(const std::string &text)
{
    Sink sink;
    sink.Put("before");
    PutJsonText(sink, text);
    return std::string(sink.Text().substr(6));
}

std::string Library(const std::string &text)
{
    return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

TEST(JsonText, Literals)
{
    EXPECT_EQ(Ours(""), R"("")");
    EXPECT_EQ(Ours("65000:1"), R"("65000:1")");
    EXPECT_EQ(Ours("a\"b\\c/d"), R"("a\"b\\c/d")");
    EXPECT_EQ(Ours("\b\t\n\f\r\x01\x1f\x7f"), R"("\b\t\n\f\r\u0001\u001f\u007f")");
    EXPECT_EQ(Ours(std::string("\0", 1)), R"("\u0000")");
    EXPECT_EQ(Ours("\xc3\xa9\xe2\x82\xac"), R"("\u00e9\u20ac")");
    EXPECT_EQ(Ours("\xf0\x9f\x98\x80"), R"("\ud83d\ude00")");
    EXPECT_EQ(Ours("\xf4\x8f\xbf\xbf"), R"("\udbff\udfff")");
}

TEST(JsonText, BytesThatAreNoCharacterAreReplaced)
{
    EXPECT_EQ(Ours("\xff"), R"("\ufffd")");
    EXPECT_EQ(Ours("\xe2\x82"), R"("\ufffd")");                           // a beginning at the end: one
    EXPECT_EQ(Ours("\xe2\x82z"), R"("\ufffdz")");                         // or before something else
    EXPECT_EQ(Ours("\xc0\xaf"), R"("\ufffd\ufffd")");                     // no beginning: one for each byte
    EXPECT_EQ(Ours("\xed\xa0\x80"), R"("\ufffd\ufffd\ufffd")");           // a surrogate
    EXPECT_EQ(Ours("\xf4\x90\x80\x80"), R"("\ufffd\ufffd\ufffd\ufffd")"); // above U+10FFFF
    EXPECT_EQ(Ours("\xf0\x9f\xc3\xa9"), R"("\ufffd\u00e9")");
}

TEST(JsonText, EveryByteAtEveryPlaceOfEight)
{
    for (int byte = 0; byte < 256; ++byte) {
        for (size_t length = 1; length <= 20; ++length) {
            for (size_t at = 0; at < length; ++at) {
                std::string text(length, 'a');
                text[at] = static_cast<char>(byte);
                ASSERT_EQ(Ours(text), Library(text)) << byte << " at " << at << " of " << length;
            }
        }
    }
}

TEST(JsonText, EveryPairOfBytes)
{
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string text{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(Ours(text), Library(text)) << first << ' ' << second;
            ASSERT_EQ(Ours("1234567" + text + "12345678"), Library("1234567" + text + "12345678"))
                << first << ' ' << second;
        }
    }
}

// All sequences of bytes at which the rules of UTF-8 change.
TEST(JsonText, EverySequenceOfFourLimits)
{
    const std::string limits(
        "\x00\x7f\x80\x8f\x90\x9f\xa0\xbf\xc0\xc1\xc2\xdf\xe0\xe1\xec\xed\xee\xef\xf0\xf1\xf3\xf4\xf5\xff", 24);
    size_t count = 0;
    for (const char a : limits) {
        for (const char b : limits) {
            for (const char c : limits) {
                for (const char d : limits) {
                    const std::string text{a, b, c, d};
                    ASSERT_EQ(Ours(text), Library(text)) << Library(text);
                    ++count;
                }
            }
        }
    }
    EXPECT_EQ(count, 24u * 24 * 24 * 24);
}

TEST(JsonText, RandomTextsOfAllLengths)
{
    std::mt19937 random(20240229);
    const std::vector<std::string> pieces{"a",
                                          "65000:1",
                                          "\"",
                                          "\\",
                                          "\n",
                                          std::string(1, '\0'),
                                          "\x7f",
                                          "\xc3\xa9",
                                          "\xe2\x82\xac",
                                          "\xf0\x9f\x98\x80",
                                          "\xff",
                                          "\xf0\x9f",
                                          "\xed\xa0",
                                          "\x80"};
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (size_t count = random() % 40; count != 0; --count) {
            text += random() % 4 == 0 ? pieces[random() % pieces.size()] : pieces[random() % 2];
        }
        ASSERT_EQ(Ours(text), Library(text));
        std::string noise(random() % 60, '\0');
        for (char &byte : noise) {
            byte = static_cast<char>(random());
        }
        ASSERT_EQ(Ours(noise), Library(noise));
    }
}

TEST(JsonText, LongTexts)
{
    for (const char *piece : {"x", "\x01", "\xf0\x9f\x98\x80", "\xff", "\""}) {
        std::string text;
        while (text.size() < 100000) {
            text += piece;
        }
        ASSERT_EQ(Ours(text), Library(text)) << piece;
    }
}

TEST(JsonText, TextsFollowEachOther)
{
    Sink sink;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        const std::string text(static_cast<size_t>(i), i % 2 == 0 ? 'a' : '\x02');
        PutJsonText(sink, text);
        sink.PutNumber(static_cast<uint64_t>(i));
        expected += Library(text) + std::to_string(i);
    }
    EXPECT_EQ(sink.Text(), expected);
    sink.Empty();
    EXPECT_EQ(sink.Text(), "");
    sink.PutNumber(UINT64_MAX);
    EXPECT_EQ(sink.Text(), "18446744073709551615");
}

} // namespace
} // namespace bgpdt
