// The multicast routes of EVPN (RFC 9251) from text. Each is a row of fields that a cursor walks through:
//
//   type  route                               text
//   6     selective multicast Ethernet tag    tag:len:source:len:group:len:originator
//   7     multicast membership report synch   ESI:tag:len:source:len:group:len:originator
//   8     multicast leave synch               ESI:tag:len:source:len:group:len:originator:number
//
// An IPv6 address in brackets that is not the last field must not be followed by a colon, only by some other character
// that a route may hold, which takes the colon's place. So as a rule only the last address of a route is IPv6.
#include "bgp_host_services.h"
#include "host/bytes.h"
#include "prefix/address_field.h"
#include "prefix/evpn.h"

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
    uint8_t chars; // of a number or a length
    uint32_t least = 0;
    uint32_t most = 0;
};

// A source length of 0 is any source; a group and an originator are always there.
// clang-format off
constexpr RouteField kSmetFields[] = {
    {Reader::kNumber,   5, kTagChars,    0, UINT32_MAX},      // Ethernet tag
    {Reader::kLength,   9, kLengthChars, 0, kMostIpv6Length},
    {Reader::kAddress, 10, 0},                                // source
    {Reader::kLength,  31, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, 32, 0},                                // group
    {Reader::kLength,  53, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, 54, 0},                                // originator
};

constexpr RouteField kLeaveFields[] = {
    {Reader::kEsi,      5, 0},
    {Reader::kNumber,  15, kTagChars,    0, UINT32_MAX},      // Ethernet tag
    {Reader::kLength,  19, kLengthChars, 0, kMostIpv6Length},
    {Reader::kAddress, 20, 0},                                // source
    {Reader::kLength,  41, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, 42, 0},                                // group
    {Reader::kLength,  63, kLengthChars, 1, kMostIpv6Length},
    {Reader::kAddress, 64, 0},                                // originator
    {Reader::kNumber,  85, kTagChars,    0, UINT32_MAX},      // only in a leave synch
};
// clang-format on

constexpr uint32_t kSmetCount = std::size(kSmetFields);
constexpr uint32_t kLeaveCount = std::size(kLeaveFields);
constexpr uint32_t kJoinCount = kLeaveCount - 1;

// The text from the cursor to the next colon, for the last field to the end; the cursor moves there. False when the
// colon is missing.
bool TakeField(const char **cursor, uint32_t isLast, Text &field)
{
    const char *end = isLast != 0 ? *cursor + std::strlen(*cursor) : std::strchr(*cursor, ':');
    if (end == nullptr) {
        return false;
    }
    field = {*cursor, static_cast<uint32_t>(end - *cursor)};
    *cursor = end;
    return true;
}

bool TakeNumber(const char **cursor, uint32_t chars, uint32_t isLast, uint32_t *number)
{
    Text field;
    char copy[kTagChars + 1];
    return TakeField(cursor, isLast, field) && IsLong(field, 1, chars) && Terminate(field, copy, sizeof copy) &&
           SMP_StrToUint32(copy, number) == 0;
}

bool TakeIpv4(const char **cursor, uint32_t isLast, uint8_t *at)
{
    Text field;
    char copy[kLongestAddress + 1];
    return TakeField(cursor, isLast, field) && field.length != 0 && Terminate(field, copy, sizeof copy) &&
           ReadIpv4(copy, at);
}

// What follows the last address is not looked at. Behind any other, a colon is refused although the next field would be
// expected there; the syntax of existing configurations is kept as it is.
bool TakeIpv6(const char **cursor, uint32_t isLast, uint8_t *at)
{
    uint8_t address[16];
    if (!TakeBracketed(*cursor, address) || (isLast == 0 && **cursor == ':')) {
        return false;
    }
    SetIpv6(at, address);
    return true;
}

