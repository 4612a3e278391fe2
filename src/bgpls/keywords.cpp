// The five keyword tables of the BGP-LS key's text, and what reads each field. The first row whose keyword begins the
// group's content wins.
#include "bgpls/parser.h"

#include "bgp_host_services.h"
#include "host/bytes.h"

namespace bgp {

namespace {

// ---------------------------------------------------------------------------------------------------- field handlers

// Every section table's handlers are made of a reader and the member that it fills:
// Field<&Descriptor::member, Reader>.

template <class Descriptor, class Member>
Descriptor OwnerOf(Member Descriptor::*);

constexpr uint32_t Code(bool isRead)
{
    return isRead ? DT_OK : DT_ERR_FAIL;
}

// Marks the field as seen; false when it was before.
bool Claim(uint32_t &fields, uint32_t flag)
{
    const bool isFirst = (fields & flag) == 0;
    fields |= flag;
    return isFirst;
}

bool Dotted(const char *value, uint32_t &address)
{
    return QOV_StrToIpAddr(value, &address) == 0;
}

bool Decimal(const char *value, uint32_t &number)
{
    return QOV_StrToUint32(value, &number) == 0;
}

bool DecimalByte(const char *value, uint8_t &number)
{
    uint32_t wide = 0;
    const bool isRead = Decimal(value, wide) && wide <= UINT8_MAX;
    number = static_cast<uint8_t>(wide);
    return isRead;
}

bool Ipv6(const char *value, uint8_t (&address)[16])
{
    return SMP_InetAToN6(value, address) == 0;
}

bool EitherFamily(const char *value, BgpLsAddress &address)
{
    address.flag = QOV_StrChr(value, ':') != nullptr;
    if (address.flag != 0) {
        return Ipv6(value, address.ipv6);
    }
    uint32_t ipv4 = 0;
    const bool isRead = Dotted(value, ipv4);
    Store(address.ipv4, ipv4);
    return isRead;
}

bool AsExtended(const char *value, AsNumber &as)
{
    return SYSDT_Str2AsNumExt(value, &as) == DT_OK;
}

template <auto Member, auto Read>
uint32_t Field(uint32_t flag, char *value, void *target, BgpLsParseContext *)
{
    auto &descriptor = *static_cast<decltype(OwnerOf(Member)) *>(target);
    return Code(Claim(descriptor.fields, flag) && Read(value, descriptor.*Member));
}

// ------------------------------------------------------------------------------------------------- node descriptors

// An empty value leaves the field absent.
uint32_t NodeAs(uint32_t flag, char *value, void *target, BgpLsParseContext *)
{
    auto &node = *static_cast<BgpLsNodeDescriptor *>(target);
    if ((node.fields & flag) != 0) {
        return DT_ERR_FAIL;
    }
    if (Trim(value).length == 0) {
        return DT_OK;
    }
    node.fields |= flag;
    return SYSDT_Str2AsNum(value, &node.as);
}

uint32_t NodeMemberAs(uint32_t flag, char *value, void *target, BgpLsParseContext *)
{
    auto &node = *static_cast<BgpLsNodeDescriptor *>(target);
    return Claim(node.fields, flag) ? SYSDT_Str2AsNum(value, &node.memberAs) : DT_ERR_FAIL;
}

uint32_t NodeBgpLsId(uint32_t flag, char *value, void *target, BgpLsParseContext *)
{
    auto &node = *static_cast<BgpLsNodeDescriptor *>(target);
    node.bgpLsIdGiven = true;
    return Code(Claim(node.fields, flag) && Dotted(value, node.bgpLsId));
}

// Only TE policies insist on the dotted form.
uint32_t NodeBgpRouterId(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &node = *static_cast<BgpLsNodeDescriptor *>(target);
    return Code(Claim(node.fields, flag) && (Dotted(value, node.bgpRouterId) ||
                                             (context->nlriType != kLsTePolicy && Decimal(value, node.bgpRouterId))));
}

// At most two hexadecimal digits behind any white space, as "%2x" scans them.
bool HexByte(const char *value, uint8_t &byte)
{
    while (*value == ' ' || (*value >= '\t' && *value <= '\r')) {
        ++value;
    }
    uint32_t number = 0;
    uint32_t digits = 0;
    for (; digits < 2 && IsHexDigit(value[digits]); ++digits) {
        const auto digit = static_cast<uint32_t>(value[digits]);
        number = number << 4 | (IsDigit(value[digits]) ? digit - '0' : (digit & 0x0F) + 9);
    }
    byte = static_cast<uint8_t>(number);
    return digits != 0;
}

} // namespace

// System id and pseudonode, byte for byte. The separators and what follows the 17 characters are not looked at.
uint32_t BgpLsStr2IsIsIgpRouterId(const char *value, uint8_t *area)
{
    constexpr uint8_t kPlaces[] = {0, 2, 5, 7, 10, 12, 15};
    constexpr uint32_t kShortest = 17;
    if (std::strlen(value) < kShortest) {
        return DT_ERR_FAIL;
    }
    for (const uint8_t place : kPlaces) {
        if (!HexByte(value + place, *area++)) {
            return DT_ERR_FAIL;
        }
    }
    return DT_OK;
}

namespace {

// "router-id" or "router-id/address", in network order.
bool SYSDT_Str2LocIgpRouterId(char *value, uint8_t *area)
{
    uint32_t address = 0;
    if (char *slash = std::strchr(value, '/'); slash != nullptr) {
        if (!Dotted(slash + 1, address) && !Decimal(value, address)) {
            return false;
        }
        StoreBig(area + sizeof address, address, sizeof address);
        *slash = '\0';
    }
    if (!Dotted(value, address)) {
        return false;
    }
    StoreBig(area, address, sizeof address);
    return true;
}

} // namespace

// Its form is the protocol's, which must have been named before.
uint32_t BgpLsParseNodeDescIgpRouterId(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &node = *static_cast<BgpLsNodeDescriptor *>(target);
    if ((context->sections & kLsProtocolSection) == 0 || !Claim(node.fields, flag)) {
        return DT_ERR_FAIL;
    }
    switch (context->protocolId) {
    case kLsIsisLevel1:
    case kLsIsisLevel2:
        return BgpLsStr2IsIsIgpRouterId(value, node.igpRouterId);
    case kLsOspfv2:
    case kLsOspfv3:
        return Code(SYSDT_Str2LocIgpRouterId(value, node.igpRouterId));
    default:
        return DT_ERR_FAIL;
    }
}

namespace {

// -------------------------------------------------------------------------------- link, prefix and SID descriptors

using Link = BgpLsLinkDescriptor;

// Two dotted values joined by a dot, the fourth.
uint32_t LinkIdentifier(uint32_t flag, char *value, void *target, BgpLsParseContext *)
{
    constexpr uint32_t kCut = 4;
    auto &link = *static_cast<Link *>(target);
    char *dot = value - 1;
    for (uint32_t dots = 0; dots < kCut; ++dots) {
        dot = std::strchr(dot + 1, '.');
        if (dot == nullptr) {
            return DT_ERR_FAIL;
        }
    }
    *dot = '\0';
    return Code(Claim(link.fields, flag) && Dotted(value, link.localId) && Dotted(dot + 1, link.remoteId));
}

enum Times { kOnce, kAgain };

// An address of either family, each kept in a place of its own. kAgain: also behind another one.
template <uint32_t Link::*Ipv4Member, uint8_t (Link::*Ipv6Member)[16], Times times>
uint32_t LinkAddress(uint32_t flag, char *value, void *target, BgpLsParseContext *)
{
    auto &link = *static_cast<Link *>(target);
    if (!Claim(link.fields, flag) && times == kOnce) {
        return DT_ERR_FAIL;
    }
    const bool isIpv6 = QOV_StrChr(value, ':') != nullptr;
    return Code(isIpv6 ? Ipv6(value, link.*Ipv6Member) : Dotted(value, link.*Ipv4Member));
}

template <Times times>
constexpr BgpLsHandler *LinkInterface = LinkAddress<&Link::ipv4Interface, &Link::ipv6Interface, times>;
template <Times times>
constexpr BgpLsHandler *LinkNeighbour = LinkAddress<&Link::ipv4Neighbour, &Link::ipv6Neighbour, times>;

// "address/length". Of the length the low eight bits are kept, whatever it is.
uint32_t Prefix(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &prefix = *static_cast<BgpLsPrefixDescriptor *>(target);
    char *slash = std::strchr(value, '/');
    uint32_t length = 0;
    if (!Claim(prefix.fields, flag) || slash == nullptr || !Decimal(slash + 1, length)) {
        return DT_ERR_FAIL;
    }
    *slash = '\0';
    prefix.length = static_cast<uint8_t>(length);
    return Code(context->nlriType == kLsIpv4Prefix ? Dotted(value, prefix.ipv4) : Ipv6(value, prefix.ipv6));
}

// Under BGP the field is not looked at.
uint32_t SidMtId(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    return context->protocolId == kLsBgp ? DT_OK
                                         : Field<&BgpLsSidDescriptor::mtId, Decimal>(flag, value, target, context);
}

// --------------------------------------------------------------------------------------------------- top-level rows

template <uint32_t Type>
uint32_t NlriType(uint32_t, char *, void *, BgpLsParseContext *context)
{
    return BgpLsParseRouteType(Type, context);
}

template <uint32_t Id>
uint32_t Protocol(uint32_t, char *, void *, BgpLsParseContext *context)
{
    return BgpLsParseProtocol(Id, context);
}

using Node = BgpLsNodeDescriptor;
using Te = BgpLsTeDescriptor;

} // namespace

// clang-format off
//   keyword                 flag exact handler
constinit const BgpLsKeyword g_bgplsPrefixPattern[kLsTopKeywords] = {
    {"NODE",                    1, 1, NlriType<kLsNode>},
    {"LINK",                    1, 1, NlriType<kLsLink>}, // alone; with more behind it the section below
    {"IPV4-PREFIX",             1, 1, NlriType<kLsIpv4Prefix>},
    {"IPV6-PREFIX",             1, 1, NlriType<kLsIpv6Prefix>},
    {"TEPOLICY",                1, 1, NlriType<kLsTePolicy>},
    {"SRV6-SID",                1, 1, NlriType<kLsSrv6Sid>},
    {"ISIS-LEVEL-1",            2, 1, Protocol<kLsIsisLevel1>},
    {"ISIS-LEVEL-2",            2, 1, Protocol<kLsIsisLevel2>},
    {"OSPFv2",                  2, 1, Protocol<kLsOspfv2>},
    {"DIRECT",                  2, 1, Protocol<kLsDirect>},
    {"STATIC",                  2, 1, Protocol<kLsStatic>},
    {"OSPFv3",                  2, 1, Protocol<kLsOspfv3>},
    {"BGP",                     2, 1, Protocol<kLsBgp>},
    {"RSVP-TE",                 2, 1, nullptr},
    {"SEGMENT-ROUTING",         2, 1, Protocol<kLsSegmentRouting>},
    {"IDENTIFIER",              4, 0, BgpLsParseIdentifier},
    {"LOCAL",                   8, 0, BgpLsParseLocalNode},
    {"REMOTE",                 16, 0, BgpLsParseRemoteNode},
    {"LINK",                   32, 0, BgpLsParseLink},
    {"UNKNOWN",                64, 0, BgpLsParseDiscard},
    {"index",                 128, 0, BgpLsParseDiscard},
    {"PREFIX",                256, 0, BgpLsParsePrefix},
    {"TE",                    512, 0, BgpLsParseTe},
    {"SID",                  1024, 0, BgpLsParseSid},
};

constinit const BgpLsKeyword NodeDescPartten[kLsNodeKeywords] = {
    {"as",                      1, 0, NodeAs},
    {"bgp-ls-identifier",       2, 0, NodeBgpLsId},
    {"bgp-router-id",          16, 0, NodeBgpRouterId},
    {"ospf-area-id",            4, 0, Field<&Node::ospfAreaId, Dotted>},
    {"igp-router-id",           8, 0, BgpLsParseNodeDescIgpRouterId},
    {"member-as",              32, 0, NodeMemberAs},
    {"ipv4-router-id",         64, 0, Field<&Node::ipv4RouterId, Dotted>},
    {"ipv6-router-id",        128, 0, Field<&Node::ipv6RouterId, Ipv6>},
};

constinit const BgpLsKeyword LinkPartten[kLsLinkKeywords] = {
    {"identifier",              1, 0, LinkIdentifier},
    {"local",                   2, 0, LinkInterface<kOnce>},
    {"remote",                  4, 0, LinkNeighbour<kOnce>},
    {"link-local-id",           8, 0, Field<&Link::localId, Dotted>},
    {"link-remote-id",         16, 0, Field<&Link::remoteId, Dotted>},
    {"if-address",             32, 0, LinkInterface<kAgain>},
    {"peer-address",           64, 0, LinkNeighbour<kAgain>},
    {"mt-id",                 128, 0, Field<&Link::mtId, Decimal>},
};

constinit const BgpLsKeyword PrefixPartten[kLsPrefixKeywords] = {
    {"mt-id",                   1, 0, Field<&BgpLsPrefixDescriptor::mtId, Decimal>},
    {"ospf-route-type",         2, 0, Field<&BgpLsPrefixDescriptor::ospfRouteType, Decimal>},
    {"prefix",                  4, 0, Prefix},
};

constinit const BgpLsKeyword TePartten[kLsTeKeywords] = {
    {"protocol-origin",         1, 0, Field<&Te::protocolOrigin, DecimalByte>},
    {"Flag",                    2, 0, Field<&Te::flags, DecimalByte>},
    {"endpoint",                4, 0, Field<&Te::endpoint, EitherFamily>},
    {"color",                   8, 0, Field<&Te::color, Decimal>},
    {"originator-as",          16, 0, Field<&Te::originatorAs, AsExtended>},
    {"originator-address",     32, 0, Field<&Te::originatorAddress, EitherFamily>},
    {"discriminator",          64, 0, Field<&Te::discriminator, Decimal>},
};

constinit const BgpLsKeyword SidPartten[kLsSidKeywords] = {
    {"mt-id",                   1, 0, SidMtId},
    {"sid",                     2, 0, Field<&BgpLsSidDescriptor::sid, Ipv6>},
};
// clang-format on

} // namespace bgp
