#include "support/notation_refusals.h"
#include "support/notation_texts.h"
#include "support/type_case.h"

namespace bgp::test {
namespace {

// SOO: eight bytes as on the wire (type, sub-type 03, value) and the form word (u32, host order).
constexpr const char *kType = "SOO";

class Soo : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    // AS of two bytes, number of four
    {"100:1", "0003 0064 00000001 01000000"},
    {"0:5", "0003 0000 00000005 01000000"},
    {"0:1", "0003 0000 00000001 01000000"},
    {"0:4294967295", "0003 0000 ffffffff 01000000"},
    {"1:0", "0003 0001 00000000 01000000"},
    {"1:65536", "0003 0001 00010000 01000000"},
    {"65535:4294967295", "0003 ffff ffffffff 01000000"},
    // AS of four bytes, number of two
    {"65536:0", "0203 00010000 0000 02000000"},
    {"65536:1", "0203 00010000 0001 02000000"},
    {"65536:65535", "0203 00010000 ffff 02000000"},
    {"4294967295:65535", "0203 ffffffff ffff 02000000"},
    // the same, dotted
    {"1.2:3", "0203 0001 0002 0003 03000000"},
    {"1.0:0", "0203 0001 0000 0000 03000000"},
    {"0.1:0", "0203 0000 0001 0000 03000000"},
    {"0.0:1", "0203 0000 0000 0001 03000000"},
    {"65535.65535:65535", "0203 ffff ffff ffff 03000000"},
    // IPv4 address, number of two bytes
    {"1.1.1.1:7", "0103 01010101 0007 00000000"},
    {"0.0.0.0:0", "0103 00000000 0000 00000000"},
    {"1.2.3.4:1286", "0103 01020304 0506 00000000"},
    {"255.255.255.255:65535", "0103 ffffffff ffff 00000000"}, // 21 characters
    // leading zeros and outer blanks
    {"00100:00001", "0003 0064 00000001 01000000", "100:1"},
    {"0000000000000000100:1", "0003 0064 00000001 01000000", "100:1"},
    {"00001.00002:00003", "0203 0001 0002 0003 03000000", "1.2:3"},
    {"010.001.001.001:00005", "0103 0a010101 0005 00000000", "10.1.1.1:5"},
    {" 100:1 ", "0003 0064 00000001 01000000", "100:1"},
    {"\t1.2:3\t \t", "0203 0001 0002 0003 03000000", "1.2:3"},
};

TypeCase Case()
{
    return {
        .row = {260, 12, 26, "SOO", &SYSDT_SooFormatIn, &SYSDT_SooFormatOut, &SYSDT_SooCheck, &SYSDT_SooHelp,
                &SYSDT_SooCompare, nullptr, &SYSDT_SooLuaSet, &SYSDT_SooLuaGet, &SYSDT_SooEndian},
        .contract = {.text = "255.255.255.255:65535",
                     .value = "0103ffffffffffff00000000",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTTUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .textSize = 257},
        .accepted = kAccepted,
        .refused = Joined(kNoNotations, kZeroNotations),
        .blanked = {"100:1"},
        .parser = &SYSDT_Str2Soo,
        .fields =
            {
                {"", ":7", "0003 0000 00000007 01000000", 2},
                {"7:", "", "0003 0007 0000 0000 01000000", 6},
                {"", ":7", "0203 0001 0000 0007 02000000", 4, false, 65536},
                {"65536:", "", "0203 00010000 0000 02000000", 6},
                {"", ".7:8", "0203 0000 0007 0008 03000000", 2},
                {"7.", ":8", "0203 0007 0000 0008 03000000", 4},
                {"7.8:", "", "0203 0007 0008 0000 03000000", 6},
                {"1.2.3.4:", "", "0103 01020304 0000 00000000", 6},
            },
        .octets = {{"", ".2.3.4:5"}, {"1.", ".3.4:5"}, {"1.2.", ".4:5"}, {"1.2.3.", ":5"}},
        .prints =
            {
                {"258:50595078", "0003 010203040506 01000000"},
                {"16909060:1286", "0003 010203040506 02000000"},
                {"258.772:1286", "0003 010203040506 03000000"},
                {"16909060:1286", "0203 010203040506 02000000"},
                {"258.772:1286", "0203 010203040506 03000000"},
                {"1.2.3.4:1286", "0103 010203040506 00000000"},
                {"1.2.3.4:1286", "0103 010203040506 01000000"}, // whatever the form
                {"1.2.3.4:1286", "0103 010203040506 ffffffff"},
                {"65535:4294967295", "0003 ffffffffffff 01000000"},
                {"4294967295:65535", "0003 ffffffffffff 02000000"},
                {"65535.65535:65535", "0003 ffffffffffff 03000000"},
                {"4294967295:65535", "0203 ffffffffffff 02000000"},
                {"65535.65535:65535", "0203 ffffffffffff 03000000"},
                {"255.255.255.255:65535", "0103 ffffffffffff 00000000"},
                {"0:0", "0003 000000000000 01000000"},
                {"0:0", "0003 000000000000 02000000"},
                {"0.0:0", "0003 000000000000 03000000"},
                {"0:0", "0203 000000000000 02000000"},
                {"0.0:0", "0203 000000000000 03000000"},
                {"0.0.0.0:0", "0103 000000000000 00000000"},
                {"", "000000000000000000000000"},
            },
        .kindTable =
            {.fields = "010203040506",
             .kinds = {{"0003",
                        {{"01000000", "258:50595078"}, {"02000000", "16909060:1286"}, {"03000000", "258.772:1286"}}},
                       {"0103", {}, "1.2.3.4:1286"},
                       {"0203", {{"02000000", "16909060:1286"}, {"03000000", "258.772:1286"}}}},
             .unknown = {"0002", "0000"}},
        .printFailures = {"000300640000000101000000", "000300640000000102000000", "000300640000000103000000",
                          "020300640000000102000000", "020300640000000103000000", "010300640000000100000000"},
        .compares =
            {
                {"000300640000000101000000", "000300640000000001000000", 1},
                {"000300640000000001000000", "000300640000000101000000", -1},
                {"800300640000000001000000", "7f0300640000000101000000", 1}, // unsigned bytes
                {"000300640000000102000000", "000300640000000101000000", 1}, // the form takes part
                {"000300640000000101000000", "000300640000000101000000", 0},
                {"01020304", "01020305", 0, 3},
                {"01020304", "01020305", -1},
            },
        .swaps = {{"0102030405060708090a0b0c", "01020304050607080c0b0a09"}},
        .luaSets =
            {
                {"0002ff6400000001 03020100", "{SooType=66051, SooValue={0,2,255,100,0,0,0,1}}"},
                {"000000000000000000000000", "{SooType=0, SooValue={0,0,0,0,0,0,0,0}}"},
            },
        .luaGets =
            {
                {"{SooValue = {0, 2, 0, 100, 0, 0, 0, 1}, SooType = 1}", DT_OK, "0002006400000001 01000000", 0},
                {"{SooValue = {255, 254, 3, 4, 5, 6, 7, 8, 9}, SooType = 255}", DT_OK, "fffe030405060708 ff000000", 0},
                {"{SooValue = {256, 257, -1, 4294967295, 511, 6, 7, 8}, SooType = 256}", DT_OK,
                 "0001ffffff060708 00000000", 0},
                {"{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}, SooType = 66051}", DT_OK, "0102030405060708 03000000", 0},
                {"{SooValue = {'1', '2', '3', '4', '5', '6', '7', '8'}, SooType = '3'}", DT_OK,
                 "0102030405060708 03000000", 0},
                {"{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}}", DT_ERR_INVALID_PARAM, "0102030405060708 eeeeeeee", 2},
                {"{SooValue = {1, 2, 3, 4, 5, 6, 7, 8}, SooType = 'x'}", DT_ERR_INVALID_PARAM,
                 "0102030405060708 eeeeeeee", 2},
                {"{SooValue = {}, SooType = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 3},
                {"{SooValue = {1, 2, 3, 4, 5, 6, 7}, SooType = 1}", DT_ERR_INVALID_PARAM, "01020304050607ee eeeeeeee",
                 10},
                {"{SooValue = '12345678', SooType = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
                {"{SooType = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
                {"'100:1'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 1},
            },
        .luaArrays = {{"{SooType = 1, SooValue = ", "}", 8, 0, 3}},
    };
}

[[maybe_unused]] const bool kStated = StateTests<Soo>("Soo", Case());

TEST_F(Soo, OnlyAllZeroIsTheEmptyText)
{
    // One bit of any of the twelve bytes makes it another kind or a value.
    EXPECT_EQ(FormatOut(kType, "000000000000000000000001").code, DT_ERR_FAIL);
    EXPECT_EQ(FormatOut(kType, "000000000000000100000000").code, DT_ERR_FAIL);
    ExpectNothingWritten(Row(kType), "000300000000000000000000", 1);
}

// ---------------------------------------------------------------------------------------------------------- refusals

TEST_F(Soo, Reasons)
{
    CheckRefusals("SOO", All(kNotationRefusals, kZeroRefusals, kModeRefusals));
    CheckAccepted("SOO", kNotationsTaken);
    EXPECT_EQ(Sentence("SOO", "1.2.3.256:1"), "octet 4 of the address is at most 255");
}

} // namespace
} // namespace bgp::test
