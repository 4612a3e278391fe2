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
#include "prefix/closest.h"
#include "prefix/evpn/multicast.h"
#include "prefix/prefix.h"

#include <compare>

namespace bgp {

namespace {

// ----------------------------------------------------------------------------------------------- the bodies of a route

// ESI 0, a single-homed site, may only be announced by an auto-discovery route. It counts as written as soon as its
// twenty zeros are there, wherever the dots are.
bool IsZeroEsi(Text text)
{
    uint32_t zeros = 0;
    for (uint32_t i = 0; i < text.length; ++i) {
        zeros += text.at[i] == '0';
    }
    return zeros == 20 && text.length <= kEsiChars;
}

// The tag is stored also when the ESI in front of it is none.
bool ReadAutoDiscovery(Text text, uint8_t *value, uint32_t checkMode, Why *why)
{
    Cursor cursor = CursorOn(text);
    const Text piece = NextPiece(cursor);
    const EsiTypes types = TypesFor(checkMode, kEsiAsBased);
    uint8_t esi[kEsiSize] = {};
    const bool isEsi = ReadEsi(piece, types, esi) || IsZeroEsi(piece);
    if (!isEsi && why != nullptr) {
        NoteEsi(*why, piece, types);
        return false;
    }
    uint32_t tag = 0;
    if (!PassColon(cursor, kTheEsi, why) || !ReadDecimal(Rest(cursor), kAnyChars, kTagRange, tag, why)) {
        return false;
    }
    Store(value + At(kAutoDiscoveryFields, "ethernetTag"), tag);
    if (isEsi) {
        std::memcpy(value + At(kAutoDiscoveryFields, "esi"), esi, sizeof esi);
    }
    return isEsi;
}

bool ReadMacIp(Text text, uint8_t *value, uint32_t, Why *why)
{
    Cursor cursor = CursorOn(text);
    uint8_t mac[kMacSize];
    if (!TakeTag(cursor, value + At(kMacIpFields, "ethernetTag"), why) ||
        !TakeLength(cursor, {0, UINT8_MAX, kTheMacLength}, value + At(kMacIpFields, "macLength"), why) ||
        !ReadMac(NextPiece(cursor), mac, why) || !PassColon(cursor, kTheMac, why)) {
        return false;
    }
    std::memcpy(value + At(kMacIpFields, "mac"), mac, sizeof mac);
    return ReadLengthAndAddress(cursor, value + At(kMacIpFields, "ipLength"), kTheIpLength, kTheIp, why);
}

bool ReadInclusive(Text text, uint8_t *value, uint32_t, Why *why)
{
    Cursor cursor = CursorOn(text);
    return TakeTag(cursor, value + At(kInclusiveFields, "ethernetTag"), why) &&
           ReadLengthAndAddress(cursor, value + At(kInclusiveFields, "originatorLength"), kTheOriginatorLength,
                                kTheOriginator, why);
}

bool ReadSegment(Text text, uint8_t *value, uint32_t checkMode, Why *why)
{
    Cursor cursor = CursorOn(text);
    uint8_t esi[kEsiSize];
    if (!ReadEsi(NextPiece(cursor), TypesFor(checkMode, kEsiLacp), esi, why) || !PassColon(cursor, kTheEsi, why)) {
        return false;
    }
    std::memcpy(value + At(kSegmentFields, "esi"), esi, sizeof esi);
    return ReadLengthAndAddress(cursor, value + At(kSegmentFields, "originatorLength"), kTheOriginatorLength,
                                kTheOriginator, why);
}

// An Ethernet segment without its originator: an ESI and nothing else.
bool ReadBareEsi(Text text, uint8_t *value, uint32_t checkMode, Why *why)
{
    return ReadEsi(text, TypesFor(checkMode, kEsiLacp), value + At(kSegmentFields, "esi"), why);
}

// The length is stored also when the address in front of it is none.
bool ReadIpv4Prefix(Text text, uint8_t *value, uint32_t, Why *why)
{
    Cursor cursor = CursorOn(text);
    if (!TakeTag(cursor, value + At(kIpPrefixFields, "ethernetTag"), why)) {
        return false;
    }
    const Text piece = NextPiece(cursor);
    char copy[kIpv4Chars + 1];
    uint32_t address = 0;
    const bool copied = piece.length != 0 && Terminate(piece, copy, sizeof copy);
    const bool isAddress = copied && SYSDT_Str2Ipv4(copy, &address) == 0;
    if (!isAddress && (why != nullptr || !copied)) {
        return RefuseIpv4(why, piece, kThePrefix);
    }
    if (!PassColon(cursor, kThePrefix.address, why) ||
        !ReadLength(cursor, kThePrefixLength, value + At(kIpPrefixFields, "prefixLength"), why)) {
        return false;
    }
    if (isAddress) {
        SetIpv4(value + At(kIpPrefixFields, "prefix"), address);
    }
    return isAddress;
}

// The character between "]" and the length is passed over unseen.
bool ReadIpv6Prefix(Text text, uint8_t *value, uint32_t, Why *why)
{
    Cursor cursor = CursorOn(text);
    uint8_t address[kIpv6Size];
    if (!TakeTag(cursor, value + At(kIpPrefixFields, "ethernetTag"), why) ||
        !TakeBracketed(cursor, address, kThePrefix.address, why)) {
        return false;
    }
    if (cursor.at++ == cursor.end) {
        return Refuse(why, {cursor.end, 0}, kNothingBehind, 0, kThePrefix.address);
    }
    if (!ReadLength(cursor, kThePrefixLength, value + At(kIpPrefixFields, "prefixLength"), why)) {
        return false;
    }
    SetIpv6(value + At(kIpPrefixFields, "prefix"), address);
    return true;
}

// ----------------------------------------------------------------------------------------------------------- the forms

// A reader of one route type: `Read` fills the body, then the route type says that it is whole.
template <EvpnRouteType Type, RouteReader Read>
bool ReadRoute(Text text, uint8_t *value, uint32_t checkMode, Why *why)
{
    StandsIn(why, FindEvpnRoute(Type)->name);
    if (!Read(text, value, checkMode, why)) {
        return false;
    }
    value[kRouteTypeAt] = Type;
    return true;
}

constexpr RouteReader *kReadAutoDiscovery = ReadRoute<kAutoDiscoveryRoute, ReadAutoDiscovery>;
constexpr RouteReader *kReadMacIp = ReadRoute<kMacIpRoute, ReadMacIp>;
constexpr RouteReader *kReadInclusive = ReadRoute<kInclusiveRoute, ReadInclusive>;
constexpr RouteReader *kReadSegment = ReadRoute<kSegmentRoute, ReadSegment>;
constexpr RouteReader *kReadBareEsi = ReadRoute<kSegmentRoute, ReadBareEsi>;
constexpr RouteReader *kReadIpv4Prefix = ReadRoute<kIpPrefixRoute, ReadIpv4Prefix>;
constexpr RouteReader *kReadIpv6Prefix = ReadRoute<kIpPrefixRoute, ReadIpv6Prefix>;

// What may be typed; named where the separators are those of none.
struct Form {
    const char *words;
    RouteReader *read;
    uint32_t colons; // outside brackets
};

constexpr Form kForms[] = {
    {"ESI:tag", kReadAutoDiscovery, 1},
    {"tag:maclen:MAC:iplen:IP", kReadMacIp, 4},
    {"tag:iplen:IP", kReadInclusive, 2},
    {"ESI", kReadBareEsi, 0},
    {"ESI:iplen:IP", kReadSegment, 2},
    {"tag:IP:len", kReadIpv4Prefix, 2},
    {"tag:IP:len", kReadIpv6Prefix, 2},
    {"tag:len:source:len:group:len:originator", ReadSmet, 6},
    {"ESI:tag:len:source:len:group:len:originator", ReadJoin, 7},
    {"ESI:tag:len:source:len:group:len:originator:number", ReadLeave, 8},
};

// The reader of the multicast route that has so many colons outside brackets; null when none has.
RouteReader *FindMulticastReader(uint32_t colonsOutside)
{
    switch (colonsOutside) {
    case 6:
        return ReadSmet;
    case 7:
        return ReadJoin;
    case 8:
        return ReadLeave;
    default:
        return nullptr;
    }
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

// Most characters of a route are digits, which are not counted.
struct Digits {
    bool at[256];
};

constexpr Digits kDigits = [] {
    Digits digits{};
    for (uint32_t i = 0; i < 256; ++i) {
        digits.at[i] = IsHexDigit(static_cast<char>(i));
    }
    return digits;
}();

// False for a character that belongs in no route.
inline bool CountCharacter(char character, Census &census)
{
    switch (character) {
    case '.':
        ++census.dots;
        return true;
    case ':':
        CountColon(census);
        return true;
    case '-':
        ++census.dashes;
        return true;
    case '[':
    case ']':
        ++census.brackets;
        census.inBrackets = character == '[';
        return true;
    default:
        return false;
    }
}

// The first character that belongs in no route; nothing, at the end, when all of them may.
Text Count(Text text, Census &census)
{
    for (uint32_t i = 0; i < text.length; ++i) {
        if (!kDigits.at[static_cast<uint8_t>(text.at[i])] && !CountCharacter(text.at[i], census)) {
            return {text.at + i, 1};
        }
    }
    return {text.at + text.length, 0};
}

// The order of the questions is part of the syntax. Null when the separators are those of no route.
RouteReader *FindReader(Text text, const Census &census)
{
    if (RouteReader *read = FindMulticastReader(census.colonsOutside); read != nullptr) {
        return read;
    }
    if (census.segment) {
        return kReadSegment;
    }
    if (census.brackets == 2 && census.dashes == 0) {
        return census.inclusive ? kReadInclusive : kReadIpv6Prefix;
    }
    if (census.brackets == 2 && census.dashes == 2 && census.colons > 4) {
        return kReadMacIp;
    }
    const bool dotsFit = census.dots == 3 || census.dots == 4 || census.dots == 7;
    const bool dashesFit = census.dashes == 0 || census.dashes == 2;
    if (!dotsFit || !dashesFit || census.brackets != 0 || census.colons > 4) {
        return nullptr;
    }
    if (census.colons == 2 && census.dashes == 0) {
        return !census.prefixIpv4 ? kReadInclusive : census.dots == 3 ? kReadIpv4Prefix : nullptr;
    }
    if (census.colons == 0 && text.length == kEsiChars) {
        return census.dots == 4 ? kReadBareEsi : nullptr;
    }
    if (census.colons == 1 && census.dots == 4) {
        return kReadAutoDiscovery;
    }
    return census.colons == 4 ? kReadMacIp : nullptr;
}

// ------------------------------------------------------------------------------------------------ which one was meant

uint32_t CountColonsOutside(Text text)
{
    Census census{};
    for (uint32_t i = 0; i < text.length; ++i) {
        CountCharacter(text.at[i], census);
    }
    return census.colonsOutside;
}

struct FormParser {
    RouteReader *read;
    uint32_t checkMode;
};

uint32_t ExplainForm(const void *parser, const char *text, BgpReason &reason)
{
    const auto &form = *static_cast<const FormParser *>(parser);
    uint8_t value[kBolPrefixLength];
    Why why{&reason, text, 0};
    return form.read({text, static_cast<uint32_t>(std::strlen(text))}, value, form.checkMode, &why) ? DT_OK
                                                                                                    : DT_ERR_FAIL;
}

// How much a form was meant; what comes first weighs more.
struct Rank {
    uint32_t pieces; // that were read, with their colons
    bool chosen;     // by the separators
    uint32_t reach;
    uint32_t beyond;
    bool colonsFit;
    auto operator<=>(const Rank &) const = default;
};

Rank FindRank(const Nearness &near, Text text, bool chosen, bool colonsFit)
{
    const Text read{text.at, near.reach < text.length ? near.reach : text.length};
    const uint32_t pieces = near.reach > text.length ? near.reach : CountColonsOutside(read);
    return {pieces, chosen, near.reach, near.beyond, colonsFit};
}

// Less than a group of an ESI with its dot tells nothing of the route.
bool TellsRoute(const Rank &rank, Text text)
{
    constexpr uint32_t kGroupChars = 5;
    return rank.pieces > 0 || rank.chosen || rank.reach >= kGroupChars || rank.beyond > text.length;
}

struct Meant {
    BgpReason reason;
    Rank rank;
    uint32_t equals; // forms of that rank
    bool isTaken;    // the text is of a form that the separators did not choose
};

Meant FindMeant(Text text, RouteReader *chosen, uint32_t checkMode)
{
    const uint32_t colons = CountColonsOutside(text);
    Meant meant{};
    for (const Form &form : kForms) {
        const FormParser parser{form.read, checkMode};
        BgpReason reason{};
        if (ExplainForm(&parser, text.at, reason) == DT_OK) {
            meant.isTaken = true;
            continue;
        }
        const Nearness near = FindNearness({ExplainForm, &parser}, text, reason);
        const Rank rank = FindRank(near, text, form.read == chosen, form.colons == colons);
        if (meant.equals == 0 || rank > meant.rank) {
            meant = {reason, rank, 1, meant.isTaken};
        } else {
            meant.equals += rank == meant.rank;
        }
    }
    return meant;
}

// Says what the reader of the route that was meant refuses. A text that may be meant for several is of none.
[[gnu::cold]] void NoteRoute(const Why &why, Text text, Text stray, RouteReader *chosen, uint32_t checkMode)
{
    const Meant meant = FindMeant(text, chosen, checkMode);
    if (!meant.isTaken && meant.equals == 1 && TellsRoute(meant.rank, text)) {
        *why.reason = meant.reason;
        why.reason->Offset += why.offset + static_cast<uint32_t>(text.at - why.from);
    } else if (meant.isTaken && stray.length != 0) {
        NoteCharacter(why, stray, kWrongCharacter);
    } else {
        Note(why, text, {.rule = &kNoRoute, .expected = Choices(kForms)});
    }
}

} // namespace

bool ReadEvpnText(const char *text, void *value, uint32_t checkMode, Why *why)
{
    const Text trimmed = Trim(text);
    Census census{};
    if (!HasLength(trimmed, 1, kLongestRoute, why)) {
        return false;
    }
    const Text stray = Count(trimmed, census);
    char copy[kLongestRoute + 1];
    Text route = trimmed;
    if (trimmed.at[trimmed.length] != '\0') { // host services want it terminated
        Terminate(trimmed, copy, sizeof copy);
        route.at = copy;
    }
    RouteReader *read = stray.length == 0 ? FindReader(route, census) : nullptr;
    if (read != nullptr && read(route, static_cast<uint8_t *>(value), checkMode, nullptr)) {
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        const Why here{why->reason, route.at, why->offset + static_cast<uint32_t>(trimmed.at - why->from)};
        NoteRoute(here, route, {route.at + (stray.at - trimmed.at), stray.length}, read, checkMode);
    }
    return false;
}

} // namespace bgp

// --------------------------------------------------------------------------------------------------------- the parsers

namespace {

uint32_t Parse(bgp::RouteReader *read, const char *text, void *value, uint32_t checkMode = bgp::kAnyEsiType)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::Text whole{text, static_cast<uint32_t>(std::strlen(text))};
    return read(whole, static_cast<uint8_t *>(value), checkMode, nullptr) ? DT_OK : DT_ERR_FAIL;
}

bool ReadMulticast(bgp::Text text, uint8_t *value, uint32_t checkMode, bgp::Why *)
{
    bgp::Census census{};
    const bgp::Text stray = bgp::Count(text, census);
    bgp::RouteReader *read = stray.length == 0 ? bgp::FindMulticastReader(census.colonsOutside) : nullptr;
    return read != nullptr && read(text, value, checkMode, nullptr);
}

} // namespace

