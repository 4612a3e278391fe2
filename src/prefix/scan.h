// Scanning by format, strictly: digits of base 10 only, no sign, and a number that is too large ends the scan. White
// space before a number or a word is skipped; what follows the last item is not looked at. The route keys that are read
// this way are not read more closely than that, so their texts may end in anything, or lack a closing bracket.
#ifndef BGP_PREFIX_SCAN_H
#define BGP_PREFIX_SCAN_H

#include "host/numbers.h"

#include <cstdint>

namespace bgp {

inline constexpr uint32_t kMostScanned = 8;

struct ScanItem {
    const char *what; // people call it
    uint64_t largest; // of a number
};

// "%u" and "%hu" are numbers, "%s" is a word: the characters up to white space. All other characters stand for
// themselves.
struct ScanForm {
    const char *format;
    ScanItem items[kMostScanned]; // in the order of the format
};

// A form of the notation's numbers.
consteval ScanForm ScanOf(const char *format, const BgpNotation &notation)
{
    ScanForm form{format, {}};
    for (uint32_t i = 0; i < kMostNumbers; ++i) {
        form.items[i] = {notation.Names[i], notation.Largest[i]};
    }
    return form;
}

struct Scanned {
    uint32_t numbers[kMostScanned]; // in the order of the format
    Text word;                      // what "%s" took
    const char *end;                // behind the last item
};

// clang-format off
inline constexpr BgpRule kSeparator{"separator", "\"{what}\" is expected here", 0};
inline constexpr BgpRule kSpelling{"spelling", "{what} is spelt as it prints", 1};
inline constexpr BgpRule kNotPrinted{"print", "the host cannot print what was read", 0}; // broken by no text
// clang-format on

[[gnu::cold]] void NoteSeparator(const Why &why, Text place, char separator);

// Always false: the separator is missing at the place.
inline bool RefuseSeparator(Why *why, Text place, char separator)
{
    if (why != nullptr) [[unlikely]] {
        NoteSeparator(*why, place, separator);
    }
    return false;
}

// Why a text that was scanned is not as long as its items print: a number begins with a zero, white space stands before
// it, the last character is missing, or something stands behind it. If none of that, it is the word.
[[gnu::cold]] void NoteSpelling(const Why &why, const ScanForm &form, Text text, Text word);

// Walks the format. False at the first item that is missing or too large.
inline bool Scan(const ScanForm &form, Text text, Scanned &scanned, Why *why)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    const ScanItem *item = form.items;
    uint32_t *number = scanned.numbers;
    for (const char *format = form.format; *format != '\0'; ++format) {
        if (*format != '%') {
            if (item->what == nullptr) { // behind the last item
                break;
            }
            if (at == end || *at != *format) {
                return RefuseSeparator(why, {at, at < end}, *format);
            }
            ++at;
            continue;
        }
        format += *++format == 'h';
        while (at < end && IsWhiteSpace(*at)) {
            ++at;
        }
        const char *const start = at;
        if (*format == 's') {
            while (at < end && !IsWhiteSpace(*at)) {
                ++at;
            }
            scanned.word = {start, static_cast<uint32_t>(at - start)};
            if (at == start) {
                return Refuse(why, scanned.word, kEmpty, 0, item->what);
            }
        } else {
            uint64_t value = 0;
            at = ReadNumber(at, end, &value);
            if (at == nullptr) {
                return RefuseCharacter(why, {start, start < end}, kNoDigit);
            }
            if (value > item->largest) {
                return Refuse(why, {start, static_cast<uint32_t>(at - start)}, kTooLarge, item->largest, item->what);
            }
            *number++ = static_cast<uint32_t>(value);
        }
        ++item;
    }
    scanned.end = at;
    return true;
}

// Says that there is a blank, unless something in front of it is wrong already.
[[gnu::cold]] void NoteBlankIn(const Why &why, const ScanForm &form, Text text);

// Has a text that is to be scanned no blank inside?
inline bool IsOneWord(const ScanForm &form, Text text, Why *why)
{
    if (!HasBlank(text)) {
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        NoteBlankIn(*why, form, text);
    }
    return false;
}

// Was the text printed again at its own length? `printed` is what the host's formatter answered.
inline bool IsAsLong(int32_t printed, const ScanForm &form, Text text, Text word, Why *why)
{
    if (printed < 0) {
        return Refuse(why, text, kNotPrinted);
    }
    if (static_cast<uint32_t>(printed) == text.length) {
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        NoteSpelling(*why, form, text, word);
    }
    return false;
}

// The word of four octets, first octet most significant. Octets above 255 spill into their neighbours.
inline uint32_t JoinOctets(const uint32_t *octets)
{
    return octets[0] << 24 | octets[1] << 16 | octets[2] << 8 | octets[3];
}

} // namespace bgp

#endif
