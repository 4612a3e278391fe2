// What explaining needs of a plug-in: the functions by which it tells of its types. bgp_datatypes.h says what each
// does.
#ifndef BGP_EXPLAIN_PLUGIN_H
#define BGP_EXPLAIN_PLUGIN_H

#include "bgp_datatypes.h"

#include <string_view>

namespace bgp::explain {

struct PlugIn {
    decltype(&Bgp_TypeAt) typeAt = nullptr;
    decltype(&Bgp_DescribeType) describeType = nullptr;
    decltype(&Bgp_DescribeSubType) describeSubType = nullptr;
    decltype(&Bgp_DescribeValue) describeValue = nullptr;
    decltype(&Bgp_ExplainRefusal) explainRefusal = nullptr;
    decltype(&Bgp_SayReason) sayReason = nullptr;
    decltype(&Bgp_ExpectedWord) expectedWord = nullptr;
};

// The facts of a type by its name; null when there is none.
inline const BgpTypeFacts *FindType(const PlugIn &plugIn, std::string_view name)
{
    const BgpTypeFacts *type = nullptr;
    for (uint32_t i = 0; (type = plugIn.typeAt(i)) != nullptr && type->Name != name; ++i) {
    }
    return type;
}

} // namespace bgp::explain

#endif
