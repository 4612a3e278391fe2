// Lua values as text, always the same for the same value: "{asNumValue=1, asType=0}", "{RdType=1,
// RdValue={0,0,0,100}}".
#ifndef BGP_TESTS_LUA_DUMP_H
#define BGP_TESTS_LUA_DUMP_H

#include "bgp_datatypes.h"

#include <string>

namespace bgp::test {

// Of the value at that index, counted from the bottom. Tables: keys of the record part sorted, then the elements from 1
// on up to the first that is missing. Strings stand in quotes, with \xNN for bytes outside 0x20..0x7e; of what is
// neither table, string nor number only the kind is told. A key that is no string stands in brackets.
std::string DumpLua(lua_State *L, int index);

} // namespace bgp::test

#endif
