// What other sources use of the communities: layouts, and how one standard community (RFC 1997) is read and printed.
#ifndef BGP_COMMUNITY_COMMUNITY_H
#define BGP_COMMUNITY_COMMUNITY_H

#include "bgp_datatypes/community.h"
#include "host/text.h"
#include "host/type.h"

namespace bgp {

extern const BgpLayout kCommunityLayout;
extern const BgpLayout kCommunityListLayout; // one entry of CMNTY_ENHANCE
extern const Type kLargeCommunity;
extern const BgpLayout kExtCommunityBwLayout;
extern const BgpLayout kExtCommunityComprLayout;
extern const BgpLayout kAttrIdBitmapLayout;

// How a community was typed.
enum CommunityForm : uint8_t {
    kByNumberOrName = 0,
    kByHalves = 1, // "100:1"
    kUnset = 2     // no community; in values only
};

inline constexpr uint32_t kLongestCommunity = 19; // "no-export-subconfed"

struct Community {
    uint32_t number;
    uint32_t form; // a CommunityForm, or whatever a value holds
};

// A trimmed text: a number, two halves or a well-known name in any case. DT_ERR_FAIL when it is none of them,
// DT_ERR_NO_MEMORY when the look-up of a name gets none. `community` is filled on success only.
uint32_t ReadCommunity(uint32_t memoryHandle, Text text, Community &community);

// Prints the well-known name, or else the number by its form, into at most `room` bytes, terminator included. Returns
// the characters written; 0, with nothing written, for a number without a name and with a form that is not typed.
uint32_t FormatCommunity(Community community, char *to, uint32_t room);

} // namespace bgp

#endif
