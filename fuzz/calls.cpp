#include "fuzz/calls.h"

#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <lua.hpp>

#include <algorithm>
#include <cstring>

#if defined(__SANITIZE_ADDRESS__)
#define BGP_FUZZ_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BGP_FUZZ_ASAN 1
#endif
#endif

namespace bgp::fuzz {
namespace {

namespace host = bgp::standalone;

#if defined(BGP_FUZZ_ASAN)
constexpr size_t kGuard = 0;
#else
constexpr size_t kGuard = 32;
#endif
constexpr uint8_t kGuardByte = 0x5C;

bool IsCode(uint32_t code)
{
    constexpr uint32_t kCodes[] = {DT_OK,
                                   DT_ERR_FAIL,
                                   DT_ERR_NULL_PTR,
                                   DT_ERR_NO_MEMORY,
                                   DT_ERR_INVALID_PARAM,
                                   DT_ERR_MODE_UNSUPPORTED,
                                   DT_ERR_LENGTH,
                                   DT_ERR_INVALID_VALUE,
                                   DT_ERR_TYPE_MISMATCH,
                                   DT_ERR_CONVERT,
                                   DT_ERR_TOO_LONG};
    return std::find(std::begin(kCodes), std::end(kCodes), code) != std::end(kCodes);
}

// What the host has given out and not got back. An operation may leave what it hands over, and nothing else.
class Accounts {
public:
    explicit Accounts(const Trial &trial) : trial_(trial)
    {
        host::RecordReleases(true);
        host::TakeReleases();
    }

    // Closes the account: `result` is what the call handed over (null for nothing), `lent` memory that the caller had
    // given. A result in plain memory is given back.
    void Close(const char *operation, void *result, const void *lent = nullptr)
    {
        for (const host::Release &release : host::TakeReleases()) {
            if (!release.known && release.memory != lent) {
                Note(operation, "frees what is no block of the host");
            }
        }
        host::RecordReleases(false);
        const bool handsOver = result != nullptr && result != lent;
        const size_t plain = host::ScratchBlocks();
        const size_t now = plain + host::HandleBlocks(trial_.handle);
        const size_t expected = plainBefore_ + blocksBefore_ + (handsOver ? 1 : 0);
        if (now != expected) {
            Note(operation, now > expected ? "loses a block" : "hands over what is no block");
        }
        if (plain > plainBefore_ && handsOver) {
            SYS_DataTypeFree(result);
        }
    }

private:
    void Note(const char *operation, const char *what) const
    {
        Expect(trial_, false, (std::string(operation) + ' ' + what).c_str());
    }

