// EVPN routes from text. The text does not say its route type; how many separators of which kind it holds, and what has
// come before its second colon, does:
//
//   type  route (RFC 7432; 5: RFC 9136; 6 to 8: RFC 9251)  text
//   1     Ethernet auto-discovery                          ESI:tag
//   2     MAC/IP advertisement                             tag:maclen:MAC:iplen:IP
//   3     inclusive multicast Ethernet tag                 tag:iplen:IP
//   4     Ethernet segment                                 ESI[:iplen:IP]
//   5     IP prefix                                        tag:IP:len
//   6-8   multicast                                        multicast.cpp
//
// An ESI is xxxx.xxxx.xxxx.xxxx.xxxx, a MAC xxxx-xxxx-xxxx; an IPv6 address stands in brackets. The layouts that the
// parsers fill are the rows of routes.h. A refused text may leave part of the value filled.
#include "prefix/evpn/text.h"

#include "bgp_datatypes/evpn.h"
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/evpn/multicast.h"
#include "prefix/evpn/pieces.h"

namespace bgp {

namespace {

// ----------------------------------------------------------------------------------------------- the bodies of a route

// "len:IPv4" or "len:[IPv6]" to the end. The length goes to `at`, the address field stands right behind it.
bool ReadLengthAndAddress(const char *text, uint8_t *at, const char *theLength, const char *what, Why *why)
{
    if (std::strchr(text, '[') == nullptr) {
        return TakeLength(text, {0, UINT8_MAX, theLength}, at, why) &&
               ReadIpv4Piece(text, {text, static_cast<uint32_t>(std::strlen(text))}, at + 1, what, why);
    }
    uint8_t address[16];
    if (!ReadIpv6Tail(text, address, at, theLength, what, why)) {
        return false;
    }
    SetIpv6(at + 1, address);
    return true;
}

// ESI 0, a single-homed site, may only be announced by an auto-discovery route. It counts as written as soon as its
// twenty zeros are there, wherever the dots are.
bool IsZeroEsi(Text text)
{
    uint32_t zeros = 0;
    for (uint32_t i = 0; i < text.length; ++i) {
        zeros += text.at[i] == '0';
    }
    return zeros == 20;
}

bool ReadAutoDiscovery(const char *text, uint8_t *value, uint32_t checkMode, Why *why)
{
    const char *colon = std::strchr(text, ':');
    if (colon == nullptr) {
        return Refuse(why, {text + std::strlen(text), 0}, kNoColon, 0, kTheEsi);
    }
    const char *rest = colon + 1;
    uint32_t tag = 0;
    if (!ReadDecimal(rest, {rest, static_cast<uint32_t>(std::strlen(rest))}, {0, UINT32_MAX, kTheTag}, tag, why)) {
        return false;
    }
    Store(value + At(kAutoDiscoveryFields, "ethernetTag"), tag);
    uint8_t *at = value + At(kAutoDiscoveryFields, "esi");
    const Text esi{text, static_cast<uint32_t>(colon - text)};
    if (esi.length <= kEsiChars && IsZeroEsi(esi)) {
        std::memset(at, 0, kEsiSize);
        return true;
    }
    return ReadEsiPiece(esi, TypesFor(checkMode, kEsiAsBased), at, why);
}

bool ReadMacIp(const char *text, uint8_t *value, uint32_t, Why *why)
{
    char mac[kMacChars + 1];
    Text piece;
    if (!TakeTag(text, value + At(kMacIpFields, "ethernetTag"), why) ||
        !TakeLength(text, {0, UINT8_MAX, kTheMacLength}, value + At(kMacIpFields, "macLength"), why) ||
        !TakePiece(text, mac, kMacChars, piece, kTheMac, why)) {
        return false;
    }
    if (SMP_Str2Mac(mac, value + At(kMacIpFields, "mac")) != 0) {
        return Refuse(why, piece, kNoMac, 0, kTheMac);
    }
    return ReadLengthAndAddress(text, value + At(kMacIpFields, "ipLength"), kTheIpLength, kTheIp, why);
}

bool ReadInclusive(const char *text, uint8_t *value, uint32_t, Why *why)
{
    return TakeTag(text, value + At(kInclusiveFields, "ethernetTag"), why) &&
           ReadLengthAndAddress(text, value + At(kInclusiveFields, "originatorLength"), kTheOriginatorLength,
                                kTheOriginator, why);
}

bool ReadSegment(const char *text, uint8_t *value, uint32_t checkMode, Why *why)
{
    char copy[kEsiChars + 1];
    Text esi;
    return TakePiece(text, copy, kEsiChars, esi, kTheEsi, why) &&
           ReadEsiPiece(esi, TypesFor(checkMode, kEsiLacp), value + At(kSegmentFields, "esi"), why) &&
           ReadLengthAndAddress(text, value + At(kSegmentFields, "originatorLength"), kTheOriginatorLength,
                                kTheOriginator, why);
}

// An Ethernet segment without its originator: an ESI and nothing else.
bool ReadBareEsi(const char *text, uint8_t *value, uint32_t checkMode, Why *why)
{
    return ReadEsi(text, TypesFor(checkMode, kEsiLacp), value + At(kSegmentFields, "esi"), why);
}

bool ReadIpv4Prefix(const char *text, uint8_t *value, uint32_t, Why *why)
{
    constexpr uint32_t kIpv4Chars = 15;
    char address[kIpv4Chars + 1];
    Text piece;
    return TakeTag(text, value + At(kIpPrefixFields, "ethernetTag"), why) &&
           TakePiece(text, address, kIpv4Chars, piece, kThePrefix, why) &&
           ReadLength(text, kThePrefixLength, value + At(kIpPrefixFields, "prefixLength"), why) &&
           ReadIpv4Piece(address, piece, value + At(kIpPrefixFields, "prefix"), kThePrefix, why);
}

// The character between "]" and the length is passed over unseen.
bool ReadIpv6Prefix(const char *text, uint8_t *value, uint32_t, Why *why)
{
    uint8_t address[16];
    if (!TakeTag(text, value + At(kIpPrefixFields, "ethernetTag"), why) ||
        !TakeBracketed(text, address, kThePrefix, why)) {
        return false;
    }
    if (*text == '\0') {
        return Refuse(why, {text, 0}, kNothingBehind, 0, kThePrefix);
    }
    if (!ReadLength(text + 1, kThePrefixLength, value + At(kIpPrefixFields, "prefixLength"), why)) {
        return false;
    }
    SetIpv6(value + At(kIpPrefixFields, "prefix"), address);
    return true;
}

// --------------------------------------------------------------------------------------------------- which route it is

// A reader of one route type: `read` fills the body, then the route type says that it is whole.
template <EvpnRouteType Type, bool (*Read)(const char *, uint8_t *, uint32_t, Why *)>
bool ReadRoute(const char *text, void *value, uint32_t checkMode, Why *why)
{
    StandsIn(why, FindEvpnRoute(Type)->name);
    auto *bytes = static_cast<uint8_t *>(value);
    if (!Read(text, bytes, checkMode, why)) {
        return false;
    }
    bytes[kRouteTypeAt] = Type;
    return true;
}

constexpr auto *kReadAutoDiscovery = ReadRoute<kAutoDiscoveryRoute, ReadAutoDiscovery>;
constexpr auto *kReadMacIp = ReadRoute<kMacIpRoute, ReadMacIp>;
constexpr auto *kReadInclusive = ReadRoute<kInclusiveRoute, ReadInclusive>;
constexpr auto *kReadSegment = ReadRoute<kSegmentRoute, ReadSegment>;
constexpr auto *kReadBareEsi = ReadRoute<kSegmentRoute, ReadBareEsi>;
constexpr auto *kReadIpv4Prefix = ReadRoute<kIpPrefixRoute, ReadIpv4Prefix>;
constexpr auto *kReadIpv6Prefix = ReadRoute<kIpPrefixRoute, ReadIpv6Prefix>;

// What may be typed; named where the separators are those of none.
constexpr const char *kForms[] = {
    "ESI:tag",
    "tag:maclen:MAC:iplen:IP",
    "tag:iplen:IP",
    "ESI",
    "ESI:iplen:IP",
    "tag:IP:len",
    "tag:len:source:len:group:len:originator",
    "ESI:tag:len:source:len:group:len:originator",
    "ESI:tag:len:source:len:group:len:originator:number",
};

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
bool Count(Text text, Census &census, Why *why)
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
                return RefuseCharacter(why, {text.at + i, 1}, kWrongCharacter);
            }
        }
    }
    return true;
}