uint32_t SYSDT_Str2EvnPrefix(const char *text, void *value, uint32_t checkMode)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::ReadEvpnText(text, value, checkMode, nullptr) ? DT_OK : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2Ad(const char *text, void *value, uint32_t checkMode)
{
    return Parse(bgp::kReadAutoDiscovery, text, value, checkMode);
}

uint32_t SYSDT_Str2EvnMac(const char *text, void *value)
{
    return Parse(bgp::kReadMacIp, text, value);
}

uint32_t SYSDT_Str2Inclusive(const char *text, void *value)
{
    return Parse(bgp::kReadInclusive, text, value);
}

uint32_t SYSDT_Str2Es(const char *text, void *value, uint32_t checkMode)
{
    return Parse(bgp::kReadSegment, text, value, checkMode);
}

uint32_t SYSDT_Str2IpPrefix(const char *text, void *value)
{
    return Parse(bgp::kReadIpv4Prefix, text, value);
}

uint32_t SYSDT_Str2Ipv6Prefix(const char *text, void *value)
{
    return Parse(bgp::kReadIpv6Prefix, text, value);
}

uint32_t SYSDT_Str2EvpnSmetRoute(const char *text, void *value)
{
    return Parse(bgp::ReadSmet, text, value);
}

uint32_t SYSDT_Str2EvpnJoinRoute(const char *text, void *value)
{
    return Parse(bgp::ReadJoin, text, value);
}

uint32_t SYSDT_Str2EvpnLeaveRoute(const char *text, void *value)
{
    return Parse(bgp::ReadLeave, text, value);
}

uint32_t SYSDT_Str2EvpnMcRoute(const char *text, void *value)
{
    return Parse(ReadMulticast, text, value);
}

uint32_t SYSDT_Str2EvpnIpv6(const char *text, uint8_t *ipv6, uint8_t *length)
{
    if (text == nullptr || ipv6 == nullptr || length == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::ReadIpv6Tail(bgp::CursorOn(text), ipv6, length, nullptr, nullptr, nullptr) ? DT_OK : DT_ERR_FAIL;
}
