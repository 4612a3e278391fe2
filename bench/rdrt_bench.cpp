#include "bench.h"
#include "textbook.h"

#include <cstdio>

namespace bgp::bench {

namespace {

std::string Number(uint32_t number)
{
    return std::to_string(number);
}

std::string As2Text(uint32_t seed)
{
    return Number((Scatter(seed) & 0xFFFF) | 1) + ':' + Number(Scatter(seed + 1) >> 12);
}

std::string As4Text(uint32_t seed)
{
    return Number(Scatter(seed) | 0x10000) + ':' + Number(Scatter(seed + 1) & 0xFFFF);
}

std::string DottedText(uint32_t seed)
{
    const uint32_t number = Scatter(seed) | 0x10001;
    return Number(number >> 16) + '.' + Number(number & 0xFFFF) + ':' + Number(Scatter(seed + 1) & 0xFFFF);
}

std::string Ipv4Text(uint32_t seed)
{
    const uint32_t number = Scatter(seed);
    return Number(number >> 24) + '.' + Number(number >> 16 & 255) + '.' + Number(number >> 8 & 255) + '.' +
           Number(number & 255) + ':' + Number(Scatter(seed + 1) & 0xFFFF);
}

void PutBig(uint8_t *at, uint32_t number, int width)
{
    while (width-- > 0) {
        at[width] = static_cast<uint8_t>(number);
        number >>= 8;
    }
}

uint32_t Big(const uint8_t *at, int width)
{
    uint32_t number = 0;
    while (width-- > 0) {
        number = number << 8 | *at++;
    }
    return number;
}

// Kind bytes by administrator: IPv4, 2-byte AS, 4-byte AS.
template <uint32_t Ipv4Kind, uint32_t As2Kind, uint32_t As4Kind>
bool NotationIn(const char *text, uint8_t *value)
{
    char trimmed[22];
    if (!Trimmed(text, 1, 21, "0123456789.:", trimmed)) {
        return false;
    }
    int dots = 0;
    int colons = 0;
    for (const char *at = trimmed; *at != '\0'; ++at) {
        dots += *at == '.';
        colons += *at == ':';
    }
    uint32_t notation = 0;
    unsigned int octet[4];
    unsigned int assigned = 0;
    unsigned long long a = 0;
    unsigned long long b = 0;
    if (dots == 3 && colons == 1) {
        if (std::sscanf(trimmed, "%u.%u.%u.%u:%u", &octet[0], &octet[1], &octet[2], &octet[3], &assigned) != 5 ||
            octet[0] > 255 || octet[1] > 255 || octet[2] > 255 || octet[3] > 255 || assigned > 65535) {
            return false;
        }
        PutBig(value, Ipv4Kind, 2);
        for (int i = 0; i < 4; ++i) {
            value[2 + i] = static_cast<uint8_t>(octet[i]);
        }
        PutBig(value + 6, assigned, 2);
    } else if (dots == 0 && colons == 1) {
        if (std::sscanf(trimmed, "%llu:%llu", &a, &b) != 2 || a > UINT32_MAX || (a == 0 && b == 0) ||
            b > (a <= 65535 ? UINT32_MAX : 65535)) {
            return false;
        }
        PutBig(value, a <= 65535 ? As2Kind : As4Kind, 2);
        PutBig(value + 2, static_cast<uint32_t>(a), a <= 65535 ? 2 : 4);
        PutBig(value + (a <= 65535 ? 4 : 6), static_cast<uint32_t>(b), a <= 65535 ? 4 : 2);
        notation = a <= 65535 ? 1 : 2;
    } else if (dots == 1 && colons == 1) {
        if (std::sscanf(trimmed, "%u.%u:%u", &octet[0], &octet[1], &assigned) != 3 || octet[0] > 65535 ||
            octet[1] > 65535 || assigned > 65535 || (octet[0] | octet[1] | assigned) == 0) {
            return false;
        }
        PutBig(value, As4Kind, 2);
        PutBig(value + 2, octet[0], 2);
        PutBig(value + 4, octet[1], 2);
        PutBig(value + 6, assigned, 2);
        notation = 3;
    } else {
        return false;
    }
    std::memcpy(value + 8, &notation, sizeof notation);
    return true;
}

template <uint32_t Ipv4Kind>
int NotationOut(const uint8_t *value, char *text)
{
    uint32_t notation = 0;
    std::memcpy(&notation, value + 8, sizeof notation);
    if (Big(value, 2) == Ipv4Kind) {
        return std::snprintf(text, 256, "%u.%u.%u.%u:%u", value[2], value[3], value[4], value[5], Big(value + 6, 2));
    }
    switch (notation) {
    case 1:
        return std::snprintf(text, 256, "%u:%u", Big(value + 2, 2), Big(value + 4, 4));
    case 2:
        return std::snprintf(text, 256, "%u:%u", Big(value + 2, 4), Big(value + 6, 2));
    default:
        return std::snprintf(text, 256, "%u.%u:%u", Big(value + 2, 2), Big(value + 4, 2), Big(value + 6, 2));
    }
}

// The floor for route targets of one notation: AS:n with a 2-byte AS number.
bool As2FloorIn(const char *text, uint8_t *value)
{
    uint64_t numbers[2] = {};
    for (int i = 0; i < 2; ++i) {
        const char *const start = text;
        for (; *text >= '0' && *text <= '9'; ++text) {
            numbers[i] = numbers[i] * 10 + static_cast<uint64_t>(*text - '0');
        }
        if (text == start || text - start > 18 || *text++ != (i == 0 ? ':' : '\0')) {
            return false;
        }
    }
    if (numbers[0] > 65535 || numbers[1] > UINT32_MAX || (numbers[0] | numbers[1]) == 0) {
        return false;
    }
    PutBig(value, 2, 2);
    PutBig(value + 2, static_cast<uint32_t>(numbers[0]), 2);
    PutBig(value + 4, static_cast<uint32_t>(numbers[1]), 4);
    const uint32_t notation = 1;
    std::memcpy(value + 8, &notation, sizeof notation);
    return true;
}

char *FloorPut(char *to, uint32_t number)
{
    char digits[10];
    char *first = digits + sizeof digits;
    do {
        *--first = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number != 0);
    const auto length = static_cast<size_t>(digits + sizeof digits - first);
    std::memcpy(to, first, length);
    return to + length;
}

int As2FloorOut(const uint8_t *value, char *text)
{
    char *end = FloorPut(text, Big(value + 2, 2));
    *end++ = ':';
    end = FloorPut(end, Big(value + 4, 4));
    *end = '\0';
    return static_cast<int>(end - text);
}

// --------------------------------------------------------------------------------------------------------------- VPNID

std::string VpnIdText(uint32_t seed)
{
    char text[20];
    std::snprintf(text, sizeof text, "%x:%x", (Scatter(seed) & 0xFFFFFF) | 1, Scatter(seed + 1));
    return text;
}

bool VpnIdIn(const char *text, uint8_t *value)
{
    char trimmed[22];
    unsigned long long oui = 0;
    unsigned long long index = 0;
    if (!Trimmed(text, 1, 21, "0123456789abcdef:", trimmed) ||
        std::strchr(trimmed, ':') != std::strrchr(trimmed, ':') ||
        std::sscanf(trimmed, "%llx:%llx", &oui, &index) != 2 || oui > 0xFFFFFF || index > UINT32_MAX ||
        (oui == 0 && index == 0)) {
        return false;
    }
    const uint32_t stored[2] = {static_cast<uint32_t>(oui), static_cast<uint32_t>(index)};
    std::memcpy(value, stored, sizeof stored);
    return true;
}

int VpnIdOut(const uint8_t *value, char *text)
{
    uint32_t stored[2];
    std::memcpy(stored, value, sizeof stored);
    return std::snprintf(text, 256, "%x:%x", stored[0], stored[1]);
}

} // namespace

std::vector<Row> RouteDistinguisherRows()
{
    constexpr In kRdIn = NotationIn<1, 0, 2>;
    constexpr Out kRdOut = NotationOut<1>;
    constexpr In kRtIn = NotationIn<0x0102, 0x0002, 0x0202>;
    constexpr Out kRtOut = NotationOut<0x0102>;
    constexpr In kSooIn = NotationIn<0x0103, 0x0003, 0x0203>;
    constexpr Out kSooOut = NotationOut<0x0103>;
    return {
        {"VRFRD", "IPv4", Ipv4Text, kRdIn, kRdOut},
        {"VRFRD", "dotted AS", DottedText, kRdIn, kRdOut},
        {"VRFRT", "2-byte AS", As2Text, kRtIn, kRtOut, As2FloorIn, As2FloorOut},
        {"VRFRT", "4-byte AS", As4Text, kRtIn, kRtOut},
        {"EXTCOMMUNITY", "2-byte AS", As2Text, kRtIn, kRtOut},
        {"SOO", "2-byte AS", As2Text, kSooIn, kSooOut},
        {"BOLRD", "2-byte AS", As2Text},
        {"RTPRD", "2-byte AS", As2Text},
        {"VPNID", "OUI and index", VpnIdText, VpnIdIn, VpnIdOut},
    };
}

} // namespace bgp::bench
