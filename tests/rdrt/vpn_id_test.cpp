// VPNID: organisationally unique identifier (4) and VPN index (4), host order. RFC 2685. Its results and its texts come
// from SYS_DataTypeMalloc().
#include "rdrt/printing.h"

#include "bgp_host_services.h"

namespace {

using namespace bgp::test;

class VpnId : public PlugIn {};

constexpr uint8_t kPrintModes[] = {1, 2, 3, 6};

const std::vector<TextCase> &Accepted()
{
    static const std::vector<TextCase> cases = {
        {"1a2b3c:10", "3c2b1a00 10000000"},
        {"ffffff:ffffffff", "ffffff00 ffffffff"},
        {"0:1", "00000000 01000000"},
        {"1:0", "01000000 00000000"},
        {"0:ffffffff", "00000000 ffffffff"},
        {"ffffff:0", "ffffff00 00000000"},
        {"abcdef:89abcdef", "efcdab00 efcdab89"},
        {"12:34", "12000000 34000000"},
        {"890:765", "90080000 65070000"},
        {"23:3", "23000000 03000000"},
        {"00ffffff:00000001", "ffffff00 01000000"},
        {"00000000001a2b3c:0010", "3c2b1a00 10000000"}, // 21 characters
        {"1:0000000000000000002", "01000000 02000000"},
        {"0000000000000000001:2", "01000000 02000000"},
        {" 1:2", "01000000 02000000"},
        {"1:2\t", "01000000 02000000"},
        {"  \t 00000000001a2b3c:0010 \t ", "3c2b1a00 10000000"},
    };
    return cases;
}

const std::vector<TextCase> &Refused()
{
    static const std::vector<TextCase> cases = {
        {"", ""},
        {" ", ""},
        {":", ""},
        {"1", ""},
        {"12", ""},
        {"1:", ""},
        {":1", ""},
        {"1:2:3", ""},
        {"1::2", ""},
        {"::", ""},
        {"::1", ""},
        {"0:0", ""},
        {"000000:00000000", ""},
        {"00:0", ""},
        {"1000000:1", ""},
        {"1000001:1", ""},
        {"ffffffff:1", ""},
        {"100000000:1", ""},
        {"100000001:1", ""},
        {"1000000:0", ""},
        {"1:100000000", ""},
        {"1:100000001", ""},
        {"0:100000000", ""},
        {"ffffff:100000000", ""},
        {"10000000000000000:1", ""},
        {"10000000000000001:1", ""},
        {"1:10000000000000000", ""},
        {"1:10000000000000001", ""},
        {"1:ffffffffffffffff", ""},
        {"ffffffffffffffff:1", ""},
        {"fffffffffffffffffff:1", ""},
        {"1000000000000000001:1", ""},
        {"1:1000000000000000002", ""},
        {"1A2B3C:10", ""},
        {"1a2b3C:10", ""},
        {"1:F", ""},
        {"A:1", ""},
        {"g:1", ""},
        {"1:g", ""},
        {"0x1:2", ""},
        {"1:0x2", ""},
        {"1.2:3", ""},
        {"1-2", ""},
        {"-1:2", ""},
        {"1:-2", ""},
        {"+1:2", ""},
        {"1:2\n", ""},
        {"1:\xb2", ""},
        {"\xff:1", ""},
        {"1:*", ""},
        {"1: 2", ""},
        {"1 :2", ""},
        {"1 2:3", ""},
        {"1:2 3", ""},
        {"1\t:2", ""},
        {"00000000001a2b3c:00010", ""},
        {"000000000001a2b3c:0010", ""}, // 22 characters
        {"1.2.3.4:5", ""},
        {"2001:db8::1.1", ""},
        {"0a0b-0c0d-0e0f", ""},
        {"no-export", ""},
    };
    return cases;
}

TEST_F(VpnId, Row)
{
    const DataTypeDescriptor &row = Row("VPNID");
    EXPECT_EQ(row.TypeId, 0x12f);
    EXPECT_EQ(row.BinaryLength, 8);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, &SYSDT_VpnIdFormatIn);
    EXPECT_EQ(row.FormatOut, &SYSDT_VpnIdFormatOut);
    EXPECT_EQ(row.Check, &SYSDT_VpnIdCheck);
    EXPECT_EQ(row.Help, &SYSDT_VpnIdHelp);
    EXPECT_EQ(row.Compare, &SYSDT_VpnIdCompare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, &SYSDT_VpnIdLuaSet);
    EXPECT_EQ(row.LuaGet, &SYSDT_VpnIdLuaGet);
    EXPECT_EQ(row.Endian, &SYSDT_VpnIdEndian);
}

