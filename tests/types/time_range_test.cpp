#include "support/harness.h"

#include <lua.hpp>

namespace bgp::test {
namespace {

class TimeRange : public PlugIn {};

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

} // namespace
} // namespace bgp::test
