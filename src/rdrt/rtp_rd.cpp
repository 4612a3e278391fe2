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

constexpr NotationRule kTyped{.kinds = {1, 0, 2}, .refusesZero = false, .firstNotation = 1};

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // RD type, notation, {number, wildcard}
    {1, 1,    {"%u.%u.%u.%u:%u", "%u.%u.%u.%u:*"}, kIpv4Split},
    {1, kAny, {},                                  {}},
    {0, 2,    {"%u:%u",          "%u:*"},          kAs2Split},
    {0, kAny, {},                                  {}},
    {2, 4,    {"%u.%u:%u",       "%u.%u:*"},       kDottedSplit},
    {2, 3,    {"%u:%u",          "%u:*"},          kAs4Split},
    {2, kAny, {},                                  {}},
};
// clang-format on

// ----------------------------------------------------------------------------------------------------------- text in

// A star anywhere behind the colon makes a wildcard of the whole assigned number, digits and further stars included
// ("1:2*"). The text is read as if 0 stood in its place. False when there is no star, or when the text has another
// form.
bool ReadWildcard(Text text, Numbers &numbers)
{
    const auto *colon = static_cast<const char *>(std::memchr(text.at, ':', text.length));
    if (colon == nullptr) {
        return false;
    }
    bool star = false;
    for (const char *at = colon + 1; at < text.at + text.length; ++at) {
        if (*at != '*' && !IsDigit(*at)) {
            return false;
        }
        star |= *at == '*';
    }
    char number[kLongestNotation + 1];
    const auto head = static_cast<uint32_t>(colon - text.at) + 1;
    std::memcpy(number, text.at, head);
    number[head] = '0';
    return star && ReadNumbers({number, head + 1}, ".:", numbers, nullptr);
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

} // namespace

const BgpLayout kRtpRdLayout = Layout(kFields, kLength);

namespace {

constexpr FormatInRule kIn{.typeId = 278, .length = kLength, .modes = kTextOnly, .read = Unexplained<SYSDT_Str2RtpRd>};
constexpr FormatOutRule kOut{.modes = kTextOnly, .print = PrintRtpRd, .textSize = kTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kRtpRdLayout, .pops = 3};

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2RtpRd(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    const bgp::Text trimmed = bgp::Trim(text);
    if (!bgp::IsLong(trimmed, bgp::kShortestNotation, bgp::kLongestNotation)) {
        return DT_ERR_FAIL;
    }
    bgp::Numbers numbers;
    const bool wildcard = !bgp::ReadNumbers(trimmed, ".:", numbers, nullptr);
    if ((wildcard && !bgp::ReadWildcard(trimmed, numbers)) ||
        !bgp::Encode(bgp::kTyped, numbers, bytes, bytes + bgp::kNotationAt)) {
        return DT_ERR_FAIL;
    }
    bytes[bgp::kWildcardAt] = wildcard ? 1 : 0;
    return DT_OK;
}

BGP_FORMAT_IN(SYSDT_RtpRdFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_RtpRdFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_RtpRdCheck, bgp::kLength)
BGP_HELP(SYSDT_RtpRdHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_RtpRdCompare)
BGP_LUA_SET(SYSDT_RtpRdLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_RtpRdLuaGet, bgp::kLua)
