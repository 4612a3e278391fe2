// What each NLRI type makes of a section of its key: which fields must and must not be there, and where they go in the
// record. One row of copies a field, one routine a section, one row of g_bgplsPrefixParsers an NLRI type.
#include "bgpls/context.h"
#include "bgpls/fields.h"
#include "bgpls/groups.h"
#include "bgpls/record.h"
#include "host/bytes.h"

#include <cstddef>

namespace bgp {

namespace {

// ------------------------------------------------------------------------------------------------------------ copies

// One member of a working descriptor to one field of the record.
struct LsCopy {
    uint16_t from;
    uint16_t to;
    uint16_t bytes;
};

template <size_t Count>
consteval LsCopy Copy(size_t from, size_t bytes, const std::array<LsField, Count> &rows, std::string_view name)
{
    const LsField &field = LsFieldOf(rows, name);
    const bool fits = FactsOf(field.kind).bytes == bytes;
    return {static_cast<uint16_t>(from), fits ? field.offset : NoSuchField().offset, static_cast<uint16_t>(bytes)};
}

template <size_t Count>
void CopyAll(const LsCopy (&copies)[Count], const void *descriptor, uint8_t *record)
{
    for (const LsCopy &copy : copies) {
        std::memcpy(record + copy.to, static_cast<const uint8_t *>(descriptor) + copy.from, copy.bytes);
    }
}

#define LS_COPY(descriptor, member, rows, field)                                                                       \
    Copy(offsetof(descriptor, member), sizeof(descriptor::member), rows, field)
#define LS_NODE(member, rows, field) LS_COPY(BgpLsNodeDescriptor, member, rows, field)
#define LS_LINK(member, field) LS_COPY(BgpLsLinkDescriptor, member, kLsLinkRows, field)
#define LS_TE(member, field) LS_COPY(BgpLsTeDescriptor, member, kLsTePolicyRows, field)

// Node, IPv4 prefix and IPv6 prefix have these fields in the same places.
constexpr LsCopy kNodeLocal[] = {
    LS_NODE(As, kLsNodeRows, "stLocalAs"),
    LS_NODE(BgpLsIdentifier, kLsNodeRows, "stLocalBgpLsId"),
    LS_NODE(OspfAreaId, kLsNodeRows, "uiLocOspfAreaId"),
    LS_NODE(IgpRouterId, kLsNodeRows, "stLocIgpRtId"),
};

constexpr LsCopy kLinkLocal[] = {
    LS_NODE(As, kLsLinkRows, "stLocalAs"),
    LS_NODE(BgpLsIdentifier, kLsLinkRows, "stLocalBgpLsId"),
    LS_NODE(MemberAs, kLsLinkRows, "localMemberAs"),
    LS_NODE(OspfAreaId, kLsLinkRows, "uiLocOspfAreaId"),
    LS_NODE(IgpRouterId, kLsLinkRows, "stLocIgpRtId"),
    LS_NODE(BgpRouterId, kLsLinkRows, "uiLocalBgpRtId"),
};

constexpr LsCopy kLinkRemote[] = {
    LS_NODE(As, kLsLinkRows, "stRemoteAs"),
    LS_NODE(BgpLsIdentifier, kLsLinkRows, "stRemoteBgpLsId"),
    LS_NODE(MemberAs, kLsLinkRows, "remoteMemberAs"),
    LS_NODE(OspfAreaId, kLsLinkRows, "uiRemOspfAreaId"),
    LS_NODE(IgpRouterId, kLsLinkRows, "stRemIgpRtId"),
    LS_NODE(BgpRouterId, kLsLinkRows, "uiRemoteBgpRtId"),
};

constexpr LsCopy kTePolicyLocal[] = {
    LS_NODE(As, kLsTePolicyRows, "stLocalAs"),
    LS_NODE(BgpLsIdentifier, kLsTePolicyRows, "stLocalBgpLsId"),
    LS_NODE(BgpRouterId, kLsTePolicyRows, "uiLocalBgpRtId"),
    LS_NODE(Ipv4RouterId, kLsTePolicyRows, "teRouterId"),
    LS_NODE(Ipv6RouterId, kLsTePolicyRows, "ipv6TeRouterId"),
};

constexpr LsCopy kSrv6SidLocal[] = {
    LS_NODE(As, kLsSrv6SidRows, "stLocalAs"),
    LS_NODE(BgpLsIdentifier, kLsSrv6SidRows, "stLocalBgpLsId"),
    LS_NODE(MemberAs, kLsSrv6SidRows, "localMemberAs"),
    LS_NODE(OspfAreaId, kLsSrv6SidRows, "uiLocOspfAreaId"),
    LS_NODE(IgpRouterId, kLsSrv6SidRows, "stLocIgpRtId"),
    LS_NODE(BgpRouterId, kLsSrv6SidRows, "uiLocalBgpRtId"),
};

constexpr LsCopy kLinkLink[] = {
    LS_LINK(LocalId, "uiLinkLocId"),
    LS_LINK(RemoteId, "uiLinkRemId"),
    LS_LINK(Ipv4Interface, "stIpv4IntfAddr"),
    LS_LINK(Ipv4Neighbour, "stIpv4PeerAddr"),
    LS_LINK(Ipv6Interface, "stIpv6IntfAddr"),
    LS_LINK(Ipv6Neighbour, "stIpv6PeerAddr"),
    LS_LINK(MtId, "uiMtId"),
};

constexpr LsCopy kIpv4PrefixPrefix[] = {
    LS_COPY(BgpLsPrefixDescriptor, MtId, kLsIpv4PrefixRows, "uiMtId"),
    LS_COPY(BgpLsPrefixDescriptor, OspfRouteType, kLsIpv4PrefixRows, "uiOspfRtType"),
    LS_COPY(BgpLsPrefixDescriptor, Ipv4, kLsIpv4PrefixRows, "stIpv4Prefix"),
    LS_COPY(BgpLsPrefixDescriptor, Length, kLsIpv4PrefixRows, "uiPrefixLen"),
};

constexpr LsCopy kIpv6PrefixPrefix[] = {
    LS_COPY(BgpLsPrefixDescriptor, MtId, kLsIpv6PrefixRows, "uiMtId"),
    LS_COPY(BgpLsPrefixDescriptor, OspfRouteType, kLsIpv6PrefixRows, "uiOspfRtType"),
    LS_COPY(BgpLsPrefixDescriptor, Ipv6, kLsIpv6PrefixRows, "stIpv6Prefix"),
    LS_COPY(BgpLsPrefixDescriptor, Length, kLsIpv6PrefixRows, "uiPrefixLen"),
};

constexpr LsCopy kTePolicyTe[] = {
    LS_TE(ProtocolOrigin, "protocolOrigin"),
    LS_TE(Flags, "flags"),
    LS_TE(Endpoint, "endpoint"),
    LS_TE(Color, "color"),
    LS_TE(OriginatorAs, "originatorAs"),
    LS_TE(OriginatorAddress, "originatorAddr"),
    LS_TE(Discriminator, "discriminator"),
};

constexpr LsCopy kSrv6SidSid[] = {
    LS_COPY(BgpLsSidDescriptor, MtId, kLsSrv6SidRows, "uiMtId"),
    LS_COPY(BgpLsSidDescriptor, Sid, kLsSrv6SidRows, "srv6SidInfo"),
};

// ------------------------------------------------------------------------------------------------------------- rules

// Which fields a section must and must not have.
struct LsFieldRule {
    uint32_t mandatory;
    uint32_t forbidden;
    const BgpRule &why; // of the forbidden ones
};

constexpr LsFieldRule kAny{0, 0, kNotOfType};
constexpr LsFieldRule kIgpNode{0, kLsNodeBgpRouterId | kLsNodeMemberAs, kNotOfType};
constexpr LsFieldRule kTeNode{0, kLsNodeMemberAs, kNotOfType};
constexpr LsFieldRule kBgpLink{kLsLinkIdentifier | kLsLinkLocal | kLsLinkRemote, 0, kNotOfType};
constexpr LsFieldRule kPrefix{kLsPrefixOspfRouteType | kLsPrefixPrefix, 0, kNotOfType};
constexpr LsFieldRule kTopologyPrefix{kLsPrefixMtId | kLsPrefixOspfRouteType | kLsPrefixPrefix, 0, kNotOfType};
constexpr LsFieldRule kTe{kLsTeAll, 0, kNotOfType};
constexpr LsFieldRule kSid{kLsSidSid, 0, kNotOfType};

// Links and SIDs name their node by BGP router id under BGP, by OSPF area under every other protocol, IS-IS included.
LsFieldRule EitherNode(const BgpLsParseContext *context)
{
    return {BgpLsNodeDescMandentoryFields(context), BgpLsNodeDescUnsupportFields(context), kNotOfProtocol};
}

[[gnu::cold]] bool RefuseFields(LsExplaining *explaining, uint32_t missing, uint32_t forbidden, const BgpRule &rule)
{
    if (explaining == nullptr) {
        return false;
    }
    if (missing != 0) {
        return RefuseMissing(explaining, explaining->run, missing);
    }
    const BgpLsKeyword *row = nullptr;
    const Text place = FindGroup(explaining->run, forbidden, row);
    return Refuse(explaining->why, place, rule, 0, row->Keyword);
}

bool HasFields(uint32_t fields, const LsFieldRule &rule, BgpLsParseContext *context)
{
    const uint32_t missing = rule.mandatory & ~fields;
    const uint32_t forbidden = rule.forbidden & fields;
    return (missing | forbidden) == 0 || RefuseFields(ExplainingOf(context), missing, forbidden, rule.why);
}

// Copies a section when it has the fields that it must have, and no other.
template <class Section, size_t Count>
uint32_t Accept(const Section *section, const LsFieldRule &rule, const LsCopy (&copies)[Count],
                BgpLsParseContext *context)
{
    if (!HasFields(section->Fields, rule, context)) {
        return DT_ERR_FAIL;
    }
    CopyAll(copies, section, context->record);
    return DT_OK;
}

// A node descriptor also says in existFlag whether it had a BGP-LS identifier.
template <size_t Count>
uint32_t AcceptNode(const BgpLsNodeDescriptor *node, const LsFieldRule &rule, const LsCopy (&copies)[Count],
                    uint16_t existFlagAt, uint32_t existBit, BgpLsParseContext *context)
{
    const uint32_t code = Accept(node, rule, copies, context);
    if (code == DT_OK && (node->IdentifierGiven & 1) != 0) {
        uint8_t *existFlag = context->record + existFlagAt;
        Store(existFlag, Load<uint32_t>(existFlag) | existBit);
    }
    return code;
}

} // namespace

} // namespace bgp

