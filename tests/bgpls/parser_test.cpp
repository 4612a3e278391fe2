#include "bgpls/samples.h"
#include "support/expect.h"

#include <algorithm>
#include <cstring>

namespace bgp::test {
namespace {

class BgpLsParser : public PlugIn {};

// `length` bytes of the value of an accepted key, in hex.
std::string Part(const std::string &text, size_t offset, size_t length)
{
    const std::string value = Value(kBgpLs, text);
    return value.size() == 2 * 228 ? value.substr(2 * offset, 2 * length) : "refused";
}

void ExpectRefused(const std::string &text)
{
    test::ExpectRefused(Row(kBgpLs), text, 1, DT_ERR_INVALID_VALUE);
}

bool Accepts(const std::string &text)
{
    const uint32_t code = CodeOf(kBgpLs, text);
    EXPECT_TRUE(code == DT_OK || code == DT_ERR_INVALID_VALUE) << text << " gives " << code;
    return code == DT_OK;
}

// Keys with a hole.
std::string NodeWith(const std::string &local)
{
    return "[NODE][OSPFv2][IDENTIFIER0][LOCAL" + local + "]";
}
std::string RemoteWith(const std::string &remote)
{
    return "[LINK][OSPFv2][IDENTIFIER0][LOCAL[ospf-area-id0.0.0.0]][LINK[mt-id0]][REMOTE" + remote + "]";
}
std::string LinkWith(const std::string &link, const std::string &protocol = "OSPFv2")
{
    return "[LINK][" + protocol + "][IDENTIFIER0][LOCAL[" +
           (protocol == "BGP" ? "bgp-router-id1.1.1.1" : "ospf-area-id0.0.0.0") + "]][REMOTE[as1]][LINK" + link + "]";
}
std::string PrefixWith(const std::string &prefix, const std::string &protocol = "OSPFv2")
{
    return "[IPV4-PREFIX][" + protocol + "][IDENTIFIER0][LOCAL[as1]][PREFIX" + prefix + "]";
}
std::string Prefix6With(const std::string &prefix, const std::string &protocol = "OSPFv2")
{
    return "[IPV6-PREFIX][" + protocol + "][IDENTIFIER0][LOCAL[as1]][PREFIX" + prefix + "]";
}
std::string TeWith(const std::string &te)
{
    return "[TEPOLICY][SEGMENT-ROUTING][IDENTIFIER0][LOCAL[as1]][TE" + te + "]";
}
std::string SidWith(const std::string &sid, const std::string &protocol = "OSPFv3")
{
    return "[SRV6-SID][" + protocol + "][IDENTIFIER0][LOCAL[" +
           (protocol == "BGP" ? "bgp-router-id1.1.1.1" : "ospf-area-id0.0.0.0") + "]][SID" + sid + "]";
}

constexpr const char *kTe = "[protocol-origin1][Flag2][endpoint1.1.1.1][color3][originator-as4]"
                            "[originator-address2.2.2.2][discriminator5]";

// ----------------------------------------------------------------------------------------------------------- contract

TEST_F(BgpLsParser, ParsesInModesOneAndTwoOnly)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    const std::string answers = "FPPFUFFU";
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(int{mode});
        for (const Sample &sample : Samples()) {
            const In in = FormatIn(row, sample.text, mode);
            if (mode == 1 || mode == 2) {
                EXPECT_EQ(in.code, DT_OK);
                EXPECT_EQ(in.typeId, 1299);
                EXPECT_EQ(in.length, 228);
                EXPECT_EQ(in.value, sample.host);
            } else {
                const char answer = mode < answers.size() ? answers[mode] : 'U';
                EXPECT_EQ(in.code, answer == 'F' ? DT_ERR_FAIL : DT_ERR_MODE_UNSUPPORTED);
                EXPECT_EQ(in.typeId, kUntouched);
                EXPECT_EQ(in.length, kUntouched);
                EXPECT_FALSE(in.bufferSet);
            }
            EXPECT_TRUE(in.textKept);
        }
    }
}

TEST_F(BgpLsParser, TestsItsPointersBeforeTheMode)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    std::string text = Samples()[0].text;
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = &text;
            EXPECT_EQ(row.FormatIn(missing == 0 ? nullptr : &request, 1299, 0, missing == 1 ? nullptr : text.data(),
                                   missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                                   missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR)
                << int{mode} << ' ' << missing;
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, &text);
        }
    }
}

TEST_F(BgpLsParser, TakesAndFreesScratchMemory)
{
    // Without memory for its context the parser refuses the text; only the value's own memory is reported as missing.
    for (const Sample &sample : Samples()) {
        const std::vector<uint32_t> codes = CodesWhileAllocationsFail([&] { return CodeOf(kBgpLs, sample.text); });
        EXPECT_EQ(codes, (std::vector<uint32_t>{DT_ERR_INVALID_VALUE, DT_ERR_NO_MEMORY})) << sample.name;
    }
    host::SetFaults({.failAllocation = 2});
    const In in = FormatIn(kBgpLs, Samples()[0].text);
    host::SetFaults({});
    EXPECT_EQ(in.code, DT_ERR_NO_MEMORY);
    EXPECT_EQ(in.length, 0);
    EXPECT_FALSE(in.bufferSet);

    host::TakeCounters();
    EXPECT_EQ(CodeOf(kBgpLs, "[NODE]x"), DT_ERR_INVALID_VALUE);
    const host::Counters refused = host::TakeCounters();
    EXPECT_EQ(refused.allocations, refused.plainAllocations);
    EXPECT_EQ(refused.allocations, refused.frees);
}

TEST_F(BgpLsParser, ResultsComeFromPlainMemory)
{
    host::TakeCounters();
    EXPECT_EQ(CodeOf(kBgpLs, Samples()[0].text), DT_OK);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, counters.plainAllocations);
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(BgpLsParser, FillsARecordDirectly)
{
    for (const Sample &sample : Samples()) {
        std::string record(228, '\xEE');
        EXPECT_EQ(SYSDT_Str2LSPrefix(sample.text.c_str(), record.data()), DT_OK);
        EXPECT_EQ(Hex(record), sample.host) << sample.name;
    }
    std::string record(228, '\xEE');
    for (const char *text : {"", " ", "[", "[NODE", "[NODE]", "[NODE]x", "[NODE][RSVP-TE]", "[ISIS-LEVEL-1][NODE]",
                             "[NODE][ISIS-LEVEL-1][IDENTIFIER0]", "[NODE] [ISIS-LEVEL-1]", "[NODE][OSPFv2][LOCAL[as0]]",
                             "[NODE][OSPFv2][LOCAL[member-asx]]"}) {
        EXPECT_EQ(SYSDT_Str2LSPrefix(text, record.data()), DT_ERR_FAIL) << text;
    }
}

// ------------------------------------------------------------------------------------------------------ whole groups

TEST_F(BgpLsParser, ReadsTheExamples)
{
    EXPECT_EQ(Value(kBgpLs, "[NODE][ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as100][bgp-ls-identifier1.1.1.1]"
                            "[ospf-area-id0.0.0.0][igp-router-id0000.0000.0001.00]]"),
              Record("01000000 01000000 0000000000000000 6400000000000000 01010101 00000000" + Igp("00000000000100") +
                     "01000000"));
    EXPECT_EQ(Value(kBgpLs, "[LINK][OSPFv2][IDENTIFIER5][LOCAL[as100][ospf-area-id0.0.0.1][igp-router-id1.1.1.1]]"
                            "[REMOTE[as100][igp-router-id2.2.2.2]]"
                            "[LINK[identifier0.0.0.1.0.0.0.2][local10.1.1.1][remote10.1.1.2]]"),
              Record("02000000 03000000 0500000000000000 6400000000000000 00000000 0000000000000000 01000000" +
                     Igp("01010101") + "6400000000000000 00000000 0000000000000000 00000000" + Igp("02020202") +
                     "01000000 02000000 0101010a 0201010a" + std::string(64, '0') + "ffffffff"));
    EXPECT_EQ(Value(kBgpLs, "[IPV4-PREFIX][OSPFv2][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0]"
                            "[igp-router-id1.1.1.1]][PREFIX[ospf-route-type1][prefix10.0.0.0/8]]"),
              Record("03000000 03000000 0000000000000000 6400000000000000 00000000 00000000" + Igp("01010101") +
                     "ffffffff 01000000 0000000a 08"));
}

TEST_F(BgpLsParser, EveryProtocolHasItsNumber)
{
    const struct {
        const char *keyword;
        const char *stored;
    } rows[] = {
        {"ISIS-LEVEL-1", "01000000"}, {"ISIS-LEVEL-2", "02000000"},    {"OSPFv2", "03000000"},
        {"DIRECT", "04000000"},       {"STATIC", "05000000"},          {"OSPFv3", "06000000"},
        {"BGP", "07000000"},          {"SEGMENT-ROUTING", "09000000"},
    };
    for (const auto &row : rows) {
        const std::string protocol = row.keyword;
        EXPECT_EQ(Part("[NODE][" + protocol + "][IDENTIFIER0][LOCAL[as1]]", 0, 8),
                  std::string("01000000") + row.stored);
        EXPECT_EQ(Part(LinkWith("[identifier1.1.1.1.2.2.2.2][local1.1.1.1][remote2.2.2.2]", protocol), 0, 8),
                  std::string("02000000") + row.stored);
        EXPECT_EQ(Part(PrefixWith("[ospf-route-type1][prefix1.0.0.0/8]", protocol), 0, 8),
                  std::string("03000000") + row.stored);
        EXPECT_EQ(Part(Prefix6With("[mt-id0][ospf-route-type1][prefix1::/8]", protocol), 0, 8),
                  std::string("04000000") + row.stored);
        EXPECT_EQ(Part("[TEPOLICY][" + protocol + "][IDENTIFIER0][LOCAL[as1]][TE" + kTe + "]", 0, 8),
                  std::string("05000000") + row.stored);
        EXPECT_EQ(Part(SidWith("[sid::1]", protocol), 0, 8), std::string("06000000") + row.stored);
    }
    // A keyword without a meaning.
    for (const Sample &sample : Samples()) {
        const size_t open = sample.text.find("][") + 2;
        const size_t close = sample.text.find(']', open);
        ExpectRefused(sample.text.substr(0, open) + "RSVP-TE" + sample.text.substr(close));
    }
}

