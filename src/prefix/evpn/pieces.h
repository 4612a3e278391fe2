// The pieces that EVPN routes are typed in: numbers, lengths, addresses, ESIs, with colons between. Every reader works
// on a terminated text, moves its cursor over what it takes, and says in `why` what stands at fault; `what` is what
// people call the piece ("the Ethernet tag").
#ifndef BGP_PREFIX_EVPN_PIECES_H
#define BGP_PREFIX_EVPN_PIECES_H

#include "host/text.h"
#include "prefix/evpn/routes.h"

#include <cstdint>

namespace bgp {

// Characters of a piece.
inline constexpr uint32_t kTagChars = 10;
inline constexpr uint32_t kLengthChars = 3;
inline constexpr uint32_t kMacChars = 14;
inline constexpr uint32_t kEsiChars = 24;
inline constexpr uint32_t kLongestAddress = 49; // of an IPv6 address without its brackets

inline constexpr uint32_t kMostIpv6Length = 128;

// What the pieces are called.
inline constexpr char kTheTag[] = "the Ethernet tag";
inline constexpr char kTheEsi[] = "the ESI";
inline constexpr char kTheMacLength[] = "the MAC length";
inline constexpr char kTheMac[] = "the MAC address";
inline constexpr char kTheIpLength[] = "the IP length";
inline constexpr char kTheIp[] = "the IP address";
inline constexpr char kThePrefixLength[] = "the prefix length";
inline constexpr char kThePrefix[] = "the prefix";
inline constexpr char kTheOriginatorLength[] = "the originator length";
inline constexpr char kTheOriginator[] = "the originator";
inline constexpr char kTheSourceLength[] = "the source length";
inline constexpr char kTheSource[] = "the source";
inline constexpr char kTheGroupLength[] = "the group length";
inline constexpr char kTheGroup[] = "the group";
inline constexpr char kTheLeaveNumber[] = "the number of the leave";

// clang-format off
inline constexpr BgpRule kNoColon{"colon", "a colon is expected behind {what}", 0};
inline constexpr BgpRule kNoOpening{"opening-bracket", "{what} stands in brackets, [ and ]", 0};
inline constexpr BgpRule kNoClosing{"closing-bracket", "the bracket around {what} is not closed", 0};
inline constexpr BgpRule kNothingBehind{"nothing-behind", "something must follow {what}", 0};
inline constexpr BgpRule kColonBehindIpv6{"colon-behind-ipv6", "no colon may follow an IPv6 address that is not the last", 0};
inline constexpr BgpRule kNoMac{"mac", "{what} is no MAC address, xxxx-xxxx-xxxx", 0};
inline constexpr BgpRule kWrongLength{"length", "{what} has {limit} characters", 0};
inline constexpr BgpRule kEsiGroup{"esi-group", "a group of an ESI has one to four hexadecimal digits", 0};
inline constexpr BgpRule kEsiGroups{"esi-groups", "an ESI has {limit} groups", 0};
inline constexpr BgpRule kEsiType{"esi-type", "the ESI type is at most {limit} here", 1};
inline constexpr BgpRule kZeroEsi{"zero-esi", "an all-zero ESI is not accepted here", 1};
inline constexpr BgpRule kReservedEsi{"reserved-esi", "an all-ones ESI is reserved", 1};
// clang-format on

// ------------------------------------------------------------------------------------------------------------ numbers

// A whole piece, which has a terminated copy, as a decimal number from `least` to `most`.
struct Range {
    uint32_t least;
    uint32_t most;
    const char *what;
};

bool ReadDecimal(const char *copy, Text piece, const Range &range, uint32_t &number, Why *why);

// The piece of 1 to `most` characters before the next colon, also copied and terminated; the cursor moves behind the
// colon.
bool TakePiece(const char *&cursor, char *copy, uint32_t most, Text &piece, const char *what, Why *why);

// A tag to four bytes, a length of at most `most` to one; the cursor moves behind the colon.
bool TakeTag(const char *&cursor, uint8_t *at, Why *why);
bool TakeLength(const char *&cursor, const Range &range, uint8_t *at, Why *why);

// The rest of the text as a length of at most 255.
bool ReadLength(const char *text, const char *what, uint8_t *at, Why *why);

// ---------------------------------------------------------------------------------------------------------- addresses

// An IPv4 address, which has a terminated copy, into an address field.
bool ReadIpv4Piece(const char *copy, Text piece, uint8_t *field, const char *what, Why *why);

// "[IPv6]" at the cursor, which moves behind the bracket; 16 bytes.
bool TakeBracketed(const char *&cursor, uint8_t *address16, const char *what, Why *why);

// "len:[IPv6]" to the end of the text: 16 bytes and a length of at most 128.
bool ReadIpv6Tail(const char *text, uint8_t *address16, uint8_t *length, const char *theLength, const char *what,
                  Why *why);

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

// A terminated text of 24 characters to 10 bytes, which are written only when all of it is good.
bool ReadEsi(const char *text, EsiTypes types, uint8_t *esi, Why *why);

// The same for a piece of a longer text.
bool ReadEsiPiece(Text piece, EsiTypes types, uint8_t *esi, Why *why);

} // namespace bgp

#endif
