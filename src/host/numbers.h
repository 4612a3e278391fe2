// Texts that are numbers with separators between them: "1.2.3.4:5" has the numbers 1 2 3 4 5 and the shape "...:".
// Which notations a type takes, and how small or large each number may be, are rows of data (BgpNotation); parsers,
// reasons, tools and reference pages read the same rows.
#ifndef BGP_HOST_NUMBERS_H
#define BGP_HOST_NUMBERS_H

#include "host/text.h"

#include <cstdint>
#include <utility>

namespace bgp {

inline constexpr uint32_t kMostNumbers = BGP_MOST_NUMBERS;

struct Numbers {
    uint64_t at[kMostNumbers];
    uint32_t shape;
};

// The separators of a shape packed into a word, so that shapes compare in one instruction. At most four separators.
constexpr uint32_t Shape(const char *separators)
{
    uint32_t shape = 0;
    while (*separators != '\0') {
        shape = shape << 8 | static_cast<uint8_t>(*separators++);
    }
    return shape;
}

// The value of a digit of the base, 0xFF for any other character. Base 16 takes lower case only.
template <uint32_t Base>
constexpr uint32_t DigitValue(char character)
{
    const uint32_t decimal = static_cast<uint8_t>(character) - static_cast<uint32_t>('0');
    if (decimal < 10) {
        return decimal;
    }
    if constexpr (Base == 16) {
        const uint32_t letter = decimal - ('a' - '0');
        if (letter < 6) {
            return letter + 10;
        }
    }
    return 0xFF;
}

// As many digits as fit 64 bits whatever they are.
template <uint32_t Base>
inline constexpr uint32_t kSafeDigits = Base == 16 ? 16 : 19;

// Reads one number of one or more digits, of any length; from UINT64_MAX / Base * Base on it saturates. Returns the
// first character behind it, null when there is no digit.
template <uint32_t Base = 10>
inline const char *ReadNumber(const char *at, const char *end, uint64_t *number)
{
    constexpr uint64_t kLast = UINT64_MAX / Base; // one more digit may overflow beyond this
    const char *const start = at;
    const char *const safe = end - at > static_cast<ptrdiff_t>(kSafeDigits<Base>) ? at + kSafeDigits<Base> : end;
    uint64_t value = 0;
    uint32_t digit = 0;
    for (; at < safe && (digit = DigitValue<Base>(*at)) != 0xFF; ++at) {
        value = value * Base + digit;
    }
    if (at == safe) [[unlikely]] {
        for (; at < end && (digit = DigitValue<Base>(*at)) != 0xFF; ++at) {
            value = value < kLast ? value * Base + digit : UINT64_MAX;
        }
    }
    *number = value;
    return at == start ? nullptr : at;
}

// Scans one byte of one or two hexadecimal digits of either case, white space before it skipped. Returns the first
// character behind it, null when there is no digit.
inline const char *ScanHexByte(const char *at, const char *end, uint8_t *byte)
{
    while (at < end && IsWhiteSpace(*at)) {
        ++at;
    }
    uint32_t number = 0;
    uint32_t digits = 0;
    for (; digits < 2 && at < end && IsHexDigit(*at); ++digits, ++at) {
        number = number << 4 | DigitValue<16>(static_cast<char>(*at | 0x20)); // lower case
    }
    *byte = static_cast<uint8_t>(number);
    return digits == 0 ? nullptr : at;
}

// The rule that a character breaks where a digit may stand; `otherwise`, unless it is a digit in upper case.
template <uint32_t Base>
constexpr const BgpRule &NoDigit(char character, const BgpRule &otherwise)
{
    return Base == 16 && character >= 'A' && character <= 'F' ? kUpperCase : otherwise;
}

// Reads a whole text of numbers. `separators` lists the characters that may separate them. False when the text holds
// any other character, when a number is missing, or when there are more than kMostNumbers.
template <uint32_t Base = 10>
inline bool ReadNumbers(Text text, const char *separators, Numbers &numbers, Why *why)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    uint32_t shape = 0;
    for (uint32_t count = 0; count < kMostNumbers; ++count) {
        const char *const start = at;
        at = ReadNumber<Base>(at, end, &numbers.at[count]);
        if (at == nullptr) {
            return RefuseCharacter(why, {start, start < end}, start < end ? NoDigit<Base>(*start, kNoDigit) : kNoDigit);
        }
        if (at == end) {
            numbers.shape = shape;
            return true;
        }
        const char separator = *at;
        const char *allowed = separators;
        while (*allowed != separator) {
            if (*allowed++ == '\0') {
                return RefuseCharacter(why, {at, 1}, NoDigit<Base>(separator, kWrongCharacter));
            }
        }
        if (separator == '\0') {
            return RefuseCharacter(why, {at, 1}, kWrongCharacter);
        }
        shape = shape << 8 | static_cast<uint8_t>(separator);
        ++at;
    }
    return Refuse(why, {at - 1, 1}, kTooManyNumbers, kMostNumbers);
}

