// What the types of route distinguishers, route targets and their kin say of themselves. The notations that six of them
// share are stated once.
#include "support/harness.h"

#include <cstring>
#include <vector>

namespace bgp::test {
namespace {

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
