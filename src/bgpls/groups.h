// The group loop beneath the BGP-LS parser.
#ifndef BGP_BGPLS_GROUPS_H
#define BGP_BGPLS_GROUPS_H

#include "bgpls/context.h"

namespace bgp {

inline constexpr uint32_t kLsGroupSize = 500; // a group's content, with its terminator

// "[...][...]" to the handlers of the rows, first to last group; 0 or the first error. The context is passed on and not
// looked at.
uint32_t ReadGroups(const LsRun &run, void *target, BgpLsParseContext *context, LsExplaining *explaining);

// The keyword of the first group that is one of `flags`, in a run that was read and has one.
Text FindGroup(const LsRun &run, uint32_t flags, const BgpLsKeyword *&row);

} // namespace bgp

#endif
