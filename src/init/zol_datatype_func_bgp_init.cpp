// The two descriptor tables and the walk that hands their rows to the host. The order of the rows is the order of
// registration. This source alone sees all types.
#include "asnum/asnum.h"
#include "bgp_datatypes/evpn.h"
#include "bgp_host_services.h"
#include "bgpls/bgpls.h"
#include "community/community.h"
#include "community/ext_community.h"
#include "prefix/prefix.h"
#include "rdrt/rdrt.h"
#include "types/types.h"

#include <iterator>

namespace {

// Base kinds: the host's own type that a value is made of.
constexpr uint16_t kStructured = 26;
constexpr uint16_t kText = 25;
constexpr uint16_t kNumber = 6;

// A name-index type: a 4-byte index whose text is an object's name, which only the host knows.
constexpr DataTypeDescriptor NameIndex(const char *name, uint16_t typeId)
{
    DataTypeDescriptor row{};
    row.TypeId = typeId;
    row.BinaryLength = 4;
    row.BaseKind = kNumber;
    for (uint32_t i = 0; name[i] != '\0'; ++i) {
        row.Name[i] = name[i];
    }
    row.FormatIn = SYS_DT_UINT32IndexFormatIn;
    row.FormatOut = SYS_DT_IndexFormatOut;
    row.Compare = SYSDT_Uint32Compare;
    row.LuaSet = SYSDT_Uint32LuaSet;
    row.LuaGet = SYSDT_Uint32LuaGet;
    return row;
}

} // namespace

// clang-format off
const DataTypeDescriptor g_astBgpDataTypeNameIndexDefineTbl[BGP_NAME_INDEX_ROWS] = {
    NameIndex("VRFID2VRFNAME",  0x6003),
    NameIndex("BGPPEERGROUPID", 0x600e),
    NameIndex("FLOWROUTEID",    0x601b),
    NameIndex("VRFID2CVRFNAME", 0x6052),
    NameIndex("BGPID2BGPNAME",  0x605c),
    NameIndex("ALIASID2NAME",   0x606a),
    NameIndex("SETID2SETNAME",  0x6077),
    NameIndex("PDID2PDNAME",    0x6083),
    NameIndex("RTPCLID2NAME",   0x608e),
};

