// The notations that route distinguishers (RFC 4364), route targets and sites of origin (RFC 4360, RFC 5668) share: an
// administrator, an AS number or an IPv4 address, then ":" and a number that the administrator assigned.
//
// All of them are stored as eight bytes in network order, the kind in bytes 0-1, and a notation number that remembers
// how the value was typed, so that it prints back that way:
//
//   typed as    administrator             bytes 2 to 7 are fields of   notation
//   a.b.c.d:n   IPv4 address              1 1 1 1 2 bytes              0
//   AS:n        AS number up to 65535     2 4                          1
//   AS:n        AS number from 65536 on   4 2                          2
//   x.y:n       4-byte AS number, halves  2 2 2                        3
//
// What a number may be at most follows from the bytes that it is stored in.
#ifndef BGP_RDRT_NOTATION_H
#define BGP_RDRT_NOTATION_H

#include "host/bytes.h"
#include "host/contract.h"
#include "host/format.h"
#include "host/numbers.h"
#include "host/type.h"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace bgp {

// ------------------------------------------------------------------------------------------------------------ splits

// Network-order numbers among the eight bytes; a width of 0 ends the list.
struct Slice {
    uint8_t offset;
    uint8_t width;
};

inline constexpr uint32_t kMostSlices = 6;

// The number of a slice.
template <uint32_t Width>
using SliceNumber = std::conditional_t<Width == 1, uint8_t, std::conditional_t<Width == 2, uint16_t, uint32_t>>;

struct Split {
    Slice at[kMostSlices];
};

constexpr uint32_t CountSlices(const Split &split)
{
    uint32_t count = 0;
    while (count < kMostSlices && split.at[count].width != 0) {
        ++count;
    }
    return count;
}

inline constexpr Split kIpv4Split{{{2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 2}}};
inline constexpr Split kAs2Split{{{2, 2}, {4, 4}}};
inline constexpr Split kAs4Split{{{2, 4}, {6, 2}}};
inline constexpr Split kDottedSplit{{{2, 2}, {4, 2}, {6, 2}}};

// ----------------------------------------------------------------------------------------------------------- text in

// The rows below stand in the order of the notation numbers, in which they are also tried.
enum Administrator : uint8_t { kByIpv4, kByAs2, kByAs4 };

struct Storage {
    Administrator administrator;
    Split split;
};

inline constexpr uint32_t kSharedCount = 4;
inline constexpr Storage kStorage[kSharedCount] = {
    {kByIpv4, kIpv4Split}, {kByAs2, kAs2Split}, {kByAs4, kAs4Split}, {kByAs4, kDottedSplit}};

struct SharedNotations {
    BgpNotation rows[kSharedCount];
};

consteval SharedNotations LargestAsStored(SharedNotations notations)
{
    for (uint32_t i = 0; i < kSharedCount; ++i) {
        for (uint32_t j = 0; j < kMostNumbers && kStorage[i].split.at[j].width != 0; ++j) {
            notations.rows[i].Largest[j] = UINT64_MAX >> (64 - 8 * kStorage[i].split.at[j].width);
        }
    }
    return notations;
}

// clang-format off
inline constexpr SharedNotations kSharedNotations = LargestAsStored({{
    {.Form = "a.b.c.d:n", .Separators = "...:", .When = nullptr,
     .Names = {"octet 1 of the address", "octet 2 of the address", "octet 3 of the address", "octet 4 of the address",
               "the assigned number"},
     .Smallest = {}, .Largest = {}},
    {.Form = "AS:n", .Separators = ":", .When = "with an AS number up to 65535",
     .Names = {"the AS number", "the assigned number"},
     .Smallest = {}, .Largest = {}},
    {.Form = "AS:n", .Separators = ":", .When = "with an AS number above 65535",
     .Names = {"the AS number", "the assigned number"},
     .Smallest = {UINT16_MAX + 1}, .Largest = {}},
    {.Form = "x.y:n", .Separators = ".:", .When = nullptr,
     .Names = {"the high half of the AS number", "the low half of the AS number", "the assigned number"},
     .Smallest = {}, .Largest = {}},
}});
// clang-format on

