// Rows of texts, of printed values and of Lua tables, and what is expected of each.
#ifndef BGP_TESTS_EXPECT_H
#define BGP_TESTS_EXPECT_H

#include "support/harness.h"

#include <string>
#include <string_view>
#include <vector>

namespace bgp::test {

// `item` again and again.
std::string Repeated(const std::string &item, size_t count, const std::string &separator = "");
// A 16-bit number in network order, in hex; Le16() has the host's.
std::string Net16(uint32_t number);
// Hex of bytes that were not written: "ee".
std::string Unwritten(size_t count);

// ------------------------------------------------------------------------------------------------------------ text in

struct TextCase {
    std::string text;
    std::string value;        // hex
    std::string printed = {}; // what the value prints; "" = as typed
};

inline const std::string &PrintedText(const TextCase &c)
{
    return c.printed.empty() ? c.text : c.printed;
}

// A refused text: its code, and out-parameters left as they were.
void ExpectRefused(const In &in, uint32_t code);
void ExpectRefused(const DataTypeDescriptor &row, std::string_view text, uint8_t mode, uint32_t code);

// A field of a text, between `before` and `behind`, that takes scale * n + base for all n of 16 bits, and where the two
// bytes of n stand in the value.
struct FieldCase {
    const char *before, *behind;
    const char *value; // hex, with 0000 in the field's place
    size_t offset;
    bool hostOrder = false; // otherwise network order
    uint32_t base = 0;
    uint32_t scale = 1;
    uint32_t first = 0; // the least n
};

// All numbers in each field, through a parser, and back through FormatOut.
void ExpectEverySixteenBitField(uint32_t (*parser)(const char *text, void *value), const std::vector<FieldCase> &fields,
                                const DataTypeDescriptor *printing = nullptr);

// Blanks around a text do not count, however many; they cost no memory beside the result.
void ExpectBlanksDropped(const DataTypeDescriptor &row, const std::string &text,
                         uint32_t refusal = DT_ERR_INVALID_VALUE);

// ----------------------------------------------------------------------------------------------------------- text out
//
// A printer may have three outcomes. A value prints; a value whose notation does not belong to its kind prints nothing
// at all, not even a terminator, and succeeds; a value of unknown kind fails with the buffer handed out.

// What a text is printed into, and how it is reported in each mode, as Contract::outModes has it: in a mode R as type 6
// without its terminator, else as type 25 with it.
struct TextBuffer {
    size_t size = 257;
    std::string modes = "FTTRUFTU";
};

// Prints `text`, into a caller's buffer as into one of its own.
void ExpectPrints(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, const std::string &text,
                  const TextBuffer &buffer = {});

// Succeeds and writes no character, not even a terminator; the length counts none, plus the terminator's.
void ExpectNothingWritten(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode,
                          const TextBuffer &buffer = {});

// Fails with the buffer handed out, not released, and with type id and length as they were.
void ExpectNoSuchKind(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode,
                      uint32_t code = DT_ERR_FAIL, size_t size = 257);

// Fails, gives back a buffer of its own and keeps a caller's.
void ExpectNoSuchKindGivenBack(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode,
                               uint32_t code = DT_ERR_FAIL, size_t size = 257);

// --------------------------------------------------------------------------------------------------------------- help

// Allocations of one Help call in mode 1: of the handle's memory, and by SYS_DataTypeMalloc.
struct HelpMemory {
    uint32_t byHandle;
    uint32_t plain;
};
HelpMemory AllocationsOfHelp(const DataTypeDescriptor &row);

// ------------------------------------------------------------------------------------------------------------- layout

struct FieldRow {
    const char *name; // also its key in the Lua table; null where it has none of its own
    uint16_t offset;
    uint8_t width;
    uint16_t count;
};

// The layout of a value, field for field: numbers of more than one byte are in host order, all else is bytes.
void ExpectLayout(uint32_t typeId, std::string_view valueHex, const std::vector<FieldRow> &fields);

// ---------------------------------------------------------------------------------------------------------------- Lua

inline constexpr int32_t kAnyGrowth = 99; // the stack height afterwards is not promised

struct LuaCase {
    std::string table; // a Lua expression
    uint32_t code;
    std::string value; // hex, "ee" where nothing was written
    int32_t growth;
};

struct SetCase {
    std::string value; // hex
    std::string table;
};

// LuaSet with the length that it wants and longer ones.
void ExpectLuaSet(const DataTypeDescriptor &row, uint16_t length, const std::vector<SetCase> &cases);
void ExpectLuaGet(const DataTypeDescriptor &row, uint16_t length, const std::vector<LuaCase> &cases);

// A byte array inside a Lua table: the text before and behind its items, how many there are, the byte of the value that
// item 1 fills, and the stack growth when the first item is refused (each later one leaves so many slots more).
struct LuaArray {
    std::string before, behind;
    size_t items;
    size_t offset;
    int32_t firstGrowth;
    int32_t growthPerItem = 1;
};

// Each item missing and of the wrong kind in turn: what was read before it has been written, nothing else.
void ExpectItemsAreNumbers(const DataTypeDescriptor &row, uint16_t length, const LuaArray &array,
                           uint32_t code = DT_ERR_INVALID_PARAM);

// Lua lengths below the value's are refused before anything is pushed or read.
void ExpectShortLuaRefused(const DataTypeDescriptor &row, uint16_t length, const std::string &table,
                           uint32_t code = DT_ERR_INVALID_PARAM);

} // namespace bgp::test

#endif
