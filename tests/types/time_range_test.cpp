#include "support/refusals.h"

#include <dlfcn.h>
#include <lua.hpp>

namespace {

// How the host's trimming behaves: it counts, and answers null where a test asks for it.
struct {
    uint32_t calls = 0;
    bool answersNull = false;
} trimming;

} // namespace

// Stands before the host's service.
extern "C" char *QOV_StrTrim(char *text)
{
    static const auto theirs = reinterpret_cast<char *(*)(char *)>(dlsym(RTLD_NEXT, "QOV_StrTrim"));
    ++trimming.calls;
    return trimming.answersNull ? nullptr : theirs(text);
}

namespace bgp::test {
namespace {

class TimeRange : public PlugIn {
protected:
    void SetUp() override
    {
        PlugIn::SetUp();
        trimming = {};
    }
};

TEST_F(TimeRange, ReadsDaysHoursMinutesSeconds)
{
    const struct {
        const char *text;
        uint32_t seconds;
    } rows[] = {
        {"1d2h3m4s", 93784},
        {"10000d23h59m59s", 864086399},
        {"0d0h0m0s", 0},
        {"0d0h0m1s", 1},
        {"0d0h1m0s", 60},
        {"0d1h0m0s", 3600},
        {"1d0h0m0s", 86400},
        {"1D2H3M4S", 93784},
        {"1d2H3m4S", 93784},
        {"  1d2h3m4s\t", 93784},
        {"001d02h03m04s", 93784},
        {"1d2h3m4s9999999", 93784},
        {"10000d0h0m0s", 864000000},
        {"0d23h59m59s", 86399},
        {"0000000d0h0m0s", 0},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Value("TIME_RANGE", row.text), Le32(row.seconds)) << row.text;
    }
}

TEST_F(TimeRange, Refuses)
{
    for (const char *text :
         {"",          "1d2h3m",    "1h2d3m4s",  "1dh2m3s4",         "1d2h3m4s5s",       "1d2h3m4",   "10001d0h0m0s",
          "0d24h0m0s", "0d0h60m0s", "0d0h0m60s", "1d2h3m4s99999999", "10000d23h59m59s0", "d1h2m3s4",  "1d2h3m 4s",
          "1d 2h3m4s", "1d2h3ms00", "1d2hm4s0",  "1d2h3m4x",         "1d2h3m4sd",        "-1d2h3m4s", "1.d2h3m4s",
          "12345678",  "h1m2s3d4",  "dhms1234",  "99999999999d0h0"}) {
        const In in = FormatIn("TIME_RANGE", text);
        EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM) << text;
        EXPECT_FALSE(in.bufferSet);
        EXPECT_EQ(in.length, kUntouched);
    }
    EXPECT_EQ(CodeOf("TIME_RANGE", "1d2h3m4"), DT_ERR_INVALID_PARAM);
}

TEST_F(TimeRange, ParserReportsItsOwnCodes)
{
    uint32_t seconds = 5;
    EXPECT_EQ(SYSDT_Str2TimeRange(nullptr, &seconds), DT_ERR_NULL_PTR);
    EXPECT_EQ(seconds, 0u);
    EXPECT_EQ(SYSDT_Str2TimeRange("1d2h3m4s", nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2TimeRange("1d2h3m", &seconds), DT_ERR_FAIL);
    EXPECT_EQ(seconds, 0u);
}

TEST_F(TimeRange, ObeysTheContract)
{
    Sweep(Row("TIME_RANGE"), {.text = "1d2h3m4s",
                              .value = "58600100",
                              .inModes = "FPPFUFPU",
                              .outModes = "",
                              .helpModes = "-H----H-",
                              .helpText = "STRING<8-15>",
                              .resultTypeId = 284,
                              .resultLength = 4,
                              .textSize = 0,
                              .namelessLua = true});
    const DataTypeDescriptor &row = Row("TIME_RANGE");
    EXPECT_EQ(row.FormatOut, nullptr);
    EXPECT_EQ(row.Check, nullptr);
    EXPECT_EQ(row.Compare, nullptr);
    EXPECT_EQ(row.Endian, nullptr);
    EXPECT_EQ(Help("TIME_RANGE", 6, 11, 22).helpWord, 22u);
}

TEST_F(TimeRange, ToLuaAsAPlainNumber)
{
    const LuaOut out = LuaSet("TIME_RANGE", "58600100");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "90200");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(Row("TIME_RANGE"), "ffffffff", 0).table, "4294967295"); // the length is not looked at

    lua_State *L = host::NewLua();
    const uint32_t seconds = 7;
    EXPECT_EQ(SYSDT_TimeRangeLuaSet(nullptr, 1, "v", 284, 4, &seconds), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_TimeRangeLuaSet(L, 1, "v", 284, 4, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_TimeRangeLuaSet(L, 1, nullptr, 284, 4, &seconds), DT_OK);
    EXPECT_EQ(lua_gettop(L), 1); // without a name the number stays on the stack
    EXPECT_EQ(lua_tointeger(L, 1), 7);
    host::CloseLua(L);
}

