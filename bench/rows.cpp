// Every descriptor row, sub-type, EVPN route type and BGP-LS NLRI type.
#include "floors.h"
#include "textbook.h"

#include <iterator>

namespace bgp::bench {

namespace {

#define NODE                                                                                                           \
    "[NODE][OSPFv2][IDENTIFIER{u32}][LOCAL[as{u32}][bgp-ls-identifier{ip4}][ospf-area-id0.0.0.{0-255}][igp-router-id{" \
    "ip4}]]"
#define LOCAL "[IDENTIFIER{u32}][LOCAL[as{u32}][ospf-area-id0.0.0.{0-255}][igp-router-id{ip4}]]"

// clang-format off
constexpr Row kRows[] = {
    // The types whose figures are compared with a floor, in the order of docs/speed.md.
    {"VRFRD", "AS:n", "{u16}:{u32}", nullptr, &kDistinguisherFloor, &kDistinguisherTextbook},
    {"VRFRD", "a.b.c.d:n", "{ip4}:{u16}", nullptr, &kDistinguisherFloor, &kDistinguisherTextbook},
    {"VRFRD", "x.y:n", "{u16}.{u16}:{u16}", nullptr, &kDistinguisherFloor, &kDistinguisherTextbook},
    {"VRFRT", "AS:n", "{u16}:{u32}", nullptr, &kTargetFloor, &kTargetTextbook},
    {"VRFRT", "a.b.c.d:n", "{ip4}:{u16}", nullptr, &kTargetFloor, &kTargetTextbook},
    {"VRFRT", "x.y:n", "{u16}.{u16}:{u16}", nullptr, &kTargetFloor, &kTargetTextbook},
    {"COMMUNITY", "n:n", "{u16}:{u16}", nullptr, &kCommunityFloor, &kCommunityTextbook},
    {"LARGECOMMUNITY", "n:n:n", "{u32}:{u32}:{u32}", nullptr, &kLargeCommunityFloor, &kLargeCommunityTextbook},
    {"ASNUM", "plain", "{u32}", nullptr, &kAsNumberFloor, &kAsNumberTextbook},
    {"ASNUM", "dotted", "{u16}.{u16}", nullptr, &kAsNumberFloor, &kAsNumberTextbook},
    {"BOLPREFIX", "IPv4", "{ip4}", "00000000", &kIpv4KeyFloor, &kIpv4KeyTextbook},
    {"BOLPREFIX", "IPv6", "{ip6}", "0f000000", &kIpv6KeyFloor, &kIpv6KeyTextbook},
    {"BOLPREFIX", "EVPN MAC/IP", "{u32}:48:{mac}:32:{ip4}", "0100000002", &kMacIpFloor, &kMacIpTextbook},
    {"BGPLSPREFIX", "node", NODE, "01000000", &kLsNodeFloor, &kLsNodeTextbook},
};
// clang-format on

} // namespace

Rows AllRows()
{
    return {kRows, std::size(kRows)};
}

} // namespace bgp::bench
