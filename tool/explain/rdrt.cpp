// Route distinguishers (RFC 4364), route targets (RFC 4360, RFC 5668, RFC 5701), VPN identifiers (RFC 2685), SID
// structures (RFC 9252).
#include "bytes.h"
#include "explainers.h"

#include <cstdio>

namespace bgp::explain {

namespace {

constexpr const char *kTypedAs[] = {"in IPv4 form", "as a plain AS number up to 65535",
                                    "as a plain AS number above 65535", "as a dotted AS number"};

std::string Typed(uint64_t notation)
{
    return notation < 4 ? std::string("typed ") + kTypedAs[notation] : "notation " + std::to_string(notation);
}

void ExplainDistinguisher(const std::string &value, size_t offset, uint64_t notation, Sentences &lines)
{
    const auto type = static_cast<uint32_t>(WireNumber(value, offset, 2));
    if (type > 2) {
        lines.push_back("route distinguisher of unknown type " + std::to_string(type));
        return;
    }
    lines.push_back("route distinguisher type " + std::to_string(type) +
                    " (RFC 4364): " + AdministratorText(value, offset + 2, type) + "; " + Typed(notation));
}

} // namespace

void ExplainRouteDistinguisher(const Record &record, Sentences &lines)
{
    ExplainDistinguisher(record.value, 0, HostNumber(record.value, 8, 4), lines);
}

void ExplainBolRd(const Record &record, Sentences &lines)
{
    ExplainDistinguisher(record.value, 4, HostNumber(record.value, 12, 4), lines);
}

void ExplainPolicyDistinguisher(const Record &record, Sentences &lines)
{
    const uint64_t notation = HostNumber(record.value, 8, 1);
    ExplainDistinguisher(record.value, 0, notation == 0 ? 4 : notation - 1, lines);
    if (HostNumber(record.value, 9, 1) != 0) {
        lines.push_back("wildcard: matches any assigned number");
    }
}

void ExplainTarget(const std::string &value, Sentences &lines)
{
    const auto kind = static_cast<uint32_t>(WireNumber(value, 0, 2));
    if ((kind & 0xFF) != 2 || kind >> 8 > 2) {
        lines.push_back("no route target: kind " + std::to_string(kind));
        return;
    }
    constexpr const char *kKinds[] = {"two-octet AS specific (RFC 4360)", "IPv4 address specific (RFC 4360)",
                                      "four-octet AS specific (RFC 5668)"};
    lines.push_back(std::string("route target, ") + kKinds[kind >> 8] + ": " + AdministratorText(value, 2, kind >> 8) +
                    "; " + Typed(HostNumber(value, 8, 4)));
}

void ExplainRouteTarget(const Record &record, Sentences &lines)
{
    ExplainTarget(record.value, lines);
}

void ExplainRouteTargetV6(const Record &record, Sentences &lines)
{
    lines.push_back("route target, IPv6 address specific (RFC 5701): " + AddressText(Bytes(record.value, 2, 16)) +
                    ", local administrator " + std::to_string(WireNumber(record.value, 18, 2)));
}

void ExplainSidStructure(const Record &record, Sentences &lines)
{
    constexpr const char *kLengths[] = {"locator block", "locator node",         "function",
                                        "argument",      "transposition length", "transposition offset"};
    if (HostNumber(record.value, 6, 1) != 1) {
        lines.push_back("no SID structure is present");
        return;
    }
    std::string sentence = "SRv6 SID structure (RFC 9252), in bits:";
    for (size_t i = 0; i < 6; ++i) {
        sentence +=
            std::string(i == 0 ? " " : ", ") + kLengths[i] + ' ' + std::to_string(HostNumber(record.value, i, 1));
    }
    lines.push_back(sentence);
}

void ExplainVpnId(const Record &record, Sentences &lines)
{
    char text[80];
    const auto oui = static_cast<uint32_t>(HostNumber(record.value, 0, 4));
    std::snprintf(text, sizeof text, "VPN identifier (RFC 2685): OUI %02X-%02X-%02X, VPN index %llu", oui >> 16 & 0xFF,
                  oui >> 8 & 0xFF, oui & 0xFF, static_cast<unsigned long long>(HostNumber(record.value, 4, 4)));
    lines.push_back(text);
}

} // namespace bgp::explain
