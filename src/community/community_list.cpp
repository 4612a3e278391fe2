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
constexpr BgpLayout kEntry = Layout(kEntryFields, kPackedEntrySize);

// ----------------------------------------------------------------------------------------------------------- an entry

// An item with two colons is none, whatever else it holds.
bool ReadEntry(uint32_t memoryHandle, Text item, PackedEntry &entry, Why *why)
{
    constexpr uint32_t kMostColons = 1;
    Community community;
    if (ReadCommunity(memoryHandle, item, kMostColons, community, why) != DT_OK) {
        return false;
    }
    entry = {community.number, community.form};
    return true;
}

const char *ReadBareEntry(const char *text, PackedEntry &entry)
{
    Community community{};
    const char *behind = ReadBareCommunity(text, community);
    entry = {community.number, community.form};
    return behind;
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
void PrintEntry(PackedEntry entry, GrowingText &text)
{
    FormatCommunity({entry.number, entry.notation}, text);
}

constexpr PackedListRule kList{
    .count = kEntries,
    .longestText = kLongestTyped,
    .read = ReadEntry,
    .isUnused = IsUnused,
    .print = PrintEntry,
    .luaArray = "stCmnty",
    .entry = kEntry,
    .allows = MayStandInItem,
    .longestItem = kLongestCommunity,
    .item = "a community",
    .readBare = ReadBareEntry,
};

// --------------------------------------------------------------------------------------------------- text in and out

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,    &kTooManyItems, &kNoDigit,    &kWrongCharacter,
                                     &kTooManyNumbers, &kNoNotation, &kTooLarge,     &kUnknownName};

void Clear(void *value)
{
    for (uint32_t i = 0; i < kEntries; ++i) {
        StoreEntry(static_cast<uint8_t *>(value) + i * kPackedEntrySize, {0, kUnset});
    }
}

// All entries are written, those behind the last item as unused ones; all of them are unused when the text cannot be
// cut into items.
bool Read(uint32_t memoryHandle, const char *text, void *value, Why *why)
{
    const Text list = Trim(text);
    Clear(value);
    if (why == nullptr && ReadBareList(kList, list, value)) {
        return true;
    }
    Clear(value);
    return ReadPackedList(kList, memoryHandle, list, value, why);
}

uint32_t PrintList(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return PrintPackedList(kList, value, buffer, printed);
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kIn{
    .typeId = 326, .length = kLength, .modes = kAllButFour, .read = nullptr, .readByHandle = Read};
constexpr FormatOutRule kOut{
    .modes = kTextOnly, .print = PrintList, .textSize = kLongestTyped + 1, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-392>", .hidesHostCode = true};

} // namespace

constinit const Type kCommunityList = MakeType({
    .name = "CMNTY_ENHANCE",
    .description = "a list of up to 32 standard BGP communities",
    .reference = "RFC 1997",
    .in = &kIn,
    .out = &kOut,
    .layout = &kEntry,
    .rules = kRules,
    .shortestText = 1,
    .longestText = kLongestTyped,
});

} // namespace bgp

uint32_t SYSDT_Str2CmntyEnhance(uint32_t memoryHandle, const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Read(memoryHandle, text, value, nullptr) ? DT_OK : DT_ERR_FAIL;
}

BGP_FORMAT_IN(SYSDT_CMNTYEnhanceFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_CMNTYEnhanceFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_CMNTYEnhanceCheck, bgp::kLength)
BGP_HELP(SYSDT_CMNTYEnhanceHelp, bgp::kHelp)
BGP_LIST_LUA_SET(SYSDT_CmntyEnLuaSet, bgp::kList)
BGP_LIST_LUA_GET(SYSDT_CmntyEnLuaGet, bgp::kList)
BGP_LIST_ENDIAN(SYSDT_CmntyEnhanceLuaEndian, bgp::kList)
