// Runs every row through the plug-in, the textbook and the floor, over one text repeated and over a ring of different
// ones (a small ring is learned by the branch predictor and flatters), and closes with the ratios.
#include "bench.h"
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>

namespace bgp::bench {

uint32_t Scatter(uint32_t seed)
{
    uint64_t state = seed * 0x9E3779B97F4A7C15u + 0x9E3779B97F4A7C15u; // splitmix64
    state = (state ^ state >> 30) * 0xBF58476D1CE4E5B9u;
    state = (state ^ state >> 27) * 0x94D049BB133111EBu;
    return static_cast<uint32_t>(state >> 16);
}

namespace {

namespace host = bgp::standalone;

constexpr uint32_t kRing = 65536;
constexpr uint32_t kPerHandle = 4096; // values converted before their memory goes back

// The mode in which every type reads and prints what a person types.
constexpr uint8_t kMode = 2;

struct Work {
    Row row;
    const DataTypeDescriptor *type;
    std::vector<std::string> texts;
    std::vector<std::vector<uint8_t>> values;
    bool plain = false; // the type's values come from SYS_DataTypeMalloc and are given back one by one
};

uint32_t handle;

std::vector<uint8_t> ToValue(const DataTypeDescriptor &type, std::string &text, bool *plain)
{
    const DataTypeRequest request{kMode, handle};
    uint16_t typeId = 0;
    uint16_t length = 0;
    void *value = nullptr;
    const uint32_t code = type.FormatIn(&request, type.TypeId, static_cast<uint32_t>(text.size() + 1), text.data(),
                                        &typeId, &length, &value);
    if (code != 0) {
        std::fprintf(stderr, "bench: %s refuses %s: 0x%x\n", type.Name, text.c_str(), code);
        std::exit(3);
    }
    const auto *bytes = static_cast<const uint8_t *>(value);
    const std::vector<uint8_t> copy{bytes, bytes + length};
    *plain = host::ScratchBlocks() != 0;
    if (*plain) {
        SYS_DataTypeFree(value);
    }
    return copy;
}

void RunPlugInIn(benchmark::State &state, Work &work, uint32_t ring)
{
    const DataTypeRequest request{kMode, handle};
    uint32_t i = 0;
    for (auto _ : state) {
        std::string &text = work.texts[i++ & (ring - 1)];
        uint16_t typeId = 0;
        uint16_t length = 0;
        void *value = nullptr;
        benchmark::DoNotOptimize(
            work.type->FormatIn(&request, work.type->TypeId, 0, text.data(), &typeId, &length, &value));
        benchmark::DoNotOptimize(value);
        if (work.plain) {
            SYS_DataTypeFree(value);
        } else if (i % kPerHandle == 0) {
            host::ResetHandle(handle);
        }
    }
    host::ResetHandle(handle);
}

void RunPlugInOut(benchmark::State &state, Work &work, uint32_t ring)
{
    const DataTypeRequest request{kMode, handle};
    char buffer[4096];
    uint32_t i = 0;
    for (auto _ : state) {
        const std::vector<uint8_t> &value = work.values[i++ & (ring - 1)];
        uint16_t typeId = 0;
        uint16_t length = 0;
        void *text = buffer;
        benchmark::DoNotOptimize(work.type->FormatOut(&request, work.type->TypeId, static_cast<uint32_t>(value.size()),
                                                      value.data(), &typeId, &length, &text));
        benchmark::ClobberMemory();
    }
}

void RunCompare(benchmark::State &state, Work &work, uint32_t ring)
{
    uint32_t i = 0;
    for (auto _ : state) {
        const auto &left = work.values[i & (ring - 1)];
        const auto &right = work.values[++i & (ring - 1)];
        benchmark::DoNotOptimize(
            work.type->Compare(nullptr, static_cast<uint32_t>(left.size()), left.data(), right.data()));
    }
}

void RunIn(benchmark::State &state, Work &work, uint32_t ring, In in)
{
    uint8_t value[1280];
    uint32_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(in(work.texts[i++ & (ring - 1)].c_str(), value));
        benchmark::ClobberMemory();
    }
}

void RunOut(benchmark::State &state, Work &work, uint32_t ring, Out out)
{
    char text[4096];
    uint32_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(out(work.values[i++ & (ring - 1)].data(), text));
        benchmark::ClobberMemory();
    }
}