// The piece of the text that is its index-th number.
Text NumberAt(Text text, uint32_t index);

// ---------------------------------------------------------------------------------------------------------- notations

// Does a text of the shape have a number of that index? One more than it has separators.
constexpr bool HasNumber(uint32_t shape, uint32_t index)
{
    return index == 0 || uint64_t{shape} >> (8 * (index - 1)) != 0;
}

inline constexpr uint32_t kMostNotations = 4; // of a type

// The texts of a type: how long they are, and their notations in the order in which they are tried. Those that have the
// same separators stand in the order of their numbers.
struct NumbersRule {
    uint16_t shortest;
    uint16_t longest;
    const char *separators; // all that occur
    const BgpNotation *notations;
    uint32_t count;
    uint32_t shapes[kMostNotations];
    uint8_t base;
};

template <uint32_t Count>
consteval NumbersRule NumbersText(uint16_t shortest, uint16_t longest, const char *separators,
                                  const BgpNotation (&notations)[Count], uint8_t base = 10)
{
    static_assert(Count <= kMostNotations);
    NumbersRule rule{shortest, longest, separators, notations, Count, {}, base};
    for (uint32_t i = 0; i < Count; ++i) {
        rule.shapes[i] = Shape(notations[i].Separators);
    }
    return rule;
}

// Has the text the separators of the rule's index-th notation, and no number that is too small or too large? Without
// loops, so that a constant rule leaves nothing but its comparisons.
template <uint32_t... I>
[[gnu::always_inline]] inline bool Fits(const NumbersRule &rule, uint32_t index, const Numbers &numbers,
                                        std::integer_sequence<uint32_t, I...>)
{
    const BgpNotation &notation = rule.notations[index < rule.count ? index : 0];
    const uint32_t shape = rule.shapes[index];
    return index < rule.count && shape == numbers.shape &&
           ((!HasNumber(shape, I) || (numbers.at[I] >= notation.Smallest[I] && numbers.at[I] <= notation.Largest[I])) &&
            ...);
}

inline constexpr uint32_t kNoFit = 0xFFFFFFFF;

// Says why numbers, read from the text, fit no notation; of those that the separators leave, the one that fits furthest
// is the one that was meant.
[[gnu::cold]] void RefuseNotation(const NumbersRule &rule, Text text, const Numbers &numbers, Why &why);

template <uint32_t... I>
[[gnu::always_inline]] inline uint32_t FirstThatFits(const NumbersRule &rule, const Numbers &numbers,
                                                     std::integer_sequence<uint32_t, I...>)
{
    constexpr std::make_integer_sequence<uint32_t, kMostNumbers> kEach;
    uint32_t found = kNoFit;
    static_cast<void>(((Fits(rule, I, numbers, kEach) && (found = I, true)) || ...));
    return found;
}

// The index of the first notation that fits, kNoFit when none does.
[[gnu::always_inline]] inline uint32_t FindNotation(const NumbersRule &rule, Text text, const Numbers &numbers,
                                                    Why *why)
{
    const uint32_t found = FirstThatFits(rule, numbers, std::make_integer_sequence<uint32_t, kMostNotations>());
    if (found == kNoFit && why != nullptr) [[unlikely]] {
        RefuseNotation(rule, text, numbers, *why);
    }
    return found;
}

