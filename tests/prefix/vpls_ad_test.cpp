// IPV4, sub-type 0 of the composite route key: the VPLS auto-discovery key (RFC 6074), an IPv4 word at byte 4. Its row
// is the first of the table, so that texts, checks, helps and comparisons are offered to it before all others.
#include "support/refusals.h"
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class VplsAd : public PlugIn {};

DataTypeDescriptor Vpls()
{
    return SubType(0);
}

const std::vector<TextCase> kAccepted = {
    {"10.1.2.3", Key("00000000 0302010a")},
    {"0.0.0.0", Key("")},
    {"255.255.255.255", Key("00000000 ffffffff")},
    {"1.0.0.0", Key("00000000 00000001")},
    {"0.0.0.1", Key("00000000 01000000")},
    {"224.0.0.1", Key("00000000 010000e0")},
    {" \t10.1.2.3 \t", Key("00000000 0302010a"), "10.1.2.3"},
    {std::string(500, ' ') + "10.1.2.3" + std::string(500, '\t'), Key("00000000 0302010a"), "10.1.2.3"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "10",
    "10.1",
    "10.1.2",
    "10.1.2.3.4",
    "10.1.2.",
    ".10.1.2",
    "10..1.2",
    "...",
    "256.1.1.1",
    "1.256.1.1",
    "1.1.256.1",
    "1.1.1.256",
    "1.1.1.4294967296",
    "01.1.1.1",
    "1.1.1.01",
    "1.1.1.1x",
    "x1.1.1.1",
    "+1.1.1.1",
    "-1.1.1.1",
    "0x1.1.1.1",
    "1.1.1. 1",
    "1.1.1\t.1",
    "1 1.1.1.1",
    "1.1.1.1\n",
    "1.1.1.1/32",
    "1.1.1.1:1.1.1.1",
    "::",
    "2001:db8::1",
    "::ffff:1.1.1.1",
    "\xb1.1.1.1",
    "1.1.1.1\xff",
    "10/3",
    "100:1",
    "1-100-200-10.1.1.1",
    "[1][2][10.0.0.1]",
};

std::vector<LuaCase> LuaTables()
{
    const std::string typed = Unwritten("00000000");
    return {
        {"{bolType = 0, bolPrefix = 167838211}", DT_OK, Unwritten("00000000 0302010a"), 0},
        {"{bolType = '0', bolPrefix = '4294967295'}", DT_OK, Unwritten("00000000 ffffffff"), 0},
        {"{bolType = 0, bolPrefix = 4294967296}", DT_OK, Unwritten("00000000 00000000"), 0},
        {"{bolType = 1, bolPrefix = 1}", DT_ERR_FAIL, Unwritten("01000000"), 2},
        {"{bolType = 4294967295, bolPrefix = 1}", DT_ERR_FAIL, Unwritten("ffffffff"), 2},
        {"{bolPrefix = 1}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 'x', bolPrefix = 1}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = {}, bolPrefix = 1}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 0}", DT_ERR_INVALID_PARAM, typed, 2},
        {"{bolType = 0, bolPrefix = 'x'}", DT_ERR_INVALID_PARAM, typed, 2},
        {"{bolType = 0, bolPrefix = {1}}", DT_ERR_INVALID_PARAM, typed, 2},
        {"{bolType = 0, bolPrefix = true}", DT_ERR_INVALID_PARAM, typed, 2},
        {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"7", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"'10.1.2.3'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
    };
}

std::vector<CompareCase> Orders()
{
    const std::string ten = Key("00000000 0000000a");       // 10.0.0.0
    const std::string nine = Key("00000000 ffffff09");      // 9.255.255.255
    const std::string high = Key("00000000 00000080");      // 128.0.0.0
    const std::string highest = Key("00000000 ffffffff");   // 255.255.255.255
    const std::string behind = Key("00000000 0000000a ff"); // bytes behind the address do not count
    return {
        {Key("00000000 0100000a"), nine, 1},
        {ten, nine, 1},
        {nine, ten, -1},
        {ten, ten, 0},
        {ten, behind, 0},
        {high, ten, 1},
        {highest, high, 1},
        {Key(""), highest, -1},
        {ten, nine, 0, 4},
        {ten, nine, 0, 0},
        {ten, nine, -1, 7}, // 0.0.0.0 and 0.255.255.255
        {Padded("000000000000000a", 100), Padded("00000000ffffff09", 100), 1, 100},
    };
}

TypeCase Case()
{
    return KeyCase({
        .row = {0, 0, 0, "IPV4", &SYSDT_VplsAdPrefixFormatIn, &SYSDT_VplsAdPrefixFormatOut, &SYSDT_VplsAdPrefixCheck,
                &SYSDT_VplsAdPrefixHelp, &SYSDT_VplsAdPrefixCompare, nullptr, &SYSDT_VplsAdPrefixLuaSet,
                &SYSDT_VplsAdPrefixLuaGet, nullptr},
        .entry = &g_astBOL_PREFIX_ProcTable[0],
        .subType = 0,
        .reader = &SYSDT_VplsAdPrefixNewLuaGet,
        .contract = {.value = Key("00000000 0302010a"), .helpText = "X.X.X.X"},
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                // whatever the sub-type word is; a shorter value reads as if zeros followed
                {"10.1.2.3", Key("01000000 0302010a")},
                {"10.1.2.3", Key("02000000 0302010a")},
                {"10.1.2.3", Key("09000000 0302010a")},
                {"10.1.2.3", Key("10000000 0302010a")},
                {"10.1.2.3", Key("ffffffff 0302010a")},
                {"10.1.2.3", "000000000302010a"},
                {"0.0.0.3", "0000000003"},
                {"10.1.2.3", Padded("000000000302010a", 90)},
            },
        .printFailures = {Key("")},
        .lengths = {{7, "0.1.2.3"}, {4, "0.0.0.0"}, {0, "0.0.0.0"}},
        .checkTestsPointer = false,
        .untypedHelp = {},
        .compares = Orders(),
        .luaSets =
            {
                {Key("00000000 0302010a"), "{bolPrefix=167838211, bolType=0}"},
                {Key("00000000 ffffffff"), "{bolPrefix=4294967295, bolType=0}"},
                {Key("07000100 00000080"), "{bolPrefix=2147483648, bolType=65543}"},
            },
        .luaGets = LuaTables(),
    });
}

[[maybe_unused]] const bool kStated = StateTests<VplsAd>("VplsAd", Case());

TEST_F(VplsAd, TheCompositeReadsAndPrintsThemToo)
{
    ExpectKeys(Row("BOLPREFIX"), kAccepted);
}

TEST_F(VplsAd, EveryOctetStandsInItsPlace)
{
    for (uint32_t octet = 0; octet < 256; ++octet) {
        const std::string text = std::to_string(octet);
        const std::string hex = Le32(octet).substr(0, 2);
        EXPECT_EQ(FormatIn(Vpls(), text + ".1.2.3").value, Key("00000000 030201" + hex));
        EXPECT_EQ(FormatIn(Vpls(), "1.2.3." + text).value, Key("00000000" + hex + "030201"));
        EXPECT_EQ(FormatOut(Vpls(), Key("00000000 0302" + hex + "01")).text, "1." + text + ".2.3");
        EXPECT_EQ(FormatOut(Vpls(), Key("00000000 03" + hex + "0201")).text, "1.2." + text + ".3");
    }
}

TEST_F(VplsAd, HelpsWithWhatLooksLikeAnAddress)
{
    for (const char *typed : {"", "1", "10.1.2.3", "...", "999.999.999.999.999"}) {
        const Helped helped = Help(Vpls(), 1, 11, 22, typed);
        EXPECT_EQ(helped.code, DT_OK) << typed;
        EXPECT_EQ(helped.text, "X.X.X.X");
        EXPECT_EQ(helped.helpWord, 22u);
    }
    for (const char *typed : {"a", "10.1.2.3/24", "::1", " 1", "1 ", "-", "\xff"}) {
        const Helped helped = Help(Vpls(), 6, 11, 22, typed);
        EXPECT_NE(helped.code, DT_OK) << typed;
        EXPECT_EQ(helped.code, ZOL_CheckBySymbolForIPV4(typed)) << "the host's own answer";
        EXPECT_FALSE(helped.supplied);
        EXPECT_EQ(helped.helpInits, 0u);
    }
    const Helped untold = Help(Vpls(), 1, 11, 22, nullptr);
    EXPECT_EQ(untold.code, ZOL_CheckBySymbolForIPV4(nullptr));
    EXPECT_EQ(untold.supplied, untold.code == DT_OK);
}

TEST_F(VplsAd, HelpJudgesModeThenWordsThenText)
{
    for (const uint8_t mode : std::initializer_list<uint8_t>{0, 2, 3, 4, 5, 7, 255}) {
        EXPECT_EQ(Help(Vpls(), mode, 0, 0, "abc").code, DT_OK) << int{mode};
    }
    EXPECT_EQ(Help(Vpls(), 1, 0, 22, "abc").code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(Help(Vpls(), 6, 11, 0, "abc").code, DT_ERR_INVALID_PARAM);
}

TEST_F(VplsAd, OtherSubTypesDoNotCompare)
{
    const std::string own = Key("00000000 0000000a");
    for (const char *word : {"01000000", "09000000", "00010000", "00000001", "ffffffff"}) {
        const std::string other = Key(std::string(word) + "0000000a");
        EXPECT_EQ(static_cast<uint32_t>(CompareKeys(Vpls(), own, other)), DT_ERR_FAIL) << word;
        EXPECT_EQ(static_cast<uint32_t>(CompareKeys(Vpls(), other, own)), DT_ERR_FAIL) << word;
        EXPECT_EQ(static_cast<uint32_t>(CompareKeys(Vpls(), other, other)), DT_ERR_FAIL) << word;
    }
    EXPECT_EQ(CompareKeys(Vpls(), Key("01000000"), own, 0), 0); // no sub-type is seen
}

TEST_F(VplsAd, Reader)
{
    ExpectReaderPointers(0);
    ExpectReads(0, {
                       {"bolPrefix = 167838211", DT_OK, With(Unwritten(), 4, "0302010a"), -1},
                       {"bolPrefix = '4294967295'", DT_OK, With(Unwritten(), 4, "ffffffff"), -1},
                       {"bolPrefix = 4294967297", DT_OK, With(Unwritten(), 4, "01000000"), -1},
                       {"", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       {"bolPrefix = 'x'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       {"bolPrefix = {167838211}", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       {"bolPrefix = false", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                   });
}

// clang-format off
constexpr Refused kReasons[] = {
    // text              rule           at length
    {"",                 "empty",        0, 0},
    {" \t ",             "empty",        3, 0},
    {"10.1. 1.1",        "blank",        5, 1},
    {" 10.1.1.1 x",      "blank",        9, 1},
    {"10.1.1.256",       "too-large",    7, 3, 255, "an octet"},
    {" 1000.1.1.1",      "too-large",    1, 4, 255, "an octet"},
    {"10.01.1.1",        "leading-zero", 3, 2, 0, "an octet"},
    {"10.1.1",           "ipv4",         6, 0},
    {"10.1.1.",          "ipv4",         7, 0},
    {"10.1.1.1.1",       "ipv4",         8, 1},
    {"10.1.1.0/24",      "ipv4",         8, 1},
    {"10.1,1.1",         "ipv4",         4, 1},
    {"100",              "ipv4",         0, 3},
    {"2001:db8::1",      "ipv4",         0, 11},
    {"10.1.1.1",         "mode",         0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(VplsAd, Reasons)
{
    CheckSubTypeRefusals(0, kReasons);
}

} // namespace
