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

// The four parts in the order in which they stand.
struct Unit {
    char letter;
    uint32_t most;
    uint32_t seconds;
};

constexpr Unit kUnits[] = {{'d', 10000, 86400}, {'h', 23, 3600}, {'m', 59, 60}, {'s', 59, 1}};

constexpr char LowerCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// Digits may follow the "s"; they are never read. A second letter may not.
uint32_t Read(Text text, uint32_t *seconds)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    uint32_t sum = 0;
    for (const Unit &unit : kUnits) {
        uint64_t number = 0;
        at = ReadNumber(at, end, &number);
        if (at == nullptr || at == end || LowerCase(*at) != unit.letter || number > unit.most) {
            return DT_ERR_FAIL;
        }
        ++at;
        sum += static_cast<uint32_t>(number) * unit.seconds;
    }
    while (at < end && IsDigit(*at)) {
        ++at;
    }
    if (at != end) {
        return DT_ERR_FAIL;
    }
    *seconds = sum;
    return DT_OK;
}

uint32_t Parse(const char *text, void *value)
{
    uint32_t seconds = 0;
    const uint32_t code = SYSDT_Str2TimeRange(text, &seconds);
    Store(value, seconds);
    return code;
}

constexpr FormatInRule kIn{
    .typeId = 284, .length = 4, .modes = kTextOnly, .read = Unexplained<Parse>, .refusal = DT_ERR_INVALID_PARAM};
constexpr HelpRule kHelp{.text = "STRING<8-15>"};

} // namespace

const BgpLayout kTimeRangeLayout = Layout(kFields, 4);

} // namespace bgp

uint32_t SYSDT_Str2TimeRange(const char *text, uint32_t *seconds)
{
    if (seconds == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    *seconds = 0;
    if (text == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::Text trimmed = bgp::Trim(text);
    return bgp::IsLong(trimmed, 8, 15) ? bgp::Read(trimmed, seconds) : DT_ERR_FAIL;
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