// ---------------------------------------------------------------------------------------------------------- routines

using namespace bgp; // the routines have names of the system

uint32_t BgpLsNodeDescMandentoryFields(const BgpLsParseContext *context)
{
    return context->protocolId == kLsBgp ? kLsNodeBgpRouterId : kLsNodeOspfAreaId;
}

uint32_t BgpLsNodeDescUnsupportFields(const BgpLsParseContext *context)
{
    return context->protocolId == kLsBgp ? kLsNodeOspfAreaId : kLsNodeBgpRouterId;
}

uint32_t BgpLsNodeParseProtocol(uint32_t protocolId, BgpLsParseContext *context)
{
    Store(context->record + kLsProtocolAt, protocolId);
    return DT_OK;
}

// Only the low 32 bits of an identifier are kept.
uint32_t BgpLsNodeParseIdentifier(uint64_t identifier, BgpLsParseContext *context)
{
    Store(context->record + kLsIdentifierAt, identifier & UINT32_MAX);
    return DT_OK;
}

// One routine under the name that each NLRI type's row calls it by.
extern "C" {
[[gnu::alias("BgpLsNodeParseProtocol")]] BgpLsProtocolRoutine BgpLsLinkParseProtocol, BgpLsIpv4PrefixParseProtocol,
    BgpLsIpv6PrefixParseProtocol, BgpLsTePolicyParseProtocol, BgpLsSrv6SidParseProtocol;
[[gnu::alias("BgpLsNodeParseIdentifier")]] BgpLsIdentifierRoutine BgpLsLinkParseIdentifier,
    BgpLsIpv4PrefixParseIdentifier, BgpLsIpv6PrefixParseIdentifier, BgpLsTePolicyParseIdentifier,
    BgpLsSrv6SidParseIdentifier;
}

uint32_t BgpLsNodeParseLocalNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, kIgpNode, kNodeLocal, LsAt(kLsNodeRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsIpv4PrefixParseLocalNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, kIgpNode, kNodeLocal, LsAt(kLsIpv4PrefixRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsIpv6PrefixParseLocalNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, kIgpNode, kNodeLocal, LsAt(kLsIpv6PrefixRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsTePolicyParseLocalNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, kTeNode, kTePolicyLocal, LsAt(kLsTePolicyRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsLinkParseLocalNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, EitherNode(context), kLinkLocal, LsAt(kLsLinkRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsSrv6SidParseLocalNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, EitherNode(context), kSrv6SidLocal, LsAt(kLsSrv6SidRows, "existFlag"), kLsLocalIdGiven,
                      context);
}

uint32_t BgpLsLinkParseRemoteNode(const BgpLsNodeDescriptor *node, BgpLsParseContext *context)
{
    return AcceptNode(node, kAny, kLinkRemote, LsAt(kLsLinkRows, "existFlag"), kLsRemoteIdGiven, context);
}

uint32_t BgpLsLinkParseLink(const BgpLsLinkDescriptor *link, BgpLsParseContext *context)
{
    return Accept(link, context->protocolId == kLsBgp ? kBgpLink : kAny, kLinkLink, context);
}

uint32_t BgpLsIPv4PrefixParsePrefix(const BgpLsPrefixDescriptor *prefix, BgpLsParseContext *context)
{
    return Accept(prefix, kPrefix, kIpv4PrefixPrefix, context);
}

// Only OSPFv3 may leave the multi-topology id out.
uint32_t BgpLsIPv6PrefixParsePrefix(const BgpLsPrefixDescriptor *prefix, BgpLsParseContext *context)
{
    const bool isOspfv3 = Load<uint32_t>(context->record + kLsProtocolAt) == kLsOspfv3;
    return Accept(prefix, isOspfv3 ? kPrefix : kTopologyPrefix, kIpv6PrefixPrefix, context);
}

uint32_t BgpLsTePolicyParseTe(const BgpLsTeDescriptor *te, BgpLsParseContext *context)
{
    return Accept(te, kTe, kTePolicyTe, context);
}

uint32_t BgpLsSrv6SidParseSid(const BgpLsSidDescriptor *sid, BgpLsParseContext *context)
{
    return Accept(sid, kSid, kSrv6SidSid, context);
}

// Required: 1 type, 2 protocol, 4 IDENTIFIER, 8 LOCAL, 16 REMOTE, 32 LINK, 256 PREFIX, 512 TE, 1024 SID. A section that
// a type has is mandatory.
// clang-format off
constinit const BgpLsNlriParser g_bgplsPrefixParsers[BGP_LS_NLRI_TYPES] = {
    {},
    {.NlriType = kLsNode, .Required = 15,
     .Protocol = BgpLsNodeParseProtocol, .Identifier = BgpLsNodeParseIdentifier,
     .LocalNode = BgpLsNodeParseLocalNode, .RemoteNode = nullptr,
     .Link = nullptr, .Prefix = nullptr, .Te = nullptr, .Sid = nullptr},
    {.NlriType = kLsLink, .Required = 63,
     .Protocol = BgpLsLinkParseProtocol, .Identifier = BgpLsLinkParseIdentifier,
     .LocalNode = BgpLsLinkParseLocalNode, .RemoteNode = BgpLsLinkParseRemoteNode,
     .Link = BgpLsLinkParseLink, .Prefix = nullptr, .Te = nullptr, .Sid = nullptr},
    {.NlriType = kLsIpv4Prefix, .Required = 271,
     .Protocol = BgpLsIpv4PrefixParseProtocol, .Identifier = BgpLsIpv4PrefixParseIdentifier,
     .LocalNode = BgpLsIpv4PrefixParseLocalNode, .RemoteNode = nullptr,
     .Link = nullptr, .Prefix = BgpLsIPv4PrefixParsePrefix, .Te = nullptr, .Sid = nullptr},
    {.NlriType = kLsIpv6Prefix, .Required = 271,
     .Protocol = BgpLsIpv6PrefixParseProtocol, .Identifier = BgpLsIpv6PrefixParseIdentifier,
     .LocalNode = BgpLsIpv6PrefixParseLocalNode, .RemoteNode = nullptr,
     .Link = nullptr, .Prefix = BgpLsIPv6PrefixParsePrefix, .Te = nullptr, .Sid = nullptr},
    {.NlriType = kLsTePolicy, .Required = 527,
     .Protocol = BgpLsTePolicyParseProtocol, .Identifier = BgpLsTePolicyParseIdentifier,
     .LocalNode = BgpLsTePolicyParseLocalNode, .RemoteNode = nullptr,
     .Link = nullptr, .Prefix = nullptr, .Te = BgpLsTePolicyParseTe, .Sid = nullptr},
    {.NlriType = kLsSrv6Sid, .Required = 1039,
     .Protocol = BgpLsSrv6SidParseProtocol, .Identifier = BgpLsSrv6SidParseIdentifier,
     .LocalNode = BgpLsSrv6SidParseLocalNode, .RemoteNode = nullptr,
     .Link = nullptr, .Prefix = nullptr, .Te = nullptr, .Sid = BgpLsSrv6SidParseSid},
};
// clang-format on
