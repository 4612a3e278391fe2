// COMMUNITY: one standard BGP community (RFC 1997), typed as a well-known name in any case ("no-export"), as two
// halves ("100:1") or as one number.
//
//   bytes  field      width  meaning
//   0-3    community  u32    host order; first half << 16 | second half
//   4-7    form       u32    host order: 0 typed as a number or a name, 1 as two halves, 2 unset (never typed)
//
// A number that has a name prints as the name, however it was typed.
#include "community/community.h"

#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 8;
constexpr uint16_t kCommunityTextSize = 33;
constexpr uint32_t kTextLimit = kCommunityTextSize - 1; // terminator included

constexpr BgpField kFields[] = {
    Number("community", 0, 4),
    Number("type", 4, 4),
};

struct WellKnown {
    const char *name;
    uint32_t community;
};

constexpr WellKnown kWellKnown[] = {
    {"internet", 0x00000000}, // every route, by convention of operators; no registered value
    {"no-advertise", 0xFFFFFF02},
    {"no-export", 0xFFFFFF01},
    {"no-export-subconfed", 0xFFFFFF03},
};

const char *NameOf(uint32_t community)
{
    for (const WellKnown &known : kWellKnown) {
        if (known.community == community) {
            return known.name;
        }
    }
    return nullptr;
}

} // namespace

const BgpLayout kCommunityLayout = Layout(kFields, kLength);

// ----------------------------------------------------------------------------------------------------------- text in

namespace {

uint32_t FromLowerCase(const char *name, uint32_t *community)
{
    for (const WellKnown &known : kWellKnown) {
        if (std::strcmp(known.name, name) == 0) {
            *community = known.community;
            return DT_OK;
        }
    }
    return DT_ERR_FAIL;
}

uint32_t FromNumbers(const Numbers &numbers, Community &community)
{
    const uint64_t first = numbers.at[0];
    if (numbers.shape == Shape("") && first <= UINT32_MAX) {
        community = {static_cast<uint32_t>(first), kByNumberOrName};
        return DT_OK;
    }
    if (numbers.shape == Shape(":") && first <= UINT16_MAX && numbers.at[1] <= UINT16_MAX) {
        community = {static_cast<uint32_t>(first << 16 | numbers.at[1]), kByHalves};
        return DT_OK;
    }
    return DT_ERR_FAIL;
}

// A name has no blank, and something besides digits and colons.
bool MayBeName(Text text)
{
    bool found = false;
    for (uint32_t i = 0; i < text.length; ++i) {
        found = found || (!IsDigit(text.at[i]) && text.at[i] != ':');
    }
    return found && !HasBlank(text);
}

} // namespace

uint32_t ReadCommunity(uint32_t memoryHandle, Text text, Community &community)
{
    Numbers numbers;
    if (!IsLong(text, 1, kLongestCommunity)) {
        return DT_ERR_FAIL;
    }
    if (ReadNumbers(text, ":", numbers, nullptr)) {
        return FromNumbers(numbers, community);
    }
    if (!MayBeName(text)) {
        return DT_ERR_FAIL;
    }
    uint32_t number = 0;
    const uint32_t code = BRM_GetWellKnownCmyVal(memoryHandle, text.length, &number, text.at);
    if (code == DT_OK) {
        community = {number, kByNumberOrName};
    }
    return code;
}

// ---------------------------------------------------------------------------------------------------------- text out

namespace {

uint32_t FormatNameless(Community community, char *to, uint32_t room)
{
    const Argument number[] = {community.number};
    const Argument halves[] = {community.number >> 16, community.number & 0xFFFF};
    switch (community.form) {
    case kByNumberOrName:
        return Format(to, room, "%u", number);
    case kByHalves:
        return Format(to, room, "%u:%u", halves);
    default:
        return 0;
    }
}

} // namespace

uint32_t FormatCommunity(Community community, char *to, uint32_t room)
{
    if (const char *name = NameOf(community.number); name != nullptr) {
        const Argument text[] = {name};
        return Format(to, room, "%s", text);
    }
    return FormatNameless(community, to, room);
}

namespace {

uint32_t PrintCommunity(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    const auto community = Load<Community>(value);
    const bool unset = community.number == 0 && community.form == kUnset;
    if (const char *name = unset ? "" : NameOf(community.number); name != nullptr) {
        return Printed(PrintText(buffer, kTextLimit, name), printed);
    }
    void *handedOver = nullptr; // by FormatOut in any case
    return SYSDT_FormatNoWellKnowCmy(printed, buffer, &handedOver, value);
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr FormatInRule kIn{.typeId = 256,
                           .length = kLength,
                           .modes = kTextOnly,
                           .read = nullptr,
                           .readByHandle = UnexplainedByHandle<SYSDT_Str2Community>};
constexpr FormatOutRule kOut{
    .modes = kTextOnly, .print = PrintCommunity, .textSize = kCommunityTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-11>", .passesFirstWord = true}; // the word that this type alone passes
constexpr LuaRule kLua{.layout = kCommunityLayout, .pops = 2};             // the fetched table stays

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2Community(uint32_t memoryHandle, const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    bgp::Community community;
    const uint32_t code = bgp::ReadCommunity(memoryHandle, bgp::Trim(text), community);
    if (code == DT_OK) {
        bgp::Store(value, community);
    }
    return code;
}

// The lower-case copy is the handle's memory, and goes back to it whether or not the name is known.
uint32_t BRM_GetWellKnownCmyVal(uint32_t memoryHandle, uint32_t textLength, uint32_t *community, const char *text)
{
    auto *lower = static_cast<char *>(SYS_DataTypeMallocByHandle(memoryHandle, textLength + 1));
    if (lower == nullptr) {
        return DT_ERR_NO_MEMORY;
    }
    lower[0] = '\0'; // no name, should the host make no copy
    char typed[bgp::kLongestCommunity + 1];
    if (bgp::Terminate({text, textLength}, typed, sizeof typed)) {
        SMP_ToLowerString(typed, lower);
    }
    const uint32_t code = bgp::FromLowerCase(lower, community);
    SYS_DataTypeFree(lower);
    return code;
}

uint32_t SYSDT_FormatNoWellKnowCmy(uint32_t *printed, char *buffer, void **outBuffer, const void *value)
{
    char text[bgp::kTextLimit];
    const uint32_t length = bgp::FormatNameless(bgp::Load<bgp::Community>(value), text, sizeof text);
    const uint32_t code =
        length == 0 ? DT_ERR_INVALID_VALUE : bgp::Printed(bgp::PrintText(buffer, bgp::kTextLimit, text), printed);
    if (code != DT_OK) {
        *outBuffer = buffer;
    }
    return code;
}

BGP_FORMAT_IN(SYSDT_CommunityFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_CommunityFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_CommunityCheck, bgp::kLength)
BGP_HELP(SYSDT_CommunityHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_CommunityCompare)
BGP_LUA_SET(SYSDT_CommunityLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_CommunityLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_CommunityEndian, bgp::kCommunityLayout)
