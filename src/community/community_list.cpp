// CMNTY_ENHANCE: up to 32 standard communities (RFC 1997), typed as one text ("no-export 100:1 0").
//
// 32 packed entries, filled from the first:
//
//   bytes of an entry  field      width  meaning
//   0-3                community  u32    host order, unaligned; first half << 16 | second half
//   4                  form       u8     0 typed as a number or a name, 1 as two halves, 2 unused entry
#include "community/community.h"
#include "host/layout.h"
#include "host/operations.h"
#include "host/packed_list.h"

namespace bgp {

namespace {

constexpr uint32_t kEntries = 32;
constexpr uint16_t kLength = kEntries * kPackedEntrySize;
constexpr uint32_t kLongestTyped = 392; // 32 numbers fit; 32 of the longest names do not, and are cut when printed

constexpr BgpField kEntryFields[] = {
    Number("community", 0, 4),
    Byte("type", 4),
};

} // namespace

const BgpLayout kCommunityListLayout = Layout(kEntryFields, kPackedEntrySize);

namespace {

bool ReadEntry(uint32_t memoryHandle, Text item, PackedEntry &entry)
{
    Community community;
    if (ReadCommunity(memoryHandle, item, community) != DT_OK) {
        return false;
    }
    entry = {community.number, community.form};
    return true;
}

bool IsUnused(PackedEntry entry)
{
    return entry.notation == kUnset;
}

bool MayStandInItem(char character)
{
    const char lower = static_cast<char>(character | 0x20); // of a letter
    return IsDigit(character) || (lower >= 'a' && lower <= 'z') || character == ':' || character == '-';
}

// An entry of another form prints nothing, and yet has a blank of its own.
uint32_t PrintEntry(PackedEntry entry, char *to, uint32_t room)
{
    return FormatCommunity({entry.number, entry.notation}, to, room);
}

constexpr PackedListRule kList{
    .count = kEntries,
    .longestText = kLongestTyped,
    .read = ReadEntry,
    .isUnused = IsUnused,
    .print = PrintEntry,
    .luaArray = "stCmnty",
    .entry = kCommunityListLayout,
    .allows = MayStandInItem,
    .longestItem = kLongestCommunity,
};

uint32_t PrintList(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return PrintPackedList(kList, value, buffer, printed);
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kIn{.typeId = 326,
                           .length = kLength,
                           .modes = kAllButFour,
                           .read = nullptr,
                           .readByHandle = UnexplainedByHandle<SYSDT_Str2CmntyEnhance>};
constexpr FormatOutRule kOut{
    .modes = kTextOnly, .print = PrintList, .textSize = kLongestTyped + 1, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-392>", .hidesHostCode = true};

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2CmntyEnhance(uint32_t memoryHandle, const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    for (uint32_t i = 0; i < bgp::kEntries; ++i) {
        bgp::StoreEntry(static_cast<uint8_t *>(value) + i * bgp::kPackedEntrySize, {0, bgp::kUnset});
    }
    return bgp::ReadPackedList(bgp::kList, memoryHandle, text, value);
}

BGP_FORMAT_IN(SYSDT_CMNTYEnhanceFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_CMNTYEnhanceFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_CMNTYEnhanceCheck, bgp::kLength)
BGP_HELP(SYSDT_CMNTYEnhanceHelp, bgp::kHelp)
BGP_LIST_LUA_SET(SYSDT_CmntyEnLuaSet, bgp::kList)
BGP_LIST_LUA_GET(SYSDT_CmntyEnLuaGet, bgp::kList)
BGP_LIST_ENDIAN(SYSDT_CmntyEnhanceLuaEndian, bgp::kList)
