// Values as the tool handles them: one call of an operation each, through descriptor rows, with C++ results. What an
// operation allocates is given back before the call returns, or, for work by the million, stays where it was made until
// all of it is given back.
#ifndef BGPDT_VALUES_H
#define BGPDT_VALUES_H

#include "bgp_datatypes.h"
#include "explain/bytes.h"
#include "explain/plugin.h"
#include "explain/refusal.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bgpdt {

namespace explain = bgp::explain;
using explain::Hex;

// The name of a return code ("DT_ERR_LENGTH") and what it says about a text or value, in words; the code in hexadecimal
// and nothing when it is none of the plug-in's.
std::string CodeName(uint32_t code);
std::string CodeMeaning(uint32_t code);

// Loads the plug-in: the given path, else $BGPDT_PLUGIN, else by name as the host finds it. A plug-in that does not
// tell of its types is of no use. False with the reason in *error.
bool Load(const std::string &path, std::string *error);

// The row of a type's name in either case; null when there is none.
const DataTypeDescriptor *FindType(std::string_view name);

// What the plug-in says of its types, and the functions by which it says it.
const explain::PlugIn &PlugInFunctions();
const BgpTypeFacts &Facts(const DataTypeDescriptor &type);

// Whether the operations work on values of that many bytes. A shorter value may make them read beyond its end.
bool IsValueLength(const DataTypeDescriptor &type, size_t length);

// Memory for what operations make, by one thread at a time. It is there until Empty(), and the memory is used again.
class Results {
public:
    Results();
    ~Results();
    Results(const Results &) = delete;
    Results &operator=(const Results &) = delete;
    DataTypeRequest Request(uint8_t mode) const { return {mode, handle_}; }
    void Keep(void *memory) { made_.push_back(memory); } // what an operation handed back
    void Empty();

private:
    const uint32_t handle_;
    std::vector<void *> made_;
};

// A row and what the plug-in says of it, for many values.
struct Subject {
    explicit Subject(const DataTypeDescriptor &descriptor) : row(&descriptor), facts(&Facts(descriptor)) {}
    const DataTypeDescriptor *row;
    const BgpTypeFacts *facts;
};

template <class Text>
struct ParsedInto {
    uint32_t code = 0;
    Text value; // the stored bytes
    // One type answers 0 to every text and makes nothing of it.
    bool NoValue() const { return code == DT_OK && value.empty(); }
};
using Parsed = ParsedInto<std::string>;
using ParsedThere = ParsedInto<std::string_view>; // in Results
// The text ends with a NUL at text[length]; one type may write to it in mode 1.
ParsedThere Parse(Results &results, const Subject &subject, char *text, size_t length, uint8_t mode);
Parsed Parse(const DataTypeDescriptor &type, const std::string &text, uint8_t mode);
inline constexpr const char *kNoValue = "no value is made of it";

// Why Parse() of a text with the same mode refuses it.
explain::Refusal WhyRefused(const DataTypeDescriptor &type, const std::string &text, uint8_t mode);

template <class Text>
struct PrintedInto {
    uint32_t code = 0;
    uint16_t typeId = 0; // 25 text, 6 raw, 0 when nothing was made
    Text text;           // up to the terminator, or the raw bytes
};
using Printed = PrintedInto<std::string>;
using PrintedThere = PrintedInto<std::string_view>; // in Results
// Where FormatOut takes another record than the value, it is given one that is made of the value.
PrintedThere Print(Results &results, const Subject &subject, std::string_view value, uint8_t mode);
Printed Print(const DataTypeDescriptor &type, const std::string &value, uint8_t mode);

uint32_t Check(const DataTypeDescriptor &type, const std::string &value);
// The help text in words ("STRING<1-11>"), which one type chooses by what is typed so far; empty when the type offers
// none.
std::string Help(const DataTypeDescriptor &type, const std::string &typed = "");
// In network byte order, in the form that the type's row registers; nothing when the type has no Endian.
std::optional<std::string> Network(const DataTypeDescriptor &type, const std::string &value);

std::optional<std::string> FromHex(std::string_view hex);

} // namespace bgpdt

#endif
