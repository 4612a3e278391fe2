// SD-WAN, sub-type 16 of the composite route key: route type u16 at byte 4, port-local identifier u32 at 8, site
// identifier u32 at 12, node IPv4 word at 16 or IPv6 bytes at 20, family u8 at 36 (0 IPv4, 1 IPv6).
#include "support/refusals.h"
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class Sdwan : public PlugIn {};

constexpr size_t kBody = 33; // bytes behind the sub-type word

DataTypeDescriptor SdwanRow()
{
    return SubType(16);
}

const std::string kDb8_1 = "20010db8000000000000000000000001"; // 2001:db8::1

// The payload of an IPv6 key: the three numbers as they lie in memory (12 bytes), no IPv4 word, address, family.
std::string Six(std::string_view numbers, std::string_view address)
{
    return std::string(numbers) + "00000000" + std::string(address) + "01";
}

const std::string kNumbers = "0100 0000 64000000 c8000000";        // 1-100-200
const std::string kFour = Key("10000000" + kNumbers + "0101010a"); // 1-100-200-10.1.1.1
const std::string kSix = Key("10000000" + Six(kNumbers, kDb8_1));  // 1-100-200-2001:db8::1

// IPv4, then IPv6
const std::vector<TextCase> kAccepted = {
    {"1-100-200-10.1.1.1", kFour},
    {"0-0-0-0.0.0.0", Key("10000000")}, // 13 characters
    {"258-16909060-84281096-9.10.11.12", Key("10000000 0201 0000 04030201 08070605 0c0b0a09")},
    {"65535-65535-65536-255.0.255.0", Key("10000000 ffff 0000 ffff0000 00000100 00ff00ff")},
    // 43 characters
    {"65535-4294967295-4294967295-255.255.255.255", Key("10000000 ffff 0000 ffffffff ffffffff ffffffff")},
    {"\t 1-100-200-10.1.1.1 \t", kFour, "1-100-200-10.1.1.1"},
    {std::string(400, '\t') + "1-100-200-10.1.1.1" + std::string(400, ' '), kFour, "1-100-200-10.1.1.1"},
    {"1-100-200-2001:db8::1", kSix},
    {"0-0-0-::", Key("10000000" + Six(std::string(24, '0'), std::string(32, '0')))},
    {"258-16909060-84281096-::1",
     Key("10000000" + Six("0201 0000 04030201 08070605", "00000000000000000000000000000001"))},
    {"65535-4294967295-4294967295-1111:2222:3333:4444:5555:6666:7777:8888",
     Key("10000000" + Six("ffff 0000 ffffffff ffffffff", "11112222333344445555666677778888"))},
    {"1-100-200-102:304:506:708:90a:b0c:d0e:f10", Key("10000000" + Six(kNumbers, "0102030405060708090a0b0c0d0e0f10"))},
    {" \t1-100-200-2001:db8::1\t ", kSix, "1-100-200-2001:db8::1"},
    // only the length of the printed form is compared
    {"1-100-200-2001:DB8::1", kSix, "1-100-200-2001:db8::1"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "-",
    "---",
    "----",
    "1",
    "1-2",
    "1-2-3",
    "1-2-3-",
    "-2-3-10.1.1.1",
    "1--3-10.1.1.1",
    "1-2--10.1.1.1",
    "1-2-3-.",
    "1-2-3-...",
    // octets
    "1-100-200-256.1.1.1",
    "1-100-200-1.256.1.1",
    "1-100-200-1.1.256.1",
    "1-100-200-1.1.1.256",
    "1-100-200-4294967295.1.1.1",
    "1-100-200-4294967296.1.1.1",
    "1-100-200-10.1.1",
    "1-100-200-10.1.1.",
    "1-100-200-10.1.1.1.1",
    "1-100-200-10.1.1.x",
    // numbers
    "65536-100-200-10.1.1.1",
    "65537-100-200-10.1.1.1",
    "4294967296-100-200-10.1.1.1",
    "1-4294967296-200-10.1.1.1",
    "1-100-4294967296-10.1.1.1",
    "x-100-200-10.1.1.1",
    "1-x-200-10.1.1.1",
    "1-100-x-10.1.1.1",
    // leading zeros, signs, trailing characters: another length than printed
    "01-100-200-10.1.1.1",
    "1-0100-200-10.1.1.1",
    "1-100-0200-10.1.1.1",
    "1-100-200-010.1.1.1",
    "1-100-200-10.1.1.01",
    "+1-100-200-10.1.1.1",
    "1-+100-200-10.1.1.1",
    "1-100--200-10.1.1.1",
    "1-100-200-10.1.1.1x",
    "1-100-200-10.1.1.1]",
    "1-100-200-10.1.1.1-",
    "1-100-200-10.1.1.1/32",
    "1-100-200-10.1.1.1\n",
    "1-\n100-200-10.1.1.1",
    "1-100-200-10.1.1.1\xff",
    // separators and blanks
    "1:100:200:10.1.1.1",
    "1/100/200/10.1.1.1",
    "1-100-200:10.1.1.1",
    "1-100-10.1.1.1",
    "1-2-100-200-10.1.1.1",
    "1 -100-200-10.1.1.1",
    "1- 100-200-10.1.1.1",
    "1-100-200-10.1. 1.1",
    "1-100-200-\t10.1.1.1",
    "1-100-200- 2001:db8::1",
    "1-100-200-2001:db8:: 1",
    // lengths: 12 and 44 with a dot, 5 and 70 without
    "0-0-0-0.0.0.",
    "0-0-00.0.0.0",
    "65535-4294967295-4294967295-255.255.255.2555",
    "065535-4294967295-4294967295-255.255.255.255",
    "0-0-0",
    "1-2-:",
    "65535-4294967295-4294967295-1111:2222:3333:4444:5555:6666:7777:8888:::",
    std::string(5000, '1'),
    "1-2-3-" + std::string(300, 'a'),
    "1-2-3-." + std::string(300, 'a'),
    // IPv6: spellings of another length than the one that is printed
    "1-100-200-2001:db8:0:0:0:0:0:1",
    "1-100-200-2001:db8:0::1",
    "1-100-200-2001:0db8::1",
    "1-100-200-2001:db8::0001",
    "01-100-200-2001:db8::1",
    "1-0100-200-2001:db8::1",
    "1-100-0200-2001:db8::1",
    "1-100-200-0::0",
    // IPv6: no address, numbers
    "1-100-200-x",
    "1-100-200-zz::1",
    "1-100-200-2001:db8::12345",
    "1-100-200-2001:db8::1x",
    "1-100-200-2001:db8::1]",
    "1-100-200-2001:db8:::1",
    "1-100-200-300",
    "65536-100-200-2001:db8::1",
    "1-4294967296-200-2001:db8::1",
    "1-100-4294967296-2001:db8::1",
    "x-100-200-2001:db8::1",
    "+1-100-200-2001:db8::1",
    "1-100-2001:db8::1",
    "1-100-200-2001:db8::1%1",
    "1-100-200-\xff\xff",
    // a dot makes it IPv4
    "1-100-200-::ffff:10.0.0.1",
    "1-100-200-2001:db8::1.",
    // keys of other sub-types
    "10.1.1.1",
    "[1][2][10.0.0.1]",
    "1/10.1.1.1/100",
    "100-2001::1",
    "2001:db8::1",
    "2001::1-2001::2-2001::3-2001::4",
};

const std::string kHead = "10000000" + kNumbers + "0101010a" + kDb8_1;

TypeCase Case()
{
    return KeyCase({
        .row = {0, 0, 0, "SD-WAN", &SYSDT_SdwanPrefixFormatIn, &SYSDT_SdwanPrefixFormatOut, &SYSDT_SdwanPrefixCheck,
                &SYSDT_SdwanPrefixHelp, &SYSDT_SdwanPrefixCompare, nullptr, &SYSDT_SdwanPrefixLuaSet, nullptr, nullptr},
        .entry = &g_astBOL_PREFIX_ProcTable[16],
        .subType = 16,
        .reader = &SYSDT_SdwanPrefixNewLuaGet,
        .contract = {.value = kFour, .helpText = "X-X-X-X.X.X.X", .helpPlainMemory = true},
        .alsoSwept = {{"1-100-200-2001:db8::1", kSix}},
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                // a shorter value reads as if zeros followed
                {"0-0-0-0.0.0.0", "10000000"},
                {"1-0-0-0.0.0.0", "1000000001"},
                {"1-100-200-10.1.1.1", "10000000" + kNumbers + "0101010a"},
                {"1-100-200-10.1.1.1", Padded(kFour, 90)},
                // the family chooses the form
                {"1-100-200-10.1.1.1", Key(kHead + "00")},
                {"1-100-200-2001:db8::1", Key(kHead + "01")},
                {"1-100-200-2001:db8::1", Key(kHead + "02")},
                {"1-100-200-2001:db8::1", Key(kHead + "80")},
                {"1-100-200-2001:db8::1", Key(kHead + "ff")},
                // the two bytes behind the route type are not printed
                {"1-100-200-10.1.1.1", With(kFour, 6, "ffff")},
            },
        .printFailures = {kFour, kSix},
        // a value that is cut off loses its family
        .lengths = {{36, "1-100-200-0.0.0.0", kSix}, {37, "1-100-200-2001:db8::1", kSix}},
        .compares =
            {
                {With(kFour, 6, "01"), kFour, 1}, // the bytes behind the route type count
                {Key("10000000 0100"), Key("10000000 0001"), 1},
            },
        .comparesBytes = true,
        .comparePointers = DT_ERR_NULL_PTR,
        .luaSets =
            {
                {kFour,
                 "{bolSdwanNodeIDv4=167837953, bolSdwanNodeIDv6={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}, "
                 "bolSdwanPortLocalID=100, bolSdwanPrefixType=0, bolSdwanSiteID=200, bolSdwanType=1, bolType=16}"},
                {Key("0f000100 ffff ffff feffffff fdffffff fcffffff 0102030405060708090a0b0c0d0e0fff 07"),
                 "{bolSdwanNodeIDv4=4294967292, bolSdwanNodeIDv6={1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,255}, "
                 "bolSdwanPortLocalID=4294967294, bolSdwanPrefixType=7, bolSdwanSiteID=4294967293, bolSdwanType=65535, "
                 "bolType=65551}"},
            },
    });
}