TEST_F(VpnId, Contract)
{
    Sweep(Row("VPNID"), {.text = "1a2b3c:10",
                         .value = "3c2b1a0010000000",
                         .inModes = "FPPFUFPU",
                         .outModes = "FTTRUFTU",
                         .helpModes = "-H----H-",
                         .helpText = "STRING<3-15>",
                         .resultTypeId = 0x12f,
                         .resultLength = 8,
                         .textSize = 257,
                         .plainMemory = true,
                         .helpPlainMemory = true});
}

TEST_F(VpnId, ResultsAreOfPlainMemory)
{
    // All results of one operation at a time come from SYS_DataTypeMalloc(), none from the request's handle.
    const size_t blocks = host::HandleBlocks(Handle());
    host::TakeCounters();
    EXPECT_EQ(CodeOf("VPNID", "1:2"), DT_OK);
    EXPECT_EQ(host::TakeCounters().plainAllocations, 1u);
    EXPECT_EQ(FormatOut("VPNID", "0100000002000000").text, "1:2");
    EXPECT_EQ(host::TakeCounters().plainAllocations, 1u);
    EXPECT_EQ(host::HandleBlocks(Handle()), blocks);
}

TEST_F(VpnId, HelpTextIsOfPlainMemory)
{
    const DataTypeRequest request{1, Handle()};
    const uint32_t words[2] = {11, 22};
    DataTypeHelpInfo info{0, nullptr};
    const size_t scratch = host::ScratchBlocks();
    ASSERT_EQ(Row("VPNID").Help(&request, 0, 0, nullptr, words, &info), DT_OK);
    EXPECT_EQ(host::ScratchBlocks(), scratch + 1);
    ASSERT_EQ(info.EntryCount, 1u);
    EXPECT_STREQ(info.Entries[0].Text, "STRING<3-15>");
    host::RecordReleases(true);
    SYS_DataTypeFree(info.Entries[0].Text);
    const std::vector<host::Release> releases = host::TakeReleases();
    host::RecordReleases(false);
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_TRUE(releases[0].known);
    EXPECT_EQ(host::ScratchBlocks(), scratch);
}

TEST_F(VpnId, NeedsNoHandle)
{
    std::string text = "1:2";
    const DataTypeRequest request{1, 0};
    uint16_t typeId = kUntouched;
    uint16_t length = kUntouched;
    void *value = nullptr;
    ASSERT_EQ(Row("VPNID").FormatIn(&request, 0, 0, text.data(), &typeId, &length, &value), DT_OK);
    EXPECT_EQ(Hex(value, 8), "0100000002000000");
    void *printed = nullptr;
    ASSERT_EQ(Row("VPNID").FormatOut(&request, 0, 8, value, &typeId, &length, &printed), DT_OK);
    EXPECT_STREQ(static_cast<char *>(printed), "1:2");
    SYS_DataTypeFree(value);
    SYS_DataTypeFree(printed);
}

TEST_F(VpnId, Layout)
{
    ExpectLayout(0x12f, std::string(16, '0'), {{"ouiValue", 0, 4, 1}, {"index", 4, 4, 1}});
}

// ------------------------------------------------------------------------------------------------------------ text in

TEST_F(VpnId, AcceptedTexts)
{
    ExpectTexts(Row("VPNID"), Accepted(), 0x12f);
    ExpectParses(&SYSDT_Str2VpnId, 8, Accepted(), DT_ERR_FAIL);
}

TEST_F(VpnId, RefusedTexts)
{
    ExpectTexts(Row("VPNID"), Refused(), 0x12f);
    ExpectParses(&SYSDT_Str2VpnId, 8, Refused(), DT_ERR_FAIL);
}

