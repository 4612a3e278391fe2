/* Address texts. The C library's inet_pton() and inet_ntop() hold the rules; here they get the services' shapes. */
#include "bgp_host_common.h"
#include "bgp_host_services.h"
#include "digits.h"
#include "replaceable.h"

#include <arpa/inet.h>
#include <stdio.h>
#include <string.h>

enum { REFUSED = 1 };
enum { FAMILY_IPV4 = 2, FAMILY_IPV6 = 10 };

/* To 4 bytes of network order. */
static uint32_t ReadIpv4(const char *text, void *network)
{
    struct in_addr address;
    if (text == NULL || network == NULL || inet_pton(AF_INET, text, &address) != 1) {
        return REFUSED;
    }
    memcpy(network, &address, sizeof address);
    return 0;
}

/* To a word whose first octet is the most significant. */
static uint32_t ReadIpv4Word(const char *text, uint32_t *address)
{
    uint32_t network;
    if (address == NULL || ReadIpv4(text, &network) != 0) {
        return REFUSED;
    }
    const uint32_t word = ntohl(network);
    memcpy(address, &word, sizeof word);
    return 0;
}

static uint32_t ReadIpv6(const char *text, void *address16)
{
    struct in6_addr address;
    if (text == NULL || address16 == NULL || inet_pton(AF_INET6, text, &address) != 1) {
        return REFUSED;
    }
    memcpy(address16, &address, sizeof address);
    return 0;
}

BGP_REPLACEABLE uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address)
{
    return ReadIpv4Word(text, address);
}

BGP_REPLACEABLE uint32_t QOV_StrToIpAddr(const char *text, uint32_t *address)
{
    return ReadIpv4Word(text, address);
}

BGP_REPLACEABLE uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t *address16, uint32_t flags)
{
    (void)flags;
    return ReadIpv6(text, address16);
}

BGP_REPLACEABLE uint32_t SMP_InetAToN6(const char *text, uint8_t *address16)
{
    return ReadIpv6(text, address16);
}

BGP_REPLACEABLE uint32_t SMP_InetAToN(const char *text, void *address, uint32_t family)
{
    switch (family) {
    case FAMILY_IPV4:
        return ReadIpv4(text, address);
    case FAMILY_IPV6:
        return ReadIpv6(text, address);
    default:
        return REFUSED;
    }
}

BGP_REPLACEABLE char *QOV_IpAddrToStr(uint32_t address, char *buffer)
{
    if (buffer == NULL) {
        return NULL;
    }
    snprintf(buffer, INET_ADDRSTRLEN, "%u.%u.%u.%u", address >> 24, address >> 16 & 255U, address >> 8 & 255U,
             address & 255U);
    return buffer;
}

char *BgpCommon_inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size)
{
    if (source16 == NULL || buffer == NULL || inet_ntop(AF_INET6, source16, buffer, size) == NULL) {
        return NULL;
    }
    return buffer;
}

BGP_REPLACEABLE char *QOV_Inet_ntoa_b_ipv6(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t word3, char *buffer)
{
    const uint32_t words[] = {word0, word1, word2, word3};
    uint16_t groups[8];
    uint8_t address[16];
    memcpy(groups, words, sizeof groups);
    for (size_t group = 0; group < 8; ++group) {
        groups[group] = htons(groups[group]);
    }
    memcpy(address, groups, sizeof address);
    return BgpCommon_inet_ntop6(address, buffer, INET6_ADDRSTRLEN);
}

BGP_REPLACEABLE uint32_t ZOL_CheckBySymbolForIPV4(const char *text)
{
    return text != NULL && text[strspn(text, "0123456789.")] == '\0' ? 0 : REFUSED;
}

/* One to four hexadecimal digits as a pair of bytes. Returns what stands behind them, null when there are others. */
static const char *ReadMacGroup(const char *text, uint8_t *pair)
{
    unsigned value = 0;
    unsigned digits = 0;
    for (; digits < 5 && DigitValue(*text) < 16; ++digits, ++text) {
        value = value << 4 | DigitValue(*text);
    }
    pair[0] = (uint8_t)(value >> 8);
    pair[1] = (uint8_t)value;
    return digits < 1 || digits > 4 ? NULL : text;
}

BGP_REPLACEABLE uint32_t SMP_Str2Mac(const char *text, uint8_t *mac6)
{
    if (text == NULL || mac6 == NULL) {
        return REFUSED;
    }
    uint8_t mac[6];
    for (size_t at = 0; at < sizeof mac; at += 2) {
        if (at != 0 && *text++ != '-') {
            return REFUSED;
        }
        text = ReadMacGroup(text, mac + at);
        if (text == NULL) {
            return REFUSED;
        }
    }
    if (*text != '\0') {
        return REFUSED;
    }
    memcpy(mac6, mac, sizeof mac);
    return 0;
}
