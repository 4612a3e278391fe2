// The EVPN routes, one layout a route type: the only place where a field's place is written down. Parsers, printer,
// Compare and the layouts that tools read all take it from these rows. A value has 89 bytes:
//
//   bytes  field       width  meaning
//   0-3    sub-type    u32    1
//   4      route type  u8     1 to 8
//   5-88   body               by route type, see the rows; zero behind it
//
// Numbers are in host order. Lengths are u8, in bits; that of an address stands directly in front of it. An address is
// the 21-byte field of address_field.h; an ESI has 10 bytes and a MAC 6, in the order in which they are written.
#ifndef BGP_PREFIX_EVPN_ROUTES_H
#define BGP_PREFIX_EVPN_ROUTES_H

#include "host/address_field.h"
#include "host/layout.h"

#include <cstdint>
#include <string_view>

namespace bgp {

inline constexpr uint32_t kEvnSubType = 1;
inline constexpr uint32_t kRouteTypeAt = 4;

enum EvpnRouteType : uint8_t {
    kAutoDiscoveryRoute = 1,
    kMacIpRoute = 2,
    kInclusiveRoute = 3,
    kSegmentRoute = 4,
    kIpPrefixRoute = 5,
    kSmetRoute = 6,
    kJoinRoute = 7,
    kLeaveRoute = 8,
};

inline constexpr uint32_t kEsiSize = 10;
inline constexpr uint32_t kMacSize = 6;

// What all routes begin with; a script sees these two and the text.
inline constexpr BgpField kSubTypeField = Number("bolType", 0, 4);
inline constexpr BgpField kRouteTypeField = Byte("bolPrefixRtType", kRouteTypeAt);
inline constexpr uint32_t kBodyFields = 2; // the index of the first field of a body

// clang-format off

// Ethernet auto-discovery, RFC 7432 section 7.1.
inline constexpr BgpField kAutoDiscoveryFields[] = {
    kSubTypeField,
    kRouteTypeField,
    ByteArray("esi", 5, kEsiSize),
    Number("ethernetTag", 15, 4),
};

// MAC/IP advertisement, RFC 7432 section 7.2.
inline constexpr BgpField kMacIpFields[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("macLength", 9),         ByteArray("mac", 10, kMacSize),
    Byte("ipLength", 16),         AddressField("ip", 17),
};

// Inclusive multicast Ethernet tag, RFC 7432 section 7.3.
inline constexpr BgpField kInclusiveFields[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("originatorLength", 9),  AddressField("originator", 10),
};

// Ethernet segment, RFC 7432 section 7.4.
inline constexpr BgpField kSegmentFields[] = {
    kSubTypeField,
    kRouteTypeField,
    ByteArray("esi", 5, kEsiSize),
    Byte("originatorLength", 15), AddressField("originator", 16),
};

// IP prefix, RFC 9136 section 3.
inline constexpr BgpField kIpPrefixFields[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("prefixLength", 9),      AddressField("prefix", 10),
};

// Selective multicast Ethernet tag, RFC 9251 section 9.1.
inline constexpr BgpField kSmetFields[] = {
    kSubTypeField,
    kRouteTypeField,
    Number("ethernetTag", 5, 4),
    Byte("sourceLength", 9),      AddressField("source", 10),
    Byte("groupLength", 31),      AddressField("group", 32),
    Byte("originatorLength", 53), AddressField("originator", 54),
};

// Multicast leave synch, RFC 9251 section 9.3. Without the last field: multicast membership report synch, section 9.2.
inline constexpr BgpField kLeaveFields[] = {
    kSubTypeField,
    kRouteTypeField,
    ByteArray("esi", 5, kEsiSize),
    Number("ethernetTag", 15, 4),
    Byte("sourceLength", 19),     AddressField("source", 20),
    Byte("groupLength", 41),      AddressField("group", 42),
    Byte("originatorLength", 63), AddressField("originator", 64),
    Number("leaveNumber", 85, 4),
};

// clang-format on

// Where a field of these rows begins. A name that none of them has does not compile.
template <uint32_t Count>
consteval uint8_t At(const BgpField (&rows)[Count], std::string_view name)
{
    uint32_t i = 0;
    while (rows[i].Name != name) {
        ++i;
    }
    return static_cast<uint8_t>(rows[i].Offset);
}

// A route type: what people call it, its fields, "bolType" and "bolPrefixRtType" in front, and the run of them that
// makes its order.
struct EvpnRoute {
    const char *name;
    BgpLayout layout;
    uint8_t firstCompared, endCompared; // indexes of fields; equal ones: all routes of the type are equal
};

// Null for an unknown route type.
const EvpnRoute *FindEvpnRoute(uint8_t routeType);

// The layout that the route type names; null for an unknown one, and when `length` bytes do not reach that far.
const BgpLayout *DescribeEvpnRoute(const void *value, uint32_t length);

} // namespace bgp

#endif
