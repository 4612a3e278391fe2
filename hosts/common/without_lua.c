/*
 * For a host without an interpreter of Lua: a stack on which there is nothing and onto which nothing goes. What LuaSet
 * makes is dropped; LuaGet finds no table and refuses.
 */
#include "bgp_host_services.h"
#include "replaceable.h"

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wunused-parameter" /* nobody is at home */
#endif

BGP_REPLACEABLE void SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots) {}

BGP_REPLACEABLE int32_t SYSDT_SPTI_GetTop(lua_State *L)
{
    return 0;
}

BGP_REPLACEABLE void SYSDT_SPTI_SetField(lua_State *L, int32_t index, const char *key) {}

BGP_REPLACEABLE void SYSDT_SPTI_GetField(lua_State *L, int32_t index, const char *key) {}

BGP_REPLACEABLE void SYSDT_SPTI_GetTable(lua_State *L, int32_t index) {}

BGP_REPLACEABLE void SYSDT_SPTI_SetTable(lua_State *L, int32_t index) {}

BGP_REPLACEABLE int32_t SYSDT_SPTI_IsTable(lua_State *L, int32_t index)
{
    return 0;
}

BGP_REPLACEABLE int32_t SYSDT_SPTI_IsNumber(lua_State *L, int32_t index)
{
    return 0;
}

BGP_REPLACEABLE int32_t SYSDT_SPTI_IsString(lua_State *L, int32_t index)
{
    return 0;
}

BGP_REPLACEABLE void SYSDT_SPTI_PushUInt(lua_State *L, uint32_t value) {}

BGP_REPLACEABLE void SYSDT_SPTI_PushInt64(lua_State *L, int64_t value) {}

BGP_REPLACEABLE void SYSDT_SPTI_PushString(lua_State *L, const char *text) {}

BGP_REPLACEABLE void SYSDT_SPTI_PushLString(lua_State *L, const char *bytes, size_t length) {}

BGP_REPLACEABLE uint32_t SYSDT_SPTI_ToUInt(lua_State *L, int32_t index)
{
    return 0;
}

BGP_REPLACEABLE int64_t SYSDT_SPTI_ToInt64(lua_State *L, int32_t index)
{
    return 0;
}

BGP_REPLACEABLE const char *SYSDT_SPTI_ToString(lua_State *L, int32_t index)
{
    return NULL;
}

BGP_REPLACEABLE const char *SYSDT_SPTI_ToLString(lua_State *L, int32_t index, size_t *length)
{
    if (length != NULL) {
        *length = 0;
    }
    return NULL;
}

BGP_REPLACEABLE uint32_t SYSDT_SPTI_ObjLen(lua_State *L, int32_t index)
{
    return 0;
}

BGP_REPLACEABLE void SYSDT_SPTI_Pop(lua_State *L, int32_t count) {}
