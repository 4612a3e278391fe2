// The functions that the plug-in exports beside the operations. A row tells what a function takes, a character an
// argument:
//
//     t  a text                       v  memory of kRoom bytes for a value
//     c  a pointer to a cursor in one V  a value, P the same from byte 4 on, behind its first word
//     k  a length within the text     E  a value that is changed in place
//     x  one character                W  the value's next word
//     n  a u32, zero beforehand       b  memory of kTextRoom bytes for a text
//     N  a u64, zero beforehand       o  a slot for a buffer, empty or holding one
//     i  a number from 0 to 3         q  a request
//     w  a number, often a limit      m  the memory handle
//     l  a number from 1 to 769       L  a Lua stack with a subject's table on top, I the table's index behind it
//     0  a null pointer               S  a Lua stack with an item on top
//     R  the rows of kKeywords, C their number, g the text that their handler fills
//
// "?" behind an argument: it may also be null. "-" in front: the function returns nothing.
#include "fuzz/compare/calls.h"

namespace bgp::compare {

const std::vector<Helper> kHelpers = {
    // text and addresses
    {"SYSDT_atoul", "t?n?", "ASNUM"},
    {"SYSDT_getStrDotNum", "t", "IPV4"},
    {"BGP_DATATYPE_IsHex", "x", ""},
    {"SYSDT_Ipv6AddrNtoH", "-Pv", "SRPOLICY"},
    {"SYSDT_ipv6AddrUnSpecified", "P", "IPV6"},
    {"SYSDT_IsIpv6MultiCastAddr", "t", "IPV6"},
    {"SYSDT_Str2IPv4IPv6", "tv", "IPV6"},
    {"SYSDT_Str2SysIpv4Ipv6", "tiv", "IPV6"},
    {"SYSDT_Str2Ipv4Ipv6", "tvv", "IPV6"},
    {"SYS_DT_CVrfName_Str2Cplx", "V?nb", "CVRFNAME"},
    {"SYSDT_Str2TimeRange", "tv", "TIME_RANGE"},
    // AS numbers
    {"SYSDT_Str2AsNum", "t?v?", "ASNUM"},
    {"SYSDT_Str2AsNumExt", "t?v?", "ASNUMEXT"},
    {"SYSDT_Str2AsNumSetAsType", "itnNv", "ASNUM"},
    {"SYSDT_Str2AsNumToAsType", "itnNv", "ASNUMEXT"},
    {"SYSDT_Str2AsNumEnhance", "t?v?", "ASNUM_ENHANCE"},
    // communities
    {"SYSDT_Str2Community", "mt?v?", "COMMUNITY"},
    {"BRM_GetWellKnownCmyVal", "mknt", "COMMUNITY"},
    {"SYSDT_FormatNoWellKnowCmy", "nboV", "COMMUNITY"},
    {"SYSDT_Str2CmntyEnhance", "mt?v?", "CMNTY_ENHANCE"},
    {"SYSDT_Str2LargeCommunity", "t?v?", "LARGECOMMUNITY"},
    {"SYSDT_Str2ExtCommunityCompr", "t?v?", "EXTCMNTY_COMPR"},
    {"SYSDT_Str2ExtCommunity", "t?v?", "EXTCOMMUNITY"},
    {"SYSDT_Str2Soo", "t?v?", "SOO"},
    // route distinguishers, route targets, VPN ids
    {"SYSDT_Str2VrfRd", "t?v?", "VRFRD"},
    {"SYSDT_VrfRd2Str", "WWWnb", "VRFRD"},
    {"SYSDT_VrfRdFormatOutEx", "q?V?n?n?o?", "VRFRD"},
    {"SYSDT_IsInValidRdOrRt", "V", "VRFRD"},
    {"SYSDT_Str2VrfRt", "t?v?", "VRFRT"},
    {"SYSDT_Str2VrfRtV6", "t?v?", "VRFRTV6"},
    {"SYSDT_VrfRtV6FormatOutGetMem", "-oml", "VRFRTV6"},
    {"SYSDT_Str2RtpRd", "t?v?", "RTPRD"},
    {"SYSDT_Str2VpnId", "t?v?", "VPNID"},
    {"SYSDT_VpnId2Str", "WWnb", "VPNID"},
    {"SYSDT_PrefixSidStruct2Str", "Vbn", "SID_STRUCTURE"},
    {"SYSDT_Str2VrfRtExt", "t?v?", "VRFRTEXT"},
    {"SYSDT_CheckVrfRtExtStr", "tnnn", "VRFRTEXT"},
    {"SYSDT_Str2IpAddressRT", "tv", "VRFRTEXT"},
    {"SYSDT_Str2TwoOctecAsRT", "tv", "VRFRTEXT"},
    {"SYSDT_Str2FourOctecAsRT", "tv", "VRFRTEXT"},
    {"SYSDT_Str2EvpnOctecAsRT", "tv", "VRFRTEXT"},
    {"SYSDT_VrfRtExtFormatOutStr", "qbV", "VRFRTEXT"},
    {"SYSDT_VrfRtExtFormatOutRtStr", "bV", "VRFRTEXT"},
    {"SYSDT_VrfRtExtFormatOutRtStrNCF", "bV", "VRFRTEXT"},
    {"SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr", "bV", "VRFRTEXT"},
    {"SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF", "bV", "VRFRTEXT"},
    // route keys
    {"SYSDT_BolPrefixLuaParseToIPv4IPv6", "Siv?", ""},
    {"SYSDT_Ipv6Prefix2Str", "Vbn", "IPV6"},
    {"SYSDT_Str2NGPrefix", "t?v?", "NG_TYPE_3"},
    {"SYSDT_NGPrefix2Str", "Vbn", "NG_TYPE_3"},
    {"SYSDT_L2VPNPrefixFormatOutEx", "qlVnno", "L2VPN"},
    {"SYSDT_L2VPNPrefix2Str", "Pbn", "L2VPN"},
    {"SYSDT_RpdPrefixEndian", "VilE", "RPD"},
    {"SYSDT_Str2Vpnv4McastPrefix", "t?v?", "VPNV4MCPREFIX"},
    {"SYSDT_Str2MdtPrefix", "t?v?", "MDTPREFIX"},
    {"SYSDT_Str2RpdPrefix", "t?v?", "RPD"},
    {"SYSDT_Vpnv4McastPrefix2Str", "Pbn", "VPNV4MCPREFIX"},
    {"SYSDT_MdtPrefix2Str", "Pbn", "MDTPREFIX"},
    {"SYSDT_RpdPrefix2Str", "Pbn", "RPD"},
    {"SYSDT_SrPolicyPrefixLuaGet", "LIv", "SRPOLICY"},
    {"SYSDT_SdwanPrefixLuaGet", "LIv", "SD-WAN"},
    {"SYSDT_SrPolicyPrefixEndian", "VilE", "SRPOLICY"},
    {"SYSDT_SdwanPrefixEndian", "VilE", "SD-WAN"},
    {"SYSDT_Str2SrPolicyPrefix", "t?v?", "SRPOLICY"},
    {"SYSDT_Str2Srv4PolicyPrefix", "t?v?", "SRPOLICY"},
    {"SYSDT_Str2Srv6PolicyPrefix", "t?v?", "SRPOLICY"},
    {"SYSDT_SrPolicyPrefix2Str", "Pbn", "SRPOLICY"},
    {"SYSDT_Srv4PolicyPrefix2Str", "Pbn", "SRPOLICY"},
    {"SYSDT_Srv6PolicyPrefix2Str", "Pbn", "SRPOLICY"},
    {"SYSDT_Str2SdwanPrefix", "t?v?", "SD-WAN"},
    {"SYSDT_Str2SdwanV4Prefix", "t?v?", "SD-WAN"},
    {"SYSDT_Str2SdwanV6Prefix", "t?v?", "SD-WAN"},
    {"SYSDT_SdwanPrefix2Str", "Pbn", "SD-WAN"},
    {"SYSDT_SdwanV4Prefix2Str", "Pbn", "SD-WAN"},
    {"SYSDT_SdwanV6Prefix2Str", "Pbn", "SD-WAN"},
    // EVPN
    {"SYSDT_Str2EvnPrefix", "t?v?i", "EVNPREFIX"},
    {"SYSDT_EvnPrefix2Str", "Vbn", "EVNPREFIX"},
    {"SYSDT_Str2Ad", "tvi", "EVNPREFIX"},
    {"SYSDT_Str2EvnMac", "tv", "EVNPREFIX"},
    {"SYSDT_Str2Inclusive", "tv", "EVNPREFIX"},
    {"SYSDT_Str2Es", "tvi", "EVNPREFIX"},
    {"SYSDT_Str2IpPrefix", "tv", "EVNPREFIX"},
    {"SYSDT_Str2Ipv6Prefix", "tv", "EVNPREFIX"},
    {"SYSDT_Str2EvpnSmetRoute", "tv", "EVNPREFIX"},
    {"SYSDT_Str2EvpnJoinRoute", "tv", "EVNPREFIX"},
    {"SYSDT_Str2EvpnLeaveRoute", "tv", "EVNPREFIX"},
    {"SYSDT_Str2EvpnMcRoute", "tv", "EVNPREFIX"},
    {"SYSDT_Str2EvpnIpv6", "tvv", "EVNPREFIX"},
    {"SYSDT_Str2EvpnUintNum", "cnwwwi", "EVNPREFIX"},
    {"SYSDT_Str2EvpnIpAddr", "cvi", "EVNPREFIX"},
    {"SYSDT_Str2EvpnEsi", "cvi", "EVNPREFIX"},
    {"SYSDT_Str2EsiBas", "tvii", "EVNPREFIX"},
    {"SYSDT_Str2EsiForAd", "tvii", "EVNPREFIX"},
    {"SYSDT_EVPN_SmetCompare", "PP", "EVNPREFIX"},
    {"SYSDT_EVPN_JoinCompare", "PP", "EVNPREFIX"},
    {"SYSDT_EVPN_LeaveCompare", "PP", "EVNPREFIX"},
    // BGP-LS
    {"SYSDT_Str2LSPrefix", "t?v?", "BGPLSPREFIX"},
    {"SYSDT_ParseLsPrefixStr", "tRCg0", "BGPLSPREFIX"},
    {"SYSDT_LsPrefix2Str", "Vbn", "BGPLSPREFIX"},
    {"SYSDT_LS_NodeKeyToStr", "Vbln", "BGPLSPREFIX"},
    {"SYSDT_LS_LinkKeyToStr", "Vbln", "BGPLSPREFIX"},
    {"SYSDT_LS_Ipv4PrefixKeyToStr", "Vbln", "BGPLSPREFIX"},
    {"SYSDT_LS_Ipv6PrefixKeyToStr", "Vbln", "BGPLSPREFIX"},
    {"SYSDT_LS_TePolicyKeyToStr", "Vbln", "BGPLSPREFIX"},
    {"SYSDT_LS_Srv6SidKeyToStr", "Vbln", "BGPLSPREFIX"},
    {"SYSDT_LS_RouteTypeEnum2Str", "wb", ""},
    {"SYSDT_LS_ProtclTypeEnum2Str", "wb", ""},
};

} // namespace bgp::compare