bool RefuseShape(Text text, Why *why)
{
    return RefuseChoice(why, text, kNoRoute, Choices(kForms));
}

// The order of the questions is part of the syntax.
bool Dispatch(Text text, const Census &census, void *value, uint32_t checkMode, Why *why)
{
    if (RouteReader *read = FindMulticastReader(census.colonsOutside); read != nullptr) {
        return read(text.at, value, why);
    }
    if (census.segment) {
        return kReadSegment(text.at, value, checkMode, why);
    }
    if (census.brackets == 2 && census.dashes == 0) {
        return (census.inclusive ? kReadInclusive : kReadIpv6Prefix)(text.at, value, checkMode, why);
    }
    if (census.brackets == 2 && census.dashes == 2 && census.colons > 4) {
        return kReadMacIp(text.at, value, checkMode, why);
    }
    const bool dotsFit = census.dots == 3 || census.dots == 4 || census.dots == 7;
    const bool dashesFit = census.dashes == 0 || census.dashes == 2;
    if (!dotsFit || !dashesFit || census.brackets != 0 || census.colons > 4) {
        return RefuseShape(text, why);
    }
    if (census.colons == 2 && census.dashes == 0) {
        if (!census.prefixIpv4) {
            return kReadInclusive(text.at, value, checkMode, why);
        }
        return census.dots == 3 ? kReadIpv4Prefix(text.at, value, checkMode, why) : RefuseShape(text, why);
    }
    if (census.colons == 0 && text.length == kEsiChars) {
        return census.dots == 4 ? kReadBareEsi(text.at, value, checkMode, why) : RefuseShape(text, why);
    }
    if (census.colons == 1 && census.dots == 4) {
        return kReadAutoDiscovery(text.at, value, checkMode, why);
    }
    return census.colons == 4 ? kReadMacIp(text.at, value, checkMode, why) : RefuseShape(text, why);
}

} // namespace

