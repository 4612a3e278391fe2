// The IPv6 address as a route key, sub-type 15 of BOLPREFIX: sub-type word 0f 00 00 00, then the 16 bytes of the
// address.
#include "support/harness.h"

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

DataTypeDescriptor SubType()
{
    return Row(g_astBOL_PREFIX_ProcTable[15]);
}

TEST_F(Ipv6Prefix, ReadsAnAddress)
{
    const struct {
        const char *text;
        const char *address;
        const char *printed;
    } rows[] = {
        {"::", "00000000000000000000000000000000", "::"},
        {"::1", "00000000000000000000000000000001", "::1"},
        {"1::", "00010000000000000000000000000000", "1::"},
        {"2001:db8::1", "20010db8000000000000000000000001", "2001:db8::1"},
        {"2001:DB8::A", "20010db800000000000000000000000a", "2001:db8::a"},
        {"2001:0db8:0000:0000:0000:0000:0000:0001", "20010db8000000000000000000000001", "2001:db8::1"},
        {"1:2:3:4:5:6:7:8", "00010002000300040005000600070008", "1:2:3:4:5:6:7:8"},
        {"1:0:0:4:5:0:0:8", "00010000000000040005000000000008", "1::4:5:0:0:8"},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", "ffffffffffffffffffffffffffffffff",
         "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
        {"::ffff:10.2.3.4", "00000000000000000000ffff0a020304", "::ffff:10.2.3.4"},
        {"fe80::0102:0304", "fe800000000000000000000001020304", "fe80::102:304"},
        {"ff02::1", "ff020000000000000000000000000001", "ff02::1"},
        {" 2001:db8::1", "20010db8000000000000000000000001", "2001:db8::1"},
        {"\t 2001:db8::1 \t", "20010db8000000000000000000000001", "2001:db8::1"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        for (const uint8_t mode : {uint8_t{0}, uint8_t{1}, uint8_t{2}, uint8_t{3}, uint8_t{5}, uint8_t{6}}) {
            const In in = FormatIn(SubType(), row.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 279);
            EXPECT_EQ(in.length, 89);
            EXPECT_EQ(in.value, Whole(row.address));
            EXPECT_TRUE(in.textKept);
            const Out out = FormatOut(SubType(), Whole(row.address), mode);
            EXPECT_EQ(out.text, row.printed);
            EXPECT_EQ(out.typeId, 25); // mode 3 as well
            EXPECT_EQ(out.length, std::strlen(row.printed) + 1);
        }
        EXPECT_EQ(Value("BOLPREFIX", row.text), Whole(row.address));
        EXPECT_EQ(RoundTrip("BOLPREFIX", row.printed), row.printed);
    }
}

TEST_F(Ipv6Prefix, RefusesWhatIsNoAddress)
{
    for (const char *text : {"",
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
                             "100:1"}) {
        const In in = FormatIn(SubType(), text);
        EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM) << '"' << text << '"';
        EXPECT_EQ(in.typeId, kUntouched);
        EXPECT_EQ(in.length, kUntouched);
        EXPECT_FALSE(in.bufferSet);
    }
    EXPECT_EQ(FormatIn(SubType(), std::string(5000, '1')).code, DT_ERR_INVALID_PARAM);
}

TEST_F(Ipv6Prefix, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks = std::string(500, ' ') + std::string(500, '\t');
    const In in = FormatIn(SubType(), blanks + "2001:db8::1" + blanks);
    EXPECT_EQ(in.value, Whole(kSome6));
    EXPECT_TRUE(in.textKept);
    EXPECT_EQ(FormatIn(SubType(), blanks).code, DT_ERR_INVALID_PARAM);
}

