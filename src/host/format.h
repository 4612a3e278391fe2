// Formats that are known while compiling: "%u.%u:%u" becomes straight code, one store for each run of plain characters
// and one conversion for each number, whose width follows from its type. The words of a format are those of printf.
#ifndef BGP_HOST_FORMAT_H
#define BGP_HOST_FORMAT_H

#include "host/bytes.h"
#include "host/text.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace bgp {

// ----------------------------------------------------------------------------------------------------------- numbers

// A number is written with stores of a fixed size, so what stands behind its last digit is overwritten, up to so many
// characters from its first. Whoever writes has that much room beyond the longest text.
inline constexpr uint32_t kWrittenAtOnce = 8;

// The decimal digits of an octet, and how many they are.
struct Octet {
    char digits[3];
    uint8_t count;
};

struct Octets {
    Octet at[256];
};

inline constexpr Octets kOctets = [] {
    Octets octets{};
    for (uint32_t i = 0; i < 256; ++i) {
        const char digits[] = {static_cast<char>('0' + i / 100), static_cast<char>('0' + i / 10 % 10),
                               static_cast<char>('0' + i % 10)};
        const uint32_t count = i < 10 ? 1 : i < 100 ? 2 : 3;
        for (uint32_t j = 0; j < count; ++j) {
            octets.at[i].digits[j] = digits[3 - count + j];
        }
        octets.at[i].count = static_cast<uint8_t>(count);
    }
    return octets;
}();

inline constexpr uint32_t kHundredMillion = 100000000;

// The eight digits of a number below a hundred million, one a byte, the first in the lowest byte. Three divisions by
// multiplying, each of all halves of the word at once: into two numbers of four digits, four of two, eight of one.
inline uint64_t EightDigits(uint32_t number)
{
    const uint64_t fours = number / 10000 | uint64_t{number % 10000} << 32;
    const uint64_t hundreds = fours * 10486 >> 20 & 0x0000007F0000007F; // of each half; 10486 / 2^20 is a hundredth
    const uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
    const uint64_t tens = twos * 103 >> 10 & 0x000F000F000F000F; // 103 / 2^10 is a tenth
    return tens | (twos - tens * 10) << 8;
}

inline constexpr uint64_t kEightZeros = 0x3030303030303030;

inline char *WriteUpToEight(char *to, uint32_t number)
{
    const uint64_t digits = EightDigits(number);
    // A number has a digit even when it is 0: the last byte counts as one in any case.
    const auto zeros = static_cast<uint32_t>(std::countr_zero(digits | uint64_t{1} << 56)) & ~7u;
    Store(to, (digits | kEightZeros) >> zeros);
    return to + (8 - zeros / 8);
}

inline char *WriteNumber(char *to, uint8_t number)
{
    const Octet &octet = kOctets.at[number];
    std::memcpy(to, &octet, sizeof octet);
    return to + octet.count;
}

inline char *WriteNumber(char *to, uint16_t number)
{
    return WriteUpToEight(to, number);
}

inline char *WriteNumber(char *to, uint32_t number)
{
    if (number < kHundredMillion) {
        return WriteUpToEight(to, number);
    }
    to = WriteNumber(to, static_cast<uint8_t>(number / kHundredMillion));
    Store(to, EightDigits(number % kHundredMillion) | kEightZeros);
    return to + 8;
}

inline char *WriteNumber(char *to, uint64_t number)
{
    if (number <= UINT32_MAX) {
        return WriteNumber(to, static_cast<uint32_t>(number));
    }
    to = WriteNumber(to, number / kHundredMillion);
    Store(to, EightDigits(static_cast<uint32_t>(number % kHundredMillion)) | kEightZeros);
    return to + 8;
}

inline constexpr char kHexDigits[] = "0123456789abcdef";

inline char *WriteTwoHex(char *to, uint8_t number)
{
    to[0] = kHexDigits[number >> 4];
    to[1] = kHexDigits[number & 0xF];
    return to + 2;
}

// Without leading zeros.
inline char *WriteHex(char *to, uint32_t number)
{
    for (uint32_t shift = (31 - static_cast<uint32_t>(std::countl_zero(number | 1))) & ~3u; shift != 0; shift -= 4) {
        *to++ = kHexDigits[number >> shift & 0xF];
    }
    *to++ = kHexDigits[number & 0xF];
    return to;
}

// ----------------------------------------------------------------------------------------------------------- formats

// A format as a template's argument.
template <uint32_t Size>
struct FormatString {
    consteval FormatString(const char (&format)[Size])
    {
        for (uint32_t i = 0; i < Size; ++i) {
            at[i] = format[i];
        }
    }
    char at[Size];
};

// The plain characters from a place in a format on, and the conversion behind them: 'u' a number, 'x' hexadecimal, '2'
// two hexadecimal digits, 0 the format's end.
struct FormatPiece {
    uint32_t plain;
    char conversion;
    uint32_t behind; // the place behind the conversion
};

template <uint32_t Size>
constexpr FormatPiece PieceOf(const FormatString<Size> &form, uint32_t from)
{
    uint32_t at = from;
    while (form.at[at] != '\0' && form.at[at] != '%') {
        ++at;
    }
    const uint32_t plain = at - from;
    if (form.at[at] == '\0') {
        return {plain, 0, at};
    }
    bool two = false;
    for (++at;
         form.at[at] == '0' || form.at[at] == '.' || form.at[at] == '2' || form.at[at] == 'h' || form.at[at] == 'l';
         ++at) {
        two |= form.at[at] == '2';
    }
    return {plain, two ? '2' : form.at[at], at + 1};
}

