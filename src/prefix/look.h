// One look at a text, for those who offer it to several readers: which separators it has, and how many of each, tells
// some of them that they will refuse it. Only what a reader refuses whatever the host says may be judged by a look, so
// a text with a character of another kind, which may be a host's blank, is judged by nobody.
#ifndef BGP_PREFIX_LOOK_H
#define BGP_PREFIX_LOOK_H

#include <algorithm>
#include <cstdint>

namespace bgp {

// Kinds of characters that are counted; decimal digits are not.
enum LookKind : uint32_t { kDots, kColons, kDashes, kSlashes, kBrackets, kHexLetters, kOthers, kLookKinds };

// A count each, a byte wide: that of dots in the low byte.
using Look = uint64_t;

constexpr Look OneOf(LookKind kind)
{
    return Look{1} << (8 * kind);
}

struct LookTable {
    Look at[256];
};

consteval LookTable MakeLookTable()
{
    LookTable table{};
    std::fill(table.at, table.at + 256, OneOf(kOthers));
    std::fill(table.at + '0', table.at + '9' + 1, Look{0});
    std::fill(table.at + 'a', table.at + 'f' + 1, OneOf(kHexLetters));
    std::fill(table.at + 'A', table.at + 'F' + 1, OneOf(kHexLetters));
    const auto at = [&table](char character) -> Look & { return table.at[static_cast<uint8_t>(character)]; };
    at('.') = OneOf(kDots);
    at(':') = OneOf(kColons);
    at('-') = OneOf(kDashes);
    at('/') = OneOf(kSlashes);
    at('[') = at(']') = OneOf(kBrackets);
    return table;
}

// A text of more characters than a count can hold counts as one of other kinds.
inline Look LookAt(const char *text)
{
    static constexpr LookTable kTable = MakeLookTable();
    Look look = 0;
    for (uint32_t i = 0; i < UINT8_MAX; ++i) {
        if (text[i] == '\0') {
            return look;
        }
        look += kTable.at[static_cast<uint8_t>(text[i])];
    }
    return OneOf(kOthers);
}

constexpr uint32_t CountIn(Look look, LookKind kind)
{
    return look >> (8 * kind) & UINT8_MAX;
}

} // namespace bgp

#endif
