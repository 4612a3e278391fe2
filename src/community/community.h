// What other sources use of the communities: facts, and how one standard community (RFC 1997) is read and printed.
#ifndef BGP_COMMUNITY_COMMUNITY_H
#define BGP_COMMUNITY_COMMUNITY_H

#include "bgp_datatypes/community.h"
#include "host/text.h"
#include "host/type.h"

namespace bgp {

extern const Type kCommunity;
extern const Type kCommunityList; // CMNTY_ENHANCE
extern const Type kLargeCommunity;
extern const Type kExtCommunityBw;
extern const Type kExtCommunityCompr;
extern const Type kAttrIdBitmap;

// How a community was typed.
enum CommunityForm : uint8_t {
    kByNumberOrName = 0,
    kByHalves = 1, // "100:1"
    kUnset = 2     // no community; in values only
};

inline constexpr uint32_t kLongestCommunity = 19; // "no-export-subconfed"

inline constexpr BgpRule kUnknownName{"unknown-name", "this is neither a number nor a well-known name", 0};

struct Community {
    uint32_t number;
    uint32_t form; // a CommunityForm, or whatever a value holds
};

// A trimmed text: a number, two halves or a well-known name in any case. DT_ERR_FAIL when it is none of them,
// DT_ERR_NO_MEMORY when the look-up of a name gets none. `community` is filled on success only. Of texts that are no
// numbers those with more than `mostColons` colons are not looked up.
uint32_t ReadCommunity(uint32_t memoryHandle, Text text, uint32_t mostColons, Community &community, Why *why);

// The community that a text begins with, when it is typed as a number or in halves, and the place behind it. Null says
// only that ReadCommunity() has to tell.
const char *ReadBareCommunity(const char *text, Community &community);

// Appends the well-known name, or else the number by its form; nothing for a number without a name and with a form that
// is not typed.
void FormatCommunity(Community community, GrowingText &text);

} // namespace bgp

#endif