TEST_F(BgpLsParser, ExactKeywordsStandAlone)
{
    const std::string rest = "[IDENTIFIER0][LOCAL[as1]]";
    EXPECT_TRUE(Accepts("[NODE][BGP]" + rest));
    for (const char *head : {"[NODE1][BGP]",
                             "[NODE ][BGP]",
                             "[NOD][BGP]",
                             "[node][BGP]",
                             "[Node][BGP]",
                             "[XNODE][BGP]",
                             "[][BGP]",
                             "[NODE][BGPx]",
                             "[NODE][BG]",
                             "[NODE][bgp]",
                             "[NODE][OSPF]",
                             "[NODE][OSPFV2]",
                             "[NODE][OSPFv22]",
                             "[NODE][ISIS-LEVEL-]",
                             "[NODE][ISIS-LEVEL-3]",
                             "[NODE][ISIS-LEVEL-11]",
                             "[NODE][ISIS]",
                             "[NODE][DIRECT0]",
                             "[NODE][STATICS]",
                             "[NODE][SEGMENT-ROUTINGS]",
                             "[NODE][]",
                             "[NODE[]][BGP]",
                             "[NODE][BGP[]]",
                             "[NODE[BGP]]",
                             "[IPV4-PREFIX1][BGP]",
                             "[SRV6-SIDx][BGP]",
                             "[TEPOLICYx][BGP]",
                             "[\xffNODE][BGP]",
                             "[NODE\xff][BGP]"}) {
        ExpectRefused(head + rest);
    }
}

// "LINK" alone is the NLRI type, with more behind it the section.
TEST_F(BgpLsParser, LinkIsATypeAndASection)
{
    const std::string head = "[LINK][OSPFv2][IDENTIFIER0][LOCAL[ospf-area-id0.0.0.0]][REMOTE[as1]]";
    EXPECT_TRUE(Accepts(head + "[LINK[mt-id1]]"));
    ExpectRefused(head + "[LINK]");       // the type again
    ExpectRefused(head);                  // the section is missing
    ExpectRefused(head + "[LINK[]]");     // a field without a keyword
    ExpectRefused(head + "[LINKx]");      // no field at all
    ExpectRefused(head + "[LINKmt-id1]"); // no field at all
    ExpectRefused(head + "[LINK[mt-id1]x]");
    ExpectRefused(head + "[LINK[mt-id1]][LINK]");
    ExpectRefused(head + "[LINK[mt-id1]][LINK[mt-id1]]");
    ExpectRefused("[LINK[mt-id1]]" + head); // the section before the type
    ExpectRefused("[NODE][OSPFv2][IDENTIFIER0][LOCAL[as1]][LINK]");
    ExpectRefused("[NODE][OSPFv2][IDENTIFIER0][LOCAL[as1]][LINK[mt-id1]]");
    // A type keyword with more behind it is the TE section.
    ExpectRefused("[NODE][OSPFv2][IDENTIFIER0][LOCAL[as1]][TEPOLICY]");
    ExpectRefused("[TEPOLICY" + std::string(kTe) + "]");
}

// Every keyword of the top level behind a whole key: what the key holds already is refused, what its type has no use
// for too, and the two that are discarded pass once.
TEST_F(BgpLsParser, EveryTopLevelKeywordOnceAndTwice)
{
    const std::vector<std::string> groups = {"[NODE]",
                                             "[LINK]",
                                             "[IPV4-PREFIX]",
                                             "[IPV6-PREFIX]",
                                             "[TEPOLICY]",
                                             "[SRV6-SID]",
                                             "[ISIS-LEVEL-1]",
                                             "[ISIS-LEVEL-2]",
                                             "[OSPFv2]",
                                             "[DIRECT]",
                                             "[STATIC]",
                                             "[OSPFv3]",
                                             "[BGP]",
                                             "[RSVP-TE]",
                                             "[SEGMENT-ROUTING]",
                                             "[IDENTIFIER1]",
                                             "[LOCAL[as1]]",
                                             "[LOCAL[ospf-area-id0.0.0.0]]",
                                             "[LOCAL[bgp-router-id1.1.1.1]]",
                                             "[REMOTE[as1]]",
                                             "[LINK[mt-id1]]",
                                             "[LINK[identifier1.1.1.1.2.2.2.2][local1.1.1.1][remote2.2.2.2]]",
                                             "[PREFIX[mt-id1][ospf-route-type1][prefix10.0.0.0/8]]",
                                             "[PREFIX[mt-id1][ospf-route-type1][prefix1::/8]]",
                                             std::string("[TE") + kTe + "]",
                                             "[SID[sid::1]]"};
    for (const Sample &sample : Samples()) {
        if (sample.text.size() > 400) {
            continue; // no room for another group
        }
        SCOPED_TRACE(sample.name);
        for (const std::string &group : groups) {
            ExpectRefused(sample.text + group);
        }
        for (const std::string discarded : {"UNKNOWN", "index"}) {
            for (const std::string rest : {"", "5", "[as1]", "[[]]", "\xff", "[LOCAL[as0]]"}) {
                const std::string group = "[" + discarded + rest + "]";
                EXPECT_EQ(Value(kBgpLs, sample.text + group), sample.host) << group;
                ExpectRefused(sample.text + group + group);
                ExpectRefused(sample.text + group + "[" + discarded + "]");
                ExpectRefused(group + sample.text); // before the type
            }
        }
        EXPECT_EQ(Value(kBgpLs, sample.text + "[index][UNKNOWN]"), sample.host);
        EXPECT_EQ(Value(kBgpLs, sample.text + "[UNKNOWN][index]"), sample.host);
        for (const char *other : {"[unknown]", "[INDEX]", "[Index1]", "[as1]", "[igp-router-id1.1.1.1]", "[mt-id1]",
                                  "[sid::1]", "[prefix10.0.0.0/8]", "[color1]", "[local1.1.1.1]", "[x]", "[]"}) {
            ExpectRefused(sample.text + other);
        }
    }
}

// Each section is refused by every type that has none of it, alone and in the place of the type's own.
TEST_F(BgpLsParser, SectionsBelongToTheirTypes)
{
    const struct {
        const char *type;
        const char *own; // the sections it must have beside the common ones
    } types[] = {
        {"NODE", ""}, {"LINK", "RL"}, {"IPV4-PREFIX", "4"}, {"IPV6-PREFIX", "6"}, {"TEPOLICY", "T"}, {"SRV6-SID", "S"},
    };
    const struct {
        char letter;
        std::string group;
    } sections[] = {
        {'R', "[REMOTE[as1]]"},
        {'L', "[LINK[mt-id1]]"},
        {'4', "[PREFIX[mt-id1][ospf-route-type1][prefix10.0.0.0/8]]"},
        {'6', "[PREFIX[mt-id1][ospf-route-type1][prefix1::/8]]"},
        {'T', std::string("[TE") + kTe + "]"},
        {'S', "[SID[sid::1]]"},
    };
    for (const auto &type : types) {
        const std::string head = std::string("[") + type.type + "][OSPFv2][IDENTIFIER0][LOCAL[ospf-area-id0.0.0.0]]";
        for (unsigned subset = 0; subset < 64; ++subset) {
            std::string text = head;
            std::string letters;
            for (unsigned i = 0; i < 6; ++i) {
                if ((subset >> i & 1) != 0) {
                    text += sections[i].group;
                    letters += sections[i].letter;
                }
            }
            EXPECT_EQ(Accepts(text), letters == type.own) << text;
        }
    }
}

TEST_F(BgpLsParser, EveryCommonGroupIsMandatory)
{
    const std::vector<std::string> types = {"NODE", "LINK", "IPV4-PREFIX", "IPV6-PREFIX", "TEPOLICY", "SRV6-SID"};
    const std::vector<std::string> sections = {
        "",
        "[REMOTE[as1]][LINK[mt-id1]]",
        "[PREFIX[ospf-route-type1][prefix10.0.0.0/8]]",
        "[PREFIX[mt-id1][ospf-route-type1][prefix1::/8]]",
        std::string("[TE") + kTe + "]",
        "[SID[sid::1]]",
    };
    for (size_t i = 0; i < types.size(); ++i) {
        const std::string groups[] = {"[" + types[i] + "]", "[OSPFv2]", "[IDENTIFIER0]",
                                      "[LOCAL[ospf-area-id0.0.0.0]]"};
        for (unsigned subset = 0; subset < 16; ++subset) {
            std::string text;
            for (unsigned group = 0; group < 4; ++group) {
                text += (subset >> group & 1) != 0 ? groups[group] : "";
            }
            EXPECT_EQ(Accepts(text + sections[i]), subset == 15) << text + sections[i];
        }
    }
}

// -------------------------------------------------------------------------------------------------------------- order

// Runs over every order of the groups; legal says whether one is accepted, and all that are give the same bytes.
template <class Legal>
void WalkOrders(std::vector<std::string> groups, Legal legal)
{
    std::string text;
    for (const std::string &group : groups) {
        text += group;
    }
    const std::string value = Value(kBgpLs, text);
    std::sort(groups.begin(), groups.end());
    size_t accepted = 0;
    do {
        text.clear();
        for (const std::string &group : groups) {
            text += group;
        }
        if (legal(groups)) {
            ++accepted;
            EXPECT_EQ(Value(kBgpLs, text), value) << text;
        } else {
            EXPECT_FALSE(Accepts(text)) << text;
        }
    } while (std::next_permutation(groups.begin(), groups.end()));
    EXPECT_NE(accepted, 0u);
}

size_t Place(const std::vector<std::string> &groups, const std::string &head)
{
    for (size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].rfind(head, 0) == 0) {
            return i;
        }
    }
    return groups.size();
}

bool TypeFirst(const std::vector<std::string> &groups)
{
    return groups[0] == "[NODE]" || groups[0] == "[LINK]" || groups[0] == "[IPV4-PREFIX]" ||
           groups[0] == "[IPV6-PREFIX]" || groups[0] == "[TEPOLICY]" || groups[0] == "[SRV6-SID]";
}

