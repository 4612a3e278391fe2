#include "support/harness.h"

namespace bgp::test {
namespace {

// EXTCMNTY_COMPR: type (u16, 8099), cpi (u16) and reserved (u32), host order.
constexpr const char *kType = "EXTCMNTY_COMPR";

class ExtCommunityCompr : public PlugIn {};

struct Accepted {
    const char *text;
    const char *value;
    const char *printed;
};

constexpr Accepted kAccepted[] = {
    {"100:0", "9980 6400 00000000", "100:0"},
    {"0:0", "9980 0000 00000000", "0:0"},
    {"1:0", "9980 0100 00000000", "1:0"},
    {"65535:0", "9980 ffff 00000000", "65535:0"}, // 7 characters
    {"00100:0", "9980 6400 00000000", "100:0"},
    {"1:00000", "9980 0100 00000000", "1:0"},
    {"000:000", "9980 0000 00000000", "0:0"},
    {" 100:0 ", "9980 6400 00000000", "100:0"},
    {"\t100:0\t \t", "9980 6400 00000000", "100:0"},
};

constexpr const char *kRefused[] = {
    "",        " ",       "100",      "0",        "1000000",  ":",        ":0",           "0:",
    "::",      "1::0",    "1:0:0",    ":1:0",     "1:0:",     "100:1",    "0:1",          "1:65536",
    "65536:0", "99999:0", "65536:1",  "065535:0", "000100:0", "1:000000", "4294967396:0", "1:4294967296",
    "1 :0",    "1: 0",    "1\t:0",    "1.0:0",    "1.0",      "0x1:0",    "a:0",          "1:a",
    "1:0x",    "+1:0",    "-1:0",     "1:-0",     "1:0\n",    "1;0",      "\xb1:0",       "1:\xb0",
    "1:0\xa0", "no-exp",  "internet", "1.2:3",    "*:0",      "1:*",      "0:00001",      "1:0,",
};

TEST_F(ExtCommunityCompr, ReadsANumberAndAZero)
{
    for (const Accepted &row : kAccepted) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(row.text);
            const In in = FormatIn(kType, row.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 1300);
            EXPECT_EQ(in.length, 8);
            EXPECT_EQ(in.value, Hex(Bytes(row.value)));
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(Text(kType, row.value, mode), row.printed);
        }
    }
}

TEST_F(ExtCommunityCompr, RefusesAnythingElse)
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

TEST_F(ExtCommunityCompr, EveryNumberRoundTrips)
{
    for (uint32_t number = 0; number <= 65535; ++number) {
        const std::string text = std::to_string(number) + ":0";
        const std::string value = Value(kType, text);
        ASSERT_EQ(value, "9980" + Le16(static_cast<uint16_t>(number)) + "00000000");
        ASSERT_EQ(Text(kType, value), text);
        if (number % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
    for (uint32_t number = 65536; number <= 99999; ++number) {
        ASSERT_EQ(CodeOf(kType, std::to_string(number) + ":0"), DT_ERR_INVALID_VALUE) << number;
    }
}

TEST_F(ExtCommunityCompr, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks(500, ' ');
    const std::string tabs(500, '\t');
    EXPECT_EQ(Value(kType, blanks + "100:0" + tabs), "9980640000000000");
    EXPECT_EQ(CodeOf(kType, blanks + tabs), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, "1:" + std::string(100000, '0')), DT_ERR_INVALID_VALUE);
}

TEST_F(ExtCommunityCompr, TheParserReportsItsOwnCodes)
{
    uint8_t value[8];
    for (const char *text : {"", "100:1", "1 :0", "1:0:0", "65536:0", "x"}) {
        EXPECT_EQ(SYSDT_Str2ExtCommunityCompr(text, value), DT_ERR_FAIL) << text;
    }
    EXPECT_EQ(SYSDT_Str2ExtCommunityCompr(" 100:0 ", value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "9980640000000000");
}

TEST_F(ExtCommunityCompr, PrintsTheReservedWordAsItIs)
{
    EXPECT_EQ(Text(kType, "9980 6400 01000000"), "100:1");
    EXPECT_EQ(Text(kType, "9980 ffff ffffffff"), "65535:4294967295");
    EXPECT_EQ(Text(kType, "9980 0000 00000100"), "0:65536");
}

TEST_F(ExtCommunityCompr, AnotherTypeWordPrintsNothing)
{
    for (const char *type : {"0000", "8099", "9880", "9a80", "9981", "9900", "ffff"}) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(type);
            const std::string value = type + std::string("6400 00000000");
            const Out out = FormatOut(kType, value, mode);
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.length, 1);
            EXPECT_TRUE(out.bufferSet);
            const Into into = FormatOutInto(Row(kType), value, mode, 257);
            EXPECT_EQ(into.out.code, DT_OK);
            EXPECT_EQ(into.out.length, 1);
            EXPECT_EQ(into.buffer, std::string(257, '\xA5')); // nothing is written
            EXPECT_TRUE(into.sameBuffer);
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

TEST_F(ExtCommunityCompr, TextModesReadEightBytesWhateverTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row(kType), "9980640000000000", 1, 0).text, "100:0");
    EXPECT_EQ(FormatOut(Row(kType), "9980640000000000", 1, 100000).text, "100:0");
}

