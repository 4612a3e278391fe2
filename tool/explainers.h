// The explainers, a row a type; each family's words stand in a source of their own.
#ifndef BGPDT_EXPLAINERS_H
#define BGPDT_EXPLAINERS_H

#include <cstdint>
#include <string>
#include <vector>

namespace bgpdt {

// `width` bytes at `offset` in the order of the processor, or of the wire; bytes beyond the value read as zero.
uint64_t HostNumber(const std::string &value, size_t offset, size_t width);
uint64_t WireNumber(const std::string &value, size_t offset, size_t width);
std::string Ipv4Text(uint32_t address); // first octet most significant
std::string Ipv6Text(const std::string &value, size_t offset);

using Sentences = std::vector<std::string>;

// What an AS number is beyond a number ("private use (RFC 6996)"); empty for an ordinary one.
std::string AsNumberNote(uint32_t number);

// Administrator and assigned number of the six bytes at `offset`: type 0 two-octet AS, 1 IPv4 address, 2 four-octet AS.
std::string AdministratorText(const std::string &value, size_t offset, uint32_t type);

using ExplainValue = void(const std::string &value, Sentences &lines);

ExplainValue ExplainAsNumber, ExplainTimeRange;
ExplainValue ExplainCommunity, ExplainCommunityList, ExplainAsNumberList, ExplainLargeCommunity, ExplainExtCommunity,
    ExplainBandwidth, ExplainCompressed, ExplainAttributeIds;
ExplainValue ExplainRouteDistinguisher, ExplainBolRd, ExplainPolicyDistinguisher, ExplainRouteTarget,
    ExplainRouteTargetV6, ExplainSidStructure, ExplainVpnId;

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
};

} // namespace bgpdt

#endif
