// The Lua stack wrapper: what it shares with Lua, and that it raises nothing. A raised error has no protected call to
// go to here: it would end the test program.
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

extern "C" {
#include <lauxlib.h>
#include <lua.h>
}

#include <cstring>
#include <limits>
#include <string_view>

namespace {

using namespace bgp::standalone;

class Lua : public testing::Test {
protected:
    void TearDown() override { CloseLua(L); }
    void Run(const char *script) { ASSERT_EQ(luaL_dostring(L, script), LUA_OK) << lua_tostring(L, -1); }
    int Top() { return SYSDT_SPTI_GetTop(L); }
    lua_State *L = NewLua();
};

TEST_F(Lua, FieldsGoInAndOut)
{
    SYSDT_SPTI_CreateTable(L, 0, 2);
    SYSDT_SPTI_PushUInt(L, 4294967295u);
    SYSDT_SPTI_SetField(L, 1, "number");
    SYSDT_SPTI_PushString(L, "text");
    SYSDT_SPTI_SetField(L, -2, "word");
    EXPECT_EQ(Top(), 1);
    SYSDT_SPTI_GetField(L, -1, "number");
    EXPECT_EQ(SYSDT_SPTI_ToUInt(L, -1), 4294967295u);
    SYSDT_SPTI_GetField(L, 1, "word");
    EXPECT_STREQ(SYSDT_SPTI_ToString(L, -1), "text");
    SYSDT_SPTI_GetField(L, 1, "none");
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    SYSDT_SPTI_Pop(L, 3);
    EXPECT_EQ(Top(), 1);
}

TEST_F(Lua, ElementsGoInAndOut)
{
    SYSDT_SPTI_CreateTable(L, 3, 0);
    for (uint32_t at = 1; at <= 3; ++at) {
        SYSDT_SPTI_PushUInt(L, at);
        SYSDT_SPTI_PushUInt(L, at * 10);
        SYSDT_SPTI_SetTable(L, -3);
    }
    EXPECT_EQ(Top(), 1);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(L, 1), 3u);
    SYSDT_SPTI_PushUInt(L, 2);
    SYSDT_SPTI_GetTable(L, 1);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(L, -1), 20u);
    SYSDT_SPTI_PushUInt(L, 4);
    SYSDT_SPTI_GetTable(L, 1);
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    EXPECT_EQ(Top(), 3);
}

TEST_F(Lua, KindsAreLuasOwn)
{
    Run("a, b, c, d, e = '17', 'x', 2.5, {}, true");
    struct Row {
        const char *name;
        int32_t table, number, string;
        uint32_t value;
    };
    for (const Row &row : {Row{"a", 0, 1, 1, 17},
                           {"b", 0, 0, 1, 0},
                           {"c", 0, 1, 1, 0},
                           {"d", 1, 0, 0, 0},
                           {"e", 0, 0, 0, 0},
                           {"none", 0, 0, 0, 0}}) {
        lua_getglobal(L, row.name);
        EXPECT_EQ(SYSDT_SPTI_IsTable(L, -1), row.table) << row.name;
        EXPECT_EQ(SYSDT_SPTI_IsNumber(L, -1), row.number) << row.name;
        EXPECT_EQ(SYSDT_SPTI_IsString(L, -1), row.string) << row.name;
        EXPECT_EQ(SYSDT_SPTI_ToUInt(L, -1), row.value) << row.name;
        SYSDT_SPTI_Pop(L, 1);
    }
}

TEST_F(Lua, NumbersKeepTheirLowWord)
{
    struct Row {
        const char *expression;
        uint32_t word;
        int64_t whole;
    };
    for (const Row &row : {Row{"4294967296 + 5", 5, 4294967301},
                           {"-1", 0xFFFFFFFFu, -1},
                           {"3.0", 3, 3},
                           {"4294967296.0", 0, 4294967296},
                           {"'0x10'", 16, 16},
                           {"' 7 '", 7, 7},
                           {"3.5", 0, 0},
                           {"1e300", 0, 0},
                           {"0/0", 0, 0},
                           {"math.mininteger", 0, std::numeric_limits<int64_t>::min()}}) {
        Run(("x = " + std::string(row.expression)).c_str());
        lua_getglobal(L, "x");
        EXPECT_EQ(SYSDT_SPTI_ToUInt(L, -1), row.word) << row.expression;
        EXPECT_EQ(SYSDT_SPTI_ToInt64(L, -1), row.whole) << row.expression;
        SYSDT_SPTI_Pop(L, 1);
    }
    SYSDT_SPTI_PushInt64(L, std::numeric_limits<int64_t>::max());
    EXPECT_EQ(SYSDT_SPTI_ToInt64(L, -1), std::numeric_limits<int64_t>::max());
}

TEST_F(Lua, TextsAndLengths)
{
    size_t length = 9;
    SYSDT_SPTI_PushLString(L, "a\0b", 3);
    EXPECT_EQ(std::string_view(SYSDT_SPTI_ToLString(L, -1, &length), 3), std::string_view("a\0b", 3));
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(L, -1), 3u);
    SYSDT_SPTI_PushUInt(L, 12345);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(L, -1), 0u);
    EXPECT_STREQ(SYSDT_SPTI_ToString(L, -1), "12345");
    SYSDT_SPTI_PushString(L, nullptr);
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    EXPECT_EQ(SYSDT_SPTI_ToLString(L, -1, &length), nullptr);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(L, -1), 0u);
    SYSDT_SPTI_PushLString(L, nullptr, 0);
    EXPECT_STREQ(SYSDT_SPTI_ToString(L, -1), "");
    SYSDT_SPTI_PushLString(L, nullptr, 2);
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
}

