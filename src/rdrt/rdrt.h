// What other sources use of the route distinguishers and route targets.
#ifndef BGP_RDRT_RDRT_H
#define BGP_RDRT_RDRT_H

#include "bgp_datatypes/rdrt.h"

namespace bgp {

extern const BgpLayout kVrfRdLayout;
extern const BgpLayout kVrfRtLayout;
extern const BgpLayout kVrfRtV6Layout;
extern const BgpLayout kBolRdLayout;
extern const BgpLayout kSidStructureLayout;
extern const BgpLayout kVpnIdLayout;
extern const BgpLayout kRtpRdLayout;

// A route distinguisher of 12 bytes as VRFRD prints it.
uint32_t PrintVrfRd(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed);

} // namespace bgp

#endif