    const Trial &trial_;
    size_t plainBefore_ = host::ScratchBlocks();
    size_t blocksBefore_ = host::HandleBlocks(trial_.handle);
};

} // namespace

bool Expect(const Trial &trial, bool holds, const char *what, uint32_t number)
{
    if (!holds) {
        char said[16] = "";
        if (number != kNoNumber) {
            std::snprintf(said, sizeof said, " %#x", number);
        }
        trial.findings.push_back(std::string(trial.subject.facts.Name()) + ": " + what + said);
    }
    return holds;
}

Exact::Exact(size_t size, uint8_t fill)
    : size_(size), before_(kGuard + 1), behind_(kGuard), memory_(new uint8_t[before_ + size_ + behind_])
{
    std::fill_n(memory_.get(), before_ + size_ + behind_, kGuardByte);
    std::fill_n(At(), size, fill);
}

Exact::Exact(const Bytes &bytes) : Exact(bytes.size())
{
    std::copy(bytes.begin(), bytes.end(), At());
}

bool Exact::Intact() const
{
    const auto whole = [](uint8_t byte) { return byte == kGuardByte; };
    const uint8_t *behind = memory_.get() + before_ + size_;
    return std::all_of(memory_.get(), memory_.get() + before_, whole) && std::all_of(behind, behind + behind_, whole);
}

// ---------------------------------------------------------------------------------------------------------- FormatIn

namespace {

struct InResult {
    uint32_t code;
    uint16_t typeId, length;
    void *buffer;
};

void JudgeTyped(const Trial &trial, const InResult &in, const void *marker)
{
    const Facts &facts = trial.subject.facts;
    const uint16_t typeId = facts.type->ResultTypeId;
    Expect(trial, in.typeId == typeId, "FormatIn reports type", in.typeId);
    Expect(trial, facts.Is(BGP_TRAIT_ANY_LENGTH) || in.length == facts.type->ValueLength, "FormatIn reports length",
           in.length);
    Expect(trial, in.buffer != marker && in.buffer != nullptr, "FormatIn succeeds without a value");
}

void JudgeRefused(const Trial &trial, const InResult &in, const void *marker)
{
    Expect(trial, IsCode(in.code), "FormatIn returns", in.code);
    Expect(trial, in.buffer == marker, "FormatIn refuses and writes the out-buffer");
    const bool mayWrite = trial.faulty; // type id and length tell of a value that found no memory
    Expect(trial, in.length == kUntouched || (mayWrite && in.length == 0), "FormatIn refuses and writes the length");
    Expect(trial, in.typeId == kUntouched || mayWrite, "FormatIn refuses and writes the type id");
}

} // namespace

Typed FormatIn(const Trial &trial, uint8_t mode, const std::string &text)
{
    const Facts &facts = trial.subject.facts;
    const Bytes terminated(text.c_str(), text.c_str() + std::strlen(text.c_str()) + 1);
    Exact copy(terminated);
    const DataTypeRequest request{mode, trial.handle};
    int marker = 0;
    InResult in{0, kUntouched, kUntouched, &marker};
    Accounts accounts(trial);
    // A text of the host is to fit in the registered length; the other types are told the length of the text.
    const auto length =
        facts.Is(BGP_TRAIT_HOST_TEXT) ? trial.subject.row.BinaryLength : static_cast<uint32_t>(terminated.size());
    in.code = trial.subject.row.FormatIn(&request, trial.subject.row.TypeId, length,
                                         reinterpret_cast<char *>(copy.At()), &in.typeId, &in.length, &in.buffer);
    Expect(trial, copy.Intact(), "FormatIn's text is written around");
    Expect(trial,
           std::equal(terminated.begin(), terminated.end(), copy.At()) ||
               (facts.Is(BGP_TRAIT_WRITES_TEXT) && mode == 1),
           "FormatIn writes to its text");
    Typed typed{in.code, {}};
    if (facts.Is(BGP_TRAIT_NO_TEXT)) {
        Expect(trial, in.code == 0 && in.buffer == &marker && in.typeId == kUntouched && in.length == kUntouched,
               "FormatIn does something");
    } else if (in.code != DT_OK) {
        JudgeRefused(trial, in, &marker);
    } else {
        JudgeTyped(trial, in, &marker);
    }
    if (in.buffer == &marker) {
        accounts.Close("FormatIn", nullptr);
        return typed;
    }
    if (in.code == DT_OK && in.buffer != nullptr) {
        const auto *bytes = static_cast<const uint8_t *>(in.buffer);
        typed.value.assign(bytes, bytes + in.length);
    }
    accounts.Close("FormatIn", in.buffer);
    return typed;
}

// --------------------------------------------------------------------------------------------------------- FormatOut

namespace {

// Type id, length and text of a print that succeeded. `size` bytes may have been written.
void JudgePrinted(const Trial &trial, uint8_t mode, const Printed &printed, const uint8_t *text, size_t size)
{
    const Facts &facts = trial.subject.facts;
    const bool nothing = facts.Is(BGP_TRAIT_PRINTS_ITEMS) && printed.typeId == 0 && printed.length == 0;
    const bool silent = printed.typeId == kUntouched && printed.length == kUntouched;
    if (nothing || (silent && text == nullptr)) {
        Expect(trial, facts.Is(BGP_TRAIT_PRINTS_ITEMS), "FormatOut succeeds without a result");
        return;
    }
    if (!Expect(trial, text != nullptr && printed.length <= size, "FormatOut reports more than there is room for")) {
        return;
    }
    if (facts.Is(BGP_TRAIT_COMPOSES) && mode == 2) {
        return;
    }
    if (printed.typeId == DT_TYPE_RAW) {
        Expect(trial, mode == 3, "FormatOut reports a raw copy");
        return;
    }
    Expect(trial, printed.typeId == DT_TYPE_TEXT && printed.length != 0, "FormatOut reports no text");
    // A text of length 1 may be one that was not even terminated: kinds that print nothing.
    if (printed.length > 1) {
        Expect(trial, strnlen(reinterpret_cast<const char *>(text), printed.length) == printed.length - 1u,
               "FormatOut's length is not that of its text");
    }
}

struct OutCall {
    Printed printed;
    void *buffer;
};

OutCall CallFormatOut(const Trial &trial, uint8_t mode, const Bytes &value, void *buffer)
{
    Exact copy(value);
    const DataTypeRequest request{mode, trial.handle};
    OutCall call{{0, kUntouched, kUntouched, {}}, buffer};
    call.printed.code =
        trial.subject.row.FormatOut(&request, trial.subject.row.TypeId, static_cast<uint32_t>(value.size()), copy.At(),
                                    &call.printed.typeId, &call.printed.length, &call.buffer);
    Expect(trial, copy.Intact(), "FormatOut's value is written around");
    Expect(trial, std::equal(value.begin(), value.end(), copy.At()), "FormatOut writes to its value");
    Expect(trial, IsCode(call.printed.code), "FormatOut returns", call.printed.code);
    return call;
}

void Keep(Printed &printed, const void *buffer)
{
    if (printed.code == DT_OK && buffer != nullptr && printed.length != kUntouched) {
        const auto *bytes = static_cast<const uint8_t *>(buffer);
        printed.bytes.assign(bytes, bytes + printed.length);
    }
}

// The bytes that the operation may write where it has no buffer of the caller's.
size_t OwnSize(const Trial &trial, uint8_t mode, const Bytes &value)
{
    const Facts &facts = trial.subject.facts;
    if (facts.Is(BGP_TRAIT_COMPOSES) && mode == 2) {
        return 257;
    }
    if (facts.Is(BGP_TRAIT_COPIES_RAW) && mode == 3) {
        return value.size();
    }
    return facts.type->TextSize != 0 ? facts.type->TextSize : UINT16_MAX;
}

} // namespace

Printed PrintOwn(const Trial &trial, uint8_t mode, const Bytes &value)
{
    Accounts accounts(trial);
    OutCall call = CallFormatOut(trial, mode, value, nullptr);
    if (call.printed.code == DT_OK) {
        const size_t size = OwnSize(trial, mode, value);
        JudgePrinted(trial, mode, call.printed, static_cast<const uint8_t *>(call.buffer), size);
        if (call.printed.length <= size) {
            Keep(call.printed, call.buffer);
        }
    }
    accounts.Close("FormatOut", call.buffer);
    return call.printed;
}

size_t LentSize(const Trial &trial, uint8_t mode, const Printed &own)
{
    const Facts &facts = trial.subject.facts;
    return facts.type->TextSize == 0 || (facts.Is(BGP_TRAIT_COPIES_RAW) && mode == 3) ? own.bytes.size()
                                                                                      : facts.type->TextSize;
}

Printed PrintLent(const Trial &trial, uint8_t mode, const Bytes &value, size_t size)
{
    Exact lent(size);
    Accounts accounts(trial);
    OutCall call = CallFormatOut(trial, mode, value, lent.At());
    Expect(trial, lent.Intact(), "FormatOut's buffer is written around");
    const bool composes = trial.subject.facts.Is(BGP_TRAIT_COMPOSES) && mode == 2;
    Expect(trial, call.buffer == lent.At() || composes, "FormatOut leaves the caller's buffer");
    if (call.printed.code == DT_OK) {
        const bool fits = call.printed.length == kUntouched || call.printed.length <= size || composes;
        if (Expect(trial, fits, "FormatOut reports more than the buffer holds")) {
            Keep(call.printed, call.buffer);
        }
    }
    accounts.Close("FormatOut into a buffer", call.buffer, lent.At());
    return call.printed;
}

Printed FormatOut(const Trial &trial, uint8_t mode, const Bytes &value)
{
    const Printed own = PrintOwn(trial, mode, value);
    const Printed lent = PrintLent(trial, mode, value, LentSize(trial, mode, own));
    Expect(trial, own.code == lent.code && own.typeId == lent.typeId && own.length == lent.length,
           "FormatOut answers otherwise with a caller's buffer");
    Expect(trial, own.bytes == lent.bytes, "FormatOut prints otherwise into a caller's buffer");
    return own;
}

// ------------------------------------------------------------------------------- Check, Help, Compare and byte order

uint32_t Check(const Trial &trial, const Bytes &value)
{
    Exact copy(value);
    const uint32_t code =
        trial.subject.row.Check(&trial, trial.subject.row.TypeId, static_cast<uint32_t>(value.size()), copy.At());
    Expect(trial, copy.Intact(), "Check's value is written around");
    Expect(trial, IsCode(code), "Check returns", code);
    return code;
}

void Help(const Trial &trial, uint8_t mode, const std::string &typedText)
{
    const Bytes terminated(typedText.c_str(), typedText.c_str() + std::strlen(typedText.c_str()) + 1);
    Exact copy(terminated);
    const DataTypeRequest request{mode, trial.handle};
    const uint32_t words[2] = {1, 2};
    DataTypeHelpInfo info{0, nullptr};
    Accounts accounts(trial);
    const uint32_t code = trial.subject.row.Help(&request, trial.subject.row.TypeId, 0,
                                                 reinterpret_cast<const char *>(copy.At()), words, &info);
    const bool supplied = info.EntryCount != 0 && info.Entries != nullptr && info.Entries[0].Text != nullptr;
    Expect(trial, code == DT_OK || !supplied, "Help fails and supplies a text");
    accounts.Close("Help", supplied ? info.Entries[0].Text : nullptr);
}

int32_t Compare(const Trial &trial, const Bytes &left, const Bytes &right)
{
    Exact leftCopy(left);
    Exact rightCopy(right);
    const int32_t order = trial.subject.row.Compare(&trial, static_cast<uint32_t>(std::min(left.size(), right.size())),
                                                    leftCopy.At(), rightCopy.At());
    Expect(trial, leftCopy.Intact() && rightCopy.Intact(), "Compare writes");
    return order;
}

Bytes Swapped(const Trial &trial, const Bytes &value, int times)
{
    Exact copy(value);
    for (int i = 0; i < times; ++i) {
        const uint32_t code =
            trial.subject.row.Endian(&trial, trial.subject.row.TypeId, static_cast<uint32_t>(value.size()), copy.At());
        Expect(trial, code == DT_OK, "Endian returns", code);
    }
    Expect(trial, copy.Intact(), "Endian's value is written around");
    return {copy.At(), copy.At() + value.size()};
}

// --------------------------------------------------------------------------------------------------------------- Lua

uint32_t LuaSet(const Trial &trial, lua_State *L, int32_t table, const Bytes &value)
{
    Exact copy(value);
    const int top = lua_gettop(L);
    Accounts accounts(trial);
    const uint32_t code = trial.subject.row.LuaSet(L, table, "v", trial.subject.row.TypeId,
                                                   static_cast<uint16_t>(value.size()), copy.At());
    accounts.Close("LuaSet", nullptr);
    Expect(trial, copy.Intact(), "LuaSet's value is written around");
    Expect(trial, IsCode(code), "LuaSet returns", code);
    Expect(trial, lua_gettop(L) == top, "LuaSet leaves the stack otherwise");
    lua_settop(L, top);
    return code;
}

uint32_t LuaGet(const Trial &trial, lua_State *L, int32_t table, Bytes &value)
{
    Exact buffer(value);
    Accounts accounts(trial);
    const uint32_t code = trial.subject.row.LuaGet(L, table, "v", trial.subject.row.TypeId,
                                                   static_cast<uint16_t>(value.size()), buffer.At());
    accounts.Close("LuaGet", nullptr);
    Expect(trial, buffer.Intact(), "LuaGet's value is written around");
    Expect(trial, IsCode(code), "LuaGet returns", code);
    value.assign(buffer.At(), buffer.At() + value.size());
    return code;
}

} // namespace bgp::fuzz
