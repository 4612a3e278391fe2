// The entry of libFuzzer for one target: BGP_FUZZ_TARGET names it. A finding ends the process, as a crash would.
#include "fuzz/targets.h"
#include "fuzz/text_changes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

extern "C" {
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed);
size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize); // libFuzzer's own
}

namespace {

const bgp::fuzz::Target &TheTarget()
{
    static const bgp::fuzz::Target &target = *bgp::fuzz::FindTarget(BGP_FUZZ_TARGET);
    return target;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::vector<bgp::fuzz::Subject> subjects = bgp::fuzz::AllSubjects();
    const bgp::fuzz::Outcome outcome = bgp::fuzz::Run(TheTarget(), subjects, data, size);
    for (const std::string &finding : outcome.findings) {
        std::fprintf(stderr, "finding: %s\n", finding.c_str());
    }
    if (!outcome.findings.empty()) {
        std::abort();
    }
    return 0;
}

// Every other change of a text keeps its shape.
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed)
{
    const size_t textAt = TheTarget().textAt;
    if (textAt == 0 || size <= textAt || seed % 2 == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    std::minstd_rand random(seed);
    std::vector<uint8_t> input(data, data + size);
    bgp::fuzz::ChangeText(input, textAt, random);
    const size_t length = std::min(input.size(), maxSize);
    std::copy_n(input.begin(), length, data);
    return length;
}
