// EVN and EVNPREFIX: the key of an EVPN route, sub-type 1 of BOLPREFIX and a type of its own. A value has 89 bytes:
//
//   bytes  field       width  meaning
//   0-3    sub-type    u32    1, host order
//   4      route type  u8     1 to 8
//   5-88   body               by route type: the rows of routes.h
//
// The text is read in text.cpp, multicast.cpp and esi.cpp. The rest is here; printing and comparing walk the rows of
// the route.
#include "prefix/evpn/text.h"

#include "bgp_datatypes/evpn.h"
#include "host/address_field.h"
#include "host/format.h"
#include "host/operations.h"
#include "host/type.h"
#include "prefix/prefix.h"
#include "prefix/route_keys.h"

namespace bgp {

// ------------------------------------------------------------------------------------------------------------ text out

namespace {

// An address and its length. An IP prefix tells the length last, as its text is typed. An address of neither family
// prints nothing, its length neither.
bool AppendAddress(GrowingText &page, const uint8_t *field, bool lengthLast)
{
    char address[kAddressTextSize];
    if (!AddressText(field, address)) {
        return true;
    }
    const bool ipv6 = field[kAddressFamilyAt] == kIpv6Family;
    const uint8_t length = *(field - 1);
    const char *const words = address;
    if (lengthLast) {
        return ipv6 ? Print<":[%s]:%hhu">(page, words, length) : Print<":%s:%hhu">(page, words, length);
    }
    return ipv6 ? Print<":%hhu:[%s]">(page, length, words) : Print<":%hhu:%s">(page, length, words);
}

bool AppendBytes(GrowingText &page, const BgpField &field, const uint8_t *at)
{
    switch (field.Count) {
    case kEsiSize:
        return Print<"%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x.%.2x%.2x">(page, at[0], at[1], at[2], at[3], at[4], at[5],
                                                                     at[6], at[7], at[8], at[9]);
    case kMacSize:
        return Print<":%.2x%.2x-%.2x%.2x-%.2x%.2x">(page, at[0], at[1], at[2], at[3], at[4], at[5]);
    default:
        return Print<":%u">(page, *at);
    }
}

bool IsAddress(const BgpField &field)
{
    return field.Kind == BGP_FIELD_ADDRESS;
}

bool AppendField(GrowingText &page, const BgpLayout &layout, uint32_t index, const uint8_t *value)
{
    const BgpField &field = layout.Fields[index];
    const uint8_t *at = value + field.Offset;
    if (IsAddress(field)) {
        return AppendAddress(page, at, value[kRouteTypeAt] == kIpPrefixRoute);
    }
    if (field.Kind == BGP_FIELD_NUMBER) {
        const auto number = Load<uint32_t>(at);
        return index == kBodyFields ? Print<"%u">(page, number) : Print<":%u">(page, number);
    }
    const bool isLengthOfAddress = index + 1 < layout.FieldCount && IsAddress(layout.Fields[index + 1]);
    return isLengthOfAddress || AppendBytes(page, field, at);
}

// What had been printed stays when the host refuses to go on.
uint32_t PrintRoute(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const EvpnRoute *route = FindEvpnRoute(value[kRouteTypeAt]);
    if (route == nullptr) {
        return DT_ERR_FAIL;
    }
    GrowingText page = GrowIn(buffer, kPrintLimit);
    bool whole = true;
    for (uint32_t i = kBodyFields; whole && i < route->layout.FieldCount; ++i) {
        whole = AppendField(page, route->layout, i, value);
    }
    *printed = Length(page);
    return whole ? DT_OK : DT_ERR_FAIL;
}

// --------------------------------------------------------------------------------------------------------------- order

int32_t CompareField(const BgpField &field, const uint8_t *left, const uint8_t *right)
{
    if (IsAddress(field)) {
        return CompareAddresses(left, right);
    }
    if (field.Kind == BGP_FIELD_NUMBER) {
        const auto a = Load<uint32_t>(left);
        const auto b = Load<uint32_t>(right);
        return (a > b) - (a < b);
    }
    return CompareBytes(left, right, field.Count);
}

// The first difference decides. Takes two values from their route type on.
int32_t CompareRoutes(const EvpnRoute &route, const uint8_t *left, const uint8_t *right)
{
    for (uint32_t i = route.firstCompared; i < route.endCompared; ++i) {
        const BgpField &field = route.layout.Fields[i];
        const uint32_t at = field.Offset - kRouteTypeAt;
        if (const int32_t order = CompareField(field, left + at, right + at); order != 0) {
            return order;
        }
    }
    return 0;
}

int32_t CompareRouteOf(uint8_t routeType, const void *left, const void *right)
{
    return CompareRoutes(*FindEvpnRoute(routeType), static_cast<const uint8_t *>(left),
                         static_cast<const uint8_t *>(right));
}

// Values that are no two routes of one type have no order; a code that is neither -1, 0 nor 1 says so.
int32_t CompareValues(const uint8_t *left, const uint8_t *right)
{
    if (Load<uint32_t>(left) != kEvnSubType || Load<uint32_t>(right) != kEvnSubType ||
        left[kRouteTypeAt] != right[kRouteTypeAt]) {
        return static_cast<int32_t>(DT_ERR_FAIL);
    }
    const EvpnRoute *route = FindEvpnRoute(left[kRouteTypeAt]);
    return route == nullptr ? 0 : CompareRoutes(*route, left + kRouteTypeAt, right + kRouteTypeAt);
}

// --------------------------------------------------------------------------------------------------------------- Lua

// The field "bolPrefixRtValue" of a table, when it is a text, into the value; it stays on the stack. A text that is no
// route is no failure: the value keeps what was read of it.
uint32_t LuaReadRoute(lua_State *L, int32_t table, void *value, uint32_t checkMode)
{
    SYSDT_SPTI_GetField(L, table, "bolPrefixRtValue");
    if (SYSDT_SPTI_IsString(L, -1) == 0) {
        return DT_OK;
    }
    if (SYSDT_SPTI_ObjLen(L, -1) > kLongestRoute) {
        return DT_ERR_TOO_LONG;
    }
    SYSDT_Str2EvnPrefix(SYSDT_SPTI_ToString(L, -1), value, checkMode);
    return DT_OK;
}

// A script may also hand over the table itself, under whatever is on top of the stack: the index is -1 then.
uint32_t LuaFindTable(lua_State *L, int32_t tableIndex, const char *fieldName, int32_t *table)
{
    const bool handedOver = tableIndex == -1;
    if (!handedOver) {
        SYSDT_SPTI_GetField(L, tableIndex, fieldName);
    }
    *table = SYSDT_SPTI_GetTop(L) - (handedOver ? 1 : 0);
    return *table > 0 && SYSDT_SPTI_IsTable(L, *table) != 0 ? DT_OK : DT_ERR_INVALID_PARAM;
}

uint32_t LuaReadValue(lua_State *L, int32_t table, uint8_t *value)
{
    if (const uint32_t code = LuaReadRoute(L, table, value, kEsiTypeCheck); code != DT_OK) {
        return code;
    }
    if (const uint32_t code = LuaGetOne(L, table, kSubTypeField, value); code != DT_OK) {
        return code;
    }
    if (Load<uint32_t>(value) != kEvnSubType) {
        return DT_ERR_FAIL;
    }
    return LuaGetOne(L, table, kRouteTypeField, value);
}

// ---------------------------------------------------------------------------------------------------------- operations

bool Read(const char *text, void *value, Why *why)
{
    Store(value, kEvnSubType);
    return ReadEvpnText(text, value, kAnyEsiType, why);
}

constexpr FormatInRule kIn = RouteKeyIn(Read);
constexpr FormatOutRule kOut = RouteKeyOut(PrintRoute);
constexpr HelpRule kHelp{
    .text = "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx",
    .hidesHostCode = true};

} // namespace

constinit const Type kEvpn = MakeSubType({
    .name = "EVN",
    .description = "the key of an EVPN route",
    .reference = "RFC 7432, RFC 9136, RFC 9251",
    .in = &kIn,
    .out = &kOut,
    .rules = kEvpnRules,
    .shortestText = 1,
    .longestText = kLongestRoute,
    .subType = kEvnSubType,
    .order = BGP_ORDER_NONE, // routes that differ in what is left out are equal, those of two types are neither
    .lua = BGP_LUA_LOSES,    // of a checked ESI type; and the composite reads the route type over the body
    .describe = DescribeEvpnRoute,
});

constinit const Type kEvnPrefix = MakeType({
    .name = "EVNPREFIX",
    .description = "the key of an EVPN route, as BOLPREFIX has it",
    .reference = "RFC 7432, RFC 9136, RFC 9251",
    .in = &kIn,
    .out = &kOut,
    .rules = kEvpnRules,
    .shortestText = 1,
    .longestText = kLongestRoute,
    .typeId = 281,
    .order = BGP_ORDER_NONE,
    .network = BGP_NETWORK_LAYOUT,
    .lua = BGP_LUA_LOSES,
    .describe = DescribeBolPrefix,
});

} // namespace bgp

