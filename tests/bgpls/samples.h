// One key of each kind in all its forms: as typed, as stored (host and network order), as printed, as a Lua table.
#ifndef BGP_TESTS_BGPLS_SAMPLES_H
#define BGP_TESTS_BGPLS_SAMPLES_H

#include "bgp_host_services.h"
#include "support/harness.h"

#include <string>
#include <vector>

namespace bgp::test {

inline constexpr const char *kBgpLs = "BGPLSPREFIX";

// 228 bytes, zero behind the given ones.
inline std::string Record(const std::string &hex)
{
    return Padded(hex, 228);
}

// An IGP router-id area: 50 bytes, zero behind the given ones.
inline std::string Igp(const std::string &hex)
{
    return Padded(hex, 50);
}

// A record (raw bytes) through Lua into a zeroed one: what does not hold, "" when it comes back whole.
inline std::string LuaProblem(const std::string &record)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    lua_State *const L = host::NewLua();
    SYSDT_SPTI_CreateTable(L, 0, 1);
    std::string back(228, '\0');
    const uint32_t set = row.LuaSet(L, 1, "v", 1299, 228, record.data());
    const uint32_t get = row.LuaGet(L, 1, "v", 1299, 228, back.data());
    const int32_t top = SYSDT_SPTI_GetTop(L);
    host::CloseLua(L);
    if (set != 0 || get != 0 || top != 1) {
        return "Lua: " + std::to_string(set) + ' ' + std::to_string(get) + ' ' + std::to_string(top);
    }
    return back == record ? "" : "Lua: wanted " + Hex(record) + ", got " + Hex(back);
}

struct Sample {
    const char *name;
    std::string text;
    std::string host;
    std::string network;
    std::string printed;
    std::string lua;
};

inline Sample NodeSample()
{
    return {"NODE",
            "[NODE][ISIS-LEVEL-2][IDENTIFIER84281096][LOCAL[as65536][bgp-ls-identifier1.2.3.4][ospf-area-id5.6.7.8]"
            "[igp-router-id4142.4344.4546.47]]",
            Record("01000000 02000000 0807060500000000 0000010000000000 04030201 08070605" + Igp("41424344454647") +
                   "01000000"),
            Record("00000001 00000002 0000000005060708 0001000000000000 01020304 05060708" + Igp("41424344454647") +
                   "00000001"),
            "[NODE][ISIS-LEVEL-2][IDENTIFIER84281096][LOCAL[as65536][bgp-ls-identifier1.2.3.4][ospf-area-id5.6.7.8]"
            "[igp-router-idABCDEFG]]",
            "{existFlag=1, stLocIgpRtId=\"ABCDEFG\\x00\", stLocalAs={asNumValue=65536, asType=0}, "
            "stLocalBgpLsId=16909060, uiIdentifier={hUint32=0, lUint32=84281096}, uiLocIgpRtIdLen=8, "
            "uiLocOspfAreaId=84281096, uiProtocolId=2, uiRouteType=1}"};
}

