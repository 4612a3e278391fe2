#include "fuzz/lua_edits.h"

#include "bgp_standalone_host.hpp"

#include <lua.hpp>

#include <cstring>
#include <string>
#include <vector>

namespace bgp::fuzz {
namespace {

constexpr int kLargestArray = 40;
constexpr size_t kLongestText = 255;

// The keys of the table on top of the stack, in an order that does not depend on where Lua put them.
struct Key {
    bool isNumber;
    lua_Integer number;
    std::string text;

    friend bool operator<(const Key &left, const Key &right)
    {
        if (left.isNumber != right.isNumber) {
            return left.isNumber;
        }
        return left.isNumber ? left.number < right.number : left.text < right.text;
    }
};

std::vector<Key> KeysOf(lua_State *L)
{
    std::vector<Key> keys;
    for (lua_pushnil(L); lua_next(L, -2) != 0; lua_pop(L, 1)) {
        if (lua_isinteger(L, -2) != 0) {
            keys.push_back({true, lua_tointeger(L, -2), {}});
        } else if (lua_type(L, -2) == LUA_TSTRING) {
            keys.push_back({false, 0, lua_tostring(L, -2)});
        }
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

void PushKey(lua_State *L, const Key &key)
{
    if (key.isNumber) {
        lua_pushinteger(L, key.number);
    } else {
        lua_pushlstring(L, key.text.data(), key.text.size());
    }
}

void PushArray(lua_State *L, Input &input)
{
    const int count = input.Byte() % kLargestArray;
    lua_createtable(L, count, 0);
    for (int i = 1; i <= count; ++i) {
        lua_pushinteger(L, static_cast<lua_Integer>(input.Number(2)));
        lua_rawseti(L, -2, i);
    }
}

void PushDouble(lua_State *L, Input &input)
{
    const uint64_t bits = input.Number(8);
    double number;
    std::memcpy(&number, &bits, sizeof number);
    lua_pushnumber(L, number);
}

void PushText(lua_State *L, Input &input)
{
    const std::string text = input.Take(input.Byte() % (kLongestText + 1));
    lua_pushlstring(L, text.data(), text.size());
}

int DoNothing(lua_State *)
{
    return 0;
}

// A value of some kind, what a script might put there.
void PushValue(lua_State *L, uint8_t kind, Input &input)
{
    static char anything;
    switch (kind) {
    case 0:
        return lua_pushnil(L);
    case 1:
        return lua_pushboolean(L, input.Byte() & 1);
    case 2:
        return lua_pushinteger(L, static_cast<lua_Integer>(input.Number(1)));
    case 3:
        return lua_pushinteger(L, static_cast<lua_Integer>(input.Number(4)));
    case 4:
        return lua_pushinteger(L, static_cast<lua_Integer>(input.Number(8)));
    case 5:
        return PushDouble(L, input);
    case 6:
        lua_pushstring(L, std::to_string(input.Number(5)).c_str());
        return;
    case 7:
        return PushText(L, input);
    case 8:
        return PushArray(L, input);
    case 9:
        return lua_createtable(L, 0, 0);
    case 10:
        return lua_pushcfunction(L, DoNothing);
    default:
        return lua_pushlightuserdata(L, &anything);
    }
}

constexpr uint8_t kKinds = 12;

// One edit of the table on top of the stack, which belongs to the table at `root`. True when a level was left or
// entered: another table is on top then.
void Edit(lua_State *L, int root, Input &input)
{
    const uint8_t place = input.Byte();
    const uint8_t deed = input.Byte();
    if (deed >= 240) {
        lua_settop(L, root);
        return;
    }
    const std::vector<Key> keys = KeysOf(L);
    // One place behind the last key adds an element.
    const size_t at = place % (keys.size() + 1);
    PushKey(L, at < keys.size() ? keys[at] : Key{true, static_cast<lua_Integer>(lua_rawlen(L, -1)) + 1, {}});
    if (deed >= 200) {
        constexpr int kDeepest = 8;
        lua_rawget(L, -2);
        if (lua_type(L, -1) != LUA_TTABLE || lua_gettop(L) > root + kDeepest) {
            lua_pop(L, 1);
        }
        return;
    }
    PushValue(L, deed % kKinds, input);
    lua_rawset(L, -3);
}

} // namespace

lua_State *FreshLua()
{
    struct Interpreter {
        lua_State *L = bgp::standalone::NewLua();
        ~Interpreter() { bgp::standalone::CloseLua(L); }
    };
    thread_local Interpreter interpreter;
    constexpr int kBelow = 24; // slots that are not the plug-in's, for readers that pop more than they pushed
    lua_State *L = interpreter.L;
    lua_settop(L, 0);
    lua_settop(L, kBelow);
    lua_newtable(L);
    return L;
}

void EditField(lua_State *L, Input &input)
{
    const int top = lua_gettop(L);
    lua_pushstring(L, "v");
    lua_rawget(L, top);
    if (lua_type(L, -1) == LUA_TTABLE) {
        const int root = lua_gettop(L);
        while (input.left != 0) {
            Edit(L, root, input);
        }
    } else if (input.left != 0) {
        lua_pop(L, 1);
        lua_pushstring(L, "v");
        PushValue(L, input.Byte() % kKinds, input);
        lua_rawset(L, top);
    }
    lua_settop(L, top);
}

} // namespace bgp::fuzz
