// IPV4, sub-type 0 of BOLPREFIX: the VPLS auto-discovery key (RFC 4761, RFC 6074), a single IPv4 address.
//
//   bytes  field     width  meaning
//   0-3    sub-type  u32    0
//   4-7    address   u32    first octet most significant
//   8-88   -                zero
//
// It is the first sub-type of the composite: every typed text is offered to it first, and its Check, Help and Compare
// are the first ones asked about any BOLPREFIX value. Check therefore passes whatever has the composite's length.
#include "host/address.h"
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr BgpField kFields[] = {
    {"bolType", 0, 4, 1, BGP_FIELD_NUMBER, 0, 1}, // dropped by LuaGet before it reads on
    Ipv4Word("bolPrefix", kPayloadAt),
};

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr uint16_t kLongestText = 63;

constexpr const BgpRule *kRules[] = {&kEmpty, &kBlank, &kTooLarge, &kLeadingZero, &kNoIpv4};

// What an IPv4 address looks like is for the host to say.
bool Read(const char *text, uint8_t *payload, Why *why)
{
    const Text trimmed = Trim(text);
    char copy[kLongestText + 1];
    uint32_t address = 0;
    const char *const terminated = Terminated(trimmed, copy, sizeof copy);
    if (terminated == nullptr || SYSDT_Str2Ipv4(terminated, &address) != 0) {
        return RefuseIpv4(why, trimmed, kWholeText);
    }
    Store(payload, address);
    return true;
}

constexpr FormatInRule kIn = RouteKeyIn(ReadKey<kVplsAdSubType, Read>);
// The sub-type word is not looked at.
constexpr FormatOutRule kOut = RouteKeyOut(PrintKey<PrintIpv4Word>);

// A typed text that cannot become an IPv4 address gets the host's own code, so that the composite goes on to the help
// of its next sub-type.
constexpr HelpRule kHelp{.text = "X.X.X.X", .admits = ZOL_CheckBySymbolForIPV4};
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr KeyLuaRule kLuaGet{.layout = kLayout, .subType = kVplsAdSubType, .pops = 2};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kVplsAd = MakeSubType({
    .name = "IPV4",
    .description = "the key of a VPLS auto-discovery route",
    .reference = "RFC 4761, RFC 6074",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = 1,
    .longestText = kLongestText,
    .subType = kVplsAdSubType,
    .order = BGP_ORDER_NONE, // values of other sub-types have none
    .lua = BGP_LUA_TYPED,
});

} // namespace bgp

BGP_FORMAT_IN(SYSDT_VplsAdPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VplsAdPrefixFormatOut, bgp::kOut)
BGP_KEY_CHECK(SYSDT_VplsAdPrefixCheck)
BGP_HELP(SYSDT_VplsAdPrefixHelp, bgp::kHelp)

int32_t SYSDT_VplsAdPrefixCompare(const void *, uint32_t length, const void *left, const void *right)
{
    if (left == nullptr || right == nullptr) {
        return static_cast<int32_t>(DT_ERR_NULL_PTR);
    }
    uint8_t leftArea[bgp::kBolPrefixLength];
    uint8_t rightArea[bgp::kBolPrefixLength];
    const uint8_t *first = bgp::WholeKey(left, length, leftArea);
    const uint8_t *second = bgp::WholeKey(right, length, rightArea);
    if (bgp::Load<uint32_t>(first) != bgp::kVplsAdSubType || bgp::Load<uint32_t>(second) != bgp::kVplsAdSubType) {
        return static_cast<int32_t>(DT_ERR_FAIL);
    }
    const auto one = bgp::Load<uint32_t>(first + bgp::kPayloadAt);
    const auto other = bgp::Load<uint32_t>(second + bgp::kPayloadAt);
    return (one > other) - (one < other);
}

BGP_LUA_SET(SYSDT_VplsAdPrefixLuaSet, bgp::kLua)
BGP_KEY_LUA_GET(SYSDT_VplsAdPrefixLuaGet, bgp::kLuaGet)
BGP_KEY_READER(SYSDT_VplsAdPrefixNewLuaGet, bgp::kReader)