TEST_F(BgpLsParser, GroupsComeInAnyOrderBehindTheType)
{
    WalkOrders({"[NODE]", "[BGP]", "[IDENTIFIER5]", "[LOCAL[as1]]", "[index]"}, TypeFirst);
    WalkOrders({"[LINK]", "[OSPFv2]", "[IDENTIFIER5]", "[LOCAL[as1][ospf-area-id0.0.0.1][bgp-ls-identifier1.1.1.1]]",
                "[REMOTE[as2][bgp-ls-identifier2.2.2.2]]", "[LINK[local1.1.1.1]]"},
               TypeFirst);
    WalkOrders({"[IPV4-PREFIX]", "[STATIC]", "[IDENTIFIER5]", "[LOCAL[as1]]",
                "[PREFIX[ospf-route-type1][prefix10.0.0.0/8]]", "[UNKNOWN]"},
               TypeFirst);
    WalkOrders({"[IPV6-PREFIX]", "[DIRECT]", "[IDENTIFIER5]", "[LOCAL[as1]]",
                "[PREFIX[mt-id1][ospf-route-type1][prefix1::/8]]"},
               TypeFirst);
    WalkOrders({"[TEPOLICY]", "[SEGMENT-ROUTING]", "[IDENTIFIER5]", "[LOCAL[as1]]", std::string("[TE") + kTe + "]"},
               TypeFirst);
    WalkOrders({"[SRV6-SID]", "[OSPFv3]", "[IDENTIFIER5]", "[LOCAL[ospf-area-id0.0.0.1]]", "[SID[mt-id1][sid::1]]"},
               TypeFirst);
}

// An IGP router id is read by the protocol, which therefore must have been seen.
TEST_F(BgpLsParser, AnIgpRouterIdComesBehindTheProtocol)
{
    WalkOrders({"[NODE]", "[ISIS-LEVEL-1]", "[IDENTIFIER5]", "[LOCAL[igp-router-id0000.0000.0001.00]]", "[UNKNOWN]"},
               [](const std::vector<std::string> &groups) {
                   return TypeFirst(groups) && Place(groups, "[ISIS") < Place(groups, "[LOCAL");
               });
    WalkOrders({"[LINK]", "[OSPFv2]", "[IDENTIFIER5]", "[LOCAL[igp-router-id1.1.1.1][ospf-area-id0.0.0.1]]",
                "[REMOTE[igp-router-id1.1.1.1]]", "[LINK[local1.1.1.1]]"},
               [](const std::vector<std::string> &groups) {
                   return TypeFirst(groups) && Place(groups, "[OSPF") < Place(groups, "[LOCAL") &&
                          Place(groups, "[OSPF") < Place(groups, "[REMOTE");
               });
}

// A section that comes before the protocol is judged as for one that is not BGP.
TEST_F(BgpLsParser, RulesByProtocolNeedToHaveSeenIt)
{
    const std::string rest = "[IDENTIFIER0][REMOTE[as1]]";
    const std::string bgpLink = "[LINK[identifier1.1.1.1.2.2.2.2][local1.1.1.1][remote2.2.2.2]]";
    EXPECT_TRUE(Accepts("[LINK][BGP][LOCAL[bgp-router-id1.1.1.1]]" + bgpLink + rest));
    EXPECT_FALSE(Accepts("[LINK][LOCAL[bgp-router-id1.1.1.1]][BGP]" + bgpLink + rest));
    EXPECT_FALSE(Accepts("[LINK][BGP][LOCAL[ospf-area-id1.1.1.1]]" + bgpLink + rest));
    EXPECT_TRUE(Accepts("[LINK][LOCAL[ospf-area-id1.1.1.1]][BGP]" + bgpLink + rest));
    EXPECT_FALSE(Accepts("[LINK][BGP][LOCAL[bgp-router-id1.1.1.1]][LINK[local1.1.1.1]]" + rest));
    EXPECT_TRUE(Accepts("[LINK][LINK[local1.1.1.1]][BGP][LOCAL[bgp-router-id1.1.1.1]]" + rest));
    EXPECT_EQ(Part("[LINK][BGP][LOCAL[bgp-router-id1.1.1.1]]" + bgpLink + rest, 212, 4), "00000000");
    EXPECT_EQ(Part("[LINK]" + bgpLink + "[BGP][LOCAL[bgp-router-id1.1.1.1]]" + rest, 212, 4), "ffffffff");

    const std::string local = "[IDENTIFIER0][LOCAL[as1]]";
    EXPECT_TRUE(Accepts("[IPV6-PREFIX][OSPFv3][PREFIX[ospf-route-type1][prefix1::/8]]" + local));
    EXPECT_FALSE(Accepts("[IPV6-PREFIX][PREFIX[ospf-route-type1][prefix1::/8]][OSPFv3]" + local));

    EXPECT_EQ(Part("[SRV6-SID][BGP][SID[mt-id5][sid::1]][LOCAL[bgp-router-id1.1.1.1]][IDENTIFIER0]", 90, 4),
              "ffffffff");
    EXPECT_EQ(Part("[SRV6-SID][SID[mt-id5][sid::1]][BGP][LOCAL[bgp-router-id1.1.1.1]][IDENTIFIER0]", 90, 4),
              "05000000");
}

TEST_F(BgpLsParser, FieldsOfASectionComeInAnyOrder)
{
    const auto walk = [](std::vector<std::string> fields, std::string (*key)(const std::string &)) {
        std::sort(fields.begin(), fields.end());
        std::string first;
        do {
            std::string section;
            for (const std::string &field : fields) {
                section += field;
            }
            const std::string value = Value(kBgpLs, key(section));
            first = first.empty() ? value : first;
            EXPECT_EQ(value, first) << section;
        } while (std::next_permutation(fields.begin(), fields.end()));
    };
    walk({"[as1]", "[bgp-ls-identifier1.1.1.1]", "[ospf-area-id2.2.2.2]", "[igp-router-id3.3.3.3]",
          "[ipv4-router-id4.4.4.4]"},
         NodeWith);
    walk({"[as1]", "[bgp-ls-identifier1.1.1.1]", "[bgp-router-id5]", "[ospf-area-id2.2.2.2]", "[member-as6]",
          "[igp-router-id3.3.3.3]"},
         RemoteWith);
    walk({"[identifier1.1.1.1.2.2.2.2]", "[local3.3.3.3]", "[remote4.4.4.4]", "[mt-id5]"},
         [](const std::string &link) { return LinkWith(link); });
    walk({"[ospf-route-type1]", "[mt-id2]", "[prefix10.0.0.0/8]"},
         [](const std::string &prefix) { return PrefixWith(prefix); });
    walk({"[protocol-origin1]", "[Flag2]", "[endpoint1.1.1.1]", "[color3]", "[originator-as4]",
          "[originator-address2.2.2.2]", "[discriminator5]"},
         TeWith);
    walk({"[mt-id1]", "[sid::1]"}, [](const std::string &sid) { return SidWith(sid); });
}

// ---------------------------------------------------------------------------------------------------- section keywords

struct SectionTable {
    const char *name;
    std::string (*key)(const std::string &);
    std::string whole;                // every field of the section
    std::vector<std::string> repeats; // fields that may come once more
};

const std::vector<SectionTable> &Sections()
{
    static const std::vector<SectionTable> sections = {
        {"LOCAL of a node",
         NodeWith,
         "[as1][bgp-ls-identifier1.1.1.1][ospf-area-id1.1.1.1][igp-router-id1.1.1.1][ipv4-router-id1.1.1.1]"
         "[ipv6-router-id::1]",
         {}},
        {"REMOTE",
         RemoteWith,
         "[as1][bgp-ls-identifier1.1.1.1][bgp-router-id1.1.1.1][ospf-area-id1.1.1.1][igp-router-id1.1.1.1]"
         "[member-as1][ipv4-router-id1.1.1.1][ipv6-router-id::1]",
         {}},
        {"LINK",
         [](const std::string &link) { return LinkWith(link); },
         "[identifier1.1.1.1.2.2.2.2][local1.1.1.1][remote1.1.1.1][link-local-id1.1.1.1][link-remote-id1.1.1.1]"
         "[if-address1.1.1.1][peer-address1.1.1.1][mt-id1]",
         {"[if-address1.1.1.1]", "[peer-address1.1.1.1]"}},
        {"LINK of BGP",
         [](const std::string &link) { return LinkWith(link, "BGP"); },
         "[identifier1.1.1.1.2.2.2.2][local1.1.1.1][remote1.1.1.1][link-local-id1.1.1.1][link-remote-id1.1.1.1]"
         "[if-address1.1.1.1][peer-address1.1.1.1][mt-id1]",
         {"[if-address1.1.1.1]", "[peer-address1.1.1.1]"}},
        {"PREFIX",
         [](const std::string &prefix) { return PrefixWith(prefix); },
         "[mt-id1][ospf-route-type1][prefix1.0.0.0/8]",
         {}},
        {"PREFIX of IPv6",
         [](const std::string &prefix) { return Prefix6With(prefix); },
         "[mt-id1][ospf-route-type1][prefix1::/8]",
         {}},
        {"TE", TeWith, kTe, {}},
        {"SID", [](const std::string &sid) { return SidWith(sid); }, "[mt-id1][sid::1]", {}},
        {"SID of BGP", [](const std::string &sid) { return SidWith(sid, "BGP"); }, "[mt-id1][sid::1]", {"[mt-id1]"}},
    };
    return sections;
}

// One good spelling of every field keyword.
constexpr const char *kFields[] = {"[as1]",
                                   "[bgp-ls-identifier1.1.1.1]",
                                   "[bgp-router-id1.1.1.1]",
                                   "[ospf-area-id1.1.1.1]",
                                   "[igp-router-id1.1.1.1]",
                                   "[member-as1]",
                                   "[ipv4-router-id1.1.1.1]",
                                   "[ipv6-router-id::1]",
                                   "[identifier1.1.1.1.2.2.2.2]",
                                   "[local1.1.1.1]",
                                   "[remote1.1.1.1]",
                                   "[link-local-id1.1.1.1]",
                                   "[link-remote-id1.1.1.1]",
                                   "[if-address1.1.1.1]",
                                   "[peer-address1.1.1.1]",
                                   "[mt-id1]",
                                   "[ospf-route-type1]",
                                   "[prefix1.0.0.0/8]",
                                   "[prefix1::/8]",
                                   "[protocol-origin1]",
                                   "[Flag1]",
                                   "[endpoint1.1.1.1]",
                                   "[color1]",
                                   "[originator-as1]",
                                   "[originator-address1.1.1.1]",
                                   "[discriminator1]",
                                   "[sid::1]"};

