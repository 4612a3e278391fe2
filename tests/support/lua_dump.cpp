#include "support/lua_dump.h"

#include <lua.hpp>

#include <cstdint>
#include <cstdio>
#include <map>

namespace bgp::test {
namespace {

std::string DumpText(lua_State *L, int index)
{
    size_t length = 0;
    const char *text = lua_tolstring(L, index, &length);
    std::string dumped = "\"";
    for (size_t i = 0; i < length; ++i) {
        const auto byte = static_cast<uint8_t>(text[i]);
        char code[8];
        std::snprintf(code, sizeof code, byte < 0x20 || byte > 0x7e ? "\\x%02x" : "%c", byte);
        dumped += code;
    }
    return dumped + '"';
}

// The elements from 1 on; gives their number.
lua_Integer DumpArray(lua_State *L, int index, std::string &dumped)
{
    for (lua_Integer i = 1;; ++i) {
        const bool there = lua_rawgeti(L, index, i) != LUA_TNIL;
        if (there) {
            dumped += (i == 1 ? "" : ",") + DumpLua(L, lua_gettop(L));
        }
        lua_pop(L, 1);
        if (!there) {
            return i - 1;
        }
    }
}

std::string DumpTable(lua_State *L, int index)
{
    std::string array;
    const lua_Integer count = DumpArray(L, index, array);
    std::map<std::string, std::string> record;
    for (lua_pushnil(L); lua_next(L, index) != 0; lua_pop(L, 1)) {
        const int key = lua_gettop(L) - 1;
        if (lua_type(L, key) == LUA_TSTRING) {
            record[lua_tostring(L, key)] = DumpLua(L, key + 1);
        } else if (lua_isinteger(L, key) == 0 || lua_tointeger(L, key) < 1 || lua_tointeger(L, key) > count) {
            record['[' + DumpLua(L, key) + ']'] = DumpLua(L, key + 1);
        }
    }
    std::string fields;
    for (const auto &[key, value] : record) {
        fields += (fields.empty() ? "" : ", ") + key + '=' + value;
    }
    return '{' + fields + (fields.empty() || array.empty() ? "" : ", ") + array + '}';
}

} // namespace

std::string DumpLua(lua_State *L, int index)
{
    switch (lua_type(L, index)) {
    case LUA_TNUMBER:
        return lua_isinteger(L, index) != 0 ? std::to_string(lua_tointeger(L, index))
                                            : std::to_string(lua_tonumber(L, index));
    case LUA_TSTRING:
        return DumpText(L, index);
    case LUA_TTABLE:
        return DumpTable(L, index);
    default:
        return luaL_typename(L, index);
    }
}

} // namespace bgp::test
