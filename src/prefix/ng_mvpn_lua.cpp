// The Lua side of the NG-MVPN keys. A field has two entries in a key's table: the AS number with its
// notation, or the address (a number, or an array of 16 for IPv6) with its family. Both originators of a key share the
// family of the first.
#include "host/address_field.h"
#include "host/bytes.h"
#include "host/contract.h"
#include "prefix/ng_mvpn.h"
#include "prefix/prefix.h"

namespace bgp {

// -------------------------------------------------------------------------------------------------------- operations

namespace {

constexpr BgpField NumberWord(const NgField &field)
{
    return Number(field.name, field.at, 4);
}

constexpr BgpField NotationWord(const NgField &field)
{
    return Number(field.typeName, static_cast<uint16_t>(field.at + 4), 4);
}

// "bolType", and two entries a field; neighbours that share a family have one of it.
int32_t CountEntries(const NgKey &key)
{
    int32_t entries = 1;
    const char *typeName = nullptr;
    for (uint32_t i = 0; i < key.count; ++i) {
        entries += key.fields[i].typeName == typeName ? 1 : 2;
        typeName = key.fields[i].typeName;
    }
    return entries;
}

uint32_t SetTable(const NgKey &key, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                  const void *value)
{
    if (const uint32_t code = LuaJudge(L, fieldName, value, length, kBolPrefixLength); code != DT_OK) {
        return code;
    }
    const auto *bytes = static_cast<const uint8_t *>(value);
    SYSDT_SPTI_CreateTable(L, 0, CountEntries(key));
    const int32_t table = SYSDT_SPTI_GetTop(L);
    LuaSetOne(L, table, Number("bolType", 0, 4), bytes);
    const char *familyName = nullptr; // whose family `family` is
    uint32_t family = kIpv4Family;
    for (uint32_t i = 0; i < key.count; ++i) {
        const NgField &field = key.fields[i];
        if (field.kind == BGP_FIELD_AS) {
            LuaSetOne(L, table, NumberWord(field), bytes);
            LuaSetOne(L, table, NotationWord(field), bytes);
            continue;
        }
        if (field.typeName != familyName) {
            familyName = field.typeName;
            family = bytes[field.at + kAddressFamilyAt];
            SYSDT_SPTI_PushUInt(L, family);
            SYSDT_SPTI_SetField(L, table, familyName);
        }
        LuaPushAddress(L, bytes + field.at, family);
        SYSDT_SPTI_SetField(L, table, field.name);
    }
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

// The notation comes first, so a table without it leaves the number unwritten.
uint32_t ReadAs(lua_State *L, int32_t table, const NgField &field, uint8_t *value)
{
    const uint32_t code = LuaGetOne(L, table, NotationWord(field), value);
    return code != DT_OK ? code : LuaGetOne(L, table, NumberWord(field), value);
}

uint32_t ReadTable(const NgKey &key, lua_State *L, void *value, int32_t table)
{
    if (L == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    const char *familyName = nullptr; // whose family `family` is
    uint32_t family = kIpv4Family;
    for (const char *next = key.readerOrder; *next != '\0'; ++next) {
        const NgField &field = key.fields[*next - '0'];
        if (field.kind == BGP_FIELD_AS) {
            if (const uint32_t code = ReadAs(L, table, field, bytes); code != DT_OK) {
                return code;
            }
            continue;
        }
        if (field.typeName != familyName) {
            familyName = field.typeName;
            SYSDT_SPTI_GetField(L, table, familyName);
            if (SYSDT_SPTI_IsNumber(L, -1) == 0) {
                return DT_ERR_INVALID_PARAM;
            }
            family = SYSDT_SPTI_ToUInt(L, -1);
        }
        SYSDT_SPTI_GetField(L, table, field.name);
        LuaReadAddress(L, family, bytes + field.at); // what is no address leaves the field alone
    }
    SYSDT_SPTI_Pop(L, key.readerPops);
    return DT_OK;
}

} // namespace

} // namespace bgp

#define BGP_NG_LUA(luaSet, reader, key)                                                                                \
    uint32_t luaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,                \
                    const void *value)                                                                                 \
    {                                                                                                                  \
        return bgp::SetTable(key, L, tableIndex, fieldName, length, value);                                            \
    }                                                                                                                  \
    uint32_t reader(lua_State *L, void *value, int32_t tableIndex)                                                     \
    {                                                                                                                  \
        return bgp::ReadTable(key, L, value, tableIndex);                                                              \
    }

BGP_NG_LUA(SYSDT_NGPrefix2LuaSet, SYSDT_NGPrefix2NewLuaGet, bgp::kNg2)
BGP_NG_LUA(SYSDT_NGPrefix3LuaSet, SYSDT_NGPrefix3NewLuaGet, bgp::kNg3)
BGP_NG_LUA(SYSDT_NGPrefix42LuaSet, SYSDT_NGPrefix42NewLuaGet, bgp::kNg42)
BGP_NG_LUA(SYSDT_NGPrefix43LuaSet, SYSDT_NGPrefix43NewLuaGet, bgp::kNg43)
BGP_NG_LUA(SYSDT_NGPrefix5LuaSet, SYSDT_NGPrefix5NewLuaGet, bgp::kNg5)
BGP_NG_LUA(SYSDT_NGPrefix6LuaSet, SYSDT_NGPrefix6NewLuaGet, bgp::kNg6)
BGP_NG_LUA(SYSDT_NGPrefix41LuaSet, SYSDT_NGPrefix41NewLuaGet, bgp::kNg41)
