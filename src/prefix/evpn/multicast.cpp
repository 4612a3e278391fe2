// The multicast routes of EVPN (RFC 9251) from text. Each is a row of fields that a cursor walks through:
//
//   type  route                               text
//   6     selective multicast Ethernet tag    tag:len:source:len:group:len:originator
//   7     multicast membership report synch   ESI:tag:len:source:len:group:len:originator
//   8     multicast leave synch               ESI:tag:len:source:len:group:len:originator:number
//
// An IPv6 address in brackets that is not the last field must not be followed by a colon, only by some other character
// that a route may hold, which takes the colon's place. So as a rule only the last address of a route is IPv6.
#include "prefix/evpn/multicast.h"

#include "bgp_datatypes/evpn.h"
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/evpn/pieces.h"

#include <iterator>

namespace bgp {

namespace {

enum class Reader : uint8_t {
    kNumber, // four bytes
    kLength, // one byte
    kAddress,
    kEsi
};

struct RouteField {
    Reader reader;
    uint8_t at;
    const char *what;
    uint8_t chars = 0; // of a number or a length
    uint32_t least = 0;
    uint32_t most = 0;
};

// A source length of 0 is any source; a group and an originator are always there.
// clang-format off
constexpr RouteField kSmet[] = {
    {Reader::kNumber,  At(kSmetFields, "ethernetTag"),      kTheTag,              kTagChars,    0, UINT32_MAX},
    {Reader::kLength,  At(kSmetFields, "sourceLength"),     kTheSourceLength,     kLengthChars, 0, kMostIpv6Length},
    {Reader::kAddress, At(kSmetFields, "source"),           kTheSource},
    {Reader::kLength,  At(kSmetFields, "groupLength"),      kTheGroupLength,      kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kSmetFields, "group"),            kTheGroup},
    {Reader::kLength,  At(kSmetFields, "originatorLength"), kTheOriginatorLength, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kSmetFields, "originator"),       kTheOriginator},
};

constexpr RouteField kLeave[] = {
    {Reader::kEsi,     At(kLeaveFields, "esi"),              kTheEsi},
    {Reader::kNumber,  At(kLeaveFields, "ethernetTag"),      kTheTag,              kTagChars,    0, UINT32_MAX},
    {Reader::kLength,  At(kLeaveFields, "sourceLength"),     kTheSourceLength,     kLengthChars, 0, kMostIpv6Length},
    {Reader::kAddress, At(kLeaveFields, "source"),           kTheSource},
    {Reader::kLength,  At(kLeaveFields, "groupLength"),      kTheGroupLength,      kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kLeaveFields, "group"),            kTheGroup},
    {Reader::kLength,  At(kLeaveFields, "originatorLength"), kTheOriginatorLength, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kLeaveFields, "originator"),       kTheOriginator},
    {Reader::kNumber,  At(kLeaveFields, "leaveNumber"),      kTheLeaveNumber,      kTagChars,    0, UINT32_MAX},
};
// clang-format on

constexpr uint32_t kJoinCount = std::size(kLeave) - 1; // all but the number

// The text from the cursor to the next colon, for the last field to the end; the cursor moves there. False when the
// colon is missing.
bool TakeField(const char **cursor, bool isLast, Text &field, const char *what, Why *why)
{
    const char *end = isLast ? *cursor + std::strlen(*cursor) : std::strchr(*cursor, ':');
    if (end == nullptr) {
        return Refuse(why, {*cursor + std::strlen(*cursor), 0}, kNoColon, 0, what);
    }
    field = {*cursor, static_cast<uint32_t>(end - *cursor)};
    *cursor = end;
    return true;
}

bool TakeNumber(const char **cursor, uint32_t chars, const Range &range, bool isLast, uint32_t &number, Why *why)
{
    Text field;
    char copy[kTagChars + 1];
    if (!TakeField(cursor, isLast, field, range.what, why)) {
        return false;
    }
    if (field.length == 0) {
        return Refuse(why, field, kEmpty, 0, range.what);
    }
    if (field.length > chars || !Terminate(field, copy, sizeof copy)) {
        return Refuse(why, field, kTooLong, chars, range.what);
    }
    return ReadDecimal(copy, field, range, number, why);
}

bool TakeIpv4(const char **cursor, bool isLast, uint8_t *at, const char *what, Why *why)
{
    Text field;
    char copy[kLongestAddress + 1];
    if (!TakeField(cursor, isLast, field, what, why)) {
        return false;
    }
    if (field.length == 0) {
        return Refuse(why, field, kEmpty, 0, what);
    }
    if (!Terminate(field, copy, sizeof copy)) {
        return Refuse(why, field, kTooLong, kLongestAddress, what);
    }
    return ReadIpv4Piece(copy, field, at, what, why);
}

