#include "fuzz/examine.h"

#include "fuzz/lua_edits.h"

#include <lua.hpp>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace bgp::fuzz {

uint32_t FirstWord(const Bytes &value)
{
    uint32_t word = 0;
    std::memcpy(&word, value.data(), std::min(value.size(), sizeof word));
    return word;
}

void ReadBack(const Trial &trial, const Bytes &value, bool same)
{
    lua_State *L = FreshLua();
    const int table = lua_gettop(L);
    const uint32_t set = LuaSet(trial, L, table, value);
    Expect(trial, !same || set == DT_OK, "LuaSet refuses a value, code", set);
    if (trial.subject.row.LuaGet == nullptr) {
        return;
    }
    Bytes read(value.size());
    if (trial.subject.facts.Is(BGP_TRAIT_KEEPS_SUBTYPE)) {
        std::copy_n(value.begin(), sizeof(uint32_t), read.begin());
    }
    const uint32_t got = LuaGet(trial, L, table, read);
    Expect(trial, !same || got == DT_OK, "LuaGet refuses what LuaSet built, code", got);
    Expect(trial, !same || read == value, "LuaGet reads otherwise than LuaSet wrote");
}

// ------------------------------------------------------------------------------------------------------- typed values

namespace {

constexpr auto kRefuses = static_cast<int32_t>(DT_ERR_FAIL);

void PrintTyped(const Trial &trial, const Bytes &value)
{
    const Facts &facts = trial.subject.facts;
    const bool foreign = facts.Is(BGP_TRAIT_OTHER_SUBTYPES) && FirstWord(value) == 0;
    for (const uint8_t mode : kModes) {
        const Printed printed = FormatOut(trial, mode, value);
        if (mode == 1) {
            Expect(trial, foreign ? printed.code == DT_ERR_FAIL : printed.code == DT_OK,
                   "FormatOut refuses a typed value, code", printed.code);
        }
        if (mode != 2 || printed.length < 2 || printed.bytes.empty() ||
            facts.Is(BGP_TRAIT_COMPOSES | BGP_TRAIT_PRINTS_BYTES)) {
            continue;
        }
        if (facts.readsBack != nullptr && !facts.readsBack(value.data())) {
            continue;
        }
        // Where the printed text is a text of the type, it prints as itself.
        const std::string text(reinterpret_cast<const char *>(printed.bytes.data()));
        if (const Typed again = FormatIn(trial, mode, text); again.code == DT_OK) {
            Expect(trial, PrintOwn(trial, mode, again.value).bytes == printed.bytes, "a printed text prints otherwise");
        }
    }
}

void CompareTyped(const Trial &trial, const Bytes &value)
{
    const int32_t answer = Compare(trial, value, value);
    const bool refuses = answer == kRefuses && trial.subject.facts.type->Order == BGP_ORDER_NONE;
    Expect(trial, answer == 0 || refuses, "Compare of equal values gives", static_cast<uint32_t>(answer));
}

bool LuaKeepsTyped(const Facts &facts, const Bytes &value)
{
    return facts.type->Lua != BGP_LUA_LOSES && (facts.luaKeeps == nullptr || facts.luaKeeps(value.data()));
}

void SwapTyped(const Trial &trial, const Bytes &value)
{
    if (trial.subject.facts.type->Network != BGP_NETWORK_TYPE_FIRST) {
        Expect(trial, Swapped(trial, value, 2) == value, "Endian twice is not the identity");
        return;
    }
    // Host order names no known kind: only the first word turns over. Two turns swap the fields, and so do two more.
    Bytes turned = value;
    std::reverse(turned.begin(), turned.begin() + sizeof(uint32_t));
    Expect(trial, Swapped(trial, value, 1) == turned, "Endian turns more than the first word");
    Expect(trial, Swapped(trial, value, 4) == value, "Endian four times is not the identity");
}

} // namespace

Bytes Swappable(const Trial &trial, Bytes value)
{
    if (trial.subject.facts.type->Network == BGP_NETWORK_PAYLOAD) {
        value.resize(trial.subject.row.BinaryLength);
    }
    return value;
}

