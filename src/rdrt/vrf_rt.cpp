// VRFRT: a route target of a VPN instance (RFC 4360, RFC 5668), typed as administrator and number and printed back the
// way it was typed.
//
//   bytes  field     width  meaning
//   0-1    RT kind   2      extended-community type and sub-type: 0002 2-byte AS, 0102 IPv4 address, 0202 4-byte AS
//   2-7    RT value  6      network order: global and local administrator, split by kind
//   8-11   notation  u32    host order: 0 a.b.c.d:n, 1 AS:n, 2 AS:n with AS above 65535, 3 x.y:n
#include "host/layout.h"
#include "host/operations.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 12;

constexpr BgpField kFields[] = {
    ByteArray("RtValue", 0, 8),
    Number("RtType", 8, 4, 1),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr NotationRule kTyped{.kinds = {0x0102, 0x0002, 0x0202}, .refusesZero = true};

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // RT kind, notation, format
    {0x0102, kAny, {Prints<"%u.%u.%u.%u:%u", kIpv4Split>}},
    {0x0202, 2,    {Prints<"%u:%u", kAs4Split>}},
    {0x0202, 3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {0x0202, kAny, {}},
    {0x0002, 1,    {Prints<"%u:%u", kAs2Split>}},
    {0x0002, 2,    {Prints<"%u:%u", kAs4Split>}}, // the notation picks the split
    {0x0002, 3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {0x0002, kAny, {}},
};
// clang-format on

uint32_t PrintVrfRt(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    return PrintNotation(Table(kPrintRows), value, mode, buffer, printed);
}

constexpr FormatInRule kIn{.typeId = 258, .length = kLength, .modes = kTextOnly, .read = ReadTyped<kTyped>};
constexpr FormatOutRule kOut{
    .modes = kTextOrRaw, .print = PrintVrfRt, .textSize = kTextSize, .valueSize = kLength, .mode3 = Mode3::kTextAsRaw};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kVrfRt = MakeType({
    .name = "VRFRT",
    .description = "a route target of a VPN instance",
    .reference = "RFC 4360, RFC 5668",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kSharedText,
    .rules = kSharedRules,
    .lua = BGP_LUA_TYPED, // a script's notation is cut to a byte
});

} // namespace bgp

BGP_STR2(SYSDT_Str2VrfRt, bgp::ReadTyped<bgp::kTyped>)
BGP_FORMAT_IN(SYSDT_VrfRtFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VrfRtFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_VrfRtCheck, bgp::kLength)
BGP_HELP(SYSDT_VrfRtHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_VrfRtCompare)
BGP_LUA_SET(SYSDT_VrfRtLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_VrfRtLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_VrfRtEndian, bgp::kLayout)
