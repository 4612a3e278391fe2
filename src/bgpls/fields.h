// The fields of a BGP-LS key's sections: the keyword tables beneath the top level. Their handlers want the descriptor
// of the section as target.
#ifndef BGP_BGPLS_FIELDS_H
#define BGP_BGPLS_FIELDS_H

#include "bgp_datatypes/bgpls.h"

namespace bgp {

inline constexpr uint32_t kLsNodeFieldCount = 8;
inline constexpr uint32_t kLsLinkFieldCount = 8;
inline constexpr uint32_t kLsPrefixFieldCount = 3;
inline constexpr uint32_t kLsTeFieldCount = 7;
inline constexpr uint32_t kLsSidFieldCount = 2;

extern const BgpLsKeyword kLsNodeFields[kLsNodeFieldCount];
extern const BgpLsKeyword kLsLinkFields[kLsLinkFieldCount];
extern const BgpLsKeyword kLsPrefixFields[kLsPrefixFieldCount];
extern const BgpLsKeyword kLsTeFields[kLsTeFieldCount];
extern const BgpLsKeyword kLsSidFields[kLsSidFieldCount];

// The flags of fields that rules name.
enum : uint32_t {
    kLsNodeOspfAreaId = 4,
    kLsNodeBgpRouterId = 16,
    kLsNodeMemberAs = 32,
    kLsLinkIdentifier = 1,
    kLsLinkLocal = 2,
    kLsLinkRemote = 4,
    kLsPrefixMtId = 1,
    kLsPrefixOspfRouteType = 2,
    kLsPrefixPrefix = 4,
    kLsTeAll = 127,
    kLsSidSid = 2,
};

} // namespace bgp

#endif
