// The text of an EVPN route, for the operations.
#ifndef BGP_PREFIX_EVPN_TEXT_H
#define BGP_PREFIX_EVPN_TEXT_H

#include "prefix/evpn/pieces.h"

namespace bgp {

inline constexpr uint32_t kLongestRoute = 183; // characters of a trimmed text

inline constexpr BgpRule kNoRoute{"route", "the separators are those of no EVPN route", 0};

// A text to a value, all but its sub-type word; checkMode is kAnyEsiType or kEsiTypeCheck. False when the text is
// refused; the value may have been written then.
bool ReadEvpnText(const char *text, void *value, uint32_t checkMode, Why *why);

// What a refusal may name.
inline constexpr const BgpRule *kEvpnRules[] = {
    &kEmpty,    &kTooLong,   &kBlank,     &kWrongCharacter,  &kNoRoute,       &kNoColon,
    &kNoDigit,  &kTooSmall,  &kTooLarge,  &kLeadingZero,     &kNoIpv4,        &kNoIpv6,
    &kNoMac,    &kNoOpening, &kNoClosing, &kSomethingBehind, &kNothingBehind, &kColonBehindIpv6,
    &kEsiGroup, &kEsiGroups, &kEsiType,   &kZeroEsi,         &kReservedEsi,
};

} // namespace bgp

#endif
