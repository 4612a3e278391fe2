// ASNUM and ASNUMEXT: one BGP autonomous-system number (RFC 6793), typed plain ("65536") or dotted ("1.0", the asdot+
// form of RFC 5396), and printed back the way it was typed.
//
//   bytes  field     width  meaning
//   0-3    number    u32    the 4-byte AS number; high part << 16 | low part when dotted
//   4-7    notation  u32    0 typed plain, 1 typed dotted; any non-zero value prints dotted
//
// ASNUM takes 0 as "no AS number": refused as text and by Check, printed as the empty text. ASNUMEXT takes it as any
// other.
#include "asnum/asnum.h"

#include "host/format.h"
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 8;
constexpr uint16_t kAsTextSize = 33;

constexpr BgpField kFields[] = {
    Number("asNumValue", 0, 4),
    Number("asType", 4, 4),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpNotation PlainFrom(uint64_t smallest)
{
    return {.Form = "number",
            .Separators = "",
            .When = nullptr,
            .Names = {"the AS number"},
            .Smallest = {smallest},
            .Largest = {UINT32_MAX}};
}

// A high part of 0 is no dotted AS number, whether or not zero is welcome.
constexpr BgpNotation kDottedNotation{.Form = "high.low",
                                      .Separators = ".",
                                      .When = nullptr,
                                      .Names = {"the high part", "the low part"},
                                      .Smallest = {1, 0},
                                      .Largest = {UINT16_MAX, UINT16_MAX}};

constexpr char kSeparator[] = ".";
constexpr uint32_t kDotted = 1; // of the notations below, whose index is stored

constexpr BgpNotation kUsable[] = {PlainFrom(1), kDottedNotation};
constexpr BgpNotation kAny[] = {PlainFrom(0), kDottedNotation};

constexpr NumbersRule kUsableText = NumbersText(1, kLongestAsNumber, kSeparator, kUsable);
constexpr NumbersRule kAnyText = NumbersText(1, kLongestAsNumber, kSeparator, kAny);

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,    &kBlank,    &kNoDigit, &kWrongCharacter,
                                     &kTooManyNumbers, &kNoNotation, &kTooSmall, &kTooLarge};

AsNumber Taken(const Numbers &numbers, uint32_t notation)
{
    const uint64_t number = notation == kDotted ? numbers.at[0] << 16 | numbers.at[1] : numbers.at[0];
    return {static_cast<uint32_t>(number), notation};
}

// `text` is a trimmed piece, or a whole text.
template <class Typed>
[[gnu::always_inline]] inline bool ReadBy(const NumbersRule &rule, Typed text, AsNumber &as, Why *why)
{
    Numbers numbers;
    const uint32_t notation = ReadNotation(rule, text, numbers, why);
    if (notation == kNoFit) {
        return false;
    }
    as = Taken(numbers, notation);
    return true;
}

} // namespace

const char *ReadBareAsNumber(const char *text, AsNumber &as)
{
    Numbers numbers;
    uint32_t notation = kNoFit;
    const char *behind = ReadBareNotation(kUsableText, text, numbers, notation);
    as = Taken(numbers, notation);
    return behind;
}

bool ReadAsNumber(Text text, bool zeroWelcome, AsNumber &as)
{
    return zeroWelcome ? ReadBy(kAnyText, text, as, nullptr) : ReadBy(kUsableText, text, as, nullptr);
}

bool RefuseAsNumber(Text text, bool zeroWelcome, Why *why)
{
    if (text.length > kLongestAsNumber) {
        return Refuse(why, text, kTooLong, kLongestAsNumber, "the AS number");
    }
    AsNumber as;
    return why != nullptr && ReadBy(zeroWelcome ? kAnyText : kUsableText, text, as, why);
}

namespace {

template <bool ZeroWelcome>
bool Read(const char *text, void *value, Why *why)
{
    AsNumber as;
    if (!ReadBy(ZeroWelcome ? kAnyText : kUsableText, text, as, nullptr)) {
        return why != nullptr && RefuseAsNumber(Trim(text), ZeroWelcome, why);
    }
    Store(value, as);
    return true;
}

// The same notations for a caller that has counted the dots and wants the parts too. What stands behind the number is
// not looked at.
bool ScanParts(uint32_t dots, const char *text, uint32_t *high, uint64_t *low, Numbers &numbers)
{
    switch (dots) {
    case 0:
        if (sscanf_s(text, "%llu", low) != 1) {
            return false;
        }
        numbers = {{*low}, Shape("")};
        return true;
    case 1:
        if (sscanf_s(text, "%u.%llu", high, low) != 2) {
            return false;
        }
        numbers = {{*high, *low}, Shape(".")};
        return true;
    default:
        return false;
    }
}

uint32_t ReadParts(const NumbersRule &rule, uint32_t dots, const char *text, uint32_t *high, uint64_t *low, void *value)
{
    Numbers numbers;
    const uint32_t notation =
        ScanParts(dots, text, high, low, numbers) ? FindNotation(rule, {}, numbers, nullptr) : kNoFit;
    if (notation == kNoFit) {
        return DT_ERR_FAIL;
    }
    Store(value, Taken(numbers, notation));
    return DT_OK;
}

} // namespace

