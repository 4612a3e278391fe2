// The operation contract, once: which pointers are tested, which modes are served, how results are handed over, how
// help is given, how Lua tables and byte order follow a layout. A type states its differences as data in the rules
// below and supplies a parser and a printer; operations.h turns rules into operations.
#ifndef BGP_HOST_CONTRACT_H
#define BGP_HOST_CONTRACT_H

#include "bgp_host_services.h"
#include "host/bytes.h"
#include "host/refusal.h"

#include <cstdint>

namespace bgp {

// ------------------------------------------------------------------------------------------------------------- modes

// A set of format modes, bit m for mode m.
template <class... Mode>
constexpr uint8_t Modes(Mode... mode)
{
    return static_cast<uint8_t>(((1u << mode) | ... | 0u));
}

// Modes above 6 and modes in neither set are DT_ERR_MODE_UNSUPPORTED; refused ones are DT_ERR_FAIL.
struct ModeRule {
    uint8_t served;
    uint8_t refused;
};

inline constexpr uint8_t kTextModes = Modes(1, 2, 6);
inline constexpr uint8_t kHelpModes = Modes(1, 6);
inline constexpr uint32_t kRawMode = 3;
inline constexpr ModeRule kTextOnly{kTextModes, Modes(0, 3, 5)};      // most parsers, printers without a raw copy
inline constexpr ModeRule kTextOrRaw{Modes(1, 2, 3, 6), Modes(0, 5)}; // most printers
inline constexpr ModeRule kAllButFour{Modes(0, 1, 2, 3, 5, 6), 0};    // the route keys

inline uint32_t JudgeMode(ModeRule rule, uint32_t mode)
{
    constexpr uint32_t kLastMode = 6;
    if (mode > kLastMode) {
        return DT_ERR_MODE_UNSUPPORTED;
    }
    const uint32_t bit = 1u << mode;
    if ((rule.refused & bit) != 0) {
        return DT_ERR_FAIL;
    }
    return (rule.served & bit) != 0 ? DT_OK : DT_ERR_MODE_UNSUPPORTED;
}

// ------------------------------------------------------------------------------------------------------------ memory

enum class Memory : uint8_t {
    kByHandle, // SYS_DataTypeMallocByHandle on the request's handle
    kPlain     // SYS_DataTypeMalloc
};

inline void *Allocate(Memory memory, const DataTypeRequest &request, uint32_t size)
{
    return memory == Memory::kByHandle ? SYS_DataTypeMallocByHandle(request.MemoryHandle, size)
                                       : SYS_DataTypeMalloc(size);
}

// The out-parameters of FormatIn and FormatOut.
struct Result {
    uint16_t *typeId;
    uint16_t *length;
    void **buffer;
};

inline bool IsNull(const DataTypeRequest *request, const void *input, Result result)
{
    return request == nullptr || input == nullptr || result.typeId == nullptr || result.length == nullptr ||
           result.buffer == nullptr;
}

inline uint32_t NoMemory(Result result)
{
    *result.typeId = 0;
    *result.length = 0;
    *result.buffer = nullptr;
    return DT_ERR_NO_MEMORY;
}

// ---------------------------------------------------------------------------------------------------------- FormatIn

// The largest stored value: an AS number list.
inline constexpr uint32_t kLargestValue = 1280;

// A text to a value, which is zeroed beforehand. False when the text is refused, with the reason noted where `why` is
// not null; the value may have been written then.
using Reader = bool (*)(const char *text, void *value, Why *why);
// The same for readers that take scratch memory, by the request's handle.
using ReaderByHandle = bool (*)(uint32_t memoryHandle, const char *text, void *value, Why *why);

struct FormatInRule {
    uint16_t typeId; // reported with the value
    uint16_t length; // bytes of the value
    ModeRule modes;
    Reader read;
    uint32_t refusal = DT_ERR_INVALID_VALUE; // of a text that is not read
    Memory memory = Memory::kByHandle;
    ReaderByHandle readByHandle = nullptr; // instead of read
};

// The last step of FormatIn, for the types whose first steps are their own: reports rule.typeId and rule.length and
// hands over a copy of the value.
inline uint32_t HandOver(const FormatInRule &rule, const DataTypeRequest &request, const void *value, Result result)
{
    *result.typeId = rule.typeId;
    *result.length = rule.length;
    void *memory = Allocate(rule.memory, request, rule.length);
    if (memory == nullptr) {
        *result.length = 0;
        return DT_ERR_NO_MEMORY;
    }
    std::memcpy(memory, value, rule.length);
    *result.buffer = memory;
    return DT_OK;
}

[[gnu::always_inline]] inline bool ReadValue(const FormatInRule &rule, const DataTypeRequest &request, const char *text,
                                             void *value, Why *why)
{
    std::memset(value, 0, rule.length);
    return rule.readByHandle != nullptr ? rule.readByHandle(request.MemoryHandle, text, value, why)
                                        : rule.read(text, value, why);
}

// Inlined into each operation on purpose, as is FormatOut: the rule is a constant there, and what it does not ask for
// is not in the code.
[[gnu::always_inline]] inline uint32_t FormatIn(const FormatInRule &rule, const DataTypeRequest *request,
                                                const char *text, Result result)
{
    if (IsNull(request, text, result)) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = JudgeMode(rule.modes, request->FormatMode); code != DT_OK) {
        return code;
    }
    uint8_t value[kLargestValue];
    return ReadValue(rule, *request, text, value, nullptr) ? HandOver(rule, *request, value, result) : rule.refusal;
}

