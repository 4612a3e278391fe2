// The EVPN routes, one layout per route type. A value has 89 bytes:
//
//   bytes  field       width  meaning
//   0-3    sub-type    u32    1
//   4      route type  u8     1 to 8
//   5-88   body               by route type, see the rows; zero behind it
//
// Numbers are in host order. Lengths are u8, in bits; that of an address stands directly in front of it. An address is
// the 21-byte field of address_field.h; an ESI has 10 bytes and a MAC 6, in the order in which they are written.
#include "prefix/address_field.h"
#include "prefix/evpn.h"
#include "prefix/prefix.h"

namespace bgp {

namespace {

// clang-format off

// Ethernet auto-discovery, RFC 7432 section 7.1.
constexpr BgpField kAutoDiscovery[] = {
    kSubTypeField,
    kRouteTypeField,
    ByteArray("esi", 5, kEsiSize),
    Number("ethernetTag", 15, 4),
};

// MAC/IP advertisement, RFC 7432 section 7.2.
constexpr BgpField kMacIp[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("macLength", 9),         ByteArray("mac", 10, kMacSize),
    Byte("ipLength", 16),         AddressField("ip", 17),
};

// Inclusive multicast Ethernet tag, RFC 7432 section 7.3.
constexpr BgpField kInclusive[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("originatorLength", 9),  AddressField("originator", 10),
};

// Ethernet segment, RFC 7432 section 7.4.
constexpr BgpField kSegment[] = {
    kSubTypeField,
    kRouteTypeField,
    ByteArray("esi", 5, kEsiSize),
    Byte("originatorLength", 15), AddressField("originator", 16),
};

// IP prefix, RFC 9136 section 3.
constexpr BgpField kIpPrefix[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("prefixLength", 9),      AddressField("prefix", 10),
};

// Selective multicast Ethernet tag, RFC 9251 section 9.1.
constexpr BgpField kSmet[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("sourceLength", 9),      AddressField("source", 10),
    Byte("groupLength", 31),      AddressField("group", 32),
    Byte("originatorLength", 53), AddressField("originator", 54),
};

// Multicast leave synch, RFC 9251 section 9.3. Without the last field: multicast membership report synch, section 9.2.
constexpr BgpField kLeave[] = {
    kSubTypeField,
    kRouteTypeField,
    ByteArray("esi", 5, kEsiSize),
    Number("ethernetTag", 15, 4),
    Byte("sourceLength", 19),     AddressField("source", 20),
    Byte("groupLength", 41),      AddressField("group", 42),
    Byte("originatorLength", 63), AddressField("originator", 64),
    Number("leaveNumber", 85, 4),
};

constexpr uint32_t kJoinFields = 10;

// The orders of the first five are weak on purpose: routes that differ only in what is left out, an ESI or an address,
// are one route to those who compare them.
constexpr EvpnRoute kRoutes[] = {
    {Layout(kAutoDiscovery, kBolPrefixLength),   3, 4},  // 1: tag
    {Layout(kMacIp, kBolPrefixLength),           2, 6},  // 2: tag, MAC length, MAC, IP length
    {Layout(kInclusive, kBolPrefixLength),       2, 4},  // 3: tag, length
    {Layout(kSegment, kBolPrefixLength),         2, 2},  // 4: nothing
    {Layout(kIpPrefix, kBolPrefixLength),        2, 4},  // 5: tag, length
    {Layout(kSmet, kBolPrefixLength),            2, 9},  // 6: everything
    {{kLeave, kJoinFields, kBolPrefixLength},    2, 10}, // 7: everything
    {Layout(kLeave, kBolPrefixLength),           2, 11}, // 8: everything
};

// clang-format on

} // namespace

const EvpnRoute *FindEvpnRoute(uint8_t routeType)
{
    return routeType >= 1 && routeType <= kLeaveRoute ? &kRoutes[routeType - 1] : nullptr;
}

const BgpLayout *DescribeEvpnRoute(const void *value, uint32_t length)
{
    const auto *bytes = static_cast<const uint8_t *>(value);
    const EvpnRoute *route = length > kRouteTypeAt ? FindEvpnRoute(bytes[kRouteTypeAt]) : nullptr;
    return route != nullptr ? &route->layout : nullptr;
}

} // namespace bgp
