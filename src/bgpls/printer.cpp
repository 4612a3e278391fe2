// BGPLSPREFIX, text out: the bracketed form that the parser reads, one format a section. The pieces of a section are
// made first, in buffers of their own.
//
// IGP router ids print as their raw bytes up to the first zero byte. That is the type's text, and hosts compare it:
// whoever wants them readable takes them from the record.
#include "bgpls/bgpls.h"
#include "bgpls/pieces.h"

#include "host/bytes.h"
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

constexpr MtFormats kPrefixFormats{"[PREFIX[mt-id%u][ospf-route-type%u][prefix%s/%u]]",
                                   "[PREFIX[ospf-route-type%u][prefix%s/%u]]", 1};
constexpr MtFormats kSidFormats{"[SID[mt-id%u][sid%s]]", "[SID[sid%s]]", 1};
constexpr MtFormats kLinkIdFormats{"[LINK[link-local-id%s][link-remote-id%s][mt-id%u]]",
                                   "[LINK[link-local-id%s][link-remote-id%s]]", 0};
constexpr MtFormats kLinkAddressFormats{"[LINK[if-address%s][peer-address%s][if-address%s][peer-address%s][mt-id%u]]",
                                        "[LINK[if-address%s][peer-address%s][if-address%s][peer-address%s]]", 0};

// A node descriptor by what names the node: an IGP router id, or a BGP router id.
struct NodeFormats {
    const char *igp;
    const char *bgp;
    uint32_t skip; // of the arguments type, protocol, identifier
};

constexpr NodeFormats kLocalFormats{"[%s][%s][IDENTIFIER%llu][LOCAL[as%s]%s[ospf-area-id%s][igp-router-id%s]]",
                                    "[%s][%s][IDENTIFIER%llu][LOCAL[as%s]%s[bgp-router-id%s]%s]", 0};
constexpr NodeFormats kRemoteFormats{"[REMOTE[as%s]%s[ospf-area-id%s][igp-router-id%s]]",
                                     "[REMOTE[as%s]%s[bgp-router-id%s]%s]", 3};

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
                                 .memberAs = LsAt(kLsLinkRows, "remoteMemberAs")};

bool AppendNode(GrowingText &text, const NodeFormats &formats, const NodePlaces &places, const uint8_t *record)
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
    // The type's name goes by the low byte, as the choice of the printer does.
    const Dotted id(record + (isBgp ? places.bgpRouterId : places.ospfAreaId));
    const Argument arguments[] = {LsTypeName(record[kLsTypeAt]),
                                  LsProtocolName(ProtocolOf(record)),
                                  IdentifierOf(record),
                                  as,
                                  bgpLsId,
                                  id.text,
                                  last};
    return Print(text, isBgp ? formats.bgp : formats.igp, arguments + formats.skip);
}

// -------------------------------------------------------------------------------------------------------------- links

// Under BGP: the identifiers and one pair of addresses, IPv4 when there is one.
bool AppendBgpLink(GrowingText &text, const uint8_t *record)
{
    constexpr char kFormat[] = "[LINK[identifier%s.%s][local%s][remote%s]]";
    const uint8_t *ipv4Interface = record + LsAt(kLsLinkRows, "stIpv4IntfAddr");
    const uint8_t *ipv4Neighbour = record + LsAt(kLsLinkRows, "stIpv4PeerAddr");
    const Dotted localId(record + LsAt(kLsLinkRows, "uiLinkLocId"));
    const Dotted remoteId(record + LsAt(kLsLinkRows, "uiLinkRemId"));
    if ((Load<uint32_t>(ipv4Interface) | Load<uint32_t>(ipv4Neighbour)) != 0) {
        const Dotted local(ipv4Interface);
        const Dotted remote(ipv4Neighbour);
        const Argument arguments[] = {localId.text, remoteId.text, local.text, remote.text};
        return Print(text, kFormat, arguments);
    }
    const Ipv6Piece local(record + LsAt(kLsLinkRows, "stIpv6IntfAddr"));
    const Ipv6Piece remote(record + LsAt(kLsLinkRows, "stIpv6PeerAddr"));
    const Argument arguments[] = {localId.text, remoteId.text, local.text, remote.text};
    return Print(text, kFormat, arguments);
}

// All four addresses, there or not.
bool AppendLinkAddresses(GrowingText &text, const uint8_t *record)
{
    const auto mtId = Load<uint32_t>(record + LsAt(kLsLinkRows, "uiMtId"));
    const Dotted ipv4Interface(record + LsAt(kLsLinkRows, "stIpv4IntfAddr"));
    const Dotted ipv4Neighbour(record + LsAt(kLsLinkRows, "stIpv4PeerAddr"));
    const Ipv6Piece ipv6Interface(record + LsAt(kLsLinkRows, "stIpv6IntfAddr"));
    const Ipv6Piece ipv6Neighbour(record + LsAt(kLsLinkRows, "stIpv6PeerAddr"));
    const Argument arguments[] = {ipv4Interface.text, ipv4Neighbour.text, ipv6Interface.text, ipv6Neighbour.text, mtId};
    return AppendMt(text, kLinkAddressFormats, mtId, arguments);
}