// FormatIn up to the result, with the reason for a refusal. The answer is FormatIn's.
uint32_t Explain(const FormatInRule &rule, const DataTypeRequest &request, const char *text, Why &why);

// --------------------------------------------------------------------------------------------------------- FormatOut

// A value to a text of at most the rule's text size. *printed is 0 on entry; leaving it so without touching the buffer
// is the "nothing printed" of values whose notation does not belong to their kind. Non-zero fails the operation.
using Printer = uint32_t (*)(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed);

enum class Mode3 : uint8_t {
    kLikeText, // as any other served mode
    kCopy,     // `length` bytes of the value, type 6
    kTextAsRaw // prints, but reports type 6 and does not count the terminator
};

// What becomes of the buffer when printing fails; type id and length stay as they are.
enum class Failed : uint8_t {
    kHandOver, // the buffer goes out all the same
    kRelease   // a buffer allocated by the call is released, the caller's is left alone
};

struct FormatOutRule {
    ModeRule modes;
    Printer print;
    uint16_t textSize;  // bytes allocated for a text, and vouched for by a caller's own buffer
    uint16_t valueSize; // bytes the printer reads
    Mode3 mode3 = Mode3::kLikeText;
    Failed failed = Failed::kHandOver;
    bool clearsFirst = false; // type id and length are zeroed before the mode is judged
    bool zeroExtends =
        false; // a value shorter than valueSize reads as if zeros followed; else `length` is not looked at
    Memory memory = Memory::kByHandle;
    bool namesSubType = false;       // the value's first word must be subType, else DT_ERR_FAIL
    bool releasesCallersToo = false; // ... and then the buffer is released whosever it is
    uint32_t subType = 0;
};

inline constexpr uint16_t kTextSize = 257;             // the text buffer of most types ...
inline constexpr uint32_t kPrintLimit = kTextSize - 1; // ... of which printing uses so much, terminator included

// The largest value that is read as if zeros followed it: a BGP-LS key.
inline constexpr uint32_t kLargestExtended = 228;

// Mode 3 of the types that copy. A failed raw copy is DT_ERR_FAIL, not DT_ERR_NO_MEMORY, and leaves the type id alone;
// hosts tell the two paths apart by it.
uint32_t CopyRaw(Memory memory, const DataTypeRequest &request, uint32_t length, const void *value, Result result);

inline uint32_t PrintValue(const FormatOutRule &rule, uint32_t mode, uint32_t length, const void *value, char *buffer,
                           uint32_t *printed)
{
    if (!rule.zeroExtends || length >= rule.valueSize) {
        return rule.print(static_cast<const uint8_t *>(value), mode, buffer, printed);
    }
    uint8_t extended[kLargestExtended] = {};
    std::memcpy(extended, value, length);
    return rule.print(extended, mode, buffer, printed);
}

inline bool HasSubType(const FormatOutRule &rule, uint32_t length, const void *value)
{
    uint32_t subType = 0;
    std::memcpy(&subType, value, length < sizeof subType ? length : sizeof subType);
    return subType == rule.subType;
}

