// BOLPREFIX: why a text is refused. Every sub-type has its say, and the one that read furthest is what was probably
// meant.
#include "support/refusals.h"

#include <algorithm>
#include <cstring>

namespace bgp::test {
namespace {

class BolPrefixReasons : public PlugIn {};

constexpr std::string_view kType = "BOLPREFIX";

// One text or more of each sub-type, and texts of nobody.
constexpr const char *kTexts[] = {
    "10.1.1.1",
    " \t255.255.255.255 ",
    "0100.0000.0000.0000.0001",
    "1:48:00e0-fc12-3456:32:10.1.1.1",
    "10:128:[2001::1]",
    "10:1.1.1.0:24",
    "100",
    "1.5",
    "1.1.1.1:2.2.2.2:3.3.3.3",
    "100:10.1.1.1",
    "1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4",
    "10.1.1.1:225.1.1.1",
    "100:1.1.1.1:2.2.2.2",
    "10.1.1.1:10.2.2.2",
    "2001::1-ff0e::1",
    "100-2001::1",
    "2001::1-2001::2",
    "100:1",
    "0a0b-0c0d-0e0f",
    "1:2ab",
    "1/10.1.1.1/100",
    "[1][2][10.0.0.1]",
    "[1][2][2001:db8::1]",
    "2001:db8::1",
    "::",
    "::10.1.1.1",
    "1-100-200-10.1.1.1",
    " 1-100-200-2001:db8::1",
    "",
    "  ",
    "x",
    "10.1.1.256",
    "10.1.1.0/24",
    "10/3",
    "1:2:3",
    "2/10.1.1.1/100",
    "[1][2][10.0.0.01]",
    "2001:db8::1/64",
    "10:32:1.1.1.1 a",
    "10.1.1.1\n",
    "10.1.1.1\xff",
};

const DataTypeDescriptor SubTypeRow(uint32_t row)
{
    return Row(g_astBOL_PREFIX_ProcTable[row]);
}

uint32_t WordOf(std::string_view valueHex)
{
    uint32_t word = 0;
    std::memcpy(&word, Bytes(valueHex).data(), sizeof word);
    return word;
}

// The answers are those of the operations, text by text and mode by mode.
void CheckAnswers(std::string_view text, uint8_t mode)
{
    SCOPED_TRACE("'" + std::string(text) + "' in mode " + std::to_string(mode));
    const BgpRefusal refusal = Explained(kType, text, mode);
    const In in = FormatIn(kType, text, mode);
    EXPECT_EQ(refusal.Reason.Code, in.code);
    ASSERT_EQ(refusal.SubTypeCount, uint32_t{BOL_PREFIX_SUBTYPES});
    for (uint32_t row = 0; row < refusal.SubTypeCount; ++row) {
        const BgpReason &reason = refusal.SubTypes[row];
        const DataTypeDescriptor subType = SubTypeRow(row);
        EXPECT_EQ(reason.Code, subType.FormatIn == nullptr ? DT_ERR_FAIL : FormatIn(subType, text, mode).code) << row;
        EXPECT_EQ(reason.Rule == nullptr, reason.Code == DT_OK) << row;
        EXPECT_LE(reason.Offset + reason.Length, text.size()) << row;
    }
    ASSERT_LT(refusal.Closest, refusal.SubTypeCount);
    if (in.code == DT_OK) {
        EXPECT_EQ(refusal.Closest, WordOf(in.value));
        EXPECT_EQ(Describe(refusal.Reason), Describe(BgpReason{}));
    } else {
        EXPECT_EQ(Describe(refusal.Reason), Describe(refusal.SubTypes[refusal.Closest]));
        EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_VALUE);
    }
}

TEST_F(BolPrefixReasons, TheAnswersAreThoseOfTheOperations)
{
    for (const char *text : kTexts) {
        for (const uint8_t mode : kAllModes) {
            CheckAnswers(text, mode);
        }
    }
}

TEST_F(BolPrefixReasons, WhatCannotBeTypedSaysSo)
{
    const BgpRefusal refusal = Explained(kType, "10/3");
    for (const uint32_t row : {9u, 10u, 11u}) {
        EXPECT_STREQ(refusal.SubTypes[row].Rule->Name, "not-typed") << row;
        EXPECT_EQ(refusal.SubTypes[row].Code, DT_ERR_FAIL) << row;
    }
    for (const std::string_view text : {"", "10/3", " x "}) {
        for (const uint8_t mode : kAllModes) {
            const BgpRefusal none = Explained("L2VPNPREFIX", text, mode); // whose FormatIn says 0 and does nothing
            EXPECT_EQ(none.Reason.Code, DT_OK);
            EXPECT_EQ(Describe(none.Reason), Describe(BgpReason{}));
            EXPECT_EQ(none.SubTypeCount, 0u);
        }
    }
}

TEST_F(BolPrefixReasons, AModeThatNoRowServes)
{
    const BgpRefusal refusal = Explained(kType, "10.1.1.1", 4);
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(refusal.Closest, 0u);
    EXPECT_EQ(Describe(refusal.Reason), "mode 0+0 limit 4 what '' where '' element 0 expected ''");
}

// -------------------------------------------------------------------------------------------------------------- facts

TEST_F(BolPrefixReasons, TheSubTypesAsData)
{
    const struct {
        const char *name;
        uint16_t shortest, longest, checked;
        BgpOrder order;
        BgpLua lua;
        uint32_t traits;
    } rows[] = {
        {"IPV4", 1, 63, 89, BGP_ORDER_NONE, BGP_LUA_TYPED, 0},
        {"EVN", 1, 183, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, 0},
        {"NG_TYPE_2", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"NG_TYPE_3", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"NG_TYPE_4_2", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"NG_TYPE_4-3", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"NG_TYPE_5", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"NG_TYPE_6", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"VRFRTEXT", 1, 100, 89, BGP_ORDER_TOTAL, BGP_LUA_TYPED, BGP_TRAIT_KEEPS_SUBTYPE},
        {"L2VPN", 0, 0, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_NO_TEXT},
        {"VPNV4MCAST", 0, 0, 89, BGP_ORDER_TOTAL, BGP_LUA_LOSES, BGP_TRAIT_NO_TEXT},
        {"MDT", 0, 0, 89, BGP_ORDER_TOTAL, BGP_LUA_LOSES, BGP_TRAIT_NO_TEXT},
        {"RPD", 11, 31, 27, BGP_ORDER_TOTAL, BGP_LUA_TYPED, 0},
        {"NG_TYPE_4-1", 1, 159, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, BGP_TRAIT_OTHER_SUBTYPES},
        {"SRPOLICY", 8, 67, 89, BGP_ORDER_TOTAL, BGP_LUA_LOSES, 0},
        {"IPV6", 1, 255, 89, BGP_ORDER_NONE, BGP_LUA_LOSES, 0},
        {"SD-WAN", 6, 69, 89, BGP_ORDER_TOTAL, BGP_LUA_LOSES, 0},
    };
    for (uint16_t row = 0; row < BOL_PREFIX_SUBTYPES; ++row) {
        SCOPED_TRACE(rows[row].name);
        const BgpTypeFacts *facts = Bgp_DescribeSubType(279, row);
        ASSERT_NE(facts, nullptr);
        EXPECT_STREQ(facts->Name, rows[row].name);
        EXPECT_STREQ(facts->Name, g_astBOL_PREFIX_ProcTable[row].Name);
        EXPECT_EQ(facts->SubType, row);
        EXPECT_EQ(facts->TypeId, 279);
        EXPECT_EQ(facts->ResultTypeId, 279);
        EXPECT_EQ(facts->ValueLength, 89);
        EXPECT_EQ(facts->CheckedLength, rows[row].checked);
        EXPECT_EQ(facts->TextSize, 257);
        EXPECT_EQ(facts->ShortestText, rows[row].shortest);
        EXPECT_EQ(facts->LongestText, rows[row].longest);
        EXPECT_EQ(facts->TypingMode, 2);
        EXPECT_EQ(facts->Order, rows[row].order);
        EXPECT_EQ(facts->Network, BGP_NETWORK_LAYOUT);
        EXPECT_EQ(facts->Lua, rows[row].lua);
        const uint32_t readsShort = row == 8 ? 0 : BGP_TRAIT_READS_SHORT;
        EXPECT_EQ(facts->Traits, rows[row].traits | readsShort);
        EXPECT_EQ(facts->Layout == nullptr, row == 1);
    }
    EXPECT_EQ(Bgp_DescribeSubType(279, 17), nullptr);
}

TEST_F(BolPrefixReasons, TheTypesAsData)
{
    const struct {
        uint16_t id;
        const char *name;
        uint16_t result, shortest, longest;
        BgpOrder order;
        BgpNetwork network;
        BgpLua lua;
        uint32_t traits;
    } rows[] = {
        {279, "BOLPREFIX", 279, 1, 255, BGP_ORDER_NONE, BGP_NETWORK_LAYOUT, BGP_LUA_TYPED, 0},
        {295, "VPNV4MCPREFIX", 279, 9, 18, BGP_ORDER_TOTAL, BGP_NETWORK_PAYLOAD, BGP_LUA_LOSES, 0},
        {296, "MDTPREFIX", 279, 7, 35, BGP_ORDER_TOTAL, BGP_NETWORK_PAYLOAD, BGP_LUA_TYPED, 0},
        {294, "L2VPNPREFIX", 294, 0, 0, BGP_ORDER_NONE, BGP_NETWORK_LAYOUT, BGP_LUA_LOSES, BGP_TRAIT_NO_TEXT},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const BgpTypeFacts *facts = Bgp_DescribeType(row.id);
        ASSERT_NE(facts, nullptr);
        EXPECT_STREQ(facts->Name, row.name);
        EXPECT_EQ(facts->TypeId, row.id);
        EXPECT_EQ(facts->ResultTypeId, row.result);
        EXPECT_EQ(facts->SubType, 0);
        EXPECT_EQ(facts->ValueLength, 89);
        EXPECT_EQ(facts->CheckedLength, 89);
        EXPECT_EQ(facts->TextSize, 257);
        EXPECT_EQ(facts->ShortestText, row.shortest);
        EXPECT_EQ(facts->LongestText, row.longest);
        EXPECT_EQ(facts->TypingMode, 2);
        EXPECT_EQ(facts->Order, row.order);
        EXPECT_EQ(facts->Network, row.network);
        EXPECT_EQ(facts->Lua, row.lua);
        EXPECT_EQ(facts->Traits, row.traits | BGP_TRAIT_READS_SHORT);
    }
}

TEST_F(BolPrefixReasons, TheSubTypeWordNamesTheLayout)
{
    const struct {
        uint32_t word;
        std::vector<std::string> fields;
    } rows[] = {
        {0, {"bolType", "bolPrefix"}},
        {2, {"bolType", "bolNgAsNumValue"}},
        {5, {"bolType", "bolNgPrefixCS", "bolNgPrefixCG", "bolNgPrefixOriIP1", "bolNgPrefixOriIP2"}},
        {8, {"bolType", "RtValue", "RtType"}},
        {9, {"bolType", "bolSiteId", "bolLabelOffSet"}},
        {11, {"bolType", "bolMdtPrefix", "bolMdtGrpAddr", "bolMdtMaskLen"}},
        {13, {"bolType", "bolNgPrefixOriIP1", "bolNgPrefixOriIP2"}},
        {15, {"bolType", "bolPrefix"}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.word);
        const BgpLayout *layout = Bgp_DescribeValue(279, &row.word, sizeof row.word);
        ASSERT_NE(layout, nullptr);
        EXPECT_EQ(layout, Bgp_DescribeSubType(279, row.word)->Layout);
        std::vector<std::string> fields;
        for (uint32_t i = 0; i < layout->FieldCount; ++i) {
            fields.emplace_back(layout->Fields[i].Name);
        }
        EXPECT_EQ(fields, row.fields);
        EXPECT_EQ(layout->Length, 89u);
    }
    constexpr uint32_t kUnknown = 17;
    EXPECT_EQ(Bgp_DescribeValue(279, &kUnknown, sizeof kUnknown), nullptr);
    EXPECT_EQ(Bgp_DescribeValue(279, &kUnknown, 3), nullptr);
    EXPECT_EQ(Bgp_DescribeValue(279, nullptr, 89), nullptr);
    constexpr uint8_t kRoute[] = {1, 0, 0, 0, 3};
    ASSERT_NE(Bgp_DescribeValue(279, kRoute, sizeof kRoute), nullptr); // EVPN tells by the route type
    EXPECT_EQ(Bgp_DescribeValue(279, kRoute, 4), nullptr);
}

} // namespace
} // namespace bgp::test