// A section that holds all its fields takes no other: its own come once, those of other sections never.
TEST_F(BgpLsParser, EveryFieldKeywordInEverySection)
{
    for (const SectionTable &section : Sections()) {
        SCOPED_TRACE(section.name);
        EXPECT_TRUE(Accepts(section.key(section.whole))) << section.key(section.whole);
        for (const std::string field : kFields) {
            const bool repeats =
                std::find(section.repeats.begin(), section.repeats.end(), field) != section.repeats.end();
            EXPECT_EQ(Accepts(section.key(section.whole + field)), repeats) << field;
            EXPECT_EQ(Accepts(section.key(field + section.whole)), repeats) << field;
        }
    }
}

TEST_F(BgpLsParser, FieldKeywordsAreExact)
{
    for (const SectionTable &section : Sections()) {
        SCOPED_TRACE(section.name);
        for (const char *field : {"[AS1]",
                                  "[As1]",
                                  "[a1]",
                                  "[BGP-LS-IDENTIFIER1.1.1.1]",
                                  "[bgp-ls-id1.1.1.1]",
                                  "[bgp_router_id1.1.1.1]",
                                  "[Igp-router-id1.1.1.1]",
                                  "[OSPF-area-id1.1.1.1]",
                                  "[MT-ID1]",
                                  "[mtid1]",
                                  "[Prefix1.0.0.0/8]",
                                  "[flag1]",
                                  "[FLAG1]",
                                  "[Color1]",
                                  "[colour1]",
                                  "[SID::1]",
                                  "[Sid::1]",
                                  "[NODE]",
                                  "[LINK]",
                                  "[BGP]",
                                  "[LOCAL[as1]]",
                                  "[UNKNOWN]",
                                  "[index]",
                                  "[IDENTIFIER1]",
                                  "[TE]",
                                  "[x]",
                                  "[]",
                                  "[[as1]]",
                                  "[\xff]"}) {
            ExpectRefused(section.key(section.whole + field));
            ExpectRefused(section.key(field + section.whole));
        }
        ExpectRefused(section.key(""));
        ExpectRefused(section.key("x"));
        ExpectRefused(section.key("[]"));
        ExpectRefused(section.key("1"));
        ExpectRefused(section.key(section.whole + "x"));
        ExpectRefused(section.key(section.whole + "]"));
        ExpectRefused(section.key(section.whole + "["));
        ExpectRefused(section.key("x" + section.whole));
        ExpectRefused(section.key(section.whole.substr(1)));
        ExpectRefused(section.key(section.whole.substr(0, section.whole.size() - 1)));
    }
}

// The fields that must not be missing, section by section.
TEST_F(BgpLsParser, MandatoryFieldsOfTheSections)
{
    const struct {
        std::string (*key)(const std::string &);
        std::vector<std::string> fields;
        unsigned mandatory; // bits of the fields
    } rows[] = {
        {[](const std::string &link) { return LinkWith(link, "BGP"); },
         {"[identifier1.1.1.1.2.2.2.2]", "[local1.1.1.1]", "[remote1.1.1.1]", "[mt-id1]", "[if-address1.1.1.1]"},
         7},
        {[](const std::string &link) { return LinkWith(link, "BGP"); },
         {"[identifier1.1.1.1.2.2.2.2]", "[local::1]", "[remote::2]", "[link-local-id1.1.1.1]", "[peer-address::1]",
          "[link-remote-id1.1.1.1]"},
         7},
        {[](const std::string &link) { return LinkWith(link); },
         {"[identifier1.1.1.1.2.2.2.2]", "[local1.1.1.1]", "[remote1.1.1.1]", "[mt-id1]", "[link-local-id1.1.1.1]",
          "[link-remote-id1.1.1.1]", "[if-address1.1.1.1]", "[peer-address1.1.1.1]"},
         0},
        {[](const std::string &link) { return LinkWith(link, "ISIS-LEVEL-2"); },
         {"[identifier1.1.1.1.2.2.2.2]", "[local1.1.1.1]", "[remote1.1.1.1]"},
         0},
        {[](const std::string &prefix) { return PrefixWith(prefix); },
         {"[ospf-route-type1]", "[prefix1.0.0.0/8]", "[mt-id1]"},
         3},
        {[](const std::string &prefix) { return PrefixWith(prefix, "ISIS-LEVEL-1"); },
         {"[ospf-route-type1]", "[prefix1.0.0.0/8]", "[mt-id1]"},
         3},
        {[](const std::string &prefix) { return PrefixWith(prefix, "BGP"); },
         {"[ospf-route-type1]", "[prefix1.0.0.0/8]", "[mt-id1]"},
         3},
        {[](const std::string &prefix) { return Prefix6With(prefix, "OSPFv3"); },
         {"[ospf-route-type1]", "[prefix1::/8]", "[mt-id1]"},
         3},
        {TeWith,
         {"[protocol-origin1]", "[Flag2]", "[endpoint1.1.1.1]", "[color3]", "[originator-as4]",
          "[originator-address2.2.2.2]", "[discriminator5]"},
         127},
        {[](const std::string &sid) { return SidWith(sid); }, {"[sid::1]", "[mt-id1]"}, 1},
        {[](const std::string &sid) { return SidWith(sid, "BGP"); }, {"[sid::1]", "[mt-id1]"}, 1},
    };
    for (const auto &row : rows) {
        for (unsigned subset = 1; subset < 1u << row.fields.size(); ++subset) {
            std::string section;
            for (size_t i = 0; i < row.fields.size(); ++i) {
                section += (subset >> i & 1) != 0 ? row.fields[i] : "";
            }
            EXPECT_EQ(Accepts(row.key(section)), (subset & row.mandatory) == row.mandatory) << row.key(section);
        }
    }
    for (const char *protocol :
         {"ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT", "STATIC", "BGP", "SEGMENT-ROUTING"}) {
        EXPECT_TRUE(Accepts(Prefix6With("[mt-id1][ospf-route-type1][prefix1::/8]", protocol))) << protocol;
        EXPECT_FALSE(Accepts(Prefix6With("[ospf-route-type1][prefix1::/8]", protocol))) << protocol;
        EXPECT_FALSE(Accepts(Prefix6With("[mt-id1][prefix1::/8]", protocol))) << protocol;
        EXPECT_FALSE(Accepts(Prefix6With("[mt-id1][ospf-route-type1]", protocol))) << protocol;
    }
}

// Every combination of node fields, for every type and protocol.
TEST_F(BgpLsParser, NodeFieldsThatATypeDemandsAndForbids)
{
    const char *const protocols[] = {"ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT",
                                     "STATIC",       "OSPFv3",       "BGP",    "SEGMENT-ROUTING"};
    const struct {
        const char *type;
        char rule; // P: no bgp-router-id, no member-as. T: no member-as. L: by protocol.
    } types[] = {{"NODE", 'P'},        {"LINK", 'L'},     {"IPV4-PREFIX", 'P'},
                 {"IPV6-PREFIX", 'P'}, {"TEPOLICY", 'T'}, {"SRV6-SID", 'L'}};
    const std::string sections[] = {"",
                                    "[REMOTE[as1]][LINK[identifier1.1.1.1.2.2.2.2][local::1][remote::2]]",
                                    "[PREFIX[ospf-route-type1][prefix10.0.0.0/8]]",
                                    "[PREFIX[mt-id1][ospf-route-type1][prefix1::/8]]",
                                    std::string("[TE") + kTe + "]",
                                    "[SID[sid::1]]"};
    const char *const fields[] = {
        "[bgp-router-id1.1.1.1]",     "[member-as1]",       "[ospf-area-id1.1.1.1]", "[as1]", "[ipv4-router-id1.1.1.1]",
        "[bgp-ls-identifier1.1.1.1]", "[ipv6-router-id::1]"};
    for (size_t type = 0; type < 6; ++type) {
        for (const std::string protocol : protocols) {
            for (unsigned subset = 1; subset < 128; ++subset) {
                std::string local;
                for (unsigned i = 0; i < 7; ++i) {
                    local += (subset >> i & 1) != 0 ? fields[i] : "";
                }
                const bool routerId = (subset & 1) != 0;
                const bool memberAs = (subset & 2) != 0;
                const bool area = (subset & 4) != 0;
                const bool legal = types[type].rule == 'P'   ? !routerId && !memberAs
                                   : types[type].rule == 'T' ? !memberAs
                                   : protocol == "BGP"       ? routerId && !area
                                                             : area && !routerId;
                const std::string text = std::string("[") + types[type].type + "][" + protocol +
                                         "][IDENTIFIER0][LOCAL" + local + "]" + sections[type];
                EXPECT_EQ(Accepts(text), legal) << text;
            }
        }
    }
}

TEST_F(BgpLsParser, TheRemoteNodeHasNoRules)
{
    for (const std::string protocol : {"ISIS-LEVEL-2", "OSPFv2", "BGP", "DIRECT"}) {
        for (const char *field : {"[as]", "[as1]", "[bgp-ls-identifier1.1.1.1]", "[bgp-router-id1]",
                                  "[ospf-area-id1.1.1.1]", "[member-as1]", "[ipv4-router-id1.1.1.1]",
                                  "[ipv6-router-id::1]", "[bgp-router-id1.1.1.1][ospf-area-id1.1.1.1]"}) {
            const std::string local = protocol == "BGP" ? "[bgp-router-id1.1.1.1]" : "[ospf-area-id1.1.1.1]";
            EXPECT_TRUE(Accepts("[LINK][" + protocol + "][IDENTIFIER0][LOCAL" + local +
                                "][LINK[identifier1.1.1.1.2.2.2.2][local::1][remote::2]][REMOTE" + field + "]"))
                << protocol << field;
        }
    }
}