[[gnu::always_inline]] inline uint32_t FormatOut(const FormatOutRule &rule, const DataTypeRequest *request,
                                                 uint32_t length, const void *value, Result result)
{
    if (IsNull(request, value, result)) {
        return DT_ERR_NULL_PTR;
    }
    if (rule.clearsFirst) {
        *result.typeId = 0;
        *result.length = 0;
    }
    const uint32_t mode = request->FormatMode;
    if (const uint32_t code = JudgeMode(rule.modes, mode); code != DT_OK) {
        return code;
    }
    if (mode == kRawMode && rule.mode3 == Mode3::kCopy) {
        return CopyRaw(rule.memory, *request, length, value, result);
    }
    const bool own = *result.buffer == nullptr;
    void *buffer = own ? Allocate(rule.memory, *request, rule.textSize) : *result.buffer;
    if (buffer == nullptr) {
        return NoMemory(result);
    }
    if (rule.namesSubType && !HasSubType(rule, length, value)) {
        if (own || rule.releasesCallersToo) {
            SYS_DataTypeFree(buffer);
        }
        return DT_ERR_FAIL;
    }
    uint32_t printed = 0;
    if (const uint32_t code = PrintValue(rule, mode, length, value, static_cast<char *>(buffer), &printed);
        code != DT_OK) {
        if (rule.failed == Failed::kHandOver) {
            *result.buffer = buffer;
        } else if (own) {
            SYS_DataTypeFree(buffer);
        }
        return code;
    }
    const bool raw = mode == kRawMode && rule.mode3 == Mode3::kTextAsRaw;
    *result.typeId = raw ? DT_TYPE_RAW : DT_TYPE_TEXT;
    *result.length = static_cast<uint16_t>(raw ? printed : printed + 1);
    *result.buffer = buffer;
    return DT_OK;
}

// ------------------------------------------------------------------------------------------- Check, Help and Compare

uint32_t CheckLength(const void *value, uint32_t length, uint32_t expected);

struct HelpRule {
    const char *text;
    Memory memory = Memory::kByHandle;
    uint8_t modes = kHelpModes;
    bool passesFirstWord = false; // SYSDT_InitHelpInfo gets the first help word instead of the second
    bool hidesHostCode = false;   // a failing SYSDT_InitHelpInfo makes Help return 0 with nothing supplied
    uint32_t (*admits)(const char *typedText) = nullptr; // a non-zero answer is returned instead of help
};

uint32_t Help(const HelpRule &rule, const DataTypeRequest *request, const char *typedText, const uint32_t *helpArgument,
              DataTypeHelpInfo *helpInfo);

// The first `length` bytes as unsigned bytes: 1 when left is greater, -1 when it is smaller, 0 when they are equal.
int32_t CompareBytes(const void *left, const void *right, uint32_t length);

// ------------------------------------------------------------------------------------------------ Lua and byte order

// A value whose Lua table has one key per field of its layout.
struct LuaRule {
    const BgpLayout &layout;
    uint8_t pops; // stack slots that LuaGet drops at the end; where they are fewer than it pushed, the table stays
};

uint32_t LuaSet(const LuaRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                const void *value);
uint32_t LuaGet(const LuaRule &rule, lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length,
                void *value);

// The argument tests that every LuaSet and LuaGet begins with; `expected` bytes are needed at value.
uint32_t LuaJudge(const lua_State *L, const char *fieldName, const void *value, uint32_t length, uint32_t expected);

// Those, and the table fetch that every LuaGet goes on with. On success *table is the stack index of the
// named table.
uint32_t LuaOpen(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t length, uint32_t expected,
                 const void *value, int32_t *table);

// One field: pushes and sets it in `table`; or fetches it from `table` into the value (DT_ERR_INVALID_PARAM when it is
// of the wrong kind), leaving on the stack what field.LuaPops does not drop.
void LuaSetOne(lua_State *L, int32_t table, const BgpField &field, const uint8_t *value);
uint32_t LuaGetOne(lua_State *L, int32_t table, const BgpField &field, uint8_t *value);

// All fields in turn; LuaGetAll stops at the first that fails.
void LuaSetAll(lua_State *L, int32_t table, const BgpLayout &layout, const uint8_t *value);
uint32_t LuaGetAll(lua_State *L, int32_t table, const BgpLayout &layout, uint8_t *value);

// An array of numbers: `count` elements of `width` bytes, host order. Push leaves it on the stack; the reader takes the
// array at stack index `array` and leaves each element on the stack.
void LuaPushArray(lua_State *L, const uint8_t *at, uint32_t count, uint32_t width);
uint32_t LuaReadArray(lua_State *L, int32_t array, uint8_t *at, uint32_t count, uint32_t width);

// Swaps the integers of a layout, in place.
void SwapFields(const BgpLayout &layout, void *value);

} // namespace bgp

#endif
