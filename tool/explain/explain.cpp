#include "explain.h"

#include "explainers.h"

namespace bgp::explain {

namespace {

struct Explainer {
    std::string_view type; // its name
    ExplainValue *explain;
    NameKind *kind; // null for types of one kind
};

constexpr Explainer kExplainers[] = {
    {"ASNUM", ExplainAsNumber, nullptr},
    {"ASNUMEXT", ExplainAsNumber, nullptr},
    {"TIME_RANGE", ExplainTimeRange, nullptr},
    {"COMMUNITY", ExplainCommunity, nullptr},
    {"CMNTY_ENHANCE", ExplainCommunityList, nullptr},
    {"ASNUM_ENHANCE", ExplainAsNumberList, nullptr},
    {"LARGECOMMUNITY", ExplainLargeCommunity, nullptr},
    {"EXTCOMMUNITY", ExplainExtCommunity, nullptr},
    {"SOO", ExplainExtCommunity, nullptr},
    {"EXTCOMMUNITY_BW", ExplainBandwidth, nullptr},
    {"EXTCMNTY_COMPR", ExplainCompressed, nullptr},
    {"ATTRIDBITMAP", ExplainAttributeIds, nullptr},
    {"VRFRD", ExplainRouteDistinguisher, nullptr},
    {"BOLRD", ExplainBolRd, nullptr},
    {"RTPRD", ExplainPolicyDistinguisher, nullptr},
    {"VRFRT", ExplainRouteTarget, nullptr},
    {"VRFRTV6", ExplainRouteTargetV6, nullptr},
    {"SID_STRUCTURE", ExplainSidStructure, nullptr},
    {"VPNID", ExplainVpnId, nullptr},
    {kRouteKey, ExplainRouteKey, RouteKeyKind},
    {"EVNPREFIX", ExplainEvpnKey, RouteKeyKind},
    {"L2VPNPREFIX", ExplainL2VpnKey, nullptr},
    {"VPNV4MCPREFIX", ExplainVpnv4MulticastKey, nullptr},
    {"MDTPREFIX", ExplainMdtKey, nullptr},
    {"BGPLSPREFIX", ExplainBgpLsKey, BgpLsKind},
};

const Explainer *Find(std::string_view type)
{
    for (const Explainer &explainer : kExplainers) {
        if (explainer.type == type) {
            return &explainer;
        }
    }
    return nullptr;
}

} // namespace

std::vector<std::string> Explain(const PlugIn &plugIn, const DataTypeDescriptor &type, const std::string &value)
{
    std::vector<std::string> lines;
    if (const Explainer *explainer = Find(type.Name)) {
        explainer->explain(Record(plugIn, type.TypeId, value), lines);
    }
    return lines;
}

std::string KindOf(const PlugIn &plugIn, const DataTypeDescriptor &type, const std::string &value)
{
    const Explainer *explainer = Find(type.Name);
    return explainer == nullptr || explainer->kind == nullptr ? "" : explainer->kind(plugIn, value);
}

} // namespace bgp::explain
