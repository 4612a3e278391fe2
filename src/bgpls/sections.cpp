// What each NLRI type makes of a section of its key: which fields must and must not be there, and where they go in the
// record. One row of copies a field, one routine a section, one row of g_bgplsPrefixParsers an NLRI type.
#include "bgpls/parser.h"

#include "host/bytes.h"

namespace bgp {

extern "C" {

BGP_DATATYPES_API BgpLsSectionRoutine<uint32_t> BgpLsNodeParseProtocol, BgpLsLinkParseProtocol,
    BgpLsIpv4PrefixParseProtocol, BgpLsIpv6PrefixParseProtocol, BgpLsTePolicyParseProtocol, BgpLsSrv6SidParseProtocol;
BGP_DATATYPES_API BgpLsSectionRoutine<uint64_t> BgpLsNodeParseIdentifier, BgpLsLinkParseIdentifier,
    BgpLsIpv4PrefixParseIdentifier, BgpLsIpv6PrefixParseIdentifier, BgpLsTePolicyParseIdentifier,
    BgpLsSrv6SidParseIdentifier;
BGP_DATATYPES_API BgpLsSectionRoutine<BgpLsNodeDescriptor> BgpLsNodeParseLocalNode, BgpLsLinkParseLocalNode,
    BgpLsLinkParseRemoteNode, BgpLsIpv4PrefixParseLocalNode, BgpLsIpv6PrefixParseLocalNode, BgpLsTePolicyParseLocalNode,
    BgpLsSrv6SidParseLocalNode;
BGP_DATATYPES_API BgpLsSectionRoutine<BgpLsLinkDescriptor> BgpLsLinkParseLink;
BGP_DATATYPES_API BgpLsSectionRoutine<BgpLsPrefixDescriptor> BgpLsIPv4PrefixParsePrefix, BgpLsIPv6PrefixParsePrefix;
BGP_DATATYPES_API BgpLsSectionRoutine<BgpLsTeDescriptor> BgpLsTePolicyParseTe;
BGP_DATATYPES_API BgpLsSectionRoutine<BgpLsSidDescriptor> BgpLsSrv6SidParseSid;

} // extern "C"

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
    LS_NODE(as, kLsNodeRows, "stLocalAs"),
    LS_NODE(bgpLsId, kLsNodeRows, "stLocalBgpLsId"),
    LS_NODE(ospfAreaId, kLsNodeRows, "uiLocOspfAreaId"),
    LS_NODE(igpRouterId, kLsNodeRows, "stLocIgpRtId"),
};

constexpr LsCopy kLinkLocal[] = {
    LS_NODE(as, kLsLinkRows, "stLocalAs"),
    LS_NODE(bgpLsId, kLsLinkRows, "stLocalBgpLsId"),
    LS_NODE(memberAs, kLsLinkRows, "localMemberAs"),
    LS_NODE(ospfAreaId, kLsLinkRows, "uiLocOspfAreaId"),
    LS_NODE(igpRouterId, kLsLinkRows, "stLocIgpRtId"),
    LS_NODE(bgpRouterId, kLsLinkRows, "uiLocalBgpRtId"),
};

constexpr LsCopy kLinkRemote[] = {
    LS_NODE(as, kLsLinkRows, "stRemoteAs"),
    LS_NODE(bgpLsId, kLsLinkRows, "stRemoteBgpLsId"),
    LS_NODE(memberAs, kLsLinkRows, "remoteMemberAs"),
    LS_NODE(ospfAreaId, kLsLinkRows, "uiRemOspfAreaId"),
    LS_NODE(igpRouterId, kLsLinkRows, "stRemIgpRtId"),
    LS_NODE(bgpRouterId, kLsLinkRows, "uiRemoteBgpRtId"),
};

constexpr LsCopy kTePolicyLocal[] = {
    LS_NODE(as, kLsTePolicyRows, "stLocalAs"),
    LS_NODE(bgpLsId, kLsTePolicyRows, "stLocalBgpLsId"),
    LS_NODE(bgpRouterId, kLsTePolicyRows, "uiLocalBgpRtId"),
    LS_NODE(ipv4RouterId, kLsTePolicyRows, "teRouterId"),
    LS_NODE(ipv6RouterId, kLsTePolicyRows, "ipv6TeRouterId"),
};

