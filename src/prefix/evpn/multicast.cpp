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
    AddressWords words; // of what is no address the first
    uint8_t chars = 0;  // of a number or a length
    uint32_t least = 0;
    uint32_t most = 0;
};

// A source length of 0 is any source; a group and an originator are always there.
// clang-format off
constexpr RouteField kSmet[] = {
    {Reader::kNumber,  At(kSmetFields, "ethernetTag"),      {kTheTag, nullptr},              kTagChars,    0, UINT32_MAX},
    {Reader::kLength,  At(kSmetFields, "sourceLength"),     {kTheSourceLength, nullptr},     kLengthChars, 0, kMostIpv6Length},
    {Reader::kAddress, At(kSmetFields, "source"),           kTheSource},
    {Reader::kLength,  At(kSmetFields, "groupLength"),      {kTheGroupLength, nullptr},      kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kSmetFields, "group"),            kTheGroup},
    {Reader::kLength,  At(kSmetFields, "originatorLength"), {kTheOriginatorLength, nullptr}, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kSmetFields, "originator"),       kTheOriginator},
};

constexpr RouteField kLeave[] = {
    {Reader::kEsi,     At(kLeaveFields, "esi"),              {kTheEsi, nullptr}},
    {Reader::kNumber,  At(kLeaveFields, "ethernetTag"),      {kTheTag, nullptr},              kTagChars,    0, UINT32_MAX},
    {Reader::kLength,  At(kLeaveFields, "sourceLength"),     {kTheSourceLength, nullptr},     kLengthChars, 0, kMostIpv6Length},
    {Reader::kAddress, At(kLeaveFields, "source"),           kTheSource},
    {Reader::kLength,  At(kLeaveFields, "groupLength"),      {kTheGroupLength, nullptr},      kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kLeaveFields, "group"),            kTheGroup},
    {Reader::kLength,  At(kLeaveFields, "originatorLength"), {kTheOriginatorLength, nullptr}, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, At(kLeaveFields, "originator"),       kTheOriginator},
    {Reader::kNumber,  At(kLeaveFields, "leaveNumber"),      {kTheLeaveNumber, nullptr},      kTagChars,    0, UINT32_MAX},
};
// clang-format on

constexpr uint32_t kJoinCount = std::size(kLeave) - 1; // all but the number

// A field ends at the next colon, where the cursor moves, the last one with the text.
Text NextField(Cursor &cursor, bool isLast)
{
    Cursor end = cursor;
    const Text field = isLast ? Rest(cursor) : NextPiece(end);
    if (isLast) {
        cursor.at = cursor.end;
    } else if (AtColon(end)) {
        cursor = end;
    }
    return field;
}

// False when the colon behind a field is missing; the cursor has not moved then.
bool Ends(const Cursor &cursor, bool isLast, Text field, const char *what, Why *why)
{
    return isLast || AtColon(cursor) || Refuse(why, {field.at + field.length, 0}, kNoColon, 0, what);
}

bool TakeNumber(Cursor &cursor, uint32_t chars, const Range &range, bool isLast, uint32_t &number, Why *why)
{
    const Text field = NextField(cursor, isLast);
    return ReadDecimal(field, chars < kTagChars ? chars : kTagChars, range, number, why) &&
           Ends(cursor, isLast, field, range.what, why);
}

bool TakeIpv4(Cursor &cursor, bool isLast, uint8_t *at, const AddressWords &words, Why *why)
{
    const Text field = NextField(cursor, isLast);
    char copy[kLongestAddress + 1];
    uint32_t address = 0;
    if (field.length == 0 || !Terminate(field, copy, sizeof copy) || SYSDT_Str2Ipv4(copy, &address) != 0) {
        return RefuseIpv4(why, field, words);
    }
    if (!Ends(cursor, isLast, field, words.address, why)) {
        return false;
    }
    SetIpv4(at, address);
    return true;
}

// What follows the last address is not looked at. Behind any other, a colon is refused although the next field would be
// expected there.
bool TakeIpv6(Cursor &cursor, bool isLast, uint8_t *at, const char *what, Why *why)
{
    uint8_t address[kIpv6Size];
    if (!TakeBracketed(cursor, address, what, why)) {
        return false;
    }
    if (!isLast && AtColon(cursor)) {
        return Refuse(why, {cursor.at, 1}, kColonBehindIpv6);
    }
    SetIpv6(at, address);
    return true;
}

bool TakeAddress(Cursor &cursor, bool isLast, uint8_t *at, const AddressWords &words, Why *why)
{
    return *cursor.at == '[' ? TakeIpv6(cursor, isLast, at, words.address, why)
                             : TakeIpv4(cursor, isLast, at, words, why);
}