// What the host itself takes of a conversion: the memory of a result, the hand-over of a text.
void RegisterHost()
{
    benchmark::RegisterBenchmark("host/memory", [](benchmark::State &state) {
        uint32_t i = 0;
        for (auto _ : state) {
            benchmark::DoNotOptimize(SYS_DataTypeMallocByHandle(handle, 12));
            if (++i % kPerHandle == 0) {
                host::ResetHandle(handle);
            }
        }
        host::ResetHandle(handle);
    });
    benchmark::RegisterBenchmark("host/print", [](benchmark::State &state) {
        char buffer[257];
        for (auto _ : state) {
            benchmark::DoNotOptimize(snprintf_truncated_s(buffer, sizeof buffer, "%s", "65535.65535"));
            benchmark::ClobberMemory();
        }
    });
}

void Register(Work &work)
{
    for (const uint32_t ring : {1u, kRing}) {
        const std::string name = std::string(work.row.type) + ' ' + work.row.notation + (ring == 1 ? " one" : " ring");
        auto add = [&](const char *what, auto run) { benchmark::RegisterBenchmark((name + '/' + what).c_str(), run); };
        add("in/plug-in", [&work, ring](benchmark::State &state) { RunPlugInIn(state, work, ring); });
        if (work.row.textbookIn != nullptr) {
            add("in/textbook",
                [&work, ring](benchmark::State &state) { RunIn(state, work, ring, work.row.textbookIn); });
        }
        if (work.row.floorIn != nullptr) {
            add("in/floor", [&work, ring](benchmark::State &state) { RunIn(state, work, ring, work.row.floorIn); });
        }
        add("out/plug-in", [&work, ring](benchmark::State &state) { RunPlugInOut(state, work, ring); });
        if (work.row.textbookOut != nullptr) {
            add("out/textbook",
                [&work, ring](benchmark::State &state) { RunOut(state, work, ring, work.row.textbookOut); });
        }
        if (work.row.floorOut != nullptr) {
            add("out/floor", [&work, ring](benchmark::State &state) { RunOut(state, work, ring, work.row.floorOut); });
        }
        add("compare/plug-in", [&work, ring](benchmark::State &state) { RunCompare(state, work, ring); });
    }
}

// Prints as usual, keeps the times, and closes with one line a row and direction.
class Ratios : public benchmark::ConsoleReporter {
public:
    Ratios() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            const std::string name = run.benchmark_name();
            const size_t slash = name.rfind('/');
            times_[name.substr(0, slash)][name.substr(slash + 1)] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void Finalize() override
    {
        const auto host = times_["host"];
        times_.erase("host");
        const auto share = [&host](const char *what) { return host.count(what) != 0 ? host.at(what) : 0.0; };
        std::printf("\nThe host's share, in nanoseconds: memory of a result %.1f, hand-over of a text %.1f.\n",
                    share("memory"), share("print"));
        std::printf("%-44s %8s %9s %6s %7s %6s %6s\n", "nanoseconds a call", "plug-in", "textbook", "ratio", "floor",
                    "ratio", "+host");
        for (auto &[name, by] : times_) {
            const double own = by["plug-in"];
            std::printf("%-44s %8.1f", name.c_str(), own);
            if (by.count("textbook") != 0) {
                std::printf(" %9.1f %6.2f", by["textbook"], own / by["textbook"]);
            }
            if (by.count("floor") != 0) {
                // The floor writes into its caller's memory; +host compares with one that uses the host as we must.
                const bool isIn = name.find("/in") != std::string::npos;
                const double withHost = by["floor"] + share(isIn ? "memory" : "print");
                std::printf(" %7.1f %6.2f %6.2f", by["floor"], own / by["floor"], own / withHost);
            }
            std::printf("\n");
        }
    }

private:
    std::map<std::string, std::map<std::string, double>> times_;
};

} // namespace

} // namespace bgp::bench

int main(int argc, char **argv)
{
    using namespace bgp::bench;
    benchmark::Initialize(&argc, argv);
    std::string error;
    if (!host::LoadPlugIn(BGP_PLUGIN_PATH, &error)) {
        std::fprintf(stderr, "bench: %s\n", error.c_str());
        return 3;
    }
    handle = host::OpenHandle();
    RegisterHost();
    std::vector<Work> works;
    for (auto *rows : {AsNumberRows, CommunityRows, RouteDistinguisherRows, PrefixRows}) {
        for (const Row &row : rows()) {
            works.push_back({row, host::FindRow(row.type), {}, {}});
        }
    }
    for (Work &work : works) {
        for (uint32_t i = 0; i < kRing; ++i) {
            work.texts.push_back(work.row.text(i));
            work.values.push_back(ToValue(*work.type, work.texts.back(), &work.plain));
        }
        host::ResetHandle(handle);
        Register(work);
    }
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    return 0;
}
