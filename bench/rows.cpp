// Every descriptor row, sub-type, EVPN route type and BGP-LS NLRI type.
#include "floors.h"
#include "textbook.h"

#include <iterator>

namespace bgp::bench {

namespace {

constexpr char kAll[] = "iocksge"; // for one of each kind

#define OSPF                                                                                                           \
    "[OSPFv2][IDENTIFIER{u32}][LOCAL[as{u32}][bgp-ls-identifier{ip4}][ospf-area-id0.0.0.{0-255}][igp-router-id{ip4}]]"
#define ISIS "[ISIS-LEVEL-2][IDENTIFIER{u32}][LOCAL[as{u32}][ospf-area-id0.0.0.0][igp-router-id{x4}.{x4}.{x4}.{x2}]]"
#define TWENTYFOUR "000000000000000000000000000000000000000000000000" // 24 bytes
#define EIGHTEEN "000000000000000000000000000000000000"               // 18 bytes
#define EIGHT(text) text " " text " " text " " text " " text " " text " " text " " text

// clang-format off
constexpr Row kRows[] = {
    // The types whose figures are compared with a floor, in the order of docs/speed.md.
    {.type = "VRFRD", .notation = "AS:n", .pattern = "{u16}:{u32}", .operations = kAll, .floor = &kDistinguisherFloor, .textbook = &kDistinguisherTextbook, .leaf = {"route-distinguisher", "0:"}},
    {.type = "VRFRD", .notation = "a.b.c.d:n", .pattern = "{ip4}:{u16}", .floor = &kDistinguisherFloor, .textbook = &kDistinguisherTextbook, .leaf = {"route-distinguisher", "1:"}},
    {.type = "VRFRD", .notation = "x.y:n", .pattern = "{u16}.{u16}:{u16}", .floor = &kDistinguisherFloor, .textbook = &kDistinguisherTextbook},
    {.type = "VRFRT", .notation = "AS:n", .pattern = "{u16}:{u32}", .floor = &kTargetFloor, .textbook = &kTargetTextbook, .leaf = {"route-target", "0:"}},
    {.type = "VRFRT", .notation = "a.b.c.d:n", .pattern = "{ip4}:{u16}", .floor = &kTargetFloor, .textbook = &kTargetTextbook, .leaf = {"route-target", "1:"}},
    {.type = "VRFRT", .notation = "x.y:n", .pattern = "{u16}.{u16}:{u16}", .floor = &kTargetFloor, .textbook = &kTargetTextbook},
    {.type = "COMMUNITY", .notation = "n:n", .pattern = "{u16}:{u16}", .floor = &kCommunityFloor, .textbook = &kCommunityTextbook},
    {.type = "LARGECOMMUNITY", .notation = "n:n:n", .pattern = "{u32}:{u32}:{u32}", .floor = &kLargeCommunityFloor, .textbook = &kLargeCommunityTextbook},
    {.type = "ASNUM", .notation = "plain", .pattern = "{u32}", .operations = kAll, .floor = &kAsNumberFloor, .textbook = &kAsNumberTextbook, .leaf = {"as-number", ""}},
    {.type = "ASNUM", .notation = "dotted", .pattern = "{u16}.{u16}", .floor = &kAsNumberFloor, .textbook = &kAsNumberTextbook},
    {.type = "BOLPREFIX", .notation = "IPv4", .pattern = "{ip4}", .operations = kAll, .begins = "00000000", .floor = &kIpv4KeyFloor, .textbook = &kIpv4KeyTextbook, .leaf = {"ipv4-address", ""}},
    {.type = "BOLPREFIX", .notation = "IPv6", .pattern = "{ip6}", .begins = "0f000000", .floor = &kIpv6KeyFloor, .textbook = &kIpv6KeyTextbook, .leaf = {"ipv6-address", ""}},
    {.type = "BOLPREFIX", .notation = "EVPN MAC/IP", .pattern = "{u32}:48:{mac}:32:{ip4}", .operations = kAll, .begins = "0100000002", .floor = &kMacIpFloor, .textbook = &kMacIpTextbook},
    {.type = "BGPLSPREFIX", .notation = "node", .pattern = "[NODE]" OSPF, .operations = kAll, .begins = "01000000", .floor = &kLsNodeFloor, .textbook = &kLsNodeTextbook},

    // Other notations of these.
    {.type = "VRFRD", .notation = "wide AS:n", .pattern = "{as4}:{u16}", .floor = &kDistinguisherFloor, .textbook = &kDistinguisherTextbook},
    {.type = "VRFRT", .notation = "wide AS:n", .pattern = "{as4}:{u16}", .floor = &kTargetFloor, .textbook = &kTargetTextbook},
    {.type = "COMMUNITY", .notation = "number", .pattern = "{u32}", .floor = &kCommunityFloor, .textbook = &kCommunityTextbook},
    {.type = "BOLPREFIX", .notation = "EVPN MAC/IPv6", .pattern = "{u32}:48:{mac}:128:[{ip6}]", .begins = "0100000002", .floor = &kMacIpFloor, .textbook = &kMacIpTextbook},
    {.type = "BGPLSPREFIX", .notation = "IS-IS node", .pattern = "[NODE]" ISIS, .begins = "01000000", .floor = &kLsNodeFloor},

    // Other types of one value.
    {.type = "ASNUMEXT", .notation = "plain", .pattern = "{u32}"},
    {.type = "EXTCOMMUNITY", .notation = "AS:n", .pattern = "{u16}:{u32}", .textbook = &kTargetTextbook},
    {.type = "SOO", .notation = "AS:n", .pattern = "{u16}:{u32}", .textbook = &kSooTextbook},
    {.type = "BOLRD", .notation = "AS:n", .pattern = "{u16}:{u32}", .operations = kAll},
    {.type = "RTPRD", .notation = "AS:n", .pattern = "{u16}:{u32}"},
    {.type = "RTPRD", .notation = "AS:*", .pattern = "{u16}:*"},
    {.type = "VPNID", .notation = "OUI:index", .pattern = "{h6}:{h8}", .textbook = &kVpnIdTextbook},
    {.type = "VRFRTV6", .notation = "IPv6.n", .pattern = "{ip6}.{0-1}"},
    {.type = "EXTCMNTY_COMPR", .notation = "n:0", .pattern = "{u16}:0", .textbook = &kComprTextbook},
    {.type = "EXTCOMMUNITY_BW", .notation = "n:n", .pattern = "=12:0000{x4}{x16}"},
    {.type = "SID_STRUCTURE", .notation = "n-n-n-n-n-n", .pattern = "=7:{x12}01"},
    {.type = "TIME_RANGE", .notation = "d h m s", .pattern = "{0-9999}d{0-23}h{0-59}m{0-59}s", .operations = kAll},

    // Lists.
    {.type = "ASNUM_ENHANCE", .notation = "8 plain", .pattern = EIGHT("{u32}"), .operations = kAll, .textbook = &kAsListTextbook},
    {.type = "CMNTY_ENHANCE", .notation = "8 n:n", .pattern = EIGHT("{u16}:{u16}"), .textbook = &kCommunityListTextbook},
    {.type = "ATTRIDBITMAP", .notation = "a set", .pattern = "=32:{x64}", .operations = "cksge"},
    {.type = "ATTRIDBITMAP", .notation = "list of a set", .pattern = "=98:" TWENTYFOUR "0200" EIGHTEEN "19000e00417474726962757465204944733a220120008e{x4}", .operations = "o", .mode = 1},

    // The names of objects, which are the host's.
    {.type = "VRFID2VRFNAME", .notation = "a number", .pattern = "{u32}", .operations = kAll},
    {.type = "BGPPEERGROUPID", .notation = "a number", .pattern = "{u32}"},
    {.type = "FLOWROUTEID", .notation = "a number", .pattern = "{u32}"},
    {.type = "VRFID2CVRFNAME", .notation = "a number", .pattern = "{u32}"},
    {.type = "BGPID2BGPNAME", .notation = "a number", .pattern = "{u32}"},
    {.type = "ALIASID2NAME", .notation = "a number", .pattern = "{u32}"},
    {.type = "SETID2SETNAME", .notation = "a number", .pattern = "{u32}"},
    {.type = "PDID2PDNAME", .notation = "a number", .pattern = "{u32}"},
    {.type = "RTPCLID2NAME", .notation = "a number", .pattern = "{u32}"},
    {.type = "CVRFNAME", .notation = "a name", .pattern = "{name}", .operations = kAll},

    // The composite key, by sub-type.
    {.type = "BOLPREFIX", .notation = "NG-MVPN 2", .pattern = "{u32}", .begins = "02000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 3", .pattern = "{ip4}:{group}:{ip4}", .begins = "03000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 4-2", .pattern = "{u32}:{ip4}", .begins = "04000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 4-3", .pattern = "{ip4}:{group}:{ip4}:{ip4}", .begins = "05000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 5", .pattern = "{ip4}:{group}", .begins = "06000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 5 IPv6", .pattern = "{ip6}-ff0e::{h4}", .begins = "06000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 6", .pattern = "{u32}:{ip4}:{group}", .begins = "07000000"},
    {.type = "BOLPREFIX", .notation = "VRFRTEXT", .pattern = "{u16}:{u32}", .begins = "08000000"},
    {.type = "BOLPREFIX", .notation = "L2VPN", .pattern = "=89:09000000{x4}{x4}", .begins = "09000000"},
    {.type = "BOLPREFIX", .notation = "VPNV4MCAST", .pattern = "=89:0a000000{x8}18", .begins = "0a000000"},
    {.type = "BOLPREFIX", .notation = "MDT", .pattern = "=89:0b000000{x8}{x8}18", .begins = "0b000000"},
    {.type = "BOLPREFIX", .notation = "RPD", .pattern = "{0-1}/{ip4}/{u32}", .begins = "0c000000"},
    {.type = "BOLPREFIX", .notation = "NG-MVPN 4-1", .pattern = "{ip4}:{ip4}", .begins = "0d000000"},
    {.type = "BOLPREFIX", .notation = "SR policy", .pattern = "[{u32}][{u32}][{ip4}]", .begins = "0e000000", .textbook = &kSrPolicyTextbook},
    {.type = "BOLPREFIX", .notation = "SR policy IPv6", .pattern = "[{u32}][{u32}][2001:db8::{h4}]", .begins = "0e000000"},
    {.type = "BOLPREFIX", .notation = "SD-WAN", .pattern = "{u16}-{u32}-{u32}-{ip4}", .begins = "10000000"},
    {.type = "BOLPREFIX", .notation = "SD-WAN IPv6", .pattern = "{u16}-{u32}-{u32}-2001:db8::{h4}", .begins = "10000000"},
    {.type = "EVNPREFIX", .notation = "MAC/IP", .pattern = "{u32}:48:{mac}:32:{ip4}", .begins = "0100000002", .textbook = &kMacIpTextbook},
    {.type = "L2VPNPREFIX", .notation = "site/offset", .pattern = "=89:09000000{x4}{x4}"},
    {.type = "VPNV4MCPREFIX", .notation = "prefix/length", .pattern = "{ip4}/{10-32}"},
    {.type = "MDTPREFIX", .notation = "prefix/length", .pattern = "{ip4}/{10-32}", .textbook = &kMdtTextbook},

    // EVPN routes, by route type.
    {.type = "BOLPREFIX", .notation = "EVPN 1", .pattern = "{esi}:{u32}", .begins = "0100000001"},
    {.type = "BOLPREFIX", .notation = "EVPN 3", .pattern = "{u32}:32:{ip4}", .begins = "0100000003"},
    {.type = "BOLPREFIX", .notation = "EVPN 4", .pattern = "{esi}:32:{ip4}", .begins = "0100000004"},
    {.type = "BOLPREFIX", .notation = "EVPN 5", .pattern = "{u32}:{ip4}:{0-32}", .begins = "0100000005", .textbook = &kIpPrefixTextbook},
    {.type = "BOLPREFIX", .notation = "EVPN 5 IPv6", .pattern = "{u32}:[{ip6}]:{0-128}", .begins = "0100000005"},
    {.type = "BOLPREFIX", .notation = "EVPN 6", .pattern = "{u32}:32:{ip4}:32:{group}:32:{ip4}", .begins = "0100000006"},
    {.type = "BOLPREFIX", .notation = "EVPN 7", .pattern = "{esi}:{u32}:32:{ip4}:32:{group}:32:{ip4}", .begins = "0100000007"},
    {.type = "BOLPREFIX", .notation = "EVPN 8", .pattern = "{esi}:{u32}:32:{ip4}:32:{group}:32:{ip4}:{u32}", .begins = "0100000008"},

    // BGP-LS keys, by NLRI type.
    {.type = "BGPLSPREFIX", .notation = "link", .pattern = "[LINK]" OSPF "[REMOTE[as{u32}][igp-router-id{ip4}]][LINK[if-address{ip4}][peer-address{ip4}]]", .begins = "02000000"},
    {.type = "BGPLSPREFIX", .notation = "IPv4 prefix", .pattern = "[IPV4-PREFIX]" OSPF "[PREFIX[ospf-route-type{1-6}][prefix{ip4}/{0-32}]]", .begins = "03000000"},
    {.type = "BGPLSPREFIX", .notation = "IPv6 prefix", .pattern = "[IPV6-PREFIX]" ISIS "[PREFIX[mt-id2][ospf-route-type0][prefix{ip6}/{0-128}]]", .begins = "04000000"},
    {.type = "BGPLSPREFIX", .notation = "TE policy", .pattern = "[TEPOLICY][SEGMENT-ROUTING][IDENTIFIER{u32}][LOCAL[as{u32}][bgp-router-id{ip4}][ipv4-router-id{ip4}]]"
     "[TE[protocol-origin{1-3}][Flag{0-255}][endpoint{ip4}][color{u32}][originator-as{u32}][originator-address{ip4}][discriminator{u32}]]", .begins = "05000000"},
    {.type = "BGPLSPREFIX", .notation = "SRv6 SID", .pattern = "[SRV6-SID]" ISIS "[SID[sid{ip6}]]", .begins = "06000000"},
};
// clang-format on

} // namespace

Rows AllRows()
{
    return {kRows, std::size(kRows)};
}

} // namespace bgp::bench
