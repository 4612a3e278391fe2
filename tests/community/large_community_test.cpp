#include "support/refusals.h"
#include "support/type_case.h"

namespace bgp::test {
namespace {

// LARGECOMMUNITY: three numbers (u32) and a type word (u32), host order.

class LargeCommunity : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    {"1:2:3", "01000000 02000000 03000000 00000000"},
    {"0:0:0", "00000000 00000000 00000000 00000000"},
    {"4294967295:0:1", "ffffffff 00000000 01000000 00000000"},
    {"0:4294967295:1", "00000000 ffffffff 01000000 00000000"},
    {"1:0:4294967295", "01000000 00000000 ffffffff 00000000"},
    {"4294967295:4294967295:4294967295", "ffffffff ffffffff ffffffff 00000000"},
    {"65535:65536:131072", "ffff0000 00000100 00000200 00000000"},
    {"00001:00002:00003", "01000000 02000000 03000000 00000000", "1:2:3"},
    {"0000000000000000000000000001:2:3", "01000000 02000000 03000000 00000000", "1:2:3"}, // 32 characters
    {" 1:2:3 ", "01000000 02000000 03000000 00000000", "1:2:3"},
    {"\t1:2:3\t \t", "01000000 02000000 03000000 00000000", "1:2:3"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "1",
    "12345",
    "1:2",
    "100:200",
    "10000:20000",
    "1:2:3:4",
    "1:2:3:",
    ":1:2:3",
    "1::3",
    "12::3",
    ":12:3",
    "12:3:",
    "::",
    "::::",
    "1::::",
    ":::::",
    "4294967296:0:1",
    "0:4294967296:1",
    "0:1:4294967296",
    "4294967297:1:1",
    "1:1:4294967297",
    "18446744073709551615:1:1",
    "18446744073709551616:1:1",
    "1:18446744073709551617:1",
    "1:1:18446744073709551617",
    "00000000000000000000000000001:2:3", // 33 characters
    "04294967295:4294967295:4294967295",
    "1:2:x",
    "1:2:4294967296",
    "1:2 :3",
    "1 :2:3",
    "1: 2:3",
    "1:2: 3",
    "1:2\t:3",
    "1.2:3:4",
    "1:2.0:3",
    "10.1.1.1:5:6",
    "1:2:3.",
    "a:b:c",
    "1:2:c",
    "1:2:0x3",
    "+1:2:3",
    "1:-2:3",
    "1:2:3\n",
    "1;2;3",
    "1:2:3,",
    "1,2,3",
    "\xb1:2:3",
    "1:2:\xb3",
    "1:2:3\xa0",
    "no-export",
    "internet",
    "65535.65535",
    "1:2:" + std::string(100000, '3'),
};

const std::string kRest = "000000000000000000000000";

TypeCase Case()
{
    return {
        .row = {321, 16, 26, "LARGECOMMUNITY", &SYSDT_LargeCommunityFormatIn, &SYSDT_LargeCommunityFormatOut,
                &SYSDT_LargeCommunityCheck, &SYSDT_LargeCommunityHelp, &SYSDT_LargeCommunityCompare, nullptr,
                &SYSDT_LargeCommunityLuaSet, &SYSDT_LargeCommunityLuaGet, &SYSDT_LargeCommunityEndian},
        // Mode 6 is refused on the way in and gets no help; the way out prints in every mode but 4.
        .contract = {.text = "4294967295:4294967295:4294967295",
                     .value = "ffffffffffffffffffffffff00000000",
                     .inModes = "FPPFUFFU",
                     .outModes = "TTTTUTTU",
                     .helpModes = "-H------",
                     .helpText = "STRING<5-32>",
                     .textSize = 257},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"1:2:3"},
        .parser = &SYSDT_Str2LargeCommunity,
        .fields =
            {
                {"", ":7:8", "00000000 07000000 08000000 00000000", 0, true},
                {"", ":7:8", "00000000 07000000 08000000 00000000", 2, true, 0, 65536},
                {"7:", ":8", "07000000 00000000 08000000 00000000", 4, true},
                {"7:", ":8", "07000000 00000000 08000000 00000000", 6, true, 0, 65536},
                {"7:8:", "", "07000000 08000000 00000000 00000000", 8, true},
                {"7:8:", "", "07000000 08000000 00000000 00000000", 10, true, 0, 65536},
            },
        .prints = {{"1:2:3", "01000000 02000000 03000000 ffffffff"}}, // the type word is not printed
        .printFailures = {"01000000020000000300000000000000"},
        .compares =
            {
                {"00010000" + kRest, "ff000000" + kRest, -1}, // 256 and 255
                {"ff000000" + kRest, "00010000" + kRest, 1},
                {"80000000" + kRest, "7f000000" + kRest, 1}, // unsigned bytes
                {kRest + "00000001", kRest + "00000000", 1}, // the type word takes part
                {kRest + "00000001", kRest + "00000001", 0},
                {kRest, "000000000000000000000001", -1}, // `length` bytes, here 12
                {"01020304", "01020305", 0, 3},
            },
        .swaps = {{"0102030405060708090a0b0c0d0e0f10", "04030201080706050c0b0a09100f0e0d"}},
        .luaSets =
            {
                {"ffffffff 02000000 03000000 00010000", "{largeCommunity={4294967295,2,3}, type=256}"},
                {"00000000 00000000 00000000 00000000", "{largeCommunity={0,0,0}, type=0}"},
            },
        .luaGets =
            {
                {"{largeCommunity = {4294967295, 2, 3}, type = 0}", DT_OK, "ffffffff 02000000 03000000 00000000", 0},
                {"{largeCommunity = {1, 2, 3, 4}, type = 255}", DT_OK, "01000000 02000000 03000000 ff000000", 0},
                {"{largeCommunity = {1, 2, 3}, type = 256}", DT_OK, "01000000 02000000 03000000 00000000", 0},
                {"{largeCommunity = {1, 2, 3}, type = 4294967295}", DT_OK, "01000000 02000000 03000000 ff000000", 0},
                {"{largeCommunity = {'1', '2', '3'}, type = '4'}", DT_OK, "01000000 02000000 03000000 04000000", 0},
                {"{largeCommunity = {4294967296, 4294967297, 3}, type = 0}", DT_OK,
                 "00000000 01000000 03000000 00000000", 0},
                {"{largeCommunity = {1, 2, 3}}", DT_ERR_INVALID_PARAM, "01000000 02000000 03000000 eeeeeeee", 2},
                {"{largeCommunity = {1, 2, 3}, type = 'x'}", DT_ERR_INVALID_PARAM,
                 "01000000 02000000 03000000 eeeeeeee", 2},
                {"{largeCommunity = {1, 2}, type = 0}", DT_ERR_INVALID_PARAM, "01000000 02000000 eeeeeeee eeeeeeee", 5},
                {"{largeCommunity = {1, 2, 'x'}, type = 0}", DT_ERR_INVALID_PARAM,
                 "01000000 02000000 eeeeeeee eeeeeeee", 5},
                {"{largeCommunity = {1, {}, 3}, type = 0}", DT_ERR_INVALID_PARAM, "01000000 eeeeeeee eeeeeeee eeeeeeee",
                 4},
                {"{largeCommunity = {true, 2, 3}, type = 0}", DT_ERR_INVALID_PARAM,
                 "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 3},
                {"{largeCommunity = {}, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 3},
                {"{largeCommunity = 5, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 2},
                {"{type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 2},
                {"'1:2:3'", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 1},
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<LargeCommunity>("LargeCommunity", Case());

// clang-format off
constexpr Refused kReasons[] = {
    // text                       rule                at  length
    {"",                          "empty",             0,  0},
    {" \t",                       "empty",             2,  0},
    {"1:2",                       "too-short",         0,  3, 5},
    {"  1:2\t",                   "too-short",         2,  3, 5},
    {"1:2:0000000000000000000000000000003", "too-long", 0, 35, 32},
    {"1:2:x",                     "digit",             4,  1},
    {"1:2:3:",                    "digit",             6,  0},
    {"100::3",                    "digit",             4,  1},
    {"100: 2:3",                  "blank",             4,  1},
    {"100\t:2:3",                 "blank",             3,  1},
    {"100:20;3",                  "character",         6,  1},
    {"1:2:3:4:5:6",               "too-many-numbers",  5,  1, 3},
    {"100:20",                    "notation",          0,  6, 0, "", "", 0, 2, "administrator:data:data"},
    {"1:2:3:4",                   "notation",          0,  7, 0, "", "", 0, 2, "administrator:data:data"},
    {"4294967296:1:2",            "too-large",         0, 10, 4294967295, "the global administrator"},
    {" 1:4294967296:2",           "too-large",         3, 10, 4294967295, "the first part of the local data"},
    {"1:2:99999999999999999999",  "too-large",         4, 20, 4294967295, "the second part of the local data"},
    {"1:2:3",                     "mode",              0,  0, 6, "", "", 0, 6},
    {"1:2:3",                     "mode",              0,  0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(LargeCommunity, Reasons)
{
    CheckRefusals("LARGECOMMUNITY", kReasons);
    constexpr std::string_view kGood[] = {"1:2:3", " 4294967295:0:0\t"};
    CheckAccepted("LARGECOMMUNITY", kGood);
}

} // namespace
} // namespace bgp::test