// --------------------------------------------------------------------------------------------------------- node fields

TEST_F(BgpLsParser, IdentifierKeepsItsLowWord)
{
    const struct {
        const char *text;
        const char *stored; // null: refused
    } rows[] = {
        {"0", "0000000000000000"},
        {"1", "0100000000000000"},
        {"007", "0700000000000000"},
        {"65535", "ffff000000000000"},
        {"65536", "0000010000000000"},
        {"4294967295", "ffffffff00000000"},
        {"4294967296", "0000000000000000"},
        {"4294967301", "0500000000000000"},
        {"18446744073709551615", "ffffffff00000000"},
        {"18446744073709551616", nullptr},
        {"99999999999999999999999", nullptr},
        {"", nullptr},
        {"-1", nullptr},
        {"+1", nullptr},
        {"0x1", nullptr},
        {"1a", nullptr},
        {"a", nullptr},
        {"1.0", nullptr},
        {"[1]", nullptr},
        {"\xb1", nullptr},
    };
    for (const auto &row : rows) {
        const std::string text = std::string("[NODE][BGP][IDENTIFIER") + row.text + "][LOCAL[as1]]";
        if (row.stored == nullptr) {
            ExpectRefused(text);
        } else {
            EXPECT_EQ(Part(text, 8, 8), row.stored) << row.text;
        }
    }
}

TEST_F(BgpLsParser, AsNumbers)
{
    const struct {
        const char *text;
        const char *stored; // null: refused
    } rows[] = {
        {"1", "0100000000000000"},
        {"100", "6400000000000000"},
        {"65535", "ffff000000000000"},
        {"65536", "0000010000000000"},
        {"4294967295", "ffffffff00000000"},
        {"00000000001", "0100000000000000"},
        {"1.0", "0000010001000000"},
        {"65535.65535", "ffffffff01000000"},
        {"0", nullptr},
        {"4294967296", nullptr},
        {"000000000001", nullptr},
        {"0.5", nullptr},
        {"1.65536", nullptr},
        {"65536.1", nullptr},
        {"1.2.3", nullptr},
        {"1.", nullptr},
        {"x", nullptr},
        {"+1", nullptr},
        {"as1", nullptr},
        {"[1]", nullptr},
    };
    for (const auto &row : rows) {
        const std::string value = row.text;
        const std::string as = NodeWith("[as" + value + "]");
        const std::string remote = RemoteWith("[as" + value + "]");
        const std::string member = RemoteWith("[member-as" + value + "]");
        if (row.stored == nullptr) {
            ExpectRefused(as);
            ExpectRefused(remote);
            ExpectRefused(member);
        } else {
            EXPECT_EQ(Part(as, 16, 8), row.stored) << value;
            EXPECT_EQ(Part(remote, 90, 8), row.stored) << value;
            EXPECT_EQ(Part(member, 102, 8), row.stored) << value;
            EXPECT_EQ(
                Part("[SRV6-SID][BGP][IDENTIFIER0][LOCAL[bgp-router-id1][member-as" + value + "]][SID[sid::1]]", 28, 8),
                row.stored)
                << value;
        }
    }
}

// An empty "as" leaves the field absent, an empty "member-as" is none.
TEST_F(BgpLsParser, AnEmptyAsIsNoAs)
{
    EXPECT_EQ(Part(NodeWith("[as]"), 16, 8), "0000000000000000");
    EXPECT_EQ(Part(NodeWith("[as][as100]"), 16, 8), "6400000000000000");
    EXPECT_EQ(Part(NodeWith("[as][as][as1.1]"), 16, 8), "0100010001000000");
    ExpectRefused(NodeWith("[as100][as]"));
    ExpectRefused(NodeWith("[as100][as100]"));
    ExpectRefused(RemoteWith("[member-as]"));
    ExpectRefused(RemoteWith("[member-as][member-as1]"));
}

constexpr const char *kBadIpv4[] = {"",           "1",       "1.2.3",     "1.2.3.4.5", "1.2.3.256", "01.2.3.4",
                                    "1.2.3.04",   "1.2.3.",  ".1.2.3",    "1..2.3",    "1.2.3.-4",  "1.2.3.4/8",
                                    "::1",        "a.b.c.d", "0x1.2.3.4", "1.2.3.4x",  "[1.2.3.4]", "1.2.3.4\xff",
                                    "4294967296", "-1",      "1.2.3.4.",  "+1.2.3.4",  "1,2,3,4"};

TEST_F(BgpLsParser, DottedNodeFields)
{
    const struct {
        const char *keyword;
        size_t node; // where it is stored for a remote node of a link
    } rows[] = {{"bgp-ls-identifier", 98}, {"ospf-area-id", 110}, {"bgp-router-id", 220}};
    const struct {
        const char *text;
        const char *stored;
    } values[] = {
        {"0.0.0.0", "00000000"},   {"1.2.3.4", "04030201"},   {"255.255.255.255", "ffffffff"},
        {"0.0.0.255", "ff000000"}, {"255.0.0.0", "000000ff"},
    };
    for (const auto &row : rows) {
        for (const auto &value : values) {
            EXPECT_EQ(Part(RemoteWith(std::string("[") + row.keyword + value.text + "]"), row.node, 4), value.stored)
                << row.keyword << value.text;
        }
        for (const std::string bad : kBadIpv4) {
            if (row.keyword != std::string("bgp-router-id") || bad != "1") {
                ExpectRefused(RemoteWith(std::string("[") + row.keyword + bad + "]"));
            }
        }
    }
    EXPECT_TRUE(Accepts(NodeWith("[ipv4-router-id1.2.3.4]")));
    for (const std::string bad : kBadIpv4) {
        ExpectRefused(NodeWith("[ipv4-router-id" + bad + "]"));
    }
}

// A BGP router id that is no dotted address may be a decimal number, but not for a TE policy.
TEST_F(BgpLsParser, ABgpRouterIdMayBeANumber)
{
    const struct {
        const char *text;
        const char *stored; // null: refused
    } rows[] = {
        {"0", "00000000"},
        {"1", "01000000"},
        {"16909060", "04030201"},
        {"65535", "ffff0000"},
        {"65536", "00000100"},
        {"4294967295", "ffffffff"},
        {"0000000001", "01000000"},
        {"4294967296", nullptr},
        {"99999999999", nullptr},
        {"", nullptr},
        {"-1", nullptr},
        {"1.2", nullptr},
        {"1x", nullptr},
        {"0x10", nullptr},
    };
    for (const auto &row : rows) {
        const std::string field = std::string("[bgp-router-id") + row.text + "]";
        const std::string link = "[LINK][BGP][IDENTIFIER0][LOCAL" + field +
                                 "][REMOTE[as1]][LINK[identifier1.1.1.1.2.2.2.2][local::1][remote::2]]";
        const std::string sid = "[SRV6-SID][BGP][IDENTIFIER0][LOCAL" + field + "][SID[sid::1]]";
        if (row.stored == nullptr) {
            ExpectRefused(link);
            ExpectRefused(sid);
            ExpectRefused(RemoteWith(field));
        } else {
            EXPECT_EQ(Part(link, 216, 4), row.stored) << row.text;
            EXPECT_EQ(Part(sid, 110, 4), row.stored) << row.text;
            EXPECT_EQ(Part(RemoteWith(field), 220, 4), row.stored) << row.text;
        }
        ExpectRefused("[TEPOLICY][BGP][IDENTIFIER0][LOCAL" + field + "][TE" + kTe + "]");
        ExpectRefused(NodeWith(field));
    }
}

TEST_F(BgpLsParser, TheHeadendOfATePolicy)
{
    const auto key = [](const std::string &local) {
        return "[TEPOLICY][BGP][IDENTIFIER0][LOCAL" + local + "][TE" + kTe + "]";
    };
    EXPECT_EQ(Part(key("[bgp-router-id1.2.3.4]"), 28, 4), "04030201");
    EXPECT_EQ(Part(key("[ipv4-router-id1.2.3.4]"), 32, 4), "04030201");
    EXPECT_EQ(Part(key("[ipv6-router-id2001:db8::1]"), 36, 16), "20010db8000000000000000000000001");
    // Accepted, but the layout has no place for it.
    EXPECT_EQ(Part(key("[as1][ospf-area-id9.9.9.9]"), 0, 228), Part(key("[as1]"), 0, 228));
    EXPECT_EQ(Part("[TEPOLICY][OSPFv2][IDENTIFIER0][LOCAL[igp-router-id9.9.9.9]][TE" + std::string(kTe) + "]", 28, 24),
              std::string(48, '0'));
}

TEST_F(BgpLsParser, Ipv6NodeField)
{
    for (const char *good : {"::", "::1", "2001:db8::1", "2001:DB8::1", "1:2:3:4:5:6:7:8", "::ffff:1.2.3.4"}) {
        EXPECT_TRUE(Accepts(NodeWith(std::string("[ipv6-router-id") + good + "]"))) << good;
    }
    for (const char *bad : {"", "1.2.3.4", ":", ":::", "1:2:3:4:5:6:7", "1:2:3:4:5:6:7:8:9", "12345::", "::g",
                            "fe80::1%eth0", "::1/64", "::1\xff", "1::2::3"}) {
        ExpectRefused(NodeWith(std::string("[ipv6-router-id") + bad + "]"));
        ExpectRefused(SidWith(std::string("[sid") + bad + "]"));
    }
}

