// Values as Lua tables, and the Lua that scripts see.
#ifndef BGPDT_SCRIPT_H
#define BGPDT_SCRIPT_H

#include "bgp_datatypes.h"

#include <string>

namespace bgpdt {

// The table that LuaSet makes of a value, written as Lua writes it; the code's name in angle brackets when it fails.
std::string LuaTable(const DataTypeDescriptor &type, const std::string &value);

} // namespace bgpdt

#endif
