// The texts and values of a row: so many that no cache of the processor's, and no branch predictor, knows them by
// heart.
#ifndef BGP_BENCH_RING_H
#define BGP_BENCH_RING_H

#include "bench.h"
#include "bgp_host_services.h"

#include <string>
#include <vector>

namespace bgp::bench {

inline constexpr uint32_t kRing = 65536;

struct Ring {
    const DataTypeDescriptor *type;
    const BgpTypeFacts *facts;
    std::string texts; // one behind the other, terminated; empty when the row has values only
    std::vector<uint32_t> textAt;
    std::vector<uint8_t> values; // one behind the other
    uint8_t mode = 0;            // that prints what it reads
    uint32_t length = 0;         // bytes of a value
    uint32_t count = 0;
    bool plain = false; // the type's values come from SYS_DataTypeMalloc() and are given back one by one

    char *Text(uint32_t i) { return texts.data() + textAt[i]; }
    uint8_t *Value(uint32_t i) { return values.data() + size_t{i} * length; }
};

// Different texts of the row, fewer than asked for when the notation has fewer, and their values. Ends the program when
// the plug-in refuses to read one, or to print it.
Ring MakeRing(const Row &row, uint32_t count, uint32_t handle, bool evenNumbers = false);

// The first difference between the row's floor and the plug-in: in what becomes of the ring's texts and values, with
// and without the host, and of texts and values that were changed at random. Empty when there is none.
std::string FindDifference(const Row &row, const Floor &floor, Ring &ring, uint32_t handle);

} // namespace bgp::bench

#endif
