// Lists: values of a fixed number of packed entries, typed and printed as items with blanks between them.
//
//   bytes of an entry  field     width  meaning
//   0-3                number    u32    host order, unaligned
//   4                  notation  u8     how the item was typed; which entries are unused is the type's own rule
//
// Items keep the order in which they were typed; nothing is sorted or dropped.
#ifndef BGP_HOST_PACKED_LIST_H
#define BGP_HOST_PACKED_LIST_H

#include "host/bytes.h"
#include "host/contract.h"
#include "host/text.h"

#include <cstdint>

namespace bgp {

// An entry unpacked. Two words and no padding: registers take it whole.
struct PackedEntry {
    uint32_t number;
    uint32_t notation; // 0 to 255
};

inline constexpr uint32_t kPackedEntrySize = 5;

inline PackedEntry LoadEntry(const uint8_t *at)
{
    return {Load<uint32_t>(at), at[4]};
}

inline void StoreEntry(uint8_t *at, PackedEntry entry)
{
    Store(at, entry.number);
    at[4] = static_cast<uint8_t>(entry.notation);
}

// The longest text of a list: 256 times "65535.65535" and the blanks between.
inline constexpr uint32_t kLongestList = 3071;

struct PackedListRule {
    uint32_t count;       // entries of a value
    uint32_t longestText; // characters, typed or printed
    // One item, without blanks around it and never empty. False when it is none of the type's.
    bool (*read)(uint32_t memoryHandle, Text item, PackedEntry &entry, Why *why);
    bool (*isUnused)(PackedEntry entry);
    void (*print)(PackedEntry entry, GrowingText &text); // may put nothing
    const char *luaArray;                                // the array's key in the value's Lua table
    const BgpLayout &entry; // the layout of one entry; the names are the keys of an array element
    // Where reading an item takes memory, a text is cut into items first and refused as a whole when it holds too many,
    // one that is too long, or a character that stands in none.
    bool (*allows)(char character) = nullptr;
    uint32_t longestItem = 0;
    const char *item = nullptr; // what an item is called: "a community"
    // The item that a text begins with, and the place behind it, for texts that are quick to read. Null says only that
    // read() has to tell. Of ReadBareList() alone.
    const char *(*readBare)(const char *text, PackedEntry &entry) = nullptr;

