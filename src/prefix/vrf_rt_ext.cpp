// VRFRTEXT, sub-type 8 of BOLPREFIX: a route target as a route key. Beside the kinds of VRFRT it takes the ES-import
// route target of EVPN (RFC 7432), six bytes typed as three groups of hexadecimal digits: "0a0b-0c0d-0e0f".
//
//   bytes  field     width  meaning
//   0-3    sub-type  u32    host order, 8
//   4-5    RT kind   2      extended-community type and sub-type: 0002 2-byte AS, 0102 IPv4 address, 0202 4-byte AS,
//                           0602 ES-import
//   6-11   RT value  6      network order, split by kind; ES-import: the six bytes in text order
//   12-15  notation  u32    host order: 0 a.b.c.d:n, 1 AS:n, 2 AS:n with AS above 65535, 3 x.y:n and ES-import
//   16-88                   zero
//
// Texts are counted by separators first and scanned afterwards, up to the last number of the notation: hexadecimal
// letters and dashes behind it go unnoticed, so that 1:2ab is 1:2. Check, Help and Compare are those of other types.
#include "bgp_datatypes/helpers.h"
#include "bgp_datatypes/rdrt.h"
#include "host/layout.h"
#include "host/operations.h"
#include "prefix/route_keys.h"
#include "prefix/scan.h"
#include "rdrt/notation.h"

namespace bgp {

namespace {

constexpr uint32_t kVrfRtExtSubType = 8;
constexpr uint32_t kNotationAt = 12;
constexpr uint32_t kLongestTyped = 100;
constexpr uint32_t kEsImportKind = 0x0602;
constexpr uint32_t kAs2Kind = 0x0002;

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    ByteArray("RtValue", kPayloadAt, 8),
    Number("RtType", kNotationAt, 4, 1),
};

constexpr NotationRule kTyped{.kinds = {0x0102, kAs2Kind, 0x0202}, .refusesZero = false};

constexpr Split kSixBytes{{{2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}, {7, 1}}};
constexpr Split kUnknownSplit{{{0, 2}, {2, 4}, {6, 2}}}; // the kind and what follows it

enum Style : uint32_t { kDisplay, kPlain };

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // RT kind, notation, {display, plain}
    {0x0102,        kAny, {Prints<"RT <%u.%u.%u.%u : %u>", kIpv4Split>, Prints<"%u.%u.%u.%u:%u", kIpv4Split>}},
    {0x0000,        kAny, {Prints<"RT <%u : %u>", kAs2Split>, Prints<"%u:%u", kAs2Split>}},
    {kAs2Kind,      1,    {Prints<"RT <%u : %u>", kAs2Split>, Prints<"%u:%u", kAs2Split>}},
    {kAs2Kind,      2,    {Prints<"RT <%u : %u>", kAs4Split>, Prints<"%u:%u", kAs4Split>}}, // the notation picks the split
    {kAs2Kind,      3,    {Prints<"RT <%u . %u : %u>", kDottedSplit>, Prints<"%u.%u:%u", kDottedSplit>}},
    {kAs2Kind,      kAny, {}},
    {0x0202,        2,    {Prints<"RT <%u : %u>", kAs4Split>, Prints<"%u:%u", kAs4Split>}},
    {0x0202,        3,    {Prints<"RT <%u . %u : %u>", kDottedSplit>, Prints<"%u.%u:%u", kDottedSplit>}},
    {0x0202,        kAny, {}},
    {kEsImportKind, kAny, {Prints<"RT <%02hx%02hx-%02hx%02hx-%02hx%02hx>", kSixBytes>, Prints<"%02hx%02hx-%02hx%02hx-%02hx%02hx", kSixBytes>}},
    {kAny,          kAny, {Prints<"Unknow <%u : %u : %u>", kUnknownSplit>, Prints<"Unknow %u:%u:%u", kUnknownSplit>}},
};
// clang-format on

// ----------------------------------------------------------------------------------------------------------- text in

constexpr const char *kNotationNames[] = {"a.b.c.d:n", "AS:n", "x.y:n", "xxxx-xxxx-xxxx"};

constexpr const BgpRule *kRules[] = {&kEmpty,   &kTooLong,   &kBlank,    &kWrongCharacter, &kNoNotation,
                                     &kNoDigit, &kSeparator, &kTooLarge, &kNoHexDigit};

