// compare-plugins: makes the same seeded calls of two builds of the plug-in and tells where their answers differ.
#include "fuzz/compare/comparison.h"
#include "fuzz/compare/watchdog.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sstream>

namespace {

using namespace bgp::compare;

constexpr int kAlike = 0, kDiffer = 1, kUsage = 2;

constexpr const char *kHelpText = R"(usage: compare-plugins OLD NEW [options]
Makes the same calls of every operation of two builds of libbgp_datatypes.so and compares codes, bytes, texts, Lua
tables and what is asked of the host's memory.
  --calls N      how many calls to make of each (1000000)
  --seed S       another series of calls (1)
  --from N       begin with that call of the series (0)
  --show N       differing calls to show, at most 2 of one operation (20)
  --faults LIST  what the host fails in on a share of the calls: none, or any of allocation,print,copy,scan,help (all)
  --patience S   seconds that a call may take (10)
Exit status: 0 alike, 1 different, 2 usage or a plug-in that cannot be loaded.
)";

// ------------------------------------------------------------------------------------------------------------- options

std::optional<uint64_t> NumberIn(const char *text)
{
    char *end = nullptr;
    const uint64_t number = std::strtoull(text, &end, 10);
    return *text >= '0' && *text <= '9' && *end == '\0' ? std::optional(number) : std::nullopt;
}

bool TakeFaults(Options &options, const std::string &list)
{
    options.faults.clear();
    std::istringstream names(list == "none" ? "" : list);
    for (std::string name; std::getline(names, name, ',');) {
        bool known = false;
        for (const Fault &fault : kFaults) {
            if (name == fault.name) {
                options.faults.push_back(fault);
                known = true;
            }
        }
        if (!known) {
            return false;
        }
    }
    return true;
}

// One option with its value. False when there is no such option or the value is none of it.
bool TakeOption(Options &options, const std::string &name, const char *value)
{
    const struct {
        const char *name;
        uint64_t *number;
        uint64_t least;
    } numbers[] = {{"--calls", &options.calls, 1},
                   {"--seed", &options.seed, 0},
                   {"--from", &options.from, 0},
                   {"--show", &options.show, 0},
                   {"--patience", &options.patience, 1}};
    if (value == nullptr) {
        return false;
    }
    for (const auto &known : numbers) {
        if (const std::optional<uint64_t> number = NumberIn(value); name == known.name && number >= known.least) {
            *known.number = *number;
            return true;
        }
    }
    return name == "--faults" && TakeFaults(options, value);
}

bool TakeOptions(Options &options, char **words)
{
    size_t paths = 0;
    for (; *words != nullptr; ++words) {
        if (std::strncmp(*words, "--", 2) == 0) {
            if (!TakeOption(options, words[0], words[1])) {
                return false;
            }
            ++words; // its value
        } else if (paths < kSides) {
            options.paths[paths++] = *words;
        } else {
            return false;
        }
    }
    return paths == kSides;
}

// ------------------------------------------------------------------------------------------------------------- the run

int Fails(const std::string &reason)
{
    std::fprintf(stderr, "compare-plugins: %s\n", reason.c_str());
    return kUsage;
}

using Count = unsigned long long;

int Report(const Comparison &comparison)
{
    Tally all;
    std::printf("%-14s %10s %10s %10s\n", "operation", "calls", "code 0", "differ");
    for (const auto &[name, tally] : comparison.operations) {
        std::printf("%-14s %10llu %10llu %10llu\n", name.c_str(), Count{tally.calls}, Count{tally.succeeded},
                    Count{tally.differing});
        all.calls += tally.calls;
        all.differing += tally.differing;
    }
    for (const auto &[name, tally] : comparison.differing) {
        std::printf("differ: %s, %llu calls\n", name.c_str(), Count{tally.differing});
    }
    std::printf("compare-plugins: %llu calls of each, %llu answers differ\n", Count{all.calls}, Count{all.differing});
    return all.differing == 0 ? kAlike : kDiffer;
}

// The host's memory, filled before it is given out, so that no answer holds chance bytes; some objects with names.
void PrepareHost()
{
    host::SetCheckedBlocks(true);
    host::SetObjectName(0x6003, 7, "blue");
    host::SetObjectName(0x605c, 1, "100");
}

int Run(const Options &options)
{
    Comparison comparison{options};
    WatchOver(options.patience, kDiffer);
    PrepareHost();
    for (const size_t side : {kOld, kNew}) {
        underWay = {"all types", "registration", "to " + options.paths[side]};
        Enter(side);
        std::string error;
        if (!Load(options.paths[side], comparison.plugIns[side], error)) {
            return Fails(error);
        }
        Leave();
    }
    CompareRegistration(comparison);
    underWay = {"all types", "learning", "what the old plug-in accepts"};
    std::vector<Subject> subjects = CommonSubjects(comparison.plugIns);
    const Material material = Gather(BGP_SOURCE_DIR, subjects);
    if (subjects.empty() || material.texts.empty() || material.words.empty()) {
        return Fails("no common types, or no texts below " BGP_SOURCE_DIR);
    }
    std::vector<std::unique_ptr<Subject>> likes;
    CompareCalls(comparison, TargetsOf(comparison, material, likes), material);
    return Report(comparison);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::fputs(kHelpText, stdout);
        return kAlike;
    }
    Options options;
    if (!TakeOptions(options, argv + 1)) {
        std::fputs(kHelpText, stderr);
        return kUsage;
    }
    setvbuf(stdout, nullptr, _IOLBF, 0);
    return Run(options);
}
