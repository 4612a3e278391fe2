// Scanning by format, strictly: digits of base 10 only, no sign, and a number that does not fit ends the scan. White
// space before a number or a word is skipped; what follows the last item is not looked at. The route keys that are
// read this way are not read more closely than that, so their texts may end in anything, or lack a closing bracket.
#ifndef BGP_PREFIX_SCAN_H
#define BGP_PREFIX_SCAN_H

#include "host/numbers.h"

#include <cstdint>

namespace bgp {

inline constexpr uint32_t kMostScanned = 8;

struct Scanned {
    uint32_t numbers[kMostScanned]; // in the order of the format
    Text word;                      // what "%s" took
};

// Walks a format of "%u" (32 bits), "%hu" (16 bits), "%s" (characters up to white space) and literal characters.
// Returns how many items were taken before the first that failed.
inline uint32_t Scan(Text text, const char *format, Scanned &scanned)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    uint32_t items = 0;
    for (; *format != '\0'; ++format) {
        if (*format != '%') {
            if (at == end || *at++ != *format) {
                return items;
            }
            continue;
        }
        const bool half = *++format == 'h';
        format += half;
        while (at < end && IsWhiteSpace(*at)) {
            ++at;
        }
        if (*format == 's') {
            const char *const start = at;
            while (at < end && !IsWhiteSpace(*at)) {
                ++at;
            }
            if (at == start) {
                return items;
            }
            scanned.word = {start, static_cast<uint32_t>(at - start)};
        } else {
            uint64_t number = 0;
            at = ReadNumber(at, end, &number);
            if (at == nullptr || number > (half ? UINT16_MAX : UINT32_MAX)) {
                return items;
            }
            scanned.numbers[items] = static_cast<uint32_t>(number);
        }
        ++items;
    }
    return items;
}

// The word of four octets, first octet most significant. Octets above 255 spill into their neighbours.
inline uint32_t JoinOctets(const uint32_t *octets)
{
    return octets[0] << 24 | octets[1] << 16 | octets[2] << 8 | octets[3];
}

inline bool AreOctetsWithin(const uint32_t *octets, uint32_t most)
{
    return octets[0] <= most && octets[1] <= most && octets[2] <= most && octets[3] <= most;
}

} // namespace bgp

#endif
