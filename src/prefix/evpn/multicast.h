// The parsers of the multicast routes, for the source that tells routes apart.
#ifndef BGP_PREFIX_EVPN_MULTICAST_H
#define BGP_PREFIX_EVPN_MULTICAST_H

#include "host/refusal.h"

#include <cstdint>

namespace bgp {

// A terminated, trimmed text to a value, all but its sub-type word. False when the text is refused; the value may have
// been written then.
using RouteReader = bool(const char *text, void *value, Why *why);

// The reader of the multicast route that has so many colons outside brackets; null when none has.
RouteReader *FindMulticastReader(uint32_t colonsOutside);

} // namespace bgp

#endif
