#include "support/harness.h"

#include <cstring>
#include <map>

namespace bgp::test {
namespace {

class Init : public PlugIn {
protected:
    void TearDown() override
    {
        for (const uint32_t typeId : {0x6003u, 321u, lastRefused}) {
            host::RefuseRow(typeId, 0);
        }
        host::InitLinkedPlugIn(Bgp_InitDataType);
        PlugIn::TearDown();
    }
    uint32_t lastRefused = 321;
};

// Which slots a row fills: In Out Check Help Compare LuaSet LuaGet Endian, a dot for an empty one.
std::string Slots(const DataTypeDescriptor &row)
{
    const bool filled[] = {row.FormatIn != nullptr, row.FormatOut != nullptr, row.Check != nullptr,
                           row.Help != nullptr,     row.Compare != nullptr,   row.LuaSet != nullptr,
                           row.LuaGet != nullptr,   row.Endian != nullptr};
    std::string slots;
    for (size_t i = 0; i < 8; ++i) {
        slots += filled[i] ? "IOCHcSGE"[i] : '.';
    }
    return slots;
}

struct Expected {
    const char *name;
    uint16_t typeId, length, kind;
    const char *slots;
};

// Types that are added stand behind these.
constexpr Expected kRows[] = {
    {"VRFID2VRFNAME", 24579, 4, 6, "IO..cSG."},
    {"BGPPEERGROUPID", 24590, 4, 6, "IO..cSG."},
    {"FLOWROUTEID", 24603, 4, 6, "IO..cSG."},
    {"VRFID2CVRFNAME", 24658, 4, 6, "IO..cSG."},
    {"BGPID2BGPNAME", 24668, 4, 6, "IO..cSG."},
    {"ALIASID2NAME", 24682, 4, 6, "IO..cSG."},
    {"SETID2SETNAME", 24695, 4, 6, "IO..cSG."},
    {"PDID2PDNAME", 24707, 4, 6, "IO..cSG."},
    {"RTPCLID2NAME", 24718, 4, 6, "IO..cSG."},
    {"ASNUM", 255, 8, 26, "IOCHcSGE"},
    {"COMMUNITY", 256, 8, 26, "IOCHcSGE"},
    {"LARGECOMMUNITY", 321, 16, 26, "IOCHcSGE"},
    {"EXTCOMMUNITY", 257, 12, 26, "IOCHcSGE"},
    {"BGPLSPREFIX", 1299, 228, 26, "IOCHcSGE"},
    {"VRFRT", 258, 12, 26, "IOCHcSGE"},
    {"VRFRD", 259, 12, 26, "IOCHcSGE"},
    {"SOO", 260, 12, 26, "IOCHcSGE"},
    {"BOLPREFIX", 279, 89, 26, "IOCHcSG."},
    {"BOLRD", 280, 16, 26, "IOCHcSG."},
    {"VPNV4MCPREFIX", 295, 8, 26, "IOCHcSGE"},
    {"MDTPREFIX", 296, 12, 26, "IOCHcSGE"},
    {"L2VPNPREFIX", 294, 4, 26, "IOCHcSG."},
    {"TIME_RANGE", 284, 4, 6, "I..H.SG."},
    {"ASNUMEXT", 285, 8, 26, "IOCHcSGE"},
    {"ATTRIDBITMAP", 290, 32, 26, ".OCHcSGE"},
    {"CVRFNAME", 292, 32, 25, "IO.HcSG."},
    {"VPNID", 303, 8, 26, "IOCHcSGE"},
    {"VRFRTV6", 320, 24, 26, "IOCHcSGE"},
    {"ASNUM_ENHANCE", 325, 1280, 26, "IOCHcSGE"},
    {"CMNTY_ENHANCE", 326, 160, 26, "IOCHcSGE"},
    {"RTPRD", 278, 10, 26, "IOCHcSG."},
    {"SID_STRUCTURE", 328, 7, 26, ".O...S.."},
    {"EVNPREFIX", 281, 85, 26, "IOCHcSG."},
    {"EXTCOMMUNITY_BW", 329, 12, 26, ".OCHcSGE"},
    {"EXTCMNTY_COMPR", 1300, 8, 26, "IOCHcSGE"},
};

TEST_F(Init, RegistersItsRowsInOrder)
{
    host::InitLinkedPlugIn(Bgp_InitDataType);
    const auto registrations = host::Registrations();
    ASSERT_GE(registrations.size(), std::size(kRows));
    for (size_t i = 0; i < std::size(kRows); ++i) {
        const DataTypeDescriptor &row = *registrations[i].row;
        const Expected &expected = kRows[i];
        SCOPED_TRACE(expected.name);
        EXPECT_STREQ(row.Name, expected.name);
        EXPECT_EQ(row.TypeId, expected.typeId);
        EXPECT_EQ(row.BinaryLength, expected.length);
        EXPECT_EQ(row.BaseKind, expected.kind);
        EXPECT_EQ(Slots(row), expected.slots);
        EXPECT_EQ(row.Reserved, nullptr);
    }
}

TEST_F(Init, NamesArePaddedWithNul)
{
    for (const DataTypeDescriptor *row : host::Rows()) {
        const size_t length = strnlen(row->Name, sizeof row->Name);
        ASSERT_LT(length, sizeof row->Name) << row->TypeId;
        for (size_t i = length; i < sizeof row->Name; ++i) {
            EXPECT_EQ(row->Name[i], '\0');
        }
    }
}

TEST_F(Init, NoTwoRowsShareNameOrTypeId)
{
    std::map<std::string, int> names;
    std::map<uint16_t, int> ids;
    for (const DataTypeDescriptor *row : host::Rows()) {
        EXPECT_EQ(names[row->Name]++, 0) << row->Name;
        EXPECT_EQ(ids[row->TypeId]++, 0) << row->TypeId;
    }
}

TEST_F(Init, ARefusedExtendedRowIsReportedOnceAndStopsNothing)
{
    host::TakeDiagnostics();
    const size_t rows = host::Rows().size();
    host::RefuseRow(321, 4711);
    EXPECT_EQ(host::InitLinkedPlugIn(Bgp_InitDataType), 0u);
    const auto diagnostics = host::TakeDiagnostics();
    ASSERT_EQ(diagnostics.size(), 1u);
    EXPECT_EQ(diagnostics[0].source, "zol_datatype_func_bgp_init");
    EXPECT_EQ(diagnostics[0].line, 215u);
    EXPECT_EQ(diagnostics[0].message, "RegisterDataTypeExt Ret:4711");
    EXPECT_EQ(host::Registrations().size(), rows);
    EXPECT_EQ(host::Rows().size(), rows - 1);
}

TEST_F(Init, ARefusedNameIndexRowIsReportedOnce)
{
    host::TakeDiagnostics();
    host::RefuseRow(0x6003, 4294967295u);
    EXPECT_EQ(host::InitLinkedPlugIn(Bgp_InitDataType), 0u);
    const auto diagnostics = host::TakeDiagnostics();
    ASSERT_EQ(diagnostics.size(), 1u);
    EXPECT_EQ(diagnostics[0].line, 202u);
    EXPECT_EQ(diagnostics[0].message, "RegisterDataType Ret:4294967295");
}

TEST_F(Init, TheWalksReturnTheLastAnswer)
{
    lastRefused = host::Rows().back()->TypeId;
    EXPECT_EQ(BGP_RegisterDataType(5), 0u);
    EXPECT_EQ(BGP_RegisterExtendDataType(5), 0u);
    host::RefuseRow(0x6003, 9);
    EXPECT_EQ(BGP_RegisterDataType(5), 0u); // the first row's refusal is forgotten by the last row
    host::RefuseRow(lastRefused, 10);
    EXPECT_EQ(BGP_RegisterExtendDataType(5), 10u);
    host::ForgetRegistrations();
    BGP_RegisterDataType(5);
    ASSERT_EQ(host::Registrations().size(), 9u);
    EXPECT_EQ(host::Registrations()[0].handle, 5u);
    host::TakeDiagnostics();
}

TEST_F(Init, NameIndexRowsAreTheHosts)
{
    host::SetObjectName(0x605c, 7, "core");
    EXPECT_EQ(Value("BGPID2BGPNAME", "core"), "07000000");
    EXPECT_EQ(Text("BGPID2BGPNAME", "07000000"), "core");
    EXPECT_EQ(Compare("BGPID2BGPNAME", "07000000", "08000000"), -1);
    host::ForgetObjectNames();
}

// A check that fails when a row's layout and its length do not belong together.
TEST_F(Init, EveryLayoutLiesWithinItsValue)
{
    const std::string zeros(1280, '\0');
    for (const DataTypeDescriptor *row : host::Rows()) {
        const BgpLayout *layout = Bgp_DescribeValue(row->TypeId, zeros.data(), row->BinaryLength);
        if (layout == nullptr) {
            continue;
        }
        for (uint32_t i = 0; i < layout->FieldCount; ++i) {
            const BgpField &field = layout->Fields[i];
            EXPECT_LE(field.Offset + uint32_t{field.Width} * field.Count, layout->Length)
                << row->Name << ' ' << field.Name;
        }
    }
    EXPECT_EQ(Bgp_DescribeValue(9999, zeros.data(), 8), nullptr);
    ASSERT_NE(Bgp_DescribeValue(255, zeros.data(), 8), nullptr);
    EXPECT_EQ(Bgp_DescribeValue(255, zeros.data(), 8)->FieldCount, 2u);
}

// A row's number of bytes is its own; everything else about a type is told in one place, in the rows' order.
TEST_F(Init, EveryRowHasItsFacts)
{
    const std::vector<const DataTypeDescriptor *> rows = host::Rows();
    ASSERT_GE(rows.size(), std::size(kRows));
    for (uint32_t i = 0; i < rows.size(); ++i) {
        const BgpTypeFacts *facts = Bgp_TypeAt(i);
        ASSERT_NE(facts, nullptr) << rows[i]->Name;
        EXPECT_STREQ(facts->Name, rows[i]->Name);
        EXPECT_EQ(facts->TypeId, rows[i]->TypeId) << rows[i]->Name;
        EXPECT_EQ(Bgp_DescribeType(rows[i]->TypeId), facts) << rows[i]->Name;
        EXPECT_NE(facts->Description, nullptr) << rows[i]->Name;
        EXPECT_EQ(facts->CheckedLength != 0, rows[i]->Check != nullptr) << rows[i]->Name;
    }
    EXPECT_EQ(Bgp_TypeAt(static_cast<uint32_t>(rows.size())), nullptr);
    EXPECT_EQ(Bgp_DescribeType(0), nullptr);
    EXPECT_EQ(Bgp_DescribeSubType(255, 0), nullptr);
    EXPECT_EQ(Bgp_DescribeSubType(279, 17), nullptr);
    for (uint32_t subType = 0; subType < BOL_PREFIX_SUBTYPES; ++subType) {
        const BgpTypeFacts *facts = Bgp_DescribeSubType(279, subType);
        ASSERT_NE(facts, nullptr) << subType;
        EXPECT_STREQ(facts->Name, g_astBOL_PREFIX_ProcTable[subType].Name);
        EXPECT_EQ(facts->SubType, subType);
    }
}

TEST_F(Init, AMissingArgumentIsNoRefusalOfAText)
{
    const DataTypeRequest request{1, 1};
    BgpRefusal refusal;
    EXPECT_EQ(Bgp_ExplainRefusal(&request, 255, "x", nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Bgp_ExplainRefusal(nullptr, 255, "x", &refusal), DT_ERR_NULL_PTR);
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_NULL_PTR);
    EXPECT_EQ(refusal.Reason.Rule, nullptr);
    EXPECT_EQ(Bgp_ExplainRefusal(&request, 255, nullptr, &refusal), DT_ERR_NULL_PTR);
    EXPECT_EQ(Bgp_ExplainRefusal(&request, 1, "x", &refusal), DT_ERR_TYPE_MISMATCH);
    EXPECT_EQ(refusal.Reason.Rule, nullptr);
}

} // namespace
} // namespace bgp::test
