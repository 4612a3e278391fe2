// What is measured: one row a type. Every row is run through the plug-in's descriptor row and, in the same run, through
// textbook code (the C library's sscanf and snprintf with the same checks) and, for a few types, through a hand-written
// floor that knows nothing of a contract.
#ifndef BGP_BENCH_BENCH_H
#define BGP_BENCH_BENCH_H

#include <cstdint>
#include <string>
#include <vector>

namespace bgp::bench {

// Text to a value of the type's length; false when refused.
using In = bool (*)(const char *text, uint8_t *value);
// A value to a text of at most 256 characters; its length.
using Out = int (*)(const uint8_t *value, char *text);

struct Row {
    const char *type;                   // descriptor row
    const char *notation;               // which of its notations
    std::string (*text)(uint32_t seed); // a different text of that notation for each seed
    In textbookIn = nullptr;
    Out textbookOut = nullptr;
    In floorIn = nullptr;
    Out floorOut = nullptr;
};

// Each source of rows adds its own.
std::vector<Row> AsNumberRows();
std::vector<Row> CommunityRows();
std::vector<Row> RouteDistinguisherRows();
std::vector<Row> PrefixRows();

// A number spread over 32 bits, the same for the same seed on every machine.
uint32_t Scatter(uint32_t seed);

} // namespace bgp::bench

#endif
