// The parsers of the multicast routes, for the source that tells routes apart.
#ifndef BGP_PREFIX_EVPN_MULTICAST_H
#define BGP_PREFIX_EVPN_MULTICAST_H

#include "host/refusal.h"

#include <cstdint>

namespace bgp {

// A text, which is terminated where it ends, to a value, all but its sub-type word. False when the text is refused; the
// value may have been written then.
using RouteReader = bool(Text text, uint8_t *value, uint32_t checkMode, Why *why);

RouteReader ReadSmet;
RouteReader ReadJoin;
RouteReader ReadLeave;

} // namespace bgp

#endif
