// The same values as texts of leaves whose types are patterns, as YANG models of BGP have them: for comparison, where
// libyang is there.
#ifndef BGP_BENCH_YANG_H
#define BGP_BENCH_YANG_H

#include "bench.h"
#include "ring.h"

namespace bgp::bench {

// The ring's texts as the row's leaf takes them, which is the leaf of ReadByLeaf() from now on; none without libyang,
// or when the row has no leaf. Ends the program when the leaf refuses one.
std::vector<std::string> UseLeaf(const Row &row, Ring &ring);

// Is the text a value of the leaf?
bool ReadByLeaf(const std::string &text);

} // namespace bgp::bench

#endif
