#include "support/harness.h"

#include "bgp_host_services.h"
#include "support/lua_dump.h"

#include <lua.hpp>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

namespace bgp::test {

// ------------------------------------------------------------------------------------------------------------- bytes

std::string Hex(const void *bytes, size_t length)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    const auto *at = static_cast<const uint8_t *>(bytes);
    std::string hex;
    for (size_t i = 0; i < length; ++i) {
        hex += kDigits[at[i] >> 4];
        hex += kDigits[at[i] & 15];
    }
    return hex;
}

std::string Hex(std::string_view bytes)
{
    return Hex(bytes.data(), bytes.size());
}

std::string Bytes(std::string_view hex)
{
    std::string bytes;
    int high = -1;
    for (const char digit : hex) {
        if (digit == ' ') {
            continue;
        }
        static constexpr std::string_view kDigits = "0123456789abcdef";
        const size_t place = kDigits.find(digit);
        if (place == std::string_view::npos) {
            ADD_FAILURE() << "no hex digit: " << digit << " in " << hex;
            return bytes;
        }
        const int value = static_cast<int>(place);
        if (high < 0) {
            high = value;
        } else {
            bytes += static_cast<char>(high << 4 | value);
            high = -1;
        }
    }
    EXPECT_EQ(high, -1) << "odd number of hex digits: " << hex;
    return bytes;
}

std::string Padded(std::string_view hex, size_t length)
{
    std::string bytes = Bytes(hex);
    EXPECT_LE(bytes.size(), length);
    bytes.resize(length);
    return Hex(bytes);
}

