#include "support/harness.h"

namespace bgp::test {
namespace {

// EXTCOMMUNITY_BW: bit mask (u16), AS number (u16) and bandwidth (u64), host order.
constexpr const char *kType = "EXTCOMMUNITY_BW";

class ExtCommunityBw : public PlugIn {};

TEST_F(ExtCommunityBw, PrintsTheAsNumberAndTheBandwidth)
{
    const struct {
        const char *value;
        const char *text;
    } rows[] = {
        {"0000 6400 e803000000000000", "100:1000"},
        {"ffff 6400 e803000000000000", "100:1000"}, // the bit mask is not printed
        {"0000 0000 0500000000000000", "0:5"},
        {"0000 ffff ffffffffffffffff", "65535:18446744073709551615"},
        {"0000 0100 ffffffff00000000", "1:4294967295"},
        {"0000 0100 0000000001000000", "1:4294967296"},
        {"0000 0100 ffffffffffffff7f", "1:9223372036854775807"},
        {"0000 0100 0000000000000080", "1:9223372036854775808"},
        {"0000 a05b e803000000000000", "as-trans:1000"},
        {"0100 a05b ffffffffffffffff", "as-trans:18446744073709551615"},
        {"0000 9f5b 0100000000000000", "23455:1"},
        {"0000 a15b 0100000000000000", "23457:1"},
        {"0000 5ba0 0100000000000000", "41051:1"},
        // no bandwidth, no text
        {"0000 0000 0000000000000000", ""},
        {"ffff ffff 0000000000000000", ""},
        {"0000 a05b 0000000000000000", ""},
    };
    for (const auto &row : rows) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(row.value);
            const Out out = FormatOut(kType, row.value, mode);
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.text, row.text);
            EXPECT_EQ(out.length, std::string(row.text).size() + 1);
        }
    }
    EXPECT_EQ(FormatOutInto(Row(kType), "000064000000000000000000", 1, 257).buffer.substr(0, 2),
              std::string("\0\xA5", 2));
}

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

TEST_F(ExtCommunityBw, TextModesReadTwelveBytesWhateverTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row(kType), "00006400e803000000000000", 1, 0).text, "100:1000");
    EXPECT_EQ(FormatOut(Row(kType), "00006400e803000000000000", 1, 100000).text, "100:1000");
}

TEST_F(ExtCommunityBw, AFailingPrintIsAFailure)
{
    for (const char *value : {"000064000100000000000000", "0000a05b0100000000000000"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL) << value;
    }
}

TEST_F(ExtCommunityBw, ObeysTheContract)
{
    Sweep(Row(kType), {.text = "",
                       .value = "0000ffffffffffffffffffff",
                       .inModes = "",
                       .outModes = "FTTFUFTU",
                       .helpModes = "-H----H-",
                       .helpText = "STRING<3-21>",
                       .resultTypeId = 329,
                       .resultLength = 12,
                       .textSize = 257});
}

TEST_F(ExtCommunityBw, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(kType, 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kType).code, 0x1234u);
}

TEST_F(ExtCommunityBw, CheckLooksAtTheLengthAlone)
{
    EXPECT_EQ(Row(kType).Check(nullptr, 329, 12, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Row(kType).Check(nullptr, 329, 8, nullptr), DT_ERR_NULL_PTR);
    for (const uint32_t length : {0u, 8u, 11u, 13u, 65548u}) {
        EXPECT_EQ(CheckLength(kType, length), DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(CheckLength(kType, 12), DT_OK);
    EXPECT_EQ(Check(kType, "ffffffffffffffffffffffff"), DT_OK);
}

TEST_F(ExtCommunityBw, ComparesTheStoredBytes)
{
    EXPECT_EQ(Compare(kType, "000000010000000000000000", "0000ff000000000000000000"), -1); // AS 256 and 255
    EXPECT_EQ(Compare(kType, "0000ff000000000000000000", "000000010000000000000000"), 1);
    EXPECT_EQ(Compare(kType, "800000000000000000000000", "7f0000000000000000000000"), 1); // unsigned bytes
    EXPECT_EQ(Compare(kType, "010000000000000000000000", "0000ffffffffffffffffffff"), 1); // the bit mask first
    EXPECT_EQ(Compare(kType, "000000000000000000000001", "000000000000000000000000"), 1);
    EXPECT_EQ(Compare(kType, "00006400e803000000000000", "00006400e803000000000000"), 0);
    EXPECT_EQ(Row(kType).Compare(nullptr, 3, "\1\2\3\4", "\1\2\3\5"), 0); // `length` bytes
    EXPECT_EQ(Row(kType).Compare(nullptr, 4, "\1\2\3\4", "\1\2\3\5"), -1);
    EXPECT_EQ(Row(kType).Compare(nullptr, 4, "\1\2\3\5", "\1\2\3\4"), 1);
}

TEST_F(ExtCommunityBw, ToLua)
{
    const LuaOut out = LuaSet(kType, "ffff 6400 e803000000000000");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{asnNn=100, bandwidth=1000, bitMask=65535}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(kType, "0100 ffff 0000000001000000").table, "{asnNn=65535, bandwidth=4294967296, bitMask=1}");
    EXPECT_EQ(LuaSet(kType, "0000 0000 ffffffffffffff7f").table, "{asnNn=0, bandwidth=9223372036854775807, bitMask=0}");
    EXPECT_EQ(LuaSet(kType, "0000 0000 ffffffffffffffff").table, "{asnNn=0, bandwidth=-1, bitMask=0}"); // signed there
    EXPECT_EQ(LuaSet(Row(kType), Padded("0100", 13), 13).table, "{asnNn=0, bandwidth=0, bitMask=1}");
    const LuaOut tooShort = LuaSet(Row(kType), Padded("", 12), 11);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.table, "nil");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(ExtCommunityBw, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        const char *value;
        int32_t growth;
    } rows[] = {
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
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.table);
        const LuaIn in = LuaGet(kType, row.table);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, Hex(Bytes(row.value)));
        EXPECT_EQ(in.growth, row.growth);
    }
    const LuaIn tooShort = LuaGet(Row(kType), "{bitMask = 1, asnNn = 2, bandwidth = 3}", 11);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, "eeeeeeeeeeeeeeeeeeeeee");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(ExtCommunityBw, EndianReversesEachField)
{
    EXPECT_EQ(Endian(kType, "0102 0304 05060708090a0b0c"), "020104030c0b0a0908070605");
    EXPECT_EQ(Endian(kType, "0201 0403 0c0b0a0908070605"), "0102030405060708090a0b0c");
}

TEST_F(ExtCommunityBw, TheRowOffersEverythingButFormatIn)
{
    const DataTypeDescriptor &row = Row(kType);
    EXPECT_EQ(row.TypeId, 329);
    EXPECT_EQ(row.BinaryLength, 12);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, nullptr);
    EXPECT_TRUE(row.FormatOut && row.Check && row.Help && row.Compare && row.LuaSet && row.LuaGet && row.Endian);
    EXPECT_EQ(row.Reserved, nullptr);
}

} // namespace
} // namespace bgp::test
