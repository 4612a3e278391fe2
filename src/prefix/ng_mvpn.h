// The fields of the NG-MVPN keys, once per sub-type: the parser, the printer, the Lua operations and the layouts that
// tools read all walk these rows.
#ifndef BGP_PREFIX_NG_MVPN_H
#define BGP_PREFIX_NG_MVPN_H

#include "bgp_datatypes/ng_mvpn.h"
#include "host/address.h"
#include "host/layout.h"

#include <cstdint>

namespace bgp {

// A field: its Lua names, of what it holds and of its notation (AS number) or family (address), and what people call
// it.
struct NgField {
    uint8_t kind; // BGP_FIELD_AS or BGP_FIELD_ADDRESS
    uint8_t at;   // in the value
    const char *name;
    const char *typeName;
    AddressWords words; // of an AS number the first
};

// Compared by address, so that neighbours of one name share one table entry.
inline constexpr char kOriginatorFamily[] = "bolNgOriIpType";

constexpr NgField NgAs(uint8_t at)
{
    return {BGP_FIELD_AS, at, "bolNgAsNumValue", "bolNgAsNumType", {"the AS number", nullptr}};
}

constexpr NgField NgSource(uint8_t at, AddressWords words = {"the source", "an octet of the source"})
{
    return {BGP_FIELD_ADDRESS, at, "bolNgPrefixCS", "bolNgCSIpType", words};
}

constexpr NgField NgGroup(uint8_t at)
{
    return {BGP_FIELD_ADDRESS, at, "bolNgPrefixCG", "bolNgCGIpType", {"the group", "an octet of the group"}};
}

constexpr NgField NgOriginator(uint8_t at)
{
    return {
        BGP_FIELD_ADDRESS, at, "bolNgPrefixOriIP", kOriginatorFamily, {"the originator", "an octet of the originator"}};
}

constexpr NgField NgOriginator1(uint8_t at)
{
    return {
        BGP_FIELD_ADDRESS, at, "bolNgPrefixOriIP1", kOriginatorFamily, {"originator 1", "an octet of originator 1"}};
}

constexpr NgField NgOriginator2(uint8_t at)
{
    return {
        BGP_FIELD_ADDRESS, at, "bolNgPrefixOriIP2", kOriginatorFamily, {"originator 2", "an octet of originator 2"}};
}

// Which text an address prints as.
enum class NgFamily : uint8_t {
    kNone,    // there is no address
    kOfFirst, // all as the first address' family says; none at all for an unknown family
    kOfEach   // IPv6 joined by "-" when all are IPv6; else joined by ":", each as its own family says
};

struct NgKey {
    uint8_t subType;
    const char *route; // of RFC 6514
    uint8_t count;
    NgField fields[4];       // in the order of the text
    const char *readerOrder; // in which the reader visits them, as digits
    uint8_t readerPops;
    NgFamily family;
};

// Typed here, printed by the IPV4 row.
inline constexpr NgKey kNgPlain{.subType = 0,
                                .route = nullptr,
                                .count = 1,
                                .fields = {NgSource(4, kWholeText)},
                                .readerOrder = "0",
                                .readerPops = 0,
                                .family = NgFamily::kNone};
inline constexpr NgKey kNg2{.subType = 2,
                            .route = "Inter-AS I-PMSI A-D route",
                            .count = 1,
                            .fields = {NgAs(4)},
                            .readerOrder = "0",
                            .readerPops = 3,
                            .family = NgFamily::kNone};
inline constexpr NgKey kNg3{.subType = 3,
                            .route = "S-PMSI A-D route",
                            .count = 3,
                            .fields = {NgSource(4), NgGroup(25), NgOriginator(46)},
                            .readerOrder = "201",
                            .readerPops = 4,
                            .family = NgFamily::kOfFirst};
inline constexpr NgKey kNg42{.subType = 4,
                             .route = "Leaf A-D route of an Inter-AS I-PMSI",
                             .count = 2,
                             .fields = {NgAs(4), NgOriginator(12)},
                             .readerOrder = "10",
                             .readerPops = 4,
                             .family = NgFamily::kOfFirst};
inline constexpr NgKey kNg43{.subType = 5,
                             .route = "Leaf A-D route of an S-PMSI",
                             .count = 4,
                             .fields = {NgSource(4), NgGroup(25), NgOriginator1(46), NgOriginator2(67)},
                             .readerOrder = "3201",
                             .readerPops = 5,
                             .family = NgFamily::kOfFirst};
inline constexpr NgKey kNg5{.subType = 6,
                            .route = "Source Active A-D route",
                            .count = 2,
                            .fields = {NgSource(4), NgGroup(25)},
                            .readerOrder = "01",
                            .readerPops = 3,
                            .family = NgFamily::kOfEach};
inline constexpr NgKey kNg6{.subType = 7,
                            .route = "C-multicast route",
                            .count = 3,
                            .fields = {NgAs(4), NgSource(12), NgGroup(33)},
                            .readerOrder = "120",
                            .readerPops = 5,
                            .family = NgFamily::kOfEach};
inline constexpr NgKey kNg41{.subType = 13,
                             .route = "Leaf A-D route of an Intra-AS I-PMSI",
                             .count = 2,
                             .fields = {NgOriginator1(4), NgOriginator2(25)},
                             .readerOrder = "10",
                             .readerPops = 3,
                             .family = NgFamily::kOfEach};

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
