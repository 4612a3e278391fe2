#include "fuzz/subjects.h"

#include <cstdio>
#include <cstring>

namespace bgp::fuzz {
namespace {

constexpr uint16_t kKeyType = 279; // BOLPREFIX
constexpr uint16_t kRdType = 280;  // BOLRD

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

// An NG-MVPN key of addresses of both families prints them with ":" between, which another sub-type takes for its own:
// "::2-1.2.3.4" prints as "::2:1.2.3.4", an IPv6 address.
bool CompositeReadsBack(const uint8_t *value)
{
    switch (SubTypeOf(value)) {
    case 6:
    case 13:
        return SameFamilies(value, 4, 25);
    case 7:
        return SameFamilies(value, 12, 33);
    default:
        return true;
    }
}

constexpr Facts FactsOf(const BgpTypeFacts *type, const BgpTypeFacts *composite = nullptr)
{
    const bool isComposite = composite == nullptr && type->TypeId == kKeyType;
    return {type, composite, isComposite ? CompositeKeeps : nullptr, isComposite ? CompositeReadsBack : nullptr};
}

Subject FromRow(const DataTypeDescriptor &row)
{
    return {FactsOf(Bgp_DescribeType(row.TypeId)), row};
}

Subject FromEntry(const BolPrefixSubtypeEntry &entry, uint16_t typeId)
{
    const Facts facts = FactsOf(Bgp_DescribeSubType(typeId, entry.SubType), Bgp_DescribeType(typeId));
    DataTypeDescriptor row{};
    std::snprintf(row.Name, sizeof row.Name, "%.17s", entry.Name);
    row.TypeId = typeId;
    row.BinaryLength = facts.type->ValueLength;
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
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_PREFIX_ProcTable) {
        subjects.push_back(FromEntry(entry, kKeyType));
    }
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_RD_ProcTable) {
        subjects.push_back(FromEntry(entry, kRdType));
    }
    for (const DataTypeDescriptor &row : g_astBgpDataTypeNameIndexDefineTbl) {
        subjects.push_back(FromRow(row));
    }
    for (uint32_t i = 0; Bgp_TypeAt(BGP_NAME_INDEX_ROWS + i) != nullptr; ++i) {
        const DataTypeDescriptor &row = g_astBgpDataTypeExtendDefineTbl[i];
        subjects.push_back(FromRow(row));
    }
    return subjects;
}

} // namespace bgp::fuzz
