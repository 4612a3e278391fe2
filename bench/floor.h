// The floor: conversions as a careful person writes them by hand for speed, text to stored form and back, with the same
// checks and the same results as the plug-in's and nothing around them: no contract, no host, no reasons. One floor a
// type (of the composite key one a sub-type or route type); what they are made of stands here.
//
// A text that is taken ends where its reader says; a reader answers null for what it refuses. Readers stop at the first
// character that does not belong to them, the terminator at the latest. Writers put no terminator and return the place
// behind what they wrote; they may scribble up to 8 bytes behind it. Words are little endian, as where they run.
#ifndef BGP_BENCH_FLOOR_H
#define BGP_BENCH_FLOOR_H

#include "bench.h"

#include <array>
#include <bit>
#include <cstring>

namespace bgp::bench {

// ------------------------------------------------------------------------------------------------------------- bytes

template <class Word>
inline void Store(uint8_t *at, Word word)
{
    std::memcpy(at, &word, sizeof word);
}

template <class Word>
inline Word Load(const uint8_t *at)
{
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// In network order. The compiler makes one move of each.
inline void StoreBig64(uint8_t *at, uint64_t word)
{
    for (int i = 0; i < 8; ++i) {
        at[i] = static_cast<uint8_t>(word >> (56 - 8 * i));
    }
}

inline uint64_t LoadBig64(const uint8_t *at)
{
    uint64_t word = 0;
    for (int i = 0; i < 8; ++i) {
        word = word << 8 | at[i];
    }
    return word;
}

inline void StoreBig32(uint8_t *at, uint32_t word)
{
    for (int i = 0; i < 4; ++i) {
        at[i] = static_cast<uint8_t>(word >> (24 - 8 * i));
    }
}

// ------------------------------------------------------------------------------------------------------------ blanks

// What the stand-alone host trims.
inline bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

inline const char *SkipBlanks(const char *at)
{
    while (IsBlank(*at)) {
        ++at;
    }
    return at;
}

// Does the text end here, blanks aside, after at most so many characters?
inline bool EndsIn(const char *start, const char *at, ptrdiff_t most)
{
    return at != nullptr && at - start <= most && *SkipBlanks(at) == '\0';
}

// ----------------------------------------------------------------------------------------------------------- numbers

inline uint32_t Digit(char character)
{
    return static_cast<uint32_t>(static_cast<uint8_t>(character)) - '0';
}

const char *TakeLongDigits(const char *at, uint64_t &number); // any number of digits

// One digit or more, leading zeros included; null, too, for what 64 bits do not hold.
inline const char *TakeDigits(const char *at, uint64_t &number)
{
    constexpr ptrdiff_t kSafe = 19; // digits that always fit
    const char *const start = at;
    uint64_t sum = 0;
    for (uint32_t digit; (digit = Digit(*at)) < 10; ++at) {
        sum = sum * 10 + digit;
    }
    number = sum;
    if (at - start > kSafe) {
        return TakeLongDigits(start, number);
    }
    return at == start ? nullptr : at;
}

// One to `most` digits, `most` at most 10, of a number that is not above `largest`.
inline const char *TakeNumber(const char *at, ptrdiff_t most, uint32_t largest, uint32_t &number)
{
    uint64_t wide = 0;
    const char *const end = TakeDigits(at, wide);
    number = static_cast<uint32_t>(wide);
    return end == nullptr || end - at > most || wide > largest ? nullptr : end;
}

// The digits of a number below 100,000,000, the first in the low byte, as numbers: halves, quarters and eighths of it
// are parted side by side in one word.
inline uint64_t EightDigits(uint32_t number)
{
    const uint64_t halves = number / 10000 | uint64_t{number % 10000} << 32;
    const uint64_t hundreds = (halves * 10486 >> 20) & 0x0000007F0000007F;
    const uint64_t quarters = hundreds | (halves - 100 * hundreds) << 16;
    const uint64_t tens = (quarters * 103 >> 10) & 0x000F000F000F000F;
    return tens | (quarters - 10 * tens) << 8;
}

inline constexpr uint64_t kZeros = 0x3030303030303030; // eight times "0"

inline char *PutEight(char *to, uint32_t number)
{
    Store(reinterpret_cast<uint8_t *>(to), EightDigits(number) + kZeros);
    return to + 8;
}

// Below 100,000,000. No branch: how many digits there are is hard to foresee.
inline char *PutUpToEight(char *to, uint32_t number)
{
    const uint64_t digits = EightDigits(number);
    const int leading = std::countr_zero(digits | uint64_t{1} << 56) / 8; // zeros; the last digit stays
    Store(reinterpret_cast<uint8_t *>(to), (digits + kZeros) >> (8 * leading));
    return to + 8 - leading;
}

inline char *PutNumber(char *to, uint32_t number)
{
    constexpr uint32_t kEightDigits = 100000000;
    return number < kEightDigits ? PutUpToEight(to, number)
                                 : PutEight(PutUpToEight(to, number / kEightDigits), number % kEightDigits);
}

// --------------------------------------------------------------------------------------------------------- addresses

// The texts of the octets.
struct OctetText {
    char digits[3];
    uint8_t length;
};

inline constexpr auto kOctets = [] {
    std::array<OctetText, 256> octets{};
    for (uint32_t i = 0; i < 256; ++i) {
        OctetText &octet = octets[i];
        for (const uint32_t unit : {100u, 10u, 1u}) {
            if (i >= unit || unit == 1) {
                octet.digits[octet.length++] = static_cast<char>('0' + i / unit % 10);
            }
        }
    }
    return octets;
}();

inline char *PutOctet(char *to, uint32_t octet)
{
    const OctetText &text = kOctets[octet];
    std::memcpy(to, &text, sizeof text);
    return to + text.length;
}

// An address whose first octet is the most significant.
inline char *PutIpv4(char *to, uint32_t address)
{
    to = PutOctet(to, address >> 24);
    *to++ = '.';
    to = PutOctet(to, address >> 16 & 255);
    *to++ = '.';
    to = PutOctet(to, address >> 8 & 255);
    *to++ = '.';
    return PutOctet(to, address & 255);
}

// Without leading zeros. Of four digits the last is left over, to be refused as a separator.
inline const char *TakeOctet(const char *at, uint32_t &octet)
{
    octet = Digit(at[0]);
    if (octet > 9) {
        return nullptr;
    }
    const uint32_t second = Digit(at[1]);
    if (second > 9) {
        return at + 1;
    }
    if (octet == 0) {
        return nullptr;
    }
    octet = octet * 10 + second;
    const uint32_t third = Digit(at[2]);
    if (third > 9) {
        return at + 2;
    }
    octet = octet * 10 + third;
    return octet <= 255 ? at + 3 : nullptr;
}

inline const char *TakeIpv4(const char *at, uint32_t &address)
{
    uint32_t octets[4];
    for (int i = 0; i < 4; ++i) {
        if (i > 0 && *at++ != '.') {
            return nullptr;
        }
        at = TakeOctet(at, octets[i]);
        if (at == nullptr) {
            return nullptr;
        }
    }
    address = octets[0] << 24 | octets[1] << 16 | octets[2] << 8 | octets[3];
    return at;
}

inline constexpr auto kHexValues = [] {
    std::array<uint8_t, 256> values{};
    for (uint32_t i = 0; i < 256; ++i) {
        const bool isLetter = (i >= 'A' && i <= 'F') || (i >= 'a' && i <= 'f');
        values[i] = static_cast<uint8_t>(i >= '0' && i <= '9' ? i - '0' : isLetter ? (i & 7) + 9 : 0xFF);
    }
    return values;
}();

inline uint32_t HexDigit(char character)
{
    return kHexValues[static_cast<uint8_t>(character)];
}

// One to four hexadecimal digits.
inline const char *TakeHexGroup(const char *at, uint32_t &group)
{
    const char *const start = at;
    group = 0;
    for (uint32_t digit; (digit = HexDigit(*at)) < 16; ++at) {
        group = group << 4 | digit;
    }
    return at == start || at - start > 4 ? nullptr : at;
}

inline char *PutHexPair(char *to, uint32_t byte)
{
    to[0] = "0123456789abcdef"[byte >> 4];
    to[1] = "0123456789abcdef"[byte & 15];
    return to + 2;
}

const char *TakeIpv6(const char *at, uint8_t *address16);
char *PutIpv6(char *to, const uint8_t *address16);

} // namespace bgp::bench

#endif
