#include "support/harness.h"

namespace bgp::test {
namespace {

// SOO: eight bytes as on the wire (type, sub-type 03, value) and the form word (u32, host order).
constexpr const char *kType = "SOO";

class Soo : public PlugIn {};

struct Accepted {
    const char *text;
    const char *value;
    const char *printed;
};

constexpr Accepted kAccepted[] = {
    // AS of two bytes, number of four
    {"100:1", "0003 0064 00000001 01000000", "100:1"},
    {"0:5", "0003 0000 00000005 01000000", "0:5"},
    {"0:1", "0003 0000 00000001 01000000", "0:1"},
    {"0:4294967295", "0003 0000 ffffffff 01000000", "0:4294967295"},
    {"1:0", "0003 0001 00000000 01000000", "1:0"},
    {"1:65536", "0003 0001 00010000 01000000", "1:65536"},
    {"65535:4294967295", "0003 ffff ffffffff 01000000", "65535:4294967295"},
    // AS of four bytes, number of two
    {"65536:0", "0203 00010000 0000 02000000", "65536:0"},
    {"65536:1", "0203 00010000 0001 02000000", "65536:1"},
    {"65536:65535", "0203 00010000 ffff 02000000", "65536:65535"},
    {"4294967295:65535", "0203 ffffffff ffff 02000000", "4294967295:65535"},
    // the same, dotted
    {"1.2:3", "0203 0001 0002 0003 03000000", "1.2:3"},
    {"1.0:0", "0203 0001 0000 0000 03000000", "1.0:0"},
    {"0.1:0", "0203 0000 0001 0000 03000000", "0.1:0"},
    {"0.0:1", "0203 0000 0000 0001 03000000", "0.0:1"},
    {"65535.65535:65535", "0203 ffff ffff ffff 03000000", "65535.65535:65535"},
    // IPv4 address, number of two bytes
    {"1.1.1.1:7", "0103 01010101 0007 00000000", "1.1.1.1:7"},
    {"0.0.0.0:0", "0103 00000000 0000 00000000", "0.0.0.0:0"},
    {"1.2.3.4:1286", "0103 01020304 0506 00000000", "1.2.3.4:1286"},
    {"255.255.255.255:65535", "0103 ffffffff ffff 00000000", "255.255.255.255:65535"}, // 21 characters
    // leading zeros and outer blanks
    {"00100:00001", "0003 0064 00000001 01000000", "100:1"},
    {"0000000000000000100:1", "0003 0064 00000001 01000000", "100:1"},
    {"00001.00002:00003", "0203 0001 0002 0003 03000000", "1.2:3"},
    {"010.001.001.001:00005", "0103 0a010101 0005 00000000", "10.1.1.1:5"},
    {" 100:1 ", "0003 0064 00000001 01000000", "100:1"},
    {"\t1.2:3\t \t", "0203 0001 0002 0003 03000000", "1.2:3"},
};

constexpr const char *kRefused[] = {
    "",
    " ",
    "100",
    "0:0",
    "0.0:0",
    "00:000",
    "00.00:00",
    "0:00000000",
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

TEST_F(Soo, ReadsRouteOriginsInFourNotations)
{
    for (const Accepted &row : kAccepted) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(row.text);
            const In in = FormatIn(kType, row.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 260);
            EXPECT_EQ(in.length, 12);
            EXPECT_EQ(in.value, Hex(Bytes(row.value)));
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(Text(kType, row.value, mode), row.printed);
        }
        EXPECT_EQ(Text(kType, row.value, 3), row.printed);
    }
}

TEST_F(Soo, RefusesWhatIsNoRouteOrigin)
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

TEST_F(Soo, NumbersOfSixteenBitsRoundTrip)
{
    for (uint32_t number = 0; number <= 65535; number += 17) { // both ends among them
        const std::string text = std::to_string(number);
        const std::string bytes = Net16(number);
        const struct {
            std::string text;
            std::string value;
        } rows[] = {
            {text + ":7", "0003" + bytes + "0000000701000000"},
            {"7:" + text, "000300070000" + bytes + "01000000"},
            {std::to_string(number + 65536) + ":7", "02030001" + bytes + "000702000000"},
            {"65536:" + text, "020300010000" + bytes + "02000000"},
            {text + ".7:8", "0203" + bytes + "0007000803000000"},
            {"7." + text + ":8", "02030007" + bytes + "000803000000"},
            {"7.8:" + text, "020300070008" + bytes + "03000000"},
            {"1.2.3.4:" + text, "010301020304" + bytes + "00000000"},
        };
        for (const auto &row : rows) {
            const std::string value = Value(kType, row.text);
            ASSERT_EQ(value, row.value) << row.text;
            ASSERT_EQ(Text(kType, value), row.text);
        }
        if (number % 64 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

TEST_F(Soo, AllOctetsOfAnAddressRoundTrip)
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

TEST_F(Soo, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks(500, ' ');
    const std::string tabs(500, '\t');
    EXPECT_EQ(Value(kType, blanks + "100:1" + tabs), "000300640000000101000000");
    EXPECT_EQ(CodeOf(kType, blanks + tabs), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, "1:" + std::string(100000, '1')), DT_ERR_INVALID_VALUE);
}

TEST_F(Soo, TheParserReportsItsOwnCodes)
{
    uint8_t value[12];
    EXPECT_EQ(SYSDT_Str2Soo(nullptr, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2Soo("100:1", nullptr), DT_ERR_NULL_PTR);
    for (const char *text : {"", "0:0", "0.0:0", "1 :2", "1:2:3", "1.2.3:4", "65536:65536", "x"}) {
        EXPECT_EQ(SYSDT_Str2Soo(text, value), DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(SYSDT_Str2Soo(" 1.2:3 ", value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "020300010002000303000000");
}

constexpr uint8_t kPrintingModes[] = {1, 2, 3, 6};

TEST_F(Soo, PrintsByKindAndForm)
{
    const struct {
        const char *value;
        const char *text;
    } rows[] = {
        {"0003 010203040506 01000000", "258:50595078"},
        {"0003 010203040506 02000000", "16909060:1286"},
        {"0003 010203040506 03000000", "258.772:1286"},
        {"0203 010203040506 02000000", "16909060:1286"},
        {"0203 010203040506 03000000", "258.772:1286"},
        {"0103 010203040506 00000000", "1.2.3.4:1286"},
        {"0103 010203040506 01000000", "1.2.3.4:1286"}, // whatever the form
        {"0103 010203040506 ffffffff", "1.2.3.4:1286"},
        {"0003 ffffffffffff 01000000", "65535:4294967295"},
        {"0003 ffffffffffff 02000000", "4294967295:65535"},
        {"0003 ffffffffffff 03000000", "65535.65535:65535"},
        {"0203 ffffffffffff 02000000", "4294967295:65535"},
        {"0203 ffffffffffff 03000000", "65535.65535:65535"},
        {"0103 ffffffffffff 00000000", "255.255.255.255:65535"},
        {"0003 000000000000 01000000", "0:0"},
        {"0003 000000000000 02000000", "0:0"},
        {"0003 000000000000 03000000", "0.0:0"},
        {"0203 000000000000 02000000", "0:0"},
        {"0203 000000000000 03000000", "0.0:0"},
        {"0103 000000000000 00000000", "0.0.0.0:0"},
    };
    for (const auto &row : rows) {
        for (const uint8_t mode : kPrintingModes) {
            SCOPED_TRACE(row.value);
            const Out out = FormatOut(kType, row.value, mode);
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.text, row.text);
            EXPECT_EQ(out.length, std::string(row.text).size() + 1);
        }
    }
}

TEST_F(Soo, AFormThatIsNotOfItsKindPrintsNothing)
{
    for (const char *value : {"0003 010203040506 00000000", "0003 010203040506 04000000", "0003 010203040506 01000001",
                              "0003 000000000000 00000000", "0203 010203040506 00000000", "0203 010203040506 01000000",
                              "0203 010203040506 04000000", "0203 010203040506 ffffffff"}) {
        for (const uint8_t mode : kPrintingModes) {
            SCOPED_TRACE(std::string(value) + " mode " + std::to_string(mode));
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
        }
    }
}

TEST_F(Soo, AnAllZeroOnePrintsTheEmptyText)
{
    for (const uint8_t mode : kPrintingModes) {
        const Into into = FormatOutInto(Row(kType), Padded("", 12), mode, 257);
        EXPECT_EQ(into.out.code, DT_OK);
        EXPECT_EQ(into.out.typeId, 25);
        EXPECT_EQ(into.out.length, 1);
        EXPECT_EQ(into.buffer.substr(0, 2), std::string("\0\xA5", 2));
        EXPECT_EQ(FormatOut(kType, Padded("", 12), mode).bytes, "00");
    }
    // One bit of any of the twelve bytes makes it another kind or a value.
    EXPECT_EQ(FormatOut(kType, "000000000000000000000001").code, DT_ERR_FAIL);
    EXPECT_EQ(FormatOut(kType, "000000000000000100000000").code, DT_ERR_FAIL);
}

TEST_F(Soo, EveryOtherKindHandsTheBufferOver)
{
    for (uint32_t kind = 0; kind <= 65535; ++kind) {
        const std::string key = Net16(kind);
        const Out out = FormatOut(kType, key + "01020304050602000000");
        ASSERT_TRUE(out.bufferSet) << key;
        if (key == "0003" || key == "0103" || key == "0203") {
            ASSERT_EQ(out.code, DT_OK) << key;
            continue;
        }
        ASSERT_EQ(out.code, DT_ERR_FAIL) << key;
        ASSERT_EQ(out.typeId, kUntouched) << key;
        ASSERT_EQ(out.length, kUntouched) << key;
        if (kind % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
    for (const uint8_t mode : kPrintingModes) {
        host::ResetHandle(Handle());
        host::TakeCounters();
        EXPECT_EQ(FormatOut(kType, "000200640000000101000000", mode).code, DT_ERR_FAIL);
        const host::Counters counters = host::TakeCounters();
        EXPECT_EQ(counters.allocations, 1u);
        EXPECT_EQ(counters.frees, 0u);
        EXPECT_EQ(host::HandleBlocks(Handle()), 1u);
        const Into into = FormatOutInto(Row(kType), "000200640000000101000000", mode, 257);
        EXPECT_EQ(into.out.code, DT_ERR_FAIL);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_FALSE(into.released);
        EXPECT_EQ(into.out.typeId, kUntouched);
        EXPECT_EQ(into.out.length, kUntouched);
    }
}

TEST_F(Soo, PrintingReadsTwelveBytesWhateverTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row(kType), "000300640000000101000000", 1, 0).text, "100:1");
    EXPECT_EQ(FormatOut(Row(kType), "000300640000000101000000", 3, 4).text, "100:1");
    EXPECT_EQ(FormatOut(Row(kType), "000300640000000101000000", 1, 100000).text, "100:1");
}

TEST_F(Soo, AFailingPrintIsAFailure)
{
    for (const char *value : {"000300640000000101000000", "000300640000000102000000", "000300640000000103000000",
                              "020300640000000102000000", "020300640000000103000000", "010300640000000100000000"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL) << value;
    }
}

TEST_F(Soo, ObeysTheContract)
{
    Sweep(Row(kType), {.text = "255.255.255.255:65535",
                       .value = "0103ffffffffffff00000000",
                       .inModes = "FPPFUFPU",
                       .outModes = "FTTTUFTU",
                       .helpModes = "-H----H-",
                       .helpText = "STRING<3-21>",
                       .resultTypeId = 260,
                       .resultLength = 12,
                       .textSize = 257});
}

TEST_F(Soo, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(kType, 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kType).code, 0x1234u);
}

TEST_F(Soo, CheckLooksAtTheLengthAlone)
{
    EXPECT_EQ(Row(kType).Check(nullptr, 260, 12, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Row(kType).Check(nullptr, 260, 8, nullptr), DT_ERR_NULL_PTR);
    for (const uint32_t length : {0u, 8u, 11u, 13u, 65548u}) {
        EXPECT_EQ(CheckLength(kType, length), DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(CheckLength(kType, 12), DT_OK);
    EXPECT_EQ(Check(kType, "ffffffffffffffffffffffff"), DT_OK);
}

TEST_F(Soo, ComparesTheBytes)
{
    EXPECT_EQ(Compare(kType, "000300640000000101000000", "000300640000000001000000"), 1);
    EXPECT_EQ(Compare(kType, "000300640000000001000000", "000300640000000101000000"), -1);
    EXPECT_EQ(Compare(kType, "800300640000000001000000", "7f0300640000000101000000"), 1); // unsigned bytes
    EXPECT_EQ(Compare(kType, "000300640000000102000000", "000300640000000101000000"), 1); // the form takes part
    EXPECT_EQ(Compare(kType, "000300640000000101000000", "000300640000000101000000"), 0);
    EXPECT_EQ(Row(kType).Compare(nullptr, 3, "\1\2\3\4", "\1\2\3\5"), 0); // `length` bytes
    EXPECT_EQ(Row(kType).Compare(nullptr, 4, "\1\2\3\4", "\1\2\3\5"), -1);
}

TEST_F(Soo, ToLua)
{
    const LuaOut out = LuaSet(kType, "0002ff6400000001 03020100");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{SooType=66051, SooValue={0,2,255,100,0,0,0,1}}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(Row(kType), Padded("", 13), 13).table, "{SooType=0, SooValue={0,0,0,0,0,0,0,0}}");
    const LuaOut tooShort = LuaSet(Row(kType), Padded("", 12), 11);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.table, "nil");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(Soo, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        const char *value;
        int32_t growth;
    } rows[] = {
        {"{SooValue = {0, 2, 0, 100, 0, 0, 0, 1}, SooType = 1}", DT_OK, "0002006400000001 01000000", 0},
        {"{SooValue = {255, 254, 3, 4, 5, 6, 7, 8, 9}, SooType = 255}", DT_OK, "fffe030405060708 ff000000", 0},
        {"{SooValue = {256, 257, -1, 4294967295, 511, 6, 7, 8}, SooType = 256}", DT_OK, "0001ffffff060708 00000000", 0},
        {"{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}, SooType = 66051}", DT_OK, "0102030405060708 03000000", 0},
        {"{SooValue = {'1', '2', '3', '4', '5', '6', '7', '8'}, SooType = '3'}", DT_OK, "0102030405060708 03000000", 0},
        {"{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}}", DT_ERR_INVALID_PARAM, "0102030405060708 eeeeeeee", 2},
        {"{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}, SooType = 'x'}", DT_ERR_INVALID_PARAM, "0102030405060708 eeeeeeee", 2},
        {"{SooValue = {}, SooType = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 3},
        {"{SooValue = {1, 2, 3, 4, 5, 6, 7}, SooType = 1}", DT_ERR_INVALID_PARAM, "01020304050607ee eeeeeeee", 10},
        {"{SooValue = '12345678', SooType = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
        {"{SooType = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
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
    const LuaIn tooShort = LuaGet(Row(kType), "{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}, SooType = 1}", 11);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, "eeeeeeeeeeeeeeeeeeeeee");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(Soo, EachElementFromLuaMustBeANumber)
{
    const std::string bytes = "0102030405060708";
    const std::string unwritten = "eeeeeeeeeeeeeeeeeeeeeeee";
    for (size_t bad = 0; bad < 8; ++bad) {
        for (const char *kind : {"nil", "'x'", "{}", "true"}) {
            std::string table = "{SooType = 1, SooValue = {";
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

TEST_F(Soo, EndianSwapsTheFormAlone)
{
    EXPECT_EQ(Endian(kType, "0102030405060708090a0b0c"), "01020304050607080c0b0a09");
    EXPECT_EQ(Endian(kType, "01020304050607080c0b0a09"), "0102030405060708090a0b0c");
}

TEST_F(Soo, TheRowOffersEverything)
{
    const DataTypeDescriptor &row = Row(kType);
    EXPECT_EQ(row.TypeId, 260);
    EXPECT_EQ(row.BinaryLength, 12);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_TRUE(row.FormatIn && row.FormatOut && row.Check && row.Help && row.Compare && row.LuaSet && row.LuaGet &&
                row.Endian);
    EXPECT_EQ(row.Reserved, nullptr);
}

} // namespace
} // namespace bgp::test
