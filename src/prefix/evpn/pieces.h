// The pieces that EVPN routes are typed in: numbers, lengths, addresses, ESIs, with colons between. A reader takes a
// piece from the cursor and judges it before it looks for the colon behind, so that what is refused is the first thing
// from the left that is wrong; `what` is what people call the piece ("the Ethernet tag").
#ifndef BGP_PREFIX_EVPN_PIECES_H
#define BGP_PREFIX_EVPN_PIECES_H

#include "host/numbers.h"
#include "prefix/evpn/routes.h"

#include <cstdint>

namespace bgp {

// Characters of a piece.
inline constexpr uint32_t kTagChars = 10;
inline constexpr uint32_t kLengthChars = 3;
inline constexpr uint32_t kAnyChars = UINT32_MAX;
inline constexpr uint32_t kMacChars = 14;
inline constexpr uint32_t kEsiChars = 24;
inline constexpr uint32_t kIpv4Chars = 15;
inline constexpr uint32_t kLongestAddress = 49; // of an IPv6 address without its brackets

inline constexpr uint32_t kMostIpv6Length = 128;

// What the pieces are called.
inline constexpr char kTheTag[] = "the Ethernet tag";
inline constexpr char kTheEsi[] = "the ESI";
inline constexpr char kTheMacLength[] = "the MAC length";
inline constexpr char kTheMac[] = "the MAC address";
inline constexpr char kTheIpLength[] = "the IP length";
inline constexpr AddressWords kTheIp{"the IP address", "an octet of the IP address"};
inline constexpr char kThePrefixLength[] = "the prefix length";
inline constexpr AddressWords kThePrefix{"the prefix", "an octet of the prefix"};
inline constexpr char kTheOriginatorLength[] = "the originator length";
inline constexpr AddressWords kTheOriginator{"the originator", "an octet of the originator"};
inline constexpr char kTheSourceLength[] = "the source length";
inline constexpr AddressWords kTheSource{"the source", "an octet of the source"};
inline constexpr char kTheGroupLength[] = "the group length";
inline constexpr AddressWords kTheGroup{"the group", "an octet of the group"};
inline constexpr char kTheLeaveNumber[] = "the number of the leave";

// clang-format off
inline constexpr BgpRule kNoColon{"colon", "a colon is expected behind {what}", 0};
inline constexpr BgpRule kNoOpening{"opening-bracket", "{what} stands in brackets, [ and ]", 0};
inline constexpr BgpRule kNoClosing{"closing-bracket", "the bracket around {what} is not closed", 0};
inline constexpr BgpRule kNothingBehind{"nothing-behind", "something must follow {what}", 0};
inline constexpr BgpRule kColonBehindIpv6{"colon-behind-ipv6", "no colon may follow an IPv6 address that is not the last", 0};
inline constexpr BgpRule kNoMac{"mac", "{what} is no MAC address, xxxx-xxxx-xxxx", 0};
inline constexpr BgpRule kEsiGroup{"esi-group", "a group of an ESI has four hexadecimal digits", 0};
inline constexpr BgpRule kEsiGroups{"esi-groups", "an ESI has {limit} groups", 0};
inline constexpr BgpRule kEsiType{"esi-type", "the ESI type is at most {limit} here", 1};
inline constexpr BgpRule kZeroEsi{"zero-esi", "an all-zero ESI is not accepted here", 1};
inline constexpr BgpRule kReservedEsi{"reserved-esi", "an all-ones ESI is reserved", 1};
// clang-format on

// ------------------------------------------------------------------------------------------------------------- pieces

// What is still to be read of a text; `end` is its terminator.
struct Cursor {
    const char *at;
    const char *end;
};

inline Cursor CursorOn(Text text)
{
    return {text.at, text.at + text.length};
}

inline Cursor CursorOn(const char *text)
{
    return {text, text + std::strlen(text)};
}

inline Text Rest(const Cursor &cursor)
{
    return {cursor.at, static_cast<uint32_t>(cursor.end - cursor.at)};
}

// Up to the next colon, where the cursor stops, or to the end.
inline Text NextPiece(Cursor &cursor)
{
    const char *const start = cursor.at;
    while (cursor.at < cursor.end && *cursor.at != ':') {
        ++cursor.at;
    }
    return {start, static_cast<uint32_t>(cursor.at - start)};
}

inline bool AtColon(const Cursor &cursor)
{
    return cursor.at < cursor.end && *cursor.at == ':';
}

// The cursor stands behind a piece: a colon must follow, over which it moves.
inline bool PassColon(Cursor &cursor, const char *what, Why *why)
{
    if (!AtColon(cursor)) {
        return Refuse(why, {cursor.at, 0}, kNoColon, 0, what);
    }
    ++cursor.at;
    return true;
}

// ------------------------------------------------------------------------------------------------------------ numbers

struct Range {
    uint32_t least;
    uint32_t most;
    const char *what;
};

inline constexpr Range kTagRange{0, UINT32_MAX, kTheTag};

// Says why a piece is no number of `chars` digits at most in the range.
[[gnu::cold]] void NoteDecimal(const Why &why, Text piece, uint32_t chars, const Range &range);

// A whole piece of at most `chars` characters as a decimal number in the range; what a number is, the host says. A
// piece of kAnyChars ends with the text.
inline bool ReadDecimal(Text piece, uint32_t chars, const Range &range, uint32_t &number, Why *why)
{
    char copy[kTagChars + 1];
    uint32_t value = 0;
    const char *const typed = chars == kAnyChars ? piece.at : Terminated(piece, copy, chars + 1);
    if (typed != nullptr && SMP_StrToUint32(typed, &value) == 0 && value >= range.least && value <= range.most) {
        number = value;
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        NoteDecimal(*why, piece, chars, range);
    }
    return false;
}

// A tag to four bytes, a length to one; the cursor moves behind the colon.
bool TakeTag(Cursor &cursor, uint8_t *at, Why *why);
bool TakeLength(Cursor &cursor, const Range &range, uint8_t *at, Why *why);

// The rest of the text as a length of at most 255.
bool ReadLength(const Cursor &cursor, const char *what, uint8_t *at, Why *why);

// ---------------------------------------------------------------------------------------------------------- addresses

// A MAC address to six bytes.
bool ReadMac(Text piece, uint8_t *mac, Why *why);

// "[IPv6]" at the cursor, which moves behind the bracket; 16 bytes.
bool TakeBracketed(Cursor &cursor, uint8_t *address16, const char *what, Why *why);

// "len:[IPv6]" to the end of the text: 16 bytes and a length of at most 128.
bool ReadIpv6Tail(Cursor cursor, uint8_t *address16, uint8_t *length, const char *theLength, const char *what,
                  Why *why);

// "len:IPv4" or "len:[IPv6]" to the end of the text, which is terminated there. The length goes to `at`, the address
// field stands right behind it.
bool ReadLengthAndAddress(Cursor cursor, uint8_t *at, const char *theLength, const AddressWords &words, Why *why);

// ---------------------------------------------------------------------------------------------------------------- ESIs

// Which ESI types are welcome: an ESI begins with "0", then a digit up to this one.
enum EsiTypes : char {
    kEsiArbitrary = '0',  // type 0, configured by the operator
    kEsiLacp = '1',       // ... or type 1, generated from LACP
    kEsiAsBased = '5',    // types 0 to 5: all that are defined
    kEsiAnyType = '\x7f', // not checked
};

// The check mode of the exported parsers: a text that an operator types may have any ESI type, one from a script is
// checked (EsiTypeCheck).
inline constexpr uint32_t kAnyEsiType = 1;
inline constexpr uint32_t kEsiTypeCheck = 0;

constexpr EsiTypes TypesFor(uint32_t checkMode, EsiTypes checked)
{
    return checkMode == kAnyEsiType ? kEsiAnyType : checked;
}

// A piece of 24 characters to 10 bytes, which are written only when all of it is good.
bool ReadEsi(Text piece, EsiTypes types, uint8_t *esi);

// Says why it is none, and why one that is zero is not welcome.
[[gnu::cold]] void NoteEsi(const Why &why, Text piece, EsiTypes types);

// The same with a reason.
inline bool ReadEsi(Text piece, EsiTypes types, uint8_t *esi, Why *why)
{
    if (ReadEsi(piece, types, esi)) {
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        NoteEsi(*why, piece, types);
    }
    return false;
}

} // namespace bgp

#endif