inline constexpr NumbersRule kSharedText = NumbersText(1, 21, ".:", kSharedNotations.rows); // "255.255.255.255:65535"

// What tells one type from another.
struct NotationRule {
    uint16_t kinds[3];         // bytes 0-1, by administrator
    bool refusesZero;          // an AS number 0 with the assigned number 0; 0.0.0.0:0 is always welcome
    uint8_t firstNotation = 0; // the number of a.b.c.d:n; the others follow
};

inline constexpr BgpRule kAllZero{"all-numbers-zero", "the numbers may not all be 0", 1};

// What texts break where zero is refused; where it is not, kNumbersRules.
inline constexpr const BgpRule *kSharedRules[] = {
    &kEmpty, &kTooLong, &kBlank, &kNoDigit, &kWrongCharacter, &kTooManyNumbers, &kNoNotation, &kTooLarge, &kAllZero};

// Writes the kind and the six bytes of numbers that some notation takes. Returns the notation's number, kNoFit when
// none takes them or when zero is refused; the bytes may have been written then. `text` is where the numbers stand.
uint32_t Encode(const NotationRule &rule, Text text, const Numbers &numbers, uint8_t *eight, Why *why);

// A text, blanks around it aside, to the eight bytes and, behind them, the notation as a word in host order.
bool ReadShared(const NotationRule &rule, const char *text, void *value, Why *why);

// The reader of one type.
template <const NotationRule &Rule>
bool ReadTyped(const char *text, void *value, Why *why)
{
    return ReadShared(Rule, text, value, why);
}

// ---------------------------------------------------------------------------------------------------------- text out

// In this mode a value that was never set prints as the empty text, and texts are those that would be typed.
inline constexpr uint32_t kPlainMode = 2;

inline constexpr uint32_t kAny = 0xFFFFFFFF;
inline constexpr uint32_t kStyles = 2;

// Writes eight stored bytes, and returns the place behind the last character. There is room for kLongestNotation
// characters.
using NotationWriter = char *(*)(const uint8_t *eight, char *to);

inline constexpr uint32_t kLongestNotation = 64;

template <FormatString F, const Split &S, uint32_t... I>
[[gnu::always_inline]] inline char *WriteSlices(const uint8_t *eight, char *to, std::integer_sequence<uint32_t, I...>)
{
    static_assert(kRoom<F, SliceNumber<S.at[I].width>...> <= kLongestNotation);
    return Write<F>(to, LoadBig<SliceNumber<S.at[I].width>>(eight + S.at[I].offset)...);
}

// The writer of a format, whose numbers are the first of a split.
template <FormatString F, const Split &S>
char *Prints(const uint8_t *eight, char *to)
{
    return WriteSlices<F, S>(eight, to, std::make_integer_sequence<uint32_t, Conversions(F)>());
}

// How values of a kind and notation print. The notation, not the kind, picks the split.
struct PrintRow {
    uint32_t kind;
    uint32_t notation;
    NotationWriter write[kStyles]; // the type says what its styles are; null: nothing is printed, and that is success
};

// The first row that fits is the one.
struct PrintTable {
    const PrintRow *rows;
    uint32_t count;
};

template <uint32_t Count>
constexpr PrintTable Table(const PrintRow (&rows)[Count])
{
    return {rows, Count};
}

struct Stored {
    const uint8_t *eight;
    uint32_t kind;
    uint32_t notation;
};

// Eight bytes with the notation as a host-order word behind them.
inline Stored StoredAt(const uint8_t *value)
{
    return {value, LoadBig(value, 2), Load<uint32_t>(value + 8)};
}

inline bool IsUnset(const uint8_t *eight)
{
    return Load<uint64_t>(eight) == 0;
}

// Prints through the fitting row, at most kPrintLimit - 1 characters. DT_ERR_FAIL when no row fits. Where nothing is to
// be printed the buffer is not touched.
uint32_t PrintStored(const PrintTable &table, const Stored &stored, uint32_t style, char *buffer, uint32_t *printed);

// Eight bytes with the notation behind them, or the empty text for eight zero bytes in kPlainMode.
uint32_t PrintNotation(const PrintTable &table, const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed);

} // namespace bgp

#endif
