// A data type in literals, and what is run over them. A type's test file states a TypeCase: its row, its contract, its
// texts, bytes, printed texts and Lua tables. StateTests() makes a test of each part that is stated, in the suite of
// the type's own tests; the test "Row" fails where the row has an operation that the case says nothing about.
#ifndef BGP_TESTS_TYPE_CASE_H
#define BGP_TESTS_TYPE_CASE_H

#include "support/expect.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace bgp::test {

// A text with each character in turn between `before` and `behind`: those of `inside` are passed over, or taken where
// it is said so, every other one is refused. A blank at either end is passed over: it is trimmed.
struct CharacterCase {
    std::string before, behind;
    std::string inside;
    bool insideTaken = false;
};

// The first two bytes of a route distinguisher or community, and what the value prints for each notation word.
struct KindCase {
    std::string kind;                                           // two bytes
    std::vector<std::pair<std::string, std::string>> notations; // word, text; any other word prints nothing
    std::string always = {};                                    // the text whatever the notation is
};

enum class UnknownKind { kHandsOver, kGivesBack }; // what becomes of a buffer for a kind that does not print

struct KindTable {
    std::string front = {};                // hex in front of the kind
    std::string fields = {};               // hex between the kind and the notation
    std::vector<KindCase> kinds = {};      // all that print
    std::vector<std::string> unknown = {}; // some that do not, for every notation and mode; each other one is run once
    std::vector<std::string> others = {};  // kinds with tests of their own
    UnknownKind becomes = UnknownKind::kHandsOver;
    uint32_t code = DT_ERR_FAIL;
};

// An order of two values over their first `length` bytes.
struct CompareCase {
    std::string left, right; // hex
    int32_t order;
    std::optional<uint32_t> length = {}; // otherwise all
};

struct LengthCase {
    uint32_t length;
    std::string text;       // what the value prints under this length
    std::string value = {}; // hex; otherwise the contract's
};

struct ValueCode {
    std::string value; // hex
    uint32_t code;
};

struct SwapCase {
    std::string value, swapped; // hex
    bool back = true;           // swapped back it is the value again
};

struct TypeCase {
    DataTypeDescriptor row;                       // as registered; of a sub-type its name and operations
    const BolPrefixSubtypeEntry *entry = nullptr; // the sub-type's row, to be found instead of a type's
    uint32_t subType = 0;                         // its number
    BolPrefixLuaReader reader = nullptr;          // of a sub-type of BOLPREFIX

    // What Sweep() runs. Left out: texts and values of the first accepted text, id and length of the row.
    Contract contract;
    std::vector<std::pair<std::string, std::string>> alsoSwept = {}; // further texts and values under this contract
    bool swept = true;                 // false: a type that answers in its own way and has tests of its own for it
    std::vector<FieldRow> layout = {}; // of a zero value
    std::optional<uint16_t> failedOut = kUntouched; // type id and length after a failed print

    // Text in, in every mode that the contract calls parsing; what is accepted is printed in every mode that prints.
    std::vector<TextCase> accepted = {};
    bool printsBack = true; // false: by mode, in tests of its own
    std::vector<std::string> refused = {};
    uint32_t refusal = DT_ERR_INVALID_VALUE;
    std::vector<std::string> blanked = {}; // texts that blanks are put around
    std::vector<CharacterCase> characters = {};
    uint32_t (*parser)(const char *text, void *value) = nullptr;
    size_t parsedBytes = 0; // what the parser fills; 0: the whole value
    uint32_t parserRefusal = DT_ERR_FAIL;
    std::vector<FieldCase> fields = {};
    std::vector<std::pair<std::string, std::string>> octets = {}; // what stands around an octet: 0 to 255, and back

    // Text out.
    std::vector<std::string> roundTrips = {}; // texts that print as they were typed
    std::vector<TextCase> prints = {};        // values that cannot be typed, or print alike
    KindTable kindTable = {};
    std::vector<std::string> printFailures = {}; // values whose first print fails
    uint32_t printFailure = DT_ERR_FAIL;
    bool readsWhole = true; // FormatOut does not look at its length argument
    std::vector<LengthCase> lengths = {};

    // Check, Help, Compare, Endian.
    std::optional<uint32_t> checkLength = {}; // otherwise the row's
    uint32_t checkRefusal = DT_ERR_LENGTH;
    uint32_t zeroCheck = DT_OK; // what Check says of a zero value
    bool checkTestsPointer = true;
    uint32_t contextlessCheck = DT_OK; // Check's code without its row
    std::vector<ValueCode> checks = {};
    uint32_t helpWord = 22;                       // which of 11 and 22 SYSDT_InitHelpInfo gets
    std::optional<uint32_t> helpHostCode = {};    // Help's code when the host refuses; otherwise the host's own
    std::optional<uint32_t> untypedHelp = DT_OK;  // Help's code without a typed text; none: that is the host's to say
    std::optional<uint32_t> helpCopyFailure = {}; // Help's code when its text cannot be copied: it is given back
    std::vector<std::string> ascending = {};
    bool descending = false; // Compare runs backwards
    std::vector<CompareCase> compares = {};
    bool comparesBytes = false;                   // all of them, one by one
    std::optional<uint32_t> comparePointers = {}; // Compare's code for a null pointer
    std::vector<SwapCase> swaps = {};

    // Lua.
    std::optional<uint16_t> luaLength = {}; // the length that LuaSet and LuaGet want; otherwise the row's
    uint32_t luaRefusal = DT_ERR_INVALID_PARAM;
    std::vector<SetCase> luaSets = {};
    std::vector<LuaCase> luaGets = {};
    std::vector<LuaArray> luaArrays = {};
    bool luaRoundTrip = true; // accepted values come back from their tables
};

// One part of a case.
struct Part {
    const char *name;
    bool (*stated)(const TypeCase &type);
    void (*run)(const TypeCase &type);
};
std::span<const Part> Parts();

// `type` with what it leaves to its row and its first text.
TypeCase Completed(TypeCase type);

// A test for each stated part, in `suite`, whose fixture is PlugIn or derived from it. Says that it was done.
template <class Fixture = PlugIn>
bool StateTests(const char *suite, TypeCase type)
{
    struct Stated : Fixture {
        Stated(std::shared_ptr<const TypeCase> theCase, const Part &thePart) : type(std::move(theCase)), part(thePart)
        {
        }
        void TestBody() override { part.run(*type); }
        std::shared_ptr<const TypeCase> type;
        const Part &part;
    };
    const auto shared = std::make_shared<const TypeCase>(Completed(std::move(type)));
    for (const Part &part : Parts()) {
        if (part.stated(*shared)) {
            ::testing::RegisterTest(suite, part.name, nullptr, nullptr, __FILE__, __LINE__,
                                    [shared, &part]() -> Fixture * { return new Stated(shared, part); });
        }
    }
    return true;
}

} // namespace bgp::test

#endif
