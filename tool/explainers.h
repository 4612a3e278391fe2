// The explainers, a row a type; each family's words stand in a source of their own.
#ifndef BGPDT_EXPLAINERS_H
#define BGPDT_EXPLAINERS_H

#include "explain.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bgpdt {

// `width` bytes at `offset` in the order of the processor, or of the wire; bytes beyond the value read as zero.
uint64_t HostNumber(const std::string &value, size_t offset, size_t width);
uint64_t WireNumber(const std::string &value, size_t offset, size_t width);
std::string Ipv4Text(uint32_t address); // first octet most significant
std::string Ipv6Text(const std::string &value, size_t offset);
std::string Bytes(const std::string &value, size_t offset, size_t count);

// The field of that name; null when the value has none.
const FieldText *FindField(const std::vector<FieldText> &fields, std::string_view name);

// An address of either family, in network order: 4 or 16 bytes, none for an unknown family.
using Address = std::string;

Address Ipv4Address(uint32_t word);                         // first octet most significant
Address AddressAt(const std::string &value, size_t offset); // of a 21-byte address field
std::string AddressText(const Address &address);
bool IsMulticast(const Address &address);
bool IsUnspecified(const Address &address); // all zeros
// "10.1.1.0/24", and behind it what is odd about it: a length that no address has, bits beyond the length.
std::string PrefixText(const Address &address, uint64_t length);
// "10.1.1.1", and behind it what is odd about a length that should be the whole address.
std::string HostText(const Address &address, uint64_t length);

// An IGP router id of 50 bytes as people write it: "0000.0000.0001.00" for IS-IS, "10.0.0.1" or "10.0.0.1/10.1.1.1" for
// OSPF; by the protocol id of RFC 9552.
std::string IgpRouterIdText(const std::string &value, size_t offset, uint64_t protocol);

using Sentences = std::vector<std::string>;

// What an AS number is beyond a number ("private use (RFC 6996)"); empty for an ordinary one.
std::string AsNumberNote(uint32_t number);
// "AS 64512 (private use (RFC 6996))".
std::string AsNumberText(uint32_t number);

// Administrator and assigned number of the six bytes at `offset`: type 0 two-octet AS, 1 IPv4 address, 2 four-octet AS.
std::string AdministratorText(const std::string &value, size_t offset, uint32_t type);

// The name of a BOLPREFIX sub-type, as the plug-in's table spells it.
std::string SubTypeName(uint64_t subType);

// What a refused EVPN route text, trimmed, was taken for.
std::string EvpnShape(const std::string &text);
std::string Trimmed(const std::string &text); // without the blanks (space, tab) around it

using ExplainValue = void(const std::string &value, Sentences &lines);

ExplainValue ExplainAsNumber, ExplainTimeRange;
ExplainValue ExplainCommunity, ExplainCommunityList, ExplainAsNumberList, ExplainLargeCommunity, ExplainExtCommunity,
    ExplainBandwidth, ExplainCompressed, ExplainAttributeIds;
ExplainValue ExplainRouteDistinguisher, ExplainBolRd, ExplainPolicyDistinguisher, ExplainRouteTarget,
    ExplainRouteTargetV6, ExplainSidStructure, ExplainVpnId;
ExplainValue ExplainRouteKey, ExplainEvpnKey, ExplainL2VpnKey, ExplainVpnv4MulticastKey, ExplainMdtKey;
ExplainValue ExplainBgpLsKey;

struct Explainer {
    uint32_t typeId;
    ExplainValue *explain;
};

inline constexpr Explainer kExplainers[] = {
    {255, ExplainAsNumber},
    {285, ExplainAsNumber},
    {284, ExplainTimeRange},
    {256, ExplainCommunity},
    {326, ExplainCommunityList},
    {325, ExplainAsNumberList},
    {321, ExplainLargeCommunity},
    {257, ExplainExtCommunity},
    {260, ExplainExtCommunity},
    {329, ExplainBandwidth},
    {1300, ExplainCompressed},
    {290, ExplainAttributeIds},
    {259, ExplainRouteDistinguisher},
    {280, ExplainBolRd},
    {278, ExplainPolicyDistinguisher},
    {258, ExplainRouteTarget},
    {320, ExplainRouteTargetV6},
    {328, ExplainSidStructure},
    {303, ExplainVpnId},
    {279, ExplainRouteKey},
    {281, ExplainEvpnKey},
    {294, ExplainL2VpnKey},
    {295, ExplainVpnv4MulticastKey},
    {296, ExplainMdtKey},
    {1299, ExplainBgpLsKey},
};

} // namespace bgpdt

#endif
