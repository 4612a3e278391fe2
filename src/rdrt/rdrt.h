// What other sources use of the route distinguishers and route targets.
#ifndef BGP_RDRT_RDRT_H
#define BGP_RDRT_RDRT_H

#include "bgp_datatypes/rdrt.h"
#include "host/type.h"

namespace bgp {

extern const Type kVrfRd;
extern const Type kVrfRt;
extern const Type kVrfRtV6;
extern const Type kBolRd;
extern const Type kSidStructure;
extern const Type kVpnId;
extern const Type kRtpRd;

// A route distinguisher of 12 bytes as VRFRD reads and prints it.
bool ReadVrfRd(const char *text, void *value, Why *why);
uint32_t PrintVrfRd(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed);

} // namespace bgp

#endif
