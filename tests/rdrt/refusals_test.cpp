// Why the texts of route distinguishers, route targets and their kin are refused, and what their types say of
// themselves. The notations that six types share are stated once.
#include "support/refusals.h"

#include <cstring>
#include <vector>

namespace bgp::test {
namespace {

class RdRtRefusals : public PlugIn {};

constexpr std::string_view kForms = "a.b.c.d:n AS:n x.y:n";
constexpr std::string_view kSmallAs = "with an AS number up to 65535";
constexpr std::string_view kLargeAs = "with an AS number above 65535";

// clang-format off
constexpr Refused kShared[] = {
    // text                     rule               at  length
    {"",                        "empty",            0,  0},
    {" \t",                     "empty",            2,  0},
    {"0000000000000000100:01",  "too-long",         0, 22, 21},
    {" 00000000000000000000:1\t", "too-long",       1, 22, 21},
    {"1: 2",                    "blank",            2,  1},
    {"1\t:2",                   "blank",            1,  1},
    {"  1.2.3.4 :5 ",           "blank",            9,  1},
    {":1",                      "digit",            0,  1},
    {"1:",                      "digit",            2,  0},
    {" 1: ",                    "digit",            3,  0},
    {"1..2:3",                  "digit",            2,  1},
    {"-1:2",                    "digit",            0,  1},
    {"1:+2",                    "digit",            2,  1},
    {"a:1",                     "digit",            0,  1},
    {"1-2:3",                   "character",        1,  1},
    {"1:2a",                    "character",        3,  1},
    {"1:2\n",                   "character",        3,  1},
    {"1:2\xb2",                 "character",        3,  1},
    {"1.2.3.4.5:6",             "too-many-numbers", 9,  1, 5},
    {"1.2.3.4:5:6",             "too-many-numbers", 9,  1, 5},
    {"12",                      "notation",         0,  2, 0, "", "", 0, 2, kForms},
    {" 1:2:3",                  "notation",         1,  5, 0, "", "", 0, 2, kForms},
    {"1:2.3",                   "notation",         0,  5, 0, "", "", 0, 2, kForms},
    {"1.2.3:4",                 "notation",         0,  7, 0, "", "", 0, 2, kForms},
    {"256.2.3.4:1",             "too-large",        0,  3, 255, "octet 1 of the address"},
    {"1.256.3.4:1",             "too-large",        2,  3, 255, "octet 2 of the address"},
    {"1.2.999.4:1",             "too-large",        4,  3, 255, "octet 3 of the address"},
    {"  1.2.3.256:65536",       "too-large",        8,  3, 255, "octet 4 of the address"},
    {"1.2.3.4:65536",           "too-large",        8,  5, 65535, "the assigned number"},
    {"65535:4294967296",        "too-large",        6, 10, 4294967295, "the assigned number", kSmallAs},
    {" 0:9999999999999999999 ", "too-large",        3, 19, 4294967295, "the assigned number", kSmallAs},
    {"65536:65536",             "too-large",        6,  5, 65535, "the assigned number", kLargeAs},
    {"4294967295:4294967296",   "too-large",       11, 10, 65535, "the assigned number", kLargeAs},
    {"4294967296:1",            "too-large",        0, 10, 4294967295, "the AS number", kLargeAs},
    {"9999999999:9999999999",   "too-large",        0, 10, 4294967295, "the AS number", kLargeAs},
    {"65536.0:1",               "too-large",        0,  5, 65535, "the high half of the AS number"},
    {"0.65536:1",               "too-large",        2,  5, 65535, "the low half of the AS number"},
    {"1.2:65536",               "too-large",        4,  5, 65535, "the assigned number"},
};

constexpr Refused kZero[] = {
    {"0:0",                     "all-numbers-zero", 0,  3},
    {" 00:000\t",               "all-numbers-zero", 1,  6},
    {"0.0:0",                   "all-numbers-zero", 0,  5},
};

constexpr Refused kModes[] = {
    {"1:2",                     "mode",             0,  0, 0, "", "", 0, 0},
    {"1:2",                     "mode",             0,  0, 3, "", "", 0, 3},
    {"1:2",                     "mode",             0,  0, 4, "", "", 0, 4},
    {"1:2",                     "mode",             0,  0, 5, "", "", 0, 5},
    {"1:2",                     "mode",             0,  0, 7, "", "", 0, 7},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 1},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 6},
};

