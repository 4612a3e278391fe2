// EVN as a sub-type, until the EVPN sources tell it themselves: refused texts without a reason.
#include "prefix/evpn.h"
#include "prefix/prefix.h"

namespace bgp {

namespace {

uint32_t Parse(const char *text, void *value)
{
    Store(value, kEvnSubType);
    return SYSDT_Str2EvnPrefix(text, value, kAnyEsiType);
}

constexpr FormatInRule kIn = RouteKeyIn(Unexplained<Parse>);
constexpr const BgpRule *kRules[] = {&kUnexplained};

} // namespace

constinit const Type kEvpn = MakeSubType({
    .name = "EVN",
    .description = "the key of an EVPN route",
    .reference = "RFC 7432, RFC 9136, RFC 9251",
    .in = &kIn,
    .rules = kRules,
    .shortestText = 1,
    .longestText = kLongestRoute,
    .subType = kEvnSubType,
    .textSize = kTextSize,
    .order = BGP_ORDER_NONE,
    .lua = BGP_LUA_LOSES,
    .traits = BGP_TRAIT_READS_SHORT,
    .describe = DescribeEvpnRoute,
});

} // namespace bgp
