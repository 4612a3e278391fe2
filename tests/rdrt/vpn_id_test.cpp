// VPNID: organisationally unique identifier (4) and VPN index (4), host order. RFC 2685. Its results and its texts come
// from SYS_DataTypeMalloc().
#include "support/notation_refusals.h"
#include "support/type_case.h"

#include "bgp_host_services.h"

namespace {

using namespace bgp::test;

class VpnId : public PlugIn {};

const std::vector<TextCase> kAccepted = {
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
    {"001a2b3c:0010", "3c2b1a00 10000000", "1a2b3c:10"},
    {"00ffffff:00000001", "ffffff00 01000000", "ffffff:1"},
    {"00000000001a2b3c:0010", "3c2b1a00 10000000", "1a2b3c:10"}, // 21 characters
    {"1:0000000000000000002", "01000000 02000000", "1:2"},
    {"0000000000000000001:2", "01000000 02000000", "1:2"},
    {" 1:2", "01000000 02000000", "1:2"},
    {"1:2\t", "01000000 02000000", "1:2"},
    {"  \t 00000000001a2b3c:0010 \t ", "3c2b1a00 10000000", "1a2b3c:10"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    ":",
    "1",
    "12",
    "1:",
    ":1",
    "1:2:3",
    "1::2",
    "::",
    "::1",
    "0:0",
    "000000:00000000",
    "00:0",
    "1000000:1",
    "1000001:1",
    "ffffffff:1",
    "100000000:1",
    "100000001:1",
    "1000000:0",
    "1:100000000",
    "1:100000001",
    "0:100000000",
    "ffffff:100000000",
    "10000000000000000:1",
    "10000000000000001:1",
    "1:10000000000000000",
    "1:10000000000000001",
    "1:ffffffffffffffff",
    "ffffffffffffffff:1",
    "fffffffffffffffffff:1",
    "1000000000000000001:1",
    "1:1000000000000000002",
    "1A2B3C:10",
    "1a2b3C:10",
    "1:F",
    "A:1",
    "g:1",
    "1:g",
    "0x1:2",
    "1:0x2",
    "1.2:3",
    "1-2",
    "-1:2",
    "1:-2",
    "+1:2",
    "1:2\n",
    "1:\xb2",
    "\xff:1",
    "1:*",
    "1: 2",
    "1 :2",
    "1 2:3",
    "1:2 3",
    "1\t:2",
    "00000000001a2b3c:00010",
    "000000000001a2b3c:0010", // 22 characters
    "1.2.3.4:5",
    "2001:db8::1.1",
    "0a0b-0c0d-0e0f",
    "no-export",
};

TypeCase Case()
{
    return {
        .row = {0x12f, 8, 26, "VPNID", &SYSDT_VpnIdFormatIn, &SYSDT_VpnIdFormatOut, &SYSDT_VpnIdCheck, &SYSDT_VpnIdHelp,
                &SYSDT_VpnIdCompare, nullptr, &SYSDT_VpnIdLuaSet, &SYSDT_VpnIdLuaGet, &SYSDT_VpnIdEndian},
        .contract = {.inModes = "FPPFUFPU",
                     .outModes = "FTTRUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-15>",
                     .textSize = 257,
                     .plainMemory = true,
                     .helpPlainMemory = true},
        .layout = {{"ouiValue", 0, 4, 1}, {"index", 4, 4, 1}},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"1a2b3c:10", "00000000001a2b3c:0010"},
        .characters = {{"1", "2:3", "0123456789abcdef", true},
                       {"", "1:2", "0123456789abcdef", true},
                       {"1:2", "", "0123456789abcdef", true}},
        .parser = &SYSDT_Str2VpnId,
        .roundTrips = {"1a2b3c:10", "ffffff:ffffffff", "0:1", "1:0", "23:3", "2:3", "2:45", "3:4", "5:45", "890:765"},
        .prints =
            {
                {"1a2b3c:10", "3c2b1a00 10000000"},
                {"ffffff:ffffffff", "ffffff00 ffffffff"},
                {"0:0", "00000000 00000000"}, // no empty text in any mode
                {"0:1", "00000000 01000000"},
                {"1:0", "01000000 00000000"},
                {"1000000:100", "00000001 00010000"}, // more than text can give
                {"ffffffff:ffffffff", "ffffffff ffffffff"},
                {"4030201:8070605", "01020304 05060708"},
                {"abcdef:fedcba", "efcdab00 badcfe00"},
            },
        .ascending = {"0000000000000000", "0000000001000000", "0000000000010000", "00000000ffffff7f",
                      "0000000000000080", "00000000ffffffff", "0100000000000000", "0100000005000000",
                      "0200000000000000", "ff00000000000000", "0001000000000000", "ffffff7f00000000",
                      "0000008000000000", "fffffffffeffffff", "ffffffffffffffff"},
        .descending = true, // as numbers, identifier first; the smaller one compares as 1
        .swaps =
            {
                {"0102030405060708", "0403020108070605"},
                {"3c2b1a0010000000", "001a2b3c00000010"},
                {"fffefdfcfbfaf9f8", "fcfdfefff8f9fafb"},
            },
        .luaSets =
            {
                {"3c2b1a0010000000", "{index=16, ouiValue=1715004}"},
                {"0000000000000000", "{index=0, ouiValue=0}"},
                {"ffffffffffffffff", "{index=4294967295, ouiValue=4294967295}"},
                {"000000800000ff7f", "{index=2147418112, ouiValue=2147483648}"},
            },
        .luaGets =
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
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<VpnId>("VpnId", Case());

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

TEST_F(VpnId, ComparesWhatWasTyped)
{
    EXPECT_EQ(Compare("VPNID", Value("VPNID", "1:5"), Value("VPNID", "2:0")), 1);
    EXPECT_EQ(Compare("VPNID", Value("VPNID", "2:0"), Value("VPNID", "1:5")), -1);
}

// ---------------------------------------------------------------------------------------------------------- refusals

// clang-format off
constexpr Refused kReasons[] = {
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
// clang-format on

TEST_F(VpnId, Reasons)
{
    CheckRefusals("VPNID", All(kReasons, kModeRefusals));
    constexpr std::string_view kIds[] = {"1a2b3c:10", " ffffff:ffffffff\t", "0:1", "1:0"};
    CheckAccepted("VPNID", kIds);
    EXPECT_EQ(Sentence("VPNID", "1000000:1"), "the OUI is at most ffffff");
    EXPECT_EQ(Sentence("VPNID", "1A:1"), "hexadecimal digits are lower case here");
}

} // namespace
