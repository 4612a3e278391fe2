# 32-bit ARM, little endian, hard float: where the plug-in lives. Debian's cross compiler, tests under qemu-user, Lua from
# the sysroot folder that scripts/arm-sysroot fills.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
# Notes about how an older compiler passed some structures; nothing here is linked with its code.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)

get_filename_component(BGP_ARM_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/arm-sysroot ABSOLUTE)
set(LUA54_INCLUDE_DIR "${BGP_ARM_SYSROOT}/usr/include/lua5.4;${BGP_ARM_SYSROOT}/usr/include/arm-linux-gnueabihf"
  CACHE PATH "Folders of lua.h")
set(LUA54_LIBRARY ${BGP_ARM_SYSROOT}/usr/lib/arm-linux-gnueabihf/liblua5.4.a CACHE FILEPATH "Lua 5.4, static")
