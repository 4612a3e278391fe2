#include "support/refusals.h"

namespace bgp::test {
namespace {

class NameIndex : public PlugIn {
protected:
    void SetUp() override
    {
        PlugIn::SetUp();
        host::SetObjectName(0x605c, 7, "core");
    }
    void TearDown() override
    {
        host::ForgetObjectNames();
        PlugIn::TearDown();
    }
};

constexpr struct {
    const char *name;
    uint16_t typeId;
} kTypes[] = {
    {"VRFID2VRFNAME", 24579},  {"BGPPEERGROUPID", 24590}, {"FLOWROUTEID", 24603},
    {"VRFID2CVRFNAME", 24658}, {"BGPID2BGPNAME", 24668},  {"ALIASID2NAME", 24682},
    {"SETID2SETNAME", 24695},  {"PDID2PDNAME", 24707},    {"RTPCLID2NAME", 24718},
};

TEST_F(NameIndex, FactsOfAllNine)
{
    uint32_t index = 0;
    for (const auto &type : kTypes) {
        SCOPED_TRACE(type.name);
        const BgpTypeFacts *facts = Bgp_DescribeType(type.typeId);
        ASSERT_NE(facts, nullptr);
        EXPECT_EQ(facts, Bgp_TypeAt(index++)); // the first of all, in the order of their rows
        EXPECT_STREQ(facts->Name, type.name);
        EXPECT_EQ(facts->TypeId, type.typeId);
        EXPECT_EQ(facts->ResultTypeId, type.typeId);
        EXPECT_EQ(facts->ValueLength, 4);
        EXPECT_EQ(facts->CheckedLength, 0);
        EXPECT_EQ(facts->TextSize, 0);
        EXPECT_EQ(facts->LongestText, 0);
        EXPECT_EQ(facts->TypingMode, 1);
        EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
        EXPECT_EQ(facts->Network, BGP_NETWORK_LAYOUT);
        EXPECT_EQ(facts->Lua, BGP_LUA_ALL);
        EXPECT_EQ(facts->Traits, BGP_TRAIT_HOST_TEXT | BGP_TRAIT_COPIES_RAW);
        const BgpLayout *layout = Bgp_DescribeValue(type.typeId, nullptr, 0);
        ASSERT_EQ(layout, facts->Layout);
        EXPECT_EQ(layout->Length, 4u);
        ASSERT_EQ(layout->FieldCount, 1u);
        EXPECT_EQ(layout->Fields[0].Kind, BGP_FIELD_NUMBER);
    }
}

constexpr Refused kReasons[] = {
    {"", "host", 0, 0},
    {"nobody", "host", 0, 6},
    {" 4294967296", "host", 0, 11},
    {"7", "host", 0, 1, 0, "", "", 0, 0},
    {"7", "host", 0, 1, 0, "", "", 0, 3},
    {"7", "host", 0, 1, 0, "", "", 0, 4},
    {"7", "host", 0, 1, 0, "", "", 0, 7},
};

TEST_F(NameIndex, TheHostsRefusalsAreTold)
{
    constexpr std::string_view kNumber[] = {"7", "4294967295"};
    for (const auto &type : kTypes) {
        CheckRefusals(type.name, kReasons);
        for (const uint8_t mode : kTextModes) {
            CheckAccepted(type.name, kNumber, mode);
        }
    }
}

// Each is asked for its own objects.
TEST_F(NameIndex, TheHostIsAskedForTheTypesOwnObjects)
{
    EXPECT_EQ(Explained("BGPID2BGPNAME", "core").Reason.Code, DT_OK);
    EXPECT_EQ(Explained("VRFID2VRFNAME", "core").Reason.Code, CodeOf("VRFID2VRFNAME", "core"));
    EXPECT_NE(Explained("VRFID2VRFNAME", "core").Reason.Code, DT_OK);
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u); // values are given back
}

} // namespace
} // namespace bgp::test