namespace {

std::string LittleEndian(uint64_t value, int width)
{
    std::string bytes;
    for (int i = 0; i < width; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return Hex(bytes);
}

} // namespace

std::string Le16(uint16_t value)
{
    return LittleEndian(value, 2);
}

std::string Le32(uint32_t value)
{
    return LittleEndian(value, 4);
}

std::string Le64(uint64_t value)
{
    return LittleEndian(value, 8);
}

// -------------------------------------------------------------------------------------------------------------- rows

const DataTypeDescriptor &Row(std::string_view name)
{
    static const DataTypeDescriptor none{};
    const DataTypeDescriptor *row = host::FindRow(name);
    EXPECT_NE(row, nullptr) << "no row " << name;
    return row == nullptr ? none : *row;
}

DataTypeDescriptor Row(const BolPrefixSubtypeEntry &entry)
{
    DataTypeDescriptor row{};
    std::snprintf(row.Name, sizeof row.Name, "%.17s", entry.Name);
    row.FormatIn = entry.FormatIn;
    row.FormatOut = entry.FormatOut;
    row.Check = entry.Check;
    row.Help = entry.Help;
    row.Compare = entry.Compare;
    row.LuaSet = entry.LuaSet;
    row.LuaGet = entry.LuaGet;
    return row;
}

namespace {

uint32_t theHandle;

// An exact-size copy whose first byte stands at an odd address: overreads and aligned access show.
class Unaligned {
public:
    explicit Unaligned(std::string_view bytes) : memory_(new char[bytes.size() + 1])
    {
        std::copy(bytes.begin(), bytes.end(), memory_.get() + 1);
    }
    char *At() { return memory_.get() + 1; }

private:
    std::unique_ptr<char[]> memory_;
};

// Gives a SYS_DataTypeMalloc result back, so that only memory that an operation lost counts as scratch.
void ReleasePlain(size_t scratchBefore, void *buffer)
{
    if (buffer != nullptr && host::ScratchBlocks() > scratchBefore) {
        SYS_DataTypeFree(buffer);
    }
}

} // namespace

uint32_t Handle()
{
    return theHandle;
}

// ---------------------------------------------------------------------------------------------------------- FormatIn

In FormatIn(const DataTypeDescriptor &row, std::string_view text, uint8_t mode, uint32_t length)
{
    In in{0, kUntouched, kUntouched, false, "", true};
    if (row.FormatIn == nullptr) {
        ADD_FAILURE() << row.Name << " has no FormatIn";
        in.code = 0xFFFFFFFF;
        return in;
    }
    const std::string terminated = std::string(text) + '\0';
    Unaligned copy(terminated);
    const DataTypeRequest request{mode, theHandle};
    int marker = 0;
    void *buffer = &marker;
    const size_t scratch = host::ScratchBlocks();
    in.code = row.FormatIn(&request, row.TypeId, length == 0 ? static_cast<uint32_t>(terminated.size()) : length,
                           copy.At(), &in.typeId, &in.length, &buffer);
    in.bufferSet = buffer != &marker;
    in.textKept = std::memcmp(copy.At(), terminated.data(), terminated.size()) == 0;
    if (in.code == 0 && in.bufferSet && buffer != nullptr) {
        in.value = Hex(buffer, in.length);
    }
    ReleasePlain(scratch, in.bufferSet ? buffer : nullptr);
    return in;
}

In FormatIn(std::string_view type, std::string_view text, uint8_t mode)
{
    return FormatIn(Row(type), text, mode);
}

std::string Value(std::string_view type, std::string_view text, uint8_t mode)
{
    const In in = FormatIn(type, text, mode);
    EXPECT_EQ(in.code, 0u) << type << " refused \"" << text << '"';
    return in.value;
}

uint32_t CodeOf(std::string_view type, std::string_view text, uint8_t mode)
{
    return FormatIn(type, text, mode).code;
}

// --------------------------------------------------------------------------------------------------------- FormatOut

namespace {

Out CallFormatOut(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, uint32_t length,
                  void **buffer)
{
    Out out{0, kUntouched, kUntouched, false, "", ""};
    if (row.FormatOut == nullptr) {
        ADD_FAILURE() << row.Name << " has no FormatOut";
        out.code = 0xFFFFFFFF;
        return out;
    }
    const std::string value = Bytes(valueHex);
    Unaligned copy(value);
    const DataTypeRequest request{mode, theHandle};
    out.code = row.FormatOut(&request, row.TypeId, length == kOwnLength ? static_cast<uint32_t>(value.size()) : length,
                             copy.At(), &out.typeId, &out.length, buffer);
    out.bufferSet = *buffer != nullptr;
    return out;
}

} // namespace

Out FormatOut(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, uint32_t length)
{
    void *buffer = nullptr;
    const size_t scratch = host::ScratchBlocks();
    Out out = CallFormatOut(row, valueHex, mode, length, &buffer);
    if (out.code == 0 && out.bufferSet && out.length != kUntouched) {
        out.bytes = Hex(buffer, out.length);
        const auto *text = static_cast<const char *>(buffer);
        out.text.assign(text, strnlen(text, out.length));
    }
    ReleasePlain(scratch, buffer);
    return out;
}

Out FormatOut(std::string_view type, std::string_view valueHex, uint8_t mode, uint32_t length)
{
    return FormatOut(Row(type), valueHex, mode, length);
}

std::string Text(std::string_view type, std::string_view valueHex, uint8_t mode)
{
    const Out out = FormatOut(type, valueHex, mode);
    EXPECT_EQ(out.code, 0u) << type << " does not print " << valueHex;
    return out.text;
}

std::string RoundTrip(std::string_view type, std::string_view text, uint8_t mode)
{
    return Text(type, Value(type, text, mode), mode);
}

Into FormatOutInto(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, size_t size, uint32_t length)
{
    constexpr size_t kGuard = 32;
    std::string memory(size, '\xA5');
    memory.append(kGuard, '\x5C');
    void *buffer = memory.data();
    host::RecordReleases(true);
    host::TakeReleases();
    host::TakeCounters();
    Into into{};
    into.out = CallFormatOut(row, valueHex, mode, length, &buffer);
    const host::Counters counters = host::TakeCounters();
    into.allocations = counters.allocations;
    for (const host::Release &release : host::TakeReleases()) {
        into.released = into.released || release.memory == memory.data();
    }
    host::RecordReleases(false);
    into.sameBuffer = buffer == memory.data();
    into.buffer = memory.substr(0, size);
    into.guardsIntact = memory.substr(size) == std::string(kGuard, '\x5C');
    if (into.out.code == 0 && into.out.length != kUntouched && into.out.length <= size) {
        into.out.bytes = Hex(memory.data(), into.out.length);
        into.out.text.assign(memory.data(), strnlen(memory.data(), into.out.length));
    }
    return into;
}

// ---------------------------------------------------------------------------------------- Check, Help, Compare, Endian

uint32_t Check(std::string_view type, std::string_view valueHex)
{
    const std::string value = Bytes(valueHex);
    Unaligned copy(value);
    const DataTypeDescriptor &row = Row(type);
    return row.Check(&row, row.TypeId, static_cast<uint32_t>(value.size()), copy.At());
}

uint32_t CheckLength(std::string_view type, uint32_t length)
{
    return Check(type, std::string(2 * static_cast<size_t>(length), '0'));
}

Helped Help(const DataTypeDescriptor &row, uint8_t mode, uint32_t firstWord, uint32_t secondWord, const char *typedText)
{
    Helped helped{};
    if (row.Help == nullptr) {
        ADD_FAILURE() << row.Name << " has no Help";
        helped.code = 0xFFFFFFFF;
        return helped;
    }
    const DataTypeRequest request{mode, theHandle};
    const uint32_t words[2] = {firstWord, secondWord};
    DataTypeHelpInfo info{0, nullptr};
    const size_t scratch = host::ScratchBlocks();
    host::TakeCounters();
    helped.code = row.Help(&request, row.TypeId, 0, typedText, words, &info);
    const host::Counters counters = host::TakeCounters();
    helped.helpInits = counters.helpInits;
    helped.helpClears = counters.helpClears;
    helped.helpWord = counters.helpInits == 0 ? 0 : counters.lastHelpWord;
    if (info.EntryCount != 0 && info.Entries != nullptr && info.Entries[0].Text != nullptr) {
        helped.supplied = true;
        helped.text = info.Entries[0].Text;
        ReleasePlain(scratch, info.Entries[0].Text);
    }
    return helped;
}

Helped Help(std::string_view type, uint8_t mode, uint32_t firstWord, uint32_t secondWord)
{
    return Help(Row(type), mode, firstWord, secondWord);
}

int32_t Compare(std::string_view type, std::string_view leftHex, std::string_view rightHex)
{
    const std::string left = Bytes(leftHex);
    const std::string right = Bytes(rightHex);
    EXPECT_EQ(left.size(), right.size());
    Unaligned leftCopy(left);
    Unaligned rightCopy(right);
    const DataTypeDescriptor &row = Row(type);
    return row.Compare(&row, static_cast<uint32_t>(left.size()), leftCopy.At(), rightCopy.At());
}

std::string Endian(std::string_view type, std::string_view valueHex)
{
    const std::string value = Bytes(valueHex);
    Unaligned copy(value);
    const DataTypeDescriptor &row = Row(type);
    EXPECT_EQ(row.Endian(&row, row.TypeId, static_cast<uint32_t>(value.size()), copy.At()), 0u);
    return Hex(copy.At(), value.size());
}

// --------------------------------------------------------------------------------------------------------------- Lua

namespace {

struct Lua {
    lua_State *L = host::NewLua();
    ~Lua() { host::CloseLua(L); }
};

} // namespace

LuaOut LuaSet(const DataTypeDescriptor &row, std::string_view valueHex, uint16_t length)
{
    const std::string value = Bytes(valueHex);
    Unaligned copy(value);
    const Lua lua;
    lua_newtable(lua.L);
    const int before = lua_gettop(lua.L);
    LuaOut out{};
    out.code = row.LuaSet(lua.L, before, "v", row.TypeId, length, copy.At());
    out.growth = lua_gettop(lua.L) - before;
    lua_pushstring(lua.L, "v");
    lua_rawget(lua.L, before);
    out.table = DumpLua(lua.L, lua_gettop(lua.L));
    return out;
}

LuaOut LuaSet(std::string_view type, std::string_view valueHex)
{
    return LuaSet(Row(type), valueHex, static_cast<uint16_t>(Bytes(valueHex).size()));
}

LuaIn LuaGet(const DataTypeDescriptor &row, std::string_view expression, uint16_t length)
{
    LuaIn in{};
    const Lua lua;
    const std::string script = "return {v = " + std::string(expression) + "}";
    if (luaL_loadbuffer(lua.L, script.data(), script.size(), "value") != LUA_OK ||
        lua_pcall(lua.L, 0, 1, 0) != LUA_OK) {
        ADD_FAILURE() << lua_tostring(lua.L, -1) << " in " << script;
        in.code = 0xFFFFFFFF;
        return in;
    }
    Unaligned buffer(std::string(length, '\xEE'));
    const int before = lua_gettop(lua.L);
    in.code = row.LuaGet(lua.L, before, "v", row.TypeId, length, buffer.At());
    in.growth = lua_gettop(lua.L) - before;
    in.value = Hex(buffer.At(), length);
    return in;
}

LuaIn LuaGet(std::string_view type, std::string_view expression)
{
    const DataTypeDescriptor &row = Row(type);
    return LuaGet(row, expression, row.BinaryLength);
}

// -------------------------------------------------------------------------------------------------------- the fixture

void PlugIn::SetUp()
{
    if (host::Rows().empty()) {
        host::InitLinkedPlugIn(Bgp_InitDataType);
    }
    host::SetCheckedBlocks(true);
    host::SetFaults({});
    host::RecordReleases(false);
    theHandle = host::OpenHandle();
}

void PlugIn::TearDown()
{
    host::SetFaults({});
    std::string report;
    EXPECT_TRUE(host::BlocksIntact(&report)) << report;
    EXPECT_TRUE(!expectNoScratch || host::ScratchBlocks() == 0) << host::ScratchBlocks() << " scratch blocks left";
    host::CloseHandle(theHandle);
}

// ---------------------------------------------------------------------------------------------------- contract sweeps

namespace {

char Answer(const std::string &modes, uint8_t mode)
{
    return mode < modes.size() ? modes[mode] : modes.back();
}

uint32_t CodeOfAnswer(char answer)
{
    return answer == 'F' ? DT_ERR_FAIL : answer == 'U' ? DT_ERR_MODE_UNSUPPORTED : DT_OK;
}

void SweepFormatInPointers(const DataTypeDescriptor &row, const Contract &contract, uint8_t mode)
{
    const DataTypeRequest request{mode, theHandle};
    for (int missing = 0; missing < 5; ++missing) {
        std::string text = contract.text;
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = &text;
        EXPECT_EQ(row.FormatIn(missing == 0 ? nullptr : &request, row.TypeId, 0, missing == 1 ? nullptr : text.data(),
                               missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                               missing == 4 ? nullptr : &buffer),
                  DT_ERR_NULL_PTR)
            << row.Name << " FormatIn, null argument " << missing << ", mode " << int{mode};
        EXPECT_EQ(typeId, kUntouched);
        EXPECT_EQ(length, kUntouched);
        EXPECT_EQ(buffer, &text);
    }
}

void SweepFormatIn(const DataTypeDescriptor &row, const Contract &contract)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(std::string(row.Name) + " FormatIn mode " + std::to_string(mode));
        SweepFormatInPointers(row, contract, mode);
        const char answer = Answer(contract.inModes, mode);
        host::TakeCounters();
        const In in = FormatIn(row, contract.text, mode);
        EXPECT_EQ(in.code, CodeOfAnswer(answer));
        if (answer != 'P') {
            EXPECT_EQ(in.typeId, kUntouched);
            EXPECT_EQ(in.length, kUntouched);
            EXPECT_FALSE(in.bufferSet);
            EXPECT_EQ(host::TakeCounters().allocations, 0u);
            continue;
        }
        EXPECT_EQ(in.typeId, contract.resultTypeId);
        EXPECT_EQ(in.length, contract.resultLength);
        EXPECT_TRUE(in.bufferSet);
        EXPECT_EQ(host::TakeCounters().plainAllocations != 0, contract.plainMemory);
        EXPECT_TRUE(in.textKept || (row.TypeId == 325 && mode == 1)) << "wrote to the caller's text";
    }
}

