// What a stored value means, in the words of the RFCs and of the IANA registries.
#ifndef BGPDT_EXPLAIN_H
#define BGPDT_EXPLAIN_H

#include <cstdint>
#include <string>
#include <vector>

namespace bgpdt {

struct FieldText {
    std::string name;
    size_t offset, length; // bytes
    std::string value;     // in words: numbers, addresses, bytes
};

// The fields of a value, from the plug-in's own description of its layout; empty where it has none.
std::vector<FieldText> Fields(uint32_t typeId, const std::string &value);

// Sentences about the value; empty where the fields say it all.
std::vector<std::string> Explain(uint32_t typeId, const std::string &value);

// Of which kind a value of a composite type is, for statistics: "NG_TYPE_5", "EVN type 2", "LINK"; empty for other
// types.
std::string KindOf(uint32_t typeId, const std::string &value);

// Why a text is no value of a type, beyond what its help says; may be empty.
std::vector<std::string> ExplainRefusal(uint32_t typeId, const std::string &text);

// Of a composite type: its sub-types in the order in which they were asked about the text, with the answer of each, the
// last one being the one that took it if any did. Empty for other types.
std::vector<std::string> Tried(uint32_t typeId, const std::string &text, uint8_t mode);

} // namespace bgpdt

#endif
