// BGP-LS route keys (RFC 9552; SRv6 SIDs RFC 9514, TE policies RFC 9857): which object of which protocol, and who and
// what its descriptors name.
#include "bytes.h"
#include "explainers.h"
#include "igp_router_id.h"

namespace bgp::explain {

namespace {

uint64_t Protocol(const Record &key)
{
    return key.Number("uiProtocolId");
}

constexpr const char *kProtocols[] = {
    nullptr,         "IS-IS level 1",
    "IS-IS level 2", "OSPFv2",
    "direct routes", "static configuration",
    "OSPFv3",        "BGP (RFC 9086)",
    nullptr,         "segment routing (RFC 9857)",
};

struct Name {
    uint64_t value;
    const char *name;
};

template <size_t Count>
std::string WithName(uint64_t value, const Name (&names)[Count])
{
    for (const Name &name : names) {
        if (name.value == value) {
            return std::to_string(value) + ", " + name.name;
        }
    }
    return std::to_string(value);
}

// --------------------------------------------------------------------------------------------------------------- nodes

// The names of a node's fields, at either end of a link. Null where there is no such field.
struct Node {
    const char *what;
    const char *as, *bgpLsId, *area, *igpId, *memberAs, *bgpRouterId;
    uint64_t givenBit; // of existFlag: the BGP-LS identifier was given
};

constexpr Node kLocal{"local node",   "stLocalAs",     "stLocalBgpLsId", "uiLocOspfAreaId",
                      "stLocIgpRtId", "localMemberAs", "uiLocalBgpRtId", 1};
constexpr Node kRemote{"remote node",  "stRemoteAs",     "stRemoteBgpLsId", "uiRemOspfAreaId",
                       "stRemIgpRtId", "remoteMemberAs", "uiRemoteBgpRtId", 2};

void ExplainNode(const Record &key, const Node &node, Sentences &lines)
{
    const uint32_t as = key.As(node.as);
    std::string sentence = std::string(node.what) + ": " + (as == 0 ? "no AS number" : AsNumberText(as));
    const auto append = [&sentence](const std::string &text) { sentence += ", " + text; };
    if ((key.Number("existFlag") & node.givenBit) != 0) {
        append("BGP-LS identifier " + AddressText(key.Ipv4(node.bgpLsId)));
    } else {
        append(key.IsZero(node.bgpLsId) ? "no BGP-LS identifier given"
                                        : "BGP-LS identifier " + AddressText(key.Ipv4(node.bgpLsId)) +
                                              " but not marked as given, so it does not print");
    }
    if (key.Has(node.bgpRouterId) && !key.IsZero(node.bgpRouterId)) {
        append("BGP router id " + AddressText(key.Ipv4(node.bgpRouterId)));
    }
    if (key.As(node.memberAs) != 0) {
        append("member " + AsNumberText(key.As(node.memberAs)));
    }
    if (key.Has(node.area) && (IsOspf(Protocol(key)) || !key.IsZero(node.area))) {
        append("area " + AddressText(key.Ipv4(node.area)) + (key.IsZero(node.area) ? " (backbone)" : ""));
    }
    if (key.Has(node.igpId) && (Protocol(key) != kBgp || !key.IsZero(node.igpId))) {
        append(IgpRouterText(key.BytesOf(node.igpId), Protocol(key)));
    }
    lines.push_back(sentence);
}

// --------------------------------------------------------------------------------------------------------- descriptors

constexpr Name kIsisTopologies[] = {
    {0, "standard"},       {1, "IPv4 in-band management"}, {2, "IPv6 unicast"},
    {3, "IPv4 multicast"}, {4, "IPv6 multicast"},          {5, "IPv6 in-band management"},
};

constexpr Name kOspfTopologies[] = {{0, "default"}, {1, "default multicast"}, {2, "IPv4 in-band management"}};

constexpr Name kNoTopologies[] = {{0, "default"}};

void ExplainTopology(const Record &key, Sentences &lines)
{
    constexpr uint64_t kNone = 0xFFFFFFFF;
    const uint64_t topology = key.Number("uiMtId");
    if (topology == kNone) {
        lines.push_back("no multi-topology id");
    } else {
        lines.push_back("multi-topology id " +
                        (IsIsis(Protocol(key))   ? WithName(topology, kIsisTopologies) + " (RFC 5120)"
                         : IsOspf(Protocol(key)) ? WithName(topology, kOspfTopologies) + " (RFC 4915)"
                                                 : WithName(topology, kNoTopologies)));
    }
}

void ExplainEnds(const Record &key, const char *what, const char *local, const char *remote, bool ipv4,
                 Sentences &lines)
{
    if (key.IsZero(local) && key.IsZero(remote)) {
        return;
    }
    const auto text = [&key, ipv4](const char *name) {
        return AddressText(ipv4 ? key.Ipv4(name) : Address(key.BytesOf(name)));
    };
    lines.push_back(std::string(what) + text(local) + ", neighbour " + text(remote));
}

void ExplainLink(const Record &key, Sentences &lines)
{
    ExplainNode(key, kRemote, lines);
    if (!key.IsZero("uiLinkLocId") || !key.IsZero("uiLinkRemId")) {
        lines.push_back("link identifiers: local " + std::to_string(key.Number("uiLinkLocId")) + ", remote " +
                        std::to_string(key.Number("uiLinkRemId")));
    }
    ExplainEnds(key, "link: interface ", "stIpv4IntfAddr", "stIpv4PeerAddr", true, lines);
    ExplainEnds(key, "link: interface ", "stIpv6IntfAddr", "stIpv6PeerAddr", false, lines);
    ExplainTopology(key, lines);
}

constexpr Name kOspfRoutes[] = {
    {1, "intra-area"}, {2, "inter-area"}, {3, "external 1"}, {4, "external 2"}, {5, "NSSA 1"}, {6, "NSSA 2"},
};

void ExplainPrefix(const Record &key, Sentences &lines)
{
    const bool ipv4 = key.Has("stIpv4Prefix");
    lines.push_back("prefix " + PrefixText(ipv4 ? key.Ipv4("stIpv4Prefix") : Address(key.BytesOf("stIpv6Prefix")),
                                           key.Number("uiPrefixLen")));
    const uint64_t route = key.Number("uiOspfRtType");
    if (IsOspf(Protocol(key)) || route != 0) {
        lines.push_back("OSPF route type " + WithName(route, kOspfRoutes));
    }
    ExplainTopology(key, lines);
}

// Both the values of the key itself and the priorities of RFC 9256 are in use.
constexpr Name kOrigins[] = {{1, "PCEP"},  {2, "BGP SR policy"},  {3, "configuration"},
                             {10, "PCEP"}, {20, "BGP SR policy"}, {30, "configuration"}};

void ExplainTePolicy(const Record &key, Sentences &lines)
{
    lines.push_back("headend router ids " + AddressText(key.Ipv4("teRouterId")) + " and " +
                    AddressText(key.BytesOf("ipv6TeRouterId")));
    const Address endpoint = key.AddressOf("endpoint");
    lines.push_back("SR policy: colour " + std::to_string(key.Number("color")) + ", endpoint " + AddressText(endpoint) +
                    (IsUnspecified(endpoint) ? " (the null endpoint: any, RFC 9256)" : ""));
    const uint32_t as = key.As("originatorAs");
    const Address originator = key.AddressOf("originatorAddr");
    lines.push_back("candidate path: protocol origin " + WithName(key.Number("protocolOrigin"), kOrigins) +
                    "; originator " + AsNumberText(as) + ", " + AddressText(originator) + "; discriminator " +
                    std::to_string(key.Number("discriminator")));
    // RFC 9857: bit 0, the highest, an IPv6 endpoint; bit 1 an IPv6 originator.
    const uint64_t flags = key.Number("flags");
    const auto says = [flags](uint64_t bit) { return (flags & bit) != 0 ? "IPv6" : "IPv4"; };
    const bool agree =
        (endpoint.size() == 16) == ((flags & 0x80) != 0) && (originator.size() == 16) == ((flags & 0x40) != 0);
    lines.push_back("flags " + std::to_string(flags) + ": " + says(0x80) + " endpoint, " + says(0x40) + " originator" +
                    (agree ? "" : "; the addresses are of other families"));
}

void ExplainSid(const Record &key, Sentences &lines)
{
    lines.push_back("SRv6 SID " + AddressText(key.BytesOf("srv6SidInfo")));
    ExplainTopology(key, lines);
}

void ExplainNothing(const Record &, Sentences &) {}

struct NlriType {
    const char *kind; // as a text names it
    const char *name;
    void (*explain)(const Record &key, Sentences &lines); // behind the local node
};

// The place of a row is its NLRI type.
constexpr NlriType kNlriTypes[] = {
    {"unknown", nullptr, nullptr},
    {"NODE", "node (RFC 9552)", ExplainNothing},
    {"LINK", "link (RFC 9552)", ExplainLink},
    {"IPV4-PREFIX", "IPv4 prefix (RFC 9552)", ExplainPrefix},
    {"IPV6-PREFIX", "IPv6 prefix (RFC 9552)", ExplainPrefix},
    {"TEPOLICY", "TE policy, a candidate path of an SR policy (RFC 9857)", ExplainTePolicy},
    {"SRV6-SID", "SRv6 SID (RFC 9514)", ExplainSid},
};

// 0 for a type that has no row.
uint64_t NlriTypeOf(const std::string &value)
{
    const uint64_t type = HostNumber(value, 0, 4);
    return type < std::size(kNlriTypes) ? type : 0;
}

} // namespace

std::string BgpLsKind(const PlugIn &, const std::string &value)
{
    return kNlriTypes[NlriTypeOf(value)].kind;
}

void ExplainBgpLsKey(const Record &key, Sentences &lines)
{
    const uint64_t type = NlriTypeOf(key.value);
    if (type == 0) {
        lines.push_back("unknown NLRI type " + std::to_string(HostNumber(key.value, 0, 4)));
        return;
    }
    const uint64_t protocol = Protocol(key);
    const bool known = protocol < std::size(kProtocols) && kProtocols[protocol] != nullptr;
    lines.push_back("NLRI type " + std::to_string(type) + ", " + kNlriTypes[type].name + ", from " +
                    (known ? kProtocols[protocol] : "unknown protocol " + std::to_string(protocol)) + ", instance " +
                    key.NumberText("uiIdentifier"));
    ExplainNode(key, kLocal, lines);
    kNlriTypes[type].explain(key, lines);
}

} // namespace bgp::explain
