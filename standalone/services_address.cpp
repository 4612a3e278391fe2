// Address texts. The C library's inet_pton() and inet_ntop() hold the rules; this file gives them the services' shapes.
#include "bgp_host_services.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

constexpr uint32_t Refused = 1;
constexpr uint32_t FamilyIpv4 = 2, FamilyIpv6 = 10;

uint32_t ReadIpv4(const char *text, uint32_t *address)
{
    in_addr network;
    if (text == nullptr || address == nullptr || inet_pton(AF_INET, text, &network) != 1)
        return Refused;
    const uint32_t host = ntohl(network.s_addr);
    std::memcpy(address, &host, sizeof host);
    return 0;
}

uint32_t ReadIpv6(const char *text, void *address16)
{
    in6_addr address;
    if (text == nullptr || address16 == nullptr || inet_pton(AF_INET6, text, &address) != 1)
        return Refused;
    std::memcpy(address16, &address, sizeof address);
    return 0;
}

int HexDigit(char character)
{
    if (character >= '0' && character <= '9')
        return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

int32_t Order(int difference)
{
    return (difference > 0) - (difference < 0);
}

} // namespace

uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address)
{
    return ReadIpv4(text, address);
}

uint32_t QOV_StrToIpAddr(const char *text, uint32_t *address)
{
    return ReadIpv4(text, address);
}

uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t *address16, uint32_t)
{
    return ReadIpv6(text, address16);
}

uint32_t SMP_InetAToN6(const char *text, uint8_t *address16)
{
    return ReadIpv6(text, address16);
}

uint32_t SMP_InetAToN(const char *text, void *address, uint32_t family)
{
    if (family == FamilyIpv6)
        return ReadIpv6(text, address);
    in_addr network;
    if (family != FamilyIpv4 || text == nullptr || address == nullptr || inet_pton(AF_INET, text, &network) != 1)
        return Refused;
    std::memcpy(address, &network, sizeof network);
    return 0;
}

int32_t SYSDT_Ipv4Ipv6Compare(const void *, uint32_t, const void *left, const void *right)
{
    constexpr size_t Ipv6At = 4, FlagAt = 20;
    if (left == nullptr || right == nullptr)
        return (left != nullptr) - (right != nullptr);
    const auto *leftBytes = static_cast<const uint8_t *>(left), *rightBytes = static_cast<const uint8_t *>(right);
    if (leftBytes[FlagAt] != rightBytes[FlagAt])
        return leftBytes[FlagAt] < rightBytes[FlagAt] ? -1 : 1;
    if (leftBytes[FlagAt] != 0)
        return Order(std::memcmp(leftBytes + Ipv6At, rightBytes + Ipv6At, 16));
    uint32_t leftWord, rightWord; // the records have no alignment
    std::memcpy(&leftWord, leftBytes, sizeof leftWord);
    std::memcpy(&rightWord, rightBytes, sizeof rightWord);
    return (leftWord > rightWord) - (leftWord < rightWord);
}

char *QOV_IpAddrToStr(uint32_t address, char *buffer)
{
    if (buffer == nullptr)
        return nullptr;
    std::snprintf(buffer, 16, "%u.%u.%u.%u", address >> 24, address >> 16 & 255u, address >> 8 & 255u, address & 255u);
    return buffer;
}

char *QOV_Inet_ntoa_b_ipv6(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t word3, char *buffer)
{
    const uint32_t words[] = {word0, word1, word2, word3};
    uint16_t groups[8];
    std::memcpy(groups, words, sizeof groups);
    std::transform(std::begin(groups), std::end(groups), std::begin(groups),
                   [](uint16_t group) { return htons(group); });
    uint8_t address[16];
    std::memcpy(address, groups, sizeof address);
    return inet_ntop6(address, buffer, INET6_ADDRSTRLEN);
}

char *inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size)
{
    if (source16 == nullptr || buffer == nullptr || inet_ntop(AF_INET6, source16, buffer, size) == nullptr)
        return nullptr;
    return buffer;
}

uint32_t ZOL_CheckBySymbolForIPV4(const char *text)
{
    return text != nullptr && text[std::strspn(text, "0123456789.")] == '\0' ? 0 : Refused;
}

uint32_t SMP_Str2Mac(const char *text, uint8_t *mac6)
{
    if (text == nullptr || mac6 == nullptr)
        return Refused;
    uint8_t mac[6];
    for (size_t group = 0; group < 3; ++group) {
        if (group != 0 && *text++ != '-')
            return Refused;
        uint32_t value = 0, digits = 0;
        for (int digit; digits < 5 && (digit = HexDigit(*text)) >= 0; ++digits, ++text)
            value = value << 4 | static_cast<uint32_t>(digit);
        if (digits < 1 || digits > 4)
            return Refused;
        mac[group * 2] = static_cast<uint8_t>(value >> 8);
        mac[group * 2 + 1] = static_cast<uint8_t>(value);
    }
    if (*text != '\0')
        return Refused;
    std::memcpy(mac6, mac, sizeof mac);
    return 0;
}
