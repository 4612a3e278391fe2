// BOLPREFIX: the route key of any address family of BGP. A sub-type word says which; the rows below say what becomes of
// it. The order of the rows is part of the syntax: typed text belongs to the first sub-type that takes it.
//
//   bytes  field     width  meaning
//   0-3    sub-type  u32    0 to 16, host order: the index of its row
//   4-88   payload          the sub-type's; zero behind what it uses
#include "bgp_datatypes/evpn.h"
#include "bgp_datatypes/ng_mvpn.h"
#include "bgp_datatypes/rdrt.h"
#include "host/address_field.h"
#include "host/type.h"
#include "prefix/closest.h"
#include "prefix/look.h"
#include "prefix/prefix.h"

#include <bit>

namespace {

// The keys of NG-MVPN differ in what a script sees; the text itself says which of them it is, and the rest is shared
// with EVPN.
constexpr BolPrefixSubtypeEntry NgRow(uint32_t subType, const char *name, DataTypeLuaSet luaSet)
{
    BolPrefixSubtypeEntry row{subType,
                              {},
                              SYSDT_NGPrefixFormatIn,
                              SYSDT_NGPrefixFormatOut,
                              SYSDT_EVNPrefixCheck,
                              SYSDT_EVNPrefixHelp,
                              SYSDT_EVNPrefixCompare,
                              luaSet,
                              SYSDT_EVNPrefixLuaGet};
    for (uint32_t i = 0; name[i] != '\0'; ++i) {
        row.Name[i] = name[i];
    }
    return row;
}

} // namespace

// clang-format off

// Sub-type, name; FormatIn, FormatOut, Check, Help; Compare, LuaSet, LuaGet.
const BolPrefixSubtypeEntry g_astBOL_PREFIX_ProcTable[BOL_PREFIX_SUBTYPES] = {
    {0, "IPV4",
     SYSDT_VplsAdPrefixFormatIn, SYSDT_VplsAdPrefixFormatOut, SYSDT_VplsAdPrefixCheck, SYSDT_VplsAdPrefixHelp,
     SYSDT_VplsAdPrefixCompare, SYSDT_VplsAdPrefixLuaSet, SYSDT_VplsAdPrefixLuaGet},
    {1, "EVN",
     SYSDT_EVNPrefixFormatIn, SYSDT_EVNPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_EVNPrefixLuaSet, SYSDT_EVNPrefixLuaGet},
    NgRow(2, "NG_TYPE_2",   SYSDT_NGPrefix2LuaSet),
    NgRow(3, "NG_TYPE_3",   SYSDT_NGPrefix3LuaSet),
    NgRow(4, "NG_TYPE_4_2", SYSDT_NGPrefix42LuaSet),
    NgRow(5, "NG_TYPE_4-3", SYSDT_NGPrefix43LuaSet),
    NgRow(6, "NG_TYPE_5",   SYSDT_NGPrefix5LuaSet),
    NgRow(7, "NG_TYPE_6",   SYSDT_NGPrefix6LuaSet),
    {8, "VRFRTEXT",
     SYSDT_VrfRtExtFormatIn, SYSDT_VrfRtExtFormatOut, SYSDT_EVNPrefixCheck, SYSDT_VrfRtHelp,
     SYSDT_VrfRtCompare, SYSDT_VrfRtExtLuaSet, SYSDT_VrfRtExtLuaGet},
    {9, "L2VPN",
     nullptr, SYSDT_L2VPNPrefixFormatOut, SYSDT_VplsAdPrefixCheck, SYSDT_VplsAdPrefixHelp,
     SYSDT_VplsAdPrefixCompare, SYSDT_L2VPNPrefixLuaSet, SYSDT_L2VPNPrefixLuaGet},
    {10, "VPNV4MCAST",
     nullptr, SYSDT_VPNV4MCASTPrefixFormatOut, SYSDT_VPNV4MCASTPrefixCheck, SYSDT_VPNV4MCASTPrefixHelp,
     SYSDT_VPNV4MCASTPrefixCompare, SYSDT_VPNV4MCASTPrefixLuaSet, SYSDT_VPNV4MCASTPrefixLuaGet},
    {11, "MDT",
     nullptr, SYSDT_MdtPrefixFormatOut, SYSDT_MdtPrefixCheck, SYSDT_MdtPrefixHelp,
     SYSDT_MdtPrefixCompare, SYSDT_MdtPrefixLuaSet, SYSDT_MdtPrefixLuaGet},
    {12, "RPD",
     SYSDT_RpdPrefixFormatIn, SYSDT_RpdPrefixFormatOut, SYSDT_RpdPrefixCheck, SYSDT_RpdPrefixHelp,
     SYSDT_RpdPrefixCompare, SYSDT_RpdPrefixLuaSet, SYSDT_RpdPrefixLuaGet},
    NgRow(13, "NG_TYPE_4-1", SYSDT_NGPrefix41LuaSet),
    {14, "SRPOLICY",
     SYSDT_SrPolicyPrefixFormatIn, SYSDT_SrPolicyPrefixFormatOut, SYSDT_SrPolicyPrefixCheck, SYSDT_SrPolicyPrefixHelp,
     SYSDT_SrPolicyPrefixCompare, SYSDT_SrPolicyPrefixLuaSet, nullptr},
    {15, "IPV6",
     SYSDT_Ipv6BolPrefixFormatIn, SYSDT_Ipv6BolPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_Ipv6BolPrefixLuaSet, nullptr},
    {16, "SD-WAN",
     SYSDT_SdwanPrefixFormatIn, SYSDT_SdwanPrefixFormatOut, SYSDT_SdwanPrefixCheck, SYSDT_SdwanPrefixHelp,
     SYSDT_SdwanPrefixCompare, SYSDT_SdwanPrefixLuaSet, nullptr},
};