bool AppendLinkIds(GrowingText &text, const uint8_t *record)
{
    const auto mtId = Load<uint32_t>(record + LsAt(kLsLinkRows, "uiMtId"));
    const Dotted local(record + LsAt(kLsLinkRows, "uiLinkLocId"));
    const Dotted remote(record + LsAt(kLsLinkRows, "uiLinkRemId"));
    const Argument arguments[] = {local.text, remote.text, mtId};
    return AppendMt(text, kLinkIdFormats, mtId, arguments);
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
    const Argument arguments[] = {LsTypeName(record[kLsTypeAt]),
                                  LsProtocolName(ProtocolOf(record)),
                                  IdentifierOf(record),
                                  as,
                                  bgpLsId,
                                  bgpRouterId.text,
                                  routerId.text,
                                  ipv6RouterId.text};
    return Print(text, "[%s][%s][IDENTIFIER%llu][LOCAL[as%s]%s[bgp-router-id%s][ipv4-router-id%s][ipv6-router-id%s]]",
                 arguments);
}

bool AppendTe(GrowingText &text, const uint8_t *record)
{
    char endpoint[kAddressPiece];
    char originator[kAddressPiece];
    char originatorAs[kSmallPiece];
    SYSDT_LS_Ipv4Ipv6ToStr(record + LsAt(kLsTePolicyRows, "endpoint"), endpoint, sizeof endpoint);
    SYSDT_LS_Ipv4Ipv6ToStr(record + LsAt(kLsTePolicyRows, "originatorAddr"), originator, sizeof originator);
    SYSDT_OriginatorAsNumToStr(record + LsAt(kLsTePolicyRows, "originatorAs"), originatorAs);
    const Argument arguments[] = {record[LsAt(kLsTePolicyRows, "protocolOrigin")],
                                  record[LsAt(kLsTePolicyRows, "flags")],
                                  endpoint,
                                  Load<uint32_t>(record + LsAt(kLsTePolicyRows, "color")),
                                  originatorAs,
                                  originator,
                                  Load<uint32_t>(record + LsAt(kLsTePolicyRows, "discriminator"))};
    return Print(text,
                 "[TE[protocol-origin%u][Flag%u][endpoint%s][color%u][originator-as%s][originator-address%s]"
                 "[discriminator%u]]",
                 arguments);
}

// ------------------------------------------------------------------------------------------------------------ printers

bool PrintNode(GrowingText &text, const uint8_t *record)
{
    return AppendNode(text, kLocalFormats, kNodeLocal, record);
}

bool PrintLink(GrowingText &text, const uint8_t *record)
{
    return AppendNode(text, kLocalFormats, kLinkLocal, record) &&
           AppendNode(text, kRemoteFormats, kLinkRemote, record) && AppendLink(text, record);
}

// The prefix of either family, ready as text.
bool AppendPrefix(GrowingText &text, const uint8_t *mtId, const uint8_t *routeType, const char *prefix, uint8_t length)
{
    const auto mt = Load<uint32_t>(mtId);
    const Argument arguments[] = {mt, Load<uint32_t>(routeType), prefix, length};
    return AppendMt(text, kPrefixFormats, mt, arguments);
}

bool PrintIpv4Prefix(GrowingText &text, const uint8_t *record)
{
    if (!AppendNode(text, kLocalFormats, kIpv4PrefixLocal, record)) {
        return false;
    }
    const Dotted prefix(record + LsAt(kLsIpv4PrefixRows, "stIpv4Prefix"));
    return AppendPrefix(text, record + LsAt(kLsIpv4PrefixRows, "uiMtId"),
                        record + LsAt(kLsIpv4PrefixRows, "uiOspfRtType"), prefix.text,
                        record[LsAt(kLsIpv4PrefixRows, "uiPrefixLen")]);
}

bool PrintIpv6Prefix(GrowingText &text, const uint8_t *record)
{
    if (!AppendNode(text, kLocalFormats, kIpv6PrefixLocal, record)) {
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
    if (!AppendNode(text, kLocalFormats, kSrv6SidLocal, record)) {
        return false;
    }
    const auto mtId = Load<uint32_t>(record + LsAt(kLsSrv6SidRows, "uiMtId"));
    const Ipv6Piece sid(record + LsAt(kLsSrv6SidRows, "srv6SidInfo"));
    const Argument arguments[] = {mtId, sid.text};
    return AppendMt(text, kSidFormats, mtId, arguments);
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
