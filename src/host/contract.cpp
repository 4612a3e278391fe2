#include "host/contract.h"

#include "host/text.h"
#include "host/type.h"

namespace bgp {

// ---------------------------------------------------------------------------------------------------------- FormatIn

namespace {

// An accepted text has no reason, whatever was tried before it was accepted.
uint32_t Answer(BgpReason &reason, uint32_t code)
{
    if (code == DT_OK) {
        reason = {};
    }
    reason.Code = code;
    return code;
}

} // namespace

uint32_t Explain(const FormatInRule &rule, const DataTypeRequest &request, const char *text, Why &why)
{
    if (const uint32_t code = JudgeMode(rule.modes, request.FormatMode); code != DT_OK) {
        Refuse(&why, {text, 0}, kNoTextMode, request.FormatMode);
        return code;
    }
    uint8_t value[kLargestValue];
    return ReadValue(rule, request, text, value, &why) ? DT_OK : rule.refusal;
}

uint32_t Explain(const FormatInRule *rule, const DataTypeRequest &request, const char *text, BgpReason &reason)
{
    Why why{&reason, text, 0};
    if (rule == nullptr) {
        Refuse(&why, {text, 0}, kNotTyped);
        return Answer(reason, DT_ERR_FAIL);
    }
    return Answer(reason, Explain(*rule, request, text, why));
}

uint32_t Explain(const Type &type, const DataTypeRequest &request, const char *text, BgpRefusal &refusal)
{
    return type.explain != nullptr ? Answer(refusal.Reason, type.explain(request, text, refusal))
                                   : Explain(type.in, request, text, refusal.Reason);
}

// --------------------------------------------------------------------------------------------------------- FormatOut

uint32_t CopyRaw(Memory memory, const DataTypeRequest &request, uint32_t length, const void *value, Result result)
{
    void *buffer = *result.buffer != nullptr ? *result.buffer : Allocate(memory, request, length);
    if (buffer == nullptr) {
        *result.length = 0;
        *result.buffer = nullptr;
        return DT_ERR_FAIL;
    }
    std::memcpy(buffer, value, length);
    *result.typeId = DT_TYPE_RAW;
    *result.length = static_cast<uint16_t>(length);
    *result.buffer = buffer;
    return DT_OK;
}

// ------------------------------------------------------------------------------------------- Check, Help and Compare

uint32_t CheckLength(const void *value, uint32_t length, uint32_t expected)
{
    if (value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return length == expected ? DT_OK : DT_ERR_LENGTH;
}

uint32_t Help(const HelpRule &rule, const DataTypeRequest *request, const char *typedText, const uint32_t *helpArgument,
              DataTypeHelpInfo *helpInfo)
{
    if (request == nullptr || helpArgument == nullptr || helpInfo == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (request->FormatMode > 6 || (rule.modes & 1u << request->FormatMode) == 0) {
        return DT_OK;
    }
    if (helpArgument[0] == 0 || helpArgument[1] == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    if (rule.admits != nullptr) {
        if (const uint32_t code = rule.admits(typedText); code != DT_OK) {
            return code;
        }
    }
    const uint32_t word = helpArgument[rule.passesFirstWord ? 0 : 1];
    if (const uint32_t code = SYSDT_InitHelpInfo(request->MemoryHandle, helpInfo, 1, word); code != DT_OK) {
        return rule.hidesHostCode ? DT_OK : code;
    }
    const auto size = static_cast<uint32_t>(std::strlen(rule.text) + 1);
    auto *text = static_cast<char *>(Allocate(rule.memory, *request, size));
    if (text == nullptr) {
        SYSDT_ClearHelpInfo(helpInfo);
        return DT_ERR_NO_MEMORY;
    }
    if (strcpy_s(text, size, rule.text) != 0) {
        SYS_DataTypeFree(text);
        return DT_ERR_INVALID_PARAM;
    }
    helpInfo->Entries[0].Text = text;
    return DT_OK;
}

int32_t CompareBytes(const void *left, const void *right, uint32_t length)
{
    const int32_t order = QOV_MemCmp(left, right, length);
    return (order > 0) - (order < 0);
}

// ------------------------------------------------------------------------------------------------ Lua and byte order

namespace {

void PushNumber(lua_State *L, const uint8_t *at, uint32_t width)
{
    const uint64_t number = LoadLow(at, width);
    if (width > sizeof(uint32_t)) {
        SYSDT_SPTI_PushInt64(L, static_cast<int64_t>(number));
    } else {
        SYSDT_SPTI_PushUInt(L, static_cast<uint32_t>(number));
    }
}

// The number on top of the stack into a field of `width` bytes, of which the script decides the low `keeps`.
uint32_t ReadNumber(lua_State *L, uint8_t *at, uint32_t width, uint32_t keeps)
{
    if (SYSDT_SPTI_IsNumber(L, -1) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    uint64_t number =
        width > sizeof(uint32_t) ? static_cast<uint64_t>(SYSDT_SPTI_ToInt64(L, -1)) : SYSDT_SPTI_ToUInt(L, -1);
    if (keeps != 0 && keeps < width) {
        number &= (uint64_t{1} << (8 * keeps)) - 1;
    }
    StoreLow(at, number, width);
    return DT_OK;
}

} // namespace

void LuaPushArray(lua_State *L, const uint8_t *at, uint32_t count, uint32_t width)
{
    SYSDT_SPTI_CreateTable(L, static_cast<int32_t>(count), 0);
    const int32_t array = SYSDT_SPTI_GetTop(L);
    for (uint32_t i = 0; i < count; ++i) {
        SYSDT_SPTI_PushUInt(L, i + 1);
        PushNumber(L, at + i * width, width);
        SYSDT_SPTI_SetTable(L, array);
    }
}

uint32_t LuaReadArray(lua_State *L, int32_t array, uint8_t *at, uint32_t count, uint32_t width)
{
    for (uint32_t i = 0; i < count; ++i) {
        SYSDT_SPTI_PushUInt(L, i + 1);
        SYSDT_SPTI_GetTable(L, array);
        if (const uint32_t code = ReadNumber(L, at + i * width, width, width); code != DT_OK) {
            return code;
        }
    }
    return DT_OK;
}

void LuaSetOne(lua_State *L, int32_t table, const BgpField &field, const uint8_t *value)
{
    const uint8_t *at = value + field.Offset;
    if (field.Count > 1) {
        LuaPushArray(L, at, field.Count, field.Width);
    } else {
        PushNumber(L, at, field.Width);
    }
    SYSDT_SPTI_SetField(L, table, field.Name);
}

uint32_t LuaGetOne(lua_State *L, int32_t table, const BgpField &field, uint8_t *value)
{
    uint8_t *at = value + field.Offset;
    SYSDT_SPTI_GetField(L, table, field.Name);
    uint32_t code = DT_OK;
    if (field.Count <= 1) {
        code = ReadNumber(L, at, field.Width, field.LuaKeeps);
    } else {
        const int32_t array = SYSDT_SPTI_GetTop(L);
        code = SYSDT_SPTI_IsTable(L, array) != 0 ? LuaReadArray(L, array, at, field.Count, field.Width)
                                                 : DT_ERR_INVALID_PARAM;
    }
    if (code == DT_OK && field.LuaPops != 0) {
        SYSDT_SPTI_Pop(L, field.LuaPops);
    }
    return code;
}

void LuaSetAll(lua_State *L, int32_t table, const BgpLayout &layout, const uint8_t *value)
{
    for (uint32_t i = 0; i < layout.FieldCount; ++i) {
        LuaSetOne(L, table, layout.Fields[i], value);
    }
}

uint32_t LuaGetAll(lua_State *L, int32_t table, const BgpLayout &layout, uint8_t *value)
{
    for (uint32_t i = 0; i < layout.FieldCount; ++i) {
        if (const uint32_t code = LuaGetOne(L, table, layout.Fields[i], value); code != DT_OK) {
            return code;
        }
    }
    return DT_OK;
}

uint32_t LuaJudge(const lua_State *L, const char *fieldName, const void *value, uint32_t length, uint32_t expected)
{
    if (L == nullptr || fieldName == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return length < expected ? DT_ERR_INVALID_PARAM : DT_OK;
}

uint32_t LuaSet(const LuaRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                const void *value)
{
    if (const uint32_t code = LuaJudge(L, fieldName, value, length, rule.layout.Length); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_CreateTable(L, 0, static_cast<int32_t>(rule.layout.FieldCount));
    LuaSetAll(L, SYSDT_SPTI_GetTop(L), rule.layout, static_cast<const uint8_t *>(value));
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

uint32_t LuaOpen(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length, uint32_t expected,
                 const void *value, int32_t *table)
{
    if (const uint32_t code = LuaJudge(L, fieldName, value, length, expected); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_GetField(L, tableIndex, fieldName);
    *table = SYSDT_SPTI_GetTop(L);
    return SYSDT_SPTI_IsTable(L, *table) != 0 ? DT_OK : DT_ERR_INVALID_PARAM;
}

uint32_t LuaGet(const LuaRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                void *value)
{
    int32_t table = 0;
    if (const uint32_t code = LuaOpen(L, tableIndex, fieldName, length, rule.layout.Length, value, &table);
        code != DT_OK) {
        return code;
    }
    if (const uint32_t code = LuaGetAll(L, table, rule.layout, static_cast<uint8_t *>(value)); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, rule.pops);
    return DT_OK;
}

namespace {

bool IsSwapped(const BgpField &field)
{
    return field.Kind == BGP_FIELD_NUMBER || field.Kind == BGP_FIELD_IPV4;
}

} // namespace

void SwapFields(const BgpLayout &layout, void *value)
{
    auto *bytes = static_cast<uint8_t *>(value);
    for (uint32_t i = 0; i < layout.FieldCount; ++i) {
        const BgpField &field = layout.Fields[i];
        for (uint32_t element = 0; IsSwapped(field) && element < field.Count; ++element) {
            Reverse(bytes + field.Offset + element * field.Width, field.Width);
        }
    }
}

} // namespace bgp