TEST_F(TimeRange, FromLua)
{
    LuaIn in = LuaGet("TIME_RANGE", "93784");
    EXPECT_EQ(in.code, DT_OK);
    EXPECT_EQ(in.value, "586e0100");
    EXPECT_EQ(in.growth, 0);
    in = LuaGet("TIME_RANGE", "{}");
    EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(in.value, "eeeeeeee");
    EXPECT_EQ(in.growth, 1); // what was fetched stays
    EXPECT_EQ(LuaGet(Row("TIME_RANGE"), "1", 3).code, DT_ERR_INVALID_PARAM);

    lua_State *L = host::NewLua();
    lua_pushinteger(L, 9);
    uint32_t seconds = 0;
    EXPECT_EQ(SYSDT_TimeRangeLuaGet(nullptr, 1, nullptr, 284, 4, &seconds), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_TimeRangeLuaGet(L, 1, nullptr, 284, 4, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_TimeRangeLuaGet(L, 1, nullptr, 284, 4, &seconds), DT_OK);
    EXPECT_EQ(seconds, 9u);
    EXPECT_EQ(lua_gettop(L), 1);
    host::CloseLua(L);
}

TEST_F(TimeRange, TrimsByTheHostsOwnService)
{
    EXPECT_EQ(Value("TIME_RANGE", "1d2h3m4s"), Le32(93784));
    EXPECT_EQ(trimming.calls, 0u); // nothing that any host would trim
    EXPECT_EQ(Value("TIME_RANGE", " 1d2h3m4s\t"), Le32(93784));
    EXPECT_GT(trimming.calls, 0u);
}

TEST_F(TimeRange, AHostThatDoesNotTrimHasACodeOfItsOwn)
{
    trimming.answersNull = true;
    uint32_t seconds = 5;
    EXPECT_EQ(SYSDT_Str2TimeRange(" 1d2h3m4s", &seconds), DT_ERR_NULL_PTR);
    EXPECT_EQ(seconds, 0u);
    EXPECT_EQ(SYSDT_Str2TimeRange("1d2h3m4s\t", &seconds), DT_ERR_NULL_PTR);
    EXPECT_EQ(CodeOf("TIME_RANGE", " 1d2h3m4s"), DT_ERR_INVALID_PARAM);
    const BgpRefusal refusal = Explained("TIME_RANGE", " 1d2h3m4s");
    EXPECT_EQ(Describe(refusal.Reason), "trim 0+0 limit 0 what '' where '' element 0 expected ''");
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_Str2TimeRange("1d2h3m4s", &seconds), DT_OK); // it is not asked
    EXPECT_EQ(seconds, 93784u);
}

