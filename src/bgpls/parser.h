// What the sources of the BGP-LS text parser share: the parse context, the working descriptors that groups are read
// into, and the two kinds of table rows, keywords and NLRI types.
#ifndef BGP_BGPLS_PARSER_H
#define BGP_BGPLS_PARSER_H

#include "asnum/asnum.h"
#include "bgpls/record.h"
#include "host/text.h"

namespace bgp {

inline constexpr uint32_t kLsGroupSize = 500; // a group's content, with its terminator

// ----------------------------------------------------------------------------------------------- working descriptors

// What a section is read into, zeroed beforehand. `fields` has the flags of the keywords seen so far.

struct BgpLsNodeDescriptor {
    uint32_t fields;
    AsNumber as;
    uint32_t bgpLsId;
    AsNumber memberAs;
    uint32_t bgpRouterId;
    uint32_t ospfAreaId;
    uint32_t ipv4RouterId;
    uint8_t ipv6RouterId[16];
    uint8_t igpRouterId[kLsIgpAreaSize];
    bool bgpLsIdGiven;
};

struct BgpLsLinkDescriptor {
    uint32_t fields;
    uint32_t localId;
    uint32_t remoteId;
    uint32_t ipv4Interface;
    uint32_t ipv4Neighbour;
    uint8_t ipv6Interface[16];
    uint8_t ipv6Neighbour[16];
    uint32_t mtId;
};

struct BgpLsPrefixDescriptor {
    uint32_t fields;
    uint32_t mtId;
    uint32_t ospfRouteType;
    uint32_t ipv4;
    uint8_t ipv6[16];
    uint8_t length;
};

struct BgpLsTeDescriptor {
    uint32_t fields;
    uint8_t protocolOrigin;
    uint8_t flags;
    BgpLsAddress endpoint;
    uint32_t color;
    AsNumber originatorAs;
    BgpLsAddress originatorAddress;
    uint32_t discriminator;
};

struct BgpLsSidDescriptor {
    uint32_t fields;
    uint32_t mtId;
    uint8_t sid[16];
};

// Flags of the fields that section rules name.
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

// ----------------------------------------------------------------------------------------------------------- context

// Flags of the top-level groups; the NLRI type comes first of all.
enum : uint32_t {
    kLsTypeSection = 1,
    kLsProtocolSection = 2,
};

struct BgpLsNlriParser;

} // namespace bgp

struct BgpLsParseContext {
    const char *text; // trimmed; not terminated
    uint32_t textLength;
    uint32_t sections; // flags of the top-level groups seen so far
    uint8_t *record;
    uint32_t nlriType;
    uint32_t protocolId;
    const bgp::BgpLsNlriParser *row; // of the NLRI type; null until it is seen
    const bgp::BgpLsNlriParser *rows;
    uint32_t rowCount;
};
static_assert(sizeof(void *) != 4 || sizeof(BgpLsParseContext) == 36);

namespace bgp {

// ---------------------------------------------------------------------------------------------------------- keywords

inline constexpr uint32_t kLsTopKeywords = 24;
inline constexpr uint32_t kLsNodeKeywords = 8;
inline constexpr uint32_t kLsLinkKeywords = 8;
inline constexpr uint32_t kLsPrefixKeywords = 3;
inline constexpr uint32_t kLsTeKeywords = 7;
inline constexpr uint32_t kLsSidKeywords = 2;

extern const BgpLsKeyword NodeDescPartten[kLsNodeKeywords];
extern const BgpLsKeyword LinkPartten[kLsLinkKeywords];
extern const BgpLsKeyword PrefixPartten[kLsPrefixKeywords];
extern const BgpLsKeyword TePartten[kLsTeKeywords];
extern const BgpLsKeyword SidPartten[kLsSidKeywords];

// -------------------------------------------------------------------------------------------------------- NLRI types

// Routines that copy a section into the record, by the rules of the NLRI type. A missing one: the type has no such
// section.
template <class Section>
using BgpLsSectionRoutine = uint32_t(const Section &section, BgpLsParseContext &context);

struct BgpLsNlriParser {
    uint32_t nlriType;
    uint32_t required; // flags of the top-level groups that a key must have
    BgpLsSectionRoutine<uint32_t> *protocol;
    BgpLsSectionRoutine<uint64_t> *identifier;
    BgpLsSectionRoutine<BgpLsNodeDescriptor> *localNode;
    BgpLsSectionRoutine<BgpLsNodeDescriptor> *remoteNode;
    BgpLsSectionRoutine<BgpLsLinkDescriptor> *link;
    BgpLsSectionRoutine<BgpLsPrefixDescriptor> *prefix;
    BgpLsSectionRoutine<BgpLsTeDescriptor> *te;
    BgpLsSectionRoutine<BgpLsSidDescriptor> *sid;
};

extern "C" {

BGP_DATATYPES_API extern const BgpLsKeyword g_bgplsPrefixPattern[kLsTopKeywords];
BGP_DATATYPES_API extern const BgpLsNlriParser g_bgplsPrefixParsers[kLsNlriTypes];

// The handlers of the top-level groups.
BGP_DATATYPES_API uint32_t BgpLsParseRouteType(uint32_t nlriType, BgpLsParseContext *context);
BGP_DATATYPES_API uint32_t BgpLsParseProtocol(uint32_t protocolId, BgpLsParseContext *context);
BGP_DATATYPES_API BgpLsHandler BgpLsParseIdentifier, BgpLsParseLocalNode, BgpLsParseRemoteNode, BgpLsParseLink,
    BgpLsParsePrefix, BgpLsParseTe, BgpLsParseSid, BgpLsParseDiscard, BgpLsParseNodeDescIgpRouterId;
// All groups of the context's text.
BGP_DATATYPES_API uint32_t BgpLsParseLsPrefixEntry(BgpLsParseContext *context);
// "0000.0000.0001.00" to the first 7 bytes of an IGP router-id area.
BGP_DATATYPES_API uint32_t BgpLsStr2IsIsIgpRouterId(const char *value, uint8_t *area);
// Flags of the node fields that links and SIDs must and must not have, by the protocol.
BGP_DATATYPES_API uint32_t BgpLsNodeDescMandentoryFields(const BgpLsParseContext &context);
BGP_DATATYPES_API uint32_t BgpLsNodeDescUnsupportFields(const BgpLsParseContext &context);

} // extern "C"

} // namespace bgp

#endif
