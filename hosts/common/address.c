/*
 * Address texts: what inet_pton() reads and inet_ntop() prints, in code of its own. These services are called for every
 * address of a route, and the C library's take several times as long.
 */
#include "bgp_host_common.h"
#include "bgp_host_services.h"
#include "digits.h"
#include "replaceable.h"

#include <stdbool.h>
#include <string.h>

enum { REFUSED = 1 };
enum { FAMILY_IPV4 = 2, FAMILY_IPV6 = 10 };
enum { OCTETS = 4, GROUPS = 8, GROUP_DIGITS = 4 };
enum { IPV4_SIZE = 4, IPV6_SIZE = 16 };
enum { IPV4_ROOM = 16, IPV6_ROOM = 46 }; /* of the longest texts, terminators included */

/* ----------------------------------------------------------------------------------------------------- text in */

/* One to three digits, no zero in front of others. Returns what stands behind them, null when there is no octet. */
static const char *ReadOctet(const char *text, uint32_t *octet)
{
    const unsigned first = DigitValue(text[0]);
    if (first > 9) {
        return NULL;
    }
    const unsigned second = DigitValue(text[1]);
    if (second > 9) {
        *octet = first;
        return text + 1;
    }
    const unsigned third = DigitValue(text[2]);
    *octet = third > 9 ? first * 10 + second : first * 100 + second * 10 + third;
    return first == 0 || *octet > UINT8_MAX ? NULL : text + (third > 9 ? 2 : 3);
}

/* The whole text to a word whose first octet is the most significant. */
static bool ReadIpv4(const char *text, uint32_t *address)
{
    uint32_t octets[OCTETS];
    for (unsigned i = 0; i < OCTETS; ++i) {
        if (i > 0 && *text++ != '.') {
            return false;
        }
        text = ReadOctet(text, &octets[i]);
        if (text == NULL) {
            return false;
        }
    }
    *address = octets[0] << 24 | octets[1] << 16 | octets[2] << 8 | octets[3];
    return *text == '\0';
}

static void PutBig(uint8_t *at, uint32_t value, unsigned width)
{
    for (; width > 0; value >>= 8) {
        at[--width] = (uint8_t)value;
    }
}

/* Up to four hexadecimal digits, perhaps none. Returns what stands behind them. */
static const char *ReadGroup(const char *text, uint32_t *group)
{
    uint32_t value = 0;
    unsigned digit;
    for (unsigned count = 0; count < GROUP_DIGITS && (digit = DigitValue(*text)) < 16; ++count, ++text) {
        value = value << 4 | digit;
    }
    *group = value;
    return text;
}

/* What stands behind "::" is read to a place of its own, and copied to the end of the address when all is read. */
typedef struct {
    uint8_t address[2 * IPV6_SIZE]; /* with room behind it, so that the copy has one size whatever it holds */
    uint8_t behind[IPV6_SIZE];
    uint8_t *at;   /* in either of them */
    unsigned left; /* bytes that may come */
    bool gap;      /* "::" stood there */
} Ipv6;

static bool PutGroup(Ipv6 *ipv6, uint32_t value, unsigned size)
{
    if (ipv6->left < size) {
        return false;
    }
    PutBig(ipv6->at, value, size);
    ipv6->at += size;
    ipv6->left -= size;
    return true;
}

/* From the text or from behind a colon on; a second colon there makes "::". An IPv4 address may stand last. */
static bool ReadGroups(const char *text, Ipv6 *ipv6)
{
    for (;;) {
        if (*text == ':') {
            if (ipv6->gap) {
                return false;
            }
            ipv6->gap = true;
            ipv6->at = ipv6->behind;
            if (*++text == '\0') {
                return true;
            }
        }
        uint32_t value;
        const char *const end = ReadGroup(text, &value);
        if (*end == '.') {
            return ReadIpv4(text, &value) && PutGroup(ipv6, value, IPV4_SIZE);
        }
        if (end == text || !PutGroup(ipv6, value, 2)) {
            return false;
        }
        if (*end != ':') {
            return *end == '\0';
        }
        text = end + 1;
    }
}

