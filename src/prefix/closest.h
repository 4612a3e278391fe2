// Which of several parsers a text that all of them refuse was meant for.
#ifndef BGP_PREFIX_CLOSEST_H
#define BGP_PREFIX_CLOSEST_H

#include "host/type.h"

#include <cstdint>

namespace bgp {

// A parser that refuses a text: says what it refuses in another, and answers as FormatIn does.
struct Refuser {
    uint32_t (*explain)(const void *parser, const char *text, BgpReason &reason);
    const void *parser;
};

// How close the text came, in characters that were read: behind pieces of which only the size is wrong, the parser goes
// on. Equals are told apart by where it gets once what it refuses there is put right.
struct Nearness {
    uint32_t reach;
    uint32_t beyond;
};

Nearness FindNearness(const Refuser &refuser, Text text, const BgpReason &reason);

// The index of the sub-type that the text came closest to, of equals the first. Of sub-types with one parser it is the
// one whose key the reason tells of.
uint32_t FindClosest(const Type *const *subTypes, const DataTypeRequest &request, const char *text,
                     const BgpRefusal &refusal);

} // namespace bgp

#endif