TEST_F(VpnId, OuterBlanks)
{
    ExpectBlanksDropped(Row("VPNID"), "1a2b3c:10");
    ExpectBlanksDropped(Row("VPNID"), "00000000001a2b3c:0010");
}

TEST_F(VpnId, EveryCharacterOutsideTheSetIsRefused)
{
    for (int c = 1; c < 256; ++c) {
        const bool inside = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
        const std::string odd(1, static_cast<char>(c));
        EXPECT_EQ(CodeOf("VPNID", "1" + odd + "2:3"), inside ? DT_OK : DT_ERR_INVALID_VALUE) << c;
        if (c != ' ' && c != '\t') {
            EXPECT_EQ(CodeOf("VPNID", odd + "1:2"), inside ? DT_OK : DT_ERR_INVALID_VALUE) << c;
            EXPECT_EQ(CodeOf("VPNID", "1:2" + odd), inside ? DT_OK : DT_ERR_INVALID_VALUE) << c;
        }
    }
}

// ----------------------------------------------------------------------------------------------------------- text out

TEST_F(VpnId, Prints)
{
    static const std::vector<TextCase> cases = {
        {"1a2b3c:10", "3c2b1a00 10000000"},
        {"ffffff:ffffffff", "ffffff00 ffffffff"},
        {"0:0", "00000000 00000000"}, // no empty text in any mode
        {"0:1", "00000000 01000000"},
        {"1:0", "01000000 00000000"},
        {"1000000:100", "00000001 00010000"}, // more than text can give
        {"ffffffff:ffffffff", "ffffffff ffffffff"},
        {"4030201:8070605", "01020304 05060708"},
        {"abcdef:fedcba", "efcdab00 badcfe00"},
    };
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kPrintModes) {
            ExpectPrints(Row("VPNID"), Hex(Bytes(c.value)), mode, c.text);
        }
    }
}

