// Refusals as people and as programs read them.
#ifndef BGPDT_REPORT_H
#define BGPDT_REPORT_H

#include "explain/refusal.h"
#include "sink.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace bgpdt {

namespace explain = bgp::explain;

// What is not printable ASCII as \r, \n, \t or \xNN, a backslash as two: a text may hold bytes that a terminal obeys.
void PutEscaped(Sink &sink, std::string_view text);
std::string Escaped(std::string_view text);

// JSON in printable ASCII; bytes that are no UTF-8 are replaced.
std::string Dumped(const nlohmann::ordered_json &json, int indent = -1);

// A text or value that is refused.
struct Refused {
    uint32_t code = 0;
    std::string error;    // the code's name, or a reason that no code stands for
    std::string meaning;  // of the code, in words; empty: the error says it
    std::string expected; // in general: what the type's help says
    explain::Refusal why; // by the plug-in; without a rule where it does not tell
};

// `ASNUM "65536.1" refused: the high half is at most 65535 (DT_ERR_INVALID_VALUE); expected STRING<1-11>`.
std::string Headline(std::string_view type, std::string_view text, const Refused &refused);

// The text, and below it a caret under the place; a long text is cut around the place. Empty when there is no place.
std::vector<std::string> Marked(const std::string &text, const explain::Reason &reason);

// The answers of a composite type's sub-types, a line each: "IPV4, IPV6: ... (column 3)".
std::vector<std::string> AnswerLines(const std::vector<explain::Answer> &answers);

// Null without a rule.
nlohmann::ordered_json ToJson(const explain::Reason &reason);
nlohmann::ordered_json ToJson(const std::vector<explain::Answer> &answers);

} // namespace bgpdt

#endif