// Read from a script, a sub-type does not come with a name of its own: the composite finds it in "bolType".
const BolPrefixLuaGetEntry g_astBOL_PREFIX_LuaGetTable[BOL_PREFIX_SUBTYPES] = {
    {0,  SYSDT_VplsAdPrefixNewLuaGet},
    {1,  SYSDT_EVNPrefixNewLuaGet},
    {2,  SYSDT_NGPrefix2NewLuaGet},
    {3,  SYSDT_NGPrefix3NewLuaGet},
    {4,  SYSDT_NGPrefix42NewLuaGet},
    {5,  SYSDT_NGPrefix43NewLuaGet},
    {6,  SYSDT_NGPrefix5NewLuaGet},
    {7,  SYSDT_NGPrefix6NewLuaGet},
    {8,  SSYSDT_VrfRtExtNewLuaGet},
    {9,  SYSDT_L2VPNPrefixNewLuaGet},
    {10, SYSDT_VPNV4MCASTPrefixNewLuaGet},
    {11, SYSDT_MdtPrefixNewLuaGet},
    {12, SYSDT_RpdPrefixNewLuaGet},
    {13, SYSDT_NGPrefix41NewLuaGet},
    {14, SYSDT_SrPolicyPrefixNewLuaGet},
    {15, SYSDT_Ipv6BolPrefixNewLuaGet},
    {16, SYSDT_SdwanPrefixNewLuaGet},
};

// clang-format on

namespace {

// Offers a call to the rows in order; the first that succeeds decides. A row's own code is not passed on.
template <class Call>
uint32_t FirstSuccess(Call call)
{
    for (const BolPrefixSubtypeEntry &row : g_astBOL_PREFIX_ProcTable) {
        if (call(row)) {
            return DT_OK;
        }
    }
    return DT_ERR_INVALID_VALUE;
}

// The row that the value's sub-type word names, null for words above 16. A value of less than a word reads as if zeros
// followed it.
const BolPrefixSubtypeEntry *FindRow(const void *value, uint32_t length)
{
    uint32_t subType = 0;
    std::memcpy(&subType, value, length < sizeof subType ? length : sizeof subType);
    return subType < BOL_PREFIX_SUBTYPES ? &g_astBOL_PREFIX_ProcTable[subType] : nullptr;
}

} // namespace

// ----------------------------------------------------------------------------------------------- who is asked for a
// text