// Every field of the layout but the local BGP router id, which OSPF refuses.
inline Sample LinkIdSample()
{
    return {"LINK by link ids",
            "[LINK][OSPFv3][IDENTIFIER4294967295][LOCAL[as1.2][bgp-ls-identifier9.10.11.12][ospf-area-id13.14.15.16]"
            "[igp-router-id65.66.67.68/69.70.71.72][member-as65001]][REMOTE[as4294967295]"
            "[bgp-ls-identifier17.18.19.20][bgp-router-id21.22.23.24][ospf-area-id25.26.27.28]"
            "[igp-router-id97.98.99.100][member-as2.3]][LINK[link-local-id29.30.31.32][link-remote-id33.34.35.36]"
            "[if-address37.38.39.40][peer-address41.42.43.44][if-address2001:db8::1][peer-address2001:db8::2]"
            "[mt-id4095]]",
            Record("02000000 06000000 ffffffff00000000 0200010001000000 0c0b0a09 e9fd000000000000 100f0e0d" +
                   Igp("4142434445464748") + "ffffffff00000000 14131211 0300020001000000 1c1b1a19" + Igp("61626364") +
                   "201f1e1d 24232221 28272625 2c2b2a29 20010db8000000000000000000000001"
                   "20010db8000000000000000000000002 ff0f0000 00000000 18171615 03000000"),
            Record("00000002 00000006 00000000ffffffff 0001000200000001 090a0b0c 0000fde900000000 0d0e0f10" +
                   Igp("4142434445464748") + "ffffffff00000000 11121314 0002000300000001 191a1b1c" + Igp("61626364") +
                   "1d1e1f20 21222324 25262728 292a2b2c 20010db8000000000000000000000001"
                   "20010db8000000000000000000000002 00000fff 00000000 15161718 00000003"),
            "[LINK][OSPFv3][IDENTIFIER4294967295][LOCAL[as1.2][bgp-ls-identifier9.10.11.12][ospf-area-id13.14.15.16]"
            "[igp-router-idABCDEFGH]][REMOTE[as4294967295][bgp-ls-identifier17.18.19.20][ospf-area-id25.26.27.28]"
            "[igp-router-idabcd]][LINK[link-local-id29.30.31.32][link-remote-id33.34.35.36][mt-id4095]]",
            "{existFlag=3, localMemberAs={asNumValue=65001, asType=0}, remoteMemberAs={asNumValue=131075, asType=1}, "
            "stIpv4IntfAddr=623257384, stIpv4PeerAddr=690629420, "
            "stIpv6IntfAddr={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}, "
            "stIpv6PeerAddr={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,2}, stLocIgpRtId=\"ABCDEFGH\", "
            "stLocalAs={asNumValue=65538, asType=1}, stLocalBgpLsId=151653132, "
            "stRemIgpRtId=\"abcd\\x00\\x00\\x00\\x00\", stRemoteAs={asNumValue=4294967295, asType=0}, "
            "stRemoteBgpLsId=286397204, uiIdentifier={hUint32=0, lUint32=4294967295}, uiLinkLocId=488513312, "
            "uiLinkRemId=555885348, uiLocIgpRtIdLen=8, uiLocOspfAreaId=219025168, uiLocalBgpRtId=0, uiMtId=4095, "
            "uiProtocolId=6, uiRemOspfAreaId=421141276, uiRemoteBgpRtId=353769240, uiRmtIgpRtIdLen=4, uiRouteType=2}"};
}

inline Sample LinkBgpSample()
{
    const std::string text = "[LINK][BGP][IDENTIFIER7][LOCAL[as100][bgp-router-id1.2.3.4][member-as65010]]"
                             "[REMOTE[as200][bgp-ls-identifier5.6.7.8][bgp-router-id9.10.11.12][member-as1.1]]"
                             "[LINK[identifier13.14.15.16.17.18.19.20][local2001:db8::a][remote2001:db8::b]]";
    return {"LINK of BGP",
            text,
            Record("02000000 07000000 0700000000000000 6400000000000000 00000000 f2fd000000000000 00000000" + Igp("") +
                   "c800000000000000 08070605 0100010001000000 00000000" + Igp("") +
                   "100f0e0d 14131211 00000000 00000000 20010db800000000000000000000000a"
                   "20010db800000000000000000000000b 00000000 04030201 0c0b0a09 02000000"),
            Record("00000002 00000007 0000000000000007 0000006400000000 00000000 0000fdf200000000 00000000" + Igp("") +
                   "000000c800000000 05060708 0001000100000001 00000000" + Igp("") +
                   "0d0e0f10 11121314 00000000 00000000 20010db800000000000000000000000a"
                   "20010db800000000000000000000000b 00000000 01020304 090a0b0c 00000002"),
            text,
            "{existFlag=2, localMemberAs={asNumValue=65010, asType=0}, remoteMemberAs={asNumValue=65537, asType=1}, "
            "stIpv4IntfAddr=0, stIpv4PeerAddr=0, stIpv6IntfAddr={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,10}, "
            "stIpv6PeerAddr={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,11}, "
            "stLocIgpRtId=\"\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\", stLocalAs={asNumValue=100, asType=0}, "
            "stLocalBgpLsId=0, stRemIgpRtId=\"\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\", "
            "stRemoteAs={asNumValue=200, asType=0}, stRemoteBgpLsId=84281096, uiIdentifier={hUint32=0, lUint32=7}, "
            "uiLinkLocId=219025168, uiLinkRemId=286397204, uiLocIgpRtIdLen=4, uiLocOspfAreaId=0, "
            "uiLocalBgpRtId=16909060, uiMtId=0, uiProtocolId=7, uiRemOspfAreaId=0, uiRemoteBgpRtId=151653132, "
            "uiRmtIgpRtIdLen=4, uiRouteType=2}"};
}

