// What a stored value means, in the words of the RFCs and of the IANA registries, as data: it takes values and the
// plug-in's own functions, and knows no terminal, no file and no host.
#ifndef BGP_EXPLAIN_EXPLAIN_H
#define BGP_EXPLAIN_EXPLAIN_H

#include "fields.h"

#include <string>
#include <vector>

namespace bgp::explain {

// Sentences about the value; empty where the fields say it all.
std::vector<std::string> Explain(const PlugIn &plugIn, const DataTypeDescriptor &type, const std::string &value);

// Of which kind a value of a composite type is, for statistics: "NG_TYPE_5", "EVN type 2", "LINK"; empty for other
// types.
std::string KindOf(const PlugIn &plugIn, const DataTypeDescriptor &type, const std::string &value);

} // namespace bgp::explain

#endif
