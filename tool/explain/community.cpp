// Communities of every kind: RFC 1997, RFC 4360, RFC 8092, and the names that the IANA registries give to their values.
#include "bytes.h"
#include "explainers.h"

#include <cstdio>

namespace bgp::explain {

namespace {

struct Name {
    uint32_t value;
    const char *name;
};

template <size_t Count>
const char *Find(const Name (&names)[Count], uint32_t value)
{
    for (const Name &name : names) {
        if (name.value == value) {
            return name.name;
        }
    }
    return nullptr;
}

constexpr Name kWellKnown[] = {
    {0x00000000, "internet: every neighbour may have it"},
    {0xFFFF0000, "GRACEFUL_SHUTDOWN (RFC 8326)"},
    {0xFFFF0001, "ACCEPT_OWN (RFC 7611)"},
    {0xFFFF0006, "LLGR_STALE (RFC 9494)"},
    {0xFFFF0007, "NO_LLGR (RFC 9494)"},
    {0xFFFF029A, "BLACKHOLE (RFC 7999)"},
    {0xFFFFFF01, "NO_EXPORT (RFC 1997)"},
    {0xFFFFFF02, "NO_ADVERTISE (RFC 1997)"},
    {0xFFFFFF03, "NO_EXPORT_SUBCONFED (RFC 1997)"},
    {0xFFFFFF04, "NOPEER (RFC 3765)"},
};

// High-order type byte of an extended community (RFC 4360, RFC 7153).
constexpr Name kTypes[] = {
    {0x00, "transitive, two-octet AS specific (RFC 4360)"},
    {0x01, "transitive, IPv4 address specific (RFC 4360)"},
    {0x02, "transitive, four-octet AS specific (RFC 5668)"},
    {0x03, "transitive, opaque (RFC 4360)"},
    {0x06, "EVPN (RFC 7432)"},
    {0x40, "non-transitive, two-octet AS specific (RFC 4360)"},
    {0x41, "non-transitive, IPv4 address specific (RFC 4360)"},
    {0x42, "non-transitive, four-octet AS specific (RFC 5668)"},
    {0x43, "non-transitive, opaque (RFC 4360)"},
    {0x80, "generic transitive, experimental (RFC 7153)"},
};

// Type and sub-type byte together.
constexpr Name kSubTypes[] = {
    {0x0002, "route target (RFC 4360)"},
    {0x0003, "route origin (RFC 4360)"},
    {0x0005, "OSPF domain identifier (RFC 4577)"},
    {0x0008, "BGP data collection (RFC 4384)"},
    {0x0009, "source AS (RFC 6514)"},
    {0x0102, "route target (RFC 4360)"},
    {0x0103, "route origin (RFC 4360)"},
    {0x0105, "OSPF domain identifier (RFC 4577)"},
    {0x0107, "OSPF router id (RFC 4577)"},
    {0x010b, "VRF route import (RFC 6514)"},
    {0x0202, "route target (RFC 5668)"},
    {0x0203, "route origin (RFC 5668)"},
    {0x0205, "OSPF domain identifier (RFC 4577)"},
    {0x0209, "source AS (RFC 6514)"},
    {0x0306, "OSPF route type (RFC 4577)"},
    {0x030b, "color (RFC 9012)"},
    {0x030c, "encapsulation (RFC 9012)"},
    {0x030d, "default gateway (RFC 7432)"},
    {0x030e, "bandwidth"},
    {0x0600, "MAC mobility (RFC 7432)"},
    {0x0601, "ESI label (RFC 7432)"},
    {0x0602, "ES-import route target (RFC 7432)"},
    {0x0603, "EVPN router's MAC (RFC 9135)"},
    {0x0604, "EVPN layer 2 attributes (RFC 8214)"},
    {0x0606, "DF election (RFC 8584)"},
    {0x4004, "link bandwidth"},
    {0x8000, "OSPF route type (deprecated form)"},
    {0x8001, "OSPF router id (deprecated form)"},
    {0x8005, "OSPF domain identifier (deprecated form)"},
    {0x8006, "flow specification traffic rate (RFC 8955)"},
    {0x8007, "flow specification traffic action (RFC 8955)"},
    {0x8008, "flow specification redirect (RFC 8955)"},
    {0x8009, "flow specification traffic marking (RFC 8955)"},
};

// Route types of the OSPF route type community (RFC 4577).
constexpr Name kOspfRoutes[] = {
    {1, "intra-area"}, {2, "intra-area"}, {3, "inter-area"}, {5, "external"}, {7, "NSSA"}, {129, "sham link"},
};

std::string Number(uint64_t number)
{
    return std::to_string(number);
}

std::string CommunityText(uint32_t community)
{
    const std::string halves = Number(community >> 16) + ':' + Number(community & 0xFFFF);
    if (const char *name = Find(kWellKnown, community)) {
        return halves + ", " + name;
    }
    const bool reserved = community >> 16 == 0 || community >> 16 == 0xFFFF;
    return halves + (reserved ? ", in a reserved range (RFC 1997)"
                              : ", " + AsNumberText(community >> 16) + ", local value " + Number(community & 0xFFFF));
}

std::string Rate(uint64_t bytes)
{
    return Number(bytes) + " bytes a second, " + Number(bytes * 8) + " bits a second";
}

const char *NotationName(uint64_t notation)
{
    constexpr const char *kNotations[] = {"IPv4 form", "2-byte AS form", "4-byte AS plain form",
                                          "4-byte AS dotted form"};
    return notation < 4 ? kNotations[notation] : "an unknown form";
}

} // namespace

// Administrator and assigned number by the type byte: 0 two-octet AS, 1 IPv4, 2 four-octet AS.
std::string AdministratorText(const std::string &value, size_t offset, uint32_t type)
{
    switch (type) {
    case 0:
        return AsNumberText(static_cast<uint32_t>(WireNumber(value, offset, 2))) + ", assigned number " +
               Number(WireNumber(value, offset + 2, 4));
    case 1:
        return "IPv4 address " + Ipv4Text(static_cast<uint32_t>(WireNumber(value, offset, 4))) + ", assigned number " +
               Number(WireNumber(value, offset + 4, 2));
    default:
        return AsNumberText(static_cast<uint32_t>(WireNumber(value, offset, 4))) + ", assigned number " +
               Number(WireNumber(value, offset + 4, 2));
    }
}

void ExplainCommunity(const Record &record, Sentences &lines)
{
    lines.push_back(CommunityText(static_cast<uint32_t>(HostNumber(record.value, 0, 4))));
}

void ExplainCommunityList(const Record &record, Sentences &lines)
{
    constexpr uint64_t kUnused = 2;
    for (size_t at = 0; at + record.unit <= record.value.size(); at += record.unit) {
        if (HostNumber(record.value, at + 4, 1) != kUnused) {
            lines.push_back(Number(at / record.unit + 1) + ". " +
                            CommunityText(static_cast<uint32_t>(HostNumber(record.value, at, 4))));
        }
    }
}

void ExplainAsNumberList(const Record &record, Sentences &lines)
{
    for (size_t at = 0; at + record.unit <= record.value.size(); at += record.unit) {
        if (const auto number = static_cast<uint32_t>(HostNumber(record.value, at, 4)); number != 0) {
            lines.push_back(Number(at / record.unit + 1) + ". " + AsNumberText(number));
        }
    }
}

void ExplainLargeCommunity(const Record &record, Sentences &lines)
{
    lines.push_back("large community (RFC 8092): global administrator " +
                    AsNumberText(static_cast<uint32_t>(HostNumber(record.value, 0, 4))) + ", local data " +
                    Number(HostNumber(record.value, 4, 4)) + " and " + Number(HostNumber(record.value, 8, 4)));
}

void ExplainExtCommunity(const Record &record, Sentences &lines)
{
    const auto key = static_cast<uint32_t>(WireNumber(record.value, 0, 2));
    const char *type = Find(kTypes, key >> 8);
    const char *subType = Find(kSubTypes, key);
    char code[16];
    std::snprintf(code, sizeof code, "0x%04x", key);
    lines.push_back(std::string(code) + ": " + (subType == nullptr ? "unknown sub-type" : subType) + "; " +
                    (type == nullptr ? "unknown type" : type));
    const Address address = Bytes(record.value, 2, 4); // where there is one
    if (key == 0x030e) {
        lines.push_back(AsNumberText(static_cast<uint32_t>(WireNumber(record.value, 2, 2))) + ", " +
                        Rate(WireNumber(record.value, 4, 4)));
    } else if (key == 0x030b) {
        lines.push_back("color " + Number(WireNumber(record.value, 4, 4)));
    } else if (key == 0x0306 || key == 0x8000) {
        const auto route = static_cast<uint32_t>(WireNumber(record.value, 6, 1));
        const char *name = Find(kOspfRoutes, route);
        lines.push_back("OSPF area " + AddressText(address) + ", route type " + Number(route) +
                        (name == nullptr ? "" : std::string(" (") + name + ")") + ", options " +
                        Number(WireNumber(record.value, 7, 1)));
    } else if (key == 0x8001 || key == 0x8005) {
        lines.push_back((key == 0x8001 ? "router id " : "domain id ") + AddressText(address));
    } else if (const uint32_t kind = key >> 8 & 0xBF; kind <= 2) {
        lines.push_back(AdministratorText(record.value, 2, kind) + "; typed in " +
                        NotationName(HostNumber(record.value, 8, 4)));
    }
}

void ExplainBandwidth(const Record &record, Sentences &lines)
{
    lines.push_back("link bandwidth of " + AsNumberText(static_cast<uint32_t>(HostNumber(record.value, 2, 2))) + ": " +
                    Rate(HostNumber(record.value, 4, 8)) + "; bit mask " + Number(HostNumber(record.value, 0, 2)));
}

void ExplainCompressed(const Record &record, Sentences &lines)
{
    constexpr uint64_t kMarked = 0x8099;
    lines.push_back(HostNumber(record.value, 0, 2) == kMarked
                        ? "compressed extended community, cpi " + Number(HostNumber(record.value, 2, 2))
                        : "not marked as a compressed extended community (0x8099)");
}

void ExplainAttributeIds(const Record &record, Sentences &lines)
{
    std::string ids;
    for (size_t id = 0; id < 8 * record.value.size(); ++id) {
        if ((HostNumber(record.value, id / 8, 1) >> (id % 8) & 1) != 0) {
            ids += ' ' + Number(id);
        }
    }
    lines.push_back(ids.empty() ? "no attribute" : "attributes" + ids);
}

} // namespace bgp::explain
