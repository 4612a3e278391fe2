// Changes of a text that keep its shape: numbers become limits, words, bracketed groups and separators trade places.
// Bytes changed at random seldom get past the first separator.
#ifndef BGP_FUZZ_TEXT_CHANGES_H
#define BGP_FUZZ_TEXT_CHANGES_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace bgp::fuzz {

// Changes the text that begins at byte `textAt` of the input in one place.
void ChangeText(std::vector<uint8_t> &input, size_t textAt, std::minstd_rand &random);

} // namespace bgp::fuzz

#endif
