#include "support/harness.h"

#include <cstring>

namespace bgp::test {
namespace {

class CvrfName : public PlugIn {};

// name, number, kind as a 40-byte record, in hex.
std::string Record(std::string name, uint32_t number, uint32_t kind)
{
    name.resize(32);
    return Hex(name) + Le32(number) + Le32(kind);
}

TEST_F(CvrfName, CompositeForm)
{
    const struct {
        std::string record;
        const char *composite;
    } rows[] = {
        {Record("a", 7, 1), "01000200 3700 00000200 6100"},
        {Record("a", 7, 0), "00000200 6100"},
        {Record("a", 7, 2), "00000200 6100"},
        {Record("a", 4294967295, 1), "01000b00 3432393439363732393500 00000200 6100"},
        {Record("a", 0, 1), "01000200 3000 00000200 6100"},
        {Record("", 7, 1), "00000000 00"},
        {Record("", 7, 0), "00000000 00"},
        {Record("public", 7, 0), "00000700 7075626c696300"},
        {Record(std::string(31, 'x'), 1, 0),
         "00002000 7878787878787878787878787878787878787878787878787878787878787800"},
        {Record(std::string(32, 'x'), 1, 0), // no terminator: 31 characters
         "00002000 7878787878787878787878787878787878787878787878787878787878787800"},
    };
    for (const auto &row : rows) {
        const Out out = FormatOut(Row("CVRFNAME"), row.record, 2);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.typeId, 292);
        EXPECT_EQ(out.bytes, Hex(Bytes(row.composite)));
    }
}

TEST_F(CvrfName, CompositeFormWantsItsOwnRecord)
{
    const std::string record = Record("a", 7, 1);
    EXPECT_EQ(FormatOut(Row("CVRFNAME"), record, 2, 32).code, DT_ERR_TYPE_MISMATCH);
    EXPECT_EQ(FormatOut(Row("CVRFNAME"), record, 2, 39).code, DT_ERR_TYPE_MISMATCH);
    EXPECT_EQ(FormatOut(Row("CVRFNAME"), record, 2, 41).code, DT_ERR_TYPE_MISMATCH);
    const DataTypeRequest request{2, Handle()};
    uint16_t typeId = kUntouched;
    uint16_t length = kUntouched;
    void *buffer = nullptr;
    const std::string bytes = Bytes(record);
    EXPECT_EQ(SYS_DT_APPCVRFNAME_FormatOut(&request, 291, 40, bytes.data(), &typeId, &length, &buffer),
              DT_ERR_TYPE_MISMATCH);
    EXPECT_EQ(typeId, kUntouched);
    EXPECT_EQ(length, kUntouched);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(CvrfName, CompositeFormNeverUsesTheCallersBuffer)
{
    const Into into = FormatOutInto(Row("CVRFNAME"), Record("a", 7, 1), 2, 257);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_FALSE(into.sameBuffer);
    EXPECT_EQ(into.buffer, std::string(257, '\xA5'));
    EXPECT_EQ(into.allocations, 1u);
}

TEST_F(CvrfName, CompositeFormFailures)
{
    host::SetFaults({.failAllocation = 1});
    const Out out = FormatOut("CVRFNAME", Record("a", 7, 1), 2);
    EXPECT_EQ(out.code, DT_ERR_NO_MEMORY);
    EXPECT_FALSE(out.bufferSet);
    for (const uint32_t copy : {1u, 2u}) {
        host::SetFaults({.failCopy = copy});
        const Out failed = FormatOut("CVRFNAME", Record("a", 7, 1), 2);
        EXPECT_EQ(failed.code, DT_ERR_CONVERT);
        EXPECT_EQ(failed.typeId, 292);
        EXPECT_TRUE(failed.bufferSet);
    }
}

TEST_F(CvrfName, BuildsTheCompositeFormForOthersToo)
{
    uint8_t buffer[257] = {};
    uint16_t length = 0;
    EXPECT_EQ(SYS_DT_CVrfName_Str2Cplx(nullptr, &length, buffer), 0xFFFFFFFF);
    const std::string record = Bytes(Record("a", 7, 1));
    EXPECT_EQ(SYS_DT_CVrfName_Str2Cplx(record.data(), &length, buffer), DT_OK);
    EXPECT_EQ(length, 12);
    EXPECT_EQ(Hex(buffer, length), "010002003700000002006100");
    host::SetFaults({.failCopy = 1});
    EXPECT_EQ(SYS_DT_CVrfName_Str2Cplx(record.data(), &length, buffer), DT_ERR_FAIL);
}

TEST_F(CvrfName, EveryNullPointerComesFirst)
{
    const DataTypeDescriptor &row = Row("CVRFNAME");
    const std::string value = Bytes(Record("a", 7, 1));
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        uint16_t typeId = 0;
        uint16_t length = 0;
        void *buffer = nullptr;
        EXPECT_EQ(row.FormatOut(nullptr, 292, 40, value.data(), &typeId, &length, &buffer), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.FormatOut(&request, 292, 40, nullptr, &typeId, &length, &buffer), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.FormatOut(&request, 292, 40, value.data(), nullptr, &length, &buffer), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.FormatOut(&request, 292, 40, value.data(), &typeId, nullptr, &buffer), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.FormatOut(&request, 292, 40, value.data(), &typeId, &length, nullptr), DT_ERR_NULL_PTR);
    }
}

TEST_F(CvrfName, OtherModesAreTheHosts)
{
    const std::string value = Padded(Hex("public"), 32);
    const DataTypeDescriptor &row = Row("CVRFNAME");
    const Out text = FormatOut(row, value, 1);
    EXPECT_EQ(text.code, DT_OK);
    EXPECT_EQ(text.typeId, 25);
    EXPECT_EQ(text.text, "public");
    EXPECT_EQ(FormatOut(row, value, 0).code, DT_ERR_FAIL);
    EXPECT_EQ(FormatOut(row, value, 4).code, DT_ERR_MODE_UNSUPPORTED);
    EXPECT_EQ(row.Check, nullptr);
    EXPECT_EQ(row.Endian, nullptr);
    EXPECT_EQ(CodeOf("CVRFNAME", "public"), DT_OK);
}

} // namespace
} // namespace bgp::test