void ExamineTyped(const Trial &trial, const Bytes &value)
{
    const DataTypeDescriptor &row = trial.subject.row;
    const Facts &facts = trial.subject.facts;
    if (row.FormatOut != nullptr) {
        PrintTyped(trial, value);
    }
    if (row.Check != nullptr) {
        const uint32_t code = Check(trial, value);
        Expect(trial, code == DT_OK || facts.type->CheckedLength != facts.type->ValueLength,
               "Check refuses a typed value, code", code);
    }
    if (row.Compare != nullptr) {
        CompareTyped(trial, value);
    }
    if (row.LuaSet != nullptr) {
        ReadBack(trial, value, LuaKeepsTyped(facts, value));
    }
    if (row.Endian != nullptr) {
        SwapTyped(trial, Swappable(trial, value));
    }
}

// --------------------------------------------------------------------------------------------------------- any values

namespace {

bool IsOrder(int32_t order)
{
    return order >= -1 && order <= 1;
}

} // namespace

void CompareValues(const Trial &trial, const Bytes &left, const Bytes &right)
{
    constexpr auto kDiffers = static_cast<int32_t>(DT_ERR_INVALID_VALUE);
    const int32_t there = Compare(trial, left, right);
    const int32_t back = Compare(trial, right, left);
    const int32_t self = Compare(trial, left, left);
    switch (trial.subject.facts.type->Order) {
    case BGP_ORDER_TOTAL:
        Expect(trial, IsOrder(there) && there == -back, "Compare is no order");
        Expect(trial, self == 0, "Compare finds a value unlike itself");
        break;
    case BGP_ORDER_EQUALITY:
        Expect(trial, (there == 0 || there == kDiffers) && there == back, "Compare tells more than equal or not");
        Expect(trial, self == 0, "Compare finds a value unlike itself");
        break;
    default: // whatever it tells, it tells from both sides
        Expect(trial, IsOrder(there) ? there == -back : there == back, "Compare tells otherwise from the other side");
        Expect(trial, self == 0 || self == kRefuses, "Compare finds a value unlike itself");
        break;
    }
}

// ----------------------------------------------------------------------------------------------------------- refusals

namespace {

bool IsDeclared(const BgpTypeFacts &facts, const BgpRule *rule)
{
    for (uint32_t i = 0; i < facts.RuleCount; ++i) {
        if (facts.Rules[i] == rule) {
            return true;
        }
    }
    constexpr std::string_view kOfAny[] = {"mode", "not-typed", "host", "memory"};
    return std::find(std::begin(kOfAny), std::end(kOfAny), rule->Name) != std::end(kOfAny);
}

void ExamineReason(const Trial &trial, const BgpReason &reason, size_t length)
{
    if (reason.Code == DT_OK) {
        Expect(trial, reason.Rule == nullptr, "a text that is accepted breaks a rule");
        return;
    }
    if (!Expect(trial, reason.Rule != nullptr, "a text is refused without a rule")) {
        return;
    }
    Expect(trial, reason.Offset + size_t{reason.Length} <= length, "a text is refused for what is not in it");
    char sentence[16];
    Expect(trial, Bgp_SayReason(&reason, sentence, sizeof sentence) > 0, "a rule has no words");
    const Facts &facts = trial.subject.facts;
    Expect(trial, facts.HasSubTypes() || IsDeclared(*facts.type, reason.Rule),
           (std::string("the type does not tell of the rule ") + reason.Rule->Name).c_str());
}

} // namespace

void ExamineRefusal(const Trial &trial, uint8_t mode, const std::string &text, uint32_t code)
{
    const std::string typed = text.c_str(); // what FormatIn sees of it
    const DataTypeRequest request{mode, trial.handle};
    const Facts &facts = trial.subject.facts;
    const bool isSubType = facts.composite != nullptr;
    BgpRefusal refusal;
    const uint32_t told = Bgp_ExplainRefusal(&request, facts.type->TypeId, typed.c_str(), &refusal);
    Expect(trial, told == refusal.Reason.Code, "a refusal has two codes");
    if (isSubType && refusal.SubTypeCount == 0) {
        return; // its composite does not tell of it
    }
    const BgpReason &reason = isSubType ? refusal.SubTypes[facts.type->SubType] : refusal.Reason;
    Expect(trial, reason.Code == code, "FormatIn and the refusal answer otherwise: the refusal", reason.Code);
    ExamineReason(trial, reason, typed.size());
    if (facts.HasSubTypes() && refusal.SubTypeCount != 0 && code != DT_OK) {
        Expect(trial, refusal.Closest < refusal.SubTypeCount, "no sub-type is the closest");
    }
}

} // namespace bgp::fuzz
