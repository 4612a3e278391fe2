// Bytes of stored values, as numbers and as text.
#ifndef BGP_EXPLAIN_BYTES_H
#define BGP_EXPLAIN_BYTES_H

#include <cstdint>
#include <string>
#include <string_view>

namespace bgp::explain {

// `width` bytes at `offset` in the order of the processor, or of the wire; bytes beyond the value read as zero.
uint64_t HostNumber(const std::string &value, size_t offset, size_t width);
uint64_t WireNumber(const std::string &value, size_t offset, size_t width);
std::string Bytes(const std::string &value, size_t offset, size_t count);

// Two lower-case digits a byte.
std::string Hex(std::string_view bytes, std::string_view separator = "");

} // namespace bgp::explain

#endif
