#include "support/harness.h"

#include <cstring>
#include <map>

namespace bgp::test {
namespace {

// EXTCOMMUNITY: eight bytes as on the wire (type, sub-type, value) and the form word (u32, host order).
constexpr const char *kType = "EXTCOMMUNITY";

class ExtCommunity : public PlugIn {};

struct Accepted {
    const char *text;
    const char *value;
    const char *printed;
};

constexpr Accepted kAccepted[] = {
    // AS of two bytes, number of four
    {"100:1", "0002 0064 00000001 01000000", "100:1"},
    {"0:0", "0002 0000 00000000 01000000", "0:0"},
    {"0:5", "0002 0000 00000005 01000000", "0:5"},
    {"1:65536", "0002 0001 00010000 01000000", "1:65536"},
    {"65535:4294967295", "0002 ffff ffffffff 01000000", "65535:4294967295"},
    {"23456:1000", "0002 5ba0 000003e8 01000000", "23456:1000"},
    // AS of four bytes, number of two
    {"65536:0", "0202 00010000 0000 02000000", "65536:0"},
    {"65536:1", "0202 00010000 0001 02000000", "65536:1"},
    {"65536:65535", "0202 00010000 ffff 02000000", "65536:65535"},
    {"4294967295:65535", "0202 ffffffff ffff 02000000", "4294967295:65535"},
    {"16909060:1286", "0202 01020304 0506 02000000", "16909060:1286"},
    // the same, dotted
    {"1.2:3", "0202 0001 0002 0003 03000000", "1.2:3"},
    {"1.0:0", "0202 0001 0000 0000 03000000", "1.0:0"},
    {"0.5:1", "0202 0000 0005 0001 03000000", "0.5:1"},
    {"0.0:0", "0202 0000 0000 0000 03000000", "0.0:0"},
    {"65535.65535:65535", "0202 ffff ffff ffff 03000000", "65535.65535:65535"},
    // IPv4 address, number of two bytes
    {"10.1.1.1:5", "0102 0a010101 0005 00000000", "10.1.1.1:5"},
    {"0.0.0.0:0", "0102 00000000 0000 00000000", "0.0.0.0:0"},
    {"1.2.3.4:1286", "0102 01020304 0506 00000000", "1.2.3.4:1286"},
    {"255.255.255.255:65535", "0102 ffffffff ffff 00000000", "255.255.255.255:65535"}, // 21 characters
    // leading zeros and outer blanks
    {"00100:00001", "0002 0064 00000001 01000000", "100:1"},
    {"0000000000000000100:1", "0002 0064 00000001 01000000", "100:1"},
    {"00001.00002:00003", "0202 0001 0002 0003 03000000", "1.2:3"},
    {"010.001.001.001:00005", "0102 0a010101 0005 00000000", "10.1.1.1:5"},
    {" 100:1 ", "0002 0064 00000001 01000000", "100:1"},
    {"\t1.2:3\t \t", "0202 0001 0002 0003 03000000", "1.2:3"},
};

constexpr const char *kRefused[] = {
    "",
    " ",
    "100",
    ":",
    "1:",
    ":1",
    "::",
    "1:2:3",
    "1::3",
    "65536:65536",
    "65536:4294967295",
    "4294967295:65536",
    "4294967296:1",
    "4294967297:1",
    "65535:4294967296",
    "0:4294967296",
    "1:4294967297",
    "1:18446744073709551617",
    "9999999999999999999:1",
    "18446744073709551616:1",
    "18446744073709551617:1",
    "1.2",
    "1.2:",
    "1.:2",
    ".1:2",
    ".:",
    "1:2.3",
    "65536.1:1",
    "1.65536:1",
    "1.2:65536",
    "4294967296.1:1",
    "1.4294967297:1",
    "1.2:4294967297",
    "1.2:3:4",
    "1.2.3:4",
    "1.2.3",
    "1.2.3.4",
    "1.2.3.4:",
    "1.2.3.4:5:6",
    "1.2.3.4.5:6",
    "1.2.3:4.5",
    "1.2:3.4.5",
    "1:2.3.4.5",
    ":1.2.3.4",
    "1.2.3.:4",
    "1..3.4:5",
    ".2.3.4:5",
    "...:",
    "256.1.1.1:5",
    "1.256.1.1:5",
    "1.1.256.1:5",
    "1.1.1.256:5",
    "1.1.1.1:65536",
    "1.1.1.1:4294967297",
    "4294967297.1.1.1:1",
    "0255.255.255.255:65535", // 22 characters
    "00000000000000000100:1",
    "100 :1",
    "100: 1",
    "10.1.1.1 :5",
    "1\t:2",
    "rt 100:1",
    "RT:100:1",
    "SoO <100 : 1>",
    "100:1x",
    "x100:1",
    "0x64:1",
    "100;1",
    "100,1:1",
    "*:1",
    "100:*",
    "+100:1",
    "100:-1",
    "100:1\n",
    "\xb1:1",
    "1:\xb1",
    "100:1\xff",
    "2001:db8::1.1",
    "no-export",
    "100L:1",
};

TEST_F(ExtCommunity, ReadsRouteTargetsInFourNotations)
{
    for (const Accepted &row : kAccepted) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(row.text);
            const In in = FormatIn(kType, row.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 257);
            EXPECT_EQ(in.length, 12);
            EXPECT_EQ(in.value, Hex(Bytes(row.value)));
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(Text(kType, row.value, mode), row.printed);
        }
    }
}