void SweepFormatInMemory(const DataTypeDescriptor &row, const Contract &contract)
{
    for (const uint8_t mode : kAllModes) {
        if (Answer(contract.inModes, mode) != 'P') {
            continue;
        }
        SCOPED_TRACE(std::string(row.Name) + " FormatIn without memory, mode " + std::to_string(mode));
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const In in = FormatIn(row, contract.text, mode);
        host::SetFaults({});
        EXPECT_EQ(in.code, DT_ERR_NO_MEMORY);
        EXPECT_EQ(in.typeId, contract.resultTypeId);
        EXPECT_EQ(in.length, 0u);
        EXPECT_FALSE(in.bufferSet);
    }
}

void SweepFormatOutPointers(const DataTypeDescriptor &row, const Contract &contract, uint8_t mode)
{
    const DataTypeRequest request{mode, theHandle};
    std::string value = Bytes(contract.value);
    for (int missing = 0; missing < 5; ++missing) {
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(row.FormatOut(missing == 0 ? nullptr : &request, row.TypeId, static_cast<uint32_t>(value.size()),
                                missing == 1 ? nullptr : value.data(), missing == 2 ? nullptr : &typeId,
                                missing == 3 ? nullptr : &length, missing == 4 ? nullptr : &buffer),
                  DT_ERR_NULL_PTR)
            << row.Name << " FormatOut, null argument " << missing << ", mode " << int{mode};
        EXPECT_EQ(typeId, kUntouched);
        EXPECT_EQ(length, kUntouched);
        EXPECT_EQ(buffer, nullptr);
    }
}