// The numbers that a format takes.
template <uint32_t Size>
constexpr uint32_t Conversions(const FormatString<Size> &form)
{
    uint32_t count = 0;
    for (FormatPiece piece = PieceOf(form, 0); piece.conversion != 0; piece = PieceOf(form, piece.behind)) {
        ++count;
    }
    return count;
}

// The most characters of a number.
template <class Number>
constexpr uint32_t MostCharacters(char conversion)
{
    constexpr uint32_t kDecimal[] = {0, 3, 5, 0, 10, 0, 0, 0, 20}; // by width in bytes
    return conversion == '2' ? 2 : conversion == 'x' ? 2 * sizeof(Number) : kDecimal[sizeof(Number)];
}

template <FormatString F, uint32_t From>
constexpr uint32_t Longest()
{
    static_assert(PieceOf(F, From).conversion == 0, "a conversion without a number");
    return PieceOf(F, From).plain;
}

// The most characters that a format and its numbers make.
template <FormatString F, uint32_t From, class First, class... Rest>
constexpr uint32_t Longest()
{
    constexpr FormatPiece kPiece = PieceOf(F, From);
    return kPiece.plain + MostCharacters<First>(kPiece.conversion) + Longest<F, kPiece.behind, Rest...>();
}

template <FormatString F, uint32_t From>
[[gnu::always_inline]] inline char *Write(char *to)
{
    constexpr uint32_t kPlain = PieceOf(F, From).plain;
    std::memcpy(to, F.at + From, kPlain);
    return to + kPlain;
}

template <FormatString F, uint32_t From, class First, class... Rest>
[[gnu::always_inline]] inline char *Write(char *to, First first, Rest... rest)
{
    constexpr FormatPiece kPiece = PieceOf(F, From);
    static_assert(std::is_unsigned_v<First> && (kPiece.conversion == 'u' || kPiece.conversion == 'x' ||
                                                (kPiece.conversion == '2' && sizeof(First) == 1)));
    std::memcpy(to, F.at + From, kPiece.plain);
    to += kPiece.plain;
    if constexpr (kPiece.conversion == 'u') {
        to = WriteNumber(to, first);
    } else if constexpr (kPiece.conversion == 'x') {
        to = WriteHex(to, first);
    } else {
        to = WriteTwoHex(to, first);
    }
    return Write<F, kPiece.behind>(to, rest...);
}

// The room that Write needs for a format, terminator included.
template <FormatString F, class... Numbers>
inline constexpr uint32_t kRoom = Longest<F, 0, Numbers...>() + kWrittenAtOnce;

// Writes numbers by a format into kRoom characters; the place behind the last. No terminator is written.
template <FormatString F, class... Numbers>
[[gnu::always_inline]] inline char *Write(char *to, Numbers... numbers)
{
    return Write<F, 0>(to, numbers...);
}

// A number to a text that grows; what does not fit is cut.
void PutNumber(GrowingText &text, uint64_t number);

// The same of a format with texts (%s) among its numbers: pieces as long as these are put one by one.
template <FormatString F, uint32_t From>
inline void PutPieces(GrowingText &text)
{
    if constexpr (PieceOf(F, From).plain != 0) {
        Put(text, Text{F.at + From, PieceOf(F, From).plain});
    }
}

template <FormatString F, uint32_t From, class First, class... Rest>
inline void PutPieces(GrowingText &text, First first, Rest... rest)
{
    constexpr FormatPiece kPiece = PieceOf(F, From);
    if constexpr (kPiece.plain != 0) {
        Put(text, Text{F.at + From, kPiece.plain});
    }
    if constexpr (std::is_convertible_v<First, const char *>) {
        static_assert(kPiece.conversion == 's');
        Put(text, static_cast<const char *>(first));
    } else {
        static_assert(kPiece.conversion == 'u');
        PutNumber(text, first);
    }
    PutPieces<F, kPiece.behind>(text, rest...);
}

template <class... Arguments>
inline constexpr bool kHasTexts = (std::is_convertible_v<Arguments, const char *> || ...);

// Appends numbers, and texts, by a format; what does not fit is cut. No terminator is written.
template <FormatString F, class... Arguments>
inline void Put(GrowingText &text, Arguments... arguments)
{
    if constexpr (kHasTexts<Arguments...>) {
        PutPieces<F, 0>(text, arguments...);
    } else if (text.end - text.at >= static_cast<ptrdiff_t>(kRoom<F, Arguments...>)) [[likely]] {
        text.at = Write<F>(text.at, arguments...);
    } else {
        char line[kRoom<F, Arguments...>];
        const char *const end = Write<F>(line, arguments...);
        Put(text, Text{line, static_cast<uint32_t>(end - line)});
    }
}

// Prints numbers through the host's bounded formatter, which has the last word: the characters printed, at most
// size - 1, or a negative number when the host refuses.
template <FormatString F, class... Numbers>
inline int32_t Print(char *buffer, uint32_t size, Numbers... numbers)
{
    char line[kRoom<F, Numbers...>];
    *Write<F>(line, numbers...) = '\0';
    return PrintText(buffer, size, line);
}

// Appends what the host's bounded formatter makes of them. False, with the text as it was, when the host refuses, or
// has filled more than there was room for.
template <FormatString F, class... Arguments>
inline bool Print(GrowingText &text, Arguments... arguments)
{
    char line[kLongestLine];
    GrowingText growing = GrowIn(line, sizeof line);
    Put<F>(growing, arguments...);
    *growing.at = '\0';
    return PrintLine(text, line);
}

} // namespace bgp

#endif
