// What the sources of the EVPN routes share: where the route type stands, and the pieces that several parsers read.
#ifndef BGP_PREFIX_EVPN_H
#define BGP_PREFIX_EVPN_H

#include "bgp_datatypes/evpn.h"
#include "host/layout.h"
#include "host/text.h"

#include <cstdint>

namespace bgp {

inline constexpr uint32_t kEvnSubType = 1;
inline constexpr uint32_t kRouteTypeAt = 4;

// Route types that are named outside their rows.
inline constexpr uint8_t kIpPrefixRoute = 5;
inline constexpr uint8_t kSmetRoute = 6;
inline constexpr uint8_t kJoinRoute = 7;
inline constexpr uint8_t kLeaveRoute = 8;

inline constexpr uint32_t kEsiSize = 10;
inline constexpr uint32_t kMacSize = 6;

inline constexpr uint32_t kLongestRoute = 183; // characters of a trimmed text
inline constexpr uint32_t kTagChars = 10;
inline constexpr uint32_t kLengthChars = 3;
inline constexpr uint32_t kEsiChars = 24;
inline constexpr uint32_t kLongestAddress = 49; // characters, of an IPv6 address without its brackets
inline constexpr uint32_t kMostIpv6Length = 128;

// The two ways of reading an ESI: as typed by an operator, or from a script, whose ESI type is checked (EsiTypeCheck).
inline constexpr uint32_t kAnyEsiType = 1;
inline constexpr uint32_t kEsiTypeCheck = 0;

// What all routes begin with; a script sees these two and the text.
inline constexpr BgpField kSubTypeField = Number("bolType", 0, 4);
inline constexpr BgpField kRouteTypeField = Byte("bolPrefixRtType", kRouteTypeAt);

// A route type: its fields, "bolType" and "bolPrefixRtType" in front, and the run of them that makes its order.
struct EvpnRoute {
    BgpLayout layout;
    uint8_t firstCompared, endCompared; // indexes of fields; equal ones: all routes of the type are equal
};

inline constexpr uint32_t kBodyFields = 2; // the index of the first field of a body

// Null for an unknown route type.
const EvpnRoute *FindEvpnRoute(uint8_t routeType);

// An IPv4 address into an address field.
bool ReadIpv4(const char *text, uint8_t *field);

// "[IPv6]" at the cursor, which moves behind the bracket; 16 bytes.
bool TakeBracketed(const char *&cursor, uint8_t *address16);

// The parser of the multicast route that has so many colons outside brackets; null when none has.
using RouteParser = uint32_t(const char *text, void *value);
RouteParser *FindMulticastParser(uint32_t colonsOutside);

// A parser of one route type: `read` fills the body, then the route type says that it is whole.
template <class Read>
uint32_t ParseRoute(uint8_t routeType, const char *text, void *value, Read read)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    if (!read(text, bytes)) {
        return DT_ERR_FAIL;
    }
    bytes[kRouteTypeAt] = routeType;
    return DT_OK;
}

} // namespace bgp

#endif