inline Sample LinkAddressSample()
{
    return {
        "LINK by addresses",
        "[LINK][ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0][igp-router-id4142.4344.4546.47]]"
        "[REMOTE[as100][igp-router-id6162.6364.6566.67]][LINK[local10.1.1.1][remote10.1.1.2]]",
        Record("02000000 01000000 0000000000000000 6400000000000000 00000000 0000000000000000 00000000" +
               Igp("41424344454647") + "6400000000000000 00000000 0000000000000000 00000000" + Igp("61626364656667") +
               "00000000 00000000 0101010a 0201010a 00000000000000000000000000000000"
               "00000000000000000000000000000000 ffffffff 00000000 00000000 00000000"),
        Record("00000002 00000001 0000000000000000 0000006400000000 00000000 0000000000000000 00000000" +
               Igp("41424344454647") + "0000006400000000 00000000 0000000000000000 00000000" + Igp("61626364656667") +
               "00000000 00000000 0a010101 0a010102 00000000000000000000000000000000"
               "00000000000000000000000000000000 ffffffff 00000000 00000000 00000000"),
        "[LINK][ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0][igp-router-idABCDEFG]]"
        "[REMOTE[as100][ospf-area-id0.0.0.0][igp-router-idabcdefg]]"
        "[LINK[if-address10.1.1.1][peer-address10.1.1.2][if-address::][peer-address::]]",
        "{existFlag=0, localMemberAs={asNumValue=0, asType=0}, remoteMemberAs={asNumValue=0, asType=0}, "
        "stIpv4IntfAddr=167837953, stIpv4PeerAddr=167837954, stIpv6IntfAddr={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}, "
        "stIpv6PeerAddr={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}, stLocIgpRtId=\"ABCDEFG\\x00\", "
        "stLocalAs={asNumValue=100, asType=0}, stLocalBgpLsId=0, stRemIgpRtId=\"abcdefg\\x00\", "
        "stRemoteAs={asNumValue=100, asType=0}, stRemoteBgpLsId=0, uiIdentifier={hUint32=0, lUint32=0}, "
        "uiLinkLocId=0, uiLinkRemId=0, uiLocIgpRtIdLen=8, uiLocOspfAreaId=0, uiLocalBgpRtId=0, "
        "uiMtId=4294967295, uiProtocolId=1, uiRemOspfAreaId=0, uiRemoteBgpRtId=0, uiRmtIgpRtIdLen=8, "
        "uiRouteType=2}"};
}

