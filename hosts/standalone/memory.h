// Memory that the host itself puts into a handle: neither counted as an allocation nor as a block of the handle, and
// never failed on purpose.
#ifndef BGP_STANDALONE_MEMORY_H
#define BGP_STANDALONE_MEMORY_H

#include <cstddef>
#include <cstdint>

namespace bgp::standalone::detail {

// Null for an unknown handle or when memory is out.
void *AllocateForHost(uint32_t handle, size_t size);
// Marks such a block free; any other pointer is left alone.
void ReleaseForHost(void *memory);

} // namespace bgp::standalone::detail

#endif