constexpr Refused kBolRdModes[] = {
    {"1:2",                     "mode",             0,  0, 4, "", "", 0, 4},
    {"1:2",                     "mode",             0,  0, 7, "", "", 0, 7},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 0},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 3},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 5},
};

constexpr Refused kWildcards[] = {
    {"*",                       "wildcard-place",   0,  1},
    {" *:1",                    "wildcard-place",   1,  1},
    {"1*:2",                    "wildcard-place",   1,  1},
    {"1.*:*",                   "wildcard-place",   2,  1},
    {"1.2*",                    "wildcard-place",   3,  1},
    {"1:*x",                    "character",        3,  1},
    {"1:2.*",                   "character",        3,  1},
    {"1:*:3",                   "character",        3,  1},
    {"1::*",                    "character",        2,  1},
    {"1:* *",                   "blank",            3,  1},
    {"1: *",                    "blank",            2,  1},
    {"1 :*",                    "blank",            1,  1},
    {" :*",                     "digit",            1,  0},
    {"a:*",                     "digit",            0,  1},
    {"1.:*",                    "digit",            2,  0},
    {"1a:*",                    "character",        1,  1},
    {"1.2.3.4.5:*",             "too-many-numbers", 9,  1, 5},
    {"1.2.3:**",                "notation",         0,  8, 0, "", "", 0, 2, kForms},
    {" 1:2:*",                  "notation",         1,  5, 0, "", "", 0, 2, kForms},
    {"4294967296:*",            "too-large",        0, 10, 4294967295, "the AS number", kLargeAs},
    {"1.65536:*",               "too-large",        2,  5, 65535, "the low half of the AS number"},
    {" 1.2.3.256:*",            "too-large",        7,  3, 255, "octet 4 of the address"},
    {"1:*12345678901234567890", "too-long",         0, 23, 21},
};

constexpr Refused kVpnId[] = {
    {"",                        "empty",            0,  0},
    {"\t ",                     "empty",            2,  0},
    {" 000000000001a2b3c:0010", "too-long",         1, 22, 21},
    {"1: 2",                    "blank",            2,  1},
    {"a\t:b",                   "blank",            1,  1},
    {":1",                      "digit",            0,  1},
    {"1:",                      "digit",            2,  0},
    {"g:1",                     "digit",            0,  1},
    {"A:1",                     "upper-case",       0,  1},
    {"1a2B3c:10",               "upper-case",       3,  1},
    {" 1:F",                    "upper-case",       3,  1},
    {"0x1:2",                   "character",        1,  1},
    {"1G:2",                    "character",        1,  1},
    {"1.2:3",                   "character",        1,  1},
    {"1:2:3:4:5:6",             "too-many-numbers", 3,  1, 2},
    {"12",                      "notation",         0,  2, 0, "", "", 0, 2, "OUI:index"},
    {"1:2:3",                   "notation",         0,  5, 0, "", "", 0, 2, "OUI:index"},
    {"1000000:1",               "too-large-hex",    0,  7, 0xffffff, "the OUI"},
    {"ffffffffffffffff:f",      "too-large-hex",    0, 16, 0xffffff, "the OUI"},
    {" 1:100000000",            "too-large-hex",    3,  9, 0xffffffff, "the VPN index"},
    {" 0:00 ",                  "all-numbers-zero", 1,  4},
};

