// BOLRD: the route distinguisher of a VPLS instance, a composite of one sub-type.
//
//   bytes  field                width  meaning
//   0-3    sub-type             u32    host order, always 0
//   4-15   route distinguisher  12     a VRFRD value: RD type, RD value, notation
//
// The SYSDT_BolRd operations dispatch, the SYSDT_VplsRD operations are those of the sub-type. The dispatcher has one
// answer for every failure of a row. Byte order is not converted.
#include "host/layout.h"
#include "host/operations.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

// clang-format off
const BolPrefixSubtypeEntry g_astBOL_RD_ProcTable[BOL_RD_SUBTYPES] = {
    {0, "RT",
     SYSDT_VplsRDFormatIn, SYSDT_VplsRDFormatOut, SYSDT_VplsRDCheck, SYSDT_VplsRDHelp,
     SYSDT_VplsRDCompare, SYSDT_VplsRDLuaSet, SYSDT_VplsRDLuaGet},
};
// clang-format on

namespace bgp {

namespace {

constexpr uint16_t kLength = 16;
constexpr uint32_t kSubType = 0;
constexpr uint32_t kRdAt = 4;

// Where a script finds them: the two names of VRFRD occur on both levels of the table, with the sub-type outside.
constexpr BgpField kFields[] = {
    Number("RdType", 0, 4, 1),
    ByteArray("RdValue.RdValue", kRdAt, 8),
    Number("RdValue.RdType", 12, 4, 1),
};

constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr const BgpField &kSubTypeField = kFields[0];

bool Read(const char *text, void *value, Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    Store(bytes, kSubType);
    return ReadVrfRd(text, bytes + kRdAt, why);
}

uint32_t PrintBolRd(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    return PrintVrfRd(value + kRdAt, mode, buffer, printed);
}

constexpr FormatInRule kIn{.typeId = 280, .length = kLength, .modes = kAllButFour, .read = Read};
constexpr FormatOutRule kOut{
    .modes = kAllButFour, .print = PrintBolRd, .textSize = kTextSize, .valueSize = kLength, .mode3 = Mode3::kTextAsRaw};

// What the dispatcher makes of a row's answer.
uint32_t Verdict(uint32_t answer)
{
    return answer == DT_OK ? DT_OK : DT_ERR_INVALID_VALUE;
}

constexpr const BolPrefixSubtypeEntry &kRow = g_astBOL_RD_ProcTable[0];

uint32_t ExplainBolRd(const DataTypeRequest &request, const char *text, BgpRefusal &refusal)
{
    BgpReason &reason = refusal.SubTypes[kSubType];
    Why why{&reason, text, 0};
    reason.Code = Explain(kIn, request, text, why);
    refusal.SubTypeCount = BOL_RD_SUBTYPES;
    refusal.Closest = kSubType;
    refusal.Reason = reason;
    return Verdict(reason.Code);
}

// What the sub-type and the composite have in common.
constexpr TypeRule Facts(const char *name, const char *description)
{
    return {.name = name,
            .description = description,
            .reference = "RFC 4364, RFC 4761",
            .in = &kIn,
            .out = &kOut,
            .layout = &kLayout,
            .text = &kSharedText,
            .rules = kSharedRules,
            .network = BGP_NETWORK_LAYOUT,
            .lua = BGP_LUA_TYPED}; // a script's notation is cut to a byte
}

constinit const Type kVplsRd = MakeType(Facts("RT", "the route distinguisher of a VPLS instance"));
constexpr const Type *kSubTypes[BOL_RD_SUBTYPES] = {&kVplsRd};

consteval TypeRule Composite()
{
    TypeRule rule = Facts("BOLRD", "route distinguishers of VPLS instances, a composite of one sub-type");
    rule.order = BGP_ORDER_EQUALITY;
    rule.explain = ExplainBolRd;
    rule.subTypes = kSubTypes;
    rule.subTypeCount = BOL_RD_SUBTYPES;
    return rule;
}

} // namespace

constinit const Type kBolRd = MakeType(Composite());

} // namespace bgp

// ------------------------------------------------------------------------------------------------------- the sub-type

BGP_FORMAT_IN(SYSDT_VplsRDFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VplsRDFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_VplsRDCheck, bgp::kLength)

