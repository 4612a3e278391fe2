// RTPRD: route distinguisher (8), notation (1) and wildcard (1): "*" stands for any assigned number.
#include "support/notation_refusals.h"
#include "support/type_case.h"

#include <cstdio>

namespace {

using namespace bgp::test;

class RtpRd : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    // AS:n, type 0, notation 2
    {"100:5", "0000 0064 00000005 02 00"},
    {"0:0", "0000 0000 00000000 02 00"},
    {"0:1", "0000 0000 00000001 02 00"},
    {"1:0", "0000 0001 00000000 02 00"},
    {"65535:0", "0000 ffff 00000000 02 00"},
    {"65535:65536", "0000 ffff 00010000 02 00"},
    {"65535:4294967295", "0000 ffff ffffffff 02 00"},
    {"258:50595078", "0000 0102 03040506 02 00"},
    {"0000000000000000100:5", "0000 0064 00000005 02 00", "100:5"}, // 21 characters
    {"100:*", "0000 0064 00000000 02 01"},
    {"0:*", "0000 0000 00000000 02 01"},
    {"65535:*", "0000 ffff 00000000 02 01"},
    {"0000000000000000100:*", "0000 0064 00000000 02 01", "100:*"}, // 21 characters
    // AS:n, type 2, notation 3
    {"65536:0", "0002 00010000 0000 03 00"},
    {"65536:65535", "0002 00010000 ffff 03 00"},
    {"16909060:1286", "0002 01020304 0506 03 00"},
    {"4294967295:65535", "0002 ffffffff ffff 03 00"},
    {"65536:*", "0002 00010000 0000 03 01"},
    {"4294967295:*", "0002 ffffffff 0000 03 01"},
    // x.y:n, type 2, notation 4
    {"1.2:3", "0002 0001 0002 0003 04 00"},
    {"0.0:0", "0002 0000 0000 0000 04 00"},
    {"0.100:1", "0002 0000 0064 0001 04 00"},
    {"65535.65535:65535", "0002 ffff ffff ffff 04 00"},
    {"258.772:1286", "0002 0102 0304 0506 04 00"},
    {"1.2:*", "0002 0001 0002 0000 04 01"},
    {"0.0:*", "0002 0000 0000 0000 04 01"},
    {"65535.65535:*", "0002 ffff ffff 0000 04 01"},
    // a.b.c.d:n, type 1, notation 1
    {"1.2.3.4:5", "0001 01020304 0005 01 00"},
    {"0.0.0.0:0", "0001 00000000 0000 01 00"},
    {"255.255.255.255:65535", "0001 ffffffff ffff 01 00"}, // 21 characters
    {"1.2.3.4:*", "0001 01020304 0000 01 01"},
    {"0.0.0.0:*", "0001 00000000 0000 01 01"},
    {"255.255.255.255:*", "0001 ffffffff 0000 01 01"},
    {"010.001.000.007:*", "0001 0a010007 0000 01 01", "10.1.0.7:*"},
    // Once a star stands anywhere, one character behind the colon is read and not looked at.
    {"1:**", "0000 0001 00000000 02 01", "1:*"},
    {"1:2*", "0000 0001 00000000 02 01", "1:*"},
    {"1:*2", "0000 0001 00000000 02 01", "1:*"},
    {"1:99999999999999999*", "0000 0001 00000000 02 01", "1:*"},
    {"65536:65536*", "0002 00010000 0000 03 01", "65536:*"},
    {"1.2:3*", "0002 0001 0002 0000 04 01", "1.2:*"},
    {"1.2:*3", "0002 0001 0002 0000 04 01", "1.2:*"},
    {"1.2.3.4:70000*", "0001 01020304 0000 01 01", "1.2.3.4:*"},
    {"1.2.3.4:**5", "0001 01020304 0000 01 01", "1.2.3.4:*"},
    // blanks around
    {" 100:* ", "0000 0064 00000000 02 01", "100:*"},
    {"\t\t1.2.3.4:5  ", "0001 01020304 0005 01 00", "1.2.3.4:5"},
};

