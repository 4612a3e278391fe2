#include "support/refusals.h"

#include <cstring>
#include <dlfcn.h>

namespace {

bool numbersAreWritten = true;

} // namespace

// Stands before the host's service, and writes nothing where a test asks for it.
extern "C" char *QOV_Uint32ToStr(uint32_t value, char *buffer, uint32_t base)
{
    using Service = char *(*)(uint32_t, char *, uint32_t);
    static const auto theirs = reinterpret_cast<Service>(dlsym(RTLD_NEXT, "QOV_Uint32ToStr"));
    return numbersAreWritten ? theirs(value, buffer, base) : nullptr;
}

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

// Leaves marks where the next call has its locals.
[[gnu::noinline]] void SoilTheStack()
{
    volatile char marks[1024];
    for (volatile char &mark : marks) {
        mark = 'x';
    }
}

TEST_F(CvrfName, AHostThatWritesNoNumberGetsNone)
{
    const std::string record = Bytes(Record("a", 7, 1));
    uint8_t buffer[257] = {};
    uint16_t length = 0;
    numbersAreWritten = false;
    SoilTheStack();
    EXPECT_EQ(SYS_DT_CVrfName_Str2Cplx(record.data(), &length, buffer), DT_OK);
    numbersAreWritten = true;
    EXPECT_EQ(Hex(buffer, length), "0100010000000002006100");
}

TEST_F(CvrfName, TheLongestCompositeFormHas51Bytes)
{
    // Two heads of 4 bytes, ten digits and 31 characters, each with its terminator.
    const Out out = FormatOut(Row("CVRFNAME"), Record(std::string(31, 'x'), 4294967295, 1), 2);
    EXPECT_EQ(out.length, 51);
}

constexpr Refused kReasons[] = {
    {"", "host", 0, 0},
    {" \t", "host", 0, 2},
    {"public", "host", 0, 6, 0, "", "", 0, 0},
    {"public", "host", 0, 6, 0, "", "", 0, 3},
    {"public", "host", 0, 6, 0, "", "", 0, 4},
    {"public", "host", 0, 6, 0, "", "", 0, 7},
};

TEST_F(CvrfName, TheHostsRefusalsAreTold)
{
    CheckRefusals("CVRFNAME", kReasons);
    constexpr std::string_view kGood[] = {"public", " a ", "no \xe9 limits"};
    for (const uint8_t mode : kTextModes) {
        for (const std::string_view text : kGood) {
            const BgpRefusal refusal = Explained("CVRFNAME", text, mode);
            EXPECT_EQ(refusal.Reason.Code, DT_OK) << text;
            EXPECT_EQ(refusal.Reason.Rule, nullptr) << text;
            EXPECT_EQ(host::HandleBlocks(Handle()), 0u) << text; // the value was given back
        }
        CheckAccepted("CVRFNAME", kGood, mode);
        host::ResetHandle(Handle());
    }
    host::SetFaults({.failAllocation = 1});
    EXPECT_EQ(Explained("CVRFNAME", "public").Reason.Code, DT_ERR_NO_MEMORY); // the host's own answer
}

// The host is told the registered length, in which this host stores a name and its terminator.
TEST_F(CvrfName, TheAnswerIsThatOfTheRegisteredLength)
{
    const DataTypeDescriptor &row = Row("CVRFNAME");
    ASSERT_EQ(row.BinaryLength, 32);
    const struct {
        std::string text;
        uint32_t code;
    } rows[] = {
        {std::string(31, 'x'), DT_OK},
        {" " + std::string(31, 'x') + " ", DT_OK},
        {std::string(32, 'x'), DT_ERR_INVALID_VALUE},
        {std::string(400, 'x'), DT_ERR_INVALID_VALUE},
    };
    for (const auto &[text, code] : rows) {
        const BgpRefusal refusal = Explained("CVRFNAME", text);
        EXPECT_EQ(refusal.Reason.Code, code) << text;
        EXPECT_EQ(FormatIn(row, text, 2, row.BinaryLength).code, code) << text;
        EXPECT_EQ(refusal.Reason.Length, code == DT_OK ? 0 : text.size()) << text;
    }
}

TEST_F(CvrfName, Facts)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(292);
    ASSERT_NE(facts, nullptr);
    EXPECT_STREQ(facts->Name, "CVRFNAME");
    EXPECT_EQ(facts->ResultTypeId, 292);
    EXPECT_EQ(facts->ValueLength, 32);
    EXPECT_EQ(facts->CheckedLength, 0);
    EXPECT_EQ(facts->TextSize, 0);
    EXPECT_EQ(facts->ShortestText, 1);
    EXPECT_EQ(facts->LongestText, 31);
    EXPECT_EQ(facts->TypingMode, 1);
    EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
    EXPECT_EQ(facts->Network, BGP_NETWORK_NONE);
    EXPECT_EQ(facts->Lua, BGP_LUA_TYPED);
    EXPECT_EQ(facts->Traits, BGP_TRAIT_HOST_TEXT | BGP_TRAIT_COPIES_RAW | BGP_TRAIT_ANY_LENGTH | BGP_TRAIT_COMPOSES |
                                 BGP_TRAIT_SETS_ANY);
    EXPECT_EQ(Bgp_DescribeValue(292, nullptr, 0), facts->Layout);
}

} // namespace
} // namespace bgp::test
