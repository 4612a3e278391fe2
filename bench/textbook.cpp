#include "textbook.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstring>

namespace bgp::bench {

namespace {

// The text without the blanks around it, when it is least to most characters long and made of `allowed` alone (null: of
// anything but blanks).
template <size_t Size>
bool Trimmed(const char *text, size_t least, size_t most, const char *allowed, char (&to)[Size])
{
    text += std::strspn(text, " \t");
    size_t length = std::strlen(text);
    while (length > 0 && std::strchr(" \t", text[length - 1]) != nullptr) {
        --length;
    }
    if (length < least || length > most || length >= Size) {
        return false;
    }
    std::memcpy(to, text, length);
    to[length] = '\0';
    return allowed != nullptr ? std::strspn(to, allowed) == length : std::strcspn(to, " \t") == length;
}

// --------------------------------------------------------------------------------------------------------- AS numbers

struct AsNumber {
    uint32_t number, notation;
};

// The C library's scanner behind the same trimming, length, character and range checks.
bool AsNumberIn(const char *text, uint8_t *value)
{
    text += std::strspn(text, " \t");
    size_t length = std::strlen(text);
    while (length > 0 && std::strchr(" \t", text[length - 1]) != nullptr) {
        --length;
    }
    if (length < 1 || length > 11) {
        return false;
    }
    char trimmed[12];
    std::memcpy(trimmed, text, length);
    trimmed[length] = '\0';
    if (std::strspn(trimmed, "0123456789.") != length) {
        return false;
    }
    AsNumber as{};
    const char *dot = std::strchr(trimmed, '.');
    if (dot == nullptr) {
        unsigned long long number = 0;
        if (std::sscanf(trimmed, "%llu", &number) != 1 || number < 1 || number > UINT32_MAX) {
            return false;
        }
        as = {static_cast<uint32_t>(number), 0};
    } else {
        unsigned int high = 0;
        unsigned long long low = 0;
        if (std::strchr(dot + 1, '.') != nullptr || std::sscanf(trimmed, "%u.%llu", &high, &low) != 2 || high < 1 ||
            high > 65535 || low > 65535) {
            return false;
        }
        as = {high << 16 | static_cast<uint32_t>(low), 1};
    }
    std::memcpy(value, &as, sizeof as);
    return true;
}

int AsNumberOut(const uint8_t *value, char *text)
{
    AsNumber as;
    std::memcpy(&as, value, sizeof as);
    return as.notation != 0 ? std::snprintf(text, 33, "%u.%u", as.number >> 16, as.number & 0xFFFF)
                            : std::snprintf(text, 33, "%u", as.number);
}

// -------------------------------------------------------------------------------------------------------- communities

struct Community {
    uint32_t community, form;
};

bool CommunityIn(const char *text, uint8_t *value)
{
    char trimmed[20];
    unsigned int first = 0;
    unsigned int second = 0;
    if (!Trimmed(text, 1, 19, "0123456789:", trimmed) || std::strchr(trimmed, ':') != std::strrchr(trimmed, ':') ||
        std::sscanf(trimmed, "%u:%u", &first, &second) != 2 || first > 65535 || second > 65535) {
        return false;
    }
    const Community community{first << 16 | second, 1};
    std::memcpy(value, &community, sizeof community);
    return true;
}

int CommunityOut(const uint8_t *value, char *text)
{
    Community community;
    std::memcpy(&community, value, sizeof community);
    switch (community.community) {
    case 0:
        return std::snprintf(text, 33, "%s", "internet");
    case 0xFFFFFF01:
        return std::snprintf(text, 33, "%s", "no-export");
    case 0xFFFFFF02:
        return std::snprintf(text, 33, "%s", "no-advertise");
    case 0xFFFFFF03:
        return std::snprintf(text, 33, "%s", "no-export-subconfed");
    default:
        return std::snprintf(text, 33, "%u:%u", community.community >> 16, community.community & 0xFFFF);
    }
}

bool LargeIn(const char *text, uint8_t *value)
{
    char trimmed[33];
    unsigned long long numbers[3];
    if (!Trimmed(text, 5, 32, "0123456789:", trimmed) ||
        std::sscanf(trimmed, "%llu:%llu:%llu", &numbers[0], &numbers[1], &numbers[2]) != 3) {
        return false;
    }
    uint32_t stored[4] = {};
    for (int i = 0; i < 3; ++i) {
        if (numbers[i] > UINT32_MAX) {
            return false;
        }
        stored[i] = static_cast<uint32_t>(numbers[i]);
    }
    std::memcpy(value, stored, sizeof stored);
    return true;
}

int LargeOut(const uint8_t *value, char *text)
{
    uint32_t stored[4];
    std::memcpy(stored, value, sizeof stored);
    return std::snprintf(text, 256, "%u:%u:%u", stored[0], stored[1], stored[2]);
}

// -------------------------------------------------------------------------------------------------------------- lists

constexpr int kEntry = 5;

bool AsListIn(const char *text, uint8_t *value)
{
    std::memset(value, 0, 1280);
    for (int used = 0, entries = 0; text[used] != '\0' && entries < 256; ++entries) {
        unsigned long long number = 0;
        int length = 0;
        if (std::sscanf(text + used, "%llu%n", &number, &length) != 1 || number < 1 || number > UINT32_MAX) {
            return false;
        }
        used += length;
        const auto stored = static_cast<uint32_t>(number);
        std::memcpy(value + entries * kEntry, &stored, sizeof stored);
    }
    return true;
}

int AsListOut(const uint8_t *value, char *text)
{
    int printed = 0;
    for (int entry = 0; entry < 256; ++entry) {
        uint32_t number = 0;
        std::memcpy(&number, value + entry * kEntry, sizeof number);
        if (number != 0) {
            printed +=
                std::snprintf(text + printed, static_cast<size_t>(3072 - printed), printed == 0 ? "%u" : " %u", number);
        }
    }
    return printed;
}

bool CommunityListIn(const char *text, uint8_t *value)
{
    std::memset(value, 0, 160);
    for (int entry = 0; entry < 32; ++entry) {
        value[entry * kEntry + 4] = 2;
    }
    for (int used = 0, entries = 0; text[used] != '\0' && entries < 32; ++entries) {
        unsigned int first = 0;
        unsigned int second = 0;
        int length = 0;
        if (std::sscanf(text + used, "%u:%u%n", &first, &second, &length) != 2 || first > 65535 || second > 65535) {
            return false;
        }
        used += length;
        const uint32_t stored = first << 16 | second;
        std::memcpy(value + entries * kEntry, &stored, sizeof stored);
        value[entries * kEntry + 4] = 1;
    }
    return true;
}

int CommunityListOut(const uint8_t *value, char *text)
{
    int printed = 0;
    for (int entry = 0; entry < 32; ++entry) {
        if (value[entry * kEntry + 4] != 2) {
            uint32_t number = 0;
            std::memcpy(&number, value + entry * kEntry, sizeof number);
            printed += std::snprintf(text + printed, static_cast<size_t>(393 - printed),
                                     printed == 0 ? "%u:%u" : " %u:%u", number >> 16, number & 0xFFFF);
        }
    }
    return printed;
}

bool ComprIn(const char *text, uint8_t *value)
{
    char trimmed[8];
    unsigned long long cpi = 0;
    unsigned long long reserved = 0;
    if (!Trimmed(text, 1, 7, "0123456789:", trimmed) || std::sscanf(trimmed, "%llu:%llu", &cpi, &reserved) != 2 ||
        cpi > 65535 || reserved != 0) {
        return false;
    }
    const uint16_t stored[4] = {0x8099, static_cast<uint16_t>(cpi), 0, 0};
    std::memcpy(value, stored, sizeof stored);
    return true;
}

int ComprOut(const uint8_t *value, char *text)
{
    uint16_t cpi = 0;
    uint32_t reserved = 0;
    std::memcpy(&cpi, value + 2, sizeof cpi);
    std::memcpy(&reserved, value + 4, sizeof reserved);
    return std::snprintf(text, 256, "%u:%u", cpi, reserved);
}

// ------------------------------------------------------------------------------------------- administrator and number

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

// --------------------------------------------------------------------------------------------------------- route keys

void PutWord(uint8_t *at, uint32_t word)
{
    std::memcpy(at, &word, sizeof word);
}

uint32_t Word(const uint8_t *at)
{
    uint32_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

bool Ipv4In(const char *text, uint8_t *value)
{
    in_addr address;
    std::memset(value, 0, 89);
    if (inet_pton(AF_INET, text, &address) != 1) {
        return false;
    }
    PutWord(value + 4, ntohl(address.s_addr));
    return true;
}

int Ipv4Out(const uint8_t *value, char *text)
{
    const uint32_t address = Word(value + 4);
    return std::snprintf(text, 256, "%u.%u.%u.%u", address >> 24, address >> 16 & 255, address >> 8 & 255,
                         address & 255);
}

bool Ipv6In(const char *text, uint8_t *value)
{
    std::memset(value, 0, 89);
    PutWord(value, 15);
    return inet_pton(AF_INET6, text, value + 4) == 1;
}

int Ipv6Out(const uint8_t *value, char *text)
{
    return inet_ntop(AF_INET6, value + 4, text, 256) == nullptr ? -1 : static_cast<int>(std::strlen(text));
}

bool MacIpIn(const char *text, uint8_t *value)
{
    char trimmed[184];
    unsigned int tag = 0;
    unsigned int macLength = 0;
    unsigned int group[3];
    unsigned int length = 0;
    char address[48];
    int end = 0;
    in_addr ipv4;
    std::memset(value, 0, 89);
    if (!Trimmed(text, 1, 183, nullptr, trimmed) ||
        std::sscanf(trimmed, "%u:%u:%4x-%4x-%4x:%u:%47s%n", &tag, &macLength, &group[0], &group[1], &group[2], &length,
                    address, &end) != 7 ||
        macLength > 255 || length > 255 || trimmed[end] != '\0') {
        return false;
    }
    PutWord(value, 1);
    value[4] = 2;
    PutWord(value + 5, tag);
    value[9] = static_cast<uint8_t>(macLength);
    for (int i = 0; i < 3; ++i) {
        PutBig(value + 10 + 2 * i, group[i], 2);
    }
    value[16] = static_cast<uint8_t>(length);
    if (address[0] == '[') {
        value[37] = 1;
        address[std::strlen(address) - 1] = '\0';
        return length <= 128 && inet_pton(AF_INET6, address + 1, value + 21) == 1;
    }
    const bool isRead = inet_pton(AF_INET, address, &ipv4) == 1;
    PutWord(value + 17, ntohl(ipv4.s_addr));
    return isRead;
}

int MacIpOut(const uint8_t *value, char *text)
{
    char address[48];
    const in_addr ipv4{htonl(Word(value + 17))};
    const bool isIpv6 = value[37] == 1;
    inet_ntop(isIpv6 ? AF_INET6 : AF_INET, isIpv6 ? static_cast<const void *>(value + 21) : &ipv4, address,
              sizeof address);
    return std::snprintf(text, 257,
                         isIpv6 ? "%u:%u:%02x%02x-%02x%02x-%02x%02x:%u:[%s]" : "%u:%u:%02x%02x-%02x%02x-%02x%02x:%u:%s",
                         Word(value + 5), value[9], value[10], value[11], value[12], value[13], value[14], value[15],
                         value[16], address);
}

bool IpRouteIn(const char *text, uint8_t *value)
{
    char trimmed[184];
    unsigned int tag = 0;
    unsigned int octet[4];
    unsigned int length = 0;
    std::memset(value, 0, 89);
    if (!Trimmed(text, 1, 183, nullptr, trimmed) ||
        std::sscanf(trimmed, "%u:%u.%u.%u.%u:%u", &tag, &octet[0], &octet[1], &octet[2], &octet[3], &length) != 6 ||
        octet[0] > 255 || octet[1] > 255 || octet[2] > 255 || octet[3] > 255 || length > 255) {
        return false;
    }
    PutWord(value, 1);
    value[4] = 5;
    PutWord(value + 5, tag);
    value[9] = static_cast<uint8_t>(length);
    PutWord(value + 10, octet[0] << 24 | octet[1] << 16 | octet[2] << 8 | octet[3]);
    return true;
}

int IpRouteOut(const uint8_t *value, char *text)
{
    const uint32_t address = Word(value + 10);
    return std::snprintf(text, 256, "%u:%u.%u.%u.%u:%u", Word(value + 5), address >> 24, address >> 16 & 255,
                         address >> 8 & 255, address & 255, value[9]);
}

bool SrPolicyIn(const char *text, uint8_t *value)
{
    char trimmed[43];
    char again[64];
    unsigned int number[2];
    unsigned int octet[4];
    std::memset(value, 0, 89);
    if (!Trimmed(text, 15, 42, nullptr, trimmed) ||
        std::sscanf(trimmed, "[%u][%u][%u.%u.%u.%u]", &number[0], &number[1], &octet[0], &octet[1], &octet[2],
                    &octet[3]) != 6 ||
        std::snprintf(again, sizeof again, "[%u][%u][%u.%u.%u.%u]", number[0], number[1], octet[0], octet[1], octet[2],
                      octet[3]) != static_cast<int>(std::strlen(trimmed))) {
        return false;
    }
    PutWord(value, 14);
    PutWord(value + 4, number[0]);
    PutWord(value + 8, number[1]);
    PutWord(value + 12, octet[0] << 24 | octet[1] << 16 | octet[2] << 8 | octet[3]);
    return true;
}

int SrPolicyOut(const uint8_t *value, char *text)
{
    const uint32_t address = Word(value + 12);
    return std::snprintf(text, 256, "[%u][%u][%u.%u.%u.%u]", Word(value + 4), Word(value + 8), address >> 24,
                         address >> 16 & 255, address >> 8 & 255, address & 255);
}

bool MdtIn(const char *text, uint8_t *value)
{
    char trimmed[36];
    unsigned int octet[4];
    unsigned int length = 0;
    std::memset(value, 0, 89);
    if (!Trimmed(text, 7, 35, nullptr, trimmed) ||
        std::sscanf(trimmed, "%u.%u.%u.%u/%u", &octet[0], &octet[1], &octet[2], &octet[3], &length) != 5 ||
        octet[0] > 255 || octet[1] > 255 || octet[2] > 255 || octet[3] > 255 || length > 32) {
        return false;
    }
    PutWord(value, 11);
    PutWord(value + 4, octet[0] << 24 | octet[1] << 16 | octet[2] << 8 | octet[3]);
    PutWord(value + 12, length);
    return true;
}

// ------------------------------------------------------------------------------------------------------------- BGP-LS

// One scan of the one form; the keyword tables know many.
bool NodeIn(const char *text, uint8_t *value)
{
    unsigned long long identifier = 0;
    unsigned int as = 0;
    char words[3][16];
    in_addr address[3];
    std::memset(value, 0, 228);
    if (std::sscanf(text,
                    "[NODE][OSPFv2][IDENTIFIER%llu][LOCAL[as%u][bgp-ls-identifier%15[^]]][ospf-area-id%15[^]]]"
                    "[igp-router-id%15[^]]]]",
                    &identifier, &as, words[0], words[1], words[2]) != 5) {
        return false;
    }
    for (int i = 0; i < 3; ++i) {
        if (inet_pton(AF_INET, words[i], &address[i]) != 1) {
            return false;
        }
    }
    PutWord(value, 1);
    PutWord(value + 4, 3);
    PutWord(value + 8, static_cast<uint32_t>(identifier));
    PutWord(value + 16, as);
    PutWord(value + 24, ntohl(address[0].s_addr));
    PutWord(value + 28, ntohl(address[1].s_addr));
    std::memcpy(value + 32, &address[2], 4);
    PutWord(value + 82, 1);
    return true;
}

int NodeOut(const uint8_t *value, char *text)
{
    char address[3][16];
    for (int i = 0; i < 2; ++i) {
        const in_addr ipv4{htonl(Word(value + 24 + 4 * i))};
        inet_ntop(AF_INET, &ipv4, address[i], sizeof address[i]);
    }
    char routerId[50];
    std::snprintf(routerId, sizeof routerId, "%.49s", reinterpret_cast<const char *>(value + 32));
    return std::snprintf(
        text, 512, "[NODE][OSPFv2][IDENTIFIER%u][LOCAL[as%u][bgp-ls-identifier%s][ospf-area-id%s][igp-router-id%s]]",
        Word(value + 8), Word(value + 16), address[0], address[1], routerId);
}

} // namespace

const Textbook kAsNumberTextbook{AsNumberIn, AsNumberOut};
const Textbook kCommunityTextbook{CommunityIn, CommunityOut};
const Textbook kLargeCommunityTextbook{LargeIn, LargeOut};
const Textbook kAsListTextbook{AsListIn, AsListOut};
const Textbook kCommunityListTextbook{CommunityListIn, CommunityListOut};
const Textbook kComprTextbook{ComprIn, ComprOut};
const Textbook kDistinguisherTextbook{NotationIn<1, 0, 2>, NotationOut<1>};
const Textbook kTargetTextbook{NotationIn<0x0102, 0x0002, 0x0202>, NotationOut<0x0102>};
const Textbook kSooTextbook{NotationIn<0x0103, 0x0003, 0x0203>, NotationOut<0x0103>};
const Textbook kVpnIdTextbook{VpnIdIn, VpnIdOut};
const Textbook kIpv4KeyTextbook{Ipv4In, Ipv4Out};
const Textbook kIpv6KeyTextbook{Ipv6In, Ipv6Out};
const Textbook kMacIpTextbook{MacIpIn, MacIpOut};
const Textbook kIpPrefixTextbook{IpRouteIn, IpRouteOut};
const Textbook kSrPolicyTextbook{SrPolicyIn, SrPolicyOut};
const Textbook kMdtTextbook{MdtIn, nullptr};
const Textbook kLsNodeTextbook{NodeIn, NodeOut};

} // namespace bgp::bench