// The ESI type of a synch route is always checked, also when an operator typed it.
bool TakeEsi(Cursor &cursor, bool isLast, uint8_t *at, Why *why)
{
    uint8_t esi[kEsiSize];
    const Text field = NextField(cursor, isLast);
    if (!ReadEsi(field, kEsiLacp, esi, why) || !Ends(cursor, isLast, field, kTheEsi, why)) {
        return false;
    }
    std::memcpy(at, esi, sizeof esi);
    return true;
}

bool ReadField(const RouteField &field, Cursor &cursor, bool isLast, uint8_t *value, Why *why)
{
    uint8_t *at = value + field.at;
    if (field.reader == Reader::kAddress) {
        return TakeAddress(cursor, isLast, at, field.words, why);
    }
    if (field.reader == Reader::kEsi) {
        return TakeEsi(cursor, isLast, at, why);
    }
    uint32_t number = 0;
    if (!TakeNumber(cursor, field.chars, {field.least, field.most, field.words.address}, isLast, number, why)) {
        return false;
    }
    StoreLow(at, number, field.reader == Reader::kNumber ? sizeof number : 1);
    return true;
}

// Between two fields one character is passed over: a colon, or what stands in its place behind a bracket. The route
// type says that the value is whole.
bool ReadFields(EvpnRouteType routeType, const RouteField *fields, uint32_t count, Text text, uint8_t *value, Why *why)
{
    Cursor cursor = CursorOn(text);
    StandsIn(why, FindEvpnRoute(routeType)->name);
    for (uint32_t i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        if (!ReadField(fields[i], cursor, isLast, value, why)) {
            return false;
        }
        if (!isLast && cursor.at++ == cursor.end) {
            return Refuse(why, {cursor.end, 0}, kNothingBehind, 0, fields[i].words.address);
        }
    }
    value[kRouteTypeAt] = routeType;
    return true;
}

} // namespace

bool ReadSmet(Text text, uint8_t *value, uint32_t, Why *why)
{
    return ReadFields(kSmetRoute, kSmet, std::size(kSmet), text, value, why);
}

bool ReadJoin(Text text, uint8_t *value, uint32_t, Why *why)
{
    return ReadFields(kJoinRoute, kLeave, kJoinCount, text, value, why);
}

bool ReadLeave(Text text, uint8_t *value, uint32_t, Why *why)
{
    return ReadFields(kLeaveRoute, kLeave, std::size(kLeave), text, value, why);
}

} // namespace bgp

// --------------------------------------------------------------------------------------------------- the field readers

namespace {

bool IsMissing(const char *const *cursor, const void *result)
{
    return cursor == nullptr || *cursor == nullptr || result == nullptr;
}

// Runs a field reader at the caller's cursor, which follows it.
template <class Take>
uint32_t TakeAt(const char **at, Take take)
{
    bgp::Cursor cursor = bgp::CursorOn(*at);
    const bool taken = take(cursor);
    *at = cursor.at;
    return taken ? DT_OK : DT_ERR_FAIL;
}

} // namespace

uint32_t SYSDT_Str2EvpnUintNum(const char **cursor, uint32_t *result, uint32_t maxChars, uint32_t min, uint32_t max,
                               uint32_t isLast)
{
    if (IsMissing(cursor, result)) {
        return DT_ERR_NULL_PTR;
    }
    uint32_t number = 0;
    const uint32_t code = TakeAt(cursor, [&](bgp::Cursor &at) {
        return bgp::TakeNumber(at, maxChars, {min, max, nullptr}, isLast != 0, number, nullptr);
    });
    if (code == DT_OK) {
        *result = number;
    }
    return code;
}

uint32_t SYSDT_Str2EvpnIpAddr(const char **cursor, void *field, uint32_t isLast)
{
    if (IsMissing(cursor, field)) {
        return DT_ERR_NULL_PTR;
    }
    return TakeAt(cursor, [=](bgp::Cursor &at) {
        return bgp::TakeAddress(at, isLast != 0, static_cast<uint8_t *>(field), bgp::kWholeText, nullptr);
    });
}

uint32_t SYSDT_Str2EvpnEsi(const char **cursor, void *esi, uint32_t isLast)
{
    if (IsMissing(cursor, esi)) {
        return DT_ERR_NULL_PTR;
    }
    return TakeAt(cursor,
                  [=](bgp::Cursor &at) { return bgp::TakeEsi(at, isLast != 0, static_cast<uint8_t *>(esi), nullptr); });
}
