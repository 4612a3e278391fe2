// bgpdt lua: scripts that see the types, as the library "bgp":
//
//   bgp.types()                     the names of all types
//   bgp.parse(type, text [, mode])  a text to a Lua table; nil and the code's name when it is refused
//   bgp.format(type, v [, mode])    a table to a text; nil and the code's name
//   bgp.check(type, v)              true; or false and the code's name
//   bgp.compare(type, a, b)         -1, 0 or 1, which way round is the type's own
//   bgp.bytes(type, v)              the stored bytes as a string
//   bgp.dump(v)                     any Lua value, written as Lua writes it
//
// v, a and b are tables (or plain numbers, for the types that are numbers) or texts.
#include "script.h"

#include "bgp_standalone_host.hpp"
#include "commands.h"
#include "values.h"

#include <CLI/CLI.hpp>
#include <lua.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace bgpdt {

namespace host = bgp::standalone;

namespace {

struct LuaState {
    lua_State *L = host::NewLua();
    LuaState() = default;
    ~LuaState() { host::CloseLua(L); }
    LuaState(const LuaState &) = delete;
    LuaState &operator=(const LuaState &) = delete;
};

std::string Quoted(lua_State *L, int index)
{
    size_t length = 0;
    const char *text = lua_tolstring(L, index, &length);
    std::string quoted = "\"";
    for (size_t i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        char piece[8];
        std::snprintf(piece, sizeof piece,
                      byte < 0x20 || byte > 0x7e    ? "\\x%02x"
                      : byte == '"' || byte == '\\' ? "\\%c"
                                                    : "%c",
                      byte);
        quoted += piece;
    }
    return quoted + '"';
}

constexpr int kDeepest = 20; // tables within tables

std::string Dump(lua_State *L, int index, int depth);

// Named fields in the order of their names, then the array part.
std::string DumpTable(lua_State *L, int index, int depth)
{
    luaL_checkstack(L, 4, "dump");
    std::vector<std::string> fields;
    const auto length = static_cast<lua_Integer>(lua_rawlen(L, index));
    for (lua_pushnil(L); lua_next(L, index) != 0; lua_pop(L, 1)) {
        if (lua_type(L, -2) == LUA_TSTRING) {
            fields.push_back(std::string(lua_tostring(L, -2)) + '=' + Dump(L, lua_gettop(L), depth + 1));
        }
    }
    std::sort(fields.begin(), fields.end());
    for (lua_Integer i = 1; i <= length; ++i) {
        lua_rawgeti(L, index, i);
        fields.push_back(Dump(L, lua_gettop(L), depth + 1));
        lua_pop(L, 1);
    }
    std::string text;
    for (const std::string &field : fields) {
        text += (text.empty() ? "" : ", ") + field;
    }
    return '{' + text + '}';
}

std::string Dump(lua_State *L, int index, int depth)
{
    switch (lua_type(L, index)) {
    case LUA_TSTRING:
        return Quoted(L, index);
    case LUA_TTABLE:
        return depth >= kDeepest ? "{...}" : DumpTable(L, index, depth);
    default: {
        const std::string text = luaL_tolstring(L, index, nullptr);
        lua_pop(L, 1);
        return text;
    }
    }
}

// ----------------------------------------------------------------------------------------------------- the library bgp

const DataTypeDescriptor &TypeArgument(lua_State *L)
{
    const char *name = luaL_checkstring(L, 1);
    const DataTypeDescriptor *type = FindType(name);
    if (type == nullptr) {
        luaL_error(L, "no data type %s", name);
    }
    return *type;
}

uint8_t ModeArgument(lua_State *L, int index, const DataTypeDescriptor &type)
{
    return static_cast<uint8_t>(luaL_optinteger(L, index, Facts(type).TypingMode));
}

int Failed(lua_State *L, uint32_t code)
{
    lua_pushnil(L);
    lua_pushstring(L, CodeName(code).c_str());
    return 2;
}

// The bytes that a table stands for.
uint32_t FromTable(lua_State *L, int index, const DataTypeDescriptor &type, std::string &value)
{
    if (type.LuaGet == nullptr) {
        return DT_ERR_INVALID_PARAM;
    }
    value.assign(Facts(type).ValueLength, '\0');
    const int top = lua_gettop(L);
    lua_newtable(L);
    const int parent = lua_gettop(L);
    lua_pushvalue(L, index);
    lua_setfield(L, parent, "v");
    const uint32_t code = type.LuaGet(L, parent, "v", type.TypeId, static_cast<uint16_t>(value.size()), value.data());
    lua_settop(L, top);
    return code;
}

uint32_t ValueArgument(lua_State *L, int index, const DataTypeDescriptor &type, std::string &value)
{
    if (lua_type(L, index) != LUA_TSTRING || type.FormatIn == nullptr) {
        return FromTable(L, index, type, value);
    }
    Parsed parsed = Parse(type, lua_tostring(L, index), Facts(type).TypingMode);
    if (parsed.NoValue()) {
        return DT_ERR_INVALID_VALUE;
    }
    value = std::move(parsed.value);
    return parsed.code;
}

// Leaves the value's table on the stack.
uint32_t PushTable(lua_State *L, const DataTypeDescriptor &type, const std::string &value)
{
    if (type.LuaSet == nullptr) {
        return DT_ERR_INVALID_PARAM;
    }
    lua_newtable(L);
    const int parent = lua_gettop(L);
    const uint32_t code = type.LuaSet(L, parent, "v", type.TypeId, static_cast<uint16_t>(value.size()), value.data());
    lua_settop(L, parent);
    lua_getfield(L, parent, "v");
    lua_remove(L, parent);
    return code;
}

int ScriptTypes(lua_State *L)
{
    lua_newtable(L);
    lua_Integer i = 0;
    for (const DataTypeDescriptor *type : host::Rows()) {
        lua_pushstring(L, type->Name);
        lua_rawseti(L, -2, ++i);
    }
    return 1;
}

int ScriptParse(lua_State *L)
{
    const DataTypeDescriptor &type = TypeArgument(L);
    const char *text = luaL_checkstring(L, 2);
    if (type.FormatIn == nullptr) {
        return Failed(L, DT_ERR_INVALID_PARAM);
    }
    const Parsed parsed = Parse(type, text, ModeArgument(L, 3, type));
    if (parsed.code != DT_OK || parsed.NoValue()) {
        return Failed(L, parsed.NoValue() ? DT_ERR_INVALID_VALUE : parsed.code);
    }
    const uint32_t code = PushTable(L, type, parsed.value);
    return code == DT_OK ? 1 : Failed(L, code);
}

int ScriptFormat(lua_State *L)
{
    const DataTypeDescriptor &type = TypeArgument(L);
    std::string value;
    uint32_t code = ValueArgument(L, 2, type, value);
    if (code == DT_OK && type.FormatOut == nullptr) {
        code = DT_ERR_INVALID_PARAM;
    }
    if (code != DT_OK) {
        return Failed(L, code);
    }
    const Printed printed = Print(type, value, ModeArgument(L, 3, type));
    if (printed.code != DT_OK) {
        return Failed(L, printed.code);
    }
    lua_pushlstring(L, printed.text.data(), printed.text.size());
    return 1;
}

int ScriptCheck(lua_State *L)
{
    const DataTypeDescriptor &type = TypeArgument(L);
    std::string value;
    uint32_t code = ValueArgument(L, 2, type, value);
    if (code == DT_OK && type.Check != nullptr) {
        code = Check(type, value);
    }
    lua_pushboolean(L, code == DT_OK);
    if (code == DT_OK) {
        return 1;
    }
    lua_pushstring(L, CodeName(code).c_str());
    return 2;
}

int ScriptCompare(lua_State *L)
{
    const DataTypeDescriptor &type = TypeArgument(L);
    std::string left;
    std::string right;
    uint32_t code = ValueArgument(L, 2, type, left);
    if (code == DT_OK) {
        code = ValueArgument(L, 3, type, right);
    }
    if (code == DT_OK && type.Compare == nullptr) {
        code = DT_ERR_INVALID_PARAM;
    }
    if (code != DT_OK) {
        return Failed(L, code);
    }
    const auto length = static_cast<uint32_t>(std::min(left.size(), right.size()));
    lua_pushinteger(L, type.Compare(&type, length, left.data(), right.data()));
    return 1;
}

int ScriptBytes(lua_State *L)
{
    const DataTypeDescriptor &type = TypeArgument(L);
    std::string value;
    if (const uint32_t code = ValueArgument(L, 2, type, value); code != DT_OK) {
        return Failed(L, code);
    }
    lua_pushlstring(L, value.data(), value.size());
    return 1;
}

int ScriptDump(lua_State *L)
{
    luaL_checkany(L, 1);
    lua_pushstring(L, Dump(L, 1, 0).c_str());
    return 1;
}

constexpr luaL_Reg kLibrary[] = {
    {"types", ScriptTypes},     {"parse", ScriptParse}, {"format", ScriptFormat}, {"check", ScriptCheck},
    {"compare", ScriptCompare}, {"bytes", ScriptBytes}, {"dump", ScriptDump},     {nullptr, nullptr},
};

struct Arguments {
    std::string script;
    std::vector<std::string> words;
};

int Run(const Arguments &arguments)
{
    const LuaState lua;
    if (lua.L == nullptr) {
        return Complain(kTrouble, "no memory for Lua");
    }
    luaL_newlib(lua.L, kLibrary);
    lua_setglobal(lua.L, "bgp");
    lua_newtable(lua.L);
    for (size_t i = 0; i < arguments.words.size(); ++i) {
        lua_pushstring(lua.L, arguments.words[i].c_str());
        lua_rawseti(lua.L, -2, static_cast<lua_Integer>(i + 1));
    }
    lua_setglobal(lua.L, "arg");
    const char *file = arguments.script == "-" ? nullptr : arguments.script.c_str();
    if (const int loaded = luaL_loadfile(lua.L, file); loaded != LUA_OK) {
        return Complain(loaded == LUA_ERRFILE ? kInputOutput : kUsage, lua_tostring(lua.L, -1));
    }
    if (lua_pcall(lua.L, 0, 1, 0) != LUA_OK) {
        const char *message = lua_tostring(lua.L, -1);
        return Complain(kRefused, message == nullptr ? "the script failed" : message);
    }
    std::fflush(stdout);
    return lua_isinteger(lua.L, -1) != 0 ? static_cast<int>(lua_tointeger(lua.L, -1)) : kFine;
}

} // namespace

std::string LuaTable(const DataTypeDescriptor &type, const std::string &value)
{
    const LuaState lua;
    const uint32_t code = PushTable(lua.L, type, value);
    return code == DT_OK ? Dump(lua.L, lua_gettop(lua.L), 0) : '<' + CodeName(code) + '>';
}

std::function<int()> SetUpLua(CLI::App &command, const Options &)
{
    auto arguments = std::make_shared<Arguments>();
    command.add_option("SCRIPT", arguments->script, "A Lua file; - is standard input")->required();
    command.add_option("WORD", arguments->words, "Words for the script, in arg[1], arg[2], ...");
    return [arguments] { return Run(*arguments); };
}

} // namespace bgpdt