struct Separators {
    uint32_t dots, colons, dashes;
};

// The counter of a separator; null for other characters.
uint32_t *CounterOf(char character, Separators &count)
{
    switch (character) {
    case '.':
        return &count.dots;
    case ':':
        return &count.colons;
    case '-':
        return &count.dashes;
    default:
        return nullptr;
    }
}

// Says why the text is of no notation; below.
[[gnu::cold]] void NoteForm(const Why &why, Text text);

bool RefuseForm(Why *why, Text text)
{
    if (why != nullptr) [[unlikely]] {
        NoteForm(*why, text);
    }
    return false;
}

// Counts what is there. False for a text that is too short or too long, or that holds anything else than hexadecimal
// digits and separators.
bool Count(Text text, Separators &count, Why *why)
{
    if (!HasLength(text, 1, kLongestTyped, why)) {
        return false;
    }
    for (uint32_t i = 0; i < text.length; ++i) {
        if (IsHexDigit(text.at[i])) {
            continue;
        }
        uint32_t *counter = CounterOf(text.at[i], count);
        if (counter == nullptr) {
            return RefuseForm(why, text);
        }
        ++*counter;
    }
    return true;
}

void Finish(uint8_t *value, uint32_t notation)
{
    Store(value, kVrfRtExtSubType);
    Store(value + kNotationAt, notation);
}

// A notation of decimal numbers. An AS number and what it assigns share the bytes, so that how large they may be shows
// only when both are read.
struct Form {
    ScanForm scan;
    uint32_t items;
    uint32_t shape;
};

constexpr const BgpNotation &kByAddress = kSharedNotations.rows[0];
constexpr const BgpNotation &kByNumber = kSharedNotations.rows[2];
constexpr const BgpNotation &kByHalves = kSharedNotations.rows[3];

constexpr Form kIpv4Form{ScanOf("%u.%u.%u.%u:%u", kByAddress), 5, Shape("...:")};
constexpr Form kPlainForm{
    {"%u:%u", {{kByNumber.Names[0], UINT32_MAX}, {kByNumber.Names[1], UINT32_MAX}}}, 2, Shape(":")};
constexpr Form kDottedForm{ScanOf("%u.%u:%u", kByHalves), 3, Shape(".:")};

bool ReadForm(const Form &form, Text text, uint8_t *value, Why *why)
{
    Scanned scanned;
    if (!Scan(form.scan, text, scanned, why)) {
        return false;
    }
    Numbers numbers;
    numbers.shape = form.shape;
    for (uint32_t i = 0; i < form.items; ++i) {
        numbers.at[i] = scanned.numbers[i];
    }
    const uint32_t notation = Encode(kTyped, text, numbers, value + kPayloadAt, why);
    if (notation == kNoFit) {
        return false;
    }
    Finish(value, notation);
    return true;
}

// "%02hx%02hx-%02hx%02hx-%02hx%02hx"; null when it is not there.
const char *ScanEsImport(Text text, uint8_t (&six)[6], Why *why)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    for (uint32_t i = 0; i < sizeof six; ++i) {
        if (i == 2 || i == 4) {
            if (at == end || *at != '-') {
                RefuseSeparator(why, {at, at < end}, '-');
                return nullptr;
            }
            ++at;
        }
        const char *const start = at;
        at = ScanHexByte(at, end, &six[i]);
        if (at == nullptr) {
            RefuseCharacter(why, {start, start < end}, kNoHexDigit);
            return nullptr;
        }
    }
    return at;
}

bool ReadEsImport(Text text, uint8_t *value, Why *why)
{
    uint8_t six[6];
    if (ScanEsImport(text, six, why) == nullptr) {
        return false;
    }
    StoreBig(value + kPayloadAt, kEsImportKind, 2);
    std::memcpy(value + kPayloadAt + 2, six, sizeof six);
    Finish(value, 3);
    return true;
}