constexpr std::string_view kLocal = "the local administrator";
constexpr std::string_view kGlobal = "the global administrator";

constexpr Refused kVrfRtV6[] = {
    {"",                        "empty",            0,  0},
    {"   ",                     "empty",            3,  0},
    {" 00000:0000:0000:0000:0000:ffff:255.255.255.255.1", "too-long", 1, 48, 47},
    {"2001:db8::1 .1",          "blank",           11,  1},
    {" 2001: db8::1.1",         "blank",            6,  1},
    {"2001:db8::1.\t1",         "blank",           12,  1},
    {"1",                       "no-local-administrator", 1, 0, 0, kLocal},
    {" 2001:db8::1 ",           "no-local-administrator", 12, 0, 0, kLocal},
    {"2001:db8::1.",            "digit",           12,  0},
    {".",                       "digit",            1,  0},
    {"2001:db8::1.a",           "digit",           12,  1},
    {"2001:db8::1.-",           "digit",           12,  1},
    {"2001:db8::1.\xb1",        "digit",           12,  1},
    {"2001:db8::1..",           "digit",           12,  1},
    {"2001:db8::1.10",          "one-digit",       12,  2, 0, kLocal},
    {"2001:db8::1.65535",       "one-digit",       12,  5, 0, kLocal},
    {"1.2:3",                   "one-digit",        2,  3, 0, kLocal},
    {" 2001:db8::1.2",          "too-large",       13,  1, 1, kLocal},
    {"::ffff:1.2.3.4",          "too-large",       13,  1, 1, kLocal},
    {"x::1.9",                  "too-large",        5,  1, 1, kLocal},
    {" g::1.1",                 "ipv6",             1,  1, 0, kGlobal},
    {"2001:db8:::1.1",          "ipv6",            10,  1, 0, kGlobal},
    {"::ffff:1.2.3.256.1",      "ipv6",            13,  3, 0, kGlobal},
    {"1:2:3:4:5:6:7.1",         "ipv6",            13,  0, 0, kGlobal},
    {"192.0.2.1.1",             "ipv6",             0,  9, 0, kGlobal},
    {" .1",                     "empty",            1,  0, 0, kGlobal},
    {"1..1",                    "ipv6",             0,  2, 0, kGlobal},
};
// clang-format on

template <class... Rows>
std::vector<Refused> All(const Rows &...rows)
{
    std::vector<Refused> all;
    (all.insert(all.end(), std::begin(rows), std::end(rows)), ...);
    return all;
}

TEST_F(RdRtRefusals, OfTheSharedNotations)
{
    CheckRefusals("VRFRD", All(kShared, kZero, kModes));
    CheckRefusals("VRFRT", All(kShared, kZero, kModes));
    CheckRefusals("SOO", All(kShared, kZero, kModes));
    CheckRefusals("EXTCOMMUNITY", All(kShared, kModes));
    CheckRefusals("BOLRD", All(kShared, kZero, kBolRdModes));
    CheckRefusals("RTPRD", All(kShared, kWildcards, kModes));
}

TEST_F(RdRtRefusals, OfOtherTexts)
{
    CheckRefusals("VPNID", All(kVpnId, kModes));
    CheckRefusals("VRFRTV6", All(kVrfRtV6));
}

