#include "host/packed_list.h"

namespace bgp {

uint32_t PackedListLuaSet(const PackedListRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName,
                          uint32_t length, const void *value)
{
    if (const uint32_t code = LuaJudge(L, fieldName, value, length, rule.Length()); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_CreateTable(L, 0, 1);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    SYSDT_SPTI_CreateTable(L, static_cast<int32_t>(rule.count), 0);
    const int32_t array = SYSDT_SPTI_GetTop(L);
    for (uint32_t i = 0; i < rule.count; ++i) {
        SYSDT_SPTI_PushUInt(L, i + 1);
        SYSDT_SPTI_CreateTable(L, 0, static_cast<int32_t>(rule.entry.FieldCount));
        LuaSetAll(L, SYSDT_SPTI_GetTop(L), rule.entry, static_cast<const uint8_t *>(value) + i * kPackedEntrySize);
        SYSDT_SPTI_SetTable(L, array);
    }
    SYSDT_SPTI_SetField(L, table, rule.luaArray);
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

namespace {

// The element on top of the stack to an entry, no questions asked; drops the element and its fields.
void ReadElement(lua_State *L, const BgpLayout &layout, uint8_t *entry)
{
    const int32_t element = SYSDT_SPTI_GetTop(L);
    for (uint32_t i = 0; i < layout.FieldCount; ++i) {
        const BgpField &field = layout.Fields[i];
        SYSDT_SPTI_GetField(L, element, field.Name);
        StoreLow(entry + field.Offset, SYSDT_SPTI_ToUInt(L, -1), field.Width);
    }
    SYSDT_SPTI_Pop(L, static_cast<int32_t>(layout.FieldCount + 1));
}

} // namespace

uint32_t PackedListLuaGet(const PackedListRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName,
                          uint32_t length, void *value)
{
    int32_t table = 0;
    if (const uint32_t code = LuaOpen(L, tableIndex, fieldName, length, rule.Length(), value, &table); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_GetField(L, table, rule.luaArray);
    const int32_t array = SYSDT_SPTI_GetTop(L);
    if (SYSDT_SPTI_IsTable(L, array) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    for (uint32_t i = 0; i < rule.count; ++i) {
        SYSDT_SPTI_PushUInt(L, i + 1);
        SYSDT_SPTI_GetTable(L, array);
        ReadElement(L, rule.entry, static_cast<uint8_t *>(value) + i * kPackedEntrySize);
    }
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}

void SwapPackedList(const PackedListRule &rule, void *value)
{
    for (uint32_t i = 0; i < rule.count; ++i) {
        SwapFields(rule.entry, static_cast<uint8_t *>(value) + i * kPackedEntrySize);
    }
}

} // namespace bgp