constexpr LsCopy kSrv6SidLocal[] = {
    LS_NODE(as, kLsSrv6SidRows, "stLocalAs"),
    LS_NODE(bgpLsId, kLsSrv6SidRows, "stLocalBgpLsId"),
    LS_NODE(memberAs, kLsSrv6SidRows, "localMemberAs"),
    LS_NODE(ospfAreaId, kLsSrv6SidRows, "uiLocOspfAreaId"),
    LS_NODE(igpRouterId, kLsSrv6SidRows, "stLocIgpRtId"),
    LS_NODE(bgpRouterId, kLsSrv6SidRows, "uiLocalBgpRtId"),
};

constexpr LsCopy kLinkLink[] = {
    LS_LINK(localId, "uiLinkLocId"),
    LS_LINK(remoteId, "uiLinkRemId"),
    LS_LINK(ipv4Interface, "stIpv4IntfAddr"),
    LS_LINK(ipv4Neighbour, "stIpv4PeerAddr"),
    LS_LINK(ipv6Interface, "stIpv6IntfAddr"),
    LS_LINK(ipv6Neighbour, "stIpv6PeerAddr"),
    LS_LINK(mtId, "uiMtId"),
};

constexpr LsCopy kIpv4PrefixPrefix[] = {
    LS_COPY(BgpLsPrefixDescriptor, mtId, kLsIpv4PrefixRows, "uiMtId"),
    LS_COPY(BgpLsPrefixDescriptor, ospfRouteType, kLsIpv4PrefixRows, "uiOspfRtType"),
    LS_COPY(BgpLsPrefixDescriptor, ipv4, kLsIpv4PrefixRows, "stIpv4Prefix"),
    LS_COPY(BgpLsPrefixDescriptor, length, kLsIpv4PrefixRows, "uiPrefixLen"),
};

constexpr LsCopy kIpv6PrefixPrefix[] = {
    LS_COPY(BgpLsPrefixDescriptor, mtId, kLsIpv6PrefixRows, "uiMtId"),
    LS_COPY(BgpLsPrefixDescriptor, ospfRouteType, kLsIpv6PrefixRows, "uiOspfRtType"),
    LS_COPY(BgpLsPrefixDescriptor, ipv6, kLsIpv6PrefixRows, "stIpv6Prefix"),
    LS_COPY(BgpLsPrefixDescriptor, length, kLsIpv6PrefixRows, "uiPrefixLen"),
};

constexpr LsCopy kTePolicyTe[] = {
    LS_TE(protocolOrigin, "protocolOrigin"),
    LS_TE(flags, "flags"),
    LS_TE(endpoint, "endpoint"),
    LS_TE(color, "color"),
    LS_TE(originatorAs, "originatorAs"),
    LS_TE(originatorAddress, "originatorAddr"),
    LS_TE(discriminator, "discriminator"),
};

constexpr LsCopy kSrv6SidSid[] = {
    LS_COPY(BgpLsSidDescriptor, mtId, kLsSrv6SidRows, "uiMtId"),
    LS_COPY(BgpLsSidDescriptor, sid, kLsSrv6SidRows, "srv6SidInfo"),
};

// ------------------------------------------------------------------------------------------------------------- rules

// Copies a section when all mandatory fields were given and no forbidden one was.
template <class Section, size_t Count>
uint32_t Accept(const Section &section, uint32_t mandatory, uint32_t forbidden, const LsCopy (&copies)[Count],
                BgpLsParseContext &context)
{
    if ((section.fields & mandatory) != mandatory || (section.fields & forbidden) != 0) {
        return DT_ERR_FAIL;
    }
    CopyAll(copies, &section, context.record);
    return DT_OK;
}

// A node descriptor also says in existFlag whether it had a BGP-LS identifier.
template <size_t Count>
uint32_t AcceptNode(const BgpLsNodeDescriptor &node, uint32_t mandatory, uint32_t forbidden,
                    const LsCopy (&copies)[Count], uint16_t existFlagAt, uint32_t existBit, BgpLsParseContext &context)
{
    const uint32_t code = Accept(node, mandatory, forbidden, copies, context);
    if (code == DT_OK && node.bgpLsIdGiven) {
        uint8_t *existFlag = context.record + existFlagAt;
        Store(existFlag, Load<uint32_t>(existFlag) | existBit);
    }
    return code;
}

