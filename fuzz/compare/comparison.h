// The comparison: what is called, how often, and what is counted.
#ifndef BGP_FUZZ_COMPARE_COMPARISON_H
#define BGP_FUZZ_COMPARE_COMPARISON_H

#include "fuzz/compare/calls.h"

#include <map>
#include <memory>

namespace bgp::compare {

// What the host can be made to fail in, a bit each.
struct Fault {
    const char *name;
    uint32_t host::Counters::*counted; // how often a call asks for it
    uint32_t host::Faults::*fails;     // which of them fails
};

extern const std::vector<Fault> kFaults;

struct Options {
    std::string paths[kSides];
    uint64_t calls = 1000000, seed = 1, from = 0, show = 20, patience = 10;
    std::vector<Fault> faults = kFaults;
};

// What is called: an operation of a subject, or a helper.
struct Target {
    std::string subject, operation;
    std::function<Call(Draw &)> draw;
};

struct Tally {
    uint64_t calls = 0, succeeded = 0, differing = 0;
};

struct Comparison {
    const Options &options;
    PlugIn plugIns[kSides] = {};
    uint32_t handle = host::OpenHandle();
    uint64_t shown = 0;
    std::map<std::string, Tally> operations = {}; // by name
    std::map<std::string, Tally> differing = {};  // by subject and operation
};

// The rows, the sub-types, and what is registered and reported while the host refuses each type in turn.
void CompareRegistration(Comparison &comparison);
// Each operation of each subject, as often as its share says, then the helpers. What only one plug-in has is told and
// left out. `likes` keeps the subjects of the helpers.
std::vector<Target> TargetsOf(const Comparison &comparison, const Material &material,
                              std::vector<std::unique_ptr<Subject>> &likes);
void CompareCalls(Comparison &comparison, const std::vector<Target> &targets, const Material &material);

} // namespace bgp::compare

#endif
