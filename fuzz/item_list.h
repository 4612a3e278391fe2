// Values of the one kind that cannot be arbitrary bytes: lists of typed items, whose lengths have to add up.
#ifndef BGP_FUZZ_ITEM_LIST_H
#define BGP_FUZZ_ITEM_LIST_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bgp::fuzz {

// The bytes of one typed item list, as ATTRIDBITMAP prints it: byte 0 the number of items, then for each its type
// selector, length and data. Every input gives a well-formed list of exactly the bytes that its items need.
std::vector<uint8_t> ItemList(const uint8_t *data, size_t size);

} // namespace bgp::fuzz

#endif
