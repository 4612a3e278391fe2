// What the flat route keys share: VPLS auto-discovery, L2VPN, VPNv4 multicast, MDT, route-policy distribution, SR
// policy and SD-WAN. Each is a sub-type word and a handful of fields at fixed places.
#ifndef BGP_PREFIX_ROUTE_KEYS_H
#define BGP_PREFIX_ROUTE_KEYS_H

#include "host/layout.h"
#include "host/text.h"
#include "prefix/prefix.h"

#include <cstdint>

namespace bgp {

// Sub-type words of BOLPREFIX, which are also the indexes of its tables.
inline constexpr uint32_t kVplsAdSubType = 0;
inline constexpr uint32_t kL2vpnSubType = 9;
inline constexpr uint32_t kVpnv4McastSubType = 10;
inline constexpr uint32_t kMdtSubType = 11;
inline constexpr uint32_t kRpdSubType = 12;
inline constexpr uint32_t kSrPolicySubType = 14;
inline constexpr uint32_t kSdwanSubType = 16;

// ------------------------------------------------------------------------------------------------------ text in, out

// A parser of the fields behind the sub-type word, as the parser of a whole value.
template <uint32_t SubType, uint32_t (*ParsePayload)(const char *, void *)>
uint32_t ParseKey(const char *text, void *value)
{
    auto *bytes = static_cast<uint8_t *>(value);
    Store(bytes, SubType);
    return ParsePayload(text, bytes + kPayloadAt);
}

// Prints the fields behind the sub-type word.
using PayloadPrinter = uint32_t (*)(const void *payload, char *buffer, uint32_t *printed);

template <PayloadPrinter PrintPayload>
uint32_t PrintKey(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return PrintPayload(value + kPayloadAt, buffer, printed);
}

// The IPv4 word at `at`, four decimal octets.
uint32_t PrintIpv4Word(const void *at, char *buffer, uint32_t *printed);

// "a.b.c.d/m": an IPv4 prefix whose mask length must be there. It goes to the first word of the payload, the mask
// length to the word at maskAt. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL.
struct MaskedPrefix {
    uint8_t least, most; // characters
    uint8_t maskAt;      // in the payload
};

uint32_t ReadMaskedPrefix(const MaskedPrefix &form, const char *text, void *payload);

// Variations of the rules that most route keys have.
constexpr FormatInRule InPlainMemory(FormatInRule rule)
{
    rule.memory = Memory::kPlain;
    return rule;
}

constexpr FormatOutRule InPlainMemory(FormatOutRule rule)
{
    rule.memory = Memory::kPlain;
    return rule;
}

constexpr FormatOutRule OfSubType(FormatOutRule rule, uint32_t subType, bool releasesCallersToo)
{
    rule.namesSubType = true;
    rule.subType = subType;
    rule.releasesCallersToo = releasesCallersToo;
    return rule;
}

// --------------------------------------------------------------------------------------------------------------- Lua

// LuaGet of a key: the table's "bolType", the first field of the layout, must name the sub-type, else DT_ERR_FAIL.
struct KeyLuaRule {
    const BgpLayout &layout;
    uint32_t subType;
    uint8_t pops; // at the end
};

uint32_t LuaGetKey(const KeyLuaRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                   void *value);

// The reader of a sub-type: the fields behind "bolType", from the composite's own table at stack index `table`.
struct ReaderRule {
    const BgpLayout &layout;
    uint8_t pops;
};

uint32_t ReadLuaKey(const ReaderRule &rule, lua_State *L, void *value, int32_t table);

} // namespace bgp

#define BGP_KEY_LUA_GET(name, rule)                                                                                    \
    uint32_t name(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length, void *outValue)  \
    {                                                                                                                  \
        return bgp::LuaGetKey(rule, L, tableIndex, fieldName, length, outValue);                                       \
    }

#define BGP_KEY_READER(name, rule)                                                                                     \
    uint32_t name(lua_State *L, void *value, int32_t tableIndex)                                                       \
    {                                                                                                                  \
        return bgp::ReadLuaKey(rule, L, value, tableIndex);                                                            \
    }

// Keys whose Check looks at the length alone, not even at the pointer.
#define BGP_KEY_CHECK(name)                                                                                            \
    uint32_t name(const void *, uint32_t, uint32_t length, const void *)                                               \
    {                                                                                                                  \
        return length == bgp::kBolPrefixLength ? DT_OK : DT_ERR_LENGTH;                                                \
    }

#endif