const std::vector<std::string> kRefused = {
    // nothing there
    "",
    " ",
    "*",
    ":",
    ":*",
    "1",
    "1:",
    ":1",
    "*:",
    "1*:",
    ".:*",
    "...:*",
    // a star before the colon
    "*:1",
    "*:*",
    "1*:2",
    "1*:*",
    "*1:2",
    "1.*:3",
    "*.2:3",
    "1.2*:3",
    "1.2.3.*:5",
    "*.2.3.4:5",
    "1.2.3.4*:5",
    "1.2.3.4*:*",
    // 16 and 32 bits
    "65535:4294967296",
    "1:4294967297",
    "65536:65536",
    "65536:65537",
    "4294967295:65536",
    "4294967296:1",
    "4294967297:1",
    "4294967296:*",
    "4294967297:*",
    "9999999999999999999:*",
    "9999999999999999999:1",
    "65536.0:1",
    "0.65536:1",
    "1.2:65536",
    "65536.0:*",
    "0.65536:*",
    "4294967297.2:3",
    "1.4294967298:3",
    "1.2:4294967299",
    "4294967297.2:*",
    "1.4294967298:*",
    "256.2.3.4:1",
    "1.256.3.4:1",
    "1.2.256.4:1",
    "1.2.3.256:1",
    "1.2.3.4:65536",
    "256.2.3.4:*",
    "1.256.3.4:*",
    "1.2.256.4:*",
    "1.2.3.256:*",
    "4294967297.2.3.4:5",
    "4294967297.2.3.4:*",
    "1.4294967298.3.4:*",
    "1.2.4294967299.4:*",
    "1.2.3.4294967300:*",
    "1.2.3.4:4294967301",
    // separators
    "12",
    "1.2",
    "1.2.3.4",
    "1:2:3",
    "1:*:3",
    "1::*",
    "1.2.3:4",
    "1.2.3:*",
    "1.2.3.4.5:*",
    "1.2.3.4:5:*",
    "1:2.3",
    "1:.*",
    "1:*.",
    "1..2:*",
    ".1:*",
    "1.:*",
    "1.2:",
    "1.2.3.4:",
    "1.2.3:*.4",
    "1:*...",
    "1.2.3.:*",
    ".1.2.3:*",
    // blanks inside
    "1: *",
    "1 :*",
    "1 :2",
    "1: 2",
    "1\t:*",
    "1:* *",
    // other characters
    "a:*",
    "1:a",
    "1-2",
    "-1:*",
    "+1:2",
    "1:-*",
    "1:?",
    "1:*\n",
    "1:\xb2",
    "1:\xb2*",
    "\xff:*",
    "1:%*",
    // 22 characters
    "0000000000000000100:05",
    "00000000000000000100:*",
    "0255.255.255.255:65535",
    "1:*1234567890123456789",
    // texts of the other types
    "2001:db8::1.1",
    "0a0b-0c0d-0e0f",
    "no-export",
    "1a2b3c:10",
};

