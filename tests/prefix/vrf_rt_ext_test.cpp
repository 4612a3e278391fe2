// VRFRTEXT, sub-type 8 of the composite route key: sub-type word (4), route target (8), notation word (4), zeros up to
// 89 bytes. RFC 4360, RFC 5668 and the ES-import route target of RFC 7432 section 7.6.
#include "support/refusals.h"
#include "support/type_case.h"

#include "bgp_host_services.h"

#include <cstdio>
#include <cstring>

namespace {

using namespace bgp::test;

class VrfRtExt : public PlugIn {};

constexpr uint8_t kPrintModes[] = {1, 2, 3, 6};
constexpr uint8_t kDisplayModes[] = {1, 3, 6};

DataTypeDescriptor SubType()
{
    return Row(g_astBOL_PREFIX_ProcTable[8]);
}

// An 89-byte value of this sub-type: the hex of its first bytes behind the sub-type word.
std::string Key(std::string_view payload)
{
    return Padded("08000000" + std::string(payload), 89);
}

const std::vector<TextCase> kAccepted = {
    // AS:n, kind 0x0002, notation 1
    {"100:1", Key("0002 0064 00000001 01000000")},
    {"0:0", Key("0002 0000 00000000 01000000")},
    {"0:1", Key("0002 0000 00000001 01000000")},
    {"1:0", Key("0002 0001 00000000 01000000")},
    {"65535:0", Key("0002 ffff 00000000 01000000")},
    {"65535:65536", Key("0002 ffff 00010000 01000000")},
    {"65535:4294967295", Key("0002 ffff ffffffff 01000000")},
    {"258:50595078", Key("0002 0102 03040506 01000000")},
    // AS:n, kind 0x0202, notation 2
    {"65536:0", Key("0202 00010000 0000 02000000")},
    {"65536:65535", Key("0202 00010000 ffff 02000000")},
    {"16909060:1286", Key("0202 01020304 0506 02000000")},
    {"4294967295:65535", Key("0202 ffffffff ffff 02000000")},
    // x.y:n, kind 0x0202, notation 3
    {"1.2:3", Key("0202 0001 0002 0003 03000000")},
    {"0.0:0", Key("0202 0000 0000 0000 03000000")},
    {"0.100:1", Key("0202 0000 0064 0001 03000000")},
    {"65535.65535:65535", Key("0202 ffff ffff ffff 03000000")},
    {"258.772:1286", Key("0202 0102 0304 0506 03000000")},
    // a.b.c.d:n, kind 0x0102, notation 0
    {"10.1.1.1:5", Key("0102 0a010101 0005 00000000")},
    {"0.0.0.0:0", Key("0102 00000000 0000 00000000")},
    {"255.255.255.255:65535", Key("0102 ffffffff ffff 00000000")},
    {"010.001.000.007:0005", Key("0102 0a010007 0005 00000000")},
    // ES-import, kind 0x0602, notation 3
    {"0a0b-0c0d-0e0f", Key("0602 0a0b0c0d0e0f 03000000")},
    {"0A0B-0C0D-0E0F", Key("0602 0a0b0c0d0e0f 03000000")},
    {"0000-0000-0000", Key("0602 000000000000 03000000")},
    {"ffff-ffff-ffff", Key("0602 ffffffffffff 03000000")},
    {"FfFf-fFfF-abCD", Key("0602 ffffffffabcd 03000000")},
    {"1234-5678-9012", Key("0602 123456789012 03000000")},
    {"abc-def-123", Key("0602 ab0cde0f1203 03000000")}, // the second byte of a group may have one digit
    {"abc-0d0e-0f0", Key("0602 ab0c0d0e0f00 03000000")},
    // what follows the last field does not count
    {"1:2ab", Key("0002 0001 00000002 01000000")},
    {"1:2F", Key("0002 0001 00000002 01000000")},
    {"1:2-3", Key("0002 0001 00000002 01000000")},
    {"1:2-", Key("0002 0001 00000002 01000000")},
    {"1:2--3a-4b", Key("0002 0001 00000002 01000000")},
    {"65536:65535a", Key("0202 00010000 ffff 02000000")},
    {"1.2:3abc", Key("0202 0001 0002 0003 03000000")},
    {"1.2:3-4-5", Key("0202 0001 0002 0003 03000000")},
    {"1.2.3.4:5ef", Key("0102 01020304 0005 00000000")},
    {"1.2.3.4:5-6", Key("0102 01020304 0005 00000000")},
    {"0a0b-0c0d-0e0f0", Key("0602 0a0b0c0d0e0f 03000000")},
    {"0a0b-0c0d-0e0fff", Key("0602 0a0b0c0d0e0f 03000000")},
    // long texts
    {"0000000000000000100:01", Key("0002 0064 00000001 01000000")},     // 22 characters
    {std::string(97, '0') + "1:2", Key("0002 0001 00000002 01000000")}, // 100 characters
    {"1:" + std::string(97, '0') + "2", Key("0002 0001 00000002 01000000")},
    {"1.2:" + std::string(95, '0') + "3", Key("0202 0001 0002 0003 03000000")},
    {"1.2.3.4:5" + std::string(91, 'a'), Key("0102 01020304 0005 00000000")},
    {"0a0b-0c0d-0e0f" + std::string(86, '1'), Key("0602 0a0b0c0d0e0f 03000000")},
    // blanks around
    {" 100:1", Key("0002 0064 00000001 01000000")},
    {"0a0b-0c0d-0e0f\t ", Key("0602 0a0b0c0d0e0f 03000000")},
    {"  \t" + std::string(97, '0') + "1:2 \t ", Key("0002 0001 00000002 01000000")},
};

const std::vector<std::string> kRefused = {
    // nothing there
    "",
    " ",
    ":",
    "-",
    "--",
    "1",
    "1:",
    ":1",
    ".:",
    "...:",
    // 16 and 32 bits
    "65535:4294967296",
    "1:4294967297",
    "65536:65536",
    "65536:65537",
    "4294967295:65536",
    "4294967296:1",
    "4294967297:1",
    "4294967296:0",
    "18446744073709551616:1",
    "18446744073709551617:1",
    "1:18446744073709551616",
    "1:18446744073709551618",
    "340282366920938463463374607431768211457:1",
    "65536.0:1",
    "0.65536:1",
    "1.2:65536",
    "4294967297.2:3",
    "1.4294967298:3",
    "1.2:4294967299",
    "18446744073709551617.2:3",
    "256.2.3.4:1",
    "1.256.3.4:1",
    "1.2.256.4:1",
    "1.2.3.256:1",
    "1.2.3.4:65536",
    "4294967297.2.3.4:5",
    "1.4294967298.3.4:5",
    "1.2.4294967299.4:5",
    "1.2.3.4294967300:5",
    "1.2.3.4:4294967301",
    "1.2.3.4:18446744073709551621",
    // letters and dashes inside the fields
    "a:1",
    "1:a",
    "1a:2",
    "1-2:3",
    "-1:2",
    "1:-2",
    "1.a:3",
    "a.2:3",
    "1.2a:3",
    "1.2:a",
    "1a.2.3.4:5",
    "1.2.3.4a:5",
    "1.2.3.4:a5",
    "1.2.3.4-5:6",
    // separators
    "12",
    "1.2",
    "1.2.3.4",
    "1:2:3",
    "1::2",
    "1.2.3:4",
    "1.2.3.4.5:6",
    "1.2.3.4:5:6",
    "1:2.3",
    "1..2:3",
    "1.2:",
    ".1:2",
    "1.2.3.4:",
    "1:2.3.4.5",
    // ES-import
    "1-2",
    "0a0b-0c0d",
    "0a0b-0c0d-0e0f-",
    "-0a0b-0c0d-0e0f",
    "0a0b-0c0d-0e0f-1011",
    "0a0b0-0c0d-0e0f",
    "0a0b-0c0d0-0e0f",
    "0a-0b0c-0d0e",
    "1-2-3",
    "0a0b-0c-0d0e",
    "0a0b-0c0d-0e",
    "0a0b-0c0d-",
    "0a0b--0e0f",
    "-0c0d-0e0f",
    "0a0b-0c0d-0e.0f",
    "0a.0b-0c0d-0e0f",
    "0a0b-0c0d-0e0:f",
    "0a0b0c0d0e0f",
    "0a:0b:0c:0d:0e:0f",
    "0a-0b-0c-0d-0e-0f",
    "0g0b-0c0d-0e0f",
    "0a0b-0c0d-0e0g",
    "0x0a-0c0d-0e0f",
    // blanks inside
    "1: 2",
    "1 :2",
    "1\t:2",
    "1:2 a",
    "0a0b- 0c0d-0e0f",
    "0a0b-0c0d-0e0f ff",
    // other characters
    "g:1",
    "1:g",
    "1:2g",
    "+1:2",
    "1:*",
    "1:2\n",
    "1:2\xb2",
    "\xff:1",
    "1:2/3",
    "RT <1 : 2>",
    "target:1:2",
    "65412L:8000",
    // 101 characters
    std::string(98, '0') + "1:2",
    "1:2" + std::string(98, 'a'),
    "1:" + std::string(98, '0') + "2",
    "0a0b-0c0d-0e0f" + std::string(87, '1'),
    std::string(255, '0') + "1:2",
    std::string(70000, '0') + "1:2",
    // texts of the other types
    "2001:db8::1.1",
    "no-export",
    "2001:db8::1",
};

// The cases of both readers: bytes 0 to 3 and 16 to 88 are never written.
std::vector<LuaCase> LuaCases(int32_t growth)
{
    const auto value = [](const std::string &payload) {
        return Unwritten(4) + payload + Unwritten(85 - payload.size() / 2);
    };
    const std::string items = "{6,2,10,11,12,13,14,15}";
    const std::string bytes = "06020a0b0c0d0e0f";
    return {
        {"{bolType=8, RtType=3, RtValue=" + items + "}", DT_OK, value(bytes + "03000000"), growth},
        {"{bolType=9, RtType=258, RtValue=" + items + "}", DT_OK, value(bytes + "02000000"), growth},
        {"{bolType=8, RtType=4294967295, RtValue={256,257,511,512,65535,65536,-1,4294967295,9}}", DT_OK,
         value("0001ff00ff00ffffff000000"), growth},
        {"{bolType=8, RtType=3}", DT_ERR_INVALID_PARAM, value(""), kAnyGrowth},
        {"{bolType=8, RtType=3, RtValue=5}", DT_ERR_INVALID_PARAM, value(""), kAnyGrowth},
        {"{bolType=8, RtType=3, RtValue='1:2'}", DT_ERR_INVALID_PARAM, value(""), kAnyGrowth},
        {"{bolType=8, RtType=3, RtValue={}}", DT_ERR_INVALID_PARAM, value(""), kAnyGrowth},
        {"{bolType=8, RtType=3, RtValue={1,2,3,4,5,6,7}}", DT_ERR_INVALID_PARAM, value("01020304050607"), kAnyGrowth},
        {"{bolType=8, RtValue=" + items + "}", DT_ERR_INVALID_PARAM, value(bytes), kAnyGrowth},
        {"{bolType=8, RtType='x', RtValue=" + items + "}", DT_ERR_INVALID_PARAM, value(bytes), kAnyGrowth},
        {"{bolType=8, RtType={}, RtValue=" + items + "}", DT_ERR_INVALID_PARAM, value(bytes), kAnyGrowth},
    };
}

TypeCase Case()
{
    TypeCase type = {
        .row = {0, 0, 0, "VRFRTEXT", &SYSDT_VrfRtExtFormatIn, &SYSDT_VrfRtExtFormatOut, &SYSDT_EVNPrefixCheck,
                &SYSDT_VrfRtHelp, &SYSDT_VrfRtCompare, nullptr, &SYSDT_VrfRtExtLuaSet, &SYSDT_VrfRtExtLuaGet, nullptr},
        .entry = &g_astBOL_PREFIX_ProcTable[8],
        .subType = 8,
        .reader = &SSYSDT_VrfRtExtNewLuaGet,
        .contract = {.text = "100:1",
                     .value = Key("000200640000000101000000"),
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTRUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .resultTypeId = 0x117,
                     .resultLength = 89,
                     .textSize = 257},
        .accepted = kAccepted,
        .printsBack = false,
        .refused = kRefused,
        .blanked = {"100:1", "1.2:3", "1.2.3.4:5", "0a0b-0c0d-0e0f", std::string(97, '0') + "1:2"},
        .characters = {{"1:2", "", "0123456789abcdefABCDEF-", true}},
        .parser = &SYSDT_Str2VrfRtExt,
        .parsedBytes = 16, // the rest is FormatIn's
        .checkLength = 89,
        .checkTestsPointer = false,
        .compares =
            {
                {Key("000200640000000101000000"), Key("020200640000000101000000"), -1},
                {Key("020200640000000101000000"), Key("000200640000000101000000"), 1},
                {Key("000200640000000101000000"), Key("000200640000000101000000"), 0},
                {Key("000200640000000101000000"), Key("020200640000000101000000"), 0, 4},
                {Key(""), Key(std::string(168, '0') + "01"), -1},
                {Key(""), Key(std::string(168, '0') + "01"), 0, 88},
            },
        .luaLength = 89,
        .luaSets =
            {
                {Key("000200640000000101000000"), "{RtType=1, RtValue={0,2,0,100,0,0,0,1}, bolType=8}"},
                {Key("0602fffefdfcfbfaffffffff"),
                 "{RtType=4294967295, RtValue={6,2,255,254,253,252,251,250}, bolType=8}"},
                {Padded("00000080", 89), "{RtType=0, RtValue={0,0,0,0,0,0,0,0}, bolType=2147483648}"},
            },
        .luaGets = LuaCases(-1), // two slots are left when it pops three
        .luaArrays = {{"{bolType=8, RtType=3, RtValue=", "}", 8, 4, kAnyGrowth}},
        .luaRoundTrip = false,
    };
    const LuaCase more[] = {
        {"nil", DT_ERR_INVALID_PARAM, Unwritten(89), kAnyGrowth},
        {"5", DT_ERR_INVALID_PARAM, Unwritten(89), kAnyGrowth},
        {"'1:2'", DT_ERR_INVALID_PARAM, Unwritten(89), kAnyGrowth},
        // its own sub-type word is not asked for
        {"{RtType=3, RtValue={6,2,10,11,12,13,14,15}}", DT_OK,
         Unwritten(4) + "06020a0b0c0d0e0f03000000" + Unwritten(73), -1},
    };
    type.luaGets.insert(type.luaGets.end(), std::begin(more), std::end(more));
    return type;
}

[[maybe_unused]] const bool kStated = StateTests<VrfRtExt>("VrfRtExt", Case());

TEST_F(VrfRtExt, TheNameIsPaddedWithZeros)
{
    const BolPrefixSubtypeEntry &entry = g_astBOL_PREFIX_ProcTable[8];
    EXPECT_EQ(std::string(entry.Name, sizeof entry.Name), std::string("VRFRTEXT") + std::string(12, '\0'));
}

TEST_F(VrfRtExt, Layout)
{
    ExpectLayout(0x117, Key(""), {{"bolType", 0, 4, 1}, {"RtValue", 4, 1, 8}, {"RtType", 12, 4, 1}});
}

// ------------------------------------------------------------------------------------------------------------ text in

TEST_F(VrfRtExt, EveryEsImportByte)
{
    for (unsigned n = 0; n < 256; ++n) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", n);
        const std::string byte = digits;
        EXPECT_EQ(FormatIn(SubType(), byte + "01-0203-0405").value, Key("0602" + byte + "010203040503000000"));
        EXPECT_EQ(FormatIn(SubType(), "0102-03" + byte + "-0405").value, Key("0602010203" + byte + "040503000000"));
        EXPECT_EQ(FormatIn(SubType(), "0102-0304-05" + byte).value, Key("06020102030405" + byte + "03000000"));
    }
}