void ExpectServed(const DataTypeDescriptor &row, const Contract &contract, uint8_t mode, char answer)
{
    const size_t size = answer == 'C' ? Bytes(contract.value).size() : contract.textSize;
    const Out out = FormatOut(row, contract.value, mode);
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.typeId, answer == 'T' ? 25 : 6);
    if (answer == 'C') {
        EXPECT_EQ(out.bytes, contract.value);
    } else {
        EXPECT_EQ(out.length, out.text.size() + (answer == 'T' ? 1 : 0));
    }
    const Into into = FormatOutInto(row, contract.value, mode, size);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_EQ(into.out.bytes, out.bytes);
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(into.allocations, 0u);

    host::SetFaults({.failAllocation = 1, .failAllAfter = true});
    const Out failed = FormatOut(row, contract.value, mode);
    host::SetFaults({});
    EXPECT_EQ(failed.code, answer == 'C' ? DT_ERR_FAIL : DT_ERR_NO_MEMORY);
    EXPECT_EQ(failed.typeId, answer == 'C' ? kUntouched : 0);
    EXPECT_EQ(failed.length, 0);
    EXPECT_FALSE(failed.bufferSet);
}

void SweepFormatOut(const DataTypeDescriptor &row, const Contract &contract)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(std::string(row.Name) + " FormatOut mode " + std::to_string(mode));
        SweepFormatOutPointers(row, contract, mode);
        const char answer = Answer(contract.outModes, mode);
        if (answer == 'T' || answer == 'C' || answer == 'R') {
            ExpectServed(row, contract, mode, answer);
            continue;
        }
        host::TakeCounters();
        const Out out = FormatOut(row, contract.value, mode);
        EXPECT_EQ(out.code, CodeOfAnswer(answer));
        const bool cleared = contract.clearsFirst && answer != 'N';
        EXPECT_EQ(out.typeId, cleared ? 0 : kUntouched);
        EXPECT_EQ(out.length, cleared ? 0 : kUntouched);
        EXPECT_FALSE(out.bufferSet);
        EXPECT_EQ(host::TakeCounters().allocations, 0u);
    }
}

