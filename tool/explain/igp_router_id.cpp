#include "igp_router_id.h"

#include "address.h"
#include "bytes.h"

#include <cstdio>

namespace bgp::explain {

namespace {

std::string SystemIdText(const std::string &id)
{
    char text[16];
    std::snprintf(text, sizeof text, "%04x.%04x.%04x", static_cast<unsigned>(WireNumber(id, 0, 2)),
                  static_cast<unsigned>(WireNumber(id, 2, 2)), static_cast<unsigned>(WireNumber(id, 4, 2)));
    return text;
}

// IS-IS: system id (6 bytes) and pseudonode (1).
uint64_t Pseudonode(const std::string &id)
{
    return WireNumber(id, 6, 1);
}

// OSPF: router id (4 bytes) and a second address (4), zero when there is none.
uint32_t Router(const std::string &id)
{
    return static_cast<uint32_t>(WireNumber(id, 0, 4));
}

uint32_t Second(const std::string &id)
{
    return static_cast<uint32_t>(WireNumber(id, 4, 4));
}

std::string WithoutZerosBehind(const std::string &id)
{
    return id.substr(0, id.find_last_not_of('\0') + 1);
}

} // namespace

bool IsIsis(uint64_t protocol)
{
    return protocol == kIsisLevel1 || protocol == kIsisLevel2;
}

bool IsOspf(uint64_t protocol)
{
    return protocol == kOspfv2 || protocol == kOspfv3;
}

std::string IgpRouterIdText(const std::string &id, uint64_t protocol)
{
    if (IsUnspecified(id)) {
        return "none";
    }
    if (IsIsis(protocol)) {
        return SystemIdText(id) + '.' + Hex(id.substr(6, 1));
    }
    if (IsOspf(protocol)) {
        return Ipv4Text(Router(id)) + (Second(id) == 0 ? "" : '/' + Ipv4Text(Second(id)));
    }
    return Hex(WithoutZerosBehind(id));
}

std::string IgpRouterText(const std::string &id, uint64_t protocol)
{
    if (IsUnspecified(id)) {
        return "no IGP router id";
    }
    const std::string text = "IGP router id " + IgpRouterIdText(id, protocol);
    if (IsIsis(protocol)) {
        const uint64_t pseudonode = Pseudonode(id);
        return text + (pseudonode == 0 ? " (system " + SystemIdText(id) + ")"
                                       : " (pseudonode " + std::to_string(pseudonode) + " of a LAN, made by system " +
                                             SystemIdText(id) + ")");
    }
    if (!IsOspf(protocol)) {
        return text;
    }
    if (Second(id) == 0) {
        return text + " (router)";
    }
    const std::string interface = protocol == kOspfv2 ? Ipv4Text(Second(id)) : std::to_string(Second(id));
    return text + " (pseudonode: designated router " + Ipv4Text(Router(id)) + ", its interface " + interface + ")";
}

} // namespace bgp::explain
