// Times every row: the plug-in through its descriptor row, and beside it, in turns, floor and textbook. Prints a line
// for each operation of a row. Takes the options of Google Benchmark, and of its own
//   --only=WORDS    the rows whose type and notation have them
//   --even-numbers  the numbers of {u16} and the like are drawn evenly from their range, so that nearly all are long
//   --results=FILE  writes the times as tab-separated values to a file
#include "calls.h"
#include "yang.h"

#include "bgp_standalone_host.hpp"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>

using namespace bgp::bench;

namespace {

namespace host = bgp::standalone;

constexpr uint32_t kBatch = 4096; // calls before the results' memory goes back

using Times = std::map<std::string, std::map<std::string, double>>; // ns by operation and by whom

// The medians of a row's repetitions.
class Medians : public benchmark::BenchmarkReporter {
public:
    explicit Medians(Times &times) : times_(times) {}
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
                const std::string name = run.run_name.function_name;
                const size_t slash = name.find('/');
                times_[name.substr(0, slash)][name.substr(slash + 1)] = run.GetAdjustedCPUTime();
            }
        }
    }

private:
    Times &times_;
};

Times TimeRow(Subject &subject)
{
    Times times;
    const Calls calls = AllCalls();
    for (size_t i = 0; i < calls.count; ++i) {
        const Call &call = calls.at[i];
        if (IsWanted(call, subject)) {
            const std::string name = std::string(call.operation) + '/' + call.by;
            benchmark::RegisterBenchmark(name.c_str(), [&call, &subject](benchmark::State &state) {
                while (state.KeepRunningBatch(kBatch)) {
                    call.run(subject, kBatch);
                }
            });
        }
    }
    Medians medians(times);
    benchmark::RunSpecifiedBenchmarks(&medians);
    benchmark::ClearRegisteredBenchmarks();
    return times;
}

constexpr const char *kBy[] = {"plug-in", "floor", "floor+host", "textbook", "libyang"};

void Tell(const Row &row, const Times &times, std::FILE *results)
{
    const Calls calls = AllCalls();
    for (size_t i = 0; i < calls.count; ++i) {
        const char *operation = calls.at[i].operation;
        if (std::strcmp(calls.at[i].by, kBy[0]) != 0 || times.count(operation) == 0) {
            continue;
        }
        const auto &by = times.at(operation);
        const double own = by.count(kBy[0]) != 0 ? by.at(kBy[0]) : 0;
        std::printf("%-15s %-16s %-8s %8.1f", row.type, row.notation, operation, own);
        for (const char *other : {kBy[1], kBy[2], kBy[3], kBy[4]}) {
            if (by.count(other) != 0) {
                std::printf("%9.1f %6.2f", by.at(other), own / by.at(other));
            } else {
                std::printf("%16s", "");
            }
        }
        std::printf("\n");
        for (const auto &[who, time] : by) {
            if (results != nullptr) {
                std::fprintf(results, "%s\t%s\t%s\t%s\t%.2f\n", row.type, row.notation, operation, who.c_str(), time);
            }
        }
    }
    std::fflush(stdout);
}

// Takes "NAMEVALUE" out of the arguments; null when it is not among them.
const char *TakeOption(int &argc, char **argv, const char *name)
{
    const size_t length = std::strlen(name);
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], name, length) == 0) {
            const char *value = argv[i] + length;
            std::memmove(argv + i, argv + i + 1, static_cast<size_t>(argc - i) * sizeof *argv); // the null too
            --argc;
            return value;
        }
    }
    return nullptr;
}

// What the program's own arguments may change.
void SetDefaults(std::vector<char *> &arguments)
{
    static char interleaving[] = "--benchmark_enable_random_interleaving=true";
    static char repetitions[] = "--benchmark_repetitions=7";
    static char time[] = "--benchmark_min_time=0.03";
    arguments.insert(arguments.begin() + 1, {interleaving, repetitions, time});
}

} // namespace

int main(int argc, char **argv)
{
    const char *only = TakeOption(argc, argv, "--only=");
    const char *file = TakeOption(argc, argv, "--results=");
    const bool evenNumbers = TakeOption(argc, argv, "--even-numbers") != nullptr;
    std::vector<char *> arguments(argv, argv + argc);
    SetDefaults(arguments);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    std::string error;
    if (!host::LoadPlugIn(BGP_PLUGIN_PATH, &error)) {
        std::fprintf(stderr, "bench: %s\n", error.c_str());
        return 3;
    }
    std::FILE *results = file == nullptr ? nullptr : std::fopen(file, "w");
    const uint32_t handle = host::OpenHandle();
    lua_State *lua = host::NewLua();
    std::printf("%-15s %-16s %-8s %8s%9s %6s%9s %6s%9s %6s%9s %6s\n", "nanoseconds", "", "", "plug-in", "floor", "x",
                "+host", "x", "textbook", "x", "libyang", "x");
    const Rows rows = AllRows();
    for (const Row *row = rows.at; row < rows.at + rows.count; ++row) {
        if (only != nullptr && (std::string(row->type) + ' ' + row->notation).find(only) == std::string::npos) {
            continue;
        }
        Subject subject{*row, MakeRing(*row, kRing, handle, evenNumbers), handle, lua};
        if (row->floor != nullptr) {
            if (const std::string found = FindDifference(*row, *row->floor, subject.ring, handle); !found.empty()) {
                std::fprintf(stderr, "bench: floor and plug-in differ: %s\n", found.c_str());
                return 3;
            }
        }
        subject.leafTexts = UseLeaf(*row, subject.ring);
        Tell(*row, TimeRow(subject), results);
    }
    if (results != nullptr && std::fclose(results) != 0) {
        return 4;
    }
    return 0;
}
