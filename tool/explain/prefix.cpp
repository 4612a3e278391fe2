// Route keys: EVPN (RFC 7432, RFC 9136, RFC 9251), multicast VPN (RFC 6514), SR policy (RFC 9830), layer-2 VPN and the
// other sub-types of BOLPREFIX.
#include "bytes.h"
#include "explainers.h"

namespace bgp::explain {

namespace {

std::string ColonHex(const std::string &bytes)
{
    return Hex(bytes, ":");
}

// ---------------------------------------------------------------------------------------------------------------- EVPN

constexpr const char *kRouteTypes[] = {
    nullptr,
    "Ethernet auto-discovery (RFC 7432)",
    "MAC/IP advertisement (RFC 7432)",
    "inclusive multicast Ethernet tag (RFC 7432)",
    "Ethernet segment (RFC 7432)",
    "IP prefix (RFC 9136)",
    "selective multicast Ethernet tag (RFC 9251)",
    "multicast membership report synch (RFC 9251)",
    "multicast leave synch (RFC 9251)",
};

// The value of an Ethernet segment identifier by its type (RFC 7432, section 5): two parts, of which the second may be
// missing, and a reserved rest.
struct EsiType {
    const char *made;
    const char *first;
    size_t firstBytes;
    const char *second;
    size_t secondBytes;
};

constexpr EsiType kEsiTypes[] = {
    {"set by the operator", "value", 9, nullptr, 0},
    {"from LACP", "CE system MAC", 6, "port key", 2},
    {"from the spanning tree of a bridged LAN", "root bridge MAC", 6, "root priority", 2},
    {"from a MAC address", "system MAC", 6, "local discriminator", 3},
    {"from a router id", "router id", 4, "local discriminator", 4},
    {"from an AS number", "AS", 4, "local discriminator", 4},
};

std::string EsiText(const std::string &esi)
{
    if (esi == std::string(10, '\0')) {
        return "ESI 0: a single-homed site";
    }
    if (esi == std::string(10, '\xff')) {
        return "ESI all ones: MAX-ESI, reserved";
    }
    const auto number = static_cast<size_t>(WireNumber(esi, 0, 1));
    if (number >= std::size(kEsiTypes)) {
        return "ESI of unknown type " + std::to_string(number) + ", value " + ColonHex(esi.substr(1));
    }
    const EsiType &type = kEsiTypes[number];
    const auto first = static_cast<uint32_t>(WireNumber(esi, 1, 4));
    std::string text = "ESI type " + std::to_string(number) + ", " + type.made + ": " + type.first + ' ' +
                       (number == 4   ? Ipv4Text(first)
                        : number == 5 ? std::to_string(first)
                                      : ColonHex(esi.substr(1, type.firstBytes)));
    if (type.second != nullptr) {
        text += std::string(", ") + type.second + ' ' +
                std::to_string(WireNumber(esi, 1 + type.firstBytes, type.secondBytes));
    }
    return text;
}

std::string TagText(const Record &key)
{
    constexpr uint64_t kMaxEt = 0xFFFFFFFF;
    const uint64_t tag = key.Number("ethernetTag");
    if (tag == kMaxEt) {
        return "Ethernet tag 4294967295, MAX-ET: of the whole Ethernet segment";
    }
    return "Ethernet tag " + std::to_string(tag);
}

// A length of 0 is the form of "none" or "any" where there is one.
std::string SizedText(const Record &key, const char *what, const char *address, const char *length,
                      const char *ofLengthZero)
{
    const uint64_t bits = key.Number(length);
    return std::string(what) + ' ' +
           (bits == 0 && ofLengthZero != nullptr ? ofLengthZero : HostText(key.AddressOf(address), bits));
}

std::string GroupNote(const Address &group)
{
    return IsMulticast(group) ? "" : " (no multicast address)";
}

void ExplainMulticast(const Record &key, Sentences &lines)
{
    lines.push_back(SizedText(key, "source", "source", "sourceLength", "any") + ", " +
                    SizedText(key, "group", "group", "groupLength", nullptr) + GroupNote(key.AddressOf("group")));
    lines.push_back(SizedText(key, "originator", "originator", "originatorLength", nullptr));
}

void ExplainEvpnRoute(const Record &key, Sentences &lines)
{
    const uint64_t routeType = key.Number("bolPrefixRtType");
    if (routeType == 0 || routeType >= std::size(kRouteTypes)) {
        lines.push_back("EVPN route of an unknown type; it does not print");
        return;
    }
    lines.push_back("EVPN route type " + std::to_string(routeType) + ", " + kRouteTypes[routeType]);
    const bool hasTag = key.Has("ethernetTag");
    if (key.Has("esi")) {
        lines.push_back(EsiText(key.BytesOf("esi")));
    }
    if (hasTag) {
        lines.push_back(TagText(key));
    }
    switch (routeType) {
    case 2:
        lines.push_back(
            "MAC " + ColonHex(key.BytesOf("mac")) +
            (key.Number("macLength") == 48 ? "" : " (length " + key.NumberText("macLength") + ", not 48 bits)"));
        lines.push_back(SizedText(key, "IP", "ip", "ipLength", "none"));
        break;
    case 3:
        lines.push_back(SizedText(key, "originator", "originator", "originatorLength", nullptr));
        break;
    case 4:
        lines.push_back(SizedText(key, "originator", "originator", "originatorLength", "none given"));
        break;
    case 5:
        lines.push_back("prefix " + PrefixText(key.AddressOf("prefix"), key.Number("prefixLength")));
        break;
    case 6:
    case 7:
        ExplainMulticast(key, lines);
        break;
    case 8:
        ExplainMulticast(key, lines);
        lines.push_back("leave group synchronization number " + key.NumberText("leaveNumber"));
        break;
    default:
        break;
    }
}

// ------------------------------------------------------------------------------------------------------------- NG-MVPN

// Parts of a multicast key that a layout may have.
struct Part {
    const char *name;
    const char *what;
};

constexpr Part kParts[] = {
    {"bolNgPrefixCS", "source"},
    {"bolNgPrefixCG", "group"},
    {"bolNgPrefixOriIP", "originator"},
    {"bolNgPrefixOriIP1", "originator of the route"},
    {"bolNgPrefixOriIP2", "originator of the leaf route"},
};

void ExplainMvpn(const Record &key, Sentences &lines)
{
    std::string sentence;
    const auto append = [&sentence](const std::string &text) { sentence += (sentence.empty() ? "" : ", ") + text; };
    if (key.Has("bolNgAsNumValue")) {
        append("source " + AsNumberText(key.As("bolNgAsNumValue")));
    }
    for (const Part &part : kParts) {
        if (!key.Has(part.name)) {
            continue;
        }
        const Address address = key.AddressOf(part.name);
        const bool group = std::string_view(part.what) == "group";
        append(std::string(part.what) + ' ' + AddressText(address) +
               (IsUnspecified(address) ? " (unspecified)"
                : group                ? GroupNote(address)
                                       : ""));
    }
    lines.push_back(sentence);
}

// ------------------------------------------------------------------------------------------------- the other families

void ExplainVplsAd(const Record &key, Sentences &lines)
{
    lines.push_back("PE address " + AddressText(key.Ipv4("bolPrefix")));
}

void ExplainExtendedTarget(const Record &key, Sentences &lines)
{
    constexpr uint64_t kEsImport = 0x0602;
    const std::string target = key.BytesOf("RtValue");
    if (WireNumber(target, 0, 2) == kEsImport) {
        lines.push_back("ES-import route target (RFC 7432): " + ColonHex(target.substr(2)));
        return;
    }
    // A route target of 8 bytes and its notation, as VRFRT stores it.
    ExplainTarget(target + key.BytesOf("RtType"), lines);
}

void ExplainL2Vpn(const Record &key, Sentences &lines)
{
    lines.push_back("site (VE) " + key.NumberText("bolSiteId") + ", label block from site " +
                    key.NumberText("bolLabelOffSet") + " on");
}

void ExplainVpnv4Multicast(const Record &key, Sentences &lines)
{
    lines.push_back("prefix " + PrefixText(key.Ipv4("bolVpnv4McastPrefix"), key.Number("bolVpnv4McastMaskLen")));
}

void ExplainMdt(const Record &key, Sentences &lines)
{
    const Address group = key.Ipv4("bolMdtGrpAddr");
    lines.push_back("PE " + AddressText(key.Ipv4("bolMdtPrefix")) + ", prefix length " +
                    key.NumberText("bolMdtMaskLen") + ", default group " +
                    (IsUnspecified(group) ? "not given" : AddressText(group) + GroupNote(group)));
}

void ExplainPolicyDistribution(const Record &key, Sentences &lines)
{
    const Address peer = key.Ipv4("bolRpdPeerAddr");
    lines.push_back("policy type " + key.NumberText("bolRpdPolicyType") + ", peer " + AddressText(peer) +
                    (IsUnspecified(peer) ? " (all peers)" : "") + ", distinguisher " +
                    key.NumberText("bolRpdDistinguisher"));
}

void ExplainSrPolicy(const Record &key, Sentences &lines)
{
    const Address endpoint =
        key.EitherAddress("bolSrPolicyEndpointv4", "bolSrPolicyEndpointv6", "bolSrPolicyPolicyType");
    lines.push_back("distinguisher " + key.NumberText("bolSrPolicyDistinguisher") + ", colour " +
                    key.NumberText("bolSrPolicyPolicyColor") + ", endpoint " + AddressText(endpoint) +
                    (IsUnspecified(endpoint) ? " (the null endpoint: any, RFC 9256)" : ""));
}

void ExplainIpv6(const Record &key, Sentences &lines)
{
    lines.push_back("address " + AddressText(key.BytesOf("bolPrefix")));
}

void ExplainSdWan(const Record &key, Sentences &lines)
{
    const Address node = key.EitherAddress("bolSdwanNodeIDv4", "bolSdwanNodeIDv6", "bolSdwanPrefixType");
    lines.push_back("route type " + key.NumberText("bolSdwanType") + ", port-local id " +
                    key.NumberText("bolSdwanPortLocalID") + ", site " + key.NumberText("bolSdwanSiteID") + ", node " +
                    AddressText(node));
}

// ------------------------------------------------------------------------------------------------------ the sub-types

constexpr std::string_view kEvpn = "EVN";

// What a sub-type is a key of, and what its fields say.
struct SubType {
    std::string_view name; // as the plug-in's table spells it
    const char *keyOf;
    ExplainValue *explain;
};

constexpr SubType kSubTypes[] = {
    {"IPV4", "VPLS auto-discovery (RFC 6074)", ExplainVplsAd},
    {kEvpn, "EVPN", ExplainEvpnRoute},
    {"NG_TYPE_2", "NG-MVPN inter-AS I-PMSI A-D route (type 2 of RFC 6514)", ExplainMvpn},
    {"NG_TYPE_3", "NG-MVPN S-PMSI A-D route (type 3 of RFC 6514)", ExplainMvpn},
    {"NG_TYPE_4_2", "NG-MVPN leaf A-D route (type 4 of RFC 6514) for an inter-AS I-PMSI route", ExplainMvpn},
    {"NG_TYPE_4-3", "NG-MVPN leaf A-D route (type 4 of RFC 6514) for an S-PMSI route", ExplainMvpn},
    {"NG_TYPE_5", "NG-MVPN source active A-D route (type 5 of RFC 6514)", ExplainMvpn},
    {"NG_TYPE_6", "NG-MVPN source tree join (type 7 of RFC 6514), or shared tree join (type 6), its source the C-RP",
     ExplainMvpn},
    {"VRFRTEXT", "route target as a key", ExplainExtendedTarget},
    {"L2VPN", "BGP layer-2 VPN (RFC 4761)", ExplainL2Vpn},
    {"VPNV4MCAST", "VPNv4 multicast (SAFI 129, RFC 6514)", ExplainVpnv4Multicast},
    {"MDT", "multicast distribution tree (SAFI 66, RFC 6037)", ExplainMdt},
    {"RPD", "route policy distribution (draft-ietf-idr-rpd)", ExplainPolicyDistribution},
    {"NG_TYPE_4-1", "NG-MVPN leaf A-D route (type 4 of RFC 6514) for an intra-AS I-PMSI route", ExplainMvpn},
    {"SRPOLICY", "SR policy (SAFI 73, RFC 9830)", ExplainSrPolicy},
    {"IPV6", "IPv6 address", ExplainIpv6},
    {"SD-WAN", "SD-WAN edge (draft-ietf-idr-sdwan-edge-discovery)", ExplainSdWan},
};

// The sub-types are told by the composite type, whatever type a key is a value of.
const BgpTypeFacts *SubTypeAt(const PlugIn &plugIn, uint32_t word)
{
    const BgpTypeFacts *composite = FindType(plugIn, kRouteKey);
    return composite == nullptr ? nullptr : plugIn.describeSubType(composite->TypeId, word);
}

// The sub-type that a key's first word names; null for an unknown one.
const BgpTypeFacts *SubTypeOf(const PlugIn &plugIn, const std::string &value)
{
    return SubTypeAt(plugIn, static_cast<uint32_t>(HostNumber(value, 0, 4)));
}

std::string SubTypeText(const BgpTypeFacts &subType)
{
    return "sub-type " + std::to_string(subType.SubType) + ", " + subType.Name;
}

const SubType *FindSubType(std::string_view name)
{
    for (const SubType &subType : kSubTypes) {
        if (subType.name == name) {
            return &subType;
        }
    }
    return nullptr;
}

// Of a type whose values are keys of one sub-type.
void ExplainKeyOf(std::string_view expected, const Record &record, Sentences &lines)
{
    const BgpTypeFacts *facts = nullptr;
    for (uint32_t word = 0; (facts = SubTypeAt(record.plugIn, word)) != nullptr && facts->Name != expected; ++word) {
    }
    if (facts != nullptr && facts != SubTypeOf(record.plugIn, record.value)) {
        lines.push_back("values of this type are of " + SubTypeText(*facts));
    }
    ExplainRouteKey(record, lines);
}

} // namespace

std::string RouteKeyKind(const PlugIn &plugIn, const std::string &value)
{
    const BgpTypeFacts *facts = SubTypeOf(plugIn, value);
    if (facts == nullptr) {
        return "unknown";
    }
    constexpr size_t kRouteTypeAt = 4;
    return facts->Name == kEvpn ? std::string(kEvpn) + " type " + std::to_string(HostNumber(value, kRouteTypeAt, 1))
                                : facts->Name;
}

void ExplainRouteKey(const Record &record, Sentences &lines)
{
    const BgpTypeFacts *facts = SubTypeOf(record.plugIn, record.value);
    if (facts == nullptr) {
        lines.push_back("unknown sub-type " + std::to_string(HostNumber(record.value, 0, 4)));
        return;
    }
    const SubType *subType = FindSubType(facts->Name);
    lines.push_back(SubTypeText(*facts) + (subType == nullptr ? "" : std::string(": ") + subType->keyOf));
    if (subType != nullptr) {
        const BgpTypeFacts *composite = FindType(record.plugIn, kRouteKey);
        subType->explain(Record(record.plugIn, composite->TypeId, record.value), lines);
    }
}

void ExplainEvpnKey(const Record &record, Sentences &lines)
{
    ExplainKeyOf(kEvpn, record, lines);
}

void ExplainL2VpnKey(const Record &record, Sentences &lines)
{
    ExplainKeyOf("L2VPN", record, lines);
}

void ExplainVpnv4MulticastKey(const Record &record, Sentences &lines)
{
    ExplainKeyOf("VPNV4MCAST", record, lines);
}

void ExplainMdtKey(const Record &record, Sentences &lines)
{
    ExplainKeyOf("MDT", record, lines);
}

} // namespace bgp::explain