// Type id, length, base kind, name; FormatIn, FormatOut, Check, Help; Compare, reserved, LuaSet, LuaGet, Endian.
const DataTypeDescriptor g_astBgpDataTypeExtendDefineTbl[] = {
    {255, 8, kStructured, "ASNUM",
     SYSDT_AsNumFormatIn, SYSDT_AsNumFormatOut, SYSDT_AsNumCheck, SYSDT_AsNumHelp,
     SYSDT_Uint32Compare, nullptr, SYSDT_AsNumLuaSet, SYSDT_AsNumLuaGet, SYSDT_AsNumLuaEndian},
    {256, 8, kStructured, "COMMUNITY",
     SYSDT_CommunityFormatIn, SYSDT_CommunityFormatOut, SYSDT_CommunityCheck, SYSDT_CommunityHelp,
     SYSDT_CommunityCompare, nullptr, SYSDT_CommunityLuaSet, SYSDT_CommunityLuaGet, SYSDT_CommunityEndian},
    {321, 16, kStructured, "LARGECOMMUNITY",
     SYSDT_LargeCommunityFormatIn, SYSDT_LargeCommunityFormatOut, SYSDT_LargeCommunityCheck, SYSDT_LargeCommunityHelp,
     SYSDT_LargeCommunityCompare, nullptr, SYSDT_LargeCommunityLuaSet, SYSDT_LargeCommunityLuaGet, SYSDT_LargeCommunityEndian},
    {257, 12, kStructured, "EXTCOMMUNITY",
     SYSDT_ExtCommunityFormatIn, SYSDT_ExtCommunityFormatOut, SYSDT_ExtCommunityCheck, SYSDT_ExtCommunityHelp,
     SYSDT_ExtCommunityCompare, nullptr, SYSDT_ExtCommunityLuaSet, SYSDT_ExtCommunityLuaGet, SYSDT_EXTCommunityEndian},
    {1299, 228, kStructured, "BGPLSPREFIX",
     SYSDT_LSPrefixFormatIn, SYSDT_LSPrefixFormatOut, SYSDT_LSPrefixCheck, SYSDT_LSPrefixHelp,
     SYSDT_LSPrefixCompare, nullptr, SYSDT_LSPrefixLuaSet, SYSDT_LSPrefixLuaGet, SYSDT_LSPrefixEndian},
    {258, 12, kStructured, "VRFRT",
     SYSDT_VrfRtFormatIn, SYSDT_VrfRtFormatOut, SYSDT_VrfRtCheck, SYSDT_VrfRtHelp,
     SYSDT_VrfRtCompare, nullptr, SYSDT_VrfRtLuaSet, SYSDT_VrfRtLuaGet, SYSDT_VrfRtEndian},
    {259, 12, kStructured, "VRFRD",
     SYSDT_VrfRdFormatIn, SYSDT_VrfRdFormatOut, SYSDT_VrfRdCheck, SYSDT_VrfRdHelp,
     SYSDT_VrfRdCompare, nullptr, SYSDT_VrfRdLuaSet, SYSDT_VrfRdLuaGet, SYSDT_VrfRdEndian},
    {260, 12, kStructured, "SOO",
     SYSDT_SooFormatIn, SYSDT_SooFormatOut, SYSDT_SooCheck, SYSDT_SooHelp,
     SYSDT_SooCompare, nullptr, SYSDT_SooLuaSet, SYSDT_SooLuaGet, SYSDT_SooEndian},
    {279, 89, kStructured, "BOLPREFIX",
     SYSDT_BolPrefixFormatIn, SYSDT_BolPrefixFormatOut, SYSDT_BolPrefixCheck, SYSDT_BolPrefixHelp,
     SYSDT_BolPrefixCompare, nullptr, SYSDT_BolPrefixLuaSet, SYSDT_BolPrefixLuaGet, nullptr},
    {280, 16, kStructured, "BOLRD",
     SYSDT_BolRdFormatIn, SYSDT_BolRdFormatOut, SYSDT_BolRdCheck, SYSDT_BolRdHelp,
     SYSDT_BolRdCompare, nullptr, SYSDT_BolRdLuaSet, SYSDT_BolRdLuaGet, nullptr},
    {295, 8, kStructured, "VPNV4MCPREFIX",
     SYSDT_VPNV4MCASTPrefixFormatIn, SYSDT_VPNV4MCASTPrefixFormatOut, SYSDT_VPNV4MCASTPrefixCheck,
     SYSDT_VPNV4MCASTPrefixHelp,
     SYSDT_VPNV4MCASTPrefixCompare, nullptr, SYSDT_VPNV4MCASTPrefixLuaSet, SYSDT_VPNV4MCASTPrefixLuaGet,
     SYSDT_VPNV4MCASTLuaEndian},
    {296, 12, kStructured, "MDTPREFIX",
     SYSDT_MdtPrefixFormatIn, SYSDT_MdtPrefixFormatOut, SYSDT_MdtPrefixCheck, SYSDT_MdtPrefixHelp,
     SYSDT_MdtPrefixCompare, nullptr, SYSDT_MdtPrefixLuaSet, SYSDT_MdtPrefixLuaGet, SYSDT_MdtLuaEndian},
    {294, 4, kStructured, "L2VPNPREFIX",
     SYSDT_L2VPNPrefixFormatIn, SYSDT_L2VPNPrefixFormatOut, SYSDT_VplsAdPrefixCheck, SYSDT_VplsAdPrefixHelp,
     SYSDT_VplsAdPrefixCompare, nullptr, SYSDT_L2VPNPrefixLuaSet, SYSDT_L2VPNPrefixLuaGet, nullptr},
    {284, 4, kNumber, "TIME_RANGE",
     SYSDT_TimeRangeFormatIn, nullptr, nullptr, SYSDT_TimeRangeHelp,
     nullptr, nullptr, SYSDT_TimeRangeLuaSet, SYSDT_TimeRangeLuaGet, nullptr},
    {285, 8, kStructured, "ASNUMEXT",
     SYSDT_AsNumExtFormatIn, SYSDT_AsNumExtFormatOut, SYSDT_AsNumExtCheck, SYSDT_AsNumHelp,
     SYSDT_Uint32Compare, nullptr, SYSDT_AsNumLuaSet, SYSDT_AsNumLuaGet, SYSDT_AsNumLuaEndian},
    {290, 32, kStructured, "ATTRIDBITMAP",
     nullptr, SYSDT_AttrIdBitmapFormatOut, SYSDT_AttrIdBitmapCheck, SYSDT_AttrIdBitmapHelp,
     SYSDT_AttrIdBitmapCompare, nullptr, SYSDT_AttrIdBitmapLuaSet, SYSDT_AttrIdBitmapLuaGet, SYSDT_AttrIdBitmapEndian},
    {292, 32, kText, "CVRFNAME",
     SYSDT_StringFormatIn, SYS_DT_APPCVRFNAME_FormatOut, nullptr, SYSDT_StringHelp,
     SYSDT_StringCompare, nullptr, SYSDT_StringLuaSet, SYSDT_StringLuaGet, nullptr},
    {303, 8, kStructured, "VPNID",
     SYSDT_VpnIdFormatIn, SYSDT_VpnIdFormatOut, SYSDT_VpnIdCheck, SYSDT_VpnIdHelp,
     SYSDT_VpnIdCompare, nullptr, SYSDT_VpnIdLuaSet, SYSDT_VpnIdLuaGet, SYSDT_VpnIdEndian},
    {320, 24, kStructured, "VRFRTV6",
     SYSDT_VrfRtV6FormatIn, SYSDT_VrfRtV6FormatOut, SYSDT_VrfRtV6Check, SYSDT_VrfRtV6Help,
     SYSDT_VrfRtV6Compare, nullptr, SYSDT_VrfRtV6LuaSet, SYSDT_VrfRtV6LuaGet, SYSDT_VrfRtV6Endian},
    {325, 1280, kStructured, "ASNUM_ENHANCE",
     SYSDT_AsNumEnhanceFormatIn, SYSDT_AsNumEnhanceFormatOut, SYSDT_AsNumEnhanceCheck, SYSDT_AsNumEnhanceHelp,
     SYSDT_BlockCompare, nullptr, SYSDT_AsNumEnLuaSet, SYSDT_AsNumEnLuaGet, SYSDT_AsNumEnhanceLuaEndian},
    {326, 160, kStructured, "CMNTY_ENHANCE",
     SYSDT_CMNTYEnhanceFormatIn, SYSDT_CMNTYEnhanceFormatOut, SYSDT_CMNTYEnhanceCheck, SYSDT_CMNTYEnhanceHelp,
     SYSDT_BlockCompare, nullptr, SYSDT_CmntyEnLuaSet, SYSDT_CmntyEnLuaGet, SYSDT_CmntyEnhanceLuaEndian},
    {278, 10, kStructured, "RTPRD",
     SYSDT_RtpRdFormatIn, SYSDT_RtpRdFormatOut, SYSDT_RtpRdCheck, SYSDT_RtpRdHelp,
     SYSDT_RtpRdCompare, nullptr, SYSDT_RtpRdLuaSet, SYSDT_RtpRdLuaGet, nullptr},
    {328, 7, kStructured, "SID_STRUCTURE",
     nullptr, SYSDT_PrefixSidStructureFormatOut, nullptr, nullptr,
     nullptr, nullptr, SYSDT_PrefixSidStructureLuaSet, nullptr, nullptr},
    {281, 85, kStructured, "EVNPREFIX",
     SYSDT_EVNPrefixFormatIn, SYSDT_EVNPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, nullptr, SYSDT_EVNPrefixLuaSet, SYSDT_EVNPrefixLuaGet, nullptr},
    {329, 12, kStructured, "EXTCOMMUNITY_BW",
     nullptr, SYSDT_ExtCommunityBwFormatOut, SYSDT_ExtCommunityBwCheck, SYSDT_ExtCommunityBwHelp,
     SYSDT_ExtCommunityBwCompare, nullptr, SYSDT_ExtCommunityBwLuaSet, SYSDT_ExtCommunityBwLuaGet, SYSDT_EXTCommunityBwEndian},
    {1300, 8, kStructured, "EXTCMNTY_COMPR",
     SYSDT_ExtCommunityComprFormatIn, SYSDT_ExtCommunityComprFormatOut, SYSDT_ExtCommunityComprCheck, SYSDT_ExtCommunityComprHelp,
     SYSDT_ExtCommunityCompare, nullptr, SYSDT_ExtCommunityComprLuaSet, SYSDT_ExtCommunityComprLuaGet, SYSDT_EXTCommunityComprEndian},
};
// clang-format on

