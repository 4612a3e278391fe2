// COMMUNITY: one standard BGP community (RFC 1997), typed as a well-known name in any case ("no-export"), as two
// halves ("100:1") or as one number.
//
//   bytes  field      width  meaning
//   0-3    community  u32    host order; first half << 16 | second half
//   4-7    form       u32    host order: 0 typed as a number or a name, 1 as two halves, 2 unset (never typed)
//
// A number that has a name prints as the name, however it was typed.
#include "community/community.h"

#include "host/format.h"
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
constexpr BgpLayout kLayout = Layout(kFields, kLength);

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

// ----------------------------------------------------------------------------------------------------------- text in

constexpr BgpNotation kNotations[] = {
    {.Form = "number",
     .Separators = "",
     .When = nullptr,
     .Names = {"the community"},
     .Smallest = {},
     .Largest = {UINT32_MAX}},
    {.Form = "first:second",
     .Separators = ":",
     .When = nullptr,
     .Names = {"the first half", "the second half"},
     .Smallest = {},
     .Largest = {UINT16_MAX, UINT16_MAX}},
};
static_assert(kByNumberOrName == 0 && kByHalves == 1, "the forms are the indexes of the notations");

constexpr NumbersRule kNumbers = NumbersText(1, kLongestCommunity, ":", kNotations);

constexpr const BgpRule *kRules[] = {&kEmpty,          &kTooLong,    &kBlank,    &kNoDigit,    &kWrongCharacter,
                                     &kTooManyNumbers, &kNoNotation, &kTooLarge, &kUnknownName};

[[gnu::always_inline]] inline bool TakeNumber(const Numbers &numbers, uint32_t form, Community &community)
{
    if (form == kNoFit) {
        return false;
    }
    const uint64_t number = form == kByHalves ? numbers.at[0] << 16 | numbers.at[1] : numbers.at[0];
    community = {static_cast<uint32_t>(number), form};
    return true;
}

[[gnu::always_inline]] inline bool ReadNumber(Text text, Community &community, Why *why)
{
    Numbers numbers;
    return TakeNumber(numbers, ReadNotation(kNumbers, text, numbers, why), community);
}

// Always false: of a text that is read as no number, why.
[[gnu::cold, gnu::noinline]] bool SayWhyNoNumber(Text text, Why *why)
{
    Community community;
    return why != nullptr && ReadNumber(text, community, why);
}

uint32_t CountColons(Text text)
{
    uint32_t colons = 0;
    for (uint32_t i = 0; i < text.length; ++i) {
        colons += text.at[i] == ':';
    }
    return colons;
}

// A name has no blank, and something besides digits and colons.
bool MayBeName(Text text, uint32_t mostColons, Why *why)
{
    uint32_t i = 0;
    while (i < text.length && (IsDigit(text.at[i]) || text.at[i] == ':')) {
        ++i;
    }
    if (i == text.length || text.length > kLongestCommunity) {
        return SayWhyNoNumber(text, why);
    }
    const bool few = text.length <= mostColons || CountColons(text) <= mostColons;
    return HasNoBlank(text, why) && (few || RefuseChoice(why, text, kNoNotation, Choices(kNotations)));
}

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

// No name begins with a digit: there a number was meant.
void RefuseName(uint32_t code, Text text, Why *why)
{
    if (code == DT_ERR_NO_MEMORY) {
        Refuse(why, text, kNoMemory, 0, "the name");
    } else if (IsDigit(*text.at)) {
        SayWhyNoNumber(text, why);
    } else {
        RefuseChoice(why, text, kUnknownName, Choices(kWellKnown));
    }
}

