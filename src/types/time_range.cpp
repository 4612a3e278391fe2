// TIME_RANGE: a duration, typed as days, hours, minutes and seconds ("1d2h3m4s", letters in either case).
//
//   bytes  field    width  meaning
//   0-3    seconds  u32    86400 * days + 3600 * hours + 60 * minutes + seconds
//
// It can be typed and scripted; the host prints and compares it as the plain number that it is.
#include "host/layout.h"
#include "host/numbers.h"
#include "host/operations.h"
#include "types/types.h"

namespace bgp {

namespace {

constexpr BgpField kFields[] = {Number("seconds", 0, 4)};
constexpr BgpLayout kLayout = Layout(kFields, 4);

constexpr uint32_t kShortest = 8; // "1d2h3m4s"
constexpr uint32_t kLongest = 15; // "10000d23h59m59s"

// The four parts in the order in which they stand.
struct Unit {
    const char *letter;
    const char *name;
    uint32_t most;
    uint32_t seconds;
};

constexpr Unit kUnits[] = {
    {"d", "the number of days", 10000, 86400},
    {"h", "the number of hours", 23, 3600},
    {"m", "the number of minutes", 59, 60},
    {"s", "the number of seconds", 59, 1},
};

constexpr BgpRule kNoUnit{"unit", "the letter behind {what} is expected here", 0};

constexpr const BgpRule *kRules[] = {&kEmpty,   &kTooShort,       &kTooLong, &kBlank,
                                     &kNoDigit, &kWrongCharacter, &kNoUnit,  &kTooLarge};

// No text breaks it: the host has failed.
constexpr BgpRule kNotTrimmed{"trim", "the host does not trim the text", 0};

constexpr char LowerCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool RefuseLetter(const Unit &unit, Text character, Why *why)
{
    return HasNoBlank(character, why) && RefuseChoice(why, character, kNoUnit, {&unit, 1, sizeof unit}, unit.name);
}

// One part, with its letter. Returns the first character behind it, null when it is refused.
const char *ReadPart(const Unit &unit, const char *start, const char *end, uint32_t &sum, Why *why)
{
    uint64_t number = 0;
    const char *at = ReadNumber(start, end, &number);
    if (at == nullptr) {
        RefuseCharacter(why, {start, start < end}, kNoDigit);
        return nullptr;
    }
    if (at == end || LowerCase(*at) != *unit.letter) {
        RefuseLetter(unit, {at, at < end}, why);
        return nullptr;
    }
    if (number > unit.most) {
        Refuse(why, {start, static_cast<uint32_t>(at - start)}, kTooLarge, unit.most, unit.name);
        return nullptr;
    }
    sum += static_cast<uint32_t>(number) * unit.seconds;
    return at + 1;
}

// Digits may follow the "s"; they are never read. A second letter may not.
bool ReadParts(Text text, uint32_t *seconds, Why *why)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    uint32_t sum = 0;
    for (const Unit &unit : kUnits) {
        at = ReadPart(unit, at, end, sum, why);
        if (at == nullptr) {
            return false;
        }
    }
    while (at < end && IsDigit(*at)) {
        ++at;
    }
    if (at != end) {
        return RefuseCharacter(why, {at, 1}, kWrongCharacter);
    }
    *seconds = sum;
    return true;
}

uint32_t ReadTo(const char *text, uint32_t *seconds, Why *why)
{
    const Text trimmed = TrimBy(QOV_StrTrim, {text, static_cast<uint32_t>(std::strlen(text))});
    if (trimmed.at == nullptr) {
        Refuse(why, {text, 0}, kNotTrimmed);
        return DT_ERR_NULL_PTR;
    }
    return HasLength(trimmed, kShortest, kLongest, why) && ReadParts(trimmed, seconds, why) ? DT_OK : DT_ERR_FAIL;
}

bool Read(const char *text, void *value, Why *why)
{
    uint32_t seconds = 0;
    const uint32_t code = ReadTo(text, &seconds, why);
    Store(value, seconds);
    return code == DT_OK;
}

constexpr FormatInRule kIn{
    .typeId = 284, .length = 4, .modes = kTextOnly, .read = Read, .refusal = DT_ERR_INVALID_PARAM};
constexpr HelpRule kHelp{.text = "STRING<8-15>"};

} // namespace

constinit const Type kTimeRange = MakeType({
    .name = "TIME_RANGE",
    .description = "a duration in days, hours, minutes and seconds",
    .in = &kIn,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = kShortest,
    .longestText = kLongest,
    .checkedLength = 0,
    .typingMode = 1,
    .order = BGP_ORDER_NONE,
    .network = BGP_NETWORK_LAYOUT,
    .traits = BGP_TRAIT_SETS_ANY,
});

} // namespace bgp

uint32_t SYSDT_Str2TimeRange(const char *text, uint32_t *seconds)
{
    if (seconds == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    *seconds = 0;
    return text == nullptr ? DT_ERR_NULL_PTR : bgp::ReadTo(text, seconds, nullptr);
}

BGP_FORMAT_IN(SYSDT_TimeRangeFormatIn, bgp::kIn)
BGP_HELP(SYSDT_TimeRangeHelp, bgp::kHelp)

// A plain number instead of a table. Without a field name it stays on the stack, for a caller that builds a list.
uint32_t SYSDT_TimeRangeLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t,
                               const void *value)
{
    if (L == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    SYSDT_SPTI_PushUInt(L, bgp::Load<uint32_t>(value));
    if (fieldName != nullptr) {
        SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    }
    return DT_OK;
}

uint32_t SYSDT_TimeRangeLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                               void *outValue)
{
    if (L == nullptr || outValue == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (length < sizeof(uint32_t)) {
        return DT_ERR_INVALID_PARAM;
    }
    if (fieldName == nullptr) {
        bgp::Store(outValue, SYSDT_SPTI_ToUInt(L, tableIndex));
        return DT_OK;
    }
    SYSDT_SPTI_GetField(L, tableIndex, fieldName);
    if (SYSDT_SPTI_IsNumber(L, -1) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    bgp::Store(outValue, SYSDT_SPTI_ToUInt(L, -1));
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}