namespace {

struct Walk {
    const DataTypeDescriptor *rows;
    uint32_t count;
    const char *report; // what a refused row is reported with
    uint32_t line;      // under which line; fixed numbers that log analysis knows
};

constexpr Walk kNameIndexWalk{g_astBgpDataTypeNameIndexDefineTbl, BGP_NAME_INDEX_ROWS, "RegisterDataType Ret:%u", 202};
constexpr Walk kExtendWalk{g_astBgpDataTypeExtendDefineTbl, std::size(g_astBgpDataTypeExtendDefineTbl),
                           "RegisterDataTypeExt Ret:%u", 215};

// A refused row is reported once and stops nothing.
uint32_t Register(const Walk &walk, uint32_t handle)
{
    uint32_t answer = DT_OK;
    for (uint32_t i = 0; i < walk.count; ++i) {
        answer = SYS_Drm_RegisterDataType(handle, &walk.rows[i]);
        if (answer != DT_OK) {
            char message[128] = {};
            sprintf_s(message, sizeof message, walk.report, answer);
            ZOL_Assert("zol_datatype_func_bgp_init", walk.line, message);
        }
    }
    return answer;
}

} // namespace

uint32_t BGP_RegisterDataType(uint32_t handle)
{
    return Register(kNameIndexWalk, handle);
}

