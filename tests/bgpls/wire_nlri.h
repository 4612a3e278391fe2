// BGP-LS NLRI as they come over the wire (RFC 9552, section 5.2; SRv6 SIDs: RFC 9514), said in the text form of a key.
#ifndef BGP_TESTS_BGPLS_WIRE_NLRI_H
#define BGP_TESTS_BGPLS_WIRE_NLRI_H

#include <arpa/inet.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bgp::test {

// TLVs in their order: type and value.
using Tlvs = std::vector<std::pair<uint16_t, std::string>>;

struct WireNlri {
    uint16_t type = 0;
    uint8_t protocol = 0;
    uint64_t identifier = 0;
    Tlvs local, remote, descriptors;
};

// A big-endian number of as many bytes as there are.
inline uint64_t BigEndian(const std::string &bytes)
{
    uint64_t value = 0;
    for (const char byte : bytes) {
        value = value << 8 | static_cast<uint8_t>(byte);
    }
    return value;
}

inline std::optional<Tlvs> ReadTlvs(std::string bytes)
{
    Tlvs tlvs;
    while (!bytes.empty()) {
        if (bytes.size() < 4) {
            return std::nullopt;
        }
        const auto type = static_cast<uint16_t>(BigEndian(bytes.substr(0, 2)));
        const auto length = static_cast<size_t>(BigEndian(bytes.substr(2, 2)));
        if (bytes.size() < 4 + length) {
            return std::nullopt;
        }
        tlvs.emplace_back(type, bytes.substr(4, length));
        bytes.erase(0, 4 + length);
    }
    return tlvs;
}

// Type, length and body. Nothing when the lengths do not fit.
inline std::optional<WireNlri> ReadNlri(const std::string &bytes)
{
    if (bytes.size() < 13 || BigEndian(bytes.substr(2, 2)) != bytes.size() - 4) {
        return std::nullopt;
    }
    WireNlri nlri;
    nlri.type = static_cast<uint16_t>(BigEndian(bytes.substr(0, 2)));
    nlri.protocol = static_cast<uint8_t>(bytes[4]);
    nlri.identifier = BigEndian(bytes.substr(5, 8));
    const std::optional<Tlvs> tlvs = ReadTlvs(bytes.substr(13));
    if (!tlvs) {
        return std::nullopt;
    }
    for (const auto &[type, value] : *tlvs) {
        if (type == 256 || type == 257) {
            const std::optional<Tlvs> node = ReadTlvs(value);
            if (!node) {
                return std::nullopt;
            }
            (type == 256 ? nlri.local : nlri.remote) = *node;
        } else {
            nlri.descriptors.emplace_back(type, value);
        }
    }
    return nlri;
}

inline const std::string *Find(const Tlvs &tlvs, uint16_t type)
{
    for (const auto &[tlvType, value] : tlvs) {
        if (tlvType == type) {
            return &value;
        }
    }
    return nullptr;
}

inline std::string DottedText(const std::string &bytes)
{
    std::string text;
    for (const char byte : bytes) {
        text += (text.empty() ? "" : ".") + std::to_string(static_cast<uint8_t>(byte));
    }
    return text;
}

inline std::string Ipv6Text(const std::string &bytes)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (bytes.size() == 16) {
        inet_ntop(AF_INET6, bytes.data(), text, sizeof text);
    }
    return text;
}

// TLV 515. IS-IS: six bytes, and a seventh for a pseudonode. OSPF: four, and four more for a pseudonode.
inline std::optional<std::string> IgpRouterIdText(uint8_t protocol, std::string id)
{
    if ((protocol == 1 || protocol == 2) && (id.size() == 6 || id.size() == 7)) {
        id.resize(7);
        char text[18];
        std::snprintf(text, sizeof text, "%04x.%04x.%04x.%02x", static_cast<unsigned>(BigEndian(id.substr(0, 2))),
                      static_cast<unsigned>(BigEndian(id.substr(2, 2))),
                      static_cast<unsigned>(BigEndian(id.substr(4, 2))),
                      static_cast<unsigned>(BigEndian(id.substr(6, 1))));
        return text;
    }
    if ((protocol == 3 || protocol == 6) && (id.size() == 4 || id.size() == 8)) {
        return DottedText(id.substr(0, 4)) + (id.size() == 8 ? "/" + DottedText(id.substr(4)) : "");
    }
    return std::nullopt;
}

// The fields of a node descriptor. Links and SRv6 SIDs of an IGP must name an OSPF area: 0 where the wire has none.
inline std::optional<std::string> NodeText(const WireNlri &nlri, const Tlvs &node, bool needsArea)
{
    std::string text;
    for (const auto &[type, value] : node) {
        switch (type) {
        case 512:
            text += "[as" + std::to_string(BigEndian(value)) + "]";
            break;
        case 513:
            text += "[bgp-ls-identifier" + DottedText(value) + "]";
            break;
        case 514:
            text += "[ospf-area-id" + DottedText(value) + "]";
            break;
        case 515: {
            const std::optional<std::string> id = IgpRouterIdText(nlri.protocol, value);
            if (!id) {
                return std::nullopt;
            }
            text += "[igp-router-id" + *id + "]";
            break;
        }
        case 516:
            text += "[bgp-router-id" + DottedText(value) + "]";
            break;
        case 517:
            text += "[member-as" + std::to_string(BigEndian(value)) + "]";
            break;
        default:
            return std::nullopt;
        }
    }
    if (needsArea && Find(node, 514) == nullptr) {
        text += "[ospf-area-id0.0.0.0]";
    }
    return text;
}

