// What the calls are made of: texts and values that the types know.
#ifndef BGP_FUZZ_COMPARE_MATERIAL_H
#define BGP_FUZZ_COMPARE_MATERIAL_H

#include "fuzz/compare/plugins.h"

#include <span>
#include <string>
#include <vector>

namespace bgp::compare {

// Bytes that hold every value and every text there is.
inline constexpr size_t kRoom = 2048, kTextRoom = 8192;

struct Material {
    std::span<const Subject> subjects;
    std::vector<std::string> texts; // of every type
    std::vector<std::string> words; // of the fuzzers' dictionary
};

// Texts and values of the examples, the fuzzers' seeds and the reference pages below that folder, the project's own.
// What the old plug-in accepts becomes the subject's, with the values that it stores and the texts that it prints of
// them. The subjects must stay where they are.
Material Gather(const std::string &project, std::vector<Subject> &subjects);

// Bytes that the operations work on.
size_t SizeOfValues(const Subject &subject);
// Whether FormatOut takes no value of the type, but a list of typed items, whose lengths have to add up.
bool PrintsItems(const Subject &subject);

} // namespace bgp::compare

#endif
