// How tests talk to the plug-in: through descriptor rows, as a host does. Values are strings of hex digits
// ("00640001"), so that a test states the bytes it expects. Blanks inside a hex string are allowed and ignored.
//
// Every call works on exact-size, unaligned copies of its input, results are checked for overruns, and out-parameters
// are marked beforehand so that "untouched" can be seen.
#ifndef BGP_TESTS_HARNESS_H
#define BGP_TESTS_HARNESS_H

#include "bgp_datatypes.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bgp::test {

namespace host = bgp::standalone;

inline constexpr uint16_t kUntouched = 0xEEEE; // what type id and length hold before a call

inline constexpr uint8_t kAllModes[] = {0, 1, 2, 3, 4, 5, 6, 7, 255};
inline constexpr uint8_t kTextModes[] = {1, 2, 6};

// ------------------------------------------------------------------------------------------------------------- bytes

std::string Hex(const void *bytes, size_t length); // lower case, no blanks
std::string Hex(std::string_view bytes);
std::string Bytes(std::string_view hex); // the reverse; fails the test on a bad digit
// Hex of `bytes` followed by zero bytes up to `length` bytes in all.
std::string Padded(std::string_view hex, size_t length);
// A host-order word as the plug-in stores it, in hex: Le32(100) is "64000000".
std::string Le16(uint16_t value);
std::string Le32(uint32_t value);
std::string Le64(uint64_t value);

// -------------------------------------------------------------------------------------------------------------- rows

// The registered row of that name; the test fails (and gets an empty row) when there is none.
const DataTypeDescriptor &Row(std::string_view name);
// A sub-type row in the shape of a descriptor row (length 0).
DataTypeDescriptor Row(const BolPrefixSubtypeEntry &entry);

// ---------------------------------------------------------------------------------------------------------- FormatIn

struct In {
    uint32_t code;
    uint16_t typeId;   // kUntouched when not written
    uint16_t length;   // kUntouched when not written
    bool bufferSet;    // was the out-buffer written?
    std::string value; // hex of the value, "" when code is not 0
    bool textKept;     // did the caller's text stay as it was?
};

// length: FormatIn's length argument; by default the text's length with its terminator.
In FormatIn(const DataTypeDescriptor &row, std::string_view text, uint8_t mode = 1, uint32_t length = 0);
In FormatIn(std::string_view type, std::string_view text, uint8_t mode = 1);

// The value of a text that must be accepted (the test fails otherwise), in hex.
std::string Value(std::string_view type, std::string_view text, uint8_t mode = 1);
// The code for a text.
uint32_t CodeOf(std::string_view type, std::string_view text, uint8_t mode = 1);

// --------------------------------------------------------------------------------------------------------- FormatOut

struct Out {
    uint32_t code;
    uint16_t typeId;   // kUntouched when not written
    uint16_t length;   // kUntouched when not written
    bool bufferSet;    // is the out-buffer non-null afterwards?
    std::string text;  // the printed text up to its NUL (type 25 or text reported as type 6), "" when code is not 0
    std::string bytes; // hex of `length` bytes of the result, "" when code is not 0
};

// length: FormatOut's length argument; by default the value's length.
inline constexpr uint32_t kOwnLength = 0xFFFFFFFF;
Out FormatOut(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode = 1, uint32_t length = kOwnLength);
Out FormatOut(std::string_view type, std::string_view valueHex, uint8_t mode = 1, uint32_t length = kOwnLength);

// The printed text of a value that must print (the test fails otherwise).
std::string Text(std::string_view type, std::string_view valueHex, uint8_t mode = 1);
// Text to value to text.
std::string RoundTrip(std::string_view type, std::string_view text, uint8_t mode = 1);

// FormatOut into a caller's buffer of `size` bytes, all 0xA5 beforehand, with guard bytes behind.
struct Into {
    Out out;
    std::string buffer; // the whole buffer afterwards (raw bytes, not hex)
    bool sameBuffer;    // does the out-buffer still point at the caller's?
    bool guardsIntact;
    uint32_t allocations; // made by the call, both allocators
    bool released;        // was the caller's buffer given to SYS_DataTypeFree?
};
Into FormatOutInto(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, size_t size,
                   uint32_t length = kOwnLength);

// ---------------------------------------------------------------------------------------- Check, Help, Compare, Endian

uint32_t Check(std::string_view type, std::string_view valueHex); // with the value's own length
uint32_t CheckLength(std::string_view type, uint32_t length);     // zero bytes of that length

struct Helped {
    uint32_t code;
    bool supplied; // did the help record get a text?
    std::string text;
    uint32_t helpInits, helpClears, helpWord; // calls of SYSDT_InitHelpInfo and SYSDT_ClearHelpInfo, the word passed
};
Helped Help(const DataTypeDescriptor &row, uint8_t mode = 1, uint32_t firstWord = 11, uint32_t secondWord = 22,
            const char *typedText = "");
