// Layouts as types write them down: one row a field. The same rows drive Lua, byte order and the explanations of tools.
#ifndef BGP_HOST_LAYOUT_H
#define BGP_HOST_LAYOUT_H

#include "bgp_datatypes.h"

#include <cstdint>

namespace bgp {

// A host-order integer. keeps: how many of its low bytes LuaGet takes over from a script's number, 0 for all.
constexpr BgpField Number(const char *name, uint16_t offset, uint8_t width, uint8_t keeps = 0)
{
    return {name, offset, width, 1, BGP_FIELD_NUMBER, keeps, 0};
}

// An IPv4 address as a host-order word.
constexpr BgpField Ipv4Word(const char *name, uint16_t offset, uint8_t keeps = 0)
{
    return {name, offset, 4, 1, BGP_FIELD_IPV4, keeps, 0};
}

// A single byte that scripts see as a number, and byte order leaves alone.
constexpr BgpField Byte(const char *name, uint16_t offset)
{
    return {name, offset, 1, 1, BGP_FIELD_BYTES, 0, 0};
}

// Bytes in network order, an array to scripts. pops: by default the elements and the array itself.
constexpr BgpField ByteArray(const char *name, uint16_t offset, uint8_t count, uint8_t pops)
{
    return {name, offset, 1, count, BGP_FIELD_BYTES, 0, pops};
}

constexpr BgpField ByteArray(const char *name, uint16_t offset, uint8_t count)
{
    return ByteArray(name, offset, count, static_cast<uint8_t>(count + 1));
}

// Host-order integers, an array to scripts.
constexpr BgpField NumberArray(const char *name, uint16_t offset, uint8_t width, uint8_t count)
{
    return {name, offset, width, count, BGP_FIELD_NUMBER, 0, static_cast<uint8_t>(count + 1)};
}

template <uint32_t Count>
constexpr BgpLayout Layout(const BgpField (&fields)[Count], uint32_t length)
{
    return {fields, Count, length};
}

} // namespace bgp

#endif
