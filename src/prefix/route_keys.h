// What the flat route keys share: VPLS auto-discovery, L2VPN, VPNv4 multicast, MDT, route-policy distribution, SR
// policy and SD-WAN. Each is a sub-type word and a handful of fields at fixed places.
#ifndef BGP_PREFIX_ROUTE_KEYS_H
#define BGP_PREFIX_ROUTE_KEYS_H

#include "host/layout.h"
#include "host/text.h"
#include "prefix/prefix.h"
#include "prefix/scan.h"

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

// A reader of the fields behind the sub-type word, as the reader of a whole value.
using PayloadReader = bool (*)(const char *text, uint8_t *payload, Why *why);

template <uint32_t SubType, PayloadReader ReadPayload>
bool ReadKey(const char *text, void *value, Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    Store(bytes, SubType);
    return ReadPayload(text, bytes + kPayloadAt, why);
}

// The same under its exported name: 0, DT_ERR_NULL_PTR or DT_ERR_FAIL.
template <PayloadReader ReadPayload>
uint32_t ParsePayload(const char *text, void *payload)
{
    if (text == nullptr || payload == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return ReadPayload(text, static_cast<uint8_t *>(payload), nullptr) ? DT_OK : DT_ERR_FAIL;
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

// The length of a text to be scanned. One that is too short lacks something, which the scan knows when a reason is
// asked for.
inline bool MayBeScanned(Text text, uint32_t least, uint32_t most, Why *why)
{
    const bool lacks = why != nullptr && text.length > 0 && text.length < least;
    return lacks || HasLength(text, least, most, why);
}

// "a.b.c.d/m": an IPv4 prefix whose mask length must be there. It goes to the first word of the payload, the mask
// length to the word at maskAt. What follows the mask length is not looked at.
inline constexpr BgpNotation kMaskedPrefix[] = {
    {.Form = "a.b.c.d/m",
     .Separators = ".../",
     .When = nullptr,
     .Names = {"octet 1 of the prefix", "octet 2 of the prefix", "octet 3 of the prefix", "octet 4 of the prefix",
               "the mask length"},
     .Smallest = {},
     .Largest = {UINT8_MAX, UINT8_MAX, UINT8_MAX, UINT8_MAX, 32}},
};

inline constexpr const BgpRule *kMaskedPrefixRules[] = {&kEmpty,   &kTooLong,   &kBlank,
                                                        &kNoDigit, &kSeparator, &kTooLarge};

bool ReadMaskedPrefix(const NumbersRule &rule, uint32_t maskAt, const char *text, uint8_t *payload, Why *why);

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
