// The floors, and their second form: the same conversion that takes the memory of a result from the host, and hands its
// text over through the host, as the plug-in has to.
#ifndef BGP_BENCH_FLOORS_H
#define BGP_BENCH_FLOORS_H

#include "bench.h"
#include "bgp_host_services.h"

#include <cstring>

namespace bgp::bench {

template <In Read, size_t Length, bool Plain>
void *ReadForHost(uint32_t handle, const char *text)
{
    uint8_t value[Length];
    if (!Read(text, value)) {
        return nullptr;
    }
    void *memory = Plain ? SYS_DataTypeMalloc(Length) : SYS_DataTypeMallocByHandle(handle, Length);
    if (memory != nullptr) {
        std::memcpy(memory, value, Length);
    }
    return memory;
}

template <Out Print>
int PrintForHost(const uint8_t *value, char *buffer)
{
    char text[kMostText];
    return Print(value, text) < 0 ? -1 : snprintf_truncated_s(buffer, kMostText, "%s", text);
}

// `kindBytes`: a value of the type is one of the floor's when so many of its first bytes are as the floor makes them.
// Plain: results are SYS_DataTypeMalloc()'s.
template <In Read, Out Print, size_t Length, bool Plain = false>
constexpr Floor MakeFloor(uint16_t kindBytes)
{
    return {Read, Print, ReadForHost<Read, Length, Plain>, PrintForHost<Print>, Length, kindBytes};
}

extern const Floor kAsNumberFloor;
extern const Floor kCommunityFloor;
extern const Floor kLargeCommunityFloor;
extern const Floor kDistinguisherFloor;
extern const Floor kTargetFloor;
extern const Floor kIpv4KeyFloor;
extern const Floor kIpv6KeyFloor;
extern const Floor kMacIpFloor;
extern const Floor kLsNodeFloor;

} // namespace bgp::bench

#endif
