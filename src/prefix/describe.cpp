// Which layout a route key has: told by its sub-type word and, for EVPN, its route type.
#include "prefix/prefix.h"

#include "host/bytes.h"
#include "prefix/evpn/routes.h"

namespace bgp {

namespace {

constexpr const BgpLayout *kLayouts[BOL_PREFIX_SUBTYPES] = {
    &kVplsAdLayout,
    nullptr, // EVPN: by route type
    &kNg2Layout,    &kNg3Layout,      &kNg42Layout,     &kNg43Layout,       &kNg5Layout,
    &kNg6Layout,    &kVrfRtExtLayout, &kL2vpnLayout,    &kVpnv4McastLayout, &kMdtLayout,
    &kRpdLayout,    &kNg41Layout,     &kSrPolicyLayout, &kIpv6PrefixLayout, &kSdwanLayout,
};

} // namespace

const BgpLayout *DescribeBolPrefix(const void *value, uint32_t length)
{
    if (value == nullptr || length < kPayloadAt) {
        return nullptr;
    }
    const auto subType = Load<uint32_t>(value);
    if (subType == kEvnSubType) {
        return DescribeEvpnRoute(value, length);
    }
    return subType < BOL_PREFIX_SUBTYPES ? kLayouts[subType] : nullptr;
}

} // namespace bgp
