// VPNV4MCAST, sub-type 10 of the composite route key, and the type VPNV4MCPREFIX: prefix IPv4 word at byte 4, mask
// length u32 at byte 8. Only the type can be typed; its value is the composite's. The mask is not printed.
#include "support/refusals.h"
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class Vpnv4Mcast : public PlugIn {};

const std::string kValue = Key("0a000000 0001010a 18000000");

const std::vector<TextCase> kAccepted = {
    {"10.1.1.0/24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {"1.1.1.1/1", Key("0a000000 01010101 01000000"), "1.1.1.1"},
    {"0.0.0.0/0", Key("0a000000"), "0.0.0.0"},
    {"10.1.2.3/32", Key("0a000000 0302010a 20000000"), "10.1.2.3"},
    {"255.255.255.255/32", Key("0a000000 ffffffff 20000000"), "255.255.255.255"},
    {"10.1.2.3/8", Key("0a000000 0302010a 08000000"), "10.1.2.3"}, // host bits stay
    {"\t 10.1.1.0/24 \t", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    // numbers are scanned: leading zeros count for the length alone, and what follows is not looked at
    {"010.001.001.000/24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {"10.1.1.0/0000024", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {"10.1.1.0/\n24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {"10.1.1.0/24x", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {"10.1.1.0/24/24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {"10.1.1.0/2.4", Key("0a000000 0001010a 02000000"), "10.1.1.0"},
    {"10.1.1.0/24\xff", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
    {std::string(9, '0') + "1.1.1.1/8", Key("0a000000 01010101 08000000"), "1.1.1.1"},
    {"1.1.1.1/8abcdefghi", Key("0a000000 01010101 08000000"), "1.1.1.1"},
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
    "10.1/24",
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
    "-1.1.1.1/24",
    "x1.1.1.1/24",
    "10.1.1.0/ 24",
    "10.1.1.0 /24",
    "10. 1.1.0/24",
    "10.1.1.0/24 x",
    "10.1.1.0/2\t4",
    "10.1.1.0:24",
    "10,1,1,0/24",
    "2001:db8::/32",
    "1/10.1.1.1/100",
    "\xb1.1.1.1/24",
    "10.1.1.0-24-10",
    "[1][2][10.0.0.1]",
    // 8 characters, and 19
    "1.1.1.1/",
    std::string(10, '0') + "1.1.1.1/8",
    "255.255.255.255/032",
    "1.1.1.1/8abcdefghij",
    std::string(3000, '0') + "1.1.1.1/8",
};

std::vector<LuaCase> LuaTables()
{
    const std::string typed = Unwritten("0a000000");
    const std::string prefix = Unwritten("0a000000 03020000");
    return {
        {"{bolType = 10, bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 24}", DT_OK,
         Unwritten("0a000000 03020000 18000000"), 1},
        {"{bolType = 10, bolVpnv4McastPrefix = 65535, bolVpnv4McastMaskLen = 65536}", DT_OK,
         Unwritten("0a000000 ffff0000 00000000"), 1},
        {"{bolType = 10, bolVpnv4McastPrefix = 4294967295, bolVpnv4McastMaskLen = 4294967295}", DT_OK,
         Unwritten("0a000000 ffff0000 ffff0000"), 1},
        {"{bolType = '10', bolVpnv4McastPrefix = '1', bolVpnv4McastMaskLen = '2'}", DT_OK,
         Unwritten("0a000000 01000000 02000000"), 1},
        {"{bolType = 11, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_FAIL, Unwritten("0b000000"), 2},
        {"{bolType = 65546, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_FAIL, Unwritten("0a000100"), 2},
        {"{bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 'x', bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = {}, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 10, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 10, bolVpnv4McastPrefix = 'x', bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 10, bolVpnv4McastPrefix = {}, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 10, bolVpnv4McastPrefix = 0x0203}", DT_ERR_INVALID_PARAM, prefix, 4},
        {"{bolType = 10, bolVpnv4McastPrefix = 0x0203, bolVpnv4McastMaskLen = 'x'}", DT_ERR_INVALID_PARAM, prefix, 4},
        {"{bolType = 10, bolVpnv4McastPrefix = 0x0203, bolVpnv4McastMaskLen = {}}", DT_ERR_INVALID_PARAM, prefix, 4},
        {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"10", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"'10.1.1.0/24'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
    };
}

TypeCase Case()
{
    return KeyCase({
        .row = {295, 8, 26, "VPNV4MCPREFIX", &SYSDT_VPNV4MCASTPrefixFormatIn, &SYSDT_VPNV4MCASTPrefixFormatOut,
                &SYSDT_VPNV4MCASTPrefixCheck, &SYSDT_VPNV4MCASTPrefixHelp, &SYSDT_VPNV4MCASTPrefixCompare, nullptr,
                &SYSDT_VPNV4MCASTPrefixLuaSet, &SYSDT_VPNV4MCASTPrefixLuaGet, &SYSDT_VPNV4MCASTLuaEndian},
        .contract = {.text = "10.1.1.0/24",
                     .value = Key("0a000000 0001010a 18000000"),
                     .helpText = "X.X.X.X/M or X.X.X.X"},
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                // whatever the sub-type word is; a shorter value reads as if zeros followed
                {"255.254.253.252", Key("00000000 fcfdfeff ffffffff")},
                {"255.254.253.252", Key("0b000000 fcfdfeff ffffffff")},
                {"255.254.253.252", Key("ffffffff fcfdfeff ffffffff")},
                {"10.1.1.0", "0a0000000001010a"},
                {"0.0.0.252", "0a000000fc"},
                {"10.1.1.0", Padded("0a0000000001010a", 90)},
            },
        .printFailures = {Key("0a000000")},
        .lengths = {{0, "0.0.0.0"}},
        .checkTestsPointer = false,
        .checks = {{"0000000000000000", DT_ERR_LENGTH}},
        .helpCopyFailure = DT_ERR_INVALID_PARAM,
        .compares =
            {
                {kValue, kValue, 0},
                {Key("0a000000 0001010a 19000000"), kValue, 1},
                {kValue, Key("0a000000 0001010a 19000000"), -1},
                {Key("0a000000 01000000"), Key("0a000000 000000ff"), 1},
                {Key("0a000000 80"), Key("0a000000 7f"), 1},
                {Key("0b000000"), Key("0a000000 ff"), 1},
                {With(kValue, 88, "01"), kValue, 1},
                {With(kValue, 88, "01"), kValue, 0, 88},
                {Key("ff"), kValue, 0, 0},
            },
        .comparesBytes = true,
        .swaps = {{"0102030405060708", "0403020108070605"}, {"0102030405060708090a", "0403020108070605090a"}},
        .luaSets =
            {
                {Key("0a000000 0302010a 18000000"),
                 "{bolType=10, bolVpnv4McastMaskLen=24, bolVpnv4McastPrefix=167838211}"},
                {Key("0b000100 ffffffff feffffff"),
                 "{bolType=65547, bolVpnv4McastMaskLen=4294967294, bolVpnv4McastPrefix=4294967295}"},
            },
        .luaGets = LuaTables(),
    });
}

[[maybe_unused]] const bool kStated =
    StateTests<Vpnv4Mcast>("Vpnv4Mcast", Case()) &&
    StateTests("Vpnv4McastEntry", EntryCase(Case(), 10, "VPNV4MCAST", &SYSDT_VPNV4MCASTPrefixNewLuaGet));

TEST_F(Vpnv4Mcast, EveryMaskLength)
{
    for (uint32_t mask = 0; mask <= 32; ++mask) {
        EXPECT_EQ(Value("VPNV4MCPREFIX", "10.1.1.0/" + std::to_string(mask)), Key("0a000000 0001010a" + Le32(mask)));
    }
}

TEST_F(Vpnv4Mcast, AnyAmountOfOuterBlanksIsTrimmed)
{
    EXPECT_EQ(CodeOf("VPNV4MCPREFIX", std::string(400, ' ') + "1.1.1.1/8" + std::string(400, '\t')), DT_OK);
}

TEST_F(Vpnv4Mcast, ParserFillsThePayload)
{
    ExpectParserPointers(SYSDT_Str2Vpnv4McastPrefix, "10.1.1.0/24");
    const Parsed parsed = Parse(SYSDT_Str2Vpnv4McastPrefix, " 10.1.1.0/24\t", 8);
    EXPECT_EQ(parsed.code, DT_OK);
    EXPECT_EQ(parsed.bytes, "0001010a18000000");
    for (const char *text : {"", "10.1.1.0", "1.1.1.1/33", "1.1.1.256/8", "10.1.1.0/ 24", "255.255.255.255/032"}) {
        const Parsed refused = Parse(SYSDT_Str2Vpnv4McastPrefix, text, 8);
        EXPECT_EQ(refused.code, DT_ERR_FAIL) << text;
        EXPECT_EQ(refused.bytes, "0000000000000000") << text;
    }
}

TEST_F(Vpnv4Mcast, ThePrinterStandsAlone)
{
    const Printed printed = Print(SYSDT_Vpnv4McastPrefix2Str, "0001010a18000000");
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "10.1.1.0");
    EXPECT_EQ(printed.length, 8u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(Print(SYSDT_Vpnv4McastPrefix2Str, "0001010a18000000").code, DT_ERR_FAIL);
}

TEST_F(Vpnv4Mcast, LuaGetWantsMoreThanItsRegisteredLength)
{
    EXPECT_EQ(LuaGet("VPNV4MCPREFIX", "{bolType = 10, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}").code,
              DT_ERR_INVALID_PARAM);
}

TEST_F(Vpnv4Mcast, CannotBeTypedIntoTheComposite)
{
    EXPECT_EQ(CodeOf("BOLPREFIX", "10.1.1.0/24"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Text("BOLPREFIX", Key("0a000000 0001010a 18000000")), "10.1.1.0");
}

TEST_F(Vpnv4Mcast, TheReaderKeepsWholeNumbers)
{
    const std::string none = Unwritten();
    const std::string prefix = With(none, 4, "0302010a");
    ExpectReaderPointers(10);
    ExpectReads(
        10, {
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 24", DT_OK, With(prefix, 8, "18000000"), -1},
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 4294967295", DT_OK,
                 With(prefix, 8, "ffffffff"), -1},
                {"bolVpnv4McastPrefix = '167838211', bolVpnv4McastMaskLen = '65536'", DT_OK,
                 With(prefix, 8, "00000100"), -1},
                {"bolVpnv4McastMaskLen = 24", DT_ERR_INVALID_PARAM, none, 1},
                {"bolVpnv4McastPrefix = 'x', bolVpnv4McastMaskLen = 24", DT_ERR_INVALID_PARAM, none, 1},
                {"bolVpnv4McastPrefix = {}, bolVpnv4McastMaskLen = 24", DT_ERR_INVALID_PARAM, none, 1},
                {"bolVpnv4McastPrefix = 0x0A010203", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 'x'", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = {24}", DT_ERR_INVALID_PARAM, prefix, 2},
                {"", DT_ERR_INVALID_PARAM, none, 1},
            });
}

// clang-format off
constexpr Refused kReasons[] = {
    // text                        rule         at length
    {"",                           "empty",      0, 0},
    {"10.1.1.0/24 and too long",   "too-long",   0, 24, 18},
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
    {"10.1.9999999.0/24",          "too-large",  5, 7, 255, "octet 3 of the prefix"},
    {"10.1.1.256/24",              "too-large",  7, 3, 255, "octet 4 of the prefix"},
    {"10.1.1.0/33",                "too-large",  9, 2, 32, "the mask length"},
    {"10.1.1.0/24",                "mode",       0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(Vpnv4Mcast, Reasons)
{
    CheckRefusals("VPNV4MCPREFIX", kReasons);
    constexpr std::string_view kGood[] = {"10.1.1.0/24", " 0.0.0.0/0\t", "10.1.1.0/24x", "1.1.1.1/032"};
    CheckAccepted("VPNV4MCPREFIX", kGood);
}

} // namespace
