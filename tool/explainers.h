// The explainers, a row a type; each family's words stand in a source of their own.
#ifndef BGPDT_EXPLAINERS_H
#define BGPDT_EXPLAINERS_H

#include <cstdint>
#include <string>
#include <vector>

namespace bgpdt {

// `width` bytes at `offset` in the order of the processor, or of the wire; bytes beyond the value read as zero.
uint64_t HostNumber(const std::string &value, size_t offset, size_t width);
uint64_t WireNumber(const std::string &value, size_t offset, size_t width);
std::string Ipv4Text(uint32_t address); // first octet most significant
std::string Ipv6Text(const std::string &value, size_t offset);

using Sentences = std::vector<std::string>;

// What an AS number is beyond a number ("private use (RFC 6996)"); empty for an ordinary one.
std::string AsNumberNote(uint32_t number);

void ExplainAsNumber(const std::string &value, Sentences &lines);
void ExplainTimeRange(const std::string &value, Sentences &lines);

struct Explainer {
    uint32_t typeId;
    void (*explain)(const std::string &value, Sentences &lines);
};

inline constexpr Explainer kExplainers[] = {
    {255, ExplainAsNumber},
    {285, ExplainAsNumber},
    {284, ExplainTimeRange},
};

} // namespace bgpdt

#endif
