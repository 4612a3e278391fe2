// What is under way, so that a plug-in that crashes or does not return can be named with its call.
#ifndef BGP_FUZZ_COMPARE_WATCHDOG_H
#define BGP_FUZZ_COMPARE_WATCHDOG_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace bgp::compare {

struct UnderWay {
    std::string subject, operation, given;
    uint64_t number = 0; // of the call
};

// The one call that is made at a time. Whoever makes it fills this in beforehand.
extern UnderWay underWay;

// From now on a crash, or a plug-in that takes longer than so many seconds, ends the process with that status, having
// told what is under way.
void WatchOver(uint64_t patience, int status);
// Around what the plug-in of that side does: only then it can be too slow.
void Enter(size_t side);
void Leave();

// "differ: COMMUNITY FormatIn, call 17" and what it was given.
void TellCall();

} // namespace bgp::compare

#endif