TEST_F(BgpLsParser, TheBgpLsIdentifierIsMarkedAsGiven)
{
    EXPECT_EQ(Part(NodeWith("[bgp-ls-identifier0.0.0.0]"), 82, 4), "01000000");
    EXPECT_EQ(Part(NodeWith("[as1]"), 82, 4), "00000000");
    const auto link = [](const std::string &local, const std::string &remote) {
        return "[LINK][OSPFv2][IDENTIFIER0][LOCAL[ospf-area-id0.0.0.0]" + local + "][REMOTE[as1]" + remote +
               "][LINK[mt-id0]]";
    };
    const std::string given = "[bgp-ls-identifier0.0.0.0]";
    EXPECT_EQ(Part(link("", ""), 224, 4), "00000000");
    EXPECT_EQ(Part(link(given, ""), 224, 4), "01000000");
    EXPECT_EQ(Part(link("", given), 224, 4), "02000000");
    EXPECT_EQ(Part(link(given, given), 224, 4), "03000000");
    EXPECT_EQ(
        Part("[LINK][OSPFv2][IDENTIFIER0][REMOTE" + given + "][LOCAL[ospf-area-id0.0.0.0]" + given + "][LINK[mt-id0]]",
             224, 4),
        "03000000");
    EXPECT_EQ(
        Part("[LINK][OSPFv2][IDENTIFIER0][REMOTE" + given + "][LOCAL[ospf-area-id0.0.0.0]][LINK[mt-id0]]", 224, 4),
        "02000000");
}

// ------------------------------------------------------------------------------------------------------- IGP router id

TEST_F(BgpLsParser, IsisRouterIds)
{
    const struct {
        const char *text;
        const char *stored; // eight bytes; null: refused
    } rows[] = {
        {"0000.0000.0000.00", "0000000000000000"},
        {"0000.0000.0001.00", "0000000000010000"},
        {"0123.4567.89ab.cd", "0123456789abcd00"},
        {"FEDC.BA98.7654.32", "fedcba9876543200"},
        {"ffff.ffff.ffff.ff", "ffffffffffffff00"},
        // The separators are not looked at, nor is what stands behind the 17th character.
        {"0123-4567:89ab/cd", "0123456789abcd00"},
        {"0123x4567y89abzcd", "0123456789abcd00"},
        {"01234456778899abc", "012345678899bc00"},
        {"0123.4567.89ab.cd.ef", "0123456789abcd00"},
        {"0123.4567.89ab.cdef", "0123456789abcd00"},
        {"0123.4567.89ab.cdzzzzz", "0123456789abcd00"},
        {"0123.4567.89ab.cd[x]", "0123456789abcd00"},
        // One digit before something else is a digit.
        {"0x23.4567.89ab.cd", "0023456789abcd00"},
        {"0123.4567.89ab.c.", "0123456789ab0c00"},
        {"1g2g.3g4g.5g6g.7g", "0102030405060700"},
        // Too short.
        {"0123.4567.89ab.c", nullptr},
        {"0123.4567.89ab", nullptr},
        {"0123.4567.89ab.", nullptr},
        {"", nullptr},
        {"1.1.1.1", nullptr},
        {"000000000001", nullptr},
        // No digit where one must be.
        {"g123.4567.89ab.cd", nullptr},
        {"01g3.4567.89ab.cd", nullptr},
        {"0123.g567.89ab.cd", nullptr},
        {"0123.45g7.89ab.cd", nullptr},
        {"0123.4567.g9ab.cd", nullptr},
        {"0123.4567.89gb.cd", nullptr},
        {"0123.4567.89ab.gd", nullptr},
        {"-123.4567.89ab.cd", nullptr},
        {"+123.4567.89ab.cd", nullptr},
        {"\xff"
         "123.4567.89ab.cd",
         nullptr},
        {".................", nullptr},
    };
    for (const auto &row : rows) {
        for (const std::string protocol : {"ISIS-LEVEL-1", "ISIS-LEVEL-2"}) {
            const std::string text = "[NODE][" + protocol + "][IDENTIFIER0][LOCAL[igp-router-id" + row.text + "]]";
            if (row.stored == nullptr) {
                ExpectRefused(text);
            } else {
                EXPECT_EQ(Part(text, 32, 50), Igp(row.stored)) << row.text;
            }
        }
    }
}

TEST_F(BgpLsParser, OspfRouterIds)
{
    const struct {
        const char *text;
        const char *stored; // eight bytes; null: refused
    } rows[] = {
        {"0.0.0.0", "0000000000000000"},
        {"1.2.3.4", "0102030400000000"},
        {"255.255.255.255", "ffffffff00000000"},
        {"1.1.1.1/2.2.2.2", "0101010102020202"},
        {"1.2.3.4/5.6.7.8", "0102030405060708"},
        {"1.2.3.4/0.0.0.0", "0102030400000000"},
        {"255.255.255.255/255.255.255.255", "ffffffffffffffff"},
        {"", nullptr},
        {"/", nullptr},
        {"1.2.3.4/", nullptr},
        {"/1.2.3.4", nullptr},
        {"1.2.3.4/5", nullptr},
        {"5/1.2.3.4", nullptr},
        {"1.2.3.4/5.6.7.8/9.9.9.9", nullptr},
        {"1.2.3.4//5.6.7.8", nullptr},
        {"1.2.3.4/5.6.7.8x", nullptr},
        {"16909060", nullptr},
        {"16909060/5", nullptr},
        {"1.2.3", nullptr},
        {"1.2.3.4.5", nullptr},
        {"1.2.3.256", nullptr},
        {"01.2.3.4", nullptr},
        {"0123.4567.89ab.cd", nullptr},
        {"::1", nullptr},
    };
    for (const auto &row : rows) {
        for (const std::string protocol : {"OSPFv2", "OSPFv3"}) {
            const std::string text = "[NODE][" + protocol + "][IDENTIFIER0][LOCAL[igp-router-id" + row.text + "]]";
            if (row.stored == nullptr) {
                ExpectRefused(text);
            } else {
                EXPECT_EQ(Part(text, 32, 50), Igp(row.stored)) << row.text;
            }
        }
    }
    EXPECT_EQ(Part(RemoteWith("[igp-router-id1.2.3.4/5.6.7.8][as77]"), 114, 50), Igp("0102030405060708"));
    EXPECT_EQ(Part(RemoteWith("[igp-router-id1.2.3.4/5.6.7.8][as77]"), 90, 4), "4d000000");
}

TEST_F(BgpLsParser, OtherProtocolsHaveNoIgpRouterId)
{
    for (const std::string protocol : {"DIRECT", "STATIC", "BGP", "SEGMENT-ROUTING"}) {
        for (const char *id : {"1.1.1.1", "0000.0000.0001.00", "1", ""}) {
            ExpectRefused("[NODE][" + protocol + "][IDENTIFIER0][LOCAL[igp-router-id" + id + "]]");
        }
    }
}

// --------------------------------------------------------------------------------------------------------- link fields

TEST_F(BgpLsParser, LinkIdentifiers)
{
    const struct {
        const char *text;
        const char *stored; // null: refused
    } rows[] = {
        {"0.0.0.1.0.0.0.2", "0100000002000000"},
        {"1.2.3.4.5.6.7.8", "0403020108070605"},
        {"255.255.255.255.255.255.255.255", "ffffffffffffffff"},
        {"0.0.0.0.0.0.0.0", "0000000000000000"},
        {"", nullptr},
        {"1.2.3.4", nullptr},
        {"1.2.3.4.", nullptr},
        {"1.2.3.4.5", nullptr},
        {"1.2.3.4.5.6.7", nullptr},
        {"1.2.3.4.5.6.7.8.9", nullptr},
        {"1.2.3.4.5.6.7.8.", nullptr},
        {".1.2.3.4.5.6.7.8", nullptr},
        {"1.2.3.4..5.6.7.8", nullptr},
        {"1.2.3.256.5.6.7.8", nullptr},
        {"1.2.3.4.5.6.7.256", nullptr},
        {"1.2.3.4/5.6.7.8", nullptr},
        {"1.2.3.4:5.6.7.8", nullptr},
        {"12", nullptr},
        {"....", nullptr},
    };
    for (const auto &row : rows) {
        const std::string text = LinkWith(std::string("[identifier") + row.text + "]");
        if (row.stored == nullptr) {
            ExpectRefused(text);
        } else {
            EXPECT_EQ(Part(text, 164, 8), row.stored) << row.text;
        }
    }
    EXPECT_EQ(Part(LinkWith("[link-local-id1.2.3.4]"), 164, 8), "0403020100000000");
    EXPECT_EQ(Part(LinkWith("[link-remote-id5.6.7.8]"), 164, 8), "0000000008070605");
    for (const std::string bad : kBadIpv4) {
        ExpectRefused(LinkWith("[link-local-id" + bad + "]"));
        ExpectRefused(LinkWith("[link-remote-id" + bad + "]"));
    }
    // The later one of two ways to say it stays.
    EXPECT_EQ(Part(LinkWith("[identifier1.2.3.4.5.6.7.8][link-local-id9.9.9.9]"), 164, 8), "0909090908070605");
    EXPECT_EQ(Part(LinkWith("[link-local-id9.9.9.9][identifier1.2.3.4.5.6.7.8]"), 164, 8), "0403020108070605");
}

TEST_F(BgpLsParser, LinkAddresses)
{
    const std::string none(32, '0');
    // Offsets 172 to 211: IPv4 interface, IPv4 neighbour, IPv6 interface, IPv6 neighbour.
    const struct {
        const char *fields;
        std::string stored;
    } rows[] = {
        {"[local1.2.3.4]", "0403020100000000" + none + none},
        {"[remote1.2.3.4]", "0000000004030201" + none + none},
        {"[if-address1.2.3.4]", "0403020100000000" + none + none},
        {"[peer-address1.2.3.4]", "0000000004030201" + none + none},
        {"[local::1]", "0000000000000000"
                       "00000000000000000000000000000001" +
                           none},
        {"[remote::1]", "0000000000000000" + none + "00000000000000000000000000000001"},
        {"[if-address::1]", "0000000000000000"
                            "00000000000000000000000000000001" +
                                none},
        {"[peer-address::1]", "0000000000000000" + none + "00000000000000000000000000000001"},
        {"[if-address1.1.1.1][if-address2.2.2.2]", "0202020200000000" + none + none},
        {"[peer-address1.1.1.1][peer-address2.2.2.2][peer-address3.3.3.3]", "0000000003030303" + none + none},
        {"[if-address1.1.1.1][if-address::1]", "0101010100000000"
                                               "00000000000000000000000000000001" +
                                                   none},
        {"[if-address::1][if-address1.1.1.1]", "0101010100000000"
                                               "00000000000000000000000000000001" +
                                                   none},
        {"[local1.1.1.1][if-address2.2.2.2]", "0202020200000000" + none + none},
        {"[remote1.1.1.1][peer-address2.2.2.2]", "0000000002020202" + none + none},
        {"[local1.1.1.1][if-address::2]", "0101010100000000"
                                          "00000000000000000000000000000002" +
                                              none},
        {"[if-address2.2.2.2][local1.1.1.1]", "0101010100000000" + none + none},
        {"[peer-address2.2.2.2][remote1.1.1.1]", "0000000001010101" + none + none},
        {"[if-address1.1.1.1][peer-address2.2.2.2][if-address::3][peer-address::4]",
         "0101010102020202"
         "00000000000000000000000000000003"
         "00000000000000000000000000000004"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Part(LinkWith(row.fields), 172, 40), row.stored) << row.fields;
    }
    for (const std::string keyword : {"local", "remote", "if-address", "peer-address"}) {
        for (const std::string bad : kBadIpv4) {
            if (bad != "::1") {
                ExpectRefused(LinkWith("[" + keyword + bad + "]"));
            }
        }
        for (const char *bad : {":", ":::", "1.2.3.4:5", "::1.2.3", "::g", "1:2:3:4:5:6:7:8:9"}) {
            ExpectRefused(LinkWith("[" + keyword + bad + "]"));
        }
    }
}