[[maybe_unused]] const bool kStated = StateTests<Sdwan>("Sdwan", Case());

TEST_F(Sdwan, TheCompositeReadsAndPrintsThemToo)
{
    ExpectKeys(Row("BOLPREFIX"), kAccepted);
}

TEST_F(Sdwan, EveryRouteTypeStandsInItsTwoBytes)
{
    for (uint32_t type = 0; type <= 65535; ++type) {
        const std::string text = std::to_string(type) + "-1-2-1.1.1.1";
        const Parsed parsed = Parse(SYSDT_Str2SdwanPrefix, text, kKeyLength);
        ASSERT_EQ(parsed.code, DT_OK) << text;
        ASSERT_EQ(parsed.bytes,
                  Key("10000000" + Le16(static_cast<uint16_t>(type)) + "0000 01000000 02000000 01010101"));
        const Printed printed = Print(SYSDT_SdwanPrefix2Str, parsed.bytes.substr(8, 2 * kBody));
        ASSERT_EQ(printed.text, text);
    }
}

TEST_F(Sdwan, ParsersReportTheirOwnCodes)
{
    for (auto *parse : {SYSDT_Str2SdwanV4Prefix, SYSDT_Str2SdwanV6Prefix, SYSDT_Str2SdwanPrefix}) {
        ExpectParserPointers(parse, "1-100-200-10.1.1.1");
    }
    const Parsed four = Parse(SYSDT_Str2SdwanV4Prefix, "1-100-200-10.1.1.1", kBody);
    EXPECT_EQ(four.code, DT_OK);
    EXPECT_EQ(four.bytes, Padded(kNumbers + "0101010a", kBody));
    const Parsed six = Parse(SYSDT_Str2SdwanV6Prefix, "1-100-200-2001:db8::1", kBody);
    EXPECT_EQ(six.code, DT_OK);
    EXPECT_EQ(six.bytes, Hex(Bytes(Six(kNumbers, kDb8_1))));
    for (const char *text : {"", "0-0-0-0.0.0.", "065535-4294967295-4294967295-255.255.255.255", "1-100-200-10.1.1.256",
                             "01-100-200-10.1.1.1", "65536-1-1-10.1.1.1"}) {
        EXPECT_EQ(Parse(SYSDT_Str2SdwanV4Prefix, text, kBody).code, DT_ERR_FAIL) << text;
    }
    for (const char *text : {"", "0-0-0", "1-100-", "1-x-200-2001:db8::1", "1-100-200-", "1-100-200-2001:db8:0::1",
                             "65535-4294967295-4294967295-1111:2222:3333:4444:5555:6666:7777:8888:::"}) {
        EXPECT_EQ(Parse(SYSDT_Str2SdwanV6Prefix, text, kBody).code, DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(Parse(SYSDT_Str2SdwanV6Prefix, "1-100-200-x", kBody).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(Parse(SYSDT_Str2SdwanV6Prefix, "1-100-200-2001:db8::12345", kBody).code, DT_ERR_INVALID_PARAM);
}

TEST_F(Sdwan, ARefusedTextStillGetsItsSubType)
{
    const struct {
        const char *text;
        uint32_t code;
    } rows[] = {
        {"1-100-200-10.1.1.256", DT_ERR_FAIL},    {"01-100-200-10.1.1.1", DT_ERR_FAIL},
        {"1-100-200-2001:db8:0::1", DT_ERR_FAIL}, {"0-0-0", DT_ERR_FAIL},
        {"1-100-200-x", DT_ERR_INVALID_PARAM},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        std::string value = Bytes("ffffffff" + std::string(2 * 85, '0'));
        EXPECT_EQ(SYSDT_Str2SdwanPrefix(row.text, value.data()), row.code);
        EXPECT_EQ(Hex(value).substr(0, 8), "10000000");
    }
    for (const char *text : {"1-100-200-10.1.1.1", "1-100-200-2001:db8::1"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(Parse(SYSDT_Str2SdwanPrefix, text, kKeyLength).code, DT_ERR_FAIL) << text;
    }
}

TEST_F(Sdwan, PrintersTellTheLength)
{
    const std::string four = Padded(kNumbers + "0101010a", kBody);
    const std::string six = Six(kNumbers, kDb8_1);
    for (auto *print : {SYSDT_SdwanPrefix2Str, SYSDT_SdwanV4Prefix2Str}) {
        const Printed printed = Print(print, four);
        EXPECT_EQ(printed.code, DT_OK);
        EXPECT_EQ(printed.text, "1-100-200-10.1.1.1");
        EXPECT_EQ(printed.length, 18u);
    }
    for (auto *print : {SYSDT_SdwanPrefix2Str, SYSDT_SdwanV6Prefix2Str}) {
        const Printed printed = Print(print, six);
        EXPECT_EQ(printed.code, DT_OK);
        EXPECT_EQ(printed.text, "1-100-200-2001:db8::1");
        EXPECT_EQ(printed.length, 21u);
    }
    for (auto *print : {SYSDT_SdwanPrefix2Str, SYSDT_SdwanV4Prefix2Str, SYSDT_SdwanV6Prefix2Str}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(Print(print, six).code, DT_ERR_FAIL);
    }
}

TEST_F(Sdwan, AFailedPrintReleasesOnlyItsOwnBuffer)
{
    ExpectPrintFailures(SdwanRow(), kFour, 1);
    ExpectPrintFailures(SdwanRow(), kSix, 1);
}

TEST_F(Sdwan, AnotherSubTypeReleasesTheBufferWhoseverItIs)
{
    ExpectOtherSubTypesRelease(SdwanRow(), kFour,
                               {"0f000000", "00000000", "0e000000", "11000000", "10010000", "10000001", "ffffffff"});
}

const std::string kLuaSix = "{32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}"; // 2001:db8::1

TEST_F(Sdwan, Reader)
{
    const std::string none = Unwritten();
    const std::string one = With(none, 4, "0100"); // bytes 6 and 7 are left alone
    const std::string two = With(one, 8, "64000000");
    const std::string three = With(two, 12, "c8000000");
    const std::string four = With(three, 16, "0101010a");
    const std::string five = With(four, 20, kDb8_1);
    const std::string type = "bolSdwanType = 1, ";
    const std::string port = "bolSdwanPortLocalID = 100, ";
    const std::string site = "bolSdwanSiteID = 200, ";
    const std::string v4 = "bolSdwanNodeIDv4 = 0x0A010101, ";
    const std::string v6 = "bolSdwanNodeIDv6 = " + kLuaSix + ", ";
    const std::string family = "bolSdwanPrefixType = 1";
    ExpectReaderPointers(16);
    ExpectReads(
        16, {
                {type + port + site + v4 + v6 + family, DT_OK, With(five, 36, "01"), 0},
                {type + port + site + v4 + v6 + "bolSdwanPrefixType = 256", DT_OK, With(five, 36, "00"), 0},
                {"bolSdwanType = 65537, bolSdwanPortLocalID = 4294967295, bolSdwanSiteID = 4294967296, "
                 "bolSdwanNodeIDv4 = '5', bolSdwanNodeIDv6 = {288,'1',-1,0,0,0,0,0,0,0,0,0,0,0,0,1,99}, "
                 "bolSdwanPrefixType = '255'",
                 DT_OK, With(one, 8, "ffffffff 00000000 05000000 2001ff00000000000000000000000001 ff"), 0},
                {port + site + v4 + v6 + family, DT_ERR_INVALID_PARAM, none, 1},
                {"bolSdwanType = 'x', " + port + site + v4 + v6 + family, DT_ERR_INVALID_PARAM, none, 1},
                {"bolSdwanType = {}, " + port + site + v4 + v6 + family, DT_ERR_INVALID_PARAM, none, 1},
                {type + site + v4 + v6 + family, DT_ERR_INVALID_PARAM, one, 2},
                {type + "bolSdwanPortLocalID = 'x', " + site + v4 + v6 + family, DT_ERR_INVALID_PARAM, one, 2},
                {type + "bolSdwanPortLocalID = {}, " + site + v4 + v6 + family, DT_ERR_INVALID_PARAM, one, 2},
                {type + port + v4 + v6 + family, DT_ERR_INVALID_PARAM, two, 3},
                {type + port + "bolSdwanSiteID = 'x', " + v4 + v6 + family, DT_ERR_INVALID_PARAM, two, 3},
                {type + port + "bolSdwanSiteID = {}, " + v4 + v6 + family, DT_ERR_INVALID_PARAM, two, 3},
                {type + port + site + v6 + family, DT_ERR_INVALID_PARAM, three, 4},
                {type + port + site + "bolSdwanNodeIDv4 = '10.1.1.1', " + v6 + family, DT_ERR_INVALID_PARAM, three, 4},
                {type + port + site + "bolSdwanNodeIDv4 = {}, " + v6 + family, DT_ERR_INVALID_PARAM, three, 4},
                {type + port + site + v4 + family, DT_ERR_INVALID_PARAM, four, 5},
                {type + port + site + v4 + "bolSdwanNodeIDv6 = 'x', " + family, DT_ERR_INVALID_PARAM, four, 5},
                {type + port + site + v4 + "bolSdwanNodeIDv6 = 1, " + family, DT_ERR_INVALID_PARAM, four, 5},
                {type + port + site + v4 + "bolSdwanNodeIDv6 = {}, " + family, DT_ERR_INVALID_PARAM, four, 6},
                {type + port + site + v4 + "bolSdwanNodeIDv6 = {'x',1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}, " + family,
                 DT_ERR_INVALID_PARAM, four, 6},
                {type + port + site + v4 + v6, DT_ERR_INVALID_PARAM, five, 6},
                {type + port + site + v4 + v6 + "bolSdwanPrefixType = 'x'", DT_ERR_INVALID_PARAM, five, 6},
                {type + port + site + v4 + v6 + "bolSdwanPrefixType = {}", DT_ERR_INVALID_PARAM, five, 6},
                {"", DT_ERR_INVALID_PARAM, none, 1},
            });
}

TEST_F(Sdwan, AnArrayWithAHoleStaysOnTheStack)
{
    const std::string front = "{bolSdwanType = 1, bolSdwanPortLocalID = 2, bolSdwanSiteID = 3, bolSdwanNodeIDv4 = 4, "
                              "bolSdwanPrefixType = 1, bolSdwanNodeIDv6 = ";
    const LuaIn fifth = ReadKey(16, front + "{32,1,13,184,{},0,0,0,0,0,0,0,0,0,0,1}}");
    EXPECT_EQ(fifth.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(fifth.growth, 5 + 5);
    EXPECT_EQ(fifth.value.substr(48), Unwritten().substr(48)); // byte 24 and on
    const LuaIn sixteenth = ReadKey(16, front + "{32,1,13,184,0,0,0,0,0,0,0,0,0,0,0}}");
    EXPECT_EQ(sixteenth.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(sixteenth.growth, 5 + 16);
    EXPECT_EQ(sixteenth.value.substr(70), Unwritten().substr(70)); // byte 35 and on
}

TEST_F(Sdwan, LuaGetIsTheReaderWithItsArgumentsInOrder)
{
    lua_State *L = host::NewLua();
    const std::string script = "return {bolSdwanType = 1, bolSdwanPortLocalID = 100, bolSdwanSiteID = 200, "
                               "bolSdwanNodeIDv4 = 0, bolSdwanNodeIDv6 = " +
                               kLuaSix + ", bolSdwanPrefixType = 1}";
    ASSERT_EQ(luaL_dostring(L, script.c_str()), LUA_OK);
    for (int i = 0; i < 3; ++i) {
        lua_pushnil(L);
    }
    char value[kKeyLength] = {};
    EXPECT_EQ(SYSDT_SdwanPrefixLuaGet(nullptr, 1, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SdwanPrefixLuaGet(L, 1, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(lua_gettop(L), 4);
    EXPECT_EQ(SYSDT_SdwanPrefixLuaGet(L, 1, value), DT_OK);
    EXPECT_EQ(lua_gettop(L), 4);
    EXPECT_EQ(Hex(value, sizeof value), With(kSix, 0, "00000000"));
    host::CloseLua(L);
}

TEST_F(Sdwan, ComesBackFromItsLuaTable)
{
    for (const std::string &value : {kFour, kSix}) {
        const LuaIn in = LuaGet("BOLPREFIX", LuaSet("BOLPREFIX", value).table);
        EXPECT_EQ(in.code, DT_OK);
        // 37 bytes are written, but for the two behind the route type.
        EXPECT_EQ(With(in.value, 6, "0000").substr(0, 74), value.substr(0, 74));
        EXPECT_EQ(in.value.substr(12, 4), "eeee");
        EXPECT_EQ(in.value.substr(74), Unwritten().substr(74));
    }
}

// ------------------------------------------------------------------------------------------------------------- Endian

TEST_F(Sdwan, EndianSwapsTheNumbersOfABody)
{
    const std::string address = "0102030405060708090a0b0c0d0e0f10";
    const std::string body = "0102 0304 05060708 090a0b0c 0d0e0f10" + address;
    std::string four = Bytes(body + "00");
    EXPECT_EQ(SYSDT_SdwanPrefixEndian(&four, 0, 0, four.data()), DT_OK);
    EXPECT_EQ(Hex(four), "02010304080706050c0b0a09100f0e0d" + address + "00");
    EXPECT_EQ(SYSDT_SdwanPrefixEndian(&four, 0, 0, four.data()), DT_OK);
    EXPECT_EQ(Hex(four), Hex(Bytes(body + "00")));
    for (const char *family : {"01", "02", "ff"}) {
        std::string six = Bytes(body + family);
        EXPECT_EQ(SYSDT_SdwanPrefixEndian(&six, 0, 0, six.data()), DT_OK);
        EXPECT_EQ(Hex(six), "02010304080706050c0b0a090d0e0f10" + address + family);
    }
    const std::string before = four;
    EXPECT_EQ(SYSDT_SdwanPrefixEndian(nullptr, 0, 0, four.data()), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SdwanPrefixEndian(&four, 0, 0, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(four, before);
}

// clang-format off
constexpr Refused kReasons[] = {
    // text                                     rule            at length
    {"",                                        "empty",         0, 0},
    {"1-100-200-10.1.1.1 and what stands behind it", "blank",   18, 1},
    {"1-100-200-10.1.1.1-and-what-stands-behind-it", "too-long", 0, 44, 43},
    {"x-100-200-10.1.1.1",                      "digit",         0, 1},
    {"1-100--10.1.1.1",                         "digit",         6, 1},
    {"1-100-200-.1.1.1",                        "digit",        10, 1},
    {"1",                                       "separator",     1, 0, 0, "-"},
    {"1-100",                                   "separator",     5, 0, 0, "-"},
    {"1-100-10.1.1.1",                          "separator",     8, 1, 0, "-"},
    {"1-100-200-10.1.1",                        "separator",    16, 0, 0, "."},
    {"65536-100-200-10.1.1.1",                  "too-large",     0, 5, 65535, "the route type"},
    {"1-4294967296-200-::1",                    "too-large",     2, 10, 4294967295, "the port"},
    {" 1-100-4294967296-::1",                   "too-large",     7, 10, 4294967295, "the site"},
    {"1-100-200-10.1.1.256",                    "too-large",    17, 3, 255, "an octet of the node"},
    {"01-100-200-10.1.1.1",                     "leading-zero",  0, 2, 0, "the route type"},
    {"1-100-0200-::1",                          "leading-zero",  6, 4, 0, "the site"},
    {"1-100-200-10.1.1.1x",                     "behind",       18, 1, 0, "an octet of the node"},
    {"1-100-200-::1\v",                         "behind",       13, 1, 0, "the node"},
    {"1-\r100-200-10.1.1.1",                    "character",     2, 1},
    {"1-100-200-",                              "empty",        10, 0, 0, "the node"},
    {"1-100-200-2001:db8::g",                   "ipv6",         20, 1, 0, "the node"},
    {"1-100-200-300",                           "ipv6",         10, 3, 0, "the node"},
    {"1-100-200-2001:DB8:0::1",                 "spelling",     10, 13, 0, "the node"},
    {"1-100-200-10.1.1.1",                      "mode",          0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(Sdwan, Reasons)
{
    CheckSubTypeRefusals(16, kReasons);
}

} // namespace
