// What the registration needs of the BGP-LS key beside its operations.
#ifndef BGP_BGPLS_BGPLS_H
#define BGP_BGPLS_BGPLS_H

#include "bgp_datatypes/bgpls.h"

namespace bgp {

// The layout of a record by the NLRI type in its first four bytes; null for a type outside 1 to 6 or fewer bytes.
const BgpLayout *DescribeBgpLs(const void *value, uint32_t length);

} // namespace bgp

#endif