uint32_t SYSDT_EvnPrefix2Str(const void *value, char *buffer, uint32_t *printed)
{
    *printed = 0;
    return bgp::PrintRoute(static_cast<const uint8_t *>(value), 0, buffer, printed);
}

BGP_FORMAT_IN(SYSDT_EVNPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_EVNPrefixFormatOut, bgp::kOut)

BGP_KEY_CHECK(SYSDT_EVNPrefixCheck) // 89 bytes, whatever the descriptor row of EVNPREFIX says
BGP_HELP(SYSDT_EVNPrefixHelp, bgp::kHelp)

int32_t SYSDT_EVNPrefixCompare(const void *, uint32_t length, const void *left, const void *right)
{
    if (left == nullptr || right == nullptr) {
        return static_cast<int32_t>(DT_ERR_NULL_PTR);
    }
    uint8_t leftArea[bgp::kBolPrefixLength];
    uint8_t rightArea[bgp::kBolPrefixLength];
    return bgp::CompareValues(bgp::WholeKey(left, length, leftArea), bgp::WholeKey(right, length, rightArea));
}

uint32_t SYSDT_EVNPrefixLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                               const void *value)
{
    if (const uint32_t code = bgp::LuaJudge(L, fieldName, value, length, bgp::kBolPrefixLength); code != DT_OK) {
        return code;
    }
    const auto *bytes = static_cast<const uint8_t *>(value);
    char text[bgp::kPrintLimit] = {};
    uint32_t printed = 0;
    SYSDT_EvnPrefix2Str(value, text, &printed); // a value that does not print has the text that there is of it
    SYSDT_SPTI_CreateTable(L, 0, 3);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    SYSDT_SPTI_PushLString(L, text, printed);
    SYSDT_SPTI_SetField(L, table, "bolPrefixRtValue");
    bgp::LuaSetOne(L, table, bgp::kSubTypeField, bytes);
    bgp::LuaSetOne(L, table, bgp::kRouteTypeField, bytes);
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

uint32_t SYSDT_EVNPrefixLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                               void *outValue)
{
    if (const uint32_t code = bgp::LuaJudge(L, fieldName, outValue, length, bgp::kBolPrefixLength); code != DT_OK) {
        return code;
    }
    int32_t table = 0;
    if (const uint32_t code = bgp::LuaFindTable(L, tableIndex, fieldName, &table); code != DT_OK) {
        return code;
    }
    if (const uint32_t code = bgp::LuaReadValue(L, table, static_cast<uint8_t *>(outValue)); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, 3); // the three fields; a table that was fetched stays
    return DT_OK;
}