constexpr uint32_t kNothing = 0;
constexpr uint32_t kNoBgpNode = kLsNodeBgpRouterId | kLsNodeMemberAs;
constexpr uint32_t kBgpLink = kLsLinkIdentifier | kLsLinkLocal | kLsLinkRemote;
constexpr uint32_t kPrefix = kLsPrefixOspfRouteType | kLsPrefixPrefix;

} // namespace

// Links and SIDs name their node by BGP router id under BGP, by OSPF area under every other protocol, IS-IS included.
uint32_t BgpLsNodeDescMandentoryFields(const BgpLsParseContext &context)
{
    return context.protocolId == kLsBgp ? kLsNodeBgpRouterId : kLsNodeOspfAreaId;
}

uint32_t BgpLsNodeDescUnsupportFields(const BgpLsParseContext &context)
{
    return context.protocolId == kLsBgp ? kLsNodeOspfAreaId : kLsNodeBgpRouterId;
}

// ---------------------------------------------------------------------------------------------------------- routines

extern "C" {

BGP_DATATYPES_API uint32_t BgpLsStoreProtocol(const uint32_t &protocolId, BgpLsParseContext &context)
{
    Store(context.record + kLsProtocolAt, protocolId);
    return DT_OK;
}

// Only the low 32 bits of an identifier are kept.
BGP_DATATYPES_API uint32_t BgpLsStoreIdentifier(const uint64_t &identifier, BgpLsParseContext &context)
{
    Store(context.record + kLsIdentifierAt, identifier & UINT32_MAX);
    return DT_OK;
}

// One routine under the name that each NLRI type's row calls it by.
[[gnu::alias("BgpLsStoreProtocol")]] BgpLsSectionRoutine<uint32_t> BgpLsNodeParseProtocol, BgpLsLinkParseProtocol,
    BgpLsIpv4PrefixParseProtocol, BgpLsIpv6PrefixParseProtocol, BgpLsTePolicyParseProtocol, BgpLsSrv6SidParseProtocol;
[[gnu::alias("BgpLsStoreIdentifier")]] BgpLsSectionRoutine<uint64_t> BgpLsNodeParseIdentifier, BgpLsLinkParseIdentifier,
    BgpLsIpv4PrefixParseIdentifier, BgpLsIpv6PrefixParseIdentifier, BgpLsTePolicyParseIdentifier,
    BgpLsSrv6SidParseIdentifier;

} // extern "C"

uint32_t BgpLsNodeParseLocalNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, kNothing, kNoBgpNode, kNodeLocal, LsAt(kLsNodeRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsIpv4PrefixParseLocalNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, kNothing, kNoBgpNode, kNodeLocal, LsAt(kLsIpv4PrefixRows, "existFlag"), kLsLocalIdGiven,
                      context);
}

uint32_t BgpLsIpv6PrefixParseLocalNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, kNothing, kNoBgpNode, kNodeLocal, LsAt(kLsIpv6PrefixRows, "existFlag"), kLsLocalIdGiven,
                      context);
}

uint32_t BgpLsTePolicyParseLocalNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, kNothing, kLsNodeMemberAs, kTePolicyLocal, LsAt(kLsTePolicyRows, "existFlag"),
                      kLsLocalIdGiven, context);
}

uint32_t BgpLsLinkParseLocalNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, BgpLsNodeDescMandentoryFields(context), BgpLsNodeDescUnsupportFields(context), kLinkLocal,
                      LsAt(kLsLinkRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsSrv6SidParseLocalNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, BgpLsNodeDescMandentoryFields(context), BgpLsNodeDescUnsupportFields(context),
                      kSrv6SidLocal, LsAt(kLsSrv6SidRows, "existFlag"), kLsLocalIdGiven, context);
}

uint32_t BgpLsLinkParseRemoteNode(const BgpLsNodeDescriptor &node, BgpLsParseContext &context)
{
    return AcceptNode(node, kNothing, kNothing, kLinkRemote, LsAt(kLsLinkRows, "existFlag"), kLsRemoteIdGiven, context);
}

