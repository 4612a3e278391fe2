// What other sources use of the extended community and the site of origin.
#ifndef BGP_COMMUNITY_EXT_COMMUNITY_H
#define BGP_COMMUNITY_EXT_COMMUNITY_H

#include "bgp_datatypes/community.h"
#include "host/type.h"

namespace bgp {

extern const Type kExtCommunity;
extern const Type kSoo;

inline constexpr uint32_t kAsTrans = 23456; // stands for an AS number that needs four bytes (RFC 6793)

} // namespace bgp

#endif
