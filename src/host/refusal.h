// Why a text is refused. A parser says it at the line that refuses:
//
//     return Refuse(why, piece, kTooLong, 21);
//
// `why` is null when a host only wants the value; then nothing is kept, and the accepting road pays nothing. Rules that
// several types have stand here, a type's own beside its parser; BgpTypeFacts.Rules lists those that a type can break.
#ifndef BGP_HOST_REFUSAL_H
#define BGP_HOST_REFUSAL_H

#include "bgp_datatypes.h"

#include <cstdint>

namespace bgp {

// A piece of a text: not terminated, never written to.
struct Text {
    const char *at;
    uint32_t length;
};

// Where a refusal is written down, and where in the caller's text the parser reads. A parser that works on a copy says
// so by Moved(), so that places are those of the text that was typed.
struct Why {
    BgpReason *reason;
    const char *from; // the text being read ...
    uint32_t offset;  // ... begins so many bytes into the caller's
};

// What a refusal says beside the place.
struct Said {
    const BgpRule *rule;
    const char *what = nullptr;
    uint64_t limit = 0;
    BgpChoices expected = {};
};

[[gnu::cold]] void Note(const Why &why, Text piece, const Said &said);

// Always false. The rule names limit and what ("the assigned number") where its words have them.
inline bool Refuse(Why *why, Text piece, const BgpRule &rule, uint64_t limit = 0, const char *what = nullptr)
{
    if (why != nullptr) [[unlikely]] {
        Note(*why, piece, {.rule = &rule, .what = what, .limit = limit});
    }
    return false;
}

// The same, with the words that may stand at the place.
inline bool RefuseChoice(Why *why, Text piece, const BgpRule &rule, BgpChoices expected, const char *what = nullptr)
{
    if (why != nullptr) [[unlikely]] {
        Note(*why, piece, {.rule = &rule, .what = what, .expected = expected});
    }
    return false;
}

// The words that the rows begin with.
template <class Row, uint32_t Count>
constexpr BgpChoices Choices(const Row (&rows)[Count])
{
    return {rows, Count, sizeof(Row)};
}

// How far into the text a parser got: behind a piece of which only the size is wrong, else up to the piece.
inline uint32_t Reach(const BgpReason &reason)
{
    return reason.Offset + (reason.Rule->FormHolds != 0 ? reason.Length : 0);
}

// From here on the parser reads `copy`, which has the characters of `original`, a piece of what it has read so far.
// Returns where it read before, for who goes on there: *why = kept.
inline Why Moved(Why *why, Text original, const char *copy)
{
    Why kept{};
    if (why != nullptr) {
        kept = *why;
        why->offset += static_cast<uint32_t>(original.at - why->from);
        why->from = copy;
    }
    return kept;
}

inline void GoBack(Why *why, const Why &kept)
{
    if (why != nullptr) {
        *why = kept;
    }
}

// What is refused from here on stands in this part of the text ("MAC/IP advertisement"); of a list, in this item.
inline void StandsIn(Why *why, const char *where)
{
    if (why != nullptr) {
        why->reason->Where = where;
    }
}

inline void StandsInElement(Why *why, uint32_t element)
{
    if (why != nullptr) {
        why->reason->Element = element;
    }
}

// clang-format off
// ------------------------------------------------------------------------------------------------------ of any text
inline constexpr BgpRule kNoTextMode{"mode", "format mode {limit} reads no text", 0};
inline constexpr BgpRule kNotTyped{"not-typed", "values of this type cannot be typed", 0};
inline constexpr BgpRule kHostRefused{"host", "the host, which reads these texts itself, refuses it", 0};
inline constexpr BgpRule kNoMemory{"memory", "the host gives no memory to read {what}", 0};

// ------------------------------------------------------------------------------------------------- of several types
inline constexpr BgpRule kEmpty{"empty", "{what} is empty", 0};
inline constexpr BgpRule kTooShort{"too-short", "{what} has at least {limit} characters", 0};
inline constexpr BgpRule kTooLong{"too-long", "{what} has at most {limit} characters", 0};
inline constexpr BgpRule kBlank{"blank", "no blank may stand inside", 0};
inline constexpr BgpRule kWrongCharacter{"character", "this character does not belong here", 0};
inline constexpr BgpRule kNoDigit{"digit", "a digit is expected here", 0};
inline constexpr BgpRule kNoHexDigit{"hexadecimal", "a hexadecimal digit is expected here", 0};
inline constexpr BgpRule kUpperCase{"upper-case", "hexadecimal digits are lower case here", 0};
inline constexpr BgpRule kTooManyNumbers{"too-many-numbers", "there are at most {limit} numbers", 0};
inline constexpr BgpRule kNoNotation{"notation", "the separators are those of no notation", 0};
inline constexpr BgpRule kTooSmall{"too-small", "{what} is at least {limit}", 1};
inline constexpr BgpRule kTooLarge{"too-large", "{what} is at most {limit}", 1};
inline constexpr BgpRule kTooLargeHex{"too-large-hex", "{what} is at most {hex}", 1};
inline constexpr BgpRule kLeadingZero{"leading-zero", "{what} begins with no zero", 1};
inline constexpr BgpRule kSomethingBehind{"behind", "nothing may follow {what}", 0};
inline constexpr BgpRule kNoIpv4{"ipv4", "{what} is no IPv4 address", 0};
inline constexpr BgpRule kNoIpv6{"ipv6", "{what} is no IPv6 address", 0};
inline constexpr BgpRule kTooManyItems{"too-many-items", "there are at most {limit} items", 0};
// clang-format on

} // namespace bgp

#endif
