#include "sink.h"

#include <algorithm>

namespace bgpdt {

void Sink::Grow(size_t most)
{
    const size_t size = Size();
    memory_.resize(std::max(size + most, 2 * memory_.size()));
    end_ = memory_.data() + size;
    behind_ = memory_.data() + memory_.size();
}

} // namespace bgpdt
