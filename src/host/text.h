// Text as every type reads and prints it: trimming that leaves the caller's text alone, runs of numbers joined by
// separators, and printing from format strings through the host's bounded formatter.
#ifndef BGP_HOST_TEXT_H
#define BGP_HOST_TEXT_H

#include "bgp_host_services.h"

#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace bgp {

// ------------------------------------------------------------------------------------------------------------- input

// A piece of a text: not terminated, never written to.
struct Text {
    const char *at;
    uint32_t length;
};

inline bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

inline bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

inline bool IsHexDigit(char character)
{
    return IsDigit(character) || (character >= 'A' && character <= 'F') || (character >= 'a' && character <= 'f');
}

// The text without the blanks around it, however many.
inline Text Trim(const char *text)
{
    while (IsBlank(*text)) {
        ++text;
    }
    size_t length = std::strlen(text);
    while (length > 0 && IsBlank(text[length - 1])) {
        --length;
    }
    return {text, static_cast<uint32_t>(length)};
}

inline bool HasBlank(Text text)
{
    for (uint32_t i = 0; i < text.length; ++i) {
        if (IsBlank(text.at[i])) {
            return true;
        }
    }
    return false;
}

// Does the length lie in [least, most]?
inline bool IsLong(Text text, uint32_t least, uint32_t most)
{
    return text.length >= least && text.length <= most;
}

// Copies the piece, terminated, for host services that want a terminated text. False when it does not fit in `size`.
inline bool Terminate(Text text, char *to, uint32_t size)
{
    if (text.length >= size) {
        return false;
    }
    std::memcpy(to, text.at, text.length);
    to[text.length] = '\0';
    return true;
}

// A text made of numbers with one separator between each two: "1.2.3.4:5" has the numbers 1 2 3 4 5 and the shape
// "...:". The shape says which notation was typed.
inline constexpr uint32_t kMostNumbers = 5;

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
        if (character >= 'a' && character <= 'f') {
            return static_cast<uint32_t>(character - 'a') + 10;
        }
    }
    return 0xFF;
}

// Reads one number of one or more digits, of any length; from UINT64_MAX / Base * Base on it saturates. Returns the
// first character behind it, null when there is no digit.
template <uint32_t Base = 10>
inline const char *ReadNumber(const char *at, const char *end, uint64_t *number)
{
    constexpr uint64_t kLast = UINT64_MAX / Base; // one more digit may overflow beyond this
    const char *const start = at;
    uint64_t value = 0;
    for (uint32_t digit; at < end && (digit = DigitValue<Base>(*at)) != 0xFF; ++at) {
        value = value >= kLast ? UINT64_MAX : value * Base + digit;
    }
    *number = value;
    return at == start ? nullptr : at;
}

// Reads a whole text of numbers. `separators` lists the characters that may separate them. False when the text holds
// any other character, when a number is missing, or when there are more than kMostNumbers.
template <uint32_t Base = 10>
inline bool ReadNumbers(Text text, const char *separators, Numbers &numbers)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    numbers.shape = 0;
    for (uint32_t count = 0; count < kMostNumbers; ++count) {
        at = ReadNumber<Base>(at, end, &numbers.at[count]);
        if (at == nullptr) {
            return false;
        }
        if (at == end) {
            return true;
        }
        const char separator = *at++;
        const char *allowed = separators;
        while (*allowed != separator) {
            if (*allowed++ == '\0') {
                return false;
            }
        }
        if (separator == '\0') {
            return false;
        }
        numbers.shape = numbers.shape << 8 | static_cast<uint8_t>(separator);
    }
    return false;
}

// ------------------------------------------------------------------------------------------------------------ output

// One argument of a format: a number or a text.
struct Argument {
    constexpr Argument(uint64_t value) : number(value), text(nullptr) {}
    constexpr Argument(const char *value) : number(0), text(value) {}
    uint64_t number;
    const char *text;
};

// Writes format with its arguments into at most `room` bytes, terminator included, cutting what does not fit; returns
// the characters written. The conversions are those of the types' formats: a number (%u %hu %hhu %llu %d), two-digit
// hexadecimal (%02x %.2x %02hx), plain hexadecimal (%x), a text (%s), a character (%c).
uint32_t Format(char *to, uint32_t room, const char *format, const Argument *arguments);

// Formats into buffer: at most size - 1 characters and a terminator, through the host's bounded formatter, which has
// the last word. Returns the characters written, negative when the host refuses.
int32_t Print(char *buffer, uint32_t size, const char *format, const Argument *arguments);

inline int32_t Print(char *buffer, uint32_t size, const char *format, std::initializer_list<Argument> arguments)
{
    return Print(buffer, size, format, arguments.begin());
}

// A ready text through the host's bounded formatter, the one road by which text leaves the plug-in.
inline int32_t PrintText(char *buffer, uint32_t size, const char *text)
{
    return snprintf_truncated_s(buffer, size, "%s", text);
}

// The result of Print as an operation reports it: a count through *printed, or DT_ERR_FAIL.
inline uint32_t Printed(int32_t result, uint32_t *printed)
{
    if (result < 0) {
        return DT_ERR_FAIL;
    }
    *printed = static_cast<uint32_t>(result);
    return DT_OK;
}

} // namespace bgp

#endif