TEST_F(VrfRtExt, SeparatorsAreCountedOnTop)
{
    struct CountCase {
        const char *text;
        uint32_t code, dots, colons, dashes;
    };
    static const CountCase kCases[] = {
        {"1.2.3.4:5", DT_OK, 3, 1, 0}, {"1:2", DT_OK, 0, 1, 0},    {"0a0b-0c0d-0e0f", DT_OK, 0, 0, 2},
        {"1.2:3-4", DT_OK, 1, 1, 1},   {"ABCDEF", DT_OK, 0, 0, 0}, {"...:::---", DT_OK, 3, 3, 3},
        {"1", DT_OK, 0, 0, 0},
    };
    for (const CountCase &c : kCases) {
        uint32_t dots = 10;
        uint32_t colons = 20;
        uint32_t dashes = 30;
        EXPECT_EQ(SYSDT_CheckVrfRtExtStr(c.text, &dots, &colons, &dashes), c.code) << c.text;
        EXPECT_EQ(dots, 10 + c.dots) << c.text;
        EXPECT_EQ(colons, 20 + c.colons) << c.text;
        EXPECT_EQ(dashes, 30 + c.dashes) << c.text;
    }
    uint32_t dots = 0;
    uint32_t colons = 0;
    uint32_t dashes = 0;
    const std::string longest(100, '1');
    const std::string tooLong(101, '1');
    EXPECT_EQ(SYSDT_CheckVrfRtExtStr(longest.c_str(), &dots, &colons, &dashes), DT_OK);
    EXPECT_EQ(SYSDT_CheckVrfRtExtStr(tooLong.c_str(), &dots, &colons, &dashes), DT_ERR_FAIL);
    for (const char *text : {"", " ", "1 2", "1\t2", "g", "1:2g", "1:2*", "\xff", "1:2\n"}) {
        EXPECT_EQ(SYSDT_CheckVrfRtExtStr(text, &dots, &colons, &dashes), DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(SYSDT_CheckVrfRtExtStr(nullptr, &dots, &colons, &dashes), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_CheckVrfRtExtStr("1:2", nullptr, &colons, &dashes), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_CheckVrfRtExtStr("1:2", &dots, nullptr, &dashes), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_CheckVrfRtExtStr("1:2", &dots, &colons, nullptr), DT_ERR_NULL_PTR);
}

TEST_F(VrfRtExt, FormParsers)
{
    struct FormCase {
        uint32_t (*parser)(const char *text, void *value);
        const char *text;
        uint32_t code;
        const char *payload; // bytes 4 to 15
    };
    static const FormCase kCases[] = {
        {&SYSDT_Str2IpAddressRT, "1.2.3.4:5", DT_OK, "010201020304000500000000"},
        {&SYSDT_Str2IpAddressRT, "255.255.255.255:65535", DT_OK, "0102ffffffffffff00000000"},
        {&SYSDT_Str2IpAddressRT, "1.2.3.256:5", DT_ERR_FAIL, ""},
        {&SYSDT_Str2IpAddressRT, "1.2.3.4:65536", DT_ERR_FAIL, ""},
        {&SYSDT_Str2IpAddressRT, "1.2.3:4", DT_ERR_FAIL, ""},
        {&SYSDT_Str2TwoOctecAsRT, "100:1", DT_OK, "000200640000000101000000"},
        {&SYSDT_Str2TwoOctecAsRT, "0:0", DT_OK, "000200000000000001000000"},
        {&SYSDT_Str2TwoOctecAsRT, "65536:1", DT_OK, "020200010000000102000000"},
        {&SYSDT_Str2TwoOctecAsRT, "65536:65536", DT_ERR_FAIL, ""},
        {&SYSDT_Str2TwoOctecAsRT, "4294967296:1", DT_ERR_FAIL, ""},
        {&SYSDT_Str2TwoOctecAsRT, "1.2:3", DT_ERR_FAIL, ""},
        {&SYSDT_Str2FourOctecAsRT, "1.2:3", DT_OK, "020200010002000303000000"},
        {&SYSDT_Str2FourOctecAsRT, "0.0:0", DT_OK, "020200000000000003000000"},
        {&SYSDT_Str2FourOctecAsRT, "65536.2:3", DT_ERR_FAIL, ""},
        {&SYSDT_Str2FourOctecAsRT, "1.65536:3", DT_ERR_FAIL, ""},
        {&SYSDT_Str2FourOctecAsRT, "1.2:65536", DT_ERR_FAIL, ""},
        {&SYSDT_Str2FourOctecAsRT, "1:2", DT_ERR_FAIL, ""},
        {&SYSDT_Str2EvpnOctecAsRT, "0a0b-0c0d-0e0f", DT_OK, "06020a0b0c0d0e0f03000000"},
        {&SYSDT_Str2EvpnOctecAsRT, "0a0b-0c0d-0e", DT_ERR_FAIL, ""},
        {&SYSDT_Str2EvpnOctecAsRT, "0a0b0c0d0e0f", DT_ERR_FAIL, ""},
    };
    for (const FormCase &c : kCases) {
        std::string value(89, '\0');
        EXPECT_EQ(c.parser(c.text, value.data()), c.code) << c.text;
        if (c.code == DT_OK) {
            EXPECT_EQ(Hex(value.substr(4, 12)), c.payload) << c.text;
            EXPECT_EQ(value.substr(16), std::string(73, '\0'));
        }
        EXPECT_EQ(c.parser(nullptr, value.data()), DT_ERR_NULL_PTR);
        EXPECT_EQ(c.parser(c.text, nullptr), DT_ERR_NULL_PTR);
    }
}

// ----------------------------------------------------------------------------------------------------------- text out

struct PrintRow {
    const char *kind, *notation, *display, *plain;
};

// Bytes 6 to 11 are fffefdfcfbfa.
constexpr const char *kFields = "fffefdfcfbfa";
constexpr PrintRow kRows[] = {
    {"0102", "00000000", "RT <255.254.253.252 : 64506>", "255.254.253.252:64506"},
    {"0102", "01000000", "RT <255.254.253.252 : 64506>", "255.254.253.252:64506"},
    {"0102", "02000000", "RT <255.254.253.252 : 64506>", "255.254.253.252:64506"},
    {"0102", "03000000", "RT <255.254.253.252 : 64506>", "255.254.253.252:64506"},
    {"0102", "ffffffff", "RT <255.254.253.252 : 64506>", "255.254.253.252:64506"},
    {"0000", "00000000", "RT <65534 : 4261215226>", "65534:4261215226"},
    {"0000", "01000000", "RT <65534 : 4261215226>", "65534:4261215226"},
    {"0000", "02000000", "RT <65534 : 4261215226>", "65534:4261215226"},
    {"0000", "03000000", "RT <65534 : 4261215226>", "65534:4261215226"},
    {"0000", "ffffffff", "RT <65534 : 4261215226>", "65534:4261215226"},
    {"0002", "01000000", "RT <65534 : 4261215226>", "65534:4261215226"},
    {"0002", "02000000", "RT <4294901244 : 64506>", "4294901244:64506"},
    {"0002", "03000000", "RT <65534 . 65020 : 64506>", "65534.65020:64506"},
    {"0202", "02000000", "RT <4294901244 : 64506>", "4294901244:64506"},
    {"0202", "03000000", "RT <65534 . 65020 : 64506>", "65534.65020:64506"},
    {"0602", "00000000", "RT <fffe-fdfc-fbfa>", "fffe-fdfc-fbfa"},
    {"0602", "01000000", "RT <fffe-fdfc-fbfa>", "fffe-fdfc-fbfa"},
    {"0602", "02000000", "RT <fffe-fdfc-fbfa>", "fffe-fdfc-fbfa"},
    {"0602", "03000000", "RT <fffe-fdfc-fbfa>", "fffe-fdfc-fbfa"},
    {"0602", "ffffffff", "RT <fffe-fdfc-fbfa>", "fffe-fdfc-fbfa"},
    {"0302", "00000000", "Unknow <770 : 4294901244 : 64506>", "Unknow 770:4294901244:64506"},
    {"0302", "03000000", "Unknow <770 : 4294901244 : 64506>", "Unknow 770:4294901244:64506"},
    {"0001", "01000000", "Unknow <1 : 4294901244 : 64506>", "Unknow 1:4294901244:64506"},
    {"0003", "01000000", "Unknow <3 : 4294901244 : 64506>", "Unknow 3:4294901244:64506"},
    {"0100", "01000000", "Unknow <256 : 4294901244 : 64506>", "Unknow 256:4294901244:64506"},
    {"ffff", "ffffffff", "Unknow <65535 : 4294901244 : 64506>", "Unknow 65535:4294901244:64506"},
};

TEST_F(VrfRtExt, PrintTable)
{
    for (const PrintRow &r : kRows) {
        const std::string value = Key(std::string(r.kind) + kFields + r.notation);
        for (const uint8_t mode : kDisplayModes) {
            ExpectPrints(SubType(), value, mode, r.display);
        }
        ExpectPrints(SubType(), value, 2, r.plain);
    }
}

TEST_F(VrfRtExt, EveryNotationByte)
{
    for (unsigned n = 0; n < 256; ++n) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%02x000000", n);
        for (const uint8_t mode : kPrintModes) {
            if (n == 0 || n > 3) {
                ExpectNothingWritten(SubType(), Key(std::string("0002") + kFields + digits), mode);
            }
            if (n < 2 || n > 3) {
                ExpectNothingWritten(SubType(), Key(std::string("0202") + kFields + digits), mode);
            }
        }
    }
    for (const char *notation : {"01010000", "02000100", "03000001", "00000001", "ffffffff"}) {
        for (const uint8_t mode : kPrintModes) {
            ExpectNothingWritten(SubType(), Key(std::string("0002") + kFields + notation), mode);
            ExpectNothingWritten(SubType(), Key(std::string("0202") + kFields + notation), mode);
        }
    }
}

TEST_F(VrfRtExt, EveryUnknownKind)
{
    std::string value = Bytes(Key("000000010002000301000000"));
    for (unsigned kind = 0; kind < 65536; ++kind) {
        if (kind == 0x0000 || kind == 0x0002 || kind == 0x0102 || kind == 0x0202 || kind == 0x0602) {
            continue;
        }
        value[4] = static_cast<char>(kind >> 8);
        value[5] = static_cast<char>(kind & 0xFF);
        char display[64];
        char plain[64];
        const int displayLength = std::snprintf(display, sizeof display, "Unknow <%u : 65538 : 3>", kind);
        const int plainLength = std::snprintf(plain, sizeof plain, "Unknow %u:65538:3", kind);
        char text[257];
        ASSERT_EQ(SYSDT_VrfRtExtFormatOutRtStr(text, value.data()), static_cast<uint32_t>(displayLength));
        ASSERT_STREQ(text, display);
        ASSERT_EQ(SYSDT_VrfRtExtFormatOutRtStrNCF(text, value.data()), static_cast<uint32_t>(plainLength));
        ASSERT_STREQ(text, plain);
    }
}

TEST_F(VrfRtExt, EverySixteenBitField)
{
    // The parser alone: the first 16 bytes, the rest is FormatIn's.
    ExpectEverySixteenBitField(
        [](const char *text, void *value) {
            char whole[89] = {};
            const uint32_t code = SYSDT_Str2VrfRtExt(text, whole);
            std::memcpy(value, whole, 16);
            return code;
        },
        {
            {"", ":1", "08000000000200000000000101000000", 6},
            {"65536:", "", "08000000020200010000000002000000", 10},
            {"", ".1:2", "08000000020200000001000203000000", 6},
            {"1.", ":2", "08000000020200010000000203000000", 8},
            {"1.2:", "", "08000000020200010002000003000000", 10},
            {"1.2.3.4:", "", "08000000010201020304000000000000", 10},
        });
}

TEST_F(VrfRtExt, AllZeroIsEmptyInModeTwo)
{
    for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
        const std::string value = Key(std::string("0000000000000000") + notation);
        ExpectPrints(SubType(), value, 2, "");
        for (const uint8_t mode : kDisplayModes) {
            ExpectPrints(SubType(), value, mode, "RT <0 : 0>");
        }
    }
    // Only bytes 4 to 11 count.
    ExpectPrints(SubType(), Padded("ffffffff", 89), 2, "");
    ExpectPrints(SubType(), Key("000000000000000100000000"), 2, "0:1");
    ExpectPrints(SubType(), Key("000200000000000001000000"), 2, "0:0");
    ExpectPrints(SubType(), Key("060200000000000003000000"), 2, "0000-0000-0000");
}

