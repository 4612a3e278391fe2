// What is fuzzed: every registered row, and every sub-type of the composites in a row's shape. What has to be known
// about each, so that its answers can be judged, are the facts that the plug-in publishes.
#ifndef BGP_FUZZ_SUBJECTS_H
#define BGP_FUZZ_SUBJECTS_H

#include "bgp_datatypes.h"

#include <cstdint>
#include <vector>

namespace bgp::fuzz {

// What is judged by: the facts that the plug-in publishes, and what no host needs to know.
struct Facts {
    const BgpTypeFacts *type;
    const BgpTypeFacts *composite = nullptr;           // of a sub-type: the type that it belongs to
    bool (*luaKeeps)(const uint8_t *value) = nullptr;  // for which typed values BGP_LUA_TYPED holds; null: for all
    bool (*readsBack)(const uint8_t *value) = nullptr; // which values print a text that means them; null: all

    const char *Name() const { return type->Name; }
    // A bit of BgpTypeFacts.Traits.
    bool Is(uint32_t trait) const { return (type->Traits & trait) != 0; }
    bool HasSubTypes() const { return Bgp_DescribeSubType(type->TypeId, 0) != nullptr && composite == nullptr; }
};

struct Subject {
    Facts facts;
    DataTypeDescriptor row; // a sub-type in a row's shape, registered with its value length
};

// The sub-types of BOLPREFIX, the one of BOLRD, then the rows in the order of registration. Inputs name subjects by
// number, and a new type is registered last: so it shifts none.
std::vector<Subject> AllSubjects();

} // namespace bgp::fuzz

#endif
