// The loops that are timed and counted: each calls one operation on one value of a ring after another.
#ifndef BGP_BENCH_CALLS_H
#define BGP_BENCH_CALLS_H

#include "ring.h"

namespace bgp::bench {

struct Subject {
    const Row &row;
    Ring ring;
    uint32_t handle;
    lua_State *lua;
    uint32_t next = 0;                       // place in the ring
    std::vector<std::string> leafTexts = {}; // those of its leaf, if there is one (yang.h)
};

struct Call {
    const char *operation;
    const char *by; // plug-in, floor, floor+host, textbook, libyang
    char letter;    // in Row.operations
    bool (*isOffered)(const Subject &subject);
    void (*run)(Subject &subject, uint32_t count); // at most kRing calls
};

bool IsWanted(const Call &call, const Subject &subject);

struct Calls {
    const Call *at;
    size_t count;
};
Calls AllCalls();

} // namespace bgp::bench

#endif
