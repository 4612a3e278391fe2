// RPD, sub-type 12 of the composite route key: policy type u8 at byte 4, distinguisher u32 at byte 6, peer IPv4 word at
// byte 10. Typed and printed as type, peer and distinguisher, "1/10.1.1.1/100".
#include "support/refusals.h"
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class Rpd : public PlugIn {};

DataTypeDescriptor RpdRow()
{
    return SubType(12);
}

const std::string kValue = Key("0c000000 0100 64000000 0101010a"); // 1/10.1.1.1/100

const std::vector<TextCase> kAccepted = {
    {"1/10.1.1.1/100", kValue},
    {"0/0.0.0.0/0", Key("0c000000")},
    {"0/1.2.3.4/1", Key("0c000000 0000 01000000 04030201")},
    {"1/255.255.255.255/4294967295", Key("0c000000 0100 ffffffff ffffffff")},
    {"0/10.0.0.0/65535", Key("0c000000 0000 ffff0000 0000000a")},
    {"0/10.0.0.0/65536", Key("0c000000 0000 00000100 0000000a")},
    {"1/1.2.3.4/16909060", Key("0c000000 0100 04030201 04030201")},
    {"\t 1/10.1.1.1/100\t ", kValue, "1/10.1.1.1/100"},
    {std::string(500, '\t') + "1/10.1.1.1/100" + std::string(500, ' '), kValue, "1/10.1.1.1/100"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "/",
    "//",
    "2/10.1.1.1/100",
    "256/10.1.1.1/100",
    "4294967295/10.1.1.1/100",
    "4294967296/10.1.1.1/100",
    "/10.1.1.1/100",
    "1/10.1.1.1/",
    "1/10.1.1.1",
    "1/10.1.1/100",
    "1/10.1.1.1.1/100",
    "1//100",
    "1/256.1.1.1/100",
    "1/1.256.1.1/100",
    "1/1.1.256.1/100",
    "1/1.1.1.256/100",
    "1/4294967296.1.1.1/100",
    "1/10.1.1.1/4294967296",
    "1/10.1.1.1/99999999999",
    // printed back they have another length
    "01/10.1.1.1/100",
    "1/010.1.1.1/100",
    "1/10.01.1.1/100",
    "1/10.1.1.01/100",
    "1/10.1.1.1/0100",
    "1/10.1.1.1/100x",
    "1/10.1.1.1/100/",
    "1/10.1.1.1/100.",
    "1/10.1.1.1/100\xff",
    "1/10.1.1.1/100\n",
    "1/10.1.1.1/\n100",
    "\n1/10.1.1.1/100",
    "00/00.00.00.00/00",
    "1/255.255.255.255/04294967295",
    // signs, blanks, characters
    "+1/10.1.1.1/100",
    "-1/10.1.1.1/100",
    "1/10.1.1.1/+100",
    "1/10.1.1.1/-1",
    "1 /10.1.1.1/100",
    "1/ 10.1.1.1/100",
    "1/10.1.1.1/ 100",
    "1/10.1.1.1\t/100",
    "x/10.1.1.1/100",
    "1/10.1.1.1/x",
    "1:10.1.1.1:100",
    "1-10.1.1.1-100",
    "\xb1/10.1.1.1/100",
    "0x1/10.1.1.1/100",
    // 10 characters, and 32
    "1/1.1.1.1/",
    "0/0.0.0.0/" + std::string(22, '0'),
    "1/255.255.255.255/" + std::string(14, '1'),
    std::string(5000, '1'),
    // keys of other sub-types
    "10.1.1.1",
    "10.1.1.0/24",
    "100",
    "100:10.1.1.1",
    "[1][2][10.0.0.1]",
    "1-100-200-10.1.1.1",
    "2001:db8::1",
    "1/2001::1/100",
};

std::vector<LuaCase> LuaTables()
{
    const std::string typed = Unwritten("0c000000");
    const std::string policy = Unwritten("0c000000 01");
    const std::string peer = With(policy, 10, "0302010a");
    const std::string three = "bolRpdPolicyType = 1, bolRpdPeerAddr = 0x0A010203, bolRpdDistinguisher = 100}";
    return {
        {"{bolType = 12, " + three, DT_OK, With(peer, 6, "64000000"), 1}, // byte 5 is left alone
        {"{bolType = 12, bolRpdPolicyType = 257, bolRpdPeerAddr = 4294967295, bolRpdDistinguisher = 4294967296}", DT_OK,
         With(With(policy, 10, "ffffffff"), 6, "00000000"), 1},
        {"{bolType = '12', bolRpdPolicyType = '1', bolRpdPeerAddr = '167838211', bolRpdDistinguisher = '100'}", DT_OK,
         With(peer, 6, "64000000"), 1},
        {"{bolType = 11, " + three, DT_ERR_FAIL, Unwritten("0b000000"), 2},
        {"{bolType = 268, " + three, DT_ERR_FAIL, Unwritten("0c010000"), 2},
        {"{" + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 'x', " + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = {}, " + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 12, bolRpdPeerAddr = 2, bolRpdDistinguisher = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 12, bolRpdPolicyType = 'x', bolRpdPeerAddr = 2, bolRpdDistinguisher = 3}", DT_ERR_INVALID_PARAM,
         typed, 3},
        {"{bolType = 12, bolRpdPolicyType = {}, bolRpdPeerAddr = 2, bolRpdDistinguisher = 3}", DT_ERR_INVALID_PARAM,
         typed, 3},
        {"{bolType = 12, bolRpdPolicyType = 1, bolRpdDistinguisher = 3}", DT_ERR_INVALID_PARAM, policy, 4},
        {"{bolType = 12, bolRpdPolicyType = 1, bolRpdPeerAddr = 'x', bolRpdDistinguisher = 3}", DT_ERR_INVALID_PARAM,
         policy, 4},
        {"{bolType = 12, bolRpdPolicyType = 1, bolRpdPeerAddr = {}, bolRpdDistinguisher = 3}", DT_ERR_INVALID_PARAM,
         policy, 4},
        {"{bolType = 12, bolRpdPolicyType = 1, bolRpdPeerAddr = 0x0A010203}", DT_ERR_INVALID_PARAM, peer, 5},
        {"{bolType = 12, bolRpdPolicyType = 1, bolRpdPeerAddr = 0x0A010203, bolRpdDistinguisher = 'x'}",
         DT_ERR_INVALID_PARAM, peer, 5},
        {"{bolType = 12, bolRpdPolicyType = 1, bolRpdPeerAddr = 0x0A010203, bolRpdDistinguisher = {}}",
         DT_ERR_INVALID_PARAM, peer, 5},
        {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"12", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"'1/10.1.1.1/100'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
    };
}

TypeCase Case()
{
    return KeyCase({
        .row = {0, 0, 0, "RPD", &SYSDT_RpdPrefixFormatIn, &SYSDT_RpdPrefixFormatOut, &SYSDT_RpdPrefixCheck,
                &SYSDT_RpdPrefixHelp, &SYSDT_RpdPrefixCompare, nullptr, &SYSDT_RpdPrefixLuaSet, &SYSDT_RpdPrefixLuaGet,
                nullptr},
        .entry = &g_astBOL_PREFIX_ProcTable[12],
        .subType = 12,
        .reader = &SYSDT_RpdPrefixNewLuaGet,
        .contract = {.value = kValue, .helpText = "X/X.X.X.X/X", .helpPlainMemory = true},
        .accepted = kAccepted,
        .refused = kRefused,
        .checkLength = 27,
        .compares =
            {
                {kValue, kValue, 0},
                {With(kValue, 4, "02"), kValue, 1},
                {With(kValue, 4, "00"), kValue, -1},
                {With(kValue, 5, "01"), kValue, 1},
                {Key("0c000000 0000 01000000"), Key("0c000000 0000 000000ff"), 1},
                {Key("0c000000 80"), Key("0c000000 7f"), 1},
                {With(kValue, 88, "01"), kValue, 1},
                {With(kValue, 88, "01"), kValue, 0, 88},
                {Key("ff"), kValue, 0, 0},
            },
        .comparesBytes = true,
        .comparePointers = DT_ERR_NULL_PTR,
        .luaSets =
            {
                {kValue, "{bolRpdDistinguisher=100, bolRpdPeerAddr=167837953, bolRpdPolicyType=1, bolType=12}"},
                {Key("0b000100 ffff feffffff fdffffff"),
                 "{bolRpdDistinguisher=4294967294, bolRpdPeerAddr=4294967293, bolRpdPolicyType=255, bolType=65547}"},
            },
        .luaGets = LuaTables(),
    });
}

[[maybe_unused]] const bool kStated = StateTests<Rpd>("Rpd", Case());

TEST_F(Rpd, TheCompositeReadsAndPrintsThemToo)
{
    ExpectKeys(Row("BOLPREFIX"), kAccepted);
}

TEST_F(Rpd, ParserFillsThePayload)
{
    ExpectParserPointers(SYSDT_Str2RpdPrefix, "1/10.1.1.1/100");
    const Parsed parsed = Parse(SYSDT_Str2RpdPrefix, " 1/10.1.1.1/258\t", 10);
    EXPECT_EQ(parsed.code, DT_OK);
    EXPECT_EQ(parsed.bytes, "0100020100000101010a");
    for (const char *text : {"", "x", "2/10.1.1.1/100", "1/010.1.1.1/100", "1/10.1.1.1/ 1", "1/10.1.1.256/1"}) {
        const Parsed refused = Parse(SYSDT_Str2RpdPrefix, text, 10);
        EXPECT_EQ(refused.code, DT_ERR_FAIL) << text;
        EXPECT_EQ(refused.bytes, "00000000000000000000") << text;
    }
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(Parse(SYSDT_Str2RpdPrefix, "1/10.1.1.1/100", 10).code, DT_ERR_FAIL);
}

TEST_F(Rpd, PrintsWhatTheFieldsHold)
{
    EXPECT_EQ(FormatOut(RpdRow(), Key("0c000000 ff00 ffffffff fcfdfeff")).text, "255/255.254.253.252/4294967295");
    EXPECT_EQ(FormatOut(RpdRow(), Key("0c000000 02ff 01000000 01000000")).text,
              "2/0.0.0.1/1"); // byte 5 is not looked at
    EXPECT_EQ(FormatOut(RpdRow(), "0c000000").text, "0/0.0.0.0/0");
    EXPECT_EQ(FormatOut(RpdRow(), "0c00000001").text, "1/0.0.0.0/0");
    EXPECT_EQ(FormatOut(RpdRow(), "0c00000001006400000001").text, "1/0.0.0.1/100");
    EXPECT_EQ(FormatOut(RpdRow(), Padded("0c000000010064000000"
                                         "0101010a",
                                         27))
                  .text,
              "1/10.1.1.1/100");
    EXPECT_EQ(FormatOut(RpdRow(), Padded("0c000000010064000000"
                                         "0101010a",
                                         90))
                  .text,
              "1/10.1.1.1/100");
    const Printed printed = Print(SYSDT_RpdPrefix2Str, "0100 64000000 0101010a");
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "1/10.1.1.1/100");
    EXPECT_EQ(printed.length, 14u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(Print(SYSDT_RpdPrefix2Str, "0100 64000000 0101010a").code, DT_ERR_FAIL);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(FormatOut(RpdRow(), kValue).code, DT_ERR_FAIL);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(FormatOutInto(RpdRow(), kValue, 1, kKeyTextSize).out.code, DT_ERR_FAIL);
}

TEST_F(Rpd, AnotherSubTypeReleasesTheBufferWhoseverItIs)
{
    ExpectOtherSubTypesRelease(RpdRow(), kValue,
                               {"0b000000", "00000000", "0d000000", "0c010000", "0c000001", "ffffffff"});
}

TEST_F(Rpd, Reader)
{
    const std::string none = Unwritten();
    const std::string policy = With(none, 4, "01");
    const std::string peer = With(policy, 10, "0302010a");
    const std::string two = "bolRpdPolicyType = 1, bolRpdPeerAddr = 0x0A010203";
    ExpectReaderPointers(12);
    ExpectReads(
        12,
        {
            {two + ", bolRpdDistinguisher = 100", DT_OK, With(peer, 6, "64000000"), -1},
            {two + ", bolRpdDistinguisher = 4294967295", DT_OK, With(peer, 6, "ffffffff"), -1},
            {"bolRpdPolicyType = 511, bolRpdPeerAddr = '1', bolRpdDistinguisher = '2'", DT_OK,
             With(With(With(none, 4, "ff"), 10, "01000000"), 6, "02000000"), -1},
            {"bolRpdPeerAddr = 2, bolRpdDistinguisher = 3", DT_ERR_INVALID_PARAM, none, 1},
            {"bolRpdPolicyType = 'x', bolRpdPeerAddr = 2, bolRpdDistinguisher = 3", DT_ERR_INVALID_PARAM, none, 1},
            {"bolRpdPolicyType = {}, bolRpdPeerAddr = 2, bolRpdDistinguisher = 3", DT_ERR_INVALID_PARAM, none, 1},
            {"bolRpdPolicyType = 1, bolRpdDistinguisher = 3", DT_ERR_INVALID_PARAM, policy, 2},
            {"bolRpdPolicyType = 1, bolRpdPeerAddr = 'x', bolRpdDistinguisher = 3", DT_ERR_INVALID_PARAM, policy, 2},
            {"bolRpdPolicyType = 1, bolRpdPeerAddr = {}, bolRpdDistinguisher = 3", DT_ERR_INVALID_PARAM, policy, 2},
            {two, DT_ERR_INVALID_PARAM, peer, 3},
            {two + ", bolRpdDistinguisher = 'x'", DT_ERR_INVALID_PARAM, peer, 3},
            {two + ", bolRpdDistinguisher = {}", DT_ERR_INVALID_PARAM, peer, 3},
            {"", DT_ERR_INVALID_PARAM, none, 1},
        });
}

TEST_F(Rpd, EndianSwapsTheTwoWordsBehindTheType)
{
    std::string payload = Bytes("0102 03040506 0708090a 0b");
    EXPECT_EQ(SYSDT_RpdPrefixEndian(&payload, 0, 10, payload.data()), DT_OK);
    EXPECT_EQ(Hex(payload), "0102060504030a0908070b");
    EXPECT_EQ(SYSDT_RpdPrefixEndian(&payload, 279, 0, payload.data()), DT_OK); // the length is not looked at
    EXPECT_EQ(Hex(payload), "0102030405060708090a0b");
    EXPECT_EQ(SYSDT_RpdPrefixEndian(&payload, 0, 10, nullptr), DT_ERR_NULL_PTR);
}

// clang-format off
constexpr Refused kReasons[] = {
    // text                              rule            at length
    {"",                                 "empty",         0, 0},
    {"1/10.1.1.1/00000000000000000000100", "too-long",    0, 34, 31},
    {"1/10.1.1.1 /100",                  "blank",        10, 1},
    {"1x/10.1.1.1 /100",                 "separator",     1, 1, 0, "/"}, // in front of the blank
    {"/10.1.1.1/100",                    "digit",         0, 1},
    {"1/10.1.1.1/",                      "digit",        11, 0},
    {"1//100",                           "digit",         2, 1},
    {"1",                                "separator",     1, 0, 0, "/"},
    {" 1/10.1.1.1",                      "separator",    11, 0, 0, "/"},
    {"1/10.1.1/100",                     "separator",     8, 1, 0, "."},
    {"1:10.1.1.1/100",                   "separator",     1, 1, 0, "/"},
    {"2/10.1.1.1/100",                   "too-large",     0, 1, 1, "the policy type"},
    {"99999999999/10.1.1.1/100",         "too-large",     0, 11, 1, "the policy type"},
    {"1/256.1.1.1/100",                  "too-large",     2, 3, 255, "an octet of the peer"},
    {"1/10.1.1.256/100",                 "too-large",     9, 3, 255, "an octet of the peer"},
    {"1/10.1.1.1/4294967296",            "too-large",    11, 10, 4294967295, "the distinguisher"},
    {"01/10.1.1.1/100",                  "leading-zero",  0, 2, 0, "the policy type"},
    {"1/10.1.01.1/100",                  "leading-zero",  7, 2, 0, "an octet of the peer"},
    {"1/10.1.1.1/0100",                  "leading-zero", 11, 4, 0, "the distinguisher"},
    {"1/10.1.1.1/100x",                  "behind",       14, 1, 0, "the distinguisher"},
    {"1/10.1.1.1/100/1",                 "behind",       14, 2, 0, "the distinguisher"},
    {"1/10.1.1.1/\v100",                 "character",    11, 1},
    {"1/10.1.1.1/100",                   "mode",          0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(Rpd, Reasons)
{
    CheckSubTypeRefusals(12, kReasons);
}

} // namespace