TypeCase Case()
{
    return {
        .row = {0x116, 10, 26, "RTPRD", &SYSDT_RtpRdFormatIn, &SYSDT_RtpRdFormatOut, &SYSDT_RtpRdCheck,
                &SYSDT_RtpRdHelp, &SYSDT_RtpRdCompare, nullptr, &SYSDT_RtpRdLuaSet, &SYSDT_RtpRdLuaGet, nullptr},
        .contract = {.text = "100:*",
                     .value = "00000064000000000201",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .textSize = 257},
        .layout = {{"rdValue", 0, 1, 8}, {"type", 8, 1, 1}, {"star", 9, 1, 1}},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"100:5", "100:*", "1.2.3.4:*", "255.255.255.255:65535"},
        .characters = {{"1", "2:3", "0123456789.:*"},
                       {"1:", "*", "0123456789.:*"},
                       {"", "1:*", "0123456789.:*"},
                       {"1:*", "", "0123456789.:*"}},
        .parser = &SYSDT_Str2RtpRd,
        .fields =
            {
                {"", ":*", "00000000000000000201", 2},
                {"", ":1", "00000000000000010200", 2},
                {"65536:", "", "00020001000000000300", 6},
                {"", ".1:*", "00020000000100000401", 2},
                {"1.", ":*", "00020001000000000401", 4},
                {"", ".1:2", "00020000000100020400", 2},
                {"1.", ":2", "00020001000000020400", 4},
                {"1.2:", "", "00020001000200000400", 6},
                {"1.2.3.4:", "", "00010102030400000100", 6},
            },
        .roundTrips = {"100:*", "100:5", "65536:*", "1.2.3.4:*", "1.2:*", "0:0", "0.0:0", "0:*", "0.0.0.0:0",
                       "65535:4294967295", "4294967295:65535", "65535.65535:65535", "1.0.1.1:101", "64512:100001",
                       "100.1000:10000", "4226809879:15", "255.255.255.255:65535", "255.255.255.255:*"},
        .prints =
            {
                {"0:0", "0000 0000 00000000 02 00"},
                {"0:*", "0000 0000 00000000 02 01"},
                {"0:0", "0002 0000 00000000 03 00"},
                {"0:*", "0002 0000 00000000 03 01"},
                {"0.0:0", "0002 0000 00000000 04 00"},
                {"0.0:*", "0002 0000 00000000 04 01"},
                {"0.0.0.0:0", "0001 0000 00000000 01 00"},
                {"0.0.0.0:*", "0001 0000 00000000 01 01"},
                {"65535:4294967295", "0000 ffff ffffffff 02 00"},
                {"4294967295:65535", "0002 ffff ffffffff 03 00"},
                {"65535.65535:65535", "0002 ffff ffffffff 04 00"},
                {"255.255.255.255:65535", "0001 ffff ffffffff 01 00"},
            },
        .printFailures = {"00000064000000050200", "00000064000000000201", "00020001000200030400",
                          "00020001000200030300", "00010102030400050100", "00010102030400050101"},
        .ascending = {"00000000000000000000", "00000000000000000001", "00000000000000000100", "00000000000000010000",
                      "00000064000000000200", "00000064000000000201", "00000064000000050200", "00007fffffffffffffff",
                      "00008000000000000000", "00010000000000000000", "00020000000000000000", "ff000000000000000000"},
        .compares =
            {
                {"00000064000000000200", "00000064000000000201", 0, 9},
                {"00000064000000000200", "00000064000000000201", -1},
                {"00000064000000000200", "00000064000000000201", 0, 0},
            },
        .luaSets =
            {
                {"00000064000000050200", "{rdValue={0,0,0,100,0,0,0,5}, star=0, type=2}"},
                {"00020001000200000401", "{rdValue={0,2,0,1,0,2,0,0}, star=1, type=4}"},
                {"fffefdfcfbfaf9f8f7f6", "{rdValue={255,254,253,252,251,250,249,248}, star=246, type=247}"},
            },
        .luaGets =
            {
                {"{rdValue={0,2,0,1,0,2,0,3}, type=4, star=0}", DT_OK, "00020001000200030400", 0},
                {"{rdValue={0,2,0,1,0,2,0,3}, type=258, star=257}", DT_OK, "00020001000200030201", 0},
                {"{rdValue={256,257,511,512,65535,65536,-1,4294967295,9}, type=-1, star=256}", DT_OK,
                 "0001ff00ff00ffffff00", 0},
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee", kAnyGrowth},
                {"5", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee", kAnyGrowth},
                {"'1:*'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee", kAnyGrowth},
                {"{type=4, star=0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee", kAnyGrowth},
                {"{rdValue=5, type=4, star=0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee", kAnyGrowth},
                {"{RdValue={0,2,0,1,0,2,0,3}, type=4, star=0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee",
                 kAnyGrowth},
                {"{rdValue={}, type=4, star=0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeee", kAnyGrowth},
                {"{rdValue={1,2,3,4,5,6,7}, type=4, star=0}", DT_ERR_INVALID_PARAM, "01020304050607eeeeee", kAnyGrowth},
                {"{rdValue={0,2,0,1,0,2,0,3}, star=0}", DT_ERR_INVALID_PARAM, "0002000100020003eeee", kAnyGrowth},
                {"{rdValue={0,2,0,1,0,2,0,3}, type='x', star=0}", DT_ERR_INVALID_PARAM, "0002000100020003eeee",
                 kAnyGrowth},
                {"{rdValue={0,2,0,1,0,2,0,3}, type={}, star=0}", DT_ERR_INVALID_PARAM, "0002000100020003eeee",
                 kAnyGrowth},
                {"{rdValue={0,2,0,1,0,2,0,3}, type=4}", DT_ERR_INVALID_PARAM, "000200010002000304ee", kAnyGrowth},
                {"{rdValue={0,2,0,1,0,2,0,3}, type=4, star='x'}", DT_ERR_INVALID_PARAM, "000200010002000304ee",
                 kAnyGrowth},
                {"{rdValue={0,2,0,1,0,2,0,3}, type=4, star=true}", DT_ERR_INVALID_PARAM, "000200010002000304ee",
                 kAnyGrowth},
            },
        .luaArrays = {{"{type=4, star=0, rdValue=", "}", 8, 0, kAnyGrowth}},
    };
}

[[maybe_unused]] const bool kStated = StateTests<RtpRd>("RtpRd", Case());

constexpr uint8_t kPrintModes[] = {1, 2, 6};
constexpr const char *kFields = "fffefdfcfbfa"; // bytes 2 to 7

TEST_F(RtpRd, PrintTable)
{
    struct PrintRow {
        const char *type, *notation, *number, *wildcard;
    };
    static constexpr PrintRow kRows[] = {
        {"0001", "01", "255.254.253.252:64506", "255.254.253.252:*"},
        {"0000", "02", "65534:4261215226", "65534:*"},
        {"0002", "04", "65534.65020:64506", "65534.65020:*"},
        {"0002", "03", "4294901244:64506", "4294901244:*"},
    };
    for (const PrintRow &r : kRows) {
        for (const uint8_t mode : kPrintModes) {
            const std::string value = std::string(r.type) + kFields + r.notation;
            ExpectPrints(Row("RTPRD"), value + "00", mode, r.number);
            for (const char *wildcard : {"01", "02", "7f", "80", "ff"}) {
                ExpectPrints(Row("RTPRD"), value + wildcard, mode, r.wildcard);
            }
        }
    }
}

