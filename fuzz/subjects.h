// What is fuzzed: every registered row, every sub-type of the composites in a row's shape, and what has to be known
// about each so that its answers can be judged. The facts are those of docs/reference.
#ifndef BGP_FUZZ_SUBJECTS_H
#define BGP_FUZZ_SUBJECTS_H

#include "bgp_datatypes.h"

#include <cstdint>
#include <vector>

namespace bgp::fuzz {

// What Compare promises.
enum class Order : uint8_t {
    kNone,    // there is no Compare, or nothing can be said
    kTotal,   // -1, 0 or 1 for any two values
    kEqual,   // 0 for equal values, a code for others
    kPartial, // an order among values of one kind, DT_ERR_FAIL for others
    kForeign  // another type's Compare, which does not know these values: DT_ERR_FAIL
};

// What LuaGet makes of the table that LuaSet built.
enum class Lua : uint8_t {
    kLoses, // nothing can be said: narrower fields, or readers of another type
    kTyped, // the same value again, if it was typed
    kAll    // the same value again, whatever it holds
};

// What else is peculiar about a subject.
enum : uint32_t {
    kCopiesRaw = 1u << 0,      // FormatOut in mode 3 copies `length` bytes
    kReadsShort = 1u << 1,     // FormatOut takes shorter values as if zeros followed
    kAnyLength = 1u << 2,      // values of any length (the host's strings)
    kOneSidedEndian = 1u << 3, // Endian is no involution
    kShortEndian = 1u << 4,    // Endian works on the registered length
    kTakesItems = 1u << 5,     // FormatOut takes a list of typed items instead of a value
    kNoText = 1u << 6,         // FormatIn returns 0 and writes nothing
    kWritesText = 1u << 7,     // FormatIn may write to its text in mode 1
    kOddCheck = 1u << 8,       // Check wants another length than that of the values
    kComposes = 1u << 9,       // FormatOut in mode 2 gives records in memory of its own, no text
    kPrintsRaw = 1u << 10,     // prints raw bytes, which may happen to read as something else
    kSetsAny = 1u << 11,       // LuaSet does not look at the length
    kKeepsSubType = 1u << 12,  // LuaGet leaves the sub-type word alone
    kTypesOther = 1u << 13     // FormatIn also gives values of sub-type 0, which FormatOut refuses
};

struct Facts {
    const char *name;
    uint16_t valueLength;  // bytes that the operations work on; not always the registered length
    uint16_t textSize;     // what a caller's text buffer must hold; 0: what the result needs
    uint16_t resultTypeId; // that FormatIn reports; 0: the row's own
    Order order;
    Lua lua;
    uint32_t peculiar = 0;
    bool (*luaKeeps)(const uint8_t *value) = nullptr; // for which typed values Lua::kTyped holds; null: for all

    bool Is(uint32_t flag) const { return (peculiar & flag) != 0; }
};

struct Subject {
    Facts facts;
    DataTypeDescriptor row; // a sub-type in a row's shape, registered with its value length
};

// The 35 rows in the order of registration, the 17 sub-types of BOLPREFIX, the one of BOLRD. New ones go to the end:
// inputs name subjects by number.
std::vector<Subject> AllSubjects();

} // namespace bgp::fuzz

#endif
