// EXTCOMMUNITY: one BGP extended community (RFC 4360). Route targets can be typed, in the notations that they share
// with route distinguishers; route origins, the OSPF kinds (RFC 4577) and bandwidth are printed too.
//
//   bytes  field     width  meaning
//   0      type      u8     as BGP carries it
//   1      sub-type  u8     as BGP carries it
//   2-7    value     6      network order, by type and sub-type
//   8-11   form      u32    host order, how a route target was typed: 0 a.b.c.d:n, 1 AS:n, 2 AS:n with AS above 65535,
//                           3 x.y:n
#include "community/ext_community.h"

#include "host/format.h"
#include "host/layout.h"
#include "host/operations.h"
#include "rdrt/notation.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 12;
constexpr uint32_t kUnsetKey = 0x0000;
constexpr uint32_t kBandwidthKey = 0x030e;

constexpr BgpField kFields[] = {
    ByteArray("extcommunity", 0, 8),
    Number("type", 8, 4, 1),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr NotationRule kTyped{.kinds = {0x0102, 0x0002, 0x0202}, .refusesZero = false};

// An OSPF area, the options (byte 7) before the route type (byte 6).
constexpr Split kOspfRouteSplit{{{2, 1}, {3, 1}, {4, 1}, {5, 1}, {7, 1}, {6, 1}}};

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // type and sub-type, form, format
    {kUnsetKey, kAny, {}},
    {0x0002,    kAny, {Prints<"%u:%u", kAs2Split>}},
    {0x030b,    kAny, {Prints<"%u:%u", kAs2Split>}},
    {0x0003,    kAny, {Prints<"SoO <%u : %u>", kAs2Split>}},
    {0x0102,    kAny, {Prints<"%u.%u.%u.%u:%u", kIpv4Split>}},
    {0x0103,    kAny, {Prints<"SoO <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x0005,    kAny, {Prints<"OSPF DOMAIN ID <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x0105,    kAny, {Prints<"OSPF DOMAIN ID <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x0205,    kAny, {Prints<"OSPF DOMAIN ID <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x8005,    kAny, {Prints<"OSPF DOMAIN ID <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x0107,    kAny, {Prints<"OSPF ROUTER ID <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x8001,    kAny, {Prints<"OSPF ROUTER ID <%u.%u.%u.%u : %u>", kIpv4Split>}},
    {0x0202,    3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {0x0202,    2,    {Prints<"%u:%u", kAs4Split>}},
    {0x0202,    kAny, {}},
    {0x0203,    kAny, {Prints<"SoO <%u.%u : %u>", kDottedSplit>}}, // dotted however it was typed
    {0x0306,    kAny, {Prints<"OSPF RT <%u.%u.%u.%u : %u : %u>", kOspfRouteSplit>}},
    {0x8000,    kAny, {Prints<"OSPF RT <%u.%u.%u.%u : %u : %u>", kOspfRouteSplit>}},
    {kBandwidthKey, kAny, {Prints<"%u:%u", kAs2Split>}},
};
// clang-format on

uint32_t PrintExtCommunity(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    const Stored stored = StoredAt(value);
    if (mode == kPlainMode && stored.kind == kUnsetKey) {
        return Printed(PrintText(buffer, kPrintLimit, ""), printed);
    }
    if (stored.kind == kBandwidthKey && LoadBig(value + 2, 2) == kAsTrans) {
        return Printed(Print<"as-trans:%u">(buffer, kPrintLimit, LoadBig<uint32_t>(value + 4)), printed);
    }
    return PrintStored(Table(kPrintRows), stored, 0, buffer, printed);
}

constexpr FormatInRule kIn{.typeId = 257, .length = kLength, .modes = kTextOnly, .read = ReadTyped<kTyped>};
constexpr FormatOutRule kOut{.modes = kTextOnly,
                             .print = PrintExtCommunity,
                             .textSize = kTextSize,
                             .valueSize = kLength,
                             .failed = Failed::kRelease};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kExtCommunity = MakeType({
    .name = "EXTCOMMUNITY",
    .description = "one BGP extended community; route targets can be typed",
    .reference = "RFC 4360, RFC 5668, RFC 4577",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kSharedText,
    .rules = kNumbersRules,
    .lua = BGP_LUA_TYPED, // a script's form is cut to a byte
});

} // namespace bgp

BGP_STR2(SYSDT_Str2ExtCommunity, bgp::ReadTyped<bgp::kTyped>)
BGP_FORMAT_IN(SYSDT_ExtCommunityFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_ExtCommunityFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_ExtCommunityCheck, bgp::kLength)
BGP_HELP(SYSDT_ExtCommunityHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_ExtCommunityCompare)
BGP_LUA_SET(SYSDT_ExtCommunityLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_ExtCommunityLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_EXTCommunityEndian, bgp::kLayout)