TEST_F(Lua, WhatIsNoTableReadsAsNilAndDropsWrites)
{
    SYSDT_SPTI_PushUInt(L, 5);
    SYSDT_SPTI_GetField(L, 1, "x");
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    EXPECT_EQ(Top(), 2);
    SYSDT_SPTI_GetField(L, 9, "x");
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    SYSDT_SPTI_GetField(L, -9, "x");
    SYSDT_SPTI_GetField(L, 0, "x");
    SYSDT_SPTI_GetField(L, 1, nullptr);
    EXPECT_EQ(Top(), 6);
    SYSDT_SPTI_Pop(L, 5);
    SYSDT_SPTI_PushString(L, "key");
    SYSDT_SPTI_GetTable(L, 1);
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    EXPECT_EQ(Top(), 2); // the key is gone
    SYSDT_SPTI_SetField(L, 1, "x");
    EXPECT_EQ(Top(), 1);
    SYSDT_SPTI_PushUInt(L, 1);
    SYSDT_SPTI_PushUInt(L, 2);
    SYSDT_SPTI_SetTable(L, 1);
    EXPECT_EQ(Top(), 1);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(L, 1), 5u);
}

TEST_F(Lua, KeysThatLuaRefusesAreDropped)
{
    SYSDT_SPTI_CreateTable(L, 0, 0);
    lua_pushnil(L);
    SYSDT_SPTI_PushUInt(L, 1);
    SYSDT_SPTI_SetTable(L, 1);
    lua_pushnumber(L, std::numeric_limits<double>::quiet_NaN());
    SYSDT_SPTI_PushUInt(L, 1);
    SYSDT_SPTI_SetTable(L, 1);
    EXPECT_EQ(Top(), 1);
    lua_pushnil(L);
    EXPECT_EQ(lua_next(L, 1), 0); // still empty
    lua_pushnil(L);
    SYSDT_SPTI_GetTable(L, 1);
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
}

TEST_F(Lua, MetamethodsDoNotRun)
{
    Run("t = setmetatable({}, {__index = error, __newindex = error, __len = error, __tostring = error})");
    lua_getglobal(L, "t");
    SYSDT_SPTI_GetField(L, 1, "x");
    EXPECT_EQ(lua_type(L, -1), LUA_TNIL);
    SYSDT_SPTI_SetField(L, 1, "y");
    SYSDT_SPTI_PushUInt(L, 1);
    SYSDT_SPTI_PushUInt(L, 7);
    SYSDT_SPTI_SetTable(L, 1);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(L, 1), 1u);
    EXPECT_EQ(SYSDT_SPTI_ToString(L, 1), nullptr);
    EXPECT_EQ(Top(), 1);
}

TEST_F(Lua, AnEmptyStackAndNoStateAtAll)
{
    SYSDT_SPTI_Pop(L, 3);
    SYSDT_SPTI_Pop(L, -1);
    SYSDT_SPTI_SetField(L, 1, "x");
    SYSDT_SPTI_SetTable(L, 1);
    SYSDT_SPTI_GetTable(L, 1);
    EXPECT_EQ(Top(), 0);
    EXPECT_EQ(SYSDT_SPTI_IsTable(L, -1), 0);
    EXPECT_EQ(SYSDT_SPTI_IsNumber(L, 1), 0);
    EXPECT_EQ(SYSDT_SPTI_IsString(L, 0), 0);
    EXPECT_EQ(SYSDT_SPTI_ToInt64(L, -5), 0);
    SYSDT_SPTI_CreateTable(L, -1, -1);
    EXPECT_EQ(SYSDT_SPTI_IsTable(L, -1), 1);

    SYSDT_SPTI_CreateTable(nullptr, 0, 0);
    SYSDT_SPTI_PushString(nullptr, "x");
    SYSDT_SPTI_GetField(nullptr, 1, "x");
    SYSDT_SPTI_SetField(nullptr, 1, "x");
    SYSDT_SPTI_GetTable(nullptr, 1);
    SYSDT_SPTI_SetTable(nullptr, 1);
    SYSDT_SPTI_Pop(nullptr, 1);
    EXPECT_EQ(SYSDT_SPTI_GetTop(nullptr), 0);
    EXPECT_EQ(SYSDT_SPTI_IsTable(nullptr, 1), 0);
    EXPECT_EQ(SYSDT_SPTI_ToString(nullptr, 1), nullptr);
    CloseLua(nullptr);
}

// Lua gives a caller 20 free slots; the wrapper asks for more when it needs them.
TEST_F(Lua, TheStackGrows)
{
    for (uint32_t value = 0; value < 10000; ++value) {
        SYSDT_SPTI_PushUInt(L, value);
    }
    EXPECT_EQ(Top(), 10000);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(L, 10000), 9999u);
}

} // namespace
