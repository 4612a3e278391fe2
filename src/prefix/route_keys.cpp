// The shared pieces of the flat route keys.
#include "prefix/route_keys.h"

#include "host/bytes.h"
#include "prefix/scan.h"

namespace bgp {

uint32_t PrintIpv4Word(const void *at, char *buffer, uint32_t *printed)
{
    const auto address = Load<uint32_t>(at);
    return Printed(Print(buffer, kPrintLimit, "%hhu.%hhu.%hhu.%hhu",
                         {address >> 24, address >> 16 & 0xFF, address >> 8 & 0xFF, address & 0xFF}),
                   printed);
}

uint32_t ReadMaskedPrefix(const MaskedPrefix &form, const char *text, void *payload)
{
    constexpr uint32_t kItems = 5;
    constexpr uint32_t kLongestMask = 32;
    if (text == nullptr || payload == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const Text trimmed = Trim(text);
    Scanned scanned;
    if (!IsLong(trimmed, form.least, form.most) || HasBlank(trimmed) ||
        Scan(trimmed, "%u.%u.%u.%u/%u", scanned) != kItems || !AreOctetsWithin(scanned.numbers, UINT8_MAX) ||
        scanned.numbers[4] > kLongestMask) {
        return DT_ERR_FAIL;
    }
    auto *bytes = static_cast<uint8_t *>(payload);
    Store(bytes, JoinOctets(scanned.numbers));
    Store(bytes + form.maskAt, scanned.numbers[4]);
    return DT_OK;
}

namespace {

constexpr BgpLayout BehindType(const BgpLayout &layout)
{
    return {layout.Fields + 1, layout.FieldCount - 1, layout.Length};
}

} // namespace

uint32_t LuaGetKey(const KeyLuaRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                   void *value)
{
    int32_t table = 0;
    if (const uint32_t code = LuaOpen(L, tableIndex, fieldName, length, rule.layout.Length, value, &table);
        code != DT_OK) {
        return code;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    BgpField type = rule.layout.Fields[0];
    type.LuaPops = 0; // a wrong sub-type leaves the number on the stack
    if (const uint32_t code = LuaGetOne(L, table, type, bytes); code != DT_OK) {
        return code;
    }
    if (Load<uint32_t>(bytes) != rule.subType) {
        return DT_ERR_FAIL;
    }
    if (rule.layout.Fields[0].LuaPops != 0) {
        SYSDT_SPTI_Pop(L, rule.layout.Fields[0].LuaPops);
    }
    if (const uint32_t code = LuaGetAll(L, table, BehindType(rule.layout), bytes); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, rule.pops);
    return DT_OK;
}

uint32_t ReadLuaKey(const ReaderRule &rule, lua_State *L, void *value, int32_t table)
{
    if (L == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = LuaGetAll(L, table, BehindType(rule.layout), static_cast<uint8_t *>(value));
        code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, rule.pops);
    return DT_OK;
}

} // namespace bgp
