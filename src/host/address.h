// Addresses as texts. What an address is, the host's services decide; here is told why one that they refused is none:
// by the standard form, from left to right. A text without a dot, or without a colon, is none as a whole.
#ifndef BGP_HOST_ADDRESS_H
#define BGP_HOST_ADDRESS_H

#include "host/text.h"

#include <cstdint>

namespace bgp {

// What reasons call an IPv4 address, and one of its octets: {"the peer", "an octet of the peer"}.
struct AddressWords {
    const char *address;
    const char *octet;
};

inline constexpr AddressWords kWholeText{nullptr, "an octet"}; // a text that is an address alone

[[gnu::cold]] void NoteIpv4(Why &why, Text address, const AddressWords &words);
[[gnu::cold]] void NoteIpv6(Why &why, Text address, const char *what);

// A piece of a terminated text for the host's services, which want one that ends: the piece itself where the text ends
// with it, else a copy. Null for a piece of `size` characters or more.
inline const char *Terminated(Text piece, char *copy, uint32_t size)
{
    if (piece.length >= size || piece.at[piece.length] == '\0') {
        return piece.length < size ? piece.at : nullptr;
    }
    Terminate(piece, copy, size);
    return copy;
}

// Always false: the address is empty, holds a blank, an octet that is too large or begins with a zero, or is none from
// the place on that is told.
inline bool RefuseIpv4(Why *why, Text address, const AddressWords &words)
{
    if (why != nullptr) [[unlikely]] {
        NoteIpv4(*why, address, words);
    }
    return false;
}

// Always false: the address is empty, holds a blank, or is none from the place on that is told.
inline bool RefuseIpv6(Why *why, Text address, const char *what)
{
    if (why != nullptr) [[unlikely]] {
        NoteIpv6(*why, address, what);
    }
    return false;
}

} // namespace bgp

#endif
