#include "host/format.h"

namespace bgp {

void PutNumber(GrowingText &text, uint64_t number)
{
    Put<"%u">(text, number);
}

} // namespace bgp
