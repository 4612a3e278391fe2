// VPNID: a VPN identifier (RFC 2685), typed as two hexadecimal numbers: "1a2b3c:10".
//
//   bytes  field      width  meaning
//   0-3    OUI        u32    host order; organisationally unique identifier, at most ffffff when typed
//   4-7    VPN index  u32    host order
//
// Its results come from SYS_DataTypeMalloc, not from the request's memory handle.
#include "host/format.h"
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 8;

constexpr BgpField kFields[] = {
    Number("ouiValue", 0, 4),
    Number("index", 4, 4),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

// Both words in host order, as stored.
struct VpnId {
    uint32_t oui;
    uint32_t index;
};

static_assert(sizeof(VpnId) == kLength, "stored as it lies in memory");

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpNotation kNotations[] = {
    {.Form = "OUI:index",
     .Separators = ":",
     .When = nullptr,
     .Names = {"the OUI", "the VPN index"},
     .Smallest = {},
     .Largest = {0xFFFFFF, UINT32_MAX}},
};

constexpr NumbersRule kText = NumbersText(1, 21, ":", kNotations, 16);

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,        &kBlank,      &kNoDigit,     &kUpperCase,
                                     &kWrongCharacter, &kTooManyNumbers, &kNoNotation, &kTooLargeHex, &kAllZero};

bool Read(const char *text, void *value, Why *why)
{
    Text trimmed;
    Numbers numbers;
    if (!ReadNumbersOf(kText, text, trimmed, numbers, why) || FindNotation(kText, trimmed, numbers, why) == kNoFit) {
        return false;
    }
    if ((numbers.at[0] | numbers.at[1]) == 0) {
        return Refuse(why, trimmed, kAllZero);
    }
    Store(value, VpnId{static_cast<uint32_t>(numbers.at[0]), static_cast<uint32_t>(numbers.at[1])});
    return true;
}

// ---------------------------------------------------------------------------------------------------------- text out

// A failing print is not the operation's failure: it reports what was printed, nothing.
uint32_t PrintVpnId(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const auto id = Load<VpnId>(value);
    return SYSDT_VpnId2Str(id.oui, id.index, printed, buffer);
}

constexpr FormatInRule kIn{
    .typeId = 303, .length = kLength, .modes = kTextOnly, .read = Read, .memory = Memory::kPlain};
constexpr FormatOutRule kOut{.modes = kTextOrRaw,
                             .print = PrintVpnId,
                             .textSize = kTextSize,
                             .valueSize = kLength,
                             .mode3 = Mode3::kTextAsRaw,
                             .memory = Memory::kPlain};
constexpr HelpRule kHelp{.text = "STRING<3-15>", .memory = Memory::kPlain};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2}; // the fetched table stays: scripts of old count on it

} // namespace

constinit const Type kVpnId = MakeType({
    .name = "VPNID",
    .description = "a VPN identifier",
    .reference = "RFC 2685",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kText,
    .rules = kRules,
});

} // namespace bgp

BGP_STR2(SYSDT_Str2VpnId, bgp::Read)

uint32_t SYSDT_VpnId2Str(uint32_t oui, uint32_t index, uint32_t *printed, char *buffer)
{
    *printed = 0;
    bgp::Printed(bgp::Print<"%x:%x">(buffer, bgp::kPrintLimit, oui, index), printed);
    return DT_OK;
}

BGP_FORMAT_IN(SYSDT_VpnIdFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VpnIdFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_VpnIdCheck, bgp::kLength)
BGP_HELP(SYSDT_VpnIdHelp, bgp::kHelp)

// The other way round than the byte orders of the route types: 1 when left is the smaller, OUI first.
int32_t SYSDT_VpnIdCompare(const void *, uint32_t, const void *left, const void *right)
{
    const auto first = bgp::Load<bgp::VpnId>(left);
    const auto second = bgp::Load<bgp::VpnId>(right);
    if (first.oui != second.oui) {
        return first.oui < second.oui ? 1 : -1;
    }
    return (first.index < second.index) - (first.index > second.index);
}

BGP_LUA_SET(SYSDT_VpnIdLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_VpnIdLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_VpnIdEndian, bgp::kLayout)
