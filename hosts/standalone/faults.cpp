// Faults and counters of the calling thread.
#include "thread_state.h"

#include <utility>

namespace bgp::standalone {

namespace detail {
constinit thread_local ThreadState threadState{};
}

void SetFaults(const Faults &faults)
{
    detail::ThreadState &state = detail::threadState;
    state.left = faults;
    state.allocationsEnded = false;
    state.counters = {};
}

Counters TakeCounters()
{
    return std::exchange(detail::threadState.counters, {});
}

} // namespace bgp::standalone