// clang-format off
constexpr Refused kReasons[] = {
    // text               rule         at  length
    {"",                  "empty",      0,  0},
    {" \t",               "empty",      2,  0},
    {"1d2h3m",            "too-short",  0,  6, 8},
    {"\t1d2h3m4 ",        "too-short",  1,  7, 8},
    {"1d2h3m4s99999999",  "too-long",   0, 16, 15},
    {" 10000d23h59m59s0", "too-long",   1, 16, 15},
    {"1d 2h3m4s",         "blank",      2,  1},
    {"1d2h3m 4s",         "blank",      6,  1},
    {"1d2h\t3m4s",        "blank",      4,  1},
    {"1d2h3 m4s",         "blank",      5,  1},
    {"1d2h3m4s 5",        "blank",      8,  1},
    {"d1h2m3s4",          "digit",      0,  1},
    {"1dh2m3s4",          "digit",      2,  1},
    {" 1d2h3ms00",        "digit",      7,  1},
    {"1d2h0003m",         "digit",      9,  0},
    {"-1d2h3m4s",         "digit",      0,  1},
    {"1d2h3m4sd",         "character",  8,  1},
    {"1d2h3m4s5s",        "character",  9,  1},
    {"1h2d3m4s",          "unit",       1,  1, 0, "the number of days", "", 0, 2, "d"},
    {"12345678",          "unit",       8,  0, 0, "the number of days", "", 0, 2, "d"},
    {"1.d2h3m4s",         "unit",       1,  1, 0, "the number of days", "", 0, 2, "d"},
    {" 1D2m3h4s",         "unit",       4,  1, 0, "the number of hours", "", 0, 2, "h"},
    {"1d2h3s4m",          "unit",       5,  1, 0, "the number of minutes", "", 0, 2, "m"},
    {"1d2h3m4x",          "unit",       7,  1, 0, "the number of seconds", "", 0, 2, "s"},
    {"1d02h03m4",         "unit",       9,  0, 0, "the number of seconds", "", 0, 2, "s"},
    {"10001d0h0m0s",      "too-large",  0,  5, 10000, "the number of days"},
    {" 4294967296d0h0",   "too-large",  1, 10, 10000, "the number of days"},
    {"0d24h0m0s",         "too-large",  2,  2, 23, "the number of hours"},
    {"0d0h60m0s",         "too-large",  4,  2, 59, "the number of minutes"},
    {"0d0h0m60s",         "too-large",  6,  2, 59, "the number of seconds"},
    {"1d2h3m4s",          "mode",       0,  0, 0, "", "", 0, 0},
    {"1d2h3m4s",          "mode",       0,  0, 3, "", "", 0, 3},
    {"1d2h3m4s",          "mode",       0,  0, 4, "", "", 0, 4},
    {"1d2h3m4s",          "mode",       0,  0, 7, "", "", 0, 7},
};
// clang-format on

TEST_F(TimeRange, Reasons)
{
    CheckRefusals("TIME_RANGE", kReasons);
    constexpr std::string_view kGood[] = {"1d2h3m4s", " 10000D23H59M59S\t", "1d2h3m4s9999999"};
    for (const uint8_t mode : kTextModes) {
        CheckAccepted("TIME_RANGE", kGood, mode);
    }
}

TEST_F(TimeRange, Facts)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(284);
    ASSERT_NE(facts, nullptr);
    EXPECT_STREQ(facts->Name, "TIME_RANGE");
    EXPECT_EQ(facts->Reference, nullptr);
    EXPECT_EQ(facts->ResultTypeId, 284);
    EXPECT_EQ(facts->ValueLength, 4);
    EXPECT_EQ(facts->CheckedLength, 0);
    EXPECT_EQ(facts->TextSize, 0);
    EXPECT_EQ(facts->ShortestText, 8);
    EXPECT_EQ(facts->LongestText, 15);
    EXPECT_EQ(facts->TypingMode, 1);
    EXPECT_EQ(facts->Order, BGP_ORDER_NONE);
    EXPECT_EQ(facts->Network, BGP_NETWORK_LAYOUT);
    EXPECT_EQ(facts->Lua, BGP_LUA_ALL);
    EXPECT_EQ(facts->Traits, BGP_TRAIT_SETS_ANY);
    EXPECT_EQ(Bgp_DescribeValue(284, nullptr, 0), facts->Layout);
}

} // namespace
} // namespace bgp::test
