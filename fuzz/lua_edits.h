// Lua tables, and how an input spoils them: fields gone, of the wrong kind, out of range, nested where none should be.
#ifndef BGP_FUZZ_LUA_EDITS_H
#define BGP_FUZZ_LUA_EDITS_H

#include "bgp_datatypes.h"
#include "fuzz/input.h"

namespace bgp::fuzz {

// A stack whose one table is meant to hold field "v"; cleared by every call. One interpreter a thread.
lua_State *FreshLua();

// Edits field "v" of the table on top of the stack until the input ends: each edit names a field by its place among the
// sorted keys and says what becomes of it, or goes a level down or back to the top. The stack stays as it is.
void EditField(lua_State *L, Input &input);

} // namespace bgp::fuzz

#endif