inline Sample Ipv4PrefixSample()
{
    return {"IPV4-PREFIX",
            "[IPV4-PREFIX][OSPFv2][IDENTIFIER0][LOCAL[as100][ospf-area-id1.2.3.4][igp-router-id65.66.67.68]]"
            "[PREFIX[ospf-route-type1][prefix10.0.0.0/8]]",
            Record("03000000 03000000 0000000000000000 6400000000000000 00000000 04030201" + Igp("41424344") +
                   "ffffffff 01000000 0000000a 08 00000000"),
            Record("00000003 00000003 0000000000000000 0000006400000000 00000000 01020304" + Igp("41424344") +
                   "ffffffff 00000001 0a000000 08 00000000"),
            "[IPV4-PREFIX][OSPFv2][IDENTIFIER0][LOCAL[as100][ospf-area-id1.2.3.4][igp-router-idABCD]]"
            "[PREFIX[ospf-route-type1][prefix10.0.0.0/8]]",
            "{Prefix={stIpv4Prefix=167772160, uiPrefixLen=8}, existFlag=0, "
            "stLocIgpRtId=\"ABCD\\x00\\x00\\x00\\x00\", stLocalAs={asNumValue=100, asType=0}, stLocalBgpLsId=0, "
            "uiIdentifier={hUint32=0, lUint32=0}, uiLocIgpRtIdLen=4, uiLocOspfAreaId=16909060, uiMtId=4294967295, "
            "uiOspfRtType=1, uiProtocolId=3, uiRouteType=3}"};
}

inline Sample Ipv6PrefixSample()
{
    return {"IPV6-PREFIX",
            "[IPV6-PREFIX][ISIS-LEVEL-2][IDENTIFIER1][LOCAL[as100][bgp-ls-identifier1.2.3.4]"
            "[igp-router-id4142.4344.4546.47]][PREFIX[mt-id2][ospf-route-type3][prefix2001:db8:1::/48]]",
            Record("04000000 02000000 0100000000000000 6400000000000000 04030201 00000000" + Igp("41424344454647") +
                   "02000000 03000000 20010db8000100000000000000000000 30 01000000"),
            Record("00000004 00000002 0000000000000001 0000006400000000 01020304 00000000" + Igp("41424344454647") +
                   "00000002 00000003 20010db8000100000000000000000000 30 00000001"),
            "[IPV6-PREFIX][ISIS-LEVEL-2][IDENTIFIER1][LOCAL[as100][bgp-ls-identifier1.2.3.4][ospf-area-id0.0.0.0]"
            "[igp-router-idABCDEFG]][PREFIX[mt-id2][ospf-route-type3][prefix2001:db8:1::/48]]",
            "{Prefix={stIpv6Prefix={32,1,13,184,0,1,0,0,0,0,0,0,0,0,0,0}, uiPrefixLen=48}, existFlag=1, "
            "stLocIgpRtId=\"ABCDEFG\\x00\", stLocalAs={asNumValue=100, asType=0}, stLocalBgpLsId=16909060, "
            "uiIdentifier={hUint32=0, lUint32=1}, uiLocIgpRtIdLen=8, uiLocOspfAreaId=0, uiMtId=2, uiOspfRtType=3, "
            "uiProtocolId=2, uiRouteType=4}"};
}

inline Sample TePolicySample()
{
    const std::string text =
        "[TEPOLICY][SEGMENT-ROUTING][IDENTIFIER9][LOCAL[as100][bgp-ls-identifier1.2.3.4][bgp-router-id5.6.7.8]"
        "[ipv4-router-id9.10.11.12][ipv6-router-id2001:db8::1]][TE[protocol-origin2][Flag128][endpoint10.20.30.40]"
        "[color100000][originator-as65535.1][originator-address2001:db8::2][discriminator3]]";
    return {"TEPOLICY",
            text,
            Record("05000000 09000000 0900000000000000 6400000000000000 04030201 08070605 0c0b0a09"
                   "20010db8000000000000000000000001 02 80 281e140a 00000000000000000000000000000000 00 a0860100"
                   "0100ffff01000000 00000000 20010db8000000000000000000000002 01 03000000 01000000"),
            Record("00000005 00000009 0000000000000009 0000006400000000 01020304 05060708 090a0b0c"
                   "20010db8000000000000000000000001 02 80 0a141e28 00000000000000000000000000000000 00 000186a0"
                   "ffff000100000001 00000000 20010db8000000000000000000000002 01 00000003 00000001"),
            text,
            "{color=100000, discriminator=3, "
            "endpoint={flag=0, ipv4Addr=169090600, ipv6Addr={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}}, existFlag=1, "
            "flags=128, ipv6TeRouterId={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}, "
            "originatorAddr={flag=1, ipv4Addr=0, ipv6Addr={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,2}}, "
            "originatorAs={asNumValue=4294901761, asType=1}, protocolOrigin=2, "
            "stLocalAs={asNumValue=100, asType=0}, stLocalBgpLsId=16909060, teRouterId=151653132, "
            "uiIdentifier={hUint32=0, lUint32=9}, uiLocalBgpRtId=84281096, uiProtocolId=9, uiRouteType=5}"};
}

