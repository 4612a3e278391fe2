// EXTCOMMUNITY_BW: the link bandwidth that a BGP extended community announces (the link bandwidth community of the
// IETF's inter-domain routing group), taken apart. It cannot be typed: values come from routes and from scripts.
//
//   bytes  field      width  meaning
//   0-1    bit mask   u16    host order, never printed
//   2-3    AS number  u16    host order; 23456 stands for a number that needs four bytes (RFC 6793)
//   4-11   bandwidth  u64    host order; 0 prints as the empty text
#include "community/community.h"
#include "community/ext_community.h"
#include "host/format.h"
#include "host/layout.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 12;

constexpr BgpField kFields[] = {
    Number("bitMask", 0, 2),
    Number("asnNn", 2, 2),
    Number("bandwidth", 4, 8),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

uint32_t PrintBandwidth(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const auto as = Load<uint16_t>(value + 2);
    const auto bandwidth = Load<uint64_t>(value + 4);
    if (bandwidth == 0) {
        return Printed(PrintText(buffer, kPrintLimit, ""), printed);
    }
    if (as == kAsTrans) {
        return Printed(Print<"as-trans:%llu">(buffer, kPrintLimit, bandwidth), printed);
    }
    return Printed(Print<"%u:%llu">(buffer, kPrintLimit, as, bandwidth), printed);
}

constexpr FormatOutRule kOut{.modes = kTextOnly, .print = PrintBandwidth, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 3}; // the fetched table stays

constexpr const BgpRule *kRules[] = {&kNotTyped};

} // namespace

constinit const Type kExtCommunityBw = MakeType({
    .name = "EXTCOMMUNITY_BW",
    .description = "the link bandwidth of a BGP extended community",
    .reference = "RFC 4360, RFC 6793",
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .typeId = 329,
    .traits = BGP_TRAIT_NO_TEXT,
});

} // namespace bgp

BGP_FORMAT_OUT(SYSDT_ExtCommunityBwFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_ExtCommunityBwCheck, bgp::kLength)
BGP_HELP(SYSDT_ExtCommunityBwHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_ExtCommunityBwCompare)
BGP_LUA_SET(SYSDT_ExtCommunityBwLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_ExtCommunityBwLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_EXTCommunityBwEndian, bgp::kLayout)
