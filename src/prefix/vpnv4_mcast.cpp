// VPNV4MCAST, sub-type 10 of BOLPREFIX, and the type VPNV4MCPREFIX: the prefix of a VPNv4 multicast route (SAFI
// 129, RFC 6514).
//
//   bytes  field        width  meaning
//   0-3    sub-type     u32    10
//   4-7    prefix       u32    IPv4, first octet most significant
//   8-11   mask length  u32    0 to 32
//   12-88  -                   zero
//
// Typed as "a.b.c.d/m" (only as VPNV4MCPREFIX), printed without the mask length. VPNV4MCPREFIX is registered with a
// length of 8, the prefix and mask length alone; only Endian works on that form, all other operations on the 89 bytes.
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint16_t kMaskAt = kPayloadAt + 4;

// LuaGet of the type keeps the low halves only, so an address from a script loses its upper octets; the composite's
// reader keeps whole words.
constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    Ipv4Word("bolVpnv4McastPrefix", kPayloadAt, 2),
    Number("bolVpnv4McastMaskLen", kMaskAt, 4, 2),
};

constexpr BgpField kWholeFields[] = {
    Number("bolType", 0, 4),
    Ipv4Word("bolVpnv4McastPrefix", kPayloadAt),
    Number("bolVpnv4McastMaskLen", kMaskAt, 4),
};

constexpr BgpField kShortFields[] = {
    Ipv4Word("bolVpnv4McastPrefix", 0),
    Number("bolVpnv4McastMaskLen", 4, 4),
};

constexpr BgpLayout kWholeLayout = Layout(kWholeFields, kBolPrefixLength);
constexpr BgpLayout kShortLayout = Layout(kShortFields, 8);

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr NumbersRule kText = NumbersText(9, 18, "./", kMaskedPrefix);

bool Read(const char *text, uint8_t *payload, Why *why)
{
    return ReadMaskedPrefix(kText, kMaskAt - kPayloadAt, text, payload, why);
}

constexpr FormatInRule kIn = RouteKeyIn(ReadKey<kVpnv4McastSubType, Read>);
constexpr FormatOutRule kOut = RouteKeyOut(PrintKey<SYSDT_Vpnv4McastPrefix2Str>);
constexpr HelpRule kHelp{.text = "X.X.X.X/M or X.X.X.X"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr KeyLuaRule kLuaGet{.layout = kLayout, .subType = kVpnv4McastSubType, .pops = 3};
constexpr ReaderRule kReader{.layout = kWholeLayout, .pops = 3};

} // namespace

constinit const Type kVpnv4Mcast = MakeSubType({
    .name = "VPNV4MCAST",
    .description = "the prefix of a VPNv4 multicast route",
    .reference = "RFC 6514",
    .out = &kOut,
    .layout = &kLayout,
    .subType = kVpnv4McastSubType,
    .lua = BGP_LUA_LOSES,
    .traits = BGP_TRAIT_NO_TEXT,
});

constinit const Type kVpnv4McPrefix = MakeType({
    .name = "VPNV4MCPREFIX",
    .description = "the prefix of a VPNv4 multicast route",
    .reference = "RFC 6514",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kText,
    .rules = kMaskedPrefixRules,
    .typeId = 295,
    .network = BGP_NETWORK_PAYLOAD,
    .lua = BGP_LUA_LOSES,
});

} // namespace bgp

uint32_t SYSDT_Str2Vpnv4McastPrefix(const char *text, void *payload)
{
    return bgp::ParsePayload<bgp::Read>(text, payload);
}

uint32_t SYSDT_Vpnv4McastPrefix2Str(const void *payload, char *buffer, uint32_t *printed)
{
    return bgp::PrintIpv4Word(payload, buffer, printed);
}

BGP_FORMAT_IN(SYSDT_VPNV4MCASTPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VPNV4MCASTPrefixFormatOut, bgp::kOut)
BGP_KEY_CHECK(SYSDT_VPNV4MCASTPrefixCheck)
BGP_HELP(SYSDT_VPNV4MCASTPrefixHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_VPNV4MCASTPrefixCompare)
BGP_LUA_SET(SYSDT_VPNV4MCASTPrefixLuaSet, bgp::kLua)
BGP_KEY_LUA_GET(SYSDT_VPNV4MCASTPrefixLuaGet, bgp::kLuaGet)
BGP_ENDIAN(SYSDT_VPNV4MCASTLuaEndian, bgp::kShortLayout)
BGP_KEY_READER(SYSDT_VPNV4MCASTPrefixNewLuaGet, bgp::kReader)
