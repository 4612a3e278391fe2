// VRFRD: type (2), administrator and assigned number (6), notation word (4). RFC 4364 section 4.2.
#include "support/notation_refusals.h"
#include "support/notation_texts.h"
#include "support/type_case.h"

#include <cstring>

namespace {

using namespace bgp::test;

class VrfRd : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    // AS:n, type 0, notation 1
    {"100:1", "0000 0064 00000001 01000000"},
    {"0:1", "0000 0000 00000001 01000000"},
    {"1:0", "0000 0001 00000000 01000000"},
    {"0:4294967295", "0000 0000 ffffffff 01000000"},
    {"65535:0", "0000 ffff 00000000 01000000"},
    {"65535:65535", "0000 ffff 0000ffff 01000000"},
    {"65535:65536", "0000 ffff 00010000 01000000"},
    {"65535:4294967295", "0000 ffff ffffffff 01000000"},
    {"258:50595078", "0000 0102 03040506 01000000"},
    {"00100:0001", "0000 0064 00000001 01000000", "100:1"},
    {"0000000000000000100:1", "0000 0064 00000001 01000000", "100:1"}, // 21 characters
    {"1:0000000000000000002", "0000 0001 00000002 01000000", "1:2"},
    // AS:n, type 2, notation 2
    {"65536:0", "0002 00010000 0000 02000000"},
    {"65536:1", "0002 00010000 0001 02000000"},
    {"65536:65535", "0002 00010000 ffff 02000000"},
    {"16909060:1286", "0002 01020304 0506 02000000"},
    {"4294967295:0", "0002 ffffffff 0000 02000000"},
    {"4294967295:65535", "0002 ffffffff ffff 02000000"},
    {"00000000000065536:001", "0002 00010000 0001 02000000", "65536:1"},
    // x.y:n, type 2, notation 3
    {"1.2:3", "0002 0001 0002 0003 03000000"},
    {"0.100:1", "0002 0000 0064 0001 03000000"},
    {"0.0:1", "0002 0000 0000 0001 03000000"},
    {"0.1:0", "0002 0000 0001 0000 03000000"},
    {"1.0:0", "0002 0001 0000 0000 03000000"},
    {"65535.0:0", "0002 ffff 0000 0000 03000000"},
    {"0.65535:0", "0002 0000 ffff 0000 03000000"},
    {"0.0:65535", "0002 0000 0000 ffff 03000000"},
    {"65535.65535:65535", "0002 ffff ffff ffff 03000000"},
    {"258.772:1286", "0002 0102 0304 0506 03000000"},
    {"00001.00002:000000003", "0002 0001 0002 0003 03000000", "1.2:3"}, // 21 characters
    // a.b.c.d:n, type 1, notation 0
    {"1.2.3.4:0", "0001 01020304 0000 00000000"},
    {"1.2.3.4:65535", "0001 01020304 ffff 00000000"},
    {"0.0.0.0:0", "0001 00000000 0000 00000000"},
    {"0.0.0.0:1", "0001 00000000 0001 00000000"},
    {"0.0.0.1:0", "0001 00000001 0000 00000000"},
    {"255.0.0.0:0", "0001 ff000000 0000 00000000"},
    {"0.255.0.0:0", "0001 00ff0000 0000 00000000"},
    {"0.0.255.0:0", "0001 0000ff00 0000 00000000"},
    {"255.255.255.255:65535", "0001 ffffffff ffff 00000000"}, // 21 characters
    {"010.001.000.007:0005", "0001 0a010007 0005 00000000", "10.1.0.7:5"},
    // blanks around
    {" 1:2", "0000 0001 00000002 01000000", "1:2"},
    {"1:2 ", "0000 0001 00000002 01000000", "1:2"},
    {"\t 1:2 \t", "0000 0001 00000002 01000000", "1:2"},
    {"  255.255.255.255:65535  ", "0001 ffffffff ffff 00000000", "255.255.255.255:65535"},
};

