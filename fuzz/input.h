// The bytes of one input, taken from the front. What is missing reads as zero.
#ifndef BGP_FUZZ_INPUT_H
#define BGP_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace bgp::fuzz {

struct Input {
    const uint8_t *at;
    size_t left;

    uint8_t Byte() { return static_cast<uint8_t>(Number(1)); }

    // Little endian, up to 8 bytes.
    uint64_t Number(size_t width)
    {
        uint64_t number = 0;
        for (size_t i = 0; i < width && left != 0; ++i, ++at, --left) {
            number |= uint64_t{*at} << (8 * i);
        }
        return number;
    }

    // Up to `most` bytes.
    std::string Take(size_t most)
    {
        const size_t count = std::min(most, left);
        std::string bytes(count, '\0');
        std::copy_n(at, count, bytes.begin());
        at += count;
        left -= count;
        return bytes;
    }

    std::string Rest() { return Take(left); }
};

} // namespace bgp::fuzz

#endif
