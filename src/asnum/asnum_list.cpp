// ASNUM_ENHANCE: up to 256 BGP AS numbers, typed as one text ("100 65536 1.5") and each printed back the way it was
// typed (RFC 6793; dotted as in RFC 5396).
//
// 256 packed entries, filled from the first:
//
//   bytes of an entry  field     width  meaning
//   0-3                number    u32    the AS number, host order, unaligned; 0 is an unused entry
//   4                  notation  u8     0 typed plain, 1 typed dotted; any non-zero value prints dotted
#include "asnum/asnum.h"
#include "host/layout.h"
#include "host/operations.h"
#include "host/packed_list.h"

namespace bgp {

namespace {

constexpr uint32_t kEntries = 256;
constexpr uint16_t kLength = kEntries * kPackedEntrySize;

constexpr BgpField kEntryFields[] = {
    Number("asNumValue", 0, 4),
    Byte("asType", 4),
};

} // namespace

const BgpLayout kAsNumListLayout = Layout(kEntryFields, kPackedEntrySize);

namespace {

bool ReadEntry(uint32_t, Text item, PackedEntry &entry)
{
    AsNumber as;
    if (!ReadAsNumber(item, false, as)) {
        return false;
    }
    entry = {as.number, as.notation};
    return true;
}

bool IsUnused(PackedEntry entry)
{
    return entry.number == 0;
}

uint32_t PrintEntry(PackedEntry entry, char *to, uint32_t room)
{
    if (entry.notation != 0) {
        const Argument halves[] = {entry.number >> 16, entry.number & 0xFFFF};
        return Format(to, room, "%u.%u", halves);
    }
    const Argument number[] = {entry.number};
    return Format(to, room, "%u", number);
}

constexpr PackedListRule kList{
    .count = kEntries,
    .longestText = kLongestList,
    .read = ReadEntry,
    .isUnused = IsUnused,
    .print = PrintEntry,
    .luaArray = "stAsNum",
    .entry = kAsNumListLayout,
};

// Prints a copy; a host that refuses to make one refuses to print.
uint32_t PrintList(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    uint8_t copy[kLength];
    if (memcpy_s(copy, sizeof copy, value, kLength) != 0) {
        return DT_ERR_FAIL;
    }
    return PrintPackedList(kList, copy, buffer, printed);
}

// In this mode the text stands in double quotes.
constexpr uint32_t kQuotedMode = 1;

// What stands between the quotes; null when the text is not quoted. `length` counts the terminator. The closing quote
// is overwritten where it stands: the one operation that writes to its caller's text.
char *Unquote(char *text, uint32_t length)
{
    constexpr uint32_t kShortest = 3; // two quotes and the terminator
    if (length < kShortest || text[0] != '"') {
        return nullptr;
    }
    char *closing = text + std::strlen(text) - 1;
    if (*closing != '"') {
        return nullptr;
    }
    *closing = '\0';
    return text + 1;
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kIn{
    .typeId = 325, .length = kLength, .modes = kTextOnly, .read = Unexplained<SYSDT_Str2AsNumEnhance>};
constexpr FormatOutRule kOut{
    .modes = kTextOnly, .print = PrintList, .textSize = kLongestList + 1, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<1-3071>", .hidesHostCode = true};

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2AsNumEnhance(const char *text, void *value)
{
    return bgp::ReadPackedList(bgp::kList, 0, text, value);
}

uint32_t SYSDT_AsNumEnhanceFormatIn(const DataTypeRequest *request, uint32_t, uint32_t length, char *text,
                                    uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const bgp::Result result{outTypeId, outLength, outBuffer};
    if (!bgp::IsNull(request, text, result) && request->FormatMode == bgp::kQuotedMode) {
        text = bgp::Unquote(text, length);
        if (text == nullptr) {
            return DT_ERR_MODE_UNSUPPORTED;
        }
    }
    return bgp::FormatIn(bgp::kIn, request, text, result);
}

BGP_FORMAT_OUT(SYSDT_AsNumEnhanceFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_AsNumEnhanceCheck, bgp::kLength)
BGP_HELP(SYSDT_AsNumEnhanceHelp, bgp::kHelp)
BGP_LIST_LUA_SET(SYSDT_AsNumEnLuaSet, bgp::kList)
BGP_LIST_LUA_GET(SYSDT_AsNumEnLuaGet, bgp::kList)
BGP_LIST_ENDIAN(SYSDT_AsNumEnhanceLuaEndian, bgp::kList)
