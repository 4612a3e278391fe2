// Why texts are refused, as literals of a type's test:
//
//     constexpr Refused kRefused[] = {
//         // text     rule         at  length
//         {"1:2:x",   "digit",     4,  1},
//         {"1:2:9999999999", "too-large", 4, 10, 4294967295, "the second part of the local data"},
//     };
//     TEST_F(LargeCommunity, Refusals) { CheckRefusals("LARGECOMMUNITY", kRefused); }
//
// CheckRefusals() also holds each answer to FormatIn's, and wants a text for every rule that the type says it has.
#ifndef BGP_TESTS_REFUSALS_H
#define BGP_TESTS_REFUSALS_H

#include "support/harness.h"

#include <span>

namespace bgp::test {

struct Refused {
    std::string_view text;
    std::string_view rule; // its name
    uint32_t offset;       // bytes of the text, blanks included
    uint32_t length;
    uint64_t limit = 0;
    std::string_view what = "";  // "" when the rule speaks of the text itself
    std::string_view where = ""; // "" when it is told of no part
    uint32_t element = 0;        // of a list
    uint8_t mode = 2;
    std::string_view expected = ""; // the words that may stand there, joined by blanks
};

// A reason in one line, for messages and for comparing: "too-large 4+10 limit 4294967295 what '...' where '' element 0
// expected ''".
std::string Describe(const BgpReason &reason);

// The sentence that people are told of a text that the type refuses.
std::string Sentence(std::string_view type, std::string_view text);

// What Bgp_ExplainRefusal() says of a text, which is left alone (the test fails otherwise).
BgpRefusal Explained(std::string_view type, std::string_view text, uint8_t mode = 2);

// Every row is refused so, with FormatIn's code in its mode, and each rule of the type's facts has a row.
void CheckRefusals(std::string_view type, std::span<const Refused> rows);

// The same for one sub-type of BOLPREFIX, by the answers that the composite collects.
void CheckSubTypeRefusals(uint32_t subType, std::span<const Refused> rows);

// Every text is accepted: no rule, and FormatIn's 0.
void CheckAccepted(std::string_view type, std::span<const std::string_view> texts, uint8_t mode = 2);

} // namespace bgp::test

#endif
