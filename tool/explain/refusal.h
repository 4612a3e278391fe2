// Why a text is no value of a type, as data: what the plug-in's own parser says, in strings that outlive it.
#ifndef BGP_EXPLAIN_REFUSAL_H
#define BGP_EXPLAIN_REFUSAL_H

#include "plugin.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bgp::explain {

struct Reason {
    uint32_t code = 0;                 // what FormatIn answers; 0: the text is taken
    std::string rule;                  // name of the rule that is broken; empty when none is told
    std::string words;                 // the rule as a sentence
    std::string what, where;           // what it speaks of, and the part of the text that it stands in; empty: nothing
    uint64_t limit = 0;                // the number that the rule names
    size_t offset = 0;                 // bytes from the start of the text
    size_t length = 0;                 // bytes of the piece; 0: something is missing there
    uint32_t item = 0;                 // of a list, from 1; else 0
    bool placed = false;               // the rule is about a place of the text, not about the mode or the type
    std::vector<std::string> expected; // words that may stand at the place

    bool operator==(const Reason &) const = default;
};

// The sub-types of a composite type that say the same of a text.
struct Answer {
    std::vector<std::string> subTypes; // names
    Reason reason;
};

struct Refusal {
    Reason reason;
    // Of a type of several sub-types: the one that takes the text, or else got furthest with it; and the answers in the
    // order in which the sub-types are asked, each told once. The first that takes the text is the last.
    std::string closest;
    std::vector<Answer> answers;
};

Refusal ExplainRefusal(const PlugIn &plugIn, const BgpTypeFacts &type, const DataTypeRequest &request,
                       const std::string &text);

} // namespace bgp::explain

#endif
