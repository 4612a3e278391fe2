#include "support/refusals.h"
#include "support/type_case.h"

namespace bgp::test {
namespace {

// COMMUNITY: community (u32) and form (u32), both host order.
constexpr const char *kType = "COMMUNITY";

class Community : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    {"internet", "00000000 00000000"},
    {"no-export", "01ffffff 00000000"},
    {"no-advertise", "02ffffff 00000000"},
    {"no-export-subconfed", "03ffffff 00000000"},
    {"No-Export", "01ffffff 00000000", "no-export"},
    {"NO-EXPORT", "01ffffff 00000000", "no-export"},
    {"nO-aDvErTiSe", "02ffffff 00000000", "no-advertise"},
    {"NO-EXPORT-SUBCONFED", "03ffffff 00000000", "no-export-subconfed"},
    {"Internet", "00000000 00000000", "internet"},
    {"0", "00000000 00000000", "internet"},
    {"0:0", "00000000 01000000", "internet"},
    {"1", "01000000 00000000"},
    {"100", "64000000 00000000"},
    {"65536", "00000100 00000000"},
    {"4294967040", "00ffffff 00000000"},
    {"4294967041", "01ffffff 00000000", "no-export"},
    {"4294967042", "02ffffff 00000000", "no-advertise"},
    {"4294967043", "03ffffff 00000000", "no-export-subconfed"},
    {"4294967044", "04ffffff 00000000"},
    {"4294967295", "ffffffff 00000000"},
    {"0:1", "01000000 01000000"},
    {"1:0", "00000100 01000000"},
    {"100:1", "01006400 01000000"},
    {"65535:0", "0000ffff 01000000"},
    {"65535:65280", "00ffffff 01000000"},
    {"65535:65281", "01ffffff 01000000", "no-export"},
    {"65535:65282", "02ffffff 01000000", "no-advertise"},
    {"65535:65283", "03ffffff 01000000", "no-export-subconfed"},
    {"65535:65284", "04ffffff 01000000"},
    {"65535:65535", "ffffffff 01000000"},
    {"00100:00001", "01006400 01000000", "100:1"},
    {"0000000001:00000001", "01000100 01000000", "1:1"}, // 19 characters
    {"0000000004294967295", "ffffffff 00000000", "4294967295"},
    {" 100:1 ", "01006400 01000000", "100:1"},
    {"\t no-export\t", "01ffffff 00000000", "no-export"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "\t",
    "4294967296",
    "4294967297",
    "9999999999",
    "9999999999999999999",
    "18446744073709551616",
    "00000000000000000001", // 20 characters
    "0000000001:000000001",
    "65536:1",
    "1:65536",
    "65536:65536",
    "4294967296:1",
    "1:4294967296",
    "4294967297:1",
    "1:4294967297",
    "1:2:3",
    "1::2",
    ":",
    "::",
    "1:",
    ":1",
    "1:2:",
    "100 :1",
    "100: 1",
    "1 2",
    "1\t2",
    "no export",
    "no -export",
    "no-exp",
    "no-exporT-",
    "no-exports",
    "no-export-",
    "no-export-subconfe",
    "no-export-subconfedx",
    "no-advertised",
    "no-advertis",
    "no_export",
    "noexport",
    "no",
    "no-",
    "n",
    "-",
    "export",
    "o-export",
    "no-exportno-export",
    "internet2",
    "interne",
    "nternet",
    "internetinternet",
    "local-as",
    "no-peer",
    "blackhole",
    "no-export:1",
    "internet:0",
    "100:1x",
    "x100:1",
    "0x10",
    "1.2",
    "1.2:3",
    "10.1.1.1:5",
    "+1",
    "-1",
    "1e5",
    "1\n",
    "no-export\n",
    "no-export\r",
    "\xe9nternet",
    "no-export\xff",
    "1\xb2",
    "100\xa0:1",
    std::string(100000, '1'),
    std::string(100000, 'n'),
};

TypeCase Case()
{
    return {
        .row = {256, 8, 26, "COMMUNITY", &SYSDT_CommunityFormatIn, &SYSDT_CommunityFormatOut, &SYSDT_CommunityCheck,
                &SYSDT_CommunityHelp, &SYSDT_CommunityCompare, nullptr, &SYSDT_CommunityLuaSet, &SYSDT_CommunityLuaGet,
                &SYSDT_CommunityEndian},
        .contract = {.text = "65535:65535",
                     .value = "ffffffff01000000",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-11>",
                     .textSize = 33},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"100:1"},
        .parser = [](const char *text, void *value) { return SYSDT_Str2Community(Handle(), text, value); },
        .fields =
            {
                {"", ":1", "0100 0000 01000000", 2, true},
                {"1:", "", "0000 0100 01000000", 0, true},
                {"", ":65535", "ffff 0000 01000000", 2, true},
                {"65534:", "", "0000 feff 01000000", 0, true},
                {"", "", "0000 0000 00000000", 0, true, 0, 1, 1},
                {"", "", "0000 0000 00000000", 2, true, 0, 65536, 1},
            },
        .prints =
            {
                {"no-export", "01ffffff 00000000"},
                {"no-export", "01ffffff 01000000"},
                {"no-export", "01ffffff 02000000"},
                {"no-export", "01ffffff ffffffff"},
                {"no-advertise", "02ffffff 03000000"},
                {"no-export-subconfed", "03ffffff 00010000"},
                {"internet", "00000000 00000000"},
                {"internet", "00000000 01000000"},
                {"", "00000000 02000000"},
                {"internet", "00000000 03000000"},
                {"internet", "00000000 02000001"},
                {"5", "05000000 00000000"},
                {"0:5", "05000000 01000000"},
                {"4294967295", "ffffffff 00000000"},
                {"65535:65535", "ffffffff 01000000"},
                {"65535:65280", "00ffffff 01000000"},
                {"4294967044", "04ffffff 00000000"},
            },
        .printFailures = {"01ffffff 00000000", "00000000 00000000", "05000000 00000000", "05000000 01000000"},
        .checks = {{"05000000ffffffff", DT_OK}},
        .helpWord = 11,
        .compares =
            {
                {"0001000000000000", "ff00000000000000", -1}, // 256 and 255
                {"ff00000000000000", "0001000000000000", 1},
                {"8000000000000000", "7f00000000000000", 1}, // unsigned bytes
                {"0500000001000000", "0500000000000000", 1},
                {"0500000000000000", "0500000001000000", -1},
                {"0500000001000000", "0500000001000000", 0},
                {"0500000001000000", "0500000002000000", 0, 4},
                {"0500000001000000", "0500000002000000", -1, 5},
            },
        .swaps = {{"0102030405060708", "0403020108070605"}},
        .luaSets =
            {
                {"01ffffff01000000", "{community=4294967041, type=1}"},
                {"00000000ffffffff", "{community=0, type=4294967295}"},
                {"6400000000000000", "{community=100, type=0}"},
            },
        .luaGets =
            {
                {"{community = 4294967041, type = 1}", DT_OK, "01ffffff01000000", 1}, // the fetched table stays
                {"{community = 0, type = 77}", DT_OK, "000000004d000000", 1},
                {"{community = '5', type = '0'}", DT_OK, "0500000000000000", 1},
                {"{community = 4294967296, type = 4294967297}", DT_OK, "0000000001000000", 1},
                {"{community = 5, type = 'halves'}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
                {"{community = 5, type = true}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
                {"{community = 5}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
                {"{type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
                {"{community = {}, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
                {"{community = 'no-export', type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
                {"{}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
                {"7", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 1},
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<Community>("Community", Case());

TEST_F(Community, OnlyNamesCostMemory)
{
    uint8_t value[8];
    host::TakeCounters();
    for (const char *text : {"1", "100:1", "1:2:3", "4294967296", "no-export-subconfedx", "no export", ""}) {
        (void)SYSDT_Str2Community(Handle(), text, value);
        EXPECT_EQ(host::TakeCounters().allocations, 0u) << text;
    }
    for (const char *text : {"no-export", "internet", "no-exp", "1.2"}) {
        (void)SYSDT_Str2Community(Handle(), text, value);
        const host::Counters counters = host::TakeCounters();
        EXPECT_EQ(counters.allocations, 1u) << text;
        EXPECT_EQ(counters.plainAllocations, 0u) << text;
        EXPECT_EQ(counters.frees, 1u) << text;
    }
}

TEST_F(Community, TheNameLookupGivesItsCopyBack)
{
    host::RecordReleases(true);
    for (const char *text : {"no-export", "internet", "NO-EXPORT-SUBCONFED", "no-such-name"}) {
        host::TakeReleases();
        const In in = FormatIn(kType, text);
        const std::vector<host::Release> releases = host::TakeReleases();
        ASSERT_EQ(releases.size(), 1u) << text;
        EXPECT_TRUE(releases[0].known) << text;
        EXPECT_EQ(host::HandleBlocks(Handle()), in.code == DT_OK ? 1u : 0u) << text; // the value alone
        host::ResetHandle(Handle());
    }
}

TEST_F(Community, TheNameLookupAlone)
{
    uint32_t word[2] = {0, 0};
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 8, word, "internet"), DT_OK);
    EXPECT_EQ(word[0], 0u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 9, word, "No-Export"), DT_OK);
    EXPECT_EQ(word[0], 0xFFFFFF01u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 12, word, "NO-ADVERTISE"), DT_OK);
    EXPECT_EQ(word[0], 0xFFFFFF02u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 19, word, "no-export-subconfed"), DT_OK);
    EXPECT_EQ(word[0], 0xFFFFFF03u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 6, word, "no-exp"), DT_ERR_FAIL);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 9, word, "internet2"), DT_ERR_FAIL);
    host::SetFaults({.failAllocation = 1});
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 9, word, "no-export"), DT_ERR_NO_MEMORY);
    host::SetFaults({});
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(Community, TheNameLookupReadsTheTextHoweverLongItIsSaidToBe)
{
    for (const uint32_t length : {9u, 10u, 19u, 20u, 21u, 100u, 65536u, 0x7FFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
        // Of exactly its size, so that a sanitizer sees what is read behind the terminator.
        const std::vector<char> text{'N', 'o', '-', 'E', 'x', 'p', 'o', 'r', 't', '\0'};
        uint32_t word = 0;
        EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), length, &word, text.data()), DT_OK) << length;
        EXPECT_EQ(word, 0xFFFFFF01u) << length;
        word = 7;
        EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), length, &word, "no-exportx"),
                  length == 9 ? DT_OK : DT_ERR_FAIL)
            << length; // no more of the text than its length says
        EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), length, &word, ""), DT_ERR_FAIL) << length;
    }
    std::string report;
    EXPECT_TRUE(host::BlocksIntact(&report)) << report;
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(Community, NamesNeedTwoAllocationsNumbersOne)
{
    const auto codes = [](const char *text) {
        return CodesWhileAllocationsFail([text] { return FormatIn(kType, text).code; });
    };
    EXPECT_EQ(codes("no-export"), (std::vector<uint32_t>{DT_ERR_INVALID_VALUE, DT_ERR_NO_MEMORY}));
    EXPECT_EQ(codes("100:1"), (std::vector<uint32_t>{DT_ERR_NO_MEMORY}));
    EXPECT_EQ(codes("100"), (std::vector<uint32_t>{DT_ERR_NO_MEMORY}));
    host::SetFaults({.failAllocation = 2});
    const In in = FormatIn(kType, "no-export");
    EXPECT_EQ(in.code, DT_ERR_NO_MEMORY);
    EXPECT_EQ(in.typeId, 256);
    EXPECT_EQ(in.length, 0);
    EXPECT_FALSE(in.bufferSet);
    host::SetFaults({.failAllocation = 1});
    const In refused = FormatIn(kType, "no-export");
    EXPECT_EQ(refused.code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(refused.typeId, kUntouched);
    EXPECT_EQ(refused.length, kUntouched);
}

TEST_F(Community, ThePrinterOfNamelessValues)
{
    const uint32_t plain[2] = {100, 0};
    const uint32_t halves[2] = {0x00640001, 1};
    const uint32_t unknown[2] = {100, 3};
    char text[33];
    uint32_t printed = 0;
    void *buffer = nullptr;
    EXPECT_EQ(SYSDT_FormatNoWellKnowCmy(&printed, text, &buffer, plain), DT_OK);
    EXPECT_STREQ(text, "100");
    EXPECT_EQ(printed, 3u);
    EXPECT_EQ(SYSDT_FormatNoWellKnowCmy(&printed, text, &buffer, halves), DT_OK);
    EXPECT_STREQ(text, "100:1");
    EXPECT_EQ(printed, 5u);
    buffer = nullptr;
    EXPECT_EQ(SYSDT_FormatNoWellKnowCmy(&printed, text, &buffer, unknown), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(buffer, text);
}

TEST_F(Community, AnyAmountOfBlanksAroundANameIsTrimmed)
{
    EXPECT_EQ(Value(kType, std::string(500, '\t') + "no-export-subconfed" + std::string(500, ' ')), "03ffffff00000000");
}

TEST_F(Community, TheParserWithoutMemory)
{
    uint8_t value[8];
    for (const char *name : {"no-export", "xyz"}) {
        host::SetFaults({.failAllocation = 1});
        EXPECT_EQ(SYSDT_Str2Community(Handle(), name, value), DT_ERR_NO_MEMORY);
    }
    host::SetFaults({});
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(Community, AnUnknownFormHandsTheBufferOver)
{
    for (const char *value : {"0500000003000000", "0500000002000000", "04ffffffffffffff", "0100000000000001"}) {
        for (const uint8_t mode : kTextModes) {
            ExpectNoSuchKind(Row(kType), value, mode, DT_ERR_INVALID_VALUE, 33);
        }
    }
}

constexpr const char *kNames = "internet no-advertise no-export no-export-subconfed";

// clang-format off
constexpr Refused kReasons[] = {
    // text                    rule                at  length
    {"",                       "empty",             0,  0},
    {"\t",                     "empty",             1,  0},
    {"00000000000000000001",   "too-long",          0, 20, 19},
    {" no-export-subconfedx ", "too-long",          1, 20, 19},
    {"no export",              "blank",             2,  1},
    {"1\t2",                   "blank",             1,  1},
    {" 100: 1",                "blank",             5,  1},
    {":",                      "digit",             0,  1},
    {"1:",                     "digit",             2,  0},
    {"1::2",                   "digit",             2,  1},
    {"100:1x",                 "character",         5,  1},
    {" 1.2",                   "character",         2,  1},
    {"1\n",                    "character",         1,  1},
    {"1:2:3:4:5:6",            "too-many-numbers",  3,  1, 2},
    {"1:2:3",                  "notation",          0,  5, 0, "", "", 0, 2, "number first:second"},
    {"4294967296",             "too-large",         0, 10, 4294967295, "the community"},
    {" 65536:1",               "too-large",         1,  5, 65535, "the first half"},
    {"1:4294967297",           "too-large",         2, 10, 65535, "the second half"},
    {"no-exp",                 "unknown-name",      0,  6, 0, "", "", 0, 2, kNames},
    {"\tinternet:0",           "unknown-name",      1, 10, 0, "", "", 0, 2, kNames},
    {"a:b:c",                  "unknown-name",      0,  5, 0, "", "", 0, 2, kNames},
    {"-1",                     "unknown-name",      0,  2, 0, "", "", 0, 2, kNames},
    {"1",                      "mode",              0,  0, 0, "", "", 0, 0},
    {"1",                      "mode",              0,  0, 3, "", "", 0, 3},
    {"1",                      "mode",              0,  0, 4, "", "", 0, 4},
    {"1",                      "mode",              0,  0, 7, "", "", 0, 7},
};
// clang-format on

TEST_F(Community, Reasons)
{
    CheckRefusals(kType, kReasons);
    constexpr std::string_view kGood[] = {"0", " 65535:65535\t", "4294967295", "NO-EXPORT-subconfed"};
    CheckAccepted(kType, kGood);
    EXPECT_EQ(host::HandleBlocks(Handle()), 2u * 2u); // the values that CheckAccepted() and CodeOf() made, no copies
}

TEST_F(Community, LackOfMemoryIsAReason)
{
    host::SetFaults({.failAllocation = 1});
    const BgpRefusal refusal = Explained(kType, " no-export");
    EXPECT_EQ(Describe(refusal.Reason), "memory 1+9 limit 0 what 'the name' where '' element 0 expected ''");
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_VALUE);
}

TEST_F(Community, Facts)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(256);
    ASSERT_NE(facts, nullptr);
    EXPECT_STREQ(facts->Name, kType);
    EXPECT_STREQ(facts->Reference, "RFC 1997");
    EXPECT_EQ(facts->ResultTypeId, 256);
    EXPECT_EQ(facts->ValueLength, 8);
    EXPECT_EQ(facts->CheckedLength, 8);
    EXPECT_EQ(facts->TextSize, 33);
    EXPECT_EQ(facts->ShortestText, 1);
    EXPECT_EQ(facts->LongestText, 19);
    EXPECT_EQ(facts->TypingMode, 2);
    EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
    EXPECT_EQ(facts->Network, BGP_NETWORK_ENDIAN);
    EXPECT_EQ(facts->Lua, BGP_LUA_ALL);
    EXPECT_EQ(facts->Traits, 0u);
    EXPECT_EQ(facts->NotationCount, 0u); // names beside the numbers
    EXPECT_EQ(Bgp_DescribeValue(256, nullptr, 0), facts->Layout);
}

} // namespace
} // namespace bgp::test