uint32_t BgpLsLinkParseLink(const BgpLsLinkDescriptor &link, BgpLsParseContext &context)
{
    return Accept(link, context.protocolId == kLsBgp ? kBgpLink : kNothing, kNothing, kLinkLink, context);
}

uint32_t BgpLsIPv4PrefixParsePrefix(const BgpLsPrefixDescriptor &prefix, BgpLsParseContext &context)
{
    return Accept(prefix, kPrefix, kNothing, kIpv4PrefixPrefix, context);
}

// Only OSPFv3 may leave the multi-topology id out.
uint32_t BgpLsIPv6PrefixParsePrefix(const BgpLsPrefixDescriptor &prefix, BgpLsParseContext &context)
{
    const bool isOspfv3 = Load<uint32_t>(context.record + kLsProtocolAt) == kLsOspfv3;
    return Accept(prefix, isOspfv3 ? kPrefix : kPrefix | kLsPrefixMtId, kNothing, kIpv6PrefixPrefix, context);
}

uint32_t BgpLsTePolicyParseTe(const BgpLsTeDescriptor &te, BgpLsParseContext &context)
{
    return Accept(te, kLsTeAll, kNothing, kTePolicyTe, context);
}

uint32_t BgpLsSrv6SidParseSid(const BgpLsSidDescriptor &sid, BgpLsParseContext &context)
{
    return Accept(sid, kLsSidSid, kNothing, kSrv6SidSid, context);
}

// Required: 1 type, 2 protocol, 4 IDENTIFIER, 8 LOCAL, 16 REMOTE, 32 LINK, 256 PREFIX, 512 TE, 1024 SID. A section that
// a type has is mandatory.
// clang-format off
constinit const BgpLsNlriParser g_bgplsPrefixParsers[kLsNlriTypes] = {
    {},
    {.nlriType = kLsNode, .required = 15,
     .protocol = BgpLsNodeParseProtocol, .identifier = BgpLsNodeParseIdentifier,
     .localNode = BgpLsNodeParseLocalNode, .remoteNode = nullptr,
     .link = nullptr, .prefix = nullptr, .te = nullptr, .sid = nullptr},
    {.nlriType = kLsLink, .required = 63,
     .protocol = BgpLsLinkParseProtocol, .identifier = BgpLsLinkParseIdentifier,
     .localNode = BgpLsLinkParseLocalNode, .remoteNode = BgpLsLinkParseRemoteNode,
     .link = BgpLsLinkParseLink, .prefix = nullptr, .te = nullptr, .sid = nullptr},
    {.nlriType = kLsIpv4Prefix, .required = 271,
     .protocol = BgpLsIpv4PrefixParseProtocol, .identifier = BgpLsIpv4PrefixParseIdentifier,
     .localNode = BgpLsIpv4PrefixParseLocalNode, .remoteNode = nullptr,
     .link = nullptr, .prefix = BgpLsIPv4PrefixParsePrefix, .te = nullptr, .sid = nullptr},
    {.nlriType = kLsIpv6Prefix, .required = 271,
     .protocol = BgpLsIpv6PrefixParseProtocol, .identifier = BgpLsIpv6PrefixParseIdentifier,
     .localNode = BgpLsIpv6PrefixParseLocalNode, .remoteNode = nullptr,
     .link = nullptr, .prefix = BgpLsIPv6PrefixParsePrefix, .te = nullptr, .sid = nullptr},
    {.nlriType = kLsTePolicy, .required = 527,
     .protocol = BgpLsTePolicyParseProtocol, .identifier = BgpLsTePolicyParseIdentifier,
     .localNode = BgpLsTePolicyParseLocalNode, .remoteNode = nullptr,
     .link = nullptr, .prefix = nullptr, .te = BgpLsTePolicyParseTe, .sid = nullptr},
    {.nlriType = kLsSrv6Sid, .required = 1039,
     .protocol = BgpLsSrv6SidParseProtocol, .identifier = BgpLsSrv6SidParseIdentifier,
     .localNode = BgpLsSrv6SidParseLocalNode, .remoteNode = nullptr,
     .link = nullptr, .prefix = nullptr, .te = nullptr, .sid = BgpLsSrv6SidParseSid},
};
// clang-format on

} // namespace bgp