// A trimmed piece to its numbers, which may still fit no notation.
[[gnu::always_inline]] inline bool ReadNumbersOf(const NumbersRule &rule, Text text, Numbers &numbers, Why *why)
{
    return HasLength(text, rule.shortest, rule.longest, why) &&
           (rule.base == 16 ? ReadNumbers<16>(text, rule.separators, numbers, why)
                            : ReadNumbers<10>(text, rule.separators, numbers, why));
}

// The same of a whole text, the blanks around it aside; `text` is what is left of it.
[[gnu::cold]] bool ReadTrimmedNumbers(const NumbersRule &rule, const char *typed, Text &text, Numbers &numbers,
                                      Why *why);

// One separator of those that a rule has; without a loop, as the rule is a constant.
[[gnu::always_inline]] inline bool Separates(const char *separators, char character)
{
    for (; *separators != '\0'; ++separators) {
        if (*separators == character) {
            return true;
        }
    }
    return false;
}

// The numbers that a text begins with, in one pass up to the first character that is neither digit nor separator, at
// the latest the terminator; the place there. Null says only that this way of reading does not tell: when there are no
// numbers, too many or too long ones, or more or fewer characters than the rule's texts have.
template <uint32_t Base>
[[gnu::always_inline]] inline const char *ReadBareNumbers(const NumbersRule &rule, const char *text, Numbers &numbers)
{
    const char *at = text;
    uint32_t shape = 0;
    for (uint32_t count = 0; count < kMostNumbers; ++count) {
        const char *const start = at;
        uint64_t value = 0;
        for (uint32_t digit; (digit = DigitValue<Base>(*at)) != 0xFF; ++at) {
            value = value * Base + digit; // of too many digits nothing is used
        }
        if (at == start || at - start > static_cast<ptrdiff_t>(kSafeDigits<Base>)) {
            return nullptr;
        }
        numbers.at[count] = value;
        if (!Separates(rule.separators, *at)) {
            numbers.shape = shape;
            return IsLong({text, static_cast<uint32_t>(at - text)}, rule.shortest, rule.longest) ? at : nullptr;
        }
        shape = shape << 8 | static_cast<uint8_t>(*at++);
    }
    return nullptr;
}

// The notation of such numbers, and the place behind them; null as above, or when no notation fits.
[[gnu::always_inline]] inline const char *ReadBareNotation(const NumbersRule &rule, const char *text, Numbers &numbers,
                                                           uint32_t &notation)
{
    const char *behind = ReadBareNumbers<10>(rule, text, numbers);
    notation = behind != nullptr ? FindNotation(rule, {}, numbers, nullptr) : kNoFit;
    return notation != kNoFit ? behind : nullptr;
}

// A whole text to its numbers, which may still fit no notation; blanks around it are no part of `text`.
[[gnu::always_inline]] inline bool ReadNumbersOf(const NumbersRule &rule, const char *typed, Text &text,
                                                 Numbers &numbers, Why *why)
{
    const char *behind =
        rule.base == 16 ? ReadBareNumbers<16>(rule, typed, numbers) : ReadBareNumbers<10>(rule, typed, numbers);
    if (behind == nullptr || *behind != '\0') [[unlikely]] {
        return ReadTrimmedNumbers(rule, typed, text, numbers, why);
    }
    text = {typed, static_cast<uint32_t>(behind - typed)};
    return true;
}

// A trimmed piece to its numbers; the index of its notation, or kNoFit.
[[gnu::always_inline]] inline uint32_t ReadNotation(const NumbersRule &rule, Text text, Numbers &numbers, Why *why)
{
    return ReadNumbersOf(rule, text, numbers, why) ? FindNotation(rule, text, numbers, why) : kNoFit;
}

// The same of a whole text, the blanks around it aside.
[[gnu::always_inline]] inline uint32_t ReadNotation(const NumbersRule &rule, const char *typed, Numbers &numbers,
                                                    Why *why)
{
    Text text;
    return ReadNumbersOf(rule, typed, text, numbers, why) ? FindNotation(rule, text, numbers, why) : kNoFit;
}

// What most types of numbers refuse with; a type whose texts break others beside them, or cannot break one, has a list
// of its own.
inline constexpr const BgpRule *kNumbersRules[] = {&kEmpty,          &kTooLong,        &kBlank,      &kNoDigit,
                                                   &kWrongCharacter, &kTooManyNumbers, &kNoNotation, &kTooLarge};

} // namespace bgp

#endif