struct NumberCase {
    const char *text;
    const char *stored; // null: refused
};

constexpr NumberCase kWords[] = {
    {"0", "00000000"},
    {"1", "01000000"},
    {"0001", "01000000"},
    {"65535", "ffff0000"},
    {"65536", "00000100"},
    {"4294967294", "feffffff"},
    {"4294967295", "ffffffff"},
    {"4294967296", nullptr},
    {"42949672950", nullptr},
    {"18446744073709551617", nullptr},
    {"", nullptr},
    {"-1", nullptr},
    {"+1", nullptr},
    {"1.0", nullptr},
    {"0x10", nullptr},
    {"1x", nullptr},
    {"x", nullptr},
    {"\xb1", nullptr},
    {"1/2", nullptr},
};

constexpr NumberCase kBytes[] = {
    {"0", "00"},
    {"1", "01"},
    {"007", "07"},
    {"255", "ff"},
    {"256", nullptr},
    {"257", nullptr},
    {"65535", nullptr},
    {"65536", nullptr},
    {"4294967295", nullptr},
    {"4294967296", nullptr},
    {"4294967297", nullptr},
    {"", nullptr},
    {"-1", nullptr},
    {"x", nullptr},
    {"1x", nullptr},
};

TEST_F(BgpLsParser, NumbersOfThirtyTwoBits)
{
    const std::string te = kTe;
    const auto without = [&te](const std::string &field) {
        std::string rest = te;
        rest.erase(rest.find(field), field.size());
        return rest;
    };
    for (const NumberCase &row : kWords) {
        const std::string number = row.text;
        const struct {
            std::string text;
            size_t offset;
        } places[] = {
            {LinkWith("[mt-id" + number + "]"), 212},
            {LinkWith("[identifier1.1.1.1.2.2.2.2][local::1][remote::2][mt-id" + number + "]", "BGP"), 212},
            {PrefixWith("[ospf-route-type1][prefix1.0.0.0/8][mt-id" + number + "]"), 82},
            {PrefixWith("[ospf-route-type" + number + "][prefix1.0.0.0/8]"), 86},
            {Prefix6With("[ospf-route-type1][prefix1::/8][mt-id" + number + "]"), 82},
            {Prefix6With("[ospf-route-type" + number + "][prefix1::/8][mt-id1]"), 86},
            {TeWith(without("[color3]") + "[color" + number + "]"), 75},
            {TeWith(without("[discriminator5]") + "[discriminator" + number + "]"), 108},
            {SidWith("[sid::1][mt-id" + number + "]"), 90},
        };
        for (const auto &place : places) {
            if (row.stored == nullptr) {
                ExpectRefused(place.text);
            } else {
                EXPECT_EQ(Part(place.text, place.offset, 4), row.stored) << place.text;
            }
        }
    }
}

TEST_F(BgpLsParser, NumbersOfEightBits)
{
    for (const NumberCase &row : kBytes) {
        const std::string number = row.text;
        const std::string origin = TeWith("[protocol-origin" + number +
                                          "][Flag2][endpoint1.1.1.1][color3][originator-as4]"
                                          "[originator-address2.2.2.2][discriminator5]");
        const std::string flag = TeWith("[protocol-origin1][Flag" + number +
                                        "][endpoint1.1.1.1][color3][originator-as4]"
                                        "[originator-address2.2.2.2][discriminator5]");
        if (row.stored == nullptr) {
            ExpectRefused(origin);
            ExpectRefused(flag);
        } else {
            EXPECT_EQ(Part(origin, 52, 2), std::string(row.stored) + "02") << number;
            EXPECT_EQ(Part(flag, 52, 2), std::string("01") + row.stored) << number;
        }
    }
}

TEST_F(BgpLsParser, AnAbsentMtIdIsAllOnes)
{
    EXPECT_EQ(Part(LinkWith("[local1.1.1.1]"), 212, 4), "ffffffff");
    EXPECT_EQ(Part(LinkWith("[identifier1.1.1.1.2.2.2.2][local::1][remote::2]", "BGP"), 212, 4), "00000000");
    EXPECT_EQ(Part(PrefixWith("[ospf-route-type1][prefix1.0.0.0/8]"), 82, 4), "ffffffff");
    EXPECT_EQ(Part(PrefixWith("[ospf-route-type1][prefix1.0.0.0/8]", "BGP"), 82, 4), "ffffffff");
    EXPECT_EQ(Part(Prefix6With("[ospf-route-type1][prefix1::/8]", "OSPFv3"), 82, 4), "ffffffff");
    EXPECT_EQ(Part(SidWith("[sid::1]"), 90, 4), "ffffffff");
    EXPECT_EQ(Part(SidWith("[sid::1]", "BGP"), 90, 4), "ffffffff");
}

// --------------------------------------------------------------------------------------------- prefix, TE and SID
// fields

TEST_F(BgpLsParser, Prefixes)
{
    const struct {
        const char *text;
        const char *stored; // address and length; null: refused
    } rows[] = {
        {"10.0.0.0/8", "0000000a08"},
        {"10.1.2.3/8", "0302010a08"},
        {"0.0.0.0/0", "0000000000"},
        {"255.255.255.255/32", "ffffffff20"},
        {"10.0.0.0/33", "0000000a21"},
        {"10.0.0.0/008", "0000000a08"},
        {"10.0.0.0/255", "0000000aff"},
        {"10.0.0.0/256", "0000000a00"},
        {"10.0.0.0/300", "0000000a2c"},
        {"10.0.0.0/65536", "0000000a00"},
        {"10.0.0.0/4294967295", "0000000aff"},
        {"10.0.0.0/4294967296", nullptr},
        {"10.0.0.0", nullptr},
        {"10.0.0.0/", nullptr},
        {"/8", nullptr},
        {"/", nullptr},
        {"", nullptr},
        {"10.0.0.0/8/9", nullptr},
        {"10.0.0.0//8", nullptr},
        {"10.0.0.0/-1", nullptr},
        {"10.0.0.0/+8", nullptr},
        {"10.0.0.0/x", nullptr},
        {"10.0.0.0/8x", nullptr},
        {"10.0.0/8", nullptr},
        {"10.0.0.256/8", nullptr},
        {"010.0.0.0/8", nullptr},
        {"8/10.0.0.0", nullptr},
        {"1::/8", nullptr},
        {"::ffff:10.0.0.0/104", nullptr},
    };
    for (const auto &row : rows) {
        const std::string text = PrefixWith(std::string("[ospf-route-type1][prefix") + row.text + "]");
        if (row.stored == nullptr) {
            ExpectRefused(text);
        } else {
            EXPECT_EQ(Part(text, 90, 5), row.stored) << row.text;
        }
    }
}

TEST_F(BgpLsParser, Ipv6Prefixes)
{
    const struct {
        const char *text;
        const char *stored; // address and length; null: refused
    } rows[] = {
        {"::/0", "0000000000000000000000000000000000"},
        {"2001:db8::/32", "20010db800000000000000000000000020"},
        {"2001:DB8::1/128", "20010db800000000000000000000000180"},
        {"1:2:3:4:5:6:7:8/129", "0001000200030004000500060007000881"},
        {"::ffff:1.2.3.4/300", "00000000000000000000ffff010203042c"},
        {"::/256", "0000000000000000000000000000000000"},
        {"::/4294967295", "00000000000000000000000000000000ff"},
        {"::/4294967296", nullptr},
        {"::", nullptr},
        {"::/", nullptr},
        {"/64", nullptr},
        {"", nullptr},
        {"10.0.0.0/8", nullptr},
        {"1::2::3/64", nullptr},
        {"2001:db8::/64/64", nullptr},
        {"2001:db8::/6x", nullptr},
        {"2001:db8::g/64", nullptr},
    };
    for (const auto &row : rows) {
        const std::string text = Prefix6With(std::string("[mt-id0][ospf-route-type1][prefix") + row.text + "]");
        if (row.stored == nullptr) {
            ExpectRefused(text);
        } else {
            EXPECT_EQ(Part(text, 90, 17), row.stored) << row.text;
        }
    }
}

TEST_F(BgpLsParser, TeAddresses)
{
    const std::string zero(32, '0');
    const struct {
        const char *text;
        std::string stored; // 21 bytes; empty: refused
    } rows[] = {
        {"1.2.3.4", "04030201" + zero + "00"},
        {"0.0.0.0", "00000000" + zero + "00"},
        {"255.255.255.255", "ffffffff" + zero + "00"},
        {"::", "00000000" + zero + "01"},
        {"2001:db8::1", "00000000"
                        "20010db8000000000000000000000001"
                        "01"},
        {"::ffff:1.2.3.4", "00000000"
                           "00000000000000000000ffff01020304"
                           "01"},
        {"", ""},
        {"1.2.3", ""},
        {"1.2.3.4.5", ""},
        {"1.2.3.256", ""},
        {":", ""},
        {"1.2.3.4:", ""},
        {"::g", ""},
        {"1", ""},
        {"16909060", ""},
    };
    for (const auto &row : rows) {
        const std::string address = row.text;
        const std::string endpoint = TeWith("[protocol-origin1][Flag2][endpoint" + address +
                                            "][color3][originator-as4][originator-address2.2.2.2][discriminator5]");
        const std::string originator =
            TeWith("[protocol-origin1][Flag2][endpoint1.1.1.1][color3][originator-as4][originator-address" + address +
                   "][discriminator5]");
        if (row.stored.empty()) {
            ExpectRefused(endpoint);
            ExpectRefused(originator);
        } else {
            EXPECT_EQ(Part(endpoint, 54, 21), row.stored) << address;
            EXPECT_EQ(Part(originator, 87, 21), row.stored) << address;
        }
    }
}

