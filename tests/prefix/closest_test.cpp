// BOLPREFIX: the sub-type that a mistyped route key came closest to. Each row is a key with one mistake that people
// make, and the sub-type whose key it was; "L2VPN", "VPNV4MCAST" and "MDT" cannot be typed, so no text is meant for
// them.
//
// Where two sub-types have read equally far, and would read equally far without the mistake, the first row of the
// composite is told, as it is also the first to be offered a text. Such rows say so.
#include "support/refusals.h"

#include <set>

namespace bgp::test {
namespace {

class Closest : public PlugIn {};

struct Mistyped {
    std::string_view text;
    std::string_view subType;
    std::string_view rule;
    uint32_t offset;
    uint32_t length;
    std::string_view where = "";
};

constexpr std::string_view kAd = "Ethernet auto-discovery";
constexpr std::string_view kMacIp = "MAC/IP advertisement";
constexpr std::string_view kInclusive = "inclusive multicast Ethernet tag";
constexpr std::string_view kSegment = "Ethernet segment";
constexpr std::string_view kIpPrefix = "IP prefix";
constexpr std::string_view kSmet = "selective multicast Ethernet tag";
constexpr std::string_view kJoin = "multicast membership report synch";
constexpr std::string_view kLeave = "multicast leave synch";
constexpr std::string_view kInterAs = "Inter-AS I-PMSI A-D route";
constexpr std::string_view kSPmsi = "S-PMSI A-D route";
constexpr std::string_view kLeafInterAs = "Leaf A-D route of an Inter-AS I-PMSI";
constexpr std::string_view kLeafSPmsi = "Leaf A-D route of an S-PMSI";
constexpr std::string_view kLeafIntraAs = "Leaf A-D route of an Intra-AS I-PMSI";
constexpr std::string_view kSourceActive = "Source Active A-D route";
constexpr std::string_view kCMulticast = "C-multicast route";
constexpr std::string_view kLargeAs = "with an AS number above 65535";

// clang-format off
constexpr Mistyped kMistyped[] = {
    // 10.1.1.1. A route target of an address begins in the same way; the address comes first.
    {"10.1.1.256",                                "IPV4",       "too-large",        7,  3},
    {"256.1.1.1",                                 "IPV4",       "too-large",        0,  3},
    {"010.1.1.1",                                 "IPV4",       "leading-zero",     0,  3},
    {"10.1.1",                                    "IPV4",       "ipv4",             6,  0},
    {"10..1.1",                                   "IPV4",       "ipv4",             3,  1},
    {"10.1.1.x",                                  "IPV4",       "ipv4",             7,  1},
    {" 10.1. 1.1",                                "IPV4",       "blank",            6,  1},
    {"10.1.1.0/24",                               "IPV4",       "ipv4",             8,  1},

    // EVPN: ESI:tag
    {"0100.0000.0000.0000.0001:4294967296",       "EVN",        "too-large",       25, 10, kAd},
    {"0100.0000.0000.0000.000g:7",                "EVN",        "character",       23,  1, kAd},
    {"0100.0000.0000.0000.001:7",                 "EVN",        "esi-group",       23,  0, kAd},
    {"01ab.0000.0000.0001:7",                     "EVN",        "esi-groups",      19,  0, kAd},
    {"0100.0000.0000.0000.0001:",                 "EVN",        "empty",           25,  0, kAd},
    // tag:maclen:MAC:iplen:IP
    {"1:48:00e0-fc12-345g:32:10.1.1.1",           "EVN",        "mac",             18,  1, kMacIp},
    {"1:48:00e0-fc12:32:10.1.1.1",                "EVN",        "mac",             14,  0, kMacIp},
    {"1:48:00e0.fc12.3456:32:10.1.1.1",           "EVN",        "mac",              9,  1, kMacIp},
    {"1:48:00e0-fc12-3456:32:10.1.1.256",         "EVN",        "too-large",       30,  3, kMacIp},
    {"1:48:00e0-fc12-3456:32:10.1.1",             "EVN",        "ipv4",            29,  0, kMacIp},
    {"1:48:00e0-fc12-3456:32:2001:db8::1",        "EVN",        "ipv4",            23,  4, kMacIp},
    {"1:256:00e0-fc12-3456:32:10.1.1.1",          "EVN",        "too-large",        2,  3, kMacIp},
    {"1:48:00e0-fc12-3456:32: 10.1.1.1",          "EVN",        "blank",           23,  1, kMacIp},
    {"1:48:00e0-fc12-3456:129:[2001:db8::1]",     "EVN",        "too-large",       20,  3, kMacIp},
    // tag:iplen:IP
    {"10:32:10.1.1.256",                          "EVN",        "too-large",       13,  3, kInclusive},
    {"10:32:10.1.1",                              "EVN",        "ipv4",            12,  0, kInclusive},
    {"1O:32:10.1.1.1",                            "EVN",        "digit",            1,  1, kInclusive},
    {"10:128:[2001:db8::g]",                      "EVN",        "ipv6",            18,  1, kInclusive},
    {"10:128:[2001:db8::1",                       "EVN",        "closing-bracket", 19,  0, kInclusive},
    // ESI and ESI:iplen:IP
    {"0100.0000.0000.0000.000",                   "EVN",        "esi-group",       23,  0, kSegment},
    {"0100.0000.0000.0000.0001:32:10.1.1.256",    "EVN",        "too-large",       35,  3, kSegment},
    {"0100.0000.0000.000x.0001:32:10.1.1.1",      "EVN",        "character",       18,  1, kSegment},
    {"01ab.0000.0000.0001:32:10.1.1.1",           "EVN",        "esi-groups",      19,  0, kSegment},
    // tag:IP:len
    {"10:10.1.1.0:256",                           "EVN",        "too-large",       12,  3, kIpPrefix},
    {"10:10.1.1:24",                              "EVN",        "ipv4",             9,  0, kIpPrefix},
    {"10:10.1.1.0:x",                             "EVN",        "digit",           12,  1, kIpPrefix},
    {"10:[2001:db8::]:129x",                      "EVN",        "digit",           19,  1, kIpPrefix},
    {"10:[2001:db8::]",                           "EVN",        "nothing-behind",  15,  0, kIpPrefix},
    {"10:10.1.1.0/24",                            "EVN",        "ipv4",            11,  1, kIpPrefix}, // or AS:IP: the first
    // the multicast routes
    {"1:0:1.1.1.1:0:225.1.1.1:32:2.2.2.2",        "EVN",        "too-small",       12,  1, kSmet},
    {"1:32:1.1.1.1:32:225.1.1:32:2.2.2.2",        "EVN",        "ipv4",            23,  0, kSmet},
    {"1:32:1.1.1.1:32:225.1.1.1:32",              "EVN",        "colon",           28,  0, kSmet},
    {"0100.0000.0000.0000.0001:1:32:1.1.1.1:32:225.1.1.1:32:2.2.2.256",
                                                  "EVN",        "too-large",       60,  3, kJoin},
    {"0100.0000.0000.0000.0001:1:32:1.1.1.1:32:225.1.1.1:32:2.2.2.2:4294967296",
                                                  "EVN",        "too-large",       62, 10, kLeave},

    // AS
    {"4294967296",                                "NG_TYPE_2",  "too-large",        0, 10, kInterAs},
    {"65536.1",                                   "NG_TYPE_2",  "too-large",        0,  5, kInterAs},
    {"10O",                                       "NG_TYPE_2",  "character",        2,  1, kInterAs},
    {"1.",                                        "NG_TYPE_2",  "digit",            2,  0, kInterAs},
    // source:group:originator
    {"1.1.1.1:225.1.1.1:3.3.3.300",               "NG_TYPE_3",  "too-large",       24,  3, kSPmsi},
    {"1.1.1.1:225.1.1:3.3.3.3",                   "NG_TYPE_3",  "ipv4",            15,  0, kSPmsi},
    {"1.1.1.1:225.1.1.x:3.3.3.3",                 "NG_TYPE_3",  "ipv4",            16,  1, kSPmsi},
    {"2001:db8::1-ff0e::g-2001:db8::2",           "NG_TYPE_3",  "ipv6",            18,  1, kSPmsi},
    // AS:originator
    {"100:10.1.1.256",                            "NG_TYPE_4_2", "too-large",      11,  3, kLeafInterAs},
    {"100:10.1.1",                                "NG_TYPE_4_2", "ipv4",           10,  0, kLeafInterAs},
    {"100:10.1.1.x",                              "NG_TYPE_4_2", "ipv4",           11,  1, kLeafInterAs},
    {"100-2001:db8::g",                           "NG_TYPE_4_2", "ipv6",           14,  1, kLeafInterAs},
    // source:group:originator 1:originator 2
    {"1.1.1.1:225.1.1.1:3.3.3.3:4.4.4",           "NG_TYPE_4-3", "ipv4",           31,  0, kLeafSPmsi},
    {"1.1.1.1:225.1.1.1:3.3.3.3:4.4.4.256",       "NG_TYPE_4-3", "too-large",      32,  3, kLeafSPmsi},
    {"1.1.1.1:225.1.1.1:3..3.3:4.4.4.4",          "NG_TYPE_4-3", "ipv4",           20,  1, kLeafSPmsi},
    // source:group. Two addresses with six dots are always taken.
    {"10.1.1.1:225.1.1",                          "NG_TYPE_5",  "ipv4",            16,  0, kSourceActive},
    {"10.1.1.1:225.1.1.x",                        "NG_TYPE_5",  "ipv4",            17,  1, kSourceActive},
    {"2001:db8::1-ff0e::g",                       "NG_TYPE_5",  "ipv6",            18,  1, kSourceActive},
    // AS:source:group
    {"100:1.1.1.1:225.1.1",                       "NG_TYPE_6",  "ipv4",            19,  0, kCMulticast},
    {"100:1.1.1.256:225.1.1.1",                   "NG_TYPE_6",  "too-large",       10,  3, kCMulticast},
    {"100:1.1.1.x:225.1.1.1",                     "NG_TYPE_6",  "ipv4",            10,  1, kCMulticast},
    {"1.65536:1.1.1.1:225.1.1.1",                 "NG_TYPE_6",  "too-large",        2,  5, kCMulticast},
    // originator:originator
    {"10.1.1.1:10.2.2",                           "NG_TYPE_4-1", "ipv4",           15,  0, kLeafIntraAs},
    {"10.1.1.1:10.2.2.x",                         "NG_TYPE_4-1", "ipv4",           16,  1, kLeafIntraAs},
    {"2001:db8::1-2001:::2",                      "NG_TYPE_4-1", "ipv6",           18,  1, kLeafIntraAs},

    // route targets
    {"10.1.1.1:65536",                            "VRFRTEXT",   "too-large",        9,  5},
    {"10.1.1.256:1",                              "VRFRTEXT",   "too-large",        7,  3},
    {"65536:65536",                               "VRFRTEXT",   "too-large",        6,  5, kLargeAs},
    {"1.65536:1",                                 "VRFRTEXT",   "too-large",        2,  5},
    {"1.2.3:4",                                   "VRFRTEXT",   "separator",        5,  1},
    {"100:x",                                     "VRFRTEXT",   "character",        4,  1},
    {"0a0b-0c0d-0e0g",                            "VRFRTEXT",   "character",       13,  1},
    {"0a0b-0c0d",                                 "VRFRTEXT",   "separator",        9,  0},

    // policy type/peer/distinguisher
    {"2/10.1.1.1/100",                            "RPD",        "too-large",        0,  1},
    {"1/10.1.1.256/100",                          "RPD",        "too-large",        9,  3},
    {"1/10.1.1.1",                                "RPD",        "separator",       10,  0},
    {"1//10.1.1.1/100",                           "RPD",        "digit",            2,  1},
    {"1/10.1.1.1/0100",                           "RPD",        "leading-zero",    11,  4},
    {"1/10.1.1.1/100x",                           "RPD",        "behind",          14,  1},

    // [distinguisher][colour][endpoint]
    {"[4294967296][2][10.0.0.1]",                 "SRPOLICY",   "too-large",        1, 10},
    {"[1][2][10.0.0.01]",                         "SRPOLICY",   "leading-zero",    14,  2},
    {"[1][2][10.0.0.1",                           "SRPOLICY",   "separator",       15,  0},
    {"[1]2][10.0.0.1]",                           "SRPOLICY",   "separator",        3,  1},
    {"[1][2][2001:db8::g]",                       "SRPOLICY",   "ipv6",            17,  1},
    {"[1][2] [10.0.0.1]",                         "SRPOLICY",   "blank",            6,  1},

    // an IPv6 address
    {"2001:db8::g",                               "IPV6",       "ipv6",            10,  1},
    {"2001:db8:::1",                              "IPV6",       "ipv6",            10,  1},
    {"2001:db8::1/64",                            "IPV6",       "ipv6",            11,  1},
    {"2001:db8::1::2",                            "IPV6",       "ipv6",            12,  1},
    {"2001:db8:0:0:0:0:0",                        "IPV6",       "ipv6",            18,  0},
    {"2001:db8:: 1",                              "IPV6",       "blank",           10,  1},

    // type-port-site-node
    {"1-100-200-10.1.1.256",                      "SD-WAN",     "too-large",       17,  3},
    {"65536-100-200-10.1.1.1",                    "SD-WAN",     "too-large",        0,  5},
    {"1-100-200-10.1.1.x",                        "SD-WAN",     "digit",           17,  1},
    {"1-100-10.1.1.1",                            "SD-WAN",     "separator",        8,  1},
    {"1_100-200-10.1.1.1",                        "SD-WAN",     "separator",        1,  1},
    {"1-100-200-2001:db8::g",                     "SD-WAN",     "ipv6",            20,  1},
    {"1-100-0200-10.1.1.1",                       "SD-WAN",     "leading-zero",     6,  4},
};
// clang-format on

std::string Said(std::string_view subType, std::string_view rule, uint32_t offset, uint32_t length,
                 std::string_view where)
{
    return std::string(subType) + ": " + std::string(rule) + " " + std::to_string(offset) + "+" +
           std::to_string(length) + " '" + std::string(where) + "'";
}

TEST_F(Closest, IsTheSubTypeThatWasMeant)
{
    std::set<std::string_view> meant;
    for (const Mistyped &row : kMistyped) {
        const BgpRefusal refusal = Explained("BOLPREFIX", row.text);
        EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_VALUE) << row.text;
        if (refusal.Reason.Rule == nullptr) {
            continue;
        }
        const char *where = refusal.Reason.Where;
        EXPECT_EQ(Said(Bgp_DescribeSubType(279, refusal.Closest)->Name, refusal.Reason.Rule->Name,
                       refusal.Reason.Offset, refusal.Reason.Length, where == nullptr ? "" : where),
                  Said(row.subType, row.rule, row.offset, row.length, row.where))
            << row.text;
        meant.insert(row.subType);
    }
    EXPECT_EQ(meant.size(), 14u); // of 17, three cannot be typed
}

// Blanks around a text shift the place and nothing else.
TEST_F(Closest, BlanksAroundATextDoNotMatter)
{
    for (const Mistyped &row : kMistyped) {
        const BgpRefusal bare = Explained("BOLPREFIX", row.text);
        const BgpRefusal blanks = Explained("BOLPREFIX", "\t " + std::string(row.text) + "  ");
        EXPECT_EQ(blanks.Closest, bare.Closest) << row.text;
        EXPECT_EQ(blanks.Reason.Rule, bare.Reason.Rule) << row.text;
        EXPECT_EQ(blanks.Reason.Offset, bare.Reason.Offset + 2) << row.text;
    }
}

TEST_F(Closest, IsTheFirstRowWhenNothingWasRead)
{
    for (const std::string_view text : {"", " \t", "x", " ?", "x0.1.1.1"}) {
        EXPECT_EQ(Explained("BOLPREFIX", text).Closest, 0u) << text;
    }
}

// A text that is too long for anything to be put right has the same reasons.
TEST_F(Closest, OfALongText)
{
    const BgpRefusal refusal = Explained("BOLPREFIX", "10.1.1.256" + std::string(400, ' '));
    EXPECT_EQ(refusal.Closest, 0u);
    EXPECT_STREQ(refusal.Reason.Rule->Name, "too-large");
    const BgpRefusal digits = Explained("BOLPREFIX", "1-100-200-" + std::string(400, '1'));
    EXPECT_EQ(digits.Closest, 0u);
}

} // namespace
} // namespace bgp::test
