// Interpreters for the embedding program.
#include "bgp_standalone_host.h"

extern "C" {
#include <lauxlib.h>
#include <lualib.h>
}

lua_State *BgpHost_NewLua()
{
    lua_State *L = luaL_newstate();
    if (L != nullptr) {
        luaL_openlibs(L);
    }
    return L;
}

void BgpHost_CloseLua(lua_State *L)
{
    if (L != nullptr) {
        lua_close(L);
    }
}
