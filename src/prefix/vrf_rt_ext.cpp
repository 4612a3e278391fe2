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
    {0x0102,        kAny, {"RT <%u.%u.%u.%u : %u>",  "%u.%u.%u.%u:%u"},  kIpv4Split},
    {0x0000,        kAny, {"RT <%u : %u>",           "%u:%u"},           kAs2Split},
    {kAs2Kind,      1,    {"RT <%u : %u>",           "%u:%u"},           kAs2Split},
    {kAs2Kind,      2,    {"RT <%u : %u>",           "%u:%u"},           kAs4Split}, // the notation picks the split
    {kAs2Kind,      3,    {"RT <%u . %u : %u>",      "%u.%u:%u"},        kDottedSplit},
    {kAs2Kind,      kAny, {},                                            {}},
    {0x0202,        2,    {"RT <%u : %u>",           "%u:%u"},           kAs4Split},
    {0x0202,        3,    {"RT <%u . %u : %u>",      "%u.%u:%u"},        kDottedSplit},
    {0x0202,        kAny, {},                                            {}},
    {kEsImportKind, kAny, {"RT <%02hx%02hx-%02hx%02hx-%02hx%02hx>",
                           "%02hx%02hx-%02hx%02hx-%02hx%02hx"},          kSixBytes},
    {kAny,          kAny, {"Unknow <%u : %u : %u>",  "Unknow %u:%u:%u"}, kUnknownSplit},
};
// clang-format on

// ----------------------------------------------------------------------------------------------------------- text in

struct Separators {
    uint32_t dots, colons, dashes;
};

// Counts what is there. False for a text that is too short or too long, or that holds anything else than hexadecimal
// digits and separators.
bool Count(Text text, Separators &count)
{
    if (!IsLong(text, 1, kLongestTyped)) {
        return false;
    }
    for (uint32_t i = 0; i < text.length; ++i) {
        const char character = text.at[i];
        if (BGP_DATATYPE_IsHex(character) != 0) {
            continue;
        }
        if (character != '.' && character != ':' && character != '-') {
            return false;
        }
        ++(character == '.' ? count.dots : character == ':' ? count.colons : count.dashes);
    }
    return true;
}

void Finish(uint8_t *value, uint32_t notation)
{
    Store(value, kVrfRtExtSubType);
    Store(value + kNotationAt, notation);
}

// A notation of decimal numbers, scanned by its format.
struct Form {
    const char *format;
    uint32_t items;
    uint32_t shape;
};

constexpr Form kIpv4Form{"%u.%u.%u.%u:%u", 5, Shape("...:")};
constexpr Form kPlainForm{"%u:%u", 2, Shape(":")};
constexpr Form kDottedForm{"%u.%u:%u", 3, Shape(".:")};

bool ReadForm(const Form &form, Text text, uint8_t *value)
{
    Scanned scanned;
    if (Scan(text, form.format, scanned) != form.items) {
        return false;
    }
    Numbers numbers;
    numbers.shape = form.shape;
    for (uint32_t i = 0; i < form.items; ++i) {
        numbers.at[i] = scanned.numbers[i];
    }
    const uint32_t notation = Encode(kTyped, text, numbers, value + kPayloadAt, nullptr);
    if (notation == kNoFit) {
        return false;
    }
    Finish(value, notation);
    return true;
}

// "%02hx%02hx-%02hx%02hx-%02hx%02hx"
bool ReadEsImport(Text text, uint8_t *value)
{
    uint8_t six[6];
    const char *at = text.at;
    const char *const end = at + text.length;
    for (uint32_t i = 0; i < sizeof six; ++i) {
        const bool dashed = i == 2 || i == 4;
        if (dashed && (at == end || *at++ != '-')) {
            return false;
        }
        at = ScanHexByte(at, end, &six[i]);
        if (at == nullptr) {
            return false;
        }
    }
    StoreBig(value + kPayloadAt, kEsImportKind, 2);
    std::memcpy(value + kPayloadAt + 2, six, sizeof six);
    Finish(value, 3);
    return true;
}

// The separators pick the notation. Dashes count for ES-import only.
bool Read(Text text, uint8_t *value)
{
    Separators count{};
    if (!Count(text, count)) {
        return false;
    }
    if (count.colons == 1) {
        return count.dots == 3   ? ReadForm(kIpv4Form, text, value)
               : count.dots == 1 ? ReadForm(kDottedForm, text, value)
               : count.dots == 0 ? ReadForm(kPlainForm, text, value)
                                 : false;
    }
    return count.colons == 0 && count.dots == 0 && count.dashes == 2 && ReadEsImport(text, value);
}

uint32_t ParseForm(const Form &form, const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const Text whole{text, static_cast<uint32_t>(std::strlen(text))};
    return ReadForm(form, whole, static_cast<uint8_t *>(value)) ? DT_OK : DT_ERR_FAIL;
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

constexpr FormatInRule kIn{.typeId = kBolPrefixTypeId,
                           .length = kBolPrefixLength,
                           .modes = kTextOnly,
                           .read = Unexplained<SYSDT_Str2VrfRtExt>};
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
    const bool usable = bgp::Count({text, static_cast<uint32_t>(std::strlen(text))}, count);
    *dots = count.dots;
    *colons = count.colons;
    *dashes = count.dashes;
    return usable ? DT_OK : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2IpAddressRT(const char *text, void *value)
{
    return bgp::ParseForm(bgp::kIpv4Form, text, value);
}

uint32_t SYSDT_Str2TwoOctecAsRT(const char *text, void *value)
{
    return bgp::ParseForm(bgp::kPlainForm, text, value);
}

uint32_t SYSDT_Str2FourOctecAsRT(const char *text, void *value)
{
    return bgp::ParseForm(bgp::kDottedForm, text, value);
}

uint32_t SYSDT_Str2EvpnOctecAsRT(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::Text whole{text, static_cast<uint32_t>(std::strlen(text))};
    return bgp::ReadEsImport(whole, static_cast<uint8_t *>(value)) ? DT_OK : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2VrfRtExt(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Read(bgp::Trim(text), static_cast<uint8_t *>(value)) ? DT_OK : DT_ERR_FAIL;
}

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
