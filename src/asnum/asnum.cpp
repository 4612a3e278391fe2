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

#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint32_t kLongestTyped = 11; // "65535.65535"
constexpr uint16_t kLength = 8;
constexpr uint16_t kAsTextSize = 33;

constexpr BgpField kFields[] = {
    Number("asNumValue", 0, 4),
    Number("asType", 4, 4),
};

} // namespace

const BgpLayout kAsNumLayout = Layout(kFields, kLength);

// ----------------------------------------------------------------------------------------------------------- text in

namespace {

bool TakePlain(uint64_t number, bool zeroWelcome, AsNumber &as)
{
    as = {static_cast<uint32_t>(number), 0};
    return number <= UINT32_MAX && (number != 0 || zeroWelcome);
}

// A high part of 0 is no dotted AS number, whether or not zero is welcome.
bool TakeDotted(uint64_t high, uint64_t low, AsNumber &as)
{
    as = {static_cast<uint32_t>(high << 16 | low), 1};
    return high >= 1 && high <= UINT16_MAX && low <= UINT16_MAX;
}

} // namespace

bool ReadAsNumber(Text text, bool zeroWelcome, AsNumber &as)
{
    Numbers numbers;
    if (!IsLong(text, 1, kLongestTyped) || !ReadNumbers(text, ".", numbers, nullptr)) {
        return false;
    }
    if (numbers.shape == Shape("")) {
        return TakePlain(numbers.at[0], zeroWelcome, as);
    }
    return numbers.shape == Shape(".") && TakeDotted(numbers.at[0], numbers.at[1], as);
}

namespace {

uint32_t Parse(const char *text, void *value, bool zeroWelcome)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    AsNumber as;
    if (!ReadAsNumber(Trim(text), zeroWelcome, as)) {
        return DT_ERR_FAIL;
    }
    Store(value, as);
    return DT_OK;
}

// The same rules for a caller that has counted the dots and wants the parts too. What stands behind the number is not
// looked at.
bool ReadForm(uint32_t dots, const char *text, bool zeroWelcome, uint32_t *high, uint64_t *low, AsNumber &as)
{
    switch (dots) {
    case 0:
        return sscanf_s(text, "%llu", low) == 1 && TakePlain(*low, zeroWelcome, as);
    case 1:
        return sscanf_s(text, "%u.%llu", high, low) == 2 && TakeDotted(*high, *low, as);
    default:
        return false;
    }
}

uint32_t ParseForm(uint32_t dots, const char *text, bool zeroWelcome, uint32_t *high, uint64_t *low, void *value)
{
    AsNumber as;
    if (!ReadForm(dots, text, zeroWelcome, high, low, as)) {
        return DT_ERR_FAIL;
    }
    Store(value, as);
    return DT_OK;
}

// ---------------------------------------------------------------------------------------------------------- text out

} // namespace

int32_t PrintAsNumber(char *buffer, uint32_t size, AsNumber as)
{
    if (as.notation != 0) {
        return Print(buffer, size, "%u.%u", {as.number >> 16, as.number & 0xFFFF});
    }
    return Print(buffer, size, "%u", {as.number});
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

constexpr FormatInRule kAsNumIn{
    .typeId = 255, .length = kLength, .modes = kTextOnly, .read = Unexplained<SYSDT_Str2AsNum>};
constexpr FormatInRule kAsNumExtIn{
    .typeId = 285, .length = kLength, .modes = kTextOnly, .read = Unexplained<SYSDT_Str2AsNumExt>};
constexpr FormatOutRule kAsNumOut{
    .modes = kTextOrRaw, .print = PrintUsable, .textSize = kAsTextSize, .valueSize = kLength, .mode3 = Mode3::kCopy};
constexpr FormatOutRule kAsNumExtOut{
    .modes = kTextOrRaw, .print = PrintExt, .textSize = kAsTextSize, .valueSize = kLength, .mode3 = Mode3::kCopy};
constexpr HelpRule kHelp{.text = "STRING<1-11>"};
constexpr LuaRule kLua{.layout = kAsNumLayout, .pops = 2}; // the fetched table stays: scripts of old count on it

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2AsNum(const char *text, void *value)
{
    return bgp::Parse(text, value, false);
}

uint32_t SYSDT_Str2AsNumExt(const char *text, void *value)
{
    return bgp::Parse(text, value, true);
}

uint32_t SYSDT_Str2AsNumSetAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low, void *value)
{
    return bgp::ParseForm(dotCount, text, false, high, low, value);
}

uint32_t SYSDT_Str2AsNumToAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low, void *value)
{
    return bgp::ParseForm(dotCount, text, true, high, low, value);
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
BGP_ENDIAN(SYSDT_AsNumLuaEndian, bgp::kAsNumLayout)