TEST_F(RdRtRefusals, NoneOfAcceptedTexts)
{
    constexpr std::string_view kTexts[] = {
        "100:1",   "65535:4294967295", " 65536:0\t", "4294967295:65535",     "65535.65535:0",
        "0.100:1", "1.2.3.4:5",        "0.0.0.0:0",  "255.255.255.255:65535"};
    for (const std::string_view type : {"VRFRD", "VRFRT", "SOO", "EXTCOMMUNITY", "BOLRD", "RTPRD"}) {
        CheckAccepted(type, kTexts);
    }
    constexpr std::string_view kZeros[] = {"0:0", "0.0:0"};
    CheckAccepted("EXTCOMMUNITY", kZeros);
    CheckAccepted("RTPRD", kZeros);
    constexpr std::string_view kStars[] = {"100:*", " 0:**\t", "65536:65536*", "1.2:*3", "1.2.3.4:70000*"};
    CheckAccepted("RTPRD", kStars);
    constexpr std::string_view kIds[] = {"1a2b3c:10", " ffffff:ffffffff\t", "0:1", "1:0"};
    CheckAccepted("VPNID", kIds);
    constexpr std::string_view kTargets[] = {"2001:db8::1.1", "\t::.0 ", "::192.0.2.1.1"};
    CheckAccepted("VRFRTV6", kTargets);
}

TEST_F(RdRtRefusals, InWords)
{
    struct Row {
        const char *type, *text, *said;
    };
    static constexpr Row kRows[] = {
        {"VRFRD", "65000:4294967296", "with an AS number up to 65535: the assigned number is at most 4294967295"},
        {"VRFRT", "70000:65536", "with an AS number above 65535: the assigned number is at most 65535"},
        {"SOO", "1.2.3.256:1", "octet 4 of the address is at most 255"},
        {"BOLRD", "0:0", "the numbers may not all be 0"},
        {"RTPRD", "*:1", "\"*\" may only stand for the assigned number"},
        {"VPNID", "1000000:1", "the OUI is at most ffffff"},
        {"VPNID", "1A:1", "hexadecimal digits are lower case here"},
        {"VRFRTV6", "2001:db8::1", "\".\" and the local administrator stand at the end"},
        {"VRFRTV6", "2001:db8::1.2", "the local administrator is at most 1"},
        {"SID_STRUCTURE", "32-16-16-0-0-0", "values of this type cannot be typed"},
    };
    for (const Row &row : kRows) {
        const BgpRefusal refusal = Explained(row.type, row.text);
        char said[200];
        EXPECT_EQ(Bgp_SayReason(&refusal.Reason, said, sizeof said), std::strlen(row.said)) << row.type;
        EXPECT_STREQ(said, row.said) << row.type;
    }
}

// The dispatcher has one code of its own; the sub-type's answer stands beside it.
TEST_F(RdRtRefusals, OfTheCompositeTellTheSubTypesAnswer)
{
    struct Answer {
        const char *text;
        uint8_t mode;
        uint32_t code, subTypeCode;
        const char *rule;
    };
    static constexpr Answer kAnswers[] = {
        {"0:0", 2, DT_ERR_INVALID_VALUE, DT_ERR_INVALID_VALUE, "all-numbers-zero"},
        {"100:1", 4, DT_ERR_INVALID_VALUE, DT_ERR_MODE_UNSUPPORTED, "mode"},
        {"100:1", 7, DT_ERR_INVALID_VALUE, DT_ERR_MODE_UNSUPPORTED, "mode"},
        {"100:1", 3, DT_OK, DT_OK, "none"},
    };
    for (const Answer &answer : kAnswers) {
        SCOPED_TRACE(answer.text);
        const BgpRefusal refusal = Explained("BOLRD", answer.text, answer.mode);
        EXPECT_EQ(refusal.Reason.Code, answer.code);
        EXPECT_EQ(CodeOf("BOLRD", answer.text, answer.mode), answer.code);
        ASSERT_EQ(refusal.SubTypeCount, 1u);
        EXPECT_EQ(refusal.Closest, 0u);
        EXPECT_EQ(refusal.SubTypes[0].Code, answer.subTypeCode);
        EXPECT_EQ(FormatIn(Row(g_astBOL_RD_ProcTable[0]), answer.text, answer.mode).code, answer.subTypeCode);
        EXPECT_EQ(Describe(refusal.SubTypes[0]), Describe(refusal.Reason));
        EXPECT_EQ(Describe(refusal.SubTypes[0]).substr(0, std::strlen(answer.rule)), answer.rule);
    }
}

