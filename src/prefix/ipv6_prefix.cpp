// IPV6, sub-type 15 of BOLPREFIX: an IPv6 address.
//
//   bytes  field     width  meaning
//   0-3    sub-type  u32    15, host order
//   4-19   address   16     in address order; zero behind it
//
// Check, Help and Compare are those of the EVPN routes: the Compare finds any two IPv6 addresses without order.
#include "bgp_datatypes/evpn.h"
#include "host/address.h"
#include "host/address_field.h"
#include "host/layout.h"
#include "host/operations.h"
#include "host/text.h"
#include "prefix/prefix.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint32_t kIpv6SubType = 15;
constexpr uint32_t kIpv6TextSize = 256; // room for the host's text of an address, and for any text of one

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    ByteArray("bolPrefix", kPayloadAt, kIpv6Size),
};

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr const BgpRule *kRules[] = {&kEmpty, &kBlank, &kNoIpv6};

bool Read(const char *text, uint8_t *payload, Why *why)
{
    const Text trimmed = Trim(text);
    char copy[kIpv6TextSize];
    const char *const address = Terminated(trimmed, copy, sizeof copy);
    return (address != nullptr && SYSDT_Str2Ipv6(address, payload, 0) == 0) || RefuseIpv6(why, trimmed, nullptr);
}

uint32_t PrintAddress(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return SYSDT_Ipv6Prefix2Str(value, buffer, printed);
}

// Unlike other keys, type id and length are left alone until there is a result.
constexpr FormatOutRule ClearsNothing(FormatOutRule rule)
{
    rule.clearsFirst = false;
    return rule;
}

constexpr FormatInRule kIn = RouteKeyIn(ReadKey<kIpv6SubType, Read>);
constexpr FormatOutRule kOut = ClearsNothing(RouteKeyOut(PrintAddress));
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 0}; // the array's 17 slots are popped with the field

} // namespace

constinit const Type kIpv6Prefix = MakeSubType({
    .name = "IPV6",
    .description = "an IPv6 address",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = 1,
    .longestText = kIpv6TextSize - 1,
    .subType = kIpv6SubType,
    .order = BGP_ORDER_NONE,
    .lua = BGP_LUA_LOSES, // only the composite reads it
});

} // namespace bgp

uint32_t SYSDT_Ipv6Prefix2Str(const void *value, char *buffer, uint32_t *printed)
{
    char address[bgp::kIpv6TextSize] = {};
    const auto *bytes = static_cast<const uint8_t *>(value);
    if (inet_ntop6(bytes + bgp::kPayloadAt, address, sizeof address) == nullptr) {
        return DT_ERR_FAIL;
    }
    return bgp::Printed(bgp::PrintText(buffer, bgp::kIpv6TextSize, address), printed);
}

BGP_FORMAT_IN(SYSDT_Ipv6BolPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_Ipv6BolPrefixFormatOut, bgp::kOut)
BGP_LUA_SET(SYSDT_Ipv6BolPrefixLuaSet, bgp::kLua)
BGP_KEY_READER(SYSDT_Ipv6BolPrefixNewLuaGet, bgp::kReader)
