// The explainers of the families, each in a source of its own; explain.cpp says which type has which.
#ifndef BGP_EXPLAIN_EXPLAINERS_H
#define BGP_EXPLAIN_EXPLAINERS_H

#include "fields.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bgp::explain {

using Sentences = std::vector<std::string>;

// "AS 64512 (private use (RFC 6996))".
std::string AsNumberText(uint32_t number);

// Administrator and assigned number of the six bytes at `offset`: type 0 two-octet AS, 1 IPv4 address, 2 four-octet AS.
std::string AdministratorText(const std::string &value, size_t offset, uint32_t type);

// A route target of 8 bytes and its notation, as VRFRT stores it.
void ExplainTarget(const std::string &value, Sentences &lines);

// The composite type whose sub-types are the route keys.
inline constexpr char kRouteKey[] = "BOLPREFIX";

// The record has the fields of the type that is explained.
using ExplainValue = void(const Record &record, Sentences &lines);

ExplainValue ExplainAsNumber, ExplainTimeRange;
ExplainValue ExplainCommunity, ExplainCommunityList, ExplainAsNumberList, ExplainLargeCommunity, ExplainExtCommunity,
    ExplainBandwidth, ExplainCompressed, ExplainAttributeIds;
ExplainValue ExplainRouteDistinguisher, ExplainBolRd, ExplainPolicyDistinguisher, ExplainRouteTarget,
    ExplainRouteTargetV6, ExplainSidStructure, ExplainVpnId;
ExplainValue ExplainRouteKey, ExplainEvpnKey, ExplainL2VpnKey, ExplainVpnv4MulticastKey, ExplainMdtKey;
ExplainValue ExplainBgpLsKey;

// Of which kind a value is, in a word or a few.
using NameKind = std::string(const PlugIn &plugIn, const std::string &value);

NameKind RouteKeyKind, BgpLsKind;

} // namespace bgp::explain

#endif
