// What calls are made of: texts, values, modes, lengths, drawn from a seed.
#ifndef BGP_FUZZ_COMPARE_DRAW_H
#define BGP_FUZZ_COMPARE_DRAW_H

#include "fuzz/compare/material.h"

#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace bgp::compare {

// The draws for one call: the same number and seed draw the same.
struct Draw {
    const Material &material;
    std::minstd_rand random;
};

Draw DrawFor(const Material &material, uint64_t seed, uint64_t number);

size_t Below(Draw &draw, size_t limit);
bool OneIn(Draw &draw, size_t count);

template <class Items>
const auto &Any(Draw &draw, const Items &items)
{
    return items[Below(draw, std::size(items))];
}

inline constexpr size_t kNone = SIZE_MAX;

// Which of so many pointers is null; seldom any.
size_t DrawMissing(Draw &draw, size_t pointers);
uint8_t DrawMode(Draw &draw);
uint16_t DrawTypeId(Draw &draw, uint16_t usual);
// A piece of a text that begins and ends where words do.
std::string DrawPiece(Draw &draw, const std::string &text);
// The subject's or another's text, kept or changed, or noise. It holds no NUL.
std::string DrawText(Draw &draw, const Subject &subject);
// The subject's or another's value, kept or changed, or arbitrary bytes.
Bytes DrawValue(Draw &draw, const Subject &subject);
// The same in the form that FormatOut takes.
Bytes DrawPrintable(Draw &draw, const Subject &subject);
// A second value: the same, one that differs in a byte, or another.
Bytes DrawOther(Draw &draw, const Subject &subject, const Bytes &value);
// Mostly the size; else another that is at most kRoom.
uint32_t DrawLength(Draw &draw, const Subject &subject, size_t size);
Bytes DrawBytes(Draw &draw, size_t count);

} // namespace bgp::compare

#endif
