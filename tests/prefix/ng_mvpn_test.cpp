// NG_TYPE_..., sub-types 2 to 7 and 13 of the composite route key: the keys of multicast VPN routes (RFC 6514), made of
// AS numbers (8 bytes) and addresses (21 bytes) behind the sub-type word. The text decides the sub-type.
#include "support/refusals.h"
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class NgMvpn : public PlugIn {};

using Created = std::pair<int32_t, int32_t>; // slots of the array, of the record
std::vector<Created> theCreated;

constexpr uint32_t kNgRows[] = {2, 3, 4, 5, 6, 7, 13};

DataTypeDescriptor Ng()
{
    return SubType(2);
}

// A 21-byte address: the IPv4 word as it lies in memory, or the IPv6 bytes.
std::string V4(std::string_view word)
{
    return std::string(word) + std::string(32, '0') + "00";
}
std::string V6(std::string_view bytes)
{
    return "00000000" + std::string(bytes) + "01";
}

// The bytes of an address that a reader writes at `offset`: word or bytes, and flag.
std::string Four(const std::string &value, size_t offset, std::string_view word)
{
    return With(With(value, offset, word), offset + 20, "00");
}
std::string Six(const std::string &value, size_t offset, std::string_view bytes)
{
    return With(value, offset + 4, std::string(bytes) + "01");
}

const std::string k2001_1 = "20010000000000000000000000000001"; // 2001::1
const std::string k2001_2 = "20010000000000000000000000000002"; // 2001::2
const std::string kFf0e_1 = "ff0e0000000000000000000000000001"; // ff0e::1
const std::string kFeff_1 = "feff0000000000000000000000000001"; // feff::1

// ------------------------------------------------------------------------------------------------------------ text in

TEST_F(NgMvpn, RowsShareTheirOperations)
{
    const char *const names[] = {"NG_TYPE_2", "NG_TYPE_3", "NG_TYPE_4_2", "NG_TYPE_4-3",
                                 "NG_TYPE_5", "NG_TYPE_6", "NG_TYPE_4-1"};
    const DataTypeLuaSet luaSets[] = {SYSDT_NGPrefix2LuaSet,  SYSDT_NGPrefix3LuaSet, SYSDT_NGPrefix42LuaSet,
                                      SYSDT_NGPrefix43LuaSet, SYSDT_NGPrefix5LuaSet, SYSDT_NGPrefix6LuaSet,
                                      SYSDT_NGPrefix41LuaSet};
    const BolPrefixLuaReader readers[] = {
        SYSDT_NGPrefix2NewLuaGet, SYSDT_NGPrefix3NewLuaGet, SYSDT_NGPrefix42NewLuaGet, SYSDT_NGPrefix43NewLuaGet,
        SYSDT_NGPrefix5NewLuaGet, SYSDT_NGPrefix6NewLuaGet, SYSDT_NGPrefix41NewLuaGet};
    for (size_t i = 0; i < std::size(kNgRows); ++i) {
        const BolPrefixSubtypeEntry &row = g_astBOL_PREFIX_ProcTable[kNgRows[i]];
        EXPECT_EQ(row.SubType, kNgRows[i]);
        EXPECT_STREQ(row.Name, names[i]);
        EXPECT_EQ(row.FormatIn, SYSDT_NGPrefixFormatIn);
        EXPECT_EQ(row.FormatOut, SYSDT_NGPrefixFormatOut);
        EXPECT_EQ(row.Check, SYSDT_EVNPrefixCheck);
        EXPECT_EQ(row.Help, SYSDT_EVNPrefixHelp);
        EXPECT_EQ(row.Compare, SYSDT_EVNPrefixCompare);
        EXPECT_EQ(row.LuaSet, luaSets[i]);
        EXPECT_EQ(row.LuaGet, SYSDT_EVNPrefixLuaGet);
        EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[kNgRows[i]].Reader, readers[i]);
    }
}

TEST_F(NgMvpn, ReadsAndPrintsEveryIpv4Form)
{
    ExpectKeys(
        Ng(),
        {
            // AS number, sub-type 2
            {"100", Key("02000000 64000000 00000000")},
            {"1", Key("02000000 01000000 00000000")},
            {"65535", Key("02000000 ffff0000 00000000")},
            {"65536", Key("02000000 00000100 00000000")},
            {"4294967295", Key("02000000 ffffffff 00000000")},
            {"00000000100", Key("02000000 64000000 00000000"), "100"},
            {"1.5", Key("02000000 05000100 01000000")},
            {"1.0", Key("02000000 00000100 01000000")},
            {"65535.65535", Key("02000000 ffffffff 01000000")},
            // source:group, sub-type 6, the group in 224.0.0.0/4
            {"10.1.1.1:225.1.1.1", Key("06000000" + V4("0101010a") + V4("010101e1"))},
            {"10.1.1.1:224.0.0.0", Key("06000000" + V4("0101010a") + V4("000000e0"))},
            {"10.1.1.1:239.255.255.255", Key("06000000" + V4("0101010a") + V4("ffffffef"))},
            {"225.1.1.1:225.1.1.2", Key("06000000" + V4("010101e1") + V4("020101e1"))},
            // originator:originator, sub-type 13
            {"10.1.1.1:10.2.2.2", Key("0d000000" + V4("0101010a") + V4("0202020a"))},
            {"10.1.1.1:223.255.255.255", Key("0d000000" + V4("0101010a") + V4("ffffffdf"))},
            {"10.1.1.1:240.0.0.0", Key("0d000000" + V4("0101010a") + V4("000000f0"))},
            {"225.1.1.1:10.1.1.1", Key("0d000000" + V4("010101e1") + V4("0101010a"))},
            {"0.0.0.0:0.0.0.0", Key("0d000000")},
            {"255.255.255.255:255.255.255.255", Key("0d000000" + V4("ffffffff") + V4("ffffffff"))},
            // AS:originator, sub-type 4
            {"100:10.1.1.1", Key("04000000 64000000 00000000" + V4("0101010a"))},
            {"1.5:10.1.1.1", Key("04000000 05000100 01000000" + V4("0101010a"))},
            {"4294967295:225.1.1.1", Key("04000000 ffffffff 00000000" + V4("010101e1"))},
            {"65535.65535:255.255.255.255", Key("04000000 ffffffff 01000000" + V4("ffffffff"))},
            // source:group:originator, sub-type 3
            {"1.1.1.1:2.2.2.2:3.3.3.3", Key("03000000" + V4("01010101") + V4("02020202") + V4("03030303"))},
            {"1.2.3.4:5.6.7.8:9.10.11.12", Key("03000000" + V4("04030201") + V4("08070605") + V4("0c0b0a09"))},
            // AS:source:group, sub-type 7
            {"100:1.1.1.1:2.2.2.2", Key("07000000 64000000 00000000" + V4("01010101") + V4("02020202"))},
            {"1.5:1.1.1.1:225.2.2.2", Key("07000000 05000100 01000000" + V4("01010101") + V4("020202e1"))},
            // source:group:originator:originator, sub-type 5; 63 characters at most
            {"1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4",
             Key("05000000" + V4("01010101") + V4("02020202") + V4("03030303") + V4("04040404"))},
            {"255.255.255.255:255.255.255.255:255.255.255.255:255.255.255.255",
             Key("05000000" + V4("ffffffff") + V4("ffffffff") + V4("ffffffff") + V4("ffffffff"))},
            {" \t 10.1.1.1:225.1.1.1\t\t ", Key("06000000" + V4("0101010a") + V4("010101e1")), "10.1.1.1:225.1.1.1"},
        });
}

TEST_F(NgMvpn, ALoneAddressBecomesTheVplsKeyThatOnlyItsOwnRowPrints)
{
    for (const uint32_t row : kNgRows) {
        EXPECT_EQ(FormatIn(SubType(row), "10.1.1.1").value, Key("00000000 0101010a"));
    }
    EXPECT_EQ(FormatIn(Ng(), "255.255.255.255").value, Key("00000000 ffffffff"));
    EXPECT_EQ(FormatOut(Ng(), Key("00000000 0101010a")).code, DT_ERR_FAIL);
    EXPECT_EQ(RoundTrip("BOLPREFIX", "10.1.1.1"), "10.1.1.1");
}

