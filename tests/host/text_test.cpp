// Texts on their way in and out: what is trimmed, where blanks are, and what formats make of their arguments.
#include "host/text.h"

#include "support/harness.h"

#include <cinttypes>
#include <cstdio>

namespace bgp::test {
namespace {

class Texts : public PlugIn {};

bgp::Text PieceOf(std::string_view text)
{
    return {text.data(), static_cast<uint32_t>(text.size())};
}

// --------------------------------------------------------------------------------------------------------- trimming

// Where a piece stands in a text, and how long it is: "2+3".
std::string Place(bgp::Text piece, const char *text)
{
    return std::to_string(piece.at - text) + "+" + std::to_string(piece.length);
}

TEST_F(Texts, TrimmingDropsBlanksAtTheEnds)
{
    const struct {
        const char *text;
        const char *place;
    } rows[] = {
        {"", "0+0"},        {"a", "0+1"},         {"a b", "0+3"},       {" a", "1+1"},     {"a ", "0+1"},
        {"\ta b\t", "1+3"}, {" \t \t", "4+0"},    {" \t a \t ", "3+1"}, {"a\r", "0+2"},    {"\ra", "0+2"},
        {" \ra", "1+2"},    {" \r a \r ", "1+5"}, {"\xa0 x", "0+3"},    {" \x01 ", "1+1"}, {"x\x7f ", "0+2"},
    };
    for (const auto &row : rows) {
        const std::string kept = row.text;
        EXPECT_EQ(Place(Trim(row.text), row.text), row.place) << '"' << row.text << '"';
        EXPECT_EQ(row.text, kept);
    }
}

TEST_F(Texts, AnyNumberOfBlanksIsTrimmed)
{
    for (const size_t count : {1u, 62u, 63u, 64u, 126u, 127u, 1000u}) {
        const std::string blanks = std::string(count, ' ') + "\t";
        const std::string text = blanks + "x y" + blanks;
        EXPECT_EQ(Place(Trim(text.c_str()), text.c_str()), std::to_string(count + 1) + "+3");
        EXPECT_EQ(Place(Trim(blanks.c_str()), blanks.c_str()), std::to_string(count + 1) + "+0");
        // What is no blank of this host's ends the trimming, however far in it stands.
        const std::string odd = blanks + "\r" + blanks + "x" + blanks + "\r" + blanks;
        EXPECT_EQ(Place(Trim(odd.c_str()), odd.c_str()),
                  std::to_string(count + 1) + "+" + std::to_string(2 * count + 5));
    }
}

TEST_F(Texts, APieceIsTrimmedWithinItself)
{
    const char *text = "\" 12 \" 34";
    EXPECT_EQ(Place(Trim(bgp::Text{text + 1, 4}), text), "2+2");
    EXPECT_EQ(Place(Trim(bgp::Text{text + 1, 1}), text), "2+0");
    EXPECT_EQ(Place(Trim(bgp::Text{text + 2, 2}), text), "2+2");
    EXPECT_EQ(Place(Trim(bgp::Text{text + 2, 0}), text), "2+0");
}

uint32_t asked = 0;

// Trims carriage returns alone, in place, as a service may.
char *TrimReturns(char *text)
{
    ++asked;
    while (*text == '\r') {
        ++text;
    }
    size_t length = std::strlen(text);
    while (length > 0 && text[length - 1] == '\r') {
        text[--length] = '\0';
    }
    return text;
}

TEST_F(Texts, AServiceOfItsOwnSaysWhatIsTrimmed)
{
    const struct {
        const char *text;
        const char *place;
        bool asks;
    } rows[] = {
        {"a", "0+1", false},      {"", "0+0", false},     {"a\rb", "0+3", false},  {"a b", "0+3", false},
        {"\ra\r\r", "1+1", true}, {" a ", "0+3", true},   {"\r \ra", "1+3", true}, {"\r\r", "2+0", true},
        {"\r\n\r", "1+1", true},  {"a\xff", "0+2", true},
    };
    for (const auto &row : rows) {
        asked = 0;
        EXPECT_EQ(Place(TrimBy(TrimReturns, PieceOf(row.text)), row.text), row.place) << row.text;
        EXPECT_EQ(asked != 0, row.asks) << row.text;
    }
}

TEST_F(Texts, AServiceThatAnswersNullGivesANullPiece)
{
    const TrimService null = [](char *) -> char * { return nullptr; };
    for (const char *text : {" a", "a ", "\t", "\xff"}) {
        const bgp::Text piece = TrimBy(null, PieceOf(text));
        EXPECT_EQ(piece.at, nullptr) << text;
        EXPECT_EQ(piece.length, 0u) << text;
    }
    EXPECT_EQ(TrimBy(null, PieceOf("a b")).length, 3u); // it is not asked
}

// ------------------------------------------------------------------------------------------------------------ blanks

TEST_F(Texts, BlanksAreThoseOfTheHost)
{
    for (int character = 0; character < 256; ++character) {
        const char one = static_cast<char>(character);
        const bool isBlank = one == ' ' || one == '\t';
        EXPECT_EQ(HasBlank({&one, 1}), isBlank) << character;
        Blanks blanks;
        EXPECT_EQ(IsBlank(blanks, one), isBlank) << character;
        EXPECT_EQ(IsBlank(blanks, one), isBlank) << character; // the answer that was kept
        EXPECT_EQ(IsGraphic(one), character >= 0x21 && character <= 0x7E) << character;
    }
    EXPECT_FALSE(HasBlank({nullptr, 0}));
}

TEST_F(Texts, ABlankIsFoundWhereverItStands)
{
    for (size_t length = 1; length <= 140; ++length) {
        std::string text(length, 'x');
        EXPECT_FALSE(HasBlank(PieceOf(text))) << length;
        for (size_t at = 0; at < length; ++at) {
            for (const char character : {' ', '\t', '\r', '\x80', '\xff', '\x7f'}) {
                text[at] = character;
                EXPECT_EQ(HasBlank(PieceOf(text)), character == ' ' || character == '\t') << length << ' ' << at;
            }
            text[at] = 'x';
        }
    }
}

TEST_F(Texts, KindsOfBlanksMayAlternate)
{
    Blanks blanks;
    const std::string text = "a \t\r \ra\t\xa0 ";
    std::string seen;
    for (const char character : text) {
        seen += IsBlank(blanks, character) ? '_' : '.';
    }
    EXPECT_EQ(seen, ".__._.._._");
}

// The reason that something notes, in a line.
template <class Call>
std::string Noted(const char *text, Call call)
{
    BgpReason reason{};
    Why why{&reason, text, 0};
    EXPECT_FALSE(call(&why));
    EXPECT_FALSE(call(nullptr));
    return std::string(reason.Rule->Name) + " " + std::to_string(reason.Offset) + "+" + std::to_string(reason.Length) +
           " " + std::to_string(reason.Limit);
}

TEST_F(Texts, TheFirstBlankIsThePlaceOfTheRefusal)
{
    EXPECT_TRUE(HasNoBlank(PieceOf("a\rb"), nullptr));
    const char *text = "ab\r c\td";
    EXPECT_EQ(Noted(text, [text](Why *why) { return HasNoBlank(PieceOf(text), why); }), "blank 3+1 0");
    EXPECT_EQ(Noted(text, [text](Why *why) { return HasNoBlank({text + 4, 3}, why); }), "blank 5+1 0");
    static constexpr BgpRule kRule{"rule", "", 0};
    EXPECT_EQ(Noted(text, [text](Why *why) { return RefuseCharacter(why, {text + 3, 1}, kRule); }), "blank 3+1 0");
    EXPECT_EQ(Noted(text, [text](Why *why) { return RefuseCharacter(why, {text + 2, 1}, kRule); }), "rule 2+1 0");
    EXPECT_EQ(Noted(text, [text](Why *why) { return RefuseCharacter(why, {text + 7, 0}, kRule); }), "rule 7+0 0");
}

// ----------------------------------------------------------------------------------------------------------- lengths

TEST_F(Texts, LengthsHaveBothLimits)
{
    const char *text = "abcdef";
    const auto has = [text](uint32_t length) {
        return [text, length](Why *why) { return HasLength({text, length}, 2, 4, why); };
    };
    for (const uint32_t length : {2u, 3u, 4u}) {
        EXPECT_TRUE(has(length)(nullptr));
        EXPECT_TRUE(IsLong({text, length}, 2, 4));
    }
    EXPECT_EQ(Noted(text, has(0)), "empty 0+0 0");
    EXPECT_EQ(Noted(text, has(1)), "too-short 0+1 2");
    EXPECT_EQ(Noted(text, has(5)), "too-long 0+5 4");
}

TEST_F(Texts, ATerminatedCopyNeedsRoomForItsTerminator)
{
    char copy[5] = "####";
    EXPECT_FALSE(Terminate(PieceOf("abcd"), copy, 4));
    EXPECT_STREQ(copy, "####");
    EXPECT_TRUE(Terminate(PieceOf("abc"), copy, 4));
    EXPECT_STREQ(copy, "abc");
    EXPECT_TRUE(Terminate(PieceOf(""), copy, 1));
    EXPECT_STREQ(copy, "");
    EXPECT_FALSE(Terminate(PieceOf(""), copy, 0));
}

// ----------------------------------------------------------------------------------------------------------- formats

std::string Formatted(const char *format, std::initializer_list<Argument> arguments, uint32_t room = 100)
{
    std::string bytes(room + 1, '#');
    const uint32_t length = bgp::Format(bytes.data(), room, format, arguments.begin());
    EXPECT_LT(length, room);
    EXPECT_EQ(bytes[length], '\0');
    EXPECT_EQ(bytes[room], '#');
    return bytes.substr(0, length);
}

TEST_F(Texts, EveryConversionOfTheFormats)
{
    EXPECT_EQ(Formatted("", {}), "");
    EXPECT_EQ(Formatted("plain", {}), "plain");
    EXPECT_EQ(Formatted("%u.%hu.%hhu.%d.%llu", {1, 22, 333, 4444, 18446744073709551615u}),
              "1.22.333.4444.18446744073709551615");
    EXPECT_EQ(Formatted("%02x %.2x %02hx %x", {7, 0xab, 0x1ff, uint64_t{0}}), "07 ab 1ff 0");
    EXPECT_EQ(Formatted("%x", {18446744073709551615u}), "ffffffffffffffff");
    EXPECT_EQ(Formatted("<%s%c%s>", {"a", 'b', ""}), "<ab>");
}

// Against the C library, about every power of ten.
TEST_F(Texts, NumbersOfEveryLength)
{
    uint64_t power = 1;
    for (int digits = 0; digits < 20; ++digits, power *= 10) {
        for (const uint64_t number : {power - 1, power, power + 1, power * 9, power / 2}) {
            char expected[24];
            std::snprintf(expected, sizeof expected, "%" PRIu64, number);
            EXPECT_EQ(Formatted("%llu", {number}), expected);
            EXPECT_EQ(Formatted("-%llu-", {number}, 24), "-" + std::string(expected) + "-"); // little room behind
        }
    }
}

TEST_F(Texts, WhatDoesNotFitIsCut)
{
    const std::string whole = "12345678901234567890 abc 7f";
    for (uint32_t room = 1; room < whole.size() + 3; ++room) {
        EXPECT_EQ(Formatted("%llu %s %02x", {12345678901234567890u, "abc", 0x7f}, room), whole.substr(0, room - 1));
    }
}

TEST_F(Texts, PrintingGoesThroughTheHost)
{
    char buffer[9] = "########";
    EXPECT_EQ(bgp::Print(buffer, 6, "%u:%u", {12, 345}), 5);
    EXPECT_STREQ(buffer, "12:34");
    EXPECT_EQ(buffer[6], '#');
    EXPECT_EQ(PrintText(buffer, sizeof buffer, "abc"), 3);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(host::TakeCounters().prints, 2u);
    host::SetFaults({.failPrint = 1});
    EXPECT_LT(bgp::Print(buffer, sizeof buffer, "%u", {7}), 0);
    uint32_t printed = 9;
    EXPECT_EQ(Printed(-1, &printed), DT_ERR_FAIL);
    EXPECT_EQ(printed, 9u);
    EXPECT_EQ(Printed(0, &printed), DT_OK);
    EXPECT_EQ(printed, 0u);
}

} // namespace
} // namespace bgp::test