uint32_t BGP_RegisterExtendDataType(uint32_t handle)
{
    return Register(kExtendWalk, handle);
}

uint32_t Bgp_InitDataType(uint32_t handle)
{
    BGP_RegisterDataType(handle);
    BGP_RegisterExtendDataType(handle);
    return DT_OK;
}

namespace {

// clang-format off
// The types in the order of their rows.
constexpr const bgp::Type *kTypes[] = {
    &bgp::kNameIndexTypes[0],
    &bgp::kNameIndexTypes[1],
    &bgp::kNameIndexTypes[2],
    &bgp::kNameIndexTypes[3],
    &bgp::kNameIndexTypes[4],
    &bgp::kNameIndexTypes[5],
    &bgp::kNameIndexTypes[6],
    &bgp::kNameIndexTypes[7],
    &bgp::kNameIndexTypes[8],
    &bgp::kAsNum,
    &bgp::kCommunity,
    &bgp::kLargeCommunity,
    &bgp::kExtCommunity,
    &bgp::kBgpLsPrefix,
    &bgp::kVrfRt,
    &bgp::kVrfRd,
    &bgp::kSoo,
    &bgp::kBolPrefix,
    &bgp::kBolRd,
    &bgp::kVpnv4McPrefix,
    &bgp::kMdtPrefix,
    &bgp::kL2vpnPrefix,
    &bgp::kTimeRange,
    &bgp::kAsNumExt,
    &bgp::kAttrIdBitmap,
    &bgp::kCvrfName,
    &bgp::kVpnId,
    &bgp::kVrfRtV6,
    &bgp::kAsNumList,
    &bgp::kCommunityList,
    &bgp::kRtpRd,
    &bgp::kSidStructure,
    &bgp::kEvnPrefix,
    &bgp::kExtCommunityBw,
    &bgp::kExtCommunityCompr,
};
// clang-format on
static_assert(std::size(kTypes) == kNameIndexWalk.count + kExtendWalk.count);

const bgp::Type *FindType(uint32_t typeId)
{
    for (const bgp::Type *type : kTypes) {
        if (type->facts.TypeId == typeId) {
            return type;
        }
    }
    return nullptr;
}

} // namespace

const BgpTypeFacts *Bgp_DescribeType(uint32_t typeId)
{
    const bgp::Type *type = FindType(typeId);
    return type != nullptr ? &type->facts : nullptr;
}

const BgpTypeFacts *Bgp_TypeAt(uint32_t index)
{
    return index < std::size(kTypes) ? &kTypes[index]->facts : nullptr;
}

const BgpTypeFacts *Bgp_DescribeSubType(uint32_t typeId, uint32_t subType)
{
    const bgp::Type *type = FindType(typeId);
    return type != nullptr && subType < type->subTypeCount ? &type->subTypes[subType]->facts : nullptr;
}

const BgpLayout *Bgp_DescribeValue(uint32_t typeId, const void *value, uint32_t length)
{
    const bgp::Type *type = FindType(typeId);
    if (type == nullptr) {
        return nullptr;
    }
    return type->describe != nullptr ? type->describe(value, length) : type->facts.Layout;
}

uint32_t Bgp_ExplainRefusal(const DataTypeRequest *request, uint32_t typeId, const char *text, BgpRefusal *refusal)
{
    if (refusal == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    *refusal = {};
    const bgp::Type *type = FindType(typeId);
    if (request == nullptr || text == nullptr || type == nullptr) {
        refusal->Reason.Code = type == nullptr ? DT_ERR_TYPE_MISMATCH : DT_ERR_NULL_PTR;
        return refusal->Reason.Code;
    }
    return bgp::Explain(*type, *request, text, *refusal);
}