[[gnu::noinline]] uint32_t ReadName(uint32_t memoryHandle, Text text, uint32_t mostColons, Community &community,
                                    Why *why)
{
    if (!MayBeName(text, mostColons, why)) {
        return DT_ERR_FAIL;
    }
    uint32_t number = 0;
    const uint32_t code = BRM_GetWellKnownCmyVal(memoryHandle, text.length, &number, text.at);
    if (code != DT_OK) {
        RefuseName(code, text, why);
        return code;
    }
    community = {number, kByNumberOrName};
    return DT_OK;
}

} // namespace

const char *ReadBareCommunity(const char *text, Community &community)
{
    Numbers numbers;
    uint32_t form = kNoFit;
    const char *behind = ReadBareNotation(kNumbers, text, numbers, form);
    return TakeNumber(numbers, form, community) ? behind : nullptr;
}

uint32_t ReadCommunity(uint32_t memoryHandle, Text text, uint32_t mostColons, Community &community, Why *why)
{
    return ReadNumber(text, community, nullptr) ? DT_OK : ReadName(memoryHandle, text, mostColons, community, why);
}

namespace {

uint32_t ReadTo(uint32_t memoryHandle, const char *text, void *value, Why *why)
{
    Community community;
    const char *behind = ReadBareCommunity(text, community);
    const uint32_t code = behind != nullptr && *behind == '\0'
                              ? DT_OK
                              : ReadCommunity(memoryHandle, Trim(text), kLongestCommunity, community, why);
    if (code == DT_OK) {
        Store(value, community);
    }
    return code;
}

bool Read(uint32_t memoryHandle, const char *text, void *value, Why *why)
{
    return ReadTo(memoryHandle, text, value, why) == DT_OK;
}

// ---------------------------------------------------------------------------------------------------------- text out

// False, with nothing put, for a form that is not typed.
bool FormatNameless(Community community, GrowingText &text)
{
    switch (community.form) {
    case kByNumberOrName:
        Put<"%u">(text, community.number);
        return true;
    case kByHalves:
        Put<"%u:%u">(text, HighHalf(community.number), LowHalf(community.number));
        return true;
    default:
        return false;
    }
}

} // namespace

void FormatCommunity(Community community, GrowingText &text)
{
    if (const char *name = NameOf(community.number); name != nullptr) {
        Put(text, name);
    } else {
        FormatNameless(community, text);
    }
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

constexpr FormatInRule kIn{.typeId = 256, .length = kLength, .modes = kTextOnly, .read = nullptr, .readByHandle = Read};
constexpr FormatOutRule kOut{
    .modes = kTextOnly, .print = PrintCommunity, .textSize = kCommunityTextSize, .valueSize = kLength};
constexpr HelpRule kHelp{.text = "STRING<3-11>", .passesFirstWord = true}; // the word that this type alone passes
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};                      // the fetched table stays

} // namespace

constinit const Type kCommunity = MakeType({
    .name = "COMMUNITY",
    .description = "one standard BGP community",
    .reference = "RFC 1997",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = kNumbers.shortest,
    .longestText = kNumbers.longest,
});

} // namespace bgp

uint32_t SYSDT_Str2Community(uint32_t memoryHandle, const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::ReadTo(memoryHandle, text, value, nullptr);
}

// The lower-case copy is the handle's memory, and goes back to it whether or not the name is known. Of a text that ends
// before its length only what there is needs room.
uint32_t BRM_GetWellKnownCmyVal(uint32_t memoryHandle, uint32_t textLength, uint32_t *community, const char *text)
{
    textLength = static_cast<uint32_t>(strnlen(text, textLength));
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
    char line[bgp::kTextLimit];
    bgp::GrowingText text = bgp::GrowIn(line, sizeof line);
    const bool formatted = bgp::FormatNameless(bgp::Load<bgp::Community>(value), text);
    *text.at = '\0';
    const uint32_t code =
        formatted ? bgp::Printed(bgp::PrintText(buffer, bgp::kTextLimit, line), printed) : DT_ERR_INVALID_VALUE;
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
BGP_ENDIAN(SYSDT_CommunityEndian, bgp::kLayout)
