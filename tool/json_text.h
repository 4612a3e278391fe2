// JSON strings without a JSON library, for output by the million; byte for byte what the library writes.
#ifndef BGPDT_JSON_TEXT_H
#define BGPDT_JSON_TEXT_H

#include "sink.h"

#include <string_view>

namespace bgpdt {

// A JSON string in printable ASCII, its quotes included. Bytes that are no UTF-8 become U+FFFD: one for the longest
// beginning of a character (the Unicode Standard's maximal subpart), one for each other byte.
void PutJsonText(Sink &sink, std::string_view text);

} // namespace bgpdt

#endif
