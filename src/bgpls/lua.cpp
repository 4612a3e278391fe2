// BGPLSPREFIX to and from Lua: a table with one key per field of the record, walked along the rows of record.h.
//
//   kind               Lua
//   word, byte         number
//   identifier         {hUint32, lUint32}
//   AS number          {asNumValue, asType}
//   IPv6 address, SID  array of 16 numbers
//   address            {ipv4Addr, ipv6Addr = array of 16 numbers, flag}
//   IGP router id      string of 8 bytes, and its length as a number beside it
//   prefix             nested table "Prefix"
#include "bgpls/record.h"

#include "host/bytes.h"
#include "host/contract.h"

#include <cstddef>

namespace bgp {

namespace {

constexpr char kPrefixKey[] = "Prefix";
constexpr int32_t kTop = -1;

// ------------------------------------------------------------------------------------------------------------ LuaSet

void SetNumber(lua_State *L, int32_t table, const char *name, uint32_t number)
{
    SYSDT_SPTI_PushUInt(L, number);
    SYSDT_SPTI_SetField(L, table, name);
}

void SetField(lua_State *L, int32_t table, const LsField &field, const uint8_t *record)
{
    const uint8_t *at = record + field.offset;
    switch (field.kind) {
    case LsKind::kWord:
    case LsKind::kDotted:
        SYSDT_SPTI_PushUInt(L, Load<uint32_t>(at));
        break;
    case LsKind::kByte:
        SYSDT_SPTI_PushUInt(L, *at);
        break;
    case LsKind::kIdentifier:
        SYSDT_LsPrefixLuaSet_Identifier(L, at);
        break;
    case LsKind::kAs:
        SYSDT_LsPrefixLuaSet_AsNum(L, at);
        break;
    case LsKind::kIpv6:
        SYSDT_LsPrefixLuaSet_Sysipv6(L, at);
        break;
    case LsKind::kAddress:
        SYSDT_LsPrefixLuaSet_Sysipv4ipv6(L, at);
        break;
    case LsKind::kIgpArea:
        SYSDT_LsPrefixLuaSet_LocIgpRtId(L, table, field.lengthName, Load<uint32_t>(record + kLsProtocolAt), at);
        break;
    }
    SYSDT_SPTI_SetField(L, table, field.name);
}

void SetFields(lua_State *L, int32_t table, const LsNlri &nlri, const uint8_t *record)
{
    int32_t into = table;
    for (uint32_t i = 0; i < nlri.fieldCount; ++i) {
        if (nlri.fields[i].inPrefix && into == table) {
            SYSDT_SPTI_CreateTable(L, 0, 2);
            into = SYSDT_SPTI_GetTop(L);
        }
        SetField(L, into, nlri.fields[i], record);
    }
    if (into != table) {
        SYSDT_SPTI_SetField(L, table, kPrefixKey);
    }
}

// ------------------------------------------------------------------------------------------------------------ LuaGet

// The number on top of the stack, which is dropped.
bool TakeNumber(lua_State *L, uint32_t *number)
{
    if (SYSDT_SPTI_IsNumber(L, kTop) == 0) {
        return false;
    }
    *number = SYSDT_SPTI_ToUInt(L, kTop);
    SYSDT_SPTI_Pop(L, 1);
    return true;
}

bool GetNumber(lua_State *L, int32_t table, const char *name, uint32_t *number)
{
    SYSDT_SPTI_GetField(L, table, name);
    return TakeNumber(L, number);
}

// Fetches a nested table, which stays on the stack.
bool OpenTable(lua_State *L, int32_t table, const char *name, int32_t *nested)
{
    SYSDT_SPTI_GetField(L, table, name);
    *nested = SYSDT_SPTI_GetTop(L);
    return SYSDT_SPTI_IsTable(L, *nested) != 0;
}

// All bytes of the string, as many as the area holds. The length beside it must be a number and is not used.
bool GetIgpArea(lua_State *L, int32_t table, const LsField &field, uint8_t *at)
{
    SYSDT_SPTI_GetField(L, table, field.name);
    size_t length = 0;
    const char *bytes = SYSDT_SPTI_IsString(L, kTop) != 0 ? SYSDT_SPTI_ToLString(L, kTop, &length) : nullptr;
    if (bytes == nullptr) {
        return false;
    }
    std::memcpy(at, bytes, length < kLsIgpAreaSize ? length : kLsIgpAreaSize);
    SYSDT_SPTI_Pop(L, 1);
    uint32_t unused = 0;
    return GetNumber(L, table, field.lengthName, &unused);
}

bool GetWord(lua_State *L, int32_t table, const LsField &field, uint8_t *at)
{
    uint32_t number = 0;
    if (field.reader == LsReader::kStored) {
        number = SYSDT_LsPrefixLuaGet_Uinteger(L, table, field.name);
    } else if (!GetNumber(L, table, field.name, &number)) {
        return false;
    }
    StoreLow(at, number, FactsOf(field.kind).bytes);
    return true;
}

bool GetField(lua_State *L, int32_t table, const LsField &field, uint8_t *record)
{
    uint8_t *at = record + field.offset;
    switch (field.kind) {
    case LsKind::kWord:
    case LsKind::kDotted:
    case LsKind::kByte:
        return GetWord(L, table, field, at);
    case LsKind::kIdentifier:
        return SYSDT_LsPrefixLuaGet_Identifier(L, table, field.name, at) == DT_OK;
    case LsKind::kAs:
        return SYSDT_LsPrefixLuaGet_AsNum(L, table, field.name, at) == DT_OK;
    case LsKind::kIpv6:
        return SYSDT_LsPrefixLuaGet_Sysipv6(L, table, field.name, at) == DT_OK;
    case LsKind::kAddress:
        return SYSDT_LsPrefixLuaGet_Sysipv4ipv6(L, table, field.name, at) == DT_OK;
    case LsKind::kIgpArea:
        return GetIgpArea(L, table, field, at);
    }
    return false;
}

// All fields behind the NLRI type, up to the first that fails.
bool GetFields(lua_State *L, int32_t table, const LsNlri &nlri, uint8_t *record)
{
    int32_t from = table;
    for (uint32_t i = 1; i < nlri.fieldCount; ++i) {
        if (nlri.fields[i].inPrefix && from == table && !OpenTable(L, table, kPrefixKey, &from)) {
            return false;
        }
        if (!GetField(L, from, nlri.fields[i], record)) {
            return false;
        }
    }
    return true;
}

} // namespace

} // namespace bgp

