#include "bench.h"
#include "textbook.h"

#include <cstdio>

namespace bgp::bench {

namespace {

std::string Number(uint32_t number)
{
    return std::to_string(number);
}

// --------------------------------------------------------------------------------------------------------- COMMUNITY

std::string CommunityText(uint32_t seed)
{
    const uint32_t number = Scatter(seed) % 0xFFFE0000 + 0x10000;
    return Number(number >> 16) + ':' + Number(number & 0xFFFF);
}

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

// The floor: one pass over digits, one colon, nothing behind.
const char *FloorNumber(const char *at, uint64_t *number)
{
    const char *const start = at;
    uint64_t sum = 0;
    for (; *at >= '0' && *at <= '9'; ++at) {
        sum = sum * 10 + static_cast<uint64_t>(*at - '0');
    }
    *number = sum;
    return at == start || at - start > 18 ? nullptr : at;
}

bool CommunityFloorIn(const char *text, uint8_t *value)
{
    uint64_t first = 0;
    uint64_t second = 0;
    const char *at = FloorNumber(text, &first);
    if (at == nullptr || *at != ':' || (at = FloorNumber(at + 1, &second)) == nullptr || *at != '\0' || first > 65535 ||
        second > 65535) {
        return false;
    }
    const Community community{static_cast<uint32_t>(first << 16 | second), 1};
    std::memcpy(value, &community, sizeof community);
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

int CommunityFloorOut(const uint8_t *value, char *text)
{
    Community community;
    std::memcpy(&community, value, sizeof community);
    if (community.community == 0 || community.community >= 0xFFFFFF01) {
        return CommunityOut(value, text);
    }
    char *end = FloorPut(text, community.community >> 16);
    *end++ = ':';
    end = FloorPut(end, community.community & 0xFFFF);
    *end = '\0';
    return static_cast<int>(end - text);
}

// ---------------------------------------------------------------------------------------------------- LARGECOMMUNITY

std::string LargeText(uint32_t seed)
{
    return Number(Scatter(seed)) + ':' + Number(Scatter(seed + 1) >> 8) + ':' + Number(Scatter(seed + 2) >> 16);
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

constexpr int kListed = 8;
constexpr int kEntry = 5;

std::string AsListText(uint32_t seed)
{
    std::string text;
    for (uint32_t i = 0; i < kListed; ++i) {
        text += (i == 0 ? "" : " ") + Number(Scatter(seed * kListed + i) >> 14 | 1);
    }
    return text;
}

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

std::string CommunityListText(uint32_t seed)
{
    std::string text;
    for (uint32_t i = 0; i < kListed; ++i) {
        text += (i == 0 ? "" : " ") + CommunityText(seed * kListed + i);
    }
    return text;
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

// ------------------------------------------------------------------------------------------------------ EXTCMNTY_COMPR

std::string ComprText(uint32_t seed)
{
    return Number(Scatter(seed) & 0xFFFF) + ":0";
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

} // namespace

std::vector<Row> CommunityRows()
{
    return {
        {"COMMUNITY", "two-part", CommunityText, CommunityIn, CommunityOut, CommunityFloorIn, CommunityFloorOut},
        {"LARGECOMMUNITY", "three numbers", LargeText, LargeIn, LargeOut},
        {"EXTCMNTY_COMPR", "cpi", ComprText, ComprIn, ComprOut},
        {"ASNUM_ENHANCE", "8 plain", AsListText, AsListIn, AsListOut},
        {"CMNTY_ENHANCE", "8 two-part", CommunityListText, CommunityListIn, CommunityListOut},
    };
}

} // namespace bgp::bench