Helped Help(std::string_view type, uint8_t mode = 1, uint32_t firstWord = 11, uint32_t secondWord = 22);

int32_t Compare(std::string_view type, std::string_view leftHex, std::string_view rightHex);
std::string Endian(std::string_view type, std::string_view valueHex); // the swapped value, in hex

// --------------------------------------------------------------------------------------------------------------- Lua

// LuaSet stores the value as field "v" of a fresh table.
struct LuaOut {
    uint32_t code;
    std::string table; // field "v", printed by DumpLua; "nil" when it was not set
    int32_t growth;    // stack slots more than before the call
};
LuaOut LuaSet(const DataTypeDescriptor &row, std::string_view valueHex, uint16_t length);
LuaOut LuaSet(std::string_view type, std::string_view valueHex);

// LuaGet reads field "v" of a table, v being the value of a Lua expression such as "{asNumValue=1, asType=0}".
struct LuaIn {
    uint32_t code;
    std::string value; // hex of the buffer afterwards; bytes that were not written read "ee"
    int32_t growth;    // stack slots more than before the call
};
// length: both the size of the buffer and the length argument.
LuaIn LuaGet(const DataTypeDescriptor &row, std::string_view expression, uint16_t length);
LuaIn LuaGet(std::string_view type, std::string_view expression); // with the type's registered length

// -------------------------------------------------------------------------------------------------------- the fixture

// Resets the host before each test (faults, counters, releases, handles) and checks after it that no block was overrun
// and no scratch memory is left. Derive from it or use it as it is: TEST_F(PlugIn, ...).
class PlugIn : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // Set to false by tests that keep SYS_DataTypeMalloc results on purpose.
    bool expectNoScratch = true;
};

// The memory handle that the calls above use.
uint32_t Handle();

// Runs `call` with 0, 1, 2, ... allowed allocations until it succeeds (returns 0); gives each failing code in turn.
template <class Call>
std::vector<uint32_t> CodesWhileAllocationsFail(Call call)
{
    std::vector<uint32_t> codes;
    for (uint32_t allowed = 0; allowed < 16; ++allowed) {
        host::SetFaults({.failAllocation = allowed + 1, .failAllAfter = true});
        const uint32_t code = call();
        host::SetFaults({});
        if (code == 0) {
            return codes;
        }
        codes.push_back(code);
    }
    ADD_FAILURE() << "still failing with 16 allocations";
    return codes;
}

// ---------------------------------------------------------------------------------------------------- contract sweeps

// What a type's operations answer by mode, and what their buffers are. Sweep() runs, for every operation the row has:
// each pointer null in turn in modes 0..7 and 255, every mode, the lengths around the binary length, caller's buffers
// of exactly the promised size, every allocation failing.
struct Contract {
    std::string text = {};    // a text that FormatIn accepts ("" when there is no FormatIn)
    std::string value = {};   // a value that FormatOut prints, in hex
    std::string inModes = {}; // FormatIn's answer in modes 0..7: P parses, F DT_ERR_FAIL, U DT_ERR_MODE_UNSUPPORTED
    std::string outModes =
        {}; // FormatOut's: T text, C raw copy, R text reported as type 6, N nothing (0, untouched), F, U
    std::string helpModes = {}; // Help's: H help, - nothing
    std::string helpText = {};
    uint16_t resultTypeId = 0; // what FormatIn reports
    uint16_t resultLength = 0;
    uint16_t textSize = 0;        // FormatOut's text buffer
    bool plainMemory = false;     // results come from SYS_DataTypeMalloc
    bool helpPlainMemory = false; // the help text does
    bool clearsFirst = false;     // FormatOut zeroes type id and length before it judges the mode
    bool namelessLua = false;     // LuaSet and LuaGet do without a field name
};
void Sweep(const DataTypeDescriptor &row, const Contract &contract);

// ------------------------------------------------------------------------------------------- operations of any row

// As above for a row of its own, such as that of a sub-type.
uint32_t Check(const DataTypeDescriptor &row, std::string_view valueHex);
int32_t Compare(const DataTypeDescriptor &row, std::string_view leftHex, std::string_view rightHex);
struct Swapped {
    uint32_t code;
    std::string value;
};
Swapped Endian(const DataTypeDescriptor &row, std::string_view valueHex);
// LuaGet into bytes that are there already. 0xFFFFFFFF when the expression is none.
LuaIn LuaGetInto(const DataTypeDescriptor &row, std::string_view expression, std::string_view beforeHex);

} // namespace bgp::test

#endif
