// MDT, sub-type 11 of the composite route key, and the type MDTPREFIX (RFC 6037): prefix IPv4 word at byte 4, group
// IPv4 word at byte 8 (0 when typed), mask length u32 at byte 12. Only the type can be typed; its value is the
// composite's. The prefix alone is printed.
#include "support/refusals.h"
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class Mdt : public PlugIn {};

const std::string kValue = Key("0b000000 0001010a 010101e1 18000000");

const std::vector<TextCase> kAccepted = {
    {"10.1.1.0/24", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    {"1.1.1.1/1", Key("0b000000 01010101 00000000 01000000"), "1.1.1.1"},
    {"0.0.0.0/0", Key("0b000000"), "0.0.0.0"},
    {"255.255.255.255/32", Key("0b000000 ffffffff 00000000 20000000"), "255.255.255.255"},
    {"10.1.2.3/8", Key("0b000000 0302010a 00000000 08000000"), "10.1.2.3"},
    {" \t10.1.1.0/24\t ", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    // numbers are scanned: leading zeros count for the length alone, and what follows is not looked at
    {"010.001.001.000/0024", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    {"255.255.255.255/032", Key("0b000000 ffffffff 00000000 20000000"), "255.255.255.255"},
    {"10.1.1.0/\n24", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    {"10.1.1.0/24x", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    {"10.1.1.0/24:225.1.1.1", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    {"10.1.1.0/24\x80", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
    {std::string(26, '0') + "1.1.1.1/8", Key("0b000000 01010101 00000000 08000000"), "1.1.1.1"},
    {"1.1.1.1/8" + std::string(26, 'x'), Key("0b000000 01010101 00000000 08000000"), "1.1.1.1"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "/",
    "10.1.1.0",
    "10.1.1.0/",
    "10.1.1.0/x",
    "10.1.1/24",
    "10.1.1.0.0/24",
    "1.1/241",
    "1.1.1.1/33",
    "1.1.1.1/4294967295",
    "1.1.1.1/4294967296",
    "1.1.1.1/-1",
    "1.1.1.1/+1",
    "256.1.1.1/8",
    "1.256.1.1/8",
    "1.1.256.1/8",
    "1.1.1.256/8",
    "4294967296.1.1.1/8",
    "4294967297.1.1.1/8",
    "+1.1.1.1/24",
    "x1.1.1.1/24",
    "10.1.1.0/ 24",
    "10.1.1.0 /24",
    "10.1.1.0/24 225.1.1.1",
    "10.1.1.0/2\t4",
    "10.1.1.0:24",
    "2001:db8::/32",
    "1/10.1.1.1/100",
    "\xff.1.1.1/24",
    "1-100-200-10.1.1.1",
    // 6 and 7 characters, and 36
    "1.1.1/",
    "1.1.1.1",
    std::string(27, '0') + "1.1.1.1/8",
    "1.1.1.1/8" + std::string(27, 'x'),
    std::string(3000, '0') + "1.1.1.1/8",
};

std::vector<LuaCase> LuaTables()
{
    const std::string typed = Unwritten("0b000000");
    const std::string prefix = Unwritten("0b000000 0302010a");
    const std::string group = Unwritten("0b000000 0302010a 010101e1");
    const std::string three = "bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101, bolMdtMaskLen = 24}";
    return {
        {"{bolType = 11, " + three, DT_OK, Unwritten("0b000000 0302010a 010101e1 18000000"), 1},
        {"{bolType = 11, bolMdtPrefix = 4294967295, bolMdtGrpAddr = 4294967296, bolMdtMaskLen = 4294967295}", DT_OK,
         Unwritten("0b000000 ffffffff 00000000 ffffffff"), 1},
        {"{bolType = '11', bolMdtPrefix = '1', bolMdtGrpAddr = '2', bolMdtMaskLen = '3'}", DT_OK,
         Unwritten("0b000000 01000000 02000000 03000000"), 1},
        {"{bolType = 10, " + three, DT_ERR_FAIL, Unwritten("0a000000"), 2},
        {"{bolType = 267, " + three, DT_ERR_FAIL, Unwritten("0b010000"), 2},
        {"{" + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 'x', " + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = {}, " + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 11, bolMdtGrpAddr = 2, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 11, bolMdtPrefix = 'x', bolMdtGrpAddr = 2, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 11, bolMdtPrefix = {}, bolMdtGrpAddr = 2, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, prefix, 4},
        {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 'x', bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM,
         prefix, 4},
        {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = {}, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM,
         prefix, 4},
        {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101}", DT_ERR_INVALID_PARAM, group, 5},
        {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101, bolMdtMaskLen = 'x'}",
         DT_ERR_INVALID_PARAM, group, 5},
        {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101, bolMdtMaskLen = {}}",
         DT_ERR_INVALID_PARAM, group, 5},
        {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"11", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"'10.1.1.0/24'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
    };
}

TypeCase Case()
{
    return KeyCase({
        .row = {296, 12, 26, "MDTPREFIX", &SYSDT_MdtPrefixFormatIn, &SYSDT_MdtPrefixFormatOut, &SYSDT_MdtPrefixCheck,
                &SYSDT_MdtPrefixHelp, &SYSDT_MdtPrefixCompare, nullptr, &SYSDT_MdtPrefixLuaSet, &SYSDT_MdtPrefixLuaGet,
                &SYSDT_MdtLuaEndian},
        .contract = {.text = "10.1.1.0/24",
                     .value = Key("0b000000 0001010a 00000000 18000000"),
                     .helpText = "X.X.X.X/M or X.X.X.X",
                     .plainMemory = true,
                     .helpPlainMemory = true},
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                // whatever the sub-type word is; a shorter value reads as if zeros followed
                {"255.254.253.252", Key("00000000 fcfdfeff 01020304 ffffffff")},
                {"255.254.253.252", Key("0a000000 fcfdfeff 01020304 ffffffff")},
                {"255.254.253.252", Key("ffffffff fcfdfeff 01020304 ffffffff")},
                {"10.1.1.0", "0b0000000001010a"},
                {"0.0.0.252", "0b000000fc"},
                {"10.1.1.0", Padded("0b0000000001010a", 90)},
            },
        .printFailures = {Key("0b000000")},
        .lengths = {{0, "0.0.0.0"}},
        .checkTestsPointer = false,
        .checks = {{"000000000000000000000000", DT_ERR_LENGTH}},
        .helpCopyFailure = DT_ERR_INVALID_PARAM,
        .compares =
            {
                {kValue, kValue, 0},
                {Key("0b000000 0001010a 020101e1 18000000"), kValue, 1},
                {kValue, Key("0b000000 0001010a 010101e1 19000000"), -1},
                {Key("0b000000 01000000"), Key("0b000000 000000ff"), 1},
                {Key("0b000000 80"), Key("0b000000 7f"), 1},
                {Key("0c000000"), Key("0b000000 ff"), 1},
                {With(kValue, 88, "01"), kValue, 1},
                {With(kValue, 88, "01"), kValue, 0, 88},
                {Key("ff"), kValue, 0, 0},
            },
        .comparesBytes = true,
        .swaps = {{"0102030405060708090a0b0c", "04030201050607080c0b0a09"}},
        .luaSets =
            {
                {Key("0b000000 0302010a 010101e1 18000000"),
                 "{bolMdtGrpAddr=3774939393, bolMdtMaskLen=24, bolMdtPrefix=167838211, bolType=11}"},
                {Key("0a000100 ffffffff feffffff fdffffff"),
                 "{bolMdtGrpAddr=4294967294, bolMdtMaskLen=4294967293, bolMdtPrefix=4294967295, bolType=65546}"},
            },
        .luaGets = LuaTables(),
    });
}

[[maybe_unused]] const bool kStated =
    StateTests<Mdt>("Mdt", Case()) && StateTests("MdtEntry", EntryCase(Case(), 11, "MDT", &SYSDT_MdtPrefixNewLuaGet));

TEST_F(Mdt, EveryMaskLength)
{
    for (uint32_t mask = 0; mask <= 32; ++mask) {
        EXPECT_EQ(Value("MDTPREFIX", "10.1.1.0/" + std::to_string(mask)),
                  Key("0b000000 0001010a 00000000" + Le32(mask)));
    }
}

TEST_F(Mdt, AnyAmountOfOuterBlanksIsTrimmed)
{
    EXPECT_EQ(CodeOf("MDTPREFIX", std::string(400, '\t') + "1.1.1.1/8" + std::string(400, ' ')), DT_OK);
}

TEST_F(Mdt, ParserFillsThePayload)
{
    ExpectParserPointers(SYSDT_Str2MdtPrefix, "10.1.1.0/24");
    const Parsed parsed = Parse(SYSDT_Str2MdtPrefix, "\t10.1.1.0/24 ", 12);
    EXPECT_EQ(parsed.code, DT_OK);
    EXPECT_EQ(parsed.bytes, "0001010a0000000018000000");
    for (const char *text : {"", "10.1.1.0", "1.1.1.1/33", "1.1.1.256/8", "10.1.1.0/ 24"}) {
        const Parsed refused = Parse(SYSDT_Str2MdtPrefix, text, 12);
        EXPECT_EQ(refused.code, DT_ERR_FAIL) << text;
        EXPECT_EQ(refused.bytes, "000000000000000000000000") << text;
    }
}

TEST_F(Mdt, ThePrinterStandsAlone)
{
    const Printed printed = Print(SYSDT_MdtPrefix2Str, "0001010a010101e118000000");
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "10.1.1.0");
    EXPECT_EQ(printed.length, 8u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(Print(SYSDT_MdtPrefix2Str, "0001010a010101e118000000").code, DT_ERR_FAIL);
}

TEST_F(Mdt, LuaGetWantsMoreThanItsRegisteredLength)
{
    EXPECT_EQ(LuaGet("MDTPREFIX", "{bolType = 11, bolMdtPrefix = 1, bolMdtGrpAddr = 2, bolMdtMaskLen = 3}").code,
              DT_ERR_INVALID_PARAM);
}

TEST_F(Mdt, CannotBeTypedIntoTheComposite)
{
    EXPECT_EQ(CodeOf("BOLPREFIX", "255.255.255.255/032"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Text("BOLPREFIX", Key("0b000000 0001010a 010101e1 18000000")), "10.1.1.0");
}

TEST_F(Mdt, Reader)
{
    const std::string none = Unwritten();
    const std::string prefix = With(none, 4, "0302010a");
    const std::string group = With(prefix, 8, "010101e1");
    const std::string two = "bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101";
    ExpectReaderPointers(11);
    ExpectReads(
        11, {
                {two + ", bolMdtMaskLen = 24", DT_OK, With(group, 12, "18000000"), -1},
                {two + ", bolMdtMaskLen = '4294967295'", DT_OK, With(group, 12, "ffffffff"), -1},
                {two + ", bolMdtMaskLen = 4294967297", DT_OK, With(group, 12, "01000000"), -1},
                {"bolMdtGrpAddr = 2, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, none, 1},
                {"bolMdtPrefix = 'x', bolMdtGrpAddr = 2, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, none, 1},
                {"bolMdtPrefix = {}, bolMdtGrpAddr = 2, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, none, 1},
                {"bolMdtPrefix = 0x0A010203, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 'x', bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = {}, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, prefix, 2},
                {two, DT_ERR_INVALID_PARAM, group, 3},
                {two + ", bolMdtMaskLen = 'x'", DT_ERR_INVALID_PARAM, group, 3},
                {two + ", bolMdtMaskLen = {}", DT_ERR_INVALID_PARAM, group, 3},
                {"", DT_ERR_INVALID_PARAM, none, 1},
            });
}

// clang-format off
constexpr Refused kReasons[] = {
    // text                        rule         at length
    {"",                           "empty",      0, 0},
    {"10.1.1.0/24 and what stands behind it", "too-long", 0, 37, 35},
    {"10.1.1.0 /24",               "blank",      8, 1},
    {"10.1.1.0/",                  "digit",      9, 0},
    {"x.1.1.0/24",                 "digit",      0, 1},
    {"10.1..0/24",                 "digit",      5, 1},
    {"10.1.1.0/x",                 "digit",      9, 1},
    {"1",                          "separator",  1, 0, 0, "."},
    {"10.1.1.0",                   "separator",  8, 0, 0, "/"},
    {"10.1.1/24",                  "separator",  6, 1, 0, "."},
    {" 10.1.1.0.24",               "separator",  9, 1, 0, "/"},
    {"256.1.1.0/24",               "too-large",  0, 3, 255, "octet 1 of the prefix"},
    {"10.256.1.0/24",              "too-large",  3, 3, 255, "octet 2 of the prefix"},
    {"10.1.99999999999.0/24",      "too-large",  5, 11, 255, "octet 3 of the prefix"},
    {"10.1.1.256/24",              "too-large",  7, 3, 255, "octet 4 of the prefix"},
    {"10.1.1.0/33",                "too-large",  9, 2, 32, "the mask length"},
    {"10.1.1.0/24",                "mode",       0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(Mdt, Reasons)
{
    CheckRefusals("MDTPREFIX", kReasons);
    constexpr std::string_view kGood[] = {"10.1.1.0/24", " 0.0.0.0/0\t", "10.1.1.0/24x", "010.001.01.1/0032"};
    CheckAccepted("MDTPREFIX", kGood);
}

} // namespace
