// SD-WAN, sub-type 16 of BOLPREFIX: the key of an SD-WAN edge route (draft-ietf-idr-sdwan-edge-discovery), typed and
// printed as "type-port-site-node": "1-100-200-10.1.1.1", "1-100-200-2001:db8::1".
//
//   bytes  field       width  meaning
//   0-3    sub-type    u32    16
//   4-5    route type  u16
//   6-7    -                  zero
//   8-11   port        u32    port-local identifier
//   12-15  site        u32    site identifier
//   16-19  IPv4 node   u32    first octet most significant
//   20-35  IPv6 node   16     in address order
//   36     family      u8     0 IPv4, else IPv6
//   37-88  -                  zero
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/endpoint_key.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint16_t kNodeAt = 16;

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    Number("bolSdwanType", 4, 2),
    Number("bolSdwanPortLocalID", 8, 4),
    Number("bolSdwanSiteID", 12, 4),
    Ipv4Word("bolSdwanNodeIDv4", kNodeAt),
    ByteArray("bolSdwanNodeIDv6", kNodeAt + kAddressIpv6At, 16, 16),
    Byte("bolSdwanPrefixType", kNodeAt + kAddressFamilyAt),
};

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr ScanItem kRouteType{"the route type", UINT16_MAX};
constexpr ScanItem kPort{"the port", UINT32_MAX};
constexpr ScanItem kSite{"the site", UINT32_MAX};
constexpr ScanItem kOctet{"an octet of the node", UINT8_MAX};

constexpr EndpointKey kKey{
    .ipv4 = {"%hu-%u-%u-%u.%u.%u.%u", {kRouteType, kPort, kSite, kOctet, kOctet, kOctet, kOctet}},
    .ipv6 = {"%hu-%u-%u-%s", {kRouteType, kPort, kSite, {"the node", 0}}},
    .print = "%hu-%u-%u-%s",
    .ipv4Text = {13, 43},
    .ipv6Text = {6, 69},
    .dropsLast = false,
    .addressAt = kNodeAt - kPayloadAt,
    .numberCount = 3,
    .numbers = {{0, 2}, {4, 4}, {8, 4}},
};

// The sub-type is written as soon as the text is known to be one word, before anything else of it is looked at.
uint32_t ReadWhole(const char *text, uint8_t *value, Why *why)
{
    const Text trimmed = Trim(text);
    if (!IsOneWord(FormOf(kKey, trimmed), trimmed, why)) {
        return DT_ERR_FAIL;
    }
    Store(value, kSdwanSubType);
    return ReadEndpointKey(kKey, trimmed, value + kPayloadAt, why);
}

bool Read(const char *text, void *value, Why *why)
{
    return ReadWhole(text, static_cast<uint8_t *>(value), why) == DT_OK;
}

constexpr FormatInRule kIn = RouteKeyIn(Read);
// A value of another sub-type costs even the caller its buffer.
constexpr FormatOutRule kOut = OfSubType(RouteKeyOut(PrintKey<SYSDT_SdwanPrefix2Str>), kSdwanSubType, true);
constexpr HelpRule kHelp{.text = "X-X-X-X.X.X.X", .memory = Memory::kPlain};
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 6};

} // namespace

constinit const Type kSdwan = MakeSubType({
    .name = "SD-WAN",
    .description = "the key of an SD-WAN edge route",
    .reference = "draft-ietf-idr-sdwan-edge-discovery",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kEndpointKeyRules,
    .shortestText = kKey.ipv6Text.least,
    .longestText = kKey.ipv6Text.most,
    .subType = kSdwanSubType,
    .lua = BGP_LUA_LOSES, // only the composite reads it
});

} // namespace bgp

uint32_t SYSDT_Str2SdwanPrefix(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::ReadWhole(text, static_cast<uint8_t *>(value), nullptr);
}

BGP_ENDPOINT_KEY_PARTS(SYSDT_Str2SdwanV4Prefix, SYSDT_SdwanV4Prefix2Str, bgp::kKey, Ipv4)
BGP_ENDPOINT_KEY_PARTS(SYSDT_Str2SdwanV6Prefix, SYSDT_SdwanV6Prefix2Str, bgp::kKey, Ipv6)

uint32_t SYSDT_SdwanPrefix2Str(const void *body, char *buffer, uint32_t *printed)
{
    return bgp::PrintEndpointKey(bgp::kKey, static_cast<const uint8_t *>(body), buffer, printed);
}

BGP_FORMAT_IN(SYSDT_SdwanPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_SdwanPrefixFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_SdwanPrefixCheck, bgp::kBolPrefixLength)
BGP_HELP(SYSDT_SdwanPrefixHelp, bgp::kHelp)
BGP_COMPARE_BYTES_TESTED(SYSDT_SdwanPrefixCompare)
BGP_LUA_SET(SYSDT_SdwanPrefixLuaSet, bgp::kLua)

uint32_t SYSDT_SdwanPrefixLuaGet(lua_State *L, int32_t tableIndex, void *value)
{
    return bgp::ReadLuaKey(bgp::kReader, L, value, tableIndex);
}

BGP_KEY_READER(SYSDT_SdwanPrefixNewLuaGet, bgp::kReader)

uint32_t SYSDT_SdwanPrefixEndian(const void *request, uint32_t, uint32_t, void *body)
{
    return bgp::SwapEndpointKey(bgp::kKey, request, body);
}