/* "::" stands for one group or more. */
static bool ReadIpv6(const char *text, uint8_t *address16)
{
    Ipv6 ipv6 = {.left = IPV6_SIZE};
    ipv6.at = ipv6.address;
    if ((*text == ':' && *++text != ':') || !ReadGroups(text, &ipv6) || ipv6.gap != (ipv6.left > 0)) {
        return false;
    }
    if (ipv6.gap) {
        memcpy(ipv6.address + IPV6_SIZE - (ipv6.at - ipv6.behind), ipv6.behind, IPV6_SIZE);
    }
    memcpy(address16, ipv6.address, IPV6_SIZE);
    return true;
}

/* ---------------------------------------------------------------------------------------------------- text out */

/* The first `count` of four characters, the first of which is in the lowest byte. All four bytes are written. */
static char *PutCharacters(char *at, uint32_t four, unsigned count)
{
    for (unsigned i = 0; i < 4; ++i) {
        at[i] = (char)(four >> 8 * i);
    }
    return at + count;
}

/* "0" to "255" and a dot. */
static char *PutOctet(char *at, uint32_t octet)
{
    const uint32_t hundreds = octet / 100;
    const uint32_t tens = octet / 10 % 10;
    const uint32_t digits = hundreds | tens << 8 | octet % 10 << 16 | 0x2E303030; /* "000." */
    const unsigned count = 1U + (octet > 9) + (octet > 99);
    return PutCharacters(at, digits >> 8 * (3 - count), count + 1);
}

/* Returns the place of the terminator. Up to three bytes behind it are written. */
static char *PutIpv4(char *at, uint32_t address)
{
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        at = PutOctet(at, address >> (shift - 8) & 0xFF);
    }
    *--at = '\0';
    return at;
}

/* Hexadecimal digits, without zeros in front. */
static char *PutHex(char *at, uint32_t group)
{
    uint32_t digits = group >> 12 | (group & 0xF00) | (group & 0xF0) << 12 | (group & 0xF) << 24;
    const uint32_t letters = (digits + 0x06060606) >> 4 & 0x01010101; /* 1 for each digit above 9 */
    digits += 0x30303030 + letters * ('a' - '0' - 10);
    const unsigned count = 1U + (group > 0xF) + (group > 0xFF) + (group > 0xFFF);
    return PutCharacters(at, digits >> 8 * (4 - count), count);
}

/* Groups that print as "::". */
typedef struct {
    unsigned first, count;
} Run;

/* The first of the longest runs of two or more zeros. Where there is none, it begins behind the last group. */
static Run LongestRun(const uint16_t *groups)
{
    unsigned zeros = 0; /* bit n: group n is zero */
    for (unsigned i = 0; i < GROUPS; ++i) {
        zeros |= (groups[i] == 0 ? 1U : 0U) << i;
    }
    unsigned starts = zeros & zeros >> 1; /* bit n: so many zeros begin at group n */
    unsigned count = 2;
    if (starts == 0) {
        return (Run){GROUPS, count};
    }
    for (unsigned longer; (longer = starts & zeros >> count) != 0; ++count) {
        starts = longer;
    }
    unsigned first = 0;
    while ((starts >> first & 1) == 0) {
        ++first;
    }
    return (Run){first, count};
}

/* Addresses whose last two groups print as an IPv4 address: mapped ones, and the "compatible" ones of old. */
static bool EndsInIpv4(const uint16_t *groups, Run run)
{
    return run.first == 0 && (run.count == 6 || (run.count == 5 && groups[5] == 0xFFFF));
}

/* Returns the place of the terminator. Up to three bytes behind it are written. */
static char *PutIpv6(char *at, const uint16_t *groups)
{
    const Run run = LongestRun(groups);
    const bool ipv4 = EndsInIpv4(groups, run);
    const unsigned end = ipv4 ? GROUPS - 2 : GROUPS;
    for (unsigned i = 0; i < end;) {
        if (i > 0 || run.first == 0) {
            *at++ = ':';
        }
        if (i == run.first) {
            i += run.count;
        } else {
            at = PutHex(at, groups[i++]);
        }
    }
    if (ipv4 || run.first + run.count == GROUPS) {
        *at++ = ':';
    }
    if (ipv4) {
        return PutIpv4(at, (uint32_t)groups[6] << 16 | groups[7]);
    }
    *at = '\0';
    return at;
}

