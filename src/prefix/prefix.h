// What the sources of the route keys share: the frame of a BOLPREFIX value, the rules that most sub-types have in
// common, and the types.
#ifndef BGP_PREFIX_PREFIX_H
#define BGP_PREFIX_PREFIX_H

#include "bgp_datatypes/prefix.h"
#include "host/type.h"

#include <cstdint>

namespace bgp {

inline constexpr uint16_t kBolPrefixTypeId = 279;
inline constexpr uint16_t kBolPrefixLength = 89;
inline constexpr uint32_t kPayloadAt = 4; // behind the sub-type word, u32 in host order

// FormatIn and FormatOut of a sub-type that does nothing else than parse and print: text in every mode but 4. The
// parser fills the whole value, sub-type word included.
constexpr FormatInRule RouteKeyIn(Reader read)
{
    return {.typeId = kBolPrefixTypeId,
            .length = kBolPrefixLength,
            .modes = kAllButFour,
            .read = read,
            .refusal = DT_ERR_INVALID_PARAM};
}

constexpr FormatOutRule RouteKeyOut(Printer print)
{
    return {.modes = kAllButFour,
            .print = print,
            .textSize = kTextSize,
            .valueSize = kBolPrefixLength,
            .failed = Failed::kRelease,
            .clearsFirst = true,
            .zeroExtends = true};
}

// What the types of all sub-types have in common.
consteval Type MakeSubType(TypeRule rule)
{
    rule.typeId = kBolPrefixTypeId;
    rule.network = BGP_NETWORK_LAYOUT;
    return MakeType(rule);
}

// The value, or a copy in `area` with zeros behind it when it is shorter than a whole one.
inline const uint8_t *WholeKey(const void *value, uint32_t length, uint8_t (&area)[kBolPrefixLength])
{
    if (length >= kBolPrefixLength) {
        return static_cast<const uint8_t *>(value);
    }
    std::memset(area, 0, sizeof area);
    std::memcpy(area, value, length);
    return area;
}

// The sub-types in the order of their words. A sub-type is listed in kSubTypes of bolprefix.cpp, its operations in the
// tables above it; its own source makes the Type from the rules that the operations run on.
extern const Type kVplsAd;     // 0
extern const Type kEvpn;       // 1
extern const Type kNgType2;    // 2
extern const Type kNgType3;    // 3
extern const Type kNgType42;   // 4
extern const Type kNgType43;   // 5
extern const Type kNgType5;    // 6
extern const Type kNgType6;    // 7
extern const Type kVrfRtExt;   // 8
extern const Type kL2vpn;      // 9
extern const Type kVpnv4Mcast; // 10
extern const Type kMdt;        // 11
extern const Type kRpd;        // 12
extern const Type kNgType41;   // 13
extern const Type kSrPolicy;   // 14
extern const Type kIpv6Prefix; // 15
extern const Type kSdwan;      // 16

// The registered types: the composite, and four of its sub-types by themselves.
extern const Type kBolPrefix;
extern const Type kVpnv4McPrefix;
extern const Type kMdtPrefix;
extern const Type kL2vpnPrefix;
extern const Type kEvnPrefix;

// The layout that the sub-type word names, and for EVPN the route type behind it. Null when `length` bytes do not reach
// that far, and for unknown sub-types and route types.
const BgpLayout *DescribeBolPrefix(const void *value, uint32_t length);

} // namespace bgp

#endif