namespace bgp {

namespace {

// A set of rows, bit n for that of sub-type n.
template <class... SubType>
constexpr uint32_t Rows(SubType... subType)
{
    return ((1u << subType) | ...);
}

// How many characters of a kind there may be.
struct Range {
    uint32_t least, most;
    constexpr bool Holds(uint32_t count) const { return count >= least && count <= most; }
};

constexpr uint32_t kMany = UINT8_MAX;
constexpr Range kNone{0, 0};
constexpr Range kAny{0, kMany};

// What texts of these rows look like. A row may refuse a text for other reasons, but one that looks like none of its
// shapes it does refuse. Of addresses, which the host reads, it is taken for certain that none has "-", "/" or a
// bracket, that an IPv6 address has two colons, and that an IPv4 address has none.
struct Shape {
    uint32_t rows;
    Range counts[kOthers]; // in the order of the kinds
};

constexpr uint32_t kNgRows = Rows(2, 3, 4, 5, 6, 7, 13);

// clang-format off
constexpr Shape kShapes[] = {
    // rows      .           :           -           /           [ ]         a to f
    {Rows(0),  {kAny,       kNone,      kNone,      kNone,      kNone,      kAny}},  // IPv4 address
    {Rows(1),  {{4, 4},     {0, 1},     kAny,       kNone,      kNone,      kAny}},  // ESI, and a tag
    {Rows(1),  {{3, kMany}, {2, kMany}, kAny,       kNone,      kNone,      kAny}},  // IPv4 routes
    {Rows(1),  {{0, 2},     {6, 6},     kAny,       kNone,      kNone,      kAny}},  // selective multicast, likewise
    {Rows(1),  {kAny,       {2, kMany}, kAny,       kNone,      {2, 2},     kAny}},  // IPv6 routes
    {Rows(1),  {kAny,       {6, kMany}, kAny,       kNone,      {3, kMany}, kAny}},  // multicast of several
    {kNgRows,  {kAny,       {0, 3},     kNone,      kNone,      kNone,      kNone}}, // joined by ":"
    {kNgRows,  {kAny,       kAny,       {1, 2},     kNone,      kNone,      kAny}},  // joined by "-"
    {kNgRows,  {kNone,      kAny,       {3, 3},     kNone,      kNone,      kAny}},  // of four addresses none is IPv4
    {kNgRows,  {{6, 6},     kAny,       {3, 3},     kNone,      kNone,      kAny}},  // ... or two are
    {Rows(8),  {{0, 3},     {1, 1},     kAny,       kNone,      kNone,      kAny}},  // of numbers; any tail
    {Rows(8),  {kNone,      kNone,      {2, 2},     kNone,      kNone,      kAny}},  // ES-import
    {Rows(12), {{3, kMany}, kAny,       kAny,       {2, kMany}, kAny,       kAny}},
    {Rows(14), {kAny,       kAny,       kAny,       kAny,       {5, kMany}, kAny}},
    {Rows(15), {kAny,       {2, kMany}, kNone,      kNone,      kNone,      kAny}},  // IPv6 address
    {Rows(16), {kAny,       kAny,       {3, kMany}, kAny,       kAny,       kAny}},
};
// clang-format on

constexpr uint32_t kShapeCount = sizeof kShapes / sizeof *kShapes;
constexpr uint32_t kCounted = 8; // counts are told apart up to one less

// The shapes that may have so many of a kind: bit n for the n-th, by kind and count.
struct ShapeTable {
    uint32_t at[kOthers][kCounted];
};

consteval ShapeTable MakeShapeTable()
{
    ShapeTable table{};
    for (uint32_t kind = 0; kind < kOthers; ++kind) {
        for (uint32_t count = 0; count < kCounted; ++count) {
            for (uint32_t shape = 0; shape < kShapeCount; ++shape) {
                table.at[kind][count] |= uint32_t{kShapes[shape].counts[kind].Holds(count)} << shape;
            }
        }
    }
    return table;
}

constexpr ShapeTable kShapeTable = MakeShapeTable();

// A text of more may be any of those that take as many as are told apart.
consteval bool AreBoundsToldApart()
{
    for (const Shape &shape : kShapes) {
        for (const Range &range : shape.counts) {
            if (range.least >= kCounted || (range.most >= kCounted - 1 && range.most != kMany)) {
                return false;
            }
        }
    }
    return true;
}

static_assert(AreBoundsToldApart());

consteval uint32_t AllRows()
{
    uint32_t rows = 0;
    for (const Shape &shape : kShapes) {
        rows |= shape.rows;
    }
    return rows;
}

uint32_t ShapesWith(Look look, LookKind kind)
{
    return kShapeTable.at[kind][std::min(CountIn(look, kind), kCounted - 1)];
}

// Does a dot stand where the first one of an IPv4 address does? Asking the first row costs less than a look then.
bool BeginsLikeIpv4(const char *text)
{
    return text[0] != '\0' && text[1] != '\0' &&
           (text[1] == '.' || text[2] == '.' || (text[2] != '\0' && text[3] == '.'));
}

// The rows that are asked about the text: all but those that are bound to refuse it.
uint32_t RowsFor(const char *text)
{
    const Look look = LookAt(text);
    if (CountIn(look, kOthers) != 0) {
        return AllRows();
    }
    uint32_t rows = 0;
    uint32_t shapes = ShapesWith(look, kDots) & ShapesWith(look, kColons) & ShapesWith(look, kDashes) &
                      ShapesWith(look, kSlashes) & ShapesWith(look, kBrackets) & ShapesWith(look, kHexLetters);
    for (; shapes != 0; shapes &= shapes - 1) {
        rows |= kShapes[std::countr_zero(shapes)].rows;
    }
    return rows;
}

} // namespace

} // namespace bgp

