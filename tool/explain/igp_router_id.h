// IGP router ids of 50 bytes, as BGP-LS carries them, by the protocol ids of RFC 9552.
#ifndef BGP_EXPLAIN_IGP_ROUTER_ID_H
#define BGP_EXPLAIN_IGP_ROUTER_ID_H

#include <cstdint>
#include <string>

namespace bgp::explain {

inline constexpr uint64_t kIsisLevel1 = 1, kIsisLevel2 = 2, kOspfv2 = 3, kOspfv3 = 6, kBgp = 7;

bool IsIsis(uint64_t protocol);
bool IsOspf(uint64_t protocol);

// As people write it: "0000.0000.0001.00" for IS-IS, "10.0.0.1" or "10.0.0.1/10.1.1.1" for OSPF.
std::string IgpRouterIdText(const std::string &id, uint64_t protocol);
// Who it names: of a pseudonode, the router that stands for a network, and which network.
std::string IgpRouterText(const std::string &id, uint64_t protocol);

} // namespace bgp::explain

#endif
