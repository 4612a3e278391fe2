// The fields of the NG-MVPN keys, once per sub-type: the parser, the printer, the Lua operations and the layouts that
// tools read all walk these rows.
#ifndef BGP_PREFIX_NG_MVPN_H
#define BGP_PREFIX_NG_MVPN_H

#include "bgp_datatypes/ng_mvpn.h"
#include "host/layout.h"

#include <cstdint>

namespace bgp {

// Lua names of a field: of what it holds, and of its notation (AS number) or family (address).
struct NgField {
    uint8_t kind; // BGP_FIELD_AS or BGP_FIELD_ADDRESS
    uint8_t at;   // in the value
    const char *name;
    const char *typeName;
};

// Compared by address, so that neighbours of one name share one table entry.
inline constexpr char kOriginatorFamily[] = "bolNgOriIpType";

constexpr NgField NgAs(uint8_t at)
{
    return {BGP_FIELD_AS, at, "bolNgAsNumValue", "bolNgAsNumType"};
}

constexpr NgField NgSource(uint8_t at)
{
    return {BGP_FIELD_ADDRESS, at, "bolNgPrefixCS", "bolNgCSIpType"};
}

constexpr NgField NgGroup(uint8_t at)
{
    return {BGP_FIELD_ADDRESS, at, "bolNgPrefixCG", "bolNgCGIpType"};
}

constexpr NgField NgOriginator(uint8_t at, const char *name)
{
    return {BGP_FIELD_ADDRESS, at, name, kOriginatorFamily};
}

// Which text an address prints as.
enum class NgFamily : uint8_t {
    kNone,    // there is no address
    kOfFirst, // all as the first address' family says; none at all for an unknown family
    kOfEach   // IPv6 joined by "-" when all are IPv6; else joined by ":", each as its own family says
};

struct NgKey {
    uint8_t subType;
    uint8_t count;
    NgField fields[4];       // in the order of the text
    const char *readerOrder; // in which the reader visits them, as digits
    uint8_t readerPops;
    NgFamily family;
};

// clang-format off
inline constexpr NgKey kNgPlain{0,  1, {NgSource(4)}, "0", 0, NgFamily::kNone}; // typed here, printed by the IPV4 row
inline constexpr NgKey kNg2{    2,  1, {NgAs(4)}, "0", 3, NgFamily::kNone};
inline constexpr NgKey kNg3{    3,  3, {NgSource(4), NgGroup(25), NgOriginator(46, "bolNgPrefixOriIP")},
                                "201", 4, NgFamily::kOfFirst};
inline constexpr NgKey kNg42{   4,  2, {NgAs(4), NgOriginator(12, "bolNgPrefixOriIP")}, "10", 4, NgFamily::kOfFirst};
inline constexpr NgKey kNg43{   5,  4, {NgSource(4), NgGroup(25), NgOriginator(46, "bolNgPrefixOriIP1"),
                                        NgOriginator(67, "bolNgPrefixOriIP2")}, "3201", 5, NgFamily::kOfFirst};
inline constexpr NgKey kNg5{    6,  2, {NgSource(4), NgGroup(25)}, "01", 3, NgFamily::kOfEach};
inline constexpr NgKey kNg6{    7,  3, {NgAs(4), NgSource(12), NgGroup(33)}, "120", 5, NgFamily::kOfEach};
inline constexpr NgKey kNg41{  13,  2, {NgOriginator(4, "bolNgPrefixOriIP1"), NgOriginator(25, "bolNgPrefixOriIP2")},
                                "10", 3, NgFamily::kOfEach};
// clang-format on

inline constexpr const NgKey *kNgKeys[] = {&kNgPlain, &kNg2, &kNg3, &kNg42, &kNg43, &kNg5, &kNg6, &kNg41};

// Null for any other sub-type.
inline const NgKey *FindNgKey(uint32_t subType)
{
    for (const NgKey *key : kNgKeys) {
        if (key->subType == subType) {
            return key;
        }
    }
    return nullptr;
}

} // namespace bgp

#endif