inline Sample Srv6SidBgpSample()
{
    const std::string text = "[SRV6-SID][BGP][IDENTIFIER3][LOCAL[as100][bgp-ls-identifier1.2.3.4]"
                             "[bgp-router-id5.6.7.8][member-as65020]][SID[sidfc00:1::1]]";
    return {"SRV6-SID of BGP",
            text,
            Record("06000000 07000000 0300000000000000 6400000000000000 04030201 fcfd000000000000 00000000" + Igp("") +
                   "ffffffff fc000001000000000000000000000001 08070605 01000000"),
            Record("00000006 00000007 0000000000000003 0000006400000000 01020304 0000fdfc00000000 00000000" + Igp("") +
                   "ffffffff fc000001000000000000000000000001 05060708 00000001"),
            text,
            "{existFlag=1, localMemberAs={asNumValue=65020, asType=0}, "
            "srv6SidInfo={252,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1}, "
            "stLocIgpRtId=\"\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\", stLocalAs={asNumValue=100, asType=0}, "
            "stLocalBgpLsId=16909060, uiIdentifier={hUint32=0, lUint32=3}, uiLocIgpRtIdLen=4, uiLocOspfAreaId=0, "
            "uiLocalBgpRtId=84281096, uiMtId=4294967295, uiProtocolId=7, uiRouteType=6}"};
}

inline Sample Srv6SidOspfSample()
{
    return {"SRV6-SID of OSPF",
            "[SRV6-SID][OSPFv3][IDENTIFIER3][LOCAL[as100][ospf-area-id1.2.3.4][igp-router-id65.66.67.68]"
            "[member-as7]][SID[mt-id2][sidfc00:1::1]]",
            Record("06000000 06000000 0300000000000000 6400000000000000 00000000 0700000000000000 04030201" +
                   Igp("41424344") + "02000000 fc000001000000000000000000000001 00000000 00000000"),
            Record("00000006 00000006 0000000000000003 0000006400000000 00000000 0000000700000000 01020304" +
                   Igp("41424344") + "00000002 fc000001000000000000000000000001 00000000 00000000"),
            "[SRV6-SID][OSPFv3][IDENTIFIER3][LOCAL[as100][ospf-area-id1.2.3.4][igp-router-idABCD]]"
            "[SID[mt-id2][sidfc00:1::1]]",
            "{existFlag=0, localMemberAs={asNumValue=7, asType=0}, "
            "srv6SidInfo={252,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1}, stLocIgpRtId=\"ABCD\\x00\\x00\\x00\\x00\", "
            "stLocalAs={asNumValue=100, asType=0}, stLocalBgpLsId=0, uiIdentifier={hUint32=0, lUint32=3}, "
            "uiLocIgpRtIdLen=4, uiLocOspfAreaId=16909060, uiLocalBgpRtId=0, uiMtId=2, uiProtocolId=6, "
            "uiRouteType=6}"};
}

inline const std::vector<Sample> &Samples()
{
    static const std::vector<Sample> samples = {NodeSample(),        LinkIdSample(),     LinkBgpSample(),
                                                LinkAddressSample(), Ipv4PrefixSample(), Ipv6PrefixSample(),
                                                TePolicySample(),    Srv6SidBgpSample(), Srv6SidOspfSample()};
    return samples;
}

} // namespace bgp::test

#endif
