// The shared pieces of the flat route keys.
#include "prefix/route_keys.h"

#include "host/bytes.h"
#include "host/format.h"

namespace bgp {

uint32_t PrintIpv4Word(const void *at, char *buffer, uint32_t *printed)
{
    const auto address = Load<uint32_t>(at);
    return Printed(Print<"%u.%u.%u.%u">(buffer, kPrintLimit, OctetOf<0>(address), OctetOf<1>(address),
                                        OctetOf<2>(address), OctetOf<3>(address)),
                   printed);
}

bool ReadMaskedPrefix(const NumbersRule &rule, uint32_t maskAt, const char *text, uint8_t *payload, Why *why)
{
    static constexpr ScanForm kForm = ScanOf("%u.%u.%u.%u/%u", kMaskedPrefix[0]);
    const Text trimmed = Trim(text);
    Scanned scanned;
    if (!MayBeScanned(trimmed, rule.shortest, rule.longest, why) || !IsOneWord(kForm, trimmed, why) ||
        !Scan(kForm, trimmed, scanned, why)) {
        return false;
    }
    Store(payload, JoinOctets(scanned.numbers));
    Store(payload + maskAt, scanned.numbers[4]);
    return true;
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