// What follows the last address is not looked at. Behind any other, a colon is refused although the next field would be
// expected there; the syntax of existing configurations is kept as it is.
bool TakeIpv6(const char **cursor, bool isLast, uint8_t *at, const char *what, Why *why)
{
    uint8_t address[16];
    if (!TakeBracketed(*cursor, address, what, why)) {
        return false;
    }
    if (!isLast && **cursor == ':') {
        return Refuse(why, {*cursor, 1}, kColonBehindIpv6);
    }
    SetIpv6(at, address);
    return true;
}

bool TakeAddress(const char **cursor, bool isLast, uint8_t *at, const char *what, Why *why)
{
    return **cursor == '[' ? TakeIpv6(cursor, isLast, at, what, why) : TakeIpv4(cursor, isLast, at, what, why);
}

// The ESI type of a synch route is always checked, also when an operator typed it.
bool TakeEsi(const char **cursor, bool isLast, uint8_t *at, Why *why)
{
    Text field;
    return TakeField(cursor, isLast, field, kTheEsi, why) && ReadEsiPiece(field, kEsiLacp, at, why);
}

bool ReadField(const RouteField &field, const char **cursor, bool isLast, uint8_t *value, Why *why)
{
    uint8_t *at = value + field.at;
    if (field.reader == Reader::kAddress) {
        return TakeAddress(cursor, isLast, at, field.what, why);
    }
    if (field.reader == Reader::kEsi) {
        return TakeEsi(cursor, isLast, at, why);
    }
    uint32_t number = 0;
    if (!TakeNumber(cursor, field.chars, {field.least, field.most, field.what}, isLast, number, why)) {
        return false;
    }
    StoreLow(at, number, field.reader == Reader::kNumber ? sizeof number : 1);
    return true;
}

// Between two fields one character is passed over: a colon, or what stands in its place behind a bracket. The route
// type says that the value is whole.
bool ReadFields(EvpnRouteType routeType, const RouteField *fields, uint32_t count, const char *text, void *value,
                Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    StandsIn(why, FindEvpnRoute(routeType)->name);
    for (uint32_t i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        if (!ReadField(fields[i], &text, isLast, bytes, why)) {
            return false;
        }
        if (!isLast && *text++ == '\0') {
            return Refuse(why, {text - 1, 0}, kNothingBehind, 0, fields[i].what);
        }
    }
    bytes[kRouteTypeAt] = routeType;
    return true;
}

bool ReadSmet(const char *text, void *value, Why *why)
{
    return ReadFields(kSmetRoute, kSmet, std::size(kSmet), text, value, why);
}

bool ReadJoin(const char *text, void *value, Why *why)
{
    return ReadFields(kJoinRoute, kLeave, kJoinCount, text, value, why);
}

bool ReadLeave(const char *text, void *value, Why *why)
{
    return ReadFields(kLeaveRoute, kLeave, std::size(kLeave), text, value, why);
}

bool IsMissing(const char *const *cursor, const void *result)
{
    return cursor == nullptr || *cursor == nullptr || result == nullptr;
}

} // namespace

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

} // namespace bgp

// --------------------------------------------------------------------------------------------------- the field readers

uint32_t SYSDT_Str2EvpnUintNum(const char **cursor, uint32_t *result, uint32_t maxChars, uint32_t min, uint32_t max,
                               uint32_t isLast)
{
    if (bgp::IsMissing(cursor, result)) {
        return DT_ERR_NULL_PTR;
    }
    uint32_t number = 0;
    if (!bgp::TakeNumber(cursor, maxChars, {min, max, nullptr}, isLast != 0, number, nullptr)) {
        return DT_ERR_FAIL;
    }
    *result = number;
    return DT_OK;
}

uint32_t SYSDT_Str2EvpnIpAddr(const char **cursor, void *field, uint32_t isLast)
{
    if (bgp::IsMissing(cursor, field)) {
        return DT_ERR_NULL_PTR;
    }
    auto *at = static_cast<uint8_t *>(field);
    return bgp::TakeAddress(cursor, isLast != 0, at, nullptr, nullptr) ? DT_OK : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2EvpnEsi(const char **cursor, void *esi, uint32_t isLast)
{
    if (bgp::IsMissing(cursor, esi)) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::TakeEsi(cursor, isLast != 0, static_cast<uint8_t *>(esi), nullptr) ? DT_OK : DT_ERR_FAIL;
}

// ---------------------------------------------------------------------------------------------------------- the routes

BGP_STR2(SYSDT_Str2EvpnSmetRoute, bgp::ReadSmet)
BGP_STR2(SYSDT_Str2EvpnJoinRoute, bgp::ReadJoin)
BGP_STR2(SYSDT_Str2EvpnLeaveRoute, bgp::ReadLeave)
