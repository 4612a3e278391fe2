// The IPv6 address as a route key, sub-type 15 of BOLPREFIX: sub-type word 0f 00 00 00, then the 16 bytes of the
// address.
#include "support/refusals.h"
#include "support/route_key.h"

#include "bgp_host_services.h"

#include <cstring>

namespace bgp::test {
namespace {

class Ipv6Prefix : public PlugIn {};

const std::string kSome6 = "20010db8000000000000000000000001"; // 2001:db8::1

std::string Whole(const std::string &address)
{
    return Padded("0f000000" + address, 89);
}

const std::vector<TextCase> kAccepted = {
    {"::", Whole("00000000000000000000000000000000")},
    {"::1", Whole("00000000000000000000000000000001")},
    {"1::", Whole("00010000000000000000000000000000")},
    {"2001:db8::1", Whole("20010db8000000000000000000000001")},
    {"2001:DB8::A", Whole("20010db800000000000000000000000a"), "2001:db8::a"},
    {"2001:0db8:0000:0000:0000:0000:0000:0001", Whole("20010db8000000000000000000000001"), "2001:db8::1"},
    {"1:2:3:4:5:6:7:8", Whole("00010002000300040005000600070008")},
    {"1:0:0:4:5:0:0:8", Whole("00010000000000040005000000000008"), "1::4:5:0:0:8"},
    {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", Whole("ffffffffffffffffffffffffffffffff")},
    {"::ffff:10.2.3.4", Whole("00000000000000000000ffff0a020304")},
    {"fe80::0102:0304", Whole("fe800000000000000000000001020304"), "fe80::102:304"},
    {"ff02::1", Whole("ff020000000000000000000000000001")},
    {" 2001:db8::1", Whole("20010db8000000000000000000000001"), "2001:db8::1"},
    {"\t 2001:db8::1 \t", Whole("20010db8000000000000000000000001"), "2001:db8::1"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    ":",
    ":::",
    "1",
    "1:2",
    "1:2:3:4:5:6:7",
    "1:2:3:4:5:6:7:8:9",
    "1:2:3:4:5:6:7:",
    ":2:3:4:5:6:7:8",
    "1::2::3",
    "12345::",
    "g::",
    "2001:db8::1/64",
    "[2001:db8::1]",
    "2001:db8:: 1",
    "2001:db8::\t1",
    "2001:db8::1\n",
    "2001:db8::1%eth0",
    "2001:db8::1\xff",
    "\xb1",
    "::10.2.3",
    "::10.2.3.256",
    "10.2.3.4",
    "100:1",
    std::string(5000, '1'),
};

// Check, Help and Compare are those of the EVPN routes: their Compare knows no other.
TypeCase Case()
{
    TypeCase type = KeyCase({
        .row = {0, 0, 0, "IPV6", &SYSDT_Ipv6BolPrefixFormatIn, &SYSDT_Ipv6BolPrefixFormatOut, &SYSDT_EVNPrefixCheck,
                &SYSDT_EVNPrefixHelp, &SYSDT_EVNPrefixCompare, nullptr, &SYSDT_Ipv6BolPrefixLuaSet, nullptr, nullptr},
        .entry = &g_astBOL_PREFIX_ProcTable[15],
        .subType = 15,
        .reader = &SYSDT_Ipv6BolPrefixNewLuaGet,
        .contract =
            {.value = Whole(kSome6),
             .helpText =
                 "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx"},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"2001:db8::1"},
        .prints =
            {
                // whatever the sub-type word says; a shorter value reads as if zeros followed
                {"2001:db8::1", Padded("00000000" + kSome6, 89)},
                {"2001:db8::1", Padded("ffffffff" + kSome6, 89)},
                {"2001:db8::1", Whole(kSome6 + "ffff")},
                {"::", ""},
                {"::", "0f000000"},
                {"2000::", "0f000000 20"},
                {"2001:db8::", "0f000000 20010db8"},
                {"2001:db8::1", "0f000000" + kSome6},
                {"2001:db8::1", Whole(kSome6) + "ff"},
            },
        .printFailures = {Whole(kSome6)},
        .lengths = {{19, "2001:db8::"}},
        .checkTestsPointer = false,
        .helpHostCode = DT_OK,
        .compares = {{Whole(kSome6), Whole(kSome6), static_cast<int32_t>(DT_ERR_FAIL)}},
        .luaSets =
            {
                {Whole("20010db80102030405060708090aff01"),
                 "{bolPrefix={32,1,13,184,1,2,3,4,5,6,7,8,9,10,255,1}, bolType=15}"},
                {Padded("ffffffff", 89), "{bolPrefix={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}, bolType=4294967295}"},
            },
    });
    // Unlike other keys, type id and length are left alone until there is a result.
    type.contract.clearsFirst = false;
    type.failedOut = kUntouched;
    return type;
}

[[maybe_unused]] const bool kStated = StateTests<Ipv6Prefix>("Ipv6Prefix", Case());

TEST_F(Ipv6Prefix, TheCompositeReadsAndPrintsThemToo)
{
    ExpectKeys(Row("BOLPREFIX"), kAccepted);
}

TEST_F(Ipv6Prefix, ThePrinterStandsAlone)
{
    char buffer[256];
    uint32_t printed = 0;
    const std::string value = Bytes(Whole(kSome6));
    EXPECT_EQ(SYSDT_Ipv6Prefix2Str(value.data(), buffer, &printed), DT_OK);
    EXPECT_STREQ(buffer, "2001:db8::1");
    EXPECT_EQ(printed, 11u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(SYSDT_Ipv6Prefix2Str(value.data(), buffer, &printed), DT_ERR_FAIL);
}

TEST_F(Ipv6Prefix, FromLuaThroughItsReader)
{
    const LuaIn in = LuaGet("BOLPREFIX", "{bolType=15, bolPrefix={32,1,13,184,1,2,3,4,5,6,7,8,9,10,255,257}}");
    EXPECT_EQ(in.code, DT_OK);
    EXPECT_EQ(in.value, "0f00000020010db80102030405060708090aff01" + Hex(std::string(69, '\xEE')));
    EXPECT_EQ(in.growth, 2); // the table and its sub-type
    EXPECT_EQ(LuaGet("BOLPREFIX", "{bolType=15, bolPrefix='2001:db8::1'}").code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(LuaGet("BOLPREFIX", "{bolType=15, bolPrefix={1,2,3}}").code, DT_ERR_INVALID_VALUE);
}

// clang-format off
constexpr Refused kReasons[] = {
    // text                rule    at length
    {"",                   "empty", 0, 0},
    {"2001:db8::1 /64",    "blank", 11, 1},
    {"2001:db8::1/64",     "ipv6", 11, 1},
    {"  2001:db8::g",      "ipv6", 12, 1},
    {"2001:db8::12345",    "ipv6", 10, 5},
    {"2001::db8::1",       "ipv6", 10, 1},
    {"1:2:3:4:5:6:7",      "ipv6", 13, 0},
    {"1:2:3:4:5:6:7:8:9",  "ipv6", 16, 1},
    {"::10.1.1.256",       "ipv6", 9, 3},
    {"10.1.1.1",           "ipv6", 0, 8},
    {"::1",                "mode", 0, 0, 7, "", "", 0, 7},
};
// clang-format on

TEST_F(Ipv6Prefix, Reasons)
{
    CheckSubTypeRefusals(15, kReasons);
}

} // namespace
} // namespace bgp::test
