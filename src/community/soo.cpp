// SOO: a site of origin (route origin, RFC 4360 and RFC 5668), typed like a route target and printed back the way it
// was typed.
//
//   bytes  field     width  meaning
//   0      type      u8     00 2-byte AS, 01 IPv4 address, 02 4-byte AS
//   1      sub-type  u8     03 when typed
//   2-7    value     6      network order: administrator and assigned number, split by type
//   8-11   form      u32    host order: 0 a.b.c.d:n, 1 AS:n, 2 AS:n with AS above 65535, 3 x.y:n
#include "community/ext_community.h"
#include "host/layout.h"
#include "host/operations.h"
#include "rdrt/notation.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 12;

constexpr BgpField kFields[] = {
    ByteArray("SooValue", 0, 8),
    Number("SooType", 8, 4, 1),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr NotationRule kTyped{.kinds = {0x0103, 0x0003, 0x0203}, .refusesZero = true};

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // type and sub-type, form, format
    {0x0103, kAny, {Prints<"%u.%u.%u.%u:%u", kIpv4Split>}},
    {0x0003, 1,    {Prints<"%u:%u", kAs2Split>}},
    {0x0003, 2,    {Prints<"%u:%u", kAs4Split>}}, // the form picks the split
    {0x0003, 3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {0x0003, kAny, {}},
    {0x0203, 2,    {Prints<"%u:%u", kAs4Split>}},
    {0x0203, 3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {0x0203, kAny, {}},
};
// clang-format on

uint32_t PrintSoo(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const Stored stored = StoredAt(value);
    if (IsUnset(value) && stored.notation == 0) {
        return Printed(PrintText(buffer, kPrintLimit, ""), printed);
    }
    return PrintStored(Table(kPrintRows), stored, 0, buffer, printed);
}

constexpr FormatInRule kIn{.typeId = 260, .length = kLength, .modes = kTextOnly, .read = ReadTyped<kTyped>};
constexpr FormatOutRule kOut{.modes = kTextOrRaw,
                             .print = PrintSoo,
                             .textSize = kTextSize,
                             .valueSize = kLength,
                             .mode3 = Mode3::kLikeText}; // no raw copy
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kSoo = MakeType({
    .name = "SOO",
    .description = "a site of origin",
    .reference = "RFC 4360, RFC 5668",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kSharedText,
    .rules = kSharedRules,
    .lua = BGP_LUA_TYPED, // a script's form is cut to a byte
});

} // namespace bgp

BGP_STR2(SYSDT_Str2Soo, bgp::ReadTyped<bgp::kTyped>)
BGP_FORMAT_IN(SYSDT_SooFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_SooFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_SooCheck, bgp::kLength)
BGP_HELP(SYSDT_SooHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_SooCompare)
BGP_LUA_SET(SYSDT_SooLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_SooLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_SooEndian, bgp::kLayout)