void SweepHelpPointers(const DataTypeDescriptor &row, uint8_t mode)
{
    const DataTypeRequest request{mode, theHandle};
    const uint32_t words[2] = {11, 22};
    DataTypeHelpInfo info{0, nullptr};
    EXPECT_EQ(row.Help(nullptr, row.TypeId, 0, "", words, &info), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Help(&request, row.TypeId, 0, "", nullptr, &info), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Help(&request, row.TypeId, 0, "", words, nullptr), DT_ERR_NULL_PTR);
}

void SweepHelp(const DataTypeDescriptor &row, const Contract &contract)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(std::string(row.Name) + " Help mode " + std::to_string(mode));
        SweepHelpPointers(row, mode);
        const bool answers = Answer(contract.helpModes, mode) == 'H';
        const Helped helped = Help(row, mode);
        EXPECT_EQ(helped.code, DT_OK);
        EXPECT_EQ(helped.supplied, answers);
        EXPECT_EQ(helped.text, answers ? contract.helpText : "");
        EXPECT_EQ(helped.helpInits, answers ? 1u : 0u);
        EXPECT_EQ(Help(row, mode, 0, 22).code, answers ? DT_ERR_INVALID_PARAM : DT_OK);
        EXPECT_EQ(Help(row, mode, 11, 0).code, answers ? DT_ERR_INVALID_PARAM : DT_OK);
        if (!answers) {
            continue;
        }
        // The record's own entries may come from the same allocators, so the failing one is looked for.
        bool refused = false;
        for (uint32_t allowed = 0; allowed < 3 && !refused; ++allowed) {
            host::SetFaults({.failAllocation = allowed + 1, .failAllAfter = true});
            const Helped failed = Help(row, mode);
            host::SetFaults({});
            refused = failed.code == DT_ERR_NO_MEMORY;
            EXPECT_FALSE(refused && failed.supplied);
            EXPECT_EQ(failed.helpClears, refused ? 1u : 0u);
        }
        EXPECT_TRUE(refused) << "help never ran out of memory";
    }
}

