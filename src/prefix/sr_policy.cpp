// SRPOLICY, sub-type 14 of BOLPREFIX: the key of a segment-routing policy route (RFC 9830), typed and printed as
// "[distinguisher][colour][endpoint]": "[1][100][10.0.0.1]", "[1][100][2001:db8::1]".
//
//   bytes  field          width  meaning
//   0-3    sub-type       u32    14
//   4-7    distinguisher  u32
//   8-11   colour         u32
//   12-15  IPv4 endpoint  u32    first octet most significant
//   16-31  IPv6 endpoint  16     in address order
//   32     family         u8     0 IPv4, else IPv6
//   33-88  -                     zero
//
// Octets of the endpoint are not judged: "[1][2][10.0.0.256]" is taken, and means 10.0.1.0. The closing bracket of an
// IPv6 key may be any character.
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/endpoint_key.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint16_t kEndpointAt = 12;

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    Number("bolSrPolicyDistinguisher", 4, 4),
    Number("bolSrPolicyPolicyColor", 8, 4),
    Ipv4Word("bolSrPolicyEndpointv4", kEndpointAt),
    ByteArray("bolSrPolicyEndpointv6", kEndpointAt + kAddressIpv6At, 16, 16),
    Byte("bolSrPolicyPolicyType", kEndpointAt + kAddressFamilyAt),
};

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr ScanItem kDistinguisher{"the distinguisher", UINT32_MAX};
constexpr ScanItem kColour{"the colour", UINT32_MAX};
constexpr ScanItem kOctet{"an octet of the endpoint", UINT32_MAX};

constexpr EndpointKey kKey{
    .ipv4 = {"[%u][%u][%u.%u.%u.%u]", {kDistinguisher, kColour, kOctet, kOctet, kOctet, kOctet}},
    .ipv6 = {"[%u][%u][%s", {kDistinguisher, kColour, {"the endpoint", 0}}},
    .print = "[%u][%u][%s]",
    .ipv4Text = {15, 42},
    .ipv6Text = {8, 67},
    .dropsLast = true,
    .addressAt = kEndpointAt - kPayloadAt,
    .numberCount = 2,
    .numbers = {{0, 4}, {4, 4}},
};

uint32_t ReadBody(const char *text, uint8_t *body, Why *why)
{
    const Text trimmed = Trim(text);
    return IsOneWord(FormOf(kKey, trimmed), trimmed, why) ? ReadEndpointKey(kKey, trimmed, body, why) : DT_ERR_FAIL;
}

bool Read(const char *text, uint8_t *payload, Why *why)
{
    return ReadBody(text, payload, why) == DT_OK;
}

constexpr FormatInRule kIn = RouteKeyIn(ReadKey<kSrPolicySubType, Read>);
// A value of another sub-type costs even the caller its buffer.
constexpr FormatOutRule kOut = OfSubType(RouteKeyOut(PrintKey<SYSDT_SrPolicyPrefix2Str>), kSrPolicySubType, true);
constexpr HelpRule kHelp{.text = "[X][X][X.X.X.X]", .memory = Memory::kPlain};
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 6}; // one more than it leaves: "bolType" goes too

} // namespace

constinit const Type kSrPolicy = MakeSubType({
    .name = "SRPOLICY",
    .description = "the key of a segment-routing policy route",
    .reference = "RFC 9830",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kEndpointKeyRules,
    .shortestText = kKey.ipv6Text.least,
    .longestText = kKey.ipv6Text.most,
    .subType = kSrPolicySubType,
    .lua = BGP_LUA_LOSES, // only the composite reads it
});

} // namespace bgp

uint32_t SYSDT_Str2SrPolicyPrefix(const char *text, void *body)
{
    if (text == nullptr || body == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::ReadBody(text, static_cast<uint8_t *>(body), nullptr);
}

BGP_ENDPOINT_KEY_PARTS(SYSDT_Str2Srv4PolicyPrefix, SYSDT_Srv4PolicyPrefix2Str, bgp::kKey, Ipv4)
BGP_ENDPOINT_KEY_PARTS(SYSDT_Str2Srv6PolicyPrefix, SYSDT_Srv6PolicyPrefix2Str, bgp::kKey, Ipv6)

uint32_t SYSDT_SrPolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed)
{
    return bgp::PrintEndpointKey(bgp::kKey, static_cast<const uint8_t *>(body), buffer, printed);
}

BGP_FORMAT_IN(SYSDT_SrPolicyPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_SrPolicyPrefixFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_SrPolicyPrefixCheck, bgp::kBolPrefixLength)
BGP_HELP(SYSDT_SrPolicyPrefixHelp, bgp::kHelp)
BGP_COMPARE_BYTES_TESTED(SYSDT_SrPolicyPrefixCompare)
BGP_LUA_SET(SYSDT_SrPolicyPrefixLuaSet, bgp::kLua)

uint32_t SYSDT_SrPolicyPrefixLuaGet(lua_State *L, int32_t tableIndex, void *value)
{
    return bgp::ReadLuaKey(bgp::kReader, L, value, tableIndex);
}

BGP_KEY_READER(SYSDT_SrPolicyPrefixNewLuaGet, bgp::kReader)

uint32_t SYSDT_SrPolicyPrefixEndian(const void *request, uint32_t, uint32_t, void *body)
{
    return bgp::SwapEndpointKey(bgp::kKey, request, body);
}