TEST_F(VrfRtExt, TypedTextsPrint)
{
    struct Styles {
        const char *text, *display;
    };
    static constexpr Styles kCases[] = {
        {"100:1", "RT <100 : 1>"},
        {"1.2:3", "RT <1 . 2 : 3>"},
        {"10.1.1.1:5", "RT <10.1.1.1 : 5>"},
        {"0a0b-0c0d-0e0f", "RT <0a0b-0c0d-0e0f>"},
        {"0:0", "RT <0 : 0>"},
        {"65536:1", "RT <65536 : 1>"},
        {"65535:4294967295", "RT <65535 : 4294967295>"},
        {"4294967295:65535", "RT <4294967295 : 65535>"},
        {"65535.65535:65535", "RT <65535 . 65535 : 65535>"},
        {"255.255.255.255:65535", "RT <255.255.255.255 : 65535>"},
        {"126576008:65510", "RT <126576008 : 65510>"},
        {"12.34:56", "RT <12 . 34 : 56>"},
        {"0.1.22.32:12000", "RT <0.1.22.32 : 12000>"},
    };
    for (const Styles &c : kCases) {
        const std::string value = FormatIn(SubType(), c.text).value;
        for (const uint8_t mode : kDisplayModes) {
            ExpectPrints(SubType(), value, mode, c.display);
        }
        ExpectPrints(SubType(), value, 2, c.text);
        // What is displayed is no input.
        EXPECT_EQ(FormatIn(SubType(), c.display).code, DT_ERR_INVALID_VALUE);
    }
}