TEST_F(NgMvpn, ReadsAndPrintsEveryIpv6Form)
{
    ExpectKeys(Ng(), {
                         // source-group, sub-type 6, the group in ff00::/8
                         {"2001::1-ff0e::1", Key("06000000" + V6(k2001_1) + V6(kFf0e_1))},
                         {"2001::1-ff00::", Key("06000000" + V6(k2001_1) + V6("ff000000000000000000000000000000"))},
                         {"2001::1-FF0E::1", Key("06000000" + V6(k2001_1) + V6(kFf0e_1)), "2001::1-ff0e::1"},
                         {"ff0e::1-ff0e::1", Key("06000000" + V6(kFf0e_1) + V6(kFf0e_1))},
                         // AS-originator, sub-type 4
                         {"100-2001::1", Key("04000000 64000000 00000000" + V6(k2001_1))},
                         {"1.5-2001::1", Key("04000000 05000100 01000000" + V6(k2001_1))},
                         {"4294967295-::", Key("04000000 ffffffff 00000000" + V6(std::string(32, '0')))},
                         // originator-originator, sub-type 13
                         {"2001::1-2001::2", Key("0d000000" + V6(k2001_1) + V6(k2001_2))},
                         {"2001::1-feff::1", Key("0d000000" + V6(k2001_1) + V6(kFeff_1))},
                         {"ff0e::1-2001::1", Key("0d000000" + V6(kFf0e_1) + V6(k2001_1))},
                         {"2001::1-ff::1", Key("0d000000" + V6(k2001_1) + V6("00ff0000000000000000000000000001"))},
                         {"2001:DB8:A:b:C:d:E:f-2001::2",
                          Key("0d000000" + V6("20010db8000a000b000c000d000e000f") + V6(k2001_2)),
                          "2001:db8:a:b:c:d:e:f-2001::2"},
                         // AS-source-group, sub-type 7
                         {"100-2001::1-ff0e::1", Key("07000000 64000000 00000000" + V6(k2001_1) + V6(kFf0e_1))},
                         {"1.5-2001::1-2001::2", Key("07000000 05000100 01000000" + V6(k2001_1) + V6(k2001_2))},
                         // source-group-originator, sub-type 3
                         {"2001::1-ff0e::1-2001::2", Key("03000000" + V6(k2001_1) + V6(kFf0e_1) + V6(k2001_2))},
                         // source-group-originator-originator, sub-type 5; 159 characters at most
                         {"2001::1-ff0e::1-2001::2-feff::1",
                          Key("05000000" + V6(k2001_1) + V6(kFf0e_1) + V6(k2001_2) + V6(kFeff_1))},
                         {"1111:1111:1111:1111:1111:1111:1111:1111-2222:2222:2222:2222:2222:2222:2222:2222-"
                          "3333:3333:3333:3333:3333:3333:3333:3333-4444:4444:4444:4444:4444:4444:4444:4444",
                          Key("05000000" + V6(std::string(32, '1')) + V6(std::string(32, '2')) +
                              V6(std::string(32, '3')) + V6(std::string(32, '4'))),
                          ""},
                         {" \t 2001::1-ff0e::1\t\t ", Key("06000000" + V6(k2001_1) + V6(kFf0e_1)), "2001::1-ff0e::1"},
                     });
}

// Between dashes every address speaks for itself: one without ":" is an IPv4 address.
TEST_F(NgMvpn, DashesMayJoinIpv4Addresses)
{
    const struct {
        const char *text;
        std::string value;
        const char *printed;
    } rows[] = {
        {"10.1.1.1-ff0e::1", Key("06000000" + V4("0101010a") + V6(kFf0e_1)), "10.1.1.1:ff0e::1"},
        {"2001::1-10.1.1.1", Key("0d000000" + V6(k2001_1) + V4("0101010a")), "2001::1:10.1.1.1"},
        {"2001::1-225.1.1.1", Key("0d000000" + V6(k2001_1) + V4("010101e1")), "2001::1:225.1.1.1"},
        {"100-10.1.1.1", Key("04000000 64000000 00000000" + V4("0101010a")), "100:10.1.1.1"},
        {"1.5-10.1.1.1", Key("04000000 05000100 01000000" + V4("0101010a")), "1.5:10.1.1.1"},
        {"1.1.1.1-2.2.2.2-3.3.3.3", Key("03000000" + V4("01010101") + V4("02020202") + V4("03030303")),
         "1.1.1.1:2.2.2.2:3.3.3.3"},
        {"2001::1-ff0e::1-3.3.3.3", Key("03000000" + V6(k2001_1) + V6(kFf0e_1) + V4("03030303")), "2001::1-ff0e::1-::"},
        {"1.1.1.1-2.2.2.2-2001::1-2001::2",
         Key("05000000" + V4("01010101") + V4("02020202") + V6(k2001_1) + V6(k2001_2)),
         "1.1.1.1:2.2.2.2:0.0.0.0:0.0.0.0"},
        {"2001::1-2001::2-1.1.1.1-2.2.2.2",
         Key("05000000" + V6(k2001_1) + V6(k2001_2) + V4("01010101") + V4("02020202")), "2001::1-2001::2-::-::"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        const In in = FormatIn(Ng(), row.text);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.value, Hex(Bytes(row.value)));
        EXPECT_EQ(FormatOut(Ng(), row.value).text, row.printed);
    }
}

TEST_F(NgMvpn, RefusesWhatNoFormTakes)
{
    ExpectRefused(Ng(), {
                            "",
                            " ",
                            "\t",
                            ".",
                            ":",
                            "::",
                            ":::",
                            "::::",
                            "-",
                            "--",
                            "---",
                            // numbers
                            "0",
                            "4294967296",
                            "99999999999",
                            "000000000100",
                            "0.5",
                            "1.65536",
                            "65536.1",
                            "1.",
                            ".1",
                            "1..2",
                            // dots: three make an address, any other number is an AS number's
                            "1.2.3",
                            "1.2.3.4.5",
                            "1.2.3.4.5.6.7",
                            "256.1.1.1",
                            "1.1.1.256",
                            "01.1.1.1",
                            "1.1.1.",
                            ".1.1.1",
                            "1...1",
                            // one colon
                            ":10.1.1.1",
                            "100:",
                            "100:10.1.1",
                            "100:10.1.1.256",
                            "0:10.1.1.1",
                            "4294967296:10.1.1.1",
                            "100:200",
                            "10.1.1.1:100",
                            "1.2.3:10.1.1.1",
                            "1.5:10.1.1.1.1",
                            "10.1.1.1:10.1.1",
                            "100:10.01.1.1",
                            "10.1.1.1.1:10.1.1.1",
                            // two colons
                            "100:1.1.1.1:",
                            "100::1.1.1.1",
                            ":1.1.1.1:2.2.2.2",
                            "100:1.1.1.1:2.2.2",
                            "100:1.1.1.1:256.2.2.2",
                            "100:256.1.1.1:2.2.2.2",
                            "100:1.1.1.1:200",
                            "1.1.1.1:2.2.2.2:100",
                            "1.1.1.1:2.2.2.2:3.3.3.256",
                            "1.1.1.1:2.2.2.256:3.3.3.3",
                            "1.1.1.256:2.2.2.2:3.3.3.3",
                            "1.1.1.1:2.2.2.2:3.3.3",
                            "1.1.1.1.1:2.2.2.2:3.3.3",
                            "0:1.1.1.1:2.2.2.2",
                            "1.2.3:1.1.1.1:2.2.2.2",
                            // three colons
                            "1.1.1.1:2.2.2.2:3.3.3.3:",
                            "100:2.2.2.2:3.3.3.3:4.4.4.4",
                            "1.1.1.1:2.2.2.2:3.3.3.3:100",
                            "256.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4",
                            "1.1.1.1:256.2.2.2:3.3.3.3:4.4.4.4",
                            "1.1.1.1:2.2.2.2:256.3.3.3:4.4.4.4",
                            "1.1.1.1:2.2.2.2:3.3.3.3:256.4.4.4",
                            "1.1.1.1:2.2.2.2:3.3.3.3:4.4.4",
                            // a fourth
                            "1:2:3:4:5",
                            "1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4:5.5.5.5",
                            "1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4:",
                            ":1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4",
                            // characters
                            "100a",
                            "a",
                            "A:10.1.1.1",
                            "100:10.1.1.f",
                            "2001::1",
                            "::1",
                            "100/10.1.1.1",
                            "100,1",
                            "+100",
                            "100 1",
                            "100\t1",
                            "100 :10.1.1.1",
                            "10.1.1.1: 225.1.1.1",
                            "100\n",
                            "\x80",
                            "10.1.1.1\xff",
                            "10.1.1.1:225.1.1.1\xb7",
                            "[1][2][10.0.0.1]",
                            "1/10.1.1.1/100",
                            "10.1.1.0/24",
                            // dashes
                            "-2001::1",
                            "2001::1-",
                            "100-",
                            "-100",
                            "100-200",
                            "100-2001::g",
                            "2001::1-2001::2g",
                            "2001::1- 2001::2",
                            "2001::1-\t2001::2",

                            "0-2001::1",
                            "4294967296-2001::1",
                            "1.65536-2001::1",
                            "100-ff0e::1",
                            "100-ff0e:::1",
                            "10.1.1.1-2001::1",
                            "10.1.1.1-10.2.2.2",
                            "2001::1-100",
                            "2001:::1-2001::2",
                            "2001::1-2001::12345",
                            "2001::1-10.1.1.256",
                            "2001::1-2001::2\x80",
                            "2001::1_2001::2",
                            "2001::1-2001::2%1",
                            // two dashes
                            "100-2001::1-",
                            "100--2001::1",
                            "-2001::1-2001::2",
                            "2001::1-ff0e::1-",
                            "2001::1--2001::2",
                            "100-200-2001::1",
                            "2001::1-100-2001::2",
                            "2001::1-2001::2-100",
                            "0-2001::1-ff0e::1",
                            "100-1.1.1.1-2001::1",
                            "1.5-10.1.1.1-2001::1",
                            "100-1.1.1.1-2.2.2.2",
                            "100-2001::1-2001::12345",
                            "2001::12345-2001::1-2001::2",
                            "2001::1-2001::12345-2001::2",
                            "2001::1-2001::2-2001::12345",
                            // three dashes: no dots, or six
                            "2001::1-2001::2-2001::3-",
                            "-2001::1-2001::2-2001::3",
                            "2001::1-2001::2--2001::3",
                            "100-2001::1-2001::2-2001::3",
                            "2001::1-2001::2-2001::3-100",
                            "1.1.1.1-2001::1-2001::2-2001::3",
                            "1.1.1.1-2.2.2.2-3.3.3.3-2001::1",
                            "1.1.1.1-2.2.2.2-3.3.3.3-4.4.4.4",
                            "2001::1-2001::2-2001::3-1.5",
                            "2001::12345-2001::2-2001::3-2001::4",
                            "2001::1-2001::12345-2001::3-2001::4",
                            "2001::1-2001::2-2001::12345-2001::4",
                            "2001::1-2001::2-2001::3-2001::12345",
                            "1.1.1.256-2.2.2.2-2001::1-2001::2",
                            "1.1.1.1-2.2.2.256-2001::1-2001::2",
                            // a fourth
                            "2001::1-2001::2-2001::3-2001::4-",
                            "2001::1-2001::2-2001::3-2001::4-2001::5",
                            "1-2-3-4-5",
                            "----",
                        });
}