bool ReadEvpnText(const char *text, void *value, uint32_t checkMode, Why *why)
{
    const Text trimmed = Trim(text);
    Census census{};
    if (!HasLength(trimmed, 1, kLongestRoute, why) || !Count(trimmed, census, why)) {
        return false;
    }
    char route[kLongestRoute + 1]; // terminated where the trimmed text ends
    Terminate(trimmed, route, sizeof route);
    Moved(why, trimmed, route);
    return Dispatch({route, trimmed.length}, census, value, checkMode, why);
}

} // namespace bgp

// --------------------------------------------------------------------------------------------------------- the parsers

namespace {

template <auto Read>
uint32_t Parse(const char *text, void *value, uint32_t checkMode)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return Read(text, value, checkMode, nullptr) ? DT_OK : DT_ERR_FAIL;
}

} // namespace

uint32_t SYSDT_Str2EvnPrefix(const char *text, void *value, uint32_t checkMode)
{
    return Parse<bgp::ReadEvpnText>(text, value, checkMode);
}

uint32_t SYSDT_Str2Ad(const char *text, void *value, uint32_t checkMode)
{
    return Parse<bgp::kReadAutoDiscovery>(text, value, checkMode);
}

uint32_t SYSDT_Str2EvnMac(const char *text, void *value)
{
    return Parse<bgp::kReadMacIp>(text, value, bgp::kAnyEsiType);
}

uint32_t SYSDT_Str2Inclusive(const char *text, void *value)
{
    return Parse<bgp::kReadInclusive>(text, value, bgp::kAnyEsiType);
}

uint32_t SYSDT_Str2Es(const char *text, void *value, uint32_t checkMode)
{
    return Parse<bgp::kReadSegment>(text, value, checkMode);
}

uint32_t SYSDT_Str2IpPrefix(const char *text, void *value)
{
    return Parse<bgp::kReadIpv4Prefix>(text, value, bgp::kAnyEsiType);
}

uint32_t SYSDT_Str2Ipv6Prefix(const char *text, void *value)
{
    return Parse<bgp::kReadIpv6Prefix>(text, value, bgp::kAnyEsiType);
}

uint32_t SYSDT_Str2EvpnMcRoute(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    bgp::Census census{};
    const bool counted = bgp::Count({text, static_cast<uint32_t>(std::strlen(text))}, census, nullptr);
    bgp::RouteReader *read = counted ? bgp::FindMulticastReader(census.colonsOutside) : nullptr;
    return read != nullptr && read(text, value, nullptr) ? DT_OK : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2EvpnIpv6(const char *text, uint8_t *ipv6, uint8_t *length)
{
    if (text == nullptr || ipv6 == nullptr || length == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::ReadIpv6Tail(text, ipv6, length, nullptr, nullptr, nullptr) ? DT_OK : DT_ERR_FAIL;
}
