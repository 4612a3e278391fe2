#include "support/type_case.h"

namespace bgp::test {
namespace {

// EXTCOMMUNITY_BW: bit mask (u16), AS number (u16) and bandwidth (u64), host order.
constexpr const char *kType = "EXTCOMMUNITY_BW";

class ExtCommunityBw : public PlugIn {};

TypeCase Case()
{
    return {
        .row = {329, 12, 26, "EXTCOMMUNITY_BW", nullptr, &SYSDT_ExtCommunityBwFormatOut, &SYSDT_ExtCommunityBwCheck,
                &SYSDT_ExtCommunityBwHelp, &SYSDT_ExtCommunityBwCompare, nullptr, &SYSDT_ExtCommunityBwLuaSet,
                &SYSDT_ExtCommunityBwLuaGet, &SYSDT_EXTCommunityBwEndian},
        .contract = {.value = "0000ffffffffffffffffffff",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .textSize = 257},
        .prints =
            {
                {"100:1000", "0000 6400 e803000000000000"},
                {"100:1000", "ffff 6400 e803000000000000"}, // the bit mask is not printed
                {"0:5", "0000 0000 0500000000000000"},
                {"65535:18446744073709551615", "0000 ffff ffffffffffffffff"},
                {"1:4294967295", "0000 0100 ffffffff00000000"},
                {"1:4294967296", "0000 0100 0000000001000000"},
                {"1:9223372036854775807", "0000 0100 ffffffffffffff7f"},
                {"1:9223372036854775808", "0000 0100 0000000000000080"},
                {"as-trans:1000", "0000 a05b e803000000000000"},
                {"as-trans:18446744073709551615", "0100 a05b ffffffffffffffff"},
                {"23455:1", "0000 9f5b 0100000000000000"},
                {"23457:1", "0000 a15b 0100000000000000"},
                {"41051:1", "0000 5ba0 0100000000000000"},
                // no bandwidth, no text
                {"", "0000 0000 0000000000000000"},
                {"", "ffff ffff 0000000000000000"},
                {"", "0000 a05b 0000000000000000"},
            },
        .printFailures = {"000064000100000000000000", "0000a05b0100000000000000"},
        .compares =
            {
                {"000000010000000000000000", "0000ff000000000000000000", -1}, // AS 256 and 255
                {"0000ff000000000000000000", "000000010000000000000000", 1},
                {"800000000000000000000000", "7f0000000000000000000000", 1}, // unsigned bytes
                {"010000000000000000000000", "0000ffffffffffffffffffff", 1}, // the bit mask first
                {"000000000000000000000001", "000000000000000000000000", 1},
                {"00006400e803000000000000", "00006400e803000000000000", 0},
                {"01020304", "01020305", 0, 3},
                {"01020304", "01020305", -1},
                {"01020305", "01020304", 1},
            },
        .swaps = {{"0102 0304 05060708090a0b0c", "020104030c0b0a0908070605"}},
        .luaSets =
            {
                {"ffff 6400 e803000000000000", "{asnNn=100, bandwidth=1000, bitMask=65535}"},
                {"0100 ffff 0000000001000000", "{asnNn=65535, bandwidth=4294967296, bitMask=1}"},
                {"0000 0000 ffffffffffffff7f", "{asnNn=0, bandwidth=9223372036854775807, bitMask=0}"},
                {"0000 0000 ffffffffffffffff", "{asnNn=0, bandwidth=-1, bitMask=0}"}, // signed there
                {"0100 0000 0000000000000000", "{asnNn=0, bandwidth=0, bitMask=1}"},
            },
        .luaGets =
            {
                {"{bitMask = 65535, asnNn = 100, bandwidth = 1000}", DT_OK, "ffff 6400 e803000000000000", 1},
                {"{bitMask = 0, asnNn = 23456, bandwidth = 4294967296}", DT_OK, "0000 a05b 0000000001000000", 1},
                {"{bitMask = 65536, asnNn = 70000, bandwidth = 0}", DT_OK, "0000 7011 0000000000000000", 1},
                {"{bitMask = 1, asnNn = 2, bandwidth = 9223372036854775807}", DT_OK, "0100 0200 ffffffffffffff7f", 1},
                {"{bitMask = 1, asnNn = 2, bandwidth = -1}", DT_OK, "0100 0200 ffffffffffffffff", 1},
                {"{bitMask = '1', asnNn = '2', bandwidth = '3'}", DT_OK, "0100 0200 0300000000000000", 1},
                {"{bitMask = 1, asnNn = 2}", DT_ERR_INVALID_PARAM, "0100 0200 eeeeeeeeeeeeeeee", 4},
                {"{bitMask = 1, asnNn = 2, bandwidth = 'x'}", DT_ERR_INVALID_PARAM, "0100 0200 eeeeeeeeeeeeeeee", 4},
                {"{bitMask = 1, asnNn = {}, bandwidth = 3}", DT_ERR_INVALID_PARAM, "0100 eeee eeeeeeeeeeeeeeee", 3},
                {"{bitMask = 1, bandwidth = 3}", DT_ERR_INVALID_PARAM, "0100 eeee eeeeeeeeeeeeeeee", 3},
                {"{bitMask = true, asnNn = 2, bandwidth = 3}", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeeeeeeeeeee", 2},
                {"{asnNn = 2, bandwidth = 3}", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeeeeeeeeeee", 2},
                {"{}", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeeeeeeeeeee", 2},
                {"7", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeeeeeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeee eeee eeeeeeeeeeeeeeee", 1},
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<ExtCommunityBw>("ExtCommunityBw", Case());

TEST_F(ExtCommunityBw, EveryAsNumberPrints)
{
    for (uint32_t number = 0; number <= 65535; ++number) {
        ASSERT_EQ(Text(kType, "0000" + Le16(static_cast<uint16_t>(number)) + "0700000000000000"),
                  number == 23456 ? "as-trans:7" : std::to_string(number) + ":7");
        if (number % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

} // namespace
} // namespace bgp::test
