// LARGECOMMUNITY: one BGP large community (RFC 8092), three numbers: "64496:1:2".
//
//   bytes  field                 width  meaning
//   0-3    global administrator  u32    host order, an AS number
//   4-7    local data part 1     u32    host order
//   8-11   local data part 2     u32    host order
//   12-15  type                  u32    host order, 0 when typed; never printed
#include "community/community.h"
#include "host/format.h"
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"
#include "host/type.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 16;
constexpr uint32_t kParts = 3;
constexpr uint32_t kTypeAt = 12;

constexpr BgpField kFields[] = {
    NumberArray("largeCommunity", 0, 4, kParts),
    Number("type", kTypeAt, 4, 1),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpNotation kNotations[] = {
    {.Form = "administrator:data:data",
     .Separators = "::",
     .When = nullptr,
     .Names = {"the global administrator", "the first part of the local data", "the second part of the local data"},
     .Smallest = {},
     .Largest = {UINT32_MAX, UINT32_MAX, UINT32_MAX}},
};

constexpr NumbersRule kText = NumbersText(5, 32, ":", kNotations); // "1:2:3" to three times "4294967295"

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooShort,       &kTooLong,    &kBlank,   &kNoDigit,
                                     &kWrongCharacter, &kTooManyNumbers, &kNoNotation, &kTooLarge};

bool Read(const char *text, void *value, Why *why)
{
    Numbers numbers;
    if (ReadNotation(kText, text, numbers, why) == kNoFit) {
        return false;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    for (uint32_t i = 0; i < kParts; ++i) {
        Store(bytes + 4 * i, static_cast<uint32_t>(numbers.at[i]));
    }
    Store(bytes + kTypeAt, uint32_t{0});
    return true;
}

// ---------------------------------------------------------------------------------------------------------- text out

uint32_t PrintLargeCommunity(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const auto part = [value](uint32_t i) { return Load<uint32_t>(value + 4 * i); };
    return Printed(Print<"%u:%u:%u">(buffer, kPrintLimit, part(0), part(1), part(2)), printed);
}

// -------------------------------------------------------------------------------------------------------- operations

// The mode sets are this type's own: mode 6 is no text mode on the way in, every mode but 4 is one on the way out.
constexpr FormatInRule kIn{.typeId = 321, .length = kLength, .modes = {Modes(1, 2), Modes(0, 3, 5, 6)}, .read = Read};
constexpr FormatOutRule kOut{
    .modes = kAllButFour, .print = PrintLargeCommunity, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<5-32>", .modes = Modes(1)};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kLargeCommunity = MakeType({
    .name = "LARGECOMMUNITY",
    .description = "one BGP large community",
    .reference = "RFC 8092",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kText,
    .rules = kRules,
    .lua = BGP_LUA_TYPED, // a script's type is cut to a byte
});

} // namespace bgp

BGP_STR2(SYSDT_Str2LargeCommunity, bgp::Read)
BGP_FORMAT_IN(SYSDT_LargeCommunityFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_LargeCommunityFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_LargeCommunityCheck, bgp::kLength)
BGP_HELP(SYSDT_LargeCommunityHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_LargeCommunityCompare)
BGP_LUA_SET(SYSDT_LargeCommunityLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_LargeCommunityLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_LargeCommunityEndian, bgp::kLayout)
