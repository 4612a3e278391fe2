// Addresses and prefixes of either family, with what is odd about them.
#ifndef BGP_EXPLAIN_ADDRESS_H
#define BGP_EXPLAIN_ADDRESS_H

#include <cstdint>
#include <string>

namespace bgp::explain {

// In network order: 4 or 16 bytes, none for an unknown family.
using Address = std::string;

Address Ipv4Address(uint32_t word);                         // first octet most significant
Address AddressAt(const std::string &value, size_t offset); // of a 21-byte address field
std::string Ipv4Text(uint32_t word);
std::string AddressText(const Address &address);
bool IsMulticast(const Address &address);
bool IsUnspecified(const Address &address); // all zeros
// "10.1.1.0/24", and behind it what is odd about it: a length that no address has, bits beyond the length.
std::string PrefixText(const Address &address, uint64_t length);
// "10.1.1.1", and behind it what is odd about a length that should be the whole address.
std::string HostText(const Address &address, uint64_t length);

} // namespace bgp::explain

#endif
