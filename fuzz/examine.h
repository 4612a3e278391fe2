// What values owe, whatever is in them.
#ifndef BGP_FUZZ_EXAMINE_H
#define BGP_FUZZ_EXAMINE_H

#include "fuzz/calls.h"

namespace bgp::fuzz {

inline constexpr uint8_t kModes[] = {0, 1, 2, 3, 4, 5, 6, 7, 255};

// The first four bytes, zeros behind a shorter value.
uint32_t FirstWord(const Bytes &value);
// What Endian works on: most values whole.
Bytes Swappable(const Trial &trial, Bytes value);
// The table that LuaSet builds, read again into zero bytes. When `same`, both must succeed and nothing may change.
void ReadBack(const Trial &trial, const Bytes &value, bool same);
// A value that FormatIn made prints, passes Check, equals itself, survives Lua and byte order.
void ExamineTyped(const Trial &trial, const Bytes &value);
// Compare keeps what its type promises, for any two values.
void CompareValues(const Trial &trial, const Bytes &left, const Bytes &right);

// The refusal of a text: FormatIn's code, a rule that the type tells of, a place inside the text; of an accepted text
// none.
void ExamineRefusal(const Trial &trial, uint8_t mode, const std::string &text, uint32_t code);

} // namespace bgp::fuzz

#endif
