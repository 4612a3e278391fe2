// What the sources of the BGP-LS key tell each other, and the registration, beside its operations.
#ifndef BGP_BGPLS_BGPLS_H
#define BGP_BGPLS_BGPLS_H

#include "bgp_datatypes/bgpls.h"
#include "bgpls/record.h"
#include "host/contract.h"

namespace bgp {

struct Type;
extern const Type kBgpLsPrefix;

// The layout of a record by the NLRI type in its first four bytes; null for a type outside 1 to 6 or fewer bytes.
const BgpLayout *DescribeBgpLs(const void *value, uint32_t length);

// The text of a record, cut at kLsLargestLimit bytes with its terminator.
inline constexpr uint16_t kLsLargestLimit = 768;
uint32_t PrintLsKey(const uint8_t *record, uint32_t mode, char *buffer, uint32_t *printed);

inline constexpr FormatOutRule kLsOut{.modes = kAllButFour,
                                      .print = PrintLsKey,
                                      .textSize = kLsLargestLimit + 1,
                                      .valueSize = kLsRecordSize,
                                      .clearsFirst = true,
                                      .zeroExtends = true,
                                      .memory = Memory::kPlain};

} // namespace bgp

#endif
