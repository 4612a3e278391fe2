// SRPOLICY, sub-type 14 of the composite route key: the key of a segment-routing policy (RFC 9830). Distinguisher u32
// at byte 4, colour u32 at 8, endpoint IPv4 word at 12 or IPv6 bytes at 16, family u8 at 32 (0 IPv4, 1 IPv6).
#include "support/refusals.h"
#include "support/route_key.h"

#include <arpa/inet.h>

#include <sstream>

namespace {

using namespace bgp::test;

class SrPolicy : public PlugIn {};

constexpr size_t kBody = 29; // bytes behind the sub-type word

DataTypeDescriptor Sr()
{
    return SubType(14);
}

const std::string kDb8_1 = "20010db8000000000000000000000001"; // 2001:db8::1

// The payload of an IPv6 key: distinguisher and colour as they lie in memory, no IPv4 word, address, family.
std::string Six(std::string_view numbers, std::string_view address)
{
    return std::string(numbers) + "00000000" + std::string(address) + "01";
}

const std::string kFour = Key("0e000000 01000000 02000000 0100000a");       // [1][2][10.0.0.1]
const std::string kSix = Key("0e000000" + Six("0100000002000000", kDb8_1)); // [1][2][2001:db8::1]

// IPv4, then IPv6
const std::vector<TextCase> kAccepted = {
    {"[1][2][10.0.0.1]", kFour},
    {"[1][2][1.1.1.1]", Key("0e000000 01000000 02000000 01010101")}, // 15 characters
    {"[0][0][0.0.0.0]", Key("0e000000")},
    {"[16909060][84281096][9.10.11.12]", Key("0e000000 04030201 08070605 0c0b0a09")},
    {"[65535][65536][255.0.255.0]", Key("0e000000 ffff0000 00000100 00ff00ff")},
    {"[4294967295][4294967295][255.255.255.255]", Key("0e000000 ffffffff ffffffff ffffffff")},
    {" \t[1][2][10.0.0.1]\t ", kFour, "[1][2][10.0.0.1]"},
    {"[1][2][10.0.0.1] ", kFour, "[1][2][10.0.0.1]"},
    {std::string(400, ' ') + "[1][2][10.0.0.1]" + std::string(400, '\t'), kFour, "[1][2][10.0.0.1]"},
    {"[1][2][2001:db8::1]", kSix},
    {"[0][0][::]", Key("0e000000" + Six("0000000000000000", std::string(32, '0')))},
    {"[16909060][84281096][::1]", Key("0e000000" + Six("0403020108070605", "00000000000000000000000000000001"))},
    {"[4294967295][4294967295][1111:2222:3333:4444:5555:6666:7777:8888]",
     Key("0e000000" + Six("ffffffffffffffff", "11112222333344445555666677778888"))},
    {"[1][2][102:304:506:708:90a:b0c:d0e:f10]",
     Key("0e000000" + Six("0100000002000000", "0102030405060708090a0b0c0d0e0f10"))},
    {"[1][2][fe80::a]", Key("0e000000" + Six("0100000002000000", "fe80000000000000000000000000000a"))},
    {"\t [1][2][2001:db8::1] \t", kSix, "[1][2][2001:db8::1]"},
    // only the length of the printed form is compared
    {"[1][2][2001:DB8::1]", kSix, "[1][2][2001:db8::1]"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "[",
    "[]",
    "[][][]",
    "[1]",
    "[1][2]",
    "[1][2][]",
    "[1][2][",
    "[1][2][.]",
    // IPv4: leading zeros, signs, trailing characters
    "[1][2][10.0.0.01]",
    "[1][2][010.0.0.1]",
    "[01][2][10.0.0.1]",
    "[1][02][10.0.0.1]",
    "[+1][2][10.0.0.1]",
    "[-1][2][10.0.0.1]",
    "[1][2][+10.0.0.1]",
    "[1][2][10.0.0.1]]",
    "[1][2][10.0.0.1]x",
    "[1][2][10.0.0.1",
    "[1][2][10.0.0.1/32]",
    "[1][2][10.0.0.1].",
    "[1][2][10.0.0.1]\n",
    "[1][\n2][10.0.0.1]",
    // fields
    "[1][2][10.0.0]",
    "[1][2][10.0.0.]",
    "[1][2][10.0.0.0.1]",
    "[1][2][10.0.0.x]",
    "[1][2][x.0.0.1]",
    "[1][10.0.0.1]",
    "[1][2][3][10.0.0.1]",
    "[][2][10.0.0.1]",
    "[1][][10.0.0.1]",
    "[a][2][10.0.0.1]",
    "[1][b][10.0.0.1]",
    "[4294967296][2][10.0.0.1]",
    "[1][4294967296][10.0.0.1]",
    "[1][2][4294967296.0.0.1]",
    "[1][2][0.0.0.4294967296]",
    "[99999999999][2][10.0.0.1]",
    // brackets
    "1][2][10.0.0.1]",
    "(1)(2)(10.0.0.1)",
    "[1][2]10.0.0.1]]",
    "[1]-[2][10.0.0.1]",
    "[1][2]:10.0.0.1]",
    "x[1][2][10.0.0.1]",
    // blanks
    "[1] [2][10.0.0.1]",
    "[ 1][2][10.0.0.1]",
    "[1][2][10.0.0.1 ]",
    "[1][2]\t[10.0.0.1]",
    "[1][2][ 2001::1]",
    "[1][2][2001::1\t]",
    // lengths: 14 and 43 with a dot, 7 and 68 without
    "[1][2][1.1.1.1",
    "[1][2][1.1.1.]",
    "[1][][1.1.1.1]",
    "[4294967295][4294967295][1000.1000.255.255]",
    "[1][2][",
    "[4294967295][4294967295][1111:2222:3333:4444:5555:6666:7777:8888]]]]",
    std::string(5000, '['),
    "[1][2][" + std::string(300, 'a') + "]",
    "[1][2][." + std::string(300, 'a') + "]",
    // IPv6: spellings of another length than the one that is printed
    "[1][2][2001:db8:0:0:0:0:0:1]",
    "[1][2][2001:db8:0::1]",
    "[1][2][2001:0db8::1]",
    "[1][2][2001:db8::0001]",
    "[01][2][2001:db8::1]",
    "[1][02][2001:db8::1]",
    "[1][2][0::0]",
    "[1][2][2001:db8::1]x",
    "[1][2][2001:db8::1]]",
    // IPv6: no address, numbers
    "[1][2][zz::1]",
    "[1][2][2001:db8::12345]",
    "[1][2][2001:db8:::1]",
    "[1][2][2001:db8]",
    "[1][2][12345678]",
    "[+1][2][2001:db8::1]",
    "[4294967296][2][2001:db8::1]",
    "[1][4294967296][2001:db8::1]",
    "[1][2]2001:db8::1]",
    "[1][2001:db8::1]",
    "[1][2][2001:db8::1%1]",
    "[1][2][\xff\xff\xff]",
    // a dot makes it IPv4
    "[1][2][::ffff:10.0.0.1]",
    "[1][2][2001:db8::1].",
    // keys of other sub-types
    "10.0.0.1",
    "1-100-200-10.1.1.1",
    "1/10.1.1.1/100",
    "100:10.1.1.1:225.1.1.1",
    "2001:db8::1",
};

const std::string kHead = "0e000000 01000000 02000000 0100000a" + kDb8_1;

TypeCase Case()
{
    return KeyCase({
        .row = {0, 0, 0, "SRPOLICY", &SYSDT_SrPolicyPrefixFormatIn, &SYSDT_SrPolicyPrefixFormatOut,
                &SYSDT_SrPolicyPrefixCheck, &SYSDT_SrPolicyPrefixHelp, &SYSDT_SrPolicyPrefixCompare, nullptr,
                &SYSDT_SrPolicyPrefixLuaSet, nullptr, nullptr},
        .entry = &g_astBOL_PREFIX_ProcTable[14],
        .subType = 14,
        .reader = &SYSDT_SrPolicyPrefixNewLuaGet,
        .contract = {.value = kFour, .helpText = "[X][X][X.X.X.X]", .helpPlainMemory = true},
        .alsoSwept = {{"[1][2][2001:db8::1]", kSix}},
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                // a shorter value reads as if zeros followed
                {"[0][0][0.0.0.0]", "0e000000"},
                {"[1][0][0.0.0.0]", "0e00000001"},
                {"[1][2][10.0.0.1]", "0e00000001000000020000000100000a"},
                {"[1][2][10.0.0.1]", Padded(kFour, 90)},
                // the family chooses the form
                {"[1][2][10.0.0.1]", Key(kHead + "00")},
                {"[1][2][2001:db8::1]", Key(kHead + "01")},
                {"[1][2][2001:db8::1]", Key(kHead + "02")},
                {"[1][2][2001:db8::1]", Key(kHead + "80")},
                {"[1][2][2001:db8::1]", Key(kHead + "ff")},
            },
        .printFailures = {kFour, kSix},
        // a value that is cut off loses its family
        .lengths = {{32, "[1][2][0.0.0.0]", kSix}, {33, "[1][2][2001:db8::1]", kSix}},
        .compares =
            {
                {With(kFour, 33, "01"), kFour, 1}, // the padding counts
                                                   // in memory the least significant byte comes first
                {Key("0e000000 01000000"), Key("0e000000 00010000"), 1},
            },
        .comparesBytes = true,
        .comparePointers = DT_ERR_NULL_PTR,
        .luaSets =
            {
                {kFour, "{bolSrPolicyDistinguisher=1, bolSrPolicyEndpointv4=167772161, "
                        "bolSrPolicyEndpointv6={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}, bolSrPolicyPolicyColor=2, "
                        "bolSrPolicyPolicyType=0, bolType=14}"},
                {Key("0f000100 ffffffff feffffff fdffffff 0102030405060708090a0b0c0d0e0fff 07"),
                 "{bolSrPolicyDistinguisher=4294967295, bolSrPolicyEndpointv4=4294967293, "
                 "bolSrPolicyEndpointv6={1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,255}, bolSrPolicyPolicyColor=4294967294, "
                 "bolSrPolicyPolicyType=7, bolType=65551}"},
            },
    });
}

[[maybe_unused]] const bool kStated = StateTests<SrPolicy>("SrPolicy", Case());

TEST_F(SrPolicy, TheCompositeReadsAndPrintsThemToo)
{
    ExpectKeys(Row("BOLPREFIX"), kAccepted);
}

TEST_F(SrPolicy, OctetsAboveTheirRangeSpillOver)
{
    const std::vector<TextCase> texts = {
        {"[1][2][1.1.1.256]", Key("0e000000 01000000 02000000 00010101"), "[1][2][1.1.1.0]"},
        {"[1][2][1.1.1.300]", Key("0e000000 01000000 02000000 2c010101"), "[1][2][1.1.1.44]"},
        {"[1][2][1.1.0.256]", Key("0e000000 01000000 02000000 00010101"), "[1][2][1.1.1.0]"},
        {"[1][2][0.256.0.0]", Key("0e000000 01000000 02000000 00000001"), "[1][2][1.0.0.0]"},
        {"[1][2][256.0.0.0]", Key("0e000000 01000000 02000000 00000000"), "[1][2][0.0.0.0]"},
        {"[1][2][257.0.0.0]", Key("0e000000 01000000 02000000 00000001"), "[1][2][1.0.0.0]"},
        {"[1][2][0.0.0.4294967295]", Key("0e000000 01000000 02000000 ffffffff"), "[1][2][255.255.255.255]"},
        // 42 characters
        {"[4294967295][4294967295][1000.255.255.255]", Key("0e000000 ffffffff ffffffff ffffffe8"),
         "[4294967295][4294967295][232.255.255.255]"},
    };
    ExpectKeys(Sr(), texts);
}

TEST_F(SrPolicy, TheLastCharacterIsNeverLookedAt)
{
    EXPECT_EQ(FormatIn(Sr(), "[1][2][10.0.0.1x").value, kFour);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][10.0.0.1[").value, kFour);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][10.0.0.1.").value, kFour);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][10.0.0.1\xff").value, kFour);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][2001:db8::1x").value, kSix);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][2001:db8::1\x80").value, kSix);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][2001:db8::12").value, kSix);
    EXPECT_EQ(FormatIn(Sr(), "[1][2][2001:db8::1").value,
              Key("0e000000" + Six("0100000002000000", "20010db8000000000000000000000000"))); // 2001:db8::
    // Behind an octet a digit belongs to the number, and the printed form has one character more.
    EXPECT_EQ(FormatIn(Sr(), "[1][2][10.0.0.12").code, DT_ERR_INVALID_PARAM);
}