uint32_t SYSDT_VplsRDHelp(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const char *typedText,
                          const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo)
{
    return SYSDT_VrfRdHelp(request, typeId, length, typedText, helpArgument, helpInfo);
}

BGP_COMPARE_BYTES(SYSDT_VplsRDCompare)

// The distinguisher's own table becomes "RdValue" of the outer one, whose "RdType" is the sub-type.
uint32_t SYSDT_VplsRDLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                            const void *value)
{
    if (const uint32_t code = bgp::LuaJudge(L, fieldName, value, length, bgp::kLength); code != DT_OK) {
        return code;
    }
    const auto *bytes = static_cast<const uint8_t *>(value);
    SYSDT_SPTI_CreateTable(L, 0, 2);
    const int32_t outer = SYSDT_SPTI_GetTop(L);
    bgp::LuaSetOne(L, outer, bgp::kSubTypeField, bytes);
    SYSDT_SPTI_CreateTable(L, 0, 2);
    bgp::LuaSetAll(L, SYSDT_SPTI_GetTop(L), *bgp::kVrfRd.facts.Layout, bytes + bgp::kRdAt);
    SYSDT_SPTI_SetField(L, outer, "RdValue");
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

uint32_t SYSDT_VplsRDLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                            void *outValue)
{
    int32_t outer = 0;
    if (const uint32_t code = bgp::LuaOpen(L, tableIndex, fieldName, length, bgp::kLength, outValue, &outer);
        code != DT_OK) {
        return code;
    }
    auto *bytes = static_cast<uint8_t *>(outValue);
    SYSDT_SPTI_GetField(L, outer, "RdValue");
    const int32_t inner = SYSDT_SPTI_GetTop(L);
    if (SYSDT_SPTI_IsTable(L, inner) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    if (const uint32_t code = bgp::LuaGetAll(L, inner, *bgp::kVrfRd.facts.Layout, bytes + bgp::kRdAt); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, 2); // the inner "RdType" and its table
    if (const uint32_t code = bgp::LuaGetOne(L, outer, bgp::kSubTypeField, bytes); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_Pop(L, 2);
    return DT_OK;
}

// ----------------------------------------------------------------------------------------------------- the dispatcher

uint32_t SYSDT_BolRdFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text,
                             uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    if (bgp::IsNull(request, text, {outTypeId, outLength, outBuffer})) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Verdict(bgp::kRow.FormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer));
}

// Reads 16 bytes, whatever `length` says.
uint32_t SYSDT_BolRdFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                              uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    if (bgp::IsNull(request, value, {outTypeId, outLength, outBuffer})) {
        return DT_ERR_NULL_PTR;
    }
    if (bgp::Load<uint32_t>(value) != bgp::kSubType) {
        return DT_ERR_INVALID_VALUE;
    }
    return bgp::Verdict(bgp::kRow.FormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer));
}

uint32_t SYSDT_BolRdCheck(const void *context, uint32_t typeId, uint32_t length, const void *value)
{
    if (context == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Verdict(bgp::kRow.Check(context, typeId, length, value));
}

uint32_t SYSDT_BolRdHelp(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const char *typedText,
                         const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo)
{
    if (request == nullptr || typedText == nullptr || helpArgument == nullptr || helpInfo == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Verdict(bgp::kRow.Help(request, typeId, length, typedText, helpArgument, helpInfo));
}

// Tells equal values from different ones, without an order.
int32_t SYSDT_BolRdCompare(const void *context, uint32_t length, const void *left, const void *right)
{
    if (left == nullptr || right == nullptr) {
        return static_cast<int32_t>(DT_ERR_NULL_PTR);
    }
    const int32_t order = bgp::kRow.Compare(context, length, left, right);
    return static_cast<int32_t>(bgp::Verdict(static_cast<uint32_t>(order)));
}

uint32_t SYSDT_BolRdLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId, uint16_t length,
                           const void *value)
{
    if (L == nullptr || fieldName == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Verdict(bgp::kRow.LuaSet(L, tableIndex, fieldName, typeId, length, value));
}

uint32_t SYSDT_BolRdLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId, uint16_t length,
                           void *outValue)
{
    if (L == nullptr || fieldName == nullptr || outValue == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Verdict(bgp::kRow.LuaGet(L, tableIndex, fieldName, typeId, length, outValue));
}