TypeCase Case()
{
    return {
        .row = {0x103, 12, 26, "VRFRD", &SYSDT_VrfRdFormatIn, &SYSDT_VrfRdFormatOut, &SYSDT_VrfRdCheck,
                &SYSDT_VrfRdHelp, &SYSDT_VrfRdCompare, nullptr, &SYSDT_VrfRdLuaSet, &SYSDT_VrfRdLuaGet,
                &SYSDT_VrfRdEndian},
        .contract = {.inModes = "FPPFUFPU",
                     .outModes = "FTTRUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .textSize = 257},
        .layout = {{"RdValue", 0, 1, 8}, {"RdType", 8, 4, 1}},
        .accepted = kAccepted,
        .refused = Joined(kNoNotations, kZeroNotations),
        .blanked = {"100:1", "65536:1", "1.2:3", "1.2.3.4:5", "255.255.255.255:65535"},
        .characters = {{"1", "2:3", "0123456789.:"}, {"", "1:2", "0123456789.:"}, {"1:2", "", "0123456789.:"}},
        .parser = &SYSDT_Str2VrfRd,
        .fields =
            {
                {"", ":1", "000000000000000101000000", 2},
                {"65536:", "", "000200010000000002000000", 6},
                {"", ".1:2", "000200000001000203000000", 2},
                {"1.", ":2", "000200010000000203000000", 4},
                {"1.2:", "", "000200010002000003000000", 6},
                {"1.2.3.4:", "", "000101020304000000000000", 6},
            },
        .octets = {{"", ".2.3.4:5"}, {"1.", ".3.4:5"}, {"1.2.", ".4:5"}, {"1.2.3.", ":5"}},
        .roundTrips = {"100:1",
                       "65535:4294967295",
                       "65536:1",
                       "4294967295:65535",
                       "1.2:3",
                       "0.100:1",
                       "0.0:1",
                       "65535.65535:65535",
                       "1.2.3.4:65535",
                       "0.0.0.0:0",
                       "0:1",
                       "1:0",
                       "0:10",
                       "1.0.0.1:2",
                       "1.0.1.1:101",
                       "1.1.1.112:20",
                       "1.1.1.1:10001",
                       "1.1.1.1:32787",
                       "10.100:100",
                       "100.1000:10000",
                       "201627:241",
                       "4200000001:1",
                       "4226809879:15",
                       "64512:100001",
                       "65001:2000000",
                       "172.16.255.1:3",
                       "192.0.2.255:65",
                       "65000:429496729",
                       "255.255.255.255:65535"},
        .prints =
            {
                {"0:0", "0002 0000 00000000 02000000"},
                {"0.0:0", "0002 0000 00000000 03000000"},
                {"0.0.0.0:0", "0001 0000 00000000 00000000"},
                {"65535:4294967295", "0000 ffff ffffffff 01000000"},
                {"4294967295:65535", "0000 ffff ffffffff 02000000"},
                {"65535.65535:65535", "0000 ffff ffffffff 03000000"},
                {"4294967295:65535", "0002 ffff ffffffff 02000000"},
                {"65535.65535:65535", "0002 ffff ffffffff 03000000"},
                {"255.255.255.255:65535", "0001 ffff ffffffff 00000000"},

            },
        .kindTable = {.fields = "fffefdfcfbfa",
                      .kinds = {{"0000",
                                 {{"01000000", "65534:4261215226"},
                                  {"02000000", "4294901244:64506"},
                                  {"03000000", "65534.65020:64506"}}},
                                {"0001", {}, "255.254.253.252:64506"},
                                {"0002", {{"02000000", "4294901244:64506"}, {"03000000", "65534.65020:64506"}}}},
                      .unknown = {"0003", "0004", "0100", "0200", "00ff", "0102", "8000", "ffff"}},
        .printFailures = {"000000640000000101000000", "000200010002000303000000", "000101020304000500000000",
                          "000200010000000102000000"},
        .checks = {{"000300000000000007000000", DT_OK}},
        .ascending = {"000000000000000000000000", "000000000000000001000000", "000000000000000002000000",
                      "0000000000000000ff000000", "000000000000000100000000", "00000000000000ff00000000",
                      "000000000000010000000000", "00007fffffffffffffffffff", "000080000000000000000000",
                      "0000ffffffffffffffffffff", "000100000000000000000000", "000200000000000000000000",
                      "00ff00000000000000000000", "010000000000000000000000", "7fffffffffffffffffffffff",
                      "800000000000000000000000", "ffffffffffffffffffffffff"},
        .compares =
            {
                {"000000640000000101000000", "000000640000000102000000", -1}, // only `length` bytes count
                {"000000640000000102000000", "000000640000000101000000", 1, 9},
                {"000000640000000101000000", "000000640000000102000000", 0, 8},
                {"000000640000000101000000", "000000640000000102000000", 0, 0},
            },
        .swaps =
            {
                {"000000640000000101000000", "000000640000000100000001"},
                {"010203040506070801020304", "010203040506070804030201"},
                {"fffefdfcfbfaf9f8f7f6f5f4", "fffefdfcfbfaf9f8f4f5f6f7"},
            },
        .luaSets =
            {
                {"000000640000000101000000", "{RdType=1, RdValue={0,0,0,100,0,0,0,1}}"},
                {"000101020304fffe00000000", "{RdType=0, RdValue={0,1,1,2,3,4,255,254}}"},
                {"00020001000000010200ff80", "{RdType=2164195330, RdValue={0,2,0,1,0,0,0,1}}"},
                {"ffffffffffffffffffffffff", "{RdType=4294967295, RdValue={255,255,255,255,255,255,255,255}}"},
            },
        .luaGets =
            {
                {"{RdType=1, RdValue={0,0,0,100,0,0,0,1}}", DT_OK, "000000640000000101000000", 0},
                {"{RdType=258, RdValue={0,2,0,1,0,2,0,3}}", DT_OK, "000200010002000302000000", 0},
                {"{RdType=256, RdValue={256,257,511,512,65535,65536,-1,4294967295}}", DT_OK, "0001ff00ff00ffff00000000",
                 0},
                {"{RdType=4294967295, RdValue={1,2,3,4,5,6,7,8,9,10}}", DT_OK, "0102030405060708ff000000", 0},
                {"{RdType='3', RdValue={'1','2',3,4,5,6,7,8}, other=1}", DT_OK, "010203040506070803000000", 0},
                // the field is no table
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
                {"5", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
                {"'100:1'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
                // its RdValue is no table
                {"{RdType=1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
                {"{RdType=1, RdValue=5}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
                {"{RdType=1, RdValue='12345678'}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
                {"{RdType=1, rdvalue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
                // too few items
                {"{RdType=1, RdValue={}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 3},
                {"{RdType=1, RdValue={1,2,3,4,5,6,7}}", DT_ERR_INVALID_PARAM, "01020304050607eeeeeeeeee", 10},
                // its RdType is no number
                {"{RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
                {"{RdType='x', RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
                {"{RdType={}, RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
                {"{RdType=true, RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
            },
        .luaArrays = {{"{RdType=1, RdValue=", "}", 8, 0, 3}},
    };
}

[[maybe_unused]] const bool kStated = StateTests<VrfRd>("VrfRd", Case());

// --------------------------------------------------------------------------------------------- the all-zero value

TEST_F(VrfRd, AllZeroIsEmptyInModeTwo)
{
    for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
        ExpectPrints(Row("VRFRD"), std::string("0000000000000000") + notation, 2, "");
    }
    for (const uint8_t mode : {uint8_t{1}, uint8_t{3}, uint8_t{6}}) {
        ExpectNothingWritten(Row("VRFRD"), "000000000000000000000000", mode);
        ExpectNothingWritten(Row("VRFRD"), "000000000000000004000000", mode);
        ExpectPrints(Row("VRFRD"), "000000000000000001000000", mode, "0:0");
        ExpectPrints(Row("VRFRD"), "000000000000000002000000", mode, "0:0");
        ExpectPrints(Row("VRFRD"), "000000000000000003000000", mode, "0.0:0");
    }
}

// ------------------------------------------------------------------------------------------------- printer by words

TEST_F(VrfRd, PrinterTakesWordsAsTheyLie)
{
    struct WordCase {
        const char *value;
        uint32_t code, length;
        const char *text; // null: nothing written
    };
    static constexpr WordCase kCases[] = {
        {"000000640000000101000000", DT_OK, 5, "100:1"},
        {"000200010000000102000000", DT_OK, 7, "65536:1"},
        {"000200010002000303000000", DT_OK, 5, "1.2:3"},
        {"000101020304fffe00000000", DT_OK, 13, "1.2.3.4:65534"},
        {"0001fffffffffffffffefdfc", DT_OK, 21, "255.255.255.255:65535"},
        {"000000000000000001000000", DT_OK, 3, "0:0"},
        {"000000000000000003000000", DT_OK, 5, "0.0:0"},
        {"000000000000000000000000", DT_OK, 0, nullptr},
        {"000000640000000104000000", DT_OK, 0, nullptr},
        {"000200010002000301000000", DT_OK, 0, nullptr},
        {"000200010002000300000000", DT_OK, 0, nullptr},
        {"000300010002000303000000", DT_ERR_FAIL, 0, nullptr},
        {"ffff00010002000301000000", DT_ERR_FAIL, 0, nullptr},
    };
    for (const WordCase &c : kCases) {
        SCOPED_TRACE(c.value);
        uint32_t words[3];
        std::memcpy(words, Bytes(c.value).data(), sizeof words);
        std::string buffer(257, '\xA5');
        uint32_t printed = 4711;
        EXPECT_EQ(SYSDT_VrfRd2Str(words[0], words[1], words[2], &printed, buffer.data()), c.code);
        if (c.code == DT_OK) {
            EXPECT_EQ(printed, c.length);
        }
        if (c.text != nullptr) {
            EXPECT_STREQ(buffer.c_str(), c.text);
        } else if (c.code == DT_OK) {
            EXPECT_EQ(buffer, std::string(257, '\xA5'));
        }
    }
    host::SetFaults({.failPrint = 1});
    uint32_t printed = 0;
    char buffer[257];
    EXPECT_EQ(SYSDT_VrfRd2Str(0x64000000, 0x01000000, 1, &printed, buffer), DT_ERR_FAIL);
}

TEST_F(VrfRd, FormatOutEx)
{
    const std::string value = Bytes("000000640000000101000000");
    for (const uint8_t mode : {uint8_t{1}, uint8_t{2}, uint8_t{3}, uint8_t{6}}) {
        const DataTypeRequest request{mode, Handle()};
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(SYSDT_VrfRdFormatOutEx(&request, value.data(), &typeId, &length, &buffer), 0u);
        EXPECT_EQ(typeId, mode == 3 ? 6 : 25);
        EXPECT_EQ(length, mode == 3 ? 5 : 6);
        ASSERT_NE(buffer, nullptr);
        EXPECT_STREQ(static_cast<char *>(buffer), "100:1");
    }
}

TEST_F(VrfRd, IsInValidRdOrRtFindsAnySetBit)
{
    uint8_t bytes[8] = {};
    EXPECT_EQ(SYSDT_IsInValidRdOrRt(bytes), 0u);
    for (size_t at = 0; at < 8; ++at) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            bytes[at] = static_cast<uint8_t>(1u << bit);
            EXPECT_EQ(SYSDT_IsInValidRdOrRt(bytes), 1u) << at << ' ' << bit;
        }
        bytes[at] = 0;
    }
    std::memset(bytes, 0xFF, sizeof bytes);
    EXPECT_EQ(SYSDT_IsInValidRdOrRt(bytes), 1u);
    const uint8_t notationOnly[12] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4};
    EXPECT_EQ(SYSDT_IsInValidRdOrRt(notationOnly), 0u);
}

// ---------------------------------------------------------------------------------------------------------- refusals

TEST_F(VrfRd, Reasons)
{
    CheckRefusals("VRFRD", All(kNotationRefusals, kZeroRefusals, kModeRefusals));
    CheckAccepted("VRFRD", kNotationsTaken);
    EXPECT_EQ(Sentence("VRFRD", "65000:4294967296"),
              "with an AS number up to 65535: the assigned number is at most 4294967295");
}

} // namespace
