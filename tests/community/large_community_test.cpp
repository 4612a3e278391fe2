#include "support/harness.h"
#include "support/refusals.h"

namespace bgp::test {
namespace {

// LARGECOMMUNITY: three numbers (u32) and a type word (u32), host order.
constexpr const char *kType = "LARGECOMMUNITY";

class LargeCommunity : public PlugIn {};

struct Accepted {
    const char *text;
    const char *value;
    const char *printed;
};

constexpr Accepted kAccepted[] = {
    {"1:2:3", "01000000 02000000 03000000 00000000", "1:2:3"},
    {"0:0:0", "00000000 00000000 00000000 00000000", "0:0:0"},
    {"4294967295:0:1", "ffffffff 00000000 01000000 00000000", "4294967295:0:1"},
    {"0:4294967295:1", "00000000 ffffffff 01000000 00000000", "0:4294967295:1"},
    {"1:0:4294967295", "01000000 00000000 ffffffff 00000000", "1:0:4294967295"},
    {"4294967295:4294967295:4294967295", "ffffffff ffffffff ffffffff 00000000", "4294967295:4294967295:4294967295"},
    {"65535:65536:131072", "ffff0000 00000100 00000200 00000000", "65535:65536:131072"},
    {"00001:00002:00003", "01000000 02000000 03000000 00000000", "1:2:3"},
    {"0000000000000000000000000001:2:3", "01000000 02000000 03000000 00000000", "1:2:3"}, // 32 characters
    {" 1:2:3 ", "01000000 02000000 03000000 00000000", "1:2:3"},
    {"\t1:2:3\t \t", "01000000 02000000 03000000 00000000", "1:2:3"},
};

constexpr const char *kRefused[] = {
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
};

TEST_F(LargeCommunity, ReadsThreeNumbers)
{
    for (const Accepted &row : kAccepted) {
        for (const uint8_t mode : {uint8_t{1}, uint8_t{2}}) {
            SCOPED_TRACE(row.text);
            const In in = FormatIn(kType, row.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 321);
            EXPECT_EQ(in.length, 16);
            EXPECT_EQ(in.value, Hex(Bytes(row.value)));
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(Text(kType, row.value, mode), row.printed);
        }
    }
}

TEST_F(LargeCommunity, RefusesWhatIsNotThreeNumbers)
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

TEST_F(LargeCommunity, AllHalvesOfEachNumberRoundTrip)
{
    for (uint32_t half = 0; half <= 65535; ++half) {
        const std::string low = std::to_string(half);
        const std::string high = std::to_string(half * 65536);
        const std::string bytes = Le16(static_cast<uint16_t>(half));
        const struct {
            std::string text;
            std::string value;
        } rows[] = {
            {low + ":" + high + ":7", bytes + "00000000" + bytes + "0700000000000000"},
            {high + ":" + low + ":" + high, "0000" + bytes + bytes + "00000000" + bytes + "00000000"},
            {"7:8:" + low, "0700000008000000" + bytes + "000000000000"},
        };
        for (const auto &row : rows) {
            const std::string value = Value(kType, row.text);
            ASSERT_EQ(value, row.value) << row.text;
            ASSERT_EQ(Text(kType, value), row.text);
        }
        if (half % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

TEST_F(LargeCommunity, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks(500, ' ');
    const std::string tabs(500, '\t');
    EXPECT_EQ(Value(kType, blanks + "1:2:3" + tabs), "01000000020000000300000000000000");
    EXPECT_EQ(CodeOf(kType, blanks + tabs), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, "1:2:" + std::string(100000, '3')), DT_ERR_INVALID_VALUE);
}

TEST_F(LargeCommunity, TheParserReportsItsOwnCodes)
{
    uint8_t value[16];
    EXPECT_EQ(SYSDT_Str2LargeCommunity(nullptr, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2LargeCommunity("1:2:3", nullptr), DT_ERR_NULL_PTR);
    for (const char *text : {"", "1:2", "1:2 :3", "1:2:x", "1:2:3:4", "1:2:4294967296"}) {
        EXPECT_EQ(SYSDT_Str2LargeCommunity(text, value), DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(SYSDT_Str2LargeCommunity(" 1:2:3 ", value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "01000000020000000300000000000000");
}

TEST_F(LargeCommunity, TheTypeWordIsNotPrinted)
{
    for (const uint8_t mode : {uint8_t{0}, uint8_t{1}, uint8_t{2}, uint8_t{3}, uint8_t{5}, uint8_t{6}}) {
        const Out out = FormatOut(kType, "01000000 02000000 03000000 ffffffff", mode);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.typeId, 25);
        EXPECT_EQ(out.text, "1:2:3");
        EXPECT_EQ(out.length, 6);
    }
}

TEST_F(LargeCommunity, PrintingReadsSixteenBytesWhateverTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row(kType), "01000000020000000300000000000000", 1, 0).text, "1:2:3");
    EXPECT_EQ(FormatOut(Row(kType), "01000000020000000300000000000000", 3, 4).text, "1:2:3");
    EXPECT_EQ(FormatOut(Row(kType), "01000000020000000300000000000000", 3, 100000).length, 6);
}

TEST_F(LargeCommunity, AFailingPrintIsAFailure)
{
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(FormatOut(kType, "01000000020000000300000000000000").code, DT_ERR_FAIL);
}

TEST_F(LargeCommunity, ObeysTheContract)
{
    // Mode 6 is refused on the way in and gets no help; the way out prints in every mode but 4.
    Sweep(Row(kType), {.text = "4294967295:4294967295:4294967295",
                       .value = "ffffffffffffffffffffffff00000000",
                       .inModes = "FPPFUFFU",
                       .outModes = "TTTTUTTU",
                       .helpModes = "-H------",
                       .helpText = "STRING<5-32>",
                       .resultTypeId = 321,
                       .resultLength = 16,
                       .textSize = 257});
}

TEST_F(LargeCommunity, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(kType, 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kType, 1).code, 0x1234u);
    EXPECT_EQ(Help(kType, 6).code, DT_OK);
}

TEST_F(LargeCommunity, CheckLooksAtTheLengthAlone)
{
    EXPECT_EQ(Row(kType).Check(nullptr, 321, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Row(kType).Check(nullptr, 321, 15, nullptr), DT_ERR_NULL_PTR);
    for (const uint32_t length : {0u, 12u, 15u, 17u, 65552u}) {
        EXPECT_EQ(CheckLength(kType, length), DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(CheckLength(kType, 16), DT_OK);
    EXPECT_EQ(Check(kType, "ffffffffffffffffffffffffffffffff"), DT_OK);
}

TEST_F(LargeCommunity, ComparesTheStoredBytes)
{
    const std::string rest = "000000000000000000000000";
    EXPECT_EQ(Compare(kType, "00010000" + rest, "ff000000" + rest), -1); // 256 and 255
    EXPECT_EQ(Compare(kType, "ff000000" + rest, "00010000" + rest), 1);
    EXPECT_EQ(Compare(kType, "80000000" + rest, "7f000000" + rest), 1); // unsigned bytes
    EXPECT_EQ(Compare(kType, rest + "00000001", rest + "00000000"), 1); // the type word takes part
    EXPECT_EQ(Compare(kType, rest + "00000001", rest + "00000001"), 0);
    EXPECT_EQ(Compare(kType, rest, "000000000000000000000001"), -1); // `length` bytes, here 12
    EXPECT_EQ(Row(kType).Compare(nullptr, 3, "\1\2\3\4", "\1\2\3\5"), 0);
}

TEST_F(LargeCommunity, ToLua)
{
    const LuaOut out = LuaSet(kType, "ffffffff 02000000 03000000 00010000");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{largeCommunity={4294967295,2,3}, type=256}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(Row(kType), Padded("", 17), 17).table, "{largeCommunity={0,0,0}, type=0}");
    const LuaOut tooShort = LuaSet(Row(kType), Padded("", 16), 15);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.table, "nil");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(LargeCommunity, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        const char *value;
        int32_t growth;
    } rows[] = {
        {"{largeCommunity = {4294967295, 2, 3}, type = 0}", DT_OK, "ffffffff 02000000 03000000 00000000", 0},
        {"{largeCommunity = {1, 2, 3, 4}, type = 255}", DT_OK, "01000000 02000000 03000000 ff000000", 0},
        {"{largeCommunity = {1, 2, 3}, type = 256}", DT_OK, "01000000 02000000 03000000 00000000", 0},
        {"{largeCommunity = {1, 2, 3}, type = 4294967295}", DT_OK, "01000000 02000000 03000000 ff000000", 0},
        {"{largeCommunity = {'1', '2', '3'}, type = '4'}", DT_OK, "01000000 02000000 03000000 04000000", 0},
        {"{largeCommunity = {4294967296, 4294967297, 3}, type = 0}", DT_OK, "00000000 01000000 03000000 00000000", 0},
        {"{largeCommunity = {1, 2, 3}}", DT_ERR_INVALID_PARAM, "01000000 02000000 03000000 eeeeeeee", 2},
        {"{largeCommunity = {1, 2, 3}, type = 'x'}", DT_ERR_INVALID_PARAM, "01000000 02000000 03000000 eeeeeeee", 2},
        {"{largeCommunity = {1, 2}, type = 0}", DT_ERR_INVALID_PARAM, "01000000 02000000 eeeeeeee eeeeeeee", 5},
        {"{largeCommunity = {1, 2, 'x'}, type = 0}", DT_ERR_INVALID_PARAM, "01000000 02000000 eeeeeeee eeeeeeee", 5},
        {"{largeCommunity = {1, {}, 3}, type = 0}", DT_ERR_INVALID_PARAM, "01000000 eeeeeeee eeeeeeee eeeeeeee", 4},
        {"{largeCommunity = {true, 2, 3}, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 3},
        {"{largeCommunity = {}, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 3},
        {"{largeCommunity = 5, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 2},
        {"{type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 2},
        {"'1:2:3'", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 1},
        {"nil", DT_ERR_INVALID_PARAM, "eeeeeeee eeeeeeee eeeeeeee eeeeeeee", 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.table);
        const LuaIn in = LuaGet(kType, row.table);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, Hex(Bytes(row.value)));
        EXPECT_EQ(in.growth, row.growth);
    }
    const LuaIn tooShort = LuaGet(Row(kType), "{largeCommunity = {1, 2, 3}, type = 0}", 15);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, "eeeeeeeeeeeeeeeeeeeeeeeeeeeeee");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(LargeCommunity, EndianSwapsAllFourWords)
{
    EXPECT_EQ(Endian(kType, "0102030405060708090a0b0c0d0e0f10"), "04030201080706050c0b0a09100f0e0d");
    EXPECT_EQ(Endian(kType, "04030201080706050c0b0a09100f0e0d"), "0102030405060708090a0b0c0d0e0f10");
}

TEST_F(LargeCommunity, TheRowOffersEverything)
{
    const DataTypeDescriptor &row = Row(kType);
    EXPECT_EQ(row.TypeId, 321);
    EXPECT_EQ(row.BinaryLength, 16);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_TRUE(row.FormatIn && row.FormatOut && row.Check && row.Help && row.Compare && row.LuaSet && row.LuaGet &&
                row.Endian);
    EXPECT_EQ(row.Reserved, nullptr);
}

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
    {"1:2:3:4:5:6",               "too-many-numbers",  9,  1, 5},
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
    CheckRefusals(kType, kReasons);
    constexpr std::string_view kGood[] = {"1:2:3", " 4294967295:0:0\t"};
    CheckAccepted(kType, kGood);
}

} // namespace
} // namespace bgp::test
