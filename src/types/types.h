// What the roof needs of the index, string and time types.
#ifndef BGP_TYPES_TYPES_H
#define BGP_TYPES_TYPES_H

#include "bgp_datatypes/types.h"
#include "host/type.h"

namespace bgp {

extern const Type kTimeRange;
extern const Type kCvrfName;
extern const Type kNameIndexTypes[BGP_NAME_INDEX_ROWS]; // in the order of their rows

// What a text that the host reads is to the host's own FormatIn, whose value is given back. The length is the
// registered one, as whoever calls the row tells it.
uint32_t AskHost(DataTypeFormatIn read, uint16_t typeId, uint32_t length, const DataTypeRequest &request,
                 const char *text, BgpRefusal &refusal);

// Bgp_ExplainRefusal() of such a type.
template <DataTypeFormatIn Read, uint16_t TypeId, uint32_t Length>
uint32_t ExplainByHost(const DataTypeRequest &request, const char *text, BgpRefusal &refusal)
{
    return AskHost(Read, TypeId, Length, request, text, refusal);
}

inline constexpr const BgpRule *kHostRules[] = {&kHostRefused};

} // namespace bgp

#endif