// The originator's AS is of the extended form: 0 is one.
TEST_F(BgpLsParser, TheOriginatorAs)
{
    const NumberCase rows[] = {
        {"0", "0000000000000000"},
        {"1", "0100000000000000"},
        {"65536", "0000010000000000"},
        {"4294967295", "ffffffff00000000"},
        {"1.0", "0000010001000000"},
        {"65535.65535", "ffffffff01000000"},
        {"4294967296", nullptr},
        {"0.5", nullptr},
        {"1.65536", nullptr},
        {"", nullptr},
        {"x", nullptr},
        {"1.2.3", nullptr},
        {"000000000001", nullptr},
    };
    for (const NumberCase &row : rows) {
        const std::string text =
            TeWith(std::string("[protocol-origin1][Flag2][endpoint1.1.1.1][color3][originator-as") + row.text +
                   "][originator-address2.2.2.2][discriminator5]");
        if (row.stored == nullptr) {
            ExpectRefused(text);
        } else {
            EXPECT_EQ(Part(text, 79, 8), row.stored) << row.text;
        }
    }
}

TEST_F(BgpLsParser, SidsAndTheirMtId)
{
    EXPECT_EQ(Part(SidWith("[sid2001:db8::1]"), 94, 16), "20010db8000000000000000000000001");
    ExpectRefused(SidWith("[sid1.2.3.4]"));
    ExpectRefused(SidWith("[mt-id1]"));
    ExpectRefused(SidWith("[sid::1][mt-id1][mt-id1]"));
    ExpectRefused(SidWith("[sid::1][mt-idx]"));
    // Under BGP the MT id is not looked at, however often it comes.
    for (const char *mt : {"[mt-id1]", "[mt-id1][mt-id2][mt-id3]", "[mt-id]", "[mt-idx]", "[mt-id4294967296]",
                           "[mt-id[x][y]]", "[mt-id\xff]"}) {
        EXPECT_EQ(Part(SidWith(std::string(mt) + "[sid::1]", "BGP"), 90, 20), "ffffffff"
                                                                              "00000000000000000000000000000001")
            << mt;
        ExpectRefused(SidWith(mt, "BGP"));
    }
    ExpectRefused(SidWith("[sid::1][sid::1]", "BGP"));
}

// -------------------------------------------------------------------------------------------------- lengths and
// nesting

TEST_F(BgpLsParser, TextsOfUpTo500Characters)
{
    const std::string key = "[NODE][BGP][IDENTIFIER0][LOCAL[as1]]";
    const std::string value = Value(kBgpLs, key);
    const auto ofLength = [&key](size_t length, char fill) {
        const std::string frame = key + "[UNKNOWN]";
        std::string text = frame;
        text.insert(text.size() - 1, std::string(length - frame.size(), fill));
        EXPECT_EQ(text.size(), length);
        return text;
    };
    for (const char fill : {'x', '\xff', '0', '\n'}) {
        for (const size_t length : {46u, 100u, 255u, 256u, 257u, 498u, 499u, 500u}) {
            EXPECT_EQ(Value(kBgpLs, ofLength(length, fill)), value) << length;
        }
        for (const size_t length : {501u, 502u, 511u, 512u, 513u, 1000u, 70000u}) {
            ExpectRefused(ofLength(length, fill));
        }
    }
    // Brackets fill as well as letters do.
    EXPECT_EQ(Value(kBgpLs, key + "[UNKNOWN" + std::string(227, '[') + std::string(227, ']') + "]"), value);
    EXPECT_EQ(Value(kBgpLs, key + "[UNKNOWN" + std::string(227, '[') + std::string(227, ']') + "x]"), value);
    ExpectRefused(key + "[UNKNOWN" + std::string(228, '[') + std::string(228, ']') + "]");

    // A single group of all 498 characters that a text has room for, and one more.
    ExpectRefused("[UNKNOWN" + std::string(491, 'x') + "]");
    ExpectRefused("[UNKNOWN" + std::string(492, 'x') + "]");
}

TEST_F(BgpLsParser, OuterBlanksDoNotCount)
{
    const std::string key = "[NODE][BGP][IDENTIFIER0][LOCAL[as1]][UNKNOWN]";
    std::string full = key;
    full.insert(full.size() - 1, std::string(500 - key.size(), 'x'));
    const std::string value = Value(kBgpLs, full);
    const std::string spaces(300, ' ');
    const std::string tabs(300, '\t');
    for (const std::string &before : {std::string(), std::string(" "), spaces, tabs, spaces + tabs}) {
        for (const std::string &behind : {std::string(), std::string("\t"), tabs, spaces + tabs + spaces}) {
            EXPECT_EQ(Value(kBgpLs, before + full + behind), value);
            ExpectRefused(before + behind);
            ExpectRefused(before + full + "x" + behind);
        }
    }
}

TEST_F(BgpLsParser, InnerBlanksAreRefused)
{
    for (const Sample &sample : Samples()) {
        for (size_t i = 1; i < sample.text.size(); ++i) {
            for (const char blank : {' ', '\t'}) {
                std::string text = sample.text;
                text.insert(i, 1, blank);
                EXPECT_EQ(CodeOf(kBgpLs, text), DT_ERR_INVALID_VALUE) << text;
            }
        }
    }
    ExpectRefused("[NODE] [ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as1]]");
    ExpectRefused("[NODE][BGP][IDENTIFIER0][LOCAL[as1]][UNKNOWNa b]");
}

// Only blanks and brackets part a key, wherever they stand: at each place of three words of eight characters.
TEST_F(BgpLsParser, EveryOtherCharacterMayStandInAnIgnoredGroup)
{
    const std::string key = "[NODE][BGP][IDENTIFIER0][LOCAL[as1]][UNKNOWN]";
    const std::string value = Value(kBgpLs, key);
    for (int character = 1; character < 256; ++character) {
        const bool parts = std::string_view(" \t[]").find(static_cast<char>(character)) != std::string_view::npos;
        for (size_t place = 0; place <= 24; ++place) {
            std::string text = key;
            text.insert(text.size() - 1, std::string(24, 'x'));
            text.insert(key.size() - 1 + place, 1, static_cast<char>(character));
            const In in = FormatIn(kBgpLs, text);
            EXPECT_EQ(in.code, parts ? DT_ERR_INVALID_VALUE : DT_OK) << character << " at " << place;
            EXPECT_EQ(in.value, parts ? "" : value) << character << " at " << place;
        }
    }
}

TEST_F(BgpLsParser, EveryCutTextIsRefused)
{
    for (const Sample &sample : Samples()) {
        for (size_t length = 0; length < sample.text.size(); ++length) {
            EXPECT_EQ(CodeOf(kBgpLs, sample.text.substr(0, length)), DT_ERR_INVALID_VALUE)
                << sample.text.substr(0, length);
        }
    }
}

TEST_F(BgpLsParser, EveryMissingOrDoubledBracketIsRefused)
{
    for (const Sample &sample : Samples()) {
        for (size_t i = 0; i < sample.text.size(); ++i) {
            if (sample.text[i] != '[' && sample.text[i] != ']') {
                continue;
            }
            std::string without = sample.text;
            without.erase(i, 1);
            std::string twice = sample.text;
            twice.insert(i, 1, sample.text[i]);
            EXPECT_EQ(CodeOf(kBgpLs, without), DT_ERR_INVALID_VALUE) << without;
            EXPECT_EQ(CodeOf(kBgpLs, twice), DT_ERR_INVALID_VALUE) << twice;
        }
    }
}

TEST_F(BgpLsParser, TextsThatAreNoGroups)
{
    const std::string key = "[NODE][BGP][IDENTIFIER0][LOCAL[as1]]";
    EXPECT_TRUE(Accepts(key));
    for (const std::string text : {"",
                                   "[",
                                   "]",
                                   "[]",
                                   "[[]]",
                                   "][",
                                   "NODE",
                                   "x",
                                   "[NODE",
                                   "NODE]",
                                   "]NODE[",
                                   "[NODE]x",
                                   "x[NODE]",
                                   "[NODE]]",
                                   "[[NODE]]",
                                   "[NODE][ISIS-LEVEL-1",
                                   "(NODE)(BGP)",
                                   "{NODE}",
                                   "1.1.1.1",
                                   "65535:1",
                                   "2001:db8::1",
                                   "0",
                                   "\xff",
                                   "[NODE],[BGP],[IDENTIFIER0],[LOCAL[as1]]",
                                   "[NODE]\n[BGP][IDENTIFIER0][LOCAL[as1]]",
                                   "internet"}) {
        ExpectRefused(text);
    }
    for (const std::string tail : {"x", "]", "[", "[]", "[[", "[]]", "\n", "\xff", ",", "[x", "x]"}) {
        ExpectRefused(key + tail);
        ExpectRefused(tail + key);
    }
    ExpectRefused("[" + key + "]");
}

TEST_F(BgpLsParser, OtherTypesTextsAreRefused)
{
    for (const char *text : {"65535.1", "100:1", "0x1234:5678", "10.1.1.0/24", "[1][100][10.0.0.1]",
                             "[2]:[77][7,0][10.219.39.39,1,656877351][10.70.1.1,22][10.106.102.3,10.246.1.30]/616",
                             "[V][B][I0x0][N[c65001][q1.1.1.1]]"}) {
        ExpectRefused(text);
    }
}

} // namespace
} // namespace bgp::test