uint32_t SYSDT_LSPrefixLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                              const void *value)
{
    if (const uint32_t code = bgp::LuaJudge(L, fieldName, value, length, bgp::kLsRecordSize); code != DT_OK) {
        return code;
    }
    const auto *record = static_cast<const uint8_t *>(value);
    const auto type = bgp::Load<uint32_t>(record + bgp::kLsTypeAt);
    const bgp::LsNlri *nlri = bgp::FindLsNlri(type);
    SYSDT_SPTI_CreateTable(L, 0, nlri != nullptr ? nlri->luaSlots : 1);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    if (nlri != nullptr) {
        bgp::SetFields(L, table, *nlri, record);
    } else {
        bgp::SetNumber(L, table, bgp::kLsNodeRows[0].name, type);
    }
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

uint32_t SYSDT_LSPrefixLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                              void *outValue)
{
    int32_t table = 0;
    if (const uint32_t code = bgp::LuaOpen(L, tableIndex, fieldName, length, bgp::kLsRecordSize, outValue, &table);
        code != DT_OK) {
        return code;
    }
    auto *record = static_cast<uint8_t *>(outValue);
    uint32_t type = 0;
    if (!bgp::GetNumber(L, table, bgp::kLsNodeRows[0].name, &type)) {
        return DT_ERR_INVALID_PARAM;
    }
    bgp::Store(record + bgp::kLsTypeAt, type);
    const bgp::LsNlri *nlri = bgp::FindLsNlri(type);
    if (nlri != nullptr && !bgp::GetFields(L, table, *nlri, record) && !nlri->silent) {
        return DT_ERR_INVALID_PARAM;
    }
    SYSDT_SPTI_Pop(L, SYSDT_SPTI_GetTop(L) - table + 1);
    return DT_OK;
}

// ------------------------------------------------------------------------------------------------------------ pieces

void SYSDT_LsPrefixLuaSet_Identifier(lua_State *L, const void *identifier8)
{
    const auto identifier = bgp::Load<uint64_t>(identifier8);
    SYSDT_SPTI_CreateTable(L, 0, 2);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    bgp::SetNumber(L, table, "hUint32", static_cast<uint32_t>(identifier >> 32));
    bgp::SetNumber(L, table, "lUint32", static_cast<uint32_t>(identifier));
}

void SYSDT_LsPrefixLuaSet_AsNum(lua_State *L, const void *as8)
{
    const auto as = bgp::Load<BgpLsAsNumber>(as8);
    SYSDT_SPTI_CreateTable(L, 0, 2);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    bgp::SetNumber(L, table, "asNumValue", as.Number);
    bgp::SetNumber(L, table, "asType", as.Notation);
}

void SYSDT_LsPrefixLuaSet_Sysipv6(lua_State *L, const void *address16)
{
    bgp::LuaPushArray(L, static_cast<const uint8_t *>(address16), bgp::kIpv6Size, 1);
}

