// The parse context of a BGP-LS key, and how a reason is made while one is read: the context is what every handler has.
#ifndef BGP_BGPLS_CONTEXT_H
#define BGP_BGPLS_CONTEXT_H

#include "bgp_datatypes/bgpls.h"
#include "host/refusal.h"

// ----------------------------------------------------------------------------------------------------------- context

struct BgpLsParseContext {
    const char *text; // trimmed; not terminated
    uint32_t textLength;
    uint32_t sections; // flags of the top-level groups seen so far; kLsExplained
    uint8_t *record;
    uint32_t nlriType;
    uint32_t protocolId;
    const BgpLsNlriParser *row; // of the NLRI type; null until it is seen
    const BgpLsNlriParser *rows;
    uint32_t rowCount;
};
static_assert(sizeof(void *) != 4 || sizeof(BgpLsParseContext) == 36);

namespace bgp {

// Flags of the top-level groups; the NLRI type comes first of all.
enum : uint32_t {
    kLsTypeSection = 1,
    kLsProtocolSection = 2,
};

// ----------------------------------------------------------------------------------------------------------- reasons

// A run of bracketed groups, and what they may be. The first `leading` rows may come first, and nowhere else.
struct LsRun {
    Text text;
    const BgpLsKeyword *rows;
    uint32_t rowCount;
    uint32_t leading;
};

// A group whose handler runs: its keyword, and the place of that in the text being read.
struct LsGroup {
    const char *keyword;
    Text place;
};

// What a reason is made with. It stands behind a context whose section mask has kLsExplained, in the same memory.
inline constexpr uint32_t kLsExplained = 1u << 31;

struct LsExplaining {
    Why *why;
    LsRun run; // that was read last, or is being read
    LsGroup group;
};

struct LsExplained {
    BgpLsParseContext context; // first, so that a pointer to it is one to all
    LsExplaining explaining;
};

// Null when nobody asks why.
inline LsExplaining *ExplainingOf(BgpLsParseContext *context)
{
    const bool isExplained = context != nullptr && (context->sections & kLsExplained) != 0;
    return isExplained ? &reinterpret_cast<LsExplained *>(context)->explaining : nullptr;
}

inline Why *WhyOf(BgpLsParseContext *context)
{
    const LsExplaining *explaining = ExplainingOf(context);
    return explaining != nullptr ? explaining->why : nullptr;
}

constexpr uint32_t Code(bool isRead)
{
    return isRead ? DT_OK : DT_ERR_FAIL;
}

// All false, as Refuse(). They speak of `what`, or of the group's keyword.

// The group as such, at the place of its keyword.
[[gnu::cold]] bool RefuseGroup(BgpLsParseContext *context, const BgpRule &rule, const char *what = nullptr,
                               BgpChoices expected = {});
// A piece of the group's value; all of a terminated one, which is kEmpty when it is.
[[gnu::cold]] bool RefusePiece(BgpLsParseContext *context, Text piece, const BgpRule &rule, uint64_t limit = 0,
                               const char *what = nullptr);
[[gnu::cold]] bool RefuseValue(BgpLsParseContext *context, const char *value, const BgpRule &rule, uint64_t limit = 0,
                               const char *what = nullptr);
// What the host did not read as an address.
[[gnu::cold]] bool RefuseIpv4Value(BgpLsParseContext *context, const char *value);
[[gnu::cold]] bool RefuseIpv6Value(BgpLsParseContext *context, const char *value);
// What the reader of another type has refused.
[[gnu::cold]] bool RefusedByOther(BgpLsParseContext *context);
// What the host did not read as a decimal number of at most `largest`.
[[gnu::cold]] bool RefuseNumber(BgpLsParseContext *context, const char *value, uint64_t largest,
                                const char *what = nullptr);
inline constexpr char kLsTheProtocol[] = "the protocol";
// The first row of the run whose group is one of `flags`, at the end of the run, where it is missing.
[[gnu::cold]] bool RefuseMissing(LsExplaining *explaining, const LsRun &run, uint32_t flags);

// clang-format off
inline constexpr BgpRule kNoGroup{"group", "a group in brackets is expected here", 0};
inline constexpr BgpRule kUnclosed{"unclosed", "this bracket is not closed", 0};
inline constexpr BgpRule kNoKeyword{"keyword", "no keyword begins this group", 0};
inline constexpr BgpRule kNotAlone{"not-alone", "nothing may follow {what} in its group", 0};
inline constexpr BgpRule kNotCarried{"not-carried", "no key carries {what}", 0};
inline constexpr BgpRule kTypeFirst{"type-first", "the NLRI type comes first", 0};
inline constexpr BgpRule kProtocolFirst{"protocol-first", "the protocol comes before {what}", 0};
inline constexpr BgpRule kTwice{"twice", "{what} may stand only once", 0};
inline constexpr BgpRule kMissing{"missing", "{what} is missing", 0};
inline constexpr BgpRule kNotOfType{"not-of-type", "this NLRI type takes no {what}", 0};
inline constexpr BgpRule kNotOfProtocol{"not-of-protocol", "this protocol takes no {what}", 0};
inline constexpr BgpRule kNoRouterId{"router-id", "{what} is neither an IPv4 address nor a decimal number", 0};
inline constexpr BgpRule kNoIdentifiers{"identifiers", "{what} is two IPv4 addresses with a dot between", 0};
inline constexpr BgpRule kNoSlash{"slash", "a slash and the prefix length are missing here", 0};
// clang-format on

} // namespace bgp

#endif