// TLV 263, one topology; the high four bits are reserved. A key has room for one topology.
inline std::optional<std::string> MtText(const Tlvs &descriptors)
{
    const std::string *mt = Find(descriptors, 263);
    if (mt == nullptr) {
        return "";
    }
    return mt->size() == 2 ? std::optional("[mt-id" + std::to_string(BigEndian(*mt) & 0xFFF) + "]") : std::nullopt;
}

// A section must hold a field: where the wire has no link descriptor, an address of 0, which is none.
inline std::optional<std::string> LinkText(const WireNlri &nlri)
{
    const bool bgp = nlri.protocol == 7;
    std::string text;
    for (const auto &[type, value] : nlri.descriptors) {
        switch (type) {
        case 258:
            if (value.size() != 8) {
                return std::nullopt;
            }
            text += bgp ? "[identifier" + DottedText(value) + "]"
                        : "[link-local-id" + DottedText(value.substr(0, 4)) + "][link-remote-id" +
                              DottedText(value.substr(4)) + "]";
            break;
        case 259:
            text += (bgp ? "[local" : "[if-address") + DottedText(value) + "]";
            break;
        case 260:
            text += (bgp ? "[remote" : "[peer-address") + DottedText(value) + "]";
            break;
        case 261:
            text += (bgp ? "[local" : "[if-address") + Ipv6Text(value) + "]";
            break;
        case 262:
            text += (bgp ? "[remote" : "[peer-address") + Ipv6Text(value) + "]";
            break;
        case 263:
            break;
        default:
            return std::nullopt;
        }
    }
    const std::optional<std::string> mt = MtText(nlri.descriptors);
    if (!mt) {
        return std::nullopt;
    }
    text += *mt;
    return "[LINK" + (text.empty() ? "[if-address0.0.0.0]" : text) + "]";
}

// TLV 265: a length in bits and as many bytes as it needs.
inline std::optional<std::string> ReachableBytes(const WireNlri &nlri)
{
    const std::string *reachable = Find(nlri.descriptors, 265);
    if (reachable == nullptr || reachable->empty() ||
        reachable->size() - 1 != (static_cast<uint8_t>((*reachable)[0]) + 7u) / 8) {
        return std::nullopt;
    }
    std::string address = reachable->substr(1);
    address.resize(nlri.type == 3 ? 4 : 16);
    return address;
}

// The OSPF route type (TLV 264) is mandatory in a text: 0 where the wire has none.
inline std::optional<std::string> PrefixText(const WireNlri &nlri)
{
    const std::optional<std::string> mt = MtText(nlri.descriptors);
    const std::optional<std::string> address = ReachableBytes(nlri);
    if (!mt || !address) {
        return std::nullopt;
    }
    const std::string *routeType = Find(nlri.descriptors, 264);
    const auto length = static_cast<uint8_t>((*Find(nlri.descriptors, 265))[0]);
    return "[PREFIX" + *mt + "[ospf-route-type" + std::to_string(routeType == nullptr ? 0 : BigEndian(*routeType)) +
           "][prefix" + (nlri.type == 3 ? DottedText(*address) : Ipv6Text(*address)) + "/" + std::to_string(length) +
           "]]";
}

inline std::optional<std::string> SidText(const WireNlri &nlri)
{
    const std::optional<std::string> mt = MtText(nlri.descriptors);
    const std::string *sid = Find(nlri.descriptors, 518);
    return mt && sid != nullptr ? std::optional("[SID" + *mt + "[sid" + Ipv6Text(*sid) + "]]") : std::nullopt;
}

// The key as text; nothing where the text form has no words for it.
inline std::optional<std::string> KeyText(const WireNlri &nlri)
{
    static constexpr const char *kTypes[] = {"", "NODE", "LINK", "IPV4-PREFIX", "IPV6-PREFIX", "TEPOLICY", "SRV6-SID"};
    static constexpr const char *kProtocols[] = {"",       "ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT",
                                                 "STATIC", "OSPFv3",       "BGP",          "",       "SEGMENT-ROUTING"};
    if (nlri.type == 0 || nlri.type > 6 || nlri.type == 5 || nlri.protocol > 9 || *kProtocols[nlri.protocol] == '\0') {
        return std::nullopt;
    }
    const bool needsArea = (nlri.type == 2 || nlri.type == 6) && nlri.protocol != 7;
    std::optional<std::string> local = NodeText(nlri, nlri.local, needsArea);
    std::optional<std::string> rest = "";
    if (nlri.type == 2) {
        const std::optional<std::string> remote = NodeText(nlri, nlri.remote, false);
        const std::optional<std::string> link = LinkText(nlri);
        rest = remote && link ? std::optional("[REMOTE" + *remote + "]" + *link) : std::nullopt;
    } else if (nlri.type == 3 || nlri.type == 4) {
        rest = PrefixText(nlri);
    } else if (nlri.type == 6) {
        rest = SidText(nlri);
    }
    if (!local || !rest) {
        return std::nullopt;
    }
    return std::string("[") + kTypes[nlri.type] + "][" + kProtocols[nlri.protocol] + "][IDENTIFIER" +
           std::to_string(nlri.identifier) + "][LOCAL" + *local + "]" + *rest;
}

} // namespace bgp::test

#endif
