#include "fuzz/subjects.h"

#include <cstdio>
#include <cstring>
#include <string_view>

namespace bgp::fuzz {
namespace {

constexpr uint16_t kKey = 89; // bytes of a BOLPREFIX value
constexpr uint16_t kKeyType = 279;
constexpr uint16_t kText = 257; // the text buffer of most types

uint32_t SubTypeOf(const uint8_t *value)
{
    uint32_t subType;
    std::memcpy(&subType, value, sizeof subType);
    return subType;
}

// A script gives both originators of an NG-MVPN key in the family of the first.
bool SameFamilies(const uint8_t *value, uint32_t first, uint32_t second)
{
    constexpr uint32_t kFamilyAt = 20;
    return value[first + kFamilyAt] == value[second + kFamilyAt];
}

// The composite's reader of EVPN routes clears the first bytes of the body.
bool CompositeKeeps(const uint8_t *value)
{
    switch (SubTypeOf(value)) {
    case 1:
        return false;
    case 5:
        return SameFamilies(value, 46, 67);
    case 13:
        return SameFamilies(value, 4, 25);
    default:
        return true;
    }
}

constexpr Order kNone = Order::kNone, kTotal = Order::kTotal, kEqual = Order::kEqual, kPartial = Order::kPartial,
                kForeign = Order::kForeign;

// clang-format off
constexpr Facts kRowFacts[] = {
    {"ASNUM", 8, 33, 0, kTotal, Lua::kAll, kCopiesRaw},
    {"COMMUNITY", 8, 33, 0, kTotal, Lua::kAll},
    {"LARGECOMMUNITY", 16, kText, 0, kTotal, Lua::kTyped},
    {"EXTCOMMUNITY", 12, kText, 0, kTotal, Lua::kTyped},
    {"BGPLSPREFIX", 228, 769, 0, kTotal, Lua::kTyped, kReadsShort | kOneSidedEndian | kPrintsRaw},
    {"VRFRT", 12, kText, 0, kTotal, Lua::kTyped},
    {"VRFRD", 12, kText, 0, kTotal, Lua::kTyped},
    {"SOO", 12, kText, 0, kTotal, Lua::kTyped},
    {"BOLPREFIX", kKey, kText, 0, kEqual, Lua::kTyped, kReadsShort, CompositeKeeps},
    {"BOLRD", 16, kText, 0, kEqual, Lua::kTyped},
    {"VPNV4MCPREFIX", kKey, kText, kKeyType, kTotal, Lua::kLoses, kReadsShort | kShortEndian},
    {"MDTPREFIX", kKey, kText, kKeyType, kTotal, Lua::kTyped, kReadsShort | kShortEndian},
    {"L2VPNPREFIX", kKey, kText, 0, kPartial, Lua::kLoses, kReadsShort | kNoText},
    {"TIME_RANGE", 4, 0, 0, kNone, Lua::kAll, kSetsAny},
    {"ASNUMEXT", 8, 33, 0, kTotal, Lua::kAll, kCopiesRaw},
    {"ATTRIDBITMAP", 32, 4096, 0, kTotal, Lua::kAll, kTakesItems},
    {"CVRFNAME", 32, 0, 0, kTotal, Lua::kTyped, kCopiesRaw | kAnyLength | kComposes | kSetsAny},
    {"VPNID", 8, kText, 0, kTotal, Lua::kAll},
    {"VRFRTV6", 24, kText, 0, kTotal, Lua::kTyped, kReadsShort},
    {"ASNUM_ENHANCE", 1280, 3072, 0, kTotal, Lua::kAll, kWritesText},
    {"CMNTY_ENHANCE", 160, 393, 0, kTotal, Lua::kAll},
    {"RTPRD", 10, kText, 0, kTotal, Lua::kAll},
    {"SID_STRUCTURE", 7, kText, 0, kNone, Lua::kLoses, kReadsShort},
    {"EVNPREFIX", kKey, kText, kKeyType, kPartial, Lua::kLoses, kReadsShort},
    {"EXTCOMMUNITY_BW", 12, kText, 0, kTotal, Lua::kAll},
    {"EXTCMNTY_COMPR", 8, kText, 0, kTotal, Lua::kTyped},
};

constexpr Facts kSubTypeFacts[] = {
    {"IPV4", kKey, kText, 0, kPartial, Lua::kTyped, kReadsShort},
    {"EVN", kKey, kText, 0, kPartial, Lua::kLoses, kReadsShort},
    {"VRFRTEXT", kKey, kText, 0, kTotal, Lua::kTyped, kKeepsSubType},
    {"L2VPN", kKey, kText, 0, kPartial, Lua::kLoses, kReadsShort},
    {"VPNV4MCAST", kKey, kText, 0, kTotal, Lua::kLoses, kReadsShort},
    {"MDT", kKey, kText, 0, kTotal, Lua::kLoses, kReadsShort},
    {"RPD", kKey, kText, 0, kTotal, Lua::kTyped, kReadsShort | kOddCheck},
    {"SRPOLICY", kKey, kText, 0, kTotal, Lua::kLoses, kReadsShort},
    {"IPV6", kKey, kText, 0, kForeign, Lua::kLoses, kReadsShort},
    {"SD-WAN", kKey, kText, 0, kTotal, Lua::kLoses, kReadsShort},
};
// clang-format on

constexpr Facts kNameIndexFacts{"", 4, 0, 0, kTotal, Lua::kAll, kCopiesRaw};
constexpr Facts kNgMvpnFacts{"", kKey, kText, 0, kForeign, Lua::kLoses, kReadsShort | kTypesOther};
constexpr Facts kVplsRdFacts{"", 16, kText, 0, kTotal, Lua::kTyped};

template <size_t Count>
Facts Find(const Facts (&table)[Count], std::string_view name, const Facts &otherwise)
{
    for (const Facts &facts : table)
        if (name == facts.name) {
            return facts;
        }
    return otherwise;
}

Subject FromRow(const DataTypeDescriptor &row, Facts facts)
{
    facts.name = row.Name;
    return {facts, row};
}

Subject FromEntry(const BolPrefixSubtypeEntry &entry, Facts facts, uint16_t typeId)
{
    facts.name = entry.Name;
    DataTypeDescriptor row{};
    std::snprintf(row.Name, sizeof row.Name, "%.17s", entry.Name);
    row.TypeId = typeId;
    row.BinaryLength = facts.valueLength;
    row.FormatIn = entry.FormatIn;
    row.FormatOut = entry.FormatOut;
    row.Check = entry.Check;
    row.Help = entry.Help;
    row.Compare = entry.Compare;
    row.LuaSet = entry.LuaSet;
    row.LuaGet = entry.LuaGet;
    return {facts, row};
}

} // namespace

std::vector<Subject> AllSubjects()
{
    std::vector<Subject> subjects;
    for (const DataTypeDescriptor &row : g_astBgpDataTypeNameIndexDefineTbl) {
        subjects.push_back(FromRow(row, kNameIndexFacts));
    }
    for (const DataTypeDescriptor &row : g_astBgpDataTypeExtendDefineTbl)
        subjects.push_back(FromRow(row, Find(kRowFacts, row.Name, kNameIndexFacts)));
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_PREFIX_ProcTable) {
        subjects.push_back(FromEntry(entry, Find(kSubTypeFacts, entry.Name, kNgMvpnFacts), kKeyType));
    }
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_RD_ProcTable)
        subjects.push_back(FromEntry(entry, kVplsRdFacts, 280));
    return subjects;
}

} // namespace bgp::fuzz