/* Into `size` bytes; null, and nothing written, when it does not fit. */
static char *PrintIpv6(const uint16_t *groups, char *buffer, size_t size)
{
    char text[IPV6_ROOM + 3];
    const size_t length = (size_t)(PutIpv6(text, groups) - text);
    if (length >= size) {
        return NULL;
    }
    memcpy(buffer, text, length + 1);
    return buffer;
}

/* ------------------------------------------------------------------------------------------------- the services */

static uint32_t ReadIpv4Word(const char *text, uint32_t *address)
{
    uint32_t word;
    if (text == NULL || address == NULL || !ReadIpv4(text, &word)) {
        return REFUSED;
    }
    memcpy(address, &word, sizeof word);
    return 0;
}

/* To four bytes of network order. */
static uint32_t ReadIpv4Bytes(const char *text, uint8_t *address4)
{
    uint32_t word;
    if (text == NULL || address4 == NULL || !ReadIpv4(text, &word)) {
        return REFUSED;
    }
    PutBig(address4, word, IPV4_SIZE);
    return 0;
}

static uint32_t ReadIpv6Bytes(const char *text, uint8_t *address16)
{
    return text == NULL || address16 == NULL || !ReadIpv6(text, address16) ? REFUSED : 0;
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
    return ReadIpv6Bytes(text, address16);
}

BGP_REPLACEABLE uint32_t SMP_InetAToN6(const char *text, uint8_t *address16)
{
    return ReadIpv6Bytes(text, address16);
}

BGP_REPLACEABLE uint32_t SMP_InetAToN(const char *text, void *address, uint32_t family)
{
    switch (family) {
    case FAMILY_IPV4:
        return ReadIpv4Bytes(text, address);
    case FAMILY_IPV6:
        return ReadIpv6Bytes(text, address);
    default:
        return REFUSED;
    }
}

BGP_REPLACEABLE char *QOV_IpAddrToStr(uint32_t address, char *buffer)
{
    if (buffer == NULL) {
        return NULL;
    }
    char text[IPV4_ROOM + 3];
    const char *const end = PutIpv4(text, address);
    memcpy(buffer, text, (size_t)(end - text) + 1);
    return buffer;
}

char *BgpCommon_inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size)
{
    if (source16 == NULL || buffer == NULL) {
        return NULL;
    }
    uint16_t groups[GROUPS];
    for (unsigned i = 0; i < GROUPS; ++i) {
        groups[i] = (uint16_t)(source16[2 * i] << 8 | source16[2 * i + 1]);
    }
    return PrintIpv6(groups, buffer, size);
}

BGP_REPLACEABLE char *QOV_Inet_ntoa_b_ipv6(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t word3, char *buffer)
{
    if (buffer == NULL) {
        return NULL;
    }
    const uint32_t words[] = {word0, word1, word2, word3};
    uint16_t groups[GROUPS];
    memcpy(groups, words, sizeof groups);
    return PrintIpv6(groups, buffer, IPV6_ROOM);
}

BGP_REPLACEABLE uint32_t ZOL_CheckBySymbolForIPV4(const char *text)
{
    return text != NULL && text[strspn(text, "0123456789.")] == '\0' ? 0 : REFUSED;
}

BGP_REPLACEABLE uint32_t SMP_Str2Mac(const char *text, uint8_t *mac6)
{
    if (text == NULL || mac6 == NULL) {
        return REFUSED;
    }
    uint32_t pairs[3];
    for (unsigned i = 0; i < 3; ++i) {
        if (i > 0 && *text++ != '-') {
            return REFUSED;
        }
        const char *const end = ReadGroup(text, &pairs[i]);
        if (end == text) {
            return REFUSED;
        }
        text = end;
    }
    if (*text != '\0') {
        return REFUSED;
    }
    for (unsigned i = 0; i < 3; ++i) {
        PutBig(mac6 + 2 * i, pairs[i], 2);
    }
    return 0;
}