TEST_F(RdRtRefusals, OfATypeThatIsNotTyped)
{
    const BgpRefusal refusal = Explained("SID_STRUCTURE", "32-16-16-0-0-0");
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_FAIL);
    EXPECT_EQ(Describe(refusal.Reason), "not-typed 0+0 limit 0 what '' where '' element 0 expected ''");
}

// -------------------------------------------------------------------------------------------------------------- facts

class RdRtFacts : public PlugIn {};

struct Stated {
    const char *name;
    uint16_t typeId;
    uint16_t valueLength, checkedLength;
    uint16_t shortest, longest;
    uint8_t order, network, lua, base;
    uint32_t traits;
    uint32_t notations;
    const char *reference;
};

constexpr Stated kStated[] = {
    {"EXTCOMMUNITY", 257, 12, 12, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_ENDIAN, BGP_LUA_TYPED, 10, 0, 4,
     "RFC 4360, RFC 5668, RFC 4577"},
    {"VRFRT", 258, 12, 12, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_ENDIAN, BGP_LUA_TYPED, 10, 0, 4, "RFC 4360, RFC 5668"},
    {"VRFRD", 259, 12, 12, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_ENDIAN, BGP_LUA_TYPED, 10, 0, 4, "RFC 4364"},
    {"SOO", 260, 12, 12, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_ENDIAN, BGP_LUA_TYPED, 10, 0, 4, "RFC 4360, RFC 5668"},
    {"RTPRD", 278, 10, 10, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_LAYOUT, BGP_LUA_ALL, 10, 0, 4, "RFC 4364"},
    {"BOLRD", 280, 16, 16, 1, 21, BGP_ORDER_EQUALITY, BGP_NETWORK_LAYOUT, BGP_LUA_TYPED, 10, 0, 4,
     "RFC 4364, RFC 4761"},
    {"VPNID", 303, 8, 8, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_ENDIAN, BGP_LUA_ALL, 16, 0, 1, "RFC 2685"},
    {"VRFRTV6", 320, 24, 24, 1, 47, BGP_ORDER_TOTAL, BGP_NETWORK_ENDIAN, BGP_LUA_TYPED, 10, BGP_TRAIT_READS_SHORT, 0,
     "RFC 5701"},
    {"SID_STRUCTURE", 328, 7, 0, 0, 0, BGP_ORDER_NONE, BGP_NETWORK_LAYOUT, BGP_LUA_LOSES, 10,
     BGP_TRAIT_NO_TEXT | BGP_TRAIT_READS_SHORT, 0, "RFC 9252"},
};

void ExpectFacts(const BgpTypeFacts &facts, const Stated &stated)
{
    EXPECT_STREQ(facts.Name, stated.name);
    EXPECT_EQ(facts.TypeId, stated.typeId);
    EXPECT_EQ(facts.ResultTypeId, (stated.traits & BGP_TRAIT_NO_TEXT) != 0 ? facts.ResultTypeId : stated.typeId);
    EXPECT_EQ(facts.SubType, 0);
    EXPECT_EQ(facts.ValueLength, stated.valueLength);
    EXPECT_EQ(facts.CheckedLength, stated.checkedLength);
    EXPECT_EQ(facts.TextSize, 257);
    EXPECT_EQ(facts.ShortestText, stated.shortest);
    EXPECT_EQ(facts.LongestText, stated.longest);
    EXPECT_EQ(facts.TypingMode, 2);
    EXPECT_EQ(facts.Order, stated.order);
    EXPECT_EQ(facts.Network, stated.network);
    EXPECT_EQ(facts.Lua, stated.lua);
    EXPECT_EQ(facts.Base, stated.base);
    EXPECT_EQ(facts.Traits, stated.traits);
    EXPECT_EQ(facts.NotationCount, stated.notations);
    EXPECT_EQ(facts.Notations != nullptr, stated.notations != 0);
    EXPECT_STREQ(facts.Reference, stated.reference);
    EXPECT_GT(std::strlen(facts.Description), 0u);
    ASSERT_NE(facts.Layout, nullptr);
    EXPECT_EQ(facts.Layout->Length, stated.valueLength);
}

