// TOY: a place on a shelf, two numbers: "12/7". No RFC knows of it.
//
//   bytes  field  width  meaning
//   0-3    shelf  u32    host order, at most 4095 when typed
//   4-7    place  u32    host order
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"
#include "types/types.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 8;

constexpr BgpField kFields[] = {
    Number("shelf", 0, 4),
    Number("place", 4, 4),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpNotation kNotations[] = {
    {.Form = "shelf/place",
     .Separators = "/",
     .When = nullptr,
     .Names = {"the shelf", "the place"},
     .Smallest = {},
     .Largest = {4095, UINT32_MAX}},
};

constexpr NumbersRule kText = NumbersText(3, 21, "/", kNotations);

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooShort,       &kTooLong,    &kBlank,   &kNoDigit,
                                     &kWrongCharacter, &kTooManyNumbers, &kNoNotation, &kTooLarge};

bool Read(const char *text, void *value, Why *why)
{
    Numbers numbers;
    if (ReadNotation(kText, Trim(text), numbers, why) == kNoFit) {
        return false;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    Store(bytes, static_cast<uint32_t>(numbers.at[0]));
    Store(bytes + 4, static_cast<uint32_t>(numbers.at[1]));
    return true;
}

// ---------------------------------------------------------------------------------------------------------- text out

uint32_t PrintToy(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return Printed(Print(buffer, kPrintLimit, "%u/%u", {Load<uint32_t>(value), Load<uint32_t>(value + 4)}), printed);
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kIn{.typeId = 1999, .length = kLength, .modes = kTextOnly, .read = Read};
constexpr FormatOutRule kOut{.modes = kAllButFour, .print = PrintToy, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 3};

} // namespace

constinit const Type kToy = MakeType({
    .name = "TOY",
    .description = "a place on a shelf",
    .reference = "RFC 4271",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kText,
    .rules = kRules,
});

} // namespace bgp

BGP_FORMAT_IN(SYSDT_ToyFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_ToyFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_ToyCheck, bgp::kLength)
BGP_HELP(SYSDT_ToyHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_ToyCompare)
BGP_LUA_SET(SYSDT_ToyLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_ToyLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_ToyEndian, bgp::kLayout)
