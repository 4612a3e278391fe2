// EVPN routes from text. The text does not say its route type; how many separators of which kind it holds, and what has
// come before its second colon, does:
//
//   type  route (RFC 7432; 5: RFC 9136; 6 to 8: RFC 9251)  text
//   1     Ethernet auto-discovery                          ESI:tag
//   2     MAC/IP advertisement                             tag:maclen:MAC:iplen:IP
//   3     inclusive multicast Ethernet tag                 tag:iplen:IP
//   4     Ethernet segment                                 ESI[:iplen:IP]
//   5     IP prefix                                        tag:IP:len
//   6-8   multicast                                        evpn_multicast.cpp
//
// An ESI is xxxx.xxxx.xxxx.xxxx.xxxx, a MAC xxxx-xxxx-xxxx; an IPv6 address stands in brackets. The layouts that the
// parsers fill are in evpn.cpp. A refused text may leave part of the value filled.
#include "prefix/evpn.h"

#include "bgp_host_services.h"
#include "host/bytes.h"
#include "prefix/address_field.h"

namespace bgp {

// ---------------------------------------------------------------------------------------------------- pieces of a text

bool ReadIpv4(const char *text, uint8_t *field)
{
    uint32_t address = 0;
    if (SYSDT_Str2Ipv4(text, &address) != 0) {
        return false;
    }
    SetIpv4(field, address);
    return true;
}

bool TakeBracketed(const char *&cursor, uint8_t *address16)
{
    const char *close = *cursor == '[' ? std::strchr(cursor, ']') : nullptr;
    if (close == nullptr) {
        return false;
    }
    const Text inside{cursor + 1, static_cast<uint32_t>(close - cursor - 1)};
    cursor = close + 1;
    char address[kLongestAddress + 1];
    return inside.length != 0 && Terminate(inside, address, sizeof address) &&
           SYSDT_Str2Ipv6(address, address16, 0) == 0;
}

namespace {

// The piece of 1 to `most` characters before the next colon, copied and terminated; the cursor moves behind the colon.
bool TakePiece(const char *&cursor, char *piece, uint32_t most)
{
    const char *colon = std::strchr(cursor, ':');
    if (colon == nullptr) {
        return false;
    }
    const Text text{cursor, static_cast<uint32_t>(colon - cursor)};
    cursor = colon + 1;
    return text.length != 0 && Terminate(text, piece, most + 1);
}

bool TakeTag(const char *&cursor, uint8_t *at)
{
    char piece[kTagChars + 1];
    uint32_t tag = 0;
    if (!TakePiece(cursor, piece, kTagChars) || SMP_StrToUint32(piece, &tag) != 0) {
        return false;
    }
    Store(at, tag);
    return true;
}

// A length may be anything that fits in its byte, in front of an IPv4 address too; only in front of an IPv6 address it
// has its natural limit.
bool ReadLength(const char *text, uint32_t most, uint8_t *at)
{
    uint32_t length = 0;
    if (SMP_StrToUint32(text, &length) != 0 || length > most) {
        return false;
    }
    *at = static_cast<uint8_t>(length);
    return true;
}

bool TakeLength(const char *&cursor, uint32_t most, uint8_t *at)
{
    char piece[kLengthChars + 1];
    return TakePiece(cursor, piece, kLengthChars) && ReadLength(piece, most, at);
}

// "len:IPv4" or "len:[IPv6]" to the end. The length goes to `at`, the address field stands right behind it.
bool ReadLengthAndAddress(const char *text, uint8_t *at)
{
    if (std::strchr(text, '[') == nullptr) {
        return TakeLength(text, UINT8_MAX, at) && ReadIpv4(text, at + 1);
    }
    uint8_t address[16];
    if (SYSDT_Str2EvpnIpv6(text, address, at) != DT_OK) {
        return false;
    }
    SetIpv6(at + 1, address);
    return true;
}

// ----------------------------------------------------------------------------------------------- the bodies of a route

// ESI 0, a single-homed site, may only be announced by this route. It counts as written as soon as its twenty zeros are
// there, wherever the dots are.
bool IsZeroEsi(const char *text)
{
    uint32_t zeros = 0;
    for (; *text != '\0'; ++text) {
        zeros += *text == '0';
    }
    return zeros == 20;
}

bool ReadAutoDiscovery(const char *text, uint8_t *value, uint32_t checkMode)
{
    const char *colon = std::strchr(text, ':');
    uint32_t tag = 0;
    if (colon == nullptr || SMP_StrToUint32(colon + 1, &tag) != 0) {
        return false;
    }
    Store(value + 15, tag);
    char esi[kEsiChars + 1];
    if (!Terminate({text, static_cast<uint32_t>(colon - text)}, esi, sizeof esi)) {
        return false;
    }
    if (IsZeroEsi(esi)) {
        std::memset(value + 5, 0, 10);
        return true;
    }
    return SYSDT_Str2EsiForAd(esi, value + 5, 1, checkMode) == DT_OK;
}

bool ReadMac(const char *text, uint8_t *value)
{
    constexpr uint32_t kMacChars = 14;
    char mac[kMacChars + 1];
    return TakeTag(text, value + 5) && TakeLength(text, UINT8_MAX, value + 9) && TakePiece(text, mac, kMacChars) &&
           SMP_Str2Mac(mac, value + 10) == 0 && ReadLengthAndAddress(text, value + 16);
}

bool ReadInclusive(const char *text, uint8_t *value)
{
    return TakeTag(text, value + 5) && ReadLengthAndAddress(text, value + 9);
}

bool ReadSegment(const char *text, uint8_t *value, uint32_t checkMode)
{
    char esi[kEsiChars + 1];
    return TakePiece(text, esi, kEsiChars) && SYSDT_Str2EsiBas(esi, value + 5, 1, checkMode) == DT_OK &&
           ReadLengthAndAddress(text, value + 15);
}

bool ReadIpv4Prefix(const char *text, uint8_t *value)
{
    constexpr uint32_t kIpv4Chars = 15;
    char address[kIpv4Chars + 1];
    return TakeTag(text, value + 5) && TakePiece(text, address, kIpv4Chars) && ReadLength(text, UINT8_MAX, value + 9) &&
           ReadIpv4(address, value + 10);
}

// The character between "]" and the length is passed over unseen.
bool ReadIpv6Prefix(const char *text, uint8_t *value)
{
    uint8_t address[16];
    if (!TakeTag(text, value + 5) || !TakeBracketed(text, address) || *text == '\0' ||
        !ReadLength(text + 1, UINT8_MAX, value + 9)) {
        return false;
    }
    SetIpv6(value + 10, address);
    return true;
}

// --------------------------------------------------------------------------------------------------- which route it is

// What a text is made of, and what had come before its second colon.
struct Census {
    uint32_t dots, colons, dashes, brackets;
    uint32_t colonsOutside; // colons but those behind a "["
    bool inBrackets;        // the last bracket was a "["
    bool prefixIpv4 = true; // neither two numbers nor an ESI came first: the address of an IP prefix did
    bool segment;           // an ESI and a length came first
    bool inclusive;         // nothing in brackets, and no ESI, came first
};

void CountColon(Census &census)
{
    census.colonsOutside += census.inBrackets ? 0 : 1;
    if (++census.colons != 2) {
        return;
    }
    if (census.brackets == 0) {
        census.inclusive = true;
    }
    if (census.dots == 0) {
        census.prefixIpv4 = false;
    }
    if (census.dots == 4) {
        census.prefixIpv4 = false;
        census.inclusive = false;
        census.segment = true;
    }
}

// False for a text with a character that belongs in no route.
bool Count(Text text, Census &census)
{
    for (uint32_t i = 0; i < text.length; ++i) {
        switch (const char character = text.at[i]; character) {
        case '.':
            ++census.dots;
            break;
        case ':':
            CountColon(census);
            break;
        case '-':
            ++census.dashes;
            break;
        case '[':
        case ']':
            ++census.brackets;
            census.inBrackets = character == '[';
            break;
        default:
            if (!IsHexDigit(character)) {
                return false;
            }
        }
    }
    return true;
}

// An Ethernet segment without its originator: an ESI and nothing else.
uint32_t ParseBareEsi(const char *text, uint8_t *value, uint32_t checkMode)
{
    return ParseRoute(4, text, value, [checkMode](const char *esi, uint8_t *bytes) {
        return SYSDT_Str2EsiBas(esi, bytes + 5, 1, checkMode) == DT_OK;
    });
}

// The order of the questions is part of the syntax.
uint32_t Dispatch(Text text, const Census &census, uint8_t *value, uint32_t checkMode)
{
    if (RouteParser *parse = FindMulticastParser(census.colonsOutside); parse != nullptr) {
        return parse(text.at, value);
    }
    if (census.segment) {
        return SYSDT_Str2Es(text.at, value, checkMode);
    }
    if (census.brackets == 2 && census.dashes == 0) {
        return census.inclusive ? SYSDT_Str2Inclusive(text.at, value) : SYSDT_Str2Ipv6Prefix(text.at, value);
    }
    if (census.brackets == 2 && census.dashes == 2 && census.colons > 4) {
        return SYSDT_Str2EvnMac(text.at, value);
    }
    const bool dotsFit = census.dots == 3 || census.dots == 4 || census.dots == 7;
    const bool dashesFit = census.dashes == 0 || census.dashes == 2;
    if (!dotsFit || !dashesFit || census.brackets != 0 || census.colons > 4) {
        return DT_ERR_FAIL;
    }
    if (census.colons == 2 && census.dashes == 0) {
        if (!census.prefixIpv4) {
            return SYSDT_Str2Inclusive(text.at, value);
        }
        return census.dots == 3 ? SYSDT_Str2IpPrefix(text.at, value) : DT_ERR_FAIL;
    }
    if (census.colons == 0 && text.length == kEsiChars) {
        return census.dots == 4 ? ParseBareEsi(text.at, value, checkMode) : DT_ERR_FAIL;
    }
    if (census.colons == 1 && census.dots == 4) {
        return SYSDT_Str2Ad(text.at, value, checkMode);
    }
    return census.colons == 4 ? SYSDT_Str2EvnMac(text.at, value) : DT_ERR_FAIL;
}

} // namespace

} // namespace bgp