TEST_F(Ipv6Prefix, ObeysTheContract)
{
    Sweep(SubType(),
          Contract{.text = "2001:db8::1",
                   .value = Whole(kSome6),
                   .inModes = "PPPPUPPU",
                   .outModes = "TTTTUTTU",
                   .helpModes = "-H----H-",
                   .helpText =
                       "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx",
                   .resultTypeId = 279,
                   .resultLength = 89,
                   .textSize = 257});
    EXPECT_EQ(SubType().LuaGet, nullptr);
}

TEST_F(Ipv6Prefix, PrintsWhateverTheSubTypeWordSays)
{
    EXPECT_EQ(FormatOut(SubType(), Padded("00000000" + kSome6, 89)).text, "2001:db8::1");
    EXPECT_EQ(FormatOut(SubType(), Padded("ffffffff" + kSome6, 89)).text, "2001:db8::1");
    EXPECT_EQ(FormatOut(SubType(), Whole(kSome6 + "ffff")).text, "2001:db8::1");
}

TEST_F(Ipv6Prefix, ShortValuesAreFilledWithZeros)
{
    EXPECT_EQ(FormatOut(SubType(), "").text, "::");
    EXPECT_EQ(FormatOut(SubType(), "0f000000").text, "::");
    EXPECT_EQ(FormatOut(SubType(), "0f000000 20").text, "2000::");
    EXPECT_EQ(FormatOut(SubType(), "0f000000 20010db8").text, "2001:db8::");
    EXPECT_EQ(FormatOut(SubType(), "0f000000" + kSome6).text, "2001:db8::1");
    EXPECT_EQ(FormatOut(SubType(), Whole(kSome6), 1, 19).text, "2001:db8::");
    EXPECT_EQ(FormatOut(SubType(), Whole(kSome6) + "ff").text, "2001:db8::1");
}

TEST_F(Ipv6Prefix, ThePrinterStandsAlone)
{
    char buffer[256];
    std::memset(buffer, '\xA5', sizeof buffer);
    uint32_t printed = 0;
    const std::string value = Bytes(Whole(kSome6));
    EXPECT_EQ(SYSDT_Ipv6Prefix2Str(value.data(), buffer, &printed), DT_OK);
    EXPECT_STREQ(buffer, "2001:db8::1");
    EXPECT_EQ(printed, 11u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(SYSDT_Ipv6Prefix2Str(value.data(), buffer, &printed), DT_ERR_FAIL);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(FormatOut(SubType(), Whole(kSome6)).code, DT_ERR_FAIL);
}

TEST_F(Ipv6Prefix, SharesTheEvpnOperations)
{
    // Their Compare knows EVPN routes only.
    const std::string value = Bytes(Whole(kSome6));
    EXPECT_EQ(SubType().Compare(nullptr, 89, value.data(), value.data()), static_cast<int32_t>(DT_ERR_FAIL));
    EXPECT_EQ(SubType().Check(nullptr, 0, 89, value.data()), DT_OK);
    EXPECT_EQ(SubType().Check(nullptr, 0, 88, value.data()), DT_ERR_LENGTH);
    EXPECT_EQ(SubType().Check(nullptr, 0, 20, value.data()), DT_ERR_LENGTH);
}

TEST_F(Ipv6Prefix, ToLua)
{
    const LuaOut out = LuaSet(SubType(), Whole("20010db80102030405060708090aff01"), 89);
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{bolPrefix={32,1,13,184,1,2,3,4,5,6,7,8,9,10,255,1}, bolType=15}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(SubType(), Padded("ffffffff", 89), 89).table,
              "{bolPrefix={0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}, bolType=4294967295}");
    for (uint16_t length = 0; length < 89; ++length) {
        const LuaOut tooShort = LuaSet(SubType(), Whole(kSome6), length);
        EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM) << length;
        EXPECT_EQ(tooShort.table, "nil");
        EXPECT_EQ(tooShort.growth, 0);
    }
    EXPECT_EQ(LuaSet(SubType(), Whole(kSome6) + "ff", 90).code, DT_OK);
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

} // namespace
} // namespace bgp::test
