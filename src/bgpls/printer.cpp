// BGPLSPREFIX, text out: the bracketed form that the parser reads, one format a section. The pieces of a section are
// made first, in buffers of their own.
//
// IGP router ids print as their raw bytes up to the first zero byte. That is the type's text, and hosts compare it:
// whoever wants them readable takes them from the record.
#include "bgpls/bgpls.h"
#include "bgpls/pieces.h"

#include "host/bytes.h"
#include "host/format.h"
#include "host/operations.h"
#include "host/text.h"

namespace bgp {

namespace {

uint32_t ProtocolOf(const uint8_t *record)
{
    return Load<uint32_t>(record + kLsProtocolAt);
}

uint64_t IdentifierOf(const uint8_t *record)
{
    return Load<uint64_t>(record + kLsIdentifierAt);
}

// ---------------------------------------------------------------------------------------------------------- sections

// Where a node descriptor has its fields.
struct NodePlaces {
    uint16_t as;
    uint16_t bgpLsId;
    uint16_t ospfAreaId;
    uint16_t igpRouterId;
    uint16_t existFlag;
    uint32_t (*bgpLsIdToStr)(uint32_t identifier, uint32_t existFlag, char *buffer);
    uint16_t bgpRouterId = 0; // only where the BGP form is printed
    uint16_t memberAs = 0;
    bool isRemote = false;
};

template <size_t Count>
constexpr NodePlaces IgpNode(const std::array<LsField, Count> &rows)
{
    return {.as = LsFieldOf(rows, "stLocalAs").offset,
            .bgpLsId = LsFieldOf(rows, "stLocalBgpLsId").offset,
            .ospfAreaId = LsFieldOf(rows, "uiLocOspfAreaId").offset,
            .igpRouterId = LsFieldOf(rows, "stLocIgpRtId").offset,
            .existFlag = LsFieldOf(rows, "existFlag").offset,
            .bgpLsIdToStr = SYSDT_LocalBgpLsIdToStr};
}

template <size_t Count>
constexpr NodePlaces EitherNode(const std::array<LsField, Count> &rows)
{
    NodePlaces places = IgpNode(rows);
    places.bgpRouterId = LsFieldOf(rows, "uiLocalBgpRtId").offset;
    places.memberAs = LsFieldOf(rows, "localMemberAs").offset;
    return places;
}

constexpr NodePlaces kNodeLocal = IgpNode(kLsNodeRows);
constexpr NodePlaces kIpv4PrefixLocal = IgpNode(kLsIpv4PrefixRows);
constexpr NodePlaces kIpv6PrefixLocal = IgpNode(kLsIpv6PrefixRows);
constexpr NodePlaces kLinkLocal = EitherNode(kLsLinkRows);
constexpr NodePlaces kSrv6SidLocal = EitherNode(kLsSrv6SidRows);
constexpr NodePlaces kLinkRemote{.as = LsAt(kLsLinkRows, "stRemoteAs"),
                                 .bgpLsId = LsAt(kLsLinkRows, "stRemoteBgpLsId"),
                                 .ospfAreaId = LsAt(kLsLinkRows, "uiRemOspfAreaId"),
                                 .igpRouterId = LsAt(kLsLinkRows, "stRemIgpRtId"),
                                 .existFlag = LsAt(kLsLinkRows, "existFlag"),
                                 .bgpLsIdToStr = SYSDT_RemoteBgpLsIdToStr,
                                 .bgpRouterId = LsAt(kLsLinkRows, "uiRemoteBgpRtId"),
                                 .memberAs = LsAt(kLsLinkRows, "remoteMemberAs"),
                                 .isRemote = true};

// A node descriptor by what names the node: an IGP router id, or a BGP router id.
bool AppendLocal(GrowingText &text, bool isBgp, const uint8_t *record, const char *as, const char *bgpLsId,
                 const char *id, const char *last)
{
    // The type's name goes by the low byte, as the choice of the printer does.
    const char *type = LsTypeName(record[kLsTypeAt]);
    const char *protocol = LsProtocolName(ProtocolOf(record));
    const uint64_t identifier = IdentifierOf(record);
    return isBgp ? Print<"[%s][%s][IDENTIFIER%llu][LOCAL[as%s]%s[bgp-router-id%s]%s]">(text, type, protocol, identifier,
                                                                                       as, bgpLsId, id, last)
                 : Print<"[%s][%s][IDENTIFIER%llu][LOCAL[as%s]%s[ospf-area-id%s][igp-router-id%s]]">(
                       text, type, protocol, identifier, as, bgpLsId, id, last);
}

bool AppendRemote(GrowingText &text, bool isBgp, const char *as, const char *bgpLsId, const char *id, const char *last)
{
    return isBgp ? Print<"[REMOTE[as%s]%s[bgp-router-id%s]%s]">(text, as, bgpLsId, id, last)
                 : Print<"[REMOTE[as%s]%s[ospf-area-id%s][igp-router-id%s]]">(text, as, bgpLsId, id, last);
}

bool AppendNode(GrowingText &text, const NodePlaces &places, const uint8_t *record)
{
    const bool isBgp = ProtocolOf(record) == kLsBgp && places.bgpRouterId != 0;
    char as[kSmallPiece];
    char bgpLsId[kIdPiece];
    char last[kNodePiece]; // the member AS, or the IGP router id
    SYSDT_AsNumToStr(record + places.as, as);
    places.bgpLsIdToStr(Load<uint32_t>(record + places.bgpLsId), Load<uint32_t>(record + places.existFlag), bgpLsId);
    if (!isBgp) {
        IgpRouterIdToStr(record + places.igpRouterId, last);
    } else if (SYSDT_MemberAsNumToStr(record + places.memberAs, last) != DT_OK) {
        return false;
    }
    const Dotted id(record + (isBgp ? places.bgpRouterId : places.ospfAreaId));
    return places.isRemote ? AppendRemote(text, isBgp, as, bgpLsId, id.text, last)
                           : AppendLocal(text, isBgp, record, as, bgpLsId, id.text, last);
}

// -------------------------------------------------------------------------------------------------------------- links

bool AppendBgpLinkOf(GrowingText &text, const uint8_t *record, const char *local, const char *remote)
{
    const Dotted localId(record + LsAt(kLsLinkRows, "uiLinkLocId"));
    const Dotted remoteId(record + LsAt(kLsLinkRows, "uiLinkRemId"));
    return Print<"[LINK[identifier%s.%s][local%s][remote%s]]">(text, localId.text, remoteId.text, local, remote);
}

// Under BGP: the identifiers and one pair of addresses, IPv4 when there is one.
bool AppendBgpLink(GrowingText &text, const uint8_t *record)
{
    const uint8_t *ipv4Interface = record + LsAt(kLsLinkRows, "stIpv4IntfAddr");
    const uint8_t *ipv4Neighbour = record + LsAt(kLsLinkRows, "stIpv4PeerAddr");
    if ((Load<uint32_t>(ipv4Interface) | Load<uint32_t>(ipv4Neighbour)) != 0) {
        return AppendBgpLinkOf(text, record, Dotted(ipv4Interface).text, Dotted(ipv4Neighbour).text);
    }
    return AppendBgpLinkOf(text, record, Ipv6Piece(record + LsAt(kLsLinkRows, "stIpv6IntfAddr")).text,
                           Ipv6Piece(record + LsAt(kLsLinkRows, "stIpv6PeerAddr")).text);
}

// All four addresses, there or not.
bool AppendLinkAddresses(GrowingText &text, const uint8_t *record)
{
    const auto mtId = Load<uint32_t>(record + LsAt(kLsLinkRows, "uiMtId"));
    const Dotted ipv4Interface(record + LsAt(kLsLinkRows, "stIpv4IntfAddr"));
    const Dotted ipv4Neighbour(record + LsAt(kLsLinkRows, "stIpv4PeerAddr"));
    const Ipv6Piece ipv6Interface(record + LsAt(kLsLinkRows, "stIpv6IntfAddr"));
    const Ipv6Piece ipv6Neighbour(record + LsAt(kLsLinkRows, "stIpv6PeerAddr"));
    return Print<"[LINK[if-address%s][peer-address%s][if-address%s][peer-address%s]%s]">(
        text, ipv4Interface.text, ipv4Neighbour.text, ipv6Interface.text, ipv6Neighbour.text, MtPiece(mtId).text);
}

bool AppendLinkIds(GrowingText &text, const uint8_t *record)
{
    const auto mtId = Load<uint32_t>(record + LsAt(kLsLinkRows, "uiMtId"));
    const Dotted local(record + LsAt(kLsLinkRows, "uiLinkLocId"));
    const Dotted remote(record + LsAt(kLsLinkRows, "uiLinkRemId"));
    return Print<"[LINK[link-local-id%s][link-remote-id%s]%s]">(text, local.text, remote.text, MtPiece(mtId).text);
}

bool AppendLink(GrowingText &text, const uint8_t *record)
{
    if (ProtocolOf(record) == kLsBgp) {
        return AppendBgpLink(text, record);
    }
    const auto localId = Load<uint32_t>(record + LsAt(kLsLinkRows, "uiLinkLocId"));
    const auto remoteId = Load<uint32_t>(record + LsAt(kLsLinkRows, "uiLinkRemId"));
    return (localId | remoteId) != 0 ? AppendLinkIds(text, record) : AppendLinkAddresses(text, record);
}

// -------------------------------------------------------------------------------------------------------- TE policies

bool AppendTeLocal(GrowingText &text, const uint8_t *record)
{
    char as[kSmallPiece];
    char bgpLsId[kIdPiece];
    SYSDT_AsNumToStr(record + LsAt(kLsTePolicyRows, "stLocalAs"), as);
    SYSDT_LocalBgpLsIdToStr(Load<uint32_t>(record + LsAt(kLsTePolicyRows, "stLocalBgpLsId")),
                            Load<uint32_t>(record + LsAt(kLsTePolicyRows, "existFlag")), bgpLsId);
    const Dotted bgpRouterId(record + LsAt(kLsTePolicyRows, "uiLocalBgpRtId"));
    const Dotted routerId(record + LsAt(kLsTePolicyRows, "teRouterId"));
    const Ipv6Piece ipv6RouterId(record + LsAt(kLsTePolicyRows, "ipv6TeRouterId"));
    return Print<"[%s][%s][IDENTIFIER%llu][LOCAL[as%s]%s[bgp-router-id%s][ipv4-router-id%s][ipv6-router-id%s]]">(
        text, LsTypeName(record[kLsTypeAt]), LsProtocolName(ProtocolOf(record)), IdentifierOf(record), as, bgpLsId,
        bgpRouterId.text, routerId.text, ipv6RouterId.text);
}

bool AppendTe(GrowingText &text, const uint8_t *record)
{
    char endpoint[kAddressPiece];
    char originator[kAddressPiece];
    char originatorAs[kSmallPiece];
    SYSDT_LS_Ipv4Ipv6ToStr(record + LsAt(kLsTePolicyRows, "endpoint"), endpoint, sizeof endpoint);
    SYSDT_LS_Ipv4Ipv6ToStr(record + LsAt(kLsTePolicyRows, "originatorAddr"), originator, sizeof originator);
    SYSDT_OriginatorAsNumToStr(record + LsAt(kLsTePolicyRows, "originatorAs"), originatorAs);
    return Print<"[TE[protocol-origin%u][Flag%u][endpoint%s][color%u][originator-as%s][originator-address%s]"
                 "[discriminator%u]]">(text, record[LsAt(kLsTePolicyRows, "protocolOrigin")],
                                       record[LsAt(kLsTePolicyRows, "flags")], endpoint,
                                       Load<uint32_t>(record + LsAt(kLsTePolicyRows, "color")), originatorAs,
                                       originator, Load<uint32_t>(record + LsAt(kLsTePolicyRows, "discriminator")));
}

// ------------------------------------------------------------------------------------------------------------ printers

bool PrintNode(GrowingText &text, const uint8_t *record)
{
    return AppendNode(text, kNodeLocal, record);
}

bool PrintLink(GrowingText &text, const uint8_t *record)
{
    return AppendNode(text, kLinkLocal, record) && AppendNode(text, kLinkRemote, record) && AppendLink(text, record);
}

// The prefix of either family, ready as text.
bool AppendPrefix(GrowingText &text, const uint8_t *mtId, const uint8_t *routeType, const char *prefix, uint8_t length)
{
    const MtPiece mt(Load<uint32_t>(mtId));
    return Print<"[PREFIX%s[ospf-route-type%u][prefix%s/%u]]">(text, mt.text, Load<uint32_t>(routeType), prefix,
                                                               length);
}

bool PrintIpv4Prefix(GrowingText &text, const uint8_t *record)
{
    if (!AppendNode(text, kIpv4PrefixLocal, record)) {
        return false;
    }
    const Dotted prefix(record + LsAt(kLsIpv4PrefixRows, "stIpv4Prefix"));
    return AppendPrefix(text, record + LsAt(kLsIpv4PrefixRows, "uiMtId"),
                        record + LsAt(kLsIpv4PrefixRows, "uiOspfRtType"), prefix.text,
                        record[LsAt(kLsIpv4PrefixRows, "uiPrefixLen")]);
}

bool PrintIpv6Prefix(GrowingText &text, const uint8_t *record)
{
    if (!AppendNode(text, kIpv6PrefixLocal, record)) {
        return false;
    }
    const Ipv6Piece prefix(record + LsAt(kLsIpv6PrefixRows, "stIpv6Prefix"));
    return AppendPrefix(text, record + LsAt(kLsIpv6PrefixRows, "uiMtId"),
                        record + LsAt(kLsIpv6PrefixRows, "uiOspfRtType"), prefix.text,
                        record[LsAt(kLsIpv6PrefixRows, "uiPrefixLen")]);
}

bool PrintTePolicy(GrowingText &text, const uint8_t *record)
{
    return AppendTeLocal(text, record) && AppendTe(text, record);
}

bool PrintSrv6Sid(GrowingText &text, const uint8_t *record)
{
    if (!AppendNode(text, kSrv6SidLocal, record)) {
        return false;
    }
    const auto mtId = Load<uint32_t>(record + LsAt(kLsSrv6SidRows, "uiMtId"));
    const Ipv6Piece sid(record + LsAt(kLsSrv6SidRows, "srv6SidInfo"));
    return Print<"[SID%s[sid%s]]">(text, MtPiece(mtId).text, sid.text);
}

uint32_t PrintBy(bool (*print)(GrowingText &text, const uint8_t *record), const void *record, char *buffer,
                 uint32_t limit, uint32_t *printed)
{
    if (record == nullptr || buffer == nullptr || printed == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    GrowingText text{buffer, buffer + *printed, buffer + limit - 1};
    const bool isPrinted = print(text, static_cast<const uint8_t *>(record));
    *printed = Length(text);
    return isPrinted ? DT_OK : DT_ERR_FAIL;
}

// --------------------------------------------------------------------------------------------------------- FormatOut

struct TypePrinter {
    BgpLsPrinter *print;
    uint16_t limit;
};

constexpr TypePrinter kPrinters[kLsNlriTypes] = {
    {nullptr, 0},
    {SYSDT_LS_NodeKeyToStr, 512},
    {SYSDT_LS_LinkKeyToStr, kLsLargestLimit},
    {SYSDT_LS_Ipv4PrefixKeyToStr, kLsLargestLimit},
    {SYSDT_LS_Ipv6PrefixKeyToStr, kLsLargestLimit},
    {SYSDT_LS_TePolicyKeyToStr, kLsLargestLimit},
    {SYSDT_LS_Srv6SidKeyToStr, kLsLargestLimit},
};

} // namespace

// A key that does not print, or not to its end, is shown as far as it goes.
uint32_t PrintLsKey(const uint8_t *record, uint32_t, char *buffer, uint32_t *printed)
{
    buffer[0] = '\0';
    SYSDT_LsPrefix2Str(record, buffer, printed);
    return DT_OK;
}

} // namespace bgp

#define LS_PRINTER(name, print)                                                                                        \
    uint32_t name(const void *record, char *buffer, uint32_t limit, uint32_t *printed)                                 \
    {                                                                                                                  \
        return bgp::PrintBy(bgp::print, record, buffer, limit, printed);                                               \
    }

LS_PRINTER(SYSDT_LS_NodeKeyToStr, PrintNode)
LS_PRINTER(SYSDT_LS_LinkKeyToStr, PrintLink)
LS_PRINTER(SYSDT_LS_Ipv4PrefixKeyToStr, PrintIpv4Prefix)
LS_PRINTER(SYSDT_LS_Ipv6PrefixKeyToStr, PrintIpv6Prefix)
LS_PRINTER(SYSDT_LS_TePolicyKeyToStr, PrintTePolicy)
LS_PRINTER(SYSDT_LS_Srv6SidKeyToStr, PrintSrv6Sid)
LS_PRINTER(SYSDT_LS_TePolicy_LocalKeyToStr, AppendTeLocal)
LS_PRINTER(SYSDT_LS_TePolicy_TeKeyToStr, AppendTe)
LS_PRINTER(SYSDT_LinkKeyToStr_LinkDesc, AppendLink)
LS_PRINTER(SYSDT_SET_LINK_IDSTR, AppendLinkIds)
LS_PRINTER(SYSDT_SET_LINK_ADDRSTR, AppendLinkAddresses)

uint32_t SYSDT_LsPrefix2Str(const void *record, char *buffer, uint32_t *printed)
{
    if (record == nullptr || buffer == nullptr || printed == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const uint8_t type = static_cast<const uint8_t *>(record)[bgp::kLsTypeAt]; // the low byte of the word
    if (type < bgp::kLsNode || type >= bgp::kLsNlriTypes) {
        return DT_ERR_FAIL;
    }
    const bgp::TypePrinter &printer = bgp::kPrinters[type];
    return printer.print(record, buffer, printer.limit, printed);
}

BGP_FORMAT_OUT(SYSDT_LSPrefixFormatOut, bgp::kLsOut)
