// Changes of an input: some that keep the shape of its text, and some that keep nothing.
#ifndef BGP_FUZZ_TEXT_CHANGES_H
#define BGP_FUZZ_TEXT_CHANGES_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace bgp::fuzz {

// Changes the text that begins at byte `textAt` of the input in one place: numbers become limits, words, bracketed
// groups and separators trade places. Bytes changed at random seldom get past the first separator.
void ChangeText(std::vector<uint8_t> &input, size_t textAt, std::minstd_rand &random);

// Changes bytes in one place, whatever they are: others stand there, some go, one of the words or a run of one byte
// comes in.
void ChangeBytes(std::vector<uint8_t> &input, const std::vector<std::string> &words, std::minstd_rand &random);

// The words of a fuzzers' dictionary: what stands between the quotes, \xNN read. None when there is no such file.
std::vector<std::string> DictionaryWords(const std::string &path);

} // namespace bgp::fuzz

#endif
