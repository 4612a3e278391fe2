// Faults and counters of the calling thread.
#include "thread_state.h"

#include <utility>

namespace bgp::standalone::detail {

constinit thread_local ThreadState threadState{};

}

using bgp::standalone::detail::threadState;

void BgpHost_SetFaults(const BgpHostFaults *faults)
{
    threadState.left = faults == nullptr ? BgpHostFaults{} : *faults;
    threadState.allocationsEnded = false;
    threadState.counters = {};
}

BgpHostCounters BgpHost_TakeCounters()
{
    return std::exchange(threadState.counters, {});
}
