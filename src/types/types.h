// What the roof needs of the index, string and time types.
#ifndef BGP_TYPES_TYPES_H
#define BGP_TYPES_TYPES_H

#include "bgp_datatypes/types.h"

namespace bgp {

extern const BgpLayout kTimeRangeLayout;
extern const BgpLayout kCvrfNameLayout;

} // namespace bgp

#endif