void SweepLua(const DataTypeDescriptor &row, const Contract &contract)
{
    std::string value = Bytes(contract.value);
    const auto length = static_cast<uint16_t>(value.size());
    const Lua lua;
    lua_newtable(lua.L);
    if (row.LuaSet != nullptr) {
        EXPECT_EQ(row.LuaSet(nullptr, 1, "v", row.TypeId, length, value.data()), DT_ERR_NULL_PTR);
        if (!contract.namelessLua) {
            EXPECT_EQ(row.LuaSet(lua.L, 1, nullptr, row.TypeId, length, value.data()), DT_ERR_NULL_PTR);
        }
        EXPECT_EQ(row.LuaSet(lua.L, 1, "v", row.TypeId, length, nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(lua_gettop(lua.L), 1);
    }
    if (row.LuaGet != nullptr) {
        EXPECT_EQ(row.LuaGet(nullptr, 1, "v", row.TypeId, length, value.data()), DT_ERR_NULL_PTR);
        if (!contract.namelessLua) {
            EXPECT_EQ(row.LuaGet(lua.L, 1, nullptr, row.TypeId, length, value.data()), DT_ERR_NULL_PTR);
        }
        EXPECT_EQ(row.LuaGet(lua.L, 1, "v", row.TypeId, length, nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(lua_gettop(lua.L), 1);
    }
}

} // namespace

void Sweep(const DataTypeDescriptor &row, const Contract &contract)
{
    if (row.FormatIn != nullptr && !contract.inModes.empty()) {
        SweepFormatIn(row, contract);
        host::SetFaults({});
        SweepFormatInMemory(row, contract);
    }
    if (row.FormatOut != nullptr && !contract.outModes.empty()) {
        SweepFormatOut(row, contract);
    }
    if (row.Help != nullptr && !contract.helpModes.empty()) {
        SweepHelp(row, contract);
    }
    SweepLua(row, contract);
}

// ------------------------------------------------------------------------------------------- operations of any row

uint32_t Check(const DataTypeDescriptor &row, std::string_view valueHex)
{
    const std::string value = Bytes(valueHex);
    Unaligned copy(value);
    return row.Check(&row, row.TypeId, static_cast<uint32_t>(value.size()), copy.At());
}

int32_t Compare(const DataTypeDescriptor &row, std::string_view leftHex, std::string_view rightHex)
{
    const std::string left = Bytes(leftHex);
    const std::string right = Bytes(rightHex);
    EXPECT_EQ(left.size(), right.size());
    Unaligned leftCopy(left);
    Unaligned rightCopy(right);
    return row.Compare(&row, static_cast<uint32_t>(left.size()), leftCopy.At(), rightCopy.At());
}

Swapped Endian(const DataTypeDescriptor &row, std::string_view valueHex)
{
    const std::string value = Bytes(valueHex);
    Unaligned copy(value);
    const uint32_t code = row.Endian(&row, row.TypeId, static_cast<uint32_t>(value.size()), copy.At());
    return {code, Hex(copy.At(), value.size())};
}

LuaIn LuaGetInto(const DataTypeDescriptor &row, std::string_view expression, std::string_view beforeHex)
{
    const Lua lua;
    const std::string script = "return {v = " + std::string(expression) + "}";
    if (luaL_loadbuffer(lua.L, script.data(), script.size(), "value") != LUA_OK ||
        lua_pcall(lua.L, 0, 1, 0) != LUA_OK) {
        return {0xFFFFFFFF, "", 0};
    }
    const std::string bytes = Bytes(beforeHex);
    Unaligned buffer(bytes);
    const int before = lua_gettop(lua.L);
    LuaIn in{};
    in.code = row.LuaGet(lua.L, before, "v", row.TypeId, static_cast<uint16_t>(bytes.size()), buffer.At());
    in.growth = lua_gettop(lua.L) - before;
    in.value = Hex(buffer.At(), bytes.size());
    return in;
}

} // namespace bgp::test
