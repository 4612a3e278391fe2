// VRFRTV6: IPv6-address-specific route target (20) and notation word (4). RFC 5701.
#include "support/refusals.h"
#include "support/type_case.h"

namespace {

using namespace bgp::test;

class VrfRtV6 : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    {"2001:db8::1.1", "000c 20010db8000000000000000000000001 0001 00000000"},
    {"2001:db8::1.0", "000c 20010db8000000000000000000000001 0000 00000000"},
    {"2001:DB8::AbCd.1", "000c 20010db800000000000000000000abcd 0001 00000000", "2001:db8::abcd.1"},
    {"::.0", "000c 00000000000000000000000000000000 0000 00000000"},
    {"::.1", "000c 00000000000000000000000000000000 0001 00000000"},
    {"::1.1", "000c 00000000000000000000000000000001 0001 00000000"},
    {"1::.1", "000c 00010000000000000000000000000000 0001 00000000"},
    {"1:2:3:4:5:6:7:8.0", "000c 00010002000300040005000600070008 0000 00000000"},
    {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff.1", "000c ffffffffffffffffffffffffffffffff 0001 00000000"},
    {"2001:0DB8:0:0:0:0:0:1.1", "000c 20010db8000000000000000000000001 0001 00000000", "2001:db8::1.1"},
    // a dotted tail: only the last dot separates
    {"::ffff:1.2.3.4.1", "000c 00000000000000000000ffff01020304 0001 00000000"},
    {"::1.2.3.4.0", "000c 00000000000000000000000001020304 0000 00000000"},
    {"64:ff9b::192.0.2.33.1", "000c 0064ff9b0000000000000000c0000221 0001 00000000", "64:ff9b::c000:221.1"},
    {"0000:0000:0000:0000:0000:ffff:255.255.255.255.1", // 47 characters
     "000c 00000000000000000000ffffffffffff 0001 00000000", "::ffff:255.255.255.255.1"},
    // blanks around
    {" 2001:db8::1.1", "000c 20010db8000000000000000000000001 0001 00000000", "2001:db8::1.1"},
    {"2001:db8::1.1 \t", "000c 20010db8000000000000000000000001 0001 00000000", "2001:db8::1.1"},
    {"   0000:0000:0000:0000:0000:ffff:255.255.255.255.1   ", "000c 00000000000000000000ffffffffffff 0001 00000000",
     "::ffff:255.255.255.255.1"},
};

const std::vector<std::string> kRefused = {
    "",
    "  ",
    ".",
    ".1",
    "..1",
    "1",
    "1.1",
    // the local administrator
    "2001:db8::1",
    "2001:db8::1.",
    "2001:db8::1. ",
    "2001:db8::1.\t",
    "2001:db8::1.2",
    "2001:db8::1.9",
    "2001:db8::1.10",
    "2001:db8::1.01",
    "2001:db8::1.00",
    "2001:db8::1.65535",
    "2001:db8::1.a",
    "2001:db8::1.-",
    "2001:db8::1.+",
    "2001:db8::1.:",
    "2001:db8::1.\xb1",
    "2001:db8::1.*",
    "2001:db8::1..1",
    "2001:db8::1.1.1",
    "2001:db8::1:100",
    "2001:db8::1:0",
    "2001:db8::1.4294967297",
    // the address
    "2001:db8:::1.1",
    ":1.1",
    "1:.1",
    "1:2:3:4:5:6:7.1",
    "1:2:3:4:5:6:7:8:9.1",
    "1::2::3.1",
    "12345::1.1",
    "g::1.1",
    "::1%1.1",
    "::1/128.1",
    "[::1].1",
    "::ffff:1.2.3.4",
    "::ffff:1.2.3.1",
    "::ffff:1.2.3.256.1",
    "::ffff:1.2.3.4.5.1",
    "1.2.3.4.1",
    "1.2.3.4:1",
    "\xb1::1.1",
    "::\xff.1",
    // blanks inside
    "2001:db8::1 .1",
    "2001:db8::1. 1",
    "2001: db8::1.1",
    "2001:db8::1\t.1",
    // 48 characters
    "00000:0000:0000:0000:0000:ffff:255.255.255.255.1",
    "0000:0000:0000:0000:0000:ffff:255.255.255.255.01",
    "0000:0000:0000:0000:0000:ffff:255.255.255.255.10",
    // texts of the other types
    "100:1",
    "1.2:3",
    "1.2.3.4:5",
    "0a0b-0c0d-0e0f",
    "100:*",
    "no-export",
};

TypeCase Case()
{
    return {
        .row = {0x140, 24, 26, "VRFRTV6", &SYSDT_VrfRtV6FormatIn, &SYSDT_VrfRtV6FormatOut, &SYSDT_VrfRtV6Check,
                &SYSDT_VrfRtV6Help, &SYSDT_VrfRtV6Compare, nullptr, &SYSDT_VrfRtV6LuaSet, &SYSDT_VrfRtV6LuaGet,
                &SYSDT_VrfRtV6Endian},
        .contract = {.value = "000c20010db8000100020003000400050607123400000000",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTRUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<4-47>",
                     .textSize = 257},
        .layout = {{"RtV6Value", 0, 1, 20}, {"RtV6Type", 20, 4, 1}},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"2001:db8::1.1", "0000:0000:0000:0000:0000:ffff:255.255.255.255.1"},
        .characters = {{"2001:db8::1.", "", "01", true}},
        .parser = &SYSDT_Str2VrfRtV6,
        .parserRefusal = DT_ERR_INVALID_PARAM,
        .roundTrips = {"2001:db8::1.1", "2001:db8::1.0", "::.1", "::1.1", "fe80::1:2.0", "ff02::1.1",
                       "1:2:3:4:5:6:7:8.1", "::ffff:1.2.3.4.1", "2001:db8:0:1::.0"},
        .prints =
            {
                // no empty text in mode 2, all-zero values included
                {"2001:db8::1.1", "000c 20010db8000000000000000000000001 0001 00000000"},
                {"::.0", "0000 00000000000000000000000000000000 0000 00000000"},
                {"::.0", "0000 00000000000000000000000000000000 0000 01000000"},
                {"::.1", "000c 00000000000000000000000000000000 0001 00000000"},
                {"1:2:3:4:5:6:7:8.1", "000c 00010002000300040005000600070008 0001 00000000"},
                {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff.65535",
                 "ffff ffffffffffffffffffffffffffffffff ffff ffffffff"},
                // the local administrator in network order, all 16 bits
                {"::1.2", "000c 00000000000000000000000000000001 0002 00000000"},
                {"::1.256", "000c 00000000000000000000000000000001 0100 00000000"},
                {"::1.4660", "000c 00000000000000000000000000000001 1234 00000000"},
                // kind and notation do not count
                {"2001:db8::1.1", "0002 20010db8000000000000000000000001 0001 00000000"},
                {"2001:db8::1.1", "ffff 20010db8000000000000000000000001 0001 ffffffff"},
                {"2001:db8::1.1", "0c00 20010db8000000000000000000000001 0001 03000000"},
                // a shorter value reads as if zeros followed
                {"::.0", ""},
                {"::.0", "00"},
                {"::.0", "000c"},
                {"2000::.0", "000c20"},
                {"2001::.0", "000c2001"},
                {"2001:d00::.0", "000c20010d"},
                {"2001:db8:1:2::.0", "000c20010db800010002"},
                {"2001:db8:1:2:3:4:5:600.0", "000c20010db80001000200030004000506"},
                {"2001:db8:1:2:3:4:5:607.0", "000c20010db8000100020003000400050607"},
                {"2001:db8:1:2:3:4:5:607.4608", "000c20010db800010002000300040005060712"},
                {"2001:db8:1:2:3:4:5:607.4660", "000c20010db80001000200030004000506071234"},
                {"2001:db8:1:2:3:4:5:607.4660", "000c20010db80001000200030004000506071234000000"},
                {"2001:db8:1:2:3:4:5:607.4660", "000c20010db8000100020003000400050607123400000000"},
            },
        .printFailures = {"000c20010db8000000000000000000000001000100000000"},
        .readsWhole = false,
        .lengths = {{25, "2001:db8:1:2:3:4:5:607.4660"},
                    {65536, "2001:db8:1:2:3:4:5:607.4660"},
                    {4294967294, "2001:db8:1:2:3:4:5:607.4660"}},
        .ascending =
            {"000000000000000000000000000000000000000000000000", "000000000000000000000000000000000000000000000001",
             "000000000000000000000000000000000000000001000000", "000000000000000000000000000000000000000100000000",
             "000000000000000000000000000000000000ff0000000000", "000000000000000000000000000000000001000000000000",
             "00007fffffffffffffffffffffffffffffffffffffffffff", "000080000000000000000000000000000000000000000000",
             "000c20010db8000000000000000000000001000100000000", "ff0000000000000000000000000000000000000000000000"},
        .compares =
            {
                {"000000000000000000000000000000000000000000000000", "000000000000000000000000000000000000000000000001",
                 0, 23},
            },
        .swaps =
            {
                {"000c20010db8000000000000000000000001000101020304",
                 "000c20010db8000000000000000000000001000104030201"},
                {"000102030405060708090a0b0c0d0e0f1011121314151617",
                 "000102030405060708090a0b0c0d0e0f1011121317161514"},
            },
        .luaSets =
            {
                {"000c20010db8000000000000000000000001000100000000",
                 "{RtV6Type=0, RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}"},
                {"000102030405060708090a0b0c0d0e0f10111213fffefdfc",
                 "{RtV6Type=4244504319, RtV6Value={0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19}}"},
            },
        .luaGets =
            {
                {"{RtV6Type=0, RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}", DT_OK,
                 "000c20010db8000000000000000000000001000100000000", 0},
                {"{RtV6Type=258, RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}", DT_OK,
                 "000c20010db8000000000000000000000001000102000000", 0},
                {"{RtV6Type=255, RtV6Value={256,257,511,-1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,65535,4294967295,7}}", DT_OK,
                 "0001ffff0101010101010101010101010101ffffff000000", 0},
                {"nil", DT_ERR_INVALID_PARAM, Unwritten(24), 1},
                {"'::1.1'", DT_ERR_INVALID_PARAM, Unwritten(24), 1},
                {"{RtV6Type=0}", DT_ERR_INVALID_PARAM, Unwritten(24), 2},
                {"{RtV6Type=0, RtV6Value=1}", DT_ERR_INVALID_PARAM, Unwritten(24), 2},
                {"{RtType=0, RtValue={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}", DT_ERR_INVALID_PARAM,
                 Unwritten(24), 2},
                {"{RtV6Type=0, RtV6Value={}}", DT_ERR_INVALID_PARAM, Unwritten(24), 3},
                {"{RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}", DT_ERR_INVALID_PARAM,
                 "000c20010db80000000000000000000000010001eeeeeeee", 2},
                {"{RtV6Type='x', RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}", DT_ERR_INVALID_PARAM,
                 "000c20010db80000000000000000000000010001eeeeeeee", 2},
                {"{RtV6Type={}, RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}", DT_ERR_INVALID_PARAM,
                 "000c20010db80000000000000000000000010001eeeeeeee", 2},
            },
        .luaArrays = {{"{RtV6Type=0, RtV6Value=", "}", 20, 0, 3}},
    };
}

