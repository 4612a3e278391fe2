// LARGECOMMUNITY: one BGP large community (RFC 8092), three numbers: "64496:1:2".
//
//   bytes  field                 width  meaning
//   0-3    global administrator  u32    host order, an AS number
//   4-7    local data part 1     u32    host order
//   8-11   local data part 2     u32    host order
//   12-15  type                  u32    host order, 0 when typed; never printed
#include "community/community.h"
#include "host/layout.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 16;
constexpr uint32_t kParts = 3;
constexpr uint32_t kShortestTyped = 5; // "1:2:3"
constexpr uint32_t kLongestTyped = 32; // three times "4294967295"

constexpr BgpField kFields[] = {
    NumberArray("largeCommunity", 0, 4, kParts),
    Number("type", 12, 4, 1),
};

bool Read(Text text, void *value)
{
    Numbers numbers;
    if (!IsLong(text, kShortestTyped, kLongestTyped) || !ReadNumbers(text, ":", numbers) ||
        numbers.shape != Shape("::")) {
        return false;
    }
    uint32_t words[kParts + 1] = {}; // the type word behind the parts
    for (uint32_t i = 0; i < kParts; ++i) {
        if (numbers.at[i] > UINT32_MAX) {
            return false;
        }
        words[i] = static_cast<uint32_t>(numbers.at[i]);
    }
    std::memcpy(value, words, sizeof words);
    return true;
}

uint32_t PrintLargeCommunity(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const auto part = [value](uint32_t i) { return Load<uint32_t>(value + 4 * i); };
    return Printed(Print(buffer, kTextSize - 1, "%u:%u:%u", {part(0), part(1), part(2)}), printed);
}

} // namespace

const BgpLayout kLargeCommunityLayout = Layout(kFields, kLength);

namespace {

// The mode sets are this type's own: mode 6 is no text mode on the way in, every mode but 4 is one on the way out.
constexpr FormatInRule kIn{
    .typeId = 321, .length = kLength, .modes = {Modes(1, 2), Modes(0, 3, 5, 6)}, .parse = SYSDT_Str2LargeCommunity};
constexpr FormatOutRule kOut{
    .modes = kAllButFour, .print = PrintLargeCommunity, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<5-32>", .modes = Modes(1)};
constexpr LuaRule kLua{.layout = kLargeCommunityLayout, .pops = 2};

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2LargeCommunity(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Read(bgp::Trim(text), value) ? DT_OK : DT_ERR_FAIL;
}

BGP_FORMAT_IN(SYSDT_LargeCommunityFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_LargeCommunityFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_LargeCommunityCheck, bgp::kLength)
BGP_HELP(SYSDT_LargeCommunityHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_LargeCommunityCompare)
BGP_LUA_SET(SYSDT_LargeCommunityLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_LargeCommunityLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_LargeCommunityEndian, bgp::kLargeCommunityLayout)