TEST_F(VrfRtExt, Printers)
{
    const DataTypeRequest plain{2, Handle()};
    const DataTypeRequest display{1, Handle()};
    for (const PrintRow &r : kRows) {
        SCOPED_TRACE(std::string(r.kind) + r.notation);
        const std::string value = Bytes(Key(std::string(r.kind) + kFields + r.notation));
        const auto displayLength = std::string_view(r.display).size();
        const auto plainLength = std::string_view(r.plain).size();
        char text[257];
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutRtStr(text, value.data()), displayLength);
        EXPECT_STREQ(text, r.display);
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutRtStrNCF(text, value.data()), plainLength);
        EXPECT_STREQ(text, r.plain);
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutStr(&display, text, value.data()), displayLength);
        EXPECT_STREQ(text, r.display);
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutStr(&plain, text, value.data()), plainLength);
        EXPECT_STREQ(text, r.plain);
        if (std::string_view(r.kind) == "0002") {
            EXPECT_EQ(SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(text, value.data()), displayLength);
            EXPECT_STREQ(text, r.display);
            EXPECT_EQ(SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF(text, value.data()), plainLength);
            EXPECT_STREQ(text, r.plain);
        }
    }
    for (const char *strange : {"0002fffefdfcfbfa00000000", "0002fffefdfcfbfa04000000"}) {
        const std::string value = Bytes(Key(strange));
        std::string text(257, '\xA5');
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutRtStr(text.data(), value.data()), 0u);
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutRtStrNCF(text.data(), value.data()), 0u);
        EXPECT_EQ(SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(text.data(), value.data()), 0u);
        EXPECT_EQ(SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF(text.data(), value.data()), 0u);
        EXPECT_EQ(SYSDT_VrfRtExtFormatOutStr(&display, text.data(), value.data()), 0u);
        EXPECT_EQ(text, std::string(257, '\xA5'));
    }
}