// ---------------------------------------------------------------------------------------------------------- text out

int32_t PrintAsNumber(char *buffer, uint32_t size, AsNumber as)
{
    if (as.notation != 0) {
        return Print<"%u.%u">(buffer, size, HighHalf(as.number), LowHalf(as.number));
    }
    return Print<"%u">(buffer, size, as.number);
}

namespace {

uint32_t PrintExt(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return Printed(PrintAsNumber(buffer, kAsTextSize - 1, Load<AsNumber>(value)), printed);
}

uint32_t PrintUsable(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    if (Load<AsNumber>(value).number == 0) {
        return Printed(PrintText(buffer, kAsTextSize - 1, ""), printed);
    }
    return PrintExt(value, mode, buffer, printed);
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kAsNumIn{.typeId = 255, .length = kLength, .modes = kTextOnly, .read = Read<false>};
constexpr FormatInRule kAsNumExtIn{.typeId = 285, .length = kLength, .modes = kTextOnly, .read = Read<true>};
constexpr FormatOutRule kAsNumOut{
    .modes = kTextOrRaw, .print = PrintUsable, .textSize = kAsTextSize, .valueSize = kLength, .mode3 = Mode3::kCopy};
constexpr FormatOutRule kAsNumExtOut{
    .modes = kTextOrRaw, .print = PrintExt, .textSize = kAsTextSize, .valueSize = kLength, .mode3 = Mode3::kCopy};
constexpr HelpRule kHelp{.text = "STRING<1-11>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2}; // the fetched table stays: scripts of old count on it

constexpr char kReference[] = "RFC 6793, RFC 5396";

} // namespace

constinit const Type kAsNum = MakeType({
    .name = "ASNUM",
    .description = "one BGP AS number; 0 is none",
    .reference = kReference,
    .in = &kAsNumIn,
    .out = &kAsNumOut,
    .layout = &kLayout,
    .text = &kUsableText,
    .rules = kRules,
});

constinit const Type kAsNumExt = MakeType({
    .name = "ASNUMEXT",
    .description = "one BGP AS number, 0 like any other",
    .reference = kReference,
    .in = &kAsNumExtIn,
    .out = &kAsNumExtOut,
    .layout = &kLayout,
    .text = &kAnyText,
    .rules = kRules,
});

} // namespace bgp

BGP_STR2(SYSDT_Str2AsNum, bgp::Read<false>)
BGP_STR2(SYSDT_Str2AsNumExt, bgp::Read<true>)

uint32_t SYSDT_Str2AsNumSetAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low, void *value)
{
    return bgp::ReadParts(bgp::kUsableText, dotCount, text, high, low, value);
}

uint32_t SYSDT_Str2AsNumToAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low, void *value)
{
    return bgp::ReadParts(bgp::kAnyText, dotCount, text, high, low, value);
}

uint32_t SYSDT_AsNumCheck(const void *, uint32_t, uint32_t length, const void *value)
{
    const uint32_t code = bgp::CheckLength(value, length, bgp::kLength);
    if (code == DT_OK && bgp::Load<bgp::AsNumber>(value).number == 0) {
        return DT_ERR_INVALID_VALUE;
    }
    return code;
}

BGP_FORMAT_IN(SYSDT_AsNumFormatIn, bgp::kAsNumIn)
BGP_FORMAT_IN(SYSDT_AsNumExtFormatIn, bgp::kAsNumExtIn)
BGP_FORMAT_OUT(SYSDT_AsNumFormatOut, bgp::kAsNumOut)
BGP_FORMAT_OUT(SYSDT_AsNumExtFormatOut, bgp::kAsNumExtOut)
BGP_CHECK_LENGTH(SYSDT_AsNumExtCheck, bgp::kLength)
BGP_HELP(SYSDT_AsNumHelp, bgp::kHelp)
BGP_LUA_SET(SYSDT_AsNumLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_AsNumLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_AsNumLuaEndian, bgp::kLayout)
