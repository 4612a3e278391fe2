// What the sources of the route keys share: the frame of a BOLPREFIX value, the rules that most sub-types have in
// common, and the layouts.
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

// The layouts of the sub-types, each with "bolType" as its first field. EVPN routes have one per route type.
extern const BgpLayout kVplsAdLayout;     // 0
extern const BgpLayout kNg2Layout;        // 2
extern const BgpLayout kNg3Layout;        // 3
extern const BgpLayout kNg42Layout;       // 4
extern const BgpLayout kNg43Layout;       // 5
extern const BgpLayout kNg5Layout;        // 6
extern const BgpLayout kNg6Layout;        // 7
extern const BgpLayout kVrfRtExtLayout;   // 8
extern const BgpLayout kL2vpnLayout;      // 9
extern const BgpLayout kVpnv4McastLayout; // 10
extern const BgpLayout kMdtLayout;        // 11
extern const BgpLayout kRpdLayout;        // 12
extern const BgpLayout kNg41Layout;       // 13
extern const BgpLayout kSrPolicyLayout;   // 14
extern const BgpLayout kIpv6PrefixLayout; // 15
extern const BgpLayout kSdwanLayout;      // 16

extern const Type kEvn;       // sub-type 1
extern const Type kEvnPrefix; // EVNPREFIX

// The layout that the sub-type word names, and for EVPN the route type behind it. Null when `length` bytes do not reach
// that far, and for unknown sub-types and route types.
const BgpLayout *DescribeBolPrefix(const void *value, uint32_t length);

} // namespace bgp

#endif
