// The fuzz targets. An input is bytes; byte 0 names the subject (modulo their number), the rest is the target's own:
//
//   text    byte 1 the mode, then a text. FormatIn; what it accepts goes through every other operation.
//   value   byte 1 the mode, byte 2 shortens the value, then the value. FormatOut, Check, Compare, Lua, byte order.
//   lua     byte 1 how the table is handed over, byte 2 how many bytes of a value follow, from which LuaSet builds the
//           table; then edits of that table. LuaGet.
//   faults  byte 1 the mode, byte 2 what fails, byte 3 which call of it, then a text. As text, while the host fails.
//
// Modes are counted 0 to 7 and 255, modulo 9.
#ifndef BGP_FUZZ_TARGETS_H
#define BGP_FUZZ_TARGETS_H

#include "fuzz/calls.h"
#include "fuzz/input.h"

#include <span>
#include <string_view>

namespace bgp::fuzz {

// What came of one input.
struct Outcome {
    std::vector<std::string> findings; // empty when all is well
    const Subject *subject = nullptr;
    bool reached = false; // the text was accepted, the value printed, the table read
};

struct Target {
    const char *name;
    bool (*run)(Trial &trial, Input &input); // gives Outcome::reached
    size_t textAt;                           // where its text begins; 0: it has none
};

inline constexpr size_t kTargets = 4;
extern const Target kTargetTable[kTargets];

const Target *FindTarget(std::string_view name);

// Runs one input on one of the subjects. Prepares the host on first use.
Outcome Run(const Target &target, std::span<const Subject> subjects, const uint8_t *data, size_t size);

} // namespace bgp::fuzz

#endif
