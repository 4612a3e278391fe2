// Route keys: EVPN (RFC 7432, RFC 9136, RFC 9251), multicast VPN (RFC 6514), SR policy (RFC 9830), layer-2 VPN and the
// other sub-types of BOLPREFIX.
#include "explainers.h"

#include "bgp_datatypes.h"

#include <cstdio>

namespace bgpdt {

namespace {

constexpr uint32_t kBolPrefix = 279;

// A route key and its fields, found by the names of its layout. What it does not have is zero.
struct Key {
    const std::string &value;
    std::vector<FieldText> fields;

    explicit Key(const std::string &stored) : value(stored), fields(Fields(kBolPrefix, stored)) {}
    uint64_t Number(const char *name) const
    {
        const FieldText *field = FindField(fields, name);
        return field == nullptr ? 0 : HostNumber(value, field->offset, field->length);
    }
    std::string Text(const char *name) const { return std::to_string(Number(name)); }
    std::string BytesOf(const char *name) const
    {
        const FieldText *field = FindField(fields, name);
        return field == nullptr ? "" : Bytes(value, field->offset, field->length);
    }
    Address Ipv4(const char *name) const { return Ipv4Address(static_cast<uint32_t>(Number(name))); }
    Address AddressOf(const char *name) const
    {
        const FieldText *field = FindField(fields, name);
        return field == nullptr ? Address() : AddressAt(value, field->offset);
    }
    // Two fields and a family flag instead of one address field.
    Address EitherAddress(const char *ipv4, const char *ipv6, const char *family) const
    {
        return Number(family) == 0 ? Ipv4(ipv4) : BytesOf(ipv6);
    }
};

std::string ColonHex(const std::string &bytes)
{
    std::string text;
    for (const char byte : bytes) {
        char piece[4];
        std::snprintf(piece, sizeof piece, "%02x", static_cast<uint8_t>(byte));
        text += (text.empty() ? "" : ":") + std::string(piece);
    }
    return text;
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

std::string TagText(const Key &key)
{
    constexpr uint64_t kMaxEt = 0xFFFFFFFF;
    const uint64_t tag = key.Number("ethernetTag");
    if (tag == kMaxEt) {
        return "Ethernet tag 4294967295, MAX-ET: of the whole Ethernet segment";
    }
    return "Ethernet tag " + std::to_string(tag);
}

// A length of 0 is the form of "none" or "any" where there is one.
std::string SizedText(const Key &key, const char *what, const char *address, const char *length,
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

void ExplainMulticast(const Key &key, Sentences &lines)
{
    lines.push_back(SizedText(key, "source", "source", "sourceLength", "any") + ", " +
                    SizedText(key, "group", "group", "groupLength", nullptr) + GroupNote(key.AddressOf("group")));
    lines.push_back(SizedText(key, "originator", "originator", "originatorLength", nullptr));
}

void ExplainEvpnRoute(const Key &key, Sentences &lines)
{
    const uint64_t routeType = key.Number("bolPrefixRtType");
    if (routeType == 0 || routeType >= std::size(kRouteTypes)) {
        lines.push_back("EVPN route of an unknown type; it does not print");
        return;
    }
    lines.push_back("EVPN route type " + std::to_string(routeType) + ", " + kRouteTypes[routeType]);
    const bool hasTag = FindField(key.fields, "ethernetTag") != nullptr;
    if (FindField(key.fields, "esi") != nullptr) {
        lines.push_back(EsiText(key.BytesOf("esi")));
    }
    if (hasTag) {
        lines.push_back(TagText(key));
    }
    switch (routeType) {
    case 2:
        lines.push_back("MAC " + ColonHex(key.BytesOf("mac")) +
                        (key.Number("macLength") == 48 ? "" : " (length " + key.Text("macLength") + ", not 48 bits)"));
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
        lines.push_back("leave group synchronization number " + key.Text("leaveNumber"));
        break;
    default:
        break;
    }
}

// ------------------------------------------------------------------------------------------------------------- NG-MVPN

constexpr const char *kInterAs = "NG-MVPN inter-AS I-PMSI A-D route (type 2 of RFC 6514)";
constexpr const char *kSelective = "NG-MVPN S-PMSI A-D route (type 3 of RFC 6514)";
constexpr const char *kLeafOfInterAs = "NG-MVPN leaf A-D route (type 4 of RFC 6514) for an inter-AS I-PMSI route";
constexpr const char *kLeafOfSelective = "NG-MVPN leaf A-D route (type 4 of RFC 6514) for an S-PMSI route";
constexpr const char *kLeafOfIntraAs = "NG-MVPN leaf A-D route (type 4 of RFC 6514) for an intra-AS I-PMSI route";
constexpr const char *kSourceActive = "NG-MVPN source active A-D route (type 5 of RFC 6514)";
constexpr const char *kJoin =
    "NG-MVPN source tree join (type 7 of RFC 6514), or shared tree join (type 6), its source the C-RP";

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

void ExplainMvpn(const Key &key, Sentences &lines)
{
    std::string sentence;
    const auto append = [&sentence](const std::string &text) { sentence += (sentence.empty() ? "" : ", ") + text; };
    if (const FieldText *as = FindField(key.fields, "bolNgAsNumValue")) {
        append("source " + AsNumberText(static_cast<uint32_t>(HostNumber(key.value, as->offset, 4))));
    }
    for (const Part &part : kParts) {
        if (FindField(key.fields, part.name) == nullptr) {
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

// ---------------------------------------------------------------------------------------------------- the other
// families

void ExplainVplsAd(const Key &key, Sentences &lines)
{
    lines.push_back("PE address " + AddressText(key.Ipv4("bolPrefix")));
}

void ExplainExtendedTarget(const Key &key, Sentences &lines)
{
    constexpr uint64_t kEsImport = 0x0602;
    const std::string target = key.BytesOf("RtValue");
    if (WireNumber(target, 0, 2) == kEsImport) {
        lines.push_back("ES-import route target (RFC 7432): " + ColonHex(target.substr(2)));
        return;
    }
    // A route target of 8 bytes and its notation, as VRFRT stores it.
    ExplainRouteTarget(target + key.BytesOf("RtType"), lines);
}

void ExplainL2Vpn(const Key &key, Sentences &lines)
{
    lines.push_back("site (VE) " + key.Text("bolSiteId") + ", label block from site " + key.Text("bolLabelOffSet") +
                    " on");
}

void ExplainVpnv4Multicast(const Key &key, Sentences &lines)
{
    lines.push_back("prefix " + PrefixText(key.Ipv4("bolVpnv4McastPrefix"), key.Number("bolVpnv4McastMaskLen")));
}

void ExplainMdt(const Key &key, Sentences &lines)
{
    const Address group = key.Ipv4("bolMdtGrpAddr");
    lines.push_back("PE " + AddressText(key.Ipv4("bolMdtPrefix")) + ", prefix length " + key.Text("bolMdtMaskLen") +
                    ", default group " + (IsUnspecified(group) ? "not given" : AddressText(group) + GroupNote(group)));
}

void ExplainPolicyDistribution(const Key &key, Sentences &lines)
{
    const Address peer = key.Ipv4("bolRpdPeerAddr");
    lines.push_back("policy type " + key.Text("bolRpdPolicyType") + ", peer " + AddressText(peer) +
                    (IsUnspecified(peer) ? " (all peers)" : "") + ", distinguisher " + key.Text("bolRpdDistinguisher"));
}

void ExplainSrPolicy(const Key &key, Sentences &lines)
{
    const Address endpoint =
        key.EitherAddress("bolSrPolicyEndpointv4", "bolSrPolicyEndpointv6", "bolSrPolicyPolicyType");
    lines.push_back("distinguisher " + key.Text("bolSrPolicyDistinguisher") + ", colour " +
                    key.Text("bolSrPolicyPolicyColor") + ", endpoint " + AddressText(endpoint) +
                    (IsUnspecified(endpoint) ? " (the null endpoint: any, RFC 9256)" : ""));
}

void ExplainIpv6(const Key &key, Sentences &lines)
{
    lines.push_back("address " + AddressText(key.BytesOf("bolPrefix")));
}

void ExplainSdWan(const Key &key, Sentences &lines)
{
    const Address node = key.EitherAddress("bolSdwanNodeIDv4", "bolSdwanNodeIDv6", "bolSdwanPrefixType");
    lines.push_back("route type " + key.Text("bolSdwanType") + ", port-local id " + key.Text("bolSdwanPortLocalID") +
                    ", site " + key.Text("bolSdwanSiteID") + ", node " + AddressText(node));
}

// -------------------------------------------------------------------------------------------------------- the
// sub-types

// What a sub-type is a key of, and what its fields say; the place of a row is its sub-type.
struct SubType {
    const char *keyOf;
    void (*explain)(const Key &key, Sentences &lines);
};

constexpr SubType kSubTypes[BOL_PREFIX_SUBTYPES] = {
    {"VPLS auto-discovery (RFC 6074)", ExplainVplsAd},
    {"EVPN", ExplainEvpnRoute},
    {kInterAs, ExplainMvpn},
    {kSelective, ExplainMvpn},
    {kLeafOfInterAs, ExplainMvpn},
    {kLeafOfSelective, ExplainMvpn},
    {kSourceActive, ExplainMvpn},
    {kJoin, ExplainMvpn},
    {"route target as a key", ExplainExtendedTarget},
    {"BGP layer-2 VPN (RFC 4761)", ExplainL2Vpn},
    {"VPNv4 multicast (SAFI 129, RFC 6514)", ExplainVpnv4Multicast},
    {"multicast distribution tree (SAFI 66, RFC 6037)", ExplainMdt},
    {"route policy distribution (draft-ietf-idr-rpd)", ExplainPolicyDistribution},
    {kLeafOfIntraAs, ExplainMvpn},
    {"SR policy (SAFI 73, RFC 9830)", ExplainSrPolicy},
    {"IPv6 address", ExplainIpv6},
    {"SD-WAN edge (draft-ietf-idr-sdwan-edge-discovery)", ExplainSdWan},
};

void ExplainKeyOf(uint64_t expected, const std::string &value, Sentences &lines)
{
    const uint64_t subType = HostNumber(value, 0, 4);
    if (subType != expected) {
        lines.push_back("values of this type are of sub-type " + std::to_string(expected) + ", " +
                        SubTypeName(expected));
    }
    ExplainRouteKey(value, lines);
}

} // namespace

void ExplainRouteKey(const std::string &value, Sentences &lines)
{
    const uint64_t subType = HostNumber(value, 0, 4);
    if (subType >= BOL_PREFIX_SUBTYPES) {
        lines.push_back("unknown sub-type " + std::to_string(subType));
        return;
    }
    lines.push_back("sub-type " + std::to_string(subType) + ", " + SubTypeName(subType) + ": " +
                    kSubTypes[subType].keyOf);
    kSubTypes[subType].explain(Key(value), lines);
}

void ExplainEvpnKey(const std::string &value, Sentences &lines)
{
    ExplainKeyOf(1, value, lines);
}

void ExplainL2VpnKey(const std::string &value, Sentences &lines)
{
    ExplainKeyOf(9, value, lines);
}

void ExplainVpnv4MulticastKey(const std::string &value, Sentences &lines)
{
    ExplainKeyOf(10, value, lines);
}

void ExplainMdtKey(const std::string &value, Sentences &lines)
{
    ExplainKeyOf(11, value, lines);
}

} // namespace bgpdt
