// The pieces that the text of a BGP-LS key is put together from. Each is made from a field's bytes into a buffer of its
// own, terminated, and empty when there is nothing to show.
#ifndef BGP_BGPLS_PIECES_H
#define BGP_BGPLS_PIECES_H

#include "bgpls/record.h"
#include "host/bytes.h"
#include "host/format.h"
#include "host/text.h"

namespace bgp {

inline constexpr uint32_t kSmallPiece = 32;    // an AS number, a dotted address
inline constexpr uint32_t kIdPiece = 48;       // "[bgp-ls-identifier255.255.255.255]"
inline constexpr uint32_t kNodePiece = 50;     // an IGP router id (at most 49 raw bytes), a member AS
inline constexpr uint32_t kAddressPiece = 256; // an address of either family

// The keywords of NLRI types and protocols, "" for numbers that have none. Nor has RSVP-TE (8), whose keyword no key
// carries.
const char *LsTypeName(uint32_t nlriType);
const char *LsProtocolName(uint32_t protocolId);

// "1.2.3.4"
struct Dotted {
    explicit Dotted(uint32_t address) { QOV_IpAddrToStr(address, text); }
    explicit Dotted(const uint8_t *at) : Dotted(Load<uint32_t>(at)) {}
    char text[kSmallPiece] = {};
};

struct Ipv6Piece {
    explicit Ipv6Piece(const uint8_t *at)
    {
        text[0] = '\0';
        inet_ntop6(at, text, sizeof text);
    }
    char text[kAddressPiece];
};

// The raw bytes up to the first zero byte.
void IgpRouterIdToStr(const uint8_t *area, char (&text)[kNodePiece]);

// "[mt-id2]", or nothing without a multi-topology id.
struct MtPiece {
    explicit MtPiece(uint32_t mtId)
    {
        GrowingText piece = GrowIn(text, sizeof text);
        if (mtId != kLsNoMtId) {
            Put<"[mt-id%u]">(piece, mtId);
        }
        *piece.at = '\0';
    }
    char text[kSmallPiece];
};

} // namespace bgp

#endif
