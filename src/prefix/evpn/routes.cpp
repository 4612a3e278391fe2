// The route types of EVPN as rows: their names, fields and orders.
#include "prefix/evpn/routes.h"

#include "prefix/prefix.h"

namespace bgp {

namespace {

constexpr uint32_t kJoinFields = 10; // all of a leave but its number

// clang-format off

// The orders of the first five are weak on purpose: routes that differ only in what is left out, an ESI or an address,
// are one route to those who compare them.
constexpr EvpnRoute kRoutes[] = {
    {"Ethernet auto-discovery",             Layout(kAutoDiscoveryFields, kBolPrefixLength),    3, 4},  // tag
    {"MAC/IP advertisement",                Layout(kMacIpFields, kBolPrefixLength),            2, 6},  // tag to IP length
    {"inclusive multicast Ethernet tag",    Layout(kInclusiveFields, kBolPrefixLength),        2, 4},  // tag, length
    {"Ethernet segment",                    Layout(kSegmentFields, kBolPrefixLength),          2, 2},  // nothing
    {"IP prefix",                           Layout(kIpPrefixFields, kBolPrefixLength),         2, 4},  // tag, length
    {"selective multicast Ethernet tag",    Layout(kSmetFields, kBolPrefixLength),             2, 9},  // everything
    {"multicast membership report synch",   {kLeaveFields, kJoinFields, kBolPrefixLength},     2, 10}, // everything
    {"multicast leave synch",               Layout(kLeaveFields, kBolPrefixLength),            2, 11}, // everything
};

// clang-format on

} // namespace

const EvpnRoute *FindEvpnRoute(uint8_t routeType)
{
    return routeType >= kAutoDiscoveryRoute && routeType <= kLeaveRoute ? &kRoutes[routeType - 1] : nullptr;
}

const BgpLayout *DescribeEvpnRoute(const void *value, uint32_t length)
{
    const auto *bytes = static_cast<const uint8_t *>(value);
    const EvpnRoute *route = length > kRouteTypeAt ? FindEvpnRoute(bytes[kRouteTypeAt]) : nullptr;
    return route != nullptr ? &route->layout : nullptr;
}

} // namespace bgp
