#include "fuzz/compare/calls.h"
#include "fuzz/lua_edits.h"
#include "support/lua_dump.h"

#include <lua.hpp>

namespace bgp::compare {
namespace {

constexpr uint8_t kFills[] = {0x00, 0xEE};

void NoteStack(Trial &trial, lua_State *L, int table)
{
    Note(trial, "stack", "grown by " + std::to_string(lua_gettop(L) - table));
    Note(trial, "table", test::DumpLua(L, table));
}

// A table to read from: as LuaSet built it, or spoilt.
struct Table {
    const Subject &maker; // now and then another's: some rows read with readers of other types
    Bytes value, edits;
    Bytes buffer; // that takes the value
    std::string given = {};
};

lua_State *Build(const Table &table)
{
    return BuildTable(table.maker, table.value, table.edits);
}

Table DrawTable(Draw &draw, const Subject &subject)
{
    constexpr size_t kLongestEdits = 32;
    const Subject &other = Any(draw, draw.material.subjects);
    const Subject &maker = OneIn(draw, 8) ? other : subject;
    Table table{maker, DrawValue(draw, maker), {}, Bytes(kRoom, Any(draw, kFills))};
    if (OneIn(draw, 2)) {
        table.edits = DrawBytes(draw, Below(draw, kLongestEdits));
    }
    lua_State *L = Build(table);
    table.given = "table " + test::DumpLua(L, lua_gettop(L)) + ", buffer of " + Hex(table.buffer.data(), 1);
    return table;
}

} // namespace

Call DrawLuaSet(Draw &draw, const Subject &subject)
{
    const Bytes content = DrawValue(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const auto length = static_cast<uint16_t>(DrawLength(draw, subject, content.size()));
    const size_t missing = DrawMissing(draw, 3);
    const auto make = [=, &subject](Trial &trial) {
        lua_State *L = fuzz::FreshLua();
        const int table = lua_gettop(L);
        const Bytes lent = LentBytes(content);
        Bytes value = lent;
        Watch(trial, [&] {
            return subject.rows[trial.side].LuaSet(Unless(L, missing, 0), table, Unless("v", missing, 1), type, length,
                                                   Unless(value.data(), missing, 2));
        });
        NoteKept(trial, "value", lent, value);
        NoteStack(trial, L, table);
    };
    return {GivenValue(content) + GivenLength(length) + GivenTypeId(type) + GivenMissing(missing), make};
}

Call DrawLuaGet(Draw &draw, const Subject &subject)
{
    const Table from = DrawTable(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const auto length = static_cast<uint16_t>(DrawLength(draw, subject, from.value.size()));
    const bool fromTop = OneIn(draw, 8);
    const size_t missing = DrawMissing(draw, 3);
    const auto make = [=, &subject](Trial &trial) {
        lua_State *L = Build(from);
        const int table = lua_gettop(L);
        Bytes value = from.buffer;
        Watch(trial, [&] {
            return subject.rows[trial.side].LuaGet(Unless(L, missing, 0), fromTop ? -1 : table, Unless("v", missing, 1),
                                                   type, length, Unless(value.data(), missing, 2));
        });
        NoteWritten(trial, "value", from.buffer, value);
        NoteStack(trial, L, table);
    };
    return {from.given + GivenLength(length) + GivenTypeId(type) + (fromTop ? ", table at -1" : "") +
                GivenMissing(missing),
            make};
}

Call DrawReader(Draw &draw, const Subject &subject)
{
    const Table from = DrawTable(draw, subject);
    const bool fromTop = OneIn(draw, 8);
    const auto make = [=, &subject](Trial &trial) {
        lua_State *L = Build(from);
        const int table = lua_gettop(L);
        lua_getfield(L, table, "v");
        Bytes value = from.buffer;
        Watch(trial, [&] { return subject.readers[trial.side](L, value.data(), fromTop ? -1 : table + 1); });
        NoteWritten(trial, "value", from.buffer, value);
        NoteStack(trial, L, table);
    };
    return {from.given + (fromTop ? ", table at -1" : ""), make};
}

} // namespace bgp::compare
