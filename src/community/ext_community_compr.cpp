// EXTCMNTY_COMPR: an extended community of one fixed kind that carries a 16-bit number, typed as "100:0". The second
// number is always 0. Values are compared by EXTCOMMUNITY's operation.
//
//   bytes  field     width  meaning
//   0-1    type      u16    host order, 0x8099 when typed; values of another type print nothing
//   2-3    cpi       u16    host order
//   4-7    reserved  u32    host order, 0 when typed
#include "community/community.h"
#include "host/format.h"
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 8;
constexpr uint16_t kType = 0x8099;

// The record ends in a word, but a script's number is cut to 16 bits on its way in.
constexpr BgpField kFields[] = {
    Number("type", 0, 2),
    Number("cpi", 2, 2),
    Number("reserved", 4, 4, 2),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr BgpNotation kNotations[] = {
    {.Form = "cpi:0",
     .Separators = ":",
     .When = nullptr,
     .Names = {"the cpi", "the second number"},
     .Smallest = {},
     .Largest = {UINT16_MAX, 0}},
};

constexpr NumbersRule kText = NumbersText(1, 7, ":", kNotations); // to "65535:0"

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,    &kBlank,   &kNoDigit,
                                     &kWrongCharacter, &kNoNotation, &kTooLarge};

bool Read(const char *text, void *value, Why *why)
{
    Numbers numbers;
    if (ReadNotation(kText, text, numbers, why) == kNoFit) {
        return false;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    Store(bytes, kType);
    Store(bytes + 2, static_cast<uint16_t>(numbers.at[0]));
    Store(bytes + 4, uint32_t{0});
    return true;
}

uint32_t PrintCompressed(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    if (Load<uint16_t>(value) != kType) {
        return DT_OK;
    }
    const auto cpi = Load<uint16_t>(value + 2);
    const auto reserved = Load<uint32_t>(value + 4);
    return Printed(Print<"%u:%u">(buffer, kPrintLimit, cpi, reserved), printed);
}

constexpr FormatInRule kIn{.typeId = 1300, .length = kLength, .modes = kTextOnly, .read = Read};
constexpr FormatOutRule kOut{.modes = kTextOnly, .print = PrintCompressed, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-7>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 3}; // the fetched table stays

} // namespace

constinit const Type kExtCommunityCompr = MakeType({
    .name = "EXTCMNTY_COMPR",
    .description = "one compressed BGP extended community",
    .reference = "RFC 4360",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kText,
    .rules = kRules,
    .lua = BGP_LUA_TYPED, // a script's reserved word is cut to 16 bits
});

} // namespace bgp

BGP_STR2(SYSDT_Str2ExtCommunityCompr, bgp::Read)
BGP_FORMAT_IN(SYSDT_ExtCommunityComprFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_ExtCommunityComprFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_ExtCommunityComprCheck, bgp::kLength)
BGP_HELP(SYSDT_ExtCommunityComprHelp, bgp::kHelp)
BGP_LUA_SET(SYSDT_ExtCommunityComprLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_ExtCommunityComprLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_EXTCommunityComprEndian, bgp::kLayout)