TEST_F(RtpRd, EveryNotationByte)
{
    for (unsigned n = 0; n < 256; ++n) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", n);
        for (const char *wildcard : {"00", "01", "ff"}) {
            const std::string tail = std::string(kFields) + digits + wildcard;
            for (const uint8_t mode : kPrintModes) {
                if (n != 1) {
                    ExpectNothingWritten(Row("RTPRD"), "0001" + tail, mode);
                }
                if (n == 0 && mode == 2) {
                    ExpectPrints(Row("RTPRD"), "0000" + tail, mode, "");
                } else if (n != 2) {
                    ExpectNothingWritten(Row("RTPRD"), "0000" + tail, mode);
                }
                if (n != 3 && n != 4) {
                    ExpectNothingWritten(Row("RTPRD"), "0002" + tail, mode);
                }
            }
        }
    }
}

TEST_F(RtpRd, UnsetIsEmptyInModeTwo)
{
    for (const char *value : {"00000000000000000000", "00000000000000000001", "00000064000000050000"}) {
        ExpectPrints(Row("RTPRD"), value, 2, "");
        ExpectNothingWritten(Row("RTPRD"), value, 1);
        ExpectNothingWritten(Row("RTPRD"), value, 6);
    }
    // of the other types there is no unset value
    ExpectNothingWritten(Row("RTPRD"), "00010000000000000000", 2);
    ExpectNothingWritten(Row("RTPRD"), "00020000000000000000", 2);
}

TEST_F(RtpRd, UnknownTypes)
{
    for (const char *type : {"0003", "0004", "0100", "0102", "0200", "8000", "ffff"}) {
        for (const char *tail : {"0000", "0001", "0100", "0200", "0201", "0300", "0401"}) {
            for (const uint8_t mode : kPrintModes) {
                ExpectNoSuchKind(Row("RTPRD"), std::string(type) + kFields + tail, mode);
            }
        }
    }
}

TEST_F(RtpRd, AWildcardIsNoNumberToCompare)
{
    EXPECT_EQ(Compare("RTPRD", Value("RTPRD", "100:*"), Value("RTPRD", "100:0")), 1);
}

// ---------------------------------------------------------------------------------------------------------- refusals

// clang-format off
constexpr Refused kWildcards[] = {
    {"*",                       "wildcard-place",   0,  1},
    {" *:1",                    "wildcard-place",   1,  1},
    {"1*:2",                    "wildcard-place",   1,  1},
    {"1.*:*",                   "wildcard-place",   2,  1},
    {"1.2*",                    "wildcard-place",   3,  1},
    {"1:*x",                    "character",        3,  1},
    {"1:2.*",                   "character",        3,  1},
    {"1:*:3",                   "character",        3,  1},
    {"1::*",                    "character",        2,  1},
    {"1:* *",                   "blank",            3,  1},
    {"1: *",                    "blank",            2,  1},
    {"1 :*",                    "blank",            1,  1},
    {" :*",                     "digit",            1,  0},
    {"a:*",                     "digit",            0,  1},
    {"1.:*",                    "digit",            2,  0},
    {"1a:*",                    "character",        1,  1},
    {"1.2.3.4.5:*",             "too-many-numbers", 9,  1, 5},
    {"1.2.3:**",                "notation",         0,  8, 0, "", "", 0, 2, kNotationForms},
    {" 1:2:*",                  "notation",         1,  5, 0, "", "", 0, 2, kNotationForms},
    {"4294967296:*",            "too-large",        0, 10, 4294967295, "the AS number", kLargeAs},
    {"1.65536:*",               "too-large",        2,  5, 65535, "the low half of the AS number"},
    {" 1.2.3.256:*",            "too-large",        7,  3, 255, "octet 4 of the address"},
    {"1:*12345678901234567890", "too-long",         0, 23, 21},
};
// clang-format on

TEST_F(RtpRd, Reasons)
{
    CheckRefusals("RTPRD", All(kNotationRefusals, kWildcards, kModeRefusals));
    CheckAccepted("RTPRD", kNotationsTaken);
    constexpr std::string_view kZeros[] = {"0:0", "0.0:0"};
    CheckAccepted("RTPRD", kZeros);
    constexpr std::string_view kStars[] = {"100:*", " 0:**\t", "65536:65536*", "1.2:*3", "1.2.3.4:70000*"};
    CheckAccepted("RTPRD", kStars);
    EXPECT_EQ(Sentence("RTPRD", "*:1"), "\"*\" may only stand for the assigned number");
}

} // namespace