bool ReadField(const RouteField &field, const char **cursor, uint32_t isLast, uint8_t *value)
{
    uint8_t *at = value + field.at;
    if (field.reader == Reader::kAddress) {
        return SYSDT_Str2EvpnIpAddr(cursor, at, isLast) == DT_OK;
    }
    if (field.reader == Reader::kEsi) {
        return SYSDT_Str2EvpnEsi(cursor, at, isLast) == DT_OK;
    }
    uint32_t number = 0;
    if (SYSDT_Str2EvpnUintNum(cursor, &number, field.chars, field.least, field.most, isLast) != DT_OK) {
        return false;
    }
    StoreLow(at, number, field.reader == Reader::kNumber ? sizeof number : 1);
    return true;
}

// Between two fields one character is passed over: a colon, or what stands in its place behind a bracket.
bool ReadFields(const RouteField *fields, uint32_t count, const char *text, uint8_t *value)
{
    for (uint32_t i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        if (!ReadField(fields[i], &text, isLast, value) || (!isLast && *text++ == '\0')) {
            return false;
        }
    }
    return true;
}

uint32_t ParseFields(uint8_t routeType, const RouteField *fields, uint32_t count, const char *text, void *value)
{
    return ParseRoute(routeType, text, value, [fields, count](const char *route, uint8_t *bytes) {
        return ReadFields(fields, count, route, bytes);
    });
}

bool IsNull(const char *const *cursor, const void *result)
{
    return cursor == nullptr || *cursor == nullptr || result == nullptr;
}

} // namespace

RouteParser *FindMulticastParser(uint32_t colonsOutside)
{
    switch (colonsOutside) {
    case 6:
        return SYSDT_Str2EvpnSmetRoute;
    case 7:
        return SYSDT_Str2EvpnJoinRoute;
    case 8:
        return SYSDT_Str2EvpnLeaveRoute;
    default:
        return nullptr;
    }
}

} // namespace bgp

// --------------------------------------------------------------------------------------------------- the field readers

uint32_t SYSDT_Str2EvpnUintNum(const char **cursor, uint32_t *result, uint32_t maxChars, uint32_t min, uint32_t max,
                               uint32_t isLast)
{
    if (bgp::IsNull(cursor, result)) {
        return DT_ERR_NULL_PTR;
    }
    uint32_t number = 0;
    if (!bgp::TakeNumber(cursor, maxChars, isLast, &number) || number < min || number > max) {
        return DT_ERR_FAIL;
    }
    *result = number;
    return DT_OK;
}

uint32_t SYSDT_Str2EvpnIpAddr(const char **cursor, void *field, uint32_t isLast)
{
    if (bgp::IsNull(cursor, field)) {
        return DT_ERR_NULL_PTR;
    }
    auto *at = static_cast<uint8_t *>(field);
    const bool read = **cursor == '[' ? bgp::TakeIpv6(cursor, isLast, at) : bgp::TakeIpv4(cursor, isLast, at);
    return read ? DT_OK : DT_ERR_FAIL;
}

// The ESI type of a synch route is always checked, also when an operator typed it.
uint32_t SYSDT_Str2EvpnEsi(const char **cursor, void *esi, uint32_t isLast)
{
    if (bgp::IsNull(cursor, esi)) {
        return DT_ERR_NULL_PTR;
    }
    bgp::Text field;
    char copy[bgp::kEsiChars + 1];
    if (!bgp::TakeField(cursor, isLast, field) || !bgp::Terminate(field, copy, sizeof copy)) {
        return DT_ERR_FAIL;
    }
    return SYSDT_Str2EsiBas(copy, esi, 1, bgp::kEsiTypeCheck);
}

// ---------------------------------------------------------------------------------------------------------- the routes

uint32_t SYSDT_Str2EvpnSmetRoute(const char *text, void *value)
{
    return bgp::ParseFields(6, bgp::kSmetFields, bgp::kSmetCount, text, value);
}

uint32_t SYSDT_Str2EvpnJoinRoute(const char *text, void *value)
{
    return bgp::ParseFields(7, bgp::kLeaveFields, bgp::kJoinCount, text, value);
}

uint32_t SYSDT_Str2EvpnLeaveRoute(const char *text, void *value)
{
    return bgp::ParseFields(8, bgp::kLeaveFields, bgp::kLeaveCount, text, value);
}
