// The pieces that the text of a BGP-LS key is put together from, and the text that grows out of them. Each piece is
// made from a field's bytes into a buffer of its own, terminated, and empty when there is nothing to show.
#ifndef BGP_BGPLS_PIECES_H
#define BGP_BGPLS_PIECES_H

#include "bgpls/record.h"
#include "host/bytes.h"
#include "host/text.h"

namespace bgp {

inline constexpr uint32_t kSmallPiece = 32;    // an AS number, a dotted address
inline constexpr uint32_t kIdPiece = 48;       // "[bgp-ls-identifier255.255.255.255]"
inline constexpr uint32_t kNodePiece = 50;     // an IGP router id (at most 49 raw bytes), a member AS
inline constexpr uint32_t kAddressPiece = 256; // an address of either family

// The keywords of NLRI types and protocols, "" for numbers that have none. RSVP-TE (8) has a keyword that is never
// used.
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

// The text so far: sections are appended at its end, and all of them together stay below the limit.
struct Output {
    char *buffer;
    uint32_t limit;
    uint32_t *printed;
};

// A section. DT_ERR_FAIL when there is no room left or the host's formatter refuses.
uint32_t Append(const Output &output, const char *format, const Argument *arguments);

// A section with and without its multi-topology id, which is the first or the last argument.
struct MtFormats {
    const char *with;
    const char *without;
    uint32_t skip; // arguments that only `with` has, at the front
};

uint32_t AppendMt(const Output &output, const MtFormats &formats, uint32_t mtId, const Argument *arguments);

} // namespace bgp

#endif