[[maybe_unused]] const bool kStated = StateTests<VrfRtV6>("VrfRtV6", Case());

constexpr uint8_t kPrintModes[] = {1, 2, 3, 6};

TEST_F(VrfRtV6, LongTextsAreRefused)
{
    for (const size_t length : {48u, 255u, 256u, 257u, 300u, 5000u, 70000u}) {
        EXPECT_EQ(CodeOf("VRFRTV6", std::string(length - 2, '1') + ".1"), DT_ERR_INVALID_VALUE) << length;
        EXPECT_EQ(CodeOf("VRFRTV6", std::string(length - 4, ':') + "::.1"), DT_ERR_INVALID_VALUE) << length;
    }
}

TEST_F(VrfRtV6, NeedsAHandle)
{
    std::string text = "2001:db8::1.1";
    const DataTypeRequest request{1, 0};
    uint16_t typeId = kUntouched;
    uint16_t length = kUntouched;
    void *buffer = nullptr;
    EXPECT_EQ(Row("VRFRTV6").FormatIn(&request, 0, 0, text.data(), &typeId, &length, &buffer), DT_ERR_NO_MEMORY);
    EXPECT_EQ(typeId, 0x140);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(VrfRtV6, NoHandleNoBuffer)
{
    std::string value(24, '\0');
    for (const uint8_t mode : kPrintModes) {
        const DataTypeRequest request{mode, 0};
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(Row("VRFRTV6").FormatOut(&request, 0, 24, value.data(), &typeId, &length, &buffer), DT_ERR_NO_MEMORY);
        EXPECT_EQ(typeId, 0);
        EXPECT_EQ(length, 0);
        EXPECT_EQ(buffer, nullptr);
        // A caller's buffer needs no handle.
        char text[257];
        buffer = text;
        EXPECT_EQ(Row("VRFRTV6").FormatOut(&request, 0, 24, value.data(), &typeId, &length, &buffer), 0u);
        EXPECT_STREQ(text, "::.0");
        EXPECT_EQ(buffer, text);
    }
}

TEST_F(VrfRtV6, BufferRoutine)
{
    char mine = 0;
    void *slot = &mine;
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 257);
    EXPECT_EQ(slot, &mine);
    slot = nullptr;
    SYSDT_VrfRtV6FormatOutGetMem(&slot, 0, 257);
    EXPECT_EQ(slot, nullptr);
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 0);
    EXPECT_EQ(slot, nullptr);
    EXPECT_EQ(host::TakeCounters().allocations, 0u);
    host::SetFaults({.failAllocation = 1});
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 257);
    EXPECT_EQ(slot, nullptr);
    host::SetFaults({});
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 257);
    EXPECT_NE(slot, nullptr);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 1u);
    EXPECT_EQ(counters.plainAllocations, 0u);
}