void SYSDT_LsPrefixLuaSet_Sysipv4ipv6(lua_State *L, const void *address21)
{
    const auto *field = static_cast<const uint8_t *>(address21);
    SYSDT_SPTI_CreateTable(L, 0, 3);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    bgp::SetNumber(L, table, "ipv4Addr", bgp::Load<uint32_t>(field));
    SYSDT_LsPrefixLuaSet_Sysipv6(L, field + bgp::kAddressIpv6At);
    SYSDT_SPTI_SetField(L, table, "ipv6Addr");
    bgp::SetNumber(L, table, "flag", field[bgp::kAddressFamilyAt]);
}

// IS-IS has 8 bytes always; the others 8 with a second address, else 4. The string has 8 whatever the length says.
void SYSDT_LsPrefixLuaSet_LocIgpRtId(lua_State *L, int32_t table, const char *lengthName, uint32_t protocolId,
                                     const void *area)
{
    const auto *bytes = static_cast<const char *>(area);
    const bool isWhole = protocolId == bgp::kLsIsisLevel1 || protocolId == bgp::kLsIsisLevel2 ||
                         bgp::Load<uint32_t>(bytes + sizeof(uint32_t)) != 0;
    bgp::SetNumber(L, table, lengthName, isWhole ? bgp::kLsIgpIdSize : sizeof(uint32_t));
    SYSDT_SPTI_PushLString(L, bytes, bgp::kLsIgpIdSize);
}

uint32_t SYSDT_LsPrefixLuaGet_Uinteger(lua_State *L, int32_t table, const char *name)
{
    uint32_t number = 0;
    if (bgp::GetNumber(L, table, name, &number)) {
        return number;
    }
    SYSDT_SPTI_Pop(L, 1);
    return DT_ERR_INVALID_PARAM;
}

// Both halves are there before anything is stored.
uint32_t SYSDT_LsPrefixLuaGet_Identifier(lua_State *L, int32_t table, const char *name, void *identifier8)
{
    int32_t nested = 0;
    uint32_t low = 0;
    uint32_t high = 0;
    if (!bgp::OpenTable(L, table, name, &nested) || !bgp::GetNumber(L, nested, "lUint32", &low) ||
        !bgp::GetNumber(L, nested, "hUint32", &high)) {
        return DT_ERR_INVALID_PARAM;
    }
    bgp::Store(identifier8, uint64_t{high} << 32 | low);
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}

uint32_t SYSDT_LsPrefixLuaGet_AsNum(lua_State *L, int32_t table, const char *name, void *as8)
{
    auto *at = static_cast<uint8_t *>(as8);
    int32_t nested = 0;
    uint32_t number = 0;
    if (!bgp::OpenTable(L, table, name, &nested) || !bgp::GetNumber(L, nested, "asNumValue", &number)) {
        return DT_ERR_INVALID_PARAM;
    }
    bgp::Store(at + offsetof(BgpLsAsNumber, Number), number);
    if (!bgp::GetNumber(L, nested, "asType", &number)) {
        return DT_ERR_INVALID_PARAM;
    }
    bgp::Store(at + offsetof(BgpLsAsNumber, Notation), number);
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}

uint32_t SYSDT_LsPrefixLuaGet_Sysipv6(lua_State *L, int32_t table, const char *name, void *address16)
{
    auto *at = static_cast<uint8_t *>(address16);
    int32_t array = 0;
    if (!bgp::OpenTable(L, table, name, &array)) {
        return DT_ERR_INVALID_PARAM;
    }
    for (uint32_t i = 0; i < bgp::kIpv6Size; ++i) {
        uint32_t number = 0;
        SYSDT_SPTI_PushUInt(L, i + 1);
        SYSDT_SPTI_GetTable(L, array);
        if (!bgp::TakeNumber(L, &number)) {
            return DT_ERR_INVALID_PARAM;
        }
        at[i] = static_cast<uint8_t>(number);
    }
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}

uint32_t SYSDT_LsPrefixLuaGet_Sysipv4ipv6(lua_State *L, int32_t table, const char *name, void *address21)
{
    auto *field = static_cast<uint8_t *>(address21);
    int32_t nested = 0;
    uint32_t number = 0;
    if (!bgp::OpenTable(L, table, name, &nested) || !bgp::GetNumber(L, nested, "ipv4Addr", &number)) {
        return DT_ERR_INVALID_PARAM;
    }
    bgp::Store(field, number);
    if (SYSDT_LsPrefixLuaGet_Sysipv6(L, nested, "ipv6Addr", field + bgp::kAddressIpv6At) != DT_OK ||
        !bgp::GetNumber(L, nested, "flag", &number)) {
        return DT_ERR_INVALID_PARAM;
    }
    field[bgp::kAddressFamilyAt] = static_cast<uint8_t>(number);
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}