// Two sections with six dots between them are taken whatever the addresses are: the parser's answer is not looked at.
TEST_F(NgMvpn, TwoSectionsWithSixDotsAreAlwaysTaken)
{
    for (const char *text : {"256.1.1.1:10.1.1.1", "10.1.1.1:256.1.1.1", "1.1.1.1.1:1.1.1", "......:", ":......",
                             "...:...", "01.1.1.1:10.1.1.1", "10.1.1.1:225.1.1.999"}) {
        SCOPED_TRACE(text);
        const In in = FormatIn(Ng(), text);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.typeId, kKeyType);
        EXPECT_EQ(in.length, kKeyLength);
        EXPECT_TRUE(in.bufferSet);
        EXPECT_EQ(Parse(SYSDT_Str2NGPrefix, text, kKeyLength).code, DT_OK);
    }
}

TEST_F(NgMvpn, TextsEndAt63And159Characters)
{
    // One colon, six dots: only the length can refuse.
    const std::string longest = "1.1.1.1:1.1.1." + std::string(49, '1');
    ASSERT_EQ(longest.size(), 63u);
    EXPECT_EQ(FormatIn(Ng(), longest).code, DT_OK);
    EXPECT_EQ(FormatIn(Ng(), longest + "1").code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(FormatIn(Ng(), std::string(300, ' ') + longest + std::string(300, '\t')).code, DT_OK);
    EXPECT_EQ(FormatIn(Ng(), std::string(64, '1')).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(FormatIn(Ng(), std::string(5000, '.')).code, DT_ERR_INVALID_PARAM);

    // Two of the four addresses end in dotted form, whose octets make the last character of difference.
    const std::string two = "1111:1111:1111:1111:1111:1111:1111:1111-2222:2222:2222:2222:2222:2222:2222:2222-";
    const std::string six = "3333:3333:3333:3333:3333:3333:";
    const std::string fits = two + six + "11.11.1.1-" + six + "1.1.11.11";
    ASSERT_EQ(fits.size(), 159u);
    EXPECT_EQ(FormatIn(Ng(), fits).value,
              Hex(Bytes(Key("05000000" + V6(std::string(32, '1')) + V6(std::string(32, '2')) +
                            V6(std::string(24, '3') + "0b0b0101") + V6(std::string(24, '3') + "01010b0b")))));
    const std::string tooLong = two + six + "11.11.1.1-" + six + "1.11.11.11";
    ASSERT_EQ(tooLong.size(), 160u);
    EXPECT_EQ(FormatIn(Ng(), tooLong).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(FormatIn(Ng(), std::string(300, '\t') + fits + std::string(300, ' ')).code, DT_OK);
    EXPECT_EQ(FormatIn(Ng(), "-" + std::string(5000, '1')).code, DT_ERR_INVALID_PARAM);

    // The longer limit holds for every text with a dash.
    const std::string wide = "2001:2001:2001:2001:2001:2001:2001:2001-ff0e:ff0e:ff0e:ff0e:ff0e:ff0e:ff0e:ff0e";
    ASSERT_EQ(wide.size(), 79u);
    EXPECT_EQ(RoundTrip("BOLPREFIX", wide), wide);
}

TEST_F(NgMvpn, ParserReportsItsOwnCodes)
{
    ExpectParserPointers(SYSDT_Str2NGPrefix, "100");
    for (const char *text : {"", "x", "0", "1.2.3", "256.1.1.1", "1:2:3:4:5", "100 1", "100:256.1.1.1",
                             "100-2001::12345", "2001::1-g", "2001::1-", "1.1.1.1-2.2.2.2-3.3.3.3-4.4.4.4"}) {
        EXPECT_EQ(Parse(SYSDT_Str2NGPrefix, text, kKeyLength).code, DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(Parse(SYSDT_Str2NGPrefix, std::string(64, '1'), kKeyLength).code, DT_ERR_FAIL);
    const Parsed parsed = Parse(SYSDT_Str2NGPrefix, "\t 10.1.1.1:225.1.1.1 ", kKeyLength);
    EXPECT_EQ(parsed.code, DT_OK);
    EXPECT_EQ(parsed.bytes, Key("06000000" + V4("0101010a") + V4("010101e1")));
}

// ----------------------------------------------------------------------------------------------------------- text out

TEST_F(NgMvpn, AsNumbersPrintDottedOnlyWhenBothWordsAskForIt)
{
    const struct {
        const char *as; // number and notation
        const char *text;
    } rows[] = {
        {"00000000 00000000", "0"},          {"00000000 01000000", "0"},       {"01000000 01000000", "1"},
        {"ffff0000 01000000", "65535"},      {"00000100 01000000", "1.0"},     {"00000100 00000000", "65536"},
        {"00000100 ffffffff", "1.0"},        {"04030201 02000000", "258.772"}, {"ffffffff 01000000", "65535.65535"},
        {"ffffffff 00000000", "4294967295"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        const std::string as = row.as;
        const std::string text = row.text;
        EXPECT_EQ(FormatOut(Ng(), Key("02000000" + as)).text, text);
        EXPECT_EQ(FormatOut(Ng(), Key("04000000" + as + V4("0101010a"))).text, text + ":10.1.1.1");
        EXPECT_EQ(FormatOut(Ng(), Key("04000000" + as + V6(k2001_1))).text, text + "-2001::1");
        EXPECT_EQ(FormatOut(Ng(), Key("07000000" + as + V4("0101010a") + V4("0202020a"))).text,
                  text + ":10.1.1.1:10.2.2.2");
        EXPECT_EQ(FormatOut(Ng(), Key("07000000" + as + V6(k2001_1) + V6(kFf0e_1))).text, text + "-2001::1-ff0e::1");
    }
}

TEST_F(NgMvpn, TheFirstFlagGivesTheFormOfThreeAndFourAddresses)
{
    // Both forms of every address are filled; the flag of the first one alone decides.
    const auto both = [](std::string_view word, std::string_view bytes, std::string_view flag) {
        return std::string(word) + std::string(bytes) + std::string(flag);
    };
    for (const char *other : {"00", "01", "02", "ff"}) {
        SCOPED_TRACE(other);
        const std::string rest = both("02020202", k2001_2, other) + both("03030303", kFf0e_1, other);
        const std::string last = both("fffefdfc", kFeff_1, other);
        EXPECT_EQ(FormatOut(Ng(), Key("03000000" + both("01010101", k2001_1, "00") + rest)).text,
                  "1.1.1.1:2.2.2.2:3.3.3.3");
        EXPECT_EQ(FormatOut(Ng(), Key("03000000" + both("01010101", k2001_1, "01") + rest)).text,
                  "2001::1-2001::2-ff0e::1");
        EXPECT_EQ(FormatOut(Ng(), Key("05000000" + both("01010101", k2001_1, "00") + rest + last)).text,
                  "1.1.1.1:2.2.2.2:3.3.3.3:252.253.254.255");
        EXPECT_EQ(FormatOut(Ng(), Key("05000000" + both("01010101", k2001_1, "01") + rest + last)).text,
                  "2001::1-2001::2-ff0e::1-feff::1");
    }
}

TEST_F(NgMvpn, AnotherFlagPrintsTheEmptyText)
{
    for (const char *flag : {"02", "03", "80", "ff"}) {
        for (const std::string &value : {Key("03000000" + V4("01010101").substr(0, 40) + flag),
                                         Key("05000000" + V4("01010101").substr(0, 40) + flag),
                                         Key("04000000 64000000 00000000" + V4("01010101").substr(0, 40) + flag)}) {
            SCOPED_TRACE(value);
            const Out out = FormatOut(Ng(), value);
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.length, 1);
            EXPECT_EQ(out.bytes, "00");
            const Into into = FormatOutInto(Ng(), value, 1, kKeyTextSize);
            EXPECT_EQ(into.out.code, DT_OK);
            EXPECT_EQ(into.out.bytes, "00");
            EXPECT_FALSE(into.released);
        }
    }
}

TEST_F(NgMvpn, TwoFamiliesPrintEachAddressInItsOwn)
{
    EXPECT_EQ(FormatOut(Ng(), Key("0d000000" + V4("0101010a") + V6(k2001_1))).text, "10.1.1.1:2001::1");
    EXPECT_EQ(FormatOut(Ng(), Key("0d000000" + V6(k2001_1) + V4("0101010a"))).text, "2001::1:10.1.1.1");
    EXPECT_EQ(FormatOut(Ng(), Key("06000000" + V4("0101010a") + V6(kFf0e_1))).text, "10.1.1.1:ff0e::1");
    EXPECT_EQ(FormatOut(Ng(), Key("06000000" + V6(k2001_1) + V4("010101e1"))).text, "2001::1:225.1.1.1");
    EXPECT_EQ(FormatOut(Ng(), Key("07000000 64000000 00000000" + V4("0101010a") + V6(kFf0e_1))).text,
              "100:10.1.1.1:ff0e::1");
    EXPECT_EQ(FormatOut(Ng(), Key("07000000 05000100 01000000" + V6(k2001_1) + V4("010101e1"))).text,
              "1.5:2001::1:225.1.1.1");
    // Sub-types 6 and 13 print by their flags, not by what kind of address the group is.
    EXPECT_EQ(FormatOut(Ng(), Key("06000000" + V4("0101010a") + V4("0202020a"))).text, "10.1.1.1:10.2.2.2");
    EXPECT_EQ(FormatOut(Ng(), Key("0d000000" + V6(k2001_1) + V6(kFf0e_1))).text, "2001::1-ff0e::1");
}

TEST_F(NgMvpn, AnotherSubTypeWordDoesNotPrint)
{
    for (const char *word :
         {"00000000", "01000000", "08000000", "09000000", "0a000000", "0b000000", "0c000000", "0e000000", "0f000000",
          "10000000", "11000000", "ffffffff", "02010000", "03000100", "0d000001", "00000002"}) {
        SCOPED_TRACE(word);
        const std::string value = Key(word + V4("0101010a") + V4("0202020a"));
        ExpectFailedAndFreed(FormatOutFreeing(Ng(), value));
        const Into into = FormatOutInto(Ng(), value, 1, kKeyTextSize);
        EXPECT_EQ(into.out.code, DT_ERR_FAIL);
        EXPECT_FALSE(into.released);
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_EQ(Print(SYSDT_NGPrefix2Str, value).code, DT_ERR_FAIL);
    }
}

TEST_F(NgMvpn, AShorterValueIsExtendedByZeros)
{
    EXPECT_EQ(FormatOut(Ng(), "0200000064000000").text, "100");
    EXPECT_EQ(FormatOut(Ng(), "02").text, "0");
    EXPECT_EQ(FormatOut(Ng(), "0d0000000101010a").text, "10.1.1.1:0.0.0.0");
    EXPECT_EQ(FormatOut(Ng(), Key("0d0000000101010a"), 1, 0).code, DT_ERR_FAIL);
    EXPECT_EQ(FormatOut(Ng(), Key("0d0000000101010a"), 1, 4).text, "0.0.0.0:0.0.0.0");
    EXPECT_EQ(FormatOut(Ng(), Padded("0200000064000000", 200)).text, "100");
}

// One value of every sub-type and family.
const std::vector<std::string> &Values()
{
    static const std::vector<std::string> values = {
        Key("02000000 64000000 00000000"),
        Key("02000000 05000100 01000000"),
        Key("03000000" + V4("01010101") + V4("02020202") + V4("03030303")),
        Key("03000000" + V6(k2001_1) + V6(kFf0e_1) + V6(k2001_2)),
        Key("04000000 64000000 00000000" + V4("0101010a")),
        Key("04000000 05000100 01000000" + V4("0101010a")),
        Key("04000000 64000000 00000000" + V6(k2001_1)),
        Key("04000000 05000100 01000000" + V6(k2001_1)),
        Key("05000000" + V4("01010101") + V4("02020202") + V4("03030303") + V4("04040404")),
        Key("05000000" + V6(k2001_1) + V6(kFf0e_1) + V6(k2001_2) + V6(kFeff_1)),
        Key("06000000" + V4("0101010a") + V4("010101e1")),
        Key("06000000" + V6(k2001_1) + V6(kFf0e_1)),
        Key("07000000 64000000 00000000" + V4("01010101") + V4("02020202")),
        Key("07000000 05000100 01000000" + V6(k2001_1) + V6(kFf0e_1)),
        Key("0d000000" + V4("0101010a") + V4("0202020a")),
        Key("0d000000" + V6(k2001_1) + V6(k2001_2)),
    };
    return values;
}

TEST_F(NgMvpn, AnyFailingPrintFails)
{
    for (const std::string &value : Values()) {
        SCOPED_TRACE(value);
        host::SetFaults({});
        EXPECT_EQ(FormatOut(Ng(), value).code, DT_OK);
        const uint32_t prints = host::TakeCounters().prints;
        EXPECT_GE(prints, 1u);
        ExpectPrintFailures(Ng(), value, prints);
    }
}

TEST_F(NgMvpn, ThePrinterTellsTheLength)
{
    const Printed printed = Print(SYSDT_NGPrefix2Str, Key("06000000" + V4("0101010a") + V4("010101e1")));
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "10.1.1.1:225.1.1.1");
    EXPECT_EQ(printed.length, 18u);
}

TEST_F(NgMvpn, ObeysTheContract)
{
    const Contract contract{
        .text = "10.1.1.1:225.1.1.1",
        .value = Key("06000000" + V4("0101010a") + V4("010101e1")),
        .inModes = "PPPPUPPU",
        .outModes = "TTTTUTTU",
        .helpModes = "-H----H-",
        .helpText = "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx",
        .resultTypeId = kKeyType,
        .resultLength = kKeyLength,
        .textSize = kKeyTextSize,
        .clearsFirst = true};
    for (const uint32_t row : kNgRows) {
        Sweep(SubType(row), contract);
    }
}

TEST_F(NgMvpn, CheckLooksAtTheLengthAndCompareKnowsRoutesOfEvpnOnly)
{
    const std::string value = Bytes(Values()[0]);
    for (const uint32_t number : kNgRows) {
        const DataTypeDescriptor row = SubType(number);
        EXPECT_EQ(row.Check(nullptr, 0, 89, value.data()), DT_OK);
        EXPECT_EQ(row.Check(nullptr, 0, 88, value.data()), DT_ERR_LENGTH);
        EXPECT_EQ(row.Check(nullptr, 0, 90, value.data()), DT_ERR_LENGTH);
        for (const std::string &key : Values()) {
            EXPECT_EQ(static_cast<uint32_t>(CompareKeys(row, key, key)), DT_ERR_FAIL);
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------- Lua

const std::string kLua2001_1 = "{32,1,0,0,0,0,0,0,0,0,0,0,0,0,0,1}";
const std::string kLua2001_2 = "{32,1,0,0,0,0,0,0,0,0,0,0,0,0,0,2}";
const std::string kLuaFf0e_1 = "{255,14,0,0,0,0,0,0,0,0,0,0,0,0,0,1}";
const std::string kLuaFeff_1 = "{254,255,0,0,0,0,0,0,0,0,0,0,0,0,0,1}";

TEST_F(NgMvpn, ToLuaInIpv4)
{
    ExpectSets(SubType(2), Key("02000000 04030201 01000000"),
               "{bolNgAsNumType=1, bolNgAsNumValue=16909060, bolType=2}");
    ExpectSets(SubType(3), Key("03000000" + V4("04030201") + V4("08070605") + V4("fcfdfeff")),
               "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgOriIpType=0, bolNgPrefixCG=84281096, bolNgPrefixCS=16909060, "
               "bolNgPrefixOriIP=4294901244, bolType=3}");
    ExpectSets(SubType(4), Key("04000000 ffffffff 00000000" + V4("04030201")),
               "{bolNgAsNumType=0, bolNgAsNumValue=4294967295, bolNgOriIpType=0, bolNgPrefixOriIP=16909060, "
               "bolType=4}");
    ExpectSets(SubType(5), Key("05000000" + V4("04030201") + V4("08070605") + V4("01000000") + V4("02000000")),
               "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgOriIpType=0, bolNgPrefixCG=84281096, bolNgPrefixCS=16909060, "
               "bolNgPrefixOriIP1=1, bolNgPrefixOriIP2=2, bolType=5}");
    ExpectSets(SubType(6), Key("06000000" + V4("04030201") + V4("08070605")),
               "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgPrefixCG=84281096, bolNgPrefixCS=16909060, bolType=6}");
    ExpectSets(SubType(7), Key("07000000 64000000 07000000" + V4("04030201") + V4("08070605")),
               "{bolNgAsNumType=7, bolNgAsNumValue=100, bolNgCGIpType=0, bolNgCSIpType=0, bolNgPrefixCG=84281096, "
               "bolNgPrefixCS=16909060, bolType=7}");
    ExpectSets(SubType(13), Key("0d000000" + V4("04030201") + V4("08070605")),
               "{bolNgOriIpType=0, bolNgPrefixOriIP1=16909060, bolNgPrefixOriIP2=84281096, bolType=13}");
}

TEST_F(NgMvpn, ToLuaInIpv6)
{
    ExpectSets(SubType(3), Key("03000000" + V6(k2001_1) + V6(kFf0e_1) + V6(k2001_2)),
               "{bolNgCGIpType=1, bolNgCSIpType=1, bolNgOriIpType=1, bolNgPrefixCG=" + kLuaFf0e_1 +
                   ", bolNgPrefixCS=" + kLua2001_1 + ", bolNgPrefixOriIP=" + kLua2001_2 + ", bolType=3}");
    ExpectSets(SubType(4), Key("04000000 64000000 00000000" + V6(k2001_1)),
               "{bolNgAsNumType=0, bolNgAsNumValue=100, bolNgOriIpType=1, bolNgPrefixOriIP=" + kLua2001_1 +
                   ", bolType=4}");
    ExpectSets(SubType(5), Key("05000000" + V6(k2001_1) + V6(kFf0e_1) + V6(k2001_2) + V6(kFeff_1)),
               "{bolNgCGIpType=1, bolNgCSIpType=1, bolNgOriIpType=1, bolNgPrefixCG=" + kLuaFf0e_1 +
                   ", bolNgPrefixCS=" + kLua2001_1 + ", bolNgPrefixOriIP1=" + kLua2001_2 +
                   ", bolNgPrefixOriIP2=" + kLuaFeff_1 + ", bolType=5}");
    ExpectSets(SubType(6), Key("06000000" + V6(k2001_1) + V6(kFf0e_1)),
               "{bolNgCGIpType=1, bolNgCSIpType=1, bolNgPrefixCG=" + kLuaFf0e_1 + ", bolNgPrefixCS=" + kLua2001_1 +
                   ", bolType=6}");
    ExpectSets(SubType(7), Key("07000000 64000000 00000000" + V6(k2001_1) + V6(kFf0e_1)),
               "{bolNgAsNumType=0, bolNgAsNumValue=100, bolNgCGIpType=1, bolNgCSIpType=1, bolNgPrefixCG=" + kLuaFf0e_1 +
                   ", bolNgPrefixCS=" + kLua2001_1 + ", bolType=7}");
    ExpectSets(SubType(13), Key("0d000000" + V6(k2001_1) + V6(k2001_2)),
               "{bolNgOriIpType=1, bolNgPrefixOriIP1=" + kLua2001_1 + ", bolNgPrefixOriIP2=" + kLua2001_2 +
                   ", bolType=13}");
}

TEST_F(NgMvpn, ToLuaWithTwoFamilies)
{
    ExpectSets(SubType(3), Key("03000000" + V4("04030201") + V6(kFf0e_1) + V4("08070605")),
               "{bolNgCGIpType=1, bolNgCSIpType=0, bolNgOriIpType=0, bolNgPrefixCG=" + kLuaFf0e_1 +
                   ", bolNgPrefixCS=16909060, bolNgPrefixOriIP=84281096, bolType=3}");
    ExpectSets(SubType(7), Key("07000000 64000000 00000000" + V6(k2001_1) + V4("08070605")),
               "{bolNgAsNumType=0, bolNgAsNumValue=100, bolNgCGIpType=0, bolNgCSIpType=1, bolNgPrefixCG=84281096, "
               "bolNgPrefixCS=" +
                   kLua2001_1 + ", bolType=7}");
    // The originators have one flag between them, the first one's.
    const std::string both = "04030201" + k2001_1;
    const std::string bothToo = "08070605" + k2001_2;
    const std::string four = "bolNgPrefixOriIP1=16909060, bolNgPrefixOriIP2=84281096";
    const std::string six = "bolNgPrefixOriIP1=" + kLua2001_1 + ", bolNgPrefixOriIP2=" + kLua2001_2;
    ExpectSets(SubType(13), Key("0d000000" + both + "00" + bothToo + "01"),
               "{bolNgOriIpType=0, " + four + ", bolType=13}");
    ExpectSets(SubType(13), Key("0d000000" + both + "01" + bothToo + "00"),
               "{bolNgOriIpType=1, " + six + ", bolType=13}");
    const std::string head = "05000000" + V4("01000000") + V4("02000000");
    const std::string front = "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgOriIpType=";
    ExpectSets(SubType(5), Key(head + both + "00" + bothToo + "01"),
               front + "0, bolNgPrefixCG=2, bolNgPrefixCS=1, " + four + ", bolType=5}");
    ExpectSets(SubType(5), Key(head + both + "01" + bothToo + "00"),
               front + "1, bolNgPrefixCG=2, bolNgPrefixCS=1, " + six + ", bolType=5}");
}

TEST_F(NgMvpn, LuaSetReportsTheSubTypeWordAsItIs)
{
    EXPECT_EQ(LuaSet(SubType(2), Key("0d000100 64000000"), 89).table,
              "{bolNgAsNumType=0, bolNgAsNumValue=100, bolType=65549}");
    EXPECT_EQ(LuaSet(SubType(6), Key("ffffffff"), 89).table,
              "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgPrefixCG=0, bolNgPrefixCS=0, bolType=4294967295}");
}

TEST_F(NgMvpn, ReadersNeedStateAndValue)
{
    for (const uint32_t row : kNgRows) {
        SCOPED_TRACE(row);
        ExpectReaderPointers(row);
    }
}

// Fields of the tables below, in the order in which the readers fetch them.
const std::string kAsType = "bolNgAsNumType = 1, ";
const std::string kAsValue = "bolNgAsNumValue = 16909060, ";
const std::string kOri = "bolNgOriIpType = 0, bolNgPrefixOriIP = 1, ";
const std::string kOris = "bolNgOriIpType = 0, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1, ";
const std::string kCs = "bolNgCSIpType = 0, bolNgPrefixCS = 3, ";
const std::string kCg = "bolNgCGIpType = 0, bolNgPrefixCG = 4, ";
const std::string kOri6 = "bolNgOriIpType = 1, bolNgPrefixOriIP = " + kLua2001_2 + ", ";
const std::string kOris6 =
    "bolNgOriIpType = 1, bolNgPrefixOriIP2 = " + kLuaFeff_1 + ", bolNgPrefixOriIP1 = " + kLua2001_2 + ", ";
const std::string kCs6 = "bolNgCSIpType = 1, bolNgPrefixCS = " + kLua2001_1 + ", ";
const std::string kCg6 = "bolNgCGIpType = 1, bolNgPrefixCG = " + kLuaFf0e_1 + ", ";

TEST_F(NgMvpn, ReaderOfType2)
{
    const std::string none = Unwritten();
    const std::string type = With(none, 8, "01000000");
    ExpectReads(2, {
                       {kAsType + kAsValue, DT_OK, With(type, 4, "04030201"), -1},
                       {"bolNgAsNumType = 4294967297, bolNgAsNumValue = 4294967295", DT_OK, With(type, 4, "ffffffff"),
                        -1}, // the low 32 bits
                       {"bolNgAsNumType = '1', bolNgAsNumValue = '16909060'", DT_OK, With(type, 4, "04030201"), -1},
                       {kAsValue, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgAsNumType = 'plain', " + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgAsNumType = {}, " + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgAsNumType = true, " + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
                       {kAsType, DT_ERR_INVALID_PARAM, type, 2},
                       {kAsType + "bolNgAsNumValue = 'x'", DT_ERR_INVALID_PARAM, type, 2},
                       {kAsType + "bolNgAsNumValue = {1}", DT_ERR_INVALID_PARAM, type, 2},
                       {kAsType + "bolNgAsNumValue = false", DT_ERR_INVALID_PARAM, type, 2},
                       {"", DT_ERR_INVALID_PARAM, none, 1},
                   });
}

TEST_F(NgMvpn, ReaderOfType3)
{
    const std::string none = Unwritten();
    const std::string ori = Four(none, 46, "01000000");
    const std::string oriCs = Four(ori, 4, "03000000");
    const std::string whole = Four(oriCs, 25, "04000000");
    const std::string onlyCsCg = Four(Four(none, 4, "03000000"), 25, "04000000");
    ExpectReads(3, {
                       {kOri + kCs + kCg, DT_OK, whole, 2},
                       {kOri6 + kCs6 + kCg6, DT_OK, Six(Six(Six(none, 46, k2001_2), 4, k2001_1), 25, kFf0e_1), -1},
                       {kOri + kCs6 + kCg, DT_OK, Four(Six(ori, 4, k2001_1), 25, "04000000"), 1},
                       // a kind that is no number
                       {kCs + kCg, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgOriIpType = 'x', bolNgPrefixOriIP = 1, " + kCs + kCg, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgOriIpType = {}, bolNgPrefixOriIP = 1, " + kCs + kCg, DT_ERR_INVALID_PARAM, none, 1},
                       {kOri + kCg, DT_ERR_INVALID_PARAM, ori, 3},
                       {kOri + "bolNgCSIpType = 'x', bolNgPrefixCS = 3, " + kCg, DT_ERR_INVALID_PARAM, ori, 3},
                       {kOri + kCs, DT_ERR_INVALID_PARAM, oriCs, 5},
                       {kOri + kCs + "bolNgCGIpType = {0}, bolNgPrefixCG = 4", DT_ERR_INVALID_PARAM, oriCs, 5},
                       // an address that does not fit its kind is passed over
                       {"bolNgOriIpType = 0, " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {"bolNgOriIpType = 0, bolNgPrefixOriIP = 'x', " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {"bolNgOriIpType = 0, bolNgPrefixOriIP = " + kLua2001_1 + ", " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {"bolNgOriIpType = 1, " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {"bolNgOriIpType = 1, bolNgPrefixOriIP = 1, " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {kOri + "bolNgCSIpType = 0, " + kCg, DT_OK, Four(ori, 25, "04000000"), 2},
                       {kOri + "bolNgCSIpType = 1, bolNgPrefixCS = 3, " + kCg, DT_OK, Four(ori, 25, "04000000"), 2},
                       {kOri + kCs + "bolNgCGIpType = 0", DT_OK, oriCs, 2},
                       {kOri + kCs + "bolNgCGIpType = 0, bolNgPrefixCG = {}", DT_OK, oriCs, 2},
                       // another kind writes nothing
                       {"bolNgOriIpType = 2, bolNgPrefixOriIP = 1, " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {"bolNgOriIpType = 256, bolNgPrefixOriIP = 1, " + kCs + kCg, DT_OK, onlyCsCg, 2},
                       {kOri + kCs + "bolNgCGIpType = 4294967295, bolNgPrefixCG = 4", DT_OK, oriCs, 2},
                       {"", DT_ERR_INVALID_PARAM, none, 1},
                   });
}

TEST_F(NgMvpn, ReaderOfType42)
{
    const std::string none = Unwritten();
    const std::string ori = Four(none, 12, "01000000");
    const std::string oriType = With(ori, 8, "01000000");
    const std::string as = With(With(none, 8, "01000000"), 4, "04030201");
    ExpectReads(4, {
                       {kOri + kAsType + kAsValue, DT_OK, With(oriType, 4, "04030201"), 0},
                       {kOri6 + kAsType + kAsValue, DT_OK, Six(as, 12, k2001_2), -1},
                       {kAsType + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgOriIpType = 'x', " + kAsType + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgOriIpType = 0, " + kAsType + kAsValue, DT_OK, as, 0},
                       {"bolNgOriIpType = 1, bolNgPrefixOriIP = 'x', " + kAsType + kAsValue, DT_OK, as, 0},
                       {"bolNgOriIpType = 2, bolNgPrefixOriIP = 1, " + kAsType + kAsValue, DT_OK, as, 0},
                       {kOri + kAsValue, DT_ERR_INVALID_PARAM, ori, 3},
                       {kOri + "bolNgAsNumType = 'x', " + kAsValue, DT_ERR_INVALID_PARAM, ori, 3},
                       {kOri + kAsType, DT_ERR_INVALID_PARAM, oriType, 4},
                       {kOri + kAsType + "bolNgAsNumValue = {}", DT_ERR_INVALID_PARAM, oriType, 4},
                       {"", DT_ERR_INVALID_PARAM, none, 1},
                   });
}

TEST_F(NgMvpn, ReaderOfType43)
{
    const std::string none = Unwritten();
    const std::string second = Four(none, 67, "02000000");
    const std::string oris = Four(second, 46, "01000000");
    const std::string orisCs = Four(oris, 4, "03000000");
    const std::string csCg = Four(Four(none, 4, "03000000"), 25, "04000000");
    ExpectReads(
        5, {
               {kOris + kCs + kCg, DT_OK, Four(orisCs, 25, "04000000"), 2},
               {kOris6 + kCs6 + kCg6, DT_OK,
                Six(Six(Six(Six(none, 67, kFeff_1), 46, k2001_2), 4, k2001_1), 25, kFf0e_1), -2},
               {kOris6 + kCs + kCg, DT_OK, Six(Six(csCg, 67, kFeff_1), 46, k2001_2), 0},
               {kCs + kCg, DT_ERR_INVALID_PARAM, none, 1},
               {"bolNgOriIpType = {}, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1, " + kCs + kCg, DT_ERR_INVALID_PARAM,
                none, 1},
               {"bolNgOriIpType = 0, bolNgPrefixOriIP1 = 1, " + kCs + kCg, DT_OK, Four(csCg, 46, "01000000"), 2},
               {"bolNgOriIpType = 0, bolNgPrefixOriIP2 = 2, " + kCs + kCg, DT_OK, Four(csCg, 67, "02000000"), 2},
               {"bolNgOriIpType = 0, bolNgPrefixOriIP2 = {}, bolNgPrefixOriIP1 = 'x', " + kCs + kCg, DT_OK, csCg, 2},
               {"bolNgOriIpType = 1, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1, " + kCs + kCg, DT_OK, csCg, 2},
               {"bolNgOriIpType = 7, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1, " + kCs + kCg, DT_OK, csCg, 2},
               {kOris + kCg, DT_ERR_INVALID_PARAM, oris, 4},
               {kOris + "bolNgCSIpType = 'x', bolNgPrefixCS = 3, " + kCg, DT_ERR_INVALID_PARAM, oris, 4},
               {kOris + "bolNgCSIpType = 0, " + kCg, DT_OK, Four(oris, 25, "04000000"), 2},
               {kOris + kCs, DT_ERR_INVALID_PARAM, orisCs, 6},
               {kOris + kCs + "bolNgCGIpType = 'x', bolNgPrefixCG = 4", DT_ERR_INVALID_PARAM, orisCs, 6},
               {kOris + kCs + "bolNgCGIpType = 0, bolNgPrefixCG = 'x'", DT_OK, orisCs, 2},
               {"", DT_ERR_INVALID_PARAM, none, 1},
           });
}

TEST_F(NgMvpn, ReaderOfType5)
{
    const std::string none = Unwritten();
    const std::string cs = Four(none, 4, "03000000");
    const std::string cg = Four(none, 25, "04000000");
    ExpectReads(6, {
                       {kCs + kCg, DT_OK, Four(cs, 25, "04000000"), 1},
                       {kCs6 + kCg6, DT_OK, Six(Six(none, 4, k2001_1), 25, kFf0e_1), -1},
                       {kCs + kCg6, DT_OK, Six(cs, 25, kFf0e_1), 0},
                       {kCg, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgCSIpType = 'x', bolNgPrefixCS = 3, " + kCg, DT_ERR_INVALID_PARAM, none, 1},
                       {"bolNgCSIpType = 0, " + kCg, DT_OK, cg, 1},
                       {"bolNgCSIpType = 0, bolNgPrefixCS = 'x', " + kCg, DT_OK, cg, 1},
                       {"bolNgCSIpType = 1, bolNgPrefixCS = 3, " + kCg, DT_OK, cg, 1},
                       {"bolNgCSIpType = 2, bolNgPrefixCS = 3, " + kCg, DT_OK, cg, 1},
                       {kCs, DT_ERR_INVALID_PARAM, cs, 3},
                       {kCs + "bolNgCGIpType = {}, bolNgPrefixCG = 4", DT_ERR_INVALID_PARAM, cs, 3},
                       {kCs + "bolNgCGIpType = 0", DT_OK, cs, 1},
                       {kCs + "bolNgCGIpType = 1, bolNgPrefixCG = 4", DT_OK, cs, 1},
                       {"", DT_ERR_INVALID_PARAM, none, 1},
                   });
}

TEST_F(NgMvpn, ReaderOfType6)
{
    const std::string none = Unwritten();
    const std::string cs = Four(none, 12, "03000000");
    const std::string csCg = Four(cs, 33, "04000000");
    const std::string csCgType = With(csCg, 8, "01000000");
    const std::string as = With(With(none, 8, "01000000"), 4, "04030201");
    ExpectReads(
        7,
        {
            {kCs + kCg + kAsType + kAsValue, DT_OK, With(csCgType, 4, "04030201"), 1},
            {kCs6 + kCg6 + kAsType + kAsValue, DT_OK, Six(Six(as, 12, k2001_1), 33, kFf0e_1), -1},
            {kCg + kAsType + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
            {"bolNgCSIpType = 'x', bolNgPrefixCS = 3, " + kCg + kAsType + kAsValue, DT_ERR_INVALID_PARAM, none, 1},
            {"bolNgCSIpType = 0, " + kCg + kAsType + kAsValue, DT_OK, Four(as, 33, "04000000"), 1},
            {"bolNgCSIpType = 3, bolNgPrefixCS = 3, " + kCg + kAsType + kAsValue, DT_OK, Four(as, 33, "04000000"), 1},
            {kCs + kAsType + kAsValue, DT_ERR_INVALID_PARAM, cs, 3},
            {kCs + "bolNgCGIpType = {}, bolNgPrefixCG = 4, " + kAsType + kAsValue, DT_ERR_INVALID_PARAM, cs, 3},
            {kCs + "bolNgCGIpType = 1, bolNgPrefixCG = 4, " + kAsType + kAsValue, DT_OK, Four(as, 12, "03000000"), 1},
            {kCs + kCg + kAsValue, DT_ERR_INVALID_PARAM, csCg, 5},
            {kCs + kCg + "bolNgAsNumType = 'x', " + kAsValue, DT_ERR_INVALID_PARAM, csCg, 5},
            {kCs + kCg + kAsType, DT_ERR_INVALID_PARAM, csCgType, 6},
            {kCs + kCg + kAsType + "bolNgAsNumValue = 'x'", DT_ERR_INVALID_PARAM, csCgType, 6},
            {"", DT_ERR_INVALID_PARAM, none, 1},
        });
}

TEST_F(NgMvpn, ReaderOfType41)
{
    const std::string none = Unwritten();
    const std::string second = Four(none, 25, "02000000");
    const std::string first = Four(none, 4, "01000000");
    ExpectReads(
        13, {
                {kOris, DT_OK, Four(second, 4, "01000000"), 0},
                {kOris6, DT_OK, Six(Six(none, 25, kFeff_1), 4, k2001_2), -2},
                {"bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1", DT_ERR_INVALID_PARAM, none, 1},
                {"bolNgOriIpType = 'x', bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1", DT_ERR_INVALID_PARAM, none, 1},
                {"bolNgOriIpType = 0, bolNgPrefixOriIP1 = 1", DT_OK, first, 0},
                {"bolNgOriIpType = 0, bolNgPrefixOriIP2 = 'x', bolNgPrefixOriIP1 = 1", DT_OK, first, 0},
                {"bolNgOriIpType = 0, bolNgPrefixOriIP2 = 2", DT_OK, second, 0},
                {"bolNgOriIpType = 0, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = {}", DT_OK, second, 0},
                {"bolNgOriIpType = 1, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = " + kLua2001_2, DT_OK,
                 Six(none, 4, k2001_2), -1},
                {"bolNgOriIpType = 2, bolNgPrefixOriIP2 = 2, bolNgPrefixOriIP1 = 1", DT_OK, none, 0},
                {"", DT_ERR_INVALID_PARAM, none, 1},
            });
}

TEST_F(NgMvpn, AnIpv6ArrayWithAHoleStopsThereAndStaysOnTheStack)
{
    // 16 numbers are fetched and leave with their table; the item that is no number stays with those before it.
    const struct {
        const char *array;
        int32_t fetched;
    } rows[] = {
        {"{}", 1},
        {"{'x',1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}", 1},
        {"{32,1,13,184,{},0,0,0,0,0,0,0,0,0,0,1}", 5},
        {"{32,1,13,184,0,0,0,0,0,0,0,0,0,0,0}", 16},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.array);
        const LuaIn in = ReadKey(6, "{bolNgCSIpType = 1, bolNgPrefixCS = " + std::string(row.array) + ", " + kCg + "}");
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.growth, 1 + row.fetched);
        // From the missing item to the flag nothing is written; the group is read all the same.
        const size_t from = 8 + static_cast<size_t>(row.fetched) - 1;
        EXPECT_EQ(in.value.substr(2 * from), Four(Unwritten(), 25, "04000000").substr(2 * from));
        EXPECT_EQ(in.value.substr(0, 16), "eeeeeeeeeeeeeeee");
    }
    const LuaIn wide =
        ReadKey(6, "{bolNgCSIpType = 1, bolNgPrefixCS = {288,257,-1,'4',0,0,0,0,0,0,0,0,0,0,0,1,99}, " + kCg + "}");
    EXPECT_EQ(wide.code, DT_OK);
    EXPECT_EQ(wide.value, Four(Six(Unwritten(), 4, "2001ff04000000000000000000000001"), 25, "04000000"));
}

TEST_F(NgMvpn, EveryValueComesBackFromItsLuaTable)
{
    for (const std::string &value : Values()) {
        SCOPED_TRACE(value);
        const LuaOut out = LuaSet("BOLPREFIX", value);
        EXPECT_EQ(out.code, DT_OK);
        const LuaIn in = LuaGet("BOLPREFIX", out.table);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(LuaSet("BOLPREFIX", in.value).table, out.table);
        EXPECT_EQ(Text("BOLPREFIX", in.value), Text("BOLPREFIX", value));
    }
}

// --------------------------------------------------------------------------------------------------------- real routes

// The fields of an MCAST-VPN NLRI (RFC 6514 section 4) as a value: the route distinguisher is no part of the key.
class Nlri {
public:
    explicit Nlri(const std::string &hex) : bytes_(Bytes(hex))
    {
        type_ = Take(1)[0];
        EXPECT_EQ(static_cast<size_t>(static_cast<uint8_t>(Take(1)[0])), bytes_.size() - 2);
        Take(8); // route distinguisher
    }

    std::string Value()
    {
        switch (type_) {
        case 1: { // intra-AS I-PMSI: originator
            const std::string originator = Take(Left());
            EXPECT_EQ(originator.size(), 4u);
            return Key("00000000" + Word(originator));
        }
        case 2: // inter-AS I-PMSI: source AS
            return Key("02000000" + As());
        case 3: { // S-PMSI: source, group, originator
            std::string value = "03000000" + Prefix();
            value += Prefix();
            return Key(value + Address(Take(Left())));
        }
        case 5: // source active: source, group
        {
            const std::string value = "06000000" + Prefix();
            return Key(value + Prefix());
        }
        case 6: // shared tree join: source AS, source, group
        case 7: // source tree join: the same
        {
            std::string value = "07000000" + As();
            value += Prefix();
            return Key(value + Prefix());
        }
        default:
            ADD_FAILURE() << "route type " << int{type_};
            return Key("");
        }
    }

    size_t Left() const { return bytes_.size() - at_; }

private:
    std::string Take(size_t count)
    {
        EXPECT_LE(count, Left());
        const std::string taken = bytes_.substr(at_, count);
        at_ += count;
        return taken;
    }
    // Network order to the order of the processor.
    static std::string Word(const std::string &network) { return Hex(std::string(network.rbegin(), network.rend())); }
    std::string As() { return Word(Take(4)) + "00000000"; }
    static std::string Address(const std::string &network)
    {
        return network.size() == 4 ? V4(Word(network)) : V6(Hex(network));
    }
    std::string Prefix()
    {
        const auto bits = static_cast<uint8_t>(Take(1)[0]);
        return Address(Take(bits / 8u));
    }

    std::string bytes_;
    size_t at_ = 0;
    char type_;
};

TEST_F(NgMvpn, RealRoutesGoThroughTextAndLua)
{
    const char *const texts[] = {
        "10.0.0.4",
        "10.0.0.1",
        "1.0.0.1",
        "10.0.0.1",
        "192.168.100.1",
        "1",
        "64496",
        "192.168.1.1:224.0.0.1:10.0.0.1",
        "10.0.0.10:12.0.0.12:1.0.0.1",
        "2001:db8:1::1-ff0e::1-2001:db8::2",
        "192.168.1.1:224.0.0.1",
        "10.99.12.4:239.251.255.228",
        "65000:10.99.199.1:239.251.255.228",
        "16:1.0.0.1:2.0.0.2",
        "65000-fd00::1-ff0e::1",
        "65000:10.99.12.2:239.251.255.228",
        "10:1.0.0.1:2.0.0.2",
    };
    const std::vector<std::string> lines = RealValues("mvpn-nlri-hex.txt");
    ASSERT_EQ(lines.size(), std::size(texts));
    for (size_t i = 0; i < lines.size(); ++i) {
        SCOPED_TRACE(lines[i]);
        Nlri nlri(lines[i]);
        const std::string value = nlri.Value();
        EXPECT_EQ(nlri.Left(), 0u);
        EXPECT_EQ(Text("BOLPREFIX", value), texts[i]);
        EXPECT_EQ(bgp::test::Value("BOLPREFIX", texts[i]), value);
        EXPECT_EQ(Check("BOLPREFIX", value), DT_OK);
        const LuaOut out = LuaSet("BOLPREFIX", value);
        EXPECT_EQ(out.code, DT_OK);
        const LuaIn in = LuaGet("BOLPREFIX", out.table);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(Text("BOLPREFIX", in.value), texts[i]);
    }
}

// The tables that an operation creates are told how many fields follow.
TEST_F(NgMvpn, TablesAreCreatedForWhatFollows)
{
    const struct {
        std::string value;
        std::vector<Created> created;
        int32_t entries;
    } rows[] = {
        {Key("02000000"), {{0, 3}}, 3},
        {Key("03000000"), {{0, 7}}, 7},
        {Key("04000000"), {{0, 5}}, 5},
        {Key("05000000"), {{0, 8}}, 8},
        {Key("06000000"), {{0, 5}}, 5},
        {Key("07000000"), {{0, 7}}, 7},
        {Key("0d000000"), {{0, 4}}, 4},
        {Key("0d000000" + V6(k2001_1) + V6(k2001_2)), {{0, 4}, {16, 0}, {16, 0}}, 4},
        {Key("05000000" + V4("01010101") + V6(kFf0e_1) + V6(k2001_1)), {{0, 8}, {16, 0}, {16, 0}, {16, 0}}, 8},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.value.substr(0, 8));
        const uint32_t subType = static_cast<uint8_t>(Bytes(row.value)[0]);
        theCreated.clear();
        const LuaOut out = LuaSet(SubType(subType), row.value, kKeyLength);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(theCreated, row.created);
        EXPECT_EQ(std::count(out.table.begin(), out.table.end(), '='), row.entries) << out.table;
    }
}

// clang-format off
constexpr char kAsNumber[] = "the AS number";
constexpr char kInterAs[] = "Inter-AS I-PMSI A-D route";
constexpr char kLeafInterAs[] = "Leaf A-D route of an Inter-AS I-PMSI";
constexpr char kLeafSPmsi[] = "Leaf A-D route of an S-PMSI";
constexpr char kLeafIntraAs[] = "Leaf A-D route of an Intra-AS I-PMSI";
constexpr char kSPmsi[] = "S-PMSI A-D route";
constexpr Refused kReasons[] = {
    // text                                  rule               at length limit  what, part
    {"",                                     "empty",            0, 0},
    {"1111111111111111111111111111111111111111111111111111111111111111", "too-long", 0, 64, 63},
    {"2001::1-0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
     "00000000000000000000000000000000000000000000000000",     "too-long", 0, 164, 159},
    {"100 :10.1.1.1",                      "blank",            3, 1, 0, kAsNumber, kLeafInterAs},
    {"100:10.1.1.1 x",                     "blank",           12, 1, 0, "the originator", kLeafInterAs},
    {" 100;10.1.1.1",                      "ipv4",             4, 1},
    {"10.1.1.0/24",                        "ipv4",             8, 1},
    {"2001::1-2001::2/64",                 "ipv6",            15, 1, 0, "originator 2", kLeafIntraAs},
    {"1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4:5.5.5.5", "too-many-fields", 31, 1, 4},
    {"::1-::2-::3-::4-::5",                  "too-many-fields", 15, 1, 4},
    // a character that belongs in no key, and what is wrong to the left of it or of a separator too many
    {"1-100-200-10.1.1.x",                 "ipv4",             0, 1, 0, "the source", kLeafSPmsi},
    {"10.1.1:10.1.1.x",                    "ipv4",             6, 0, 0, "originator 1", kLeafIntraAs},
    {"100:1.1.1.300:2.2.2.2:3.3.3.3:x",      "too-large",       10, 3, 255, "an octet of this field"},
    {"2001::1-2001::12345-x",              "ipv6",            14, 5, 0, "the group", kSPmsi},
    // the AS number
    {"1.",                                   "digit",            2, 0, 0, kAsNumber, kInterAs},
    {"1..",                                  "ipv4",             2, 1}, // two dots begin no AS number
    {":10.1.1.1",                            "empty",            0, 0, 0, kAsNumber, kLeafInterAs},
    {"ab-2001::1",                           "digit",            0, 1, 0, kAsNumber, kLeafInterAs},
    {"1a-2001::1",                           "character",        1, 1, 0, kAsNumber, kLeafInterAs},
    {"100000000000",                         "too-long",         0, 12, 11, kAsNumber, kInterAs},
    {"1.2.3-2001::1",                        "notation",         0, 5, 0, kAsNumber, kLeafInterAs, 0, 2, "number high.low"},
    {"1.2.3.4.5.6-2001::1",                  "too-many-numbers", 3, 1, 2, kAsNumber, kLeafInterAs},
    {"0",                                    "too-small",        0, 1, 1, kAsNumber, kInterAs},
    {" 0.5",                                 "too-small",        1, 1, 1, "the high part", kInterAs},
    {"4294967296",                           "too-large",        0, 10, 4294967295, kAsNumber, kInterAs},
    {"1.65536:10.1.1.1",                     "too-large",        2, 5, 65535, "the low part", kLeafInterAs},
    // addresses
    {"100:10.1.1",                           "ipv4",            10, 0, 0, "the originator", kLeafInterAs},
    {"100:10.1.1.256",                       "too-large",       11, 3, 255, "an octet of the originator", kLeafInterAs},
    {"100:10.1.1.01",                        "leading-zero",    11, 2, 0, "an octet of the originator", kLeafInterAs},
    {"100:",                                 "empty",            4, 0, 0, "the originator", kLeafInterAs},
    {"100:1",                                "ipv4",             4, 1, 0, "the originator", kLeafInterAs},
    {"100:1.1.1.1:225.1.1",                  "ipv4",            19, 0, 0, "the group", "C-multicast route"},
    {"1.1.1.1:225.1.1.1:3.3.3.x",          "ipv4",            24, 1, 0, "the originator", kSPmsi},
    {"1.1.1.1:225.1.1.1.1:3.3.3",            "ipv4",            17, 1, 0, "the group", kSPmsi},
    {"1.1.1.1:225.1.1.1:300.3.3.3",          "too-large",       18, 3, 255, "an octet of the originator", kSPmsi},
    {"1.1.1.1:2.2.2.2:3.3.3.3:4.4.4",        "ipv4",            29, 0, 0, "originator 2", kLeafSPmsi},
    {"100:1.1.1.1:2.2.2.2:3.3.3.3",          "ipv4",             0, 3, 0, "the source", kLeafSPmsi},
    {"100-2001::g",                        "ipv6",            10, 1, 0, "the originator", kLeafInterAs},
    {"100-2001::12345",                      "ipv6",            10, 5, 0, "the originator", kLeafInterAs},
    {"2001::1-2001:::2",                     "ipv6",            14, 1, 0, "originator 2", kLeafIntraAs},
    {"2001::1::2-ff0e::1",                   "ipv6",             8, 1, 0, "the source", "Source Active A-D route"},
    {"100-2001::1-",                         "empty",           12, 0, 0, "the group", "C-multicast route"},
    // beginning with an address, addresses are meant, although the number of dots says otherwise
    {"10.1.1.1:225.1.1",                   "ipv4",            16, 0, 0, "the group", "Source Active A-D route"},
    {"10.1.1.1:10.2.2",                      "ipv4",            15, 0, 0, "originator 2", kLeafIntraAs},
    {"10.1.1.1:225.1.1.x",                   "ipv4",            17, 1, 0, "the group", "Source Active A-D route"},
    {"2001::1-FF0e::g",                      "ipv6",            14, 1, 0, "the group", "Source Active A-D route"},
    {"2001::1-f::g",                         "ipv6",            11, 1, 0, "originator 2", kLeafIntraAs},
    {"10.1.1.1.1",                           "ipv4",             8, 1},
    {"::1-::2-::3-1.1.1.1",                  "families",         0, 19, 0, "", kLeafSPmsi},
    {"100",                                  "mode",             0, 0, 4, "", "", 0, 4},
};
// clang-format on

// The rows of the seven sub-types share a parser, and its answer.
TEST_F(NgMvpn, Reasons)
{
    for (const uint32_t subType : kNgRows) {
        CheckSubTypeRefusals(subType, kReasons);
    }
}

} // namespace

// The linker puts this in front of the host's own.
extern "C" void __real_SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots); // NOLINT
extern "C" void __wrap_SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots)  // NOLINT
{
    theCreated.emplace_back(arraySlots, recordSlots);
    __real_SYSDT_SPTI_CreateTable(L, arraySlots, recordSlots);
}