// ---------------------------------------------------------------------------------------------------------- refusals

constexpr std::string_view kLocal = "the local administrator";
constexpr std::string_view kGlobal = "the global administrator";

// clang-format off
constexpr Refused kReasons[] = {
    {"",                        "empty",            0,  0},
    {"   ",                     "empty",            3,  0},
    {" 00000:0000:0000:0000:0000:ffff:255.255.255.255.1", "too-long", 1, 48, 47},
    {"2001:db8::1 .1",          "blank",           11,  1},
    {" 2001: db8::1.1",         "blank",            6,  1},
    {"2001:db8::1.\t1",         "blank",           12,  1},
    {"1",                       "no-local-administrator", 1, 0, 0, kLocal},
    {" 2001:db8::1 ",           "no-local-administrator", 12, 0, 0, kLocal},
    {"2001:db8::1.",            "digit",           12,  0},
    {".",                       "digit",            1,  0},
    {"2001:db8::1.a",           "digit",           12,  1},
    {"2001:db8::1.-",           "digit",           12,  1},
    {"2001:db8::1.\xb1",        "digit",           12,  1},
    {"2001:db8::1..",           "digit",           12,  1},
    {"2001:db8::1.10",          "one-digit",       12,  2, 0, kLocal},
    {"2001:db8::1.65535",       "one-digit",       12,  5, 0, kLocal},
    {"1.2:3",                   "one-digit",        2,  3, 0, kLocal},
    {" 2001:db8::1.2",          "too-large",       13,  1, 1, kLocal},
    {"::ffff:1.2.3.4",          "too-large",       13,  1, 1, kLocal},
    {"x::1.9",                  "too-large",        5,  1, 1, kLocal},
    {" g::1.1",                 "ipv6",             1,  1, 0, kGlobal},
    {"2001:db8:::1.1",          "ipv6",            10,  1, 0, kGlobal},
    {"::ffff:1.2.3.256.1",      "ipv6",            13,  3, 0, kGlobal},
    {"1:2:3:4:5:6:7.1",         "ipv6",            13,  0, 0, kGlobal},
    {"192.0.2.1.1",             "ipv6",             0,  9, 0, kGlobal},
    {" .1",                     "empty",            1,  0, 0, kGlobal},
    {"1..1",                    "ipv6",             0,  2, 0, kGlobal},
};
// clang-format on

TEST_F(VrfRtV6, Reasons)
{
    CheckRefusals("VRFRTV6", kReasons);
    constexpr std::string_view kTargets[] = {"2001:db8::1.1", "\t::.0 ", "::192.0.2.1.1"};
    CheckAccepted("VRFRTV6", kTargets);
    EXPECT_EQ(Sentence("VRFRTV6", "2001:db8::1"), "\".\" and the local administrator stand at the end");
    EXPECT_EQ(Sentence("VRFRTV6", "2001:db8::1.2"), "the local administrator is at most 1");
}

} // namespace
