// AS numbers: the ranges that the IANA registry sets apart.
#include "bytes.h"
#include "explainers.h"

namespace bgp::explain {

namespace {

struct Range {
    uint32_t first, last;
    const char *note;
};

constexpr Range kRanges[] = {
    {0, 0, "reserved, identifies no AS (RFC 7607)"},
    {23456, 23456, "AS_TRANS, stands in for a 4-byte AS number (RFC 6793)"},
    {64496, 64511, "for documentation (RFC 5398)"},
    {64512, 65534, "private use (RFC 6996)"},
    {65535, 65535, "reserved (RFC 7300)"},
    {65536, 65551, "for documentation (RFC 5398)"},
    {4200000000, 4294967294, "private use (RFC 6996)"},
    {4294967295, 4294967295, "reserved (RFC 7300)"},
};

// What an AS number is beyond a number; empty for an ordinary one.
std::string AsNumberNote(uint32_t number)
{
    for (const Range &range : kRanges) {
        if (number >= range.first && number <= range.last) {
            return range.note;
        }
    }
    return "";
}

} // namespace

std::string AsNumberText(uint32_t number)
{
    const std::string note = AsNumberNote(number);
    return "AS " + std::to_string(number) + (note.empty() ? "" : " (" + note + ")");
}

void ExplainAsNumber(const Record &record, Sentences &lines)
{
    const auto number = static_cast<uint32_t>(HostNumber(record.value, 0, 4));
    const bool dotted = HostNumber(record.value, 4, 4) != 0;
    const std::string note = AsNumberNote(number);
    lines.push_back("AS " + std::to_string(number) + ", asdot " + std::to_string(number >> 16) + '.' +
                    std::to_string(number & 0xFFFF) + ", typed " + (dotted ? "dotted" : "plain") +
                    (note.empty() ? "" : "; " + note));
}

void ExplainTimeRange(const Record &record, Sentences &lines)
{
    const uint64_t seconds = HostNumber(record.value, 0, 4);
    lines.push_back(std::to_string(seconds) + " seconds: " + std::to_string(seconds / 86400) + " days " +
                    std::to_string(seconds / 3600 % 24) + " hours " + std::to_string(seconds / 60 % 60) + " minutes " +
                    std::to_string(seconds % 60) + " seconds");
}

} // namespace bgp::explain
