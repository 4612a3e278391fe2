// What is measured: rows. A row is a notation of a descriptor row, with a pattern that makes as many different texts of
// it as are wanted; and for some, what the same conversion costs otherwise: in textbook code (the C library's sscanf
// and snprintf behind the same checks), and by a floor (floor.h).
#ifndef BGP_BENCH_BENCH_H
#define BGP_BENCH_BENCH_H

#include <cstddef>
#include <cstdint>

namespace bgp::bench {

// Text to a value of the type's length; false when refused.
using In = bool (*)(const char *text, uint8_t *value);
// A value to a text in kMostText bytes; its length, negative when refused.
using Out = int (*)(const uint8_t *value, char *text);

inline constexpr uint32_t kMostText = 1024;   // bytes that hold any text of a floor
inline constexpr uint32_t kMostBuffer = 4096; // bytes that hold any text of the plug-in
inline constexpr uint32_t kMostValue = 1280;

struct Floor {
    In read;
    Out print;
    // The same with the host's memory for the result, null when refused, and with the text handed over by the host.
    void *(*readForHost)(uint32_t handle, const char *text);
    Out printForHost;
    uint16_t length;    // bytes of a value
    uint16_t kindBytes; // values are the floor's own when so many of their first bytes are as it makes them
};

struct Textbook {
    In read;
    Out print; // may be null
};

// The leaf of a YANG module that takes the same values (yang.cpp), and what its texts have in front.
struct Leaf {
    const char *name;
    const char *prefix;
};

struct Row {
    const char *type;     // descriptor row
    const char *notation; // which of its notations, sub-types, route types or NLRI types
    const char *pattern;  // of its texts, or of its values (pattern.h)
    // Which operations, those that the type offers of them: in, out, compare; k check, s LuaSet, g LuaGet, e Endian.
    const char *operations = "ioc";
    const char *begins = nullptr; // what its values begin with, as hexadecimal digits, where the type has several kinds
    uint8_t mode = 0;             // of text; 0: the one in which the type prints what it reads
    const Floor *floor = nullptr;
    const Textbook *textbook = nullptr;
    Leaf leaf = {};
};

// All of them.
struct Rows {
    const Row *at;
    size_t count;
};
Rows AllRows();

} // namespace bgp::bench

#endif
