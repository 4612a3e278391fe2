// A type as data: one record a type, made at the end of its source from the rules that its operations run on. The roof
// lists them; tools, tests, fuzzers and hosts read them through Bgp_DescribeType().
#ifndef BGP_HOST_TYPE_H
#define BGP_HOST_TYPE_H

#include "host/contract.h"
#include "host/numbers.h"

namespace bgp {

// Bgp_ExplainRefusal() of a type whose FormatIn is not the contract's alone. refusal is cleared beforehand; the answer
// is FormatIn's.
using Explainer = uint32_t (*)(const DataTypeRequest &request, const char *text, BgpRefusal &refusal);

struct Type {
    BgpTypeFacts facts;
    const FormatInRule *in; // null where values cannot be typed, or explain knows better
    Explainer explain;      // else null
    const BgpLayout *(*describe)(const void *value, uint32_t length); // where the value tells its layout, else null
    const Type *const *subTypes;                                      // of a composite type, by their words; else null
    uint32_t subTypeCount;
};

// By the rules of a FormatIn; null: there is none. The answer is FormatIn's, and the reason's code.
uint32_t Explain(const FormatInRule *rule, const DataTypeRequest &request, const char *text, BgpReason &reason);

// The same, of any type.
uint32_t Explain(const Type &type, const DataTypeRequest &request, const char *text, BgpRefusal &refusal);

// The rules that a type's texts can break.
struct RuleList {
    constexpr RuleList() = default;
    template <uint32_t Count>
    constexpr RuleList(const BgpRule *const (&rules)[Count]) : at(rules), count(Count)
    {
    }
    const BgpRule *const *at = nullptr;
    uint32_t count = 0;
};

// A rule that a type may have. Whether it has is not asked of the pointer: with the sanitizers' tests of null pointers,
// no comparison of one is a constant.
template <class Rule>
struct Given {
    constexpr Given() = default;
    constexpr Given(const Rule *rule) : at(rule), is(true) {}
    const Rule *at = nullptr;
    bool is = false;
};

// What a type says of itself. Lengths and ids that are not given are those of its rules.
struct TypeRule {
    const char *name;
    const char *description;
    const char *reference = nullptr;
    Given<FormatInRule> in = {};
    Given<FormatOutRule> out = {};
    const BgpLayout *layout = nullptr;
    Given<NumbersRule> text = {}; // of types whose texts are numbers with separators alone
    RuleList rules = {};
    uint16_t shortestText = 0;
    uint16_t longestText = 0;
    uint16_t typeId = 0; // where it is not the one that FormatIn reports
    uint16_t subType = 0;
    uint16_t valueLength = 0;
    uint16_t checkedLength = kValueLength;
    uint16_t textSize = 0;
    uint8_t typingMode = 2;
    BgpOrder order = BGP_ORDER_TOTAL;
    BgpNetwork network = BGP_NETWORK_ENDIAN;
    BgpLua lua = BGP_LUA_ALL;
    uint32_t traits = 0; // beside those that the rules tell
    Explainer explain = nullptr;
    const BgpLayout *(*describe)(const void *value, uint32_t length) = nullptr;
    const Type *const *subTypes = nullptr;
    uint32_t subTypeCount = 0;

    static constexpr uint16_t kValueLength = 0xFFFF;
};

constexpr uint16_t Or(uint16_t given, uint16_t otherwise)
{
    return given != 0 ? given : otherwise;
}

consteval Type MakeType(const TypeRule &rule)
{
    Type type{};
    BgpTypeFacts &facts = type.facts;
    facts.Name = rule.name;
    facts.Description = rule.description;
    facts.Reference = rule.reference;
    facts.ResultTypeId = rule.in.is ? rule.in.at->typeId : rule.typeId;
    facts.TypeId = Or(rule.typeId, facts.ResultTypeId);
    facts.SubType = rule.subType;
    const uint16_t printed = rule.out.is ? rule.out.at->valueSize : uint16_t{0};
    facts.ValueLength = Or(rule.valueLength, rule.in.is ? rule.in.at->length : printed);
    facts.CheckedLength = rule.checkedLength == TypeRule::kValueLength ? facts.ValueLength : rule.checkedLength;
    facts.TextSize = Or(rule.textSize, rule.out.is ? rule.out.at->textSize : uint16_t{0});
    facts.ShortestText = rule.text.is ? rule.text.at->shortest : rule.shortestText;
    facts.LongestText = rule.text.is ? rule.text.at->longest : rule.longestText;
    facts.TypingMode = rule.typingMode;
    facts.Order = static_cast<uint8_t>(rule.order);
    facts.Network = static_cast<uint8_t>(rule.network);
    facts.Lua = static_cast<uint8_t>(rule.lua);
    facts.Base = rule.text.is ? rule.text.at->base : uint8_t{10};
    facts.Traits = rule.traits;
    if (rule.out.is) {
        facts.Traits |= rule.out.at->mode3 == Mode3::kCopy ? BGP_TRAIT_COPIES_RAW : 0u;
        facts.Traits |= rule.out.at->zeroExtends ? BGP_TRAIT_READS_SHORT : 0u;
    }
    facts.Layout = rule.layout;
    facts.Notations = rule.text.is ? rule.text.at->notations : nullptr;
    facts.NotationCount = rule.text.is ? rule.text.at->count : 0;
    facts.Rules = rule.rules.at;
    facts.RuleCount = rule.rules.count;
    type.in = rule.in.at;
    type.explain = rule.explain;
    type.describe = rule.describe;
    type.subTypes = rule.subTypes;
    type.subTypeCount = rule.subTypeCount;
    return type;
}

} // namespace bgp

#endif
