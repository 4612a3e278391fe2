// ASNUM_ENHANCE: up to 256 BGP AS numbers, typed as one text ("100 65536 1.5") and each printed back the way it was
// typed (RFC 6793; dotted as in RFC 5396).
//
// 256 packed entries, filled from the first:
//
//   bytes of an entry  field     width  meaning
//   0-3                number    u32    the AS number, host order, unaligned; 0 is an unused entry
//   4                  notation  u8     0 typed plain, 1 typed dotted; any non-zero value prints dotted
#include "asnum/asnum.h"
#include "host/format.h"
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
constexpr BgpLayout kEntry = Layout(kEntryFields, kPackedEntrySize);

// ----------------------------------------------------------------------------------------------------------- an entry

bool ReadEntry(uint32_t, Text item, PackedEntry &entry, Why *why)
{
    AsNumber as;
    if (!ReadAsNumber(item, false, as, why)) {
        return false;
    }
    entry = {as.number, as.notation};
    return true;
}

const char *ReadBareEntry(const char *text, PackedEntry &entry)
{
    AsNumber as;
    const char *behind = ReadBareAsNumber(text, as);
    entry = {as.number, as.notation};
    return behind;
}

bool IsUnused(PackedEntry entry)
{
    return entry.number == 0;
}

void PrintEntry(PackedEntry entry, GrowingText &text)
{
    if (entry.notation != 0) {
        Put<"%u.%u">(text, HighHalf(entry.number), LowHalf(entry.number));
    } else {
        Put<"%u">(text, entry.number);
    }
}

constexpr PackedListRule kList{
    .count = kEntries,
    .longestText = kLongestList,
    .read = ReadEntry,
    .isUnused = IsUnused,
    .print = PrintEntry,
    .luaArray = "stAsNum",
    .entry = kEntry,
    .readBare = ReadBareEntry,
};

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpRule kNoQuote{"quote", "the text stands in double quotes; one is missing here", 0};

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,    &kTooManyItems, &kNoDigit,  &kWrongCharacter,
                                     &kTooManyNumbers, &kNoNotation, &kTooSmall,     &kTooLarge, &kNoQuote};

bool Read(const char *text, void *value, Why *why)
{
    const Text list = Trim(text);
    return (why == nullptr && ReadBareList(kList, list, value)) || ReadPackedList(kList, 0, list, value, why);
}

// In this mode the text stands in double quotes.
constexpr uint32_t kQuotedMode = 1;

// The closing quote of a text in quotes; null when there are none. `length` counts the terminator, as a host does.
const char *ClosingQuote(const char *text, uint32_t length, Why *why)
{
    constexpr uint32_t kShortest = 3; // two quotes and the terminator
    if (*text != '"') {
        Refuse(why, {text, 0}, kNoQuote);
        return nullptr;
    }
    const char *end = text + std::strlen(text);
    if (length < kShortest || end[-1] != '"') {
        Refuse(why, {end, 0}, kNoQuote);
        return nullptr;
    }
    return end - 1;
}

// ---------------------------------------------------------------------------------------------------------- text out

// Prints a copy; a host that refuses to make one refuses to print.
uint32_t PrintList(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    uint8_t copy[kLength];
    if (memcpy_s(copy, sizeof copy, value, kLength) != 0) {
        return DT_ERR_FAIL;
    }
    return PrintPackedList(kList, copy, buffer, printed);
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kIn{.typeId = 325, .length = kLength, .modes = kTextOnly, .read = Read};
constexpr FormatOutRule kOut{
    .modes = kTextOnly, .print = PrintList, .textSize = kLongestList + 1, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<1-3071>", .hidesHostCode = true};

// What FormatIn does in front of its rule, with the text left alone.
uint32_t ExplainQuoted(const DataTypeRequest &request, const char *text, BgpRefusal &refusal)
{
    Why why{&refusal.Reason, text, 0};
    if (request.FormatMode != kQuotedMode) {
        return Explain(kIn, request, text, why);
    }
    const char *closing = ClosingQuote(text, static_cast<uint32_t>(std::strlen(text) + 1), &why);
    if (closing == nullptr) {
        return DT_ERR_MODE_UNSUPPORTED;
    }
    uint8_t value[kLength];
    const Text quoted{text + 1, static_cast<uint32_t>(closing - text - 1)};
    return ReadPackedList(kList, 0, Trim(quoted), value, &why) ? DT_OK : kIn.refusal;
}

} // namespace

constinit const Type kAsNumList = MakeType({
    .name = "ASNUM_ENHANCE",
    .description = "a list of up to 256 BGP AS numbers",
    .reference = "RFC 6793, RFC 5396",
    .in = &kIn,
    .out = &kOut,
    .layout = &kEntry,
    .rules = kRules,
    .shortestText = 1,
    .longestText = kLongestList,
    .traits = BGP_TRAIT_WRITES_TEXT,
    .explain = ExplainQuoted,
});

} // namespace bgp

BGP_STR2(SYSDT_Str2AsNumEnhance, bgp::Read)

// The closing quote is overwritten where it stands: the one operation that writes to its caller's text.
uint32_t SYSDT_AsNumEnhanceFormatIn(const DataTypeRequest *request, uint32_t, uint32_t length, char *text,
                                    uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const bgp::Result result{outTypeId, outLength, outBuffer};
    if (!bgp::IsNull(request, text, result) && request->FormatMode == bgp::kQuotedMode) {
        const char *closing = bgp::ClosingQuote(text, length, nullptr);
        if (closing == nullptr) {
            return DT_ERR_MODE_UNSUPPORTED;
        }
        text[closing - text] = '\0';
        ++text;
    }
    return bgp::FormatIn(bgp::kIn, request, text, result);
}

BGP_FORMAT_OUT(SYSDT_AsNumEnhanceFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_AsNumEnhanceCheck, bgp::kLength)
BGP_HELP(SYSDT_AsNumEnhanceHelp, bgp::kHelp)
BGP_LIST_LUA_SET(SYSDT_AsNumEnLuaSet, bgp::kList)
BGP_LIST_LUA_GET(SYSDT_AsNumEnLuaGet, bgp::kList)
BGP_LIST_ENDIAN(SYSDT_AsNumEnhanceLuaEndian, bgp::kList)
