#include "support/refusals.h"
#include "support/type_case.h"

#include "bgp_host_services.h"

#include <cstring>

namespace bgp::test {
namespace {

class AsNum : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    {"1", "0100000000000000"},
    {"100", "6400000000000000"},
    {"65535", "ffff000000000000"},
    {"65536", "0000010000000000"},
    {"4294967295", "ffffffff00000000"},
    {"00000000001", "0100000000000000", "1"},
    {"1.0", "0000010001000000"},
    {"1.65535", "ffff010001000000"},
    {"65535.65535", "ffffffff01000000"},
    {"00001.00001", "0100010001000000", "1.1"},
    {" 123 ", "7b00000000000000", "123"},
    {"\t123\t \t", "7b00000000000000", "123"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "4294967296",
    "9999999999",
    "99999999999",
    "100000000000",
    "000000000001",
    "12 3",
    "12\t3",
    "1.2.3",
    "0.5",
    "0.0",
    "0.65535",
    "1.65536",
    "65536.1",
    "65536.0",
    "1.",
    ".1",
    ".",
    "1..2",
    "1e5",
    "+5",
    "-1",
    "0x10",
    "1:2",
    "a",
    "1\n",
    "\xb1",
    "1\xff",
    "4294967295.0",
    "0.4294967295",
    "1.4294967297",
    "65535.655350",
    "as100",
    "internet",
};

// What the two types share.
TypeCase Both()
{
    return {
        .row = {},
        .contract = {.text = "65535.65535",
                     .value = "ffffffff01000000",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTCUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<1-11>",
                     .textSize = 33},
        .accepted = kAccepted,
        .refused = kRefused,
        .blanked = {"7"},
        .prints =
            {
                // the notation decides
                {"65536", "0000010000000000"},
                {"1.0", "0000010001000000"},
                {"1.0", "0000010007000000"},
                {"1.0", "00000100ffffffff"},
                {"0.100", "6400000001000000"},
                {"4294967295", "ffffffff00000000"},
                {"65535.65535", "ffffffff01000000"},
            },
        .printFailures = {"6400000000000000"},
        .checks = {{"64000000ffffffff", DT_OK}},
        .compares =
            {
                // by the number alone
                {"0001000000000000", "ff00000000000000", 1},
                {"ff00000000000000", "0001000000000000", -1},
                {"ff00000000000000", "ff00000001000000", 0},
            },
        .swaps = {{"0102030405060708", "0403020108070605"}},
        .luaSets = {{"ffffffff01000000", "{asNumValue=4294967295, asType=1}"}},
        .luaGets =
            {
                {"{asNumValue = 4294967295, asType = 1}", DT_OK, "ffffffff01000000", 1}, // the fetched table stays
                {"{asNumValue = 0, asType = 77}", DT_OK, "000000004d000000", 1},
                {"{asNumValue = '5', asType = 0}", DT_OK, "0500000000000000", 1}, // a numeric string is a number to Lua
                {"{asNumValue = 5, asType = 'dotted'}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
                {"{asNumValue = 5}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
                {"{asType = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
                {"{asNumValue = {}, asType = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
                {"7", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 1},
            },
    };
}

// Zero is no AS number but an extended one.
TypeCase AsNumCase()
{
    TypeCase type = Both();
    type.row = {255,
                8,
                26,
                "ASNUM",
                &SYSDT_AsNumFormatIn,
                &SYSDT_AsNumFormatOut,
                &SYSDT_AsNumCheck,
                &SYSDT_AsNumHelp,
                &SYSDT_Uint32Compare,
                nullptr,
                &SYSDT_AsNumLuaSet,
                &SYSDT_AsNumLuaGet,
                &SYSDT_AsNumLuaEndian};
    type.refused.insert(type.refused.end(), {"0", "00000000000"});
    type.parser = &SYSDT_Str2AsNum;
    type.prints.insert(type.prints.end(), {{"", "0000000000000000"}, {"", "0000000001000000"}});
    type.zeroCheck = DT_ERR_INVALID_VALUE;
    type.checks.push_back({"0000000001000000", DT_ERR_INVALID_VALUE});
    return type;
}

TypeCase AsNumExtCase()
{
    TypeCase type = Both();
    type.row = {285,
                8,
                26,
                "ASNUMEXT",
                &SYSDT_AsNumExtFormatIn,
                &SYSDT_AsNumExtFormatOut,
                &SYSDT_AsNumExtCheck,
                &SYSDT_AsNumHelp,
                &SYSDT_Uint32Compare,
                nullptr,
                &SYSDT_AsNumLuaSet,
                &SYSDT_AsNumLuaGet,
                &SYSDT_AsNumLuaEndian};
    type.accepted.insert(type.accepted.end(), {{"0", "0000000000000000"}, {"00000000000", "0000000000000000", "0"}});
    type.parser = &SYSDT_Str2AsNumExt;
    type.prints.push_back({"0.0", "0000000001000000"});
    return type;
}

[[maybe_unused]] const bool kStated = StateTests<AsNum>("AsNum", AsNumCase()) && StateTests("AsNumExt", AsNumExtCase());

TEST_F(AsNum, TheDotsChooseTheForm)
{
    const struct {
        uint32_t dots;
        const char *text;
        uint32_t code, high;
        uint64_t low;
        const char *value;
    } rows[] = {
        {0, "1", DT_OK, 7, 1, "0100000000000000"},
        {0, "65536", DT_OK, 7, 65536, "0000010000000000"},
        {0, "4294967295", DT_OK, 7, 4294967295, "ffffffff00000000"},
        {0, "4294967296", DT_ERR_FAIL, 7, 4294967296, "eeeeeeeeeeeeeeee"},
        {0, "100 200", DT_OK, 7, 100, "6400000000000000"},
        {0, "2.3", DT_OK, 7, 2, "0200000000000000"},
        {0, "x", DT_ERR_FAIL, 7, 9, "eeeeeeeeeeeeeeee"},
        {1, "1.0", DT_OK, 1, 0, "0000010001000000"},
        {1, "65535.65535", DT_OK, 65535, 65535, "ffffffff01000000"},
        {1, "0.5", DT_ERR_FAIL, 0, 5, "eeeeeeeeeeeeeeee"},
        {1, "65536.1", DT_ERR_FAIL, 65536, 1, "eeeeeeeeeeeeeeee"},
        {1, "1.65536", DT_ERR_FAIL, 1, 65536, "eeeeeeeeeeeeeeee"},
        {1, "4294967297.1", DT_ERR_FAIL, 7, 9, "eeeeeeeeeeeeeeee"}, // no 32-bit number ends the scan
        {1, "1", DT_ERR_FAIL, 1, 9, "eeeeeeeeeeeeeeee"},
        {1, "1.x", DT_ERR_FAIL, 1, 9, "eeeeeeeeeeeeeeee"},
        {2, "1.2.3", DT_ERR_FAIL, 7, 9, "eeeeeeeeeeeeeeee"},
        {DT_ERR_FAIL, "1", DT_ERR_FAIL, 7, 9, "eeeeeeeeeeeeeeee"},
    };
    for (auto *select : {SYSDT_Str2AsNumSetAsType, SYSDT_Str2AsNumToAsType}) {
        for (const auto &row : rows) {
            uint32_t high = 7;
            uint64_t low = 9;
            uint8_t value[8];
            std::memset(value, 0xEE, sizeof value);
            EXPECT_EQ(select(row.dots, row.text, &high, &low, value), row.code) << row.text;
            EXPECT_EQ(high, row.high) << row.text;
            EXPECT_EQ(low, row.low) << row.text;
            EXPECT_EQ(Hex(value, sizeof value), row.value) << row.text;
        }
    }
    uint32_t high = 7;
    uint64_t low = 9;
    uint8_t value[8];
    EXPECT_EQ(SYSDT_Str2AsNumSetAsType(0, "0", &high, &low, value), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2AsNumToAsType(0, "0", &high, &low, value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "0000000000000000");
}

TEST_F(AsNum, Mode3CopiesAsManyBytesAsTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row("ASNUM"), "6400000000000000", 3, 4).bytes, "64000000");
}

// clang-format off
constexpr Refused kReasons[] = {
    // text             rule                at  length
    {"",                "empty",             0,  0},
    {" \t",             "empty",             2,  0},
    {"100000000000",    "too-long",          0, 12, 11, "the AS number"},
    {"\t000000000001 ", "too-long",          1, 12, 11, "the AS number"},
    {"12 3",            "blank",             2,  1},
    {"12\t3",           "blank",             2,  1},
    {" 1 .2",           "blank",             2,  1},
    {"1.",              "digit",             2,  0},
    {".1",              "digit",             0,  1},
    {" 1..2",           "digit",             3,  1},
    {"as100",           "digit",             0,  1},
    {"1e5",             "character",         1,  1},
    {"1\n",             "character",         1,  1},
    {"1:2",             "character",         1,  1},
    {"1.2.3.4.5.6",     "too-many-numbers",  3,  1, 2},
    {" 1.2.3",          "notation",          1,  5, 0, "", "", 0, 2, "number high.low"},
    {"4294967296",      "too-large",         0, 10, 4294967295, "the AS number"},
    {"99999999999",     "too-large",         0, 11, 4294967295, "the AS number"},
    {"0.5",             "too-small",         0,  1, 1, "the high part"},
    {"65536.1",         "too-large",         0,  5, 65535, "the high part"},
    {" 1.65536 ",       "too-large",         3,  5, 65535, "the low part"},
    {"1",               "mode",              0,  0, 0, "", "", 0, 0},
    {"1",               "mode",              0,  0, 3, "", "", 0, 3},
    {"1",               "mode",              0,  0, 4, "", "", 0, 4},
    {"1",               "mode",              0,  0, 7, "", "", 0, 7},
};
constexpr Refused kReasonsOfZero[] = {
    {"0",               "too-small",         0,  1, 1, "the AS number"},
    {" 00000000000",    "too-small",         1, 11, 1, "the AS number"},
    {"0.0",             "too-small",         0,  1, 1, "the high part"},
};
// clang-format on

TEST_F(AsNum, Reasons)
{
    CheckRefusals("ASNUMEXT", kReasons);
    std::vector<Refused> rows(std::begin(kReasons), std::end(kReasons));
    rows.insert(rows.end(), std::begin(kReasonsOfZero), std::end(kReasonsOfZero));
    CheckRefusals("ASNUM", rows);
    constexpr std::string_view kGood[] = {"1", " 4294967295\t", "1.0", "65535.65535", "00000000001"};
    constexpr std::string_view kZero[] = {"0", " 00000000000 "};
    for (const uint8_t mode : kTextModes) {
        CheckAccepted("ASNUM", kGood, mode);
        CheckAccepted("ASNUMEXT", kGood, mode);
        CheckAccepted("ASNUMEXT", kZero, mode);
    }
}

TEST_F(AsNum, Facts)
{
    for (const uint16_t typeId : {uint16_t{255}, uint16_t{285}}) {
        const BgpTypeFacts *facts = Bgp_DescribeType(typeId);
        ASSERT_NE(facts, nullptr);
        EXPECT_STREQ(facts->Name, typeId == 255 ? "ASNUM" : "ASNUMEXT");
        EXPECT_STREQ(facts->Reference, "RFC 6793, RFC 5396");
        EXPECT_EQ(facts->ResultTypeId, typeId);
        EXPECT_EQ(facts->ValueLength, 8);
        EXPECT_EQ(facts->CheckedLength, 8);
        EXPECT_EQ(facts->TextSize, 33);
        EXPECT_EQ(facts->ShortestText, 1);
        EXPECT_EQ(facts->LongestText, 11);
        EXPECT_EQ(facts->TypingMode, 2);
        EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
        EXPECT_EQ(facts->Network, BGP_NETWORK_ENDIAN);
        EXPECT_EQ(facts->Lua, BGP_LUA_ALL);
        EXPECT_EQ(facts->Traits, BGP_TRAIT_COPIES_RAW);
        ASSERT_EQ(facts->NotationCount, 2u);
        EXPECT_STREQ(facts->Notations[0].Separators, "");
        EXPECT_EQ(facts->Notations[0].Smallest[0], typeId == 255 ? 1u : 0u);
        EXPECT_EQ(facts->Notations[0].Largest[0], 4294967295u);
        EXPECT_STREQ(facts->Notations[1].Separators, ".");
        EXPECT_EQ(facts->Notations[1].Smallest[0], 1u);
        EXPECT_EQ(facts->Notations[1].Largest[0], 65535u);
        EXPECT_EQ(facts->Notations[1].Smallest[1], 0u);
        EXPECT_EQ(facts->Notations[1].Largest[1], 65535u);
        EXPECT_EQ(Bgp_DescribeValue(typeId, nullptr, 0), facts->Layout);
    }
}

} // namespace
} // namespace bgp::test
