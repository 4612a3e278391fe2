#include "fuzz/targets.h"

#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"
#include "fuzz/examine.h"
#include "fuzz/item_list.h"
#include "fuzz/lua_edits.h"

#include <lua.hpp>

#include <cstring>

namespace bgp::fuzz {
namespace {

namespace host = bgp::standalone;

uint8_t ModeOf(uint8_t byte)
{
    return kModes[byte % sizeof kModes];
}

// The bytes of the value, zeros behind them, `length` in all.
Bytes Padded(const std::string &bytes, size_t length)
{
    Bytes value(bytes.begin(), bytes.end());
    value.resize(length);
    return value;
}

// -------------------------------------------------------------------------------------------------------------- text

bool RunText(Trial &trial, Input &input)
{
    if (trial.subject.row.FormatIn == nullptr) {
        return false;
    }
    const uint8_t mode = ModeOf(input.Byte());
    const std::string text = input.Rest();
    const Typed typed = FormatIn(trial, mode, text);
    ExamineRefusal(trial, mode, text, typed.code);
    if (typed.code != DT_OK || trial.subject.facts.Is(BGP_TRAIT_NO_TEXT)) {
        return false;
    }
    ExamineTyped(trial, typed.value);
    return true;
}

// ------------------------------------------------------------------------------------------------------------- value

// Bytes of a value of that type. `shorter` says how long a host string is.
size_t SizeOfValue(const Facts &facts, uint8_t mode, uint8_t shorter)
{
    constexpr size_t kRecord = 40; // what mode 2 of VRF names takes
    if (!facts.Is(BGP_TRAIT_ANY_LENGTH)) {
        return facts.type->ValueLength;
    }
    if (mode == 2) {
        return kRecord;
    }
    return shorter == 0 ? facts.type->ValueLength : 1u + shorter % 64u;
}

// Whether FormatOut takes the first `length` bytes of the value alone. The composite leaves that to its sub-types, and
// extended route targets are read whole.
bool PrintsShort(const Facts &facts, const Bytes &value, size_t length)
{
    constexpr uint32_t kVrfRtExt = 8;
    Bytes extended(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(length));
    extended.resize(sizeof(uint32_t));
    return facts.Is(BGP_TRAIT_READS_SHORT) && (!facts.HasSubTypes() || FirstWord(extended) != kVrfRtExt);
}

bool PrintValue(const Trial &trial, uint8_t mode, const Bytes &value, uint8_t shorter)
{
    bool printed = FormatOut(trial, mode, value).code == DT_OK;
    const size_t length = value.empty() ? 0 : shorter % value.size();
    if (shorter != 0 && PrintsShort(trial.subject.facts, value, length)) {
        printed |=
            FormatOut(trial, mode, {value.begin(), value.begin() + static_cast<std::ptrdiff_t>(length)}).code == DT_OK;
    }
    return printed;
}

void ScriptValue(const Trial &trial, const Bytes &value, uint8_t shorter)
{
    ReadBack(trial, value, trial.subject.facts.type->Lua == BGP_LUA_ALL);
    if (!trial.subject.facts.Is(BGP_TRAIT_SETS_ANY)) {
        const Bytes part(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(shorter % value.size()));
        lua_State *L = FreshLua();
        Expect(trial, LuaSet(trial, L, lua_gettop(L), part) != DT_OK, "LuaSet takes a short value");
    }
}

// Sets are compared and scripted by themselves, and printed with what the input has behind them.
bool RunValue(Trial &trial, Input &input)
{
    const DataTypeDescriptor &row = trial.subject.row;
    const Facts &facts = trial.subject.facts;
    const uint8_t mode = ModeOf(input.Byte());
    const uint8_t shorter = input.Byte();
    const size_t size = SizeOfValue(facts, mode, shorter);
    const Bytes value = Padded(input.Take(size), size);
    bool reached = false;
    if (row.FormatOut != nullptr) {
        reached = facts.Is(BGP_TRAIT_PRINTS_ITEMS)
                      ? FormatOut(trial, mode, ItemList(input.at, input.left)).code == DT_OK
                      : PrintValue(trial, mode, value, shorter);
    }
    if (row.Check != nullptr) {
        Check(trial, value);
        Check(trial, {value.begin(), value.begin() + static_cast<std::ptrdiff_t>(shorter % value.size())});
    }
    if (row.Compare != nullptr) {
        Bytes other = value;
        for (size_t at = 0; at < size && input.left != 0; ++at) {
            other[at] = input.Byte();
        }
        CompareValues(trial, value, other);
    }
    if (row.LuaSet != nullptr) {
        ScriptValue(trial, value, shorter);
    }
    if (row.Endian != nullptr) {
        const Bytes bytes = Swappable(trial, value);
        Expect(trial, Swapped(trial, bytes, 2) == bytes || facts.type->Network == BGP_NETWORK_TYPE_FIRST,
               "Endian twice is not the identity");
    }
    return reached;
}

// --------------------------------------------------------------------------------------------------------------- Lua

// Byte 1: bit 0 the table is named from the top of the stack, bit 1 the buffer is short, bit 2 the table is empty.
bool RunLua(Trial &trial, Input &input)
{
    const DataTypeDescriptor &row = trial.subject.row;
    if (row.LuaGet == nullptr) {
        return false;
    }
    const uint8_t how = input.Byte();
    const size_t size = SizeOfValue(trial.subject.facts, 1, 0);
    const Bytes value = Padded(input.Take(input.Byte()), size);
    lua_State *L = FreshLua();
    const int table = lua_gettop(L);
    if ((how & 4) != 0) {
        lua_pushstring(L, "v");
        lua_newtable(L);
        lua_rawset(L, table);
    } else {
        LuaSet(trial, L, table, value);
    }
    EditField(L, input);
    Bytes read((how & 2) != 0 ? size - 1 : size);
    if (LuaGet(trial, L, (how & 1) != 0 ? -1 : table, read) != DT_OK) {
        return false;
    }
    if (row.FormatOut != nullptr && !trial.subject.facts.Is(BGP_TRAIT_PRINTS_ITEMS) && read.size() == size) {
        FormatOut(trial, 1, read);
        FormatOut(trial, 2, read);
    }
    return true;
}

// ------------------------------------------------------------------------------------------------------------ faults

host::Faults FaultsOf(uint8_t kind, uint8_t which)
{
    constexpr uint32_t kCalls = 40;
    const uint32_t call = which % kCalls + 1;
    switch (kind % 6) {
    case 0:
        return {.failAllocation = call};
    case 1:
        return {.failAllocation = call, .failAllAfter = true};
    case 2:
        return {.failPrint = call};
    case 3:
        return {.failCopy = call};
    case 4:
        return {.failScan = call};
    default:
        return {.helpInitCode = 0x801234u + which};
    }
}

// Runs a call while the host fails.
template <class Call>
void Under(const host::Faults &faults, Call call)
{
    host::SetFaults(faults);
    call();
    host::SetFaults({});
}

// What FormatOut gets for a text: its value, or, where there is none, its bytes.
Bytes PrintedBytes(const Trial &trial, const Typed &typed, const std::string &text, uint8_t mode)
{
    const Facts &facts = trial.subject.facts;
    if (facts.Is(BGP_TRAIT_PRINTS_ITEMS)) {
        return ItemList(reinterpret_cast<const uint8_t *>(text.data()), text.size());
    }
    return typed.value.empty() ? Padded(text, SizeOfValue(facts, mode, 0)) : typed.value;
}

bool RunFaults(Trial &trial, Input &input)
{
    const DataTypeDescriptor &row = trial.subject.row;
    const uint8_t mode = ModeOf(input.Byte());
    const uint8_t kind = input.Byte();
    const host::Faults faults = FaultsOf(kind, input.Byte());
    const std::string text = input.Rest();
    Typed typed{DT_ERR_FAIL, {}};
    if (row.FormatIn != nullptr) {
        typed = FormatIn(trial, mode, text);
    }
    trial.faulty = true;
    if (row.FormatIn != nullptr) {
        Under(faults, [&] { FormatIn(trial, mode, text); });
    }
    if (row.Help != nullptr) {
        Under(faults, [&] { Help(trial, mode, text); });
    }
    const Bytes value = PrintedBytes(trial, typed, text, mode);
    if (row.FormatOut != nullptr) {
        const size_t size = LentSize(trial, mode, PrintOwn(trial, mode, value));
        Under(faults, [&] { PrintOwn(trial, mode, value); });
        Under(faults, [&] { PrintLent(trial, mode, value, size); });
    }
    if (row.LuaSet != nullptr && !trial.subject.facts.Is(BGP_TRAIT_PRINTS_ITEMS)) {
        Under(faults, [&] { ReadBack(trial, value, false); });
    }
    return typed.code == DT_OK;
}

// -------------------------------------------------------------------------------------------------------------- runs

// The host's memory, checked; some objects with names.
uint32_t PreparedHandle()
{
    thread_local const uint32_t handle = [] {
        host::SetCheckedBlocks(true);
        host::SetObjectName(0x6003, 7, "blue");
        host::SetObjectName(0x605c, 1, "100");
        return host::OpenHandle();
    }();
    return handle;
}

} // namespace

const Target kTargetTable[kTargets] = {
    {"text", RunText, 2},
    {"value", RunValue, 0},
    {"lua", RunLua, 0},
    {"faults", RunFaults, 4},
};

const Target *FindTarget(std::string_view name)
{
    for (const Target &target : kTargetTable) {
        if (name == target.name) {
            return &target;
        }
    }
    return nullptr;
}

Outcome Run(const Target &target, std::span<const Subject> subjects, const uint8_t *data, size_t size)
{
    Outcome outcome;
    if (size == 0 || subjects.empty()) {
        return outcome;
    }
    Input input{data, size};
    outcome.subject = &subjects[input.Byte() % subjects.size()];
    Trial trial{*outcome.subject, PreparedHandle(), outcome.findings};
    outcome.reached = target.run(trial, input);
    std::string report;
    if (!host::BlocksIntact(&report)) {
        Expect(trial, false, report.c_str());
    }
    host::ResetHandle(trial.handle);
    return outcome;
}

} // namespace bgp::fuzz
