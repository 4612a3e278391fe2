// Two builds of the plug-in in one process, and what both of them offer.
#ifndef BGP_FUZZ_COMPARE_PLUGINS_H
#define BGP_FUZZ_COMPARE_PLUGINS_H

#include "bgp_datatypes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bgp::compare {

using Bytes = std::vector<uint8_t>;

inline constexpr size_t kOld = 0, kNew = 1, kSides = 2;
inline constexpr const char *kSideNames[kSides] = {"old", "new"};

inline constexpr uint32_t kNoSubType = 0xFFFFFFFF;

// A registered row, or a sub-type of a composite type in a row's shape.
struct Offer {
    std::string name;
    uint32_t subType; // kNoSubType for a row
    DataTypeDescriptor row;
    BolPrefixLuaReader reader; // null but for sub-types that have one
};

struct PlugIn {
    void *library = nullptr;
    std::vector<Offer> offers; // the rows in the order of registration, then the sub-types
};

// False with the reason when the file cannot be loaded or is no such plug-in. It stays loaded until the process ends.
bool Load(const std::string &path, PlugIn &plugIn, std::string &error);
// Null when the plug-in has none of that name.
void *Symbol(const PlugIn &plugIn, const char *name);
// Name, numbers and the operations there are, in one line.
std::string Told(const Offer &offer);
// What the three entry points do while the host refuses rows of that type id: their answers, the rows that come, what
// is reported.
std::vector<std::string> Registration(const PlugIn &plugIn, uint16_t refusedTypeId);

// What both plug-ins offer under one name.
struct Subject {
    std::string name;
    DataTypeDescriptor rows[kSides];
    BolPrefixLuaReader readers[kSides];
    // What the old plug-in accepts, what it prints, and its values: the material that calls are made of.
    std::vector<std::string> texts = {};
    std::vector<std::string> prints = {};
    std::vector<Bytes> values = {};
};

std::vector<Subject> CommonSubjects(const PlugIn (&plugIns)[kSides]);

} // namespace bgp::compare

#endif