// --------------------------------------------------------------------------------------------------------- the parsers

uint32_t SYSDT_Str2EvnPrefix(const char *text, void *value, uint32_t checkMode)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::Text trimmed = bgp::Trim(text);
    char route[bgp::kLongestRoute + 1]; // terminated where the trimmed text ends
    bgp::Census census{};
    if (trimmed.length == 0 || !bgp::Terminate(trimmed, route, sizeof route) || !bgp::Count(trimmed, census)) {
        return DT_ERR_FAIL;
    }
    return bgp::Dispatch({route, trimmed.length}, census, static_cast<uint8_t *>(value), checkMode);
}

uint32_t SYSDT_Str2Ad(const char *text, void *value, uint32_t checkMode)
{
    return bgp::ParseRoute(1, text, value, [checkMode](const char *route, uint8_t *bytes) {
        return bgp::ReadAutoDiscovery(route, bytes, checkMode);
    });
}

uint32_t SYSDT_Str2EvnMac(const char *text, void *value)
{
    return bgp::ParseRoute(2, text, value, bgp::ReadMac);
}

uint32_t SYSDT_Str2Inclusive(const char *text, void *value)
{
    return bgp::ParseRoute(3, text, value, bgp::ReadInclusive);
}

uint32_t SYSDT_Str2Es(const char *text, void *value, uint32_t checkMode)
{
    return bgp::ParseRoute(4, text, value, [checkMode](const char *route, uint8_t *bytes) {
        return bgp::ReadSegment(route, bytes, checkMode);
    });
}

uint32_t SYSDT_Str2IpPrefix(const char *text, void *value)
{
    return bgp::ParseRoute(5, text, value, bgp::ReadIpv4Prefix);
}

uint32_t SYSDT_Str2Ipv6Prefix(const char *text, void *value)
{
    return bgp::ParseRoute(5, text, value, bgp::ReadIpv6Prefix);
}

uint32_t SYSDT_Str2EvpnMcRoute(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    bgp::Census census{};
    const bool counted = bgp::Count({text, static_cast<uint32_t>(std::strlen(text))}, census);
    bgp::RouteParser *parse = counted ? bgp::FindMulticastParser(census.colonsOutside) : nullptr;
    return parse != nullptr ? parse(text, value) : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2EvpnIpv6(const char *text, uint8_t *ipv6, uint8_t *length)
{
    if (text == nullptr || ipv6 == nullptr || length == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bool read = bgp::TakeLength(text, bgp::kMostIpv6Length, length) && bgp::TakeBracketed(text, ipv6);
    return read && *text == '\0' ? DT_OK : DT_ERR_FAIL;
}
