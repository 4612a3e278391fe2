// The Lua stack.
//
// A plug-in calls these outside of any protected call, where an error of Lua would end the process. So nothing here may
// raise one: indexes are looked at before they are used, tables are accessed raw, and what Lua would refuse is dropped.
#include "bgp_host_services.h"
#include "replaceable.h"

#include <algorithm>

extern "C" {
#include <lua.h>
}

namespace {

constexpr int kNoSlot = 0; // no index of Lua
constexpr int kSlotsNeeded = 2;
constexpr int32_t kLargestHint = 1 << 16; // table sizes are hints; a wild one shall not exhaust memory

// The index from the bottom; kNoSlot when the stack holds no such slot.
int Slot(lua_State *L, int32_t index)
{
    if (L == nullptr) {
        return kNoSlot;
    }
    if (index == LUA_REGISTRYINDEX) {
        return index;
    }
    const int top = lua_gettop(L);
    if (index < 0) {
        return index >= -top ? top + 1 + index : kNoSlot;
    }
    return index <= top ? index : kNoSlot;
}

int TypeAt(lua_State *L, int32_t index)
{
    const int slot = Slot(L, index);
    return slot == kNoSlot ? LUA_TNONE : lua_type(L, slot);
}

bool MayPush(lua_State *L)
{
    return L != nullptr && lua_checkstack(L, kSlotsNeeded) != 0;
}

// Whether Lua takes the value as a key: not nil, and not the number that is none.
bool IsKey(lua_State *L, int slot)
{
    if (lua_type(L, slot) == LUA_TNUMBER) {
        return lua_rawequal(L, slot, slot) != 0;
    }
    return lua_type(L, slot) != LUA_TNIL;
}

} // namespace

BGP_REPLACEABLE void SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots)
{
    if (MayPush(L)) {
        lua_createtable(L, std::clamp(arraySlots, 0, kLargestHint), std::clamp(recordSlots, 0, kLargestHint));
    }
}

BGP_REPLACEABLE int32_t SYSDT_SPTI_GetTop(lua_State *L)
{
    return L == nullptr ? 0 : lua_gettop(L);
}

BGP_REPLACEABLE void SYSDT_SPTI_SetField(lua_State *L, int32_t index, const char *key)
{
    if (!MayPush(L) || lua_gettop(L) == 0) {
        return;
    }
    const int table = Slot(L, index);
    if (table == kNoSlot || key == nullptr || lua_type(L, table) != LUA_TTABLE) {
        lua_pop(L, 1);
        return;
    }
    lua_pushstring(L, key);
    lua_insert(L, -2);
    lua_rawset(L, table);
}

BGP_REPLACEABLE void SYSDT_SPTI_GetField(lua_State *L, int32_t index, const char *key)
{
    if (!MayPush(L)) {
        return;
    }
    const int table = Slot(L, index);
    if (table == kNoSlot || key == nullptr || lua_type(L, table) != LUA_TTABLE) {
        lua_pushnil(L);
        return;
    }
    lua_pushstring(L, key);
    lua_rawget(L, table);
}

BGP_REPLACEABLE void SYSDT_SPTI_GetTable(lua_State *L, int32_t index)
{
    if (!MayPush(L) || lua_gettop(L) == 0) {
        return;
    }
    const int table = Slot(L, index);
    if (table != kNoSlot && lua_type(L, table) == LUA_TTABLE) {
        lua_rawget(L, table);
        return;
    }
    lua_pop(L, 1);
    lua_pushnil(L);
}

BGP_REPLACEABLE void SYSDT_SPTI_SetTable(lua_State *L, int32_t index)
{
    if (L == nullptr || lua_gettop(L) < 2) {
        return;
    }
    const int table = Slot(L, index);
    if (table != kNoSlot && lua_type(L, table) == LUA_TTABLE && IsKey(L, -2)) {
        lua_rawset(L, table);
    } else {
        lua_pop(L, 2);
    }
}

BGP_REPLACEABLE int32_t SYSDT_SPTI_IsTable(lua_State *L, int32_t index)
{
    return TypeAt(L, index) == LUA_TTABLE;
}

BGP_REPLACEABLE int32_t SYSDT_SPTI_IsNumber(lua_State *L, int32_t index)
{
    const int slot = Slot(L, index);
    return slot != kNoSlot && lua_isnumber(L, slot) != 0;
}

BGP_REPLACEABLE int32_t SYSDT_SPTI_IsString(lua_State *L, int32_t index)
{
    const int slot = Slot(L, index);
    return slot != kNoSlot && lua_isstring(L, slot) != 0;
}

BGP_REPLACEABLE void SYSDT_SPTI_PushUInt(lua_State *L, uint32_t value)
{
    SYSDT_SPTI_PushInt64(L, value);
}

BGP_REPLACEABLE void SYSDT_SPTI_PushInt64(lua_State *L, int64_t value)
{
    if (MayPush(L)) {
        lua_pushinteger(L, value);
    }
}

BGP_REPLACEABLE void SYSDT_SPTI_PushString(lua_State *L, const char *text)
{
    if (MayPush(L)) {
        lua_pushstring(L, text);
    }
}

BGP_REPLACEABLE void SYSDT_SPTI_PushLString(lua_State *L, const char *bytes, size_t length)
{
    if (!MayPush(L)) {
        return;
    }
    if (bytes == nullptr && length != 0) {
        lua_pushnil(L);
    } else {
        lua_pushlstring(L, bytes, length);
    }
}

BGP_REPLACEABLE uint32_t SYSDT_SPTI_ToUInt(lua_State *L, int32_t index)
{
    return static_cast<uint32_t>(SYSDT_SPTI_ToInt64(L, index));
}

BGP_REPLACEABLE int64_t SYSDT_SPTI_ToInt64(lua_State *L, int32_t index)
{
    const int slot = Slot(L, index);
    return slot == kNoSlot ? 0 : lua_tointegerx(L, slot, nullptr);
}

BGP_REPLACEABLE const char *SYSDT_SPTI_ToString(lua_State *L, int32_t index)
{
    return SYSDT_SPTI_ToLString(L, index, nullptr);
}

BGP_REPLACEABLE const char *SYSDT_SPTI_ToLString(lua_State *L, int32_t index, size_t *length)
{
    const int slot = Slot(L, index);
    if (slot != kNoSlot) {
        return lua_tolstring(L, slot, length);
    }
    if (length != nullptr) {
        *length = 0;
    }
    return nullptr;
}

BGP_REPLACEABLE uint32_t SYSDT_SPTI_ObjLen(lua_State *L, int32_t index)
{
    const int slot = Slot(L, index);
    return slot == kNoSlot ? 0 : static_cast<uint32_t>(lua_rawlen(L, slot));
}

BGP_REPLACEABLE void SYSDT_SPTI_Pop(lua_State *L, int32_t count)
{
    if (L != nullptr) {
        lua_pop(L, std::clamp(count, 0, lua_gettop(L)));
    }
}
