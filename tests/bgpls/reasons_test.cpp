// Why texts of BGP-LS keys are refused. The place of a refusal stands between < and > in the texts, which hold neither
// otherwise.
#include "bgpls/samples.h"
#include "support/refusals.h"

#include <algorithm>
#include <cstring>
#include <deque>

namespace bgp::test {
namespace {

class BgpLsReasons : public PlugIn {};

struct Reason {
    std::string_view marked;
    std::string_view rule;
    std::string_view what = "";
    std::string_view where = "";
    uint64_t limit = 0;
    std::string_view expected = "";
    uint8_t mode = 2;
};

constexpr std::string_view kTypes = "NODE LINK IPV4-PREFIX IPV6-PREFIX TEPOLICY SRV6-SID";
constexpr std::string_view kProtocols =
    "ISIS-LEVEL-1 ISIS-LEVEL-2 OSPFv2 DIRECT STATIC OSPFv3 BGP RSVP-TE SEGMENT-ROUTING";
constexpr std::string_view kOthers =
    "ISIS-LEVEL-1 ISIS-LEVEL-2 OSPFv2 DIRECT STATIC OSPFv3 BGP RSVP-TE SEGMENT-ROUTING "
    "IDENTIFIER LOCAL REMOTE LINK UNKNOWN index PREFIX TE SID";
constexpr std::string_view kNodeFields =
    "as bgp-ls-identifier bgp-router-id ospf-area-id igp-router-id member-as ipv4-router-id ipv6-router-id";
constexpr std::string_view kLinkFields =
    "identifier local remote link-local-id link-remote-id if-address peer-address mt-id";
constexpr std::string_view kPrefixFields = "mt-id ospf-route-type prefix";
constexpr std::string_view kTeFields =
    "protocol-origin Flag endpoint color originator-as originator-address discriminator";
constexpr std::string_view kSidFields = "mt-id sid";

// clang-format off
constexpr Reason kGroups[] = {
    {"<>",                                                  "empty"},
    {" \t<>",                                               "empty"},
    {"[NODE]< >[BGP]",                                      "blank"},
    {" [NODE][BGP]<\t> \t[IDENTIFIER1][LOCAL[as1]] ",       "blank"},
    {"[NODE][UNKNOWN\xff< >]",                              "blank"},
    {"<N>ODE",                                              "group"},
    {"[NODE]<x>",                                           "group"},
    {" [NODE][BGP]<]>[IDENTIFIER1]",                        "group"},
    {"<[>",                                                 "unclosed"},
    {"<[>NODE",                                             "unclosed"},
    {"[NODE]<[>BGP",                                        "unclosed"},
    {"\t[NODE][BGP][IDENTIFIER0]<[>LOCAL[as1]",             "unclosed"},
    {"[NODE][BGP]<[>LOCAL[as1[ospf-area-id0.0.0.0]]",       "unclosed"},
    {"[<>]",                                                "keyword", "", "", 0, kTypes},
    {"[<node>]",                                            "keyword", "", "", 0, kTypes},
    {"[<NOD>][BGP]",                                        "keyword", "", "", 0, kTypes},
    {"[NODE][<OSPF>][IDENTIFIER1]",                         "keyword", "", "", 0, kOthers},
    {" [NODE][<local>[as1]]",                               "keyword", "", "", 0, kOthers},
    {"[NODE][<>[as1]]",                                     "keyword", "", "", 0, kOthers},
    {"[NODE][<as1>]",                                       "keyword", "", "", 0, kOthers},
    {"[NODE<S>]",                                           "not-alone", "NODE"},
    {"[NODE<[]>]",                                          "not-alone", "NODE"},
    {"[NODE][OSPFv2<.1>]",                                  "not-alone", "OSPFv2"},
    {"[NODE][RSVP-TE<1>]",                                  "not-alone", "RSVP-TE"},
    {"[NODE][<RSVP-TE>][IDENTIFIER1]",                      "not-carried", "RSVP-TE"},
    {"[<RSVP-TE>]",                                         "not-carried", "RSVP-TE"},
    {"[<BGP>][NODE]",                                       "type-first", "BGP", "", 0, kTypes},
    {" [<IDENTIFIER>1][NODE]",                              "type-first", "IDENTIFIER", "", 0, kTypes},
    {"[<LINK>[mt-id1]]",                                    "type-first", "LINK", "", 0, kTypes},
    {"[<index>]",                                           "type-first", "index", "", 0, kTypes},
    {"[NODE][<NODE>]",                                      "twice", "the NLRI type"},
    {"[NODE][<LINK>]",                                      "twice", "the NLRI type"},
    {"[NODE][BGP][<OSPFv2>]",                               "twice", "the protocol"},
    {"[NODE][IDENTIFIER1][<IDENTIFIER>x]",                  "twice", "IDENTIFIER"},
    {"[NODE][LOCAL[as1]][<LOCAL>]",                         "twice", "LOCAL"},
    {"[NODE][UNKNOWN][BGP][<UNKNOWN>x]",                    "twice", "UNKNOWN"},
    {"[NODE][IDENTIFIER<>]",                                "digit", "IDENTIFIER"},
    {"[NODE][IDENTIFIER<->1]",                              "digit", "IDENTIFIER"},
    {" [NODE][IDENTIFIER12<x>34]",                          "digit", "IDENTIFIER"},
    {"[NODE][IDENTIFIER<18446744073709551616>]",            "too-large", "IDENTIFIER", "", UINT64_MAX},
    {"[NODE]<>",                                            "missing", "the protocol", "", 0, kProtocols},
    {" [NODE][IDENTIFIER1][LOCAL[as1]]<> ",                 "missing", "the protocol", "", 0, kProtocols},
    {"[NODE][BGP]<>",                                       "missing", "IDENTIFIER", "", 0, "IDENTIFIER"},
    {"[NODE][BGP][IDENTIFIER1]<>\t",                        "missing", "LOCAL", "", 0, "LOCAL"},
    {"[LINK][BGP][IDENTIFIER1][LOCAL[bgp-router-id1]]<>",   "missing", "REMOTE", "", 0, "REMOTE"},
    {"[LINK][BGP][IDENTIFIER1][LOCAL[bgp-router-id1]][REMOTE[as]]<>", "missing", "LINK", "", 0, "LINK"},
    {"[IPV4-PREFIX][BGP][IDENTIFIER1][LOCAL[as]]<>",        "missing", "PREFIX", "", 0, "PREFIX"},
    {"[TEPOLICY][BGP][IDENTIFIER1][LOCAL[as]]<>",           "missing", "TE", "", 0, "TE"},
    {"[SRV6-SID][BGP][IDENTIFIER1][LOCAL[bgp-router-id1]]<>", "missing", "SID", "", 0, "SID"},
    {"[NODE][BGP][<REMOTE>[as1]]",                          "not-of-type", "REMOTE"},
    {"[NODE][<LINK>[mt-id1]]",                              "not-of-type", "LINK"},
    {"[NODE][<PREFIX>x]",                                   "not-of-type", "PREFIX"},
    {"[LINK][<TE>x]",                                       "not-of-type", "TE"},
    {"[IPV4-PREFIX][<SID>[sid::1]]",                       "not-of-type", "SID"},
    {"<>[NODE]",                                            "mode", "", "", 0, "", 0},
    {"<>[NODE]",                                            "mode", "", "", 3, "", 3},
    {"<>[NODE]",                                            "mode", "", "", 4, "", 4},
    {"<>[NODE]",                                            "mode", "", "", 6, "", 6},
    {"<>[NODE]",                                            "mode", "", "", 7, "", 7},
    {"[<node>]",                                            "keyword", "", "", 0, kTypes, 1},
};

constexpr Reason kNodes[] = {
    {"[NODE][LOCAL<>]",                                     "group", "", "LOCAL"},
    {"[NODE][LOCAL<1>]",                                    "group", "", "LOCAL"},
    {"[NODE][LOCAL[as1]<x>]",                               "group", "", "LOCAL"},
    {"[LINK][REMOTE<a>s1]",                                 "group", "", "REMOTE"},
    {"[NODE][LOCAL[<As1>]]",                                "keyword", "", "LOCAL", 0, kNodeFields},
    {"[NODE][LOCAL[as1][<>]]",                              "keyword", "", "LOCAL", 0, kNodeFields},
    {" [LINK][REMOTE[<mt-id1>]]",                           "keyword", "", "REMOTE", 0, kNodeFields},
    {"[NODE][LOCAL[as1][<as>2]]",                           "twice", "as", "LOCAL"},
    {"[NODE][LOCAL[as][as2][<as>]]",                        "twice", "as", "LOCAL"},
    {"[NODE][LOCAL[ipv4-router-id1.1.1.1][<ipv4-router-id>1.1.1.1]]", "twice", "ipv4-router-id", "LOCAL"},
    {"[NODE][LOCAL[as<0>]]",                                "too-small", "the AS number", "LOCAL", 1},
    {"[NODE][LOCAL[as<4294967296>]]",                       "too-large", "the AS number", "LOCAL", UINT32_MAX},
    {"[NODE][LOCAL[as1.<65536>]]",                          "too-large", "the low part", "LOCAL", 65535},
    {"[NODE][LOCAL[as1<x>]]",                               "character", "as", "LOCAL"},
    {"[NODE][LOCAL[as<1.2.3>]]",                            "notation", "as", "LOCAL", 0, "number high.low"},
    {"[NODE][LOCAL[as1.2<.>3.4.5.6]]",                      "too-many-numbers", "as", "LOCAL", 2},
    {"[NODE][LOCAL[as<000000000001>]]",                     "too-long", "the AS number", "LOCAL", 11},
    {"[LINK][LOCAL[member-as<>]]",                          "empty", "member-as", "LOCAL"},
    {"[LINK][LOCAL[member-as<x>]]",                         "digit", "member-as", "LOCAL"},
    {"[NODE][LOCAL[bgp-ls-identifier<1>]]",                 "ipv4", "bgp-ls-identifier", "LOCAL"},
    {"[NODE][LOCAL[bgp-ls-identifier1.2.3.<256>]]",         "too-large", "an octet", "LOCAL", 255},
    {"[NODE][LOCAL[ospf-area-id<>]]",                       "empty", "ospf-area-id", "LOCAL"},
    {"[NODE][LOCAL[ospf-area-id0.0.0<>]]",                  "ipv4", "ospf-area-id", "LOCAL"},
    {"[NODE][LOCAL[ospf-area-id0.0.0.<00>]]",               "leading-zero", "an octet", "LOCAL"},
    {"[NODE][LOCAL[bgp-router-id<x>]]",                     "router-id", "bgp-router-id", "LOCAL"},
    {"[NODE][LOCAL[bgp-router-id<4294967296>]]",            "router-id", "bgp-router-id", "LOCAL"},
    {"[NODE][LOCAL[bgp-router-id<>]]",                      "empty", "bgp-router-id", "LOCAL"},
    {"[TEPOLICY][LOCAL[bgp-router-id<1>]]",                 "ipv4", "bgp-router-id", "LOCAL"},
    {"[NODE][LOCAL[ipv6-router-id<1.1.1.1>]]",              "ipv6", "ipv6-router-id", "LOCAL"},
    {"[NODE][LOCAL[ipv6-router-id1::<g>]]",                 "ipv6", "ipv6-router-id", "LOCAL"},
    {"[NODE][LOCAL[<igp-router-id>1.1.1.1]][OSPFv2]",       "protocol-first", "igp-router-id", "LOCAL"},
    {"[NODE][BGP][LOCAL[<igp-router-id>1.1.1.1]]",          "not-of-protocol", "igp-router-id", "LOCAL"},
    {"[NODE][ISIS-LEVEL-1][LOCAL[igp-router-id<0000.0000.0001.0>]]", "too-short", "igp-router-id", "LOCAL", 17},
    {"[NODE][ISIS-LEVEL-1][LOCAL[igp-router-id<>]]",        "empty", "igp-router-id", "LOCAL"},
    {"[NODE][ISIS-LEVEL-2][LOCAL[igp-router-id<g>000.0000.0001.00]]", "hexadecimal", "igp-router-id", "LOCAL"},
    {"[NODE][ISIS-LEVEL-2][LOCAL[igp-router-id0000.0000.0001.<.>00]]", "hexadecimal", "igp-router-id", "LOCAL"},
    {"[NODE][ISIS-LEVEL-2][LOCAL[igp-router-id0000.0000.0001.\r\n<>]]", "hexadecimal", "igp-router-id", "LOCAL"},
    {"[NODE][OSPFv2][LOCAL[igp-router-id1.1.1<>]]",         "ipv4", "igp-router-id", "LOCAL"},
    {"[NODE][OSPFv3][LOCAL[igp-router-id1.1.1.1/<2>]]",     "ipv4", "igp-router-id", "LOCAL"},
    {"[NODE][OSPFv3][LOCAL[igp-router-id1.<300>.1.1/2.2.2.2]]", "too-large", "an octet", "LOCAL", 255},
    {"[NODE][BGP][LOCAL[as1][<bgp-router-id>1.1.1.1]]",     "not-of-type", "bgp-router-id", "LOCAL"},
    {"[IPV4-PREFIX][BGP][LOCAL[as1][<member-as>1][bgp-router-id1.1.1.1]]", "not-of-type", "member-as", "LOCAL"},
    {"[IPV6-PREFIX][BGP][LOCAL[<bgp-router-id>1]]",         "not-of-type", "bgp-router-id", "LOCAL"},
    {"[TEPOLICY][BGP][LOCAL[bgp-router-id1.1.1.1][<member-as>1]]", "not-of-type", "member-as", "LOCAL"},
    {"[LINK][OSPFv2][LOCAL[as1]<>]",                        "missing", "ospf-area-id", "LOCAL", 0, "ospf-area-id"},
    {"[LINK][LOCAL[bgp-router-id1]<>][BGP]",                "missing", "ospf-area-id", "LOCAL", 0, "ospf-area-id"},
    {"[SRV6-SID][BGP][LOCAL[as1]<>]",                       "missing", "bgp-router-id", "LOCAL", 0, "bgp-router-id"},
    {"[LINK][OSPFv2][LOCAL[ospf-area-id0.0.0.0][<bgp-router-id>1.1.1.1]]", "not-of-protocol", "bgp-router-id", "LOCAL"},
    {" [LINK][BGP][LOCAL[<ospf-area-id>0.0.0.0][bgp-router-id1.1.1.1]]", "not-of-protocol", "ospf-area-id", "LOCAL"},
};

constexpr Reason kOtherSections[] = {
    {"[LINK][LINK[<oops1>]]",                               "keyword", "", "LINK", 0, kLinkFields},
    {"[LINK][LINK[identifier<1.1.1.1>]]",                   "identifiers", "identifier", "LINK"},
    {"[LINK][LINK[identifier<>]]",                          "empty", "identifier", "LINK"},
    {"[LINK][LINK[identifier1.1.1.<x>.1.1.1.1]]",           "ipv4", "identifier", "LINK"},
    {"[LINK][LINK[identifier1.1.1.1.2.2.2.<256>]]",         "too-large", "an octet", "LINK", 255},
    {"[LINK][LINK[local<1>]]",                              "ipv4", "local", "LINK"},
    {"[LINK][LINK[remote1::2<x>]]",                         "ipv6", "remote", "LINK"},
    {"[LINK][LINK[if-address1.1.1.1][if-address1.1<>]]",    "ipv4", "if-address", "LINK"},
    {"[LINK][LINK[local1.1.1.1][<local>::1]]",              "twice", "local", "LINK"},
    {"[LINK][LINK[mt-id<4294967296>]]",                     "too-large", "mt-id", "LINK", UINT32_MAX},
    {"[LINK][LINK[mt-id<->1]]",                             "digit", "mt-id", "LINK"},
    {"[LINK][BGP][LINK[local1.1.1.1][remote1.1.1.2]<>]",    "missing", "identifier", "LINK", 0, "identifier"},
    {"[LINK][BGP][LINK[identifier1.1.1.1.2.2.2.2][local::1]<>]", "missing", "remote", "LINK", 0, "remote"},
    {"[IPV4-PREFIX][PREFIX[<sid::1>]]",                     "keyword", "", "PREFIX", 0, kPrefixFields},
    {"[IPV4-PREFIX][PREFIX[prefix10.0.0.0<>]]",             "slash", "prefix", "PREFIX"},
    {"[IPV4-PREFIX][PREFIX[prefix10.0.0.0/<>]]",            "digit", "the prefix length", "PREFIX"},
    {"[IPV4-PREFIX][PREFIX[prefix10.0.0.0/8<x>]]",          "digit", "the prefix length", "PREFIX"},
    {"[IPV4-PREFIX][PREFIX[prefix10.0.0.0/<4294967296>]]",  "too-large", "the prefix length", "PREFIX", UINT32_MAX},
    {"[IPV4-PREFIX][PREFIX[prefix<>/8]]",                   "empty", "prefix", "PREFIX"},
    {"[IPV4-PREFIX][PREFIX[prefix<::>/8]]",                 "ipv4", "prefix", "PREFIX"},
    {"[IPV6-PREFIX][PREFIX[prefix<10.0.0.0>/8]]",           "ipv6", "prefix", "PREFIX"},
    {"[IPV4-PREFIX][PREFIX[prefix10.0.0.0/8]<>]",           "missing", "ospf-route-type", "PREFIX", 0, "ospf-route-type"},
    {"[IPV4-PREFIX][PREFIX[ospf-route-type1]<>]",           "missing", "prefix", "PREFIX", 0, "prefix"},
    {"[IPV6-PREFIX][BGP][PREFIX[ospf-route-type1][prefix::/0]<>]", "missing", "mt-id", "PREFIX", 0, "mt-id"},
    {"[TEPOLICY][TE[<flag1>]]",                             "keyword", "", "TE", 0, kTeFields},
    {"[TEPOLICY][TE[Flag<256>]]",                           "too-large", "Flag", "TE", 255},
    {"[TEPOLICY][TE[protocol-origin<4294967296>]]",         "too-large", "protocol-origin", "TE", 255},
    {"[TEPOLICY][TE[endpoint<1>]]",                         "ipv4", "endpoint", "TE"},
    {"[TEPOLICY][TE[originator-address1:<x>]]",             "ipv6", "originator-address", "TE"},
    {"[TEPOLICY][TE[originator-as1.<65536>]]",              "too-large", "the low part", "TE", 65535},
    {"[TEPOLICY][TE[color3][<color>3]]",                    "twice", "color", "TE"},
    {"[TEPOLICY][TE[color3][protocol-origin1]<>]",          "missing", "Flag", "TE", 0, "Flag"},
    {"[SRV6-SID][SID[<prefix::/1>]]",                       "keyword", "", "SID", 0, kSidFields},
    {"[SRV6-SID][SID[sid<1.1.1.1>]]",                       "ipv6", "sid", "SID"},
    {"[SRV6-SID][SID[mt-id1]<>]",                           "missing", "sid", "SID", 0, "sid"},
};
// clang-format on

// The rows without their marks. `texts` keeps what the rows point to.
void AddUnmarked(std::span<const Reason> reasons, std::deque<std::string> &texts, std::vector<Refused> &rows)
{
    for (const Reason &reason : reasons) {
        std::string text(reason.marked);
        const size_t offset = text.find('<');
        const size_t end = text.find('>') - 1;
        text.erase(end + 1, 1).erase(offset, 1);
        rows.push_back({texts.emplace_back(text), reason.rule, static_cast<uint32_t>(offset),
                        static_cast<uint32_t>(end - offset), reason.limit, reason.what, reason.where, 0, reason.mode,
                        reason.expected});
    }
}

TEST_F(BgpLsReasons, EveryRuleHasATextThatBreaksIt)
{
    std::deque<std::string> texts;
    std::vector<Refused> rows;
    AddUnmarked(kGroups, texts, rows);
    AddUnmarked(kNodes, texts, rows);
    AddUnmarked(kOtherSections, texts, rows);
    const std::string longest = "[NODE][UNKNOWN" + std::string(487, 'x') + "]";
    rows.push_back({texts.emplace_back(" " + longest), "too-long", 1, 502, 500});
    CheckRefusals(kBgpLs, rows);
}

TEST_F(BgpLsReasons, AcceptedKeysHaveNone)
{
    std::deque<std::string> texts;
    for (const Sample &sample : Samples()) {
        texts.push_back(sample.text);
        texts.push_back("\t" + sample.text + "  ");
    }
    const std::vector<std::string_view> views(texts.begin(), texts.end());
    CheckAccepted(kBgpLs, views);
    CheckAccepted(kBgpLs, views, 1);
}

// Every text that a key becomes by losing, changing or doubling a character has an answer that agrees with FormatIn's,
// and when it is refused a rule of the type's and a place in the text.
TEST_F(BgpLsReasons, EverySpoiltKeyHasAReason)
{
    const BgpTypeFacts &facts = *Bgp_DescribeType(1299);
    size_t refused = 0;
    const auto check = [&](const std::string &text) {
        const BgpRefusal refusal = Explained(kBgpLs, text);
        const BgpReason &reason = refusal.Reason;
        EXPECT_EQ(reason.Code, CodeOf(kBgpLs, text)) << text;
        if (reason.Code == DT_OK) {
            EXPECT_EQ(Describe(reason), Describe(BgpReason{})) << text;
            return;
        }
        ++refused;
        EXPECT_NE(std::find(facts.Rules, facts.Rules + facts.RuleCount, reason.Rule), facts.Rules + facts.RuleCount)
            << text;
        EXPECT_LE(reason.Offset + reason.Length, text.size()) << text;
        char sentence[200];
        const uint32_t length = Bgp_SayReason(&reason, sentence, sizeof sentence);
        EXPECT_EQ(length, std::strlen(sentence)) << text;
        EXPECT_EQ(std::string(sentence).find("the text"), std::string::npos) << text << ": " << sentence;
    };
    for (const Sample &sample : Samples()) {
        for (size_t i = 0; i < sample.text.size(); ++i) {
            std::string text = sample.text;
            check(text.substr(0, i) + text.substr(i + 1));
            check(text.insert(i, 1, text[i]));
            for (const char other : {'[', ']', '.', ':', '/', ' ', '0', '9', 'x', '\xff'}) {
                text = sample.text;
                text[i] = other;
                check(text);
            }
        }
    }
    EXPECT_GT(refused, 1000u);
}

TEST_F(BgpLsReasons, WithoutMemoryThatIsTheReason)
{
    host::SetFaults({.failAllocation = 1});
    const BgpRefusal refusal = Explained(kBgpLs, " [NODE]");
    host::SetFaults({});
    EXPECT_EQ(Describe(refusal.Reason), "memory 1+6 limit 0 what 'the key' where '' element 0 expected ''");
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_VALUE);
}

TEST_F(BgpLsReasons, AskingTakesAndFreesOneBlock)
{
    for (const char *text :
         {"[NODE][BGP][IDENTIFIER0][LOCAL[as1]]", "[NODE][BGP][IDENTIFIER0][LOCAL[asx]]", "[NODE", "x"}) {
        host::TakeCounters();
        Explained(kBgpLs, text);
        const host::Counters counters = host::TakeCounters();
        EXPECT_EQ(counters.plainAllocations, 1u) << text;
        EXPECT_EQ(counters.allocations, 1u) << text;
        EXPECT_EQ(counters.frees, 1u) << text;
    }
}

TEST_F(BgpLsReasons, AreSentences)
{
    const auto say = [](const char *text) {
        const BgpRefusal refusal = Explained(kBgpLs, text);
        char sentence[200];
        Bgp_SayReason(&refusal.Reason, sentence, sizeof sentence);
        return std::string(sentence);
    };
    EXPECT_EQ(say("[LINK][OSPFv2][LOCAL[as1]]"), "LOCAL: ospf-area-id is missing");
    EXPECT_EQ(say("[NODE][BGP][IDENTIFIER99999999999999999999]"), "IDENTIFIER is at most 18446744073709551615");
    EXPECT_EQ(say("[NODE][BGP][BGP]"), "the protocol may stand only once");
    EXPECT_EQ(say("[NODE][BGP][REMOTE[as1]]"), "this NLRI type takes no REMOTE");
    EXPECT_EQ(say("[TEPOLICY][TE[Flag256]]"), "TE: Flag is at most 255");
    EXPECT_EQ(say("[NODE][RSVP-TE]"), "no key carries RSVP-TE");
    EXPECT_EQ(say("[NODE"), "this bracket is not closed");
}

TEST_F(BgpLsReasons, TheFactsSayWhatTheTypeIs)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(1299);
    ASSERT_NE(facts, nullptr);
    EXPECT_STREQ(facts->Name, "BGPLSPREFIX");
    EXPECT_STREQ(facts->Reference, "RFC 9552, RFC 9514, RFC 9857");
    EXPECT_EQ(facts->TypeId, 1299);
    EXPECT_EQ(facts->ResultTypeId, 1299);
    EXPECT_EQ(facts->ValueLength, 228);
    EXPECT_EQ(facts->CheckedLength, 228);
    EXPECT_EQ(facts->TextSize, 769);
    EXPECT_EQ(facts->ShortestText, 1);
    EXPECT_EQ(facts->LongestText, 500);
    EXPECT_EQ(facts->TypingMode, 2);
    EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
    EXPECT_EQ(facts->Network, BGP_NETWORK_TYPE_FIRST);
    EXPECT_EQ(facts->Lua, BGP_LUA_TYPED);
    EXPECT_EQ(facts->Traits, BGP_TRAIT_READS_SHORT | BGP_TRAIT_PRINTS_BYTES);
    EXPECT_EQ(facts->Layout, nullptr);
    EXPECT_EQ(facts->NotationCount, 0u);
}

} // namespace
} // namespace bgp::test