// --------------------------------------------------------------------------------------------------- what a text lacks

namespace bgp {

namespace {

// In the order of their words.
constexpr const Type *kSubTypes[BOL_PREFIX_SUBTYPES] = {
    &kVplsAd, &kEvpn,       &kNgType2, &kNgType3, &kNgType42, &kNgType43, &kNgType5,    &kNgType6, &kVrfRtExt,
    &kL2vpn,  &kVpnv4Mcast, &kMdt,     &kRpd,     &kNgType41, &kSrPolicy, &kIpv6Prefix, &kSdwan,
};

// The row's answer. Rows that share a parser share it, and the rows that cannot be typed have one too.
void Ask(uint32_t row, const DataTypeRequest &request, const char *text, BgpRefusal &refusal)
{
    uint32_t first = 0;
    while (kSubTypes[first]->in != kSubTypes[row]->in) {
        ++first;
    }
    if (first < row) {
        refusal.SubTypes[row] = refusal.SubTypes[first];
    } else {
        Explain(kSubTypes[row]->in, request, text, refusal.SubTypes[row]);
    }
}

// The word of the value that a text gives: the rows of NG-MVPN share a parser, which picks one of them.
uint32_t SubTypeOfText(const FormatInRule &rule, const DataTypeRequest &request, const char *text)
{
    uint8_t value[kBolPrefixLength];
    ReadValue(rule, request, text, value, nullptr);
    return Load<uint32_t>(value);
}

uint32_t ExplainBolPrefix(const DataTypeRequest &request, const char *text, BgpRefusal &refusal)
{
    refusal.SubTypeCount = BOL_PREFIX_SUBTYPES;
    const Type *taker = nullptr;
    for (uint32_t row = 0; row < BOL_PREFIX_SUBTYPES; ++row) {
        Ask(row, request, text, refusal);
        if (taker == nullptr && refusal.SubTypes[row].Code == DT_OK) {
            taker = kSubTypes[row];
        }
    }
    if (taker != nullptr) {
        refusal.Closest = SubTypeOfText(*taker->in, request, text);
        return DT_OK;
    }
    refusal.Closest = FindClosest(kSubTypes, request, text, refusal);
    refusal.Reason = refusal.SubTypes[refusal.Closest];
    return DT_ERR_INVALID_VALUE;
}

} // namespace

constinit const Type kBolPrefix = MakeType({
    .name = "BOLPREFIX",
    .description = "the key of a BGP route of any address family",
    .shortestText = 1,
    .longestText = 255,
    .typeId = kBolPrefixTypeId,
    .valueLength = kBolPrefixLength,
    .textSize = kTextSize,
    .order = BGP_ORDER_NONE, // sub-types find values equal that differ
    .network = BGP_NETWORK_LAYOUT,
    .lua = BGP_LUA_TYPED,
    .traits = BGP_TRAIT_READS_SHORT,
    .explain = ExplainBolPrefix,
    .describe = DescribeBolPrefix,
    .subTypes = kSubTypes,
    .subTypeCount = BOL_PREFIX_SUBTYPES,
});

const BgpLayout *DescribeBolPrefix(const void *value, uint32_t length)
{
    if (value == nullptr || length < kPayloadAt) {
        return nullptr;
    }
    const auto subType = Load<uint32_t>(value);
    if (subType >= BOL_PREFIX_SUBTYPES) {
        return nullptr;
    }
    const Type &type = *kSubTypes[subType];
    return type.describe != nullptr ? type.describe(value, length) : type.facts.Layout;
}

} // namespace bgp

// ---------------------------------------------------------------------------------------------------------- operations