// Reads the same two fields for the composite, with two differences that are kept: any ESI type is welcome, and the
// route type is a word, which also covers the first three bytes of the body.
uint32_t SYSDT_EVNPrefixNewLuaGet(lua_State *L, void *value, int32_t tableIndex)
{
    if (L == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = bgp::LuaReadRoute(L, tableIndex, value, bgp::kAnyEsiType); code != DT_OK) {
        return code;
    }
    constexpr BgpField kRouteTypeWord = bgp::Number("bolPrefixRtType", bgp::kRouteTypeAt, 4);
    if (const uint32_t code = bgp::LuaGetOne(L, tableIndex, kRouteTypeWord, static_cast<uint8_t *>(value));
        code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, 3); // the two fields and "bolType", which the caller has fetched
    return DT_OK;
}

int32_t SYSDT_EVPN_SmetCompare(const void *left, const void *right)
{
    return bgp::CompareRouteOf(bgp::kSmetRoute, left, right);
}

int32_t SYSDT_EVPN_JoinCompare(const void *left, const void *right)
{
    return bgp::CompareRouteOf(bgp::kJoinRoute, left, right);
}

int32_t SYSDT_EVPN_LeaveCompare(const void *left, const void *right)
{
    return bgp::CompareRouteOf(bgp::kLeaveRoute, left, right);
}
