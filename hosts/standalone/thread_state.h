// What the host keeps for each thread: the faults to inject, the counts of calls, its identity among scratch blocks and
// its stamps for chunks. Constant-initialised and reached without a function call, because every allocation passes
// here.
#ifndef BGP_STANDALONE_THREAD_STATE_H
#define BGP_STANDALONE_THREAD_STATE_H

#include "bgp_standalone_host.h"

namespace bgp::standalone::detail {

struct ThreadState {
    BgpHostCounters counters;
    BgpHostFaults left; // fail... counts down to the call that fails; 0 = none
    bool allocationsEnded;
    bool recordReleases;
    uint32_t identity; // 0 = not yet given
    uint32_t stamp;    // the latest that the thread gave to a chunk of an arena
};

#if defined(__GNUC__)
#define BGP_STANDALONE_NEAR_TLS __attribute__((tls_model("initial-exec")))
#else
#define BGP_STANDALONE_NEAR_TLS
#endif
extern constinit thread_local ThreadState threadState BGP_STANDALONE_NEAR_TLS;

inline bool Strikes(uint32_t &left)
{
    return left != 0 && --left == 0;
}

// Counts an allocation by either allocator; true when it is to fail.
inline bool AllocationFails()
{
    ThreadState &state = threadState;
    ++state.counters.allocations;
    if (state.allocationsEnded) {
        return true;
    }
    if (!Strikes(state.left.failAllocation)) {
        return false;
    }
    state.allocationsEnded = state.left.failAllAfter;
    return true;
}

inline bool PrintFails()
{
    ++threadState.counters.prints;
    return Strikes(threadState.left.failPrint);
}

inline bool CopyFails()
{
    ++threadState.counters.copies;
    return Strikes(threadState.left.failCopy);
}

inline bool ScanFails()
{
    ++threadState.counters.scans;
    return Strikes(threadState.left.failScan);
}

inline bool AddressPrintFails()
{
    ++threadState.counters.addressPrints;
    return Strikes(threadState.left.failAddressPrint);
}

} // namespace bgp::standalone::detail

#endif