uint32_t SYSDT_BolPrefixFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text,
                                 uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    if (bgp::IsNull(request, text, {outTypeId, outLength, outBuffer})) {
        return DT_ERR_NULL_PTR;
    }
    const auto formatIn = [=](uint32_t row) {
        return g_astBOL_PREFIX_ProcTable[row].FormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
    };
    uint32_t rows = ~0u;
    if (bgp::BeginsLikeIpv4(text)) {
        if (formatIn(0) == DT_OK) {
            return DT_OK;
        }
        rows = ~bgp::Rows(0);
    }
    // Neighbouring rows share a parser, and what it refuses it refuses for all of them. Only a lack of memory is no
    // refusal: the next row is asked all the same.
    DataTypeFormatIn refuser = nullptr;
    for (rows &= bgp::RowsFor(text); rows != 0; rows &= rows - 1) {
        const auto row = static_cast<uint32_t>(std::countr_zero(rows));
        if (g_astBOL_PREFIX_ProcTable[row].FormatIn == refuser) {
            continue;
        }
        const uint32_t code = formatIn(row);
        if (code == DT_OK) {
            return DT_OK;
        }
        refuser = code == DT_ERR_NO_MEMORY ? nullptr : g_astBOL_PREFIX_ProcTable[row].FormatIn;
    }
    return DT_ERR_INVALID_VALUE;
}

uint32_t SYSDT_BolPrefixFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                                  uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    if (bgp::IsNull(request, value, {outTypeId, outLength, outBuffer})) {
        return DT_ERR_NULL_PTR;
    }
    const BolPrefixSubtypeEntry *row = FindRow(value, length);
    const bool printed =
        row != nullptr && row->FormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer) == DT_OK;
    return printed ? DT_OK : DT_ERR_INVALID_VALUE;
}

// The sub-type word is not consulted: a value is good when any sub-type finds it good.
uint32_t SYSDT_BolPrefixCheck(const void *context, uint32_t typeId, uint32_t length, const void *value)
{
    if (context == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return FirstSuccess(
        [=](const BolPrefixSubtypeEntry &row) { return row.Check(context, typeId, length, value) == DT_OK; });
}

uint32_t SYSDT_BolPrefixHelp(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const char *typedText,
                             const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo)
{
    if (request == nullptr || typedText == nullptr || helpArgument == nullptr || helpInfo == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return FirstSuccess([=](const BolPrefixSubtypeEntry &row) {
        return row.Help(request, typeId, length, typedText, helpArgument, helpInfo) == DT_OK;
    });
}

// Equal when any sub-type finds them equal. There is no order across address families.
int32_t SYSDT_BolPrefixCompare(const void *context, uint32_t length, const void *left, const void *right)
{
    if (left == nullptr || right == nullptr) {
        return static_cast<int32_t>(DT_ERR_NULL_PTR);
    }
    return static_cast<int32_t>(
        FirstSuccess([=](const BolPrefixSubtypeEntry &row) { return row.Compare(context, length, left, right) == 0; }));
}

uint32_t SYSDT_BolPrefixLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                               uint16_t length, const void *value)
{
    if (L == nullptr || fieldName == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const BolPrefixSubtypeEntry *row = FindRow(value, length);
    const bool set = row != nullptr && row->LuaSet(L, tableIndex, fieldName, typeId, length, value) == DT_OK;
    return set ? DT_OK : DT_ERR_INVALID_VALUE;
}

uint32_t SYSDT_BolPrefixLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                               void *outValue)
{
    int32_t table = 0;
    if (const uint32_t code = bgp::LuaOpen(L, tableIndex, fieldName, length, bgp::kBolPrefixLength, outValue, &table);
        code != DT_OK) {
        return code;
    }
    // "bolType" stays on the stack; the readers pop it with their own fields.
    SYSDT_SPTI_GetField(L, table, "bolType");
    if (SYSDT_SPTI_IsNumber(L, -1) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    const uint32_t subType = SYSDT_SPTI_ToUInt(L, -1);
    bgp::Store(outValue, subType);
    const bool read =
        subType < BOL_PREFIX_SUBTYPES && g_astBOL_PREFIX_LuaGetTable[subType].Reader(L, outValue, table) == DT_OK;
    return read ? DT_OK : DT_ERR_INVALID_VALUE;
}

uint32_t SYSDT_BolPrefixLuaParseToIPv4IPv6(lua_State *L, uint32_t kind, void *block)
{
    if (L == nullptr || block == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::LuaReadAddress(L, kind, static_cast<uint8_t *>(block));
}
