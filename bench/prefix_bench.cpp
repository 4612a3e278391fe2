#include "bench.h"
#include "textbook.h"

#include <arpa/inet.h>
#include <cstdio>

namespace bgp::bench {

namespace {

std::string Number(uint32_t number)
{
    return std::to_string(number);
}

std::string Ipv4(uint32_t address)
{
    return Number(address >> 24) + '.' + Number(address >> 16 & 255) + '.' + Number(address >> 8 & 255) + '.' +
           Number(address & 255);
}

std::string Ipv4Text(uint32_t seed)
{
    return Ipv4(Scatter(seed));
}

std::string Ipv6Text(uint32_t seed)
{
    char text[48];
    std::snprintf(text, sizeof text, "2001:db8:%x::%x", (Scatter(seed) & 0xFFFF) | 1, (Scatter(seed + 1) & 0xFFFF) | 1);
    return text;
}

std::string MacRouteText(uint32_t seed)
{
    char mac[20];
    std::snprintf(mac, sizeof mac, "%04x-%04x-%04x", Scatter(seed) & 0xFFFF, Scatter(seed + 1) & 0xFFFF,
                  Scatter(seed + 2) & 0xFFFF);
    return Number(Scatter(seed + 3) >> 16) + ":48:" + mac + ":32:" + Ipv4(Scatter(seed + 4));
}

std::string IpRouteText(uint32_t seed)
{
    return Number(Scatter(seed) >> 16) + ':' + Ipv4(Scatter(seed + 1)) + ':' + Number(Scatter(seed + 2) % 33);
}

std::string SrPolicyText(uint32_t seed)
{
    return '[' + Number(Scatter(seed) >> 16) + "][" + Number(Scatter(seed + 1) >> 16) + "][" + Ipv4(Scatter(seed + 2)) +
           ']';
}

std::string MdtText(uint32_t seed)
{
    return Ipv4(Scatter(seed)) + '/' + Number(Scatter(seed + 1) % 33);
}

// --------------------------------------------------------------------------------------------------------- the
// textbook

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

// -------------------------------------------------------------------------------------------------------------- BGP-LS

std::string NodeText(uint32_t seed)
{
    return "[NODE][OSPFv2][IDENTIFIER" + Number(Scatter(seed)) + "][LOCAL[as" + Number(Scatter(seed + 1) | 1) +
           "][bgp-ls-identifier" + Ipv4(Scatter(seed + 2)) + "][ospf-area-id" + Ipv4(Scatter(seed + 3) & 0xFF) +
           "][igp-router-id" + Ipv4(Scatter(seed + 4)) + "]]";
}

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

} // namespace

std::vector<Row> PrefixRows()
{
    return {
        {"BOLPREFIX", "IPv4 address", Ipv4Text, Ipv4In, Ipv4Out},
        {"BOLPREFIX", "IPv6 address", Ipv6Text},
        {"BOLPREFIX", "EVPN MAC/IP", MacRouteText},
        {"BOLPREFIX", "SR policy", SrPolicyText, SrPolicyIn, SrPolicyOut},
        {"EVNPREFIX", "MAC/IP", MacRouteText},
        {"EVNPREFIX", "IP prefix", IpRouteText, IpRouteIn, IpRouteOut},
        {"MDTPREFIX", "prefix", MdtText, MdtIn},
        {"BGPLSPREFIX", "OSPF node", NodeText, NodeIn},
    };
}

} // namespace bgp::bench