// Why the text, which has no stray characters, is not of the form; null stands for ES-import. Behind what was scanned
// it ends, or a separator stands that may not.
BgpReason JudgeForm(const Form *form, const Why &why, Text text)
{
    BgpReason reason{};
    Why own{&reason, why.from, why.offset};
    Scanned scanned;
    uint8_t six[6];
    const char *const end = text.at + text.length;
    const char *at = nullptr;
    if (form == nullptr) {
        at = ScanEsImport(text, six, &own);
    } else if (Scan(form->scan, text, scanned, &own)) {
        at = scanned.end;
    }
    if (at != nullptr) {
        while (at < end && (IsHexDigit(*at) || (form != nullptr && *at == '-'))) {
            ++at;
        }
        RefuseChoice(&own, {at, at < end}, kNoNotation, Choices(kNotationNames));
    }
    return reason;
}

// Of the notation that gets furthest; where several get equally far, any of them may stand.
void NoteFurthest(const Why &why, Text text)
{
    constexpr const Form *kForms[] = {&kIpv4Form, &kPlainForm, &kDottedForm, nullptr};
    BgpReason &best = *why.reason;
    uint32_t equals = 0;
    for (const Form *form : kForms) {
        const BgpReason reason = JudgeForm(form, why, text);
        if (equals == 0 || Reach(reason) > Reach(best)) {
            best = reason;
            equals = 1;
        } else {
            equals += Reach(reason) == Reach(best);
        }
    }
    if (equals > 1 && best.Rule->FormHolds == 0) {
        best.Rule = &kNoNotation;
        best.What = nullptr;
        best.Expected = Choices(kNotationNames);
    }
}

// A character that stands in no notation is the reason when what stands before it is the beginning of one.
void NoteForm(const Why &why, Text text)
{
    Separators count{};
    Text front{text.at, 0};
    while (front.length < text.length &&
           (IsHexDigit(text.at[front.length]) || CounterOf(text.at[front.length], count) != nullptr)) {
        ++front.length;
    }
    NoteFurthest(why, front);
    const char *const stray = front.at + front.length;
    if (front.length < text.length && Reach(*why.reason) == why.offset + static_cast<uint32_t>(stray - why.from)) {
        *why.reason = {};
        NoteCharacter(why, {stray, 1}, kWrongCharacter);
    }
}

// The separators pick the notation. Dashes count for ES-import only.
const Form *FindForm(const Separators &count)
{
    return count.dots == 3 ? &kIpv4Form : count.dots == 1 ? &kDottedForm : count.dots == 0 ? &kPlainForm : nullptr;
}

bool ReadTrimmed(Text text, uint8_t *value, Why *why)
{
    Separators count{};
    if (!Count(text, count, why)) {
        return false;
    }
    const Form *form = count.colons == 1 ? FindForm(count) : nullptr;
    if (form != nullptr) {
        return ReadForm(*form, text, value, why);
    }
    const bool esImport = count.colons == 0 && count.dots == 0 && count.dashes == 2;
    return esImport ? ReadEsImport(text, value, why) : RefuseForm(why, text);
}

bool Read(const char *text, void *value, Why *why)
{
    return ReadTrimmed(Trim(text), static_cast<uint8_t *>(value), why);
}

// The notations by themselves: the text is read as it is.
template <const Form &Form>
bool ReadOf(const char *text, void *value, Why *why)
{
    return ReadForm(Form, {text, static_cast<uint32_t>(std::strlen(text))}, static_cast<uint8_t *>(value), why);
}

bool ReadBareEsImport(const char *text, void *value, Why *why)
{
    return ReadEsImport({text, static_cast<uint32_t>(std::strlen(text))}, static_cast<uint8_t *>(value), why);
}

// ---------------------------------------------------------------------------------------------------------- text out

Stored StoredIn(const uint8_t *value)
{
    return StoredAt(value + kPayloadAt);
}

// The printed length; a failing print counts as nothing printed.
uint32_t PrintStyle(const Stored &stored, Style style, char *buffer)
{
    uint32_t printed = 0;
    PrintStored(Table(kPrintRows), stored, style, buffer, &printed);
    return printed;
}

uint32_t PrintAs2(const void *value, Style style, char *buffer)
{
    Stored stored = StoredIn(static_cast<const uint8_t *>(value));
    stored.kind = kAs2Kind;
    return PrintStyle(stored, style, buffer);
}