TEST_F(SrPolicy, ParsersReportTheirOwnCodes)
{
    for (auto *parse : {SYSDT_Str2SrPolicyPrefix, SYSDT_Str2Srv4PolicyPrefix}) {
        ExpectParserPointers(parse, "[1][2][10.0.0.1]");
        const Parsed parsed = Parse(parse, "[1][2][10.0.0.1]", kBody);
        EXPECT_EQ(parsed.code, DT_OK);
        EXPECT_EQ(parsed.bytes, Padded("01000000020000000100000a", kBody));
        for (const char *text : {"[1][2][10.0.0.01]", "[1][2][1.1.1.1", "[1][2][10.0.0.x]",
                                 "[4294967295][4294967295][1000.1000.255.255]"}) {
            EXPECT_EQ(Parse(parse, text, kBody).code, DT_ERR_FAIL) << text;
        }
    }
    for (auto *parse : {SYSDT_Str2SrPolicyPrefix, SYSDT_Str2Srv6PolicyPrefix}) {
        ExpectParserPointers(parse, "[1][2][2001:db8::1]");
        const Parsed parsed = Parse(parse, "[1][2][2001:db8::1]", kBody);
        EXPECT_EQ(parsed.code, DT_OK);
        EXPECT_EQ(parsed.bytes, Hex(Bytes(Six("0100000002000000", kDb8_1))));
        for (const char *text : {"", "[1][2][", "[1][x][2001:db8::1]", "[1][2][2001:db8:0::1]", "[1][2][2001:db8::1]]",
                                 "[4294967295][4294967295][1111:2222:3333:4444:5555:6666:7777:8888]]]]"}) {
            const uint32_t code = Parse(parse, text, kBody).code;
            EXPECT_TRUE(code == DT_ERR_FAIL || code == DT_ERR_INVALID_PARAM) << text;
        }
        // Seven characters, no third item, another length than printed; then what is no address.
        EXPECT_EQ(Parse(parse, "[1][2][", kBody).code, DT_ERR_FAIL);
        EXPECT_EQ(Parse(parse, "[1][22][", kBody).code, DT_ERR_FAIL);
        EXPECT_EQ(Parse(parse, "[1][2][2001:db8:0::1]", kBody).code, DT_ERR_FAIL);
        EXPECT_EQ(Parse(parse, "[1][2][zz::1]", kBody).code, DT_ERR_INVALID_PARAM);
        EXPECT_EQ(Parse(parse, "[1][2][]", kBody).code, DT_ERR_INVALID_PARAM);
        EXPECT_EQ(Parse(parse, "[1][2][2001:db8::1]]", kBody).code, DT_ERR_INVALID_PARAM);
    }
    EXPECT_EQ(Parse(SYSDT_Str2SrPolicyPrefix, " [1][2][10.0.0.1]\t", kBody).code, DT_OK);
    EXPECT_EQ(Parse(SYSDT_Str2SrPolicyPrefix, "[1] [2][10.0.0.1]", kBody).code, DT_ERR_FAIL);
    EXPECT_EQ(Parse(SYSDT_Str2SrPolicyPrefix, "[1][2][2001:db8:: 1]", kBody).code, DT_ERR_FAIL);
    for (const char *text : {"[1][2][10.0.0.1]", "[1][2][2001:db8::1]"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(Parse(SYSDT_Str2SrPolicyPrefix, text, kBody).code, DT_ERR_FAIL) << text;
    }
}

TEST_F(SrPolicy, TheEndpointInWords)
{
    const std::string body = Bytes("aaaaaaaa bbbbbbbb cccccccc 0102030405060708090a0b0c0d0e0f10 01");
    uint16_t words[8] = {};
    SYSDT_Ipv6AddrNtoH(body.data(), words);
    const uint16_t expected[8] = {0x0102, 0x0304, 0x0506, 0x0708, 0x090a, 0x0b0c, 0x0d0e, 0x0f10};
    for (size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(words[i], expected[i]) << i;
    }
}

TEST_F(SrPolicy, PrintersTellTheLength)
{
    const std::string four = Padded("01000000020000000100000a", kBody);
    const std::string six = Six("0100000002000000", kDb8_1);
    for (auto *print : {SYSDT_SrPolicyPrefix2Str, SYSDT_Srv4PolicyPrefix2Str}) {
        const Printed printed = Print(print, four);
        EXPECT_EQ(printed.code, DT_OK);
        EXPECT_EQ(printed.text, "[1][2][10.0.0.1]");
        EXPECT_EQ(printed.length, 16u);
    }
    for (auto *print : {SYSDT_SrPolicyPrefix2Str, SYSDT_Srv6PolicyPrefix2Str}) {
        const Printed printed = Print(print, six);
        EXPECT_EQ(printed.code, DT_OK);
        EXPECT_EQ(printed.text, "[1][2][2001:db8::1]");
        EXPECT_EQ(printed.length, 19u);
    }
    for (auto *print : {SYSDT_SrPolicyPrefix2Str, SYSDT_Srv4PolicyPrefix2Str, SYSDT_Srv6PolicyPrefix2Str}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(Print(print, six).code, DT_ERR_FAIL);
    }
}

TEST_F(SrPolicy, AFailedPrintReleasesOnlyItsOwnBuffer)
{
    ExpectPrintFailures(Sr(), kFour, 1);
    ExpectPrintFailures(Sr(), kSix, 1);
}

TEST_F(SrPolicy, AnotherSubTypeReleasesTheBufferWhoseverItIs)
{
    ExpectOtherSubTypesRelease(Sr(), kFour, {"0f000000", "00000000", "10000000", "0e010000", "0e000001", "ffffffff"});
}

const std::string kLuaSix = "{32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}"; // 2001:db8::1

TEST_F(SrPolicy, Reader)
{
    const std::string none = Unwritten();
    const std::string one = With(none, 4, "01000000");
    const std::string two = With(one, 8, "02000000");
    const std::string three = With(two, 12, "0100000a");
    const std::string four = With(three, 16, kDb8_1);
    const std::string d = "bolSrPolicyDistinguisher = 1, ";
    const std::string c = "bolSrPolicyPolicyColor = 2, ";
    const std::string v4 = "bolSrPolicyEndpointv4 = 0x0A000001, ";
    const std::string v6 = "bolSrPolicyEndpointv6 = " + kLuaSix + ", ";
    const std::string type = "bolSrPolicyPolicyType = 1";
    ExpectReaderPointers(14);
    // Five fields stand on the stack at the end, and six slots are dropped.
    ExpectReads(
        14,
        {
            {d + c + v4 + v6 + type, DT_OK, With(four, 32, "01"), -1},
            {d + c + v4 + v6 + "bolSrPolicyPolicyType = 256", DT_OK, With(four, 32, "00"), -1},
            {"bolSrPolicyDistinguisher = 4294967295, bolSrPolicyPolicyColor = 4294967296, bolSrPolicyEndpointv4 = '5', "
             "bolSrPolicyEndpointv6 = {288,'1',-1,0,0,0,0,0,0,0,0,0,0,0,0,1,99}, bolSrPolicyPolicyType = '255'",
             DT_OK, With(none, 4, "ffffffff 00000000 05000000 2001ff00000000000000000000000001 ff"), -1},
            {c + v4 + v6 + type, DT_ERR_INVALID_PARAM, none, 1},
            {"bolSrPolicyDistinguisher = 'x', " + c + v4 + v6 + type, DT_ERR_INVALID_PARAM, none, 1},
            {"bolSrPolicyDistinguisher = {}, " + c + v4 + v6 + type, DT_ERR_INVALID_PARAM, none, 1},
            {d + v4 + v6 + type, DT_ERR_INVALID_PARAM, one, 2},
            {d + "bolSrPolicyPolicyColor = 'x', " + v4 + v6 + type, DT_ERR_INVALID_PARAM, one, 2},
            {d + "bolSrPolicyPolicyColor = {}, " + v4 + v6 + type, DT_ERR_INVALID_PARAM, one, 2},
            {d + c + v6 + type, DT_ERR_INVALID_PARAM, two, 3},
            {d + c + "bolSrPolicyEndpointv4 = '10.0.0.1', " + v6 + type, DT_ERR_INVALID_PARAM, two, 3},
            {d + c + "bolSrPolicyEndpointv4 = {}, " + v6 + type, DT_ERR_INVALID_PARAM, two, 3},
            {d + c + v4 + type, DT_ERR_INVALID_PARAM, three, 4},
            {d + c + v4 + "bolSrPolicyEndpointv6 = 'x', " + type, DT_ERR_INVALID_PARAM, three, 4},
            {d + c + v4 + "bolSrPolicyEndpointv6 = 1, " + type, DT_ERR_INVALID_PARAM, three, 4},
            {d + c + v4 + "bolSrPolicyEndpointv6 = {}, " + type, DT_ERR_INVALID_PARAM, three, 5},
            {d + c + v4 + "bolSrPolicyEndpointv6 = {'x',1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}, " + type,
             DT_ERR_INVALID_PARAM, three, 5},
            {d + c + v4 + v6, DT_ERR_INVALID_PARAM, four, 5},
            {d + c + v4 + v6 + "bolSrPolicyPolicyType = 'x'", DT_ERR_INVALID_PARAM, four, 5},
            {d + c + v4 + v6 + "bolSrPolicyPolicyType = {}", DT_ERR_INVALID_PARAM, four, 5},
            {"", DT_ERR_INVALID_PARAM, none, 1},
        });
}

TEST_F(SrPolicy, AnArrayWithAHoleStaysOnTheStack)
{
    const std::string front = "{bolSrPolicyDistinguisher = 1, bolSrPolicyPolicyColor = 2, bolSrPolicyEndpointv4 = 3, "
                              "bolSrPolicyPolicyType = 1, bolSrPolicyEndpointv6 = ";
    const LuaIn fifth = ReadKey(14, front + "{32,1,13,184,{},0,0,0,0,0,0,0,0,0,0,1}}");
    EXPECT_EQ(fifth.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(fifth.growth, 4 + 5);
    EXPECT_EQ(fifth.value.substr(40), Unwritten().substr(40)); // byte 20 and on
    const LuaIn sixteenth = ReadKey(14, front + "{32,1,13,184,0,0,0,0,0,0,0,0,0,0,0}}");
    EXPECT_EQ(sixteenth.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(sixteenth.growth, 4 + 16);
    EXPECT_EQ(sixteenth.value.substr(62), Unwritten().substr(62)); // byte 31 and on
}

TEST_F(SrPolicy, LuaGetIsTheReaderWithItsArgumentsInOrder)
{
    lua_State *L = host::NewLua();
    const std::string script = "return {bolSrPolicyDistinguisher = 1, bolSrPolicyPolicyColor = 2, "
                               "bolSrPolicyEndpointv4 = 0, bolSrPolicyEndpointv6 = " +
                               kLuaSix + ", bolSrPolicyPolicyType = 1}";
    ASSERT_EQ(luaL_dostring(L, script.c_str()), LUA_OK);
    for (int i = 0; i < 3; ++i) {
        lua_pushnil(L);
    }
    char value[kKeyLength] = {};
    EXPECT_EQ(SYSDT_SrPolicyPrefixLuaGet(nullptr, 1, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SrPolicyPrefixLuaGet(L, 1, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(lua_gettop(L), 4);
    EXPECT_EQ(SYSDT_SrPolicyPrefixLuaGet(L, 1, value), DT_OK);
    EXPECT_EQ(lua_gettop(L), 3);
    EXPECT_EQ(Hex(value, sizeof value), With(kSix, 0, "00000000"));
    host::CloseLua(L);
}

TEST_F(SrPolicy, ComesBackFromItsLuaTable)
{
    for (const std::string &value : {kFour, kSix}) {
        const LuaIn in = LuaGet("BOLPREFIX", LuaSet("BOLPREFIX", value).table);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.value.substr(0, 66), value.substr(0, 66)); // the 33 bytes that are written
        EXPECT_EQ(in.value.substr(66), Unwritten().substr(66));
    }
}

// ------------------------------------------------------------------------------------------------------------- Endian

TEST_F(SrPolicy, EndianSwapsTheNumbersOfABody)
{
    const std::string address = "0102030405060708090a0b0c0d0e0f10";
    std::string four = Bytes("01020304 05060708 090a0b0c" + address + "00");
    EXPECT_EQ(SYSDT_SrPolicyPrefixEndian(&four, 0, 0, four.data()), DT_OK);
    EXPECT_EQ(Hex(four), "04030201080706050c0b0a09" + address + "00");
    EXPECT_EQ(SYSDT_SrPolicyPrefixEndian(&four, 0, 0, four.data()), DT_OK);
    EXPECT_EQ(Hex(four), "0102030405060708090a0b0c" + address + "00");
    for (const char *family : {"01", "02", "ff"}) {
        std::string six = Bytes("01020304 05060708 090a0b0c" + address + family);
        EXPECT_EQ(SYSDT_SrPolicyPrefixEndian(&six, 0, 0, six.data()), DT_OK);
        EXPECT_EQ(Hex(six), "0403020108070605090a0b0c" + address + family);
    }
    const std::string before = four;
    EXPECT_EQ(SYSDT_SrPolicyPrefixEndian(nullptr, 0, 0, four.data()), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SrPolicyPrefixEndian(&four, 0, 0, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(four, before);
}

// --------------------------------------------------------------------------------------------------------- real routes

// A line "endpoint colour distinguisher" as the bytes of a value, by the C library's own address reader.
std::string ValueOf(const std::string &endpoint, uint32_t colour, uint32_t distinguisher)
{
    const std::string numbers = Le32(distinguisher) + Le32(colour);
    char bytes[16];
    if (inet_pton(AF_INET, endpoint.c_str(), bytes) == 1) {
        return Key("0e000000" + numbers + Hex(std::string{bytes[3], bytes[2], bytes[1], bytes[0]}));
    }
    EXPECT_EQ(inet_pton(AF_INET6, endpoint.c_str(), bytes), 1) << endpoint;
    return Key("0e000000" + Six(numbers, Hex(bytes, 16)));
}

TEST_F(SrPolicy, RealKeysGoThroughTextAndLua)
{
    const char *const texts[] = {
        "[0][100][1.2.3.4]",     "[1][100][10.0.0.1]",    "[2][99][10.0.0.13]",   "[1][200][10.0.0.2]",
        "[0][300][10.0.0.3]",    "[0][100][10.1.1.1]",    "[0][200][10.2.2.2]",   "[0][200][10.20.20.20]",
        "[0][300][10.3.3.3]",    "[0][300][10.30.30.30]", "[0][400][10.4.4.4]",   "[0][600][10.60.60.60]",
        "[0][700][10.70.70.70]", "[0][900][10.90.90.90]", "[0][10][192.168.5.7]", "[0][100][2001:db8::1]",
        "[2][300][2001:db8::1]", "[0][500][::1]",
    };
    const std::vector<std::string> lines = RealValues("sr-policy.txt");
    ASSERT_EQ(lines.size(), std::size(texts));
    for (size_t i = 0; i < lines.size(); ++i) {
        SCOPED_TRACE(lines[i]);
        std::istringstream line(lines[i]);
        std::string endpoint;
        uint32_t colour = 0;
        uint32_t distinguisher = 0;
        ASSERT_TRUE(line >> endpoint >> colour >> distinguisher);
        const std::string value = ValueOf(endpoint, colour, distinguisher);
        EXPECT_EQ(Value("BOLPREFIX", texts[i]), value);
        EXPECT_EQ(Text("BOLPREFIX", value), texts[i]);
        EXPECT_EQ(Check("BOLPREFIX", value), DT_OK);
        const LuaIn in = LuaGet("BOLPREFIX", LuaSet("BOLPREFIX", value).table);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(Text("BOLPREFIX", in.value), texts[i]);
    }
}

// clang-format off
constexpr Refused kReasons[] = {
    // text                                     rule            at length
    {"",                                        "empty",         0, 0},
    {"[1][20][4294967295.4294967295.4294967295.1]", "too-long",   0, 43, 42},
    {"[1] [2][10.0.0.1]",                       "blank",         3, 1},
    {"[][2][10.0.0.1]",                         "digit",         1, 1},
    {"[1][x][::1]",                             "digit",         4, 1},
    {"[1][2][10.0.0.]",                         "digit",        14, 1},
    {"1",                                       "separator",     0, 1, 0, "["},
    {"[1]",                                     "separator",     3, 0, 0, "["},
    {"[1][2]",                                  "separator",     6, 0, 0, "["},
    {"[1][2][10.0.0]",                          "separator",    13, 1, 0, "."},
    {"[1,2][10.0.0.1]",                         "separator",     2, 1, 0, "]"},
    {"[1][2][10.0.0.1",                         "separator",    15, 0, 0, "]"},
    {"[4294967296][2][10.0.0.1]",               "too-large",     1, 10, 4294967295, "the distinguisher"},
    {" [1][4294967296][::1]",                   "too-large",     5, 10, 4294967295, "the colour"},
    {"[1][2][10.0.0.4294967296]",               "too-large",    14, 10, 4294967295, "an octet of the endpoint"},
    {"[01][2][10.0.0.1]",                       "leading-zero",  1, 2, 0, "the distinguisher"},
    {"[1][02][::1]",                            "leading-zero",  4, 2, 0, "the colour"},
    {"[1][2][10.0.0.01]",                       "leading-zero", 14, 2, 0, "an octet of the endpoint"},
    {"[1][2][10.0.0.1]x",                       "behind",       16, 1, 0, "an octet of the endpoint"},
    {"[1][2][::1]\n",                           "behind",       11, 1, 0, "the endpoint"},
    {"[1][\n2][10.0.0.1]",                      "character",     4, 1},
    {"[1][2][]",                                "empty",         7, 0, 0, "the endpoint"},
    {"[1][2][",                                 "empty",         7, 0, 0, "the endpoint"},
    {"[1][2][2001:db8:::1]",                    "ipv6",         17, 1, 0, "the endpoint"},
    {"[1][2][2001:db8::1]x",                    "ipv6",         18, 1, 0, "the endpoint"},
    {"[1][2][2001:db8:0::1]",                   "spelling",      7, 13, 0, "the endpoint"},
    {"[1][2][10.0.0.1]",                        "mode",          0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(SrPolicy, Reasons)
{
    CheckSubTypeRefusals(14, kReasons);
}

} // namespace