TEST_F(VrfRtExt, PrintFailuresCountAsNothing)
{
    for (const char *payload : {"000200640000000101000000", "020200010002000303000000", "010201020304000500000000",
                                "06020a0b0c0d0e0f03000000", "030201020304000500000000", "000000000000000000000000"}) {
        for (const uint8_t mode : kPrintModes) {
            host::SetFaults({.failPrint = 1});
            const Out out = FormatOut(SubType(), Key(payload), mode);
            host::SetFaults({});
            EXPECT_EQ(out.code, DT_OK) << payload;
            EXPECT_EQ(out.typeId, mode == 3 ? 6 : 25);
            EXPECT_EQ(out.length, mode == 3 ? 0 : 1);
            EXPECT_TRUE(out.bufferSet);
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------- Lua

// The reader as the composite calls it: with its table and the table's "bolType" on the stack.
uint32_t ReadLikeTheComposite(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t, void *value)
{
    SYSDT_SPTI_GetField(L, tableIndex, fieldName);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    SYSDT_SPTI_GetField(L, table, "bolType");
    return g_astBOL_PREFIX_LuaGetTable[8].Reader(L, value, table);
}

TEST_F(VrfRtExt, LuaReader)
{
    DataTypeDescriptor row = SubType();
    row.LuaGet = &ReadLikeTheComposite;
    ExpectLuaGet(row, 89, LuaCases(0)); // it pops the composite's two slots with its own
    // Failures pop nothing: the composite's two slots, the array, the items up to the bad one.
    ExpectItemsAreNumbers(row, 89, {"{bolType=8, RtType=3, RtValue=", "}", 8, 4, 4});
    EXPECT_EQ(LuaGet(row, "{bolType=8, RtType=3}", 89).growth, 3);
    EXPECT_EQ(LuaGet(row, "{bolType=8, RtValue={1,2,3,4,5,6,7,8}}", 89).growth, 3);

    lua_State *L = host::NewLua();
    char value[89];
    EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[8].Reader(nullptr, value, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[8].Reader(L, nullptr, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), 0);
    host::CloseLua(L);
}

TEST_F(VrfRtExt, LuaRoundTrip)
{
    for (const TextCase &c : kAccepted) {
        const std::string value = Hex(Bytes(c.value));
        const LuaIn in = LuaGet(SubType(), LuaSet(SubType(), value, 89).table, 89);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.value.substr(8, 24), value.substr(8, 24)) << c.text;
    }
}

// clang-format off
constexpr char kForms[] = "a.b.c.d:n AS:n x.y:n xxxx-xxxx-xxxx";
constexpr char kLargeAs[] = "with an AS number above 65535";
constexpr Refused kReasons[] = {
    // text                rule           at length
    {"",                   "empty",        0, 0},
    {"1:0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000",
                           "too-long",     0, 105, 100},
    {"1: 2",               "blank",        2, 1},
    {" 1;2",               "character",    2, 1},
    {"10.1.1.0/24",        "character",    8, 1},
    {"100",                "notation",     3, 0, 0, "", "", 0, 2, kForms},
    {"1:2:3",              "notation",     3, 1, 0, "", "", 0, 2, kForms},
    {"2001:db8::1/64",     "digit",        5, 1}, // before the character that stands in none
    {"1.2.3:4",            "separator",    5, 1, 0, "."},
    {"1.2.3.4.5:6",        "separator",    7, 1, 0, ":"},
    {"1.2",                "notation",     3, 0, 0, "", "", 0, 2, kForms},
    {"256.1.1.1",          "separator",    5, 1, 0, ":"},
    {"1:2.3.4",            "notation",     3, 1, 0, "", "", 0, 2, kForms},
    {"1-2",                "notation",     1, 1, 0, "", "", 0, 2, kForms},
    {"0a0b-0c0d-0e0f-1",   "notation",    14, 1, 0, "", "", 0, 2, kForms},
    {"0a0b-0c0d-0e0g",     "character",   13, 1},
    {"1-2-3-4",            "notation",     1, 1, 0, "", "", 0, 2, kForms},
    {"a:1",                "digit",        0, 1},
    {"10.1.1.1:",          "digit",        9, 0},
    {"1.x2:3",             "character",    2, 1},
    {"1.a2:3",             "digit",        2, 1},
    {"1-:2",               "separator",    1, 1, 0, ":"},
    {"1:2.3",              "separator",    1, 1, 0, "."},
    {"10.1.1.256:1",       "too-large",    7, 3, 255, "octet 4 of the address"},
    {"10.1.1.1:65536",     "too-large",    9, 5, 65535, "the assigned number"},
    {"65535:4294967296",   "too-large",    6, 10, 4294967295, "the assigned number"},
    {"65536:65536",        "too-large",    6, 5, 65535, "the assigned number", kLargeAs},
    {" 4294967296:1",      "too-large",    1, 10, 4294967295, "the AS number"},
    {"1.65536:1",          "too-large",    2, 5, 65535, "the low half of the AS number"},
    {"65536.1:1",          "too-large",    0, 5, 65535, "the high half of the AS number"},
    {"0a0b-0c0d-0e",       "hexadecimal", 12, 0},
    {"0a0b--0c0d",         "hexadecimal",  5, 1},
    {"0a0b0-c0d-0e0f",     "separator",    4, 1, 0, "-"},
    {"1:2",                "mode",         0, 0, 3, "", "", 0, 3},
    {"1:2",                "mode",         0, 0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(VrfRtExt, Reasons)
{
    CheckSubTypeRefusals(8, kReasons);
}

} // namespace