// The text that would be typed in kPlainMode, what people read in the other modes.
uint32_t PrintVrfRtExt(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    if (mode == kPlainMode && IsUnset(value + kPayloadAt)) {
        Printed(PrintText(buffer, kPrintLimit, ""), printed);
    } else {
        *printed = PrintStyle(StoredIn(value), mode == kPlainMode ? kPlain : kDisplay, buffer);
    }
    return DT_OK;
}

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

// LuaGet leaves the sub-type word to the composite.
constexpr BgpLayout kRtLayout{kFields + 1, 2, kBolPrefixLength};

constexpr FormatInRule kIn{.typeId = kBolPrefixTypeId, .length = kBolPrefixLength, .modes = kTextOnly, .read = Read};
constexpr FormatOutRule kOut{.modes = kTextOrRaw,
                             .print = PrintVrfRtExt,
                             .textSize = kTextSize,
                             .valueSize = kBolPrefixLength,
                             .mode3 = Mode3::kTextAsRaw};
constexpr LuaRule kLuaSet{.layout = kLayout, .pops = 0};
constexpr LuaRule kLuaGet{.layout = kRtLayout, .pops = 3};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 3};

} // namespace

constinit const Type kVrfRtExt = MakeSubType({
    .name = "VRFRTEXT",
    .description = "a route target as a route key",
    .reference = "RFC 4360, RFC 5668, RFC 7432",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = 1,
    .longestText = kLongestTyped,
    .subType = kVrfRtExtSubType,
    .lua = BGP_LUA_TYPED,
    .traits = BGP_TRAIT_KEEPS_SUBTYPE,
});

} // namespace bgp

uint32_t SYSDT_CheckVrfRtExtStr(const char *text, uint32_t *dots, uint32_t *colons, uint32_t *dashes)
{
    if (text == nullptr || dots == nullptr || colons == nullptr || dashes == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    bgp::Separators count{*dots, *colons, *dashes};
    const bool usable = bgp::Count({text, static_cast<uint32_t>(std::strlen(text))}, count, nullptr);
    *dots = count.dots;
    *colons = count.colons;
    *dashes = count.dashes;
    return usable ? DT_OK : DT_ERR_FAIL;
}

BGP_STR2(SYSDT_Str2IpAddressRT, bgp::ReadOf<bgp::kIpv4Form>)
BGP_STR2(SYSDT_Str2TwoOctecAsRT, bgp::ReadOf<bgp::kPlainForm>)
BGP_STR2(SYSDT_Str2FourOctecAsRT, bgp::ReadOf<bgp::kDottedForm>)
BGP_STR2(SYSDT_Str2EvpnOctecAsRT, bgp::ReadBareEsImport)
BGP_STR2(SYSDT_Str2VrfRtExt, bgp::Read)

uint32_t SYSDT_VrfRtExtFormatOutRtStr(char *buffer, const void *value)
{
    return bgp::PrintStyle(bgp::StoredIn(static_cast<const uint8_t *>(value)), bgp::kDisplay, buffer);
}

uint32_t SYSDT_VrfRtExtFormatOutRtStrNCF(char *buffer, const void *value)
{
    return bgp::PrintStyle(bgp::StoredIn(static_cast<const uint8_t *>(value)), bgp::kPlain, buffer);
}

uint32_t SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(char *buffer, const void *value)
{
    return bgp::PrintAs2(value, bgp::kDisplay, buffer);
}

uint32_t SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF(char *buffer, const void *value)
{
    return bgp::PrintAs2(value, bgp::kPlain, buffer);
}

uint32_t SYSDT_VrfRtExtFormatOutStr(const DataTypeRequest *request, char *buffer, const void *value)
{
    uint32_t printed = 0;
    bgp::PrintVrfRtExt(static_cast<const uint8_t *>(value), request->FormatMode, buffer, &printed);
    return printed;
}

BGP_FORMAT_IN(SYSDT_VrfRtExtFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VrfRtExtFormatOut, bgp::kOut)
BGP_LUA_SET(SYSDT_VrfRtExtLuaSet, bgp::kLuaSet)
BGP_LUA_GET(SYSDT_VrfRtExtLuaGet, bgp::kLuaGet)
BGP_KEY_READER(SSYSDT_VrfRtExtNewLuaGet, bgp::kReader)