TEST_F(ExtCommunity, RefusesWhatIsNoRouteTarget)
{
    for (const char *text : kRefused) {
        const In in = FormatIn(kType, text);
        EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE) << '"' << text << '"';
        EXPECT_EQ(in.typeId, kUntouched);
        EXPECT_EQ(in.length, kUntouched);
        EXPECT_FALSE(in.bufferSet);
        EXPECT_TRUE(in.textKept);
    }
}

// A 16-bit number as two bytes in network order, in hex.
std::string Net16(uint32_t number)
{
    const char bytes[] = {static_cast<char>(number >> 8), static_cast<char>(number & 0xFF)};
    return Hex(bytes, sizeof bytes);
}

TEST_F(ExtCommunity, AllNumbersOfSixteenBitsRoundTrip)
{
    for (uint32_t number = 0; number <= 65535; ++number) {
        const std::string text = std::to_string(number);
        const std::string bytes = Net16(number);
        const struct {
            std::string text;
            std::string value;
        } rows[] = {
            {text + ":7", "0002" + bytes + "0000000701000000"},
            {"7:" + text, "000200070000" + bytes + "01000000"},
            {std::to_string(number + 65536) + ":7", "02020001" + bytes + "000702000000"},
            {"65536:" + text, "020200010000" + bytes + "02000000"},
            {text + ".7:8", "0202" + bytes + "0007000803000000"},
            {"7." + text + ":8", "02020007" + bytes + "000803000000"},
            {"7.8:" + text, "020200070008" + bytes + "03000000"},
            {"1.2.3.4:" + text, "010201020304" + bytes + "00000000"},
        };
        for (const auto &row : rows) {
            const std::string value = Value(kType, row.text);
            ASSERT_EQ(value, row.value) << row.text;
            ASSERT_EQ(Text(kType, value), row.text);
        }
        if (number % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

TEST_F(ExtCommunity, AllOctetsOfAnAddressRoundTrip)
{
    for (uint32_t octet = 0; octet <= 999; ++octet) {
        const std::string text = std::to_string(octet);
        for (const std::string &typed :
             {text + ".2.3.4:5", "1." + text + ".3.4:5", "1.2." + text + ".4:5", "1.2.3." + text + ":5"}) {
            if (octet > 255) {
                ASSERT_EQ(CodeOf(kType, typed), DT_ERR_INVALID_VALUE) << typed;
            } else {
                ASSERT_EQ(RoundTrip(kType, typed), typed);
            }
        }
    }
}

TEST_F(ExtCommunity, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks(500, ' ');
    const std::string tabs(500, '\t');
    EXPECT_EQ(Value(kType, blanks + "100:1" + tabs), "000200640000000101000000");
    EXPECT_EQ(CodeOf(kType, blanks + tabs), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, "1:" + std::string(100000, '1')), DT_ERR_INVALID_VALUE);
}

TEST_F(ExtCommunity, TheParserReportsItsOwnCodes)
{
    uint8_t value[12];
    EXPECT_EQ(SYSDT_Str2ExtCommunity(nullptr, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2ExtCommunity("100:1", nullptr), DT_ERR_NULL_PTR);
    for (const char *text : {"", "1 :2", "1:2:3", "1.2.3:4", "65536:65536", "x"}) {
        EXPECT_EQ(SYSDT_Str2ExtCommunity(text, value), DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(SYSDT_Str2ExtCommunity(" 1.2:3 ", value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "020200010002000303000000");
}

// Every kind that prints, with the value bytes 1, 2, 3, 4, 5, 6: 258 is bytes 2-3, 50595078 bytes 4-7, 16909060 bytes
// 2-5, 772 bytes 4-5, 1286 bytes 6-7. All but 0202 print alike whatever the form.
const std::map<std::string, std::string> kPrintedKinds = {
    {"0002", "258:50595078"},
    {"030b", "258:50595078"},
    {"0003", "SoO <258 : 50595078>"},
    {"0102", "1.2.3.4:1286"},
    {"0103", "SoO <1.2.3.4 : 1286>"},
    {"0005", "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"0105", "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"0205", "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"8005", "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"0107", "OSPF ROUTER ID <1.2.3.4 : 1286>"},
    {"8001", "OSPF ROUTER ID <1.2.3.4 : 1286>"},
    {"0203", "SoO <258.772 : 1286>"},
    {"0306", "OSPF RT <1.2.3.4 : 6 : 5>"},
    {"8000", "OSPF RT <1.2.3.4 : 6 : 5>"},
    {"030e", "258:50595078"},
};

TEST_F(ExtCommunity, PrintsEveryKindItKnows)
{
    for (const auto &[kind, text] : kPrintedKinds) {
        for (const char *form : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
            for (const uint8_t mode : kTextModes) {
                SCOPED_TRACE(kind + " form " + form + " mode " + std::to_string(mode));
                const Out out = FormatOut(kType, kind + "010203040506" + form, mode);
                EXPECT_EQ(out.code, DT_OK);
                EXPECT_EQ(out.typeId, 25);
                EXPECT_EQ(out.text, text);
                EXPECT_EQ(out.length, text.size() + 1);
            }
        }
    }
}

TEST_F(ExtCommunity, PrintsTheLargestAndSmallestOfEveryKind)
{
    const struct {
        const char *kind;
        const char *largest;
        const char *smallest;
    } rows[] = {
        {"0002", "65535:4294967295", "0:0"},
        {"030b", "65535:4294967295", "0:0"},
        {"0003", "SoO <65535 : 4294967295>", "SoO <0 : 0>"},
        {"0102", "255.255.255.255:65535", "0.0.0.0:0"},
        {"0103", "SoO <255.255.255.255 : 65535>", "SoO <0.0.0.0 : 0>"},
        {"0005", "OSPF DOMAIN ID <255.255.255.255 : 65535>", "OSPF DOMAIN ID <0.0.0.0 : 0>"},
        {"0105", "OSPF DOMAIN ID <255.255.255.255 : 65535>", "OSPF DOMAIN ID <0.0.0.0 : 0>"},
        {"0205", "OSPF DOMAIN ID <255.255.255.255 : 65535>", "OSPF DOMAIN ID <0.0.0.0 : 0>"},
        {"8005", "OSPF DOMAIN ID <255.255.255.255 : 65535>", "OSPF DOMAIN ID <0.0.0.0 : 0>"},
        {"0107", "OSPF ROUTER ID <255.255.255.255 : 65535>", "OSPF ROUTER ID <0.0.0.0 : 0>"},
        {"8001", "OSPF ROUTER ID <255.255.255.255 : 65535>", "OSPF ROUTER ID <0.0.0.0 : 0>"},
        {"0203", "SoO <65535.65535 : 65535>", "SoO <0.0 : 0>"},
        {"0306", "OSPF RT <255.255.255.255 : 255 : 255>", "OSPF RT <0.0.0.0 : 0 : 0>"},
        {"8000", "OSPF RT <255.255.255.255 : 255 : 255>", "OSPF RT <0.0.0.0 : 0 : 0>"},
        {"030e", "65535:4294967295", "0:0"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.kind);
        EXPECT_EQ(Text(kType, row.kind + std::string("ffffffffffff00000000")), row.largest);
        EXPECT_EQ(Text(kType, row.kind + std::string("00000000000000000000")), row.smallest);
    }
    EXPECT_EQ(std::size(rows), kPrintedKinds.size());
}

TEST_F(ExtCommunity, PrintsTheKnownExamples)
{
    EXPECT_EQ(Text(kType, "0306 00000001 05 07 00000000"), "OSPF RT <0.0.0.1 : 7 : 5>");
    EXPECT_EQ(Text(kType, "0003 0064 00000009 00000000"), "SoO <100 : 9>");
    EXPECT_EQ(Text(kType, "0002 0064 00000001 00000000"), "100:1"); // whatever the form
    // AS_TRANS is named in a bandwidth and nowhere else.
    EXPECT_EQ(Text(kType, "030e 5ba0 000003e8 00000000"), "as-trans:1000");
    EXPECT_EQ(Text(kType, "030e 5ba0 00000000 00000000"), "as-trans:0");
    EXPECT_EQ(Text(kType, "030e 5ba0 ffffffff 00000000"), "as-trans:4294967295");
    EXPECT_EQ(Text(kType, "030e 5b9f 000003e8 00000000"), "23455:1000");
    EXPECT_EQ(Text(kType, "030e 5ba1 000003e8 00000000"), "23457:1000");
    EXPECT_EQ(Text(kType, "030e a05b 000003e8 00000000"), "41051:1000");
    EXPECT_EQ(Text(kType, "0002 5ba0 000003e8 01000000"), "23456:1000");
    EXPECT_EQ(Text(kType, "030b 5ba0 000003e8 01000000"), "23456:1000");
    EXPECT_EQ(Text(kType, "0003 5ba0 000003e8 01000000"), "SoO <23456 : 1000>");
}

void ExpectNothingWritten(const std::string &value, uint8_t mode)
{
    SCOPED_TRACE(value + " mode " + std::to_string(mode));
    const Out out = FormatOut(kType, value, mode);
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.typeId, 25);
    EXPECT_EQ(out.length, 1);
    EXPECT_TRUE(out.bufferSet);
    const Into into = FormatOutInto(Row(kType), value, mode, 257);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_EQ(into.out.typeId, 25);
    EXPECT_EQ(into.out.length, 1);
    EXPECT_EQ(into.buffer, std::string(257, '\xA5'));
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_FALSE(into.released);
}

TEST_F(ExtCommunity, AFourByteAsTargetPrintsByItsForm)
{
    for (const uint8_t mode : kTextModes) {
        EXPECT_EQ(Text(kType, "020201020304050602000000", mode), "16909060:1286");
        EXPECT_EQ(Text(kType, "020201020304050603000000", mode), "258.772:1286");
        EXPECT_EQ(Text(kType, "0202ffffffffffff02000000", mode), "4294967295:65535");
        EXPECT_EQ(Text(kType, "0202ffffffffffff03000000", mode), "65535.65535:65535");
        EXPECT_EQ(Text(kType, "020200000000000002000000", mode), "0:0");
        EXPECT_EQ(Text(kType, "020200000000000003000000", mode), "0.0:0");
        for (const char *form : {"00000000", "01000000", "04000000", "02000001", "00030000", "ffffffff"}) {
            ExpectNothingWritten(std::string("0202010203040506") + form, mode);
        }
    }
}

TEST_F(ExtCommunity, KindZeroPrintsNothing)
{
    for (const char *value : {"000000000000000000000000", "000001020304050601000000", "0000ffffffffffffffffffff"}) {
        ExpectNothingWritten(value, 1);
        ExpectNothingWritten(value, 6);
        const Into into = FormatOutInto(Row(kType), value, 2, 257);
        EXPECT_EQ(into.out.code, DT_OK);
        EXPECT_EQ(into.out.typeId, 25);
        EXPECT_EQ(into.out.length, 1);
        EXPECT_EQ(into.buffer.substr(0, 2), std::string("\0\xA5", 2));
    }
}

TEST_F(ExtCommunity, EveryOtherKindIsRefused)
{
    size_t printed = 0;
    for (uint32_t kind = 0; kind <= 65535; ++kind) {
        const std::string key = Net16(kind);
        const std::string value = key + "01020304050602000000";
        if (kPrintedKinds.count(key) != 0 || key == "0000" || key == "0202") {
            EXPECT_EQ(FormatOut(kType, value).code, DT_OK) << key;
            host::ResetHandle(Handle());
            ++printed;
            continue;
        }
        const Out out = FormatOut(kType, value);
        ASSERT_EQ(out.code, DT_ERR_FAIL) << key;
        ASSERT_EQ(out.typeId, kUntouched) << key;
        ASSERT_EQ(out.length, kUntouched) << key;
        ASSERT_FALSE(out.bufferSet) << key;
        if (kind % 1024 == 0) {
            ASSERT_EQ(host::HandleBlocks(Handle()), 0u) << key;
            host::ResetHandle(Handle());
        }
    }
    EXPECT_EQ(printed, 17u);
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(ExtCommunity, AnUnknownKindReleasesItsOwnBufferAlone)
{
    for (const uint8_t mode : kTextModes) {
        host::RecordReleases(true);
        host::TakeReleases();
        host::TakeCounters();
        const Out out = FormatOut(kType, "4004 0064 42c80000 00000000", mode);
        const std::vector<host::Release> releases = host::TakeReleases();
        EXPECT_EQ(out.code, DT_ERR_FAIL);
        EXPECT_FALSE(out.bufferSet);
        ASSERT_EQ(releases.size(), 1u);
        EXPECT_TRUE(releases[0].known);
        EXPECT_NE(releases[0].memory, nullptr);
        EXPECT_EQ(host::TakeCounters().allocations, 1u);
        EXPECT_EQ(host::HandleBlocks(Handle()), 0u);

        const Into into = FormatOutInto(Row(kType), "4004 0064 42c80000 00000000", mode, 257);
        EXPECT_EQ(into.out.code, DT_ERR_FAIL);
        EXPECT_EQ(into.out.typeId, kUntouched);
        EXPECT_EQ(into.out.length, kUntouched);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_FALSE(into.released);
        EXPECT_EQ(into.buffer, std::string(257, '\xA5'));
        EXPECT_EQ(into.allocations, 0u);
    }
}

TEST_F(ExtCommunity, TextModesReadTwelveBytesWhateverTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row(kType), "000200640000000101000000", 1, 0).text, "100:1");
    EXPECT_EQ(FormatOut(Row(kType), "000200640000000101000000", 1, 100000).text, "100:1");
}

TEST_F(ExtCommunity, AFailingPrintIsAFailure)
{
    for (const auto &[kind, text] : kPrintedKinds) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(kType, kind + "01020304050600000000").code, DT_ERR_FAIL) << kind;
    }
    for (const char *value : {"020201020304050602000000", "020201020304050603000000", "030e5ba00000000100000000"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL) << value;
    }
}

TEST_F(ExtCommunity, ObeysTheContract)
{
    Sweep(Row(kType), {.text = "255.255.255.255:65535",
                       .value = "0102ffffffffffff00000000",
                       .inModes = "FPPFUFPU",
                       .outModes = "FTTFUFTU",
                       .helpModes = "-H----H-",
                       .helpText = "STRING<3-21>",
                       .resultTypeId = 257,
                       .resultLength = 12,
                       .textSize = 257});
}

TEST_F(ExtCommunity, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(kType, 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kType).code, 0x1234u);
}

TEST_F(ExtCommunity, CheckLooksAtTheLengthAlone)
{
    EXPECT_EQ(Row(kType).Check(nullptr, 257, 12, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Row(kType).Check(nullptr, 257, 8, nullptr), DT_ERR_NULL_PTR);
    for (const uint32_t length : {0u, 8u, 11u, 13u, 65548u}) {
        EXPECT_EQ(CheckLength(kType, length), DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(CheckLength(kType, 12), DT_OK);
    EXPECT_EQ(Check(kType, "ffffffffffffffffffffffff"), DT_OK);
}

TEST_F(ExtCommunity, ComparesTheBytes)
{
    EXPECT_EQ(Compare(kType, "000200640000000101000000", "000200640000000001000000"), 1);
    EXPECT_EQ(Compare(kType, "000200640000000001000000", "000200640000000101000000"), -1);
    EXPECT_EQ(Compare(kType, "800200640000000001000000", "7f0200640000000101000000"), 1); // unsigned bytes
    EXPECT_EQ(Compare(kType, "000200640000000102000000", "000200640000000101000000"), 1); // the form takes part
    EXPECT_EQ(Compare(kType, "000200640000000101000000", "000200640000000101000000"), 0);
    EXPECT_EQ(Row(kType).Compare(nullptr, 3, "\1\2\3\4", "\1\2\3\5"), 0);
    EXPECT_EQ(Row(kType).Compare(nullptr, 4, "\1\2\3\4", "\1\2\3\5"), -1);
}

TEST_F(ExtCommunity, ToLua)
{
    const LuaOut out = LuaSet(kType, "0002ff6400000001 03020100");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{extcommunity={0,2,255,100,0,0,0,1}, type=66051}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(Row(kType), Padded("", 13), 13).table, "{extcommunity={0,0,0,0,0,0,0,0}, type=0}");
    const LuaOut tooShort = LuaSet(Row(kType), Padded("", 12), 11);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.table, "nil");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(ExtCommunity, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        const char *value;
        int32_t growth;
    } rows[] = {
        {"{extcommunity = {0, 2, 0, 100, 0, 0, 0, 1}, type = 1}", DT_OK, "0002006400000001 01000000", 0},
        {"{extcommunity = {255, 254, 3, 4, 5, 6, 7, 8, 9}, type = 255}", DT_OK, "fffe030405060708 ff000000", 0},
        {"{extcommunity = {256, 257, -1, 4294967295, 511, 6, 7, 8}, type = 256}", DT_OK, "0001ffffff060708 00000000",
         0},
        {"{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}, type = 66051}", DT_OK, "0102030405060708 03000000", 0},
        {"{extcommunity = {'1', '2', '3', '4', '5', '6', '7', '8'}, type = '3'}", DT_OK, "0102030405060708 03000000",
         0},
        {"{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}}", DT_ERR_INVALID_PARAM, "0102030405060708 eeeeeeee", 2},
        {"{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}, type = 'x'}", DT_ERR_INVALID_PARAM, "0102030405060708 eeeeeeee", 2},
        {"{extcommunity = {}, type = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 3},
        {"{extcommunity = {1, 2, 3, 4, 5, 6, 7}, type = 1}", DT_ERR_INVALID_PARAM, "01020304050607ee eeeeeeee", 10},
        {"{extcommunity = '12345678', type = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
        {"{type = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
        {"'100:1'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 1},
        {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.table);
        const LuaIn in = LuaGet(kType, row.table);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, Hex(Bytes(row.value)));
        EXPECT_EQ(in.growth, row.growth);
    }
    const LuaIn tooShort = LuaGet(Row(kType), "{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}, type = 1}", 11);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, "eeeeeeeeeeeeeeeeeeeeee");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(ExtCommunity, EachElementFromLuaMustBeANumber)
{
    const std::string bytes = "0102030405060708";
    const std::string unwritten = "eeeeeeeeeeeeeeeeeeeeeeee";
    for (size_t bad = 0; bad < 8; ++bad) {
        for (const char *kind : {"nil", "'x'", "{}", "true"}) {
            std::string table = "{type = 1, extcommunity = {";
            for (size_t i = 0; i < 8; ++i) {
                table += (i == bad ? kind : std::to_string(i + 1)) + ", ";
            }
            SCOPED_TRACE(table);
            const LuaIn in = LuaGet(kType, table + "}}");
            EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM);
            EXPECT_EQ(in.value, bytes.substr(0, 2 * bad) + unwritten.substr(2 * bad));
            EXPECT_EQ(in.growth, static_cast<int32_t>(3 + bad));
        }
    }
}

TEST_F(ExtCommunity, EndianSwapsTheFormAlone)
{
    EXPECT_EQ(Endian(kType, "0102030405060708090a0b0c"), "01020304050607080c0b0a09");
    EXPECT_EQ(Endian(kType, "01020304050607080c0b0a09"), "0102030405060708090a0b0c");
}

TEST_F(ExtCommunity, TheRowOffersEverything)
{
    const DataTypeDescriptor &row = Row(kType);
    EXPECT_EQ(row.TypeId, 257);
    EXPECT_EQ(row.BinaryLength, 12);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_TRUE(row.FormatIn && row.FormatOut && row.Check && row.Help && row.Compare && row.LuaSet && row.LuaGet &&
                row.Endian);
    EXPECT_EQ(row.Reserved, nullptr);
}

} // namespace
} // namespace bgp::test
