// Fields of stored values. Values have no alignment, so every multi-byte field is read and written bytewise.
#ifndef BGP_HOST_BYTES_H
#define BGP_HOST_BYTES_H

#include <cstdint>
#include <cstring>

namespace bgp {

// Host order.
template <class Integer>
inline Integer Load(const void *at)
{
    Integer value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

template <class Integer>
inline void Store(void *at, Integer value)
{
    std::memcpy(at, &value, sizeof value);
}

// The low `width` bytes (1 to 8) of a number in host order, low end first on the little-endian targets; and back.
inline void StoreLow(uint8_t *at, uint64_t value, uint32_t width)
{
    for (uint32_t i = 0; i < width; ++i, value >>= 8) {
        at[i] = static_cast<uint8_t>(value);
    }
}

inline uint64_t LoadLow(const uint8_t *at, uint32_t width)
{
    uint64_t value = 0;
    while (width-- > 0) {
        value = value << 8 | at[width];
    }
    return value;
}

// Network order, `width` bytes (1 to 8).
inline void StoreBig(uint8_t *at, uint64_t value, uint32_t width)
{
    while (width-- > 0) {
        at[width] = static_cast<uint8_t>(value);
        value >>= 8;
    }
}

inline uint32_t LoadBig(const uint8_t *at, uint32_t width)
{
    uint32_t value = 0;
    for (uint32_t i = 0; i < width; ++i) {
        value = value << 8 | at[i];
    }
    return value;
}

template <class Integer>
inline Integer LoadBig(const void *at)
{
    const auto value = Load<Integer>(at);
    if constexpr (sizeof value == 2) {
        return __builtin_bswap16(value);
    } else if constexpr (sizeof value == 4) {
        return __builtin_bswap32(value);
    } else {
        static_assert(sizeof value == 1);
        return value;
    }
}

template <class Integer>
inline void StoreBig(void *at, Integer value)
{
    Store(at, LoadBig<Integer>(&value)); // the same swap
}

// The halves of a word, as dotted AS numbers and communities are typed.
inline uint16_t HighHalf(uint32_t word)
{
    return static_cast<uint16_t>(word >> 16);
}

inline uint16_t LowHalf(uint32_t word)
{
    return static_cast<uint16_t>(word);
}

// The octets of an IPv4 address, the first in the high byte.
template <uint32_t Index>
inline uint8_t OctetOf(uint32_t address)
{
    return static_cast<uint8_t>(address >> (24 - 8 * Index));
}

// Host order to network order and back, in place.
inline void Reverse(void *at, uint32_t width)
{
    auto *bytes = static_cast<uint8_t *>(at);
    for (uint32_t low = 0, high = width; low + 1 < high; ++low) {
        --high;
        const uint8_t kept = bytes[low];
        bytes[low] = bytes[high];
        bytes[high] = kept;
    }
}

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "LoadLow and StoreLow are host order on little endian only");

} // namespace bgp

#endif
