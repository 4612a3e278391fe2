#include "support/type_case.h"

namespace bgp::test {
namespace {

// EXTCMNTY_COMPR: type (u16, 8099), cpi (u16) and reserved (u32), host order.
constexpr const char *kType = "EXTCMNTY_COMPR";

class ExtCommunityCompr : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    {"100:0", "9980 6400 00000000"},
    {"0:0", "9980 0000 00000000"},
    {"1:0", "9980 0100 00000000"},
    {"65535:0", "9980 ffff 00000000"}, // 7 characters
    {"00100:0", "9980 6400 00000000", "100:0"},
    {"1:00000", "9980 0100 00000000", "1:0"},
    {"000:000", "9980 0000 00000000", "0:0"},
    {" 100:0 ", "9980 6400 00000000", "100:0"},
    {"\t100:0\t \t", "9980 6400 00000000", "100:0"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "100",
    "0",
    "1000000",
    ":",
    ":0",
    "0:",
    "::",
    "1::0",
    "1:0:0",
    ":1:0",
    "1:0:",
    "100:1",
    "0:1",
    "1:65536",
    "65536:0",
    "99999:0",
    "65536:1",
    "065535:0",
    "000100:0",
    "1:000000",
    "4294967396:0",
    "1:4294967296",
    "1 :0",
    "1: 0",
    "1\t:0",
    "1.0:0",
    "1.0",
    "0x1:0",
    "a:0",
    "1:a",
    "1:0x",
    "+1:0",
    "-1:0",
    "1:-0",
    "1:0\n",
    "1;0",
    "\xb1:0",
    "1:\xb0",
    "1:0\xa0",
    "no-exp",
    "internet",
    "1.2:3",
    "*:0",
    "1:*",
    "0:00001",
    "1:0,",
    "1:" + std::string(100000, '0'),
};

TypeCase Case()
{
    return {
        .row = {1300, 8, 26, "EXTCMNTY_COMPR", &SYSDT_ExtCommunityComprFormatIn, &SYSDT_ExtCommunityComprFormatOut,
                &SYSDT_ExtCommunityComprCheck, &SYSDT_ExtCommunityComprHelp, &SYSDT_ExtCommunityCompare, nullptr,
                &SYSDT_ExtCommunityComprLuaSet, &SYSDT_ExtCommunityComprLuaGet, &SYSDT_EXTCommunityComprEndian},
        .contract = {.text = "65535:0",
                     .value = "9980ffffffffffff",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-7>",
                     .textSize = 257},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"100:0"},
        .parser = &SYSDT_Str2ExtCommunityCompr,
        .fields = {{"", ":0", "9980 0000 00000000", 2, true}},
        .prints =
            {
                {"100:1", "9980 6400 01000000"}, // the reserved word as it is
                {"65535:4294967295", "9980 ffff ffffffff"},
                {"0:65536", "9980 0000 00000100"},
            },
        .printFailures = {"9980640000000000"},
        .compares =
            {
                {"9980000100000000", "9980ff0000000000", -1}, // 256 and 255
                {"9980ff0000000000", "9980000100000000", 1},
                {"9980640000000001", "9980640000000000", 1},
                {"9980640000000000", "9980640000000000", 0},
            },
        .swaps = {{"0102 0304 05060708", "0201040308070605"}},
        .luaSets =
            {
                {"9980640000000000", "{cpi=100, reserved=0, type=32921}"},
                {"feffffffffffffff", "{cpi=65535, reserved=4294967295, type=65534}"},
            },
        .luaGets =
            {
                {"{type = 32921, cpi = 100, reserved = 0}", DT_OK, "9980 6400 00000000", 1}, // the fetched table stays
                {"{type = 65535, cpi = 65535, reserved = 65535}", DT_OK, "ffff ffff ffff0000", 1},
                {"{type = 32921, cpi = 100, reserved = 65536}", DT_OK, "9980 6400 00000000", 1},
                {"{type = 32921, cpi = 100, reserved = 70000}", DT_OK, "9980 6400 70110000", 1}, // 4464
                {"{type = 32921, cpi = 100, reserved = 4294967295}", DT_OK, "9980 6400 ffff0000", 1},
                {"{type = 65536, cpi = 65537, reserved = 0}", DT_OK, "0000 0100 00000000", 1},
                {"{type = '1', cpi = '2', reserved = '3'}", DT_OK, "0100 0200 03000000", 1},
                {"{type = 1, cpi = 2}", DT_ERR_INVALID_PARAM, "0100 0200 eeeeeeee", 4},
                {"{type = 1, cpi = 2, reserved = 'x'}", DT_ERR_INVALID_PARAM, "0100 0200 eeeeeeee", 4},
                {"{type = 1, reserved = 3}", DT_ERR_INVALID_PARAM, "0100 eeee eeeeeeee", 3},
                {"{type = 1, cpi = {}, reserved = 3}", DT_ERR_INVALID_PARAM, "0100 eeee eeeeeeee", 3},
                {"{cpi = 2, reserved = 3}", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeee", 2},
                {"{type = false, cpi = 2, reserved = 3}", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeee", 2},
                {"'100:0'", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeee", 1},
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<ExtCommunityCompr>("ExtCommunityCompr", Case());

TEST_F(ExtCommunityCompr, NumbersAbove65535AreRefused)
{
    for (uint32_t number = 65536; number <= 99999; ++number) {
        ASSERT_EQ(CodeOf(kType, std::to_string(number) + ":0"), DT_ERR_INVALID_VALUE) << number;
    }
}

TEST_F(ExtCommunityCompr, AnotherTypeWordPrintsNothing)
{
    for (const char *type : {"0000", "8099", "9880", "9a80", "9981", "9900", "ffff"}) {
        for (const uint8_t mode : kTextModes) {
            ExpectNothingWritten(Row(kType), type + std::string("640000000000"), mode);
        }
    }
    for (uint32_t type = 0; type <= 65535; ++type) {
        const Out out = FormatOut(kType, Le16(static_cast<uint16_t>(type)) + "640000000000");
        ASSERT_EQ(out.code, DT_OK);
        ASSERT_EQ(out.length, type == 0x8099 ? 6 : 1) << type;
        if (type % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

} // namespace
} // namespace bgp::test
