#include "fuzz/compare/calls.h"

#include "bgp_host_services.h"
#include "fuzz/lua_edits.h"

#include <lua.hpp>

#include <algorithm>
#include <cstdio>

namespace bgp::compare {

void Note(Trial &trial, const char *name, const std::string &what)
{
    trial.answer.push_back(std::string(name) + ' ' + what);
}

std::string Hex(const uint8_t *bytes, size_t size)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (size_t i = 0; i < size; ++i) {
        hex += kDigits[bytes[i] >> 4];
        hex += kDigits[bytes[i] & 15];
    }
    return hex;
}

std::string Hex(uint32_t number)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", number);
    return text;
}

std::string Quoted(const uint8_t *bytes, size_t size)
{
    std::string quoted = "\"";
    for (size_t i = 0; i < size; ++i) {
        const bool plain = bytes[i] >= 0x20 && bytes[i] <= 0x7e && bytes[i] != '\\';
        quoted += plain ? std::string(1, static_cast<char>(bytes[i])) : "\\x" + Hex(bytes + i, 1);
    }
    return quoted + '"';
}

std::string Quoted(const std::string &text)
{
    return Quoted(reinterpret_cast<const uint8_t *>(text.data()), text.size());
}

std::string GivenMode(uint8_t mode)
{
    return "mode " + std::to_string(mode);
}

std::string GivenLength(uint32_t length)
{
    return ", length " + std::to_string(length);
}

std::string GivenValue(const Bytes &value)
{
    return "value " + Hex(value.data(), value.size());
}

std::string GivenMissing(size_t missing)
{
    return missing == kNone ? "" : ", pointer " + std::to_string(missing + 1) + " null";
}

std::string GivenTypeId(uint16_t typeId)
{
    return ", type " + std::to_string(typeId);
}

// -------------------------------------------------------------------------------------------------------------- memory

namespace {

// Blocks of the host that stand when a call begins.
struct Blocks {
    size_t plain, byHandle;
};

Blocks BlocksNow(const Trial &trial)
{
    return {host::ScratchBlocks(), host::HandleBlocks(trial.handle)};
}

void NoteMemory(Trial &trial, const Blocks &before)
{
    const Blocks now = BlocksNow(trial);
    const std::vector<host::Release> releases = host::TakeReleases();
    const auto foreign = std::count_if(releases.begin(), releases.end(), [](const auto &one) { return !one.known; });
    const host::Counters &counters = trial.counters;
    Note(trial, "memory",
         std::to_string(counters.allocations) + " allocations, " + std::to_string(counters.plainAllocations) +
             " of them plain, " + std::to_string(counters.frees) + " frees, " + std::to_string(foreign) +
             " of what is no block; left " + std::to_string(now.byHandle - before.byHandle) + " blocks, " +
             std::to_string(now.plain - before.plain) + " plain ones");
}

} // namespace

void Watch(Trial &trial, const std::function<uint32_t()> &call)
{
    const Blocks before = BlocksNow(trial);
    host::RecordReleases(true);
    host::SetFaults(trial.faults);
    trial.code = call();
    trial.counters = host::TakeCounters();
    host::SetFaults({});
    Note(trial, "code", Hex(trial.code));
    NoteMemory(trial, before);
    host::RecordReleases(false);
}

void GiveBack(void *result)
{
    SYS_DataTypeFree(result); // what is no block of the host it leaves alone
}

Bytes LentText(const std::string &text)
{
    constexpr size_t kBehind = 64;
    Bytes lent(text.begin(), text.end());
    lent.push_back(0);
    lent.resize(lent.size() + kBehind, kMark);
    return lent;
}

Bytes LentBytes(const Bytes &content, size_t room)
{
    Bytes lent = content;
    lent.resize(std::max(room, content.size()), kMark);
    return lent;
}

void NoteKept(Trial &trial, const char *name, const Bytes &lent, const Bytes &now)
{
    if (lent != now) {
        Note(trial, name, "now " + Quoted(now.data(), now.size()));
    }
}

void NoteWritten(Trial &trial, const char *name, const Bytes &lent, const Bytes &now, bool asText)
{
    const auto last = std::mismatch(now.rbegin(), now.rend(), lent.rbegin()).first;
    const auto size = static_cast<size_t>(now.rend() - last);
    Note(trial, name, size == 0 ? "nothing" : asText ? Quoted(now.data(), size) : Hex(now.data(), size));
}

// ----------------------------------------------------------------------------------------------------------------- Lua

lua_State *BuildTable(const Subject &subject, Bytes value, const Bytes &edits)
{
    const DataTypeDescriptor &row = subject.rows[kOld];
    lua_State *L = fuzz::FreshLua();
    const int table = lua_gettop(L);
    const auto length = static_cast<uint16_t>(value.size());
    value = LentBytes(value);
    if (row.LuaSet == nullptr || row.LuaSet(L, table, "v", row.TypeId, length, value.data()) != DT_OK) {
        lua_settop(L, table);
        lua_pushstring(L, "v");
        lua_newtable(L);
        lua_rawset(L, table);
    }
    lua_settop(L, table);
    fuzz::Input input{edits.data(), edits.size()};
    fuzz::EditField(L, input);
    return L;
}

} // namespace bgp::compare
