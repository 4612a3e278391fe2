// Operations, called and watched: on exact-size memory at odd addresses, with every block of the host accounted for.
// What an operation may not do becomes a finding.
#ifndef BGP_FUZZ_CALLS_H
#define BGP_FUZZ_CALLS_H

#include "fuzz/subjects.h"

#include <memory>
#include <string>
#include <vector>

namespace bgp::fuzz {

using Bytes = std::vector<uint8_t>;

// One subject under test.
struct Trial {
    const Subject &subject;
    uint32_t handle; // of the host's memory
    std::vector<std::string> &findings;
    bool faulty = false; // the host fails on purpose: whatever comes of it, nothing may be lost or written past
};

// Notes a finding when `holds` is false, and gives it back. The number, when there is one, is said with it.
inline constexpr uint32_t kNoNumber = 0xFFFFFFFF;
bool Expect(const Trial &trial, bool holds, const char *what, uint32_t number = kNoNumber);

// Memory of exactly `size` bytes at an odd address. AddressSanitizer watches its end; without it guards stand around.
class Exact {
public:
    explicit Exact(size_t size, uint8_t fill = 0xA5);
    explicit Exact(const Bytes &bytes);
    uint8_t *At() { return memory_.get() + before_; }
    bool Intact() const;

private:
    size_t size_, before_, behind_;
    std::unique_ptr<uint8_t[]> memory_;
};

// ---------------------------------------------------------------------------------------------------------- FormatIn

struct Typed {
    uint32_t code;
    Bytes value; // empty unless the code is 0
};

Typed FormatIn(const Trial &trial, uint8_t mode, const std::string &text);

// --------------------------------------------------------------------------------------------------------- FormatOut

struct Printed {
    uint32_t code;
    uint16_t typeId, length; // as they were (kUntouched) where nothing was written
    Bytes bytes;             // `length` bytes of the result, when there is one
};

inline constexpr uint16_t kUntouched = 0xEEEE;

// Into memory of the operation's own, or into a caller's buffer of `size` bytes. `value` is handed over whole; its size
// is the length argument.
Printed PrintOwn(const Trial &trial, uint8_t mode, const Bytes &value);
Printed PrintLent(const Trial &trial, uint8_t mode, const Bytes &value, size_t size);
// The size that a caller's buffer must have. Types that promise none get what their own result needed.
size_t LentSize(const Trial &trial, uint8_t mode, const Printed &own);
// Both; they must agree. Gives the first.
Printed FormatOut(const Trial &trial, uint8_t mode, const Bytes &value);

// ------------------------------------------------------------------------------- Check, Help, Compare and byte order

uint32_t Check(const Trial &trial, const Bytes &value);
void Help(const Trial &trial, uint8_t mode, const std::string &typedText);
int32_t Compare(const Trial &trial, const Bytes &left, const Bytes &right);
// Applies Endian so many times.
Bytes Swapped(const Trial &trial, const Bytes &value, int times);

// --------------------------------------------------------------------------------------------------------------- Lua

// Stores the value as field "v".
uint32_t LuaSet(const Trial &trial, lua_State *L, int32_t table, const Bytes &value);
// Field "v" of the table at that index into `value`, which tells the size of the buffer and its bytes beforehand.
uint32_t LuaGet(const Trial &trial, lua_State *L, int32_t table, Bytes &value);

} // namespace bgp::fuzz

#endif