TEST_F(RdRtFacts, OfTheTypes)
{
    for (const Stated &stated : kStated) {
        SCOPED_TRACE(stated.name);
        const BgpTypeFacts *facts = Bgp_DescribeType(stated.typeId);
        ASSERT_NE(facts, nullptr);
        ExpectFacts(*facts, stated);
    }
}

TEST_F(RdRtFacts, OfTheSubType)
{
    const BgpTypeFacts *facts = Bgp_DescribeSubType(280, 0);
    ASSERT_NE(facts, nullptr);
    ExpectFacts(*facts, {"RT", 280, 16, 16, 1, 21, BGP_ORDER_TOTAL, BGP_NETWORK_LAYOUT, BGP_LUA_TYPED, 10, 0, 4,
                         "RFC 4364, RFC 4761"});
    EXPECT_EQ(Bgp_DescribeSubType(280, 1), nullptr);
    EXPECT_EQ(Bgp_DescribeSubType(259, 0), nullptr);
}

struct StatedNotation {
    const char *form, *separators, *when;
    std::vector<const char *> names;
    std::vector<uint64_t> smallest, largest;
};

void ExpectNotation(const BgpNotation &notation, const StatedNotation &stated)
{
    EXPECT_STREQ(notation.Form, stated.form);
    EXPECT_STREQ(notation.Separators, stated.separators);
    EXPECT_STREQ(notation.When, stated.when);
    for (size_t i = 0; i < BGP_MOST_NUMBERS; ++i) {
        const bool there = i < stated.names.size();
        EXPECT_STREQ(notation.Names[i], there ? stated.names[i] : nullptr);
        EXPECT_EQ(notation.Smallest[i], there ? stated.smallest[i] : 0);
        EXPECT_EQ(notation.Largest[i], there ? stated.largest[i] : 0);
    }
}

TEST_F(RdRtFacts, OfTheNotations)
{
    const std::vector<StatedNotation> shared = {
        {"a.b.c.d:n",
         "...:",
         nullptr,
         {"octet 1 of the address", "octet 2 of the address", "octet 3 of the address", "octet 4 of the address",
          "the assigned number"},
         {0, 0, 0, 0, 0},
         {255, 255, 255, 255, 65535}},
        {"AS:n",
         ":",
         "with an AS number up to 65535",
         {"the AS number", "the assigned number"},
         {0, 0},
         {65535, 4294967295}},
        {"AS:n",
         ":",
         "with an AS number above 65535",
         {"the AS number", "the assigned number"},
         {65536, 0},
         {4294967295, 65535}},
        {"x.y:n",
         ".:",
         nullptr,
         {"the high half of the AS number", "the low half of the AS number", "the assigned number"},
         {0, 0, 0},
         {65535, 65535, 65535}},
    };
    for (const Stated &stated : kStated) {
        const BgpTypeFacts *facts = Bgp_DescribeType(stated.typeId);
        ASSERT_NE(facts, nullptr);
        for (uint32_t i = 0; i < facts->NotationCount && stated.notations == shared.size(); ++i) {
            SCOPED_TRACE(std::string(stated.name) + " " + std::to_string(i));
            ExpectNotation(facts->Notations[i], shared[i]);
        }
    }
    const BgpTypeFacts *vpnId = Bgp_DescribeType(303);
    ASSERT_NE(vpnId, nullptr);
    ExpectNotation(vpnId->Notations[0],
                   {"OUI:index", ":", nullptr, {"the OUI", "the VPN index"}, {0, 0}, {0xffffff, 0xffffffff}});
}

} // namespace
} // namespace bgp::test
