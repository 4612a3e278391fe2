// The names of objects, by type id and index: what a router's own tables of VRFs, peer groups and so on would answer.
#ifndef BGP_STANDALONE_OBJECT_NAMES_H
#define BGP_STANDALONE_OBJECT_NAMES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bgp::standalone::detail {

std::optional<uint32_t> FindObject(uint32_t typeId, std::string_view name);
std::optional<std::string> NameOfObject(uint32_t typeId, uint32_t index);

} // namespace bgp::standalone::detail

#endif
