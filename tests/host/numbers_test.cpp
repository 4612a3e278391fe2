// Texts of numbers with separators between them, and which notation they are.
#include "host/numbers.h"

#include "support/harness.h"

namespace bgp::test {
namespace {

class NumbersOfTexts : public PlugIn {};

bgp::Text PieceOf(std::string_view text)
{
    return {text.data(), static_cast<uint32_t>(text.size())};
}

std::string Describe(const BgpReason &reason)
{
    return std::string(reason.Rule->Name) + " " + std::to_string(reason.Offset) + "+" + std::to_string(reason.Length) +
           " " + std::to_string(reason.Limit) + (reason.What == nullptr ? "" : std::string(" ") + reason.What) +
           (reason.Where == nullptr ? "" : std::string(", ") + reason.Where);
}

// "1 2 3" with the shape's characters behind, or why the text is refused.
template <uint32_t Base>
std::string Read(std::string_view text, const char *separators)
{
    Numbers numbers;
    BgpReason reason{};
    Why why{&reason, text.data(), 0};
    if (!ReadNumbers<Base>(PieceOf(text), separators, numbers, &why)) {
        EXPECT_FALSE(ReadNumbers<Base>(PieceOf(text), separators, numbers, nullptr));
        return Describe(reason);
    }
    std::string read;
    uint32_t shape = numbers.shape;
    std::string shown;
    for (; shape != 0; shape >>= 8) {
        shown.insert(shown.begin(), static_cast<char>(shape));
    }
    for (size_t i = 0; i <= shown.size(); ++i) {
        read += std::to_string(numbers.at[i]) + " ";
    }
    return read + shown;
}

TEST_F(NumbersOfTexts, OneNumber)
{
    const struct {
        const char *text;
        uint64_t number;
        int behind; // -1: there is no digit
    } rows[] = {
        {"", 0, -1},
        {"x", 0, -1},
        {" 1", 0, -1},
        {"0", 0, 1},
        {"007x", 7, 3},
        {"18446744073709551609", 18446744073709551609u, 20},
        {"18446744073709551610", UINT64_MAX, 20}, // from here on it saturates
        {"18446744073709551615", UINT64_MAX, 20},
        {"18446744073709551616", UINT64_MAX, 20},
        {"99999999999999999999999999:", UINT64_MAX, 26},
    };
    for (const auto &row : rows) {
        uint64_t number = 0;
        const char *behind = ReadNumber(row.text, row.text + std::strlen(row.text), &number);
        EXPECT_EQ(behind == nullptr ? -1 : behind - row.text, row.behind) << row.text;
        EXPECT_EQ(number, row.number) << row.text;
    }
    uint64_t number = 0;
    EXPECT_NE(ReadNumber<16>("0fffG", "0fffG" + 5, &number), nullptr);
    EXPECT_EQ(number, 0xfffu);
}

TEST_F(NumbersOfTexts, DigitsOfBothBases)
{
    for (int character = 0; character < 256; ++character) {
        const char one = static_cast<char>(character);
        const bool decimal = one >= '0' && one <= '9';
        const bool letter = one >= 'a' && one <= 'f';
        EXPECT_EQ(DigitValue<10>(one), decimal ? static_cast<uint32_t>(one - '0') : 0xFFu) << character;
        EXPECT_EQ(DigitValue<16>(one), decimal  ? static_cast<uint32_t>(one - '0')
                                       : letter ? static_cast<uint32_t>(one - 'a' + 10)
                                                : 0xFFu)
            << character;
    }
}

TEST_F(NumbersOfTexts, WholeTexts)
{
    const struct {
        const char *text;
        const char *read;
    } rows[] = {
        {"7", "7 "},
        {"1:2", "1 2 :"},
        {"1.2.3.4:5", "1 2 3 4 5 ...:"},
        {"0001.99999999999999999999", "1 18446744073709551615 ."},
        {"", "digit 0+0 0"},
        {":1", "digit 0+1 0"},
        {"1:", "digit 2+0 0"},
        {"1:.2", "digit 2+1 0"},
        {"1 :2", "blank 1+1 0"},
        {"1:\t2", "blank 2+1 0"},
        {"1;2", "character 1+1 0"},
        {"12x", "character 2+1 0"},
        {"1:2:3:4:5:6", "too-many-numbers 9+1 5"},
        {"1:2:3:4:5:", "too-many-numbers 9+1 5"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Read<10>(row.text, ".:"), row.read) << row.text;
    }
    EXPECT_EQ(Read<10>(std::string_view("1\0002", 3), ".:"), "character 1+1 0"); // the list's own end is no separator
    EXPECT_EQ(Read<10>("1.2", ""), "character 1+1 0");
    EXPECT_EQ(Read<16>("ff:10", ":"), "255 16 :");
    EXPECT_EQ(Read<16>("fF:10", ":"), "upper-case 1+1 0");
    EXPECT_EQ(Read<16>("F", ":"), "upper-case 0+1 0");
    EXPECT_EQ(Read<16>("fg", ":"), "character 1+1 0");
}

TEST_F(NumbersOfTexts, WhereANumberStands)
{
    const char *text = "1.22.333.4444:f";
    constexpr const char *kNumbers[] = {"1", "22", "333", "4444", "f"};
    for (uint32_t i = 0; i < 5; ++i) {
        const bgp::Text piece = NumberAt(PieceOf(text), i);
        EXPECT_EQ(std::string(piece.at, piece.length), kNumbers[i]);
    }
}

TEST_F(NumbersOfTexts, ShapesAreTheirSeparators)
{
    EXPECT_EQ(Shape(""), 0u);
    EXPECT_EQ(Shape(":"), 0x3Au);
    EXPECT_EQ(Shape("...:"), 0x2E2E2E3Au);
    EXPECT_TRUE(HasNumber(Shape(""), 0));
    EXPECT_FALSE(HasNumber(Shape(""), 1));
    EXPECT_TRUE(HasNumber(Shape("...:"), 4));
    EXPECT_FALSE(HasNumber(Shape("..:"), 4));
}

// --------------------------------------------------------------------------------------------------------- notations

constexpr BgpNotation kNotations[] = {
    {.Form = "n", .Separators = "", .When = nullptr, .Names = {"the number"}, .Smallest = {5}, .Largest = {9}},
    {.Form = "a:b",
     .Separators = ":",
     .When = "with a small a",
     .Names = {"a", "b"},
     .Smallest = {},
     .Largest = {10, 1000}},
    {.Form = "a:b",
     .Separators = ":",
     .When = "with a large a",
     .Names = {"a", "b"},
     .Smallest = {},
     .Largest = {99, 7}},
};
constexpr NumbersRule kRule = NumbersText(1, 12, ".:", kNotations);

TEST_F(NumbersOfTexts, TheFirstNotationThatFits)
{
    const struct {
        const char *text;
        uint32_t notation; // kNoFit: refused
        const char *reason;
    } rows[] = {
        {"5", 0, ""},
        {"9", 0, ""},
        {"0:1000", 1, ""},
        {"10:7", 1, ""}, // fits both
        {"11:7", 2, ""},
        {"99:0", 2, ""},
        {"4", kNoFit, "too-small 0+1 5 the number"},
        {"10", kNoFit, "too-large 0+2 9 the number"},
        {"100:1", kNoFit, "too-large 0+3 99 a, with a large a"},
        {"10:1001", kNoFit, "too-large 3+4 7 b, with a large a"},
        {"11:8", kNoFit, "too-large 3+1 7 b, with a large a"},
        {"1.2", kNoFit, "notation 0+3 0"},
        {"1:2:3", kNoFit, "notation 0+5 0"},
        {"", kNoFit, "empty 0+0 0"},
        {"0000000000005", kNoFit, "too-long 0+13 12"},
        {"5x", kNoFit, "character 1+1 0"},
    };
    for (const auto &row : rows) {
        Numbers numbers;
        BgpReason reason{};
        Why why{&reason, row.text, 0};
        EXPECT_EQ(ReadNotation(kRule, PieceOf(row.text), numbers, nullptr), row.notation) << row.text;
        EXPECT_EQ(ReadNotation(kRule, PieceOf(row.text), numbers, &why), row.notation) << row.text;
        EXPECT_EQ(reason.Rule == nullptr ? "" : Describe(reason), row.reason) << row.text;
    }
}

TEST_F(NumbersOfTexts, OtherSeparatorsAreToldTheForms)
{
    Numbers numbers;
    BgpReason reason{};
    Why why{&reason, "1.2", 0};
    EXPECT_EQ(ReadNotation(kRule, PieceOf(why.from), numbers, &why), kNoFit);
    EXPECT_STREQ(Bgp_ExpectedWord(&reason, 0), "n");
    EXPECT_STREQ(Bgp_ExpectedWord(&reason, 1), "a:b");
    EXPECT_EQ(Bgp_ExpectedWord(&reason, 2), nullptr);
}

} // namespace
} // namespace bgp::test