TEST_F(ExtCommunityCompr, AFailingPrintIsAFailure)
{
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(FormatOut(kType, "9980640000000000").code, DT_ERR_FAIL);
}

TEST_F(ExtCommunityCompr, ObeysTheContract)
{
    Sweep(Row(kType), {.text = "65535:0",
                       .value = "9980ffffffffffff",
                       .inModes = "FPPFUFPU",
                       .outModes = "FTTFUFTU",
                       .helpModes = "-H----H-",
                       .helpText = "STRING<3-7>",
                       .resultTypeId = 1300,
                       .resultLength = 8,
                       .textSize = 257});
}

TEST_F(ExtCommunityCompr, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(kType, 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kType).code, 0x1234u);
}

TEST_F(ExtCommunityCompr, CheckLooksAtTheLengthAlone)
{
    EXPECT_EQ(Row(kType).Check(nullptr, 1300, 8, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Row(kType).Check(nullptr, 1300, 12, nullptr), DT_ERR_NULL_PTR);
    for (const uint32_t length : {0u, 7u, 9u, 12u, 65544u}) {
        EXPECT_EQ(CheckLength(kType, length), DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(CheckLength(kType, 8), DT_OK);
    EXPECT_EQ(Check(kType, "ffffffffffffffff"), DT_OK);
}

TEST_F(ExtCommunityCompr, ComparesAsExtendedCommunitiesDo)
{
    EXPECT_EQ(Row(kType).Compare, Row("EXTCOMMUNITY").Compare);
    EXPECT_EQ(Compare(kType, "9980000100000000", "9980ff0000000000"), -1); // 256 and 255
    EXPECT_EQ(Compare(kType, "9980ff0000000000", "9980000100000000"), 1);
    EXPECT_EQ(Compare(kType, "9980640000000001", "9980640000000000"), 1);
    EXPECT_EQ(Compare(kType, "9980640000000000", "9980640000000000"), 0);
}

TEST_F(ExtCommunityCompr, ToLua)
{
    const LuaOut out = LuaSet(kType, "9980640000000000");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{cpi=100, reserved=0, type=32921}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(kType, "feffffffffffffff").table, "{cpi=65535, reserved=4294967295, type=65534}");
    EXPECT_EQ(LuaSet(Row(kType), "998064000000000000", 9).code, DT_OK);
    const LuaOut tooShort = LuaSet(Row(kType), "9980640000000000", 7);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.table, "nil");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(ExtCommunityCompr, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        const char *value;
        int32_t growth;
    } rows[] = {
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
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.table);
        const LuaIn in = LuaGet(kType, row.table);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, Hex(Bytes(row.value)));
        EXPECT_EQ(in.growth, row.growth);
    }
    const LuaIn tooShort = LuaGet(Row(kType), "{type = 1, cpi = 2, reserved = 3}", 7);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, "eeeeeeeeeeeeee");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(ExtCommunityCompr, EndianSwapsEachField)
{
    EXPECT_EQ(Endian(kType, "0102 0304 05060708"), "0201040308070605");
    EXPECT_EQ(Endian(kType, "0201 0403 08070605"), "0102030405060708");
}

TEST_F(ExtCommunityCompr, TheRowOffersEverything)
{
    const DataTypeDescriptor &row = Row(kType);
    EXPECT_EQ(row.TypeId, 1300);
    EXPECT_EQ(row.BinaryLength, 8);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_TRUE(row.FormatIn && row.FormatOut && row.Check && row.Help && row.Compare && row.LuaSet && row.LuaGet &&
                row.Endian);
    EXPECT_EQ(row.Reserved, nullptr);
}

} // namespace
} // namespace bgp::test
