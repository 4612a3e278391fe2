// RTPRD: a route distinguisher (RFC 4364) as a route policy matches it; the assigned number may be "*", any number.
//
//   bytes  field     width  meaning
//   0-1    RD type   u16    network order: 0 2-byte AS number, 1 IPv4 address, 2 4-byte AS number
//   2-7    RD value  6      network order: administrator and assigned number, which is 0 under a wildcard
//   8      notation  u8     1 a.b.c.d:n, 2 AS:n, 3 AS:n with AS above 65535, 4 x.y:n: one more than VRFRD's
//   9      wildcard  u8     0 a number; 1 when typed, anything else prints as "*" too
//
// Matching by wildcard is the caller's business: 100:* and 100:1 compare as different values. Byte order is not
// converted.
#include "host/layout.h"
#include "host/operations.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

#include <algorithm>

namespace bgp {

namespace {

constexpr uint16_t kLength = 10;
constexpr uint32_t kNotationAt = 8;
constexpr uint32_t kWildcardAt = 9;

constexpr BgpField kFields[] = {
    ByteArray("rdValue", 0, 8),
    Byte("type", kNotationAt),
    Byte("star", kWildcardAt),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr NotationRule kTyped{.kinds = {1, 0, 2}, .refusesZero = false, .firstNotation = 1};

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // RD type, notation, {number, wildcard}
    {1, 1,    {Prints<"%u.%u.%u.%u:%u", kIpv4Split>, Prints<"%u.%u.%u.%u:*", kIpv4Split>}},
    {1, kAny, {}},
    {0, 2,    {Prints<"%u:%u", kAs2Split>, Prints<"%u:*", kAs2Split>}},
    {0, kAny, {}},
    {2, 4,    {Prints<"%u.%u:%u", kDottedSplit>, Prints<"%u.%u:*", kDottedSplit>}},
    {2, 3,    {Prints<"%u:%u", kAs4Split>, Prints<"%u:*", kAs4Split>}},
    {2, kAny, {}},
};
// clang-format on

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpRule kWildcardPlace{"wildcard-place", "\"*\" may only stand for the assigned number", 0};

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,        &kBlank,      &kNoDigit, &kWildcardPlace,
                                     &kWrongCharacter, &kTooManyNumbers, &kNoNotation, &kTooLarge};

// Where the colon stands behind which there are only digits and stars, and a star among them. False when there is none.
bool FindWildcard(Text text, uint32_t *colon)
{
    bool star = false;
    uint32_t at = text.length;
    while (at > 0 && (text.at[at - 1] == '*' || IsDigit(text.at[at - 1]))) {
        --at;
        star |= text.at[at] == '*';
    }
    *colon = at - 1;
    return star && at > 0 && text.at[at - 1] == ':';
}

// Says why a text is none of numbers, and none with a wildcard.
bool RefuseWildcard(Text text, Why *why)
{
    const char *const end = text.at + text.length;
    const char *const star = std::find(text.at, end, '*');
    const char *const colon = std::find(text.at, end, ':');
    Numbers numbers;
    if (star == end) {
        return ReadNumbers(text, kSharedText.separators, numbers, why);
    }
    if (star < colon) {
        return Refuse(why, {star, 1}, kWildcardPlace);
    }
    const char *const odd =
        std::find_if(colon + 1, end, [](char character) { return character != '*' && !IsDigit(character); });
    if (odd != end) {
        return RefuseCharacter(why, {odd, 1}, kWrongCharacter);
    }
    return ReadNumbers({text.at, static_cast<uint32_t>(colon - text.at)}, kSharedText.separators, numbers, why);
}

// A star anywhere behind the colon makes a wildcard of the whole assigned number, digits and further stars included
// ("1:2*"). The text is read as if 0 stood in its place.
bool ReadWildcard(Text text, Numbers &numbers, Why *why)
{
    uint32_t colon = 0;
    if (!FindWildcard(text, &colon) || !ReadNumbers({text.at, colon}, kSharedText.separators, numbers, nullptr)) {
        return RefuseWildcard(text, why);
    }
    uint32_t count = 1;
    while (HasNumber(numbers.shape, count)) {
        ++count;
    }
    if (count == kMostNumbers) {
        return Refuse(why, {text.at + colon, 1}, kTooManyNumbers, kMostNumbers);
    }
    numbers.at[count] = 0;
    numbers.shape = numbers.shape << 8 | static_cast<uint32_t>(':');
    return true;
}

bool Read(const char *text, void *value, Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    Text trimmed;
    Numbers numbers;
    const bool wildcard = !ReadNumbersOf(kSharedText, text, trimmed, numbers, nullptr);
    if (wildcard &&
        (!HasLength(trimmed, kSharedText.shortest, kSharedText.longest, why) || !ReadWildcard(trimmed, numbers, why))) {
        return false;
    }
    const uint32_t notation = Encode(kTyped, trimmed, numbers, bytes, why);
    if (notation == kNoFit) {
        return false;
    }
    bytes[kNotationAt] = static_cast<uint8_t>(notation);
    bytes[kWildcardAt] = wildcard ? 1 : 0;
    return true;
}

// ---------------------------------------------------------------------------------------------------------- text out

uint32_t PrintRtpRd(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    const Stored stored{value, LoadBig(value, 2), value[kNotationAt]};
    if (mode == kPlainMode && stored.kind == 0 && stored.notation == 0) { // never set
        return Printed(PrintText(buffer, kPrintLimit, ""), printed);
    }
    return PrintStored(Table(kPrintRows), stored, value[kWildcardAt] != 0, buffer, printed);
}

constexpr FormatInRule kIn{.typeId = 278, .length = kLength, .modes = kTextOnly, .read = Read};
constexpr FormatOutRule kOut{.modes = kTextOnly, .print = PrintRtpRd, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 3};

} // namespace

constinit const Type kRtpRd = MakeType({
    .name = "RTPRD",
    .description = "a route distinguisher as a route policy matches it",
    .reference = "RFC 4364",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kSharedText, // and a star in place of the assigned number
    .rules = kRules,
    .network = BGP_NETWORK_LAYOUT,
});

} // namespace bgp

BGP_STR2(SYSDT_Str2RtpRd, bgp::Read)
BGP_FORMAT_IN(SYSDT_RtpRdFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_RtpRdFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_RtpRdCheck, bgp::kLength)
BGP_HELP(SYSDT_RtpRdHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_RtpRdCompare)
BGP_LUA_SET(SYSDT_RtpRdLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_RtpRdLuaGet, bgp::kLua)