TEST_F(VpnId, Printer)
{
    char text[257];
    uint32_t printed = 4711;
    EXPECT_EQ(SYSDT_VpnId2Str(0x1a2b3c, 0x10, &printed, text), DT_OK);
    EXPECT_STREQ(text, "1a2b3c:10");
    EXPECT_EQ(printed, 9u);
    EXPECT_EQ(SYSDT_VpnId2Str(0, 0, &printed, text), DT_OK);
    EXPECT_STREQ(text, "0:0");
    EXPECT_EQ(printed, 3u);
    EXPECT_EQ(SYSDT_VpnId2Str(0xFFFFFFFF, 0xFFFFFFFF, &printed, text), DT_OK);
    EXPECT_STREQ(text, "ffffffff:ffffffff");
    EXPECT_EQ(printed, 17u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(SYSDT_VpnId2Str(1, 2, &printed, text), DT_OK); // it has no failure to report
}

TEST_F(VpnId, LengthArgumentIsNotLookedAt)
{
    for (const uint32_t length : {0u, 7u, 9u, 4294967294u}) {
        EXPECT_EQ(FormatOut("VPNID", "0100000002000000", 1, length).text, "1:2");
    }
}

TEST_F(VpnId, RoundTrips)
{
    for (const char *text :
         {"1a2b3c:10", "ffffff:ffffffff", "0:1", "1:0", "23:3", "2:3", "2:45", "3:4", "5:45", "890:765"}) {
        for (const uint8_t mode : kTextInModes) {
            EXPECT_EQ(RoundTrip("VPNID", text, mode), text);
        }
    }
    EXPECT_EQ(RoundTrip("VPNID", "001a2b3c:0010"), "1a2b3c:10");
}

// ------------------------------------------------------------------------------------- Check, Help, Compare, Endian

TEST_F(VpnId, Check)
{
    for (uint32_t length = 0; length < 64; ++length) {
        EXPECT_EQ(CheckLength("VPNID", length), length == 8 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check("VPNID", "ffffffffffffffff"), DT_OK);
    const DataTypeDescriptor &row = Row("VPNID");
    EXPECT_EQ(row.Check(&row, 0, 8, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 7, nullptr), DT_ERR_NULL_PTR);
}

TEST_F(VpnId, Help)
{
    const Helped helped = Help("VPNID", 1, 7, 8);
    EXPECT_EQ(helped.text, "STRING<3-15>");
    EXPECT_EQ(helped.helpWord, 8u);
    EXPECT_EQ(Help("VPNID", 6, 1, 0).helpInits, 0u);
    host::SetFaults({.helpInitCode = 77});
    EXPECT_EQ(Help("VPNID", 1).code, 77u);
}

TEST_F(VpnId, CompareRunsBackwards)
{
    // Ascending as numbers, identifier first; the smaller one compares as 1.
    static const std::vector<std::string> ascending = {
        "0000000000000000", "0000000001000000", "0000000000010000", "00000000ffffff7f", "0000000000000080",
        "00000000ffffffff", "0100000000000000", "0100000005000000", "0200000000000000", "ff00000000000000",
        "0001000000000000", "ffffff7f00000000", "0000008000000000", "fffffffffeffffff", "ffffffffffffffff"};
    for (size_t i = 0; i < ascending.size(); ++i) {
        for (size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(Compare("VPNID", ascending[i], ascending[j]), i < j   ? 1
                                                                    : i > j ? -1
                                                                            : 0)
                << ascending[i] << ' ' << ascending[j];
        }
    }
    EXPECT_EQ(Compare("VPNID", Value("VPNID", "1:5"), Value("VPNID", "2:0")), 1);
    EXPECT_EQ(Compare("VPNID", Value("VPNID", "2:0"), Value("VPNID", "1:5")), -1);
}

TEST_F(VpnId, EndianSwapsBothWords)
{
    EXPECT_EQ(Endian("VPNID", "0102030405060708"), "0403020108070605");
    EXPECT_EQ(Endian("VPNID", "3c2b1a0010000000"), "001a2b3c00000010");
    EXPECT_EQ(Endian("VPNID", Endian("VPNID", "fffefdfcfbfaf9f8")), "fffefdfcfbfaf9f8");
}

// ---------------------------------------------------------------------------------------------------------------- Lua

TEST_F(VpnId, LuaSet)
{
    struct SetCase {
        const char *value, *table;
    };
    static constexpr SetCase kCases[] = {
        {"3c2b1a0010000000", "{index=16, ouiValue=1715004}"},
        {"0000000000000000", "{index=0, ouiValue=0}"},
        {"ffffffffffffffff", "{index=4294967295, ouiValue=4294967295}"},
        {"000000800000ff7f", "{index=2147418112, ouiValue=2147483648}"},
    };
    for (const SetCase &c : kCases) {
        const LuaOut out = LuaSet("VPNID", c.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, c.table);
        EXPECT_EQ(out.growth, 0);
    }
}

TEST_F(VpnId, LuaGet)
{
    ExpectLuaGet(Row("VPNID"), 8,
                 {
                     // pops 2: the fetched table stays
                     {"{index=16, ouiValue=1715004}", DT_OK, "3c2b1a0010000000", 1},
                     {"{index=0, ouiValue=0}", DT_OK, "0000000000000000", 1},
                     {"{index=4294967295, ouiValue=4294967295}", DT_OK, "ffffffffffffffff", 1},
                     {"{index=4294967297, ouiValue=16777216}", DT_OK, "0000000101000000", 1},
                     {"{index=-1, ouiValue='7', other={}}", DT_OK, "07000000ffffffff", 1},
                     {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"5", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"'1:2'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"{}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"{index=1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"{index=1, ouiValue='x'}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"{index=1, ouiValue={}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"{index=1, ouivalue=2}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                     {"{ouiValue=2}", DT_ERR_INVALID_PARAM, "02000000eeeeeeee", kAnyGrowth},
                     {"{index='x', ouiValue=2}", DT_ERR_INVALID_PARAM, "02000000eeeeeeee", kAnyGrowth},
                     {"{index={}, ouiValue=2}", DT_ERR_INVALID_PARAM, "02000000eeeeeeee", kAnyGrowth},
                     {"{index=true, ouiValue=2}", DT_ERR_INVALID_PARAM, "02000000eeeeeeee", kAnyGrowth},
                 });
}

TEST_F(VpnId, LuaLengths)
{
    ExpectShortLuaRefused(Row("VPNID"), 8, "{index=16, ouiValue=1715004}");
}

} // namespace