    constexpr uint32_t Length() const { return count * kPackedEntrySize; }
};

// Takes the first item off a trimmed text, with the blanks behind it.
inline Text TakeItem(Text &rest, Blanks &blanks)
{
    const char *at = rest.at;
    const char *const end = at + rest.length;
    while (at < end && !IsBlank(blanks, *at)) {
        ++at;
    }
    const Text item{rest.at, static_cast<uint32_t>(at - rest.at)};
    while (at < end && IsBlank(blanks, *at)) {
        ++at;
    }
    rest = {at, static_cast<uint32_t>(end - at)};
    return item;
}

// Always false: the reason was noted, and is that of an item.
inline bool RefuseItem(Why *why, uint32_t index)
{
    StandsInElement(why, index + 1);
    return false;
}

inline bool RefuseOneTooMany(const PackedListRule &rule, Text item, Why *why)
{
    Refuse(why, item, kTooManyItems, rule.count);
    return RefuseItem(why, rule.count);
}

[[gnu::always_inline]] inline bool IsAllowed(const PackedListRule &rule, Text item, Why *why)
{
    if (item.length > rule.longestItem) {
        return Refuse(why, item, kTooLong, rule.longestItem, rule.item);
    }
    for (uint32_t i = 0; i < item.length; ++i) {
        if (!rule.allows(item.at[i])) {
            return Refuse(why, {item.at + i, 1}, kWrongCharacter);
        }
    }
    return true;
}

[[gnu::always_inline]] inline bool CanBeCut(const PackedListRule &rule, Text list, Blanks &blanks, Why *why)
{
    for (uint32_t i = 0; list.length != 0; ++i) {
        const Text item = TakeItem(list, blanks);
        if (i == rule.count) {
            return RefuseOneTooMany(rule, item, why);
        }
        if (!IsAllowed(rule, item, why)) {
            return RefuseItem(why, i);
        }
    }
    return true;
}

// A trimmed text whose items rule.readBare reads, each one, to the first entries of a value. False as soon as something
// else is met, with the entries before it written: then ReadPackedList() has to tell.
[[gnu::always_inline]] inline bool ReadBareList(const PackedListRule &rule, Text list, void *value)
{
    if (!IsLong(list, 1, rule.longestText)) {
        return false;
    }
    Blanks blanks;
    const char *at = list.at;
    const char *const end = at + list.length;
    auto *to = static_cast<uint8_t *>(value);
    for (uint32_t i = 0; i < rule.count && at < end; ++i, to += kPackedEntrySize) {
        PackedEntry entry;
        const char *behind = rule.readBare(at, entry);
        if (behind == nullptr || (behind < end && !IsBlank(blanks, *behind))) {
            return false;
        }
        StoreEntry(to, entry);
        at = behind;
        while (at < end && IsBlank(blanks, *at)) {
            ++at;
        }
    }
    return at == end;
}

// A trimmed text to the first entries of a value; the other entries stay as they are. False, with part of the value
// written, when the text is empty or too long, holds too many items, or holds one that is none.
[[gnu::always_inline]] inline bool ReadPackedList(const PackedListRule &rule, uint32_t memoryHandle, Text list,
                                                  void *value, Why *why)
{
    Blanks blanks;
    if (!HasLength(list, 1, rule.longestText, why) || (rule.allows != nullptr && !CanBeCut(rule, list, blanks, why))) {
        return false;
    }
    auto *at = static_cast<uint8_t *>(value);
    for (uint32_t i = 0; list.length != 0; ++i, at += kPackedEntrySize) {
        const Text item = TakeItem(list, blanks);
        if (i == rule.count) {
            return RefuseOneTooMany(rule, item, why);
        }
        PackedEntry entry;
        if (!rule.read(memoryHandle, item, entry, why)) {
            return RefuseItem(why, i);
        }
        StoreEntry(at, entry);
    }
    return true;
}

// Are the entries from a place on the same, and that up to the value's end? Most values have but a few entries, and
// then nothing but what FormatIn leaves behind the last.
[[gnu::always_inline]] inline bool IsUniform(const uint8_t *at, const uint8_t *end)
{
    return std::memcmp(at, at + kPackedEntrySize, static_cast<size_t>(end - at) - kPackedEntrySize) == 0;
}

// The used entries in order, one blank before each but the first, cut at the longest text.
[[gnu::always_inline]] inline uint32_t PrintPackedList(const PackedListRule &rule, const uint8_t *value, char *buffer,
                                                       uint32_t *printed)
{
    char line[kLongestList + 1];
    const uint32_t size = rule.longestText + 1;
    GrowingText text = GrowIn(line, size);
    bool first = true;
    bool looked = false;
    const uint8_t *const end = value + rule.Length();
    for (; value < end; value += kPackedEntrySize) {
        const PackedEntry entry = LoadEntry(value);
        if (rule.isUnused(entry)) {
            if (!looked && IsUniform(value, end)) {
                break;
            }
            looked = true;
            continue;
        }
        if (!first) {
            Put(text, ' ');
        }
        first = false;
        rule.print(entry, text);
    }
    *text.at = '\0';
    return Printed(PrintText(buffer, size, line), printed);
}

// {[luaArray] = {{[number's name] = n, [notation's name] = n}, ...}}, all entries, the unused ones included. The reader
// takes what is missing or of another kind as the host's stack says (0), and leaves the fetched table on the stack.
uint32_t PackedListLuaSet(const PackedListRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName,
                          uint32_t length, const void *value);
uint32_t PackedListLuaGet(const PackedListRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName,
                          uint32_t length, void *value);

// Swaps the numbers of all entries, in place.
void SwapPackedList(const PackedListRule &rule, void *value);

} // namespace bgp

// The operations that stand on a list rule, as those of operations.h stand on the contract's.
#define BGP_LIST_LUA_SET(name, rule)                                                                                   \
    uint32_t name(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,                  \
                  const void *value)                                                                                   \
    {                                                                                                                  \
        return bgp::PackedListLuaSet(rule, L, tableIndex, fieldName, length, value);                                   \
    }

#define BGP_LIST_LUA_GET(name, rule)                                                                                   \
    uint32_t name(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length, void *outValue)  \
    {                                                                                                                  \
        return bgp::PackedListLuaGet(rule, L, tableIndex, fieldName, length, outValue);                                \
    }

#define BGP_LIST_ENDIAN(name, rule)                                                                                    \
    uint32_t name(const void *, uint32_t, uint32_t, void *value)                                                       \
    {                                                                                                                  \
        bgp::SwapPackedList(rule, value);                                                                              \
        return DT_OK;                                                                                                  \
    }

#endif
