// EXTCMNTY_COMPR: an extended community of one fixed kind that carries a 16-bit number, typed as "100:0". The second
// number is always 0. Values are compared by EXTCOMMUNITY's operation.
//
//   bytes  field     width  meaning
//   0-1    type      u16    host order, 0x8099 when typed; values of another type print nothing
//   2-3    cpi       u16    host order
//   4-7    reserved  u32    host order, 0 when typed
#include "community/community.h"
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 8;
constexpr uint16_t kType = 0x8099;
constexpr uint32_t kLongestTyped = 7; // "65535:0"

// The record ends in a word, but a script's number is cut to 16 bits on its way in.
constexpr BgpField kFields[] = {
    Number("type", 0, 2),
    Number("cpi", 2, 2),
    Number("reserved", 4, 4, 2),
};

bool Read(Text text, uint8_t *value)
{
    Numbers numbers;
    if (!IsLong(text, 1, kLongestTyped) || !ReadNumbers(text, ":", numbers, nullptr) || numbers.shape != Shape(":") ||
        numbers.at[0] > UINT16_MAX || numbers.at[1] != 0) {
        return false;
    }
    Store(value, kType);
    Store(value + 2, static_cast<uint16_t>(numbers.at[0]));
    Store(value + 4, uint32_t{0});
    return true;
}

uint32_t PrintCompressed(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    if (Load<uint16_t>(value) != kType) {
        return DT_OK;
    }
    const auto cpi = Load<uint16_t>(value + 2);
    const auto reserved = Load<uint32_t>(value + 4);
    return Printed(Print(buffer, kTextSize - 1, "%u:%u", {cpi, reserved}), printed);
}

} // namespace

const BgpLayout kExtCommunityComprLayout = Layout(kFields, kLength);

namespace {

constexpr FormatInRule kIn{
    .typeId = 1300, .length = kLength, .modes = kTextOnly, .read = Unexplained<SYSDT_Str2ExtCommunityCompr>};
constexpr FormatOutRule kOut{.modes = kTextOnly, .print = PrintCompressed, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-7>"};
constexpr LuaRule kLua{.layout = kExtCommunityComprLayout, .pops = 3}; // the fetched table stays

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2ExtCommunityCompr(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Read(bgp::Trim(text), static_cast<uint8_t *>(value)) ? DT_OK : DT_ERR_FAIL;
}

BGP_FORMAT_IN(SYSDT_ExtCommunityComprFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_ExtCommunityComprFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_ExtCommunityComprCheck, bgp::kLength)
BGP_HELP(SYSDT_ExtCommunityComprHelp, bgp::kHelp)
BGP_LUA_SET(SYSDT_ExtCommunityComprLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_ExtCommunityComprLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_EXTCommunityComprEndian, bgp::kExtCommunityComprLayout)
